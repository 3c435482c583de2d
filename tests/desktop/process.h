// A program started as a user starts it.
#pragma once

#include <string>
#include <sys/types.h>
#include <utility>
#include <vector>

#include "support/temp_folder.h"

namespace orvantis {

class Process {
  public:
    /// Starts a program with the words after its name, and with variables of its surroundings
    /// changed.
    Process(const std::string& program, const std::vector<std::string>& words,
            const std::vector<std::pair<std::string, std::string>>& variables);
    /// Ends it if it still runs.
    ~Process();
    Process(const Process&) = delete;
    Process& operator=(const Process&) = delete;

    /// Waits for its end. The exit code; -1 if it doesn't end within the time, or by a signal.
    int Wait(int seconds);
    /// Asks it to end, or ends it without asking.
    void Terminate() const;
    void Kill() const;

    /// What it has written so far.
    std::string Output() const;
    std::string Complaints() const;

  private:
    TempFolder folder_;
    pid_t process_ = -1;
};

}  // namespace orvantis

// Other copies of this program on the same desktop: is there one, what stands in its title, and
// bring it to the front. Copies of one user on one display find each other in a folder of the
// user's runtime files, which only that user may enter; no network takes part.
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "surface/shell.h"

class QSocketNotifier;

namespace orvantis {

class OtherCopies {
  public:
    OtherCopies();
    ~OtherCopies();
    OtherCopies(const OtherCopies&) = delete;
    OtherCopies& operator=(const OtherCopies&) = delete;

    /// From now on this copy can be found by later ones. Without a runtime folder it can't be, and
    /// finds none.
    void Join();

    /// True if another copy runs.
    bool AnyRuns() const;

    /// Their main windows, titles in UTF-8. A copy that doesn't answer within a fifth of a second
    /// isn't among them; its event loop is busy or stands still.
    std::vector<TopWindow> Windows();

    /// Asks the copy with this handle to show itself.
    void Raise(std::int64_t handle) const;

    std::function<std::string()> onTitle;  ///< gives this copy's title; UTF-8
    std::function<void()> onRaise;         ///< brings this copy's window to the front

  private:
    struct Message {
        std::int64_t sender = 0;  ///< process number; 0: none was there
        std::string text;
    };

    std::vector<std::int64_t> Others() const;
    bool Send(std::int64_t process, std::string_view text) const;
    Message Receive() const;
    void Answer(const Message& message) const;
    std::string PathOf(std::int64_t process) const;

    std::string folder_;  // native path with a separator at its end; "" not joined
    int socket_ = -1;
    std::unique_ptr<QSocketNotifier> notifier_;
};

}  // namespace orvantis

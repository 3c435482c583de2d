#include "support/run_program.h"

#include <array>
#include <chrono>
#include <csignal>
#include <cstdlib>
#include <fcntl.h>
#include <poll.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

namespace orvantis {

namespace {

using Clock = std::chrono::steady_clock;

// In the child: never returns.
[[noreturn]] void Become(const std::string& program, const std::vector<std::string>& arguments,
                         const std::vector<std::string>& environment, int output, int errors) {
    const int nothing = ::open("/dev/null", O_RDONLY);
    ::dup2(nothing, 0);
    ::dup2(output, 1);
    ::dup2(errors, 2);
    for (const std::string& entry : environment) {
        const std::size_t equals = entry.find('=');
        ::setenv(entry.substr(0, equals).c_str(), entry.substr(equals + 1).c_str(), 1);
    }
    std::vector<char*> words{const_cast<char*>(program.c_str())};
    for (const std::string& word : arguments) words.push_back(const_cast<char*>(word.c_str()));
    words.push_back(nullptr);
    ::execvp(program.c_str(), words.data());
    ::_exit(127);
}

// Reads both pipes until they close or the time is up; false if it is.
bool Collect(int output, int errors, Clock::time_point deadline, ProgramResult& result) {
    std::array<pollfd, 2> waits = {pollfd{output, POLLIN, 0}, pollfd{errors, POLLIN, 0}};
    std::array<std::string*, 2> texts = {&result.output, &result.errors};
    std::array<char, 65536> buffer{};
    while (waits[0].fd >= 0 || waits[1].fd >= 0) {
        const auto left =
            std::chrono::duration_cast<std::chrono::milliseconds>(deadline - Clock::now());
        if (left.count() <= 0 || ::poll(waits.data(), 2, static_cast<int>(left.count())) == 0) {
            return false;
        }
        for (std::size_t i = 0; i < 2; ++i) {
            if (waits[i].fd < 0 || waits[i].revents == 0) continue;
            const ssize_t got = ::read(waits[i].fd, buffer.data(), buffer.size());
            if (got > 0) {
                texts[i]->append(buffer.data(), static_cast<std::size_t>(got));
            } else {
                waits[i].fd = -1;
            }
        }
    }
    return true;
}

}  // namespace

ProgramResult RunProgram(const std::string& program, const std::vector<std::string>& arguments,
                         const std::vector<std::string>& environment, int limitSeconds) {
    ProgramResult result;
    std::array<int, 2> output{};
    std::array<int, 2> errors{};
    if (::pipe2(output.data(), O_CLOEXEC) != 0 || ::pipe2(errors.data(), O_CLOEXEC) != 0) {
        return result;
    }
    const Clock::time_point start = Clock::now();
    const pid_t child = ::fork();
    if (child == 0) Become(program, arguments, environment, output[1], errors[1]);
    ::close(output[1]);
    ::close(errors[1]);

    if (!Collect(output[0], errors[0], start + std::chrono::seconds(limitSeconds), result)) {
        ::kill(child, SIGKILL);
    }
    int status = 0;
    rusage usage{};
    ::wait4(child, &status, 0, &usage);
    ::close(output[0]);
    ::close(errors[0]);
    result.peakKilobytes = usage.ru_maxrss;
    if (WIFEXITED(status)) result.exitCode = WEXITSTATUS(status);
    if (WIFSIGNALED(status)) result.signal = WTERMSIG(status);
    return result;
}

}  // namespace orvantis

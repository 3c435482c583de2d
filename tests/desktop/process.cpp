#include "desktop/process.h"

#include <chrono>
#include <csignal>
#include <cstdlib>
#include <fcntl.h>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>

namespace orvantis {

namespace {

std::string TextOf(const std::string& path) {
    const Bytes bytes = FileBytes(path);
    return {bytes.begin(), bytes.end()};
}

}  // namespace

Process::Process(const std::string& program, const std::vector<std::string>& words,
                 const std::vector<std::pair<std::string, std::string>>& variables) {
    const std::string output = folder_.File("output");
    const std::string complaints = folder_.File("complaints");
    process_ = ::fork();
    if (process_ != 0) return;

    for (const auto& [name, value] : variables) ::setenv(name.c_str(), value.c_str(), 1);
    ::dup2(::open("/dev/null", O_RDONLY), 0);
    ::dup2(::open(output.c_str(), O_WRONLY | O_CREAT, 0600), 1);
    ::dup2(::open(complaints.c_str(), O_WRONLY | O_CREAT, 0600), 2);
    std::vector<char*> arguments;
    arguments.push_back(const_cast<char*>(program.c_str()));
    for (const std::string& word : words) arguments.push_back(const_cast<char*>(word.c_str()));
    arguments.push_back(nullptr);
    ::execv(program.c_str(), arguments.data());
    ::_exit(127);
}

Process::~Process() {
    if (process_ <= 0) return;
    ::kill(process_, SIGKILL);
    ::waitpid(process_, nullptr, 0);
}

int Process::Wait(int seconds) {
    const auto end = std::chrono::steady_clock::now() + std::chrono::seconds(seconds);
    while (process_ > 0 && std::chrono::steady_clock::now() < end) {
        int status = 0;
        if (::waitpid(process_, &status, WNOHANG) == process_) {
            process_ = -1;
            return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
        }
        std::this_thread::sleep_for(std::chrono::milliseconds(10));
    }
    return -1;
}

void Process::Terminate() const {
    if (process_ > 0) ::kill(process_, SIGTERM);
}

void Process::Kill() const {
    if (process_ > 0) ::kill(process_, SIGKILL);
}

std::string Process::Output() const {
    return TextOf(folder_.File("output"));
}

std::string Process::Complaints() const {
    return TextOf(folder_.File("complaints"));
}

}  // namespace orvantis

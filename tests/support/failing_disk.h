// Ways in which a disk refuses a write, for tests that prove that nothing is lost by it.
#pragma once

#include <csignal>
#include <filesystem>
#include <string>
#include <sys/resource.h>
#include <unistd.h>

namespace orvantis {

/// As long as it lives no file can grow beyond `bytes`, as on a disk that is full.
class FullDisk {
  public:
    explicit FullDisk(rlim_t bytes) : handler_(std::signal(SIGXFSZ, SIG_IGN)) {
        ::getrlimit(RLIMIT_FSIZE, &old_);
        const rlimit limit{bytes, old_.rlim_max};
        ::setrlimit(RLIMIT_FSIZE, &limit);
    }
    ~FullDisk() {
        ::setrlimit(RLIMIT_FSIZE, &old_);
        std::signal(SIGXFSZ, handler_);
    }
    FullDisk(const FullDisk&) = delete;
    FullDisk& operator=(const FullDisk&) = delete;

  private:
    rlimit old_{};
    void (*handler_)(int);
};

/// Turns a process into that of a user without special rights, for whom what has the rights `mode`
/// has no others. Only for a process that ends with its test.
inline void ActAsPlainUserOn(const std::string& path, std::filesystem::perms mode) {
    constexpr uid_t nobody = 65534;
    if (::geteuid() == 0 && (::chown(path.c_str(), nobody, nobody) != 0)) std::_Exit(77);
    std::filesystem::permissions(path, mode);
    if (::geteuid() == 0 && ::setresuid(nobody, nobody, nobody) != 0) std::_Exit(78);
}

}  // namespace orvantis

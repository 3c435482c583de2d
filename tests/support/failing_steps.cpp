#include "support/failing_steps.h"

#include <cerrno>
#include <cstdio>
#include <fcntl.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <unistd.h>

namespace orvantis {

namespace {

int failingStep = 0;  // 0: none
bool failsForGood = false;
int steps = 0;

bool Fails() {
    if (failingStep == 0) return false;
    ++steps;
    const bool fails = failsForGood ? steps >= failingStep : steps == failingStep;
    if (fails) errno = ENOSPC;
    return fails;
}

bool hasSecondNames = true;

}  // namespace

FailingSteps::FailingSteps(int step, bool forGood) {
    failingStep = step;
    failsForGood = forGood;
    steps = 0;
}

FailingSteps::~FailingSteps() {
    failingStep = 0;
}

bool FailingSteps::Reached() const {
    return steps >= failingStep;
}

DiskWithoutSecondNames::DiskWithoutSecondNames() {
    hasSecondNames = false;
}

DiskWithoutSecondNames::~DiskWithoutSecondNames() {
    hasSecondNames = true;
}

}  // namespace orvantis

// These take the place of the system's in the program of the tests.
extern "C" {

int rename(const char* from, const char* to) noexcept {
    if (orvantis::Fails()) return -1;
    return ::renameat(AT_FDCWD, from, AT_FDCWD, to);
}

int link(const char* from, const char* to) noexcept {
    if (orvantis::Fails()) return -1;
    if (!orvantis::hasSecondNames) {
        errno = EPERM;
        return -1;
    }
    return ::linkat(AT_FDCWD, from, AT_FDCWD, to, 0);
}

int unlink(const char* path) noexcept {
    if (orvantis::failsForGood && orvantis::Fails()) return -1;
    return ::unlinkat(AT_FDCWD, path, 0);
}

int chmod(const char* path, mode_t mode) noexcept {
    if (orvantis::Fails()) return -1;
    return ::fchmodat(AT_FDCWD, path, mode, 0);
}

int fchmod(int descriptor, mode_t mode) noexcept {
    if (orvantis::Fails()) return -1;
    return static_cast<int>(::syscall(SYS_fchmod, descriptor, mode));
}

int fsync(int descriptor) {
    if (orvantis::Fails()) return -1;
    return static_cast<int>(::syscall(SYS_fsync, descriptor));
}

ssize_t pwrite(int descriptor, const void* bytes, size_t size, off_t offset) {
    if (orvantis::Fails()) return -1;
    return ::syscall(SYS_pwrite64, descriptor, bytes, size, offset);
}

}  // extern "C"

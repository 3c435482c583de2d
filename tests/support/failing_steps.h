// A disk that fails at a chosen step, for tests that prove that nothing is lost by it, whichever
// step it is.
#pragma once

namespace orvantis {

/// As long as it lives the calls that write, settle, rename or link a file, or set its rights, are
/// counted, and the one of a number fails as on a full disk. With `forGood` those that delete a
/// file are counted too, and all behind the one fail with it, as in a program that was ended there.
/// One at a time.
class FailingSteps {
  public:
    explicit FailingSteps(int step, bool forGood = false);
    ~FailingSteps();
    FailingSteps(const FailingSteps&) = delete;
    FailingSteps& operator=(const FailingSteps&) = delete;

    /// True if the step has come.
    bool Reached() const;
};

/// As long as it lives no file gets a second name, as on a disk that can't give it.
class DiskWithoutSecondNames {
  public:
    DiskWithoutSecondNames();
    ~DiskWithoutSecondNames();
    DiskWithoutSecondNames(const DiskWithoutSecondNames&) = delete;
    DiskWithoutSecondNames& operator=(const DiskWithoutSecondNames&) = delete;
};

}  // namespace orvantis

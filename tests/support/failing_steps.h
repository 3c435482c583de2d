// A disk that fails at a chosen step, for tests that prove that nothing is lost by it, whichever
// step it is.
#pragma once

namespace orvantis {

/// As long as it lives the calls that write, settle, rename or link a file, or set its rights, are
/// counted, and the one of a number fails as on a full disk; with `forGood` all behind it do too,
/// as in a program that was ended there, and no file is deleted any more. One at a time.
class FailingSteps {
  public:
    explicit FailingSteps(int step, bool forGood = false);
    ~FailingSteps();
    FailingSteps(const FailingSteps&) = delete;
    FailingSteps& operator=(const FailingSteps&) = delete;

    /// True if the step has come.
    bool Reached() const;
};

}  // namespace orvantis

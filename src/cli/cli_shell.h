// The shell of the command line: boxes become lines on standard error, questions are answered with
// the choice that changes nothing.
#pragma once

#include "surface/null_shell.h"

namespace orvantis::cli {

class CliShell : public NullShell {
  public:
    BoxAnswer MessageBox(std::string_view text, std::string_view title, BoxButtons buttons,
                         BoxIcon icon) override;
    LocalTime Now() override;

    bool complained = false;  ///< some box has been shown
};

}  // namespace orvantis::cli

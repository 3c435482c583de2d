// The shell of the command line: boxes become lines on standard error, questions are answered with
// the choice that changes nothing.
#pragma once

#include "surface/shell.h"

namespace orvantis::cli {

class CliShell : public Shell {
  public:
    BoxAnswer MessageBox(std::string_view text, std::string_view title, BoxButtons buttons,
                         BoxIcon icon) override;
    std::optional<std::string> ChooseFile(std::string_view title, std::string_view filter,
                                          bool forSaving) override;
    std::optional<Colour> ChooseColour(std::string_view title, Colour colour) override;
    void SetTitle(std::string_view title) override;
    void SetPointer(Pointer pointer) override;
    void ShowProgress(std::string_view text, std::int16_t percent) override;
    void DoEvents() override;
    LocalTime Now() override;

    bool complained = false;  ///< some box has been shown
};

}  // namespace orvantis::cli

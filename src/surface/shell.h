// The shell: what the program asks of the desktop around it. Every operation is one that a user
// sees or answers, or one that tests have to fix: the clock, the folders, the locale.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "surface/values.h"

namespace orvantis {

enum class BoxButtons { Ok, OkCancel, YesNo, YesNoCancel, RetryCancel };
enum class BoxIcon { None, Information, Exclamation, Question, Error };
enum class BoxAnswer { Ok, Cancel, Yes, No, Retry, Abort, Ignore };

enum class Pointer { Default, Hourglass, Cross, Move };

/// A moment of the system's clock in local civil time.
struct LocalTime {
    std::int16_t year = 2000;
    std::int16_t month = 1;
    std::int16_t day = 1;
    std::int16_t hour = 0;
    std::int16_t minute = 0;
    std::int16_t second = 0;
};

class Shell {
  public:
    virtual ~Shell() = default;

    /// Shows a modal box. Text and title are bytes of code page 1252, lines joined by CRLF.
    virtual BoxAnswer MessageBox(std::string_view text, std::string_view title, BoxButtons buttons,
                                 BoxIcon icon) = 0;

    /// Asks for a file. `filter` is a pattern such as "*.ovm". No value: cancelled.
    virtual std::optional<std::string> ChooseFile(std::string_view title, std::string_view filter,
                                                  bool forSaving) = 0;

    /// Asks for a colour, starting from `colour`. No value: cancelled.
    virtual std::optional<Colour> ChooseColour(std::string_view title, Colour colour) = 0;

    /// Sets the title of the main window.
    virtual void SetTitle(std::string_view title) = 0;

    virtual void SetPointer(Pointer pointer) = 0;

    /// Shows the status panel with a text and a share of work done in percent; an empty text takes
    /// the panel down.
    virtual void ShowProgress(std::string_view text, std::int16_t percent) = 0;

    /// Lets waiting events run.
    virtual void DoEvents() = 0;

    /// Present moment by the system's clock.
    virtual LocalTime Now() = 0;
};

}  // namespace orvantis

// What a typed text means, and the text of a value, as one row of JSON each.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "surface/null_shell.h"

namespace orvantis::cli {

/// What a text gave, or what a value is written as.
struct TextOutcome {
    bool accepted = false;
    std::string values;     ///< items of a JSON list, "" if refused
    std::string formatted;  ///< bytes of code page 1252, "" if refused
};

/// Options of angles.
struct AngleOptions {
    std::int16_t style = 0;   ///< one of angle_style
    std::int16_t digits = 2;  ///< figures of the degrees
    bool symbols = false;
    bool minutesOnly = false;
    bool forceSeconds = false;
    bool plusSign = false;
};

using ParseRoutine = TextOutcome (*)(std::string_view text);
using FormatRoutine = TextOutcome (*)(std::string_view value, const AngleOptions& options);

/// One kind of text. Null where a kind can't be read.
struct TextKind {
    std::string_view name;
    ParseRoutine parse;
    FormatRoutine format;
};

/// The kind of a name; null if there is none.
const TextKind* FindTextKind(std::string_view name);

/// A shell that keeps the boxes instead of showing them.
class BoxKeeper : public NullShell {
  public:
    struct Box {
        std::string title;
        std::string text;
    };

    BoxAnswer MessageBox(std::string_view text, std::string_view title, BoxButtons buttons,
                         BoxIcon icon) override;

    std::vector<Box> boxes;
};

/// Appends the row of a text, with the line's end. `text` is UTF-8 as it was given; what isn't
/// becomes the replacement character.
void AppendRow(std::string& rows, std::string_view text, const TextOutcome& outcome,
               const std::vector<BoxKeeper::Box>& boxes);

}  // namespace orvantis::cli

// The boxes of the parsers as the scripted shell logs them.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace orvantis {

/// A box with the stop sign and the button Ok. The lines stand in `text` joined by "\r\n" as they
/// are logged, a backslash and a letter each.
inline std::string StopBox(std::string_view title, std::string_view text) {
    return "MessageBox|" + std::string(title) + "|" + std::string(text) + "|Ok|Error";
}

inline std::string DateBox(std::string_view text) {
    return StopBox("Error in Date", text);
}

inline std::string TimeBox(std::string_view further) {
    return StopBox("Error in Time",
                   R"(The format of the time is not recognised.\r\n)" + std::string(further));
}

using Boxes = std::vector<std::string>;

}  // namespace orvantis

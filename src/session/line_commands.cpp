// The menu "&Lines", which no command opens. Its entries are kept in step with the line styles all
// the same.
#include <array>

#include "session/command_rows.h"
#include "session/settings.h"

namespace orvantis {

namespace {

constexpr std::string_view kMenu = "&Lines";
constexpr std::string_view kTypeMenu = "&Line Type";
constexpr std::int16_t kRiseSet = 1;
constexpr std::int16_t kAscDsc = 2;

CommandOutcome SetLineMode(std::int16_t number) {
    options.lineMode = number;
    return CommandOutcome::Done;
}

bool IsLineMode(std::int16_t number) {
    return options.lineMode == number;
}

CommandOutcome ToggleLineType(std::int16_t number) {
    Flag& displayed = settings.lineStyle[static_cast<std::size_t>(number)].displayed;
    displayed = displayed != 0 ? kFalse : kTrue;
    return CommandOutcome::Done;
}

bool IsLineTypeShown(std::int16_t number) {
    return settings.lineStyle[static_cast<std::size_t>(number)].displayed != 0;
}

std::string RiseLineCaption(std::int16_t /*number*/) {
    return options.lineMode == kAscDsc ? "Asc" : "Rise";
}

std::string SetLineCaption(std::int16_t /*number*/) {
    return options.lineMode == kAscDsc ? "Dsc" : "Set";
}

Command LineTypeRow(std::int16_t number, std::string_view caption,
                    std::string (*captionNow)(std::int16_t) = nullptr) {
    return {.menu = kMenu,
            .caption = caption,
            .number = number,
            .hidden = true,
            .run = ToggleLineType,
            .isChecked = IsLineTypeShown,
            .captionNow = captionNow};
}

// The rows are the table's own.
// clang-format off
const std::array kCommands = {
    Command{.menu = kMenu, .submenu = kTypeMenu, .caption = "&Rise/Set", .end = CommandEnd::Lines,
            .number = kRiseSet, .hidden = true, .run = SetLineMode, .isChecked = IsLineMode},
    Command{.menu = kMenu, .submenu = kTypeMenu, .caption = "&Asc/Dsc", .end = CommandEnd::Lines,
            .number = kAscDsc, .hidden = true, .run = SetLineMode, .isChecked = IsLineMode},
    LineTypeRow(1, "MC"),
    LineTypeRow(2, "IC"),
    LineTypeRow(3, "Rise", RiseLineCaption),
    LineTypeRow(4, "Set", SetLineCaption),
    LineTypeRow(5, "Parans (RS/RS)"),
    LineTypeRow(6, "Parans (RS/Culm)"),
    LineTypeRow(7, "Local Space"),
    LineTypeRow(8, "Local Houses"),
    LineTypeRow(9, "Horizon"),
    LineTypeRow(10, "Ecliptic"),
    LineTypeRow(11, "Signs"),
    Command{.menu = kMenu, .caption = "ReDraw", .end = CommandEnd::Full, .hidden = true},
};
// clang-format on

}  // namespace

std::span<const Command> LineCommands() {
    return kCommands;
}

}  // namespace orvantis

// The rows of the command table, a file for each group of menus, and what they share.
#pragma once

#include <cstdint>
#include <span>
#include <string_view>

#include "session/commands.h"

namespace orvantis {

std::span<const Command> ChartCommands();   ///< "&Chart"
std::span<const Command> MapCommands();     ///< "&Map"
std::span<const Command> StarCommands();    ///< "&Stars", "&Eclipse", "&Reports"
std::span<const Command> LineCommands();    ///< "&Lines", which is hidden
std::span<const Command> OptionCommands();  ///< "&Options", "&Help"

inline constexpr std::string_view kProgramTitle = "Orvantis";

/// Tells the user something, in one line or two.
void Tell(std::string_view first, std::string_view second = "");

/// Tells that no line type of the parans is displayed, before a screen that can switch one on.
void TellNoParanLines();

/// True if a line type from `first` to `last` is displayed.
bool AnyLineTypeOn(std::int16_t first, std::int16_t last);

/// The lines dialog, from its opening to its end.
void ShowLinesDialog();

/// True while a chart is on display.
bool HasChart(std::int16_t number);

/// True if the dialogs that a command needs are there.
bool HasLinesDialog();
bool HasPointsDialog();

/// Picks the source of places: 0 the city files, -1 the atlas, which must be found first. What
/// can't be had leaves, or makes, it 0.
void ChooseAtlas(bool acs);

}  // namespace orvantis

// The keys of the INI files: which key feeds which option, and what goes back at the end.
#pragma once

#include "session/ini_store.h"

namespace orvantis {

inline constexpr std::string_view kOwnSection = "Orvantis";
inline constexpr std::string_view kSiblingSection = "Kelvane";

/// Reads all keys in their order into session, options and textState, after the tables were built;
/// loads the main window when the clock's timer is set; ends with the check marks of the menus,
/// the three lists of chart words and the zone table. Never fails: what can't be read is default.
void ReadIniSettings();

/// Puts the main window where the own INI says, within the screen.
void RestoreMainWindow();

/// Writes the keys that the program keeps between two runs, and "256Colors" last, in one step.
/// Returns the failed flag; no message.
Flag WriteIniSettings();

/// Ticks between two updates of the clock, and the timer's interval in milliseconds, for a step of
/// so many seconds (1 to 30000).
void SetClockStep(std::int16_t seconds);

/// Connection point: the check marks of the menus follow the options.
extern void (*refreshMenuMarks)();

}  // namespace orvantis

// The keys of the INI files: which key feeds which option, and what goes back at the end.
//
// Words (places, zones) stand in the files in UTF-8; a value that isn't well-formed as such is
// taken as code page 1252, in which older files are. Paths stand in the platform's form and in its
// own bytes; "\" between folders is read as well. The program that opens reports is kept as it
// stands. Both are cut to 255 characters (not bytes) when they are read. A path survives, blanks
// and quotes included, unless it is longer, or has in a name what a line or the program's form of
// a path can't hold: a line break (it becomes a blank), a NUL (it ends the path) or a "\" (it
// becomes "/").
#pragma once

#include "session/ini_store.h"

namespace orvantis {

inline constexpr std::string_view kOwnSection = "Orvantis";
inline constexpr std::string_view kSiblingSection = "Kelvane";

/// Reads all keys in their order into session, options and textState; puts the main window where
/// the own INI says, within the screen, before the clock's timer is set; ends with the check marks
/// of the menus, the three lists of chart words and the zone table. Never fails: what can't be read
/// is default.
void ReadIniSettings();

/// Writes the keys that the program keeps between two runs, and "256Colors" last, in one step.
/// Returns the failed flag; no message, no run-time error.
Flag WriteIniSettings();

/// Ticks between two updates of the clock, and the timer's interval in milliseconds, for a step of
/// so many seconds (1 to 30000). Sets the timer, which runs only while the AstroClock does.
void SetClockStep(std::int16_t seconds);

/// Connection point: the check marks of the menus follow the options. Whoever gives the window its
/// menus sets it; until then it is empty, and there are no marks to follow.
extern void (*refreshMenuMarks)();

}  // namespace orvantis

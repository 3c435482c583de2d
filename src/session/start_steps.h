// The steps of a start, one routine each. RunSession takes all of them, StartSession those that
// need no window; neither knows a step that the other does in its own way.
#pragma once

#include <string_view>

#include "session/driver.h"
#include "surface/drawing_surface.h"
#include "surface/shell.h"
#include "surface/values.h"

namespace orvantis {

/// Gives the rooms their shell and fills the connection points between them.
void EnterSession(Shell& shell);

/// True if another copy is in the way; the user has been told, and that copy brought forward.
bool SecondCopyIsRefused();

/// Sets the session's own paths, makes its folders and puts the shipped files there.
void FindPaths(const StartPaths& paths);

/// Takes the paths that the sibling's INI names; the highest numbered INI that has one counts.
void FindSibling();

/// True if a call asks for the start screen. `commandLine` is the whole text after the program's
/// name; `hasChart`: the call names a chart in another way, so that it isn't an empty one.
bool StartScreenIsWanted(std::string_view commandLine, bool hasChart);

/// Reads the ephemeris' folder from the own INI and switches the ephemeris on. `installed` is where
/// the system keeps such files, "" unknown.
void StartEphemeris(std::string_view installed);

/// Reads the INI keys, the point selection and the point colours.
void ReadPreferences();

/// Chart number, point selection and colours of the command line.
void ObeyCommandLine(std::string_view commandLine);

/// True if there is no map database; the user has been told.
bool DatabaseIsMissing();

/// Makes the level files anew, with the status panel shown. Files that couldn't be made anew may
/// still serve as they are.
void RebuildLevels();

/// Loads the index of the level files. Returns the failed flag; the user has been told. A start
/// with a window goes on all the same: there is then an index of no lines, or that of a level 1
/// which is no map database.
Flag LoadIndex();

/// Loads the settings of the last run, or the default ones.
void LoadStartSettings();

/// Brings back the map of the last run with its picture, or else the map used last, or a new one.
/// `area` is the size of the map area, in pixels: a picture of another size isn't taken. Returns
/// nonzero if the map has to be drawn anew.
Flag TakeStoredMap(SurfaceSize area);

/// Puts the chart that the sibling hands over under this number into slot 1. Without one, or if it
/// can't be read or calculated, slot 1 holds no positions.
void LoadExchangeChart(std::int16_t number);

/// Shipped files stand in for the user's own where those aren't there: a folder that can't be
/// written to still shows a map with its lines. The path as it is if there is no such file either.
std::string OwnOrShipped(std::string_view path);

/// The two files in which the last map and its picture are kept.
std::string StoredMapPath();
std::string StoredImagePath();

}  // namespace orvantis

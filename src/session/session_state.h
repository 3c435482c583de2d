// The one process-wide record of the session: where the data lies, what is on display, and the
// two interfaces through which the program reaches the world.
#pragma once

#include <array>
#include <cstdint>
#include <string>

#include "surface/drawing_surface.h"
#include "surface/shell.h"
#include "surface/values.h"

namespace orvantis {

struct SessionState {
    // Set by whoever starts the program; never null while a routine of the session runs.
    Shell* shell = nullptr;             ///< message boxes and the rest of the desktop
    DrawingSurface* picture = nullptr;  ///< the main picture, which shows the map

    std::string IniDir;      ///< INI files given by a bare name; trailing backslash
    std::string ProgramDir;  ///< the database and the stored image; trailing backslash
    std::string ShippedDir;  ///< what the program comes with, read only; "" none, or trailing "\\"
    std::string UserDataPath;    ///< settings, maps, selections, city files; trailing backslash
    std::string SystemDataPath;  ///< exchange files and ephemeris tables; trailing backslash
    std::string InterpPath;      ///< interpretation files; trailing backslash
    std::string SwissEphemPath;  ///< Swiss Ephemeris files; native path, no trailing separator
    std::string VersionText;     ///< major, minor and revision number joined by points

    std::string OwnIni;               ///< the program's own INI, a bare name
    std::string SiblingIni;           ///< the sibling's INI, a bare name
    std::uint8_t SiblingVersion = 0;  ///< digit of the sibling's INI that answered, 2 to 9; 0 none
    std::string SiblingUserPath;      ///< point and colour files of the command line; trailing "\\"

    std::string SettingsPath;    ///< settings file last loaded
    std::string SettingsName;    ///< its name without folder and extension
    std::string PointFile;       ///< point selection file
    std::string ColourFile;      ///< point colour file
    std::string UserColourFile;  ///< the user's own point colour file

    std::string StarFile;   ///< file of the fixed stars
    std::string ChartFile;  ///< chart file used last, "" none

    Flag SplashDone = kFalse;        ///< the start screen has had its time
    Flag StartupDone = kFalse;       ///< the first picture has been drawn
    std::int16_t ChartNumber = 0;    ///< number of the chart on display, 0 none
    std::int16_t EclipseNumber = 0;  ///< number of the selected eclipse, 0 none
    Flag AstroClockOn = kFalse;      ///< the AstroClock runs
    Flag Minimised = kFalse;         ///< the main window is minimised; the clock waits

    std::array<std::string, 4> RecentMaps;  ///< recent map documents, most recent first
    std::int16_t RecentCount = 0;           ///< entries of RecentMaps in use, 0 to 4

    Image StoredImage;  ///< the map as last drawn, without any chart lines; width 0 while it is
                        ///< drawn anew, and after that was given up
};

extern SessionState session;

}  // namespace orvantis

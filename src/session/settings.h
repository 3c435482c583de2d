// The user's preferences: the settings record and its file, the options that come from INI keys,
// point selection and point colours.
#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <string_view>

#include "surface/values.h"

namespace orvantis {

/// How the lines of one line type are drawn.
struct LineStyle {
    Flag displayed = kFalse;       ///< nonzero: lines of this type are drawn
    Flag planetColour = kFalse;    ///< nonzero: the colour of the line's point is taken
    Colour colour = 0;             ///< colour of the line where planetColour is 0
    std::int16_t thickness = 1;    ///< pixels, 1 or more
    std::int16_t style = 0;        ///< 0 solid, 1 dash, 2 dot, 3 dash dot, 4 dash dot dot
    std::int16_t symbolShape = 0;  ///< box of its labels: 0 rectangle, 1 rounded, 2 ellipse
};

inline constexpr std::size_t kLineTypeCount = 15;

/// Line styles before any settings file is read, indexed by line type 0 to 14.
std::array<LineStyle, kLineTypeCount> DefaultLineStyles();

/// The image of a settings file. A file may hold any bytes, and they are kept for the next save;
/// who draws holds them in bounds: pens 1 to 64 pixels wide, styles 0 to 4, shapes 0 to 2, glyphs 1
/// to 72 points (a size that is no number counts as 1), fonts as the surface can.
struct Settings {
    std::string description;              ///< up to 80 characters
    Colour mapBackColour = 0x80FF00;      ///< the land: what the map is cleared to
    Colour specialFillColour = 0xC0C0C0;  ///< the sea
    std::array<LineStyle, kLineTypeCount> lineStyle = DefaultLineStyles();
    float symbolSize = 9;                    ///< glyphs on the map, points
    std::string textFontName = "QX Symbol";  ///< font of names on the map, up to 30 characters
    float textFontSize = 8.25F;              ///< points
    Flag textFontBold = kFalse;
    Flag textFontItalic = kFalse;
};

/// Options that live in the INI file or are set by a command alone.
struct Options {
    std::int16_t ayanamsa = 1;           ///< zodiac of new charts, 1 to 10; 1 tropical
    double userSVP = 0;                  ///< base of zodiac 10, degrees
    std::int16_t houseSystem = 5;        ///< house system of new charts, 1 to 9; 5 Placidus
    Flag trueNode = kTrue;               ///< true lunar node, otherwise the mean one
    Flag vulcWeston = kTrue;             ///< Vulcan by L.H.Weston, otherwise by D.Baker
    Flag dayNight = kFalse;              ///< night side shaded
    std::int16_t localLineExtent = 360;  ///< length of local space lines, degrees
    Flag extraAnnotation = kTrue;        ///< edge marks carry a letter for the side of the line
    std::int16_t lineMode = 1;           ///< 1 in mundo ("Rise/Set"), 2 zodiacal ("Asc/Dsc")
    std::int16_t mapZodiac = 0;          ///< 0 celestial, 1 geodetic
    double geodeticStart = 0;            ///< longitude of 0 Aries of the geodetic zodiac, degrees,
                                         ///< WEST positive
    Flag geodeticAscDsc = kTrue;         ///< geodetic rise and set lines worked on the equator
    std::int16_t paranPoint = 1;         ///< point number whose parans are drawn
    float paranLimit = 60;               ///< latitude beyond which no paran is drawn, degrees
    Flag holdRefresh = kFalse;           ///< no refreshes of the picture during a plot
    Flag lineNumbers = kFalse;           ///< the codes of the map's lines are written on the map
    Flag fillPoints = kFalse;            ///< the seeds of fills are marked on the map
    std::int16_t eclipseStep = 25;       ///< step along an eclipse's path, 5 to 50
    Flag acsAtlas = kFalse;              ///< places come from the atlas, otherwise from city files
    Flag acsEmbedded = kFalse;           ///< handed to the atlas
    std::int16_t clockStep = 6;          ///< AstroClock: ticks of the timer between two updates
    std::int32_t clockInterval = 10000;  ///< AstroClock: the timer's interval, milliseconds
    Flag storeImages = kFalse;           ///< views keep their pictures, also between two runs
    Flag paletteApplied = kFalse;        ///< the palette picture was applied (256 colours)
    Flag rtfOn = kTrue;                  ///< reports in rich text, otherwise plain
    std::string wordProcessor = "WRITE.EXE";    ///< program that opens reports: a path in the
                                                ///< platform's form and its own bytes
    float repFontSize = 12;                     ///< font size in reports, points, 6 to 36
    std::int16_t userTTOption = 0;              ///< choice of time table, 0 to 3
    Flag showAscOnHorizonChart = kFalse;        ///< the local horizon chart shows the Ascendant
    std::string defaultPlace = "Nowhere";       ///< the AstroClock's home
    std::string defaultCountry = "Nowhere";     ///< its country
    std::string defaultTimeZone = "GMT +0:00";  ///< its zone text
    std::string defaultLatitude = "00N00";      ///< its latitude text
    std::string defaultLongitude = "000W00";    ///< its longitude text
};

inline constexpr std::size_t kPointCount = 72;

extern Settings settings;
extern Options options;

/// Nonzero: the point is drawn. Points 1 to 72; element 0 stands unused.
extern std::array<Flag, kPointCount + 1> pointSelection;

/// Colour of each point. Points 1 to 72; element 0 stands unused.
extern std::array<Colour, kPointCount + 1> pointColour;

/// The land colour, to which the map is cleared, and the sea colour of fills.
inline Colour LandColour() {
    return settings.mapBackColour;
}
inline Colour SeaColour() {
    return settings.specialFillColour;
}

/// Reads points 1 to 36 from a point selection file. A missing file changes nothing; a record past
/// the end of a short file reads as selected. Points 2 and 22 to 26 are never selected by a file.
/// Neither this nor any other reader here leaves a run-time error.
void LoadPointSelection(std::string_view path);

/// Writes points 1 to 36, names and flags. Failures are ignored.
void SavePointSelection(std::string_view path);

/// Reads points 1 to 36 from a point colour file, of 16-bit classic colour numbers (shorter than
/// 73 bytes) or of 32-bit colours. A missing file changes nothing; a record past the end, or a
/// number that is no classic colour's, leaves its point's colour.
void LoadPointColours(std::string_view path);

/// Writes the colours of points 1 to 36 to `UserColourFile`.
void SaveUserPointColours();

/// Reads a settings file and keeps its path and name. A failed open or a short file leaves the
/// settings in memory as they were. With `redraw` set a full plot follows. Returns the failed flag.
Flag LoadSettings(std::string_view path, Flag redraw);

/// Connection point: the full plot that follows new settings.
extern void (*plotAfterSettings)();

/// Writes the settings as a settings file under this description, trimmed, up to 80 characters.
/// SettingsPath stays. False on a failure, which is told; the description then stays too.
bool SaveSettings(std::string_view path, std::string_view description);

/// One of the sixteen classic colours, 0 to 15; 0 (black) for any other number.
Colour ClassicColour(std::int16_t index);

}  // namespace orvantis

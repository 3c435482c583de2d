// What the dialogs about the display do, without a window: lines, their styles, points, point
// colours, and the start of the geodetic zodiac. A form fills a record, calls the routine of what
// was left or pressed, and shows the record again. Cancel drops the record and changes nothing.
//
// "OK" goes in this order: what may be refused is asked while the form is up, which stays if it is;
// then the form closes; then its Accept routine takes the record over and plots. So no plot has a
// form of its own before it, but for the one that "&Apply" of the point colours asks for while its
// form stays up.
#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "session/settings.h"
#include "surface/drawing_surface.h"
#include "surface/values.h"

namespace orvantis {

// ---- "Select Lines" ----

inline constexpr std::int16_t kLineBoxes = 11;  ///< line types 1 to 11 have a box

struct LinesForm {
    std::int16_t lineMode = 1;     ///< 1 "In Mundo", 2 "Zodiacal"
    std::array<bool, 12> shown{};  ///< boxes of line types 1 to 11; 0 stands unused
    std::string paranLimit;        ///< text of "&Limit of Lat", degrees
    std::string paranCaption;      ///< of the button: "Parans of..", and once the chooser has
                                   ///< been there "Parans of " and the point's name
};

LinesForm OpenLines();

/// Captions of the boxes of types 1 to 11 in a line mode; the first four follow it. "" for any
/// other type.
std::string_view LineBoxCaption(std::int16_t type, std::int16_t lineMode);

/// "&Parans of..": the points dialog in its single-choice mode over this one. What was chosen there
/// holds at once; the button's caption then names the point. If the form has no paran line type on,
/// the user is told first that he will see nothing of it.
void ChooseParanPoint(LinesForm& form);

/// After "OK": takes the form over; with a chart on display its lines are drawn anew. Any finite
/// number is a limit; one that a float can't hold is the largest that it can.
void AcceptLines(const LinesForm& form);

// ---- "Lines & Symbols" ----

inline constexpr std::int16_t kStyledLines = 13;  ///< line types 1 to 13 can be styled

struct PrefsForm {
    std::array<LineStyle, kLineTypeCount> lineStyle{};  ///< 1 to 13 are edited, the others stay
    Colour landColour = 0;
    Colour seaColour = 0;
    float symbolSize = 9;  ///< points
};

PrefsForm OpenPrefs();

/// The three colour buttons: asks for a colour; false: cancelled.
bool ChooseLineColour(PrefsForm& form, std::int16_t type);
bool ChooseSeaColour(PrefsForm& form);
bool ChooseLandColour(PrefsForm& form);

/// Draws the sample of a line type over the whole surface: a line over land and sea, as it would
/// come out on the map, with a label. Lines of points are those of the Moon.
void DrawLineSample(DrawingSurface& surface, const PrefsForm& form, std::int16_t type);

/// After "OK": takes the form over and plots in full.
void AcceptPrefs(const PrefsForm& form);

// ---- "Select Planets", "Select Paran Planet/Star", "Select Stars" ----

namespace point_dialog {
inline constexpr std::int16_t kPoints = 0;
inline constexpr std::int16_t kParanPoint = 1;
inline constexpr std::int16_t kStars = 2;
}  // namespace point_dialog

struct PointsForm {
    std::int16_t mode = point_dialog::kPoints;
    std::vector<std::int16_t> points;  ///< point numbers of the list's entries, in order
    std::vector<bool> chosen;          ///< of each entry
};

/// The list holds the points 1 to 36, the stars (37 to 72) that there are, or both for a paran.
PointsForm OpenPoints(std::int16_t mode);
std::string_view PointsTitle(std::int16_t mode);

/// "&Default": the selection as the point selection file has it, the user's own or else the shipped
/// one, as at the start. The session's own stays as it is until "OK"; so does the paran point,
/// which is in no file.
void DefaultPoints(PointsForm& form);

/// "OK": false if the form stays, since more than one paran point is chosen; the user has been
/// told.
bool CheckPoints(const PointsForm& form);

/// After "OK": takes a checked choice over and draws the lines anew; without a chart the user is
/// told that there is none to draw. A paran point of which none is chosen stays the one it was.
void AcceptPoints(const PointsForm& form);

// ---- "Select Planet Colors" ----

struct PointColoursForm {
    std::array<Colour, kPointCount + 1> colours{};  ///< 1 to 72
    std::int16_t point = 1;                         ///< the selected one
};

PointColoursForm OpenPointColours();

/// "&Palette...": asks for the colour of the selected point; false: cancelled.
bool ChoosePointColour(PointColoursForm& form);

/// "&Apply": takes the colours over and draws the lines anew, while the form stays up.
void ApplyPointColours(const PointColoursForm& form);

/// "&Save...": asks, and writes the session's colours to the user's own colour file: those of the
/// form only once they have been applied.
void SavePointColours();

// ---- "User Input" ----

struct ZodiacStartForm {
    std::string text;  ///< longitude
};

ZodiacStartForm OpenZodiacStart();

/// On leaving the field: the text in normal form. False: it can't be read, the user has been told.
bool LeaveZodiacStart(ZodiacStartForm& form);

/// "OK": stores the start. False: the form stays, and nothing has changed. The plot is the
/// command's.
bool AcceptZodiacStart(ZodiacStartForm& form);

// ---- Colours ----

/// "Color Palette - 256 Color Display".
struct PaletteForm {
    std::string title;            ///< what the colour is for: stands above the grid
    std::vector<Colour> entries;  ///< the display's palette
    std::int16_t chosen = 0;      ///< index of the chosen entry
};

/// Its title.
inline constexpr std::string_view kPaletteCaption = "Color Palette - 256 Color Display";

/// The 256 colours of such a display: the twenty fixed ones of the system, a cube of six levels of
/// red, green and blue, and twenty greys.
std::vector<Colour> DisplayPalette();

/// Asks for a colour, starting from `colour`: through the palette form on a display of at most 256
/// colours, else through the system's dialog. Every choice of a colour goes this way. No value:
/// cancelled.
std::optional<Colour> AskColour(std::string_view title, Colour colour);

// ---- Connection points: the forms themselves, modal. Each calls the routines above, the Accept
// routine behind its "OK" included, and comes back when that is done. True: closed by "OK", or with
// something applied. ----

extern bool (*showLinesForm)(LinesForm& form);
extern bool (*showPrefsForm)(PrefsForm& form);
extern bool (*showPointsForm)(PointsForm& form);
extern bool (*showPointColoursForm)(PointColoursForm& form);
extern bool (*showZodiacStartForm)(ZodiacStartForm& form);
extern bool (*showPaletteForm)(PaletteForm& form);

}  // namespace orvantis

// What the dialogs about the display do, without a window: lines, their styles, points, point
// colours, and the start of the geodetic zodiac. A form fills a record, calls the routine of what
// was left or pressed, and shows the record again. Cancel drops the record and changes nothing.
#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "session/settings.h"
#include "surface/values.h"

namespace orvantis {

// ---- "Select Lines" ----

struct LinesForm {
    std::int16_t lineMode = 1;     ///< 1 "In Mundo", 2 "Zodiacal"
    std::array<bool, 12> shown{};  ///< boxes of line types 1 to 11; 0 stands unused
    std::string paranLimit;        ///< text of "&Limit of Lat", degrees
    std::string paranCaption;      ///< of the button: "Parans of " and the point's name
};

LinesForm OpenLines();

/// Captions of the boxes of types 1 to 11 in a line mode; the first four follow it.
std::string_view LineBoxCaption(std::int16_t type, std::int16_t lineMode);

/// "&Parans of..": the points dialog in its single-choice mode over this one.
void ChooseParanPoint(LinesForm& form);

/// "OK": takes the form over; a chart on display is drawn anew.
void AcceptLines(const LinesForm& form);

// ---- "Lines & Symbols" ----

struct PrefsForm {
    std::array<LineStyle, 15> lineStyle{};  ///< 1 to 13 and 14
    Colour landColour = 0;
    Colour seaColour = 0;
    float symbolSize = 9;  ///< points
};

PrefsForm OpenPrefs();

/// The three colour buttons: asks for a colour; false: cancelled.
bool ChooseLineColour(PrefsForm& form, std::int16_t type);
bool ChooseSeaColour(PrefsForm& form);
bool ChooseLandColour(PrefsForm& form);

/// "OK": takes the form over and plots in full.
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

PointsForm OpenPoints(std::int16_t mode);
std::string_view PointsTitle(std::int16_t mode);
void DefaultPoints(PointsForm& form);

/// "OK". False: the form stays, the user has been told why.
bool AcceptPoints(const PointsForm& form);

// ---- "Select Planet Colors" ----

struct PointColoursForm {
    std::array<Colour, 73> colours{};  ///< 1 to 72
    std::int16_t point = 1;            ///< the selected one
};

PointColoursForm OpenPointColours();
bool ChoosePointColour(PointColoursForm& form);
void ApplyPointColours(const PointColoursForm& form);
void SavePointColours(const PointColoursForm& form);

// ---- "User Input" ----

struct ZodiacStartForm {
    std::string text;  ///< longitude
};

ZodiacStartForm OpenZodiacStart();

/// On leaving the field: the text in normal form. False: it can't be read, the user has been told.
bool LeaveZodiacStart(ZodiacStartForm& form);

/// "OK". False: the form stays.
bool AcceptZodiacStart(ZodiacStartForm& form);

// ---- Connection points: the forms themselves. True: closed by "OK". ----

extern bool (*showLinesForm)(LinesForm& form);
extern bool (*showPrefsForm)(PrefsForm& form);
extern bool (*showPointsForm)(PointsForm& form);
extern bool (*showPointColoursForm)(PointColoursForm& form);
extern bool (*showZodiacStartForm)(ZodiacStartForm& form);
extern bool (*showMapOptionsForm)();
extern bool (*showSaveMapForm)();

}  // namespace orvantis

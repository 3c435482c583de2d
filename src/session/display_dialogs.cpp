#include "session/display_dialogs.h"

#include <algorithm>
#include <limits>

#include "lines/chart_lines.h"
#include "session/command_rows.h"
#include "session/commands.h"
#include "session/session_state.h"
#include "session/start_steps.h"
#include "session/tables.h"
#include "surface/label.h"
#include "text/coordinates.h"
#include "text/number_text.h"
#include "text/numbers.h"
#include "text/strings.h"

namespace orvantis {

bool (*showLinesForm)(LinesForm& form) = nullptr;
bool (*showPrefsForm)(PrefsForm& form) = nullptr;
bool (*showPointsForm)(PointsForm& form) = nullptr;
bool (*showPointColoursForm)(PointColoursForm& form) = nullptr;
bool (*showZodiacStartForm)(ZodiacStartForm& form) = nullptr;
bool (*showPaletteForm)(PaletteForm& form) = nullptr;

namespace {

constexpr std::int16_t kFirstStar = 37;
constexpr std::int16_t kZodiacal = 2;
constexpr std::int16_t kMoon = 1;

std::size_t Index(std::int16_t number) {
    return static_cast<std::size_t>(number);
}

void DrawLinesAnew() {
    if (plotLinesAnew != nullptr) plotLinesAnew();
}

}  // namespace

// ---- "Select Lines" ----

namespace {

constexpr std::array<std::string_view, kLineBoxes + 1> kBoxCaptions = {"",
                                                                       "Culminate",
                                                                       "Anticulminate",
                                                                       "Rise",
                                                                       "Set",
                                                                       "Rise/Set to Rise/Set",
                                                                       "Rise/Set to Culm/Anti",
                                                                       "Planet Directions",
                                                                       "Local Houses",
                                                                       "Local Horizon",
                                                                       "Ecliptic",
                                                                       "Zodiacal Signs"};
constexpr std::array<std::string_view, 5> kZodiacalCaptions = {"", "MC", "IC", "Asc", "Dsc"};

float Limit(std::string_view text) {
    constexpr double kLargest = std::numeric_limits<float>::max();
    return static_cast<float>(std::clamp(NumericValue(text), -kLargest, kLargest));
}

}  // namespace

LinesForm OpenLines() {
    LinesForm form;
    form.lineMode = options.lineMode;
    for (std::int16_t type = 1; type <= kLineBoxes; ++type) {
        form.shown[Index(type)] = settings.lineStyle[Index(type)].displayed != 0;
    }
    form.paranLimit = ShortNumberText(options.paranLimit);
    form.paranCaption = "Parans of..";
    return form;
}

std::string_view LineBoxCaption(std::int16_t type, std::int16_t lineMode) {
    if (type < 1 || type > kLineBoxes) return "";
    if (lineMode == kZodiacal && type <= line_type::kSet) return kZodiacalCaptions[Index(type)];
    return kBoxCaptions[Index(type)];
}

void ChooseParanPoint(LinesForm& form) {
    if (!form.shown[line_type::kParanRiseRise] && !form.shown[line_type::kParanRiseCulm]) {
        TellNoParanLines();
    }
    PointsForm points = OpenPoints(point_dialog::kParanPoint);
    if (showPointsForm != nullptr) showPointsForm(points);
    form.paranCaption = "Parans of " + std::string(PointName(options.paranPoint));
}

void AcceptLines(const LinesForm& form) {
    options.lineMode = form.lineMode;
    for (std::int16_t type = 1; type <= kLineBoxes; ++type) {
        settings.lineStyle[Index(type)].displayed = form.shown[Index(type)] ? kTrue : kFalse;
    }
    options.paranLimit = Limit(form.paranLimit);
    if (session.ChartNumber >= 1) DrawLinesAnew();
}

// ---- "Lines & Symbols" ----

namespace {

bool TakeColour(std::string_view title, Colour& colour) {
    const std::optional<Colour> chosen = AskColour(title, colour);
    if (chosen) colour = *chosen;
    return chosen.has_value();
}

// What stands in a label of a line type: a point's glyph, or what its lines are marked with.
std::string SampleLabel(std::int16_t type) {
    constexpr std::int16_t kHouse = 1;
    constexpr std::int16_t kTaurus = 2;
    constexpr std::int16_t kMagnitude = 75;  // hundredths
    switch (type) {
        case line_type::kLocalHouse:
            return LabelText(kHouse, type);
        case line_type::kHorizon:
            return LabelText('H', type);
        case line_type::kEcliptic:
            return LabelText('E', type);
        case line_type::kSigns:
            return LabelText(kTaurus, type);
        default:
            return LabelText(type < line_type::kLocalHouse ? kMoon : kMagnitude, type);
    }
}

Colour SampleColour(const LineStyle& style, std::int16_t type) {
    const bool ofPoint = type <= line_type::kLocalSpace && style.planetColour != 0;
    return PlainColour(ofPoint ? pointColour[Index(kMoon)] : style.colour);
}

}  // namespace

PrefsForm OpenPrefs() {
    return {settings.lineStyle, LandColour(), SeaColour(), settings.symbolSize};
}

bool ChooseLineColour(PrefsForm& form, std::int16_t type) {
    return TakeColour("Select Line Color", form.lineStyle[Index(type)].colour);
}

bool ChooseSeaColour(PrefsForm& form) {
    return TakeColour("Select Sea Color", form.seaColour);
}

bool ChooseLandColour(PrefsForm& form) {
    return TakeColour("Select Land Color", form.landColour);
}

void DrawLineSample(DrawingSurface& surface, const PrefsForm& form, std::int16_t type) {
    const SurfaceSize size = surface.Size();
    const LineStyle& style = form.lineStyle[Index(type)];
    const Colour colour = SampleColour(style, type);

    // Land on the left, sea on the right.
    surface.Clear(PlainColour(form.landColour));
    Pen coast;
    coast.colour = PlainColour(form.seaColour);
    surface.SetPen(coast);
    surface.Rectangle(size.width / 2, 0, size.width, size.height,
                      {FillKind::Solid, PlainColour(form.seaColour)});

    // The bounds are those of the lines on the map.
    Pen pen;
    pen.width = ClampInt(style.thickness, 1, 64);
    pen.dash = static_cast<LineDash>(ClampInt(style.style, 0, 4));
    pen.colour = colour;
    pen.smooth = true;
    surface.SetPen(pen);
    surface.MoveTo(0, size.height / 2);
    surface.LineTo(size.width, size.height / 2);

    const float points = form.symbolSize >= 1 ? std::min(form.symbolSize, 72.0F) : 1;
    surface.SelectFont({std::string(kGlyphFontName), points});
    DrawLabel(surface, size.width / 2, size.height / 2, SampleLabel(type),
              static_cast<LabelShape>(ClampInt(style.symbolShape, 0, 2)), colour);
}

void AcceptPrefs(const PrefsForm& form) {
    for (std::int16_t type = 1; type <= kStyledLines; ++type) {
        settings.lineStyle[Index(type)] = form.lineStyle[Index(type)];
    }
    settings.mapBackColour = form.landColour;
    settings.specialFillColour = form.seaColour;
    settings.symbolSize = form.symbolSize;
    if (plotAnew != nullptr) plotAnew();
}

// ---- "Select Planets", "Select Paran Planet/Star", "Select Stars" ----

namespace {

bool IsListed(std::int16_t point, std::int16_t mode) {
    if (PointName(point).empty()) return false;
    if (mode == point_dialog::kParanPoint) return true;
    return (point >= kFirstStar) == (mode == point_dialog::kStars);
}

std::vector<bool> ChosenNow(const PointsForm& form) {
    std::vector<bool> chosen;
    for (const std::int16_t point : form.points) {
        chosen.push_back(form.mode == point_dialog::kParanPoint
                             ? point == options.paranPoint
                             : pointSelection[Index(point)] != 0);
    }
    return chosen;
}

void TakeParanPoint(const PointsForm& form) {
    for (std::size_t i = 0; i < form.points.size(); ++i) {
        if (form.chosen[i]) options.paranPoint = form.points[i];
    }
}

}  // namespace

PointsForm OpenPoints(std::int16_t mode) {
    PointsForm form;
    form.mode = mode;
    for (std::int16_t point = 1; Index(point) <= kPointCount; ++point) {
        if (IsListed(point, mode)) form.points.push_back(point);
    }
    form.chosen = ChosenNow(form);
    return form;
}

std::string_view PointsTitle(std::int16_t mode) {
    if (mode == point_dialog::kParanPoint) return "Select Paran Planet/Star";
    return mode == point_dialog::kStars ? "Select Stars" : "Select Planets";
}

void DefaultPoints(PointsForm& form) {
    const auto kept = pointSelection;
    LoadPointSelection(OwnOrShipped(session.PointFile));
    form.chosen = ChosenNow(form);
    pointSelection = kept;
}

bool CheckPoints(const PointsForm& form) {
    if (form.mode != point_dialog::kParanPoint) return true;
    if (std::count(form.chosen.begin(), form.chosen.end(), true) <= 1) return true;
    session.shell->MessageBox("You must select only a single point to use as the paran point.",
                              kProgramTitle, BoxButtons::Ok, BoxIcon::Exclamation);
    return false;
}

void AcceptPoints(const PointsForm& form) {
    if (form.mode == point_dialog::kParanPoint) {
        TakeParanPoint(form);
    } else {
        for (std::size_t i = 0; i < form.points.size(); ++i) {
            pointSelection[Index(form.points[i])] = form.chosen[i] ? kTrue : kFalse;
        }
    }

    if (session.ChartNumber >= 1) {
        DrawLinesAnew();
        return;
    }
    std::string text = "No chart is currently being displayed.";
    text.append(kCrLf).append(
        "You must select a chart or create a new chart before the selected points can be "
        "displayed.");
    session.shell->MessageBox(text, "No Chart Selected", BoxButtons::Ok, BoxIcon::Exclamation);
}

// ---- "Select Planet Colors" ----

PointColoursForm OpenPointColours() {
    PointColoursForm form;
    form.colours = pointColour;
    return form;
}

bool ChoosePointColour(PointColoursForm& form) {
    return TakeColour("Select Color of " + std::string(PointName(form.point)),
                      form.colours[Index(form.point)]);
}

void ApplyPointColours(const PointColoursForm& form) {
    pointColour = form.colours;
    DrawLinesAnew();
}

void SavePointColours() {
    if (session.shell->MessageBox("Are you sure that you wish to save the current colors to file "
                                  "for use in future sessions?",
                                  kProgramTitle, BoxButtons::OkCancel,
                                  BoxIcon::Question) == BoxAnswer::Ok) {
        SaveUserPointColours();
    }
}

// ---- "User Input" ----

namespace {

bool ReadZodiacStart(ZodiacStartForm& form, double& start) {
    std::int16_t errorFlag = 0;
    ParseLongitude(form.text, start, errorFlag);
    if (errorFlag != 0) return false;
    form.text = FormatLongitude(start);
    return true;
}

}  // namespace

ZodiacStartForm OpenZodiacStart() {
    return {FormatLongitude(options.geodeticStart)};
}

bool LeaveZodiacStart(ZodiacStartForm& form) {
    double start = 0;
    return ReadZodiacStart(form, start);
}

bool AcceptZodiacStart(ZodiacStartForm& form) {
    return ReadZodiacStart(form, options.geodeticStart);
}

// ---- Colours ----

namespace {

constexpr std::int32_t kPaletteColours = 256;

Colour FromLevels(int red, int green, int blue) {
    return red | green << 8 | blue << 16;
}

int Distance(Colour a, Colour b) {
    int sum = 0;
    for (int shift = 0; shift <= 16; shift += 8) {
        const int difference = (a >> shift & 0xFF) - (b >> shift & 0xFF);
        sum += difference * difference;
    }
    return sum;
}

}  // namespace

std::vector<Colour> DisplayPalette() {
    // Of the system's twenty fixed colours sixteen are the classic ones.
    std::vector<Colour> entries;
    for (std::int16_t i = 0; i < 16; ++i) entries.push_back(ClassicColour(i));
    entries.insert(entries.end(), {0xC0DCC0, 0xF0CAA6, 0xF0FBFF, 0xA4A0A0});

    constexpr int kStep = 51;  // six levels from 0 to 255
    for (int red = 0; red <= 255; red += kStep) {
        for (int green = 0; green <= 255; green += kStep) {
            for (int blue = 0; blue <= 255; blue += kStep) {
                entries.push_back(FromLevels(red, green, blue));
            }
        }
    }
    for (int grey = 12; grey <= 240; grey += 12) entries.push_back(FromLevels(grey, grey, grey));
    return entries;
}

std::optional<Colour> AskColour(std::string_view title, Colour colour) {
    if (session.shell->ScreenColours() > kPaletteColours) {
        return session.shell->ChooseColour(title, PlainColour(colour));
    }

    // The form opens on the entry that comes nearest.
    PaletteForm form{std::string(title), DisplayPalette(), 0};
    const auto nearest = std::min_element(
        form.entries.begin(), form.entries.end(),
        [&](Colour a, Colour b) { return Distance(a, colour) < Distance(b, colour); });
    form.chosen = static_cast<std::int16_t>(nearest - form.entries.begin());
    if (showPaletteForm == nullptr || !showPaletteForm(form)) return std::nullopt;
    return PaletteColour(form.entries[Index(form.chosen)]);
}

}  // namespace orvantis

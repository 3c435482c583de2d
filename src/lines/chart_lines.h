// The lines of a chart on the map: where each point culminates, anticulminates, rises and sets,
// the labels on the map and the marks in its frame.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "surface/values.h"

namespace orvantis {

/// Line types by their number in files.
namespace line_type {
inline constexpr std::int16_t kCulminate = 1;
inline constexpr std::int16_t kAnticulminate = 2;
inline constexpr std::int16_t kRise = 3;
inline constexpr std::int16_t kSet = 4;
inline constexpr std::int16_t kParanRiseRise = 5;  ///< both points on the horizon
inline constexpr std::int16_t kParanRiseCulm = 6;  ///< one of them on the meridian
inline constexpr std::int16_t kLocalSpace = 7;
inline constexpr std::int16_t kLocalHouse = 8;
inline constexpr std::int16_t kHorizon = 9;
inline constexpr std::int16_t kEcliptic = 10;
inline constexpr std::int16_t kSigns = 11;
inline constexpr std::int16_t kEclipseCentral = 12;
inline constexpr std::int16_t kEclipsePartial = 13;
inline constexpr std::int16_t kPointLabel = 14;
}  // namespace line_type

/// What a label says of its place.
enum class LabelPlace : std::uint8_t {
    Other,
    Overhead,  ///< the point stands in the zenith here
    Equator,   ///< its rise or set line crosses the equator here
};

/// A label on the map.
struct LineLabel {
    std::int16_t x = 0;  ///< pixels
    std::int16_t y = 0;
    std::int16_t code = 0;  ///< point number, plus 100 times a relation; or a character, or a sign
    std::int16_t type = 0;  ///< line type, 1 to 14
    LabelPlace place = LabelPlace::Other;
};

struct ChartLinesState {
    std::vector<LineLabel> labels;   ///< labels of the plot in progress
    std::vector<LineLabel> objects;  ///< labels where they were drawn, for a click to find
    bool anyVisible = false;         ///< some line fell within the view
    Flag askedByUser = kFalse;       ///< the next plot follows a user's choice of chart or eclipse:
                                     ///< lines that all fall outside the view are asked about.
                                     ///< Set by the commands that choose a chart.
};

extern ChartLinesState chartLines;

/// Draws all lines of the chart on display, the labels and the edge marks. With `fullPlot` the
/// lists of labels, marks and objects start empty, and stay so without a chart. Answering a
/// question with Cancel clears the chart or the eclipse, and takes all of it off the picture. After
/// a page (`printing` nonzero) the lists of labels and objects are the screen's again. A run-time
/// failure ends all drawing at the line that has it: neither question, labels nor marks follow, and
/// the question stands over until the next plot.
void PlotChartLines(Flag printing, Flag fullPlot, std::int16_t slot);

/// Lines of types 1 and 2, and of types 3 and 4, of every point that is drawn.
void PlotMeridianLines(Flag printing, std::int16_t slot);
void PlotRiseSetLines(Flag printing, std::int16_t slot);

void AddLineLabel(std::int16_t x, std::int16_t y, std::int16_t code, std::int16_t type,
                  LabelPlace place = LabelPlace::Other);

/// Draws the labels, which then are the object list. One whose box would reach over an edge of the
/// map is moved inside, on a globe towards its centre, so that it can be read.
void DrawLineLabels();

/// Draws the marks in the frame around the map, none over another and each beside its own side of
/// the map. Marks that a side has no room for are left out.
void DrawEdgeMarks();

/// Text of a label or mark in the glyph font.
std::string LabelText(std::int16_t code, std::int16_t type);

/// Caption word of a line side: 1 " Upper", 2 " Lower", 3 " Rising", 4 " Setting", otherwise "".
std::string PlotLineAnnotation(std::int16_t code);

/// Connection points, all optional: the caption of the window, and lines of other rooms.
extern void (*refreshCaption)();
extern void (*plotEclipseLines)(Flag printing);

/// Text of a fixed star's label (points 37 to 72); empty while there are no stars.
extern std::string (*starLabel)(std::int16_t point);

}  // namespace orvantis

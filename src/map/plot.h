// The plot: the one routine that puts the map on a surface. Every command that changes what is
// shown ends in it, either as a full redraw, which draws the database anew, or as a quick pass,
// which puts the stored image down and draws the chart's lines alone.
#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <vector>

#include "map/projection.h"
#include "surface/drawing_surface.h"
#include "surface/values.h"

namespace orvantis {

/// Where a coast entered or left the map rectangle.
struct ClipCrossing {
    std::int16_t side = 0;  ///< see namespace side
    std::int16_t x = 0;     ///< pixel of the map rectangle's edge
    std::int16_t y = 0;
    Flag startInside = kFalse;  ///< the segment's start was the inside end
};

/// State of the plot, valid for its length, with two exceptions. What the frame of a zoom held is
/// set before it by the search for colours on the zoom rectangle, and stands until the next search:
/// of a zoom, or of a view that was moved or made larger. `interrupted`, `imageLost` and
/// `screenPlots` tell of the last plot until the next one.
struct PlotState {
    Colour outlineColour = 0;                ///< of the map's lines, and border of every flood
    std::vector<ClipCrossing> crossings{1};  ///< 1 to count; element 0 stands unused
    bool plotted = false;                    ///< some point fell strictly inside the map
    bool islandsOnly = false;                ///< islands stand in the sea, no coast at the edge
    Flag printing = kFalse;                  ///< the target is the printer
    Flag fillSeaOnly = kFalse;               ///< sea was met on the frame of the zoom
    Flag fillOtherColour = kFalse;           ///< and the colour of another fill
    Flag fillLand = kFalse;                  ///< and bare land, or it may be land
    bool zoomTied = false;              ///< zoomedView is that of the zoom; false: of the next plot
    bool seaFillsAdded = false;         ///< the view has its sea fills, or needs none
    std::array<float, 4> zoomedView{};  ///< south, west, north, east: of this view alone the three
                                        ///< flags tell something
    bool inProgress = false;            ///< PlotMap4 runs
    bool interrupted = false;           ///< the user cancelled after a failure
    bool imageLost = false;        ///< the last full plot was given up before it kept its image
    std::int32_t screenPlots = 0;  ///< plots of the screen begun so far: what belongs to the
                                   ///< picture of one of them is known by its number
};

extern PlotState plotState;

/// How a page is printed: set before the plot by whoever opens the page.
struct PrintState {
    std::int32_t colourMode = 0;  ///< 3 or above prints in colour, less in black alone
    double lineWidthFactor = 1;   ///< pixels of the page to one of a line's width; above 0
    Flag inColour = kFalse;       ///< the page in progress is in colour; set by PlotMap4
};

extern PrintState printState;

/// Draws the map on `picture`. `printing` nonzero draws a page: no fills, no images; mapView and
/// the outline's colour are the screen's again afterwards. `redraw` nonzero draws the bare map from
/// the database and keeps it in StoredImage, which is empty from its start until then; zero puts
/// StoredImage down, or draws the map after all if a full plot that was given up has left none. The
/// chart's lines follow in either case. A run-time failure shows a box with Retry, which runs the
/// failed step again, and Cancel, after which the picture stays as it stands. A call while another
/// one runs, from an event that a box or a refresh lets through, does nothing.
void PlotMap4(Flag printing, DrawingSurface& picture, Flag redraw);

/// Draws all line classes that are shown.
void PlotVectors(Flag printing);

/// What the map lies on: the land colour, or the white of a page.
Colour BlankColour();

/// Black, or white on black land. Black on a page.
Colour OutlineColour();

/// A colour of a line or a text as the plot's target shows it: on a page without colours black, as
/// is white on any page.
Colour InkColour(Colour colour);

/// The same for an area: white on such a page.
Colour AreaColour(Colour colour);

/// A line's width of `nominal` (1 or more) in pixels of the plot's target: as it is on the screen,
/// on a page times the factor, at least 1.
int LineWidth(int nominal);

/// Draws the title line of a page on the plot's surface: the chart's heading with the list of its
/// lines on the left, the map's title on the right and, between them, the program's name and
/// version if the title is short. Leaves the page's glyph font selected.
void DrawPageTitle();

/// Connection points, all optional, filled by the session.
extern void (*stopForeignClock)();  ///< clock of another chart
extern void (*plotChartLines)(Flag printing, Flag fullPlot, std::int16_t slot);
extern void (*plotCountryNames)(bool capitals);  ///< labels of countries
extern void (*plotCities)();                     ///< dots and names of cities
extern void (*plotMouseMarks)();                 ///< rulers of the mouse modes
extern std::string (*pageHeading)();             ///< of the chart, for a page; "" none
extern std::string (*pageLines)();  ///< list of the chart's lines, as in the window's title; ""
                                    ///< none: nothing makes such a list yet
extern void (*plotEnded)();         ///< a plot is over, whatever became of it

}  // namespace orvantis

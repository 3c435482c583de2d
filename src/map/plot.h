// The plot: the one routine that puts the map on a surface. Every command that changes what is
// shown ends in it, either as a full redraw, which draws the database anew, or as a quick pass,
// which puts the stored image down and draws the chart's lines alone.
#pragma once

#include <cstdint>
#include <vector>

#include "map/projection.h"
#include "surface/drawing_surface.h"
#include "surface/values.h"

namespace orvantis {

/// Where a coast entered or left the map rectangle.
struct ClipCrossing {
    std::int16_t side = 0;  ///< see namespace side
    std::int16_t x = 0;
    std::int16_t y = 0;
    Flag startInside = kFalse;  ///< the segment's start was the inside end
};

/// State of the plot, valid for its length; fillSeaOnly and fillOtherColour are set before it by
/// the search for colours on a zoom rectangle.
struct PlotState {
    Colour outlineColour = 0;                ///< of the map's lines, and border of every flood
    std::vector<ClipCrossing> crossings{1};  ///< 1 to count; element 0 stands unused
    bool plotted = false;                    ///< some point fell strictly inside the map
    bool islandsOnly = false;                ///< islands stand in the sea, no coast at the edge
    Flag printing = kFalse;                  ///< the target is the printer
    Flag fillSeaOnly = kFalse;
    Flag fillOtherColour = kFalse;
    bool inProgress = false;   ///< PlotMap4 runs
    bool interrupted = false;  ///< the user cancelled after a failure
};

extern PlotState plotState;

/// Draws the map on `picture`. `printing` nonzero draws a page: no fills, no images. `redraw`
/// nonzero draws the bare map from the database and keeps it in StoredImage; zero puts StoredImage
/// down. The chart's lines follow in either case. A run-time failure shows a box with Retry, which
/// runs the failed step again, and Cancel, after which the picture stays as it stands. A call while
/// another one runs, from an event that a box or a refresh lets through, does nothing.
void PlotMap4(Flag printing, DrawingSurface& picture, Flag redraw);

/// Draws all line classes that are shown.
void PlotVectors(Flag printing);

/// Black, or white on black land.
Colour OutlineColour();

/// Connection points, all optional, filled by the session.
extern void (*stopForeignClock)();  ///< clock of another chart
extern void (*plotChartLines)(Flag printing, Flag fullPlot, std::int16_t slot);
extern void (*plotCountryNames)(bool capitals);  ///< labels of countries
extern void (*plotCities)();                     ///< dots and names of cities
extern void (*plotMouseMarks)();                 ///< rulers of the mouse modes

}  // namespace orvantis

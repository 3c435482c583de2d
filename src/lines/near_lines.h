// Which lines of the chart on display pass near a position of the map, by name: for whoever points
// at a line. The lines are found from their geometry, not from the picture, and laid out on the map
// once a plot, when they are first asked for.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace orvantis {

/// A straight piece of a line as it lies on the map.
struct LinePiece {
    float x0 = 0;  ///< pixels
    float y0 = 0;
    float x1 = 0;
    float y1 = 0;
    std::int32_t line = 0;  ///< index of its name
};

/// The lines of the picture on display.
struct PlacedLines {
    std::int32_t plot = -1;  ///< number of the plot (plotState.screenPlots); -1 none
    std::vector<LinePiece> pieces;
    std::vector<std::string> names;  ///< of the lines, such as "The Sun - Rise"
};

extern PlacedLines placedLines;

/// Distance from a line within which a position is near it, pixels: a third of a glyph's height, at
/// least 4.
double LineReach();

/// Names of what lies near a position (pixels) of the map: a label where a point is overhead, with
/// its line of culmination if it is no star and that type is on, then lines, the nearest first;
/// each once. Empty without a chart and off the map.
std::vector<std::string> NamesNear(float x, float y);

}  // namespace orvantis

// Lines that leave the chart's place in a fixed direction: those of the points, and the twelve of
// the local houses. Neither exists in the geodetic zodiac.
#pragma once

#include <array>
#include <cstdint>
#include <vector>

#include "lines/line_geometry.h"
#include "surface/values.h"

namespace orvantis {

/// Direction, 0 to 360 degrees, in which a point stands on the horizon of the chart's place: 0
/// north, 90 WEST, as MakeGreatCircle takes it.
double LocalBearing(const LineFrame& frame, std::int16_t point);

/// A line of the local houses. House 1 looks east, and 10 to where the Midheaven stands, north or
/// south.
struct LocalHouse {
    std::int16_t house = 0;     ///< 1 to 12
    double bearing = 0;         ///< degrees, WEST positive; 90 and -90 are moved by 0.01
    bool isMeridian = false;    ///< due north or south: a whole meridian stands for it
    double longitude = 0;       ///< of that meridian, degrees, east positive
    std::int16_t opposite = 0;  ///< the house whose line is the meridian's other half
};

/// The twelve lines, in the order in which they are drawn.
std::array<LocalHouse, 12> LocalHouses(const LineFrame& frame);

/// A local house's line runs to the antipode of the place, degrees.
inline constexpr std::int16_t kLocalHouseExtent = 180;

/// Positions of a line that leaves the chart's place: every 2 degrees up to `extent`.
std::vector<LinePosition> LocalSamples(const LineFrame& frame, double bearing, std::int16_t extent);

/// Draws lines of types 7 and 8.
void PlotLocalLines(Flag printing, std::int16_t slot);

}  // namespace orvantis

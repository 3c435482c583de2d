// From the arcs of the countries to coasts and borders: coasts chained to whole rings with the land
// on their left, borders as lines between the points where they meet others or the sea.
#pragma once

#include <string>
#include <vector>

#include "geometry.h"
#include "levels.h"
#include "topojson.h"

namespace orvantis::world {

/// A piece of land (or, with a negative area, of water within land) and its whole coast. Its lines
/// are one ring, or the pieces of a ring that the date line cut, which end there.
struct LandMass {
    std::vector<MinLine> rings;
    double area = 0;  ///< km2; below 0: clockwise, the water is inside
};

struct Border {
    MinLine points;
    int first = 0;  ///< the two countries, numbers in the topology
    int second = 0;
};

/// All coasts, the largest area first, with the land on their left.
std::vector<LandMass> CollectLand(const Topology& topology);

/// The borders between two countries, cut at the date line. Leased and buffer territories have no
/// borders of their own.
std::vector<Border> CollectBorders(const Topology& topology);

/// The ends of all borders.
Junctions BorderEnds(const std::vector<Border>& borders);

}  // namespace orvantis::world

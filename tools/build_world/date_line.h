// Cuts lines at the date line, so that no segment leaps across the map.
#pragma once

#include <vector>

#include "geometry.h"

namespace orvantis::world {

/// The pieces of a line between its crossings of longitude 180, each on one side of it. Both
/// pieces of a crossing keep the point of the crossing, on their own side (180 or -180). Edges that
/// run along the date line are dropped.
std::vector<DegLine> CutAtDateLine(const DegLine& line);

}  // namespace orvantis::world

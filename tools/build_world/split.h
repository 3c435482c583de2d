// Cuts lines short. A narrow view breaks the map at the meridian 60 degrees west of its edge, and
// a globe judges a line by two corners of its extents alone; both need lines of small extent.
#pragma once

#include <vector>

#include "geometry.h"

namespace orvantis::world {

/// Greatest extent of a line of the database in latitude and in longitude, arc-minutes.
inline constexpr int kGreatestExtent = 600;

/// The pieces of a line, none of them larger than the greatest extent nor longer than a line of the
/// database may be; neighbours share the point of the cut.
std::vector<MinLine> SplitLine(const MinLine& whole);

}  // namespace orvantis::world

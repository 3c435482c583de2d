// The five levels of detail: which points of a line stand at which level.
#pragma once

#include <set>
#include <utility>
#include <vector>

#include "geometry.h"
#include "map/point_database.h"

namespace orvantis::world {

/// Positions (x, y) at which several lines meet.
using Junctions = std::set<std::pair<int, int>>;

/// Gives each point its level by the Douglas-Peucker rule and drops the points that the finest
/// tolerance doesn't need. Both ends and every junction have level 5. The levels are nested: what a
/// coarser level draws goes through points that every finer level draws too.
std::vector<LinePoint> AssignLevels(const MinLine& line, const Junctions& junctions);

}  // namespace orvantis::world

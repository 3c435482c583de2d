// Lines between the states of one country: the edges that two of them share.
#pragma once

#include <string>
#include <vector>

#include "geometry.h"
#include "geopackage.h"

namespace orvantis::world {

struct StateLine {
    MinLine points;
    std::string name;  ///< the two states where the line begins, code page 1252
};

/// The countries whose states are shown: those that a map of the world has room for.
const std::vector<std::string>& CountriesWithStates();

/// Lines along the shared edges, as long as they can be made.
std::vector<StateLine> CollectStateLines(const std::vector<State>& states);

}  // namespace orvantis::world

// Lakes and rivers.
#pragma once

#include <string>
#include <vector>

#include "geometry.h"
#include "names.h"
#include "pn2.h"

namespace orvantis::world {

struct WaterLine {
    MinLine points;
    std::string name;  ///< code page 1252
};

/// Shores of lakes, with the water on their right: clockwise, and islands in them counterclockwise.
/// The Caspian isn't among them: it is a coast. A lake has the name of the place that lies in it.
std::vector<WaterLine> CollectLakes(const std::vector<Pn2Feature>& features,
                                    const std::vector<PlaceName>& names);

/// Courses of rivers, joined where no third one meets them. The names are those of the places next
/// to them.
std::vector<WaterLine> CollectRivers(const std::vector<Pn2Feature>& features,
                                     const std::vector<PlaceName>& names);

}  // namespace orvantis::world

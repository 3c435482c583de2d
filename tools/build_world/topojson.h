// Reads the countries of a TopoJSON topology (the format of the npm package topojson): arcs
// that are shared between neighbours, so that a coast is an arc of one country and a border an arc
// of two.
#pragma once

#include <string>
#include <vector>

#include "geometry.h"

namespace orvantis::world {

/// One use of an arc in the ring of a country.
struct ArcUse {
    int country = 0;       ///< number in Topology::countries
    bool forward = false;  ///< the ring runs along the arc, not against it
};

struct Topology {
    std::vector<std::string> countries;      ///< names, UTF-8
    std::vector<DegLine> arcs;               ///< degrees, de-quantised
    std::vector<std::vector<ArcUse>> usage;  ///< for each arc
};

/// Reads the object "countries". False, with the reason in `error`, if that can't be done.
bool ReadTopology(const std::string& path, Topology& topology, std::string& error);

}  // namespace orvantis::world

// Reads the states and provinces of a GeoPackage (OGC 12-128r12): an SQLite file whose geometries
// are WKB behind a short header.
#pragma once

#include <string>
#include <vector>

#include "geometry.h"

namespace orvantis::world {

struct State {
    std::string country;         ///< three letters, ISO 3166
    std::string name;            ///< UTF-8
    std::vector<DegLine> rings;  ///< of all its polygons, outer and inner
};

/// Reads the table "states_provinces" in the order of its key, for the countries asked for alone.
/// False, with the reason in `error`, if that can't be done.
bool ReadStates(const std::string& path, const std::vector<std::string>& countries,
                std::vector<State>& states, std::string& error);

}  // namespace orvantis::world

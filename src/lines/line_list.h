// All lines of a chart that are on, as a list: what the exports and reports go through.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "lines/line_geometry.h"

namespace orvantis {

/// A line of a chart, whole.
struct MapLine {
    std::int16_t type = 0;   ///< 1 to 11
    std::int16_t point = 0;  ///< 1 to 72; 0 for a line that belongs to none
    std::int16_t code = 0;   ///< of its marks in the map's frame: the point, plus 100 times the
                             ///< relation of a paran; a house; a character; a sign
    float lat = 0;           ///< of a paran, degrees
    LineParts runs;          ///< cut at the antimeridian
};

/// The lines of the types that are on, of the points that are drawn, by type. Parans are those with
/// the paran point of the options.
std::vector<MapLine> ListLines(std::int16_t slot);

/// Name of a line type in the line mode of the options.
std::string LineTypeName(std::int16_t type);

/// What a line says: "Rising", "The Moon Rising / The Sun Upper", "House 10", "Aries"; "" for
/// those whose type says it all.
std::string LineWords(const MapLine& line);

}  // namespace orvantis

// The classes of the database: which lines it takes up, under which codes.
#pragma once

#include <map>
#include <string>
#include <vector>

#include "coasts.h"
#include "states.h"
#include "text/bytes.h"
#include "waters.h"

namespace orvantis::world {

/// Thousands of the line codes.
inline constexpr int kCoasts = 1;
inline constexpr int kCountries = 2;
inline constexpr int kStates = 4;
inline constexpr int kIslands = 5;
inline constexpr int kLakes = 6;
inline constexpr int kRivers = 7;

struct DatabaseLine {
    std::string name;  ///< code page 1252
    MinLine points;    ///< within the greatest extent
};

struct Sources {
    Topology topology;
    std::vector<LandMass> land;  ///< largest first
    std::vector<Border> borders;
    std::vector<StateLine> states;
    std::vector<WaterLine> lakes;
    std::vector<WaterLine> rivers;
};

/// What became of the islands.
struct IslandSummary {
    int all = 0;
    int kept = 0;
    double leastKept = 0;  ///< km2, of those that were taken by size
};

/// The lines of each class, in the order of their codes.
std::map<int, std::vector<DatabaseLine>> ChooseLines(const Sources& sources,
                                                     IslandSummary& summary);

/// The bytes of level1.pnt. Empty if a class has more lines than codes.
Bytes WriteLevel1(const std::map<int, std::vector<DatabaseLine>>& classes,
                  const Junctions& junctions);

}  // namespace orvantis::world

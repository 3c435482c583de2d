#include "database.h"

#include <algorithm>
#include <cmath>
#include <set>

#include "levels.h"
#include "map/point_database.h"
#include "names.h"
#include "split.h"

namespace orvantis::world {

namespace {

// Land above this size is a continent, and its coast is of class 1; Greenland is the least.
constexpr double kContinentKm2 = 1.5e6;
// Water within land above this size is a sea: the Caspian alone.
constexpr double kInlandSeaKm2 = 1e5;
// Codes of a class; some are left for the user's own lines.
constexpr std::size_t kCodesOfClass = 1000;
constexpr std::size_t kMostIslandLines = 985;

bool IsCoast(const LandMass& land) {
    return land.area > kContinentKm2 || land.area < -kInlandSeaKm2;
}

// The country with the most points of a line.
int MainOwner(const MinLine& line) {
    std::map<int, int> counts;
    for (const MinPoint& p : line) ++counts[p.owner];
    return std::max_element(counts.begin(), counts.end(),
                            [](const auto& a, const auto& b) { return a.second < b.second; })
        ->first;
}

std::vector<DatabaseLine> LandLines(const LandMass& land, const Topology& topology) {
    std::vector<DatabaseLine> lines;
    for (const MinLine& ring : land.rings) {
        for (MinLine& piece : SplitLine(ring)) {
            std::string name = "Caspian Sea";
            if (land.area >= 0) {
                const auto owner = static_cast<std::size_t>(MainOwner(piece));
                name = ToCodePage(topology.countries[owner]);
            }
            lines.push_back({std::move(name), std::move(piece)});
        }
    }
    return lines;
}

void Append(std::vector<DatabaseLine>& lines, std::vector<DatabaseLine> more) {
    std::move(more.begin(), more.end(), std::back_inserter(lines));
}

// Islands in the order in which they are taken up: the largest one of every country that has no
// continental coast, so that no island state is missing; then all others by size.
std::vector<const LandMass*> IslandOrder(const std::vector<LandMass>& lands) {
    std::set<int> seen;
    for (const LandMass& land : lands) {
        if (land.area > kContinentKm2) seen.insert(land.rings.front().front().owner);
    }
    std::vector<const LandMass*> firsts;
    std::vector<const LandMass*> others;
    for (const LandMass& land : lands) {
        if (IsCoast(land)) continue;
        const bool first = seen.insert(land.rings.front().front().owner).second;
        (first ? firsts : others).push_back(&land);
    }
    firsts.insert(firsts.end(), others.begin(), others.end());
    return firsts;
}

std::vector<DatabaseLine> IslandLines(const Sources& sources, IslandSummary& summary) {
    std::vector<DatabaseLine> lines;
    const std::vector<const LandMass*> islands = IslandOrder(sources.land);
    summary.all = static_cast<int>(islands.size());
    for (const LandMass* island : islands) {
        std::vector<DatabaseLine> pieces = LandLines(*island, sources.topology);
        if (lines.size() + pieces.size() > kMostIslandLines) break;
        Append(lines, std::move(pieces));
        ++summary.kept;
        summary.leastKept = island->area;
    }
    return lines;
}

// Splits named lines of any of the other classes.
template <typename Line>
std::vector<DatabaseLine> SplitAll(const std::vector<Line>& lines) {
    std::vector<DatabaseLine> result;
    for (const Line& line : lines) {
        for (MinLine& piece : SplitLine(line.points)) {
            result.push_back({line.name, std::move(piece)});
        }
    }
    return result;
}

std::vector<DatabaseLine> BorderLines(const Sources& sources) {
    std::vector<DatabaseLine> lines;
    for (const Border& border : sources.borders) {
        const auto& countries = sources.topology.countries;
        const std::string name =
            PairName(ToCodePage(countries[static_cast<std::size_t>(border.first)]),
                     ToCodePage(countries[static_cast<std::size_t>(border.second)]));
        for (MinLine& piece : SplitLine(border.points)) lines.push_back({name, std::move(piece)});
    }
    return lines;
}

}  // namespace

std::map<int, std::vector<DatabaseLine>> ChooseLines(const Sources& sources,
                                                     IslandSummary& summary) {
    std::map<int, std::vector<DatabaseLine>> classes;
    for (const LandMass& land : sources.land) {
        if (IsCoast(land)) Append(classes[kCoasts], LandLines(land, sources.topology));
    }
    classes[kCountries] = BorderLines(sources);
    classes[kStates] = SplitAll(sources.states);
    classes[kIslands] = IslandLines(sources, summary);
    classes[kLakes] = SplitAll(sources.lakes);
    classes[kRivers] = SplitAll(sources.rivers);
    return classes;
}

Bytes WriteLevel1(const std::map<int, std::vector<DatabaseLine>>& classes,
                  const Junctions& junctions) {
    Bytes file;
    for (const auto& [number, lines] : classes) {
        if (lines.size() > kCodesOfClass) return {};
        const bool land = number == kCoasts || number == kIslands;
        int code = number * 1000;
        for (const DatabaseLine& line : lines) {
            AppendLine(file, static_cast<std::int16_t>(code++), line.name,
                       AssignLevels(line.points, land ? junctions : Junctions{}));
        }
    }
    return file;
}

}  // namespace orvantis::world

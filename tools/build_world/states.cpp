#include "states.h"

#include <algorithm>
#include <cmath>
#include <map>
#include <utility>

#include "names.h"

namespace orvantis::world {

namespace {

// Positions in millionths of a degree, so that the edges of neighbours compare equal.
using Place = std::pair<long, long>;
using Edge = std::pair<Place, Place>;  // the lesser place first

Place PlaceOf(const DegPoint& p) {
    return {std::lrint(p.x * 1e6), std::lrint(p.y * 1e6)};
}

struct SharedEdge {
    Place a, b;
    int first, second;  // states
    bool used = false;

    const Place& Other(const Place& place) const { return place == a ? b : a; }
};

// Every edge with the states that have it, in the order of the states.
std::map<Edge, std::vector<int>> EdgesOf(const std::vector<State>& states) {
    std::map<Edge, std::vector<int>> edges;
    for (std::size_t state = 0; state < states.size(); ++state) {
        for (const DegLine& ring : states[state].rings) {
            for (std::size_t i = 1; i < ring.size(); ++i) {
                Edge edge{PlaceOf(ring[i - 1]), PlaceOf(ring[i])};
                if (edge.first == edge.second) continue;
                if (edge.second < edge.first) std::swap(edge.first, edge.second);
                std::vector<int>& owners = edges[edge];
                const int owner = static_cast<int>(state);
                if (owners.empty() || owners.back() != owner) owners.push_back(owner);
            }
        }
    }
    return edges;
}

class Walker {
  public:
    explicit Walker(const std::vector<State>& states) : states_(states) {
        for (const auto& [edge, owners] : EdgesOf(states)) {
            if (owners.size() != 2 || Country(owners[0]) != Country(owners[1])) continue;
            at_[edge.first].push_back(shared_.size());
            at_[edge.second].push_back(shared_.size());
            shared_.push_back({edge.first, edge.second, owners[0], owners[1]});
        }
    }

    // Places with an odd number of edges must be ends of lines: they come first.
    std::vector<StateLine> Lines() {
        std::vector<StateLine> lines;
        for (const bool odd : {true, false}) {
            for (const auto& [place, edges] : at_) {
                if ((edges.size() % 2 == 1) != odd) continue;
                for (const std::size_t edge : edges) {
                    if (!shared_[edge].used) lines.push_back(Walk(place, edge));
                }
            }
        }
        std::erase_if(lines, [](const StateLine& line) { return line.points.size() < 2; });
        return lines;
    }

  private:
    const std::string& Country(int state) const {
        return states_[static_cast<std::size_t>(state)].country;
    }
    std::string Name(int state) const {
        return ToCodePage(states_[static_cast<std::size_t>(state)].name);
    }

    // Follows unused edges from a place, at a junction by the one that runs on straightest.
    StateLine Walk(Place place, std::size_t edge) {
        StateLine result;
        result.name = PairName(Name(shared_[edge].first), Name(shared_[edge].second));
        DegLine line = {Degrees(place)};
        while (edge < shared_.size()) {
            shared_[edge].used = true;
            const Place before = place;
            place = shared_[edge].Other(place);
            line.push_back(Degrees(place));
            edge = Straightest(before, place);
        }
        result.points = ToMinutes(line, -1);
        return result;
    }

    // The unused edge at `place` that bends least after the edge from `before`; the count of edges
    // if there is none.
    std::size_t Straightest(const Place& before, const Place& place) const {
        std::size_t best = shared_.size();
        double bestCosine = -2;
        const DegPoint from = Degrees(before);
        const DegPoint here = Degrees(place);
        for (const std::size_t edge : at_.at(place)) {
            if (shared_[edge].used) continue;
            const DegPoint to = Degrees(shared_[edge].Other(place));
            const double dot =
                (here.x - from.x) * (to.x - here.x) + (here.y - from.y) * (to.y - here.y);
            const double cosine = dot / (std::hypot(here.x - from.x, here.y - from.y) *
                                         std::hypot(to.x - here.x, to.y - here.y));
            if (cosine > bestCosine) {
                bestCosine = cosine;
                best = edge;
            }
        }
        return best;
    }

    static DegPoint Degrees(const Place& place) {
        return {static_cast<double>(place.first) / 1e6, static_cast<double>(place.second) / 1e6};
    }

    const std::vector<State>& states_;
    std::vector<SharedEdge> shared_;
    std::map<Place, std::vector<std::size_t>> at_;
};

}  // namespace

const std::vector<std::string>& CountriesWithStates() {
    static const std::vector<std::string> countries = {"ARG", "AUS", "BRA", "CAN", "CHN",
                                                       "DEU", "IDN", "IND", "KAZ", "MEX",
                                                       "NGA", "PAK", "RUS", "USA", "ZAF"};
    return countries;
}

std::vector<StateLine> CollectStateLines(const std::vector<State>& states) {
    return Walker(states).Lines();
}

}  // namespace orvantis::world

#include "coasts.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <map>
#include <string_view>

#include "date_line.h"

namespace orvantis::world {

namespace {

using Place = std::pair<int, int>;

Place PlaceOf(const MinPoint& p) {
    return {p.x, p.y};
}

// Territories within a country, or between two parties, whose outline isn't a country's border.
constexpr std::array<std::string_view, 6> kNoCountries = {
    "Baikonur", "Siachen Glacier", "Cyprus U.N. Buffer Zone",
    "Akrotiri", "Dhekelia",        "USNB Guantanamo Bay"};

// A ring needs three corners; smaller ones are islands that rounding has crushed.
constexpr std::size_t kLeastRing = 4;

std::vector<MinLine> PiecesOf(const DegLine& arc, int owner) {
    std::vector<MinLine> pieces;
    for (const DegLine& piece : CutAtDateLine(arc)) {
        MinLine line = ToMinutes(piece, owner);
        if (line.size() > 1) pieces.push_back(std::move(line));
    }
    return pieces;
}

// A coast is an arc of one country. The rings of the source run clockwise around the land, which
// has it on the right, so that they are turned about.
std::vector<MinLine> CoastPieces(const Topology& topology) {
    std::vector<MinLine> pieces;
    for (std::size_t i = 0; i < topology.arcs.size(); ++i) {
        if (topology.usage[i].size() != 1) continue;
        const ArcUse& use = topology.usage[i].front();
        for (MinLine& piece : PiecesOf(topology.arcs[i], use.country)) {
            if (use.forward) std::reverse(piece.begin(), piece.end());
            pieces.push_back(std::move(piece));
        }
    }
    return pieces;
}

// Joins open pieces head to tail. What begins at the date line, or has no predecessor, is begun
// with, so that every chain is as long as it can be; what is left then are whole rings.
class Chainer {
  public:
    explicit Chainer(std::vector<MinLine> pieces) : pieces_(std::move(pieces)) {
        used_.resize(pieces_.size());
        for (std::size_t i = 0; i < pieces_.size(); ++i) {
            heads_[PlaceOf(pieces_[i].front())].push_back(i);
            ++tails_[PlaceOf(pieces_[i].back())];
        }
    }

    std::vector<MinLine> Chains() {
        std::vector<MinLine> chains;
        for (const bool startsOnly : {true, false}) {
            for (std::size_t i = 0; i < pieces_.size(); ++i) {
                if (!used_[i] && (!startsOnly || IsStart(pieces_[i]))) chains.push_back(Chain(i));
            }
        }
        return chains;
    }

  private:
    bool IsStart(const MinLine& piece) const {
        return OnDateLine(piece.front()) || !tails_.contains(PlaceOf(piece.front()));
    }

    MinLine Chain(std::size_t first) {
        MinLine chain = pieces_[first];
        used_[first] = true;
        while (!OnDateLine(chain.back())) {
            const auto next = heads_.find(PlaceOf(chain.back()));
            if (next == heads_.end()) break;
            const auto free = std::find_if(next->second.begin(), next->second.end(),
                                           [this](std::size_t i) { return !used_[i]; });
            if (free == next->second.end()) break;
            used_[*free] = true;
            chain.insert(chain.end(), pieces_[*free].begin() + 1, pieces_[*free].end());
        }
        return chain;
    }

    std::vector<MinLine> pieces_;
    std::vector<bool> used_;
    std::map<Place, std::vector<std::size_t>> heads_;
    std::map<Place, int> tails_;
};

// True if one of the rings ends where the date line carries on with `ring`, or the other way about.
bool MeetAtDateLine(const LandMass& land, const MinLine& ring) {
    auto continues = [](const MinPoint& end, const MinPoint& start) {
        return OnDateLine(end) && start.x == -end.x && start.y == end.y;
    };
    return std::any_of(land.rings.begin(), land.rings.end(), [&](const MinLine& other) {
        return continues(other.back(), ring.front()) || continues(ring.back(), other.front());
    });
}

// Puts an open ring with the pieces of the same land on the other side of the date line. A piece
// may join two that stood apart until now.
void AddOpenRing(MinLine ring, std::vector<LandMass>& open) {
    LandMass land;
    land.area = RingArea(ring);
    land.rings.push_back(std::move(ring));
    for (std::size_t i = open.size(); i-- > 0;) {
        if (!MeetAtDateLine(open[i], land.rings.front())) continue;
        land.area += open[i].area;
        land.rings.insert(land.rings.end(), open[i].rings.begin(), open[i].rings.end());
        open.erase(open.begin() + static_cast<std::ptrdiff_t>(i));
    }
    open.push_back(std::move(land));
}

bool IsCountry(const std::string& name) {
    return std::find(kNoCountries.begin(), kNoCountries.end(), name) == kNoCountries.end();
}

}  // namespace

std::vector<LandMass> CollectLand(const Topology& topology) {
    std::vector<MinLine> rings;
    std::vector<MinLine> pieces;
    for (MinLine& piece : CoastPieces(topology)) {
        (IsClosed(piece) ? rings : pieces).push_back(std::move(piece));
    }
    for (MinLine& chain : Chainer(std::move(pieces)).Chains()) rings.push_back(std::move(chain));

    std::vector<LandMass> lands;
    std::vector<LandMass> open;
    for (MinLine& ring : rings) {
        if (!IsClosed(ring)) {
            AddOpenRing(std::move(ring), open);
        } else if (ring.size() >= kLeastRing) {
            const double area = RingArea(ring);
            lands.push_back({{std::move(ring)}, area});
        }
    }
    lands.insert(lands.end(), open.begin(), open.end());
    std::stable_sort(lands.begin(), lands.end(), [](const LandMass& a, const LandMass& b) {
        return std::abs(a.area) > std::abs(b.area);
    });
    return lands;
}

std::vector<Border> CollectBorders(const Topology& topology) {
    std::vector<Border> borders;
    for (std::size_t i = 0; i < topology.arcs.size(); ++i) {
        const std::vector<ArcUse>& usage = topology.usage[i];
        const bool countries = std::all_of(usage.begin(), usage.end(), [&](const ArcUse& use) {
            return IsCountry(topology.countries[static_cast<std::size_t>(use.country)]);
        });
        if (usage.size() < 2 || usage[0].country == usage[1].country || !countries) continue;
        for (MinLine& piece : PiecesOf(topology.arcs[i], -1)) {
            borders.push_back({std::move(piece), usage[0].country, usage[1].country});
        }
    }
    return borders;
}

Junctions BorderEnds(const std::vector<Border>& borders) {
    Junctions ends;
    for (const Border& border : borders) {
        ends.insert(PlaceOf(border.points.front()));
        ends.insert(PlaceOf(border.points.back()));
    }
    return ends;
}

}  // namespace orvantis::world

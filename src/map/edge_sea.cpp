// See edge_sea.h. A line that leaves the map at a side has land on its left: on the left side of
// the map that is below the crossing, on the bottom to the right of it, on the right side above it,
// on the top to the left of it. So a stretch that ends, counted downward or to the right, in a
// crossing outward is sea at the left side and the bottom; at the right side and the top it is the
// other way round.
#include "map/edge_sea.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <vector>

#include "map/fills.h"
#include "map/plot.h"
#include "map/projection.h"
#include "session/settings.h"

namespace orvantis {

namespace {

constexpr std::array<std::int16_t, 4> kSides = {side::kLeft, side::kRight, side::kTop,
                                                side::kBottom};

constexpr int kLeastStretch = 4;  // pixels between two crossings
constexpr Colour kSeedMark = 0x0000FF;

// A crossing, or an end, of one side.
struct SideEntry {
    int position = 0;      // row on the left and the right side, column at the top and the bottom
    bool outward = false;  // the line went out of the map; of no meaning at the first end
};

bool IsUpright(std::int16_t sideNumber) {
    return sideNumber == side::kLeft || sideNumber == side::kRight;
}

// The ends of a side and its crossings, by position; those of equal position in their order.
std::vector<SideEntry> EntriesOf(std::int16_t sideNumber) {
    const MapRect& rect = mapView.rect;
    std::vector<SideEntry> entries;
    if (IsUpright(sideNumber)) {
        entries = {{rect.top}, {rect.top + rect.height}};
    } else {
        entries = {{rect.left}, {rect.left + rect.width}};
    }
    for (std::size_t i = 1; i < plotState.crossings.size(); ++i) {
        const ClipCrossing& crossing = plotState.crossings[i];
        if (crossing.side != sideNumber) continue;
        entries.push_back(
            {IsUpright(sideNumber) ? crossing.y : crossing.x, crossing.startInside != kFalse});
    }
    std::stable_sort(entries.begin(), entries.end(), [](const SideEntry& a, const SideEntry& b) {
        return a.position < b.position;
    });
    return entries;
}

// Crossings at one position cancel in pairs, as those of a tip of land that just reaches the edge.
// Of an odd number one is left, in the direction of the most, which needn't be that of the first:
// the order of entries at one position is chance. False if the directions there don't
// go in and out by turns, whatever their order: then others stand at the wrong position as well.
bool CancelPairs(std::vector<SideEntry>& entries) {
    std::vector<SideEntry> left = {entries.front()};
    const std::size_t last = entries.size() - 1;
    bool byTurns = true;
    for (std::size_t i = 1; i < last;) {
        std::size_t end = i;
        int balance = 0;
        for (; end < last && entries[end].position == entries[i].position; ++end) {
            balance += entries[end].outward ? -1 : 1;
        }
        if ((end - i) % 2 == 1) left.push_back({entries[i].position, balance < 0});
        if (std::abs(balance) > 1) byTurns = false;
        i = end;
    }
    left.push_back(entries.back());
    entries = left;
    return byTurns;
}

// Gives the far end the direction that the crossing before it asks for. True if the directions
// then alternate, as those of coasts do that are drawn whole.
bool Alternates(std::vector<SideEntry>& entries) {
    const std::size_t last = entries.size() - 1;
    entries[last].outward = !entries[last - 1].outward;
    for (std::size_t i = 2; i <= last; ++i) {
        if (entries[i].outward == entries[i - 1].outward) return false;
    }
    return true;
}

SurfacePoint PointOfSide(std::int16_t sideNumber, int position) {
    const MapRect& rect = mapView.rect;
    switch (sideNumber) {
        case side::kLeft:
            return {rect.left + 1, position};
        case side::kRight:
            return {rect.left + rect.width - 1, position};
        case side::kTop:
            return {position, rect.top + 1};
        default:
            return {position, rect.top + rect.height - 1};
    }
}

// For whoever works on the map's fills.
void MarkSeed(SurfacePoint seed) {
    mapView.surface->SetPen({1, LineDash::Solid, kSeedMark});
    mapView.surface->SetPixel(seed.x, seed.y);
    mapView.surface->SetPen({1, LineDash::Solid, plotState.outlineColour});
}

// True where a coast crosses another side within a pixel of a seed. The pixel in a corner belongs
// to two sides, and a coast that crosses there may be drawn on either side of the crossing, whose
// place is rounded otherwise than the line's: what lies there isn't sure to be of this side.
bool AtCrossingOfAnotherSide(std::int16_t sideNumber, SurfacePoint seed) {
    const auto& crossings = plotState.crossings;
    return std::any_of(crossings.begin() + 1, crossings.end(), [&](const ClipCrossing& crossing) {
        return crossing.side != sideNumber && std::abs(crossing.x - seed.x) <= 1 &&
               std::abs(crossing.y - seed.y) <= 1;
    });
}

// Floods from every pixel strictly between two positions that is neither coast nor sea yet: more
// than one flood where coasts touch the edge between them.
void FloodStretch(std::int16_t sideNumber, int from, int to) {
    const Colour outline = PlainColour(plotState.outlineColour);
    const Colour sea = PlainColour(SeaColour());
    for (int position = from + 1; position < to; ++position) {
        const SurfacePoint seed = PointOfSide(sideNumber, position);
        const Colour pixel = mapView.surface->GetPixel(seed.x, seed.y);
        if (pixel == outline || pixel == sea) continue;
        if (AtCrossingOfAnotherSide(sideNumber, seed)) continue;
        FloodAt(static_cast<std::int16_t>(seed.x), static_cast<std::int16_t>(seed.y), sea);
        if (options.fillPoints != kFalse) MarkSeed(seed);
    }
}

// What the crossings tell about one side.
struct Side {
    std::int16_t number = side::kLeft;
    std::vector<SideEntry> entries;
    bool tells = false;    // sea and land go by turns along it
    bool uniform = false;  // no coast crosses it: it is all sea or all land
};

Side ReadSide(std::int16_t sideNumber) {
    Side read{sideNumber, EntriesOf(sideNumber)};
    if (!CancelPairs(read.entries)) return read;
    // Crossings that all cancel tell no more about the side than none.
    read.uniform = read.entries.size() == 2;
    read.tells = !read.uniform && Alternates(read.entries);
    return read;
}

// True if the stretch that ends in an entry is sea.
bool IsSea(const Side& read, const SideEntry& end) {
    return end.outward == (read.number == side::kLeft || read.number == side::kBottom);
}

// The sides in the order in which they meet, against the clock. `ahead` asks for the corner with
// the next one, otherwise with the one before: the left side and the bottom are counted the same
// way round, the others against it.
constexpr std::array<std::int16_t, 4> kRing = {side::kLeft, side::kBottom, side::kRight,
                                               side::kTop};

bool CornerIsSea(const Side& read, bool ahead) {
    const bool atLast = ahead == (read.number == side::kLeft || read.number == side::kBottom);
    return IsSea(read, atLast ? read.entries.back() : read.entries[1]);
}

using Ring = std::array<Side, 4>;

// What the side that follows in one direction says about the corner between them; a side that no
// coast crosses hands on what the one behind it says. 1 the same, -1 the opposite, 0 nothing.
int Agreement(const Ring& ring, std::size_t at, bool ahead) {
    for (std::size_t step = 1; step < ring.size(); ++step) {
        const Side& other = ring[(at + (ahead ? step : ring.size() - step)) % ring.size()];
        if (other.tells) {
            return CornerIsSea(other, !ahead) == CornerIsSea(ring[at], ahead) ? 1 : -1;
        }
        if (!other.uniform) return 0;
    }
    return 0;
}

// Where two thinned shores, those of a narrow water, cross each other before they reach the edge,
// they stand there in the wrong order, and all land beside them passes for sea. Then the side is in
// the right with none of its neighbours.
bool IsContradicted(const Ring& ring, std::size_t at) {
    const int before = Agreement(ring, at, false);
    const int after = Agreement(ring, at, true);
    return before <= 0 && after <= 0 && before + after < 0;
}

void FillSide(const Side& read) {
    for (std::size_t i = 1; i < read.entries.size(); ++i) {
        const SideEntry& a = read.entries[i - 1];
        const SideEntry& b = read.entries[i];
        if (IsSea(read, b) && b.position - a.position >= kLeastStretch) {
            FloodStretch(read.number, a.position, b.position);
        }
    }
}

}  // namespace

void FillEdgeSea() {
    Ring ring;
    std::transform(kRing.begin(), kRing.end(), ring.begin(), ReadSide);
    for (const std::int16_t sideNumber : kSides) {
        const auto at = static_cast<std::size_t>(std::find(kRing.begin(), kRing.end(), sideNumber) -
                                                 kRing.begin());
        if (ring[at].tells && !IsContradicted(ring, at)) FillSide(ring[at]);
    }
}

bool CrossingsCancel() {
    return std::all_of(kSides.begin(), kSides.end(), [](std::int16_t sideNumber) {
        std::vector<SideEntry> entries = EntriesOf(sideNumber);
        return CancelPairs(entries) && entries.size() == 2;
    });
}

}  // namespace orvantis

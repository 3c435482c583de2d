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

// Floods from every pixel strictly between two positions that is neither coast nor sea yet: more
// than one flood where coasts touch the edge between them.
void FloodStretch(std::int16_t sideNumber, int from, int to) {
    const Colour outline = PlainColour(plotState.outlineColour);
    const Colour sea = PlainColour(SeaColour());
    for (int position = from + 1; position < to; ++position) {
        const SurfacePoint seed = PointOfSide(sideNumber, position);
        const Colour pixel = mapView.surface->GetPixel(seed.x, seed.y);
        if (pixel == outline || pixel == sea) continue;
        FloodAt(static_cast<std::int16_t>(seed.x), static_cast<std::int16_t>(seed.y), sea);
        if (options.fillPoints != kFalse) MarkSeed(seed);
    }
}

void FillSide(std::int16_t sideNumber) {
    std::vector<SideEntry> entries = EntriesOf(sideNumber);
    if (!CancelPairs(entries)) return;
    // Crossings that all cancel tell no more about the side than none.
    if (entries.size() == 2 || !Alternates(entries)) return;
    const bool seaEndsOutward = sideNumber == side::kLeft || sideNumber == side::kBottom;
    for (std::size_t i = 1; i < entries.size(); ++i) {
        const SideEntry& a = entries[i - 1];
        const SideEntry& b = entries[i];
        if (b.outward == seaEndsOutward && b.position - a.position >= kLeastStretch) {
            FloodStretch(sideNumber, a.position, b.position);
        }
    }
}

}  // namespace

void FillEdgeSea() {
    for (const std::int16_t sideNumber : kSides) FillSide(sideNumber);
}

bool CrossingsCancel() {
    return std::all_of(kSides.begin(), kSides.end(), [](std::int16_t sideNumber) {
        std::vector<SideEntry> entries = EntriesOf(sideNumber);
        return CancelPairs(entries) && entries.size() == 2;
    });
}

}  // namespace orvantis

// The flood fills of the map document. See fills.h.
#include "map/fills.h"

#include <array>
#include <cmath>
#include <cstddef>
#include <map>
#include <utility>
#include <vector>

#include "map/map_document.h"
#include "map/plot.h"
#include "map/projection.h"
#include "session/settings.h"
#include "text/numbers.h"

namespace orvantis {

namespace {

constexpr Colour kSeedColour = 0xFFFFFF;
constexpr Colour kSeedBorderColour = 0x0000FF;

// A seed that a hostile file puts nowhere on Earth is never in view.
bool SeedInView(const FillRecord& record) {
    if (!(std::abs(record.lat) <= 90 && std::abs(record.longitude) <= 360)) return false;
    const ViewExtent& view = mapView.extent;
    return PointInView(record.lat, record.longitude, view.southMin, view.northMin, view.westMin,
                       view.eastMin);
}

// For whoever works on the map's fills: a white pixel on the seed, red ones around it.
void MarkSeed(int x, int y) {
    constexpr std::array<SurfacePoint, 4> around = {{{-1, 0}, {1, 0}, {0, -1}, {0, 1}}};
    mapView.surface->SetPen({1, LineDash::Solid, kSeedColour});
    mapView.surface->SetPixel(x, y);
    mapView.surface->SetPen({1, LineDash::Solid, kSeedBorderColour});
    for (const SurfacePoint& offset : around) {
        mapView.surface->SetPixel(x + offset.x, y + offset.y);
    }
}

// On a globe a pixel is tens of kilometres across, and hundreds near the limb, so that a coast and
// a seed at sea change places by rounding alone. A sea seed with outline next to it paints nothing
// there: its sea is no wider than that, and beside it might lie a continent.
constexpr double kLimbDegrees = 60;  // from the view's centre
constexpr int kReach = 1;            // pixels
constexpr int kLimbReach = 2;

bool IsLostOnGlobe(const FillRecord& record, std::int16_t x, std::int16_t y) {
    const ViewExtent& view = mapView.extent;
    if (IsFlat(view.projection) || record.colour >= 0) return false;
    const bool atLimb = AngularDistance(record.longitude, record.lat, view.centreLong,
                                        view.centreLat) > kLimbDegrees;
    const int reach = atLimb ? kLimbReach : kReach;
    const Colour outline = PlainColour(plotState.outlineColour);
    for (int dy = -reach; dy <= reach; ++dy) {
        for (int dx = -reach; dx <= reach; ++dx) {
            if (mapView.surface->GetPixel(x + dx, y + dy) == outline) return true;
        }
    }
    return false;
}

// A fill in view: where its seed lies and what it paints.
struct Seed {
    std::int16_t x = 0;
    std::int16_t y = 0;
    Colour colour = 0;
};

std::vector<Seed> SeedsInView() {
    const MapDocument& document = CurrentMap();
    std::vector<Seed> seeds;
    for (int number = 1; number <= document.fillCount; ++number) {
        if (static_cast<std::size_t>(number) >= mapState.fills.size()) break;
        const FillRecord& record = mapState.fills[static_cast<std::size_t>(number)];
        if (!SeedInView(record)) continue;
        Seed seed;
        seed.colour = PlainColour(record.colour < 0 ? SeaColour() : record.colour);
        ProjectPoint(RoundToInt16(record.lat * 60.0), RoundToInt16(record.longitude * 60.0), seed.y,
                     seed.x);
        if (IsLostOnGlobe(record, seed.x, seed.y)) continue;
        seeds.push_back(seed);
    }
    return seeds;
}

}  // namespace

std::int16_t FloodAt(std::int16_t x, std::int16_t y, Colour colour) {
    const bool painted =
        mapView.surface->FloodFill(x, y, PlainColour(colour), PlainColour(plotState.outlineColour));
    return painted ? kTrue : kFalse;
}

void ReplayFills() {
    // Floods end at the outline alone, whatever the colours, so the last flood from a pixel paints
    // all that earlier ones from there did. But for a flood in the outline's own colour: it is
    // border afterwards.
    const std::vector<Seed> seeds = SeedsInView();
    std::map<std::pair<std::int16_t, std::int16_t>, std::size_t> lastAt;
    for (std::size_t i = 0; i < seeds.size(); ++i) lastAt[{seeds[i].x, seeds[i].y}] = i;

    const Colour outline = PlainColour(plotState.outlineColour);
    int floods = 0;
    for (std::size_t i = 0; i < seeds.size() && floods < kMostFloods; ++i) {
        const Seed& seed = seeds[i];
        if (seed.colour != outline && lastAt[{seed.x, seed.y}] != i) continue;
        // A flood costs its area, so one that an earlier seed has made already is not made again.
        if (mapView.surface->GetPixel(seed.x, seed.y) != seed.colour &&
            FloodAt(seed.x, seed.y, seed.colour) != kFalse) {
            ++floods;
        }
        if (options.fillPoints != kFalse) MarkSeed(seed.x, seed.y);
    }
}

void RemoveAllFills() {
    CurrentMap().fillCount = 0;
}

void RemoveLastFill() {
    MapDocument& document = CurrentMap();
    if (document.fillCount > 0) --document.fillCount;
}

}  // namespace orvantis

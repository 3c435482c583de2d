// The flood fills of the map document. See fills.h.
#include "map/fills.h"

#include <array>
#include <cmath>

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

void ReplayFill(const FillRecord& record) {
    if (!SeedInView(record)) return;
    const Colour colour = record.colour < 0 ? SeaColour() : record.colour;
    std::int16_t x = 0;
    std::int16_t y = 0;
    ProjectPoint(RoundToInt16(record.lat * 60.0), RoundToInt16(record.longitude * 60.0), y, x);
    // A flood costs its area, so one that an earlier seed has made already is not made again.
    if (mapView.surface->GetPixel(x, y) != PlainColour(colour)) FloodAt(x, y, colour);
    if (options.fillPoints != kFalse) MarkSeed(x, y);
}

}  // namespace

std::int16_t FloodAt(std::int16_t x, std::int16_t y, Colour colour) {
    const bool painted =
        mapView.surface->FloodFill(x, y, PlainColour(colour), PlainColour(plotState.outlineColour));
    return painted ? kTrue : kFalse;
}

void ReplayFills() {
    const MapDocument& document = CurrentMap();
    for (int record = 1; record <= document.fillCount; ++record) {
        if (static_cast<std::size_t>(record) >= mapState.fills.size()) return;
        ReplayFill(mapState.fills[static_cast<std::size_t>(record)]);
    }
}

}  // namespace orvantis

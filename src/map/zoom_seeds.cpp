// See zoom_seeds.h.
#include "map/zoom_seeds.h"

#include <algorithm>
#include <cstddef>
#include <utility>
#include <vector>

#include "map/map_document.h"
#include "map/plot.h"
#include "map/projection.h"
#include "map/view_edges.h"
#include "session/settings.h"
#include "text/numbers.h"

namespace orvantis {

namespace {

constexpr std::size_t kMostColours = 16;

// How far a seed is moved off the edge into the rectangle: about an arc-minute.
constexpr double kIntoRectangle = 0.0167;

constexpr Colour kNoPixel = -1;  // what lies off the picture

// One search: where it looks and what it looks for.
struct Search {
    std::int16_t docNumber = 1;
    DrawingSurface& picture;
    std::vector<Colour> colours;  // of the document's fills, with the palette mark
    bool carries = true;          // fills that are met become fills of the new view
};

std::vector<Colour> ColoursOfFills(const MapDocument& document) {
    std::vector<Colour> colours;
    for (int number = 1; number <= document.fillCount; ++number) {
        if (static_cast<std::size_t>(number) >= mapState.fills.size()) break;
        const Colour colour = mapState.fills[static_cast<std::size_t>(number)].colour;
        if (colour < 0) continue;
        const Colour listed = PaletteColour(colour);
        if (std::find(colours.begin(), colours.end(), listed) != colours.end()) continue;
        if (colours.size() == kMostColours) break;
        colours.push_back(listed);
    }
    return colours;
}

bool Counts(const Search& search, Colour pixel) {
    if (pixel == kNoPixel || pixel == PlainColour(LandColour()) ||
        pixel == PlainColour(plotState.outlineColour)) {
        return false;
    }
    return std::find(search.colours.begin(), search.colours.end(), PaletteColour(pixel)) !=
           search.colours.end();
}

// A run of one colour with its middle at (x, y).
void HandleRun(const Search& search, std::int16_t sideNumber, float x, float y, Colour pixel) {
    if (pixel == PlainColour(SeaColour())) {
        plotState.fillSeaOnly = kTrue;
        return;
    }
    if (pixel == PlainColour(LandColour())) plotState.fillLand = kTrue;
    if (!Counts(search, pixel)) return;
    plotState.fillOtherColour = kTrue;
    if (!search.carries) return;

    float lat = 0;
    float longitude = 0;
    UnprojectPoint(mapState.documents[static_cast<std::size_t>(search.docNumber)], x, y, lat,
                   longitude);
    double seedLat = lat;
    double seedLong = longitude;
    if (sideNumber == side::kLeft) seedLong = WrappedLong(seedLong + kIntoRectangle);
    if (sideNumber == side::kRight) seedLong = WrappedLong(seedLong - kIntoRectangle);
    if (sideNumber == side::kTop) seedLat -= kIntoRectangle;
    if (sideNumber == side::kBottom) seedLat += kIntoRectangle;
    AddFill(search.docNumber, static_cast<float>(seedLat), static_cast<float>(seedLong), false,
            PaletteColour(pixel));
}

// Walks the pixels of one side, `from` to `to`, at the column or row `across`.
void WalkSide(const Search& search, std::int16_t sideNumber, int across, int from, int to) {
    const bool upright = sideNumber == side::kLeft || sideNumber == side::kRight;
    const auto pixelAt = [&](int along) {
        return upright ? search.picture.GetPixel(across, along)
                       : search.picture.GetPixel(along, across);
    };
    const auto edge = static_cast<float>(across);
    for (int start = from; start <= to;) {
        const Colour pixel = pixelAt(start);
        int end = start;
        while (end < to && pixelAt(end + 1) == pixel) ++end;
        const float middle = static_cast<float>(start + end) / 2;
        HandleRun(search, sideNumber, upright ? edge : middle, upright ? middle : edge, pixel);
        start = end + 1;
    }
}

// Walks the sides of a rectangle, one pixel inside it, for a view whose plot comes next.
void SearchFrame(const Search& search, std::int16_t left, std::int16_t top, std::int16_t right,
                 std::int16_t bottom) {
    plotState.fillSeaOnly = kFalse;
    plotState.fillOtherColour = kFalse;
    plotState.fillLand = kFalse;
    plotState.zoomTied = false;
    plotState.seaFillsAdded = false;
    WalkSide(search, side::kLeft, left + 1, top, bottom);
    WalkSide(search, side::kRight, right - 1, top, bottom);
    WalkSide(search, side::kTop, top + 1, left, right);
    WalkSide(search, side::kBottom, bottom - 1, left, right);
}

// Degrees from a view's western edge eastward to its eastern one.
double WidthOf(const ViewEdges& edges) {
    const double width = static_cast<double>(edges.east) - edges.west;
    return width <= 0 ? width + 360 : width;
}

// True if a sea fill of the map has its seed in a view and off its frame, so that it paints there.
bool HasSeaSeed(const ViewEdges& edges) {
    constexpr double kOffFrame = 3;  // pixels
    const double width = WidthOf(edges);
    const double height = static_cast<double>(edges.north) - edges.south;
    const double margin = kIntoRectangle + kOffFrame * std::max(width / mapView.rect.width,
                                                                height / mapView.rect.height);
    const auto count = static_cast<std::size_t>(std::max<std::int16_t>(CurrentMap().fillCount, 0));
    for (std::size_t number = 1; number <= count && number < mapState.fills.size(); ++number) {
        const FillRecord& record = mapState.fills[number];
        const double east = Modulo(static_cast<double>(record.longitude) - edges.west, 360);
        if (record.colour < 0 && east > margin && east < width - margin &&
            record.lat > edges.south + margin && record.lat < edges.north - margin) {
            return true;
        }
    }
    return false;
}

// Pixels of the picture, with fractions.
struct Span {
    double from = 0;
    double to = 0;
    double Length() const { return to - from; }
};

// Columns that a view shares with the one on display: from its western edge on, or what it has of
// the next turn, whichever is wider.
Span SharedColumns(const ViewEdges& edges) {
    const ViewExtent& view = mapView.extent;
    const double span = view.spanLong;
    const double perDegree = mapView.rect.width / span;
    const double west = Modulo(static_cast<double>(edges.west) - view.westDeg, 360);
    const double width = WidthOf(edges);
    const auto columns = [&](double from, double to) {
        const double left = mapView.rect.left;
        return Span{left + std::max(from, 0.0) * perDegree, left + std::min(to, span) * perDegree};
    };
    const Span first = columns(west, west + width);
    const Span next = columns(west - 360, west + width - 360);
    return next.Length() > first.Length() ? next : first;
}

Span SharedRows(const ViewEdges& edges) {
    const MapRect& rect = mapView.rect;
    double x = 0;
    Span rows;
    PlaceOnFlatMap(edges.north, edges.west, x, rows.from);
    PlaceOnFlatMap(edges.south, edges.west, x, rows.to);
    return {std::max<double>(rows.from, rect.top),
            std::min<double>(rows.to, rect.top + rect.height)};
}

}  // namespace

void SeedsFromZoom(std::int16_t docNumber, DrawingSurface& picture, std::int16_t left,
                   std::int16_t top, std::int16_t right, std::int16_t bottom) {
    if (left > right) std::swap(left, right);
    if (top > bottom) std::swap(top, bottom);
    const Search search{docNumber, picture,
                        ColoursOfFills(mapState.documents[static_cast<std::size_t>(docNumber)])};
    SearchFrame(search, left, top, right, bottom);
}

void SeaFromOverlap(DrawingSurface& picture, const ViewEdges& edges) {
    constexpr double kLeastShared = 4;
    const MapRect& rect = mapView.rect;
    if (!IsFlat(mapView.extent.projection) || rect.width <= 0 || plotState.imageLost) return;
    const Span columns = SharedColumns(edges);
    const Span rows = SharedRows(edges);
    const bool shared = columns.Length() >= kLeastShared && rows.Length() >= kLeastShared;
    if (!shared) return;  // nor where edges are no numbers

    // A pixel further in: the outermost ones are the outline's, and beside it may lie what the clip
    // has kept the floods from.
    const Search search{mapState.current, picture, ColoursOfFills(CurrentMap()), false};
    SearchFrame(search, RoundToInt16(columns.from + 1), RoundToInt16(rows.from + 1),
                RoundToInt16(columns.to - 1), RoundToInt16(rows.to - 1));
    plotState.seaFillsAdded = HasSeaSeed(edges);
    if (plotState.fillLand != kFalse) plotState.fillSeaOnly = kFalse;
    const bool sideInPicture = columns.from > rect.left || columns.to < rect.left + rect.width ||
                               rows.from > rect.top || rows.to < rect.top + rect.height;
    if (!sideInPicture) plotState.fillLand = kTrue;
}

}  // namespace orvantis

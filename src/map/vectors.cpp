// The vectors of a plot: the lines of the point database that the map shows, thinned by level,
// culled by area, wrapped at the map's edge. On the way it gathers what the fills of a zoomed map
// need: where coasts cross the edge, and whether anything was drawn at all.
#include <algorithm>
#include <cstdlib>
#include <string>
#include <vector>

#include "map/fills.h"
#include "map/level_reader.h"
#include "map/plot.h"
#include "map/point_database.h"
#include "session/settings.h"
#include "session/tables.h"
#include "text/numbers.h"

namespace orvantis {

namespace {

constexpr int kMostLatMin = 5400;
constexpr int kMostLongMin = 10800;

// Drawing positions of the kinds of detail after which something is done.
constexpr std::size_t kLinePositions = 6;
constexpr std::size_t kIslandsPosition = 1;
constexpr std::size_t kLakesPosition = 2;

// The fixed test point of a map of islands; it lies in the Caspian.
constexpr double kTestLat = 40;
constexpr double kTestLong = 50;

constexpr int kPrinterPenWidth = 2;
constexpr float kCodeFontSize = 6;

// What a plot of the vectors holds on to: the view's constants, and in a flat view the position of
// every minute of latitude and longitude, so that a point costs two look-ups.
struct VectorPass {
    MapRect rect;
    bool notFull = false;  // no wrap is looked for
    std::int16_t precision = 5;
    LevelReader reader;
    std::int64_t unread = 0;                // bytes that the lines of the class may still take
    std::vector<std::int16_t> positions;    // of the two tables
    const std::int16_t* yOfLat = nullptr;   // from -kMostLatMin
    const std::int16_t* xOfLong = nullptr;  // from -kMostLongMin
};

struct Pixel {
    std::int16_t x = 0;
    std::int16_t y = 0;
};

void FillPositions(VectorPass& pass) {
    pass.positions.resize(2 * kMostLatMin + 1 + 2 * kMostLongMin + 1);
    std::int16_t* const y = pass.positions.data() + kMostLatMin;
    std::int16_t* const x = y + kMostLatMin + 1 + kMostLongMin;
    for (int lat = -kMostLatMin; lat <= kMostLatMin; ++lat) {
        y[lat] = FlatY(static_cast<std::int16_t>(lat));
    }
    for (int longitude = -kMostLongMin; longitude <= kMostLongMin; ++longitude) {
        x[longitude] = FlatX(static_cast<std::int16_t>(longitude));
    }
    pass.yOfLat = y;
    pass.xOfLong = x;
}

Pixel Position(const VectorPass& pass, std::int16_t lat, std::int16_t longitude) {
    const bool onEarth = lat >= -kMostLatMin && lat <= kMostLatMin && longitude >= -kMostLongMin &&
                         longitude <= kMostLongMin;
    if (pass.yOfLat != nullptr && onEarth) return {pass.xOfLong[longitude], pass.yOfLat[lat]};
    Pixel pixel;
    ProjectPoint(lat, longitude, pixel.y, pixel.x);
    return pixel;
}

bool StrictlyInside(const MapRect& rect, Pixel p) {
    return p.x > rect.left && p.x < rect.left + rect.width && p.y > rect.top &&
           p.y < rect.top + rect.height;
}

// Coasts, islands and lakes part land from water; the crossings of the others tell nothing.
bool IsShore(int detailClass) {
    return detailClass == 1 || detailClass == 5 || detailClass == 6;
}

void AddCrossing(Pixel from, Pixel to) {
    const EdgeCrossing crossing = FindInsetCrossing(from.x, from.y, to.x, to.y);
    if (crossing.side == side::kNone) return;
    plotState.crossings.push_back(
        {crossing.side, crossing.x, crossing.y, crossing.startInside ? kTrue : kFalse});
}

void StartLine(const VectorPass& pass, const LineIndexEntry& entry, Pixel p) {
    if (options.lineNumbers != kFalse) {
        mapView.surface->TextOut(p.x, p.y, std::to_string(entry.code), TextAlign::Left);
    }
    if (entry.pointCount[static_cast<std::size_t>(pass.precision)] < 2) {
        mapView.surface->SetPixel(p.x, p.y);
    } else {
        mapView.surface->MoveTo(p.x, p.y);
    }
}

// Points of a line that its level file holds. The index may be of another file, or of one whose
// last line is cut short. Within a class each line has its own bytes, so one that would make the
// class longer than the file isn't of this file.
int PointsHeld(VectorPass& pass, std::int64_t position, int count) {
    if (position < 1) return 0;
    const std::int64_t held = (pass.reader.length - (position - 1)) / kLinePointSize;
    const auto points = static_cast<int>(std::clamp<std::int64_t>(held, 0, count));
    pass.unread -= kLineHeaderSize + kLinePointSize * points;
    return pass.unread < 0 ? 0 : points;
}

// A line that its file doesn't hold whole is drawn as far as it goes, and then is a failure.
void DrawLine(VectorPass& pass, const LineIndexEntry& entry) {
    const auto level = static_cast<std::size_t>(pass.precision);
    const int count = entry.pointCount[level];
    if (count < 1) return;
    const int held = PointsHeld(pass, entry.pointPos[level], count);
    if (held < count) RaiseRunTimeError(error::kPastEnd);
    if (held < 1) return;
    const std::uint8_t* p = LevelBytes(pass.reader, entry.pointPos[level], kLinePointSize * held);
    if (p == nullptr) return;

    DrawingSurface& surface = *mapView.surface;
    const bool shore = IsShore(entry.code / 1000);
    Pixel previous;
    bool inside = false;
    bool started = false;
    for (int n = 1; n <= held; ++n, p += kLinePointSize) {
        if (GetI16(p) < pass.precision) continue;
        const Pixel pixel = Position(pass, GetI16(p + 2), GetI16(p + 4));
        if (!started) {
            StartLine(pass, entry, pixel);
            inside = StrictlyInside(pass.rect, pixel);
            if (inside) plotState.plotted = true;
            started = true;
        } else if (pixel.x == previous.x && pixel.y == previous.y) {
            // A finer file has many points in one pixel: nothing is drawn between them.
            if (n == count) surface.SetPixel(pixel.x, pixel.y);
        } else if (pass.notFull || pass.rect.width >= 2 * std::abs(pixel.x - previous.x)) {
            // A line stops one pixel short of its end.
            surface.LineTo(pixel.x, pixel.y);
            surface.SetPixel(pixel.x, pixel.y);
            const bool insideNow = StrictlyInside(pass.rect, pixel);
            if (insideNow) plotState.plotted = true;
            if (insideNow != inside && shore) AddCrossing(previous, pixel);
            inside = insideNow;
        } else {
            ForceNewLine(pixel.x, pixel.y, previous.x, previous.y, kNoMark, 0);
            if (n == count) surface.SetPixel(pixel.x, pixel.y);
        }
        previous = pixel;
    }
}

// All lines of a class that may be seen. The class range may be older than the index.
void DrawClass(VectorPass& pass, std::int16_t detailClass) {
    const ViewExtent& view = mapView.extent;
    const ClassRow& row = pointDatabase.ClassRange[static_cast<std::size_t>(detailClass)];
    if (row.first < 1) return;
    pass.unread = pass.reader.length;
    for (int line = row.first; line <= row.last && line <= pointDatabase.count; ++line) {
        const LineIndexEntry& entry = pointDatabase.LineIndex[static_cast<std::size_t>(line)];
        const Extents extents{entry.latMin, entry.latMax, entry.longMin, entry.longMax};
        if (view.spanLong < 360 && !LineInView(extents, view.southMin, view.northMin, view.westMin,
                                               view.eastMin, view.projection)) {
            continue;
        }
        DrawLine(pass, entry);
        if (PendingRunTimeError() != 0) return;
    }
}

// Islands that stand in the sea, and no coast through the edge: then the corners are sea.
void TestIslandsOnly() {
    const ViewExtent& view = mapView.extent;
    if (plotState.crossings.size() > 1 || !plotState.plotted || view.spanLong >= 360) return;
    if (PointInView(kTestLat, kTestLong, view.southMin, view.northMin, view.westMin,
                    view.eastMin)) {
        return;
    }
    plotState.islandsOnly = true;
    plotState.plotted = false;
}

void FillSeaAfterLakes() {
    const MapRect& rect = mapView.rect;
    if (!plotState.plotted && plotState.islandsOnly) {
        const auto left = static_cast<std::int16_t>(rect.left + 1);
        const auto right = static_cast<std::int16_t>(rect.left + rect.width - 1);
        const auto top = static_cast<std::int16_t>(rect.top + 1);
        const auto bottom = static_cast<std::int16_t>(rect.top + rect.height - 1);
        FloodAt(left, top, SeaColour());
        FloodAt(right, top, SeaColour());
        FloodAt(left, bottom, SeaColour());
        FloodAt(right, bottom, SeaColour());
        plotState.plotted = true;
    }
    // FillEdgeSea: on a flat map narrower than the world, the crossings tell which stretches of the
    // edge are sea.
}

// The frame of a zoom met nothing but sea, and nothing was drawn: the whole view is sea. What the
// zoom found is used up by that.
void AddSeaFills() {
    if (plotState.plotted || plotState.fillSeaOnly == kFalse ||
        plotState.fillOtherColour != kFalse) {
        return;
    }
    const ViewExtent& view = mapView.extent;
    const std::int16_t map = mapState.current;
    AddFill(map, view.centreLat, view.centreLong, true, 0);
    AddFill(map, view.southDeg, view.westDeg, true, 0);
    AddFill(map, view.southDeg, view.eastDeg, true, 0);
    AddFill(map, view.northDeg, view.westDeg, true, 0);
    AddFill(map, view.northDeg, view.eastDeg, true, 0);
    plotState.fillSeaOnly = kFalse;
}

void DrawClasses(VectorPass& pass, Flag printing) {
    const MapDocument& document = CurrentMap();
    for (std::size_t position = 0; position < kLinePositions; ++position) {
        const std::int16_t detailClass = kMapDetails[position].detailClass;
        if (document.hidden[static_cast<std::size_t>(detailClass)] == kFalse) {
            DrawClass(pass, detailClass);
        }
        // What a failed read leaves out would be taken for open sea.
        if (PendingRunTimeError() != 0) return;
        if (printing == kFalse && position == kIslandsPosition) TestIslandsOnly();
        if (printing == kFalse && position == kLakesPosition) FillSeaAfterLakes();
    }
    if (printing == kFalse) AddSeaFills();
}

}  // namespace

void PlotVectors(Flag printing) {
    mapView.surface->SetPen({LineWidth(printing != kFalse ? kPrinterPenWidth : 1), LineDash::Solid,
                             plotState.outlineColour});
    if (options.lineNumbers != kFalse) {
        mapView.surface->SelectFont({settings.textFontName, kCodeFontSize});
    }

    VectorPass pass;
    pass.rect = mapView.rect;
    pass.notFull = mapView.extent.spanLong != 360;
    pass.precision = CurrentMap().precision;
    if (!OpenLevel(pass.reader, LevelPath(pass.precision))) return;
    if (IsFlat(mapView.extent.projection)) FillPositions(pass);

    plotState.crossings.assign(1, {});
    plotState.plotted = false;
    plotState.islandsOnly = false;
    DrawClasses(pass, printing);
    CloseLevel(pass.reader);
}

}  // namespace orvantis

// The vectors of a plot: the lines of the point database that the map shows, thinned by level,
// culled by area, wrapped at the map's edge. On the way it gathers what the fills of a zoomed map
// need: where coasts cross the edge, and whether anything was drawn at all.
#include <algorithm>
#include <array>
#include <cstdlib>
#include <string>
#include <vector>

#include "map/edge_sea.h"
#include "map/fills.h"
#include "map/level_reader.h"
#include "map/plot.h"
#include "map/point_database.h"
#include "session/files.h"
#include "session/settings.h"
#include "session/tables.h"
#include "text/numbers.h"

namespace orvantis {

namespace {

constexpr int kMostLatMin = 5400;
constexpr int kMostLongMin = 10800;
constexpr int kQuarterMin = 5400;

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
    int turn = 0;          // see PixelsAround
    std::int16_t precision = 5;
    LevelReader reader;
    std::int64_t unread = 0;                // bytes that the lines of the class may still take
    std::vector<std::int16_t> positions;    // of the two tables
    const std::int16_t* yOfLat = nullptr;   // from -kMostLatMin
    const std::int16_t* xOfLong = nullptr;  // from -kMostLongMin
    std::array<double, 3> centre{};         // of a globe: its direction in space
    std::vector<MapPoint> points;           // of a line, and where they lie
    std::vector<MapPixel> pixels;
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

MapPixel FlatPosition(const VectorPass& pass, MapPoint point) {
    const bool onEarth = point.lat >= -kMostLatMin && point.lat <= kMostLatMin &&
                         point.longitude >= -kMostLongMin && point.longitude <= kMostLongMin;
    if (onEarth) return {pass.xOfLong[point.longitude], pass.yOfLat[point.lat]};
    return {FlatX(point.longitude), FlatY(point.lat)};
}

// Where the points of a line lie that its file holds at `p`, all of them in one go.
void ProjectLine(VectorPass& pass, const std::uint8_t* p, int count) {
    pass.points.resize(static_cast<std::size_t>(count));
    for (MapPoint& point : pass.points) {
        point = {GetI16(p + 2), GetI16(p + 4)};
        p += kLinePointSize;
    }
    if (pass.yOfLat == nullptr) {
        ProjectPoints(pass.points, pass.pixels);
        return;
    }
    pass.pixels.clear();
    for (const MapPoint point : pass.points) pass.pixels.push_back(FlatPosition(pass, point));
}

bool StrictlyInside(const MapRect& rect, MapPixel p) {
    return p.x > rect.left && p.x < rect.left + rect.width && p.y > rect.top &&
           p.y < rect.top + rect.height;
}

// Coasts, islands and lakes part land from water; the crossings of the others tell nothing.
bool IsShore(int detailClass) {
    return detailClass == 1 || detailClass == 5 || detailClass == 6;
}

void AddCrossing(MapPixel from, MapPixel to) {
    const EdgeCrossing crossing = FindInsetCrossing(from.x, from.y, to.x, to.y);
    if (crossing.side == side::kNone) return;
    plotState.crossings.push_back(
        {crossing.side, crossing.x, crossing.y, crossing.startInside ? kTrue : kFalse});
}

// Narrows from..to, parts of a segment's length, to where u0 + part * (u1 - u0) lies within the
// bounds.
void CutToBounds(double u0, double u1, double low, double high, double& from, double& to) {
    const double run = u1 - u0;
    if (run == 0) {
        if (u0 < low || u0 > high) to = -1;
        return;
    }
    from = std::max(from, ((run > 0 ? low : high) - u0) / run);
    to = std::min(to, ((run > 0 ? high : low) - u0) / run);
}

// A segment without an end in a narrow view may still pass through it: it enters and it leaves.
void AddPassage(const VectorPass& pass, MapPixel from, MapPixel to) {
    const MapRect& rect = pass.rect;
    if (!pass.notFull || pass.yOfLat == nullptr) return;
    double enters = 0;
    double leaves = 1;
    CutToBounds(from.x, to.x, rect.left + 1, rect.left + rect.width - 1, enters, leaves);
    CutToBounds(from.y, to.y, rect.top + 1, rect.top + rect.height - 1, enters, leaves);
    if (enters >= leaves) return;
    const double part = (enters + leaves) / 2;
    const MapPixel within = {RoundToInt16(from.x + part * (to.x - from.x)),
                             RoundToInt16(from.y + part * (to.y - from.y))};
    AddCrossing(from, within);
    AddCrossing(within, to);
}

// What a view leaves out of the world may be shorter than a line: one that goes through it leaves
// at one side and comes in at the other.
void GoAround(const VectorPass& pass, MapPixel from, MapPixel to, bool shore) {
    const WayAround way = DrawAround(to.x, to.y, from.x, from.y);
    mapView.surface->SetPixel(to.x, to.y);
    if (!shore) return;
    if (StrictlyInside(pass.rect, from)) AddCrossing(from, {way.outX, to.y});
    if (StrictlyInside(pass.rect, to)) AddCrossing({way.inX, from.y}, to);
}

void StartLine(const VectorPass& pass, const LineIndexEntry& entry, MapPixel p) {
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

    ProjectLine(pass, p, held);
    DrawingSurface& surface = *mapView.surface;
    const bool shore = IsShore(entry.code / 1000);
    MapPixel previous;
    bool inside = false;
    bool started = false;
    for (int n = 1; n <= held; ++n, p += kLinePointSize) {
        if (GetI16(p) < pass.precision) continue;
        const MapPixel pixel = pass.pixels[static_cast<std::size_t>(n - 1)];
        if (!started) {
            StartLine(pass, entry, pixel);
            inside = StrictlyInside(pass.rect, pixel);
            if (inside) plotState.plotted = true;
            started = true;
        } else if (pixel.x == previous.x && pixel.y == previous.y) {
            // A finer file has many points in one pixel: nothing is drawn between them.
            if (n == count) surface.SetPixel(pixel.x, pixel.y);
        } else if (pass.turn != 0 && 2 * std::abs(pixel.x - previous.x) > pass.turn) {
            GoAround(pass, previous, pixel, shore);
            inside = StrictlyInside(pass.rect, pixel);
            if (inside) plotState.plotted = true;
        } else if (pass.notFull || pass.rect.width >= 2 * std::abs(pixel.x - previous.x)) {
            // A line stops one pixel short of its end.
            surface.LineTo(pixel.x, pixel.y);
            surface.SetPixel(pixel.x, pixel.y);
            const bool insideNow = StrictlyInside(pass.rect, pixel);
            if (insideNow) plotState.plotted = true;
            if (shore && insideNow != inside) AddCrossing(previous, pixel);
            if (shore && !insideNow && !inside) AddPassage(pass, previous, pixel);
            inside = insideNow;
        } else {
            ForceNewLine(pixel.x, pixel.y, previous.x, previous.y, kNoMark, 0);
            if (n == count) surface.SetPixel(pixel.x, pixel.y);
        }
        previous = pixel;
    }
}

// True if a corner of a line's extents lies on the near side of a globe, by the cosine of its
// distance from the centre. LineInView is asked where this comes too near to a quarter of a turn
// for its rounding, or to the half turn that it takes for none.
bool CornerInFront(const VectorPass& pass, std::int16_t latMin, std::int16_t longMin) {
    constexpr double kSure = 1e-5;
    const double cosLat = SineOfMinutes(latMin + kQuarterMin);
    const double cosine = cosLat * SineOfMinutes(longMin + kQuarterMin) * pass.centre[0] +
                          cosLat * SineOfMinutes(longMin) * pass.centre[1] +
                          SineOfMinutes(latMin) * pass.centre[2];
    if (cosine > kSure) return true;
    if (cosine < -kSure && cosine > kSure - 1) return false;
    return LineInView({latMin, latMin, longMin, longMin}, 0, 0, 0, 0, mapView.extent.projection);
}

// True if a line may be seen. The edges of a view lie up to half a minute beside the whole minutes
// that LineInView takes, and a piece of coast left out at the edge lets the sea in: so it is asked
// for edges a minute further out. On a globe the rule asks for two corners of the line's extents;
// where both lie behind, one of the other two may still be in front.
bool LineMayBeSeen(const VectorPass& pass, const LineIndexEntry& entry) {
    const ViewExtent& view = mapView.extent;
    if (view.spanLong >= 360) return true;
    if (!IsFlat(view.projection)) {
        return CornerInFront(pass, entry.latMin, entry.longMin) ||
               CornerInFront(pass, entry.latMax, entry.longMax) ||
               CornerInFront(pass, entry.latMax, entry.longMin) ||
               CornerInFront(pass, entry.latMin, entry.longMax);
    }
    const int outside = view.westMin - view.eastMin;  // minutes left out by a view over 180
    if (outside >= 0 && outside <= 2) return true;
    const auto moved = [](std::int16_t edge, int by) {
        return static_cast<std::int16_t>(edge + by);
    };
    return LineInView({entry.latMin, entry.latMax, entry.longMin, entry.longMax},
                      moved(view.southMin, -1), moved(view.northMin, 1), moved(view.westMin, -1),
                      moved(view.eastMin, 1), view.projection);
}

// All lines of a class that may be seen. The class range may be older than the index.
void DrawClass(VectorPass& pass, std::int16_t detailClass) {
    const ClassRow& row = pointDatabase.ClassRange[static_cast<std::size_t>(detailClass)];
    if (row.first < 1) return;
    pass.unread = pass.reader.length;
    for (int line = row.first; line <= row.last && line <= pointDatabase.count; ++line) {
        const LineIndexEntry& entry = pointDatabase.LineIndex[static_cast<std::size_t>(line)];
        if (!LineMayBeSeen(pass, entry)) continue;
        DrawLine(pass, entry);
        if (PendingRunTimeError() != 0) return;
    }
}

// True if the frame of a zoom led to the very view that is drawn, and met sea and no other colour.
bool ZoomMetSea() {
    const MapDocument& view = CurrentMap();
    const std::array<float, 4> edges = {view.south, view.west, view.north, view.east};
    return plotState.fillSeaOnly != kFalse && plotState.fillOtherColour == kFalse &&
           plotState.zoomedView == edges;
}

// A tip of a coast that just reaches the edge doesn't count where the zoom met nothing but sea.
bool NoCoastThroughEdge() {
    if (plotState.crossings.size() == 1) return true;
    return ZoomMetSea() && plotState.fillLand == kFalse && CrossingsCancel();
}

// Islands that stand in the sea, and no coast through the edge: then the corners are sea.
void TestIslandsOnly() {
    const ViewExtent& view = mapView.extent;
    if (!plotState.plotted || view.spanLong >= 360 || !NoCoastThroughEdge()) return;
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
    if (mapView.extent.spanLong < 360 && IsFlat(mapView.extent.projection)) FillEdgeSea();
}

// The frame of a zoom met nothing but sea, and nothing was drawn: the whole view is sea. Its fills
// are added once.
void AddSeaFills() {
    if (plotState.plotted || plotState.seaFillsAdded || !ZoomMetSea() || !NoCoastThroughEdge()) {
        return;
    }
    const ViewExtent& view = mapView.extent;
    const std::int16_t map = mapState.current;
    AddFill(map, view.centreLat, view.centreLong, true, 0);
    AddFill(map, view.southDeg, view.westDeg, true, 0);
    AddFill(map, view.southDeg, view.eastDeg, true, 0);
    AddFill(map, view.northDeg, view.westDeg, true, 0);
    AddFill(map, view.northDeg, view.eastDeg, true, 0);
    plotState.seaFillsAdded = true;
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
    // A file that is missing where there is no index either isn't told of again at every plot.
    const std::string path = LevelPath(pass.precision);
    if (pointDatabase.count < 1 && FileExists(path) == kFalse) return;
    if (!OpenLevel(pass.reader, path)) return;
    if (IsFlat(mapView.extent.projection)) FillPositions(pass);
    pass.turn = PixelsAround();
    const ViewExtent& view = mapView.extent;
    pass.centre = {CosD(view.centreLat) * CosD(view.centreLong),
                   CosD(view.centreLat) * SinD(view.centreLong), SinD(view.centreLat)};

    plotState.crossings.assign(1, {});
    plotState.plotted = false;
    plotState.islandsOnly = false;
    DrawClasses(pass, printing);
    CloseLevel(pass.reader);
}

}  // namespace orvantis

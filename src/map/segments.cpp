// The one primitive by which every curve is drawn on the map. A curve is drawn across the edge of a
// narrow view as it comes, and the clip cuts it. A segment of more than half a turn went round the
// back of the world, and is drawn out at one side and in at the other: in a full-width view by half
// the map's width, in any other by what a whole turn would take.
#include <algorithm>
#include <cmath>
#include <cstdlib>

#include "map/projection.h"
#include "text/numbers.h"

namespace orvantis {

namespace {

constexpr double kFullCircle = 360;
constexpr int kFullCircleMin = 21600;

// Pixels from which a position isn't told from one farther off.
constexpr int kFarthest = 32000;

std::int16_t SignOf(double value) {
    return static_cast<std::int16_t>(value > 0 ? 1 : value < 0 ? -1 : 0);
}

// The same position one map's width away, on the far side of the map's nearer edge. Half of the
// width is counted from the surface's edge, not the map's.
std::int16_t OtherSide(std::int16_t x) {
    const std::int16_t width = mapView.rect.width;
    return RoundToInt16(x - SignOf(x - width / 2.0) * width);
}

void MarkCrossing(std::int16_t x0, std::int16_t y0, std::int16_t x1, std::int16_t y1,
                  std::int16_t labelKind, std::int16_t labelCode) {
    if (labelKind < 0 || labelCode < 1) return;
    const EdgeCrossing crossing = FindEdgeCrossing(x0, y0, x1, y1);
    if (crossing.side == side::kNone) return;
    mapView.edgeMarks.push_back({crossing.x, crossing.y, crossing.side, labelKind, labelCode});
}

bool Wraps(std::int16_t x, std::int16_t lastX) {
    return mapView.extent.spanLong == kFullCircle && 2 * std::abs(x - lastX) > mapView.rect.width;
}

void ProjectDegrees(double lat, double longitude, std::int16_t& y, std::int16_t& x) {
    ProjectPoint(RoundToInt16(lat * 60), RoundToInt16(longitude * 60), y, x);
}

bool GoesAround(std::int16_t x, std::int16_t lastX) {
    const int around = PixelsAround();
    return around != 0 && 2 * std::abs(x - lastX) > around;
}

bool SampleVisible(double lat, double longitude) {
    const ViewExtent& view = mapView.extent;
    if (!IsFlat(view.projection)) return OnNearSide(lat, longitude);
    const bool latOK =
        view.spanLat >= 180 || (lat * 60 >= view.southMin && lat * 60 <= view.northMin);
    const bool longOK =
        view.spanLong >= kFullCircle || LongInView(longitude, view.westMin, view.eastMin);
    return latOK && longOK;
}

struct Position {
    double lat = 0;        // degrees
    double longitude = 0;  // degrees
};

// How often an arc of 2 degrees is halved: down to half an arc-minute.
constexpr int kMostHalvings = 8;

// No position of an arc of 2 degrees lies farther than this from the nearer of its ends.
constexpr double kHalfArc = 1;

// The middle of the shorter arc of the great circle between two positions.
Position MiddleOf(const Position& a, const Position& b) {
    const double cosineA = CosD(a.lat);
    const double cosineB = CosD(b.lat);
    const double x = cosineA * CosD(a.longitude) + cosineB * CosD(b.longitude);
    const double y = cosineA * SinD(a.longitude) + cosineB * SinD(b.longitude);
    const double z = SinD(a.lat) + SinD(b.lat);
    return {RadToDeg(std::atan2(z, std::hypot(x, y))), RadToDeg(std::atan2(y, x))};
}

// A difference of longitudes, -540 to 540, as the shorter way: -180 to 180.
double ShorterWay(double difference) {
    if (difference > kFullCircle / 2) return difference - kFullCircle;
    return difference < -kFullCircle / 2 ? difference + kFullCircle : difference;
}

// False only if no position of an arc lies in a flat map's view, its ends included. Along a great
// circle the longitude goes one way, by less than half a turn on such an arc, while the latitude
// may run past both ends by half of the arc, `room` degrees.
bool MayCrossView(const Position& a, const Position& b, double room) {
    constexpr double kMinute = 1 / 60.0;  // longitudes are compared in whole arc-minutes
    const ViewExtent& view = mapView.extent;
    if (view.spanLat < 180) {
        const double south = view.southMin * kMinute - room;
        const double north = view.northMin * kMinute + room;
        if ((a.lat < south && b.lat < south) || (a.lat > north && b.lat > north)) return false;
    }
    if (view.spanLong >= kFullCircle) return true;
    const double half = view.spanLong / 2.0;
    const double centre = ShorterWay(view.westMin * kMinute + half);
    const double along = ShorterWay(b.longitude - a.longitude);
    const double off = ShorterWay(a.longitude + along / 2 - centre);
    return std::abs(off) <= std::abs(along) / 2 + half + kMinute;
}

}  // namespace

bool OnNearSide(double lat, double longitude) {
    const ViewExtent& view = mapView.extent;
    const double cosine = SinD(lat) * SinD(view.centreLat) +
                          CosD(lat) * CosD(view.centreLat) * CosD(longitude - view.centreLong);
    return cosine > 0 &&
           PointInView(lat, longitude, view.southMin, view.northMin, view.westMin, view.eastMin);
}

void ForceNewLine(std::int16_t x, std::int16_t y, std::int16_t lastX, std::int16_t lastY,
                  std::int16_t labelKind, std::int16_t labelCode) {
    const std::int16_t outX = OtherSide(x);
    mapView.surface->LineTo(outX, y);
    MarkCrossing(lastX, lastY, outX, y, labelKind, labelCode);

    const std::int16_t inX = OtherSide(lastX);
    mapView.surface->MoveTo(inX, lastY);
    MarkCrossing(inX, lastY, x, y, labelKind, labelCode);
    mapView.surface->LineTo(x, y);
}

int PixelsAround() {
    const ViewExtent& view = mapView.extent;
    if (!IsFlat(view.projection) || view.spanLong == kFullCircle || view.spanLongMin < 1) return 0;
    const int around = kFullCircleMin * mapView.rect.width / view.spanLongMin;
    return around <= kFarthest ? around : 0;
}

WayAround DrawAround(std::int16_t x, std::int16_t y, std::int16_t lastX, std::int16_t lastY) {
    const int turn = x > lastX ? PixelsAround() : -PixelsAround();
    const auto held = [](int pixel) {
        return static_cast<std::int16_t>(std::clamp(pixel, -kFarthest, kFarthest));
    };
    const WayAround way = {held(x - turn), held(lastX + turn)};
    mapView.surface->LineTo(way.outX, y);
    mapView.surface->MoveTo(way.inX, lastY);
    mapView.surface->LineTo(x, y);
    return way;
}

void DrawMapSegment(double lat, double longitude, bool first, bool& visible, std::int16_t labelKind,
                    std::int16_t labelCode) {
    const bool now = SampleVisible(lat, longitude);
    std::int16_t x = mapView.lastX;
    std::int16_t y = mapView.lastY;
    bool around = false;
    if (now || visible) {
        ProjectDegrees(lat, longitude, y, x);
        if (!visible && first) {
            mapView.surface->MoveTo(x, y);
        } else {
            // A curve that comes into view starts at the sample before it, also where it wraps on
            // the way in: the pen stands wherever the last thing drawn has left it, and a line from
            // there would be none of the curve's.
            if (!visible) {
                ProjectDegrees(mapView.previousLat, mapView.previousLong, mapView.lastY,
                               mapView.lastX);
                mapView.surface->MoveTo(mapView.lastX, mapView.lastY);
            }
            around = GoesAround(x, mapView.lastX);
            if (around) {
                // Each end that is in view has its own crossing.
                const WayAround way = DrawAround(x, y, mapView.lastX, mapView.lastY);
                if (visible) {
                    MarkCrossing(mapView.lastX, mapView.lastY, way.outX, y, labelKind, labelCode);
                }
                if (now) MarkCrossing(way.inX, mapView.lastY, x, y, labelKind, labelCode);
            } else if (Wraps(x, mapView.lastX)) {
                ForceNewLine(x, y, mapView.lastX, mapView.lastY, labelKind, labelCode);
            } else {
                mapView.surface->LineTo(x, y);
            }
        }
    }

    if (now != visible && !first && !around) {
        MarkCrossing(mapView.lastX, mapView.lastY, x, y, labelKind, labelCode);
    }
    visible = now;
    mapView.previousLat = lat;
    mapView.previousLong = longitude;
    mapView.lastX = x;
    mapView.lastY = y;
}

namespace {

// Draws positions between two neighbours that are both out of view, until one is in view. Returns
// true if there is one. The former end has been drawn, the latter follows.
bool DrawBetween(const Position& a, const Position& b, int halvings, bool& visible,
                 std::int16_t labelKind, std::int16_t labelCode) {
    if (halvings == 0) return false;
    const double room = std::ldexp(kHalfArc, halvings - kMostHalvings);
    if (!MayCrossView(a, b, room)) return false;
    const Position middle = MiddleOf(a, b);
    if (SampleVisible(middle.lat, middle.longitude)) {
        DrawMapSegment(middle.lat, middle.longitude, false, visible, labelKind, labelCode);
        return true;
    }
    const bool before = DrawBetween(a, middle, halvings - 1, visible, labelKind, labelCode);
    DrawMapSegment(middle.lat, middle.longitude, false, visible, labelKind, labelCode);
    return DrawBetween(middle, b, halvings - 1, visible, labelKind, labelCode) || before;
}

}  // namespace

bool DrawGreatCircleSegment(double lat, double longitude, bool first, bool& visible,
                            std::int16_t labelKind, std::int16_t labelCode) {
    bool crosses = false;
    if (!first && !visible && IsFlat(mapView.extent.projection)) {
        const Position last = {mapView.previousLat, mapView.previousLong};
        const Position next = {lat, longitude};
        if (!MayCrossView(last, next, kHalfArc)) {
            mapView.previousLat = lat;
            mapView.previousLong = longitude;
            return false;
        }
        crosses = !SampleVisible(lat, longitude) &&
                  DrawBetween(last, next, kMostHalvings, visible, labelKind, labelCode);
    }
    DrawMapSegment(lat, longitude, first, visible, labelKind, labelCode);
    return crosses || visible;
}

}  // namespace orvantis

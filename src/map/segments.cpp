// The one primitive by which every curve is drawn on the map. A curve is drawn across the edge of a
// narrow view as it comes, and the clip cuts it; in a full-width view a segment longer than half
// the map went round the back of the world, and is drawn out at one side and in at the other.
#include <cmath>
#include <cstdlib>

#include "map/projection.h"
#include "text/numbers.h"

namespace orvantis {

namespace {

constexpr double kFullCircle = 360;

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

bool SampleVisible(double lat, double longitude) {
    const ViewExtent& view = mapView.extent;
    if (!IsFlat(view.projection)) {
        return AngularDistance(static_cast<float>(longitude), static_cast<float>(lat),
                               view.centreLong, view.centreLat) < 90;
    }
    const bool latOK =
        view.spanLat >= 180 || (lat * 60 >= view.southMin && lat * 60 <= view.northMin);
    const bool longOK =
        view.spanLong >= kFullCircle || LongInView(longitude, view.westMin, view.eastMin);
    return latOK && longOK;
}

}  // namespace

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

void DrawMapSegment(double lat, double longitude, bool first, bool& visible, std::int16_t labelKind,
                    std::int16_t labelCode) {
    const bool now = SampleVisible(lat, longitude);
    std::int16_t x = mapView.lastX;
    std::int16_t y = mapView.lastY;
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
            if (Wraps(x, mapView.lastX)) {
                ForceNewLine(x, y, mapView.lastX, mapView.lastY, labelKind, labelCode);
            } else {
                mapView.surface->LineTo(x, y);
            }
        }
    }

    if (now != visible && !first) {
        MarkCrossing(mapView.lastX, mapView.lastY, x, y, labelKind, labelCode);
    }
    visible = now;
    mapView.previousLat = lat;
    mapView.previousLong = longitude;
    mapView.lastX = x;
    mapView.lastY = y;
}

}  // namespace orvantis

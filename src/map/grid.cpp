// Whole meridians and parallels, and the coordinate grid of the map document.
#include <algorithm>
#include <cstdlib>

#include "map/projection.h"
#include "text/numbers.h"

namespace orvantis {

namespace {

constexpr int kSampleStep = 2;  // degrees between the samples of a grid line drawn as a curve

void Mark(std::int16_t x, std::int16_t y, std::int16_t sideOfMap, std::int16_t labelKind,
          std::int16_t labelCode) {
    if (labelKind < 0 || labelCode < 1) return;
    mapView.edgeMarks.push_back({x, y, sideOfMap, labelKind, labelCode});
}

bool MarksFirst(MarkEnds ends) {
    return ends == MarkEnds::First || ends == MarkEnds::Both;
}

bool MarksSecond(MarkEnds ends) {
    return ends == MarkEnds::Second || ends == MarkEnds::Both;
}

// A meridian of a globe that stands upright: half of an ellipse between the poles.
void DrawUprightMeridian(double longitude) {
    const MapRect& rect = mapView.rect;
    std::int16_t x = 0;
    std::int16_t y = 0;
    ProjectPoint(0, RoundToInt16(longitude * 60), y, x);
    const int mirror = 2 * rect.left + rect.width - x;
    if (std::abs(x - mirror) < 3) {
        mapView.surface->MoveTo(x, rect.top);
        mapView.surface->LineTo(x, rect.top + rect.height);
        return;
    }
    mapView.surface->Arc(std::min<int>(x, mirror), rect.top, std::max<int>(x, mirror) + 1,
                         rect.top + rect.height + 1, x > mirror ? -90 : 90, 180);
}

// Multiples of a step from -limit to limit, both included.
template <typename Draw>
void ForMultiples(float step, int limit, Draw draw) {
    // The dialog keeps a step within 1 to 90; a file may hold anything, even no number.
    const double held = step >= 1 ? std::min(step, 90.0F) : 1;
    const int count = static_cast<int>(limit / held);
    for (int i = -count; i <= count; ++i) draw(held * i);
}

}  // namespace

void DrawMeridian(double longitude, std::int16_t labelKind, std::int16_t labelCode, MarkEnds ends) {
    const ViewExtent& view = mapView.extent;
    const MapRect& rect = mapView.rect;
    if (IsFlat(view.projection)) {
        std::int16_t x = 0;
        std::int16_t y = 0;
        ProjectPoint(0, RoundToInt16(longitude * 60), y, x);
        const std::int16_t bottom = RoundToInt16(rect.top + rect.height);
        mapView.surface->MoveTo(x, rect.top);
        mapView.surface->LineTo(x, bottom);
        if (MarksFirst(ends)) Mark(x, rect.top, side::kTop, labelKind, labelCode);
        if (MarksSecond(ends)) Mark(x, bottom, side::kBottom, labelKind, labelCode);
    } else if (view.centreLat == 0) {
        DrawUprightMeridian(longitude);
    } else {
        bool visible = false;
        for (int lat = -90; lat <= 90; lat += kSampleStep) {
            DrawMapSegment(lat, longitude, lat == -90, visible, kNoMark, 0);
        }
    }
}

void DrawParallel(double lat, std::int16_t labelKind, std::int16_t labelCode, MarkEnds ends) {
    const ViewExtent& view = mapView.extent;
    const MapRect& rect = mapView.rect;
    if (!IsFlat(view.projection) && view.centreLat != 0) {
        if (lat - view.centreLat <= -90 || lat - view.centreLat >= 90) return;
        bool visible = false;
        for (int longitude = -180; longitude <= 180; longitude += kSampleStep) {
            DrawMapSegment(lat, longitude, longitude == -180, visible, kNoMark, 0);
        }
        return;
    }

    std::int16_t x = 0;
    std::int16_t y = 0;
    ProjectPoint(RoundToInt16(lat * 60), RoundToInt16(view.centreLong * 60.0), y, x);
    std::int16_t start = rect.left;
    std::int16_t end = RoundToInt16(rect.left + rect.width);
    if (!IsFlat(view.projection)) {
        const double chord = rect.width * CosD(lat);
        start = RoundToInt16(rect.left + (rect.width - chord) / 2);
        end = RoundToInt16(rect.left + (rect.width + chord) / 2);
    }
    mapView.surface->MoveTo(start, y);
    mapView.surface->LineTo(end, y);
    if (!IsFlat(view.projection)) return;
    if (MarksFirst(ends)) Mark(start, y, side::kLeft, labelKind, labelCode);
    if (MarksSecond(ends)) Mark(end, y, side::kRight, labelKind, labelCode);
}

void DrawGrid() {
    const MapDocument& document = CurrentMap();
    const ViewExtent& view = mapView.extent;
    if (document.gridOn == kFalse) return;

    const bool upright = IsFlat(view.projection) || view.centreLat == 0;
    ForMultiples(document.gridLongStep, 180, [&](double longitude) {
        // A tilted globe shows parts of every meridian.
        const bool inView =
            view.spanLong >= 360 || !upright || LongInView(longitude, view.westMin, view.eastMin);
        if (inView) DrawMeridian(longitude, kNoMark, 0, MarkEnds::None);
    });
    ForMultiples(document.gridLatStep, 90, [&](double lat) {
        const bool inView =
            !IsFlat(view.projection) || (lat * 60 > view.southMin && lat * 60 < view.northMin);
        if (inView) DrawParallel(lat, kNoMark, 0, MarkEnds::None);
    });
}

}  // namespace orvantis

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

// A step as it can be drawn: the dialog keeps it within 1 to 90, but a file may hold anything, even
// no number.
double HeldStep(float step) {
    return step >= 1 ? std::min(step, 90.0F) : 1;
}

// A tilted globe shows parts of every meridian.
bool MeridianInView(double longitude) {
    const ViewExtent& view = mapView.extent;
    const bool tilted = !IsFlat(view.projection) && view.centreLat != 0;
    return tilted || view.spanLong >= 360 || LongInView(longitude, view.westMin, view.eastMin);
}

bool ParallelInView(double lat) {
    const ViewExtent& view = mapView.extent;
    return !IsFlat(view.projection) || (lat * 60 > view.southMin && lat * 60 < view.northMin);
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
        const std::int16_t kind = ends == MarkEnds::None ? kNoMark : labelKind;
        bool visible = false;
        for (int lat = -90; lat <= 90; lat += kSampleStep) {
            DrawMapSegment(lat, longitude, lat == -90, visible, kind, labelCode);
        }
    }
}

void DrawParallel(double lat, std::int16_t labelKind, std::int16_t labelCode, MarkEnds ends) {
    const ViewExtent& view = mapView.extent;
    const MapRect& rect = mapView.rect;
    if (!IsFlat(view.projection) && view.centreLat != 0) {
        if (lat - view.centreLat <= -90 || lat - view.centreLat >= 90) return;
        const std::int16_t kind = ends == MarkEnds::None ? kNoMark : labelKind;
        bool visible = false;
        for (int longitude = -180; longitude <= 180; longitude += kSampleStep) {
            DrawMapSegment(lat, longitude, longitude == -180, visible, kind, labelCode);
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
    if (document.gridOn == kFalse) return;

    const double longStep = HeldStep(document.gridLongStep);
    const int meridians = static_cast<int>(180 / longStep);
    for (int i = -meridians; i <= meridians; ++i) {
        const double longitude = longStep * i;
        if (MeridianInView(longitude)) DrawMeridian(longitude, kNoMark, 0, MarkEnds::None);
    }
    const double latStep = HeldStep(document.gridLatStep);
    const int parallels = static_cast<int>(90 / latStep);
    for (int i = -parallels; i <= parallels; ++i) {
        const double lat = latStep * i;
        if (ParallelInView(lat)) DrawParallel(lat, kNoMark, 0, MarkEnds::None);
    }
}

}  // namespace orvantis

#include "lines/line_pens.h"

#include "map/plot.h"
#include "map/projection.h"
#include "session/settings.h"
#include "session/tables.h"
#include "text/numbers.h"

namespace orvantis {

namespace {

std::size_t Index(std::int16_t number) {
    return static_cast<std::size_t>(number);
}

// A file may hold any thickness; more than this hides the map.
constexpr std::int16_t kThickestLine = 64;

void SetPenInColour(const LineStyle& style, Colour colour) {
    Pen pen;
    pen.width = LineWidth(ClampInt(style.thickness, 1, kThickestLine));
    pen.dash = static_cast<LineDash>(ClampInt(style.style, 0, 4));
    pen.colour = InkColour(colour);
    pen.smooth = true;
    mapView.surface->SetPen(pen);
}

bool IsWholeWorld() {
    return mapView.extent.spanLong >= 360;
}

}  // namespace

bool IsLineTypeOn(std::int16_t type) {
    return settings.lineStyle[Index(type)].displayed != 0;
}

void SetLinePen(std::int16_t type, std::int16_t point) {
    const LineStyle& style = settings.lineStyle[Index(type)];
    SetPenInColour(style, style.planetColour != 0 ? pointColour[Index(point)] : style.colour);
}

void SetLinePen(std::int16_t type) {
    const LineStyle& style = settings.lineStyle[Index(type)];
    SetPenInColour(style, style.colour);
}

bool IsLongitudeShown(double longitude) {
    return IsWholeWorld() || LongInView(longitude, mapView.extent.westMin, mapView.extent.eastMin);
}

bool IsMeridianShown(double longitude) {
    const ViewExtent& view = mapView.extent;
    const bool tilted = !IsFlat(view.projection) && view.centreLat != 0;
    return tilted || IsLongitudeShown(longitude);
}

bool IsPositionShown(double lat, double longitude) {
    const ViewExtent& view = mapView.extent;
    if (!IsFlat(view.projection)) return OnNearSide(lat, longitude);
    return IsWholeWorld() ||
           PointInView(lat, longitude, view.southMin, view.northMin, view.westMin, view.eastMin);
}

void LabelPoint(double lat, double longitude, std::int16_t point, LabelPlace place) {
    std::int16_t x = 0;
    std::int16_t y = 0;
    ProjectPoint(RoundToInt16(lat * 60), RoundToInt16(longitude * 60), y, x);
    AddLineLabel(x, y, point, line_type::kPointLabel, place);
}

void DrawSamples(const std::vector<LinePosition>& samples, std::int16_t kind, std::int16_t type) {
    const bool flat = IsFlat(mapView.extent.projection);
    bool visible = false;
    const LinePosition* before = nullptr;
    for (const LinePosition& sample : samples) {
        // Over a pole a flat map's line goes out at the edge and comes in elsewhere.
        const bool turns = before != nullptr && flat && IsTurnAtPole(*before, sample);
        if (turns) visible = false;
        const bool first = before == nullptr || turns;
        if (DrawGreatCircleSegment(sample.lat, sample.longitude, first, visible, kind, type)) {
            chartLines.anyVisible = true;
        }
        before = &sample;
    }
}

}  // namespace orvantis

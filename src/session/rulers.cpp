#include "session/rulers.h"

#include <algorithm>
#include <cmath>

#include "lines/near_lines.h"
#include "map/map_document.h"
#include "map/plot.h"
#include "map/projection.h"
#include "text/coordinates.h"
#include "text/numbers.h"

namespace orvantis {

namespace {

constexpr int kMarkLength = 4;  // of a mark on a ruler, pixels to either side

// The interval of the grid as it is drawn: a file may hold anything.
double Interval(float step) {
    return step >= 1 ? std::min(step, 90.0F) : 1;
}

bool IsMeridian(std::int16_t kind) {
    return kind == ruler_kind::kMeridian;
}

// Columns of the meridians, or rows of the parallels, of the grid that are in view.
std::vector<int> GridPixels(std::int16_t kind) {
    const ViewExtent& view = mapView.extent;
    const MapDocument& map = CurrentMap();
    const double step = Interval(IsMeridian(kind) ? map.gridLongStep : map.gridLatStep);
    const int count = static_cast<int>((IsMeridian(kind) ? 180 : 90) / step);
    std::vector<int> pixels;
    for (int i = -count; i <= count; ++i) {
        const double degrees = step * i;
        const std::int16_t minutes = RoundToInt16(degrees * 60);
        if (IsMeridian(kind)) {
            const bool shown =
                view.spanLong >= 360 || LongInView(degrees, view.westMin, view.eastMin);
            if (shown) pixels.push_back(FlatX(minutes));
        } else if (minutes > view.southMin && minutes < view.northMin) {
            pixels.push_back(FlatY(minutes));
        }
    }
    return pixels;
}

// Distance in pixels from the nearest line of the grid of a kind; endless where the grid isn't
// shown.
double DistanceFromLine(std::int16_t kind, float position) {
    double least = INFINITY;
    if (CurrentMap().gridOn == 0) return least;
    for (const int line : GridPixels(kind))
        least = std::min<double>(least, std::abs(position - line));
    return least;
}

std::int16_t HeldOnMap(std::int16_t kind, float x, float y) {
    const MapRect& rect = mapView.rect;
    const int position = static_cast<int>(std::lround(IsMeridian(kind) ? x : y));
    const int start = IsMeridian(kind) ? rect.left : rect.top;
    const int length = IsMeridian(kind) ? rect.width : rect.height;
    return static_cast<std::int16_t>(std::clamp(position, start, start + length));
}

// Degrees of a column or a row.
float DegreesAt(std::int16_t kind, std::int16_t position) {
    const MapRect& rect = mapView.rect;
    float lat = 0;
    float longitude = 0;
    UnprojectPoint(CurrentMap(), IsMeridian(kind) ? position : rect.left,
                   IsMeridian(kind) ? rect.top : position, lat, longitude);
    return IsMeridian(kind) ? longitude : lat;
}

// The ruler itself, and across it a mark at each interval of the grid.
void AddRuler(std::vector<OverlayFigure>& figures, std::int16_t kind, int position) {
    const MapRect& rect = mapView.rect;
    const int right = rect.left + rect.width;
    const int bottom = rect.top + rect.height;
    const auto line = OverlayFigure::Kind::RulerLine;
    if (IsMeridian(kind)) {
        figures.push_back({line, position, rect.top, position, bottom});
        for (const int row : GridPixels(ruler_kind::kParallel)) {
            figures.push_back({line, position - kMarkLength, row, position + kMarkLength, row});
        }
    } else {
        figures.push_back({line, rect.left, position, right, position});
        for (const int column : GridPixels(ruler_kind::kMeridian)) {
            figures.push_back(
                {line, column, position - kMarkLength, column, position + kMarkLength});
        }
    }
}

bool RulersStand() {
    return mouseState.rulersPlot == plotState.screenPlots;
}

}  // namespace

void SeizeRuler(float x, float y) {
    if (!IsFlat(mapView.extent.projection)) return;
    const MapRect& rect = mapView.rect;
    const double reach = LineReach();
    if (x < rect.left - reach || x > rect.left + rect.width + reach) return;
    if (y < rect.top - reach || y > rect.top + rect.height + reach) return;
    const double fromMeridian = DistanceFromLine(ruler_kind::kMeridian, x);
    const double fromParallel = DistanceFromLine(ruler_kind::kParallel, y);
    if (std::min(fromMeridian, fromParallel) > reach) return;
    mouseState.rulerActive = kTrue;
    mouseState.rulerMoved = kFalse;
    mouseState.rulerKind =
        fromMeridian <= fromParallel ? ruler_kind::kMeridian : ruler_kind::kParallel;
    mouseState.rulerLast = HeldOnMap(mouseState.rulerKind, x, y);
}

void MoveRuler(float x, float y) {
    MouseState& mouse = mouseState;
    if (x == mouse.pointerX && y == mouse.pointerY) return;
    mouse.pointerX = x;
    mouse.pointerY = y;
    mouse.rulerMoved = kTrue;
    mouse.rulerLast = HeldOnMap(mouse.rulerKind, x, y);
}

void PlaceRuler() {
    if (mouseState.rulerMoved == 0) return;
    if (!RulersStand()) mouseState.rulers.clear();
    mouseState.rulersPlot = plotState.screenPlots;
    mouseState.rulers.push_back({mouseState.rulerKind, mouseState.rulerLast,
                                 DegreesAt(mouseState.rulerKind, mouseState.rulerLast)});
}

std::string RulerText() {
    const float degrees = DegreesAt(mouseState.rulerKind, mouseState.rulerLast);
    return IsMeridian(mouseState.rulerKind) ? LongTextOfDegrees(degrees)
                                            : LatTextOfDegrees(degrees);
}

std::vector<OverlayFigure> RulerFigures() {
    std::vector<OverlayFigure> figures;
    if (!IsFlat(mapView.extent.projection)) return figures;
    if (RulersStand()) {
        for (const RulerMark& ruler : mouseState.rulers) {
            AddRuler(figures, ruler.kind, ruler.position);
        }
    }
    if (mouseState.rulerActive != 0) AddRuler(figures, mouseState.rulerKind, mouseState.rulerLast);
    return figures;
}

void DrawRulersOn(Image& image) {
    constexpr std::uint32_t kWhite = 0xFFFFFFFF;
    constexpr std::uint32_t kBlack = 0xFF000000;
    constexpr int kDotStep = 3;  // a dot and two pixels between
    for (const OverlayFigure& line : RulerFigures()) {
        const bool upright = line.x0 == line.x1;
        const int length = upright ? line.y1 - line.y0 : line.x1 - line.x0;
        for (int along = 0; along <= length; ++along) {
            const int x = line.x0 + (upright ? 0 : along);
            const int y = line.y0 + (upright ? along : 0);
            if (x < 0 || x >= image.width || y < 0 || y >= image.height) continue;
            const auto row = static_cast<std::size_t>(y) * static_cast<std::size_t>(image.width);
            image.pixels[row + static_cast<std::size_t>(x)] =
                along % kDotStep == 0 ? kBlack : kWhite;
        }
    }
}

void DrawMouseMarks() {
    if (plotState.printing == kFalse || !RulersStand()) return;
    mapView.surface->SetPen({LineWidth(1), LineDash::Dot, InkColour(0)});
    for (const RulerMark& ruler : mouseState.rulers) {
        if (IsMeridian(ruler.kind)) {
            DrawMeridian(ruler.degrees, kNoMark, 0, MarkEnds::None);
        } else {
            DrawParallel(ruler.degrees, kNoMark, 0, MarkEnds::None);
        }
    }
}

}  // namespace orvantis

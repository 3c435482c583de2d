#include "lines/circles.h"

#include <cstdlib>

#include "charts/CALCCHRT.h"
#include "lines/chart_lines.h"
#include "lines/line_pens.h"
#include "map/plot.h"
#include "map/projection.h"
#include "session/settings.h"
#include "text/numbers.h"
#include "text/run_time_error.h"

namespace orvantis {

namespace {

constexpr std::int16_t kSignExtent = 180;  // degrees from one pole of the ecliptic to the other
constexpr std::int16_t kMostArcSteps = 181;
constexpr std::size_t kMostNightPoints = 190;
constexpr std::int16_t kNightColour = 1;  // of the classic colours: blue

bool IsGeodetic() {
    return options.mapZodiac == 1;
}

// West longitude of the place where the ecliptic's north pole is overhead: its right ascension is
// 270 degrees.
double EclipticPoleWest(const LineFrame& frame) {
    return -(Modulo(-90 - frame.midheavenRA - frame.offset - frame.placeLongW + 180, 360) - 180);
}

// The boundaries of Cancer and Capricorn leave the ecliptic's pole along one meridian, Cancer to
// the north. Over the Earth's pole it comes to the meridian opposite and has all of it down to the
// other pole of the ecliptic: the pole's meridian is Capricorn's at its foot, the one opposite
// Cancer's at its head, and there the marks stand.
MarkEnds EndsOf(const SignLine& line) {
    if (!IsFlat(mapView.extent.projection)) return MarkEnds::None;
    if (line.opposite == 0) return MarkEnds::Both;
    return line.bearing == 0 ? MarkEnds::Second : MarkEnds::First;
}

void PlotSignMeridian(const SignLine& line) {
    if (!IsMeridianShown(line.longitude)) return;
    chartLines.anyVisible = true;
    const std::int16_t sign = line.opposite == 0 ? line.sign : line.opposite;
    DrawMeridian(line.longitude, sign, line_type::kSigns, EndsOf(line));
}

SignLine GeodeticSignLine(std::int16_t i) {
    SignLine line;
    line.sign = i;
    line.isMeridian = true;
    line.longitude = Modulo(-options.geodeticStart + 30 * (i - 1) + 180, 360) - 180;
    return line;
}

SignLine CelestialSignLine(double poleWest, std::int16_t i) {
    SignLine line;
    // From the ecliptic's pole the beginning of Aries lies due east and that of Cancer due north.
    line.sign = i;
    line.bearing = NudgedBearing(Modulo(30 * (i - 1) + 90, 360) - 180);
    line.isMeridian = line.bearing == 0 || line.bearing == -180;
    if (line.isMeridian) line.opposite = static_cast<std::int16_t>(14 - i);
    const double turn = line.bearing == 0 ? 180 : 0;
    line.longitude = -(Modulo(poleWest + turn, 360) - 180);
    return line;
}

}  // namespace

HorizonCircle EclipticCircle(const LineFrame& frame) {
    if (IsGeodetic()) return MakeCircle(0, 0);
    return MakeCircle(frame.obliquity,
                      Modulo(-frame.midheavenRA - frame.placeLongW + 180, 360) - 180);
}

HorizonCircle PlaceHorizon(const LineFrame& frame) {
    return MakeCircle(frame.placeLat + 90, Modulo(90 - frame.placeLongW, 360) - 180);
}

HorizonCircle NightCircle(const LineFrame& frame) {
    const CalcChart& chart = calcChart[static_cast<std::size_t>(frame.slot)];
    return MakeCircle(
        chart.Dec[point::kSun] + 90.0,
        Modulo(chart.RA[point::kSun] - frame.midheavenRA - frame.placeLongW + 90, 360) - 180);
}

std::array<SignLine, 12> SignLines(const LineFrame& frame) {
    const double poleWest = EclipticPoleWest(frame);
    std::array<SignLine, 12> lines;
    for (std::int16_t i = 1; i <= 12; ++i) {
        lines[static_cast<std::size_t>(i) - 1] =
            IsGeodetic() ? GeodeticSignLine(i) : CelestialSignLine(poleWest, i);
    }
    return lines;
}

std::vector<LinePosition> SignSamples(const LineFrame& frame, const SignLine& line) {
    return GreatCircleSamples(line.bearing, 90 - frame.obliquity, -EclipticPoleWest(frame),
                              kSignExtent);
}

void PlotGreatCircle(char labelChar, std::int16_t type, double tilt, double node) {
    SetLinePen(type);
    DrawSamples(CircleSamples(QuarterOf(MakeCircle(tilt, node)), 0, 360), labelChar, type);
}

void PlotGreatArc(double tilt, double node, std::int16_t from, std::int16_t to) {
    const HorizonCircle circle = MakeCircle(tilt, node);
    const auto step = static_cast<std::int16_t>((to - from) / kMostArcSteps + 1);
    bool visible = false;
    for (int a = from; a <= to; a += step) {
        const auto u = static_cast<std::int16_t>(((a % 360) + 360) % 360);
        double lat = 0;
        double longitude = 0;
        CircleSample(circle, u, lat, longitude);
        DrawMapSegment(lat, longitude, a == from, visible, kNoMark, 0);
    }
}

void PlotSignLines(Flag /*printing*/, std::int16_t slot) {
    if (!IsLineTypeOn(line_type::kSigns)) return;
    const LineFrame frame = MakeLineFrame(slot);
    SetLinePen(line_type::kSigns);
    for (const SignLine& line : SignLines(frame)) {
        if (line.isMeridian) {
            PlotSignMeridian(line);
        } else {
            DrawSamples(SignSamples(frame, line), line.sign, line_type::kSigns);
        }
        if (PendingRunTimeError() != 0) return;
    }
}

void PlotCircles(Flag printing, std::int16_t slot) {
    if (IsLineTypeOn(line_type::kEcliptic)) {
        const HorizonCircle circle = EclipticCircle(MakeLineFrame(slot));
        PlotGreatCircle('E', line_type::kEcliptic, circle.tilt, circle.node);
    }
    if (PendingRunTimeError() != 0) return;
    PlotSignLines(printing, slot);
    if (PendingRunTimeError() != 0) return;
    if (IsLineTypeOn(line_type::kHorizon) && !IsGeodetic()) {
        const HorizonCircle circle = PlaceHorizon(MakeLineFrame(slot));
        PlotGreatCircle('H', line_type::kHorizon, circle.tilt, circle.node);
    }
}

bool CanShadeNight() {
    return mapView.extent.spanLong == 360 && IsFlat(mapView.extent.projection);
}

std::vector<SurfacePoint> NightPolygon(const LineFrame& frame) {
    const MapRect& rect = mapView.rect;
    const HorizonCircle circle = NightCircle(frame);
    const bool darkInTheSouth =
        calcChart[static_cast<std::size_t>(frame.slot)].Dec[point::kSun] > 0;
    const int edge = darkInTheSouth ? rect.top + rect.height : rect.top;
    std::vector<SurfacePoint> polygon;
    polygon.reserve(kMostNightPoints);
    for (std::int16_t u = 0; u <= 360; u += kSampleStep) {
        double lat = 0;
        double longitude = 0;
        CircleSample(circle, u, lat, longitude);
        std::int16_t x = 0;
        std::int16_t y = 0;
        ProjectPoint(RoundToInt16(lat * 60), RoundToInt16(longitude * 60), y, x);
        if (u != 0 && 2 * std::abs(x - polygon.back().x) > rect.width) {
            // Across the map's seam: out along its edge and in on the other side.
            const SurfacePoint last = polygon.back();
            const int right = rect.left + rect.width;
            const int out = x >= last.x ? rect.left : right;
            const int in = x >= last.x ? right : rect.left;
            polygon.insert(polygon.end(),
                           {last, {out, last.y}, {out, edge}, {in, edge}, {in, y}, {x, y}});
        } else {
            polygon.push_back({x, y});
        }
        if (polygon.size() > kMostNightPoints) polygon.resize(kMostNightPoints);
    }
    return polygon;
}

void PlotNightSide(Flag /*printing*/, std::int16_t /*slot*/) {
    constexpr std::int16_t kChartOnDisplay = 1;
    if (options.dayNight == 0 || !CanShadeNight()) return;
    if (calcChart[kChartOnDisplay].Lon[point::kSun] < 0) return;
    mapView.surface->Polygon(NightPolygon(MakeLineFrame(kChartOnDisplay)),
                             {FillKind::DiagonalCross, InkColour(ClassicColour(kNightColour))},
                             false);
}

}  // namespace orvantis

#include "lines/circles.h"

#include <cstdlib>

#include "charts/CALCCHRT.h"
#include "charts/QXASTRO.h"
#include "lines/chart_lines.h"
#include "lines/line_pens.h"
#include "map/plot.h"
#include "map/projection.h"
#include "session/settings.h"
#include "text/numbers.h"

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

void DrawCircleSample(const HorizonCircle& circle, std::int16_t u, bool first, bool& visible,
                      std::int16_t kind, std::int16_t type) {
    double lat = 0;
    double longitude = 0;
    CircleSample(circle, u, lat, longitude);
    DrawMapSegment(lat, longitude, first, visible, kind, type);
    if (visible) chartLines.anyVisible = true;
}

// A boundary through the Earth's pole runs on behind it: the meridian below the ecliptic's pole is
// that of Cancer at its head alone, and the one opposite that of Capricorn at its foot.
MarkEnds EndsOf(const SignLine& line) {
    if (!IsFlat(mapView.extent.projection)) return MarkEnds::None;
    if (!line.isSolstice) return MarkEnds::Both;
    return line.bearing == 0 ? MarkEnds::First : MarkEnds::Second;
}

void PlotSignMeridian(const SignLine& line) {
    if (!IsLongitudeShown(line.longitude)) return;
    chartLines.anyVisible = true;
    DrawMeridian(line.longitude, line.sign, line_type::kSigns, EndsOf(line));
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
    // The bearing turns against the zodiac.
    line.sign = static_cast<std::int16_t>((13 - i) % 12 + 1);
    line.bearing = NudgedBearing(Modulo(30 * (i - 1) + 90, 360) - 180);
    line.isSolstice = line.bearing == 0 || line.bearing == -180;
    line.isMeridian = line.isSolstice;
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

void PlotGreatCircle(char labelChar, std::int16_t type, const HorizonCircle& circle) {
    SetLinePen(type);
    bool visible = false;
    for (std::int16_t u = 0; u <= 360; u += kSampleStep) {
        DrawCircleSample(circle, u, u == 0, visible, labelChar, type);
    }
}

void PlotGreatArc(const HorizonCircle& circle, std::int16_t from, std::int16_t to) {
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
            continue;
        }
        bool visible = false;
        bool first = true;
        for (const LinePosition& sample : SignSamples(frame, line)) {
            DrawMapSegment(sample.lat, sample.longitude, first, visible, line.sign,
                           line_type::kSigns);
            if (visible) chartLines.anyVisible = true;
            first = false;
        }
    }
}

void PlotCircles(Flag printing, std::int16_t slot) {
    if (IsLineTypeOn(line_type::kEcliptic)) {
        PlotGreatCircle('E', line_type::kEcliptic, EclipticCircle(MakeLineFrame(slot)));
    }
    PlotSignLines(printing, slot);
    if (IsLineTypeOn(line_type::kHorizon) && !IsGeodetic()) {
        PlotGreatCircle('H', line_type::kHorizon, PlaceHorizon(MakeLineFrame(slot)));
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
                             {FillKind::DiagonalCross, AreaColour(ClassicColour(kNightColour))},
                             false);
}

}  // namespace orvantis

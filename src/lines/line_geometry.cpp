#include "lines/line_geometry.h"

#include <cmath>

#include "charts/CALCCHRT.h"
#include "charts/QXASTRO.h"
#include "lines/chart_lines.h"
#include "session/settings.h"
#include "text/numbers.h"

namespace orvantis {

namespace {

std::size_t Index(std::int16_t number) {
    return static_cast<std::size_t>(number);
}

const CalcChart& Chart(std::int16_t slot) {
    return calcChart[Index(slot)];
}

bool IsGeodetic() {
    return options.mapZodiac == 1;
}

// Right ascension, or longitude in the geodetic zodiac, less that of the chart's zero meridian:
// the angle that, less 180, is the geographic longitude under the point.
double HourOrigin(const LineFrame& frame, std::int16_t number) {
    if (IsGeodetic()) return Chart(frame.slot).Lon[Index(number)] - options.geodeticStart;
    double ra = Chart(frame.slot).RA[Index(number)];
    if (options.lineMode == 2) {
        double ignored = 0;
        EclipticForm(frame, number, ra, ignored);
    }
    return ra - frame.midheavenRA - frame.placeLongW;
}

// Latitude at which the great circle through two positions on either side of the antimeridian
// crosses it. The circle's plane has the normal a x b; a position (-cos lat, 0, sin lat) lies in
// it.
double CrossingLatitude(const LinePosition& a, const LinePosition& b) {
    struct Vector {
        double x, y, z;
    };
    const auto vectorOf = [](const LinePosition& p) -> Vector {
        return {CosD(p.lat) * CosD(p.longitude), CosD(p.lat) * SinD(p.longitude), SinD(p.lat)};
    };
    const Vector u = vectorOf(a);
    const Vector v = vectorOf(b);
    const double normalX = u.y * v.z - u.z * v.y;
    const double normalZ = u.x * v.y - u.y * v.x;
    if (normalZ == 0) return std::copysign(90, a.lat + b.lat);
    return RadToDeg(std::atan(normalX / normalZ));
}

std::vector<LinePosition> HalfCircle(const HorizonCircle& circle, std::int16_t type) {
    std::vector<LinePosition> samples;
    samples.reserve(kRiseSetSpan / kSampleStep + 1);
    const std::int16_t start = RiseSetStart(type);
    for (std::int16_t u = start; u <= start + kRiseSetSpan; u += kSampleStep) {
        LinePosition sample;
        CircleSample(circle, u, sample.lat, sample.longitude);
        samples.push_back(sample);
    }
    return samples;
}

}  // namespace

LineFrame MakeLineFrame(std::int16_t slot) {
    LineFrame frame;
    frame.slot = slot;
    const CalcChart& chart = Chart(slot);
    const double t = JulianCenturies(chart.JulianDayET);
    GetObliquity(t, frame.obliquity);
    frame.offset = Ayanamsa(chart.Zodiac, t);
    frame.placeLongW = chartNow.PlaceLongW;
    frame.placeLat = chartNow.PlaceLat;
    frame.midheavenRA = chart.RA[point::kMidheaven];
    return frame;
}

bool IsPointDrawn(std::int16_t slot, std::int16_t point) {
    return Chart(slot).Lon[Index(point)] >= 0 && pointSelection[Index(point)] != 0;
}

void EclipticForm(const LineFrame& frame, std::int16_t point, double& ra, double& dec) {
    const double l = Chart(frame.slot).Lon[Index(point)] - frame.offset;
    const double e = frame.obliquity;
    ra = Modulo(RadToDeg(ArcTan2(CosD(l), SinD(l) * CosD(e))), 360);
    dec = RadToDeg(ArcSin(SinD(e) * SinD(l)));
}

double MeridianLineLongitude(const LineFrame& frame, std::int16_t point, std::int16_t type) {
    const double side = type == line_type::kCulminate ? 180 : 0;
    return Modulo(HourOrigin(frame, point) + side, 360) - 180;
}

HorizonCircle MakeCircle(double tilt, double node) {
    return {tilt, node, SinD(tilt), CosD(tilt)};
}

HorizonCircle RiseSetCircle(const LineFrame& frame, std::int16_t point) {
    const CalcChart& chart = Chart(frame.slot);
    const double node = Modulo(HourOrigin(frame, point) + 90, 360) - 180;
    const bool zodiacal = options.lineMode == 2;
    if (IsGeodetic() && options.geodeticAscDsc == 0) {
        // The ecliptic serves as equator.
        return MakeCircle(zodiacal ? -90 : chart.Lat[Index(point)] - 90, node);
    }
    double dec = chart.Dec[Index(point)];
    if (zodiacal) {
        double ignored = 0;
        EclipticForm(frame, point, ignored, dec);
    }
    return MakeCircle(dec - 90, node);
}

std::int16_t RiseSetStart(std::int16_t type) {
    return type == line_type::kRise ? std::int16_t{-90} : std::int16_t{90};
}

void CircleSample(const HorizonCircle& circle, std::int16_t u, double& lat, double& longitude) {
    const auto k = static_cast<std::size_t>((u + 360) % 360);
    const double sine = WholeDegrees().sine[k];
    const double cosine = WholeDegrees().cosine[k];
    longitude = RadToDeg(ArcTan2(cosine, circle.cosineTilt * sine));
    lat = RadToDeg(ArcSin(circle.sineTilt * sine));
    longitude = Modulo(longitude + circle.node + 180, 360) - 180;
}

bool HasRiseSetLine(std::int16_t point) {
    return point != point::kSouthNode;
}

void GreatCircleStep(double bearing, double startLat, double s, double& lat, double& longitude) {
    const double b = RadToDeg(ArcTan2(CosD(s), SinD(s) * CosD(bearing)));
    const double c = RadToDeg(ArcSin(SinD(bearing) * SinD(s)));
    const double g = b + startLat;
    lat = RadToDeg(ArcSin(CosD(c) * SinD(g)));
    // Cosines in the place of a tangent: 90 degrees off in a direction due west there is none, and
    // one on the wrong side of it would put the position at the antipode.
    longitude = RadToDeg(ArcTan2(CosD(g) * CosD(c), -SinD(c)));
}

double NudgedBearing(double bearing) {
    return bearing == 90 || bearing == -90 ? bearing + 0.01 : bearing;
}

std::vector<LinePosition> GreatCircleSamples(double bearing, double startLat, double longitude,
                                             std::int16_t extent) {
    std::vector<LinePosition> samples;
    samples.reserve(static_cast<std::size_t>(extent / kSampleStep) + 1);
    for (std::int16_t s = 0; s <= extent; s += kSampleStep) {
        LinePosition sample;
        GreatCircleStep(bearing, startLat, s, sample.lat, sample.longitude);
        sample.longitude = Modulo(sample.longitude + longitude + 180, 360) - 180;
        samples.push_back(sample);
    }
    return samples;
}

std::vector<std::vector<LinePosition>> CutAtAntimeridian(const std::vector<LinePosition>& samples) {
    std::vector<std::vector<LinePosition>> runs(1);
    runs.back().reserve(samples.size() + 1);
    const LinePosition* before = nullptr;
    for (const LinePosition& sample : samples) {
        if (before != nullptr && std::abs(sample.longitude - before->longitude) > 180) {
            const double lat = CrossingLatitude(*before, sample);
            const double out = before->longitude > 0 ? 180 : -180;
            runs.back().push_back({lat, out});
            runs.push_back({{lat, -out}});
        }
        runs.back().push_back(sample);
        before = &sample;
    }
    return runs;
}

std::vector<std::vector<LinePosition>> LineRuns(const LineFrame& frame, std::int16_t point,
                                                std::int16_t type) {
    if (type == line_type::kCulminate || type == line_type::kAnticulminate) {
        const double longitude = MeridianLineLongitude(frame, point, type);
        return {{{-90, longitude}, {90, longitude}}};
    }
    if (!HasRiseSetLine(point)) return {};
    return CutAtAntimeridian(HalfCircle(RiseSetCircle(frame, point), type));
}

}  // namespace orvantis

#include "lines/line_geometry.h"

#include <algorithm>
#include <cmath>
#include <utility>

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
    const double lat = RadToDeg(std::atan(normalX / normalZ));
    // Over a pole the quotient's sign may be that of rounding errors.
    return std::abs(lat - a.lat) > 90 ? -lat : lat;
}

// Latitude, degrees, of a direction: its z, and the square of its distance from the axis. Near the
// poles an arc sine would lose half of the digits.
double LatitudeOf(double z, double asideSquared) {
    constexpr double kNearPole = 0.99;
    if (std::abs(z) < kNearPole) return RadToDeg(std::asin(z));
    return RadToDeg(std::copysign(std::acos(std::min(std::sqrt(asideSquared), 1.0)), z));
}

// A sum of two longitudes, -180 to 180.
double Wrapped(double longitude) {
    if (longitude >= 180) return longitude - 360;
    return longitude < -180 ? longitude + 360 : longitude;
}

// The position of an even degree of a circle's parameter.
LinePosition PositionOn(const CircleQuarter& quarter, int u) {
    const int k = u < 0 ? u + 360 : (u > 360 ? u - 360 : u);
    const bool south = k > 180;
    const bool nearNode = k <= 90 || k > 270;
    const int known = nearNode ? (south ? 360 - k : k) : std::abs(180 - k);
    const LinePosition& position = quarter.at[static_cast<std::size_t>(known / kSampleStep)];
    const double origin = nearNode ? quarter.node : Wrapped(quarter.node + 180);
    const double east = nearNode == south ? -position.longitude : position.longitude;
    return {south ? -position.lat : position.lat, Wrapped(origin + east)};
}

// A line that ends at a pole comes there along a meridian. The pole itself has any longitude: by
// the formula that of rounding errors.
void TurnPole(LinePosition& end, const LinePosition& neighbour) {
    constexpr double kAtPole = 90 - 1e-9;
    if (std::abs(end.lat) >= kAtPole) end.longitude = neighbour.longitude;
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

CircleQuarter QuarterOf(const HorizonCircle& circle) {
    CircleQuarter quarter;
    quarter.node = Modulo(circle.node + 180, 360) - 180;
    for (std::size_t i = 0; i < quarter.at.size(); ++i) {
        const double sine = WholeDegrees().sine[i * kSampleStep];
        const double cosine = WholeDegrees().cosine[i * kSampleStep];
        const double aside = circle.cosineTilt * sine;
        quarter.at[i] = {LatitudeOf(circle.sineTilt * sine, cosine * cosine + aside * aside),
                         RadToDeg(ArcTan2(cosine, aside))};
    }
    return quarter;
}

std::vector<LinePosition> CircleSamples(const CircleQuarter& quarter, std::int16_t from,
                                        std::int16_t to) {
    std::vector<LinePosition> samples;
    samples.reserve(static_cast<std::size_t>((to - from) / kSampleStep) + 1);
    for (int u = from; u <= to; u += kSampleStep) samples.push_back(PositionOn(quarter, u));
    if (samples.size() > 1) {
        TurnPole(samples.front(), samples[1]);
        TurnPole(samples.back(), samples[samples.size() - 2]);
    }
    return samples;
}

// The direction at a place is the sum of its north and its west, by the cosine and the sine of the
// bearing: (-sin, 0, cos) of the latitude, and (0, -1, 0).
GreatCircle MakeGreatCircle(double bearing, double startLat) {
    const double north = CosD(bearing);
    const double sine = SinD(startLat);
    const double cosine = CosD(startLat);
    return {cosine, sine, -north * sine, -SinD(bearing), north * cosine};
}

LinePosition PositionOn(const GreatCircle& circle, double sine, double cosine) {
    const double x = cosine * circle.startX + sine * circle.onX;
    const double y = sine * circle.onY;
    const double z = cosine * circle.startZ + sine * circle.onZ;
    return {LatitudeOf(z, x * x + y * y), RadToDeg(ArcTan2(x, y))};
}

double NudgedBearing(double bearing) {
    return bearing == 90 || bearing == -90 ? bearing + 0.01 : bearing;
}

std::vector<LinePosition> GreatCircleSamples(double bearing, double startLat, double longitude,
                                             std::int16_t extent) {
    const GreatCircle circle = MakeGreatCircle(bearing, startLat);
    const double origin = Modulo(longitude + 180, 360) - 180;
    std::vector<LinePosition> samples;
    samples.reserve(static_cast<std::size_t>(extent / kSampleStep) + 1);
    for (std::int16_t s = 0; s <= extent; s += kSampleStep) {
        if (s >= 180) {
            // Half a turn on lies the antipode.
            const LinePosition& start = samples[static_cast<std::size_t>((s - 180) / kSampleStep)];
            samples.push_back({-start.lat, Wrapped(start.longitude + 180)});
            continue;
        }
        const auto k = static_cast<std::size_t>(s);
        LinePosition sample = PositionOn(circle, WholeDegrees().sine[k], WholeDegrees().cosine[k]);
        sample.longitude = Wrapped(sample.longitude + origin);
        samples.push_back(sample);
    }
    return samples;
}

LineParts CutAtAntimeridian(std::vector<LinePosition> samples) {
    LineParts parts(1);
    parts.back() = std::move(samples);
    std::size_t i = 1;
    while (i < parts.back().size()) {
        std::vector<LinePosition>& part = parts.back();
        const LinePosition& before = part[i - 1];
        if (!(std::abs(part[i].longitude - before.longitude) > 180)) {
            ++i;
            continue;
        }
        const double lat = CrossingLatitude(before, part[i]);
        const double out = before.longitude > 0 ? 180 : -180;
        std::vector<LinePosition> rest;
        rest.reserve(part.size() - i + 2);
        rest.push_back({lat, -out});
        rest.insert(rest.end(), part.begin() + static_cast<std::ptrdiff_t>(i), part.end());
        part.resize(i);
        part.push_back({lat, out});
        parts.push_back(std::move(rest));
        i = 2;  // past the crossing and the sample that follows it
    }
    return parts;
}

LineParts MeridianParts(double longitude) {
    return {{{-90, longitude}, {90, longitude}}};
}

LineParts RiseSetParts(const CircleQuarter& quarter, std::int16_t type) {
    const std::int16_t start = RiseSetStart(type);
    return CutAtAntimeridian(
        CircleSamples(quarter, start, static_cast<std::int16_t>(start + kRiseSetSpan)));
}

LineParts LineRuns(const LineFrame& frame, std::int16_t point, std::int16_t type) {
    if (type == line_type::kCulminate || type == line_type::kAnticulminate) {
        return MeridianParts(MeridianLineLongitude(frame, point, type));
    }
    if (!HasRiseSetLine(point)) return {};
    return RiseSetParts(QuarterOf(RiseSetCircle(frame, point)), type);
}

}  // namespace orvantis

#include "lines/line_geometry.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "charts/CALCCHRT.h"
#include "charts/QXASTRO.h"
#include "lines/append_made.h"
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

// Every other sine and cosine of the whole degrees from 0 up to 360, so that neighbours are
// neighbours in memory.
struct SampleTables {
    std::array<double, 360 / kSampleStep> sine{};
    std::array<double, 360 / kSampleStep> cosine{};
};

const SampleTables& Samples() {
    static const SampleTables tables = [] {
        SampleTables t;
        for (std::size_t i = 0; i < t.sine.size(); ++i) {
            t.sine[i] = WholeDegrees().sine[i * kSampleStep];
            t.cosine[i] = WholeDegrees().cosine[i * kSampleStep];
        }
        return t;
    }();
    return tables;
}

// How many positions a cut puts in, for the two that most great circles have at most: there is room
// for them from the start.
constexpr std::size_t kRoomForCuts = 4;

// How a quarter of a circle mirrors the one that is known: by the last degree of its parameter.
struct Mirror {
    int last = 0;
    bool backwards = false;  // it runs from the known one's end to its beginning
    bool far = false;        // it lies half a turn from the node
    double side = 1;         // -1 south of the equator
    double east = 1;         // what the known longitudes are counted with
};
constexpr std::array<Mirror, 4> kMirrors = {{{90, false, false, 1, 1},
                                             {180, true, true, 1, -1},
                                             {270, false, true, -1, 1},
                                             {360, true, false, -1, -1}}};

const Mirror& MirrorOf(int k) {
    std::size_t i = 0;
    while (k > kMirrors[i].last) ++i;
    return kMirrors[i];
}

// Appends the positions of one quarter, from the even degree k (0 to 360) on, `most` at most.
void AppendQuarter(std::vector<LinePosition>& samples, const CircleQuarter& quarter, int k,
                   int most) {
    const Mirror& mirror = MirrorOf(k);
    const int left = (mirror.last - k) / kSampleStep;
    const double origin = mirror.far ? Wrapped(quarter.node + 180) : quarter.node;
    const double side = mirror.side;
    const double east = mirror.east;
    const LinePosition* const known =
        quarter.at.data() + (mirror.backwards ? left : 90 / kSampleStep - left);
    const std::ptrdiff_t step = mirror.backwards ? -1 : 1;
    AppendMade(samples, static_cast<std::size_t>(std::min(left + 1, most)), [=](std::size_t i) {
        const LinePosition& at = known[static_cast<std::ptrdiff_t>(i) * step];
        return LinePosition{side * at.lat, Wrapped(origin + east * at.longitude)};
    });
}

// How near to a pole, to the half turn or to the antimeridian a position counts as being there:
// less than a tenth of a millimetre on the ground, degrees.
constexpr double kThere = 1e-9;

bool IsAtPole(const LinePosition& position) {
    return std::abs(position.lat) >= 90 - kThere;
}

bool IsHalfTurn(const LinePosition& a, const LinePosition& b) {
    const double apart = std::abs(a.longitude - b.longitude);
    return apart > 90 && apart < 270;
}

// Samples of a circle that goes over the poles, which is a meridian and the one opposite: at a
// pole, whose own longitude is that of rounding errors, the line comes along the one and goes along
// the other. An end at a pole has the one meridian that it has.
void GoOverPoles(std::vector<LinePosition>& samples) {
    if (samples.size() < 2) return;
    constexpr std::size_t kMostAdded = 8;
    std::vector<LinePosition> line;
    line.reserve(samples.size() + kMostAdded);
    for (std::size_t i = 0; i < samples.size(); ++i) {
        const LinePosition& sample = samples[i];
        if (IsAtPole(sample)) {
            const double pole = std::copysign(90, sample.lat);
            if (i > 0) line.push_back({pole, samples[i - 1].longitude});
            if (i + 1 < samples.size()) line.push_back({pole, samples[i + 1].longitude});
            continue;
        }
        if (i > 0 && !IsAtPole(samples[i - 1]) && IsHalfTurn(samples[i - 1], sample)) {
            const double pole = std::copysign(90, samples[i - 1].lat + sample.lat);
            line.push_back({pole, samples[i - 1].longitude});
            line.push_back({pole, sample.longitude});
        }
        line.push_back(sample);
    }
    samples = std::move(line);
}

bool IsOnAntimeridian(const LinePosition& position) {
    return std::abs(position.longitude) >= 180 - kThere;
}

// A position on the antimeridian lies at 180 and at -180 degrees: it takes the side of another.
void TakeSide(LinePosition& position, const LinePosition& other) {
    position.longitude = std::copysign(180, other.longitude);
}

// Index of the first position, from `i` (at least 1) on, that lies across the antimeridian from the
// one before it; the number of positions if there is none. Those on it take the side of the one
// before on the way. Over a pole nothing is crossed.
std::size_t CrossingFrom(std::vector<LinePosition>& positions, std::size_t i) {
    LinePosition* const at = positions.data();
    const std::size_t count = positions.size();
    for (; i < count; ++i) {
        if (IsOnAntimeridian(at[i])) [[unlikely]] {
            TakeSide(at[i], at[i - 1]);
        }
        if (std::abs(at[i].longitude - at[i - 1].longitude) > 180 &&
            !IsTurnAtPole(at[i - 1], at[i])) {
            break;
        }
    }
    return i;
}

constexpr std::size_t kHalfTurn = 180 / kSampleStep;  // samples, without the antipode

// Appends the first `count` samples of a circle, at most half a turn. Each step of the work is done
// for all of them before the next one: so a processor has several in hand at once.
void AppendHalfTurn(std::vector<LinePosition>& samples, const GreatCircle& circle, double origin,
                    std::size_t count) {
    std::array<double, kHalfTurn> x;
    std::array<double, kHalfTurn> y;
    std::array<double, kHalfTurn> z;
    const SampleTables& tables = Samples();
    for (std::size_t i = 0; i < kHalfTurn; ++i) {
        const double sine = tables.sine[i];
        const double cosine = tables.cosine[i];
        x[i] = cosine * circle.startX + sine * circle.onX;
        y[i] = sine * circle.onY;
        z[i] = cosine * circle.startZ + sine * circle.onZ;
    }
    std::array<double, kHalfTurn> lats;
    std::array<double, kHalfTurn> longitudes;
    for (std::size_t i = 0; i < count; ++i) lats[i] = LatitudeOf(z[i], x[i] * x[i] + y[i] * y[i]);
    for (std::size_t i = 0; i < count; ++i) longitudes[i] = ArcTan2(x[i], y[i]);
    AppendMade(samples, count, [&](std::size_t i) {
        return LinePosition{lats[i], Wrapped(RadToDeg(longitudes[i]) + origin)};
    });
}

// True if the circle's plane holds the axis. The z of the plane's normal is the sine of the
// circle's least distance from a pole.
bool GoesOverPoles(const GreatCircle& circle) {
    constexpr double kThereRadians = kThere * 3.14159265358979323846 / 180;
    return std::abs(circle.startX * circle.onY) < kThereRadians;
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
    const SampleTables& tables = Samples();
    for (std::size_t i = 0; i < quarter.at.size(); ++i) {
        const double sine = tables.sine[i];
        const double cosine = tables.cosine[i];
        const double aside = circle.cosineTilt * sine;
        quarter.at[i] = {LatitudeOf(circle.sineTilt * sine, cosine * cosine + aside * aside),
                         RadToDeg(ArcTan2(cosine, aside))};
    }
    return quarter;
}

std::vector<LinePosition> CircleSamples(const CircleQuarter& quarter, std::int16_t from,
                                        std::int16_t to) {
    const auto count = static_cast<std::size_t>((to - from) / kSampleStep) + 1;
    std::vector<LinePosition> samples;
    samples.reserve(count + kRoomForCuts);
    for (int u = from; u <= to; u = from + static_cast<int>(samples.size()) * kSampleStep) {
        // From below 0 the last quarter ends before u = 0, which is the first one's.
        const int end = u < 0 ? std::min<int>(to, -kSampleStep) : to;
        AppendQuarter(samples, quarter, u < 0 ? u + 360 : (u > 360 ? u - 360 : u),
                      (end - u) / kSampleStep + 1);
    }
    if (IsAtPole(quarter.at.back())) GoOverPoles(samples);
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

double NudgedBearing(double bearing) {
    return bearing == 90 || bearing == -90 ? bearing + 0.01 : bearing;
}

std::vector<LinePosition> GreatCircleSamples(double bearing, double startLat, double longitude,
                                             std::int16_t extent) {
    const GreatCircle circle = MakeGreatCircle(bearing, startLat);
    const double origin = Modulo(longitude + 180, 360) - 180;
    const auto count = static_cast<std::size_t>(extent / kSampleStep) + 1;
    std::vector<LinePosition> samples;
    samples.reserve(count + kRoomForCuts);
    AppendHalfTurn(samples, circle, origin, std::min(count, kHalfTurn));
    while (samples.size() < count) {
        // Half a turn on lies the antipode.
        const LinePosition* const start = samples.data() + samples.size() - kHalfTurn;
        AppendMade(samples, std::min(count - samples.size(), kHalfTurn), [start](std::size_t i) {
            return LinePosition{-start[i].lat, Wrapped(start[i].longitude + 180)};
        });
    }
    if (GoesOverPoles(circle)) GoOverPoles(samples);
    return samples;
}

bool IsTurnAtPole(const LinePosition& before, const LinePosition& after) {
    return std::abs(before.lat) == 90 && before.lat == after.lat;
}

LineParts CutAtAntimeridian(std::vector<LinePosition> samples) {
    LineParts parts;
    parts.positions = std::move(samples);
    std::vector<LinePosition>& positions = parts.positions;
    if (!positions.empty() && IsOnAntimeridian(positions.front())) {
        const auto off = std::find_if_not(positions.begin(), positions.end(), IsOnAntimeridian);
        TakeSide(positions.front(), off == positions.end() ? positions.front() : *off);
    }
    std::size_t i = CrossingFrom(positions, 1);
    while (i < positions.size()) {
        const LinePosition before = positions[i - 1];
        const auto at = positions.begin() + static_cast<std::ptrdiff_t>(i);
        if (std::abs(before.longitude) == 180) {
            // The former of the two lies on the antimeridian: it ends the run.
            positions.insert(at, LinePosition{before.lat, -before.longitude});
            parts.cuts.push_back(i);
            i = CrossingFrom(positions, i + 2);
            continue;
        }
        const double lat = CrossingLatitude(before, *at);
        const double out = before.longitude > 0 ? 180 : -180;
        positions.insert(at, {{lat, out}, {lat, -out}});
        parts.cuts.push_back(i + 1);
        i = CrossingFrom(positions, i + 3);  // past the crossing and the sample that follows it
    }
    return parts;
}

LineParts MeridianParts(double longitude) {
    LineParts parts;
    parts.positions = {{-90, longitude}, {90, longitude}};
    return parts;
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

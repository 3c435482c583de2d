// Kepler orbits of the hypothetical points, precession, and the apparent place.
#include "charts/hypothetical.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <optional>

#include "text/numbers.h"
#include "text/strings.h"

namespace orvantis {

namespace {

constexpr double kJ1900 = 2415020.0;
constexpr double kCentury = 36525;
constexpr double kArcSecond = DegToRad / 3600;

double Dot(const Vector& a, const Vector& b) {
    return a[0] * b[0] + a[1] * b[1] + a[2] * b[2];
}

double Length(const Vector& a) {
    return std::sqrt(Dot(a, a));
}

Vector Cross(const Vector& a, const Vector& b) {
    return {a[1] * b[2] - a[2] * b[1], a[2] * b[0] - a[0] * b[2], a[0] * b[1] - a[1] * b[0]};
}

Vector Scaled(const Vector& a, double factor) {
    return {a[0] * factor, a[1] * factor, a[2] * factor};
}

Vector Sum(const Vector& a, const Vector& b) {
    return {a[0] + b[0], a[1] + b[1], a[2] + b[2]};
}

Vector Difference(const Vector& a, const Vector& b) {
    return {a[0] - b[0], a[1] - b[1], a[2] - b[2]};
}

// From the frame back to the axes in which the frame is given.
Vector OutOfFrame(const Matrix& frame, const Vector& place) {
    return Sum(Sum(Scaled(frame[0], place[0]), Scaled(frame[1], place[1])),
               Scaled(frame[2], place[2]));
}

// A periodic term of the precession: period in centuries, amplitudes in seconds of arc of the
// cosine and of the sine in the two quantities of a series.
struct Term {
    double period;
    double cos1;
    double cos2;
    double sin1;
    double sin2;
};

// Rows as they are printed in the tables of the source.
// clang-format off
constexpr std::array<Term, 8> kEclipticTerms = {{
    { 708.15, -5486.751211, -684.661560,   667.666730, -5523.863691},
    {2309.00,   -17.127623, 2446.283880, -2354.886252,  -549.747450},
    {1620.00,  -617.517403,  399.671049,  -428.152441,  -310.998056},
    { 492.20,   413.442940, -356.652376,   376.202861,   421.535876},
    {1183.00,    78.614193, -186.387003,   184.778874,   -36.776172},
    { 622.00,  -180.732815, -316.800070,   335.321713,  -145.278396},
    { 882.00,   -87.676083,  198.296701,  -185.138669,   -34.744450},
    { 547.00,    46.140315,  101.135679,  -120.972830,    22.885731}}};
constexpr std::array<double, 4> kEclipticP = {5851.607687, -0.1189000, -0.00028913, 0.000000101};
constexpr std::array<double, 4> kEclipticQ = {-1600.886300, 1.1689818, -0.00000020, -0.000000437};

constexpr std::array<Term, 14> kEquatorTerms = {{
    { 256.75,  -819.940624, 75004.344875, 81491.287984,  1558.515853},
    { 708.15, -8444.676815,   624.033993,   787.163481,  7774.939698},
    { 274.20,  2600.009459,  1251.136893,  1251.296102, -2219.534038},
    { 241.45,  2755.175630, -1102.212834, -1257.950837, -2523.969396},
    {2309.00,  -167.659835, -2660.664980, -2966.799730,   247.850422},
    { 492.20,   871.855056,   699.291817,   639.744522,  -846.485643},
    { 396.10,    44.769698,   153.167220,   131.600209, -1393.124055},
    { 288.90,  -512.313065,  -950.865637,  -445.040117,   368.526116},
    { 231.10,  -819.415595,   499.754645,   584.522874,   749.045012},
    {1610.00,  -538.071099,  -145.188210,   -89.756563,   444.704518},
    { 620.00,  -189.793622,   558.116553,   524.429630,   235.934465},
    { 157.87,  -402.922932,   -23.923029,   -13.549067,   374.049623},
    { 220.30,   179.516345,  -165.405086,  -210.157124,  -171.330180},
    {1200.00,    -9.814756,     9.344131,   -44.919798,   -22.899655}}};
constexpr std::array<double, 4> kEquatorX = {5453.282155, 0.4252841, -0.00037173, -0.000000152};
constexpr std::array<double, 4> kEquatorY = {-73750.930350, -0.7675452, -0.00018725, 0.000000231};
// clang-format on

// The two quantities of a series in radians, `t` in centuries from J2000.
template <std::size_t kCount>
std::array<double, 2> PrecessionSeries(const std::array<Term, kCount>& terms,
                                       const std::array<double, 4>& polynomial1,
                                       const std::array<double, 4>& polynomial2, double t) {
    double first = 0;
    double second = 0;
    for (const Term& term : terms) {
        const double angle = 2 * PI * t / term.period;
        const double c = std::cos(angle);
        const double s = std::sin(angle);
        first += c * term.cos1 + s * term.sin1;
        second += c * term.cos2 + s * term.sin2;
    }
    double power = 1;
    for (std::size_t i = 0; i < polynomial1.size(); ++i) {
        first += polynomial1[i] * power;
        second += polynomial2[i] * power;
        power *= t;
    }
    return {first * kArcSecond, second * kArcSecond};
}

// The third direction cosine of a unit vector.
double ThirdCosine(double first, double second) {
    return std::sqrt(std::max(0.0, 1 - first * first - second * second));
}

// The poles of date in the mean equator and equinox of J2000.
struct Poles {
    Vector equator{};
    Vector ecliptic{};
};

Poles PolesOfDate(double jd) {
    const double t = (jd - kJ2000) / kCentury;
    const auto [x, y] = PrecessionSeries(kEquatorTerms, kEquatorX, kEquatorY, t);

    // The pole of the ecliptic is turned from the ecliptic of J2000.
    constexpr double kObliquity2000 = 84381.406 / 3600;
    const auto [p, q] = PrecessionSeries(kEclipticTerms, kEclipticP, kEclipticQ, t);
    const double w = ThirdCosine(p, q);
    const double s = SinD(kObliquity2000);
    const double c = CosD(kObliquity2000);
    return {{x, y, ThirdCosine(x, y)}, {p, -q * c - w * s, -q * s + w * c}};
}

// Where the ecliptic rises over the equator.
Vector Equinox(const Poles& poles) {
    const Vector node = Cross(poles.equator, poles.ecliptic);
    return Scaled(node, 1 / Length(node));
}

// The elements of an orbit: degrees, astronomical units, Julian days.
struct Orbit {
    double epoch;
    double equinox;
    double meanAnomaly;  // at the epoch
    double semiAxis;
    double eccentricity;
    double perihelion;  // from the node
    double node;
    double inclination;
};

// The Uranian points of A. Witte and F. Sieggruen as J. Neely refined their elements; TransPluto by
// W. Strubell (Die Sterne 3/1952, page 70), who gives no equinox: 1945 is taken. Both as they stand
// in the element file of Swiss Ephemeris.
// clang-format off
constexpr std::array<Orbit, 10> kOrbits = {{
    {},
    {kJ1900, kJ1900, 163.7409, 40.99837, 0.00460, 171.4333, 129.8325, 1.0833},  // Cupido
    {kJ1900, kJ1900,  27.6496, 50.66744, 0.00245, 148.1796, 161.3339, 1.0500},  // Hades
    {kJ1900, kJ1900, 165.1232, 59.21436, 0.00120, 299.0440,   0.0000, 0.0000},  // Zeus
    {kJ1900, kJ1900, 169.0193, 64.81690, 0.00305, 208.8801,   0.0000, 0.0000},  // Kronos
    {kJ1900, kJ1900, 138.0533, 70.29949, 0.00000,   0.0000,   0.0000, 0.0000},  // Apollon
    {kJ1900, kJ1900, 351.3350, 73.62765, 0.00000,   0.0000,   0.0000, 0.0000},  // Admetos
    {kJ1900, kJ1900,  55.8983, 77.25568, 0.00000,   0.0000,   0.0000, 0.0000},  // Vulcanus
    {kJ1900, kJ1900, 165.5163, 83.66907, 0.00000,   0.0000,   0.0000, 0.0000},  // Poseidon
    {2368547.66, 2431456.5, 0.0, 77.775, 0.3, 0.7, 0, 0}}};                     // TransPluto
// clang-format on

// Sine and cosine of an eccentric anomaly.
struct Anomaly {
    double sine = 0;
    double cosine = 1;
};

// The eccentric anomaly of a mean one (radians) by Newton's method; the eccentricities here are 0.3
// at most, so that six rounds reach the last bit from anywhere. On a circle both are one.
Anomaly EccentricAnomaly(double meanAnomaly, double eccentricity) {
    if (eccentricity == 0) return {std::sin(meanAnomaly), std::cos(meanAnomaly)};
    double e = meanAnomaly + eccentricity * std::sin(meanAnomaly);
    Anomaly anomaly = {std::sin(e), std::cos(e)};
    for (int round = 0; round < 6; ++round) {
        const double off = e - eccentricity * anomaly.sine - meanAnomaly;
        if (std::abs(off) < 1e-15) break;
        e -= off / (1 - eccentricity * anomaly.cosine);
        anomaly = {std::sin(e), std::cos(e)};
    }
    return anomaly;
}

// The place in an orbit with a mean anomaly (degrees), in the ecliptic of the elements.
Vector PlaceInOrbit(const Orbit& orbit, double meanAnomaly) {
    const Anomaly anomaly =
        EccentricAnomaly(Modulo(meanAnomaly, 360) * DegToRad, orbit.eccentricity);
    const double x = orbit.semiAxis * (anomaly.cosine - orbit.eccentricity);
    const double y =
        orbit.semiAxis * std::sqrt(1 - orbit.eccentricity * orbit.eccentricity) * anomaly.sine;
    const double sinW = SinD(orbit.perihelion);
    const double cosW = CosD(orbit.perihelion);
    const double alongNode = x * cosW - y * sinW;
    const double acrossNode = x * sinW + y * cosW;
    const double sinN = SinD(orbit.node);
    const double cosN = CosD(orbit.node);
    const double flat = acrossNode * CosD(orbit.inclination);
    return {alongNode * cosN - flat * sinN, alongNode * sinN + flat * cosN,
            acrossNode * SinD(orbit.inclination)};
}

// Two axes of each orbit in the mean equator of J2000, worked out once: the place is a sum of them.
struct OrbitAxes {
    Vector perihelion{};  // to the perihelion, as long as the half major axis
    Vector minor{};       // 90 degrees on, as long as the half minor axis
};

OrbitAxes AxesOf(const Orbit& orbit) {
    const Matrix ecliptic = EclipticOfDate(orbit.equinox);
    // At a mean anomaly of 0 and 180 the eccentric one is the same.
    const Vector near = PlaceInOrbit(orbit, 0);
    const Vector far = PlaceInOrbit(orbit, 180);
    const Vector major = OutOfFrame(ecliptic, Scaled(Difference(near, far), 0.5));
    // The eccentric anomaly is 90 where the mean one is 90 degrees less e radians.
    const Vector quarter = PlaceInOrbit(orbit, 90 - RadToDeg(orbit.eccentricity));
    const Vector centre = Scaled(Sum(near, far), 0.5);
    return {major, OutOfFrame(ecliptic, Difference(quarter, centre))};
}

std::array<OrbitAxes, 10> AllAxes() {
    std::array<OrbitAxes, 10> axes{};
    for (std::size_t i = 1; i < axes.size(); ++i) axes[i] = AxesOf(kOrbits[i]);
    return axes;
}

// A number of the file of elements; what isn't one alone, such as a term with T, gives none.
std::optional<double> ElementOf(std::string_view field) {
    field = Trim(field);
    if (field == "J1900") return kJ1900;
    double number = 0;
    const char* end = field.data() + field.size();
    const auto result = std::from_chars(field.data(), end, number);
    if (result.ec != std::errc{} || result.ptr != end) return std::nullopt;
    return number;
}

// True if a line of the file of elements has this orbit: the numbers in the order of Orbit and a
// name; what follows could be "geo", for an orbit around the Earth.
bool HasOrbit(std::string_view line, const Orbit& orbit) {
    const std::array<double, 8> expected = {orbit.epoch,    orbit.equinox,      orbit.meanAnomaly,
                                            orbit.semiAxis, orbit.eccentricity, orbit.perihelion,
                                            orbit.node,     orbit.inclination};
    for (const double element : expected) {
        const std::size_t comma = line.find(',');
        if (comma == std::string_view::npos || ElementOf(line.substr(0, comma)) != element) {
            return false;
        }
        line.remove_prefix(comma + 1);
    }
    return line.find(',') == std::string_view::npos;
}

// The Sun's gravity bends the light away from it (Explanatory Supplement to the Astronomical
// Almanac, 1992, 3.26). The formula is that of a point; behind the disc, where the mass that acts
// shrinks towards the centre, it is brought down with the square of the distance from it.
Vector Deflected(const Vector& line, const Vector& fromSun, const Vector& earthFromSun) {
    constexpr double kTwiceMass = 2 * 9.8706e-9;  // 2 G M / c^2, astronomical units
    constexpr double kRadius = 0.0046524;         // of the Sun, astronomical units
    const double earthDistance = Length(earthFromSun);
    const Vector p = Scaled(line, 1 / Length(line));
    const Vector q = Scaled(fromSun, 1 / Length(fromSun));
    const Vector e = Scaled(earthFromSun, 1 / earthDistance);
    const double limb = kRadius / earthDistance;
    const double apart = Length(Cross(p, e));
    double mass = kTwiceMass;
    if (apart < limb && Dot(p, e) < 0) mass *= (apart / limb) * (apart / limb);
    const double factor = mass / earthDistance / (1 + Dot(q, e));
    const Vector bend = Difference(Scaled(e, Dot(p, q)), Scaled(q, Dot(e, p)));
    return Scaled(Sum(p, Scaled(bend, factor)), Length(line));
}

// The observer's speed turns the light towards where it goes (the same, 3.252-3).
Vector Aberrated(const Vector& line, const Vector& earthVelocity) {
    const double distance = Length(line);
    const Vector direction = Scaled(line, 1 / distance);
    const Vector velocity = Scaled(earthVelocity, kLightDays);
    const double shrink = std::sqrt(1 - Dot(velocity, velocity));
    const double along = Dot(direction, velocity);
    return Scaled(Sum(Scaled(direction, shrink), Scaled(velocity, 1 + along / (1 + shrink))),
                  distance / (1 + along));
}

}  // namespace

Vector RectangularPlace(const SphericalPlace& place) {
    const double flat = place.distance * CosD(place.latitude);
    return {flat * CosD(place.longitude), flat * SinD(place.longitude),
            place.distance * SinD(place.latitude)};
}

SphericalPlace SphericalFrom(const Vector& place) {
    const double flat = std::hypot(place[0], place[1]);
    return {Modulo(RadToDeg(std::atan2(place[1], place[0])), 360),
            RadToDeg(std::atan2(place[2], flat)), std::hypot(flat, place[2])};
}

Vector InFrame(const Matrix& frame, const Vector& place) {
    return {Dot(frame[0], place), Dot(frame[1], place), Dot(frame[2], place)};
}

Matrix EclipticOfDate(double jd) {
    const Poles poles = PolesOfDate(jd);
    const Vector equinox = Equinox(poles);
    return {equinox, Cross(poles.ecliptic, equinox), poles.ecliptic};
}

Matrix EclipticOfDate(double jd, double obliquity) {
    const Poles poles = PolesOfDate(jd);
    const Vector equinox = Equinox(poles);
    const Vector quarter = Cross(poles.equator, equinox);
    const double s = SinD(obliquity);
    const double c = CosD(obliquity);
    return {equinox, Sum(Scaled(quarter, c), Scaled(poles.equator, s)),
            Difference(Scaled(poles.equator, c), Scaled(quarter, s))};
}

Vector HypotheticalPlace(std::int16_t body, double jd) {
    if (body < 1 || body >= static_cast<std::int16_t>(kOrbits.size())) return {};
    static const std::array<OrbitAxes, 10> kAxes = AllAxes();
    // Degrees a day at one astronomical unit: Gauss' constant.
    constexpr double kDailyMotion = 0.9856076686;
    const auto index = static_cast<std::size_t>(body);
    const Orbit& orbit = kOrbits[index];
    const double motion = kDailyMotion / (orbit.semiAxis * std::sqrt(orbit.semiAxis));
    const Anomaly anomaly =
        EccentricAnomaly(Modulo(orbit.meanAnomaly + (jd - orbit.epoch) * motion, 360) * DegToRad,
                         orbit.eccentricity);
    return Sum(Scaled(kAxes[index].perihelion, anomaly.cosine - orbit.eccentricity),
               Scaled(kAxes[index].minor, anomaly.sine));
}

bool AreKnownElements(std::string_view text) {
    std::size_t body = 1;
    while (!text.empty() && body < kOrbits.size()) {
        const std::size_t end = std::min(text.find('\n'), text.size());
        std::string_view line = text.substr(0, end);
        text.remove_prefix(std::min(end + 1, text.size()));
        line = line.substr(0, line.find('#'));
        if (line.find_first_not_of(" \t\r") == std::string_view::npos) continue;
        if (!HasOrbit(line, kOrbits[body])) return false;
        ++body;
    }
    return body == kOrbits.size();
}

// Vulcan within Mercury's orbit by L.H. Weston, as it stands in the element file of Swiss
// Ephemeris, for the equinox of date: a period of 18.6 days.
Vector VulcanPlace(double t) {
    const Orbit orbit = {
        kJ1900, kJ1900, 0, 0.13744, 0.019, 322.212069 + 1670.056 * t, 47.787931 - 1670.056 * t,
        7.5};
    return PlaceInOrbit(orbit, 252.8987988 + 707550.7341 * t);
}

SphericalPlace ApparentHypothetical(std::int16_t body, const Observer& observer,
                                    const Matrix& ecliptic) {
    const Vector eye = observer.heliocentric ? observer.sun : observer.earth;
    // Where the point was, and the Sun with it, when the light left: from no delay at all, the
    // third round has it to the last bit, as the points move some seconds of arc a day.
    double delay = 0;
    Vector fromSun{};
    Vector line{};
    for (int round = 0; round < 3; ++round) {
        fromSun = HypotheticalPlace(body, observer.jd - delay);
        const Vector sun = Difference(observer.sun, Scaled(observer.sunVelocity, delay));
        line = Difference(Sum(fromSun, sun), eye);
        delay = Length(line) * kLightDays;
    }
    if (!observer.heliocentric) {
        line = Deflected(line, fromSun, Difference(observer.earth, observer.sun));
        line = Aberrated(line, observer.earthVelocity);
    }
    return SphericalFrom(InFrame(ecliptic, line));
}

}  // namespace orvantis

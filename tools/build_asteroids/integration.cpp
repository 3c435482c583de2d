// The pull on a minor planet and its integration. See integration.h.
#include "integration.h"

#include <cmath>
#include <swephexp.h>

#include "text/numbers.h"

namespace orvantis::asteroids {

namespace {

constexpr double kGauss = 0.01720209895;           // k: au^1.5 a day
constexpr double kSunPull = kGauss * kGauss;       // k^2
constexpr double kLightSpeed = 173.1446326846693;  // au a day

// What pulls besides the Sun, with its mass in parts of the Sun's. Planets (those with moons
// together): reciprocal masses of the JPL ephemeris DE430; Ceres, Pallas, Vesta: IAU 2009.
struct Perturber {
    std::int32_t body;
    double mass;
};
constexpr std::array<Perturber, 12> kPerturbers = {{{SE_MERCURY, 1 / 6023600.0},
                                                    {SE_VENUS, 1 / 408523.71},
                                                    {SE_EARTH, 1 / 328900.5596},
                                                    {SE_MARS, 1 / 3098703.59},
                                                    {SE_JUPITER, 1 / 1047.348644},
                                                    {SE_SATURN, 1 / 3497.9018},
                                                    {SE_URANUS, 1 / 22902.98},
                                                    {SE_NEPTUNE, 1 / 19412.26},
                                                    {SE_PLUTO, 1 / 136566000.0},
                                                    {SE_CERES, 4.72e-10},
                                                    {SE_PALLAS, 1.03e-10},
                                                    {SE_VESTA, 1.30e-10}}};
using PerturberPlaces = std::array<Vector, kPerturbers.size()>;

double Dot(const Vector& a, const Vector& b) {
    return a[0] * b[0] + a[1] * b[1] + a[2] * b[2];
}

bool PlacePerturbers(double day, PerturberPlaces& places, std::string& failure) {
    constexpr std::int32_t kFlags =
        SEFLG_SWIEPH | SEFLG_HELCTR | SEFLG_J2000 | SEFLG_TRUEPOS | SEFLG_NONUT | SEFLG_XYZ;
    for (std::size_t i = 0; i < places.size(); ++i) {
        std::array<double, 6> xx{};
        std::array<char, AS_MAXCH> words{};
        const std::int32_t used =
            swe_calc(day, kPerturbers[i].body, kFlags, xx.data(), words.data());
        if (used == ERR || (used & SEFLG_SWIEPH) == 0) {
            failure = words.data();
            return false;
        }
        places[i] = {xx[0], xx[1], xx[2]};
    }
    return true;
}

// Acceleration towards the Sun with the term of general relativity (one body, harmonic
// coordinates), and of the perturbers, of which the Sun's own is taken off.
Vector Acceleration(const Motion& motion, const PerturberPlaces& places) {
    const Vector& r = motion.place;
    const Vector& v = motion.speed;
    const double distance = std::sqrt(Dot(r, r));
    const double cube = distance * distance * distance;
    const double relativity = kSunPull / (kLightSpeed * kLightSpeed * cube);
    const double along = 4 * kSunPull / distance - Dot(v, v);
    const double drag = 4 * Dot(r, v);
    Vector sum{};
    for (std::size_t k = 0; k < 3; ++k) {
        sum[k] = -kSunPull * r[k] / cube + relativity * (along * r[k] + drag * v[k]);
    }
    for (std::size_t i = 0; i < places.size(); ++i) {
        if (kPerturbers[i].body == motion.body) continue;
        const Vector& p = places[i];
        const Vector d = {p[0] - r[0], p[1] - r[1], p[2] - r[2]};
        const double near = std::pow(Dot(d, d), 1.5);
        const double far = std::pow(Dot(p, p), 1.5);
        for (std::size_t k = 0; k < 3; ++k) {
            sum[k] += kSunPull * kPerturbers[i].mass * (d[k] / near - p[k] / far);
        }
    }
    return sum;
}

// to = from + days * slope, for place and speed at once.
void Move(const Motion& from, const Motion& slope, double days, Motion& to) {
    for (std::size_t k = 0; k < 3; ++k) {
        to.place[k] = from.place[k] + days * slope.place[k];
        to.speed[k] = from.speed[k] + days * slope.speed[k];
    }
}

bool Slopes(double day, const std::vector<Motion>& motions, std::vector<Motion>& slopes,
            std::string& failure) {
    PerturberPlaces places;
    if (!PlacePerturbers(day, places, failure)) return false;
    slopes = motions;
    for (std::size_t i = 0; i < motions.size(); ++i) {
        slopes[i].place = motions[i].speed;
        slopes[i].speed = Acceleration(motions[i], places);
    }
    return true;
}

// Gragg's modified midpoint rule: `count` steps, an even number, over the whole.
bool Midpoint(double day, double days, int count, const std::vector<Motion>& start,
              std::vector<Motion>& end, std::string& failure) {
    const double h = days / count;
    std::vector<Motion> before = start;
    std::vector<Motion> now = start;
    std::vector<Motion> slopes;
    if (!Slopes(day, start, slopes, failure)) return false;
    for (std::size_t i = 0; i < start.size(); ++i) Move(start[i], slopes[i], h, now[i]);
    for (int step = 1; step < count; ++step) {
        if (!Slopes(day + step * h, now, slopes, failure)) return false;
        for (std::size_t i = 0; i < start.size(); ++i) {
            Move(before[i], slopes[i], 2 * h, before[i]);
            std::swap(before[i], now[i]);
        }
    }
    if (!Slopes(day + days, now, slopes, failure)) return false;
    end = now;
    for (std::size_t i = 0; i < start.size(); ++i) {
        Move(before[i], slopes[i], h, before[i]);
        for (std::size_t k = 0; k < 3; ++k) {
            end[i].place[k] = (before[i].place[k] + now[i].place[k]) / 2;
            end[i].speed[k] = (before[i].speed[k] + now[i].speed[k]) / 2;
        }
    }
    return true;
}

}  // namespace

Motion MotionOf(const Elements& elements) {
    const double a = elements.semiAxis;
    const double e = elements.eccentricity;
    const double m = elements.meanAnomaly * DegToRad;
    double anomaly = m;
    for (int i = 0; i < 60; ++i) {
        anomaly -= (anomaly - e * std::sin(anomaly) - m) / (1 - e * std::cos(anomaly));
    }
    // In the plane of the orbit, the perihelion on the x axis.
    const double n = std::sqrt(kSunPull / (a * a * a));
    const double side = std::sqrt(1 - e * e);
    const double quick = a * n / (1 - e * std::cos(anomaly));
    const double x = a * (std::cos(anomaly) - e);
    const double y = a * side * std::sin(anomaly);
    const double vx = -quick * std::sin(anomaly);
    const double vy = quick * side * std::cos(anomaly);

    // Turned by argument of perihelion, inclination and node.
    const double cw = CosD(elements.perihelion);
    const double sw = SinD(elements.perihelion);
    const double co = CosD(elements.node);
    const double so = SinD(elements.node);
    const double ci = CosD(elements.inclination);
    const double si = SinD(elements.inclination);
    const Vector p = {cw * co - sw * so * ci, cw * so + sw * co * ci, sw * si};
    const Vector q = {-sw * co - cw * so * ci, -sw * so + cw * co * ci, cw * si};
    Motion motion;
    motion.body = elements.body;
    for (std::size_t k = 0; k < 3; ++k) {
        motion.place[k] = p[k] * x + q[k] * y;
        motion.speed[k] = p[k] * vx + q[k] * vy;
    }
    return motion;
}

bool Advance(double day, double days, std::vector<Motion>& motions, std::string& failure) {
    constexpr std::size_t kColumns = 7;
    // Row j holds the result of 2 (j + 1) steps and its extrapolations, to the step 0, from the
    // rows before.
    std::array<std::vector<Motion>, kColumns> row;
    std::array<std::vector<Motion>, kColumns> rowBefore;
    for (std::size_t j = 0; j < kColumns; ++j) {
        if (!Midpoint(day, days, 2 * (static_cast<int>(j) + 1), motions, row[0], failure)) {
            return false;
        }
        for (std::size_t q = 1; q <= j; ++q) {
            const double ratio = static_cast<double>(j + 1) / static_cast<double>(j + 1 - q);
            const double divisor = ratio * ratio - 1;
            row[q] = row[q - 1];
            for (std::size_t i = 0; i < motions.size(); ++i) {
                for (std::size_t k = 0; k < 3; ++k) {
                    row[q][i].place[k] +=
                        (row[q - 1][i].place[k] - rowBefore[q - 1][i].place[k]) / divisor;
                    row[q][i].speed[k] +=
                        (row[q - 1][i].speed[k] - rowBefore[q - 1][i].speed[k]) / divisor;
                }
            }
        }
        rowBefore = row;
    }
    motions = row[kColumns - 1];
    return true;
}

}  // namespace orvantis::asteroids

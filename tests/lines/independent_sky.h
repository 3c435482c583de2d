// The sky over a chart by plain vectors, for tests alone: nothing here is taken from the program's
// own formulas, and positions may come from Swiss Ephemeris itself.
#pragma once

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <random>
#include <swephexp.h>
#include <vector>

#include "charts/CALCCHRT.h"
#include "charts/KVCharts.h"

namespace orvantis {

/// Degrees to radians, and a degree of a great circle on the ground in kilometres (a sphere of the
/// mean radius 6371.0088 km).
inline constexpr double kRad = 3.14159265358979323846 / 180;
inline constexpr double kKmPerDegree = 6371.0088 * kRad;

struct Vec {
    double x = 0, y = 0, z = 0;
};

inline Vec operator+(const Vec& a, const Vec& b) {
    return {a.x + b.x, a.y + b.y, a.z + b.z};
}
inline Vec operator*(double k, const Vec& a) {
    return {k * a.x, k * a.y, k * a.z};
}
inline double Dot(const Vec& a, const Vec& b) {
    return a.x * b.x + a.y * b.y + a.z * b.z;
}
inline Vec Cross(const Vec& a, const Vec& b) {
    return {a.y * b.z - a.z * b.y, a.z * b.x - a.x * b.z, a.x * b.y - a.y * b.x};
}
inline double Length(const Vec& a) {
    return std::sqrt(Dot(a, a));
}

/// Unit vector of a position or of a body, degrees; longitude or right ascension eastward.
inline Vec OnSphere(double lat, double longitude) {
    return {std::cos(lat * kRad) * std::cos(longitude * kRad),
            std::cos(lat * kRad) * std::sin(longitude * kRad), std::sin(lat * kRad)};
}

/// Angle between two vectors, degrees; exact also for small ones.
inline double AngleBetween(const Vec& a, const Vec& b) {
    return std::atan2(Length(Cross(a, b)), Dot(a, b)) / kRad;
}

inline double Turned(double a, double b) {
    return std::remainder(a - b, 360.0);
}

/// North and east on the ground at a position (not at a pole).
inline Vec NorthAt(double lat, double longitude) {
    return OnSphere(lat + 90, longitude);
}
inline Vec EastAt(double longitude) {
    return OnSphere(0, longitude + 90);
}

/// A body where it stands.
struct Body {
    double ra = 0;
    double dec = 0;
};

/// A chart's sky: sidereal time at Greenwich and bodies by number, degrees.
struct IndependentSky {
    double greenwich = 0;
    double obliquity = 0;
    double lat = 0;       ///< of the place
    double longEast = 0;  ///< of the place
    std::array<Body, 73> bodies{};

    /// Unit vector, in the Earth's axes, of where a body is overhead.
    Vec Under(std::size_t p) const { return OnSphere(bodies[p].dec, bodies[p].ra - greenwich); }
};

/// Altitude, and distance west of the meridian (negative in the east), of a body at a latitude and
/// a local sidereal time, degrees.
struct Standing {
    double altitude = 0;
    double aside = 0;         ///< distance from the meridian's plane, -90 to 90, west positive
    double towardsSouth = 0;  ///< above 0: on the upper half of the meridian
};
inline Standing Stand(const Body& body, double lat, double sidereal) {
    const Vec v = OnSphere(body.dec, body.ra);
    const Vec zenith = OnSphere(lat, sidereal);
    const Vec west = OnSphere(0, sidereal - 90);
    const Vec equator = OnSphere(0, sidereal);
    return {std::asin(std::clamp(Dot(v, zenith), -1.0, 1.0)) / kRad,
            std::asin(std::clamp(Dot(v, west), -1.0, 1.0)) / kRad, Dot(v, equator)};
}

/// Points of the chart with their numbers in Swiss Ephemeris.
inline constexpr std::array<std::array<int, 2>, 11> kSwissBodies = {{{1, SE_MOON},
                                                                     {3, SE_SUN},
                                                                     {5, SE_MERCURY},
                                                                     {6, SE_VENUS},
                                                                     {7, SE_MARS},
                                                                     {8, SE_JUPITER},
                                                                     {9, SE_SATURN},
                                                                     {10, SE_URANUS},
                                                                     {11, SE_NEPTUNE},
                                                                     {12, SE_PLUTO},
                                                                     {20, SE_TRUE_NODE}}};

/// Calculates a chart of a random moment from 1850 to 2100 at a latitude, by the program into slot
/// 1, and the same sky by Swiss Ephemeris alone, which the caller has opened.
inline IndependentSky RandomChart(std::mt19937& random, float lat) {
    const auto below = [&random](unsigned n) { return static_cast<int>(random() % n); };
    FileChart chart;
    chart.event.year = static_cast<std::int16_t>(1850 + below(250));
    chart.event.month = static_cast<std::uint8_t>(1 + below(12));
    chart.event.day = static_cast<std::uint8_t>(1 + below(28));
    chart.event.hour = static_cast<std::uint8_t>(below(24));
    chart.event.minute = static_cast<std::uint8_t>(below(60));
    chart.event.latitude = lat;
    chart.event.longitude = static_cast<float>(below(360 * 4)) / 4 - 180;  // west positive
    chart.houseCode = 5;
    chart.ayanamsaCode = 1;
    Format1Record record;
    ChartToFormat1(chart, record);
    FileChartToCalcChart(record, 1, kFalse);

    IndependentSky sky;
    sky.lat = static_cast<double>(lat);
    sky.longEast = -static_cast<double>(chart.event.longitude);
    const double jdUT = swe_julday(chart.event.year, chart.event.month, chart.event.day,
                                   chart.event.hour + chart.event.minute / 60.0, SE_GREG_CAL);
    std::array<char, 256> ignored{};
    sky.greenwich = 15 * swe_sidtime(jdUT);
    std::array<double, 6> x{};
    swe_calc_ut(jdUT, SE_ECL_NUT, 0, x.data(), ignored.data());
    sky.obliquity = x[0];
    for (const auto& [point, number] : kSwissBodies) {
        swe_calc_ut(jdUT, number, SEFLG_SWIEPH | SEFLG_EQUATORIAL, x.data(), ignored.data());
        sky.bodies[static_cast<std::size_t>(point)] = {x[0], x[1]};
    }
    return sky;
}

/// Latitudes that tests of random charts go through: the equator, the polar circles and beyond on
/// both sides, and any others.
inline std::vector<float> TriedLatitudes(std::mt19937& random, int others) {
    std::vector<float> list = {0,   66, -66, 66.5F, -66.5F, 67,    -67,    70,
                               -70, 75, -75, 80,    -80,    85,    -85,    87.5F,
                               -88, 89, -89, 0.25F, -0.25F, 23.5F, -23.5F, 51.5F};
    for (int i = 0; i < others; ++i) list.push_back(static_cast<float>(random() % 520) / 4 - 65);
    return list;
}

/// Keeps the worst deviation of a test, degrees.
struct Worst {
    double degrees = 0;
    void Meet(double deviation) { degrees = std::max(degrees, std::abs(deviation)); }
    double Minutes() const { return degrees * 60; }
    double Km() const { return degrees * kKmPerDegree; }
};

}  // namespace orvantis

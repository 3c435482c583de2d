// Orbits of minor planets that no ephemeris file is at hand for: their elements of one day, carried
// on through the pull of the Sun, the planets and the three heaviest minor planets.
#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <vector>

namespace orvantis::asteroids {

/// A vector in the ecliptic and equinox of J2000.0, astronomical units.
using Vector = std::array<double, 3>;

/// Osculating elements, degrees and astronomical units, ecliptic and equinox of J2000.0.
struct Elements {
    const char* name;
    double epoch;  ///< Julian day, ephemeris time
    double semiAxis;
    double eccentricity;
    double inclination;
    double node;
    double perihelion;  ///< argument of perihelion
    double meanAnomaly;
    std::int32_t body;  ///< number in Swiss Ephemeris, 0 for none; such a body doesn't pull itself
};

/// A body on its way, heliocentric.
struct Motion {
    Vector place{};
    Vector speed{};         ///< a day
    std::int32_t body = 0;  ///< as in its elements
};

Motion MotionOf(const Elements& elements);

/// Carries bodies from a day (Julian, ephemeris time) on by `days`, which may be negative: one step
/// of Gragg with the extrapolation of Bulirsch and Stoer, seven columns. False, with the library's
/// words, if Swiss Ephemeris doesn't give the bodies that pull.
bool Advance(double day, double days, std::vector<Motion>& motions, std::string& failure);

}  // namespace orvantis::asteroids

// The orbits of the points that no telescope shows: the Uranian points, TransPluto and Vulcan. They
// follow Kepler's laws by elements that their authors published; nothing of them comes from a file.
#pragma once

#include <array>
#include <cstdint>
#include <string_view>

namespace orvantis {

/// Julian day of the epoch J2000.0.
inline constexpr double kJ2000 = 2451545.0;

/// Days that light takes for an astronomical unit.
inline constexpr double kLightDays = 0.0057755183;

/// Rectangular, astronomical units (or a unit vector).
using Vector = std::array<double, 3>;
/// Rows are the axes of a frame.
using Matrix = std::array<Vector, 3>;

/// A direction and a distance. Degrees, the longitude 0 to 360; astronomical units.
struct SphericalPlace {
    double longitude = 0;
    double latitude = 0;
    double distance = 0;
};

/// Rectangular and spherical coordinates in the same frame: x to longitude 0, z to the north.
Vector RectangularPlace(const SphericalPlace& place);
SphericalPlace SphericalFrom(const Vector& place);

/// The place seen in the frame whose axes are the rows.
Vector InFrame(const Matrix& frame, const Vector& place);

/// Axes of the mean ecliptic and equinox of a Julian day, in the mean equator and equinox of J2000.
/// Long-term precession by J. Vondrak, N. Capitaine and P. Wallace (Astronomy & Astrophysics 534,
/// A22, and 541, C1): some hundredths of a second of arc around 2000, some seconds within 5000
/// years.
Matrix EclipticOfDate(double jd);

/// The same with another mean obliquity of date (degrees) than that between the poles of the
/// theory, from which obliquities by formulae of their own are some seconds off in remote times.
Matrix EclipticOfDate(double jd, double obliquity);

/// The hypothetical points 1 Cupido to 8 Poseidon and 9 TransPluto, heliocentric, in the mean
/// equator and equinox of J2000, at a Julian day of ephemeris time. Another number gives the Sun's
/// own place, zeros.
Vector HypotheticalPlace(std::int16_t body, double jd);

/// True if a file of elements of the library, as text, gives those nine points the same elements.
bool AreKnownElements(std::string_view text);

/// Vulcan, heliocentric, in the mean ecliptic and equinox of date, `t` centuries from JD 2415020.0.
Vector VulcanPlace(double t);

/// What the apparent places of a moment share: barycentric places and velocities (astronomical
/// units and units a day) in the mean equator and equinox of J2000.
struct Observer {
    double jd = 0;  ///< ephemeris time
    Vector sun{};
    Vector sunVelocity{};
    Vector earth{};
    Vector earthVelocity{};
    bool heliocentric = false;  ///< seen from the Sun: no deflection, no aberration
};

/// A hypothetical point, 1 to 9, as seen with light time, deflection and aberration, in the mean
/// ecliptic and equinox of date (`ecliptic` of the moment). Nutation isn't in it.
SphericalPlace ApparentHypothetical(std::int16_t body, const Observer& observer,
                                    const Matrix& ecliptic);

}  // namespace orvantis

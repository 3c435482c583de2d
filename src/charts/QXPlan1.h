// The planets of the standard route.
#pragma once

#include <array>
#include <cstdint>

namespace orvantis {

/// Where a body stands. Element 1 of the arrays is geocentric, 2 heliocentric; 0 stands unused.
struct BodyPosition {
    std::array<double, 3> longitude{};  ///< degrees, 0 to 360, with `offset` added
    std::array<double, 3> latitude{};   ///< degrees
    double distance = 0;                ///< astronomical units from the Earth; of the Earth itself,
                                        ///< from the Sun
    bool given = false;                 ///< false: the source has no position for this moment
};

/// Planets 1 Mercury to 8 Neptune (3 the Earth), geometric, for the equinox of date, without
/// nutation and aberration. `t` in Julian millennia from J2000.0, ephemeris time; `accuracy` is a
/// series cut-off, 0 full. The Sun's place (longitude with `offset`, latitude in degrees, distance
/// in astronomical units; 0 for body 3) turns the planet geocentric. Body 3 is given
/// heliocentrically, in both elements.
BodyPosition CalcPlanetVSOP(std::int16_t body, double t, double offset, double accuracy,
                            double sunLongitude, double sunLatitude, double sunDistance);

}  // namespace orvantis

// The planets of the standard route.
#pragma once

#include <array>
#include <cstdint>

#include "charts/hypothetical.h"

namespace orvantis {

/// Where a body stands. Element 1 of the arrays is geocentric, 2 heliocentric; 0 stands unused.
struct BodyPosition {
    std::array<double, 3> longitude{};  ///< degrees, 0 to 360, with `offset` added
    std::array<double, 3> latitude{};   ///< degrees
    double distance = 0;                ///< astronomical units from the Earth; of the Earth itself,
                                        ///< from the Sun
    bool given = false;                 ///< false: the source has no position for this moment
};

/// A heliocentric place, its longitude with `offset` already, turned geocentric by the Sun's place
/// in the same zodiac.
BodyPosition SeenFromEarth(const SphericalPlace& heliocentric, double sunLongitude,
                           double sunLatitude, double sunDistance);

/// Planets 1 Mercury to 8 Neptune (3 the Earth), geometric, for the equinox of date, without
/// nutation and aberration. `t` in Julian millennia from J2000.0, ephemeris time; `accuracy` is a
/// series cut-off, 0 full; the series here is always taken in full. The Sun's place (longitude with
/// `offset`, latitude in degrees, distance in astronomical units; 0 for body 3) turns the planet
/// geocentric. Body 3 is given heliocentrically, in both elements.
///
/// Behind it stands the theory without files of Swiss Ephemeris (S.L. Moshier's fit to DE404), for
/// the years -3000 to 3000; outside them nothing is given. Greatest differences of the heliocentric
/// place from DE431, seconds of arc in longitude, Mercury to Neptune: from 1800 to 2050 0.3, 0.2,
/// 0.1, 0.3, 0.7, 0.6, 1.1, 2.2; from -2900 to 2900 10, 0.7, 5.2, 700 (Mars), 10, 1, 22, 60. In
/// latitude: 0.3 at most from 1800 to 2050.
BodyPosition CalcPlanetVSOP(std::int16_t body, double t, double offset, double accuracy,
                            double sunLongitude, double sunLatitude, double sunDistance);

}  // namespace orvantis

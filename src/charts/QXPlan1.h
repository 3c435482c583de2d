// The planets of the standard route.
#pragma once

#include <array>
#include <cstdint>

#include "charts/hypothetical.h"

namespace orvantis {

/// Where the library takes a place from: its files, or its theories without files.
enum class EphemerisSource : std::uint8_t { Files, Theory };

/// Where a body stands. Element 1 of the arrays is geocentric, 2 heliocentric; 0 stands unused.
struct BodyPosition {
    std::array<double, 3> longitude{};  ///< degrees, 0 to 360, with `offset` added
    std::array<double, 3> latitude{};   ///< degrees
    std::array<double, 3> distance{};   ///< astronomical units
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
/// Behind it stand the files of Swiss Ephemeris (DE431, to a thousandth of a second of arc) for the
/// years that are installed, -5400 to 5400 at most, and elsewhere its theory without files (S.L.
/// Moshier's fit to DE404), for the years -3000 to 3000; outside them nothing is given. The
/// theory's greatest differences of the heliocentric place from DE431, seconds of arc in longitude,
/// Mercury to Neptune: from 1800 to 2050 0.4, 0.3, 0.2, 0.4, 0.7, 0.6, 1.1, 2.2; from -2900 to 2900
/// 11, 1, 5.3, 700 (Mars), 11, 1.2, 22, 60. In latitude: 0.3 at most from 1800 to 2050. `source`:
/// the one that is asked, and then the one that answered; null: the files.
BodyPosition CalcPlanetVSOP(std::int16_t body, double t, double offset, double accuracy,
                            double sunLongitude, double sunLatitude, double sunDistance,
                            EphemerisSource* source = nullptr);

/// A body of the library (by its number there) at a Julian day of ephemeris time: longitude,
/// latitude in degrees, distance in astronomical units, by `flags` of the library without its
/// source. `source`: the one that is asked, and then the one that answered; null: the files. Where
/// no file serves, the theory does, in silence. False if neither does; `place` is then as it was.
bool LibraryPlace(double jd, std::int32_t body, std::int32_t flags, EphemerisSource* source,
                  SphericalPlace& place);

}  // namespace orvantis

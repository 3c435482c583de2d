// Sun, Moon, Pluto, the hypothetical planets, nodes and apogee of the standard route. T is Julian
// centuries from JD 2415020.0, ephemeris time; `offset` is added to every longitude; degrees. A
// longitude below 0: the source has no position for this moment.
//
// Behind Sun, Moon, Pluto and true node stand the files of Swiss Ephemeris (DE431, to a thousandth
// of a second of arc) for the years that are installed, -5400 to 5400 at most, and elsewhere its
// theory without files (S.L. Moshier's fits to DE404), for the years -3000 to 3000. `source`: the
// one that is asked, and then the one that answered; null: the files. Errors below are the
// theory's.
#pragma once

#include <cstdint>

#include "charts/QXPlan1.h"

namespace orvantis {

/// Apparent Sun, within 0.2 seconds of arc of DE431 from 1800 to 2050 and 6 from -2900 to 2900; its
/// latitude counts as 0. Distance in astronomical units.
void CalcSun(double t, double offset, double& longitude, double& distance,
             EphemerisSource* source = nullptr);

/// Apparent Moon, nutation included: nothing is added to it later. Within 3.7 seconds of arc of
/// DE431 in longitude and 3.3 in latitude from 1800 to 2050; 185 and 24 from -2900 to 2900.
void CalcMon(double t, double offset, double& longitude, double& latitude,
             EphemerisSource* source = nullptr);

/// Vulcan, the planet within Mercury's orbit, geometric, for the equinox of date. The Sun's place
/// as for CalcPlanetVSOP, its latitude 0. The orbit is that of L.H. Weston (see hypothetical.cpp);
/// it holds for any T.
BodyPosition CalcVul(double t, double offset, double sunLongitude, double sunDistance);

/// Pluto, geometric, for the equinox of date. Within 4.5 seconds of arc of DE431 in longitude and
/// 0.7 in latitude from 1800 to 2050; 80 and 19 from -2900 to 2900.
BodyPosition CalcPlu(double t, double offset, double sunLongitude, double sunDistance,
                     EphemerisSource* source = nullptr);

/// The Uranian points, 1 Cupido to 8 Poseidon, and 9 TransPluto, geometric, for the equinox of
/// date; Kepler orbits (see hypothetical.h), for any T. Geometric places are those of Swiss
/// Ephemeris to 0.001 seconds of arc from 1800 to 2050; 0.2 in longitude and 6 in latitude from
/// -2900 on, where the obliquity of the theory of precession and the library's part.
BodyPosition CalcTNP(std::int16_t body, double t, double offset, double sunLongitude,
                     double sunDistance);

/// The Moon's ascending node, mean and true (osculating), of date, nutation included. The mean node
/// is a formula of Swiss Ephemeris, that of the other route, for the years -3000 to 3000: within
/// 0.2 seconds of arc of J. Chapront's polynomial (Meeus, 47.7) from 1800 to 2050, 11 from -2900 to
/// 2900. The true one feels every second of the Moon's latitude elevenfold: by the theory within 70
/// seconds of arc of DE431 from 1800 to 2050, 130 from -2900 to 2900.
void CalcNod(double t, double offset, double& meanNode, double& trueNode,
             EphemerisSource* source = nullptr);

/// The Moon's mean apogee, of date, nutation included: a formula of Swiss Ephemeris, that of the
/// other route, for the years -3000 to 3000. Within 1.2 seconds of arc of J. Chapront's polynomials
/// (Meeus, chapter 50) from 1800 to 2050, brought from the Moon's orbit to the ecliptic as here; 38
/// from -2900 to 2900.
void CalcLilith(double t, double offset, double& longitude);

}  // namespace orvantis

// Sun, Moon, Pluto, the hypothetical planets, nodes and apogee of the standard route. T is Julian
// centuries from JD 2415020.0, ephemeris time; `offset` is added to every longitude; degrees. A
// longitude below 0: the source has no position for this moment.
//
// Behind Sun, Moon, Pluto and node stands the theory without files of Swiss Ephemeris (S.L.
// Moshier's fits to DE404), for the years -3000 to 3000.
#pragma once

#include <cstdint>

#include "charts/QXPlan1.h"

namespace orvantis {

/// Apparent Sun, within 0.1 seconds of arc of DE431 from 1800 to 2050 and 6 from -2900 to 2900; its
/// latitude counts as 0. Distance in astronomical units.
void CalcSun(double t, double offset, double& longitude, double& distance);

/// Apparent Moon, nutation included: nothing is added to it later. Within 2.7 seconds of arc of
/// DE431 in longitude and 2.5 in latitude from 1800 to 2050; 180 and 22 from -2900 to 2900.
void CalcMon(double t, double offset, double& longitude, double& latitude);

/// Vulcan, the planet within Mercury's orbit, geometric, for the equinox of date. The Sun's place
/// as for CalcPlanetVSOP, its latitude 0. The orbit is that of L.H. Weston (see hypothetical.cpp);
/// it holds for any T.
BodyPosition CalcVul(double t, double offset, double sunLongitude, double sunDistance);

/// Pluto, geometric, for the equinox of date. Within 4.5 seconds of arc of DE431 in longitude and
/// 0.7 in latitude from 1800 to 2050; 80 and 19 from -2900 to 2900.
BodyPosition CalcPlu(double t, double offset, double sunLongitude, double sunDistance);

/// The Uranian points, 1 Cupido to 8 Poseidon, and 9 TransPluto, geometric, for the equinox of
/// date; Kepler orbits (see hypothetical.h), for any T. Geometric places are those of Swiss
/// Ephemeris to 0.001 seconds of arc from 1800 to 2050; 0.2 in longitude and 6 in latitude from
/// -2900 on, where the obliquity of the theory of precession and the library's part.
BodyPosition CalcTNP(std::int16_t body, double t, double offset, double sunLongitude,
                     double sunDistance);

/// The Moon's ascending node, mean and true (osculating), of date, nutation included. The mean node
/// is a formula, that of the other route; the true one feels every second of the Moon's latitude
/// elevenfold: within 60 seconds of arc of DE431 from 1800 to 2050, 110 from -2900 to 2900.
void CalcNod(double t, double offset, double& meanNode, double& trueNode);

/// The Moon's mean apogee, of date, nutation included: a formula, that of the other route.
void CalcLilith(double t, double offset, double& longitude);

}  // namespace orvantis

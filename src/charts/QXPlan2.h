// Sun, Moon, Pluto, the hypothetical planets, nodes and apogee of the standard route. T is Julian
// centuries from JD 2415020.0, ephemeris time; `offset` is added to every longitude; degrees.
#pragma once

#include <cstdint>

#include "charts/QXPlan1.h"

namespace orvantis {

/// Apparent Sun; its latitude counts as 0. Distance in astronomical units.
void CalcSun(double t, double offset, double& longitude, double& distance);

/// Apparent Moon, nutation included: nothing is added to it later.
void CalcMon(double t, double offset, double& longitude, double& latitude);

/// Vulcan, the planet within Mercury's orbit. The Sun's place as for CalcPlanetVSOP.
BodyPosition CalcVul(double t, double offset, double sunLongitude, double sunDistance);

BodyPosition CalcPlu(double t, double offset, double sunLongitude, double sunDistance);

/// The Uranian points, 1 Cupido to 8 Poseidon, and 9 TransPluto.
BodyPosition CalcTNP(std::int16_t body, double t, double offset, double sunLongitude,
                     double sunDistance);

/// The Moon's ascending node, mean and true, of date.
void CalcNod(double t, double offset, double& meanNode, double& trueNode);

/// The Moon's mean apogee, of date.
void CalcLilith(double t, double offset, double& longitude);

}  // namespace orvantis

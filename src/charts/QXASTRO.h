// The quantities that the chart calculation needs of an astronomy library, and the driver that
// obtains the positions of all points for one chart.
//
// T is Julian centuries from JD 2415020.0 (1900 January 0.5). The way from dates to Julian days and
// back is text/dates.h.
#pragma once

#include <cstdint>
#include <string_view>

#include "surface/values.h"
#include "text/dates.h"

namespace orvantis {

/// Delta T (ephemeris time less Universal Time) in hours, at T.
void GetDeltaT(double t, double& hours);

/// True obliquity of the ecliptic of date in degrees, at T of ephemeris time: that of the equator
/// with nutation, which the positions hold too.
void GetObliquity(double t, double& degrees);

/// Julian day of a civil date (Gregorian from 15 October 1582, Julian before) at `hours` of
/// Universal Time, which may lie outside 0 to 24.
void GetJDxhUT(std::int16_t day, std::int16_t month, std::int16_t year, double hours, double& jd);

/// Apparent sidereal time at Greenwich in hours, at a Julian day of Universal Time.
void GetST(double jdUT, double& siderealTime);

/// Right ascension of the Midheaven in degrees, 0 to 360, at a longitude (degrees, WEST positive).
void GetRAMC(double longitudeWest, double siderealTime, double& ramc);

/// The same point in coordinates rotated about the x axis by a tilt. Degrees.
void ConvertCoords(double longitude, double latitude, double sinTilt, double cosTilt, double& a,
                   double& d);

/// Positions of points `first` to `last` (0 and 0: 1 to 36) into CalcChart of a slot. The Moon, the
/// Sun and the Earth are always given.
/// `t` at ephemeris time; `offset` is added to tropical longitudes; `accuracy` is a series cut-off,
/// 0 full; `frame` 1 geocentric, 2 heliocentric; `useTables`: Jupiter to Pluto from tables in
/// `dataPath`; `trueNode`: the true lunar node, otherwise the mean one; `weston`: Vulcan on its own
/// orbit, otherwise at most three degrees from Mercury on the Sun's side (Mercury must be in the
/// slot or in the range, and `last` above 3). A point that isn't calculated has Lon -1. The chart
/// points 22 to 26 aren't touched.
void CalcPlanets(std::int16_t slot, std::int16_t first, std::int16_t last, double t, double offset,
                 double accuracy, std::int16_t frame, Flag useTables, std::string_view dataPath,
                 Flag trueNode, Flag weston);

}  // namespace orvantis

// The quantities that the chart calculation needs of an astronomy library, and the driver that
// obtains the positions of all points for one chart.
//
// T is Julian centuries from JD 2415020.0 (1900 January 0.5). The way from dates to Julian days and
// back is text/dates.h.
//
// Behind the time scales and the obliquity stands Swiss Ephemeris 2.10, for any T. What a routine
// says of its error are the greatest differences seen from the published formulae that it names,
// in the years 1800 to 2050 unless it says otherwise.
#pragma once

#include <cstdint>
#include <string_view>

#include "surface/values.h"
#include "text/dates.h"

namespace orvantis {

/// Delta T (ephemeris time less Universal Time) in hours, at T: up to 1955 by the model of F.R.
/// Stephenson, L.V. Morrison and C.Y. Hohenkerk (2016), since then measured, and estimated for the
/// years to come. Nobody knows it better than some seconds before 1800 and some minutes in remote
/// times: the polynomials of F. Espenak and J. Meeus (Five Millennium Canon of Solar Eclipses) are
/// 1.1 seconds away from 1900 to 2005, 5 from 1800, 33 from 1600, 170 from 500, 440 from -500, 690
/// from -2900; 6 in 2026, 19 in 2050.
void GetDeltaT(double t, double& hours);

/// True obliquity of the ecliptic of date in degrees, at T of ephemeris time: that of the equator
/// with nutation, which the positions hold too. Within 0.06 seconds of arc of J. Laskar's
/// polynomial (Meeus, Astronomical Algorithms, 22.3) with the same nutation; 1 from -2900 to 2900.
void GetObliquity(double t, double& degrees);

/// Julian day of a civil date (Gregorian from 15 October 1582, Julian before) at `hours` of
/// Universal Time, which may lie outside 0 to 24.
void GetJDxhUT(std::int16_t day, std::int16_t month, std::int16_t year, double hours, double& jd);

/// Apparent sidereal time at Greenwich in hours, at a Julian day of Universal Time. Within 0.07
/// seconds of the formula of 1982 (Meeus, 12.4) with the same nutation, 0.2 from 1600 on; that
/// formula isn't meant for remote times.
void GetST(double jdUT, double& siderealTime);

/// Right ascension of the Midheaven in degrees, 0 to 360, at a longitude (degrees, WEST positive):
/// a sum, without an error of its own.
void GetRAMC(double longitudeWest, double siderealTime, double& ramc);

/// The same point in coordinates rotated about the x axis by a tilt. Degrees.
void ConvertCoords(double longitude, double latitude, double sinTilt, double cosTilt, double& a,
                   double& d);

/// Positions of points `first` to `last` (0 and 0: 1 to 36) into CalcChart of a slot. The Sun and
/// the Earth are always given; so is the Moon on the Swiss route, on the standard route only if
/// `first` is 1 or less.
/// `t` at ephemeris time; `offset` is added to tropical longitudes; `accuracy` is a series cut-off,
/// 0 full; `frame` 1 geocentric, 2 heliocentric; `useTables`: Jupiter to Pluto from tables in
/// `dataPath`; `trueNode`: the true lunar node, otherwise the mean one; `weston`: Vulcan on its own
/// orbit, otherwise at most three degrees from Mercury on the Sun's side (Mercury must be in the
/// slot or in the range, and `last` above 3). A point that isn't calculated has Lon -1; one whose
/// place comes out as no number isn't, and leaves the run-time error "Overflow". The chart points
/// 22 to 26 aren't touched. In frame 2 the Moon's nodes and apogee, which have no direction from
/// the Sun, stand at 0 Aries of the zodiac on the Swiss route, as the library gives them; on the
/// standard route the Moon and they stay as seen from the Earth.
void CalcPlanets(std::int16_t slot, std::int16_t first, std::int16_t last, double t, double offset,
                 double accuracy, std::int16_t frame, Flag useTables, std::string_view dataPath,
                 Flag trueNode, Flag weston);

}  // namespace orvantis

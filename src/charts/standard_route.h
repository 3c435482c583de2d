// The standard route to positions: the library's geometric places, by its files or its theories,
// ephemeris tables, and the steps that turn geometric places into those of a chart. The other route
// shares what both have alike.
#pragma once

#include <array>
#include <cstdint>
#include <string_view>

#include "charts/CALCCHRT.h"
#include "charts/QXPlan1.h"
#include "surface/values.h"

namespace orvantis {

/// Nutation in longitude and in obliquity, degrees, `n` in Julian centuries from J2000.0. The four
/// greatest terms of the theory of 1980 (J. Meeus, Astronomical Algorithms, chapter 22), right to
/// half a second of arc.
void Nutation(double n, double& inLongitude, double& inObliquity);

/// The nutation in longitude, degrees, of a time in Julian centuries from JD 2415020.0.
double NutationInLongitude(double t);

/// What the points of one call share. Element 0 of the pairs is the moment, 1 one minute later.
struct RouteMoment {
    double t = 0;       ///< centuries from JD 2415020.0, ephemeris time
    double offset = 0;  ///< degrees added to longitudes
    std::int16_t frame = 1;
    bool apparent = true;                 ///< longitudes get nutation and light time
    double nutation = 0;                  ///< in longitude, degrees; 0 unless apparent
    std::array<SphericalPlace, 2> sun{};  ///< geometric, with the offset
    bool sunGiven = false;                ///< without it only frame 2 has bodies
};

/// What the Sun's apparent longitude has beside its geometric one, degrees: nutation and the
/// aberration of a circular orbit; 0 in frame 2.
double AddedToSun(const RouteMoment& moment);

/// T of the two moments.
double TimeOf(const RouteMoment& moment, std::size_t index);

/// Stores a body of two moments into a point: place, speeds, motion; light time (from the Earth or
/// the Sun) and nutation if apparent. Lon -1 if it isn't given.
void StoreBody(CalcChart& chart, std::size_t n, const RouteMoment& moment,
               const std::array<BodyPosition, 2>& body);

/// A point that isn't calculated: Lon -1, and nothing of a chart before stays.
void ClearPoint(CalcChart& chart, std::size_t n);

/// Those of the points 13 to 19 that are asked for (from `first` to `last`), from the asteroid
/// tables. Without the table they aren't calculated. For T outside the tables' years Chiron's
/// longitude is 0 and the others keep what they held.
void CalcAsteroids(CalcChart& chart, std::int16_t first, std::int16_t last,
                   const RouteMoment& moment, std::string_view dataPath);

/// Vulcan on its own orbit, point 4.
void CalcVulcan(CalcChart& chart, const RouteMoment& moment);

/// Vulcan as D. Baker has it: with Mercury within three degrees of the Sun it stands with the Sun,
/// otherwise three degrees from Mercury on the Sun's side. Heliocentrically it stands with Mercury.
/// Without Mercury, or geocentrically without the Sun, it isn't calculated.
void VulcanByMercury(CalcChart& chart, std::int16_t frame);

/// CalcPlanets by this route; arguments as there, `first` and `last` being numbers of points.
void CalcPlanetsStandard(std::int16_t slot, std::int16_t first, std::int16_t last, double t,
                         double offset, double accuracy, std::int16_t frame, Flag useTables,
                         std::string_view dataPath, Flag trueNode, Flag weston);

}  // namespace orvantis

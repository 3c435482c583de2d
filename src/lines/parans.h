// Parans: latitudes on which two points are angular at the same moment.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "surface/values.h"

namespace orvantis {

/// Latitude at which two bodies stand on the horizon together, and the right ascension of the
/// zenith at that moment; the same bodies stand so at the opposite latitude when the zenith's right
/// ascension is 180 degrees on. All in degrees, the zenith's from -180 to 180. The zenith is the
/// pole of the plane through both bodies. False, and the outputs keep their values, if the pole's z
/// comes out as exactly 0, as for bodies at one place of the sky; for opposite ones the result is
/// whatever rounding leaves.
bool ParanLatitude(float ra1, float dec1, float ra2, float dec2, float& lat, float& zenithRA);

/// Relations of two points at a paran: tens digit for `p`, units digit for `paranPoint`; 1
/// culminating, 2 anticulminating, 3 rising, 4 setting. `sameSign`: the latitude is that of
/// ParanLatitude, not its opposite.
std::int16_t ParanCodeRiseRise(std::int16_t slot, std::int16_t p, std::int16_t paranPoint,
                               float zenithRA, bool sameSign);
/// `p` rises or sets while `paranPoint` culminates or anticulminates.
std::int16_t ParanCodeRiseCulm(std::int16_t slot, std::int16_t p, std::int16_t paranPoint,
                               float zenithRA, bool sameSign);
/// `p` culminates or anticulminates while `paranPoint` rises or sets.
std::int16_t ParanCodeCulmRise(std::int16_t slot, std::int16_t p, std::int16_t paranPoint,
                               float zenithRA, bool sameSign);

/// A paran of two points.
struct Paran {
    float lat = 0;              ///< degrees, north positive
    std::int16_t relation = 0;  ///< two digits, as above
};

/// Parans of `p` with `paranPoint` of a line type (5 both on the horizon, 6 one of them on the
/// meridian) up to a latitude of `limit` degrees either way, itself included: two or none for each
/// of the ways in which they can stand, in the order in which they are drawn.
std::vector<Paran> ParansOfPair(std::int16_t slot, std::int16_t p, std::int16_t paranPoint,
                                std::int16_t type, float limit);

/// A point and what its parans with others are found by, computed once for all of them. Unit
/// vectors; x to the vernal equinox, z to the north pole.
struct ParanPartner {
    struct Direction {
        double x = 1;
        double y = 0;
        double z = 0;
    };
    std::int16_t slot = 1;
    std::int16_t point = 0;
    Direction at;    ///< to the point
    Direction east;  ///< to the point of the equator that rises when it culminates
};

ParanPartner MakeParanPartner(std::int16_t slot, std::int16_t paranPoint);

/// Appends the parans of `p` with a partner: those of ParansOfPair.
void AddParans(std::vector<Paran>& parans, std::int16_t p, const ParanPartner& partner,
               std::int16_t type, float limit);

/// True if a point (1 to 72) can be the one whose parans are drawn: it has a position.
bool HasParans(std::int16_t slot, std::int16_t paranPoint);

/// Words of a relation, such as "The Moon Rising / The Sun Upper".
std::string ParanText(std::int16_t relation, std::int16_t p, std::int16_t paranPoint);

/// Draws the parans of every drawn point with the paran point of the options: lines of types 5 and
/// 6, each a parallel.
void PlotParans(Flag printing, std::int16_t slot);

}  // namespace orvantis

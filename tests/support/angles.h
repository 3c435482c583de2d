// How far two angles are from each other.
#pragma once

#include <cmath>

namespace orvantis {

/// Degrees between two angles in degrees, 0 to 180, the shorter way round.
inline double Apart(double a, double b) {
    return std::abs(std::remainder(a - b, 360));
}

}  // namespace orvantis

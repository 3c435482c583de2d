#include "geometry.h"

#include <cmath>
#include <numbers>

namespace orvantis::world {

MinLine ToMinutes(const DegLine& line, int owner) {
    MinLine result;
    for (const DegPoint& p : line) {
        const MinPoint rounded{static_cast<int>(std::lrint(p.x * 60)),
                               static_cast<int>(std::lrint(p.y * 60)), owner};
        if (result.empty() || !SamePlace(result.back(), rounded)) result.push_back(rounded);
    }
    return result;
}

// The area between an edge and the South Pole is that of a spherical trapezium; the signed sum over
// all edges leaves the ring. Edges along the date line and along 90 south add nothing, so a ring
// that was opened there needs no closing edge. (Chamberlain and Duquette, "Some Algorithms for
// Polygons on a Sphere", JPL 2007, equation 4, with the pole as origin.)
double RingArea(const MinLine& ring) {
    constexpr double kEarthRadiusKm = 6371;
    constexpr double kRadians = std::numbers::pi / (180 * 60);
    double sum = 0;
    for (std::size_t i = 1; i < ring.size(); ++i) {
        sum += (ring[i].x - ring[i - 1].x) * kRadians *
               (2 + std::sin(ring[i - 1].y * kRadians) + std::sin(ring[i].y * kRadians));
    }
    return -sum * kEarthRadiusKm * kEarthRadiusKm / 2;
}

}  // namespace orvantis::world

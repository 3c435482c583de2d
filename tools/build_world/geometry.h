// What the readers hand to the later steps: polylines in degrees as the sources have them, and in
// whole arc-minutes as the database keeps them. East and north are positive throughout.
#pragma once

#include <cstdint>
#include <vector>

namespace orvantis::world {

struct DegPoint {
    double x = 0;  ///< longitude, degrees
    double y = 0;  ///< latitude, degrees
};

using DegLine = std::vector<DegPoint>;

/// A position in whole arc-minutes, and whose coast it belongs to.
struct MinPoint {
    int x = 0;       ///< longitude, -10800 to 10800
    int y = 0;       ///< latitude, -5400 to 5400
    int owner = -1;  ///< number of the country in the source; -1 none
};

using MinLine = std::vector<MinPoint>;

inline constexpr int kDateLineMin = 10800;

inline bool SamePlace(const MinPoint& a, const MinPoint& b) {
    return a.x == b.x && a.y == b.y;
}

inline bool OnDateLine(const MinPoint& p) {
    return p.x == kDateLineMin || p.x == -kDateLineMin;
}

inline bool IsClosed(const MinLine& line) {
    return SamePlace(line.front(), line.back());
}

/// Rounds a line to arc-minutes (ties to even) and drops repeated positions.
MinLine ToMinutes(const DegLine& line, int owner);

/// Area that a ring encloses on the sphere, km2: positive for a counterclockwise ring, which has
/// its inside on the left. The ring closes along the date line, or around the South Pole, where
/// its ends lie apart.
double RingArea(const MinLine& ring);

}  // namespace orvantis::world

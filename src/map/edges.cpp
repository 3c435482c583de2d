// Where a segment crosses the map's edge.
#include <cmath>

#include "map/projection.h"
#include "text/numbers.h"

namespace orvantis {

namespace {

// Where a search looks: sides and ranges go by the map's edges, and the crossing is taken `inset`
// pixels inside them.
struct Search {
    int inset = 0;
    bool strictly = false;  // the crossing must lie between the edges of the other axis, not on one
};

// Along one axis: at which of two bounds a segment from u0 to u1 leaves, and where on the other
// axis. 0 none, 1 the lower bound, 2 the upper.
int LeaveAxis(double u0, double v0, double u1, double v1, int lower, int upper, int inset,
              std::int16_t& across) {
    int bound = 1;
    double at = lower + inset;
    if (u0 > lower && u1 > lower) {
        if (u0 < upper && u1 < upper) return 0;
        bound = 2;
        at = upper - inset;
    }
    across = RoundToInt16(u0 == u1 ? (v0 + v1) / 2 : v1 - ((u1 - at) * (v1 - v0)) / (u1 - u0));
    return bound;
}

bool Within(int value, int low, int high, bool strictly) {
    return strictly ? value > low && value < high : value >= low && value <= high;
}

EdgeCrossing CrossFlat(std::int16_t x0, std::int16_t y0, std::int16_t x1, std::int16_t y1,
                       const Search& search) {
    const MapRect& rect = mapView.rect;
    const int right = rect.left + rect.width;
    const int bottom = rect.top + rect.height;
    const int inset = search.inset;
    EdgeCrossing crossing;
    std::int16_t across = 0;
    int bound = LeaveAxis(x0, y0, x1, y1, rect.left, right, inset, across);
    if (bound != 0 && Within(across, rect.top, bottom, search.strictly)) {
        crossing.side = bound == 1 ? side::kLeft : side::kRight;
        crossing.x = RoundToInt16(bound == 1 ? rect.left + inset : right - inset);
        crossing.y = across;
        return crossing;
    }
    bound = LeaveAxis(y0, x0, y1, x1, rect.top, bottom, inset, across);
    if (bound != 0 && Within(across, rect.left, right, search.strictly)) {
        crossing.side = bound == 1 ? side::kTop : side::kBottom;
        crossing.x = across;
        crossing.y = RoundToInt16(bound == 1 ? rect.top + inset : bottom - inset);
    }
    return crossing;
}

// On a globe the crossing is the segment's middle; its direction from the centre, against that of
// the top right corner, tells the side.
EdgeCrossing CrossGlobe(std::int16_t x0, std::int16_t y0, std::int16_t x1, std::int16_t y1) {
    const MapRect& rect = mapView.rect;
    EdgeCrossing crossing;
    crossing.x = RoundToInt16((x0 + x1) / 2.0);
    crossing.y = RoundToInt16((y0 + y1) / 2.0);
    const double right = rect.width / 2.0;
    const double up = rect.height / 2.0;
    const double corner = RadToDeg(ArcTan2(right, up));
    const double middle =
        RadToDeg(ArcTan2(crossing.x - rect.left - right, rect.top + up - crossing.y));
    if (std::abs(middle) < corner) {
        crossing.side = side::kRight;
    } else if (std::abs(middle) > 180 - corner) {
        crossing.side = side::kLeft;
    } else {
        crossing.side = middle < 0 ? side::kBottom : side::kTop;
    }
    return crossing;
}

bool StrictlyInside(std::int16_t x, std::int16_t y) {
    const MapRect& rect = mapView.rect;
    return x > rect.left && x < rect.left + rect.width && y > rect.top &&
           y < rect.top + rect.height;
}

}  // namespace

EdgeCrossing FindEdgeCrossing(std::int16_t x0, std::int16_t y0, std::int16_t x1, std::int16_t y1) {
    if (!IsFlat(mapView.extent.projection)) return CrossGlobe(x0, y0, x1, y1);
    return CrossFlat(x0, y0, x1, y1, {0, false});
}

EdgeCrossing FindInsetCrossing(std::int16_t x0, std::int16_t y0, std::int16_t x1, std::int16_t y1) {
    EdgeCrossing crossing = IsFlat(mapView.extent.projection) ? CrossFlat(x0, y0, x1, y1, {1, true})
                                                              : CrossGlobe(x0, y0, x1, y1);
    crossing.startInside = StrictlyInside(x0, y0);
    return crossing;
}

}  // namespace orvantis

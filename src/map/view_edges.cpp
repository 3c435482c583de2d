#include "map/view_edges.h"

#include <algorithm>
#include <cmath>

#include "map/projection.h"
#include "text/numbers.h"

namespace orvantis {

namespace {

// Beyond this latitude a Mercator map shows nothing but its own stretching.
constexpr double kMercatorLimit = 85;

constexpr float kHighestView = 120;  // higher than this, doubled, becomes the whole meridian
constexpr double kWholeCircle = 360;
constexpr double kSnap = 0.001;  // degrees; a view this near to a degree, or a world this near to
                                 // its usual edges, gets them
constexpr double kEdgeGrid = 32768;  // steps in a degree

float WrappedLong(double longitude) {
    return static_cast<float>(Modulo(longitude + 180, kWholeCircle) - 180);
}

bool IsMercator() {
    return mapView.extent.projection == projection::kMercator;
}

// West and east of a width; the whole circle has one edge, so that rounding can't part them. A
// degree is exactly that: floats hold both of its edges on a grid of 2^-15 degrees.
void SetLongitudes(ViewEdges& edges, double west, double width) {
    if (std::abs(width - kNarrowestView) < kSnap) {
        west = std::nearbyint((west + (width - kNarrowestView) / 2) * kEdgeGrid) / kEdgeGrid;
        width = kNarrowestView;
    }
    edges.west = WrappedLong(west);
    edges.east = width >= kWholeCircle ? edges.west : WrappedLong(west + width);
}

// Row of the map, from 0 at its top to 1 at its foot, to what is linear in it: degrees of latitude,
// or Mercator's y.
double HeightAtRow(double row) {
    const ViewExtent& view = mapView.extent;
    if (IsMercator()) return view.mercNorth - row * view.mercSpan;
    return static_cast<double>(view.northDeg) - row * view.spanLat;
}

double MercatorLat(double y) {
    return 2 * (RadToDeg(std::atan(std::exp(y))) - 45);
}

// Latitudes of a Mercator view between two values of its y, moved to stay within what such a map
// can show: that of its limit, or of a view that reaches farther already.
void SetMercatorLatitudes(ViewEdges& edges, double south, double north) {
    const ViewExtent& view = mapView.extent;
    const double top = std::max<double>(MercatorY(kMercatorLimit), view.mercNorth);
    const double foot = std::min<double>(MercatorY(-kMercatorLimit), view.mercSouth);
    if (north - south >= top - foot) {
        edges.south = kMercatorSouth;
        edges.north = kMercatorNorth;
        return;
    }
    const double down = std::max(north - top, 0.0);
    const double up = std::max(foot - south, 0.0);
    edges.south = static_cast<float>(MercatorLat(south - down + up));
    edges.north = static_cast<float>(MercatorLat(north - down + up));
}

void SetLatitudesBetween(ViewEdges& edges, double south, double north) {
    if (IsMercator()) {
        SetMercatorLatitudes(edges, south, north);
        if (edges.north - edges.south < kLowestView) {
            SetLatitudes(edges, (edges.south + edges.north) / 2.0, kLowestView);
        }
    } else {
        SetLatitudes(edges, (south + north) / 2, std::max(north - south, kLowestView));
    }
}

}  // namespace

bool IsOnMap(float x, float y) {
    const MapRect& rect = mapView.rect;
    if (rect.width <= 0 || rect.height <= 0) return false;
    const double right = (static_cast<double>(x) - rect.left) / rect.width;
    const double down = (static_cast<double>(y) - rect.top) / rect.height;
    if (!(right >= 0 && right <= 1 && down >= 0 && down <= 1)) return false;
    return IsFlat(mapView.extent.projection) || std::hypot(right - 0.5, down - 0.5) <= 0.5;
}

void PlaceOnFlatMap(double lat, double longitude, double& x, double& y) {
    const ViewExtent& view = mapView.extent;
    const MapRect& rect = mapView.rect;
    const double across = Modulo(longitude - view.westDeg, kWholeCircle) / view.spanLong;
    const double down = IsMercator() ? (view.mercNorth - MercatorY(lat)) / view.mercSpan
                                     : (view.northDeg - lat) / view.spanLat;
    x = rect.left + across * rect.width;
    y = rect.top + down * rect.height;
}

void SetLatitudes(ViewEdges& edges, double centre, double height, const LatBand& band) {
    const double half = std::min(height, band.highest - band.lowest) / 2;
    centre =
        std::clamp(centre, band.lowest + half, std::max(band.highest - half, band.lowest + half));
    edges.south = static_cast<float>(centre - half);
    edges.north = static_cast<float>(centre + half);
}

ViewEdges EdgesOfBox(double left, double top, double right, double bottom) {
    const ViewExtent& view = mapView.extent;
    const MapRect& rect = mapView.rect;
    const double perPixel = static_cast<double>(view.spanLong) / rect.width;
    ViewEdges edges;
    SetLongitudes(edges, view.westDeg + perPixel * (left - rect.left), perPixel * (right - left));
    SetLatitudesBetween(edges, HeightAtRow((bottom - rect.top) / rect.height),
                        HeightAtRow((top - rect.top) / rect.height));
    return edges;
}

ViewEdges EdgesAbout(double lat, double longitude) {
    const ViewExtent& view = mapView.extent;
    ViewEdges edges;
    if (!IsFlat(view.projection)) {
        edges.south = edges.north = static_cast<float>(std::clamp(lat, -90.0, 90.0));
        edges.west = WrappedLong(longitude - 90);
        edges.east = WrappedLong(longitude + 90);
        return edges;
    }
    SetLongitudes(edges, longitude - view.spanLong / 2.0, view.spanLong);
    const double half = view.spanLat / 2.0;
    if (IsMercator()) {
        // The height in degrees stays here too, and so does the limit of a view that keeps it.
        const double top = std::max<double>(kMercatorLimit, view.northDeg);
        const double foot = std::min<double>(-kMercatorLimit, view.southDeg);
        lat = std::clamp(lat, std::min(foot + half, top - half), top - half);
    }
    SetLatitudes(edges, lat, view.spanLat);
    return edges;
}

bool ScaledEdges(double x, double y, int steps, ViewEdges& edges) {
    const ViewExtent& view = mapView.extent;
    const MapRect& rect = mapView.rect;
    if (!IsFlat(view.projection) || steps == 0 || rect.width <= 0 || rect.height <= 0) return false;
    if (steps > 0 && view.spanLong <= kNarrowestView + kSnap) return false;
    if (steps < 0 && IsWholeWorld(CurrentMap())) return false;

    const double leastFactor = static_cast<double>(kNarrowestView) / view.spanLong;
    const double factor = std::max(std::ldexp(1.0, std::clamp(-steps, -16, 16)), leastFactor);
    const double across = (x - rect.left) / rect.width;
    const double down = (y - rect.top) / rect.height;
    edges =
        EdgesOfBox(x - across * rect.width * factor, y - down * rect.height * factor,
                   x + (1 - across) * rect.width * factor, y + (1 - down) * rect.height * factor);
    if (steps > 0) return true;

    const bool wholeCircle = view.spanLong * factor > kWidestView;
    if (wholeCircle) {
        const double place = view.westDeg + across * view.spanLong;
        SetLongitudes(edges, place - across * kWholeCircle, kWholeCircle);
        if (std::abs(std::remainder(edges.west + 180.0, kWholeCircle)) < kSnap) {
            edges.west = -180;
            edges.east = 180;
        }
    }
    if (IsMercator() && wholeCircle) {
        edges.south = kMercatorSouth;
        edges.north = kMercatorNorth;
    } else if (!IsMercator() && view.spanLat * factor > kHighestView) {
        edges.south = -90;
        edges.north = 90;
    }
    return true;
}

}  // namespace orvantis

#include "map/view_edges.h"

#include <algorithm>
#include <cmath>

#include "map/projection.h"
#include "text/numbers.h"

namespace orvantis {

namespace {

constexpr double kHighestView = 120;  // degrees; what is higher becomes the whole meridian
constexpr double kWholeCircle = 360;
constexpr double kWholeMeridian = 180;
constexpr double kSnap = 0.001;  // degrees; a view this near to a degree, or a world this near to
                                 // its usual edges, gets them
constexpr double kEdgeGrid = 32768;  // steps in a degree

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

// Latitudes of a Mercator view between two values of its y, moved to stay within the band of such
// views, or of a view that reaches farther already.
void SetMercatorLatitudes(ViewEdges& edges, double south, double north) {
    const ViewExtent& view = mapView.extent;
    const LatBand band = BandOf(projection::kMercator);
    const double top = std::max<double>(MercatorY(band.highest), view.mercNorth);
    const double foot = std::min<double>(MercatorY(band.lowest), view.mercSouth);
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

// The band of the view's projection; a Mercator view that reaches farther already stays there.
LatBand BandOfView() {
    const ViewExtent& view = mapView.extent;
    LatBand band = BandOf(view.projection);
    if (!IsMercator()) return band;
    band.lowest = std::min<double>(band.lowest, view.southDeg);
    band.highest = std::max<double>(band.highest, view.northDeg);
    return band;
}

}  // namespace

LatBand BandOf(std::int16_t projectionNumber) {
    return projectionNumber == projection::kMercator ? LatBand{-80, 85} : LatBand{};
}

float WrappedLong(double longitude) {
    return static_cast<float>(Modulo(longitude + 180, kWholeCircle) - 180);
}

double LargerWidth(double width) {
    return width > kWidestView ? kWholeCircle : width;
}

double LargerHeight(double height) {
    return height > kHighestView ? kWholeMeridian : height;
}

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
    SetLatitudes(edges, lat, view.spanLat, BandOfView());
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

    const bool wholeCircle = LargerWidth(view.spanLong * factor) == kWholeCircle;
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
    } else if (!IsMercator() && LargerHeight(view.spanLat * factor) == kWholeMeridian) {
        edges.south = -90;
        edges.north = 90;
    }
    return true;
}

}  // namespace orvantis

// Positions to pixels and back in the four projections. The two flat ones are the plate carree and
// Mercator's (J. P. Snyder, Map Projections: A Working Manual, USGS Professional Paper 1395,
// equations 12-1 and 12-2, and 7-1, 7-2 and 7-4); the globes are the orthographic projection
// (equations 20-3 and 20-4), by way of a rotation that brings the view's centre to the equator.
#include "map/projection.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <vector>

#include "text/numbers.h"

namespace orvantis {

MapView mapView;

namespace {

constexpr int kFullCircleMin = 21600;
constexpr int kQuarterMin = 5400;
constexpr double kFarPixel = 32000;  // a position never lies farther off than this

// How far west of a narrow view a point still counts as lying to its left; beyond that it lies to
// the right. A view that leaves less than this of the world takes half of what it leaves, so that
// its own eastern part isn't put to the left.
constexpr int kWestReachMin = 3600;

int WestReach(int spanMin) {
    const int outside = kFullCircleMin - spanMin;
    return outside < kWestReachMin ? outside / 2 : kWestReachMin;
}

// Mercator's y of a latitude that has none.
constexpr double kMercatorFloor = -10;

std::int16_t HeldPixel(double value) {
    if (std::abs(value) >= kFarPixel)
        return static_cast<std::int16_t>(std::copysign(kFarPixel, value));
    return RoundToInt16(value);
}

// Sines of the whole arc-minutes of a circle: a plot of a globe asks for several of them a point.
const double* SineTable() {
    static const std::vector<double> sines = [] {
        std::vector<double> table;
        table.reserve(kFullCircleMin);
        for (int m = 0; m < kFullCircleMin; ++m) table.push_back(SinD(m / 60.0));
        return table;
    }();
    return sines.data();
}

double SinMin(const double* sines, int minutes) {
    while (minutes < 0) minutes += kFullCircleMin;
    while (minutes >= kFullCircleMin) minutes -= kFullCircleMin;
    return sines[minutes];
}

double CosMin(const double* sines, int minutes) {
    return SinMin(sines, minutes + kQuarterMin);
}

// Sine and cosine of the angle by which the globe's centre is turned to the equator; those asked
// for last are kept, since a plot asks for the same ones at every point.
struct GlobeTilt {
    float centreLat = 0;
    double sine = 0;
    double cosine = 1;
};

GlobeTilt TiltOf(float centreLat) {
    static GlobeTilt kept;
    if (kept.centreLat != centreLat) kept = {centreLat, SinD(-centreLat), CosD(-centreLat)};
    return kept;
}

void ProjectOnGlobe(std::int16_t latMin, std::int16_t longMin, std::int16_t& y, std::int16_t& x) {
    const ViewExtent& view = mapView.extent;
    const MapRect& rect = mapView.rect;

    // The poles are kept off the rotation's singular points.
    if (latMin == 5400) latMin = 5399;
    if (latMin == -5400) latMin = -5399;
    const std::int16_t l = RoundToInt16(longMin - static_cast<double>(view.centreLong) * 60);
    const GlobeTilt tilt = TiltOf(view.centreLat);
    // The rotation of RotateCoords by minus the centre's latitude, on whole arc-minutes.
    const double* const sines = SineTable();
    const double cosLat = CosMin(sines, latMin);
    const double y0 = cosLat * SinMin(sines, l + kQuarterMin);
    const double z0 = SinMin(sines, latMin);
    const double z = y0 * tilt.sine + z0 * tilt.cosine;
    const double d = RadToDeg(std::asin(std::clamp(z, -1.0, 1.0)));
    const double a = RadToDeg(
        std::atan2(y0 * tilt.cosine - z0 * tilt.sine, cosLat * CosMin(sines, l + kQuarterMin)));
    const double turned = a - 90 + 180;
    const std::int16_t r = RoundToInt16(((turned < 0 ? turned + 360 : turned) - 180) * 60);
    const std::int16_t p = RoundToInt16(d * 60);

    double v = (1 - SinMin(sines, p)) / 2;
    v = (v - view.globeOffset) / view.globeScale;
    y = RoundToInt16(rect.top + rect.height * v);
    x = RoundToInt16(rect.left + (rect.width / 2.0) * (1 + SinMin(sines, r) * CosMin(sines, p)));
}

void UnprojectFlat(const MapDocument& doc, float x, float y, float& lat, float& longitude) {
    const ViewExtent& view = mapView.extent;
    const MapRect& rect = mapView.rect;
    const double down = static_cast<double>(y) - rect.top;
    if (y <= rect.top) {
        lat = doc.north;
    } else if (y >= rect.top + rect.height) {
        lat = doc.south;
    } else if (view.projection == projection::kMercator) {
        const double m = view.mercNorth - down / rect.height * view.mercSpan;
        lat = static_cast<float>(2 * (RadToDeg(std::atan(std::exp(m))) - 45));
    } else {
        const double span = static_cast<double>(doc.north) - doc.south;
        lat = static_cast<float>(doc.north - span * down / rect.height);
    }

    if (x <= rect.left) {
        longitude = doc.west;
    } else if (x >= rect.left + rect.width) {
        longitude = doc.east;
    } else {
        const double wrap = doc.east <= doc.west ? 360 : 0;
        const double east =
            (wrap + doc.east - doc.west) * (static_cast<double>(x) - rect.left) / rect.width;
        longitude = static_cast<float>(Modulo(doc.west + east + 180, 360) - 180);
    }
}

void UnprojectGlobe(const MapDocument& doc, float x, float y, float& lat, float& longitude) {
    const ViewExtent& view = mapView.extent;
    const MapRect& rect = mapView.rect;

    // On the globe turned to the equator: latitude from the row, longitude from the row's chord.
    double turnedLat = doc.south;
    if (y <= rect.top) {
        turnedLat = doc.north;
    } else if (y < rect.top + rect.height) {
        turnedLat = RadToDeg(ArcSin(1 - 2 * (static_cast<double>(y) - rect.top) / rect.height));
    }
    const std::int16_t chord = RoundToInt16(rect.width * CosD(turnedLat));
    const std::int16_t start = RoundToInt16(0.5 * (rect.width - chord) + rect.left);
    double turned = 0;
    if (x <= start) {
        turned = Modulo(static_cast<double>(doc.west) + 90, 360) - 180;
    } else if (x >= start + chord) {
        turned = Modulo(static_cast<double>(doc.east) - 90, 360) - 180;
    } else {
        const double offset = RadToDeg(ArcSin(2 * (static_cast<double>(x) - start) / chord - 1));
        turned = Modulo(view.centreLong + offset + 180, 360) - 180;
    }
    turned = view.centreLong - turned + 90;

    // Back to the globe as it stands.
    double a = turned;
    double d = turnedLat;
    if (view.centreLat != 0) {
        RotateCoords(turned, turnedLat, SinD(view.centreLat), CosD(view.centreLat), a, d);
    }
    lat = static_cast<float>(d);
    longitude = static_cast<float>(
        -(Modulo(a - static_cast<double>(view.centreLong) - 90 + 180, 360) - 180));
}

}  // namespace

double MercatorY(double lat) {
    const double t = TanD(lat / 2 + 45);
    return t > 0 ? std::log(t) : kMercatorFloor;
}

void RotateCoords(double longitude, double latitude, double sinTilt, double cosTilt, double& a,
                  double& d) {
    const double sinLong = SinD(longitude);
    const double sinD = SinD(latitude) * cosTilt + CosD(latitude) * sinTilt * sinLong;
    d = RadToDeg(ArcSin(std::clamp(sinD, -1.0, 1.0)));
    const double x = CosD(longitude);
    const double y = sinLong * cosTilt - TanD(latitude) * sinTilt;
    a = Modulo(RadToDeg(ArcTan2(x, y)), 360);
}

std::int16_t FlatY(std::int16_t latMin) {
    const ViewExtent& view = mapView.extent;
    const MapRect& rect = mapView.rect;
    if (view.projection == projection::kMercator) {
        // Held like the plate carree, by decision: a pole in a zoomed view lies beyond 16 bits, and
        // a line to it would otherwise end the plot.
        const double m = MercatorY(latMin / 60.0);
        return HeldPixel(rect.top - ((m - view.mercNorth) / view.mercSpan) * rect.height);
    }
    const double scale = static_cast<double>(rect.height) / view.spanLatMin;
    return HeldPixel(rect.top - scale * (latMin + view.offsetLatMin));
}

std::int16_t FlatX(std::int16_t longMin) {
    const ViewExtent& view = mapView.extent;
    const MapRect& rect = mapView.rect;
    const int span = view.spanLongMin;
    if (span == kFullCircleMin) {
        const int east = (longMin + view.offsetLongMin + kFullCircleMin) % kFullCircleMin;
        return RoundToInt16(rect.left + static_cast<double>(east * rect.width) / span);
    }
    const int reach = WestReach(span);
    const int east =
        (view.offsetLongMin + reach + longMin + kFullCircleMin) % kFullCircleMin - reach;
    return HeldPixel(rect.left + static_cast<double>(rect.width) / span * east);
}

void ProjectPoint(std::int16_t latMin, std::int16_t longMin, std::int16_t& y, std::int16_t& x) {
    if (IsFlat(mapView.extent.projection)) {
        y = FlatY(latMin);
        x = FlatX(longMin);
    } else {
        ProjectOnGlobe(latMin, longMin, y, x);
    }
}

void UnprojectPoint(const MapDocument& doc, float x, float y, float& lat, float& longitude) {
    if (IsFlat(mapView.extent.projection)) {
        UnprojectFlat(doc, x, y, lat, longitude);
    } else {
        UnprojectGlobe(doc, x, y, lat, longitude);
    }
}

bool LongInView(double longitude, std::int16_t westMin, std::int16_t eastMin) {
    const std::int16_t m = RoundToInt16(longitude * 60);
    if (westMin == eastMin) return true;
    if (westMin <= eastMin) return m < eastMin && m > westMin;
    return m < eastMin || m > westMin;
}

bool PointInView(double lat, double longitude, std::int16_t southMin, std::int16_t northMin,
                 std::int16_t westMin, std::int16_t eastMin) {
    const ViewExtent& view = mapView.extent;
    if (!IsFlat(view.projection)) {
        return AngularDistance(static_cast<float>(longitude), static_cast<float>(lat),
                               view.centreLong, view.centreLat) < 90;
    }
    if (lat * 60 <= southMin || lat * 60 >= northMin) return false;
    return LongInView(longitude, westMin, eastMin);
}

}  // namespace orvantis

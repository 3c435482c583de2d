// Positions to pixels and back in the four projections. The two flat ones are the plate carree and
// Mercator's (J. P. Snyder, Map Projections: A Working Manual, USGS Professional Paper 1395,
// equations 12-1 and 12-2, and 7-1, 7-2 and 7-4); the globes are the orthographic projection
// (equations 20-3 and 20-4), by way of a rotation that brings the view's centre to the equator.
#include "map/projection.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <utility>
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

// Whole arc-minutes that the sine table holds: those of any 16-bit angle, and half a turn more.
constexpr int kLeastMin = -32768;
constexpr int kMostMin = 32767 + 2 * kQuarterMin;

// Sines of whole arc-minutes, by the angle: a plot of a globe asks for several of them a point.
const double* SineTable() {
    static const std::vector<double> sines = [] {
        std::vector<double> table(kMostMin - kLeastMin + 1);
        for (int m = 0; m < kFullCircleMin; ++m) {
            const double sine = SinD(m / 60.0);
            int entry = (m - kLeastMin) % kFullCircleMin;
            for (; entry <= kMostMin - kLeastMin; entry += kFullCircleMin) {
                table[static_cast<std::size_t>(entry)] = sine;
            }
        }
        return table;
    }();
    return sines.data() - kLeastMin;
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

// A position turned with the globe until the view's centre lies at (0, 0): whole arc-minutes.
struct TurnedPoint {
    std::int16_t r = 0;  // longitude
    std::int16_t p = 0;  // latitude
};

// The turned position from its direction in space: x to the view's west, y to the viewer, z up.
TurnedPoint RoundTurned(double x, double y, double z) {
    const double d = RadToDeg(std::asin(std::clamp(z, -1.0, 1.0)));
    const double turned = RadToDeg(std::atan2(y, x)) - 90 + 180;
    return {RoundToInt16(((turned < 0 ? turned + 360 : turned) - 180) * 60), RoundToInt16(d * 60)};
}

// Arc tangents of 0 to 1 in arc-minutes, as straight lines between entries: off by less than
// (1 / kArcSteps) ^ 2 / 8 times the greatest second derivative, 0.65, which is 2.7e-4 minutes. More
// entries would crowd out of the nearest memory what else a plot needs there.
constexpr int kArcSteps = 1024;

const double* ArcTable() {
    static const std::vector<double> arcs = [] {
        std::vector<double> table;
        table.reserve(kArcSteps + 2);
        for (int i = 0; i <= kArcSteps + 1; ++i) {
            table.push_back(RadToDeg(std::atan(static_cast<double>(i) / kArcSteps)) * 60);
        }
        return table;
    }();
    return arcs.data();
}

// What follows from a turned latitude: the row, before it is rounded, and the latitude's cosine.
struct GlobeRow {
    double y = 0;
    double cosine = 0;
};

// Those of all whole minutes, by the latitude. The ones asked for last are kept, since a plot asks
// for the same ones at every point.
const GlobeRow* GlobeRows(const double* sines) {
    struct Kept {
        std::int16_t top = 0;
        std::int16_t height = 0;
        double offset = 0;
        double stretch = 0;
        std::vector<GlobeRow> rows;
    };
    static Kept kept;
    const MapRect& rect = mapView.rect;
    const double offset = mapView.extent.globeOffset;
    const double stretch = 1.0 / mapView.extent.globeScale;
    const bool same = kept.top == rect.top && kept.height == rect.height && kept.offset == offset &&
                      kept.stretch == stretch;
    if (kept.rows.empty() || !same) {
        kept = {rect.top, rect.height, offset, stretch, std::move(kept.rows)};
        kept.rows.resize(2 * kQuarterMin + 1);
        for (std::size_t row = 0; row < kept.rows.size(); ++row) {
            const int p = static_cast<int>(row) - kQuarterMin;
            const double v = ((1 - sines[p]) / 2 - offset) * stretch;
            kept.rows[row] = {rect.top + rect.height * v, sines[p + kQuarterMin]};
        }
    }
    return kept.rows.data() + kQuarterMin;
}

// What the points of a globe have in common.
struct GlobeFrame {
    double left = 0;
    double halfWidth = 0;
    double centreMin = 0;  // the centre's longitude
    GlobeTilt tilt;
    const double* sines = nullptr;
    const double* arcs = nullptr;
    const GlobeRow* rows = nullptr;
};

GlobeFrame FrameOfGlobe() {
    const ViewExtent& view = mapView.extent;
    const MapRect& rect = mapView.rect;
    const double* const sines = SineTable();
    return {static_cast<double>(rect.left),
            rect.width / 2.0,
            static_cast<double>(view.centreLong) * 60,
            TiltOf(view.centreLat),
            sines,
            ArcTable(),
            GlobeRows(sines)};
}

// The place of a turned position.
MapPixel PlaceOnGlobe(const GlobeFrame& globe, TurnedPoint point) {
    const GlobeRow& row = globe.rows[point.p];
    const double right = globe.sines[point.r] * row.cosine;
    return {RoundToInt16(globe.left + globe.halfWidth * (1 + right)), RoundToInt16(row.y)};
}

// Points that are projected together, stage by stage: many enough for the stages to pay, and few
// enough to stay in the nearest memory.
constexpr std::size_t kBlock = 64;

struct GlobeBlock {
    std::size_t count = 0;
    // Directions in space, see RoundTurned.
    std::array<double, kBlock> x{};
    std::array<double, kBlock> y{};
    std::array<double, kBlock> z{};
    std::array<double, kBlock> aside{};      // distance from the axis
    std::array<double, kBlock> partAlong{};  // entries of the table of arcs, with their fractions
    std::array<double, kBlock> partUp{};
};

// The rotation of RotateCoords by minus the centre's latitude, on whole arc-minutes.
void TurnBlock(const GlobeFrame& globe, const MapPoint* points, GlobeBlock& block) {
    const double* const sines = globe.sines;
    for (std::size_t i = 0; i < block.count; ++i) {
        // The poles are kept off the rotation's singular points.
        int lat = points[i].lat;
        if (lat == kQuarterMin) lat = kQuarterMin - 1;
        if (lat == -kQuarterMin) lat = 1 - kQuarterMin;
        const std::int16_t l = RoundToInt16(points[i].longitude - globe.centreMin);
        const double cosLat = sines[lat + kQuarterMin];
        const double y0 = cosLat * sines[l + kQuarterMin];
        const double z0 = sines[lat];
        block.x[i] = cosLat * sines[l + 2 * kQuarterMin];
        block.y[i] = y0 * globe.tilt.cosine - z0 * globe.tilt.sine;
        block.z[i] = y0 * globe.tilt.sine + z0 * globe.tilt.cosine;
    }
}

// An arithmetic without branches, which the compiler works at for several points at once.
void FindParts(GlobeBlock& block) {
    for (std::size_t i = 0; i < block.count; ++i) {
        const double x = std::abs(block.x[i]);
        const double y = std::abs(block.y[i]);
        const double z = std::abs(block.z[i]);
        const double aside = std::sqrt(x * x + y * y);
        block.aside[i] = aside;
        block.partAlong[i] = (x < y ? x : y) / (x < y ? y : x) * kArcSteps;
        block.partUp[i] = (z < aside ? z : aside) / (z < aside ? aside : z) * kArcSteps;
    }
}

// The direction of (x, y) from the x axis, in arc-minutes; off by as much as the table. `part` is
// what the lesser of the two is of the greater, in entries of the table.
double NearDirection(const double* arcs, double part, double x, double y) {
    const int entry = static_cast<int>(part);
    double minutes = arcs[entry] + (part - entry) * (arcs[entry + 1] - arcs[entry]);
    minutes = std::abs(y) > std::abs(x) ? kQuarterMin - minutes : minutes;
    minutes = x < 0 ? 2 * kQuarterMin - minutes : minutes;
    return std::copysign(minutes, y);
}

// What RoundTurned gives, in a fraction of its time: a plot asks for some hundred thousand
// positions. Where an angle lies so near to halfway between two minutes that the table might round
// it the other way, RoundTurned is asked.
TurnedPoint TurnedOf(const GlobeFrame& globe, const GlobeBlock& block, std::size_t i) {
    constexpr double kSure = 0.499;
    const double x = block.x[i];
    const double y = block.y[i];
    const double z = block.z[i];
    if (!(block.aside[i] > 0)) return RoundTurned(x, y, z);  // nor where it is no number
    const double r = NearDirection(globe.arcs, block.partAlong[i], y, -x);
    const double p = NearDirection(globe.arcs, block.partUp[i], block.aside[i], z);
    const auto wholeR = static_cast<std::int16_t>(std::lrint(r));
    const auto wholeP = static_cast<std::int16_t>(std::lrint(p));
    if (std::abs(r - wholeR) < kSure && std::abs(p - wholeP) < kSure) return {wholeR, wholeP};
    return RoundTurned(x, y, z);
}

// On a globe that stands upright nothing is turned but by the longitude of its centre, and the
// table of sines takes any number of turns.
void ProjectUpright(const GlobeFrame& globe, const MapPoint* points, std::size_t count,
                    MapPixel* pixels) {
    for (std::size_t i = 0; i < count; ++i) {
        constexpr int kMost = kQuarterMin - 1;
        const auto p = static_cast<std::int16_t>(std::clamp<int>(points[i].lat, -kMost, kMost));
        pixels[i] = PlaceOnGlobe(globe, {RoundToInt16(points[i].longitude - globe.centreMin), p});
    }
}

bool OnEarth(const MapPoint& point) {
    return point.lat >= -kQuarterMin && point.lat <= kQuarterMin;
}

void ProjectOnGlobe(const GlobeFrame& globe, const MapPoint* points, std::size_t count,
                    MapPixel* pixels) {
    if (globe.tilt.centreLat == 0 && std::all_of(points, points + count, OnEarth)) {
        ProjectUpright(globe, points, count, pixels);
        return;
    }
    static GlobeBlock block;
    for (std::size_t done = 0; done < count; done += block.count) {
        block.count = std::min(kBlock, count - done);
        TurnBlock(globe, points + done, block);
        FindParts(block);
        for (std::size_t i = 0; i < block.count; ++i) {
            pixels[done + i] = PlaceOnGlobe(globe, TurnedOf(globe, block, i));
        }
    }
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
        double span = wrap + doc.east - doc.west;
        if (span == 0) span = 360;  // from the date line's western side to its eastern one
        const double east = span * (static_cast<double>(x) - rect.left) / rect.width;
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
        const MapPoint point = {latMin, longMin};
        MapPixel pixel;
        ProjectOnGlobe(FrameOfGlobe(), &point, 1, &pixel);
        x = pixel.x;
        y = pixel.y;
    }
}

double SineOfMinutes(int minutes) {
    return SineTable()[minutes];
}

void ProjectPoints(const std::vector<MapPoint>& points, std::vector<MapPixel>& pixels) {
    pixels.resize(points.size());
    if (IsFlat(mapView.extent.projection)) {
        for (std::size_t i = 0; i < points.size(); ++i) {
            pixels[i] = {FlatX(points[i].longitude), FlatY(points[i].lat)};
        }
        return;
    }
    ProjectOnGlobe(FrameOfGlobe(), points.data(), points.size(), pixels.data());
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

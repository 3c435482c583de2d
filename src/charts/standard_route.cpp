// The steps of the standard route.
#include "charts/standard_route.h"

#include <algorithm>
#include <cmath>

#include "charts/QXPlan2.h"
#include "charts/ephemeris_tables.h"
#include "text/numbers.h"

namespace orvantis {

namespace {

constexpr std::int16_t kGeocentric = 1;
constexpr double kMinute = 1.901285e-8;  // in centuries
constexpr double kMinutes = 1440;        // in a day

// Degrees a day, the short way around.
double LongitudeSpeed(double first, double second) {
    return (Modulo(second - first + 180, 360) - 180) * kMinutes;
}

// Millennia from J2000.0.
double MillenniaOf(double t) {
    return (JulianDayOf(t) - kJ2000) / 365250;
}

void SetMotion(CalcChart& chart, std::size_t n) {
    chart.Retro[n] = chart.LonSpeed[n] < 0 ? kTrue : kFalse;
}

// Works a body out at both moments by one source: where the library's file ends between them, by
// its theory, which is some seconds of arc away. `calculate(i, source)` takes one moment, and tells
// the source that answered.
template <typename Calculate>
void AtBothMoments(Calculate calculate) {
    std::array<EphemerisSource, 2> sources{EphemerisSource::Files, EphemerisSource::Files};
    for (std::size_t i = 0; i < 2; ++i) calculate(i, sources[i]);
    if (sources[0] == sources[1]) return;
    sources.fill(EphemerisSource::Theory);
    for (std::size_t i = 0; i < 2; ++i) calculate(i, sources[i]);
}

// Two longitudes of a point of the Moon's orbit, which need no more steps.
void StoreLongitude(CalcChart& chart, std::size_t n, double first, double second) {
    ClearPoint(chart, n);
    if (first < 0 || second < 0) return;
    chart.Lon[n] = first;
    chart.LonSpeed[n] = LongitudeSpeed(first, second);
    SetMotion(chart, n);
}

void CalcMoon(CalcChart& chart, const RouteMoment& moment) {
    std::array<double, 2> longitude{};
    std::array<double, 2> latitude{};
    AtBothMoments([&](std::size_t i, EphemerisSource& source) {
        CalcMon(TimeOf(moment, i), moment.offset, longitude[i], latitude[i], &source);
    });
    StoreLongitude(chart, point::kMoon, longitude[0], longitude[1]);
    if (chart.Lon[point::kMoon] < 0) return;
    // The nutation isn't worked out yet: the Moon stays as its theory gives it.
    chart.Lon[point::kMoon] = Modulo(moment.nutation + longitude[0], 360);
    chart.Lat[point::kMoon] = latitude[0];
    chart.LatSpeed[point::kMoon] = (latitude[1] - latitude[0]) * kMinutes;
}

// The Sun's geometric places; with a rough accuracy the short theory's, which are apparent already.
void FindSun(RouteMoment& moment, double accuracy) {
    constexpr double kRough = 9.9;
    std::array<bool, 2> given{};
    AtBothMoments([&](std::size_t i, EphemerisSource& source) {
        SphericalPlace& sun = moment.sun[i];
        if (accuracy <= kRough) {
            const double tM = MillenniaOf(moment.t) + (i == 0 ? 0 : kMinute * 0.1);
            const BodyPosition earth =
                CalcPlanetVSOP(3, tM, moment.offset, accuracy, 0, 0, 0, &source);
            sun = {Modulo(earth.longitude[2] + 180, 360), -earth.latitude[2], earth.distance[2]};
            given[i] = earth.given;
        } else {
            CalcSun(TimeOf(moment, i), moment.offset, sun.longitude, sun.distance, &source);
            given[i] = sun.longitude >= 0;
        }
    });
    moment.sunGiven = given[0] && given[1];
}

// Points 2 and 3, and the nutation of the moment.
void CalcSunAndEarth(CalcChart& chart, RouteMoment& moment, double accuracy) {
    FindSun(moment, accuracy);
    ClearPoint(chart, point::kSun);
    ClearPoint(chart, point::kEarth);
    if (moment.apparent) moment.nutation = NutationInLongitude(moment.t);
    if (!moment.sunGiven) return;

    const auto& [now, next] = moment.sun;
    chart.Lon[point::kSun] = Modulo(now.longitude + AddedToSun(moment), 360);
    chart.Lat[point::kSun] = now.latitude;
    chart.Dist[point::kSun] = now.distance;
    chart.LonSpeed[point::kSun] = LongitudeSpeed(now.longitude, next.longitude);
    // The system's own way: the change in a minute, not in a day.
    chart.LatSpeed[point::kSun] = next.latitude - now.latitude;
    SetMotion(chart, point::kSun);

    chart.Lon[point::kEarth] = Modulo(chart.Lon[point::kSun] + 180, 360);
    chart.Lat[point::kEarth] = 0.0 - chart.Lat[point::kSun];
    chart.Dist[point::kEarth] = chart.Dist[point::kSun];
    chart.LonSpeed[point::kEarth] = chart.LonSpeed[point::kSun];
    chart.LatSpeed[point::kEarth] = 0.0 - chart.LatSpeed[point::kSun];
    SetMotion(chart, point::kEarth);
}

// A body of a table at the two moments. The longitude's offset is added here.
std::array<BodyPosition, 2> FromTable(const TablePosition& body, const RouteMoment& moment) {
    std::array<BodyPosition, 2> positions;
    for (std::size_t i = 0; i < 2; ++i) {
        const double days = static_cast<double>(i) / kMinutes;
        const SphericalPlace place = {
            Modulo(body.longitude + body.longitudeSpeed * days + moment.offset, 360),
            body.latitude + body.latitudeSpeed * days, body.distance + body.distanceSpeed * days};
        const SphericalPlace& sun = moment.sun[i];
        positions[i] = SeenFromEarth(place, sun.longitude, sun.latitude, sun.distance);
    }
    return positions;
}

// Points 8 to 12 from the outer planets' tables; false if they don't serve this moment.
bool CalcOuterPlanets(CalcChart& chart, std::int16_t first, std::int16_t last,
                      const RouteMoment& moment, std::string_view dataPath) {
    std::array<TablePosition, 8> bodies;
    if (!ReadTables(TableSeries::OuterPlanets, dataPath, moment.t, bodies)) return false;
    for (std::int16_t n = std::max(first, point::kJupiter); n <= std::min(last, point::kPluto);
         ++n) {
        const auto body = static_cast<std::size_t>(n) - point::kJupiter + 1;
        StoreBody(chart, static_cast<std::size_t>(n), moment, FromTable(bodies[body], moment));
    }
    return true;
}

// Pluto from the elements file, or from the library if there is none for both moments.
std::array<BodyPosition, 2> PlutoWithoutTables(const RouteMoment& moment,
                                               std::string_view dataPath) {
    std::array<TablePosition, 2> pluto;
    bool fromElements = true;
    for (std::size_t i = 0; i < 2; ++i) {
        const double jd = JulianDayOf(TimeOf(moment, i));
        fromElements = fromElements && PlutoFromElements(dataPath, jd, pluto[i]);
    }
    std::array<BodyPosition, 2> positions;
    AtBothMoments([&](std::size_t i, EphemerisSource& source) {
        const SphericalPlace& sun = moment.sun[i];
        if (fromElements) {
            positions[i] = SeenFromEarth({Modulo(pluto[i].longitude + moment.offset, 360),
                                          pluto[i].latitude, pluto[i].distance},
                                         sun.longitude, sun.latitude, sun.distance);
        } else {
            positions[i] =
                CalcPlu(TimeOf(moment, i), moment.offset, sun.longitude, sun.distance, &source);
        }
    });
    return positions;
}

// A planet of the library, a hypothetical point or Pluto.
std::array<BodyPosition, 2> BodyOfPoint(std::int16_t n, const RouteMoment& moment, double accuracy,
                                        std::string_view dataPath) {
    // Bodies of CalcPlanetVSOP for points 5 to 11.
    static constexpr std::array<std::int16_t, 7> kPlanets = {1, 2, 4, 5, 6, 7, 8};
    if (n == point::kPluto) return PlutoWithoutTables(moment, dataPath);
    std::array<BodyPosition, 2> positions;
    AtBothMoments([&](std::size_t i, EphemerisSource& source) {
        const SphericalPlace& sun = moment.sun[i];
        if (n >= point::kCupido) {
            positions[i] = CalcTNP(static_cast<std::int16_t>(n - point::kCupido + 1),
                                   TimeOf(moment, i), moment.offset, sun.longitude, sun.distance);
        } else {
            const double tM = MillenniaOf(moment.t) + (i == 0 ? 0 : kMinute * 0.1);
            positions[i] = CalcPlanetVSOP(kPlanets[static_cast<std::size_t>(n - point::kMercury)],
                                          tM, moment.offset, accuracy, sun.longitude, sun.latitude,
                                          sun.distance, &source);
        }
    });
    return positions;
}

// Points 20 and 21, which always go together.
void CalcNodes(CalcChart& chart, const RouteMoment& moment, Flag trueNode) {
    std::array<double, 2> node{};
    AtBothMoments([&](std::size_t i, EphemerisSource& source) {
        double mean = 0;
        double osculating = 0;
        CalcNod(TimeOf(moment, i), moment.offset, mean, osculating, &source);
        node[i] = trueNode != 0 ? osculating : mean;
    });
    StoreLongitude(chart, point::kNorthNode, node[0], node[1]);
    ClearPoint(chart, point::kSouthNode);
    if (chart.Lon[point::kNorthNode] < 0) return;
    chart.Lon[point::kSouthNode] = Modulo(chart.Lon[point::kNorthNode] + 180, 360);
    chart.LonSpeed[point::kSouthNode] = chart.LonSpeed[point::kNorthNode];
    SetMotion(chart, point::kSouthNode);
}

void CalcBlackMoon(CalcChart& chart, const RouteMoment& moment) {
    std::array<double, 2> longitude{};
    for (std::size_t i = 0; i < 2; ++i) {
        CalcLilith(TimeOf(moment, i), moment.offset, longitude[i]);
    }
    StoreLongitude(chart, point::kBlackMoon, longitude[0], longitude[1]);
    if (chart.Lon[point::kBlackMoon] < 0) return;
    chart.Lat[point::kBlackMoon] = 0.6666667 * chart.Lat[point::kMoon];
}

}  // namespace

void Nutation(double n, double& inLongitude, double& inObliquity) {
    const double l = 36000.7698 * n + 280.4665;
    const double m = 481267.8813 * n + 218.3165;
    const double o = 125.04452 - 1934.136261 * n;
    inLongitude =
        (-17.2 * SinD(o) - 1.32 * SinD(2 * l) - 0.23 * SinD(2 * m) + 0.21 * SinD(2 * o)) / 3600;
    inObliquity =
        (9.2 * CosD(o) + 0.57 * CosD(2 * l) + 0.1 * CosD(2 * m) - 0.09 * CosD(2 * o)) / 3600;
}

double NutationInLongitude(double t) {
    double inLongitude = 0;
    double inObliquity = 0;
    Nutation(MillenniaOf(t) * 10, inLongitude, inObliquity);
    return inLongitude;
}

double AddedToSun(const RouteMoment& moment) {
    constexpr double kAberration = 20.5 / 3600;
    return moment.frame == kGeocentric ? moment.nutation - kAberration : 0;
}

double TimeOf(const RouteMoment& moment, std::size_t index) {
    return index == 0 ? moment.t : moment.t + kMinute;
}

void ClearPoint(CalcChart& chart, std::size_t n) {
    chart.Lon[n] = -1;
    chart.Lat[n] = chart.Dist[n] = chart.LonSpeed[n] = chart.LatSpeed[n] = 0;
    chart.Retro[n] = kFalse;
}

void StoreBody(CalcChart& chart, std::size_t n, const RouteMoment& moment,
               const std::array<BodyPosition, 2>& body) {
    ClearPoint(chart, n);
    const auto& [now, next] = body;
    const bool geocentric = moment.frame == kGeocentric;
    if (!now.given || !next.given || (geocentric && !moment.sunGiven)) return;

    const std::size_t seenFrom = geocentric ? 1 : 2;
    chart.Lat[n] = now.latitude[seenFrom];
    chart.Dist[n] = now.distance[seenFrom];
    chart.LonSpeed[n] = LongitudeSpeed(now.longitude[seenFrom], next.longitude[seenFrom]);
    chart.LatSpeed[n] = (next.latitude[seenFrom] - now.latitude[seenFrom]) * kMinutes;
    SetMotion(chart, n);
    chart.Lon[n] = now.longitude[seenFrom];
    if (!moment.apparent) return;
    // The light shows the body where it was, and the Earth's own motion is in the speed.
    const double way = chart.LonSpeed[n] * chart.Dist[n] * kLightDays;
    chart.Lon[n] = Modulo(moment.nutation - way + chart.Lon[n], 360);
}

void CalcAsteroids(CalcChart& chart, std::int16_t first, std::int16_t last,
                   const RouteMoment& moment, std::string_view dataPath) {
    first = std::max(first, point::kChiron);
    last = std::min(last, point::kAstraea);
    if (!(moment.t >= ephemeris_table::kFirstT && moment.t <= ephemeris_table::kLastT)) {
        if (first == point::kChiron) chart.Lon[point::kChiron] = 0;
        return;
    }
    std::array<TablePosition, 8> bodies;
    const bool given = ReadTables(TableSeries::Asteroids, dataPath, moment.t, bodies);
    for (std::int16_t n = first; n <= last; ++n) {
        const auto index = static_cast<std::size_t>(n);
        if (given) {
            const auto body = static_cast<std::size_t>(n) - point::kChiron + 1;
            StoreBody(chart, index, moment, FromTable(bodies[body], moment));
        } else {
            ClearPoint(chart, index);
        }
    }
}

void CalcVulcan(CalcChart& chart, const RouteMoment& moment) {
    std::array<BodyPosition, 2> positions;
    for (std::size_t i = 0; i < 2; ++i) {
        positions[i] = CalcVul(TimeOf(moment, i), moment.offset, moment.sun[i].longitude,
                               moment.sun[i].distance);
    }
    StoreBody(chart, point::kVulcan, moment, positions);
}

void VulcanByMercury(CalcChart& chart, std::int16_t frame) {
    constexpr double kMost = 3;
    const double mercury = chart.Lon[point::kMercury];
    const double sun = chart.Lon[point::kSun];
    if (mercury < 0 || (frame != 2 && sun < 0)) return ClearPoint(chart, point::kVulcan);

    chart.LonSpeed[point::kVulcan] = chart.LonSpeed[point::kSun];
    chart.LatSpeed[point::kVulcan] = chart.LatSpeed[point::kSun];
    chart.Retro[point::kVulcan] = chart.Retro[point::kSun];

    if (frame == 2) {
        chart.Lon[point::kVulcan] = mercury;
        chart.Lat[point::kVulcan] = chart.Lat[point::kMercury];
        return;
    }
    const double apart = Modulo(mercury - sun + 180, 360) - 180;
    const bool near = std::abs(apart) < kMost;
    const std::size_t source = near ? point::kSun : point::kMercury;
    const double back = near ? 0 : std::copysign(kMost, apart);
    chart.Lon[point::kVulcan] = Modulo(chart.Lon[source] - back, 360);
    chart.Lat[point::kVulcan] = chart.Lat[source];
}

void CalcPlanetsStandard(std::int16_t slot, std::int16_t first, std::int16_t last, double t,
                         double offset, double accuracy, std::int16_t frame, Flag useTables,
                         std::string_view dataPath, Flag trueNode, Flag weston) {
    CalcChart& chart = calcChart[static_cast<std::size_t>(slot)];
    chart.Frame = frame;
    chart.TrueNodeFlag = trueNode;
    RouteMoment moment;
    moment.t = t;
    moment.offset = offset;
    moment.frame = frame;
    moment.apparent = frame == kGeocentric;

    if (first <= point::kMoon) CalcMoon(chart, moment);
    CalcSunAndEarth(chart, moment, accuracy);
    if (last <= point::kSun) return;

    std::int16_t n = std::max(first, point::kVulcan);
    while (n <= last) {
        const auto index = static_cast<std::size_t>(n);
        std::int16_t next = static_cast<std::int16_t>(n + 1);
        if (n == point::kVulcan) {
            CalcVulcan(chart, moment);
        } else if (n >= point::kJupiter && n <= point::kPluto && useTables != 0) {
            // Where the tables don't serve, the theories do, for the rest of this call.
            const bool served = CalcOuterPlanets(chart, n, last, moment, dataPath);
            next = served ? point::kChiron : n;
            useTables = served ? kTrue : kFalse;
        } else if (n >= point::kChiron && n <= point::kAstraea) {
            CalcAsteroids(chart, n, last, moment, dataPath);
            next = point::kNorthNode;
        } else if (n >= point::kNorthNode && n < point::kCupido) {
            if (n <= point::kSouthNode) CalcNodes(chart, moment, trueNode);
            next = point::kCupido;
        } else if (n == point::kBlackMoon) {
            CalcBlackMoon(chart, moment);
        } else {
            StoreBody(chart, index, moment, BodyOfPoint(n, moment, accuracy, dataPath));
        }
        n = next;
    }
    if (weston == 0) VulcanByMercury(chart, frame);
}

}  // namespace orvantis

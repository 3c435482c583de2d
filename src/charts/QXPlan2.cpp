// Sun, Moon, Pluto, nodes and apogee by the library's files, or by its theory where none serves;
// Vulcan and the hypothetical points on their own orbits.
#include "charts/QXPlan2.h"

#include <swephexp.h>

#include "text/numbers.h"

namespace orvantis {

namespace {

// A body of the library; the longitude with the offset, below 0 if there is none.
SphericalPlace PlaceOf(std::int32_t body, double t, double offset, std::int32_t flags,
                       EphemerisSource* source) {
    SphericalPlace place;
    if (!LibraryPlace(JulianDayOf(t), body, flags, source, place)) return {-1, 0, 0};
    place.longitude = Modulo(place.longitude + offset, 360);
    return place;
}

}  // namespace

void CalcSun(double t, double offset, double& longitude, double& distance,
             EphemerisSource* source) {
    const SphericalPlace sun = PlaceOf(SE_SUN, t, offset, 0, source);
    longitude = sun.longitude;
    distance = sun.distance;
}

void CalcMon(double t, double offset, double& longitude, double& latitude,
             EphemerisSource* source) {
    const SphericalPlace moon = PlaceOf(SE_MOON, t, offset, 0, source);
    longitude = moon.longitude;
    latitude = moon.latitude;
}

BodyPosition CalcVul(double t, double offset, double sunLongitude, double sunDistance) {
    SphericalPlace vulcan = SphericalFrom(VulcanPlace(t));
    vulcan.longitude = Modulo(vulcan.longitude + offset, 360);
    return SeenFromEarth(vulcan, sunLongitude, 0, sunDistance);
}

BodyPosition CalcPlu(double t, double offset, double sunLongitude, double sunDistance,
                     EphemerisSource* source) {
    const SphericalPlace pluto =
        PlaceOf(SE_PLUTO, t, offset, SEFLG_HELCTR | SEFLG_TRUEPOS | SEFLG_NONUT, source);
    if (pluto.longitude < 0) return {};
    return SeenFromEarth(pluto, sunLongitude, 0, sunDistance);
}

BodyPosition CalcTNP(std::int16_t body, double t, double offset, double sunLongitude,
                     double sunDistance) {
    if (body < 1 || body > 9) return {};
    const double jd = JulianDayOf(t);
    SphericalPlace point = SphericalFrom(InFrame(EclipticOfDate(jd), HypotheticalPlace(body, jd)));
    point.longitude = Modulo(point.longitude + offset, 360);
    return SeenFromEarth(point, sunLongitude, 0, sunDistance);
}

void CalcNod(double t, double offset, double& meanNode, double& trueNode, EphemerisSource* source) {
    meanNode = PlaceOf(SE_MEAN_NODE, t, offset, 0, nullptr).longitude;
    trueNode = PlaceOf(SE_TRUE_NODE, t, offset, 0, source).longitude;
}

void CalcLilith(double t, double offset, double& longitude) {
    longitude = PlaceOf(SE_MEAN_APOG, t, offset, 0, nullptr).longitude;
}

}  // namespace orvantis

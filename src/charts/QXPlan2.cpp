// Sun, Moon, Pluto, nodes and apogee by the library's theory without files; Vulcan and the
// hypothetical points on their own orbits.
#include "charts/QXPlan2.h"

#include <array>
#include <swephexp.h>

#include "text/numbers.h"

namespace orvantis {

namespace {

double JulianDayOf(double t) {
    return t * 36525 + 2415020;
}

// A body of the theory; the longitude with the offset, below 0 if there is none.
SphericalPlace PlaceOf(std::int32_t body, double t, double offset, std::int32_t flags) {
    std::array<double, 6> xx{};
    std::array<char, AS_MAXCH> ignored{};
    if (swe_calc(JulianDayOf(t), body, SEFLG_MOSEPH | flags, xx.data(), ignored.data()) == ERR) {
        return {-1, 0, 0};
    }
    return {Modulo(xx[0] + offset, 360), xx[1], xx[2]};
}

}  // namespace

void CalcSun(double t, double offset, double& longitude, double& distance) {
    const SphericalPlace sun = PlaceOf(SE_SUN, t, offset, 0);
    longitude = sun.longitude;
    distance = sun.distance;
}

void CalcMon(double t, double offset, double& longitude, double& latitude) {
    const SphericalPlace moon = PlaceOf(SE_MOON, t, offset, 0);
    longitude = moon.longitude;
    latitude = moon.latitude;
}

BodyPosition CalcVul(double t, double offset, double sunLongitude, double sunDistance) {
    SphericalPlace vulcan = SphericalFrom(VulcanPlace(t));
    vulcan.longitude = Modulo(vulcan.longitude + offset, 360);
    return SeenFromEarth(vulcan, sunLongitude, 0, sunDistance);
}

BodyPosition CalcPlu(double t, double offset, double sunLongitude, double sunDistance) {
    const SphericalPlace pluto =
        PlaceOf(SE_PLUTO, t, offset, SEFLG_HELCTR | SEFLG_TRUEPOS | SEFLG_NONUT);
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

void CalcNod(double t, double offset, double& meanNode, double& trueNode) {
    meanNode = PlaceOf(SE_MEAN_NODE, t, offset, 0).longitude;
    trueNode = PlaceOf(SE_TRUE_NODE, t, offset, 0).longitude;
}

void CalcLilith(double t, double offset, double& longitude) {
    longitude = PlaceOf(SE_MEAN_APOG, t, offset, 0).longitude;
}

}  // namespace orvantis

// The planets by the library's theory without files.
#include "charts/QXPlan1.h"

#include <swephexp.h>

#include "text/numbers.h"

namespace orvantis {

BodyPosition SeenFromEarth(const SphericalPlace& heliocentric, double sunLongitude,
                           double sunLatitude, double sunDistance) {
    const Vector body = RectangularPlace(heliocentric);
    const Vector sun = RectangularPlace({sunLongitude, sunLatitude, sunDistance});
    const SphericalPlace seen =
        SphericalFrom({body[0] + sun[0], body[1] + sun[1], body[2] + sun[2]});
    return {{0, seen.longitude, heliocentric.longitude},
            {0, seen.latitude, heliocentric.latitude},
            seen.distance,
            true};
}

BodyPosition CalcPlanetVSOP(std::int16_t body, double t, double offset, double /*accuracy*/,
                            double sunLongitude, double sunLatitude, double sunDistance) {
    constexpr std::int16_t kEarthBody = 3;
    static constexpr std::array<std::int32_t, 9> kBodies = {
        -1, SE_MERCURY, SE_VENUS, SE_EARTH, SE_MARS, SE_JUPITER, SE_SATURN, SE_URANUS, SE_NEPTUNE};
    if (body < 1 || body >= static_cast<std::int16_t>(kBodies.size())) return {};

    constexpr std::int32_t kGeometric = SEFLG_MOSEPH | SEFLG_HELCTR | SEFLG_TRUEPOS | SEFLG_NONUT;
    std::array<double, 6> xx{};
    std::array<char, AS_MAXCH> ignored{};
    if (swe_calc(2451545.0 + t * 365250, kBodies[static_cast<std::size_t>(body)], kGeometric,
                 xx.data(), ignored.data()) == ERR) {
        return {};
    }
    const double longitude = Modulo(xx[0] + offset, 360);
    if (body == kEarthBody) return {{0, longitude, longitude}, {0, xx[1], xx[1]}, xx[2], true};
    return SeenFromEarth({longitude, xx[1], xx[2]}, sunLongitude, sunLatitude, sunDistance);
}

}  // namespace orvantis

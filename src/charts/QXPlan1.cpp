// The planets by the library's files, or by its theory where none serves.
#include "charts/QXPlan1.h"

#include <swephexp.h>

#include "text/numbers.h"

namespace orvantis {

bool LibraryPlace(double jd, std::int32_t body, std::int32_t flags, EphemerisSource* source,
                  SphericalPlace& place) {
    const bool theory = source != nullptr && *source == EphemerisSource::Theory;
    std::array<double, 6> xx{};
    std::array<char, AS_MAXCH> ignored{};
    const std::int32_t answered = swe_calc(jd, body, flags | (theory ? SEFLG_MOSEPH : SEFLG_SWIEPH),
                                           xx.data(), ignored.data());
    if (answered == ERR) return false;
    if (source != nullptr && (answered & SEFLG_MOSEPH) != 0) *source = EphemerisSource::Theory;
    place = {xx[0], xx[1], xx[2]};
    return true;
}

BodyPosition SeenFromEarth(const SphericalPlace& heliocentric, double sunLongitude,
                           double sunLatitude, double sunDistance) {
    const Vector body = RectangularPlace(heliocentric);
    const Vector sun = RectangularPlace({sunLongitude, sunLatitude, sunDistance});
    const SphericalPlace seen =
        SphericalFrom({body[0] + sun[0], body[1] + sun[1], body[2] + sun[2]});
    return {{0, seen.longitude, heliocentric.longitude},
            {0, seen.latitude, heliocentric.latitude},
            {0, seen.distance, heliocentric.distance},
            true};
}

BodyPosition CalcPlanetVSOP(std::int16_t body, double t, double offset, double /*accuracy*/,
                            double sunLongitude, double sunLatitude, double sunDistance,
                            EphemerisSource* source) {
    constexpr std::int16_t kEarthBody = 3;
    static constexpr std::array<std::int32_t, 9> kBodies = {
        -1, SE_MERCURY, SE_VENUS, SE_EARTH, SE_MARS, SE_JUPITER, SE_SATURN, SE_URANUS, SE_NEPTUNE};
    if (body < 1 || body >= static_cast<std::int16_t>(kBodies.size())) return {};

    constexpr std::int32_t kGeometric = SEFLG_HELCTR | SEFLG_TRUEPOS | SEFLG_NONUT;
    SphericalPlace place;
    if (!LibraryPlace(kJ2000 + t * 365250, kBodies[static_cast<std::size_t>(body)], kGeometric,
                      source, place)) {
        return {};
    }
    place.longitude = Modulo(place.longitude + offset, 360);
    if (body == kEarthBody) {
        return {{0, place.longitude, place.longitude},
                {0, place.latitude, place.latitude},
                {0, place.distance, place.distance},
                true};
    }
    return SeenFromEarth(place, sunLongitude, sunLatitude, sunDistance);
}

}  // namespace orvantis

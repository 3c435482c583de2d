// House cusps of the nine systems, by the formulae of the systems' authors as they are given in
// R.W. Holden, The Elements of House Division, and of Polich and Page for the topocentric one.
#include <array>
#include <cmath>

#include "charts/CALCCHRT.h"
#include "session/session_state.h"
#include "text/numbers.h"

namespace orvantis {

namespace {

constexpr std::size_t kCusps = 12;

// What every system works from, degrees. Cusps are first worked out tropically.
struct Sphere {
    double ramc = 0;
    double obliquity = 0;
    double latitude = 0;
    double offset = 0;
    double ascendant = 0;  // tropical
    double midheaven = 0;  // tropical
};

// The cusps of houses 4 to 9 stand opposite those of 10 to 3.
void FillOpposites(CalcChart& chart) {
    for (std::size_t i = 4; i <= 9; ++i) {
        const std::size_t from = i <= 6 ? i + 6 : i - 6;
        chart.Cusp[i] = Modulo(chart.Cusp[from] + 180, 360);
    }
}

void AddOffset(CalcChart& chart, double offset) {
    for (std::size_t i = 1; i <= kCusps; ++i) chart.Cusp[i] = Modulo(chart.Cusp[i] + offset, 360);
}

// Longitude of a cusp whose tangent is y / x, with the quadrant set by y.
double CuspLongitude(double x, double y) {
    double angle = ArcTan2(x, y);
    if (angle < 0) angle += PI;
    if (y < 0) angle += PI;
    return RadToDeg(angle);
}

// The half of the circle that belongs to a right ascension.
double HalfOfSine(double degrees, double sine) {
    if (degrees < 0) degrees += 180;
    if (sine < 0) degrees += 180;
    return degrees;
}

// Koch: thirds of the diurnal semi-arc of the Midheaven's degree, as ascendants.
void CuspsKoch(const Sphere& sphere, CalcChart& chart) {
    chart.Cusp[1] = sphere.ascendant;
    chart.Cusp[10] = sphere.midheaven;
    const double sinE = SinD(sphere.obliquity);
    const double cosE = CosD(sphere.obliquity);
    const double tanP = TanD(sphere.latitude);
    const double declination = ArcSin(SinD(chart.Cusp[10]) * sinE);
    double cosine = -tanP * std::tan(declination);
    const double third = ArcCos(cosine) / 3;

    struct Step {
        int thirds;
        std::size_t cusp;
    };
    static constexpr std::array<Step, 4> kSteps = {{{1, 2}, {2, 3}, {-2, 11}, {-1, 12}}};
    for (const Step& step : kSteps) {
        const double h = sphere.ramc * DegToRad + third * step.thirds;
        chart.Cusp[step.cusp] = RadToDeg(ArcTan2(-(tanP * sinE + std::sin(h) * cosE), std::cos(h)));
    }
    FillOpposites(chart);
    AddOffset(chart, sphere.offset);
}

enum class SemiArc { Upper, Lower };

// Placidus: the degree that has gone through a share (1 / factor) of its own semi-arc. Ten passes
// of the usual iteration, without a test of convergence.
double SemiArcCusp(const Sphere& sphere, double start, double factor, SemiArc kind) {
    double a = sphere.ramc + start;
    const double s = kind == SemiArc::Lower ? 1 : -1;
    for (int pass = 0; pass < 10; ++pass) {
        double c = s * SinD(a) * TanD(sphere.obliquity) * TanD(sphere.latitude);
        double q = ArcCos(c);
        if (q < 0) q += PI;
        const double share = RadToDeg(q / factor);
        a = kind == SemiArc::Lower ? sphere.ramc + 180 - share : sphere.ramc + share;
    }
    return HalfOfSine(RadToDeg(ArcTan2(CosD(sphere.obliquity), TanD(a))), SinD(a));
}

void CuspsPlacidus(const Sphere& sphere, CalcChart& chart) {
    chart.Cusp[4] = Modulo(sphere.midheaven + 180, 360);
    chart.Cusp[1] = sphere.ascendant;
    chart.Cusp[5] = Modulo(SemiArcCusp(sphere, 30, 3, SemiArc::Upper) + 180, 360);
    chart.Cusp[6] = Modulo(SemiArcCusp(sphere, 60, 1.5, SemiArc::Upper) + 180, 360);
    chart.Cusp[2] = SemiArcCusp(sphere, 120, 1.5, SemiArc::Lower);
    chart.Cusp[3] = SemiArcCusp(sphere, 150, 3, SemiArc::Lower);
    for (std::size_t i = 1; i <= 6; ++i) {
        chart.Cusp[i] = Modulo(chart.Cusp[i] + sphere.offset, 360);
        chart.Cusp[i + 6] = Modulo(chart.Cusp[i] + 180, 360);
    }
}

// Campanus: equal parts of the prime vertical, brought to the equator.
void CuspsCampanus(const Sphere& sphere, CalcChart& chart) {
    for (std::size_t i = 1; i <= kCusps; ++i) {
        // The millionth keeps the tangent finite.
        const double h = 30.0 * static_cast<double>(i) + 60.000001;
        double a = std::atan(CosD(sphere.latitude) * TanD(h));
        if (a < 0) a += PI;
        if (SinD(h) < 0) a += PI;
        const double turned = sphere.ramc * DegToRad + a;
        const double y = std::sin(turned);
        const double x = std::cos(turned) * CosD(sphere.obliquity) -
                         std::sin(a) * TanD(sphere.latitude) * SinD(sphere.obliquity);
        chart.Cusp[i] = CuspLongitude(x, y);
    }
    AddOffset(chart, sphere.offset);
}

// Equal parts of the equator, brought to the ecliptic in three ways: by circles through the poles
// of the equator (Meridian), of the ecliptic (Morinus), or through the north and south points of
// the horizon (Regiomontanus).
void CuspsByEquator(const Sphere& sphere, std::int16_t houseSystem, CalcChart& chart) {
    const double cosE = CosD(sphere.obliquity);
    for (std::size_t i = 1; i <= kCusps; ++i) {
        const double h = 30.0 * static_cast<double>(i) + 60;
        double y = SinD(sphere.ramc + h);
        double x = CosD(sphere.ramc + h);
        if (houseSystem == house_system::kMorinus) {
            y *= cosE;
        } else {
            x *= cosE;
        }
        if (houseSystem == house_system::kRegiomontanus) {
            x -= SinD(h) * TanD(sphere.latitude) * SinD(sphere.obliquity);
        }
        chart.Cusp[i] = CuspLongitude(x, y);
    }
    AddOffset(chart, sphere.offset);
}

// The degree of the ecliptic that rises with a right ascension under a pole.
double PoleCusp(const Sphere& sphere, double rightAscension, double pole) {
    const double a = rightAscension;
    const double m = RadToDeg(ArcTan2(CosD(a), TanD(pole)));
    const double c = RadToDeg(ArcTan2(CosD(m + sphere.obliquity), CosD(m) * TanD(a)));
    return HalfOfSine(c, SinD(a));
}

void CuspsTopocentric(const Sphere& sphere, CalcChart& chart) {
    const double tanP = TanD(sphere.latitude);
    const double pole1 = RadToDeg(std::atan(tanP / 3));
    const double pole2 = RadToDeg(std::atan(2 * tanP / 3));
    chart.Cusp[10] = sphere.midheaven;
    chart.Cusp[11] = PoleCusp(sphere, sphere.ramc + 30, pole1);
    chart.Cusp[12] = PoleCusp(sphere, sphere.ramc + 60, pole2);
    chart.Cusp[1] = PoleCusp(sphere, sphere.ramc + 90, sphere.latitude);
    chart.Cusp[2] = PoleCusp(sphere, sphere.ramc + 120, pole2);
    chart.Cusp[3] = PoleCusp(sphere, sphere.ramc + 150, pole1);
    FillOpposites(chart);
    AddOffset(chart, sphere.offset);
}

// Porphyry: thirds of the two quadrants of the ecliptic.
void CuspsPorphyry(const Sphere& sphere, CalcChart& chart) {
    const double upper = Modulo(sphere.ascendant - sphere.midheaven, 360) / 3;
    const double lower = Modulo(sphere.midheaven + 180 - sphere.ascendant, 360) / 3;
    chart.Cusp[10] = sphere.midheaven;
    chart.Cusp[11] = sphere.midheaven + upper;
    chart.Cusp[12] = sphere.midheaven + 2 * upper;
    chart.Cusp[1] = sphere.ascendant;
    chart.Cusp[2] = sphere.ascendant + lower;
    chart.Cusp[3] = sphere.ascendant + 2 * lower;
    FillOpposites(chart);
    AddOffset(chart, sphere.offset);
}

// Thirty degrees each from the first cusp, which is in the chart's zodiac.
void CuspsEqual(double first, CalcChart& chart) {
    for (std::size_t i = 1; i <= kCusps; ++i) {
        chart.Cusp[i] = Modulo(30.0 * static_cast<double>(i - 1) + first, 360);
    }
}

void SetFlags(CalcChart& chart, Flag ascendant, Flag midheaven) {
    chart.Cusp1AtAscendant = ascendant;
    chart.Cusp10AtMidheaven = midheaven;
}

// Sets the cusps and the flags of the angles by a known system.
void CuspsOfSystem(const Sphere& sphere, std::int16_t houseSystem, CalcChart& chart) {
    using namespace house_system;
    SetFlags(chart, kTrue, kTrue);
    switch (houseSystem) {
        case 0:
            // Charts of old files: twelve signs from 0 Aries; the flags put the true angles on
            // cusps 1 and 10.
            CuspsEqual(0, chart);
            break;
        case kCampanus:
            CuspsCampanus(sphere, chart);
            break;
        case kKoch:
            CuspsKoch(sphere, chart);
            break;
        case kMeridian:
            CuspsByEquator(sphere, houseSystem, chart);
            SetFlags(chart, kFalse, kTrue);
            break;
        case kMorinus:
            CuspsByEquator(sphere, houseSystem, chart);
            SetFlags(chart, kFalse, kFalse);
            break;
        case kPlacidus:
            CuspsPlacidus(sphere, chart);
            break;
        case kPorphyry:
            CuspsPorphyry(sphere, chart);
            break;
        case kRegiomontanus:
            CuspsByEquator(sphere, houseSystem, chart);
            break;
        case kTopocentric:
            CuspsTopocentric(sphere, chart);
            break;
        case kEqual:
            // Cusp 10 stays 90 degrees before the Ascendant: the flag of the Midheaven, which
            // would put it there, is this system's own, and isn't set, whatever the slot held.
            CuspsEqual(chart.Lon[point::kAscendant], chart);
            SetFlags(chart, kTrue, kFalse);
            break;
        default:
            break;
    }
}

bool CuspsAreNumbers(const CalcChart& chart) {
    for (std::size_t i = 1; i <= kCusps; ++i) {
        if (!std::isfinite(chart.Cusp[i])) return false;
    }
    return true;
}

}  // namespace

void CalcHouses(std::int16_t slot, double ramc, double obliquity, double latitude, double offset,
                std::int16_t houseSystem) {
    using namespace house_system;
    CalcChart& chart = calcChart[static_cast<std::size_t>(slot)];
    if (houseSystem < 0 || houseSystem > kEqual) {
        if (session.shell != nullptr) {
            session.shell->MessageBox("Unrecognised house system", "Sub CalcHouses", BoxButtons::Ok,
                                      BoxIcon::Exclamation);
        }
        return;
    }
    // Within the polar circles some degrees neither rise nor set.
    const bool polar = std::abs(latitude) + std::abs(obliquity) >= 89.99;
    if (polar && (houseSystem == kKoch || houseSystem == kPlacidus)) houseSystem = kEqual;

    const Sphere sphere = {ramc,
                           obliquity,
                           latitude,
                           offset,
                           Modulo(chart.Lon[point::kAscendant] - offset, 360),
                           Modulo(chart.Lon[point::kMidheaven] - offset, 360)};
    CuspsOfSystem(sphere, houseSystem, chart);
    if (chart.Cusp1AtAscendant != 0) chart.Cusp[1] = chart.Lon[point::kAscendant];
    if (chart.Cusp10AtMidheaven != 0) chart.Cusp[10] = chart.Lon[point::kMidheaven];

    // A failure of the arithmetic leaves something that is no number: Equal serves instead, so
    // that every chart has cusps.
    if (CuspsAreNumbers(chart)) return;
    if (houseSystem == kEqual) {
        RaiseRunTimeError(error::kOverflow);
        return;
    }
    CalcHouses(slot, ramc, obliquity, latitude, offset, kEqual);
}

}  // namespace orvantis

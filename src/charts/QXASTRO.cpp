// Time scales and the obliquity, by Swiss Ephemeris, and the driver of the positions.
#include "charts/QXASTRO.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <swephexp.h>

#include "charts/CALCCHRT.h"
#include "charts/SwissEph.h"
#include "text/numbers.h"
#include "text/rotation.h"

namespace orvantis {

CalcPlanetsRoute calcPlanetsStandard = nullptr;

namespace {

double JulianDayOf(double t) {
    return t * 36525 + 2415020;
}

}  // namespace

void GetDeltaT(double t, double& hours) {
    std::array<char, AS_MAXCH> ignored{};
    hours = swe_deltat_ex(JulianDayOf(t), SEFLG_SWIEPH, ignored.data()) * 24;
}

void GetObliquity(double t, double& degrees) {
    std::array<double, 6> obliquityAndNutation{};
    std::array<char, AS_MAXCH> ignored{};
    swe_calc(JulianDayOf(t), SE_ECL_NUT, 0, obliquityAndNutation.data(), ignored.data());
    degrees = obliquityAndNutation[0];
}

void GetJDxhUT(std::int16_t day, std::int16_t month, std::int16_t year, double hours, double& jd) {
    jd = DateToJD(day, month, year) + hours / 24;
}

void GetST(double jdUT, double& siderealTime) {
    siderealTime = swe_sidtime(jdUT);
}

void GetRAMC(double longitudeWest, double siderealTime, double& ramc) {
    ramc = Modulo(siderealTime * 15 - longitudeWest, 360);
}

void ConvertCoords(double longitude, double latitude, double sinTilt, double cosTilt, double& a,
                   double& d) {
    RotateAboutX(longitude, latitude, sinTilt, cosTilt, a, d);
}

void CalcPlanets(std::int16_t slot, std::int16_t first, std::int16_t last, double t, double offset,
                 double accuracy, std::int16_t frame, Flag useTables, std::string_view dataPath,
                 Flag trueNode, Flag weston) {
    if (first == 0) first = 1;
    if (last == 0) last = point::kLastBody;
    last = std::min(last, point::kLastBody);
    if (swissState.enabled != 0) {
        CalcPlanetsSwiss(slot, first, last, t, offset, frame, trueNode, weston);
        if (swissState.enabled != 0) return;
    }
    if (calcPlanetsStandard != nullptr) {
        calcPlanetsStandard(slot, first, last, t, offset, accuracy, frame, useTables, dataPath,
                            trueNode, weston);
        return;
    }
    CalcChart& chart = calcChart[static_cast<std::size_t>(slot)];
    for (std::size_t n = 1; n <= point::kLastBody; ++n) {
        if (n < point::kAscendant || n > point::kPtFortune) chart.Lon[n] = -1;
    }
}

}  // namespace orvantis

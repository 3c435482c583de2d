// Time scales and the obliquity, by Swiss Ephemeris, and the driver of the positions.
#include "charts/QXASTRO.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <swephexp.h>

#include "charts/CALCCHRT.h"
#include "charts/SwissEph.h"
#include "text/dates.h"
#include "text/numbers.h"
#include "text/rotation.h"

namespace orvantis {

CalcPlanetsRoute calcPlanetsStandard = nullptr;

namespace {

constexpr double kFirstGregorianJD = 2299160.5;  // 15 October 1582, 0:00

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

void JDToDate(double jd, float& day, std::int32_t& month, std::int32_t& year) {
    day = 0;
    month = 0;
    year = 0;
    if (!(jd >= kFirstJD && jd <= kLastJD)) {
        RaiseRunTimeError(error::kOverflow);
        return;
    }
    int wholeYear = 0;
    int wholeMonth = 0;
    int wholeDay = 0;
    double hours = 0;
    const int calendar = jd >= kFirstGregorianJD ? SE_GREG_CAL : SE_JUL_CAL;
    swe_revjul(jd, calendar, &wholeYear, &wholeMonth, &wholeDay, &hours);
    year = wholeYear;
    month = wholeMonth;
    // The last tenth of a second of a day would round up to the next day in 32 bits.
    const auto dayStart = static_cast<float>(wholeDay);
    day = std::min(static_cast<float>(wholeDay + hours / 24), std::nextafter(dayStart + 1, 0.0F));
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

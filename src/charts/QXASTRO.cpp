// Time scales and the obliquity, by Swiss Ephemeris, and the driver of the positions.
#include "charts/QXASTRO.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>
#include <swephexp.h>

#include "charts/CALCCHRT.h"
#include "charts/SwissEph.h"
#include "charts/standard_route.h"
#include "text/numbers.h"
#include "text/rotation.h"
#include "text/run_time_error.h"

namespace orvantis {

namespace {

// Points 1 to `last` as they were.
void RestorePoints(CalcChart& chart, const CalcChart& kept, std::int16_t last) {
    for (std::size_t n = 1; n <= static_cast<std::size_t>(last); ++n) {
        chart.Lon[n] = kept.Lon[n];
        chart.Lat[n] = kept.Lat[n];
        chart.Dist[n] = kept.Dist[n];
        chart.LonSpeed[n] = kept.LonSpeed[n];
        chart.LatSpeed[n] = kept.LatSpeed[n];
        chart.Retro[n] = kept.Retro[n];
    }
}

// A position that is no number is a fault of the arithmetic, which whoever calculates the chart has
// to tell; the point isn't calculated.
void CheckPoints(CalcChart& chart, std::int16_t first, std::int16_t last) {
    for (std::int16_t n = 1; n <= last; ++n) {
        const bool own = n <= point::kSun || n >= first;
        const bool chartPoint = n >= point::kAscendant && n <= point::kPtFortune;
        const auto index = static_cast<std::size_t>(n);
        if (!own || chartPoint || std::isfinite(chart.Lon[index])) continue;
        ClearPoint(chart, index);
        RaiseRunTimeError(error::kOverflow);
    }
}

// By the Swiss route, and from a point that fails on by the other.
void CalcPlanetsSwissFirst(std::int16_t slot, std::int16_t first, std::int16_t last, double t,
                           double offset, double accuracy, std::int16_t frame, Flag useTables,
                           std::string_view dataPath, Flag trueNode, Flag weston) {
    const std::int16_t failed =
        CalcPlanetsSwiss(slot, first, last, t, offset, frame, dataPath, trueNode, weston);
    if (failed == 0) return;

    // After a failure the standard route serves, for the points that are left of this call too. The
    // point that failed isn't calculated, nor is the one opposite.
    CalcChart& chart = calcChart[static_cast<std::size_t>(slot)];
    const CalcChart kept = chart;
    first = std::max(first, static_cast<std::int16_t>(failed + 1));
    CalcPlanetsStandard(slot, first, last, t, offset, accuracy, frame, useTables, dataPath,
                        trueNode, kTrue);
    RestorePoints(chart, kept, failed);
    if (failed == point::kNorthNode) ClearPoint(chart, point::kSouthNode);
    if (last > point::kSun && weston == 0) VulcanByMercury(chart, frame);
}

}  // namespace

void GetDeltaT(double t, double& hours) {
    std::array<char, AS_MAXCH> ignored{};
    hours = swe_deltat_ex(JulianDayOf(t), SEFLG_SWIEPH, ignored.data()) * 24;
}

void GetObliquity(double t, double& degrees) {
    // The chart's lines ask again for what its calculation has asked for.
    static double lastT = std::numeric_limits<double>::quiet_NaN();
    static double last = 0;
    if (t != lastT) {
        // The library keeps the nutation of a moment, but with the one for the speeds only if it is
        // asked for: the positions that follow by its route want both.
        const std::int32_t flags = swissState.enabled != 0 ? SEFLG_SPEED : 0;
        std::array<double, 6> obliquityAndNutation{};
        std::array<char, AS_MAXCH> ignored{};
        swe_calc(JulianDayOf(t), SE_ECL_NUT, flags, obliquityAndNutation.data(), ignored.data());
        last = obliquityAndNutation[0];
        lastT = t;
    }
    degrees = last;
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
    if (swissState.enabled == 0) {
        CalcPlanetsStandard(slot, first, last, t, offset, accuracy, frame, useTables, dataPath,
                            trueNode, weston);
    } else {
        CalcPlanetsSwissFirst(slot, first, last, t, offset, accuracy, frame, useTables, dataPath,
                              trueNode, weston);
    }
    CheckPoints(calcChart[static_cast<std::size_t>(slot)], first, last);
}

}  // namespace orvantis

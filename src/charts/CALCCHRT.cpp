// Chart calculation: time scales, zodiac, positions, angles and equatorial coordinates.
#include "charts/CALCCHRT.h"

#include <algorithm>
#include <cmath>

#include "charts/QXASTRO.h"
#include "charts/standard_route.h"
#include "session/session_state.h"
#include "session/settings.h"
#include "text/coordinates.h"
#include "text/dates.h"
#include "text/numbers.h"
#include "text/strings.h"

namespace orvantis {

std::array<CalcChart, 3> calcChart;
ChartNow chartNow;

namespace {

constexpr std::int16_t kGeocentric = 1;

// A tropical longitude in the zodiac of the offset, 0 to 360.
double InZodiac(double degrees, double offset) {
    return Modulo(degrees + offset, 360);
}

std::string FixedText(std::string_view text, std::size_t width) {
    return std::string(Trim(text).substr(0, width));
}

// Degrees, minutes and seconds, negated for the side that counts negative.
double SignedDegrees(std::uint8_t degrees, std::uint8_t minutes, std::uint8_t seconds,
                     bool positive) {
    const double value = degrees + minutes / 60.0 + seconds / 3600.0;
    return positive ? value : -value;
}

void CopyTexts(const Format1Record& record, CalcChart& chart) {
    chart.Name = FixedText(record.name, 30);
    chart.Name2.clear();
    chart.ZoneText = FixedText(record.zoneName, 5);
    chart.Place = FixedText(record.place, 20);
    chart.Country = FixedText(record.country, 20);
    chart.DateText = FixedText(FormatDateText(record.day, record.month, record.year), 14);
    chart.TimeText = FixedText(FormatTimeText(record.hour, record.minute, record.second), 12);
    chart.LatText = FixedText(CoordinateText(record.latDegrees, record.latNorth != 0 ? 'N' : 'S',
                                             record.latMinutes, record.latSeconds, 2),
                              8);
    chart.LongText = FixedText(CoordinateText(record.longDegrees, record.longWest != 0 ? 'W' : 'E',
                                              record.longMinutes, record.longSeconds, 3),
                               9);
}

void CopyCodes(const Format1Record& record, CalcChart& chart) {
    chart.ChartType = record.chartType;
    chart.ChartSubType = record.chartSubType;
    chart.ChartFlags = record.chartFlags;
    chart.HouseCode = record.houseCode;
    chart.AyanamsaCode = record.ayanamsaCode;
    chart.RecordForm = record.recordForm;
    // Records of old files without a zodiac have 0. Codes of no zodiac stay, and have no base.
    chart.Zodiac = record.ayanamsaCode == 0 ? options.ayanamsa : record.ayanamsaCode;
    chart.Frame = kGeocentric;
    chart.TrueNodeFlag = options.trueNode;
    chart.HouseSystem = record.houseCode;
    chart.ZoneHours = record.zoneHours;
}

// Display copies for the wheel. The motion flag turns into a mark of points that aren't calculated;
// from here on the motion is read from the speed.
void FinishPoints(CalcChart& chart) {
    for (std::size_t n = 1; n <= point::kLastBody; ++n) {
        chart.Retro[n] = chart.Lon[n] < 0 ? kTrue : kFalse;
        chart.SortLon[n] = chart.Lon[n];
        chart.SortOrder[n] = static_cast<std::int16_t>(n);
        chart.Shown[n] = 1;
    }
}

// Angles, equatorial values and houses from the values of the moment and the place.
void CalcFromAngles(std::int16_t slot) {
    const ChartNow& now = chartNow;
    const double latitude = now.PlaceLat == 0 ? now.EquatorLat : now.PlaceLat;
    CalcAngles(slot, now.RAMCNow, now.ObliquityNow, latitude, now.ZodiacOffsetNow, kFalse);
    CalcEquatorial(slot, now.ObliquityNow, now.ZodiacOffsetNow);
    CalcHouses(slot, now.RAMCNow, now.ObliquityNow, latitude, now.ZodiacOffsetNow,
               calcChart[static_cast<std::size_t>(slot)].HouseSystem);
}

// Obliquity and the right ascension of the Midheaven of the moment and place.
void CalcSphere(double t) {
    GetObliquity(t, chartNow.ObliquityNow);
    double siderealTime = 0;
    GetST(chartNow.JulianDayUT, siderealTime);
    GetRAMC(chartNow.PlaceLongW, siderealTime, chartNow.RAMCNow);
}

// A day that no date has is a number that doesn't fit.
void CheckDay(double jd) {
    if (!(jd >= kFirstJD && jd <= kLastJD)) RaiseRunTimeError(error::kOverflow);
}

// Time scales, zodiac and sphere of a slot at `hours` of Universal Time, which is the Julian day
// `jd`; the place and the slot's zodiac stand already.
void CalcMoment(std::int16_t slot, double hours, double jd) {
    CalcChart& chart = calcChart[static_cast<std::size_t>(slot)];
    chart.TimeUT = hours;
    chartNow.JulianDayUT = jd;
    GetDeltaT(JulianCenturies(jd), chartNow.DeltaT);
    chart.JulianDayET = jd + chartNow.DeltaT / 24;
    const double t = JulianCenturies(chart.JulianDayET);
    chartNow.ZodiacOffsetNow = Ayanamsa(chart.Zodiac, t);
    CalcSphere(t);
}

// The whole-chart values of a slot's moment, at the place that stands.
void CalcSphereOfSlot(const CalcChart& chart) {
    const double t = JulianCenturies(chart.JulianDayET);
    GetDeltaT(t, chartNow.DeltaT);
    chartNow.JulianDayUT = chart.JulianDayET - chartNow.DeltaT / 24;
    chartNow.ZodiacOffsetNow = Ayanamsa(chart.Zodiac, t);
    CalcSphere(t);
}

// Positions, angles and houses of a slot whose moment stands, as do its frame and house system.
void CalcPositions(std::int16_t slot) {
    CalcChart& chart = calcChart[static_cast<std::size_t>(slot)];
    // What a table doesn't reach keeps what it held: that must not be a place of the chart before.
    for (std::size_t n = 1; n <= point::kLastBody; ++n) ClearPoint(chart, n);
    CalcPlanets(slot, 0, 0, JulianCenturies(chart.JulianDayET), chartNow.ZodiacOffsetNow, 0,
                chart.Frame, kTrue, session.SystemDataPath, options.trueNode, options.vulcWeston);
    CalcFromAngles(slot);
    FinishPoints(chart);
}

// Shows the pending run-time error, if any, and tells whether there was one.
Flag ReportFailure() {
    RunTimeError failure;
    if (!TakeRunTimeError(failure)) return kFalse;
    if (session.shell != nullptr) {
        session.shell->MessageBox("FileChartToCalcChart Error: " + std::to_string(failure.number),
                                  "Orvantis", BoxButtons::Ok, BoxIcon::Error);
    }
    return kTrue;
}

double Ascendant(double ramc, double obliquity, double latitude) {
    return RadToDeg(
        ArcTan2(-SinD(ramc) * CosD(obliquity) - TanD(latitude) * SinD(obliquity), CosD(ramc)));
}

double Midheaven(double ramc, double obliquity) {
    double m = RadToDeg(std::atan(TanD(ramc) / CosD(obliquity)));
    if (m < 0) m += 180;
    if (ramc > 180) m += 180;
    return m;
}

// The quadrant of an angle whose cosine of right ascension is `cosine`.
double EasternHalf(double degrees, double cosine) {
    if (degrees < 0) degrees += 180;
    if (cosine < 0) degrees += 180;
    return degrees;
}

double Vertex(double ramc, double obliquity, double latitude) {
    if (latitude == 0) return 90;
    const double opposite = ramc + 180;
    const double x = -SinD(opposite) * CosD(obliquity) - SinD(obliquity) / TanD(latitude);
    return EasternHalf(RadToDeg(ArcTan2(x, CosD(opposite))), CosD(opposite));
}

void CalcPtFortune(CalcChart& chart, Flag alwaysDay) {
    const double sun = chart.Lon[point::kSun];
    const double moon = chart.Lon[point::kMoon];
    const double ascendant = chart.Lon[point::kAscendant];
    if (sun < 0 || moon < 0) {
        chart.Lon[point::kPtFortune] = -1;
        return;
    }
    // The Sun exactly on the Ascendant counts as below the horizon.
    const bool day = Modulo(sun - ascendant, 360) > 180 || alwaysDay != 0;
    const double moonLat = chart.Lat[point::kMoon];
    chart.Lon[point::kPtFortune] =
        Modulo(day ? ascendant + moon - sun : ascendant + sun - moon, 360);
    chart.Lat[point::kPtFortune] = day ? moonLat : -moonLat;
}

}  // namespace

Flag BeginCalcChart(const Format1Record& fileChart, std::int16_t slot) {
    if (slot < 1 || slot > 2) RaiseRunTimeError(error::kSubscript);
    const double hours = fileChart.hour + fileChart.minute / 60.0 + fileChart.second / 3600.0 +
                         static_cast<double>(fileChart.zoneHours);
    double jd = 0;
    GetJDxhUT(fileChart.day, fileChart.month, fileChart.year, hours, jd);
    CheckDay(jd);
    if (ReportFailure() != 0) return kTrue;

    CalcChart& chart = calcChart[static_cast<std::size_t>(slot)];
    CopyTexts(fileChart, chart);
    CopyCodes(fileChart, chart);
    chartNow.PlaceLat = SignedDegrees(fileChart.latDegrees, fileChart.latMinutes,
                                      fileChart.latSeconds, fileChart.latNorth != 0);
    chartNow.PlaceLongW = SignedDegrees(fileChart.longDegrees, fileChart.longMinutes,
                                        fileChart.longSeconds, fileChart.longWest != 0);
    chartNow.EquatorLat = 0;
    CalcMoment(slot, hours, jd);
    return ReportFailure();
}

Flag FileChartToCalcChart(const Format1Record& fileChart, std::int16_t slot, Flag /*forReport*/) {
    if (BeginCalcChart(fileChart, slot) != 0) return kTrue;
    CalcPositions(slot);
    return ReportFailure();
}

Flag CalcChartFromEntry(std::int16_t slot, std::int16_t day, std::int16_t month, std::int16_t year,
                        std::int16_t hour, std::int16_t minute, std::int16_t second, double zone,
                        double latitude, double longitude) {
    if (slot < 1 || slot > 2) {
        RaiseRunTimeError(error::kSubscript);
        return kTrue;
    }
    RunTimeError stale;
    TakeRunTimeError(stale);  // what stood before belongs to others
    const double hours = hour + minute / 60.0 + second / 3600.0 + zone;
    double jd = 0;
    GetJDxhUT(day, month, year, hours, jd);
    CheckDay(jd);
    if (PendingRunTimeError() != 0) return kTrue;

    CalcChart& chart = calcChart[static_cast<std::size_t>(slot)];
    const CalcChart keptChart = chart;
    const ChartNow keptNow = chartNow;
    chart.ZoneHours = static_cast<float>(zone);
    chart.TrueNodeFlag = options.trueNode;
    chartNow.PlaceLat = latitude;
    chartNow.PlaceLongW = longitude;
    chartNow.EquatorLat = 0.000001;
    CalcMoment(slot, hours, jd);
    CalcPositions(slot);
    if (PendingRunTimeError() == 0) return kFalse;
    chart = keptChart;
    chartNow = keptNow;
    return kTrue;
}

double Ayanamsa(std::int16_t zodiacNumber, double t) {
    // Base points of zodiacs 1 to 9. The Draconic one, 9, has none: its offset is the precession
    // alone and isn't tied to the node.
    static constexpr std::array<double, 10> kBases = {
        0, 0, 336.6560694, 337.53953, 333.58695, 338.98556, 341.33904, 337.636111, 333.0369024, 0};
    if (zodiacNumber == zodiac::kTropical) return 0;
    double base = 0;
    if (zodiacNumber == zodiac::kUserSVP) {
        base = options.userSVP;
    } else if (zodiacNumber > 0 && zodiacNumber < zodiac::kUserSVP) {
        base = kBases[static_cast<std::size_t>(zodiacNumber)];
    }
    const double node = Modulo((933060 - 6962911 * t + 7.5 * t * t) / 3600, 360);
    const double sun = (259205536 * t + 2013816) / 3600;
    const double seconds = 17.23 * SinD(node) + 1.27 * SinD(sun) - (5025.64 + 1.11 * t) * t;
    return base - 360 + seconds / 3600;
}

void CalcAngles(std::int16_t slot, double ramc, double obliquity, double latitude, double offset,
                Flag alwaysDayFortune) {
    CalcChart& chart = calcChart[static_cast<std::size_t>(slot)];
    chart.Lon[point::kAscendant] = InZodiac(Ascendant(ramc, obliquity, latitude), offset);
    chart.Lon[point::kMidheaven] = InZodiac(Midheaven(ramc, obliquity), offset);

    // The Vertex is kept in the western half.
    double vertex = InZodiac(Vertex(ramc, obliquity, latitude), offset);
    if (Modulo(chart.Lon[point::kMidheaven] - vertex, 360) > 180)
        vertex = Modulo(vertex + 180, 360);
    chart.Lon[point::kVertex] = vertex;

    const double eastPoint = RadToDeg(ArcTan2(-SinD(ramc) * CosD(obliquity), CosD(ramc)));
    chart.Lon[point::kEastPoint] = InZodiac(EasternHalf(eastPoint, CosD(ramc)), offset);
    CalcPtFortune(chart, alwaysDayFortune);
}

void CalcEquatorial(std::int16_t slot, double obliquity, double offset) {
    CalcChart& chart = calcChart[static_cast<std::size_t>(slot)];
    const double sinE = SinD(obliquity);
    const double cosE = CosD(obliquity);
    for (std::size_t n = 1; n <= point::kLastBody; ++n) {
        const double l = chart.Lon[n] - offset;
        const double b = chart.Lat[n];
        chart.Dec[n] =
            static_cast<float>(RadToDeg(ArcSin(SinD(b) * cosE + CosD(b) * sinE * SinD(l))));
        chart.RA[n] = static_cast<float>(
            Modulo(RadToDeg(ArcTan2(CosD(l), SinD(l) * cosE - TanD(b) * sinE)), 360));
    }
}

void CalcAnglesForPlace(std::int16_t slot) {
    CalcSphereOfSlot(calcChart[static_cast<std::size_t>(slot)]);
    chartNow.EquatorLat = 0.00001;
    CalcFromAngles(slot);
}

bool IsOfMoment(const CalcChart& chart) {
    constexpr std::int16_t kNatal = 1;
    constexpr std::int16_t kReturn = 4;
    constexpr std::int16_t kCombined = 5;
    constexpr std::int16_t kFirstMovable = 8;  // and all above
    constexpr std::int16_t kDavison = 15;      // subtype of combined charts
    const std::int16_t type = chart.ChartType;
    if (type == kCombined) return chart.ChartSubType == kDavison;
    return type == 0 || type == kNatal || type == kReturn || type >= kFirstMovable;
}

bool HasMoment(const CalcChart& chart) {
    return IsOfMoment(chart) && chart.JulianDayET != 0;
}

Flag RecalculateChart(std::int16_t slot) {
    RunTimeError stale;
    TakeRunTimeError(stale);  // what stood before belongs to others
    CalcChart& chart = calcChart[static_cast<std::size_t>(slot)];
    const CalcChart keptChart = chart;
    const ChartNow keptNow = chartNow;
    chart.TrueNodeFlag = options.trueNode;
    CalcSphereOfSlot(chart);
    CalcPositions(slot);
    if (ReportFailure() == 0) return kFalse;
    chart = keptChart;
    chartNow = keptNow;
    return kTrue;
}

void CalcGeodeticAngles(std::int16_t slot) {
    const ChartNow& now = chartNow;
    const double midheaven = Modulo(options.geodeticStart - now.PlaceLongW, 360);
    const double l = midheaven - now.ZodiacOffsetNow;
    const double ramc = Modulo(RadToDeg(ArcTan2(CosD(l), SinD(l) * CosD(now.ObliquityNow))), 360);
    CalcAngles(slot, ramc, now.ObliquityNow, now.PlaceLat, now.ZodiacOffsetNow, kFalse);
    CalcHouses(slot, ramc, now.ObliquityNow, now.PlaceLat, now.ZodiacOffsetNow,
               calcChart[static_cast<std::size_t>(slot)].HouseSystem);
}

void AnglesAtPlace(std::int16_t slot, double latitude, double longW, double& ascendant,
                   double& midheaven) {
    const CalcChart& chart = calcChart[static_cast<std::size_t>(slot)];
    const double t = JulianCenturies(chart.JulianDayET);
    const double offset = Ayanamsa(chart.Zodiac, t);
    double deltaT = 0;
    double obliquity = 0;
    double siderealTime = 0;
    double ramc = 0;
    GetDeltaT(t, deltaT);
    GetObliquity(t, obliquity);
    if (!HasMoment(chart) && chart.Lon[point::kMidheaven] >= 0) {
        ramc = Modulo(chart.RA[point::kMidheaven] + chartNow.PlaceLongW - longW, 360);
    } else {
        GetST(chart.JulianDayET - deltaT / 24, siderealTime);
        GetRAMC(longW, siderealTime, ramc);
    }
    ascendant = InZodiac(Ascendant(ramc, obliquity, latitude), offset);
    midheaven = InZodiac(Midheaven(ramc, obliquity), offset);
}

}  // namespace orvantis

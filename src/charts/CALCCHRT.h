// Chart calculation: from a stored chart to positions, angles, equatorial coordinates and house
// cusps. Every line on the map is read from the arrays that are filled here.
#pragma once

#include <array>
#include <cstdint>
#include <string>

#include "charts/KVCharts.h"
#include "surface/values.h"

namespace orvantis {

/// Numbers of the points that routines name.
namespace point {
inline constexpr std::int16_t kMoon = 1;
inline constexpr std::int16_t kEarth = 2;
inline constexpr std::int16_t kSun = 3;
inline constexpr std::int16_t kVulcan = 4;
inline constexpr std::int16_t kMercury = 5;
inline constexpr std::int16_t kJupiter = 8;
inline constexpr std::int16_t kPluto = 12;
inline constexpr std::int16_t kChiron = 13;
inline constexpr std::int16_t kHygeia = 18;
inline constexpr std::int16_t kAstraea = 19;
inline constexpr std::int16_t kNorthNode = 20;
inline constexpr std::int16_t kSouthNode = 21;
inline constexpr std::int16_t kAscendant = 22;
inline constexpr std::int16_t kMidheaven = 23;
inline constexpr std::int16_t kVertex = 24;
inline constexpr std::int16_t kEastPoint = 25;
inline constexpr std::int16_t kPtFortune = 26;
inline constexpr std::int16_t kCupido = 27;
inline constexpr std::int16_t kTransPluto = 35;
inline constexpr std::int16_t kBlackMoon = 36;
inline constexpr std::int16_t kLastBody = 36;
inline constexpr std::int16_t kLast = 72;
}  // namespace point

namespace house_system {
inline constexpr std::int16_t kCampanus = 1;
inline constexpr std::int16_t kKoch = 2;
inline constexpr std::int16_t kMeridian = 3;
inline constexpr std::int16_t kMorinus = 4;
inline constexpr std::int16_t kPlacidus = 5;
inline constexpr std::int16_t kPorphyry = 6;
inline constexpr std::int16_t kRegiomontanus = 7;
inline constexpr std::int16_t kTopocentric = 8;
inline constexpr std::int16_t kEqual = 9;
}  // namespace house_system

namespace zodiac {
inline constexpr std::int16_t kTropical = 1;
inline constexpr std::int16_t kUserSVP = 10;
}  // namespace zodiac

/// A calculated chart. Arrays of points count from 1; element 0 stands unused.
struct CalcChart {
    std::string Name;            ///< first line of the title, up to 30 characters
    std::string Name2;           ///< second line, up to 30 characters
    std::int16_t ChartType = 0;  ///< and the small fields of the chart's record
    std::int16_t ChartSubType = 0;
    std::int16_t ChartFlags = 0;
    std::int16_t HouseCode = 0;
    std::int16_t AyanamsaCode = 0;
    std::int16_t RecordForm = 0;
    std::string DateText;          ///< as formatted, up to 14 characters
    std::string TimeText;          ///< up to 12
    float ZoneHours = 0;           ///< hours, west positive
    std::string ZoneText;          ///< up to 5
    std::string Place;             ///< up to 20
    std::string Country;           ///< up to 20
    std::string LatText;           ///< up to 8
    std::string LongText;          ///< up to 9
    std::int16_t Zodiac = 1;       ///< 1 to 10; up to 255 in charts of odd records
    std::int16_t Frame = 1;        ///< 1 geocentric, 2 heliocentric
    std::int16_t HouseSystem = 5;  ///< 1 to 9; 0 none chosen
    Flag TrueNodeFlag = kTrue;
    double TimeUT = 0;       ///< hours; outside 0 to 24 on another civil day
    double JulianDayET = 0;  ///< Julian day, ephemeris time
    Flag Cusp1AtAscendant = kFalse;
    Flag Cusp10AtMidheaven = kFalse;
    std::array<double, 13> Cusp{};      ///< 1 to 12, degrees in the chart's zodiac
    std::array<double, 73> Lon{};       ///< ecliptic longitude in the chart's zodiac, degrees,
                                        ///< 0 to 360; below 0: not calculated
    std::array<double, 73> Lat{};       ///< ecliptic latitude, degrees
    std::array<double, 73> Dist{};      ///< astronomical units, 0 none
    std::array<double, 73> LonSpeed{};  ///< degrees a day
    std::array<double, 73> LatSpeed{};  ///< degrees a day
    std::array<float, 73> Dec{};        ///< declination, degrees
    std::array<float, 73> RA{};         ///< right ascension, degrees, 0 to 360
    std::array<Flag, 73> Retro{};       ///< after the whole calculation: not calculated
    std::array<double, 73> SortLon{};   ///< display copy for the wheel
    std::array<std::int16_t, 73> SortOrder{};
    std::array<std::int16_t, 73> Shown{};
    Flag Saved = kFalse;       ///< the chart stands in a chart file as it is
    Flag NeverSaved = kFalse;  ///< the chart isn't of a kind that is kept in files
};

/// Slot 1 the main chart, slot 2 the subsidiary one; element 0 stands unused.
extern std::array<CalcChart, 3> calcChart;

/// Whole-chart values of the chart calculated last.
struct ChartNow {
    double PlaceLat = 0;         ///< degrees, north positive
    double PlaceLongW = 0;       ///< degrees, WEST positive
    double ObliquityNow = 0;     ///< degrees, of date
    double RAMCNow = 0;          ///< degrees, 0 to 360
    double ZodiacOffsetNow = 0;  ///< degrees, added to tropical longitudes
    double JulianDayUT = 0;      ///< Julian day, Universal Time
    double DeltaT = 0;           ///< hours
    double EquatorLat = 0;       ///< degrees; the latitude that stands for a PlaceLat of exactly 0
};

extern ChartNow chartNow;

/// Calculates a chart into a slot, geocentrically. The house system is the record's, 0 and unknown
/// ones included, and so is the zodiac but for 0, with which the record leaves it open: that of the
/// options is taken. A number that doesn't fit, also one that an earlier step of reading the record
/// left behind as a run-time error, is told in a box "FileChartToCalcChart Error: " and the number;
/// the slot then stays as far as it was filled. Returns nonzero on failure.
Flag FileChartToCalcChart(const Format1Record& fileChart, std::int16_t slot, Flag forReport);

/// What FileChartToCalcChart does before there is any position: the slot's texts, codes and moment,
/// and the whole-chart values of its date and place. Failures as there.
Flag BeginCalcChart(const Format1Record& fileChart, std::int16_t slot);

/// Degrees to add to a tropical longitude in a zodiac (1 to 10) at T centuries from 1900. 0 for
/// zodiac 1, else negative, -18 to -27 today and about -361 for zodiac 9, which has no base, and
/// for numbers of no zodiac; zodiac 10 has the base of the options.
double Ayanamsa(std::int16_t zodiacNumber, double t);

/// Points 22 to 26 from the right ascension of the Midheaven, obliquity and latitude, degrees.
/// Pt Fortune needs the Sun and the Moon in the slot and isn't calculated without; by day it is
/// Ascendant + Moon - Sun, by night the reverse unless `alwaysDayFortune` is set.
void CalcAngles(std::int16_t slot, double ramc, double obliquity, double latitude, double offset,
                Flag alwaysDayFortune);

/// Right ascension and declination of points 1 to 36 from their longitude (without `offset`) and
/// latitude. Those of a point that isn't calculated mean nothing.
void CalcEquatorial(std::int16_t slot, double obliquity, double offset);

/// House cusps of one of the nine systems; the Ascendant and Midheaven must be in the slot. Koch
/// and Placidus become Equal where they don't exist, and so does any system whose arithmetic fails.
/// System 0: whole signs from 0 Aries, but for cusps 1 and 10, which are the angles. Another number
/// shows "Unrecognised house system" and changes nothing.
void CalcHouses(std::int16_t slot, double ramc, double obliquity, double latitude, double offset,
                std::int16_t houseSystem);

/// Angles, equatorial values and houses again for PlaceLat and PlaceLongW, from the slot's moment,
/// zodiac and house system. The values of ChartNow are then those of this place. A place on the
/// equator is calculated 0.00001 degrees north of it, so that the Vertex has no special case.
void CalcAnglesForPlace(std::int16_t slot);

/// True for a chart of one moment at a place: natal and event charts and their equivalents, such as
/// returns and Davison charts.
bool IsOfMoment(const CalcChart& chart);

/// True for such a chart whose moment is known: one that was handed over may have come without.
bool HasMoment(const CalcChart& chart);

/// Calculates a slot again from the moment, frame, zodiac and house system that stand in it and the
/// place of ChartNow (on the equator as near to it as before), by the rules for the node and Vulcan
/// that are in force now. For charts of a moment. Failures are told as by FileChartToCalcChart, but
/// for those that stood before; the slot and ChartNow then stay as they were. Returns nonzero on
/// failure.
Flag RecalculateChart(std::int16_t slot);

/// Angles and houses of the slot from the geodetic zodiac: the Midheaven is the place's own
/// meridian, counted from the one that the options give to 0 Aries. Place, obliquity and offset are
/// those of ChartNow, which stays as it is, and so do right ascensions and declinations.
void CalcGeodeticAngles(std::int16_t slot);

/// Calculates a slot whose chart was typed in, or is the clock's: a civil date and time, the zone
/// in hours (west positive), the place in degrees (latitude north positive, longitude WEST
/// positive). Texts, zodiac, frame and house system are those that stand in the slot. A place on
/// the equator is calculated 0.000001 degrees north of it. Nonzero with a run-time error left
/// behind if the moment, the slot or a position doesn't fit; the slot and ChartNow are then as they
/// were. An error that stood before is taken away.
Flag CalcChartFromEntry(std::int16_t slot, std::int16_t day, std::int16_t month, std::int16_t year,
                        std::int16_t hour, std::int16_t minute, std::int16_t second, double zone,
                        double latitude, double longitude);

/// Ascendant and Midheaven, degrees in the chart's zodiac, that the moment of the chart in a slot
/// has at another place: latitude north positive, longitude WEST positive. A chart without a moment
/// has its own Midheaven at its own place (that of ChartNow), and from there it turns with the
/// longitude, as the chart's lines do. Changes no record.
void AnglesAtPlace(std::int16_t slot, double latitude, double longW, double& ascendant,
                   double& midheaven);

}  // namespace orvantis

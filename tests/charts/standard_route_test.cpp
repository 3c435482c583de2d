// The steps of the standard route, one by one, against the routines that it takes places from.
#include "charts/standard_route.h"

#include <array>
#include <cmath>
#include <filesystem>
#include <gtest/gtest.h>
#include <limits>
#include <swephexp.h>
#include <utility>

#include "charts/CALCCHRT.h"
#include "charts/QXASTRO.h"
#include "charts/QXPlan1.h"
#include "charts/QXPlan2.h"
#include "charts/SwissEph.h"
#include "charts/ephemeris_tables.h"
#include "charts/hypothetical.h"
#include "support/angles.h"
#include "support/paths.h"
#include "support/reset_all.h"
#include "support/temp_folder.h"
#include "text/dates.h"
#include "text/numbers.h"
#include "text/run_time_error.h"

namespace orvantis {
namespace {

const std::string kTables = DataFile("");
constexpr double kJ2000 = 2451545.0;
constexpr double kMinute = 1.901285e-8;

struct Call {
    std::int16_t first = 0;
    std::int16_t last = 0;
    double offset = 0;
    double accuracy = 0;
    std::int16_t frame = 1;
    Flag useTables = kTrue;
    std::string dataPath;
    Flag trueNode = kTrue;
    Flag weston = kTrue;
};

class StandardRoute : public testing::Test {
  protected:
    // No library file is in reach: its folder is one without files.
    void SetUp() override {
        ResetAll();
        swissState.messages = kFalse;
        OpenSwissEphemeris(folder_.Path().substr(0, folder_.Path().size() - 1), "");
        CloseSwissEphemeris();
    }
    void TearDown() override { CloseEphemerisTables(); }

    const CalcChart& Calculate(double jd, const Call& call = {}) {
        CalcPlanets(1, call.first, call.last, JulianCenturies(jd), call.offset, call.accuracy,
                    call.frame, call.useTables, call.dataPath, call.trueNode, call.weston);
        return calcChart[1];
    }

    TempFolder folder_;
};

double NutationAt(double jd) {
    double inLongitude = 0;
    double ignored = 0;
    Nutation((jd - kJ2000) / 36525, inLongitude, ignored);
    return inLongitude;
}

// Meeus, example 22.a (10 April 1987, 0h): -3.788 and +9.443 seconds of arc by the whole theory;
// the four terms are good for half a second in longitude and a tenth in obliquity.
TEST_F(StandardRoute, TheNutationIsThatOfFourTerms) {
    double inLongitude = 0;
    double inObliquity = 0;
    Nutation(-0.127296372348, inLongitude, inObliquity);
    EXPECT_NEAR(inLongitude * 3600, -3.788, 0.5);
    EXPECT_NEAR(inObliquity * 3600, 9.443, 0.1);
    // By hand at n = 0, where O = 125.04452, 2 L = 560.933, 2 M = 436.633, 2 O = 250.08904:
    // -17.2 (0.8187061) - 1.32 (-0.3572760) - 0.23 (0.9729092) + 0.21 (-0.9402230).
    Nutation(0, inLongitude, inObliquity);
    EXPECT_NEAR(inLongitude * 3600, -14.0313568, 1e-6);
    // 9.2 (-0.5742128) + 0.57 (-0.9339989) + 0.1 (0.2311876) - 0.09 (-0.3405594).
    EXPECT_NEAR(inObliquity * 3600, -5.7613676, 1e-6);
}

TEST_F(StandardRoute, EveryPointIsCalculatedWithoutAnyFileOfTheLibrary) {
    Call call;
    call.dataPath = kTables;
    const CalcChart& chart = Calculate(kJ2000, call);
    for (std::size_t n = 1; n <= 36; ++n) {
        if (n >= 22 && n <= 26) continue;
        EXPECT_GE(chart.Lon[n], 0) << n;
        EXPECT_LT(chart.Lon[n], 360) << n;
    }
    EXPECT_TRUE(TestShell().boxes.empty());
}

TEST_F(StandardRoute, TheMoonHasNoNutationAddedAndSunAndPlanetsHave) {
    const double t = JulianCenturies(kJ2000);
    const CalcChart& chart = Calculate(kJ2000);
    double moon = 0;
    double moonLat = 0;
    CalcMon(t, 0, moon, moonLat);
    EXPECT_EQ(chart.Lon[1], moon);
    EXPECT_EQ(chart.Lat[1], moonLat);

    const BodyPosition earth = CalcPlanetVSOP(3, 0, 0, 0, 0, 0, 0);
    const double nutation = NutationAt(kJ2000);
    EXPECT_GT(std::abs(nutation * 3600), 10);
    EXPECT_LE(Apart(chart.Lon[3], earth.longitude[2] + 180 + nutation - 20.5 / 3600), 1e-10);
    EXPECT_EQ(chart.Lat[3], -earth.latitude[2]);
    EXPECT_EQ(chart.Dist[3], earth.distance[2]);

    const BodyPosition mars = CalcPlanetVSOP(4, 0, 0, 0, Modulo(earth.longitude[2] + 180, 360),
                                             -earth.latitude[2], earth.distance[2]);
    const double light = chart.LonSpeed[7] * mars.distance[1] * 0.0057755183;
    EXPECT_LE(Apart(chart.Lon[7], mars.longitude[1] + nutation - light), 1e-10);
    EXPECT_EQ(chart.Lat[7], mars.latitude[1]);
    EXPECT_EQ(chart.Dist[7], mars.distance[1]);
}

TEST_F(StandardRoute, TheSpeedIsTheChangeOfAMinuteTimes1440) {
    const CalcChart& chart = Calculate(kJ2000);
    const double t = JulianCenturies(kJ2000);
    double lon[2] = {};
    double lat[2] = {};
    CalcMon(t, 0, lon[0], lat[0]);
    CalcMon(t + kMinute, 0, lon[1], lat[1]);
    EXPECT_EQ(chart.LonSpeed[1], (Modulo(lon[1] - lon[0] + 180, 360) - 180) * 1440);
    EXPECT_EQ(chart.LatSpeed[1], (lat[1] - lat[0]) * 1440);
}

TEST_F(StandardRoute, TheLatitudeSpeedOfTheSunIsTheChangeOfAMinute) {
    const CalcChart& chart = Calculate(kJ2000);
    const BodyPosition now = CalcPlanetVSOP(3, 0, 0, 0, 0, 0, 0);
    const BodyPosition next = CalcPlanetVSOP(3, kMinute * 0.1, 0, 0, 0, 0, 0);
    EXPECT_EQ(chart.LatSpeed[3], now.latitude[2] - next.latitude[2]);
    EXPECT_NE(chart.LatSpeed[3], 0);
    EXPECT_LT(std::abs(chart.LatSpeed[3]), 1e-6);
}

TEST_F(StandardRoute, TheEarthStandsOppositeTheSunWithItsSpeedAndTheLatitudeSpeedNegated) {
    const CalcChart& chart = Calculate(kJ2000);
    EXPECT_EQ(chart.Lon[2], Modulo(chart.Lon[3] + 180, 360));
    EXPECT_EQ(chart.Lat[2], -chart.Lat[3]);
    EXPECT_EQ(chart.LonSpeed[2], chart.LonSpeed[3]);
    EXPECT_EQ(chart.LatSpeed[2], -chart.LatSpeed[3]);
}

TEST_F(StandardRoute, ABodyThatCrossesZeroAriesWithinTheMinuteHasASmallSpeed) {
    // Half a minute before the Sun and the Moon come to the equinox, found by halving.
    for (const std::size_t n : {1U, 3U}) {
        double low = 2451623.0;
        double high = 2451624.5;
        if (n == 1) {
            low = 2451610.0;
            while (Calculate(low).Lon[1] < 340) low += 0.5;
            high = low + 2;
        }
        for (int round = 0; round < 40; ++round) {
            const double middle = (low + high) / 2;
            (Calculate(middle).Lon[n] > 180 ? low : high) = middle;
        }
        const double before = low - 0.5 / 1440;
        const CalcChart& chart = Calculate(before);
        EXPECT_GT(chart.Lon[n], 359.9);
        EXPECT_NEAR(chart.LonSpeed[n], n == 1 ? 13.5 : 0.993, n == 1 ? 2 : 0.01);
        EXPECT_LT(Calculate(before + 1.0 / 1440).Lon[n], 1);
    }
}

TEST_F(StandardRoute, APlanetOnBothSidesOfZeroAriesWithinTheMinuteHasASmallSpeed) {
    RouteMoment moment;
    moment.sunGiven = true;
    CalcChart& chart = calcChart[1];
    for (const std::size_t frame : {1U, 2U}) {
        moment.frame = static_cast<std::int16_t>(frame);
        std::array<BodyPosition, 2> body;
        for (BodyPosition& position : body) position.given = true;
        body[0].longitude[frame] = 359.9998;
        body[1].longitude[frame] = 0.0003;
        StoreBody(chart, 5, moment, body);
        EXPECT_NEAR(chart.LonSpeed[5], 0.0005 * 1440, 1e-9) << frame;
        EXPECT_EQ(chart.Retro[5], kFalse) << frame;
        std::swap(body[0], body[1]);
        StoreBody(chart, 5, moment, body);
        EXPECT_NEAR(chart.LonSpeed[5], -0.0005 * 1440, 1e-9) << frame;
        EXPECT_EQ(chart.Retro[5], kTrue) << frame;
    }
}

TEST_F(StandardRoute, ARoughAccuracyTakesTheShortTheoryOfTheSunWithoutLatitude) {
    Call call;
    call.accuracy = 9.9;
    EXPECT_NE(Calculate(kJ2000, call).Lat[3], 0) << "9.9 is fine still";
    call.accuracy = 9.91;
    const CalcChart& chart = Calculate(kJ2000, call);
    EXPECT_EQ(chart.Lat[3], 0);
    double sun = 0;
    double distance = 0;
    CalcSun(JulianCenturies(kJ2000), 0, sun, distance);
    EXPECT_LE(Apart(chart.Lon[3], sun + NutationAt(kJ2000) - 20.5 / 3600), 1e-10);
    EXPECT_EQ(chart.Dist[3], distance);
}

TEST_F(StandardRoute, HeliocentricPlacesHaveNeitherNutationNorLightTime) {
    Call call;
    call.frame = 2;
    call.dataPath = kTables;
    const CalcChart& chart = Calculate(kJ2000, call);
    const BodyPosition earth = CalcPlanetVSOP(3, 0, 0, 0, 0, 0, 0);
    EXPECT_LE(Apart(chart.Lon[2], earth.longitude[2]), 1e-10);
    EXPECT_LE(Apart(chart.Lon[3], earth.longitude[2] + 180), 1e-10);
    const BodyPosition mars = CalcPlanetVSOP(4, 0, 0, 0, 0, 0, 0);
    EXPECT_EQ(chart.Lon[7], mars.longitude[2]);
    EXPECT_EQ(chart.Lat[7], mars.latitude[2]);
    const BodyPosition cupido = CalcTNP(1, 1, 0, 0, 0);
    EXPECT_EQ(chart.Lon[27], cupido.longitude[2]);
    EXPECT_EQ(chart.Frame, 2);
    std::array<TablePosition, 8> bodies;
    ASSERT_TRUE(ReadTables(TableSeries::Asteroids, kTables, JulianCenturies(kJ2000), bodies));
    EXPECT_LE(Apart(chart.Lon[13], bodies[1].longitude), 1e-9);
    EXPECT_LE(Apart(chart.Lon[19], bodies[7].longitude), 1e-9);
}

// Jupiter to Pluto at 100, 110, 120, 130, 140 degrees, 1 to 5 degrees of latitude, 10 to 50
// astronomical units, standing still.
void WriteOuterPlanets(const TempFolder& folder) {
    Bytes bytes;
    for (int record = 0; record < 930; ++record) {
        for (int body = 0; body < 5; ++body) {
            const std::size_t at = bytes.size();
            bytes.resize(at + 12);
            PutI32(&bytes[at], (100 + 10 * body) * 3600);
            PutI32(&bytes[at + 4], (1 + body) * 3600);
            PutI32(&bytes[at + 8], (10 + 10 * body) * 1000000);
        }
    }
    folder.Write("OP20AD.EPH", bytes);
}

// The theory's own distances from the Sun are the library's; those of minor planets are Swiss
// Ephemeris' (swetest -bj2451545 -pDIGHF -fPR -hel -true), the tables' within 3e-5. A point on an
// orbit of the program's own is as far as its rectangular place is long.
TEST_F(StandardRoute, HeliocentricDistancesAreThoseFromTheSun) {
    WriteOuterPlanets(folder_);
    Call call;
    call.frame = 2;
    call.useTables = kFalse;
    call.dataPath = kTables;
    const CalcChart& chart = Calculate(kJ2000, call);
    const std::pair<std::size_t, std::int32_t> planets[] = {
        {2, SE_EARTH},  {5, SE_MERCURY}, {6, SE_VENUS},    {7, SE_MARS},  {8, SE_JUPITER},
        {9, SE_SATURN}, {10, SE_URANUS}, {11, SE_NEPTUNE}, {12, SE_PLUTO}};
    for (const auto& [n, body] : planets) {
        std::array<double, 6> xx{};
        std::array<char, AS_MAXCH> ignored{};
        swe_calc(kJ2000, body, SEFLG_MOSEPH | SEFLG_HELCTR | SEFLG_TRUEPOS, xx.data(),
                 ignored.data());
        EXPECT_NEAR(chart.Dist[n], xx[2], 1e-9) << n;
    }
    EXPECT_EQ(chart.Dist[3], chart.Dist[2]);
    const std::pair<std::size_t, double> minor[] = {{13, 9.815303557},
                                                    {14, 2.162810535},
                                                    {15, 2.143736585},
                                                    {16, 3.119688179},
                                                    {17, 2.551150914}};
    for (const auto& [n, distance] : minor) EXPECT_NEAR(chart.Dist[n], distance, 3e-5) << n;
    for (std::size_t n = 27; n <= 35; ++n) {
        const Vector place = HypotheticalPlace(static_cast<std::int16_t>(n - 26), kJ2000);
        EXPECT_NEAR(chart.Dist[n], std::hypot(place[0], place[1], place[2]), 1e-9) << n;
    }
    const Vector vulcan = VulcanPlace(JulianCenturies(kJ2000));
    EXPECT_NEAR(chart.Dist[4], std::hypot(vulcan[0], vulcan[1], vulcan[2]), 1e-12);

    call.useTables = kTrue;
    call.dataPath = folder_.Path();
    Calculate(kJ2000, call);
    for (std::size_t n = 8; n <= 12; ++n) {
        EXPECT_NEAR(chart.Dist[n], 10 + 10 * static_cast<double>(n - 8), 1e-9) << n;
    }
}

TEST_F(StandardRoute, HeliocentricallyTheMoonItsNodesAndItsApogeeStayAsSeenFromTheEarth) {
    const CalcChart geocentric = Calculate(kJ2000);
    Call call;
    call.frame = 2;
    const CalcChart& chart = Calculate(kJ2000, call);
    for (const std::size_t n : {1U, 20U, 21U, 36U}) {
        EXPECT_EQ(chart.Lon[n], geocentric.Lon[n]) << n;
        EXPECT_EQ(chart.LonSpeed[n], geocentric.LonSpeed[n]) << n;
    }
    EXPECT_EQ(chart.Lat[1], geocentric.Lat[1]);
}

TEST_F(StandardRoute, APlaceThatIsNoNumberIsNotCalculatedAndLeavesARunTimeError) {
    Call call;
    call.first = 5;
    call.last = 27;
    call.offset = std::numeric_limits<double>::infinity();
    calcChart[1].Lon[1] = calcChart[1].Lon[22] = calcChart[1].Lon[28] = 77;
    const CalcChart& chart = Calculate(kJ2000, call);
    for (const std::size_t n : {2U, 3U, 5U, 12U, 20U, 27U}) EXPECT_EQ(chart.Lon[n], -1) << n;
    for (const std::size_t n : {1U, 22U, 28U}) EXPECT_EQ(chart.Lon[n], 77) << n;
    RunTimeError failure;
    ASSERT_TRUE(TakeRunTimeError(failure));
    EXPECT_EQ(failure.number, error::kOverflow);
}

TEST_F(StandardRoute, TheOffsetIsAddedToEveryLongitude) {
    Call call;
    call.dataPath = kTables;
    const CalcChart tropical = Calculate(kJ2000, call);
    call.offset = -24;
    const CalcChart sidereal = Calculate(kJ2000, call);
    for (std::size_t n = 1; n <= 36; ++n) {
        if (n >= 22 && n <= 26) continue;
        EXPECT_LE(Apart(sidereal.Lon[n], tropical.Lon[n] - 24), 1e-8) << n;
        EXPECT_NEAR(sidereal.Lat[n], tropical.Lat[n], 1e-9) << n;
        EXPECT_NEAR(sidereal.LonSpeed[n], tropical.LonSpeed[n], 1e-6) << n;
    }
}

TEST_F(StandardRoute, ARangeGivesTheSunAndItsPointsAlone) {
    Call call;
    call.first = 5;
    call.last = 6;
    const CalcChart& chart = Calculate(kJ2000, call);
    for (const std::size_t n : {2U, 3U, 5U, 6U}) EXPECT_GT(chart.Lon[n], 0) << n;
    for (const std::size_t n : {1U, 4U, 7U, 20U, 27U, 36U}) EXPECT_EQ(chart.Lon[n], 0) << n;
}

TEST_F(StandardRoute, ARangeUpToTheSunEndsThere) {
    Call call;
    call.first = 1;
    call.last = 3;
    call.weston = kFalse;
    const CalcChart& chart = Calculate(kJ2000, call);
    for (const std::size_t n : {1U, 2U, 3U}) EXPECT_GT(chart.Lon[n], 0) << n;
    EXPECT_EQ(chart.Lon[4], 0);
}

TEST_F(StandardRoute, TheChartPointsInARangeAreLeaptOver) {
    for (const std::int16_t first : {std::int16_t{21}, std::int16_t{22}, std::int16_t{24}}) {
        calcChart[1] = {};
        calcChart[1].Lon[22] = calcChart[1].Lon[26] = 77;
        Call call;
        call.first = first;
        call.last = 27;
        const CalcChart& chart = Calculate(kJ2000, call);
        EXPECT_EQ(chart.Lon[22], 77);
        EXPECT_EQ(chart.Lon[26], 77);
        EXPECT_GT(chart.Lon[27], 0);
        EXPECT_EQ(chart.Lon[28], 0);
        EXPECT_EQ(chart.Lon[21] > 0, first == 21);
    }
}

TEST_F(StandardRoute, TheNodesAreMeanOrTrueAndTheSouthNodeStandsOpposite) {
    double mean = 0;
    double osculating = 0;
    CalcNod(JulianCenturies(kJ2000), 0, mean, osculating);
    EXPECT_GT(Apart(mean, osculating), 0.1);
    Call call;
    EXPECT_EQ(Calculate(kJ2000, call).Lon[20], osculating);
    call.trueNode = kFalse;
    const CalcChart& chart = Calculate(kJ2000, call);
    EXPECT_EQ(chart.Lon[20], mean);
    EXPECT_EQ(chart.Lon[21], Modulo(mean + 180, 360));
    EXPECT_EQ(chart.LonSpeed[21], chart.LonSpeed[20]);
    EXPECT_EQ(chart.Retro[20], kTrue);
    EXPECT_EQ(chart.Retro[21], kTrue);
    // 360 degrees in 6798.38 days (Meeus, 47.7: 1934.136 degrees a century), nutation within 1e-4.
    EXPECT_NEAR(chart.LonSpeed[20], -1934.136 / 36525, 1e-4);
}

TEST_F(StandardRoute, TheBlackMoonHasTwoThirdsOfTheMoonsLatitude) {
    const CalcChart& chart = Calculate(kJ2000);
    double apogee = 0;
    CalcLilith(JulianCenturies(kJ2000), 0, apogee);
    EXPECT_EQ(chart.Lon[36], apogee);
    EXPECT_EQ(chart.Lat[36], 0.6666667 * chart.Lat[1]);
    EXPECT_NEAR(chart.LonSpeed[36], 4069.0137 / 36525, 2e-4);  // Meeus, chapter 50
    EXPECT_EQ(chart.Retro[36], kFalse);
}

TEST_F(StandardRoute, ATOfMinus101GivesChironALongitudeOfZeroAndNoMessage) {
    Call call;
    call.dataPath = kTables;
    for (const double t : {-1.01, 1.5001, -20.0}) {
        calcChart[1].Lon[13] = calcChart[1].Lon[14] = calcChart[1].Lon[19] = 123;
        const CalcChart& chart = Calculate(2415020 + t * 36525, call);
        EXPECT_EQ(chart.Lon[13], 0) << t;
        EXPECT_EQ(chart.Lon[14], 123) << "what it held, at " << t;
        EXPECT_EQ(chart.Lon[19], 123) << t;
        EXPECT_GT(chart.Lon[20], 0) << t;
    }
    EXPECT_TRUE(TestShell().boxes.empty());
}

TEST_F(StandardRoute, TheEndsOfTheTablesYearsAreInThem) {
    Call call;
    call.dataPath = kTables;
    for (const double t : {-1.0, 1.5}) {
        calcChart[1] = {};
        const CalcChart& chart = Calculate(2415020 + t * 36525, call);
        for (std::size_t n = 13; n <= 19; ++n) {
            EXPECT_GT(chart.Lon[n], 0) << n << " at " << t;
            EXPECT_NE(chart.LonSpeed[n], 0) << n << " at " << t;
        }
    }
}

TEST_F(StandardRoute, WithoutTheTablesTheAsteroidsAreNotCalculatedAndNothingIsTold) {
    calcChart[1].Lon[13] = calcChart[1].LonSpeed[19] = 5;
    Call call;
    call.dataPath = folder_.Path();
    const CalcChart& chart = Calculate(kJ2000, call);
    for (std::size_t n = 13; n <= 19; ++n) {
        EXPECT_EQ(chart.Lon[n], -1) << n;
        EXPECT_EQ(chart.LonSpeed[n], 0) << n;
    }
    EXPECT_TRUE(TestShell().boxes.empty());
}

TEST_F(StandardRoute, TheOuterPlanetsComeFromTheirTablesIfThoseAreThereAndAskedFor) {
    const CalcChart theory = Calculate(kJ2000);
    WriteOuterPlanets(folder_);
    Call call;
    call.dataPath = folder_.Path();
    call.frame = 2;
    const CalcChart& chart = Calculate(kJ2000, call);
    for (std::size_t n = 8; n <= 12; ++n) {
        const auto body = static_cast<double>(n - 8);
        EXPECT_NEAR(chart.Lon[n], 100 + 10 * body, 1e-9) << n;
        EXPECT_NEAR(chart.Lat[n], 1 + body, 1e-9) << n;
    }
    call.frame = 1;
    Calculate(kJ2000, call);
    // Turned geocentric by the Sun's geometric place, with nutation and light time.
    const BodyPosition earth = CalcPlanetVSOP(3, 0, 0, 0, 0, 0, 0);
    for (std::size_t n = 8; n <= 12; ++n) {
        const auto body = static_cast<double>(n - 8);
        const BodyPosition seen = SeenFromEarth({100 + 10 * body, 1 + body, 10 + 10 * body},
                                                Modulo(earth.longitude[2] + 180, 360),
                                                -earth.latitude[2], earth.distance[2]);
        const double light = chart.LonSpeed[n] * seen.distance[1] * 0.0057755183;
        EXPECT_LE(Apart(chart.Lon[n], seen.longitude[1] + NutationAt(kJ2000) - light), 1e-9) << n;
        EXPECT_NEAR(chart.Lat[n], seen.latitude[1], 1e-9) << n;
        EXPECT_NE(chart.LonSpeed[n], 0) << n << ": the Earth moves";
    }

    call.useTables = kFalse;
    Calculate(kJ2000, call);
    for (std::size_t n = 8; n <= 12; ++n) EXPECT_EQ(chart.Lon[n], theory.Lon[n]) << n;
}

TEST_F(StandardRoute, WithoutTheTablesTheOuterPlanetsComeFromTheTheoriesInSilence) {
    Call call;
    call.useTables = kFalse;
    const CalcChart theory = Calculate(kJ2000, call);
    call.useTables = kTrue;
    call.dataPath = folder_.Path();
    const CalcChart& chart = Calculate(kJ2000, call);
    EXPECT_EQ(chart.Lon, theory.Lon);
    EXPECT_EQ(chart.LonSpeed, theory.LonSpeed);
    // So in years that the file doesn't reach.
    WriteOuterPlanets(folder_);
    const CalcChart later = Calculate(kJ2000 + 60000, call);
    call.useTables = kFalse;
    EXPECT_EQ(Calculate(kJ2000 + 60000, call).Lon, later.Lon);
    EXPECT_TRUE(TestShell().boxes.empty());
}

TEST_F(StandardRoute, ARangeWithinTheOuterPlanetsLeavesTheOthers) {
    WriteOuterPlanets(folder_);
    Call call;
    call.dataPath = folder_.Path();
    call.first = 9;
    call.last = 10;
    const CalcChart& chart = Calculate(kJ2000, call);
    EXPECT_EQ(chart.Lon[8], 0);
    EXPECT_GT(chart.Lon[9], 0);
    EXPECT_GT(chart.Lon[10], 0);
    EXPECT_EQ(chart.Lon[11], 0);
}

// The theories end at about 3000 before and after Christ.
TEST_F(StandardRoute, BeyondTheTheoriesYearsNoPointIsCalculated) {
    for (const std::int16_t year : {std::int16_t{-4000}, std::int16_t{4000}}) {
        calcChart[1].LonSpeed[7] = 1;
        const CalcChart& chart = Calculate(DateToJD(1, 1, year));
        for (const std::size_t n : {1U, 2U, 3U, 4U, 5U, 7U, 12U, 27U, 35U}) {
            EXPECT_EQ(chart.Lon[n], -1) << n << " in " << year;
            EXPECT_EQ(chart.LonSpeed[n], 0) << n << " in " << year;
        }
    }
    const CalcChart& chart = Calculate(DateToJD(1, 1, -2999));
    for (const std::size_t n : {1U, 3U, 7U, 12U, 20U, 27U}) EXPECT_GE(chart.Lon[n], 0) << n;
    EXPECT_TRUE(TestShell().boxes.empty());
}

// Opens the library on a folder and leaves the standard route in use.
void OpenAndClose(const TempFolder& folder) {
    swissState.messages = kFalse;
    OpenSwissEphemeris(folder.Path().substr(0, folder.Path().size() - 1), "");
    CloseSwissEphemeris();
}

TEST_F(StandardRoute, WhereTheLibrarysFileEndsWithinTheMinuteBothMomentsComeFromTheTheory) {
    const TempFolder files;
    for (const char* name : {"sepl_18.se1", "semo_18.se1"}) {
        std::filesystem::create_symlink(std::string(kEphemeris) + "/" + name, files.File(name));
    }
    const auto source = [](double jd) {
        EphemerisSource answered = EphemerisSource::Files;
        double longitude = 0;
        double latitude = 0;
        CalcMon(JulianCenturies(jd), 0, longitude, latitude, &answered);
        return answered;
    };
    // The library serves on for some minutes from what it has in memory, so that it is opened anew
    // for each moment.
    OpenAndClose(files);
    double end = kJ2000;
    for (double step = 100 * 365.25; step > 1e-4; step /= 2) {
        OpenAndClose(files);
        while (source(end + step) == EphemerisSource::Files) end += step;
    }
    double jd = end - 5.0 / 1440;
    const auto differs = [&](double at) {
        OpenAndClose(files);
        const EphemerisSource first = source(at);
        return first != source(at + 1.0 / 1440);
    };
    while (jd < end + 5.0 / 1440 && !differs(jd)) jd += 0.25 / 1440;
    ASSERT_TRUE(differs(jd));

    OpenAndClose(files);
    const CalcChart atEnd = Calculate(jd);
    OpenAndClose(folder_);  // no file is in reach
    const CalcChart theory = Calculate(jd);
    EXPECT_EQ(atEnd.Lon[1], theory.Lon[1]);
    EXPECT_EQ(atEnd.LonSpeed[1], theory.LonSpeed[1]);
    // Two seconds of arc between two sources would be nearly a degree a day.
    for (std::size_t n = 1; n <= 20; ++n) {
        EXPECT_NEAR(atEnd.LonSpeed[n], theory.LonSpeed[n], 0.01) << n;
    }
}

TEST_F(StandardRoute, InTheLastMinuteOfAnElementsFileBothMomentsComeFromTheTheory) {
    Bytes bytes(24 * 6);
    PutI32(bytes.data(), 245154500);  // the first Julian day, times 100
    PutI32(&bytes[4], 10);            // days from record to record
    for (std::size_t i = 1; i < 6; ++i) PutI32(&bytes[i * 24 + 20], 40000000);
    folder_.Write("pluelm21.eph", bytes);
    TablePosition pluto;
    double end = kJ2000;
    while (PlutoFromElements(folder_.Path(), end + 10 - 1e-4, pluto)) end += 10;
    ASSERT_GT(end, kJ2000);
    Call call;
    call.useTables = kFalse;
    call.dataPath = folder_.Path();
    const CalcChart elements = Calculate(end - 1, call);
    const CalcChart atEnd = Calculate(end - 0.5 / 1440, call);
    call.dataPath.clear();
    const CalcChart theory = Calculate(end - 0.5 / 1440, call);
    EXPECT_EQ(atEnd.Lon[12], theory.Lon[12]);
    EXPECT_EQ(atEnd.LonSpeed[12], theory.LonSpeed[12]);
    EXPECT_GT(Apart(elements.Lon[12], theory.Lon[12]), 1) << "the elements are no Pluto's";
}

// The orbit of the elements file below, by rotation of vectors: anomaly 20 degrees on 1 January
// 2000, 0.004 degrees a day; perihelion 225, node 110, inclination 17, e 0.25, axis 39.5.
Vector PlutoByHand(double jd) {
    const double e = 0.25;
    const double m = (20 + 0.004 * (jd - kJ2000)) * DegToRad;
    double anomaly = m;
    for (int round = 0; round < 60; ++round) anomaly = m + e * std::sin(anomaly);
    const double x = 39.5 * (std::cos(anomaly) - e);
    const double y = 39.5 * std::sqrt(1 - e * e) * std::sin(anomaly);
    const double perihelion = 225 - 110;
    const double along = x * CosD(perihelion) - y * SinD(perihelion);
    const double across = x * SinD(perihelion) + y * CosD(perihelion);
    return {along * CosD(110) - across * CosD(17) * SinD(110),
            along * SinD(110) + across * CosD(17) * CosD(110), across * SinD(17)};
}

// The same from the Earth, whose place is the library's: geometric.
SphericalPlace PlutoFromTheEarth(double jd) {
    const BodyPosition earth = CalcPlanetVSOP(3, (jd - kJ2000) / 365250, 0, 0, 0, 0, 0);
    const Vector pluto = PlutoByHand(jd);
    const Vector from =
        RectangularPlace({earth.longitude[2], earth.latitude[2], earth.distance[2]});
    return SphericalFrom({pluto[0] - from[0], pluto[1] - from[1], pluto[2] - from[2]});
}

void WritePlutoElements(const TempFolder& folder) {
    constexpr std::size_t kRecord = 24;
    Bytes bytes(kRecord * 12);
    PutI32(bytes.data(), 245154500);  // the first Julian day, times 100
    PutI32(&bytes[4], 10);            // days from record to record
    for (std::int32_t i = 0; i < 11; ++i) {
        std::uint8_t* record = &bytes[kRecord * (static_cast<std::size_t>(i) + 1)];
        PutI32(record, 200000 + 400 * i);
        PutI32(record + 4, 2450000 + 400 * i);
        PutI32(record + 8, 1100000);
        PutI32(record + 12, 170000);
        PutI32(record + 16, 2500000);
        PutI32(record + 20, 39500000);
    }
    folder.Write("pluelm21.eph", bytes);
}

// The anomaly is sought to 1e-6 radians, which leaves 2e-5 degrees here; the nutation is 0.004, the
// light time 0.003 to 0.01 degrees.
TEST_F(StandardRoute, PlutoAloneComesFromItsElementsTurnedGeocentricWithAllSteps) {
    WritePlutoElements(folder_);
    Call call;
    call.first = call.last = 12;
    call.useTables = kFalse;
    call.dataPath = folder_.Path();
    call.offset = -24;
    for (const double day : {3.3, 23.4, 77.7}) {
        const double jd = kJ2000 + day;
        const SphericalPlace seen = PlutoFromTheEarth(jd);
        const double before = PlutoFromTheEarth(jd - 0.01).longitude;
        const double speed = (PlutoFromTheEarth(jd + 0.01).longitude - before) / 0.02;
        const double light = speed * seen.distance * 0.0057755183;
        call.frame = 1;
        const CalcChart& chart = Calculate(jd, call);
        EXPECT_LE(Apart(chart.Lon[12], seen.longitude + NutationAt(jd) - light - 24), 3e-5) << day;
        EXPECT_NEAR(chart.Lat[12], seen.latitude, 3e-5) << day;
        EXPECT_NEAR(chart.Dist[12], seen.distance, 3e-5) << day;
        EXPECT_NEAR(chart.LonSpeed[12], speed, 1e-4) << day;
        EXPECT_EQ(chart.Retro[12], speed < 0 ? kTrue : kFalse) << day;
        EXPECT_EQ(chart.Lon[11], 0) << "no other point";

        call.frame = 2;
        Calculate(jd, call);
        const SphericalPlace heliocentric = SphericalFrom(PlutoByHand(jd));
        EXPECT_LE(Apart(chart.Lon[12], heliocentric.longitude - 24), 3e-5) << day;
        EXPECT_NEAR(chart.Lat[12], heliocentric.latitude, 3e-5) << day;
        EXPECT_NEAR(chart.Dist[12], heliocentric.distance, 3e-5) << day;
        EXPECT_GT(chart.LonSpeed[12], 0) << day;
    }
    EXPECT_TRUE(TestShell().boxes.empty());
}

TEST_F(StandardRoute, BodiesThatDoNotExistAreNotGiven) {
    for (const std::int16_t body : {std::int16_t{0}, std::int16_t{-1}, std::int16_t{10}}) {
        EXPECT_FALSE(CalcTNP(body, 1, 0, 0, 1).given);
        EXPECT_FALSE(CalcPlanetVSOP(body, 0, 0, 0, 0, 0, 0).given);
    }
    EXPECT_FALSE(CalcPlanetVSOP(9, 0, 0, 0, 0, 0, 0).given);
}

// By hand: Weston's elements at T = 0, so the anomaly 252.8987988, e 0.019: E by three rounds of
// Kepler's equation 251.85316, true anomaly 250.81511; argument of latitude 213.02718 (322.212069
// more), node 47.787931, inclination 7.5: longitude 47.787931 + atan2(sin u cos i, cos u).
TEST_F(StandardRoute, VulcanGoesOnWestonsOrbit) {
    const SphericalPlace place = SphericalFrom(VulcanPlace(0));
    const double e = 0.019;
    const double m = 252.8987988 * DegToRad;
    double anomaly = m;
    for (int round = 0; round < 30; ++round) anomaly = m + e * std::sin(anomaly);
    const double v = 2 * std::atan(std::sqrt((1 + e) / (1 - e)) * std::tan(anomaly / 2));
    const double u = v + 322.212069 * DegToRad;
    const double i = 7.5 * DegToRad;
    const double longitude =
        47.787931 + RadToDeg(std::atan2(std::sin(u) * std::cos(i), std::cos(u)));
    EXPECT_LE(Apart(place.longitude, longitude), 1e-9);
    EXPECT_NEAR(place.latitude, RadToDeg(std::asin(std::sin(u) * std::sin(i))), 1e-9);
    EXPECT_NEAR(place.distance, 0.13744 * (1 - e * std::cos(anomaly)), 1e-12);
}

// Vulcan by Mercury, with the two placed by hand.
class VulcanRule : public testing::Test {
  protected:
    void SetUp() override { ResetAll(); }
    const CalcChart& Place(double sun, double mercury, std::int16_t frame = 1) {
        CalcChart& chart = calcChart[1];
        chart.Lon[3] = sun;
        chart.Lat[3] = 0.25;
        chart.LonSpeed[3] = -0.5;
        chart.Retro[3] = kTrue;
        chart.Lon[5] = mercury;
        chart.Lat[5] = 2;
        VulcanByMercury(chart, frame);
        return chart;
    }
};

TEST_F(VulcanRule, WithMercury29DegreesFromTheSunVulcanEqualsTheSun) {
    for (const double apart : {2.9, -2.9, 0.0}) {
        const CalcChart& chart = Place(100, 100 + apart);
        EXPECT_EQ(chart.Lon[4], 100);
        EXPECT_EQ(chart.Lat[4], 0.25);
    }
}

TEST_F(VulcanRule, WithMercuryAtThreeDegreesItIsMercuryLessThreeOnTheSunsSide) {
    EXPECT_EQ(Place(100, 103).Lon[4], 100);
    EXPECT_EQ(calcChart[1].Lat[4], 2) << "Mercury's latitude tells whose place it is";
    EXPECT_EQ(Place(100, 97).Lon[4], 100);
    EXPECT_EQ(calcChart[1].Lat[4], 2);
    EXPECT_EQ(Place(100, 120).Lon[4], 117);
    EXPECT_EQ(Place(100, 80).Lon[4], 83);
}

TEST_F(VulcanRule, TheRuleHoldsAcrossZeroAries) {
    EXPECT_NEAR(Place(358, 2).Lon[4], 359, 1e-9);
    EXPECT_NEAR(Place(2, 358).Lon[4], 1, 1e-9);
    EXPECT_EQ(Place(359, 1).Lon[4], 359);
}

TEST_F(VulcanRule, FlagAndSpeedAreTheSuns) {
    const CalcChart& chart = Place(100, 120);
    EXPECT_EQ(chart.LonSpeed[4], -0.5);
    EXPECT_EQ(chart.Retro[4], kTrue);
}

TEST_F(VulcanRule, HeliocentricallyItIsMercury) {
    const CalcChart& chart = Place(100, 200, 2);
    EXPECT_EQ(chart.Lon[4], 200);
    EXPECT_EQ(chart.Lat[4], 2);
}

TEST_F(VulcanRule, WithoutSunOrMercuryItIsNotCalculated) {
    EXPECT_EQ(Place(-1, 100).Lon[4], -1);
    EXPECT_EQ(Place(100, -1).Lon[4], -1);
    EXPECT_EQ(Place(100, -1, 2).Lon[4], -1);
}

TEST_F(VulcanRule, HeliocentricallyItNeedsNoSun) {
    const CalcChart& chart = Place(-1, 200, 2);
    EXPECT_EQ(chart.Lon[4], 200);
    EXPECT_EQ(chart.Lat[4], 2);
}

TEST_F(VulcanRule, WhereItIsNotCalculatedNothingOfAChartBeforeStays) {
    for (const std::int16_t frame : {std::int16_t{1}, std::int16_t{2}}) {
        CalcChart& chart = calcChart[1];
        chart.Lat[4] = chart.Dist[4] = chart.LonSpeed[4] = chart.LatSpeed[4] = 5;
        chart.Retro[4] = kTrue;
        Place(100, -1, frame);
        EXPECT_EQ(chart.Lon[4], -1);
        EXPECT_EQ(chart.Lat[4], 0);
        EXPECT_EQ(chart.Dist[4], 0);
        EXPECT_EQ(chart.LonSpeed[4], 0);
        EXPECT_EQ(chart.LatSpeed[4], 0);
        EXPECT_EQ(chart.Retro[4], kFalse);
    }
}

TEST_F(StandardRoute, BothRulesOfVulcanServe) {
    Call call;
    const CalcChart weston = Calculate(kJ2000, call);
    call.weston = kFalse;
    const CalcChart& chart = Calculate(kJ2000, call);
    EXPECT_NE(chart.Lon[4], weston.Lon[4]);
    EXPECT_EQ(chart.LonSpeed[4], chart.LonSpeed[3]);
    EXPECT_LT(Apart(weston.Lon[4], weston.Lon[3]), 8.3);
}

}  // namespace
}  // namespace orvantis

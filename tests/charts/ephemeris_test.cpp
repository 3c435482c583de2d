#include <array>
#include <cmath>
#include <filesystem>
#include <gtest/gtest.h>
#include <limits>
#include <swephexp.h>

#include "charts/CALCCHRT.h"
#include "charts/QXASTRO.h"
#include "charts/SwissEph.h"
#include "charts/ephemeris_tables.h"
#include "charts/standard_route.h"
#include "support/angles.h"
#include "support/paths.h"
#include "support/reset_all.h"
#include "support/temp_folder.h"
#include "text/dates.h"
#include "text/numbers.h"

namespace orvantis {
namespace {

const std::string kTables = DataFile("");
constexpr double kJ2000 = 2451545.0;

class Ephemeris : public testing::Test {
  protected:
    void SetUp() override {
        ResetAll();
        OpenSwissEphemeris(kEphemeris, "");
    }
    void TearDown() override { CloseSwissEphemeris(); }

    const CalcChart& Calculate(double jd, std::int16_t frame = 1, Flag weston = kTrue,
                               double offset = 0) {
        CalcPlanets(1, 0, 0, JulianCenturies(jd), offset, 0, frame, kTrue, "", kTrue, weston);
        return calcChart[1];
    }
};

TEST_F(Ephemeris, DeltaTIsInHours) {
    double hours = 0;
    GetDeltaT(JulianCenturies(kJ2000), hours);
    // 63.83 seconds (Astronomical Almanac, K9).
    EXPECT_NEAR(hours * 3600, 63.83, 0.02);
}

TEST_F(Ephemeris, TheObliquityIsTheTrueOne) {
    double degrees = 0;
    GetObliquity(JulianCenturies(2446895.5), degrees);
    // Meeus, example 22.a: 23 26 36.850 with nutation (1980 theory; the newer one differs by some
    // hundredths of a second).
    EXPECT_NEAR(degrees, 23 + 26 / 60.0 + 36.850 / 3600, 0.1 / 3600);
}

TEST_F(Ephemeris, TheSiderealTimeIsTheApparentOneInHours) {
    double hours = 0;
    GetST(2446895.5, hours);
    // Meeus, example 12.a: 13 10 46.1351 (mean: 46.3668), by the nutation of 1980, which is some
    // hundredths of a second of arc off the newer one: 0.005 seconds of time.
    EXPECT_NEAR(hours, 13 + 10 / 60.0 + 46.1351 / 3600, 0.005 / 3600);
}

TEST_F(Ephemeris, TheRamcIsTheSiderealTimeLessTheWestLongitude) {
    double ramc = 0;
    GetRAMC(75, 6, ramc);
    EXPECT_EQ(ramc, 15);
    GetRAMC(120, 6, ramc);
    EXPECT_EQ(ramc, 330);
    GetRAMC(-180, 23, ramc);
    EXPECT_EQ(ramc, 165);
}

TEST_F(Ephemeris, TheJulianDayTakesHoursOutsideADay) {
    double jd = 0;
    GetJDxhUT(1, 1, 2000, 12, jd);
    EXPECT_EQ(jd, kJ2000);
    GetJDxhUT(1, 1, 2000, -12, jd);
    EXPECT_EQ(jd, kJ2000 - 1);
    GetJDxhUT(31, 12, 1999, 36, jd);
    EXPECT_EQ(jd, kJ2000);
}

TEST_F(Ephemeris, JDToDateTurnsEveryDayBack) {
    for (int start = -1000000; start < 4000000; start += 977) {
        const double jd = start - 0.5;
        float day = 0;
        std::int32_t month = 0;
        std::int32_t year = 0;
        JDToDate(jd, day, month, year);
        ASSERT_EQ(DateToJD(day, static_cast<std::int16_t>(month), static_cast<std::int16_t>(year)),
                  jd);
    }
}

TEST_F(Ephemeris, JDToDateChangesTheCalendarOnThe15thOfOctober1582) {
    float day = 0;
    std::int32_t month = 0;
    std::int32_t year = 0;
    JDToDate(2299160.5, day, month, year);
    EXPECT_EQ(day, 15);
    EXPECT_EQ(month, 10);
    EXPECT_EQ(year, 1582);
    JDToDate(2299159.5, day, month, year);
    EXPECT_EQ(day, 4);
    JDToDate(2299160.4999, day, month, year);
    EXPECT_EQ(std::floor(day), 4);
}

TEST_F(Ephemeris, JDToDateHasTheFractionAndNeverRoundsUpToTheNextDay) {
    float day = 0;
    std::int32_t month = 0;
    std::int32_t year = 0;
    JDToDate(2436116.31, day, month, year);  // Meeus, example 7.c
    EXPECT_NEAR(day, 4.81F, 1e-5);
    EXPECT_EQ(month, 10);
    EXPECT_EQ(year, 1957);
    JDToDate(2451210.5 - 1e-8, day, month, year);  // the end of 31 January 1999
    EXPECT_LT(day, 32);
    EXPECT_EQ(std::floor(day), 31);
    EXPECT_EQ(month, 1);
}

TEST_F(Ephemeris, JDToDateRefusesWhatIsNoDay) {
    for (const double jd : {1e9, -1e9, std::numeric_limits<double>::quiet_NaN(),
                            std::numeric_limits<double>::infinity()}) {
        float day = 1;
        std::int32_t month = 1;
        std::int32_t year = 1;
        JDToDate(jd, day, month, year);
        EXPECT_EQ(year, 0);
        RunTimeError failure;
        ASSERT_TRUE(TakeRunTimeError(failure));
        EXPECT_EQ(failure.number, error::kOverflow);
    }
}

TEST_F(Ephemeris, ConvertCoordsTurnsTheEclipticIntoTheEquator) {
    double a = 0;
    double d = 0;
    ConvertCoords(90, 0, SinD(23.44), CosD(23.44), a, d);
    EXPECT_NEAR(a, 90, 1e-12);
    EXPECT_NEAR(d, 23.44, 1e-12);
}

TEST_F(Ephemeris, TheEarthAndTheSouthNodeStandOpposite) {
    const CalcChart& chart = Calculate(kJ2000);
    EXPECT_LE(Apart(chart.Lon[2], chart.Lon[3] + 180), 1e-12);
    EXPECT_EQ(chart.Lat[2], -chart.Lat[3]);
    EXPECT_EQ(chart.LonSpeed[2], chart.LonSpeed[3]);
    EXPECT_EQ(chart.LatSpeed[2], -chart.LatSpeed[3]);
    EXPECT_LE(Apart(chart.Lon[21], chart.Lon[20] + 180), 1e-12);
    EXPECT_EQ(chart.LonSpeed[21], chart.LonSpeed[20]);
    EXPECT_EQ(chart.Retro[21], chart.Retro[20]);
}

TEST_F(Ephemeris, TheOffsetIsAddedToEveryLongitude) {
    const CalcChart tropical = Calculate(kJ2000);
    const CalcChart sidereal = Calculate(kJ2000, 1, kTrue, -24);
    int compared = 0;
    for (std::size_t n = 1; n <= 36; ++n) {
        if (tropical.Lon[n] < 0 || (n >= 22 && n <= 26)) continue;
        ++compared;
        EXPECT_LE(Apart(sidereal.Lon[n], tropical.Lon[n] - 24), 1e-9) << n;
    }
    EXPECT_GT(compared, 20);
}

TEST_F(Ephemeris, TheSpeedAcrossZeroAriesIsSmall) {
    // The Sun at the equinox of March 2000 (20 March, 7:35 UT).
    const CalcChart& chart = Calculate(2451623.8160);
    EXPECT_LE(Apart(chart.Lon[3], 0), 0.01);
    EXPECT_NEAR(chart.LonSpeed[3], 0.9935, 0.01);
}

TEST_F(Ephemeris, TheMotionFlagFollowsTheSpeed) {
    const CalcChart& chart = Calculate(kJ2000);
    int backward = 0;
    int forward = 0;
    for (std::size_t n = 1; n <= 36; ++n) {
        if (chart.Lon[n] < 0 || (n >= 22 && n <= 26)) continue;
        EXPECT_EQ(chart.Retro[n], chart.LonSpeed[n] < 0 ? kTrue : kFalse) << n;
        ++(chart.LonSpeed[n] < 0 ? backward : forward);
    }
    EXPECT_GT(backward, 0);
    EXPECT_GT(forward, 10);
}

TEST_F(Ephemeris, MoonSunAndEarthAreGivenForAnyRange) {
    CalcPlanets(1, 5, 6, JulianCenturies(kJ2000), 0, 0, 1, kTrue, "", kTrue, kTrue);
    for (const std::size_t n : {1U, 2U, 3U, 5U, 6U}) EXPECT_GT(calcChart[1].Lon[n], 0) << n;
    EXPECT_EQ(calcChart[1].Lon[4], 0);
    EXPECT_EQ(calcChart[1].Lon[7], 0);
}

TEST_F(Ephemeris, ARangeUpToTheSunLeavesAllOtherPoints) {
    CalcPlanets(1, 1, 3, JulianCenturies(kJ2000), 0, 0, 1, kTrue, "", kTrue, kFalse);
    EXPECT_GT(calcChart[1].Lon[1], 0);
    EXPECT_EQ(calcChart[1].Lon[4], 0);
    EXPECT_EQ(calcChart[1].Lon[5], 0);
}

TEST_F(Ephemeris, APointThatIsNotCalculatedKeepsNothingOfAChartBefore) {
    Calculate(kJ2000);
    const CalcChart& chart = Calculate(5373484.5);
    for (const std::size_t n : {1U, 2U, 3U, 5U, 7U, 12U}) {
        EXPECT_EQ(chart.Lon[n], -1) << n;
        EXPECT_EQ(chart.Lat[n], 0) << n;
        EXPECT_EQ(chart.Dist[n], 0) << n;
        EXPECT_EQ(chart.LonSpeed[n], 0) << n;
        EXPECT_EQ(chart.LatSpeed[n], 0) << n;
    }
}

TEST_F(Ephemeris, HeliocentricallyTheEarthStandsWhereTheSunIsSeenFrom) {
    const double sun = Calculate(kJ2000).Lon[3];
    const CalcChart& chart = Calculate(kJ2000, 2);
    // But for aberration, 20.5 seconds of arc.
    EXPECT_LE(Apart(chart.Lon[2], sun + 180), 0.006);
    EXPECT_LE(Apart(chart.Lon[3], sun), 0.006);
    EXPECT_EQ(chart.Frame, 2);
    // Mars against the library itself.
    double xx[6] = {};
    char ignored[AS_MAXCH] = {};
    swe_calc(kJ2000, SE_MARS, SEFLG_SPEED | SEFLG_HELCTR, xx, ignored);
    EXPECT_LE(Apart(chart.Lon[7], xx[0]), 1e-9);
}

// Mercury within three degrees of the Sun: Vulcan is the Sun's twin. Farther off it stands three
// degrees from Mercury on the Sun's side.
TEST_F(Ephemeris, VulcanKeepsThreeDegreesFromMercuryOnTheSunsSide) {
    int near = 0;
    int ahead = 0;
    int behind = 0;
    for (int days = 0; days < 400; ++days) {
        const CalcChart& chart = Calculate(kJ2000 + days, 1, kFalse);
        const double apart = std::remainder(chart.Lon[5] - chart.Lon[3], 360);
        if (std::abs(apart) < 3) {
            ++near;
            EXPECT_EQ(chart.Lon[4], chart.Lon[3]);
            EXPECT_EQ(chart.Lat[4], chart.Lat[3]);
        } else {
            ++(apart > 0 ? ahead : behind);
            EXPECT_LE(Apart(chart.Lon[4], chart.Lon[5] - (apart > 0 ? 3 : -3)), 1e-9);
            EXPECT_EQ(chart.Lat[4], chart.Lat[5]);
        }
        EXPECT_EQ(chart.LonSpeed[4], chart.LonSpeed[3]);
        EXPECT_EQ(chart.Retro[4], chart.Retro[3]);
    }
    EXPECT_GT(near, 10);
    EXPECT_GT(ahead, 100);
    EXPECT_GT(behind, 100);
}

TEST_F(Ephemeris, HeliocentricallyVulcanByMercuryStandsWithMercury) {
    const CalcChart& chart = Calculate(kJ2000, 2, kFalse);
    EXPECT_EQ(chart.Lon[4], chart.Lon[5]);
    EXPECT_EQ(chart.Lat[4], chart.Lat[5]);
}

// By Kepler's law the semi-axis 0.13744 has a period of 18.61 days, and seen from the Earth the
// planet never leaves the Sun by more than asin(0.13744 * 1.019 / 0.983) = 8.2 degrees.
TEST_F(Ephemeris, VulcanOnItsOwnOrbitStaysWithinEightDegreesOfTheSun) {
    double most = 0;
    for (int days = 0; days < 366; ++days) {
        const CalcChart& chart = Calculate(kJ2000 + days);
        most = std::max(most, Apart(chart.Lon[4], chart.Lon[3]));
    }
    EXPECT_LT(most, 8.3);
    EXPECT_GT(most, 7.5);
}

TEST_F(Ephemeris, AMinorPlanetWhoseFileIsNotInstalledComesFromTheTables) {
    CalcPlanets(1, 0, 0, JulianCenturies(kJ2000), 0, 0, 1, kTrue, kTables, kTrue, kTrue);
    const CalcChart swiss = calcChart[1];
    CalcPlanetsStandard(1, 1, 36, JulianCenturies(kJ2000), 0, 0, 1, kTrue, kTables, kTrue, kTrue);
    for (const std::size_t n : {18U, 19U}) {
        EXPECT_GT(swiss.Lon[n], 0) << n;
        EXPECT_LE(Apart(swiss.Lon[n], calcChart[1].Lon[n]), 1.0 / 3600) << n;
    }
    EXPECT_TRUE(TestShell().boxes.empty());
    EXPECT_NE(swissState.enabled, kFalse);
}

TEST_F(Ephemeris, WithoutTheTablesEitherItIsNotCalculated) {
    const CalcChart& chart = Calculate(kJ2000);
    EXPECT_EQ(chart.Lon[18], -1);
    EXPECT_EQ(chart.Lon[19], -1);
    EXPECT_TRUE(TestShell().boxes.empty());
    EXPECT_NE(swissState.enabled, kFalse);
}

// An installation of the planets' and the Moon's files alone.
TEST_F(Ephemeris, WithoutTheAsteroidsFileAloneTheTablesServeAllOfThem) {
    const TempFolder folder;
    for (const char* name : {"sepl_18.se1", "semo_18.se1"}) {
        std::filesystem::create_symlink(std::string(kEphemeris) + "/" + name, folder.File(name));
    }
    OpenSwissEphemeris(folder.Path().substr(0, folder.Path().size() - 1), kTables);
    EXPECT_TRUE(TestShell().boxes.empty());
    EXPECT_NE(swissState.enabled, kFalse);
    CalcPlanets(1, 0, 0, JulianCenturies(kJ2000), 0, 0, 1, kTrue, kTables, kTrue, kTrue);
    // swetest -pDIGHF -bj2451545 -fl; tables of whole seconds of arc.
    const double expected[] = {251.6175369, 245.9715642, 134.0432361, 277.9958051, 184.4528628};
    for (std::size_t i = 0; i < 5; ++i) {
        EXPECT_LE(Apart(calcChart[1].Lon[13 + i], expected[i]), 10.0 / 3600) << 13 + i;
    }
    EXPECT_GT(calcChart[1].Lon[18], 0);
    EXPECT_GT(calcChart[1].Lon[19], 0);

    // In years outside the tables their rule holds: one chart of 1799 doesn't end the route.
    calcChart[1].Lon[14] = 123;
    CalcPlanets(1, 0, 0, JulianCenturies(DateToJD(1, 1, 1799)), 0, 0, 1, kTrue, kTables, kTrue,
                kTrue);
    EXPECT_EQ(calcChart[1].Lon[13], 0);
    EXPECT_EQ(calcChart[1].Lon[14], 123) << "what it held";
    EXPECT_TRUE(TestShell().boxes.empty());
    EXPECT_NE(swissState.enabled, kFalse);
}

// The library's heliocentric places by its file, and the tables' of the same points: those are
// right to 2, 4, 9, 6 and 2 seconds of arc, and the nutation of four terms to half a one. Nutation
// and light time are up to 17 each. Distances have no light time: 1.4e-4 for Chiron.
TEST_F(Ephemeris, HeliocentricallyPointsFromTheTablesHaveNutationAndLightTimeLikeTheirNeighbours) {
    const double tolerances[] = {2, 4, 11, 8, 3};
    for (double jd = 2385000.25; jd < 2469000; jd += 7001) {
        CalcPlanets(1, 0, 0, JulianCenturies(jd), -24, 0, 2, kTrue, kTables, kTrue, kTrue);
        swissState.asteroidsMissing = kTrue;
        CalcPlanets(2, 0, 0, JulianCenturies(jd), -24, 0, 2, kTrue, kTables, kTrue, kTrue);
        swissState.asteroidsMissing = kFalse;
        for (std::size_t n = 13; n <= 17; ++n) {
            EXPECT_LE(Apart(calcChart[2].Lon[n], calcChart[1].Lon[n]) * 3600, tolerances[n - 13])
                << n << " at " << jd;
            EXPECT_NEAR(calcChart[2].Lat[n], calcChart[1].Lat[n], 10.0 / 3600) << n;
            EXPECT_NEAR(calcChart[2].Dist[n], calcChart[1].Dist[n], 2e-4) << n;
            EXPECT_NEAR(calcChart[2].LonSpeed[n], calcChart[1].LonSpeed[n], 5e-3) << n;
        }
        // Hygeia and Astraea have no file: the table's own place, with the two steps by hand.
        std::array<TablePosition, 8> bodies;
        ASSERT_TRUE(ReadTables(TableSeries::Asteroids, kTables, JulianCenturies(jd), bodies));
        double nutation = 0;
        double ignored = 0;
        Nutation((jd - kJ2000) / 36525, nutation, ignored);
        for (const std::size_t n : {18U, 19U}) {
            const TablePosition& body = bodies[n - 12];
            const double light = body.longitudeSpeed * body.distance * 0.0057755183;
            EXPECT_LE(Apart(calcChart[1].Lon[n], body.longitude + nutation - light - 24), 1e-6)
                << n << " at " << jd;
            EXPECT_NEAR(calcChart[1].Lat[n], body.latitude, 1e-12) << n;
            EXPECT_NEAR(calcChart[1].Dist[n], body.distance, 1e-12) << n;
        }
    }
    EXPECT_TRUE(TestShell().boxes.empty());
}

TEST_F(Ephemeris, ARangeThatBeginsAtTheSouthNodeHasItOppositeThisMomentsNorthNode) {
    const double north = Calculate(kJ2000).Lon[20];
    calcChart[1].Lon[20] = 1;
    CalcPlanets(1, 21, 21, JulianCenturies(kJ2000), 0, 0, 1, kTrue, "", kTrue, kTrue);
    EXPECT_LE(Apart(calcChart[1].Lon[21], north + 180), 1e-12);
    EXPECT_EQ(calcChart[1].Lon[20], north);
}

// The library's places of the hypothetical points.
std::array<double, 10> HypotheticalLongitudes() {
    std::array<double, 10> longitudes{};
    for (int body = 0; body < 9; ++body) {
        std::array<double, 6> xx{};
        std::array<char, AS_MAXCH> ignored{};
        swe_calc(kJ2000, SE_CUPIDO + body, SEFLG_SPEED, xx.data(), ignored.data());
        longitudes[static_cast<std::size_t>(body) + 1] = xx[0];
    }
    return longitudes;
}

TEST_F(Ephemeris, ElementsThatAUserHasEditedAreTakenAndTheKnownOnesAreOurOwn) {
    const std::string original = std::string(kEphemeris) + "/seorbel.txt";
    const Bytes bytes = FileBytes(original);
    const std::string text(bytes.begin(), bytes.end());
    const auto edited = [&text](const std::string& from, const std::string& to) {
        std::string other = text;
        other.replace(other.find(from), from.size(), to);
        return other;
    };
    std::string carriageReturns;
    for (const char c : text) carriageReturns += c == '\n' ? "\r\n" : std::string(1, c);
    const struct {
        std::string elements;
        bool other;
    } rows[] = {{text, false},
                {carriageReturns, false},
                {edited("27.6496,", "28.6496,"), true},
                {edited("165.5163,", "165.5163 + 0.1 * T,"), true},
                {edited("Apollon  #", "Apollon, geo #"), true},
                {edited("Nibiru", "another"), false},
                {"# none\n", true}};
    for (const auto& row : rows) {
        const TempFolder folder;
        for (const char* name : {"sepl_18.se1", "semo_18.se1", "seas_18.se1"}) {
            std::filesystem::create_symlink(std::string(kEphemeris) + "/" + name,
                                            folder.File(name));
        }
        folder.Write("seorbel.txt", row.elements);
        swissState.messages = kFalse;
        OpenSwissEphemeris(folder.Path().substr(0, folder.Path().size() - 1), "");
        EXPECT_EQ(swissState.otherElements != 0, row.other);
        const std::array<double, 10> expected = HypotheticalLongitudes();
        const CalcChart& chart = Calculate(kJ2000);
        for (std::size_t i = 1; i <= 9; ++i) {
            if (row.elements.size() < 100) continue;  // it has no orbit of them
            EXPECT_LE(Apart(chart.Lon[26 + i], expected[i]), row.other ? 1e-9 : 2e-7) << i;
        }
    }
}

// The files of the standard data reach from 5400 before Christ to 5400 after; only Chiron's orbit
// isn't known so far.
TEST_F(Ephemeris, HistoricalChartsAreCalculatedAsFarAsTheFilesReach) {
    struct Row {
        std::int16_t year;
        double sun;  // swetest -b1.1.YEARjul -p01 -fl
        double moon;
    };
    const Row kRows[] = {{1200, 287.2418763, 83.0729806},
                         {500, 282.1314333, 83.3014099},
                         {0, 278.4969766, 338.1834053},
                         {-2999, 257.5662409, 245.9289808},
                         {-5000, 242.3249530, 67.2394447}};
    for (const Row& row : kRows) {
        swissState.messages = kFalse;
        const CalcChart& chart = Calculate(DateToJD(1, 1, row.year));
        EXPECT_LE(Apart(chart.Lon[3], row.sun), 1e-6) << row.year;
        EXPECT_LE(Apart(chart.Lon[1], row.moon), 1e-6) << row.year;
        for (std::size_t n = 1; n <= 36; ++n) {
            if (n == 13 || n == 18 || n == 19 || (n >= 22 && n <= 26)) continue;
            EXPECT_GE(chart.Lon[n], 0) << n << " in " << row.year;
        }
        EXPECT_EQ(chart.Lon[13] > 0, row.year > 675) << row.year;
    }
    EXPECT_NE(swissState.enabled, kFalse);
}

TEST_F(Ephemeris, AChartOf1200IsCalculatedWithoutAMessage) {
    const CalcChart& chart = Calculate(DateToJD(1, 1, 1200));
    for (std::size_t n = 13; n <= 17; ++n) EXPECT_GT(chart.Lon[n], 0) << n;
    EXPECT_TRUE(TestShell().boxes.empty());
    EXPECT_NE(swissState.enabled, kFalse);
}

// The tables' rule holds on this route too: the years beyond them leave what the points held.
TEST_F(Ephemeris, OutsideTheTablesYearsPointsFromThemKeepWhatTheyHeld) {
    calcChart[1].Lon[18] = 123;
    const CalcChart& chart = Calculate(DateToJD(1, 1, 1200));
    EXPECT_EQ(chart.Lon[18], 123);
    EXPECT_GT(chart.Lon[13], 0) << "Chiron has its file";
}

// Without a file of a century the library takes its own theory.
TEST_F(Ephemeris, PlanetsWithoutAFileOfTheirCenturyComeFromTheLibrarysTheory) {
    const TempFolder folder;
    for (const char* name : {"sepl_18.se1", "semo_18.se1", "seas_18.se1"}) {
        std::filesystem::create_symlink(std::string(kEphemeris) + "/" + name, folder.File(name));
    }
    OpenSwissEphemeris(folder.Path().substr(0, folder.Path().size() - 1), kTables);
    swissState.messages = kFalse;
    const CalcChart& chart = Calculate(DateToJD(1, 1, 1200));
    const double sun = 287.2418763;  // swetest -b1.1.1200jul -p0 -fl
    EXPECT_NE(chart.Lon[3], sun);
    EXPECT_LE(Apart(chart.Lon[3], sun), 1.0 / 3600);
}

TEST_F(Ephemeris, FilesOfMinorPlanetsAreFoundInTheFolderOrInTheFolderOfTheirThousand) {
    const TempFolder folder;
    const std::string path = folder.Path().substr(0, folder.Path().size() - 1);
    swissState.messages = kFalse;
    OpenSwissEphemeris(path, "");
    EXPECT_EQ(swissState.hygeiaInstalled, kFalse);
    folder.Write("se00010s.se1", "");
    OpenSwissEphemeris(path, "");
    EXPECT_EQ(swissState.hygeiaInstalled, kTrue);
    EXPECT_EQ(swissState.astraeaInstalled, kFalse);
    std::filesystem::create_directory(folder.File("ast0"));
    folder.Write("ast0/se00005.se1", "");
    OpenSwissEphemeris(path, "");
    EXPECT_EQ(swissState.astraeaInstalled, kTrue);
}

TEST_F(Ephemeris, AFailureIsToldOnceAndTheStandardRouteServesTheRun) {
    // Year 10000: the library can't give the Moon, nor can the theories.
    const CalcChart& chart = Calculate(5373484.5);
    EXPECT_EQ(chart.Lon[1], -1);
    EXPECT_EQ(chart.Lon[2], -1);
    EXPECT_EQ(chart.Lon[3], -1);
    EXPECT_EQ(chart.Lon[7], -1);
    ASSERT_EQ(TestShell().log.size(), 1U);
    const std::string& call = TestShell().log[0];
    // The library's own words come first.
    EXPECT_TRUE(call.starts_with("MessageBox|Orvantis|SwissEph file 'se")) << call;
    EXPECT_TRUE(
        call.ends_with("\\r\\nSwiss Ephemeris file/s missing or incorrectly installed.|Ok|"
                       "Exclamation"))
        << call;
    EXPECT_EQ(swissState.enabled, kFalse);

    // The rest of the run: the very numbers of the standard route, and no message.
    const CalcChart after = Calculate(kJ2000);
    CalcPlanetsStandard(2, 1, 36, JulianCenturies(kJ2000), 0, 0, 1, kTrue, "", kTrue, kTrue);
    EXPECT_EQ(after.Lon, calcChart[2].Lon);
    EXPECT_EQ(TestShell().log.size(), 1U);
}

// Chiron's orbit isn't known before 675: its approaches to Saturn.
TEST_F(Ephemeris, ThePointThatFailsIsNotCalculatedAndThoseAfterItComeFromTheStandardRoute) {
    const double jd = DateToJD(1, 1, 500);
    const CalcChart chart = Calculate(jd);
    EXPECT_EQ(chart.Lon[13], -1);
    ASSERT_EQ(TestShell().boxes.size(), 1U);
    EXPECT_NE(TestShell().boxes[0].find("Chiron's ephemeris is restricted"), std::string::npos);
    EXPECT_EQ(swissState.enabled, kFalse);
    CalcPlanetsStandard(2, 1, 36, JulianCenturies(jd), 0, 0, 1, kTrue, "", kTrue, kTrue);
    EXPECT_EQ(chart.Lon[1], calcChart[2].Lon[1]) << "one file serves both routes";
    for (std::size_t n = 2; n <= 12; ++n) {
        EXPECT_NE(chart.Lon[n], calcChart[2].Lon[n]) << n << ", by the library's own steps";
    }
    for (const std::size_t n : {20U, 21U, 27U, 28U, 35U, 36U}) {
        EXPECT_EQ(chart.Lon[n], calcChart[2].Lon[n]) << n;
        EXPECT_GE(chart.Lon[n], 0) << n;
    }
}

TEST_F(Ephemeris, AFailureWithoutMessagesCostsThePointAlone) {
    swissState.messages = kFalse;
    const CalcChart& chart = Calculate(DateToJD(1, 1, 500));
    EXPECT_EQ(chart.Lon[13], -1);
    EXPECT_GT(chart.Lon[17], 0) << "Ceres, by the library's file";
    EXPECT_TRUE(TestShell().boxes.empty());
    EXPECT_NE(swissState.enabled, kFalse);
}

TEST_F(Ephemeris, MissingFilesAreToldByTheTrialAndTheStandardRouteServes) {
    const TempFolder folder;
    OpenSwissEphemeris(folder.Path().substr(0, folder.Path().size() - 1), DataFile(""));
    ASSERT_EQ(TestShell().boxes.size(), 1U);
    EXPECT_EQ(swissState.enabled, kFalse);
    const CalcChart& chart = Calculate(kJ2000);
    EXPECT_NEAR(chart.Lon[3], 280.3682336, 0.0002);  // swetest -p0 -bj2451545 -fl
    EXPECT_EQ(TestShell().boxes.size(), 1U);
}

TEST_F(Ephemeris, OpeningTheLibraryLeavesTheSlots) {
    calcChart[1].Lon[3] = 1;
    calcChart[2].Lon[3] = 2;
    calcChart[2].Name = "kept";
    OpenSwissEphemeris(kEphemeris, "");
    EXPECT_EQ(calcChart[1].Lon[3], 1);
    EXPECT_EQ(calcChart[2].Lon[3], 2);
    EXPECT_EQ(calcChart[2].Name, "kept");
}

}  // namespace
}  // namespace orvantis

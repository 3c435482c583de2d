#include "charts/ephemeris_tables.h"

#include <algorithm>
#include <array>
#include <chrono>
#include <cmath>
#include <filesystem>
#include <gtest/gtest.h>
#include <limits>
#include <swephexp.h>
#include <vector>

#include "session/files.h"
#include "session/session_state.h"
#include "support/paths.h"
#include "support/reset_all.h"
#include "support/temp_folder.h"
#include "text/bytes.h"
#include "text/numbers.h"

namespace orvantis {
namespace {

namespace fs = std::filesystem;

const std::string kData = DataFile("");
constexpr double kEpoch = 2415020.0;
using Places = std::array<TablePosition, 8>;

double ToT(double jd) {
    return JulianCenturies(jd);
}

double SecondsApart(double a, double b) {
    return std::abs(std::remainder(a - b, 360)) * 3600;
}

// A heliocentric geometric place by Swiss Ephemeris, mean equinox of date.
TablePosition Swiss(double jd, std::int32_t body, std::int32_t more = 0) {
    std::array<double, 6> xx{};
    std::array<char, AS_MAXCH> words{};
    const std::int32_t flags =
        SEFLG_SWIEPH | SEFLG_HELCTR | SEFLG_TRUEPOS | SEFLG_NONUT | SEFLG_SPEED | more;
    const std::int32_t used = swe_calc(jd, body, flags, xx.data(), words.data());
    EXPECT_NE(used & SEFLG_SWIEPH, 0) << words.data();
    return {xx[0], xx[1], xx[2], xx[3], xx[4], xx[5]};
}

class EphemerisTables : public ::testing::Test {
  protected:
    void SetUp() override {
        ResetAll();
        swe_set_ephe_path(kEphemeris);
    }
    void TearDown() override {
        // Nothing is ever told.
        EXPECT_TRUE(TestShell().boxes.empty());
        EXPECT_EQ(PendingRunTimeError(), 0);
        CloseEphemerisTables();
        swe_close();
    }
};

// ---- Names and days ----

TEST_F(EphemerisTables, FilesAreNamedByTheCenturyInTwoDigitsAndItsSign) {
    struct Row {
        double t;
        const char* asteroids;
        const char* outerPlanets;
    };
    for (const Row& row :
         {Row{-1.0, "AS18AD.EPH", "OP18AD.EPH"}, Row{-1.01, "AS17AD.EPH", "OP17AD.EPH"},
          Row{-1e-9, "AS18AD.EPH", "OP18AD.EPH"}, Row{0.0, "AS19AD.EPH", "OP19AD.EPH"},
          Row{0.999, "AS19AD.EPH", "OP19AD.EPH"}, Row{1.5, "AS20AD.EPH", "OP20AD.EPH"},
          Row{-10.0, "AS09AD.EPH", "OP09AD.EPH"}, Row{-19.0, "AS00AD.EPH", "OP00AD.EPH"},
          Row{-19.5, "AS01BC.EPH", "OP01BC.EPH"}, Row{-31.0, "AS12BC.EPH", "OP12BC.EPH"},
          Row{80.5, "AS99AD.EPH", "OP99AD.EPH"}, Row{-118.0, "AS99BC.EPH", "OP99BC.EPH"}}) {
        std::int16_t century = 0;
        ASSERT_TRUE(TableCentury(row.t, century)) << row.t;
        EXPECT_EQ(TableFileName(TableSeries::Asteroids, century), row.asteroids);
        EXPECT_EQ(TableFileName(TableSeries::OuterPlanets, century), row.outerPlanets);
    }
}

TEST_F(EphemerisTables, ACenturyOfMoreThanTwoDigitsHasNoFile) {
    for (const double t : {81.0, -118.1, 1e300, -1e300, std::numeric_limits<double>::infinity(),
                           std::numeric_limits<double>::quiet_NaN()}) {
        std::int16_t century = 7;
        EXPECT_FALSE(TableCentury(t, century)) << t;
        EXPECT_EQ(century, 7);
        Places places;
        EXPECT_FALSE(ReadTables(TableSeries::OuterPlanets, kData, t, places)) << t;
        EXPECT_FALSE(ReadTables(TableSeries::Asteroids, kData, t, places)) << t;
    }
}

// By hand: the century of 1800 begins on day -36525, that of 2000 on day 36525.
TEST_F(EphemerisTables, AFileBeginsOneStepBeforeTheGridDayOfItsCenturysStart) {
    EXPECT_EQ(FirstTableDay(TableSeries::Asteroids, 18), -36560);
    EXPECT_EQ(FirstTableDay(TableSeries::Asteroids, 19), -20);
    EXPECT_EQ(FirstTableDay(TableSeries::Asteroids, 20), 36500);
    EXPECT_EQ(FirstTableDay(TableSeries::OuterPlanets, 18), -36600);
    EXPECT_EQ(FirstTableDay(TableSeries::OuterPlanets, 19), -40);
    EXPECT_EQ(FirstTableDay(TableSeries::OuterPlanets, 20), 36480);
}

// ---- Interpolation ----

// A table of bodies that are all alike; `rows` are longitude, latitude and distance of its records.
Bytes Table(TableSeries series, const std::vector<std::array<std::int32_t, 3>>& rows) {
    Bytes bytes;
    for (const auto& row : rows) {
        for (std::size_t body = 0; body < ephemeris_table::Bodies(series); ++body) {
            for (const std::int32_t value : row) {
                bytes.resize(bytes.size() + 4);
                PutI32(&bytes[bytes.size() - 4], value);
            }
        }
    }
    return bytes;
}

// By hand: y1, y2, y3 = 0, 3600, 10800 seconds: a = 1, b = 2, c = 1 degrees; at n = 0.25
// y = 1 + 0.25 * (3 + 0.25) / 2 = 1.40625, speed (0.75 + 1) / 20.
TEST_F(EphemerisTables, ThreeRecordsAreInterpolatedByTheirSecondDifference) {
    const TempFolder folder;
    folder.Write("AS19AD.EPH",
                 Table(TableSeries::Asteroids,
                       {{0, -3600, 1000000}, {3600, 0, 2000000}, {10800, 0, 2000000}}));
    Places places;
    ASSERT_TRUE(ReadTables(TableSeries::Asteroids, folder.Path(), ToT(kEpoch + 5), places));
    for (std::size_t body = 1; body <= 7; ++body) {
        EXPECT_NEAR(places[body].longitude, 1.40625, 1e-12);
        EXPECT_NEAR(places[body].longitudeSpeed, 0.0875, 1e-12);
        // a = 1, b = 0, c = -1: y = 0 + 0.25 * (1 - 0.25) / 2, speed (-0.75 + 1) / 20.
        EXPECT_NEAR(places[body].latitude, 0.09375, 1e-12);
        EXPECT_NEAR(places[body].latitudeSpeed, 0.0125, 1e-12);
        EXPECT_NEAR(places[body].distance, 2.09375, 1e-12);
        EXPECT_NEAR(places[body].distanceSpeed, 0.0125, 1e-12);
    }
}

TEST_F(EphemerisTables, LongitudesGoOnAcross0Aries) {
    struct Row {
        std::array<std::int32_t, 3> seconds;
        double longitude;  // at n = 0.5
        double speed;
    };
    constexpr std::int32_t kTurn = 1296000;
    for (const Row& row :
         {Row{{kTurn - 3600, 0, 3600}, 0.5, 1 / 40.0},
          Row{{kTurn - 7200, kTurn - 3600, 0}, 359.5, 1 / 40.0},
          Row{{3600, 0, kTurn - 3600}, 359.5, -1 / 40.0}, Row{{7200, 3600, 0}, 0.5, -1 / 40.0}}) {
        const TempFolder folder;
        folder.Write("OP19AD.EPH", Table(TableSeries::OuterPlanets, {{row.seconds[0], 0, 0},
                                                                     {row.seconds[1], 0, 0},
                                                                     {row.seconds[2], 0, 0}}));
        Places places;
        ASSERT_TRUE(ReadTables(TableSeries::OuterPlanets, folder.Path(), ToT(kEpoch + 20), places));
        EXPECT_NEAR(places[5].longitude, row.longitude, 1e-12);
        EXPECT_NEAR(places[5].longitudeSpeed, row.speed, 1e-12);
    }
}

TEST_F(EphemerisTables, ARecordsOwnDayHasItsValues) {
    Bytes bytes = FileBytes(std::string(kData) + "AS19AD.EPH");
    ASSERT_EQ(bytes.size(), 153636U);
    Places places;
    for (const std::size_t record : {1U, 2U, 777U, 1826U}) {
        const double day = -20.0 + 20.0 * static_cast<double>(record);
        ASSERT_TRUE(ReadTables(TableSeries::Asteroids, kData, ToT(kEpoch + day), places));
        for (std::size_t body = 1; body <= 7; ++body) {
            const std::uint8_t* p = &bytes[record * 84 + (body - 1) * 12];
            EXPECT_NEAR(places[body].longitude, GetI32(p) / 3600.0, 1e-6);
            EXPECT_NEAR(places[body].latitude, GetI32(p + 4) / 3600.0, 1e-6);
            EXPECT_NEAR(places[body].distance, GetI32(p + 8) / 1e6, 1e-7);
        }
    }
}

// A leap of a second of arc would become a speed of 0.4 degrees a day between two moments that are
// a minute apart. The tables' speeds are at most 0.4 degrees a day, 1 second of arc a minute.
TEST_F(EphemerisTables, PositionsDoNotLeapFromRecordToRecordNorFromFileToFile) {
    constexpr double kMinute = 1 / 1440.0;
    for (const double day : {-36520.0, -36500.0, -20.0, 0.0, 20.0, 10000.0, 36520.0, 36525.0}) {
        Places before;
        Places after;
        ASSERT_TRUE(ReadTables(TableSeries::Asteroids, kData, (day - kMinute / 2) / 36525, before));
        ASSERT_TRUE(ReadTables(TableSeries::Asteroids, kData, (day + kMinute / 2) / 36525, after));
        for (std::size_t body = 1; body <= 7; ++body) {
            const double moved =
                std::remainder(after[body].longitude - before[body].longitude, 360) / kMinute;
            EXPECT_NEAR(moved, before[body].longitudeSpeed, 0.01) << day << ' ' << body;
            EXPECT_NEAR((after[body].latitude - before[body].latitude) / kMinute,
                        before[body].latitudeSpeed, 0.01)
                << day << ' ' << body;
        }
    }
}

// ---- The shipped tables ----

struct BodyRow {
    std::size_t number;
    std::int32_t body;
    double seconds;     // of arc, longitude (on the sky) and latitude
    double millionths;  // of an astronomical unit
    double speed;       // degrees a day
};

// Source: Swiss Ephemeris. Tolerances: the largest differences that the builder found in scans of
// 1.37 days (data/README.md), rounded up. Of a speed the parabola is off by up to a third of the
// third difference over a step, which is ten times the largest error of the position; rounding adds
// 0.15 seconds of arc a day at most.
const BodyRow kBodyRows[] = {{1, SE_CHIRON, 0.65, 1.2, 4.5e-5},
                             {2, SE_VESTA, 2.1, 8, 2.9e-4},
                             {3, SE_PALLAS, 15, 21, 2.7e-3},
                             {4, SE_JUNO, 9.4, 27, 1.4e-3},
                             {5, SE_CERES, 1.5, 5, 2.2e-4}};

TEST_F(EphemerisTables, BodiesOfSwissEphemerisAreWithinTheStatedErrorBetweenRecords) {
    // An odd step that shares nothing with the grid: every part of a step between records is met.
    int moments = 0;
    for (double day = -36525; day <= 54787.5; day += 211.7331) {
        Places places;
        ASSERT_TRUE(ReadTables(TableSeries::Asteroids, kData, day / 36525, places)) << day;
        ++moments;
        for (const BodyRow& row : kBodyRows) {
            const TablePosition right = Swiss(kEpoch + day, row.body);
            const TablePosition& read = places[row.number];
            EXPECT_LE(SecondsApart(read.longitude, right.longitude) * CosD(right.latitude),
                      row.seconds)
                << row.number << ' ' << day;
            EXPECT_NEAR(read.latitude, right.latitude, row.seconds / 3600) << row.number;
            EXPECT_NEAR(read.distance, right.distance, row.millionths / 1e6) << row.number;
            EXPECT_NEAR(read.longitudeSpeed, right.longitudeSpeed, row.speed) << row.number;
            EXPECT_NEAR(read.latitudeSpeed, right.latitudeSpeed, row.speed) << row.number;
        }
    }
    EXPECT_EQ(moments, 432);
}

// Source: the elements of JD 2459800.5 (JPL Small-Body Database), an ellipse by hand, brought from
// J2000 to that day by the precession of J. H. Lieske, 1977 (J. Meeus, Astronomical Algorithms,
// chapter 21). Tolerance: the stated error, and 0.1 seconds between the two theories of precession.
TEST_F(EphemerisTables, HygeiaAndAstraeaStandWhereTheirElementsSayOnTheirDay) {
    Places places;
    ASSERT_TRUE(ReadTables(TableSeries::Asteroids, kData, ToT(2459800.5), places));
    EXPECT_LE(SecondsApart(places[6].longitude, 241.45839385), 1.3);
    EXPECT_NEAR(places[6].latitude, -2.57005499, 0.9 / 3600);
    EXPECT_NEAR(places[6].distance, 2.792377805, 5e-6);
    EXPECT_LE(SecondsApart(places[7].longitude, 340.62946559), 4.6);
    EXPECT_NEAR(places[7].latitude, -1.72958449, 2.2 / 3600);
    EXPECT_NEAR(places[7].distance, 3.02205995, 17e-6);
}

// The mean motions of the same elements, 0.17705 and 0.23818 degrees a day: over 250 years the
// perturbations average out, and the inequalities of Jupiter stay within a degree.
TEST_F(EphemerisTables, HygeiaAndAstraeaKeepToTheirOrbitsOverAllTheTables) {
    struct Row {
        std::size_t number;
        double nearest;
        double farthest;
        double steepest;
    };
    for (const Row& row : {Row{6, 2.74, 3.56, 4.0}, Row{7, 2.04, 3.11, 5.6}}) {
        double nearest = 9;
        double farthest = 0;
        double steepest = 0;
        for (double day = -36525; day <= 54787.5; day += 33.3) {
            Places places;
            ASSERT_TRUE(ReadTables(TableSeries::Asteroids, kData, day / 36525, places));
            const TablePosition& read = places[row.number];
            nearest = std::min(nearest, read.distance);
            farthest = std::max(farthest, read.distance);
            steepest = std::max(steepest, std::abs(read.latitude));
            // Kepler's second law, within the perturbations' changes of the orbit.
            EXPECT_GT(read.longitudeSpeed * read.distance * read.distance, 0);
        }
        EXPECT_GT(nearest, row.nearest);
        EXPECT_LT(nearest, row.nearest + 0.15);
        EXPECT_LT(farthest, row.farthest);
        EXPECT_GT(farthest, row.farthest - 0.15);
        EXPECT_LT(steepest, row.steepest);
        EXPECT_GT(steepest, row.steepest - 0.4);
    }
}

TEST_F(EphemerisTables, AsteroidsServeFromTMinus1To1AndAHalfWithBothEnds) {
    Places places;
    EXPECT_TRUE(ReadTables(TableSeries::Asteroids, kData, -1.0, places));
    EXPECT_TRUE(ReadTables(TableSeries::Asteroids, kData, 1.5, places));
    places[1].longitude = 77;
    EXPECT_FALSE(ReadTables(TableSeries::Asteroids, kData, -1.01, places));
    EXPECT_FALSE(ReadTables(TableSeries::Asteroids, kData, std::nextafter(-1.0, -2.0), places));
    EXPECT_FALSE(ReadTables(TableSeries::Asteroids, kData, std::nextafter(1.5, 2.0), places));
    EXPECT_EQ(places[1].longitude, 77);
}

TEST_F(EphemerisTables, OutsideTheRangeNoAsteroidFileIsReadEvenIfThereIsOne) {
    const TempFolder folder;
    folder.Write("AS17AD.EPH", Bytes(200000));
    Places places;
    EXPECT_FALSE(ReadTables(TableSeries::Asteroids, folder.Path(), -1.01, places));
}

// ---- Outer planets ----

// A file of a century as a user may have one, by Swiss Ephemeris.
Bytes OuterPlanetTable(std::int16_t century) {
    Bytes bytes;
    const std::int32_t first = FirstTableDay(TableSeries::OuterPlanets, century);
    for (std::int32_t day = first; day <= first + 36525 + 120; day += 40) {
        for (std::int32_t body = SE_JUPITER; body <= SE_PLUTO; ++body) {
            const TablePosition place = Swiss(kEpoch + day, body);
            bytes.resize(bytes.size() + 12);
            PutI32(&bytes[bytes.size() - 12], RoundToInt32(place.longitude * 3600));
            PutI32(&bytes[bytes.size() - 8], RoundToInt32(place.latitude * 3600));
            PutI32(&bytes[bytes.size() - 4], RoundToInt32(place.distance * 1e6));
        }
    }
    return bytes;
}

// Source: Swiss Ephemeris at moments between the records. Tolerance: rounding to whole seconds,
// 0.63 between records; and 0.064 of Jupiter's third difference, e 0.05 and 3.3 degrees a step:
// 2 * 0.05 * 0.058^3 radians = 4.0 seconds, 0.3.
TEST_F(EphemerisTables, OuterPlanetsOfAFileInTheFolderAreReadBetweenRecords) {
    const TempFolder folder;
    folder.Write("OP19AD.EPH", OuterPlanetTable(19));
    folder.Write("OP20AD.EPH", OuterPlanetTable(20));
    for (double day = 0; day <= 70000; day += 1234.567) {
        Places places;
        places[6].longitude = 77;
        ASSERT_TRUE(ReadTables(TableSeries::OuterPlanets, folder.Path(), day / 36525, places));
        for (std::size_t n = 1; n <= 5; ++n) {
            const TablePosition right =
                Swiss(kEpoch + day, SE_JUPITER + static_cast<std::int32_t>(n) - 1);
            EXPECT_LE(SecondsApart(places[n].longitude, right.longitude), 1.0) << n << ' ' << day;
            EXPECT_NEAR(places[n].latitude, right.latitude, 0.7 / 3600) << n << ' ' << day;
            EXPECT_NEAR(places[n].distance, right.distance, 1e-5) << n << ' ' << day;
        }
        EXPECT_EQ(places[6].longitude, 77);
    }
}

// ---- Files ----

// Names of the table files that this process has open.
std::vector<std::string> OpenTables() {
    std::vector<std::string> names;
    for (const auto& entry : fs::directory_iterator("/proc/self/fd")) {
        std::error_code gone;
        const std::string name = fs::read_symlink(entry.path(), gone).filename().string();
        if (name.find(".EPH") != std::string::npos || name.find(".eph") != std::string::npos) {
            names.push_back(name);
        }
    }
    std::sort(names.begin(), names.end());
    return names;
}

TEST_F(EphemerisTables, ACenturyChangeBetweenTwoCallsClosesOneFileAndOpensTheNext) {
    Places places;
    ASSERT_TRUE(ReadTables(TableSeries::Asteroids, kData, -0.5, places));
    EXPECT_EQ(OpenTables(), std::vector<std::string>{"AS18AD.EPH"});
    ASSERT_TRUE(ReadTables(TableSeries::Asteroids, kData, -0.4, places));
    EXPECT_EQ(OpenTables(), std::vector<std::string>{"AS18AD.EPH"});
    ASSERT_TRUE(ReadTables(TableSeries::Asteroids, kData, 0.5, places));
    EXPECT_EQ(OpenTables(), std::vector<std::string>{"AS19AD.EPH"});
    CloseEphemerisTables();
    EXPECT_TRUE(OpenTables().empty());
}

TEST_F(EphemerisTables, AFileServesFromTheCallThatOpenedItUntilTheCenturyChanges) {
    const TempFolder folder;
    fs::copy(std::string(kData) + "AS19AD.EPH", folder.File("AS19AD.EPH"));
    fs::copy(std::string(kData) + "AS20AD.EPH", folder.File("AS20AD.EPH"));
    Places places;
    ASSERT_TRUE(ReadTables(TableSeries::Asteroids, folder.Path(), 0.5, places));
    fs::remove(folder.File("AS19AD.EPH"));
    EXPECT_TRUE(ReadTables(TableSeries::Asteroids, folder.Path(), 0.6, places));
    EXPECT_TRUE(ReadTables(TableSeries::Asteroids, folder.Path(), 1.2, places));
    EXPECT_FALSE(ReadTables(TableSeries::Asteroids, folder.Path(), 0.6, places));
}

TEST_F(EphemerisTables, EachSeriesKeepsItsOwnFileOpen) {
    const TempFolder folder;
    fs::copy(std::string(kData) + "AS19AD.EPH", folder.File("AS19AD.EPH"));
    folder.Write("OP19AD.EPH", Bytes(60000));
    Places places;
    ASSERT_TRUE(ReadTables(TableSeries::Asteroids, folder.Path(), 0.5, places));
    ASSERT_TRUE(ReadTables(TableSeries::OuterPlanets, folder.Path(), 0.5, places));
    EXPECT_EQ(OpenTables(), (std::vector<std::string>{"AS19AD.EPH", "OP19AD.EPH"}));
}

TEST_F(EphemerisTables, ATableIsOpenedAnewWhenAllFilesWereClosedAndItsHandleServesAnother) {
    const TempFolder folder;
    const std::string other = folder.Write("other.bin", Bytes(200000, 0x11));
    Places before;
    ASSERT_TRUE(ReadTables(TableSeries::Asteroids, kData, 0.5, before));
    CloseAllFiles();
    const FileHandle handle = FileOpener(other, open_mode::kBinary, 0, kFalse);
    ASSERT_NE(handle, 0);
    Places after;
    ASSERT_TRUE(ReadTables(TableSeries::Asteroids, kData, 0.5, after));
    EXPECT_EQ(after[3].longitude, before[3].longitude);
    // Nor is the other file closed with the tables.
    CloseEphemerisTables();
    EXPECT_EQ(FileLength(handle), 200000);
}

TEST_F(EphemerisTables, TheResetOfTheTestsClosesThem) {
    Places places;
    ASSERT_TRUE(ReadTables(TableSeries::Asteroids, kData, 0.5, places));
    ResetAll();
    EXPECT_TRUE(OpenTables().empty());
}

TEST_F(EphemerisTables, AnotherFolderIsAnotherFile) {
    const TempFolder folder;
    folder.Write("AS19AD.EPH", Bytes(200000));
    Places places;
    ASSERT_TRUE(ReadTables(TableSeries::Asteroids, kData, 0.5, places));
    EXPECT_GT(places[3].distance, 1);
    ASSERT_TRUE(ReadTables(TableSeries::Asteroids, folder.Path(), 0.5, places));
    EXPECT_EQ(places[3].distance, 0);
}

TEST_F(EphemerisTables, AMissingFileIsFalseWithoutAWord) {
    const TempFolder folder;
    Places places;
    places[1].longitude = 77;
    EXPECT_FALSE(ReadTables(TableSeries::Asteroids, folder.Path(), 0.5, places));
    EXPECT_FALSE(ReadTables(TableSeries::OuterPlanets, folder.Path(), 0.5, places));
    EXPECT_FALSE(ReadTables(TableSeries::OuterPlanets, folder.Path() + "none/", 0.5, places));
    TablePosition pluto;
    EXPECT_FALSE(PlutoFromElements(folder.Path(), 2451545, pluto));
    EXPECT_EQ(places[1].longitude, 77);
}

TEST_F(EphemerisTables, AFolderInPlaceOfTheFileIsFalse) {
    const TempFolder folder;
    fs::create_directory(folder.File("AS19AD.EPH"));
    Places places;
    EXPECT_FALSE(ReadTables(TableSeries::Asteroids, folder.Path(), 0.5, places));
}

TEST_F(EphemerisTables, AFileThatComesLaterServesFromThenOn) {
    const TempFolder folder;
    Places places;
    EXPECT_FALSE(ReadTables(TableSeries::Asteroids, folder.Path(), 0.5, places));
    fs::copy(std::string(kData) + "AS19AD.EPH", folder.File("as19ad.eph"));
    EXPECT_TRUE(ReadTables(TableSeries::Asteroids, folder.Path(), 0.5, places));
}

// The folder's date is set back, since a file that was missed is looked for again on each call
// while its folder has changed within the last seconds.
TEST_F(EphemerisTables, AFileThatWasMissedIsLookedForAgainOnceItsFolderHasChanged) {
    const TempFolder folder;
    const auto before = fs::file_time_type::clock::now() - std::chrono::hours(1);
    fs::last_write_time(folder.Path(), before);
    Places places;
    EXPECT_FALSE(ReadTables(TableSeries::Asteroids, folder.Path(), 0.5, places));
    fs::copy(std::string(kData) + "AS19AD.EPH", folder.File("AS19AD.EPH"));
    fs::last_write_time(folder.Path(), before);
    EXPECT_FALSE(ReadTables(TableSeries::Asteroids, folder.Path(), 0.5, places));
    fs::last_write_time(folder.Path(), before + std::chrono::minutes(1));
    EXPECT_TRUE(ReadTables(TableSeries::Asteroids, folder.Path(), 0.5, places));
    // Once it has been found, the folder no longer matters.
    fs::last_write_time(folder.Path(), before);
    EXPECT_TRUE(ReadTables(TableSeries::Asteroids, folder.Path(), 0.5, places));
}

TEST_F(EphemerisTables, WhatTheFolderLacksComesFromTheShippedFilesAndItsOwnComeFirst) {
    const TempFolder folder;
    session.ShippedDir = kData;
    Places places;
    ASSERT_TRUE(ReadTables(TableSeries::Asteroids, folder.Path(), 0.5, places));
    EXPECT_GT(places[3].distance, 1);
    EXPECT_FALSE(ReadTables(TableSeries::OuterPlanets, folder.Path(), 0.5, places));
    folder.Write("AS20AD.EPH", Bytes(200000));
    ASSERT_TRUE(ReadTables(TableSeries::Asteroids, folder.Path(), 1.2, places));
    EXPECT_EQ(places[3].distance, 0);
}

TEST_F(EphemerisTables, ATruncatedFileServesAsFarAsItHasThreeRecords) {
    const TempFolder folder;
    Bytes bytes = FileBytes(std::string(kData) + "AS19AD.EPH");
    bytes.resize(84 * 10 + 83);  // the last whole record is that of day 160
    folder.Write("AS19AD.EPH", bytes);
    Places places;
    EXPECT_TRUE(ReadTables(TableSeries::Asteroids, folder.Path(), 159.9 / 36525, places));
    EXPECT_FALSE(ReadTables(TableSeries::Asteroids, folder.Path(), 160.1 / 36525, places));
}

TEST_F(EphemerisTables, NumbersThatMakeNoSenseStayFinite) {
    const TempFolder folder;
    constexpr std::int32_t kMost = std::numeric_limits<std::int32_t>::max();
    constexpr std::int32_t kLeast = std::numeric_limits<std::int32_t>::min();
    folder.Write("AS19AD.EPH",
                 Table(TableSeries::Asteroids,
                       {{kMost, kLeast, kMost}, {kLeast, kMost, kLeast}, {kMost, kLeast, kMost}}));
    Places places;
    ASSERT_TRUE(ReadTables(TableSeries::Asteroids, folder.Path(), 10 / 36525.0, places));
    EXPECT_TRUE(places[7].longitude >= 0 && places[7].longitude <= 360);
    EXPECT_TRUE(std::isfinite(places[7].latitude) && std::isfinite(places[7].distance));
}

// ---- Pluto ----

// Sources: Kepler's equation and the turn of an orbit's plane, calculated apart from this routine
// by rotation of vectors; the first row's eccentric anomaly is J. Meeus' example (5.554589
// degrees), its true anomaly 6.1397615. The anomaly is sought to 1e-6 radians, which leaves
// 1e-6 e / (1 - e) of it: 6e-5 degrees at most.
TEST_F(EphemerisTables, TheKeplerStepFindsThePlaceInTheOrbit) {
    struct Row {
        OrbitElements elements;
        double longitude;
        double latitude;
        double distance;
    };
    for (const Row& row :
         {Row{{5, 75, 20, 0, 0.1, 10}, 76.1397615, 0, 9.0046956},
          Row{{5, 75, 20, 30, 0.1, 10}, 72.2327667, 24.5318851, 9.0046956},
          Row{{200, 100, 110, 17, 0.25, 39.5}, 93.1806895, -5.0554834, 48.9904732},
          Row{{350, 10, 300, 60, 0.5, 2}, 327.9143220, 39.0372415, 1.0580530},
          Row{{90, 0, 0, 0, 0, 1}, 0, 0, 1},
          Row{{120, 250, 90, 17.14, 0.2488, 39.48}, 270.8548060, -0.2636144, 45.8973123}}) {
        TablePosition place;
        ASSERT_TRUE(KeplerStep(row.elements, place));
        EXPECT_LE(SecondsApart(place.longitude, row.longitude) / 3600, 6e-5) << row.longitude;
        EXPECT_NEAR(place.latitude, row.latitude, 6e-5);
        EXPECT_NEAR(place.distance, row.distance, 1e-5);
    }
}

TEST_F(EphemerisTables, WhatIsNoEllipseHasNoPlace) {
    TablePosition place;
    place.longitude = 77;
    EXPECT_FALSE(KeplerStep({5, 75, 20, 0, 1, 10}, place));
    EXPECT_FALSE(KeplerStep({5, 75, 20, 0, -0.1, 10}, place));
    EXPECT_FALSE(KeplerStep({5, 75, 20, 0, 0.1, 0}, place));
    EXPECT_FALSE(KeplerStep({5, 75, 20, 0, 0.1, -3}, place));
    EXPECT_FALSE(KeplerStep({5, 75, 20, 0, std::nan(""), 10}, place));
    EXPECT_EQ(place.longitude, 77);
}

// By hand: (JD + 49959.5) / 120000 reaches 20 at 2350040.5; with 40 more it reaches 21 at
// 2470000.5.
TEST_F(EphemerisTables, ElementsFilesAreNumberedBy120000DaysAndOneIsFortyDaysShort) {
    EXPECT_EQ(PlutoFileName(2451545.0), "pluelm21.eph");
    EXPECT_EQ(PlutoFileName(2350040.4), "pluelm20.eph");
    EXPECT_EQ(PlutoFileName(2350040.5), "pluelm21.eph");
    EXPECT_EQ(PlutoFileName(2470000.4), "pluelm21.eph");
    EXPECT_EQ(PlutoFileName(2470000.5), "pluelm22.eph");
    EXPECT_EQ(PlutoFileName(0), "pluelm01.eph");
    EXPECT_EQ(PlutoFileName(1e9), "");
    EXPECT_EQ(PlutoFileName(-1e9), "");
    EXPECT_EQ(PlutoFileName(std::nan("")), "");
}

void Append(Bytes& bytes, std::array<std::int32_t, 6> words) {
    for (const std::int32_t word : words) {
        bytes.resize(bytes.size() + 4);
        PutI32(&bytes[bytes.size() - 4], word);
    }
}

// Osculating elements of Pluto by Swiss Ephemeris, ecliptic of J2000.
std::array<std::int32_t, 6> PlutoWords(double jd, double eccentricityUnits) {
    std::array<double, 50> elements{};
    std::array<char, AS_MAXCH> words{};
    EXPECT_NE(swe_get_orbital_elements(jd, SE_PLUTO, SEFLG_SWIEPH | SEFLG_HELCTR | SEFLG_J2000,
                                       elements.data(), words.data()),
              ERR)
        << words.data();
    return {RoundToInt32(elements[6] * 1e4),
            RoundToInt32(elements[9] * 1e4),
            RoundToInt32(elements[3] * 1e4),
            RoundToInt32(elements[2] * 1e4),
            RoundToInt32(elements[1] * eccentricityUnits),
            RoundToInt32(elements[0] * 1e6)};
}

// Source: Swiss Ephemeris. Tolerance: a unit of the angles is 0.36 seconds of arc; the units of the
// eccentricity, 0.02, are stretched by the anomaly; the elements' change is straight within 0.3
// seconds over 20 days.
TEST_F(EphemerisTables, PlutoComesFromTheElementsOfTheTwoRecordsAroundTheMoment) {
    constexpr double kFirst = 2451000.5;
    constexpr std::int32_t kStep = 20;
    for (const double units : {1e7, 1e8}) {
        const TempFolder folder;
        Bytes bytes;
        Append(bytes, {RoundToInt32(kFirst * 100), kStep, 0, 0, 0, 0});
        for (int i = 0; i <= 50; ++i) Append(bytes, PlutoWords(kFirst + i * kStep, units));
        folder.Write("pluelm21.eph", bytes);
        for (double jd = kFirst; jd < kFirst + 999; jd += 37.77) {
            TablePosition pluto;
            ASSERT_TRUE(PlutoFromElements(folder.Path(), jd, pluto)) << jd;
            const TablePosition right = Swiss(jd, SE_PLUTO, SEFLG_J2000);
            EXPECT_LE(SecondsApart(pluto.longitude, right.longitude), 1.0) << jd;
            EXPECT_NEAR(pluto.latitude, right.latitude, 1.0 / 3600) << jd;
            EXPECT_NEAR(pluto.distance, right.distance, 2e-4) << jd;
            EXPECT_EQ(pluto.longitudeSpeed, 0);
        }
        CloseEphemerisTables();
    }
}

TEST_F(EphemerisTables, PlutoIsGivenFromTheFirstRecordUpToTheLast) {
    const TempFolder folder;
    Bytes bytes;
    Append(bytes, {245154500, 40, 0, 0, 0, 0});
    Append(bytes, {0, 3599000, 0, 0, 0, 40000000});
    Append(bytes, {0, 1000, 0, 0, 0, 40000000});
    folder.Write("pluelm21.eph", bytes);
    TablePosition pluto;
    EXPECT_FALSE(PlutoFromElements(folder.Path(), 2451544.9, pluto));
    EXPECT_TRUE(PlutoFromElements(folder.Path(), 2451545.0, pluto));
    EXPECT_NEAR(pluto.longitude, 359.9, 1e-9);
    // The mean longitude goes the short way, across 0 Aries.
    EXPECT_TRUE(PlutoFromElements(folder.Path(), 2451575.0, pluto));
    EXPECT_NEAR(pluto.longitude, 0.05, 1e-9);
    EXPECT_FALSE(PlutoFromElements(folder.Path(), 2451585.0, pluto));
}

TEST_F(EphemerisTables, AnElementsFileWithoutASoundHeadIsFalse) {
    constexpr std::int32_t kLeast = std::numeric_limits<std::int32_t>::min();
    for (const std::int32_t step : {0, -1, -40, kLeast}) {
        const TempFolder folder;
        Bytes bytes;
        Append(bytes, {245154500, step, 0, 0, 0, 0});
        for (int i = 0; i < 10; ++i) Append(bytes, {0, 0, 0, 0, 0, 40000000});
        folder.Write("pluelm21.eph", bytes);
        TablePosition pluto;
        EXPECT_FALSE(PlutoFromElements(folder.Path(), 2451546.0, pluto)) << step;
        CloseEphemerisTables();
    }
    const TempFolder folder;
    folder.Write("pluelm21.eph", Bytes(23));
    TablePosition pluto;
    EXPECT_FALSE(PlutoFromElements(folder.Path(), 2451546.0, pluto));
}

}  // namespace
}  // namespace orvantis

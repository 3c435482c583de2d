// Whole charts against swetest, the test program of Swiss Ephemeris, run as a program of its own.
//
// Tolerances, in degrees unless said otherwise; the largest differences seen are those of the last
// printed digit or of the field's own width:
// - swetest prints 7 decimals, so that half of the last one is 5e-8 by itself. The moment goes
//   through T, whose last bit moves the Moon by 1e-8. Longitudes, latitudes, their speeds, angles
//   and cusps: 1e-7.
// - Distances are printed with 9 decimals of an astronomical unit: 1e-9.
// - The hypothetical points are calculated by the program's own orbits and apparent place: 0.001
//   seconds of arc, and distances 5e-8. Their speeds are the derivative of the place; the library's
//   own differ from the derivative of its places by up to 2.5e-5 degrees a day in latitude.
// - Vulcan takes the short way of the standard route: the light time goes with the speed in
//   longitude alone (in latitude that leaves 8 seconds of arc) and the Sun's place with the four
//   greatest terms of the nutation (0.5 seconds of arc).
// - RA and Dec are held in 32 bits: half a unit in the last place is 1.53e-5 from 256 to 360
//   degrees and 1.9e-6 from 32 to 64 (the largest declination here). RA: 1.6e-5, Dec: 2e-6.
// - Campanus is turned by a millionth of a degree on purpose, which high latitudes stretch: 1e-5.
// - Placidus makes ten passes and no more, which is short of the end of the iteration: 0.7 seconds
//   of arc at most up to 56 degrees, a seventh of a degree at the polar circle (the ten passes have
//   a test of their own).
#include <cmath>
#include <gtest/gtest.h>
#include <sstream>

#include "charts/CALCCHRT.h"
#include "charts/SwissEph.h"
#include "session/settings.h"
#include "support/angles.h"
#include "support/paths.h"
#include "support/reset_all.h"
#include "support/swetest.h"

namespace orvantis {
namespace {

struct ChartRow {
    std::int16_t year;
    std::uint8_t month;
    std::uint8_t day;
    std::uint8_t hour;  // clock time; with the zone it stays on the same day
    std::uint8_t minute;
    std::uint8_t second;
    std::int8_t zone;  // hours, west positive
    double latitude;   // whole seconds of arc
    double longitudeEast;
};

// From 1800 to 2100, from pole to pole, east and west.
const ChartRow kCharts[] = {
    {1800, 1, 1, 12, 0, 0, 0, 0.5, 0.0},          {1805, 12, 2, 9, 30, 15, -1, 49.125, 16.75},
    {1815, 6, 18, 11, 35, 0, 0, 50.675, 4.4},     {1822, 9, 7, 16, 30, 0, 3, -23.5, -46.625},
    {1831, 12, 27, 14, 0, 0, 0, 50.375, -4.15},   {1840, 5, 1, 0, 0, 1, 0, 51.5, -0.125},
    {1848, 2, 24, 8, 12, 59, 0, 48.85, 2.35},     {1859, 11, 24, 23, 59, 59, 0, -10.0, 100.0},
    {1869, 5, 10, 12, 47, 0, 7, 41.6, -112.55},   {1876, 3, 10, 15, 45, 30, 5, 42.35, -71.05},
    {1886, 1, 29, 10, 0, 0, -1, 49.5, 8.475},     {1899, 12, 31, 12, 0, 0, 0, 0.0, 0.0},
    {1903, 12, 17, 10, 35, 0, 5, 36.0, -75.675},  {1911, 12, 14, 15, 0, 0, 0, -89.5, 45.0},
    {1912, 4, 14, 20, 40, 0, 3, 41.75, -49.95},   {1926, 5, 12, 1, 30, 0, 0, 89.5, -160.0},
    {1932, 7, 20, 3, 3, 3, -3, -65.0, 140.0},     {1945, 7, 16, 5, 29, 45, 6, 33.675, -106.475},
    {1953, 5, 29, 11, 30, 0, -5, 27.975, 86.925}, {1957, 10, 4, 19, 28, 34, 0, 45.925, 63.35},
    {1961, 4, 12, 9, 7, 0, -3, 45.925, 63.35},    {1969, 7, 20, 20, 17, 40, 0, 29.775, -95.375},
    {1978, 8, 11, 21, 0, 0, 0, 64.975, -20.0},    {1986, 4, 26, 1, 23, 40, 0, 51.375, 30.1},
    {1989, 11, 9, 18, 53, 0, -1, 52.525, 13.4},   {1999, 8, 11, 11, 3, 0, 0, 45.1, 24.375},
    {2000, 1, 1, 0, 0, 0, 0, 51.475, 0.0},        {2004, 6, 8, 8, 19, 44, 0, -41.275, 174.775},
    {2012, 6, 6, 1, 29, 36, 0, 71.275, -156.75},  {2017, 8, 21, 18, 25, 32, 0, 36.975, -87.675},
    {2024, 4, 8, 18, 17, 16, 0, 25.3, -104.125},  {2031, 3, 3, 3, 33, 33, 3, -34.6, -58.375},
    {2044, 2, 29, 6, 0, 0, -5, -66.25, 110.525},  {2061, 7, 28, 13, 13, 13, 0, 12.125, -179.5},
    {2075, 11, 5, 22, 22, 22, 0, -80.5, 179.75},  {2100, 12, 31, 23, 0, 0, 0, -54.8, -68.3},
};

struct Letter {
    std::size_t point;
    char letter;
};

// Points by the letters of swetest; "z" with -xz16 is the sixteenth set of fictitious elements.
const Letter kLetters[] = {
    {1, '1'},  {3, '0'},  {4, 'z'},  {5, '2'},  {6, '3'},  {7, '4'},  {8, '5'},
    {9, '6'},  {10, '7'}, {11, '8'}, {12, '9'}, {13, 'D'}, {14, 'I'}, {15, 'G'},
    {16, 'H'}, {17, 'F'}, {20, 't'}, {27, 'J'}, {28, 'K'}, {29, 'L'}, {30, 'M'},
    {31, 'N'}, {32, 'O'}, {33, 'P'}, {34, 'Q'}, {35, 'R'}, {36, 'A'},
};

// House systems 1 to 9 by the letters of swetest.
constexpr char kHouseLetters[] = " CKXMPORTA";

std::string DateArgument(const ChartRow& row) {
    return "-b" + std::to_string(row.day) + "." + std::to_string(row.month) + "." +
           std::to_string(row.year);
}

std::string TimeArgument(const ChartRow& row) {
    return "-ut" + std::to_string(row.hour + row.zone) + ":" + std::to_string(row.minute) + ":" +
           std::to_string(row.second);
}

std::string HouseArgument(const ChartRow& row, std::size_t system) {
    std::ostringstream text;
    text.precision(12);
    text << "-house" << row.longitudeEast << ',' << row.latitude << ',' << kHouseLetters[system];
    return text.str();
}

FileChart ToFileChart(const ChartRow& row, std::uint8_t houseCode) {
    FileChart chart;
    chart.event.year = row.year;
    chart.event.month = row.month;
    chart.event.day = row.day;
    chart.event.hour = row.hour;
    chart.event.minute = row.minute;
    chart.event.second = row.second;
    chart.event.zoneHours = row.zone;
    chart.event.latitude = static_cast<float>(row.latitude);
    chart.event.longitude = static_cast<float>(-row.longitudeEast);
    chart.houseCode = houseCode;
    chart.ayanamsaCode = 1;
    return chart;
}

const CalcChart& Calculate(const FileChart& fileChart) {
    Format1Record record;
    ChartToFormat1(fileChart, record);
    EXPECT_EQ(FileChartToCalcChart(record, 1, kFalse), kFalse);
    return calcChart[1];
}

struct Tolerance {
    double lon;
    double lat;
    double dist;
    double lonSpeed;
    double latSpeed;
};

const Tolerance& ToleranceOf(std::size_t point) {
    static const Tolerance kLibrary = {1e-7, 1e-7, 1e-9, 1e-7, 1e-7};
    static const Tolerance kHypothetical = {2e-7, 4e-7, 5e-8, 4e-6, 3e-5};
    static const Tolerance kVulcan = {2e-4, 2.5e-3, 3e-4, 1e-2, 3e-3};
    if (point == 4) return kVulcan;
    return point >= 27 && point <= 35 ? kHypothetical : kLibrary;
}

double CuspTolerance(std::uint8_t system, double latitude) {
    if (system == house_system::kCampanus) return 1e-5;
    if (system != house_system::kPlacidus || std::abs(latitude) < 30) return 1e-7;
    return std::abs(latitude) < 56 ? 2e-4 : 0.15;
}

class SwetestOracle : public testing::TestWithParam<ChartRow> {
  protected:
    void SetUp() override {
        ResetAll();
        OpenSwissEphemeris(kEphemeris, "");
    }
    void TearDown() override { CloseSwissEphemeris(); }
};

TEST_P(SwetestOracle, PositionsAgree) {
    const ChartRow& row = GetParam();
    const CalcChart& chart = Calculate(ToFileChart(row, 5));
    EXPECT_TRUE(TestShell().boxes.empty());

    std::string letters = "-p";
    for (const Letter& letter : kLetters) letters += letter.letter;
    const SwetestTable table =
        Swetest({DateArgument(row), TimeArgument(row), "-fplbRadss", "-xz16", letters});
    ASSERT_EQ(table.size(), std::size(kLetters));
    for (std::size_t i = 0; i < table.size(); ++i) {
        const std::size_t n = kLetters[i].point;
        const std::vector<double>& expected = table[i];
        ASSERT_GE(expected.size(), 9U);
        const Tolerance& t = ToleranceOf(n);
        EXPECT_LE(Apart(chart.Lon[n], expected[1]), t.lon) << "longitude of point " << n;
        EXPECT_NEAR(chart.Lat[n], expected[2], t.lat) << "latitude of point " << n;
        EXPECT_NEAR(chart.Dist[n], expected[3], t.dist) << "distance of point " << n;
        EXPECT_LE(Apart(static_cast<double>(chart.RA[n]), expected[4]),
                  1.6e-5 + 1.2 * t.lon + 0.5 * t.lat)
            << "RA " << n;
        EXPECT_NEAR(static_cast<double>(chart.Dec[n]), expected[5], 2e-6 + t.lat) << "Dec " << n;
        EXPECT_NEAR(chart.LonSpeed[n], expected[7], t.lonSpeed) << "speed of point " << n;
        EXPECT_NEAR(chart.LatSpeed[n], expected[8], t.latSpeed) << "latitude speed of point " << n;
    }
    EXPECT_LE(Apart(chart.Lon[2], chart.Lon[3] + 180), 1e-12);
    EXPECT_LE(Apart(chart.Lon[21], chart.Lon[20] + 180), 1e-12);
}

TEST_P(SwetestOracle, AnglesAndCuspsAgree) {
    const ChartRow& row = GetParam();
    const bool polar = std::abs(row.latitude) > 66;
    for (std::uint8_t system = 1; system <= 9; ++system) {
        // Within the polar circles swetest keeps to other rules of which angle comes first, and
        // some systems don't exist: the angles there have tests of their own.
        if (polar && system != 3 && system != 4) continue;
        const CalcChart chart = Calculate(ToFileChart(row, system));
        const SwetestTable table = Swetest(
            {DateArgument(row), TimeArgument(row), "-fpl", "-p", HouseArgument(row, system)});
        ASSERT_GE(table.size(), 17U);
        const double tolerance = CuspTolerance(system, row.latitude);
        for (std::size_t i = 1; i <= 12; ++i) {
            EXPECT_LE(Apart(chart.Cusp[i], table[i - 1][1]), tolerance)
                << "cusp " << i << " of system " << int{system};
        }
        EXPECT_LE(Apart(chart.Lon[23], table[13][1]), 1e-7) << "Midheaven";
        EXPECT_LE(Apart(chartNow.RAMCNow, table[14][1]), 1e-7) << "RAMC";
        EXPECT_LE(Apart(chart.Lon[25], table[16][1]), 1e-7) << "EastPoint";
        if (!polar) {
            EXPECT_LE(Apart(chart.Lon[22], table[12][1]), 1e-7) << "Ascendant";
        }
    }
}

TEST_P(SwetestOracle, ObliquityAndDeltaTAgree) {
    const ChartRow& row = GetParam();
    Calculate(ToFileChart(row, 5));
    const SwetestTable table = Swetest({DateArgument(row), TimeArgument(row), "-fpl", "-poq"});
    ASSERT_EQ(table.size(), 2U);
    EXPECT_NEAR(chartNow.ObliquityNow, table[0][1], 1e-7);
    EXPECT_NEAR(chartNow.DeltaT * 3600, table[1][1], 1e-6);
}

INSTANTIATE_TEST_SUITE_P(From1800To2100, SwetestOracle, testing::ValuesIn(kCharts),
                         [](const testing::TestParamInfo<ChartRow>& row) {
                             return "Year" + std::to_string(row.param.year);
                         });

TEST(SwetestNodes, TheMeanNodeIsTakenWhereTheTrueOneIsNotWanted) {
    ResetAll();
    OpenSwissEphemeris(kEphemeris, "");
    options.trueNode = kFalse;
    const ChartRow& row = kCharts[24];
    const CalcChart& chart = Calculate(ToFileChart(row, 5));
    const SwetestTable table = Swetest({DateArgument(row), TimeArgument(row), "-fpl", "-pm"});
    ASSERT_EQ(table.size(), 1U);
    EXPECT_LE(Apart(chart.Lon[20], table[0][1]), 1e-7);
    EXPECT_EQ(chart.TrueNodeFlag, kFalse);
    CloseSwissEphemeris();
}

}  // namespace
}  // namespace orvantis

#include "text/dates.h"

#include <gtest/gtest.h>
#include <vector>

#include "text/text_state.h"

namespace orvantis {
namespace {

std::string DateText(std::int16_t day, std::int16_t month, std::int16_t year, Flag monthFirst) {
    textState = {};
    textState.MonthFirst = monthFirst;
    return FormatDateText(day, month, year);
}

std::string TimeText(std::int16_t hours, std::int16_t minutes, std::int16_t seconds, Flag clock24) {
    textState = {};
    textState.Clock24 = clock24;
    return FormatTimeText(hours, minutes, seconds);
}

struct JulianDayRow {
    float day;
    std::int16_t month;
    std::int16_t year;
    double jd;
    const char* source;
};

TEST(DateToJD, AgreesWithPublishedJulianDays) {
    const std::vector<JulianDayRow> rows = {
        {1.5F, 1, 2000, 2451545.0, "epoch J2000.0"},
        {0.5F, 1, 1900, 2415020.0, "epoch of this program's centuries"},
        {4.81F, 10, 1957, 2436116.31, "Meeus, Astronomical Algorithms, example 7.a"},
        {27.5F, 1, 333, 1842713.0, "Meeus, example 7.b"},
        {1, 1, 1999, 2451179.5, "Meeus, table of chapter 7"},
        {27, 1, 1987, 2446822.5, "Meeus, table of chapter 7"},
        {19.5F, 6, 1988, 2447332.0, "Meeus, table of chapter 7"},
        {1, 1, 1600, 2305447.5, "Meeus, table of chapter 7"},
        {31, 12, 1600, 2305812.5, "Meeus, table of chapter 7"},
        {10.3F, 4, 837, 2026871.8, "Meeus, table of chapter 7"},
        {31, 12, -123, 1676496.5, "Meeus, table of chapter 7"},
        {1, 1, -122, 1676497.5, "Meeus, table of chapter 7"},
        {12.5F, 7, -1000, 1356001.0, "Meeus, table of chapter 7"},
        {29, 2, -1000, 1355866.5, "Meeus, table of chapter 7"},
        {17.9F, 8, -1001, 1355671.4, "Meeus, table of chapter 7"},
        {1.5F, 1, -4712, 0.0, "Meeus, table of chapter 7"},
    };
    for (const JulianDayRow& row : rows) {
        // The day is a 32-bit number: a fraction such as .81 is off by up to 1e-6.
        EXPECT_NEAR(DateToJD(row.day, row.month, row.year), row.jd, 2e-6) << row.source;
    }
}

TEST(DateToJD, TheFourthAndTheFifteenthOfOctober1582AreOneDayApart) {
    EXPECT_EQ(DateToJD(4, 10, 1582), 2299159.5);
    EXPECT_EQ(DateToJD(15, 10, 1582), 2299160.5);
}

TEST(DateToJD, TheOverrideTakesTheOtherCalendar) {
    EXPECT_EQ(DateToJD(1, 1, 2000, -1), DateToJD(1, 1, 2000) + 13);
    EXPECT_EQ(DateToJD(1, 1, 1500, -1), DateToJD(1, 1, 1500) - 9);
}

TEST(DateToJD, HasALeapDayIn1500AndNoneIn1900) {
    EXPECT_EQ(DateToJD(1, 3, 1500) - DateToJD(28, 2, 1500), 2);
    EXPECT_EQ(DateToJD(1, 3, 1900) - DateToJD(28, 2, 1900), 1);
}

TEST(DateToJD, CountsEveryDayOnceOverTheWholeRangeOfYears) {
    for (int year = -32767; year < 32767; ++year) {
        const auto y = static_cast<std::int16_t>(year);
        const double january = DateToJD(1, 1, y);
        ASSERT_EQ(january, DateToJD(31, 12, static_cast<std::int16_t>(year - 1)) + 1) << year;
        const double length = DateToJD(1, 1, static_cast<std::int16_t>(year + 1)) - january;
        const bool modern = year > 1582;
        const bool leap = year % 4 == 0 && (!modern || year % 100 != 0 || year % 400 == 0);
        const double expected = year == 1582 ? 355 : (leap ? 366 : 365);
        ASSERT_EQ(length, expected) << year;
    }
}

TEST(FormatDateText, FollowsTheRegionalOrder) {
    EXPECT_EQ(DateText(31, 12, 1992, 0), "31 Dec 1992");
    EXPECT_EQ(DateText(31, 12, 1992, -1), "Dec 31 1992");
}

TEST(FormatDateText, ShowsYearsBeforeOneWithTheirEra) {
    EXPECT_EQ(DateText(5, 3, -43, 0), "5 Mar 0044 BC");
    EXPECT_EQ(DateText(5, 3, -43, -1), "Mar 5 0044 BC");
    EXPECT_EQ(DateText(1, 1, 0, 0), "1 Jan 0001 BC");
    EXPECT_EQ(DateText(1, 1, 1, 0), "1 Jan 0001");
    EXPECT_EQ(DateText(1, 1, -32768, 0), "1 Jan 32769 BC");
}

TEST(FormatDateText, ClampsDayAndMonth) {
    EXPECT_EQ(DateText(0, 0, 1992, 0), "1 Jan 1992");
    EXPECT_EQ(DateText(255, 255, 1992, 0), "31 Dec 1992");
}

TEST(FormatTimeText, OnThe24HourClock) {
    EXPECT_EQ(TimeText(23, 59, 0, -1), "23:59");
    EXPECT_EQ(TimeText(23, 59, 7, -1), "23:59:07");
    EXPECT_EQ(TimeText(0, 0, 0, -1), "00:00");
}

TEST(FormatTimeText, OnThe12HourClock) {
    EXPECT_EQ(TimeText(23, 59, 0, 0), "11:59 PM");
    EXPECT_EQ(TimeText(23, 59, 7, 0), "11:59:07 PM");
    EXPECT_EQ(TimeText(12, 0, 0, 0), "12:00 PM");
    EXPECT_EQ(TimeText(9, 5, 0, 0), "9:05 AM");
}

TEST(FormatTimeText, TheFirstHourOfTheDayIsZeroOnThe12HourClock) {
    EXPECT_EQ(TimeText(0, 30, 0, 0), "0:30 AM");
}

TEST(FormatTimeText, SecondsOfZeroAreNotShown) {
    EXPECT_EQ(TimeText(8, 0, 0, 0), "8:00 AM");
}

}  // namespace
}  // namespace orvantis

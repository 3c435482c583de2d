// Dates and Julian days against the calendar routines of Swiss Ephemeris, in both calendars, and
// there and back.
#include <gtest/gtest.h>
#include <swephexp.h>

#include "support/reset_all.h"
#include "text/dates.h"
#include "text/run_time_error.h"
#include "text/text_state.h"

namespace orvantis {
namespace {

constexpr int kFirstYear = -4712;  // 4713 BC
constexpr int kLastYear = 9999;

struct CivilDate {
    int day;
    int month;
    int year;
    bool operator==(const CivilDate&) const = default;
};

std::ostream& operator<<(std::ostream& out, const CivilDate& date) {
    return out << date.day << "." << date.month << "." << date.year;
}

int MonthLength(int month, int year, bool gregorian) {
    static constexpr int lengths[] = {31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
    const bool leap = year % 4 == 0 && (!gregorian || year % 100 != 0 || year % 400 == 0);
    return month == 2 && leap ? 29 : lengths[month - 1];
}

// Calls `check` with the first and the last day of every month of a calendar.
template <typename Check>
void ForEveryMonth(bool gregorian, const Check& check) {
    for (int year = kFirstYear; year <= kLastYear; ++year) {
        for (int month = 1; month <= 12; ++month) {
            check(CivilDate{1, month, year});
            check(CivilDate{MonthLength(month, year, gregorian), month, year});
        }
    }
}

bool IsModern(const CivilDate& date) {
    return date.year * 10000 + date.month * 100 + date.day >= 15821015;
}

double JulianDay(const CivilDate& date, bool gregorian) {
    const Flag otherCalendar = IsModern(date) != gregorian ? kTrue : kFalse;
    return DateToJD(static_cast<float>(date.day), static_cast<std::int16_t>(date.month),
                    static_cast<std::int16_t>(date.year), otherCalendar);
}

CivilDate DateOf(double julianDay) {
    float day = 0;
    std::int32_t month = 0;
    std::int32_t year = 0;
    JDToDate(julianDay, day, month, year);
    return {static_cast<int>(day), month, year};
}

TEST(Calendar, JulianDaysAgreeWithSwissEphemerisInBothCalendars) {
    for (const bool gregorian : {false, true}) {
        ForEveryMonth(gregorian, [&](const CivilDate& date) {
            ASSERT_EQ(JulianDay(date, gregorian), swe_julday(date.year, date.month, date.day, 0,
                                                             gregorian ? SE_GREG_CAL : SE_JUL_CAL))
                << date;
        });
    }
}

TEST(Calendar, DatesAgreeWithSwissEphemerisInTheCalendarOfTheirTime) {
    for (const bool gregorian : {false, true}) {
        ForEveryMonth(gregorian, [&](const CivilDate& date) {
            const double jd = JulianDay(date, gregorian);
            CivilDate expected{};
            double hours = 0;
            swe_revjul(jd, jd >= 2299160.5 ? SE_GREG_CAL : SE_JUL_CAL, &expected.year,
                       &expected.month, &expected.day, &hours);
            ASSERT_EQ(DateOf(jd), expected) << date;
        });
    }
}

TEST(Calendar, EveryMonthComesBackFromItsJulianDay) {
    ForEveryMonth(false, [](const CivilDate& date) {
        if (!IsModern(date)) {
            ASSERT_EQ(DateOf(JulianDay(date, false)), date);
        }
    });
    ForEveryMonth(true, [](const CivilDate& date) {
        if (IsModern(date)) {
            ASSERT_EQ(DateOf(JulianDay(date, true)), date);
        }
    });
}

TEST(Calendar, JulianDaysComeBackOverAllYearsOf16Bits) {
    for (double jd = DateToJD(1, 1, -32768); jd <= DateToJD(31, 12, 32767); jd += 29) {
        const CivilDate date = DateOf(jd);
        ASSERT_EQ(DateToJD(static_cast<float>(date.day), static_cast<std::int16_t>(date.month),
                           static_cast<std::int16_t>(date.year)),
                  jd)
            << date;
    }
}

TEST(Calendar, TheCalendarChangesOnThe15thOfOctober1582) {
    EXPECT_EQ(DateOf(2299160.5), (CivilDate{15, 10, 1582}));
    EXPECT_EQ(DateOf(2299160.4999), (CivilDate{4, 10, 1582}));
    EXPECT_FALSE(IsGregorianDate(14.999F, 10, 1582));
    EXPECT_TRUE(IsGregorianDate(15, 10, 1582));
    EXPECT_FALSE(IsGregorianDate(31, 12, -1582));
}

TEST(Calendar, TheDayKeepsItsFractionAndNeverBecomesTheNextOne) {
    ResetAll();
    float day = 0;
    std::int32_t month = 0;
    std::int32_t year = 0;
    JDToDate(2436116.31, day, month, year);  // Meeus, Astronomical Algorithms, example 7.c
    EXPECT_NEAR(day, 4.81F, 1e-6);
    JDToDate(1842713.0, day, month, year);  // Meeus, example 7.d
    EXPECT_EQ(day, 27.5F);
    JDToDate(2451210.5 - 1e-8, day, month, year);
    EXPECT_LT(day, 32);
    EXPECT_EQ(month, 1);
    EXPECT_EQ(year, 1999);
}

TEST(TodayText, IsTheDateOfTheShellsClock) {
    ResetAll();
    TestShell().now = {1992, 12, 31, 23, 59, 7};
    textState.MonthFirst = kFalse;
    EXPECT_EQ(TodayText(), "31 Dec 1992");
    textState.MonthFirst = kTrue;
    EXPECT_EQ(TodayText(), "Dec 31 1992");
    textState.shell = nullptr;
    EXPECT_EQ(TodayText(), "");
}

TEST(PackedMomentTexts, AreThoseOfDateAndTime) {
    ResetAll();
    textState.MonthFirst = kFalse;
    PackedMoment moment;
    moment.year = -43;
    moment.month = 3;
    moment.day = 15;
    moment.hour = 23;
    moment.minute = 59;
    moment.second = 7;
    EXPECT_EQ(DateRecordText(moment), "15 Mar 0044 BC");
    EXPECT_EQ(TimeRecordText(moment), "11:59:07 PM");
    moment.month = 255;
    moment.day = 0;
    EXPECT_EQ(DateRecordText(moment), "1 Dec 0044 BC");
}

}  // namespace
}  // namespace orvantis

// Typed dates, good and bad. The expected values are worked out by hand from the rules of the
// header; those of other calendars from the published difference of the two (10 days in the 16th
// century, 13 in the 20th and 21st).
#include <gtest/gtest.h>
#include <limits>
#include <random>

#include "support/reset_all.h"
#include "text/dates.h"
#include "text/parser_boxes.h"
#include "text/run_time_error.h"
#include "text/text_state.h"

namespace orvantis {
namespace {

const std::string kDayFirstFormat = DateBox(
    R"(The format of the date is not recognised.\r\nPlease re-enter a valid date e.g.\r\n31 Dec 1992  or  31/12/1992)");
const std::string kMonthFirstFormat = DateBox(
    R"(The format of the date is not recognised.\r\nPlease re-enter a valid date e.g.\r\nDec 31 1992  or  12/31/1992)");
const std::string kDayFirstCalendar = DateBox(
    R"(This date is not a valid calendar date.\r\nPlease re-enter a valid date e.g.\r\n31 Dec 1992  or  31/12/1992)");
const std::string kMonthFirstCalendar = DateBox(
    R"(This date is not a valid calendar date.\r\nPlease re-enter a valid date e.g.\r\nDec 31 1992  or  12/31/1992)");
const std::string kBothEras = DateBox(
    R"(The format of the date is not recognised.\r\nSpecify BC for years prior to year one, and AD (or nothing) for years one and after.)");

struct Date {
    std::int16_t day = -99;
    std::int16_t month = -99;
    std::int16_t year = -99;
    std::int16_t errorFlag = 1;
    bool operator==(const Date&) const = default;
};

std::ostream& operator<<(std::ostream& out, const Date& date) {
    return out << date.day << "." << date.month << "." << date.year << " flag " << date.errorFlag;
}

Date Parse(std::string_view text) {
    Date date;
    ParseDateText(text, date.day, date.month, date.year, date.errorFlag);
    return date;
}

class ParseDate : public ::testing::Test {
  protected:
    void SetUp() override {
        ResetAll();
        textState.MonthFirst = kFalse;
    }
    void TearDown() override { EXPECT_EQ(PendingRunTimeError(), 0); }

    // Accepted, without a box.
    static void ExpectDate(std::string_view text, Date date) {
        date.errorFlag = 0;
        EXPECT_EQ(Parse(text), date) << text;
        EXPECT_EQ(TestShell().log, Boxes{}) << text;
    }

    // Refused, with one box.
    static void ExpectRefusal(std::string_view text, const std::string& box) {
        TestShell().log.clear();
        EXPECT_EQ(Parse(text).errorFlag, -1) << text;
        EXPECT_EQ(TestShell().log, Boxes{box}) << text;
        TestShell().log.clear();
    }
};

TEST_F(ParseDate, TheFormsOfOneDateAreTheSameDayFirst) {
    for (const char* text :
         {"31 Dec 1992", "Dec 31 1992", "31st Dec 1992", "31/12/1992", "31DEC1992", "31.12.1992",
          "31,12,1992", "31;12;1992", "31:12:1992", "31'12'1992", "  31 dec 1992  ",
          "31 Dec, 1992 AD", "31 Dec 1992 NS", "31 Dec 1992 CE", "31./,;:'12 1992"}) {
        ExpectDate(text, {31, 12, 1992});
    }
}

TEST_F(ParseDate, AMonthOf31IsNoCalendarDateDayFirst) {
    ExpectRefusal("12/31/1992", kDayFirstCalendar);
}

TEST_F(ParseDate, ADayOf31SecondIsADateMonthFirstAndTheOtherWayRoundIsNone) {
    textState.MonthFirst = kTrue;
    ExpectDate("12/31/1992", {31, 12, 1992});
    ExpectRefusal("31/12/1992", kMonthFirstCalendar);
}

TEST_F(ParseDate, FiguresFollowTheRegionalOrderAndMonthNamesDoNot) {
    ExpectDate("1/2/1992", {1, 2, 1992});
    ExpectDate("Jan/2/1992", {2, 1, 1992});
    ExpectDate("2/Jan/1992", {2, 1, 1992});
    textState.MonthFirst = kTrue;
    ExpectDate("1/2/1992", {2, 1, 1992});
    ExpectDate("Jan/2/1992", {2, 1, 1992});
    ExpectDate("2/Jan/1992", {2, 1, 1992});
}

TEST_F(ParseDate, TheFullWordDecemberFallsApartAndDecDoesNot) {
    ExpectRefusal("31 DECEMBER 1992", kDayFirstFormat);
    ExpectDate("31 DEC 1992", {31, 12, 1992});
    ExpectRefusal("31 DECE 1992", kDayFirstFormat);
}

TEST_F(ParseDate, AugustIsReadWithItsEndBlankedOnce) {
    ExpectDate("1 AUGUST 1992", {1, 8, 1992});
    ExpectRefusal("AUGUST 1ST 1992", kDayFirstFormat);
}

TEST_F(ParseDate, EachOrdinalIsBlankedOnce) {
    ExpectDate("1st Jan 1992", {1, 1, 1992});
    ExpectDate("2nd Jan 1992", {2, 1, 1992});
    ExpectDate("3rd Jan 1992", {3, 1, 1992});
    ExpectDate("4th Jan 1992", {4, 1, 1992});
    ExpectRefusal("4th th Jan 1992", kDayFirstFormat);
}

TEST_F(ParseDate, YearsOfOneOrTwoCharactersGetTheCentury) {
    ExpectDate("1 Jan 92", {1, 1, 1992});
    ExpectDate("1 Jan 092", {1, 1, 92});
    ExpectDate("1 Jan 5", {1, 1, 1905});
    ExpectDate("1 Jan 0", {1, 1, 1900});
    ExpectDate("1 Jan 92 AD", {1, 1, 1992});
}

TEST_F(ParseDate, YearsBeforeChristAreAstronomical) {
    ExpectDate("15 Mar 44 BC", {15, 3, -43});
    ExpectDate("15 Mar -43", {15, 3, -43});
    ExpectDate("15 Mar -43 BC", {15, 3, -43});
    ExpectDate("15 Mar 44BC", {15, 3, -43});
    ExpectDate("15 Mar 44 B.C.", {15, 3, -43});
    ExpectDate("15 Mar 44 BCE", {15, 3, -43});
    ExpectDate("15 Mar 44 b.c.e.", {15, 3, -43});
    ExpectDate("1 Jan 1 BC", {1, 1, 0});
    ExpectDate("1 Jan 0 BC", {1, 1, 1});
}

TEST_F(ParseDate, TheFourthAndTheFifteenthOfOctober1582AreOneDayApart) {
    ExpectDate("4 OCT 1582", {4, 10, 1582});
    ExpectDate("15 OCT 1582", {15, 10, 1582});
    EXPECT_EQ(DateToJD(15, 10, 1582) - DateToJD(4, 10, 1582), 1);
}

TEST_F(ParseDate, ADayOfTheGapOf1582MovesTenDaysOnWithoutABox) {
    ExpectDate("10 OCT 1582", {20, 10, 1582});
    for (std::int16_t day = 5; day <= 14; ++day) {
        ExpectDate(std::to_string(day) + " OCT 1582",
                   {static_cast<std::int16_t>(day + 10), 10, 1582});
    }
}

TEST_F(ParseDate, ADateTaggedForTheOtherCalendarBecomesItsEquivalentWithoutABox) {
    ExpectDate("1 JAN 2000 OS", {14, 1, 2000});
    ExpectDate("1 JAN 2000 O.S.", {14, 1, 2000});
    ExpectDate("1 JAN 1500 NS", {23, 12, 1499});
    ExpectDate("1 JAN 1500 N.S.", {23, 12, 1499});
    ExpectDate("15 OCT 1582 OS", {25, 10, 1582});
    // 10 October 1582 counted back in the Gregorian calendar is 30 September in the Julian one.
    ExpectDate("10 OCT 1582 NS", {30, 9, 1582});
    // The leap day of a Julian century year.
    ExpectDate("29 FEB 1900 OS", {13, 3, 1900});
}

TEST_F(ParseDate, ATagForTheDatesOwnCalendarChangesNothing) {
    ExpectDate("1 JAN 2000 NS", {1, 1, 2000});
    ExpectDate("1 JAN 1500 OS", {1, 1, 1500});
}

TEST_F(ParseDate, WithATagForTheOtherCalendarEvenADayOutOfRangeIsReckonedOn) {
    ExpectDate("32 JAN 2000 OS", {14, 2, 2000});
}

TEST_F(ParseDate, TheCalendarDecidesWhichCenturyYearsAreLeapYears) {
    ExpectRefusal("29 FEB 1900", kDayFirstCalendar);
    ExpectDate("29 FEB 1500", {29, 2, 1500});
    ExpectDate("29 FEB 2000", {29, 2, 2000});
    ExpectRefusal("29 FEB 1501", kDayFirstCalendar);
}

TEST_F(ParseDate, BothErasAreRefusedWithABoxOfTheirOwn) {
    ExpectRefusal("BC AD 1 JAN 5", kBothEras);
    ExpectRefusal("1 JAN 5 B.C. A.D.", kBothEras);
    textState.MonthFirst = kTrue;
    ExpectRefusal("1 JAN 5 BC AD", kBothEras);
    // The era of "December" counts too.
    ExpectRefusal("1 DECEMBER 5 BC", kBothEras);
}

TEST_F(ParseDate, TooFewOrTooManyFieldsAreAFormatError) {
    for (const char* text : {"", " ", ".", "31", "31 Dec", "31 Dec 1992 5", "31 12 19 92", "31-12",
                             "31-12-1992", "BC", "ST", "1 Jan 92 Smith"}) {
        ExpectRefusal(text, kDayFirstFormat);
    }
    textState.MonthFirst = kTrue;
    ExpectRefusal("31 Dec", kMonthFirstFormat);
}

TEST_F(ParseDate, AHyphenBelongsToTheNumberBesideIt) {
    // Three fields, "31-", "DEC" and "-1992".
    ExpectDate("31-Dec-1992", {31, 12, -1992});
}

TEST_F(ParseDate, AMonthIsTheBeginningOfItsName) {
    ExpectDate("1 SEP 1992", {1, 9, 1992});
    ExpectDate("1 SEPT 1992", {1, 9, 1992});
    ExpectDate("1 SEPTE 1992", {1, 9, 1992});
    ExpectDate("1 SEPTEMBER 1992", {1, 9, 1992});
    ExpectRefusal("1 SEPX 1992", kDayFirstFormat);
    ExpectRefusal("1 SEPTEMBERS 1992", kDayFirstFormat);
    ExpectDate("1 june 1992", {1, 6, 1992});
    ExpectDate("1 MAY 1992", {1, 5, 1992});
    ExpectRefusal("1 MAYS 1992", kDayFirstFormat);
    ExpectRefusal("1 JA 1992", kDayFirstFormat);
    ExpectRefusal("1 J 1992", kDayFirstFormat);
}

TEST_F(ParseDate, AMonthOfZeroIsAFormatErrorAndOneOf13NoCalendarDate) {
    ExpectRefusal("1 0 1992", kDayFirstFormat);
    ExpectRefusal("1 00 1992", kDayFirstFormat);
    ExpectRefusal("1 012 1992", kDayFirstFormat);
    ExpectRefusal("1 13 1992", kDayFirstCalendar);
    ExpectRefusal("1 -5 1992", kDayFirstCalendar);
}

TEST_F(ParseDate, OfTwoFieldsThatAreNoFiguresTheSecondIsTheMonth) {
    ExpectRefusal("JAN FEB 1992", kDayFirstCalendar);  // day 0 of February
    ExpectRefusal("FEB XXX 1992", kDayFirstFormat);
}

TEST_F(ParseDate, ADayOutOfItsMonthIsNoCalendarDate) {
    for (const char* text : {"0 JAN 1992", "32 JAN 1992", "31 APR 1992", "30 FEB 1992",
                             "32767 JAN 1992", "31 NOV 44 BC"}) {
        ExpectRefusal(text, kDayFirstCalendar);
    }
}

TEST_F(ParseDate, AYearWithoutFiguresCountsAsZero) {
    ExpectDate("1 JAN X", {1, 1, 1900});
    ExpectDate("1 JAN XYZ", {1, 1, 0});
}

TEST_F(ParseDate, ANumberThatDoesNotFitItsWidthIsAFormatErrorAndLeavesNoRunTimeError) {
    for (const char* text : {"99999999999 JAN 1992", "32768 JAN 1992", "1 JAN 32768",
                             "1 JAN 99999999999999999999999999", "1 JAN -32769",
                             "1 JAN 99999999999999999999999999 BC", "1 JAN 32770 BC"}) {
        ExpectRefusal(text, kDayFirstFormat);
    }
}

TEST_F(ParseDate, TheWholeRangeOfYearsIsRead) {
    ExpectDate("31 DEC 32767", {31, 12, 32767});
    ExpectDate("1 JAN -32768", {1, 1, -32768});
    ExpectDate("1 JAN 32769 BC", {1, 1, -32768});
}

TEST_F(ParseDate, ADateWhoseEquivalentHasNoYearOf16BitsIsRefused) {
    // The last day of 32767 in the old style lies in January 32768.
    ExpectRefusal("31 DEC 32767 OS", kDayFirstCalendar);
    // The two calendars are 248 days apart there, and the year has 366.
    ExpectDate("1 JAN -32768 NS", {5, 9, -32768});
}

TEST_F(ParseDate, NoDayMonthAndYearOfTheirWidthsLeaveARunTimeError) {
    for (const char* text :
         {"-32767 JAN -32768", "32767 99 32767", "-32768 -9 -32768", "32767 DEC 32767 OS"}) {
        ExpectRefusal(text, kDayFirstCalendar);
    }
}

TEST_F(ParseDate, ARunTimeErrorOfSomebodyElseIsLeftStanding) {
    RaiseRunTimeError(error::kDiskFull);
    Parse("99999999999 JAN 1992");
    RunTimeError left;
    ASSERT_TRUE(TakeRunTimeError(left));
    EXPECT_EQ(left.number, error::kDiskFull);
}

TEST_F(ParseDate, ARefusedDateHoldsWhatWasReadSoFar) {
    EXPECT_EQ(Parse("1 2"), (Date{-99, -99, -99, -1}));
    EXPECT_EQ(Parse("7 XYZ 1992"), (Date{7, 0, -99, -1}));
    EXPECT_EQ(Parse("30 FEB 1992"), (Date{30, 2, 1992, -1}));
}

TEST_F(ParseDate, HostileTextsAreRefused) {
    constexpr std::size_t megabyte = 1 << 20;
    for (int c = 0; c < 256; ++c) {
        const std::string text(64, static_cast<char>(c));
        EXPECT_EQ(Parse(text).errorFlag, -1) << c;
    }
    ExpectRefusal(std::string(megabyte, '9'), kDayFirstFormat);
    ExpectRefusal("1 JAN " + std::string(megabyte, '9'), kDayFirstFormat);
    ExpectRefusal("1 " + std::string(megabyte, 'J') + " 1992", kDayFirstFormat);
    ExpectRefusal(std::string(megabyte, '.'), kDayFirstFormat);
    ExpectRefusal(std::string_view("1 JAN\0 1992", 11), kDayFirstFormat);
    ExpectRefusal("1\tJAN\t1992", kDayFirstFormat);
    ExpectDate(std::string(megabyte, ' ') + "1 JAN 1992" + std::string(megabyte, ' '),
               {1, 1, 1992});
}

TEST_F(ParseDate, WithoutAShellARefusalIsSilent) {
    textState.shell = nullptr;
    EXPECT_EQ(Parse("31 Dec").errorFlag, -1);
    EXPECT_EQ(TestShell().log, Boxes{});
}

std::int16_t LastDay(std::int16_t month, std::int16_t year) {
    const auto first = DateToJD(1, month, year);
    const auto next = month == 12 ? DateToJD(1, 1, static_cast<std::int16_t>(year + 1))
                                  : DateToJD(1, static_cast<std::int16_t>(month + 1), year);
    // October 1582 is ten days short, but ends on its 31st.
    return static_cast<std::int16_t>(next - first) == 21 ? std::int16_t{31}
                                                         : static_cast<std::int16_t>(next - first);
}

TEST_F(ParseDate, WhatTheFormatterWritesIsReadBackForEveryMonthOfEveryYear) {
    for (int year = -4712; year <= 9999; ++year) {
        textState.MonthFirst = year % 2 != 0 ? kTrue : kFalse;
        for (std::int16_t month = 1; month <= 12; ++month) {
            const auto y = static_cast<std::int16_t>(year);
            for (const std::int16_t day : {std::int16_t{1}, LastDay(month, y)}) {
                ASSERT_EQ(Parse(FormatDateText(day, month, y)), (Date{day, month, y, 0}));
            }
        }
    }
    EXPECT_EQ(TestShell().log, Boxes{});
}

TEST_F(ParseDate, WhatTheFormatterWritesIsReadBackForDaysOfAllYears) {
    constexpr unsigned seed = 20261121;
    std::mt19937 random(seed);
    std::uniform_int_distribution<int> days(-10246000, 13688000);
    for (int n = 0; n < 20000; ++n) {
        float day = 0;
        std::int32_t month = 0;
        std::int32_t year = 0;
        JDToDate(days(random) + 0.5, day, month, year);
        const Date date{static_cast<std::int16_t>(day), static_cast<std::int16_t>(month),
                        static_cast<std::int16_t>(year), 0};
        ASSERT_EQ(Parse(FormatDateText(date.day, date.month, date.year)), date) << "seed " << seed;
    }
}

}  // namespace
}  // namespace orvantis

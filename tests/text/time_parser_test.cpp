// Typed times, good and bad, worked out by hand from the rules of the header.
#include <gtest/gtest.h>

#include "support/reset_all.h"
#include "text/dates.h"
#include "text/parser_boxes.h"
#include "text/run_time_error.h"
#include "text/text_state.h"

namespace orvantis {
namespace {

const std::string kBothHalves = TimeBox(
    R"(Specify AM for morning, PM for afternoon, or neither for the 24 hour clock.\r\nPlease use a valid format e.g. 11:59:59 AM)");
const std::string kMorning = TimeBox(
    R"(Hours must be in the range 0 to 12 if AM is specified.\r\nPlease use a valid format e.g. 11:59:59 AM)");
const std::string kAfternoon = TimeBox(
    R"(Hours must be in the range 0 to 12 if PM is specified.\r\nPlease use a valid format e.g. 11:59:59 PM)");
const std::string kHours =
    TimeBox(R"(Hours must be in the range 0 to 23.\r\nPlease use a valid format e.g. 23:59:59)");
const std::string kMinutes = TimeBox(
    R"(Minutes must be in the range 0 to 59.\r\nPlease use a valid format e.g. 11:59:59 PM)");
const std::string kSeconds = TimeBox(
    R"(Seconds must be in the range 0 to 59.\r\nPlease use a valid format e.g. 11:59:59 PM)");
const std::string kFourthField = TimeBox("Please use a valid format e.g. 10:45 PM");
const std::string kNonDigit = TimeBox("Please use numbers separated by colons e.g. 11:45 PM");

struct Time {
    std::int16_t hours = -99;
    std::int16_t minutes = -99;
    std::int16_t seconds = -99;
    std::int16_t errorFlag = 1;
    bool operator==(const Time&) const = default;
};

std::ostream& operator<<(std::ostream& out, const Time& time) {
    return out << time.hours << ":" << time.minutes << ":" << time.seconds << " flag "
               << time.errorFlag;
}

Time Parse(std::string_view text) {
    Time time;
    ParseTimeText(text, time.hours, time.minutes, time.seconds, time.errorFlag);
    return time;
}

class ParseTime : public ::testing::Test {
  protected:
    void SetUp() override { ResetAll(); }
    void TearDown() override { EXPECT_EQ(PendingRunTimeError(), 0); }

    // Accepted, without a box.
    static void ExpectTime(std::string_view text, Time time) {
        time.errorFlag = 0;
        EXPECT_EQ(Parse(text), time) << text;
        EXPECT_EQ(TestShell().log, Boxes{}) << text;
    }

    // Refused, with these boxes.
    static void ExpectRefusal(std::string_view text, const Boxes& boxes) {
        TestShell().log.clear();
        EXPECT_EQ(Parse(text).errorFlag, -1) << text;
        EXPECT_EQ(TestShell().log, boxes) << text;
        TestShell().log.clear();
    }
};

TEST_F(ParseTime, WordsForNoonAndMidnight) {
    for (const char* text : {"NOON", "noon", " Noon ", "MIDDAY", "midday", "12 PM", "12pm"}) {
        ExpectTime(text, {12, 0, 0});
    }
    for (const char* text : {"MIDNIGHT", "midnight", "12 AM", "0 AM", "12am"}) {
        ExpectTime(text, {0, 0, 0});
    }
}

TEST_F(ParseTime, AWordForNoonWithMoreBehindItIsNoKeyword) {
    ExpectRefusal("NOON TODAY", {kNonDigit});
    ExpectRefusal("12 NOON", {kNonDigit});
}

TEST_F(ParseTime, HoursOfTheAfternoon) {
    ExpectTime("0 PM", {12, 0, 0});
    ExpectTime("1 PM", {13, 0, 0});
    ExpectTime("11:59:59 PM", {23, 59, 59});
    ExpectTime("12:30 PM", {12, 30, 0});
    ExpectTime("PM 1:30", {13, 30, 0});
    ExpectTime("1PM30", {13, 30, 0});
}

TEST_F(ParseTime, HoursOfTheMorning) {
    ExpectTime("11:59:59 AM", {11, 59, 59});
    ExpectTime("12:30 AM", {0, 30, 0});
}

TEST_F(ParseTime, TheSeparatorsAreAllTheSame) {
    for (const char* text : {"11.45", "11 45", "11:45", "11/45", "11,45", "11;45", "11'45", "11-45",
                             "11::45", " 11 : 45 ", "-11-45-"}) {
        ExpectTime(text, {11, 45, 0});
    }
}

TEST_F(ParseTime, AnEmptyTextIsMidnight) {
    ExpectTime("", {0, 0, 0});
    ExpectTime("   ", {0, 0, 0});
    ExpectTime(":", {0, 0, 0});
    ExpectTime("AM", {0, 0, 0});
    ExpectTime("PM", {0, 0, 0});
}

TEST_F(ParseTime, BothHalvesOfTheDayAreToldAndTheWalkGoesOn) {
    ExpectRefusal("AM PM", {kBothHalves});
    ExpectRefusal("5 AM PM", {kBothHalves});
    ExpectRefusal("13 AM PM", {kBothHalves, kMorning, kAfternoon});
    ExpectRefusal("5:60 AM PM", {kBothHalves, kMinutes});
}

TEST_F(ParseTime, HoursOutsideTheMorning) {
    ExpectRefusal("13 AM", {kMorning});
}

TEST_F(ParseTime, HoursOutsideTheAfternoon) {
    ExpectRefusal("13 PM", {kAfternoon});
}

TEST_F(ParseTime, HoursOutsideTheDay) {
    ExpectRefusal("24:00", {kHours});
    ExpectRefusal("1145", {kHours});
    ExpectTime("23:59:59", {23, 59, 59});
}

TEST_F(ParseTime, MinutesOutsideTheHour) {
    ExpectRefusal("10:60", {kMinutes});
}

TEST_F(ParseTime, SecondsOutsideTheMinute) {
    ExpectRefusal("10:59:60", {kSeconds});
}

TEST_F(ParseTime, AFourthFieldAndEachLaterOneAreTold) {
    ExpectRefusal("11 45 30 10", {kFourthField});
    ExpectRefusal("11 45 30 10 20", {kFourthField, kFourthField});
}

TEST_F(ParseTime, ACharacterThatIsNoFigureEndsTheWalk) {
    ExpectRefusal("10:4x:99", {kNonDigit});
    ExpectRefusal("half past ten", {kNonDigit});
    ExpectRefusal("11:45 P.M.", {kNonDigit});
    ExpectRefusal("+11:45", {kNonDigit});
    ExpectRefusal("11\t45", {kNonDigit});
    ExpectRefusal("5 AM AM", {kNonDigit});
}

TEST_F(ParseTime, EveryBadFieldIsToldInItsOrder) {
    ExpectRefusal("24:60:60:1", {kHours, kMinutes, kSeconds, kFourthField});
    ExpectRefusal("24:60:x:1", {kHours, kMinutes, kNonDigit});
}

TEST_F(ParseTime, ANumberOfAnyLengthIsOutOfRangeAndLeavesNoRunTimeError) {
    const std::string huge(1 << 20, '9');
    ExpectRefusal(huge, {kHours});
    ExpectRefusal(huge + " AM", {kMorning});
    ExpectRefusal(huge + " PM", {kAfternoon});
    ExpectRefusal("1:65536", {kMinutes});
    ExpectRefusal("1:1:4294967296", {kSeconds});
    ExpectRefusal("1:1:1:99999999999", {kFourthField});
    ExpectTime(std::string(1 << 20, '0') + "5", {5, 0, 0});
}

TEST_F(ParseTime, BytesThatAreNoFiguresAreRefused) {
    for (int c = 128; c < 256; ++c)
        ExpectRefusal(std::string(3, static_cast<char>(c)), {kNonDigit});
    ExpectRefusal(std::string_view("1\0", 2), {kNonDigit});
}

TEST_F(ParseTime, WhatTheFormatterWritesIsReadBackOnBothClocks) {
    for (const Flag clock24 : {kFalse, kTrue}) {
        textState.Clock24 = clock24;
        for (int second = 0; second < 86400; ++second) {
            const Time time{static_cast<std::int16_t>(second / 3600),
                            static_cast<std::int16_t>(second / 60 % 60),
                            static_cast<std::int16_t>(second % 60), 0};
            ASSERT_EQ(Parse(FormatTimeText(time.hours, time.minutes, time.seconds)), time);
        }
    }
    EXPECT_EQ(TestShell().log, Boxes{});
}

}  // namespace
}  // namespace orvantis

// Typed zones, good and bad, worked out by hand from the rules of the header.
#include "text/zones.h"

#include <gtest/gtest.h>
#include <limits>

#include "support/reset_all.h"
#include "text/coordinates.h"
#include "text/parser_boxes.h"
#include "text/run_time_error.h"

namespace orvantis {
namespace {

const std::string kFormat = StopBox(
    "Error in Time Zone",
    R"(The format of the Time Zone is not recognised.\r\nPlease use a valid mnemonic (e.g. GMT) or a time.\r\nThis may be selected from a list by clicking on the Zone button.\r\nIf entering time, please use hours minutes and seconds separated by colons e.g. -10:30)");

std::string BadRow(std::string_view time) {
    return StopBox(
        "Error in Time Zone",
        R"(The format of the Time Zone mnemonic has been recognised as valid,\r\nbut the corresponding time value is not valid: )" +
            std::string(time) +
            R"(\r\nYou must edit the time zone file after exiting from this program.\r\nEnsure that you use hours, minutes and seconds separated by colons e.g. -10:30)");
}

void AddZone(std::string mnemonic, std::string time) {
    mnemonic.resize(5, ' ');
    time.resize(6, ' ');
    zones.ZoneMnemonic.push_back(mnemonic);
    zones.ZoneName.push_back(std::string(30, ' '));
    zones.ZoneTime.push_back(time);
    ++zones.ZoneCount;
}

class ParseZone : public ::testing::Test {
  protected:
    void SetUp() override {
        ResetAll();
        AddZone("GMT", "+0:00");
        AddZone("EST", "+5:00");
        AddZone("ACST", "-9:30");
        AddZone("GMT", "+1:00");
        AddZone("BAD", "+x:00");
        AddZone("SHORT", "");
        AddZone("FULL", "-10:30");
    }
    void TearDown() override { EXPECT_EQ(PendingRunTimeError(), 0); }

    // Accepted, without a box.
    static void ExpectZone(std::string_view text, float hours, std::string_view mnemonic) {
        float read = -99;
        std::string readMnemonic = "old";
        std::int16_t errorFlag = 1;
        ParseZoneText(text, read, readMnemonic, errorFlag, kTrue);
        EXPECT_EQ(errorFlag, 0) << text;
        EXPECT_EQ(read, hours) << text;
        EXPECT_EQ(readMnemonic, mnemonic) << text;
        EXPECT_EQ(TestShell().log, Boxes{}) << text;
    }

    // Refused, the hours left as they were: with a box if boxes are wanted, and without one.
    static void ExpectRefusal(std::string_view text, const std::string& box,
                              std::string_view mnemonic = "") {
        for (const Flag show : {kTrue, kFalse}) {
            TestShell().log.clear();
            float read = -99;
            std::string readMnemonic = "old";
            std::int16_t errorFlag = 1;
            ParseZoneText(text, read, readMnemonic, errorFlag, show);
            EXPECT_EQ(errorFlag, -1) << text;
            EXPECT_EQ(read, -99) << text;
            EXPECT_EQ(readMnemonic, mnemonic) << text;
            EXPECT_EQ(TestShell().log, show != 0 ? Boxes{box} : Boxes{}) << text;
        }
        TestShell().log.clear();
    }
};

TEST_F(ParseZone, AMnemonicOfTheTableHasTheHoursOfItsRow) {
    ExpectZone("GMT", 0, "GMT");
    ExpectZone("est", 5, "EST");
    ExpectZone("  acst  ", -9.5F, "ACST");
    ExpectZone("FULL", -10.5F, "FULL");
}

TEST_F(ParseZone, TheRowWinsOverWhatIsTypedBehindTheMnemonic) {
    ExpectZone("GMT +9:00", 0, "GMT");
    ExpectZone("EST rubbish", 5, "EST");
}

TEST_F(ParseZone, OfTwoRowsWithOneMnemonicTheFirstWins) {
    ExpectZone("GMT", 0, "GMT");
}

TEST_F(ParseZone, AnUnknownMnemonicWithATimeStands) {
    ExpectZone("XYZ +9:00", 9, "XYZ");
    ExpectZone("xyz -9", -9, "XYZ");
    ExpectZone("TOOLONG 5", 5, "TOOLONG");
}

TEST_F(ParseZone, ATimeAloneHasNoMnemonic) {
    ExpectZone("+9:00", 9, "");
    ExpectZone("9", 9, "");
    ExpectZone("-10:30", -10.5F, "");
    ExpectZone("-10:30:15", -static_cast<float>(10 + 30 / 60.0 + 15 / 3600.0), "");
    ExpectZone("+5:00:30", static_cast<float>(5 + 30 / 3600.0), "");
}

TEST_F(ParseZone, HoursEndAt13OnBothSides) {
    ExpectZone("13:00", 13, "");
    ExpectZone("-13:59", -static_cast<float>(13 + 59 / 60.0), "");
    ExpectRefusal("14:00", kFormat);
    ExpectRefusal("-14:00", kFormat);
}

TEST_F(ParseZone, TheSignOfHoursOfZeroIsKept) {
    ExpectZone("-0:30", -0.5F, "");
    ExpectZone("+0:30", 0.5F, "");
    ExpectZone("-0:00", 0, "");
    EXPECT_EQ(FormatZoneText(-0.0F), "+0:00");
}

TEST_F(ParseZone, AMinusAnywhereMakesTheZoneNegative) {
    ExpectZone("5-:30", -5.5F, "");
    ExpectZone("5:30-", -5.5F, "");
}

TEST_F(ParseZone, MinutesAndSecondsEndAt59) {
    ExpectZone("1:59:59", static_cast<float>(1 + 59 / 60.0 + 59 / 3600.0), "");
    ExpectRefusal("1:60", kFormat);
    ExpectRefusal("1:-1", kFormat);
    ExpectRefusal("1:00:60", kFormat);
}

TEST_F(ParseZone, AFourthFieldIsRefused) {
    ExpectRefusal("1:2:3:4", kFormat);
}

TEST_F(ParseZone, AColonAloneSeparates) {
    ExpectZone("9::30", 9.5F, "");
    ExpectZone(":", 0, "");
    for (const char* text : {"9.30", "9/30", "9,30", "9;30", "9'30"}) ExpectRefusal(text, kFormat);
    ExpectRefusal("XYZ 9 30", kFormat, "XYZ");
    ExpectRefusal("XYZ  9:30", kFormat, "XYZ");
}

TEST_F(ParseZone, AnEmptyTextIsRefused) {
    ExpectRefusal("", kFormat);
    ExpectRefusal("   ", kFormat);
}

TEST_F(ParseZone, AnUnknownMnemonicAloneIsRefused) {
    ExpectRefusal("XYZ", kFormat);
    ExpectRefusal("GM", kFormat);
    ExpectRefusal("XYZ ABC", kFormat, "XYZ");
}

TEST_F(ParseZone, ATableRowWithABadTimeIsToldAsSuch) {
    ExpectRefusal("BAD", BadRow("+x:00"), "BAD");
    ExpectRefusal("BAD +5:00", BadRow("+x:00"), "BAD");
}

TEST_F(ParseZone, ATableRowWithoutATimeIsToldAsSuch) {
    ExpectRefusal("SHORT", BadRow(""), "SHORT");
}

TEST_F(ParseZone, WithoutATableTimesAreRead) {
    zones = {};
    ExpectZone("-9:30", -9.5F, "");
    ExpectRefusal("GMT", kFormat);
}

TEST_F(ParseZone, HostileTextsAreRefusedAndLeaveNoRunTimeError) {
    constexpr std::size_t megabyte = 1 << 20;
    ExpectRefusal(std::string(megabyte, '9'), kFormat);
    ExpectRefusal("-" + std::string(megabyte, '9'), kFormat);
    ExpectRefusal("1:99999999999", kFormat);
    ExpectRefusal(std::string(megabyte, 'G'), kFormat);
    for (int c = 128; c < 256; ++c)
        ExpectRefusal("5" + std::string(1, static_cast<char>(c)), kFormat);
    ExpectRefusal(std::string_view("5\0", 2), kFormat);
    // One sign belongs to a number; a second one leaves it without a number.
    ExpectZone("+-5", 0, "");
    ExpectZone("-+5:30", -0.5F, "");
}

TEST_F(ParseZone, WhatTheFormatterWritesIsReadBackForEverySecond) {
    for (int second = -13 * 3600; second <= 13 * 3600; ++second) {
        const int magnitude = std::abs(second);
        const int whole = magnitude / 3600;
        const double sum = whole + magnitude / 60 % 60 / 60.0 + magnitude % 60 / 3600.0;
        const auto hours = static_cast<float>(second < 0 ? -sum : sum);
        float read = -99;
        std::string mnemonic;
        std::int16_t errorFlag = 1;
        ParseZoneText(FormatZoneText(hours), read, mnemonic, errorFlag, kTrue);
        ASSERT_EQ(errorFlag, 0) << FormatZoneText(hours);
        ASSERT_EQ(read, hours) << FormatZoneText(hours);
    }
}

TEST_F(ParseZone, LocalMeanTimeIsReadBack) {
    float read = -99;
    std::string mnemonic;
    std::int16_t errorFlag = 1;
    ParseZoneText(LmtZoneText(-138.5), read, mnemonic, errorFlag, kTrue);
    EXPECT_EQ(errorFlag, 0);
    EXPECT_EQ(mnemonic, "LMT");
    EXPECT_NEAR(read, -138.5 / 15, 1.0 / 3600);
}

TEST(FormatZoneText, ShowsTheSignAndSecondsOnlyIfThereAreAny) {
    EXPECT_EQ(FormatZoneText(0), "+0:00");
    EXPECT_EQ(FormatZoneText(5), "+5:00");
    EXPECT_EQ(FormatZoneText(-10.5F), "-10:30");
    EXPECT_EQ(FormatZoneText(-static_cast<float>(10 + 30 / 60.0 + 15 / 3600.0)), "-10:30:15");
    EXPECT_EQ(FormatZoneText(-0.5F), "-0:30");
    EXPECT_EQ(FormatZoneText(13), "+13:00");
}

TEST(FormatZoneText, RoundsToTheSecondAwayFromZero) {
    // Half a second and a little more is added: 0.00014 hours are 0.504 seconds.
    EXPECT_EQ(FormatZoneText(4.9999F), "+5:00");
    EXPECT_EQ(FormatZoneText(-4.9999F), "-5:00");
    EXPECT_EQ(FormatZoneText(5.0002F), "+5:00:01");
}

TEST(FormatZoneText, AValueOutOfRangeIsARunTimeError) {
    ResetAll();
    RunTimeError failure;
    FormatZoneText(std::numeric_limits<float>::infinity());
    EXPECT_TRUE(TakeRunTimeError(failure));
    FormatZoneText(std::numeric_limits<float>::quiet_NaN());
    EXPECT_TRUE(TakeRunTimeError(failure));
    EXPECT_EQ(failure.number, error::kOverflow);
}

TEST(ZoneFieldText, IsTheMnemonicABlankAndTheHours) {
    EXPECT_EQ(ZoneFieldText("EST", 5), "EST +5:00");
    EXPECT_EQ(ZoneFieldText("XYZ", -static_cast<float>(10 + 30 / 60.0 + 15 / 3600.0)),
              "XYZ -10:30:15");
}

TEST(ZoneFieldText, HasNoBlankWithoutAMnemonic) {
    EXPECT_EQ(ZoneFieldText("", -10.5F), "-10:30");
    EXPECT_EQ(ZoneFieldText("", 0), "+0:00");
}

TEST(IsLmtZone, LooksAtTheFirstThreeCharactersInAnyCase) {
    EXPECT_TRUE(IsLmtZone("LMT"));
    EXPECT_TRUE(IsLmtZone("lmt +1:00"));
    EXPECT_TRUE(IsLmtZone("LmTX"));
    EXPECT_FALSE(IsLmtZone(" LMT"));
    EXPECT_FALSE(IsLmtZone("LM"));
    EXPECT_FALSE(IsLmtZone(""));
}

TEST(LmtZoneText, FollowsTheLongitude) {
    EXPECT_EQ(LmtZoneText(15), "LMT +1:00:00");
    EXPECT_EQ(LmtZoneText(0), "LMT +0:00:00");
    EXPECT_EQ(LmtZoneText(-138.5), "LMT -9:14:00");
    EXPECT_EQ(LmtZoneText(180), "LMT +12:00:00");
    EXPECT_EQ(LmtZoneText(-0.25), "LMT -0:01:00");
    // 2.35 degrees east, Paris' observatory to the minute: 9 minutes 24 seconds.
    EXPECT_EQ(LmtZoneText(-2.35), "LMT -0:09:24");
}

TEST(LmtZoneText, TakesEveryMinuteOfLongitudeToItsFourSeconds) {
    for (int minute = 0; minute <= 180 * 60; ++minute) {
        const int seconds = minute * 4;
        char expected[32];
        std::snprintf(expected, sizeof expected, "LMT +%d:%02d:%02d", seconds / 3600,
                      seconds / 60 % 60, seconds % 60);
        ASSERT_EQ(LmtZoneText(minute / 60.0), expected);
    }
}

}  // namespace
}  // namespace orvantis

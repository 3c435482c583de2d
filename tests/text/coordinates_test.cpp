#include "text/coordinates.h"

#include <cmath>
#include <gtest/gtest.h>
#include <limits>

#include "support/reset_all.h"
#include "text/parser_boxes.h"
#include "text/run_time_error.h"

namespace orvantis {
namespace {

TEST(FormatLatitude, NegativeIsSouth) {
    EXPECT_EQ(FormatLatitude(-35 - 55 / 60.0), "35S55");
    EXPECT_EQ(FormatLatitude(-35 - 55 / 60.0 - 12 / 3600.0), "35S55 12");
    EXPECT_EQ(FormatLatitude(7.5), "07N30");
}

TEST(FormatLatitude, ZeroIsNorthAndZeroLongitudeIsWest) {
    EXPECT_EQ(FormatLatitude(0), "00N00");
    EXPECT_EQ(FormatLongitude(0), "000W00");
}

TEST(FormatLatitude, TheGuardKeepsAStoredMinuteWhole) {
    EXPECT_EQ(FormatLatitude(-33.8667), "33S52");
    // As a chart file holds it, in 32 bits.
    EXPECT_EQ(FormatLatitude(static_cast<double>(static_cast<float>(33 + 52 / 60.0))), "33N52");
}

// Each of them lies a hair below its second, and without the guard would show the one before:
// 35S54 59, 07S20 59, 35S55 11 and 48N50 59; 138E33 59, which 32 bits hold still lower.
TEST(FormatLatitude, TheGuardKeepsAStoredSecondWhole) {
    EXPECT_EQ(FormatLatitude(-35 - 55 / 60.0), "35S55");
    EXPECT_EQ(FormatLatitude(-7.35), "07S21");
    EXPECT_EQ(FormatLatitude(-35 - 55 / 60.0 - 12 / 3600.0), "35S55 12");
    EXPECT_EQ(FormatLatitude(static_cast<double>(48.85F)), "48N51");
    EXPECT_EQ(FormatLongitude(static_cast<double>(-138.56666F)), "138E34");
}

TEST(FormatLongitude, NegativeIsEast) {
    EXPECT_EQ(FormatLongitude(-138.5), "138E30");
    EXPECT_EQ(FormatLongitude(-138 - 34 / 60.0 - 10 / 3600.0), "138E34 10");
    EXPECT_EQ(FormatLongitude(75), "075W00");
}

TEST(FormatLatitude, SecondsComeBackOverTheWholeCircle) {
    for (int seconds = 0; seconds <= 180 * 3600; seconds += 7) {
        std::string expected = CoordinateText(static_cast<std::int16_t>(seconds / 3600), 'W',
                                              static_cast<std::int16_t>(seconds / 60 % 60),
                                              static_cast<std::int16_t>(seconds % 60), 3);
        ASSERT_EQ(FormatLongitude(seconds / 3600.0), expected);
    }
}

TEST(FormatLatitude, AValueOutOfRangeIsARunTimeError) {
    ResetAll();
    FormatLatitude(std::numeric_limits<double>::infinity());
    RunTimeError failure;
    ASSERT_TRUE(TakeRunTimeError(failure));
    EXPECT_EQ(failure.number, error::kOverflow);
    FormatLongitude(std::numeric_limits<double>::quiet_NaN());
    EXPECT_TRUE(TakeRunTimeError(failure));
}

TEST(LatTextOfDegrees, DegreesAreRoundedToMinutesAndWhatIsNoPlaceIsEmpty) {
    EXPECT_EQ(LatTextOfDegrees(37.75), "37N45");
    EXPECT_EQ(LatTextOfDegrees(-0.0833), "00S05");
    EXPECT_EQ(LongTextOfDegrees(145.5), "145E30");
    EXPECT_EQ(LongTextOfDegrees(-0.51), "000W31");
    for (const double none : {std::nan(""), HUGE_VAL, -HUGE_VAL, 1e30, -547.0}) {
        EXPECT_EQ(LatTextOfDegrees(none), "");
        EXPECT_EQ(LongTextOfDegrees(none), "");
    }
    EXPECT_EQ(PendingRunTimeError(), 0);
}

TEST(FormatLatMinutes, NegativeIsSouth) {
    EXPECT_EQ(FormatLatMinutes(37 * 60 + 45), "37N45");
    EXPECT_EQ(FormatLatMinutes(-(37 * 60 + 45)), "37S45");
    EXPECT_EQ(FormatLatMinutes(-5), "00S05");
}

TEST(FormatLongMinutes, NegativeIsWestUnlikeInCharts) {
    EXPECT_EQ(FormatLongMinutes(145 * 60 + 30), "145E30");
    EXPECT_EQ(FormatLongMinutes(-8310), "138W30");
    EXPECT_EQ(FormatLongMinutes(0), "000E00");
    EXPECT_EQ(FormatLongMinutes(-32768), "546W08");
}

const std::string kLatitudeFormat = StopBox(
    "Error in Latitude",
    R"(The format of the latitude is not recognised.\r\nSpecify N for northern hemisphere latitudes\r\nor S for southern hemisphere latitudes.\r\nPlease use a valid format e.g. 35S55)");
const std::string kLatitudeRange = StopBox(
    "Error in Latitude",
    R"(The format of the latitude is not recognised.\r\nDegrees must be in the range 0 to 90.\r\nMinutes or seconds must be in the range 0 to 59.\r\nPlease use a valid format e.g. 35S55)");
const std::string kLongitudeFormat = StopBox(
    "Error in Longitude",
    R"(The format of the longitude is not recognised.\r\nSpecify E for eastern hemisphere longitudes\r\nor W for western hemisphere longitudes.\r\nPlease use a valid format e.g. 138E34)");
const std::string kLongitudeRange = StopBox(
    "Error in Longitude",
    R"(The format of the longitude is not recognised.\r\nDegrees must be in the range 0 to 180.\r\nMinutes or seconds must be in the range 0 to 59.\r\nPlease use a valid format e.g. 138E34)");

using Parser = void (*)(std::string_view, double&, std::int16_t&);

class ParseCoordinate : public ::testing::Test {
  protected:
    void SetUp() override { ResetAll(); }
    void TearDown() override { EXPECT_EQ(PendingRunTimeError(), 0); }

    // Accepted, without a box. The expected value is the rule's own sum, so it is equal to the bit.
    static void ExpectValue(Parser parse, std::string_view text, double expected) {
        double value = -999;
        std::int16_t errorFlag = 1;
        parse(text, value, errorFlag);
        EXPECT_EQ(errorFlag, 0) << text;
        EXPECT_EQ(value, expected) << text;
        EXPECT_EQ(TestShell().log, Boxes{}) << text;
    }

    // Refused with one box, the value left as it was.
    static void ExpectRefusal(Parser parse, std::string_view text, const std::string& box) {
        TestShell().log.clear();
        double value = -999;
        std::int16_t errorFlag = 1;
        parse(text, value, errorFlag);
        EXPECT_EQ(errorFlag, -1) << text;
        EXPECT_EQ(value, -999) << text;
        EXPECT_EQ(TestShell().log, Boxes{box}) << text;
        TestShell().log.clear();
    }
};

TEST_F(ParseCoordinate, TheLetterMayStandAnywhere) {
    const double expected = -(35 + 55 / 60.0);
    for (const char* text : {"35S55", "S35 55", "35 55S", "35s55", " 35 S 55 ", "35.55S", "35/S/55",
                             "35-55 s", "35:55:S", "35;55S", "35'55S", "35,55,0S"}) {
        ExpectValue(ParseLatitude, text, expected);
    }
    ExpectValue(ParseLatitude, "35N55", 35 + 55 / 60.0);
}

TEST_F(ParseCoordinate, EastIsNegativeAndWestPositive) {
    ExpectValue(ParseLongitude, "138E34", -(138 + 34 / 60.0));
    ExpectValue(ParseLongitude, "75W00", 75);
    ExpectValue(ParseLongitude, "138E34 10", -(138 + 34 / 60.0 + 10 / 3600.0));
}

TEST_F(ParseCoordinate, TheLimitItselfIsAcceptedAndNothingBeyond) {
    ExpectValue(ParseLatitude, "90N00", 90);
    ExpectValue(ParseLatitude, "90S00 00", -90);
    ExpectRefusal(ParseLatitude, "90N01", kLatitudeRange);
    ExpectRefusal(ParseLatitude, "90N00 01", kLatitudeRange);
    ExpectRefusal(ParseLatitude, "91N00", kLatitudeRange);
    ExpectValue(ParseLatitude, "89N59 59", 89 + 59 / 60.0 + 59 / 3600.0);
    ExpectValue(ParseLongitude, "180E00", -180);
    ExpectRefusal(ParseLongitude, "180W30", kLongitudeRange);
    ExpectRefusal(ParseLongitude, "180W00 01", kLongitudeRange);
    ExpectRefusal(ParseLongitude, "181W00", kLongitudeRange);
    ExpectValue(ParseLongitude, "90W30", 90.5);
}

TEST_F(ParseCoordinate, BothLettersOrNoneAreAFormatError) {
    ExpectRefusal(ParseLatitude, "35N55S", kLatitudeFormat);
    ExpectRefusal(ParseLatitude, "35 55", kLatitudeFormat);
    ExpectRefusal(ParseLatitude, "", kLatitudeFormat);
    ExpectRefusal(ParseLatitude, "35E55", kLatitudeFormat);
    ExpectRefusal(ParseLongitude, "138E34W", kLongitudeFormat);
    ExpectRefusal(ParseLongitude, "138 34", kLongitudeFormat);
    ExpectRefusal(ParseLongitude, "138S34", kLongitudeFormat);
}

TEST_F(ParseCoordinate, AnotherCharacterIsAFormatError) {
    ExpectRefusal(ParseLatitude, "35S55S", kLatitudeFormat);
    ExpectRefusal(ParseLatitude, "35X55N", kLatitudeFormat);
    ExpectRefusal(ParseLatitude, "+35N55", kLatitudeFormat);
    ExpectRefusal(ParseLatitude, "35\xB0 55N", kLatitudeFormat);
    ExpectRefusal(ParseLongitude, "138EE34", kLongitudeFormat);
    ExpectRefusal(ParseLongitude, "138E34x", kLongitudeFormat);
}

TEST_F(ParseCoordinate, TheFirstFaultAloneIsTold) {
    ExpectRefusal(ParseLatitude, "95N60", kLatitudeRange);
    ExpectRefusal(ParseLatitude, "95N6x", kLatitudeRange);
    ExpectRefusal(ParseLatitude, "9xN60", kLatitudeFormat);
}

TEST_F(ParseCoordinate, ADecimalPointIsASeparator) {
    ExpectValue(ParseLatitude, "35S55.5", -(35 + 55 / 60.0 + 5 / 3600.0));
}

TEST_F(ParseCoordinate, MinutesAndSecondsEndAt59) {
    ExpectRefusal(ParseLatitude, "35S60", kLatitudeRange);
    ExpectRefusal(ParseLatitude, "35S55 60", kLatitudeRange);
    ExpectRefusal(ParseLongitude, "138E60", kLongitudeRange);
    ExpectRefusal(ParseLongitude, "138E34 60", kLongitudeRange);
}

TEST_F(ParseCoordinate, AFourthFieldIsARangeError) {
    ExpectRefusal(ParseLatitude, "35S55 10 0", kLatitudeRange);
    ExpectRefusal(ParseLongitude, "138E34 10 0", kLongitudeRange);
}

TEST_F(ParseCoordinate, TheLetterAloneIsZero) {
    ExpectValue(ParseLatitude, "N", 0);
    ExpectValue(ParseLatitude, "s", 0);
    ExpectValue(ParseLongitude, "W", 0);
    ExpectValue(ParseLongitude, "5E", -5);
}

TEST_F(ParseCoordinate, HostileTextsAreRefusedAndLeaveNoRunTimeError) {
    constexpr std::size_t megabyte = 1 << 20;
    ExpectRefusal(ParseLatitude, "N" + std::string(megabyte, '9'), kLatitudeRange);
    ExpectRefusal(ParseLongitude, "1W99999999999", kLongitudeRange);
    ExpectRefusal(ParseLongitude, "1W1 65536", kLongitudeRange);
    ExpectRefusal(ParseLatitude, std::string(megabyte, 'N'), kLatitudeFormat);
    ExpectRefusal(ParseLatitude, std::string_view("35N\0", 4), kLatitudeFormat);
    ExpectValue(ParseLatitude, "N" + std::string(megabyte, '0') + "7", 7);
    for (int c = 128; c < 256; ++c) {
        ExpectRefusal(ParseLatitude, "35N" + std::string(1, static_cast<char>(c)), kLatitudeFormat);
    }
}

TEST_F(ParseCoordinate, WhatTheFormatterWritesIsReadBackOverTheWholeCircle) {
    for (int second = 0; second <= 180 * 3600; second += 7) {
        const int degrees = second / 3600;
        const double value = degrees + second / 60 % 60 / 60.0 + second % 60 / 3600.0;
        double read = -999;
        std::int16_t errorFlag = 1;
        for (const double sign : {1.0, -1.0}) {
            ParseLongitude(FormatLongitude(sign * value), read, errorFlag);
            ASSERT_EQ(errorFlag, 0) << FormatLongitude(sign * value);
            ASSERT_EQ(read, sign * value) << FormatLongitude(sign * value);
            if (second > 90 * 3600) continue;
            ParseLatitude(FormatLatitude(sign * value), read, errorFlag);
            ASSERT_EQ(errorFlag, 0) << FormatLatitude(sign * value);
            ASSERT_EQ(read, sign * value) << FormatLatitude(sign * value);
        }
    }
}

TEST_F(ParseCoordinate, WhatTheFormatterOfMinutesWritesIsReadBackForEveryMinute) {
    for (int minute = -180 * 60; minute <= 180 * 60; ++minute) {
        const auto arcMinutes = static_cast<std::int16_t>(minute);
        double read = -999;
        std::int16_t errorFlag = 1;
        ParseLongitude(FormatLongMinutes(arcMinutes), read, errorFlag);
        ASSERT_EQ(errorFlag, 0);
        ASSERT_NEAR(read * 60, -minute, 1e-9);
        if (std::abs(minute) > 90 * 60) continue;
        ParseLatitude(FormatLatMinutes(arcMinutes), read, errorFlag);
        ASSERT_EQ(errorFlag, 0);
        ASSERT_NEAR(read * 60, minute, 1e-9);
    }
}

}  // namespace
}  // namespace orvantis

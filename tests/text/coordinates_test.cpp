#include "text/coordinates.h"

#include <gtest/gtest.h>
#include <limits>

#include "support/reset_all.h"
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

}  // namespace
}  // namespace orvantis

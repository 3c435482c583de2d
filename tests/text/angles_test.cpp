#include "text/angles.h"

#include <gtest/gtest.h>
#include <limits>
#include <set>

#include "support/reset_all.h"
#include "text/run_time_error.h"

namespace orvantis {
namespace {

constexpr std::int16_t kPlain = angle_style::kPlain;
constexpr std::int16_t kName = angle_style::kSignName;
constexpr std::int16_t kGlyph = angle_style::kSignGlyph;

struct AngleRow {
    double value;
    std::int16_t style;
    std::int16_t digits;
    bool symbols;
    bool minutesOnly;
    bool forceSeconds;
    bool plusSign;
    std::string text;
};

Flag ToFlag(bool value) {
    return value ? kTrue : kFalse;
}

void ExpectTexts(const std::vector<AngleRow>& rows) {
    for (const AngleRow& row : rows) {
        EXPECT_EQ(
            FormatAngle(row.value, row.style, row.digits, ToFlag(row.symbols),
                        ToFlag(row.minutesOnly), ToFlag(row.forceSeconds), ToFlag(row.plusSign)),
            row.text)
            << row.value;
    }
}

TEST(FormatAngle, StandsInASignByItsTwoLetters) {
    ExpectTexts({{123.5, kName, 2, false, false, false, false, "03Le30"},
                 {0, kName, 2, false, false, false, false, "00Ar00"},
                 {359.75, kName, 2, false, false, false, false, "29Pi45"},
                 {29.75, kName, 1, false, false, false, false, "29Ar45"}});
}

TEST(FormatAngle, RoundsBeforeTheSignIsTaken) {
    ExpectTexts({{59.9999, kName, 2, false, true, false, false, "00Ge00"},
                 {359.9999, kName, 2, false, true, false, false, "00Ar00"},
                 {29.99999, kName, 2, false, false, true, false, "00Ta00 00"},
                 {29.9998, kName, 2, false, false, true, false, "29Ar59 59"}});
}

TEST(FormatAngle, GoesOnInTheFirstSignBehindTheLast) {
    ExpectTexts({{360, kName, 2, false, true, false, false, "00Ar00"},
                 {725, kName, 2, false, true, false, false, "05Ar00"}});
}

TEST(FormatAngle, PlainDegreesHaveABlankBeforeTheMinutes) {
    ExpectTexts({{-10.25, kPlain, 2, false, false, false, false, "-10 15"},
                 {10.25, kPlain, 3, false, false, false, false, "010 15"},
                 {5, kPlain, 1, false, false, false, false, "5 00"},
                 {123.5, kPlain, 1, false, true, false, false, "123 30"}});
}

TEST(FormatAngle, PutsMarksBehindTheNumbers) {
    ExpectTexts({{-10.25, kPlain, 2, true, false, false, false,
                  "-10\xB0"
                  "15'"},
                 {10.2525, kPlain, 2, true, false, false, false,
                  "10\xB0"
                  "15'09\""},
                 {10.2525, kPlain, 3, true, true, false, false,
                  "010\xB0"
                  "15'"},
                 {123.5, kName, 2, true, false, true, false, "03\xB0Le30'00\""},
                 {123.5, kGlyph, 2, true, true, false, false,
                  "03\xB0\x84"
                  "30'"}});
}

TEST(FormatAngle, ShowsSecondsOfZeroOnlyIfForced) {
    ExpectTexts({{10, kPlain, 2, false, false, false, false, "10 00"},
                 {10, kPlain, 2, false, false, true, false, "10 00 00"},
                 {10, kPlain, 2, false, true, true, false, "10 00"},
                 {10.0025, kPlain, 2, false, false, false, false, "10 00 09"},
                 {10.0002, kPlain, 2, false, false, false, false, "10 00 01"},
                 {10.0001, kPlain, 2, false, false, false, false, "10 00"}});
}

TEST(FormatAngle, ShowsThePlusOnlyIfAskedFor) {
    ExpectTexts({{10, kPlain, 2, false, true, false, true, "+10 00"},
                 {0, kPlain, 2, false, true, false, true, "+00 00"},
                 {-10, kPlain, 2, false, true, false, true, "-10 00"},
                 // The sign is that of the value, before it is rounded away.
                 {-0.001, kPlain, 2, false, true, false, true, "-00 00"}});
}

TEST(FormatAngle, ShowsNoDegreesForAnotherNumberOfDigits) {
    ExpectTexts({{123.5, kName, 0, false, true, false, false, "Le30"},
                 {123.5, kPlain, 4, false, true, false, false, " 30"},
                 {-123.5, kName, -1, false, true, false, false, "-Le30"}});
}

TEST(FormatAngle, HasTwelveDistinctGlyphsOfTheSigns) {
    const std::vector<int> bytes = {220, 129, 130, 131, 132, 133, 134, 135, 136, 137, 138, 139};
    std::set<char> glyphs;
    for (int sign = 0; sign < 12; ++sign) {
        const std::string text =
            FormatAngle(sign * 30 + 5, kGlyph, 2, kFalse, kTrue, kFalse, kFalse);
        ASSERT_EQ(text.size(), 5U);
        EXPECT_EQ(text.substr(0, 2) + text.substr(3), "0500");
        glyphs.insert(text[2]);
        EXPECT_EQ(static_cast<unsigned char>(text[2]), bytes[static_cast<std::size_t>(sign)]);
    }
    EXPECT_EQ(glyphs.size(), 12U);
}

TEST(FormatAngle, SecondsComeBackOverTheWholeCircle) {
    for (int seconds = 0; seconds < 360 * 3600; seconds += 7) {
        char expected[32];
        std::snprintf(expected, sizeof expected, "%03d %02d %02d", seconds / 3600,
                      seconds / 60 % 60, seconds % 60);
        ASSERT_EQ(FormatAngle(seconds / 3600.0, kPlain, 3, kFalse, kFalse, kTrue, kFalse),
                  expected);
    }
}

TEST(FormatAngle, AValueOutOfRangeIsARunTimeError) {
    ResetAll();
    for (const double value : {1e9, -1e9, std::numeric_limits<double>::infinity(),
                               std::numeric_limits<double>::quiet_NaN()}) {
        for (const std::int16_t style : {kPlain, kName, kGlyph}) {
            FormatAngle(value, style, 2, kTrue, kFalse, kTrue, kTrue);
            RunTimeError failure;
            ASSERT_TRUE(TakeRunTimeError(failure)) << value;
            EXPECT_EQ(failure.number, error::kOverflow);
        }
    }
}

}  // namespace
}  // namespace orvantis

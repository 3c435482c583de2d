#include "text/strings.h"

#include <cmath>
#include <gtest/gtest.h>

#include "text/fields.h"

namespace orvantis {
namespace {

TEST(NumericValue, IsTheNumberThatATextBeginsWith) {
    EXPECT_EQ(NumericValue("12"), 12);
    EXPECT_EQ(NumericValue("  12abc"), 12);
    EXPECT_EQ(NumericValue("-12.5 x"), -12.5);
    EXPECT_EQ(NumericValue("+.5"), 0.5);
    EXPECT_EQ(NumericValue("1e3"), 1000);
}

TEST(NumericValue, IsZeroWithoutANumber) {
    for (const char* text :
         {"", " ", "abc", "-", "+", ".", "inf", "nan", "-inf", "+-5", "-+5", "--5"}) {
        EXPECT_EQ(NumericValue(text), 0) << text;
    }
}

TEST(NumericValue, GoesToTheEndsOfTheRangeBeyondIt) {
    EXPECT_TRUE(std::isinf(NumericValue("1e999")));
    EXPECT_EQ(NumericValue("-" + std::string(1000, '9')), -INFINITY);
    EXPECT_EQ(NumericValue("1e-999"), 0);
    EXPECT_EQ(NumericValue("0." + std::string(1000, '0') + "1"), 0);
}

TEST(LeadingInteger, IsTheWholeNumberThatAFieldBeginsWith) {
    EXPECT_EQ(LeadingInteger("12"), 12);
    EXPECT_EQ(LeadingInteger("-12-3"), -12);
    EXPECT_EQ(LeadingInteger("+7x"), 7);
    EXPECT_EQ(LeadingInteger("007"), 7);
    for (const char* text : {"", "-", "x1", "--5", "+-5"})
        EXPECT_EQ(LeadingInteger(text), 0) << text;
    EXPECT_EQ(LeadingInteger("99999999999999999999"), 1000000000);
    EXPECT_EQ(LeadingInteger("-99999999999999999999"), -1000000000);
}

TEST(FitInt16, GivesTheNearestEndForWhatDoesNotFit) {
    std::int16_t narrow = 0;
    EXPECT_TRUE(FitInt16(-32768, narrow));
    EXPECT_EQ(narrow, -32768);
    EXPECT_FALSE(FitInt16(32768, narrow));
    EXPECT_EQ(narrow, 32767);
    EXPECT_FALSE(FitInt16(-1000000000, narrow));
    EXPECT_EQ(narrow, -32768);
}

}  // namespace
}  // namespace orvantis

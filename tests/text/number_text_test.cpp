#include "text/number_text.h"

#include <gtest/gtest.h>

#include "text/strings.h"

namespace orvantis {
namespace {

TEST(NumberText, IsTheShortestThatGivesTheNumberAgain) {
    const struct {
        float value;
        const char* text;
    } rows[] = {{15, "15"},       {7.5F, "7.5"}, {-0.25F, "-0.25"}, {66.55F, "66.55"}, {0, "0"},
                {1e20F, "1e+20"}, {0.1F, "0.1"}, {100000, "1e+05"}, {123456, "123456"}};
    for (const auto& row : rows) {
        EXPECT_EQ(ShortNumberText(row.value), row.text);
        EXPECT_EQ(static_cast<float>(NumericValue(row.text)), row.value) << row.text;
    }
}

}  // namespace
}  // namespace orvantis

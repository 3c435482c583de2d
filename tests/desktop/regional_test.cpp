#include "desktop/regional.h"

#include <gtest/gtest.h>

namespace orvantis {
namespace {

// Expected values by the habits of each country as the Unicode locale data (CLDR) have them.
TEST(Regional, DateOrderClockAndLanguageFollowTheLocale) {
    const struct {
        const char* locale;
        const char* date;
        const char* time;
        const char* language;
    } rows[] = {
        {"en_US", "0", "0", "EN"}, {"en_GB", "1", "1", "EN"}, {"de_DE", "1", "1", "DE"},
        {"fr_FR", "1", "1", "FR"}, {"sv_SE", "2", "1", "SV"}, {"ja_JP", "2", "1", "JA"},
        {"en_IN", "1", "0", "EN"}, {"bg_BG", "1", "1", "BG"},
    };
    for (const auto& row : rows) {
        const QLocale locale(QString::fromLatin1(row.locale));
        EXPECT_EQ(RegionalTextOf(locale, "iDate"), row.date) << row.locale;
        EXPECT_EQ(RegionalTextOf(locale, "iTime"), row.time) << row.locale;
        EXPECT_EQ(LanguageOf(locale), row.language) << row.locale;
        EXPECT_EQ(RegionalTextOf(locale, "iOther"), "") << row.locale;
    }
}

TEST(Regional, ALocaleWithoutALanguageIsEnglish) {
    EXPECT_EQ(LanguageOf(QLocale::c()), "EN");
}

}  // namespace
}  // namespace orvantis

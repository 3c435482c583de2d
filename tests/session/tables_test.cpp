#include "session/tables.h"

#include <gtest/gtest.h>
#include <set>

namespace orvantis {
namespace {

TEST(Tables, ANameWithoutAShortFormGivesItsFirstThreeLetters) {
    EXPECT_EQ(PointShortName(13), "Chi");
    EXPECT_EQ(PointShortName(1), "Mon");
    EXPECT_EQ(PointShortName(33), "Vus");
    EXPECT_EQ(PointShortName(2), "The");
}

TEST(Tables, NumbersOutsideTheTableHaveNoName) {
    EXPECT_EQ(PointName(0), "");
    EXPECT_EQ(PointName(37), "");
    EXPECT_EQ(PointShortName(-1), "");
}

TEST(Tables, GlyphBytesAreThoseOfTheGlyphFont) {
    EXPECT_EQ(static_cast<unsigned char>(PointGlyph(1)), 182);
    EXPECT_EQ(static_cast<unsigned char>(PointGlyph(36)), 217);
    EXPECT_EQ(static_cast<unsigned char>(SignGlyph(0)), 220);
    EXPECT_EQ(static_cast<unsigned char>(SignGlyph(1)), 221);
    EXPECT_EQ(static_cast<unsigned char>(SignGlyph(2)), 129);
    EXPECT_EQ(static_cast<unsigned char>(SignGlyph(12)), 139);
}

TEST(Tables, MapDetailsNameEachClassOnce) {
    std::set<std::int16_t> classes;
    for (const MapDetail& detail : kMapDetails) classes.insert(detail.detailClass);
    EXPECT_EQ(classes.size(), 8U);
    EXPECT_EQ(kMapDetails[1].name, "Islands");
    EXPECT_EQ(kMapDetails[1].detailClass, 5);
    EXPECT_FALSE(kMapDetails[6].hasLines);
}

}  // namespace
}  // namespace orvantis

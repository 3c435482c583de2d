#include <cstdlib>
#include <gtest/gtest.h>
#include <set>
#include <string>

#include "raster/glyph_font.h"
#include "raster/image_surface.h"
#include "raster/qt_gui.h"
#include "raster/text_face.h"
#include "session/tables.h"
#include "text/code_page.h"

namespace orvantis {
namespace {

Font FontOf(std::string name, float size = 9, bool bold = false, bool italic = false) {
    return {std::move(name), size, bold, italic};
}

Font GlyphFont(float size = 9) {
    return FontOf(std::string(kGlyphFontName), size);
}

const GlyphMask& Glyph(std::uint8_t byte, float size = 9) {
    return MaskOf(*FindTextFace(GlyphFont(size), 96), byte);
}

int Ink(const GlyphMask& mask) {
    int ink = 0;
    for (const std::uint8_t cover : mask.cover) ink += cover;
    return ink / 255;
}

// Share of the ink in which two glyphs differ, laid over each other at their places.
double Difference(const GlyphMask& a, const GlyphMask& b) {
    const auto at = [](const GlyphMask& mask, int x, int y) {
        x -= mask.left;
        y -= mask.top;
        if (x < 0 || y < 0 || x >= mask.width || y >= mask.height) return 0;
        return static_cast<int>(mask.cover[static_cast<std::size_t>(y) * mask.width + x]);
    };
    int different = 0;
    int all = 0;
    for (int y = -40; y < 20; ++y) {
        for (int x = -10; x < 50; ++x) {
            different += std::abs(at(a, x, y) - at(b, x, y));
            all += at(a, x, y) + at(b, x, y);
        }
    }
    return all == 0 ? 0 : static_cast<double>(different) / all;
}

TEST(GlyphFont, PointsAndSignsAreLegibleAndDistinctAtNinePoints) {
    std::vector<std::uint8_t> bytes;
    for (std::int16_t point = 1; point <= 36; ++point) {
        bytes.push_back(static_cast<std::uint8_t>(PointGlyph(point)));
    }
    for (int sign = 1; sign <= 12; ++sign) bytes.push_back(static_cast<std::uint8_t>(127 + sign));
    for (std::size_t i = 0; i < bytes.size(); ++i) {
        const GlyphMask& mask = Glyph(bytes[i]);
        EXPECT_GE(Ink(mask), 8) << static_cast<int>(bytes[i]);
        EXPECT_GE(mask.height, 6) << static_cast<int>(bytes[i]);
        EXPECT_LE(mask.height, 16) << static_cast<int>(bytes[i]);
        EXPECT_LE(mask.advance, 16) << static_cast<int>(bytes[i]);
        for (std::size_t j = 0; j < i; ++j) {
            EXPECT_GT(Difference(mask, Glyph(bytes[j])), 0.12)
                << static_cast<int>(bytes[i]) << " and " << static_cast<int>(bytes[j]);
        }
    }
}

TEST(GlyphFont, SignsOfTheTablesAreTheTwelveSigns) {
    EXPECT_EQ(Difference(Glyph(221), Glyph(128)), 0);
    for (std::int16_t sign = 1; sign <= 12; ++sign) {
        const auto byte = static_cast<std::uint8_t>(SignGlyph(sign));
        EXPECT_EQ(GlyphOf(byte).character, 0x2648U + sign - 1);
    }
}

TEST(GlyphFont, MarksAndAspectsHaveShapesOfTheirOwn) {
    const std::uint8_t bytes[] = {140, 141, 142, 143, 144, 145, 146, 147, 148, 149, 150, 151,
                                  152, 153, 154, 155, 156, 157, 158, 159, 160, 161, 162, 163,
                                  164, 165, 166, 167, 168, 169, 176, 222, 223, 229, 252, 253};
    for (const std::uint8_t a : bytes) {
        EXPECT_GT(Ink(Glyph(a)), 3) << static_cast<int>(a);
        for (const std::uint8_t b : bytes) {
            if (a < b) {
                EXPECT_GT(Difference(Glyph(a), Glyph(b)), 0.05)
                    << static_cast<int>(a) << " and " << static_cast<int>(b);
            }
        }
    }
    EXPECT_EQ(Difference(Glyph(224), Glyph(142)), 0);
    EXPECT_EQ(Difference(Glyph(225), Glyph(143)), 0);
    EXPECT_EQ(Difference(Glyph(226), Glyph(156)), 0);
    EXPECT_EQ(Difference(Glyph(227), Glyph(157)), 0);
    EXPECT_EQ(Difference(Glyph(228), Glyph(159)), 0);
}

TEST(GlyphFont, LettersFiguresAndMarksOfArcAreOrdinary) {
    for (int byte = 33; byte < 127; ++byte) {
        EXPECT_EQ(GlyphOf(static_cast<std::uint8_t>(byte)).source, GlyphSource::Text);
        EXPECT_GT(Glyph(static_cast<std::uint8_t>(byte)).cover.size(), 0U) << byte;
    }
    EXPECT_GT(Glyph(' ').advance, 0);
    EXPECT_EQ(Ink(Glyph(' ')), 0);
}

TEST(GlyphFont, BytesOfTheHeaderAgreeWithTheTable) {
    EXPECT_EQ(GlyphOf(static_cast<std::uint8_t>(kRetrogradeGlyph)).character, 0x211EU);
    EXPECT_EQ(GlyphOf(static_cast<std::uint8_t>(kSolarEclipseGlyph)).shape,
              GlyphShape::SolarEclipse);
    EXPECT_EQ(GlyphOf(static_cast<std::uint8_t>(kLunarEclipseGlyph)).shape,
              GlyphShape::LunarEclipse);
    EXPECT_EQ(GlyphOf(static_cast<std::uint8_t>(kDegreeGlyph)).character, 0xB0U);
    EXPECT_EQ(GlyphOf(static_cast<std::uint8_t>(kStationaryGlyph)).letters, "St");
    EXPECT_EQ(GlyphOf(static_cast<std::uint8_t>(kConjunctionGlyph)).character, 0x260CU);
    EXPECT_EQ(GlyphOf(static_cast<std::uint8_t>(kOppositionGlyph)).character, 0x260DU);
}

TEST(Text, ExtentIsTheSumOfTheLettersAndTheHeightOfALine) {
    ImageSurface surface(10, 10);
    for (const char* name : {"QX Symbol", "DejaVu Sans"}) {
        surface.SelectFont(FontOf(name));
        const SurfaceSize a = surface.TextExtent("A");
        const SurfaceSize b = surface.TextExtent("bc");
        EXPECT_EQ(surface.TextExtent("Abc").width, a.width + b.width);
        EXPECT_EQ(surface.TextExtent("").width, 0);
        EXPECT_EQ(surface.TextExtent("").height, a.height);
        // 9 points at 96 dots an inch are 12 pixels; a line is higher, a letter narrower.
        EXPECT_GE(a.height, 12);
        EXPECT_LE(a.height, 18);
        EXPECT_GE(a.width, 6);
        EXPECT_LE(a.width, 12);
    }
}

TEST(Text, SizeGrowsWithPointsAndResolution) {
    ImageSurface normal(10, 10, 96);
    ImageSurface fine(10, 10, 192);
    normal.SelectFont(GlyphFont(9));
    fine.SelectFont(GlyphFont(9));
    const SurfaceSize nine = normal.TextExtent("M");
    normal.SelectFont(GlyphFont(18));
    const SurfaceSize eighteen = normal.TextExtent("M");
    EXPECT_EQ(fine.TextExtent("M").width, eighteen.width);
    EXPECT_EQ(fine.TextExtent("M").height, eighteen.height);
    EXPECT_NEAR(eighteen.width, 2 * nine.width, 2);
}

// Left and right end of the ink of a text.
std::pair<int, int> InkEnds(ImageSurface& surface) {
    int first = 1000;
    int last = -1;
    for (int y = 0; y < surface.Size().height; ++y) {
        for (int x = 0; x < surface.Size().width; ++x) {
            if (surface.GetPixel(x, y) == 0xFFFFFF) continue;
            first = std::min(first, x);
            last = std::max(last, x);
        }
    }
    return {first, last};
}

TEST(Text, AlignmentPutsTheStartTheMiddleOrTheEndAtX) {
    ImageSurface surface(200, 30);
    surface.SelectFont(GlyphFont());
    const int width = surface.TextExtent("HHHH").width;
    const struct {
        TextAlign align;
        int start;
    } rows[] = {{TextAlign::Left, 100},
                {TextAlign::Centre, 100 - width / 2},
                {TextAlign::Right, 100 - width}};
    for (const auto& row : rows) {
        surface.Clear(0xFFFFFF);
        surface.TextOut(100, 5, "HHHH", row.align);
        const auto [first, last] = InkEnds(surface);
        EXPECT_GE(first, row.start);
        EXPECT_LE(first, row.start + 2);
        EXPECT_LE(last, row.start + width);
        EXPECT_GE(last, row.start + width - 3);
    }
}

TEST(Text, InkStaysBetweenTheTopAndTheHeightOfALine) {
    ImageSurface surface(400, 60);
    surface.SelectFont(GlyphFont());
    const int height = surface.TextExtent("X").height;
    surface.Clear(0xFFFFFF);
    for (int byte = 33; byte < 127; ++byte) {
        surface.TextOut(5, 20, std::string(1, static_cast<char>(byte)), TextAlign::Left);
    }
    for (int x = 0; x < 400; ++x) {
        for (int y = 0; y < 60; ++y) {
            if (y < 20 || y >= 20 + height) {
                ASSERT_EQ(surface.GetPixel(x, y), 0xFFFFFF) << x << "," << y;
            }
        }
    }
}

TEST(Text, TakesThePensColourAndKeepsToTheClip) {
    ImageSurface surface(60, 30);
    surface.Clear(0xFFFFFF);
    surface.SelectFont(GlyphFont(18));
    Pen pen;
    pen.colour = 0x0000FF;
    surface.SetPen(pen);
    surface.ClipToRectangle(0, 0, 30, 30);
    surface.TextOut(5, 2, "HHHH", TextAlign::Left);
    bool full = false;
    for (int y = 0; y < 30; ++y) {
        for (int x = 0; x < 60; ++x) {
            const Colour colour = surface.GetPixel(x, y);
            full = full || colour == 0x0000FF;
            EXPECT_EQ(colour & 0xFF, 0xFF) << "between white and red";
            if (x >= 30) {
                EXPECT_EQ(colour, 0xFFFFFF);
            }
        }
    }
    EXPECT_TRUE(full);
}

TEST(Text, EveryByteInEveryStyleCanBeDrawnAnywhere) {
    ImageSurface surface(64, 64);
    std::string all;
    for (int byte = 0; byte < 256; ++byte) all += static_cast<char>(byte);
    for (const char* name : {"QX Symbol", "DejaVu Sans", "No such font at all", ""}) {
        for (int style = 0; style < 4; ++style) {
            for (const float size : {0.0F, 5.0F, 9.0F, 30.0F}) {
                surface.SelectFont(FontOf(name, size, (style & 1) != 0, (style & 2) != 0));
                surface.TextOut(-200, 10, all, TextAlign::Left);
                surface.TextOut(32767, 32767, all, TextAlign::Right);
                surface.TextOut(-32768, -32768, all, TextAlign::Centre);
                EXPECT_GT(surface.TextExtent(all).width, 0);
            }
        }
    }
}

TEST(Text, BoldIsHeavierAndItalicLeans) {
    ImageSurface surface(300, 40);
    const auto inkOf = [&](bool bold, bool italic) {
        return Ink(
            MaskOf(*FindTextFace(FontOf(std::string(kGlyphFontName), 18, bold, italic), 96), 'l'));
    };
    EXPECT_GT(inkOf(true, false), inkOf(false, false));
    const GlyphMask& upright = MaskOf(*FindTextFace(GlyphFont(18), 96), 'l');
    const GlyphMask& leaning =
        MaskOf(*FindTextFace(FontOf(std::string(kGlyphFontName), 18, false, true), 96), 'l');
    EXPECT_GT(leaning.width, upright.width);
}

TEST(Text, FontNamesAreFoundOnceAndKept) {
    EXPECT_EQ(FindTextFace(GlyphFont(), 96), FindTextFace(GlyphFont(), 96));
    EXPECT_NE(FindTextFace(GlyphFont(), 96), FindTextFace(GlyphFont(), 120));
}

TEST(Text, ASizeThatIsNoNumberGivesTheSameFaceEachTime) {
    EnsureQtGui();
    Font font{"DejaVu Sans", std::nanf(""), false, false};
    EXPECT_EQ(FindTextFace(font, 96), FindTextFace(font, 96));
    font.size = 1e30F;
    EXPECT_EQ(FindTextFace(font, 96)->font.size, 500);
}

}  // namespace
}  // namespace orvantis

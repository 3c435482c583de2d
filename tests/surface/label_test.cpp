#include "surface/label.h"

#include <cmath>
#include <cstdio>
#include <gtest/gtest.h>
#include <sstream>

#include "support/recording_surface.h"

namespace orvantis {
namespace {

struct Box {
    int left = 0;
    int top = 0;
    int right = 0;  // exclusive, as bottom
    int bottom = 0;
};

// The box of the one call of a name.
Box BoxOf(const RecordingSurface& surface, const char* name) {
    Box box;
    const std::vector<std::string> calls = surface.Calls(name);
    EXPECT_EQ(calls.size(), 1U) << name;
    if (calls.empty()) return box;
    std::istringstream words(calls[0].substr(std::string_view(name).size()));
    words >> box.left >> box.top >> box.right >> box.bottom;
    EXPECT_TRUE(words) << calls[0];
    return box;
}

// Source: luma of ITU-R BT.601, 0.299 R + 0.587 G + 0.114 B, worked by hand and cut to a whole.
TEST(Label, BrightnessIsTheLumaOfAColour) {
    struct Row {
        Colour colour;  // red in the low byte
        int brightness;
    };
    for (const Row& row : {Row{0x000000, 0},
                           {0xFFFFFF, 255},
                           {0x0000FF, 76},   // red: 76.245
                           {0x00FF00, 149},  // green: 149.685
                           {0xFF0000, 29},   // blue: 29.07
                           {0x00FFFF, 225},  // yellow: 225.93
                           {0xFFFF00, 178},  // cyan: 178.755
                           {0xFF00FF, 105},  // magenta: 105.315
                           {0x808080, 128},
                           {0x7F7F7F, 127},
                           {0x200FF00, 149}}) {  // the palette mark doesn't count
        EXPECT_EQ(Brightness(row.colour), row.brightness) << std::hex << row.colour;
    }
}

TEST(Label, TextAndOutlineAreBlackOnLightAndWhiteOnDark) {
    struct Row {
        Colour colour;
        const char* pen;
    };
    for (const Row& row : {Row{0xFFFFFF, "SetPen 1 0 0"},
                           {0x00FFFF, "SetPen 1 0 0"},
                           {0x808080, "SetPen 1 0 0"},
                           {0x7F7F7F, "SetPen 1 0 16777215"},
                           {0x0000FF, "SetPen 1 0 16777215"},
                           {0xFF0000, "SetPen 1 0 16777215"},
                           {0x000000, "SetPen 1 0 16777215"}}) {
        RecordingSurface surface(200, 100);
        DrawLabel(surface, 100, 50, "A", LabelShape::Rectangle, row.colour);
        ASSERT_EQ(surface.Calls("SetPen").size(), 1U);
        EXPECT_EQ(surface.Calls("SetPen")[0], row.pen) << std::hex << row.colour;
        EXPECT_EQ(surface.log.front(), row.pen) << "the pen is set before the box is drawn";
    }
}

TEST(Label, TheBoxIsCentredAndHoldsItsText) {
    for (const LabelShape shape : {LabelShape::Rectangle, LabelShape::Ellipse}) {
        for (const char* text : {"", "A", "AB", "A label", "A label of some length"}) {
            RecordingSurface surface(400, 100);
            DrawLabel(surface, 200, 50, text, shape, 0x00FFFF);
            const Box box =
                BoxOf(surface, shape == LabelShape::Rectangle ? "Rectangle" : "Ellipse");
            EXPECT_LE(std::abs(box.left + box.right - 1 - 2 * 200), 1) << text;
            EXPECT_LE(std::abs(box.top + box.bottom - 1 - 2 * 50), 1) << text;
            const int width = surface.TextExtent(text).width;
            EXPECT_LT(box.left, 200 - width / 2);
            EXPECT_GT(box.right, 200 + width / 2);

            int x = 0;
            int y = 0;
            int align = 0;
            ASSERT_EQ(surface.Calls("TextOut").size(), 1U);
            ASSERT_EQ(std::sscanf(surface.log.back().c_str(), "TextOut %d %d %d", &x, &y, &align),
                      3)
                << "the text lies over the box";
            EXPECT_EQ(x, 200);
            EXPECT_EQ(align, static_cast<int>(TextAlign::Centre));
            EXPECT_GT(y, box.top);
            EXPECT_LT(y + surface.charHeight, box.bottom);
        }
    }
}

TEST(Label, AnEllipseHoldsTheCornersOfItsText) {
    for (const char* text : {"A", "AB", "A label", "A label of some length"}) {
        RecordingSurface surface(400, 100);
        DrawLabel(surface, 200, 50, text, LabelShape::Ellipse, 0);
        const Box box = BoxOf(surface, "Ellipse");
        const SurfaceSize size = surface.TextExtent(text);
        const double across = static_cast<double>(size.width) / (box.right - box.left);
        const double down = static_cast<double>(size.height) / (box.bottom - box.top);
        EXPECT_LT(across * across + down * down, 1) << text;
    }
}

TEST(Label, EachShapeIsOneFilledFigureOfTheColourWithoutPaletteMark) {
    struct Row {
        LabelShape shape;
        const char* figure;
    };
    for (const Row& row : {Row{LabelShape::Rectangle, "Rectangle"},
                           {LabelShape::RoundRectangle, "Polygon"},
                           {LabelShape::Ellipse, "Ellipse"}}) {
        RecordingSurface surface(200, 100);
        DrawLabel(surface, 100, 50, "AB", row.shape, PaletteColour(0x00FFFF));
        for (const char* figure : {"Rectangle", "Polygon", "Ellipse"}) {
            const bool drawn = std::string(figure) == row.figure;
            ASSERT_EQ(surface.Calls(figure).size(), drawn ? 1U : 0U) << row.figure;
        }
        EXPECT_NE(surface.Calls(row.figure)[0].find("solid 65535"), std::string::npos);
    }
}

TEST(Label, ARoundedBoxIsTheRectangleWithItsCornersCutOff) {
    RecordingSurface surface(200, 100);
    DrawLabel(surface, 100, 50, "AB", LabelShape::Rectangle, 0);
    const Box box = BoxOf(surface, "Rectangle");
    DrawLabel(surface, 100, 50, "AB", LabelShape::RoundRectangle, 0);
    EXPECT_EQ(surface.Calls("Polygon"), std::vector<std::string>{"Polygon 8 solid 0 1"});
    const std::vector<std::string> vertices = surface.Calls("  vertex");
    ASSERT_EQ(vertices.size(), 8U);
    int corners = 0;
    for (const std::string& vertex : vertices) {
        int x = 0;
        int y = 0;
        ASSERT_EQ(std::sscanf(vertex.c_str(), "  vertex %d %d", &x, &y), 2);
        const bool onSide = x == box.left || x == box.right - 1;
        const bool onEnd = y == box.top || y == box.bottom - 1;
        EXPECT_TRUE(onSide || onEnd) << vertex;
        if (onSide && onEnd) ++corners;
    }
    EXPECT_EQ(corners, 0);
}

}  // namespace
}  // namespace orvantis

#include "raster/image_surface.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <random>
#include <string>
#include <vector>

namespace orvantis {
namespace {

constexpr Colour kWhite = 0xFFFFFF;
constexpr Colour kBlack = 0x000000;
constexpr Colour kRed = 0x0000FF;
constexpr Colour kBlue = 0xFF0000;

using Rows = std::vector<std::string>;

// " " white, "#" black, "r" red, "b" blue, "?" anything else.
Rows Shown(ImageSurface& surface) {
    Rows rows;
    for (int y = 0; y < surface.Size().height; ++y) {
        std::string row;
        for (int x = 0; x < surface.Size().width; ++x) {
            const Colour colour = surface.GetPixel(x, y);
            row += colour == kWhite   ? ' '
                   : colour == kBlack ? '#'
                   : colour == kRed   ? 'r'
                   : colour == kBlue  ? 'b'
                                      : '?';
        }
        rows.push_back(row);
    }
    return rows;
}

Pen PenOf(Colour colour, int width = 1, LineDash dash = LineDash::Solid, bool smooth = false) {
    Pen pen;
    pen.colour = colour;
    pen.width = width;
    pen.dash = dash;
    pen.smooth = smooth;
    return pen;
}

class Surface : public ::testing::Test {
  protected:
    Surface() : surface(10, 6) {
        surface.Clear(kWhite);
        surface.SetPen(PenOf(kBlack));
    }
    void Line(int x0, int y0, int x1, int y1) {
        surface.MoveTo(x0, y0);
        surface.LineTo(x1, y1);
    }
    // Pixels that differ from white.
    int Touched() {
        int count = 0;
        for (const std::string& row : Shown(surface)) {
            for (const char c : row) count += c != ' ' ? 1 : 0;
        }
        return count;
    }

    ImageSurface surface;
};

TEST_F(Surface, ColoursComeBackWithoutThePaletteMark) {
    surface.Clear(0x2563412);
    EXPECT_EQ(surface.GetPixel(3, 3), 0x563412);
    surface.SetPen(PenOf(0x2123456));
    surface.SetPixel(0, 0);
    EXPECT_EQ(surface.GetPixel(0, 0), 0x123456);
}

TEST_F(Surface, PixelsOutsideCantBeReadAndArentDrawn) {
    const int places[][2] = {{-1, 0}, {0, -1}, {10, 0}, {0, 6}, {-32768, 32767}, {32767, -32768}};
    for (const auto& place : places) {
        surface.SetPixel(place[0], place[1]);
        EXPECT_EQ(surface.GetPixel(place[0], place[1]), -1);
    }
    EXPECT_EQ(Touched(), 0);
}

TEST_F(Surface, LineLeavesItsEndOutAndGoesOnFromThere) {
    surface.MoveTo(1, 1);
    surface.LineTo(5, 1);
    surface.LineTo(5, 4);
    surface.LineTo(2, 4);
    EXPECT_EQ(Shown(surface), (Rows{"          ",  //
                                    " #####    ",  //
                                    "     #    ",  //
                                    "     #    ",  //
                                    "   ###    ",  //
                                    "          "}));
}

TEST_F(Surface, SlopingLineTakesTheNearestPixels) {
    Line(0, 0, 9, 4);
    EXPECT_EQ(Shown(surface), (Rows{"##        ",  //
                                    "  ##      ",  //
                                    "    ##    ",  //
                                    "      ##  ",  //
                                    "        # ",  //
                                    "          "}));
}

TEST_F(Surface, LineFromFarAwayToFarAwayDrawsOnlyWhatIsSeen) {
    Line(-32768, -32768, 32767, 32767);
    EXPECT_EQ(Shown(surface), (Rows{"#         ",  //
                                    " #        ",  //
                                    "  #       ",  //
                                    "   #      ",  //
                                    "    #     ",  //
                                    "     #    "}));
}

TEST_F(Surface, RectangularClipCutsLinesPixelsAndShapes) {
    surface.ClipToRectangle(2, 1, 6, 4);
    Line(0, 2, 10, 2);
    surface.SetPixel(1, 1);
    surface.SetPixel(2, 1);
    surface.SetPen(PenOf(kRed));
    surface.Rectangle(5, 0, 10, 6, {FillKind::Solid, kBlue});
    EXPECT_EQ(Shown(surface), (Rows{"          ",  //
                                    "  #  r    ",  //
                                    "  ###r    ",  //
                                    "     r    ",  //
                                    "          ",  //
                                    "          "}));
    surface.ClearClip();
    surface.SetPixel(9, 5);
    EXPECT_EQ(surface.GetPixel(9, 5), kRed);
}

TEST_F(Surface, EllipticClipCutsLinesRowByRow) {
    surface.ClipToEllipse(0, 0, 6, 6);
    for (int y = 0; y < 6; ++y) Line(-5, y, 15, y);
    EXPECT_EQ(Shown(surface), (Rows{" ####     ",  //
                                    "######    ",  //
                                    "######    ",  //
                                    "######    ",  //
                                    "######    ",  //
                                    " ####     "}));
}

// Hard lines in an ellipse, however they are drawn, are those of a surface without a clip where the
// clip is, and nothing elsewhere.
TEST_F(Surface, HardLinesInAnEllipticClipAreCutPixelByPixel) {
    const int boxes[][4] = {{0, 0, 90, 60}, {3, 5, 88, 17}, {20, -15, 60, 75}, {-40, 10, 70, 55}};
    const unsigned seed = 99;
    std::mt19937 random(seed);
    for (const auto& box : boxes) {
        const Clip clip = EllipseClip({box[0], box[1], box[2], box[3]}, 90, 60);
        ImageSurface whole(90, 60);
        ImageSurface clipped(90, 60);
        for (ImageSurface* s : {&whole, &clipped}) s->Clear(kWhite);
        clipped.ClipToEllipse(box[0], box[1], box[2], box[3]);
        int x = 45;
        int y = 30;
        for (int line = 0; line < 400; ++line) {
            for (ImageSurface* s : {&whole, &clipped}) {
                s->SetPen(PenOf(line, 1, LineDash::Solid));
                s->MoveTo(x, y);
            }
            const int reach = line % 4 == 0 ? 60 : 4;
            x = std::clamp(x + static_cast<int>(random() % (2 * reach + 1)) - reach, -5, 95);
            y = std::clamp(y + static_cast<int>(random() % (2 * reach + 1)) - reach, -5, 65);
            for (ImageSurface* s : {&whole, &clipped}) s->LineTo(x, y);
        }
        int apart = 0;
        for (int row = 0; row < 60; ++row) {
            for (int column = 0; column < 90; ++column) {
                const Colour expected =
                    InClip(clip, column, row) ? whole.GetPixel(column, row) : kWhite;
                apart += clipped.GetPixel(column, row) != expected ? 1 : 0;
            }
        }
        EXPECT_EQ(apart, 0) << "seed " << seed << ' ' << box[0];
    }
}

TEST_F(Surface, EllipseTakesTheSamePixelsAsTheEllipticClip) {
    ImageSurface clipped(40, 40);
    ImageSurface drawn(40, 40);
    const int boxes[][4] = {
        {0, 0, 40, 40}, {3, 5, 38, 20}, {-10, -4, 25, 33}, {7, 7, 8, 8}, {2, 2, 4, 30}};
    for (const auto& box : boxes) {
        clipped.ClearClip();
        clipped.Clear(kWhite);
        clipped.ClipToEllipse(box[0], box[1], box[2], box[3]);
        clipped.SetPen(PenOf(kRed));
        clipped.Rectangle(-50, -50, 90, 90, {FillKind::Solid, kRed});
        drawn.Clear(kWhite);
        drawn.SetPen(PenOf(kRed));
        drawn.Ellipse(box[0], box[1], box[2], box[3], {FillKind::Solid, kRed});
        EXPECT_EQ(Shown(clipped), Shown(drawn)) << box[0];
    }
}

TEST_F(Surface, ClipReplacesTheOneBeforeAndAnEmptyOneHidesAll) {
    surface.ClipToRectangle(0, 0, 2, 2);
    surface.ClipToRectangle(4, 4, 6, 6);
    Line(0, 0, 9, 0);
    Line(0, 4, 9, 4);
    EXPECT_EQ(Touched(), 2);
    surface.ClipToRectangle(5, 5, 5, 9);
    surface.Rectangle(0, 0, 10, 6, {FillKind::Solid, kRed});
    surface.ClipToRectangle(-9, -9, 0, 0);
    surface.Ellipse(0, 0, 10, 6, {FillKind::Solid, kRed});
    EXPECT_FALSE(surface.FloodFill(0, 0, kRed, kBlue));
    EXPECT_EQ(Touched(), 2);
}

TEST_F(Surface, ClearAndPutImageDisregardTheClip) {
    Image image;
    surface.CopyImage(image);
    surface.ClipToRectangle(1, 1, 2, 2);
    surface.Clear(kRed);
    EXPECT_EQ(surface.GetPixel(9, 5), kRed);
    surface.PutImage(image);
    EXPECT_EQ(Touched(), 0);
}

TEST_F(Surface, RectangleOutlineLiesInsideItsBox) {
    surface.Rectangle(1, 1, 6, 5, {FillKind::Solid, kRed});
    EXPECT_EQ(Shown(surface), (Rows{"          ",  //
                                    " #####    ",  //
                                    " #rrr#    ",  //
                                    " #rrr#    ",  //
                                    " #####    ",  //
                                    "          "}));
}

TEST_F(Surface, SmallestBoxesAndEmptyOnes) {
    surface.Rectangle(1, 1, 2, 2, {});
    surface.Rectangle(3, 1, 4, 4, {});
    surface.Rectangle(5, 1, 9, 2, {});
    surface.Ellipse(0, 3, 1, 4, {});
    surface.Rectangle(5, 4, 5, 9, {FillKind::Solid, kRed});
    surface.Ellipse(9, 5, 3, 2, {FillKind::Solid, kRed});
    surface.Arc(5, 4, 5, 9, 0, 360);
    surface.Polygon({}, {FillKind::Solid, kRed}, true);
    EXPECT_EQ(Shown(surface), (Rows{"          ",  //
                                    " # # #### ",  //
                                    "   #      ",  //
                                    "#  #      ",  //
                                    "          ",  //
                                    "          "}));
}

TEST_F(Surface, PolygonIsFilledBetweenItsSides) {
    surface.Polygon({{1, 1}, {7, 1}, {7, 4}, {1, 4}}, {FillKind::Solid, kRed}, false);
    EXPECT_EQ(Shown(surface), (Rows{"          ",  //
                                    " rrrrrr   ",  //
                                    " rrrrrr   ",  //
                                    " rrrrrr   ",  //
                                    "          ",  //
                                    "          "}));
}

TEST_F(Surface, PolygonThatCrossesItselfLeavesItsEvenPartsOpen) {
    surface.Polygon(
        {{0, 0}, {9, 0}, {9, 5}, {0, 5}, {0, 0}, {3, 1}, {6, 1}, {6, 4}, {3, 4}, {3, 1}},
        {FillKind::Solid, kRed}, false);
    EXPECT_EQ(surface.GetPixel(1, 2), kRed);
    EXPECT_EQ(surface.GetPixel(4, 2), kWhite);
}

TEST_F(Surface, HatchLeavesTheBackgroundBetweenItsLines) {
    ImageSurface wide(32, 32);
    wide.Clear(kWhite);
    wide.Polygon({{0, 0}, {32, 0}, {32, 32}, {0, 32}}, {FillKind::DiagonalCross, kBlue}, false);
    EXPECT_EQ(wide.GetPixel(0, 0), kBlue);
    EXPECT_EQ(wide.GetPixel(3, 3), kBlue);
    EXPECT_EQ(wide.GetPixel(5, 3), kBlue);
    EXPECT_EQ(wide.GetPixel(4, 0), kWhite);
    EXPECT_EQ(wide.GetPixel(8, 16), kBlue);
}

TEST_F(Surface, DashesRunOnFromLineToLine) {
    ImageSurface whole(60, 3);
    ImageSurface pieces(60, 3);
    for (const LineDash dash :
         {LineDash::Dash, LineDash::Dot, LineDash::DashDot, LineDash::DashDotDot}) {
        for (const bool smooth : {false, true}) {
            for (ImageSurface* s : {&whole, &pieces}) {
                s->Clear(kWhite);
                s->SetPen(PenOf(kBlack, 1, dash, smooth));
                s->MoveTo(-7, 1);
            }
            whole.LineTo(60, 1);
            for (int x = -6; x <= 60; x += 3) pieces.LineTo(x, 1);
            EXPECT_EQ(Shown(whole), Shown(pieces)) << static_cast<int>(dash);
            EXPECT_EQ(whole.GetPixel(0, 1) == kBlack, DashWalk(dash, 7).Next());
        }
    }
}

TEST_F(Surface, ALineInStepsOfOnePixelIsTheSameAsInOnePiece) {
    struct Row {
        SurfacePoint from, step;
        bool inEllipse;
    };
    const std::vector<Row> rows = {{{2, 2}, {1, 0}, false},   {{-3, -4}, {1, 1}, false},
                                   {{-6, 3}, {1, 0}, true},   {{40, -5}, {-1, 1}, true},
                                   {{10, 38}, {0, -1}, true}, {{34, 36}, {-1, -1}, false}};
    for (const Row& row : rows) {
        for (const LineDash dash : {LineDash::Solid, LineDash::Dot, LineDash::DashDotDot}) {
            constexpr int kSteps = 45;
            ImageSurface whole(40, 40);
            ImageSurface steps(40, 40);
            for (ImageSurface* s : {&whole, &steps}) {
                s->Clear(kWhite);
                s->SetPen(PenOf(kBlack, 1, dash));
                if (row.inEllipse) s->ClipToEllipse(3, 1, 37, 33);
                s->MoveTo(row.from.x, row.from.y);
            }
            whole.LineTo(row.from.x + kSteps * row.step.x, row.from.y + kSteps * row.step.y);
            for (int i = 1; i <= kSteps; ++i) {
                steps.LineTo(row.from.x + i * row.step.x, row.from.y + i * row.step.y);
            }
            ASSERT_EQ(Shown(steps), Shown(whole)) << row.from.x << " " << row.from.y;
        }
    }
}

TEST_F(Surface, MoveToStartsTheDashPatternAnew) {
    surface.SetPen(PenOf(kBlack, 1, LineDash::Dot));
    surface.MoveTo(0, 1);
    surface.LineTo(2, 1);
    surface.MoveTo(2, 1);
    surface.LineTo(10, 1);
    EXPECT_EQ(Shown(surface)[1], "#####   ##");
}

TEST_F(Surface, SmoothLineSharesItsInkBetweenTwoPixels) {
    surface.SetPen(PenOf(kBlack, 1, LineDash::Solid, true));
    Line(0, 1, 8, 3);
    // A quarter of the way aside at each step: 64 of 256 parts of the ink on the further pixel.
    EXPECT_EQ(surface.GetPixel(0, 1), kBlack);
    EXPECT_EQ(surface.GetPixel(1, 1) & 0xFF, 255 * 64 / 256);
    EXPECT_EQ(surface.GetPixel(1, 2) & 0xFF, 255 * 192 / 256);
    EXPECT_EQ(surface.GetPixel(2, 1) & 0xFF, surface.GetPixel(2, 2) & 0xFF);
    EXPECT_EQ(surface.GetPixel(4, 2), kBlack);
    EXPECT_EQ(surface.GetPixel(8, 3), kWhite) << "the end is left out";
}

TEST_F(Surface, SmoothLineIsTheSameWhateverTheClip) {
    ImageSurface whole(30, 30);
    ImageSurface part(30, 30);
    const int lines[][4] = {{-5, 3, 40, 22}, {3, -9, 17, 45}, {29, 0, 0, 13}, {12, 29, 15, -3}};
    for (const auto& line : lines) {
        for (ImageSurface* s : {&whole, &part}) {
            s->Clear(kWhite);
            s->SetPen(PenOf(kBlack, 1, LineDash::Solid, true));
            s->MoveTo(line[0], line[1]);
        }
        part.ClipToRectangle(8, 9, 19, 21);
        whole.LineTo(line[2], line[3]);
        part.LineTo(line[2], line[3]);
        part.ClearClip();
        for (int y = 0; y < 30; ++y) {
            for (int x = 0; x < 30; ++x) {
                const bool inside = x >= 8 && x < 19 && y >= 9 && y < 21;
                EXPECT_EQ(part.GetPixel(x, y), inside ? whole.GetPixel(x, y) : kWhite);
            }
        }
    }
}

TEST_F(Surface, WideLineIsSeenByEveryLaterOperation) {
    surface.SetPen(PenOf(kBlack, 3));
    Line(-9, 3, 19, 3);
    EXPECT_EQ(surface.GetPixel(5, 2), kBlack);
    EXPECT_EQ(surface.GetPixel(5, 3), kBlack);
    EXPECT_EQ(surface.GetPixel(5, 4), kBlack);
    EXPECT_EQ(surface.GetPixel(5, 1), kWhite);

    surface.Clear(kWhite);
    Line(-9, 3, 19, 3);
    Image image;
    surface.CopyImage(image);
    EXPECT_EQ(image.pixels[35], 0xFF000000U);

    surface.Clear(kWhite);
    Line(-9, 3, 19, 3);
    EXPECT_TRUE(surface.FloodFill(0, 0, kRed, kBlack));
    EXPECT_EQ(surface.GetPixel(9, 1), kRed);
    EXPECT_EQ(surface.GetPixel(9, 5), kWhite);

    surface.Clear(kWhite);
    Line(-9, 3, 19, 3);
    surface.ClipToRectangle(0, 0, 1, 1);
    EXPECT_EQ(surface.GetPixel(5, 3), kBlack) << "drawn under the clip it was drawn under";
}

TEST_F(Surface, PolylineHoldsAFloodAtAnySlopeAndUnderAClip) {
    ImageSurface wide(300, 200);
    for (const bool clipped : {false, true}) {
        for (int slope = -300; slope <= 500; slope += 7) {
            wide.ClearClip();
            wide.Clear(kWhite);
            if (clipped) wide.ClipToRectangle(3, 5, 290, 180);
            wide.SetPen(PenOf(kBlack));
            wide.MoveTo(-400, 100);
            wide.LineTo(40, slope);
            wide.LineTo(150, 200 - slope);
            wide.LineTo(700, 90);
            wide.FloodFill(150, 6, kRed, kBlack);
            // Above the line in one column means above it everywhere: no red pixel of a column
            // may lie below a black one that belongs to a line across the whole picture.
            const Colour bottom = wide.GetPixel(4, 179);
            const Colour top = wide.GetPixel(4, 6);
            const bool splits = slope > 20 && slope < 180;
            if (splits) {
                EXPECT_EQ(top, kRed) << slope;
                EXPECT_EQ(bottom, kWhite) << slope;
            }
        }
    }
}

TEST_F(Surface, OutlineOfAnEllipseHoldsAFlood) {
    ImageSurface wide(100, 80);
    for (int size = 3; size < 78; ++size) {
        wide.Clear(kWhite);
        wide.SetPen(PenOf(kBlack));
        wide.Ellipse(10, 2, 10 + size + size / 5, 2 + size, {});
        ASSERT_TRUE(wide.FloodFill(10 + (size + size / 5) / 2, 2 + size / 2, kRed, kBlack));
        EXPECT_EQ(wide.GetPixel(0, 0), kWhite) << size;
        EXPECT_EQ(wide.GetPixel(99, 79), kWhite) << size;
    }
}

TEST_F(Surface, ArcCoversItsSpanAnticlockwiseFromTheRight) {
    ImageSurface wide(41, 41);
    wide.Clear(kWhite);
    wide.SetPen(PenOf(kBlack));
    wide.Arc(0, 0, 41, 41, 0, 90);
    EXPECT_EQ(wide.GetPixel(40, 20), kBlack);
    EXPECT_EQ(wide.GetPixel(20, 0), kBlack);
    EXPECT_EQ(wide.GetPixel(34, 6), kBlack);
    EXPECT_EQ(wide.GetPixel(0, 20), kWhite);
    EXPECT_EQ(wide.GetPixel(20, 40), kWhite);
    wide.Clear(kWhite);
    wide.Arc(0, 0, 41, 41, 0, -90);
    EXPECT_EQ(wide.GetPixel(20, 40), kBlack);
    EXPECT_EQ(wide.GetPixel(20, 0), kWhite);
}

TEST_F(Surface, ShapesLeaveTheCurrentPointWhereItWas) {
    surface.MoveTo(0, 5);
    surface.Rectangle(2, 1, 4, 3, {});
    surface.Ellipse(5, 1, 8, 4, {});
    surface.Arc(5, 1, 8, 4, 0, 90);
    surface.Polygon({{1, 1}, {3, 2}, {2, 3}}, {}, true);
    surface.TextOut(0, 0, "", TextAlign::Left);
    surface.LineTo(3, 5);
    EXPECT_EQ(Shown(surface)[5], "###       ");
}

TEST_F(Surface, ImageComesBackAsItWas) {
    surface.Rectangle(1, 1, 6, 5, {FillKind::Solid, kRed});
    const Rows before = Shown(surface);
    Image image;
    surface.CopyImage(image);
    EXPECT_EQ(image.width, 10);
    EXPECT_EQ(image.height, 6);
    surface.Clear(kBlue);
    surface.PutImage(image);
    EXPECT_EQ(Shown(surface), before);
}

TEST_F(Surface, ImageOfAnotherSizeGoesToTheTopLeft) {
    Image image;
    image.width = 3;
    image.height = 2;
    image.pixels.assign(6, 0xFF0000FF);
    surface.PutImage(image);
    EXPECT_EQ(Shown(surface)[1], "bbb       ");
    EXPECT_EQ(Touched(), 6);
    image.width = 20;
    image.height = 20;
    image.pixels.assign(400, 0xFFFF0000);
    surface.PutImage(image);
    EXPECT_EQ(Shown(surface)[5], "rrrrrrrrrr");
    image.pixels.resize(10);
    surface.PutImage(image);
    EXPECT_EQ(Touched(), 60) << "an image without all its pixels isn't put down";
}

TEST(SmallSurface, OfOnePixelAndOfNone) {
    ImageSurface one(1, 1);
    one.Clear(kWhite);
    one.SetPen(PenOf(kRed));
    one.MoveTo(-5, 0);
    one.LineTo(5, 0);
    EXPECT_EQ(one.GetPixel(0, 0), kRed);
    EXPECT_TRUE(one.FloodFill(0, 0, kBlue, kBlack));
    EXPECT_EQ(one.GetPixel(0, 0), kBlue);
    one.TextOut(0, 0, "Aries", TextAlign::Centre);

    ImageSurface none(0, 7);
    none.Clear(kWhite);
    none.SetPen(PenOf(kRed, 5, LineDash::Dash, true));
    none.MoveTo(-5, 0);
    none.LineTo(5, 0);
    none.Ellipse(0, 0, 5, 5, {FillKind::Solid, kRed});
    none.TextOut(0, 0, "Aries", TextAlign::Centre);
    Image image;
    none.CopyImage(image);
    EXPECT_EQ(none.GetPixel(0, 0), -1);
    EXPECT_FALSE(none.FloodFill(0, 0, kBlue, kBlack));

    ImageSurface negative(-3, -8);
    EXPECT_EQ(negative.Size().width, 0);
    EXPECT_EQ(negative.Size().height, 0);
}

TEST(SurfaceSize, ResizeGivesABlackPictureWithoutAClip) {
    ImageSurface surface(5, 5);
    surface.Clear(kWhite);
    surface.ClipToRectangle(0, 0, 1, 1);
    surface.Resize(8, 3, 96);
    EXPECT_EQ(Shown(surface), (Rows{"########", "########", "########"}));
    surface.SetPen(PenOf(kRed));
    surface.SetPixel(7, 2);
    EXPECT_EQ(surface.GetPixel(7, 2), kRed);
}

TEST(SurfaceRefresh, TellsTheOwnerAndWorksWithoutOne) {
    ImageSurface surface(2, 2);
    surface.Refresh();
    int told = 0;
    surface.onRefresh = [&told] { ++told; };
    surface.Refresh();
    EXPECT_EQ(told, 1);
}

}  // namespace
}  // namespace orvantis

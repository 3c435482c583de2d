#include "raster/page_surface.h"

#include <QImage>
#include <QPainter>
#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <gtest/gtest.h>

#include "raster/page_file.h"
#include "raster/qt_gui.h"
#include "surface/label.h"

namespace orvantis {
namespace {

constexpr Colour kWhite = 0xFFFFFF;
constexpr Colour kBlack = 0x000000;
constexpr Colour kRed = 0x0000FF;
constexpr Colour kBlue = 0xFF0000;
constexpr Colour kGreen = 0x00FF00;

Pen PenOf(Colour colour, int width = 1, LineDash dash = LineDash::Solid) {
    Pen pen;
    pen.colour = colour;
    pen.width = width;
    pen.dash = dash;
    return pen;
}

class Page : public ::testing::Test {
  protected:
    Page() : page(100, 60, 96, PageFloods::Beneath) { page.SetPen(PenOf(kBlack)); }

    const std::vector<PageItem>& Items() { return page.Record().items; }
    void Line(int x0, int y0, int x1, int y1) {
        page.MoveTo(x0, y0);
        page.LineTo(x1, y1);
    }

    PageSurface page;
};

TEST_F(Page, LineThatGoesOnIsOneLine) {
    page.MoveTo(1, 2);
    page.LineTo(10, 20);
    page.LineTo(30, 5);
    ASSERT_EQ(Items().size(), 1U);
    EXPECT_EQ(Items()[0].kind, PageItem::Kind::Line);
    ASSERT_EQ(Items()[0].points.size(), 3U);
    EXPECT_EQ(Items()[0].points[2].x, 30);
    EXPECT_EQ(Items()[0].points[2].y, 5);
}

TEST_F(Page, PixelThatClosesALineIsPartOfIt) {
    page.MoveTo(1, 2);
    page.LineTo(10, 20);
    page.SetPixel(10, 20);
    page.LineTo(30, 5);
    page.SetPixel(30, 5);
    EXPECT_EQ(Items().size(), 1U);
    page.SetPixel(50, 50);
    ASSERT_EQ(Items().size(), 2U);
    EXPECT_EQ(Items()[1].path.boundingRect(), QRectF(50, 50, 1, 1));
}

TEST_F(Page, LineGoesOnFromItsEndAfterAnotherPixel) {
    page.MoveTo(1, 2);
    page.LineTo(10, 20);
    page.SetPixel(50, 50);
    page.LineTo(30, 5);
    ASSERT_EQ(Items().size(), 3U);
    EXPECT_EQ(Items()[2].points[0].x, 10);
    EXPECT_EQ(Items()[2].points[1].x, 30);
}

TEST_F(Page, LineWithoutLengthLeavesNothing) {
    Line(5, 5, 5, 5);
    EXPECT_TRUE(Items().empty());
}

TEST_F(Page, PenOfALineIsTheOneItWasDrawnWith) {
    page.SetPen(PenOf(kRed, 3, LineDash::Dot));
    page.MoveTo(0, 0);
    page.LineTo(50, 0);
    page.SetPen(PenOf(kBlue));
    page.LineTo(50, 50);
    ASSERT_EQ(Items().size(), 2U);
    EXPECT_EQ(Items()[0].pen.colour, kRed);
    EXPECT_EQ(Items()[0].pen.width, 3);
    EXPECT_EQ(Items()[1].pen.colour, kBlue);
    EXPECT_EQ(Items()[1].points[0].x, 50);
}

TEST_F(Page, LinesOutsideTheClipAreLeftOutAndOthersStayWhole) {
    page.ClipToRectangle(20, 20, 40, 40);
    Line(0, 0, 10, 50);
    EXPECT_TRUE(Items().empty());
    Line(0, 30, 32000, 30);
    ASSERT_EQ(Items().size(), 1U);
    EXPECT_EQ(Items()[0].points[1].x, 32000);
}

TEST_F(Page, ItemsHaveTheClipInForce) {
    Line(0, 0, 10, 10);
    page.ClipToRectangle(20, 20, 40, 40);
    Line(20, 20, 30, 30);
    page.ClipToEllipse(20, 20, 40, 40);
    Line(20, 20, 30, 30);
    page.ClearClip();
    Line(0, 0, 10, 10);
    const PageRecord& record = page.Record();
    ASSERT_EQ(record.items.size(), 4U);
    const auto kindOf = [&](int n) { return record.clips[record.items[n].clip].kind; };
    EXPECT_EQ(kindOf(0), PageClip::Kind::None);
    EXPECT_EQ(kindOf(1), PageClip::Kind::Rectangle);
    EXPECT_EQ(kindOf(2), PageClip::Kind::Ellipse);
    EXPECT_EQ(kindOf(3), PageClip::Kind::None);
}

TEST_F(Page, TextIsLaidOutAsInThePicture) {
    ImageSurface picture(100, 60);
    for (const char* font : {"QX Symbol", "DejaVu Sans"}) {
        page.SelectFont({font, 9});
        picture.SelectFont({font, 9});
        const SurfaceSize a = page.TextExtent("A\xB8 text");
        const SurfaceSize b = picture.TextExtent("A\xB8 text");
        EXPECT_EQ(a.width, b.width);
        EXPECT_EQ(a.height, b.height);
    }
    page.TextOut(50, 10, "ABC", TextAlign::Right);
    const PageItem& text = Items().back();
    ASSERT_EQ(text.glyphs.size(), 3U);
    EXPECT_EQ(text.glyphs[0].x, 50 - page.TextExtent("ABC").width);
    EXPECT_EQ(text.glyphs[1].x, text.glyphs[0].x + page.TextExtent("A").width);
    EXPECT_GT(text.glyphs[0].y, 15) << "the base line";
}

TEST_F(Page, ColoursCanBeReadAndFloodsEndAtTheirBorder) {
    page.Rectangle(10, 10, 50, 50, {});
    EXPECT_EQ(page.GetPixel(10, 10), kBlack);
    EXPECT_FALSE(page.FloodFill(10, 10, kBlue, kBlack));
    EXPECT_TRUE(page.FloodFill(20, 20, kBlue, kBlack));
    EXPECT_EQ(page.GetPixel(48, 48), kBlue);
    EXPECT_EQ(page.GetPixel(60, 20), kWhite);
    EXPECT_EQ(Items().size(), 1U) << "a flood is no item";
}

TEST_F(Page, PictureBeneathHasTheFloodsAndNoLines) {
    page.Clear(kGreen);
    page.Rectangle(10, 10, 50, 50, {});
    Line(10, 30, 49, 30);  // parts the flooded area from the rest of the box
    Line(70, 0, 70, 60);
    page.FloodFill(20, 20, kBlue, kBlack);
    const Image& beneath = page.Record().beneath;
    const auto at = [&](int x, int y) {
        return ColourOf(beneath.pixels[static_cast<std::size_t>(y) * 100 + x]);
    };
    EXPECT_EQ(at(20, 20), kBlue);
    EXPECT_EQ(at(20, 30), kBlue) << "beneath the line that held the flood";
    EXPECT_EQ(at(20, 10), kBlue);
    EXPECT_EQ(at(20, 31), kGreen) << "beyond it";
    EXPECT_EQ(at(20, 9), kGreen);
    EXPECT_EQ(at(70, 30), kGreen) << "a line that no flood reached";
    EXPECT_EQ(std::count(beneath.pixels.begin(), beneath.pixels.end(), PixelOf(kBlack)), 0);
}

TEST_F(Page, LineWithinAFloodLeavesNoTraceBeneath) {
    page.Clear(kGreen);
    page.Rectangle(0, 0, 100, 60, {});
    Line(20, 10, 80, 40);
    page.FloodFill(5, 5, kBlue, kBlack);
    const Image& beneath = page.Record().beneath;
    EXPECT_EQ(std::count(beneath.pixels.begin(), beneath.pixels.end(), PixelOf(kBlue)),
              100 * 60 - 4)
        << "but for the corners, which touch no flood";
}

TEST_F(Page, ClearingTakesEverythingAway) {
    Line(0, 0, 10, 10);
    page.FloodFill(50, 50, kBlue, kBlack);
    page.Clear(kRed);
    EXPECT_TRUE(Items().empty());
    EXPECT_EQ(page.Record().beneath.pixels, std::vector<std::uint32_t>(6000, PixelOf(kRed)));
}

TEST_F(Page, PicturePutDownTakesThePlaceOfWhatWasDrawn) {
    Line(0, 0, 10, 10);
    Image image;
    page.CopyImage(image);
    EXPECT_EQ(image.pixels[0], PixelOf(kBlack));
    page.Clear(kRed);
    page.PutImage(image);
    EXPECT_TRUE(Items().empty());
    EXPECT_EQ(page.Record().beneath.pixels, image.pixels);
}

TEST_F(Page, PageWithoutFloodsHoldsNoPicture) {
    PageSurface plain(5000, 7000, 600, PageFloods::None);
    plain.SetPen(PenOf(kBlack));
    EXPECT_TRUE(plain.Record().beneath.pixels.empty());
    EXPECT_FALSE(plain.FloodFill(10, 10, kBlue, kBlack));
    EXPECT_EQ(plain.GetPixel(10, 10), -1);
    Image image = {1, 1, {0}};
    plain.CopyImage(image);
    EXPECT_EQ(image.width, 0);
    EXPECT_TRUE(image.pixels.empty());
    plain.PutImage({1, 1, {0}});
    EXPECT_TRUE(plain.Record().items.empty());
    plain.Clear(kWhite);
    EXPECT_TRUE(plain.Record().items.empty()) << "paper is white";
    plain.Clear(kRed);
    EXPECT_EQ(plain.Record().items.size(), 1U);
}

TEST_F(Page, FontsOfAPageHaveItsResolution) {
    PageSurface fine(5000, 7000, 600, PageFloods::None);
    fine.SelectFont({"QX Symbol", 9});
    page.SelectFont({"QX Symbol", 9});
    const double ratio =
        static_cast<double>(fine.TextExtent("X").height) / page.TextExtent("X").height;
    EXPECT_NEAR(ratio, 600.0 / 96, 0.5);
}

// --- As it is painted -------------------------------------------------------------------------

// The page painted at a number of pixels to each of its own.
QImage Painted(PageSurface& page, int scale = 1) {
    EnsureQtGui();
    const SurfaceSize size = page.Size();
    QImage image(size.width * scale, size.height * scale, QImage::Format_RGB32);
    image.fill(Qt::white);
    QPainter painter(&image);
    painter.scale(scale, scale);
    DrawPage(painter, page.Record());
    return image;
}

int Difference(QRgb a, QRgb b) {
    return std::abs(qRed(a) - qRed(b)) + std::abs(qGreen(a) - qGreen(b)) +
           std::abs(qBlue(a) - qBlue(b));
}

// Draws the same on a page and on a picture.
void DrawOnBoth(PageSurface& page, ImageSurface& picture, void (*draw)(DrawingSurface& surface)) {
    picture.Clear(kWhite);
    draw(page);
    draw(picture);
}

struct DrawRow {
    const char* what;
    void (*draw)(DrawingSurface& surface);
};

const DrawRow kDrawings[] = {
    {"lines along the axes",
     [](DrawingSurface& s) {
         s.SetPen(PenOf(kBlack));
         s.MoveTo(5, 5);
         s.LineTo(80, 5);
         s.SetPixel(80, 5);
         s.MoveTo(5, 10);
         s.LineTo(5, 50);
         s.SetPixel(5, 50);
     }},
    {"dashes",
     [](DrawingSurface& s) {
         s.SetPen(PenOf(kRed, 1, LineDash::Dash));
         s.MoveTo(0, 5);
         s.LineTo(96, 5);
         s.SetPen(PenOf(kRed, 1, LineDash::DashDotDot));
         s.MoveTo(0, 15);
         s.LineTo(96, 15);
     }},
    {"a box",
     [](DrawingSurface& s) {
         s.Rectangle(10, 10, 50, 40, {FillKind::Solid, kBlue});
     }},
    {"a box of one pixel", [](DrawingSurface& s) { s.Rectangle(10, 10, 11, 11, {}); }},
    {"a clipped box",
     [](DrawingSurface& s) {
         s.ClipToRectangle(20, 20, 30, 30);
         s.Rectangle(10, 10, 50, 40, {FillKind::Solid, kBlue});
         s.ClearClip();
     }},
    {"a polygon",
     [](DrawingSurface& s) {
         s.Polygon({{10, 10}, {50, 10}, {50, 40}, {10, 40}}, {FillKind::Solid, kBlue}, true);
     }},
};

TEST_F(Page, WhatLiesOnPixelsIsPaintedOnThesePixels) {
    for (const DrawRow& row : kDrawings) {
        PageSurface vector(100, 60, 96, PageFloods::Beneath);
        ImageSurface picture(100, 60);
        DrawOnBoth(vector, picture, row.draw);
        const QImage painted = Painted(vector);
        const QImage shown = picture.View();
        int wrong = 0;
        for (int y = 0; y < 60; ++y) {
            for (int x = 0; x < 100; ++x) {
                // Round ends and joints are a little lighter at the corners.
                if (Difference(painted.pixel(x, y), shown.pixel(x, y)) > 380) ++wrong;
            }
        }
        EXPECT_EQ(wrong, 0) << row.what;
    }
}

TEST_F(Page, TextsAndRoundShapesCoverWhatTheyCoverInThePicture) {
    const auto draw = [](DrawingSurface& s) {
        s.SetPen(PenOf(kBlack));
        s.SelectFont({"QX Symbol", 14});
        for (int i = 0; i < 4; ++i) {
            const std::string text(1, static_cast<char>(182 + i));
            DrawLabel(s, 15 + 24 * i, 30, text, LabelShape::Ellipse, kRed);
        }
        s.Arc(0, 0, 90, 20, 0, 180);
    };
    ImageSurface picture(100, 60);
    DrawOnBoth(page, picture, draw);
    const QImage painted = Painted(page);
    const QImage shown = picture.View();
    long ink = 0;
    long difference = 0;
    for (int y = 0; y < 60; ++y) {
        for (int x = 0; x < 100; ++x) {
            ink += Difference(shown.pixel(x, y), qRgb(255, 255, 255));
            difference += Difference(painted.pixel(x, y), shown.pixel(x, y));
        }
    }
    EXPECT_LT(difference, ink * 0.3);
    EXPECT_GT(ink, 100000);
}

TEST_F(Page, LinesStaySharpWhenThePageIsEnlarged) {
    page.SetPen(PenOf(kBlack));
    Line(10, 10, 90, 50);
    const QImage painted = Painted(page, 8);
    int edges = 0;  // pixels neither paper nor ink, along one column
    int inked = 0;
    for (int y = 0; y < painted.height(); ++y) {
        const int grey = qGray(painted.pixel(400, y));
        if (grey > 0 && grey < 255) ++edges;
        if (grey < 255) ++inked;
    }
    EXPECT_LE(edges, 4);
    EXPECT_NEAR(inked, 9, 2) << "eight pixels of one, cut at a slope of one half";
}

TEST_F(Page, HatchIsThatOfThePicture) {
    const auto draw = [](DrawingSurface& s) {
        s.SetPen(PenOf(kWhite));
        s.Rectangle(8, 8, 88, 56, {FillKind::DiagonalCross, kBlack});
    };
    ImageSurface picture(100, 60);
    DrawOnBoth(page, picture, draw);
    const QImage painted = Painted(page);
    const QImage shown = picture.View();
    int missing = 0;
    int hatched = 0;
    for (int y = 10; y < 54; ++y) {
        for (int x = 10; x < 86; ++x) {
            if (qGray(shown.pixel(x, y)) > 0) continue;
            ++hatched;
            if (qGray(painted.pixel(x, y)) > 140) ++missing;
        }
    }
    EXPECT_GT(hatched, 500);
    EXPECT_EQ(missing, 0);
}

}  // namespace
}  // namespace orvantis

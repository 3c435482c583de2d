#include "raster/wide_line.h"

#include <QImage>
#include <QPainter>
#include <QPen>
#include <QPolygon>
#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <gtest/gtest.h>
#include <random>
#include <vector>

#include "raster/image_surface.h"

namespace orvantis {
namespace {

constexpr int kSide = 200;
constexpr Colour kBlack = 0x000000;
constexpr Colour kWhite = 0xFFFFFF;

Pen SmoothPen(int width, LineDash dash = LineDash::Solid) {
    Pen pen;
    pen.colour = kBlack;
    pen.width = width;
    pen.dash = dash;
    pen.smooth = true;
    return pen;
}

void DrawThrough(ImageSurface& surface, const std::vector<SurfacePoint>& points, const Pen& pen) {
    surface.SetPen(pen);
    surface.MoveTo(points.front().x, points.front().y);
    for (std::size_t i = 1; i < points.size(); ++i) surface.LineTo(points[i].x, points[i].y);
}

// What the general painter makes of the same line: exact cover of every pixel.
QImage Painted(const std::vector<SurfacePoint>& points, int width) {
    QImage image(kSide, kSide, QImage::Format_RGB32);
    image.fill(0xFFFFFFFF);
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.translate(0.5, 0.5);
    painter.setPen(QPen(QColor(0, 0, 0), width, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    QPolygon path;
    for (const SurfacePoint& point : points) path << QPoint(point.x, point.y);
    painter.drawPolyline(path);
    return image;
}

// Ink of a grey pixel, 0 to 255.
int InkOf(std::uint32_t pixel) {
    return 255 - static_cast<int>(pixel & 0xFF);
}

struct Difference {
    int most = 0;      // of a pixel along the line
    int atEnd = 0;     // of one not more than 3 from its ends
    double mean = 0;   // of the pixels that either line touches
    double total = 0;  // share by which the whole ink differs
};

bool IsNear(SurfacePoint point, int x, int y) {
    return std::abs(point.x - x) <= 3 && std::abs(point.y - y) <= 3;
}

Difference Compare(ImageSurface& surface, const QImage& painted,
                   const std::vector<SurfacePoint>& points) {
    const SurfacePoint ends[] = {points.front(), points.back()};
    Difference difference;
    double ink = 0;
    double expected = 0;
    double sum = 0;
    int touched = 0;
    for (int y = 0; y < kSide; ++y) {
        for (int x = 0; x < kSide; ++x) {
            const int a = InkOf(static_cast<std::uint32_t>(surface.GetPixel(x, y)));
            const int b = InkOf(painted.pixel(x, y));
            const bool end = std::any_of(std::begin(ends), std::end(ends),
                                         [&](SurfacePoint point) { return IsNear(point, x, y); });
            int& most = end ? difference.atEnd : difference.most;
            most = std::max(most, std::abs(a - b));
            sum += std::abs(a - b);
            touched += a + b > 0 ? 1 : 0;
            ink += a;
            expected += b;
        }
    }
    difference.mean = sum / std::max(touched, 1);
    difference.total = std::abs(ink - expected) / std::max(expected, 1.0);
    return difference;
}

// Straight lines in every direction. What the measure across the longer axis is off by along a line
// is less than an eighth of the ink, 32; ends differ in single pixels.
TEST(WideLine, AStraightLineHasTheInkOfThePainterInEveryDirection) {
    for (const int width : {2, 3}) {
        Difference worst;
        for (int degree = 0; degree < 360; degree += 3) {
            const double angle = degree * 3.14159265358979 / 180;
            const std::vector<SurfacePoint> points = {
                {100, 100},
                {static_cast<int>(std::lround(100 + 90 * std::cos(angle))),
                 static_cast<int>(std::lround(100 + 90 * std::sin(angle)))}};
            ImageSurface surface(kSide, kSide);
            surface.Clear(kWhite);
            DrawThrough(surface, points, SmoothPen(width));
            const Difference difference = Compare(surface, Painted(points, width), points);
            EXPECT_LE(difference.most, 40) << width << " wide at " << degree;
            EXPECT_LE(difference.mean, 20) << width << " wide at " << degree;
            EXPECT_LE(difference.total, 0.02) << width << " wide at " << degree;
            worst.most = std::max(worst.most, difference.most);
            worst.atEnd = std::max(worst.atEnd, difference.atEnd);
            worst.mean = std::max(worst.mean, difference.mean);
            worst.total = std::max(worst.total, difference.total);
        }
        std::printf("width %d: pixel %d, at ends %d, mean %.2f of 255, total %.4f\n", width,
                    worst.most, worst.atEnd, worst.mean, worst.total);
    }
}

double DistanceTo(SurfacePoint a, SurfacePoint b, double x, double y) {
    const double dx = b.x - a.x;
    const double dy = b.y - a.y;
    const double length = dx * dx + dy * dy;
    const double along =
        length > 0 ? std::clamp(((x - a.x) * dx + (y - a.y) * dy) / length, 0.0, 1.0) : 0;
    return std::hypot(x - a.x - along * dx, y - a.y - along * dy);
}

// Cover of a pixel, 0 to 255, by all that lies within half the width of the path, counted on a grid
// of 8 by 8. The painter counts what overlaps at a joint twice.
int CoverOf(const std::vector<SurfacePoint>& points, int width, int x, int y) {
    int covered = 0;
    for (int i = 0; i < 64; ++i) {
        const int column = i % 8;
        const int row = i / 8;
        const double atX = x - 0.5 + (column + 0.5) / 8;
        const double atY = y - 0.5 + (row + 0.5) / 8;
        for (std::size_t k = 1; k < points.size(); ++k) {
            if (2 * DistanceTo(points[k - 1], points[k], atX, atY) > width) continue;
            ++covered;
            break;
        }
    }
    return covered * 255 / 64;
}

QImage Covered(const std::vector<SurfacePoint>& points, int width, const QImage& painted) {
    QImage image = painted.copy();
    for (int y = 0; y < kSide; ++y) {
        for (int x = 0; x < kSide; ++x) {
            if (InkOf(painted.pixel(x, y)) == 0) continue;
            const int grey = 255 - CoverOf(points, width, x, y);
            image.setPixel(x, y, qRgb(grey, grey, grey));
        }
    }
    return image;
}

// Curves as maps have them: pieces of some pixels, each turned a little against the one before.
// Where two pieces meet, single pixels differ: they are parted along a row or column, not across
// the line.
TEST(WideLine, ACurveCoversThePixelsThatLieWithinHalfItsWidth) {
    std::mt19937 random(41);
    std::uniform_real_distribution<double> anyTurn(-0.25, 0.25);
    std::uniform_real_distribution<double> anyAngle(0, 6.283);
    for (const int width : {2, 3}) {
        Difference worst;
        for (int round = 0; round < 60; ++round) {
            std::vector<SurfacePoint> points;
            double angle = anyAngle(random);
            const double turn = anyTurn(random);
            double x = 100;
            double y = 100;
            for (int i = 0; i < 12; ++i) {
                points.push_back(
                    {static_cast<int>(std::lround(x)), static_cast<int>(std::lround(y))});
                x += 7 * std::cos(angle);
                y += 7 * std::sin(angle);
                angle += turn;
            }
            ImageSurface surface(kSide, kSide);
            surface.Clear(kWhite);
            DrawThrough(surface, points, SmoothPen(width));
            const QImage painted = Painted(points, width);
            const Difference difference = Compare(surface, Covered(points, width, painted), points);
            EXPECT_LE(difference.most, 128) << width << " wide, round " << round;
            EXPECT_LE(difference.mean, 20) << width << " wide, round " << round;
            EXPECT_LE(difference.total, 0.02) << width << " wide, round " << round;
            EXPECT_LE(Compare(surface, painted, points).total, 0.03) << "of the painter's";
            worst.most = std::max(worst.most, difference.most);
            worst.atEnd = std::max(worst.atEnd, difference.atEnd);
            worst.mean = std::max(worst.mean, difference.mean);
            worst.total = std::max(worst.total, difference.total);
        }
        std::printf("width %d: pixel %d, at ends %d, mean %.2f of 255, total %.4f\n", width,
                    worst.most, worst.atEnd, worst.mean, worst.total);
    }
}

// A line that turns steep or flat is walked along another axis from there on: at the joint no pixel
// is left out, and none is inked twice.
TEST(WideLine, ALineThatTurnsSteepOrFlatHasNoGapAndNoDoubleInkAtTheJoint) {
    for (const int width : {2, 3}) {
        int worst = 0;
        for (int quarter = 0; quarter < 4; ++quarter) {
            const int right = quarter % 2 == 0 ? 1 : -1;
            const int down = quarter < 2 ? 1 : -1;
            for (const int turn : {1, 2, 4, 8}) {
                for (const bool steepFirst : {false, true}) {
                    const int longer = 40;
                    const int before = longer - (steepFirst ? turn : 0);
                    const int after = longer - (steepFirst ? 0 : turn);
                    const std::vector<SurfacePoint> points = {
                        {100 - right * before, 100 - down * (2 * longer - turn - before)},
                        {100, 100},
                        {100 + right * after, 100 + down * (2 * longer - turn - after)}};
                    ImageSurface surface(kSide, kSide);
                    surface.Clear(kWhite);
                    DrawThrough(surface, points, SmoothPen(width));
                    const QImage covered = Covered(points, width, Painted(points, width));
                    for (int y = 95; y <= 105; ++y) {
                        for (int x = 95; x <= 105; ++x) {
                            const int ink =
                                InkOf(static_cast<std::uint32_t>(surface.GetPixel(x, y)));
                            const int off = std::abs(ink - InkOf(covered.pixel(x, y)));
                            EXPECT_LE(off, 40)
                                << width << " wide, quarter " << quarter << ", turn " << turn
                                << (steepFirst ? ", steep first" : "") << ", at " << x << " " << y;
                            worst = std::max(worst, off);
                        }
                    }
                }
            }
        }
        std::printf("width %d: pixel %d of 255\n", width, worst);
    }
}

TEST(WideLine, IsTheSameWhateverTheClipAndStaysInside) {
    const std::vector<SurfacePoint> lines[] = {{{-50, 30}, {90, 71}, {400, 220}},
                                               {{30, -90}, {44, 60}, {10, 450}},
                                               {{199, 0}, {120, 30}, {0, 199}},
                                               {{-30000, 60}, {30000, 90}},
                                               {{100, 52}, {100, 52}},
                                               {{20, 40}, {90, 100}, {150, 190}},
                                               {{170, 30}, {60, 140}, {52, 150}, {-90, 250}}};
    for (const int width : {2, 3}) {
        for (const auto& line : lines) {
            ImageSurface whole(kSide, kSide);
            ImageSurface box(kSide, kSide);
            ImageSurface ellipse(kSide, kSide);
            for (ImageSurface* surface : {&whole, &box, &ellipse}) surface->Clear(kWhite);
            box.ClipToRectangle(40, 50, 141, 160);
            ellipse.ClipToEllipse(40, 50, 141, 160);
            for (ImageSurface* surface : {&whole, &box, &ellipse}) {
                DrawThrough(*surface, line, SmoothPen(width));
            }
            const Clip inEllipse = EllipseClip({40, 50, 141, 160}, kSide, kSide);
            for (int y = 0; y < kSide; ++y) {
                for (int x = 0; x < kSide; ++x) {
                    const bool inBox = x >= 40 && x < 141 && y >= 50 && y < 160;
                    ASSERT_EQ(box.GetPixel(x, y), inBox ? whole.GetPixel(x, y) : kWhite);
                    ASSERT_EQ(ellipse.GetPixel(x, y),
                              InClip(inEllipse, x, y) ? whole.GetPixel(x, y) : kWhite);
                }
            }
        }
    }
}

TEST(WideLine, AnEmptyClipAndAnEmptyPictureTakeNothing) {
    ImageSurface surface(20, 20);
    surface.Clear(kWhite);
    surface.ClipToRectangle(30, 30, 40, 40);
    DrawThrough(surface, {{0, 0}, {19, 19}}, SmoothPen(2));
    EXPECT_EQ(surface.GetPixel(10, 10), kWhite);
    ImageSurface none(0, 0);
    DrawThrough(none, {{0, 0}, {19, 19}}, SmoothPen(3));
    EXPECT_EQ(none.Size().width, 0);
}

TEST(WideLine, APointAloneIsADot) {
    ImageSurface surface(20, 20);
    surface.Clear(kWhite);
    DrawThrough(surface, {{7, 9}, {7, 9}}, SmoothPen(3));
    EXPECT_EQ(surface.GetPixel(7, 9), kBlack);
    EXPECT_LT(surface.GetPixel(8, 9) & 0xFF, 20);
    EXPECT_EQ(surface.GetPixel(9, 9), kWhite);
    EXPECT_EQ(surface.GetPixel(7, 11), kWhite);
}

// Wide dashes are the painter's: lengths in widths, square at their ends.
TEST(WideLine, ADashedLineHasItsDashes) {
    ImageSurface surface(60, 9);
    surface.Clear(kWhite);
    DrawThrough(surface, {{0, 4}, {60, 4}}, SmoothPen(2, LineDash::Dash));
    EXPECT_EQ(surface.GetPixel(4, 4), kBlack);
    EXPECT_EQ(surface.GetPixel(10, 4), kWhite);
    EXPECT_EQ(surface.GetPixel(15, 4), kBlack);
}

}  // namespace
}  // namespace orvantis

#include "raster/smooth_arc.h"

#include <algorithm>
#include <cmath>
#include <gtest/gtest.h>
#include <limits>
#include <string>
#include <vector>

#include "raster/image_surface.h"
#include "text/numbers.h"

namespace orvantis {
namespace {

constexpr int kSize = 240;

// A white surface with a smooth black pen.
class Paper : public ImageSurface {
  public:
    explicit Paper(int width = 1, LineDash dash = LineDash::Solid) : ImageSurface(kSize, kSize) {
        Clear(0xFFFFFF);
        Pen pen;
        pen.width = width;
        pen.dash = dash;
        pen.smooth = true;
        SetPen(pen);
    }
    // The share of the ink that a pixel has.
    double Ink(int x, int y) {
        const Colour colour = GetPixel(x, y);
        return colour < 0 ? 0 : 1 - (colour & 255) / 255.0;
    }
    double AllInk() {
        double sum = 0;
        for (int y = 0; y < kSize; ++y) {
            for (int x = 0; x < kSize; ++x) sum += Ink(x, y);
        }
        return sum;
    }
};

// Boxes of ellipses: circles and flat, steep and narrow ones, of even and odd sizes.
struct Box {
    int left, top, right, bottom;

    double RadiusX() const { return (right - 1.0 - left) / 2; }
    double RadiusY() const { return (bottom - 1.0 - top) / 2; }
    double X(double degrees) const { return left + RadiusX() * (1 + CosD(degrees)); }
    double Y(double degrees) const { return top + RadiusY() * (1 - SinD(degrees)); }
};

const std::vector<Box> kBoxes = {{10, 10, 211, 211},  {20, 15, 220, 215}, {10, 80, 231, 120},
                                 {100, 5, 125, 236},  {60, 90, 180, 141}, {110, 110, 120, 119},
                                 {30, 100, 230, 104}, {118, 10, 121, 231}};

// Length of an arc measured along the longer axis at each place: the steps of a line along it.
double StepsOf(const Box& box, double start, double span) {
    constexpr int kParts = 100000;
    double sum = 0;
    for (int i = 0; i < kParts; ++i) {
        const double a = start + span * i / kParts;
        const double b = start + span * (i + 1) / kParts;
        sum += std::max(std::abs(box.X(b) - box.X(a)), std::abs(box.Y(b) - box.Y(a)));
    }
    return sum;
}

TEST(SmoothArc, HasTheInkOfALineOfItsSteps) {
    for (const Box& box : kBoxes) {
        Paper paper;
        paper.Arc(box.left, box.top, box.right, box.bottom, 0, 360);
        // Where it is as narrow as this, both sides run through the same pixels.
        if (std::min(box.RadiusX(), box.RadiusY()) < 1.5) continue;
        const double steps = StepsOf(box, 0, 360);
        EXPECT_NEAR(paper.AllInk(), steps, 0.005 * steps + 3) << box.left << " " << box.top;
    }
}

TEST(SmoothArc, LeavesNoGapAlongItsPath) {
    for (const Box& box : kBoxes) {
        Paper paper;
        paper.Arc(box.left, box.top, box.right, box.bottom, 37, 360);
        for (double degrees = 0; degrees < 360; degrees += 0.05) {
            // Between four pixels, each weighed by its nearness.
            const double x = box.X(degrees);
            const double y = box.Y(degrees);
            const int left = static_cast<int>(std::floor(x));
            const int top = static_cast<int>(std::floor(y));
            const double right = x - left;
            const double down = y - top;
            const double ink = (1 - right) * (1 - down) * paper.Ink(left, top) +
                               right * (1 - down) * paper.Ink(left + 1, top) +
                               (1 - right) * down * paper.Ink(left, top + 1) +
                               right * down * paper.Ink(left + 1, top + 1);
            ASSERT_GT(ink, 0.35) << box.left << " " << box.top << " at " << degrees;
        }
    }
}

TEST(SmoothArc, RunsWhereTheEllipseRunsToAHundredthOfAPixel) {
    const Box box = {10, 20, 211, 180};
    Paper paper;
    paper.Arc(box.left, box.top, box.right, box.bottom, -90, 180);
    for (int y = 70; y < 130; ++y) {
        double sum = 0;
        double moment = 0;
        for (int x = 120; x < kSize; ++x) {
            sum += paper.Ink(x, y);
            moment += x * paper.Ink(x, y);
        }
        const double off = (y - box.top - box.RadiusY()) / box.RadiusY();
        const double expected = box.left + box.RadiusX() * (1 + std::sqrt(1 - off * off));
        EXPECT_NEAR(sum, 1, 0.01);
        EXPECT_NEAR(moment / sum, expected, 0.01) << y;
    }
    // The other half is bare.
    for (int y = 30; y < 170; ++y) EXPECT_EQ(paper.Ink(10, y), 0);
}

// Share of a pixel that lies within half of `width` of a circle, counted on a fine grid.
double RingShare(double centre, double radius, int width, int x, int y) {
    constexpr int kFine = 16;
    int count = 0;
    for (int i = 0; i < kFine * kFine; ++i) {
        const int row = i / kFine;
        const double px = x - 0.5 + (i % kFine + 0.5) / kFine;
        const double py = y - 0.5 + (row + 0.5) / kFine;
        const double off = std::hypot(px - centre, py - centre) - radius;
        if (2 * std::abs(off) <= width) ++count;
    }
    return count / static_cast<double>(kFine * kFine);
}

TEST(SmoothArc, AWideOneCoversWhatLiesHalfItsWidthAside) {
    for (const int width : {2, 3}) {
        Paper paper(width);
        paper.Arc(20, 20, 221, 221, 0, 360);
        double worst = 0;
        for (int y = 10; y < kSize; ++y) {
            for (int x = 10; x < kSize; ++x) {
                const double share = RingShare(120, 100, width, x, y);
                worst = std::max(worst, std::abs(paper.Ink(x, y) - share));
            }
        }
        // An eighth is what the measure across the longer axis is off by on straight lines.
        EXPECT_LT(worst, 0.16) << width;
    }
}

TEST(SmoothArc, AWideOneEndsRound) {
    Paper paper(3);
    paper.Arc(20, 20, 221, 221, 0, 90);
    EXPECT_GT(paper.Ink(220, 121), 0.5);
    EXPECT_GT(paper.Ink(119, 20), 0.5);
    EXPECT_EQ(paper.Ink(220, 123), 0);
    EXPECT_EQ(paper.Ink(117, 20), 0);
}

TEST(SmoothArc, IsTheSameFromEitherEnd) {
    for (const Box& box : kBoxes) {
        for (const int width : {1, 3}) {
            Paper there(width);
            Paper back(width);
            there.Arc(box.left, box.top, box.right, box.bottom, 250, 200);
            back.Arc(box.left, box.top, box.right, box.bottom, 90, -200);
            // But for the last digit where the two sides of a narrow one overlap.
            for (int i = 0; i < kSize * kSize; ++i) {
                const int x = i % kSize;
                const int y = i / kSize;
                ASSERT_NEAR(there.Ink(x, y), back.Ink(x, y), 1.5 / 255) << x << " " << y;
            }
        }
    }
}

TEST(SmoothArc, IsCutByTheClipAlone) {
    for (const int width : {1, 2, 3}) {
        for (const LineDash dash : {LineDash::Solid, LineDash::Dot}) {
            if (width > 1 && dash != LineDash::Solid) continue;
            Paper whole(width, dash);
            Paper cut(width, dash);
            cut.ClipToEllipse(40, 30, 150, 200);
            whole.Arc(-60, 25, 141, 190, 200, 300);
            cut.Arc(-60, 25, 141, 190, 200, 300);
            const Clip clip = EllipseClip({40, 30, 150, 200}, kSize, kSize);
            for (int y = 0; y < kSize; ++y) {
                for (int x = 0; x < kSize; ++x) {
                    const double expected = InClip(clip, x, y) ? whole.Ink(x, y) : 0;
                    ASSERT_EQ(cut.Ink(x, y), expected) << x << " " << y << " width " << width;
                }
            }
        }
    }
}

TEST(SmoothArc, HasTheDashesOfALine) {
    Paper paper(1, LineDash::Dot);
    paper.Arc(20, 10, 41, 221, 0, 60);
    // From its start, in the middle of the right side, upwards: three on, three off.
    for (int step = 0; step < 60; ++step) {
        double sum = 0;
        for (int x = 31; x < 45; ++x) sum += paper.Ink(x, 115 - step);
        EXPECT_NEAR(sum, step % 6 < 3 ? 1 : 0, 0.01) << step;
    }
}

TEST(SmoothArc, TakesAnyBoxAndAngle) {
    Paper paper;
    paper.Arc(5, 5, 6, 6, 0, 360);
    EXPECT_GT(paper.Ink(5, 5), 0.9);
    paper.Arc(10, 20, 11, 40, -90, 180);
    for (int y = 21; y < 39; ++y) EXPECT_EQ(paper.Ink(10, y), 1) << y;
    paper.Arc(20, 60, 40, 61, 0, 180);
    for (int x = 21; x < 39; ++x) EXPECT_EQ(paper.Ink(x, 60), 1) << x;

    Paper bare;
    bare.Arc(10, 10, 50, 50, std::numeric_limits<double>::quiet_NaN(), 90);
    bare.Arc(10, 10, 50, 50, 0, std::numeric_limits<double>::quiet_NaN());
    bare.Arc(10, 10, 50, 50, std::numeric_limits<double>::infinity(), 90);
    bare.Arc(10, 10, 50, 50, 40, 0);
    EXPECT_EQ(bare.AllInk(), 0);

    // Far larger than the surface: the part that is seen, and at once.
    bare.Arc(-2000000000, -2000000000, 1, 2000000000, -90, 180);
    EXPECT_GT(bare.Ink(0, 100), 0.9);
    EXPECT_EQ(bare.Ink(2, 100), 0);
}

}  // namespace
}  // namespace orvantis

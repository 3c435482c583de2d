#include "raster/line.h"

#include <cmath>
#include <gtest/gtest.h>
#include <random>
#include <utility>
#include <vector>

namespace orvantis {
namespace {

using Pixels = std::vector<std::pair<int, int>>;

Pixels Walked(SurfacePoint from, SurfacePoint to, const PixelBox& box,
              LineRounding rounding = LineRounding::Nearest) {
    Pixels pixels;
    LineWalk walk = WalkLine(from, to, box, rounding);
    for (int i = 0; i < walk.count; ++i) {
        pixels.emplace_back(walk.x, walk.y);
        NextPixel(walk);
    }
    return pixels;
}

constexpr PixelBox kEverywhere = {-40000, -40000, 40000, 40000};

// Brute force by the definition: at each step of the longer axis the nearest pixel aside, ties away
// from the start.
Pixels ByDefinition(SurfacePoint from, SurfacePoint to) {
    Pixels pixels;
    const int dx = to.x - from.x;
    const int dy = to.y - from.y;
    const int steps = std::max(std::abs(dx), std::abs(dy));
    const auto aside = [&](int delta, int step) {
        const double exact = std::abs(static_cast<double>(delta)) * step / steps;
        const int moved = static_cast<int>(std::floor(exact + 0.5));
        return delta < 0 ? -moved : moved;
    };
    for (int step = 0; step < steps; ++step) {
        pixels.emplace_back(from.x + aside(dx, step), from.y + aside(dy, step));
    }
    return pixels;
}

TEST(LineWalk, TakesTheNearestPixelOfEveryStepAndLeavesTheEndOut) {
    std::mt19937 random(20261121);
    std::uniform_int_distribution<int> place(-60, 60);
    for (int i = 0; i < 20000; ++i) {
        const SurfacePoint from{place(random), place(random)};
        const SurfacePoint to{place(random), place(random)};
        ASSERT_EQ(Walked(from, to, kEverywhere), ByDefinition(from, to))
            << from.x << "," << from.y << " " << to.x << "," << to.y;
    }
}

TEST(LineWalk, ClippingNeverChangesWhichPixelsAreTaken) {
    std::mt19937 random(7);
    std::uniform_int_distribution<int> place(-90, 90);
    std::uniform_int_distribution<int> edge(-30, 30);
    for (int i = 0; i < 40000; ++i) {
        const SurfacePoint from{place(random), place(random)};
        const SurfacePoint to{place(random), place(random)};
        const int left = edge(random);
        const int top = edge(random);
        const PixelBox box{left, top, left + 1 + i % 37, top + 1 + i % 23};
        Pixels expected;
        for (const auto& pixel : ByDefinition(from, to)) {
            if (pixel.first >= box.left && pixel.first < box.right && pixel.second >= box.top &&
                pixel.second < box.bottom) {
                expected.push_back(pixel);
            }
        }
        ASSERT_EQ(Walked(from, to, box), expected) << "run " << i;
    }
}

TEST(LineWalk, StepsBeforeTheFirstPixelAreCounted) {
    const LineWalk walk = WalkLine({-10, 5}, {20, 5}, {0, 0, 10, 10}, LineRounding::Nearest);
    EXPECT_EQ(walk.skipped, 10);
    EXPECT_EQ(walk.count, 10);
    EXPECT_EQ(walk.total, 30);
    EXPECT_EQ(walk.x, 0);
    EXPECT_EQ(walk.y, 5);
}

TEST(LineWalk, FarCoordinatesGiveJustTheVisiblePixels) {
    const PixelBox box{0, 0, 100, 100};
    const Pixels diagonal = Walked({-32768, -32768}, {32767, 32767}, box);
    ASSERT_EQ(diagonal.size(), 100U);
    EXPECT_EQ(diagonal.front(), std::make_pair(0, 0));
    EXPECT_EQ(diagonal.back(), std::make_pair(99, 99));
    EXPECT_EQ(Walked({-32768, 50}, {32767, 50}, box).size(), 100U);
    EXPECT_TRUE(Walked({-32768, 200}, {32767, 200}, box).empty());
    EXPECT_TRUE(Walked({32767, -32768}, {32767, 32767}, box).empty());
    EXPECT_EQ(Walked({-2147483647, 50}, {2147483647, 50}, box).size(), 100U)
        << "beyond 16 bits a coordinate counts as the end of the range";
}

TEST(LineWalk, LineOfNoLengthAndEmptyBoxHaveNoPixels) {
    EXPECT_TRUE(Walked({5, 5}, {5, 5}, kEverywhere).empty());
    EXPECT_TRUE(Walked({0, 0}, {5, 5}, {3, 3, 3, 9}).empty());
}

TEST(LineWalk, RoundingDownLeavesTheShareOfTheNextPixelInTheError) {
    LineWalk walk = WalkLine({0, 0}, {4, 1}, kEverywhere, LineRounding::Down);
    for (int step = 0; step < 4; ++step) {
        EXPECT_EQ(walk.y, 0);
        EXPECT_DOUBLE_EQ(static_cast<double>(walk.error) / walk.run, step / 4.0);
        NextPixel(walk);
    }
}

TEST(Dash, WidePatternsAreMeasuredInWidthsAndASolidLineHasNone) {
    const std::vector<double> rows[] = {{}, {4, 2}, {1, 1}, {4, 2, 1, 2}, {4, 2, 1, 2, 1, 2}};
    for (int style = 0; style < 5; ++style) {
        EXPECT_EQ(WideDashes(static_cast<LineDash>(style)), rows[style]) << style;
    }
    EXPECT_TRUE(WideDashes(static_cast<LineDash>(9)).empty()) << "a file may hold any style";
    EXPECT_TRUE(WideDashes(static_cast<LineDash>(-1)).empty());
}

TEST(Dash, PatternsRepeatEvery24Pixels) {
    const struct {
        LineDash dash;
        const char* pattern;
    } rows[] = {
        {LineDash::Solid, "########################"},
        {LineDash::Dash, "##################      "},
        {LineDash::Dot, "###   ###   ###   ###   "},
        {LineDash::DashDot, "#########      ###      "},
        {LineDash::DashDotDot, "#########   ###   ###   "},
    };
    for (const auto& row : rows) {
        DashWalk walk(row.dash, 24);
        for (int step = 0; step < 72; ++step) {
            EXPECT_EQ(walk.Next(), row.pattern[step % 24] == '#') << step;
        }
    }
}

}  // namespace
}  // namespace orvantis

// What the tests' own surface must hold of the contract for the tests on it to mean anything.
#include "support/recording_surface.h"

#include <gtest/gtest.h>

namespace orvantis {
namespace {

int PixelsOf(RecordingSurface& surface, Colour colour) {
    int count = 0;
    for (int y = 0; y < surface.Size().height; ++y) {
        for (int x = 0; x < surface.Size().width; ++x) {
            if (surface.GetPixel(x, y) == colour) ++count;
        }
    }
    return count;
}

TEST(RecordingSurfaceTest, RectangleDrawsItsOutlineRightAndBottomExclusive) {
    RecordingSurface surface(20, 20);
    surface.SetPen({1, LineDash::Solid, 7});
    surface.Rectangle(2, 3, 6, 8, {});
    EXPECT_EQ(PixelsOf(surface, 7), 4 * 5 - 2 * 3);
    EXPECT_EQ(surface.GetPixel(5, 7), 7);
    EXPECT_EQ(surface.GetPixel(6, 8), 0);
}

TEST(RecordingSurfaceTest, RectangleDrawsNothingForAnEmptyBox) {
    RecordingSurface surface(20, 20);
    surface.SetPen({1, LineDash::Solid, 7});
    surface.Rectangle(5, 5, 5, 9, {});
    surface.Rectangle(5, 5, 9, 5, {});
    surface.Rectangle(9, 9, 5, 5, {});
    EXPECT_EQ(PixelsOf(surface, 7), 0);
    EXPECT_EQ(surface.Calls("Rectangle").size(), 3U) << "the calls are kept";
}

}  // namespace
}  // namespace orvantis

#include "map/fills.h"

#include <limits>

#include "map/map_fixture.h"

namespace orvantis {
namespace {

using Log = std::vector<std::string>;

constexpr Colour kLand = 0x00C800;
constexpr Colour kSea = 0xFF8040;

class FillsTest : public MapTest {
  protected:
    void SetUp() override {
        MapTest::SetUp();
        // A square from 10 south to 10 north and 10 west to 10 east.
        AddLine(5001,
                {{5, -600, -600}, {5, -600, 600}, {5, 600, 600}, {5, 600, -600}, {5, -600, -600}});
        MakeDatabase();
    }

    // A full redraw; the floods of the map itself.
    Log Floods() {
        surface.log.clear();
        PlotMap4(kFalse, surface, kTrue);
        Log floods = surface.Calls("FloodFill");
        floods.erase(floods.begin());  // the surround
        return floods;
    }

    Colour At(int latDegrees, int longDegrees) {
        return surface.GetPixel(25 + 180 + longDegrees, 39 + 90 - latDegrees);
    }
};

TEST_F(FillsTest, FillPaintsUpToTheOutlineAndNoFarther) {
    AddFill(1, 40, 40, true, 0);
    EXPECT_EQ(Floods(), Log{"FloodFill 245 89 16744512 0"});
    EXPECT_EQ(At(40, 40), kSea);
    EXPECT_EQ(At(-60, -120), kSea);
    EXPECT_EQ(At(0, 0), kLand);
    EXPECT_EQ(At(10, 0), 0);
}

TEST_F(FillsTest, SecondRecordOfTheSameSeedAndColourDoesNothing) {
    AddFill(1, 40, 40, false, 0x0000FF);
    AddFill(1, 40, 40, false, 0x0000FF);
    EXPECT_EQ(Floods().size(), 1U);
}

TEST_F(FillsTest, SecondSeedInAnAreaOfItsColourDoesNothing) {
    AddFill(1, 40, 40, true, 0);
    AddFill(1, -40, -40, true, 0);
    EXPECT_EQ(Floods().size(), 1U);
}

TEST_F(FillsTest, LaterFillPaintsOverAnEarlierOne) {
    AddFill(1, 40, 40, true, 0);
    AddFill(1, 40, 40, false, 0x0000FF);
    EXPECT_EQ(Floods().size(), 2U);
    EXPECT_EQ(At(40, 40), 0x0000FF);
}

TEST_F(FillsTest, PaletteMarkOfAColourIsNotCompared) {
    AddFill(1, 40, 40, false, 0x20000FF);
    AddFill(1, 40, 41, false, 0x00000FF);
    EXPECT_EQ(Floods(), Log{"FloodFill 245 89 255 0"});
}

TEST_F(FillsTest, SeedOnAnOutlinePixelStartsNoFlood) {
    AddFill(1, 10, 0, true, 0);
    EXPECT_EQ(Floods().size(), 1U) << "it is tried, since the pixel isn't of the sea's colour";
    EXPECT_EQ(At(0, 0), kLand);
    EXPECT_EQ(At(40, 40), kLand);
}

TEST_F(FillsTest, SeedOutsideAZoomedViewIsKeptAndComesBackWithTheView) {
    AddFill(1, 40, 40, true, 0);
    CurrentMap().west = -30;
    CurrentMap().east = 30;
    CurrentMap().south = -15;
    CurrentMap().north = 15;
    // The island stands in the sea, so the corners are filled; the record isn't.
    EXPECT_EQ(Floods().size(), 4U);
    EXPECT_EQ(CurrentMap().fillCount, 1);
    CurrentMap().west = -180;
    CurrentMap().east = 180;
    CurrentMap().south = -90;
    CurrentMap().north = 90;
    EXPECT_EQ(Floods(), Log{"FloodFill 245 89 16744512 0"});
}

TEST_F(FillsTest, FillCountBeyondTheListStopsTheReplay) {
    AddFill(1, 40, 40, true, 0);
    CurrentMap().fillCount = 30000;
    EXPECT_EQ(Floods().size(), 1U);
    EXPECT_TRUE(TestShell().boxes.empty());
}

TEST_F(FillsTest, SeedOnTheNearSideOfAGlobeIsPaintedAndOneBehindIsNot) {
    CurrentMap().south = CurrentMap().north = 0;
    CurrentMap().west = -90;
    CurrentMap().east = 90;
    CurrentMap().projection = projection::kGlobeSphere;
    AddFill(1, 0, 0, false, 0x0000FF);
    AddFill(1, 0, 180, false, 0x0000FF);
    EXPECT_EQ(Floods(), Log{"FloodFill 205 129 255 0"});
}

TEST_F(FillsTest, SeedThatIsNoPlaceIsPassedOver) {
    const float none = std::numeric_limits<float>::quiet_NaN();
    const float far = std::numeric_limits<float>::max();
    AddFill(1, none, 40, true, 0);
    AddFill(1, 40, none, true, 0);
    AddFill(1, 40, far, true, 0);
    AddFill(1, -far, 40, true, 0);
    AddFill(1, std::numeric_limits<float>::infinity(), 40, true, 0);
    EXPECT_EQ(Floods(), Log{});
    EXPECT_FALSE(plotState.interrupted);
}

TEST_F(FillsTest, SeedsAreMarkedWhenAskedFor) {
    AddFill(1, 40, 40, true, 0);
    options.fillPoints = kTrue;
    Floods();
    EXPECT_EQ(At(40, 40), 0xFFFFFF);
    EXPECT_EQ(At(41, 40), 0x0000FF);
    EXPECT_EQ(At(39, 40), 0x0000FF);
    EXPECT_EQ(At(40, 41), 0x0000FF);
    EXPECT_EQ(At(40, 39), 0x0000FF);
    EXPECT_EQ(At(41, 41), kSea);
}

TEST_F(FillsTest, FloodTellsWhetherItPainted) {
    PlotMap4(kFalse, surface, kTrue);
    mapView.surface = &surface;
    EXPECT_NE(FloodAt(100, 100, 0x0000FF), kFalse);
    EXPECT_EQ(FloodAt(25, 39, 0x0000FF), kFalse) << "on the outline";
    EXPECT_EQ(FloodAt(-5, 39, 0x0000FF), kFalse) << "off the surface";
}

}  // namespace
}  // namespace orvantis

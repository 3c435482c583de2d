// The sea along the edges of a zoomed flat map, from where and how coasts cross them.
#include "map/edge_sea.h"

#include <algorithm>

#include "map/map_fixture.h"

namespace orvantis {
namespace {

using Log = std::vector<std::string>;

constexpr Colour kLand = 0x00C800;
constexpr Colour kSea = 0xFF8040;
constexpr Flag kOut = kTrue;  // the start of the crossing segment was inside
constexpr Flag kIn = kFalse;

// The map's pixels on the surface: 26 to 384 across, 40 to 218 down; the inset line is their rim.
constexpr int kLeft = 26;
constexpr int kRight = 384;
constexpr int kTop = 40;
constexpr int kBottom = 218;

class EdgeSeaTest : public MapTest {
  protected:
    void SetUp() override {
        MapTest::SetUp();
        SetView(-45, -45, 45, 45, projection::kCartesian);
        plotState.outlineColour = 0;
        surface.Clear(kLand);
        surface.log.clear();
    }

    static void Cross(std::int16_t sideNumber, int position, Flag startInside) {
        const auto at = static_cast<std::int16_t>(position);
        switch (sideNumber) {
            case side::kLeft:
                plotState.crossings.push_back({sideNumber, kLeft, at, startInside});
                break;
            case side::kRight:
                plotState.crossings.push_back({sideNumber, kRight, at, startInside});
                break;
            case side::kTop:
                plotState.crossings.push_back({sideNumber, at, kTop, startInside});
                break;
            default:
                plotState.crossings.push_back({sideNumber, at, kBottom, startInside});
        }
    }

    // Outline from one point to another, both included.
    void Outline(int x0, int y0, int x1, int y1) {
        surface.SetPen({1, LineDash::Solid, 0});
        surface.MoveTo(x0, y0);
        surface.LineTo(x1, y1);
        surface.SetPixel(x1, y1);
        surface.log.clear();
    }

    // The shores of a bay that opens at a row of the map's rim.
    void Bay(int from, int to, int row, int head) {
        Outline(from, row, (from + to) / 2, head);
        Outline((from + to) / 2, head, to, row);
    }

    Log Floods() {
        surface.log.clear();
        surface.ClipToRectangle(kLeft, kTop, kRight + 1, kBottom + 1);
        FillEdgeSea();
        surface.ClearClip();
        return surface.Calls("FloodFill");
    }
};

TEST_F(EdgeSeaTest, NothingIsFilledWithoutCrossings) {
    EXPECT_EQ(Floods(), Log{});
}

// A coast across the map at row 100. A line has land on its left: one that leaves the map on the
// left has land below it, one that enters there has it above.
TEST_F(EdgeSeaTest, LeftSideIsSeaAboveACrossingOutward) {
    Outline(kLeft, 100, kRight, 100);
    Cross(side::kLeft, 100, kOut);
    EXPECT_EQ(Floods(), Log{"FloodFill 26 40 16744512 0"});
    EXPECT_EQ(surface.GetPixel(200, 60), kSea);
    EXPECT_EQ(surface.GetPixel(200, 150), kLand);
}

TEST_F(EdgeSeaTest, LeftSideIsSeaBelowACrossingInward) {
    Outline(kLeft, 100, kRight, 100);
    Cross(side::kLeft, 100, kIn);
    EXPECT_EQ(Floods(), Log{"FloodFill 26 101 16744512 0"});
}

TEST_F(EdgeSeaTest, RightSideIsSeaBelowACrossingOutwardAndAboveOneInward) {
    Outline(kLeft, 100, kRight, 100);
    Cross(side::kRight, 100, kOut);
    EXPECT_EQ(Floods(), Log{"FloodFill 384 101 16744512 0"});
    surface.Clear(kLand);
    Outline(kLeft, 100, kRight, 100);
    plotState.crossings.back().startInside = kIn;
    EXPECT_EQ(Floods(), Log{"FloodFill 384 40 16744512 0"});
}

TEST_F(EdgeSeaTest, TopIsSeaToTheRightOfACrossingOutwardAndToTheLeftOfOneInward) {
    Outline(200, kTop, 200, kBottom);
    Cross(side::kTop, 200, kOut);
    EXPECT_EQ(Floods(), Log{"FloodFill 201 40 16744512 0"});
    surface.Clear(kLand);
    Outline(200, kTop, 200, kBottom);
    plotState.crossings.back().startInside = kIn;
    EXPECT_EQ(Floods(), Log{"FloodFill 26 40 16744512 0"});
}

TEST_F(EdgeSeaTest, BottomIsSeaToTheLeftOfACrossingOutwardAndToTheRightOfOneInward) {
    Outline(200, kTop, 200, kBottom);
    Cross(side::kBottom, 200, kOut);
    EXPECT_EQ(Floods(), Log{"FloodFill 26 218 16744512 0"});
    surface.Clear(kLand);
    Outline(200, kTop, 200, kBottom);
    plotState.crossings.back().startInside = kIn;
    EXPECT_EQ(Floods(), Log{"FloodFill 201 218 16744512 0"});
}

TEST_F(EdgeSeaTest, StretchesAlternateAlongASide) {
    for (const int row : {80, 120, 160}) Outline(kLeft, row, kRight, row);
    Cross(side::kLeft, 120, kIn);  // in the order of the lines, not of the rows
    Cross(side::kLeft, 160, kOut);
    Cross(side::kLeft, 80, kOut);
    EXPECT_EQ(Floods(), (Log{"FloodFill 26 40 16744512 0", "FloodFill 26 121 16744512 0"}));
    EXPECT_EQ(surface.GetPixel(200, 100), kLand);
    EXPECT_EQ(surface.GetPixel(200, 190), kLand);
}

// Sea in three corners, and a bay at the top and at the bottom.
TEST_F(EdgeSeaTest, SidesAreWalkedInTheirOrderLeftRightTopBottom) {
    Outline(100, kTop, kLeft, 100);
    Outline(kRight, 100, 300, kTop);
    Outline(kLeft, 150, 100, kBottom);
    Bay(200, 240, kBottom, 190);
    Bay(200, 240, kTop, 60);
    Cross(side::kBottom, 100, kOut);
    Cross(side::kBottom, 200, kIn);
    Cross(side::kBottom, 240, kOut);
    Cross(side::kTop, 100, kIn);
    Cross(side::kTop, 200, kOut);
    Cross(side::kTop, 240, kIn);
    Cross(side::kTop, 300, kOut);
    Cross(side::kRight, 100, kIn);
    Cross(side::kLeft, 100, kOut);
    Cross(side::kLeft, 150, kIn);
    EXPECT_EQ(Floods(), (Log{"FloodFill 26 40 16744512 0", "FloodFill 26 151 16744512 0",
                             "FloodFill 384 40 16744512 0", "FloodFill 201 40 16744512 0",
                             "FloodFill 201 218 16744512 0"}));
}

// The shores of a river mouth leave the map at the top the wrong way round. The left side has land
// above its crossings, and the right side too.
TEST_F(EdgeSeaTest, SideThatNoNeighbourBearsOutIsLeftAlone) {
    const auto crossTheRest = [] {
        Cross(side::kTop, 200, kIn);
        Cross(side::kTop, 204, kOut);
        Cross(side::kRight, 150, kOut);
    };
    Outline(kLeft, 150, kRight, 150);
    Cross(side::kLeft, 150, kIn);
    crossTheRest();
    EXPECT_EQ(Floods(), Log{"FloodFill 26 151 16744512 0"});
    EXPECT_EQ(surface.GetPixel(100, 60), kLand);

    // The bottom tells of land on the left where no coast crosses the left side.
    plotState.crossings.assign(1, {});
    surface.Clear(kLand);
    Outline(300, kBottom, kRight, 150);
    Cross(side::kBottom, 300, kIn);
    crossTheRest();
    EXPECT_EQ(Floods(), Log{"FloodFill 384 151 16744512 0"});
    EXPECT_EQ(surface.GetPixel(100, 60), kLand);
}

// The top and the right side say opposite things of their corner. The left side bears out the top,
// and, past the bottom, which no coast crosses, the right side.
TEST_F(EdgeSeaTest, SideThatOneOfItsNeighboursBearsOutIsFilled) {
    Outline(200, kTop, kLeft, 150);
    Outline(300, kTop, kRight, 150);
    Cross(side::kTop, 200, kIn);
    Cross(side::kLeft, 150, kOut);
    Cross(side::kRight, 150, kIn);
    EXPECT_EQ(Floods(), (Log{"FloodFill 26 40 16744512 0", "FloodFill 384 40 16744512 0"}));
}

TEST_F(EdgeSeaTest, CrossingsOfOnePositionCancelInPairs) {
    Outline(kLeft, 100, kRight, 100);
    Cross(side::kLeft, 150, kIn);  // a tip that just reaches the edge
    Cross(side::kLeft, 100, kOut);
    Cross(side::kLeft, 150, kOut);
    EXPECT_EQ(Floods(), Log{"FloodFill 26 40 16744512 0"});
    EXPECT_FALSE(CrossingsCancel());
}

TEST_F(EdgeSeaTest, OfThreeCrossingsOfOnePositionOneIsLeftInTheDirectionOfTheMost) {
    Outline(kLeft, 100, kRight, 100);
    Cross(side::kLeft, 100, kOut);
    Cross(side::kLeft, 100, kIn);
    Cross(side::kLeft, 100, kOut);
    EXPECT_EQ(Floods(), Log{"FloodFill 26 40 16744512 0"});
    surface.Clear(kLand);
    Outline(kLeft, 100, kRight, 100);
    for (const std::size_t i : {1U, 2U, 3U}) {
        Flag& flag = plotState.crossings[i].startInside;
        flag = flag == kOut ? kIn : kOut;
    }
    EXPECT_EQ(Floods(), Log{"FloodFill 26 101 16744512 0"});
}

TEST_F(EdgeSeaTest, SideWithTwoCrossingsOfOnePositionAndDirectionIsGivenUp) {
    Outline(kLeft, 100, kRight, 100);
    Cross(side::kLeft, 99, kOut);
    Cross(side::kLeft, 100, kIn);
    Cross(side::kLeft, 100, kIn);
    EXPECT_EQ(Floods(), Log{});
}

TEST_F(EdgeSeaTest, SideWhoseCrossingsAllCancelIsLeftAlone) {
    for (const std::int16_t sideNumber : {side::kLeft, side::kRight, side::kTop, side::kBottom}) {
        Cross(sideNumber, 100, kOut);
        Cross(sideNumber, 100, kIn);
    }
    EXPECT_EQ(Floods(), Log{});
    EXPECT_TRUE(CrossingsCancel());
}

TEST_F(EdgeSeaTest, SideWhoseCrossingsContradictEachOtherIsGivenUpAndTheOthersNot) {
    Outline(kLeft, 100, kRight, 100);
    Cross(side::kLeft, 100, kOut);
    Cross(side::kLeft, 150, kOut);
    Cross(side::kRight, 100, kIn);
    EXPECT_EQ(Floods(), Log{"FloodFill 384 40 16744512 0"});
}

TEST_F(EdgeSeaTest, IntervalOfLessThanFourPixelsIsLeftUnfilled) {
    Outline(kLeft, 100, 100, 100);
    Outline(kLeft, 103, 100, 103);
    Cross(side::kLeft, 100, kIn);
    Cross(side::kLeft, 103, kOut);
    EXPECT_EQ(Floods(), Log{});
    plotState.crossings.back().y = 104;
    EXPECT_EQ(Floods(), Log{"FloodFill 26 101 16744512 0"});
}

// A headland that touches the walked line parts the sea; both parts are found.
TEST_F(EdgeSeaTest, SeaIsFilledOnBothSidesOfACoastThatTouchesTheEdgeWithoutCrossingIt) {
    Outline(kLeft, 160, kRight, 160);
    Outline(kLeft, 100, kRight, 60);
    Outline(kLeft, 100, kRight, 140);
    Cross(side::kLeft, 160, kOut);
    EXPECT_EQ(Floods(), (Log{"FloodFill 26 40 16744512 0", "FloodFill 26 101 16744512 0"}));
    EXPECT_EQ(surface.GetPixel(200, 100), kLand);
    EXPECT_EQ(surface.GetPixel(200, 45), kSea);
    EXPECT_EQ(surface.GetPixel(200, 150), kSea);
}

TEST_F(EdgeSeaTest, EachSeedIsMarkedRedWhenSeedsAreShown) {
    Outline(kLeft, 100, kRight, 100);
    Cross(side::kLeft, 100, kOut);
    options.fillPoints = kTrue;
    Floods();
    EXPECT_EQ(surface.GetPixel(kLeft, kTop), 0x0000FF);
    EXPECT_EQ(surface.GetPixel(kLeft, kTop + 1), kSea);
    EXPECT_EQ(surface.Calls("SetPen").back(), "SetPen 1 0 0") << "the map's pen is back";
}

TEST_F(EdgeSeaTest, BorderIsWhiteOnBlackLand) {
    settings.mapBackColour = 0;
    plotState.outlineColour = 0xFFFFFF;
    surface.Clear(0);
    Cross(side::kLeft, 100, kOut);
    EXPECT_EQ(Floods(), Log{"FloodFill 26 40 16744512 16777215"});
}

// A coast whose crossing of the left side is reckoned one pixel below the row on which its line
// leaves the map: the pixel in the corner is land, though the top is sea up to its next crossing.
TEST_F(EdgeSeaTest, ACornerPixelAtAnotherSidesCrossingIsNoSeed) {
    Cross(side::kLeft, kTop, kOut);
    Cross(side::kLeft, kTop + 40, kIn);
    Cross(side::kTop, 100, kIn);
    Outline(kLeft, kTop - 1, kLeft + 1, kTop);
    Outline(kLeft + 1, kTop, 100, kTop + 30);
    Outline(100, kTop + 30, 100, kTop - 1);
    Outline(kLeft, kTop + 40, kLeft + 40, kBottom);
    Floods();
    EXPECT_EQ(surface.GetPixel(kLeft, kTop), kLand);
    EXPECT_EQ(surface.GetPixel(kLeft + 20, kTop), kSea);
    EXPECT_EQ(surface.GetPixel(kLeft, kTop + 60), kSea);
}

}  // namespace
}  // namespace orvantis

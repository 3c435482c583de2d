// The colours on the frame of a zoom rectangle.
#include "map/zoom_seeds.h"

#include <array>
#include <cmath>
#include <limits>

#include "map/map_fixture.h"

namespace orvantis {
namespace {

constexpr Colour kLand = 0x00C800;
constexpr Colour kSea = 0xFF8040;
constexpr Colour kRed = 0x0000FF;
constexpr Colour kBlue = 0xFF0000;

// The world at a pixel a degree: longitude 0 lies at x 205, latitude 0 at y 129. The rectangle of
// the tests goes from 20 west to 20 east and from 10 south to 10 north.
constexpr int kX = 205;
constexpr int kY = 129;

class ZoomSeedsTest : public MapTest {
  protected:
    void SetUp() override {
        MapTest::SetUp();
        SetView(-90, -180, 90, 180, projection::kCartesian);
        plotState.outlineColour = 0;
        surface.Clear(kLand);
    }

    // Paints a box of the map, degrees, east and north positive, edges included.
    void Paint(int west, int south, int east, int north, Colour colour) {
        surface.SetPen({1, LineDash::Solid, colour});
        for (int y = kY - north; y <= kY - south; ++y) {
            surface.MoveTo(kX + west, y);
            surface.LineTo(kX + east + 1, y);
        }
    }

    void Search() { SeedsFromZoom(1, surface, kX - 20, kY - 10, kX + 20, kY + 10); }

    void ExpectFill(std::size_t number, double lat, double longitude, Colour colour) {
        ASSERT_GT(mapState.fills.size(), number);
        const FillRecord& fill = mapState.fills[number];
        EXPECT_NEAR(fill.lat, lat, 1e-4) << number;
        EXPECT_NEAR(fill.longitude, longitude, 1e-4) << number;
        EXPECT_EQ(fill.colour, colour) << number;
    }
};

TEST_F(ZoomSeedsTest, BareLandSetsNeitherFlagAndAddsNothing) {
    plotState.fillSeaOnly = plotState.fillOtherColour = kTrue;
    Search();
    EXPECT_EQ(plotState.fillSeaOnly, kFalse);
    EXPECT_EQ(plotState.fillOtherColour, kFalse);
    EXPECT_EQ(plotState.fillLand, kTrue);
    EXPECT_EQ(CurrentMap().fillCount, 0);
}

TEST_F(ZoomSeedsTest, SeaOnTheFrameIsNotedAndGetsNoRecord) {
    Paint(-30, -20, 30, 20, kSea);
    Search();
    EXPECT_EQ(plotState.fillSeaOnly, kTrue);
    EXPECT_EQ(plotState.fillOtherColour, kFalse);
    EXPECT_EQ(plotState.fillLand, kFalse);
    EXPECT_EQ(CurrentMap().fillCount, 0);
}

TEST_F(ZoomSeedsTest, SeaWithinTheFrameIsNotSeen) {
    Paint(-18, -8, 18, 8, kSea);
    Search();
    EXPECT_EQ(plotState.fillSeaOnly, kFalse);
}

// One run a side, each a sixtieth of a degree further in than the line that is walked.
TEST_F(ZoomSeedsTest, RunOfAListedColourGetsASeedOffTheMiddleOfEachSide) {
    AddFill(1, 0, 0, false, kRed);
    Paint(-30, -20, 30, 20, kRed);
    Search();
    ASSERT_EQ(CurrentMap().fillCount, 5);
    ExpectFill(2, 0, -19 + 0.0167, PaletteColour(kRed));
    ExpectFill(3, 0, 19 - 0.0167, PaletteColour(kRed));
    ExpectFill(4, 9 - 0.0167, 0, PaletteColour(kRed));
    ExpectFill(5, -9 + 0.0167, 0, PaletteColour(kRed));
    EXPECT_EQ(plotState.fillOtherColour, kTrue);
    EXPECT_EQ(plotState.fillSeaOnly, kFalse);
}

TEST_F(ZoomSeedsTest, EachRunOfASideGetsItsOwnSeedAtItsMiddle) {
    AddFill(1, 0, 0, false, kRed);
    AddFill(1, 0, 0, false, kBlue);
    Paint(-19, 4, -19, 8, kRed);
    Paint(-19, -3, -19, 3, 0);  // outline between them
    Paint(-19, -6, -19, -4, kBlue);
    Search();
    ASSERT_EQ(CurrentMap().fillCount, 4);
    ExpectFill(3, 6, -19 + 0.0167, PaletteColour(kRed));
    ExpectFill(4, -5, -19 + 0.0167, PaletteColour(kBlue));
}

TEST_F(ZoomSeedsTest, RunThatReachesTheEndOfASideCounts) {
    AddFill(1, 0, 0, false, kRed);
    Paint(-19, -10, -19, -7, kRed);
    Search();
    ASSERT_EQ(CurrentMap().fillCount, 3);
    ExpectFill(2, -8.5, -19 + 0.0167, PaletteColour(kRed));
    ExpectFill(3, -9 + 0.0167, -19, PaletteColour(kRed));  // the corner, from the bottom
}

TEST_F(ZoomSeedsTest, ColourThatNoFillHasIsPassedOver) {
    Paint(-30, -20, 30, 20, kRed);
    AddFill(1, 0, 0, true, 0);
    AddFill(1, 0, 0, false, kBlue);
    Search();
    EXPECT_EQ(CurrentMap().fillCount, 2);
    EXPECT_EQ(plotState.fillOtherColour, kFalse);
}

TEST_F(ZoomSeedsTest, ColourOfLandOrOutlineIsPassedOverThoughAFillHasIt) {
    AddFill(1, 0, 0, false, kLand);
    AddFill(1, 0, 0, false, 0);
    Paint(-30, -20, 0, 20, 0);
    Search();
    EXPECT_EQ(CurrentMap().fillCount, 2);
    EXPECT_EQ(plotState.fillOtherColour, kFalse);
}

TEST_F(ZoomSeedsTest, FillColoursAreListedWhateverTheirPaletteMark) {
    AddFill(1, 0, 0, false, PaletteColour(kRed));
    Paint(-30, -20, 30, 20, kRed);
    Search();
    EXPECT_EQ(CurrentMap().fillCount, 5);
}

TEST_F(ZoomSeedsTest, SeaColourThatAFillHasAsAColourOfItsOwnCountsAsSeaAlone) {
    AddFill(1, 0, 0, false, kSea);
    AddFill(1, 0, 0, false, PaletteColour(kSea));
    Paint(-30, -20, 30, 20, kSea);
    Search();
    EXPECT_EQ(plotState.fillSeaOnly, kTrue);
    EXPECT_EQ(plotState.fillOtherColour, kFalse);
    EXPECT_EQ(CurrentMap().fillCount, 2);
}

// Mercator's latitude is the Gudermannian of its y: lat = atan(sinh(y)), y = asinh(tan(lat))
// (Snyder, Map Projections, equations 7-4 and 7-2). The map is 360 by 180 pixels from (25, 39).
// Tolerance: the rounding of a float of this size.
TEST_F(ZoomSeedsTest, OnMercatorEachSeedLiesWhereTheRunsMiddleIs) {
    constexpr double degree = 3.14159265358979323846 / 180;
    AddFill(1, 0, 0, false, kRed);
    SetView(-65, -180, 75, 180, projection::kMercator);
    surface.Clear(kRed);
    SeedsFromZoom(1, surface, 145, 60, 265, 180);
    const double north = std::asinh(std::tan(75 * degree));
    const double south = std::asinh(std::tan(-65 * degree));
    const auto latOf = [&](double y) {
        return std::atan(std::sinh(north - (y - 39) / 180 * (north - south))) / degree;
    };
    ASSERT_EQ(CurrentMap().fillCount, 5);
    ExpectFill(2, latOf(120), 146 - 205 + 0.0167, PaletteColour(kRed));
    ExpectFill(3, latOf(120), 264 - 205 - 0.0167, PaletteColour(kRed));
    ExpectFill(4, latOf(61) - 0.0167, 0, PaletteColour(kRed));
    ExpectFill(5, latOf(179) + 0.0167, 0, PaletteColour(kRed));
}

// Orthographic projection from above the equator: x = R cos(lat) sin(long), y = R sin(lat) (Snyder,
// Map Projections, equations 20-3 and 20-4). Tolerance: an arc-minute, to which a globe rounds.
TEST_F(ZoomSeedsTest, OnAGlobeEachSeedLiesWhereTheRunsMiddleIs) {
    constexpr double degree = 3.14159265358979323846 / 180;
    AddFill(1, 0, 0, false, kRed);
    SetView(0, -90, 0, 90, projection::kGlobeSphere);
    surface.Clear(kRed);
    const MapRect& rect = mapView.rect;
    const auto x0 = static_cast<std::int16_t>(rect.left + rect.width / 2);
    const auto y0 = static_cast<std::int16_t>(rect.top + rect.height / 2);
    SeedsFromZoom(1, surface, static_cast<std::int16_t>(x0 - 46),
                  static_cast<std::int16_t>(y0 - 31), static_cast<std::int16_t>(x0 + 46),
                  static_cast<std::int16_t>(y0 + 31));
    const double across = std::asin(45 / (rect.width / 2.0)) / degree;
    const double up = std::asin(30 / (rect.height / 2.0)) / degree;
    struct Row {
        double lat, longitude;
    };
    const Row rows[] = {
        {0, -across + 0.0167}, {0, across - 0.0167}, {up - 0.0167, 0}, {-up + 0.0167, 0}};
    ASSERT_EQ(CurrentMap().fillCount, 5);
    for (std::size_t i = 0; i < 4; ++i) {
        EXPECT_NEAR(mapState.fills[i + 2].lat, rows[i].lat, 1.0 / 60) << i;
        EXPECT_NEAR(mapState.fills[i + 2].longitude, rows[i].longitude, 1.0 / 60) << i;
        EXPECT_EQ(mapState.fills[i + 2].colour, PaletteColour(kRed));
    }
}

TEST_F(ZoomSeedsTest, OnlyTheFirstSixteenColoursOfTheFillsAreKnown) {
    for (int i = 0; i < 3; ++i) {  // each listed once, however often it stands in the list
        for (Colour colour = 1; colour <= 16; ++colour) AddFill(1, 0, 0, false, colour);
    }
    AddFill(1, 0, 0, false, 17);
    Paint(-30, -20, 30, 20, 17);
    Search();
    EXPECT_EQ(CurrentMap().fillCount, 49);
    Paint(-30, -20, 30, 20, 16);
    Search();
    EXPECT_EQ(CurrentMap().fillCount, 53);
}

TEST_F(ZoomSeedsTest, SeedMovedOverTheDateLineIsWrapped) {
    AddFill(1, 0, 0, false, kRed);
    SetView(-10, 160, 10, -160, projection::kCartesian);  // 9 pixels a degree
    surface.Clear(kRed);
    // The left side is walked just west of the date line, the right one just east of it.
    SeedsFromZoom(1, surface, kX - 2, kY - 10, kX + 2, kY + 10);
    ASSERT_EQ(CurrentMap().fillCount, 5);
    ExpectFill(2, 0, 180 - 1.0 / 9 + 0.0167, PaletteColour(kRed));
    ExpectFill(3, 0, -180 + 1.0 / 9 - 0.0167, PaletteColour(kRed));
    SeedsFromZoom(1, surface, kX - 1, kY - 10, kX + 1, kY + 10);
    ASSERT_EQ(CurrentMap().fillCount, 9);
    ExpectFill(6, 0, -180 + 0.0167, PaletteColour(kRed));
    ExpectFill(7, 0, 180 - 0.0167, PaletteColour(kRed));
}

TEST_F(ZoomSeedsTest, RectangleTurnedRoundIsReadAsItsProperOne) {
    AddFill(1, 0, 0, false, kRed);
    Paint(-30, -20, 30, 20, kRed);
    SeedsFromZoom(1, surface, kX + 20, kY + 10, kX - 20, kY - 10);
    ASSERT_EQ(CurrentMap().fillCount, 5);
    ExpectFill(2, 0, -19 + 0.0167, PaletteColour(kRed));
}

TEST_F(ZoomSeedsTest, WhatLiesOffThePictureIsNoColour) {
    AddFill(1, 0, 0, false, 0xFFFFFF);
    SeedsFromZoom(1, surface, -30000, -30000, -20, -20);
    EXPECT_EQ(CurrentMap().fillCount, 1);
}

TEST_F(ZoomSeedsTest, FullFillListTakesNoMore) {
    for (int i = 0; i < 32767; ++i) AddFill(1, 0, 0, false, kRed);
    Paint(-30, -20, 30, 20, kRed);
    Search();
    EXPECT_EQ(CurrentMap().fillCount, 32767);
    EXPECT_EQ(plotState.fillOtherColour, kTrue);
}

TEST_F(ZoomSeedsTest, FillCountBeyondTheListEndsTheSearchForColours) {
    AddFill(1, 0, 0, false, kRed);
    CurrentMap().fillCount = 30000;
    Paint(-30, -20, 30, 20, kSea);
    Search();
    EXPECT_EQ(plotState.fillSeaOnly, kTrue);
}

// --- What the picture shows of another view ------------------------------------------------------

// The view of these tests is 20 degrees by 20, 18 pixels a degree across and 9 a degree down, from
// pixel (25, 39) to (385, 219).
class OverlapTest : public ZoomSeedsTest {
  protected:
    void SetUp() override {
        ZoomSeedsTest::SetUp();
        SetView(10, -40, 30, -20, projection::kCartesian);
        surface.Clear(kLand);
    }

    void PaintPixels(int left, int top, int right, int bottom, Colour colour) {
        surface.SetPen({1, LineDash::Solid, colour});
        for (int y = top; y < bottom; ++y) {
            surface.MoveTo(left, y);
            surface.LineTo(right, y);
        }
    }

    void ExpectFlags(bool sea, bool other, bool land) {
        EXPECT_EQ(plotState.fillSeaOnly != kFalse, sea);
        EXPECT_EQ(plotState.fillOtherColour != kFalse, other);
        EXPECT_EQ(plotState.fillLand != kFalse, land);
    }
};

TEST_F(OverlapTest, OnlyThePartOfTheNewViewIsSearched) {
    struct Row {
        const char* what;
        ViewEdges edges;
        std::array<int, 4> part;  // left, top, right, bottom, pixels
    };
    const Row rows[] = {{"east", {10, -35, 30, -15}, {115, 39, 386, 220}},
                        {"west", {10, -50, 30, -30}, {25, 39, 206, 220}},
                        {"north", {20, -40, 40, -20}, {25, 39, 386, 130}},
                        {"south-east", {0, -22, 20, -2}, {349, 129, 386, 220}},
                        {"a little", {10, -20.3F, 30, -0.3F}, {379, 39, 386, 220}}};
    for (const Row& row : rows) {
        SCOPED_TRACE(row.what);
        surface.Clear(kLand);
        PaintPixels(row.part[0], row.part[1], row.part[2], row.part[3], kSea);
        SeaFromOverlap(surface, row.edges);
        ExpectFlags(true, false, false);
        EXPECT_FALSE(plotState.zoomTied) << "what was found is of the next view";
        surface.Clear(kSea);
        PaintPixels(row.part[0], row.part[1], row.part[2], row.part[3], kLand);
        SeaFromOverlap(surface, row.edges);
        ExpectFlags(false, false, true);
    }
}

TEST_F(OverlapTest, BareLandBesideTheSeaTakesItsWordBack) {
    PaintPixels(0, 0, 300, kSurfaceHeight, kSea);
    SeaFromOverlap(surface, {10, -35, 30, -15});
    ExpectFlags(false, false, true);
}

TEST_F(OverlapTest, ColoursOfFillsAreNotedAndNotCarriedOver) {
    AddFill(1, 20, -30, false, kRed);
    PaintPixels(0, 0, kSurfaceWidth, kSurfaceHeight, kSea);
    PaintPixels(200, 39, 220, 60, kRed);
    // A fill that an earlier view of the stack still has.
    AddFill(1, 5, 6, false, kRed);
    CurrentMap().fillCount = 1;
    SeaFromOverlap(surface, {10, -35, 30, -15});
    ExpectFlags(true, true, false);
    EXPECT_EQ(CurrentMap().fillCount, 1);
    EXPECT_EQ(mapState.fills.at(2).lat, 5);
    EXPECT_EQ(mapState.fills.at(2).longitude, 6);
}

TEST_F(OverlapTest, AViewWithTheSeedOfASeaFillNeedsNoFurtherOnes) {
    const struct {
        const char* what;
        float lat;
        float longitude;
        bool isSea;
        bool enough;
    } rows[] = {
        {"inside", 20, -20, true, true},        {"another fill", 20, -20, false, false},
        {"north of it", 31, -20, true, false},  {"west of it", 20, -36, true, false},
        {"on its frame", 20, -35, true, false}, {"beside its frame", 10.05F, -20, true, false}};
    for (const auto& row : rows) {
        SCOPED_TRACE(row.what);
        CurrentMap().fillCount = 0;
        AddFill(1, row.lat, row.longitude, row.isSea, kRed);
        PaintPixels(0, 0, kSurfaceWidth, kSurfaceHeight, kSea);
        SeaFromOverlap(surface, {10, -35, 30, -15});
        EXPECT_EQ(plotState.seaFillsAdded, row.enough);
    }
}

TEST_F(OverlapTest, ALargerViewThatReachesBeyondThePictureOnAllSidesMayHaveLandOnItsFrame) {
    surface.Clear(kSea);
    SeaFromOverlap(surface, {0, -50, 40, -10});
    ExpectFlags(true, false, true);
    SeaFromOverlap(surface, {11, -50, 51, -10});
    ExpectFlags(true, false, false);
}

TEST_F(OverlapTest, ViewsThatTurnAroundTheWorldShareTheWiderPiece) {
    SetView(-50, -150, 50, 150, projection::kCartesian);  // 1.2 pixels a degree
    surface.Clear(kLand);
    // Moved east by 100: of the old view -50 to 150 is at its western end, -150 to -110 at the
    // eastern one, beyond the gap.
    PaintPixels(25 + 120, 39, 386, 220, kSea);
    SeaFromOverlap(surface, {-50, -50, 50, -110});
    ExpectFlags(true, false, false);
    SetView(10, 170, 30, -170, projection::kCartesian);
    surface.Clear(kLand);
    PaintPixels(205, 39, 386, 220, kSea);
    SeaFromOverlap(surface, {10, 180, 30, -160});
    ExpectFlags(true, false, false);
}

// Half way up a Mercator map of 0 to 60 north lies atan(sinh(asinh(tan(60)) / 2)) = 35.26 degrees
// (Snyder, Map Projections, equations 7-2 and 7-4).
TEST_F(OverlapTest, OnMercatorRowsFollowItsLatitudes) {
    SetView(0, -40, 60, -20, projection::kMercator);
    surface.Clear(kLand);
    PaintPixels(25, 39, 386, 130, kSea);
    SeaFromOverlap(surface, {35.3F, -40, 70, -20});
    ExpectFlags(true, false, false);
    SeaFromOverlap(surface, {33, -40, 70, -20});
    ExpectFlags(false, false, true);
}

TEST_F(OverlapTest, WithoutAnOverlapTheFlagsStayThoseOfTheViewTheyTellOf) {
    const auto search = [&](const ViewEdges& edges) {
        plotState.fillSeaOnly = plotState.fillLand = kTrue;
        plotState.zoomTied = true;
        SeaFromOverlap(surface, edges);
        ExpectFlags(true, false, true);
        EXPECT_TRUE(plotState.zoomTied);
    };
    surface.Clear(kSea);
    search({10, 0, 30, 20});
    search({31, -40, 51, -20});
    search({10, -20.2F, 30, -0.2F});  // less than 4 pixels
    constexpr float kNone = std::numeric_limits<float>::quiet_NaN();
    search({kNone, kNone, kNone, kNone});
    plotState.imageLost = true;
    search({10, -35, 30, -15});
    plotState.imageLost = false;
    SetView(20, -120, 20, 60, projection::kGlobeSphere);
    search({20, -110, 20, 70});
}

}  // namespace
}  // namespace orvantis

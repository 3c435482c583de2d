// What the plot draws of the database.
#include <algorithm>
#include <filesystem>

#include "map/fills.h"
#include "map/map_fixture.h"
#include "map/zoom_seeds.h"
#include "session/files.h"

namespace orvantis {
namespace {

using Log = std::vector<std::string>;

class VectorsTest : public MapTest {
  protected:
    void SetUp() override {
        MapTest::SetUp();
        options.holdRefresh = kTrue;
    }

    // A full redraw; returns what was drawn of the vectors: what stands between the clip to the map
    // and the label font.
    Log Vectors() {
        surface.log.clear();
        PlotMap4(kFalse, surface, kTrue);
        Log vectors;
        bool within = false;
        for (const std::string& call : surface.log) {
            if (call.starts_with("SelectFont")) within = false;
            if (within && !call.starts_with("SetPen")) vectors.push_back(call);
            if (call.starts_with("ClipTo")) within = true;
        }
        return vectors;
    }

    void Show(std::initializer_list<std::size_t> classes) {
        CurrentMap().hidden.fill(kTrue);
        for (const std::size_t detail : classes) CurrentMap().hidden[detail] = kFalse;
    }

    void Edges(float south, float west, float north, float east) {
        CurrentMap().south = south;
        CurrentMap().west = west;
        CurrentMap().north = north;
        CurrentMap().east = east;
    }
};

LinePoint At(int level, int latDegrees, int longDegrees) {
    return {static_cast<std::int16_t>(level), static_cast<std::int16_t>(latDegrees * 60),
            static_cast<std::int16_t>(longDegrees * 60)};
}

// A database of one coast over the date line, one border and one island, drawn on the world at one
// pixel a degree: every call that reaches the surface.
TEST_F(VectorsTest, GoldenDrawingOfASmallDatabase) {
    AddLine(1001, {At(5, 0, 170), At(5, 10, 175), At(1, 11, 176), At(5, 10, -170)});
    AddLine(2001, {At(5, 20, 0), At(5, 30, 10)});
    AddLine(5001, {At(5, -20, -30), At(5, -20, -20), At(5, -30, -20), At(5, -20, -30)});
    MakeDatabase();
    PlotMap4(kFalse, surface, kTrue);
    EXPECT_EQ(
        surface.log,
        (Log{"ClearClip", "Clear 51200", "SetPen 1 0 0", "SelectFont QX Symbol 9 0 0",
             "Rectangle 25 39 386 220 none", "FloodFill 1 1 12632256 0", "SetPen 1 0 8421504",
             "MoveTo 24 220", "LineTo 24 38", "LineTo 386 38", "SetPen 1 0 16777215",
             "MoveTo 386 38", "LineTo 386 220", "LineTo 24 220", "SetPen 1 0 0",
             "ClipToRectangle 25 39 385 219", "SetPen 1 0 0",
             // The coast, out at the right and in at the left.
             "MoveTo 375 129", "LineTo 380 119", "SetPixel 380 119", "LineTo 395 119",
             "MoveTo 20 119", "LineTo 35 119", "SetPixel 35 119",
             // The island, before the border.
             "MoveTo 175 149", "LineTo 185 149", "SetPixel 185 149", "LineTo 185 159",
             "SetPixel 185 159", "LineTo 175 149", "SetPixel 175 149", "MoveTo 205 109",
             "LineTo 215 99", "SetPixel 215 99", "SetPen 1 0 0", "SelectFont QX Symbol 8.25 0 0",
             "SelectFont QX Symbol 9 0 0", "Refresh", "CopyImage", "Refresh", "ClearClip",
             "ClearClip", "SelectFont QX Symbol 9 0 0"}));
}

TEST_F(VectorsTest, ClassesAreDrawnInTheirOrderAndHiddenOnesNot) {
    for (const std::int16_t code : {1001, 2001, 4001, 5001, 6001, 7001}) {
        const int longitude = code / 1000;
        AddLine(code, {At(5, 0, longitude)});
    }
    MakeDatabase();
    Show({1, 2, 3, 4, 5, 6, 7, 8});
    EXPECT_EQ(Vectors(), (Log{"SetPixel 206 129", "SetPixel 210 129", "SetPixel 211 129",
                              "SetPixel 212 129", "SetPixel 207 129", "SetPixel 209 129"}));
    Show({4, 6});
    EXPECT_EQ(Vectors(), (Log{"SetPixel 211 129", "SetPixel 209 129"}));
}

TEST_F(VectorsTest, LineOfOnePointAtThePrecisionGivesOnePixel) {
    AddLine(1001, {At(5, 0, 0), At(4, 10, 10)});
    MakeDatabase();
    EXPECT_EQ(Vectors(), Log{"SetPixel 205 129"});
    CurrentMap().precision = 4;
    EXPECT_EQ(Vectors(), (Log{"MoveTo 205 129", "LineTo 215 119", "SetPixel 215 119"}));
}

TEST_F(VectorsTest, LineWithNoPointAtThePrecisionGivesNothing) {
    AddLine(1001, {At(1, 0, 0), At(4, 10, 10)});
    MakeDatabase();
    EXPECT_EQ(Vectors(), Log{});
}

TEST_F(VectorsTest, PointBelowThePrecisionInALevelFileIsPassedOver) {
    AddLine(1001, {At(5, 0, 0), At(5, 5, 5), At(5, 10, 10)});
    MakeDatabase();
    Bytes level5 = FileBytes(LevelPath(5));
    PutI16(&level5[32 + 6], 4);
    folder.Write("level5.pnt", level5);
    EXPECT_EQ(Vectors(), (Log{"MoveTo 205 129", "LineTo 215 119", "SetPixel 215 119"}));
}

TEST_F(VectorsTest, PointsInOnePixelAreDrawnOnce) {
    AddLine(1001, {{5, 0, 0}, {5, 5, 5}, {5, 10, 10}, {5, 300, 300}, {5, 305, 305}});
    MakeDatabase();
    EXPECT_EQ(Vectors(),
              (Log{"MoveTo 205 129", "LineTo 210 124", "SetPixel 210 124", "SetPixel 210 124"}));
}

// A line whose extents lie outside every narrower view, though its points don't.
TEST_F(VectorsTest, WholeWorldNeverAsksWhereALineLies) {
    Bytes strange;
    AppendLine(strange, 1001, "", {At(5, 0, 0), At(5, 10, 10)});
    for (const std::size_t offset : {24U, 26U, 28U, 30U}) PutI16(&strange[offset], 32767);
    level1 = strange;
    MakeDatabase();
    EXPECT_EQ(Vectors().size(), 3U);
    Edges(-45, -90, 45, 90);
    EXPECT_EQ(Vectors(), Log{});
}

TEST_F(VectorsTest, LineOutOfViewIsSkipped) {
    AddLine(1001, {At(5, 0, 0), At(5, 10, 10)});
    AddLine(1002, {At(5, 0, 100), At(5, 10, 110)});
    MakeDatabase();
    Edges(-45, -90, 45, 90);  // 2 pixels a degree
    EXPECT_EQ(Vectors(), (Log{"MoveTo 205 129", "LineTo 225 109", "SetPixel 225 109"}));
}

TEST_F(VectorsTest, LineOverTheDateLineInANarrowViewIsDrawnThroughWithoutAWrap) {
    AddLine(2001, {At(5, 0, 175), At(5, 0, -175)});
    MakeDatabase();
    Edges(-10, 170, 10, -170);
    EXPECT_EQ(Vectors(), (Log{"MoveTo 115 129", "LineTo 295 129", "SetPixel 295 129"}));
}

TEST_F(VectorsTest, CoastsIslandsAndLakesRecordWhereTheyCrossTheEdge) {
    for (const std::int16_t code : {1001, 2001, 4001, 5001, 6001, 7001}) {
        AddLine(code, {At(5, code / 1000, 40), At(5, code / 1000, 50)});
    }
    MakeDatabase();
    Show({1, 2, 4, 5, 6, 7});
    Edges(-45, -45, 45, 45);  // 4 pixels a degree across, 2 down
    CurrentMap().west = -45;
    Vectors();
    ASSERT_EQ(plotState.crossings.size(), 4U);
    const std::int16_t rows[] = {129 - 2 * 1, 129 - 2 * 5, 129 - 2 * 6};
    for (std::size_t i = 1; i <= 3; ++i) {
        EXPECT_EQ(plotState.crossings[i].side, side::kRight);
        EXPECT_EQ(plotState.crossings[i].x, 25 + 360 - 1);
        EXPECT_EQ(plotState.crossings[i].y, rows[i - 1]);
        EXPECT_EQ(plotState.crossings[i].startInside, kTrue);
    }
}

TEST_F(VectorsTest, LineThatPassesThroughTheMapWithoutAPointInItCrossesTwice) {
    AddLine(1001, {At(5, 0, -60), At(5, 30, 60)});
    AddLine(1002, {At(5, 44, -60), At(5, 60, -40)});  // past the corner
    MakeDatabase();
    Edges(-45, -45, 45, 45);
    PlotMap4(kFalse, surface, kTrue);
    ASSERT_EQ(plotState.crossings.size(), 3U);
    EXPECT_EQ(plotState.crossings[1].side, side::kLeft);
    EXPECT_EQ(plotState.crossings[1].startInside, kFalse);
    EXPECT_NEAR(plotState.crossings[1].y, 129 - 7.5, 1);
    EXPECT_EQ(plotState.crossings[2].side, side::kRight);
    EXPECT_EQ(plotState.crossings[2].startInside, kTrue);
    EXPECT_NEAR(plotState.crossings[2].y, 129 - 52.5, 1);
    EXPECT_EQ(surface.GetPixel(205, 200), 0xFF8040) << "water lies on the right of a line";
    EXPECT_EQ(surface.GetPixel(205, 50), 0x00C800);
}

TEST_F(VectorsTest, LineThatPassesThroughTheMapKeepsTheZoomsSeaFillsAway) {
    AddLine(1001, {At(5, 20, -60), At(5, 20, 0)});
    MakeDatabase();
    Edges(10, -40, 30, -20);
    plotState.fillSeaOnly = kTrue;
    PlotMap4(kFalse, surface, kTrue);
    EXPECT_EQ(CurrentMap().fillCount, 0);
    EXPECT_EQ(surface.GetPixel(205, 200), 0xFF8040);
    EXPECT_EQ(surface.GetPixel(205, 60), 0x00C800);
}

// A coast over the few degrees that a wide view leaves out: it goes out at one side and comes in at
// the other, instead of right through the map.
TEST_F(VectorsTest, LineAroundTheBackOfAWideViewDoesNotLeapThroughTheMap) {
    AddLine(1001, {At(5, 0, 178), At(5, 0, -177)});
    MakeDatabase();
    Edges(-90, -179, 90, 179);
    CurrentMap().west = -179;
    EXPECT_EQ(Vectors(), (Log{"MoveTo 384 129", "LineTo 389 129", "MoveTo 22 129", "LineTo 27 129",
                              "SetPixel 27 129", "FloodFill 26 130 16744512 0"}));
    ASSERT_EQ(plotState.crossings.size(), 3U);
    EXPECT_EQ(plotState.crossings[1].side, side::kRight);
    EXPECT_EQ(plotState.crossings[2].side, side::kLeft);
}

// Also in a view of less than two thirds of the world, through which a long line of a user's own
// may reach. What lies more than 60 degrees west of it is put to the right.
TEST_F(VectorsTest, LineAroundTheBackOfANarrowerViewDoesNotLeapThroughTheMap) {
    AddLine(1001, {At(5, 0, -10), At(5, 0, -70)});
    MakeDatabase();
    Edges(-90, 0, 90, 90);
    CurrentMap().east = 90;
    EXPECT_TRUE(Vectors().empty()) << "out of view";
    AddLine(1001, {At(5, 0, 10), At(5, 0, -50), At(5, 0, -70)});
    MakeDatabase();
    // 4 pixels a degree, so 1440 a turn: 65 west of the map, once around from there 1185.
    EXPECT_EQ(Vectors(), (Log{"MoveTo 65 129", "LineTo -175 129", "SetPixel -175 129",
                              "LineTo -255 129", "MoveTo 1265 129", "LineTo 1185 129",
                              "SetPixel 1185 129", "FloodFill 26 40 16744512 0"}))
        << "water lies on the right of a line that goes west";
}

// Whether the pen is inside stays as it was where the line went out: the map's middle, where this
// one comes in, counts neither as plotted nor as left again.
TEST_F(VectorsTest, PointAfterAWrapNeitherCountsAsPlottedNorAsInside) {
    AddLine(1001, {At(5, 50, 170), At(5, 10, -170), At(5, 50, -160)});
    MakeDatabase();
    Edges(-45, -180, 45, 180);
    EXPECT_EQ(Vectors().size(), 6U);
    EXPECT_FALSE(plotState.plotted);
    EXPECT_EQ(plotState.crossings.size(), 1U);
    // The other way round it is still inside when it comes in, and so doesn't enter.
    level1.clear();
    AddLine(1001, {At(5, 10, 170), At(5, 50, -170), At(5, 10, -160)});
    MakeDatabase();
    Vectors();
    EXPECT_TRUE(plotState.plotted) << "by its first point";
    EXPECT_EQ(plotState.crossings.size(), 1U);
}

TEST_F(VectorsTest, EasternPartOfAViewOfMoreThan300DegreesIsNotPutToTheLeft) {
    AddLine(1001, {At(5, 0, 150), At(5, 0, 155)});
    MakeDatabase();
    Edges(-90, -160, 90, 160);
    const Log vectors = Vectors();
    ASSERT_EQ(vectors.size(), 3U);
    EXPECT_EQ(vectors[0], "MoveTo 374 129");
}

TEST_F(VectorsTest, TipOfACoastAtTheEdgeOfASeaThatTheZoomSawIsNoCoastThroughTheEdge) {
    AddLine(1001, {At(5, 31, -30), At(5, 29, -30), At(5, 31, -30)});
    MakeDatabase();
    Edges(10, -40, 30, -20);
    plotState.fillSeaOnly = kTrue;
    Vectors();
    EXPECT_TRUE(plotState.islandsOnly);
    EXPECT_EQ(surface.GetPixel(205, 200), 0xFF8040);
    plotState.fillLand = kTrue;
    Vectors();
    EXPECT_FALSE(plotState.islandsOnly) << "the zoom met land as well";
    EXPECT_EQ(surface.GetPixel(205, 200), 0x00C800);
}

TEST_F(VectorsTest, WholeWorldNeverFillsFromCrossings) {
    AddLine(1001, {At(5, 80, 0), At(5, 90, 0)});
    MakeDatabase();
    Vectors();
    EXPECT_EQ(plotState.crossings.size(), 2U);
    EXPECT_EQ(surface.Calls("FloodFill").size(), 1U) << "the surround";
}

TEST_F(VectorsTest, GlobeNeverFillsFromCrossings) {
    AddLine(1001, {At(5, 0, -89), At(5, 0, -80)});
    MakeDatabase();
    Edges(0, -90, 0, 90);
    CurrentMap().projection = projection::kGlobeSphere;
    Vectors();
    EXPECT_EQ(surface.Calls("FloodFill").size(), 1U) << "the surround";
}

// The view's northern edge lies a third of a minute above the line's southern end.
TEST_F(VectorsTest, LineThatReachesIntoTheViewByLessThanAMinuteIsDrawn) {
    AddLine(1001, {At(5, 45, 0), At(5, 50, 10)});
    MakeDatabase();
    Edges(-45, -90, 45.005F, 90);
    EXPECT_EQ(Vectors().size(), 3U);
    Edges(-45, 10, 60, 9.99F);  // all but half a minute of the world
    EXPECT_FALSE(Vectors().empty());
    Edges(-45, 10, 60, 9.999F);  // whose edges are the same minute
    EXPECT_EQ(Vectors().front(), "MoveTo 375 65");
    ASSERT_EQ(mapView.extent.westMin, mapView.extent.eastMin);
    ASSERT_LT(mapView.extent.spanLong, 360);
}

// South-west and north-east of this line lie behind the globe, its north-west end before it.
TEST_F(VectorsTest, LineOfAGlobeIsDrawnIfAnyCornerOfItsExtentsIsInFront) {
    AddLine(1001, {At(5, 40, 85), At(5, 30, 95)});
    AddLine(1002, {At(5, 40, 110), At(5, 30, 120)});
    MakeDatabase();
    Edges(-10, -90, -10, 90);
    CurrentMap().projection = projection::kGlobeSphere;
    EXPECT_EQ(Vectors().size(), 0U);
    Edges(10, -90, 10, 90);
    CurrentMap().projection = projection::kGlobeSphere;
    EXPECT_EQ(Vectors().size(), 3U);
}

TEST_F(VectorsTest, PlottedTellsWhetherAPointFellWithinTheMap) {
    AddLine(1001, {At(5, 0, -80), At(5, 0, 80)});
    MakeDatabase();
    Edges(-45, -45, 45, 45);
    Vectors();
    EXPECT_FALSE(plotState.plotted) << "the line crosses the map, no point lies in it";
    Edges(-90, -180, 90, 180);
    Vectors();
    EXPECT_TRUE(plotState.plotted);
}

TEST_F(VectorsTest, IslandsThatStandInTheSeaFillTheCorners) {
    AddLine(5001, {At(5, -5, -5), At(5, -5, 5), At(5, 5, 5), At(5, -5, -5)});
    MakeDatabase();
    Edges(-45, -45, 45, 45);
    Vectors();
    EXPECT_TRUE(plotState.islandsOnly);
    EXPECT_TRUE(plotState.plotted);
    const Log floods = surface.Calls("FloodFill");
    ASSERT_EQ(floods.size(), 5U);
    EXPECT_EQ(floods[1], "FloodFill 26 40 16744512 0");
    EXPECT_EQ(floods[2], "FloodFill 384 40 16744512 0");
    EXPECT_EQ(floods[3], "FloodFill 26 218 16744512 0");
    EXPECT_EQ(floods[4], "FloodFill 384 218 16744512 0");
    EXPECT_EQ(surface.GetPixel(30, 45), 0xFF8040) << "sea around the island";
    EXPECT_EQ(surface.GetPixel(209, 130), 0x00C800) << "land within it";
}

TEST_F(VectorsTest, IslandsOfTheWholeWorldFillNoCorners) {
    AddLine(5001, {At(5, -5, -5), At(5, -5, 5), At(5, 5, 5), At(5, -5, -5)});
    MakeDatabase();
    Vectors();
    EXPECT_FALSE(plotState.islandsOnly);
    EXPECT_TRUE(plotState.plotted);
    EXPECT_EQ(surface.Calls("FloodFill").size(), 1U) << "the surround";
}

TEST_F(VectorsTest, LakesWithinIslandsKeepTheCornersFromBeingFilled) {
    AddLine(5001, {At(5, -5, -5), At(5, -5, 5), At(5, 5, 5), At(5, -5, -5)});
    AddLine(6001, {At(5, 0, 0), At(5, 1, 1)});
    MakeDatabase();
    Show({1, 5, 6});
    Edges(-45, -45, 45, 45);
    Vectors();
    EXPECT_TRUE(plotState.islandsOnly);
    EXPECT_EQ(surface.Calls("FloodFill").size(), 1U);
}

TEST_F(VectorsTest, ViewWithTheTestPointIsNoMapOfIslands) {
    AddLine(5001, {At(5, 30, 30), At(5, 30, 40), At(5, 35, 40), At(5, 30, 30)});
    MakeDatabase();
    Edges(0, 0, 60, 60);  // 40 north, 50 east lies in it
    Vectors();
    EXPECT_FALSE(plotState.islandsOnly);
    Edges(0, 0, 39, 60);
    Vectors();
    EXPECT_TRUE(plotState.islandsOnly);
}

TEST_F(VectorsTest, CoastThroughTheEdgeIsNoMapOfIslands) {
    AddLine(1001, {At(5, -20, -20), At(5, -20, -60)});
    AddLine(5001, {At(5, -5, -5), At(5, -5, 5), At(5, 5, 5), At(5, -5, -5)});
    MakeDatabase();
    Edges(-45, -45, 45, 45);
    Vectors();
    EXPECT_FALSE(plotState.islandsOnly);
    EXPECT_EQ(surface.Calls("FloodFill"),
              (Log{"FloodFill 1 1 12632256 0", "FloodFill 26 40 16744512 0"}))
        << "the surround, and the edge as the coast's crossing has it";
}

TEST_F(VectorsTest, ViewWhollyWithinTheSeaGetsItsFiveSeaFillsOnce) {
    MakeDatabase();
    Edges(10, -40, 30, -20);
    plotState.fillSeaOnly = kTrue;
    PlotMap4(kFalse, surface, kTrue);
    ASSERT_EQ(CurrentMap().fillCount, 5);
    const float expected[5][2] = {{20, -30}, {10, -40}, {10, -20}, {30, -40}, {30, -20}};
    for (std::size_t i = 0; i < 5; ++i) {
        EXPECT_EQ(mapState.fills[i + 1].lat, expected[i][0]);
        EXPECT_EQ(mapState.fills[i + 1].longitude, expected[i][1]);
        EXPECT_EQ(mapState.fills[i + 1].colour, -1);
    }
    EXPECT_EQ(surface.GetPixel(200, 100), 0xFF8040);
    PlotMap4(kFalse, surface, kTrue);
    EXPECT_EQ(CurrentMap().fillCount, 5);
}

TEST_F(VectorsTest, SeaFlagStandsUntilTheNextZoomClearsIt) {
    MakeDatabase();
    Edges(10, -40, 30, -20);
    plotState.fillSeaOnly = kTrue;
    PlotMap4(kFalse, surface, kTrue);
    EXPECT_EQ(plotState.fillSeaOnly, kTrue);
    surface.Clear(LandColour());
    SeedsFromZoom(1, surface, 100, 100, 200, 150);
    EXPECT_EQ(plotState.fillSeaOnly, kFalse);
}

TEST_F(VectorsTest, SeaFillsThatWereRemovedAreNotAddedAgain) {
    MakeDatabase();
    Edges(10, -40, 30, -20);
    plotState.fillSeaOnly = kTrue;
    PlotMap4(kFalse, surface, kTrue);
    RemoveAllFills();
    PlotMap4(kFalse, surface, kTrue);
    EXPECT_EQ(CurrentMap().fillCount, 0);
}

TEST_F(VectorsTest, SeaOnTheFrameOfAZoomTellsNothingOfTheViewsAfterIt) {
    AddLine(1001, {At(5, 20, -38), At(5, 21, -39)});
    MakeDatabase();
    Edges(10, -40, 30, -20);
    plotState.fillSeaOnly = kTrue;
    PlotMap4(kFalse, surface, kTrue);
    EXPECT_EQ(CurrentMap().fillCount, 0) << "a coast is in view";
    Edges(10, 0, 30, 20);
    PlotMap4(kFalse, surface, kTrue);
    EXPECT_EQ(CurrentMap().fillCount, 0) << "it may as well be land";
}

TEST_F(VectorsTest, SeaOnTheFrameOfAZoomWhoseLevelFileIsMissingTellsNothingOfTheNextView) {
    AddLine(1001, {At(5, 0, 100), At(5, 1, 101)});
    MakeDatabase();
    const Bytes level5 = FileBytes(LevelPath(5));
    std::filesystem::remove(LevelPath(5));
    Edges(10, -40, 30, -20);
    plotState.fillSeaOnly = kTrue;
    PlotMap4(kFalse, surface, kTrue);
    EXPECT_EQ(CurrentMap().fillCount, 0) << "no line is missing, but the file";
    folder.Write("level5.pnt", level5);
    Edges(10, 0, 30, 20);
    PlotMap4(kFalse, surface, kTrue);
    EXPECT_EQ(CurrentMap().fillCount, 0) << "it may as well be land";
    Edges(10, -40, 30, -20);
    PlotMap4(kFalse, surface, kTrue);
    EXPECT_EQ(CurrentMap().fillCount, 5) << "the zoom's own view";
}

TEST_F(VectorsTest, SeaOnTheFrameOfAZoomWhosePlotWasGivenUpTellsNothingOfTheNextView) {
    MakeDatabase();
    Edges(10, -40, 30, 1e30F);
    plotState.fillSeaOnly = kTrue;
    TestShell().boxAnswers = {BoxAnswer::Cancel};
    PlotMap4(kFalse, surface, kTrue);
    ASSERT_TRUE(plotState.interrupted);
    Edges(10, 0, 30, 20);
    PlotMap4(kFalse, surface, kTrue);
    EXPECT_FALSE(plotState.interrupted);
    EXPECT_EQ(CurrentMap().fillCount, 0);
}

TEST_F(VectorsTest, ZoomThatMetAnotherColourAddsNoSeaFills) {
    MakeDatabase();
    Edges(10, -40, 30, -20);
    plotState.fillSeaOnly = kTrue;
    plotState.fillOtherColour = kTrue;
    PlotMap4(kFalse, surface, kTrue);
    EXPECT_EQ(CurrentMap().fillCount, 0);
}

TEST_F(VectorsTest, PrintingNeverFloods) {
    AddLine(5001, {At(5, -5, -5), At(5, -5, 5), At(5, 5, 5), At(5, -5, -5)});
    MakeDatabase();
    Edges(-45, -45, 45, 45);
    CurrentMap().gridOn = kTrue;
    CurrentMap().hidden[3] = CurrentMap().hidden[8] = kFalse;
    CurrentMap().cityFile = "world";
    AddFill(1, 20, 20, true, 0);
    plotState.fillSeaOnly = kTrue;
    static Log calls;
    calls.clear();
    plotCountryNames = [](bool) { calls.emplace_back("countries"); };
    plotCities = [] { calls.emplace_back("cities"); };
    static MapView page;
    plotChartLines = [](Flag, Flag, std::int16_t) {
        calls.emplace_back("lines");
        page = mapView;
    };
    PlotMap4(kTrue, surface, kTrue);
    mapView = page;
    EXPECT_EQ(calls, (Log{"countries", "cities", "lines"}));
    EXPECT_EQ(surface.Calls("PutImage"), Log{});
    // The grid: three meridians and five parallels stand in view, from edge to edge.
    const int bottom = mapView.rect.top + mapView.rect.height;
    const int right = mapView.rect.left + mapView.rect.width;
    for (const std::int16_t longitude : {-30, 0, 30}) {
        const std::string column = std::to_string(FlatX(static_cast<std::int16_t>(longitude * 60)));
        const Log lines = surface.Calls("LineTo");
        EXPECT_EQ(std::count(lines.begin(), lines.end(),
                             "LineTo " + column + " " + std::to_string(bottom)),
                  1);
    }
    for (const std::int16_t lat : {-30, -15, 0, 15, 30}) {
        const std::string row = std::to_string(FlatY(static_cast<std::int16_t>(lat * 60)));
        const Log lines = surface.Calls("LineTo");
        EXPECT_EQ(
            std::count(lines.begin(), lines.end(), "LineTo " + std::to_string(right) + " " + row),
            1);
    }
    EXPECT_EQ(surface.Calls("FloodFill"), Log{});
    EXPECT_EQ(surface.Calls("Clear"), Log{});
    EXPECT_EQ(surface.Calls("CopyImage"), Log{});
    EXPECT_FALSE(surface.Calls("LineTo").empty());
    EXPECT_EQ(CurrentMap().fillCount, 1);
    EXPECT_EQ(surface.Calls("SetPen")[1], "SetPen 2 0 0") << "lines of two units";
}

TEST_F(VectorsTest, LineCodesAreWrittenAtFirstPointsWhenAskedFor) {
    AddLine(1001, {At(5, 0, 0), At(5, 10, 10)});
    MakeDatabase();
    options.lineNumbers = kTrue;
    PlotMap4(kFalse, surface, kTrue);
    EXPECT_EQ(surface.Calls("TextOut"), Log{"TextOut 205 129 0 1001"});
}

TEST_F(VectorsTest, MissingLevelFileDrawsNothingAndIsToldByTheOpener) {
    AddLine(1001, {At(5, 0, 0), At(5, 10, 10)});
    MakeDatabase();
    std::filesystem::remove(LevelPath(5));
    PlotMap4(kFalse, surface, kTrue);
    EXPECT_EQ(TestShell().boxes,
              std::vector<std::string>{"Open Error: " + LevelPath(5) + " /  / File not found"});
    EXPECT_FALSE(plotState.interrupted);
    EXPECT_EQ(surface.Calls("SetPixel"), Log{});
}

TEST_F(VectorsTest, LevelFileCutShortIsToldByThePlot) {
    AddLine(1001, {At(5, 0, 0), At(5, 10, 10)});
    MakeDatabase();
    Bytes level5 = FileBytes(LevelPath(5));
    level5.pop_back();
    folder.Write("level5.pnt", level5);
    PlotMap4(kFalse, surface, kTrue);
    EXPECT_EQ(TestShell().boxes,
              std::vector<std::string>{"Orvantis: An error occurred whilst plotting: / "
                                       "Input past end of file / "});
    EXPECT_TRUE(plotState.interrupted);
}

TEST_F(VectorsTest, LineThatTheFilesEndCutsIsDrawnAsFarAsItGoes) {
    AddLine(1001, {At(5, 0, 0), At(5, 10, 10), At(5, 20, 20), At(5, 30, 30)});
    MakeDatabase();
    Bytes level5 = FileBytes(LevelPath(5));
    level5.resize(level5.size() - 7);
    folder.Write("level5.pnt", level5);
    PlotMap4(kFalse, surface, kTrue);
    EXPECT_EQ(surface.Calls("SetPixel"), (Log{"SetPixel 215 119"}));
    EXPECT_TRUE(plotState.interrupted);
    EXPECT_EQ(TestShell().boxes.size(), 1U);
}

TEST_F(VectorsTest, PositionsOutsideTheLevelFileAreToldByThePlot) {
    AddLine(1001, {At(5, 0, 0), At(5, 10, 10)});
    MakeDatabase();
    for (const std::int32_t position : {-2147483647, -1, 0, 46, 1000000, 2147483647}) {
        TestShell().boxes.clear();
        pointDatabase.LineIndex[1].pointPos[5] = position;
        PlotMap4(kFalse, surface, kTrue);
        EXPECT_EQ(TestShell().boxes.size(), 1U) << position;
    }
}

TEST_F(VectorsTest, IndexWhoseLinesShareBytesIsToldAndDoesNotCostMoreThanTheFile) {
    AddLine(1001, {At(5, 0, 0), At(5, 10, 10), At(5, 0, 20)});
    MakeDatabase();
    pointDatabase.LineIndex.resize(32768, pointDatabase.LineIndex[1]);
    pointDatabase.count = 32767;
    pointDatabase.ClassRange[1].last = 32767;
    PlotMap4(kFalse, surface, kTrue);
    EXPECT_EQ(surface.Calls("SetPixel").size(), 2U) << "the line is drawn once";
    EXPECT_TRUE(plotState.interrupted);
    EXPECT_EQ(TestShell().boxes.size(), 1U);
}

TEST_F(VectorsTest, FailedReadLeavesTheOtherLinesAndTheCornersAlone) {
    AddLine(5001, {At(5, -5, -5), At(5, -5, 5), At(5, 5, 5), At(5, -5, -5)});
    AddLine(6001, {At(5, 0, 0), At(5, 1, 1)});
    AddLine(6002, {At(5, 0, 2), At(5, 1, 2)});
    AddLine(7001, {At(5, 0, 3), At(5, 1, 3)});
    MakeDatabase();
    pointDatabase.LineIndex[2].pointPos[5] = 1000000;
    Show({5, 6, 7});
    Edges(-45, -45, 45, 45);
    PlotMap4(kFalse, surface, kTrue);
    EXPECT_EQ(surface.Calls("SetPixel").size(), 3U) << "the island's";
    EXPECT_EQ(surface.Calls("FloodFill").size(), 1U) << "the surround";
    EXPECT_TRUE(plotState.interrupted);
}

TEST_F(VectorsTest, FailedReadAddsNoSeaFills) {
    AddLine(1001, {At(5, 20, -30), At(5, 21, -31)});
    MakeDatabase();
    pointDatabase.LineIndex[1].pointPos[5] = 1000000;
    Edges(10, -40, 30, -20);
    plotState.fillSeaOnly = kTrue;
    PlotMap4(kFalse, surface, kTrue);
    EXPECT_EQ(CurrentMap().fillCount, 0);
    EXPECT_NE(plotState.fillSeaOnly, kFalse) << "kept for the next plot";
}

TEST_F(VectorsTest, ClassRangeThatOutlivedItsIndexIsHeldWithinIt) {
    for (const std::int16_t code : {1001, 2001, 2002, 2003}) AddLine(code, {At(5, 0, code % 10)});
    MakeDatabase();
    level1.clear();
    AddLine(1001, {At(5, 0, 1)});
    MakeDatabase();
    EXPECT_EQ(pointDatabase.ClassRange[2].last, 4) << "no line of the class moved it";
    EXPECT_EQ(Vectors(), Log{"SetPixel 206 129"});
}

TEST_F(VectorsTest, PointsOffTheEarthAreDrawnSomewhereAndHarmless) {
    AddLine(1001, {{5, 32767, 32767}, {5, -32768, -32768}, {5, 0, 0}});
    MakeDatabase();
    for (std::int16_t number = 0; number < 4; ++number) {
        CurrentMap().projection = number;
        PlotMap4(kFalse, surface, kTrue);
        EXPECT_FALSE(plotState.interrupted);
    }
}

}  // namespace
}  // namespace orvantis

#include "map/view_ring.h"

#include "map/map_fixture.h"
#include "map/map_menus.h"

namespace orvantis {
namespace {

std::vector<std::string> plots;

class ViewRingTest : public MapTest {
  protected:
    void SetUp() override {
        MapTest::SetUp();
        plots.clear();
        plotFull = [] { plots.emplace_back("full"); };
        plotQuick = [] { plots.emplace_back("quick"); };
    }

    // A picture of one colour, as large as the map area or of another width.
    static Image Picture(std::uint32_t colour, int width = kSurfaceWidth) {
        Image image;
        image.width = width;
        image.height = kSurfaceHeight;
        image.pixels.assign(static_cast<std::size_t>(width) * kSurfaceHeight, colour);
        return image;
    }

    static void SetEdges(float south, float west, float north, float east,
                         std::int16_t projectionNumber = projection::kCartesian) {
        MapDocument& map = CurrentMap();
        map.south = south;
        map.west = west;
        map.north = north;
        map.east = east;
        map.projection = projectionNumber;
    }

    static void ExpectEdges(float south, float west, float north, float east) {
        EXPECT_FLOAT_EQ(CurrentMap().south, south);
        EXPECT_FLOAT_EQ(CurrentMap().west, west);
        EXPECT_FLOAT_EQ(CurrentMap().north, north);
        EXPECT_FLOAT_EQ(CurrentMap().east, east);
    }
};

TEST_F(ViewRingTest, TitleOfAViewNamesItsEdges) {
    EXPECT_EQ(AreaTitle({-90, -180, 90, 180}), "Lat: 90S00 to 90N00  Long: 180W00 to 180E00");
    EXPECT_EQ(AreaTitle({-10.5F, 170, 0.25F, -170.75F}),
              "Lat: 10S30 to 00N15  Long: 170E00 to 170W45");
}

TEST_F(ViewRingTest, PushedViewIsACopyWithOtherEdgesAndIsPlottedInFull) {
    CurrentMap().precision = 2;
    CurrentMap().fillCount = 3;
    PushView({10, 20, 30, 40}, "Lat: new");
    EXPECT_EQ(mapState.current, 2);
    EXPECT_EQ(mapState.viewTop, 2);
    EXPECT_EQ(mapState.viewLowest, 1);
    ExpectEdges(10, 20, 30, 40);
    EXPECT_EQ(CurrentMap().precision, 2);
    EXPECT_EQ(CurrentMap().fillCount, 3);
    EXPECT_EQ(CurrentMap().title, "Lat: new");
    EXPECT_EQ(mapState.documents[1].south, -90) << "the view that was left stays";
    EXPECT_TRUE(mapMenus.previousView);
    EXPECT_EQ(plots, std::vector<std::string>{"full"});
}

TEST_F(ViewRingTest, StackedViewsCountTheirOwnFillsOfTheOneList) {
    AddFill(mapState.current, 1, 1, false, 1);
    PushView({10, 20, 30, 40}, "Lat: new");
    AddFill(mapState.current, 2, 2, false, 2);
    AddFill(mapState.current, 3, 3, false, 3);
    EXPECT_EQ(CurrentMap().fillCount, 3);
    PreviousView();
    EXPECT_EQ(CurrentMap().fillCount, 1);
    EXPECT_EQ(mapState.fills[3].colour, 3) << "the record stays for the view that counts it";
    AddFill(mapState.current, 4, 4, false, 4);
    EXPECT_EQ(CurrentMap().fillCount, 2);
    EXPECT_EQ(mapState.fills[1].colour, 1);
    EXPECT_EQ(mapState.fills[2].colour, 4) << "the lower view writes over the next element";
    EXPECT_EQ(mapState.fills[3].colour, 3);
}

TEST_F(ViewRingTest, TitleThatIsANameStaysThroughAPush) {
    CurrentMap().title = "Europe";
    PushView({10, 20, 30, 40}, "Lat: new");
    EXPECT_EQ(CurrentMap().title, "Europe");
    CurrentMap().title = "Lat of mine";
    PushView({10, 20, 30, 41}, "Lat: new");
    EXPECT_EQ(CurrentMap().title, "Lat of mine");
}

// Number of the view, top and lowest counter after each of seven pushes.
TEST_F(ViewRingTest, SixthViewTakesThePlaceOfTheFirst) {
    const int expected[][3] = {{2, 2, 1}, {3, 3, 1}, {4, 4, 1}, {5, 5, 1},
                               {1, 6, 2}, {2, 7, 3}, {3, 8, 4}};
    for (const auto& row : expected) {
        PushView({0, 0, 10, static_cast<float>(row[1])}, "");
        EXPECT_EQ(mapState.current, row[0]);
        EXPECT_EQ(mapState.viewTop, row[1]);
        EXPECT_EQ(mapState.viewLowest, row[2]);
    }
    // Four views back, each with its own edges, and no farther.
    for (const float east : {7.0F, 6.0F, 5.0F, 4.0F}) {
        EXPECT_TRUE(mapMenus.previousView);
        PreviousView();
        EXPECT_EQ(CurrentMap().east, east);
    }
    EXPECT_EQ(mapState.viewTop, mapState.viewLowest);
    EXPECT_FALSE(mapMenus.previousView);
}

TEST_F(ViewRingTest, CountOfViewsStartsAnewBeforeItOverflows) {
    mapState.viewTop = 32767;
    mapState.viewLowest = 32763;
    mapState.current = 2;
    PushView({0, 0, 10, 10}, "");
    EXPECT_EQ(mapState.viewTop - mapState.viewLowest, 4);
    EXPECT_EQ(mapState.current, 3);
    EXPECT_GT(mapState.viewLowest, 0);
}

TEST_F(ViewRingTest, ViewThatIsLeftKeepsTheStoredImageAndGetsItBack) {
    options.storeImages = kTrue;
    session.StoredImage = Picture(0xFF112233);
    PushView({10, 20, 30, 40}, "");
    session.StoredImage = Picture(0xFF445566);
    PreviousView();
    EXPECT_EQ(plots, (std::vector<std::string>{"full", "quick"}));
    EXPECT_EQ(session.StoredImage.pixels.front(), 0xFF112233);
    EXPECT_EQ(mapState.current, 1);
}

TEST_F(ViewRingTest, KeptPictureThatNoLongerFitsTheMapAreaIsNotUsed) {
    options.storeImages = kTrue;
    session.StoredImage = Picture(0xFF112233, kSurfaceWidth - 1);
    PushView({10, 20, 30, 40}, "");
    session.StoredImage = Picture(0xFF445566);
    PreviousView();
    EXPECT_EQ(plots, (std::vector<std::string>{"full", "full"}));
    EXPECT_EQ(session.StoredImage.pixels.front(), 0xFF445566);
}

TEST_F(ViewRingTest, WithoutStoreImagesNoPictureIsKeptAndTheViewIsPlottedInFull) {
    session.StoredImage = Picture(0xFF112233);
    mapState.viewImages[1] = Picture(0xFF000000);
    PushView({10, 20, 30, 40}, "");
    EXPECT_TRUE(mapState.viewImages[1].pixels.empty());
    PreviousView();
    EXPECT_EQ(plots, (std::vector<std::string>{"full", "full"}));
}

TEST_F(ViewRingTest, ViewWhosePlotWasGivenUpKeepsNoPicture) {
    options.storeImages = kTrue;
    session.StoredImage = Picture(0xFF112233);  // of the view before
    session.StoredImage.width = 0;
    session.StoredImage.height = 0;
    mapState.viewImages[1] = Picture(0xFF000000);
    PushView({10, 20, 30, 40}, "");
    EXPECT_TRUE(mapState.viewImages[1].pixels.empty());
    PreviousView();
    EXPECT_EQ(plots, (std::vector<std::string>{"full", "full"}));
}

TEST_F(ViewRingTest, OpeningAMapForgetsTheKeptPictures) {
    options.storeImages = kTrue;
    session.StoredImage = Picture(0xFF112233);
    PushView({10, 20, 30, 40}, "");
    NewMap(kFalse);
    EXPECT_TRUE(mapState.viewImages[1].pixels.empty());
    EXPECT_EQ(mapState.current, 1);
}

TEST_F(ViewRingTest, WithoutAPreviousViewTheUserIsAskedToZoomOut) {
    SetEdges(0, 0, 20, 40);
    TestShell().boxAnswers = {BoxAnswer::No};
    PreviousView();
    EXPECT_EQ(TestShell().log,
              std::vector<std::string>{
                  "MessageBox|Zoom Out?|There is no previous view to display.\\r\\n\\r\\nWould you "
                  "like to zoom out by a factor of 2?|YesNo|Question"});
    EXPECT_TRUE(plots.empty());
    TestShell().boxAnswers = {BoxAnswer::Yes};
    PreviousView();
    ExpectEdges(-10, -20, 30, 60);
    EXPECT_EQ(CurrentMap().title, "Lat: 10S00 to 30N00  Long: 020W00 to 060E00");
    EXPECT_EQ(plots, std::vector<std::string>{"full"});
}

TEST_F(ViewRingTest, WholeWorldHasNoPreviousViewAndIsNotZoomedOutOf) {
    struct Row {
        float south, west, north, east;
        std::int16_t projection;
    };
    const Row rows[] = {
        {-90, -180, 90, 180, projection::kCartesian}, {-90, 180, 90, -180, projection::kCartesian},
        {-90, 20, 90, 20, projection::kCartesian},    {-65, -180, 75, 180, projection::kMercator},
        {10, -90, 10, 90, projection::kGlobeSphere},  {10, 100, 10, -80, projection::kGlobeOblate}};
    for (const Row& row : rows) {
        SetEdges(row.south, row.west, row.north, row.east, row.projection);
        TestShell().log.clear();
        PreviousView();
        EXPECT_EQ(TestShell().log,
                  std::vector<std::string>{"MessageBox|Previous View|There is no previous view to "
                                           "display.|Ok|Information"});
        ZoomOut();
        ExpectEdges(row.south, row.west, row.north, row.east);
        EXPECT_TRUE(plots.empty());
    }
}

TEST_F(ViewRingTest, ZoomingOutDoublesTheViewAndKeepsItOnTheEarth) {
    struct Row {
        const char* what;
        ViewEdges before;
        std::int16_t projection;
        ViewEdges after;
    };
    const Row rows[] = {
        {"plain", {0, 0, 20, 40}, 0, {-10, -20, 30, 60}},
        {"over the date line", {0, 170, 10, -170}, 0, {-5, 160, 15, -160}},
        {"onto the date line", {0, 120, 10, 160}, 0, {-5, 100, 15, -180}},
        {"moved down from the pole", {70, 0, 90, 40}, 0, {50, -20, 90, 60}},
        {"moved up from the pole", {-85, 0, -65, 40}, 0, {-90, -20, -50, 60}},
        {"240 wide stays so", {0, -60, 60, 60}, 0, {-30, -120, 90, 120}},
        {"wider than 240 is the whole circle", {0, -61, 60, 61}, 0, {-30, -180, 90, -180}},
        {"higher than 120 is the whole meridian", {0, 0, 61, 40}, 0, {-90, -20, 90, 60}},
        {"a world that isn't whole in height", {-40, -180, 30, 180}, 0, {-90, -180, 90, -180}},
        {"Mercator ends short of the poles", {-10, 0, 60, 150}, 1, {-65, -105, 75, -105}},
        {"Mercator is moved down from 85 north", {60, 0, 80, 40}, 1, {45, -20, 85, 60}},
        {"Mercator is moved up from 80 south", {-75, 0, -65, 40}, 1, {-80, -20, -60, 60}},
        {"Mercator within its band stays", {40, 0, 60, 40}, 1, {30, -20, 70, 60}},
        {"Mercator at its highest", {25, 0, 85, 40}, 1, {-35, -20, 85, 60}},
        {"Mercator beyond its band comes back", {86, 0, 88, 40}, 1, {81, -20, 85, 60}},
    };
    for (const Row& row : rows) {
        mapState = {};
        SetEdges(row.before.south, row.before.west, row.before.north, row.before.east,
                 row.projection);
        ZoomOut();
        SCOPED_TRACE(row.what);
        ExpectEdges(row.after.south, row.after.west, row.after.north, row.after.east);
        EXPECT_EQ(mapState.viewTop, 2);
    }
}

class MapMenusTest : public MapTest {};

TEST_F(MapMenusTest, CheckedPrecisionIsFiveLessThePrecision) {
    for (std::int16_t precision = 1; precision <= 5; ++precision) {
        CurrentMap().precision = precision;
        RefreshMapMenus(mapState.current);
        EXPECT_EQ(mapMenus.precisionEntry, 5 - precision);
    }
}

TEST_F(MapMenusTest, EntriesMirrorTheDocumentOfTheNumberGiven) {
    mapState.documents[3].projection = projection::kGlobeOblate;
    mapState.documents[3].fillCount = 5;
    RefreshMapMenus(3);
    EXPECT_EQ(mapMenus.projectionEntry, 3);
    EXPECT_TRUE(mapMenus.removeLastFill);
    RefreshMapMenus(1);
    EXPECT_EQ(mapMenus.projectionEntry, 0);
    EXPECT_FALSE(mapMenus.removeLastFill);
}

TEST_F(MapMenusTest, RemovalOfAllFillsNeedsTwoAndOfTheLastOne) {
    struct Row {
        std::int16_t fills;
        bool all, last;
    };
    for (const Row& row : {Row{0, false, false}, Row{1, false, true}, Row{2, true, true}}) {
        CurrentMap().fillCount = row.fills;
        OpenMapMenu();
        EXPECT_EQ(mapMenus.removeAllFills, row.all) << row.fills;
        EXPECT_EQ(mapMenus.removeLastFill, row.last) << row.fills;
    }
}

TEST_F(MapMenusTest, PreviousViewNeedsATopAboveTheLowest) {
    mapState.viewTop = 4;
    mapState.viewLowest = 4;
    OpenMapMenu();
    EXPECT_FALSE(mapMenus.previousView);
    mapState.viewLowest = 3;
    OpenMapMenu();
    EXPECT_TRUE(mapMenus.previousView);
}

TEST_F(MapMenusTest, ChangeOfPrecisionIsWrittenIntoTheCurrentRecordAndWaitsForAPlot) {
    plots.clear();
    plotFull = [] { plots.emplace_back("full"); };
    mapState.current = 2;
    SetPrecision(1);
    EXPECT_EQ(mapState.documents[2].precision, 1);
    EXPECT_EQ(mapState.documents[1].precision, 5);
    EXPECT_EQ(mapMenus.precisionEntry, 4);
    EXPECT_TRUE(plots.empty());
    SetPrecision(9);
    EXPECT_EQ(mapState.documents[2].precision, 5);
}

}  // namespace
}  // namespace orvantis

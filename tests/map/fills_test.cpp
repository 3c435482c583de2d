#include "map/fills.h"

#include <limits>
#include <random>

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
    AddFill(1, 40, 50, false, 0x0000FF);
    EXPECT_EQ(Floods().size(), 2U);
    EXPECT_EQ(At(40, 40), 0x0000FF);
}

TEST_F(FillsTest, FillThatALaterOneInItsPixelPaintsOverIsLeftOut) {
    AddFill(1, 40, 40, true, 0);
    AddFill(1, 0, 0, true, 0);
    AddFill(1, 40, 40, false, 0x0000FF);
    EXPECT_EQ(Floods(), (Log{"FloodFill 205 129 16744512 0", "FloodFill 245 89 255 0"}));
    EXPECT_EQ(At(-60, -120), 0x0000FF);
    EXPECT_EQ(At(0, 0), kSea);
}

TEST_F(FillsTest, FillInTheOutlinesColourIsNeverLeftOutSinceNoLaterOnePaintsOverIt) {
    AddFill(1, 40, 40, false, 0);
    AddFill(1, 40, 40, true, 0);
    Floods();
    EXPECT_EQ(At(40, 40), 0);
    EXPECT_EQ(At(-60, -120), 0);
}

// Every fill with a colour, painted in the order of the list without leaving any out, gives the
// same picture.
TEST_F(FillsTest, PictureIsThatOfEveryFillInItsTurn) {
    const unsigned seed = 1207;
    std::mt19937 random(seed);
    std::uniform_int_distribution<int> place(-3, 3);
    std::uniform_int_distribution<int> colour(0, 3);
    for (int run = 0; run < 40; ++run) {
        CurrentMap().fillCount = 0;
        for (int fill = 0; fill < 30; ++fill) {
            AddFill(1, static_cast<float>(4 * place(random)), static_cast<float>(4 * place(random)),
                    false, colour(random) * 0x40);
        }
        PlotMap4(kFalse, surface, kTrue);
        const Image replayed = session.StoredImage;

        const std::int16_t fills = CurrentMap().fillCount;
        CurrentMap().fillCount = 0;
        PlotMap4(kFalse, surface, kTrue);
        mapView.surface = &surface;
        ClipToMap();
        for (std::int16_t fill = 1; fill <= fills; ++fill) {
            const FillRecord& record = mapState.fills[static_cast<std::size_t>(fill)];
            const int x = 25 + 180 + static_cast<int>(record.longitude);
            const int y = 39 + 90 - static_cast<int>(record.lat);
            if (surface.GetPixel(x, y) != record.colour) surface.FloodFill(x, y, record.colour, 0);
        }
        surface.ClearClip();
        Image painted;
        surface.CopyImage(painted);
        ASSERT_EQ(replayed.pixels, painted.pixels) << "seed " << seed << " run " << run;
    }
}

// A surface that counts floods, and on which no flood changes what a pixel reads.
class CountingSurface : public RecordingSurface {
  public:
    CountingSurface() : RecordingSurface(kSurfaceWidth, kSurfaceHeight) { recording = false; }
    Colour GetPixel(int /*x*/, int /*y*/) override { return -1; }
    bool FloodFill(int /*x*/, int /*y*/, Colour /*colour*/, Colour /*border*/) override {
        ++floods;
        return true;
    }
    int floods = 0;
};

TEST_F(FillsTest, FullListOfOneSeedCostsOneFlood) {
    for (int fill = 0; fill < 32767; ++fill) AddFill(1, 40, 40, false, 0x100 + fill % 2);
    CountingSurface counting;
    PlotMap4(kFalse, counting, kTrue);
    EXPECT_EQ(counting.floods, 2) << "and the surround";
}

TEST_F(FillsTest, FullListOfManySeedsEndsQuietlyAtTheMostFloods) {
    for (int fill = 0; fill < 32767; ++fill) {
        const int row = fill / 300;
        AddFill(1, static_cast<float>(row - 50), static_cast<float>(fill % 300 - 150), false,
                0x100 + fill % 2);
    }
    CountingSurface counting;
    PlotMap4(kFalse, counting, kTrue);
    EXPECT_EQ(counting.floods, kMostFloods + 1) << "and the surround";
    EXPECT_TRUE(TestShell().boxes.empty());
    EXPECT_FALSE(plotState.interrupted);
}

TEST_F(FillsTest, ColourThatTheFloodCannotTakeLeavesTheMapUnchanged) {
    PlotMap4(kFalse, surface, kTrue);
    const Image bare = session.StoredImage;
    class DumbSurface : public RecordingSurface {
      public:
        DumbSurface() : RecordingSurface(kSurfaceWidth, kSurfaceHeight) {}
        bool FloodFill(int x, int y, Colour colour, Colour border) override {
            return colour != 0x123456 && RecordingSurface::FloodFill(x, y, colour, border);
        }
    };
    DumbSurface dumb;
    AddFill(1, 40, 40, false, 0x123456);
    PlotMap4(kFalse, dumb, kTrue);
    EXPECT_EQ(session.StoredImage.pixels, bare.pixels);
    EXPECT_FALSE(plotState.interrupted);
    EXPECT_TRUE(TestShell().boxes.empty());
}

TEST_F(FillsTest, ColourBelowMinusOneIsTheSeaAsWell) {
    AddFill(1, 40, 40, false, -2);
    EXPECT_EQ(Floods(), Log{"FloodFill 245 89 16744512 0"});
    CurrentMap().fillCount = 0;
    AddFill(1, 40, 40, false, std::numeric_limits<Colour>::min());
    EXPECT_EQ(Floods(), Log{"FloodFill 245 89 16744512 0"});
}

TEST_F(FillsTest, PaletteMarkOfAColourIsNotCompared) {
    AddFill(1, 40, 40, false, 0x20000FF);
    AddFill(1, 40, 41, false, 0x00000FF);
    EXPECT_EQ(Floods(), Log{"FloodFill 245 89 255 0"});
}

TEST_F(FillsTest, SeedOnAnOutlinePixelIsFloodedFromAndPaintsNothing) {
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

// The view's edges are 30 west and 30 east, 15 south and 15 north.
TEST_F(FillsTest, SeedOnAnEdgeOfTheViewIsOutsideAndOneAMinuteFurtherInIsFloodedFrom) {
    struct Row {
        float lat, longitude;
        bool flooded;
    };
    constexpr float minute = 1.0F / 60;
    const Row rows[] = {{14, -30, false},          {14, -30 + minute, true},
                        {14, 30, false},           {14, 30 - minute, true},
                        {15, 20, false},           {15 - minute, 20, true},
                        {-15, 20, false},          {-15 + minute, 20, true},
                        {14, -30 - minute, false}, {15 + minute, 20, false}};
    level1.clear();  // an empty map: no sea of its own
    AddLine(7001, {{5, 3600, 3600}, {5, 3660, 3660}});
    MakeDatabase();
    pointDatabase.ClassRange = {};
    BuildClassRanges();
    CurrentMap().west = -30;
    CurrentMap().east = 30;
    CurrentMap().south = -15;
    CurrentMap().north = 15;
    for (const Row& row : rows) {
        CurrentMap().fillCount = 0;
        AddFill(1, row.lat, row.longitude, false, 0x0000FF);
        EXPECT_EQ(Floods().size(), row.flooded ? 1U : 0U) << row.lat << " " << row.longitude;
    }
}

TEST_F(FillsTest, SeedInAViewOverTheDateLineIsPaintedOnEitherSideOfIt) {
    CurrentMap().west = 150;
    CurrentMap().east = -150;
    CurrentMap().south = -15;
    CurrentMap().north = 15;
    // 6 pixels a degree from 150 east at x 25; 15 north lies at y 39.
    for (const float longitude : {170.0F, 180.0F, -180.0F, -170.0F}) {
        CurrentMap().fillCount = 0;
        AddFill(1, 5, longitude, false, 0x0000FF);
        const int x =
            25 + 6 * (static_cast<int>(longitude < 0 ? longitude + 360 : longitude) - 150);
        EXPECT_EQ(Floods(), Log{"FloodFill " + std::to_string(x) + " 99 255 0"}) << longitude;
        EXPECT_EQ(surface.GetPixel(x, 99), 0x0000FF);
    }
    for (const float longitude : {150.0F, -150.0F, 149.0F, -149.0F, 0.0F}) {
        CurrentMap().fillCount = 0;
        AddFill(1, 5, longitude, false, 0x0000FF);
        EXPECT_EQ(Floods(), Log{}) << longitude;
    }
}

TEST_F(FillsTest, FillCountBeyondTheListStopsTheReplay) {
    AddFill(1, 40, 40, true, 0);
    CurrentMap().fillCount = 30000;
    EXPECT_EQ(Floods().size(), 1U);
    EXPECT_TRUE(TestShell().boxes.empty());
}

void MakeGlobe() {
    CurrentMap().south = CurrentMap().north = 0;
    CurrentMap().west = -90;
    CurrentMap().east = 90;
    CurrentMap().projection = projection::kGlobeSphere;
}

TEST_F(FillsTest, SeedOnTheNearSideOfAGlobeIsPaintedAndOneBehindIsNot) {
    MakeGlobe();
    AddFill(1, 0, 0, false, 0x0000FF);
    AddFill(1, 0, 170, false, 0x00FF00);
    EXPECT_EQ(Floods(), Log{"FloodFill 205 129 255 0"});
    EXPECT_EQ(surface.GetPixel(205, 129), 0x0000FF);
}

// The arc cosine takes -1 for 1, so the distance of the antipode is that of the centre itself.
TEST_F(FillsTest, SeedAtTheVeryAntipodeOfAGlobesCentreCountsAsTheCentre) {
    MakeGlobe();
    AddFill(1, 0, 180, false, 0x00FF00);
    EXPECT_EQ(Floods(), Log{"FloodFill 205 129 65280 0"});
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

// Near the limb a coast and a seed may change places by rounding.
TEST_F(FillsTest, SeaSeedWithOutlineNextToItPaintsNothingOnAGlobe) {
    MakeGlobe();
    AddFill(1, 11, 0, true, 0);
    EXPECT_EQ(Floods(), Log{});
    CurrentMap().fillCount = 0;
    AddFill(1, 11, 0, false, 0x0000FF);
    EXPECT_EQ(Floods().size(), 1U) << "a colour of the user's own is painted";
    CurrentMap().fillCount = 0;
    AddFill(1, 14, 0, true, 0);
    EXPECT_EQ(Floods().size(), 1U);
}

TEST_F(FillsTest, RemovingAllFillsEmptiesTheListAndTheNextRedrawShowsNone) {
    AddFill(1, 40, 40, true, 0);
    AddFill(1, 0, 0, false, 0x0000FF);
    RemoveAllFills();
    EXPECT_EQ(CurrentMap().fillCount, 0);
    EXPECT_EQ(Floods(), Log{});
    EXPECT_EQ(At(0, 0), kLand);
}

TEST_F(FillsTest, RemovingTheLastFillTakesOneAwayAndWithNoneChangesNothing) {
    AddFill(1, 40, 40, true, 0);
    AddFill(1, 0, 0, false, 0x0000FF);
    RemoveLastFill();
    EXPECT_EQ(CurrentMap().fillCount, 1);
    EXPECT_EQ(Floods(), Log{"FloodFill 245 89 16744512 0"});
    RemoveLastFill();
    RemoveLastFill();
    EXPECT_EQ(CurrentMap().fillCount, 0);
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

// The sea of the shipped map, as it is drawn and filled, against land and water of the source.
#include <array>
#include <cmath>
#include <gtest/gtest.h>
#include <iostream>
#include <random>

#include "map/fills.h"
#include "map/map_document.h"
#include "map/plot.h"
#include "map/point_database.h"
#include "map/projection.h"
#include "map/view_edges.h"
#include "map/view_ring.h"
#include "map/world_zoom.h"
#include "map/zoom_seeds.h"
#include "raster/image_surface.h"
#include "session/session_state.h"
#include "session/settings.h"
#include "support/land_mask.h"
#include "support/paths.h"
#include "support/reset_all.h"
#include "support/temp_folder.h"

namespace orvantis {
namespace {

const LandMask& Mask() {
    static const LandMask mask(TestFile("data/land_mask.bin"));
    return mask;
}

// What a picture's colours say against the mask, pixels.
struct SeaCount {
    long filledSea = 0;
    long filledLand = 0;  // land in the colour of the sea: the coast's thinning, or a leak
    long bareSea = 0;     // sea that no fill reached
    long worstLeak = 0;   // size of the largest filled region that is mostly land
};

// A picture of the current map and what lies where on it.
class Picture {
  public:
    Picture(int width, int height) : surface_(width, height) {
        session.picture = &surface_;
        PlotMap4(kFalse, surface_, kTrue);
        surface_.CopyImage(image_);
        session.picture = nullptr;
    }

    // Places where sea and bare land meet without an outline between them. A flood stops at
    // outlines alone, so there are none but where something else has cut it off.
    long Seams() const {
        long seams = 0;
        for (int y = 0; y + 1 < image_.height; ++y) {
            for (int x = 0; x + 1 < image_.width; ++x) {
                seams += MeetBare(At(x, y), At(x + 1, y)) + MeetBare(At(x, y), At(x, y + 1));
            }
        }
        return seams;
    }

    const Image& Pixels() const { return image_; }

    SeaCount Count() {
        SeaCount count;
        seen_.assign(image_.pixels.size(), 0);
        const MapRect& rect = mapView.rect;
        for (int y = rect.top + 1; y < rect.top + rect.height; ++y) {
            for (int x = rect.left + 1; x < rect.left + rect.width; ++x) {
                if (At(x, y) == PixelOf(LandColour()) && !IsLand(x, y)) ++count.bareSea;
                if (At(x, y) == PixelOf(SeaColour())) AddRegion(x, y, count);
            }
        }
        return count;
    }

  private:
    std::size_t Index(int x, int y) const {
        return static_cast<std::size_t>(y) * static_cast<std::size_t>(image_.width) +
               static_cast<std::size_t>(x);
    }
    static long MeetBare(std::uint32_t one, std::uint32_t other) {
        const std::uint32_t land = PixelOf(LandColour());
        const std::uint32_t sea = PixelOf(SeaColour());
        return (one == land && other == sea) || (one == sea && other == land) ? 1 : 0;
    }
    std::uint32_t At(int x, int y) const { return image_.pixels[Index(x, y)]; }

    // The plate carree and the Mercator projection (Snyder, "Map Projections: A Working Manual",
    // USGS 1395, equations 12-1, 12-2 and 7-1, 7-4), backwards.
    bool IsLand(int x, int y) const {
        const MapDocument& map = CurrentMap();
        const MapRect& rect = mapView.rect;
        const double across = static_cast<double>(x - rect.left) / rect.width;
        const double down = static_cast<double>(y - rect.top) / rect.height;
        double span = map.east - map.west;
        if (span <= 0) span += 360;
        double lat = map.north + (map.south - map.north) * down;
        if (map.projection == projection::kMercator) {
            constexpr double kRadians = 3.14159265358979 / 180;
            const double north = std::asinh(std::tan(map.north * kRadians));
            const double south = std::asinh(std::tan(map.south * kRadians));
            lat = std::atan(std::sinh(north + (south - north) * down)) / kRadians;
        }
        return Mask().IsLand(lat, map.west + span * across);
    }

    // Counts the filled region at a pixel, once.
    void AddRegion(int startX, int startY, SeaCount& count) {
        if (seen_[Index(startX, startY)] != 0) return;
        std::vector<SurfacePoint> stack = {{startX, startY}};
        seen_[Index(startX, startY)] = 1;
        long land = 0;
        long sea = 0;
        while (!stack.empty()) {
            const SurfacePoint p = stack.back();
            stack.pop_back();
            ++(IsLand(p.x, p.y) ? land : sea);
            for (const SurfacePoint& step : {SurfacePoint{1, 0}, {-1, 0}, {0, 1}, {0, -1}}) {
                const SurfacePoint q{p.x + step.x, p.y + step.y};
                if (q.x < 0 || q.y < 0 || q.x >= image_.width || q.y >= image_.height) continue;
                if (seen_[Index(q.x, q.y)] != 0 || At(q.x, q.y) != PixelOf(SeaColour())) continue;
                seen_[Index(q.x, q.y)] = 1;
                stack.push_back(q);
            }
        }
        count.filledSea += sea;
        count.filledLand += land;
        if (land > sea) count.worstLeak = std::max(count.worstLeak, land + sea);
    }

    ImageSurface surface_;
    Image image_;
    std::vector<std::uint8_t> seen_;
};

class Sea : public ::testing::Test {
  protected:
    // The level files are made once for all tests.
    static void SetUpTestSuite() {
        ResetAll();
        folder_ = new TempFolder;
        folder_->Write("level1.pnt", FileBytes(DataFile("level1.pnt")));
        GenerateLevels(folder_->File("level1.pnt"), kFirstUseText);
    }
    static void TearDownTestSuite() {
        delete folder_;
        folder_ = nullptr;
    }
    void SetUp() override {
        ResetAll();
        session.ProgramDir = folder_->Path();
        LoadSettings(DataFile("default.ovs"), kFalse);
        ASSERT_EQ(LoadLineIndex(), kFalse);
        ASSERT_EQ(OpenMap(DataFile("world.ovm"), kFalse), kFalse);
        ASSERT_FALSE(Mask().IsEmpty());
    }
    // Of a region that is mostly land up to 20 pixels are let pass: at the ragged edge of a thinned
    // coast a few pixels of sea may stand where the mask has land.
    static void ExpectTight(const SeaCount& count, const std::string& what) {
        EXPECT_LE(count.worstLeak, 20) << what;
        const double filled = static_cast<double>(count.filledSea + count.filledLand);
        EXPECT_LT(static_cast<double>(count.filledLand), 0.01 * filled) << what;
    }

    static TempFolder* folder_;
};

TempFolder* Sea::folder_ = nullptr;

constexpr std::array<SurfaceSize, 3> kSizes = {{{420, 500}, {800, 600}, {1440, 810}}};

TEST_F(Sea, RunsOverNoLandOnTheWholeWorldAtAnySizeAndPrecision) {
    for (const SurfaceSize& size : kSizes) {
        for (std::int16_t precision = 1; precision <= 5; ++precision) {
            CurrentMap().precision = precision;
            ExpectTight(Picture(size.width, size.height).Count(),
                        std::to_string(size.width) + " at " + std::to_string(precision));
        }
    }
}

TEST_F(Sea, IsFilledButForNarrowFjordsOnTheWholeWorld) {
    for (std::int16_t precision = 1; precision <= 5; ++precision) {
        CurrentMap().precision = precision;
        const SeaCount count = Picture(1280, 720).Count();
        EXPECT_GT(count.filledSea, 400'000) << precision;
        EXPECT_LT(static_cast<double>(count.bareSea), 0.004 * static_cast<double>(count.filledSea))
            << precision;
    }
}

TEST_F(Sea, RunsOverNoLandInMercator) {
    CurrentMap().projection = projection::kMercator;
    CurrentMap().south = -65;
    CurrentMap().north = 75;
    for (std::int16_t precision = 1; precision <= 5; ++precision) {
        CurrentMap().precision = precision;
        ExpectTight(Picture(900, 640).Count(), std::to_string(precision));
    }
}

TEST_F(Sea, RunsOverNoLandInViewsOfAPart) {
    // Europe, the date line, Antarctica's coast, the Caribbean; south, west, north, east.
    constexpr std::array<std::array<float, 4>, 4> views = {
        {{30, -15, 72, 45}, {-50, 140, 20, -150}, {-85, -90, -55, 0}, {5, -100, 35, -55}}};
    for (const auto& view : views) {
        CurrentMap().south = view[0];
        CurrentMap().west = view[1];
        CurrentMap().north = view[2];
        CurrentMap().east = view[3];
        for (std::int16_t precision = 1; precision <= 3; ++precision) {
            CurrentMap().precision = precision;
            ExpectTight(Picture(900, 560).Count(), "view from " + std::to_string(view[0]) + " at " +
                                                       std::to_string(precision));
        }
    }
}

// What the tests above would say if it did.
TEST_F(Sea, IsSeenToRunOverLandWhereASeedLiesOnLand) {
    AddFill(mapState.current, 62, 100, true, 0);
    const SeaCount count = Picture(800, 600).Count();
    EXPECT_GT(count.worstLeak, 20);
    EXPECT_GT(count.filledLand, count.filledSea / 100);
}

TEST_F(Sea, ReachesTheLimbOfAGlobeOnAllSides) {
    for (const std::int16_t number : {projection::kGlobeSphere, projection::kGlobeOblate}) {
        CurrentMap().projection = number;
        for (const float lat : {0.0F, -20.0F, 90.0F}) {
            CurrentMap().south = lat;
            CurrentMap().north = lat;
            CurrentMap().west = -170;
            CurrentMap().east = 10;
            for (const int size : {700, 701}) {
                const Picture picture(size + 300, size);
                EXPECT_EQ(picture.Seams(), 0) << number << " at " << lat << ", " << size;
            }
        }
    }
}

TEST_F(Sea, HasEverySeedInTheWaterOfTheSource) {
    ASSERT_GT(CurrentMap().fillCount, 50);
    for (int i = 1; i <= CurrentMap().fillCount; ++i) {
        const FillRecord& seed = mapState.fills[static_cast<std::size_t>(i)];
        EXPECT_EQ(seed.colour, -1);
        EXPECT_FALSE(Mask().IsLand(seed.lat, seed.longitude)) << seed.lat << " " << seed.longitude;
    }
}

// --- Views that weren't zoomed to ---------------------------------------------------------------

// What there is in a view.
enum class Kind { Sea, Land, Both };

struct ViewRow {
    std::string name;
    std::int16_t projection;
    std::array<float, 4> edges;  // south, west, north, east
    Kind kind;
};

const std::vector<ViewRow> kViewRows = {
    {"Pacific", projection::kCartesian, {5, -145, 15, -135}, Kind::Sea},
    {"Pacific, Mercator", projection::kMercator, {5, -145, 15, -135}, Kind::Sea},
    {"Pacific, one degree", projection::kCartesian, {9.5F, -140.5F, 10.1F, -139.5F}, Kind::Sea},
    {"Pacific, date line", projection::kCartesian, {30, 175, 40, -175}, Kind::Sea},
    {"Atlantic, tall", projection::kCartesian, {-50, -30, -20, -29}, Kind::Sea},
    {"Sahara", projection::kCartesian, {20, 5, 25, 10}, Kind::Land},
    {"Siberia", projection::kMercator, {60, 100, 65, 110}, Kind::Land},
    {"Antarctica", projection::kMercator, {-82, 0, -76, 20}, Kind::Land},
    {"Antarctica, date line", projection::kCartesian, {-90, 150, -60, -150}, Kind::Both},
    {"Fiji, date line", projection::kCartesian, {-20, 174, -14, -177}, Kind::Both},
    {"Chukotka, date line", projection::kMercator, {62, 170, 72, -165}, Kind::Both},
    {"Strait of Gibraltar", projection::kCartesian, {33, -9, 39, 1}, Kind::Both}};

void ShowView(const ViewRow& row, std::int16_t precision) {
    MapDocument& map = CurrentMap();
    map.projection = row.projection;
    map.precision = precision;
    map.south = row.edges[0];
    map.west = row.edges[1];
    map.north = row.edges[2];
    map.east = row.edges[3];
}

TEST_F(Sea, ViewNamedByItsEdgesIsPaintedAsAZoomToItWouldBe) {
    for (const ViewRow& row : kViewRows) {
        for (const std::int16_t precision : {1, 5}) {
            ASSERT_EQ(OpenMap(DataFile("world.ovm"), kFalse), kFalse);
            ShowView(row, precision);
            ImageSurface window(1200, 800);
            ASSERT_TRUE(ZoomFromWorld(window));
            SeaCount count = Picture(640, 400).Count();
            const std::string what = row.name + " " + std::to_string(precision);
            const MapRect& rect = mapView.rect;
            const long all = static_cast<long>(rect.width - 1) * (rect.height - 1);
            if (row.kind != Kind::Both) {
                EXPECT_EQ(count.filledSea, row.kind == Kind::Sea ? all : 0) << what;
                EXPECT_EQ(count.filledLand, 0) << what;
                continue;
            }
            EXPECT_LE(count.worstLeak, 20) << what;
            EXPECT_GT(count.filledSea, all / 10) << what;
            EXPECT_LT(count.bareSea, count.filledSea / 20) << what;
        }
    }
}

// One zoom by hand on the world of the shipped map, which shows it from date line to date line.
TEST_F(Sea, ViewNamedByItsEdgesIsThePictureOfAZoomByHand) {
    for (const ViewRow& row : kViewRows) {
        if (row.edges[1] > row.edges[3] || row.edges[0] == -82) continue;
        ShowView(row, 3);
        ImageSurface window(1200, 800);
        ASSERT_TRUE(ZoomFromWorld(window));
        const Image named = Picture(640, 400).Pixels();

        ASSERT_EQ(OpenMap(DataFile("world.ovm"), kFalse), kFalse);
        CurrentMap().precision = 3;
        CurrentMap().projection = row.projection;
        PlotMap4(kFalse, window, kTrue);
        std::array<std::int16_t, 4> at{};
        for (std::size_t i = 0; i < 4; i += 2) {
            ProjectPoint(static_cast<std::int16_t>(row.edges[i] * 60),
                         static_cast<std::int16_t>(row.edges[i + 1] * 60), at[i], at[i + 1]);
        }
        SeedsFromZoom(1, window, at[1], at[2], at[3], at[0]);
        ShowView(row, 3);
        EXPECT_EQ(Picture(640, 400).Pixels().pixels, named.pixels) << row.name;
        ASSERT_EQ(OpenMap(DataFile("world.ovm"), kFalse), kFalse);
    }
}

TEST_F(Sea, ZoomFromTheWorldLeavesTheDocumentsEdgesAndOtherViewsAlone) {
    const auto edges = [] {
        const MapDocument& map = CurrentMap();
        return std::array<float, 5>{map.south, map.west, map.north, map.east,
                                    static_cast<float>(map.projection)};
    };
    ImageSurface window(300, 200);
    window.Clear(0x123456);
    std::vector<ViewRow> rows = {
        {"world", projection::kCartesian, {-90, -180, 90, 180}, Kind::Both},
        {"band", projection::kMercator, {-10, 20, 10, 20}, Kind::Both},
        {"globe", projection::kGlobeSphere, {10, -90, 10, 90}, Kind::Both},
        {"upside down", projection::kCartesian, {10, 0, -10, 20}, Kind::Both},
        {"beyond a pole", projection::kCartesian, {80, 0, 100, 20}, Kind::Both},
        {"no view", projection::kCartesian, {0, 0, 10, 1e30F}, Kind::Both}};
    for (const ViewRow& row : rows) {
        ShowView(row, 5);
        const auto before = edges();
        EXPECT_TRUE(ZoomFromWorld(window)) << row.name;
        EXPECT_EQ(edges(), before) << row.name;
        EXPECT_EQ(window.GetPixel(150, 100), 0x123456) << row.name << " is plotted by no zoom";
    }
    ShowView(kViewRows[1], 5);
    const auto before = edges();
    EXPECT_TRUE(ZoomFromWorld(window));
    EXPECT_EQ(edges(), before);
    EXPECT_NE(window.GetPixel(150, 100), 0x123456);
}

// --- Views that were moved or made larger -------------------------------------------------------

// A window whose map is plotted again for each view that is pushed.
class MovedSea : public Sea {
  protected:
    void SetUp() override {
        Sea::SetUp();
        session.picture = &window_;
        plotFull = [] { PlotMap4(kFalse, *session.picture, kTrue); };
    }

    // Shows a view with what zooms from the world to it would have found.
    void ZoomTo(const std::array<float, 4>& edges, std::int16_t projectionNumber) {
        ASSERT_EQ(OpenMap(DataFile("world.ovm"), kFalse), kFalse);
        ShowView({"", projectionNumber, edges, Kind::Both}, 3);
        ASSERT_TRUE(ZoomFromWorld(window_));
        plotFull();
    }

    // Moves the view by parts of its width and height, east and north positive.
    static void Move(double across, double up) {
        const ViewExtent& view = mapView.extent;
        PushMovedView(EdgesAbout(view.centreLat + up * view.spanLat,
                                 view.centreLong + across * view.spanLong),
                      "Lat:");
    }

    // Share of the map's pixels in the sea's colour.
    double SeaShare() {
        const MapRect& rect = mapView.rect;
        long sea = 0;
        for (int y = rect.top + 1; y < rect.top + rect.height; ++y) {
            for (int x = rect.left + 1; x < rect.left + rect.width; ++x) {
                if (window_.GetPixel(x, y) == PlainColour(SeaColour())) ++sea;
            }
        }
        return static_cast<double>(sea) / (rect.width - 1) / (rect.height - 1);
    }

  private:
    ImageSurface window_{1000, 700};
};

struct MoveRow {
    const char* what;
    std::int16_t projection;
    std::array<float, 4> edges;  // south, west, north, east
    double across;               // of one move, parts of the view
    double up;
    double leastSea;  // at the start
};

TEST_F(MovedSea, StaysSeaWhereNoLineIsInView) {
    const std::vector<MoveRow> rows = {
        {"Pacific", projection::kCartesian, {-32.5F, -119.8F, -20.1F, -94.9F}, 0.3, 0, 0.999},
        {"Pacific, westward", projection::kCartesian, {10, -140, 15, -130}, -0.45, 0, 1},
        {"Pacific, northward", projection::kCartesian, {25, -150, 28, -145}, 0.2, 0.7, 1},
        {"Pacific, date line", projection::kCartesian, {32, 174, 34, 178}, 0.6, 0, 1},
        {"Pacific, Mercator", projection::kMercator, {40, -150, 43, -145}, 0.3, -0.6, 1},
        {"Hawaii, eastward", projection::kCartesian, {18, -161, 24, -153}, 0.45, 0.1, 0.9},
        {"Hawaii, Mercator", projection::kMercator, {18, -161, 24, -153}, 0.45, 0.1, 0.9}};
    for (const MoveRow& row : rows) {
        ZoomTo(row.edges, row.projection);
        EXPECT_GE(SeaShare(), row.leastSea) << row.what;
        for (int move = 0; move < 2; ++move) Move(row.across, row.up);
        EXPECT_FALSE(plotState.islandsOnly) << row.what;
        EXPECT_EQ(SeaShare(), 1) << row.what;
        Move(row.across, row.up);
        EXPECT_EQ(SeaShare(), 1) << row.what << ", once more";
    }
}

TEST_F(MovedSea, StaysSeaWhereTheViewIsMadeLarger) {
    ZoomTo({9, -141, 11, -139}, projection::kCartesian);
    RemoveAllFills();  // the picture alone is to tell
    ZoomOut();
    EXPECT_EQ(SeaShare(), 1);
    ViewEdges edges;
    ASSERT_TRUE(ScaledEdges(mapView.rect.left + 9, mapView.rect.top + 9, -1, edges));
    RemoveAllFills();
    PushMovedView(edges, "Lat:");
    EXPECT_EQ(SeaShare(), 1);
}

// Without borders there is no line in view.
TEST_F(MovedSea, IsNotFoundOnLandWithoutLines) {
    for (const std::int16_t number : {projection::kCartesian, projection::kMercator}) {
        ZoomTo({20, 5, 25, 10}, number);
        CurrentMap().hidden = {0, 0, -1, -1, -1, 0, -1, -1, -1};
        plotFull();
        for (const double across : {0.3, 0.3, -0.6}) {
            Move(across, 0.1);
            EXPECT_FALSE(plotState.plotted);
            EXPECT_EQ(SeaShare(), 0) << number;
        }
        ZoomOut();
        EXPECT_EQ(SeaShare(), 0) << number;
    }
}

// A chart's lines may have any colour.
TEST_F(MovedSea, IsNotTakenFromALineOfItsColour) {
    ZoomTo({20, 5, 25, 10}, projection::kCartesian);
    CurrentMap().hidden = {0, 0, -1, -1, -1, 0, -1, -1, -1};
    plotFull();
    session.picture->SetPen({1, LineDash::Solid, PlainColour(SeaColour())});
    session.picture->MoveTo(0, 0);
    session.picture->LineTo(1000, 700);
    session.picture->MoveTo(500, 0);
    session.picture->LineTo(500, 700);
    Move(0.3, 0);
    EXPECT_FALSE(plotState.plotted);
    EXPECT_EQ(SeaShare(), 0);
}

TEST_F(MovedSea, TellsNothingOfAViewThatSharesNothingWithIt) {
    ZoomTo({10, -140, 15, -130}, projection::kCartesian);
    ASSERT_EQ(SeaShare(), 1);
    CurrentMap().hidden = {0, 0, -1, -1, -1, 0, -1, -1, -1};
    PushMovedView({20, 5, 25, 10}, "Lat:");
    EXPECT_FALSE(plotState.plotted);
    EXPECT_EQ(SeaShare(), 0);
}

// Where a move leads to the open sea the sea comes along, and where it leads onto land it doesn't.
TEST_F(MovedSea, OfRandomMovesIsWhereTheSourceHasIt) {
    constexpr unsigned kSeed = 907;
    constexpr int kViews = 60;
    constexpr int kMoves = 4;
    std::mt19937 random(kSeed);
    const auto between = [&](double least, double most) {
        return least + (most - least) * random() / 4294967296.0;
    };
    int atSea = 0;
    int onLand = 0;
    for (int n = 0; n < kViews; ++n) {
        const auto height = static_cast<float>(between(1, 15));
        const auto south = static_cast<float>(between(-70, 70 - height));
        const auto west = static_cast<float>(between(-180, 180));
        ZoomTo({south, west, south + height, WrappedLong(west + 1.5 * height)},
               n % 2 == 0 ? projection::kCartesian : projection::kMercator);
        for (int move = 0; move < kMoves; ++move) {
            if (n % 10 == 9 && move == 0) {
                ZoomOut();
            } else {
                Move(between(-0.7, 0.7), between(-0.7, 0.7));
            }
            if (plotState.plotted || plotState.crossings.size() > 1) continue;
            const double share = SeaShare();
            EXPECT_TRUE(share == 0 || share == 1) << "view " << n << ", move " << move;
            const bool maskLand =
                Mask().IsLand(mapView.extent.centreLat, mapView.extent.centreLong);
            EXPECT_EQ(share == 1, !maskLand) << "view " << n << ", move " << move;
            (share == 1 ? atSea : onLand)++;
        }
    }
    std::cout << "seed " << kSeed << ": " << atSea << " moves to open sea, " << onLand
              << " to open land\n";
}

}  // namespace
}  // namespace orvantis

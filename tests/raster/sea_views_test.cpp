// The sea of random views of the shipped map against land and water of the source: what a user may
// zoom to, in any projection, precision and size of the window.
//
// The normal run looks at a hundred views in small windows. ORVANTIS_SEA_VIEWS=N looks at N views
// in windows of up to 4000 pixels, ORVANTIS_SEA_SEED=N takes other views, ORVANTIS_SEA_ONLY=N looks
// at the one of that number, and ORVANTIS_SEA_PICTURE=FILE writes the last picture as PNG.
#include <algorithm>
#include <array>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <gtest/gtest.h>
#include <random>

#include "map/map_document.h"
#include "map/plot.h"
#include "map/point_database.h"
#include "map/projection.h"
#include "map/zoom_seeds.h"
#include "raster/image_surface.h"
#include "raster/picture_file.h"
#include "session/session_state.h"
#include "session/settings.h"
#include "support/land_mask.h"
#include "support/paths.h"
#include "support/reset_all.h"
#include "support/sea_measure.h"
#include "support/temp_folder.h"

namespace orvantis {
namespace {

// A picture that measures the lines drawn on the map itself, between the clip to the map and the
// labels.
class LeapSurface : public ImageSurface {
  public:
    using ImageSurface::ImageSurface;
    void ClipToRectangle(int left, int top, int right, int bottom) override {
        ImageSurface::ClipToRectangle(left, top, right, bottom);
        measuring_ = true;
    }
    void ClipToEllipse(int left, int top, int right, int bottom) override {
        ImageSurface::ClipToEllipse(left, top, right, bottom);
        measuring_ = true;
    }
    void SelectFont(const Font& font) override {
        ImageSurface::SelectFont(font);
        measuring_ = false;
    }
    void MoveTo(int x, int y) override {
        ImageSurface::MoveTo(x, y);
        x_ = x;
    }
    void LineTo(int x, int y) override {
        ImageSurface::LineTo(x, y);
        if (measuring_) widest = std::max(widest, std::abs(x - x_));
        x_ = x;
    }

    int widest = 0;  // pixels that a line runs to the side

  private:
    bool measuring_ = false;
    int x_ = 0;
};

double WrappedLong(double longitude) {
    return std::remainder(longitude, 360);
}

// One view as it was asked for, and what came of it.
struct View {
    int number = 0;
    std::int16_t projection = 0;
    std::int16_t precision = 5;
    SurfaceSize size;
    int zooms = 0;
    double leap = 0;  // widest line: degrees on a flat map, radii on a globe
    SeaFigures sea;

    std::string Text() const {
        char text[400];
        const MapDocument& map = CurrentMap();
        std::snprintf(text, sizeof text,
                      "view %d: projection %d precision %d size %dx%d zooms %d edges %.3f,%.3f,"
                      "%.3f,%.3f: filled %ld land %ld sure %ld (%.3f %.3f) mostly land %ld; bare "
                      "sea %ld, sure %ld (%.3f %.3f); leap %.2f",
                      number, projection, precision, size.width, size.height, zooms, map.south,
                      map.west, map.north, map.east, sea.filled, sea.filledLand, sea.worstSureLeak,
                      sea.leakLat, sea.leakLong, sea.worstLeak, sea.bareSea, sea.worstBare,
                      sea.bareLat, sea.bareLong, leap);
        return text;
    }
};

class SeaViews : public ::testing::Test {
  protected:
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
        ASSERT_FALSE(mask_.IsEmpty());
        lost_ = mask_.KeepLandOf(DataFile("level1.pnt"));
    }

    double Between(double low, double high) {
        return std::uniform_real_distribution<double>(low, high)(random_);
    }
    // Small values as often as large ones.
    double LogBetween(double low, double high) {
        return std::exp(Between(std::log(low), std::log(high)));
    }

    // A place for a view: mostly one with land and water within reach.
    void ChoosePlace(double reach, double& lat, double& longitude) {
        const bool anywhere = Between(0, 1) < 0.2;
        for (int attempt = 0; attempt < 200; ++attempt) {
            lat = std::asin(Between(-1, 1)) * 180 / 3.14159265358979;
            longitude = Between(-180, 180);
            if (anywhere ||
                mask_.IsLand(lat, longitude) != mask_.IsLand(lat + Between(-reach, reach),
                                                             longitude + Between(-reach, reach))) {
                return;
            }
        }
    }

    // The whole world with a longitude in the middle.
    static void ShowWorld(std::int16_t projectionNumber, double middle) {
        MapDocument& map = CurrentMap();
        map.projection = projectionNumber;
        map.south = projectionNumber == projection::kMercator ? -65 : -90;
        map.north = projectionNumber == projection::kMercator ? 75 : 90;
        map.west = map.east = static_cast<float>(WrappedLong(middle + 180));
    }

    // What the release of a zoom rectangle does: the colours on its edge, and then its corners as
    // the new edges; less than a degree becomes one. The rectangle is given by its middle and width
    // in pixels and keeps the map's proportions.
    static void Zoom(DrawingSurface& picture, double x, double y, double width) {
        MapDocument& map = CurrentMap();
        const MapRect& rect = mapView.rect;
        const double height = width * rect.height / rect.width;
        const auto held = [](double value, int low, int high) {
            return static_cast<std::int16_t>(std::clamp<long>(std::lround(value), low, high));
        };
        const int lastX = rect.left + rect.width;
        const int lastY = rect.top + rect.height;
        const std::int16_t left = held(x - width / 2, rect.left, lastX);
        const std::int16_t right = held(x + width / 2, rect.left, lastX);
        const std::int16_t top = held(y - height / 2, rect.top, lastY);
        const std::int16_t bottom = held(y + height / 2, rect.top, lastY);
        if (left == right || top == bottom) return;
        SeedsFromZoom(mapState.current, picture, left, top, right, bottom);

        float north = 0;
        float south = 0;
        float west = 0;
        float east = 0;
        UnprojectPoint(map, left, top, north, west);
        UnprojectPoint(map, right, bottom, south, east);
        double wide = east - west;
        if (wide < 0) wide += 360;
        if (wide < 1) {
            const double tall = static_cast<double>(rect.height) / rect.width;
            const double middleLat =
                std::clamp((north + south) / 2.0, tall / 2 - 90, 90 - tall / 2);
            const double middle = west + wide / 2;
            north = static_cast<float>(middleLat + tall / 2);
            south = static_cast<float>(middleLat - tall / 2);
            west = static_cast<float>(WrappedLong(middle - 0.5));
            east = static_cast<float>(WrappedLong(middle + 0.5));
        }
        map.north = north;
        map.south = south;
        map.west = west;
        map.east = east;
    }

    static void Plot(DrawingSurface& picture) {
        PlotMap4(kFalse, picture, kTrue);
        ASSERT_FALSE(plotState.interrupted);
    }

    // A flat view of a part of the world: by one or two zooms up to 240 degrees, which is what a
    // zoom goes to, and by a document's own edges beyond.
    void ShowPart(LeapSurface& picture, View& view, double span) {
        double lat = 0;
        double longitude = 0;
        ChoosePlace(span / 2, lat, longitude);
        if (span > 240) {
            ShowWorld(view.projection, longitude);
            CurrentMap().west = static_cast<float>(WrappedLong(longitude - span / 2));
            CurrentMap().east = static_cast<float>(WrappedLong(longitude + span / 2));
            return;
        }
        // The world is moved so that the rectangle doesn't cross its edge.
        ShowWorld(view.projection, WrappedLong(longitude + Between(-20, 20)));
        const bool twice = span < 30 && Between(0, 1) < 0.6;
        for (view.zooms = 0; view.zooms < (twice ? 2 : 1); ++view.zooms) {
            Plot(picture);
            const double wide = twice && view.zooms == 0 ? span * Between(3, 8) : span;
            std::int16_t x = 0;
            std::int16_t y = 0;
            ProjectPoint(static_cast<std::int16_t>(std::lround(lat * 60)),
                         static_cast<std::int16_t>(std::lround(longitude * 60)), y, x);
            Zoom(picture, x, y, wide / mapView.extent.spanLong * mapView.rect.width);
        }
    }

    // A view with everything about it chosen at random, drawn and measured.
    void Show(View& view, int largest) {
        ASSERT_EQ(OpenMap(DataFile("world.ovm"), kFalse), kFalse);
        plotState = {};
        view.projection = static_cast<std::int16_t>(view.number % 4);
        view.precision = static_cast<std::int16_t>(1 + view.number / 4 % 5);
        view.size.width = static_cast<int>(LogBetween(300, largest));
        view.size.height = std::max(300, static_cast<int>(view.size.width * Between(0.45, 0.9)));
        CurrentMap().precision = view.precision;
        LeapSurface picture(view.size.width, view.size.height);
        const double span = LogBetween(1, 360);
        if (IsFlat(view.projection)) {
            ShowPart(picture, view, span);
        } else {
            double lat = 0;
            double longitude = 0;
            ChoosePlace(60, lat, longitude);
            MapDocument& map = CurrentMap();
            map.projection = view.projection;
            map.south = map.north = static_cast<float>(lat);
            map.west = static_cast<float>(WrappedLong(longitude - 90));
            map.east = static_cast<float>(WrappedLong(longitude + 90));
        }
        picture.widest = 0;
        Plot(picture);
        const double wide = IsFlat(view.projection) ? mapView.extent.spanLong : 2;
        view.leap = picture.widest * wide / mapView.rect.width;
        Image image;
        picture.CopyImage(image);
        view.sea = MeasureSea(image, mask_);
        if (const char* path = std::getenv("ORVANTIS_SEA_PICTURE")) SavePng(path, image);
    }

    static TempFolder* folder_;
    // The land of the source that the database has.
    LandMask mask_{TestFile("data/land_mask.bin")};
    double lost_ = 0;  // land that it hasn't, part of all
    std::mt19937 random_{1};
};

TempFolder* SeaViews::folder_ = nullptr;

int NumberFromEnvironment(const char* name, int otherwise) {
    const char* text = std::getenv(name);
    return text != nullptr ? std::atoi(text) : otherwise;
}

// Of a precision, how much of what is filled may be land by the mask: its cells are wider than many
// an inlet, and the lines of the coarse precisions lie up to a quarter of a degree beside the
// coast, which in a view of a degree is a quarter of the picture. Islands that the database hasn't
// are no land here: a view of a degree with four such islands would alone outweigh a hundred
// others. They may be so much of all land:
constexpr double kLostLand = 0.005;
constexpr std::array<double, 6> kLandShare = {0, 0.005, 0.01, 0.01, 0.02, 0.03};

// What is land or sea for sure, pixels of the map: a leak fills far more than the first, which a
// river mouth may have that is narrower than the mask tells; the second is half a percent.
constexpr double kSureLand = 0.001;
constexpr double kSureSea = 0.005;

// Lines of the database are at most 10 degrees wide; a step of a pixel more. On a globe, in radii.
constexpr double kWidestLine = 10;
constexpr double kWidestOnGlobe = 0.3;

TEST_F(SeaViews, RandomViewsHaveTheirSeaPaintedAndNoLand) {
    const int seed = NumberFromEnvironment("ORVANTIS_SEA_SEED", 1);
    const int views = NumberFromEnvironment("ORVANTIS_SEA_VIEWS", 0);
    const int only = NumberFromEnvironment("ORVANTIS_SEA_ONLY", -1);
    std::printf("seed %d, land that the database hasn't %.4f\n", seed, lost_);
    EXPECT_LT(lost_, kLostLand);
    std::array<double, 6> filled{};
    std::array<double, 6> land{};
    for (int number = 0; number < (views > 0 ? views : 100); ++number) {
        if (only >= 0 && number != only) continue;
        random_.seed(static_cast<unsigned>(10000 * seed + number));
        View view;
        view.number = number;
        ASSERT_NO_FATAL_FAILURE(Show(view, views > 0 ? 4000 : 700));
        const auto precision = static_cast<std::size_t>(view.precision);
        filled[precision] += static_cast<double>(view.sea.filled);
        land[precision] += static_cast<double>(view.sea.filledLand);

        const auto map = static_cast<double>(view.sea.map);
        const double pixel = mapView.extent.spanLong / mapView.rect.width;
        const bool flat = IsFlat(view.projection);
        EXPECT_LE(static_cast<double>(view.sea.sureLeak), kSureLand * map) << view.Text();
        EXPECT_LE(view.sea.worstLeak, 20) << view.Text();
        if (flat) {
            EXPECT_LE(static_cast<double>(view.sea.worstBare), kSureSea * map) << view.Text();
        }
        EXPECT_LE(view.leap, flat ? kWidestLine + 1.5 * pixel : kWidestOnGlobe) << view.Text();
        if (views > 0 || HasFailure()) std::printf("%s\n", view.Text().c_str());
    }
    for (std::size_t precision = 1; precision <= 5 && only < 0; ++precision) {
        std::printf("precision %zu: %.4f of what is filled is land\n", precision,
                    land[precision] / filled[precision]);
        EXPECT_LT(land[precision], kLandShare[precision] * filled[precision]) << precision;
    }
}

}  // namespace
}  // namespace orvantis

#include "map/projection.h"

#include <cmath>
#include <random>

#include "map/map_fixture.h"
#include "text/numbers.h"

namespace orvantis {
namespace {

struct PixelAt {
    int x = 0;
    int y = 0;
};

PixelAt Project(int latMin, int longMin) {
    std::int16_t x = 0;
    std::int16_t y = 0;
    ProjectPoint(static_cast<std::int16_t>(latMin), static_cast<std::int16_t>(longMin), y, x);
    return {x, y};
}

class ProjectionTest : public MapTest {
  protected:
    static std::int16_t Pending() {
        RunTimeError failure;
        return TakeRunTimeError(failure) ? failure.number : std::int16_t{0};
    }
};

TEST_F(ProjectionTest, ViewOfTheWholeWorldHasItsDerivedValues) {
    SetView(-90, -180, 90, 180, projection::kCartesian);
    const ViewExtent& view = mapView.extent;
    EXPECT_EQ(view.centreLong, 0);
    EXPECT_EQ(view.centreLat, 0);
    EXPECT_EQ(view.spanLong, 360);
    EXPECT_EQ(view.spanLat, 180);
    EXPECT_EQ(view.spanLongMin, 21600);
    EXPECT_EQ(view.spanLatMin, 10800);
    EXPECT_EQ(view.southMin, -5400);
    EXPECT_EQ(view.northMin, 5400);
    EXPECT_EQ(view.westMin, -10800);
    EXPECT_EQ(view.eastMin, 10800);
    EXPECT_EQ(view.offsetLongMin, 10800);
    EXPECT_EQ(view.offsetLatMin, -5400);
}

TEST_F(ProjectionTest, ViewOverTheDateLineHasItsCentreByTheModuloRule) {
    SetView(-10, 170, 10, -170, projection::kCartesian);
    EXPECT_EQ(mapView.extent.centreLong, -180);
    EXPECT_EQ(mapView.extent.spanLong, 20);
}

TEST_F(ProjectionTest, EqualWestAndEastSpanTheWholeCircle) {
    SetView(-90, 30, 90, 30, projection::kCartesian);
    EXPECT_EQ(mapView.extent.spanLong, 360);
    EXPECT_EQ(mapView.extent.centreLong, -150);
}

TEST_F(ProjectionTest, EqualSouthAndNorthSpanHalfACircle) {
    SetView(20, -60, 20, 120, projection::kGlobeSphere);
    EXPECT_EQ(mapView.extent.spanLat, 180);
    EXPECT_EQ(mapView.extent.centreLat, 20);
    EXPECT_EQ(mapView.extent.globeOffset, 0);
    EXPECT_EQ(mapView.extent.globeScale, 1);
}

TEST_F(ProjectionTest, EdgesThatDoNotFitSixteenBitsOfMinutesOverflow) {
    SetView(-90, 1000, 90, 180, projection::kCartesian);
    EXPECT_EQ(Pending(), error::kOverflow);
}

TEST_F(ProjectionTest, SpanOfLessThanHalfAMinuteIsADivisionByZero) {
    SetView(10, 0, 10.001F, 20, projection::kCartesian);
    EXPECT_EQ(Pending(), error::kDivisionByZero);
}

TEST_F(ProjectionTest, MercatorMapWithoutAHeightIsADivisionByZero) {
    SetView(-95, 0, -92, 20, projection::kMercator);
    EXPECT_EQ(Pending(), error::kDivisionByZero);
    SetView(-95, 0, -92, 20, projection::kCartesian);
    EXPECT_EQ(Pending(), 0);
}

TEST_F(ProjectionTest, ViewThatGoesMoreThanOnceAroundTheEarthOverflows) {
    struct Row {
        float west, east;
        std::int16_t number;
    };
    const Row rows[] = {{-180, 180, 0},
                        {-180, 180.5F, error::kOverflow},
                        {180, -180, 0},  // from the date line to the date line
                        {180.5F, -180, error::kOverflow},
                        {180, -179, 0}};
    for (const Row& row : rows) {
        SetView(-10, row.west, 10, row.east, projection::kCartesian);
        EXPECT_EQ(Pending(), row.number) << row.west << ' ' << row.east;
    }
}

TEST_F(ProjectionTest, ViewFromTheDateLineToTheDateLineIsTheWholeWorld) {
    SetView(-90, 180, 90, -180, projection::kCartesian);
    const ViewExtent& view = mapView.extent;
    EXPECT_EQ(view.spanLong, 360);
    EXPECT_EQ(view.spanLongMin, 21600);
    EXPECT_EQ(view.centreLong, 0);
    EXPECT_TRUE(LongInView(20, view.westMin, view.eastMin));
    EXPECT_TRUE(PointInView(10, -120, view.southMin, view.northMin, view.westMin, view.eastMin));
    for (const int longitude : {-179, -90, 0, 45, 179}) {
        const PixelAt p = Project(0, longitude * 60);
        EXPECT_EQ(p.x, mapView.rect.left + 180 + longitude);
        float lat = 0;
        float back = 0;
        UnprojectPoint(CurrentMap(), static_cast<float>(p.x), 100, lat, back);
        EXPECT_FLOAT_EQ(back, static_cast<float>(longitude));
    }
    EXPECT_EQ(Pending(), 0);
}

// The frame by the rule: twice the glyph's height, and twice one more than its width; one more of
// each with the extra annotation. 7 by 13 is the recording surface's glyph.
TEST_F(ProjectionTest, MapRectLeavesTheFrameForEdgeMarks) {
    SetView(-90, -180, 90, 180, projection::kCartesian);
    EXPECT_EQ(mapView.rect.left, 2 * 8 + 8 + 1);
    EXPECT_EQ(mapView.rect.top, 2 * 13 + 14 - 1);
    EXPECT_EQ(mapView.rect.width, kSurfaceWidth - 2 * 24 - 1);
    EXPECT_EQ(mapView.rect.height, kSurfaceHeight - 2 * 40 + 2);
    options.extraAnnotation = kFalse;
    SetMapRect(false, surface);
    EXPECT_EQ(mapView.rect.left, 17);
    EXPECT_EQ(mapView.rect.top, 25);
    EXPECT_EQ(mapView.rect.width, kSurfaceWidth - 33);
    EXPECT_EQ(mapView.rect.height, kSurfaceHeight - 50);
}

TEST_F(ProjectionTest, SurfaceTooSmallForAMapKeepsOneOfOnePixel) {
    RecordingSurface tiny(3, 2);
    SetView(-90, -180, 90, 180, projection::kCartesian);
    SetMapRect(false, tiny);
    EXPECT_EQ(mapView.rect.width, 1);
    EXPECT_EQ(mapView.rect.height, 1);
}

TEST_F(ProjectionTest, PrintedMapLeavesRoomForTheTitleAndALargerFrame) {
    RecordingSurface page(2000, 3000);
    SetView(-90, -180, 90, 180, projection::kCartesian);
    SetMapRect(true, page);
    // Strip 30, text height 13; frame 2 * 7 + 13 + 14 and 3 * 7 + 8.
    EXPECT_EQ(mapView.rect.left, 30 + 29 + 1);
    EXPECT_EQ(mapView.rect.top, 13 + 30 + 41 - 1);
    EXPECT_EQ(mapView.rect.width, 2000 - 60 - 58 - 1);
    EXPECT_EQ(mapView.rect.height, 3000 - 60 - 13 - 82 + 2);
    EXPECT_EQ(page.Calls("Rectangle"), std::vector<std::string>{"Rectangle 30 43 1970 2970 none"});
}

TEST_F(ProjectionTest, OutlineEnclosesTheClip) {
    SetView(-90, -180, 90, 180, projection::kCartesian);
    OpenMapFrame();
    ClipToMap();
    EXPECT_EQ(surface.log, (std::vector<std::string>{"Rectangle 25 39 386 220 none",
                                                     "ClipToRectangle 25 39 385 219"}));
}

TEST_F(ProjectionTest, SphereIsSquaredAboutTheMiddle) {
    SetView(0, -90, 0, 90, projection::kGlobeSphere);
    EXPECT_EQ(mapView.rect.left, 25 + 90);
    EXPECT_EQ(mapView.rect.width, 180);
    EXPECT_EQ(mapView.rect.height, 180);
    EXPECT_EQ(mapView.rect.top, 39);
}

// Half of an odd difference goes to the even pixel: half of 1 and of 3 are 0 and 2.
TEST_F(ProjectionTest, HalfAPixelOfAnOddDifferenceOfASphereGoesToTheEvenOne) {
    struct Row {
        int wider, taller, left, top;
    };
    const Row rows[] = {{1, 0, 0, 0}, {3, 0, 2, 0}, {5, 0, 2, 0}, {0, 1, 0, 0}, {0, 3, 0, 2}};
    for (const Row& row : rows) {
        // A map of 200 by 200 and what is more.
        RecordingSurface screen(249 + row.wider, 278 + row.taller);
        SetView(0, -90, 0, 90, projection::kGlobeSphere);
        SetMapRect(false, screen);
        OpenMapFrame();
        EXPECT_EQ(mapView.rect.width, 200);
        EXPECT_EQ(mapView.rect.height, 200);
        EXPECT_EQ(mapView.rect.left, 25 + row.left) << row.wider;
        EXPECT_EQ(mapView.rect.top, 39 + row.top) << row.taller;
    }
}

TEST_F(ProjectionTest, TallSphereIsMovedDown) {
    RecordingSurface tall(249, 478);
    SetView(0, -90, 0, 90, projection::kGlobeSphere);
    SetMapRect(false, tall);
    OpenMapFrame();
    EXPECT_EQ(mapView.rect.width, 200);
    EXPECT_EQ(mapView.rect.height, 200);
    EXPECT_EQ(mapView.rect.top, 39 + 100);
}

TEST_F(ProjectionTest, OblateGlobeFillsTheRectangle) {
    SetView(0, -90, 0, 90, projection::kGlobeOblate);
    OpenMapFrame();
    ClipToMap();
    EXPECT_EQ(surface.log, (std::vector<std::string>{"Ellipse 25 39 386 220 none",
                                                     "ClipToEllipse 25 39 386 220"}));
}

// At one pixel a degree the plate carree is plain counting from the top left.
TEST_F(ProjectionTest, CartesianWorldCountsDegreesFromItsTopLeft) {
    SetView(-90, -180, 90, 180, projection::kCartesian);
    struct Row {
        const char* what;
        int lat, longitude, x, y;
    };
    const Row rows[] = {
        {"origin", 0, 0, 180, 90},        {"north-west corner", 90, -180, 0, 0},
        {"south pole", -90, 0, 180, 180}, {"Greenwich", 51, 0, 180, 39},
        {"179 east", 0, 179, 359, 90},    {"180 east falls on the left edge again", 0, 180, 0, 90},
    };
    for (const Row& row : rows) {
        const PixelAt p = Project(row.lat * 60, row.longitude * 60);
        EXPECT_EQ(p.x, mapView.rect.left + row.x) << row.what;
        EXPECT_EQ(p.y, mapView.rect.top + row.y) << row.what;
    }
}

TEST_F(ProjectionTest, NarrowViewKeepsAPointUpToSixtyDegreesWestOnItsLeft) {
    SetView(-45, 0, 45, 90, projection::kCartesian);  // 4 pixels a degree
    EXPECT_EQ(Project(0, -1 * 60).x, mapView.rect.left - 4);
    EXPECT_EQ(Project(0, -60 * 60).x, mapView.rect.left - 240);
    EXPECT_EQ(Project(0, -61 * 60).x, mapView.rect.left + 299 * 4);
    EXPECT_EQ(Project(0, 91 * 60).x, mapView.rect.left + 91 * 4);
}

TEST_F(ProjectionTest, ViewOverTheDateLineShiftsLongitudesIntoIt) {
    SetView(-10, 170, 10, -170, projection::kCartesian);  // 18 pixels a degree
    EXPECT_EQ(Project(0, 175 * 60).x, mapView.rect.left + 5 * 18);
    EXPECT_EQ(Project(0, -175 * 60).x, mapView.rect.left + 15 * 18);
    EXPECT_EQ(Project(0, 10800).x, mapView.rect.left + 10 * 18);
    EXPECT_EQ(Project(0, -10800).x, mapView.rect.left + 10 * 18);
}

TEST_F(ProjectionTest, PointFarOutsideAZoomedViewIsHeldAtThirtyTwoThousand) {
    SetView(0, 0, 0.5F, 0.5F, projection::kCartesian);
    EXPECT_EQ(Project(5400, 0).y, -32000);
    EXPECT_EQ(Project(-5400, 0).y, 32000);
    EXPECT_EQ(Project(0, 100 * 60).x, 32000);
    EXPECT_EQ(Project(0, -50 * 60).x, -32000);
    EXPECT_EQ(Pending(), 0);
    SetView(0, 0, 0.5F, 0.5F, projection::kMercator);
    EXPECT_EQ(Project(5400, 0).y, -32000);
    EXPECT_EQ(Project(-5400, 0).y, 32000);
    EXPECT_EQ(Pending(), 0);
}

// Snyder, equation 7-2, in the form asinh(tan(lat)), which shares no step with the routine.
TEST_F(ProjectionTest, MercatorYAgreesWithTheInverseHyperbolicForm) {
    for (int quarter = -358; quarter < 360; ++quarter) {
        const double lat = quarter * 0.25;
        EXPECT_NEAR(MercatorY(lat), std::asinh(std::tan(lat * PI / 180)), 1e-11) << lat;
    }
}

TEST_F(ProjectionTest, MercatorOfTheSouthPoleIsMinusTen) {
    EXPECT_EQ(MercatorY(-90), -10);
    EXPECT_EQ(MercatorY(-90.1), -10);
}

// The pole goes to -10: (10 + asinh(tan 75)) / (asinh(tan 75) + asinh(tan 65)) of the height down.
TEST_F(ProjectionTest, SouthPoleOfAMercatorMapLiesTenBelowTheEquator) {
    SetView(-65, -180, 75, 180, projection::kMercator);
    EXPECT_EQ(Project(-5400, 0).y, mapView.rect.top + 613);
    EXPECT_EQ(Pending(), 0);
}

TEST_F(ProjectionTest, MercatorMapHasItsEdgesAtTopAndBottom) {
    SetView(-65, -180, 75, 180, projection::kMercator);
    EXPECT_EQ(Project(75 * 60, 0).y, mapView.rect.top);
    EXPECT_EQ(Project(-65 * 60, 0).y, mapView.rect.top + mapView.rect.height);
    // asinh(tan 75) = 2.02759, asinh(tan -65) = -1.50645: the equator is 0.57374 of the way down.
    EXPECT_EQ(Project(0, 0).y, mapView.rect.top + 103);
}

// Snyder, equations 20-3 and 20-4. The routine rounds the turned position to whole minutes, the
// test doesn't: on a globe of radius 90 pixels that is under 0.03 pixel.
TEST_F(ProjectionTest, GlobesAgreeWithTheOrthographicFormula) {
    for (const std::int16_t number : {projection::kGlobeSphere, projection::kGlobeOblate}) {
        for (const int centreLat : {0, 20, -45, 90}) {
            const float lat0 = static_cast<float>(centreLat);
            SetView(lat0, -60, lat0, 120, number);  // centred on 30 east
            const MapRect& rect = mapView.rect;
            for (int lat = -90; lat <= 90; lat += 6) {
                for (int longitude = -180; longitude < 180; longitude += 6) {
                    if (AngularDistance(static_cast<float>(longitude), static_cast<float>(lat), 30,
                                        lat0) >= 90) {
                        continue;
                    }
                    const double dl = longitude - 30;
                    const double right = CosD(lat) * SinD(dl);
                    const double up = CosD(lat0) * SinD(lat) - SinD(lat0) * CosD(lat) * CosD(dl);
                    const PixelAt p = Project(lat * 60, longitude * 60);
                    EXPECT_NEAR(p.x, rect.left + rect.width / 2.0 * (1 + right), 0.6)
                        << lat << ' ' << longitude << " from " << centreLat;
                    EXPECT_NEAR(p.y, rect.top + rect.height / 2.0 * (1 - up), 0.6)
                        << lat << ' ' << longitude << " from " << centreLat;
                }
            }
        }
    }
    EXPECT_EQ(Pending(), 0);
}

// The turned position is rounded to whole minutes by the library's arc functions here, and must be
// so there: on a globe this large a minute is four pixels. Centres between two minutes turn whole
// ones to just halfway between two.
TEST_F(ProjectionTest, TurnedPositionsOfAGlobeAreRoundedExactly) {
    const unsigned seed = 314;
    std::mt19937 random(seed);
    std::uniform_int_distribution<int> anyLat(-5400, 5400);
    std::uniform_int_distribution<int> anyLong(-10800, 10800);
    const auto sine = [](int minutes) { return SinD(Modulo(minutes, 21600) / 60.0); };
    int apart = 0;
    for (int n = 0; n < 60; ++n) {
        const auto halves = static_cast<float>(anyLat(random) / 120.0);
        const float centreLat = n == 0 ? 0 : n == 1 ? 90 : n == 2 ? -90 : n % 2 == 0 ? halves : 5;
        SetView(centreLat, -90, centreLat, 90, projection::kGlobeSphere);
        mapView.extent.centreLong = static_cast<float>(anyLong(random) / 90.0);
        mapView.rect = {0, 0, 30000, 30000};
        for (int i = 0; i < 5000; ++i) {
            const int lat = std::clamp(anyLat(random), -5399, 5399);
            const int longitude =
                i % 8 == 0 ? RoundToInt16(mapView.extent.centreLong * 60.0) : anyLong(random);
            const int l = RoundToInt16(longitude - mapView.extent.centreLong * 60.0);
            const double y0 = sine(lat + 5400) * sine(l + 5400);
            const double x0 = sine(lat + 5400) * sine(l + 10800);
            const double z = y0 * SinD(-centreLat) + sine(lat) * CosD(-centreLat);
            const double y = y0 * CosD(-centreLat) - sine(lat) * SinD(-centreLat);
            const double d = RadToDeg(std::asin(std::clamp(z, -1.0, 1.0)));
            const double a = Modulo(RadToDeg(std::atan2(y, x0)) - 90 + 180, 360) - 180;
            const int r = RoundToInt16(a * 60);
            const int p = RoundToInt16(d * 60);
            const PixelAt pixel = Project(lat, longitude);
            apart += pixel.x != RoundToInt16(15000 * (1 + sine(r) * sine(p + 5400))) ||
                             pixel.y != RoundToInt16(30000 * ((1 - sine(p)) / 2))
                         ? 1
                         : 0;
        }
    }
    EXPECT_EQ(apart, 0) << "seed " << seed;
}

TEST_F(ProjectionTest, PoleOfAGlobeGoesAsOneMinuteShortOfIt) {
    SetView(40, -90, 40, 90, projection::kGlobeSphere);
    EXPECT_EQ(Project(5400, 0).x, Project(5399, 0).x);
    EXPECT_EQ(Project(5400, 7000).y, Project(5399, 7000).y);
    EXPECT_EQ(Project(-5400, 0).y, Project(-5399, 0).y);
}

TEST_F(ProjectionTest, RotationOfTheEclipticGivesRightAscensionAndDeclination) {
    // Meeus, Astronomical Algorithms, example 13.a: Pollux.
    double a = 0;
    double d = 0;
    RotateCoords(113.215630, 6.684170, SinD(23.4392911), CosD(23.4392911), a, d);
    EXPECT_NEAR(a, 116.328942, 2e-6);
    EXPECT_NEAR(d, 28.026183, 2e-6);
}

// Projecting what a pixel stands for gives the pixel again, everywhere on the map.
TEST_F(ProjectionTest, UnprojectedPixelsProjectBackOntoThemselves) {
    struct Row {
        float south, west, north, east;
        std::int16_t projection;
    };
    const Row rows[] = {
        {-90, -180, 90, 180, projection::kCartesian}, {-65, -180, 75, 180, projection::kMercator},
        {-30, 40, 60, 140, projection::kCartesian},   {-20, 150, 40, -120, projection::kCartesian},
        {10, -30, 70, 50, projection::kMercator},     {-90, 20, 90, 20, projection::kCartesian},
    };
    for (const Row& row : rows) {
        SetView(row.south, row.west, row.north, row.east, row.projection);
        const MapRect& rect = mapView.rect;
        for (int y = rect.top + 1; y < rect.top + rect.height; y += 3) {
            for (int x = rect.left + 1; x < rect.left + rect.width; x += 3) {
                float lat = 0;
                float longitude = 0;
                UnprojectPoint(CurrentMap(), static_cast<float>(x), static_cast<float>(y), lat,
                               longitude);
                const PixelAt p = Project(RoundToInt16(lat * 60.0), RoundToInt16(longitude * 60.0));
                ASSERT_EQ(p.x, x) << row.west << ' ' << row.projection << ' ' << y;
                ASSERT_EQ(p.y, y) << row.west << ' ' << row.projection << ' ' << x;
            }
        }
    }
}

TEST_F(ProjectionTest, UnprojectingOffAFlatMapGivesItsEdges) {
    SetView(-30, 40, 60, 140, projection::kCartesian);
    float lat = 0;
    float longitude = 0;
    UnprojectPoint(CurrentMap(), 0, 0, lat, longitude);
    EXPECT_EQ(lat, 60);
    EXPECT_EQ(longitude, 40);
    UnprojectPoint(CurrentMap(), 5000, 5000, lat, longitude);
    EXPECT_EQ(lat, -30);
    EXPECT_EQ(longitude, 140);
}

TEST_F(ProjectionTest, UnprojectingAcrossTheDateLineStaysInRange) {
    SetView(-10, 170, 10, -170, projection::kCartesian);
    float lat = 0;
    float longitude = 0;
    UnprojectPoint(CurrentMap(), static_cast<float>(mapView.rect.left + 15 * 18), 100, lat,
                   longitude);
    EXPECT_FLOAT_EQ(longitude, -175);
}

// Within 70 degrees of the centre one pixel stays under two degrees.
TEST_F(ProjectionTest, UnprojectedPixelsOfAGlobeProjectBackOntoThemselves) {
    for (const std::int16_t number : {projection::kGlobeSphere, projection::kGlobeOblate}) {
        for (const float centreLat : {0.0F, 35.0F, -60.0F}) {
            SetView(centreLat, -80, centreLat, 100, number);  // centred on 10 east
            const MapRect& rect = mapView.rect;
            for (int down = -80; down <= 80; down += 8) {
                for (int right = -80; right <= 80; right += 8) {
                    if (right * right + down * down > 80 * 80) continue;
                    const int x = rect.left + rect.width / 2 + right * rect.width / 180;
                    const int y = rect.top + rect.height / 2 + down;
                    float lat = 0;
                    float longitude = 0;
                    UnprojectPoint(CurrentMap(), static_cast<float>(x), static_cast<float>(y), lat,
                                   longitude);
                    const PixelAt p =
                        Project(RoundToInt16(lat * 60.0), RoundToInt16(longitude * 60.0));
                    // A row's chord is rounded to whole pixels, which moves a point by up to one.
                    EXPECT_NEAR(p.x, x, 1) << centreLat << ' ' << right << ' ' << down;
                    EXPECT_NEAR(p.y, y, 1) << centreLat << ' ' << right << ' ' << down;
                }
            }
        }
    }
}

// Beside the disc a row gives its own latitude and the meridian opposite the view's; above and
// below it a column gives the latitude of the centre.
TEST_F(ProjectionTest, UnprojectingOffTheDiscOfAGlobeGivesAPlaceAllTheSame) {
    SetView(0, -90, 0, 90, projection::kGlobeSphere);
    const MapRect& rect = mapView.rect;
    struct Row {
        const char* what;
        int x, y;
        double lat, longitude;
    };
    const Row rows[] = {
        {"left of it", rect.left - 50, rect.top + 90, 0, 180},
        {"right of it", rect.left + 300, rect.top + 90, 0, 180},
        // asin(1 - 2 * 45 / 180) = 30; its chord begins 12 pixels from the left.
        {"in the corner of its square", rect.left + 5, rect.top + 45, 30, 180},
        {"above it", rect.left + 90, rect.top - 20, 0, 0},
        // asin(2 * 135 / 180 - 1) = 30
        {"below it", rect.left + 135, rect.top + 200, 0, 30},
    };
    for (const Row& row : rows) {
        float lat = 0;
        float longitude = 0;
        UnprojectPoint(CurrentMap(), static_cast<float>(row.x), static_cast<float>(row.y), lat,
                       longitude);
        EXPECT_NEAR(lat, row.lat, 1e-5) << row.what;
        EXPECT_NEAR(std::abs(longitude), row.longitude, 1e-5) << row.what;
    }
    EXPECT_EQ(Pending(), 0);
}

TEST_F(ProjectionTest, LongitudeInViewIsStrictAndKnowsTheDateLine) {
    struct Row {
        double longitude;
        std::int16_t west, east;
        bool seen;
    };
    const Row rows[] = {
        {10, 600, 1200, false},     {10.02, 600, 1200, true},    {20, 600, 1200, false},
        {175, 10200, -10200, true}, {-175, 10200, -10200, true}, {170, 10200, -10200, false},
        {0, 10200, -10200, false},  {123, 777, 777, true},       {10.004, 600, 1200, false},
    };
    for (const Row& row : rows) {
        EXPECT_EQ(LongInView(row.longitude, row.west, row.east), row.seen) << row.longitude;
    }
}

TEST_F(ProjectionTest, PointInViewIsStrictInLatitude) {
    SetView(-10, 0, 10, 20, projection::kCartesian);
    EXPECT_TRUE(PointInView(9.99, 10, -600, 600, 0, 1200));
    EXPECT_FALSE(PointInView(10, 10, -600, 600, 0, 1200));
    EXPECT_FALSE(PointInView(-10, 10, -600, 600, 0, 1200));
    EXPECT_FALSE(PointInView(0, 30, -600, 600, 0, 1200));
}

TEST_F(ProjectionTest, PointInViewOfAGlobeLiesOnItsNearSide) {
    SetView(0, -90, 0, 90, projection::kGlobeSphere);
    EXPECT_TRUE(PointInView(0, 89, 0, 0, 0, 0));
    EXPECT_FALSE(PointInView(0, 91, 0, 0, 0, 0));
    EXPECT_TRUE(PointInView(89, 0, 0, 0, 0, 0));
}

TEST_F(ProjectionTest, ChangeOfProjectionRewritesTheEdges) {
    struct Edges {
        float south, west, north, east;
    };
    struct Row {
        const char* what;
        Edges before;
        std::int16_t from, to;
        Edges after;
    };
    const Row rows[] = {
        {"Mercator world to Cartesian", {-65, -180, 75, 180}, 1, 0, {-90, -180, 90, 180}},
        {"Cartesian world to Mercator", {-90, -180, 90, 180}, 0, 1, {-65, -180, 75, 180}},
        {"narrow Mercator to Cartesian", {0, 0, 20, 80}, 1, 0, {-10, 0, 30, 80}},
        {"narrow Cartesian to Mercator", {0, 0, 20, 80}, 0, 1, {-10, 0, 30, 80}},
        {"held below the north pole", {70, 0, 90, 80}, 0, 1, {50, 0, 90, 80}},
        {"held above the south pole", {-90, 0, -70, 80}, 0, 1, {-90, 0, -50, 80}},
        {"globe to Cartesian", {20, -60, 20, 120}, 2, 0, {-90, -150, 90, -150}},
        {"globe to Mercator", {20, -60, 20, 120}, 3, 1, {-65, -150, 75, -150}},
        {"Cartesian to globe", {0, 0, 20, 80}, 0, 2, {10, -50, 10, 130}},
        {"globe over the date line", {0, 150, 20, -170}, 0, 3, {10, 80, 10, -100}},
        {"sphere to oblate", {20, -60, 20, 120}, 2, 3, {20, -60, 20, 120}},
        {"to the same", {1, 2, 3, 4}, 0, 0, {1, 2, 3, 4}},
    };
    for (const Row& row : rows) {
        SetView(row.before.south, row.before.west, row.before.north, row.before.east, row.from);
        ChangeProjection(row.to, row.from);
        const MapDocument& map = CurrentMap();
        EXPECT_EQ(map.south, row.after.south) << row.what;
        EXPECT_EQ(map.west, row.after.west) << row.what;
        EXPECT_EQ(map.north, row.after.north) << row.what;
        EXPECT_EQ(map.east, row.after.east) << row.what;
    }
}

// J. P. Snyder, Map Projections: A Working Manual, the numerical examples of the sphere: Mercator
// (page 266) and orthographic (page 311), both for a radius of 1, to seven decimals.
TEST_F(ProjectionTest, NumericalExamplesOfThePublishedFormulasComeOut) {
    // 35 north, 75 west from a central meridian at 180 west.
    EXPECT_NEAR(MercatorY(35), 0.6528366, 5e-8);

    // A globe of 2000 pixels radius, centred on 40 north, 100 west: 30 north, 110 west lies at
    // x = -0.1503837, y = -0.1651911. Half a pixel, and half a minute of arc of the rotation.
    RecordingSurface large(4049, 4078);
    SetView(40, 170, 40, -10, projection::kGlobeOblate);
    SetMapRect(false, large);
    ASSERT_EQ(mapView.rect.width, 4000);
    ASSERT_EQ(mapView.rect.height, 4000);
    const PixelAt p = Project(30 * 60, -110 * 60);
    EXPECT_NEAR(p.x, mapView.rect.left + 2000 - 300.77, 0.8);
    EXPECT_NEAR(p.y, mapView.rect.top + 2000 + 330.38, 0.8);
}

// Snyder, equations 12-1 and 12-2 with the equator as standard parallel, and 7-1: both flat maps
// count longitudes evenly.
TEST_F(ProjectionTest, FlatMapsCountLongitudesEvenlyFromTheirWesternEdge) {
    for (const std::int16_t number : {projection::kCartesian, projection::kMercator}) {
        SetView(-60, -30, 60, 150, number);
        for (int longitude = -30; longitude <= 150; ++longitude) {
            EXPECT_EQ(Project(0, longitude * 60).x, mapView.rect.left + 2 * (longitude + 30));
        }
    }
}

TEST_F(ProjectionTest, ViewOfExactlyHalfACircleIsNoFullWidthView) {
    SetView(-90, -90, 90, 90, projection::kCartesian);
    EXPECT_EQ(mapView.extent.spanLong, 180);
    EXPECT_EQ(mapView.extent.spanLat, 180);
    EXPECT_EQ(mapView.extent.centreLong, 0);
    EXPECT_EQ(Project(0, -90 * 60).x, mapView.rect.left);
    EXPECT_EQ(Project(0, 90 * 60).x, mapView.rect.left + mapView.rect.width);
    EXPECT_EQ(Project(0, -150 * 60).x, mapView.rect.left - 120);  // 60 degrees west, to the left
    EXPECT_EQ(Project(0, -151 * 60).x, mapView.rect.left + 598);  // any farther, to the right
    SetView(-90, 90, 90, -90, projection::kCartesian);
    EXPECT_EQ(mapView.extent.centreLong, -180);
    EXPECT_EQ(Project(0, 10800).x, mapView.rect.left + mapView.rect.width / 2);
    EXPECT_EQ(Project(0, -10800).x, mapView.rect.left + mapView.rect.width / 2);
}

TEST_F(ProjectionTest, FullCircleFromAnyWestHoldsEveryLongitude) {
    for (const float west : {-180.0F, -179.5F, -30.0F, 0.0F, 30.0F, 180.0F}) {
        SetView(-90, west, 90, west, projection::kCartesian);
        EXPECT_EQ(mapView.extent.spanLongMin, 21600);
        for (int minute = -10800; minute <= 10800; ++minute) {
            const int x = Project(0, minute).x - mapView.rect.left;
            ASSERT_GE(x, 0) << west << ' ' << minute;
            ASSERT_LE(x, mapView.rect.width) << west << ' ' << minute;
        }
    }
}

// A minute of arc goes to its nearest pixel, and the pixel's own position lies within half a pixel
// of it, in every flat view: on a map on which a pixel is several minutes as well as on one on
// which a minute is several pixels.
TEST_F(ProjectionTest, FlatPositionsComeBackWithinHalfAPixel) {
    struct Row {
        float south, west, north, east;
        std::int16_t projection;
    };
    const Row rows[] = {
        {-90, -180, 90, 180, projection::kCartesian},  {-90, 45, 90, 45, projection::kCartesian},
        {-90, -90, 90, 90, projection::kCartesian},    {-90, 90, 90, -90, projection::kCartesian},
        {35, -12, 65, 40, projection::kCartesian},     {10, 120, 60, -150, projection::kCartesian},
        {-90, -180, -60, 180, projection::kCartesian}, {51, -1, 52, 0, projection::kCartesian},
        {-65, -180, 75, 180, projection::kMercator},   {35, -12, 65, 40, projection::kMercator},
        {-20, 150, 40, -120, projection::kMercator},   {51, -1, 52, 0, projection::kMercator},
        {-89, 10, -80, 40, projection::kMercator},
    };
    RecordingSurface screen(1920, 1080);
    for (const Row& row : rows) {
        SetView(row.south, row.west, row.north, row.east, row.projection);
        SetMapRect(false, screen);
        const ViewExtent& view = mapView.extent;
        const double pixelLong = view.spanLong / mapView.rect.width;
        const bool mercator = row.projection == projection::kMercator;
        const double pixelUp = (mercator ? view.mercSpan : view.spanLat) / mapView.rect.height;
        for (int i = 0; i <= 150; ++i) {
            const int latMin = view.southMin + view.spanLatMin * i / 150;
            for (int j = 0; j < 200; ++j) {
                const int along = view.westMin + view.spanLongMin * j / 200;
                const int longMin = along > 10800 ? along - 21600 : along;
                const PixelAt p = Project(latMin, longMin);
                float lat = 0;
                float longitude = 0;
                UnprojectPoint(CurrentMap(), static_cast<float>(p.x), static_cast<float>(p.y), lat,
                               longitude);
                const double east = Modulo(longitude - longMin / 60.0 + 180, 360) - 180;
                const double up =
                    mercator ? MercatorY(lat) - MercatorY(latMin / 60.0) : lat - latMin / 60.0;
                ASSERT_LE(std::abs(east), 0.501 * pixelLong) << row.west << ' ' << longMin;
                ASSERT_LE(std::abs(up), 0.501 * pixelUp) << row.south << ' ' << latMin;
            }
        }
    }
    EXPECT_EQ(Pending(), 0);
}

// On a globe a row's chord is rounded to a whole number of pixels and so is its start: together
// they move a position along its row by up to three quarters of a pixel, which is all that is lost.
// The place that a pixel stands for is put through Snyder's equations 20-3 and 20-4, without
// rounding.
TEST_F(ProjectionTest, PixelsOfAGlobeStandForPlacesWithinThreeQuartersOfAPixel) {
    RecordingSurface screen(1920, 1080);
    for (const std::int16_t number : {projection::kGlobeSphere, projection::kGlobeOblate}) {
        for (const float centreLat : {0.0F, 35.0F, -60.0F, 90.0F, -90.0F, 89.5F, -0.5F}) {
            for (const float centreLong : {0.0F, 10.0F, -180.0F, 120.0F}) {
                const auto edge = [&](float turn) {
                    return static_cast<float>(Modulo(centreLong + turn + 180, 360) - 180);
                };
                SetView(centreLat, edge(-90), centreLat, edge(90), number);
                SetMapRect(false, screen);
                OpenMapFrame();
                const MapRect& rect = mapView.rect;
                ASSERT_EQ(mapView.extent.centreLong, centreLong);
                for (int y = rect.top + 1; y < rect.top + rect.height; y += 7) {
                    const double up = 1 - 2.0 * (y - rect.top) / rect.height;
                    const double half = rect.width / 2.0 * std::sqrt(1 - up * up) - 1;
                    for (int x = rect.left; x <= rect.left + rect.width; x += 11) {
                        const double right = x - rect.left - rect.width / 2.0;
                        if (std::abs(right) >= half) continue;
                        float lat = 0;
                        float longitude = 0;
                        UnprojectPoint(CurrentMap(), static_cast<float>(x), static_cast<float>(y),
                                       lat, longitude);
                        const double dl = static_cast<double>(longitude) - centreLong;
                        const double exactUp =
                            CosD(centreLat) * SinD(lat) - SinD(centreLat) * CosD(lat) * CosD(dl);
                        ASSERT_NEAR(rect.width / 2.0 * CosD(lat) * SinD(dl), right, 0.76)
                            << centreLat << ' ' << centreLong << ' ' << x << ' ' << y;
                        ASSERT_NEAR(exactUp * rect.height, up * rect.height, 0.01)
                            << centreLat << ' ' << centreLong << ' ' << x << ' ' << y;
                    }
                }
            }
        }
    }
    EXPECT_EQ(Pending(), 0);
}

// And the way there: a place of the near side lands within half a pixel of where it lies, and what
// half a minute of arc makes of it, to which the turned position is rounded.
TEST_F(ProjectionTest, PlacesOnAGlobeLandWithinHalfAPixelAndHalfAMinute) {
    RecordingSurface screen(1920, 1080);
    for (const std::int16_t number : {projection::kGlobeSphere, projection::kGlobeOblate}) {
        for (const float centreLat : {0.0F, 35.0F, -60.0F, 90.0F, -90.0F}) {
            SetView(centreLat, 100, centreLat, -80, number);  // centred on 170 west
            SetMapRect(false, screen);
            OpenMapFrame();
            const MapRect& rect = mapView.rect;
            const double minute = 0.5 * DegToRad / 60;
            for (int lat = -89; lat <= 89; lat += 2) {
                for (int longitude = -180; longitude < 180; longitude += 3) {
                    if (!PointInView(lat, longitude, 0, 0, 0, 0)) continue;
                    const double dl = longitude + 170;
                    const double right = CosD(lat) * SinD(dl);
                    const double up =
                        CosD(centreLat) * SinD(lat) - SinD(centreLat) * CosD(lat) * CosD(dl);
                    const PixelAt p = Project(lat * 60, longitude * 60);
                    EXPECT_NEAR(p.x, rect.left + rect.width / 2.0 * (1 + right),
                                0.5 + rect.width * minute)
                        << centreLat << ' ' << lat << ' ' << longitude;
                    EXPECT_NEAR(p.y, rect.top + rect.height / 2.0 * (1 - up),
                                0.5 + rect.height * minute / 2)
                        << centreLat << ' ' << lat << ' ' << longitude;
                }
            }
        }
    }
}

TEST_F(ProjectionTest, PoleThatAGlobeIsCentredOnIsItsMiddle) {
    for (const float centreLat : {90.0F, -90.0F}) {
        SetView(centreLat, -90, centreLat, 90, projection::kGlobeSphere);
        for (const int longitude : {-180, -90, 0, 90, 180}) {
            const PixelAt p = Project(static_cast<int>(centreLat) * 60, longitude * 60);
            EXPECT_NEAR(p.x, mapView.rect.left + mapView.rect.width / 2.0, 1) << longitude;
            EXPECT_NEAR(p.y, mapView.rect.top + mapView.rect.height / 2.0, 1) << longitude;
        }
        EXPECT_FALSE(PointInView(-centreLat / 2, 0, 0, 0, 0, 0));
    }
}

// Any new projection from any old one: what the edges become is a view that plots.
TEST_F(ProjectionTest, EveryChangeOfProjectionLeavesAViewThatCanBeSetUp) {
    const float edges[][4] = {{-90, -180, 90, 180}, {-90, 30, 90, 30},  {35, -12, 65, 40},
                              {10, 120, 60, -150},  {-90, 0, -70, 170}, {80, -5, 90, 5},
                              {-90, -90, 90, 90}};
    for (const auto& edge : edges) {
        for (std::int16_t from = 0; from < 4; ++from) {
            for (std::int16_t to = 0; to < 4; ++to) {
                const bool fromGlobe = from >= 2;
                SetView(edge[0], fromGlobe ? -100.0F : edge[1], fromGlobe ? edge[0] : edge[2],
                        fromGlobe ? 80.0F : edge[3], from);
                ChangeProjection(to, from);
                CurrentMap().projection = to;
                SetViewExtent();
                EXPECT_EQ(Pending(), 0) << from << " to " << to;
                const MapDocument& map = CurrentMap();
                EXPECT_GE(map.south, -90);
                EXPECT_LE(map.north, 90);
                if (to < 2) continue;
                EXPECT_EQ(map.south, map.north);
                EXPECT_EQ(std::abs(map.east - map.west), 180) << from << " to " << to;
            }
        }
    }
}

// Whatever a file says, a position is a position or a run-time error, never worse.
TEST_F(ProjectionTest, AnyPositionInAnyViewProjects) {
    const unsigned seed = 20261121;
    std::mt19937 random(seed);
    std::uniform_int_distribution<int> word(-32768, 32767);
    std::uniform_real_distribution<float> edge(-600, 600);
    for (int view = 0; view < 400; ++view) {
        SetView(edge(random), edge(random), edge(random), edge(random),
                static_cast<std::int16_t>(view % 4));
        Pending();
        for (int n = 0; n < 100; ++n) {
            const PixelAt p = Project(word(random), word(random));
            const bool held = std::abs(p.x) <= 32767 && std::abs(p.y) <= 32767;
            EXPECT_TRUE(held || Pending() != 0) << "seed " << seed;
        }
        Pending();
    }
}

}  // namespace
}  // namespace orvantis

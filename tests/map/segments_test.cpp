#include <algorithm>
#include <cmath>
#include <random>
#include <sstream>

#include "map/map_fixture.h"
#include "text/numbers.h"

namespace orvantis {
namespace {

using Log = std::vector<std::string>;

class SegmentsTest : public MapTest {
  protected:
    // Draws a curve through samples of latitude and longitude and returns what was drawn.
    Log Draw(const std::vector<std::pair<double, double>>& samples, std::int16_t kind = kNoMark,
             std::int16_t type = 0) {
        surface.log.clear();
        mapView.edgeMarks.clear();
        bool visible = false;
        bool first = true;
        for (const auto& [lat, longitude] : samples) {
            DrawMapSegment(lat, longitude, first, visible, kind, type);
            first = false;
        }
        return surface.log;
    }

    // Marks as text: "side x y kind type".
    static Log Marks() {
        Log marks;
        for (const EdgeMark& mark : mapView.edgeMarks) {
            std::ostringstream text;
            text << mark.side << ' ' << mark.x << ' ' << mark.y << ' ' << mark.kind << ' '
                 << mark.type;
            marks.push_back(text.str());
        }
        return marks;
    }
};

// The whole world: one pixel a degree, the top left at (25, 39).
TEST_F(SegmentsTest, CurveWithinTheWorldIsOnePolyline) {
    SetView(-90, -180, 90, 180, projection::kCartesian);
    EXPECT_EQ(Draw({{0, 0}, {10, 20}, {20, 60}}),
              (Log{"MoveTo 205 129", "LineTo 225 119", "LineTo 265 109"}));
}

TEST_F(SegmentsTest, CurveOverTheDateLineGoesOutAtOneSideAndInAtTheOther) {
    SetView(-90, -180, 90, 180, projection::kCartesian);
    EXPECT_EQ(Draw({{0, 170}, {10, -170}}, 3, 1),
              (Log{"MoveTo 375 129", "LineTo 395 119", "MoveTo 15 129", "LineTo 35 119"}));
    // Both crossings lie halfway between the rows 129 and 119.
    EXPECT_EQ(Marks(), (Log{"2 385 124 3 1", "1 25 124 3 1"}));
}

TEST_F(SegmentsTest, CurveOverTheDateLineWestwardGoesOutAtTheLeft) {
    SetView(-90, -180, 90, 180, projection::kCartesian);
    EXPECT_EQ(Draw({{0, -170}, {10, 170}}),
              (Log{"MoveTo 35 129", "LineTo 15 119", "MoveTo 395 129", "LineTo 375 119"}));
    EXPECT_EQ(Marks(), Log{});
}

TEST_F(SegmentsTest, WrapIsMarkedWhereItGoesOutAndWhereItComesIn) {
    SetView(-90, -180, 90, 180, projection::kCartesian);
    // A quarter and three quarters of the way, which the two crossings share.
    Draw({{0, -175}, {20, 165}}, 3, 1);
    EXPECT_EQ(Marks(), (Log{"1 25 124 3 1", "2 385 124 3 1"}));
    Draw({{0, 165}, {20, -175}}, 3, 1);
    EXPECT_EQ(Marks(), (Log{"2 385 114 3 1", "1 25 114 3 1"}));
}

// asinh(tan) of 80, 75, 70 and -65 degrees: 2.43625, 2.02759, 1.73542 and -1.50645, on 180 rows.
TEST_F(SegmentsTest, CurveThatComesIntoViewOverTheDateLineStartsAtTheSampleBefore) {
    SetView(-65, -180, 75, 180, projection::kMercator);
    surface.MoveTo(111, 111);
    EXPECT_EQ(Draw({{85, 160}, {80, 170}, {70, -170}}),
              (Log{"MoveTo 375 18", "LineTo 395 54", "MoveTo 15 18", "LineTo 35 54"}));
}

TEST_F(SegmentsTest, SampleOnTheNorthernOrSouthernEdgeIsInView) {
    SetView(-45, 0, 45, 90, projection::kCartesian);
    EXPECT_EQ(Draw({{45, 40}, {45, 50}}), (Log{"MoveTo 185 39", "LineTo 225 39"}));
    EXPECT_EQ(Draw({{-45, 40}, {-45, 50}}), (Log{"MoveTo 185 219", "LineTo 225 219"}));
    EXPECT_EQ(Draw({{45.001, 40}, {45.001, 50}}), Log{});
    EXPECT_EQ(Draw({{-45.001, 40}, {-45.001, 50}}), Log{});
}

TEST_F(SegmentsTest, PenLeavesByTheRightFromNearTheLeftEdge) {
    SetView(-90, -180, 90, 180, projection::kCartesian);
    ForceNewLine(26, 129, 380, 129, kNoMark, 0);
    EXPECT_EQ(surface.log, (Log{"LineTo 386 129", "MoveTo 20 129", "LineTo 26 129"}));
}

// Half of the width is counted without the map's left: column 200 of a map from 25 to 385 lies in
// its left half, and goes out to the left all the same.
TEST_F(SegmentsTest, NearerSideIsJudgedWithoutRegardToTheMapsLeft) {
    SetView(-90, -180, 90, 180, projection::kCartesian);
    ForceNewLine(200, 129, 26, 129, kNoMark, 0);
    EXPECT_EQ(surface.log, (Log{"LineTo -160 129", "MoveTo 386 129", "LineTo 200 129"}));
}

// 180 is half of the width, and so on neither side: the pen doesn't leave at all.
TEST_F(SegmentsTest, PointOnTheVeryMiddleIsOnNeitherSide) {
    SetView(-90, -180, 90, 180, projection::kCartesian);
    ForceNewLine(180, 129, 380, 119, kNoMark, 0);
    EXPECT_EQ(surface.log, (Log{"LineTo 180 129", "MoveTo 20 119", "LineTo 180 129"}));
    surface.log.clear();
    ForceNewLine(380, 129, 180, 119, kNoMark, 0);
    EXPECT_EQ(surface.log, (Log{"LineTo 20 129", "MoveTo 180 119", "LineTo 380 129"}));
}

TEST_F(SegmentsTest, SegmentOfHalfTheMapsWidthIsDrawnStraight) {
    SetView(-90, -180, 90, 180, projection::kCartesian);
    EXPECT_EQ(Draw({{0, -90}, {0, 90}}), (Log{"MoveTo 115 129", "LineTo 295 129"}));
    EXPECT_EQ(Draw({{0, -90}, {0, 91}}).size(), 4U);
}

// 4 pixels a degree, 0 to 90 east, 45 south to 45 north... of which 2 pixels a degree in latitude.
TEST_F(SegmentsTest, CurveThatLeavesANarrowViewIsDrawnAcrossTheEdgeAndMarkedThere) {
    SetView(-45, 0, 45, 90, projection::kCartesian);
    EXPECT_EQ(Draw({{0, 80}, {10, 100}, {20, 120}}, 5, 3),
              (Log{"MoveTo 345 129", "LineTo 425 109"}));
    EXPECT_EQ(Marks(), Log{"2 385 119 5 3"});
}

TEST_F(SegmentsTest, CurveThatEntersANarrowViewStartsAtTheSampleBefore) {
    SetView(-45, 0, 45, 90, projection::kCartesian);
    EXPECT_EQ(Draw({{0, -20}, {0, -10}, {0, 10}, {0, 20}}, 5, 3),
              (Log{"MoveTo -15 129", "LineTo 65 129", "LineTo 105 129"}));
    EXPECT_EQ(Marks(), Log{"1 25 129 5 3"});
}

TEST_F(SegmentsTest, CurveThatLeavesOverTheTopIsMarkedThere) {
    SetView(-45, 0, 45, 90, projection::kCartesian);
    Draw({{40, 40}, {50, 50}}, 7, 4);
    EXPECT_EQ(Marks(), Log{"3 205 39 7 4"});
    Draw({{-40, 40}, {-50, 50}}, 7, 4);
    EXPECT_EQ(Marks(), Log{"4 205 219 7 4"});
}

TEST_F(SegmentsTest, CurveOutsideTheViewDrawsNothing) {
    SetView(-45, 0, 45, 90, projection::kCartesian);
    EXPECT_EQ(Draw({{0, 100}, {0, 110}, {0, 120}}, 5, 3), Log{});
    EXPECT_EQ(Marks(), Log{});
}

TEST_F(SegmentsTest, NoMarkIsAddedWhereNoneIsAskedFor) {
    SetView(-45, 0, 45, 90, projection::kCartesian);
    Draw({{0, 80}, {10, 100}}, kNoMark, 3);
    EXPECT_EQ(Marks(), Log{});
    Draw({{0, 80}, {10, 100}}, 3, 0);
    EXPECT_EQ(Marks(), Log{});
    Draw({{0, 80}, {10, 100}}, 0, 1);
    EXPECT_EQ(Marks().size(), 1U) << "kind 0 is a kind";
}

TEST_F(SegmentsTest, CurveOnAGlobeIsDrawnOnItsNearSideAlone) {
    SetView(0, -90, 0, 90, projection::kGlobeSphere);
    // Up to the sample beyond the limb, which folds back onto the near side.
    EXPECT_EQ(Draw({{0, 0}, {0, 60}, {0, 89}, {0, 120}, {0, 150}}, 1, 1),
              (Log{"MoveTo 205 129", "LineTo 283 129", "LineTo 295 129", "LineTo 283 129"}));
    EXPECT_EQ(Marks(), Log{"2 289 129 1 1"});
}

// Great circles at random, as the lines of a chart draw them: in a whole-world view no segment
// is longer than half of the map, but for its way out at an edge.
TEST_F(SegmentsTest, NoSegmentOfACircleLeapsAcrossTheWorld) {
    const unsigned seed = 4711;
    std::mt19937 random(seed);
    std::uniform_real_distribution<double> angle(-180, 180);
    for (const std::int16_t number : {projection::kCartesian, projection::kMercator}) {
        for (int circle = 0; circle < 300; ++circle) {
            const float west = static_cast<float>(std::round(angle(random)));
            SetView(-90, west, 90, west, number);
            const double tilt = angle(random);
            const double node = angle(random);
            std::vector<std::pair<double, double>> samples;
            for (int u = 0; u <= 360; u += 2) {
                const double longitude = RadToDeg(ArcTan2(CosD(u), CosD(tilt) * SinD(u)));
                const double lat = RadToDeg(ArcSin(SinD(tilt) * SinD(u)));
                samples.emplace_back(lat, Modulo(longitude + node + 180, 360) - 180);
            }
            int lastX = 0;
            for (const std::string& call : Draw(samples)) {
                std::istringstream text(call);
                std::string word;
                int x = 0;
                text >> word >> x;
                if (word == "LineTo") {
                    ASSERT_LE(std::abs(x - lastX), mapView.rect.width / 2 + mapView.rect.left)
                        << "seed " << seed << " circle " << circle << " tilt " << tilt;
                }
                lastX = x;
            }
        }
    }
}

// All but two degrees of the world on 360 pixels, so a turn is 362: the pen leaves at the right,
// comes in at the left, and each end that is in view has its mark.
TEST_F(SegmentsTest, CurveAroundTheBackOfAWideViewGoesOutAtOneSideAndInAtTheOther) {
    SetView(-90, -179, 90, 179, projection::kCartesian);
    EXPECT_EQ(Draw({{0, 170}, {10, -170}}, 3, 1),
              (Log{"MoveTo 376 129", "LineTo 396 119", "MoveTo 14 129", "LineTo 34 119"}));
    EXPECT_EQ(Marks(), (Log{"2 385 124 3 1", "1 25 124 3 1"}));
    EXPECT_EQ(Draw({{0, -170}, {10, 170}}),
              (Log{"MoveTo 34 129", "LineTo 14 119", "MoveTo 396 129", "LineTo 376 119"}));
}

TEST_F(SegmentsTest, EndOutsideAWideViewHasNoMarkOfItsOwn) {
    SetView(-90, -175, 90, 175, projection::kCartesian);
    Draw({{0, 170}, {0, -177}}, 3, 1);
    EXPECT_EQ(Marks(), Log{"2 385 129 3 1"});
    Draw({{0, -177}, {0, 170}}, 3, 1);
    EXPECT_EQ(Marks(), Log{"2 385 129 3 1"});
    Draw({{0, 177}, {0, -170}}, 3, 1);
    EXPECT_EQ(Marks(), Log{"1 25 129 3 1"});
}

// Less than half a minute is left out: positions are those of the whole world.
TEST_F(SegmentsTest, ViewOfAllButATinyPartOfTheWorldWrapsLikeTheWholeOne) {
    SetView(-90, -180, 90, 179.995F, projection::kCartesian);
    ASSERT_EQ(mapView.extent.spanLongMin, 21600);
    EXPECT_EQ(Draw({{0, 170}, {10, -170}}),
              (Log{"MoveTo 375 129", "LineTo 395 119", "MoveTo 15 129", "LineTo 35 119"}));
}

TEST_F(SegmentsTest, ZoomedViewHasNoWayAround) {
    SetView(-5, 0, 5, 4, projection::kCartesian);  // a turn takes 32400 pixels
    EXPECT_EQ(PixelsAround(), 0);
    SetView(-5, 0, 5, 5, projection::kCartesian);
    EXPECT_EQ(PixelsAround(), 25920);
    SetView(-90, -180, 90, 180, projection::kCartesian);
    EXPECT_EQ(PixelsAround(), 0) << "the whole world has its own rule";
    SetView(0, -90, 0, 90, projection::kGlobeSphere);
    EXPECT_EQ(PixelsAround(), 0);
}

// One random great circle, sampled as the lines of a chart are.
std::vector<std::pair<double, double>> Circle(std::mt19937& random) {
    std::uniform_real_distribution<double> angle(-180, 180);
    const double tilt = angle(random);
    const double node = angle(random);
    std::vector<std::pair<double, double>> samples;
    for (int u = 0; u <= 360; u += 2) {
        const double longitude = RadToDeg(ArcTan2(CosD(u), CosD(tilt) * SinD(u)));
        const double lat = RadToDeg(ArcSin(SinD(tilt) * SinD(u)));
        samples.emplace_back(lat, Modulo(longitude + node + 180, 360) - 180);
    }
    return samples;
}

// Whatever the view, every piece that is drawn is as long across as the way between its samples is,
// the short way round: rounded to minutes and pixels at both ends.
TEST_F(SegmentsTest, NoSegmentOfACircleLeapsAcrossAViewOfAPart) {
    const unsigned seed = 1618;
    std::mt19937 random(seed);
    std::uniform_real_distribution<float> edge(-180, 180);
    std::uniform_real_distribution<float> width(200, 360);
    int drawn = 0;
    for (int n = 0; n < 400; ++n) {
        const float span = n % 10 == 0 ? 359.995F : n % 10 == 1 ? 240.5F : width(random);
        const float west = std::round(edge(random));
        const float east = static_cast<float>(Modulo(west + span + 180, 360) - 180);
        const float south = n % 3 == 0 ? -85 : n % 3 == 1 ? -90 : 20;
        const bool mercator = n % 2 == 1;
        SetView(mercator ? -85 : south, west, mercator ? 85 : 90, east,
                mercator ? projection::kMercator : projection::kCartesian);
        const double scale = mapView.rect.width / static_cast<double>(mapView.extent.spanLong);
        bool visible = false;
        double before = 0;
        bool first = true;
        int penX = 0;
        for (const auto& [lat, longitude] : Circle(random)) {
            surface.log.clear();
            DrawMapSegment(lat, longitude, first, visible, kNoMark, 0);
            const double across = std::abs(Modulo(longitude - before + 180, 360) - 180) * scale;
            for (const std::string& call : surface.log) {
                std::istringstream text(call);
                std::string word;
                int x = 0;
                text >> word >> x;
                if (word == "LineTo") {
                    ++drawn;
                    ASSERT_NEAR(std::abs(x - penX), across, 2 + scale / 30)
                        << "seed " << seed << " view " << n << ": " << west << ' ' << span << ' '
                        << lat << ' ' << longitude;
                }
                penX = x;
            }
            before = longitude;
            first = false;
        }
    }
    EXPECT_GT(drawn, 20000);
}

// The centre's antipode lies behind the globe like all that is around it, though AngularDistance
// takes it for the centre.
TEST_F(SegmentsTest, AntipodeOfAGlobesCentreIsNotSeen) {
    for (const int lat : {0, 10, 20, 30, 45, 60, 89, 90}) {
        const auto centre = static_cast<float>(lat);
        for (const std::int16_t number : {projection::kGlobeSphere, projection::kGlobeOblate}) {
            SetView(centre, -90, centre, 90, number);
            EXPECT_EQ(Draw({{-lat, 176}, {-lat, 178}, {-lat, 180}, {-lat, -178}}, 3, 1), Log{});
            EXPECT_EQ(Marks(), Log{});
            EXPECT_EQ(Draw({{-lat, -180}, {-lat, -179}}), Log{});
            EXPECT_EQ(Draw({{lat, 0}, {lat, 1}}).size(), 2U) << lat << " the centre itself";
        }
    }
}

TEST(EdgeCrossingTest, FlatEdgesAreFoundSideFirst) {
    ResetAll();
    mapView.rect = {10, 20, 100, 50};  // columns 10 to 110, rows 20 to 70
    struct Row {
        const char* what;
        std::int16_t x0, y0, x1, y1, side, x, y;
    };
    const Row rows[] = {
        {"out at the right", 100, 40, 120, 50, side::kRight, 110, 45},
        {"in from the right", 120, 50, 100, 40, side::kRight, 110, 45},
        {"out at the left", 20, 40, 0, 50, side::kLeft, 10, 45},
        {"out at the top", 50, 30, 60, 10, side::kTop, 55, 20},
        {"out at the bottom", 50, 60, 60, 80, side::kBottom, 55, 70},
        {"wholly inside", 20, 30, 40, 50, side::kNone, 0, 0},
        {"past the corner goes to the top", 100, 30, 130, -30, side::kTop, 105, 20},
        {"upright on the right edge", 110, 30, 110, 41, side::kRight, 110, 36},
        {"on the left edge counts as left", 10, 30, 50, 30, side::kLeft, 10, 30},
        {"through the very corner", 100, 30, 120, 10, side::kRight, 110, 20},
        {"past the right, too flat for the bottom", 200, 200, 300, 205, side::kNone, 0, 0},
        {"the line carried on, not the segment, meets the bottom", 200, 200, 300, 300,
         side::kBottom, 70, 70},
    };
    for (const Row& row : rows) {
        const EdgeCrossing crossing = FindEdgeCrossing(row.x0, row.y0, row.x1, row.y1);
        EXPECT_EQ(crossing.side, row.side) << row.what;
        if (row.side == side::kNone) continue;
        EXPECT_EQ(crossing.x, row.x) << row.what;
        EXPECT_EQ(crossing.y, row.y) << row.what;
    }
}

TEST(EdgeCrossingTest, InsetSearchIsOnePixelInsideAndStrict) {
    ResetAll();
    mapView.rect = {10, 20, 100, 50};
    EdgeCrossing crossing = FindInsetCrossing(100, 40, 120, 50);
    EXPECT_EQ(crossing.side, side::kRight);
    EXPECT_EQ(crossing.x, 109);
    EXPECT_EQ(crossing.y, 44);  // 50 - 11 * 10 / 20 = 44.5, ties to even
    EXPECT_TRUE(crossing.startInside);
    crossing = FindInsetCrossing(120, 50, 100, 40);
    EXPECT_FALSE(crossing.startInside);
    // A crossing may lie on the inset row, but not on the edge's.
    crossing = FindInsetCrossing(100, 21, 120, 21);
    EXPECT_EQ(crossing.side, side::kRight);
    EXPECT_EQ(crossing.x, 109);
    EXPECT_EQ(crossing.y, 21);
    EXPECT_EQ(FindInsetCrossing(100, 20, 120, 20).side, side::kNone);
    // What lies between the inset line and the edge is inside.
    EXPECT_EQ(FindInsetCrossing(100, 40, 109, 40).side, side::kNone);
    crossing = FindInsetCrossing(100, 40, 110, 40);
    EXPECT_EQ(crossing.side, side::kRight);
    EXPECT_EQ(crossing.x, 109);
}

TEST(EdgeCrossingTest, ShortSegmentWithOneEndStrictlyInsideAlwaysCrossesTheInsetLine) {
    ResetAll();
    mapView.rect = {10, 20, 100, 50};
    const unsigned seed = 815;
    std::mt19937 random(seed);
    std::uniform_int_distribution<int> column(11, 109);
    std::uniform_int_distribution<int> row(21, 69);
    std::uniform_int_distribution<int> step(-15, 15);
    int tried = 0;
    while (tried < 20000) {
        const auto x0 = static_cast<std::int16_t>(column(random));
        const auto y0 = static_cast<std::int16_t>(row(random));
        const auto x1 = static_cast<std::int16_t>(x0 + step(random));
        const auto y1 = static_cast<std::int16_t>(y0 + step(random));
        if (x1 > 10 && x1 < 110 && y1 > 20 && y1 < 70) continue;
        ++tried;
        for (const bool outward : {true, false}) {
            const EdgeCrossing crossing =
                outward ? FindInsetCrossing(x0, y0, x1, y1) : FindInsetCrossing(x1, y1, x0, y0);
            ASSERT_NE(crossing.side, side::kNone)
                << "seed " << seed << ": " << x0 << ' ' << y0 << ' ' << x1 << ' ' << y1;
            EXPECT_EQ(crossing.startInside, outward);
            const bool upright = crossing.side <= side::kRight;
            EXPECT_TRUE(upright ? crossing.x == 11 || crossing.x == 109
                                : crossing.y == 21 || crossing.y == 69);
            EXPECT_GE(crossing.x, std::min(x0, x1));
            EXPECT_LE(crossing.x, std::max(x0, x1));
            EXPECT_GE(crossing.y, std::min(y0, y1));
            EXPECT_LE(crossing.y, std::max(y0, y1));
        }
    }
}

TEST(EdgeCrossingTest, GlobeSidesFollowTheDirectionFromTheCentre) {
    ResetAll();
    mapView.extent.projection = projection::kGlobeOblate;
    mapView.rect = {0, 0, 200, 100};  // the corner stands at 26.6 degrees
    struct Row {
        std::int16_t x, y, side;
    };
    const Row rows[] = {{190, 50, side::kRight},  {10, 50, side::kLeft},   {100, 5, side::kTop},
                        {100, 95, side::kBottom}, {180, 15, side::kRight}, {150, 5, side::kTop},
                        {150, 95, side::kBottom}, {50, 5, side::kTop},     {20, 15, side::kLeft}};
    for (const Row& row : rows) {
        const EdgeCrossing crossing = FindEdgeCrossing(static_cast<std::int16_t>(row.x - 4), row.y,
                                                       static_cast<std::int16_t>(row.x + 4), row.y);
        EXPECT_EQ(crossing.side, row.side) << row.x << ' ' << row.y;
        EXPECT_EQ(crossing.x, row.x);
        EXPECT_EQ(crossing.y, row.y);
    }
}

class GridTest : public SegmentsTest {};

TEST_F(GridTest, FlatMeridianRunsFromTopToBottomWithItsMarks) {
    SetView(-90, -180, 90, 180, projection::kCartesian);
    DrawMeridian(20, 3, 1, MarkEnds::First);
    EXPECT_EQ(surface.log, (Log{"MoveTo 225 39", "LineTo 225 219"}));
    EXPECT_EQ(Marks(), Log{"3 225 39 3 1"});
    mapView.edgeMarks.clear();
    DrawMeridian(20, 3, 2, MarkEnds::Second);
    EXPECT_EQ(Marks(), Log{"4 225 219 3 2"});
}

TEST_F(GridTest, FlatParallelRunsFromSideToSideWithItsMarks) {
    SetView(-90, -180, 90, 180, projection::kCartesian);
    DrawParallel(30, 3, 5, MarkEnds::Both);
    EXPECT_EQ(surface.log, (Log{"MoveTo 25 99", "LineTo 385 99"}));
    EXPECT_EQ(Marks(), (Log{"1 25 99 3 5", "2 385 99 3 5"}));
}

TEST_F(GridTest, MeridiansOfAnUprightGlobeAreHalfEllipses) {
    SetView(0, -90, 0, 90, projection::kGlobeSphere);
    DrawMeridian(30, 3, 1, MarkEnds::Both);
    DrawMeridian(-30, kNoMark, 0, MarkEnds::None);
    DrawMeridian(0, kNoMark, 0, MarkEnds::None);
    EXPECT_EQ(surface.log, (Log{"Arc 160 39 251 220 -90 180", "Arc 160 39 251 220 90 180",
                                "MoveTo 205 39", "LineTo 205 219"}));
    EXPECT_EQ(Marks(), Log{});
}

TEST_F(GridTest, ParallelsOfAnUprightGlobeAreChords) {
    SetView(0, -90, 0, 90, projection::kGlobeSphere);
    DrawParallel(60, kNoMark, 0, MarkEnds::None);
    // 90 (1 - sin 60) = 12.06 down, half of 180 long.
    EXPECT_EQ(surface.log, (Log{"MoveTo 160 51", "LineTo 250 51"}));
}

TEST_F(GridTest, ParallelBehindATiltedGlobeIsNotDrawn) {
    SetView(50, -90, 50, 90, projection::kGlobeSphere);
    DrawParallel(-40, kNoMark, 0, MarkEnds::None);
    EXPECT_EQ(surface.log, Log{});
    DrawParallel(-39, kNoMark, 0, MarkEnds::None);
    EXPECT_FALSE(surface.log.empty());
}

TEST_F(GridTest, ParallelThroughTheAntipodeOfATiltedGlobesCentreKeepsToTheNearSide) {
    for (const int lat : {10, 20, 25, 30, 40}) {
        const auto centre = static_cast<float>(lat);
        SetView(centre, -90, centre, 90, projection::kGlobeSphere);
        mapView.edgeMarks.clear();
        DrawParallel(-lat, 3, 1, MarkEnds::Both);
        // It comes into view once and goes once, and nothing is drawn near the middle.
        EXPECT_EQ(surface.Calls("MoveTo").size(), 1U) << lat;
        EXPECT_EQ(Marks().size(), 2U) << lat;
        for (const std::string& call : surface.Calls("LineTo")) {
            std::istringstream text(call.substr(7));
            int x = 0;
            int y = 0;
            text >> x >> y;
            EXPECT_GT(y, 129 + lat / 2) << lat;
        }
    }
}

TEST_F(GridTest, MeridianOfATiltedGlobeIsACurve) {
    SetView(50, -90, 50, 90, projection::kGlobeSphere);
    DrawMeridian(0, kNoMark, 0, MarkEnds::None);
    // From latitude -40, where the near side begins, or the sample before it, to the pole.
    EXPECT_EQ(surface.Calls("MoveTo").size(), 1U);
    EXPECT_EQ(surface.Calls("LineTo").size(), 65U);
}

TEST_F(GridTest, CurvesOfATiltedGlobeAreMarkedWhereTheyComeAndGoIfMarksAreAskedFor) {
    SetView(50, -90, 50, 90, projection::kGlobeSphere);
    DrawParallel(0, 3, 5, MarkEnds::Both);
    // The equator meets the limb at the left and the right, level with the centre.
    ASSERT_EQ(mapView.edgeMarks.size(), 2U);
    EXPECT_EQ(mapView.edgeMarks[0].side, side::kLeft);
    EXPECT_EQ(mapView.edgeMarks[1].side, side::kRight);
    for (const EdgeMark& mark : mapView.edgeMarks) {
        EXPECT_NEAR(mark.y, 129, 3);
        EXPECT_EQ(mark.kind, 3);
        EXPECT_EQ(mark.type, 5);
    }
    mapView.edgeMarks.clear();
    DrawMeridian(0, 3, 5, MarkEnds::First);
    EXPECT_EQ(Marks().size(), 1U) << "it comes in at the bottom and ends at the pole";
    mapView.edgeMarks.clear();
    DrawParallel(0, 3, 5, MarkEnds::None);
    DrawMeridian(0, 3, 5, MarkEnds::None);
    EXPECT_EQ(Marks(), Log{});
}

// 50 north in the middle: everything north of 40 is in sight all round.
TEST_F(GridTest, ParallelRoundThePoleOfATiltedGlobeIsOneClosedCurve) {
    SetView(50, -90, 50, 90, projection::kGlobeSphere);
    DrawParallel(60, kNoMark, 0, MarkEnds::None);
    EXPECT_EQ(surface.Calls("MoveTo").size(), 1U);
    EXPECT_EQ(surface.Calls("LineTo").size(), 180U);
    EXPECT_EQ(surface.Calls("LineTo").back().substr(4), surface.Calls("MoveTo").front().substr(4));
}

// Every call of a tilted globe's grid lies on the disc, but for the samples just behind the limb,
// which fold back onto it: no chord crosses the picture.
TEST_F(GridTest, GridOfATiltedGlobeHasNoLongChord) {
    for (const float centreLat : {90.0F, -90.0F, 23.5F, -66.0F, 1.0F}) {
        SetView(centreLat, -90, centreLat, 90, projection::kGlobeSphere);
        CurrentMap().gridOn = kTrue;
        DrawGrid();
        int x = 0;
        int y = 0;
        for (const std::string& call : surface.log) {
            std::istringstream text(call);
            std::string word;
            int toX = 0;
            int toY = 0;
            text >> word >> toX >> toY;
            // Two degrees of the circle of 90 pixels are 3.2 pixels.
            if (word == "LineTo") {
                EXPECT_LE(std::hypot(toX - x, toY - y), 5) << centreLat << ": " << call;
            }
            x = toX;
            y = toY;
        }
        EXPECT_GT(surface.log.size(), 500U);
    }
}

TEST_F(GridTest, GridDrawsTheMultiplesOfItsStepsInView) {
    SetView(-45, 0, 45, 90, projection::kCartesian);
    CurrentMap().gridOn = kTrue;
    CurrentMap().gridLongStep = 40;
    CurrentMap().gridLatStep = 30;
    DrawGrid();
    EXPECT_EQ(surface.log,
              (Log{"MoveTo 185 39", "LineTo 185 219", "MoveTo 345 39", "LineTo 345 219",
                   "MoveTo 25 189", "LineTo 385 189", "MoveTo 25 129", "LineTo 385 129",
                   "MoveTo 25 69", "LineTo 385 69"}));
}

TEST_F(GridTest, GridThatIsOffDrawsNothing) {
    SetView(-90, -180, 90, 180, projection::kCartesian);
    DrawGrid();
    EXPECT_EQ(surface.log, Log{});
}

TEST_F(GridTest, StepThatNoDialogAllowsIsHeldWithinOneAndNinety) {
    SetView(-90, -180, 90, 180, projection::kCartesian);
    CurrentMap().gridOn = kTrue;
    for (const float step : {0.0F, -5.0F, 1e-30F, std::nanf("")}) {
        surface.log.clear();
        CurrentMap().gridLatStep = step;
        CurrentMap().gridLongStep = 90;
        DrawGrid();
        EXPECT_EQ(surface.Calls("MoveTo").size(), 5U + 179U) << step;
    }
    CurrentMap().gridLatStep = 1e30F;
    surface.log.clear();
    DrawGrid();
    EXPECT_EQ(surface.Calls("MoveTo").size(), 5U + 1U);
}

}  // namespace
}  // namespace orvantis

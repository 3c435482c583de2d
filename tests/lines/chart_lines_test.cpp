#include "lines/chart_lines.h"

#include <algorithm>
#include <cmath>
#include <gtest/gtest.h>
#include <limits>
#include <string_view>
#include <vector>

#include "lines/lines_fixture.h"
#include "map/plot.h"
#include "session/tables.h"
#include "text/run_time_error.h"

namespace orvantis {
namespace {

constexpr double kDegree = 3.14159265358979323846 / 180;

class ChartLines : public LinesOnASurface {};

TEST_F(ChartLines, NothingIsDrawnWithoutAChartAndAnEclipse) {
    Place(3, 40, 10);
    session.ChartNumber = 0;
    SetView();
    surface_.log.clear();
    PlotChartLines(kFalse, kTrue, 1);
    EXPECT_TRUE(surface_.log.empty());
}

TEST_F(ChartLines, APointThatIsNotCalculatedDrawsNothing) {
    Place(3, 40, 10);
    calcChart[1].Lon[3] = -1;
    SetView();
    surface_.log.clear();
    PlotChartLines(kFalse, kTrue, 1);
    EXPECT_TRUE(surface_.Calls("LineTo").empty());
    EXPECT_TRUE(chartLines.objects.empty());
}

TEST_F(ChartLines, ACulminationLineStandsAtItsLongitudeWithItsLabelOverhead) {
    ShowTypes({1});
    Place(3, 40, 10);  // with the Midheaven at right ascension 0 and the place at longitude 0
    SetView();
    PlotChartLines(kFalse, kTrue, 1);
    std::int16_t x = 0;
    std::int16_t y = 0;
    ProjectPoint(600, 40 * 60, y, x);
    ASSERT_EQ(chartLines.objects.size(), 1U);
    EXPECT_EQ(chartLines.objects[0].x, x);
    EXPECT_EQ(chartLines.objects[0].y, y);
    EXPECT_EQ(chartLines.objects[0].code, 3);
    EXPECT_EQ(chartLines.objects[0].type, line_type::kPointLabel);
    ASSERT_EQ(mapView.edgeMarks.size(), 1U);
    EXPECT_EQ(mapView.edgeMarks[0].side, side::kTop);
    EXPECT_EQ(mapView.edgeMarks[0].x, x);
}

TEST_F(ChartLines, AnAnticulminationLineHasItsMarkAtTheBottomAndNoLabel) {
    ShowTypes({2});
    Place(3, 40, 10);
    SetView();
    PlotChartLines(kFalse, kTrue, 1);
    EXPECT_TRUE(chartLines.objects.empty());
    ASSERT_EQ(mapView.edgeMarks.size(), 1U);
    EXPECT_EQ(mapView.edgeMarks[0].side, side::kBottom);
}

TEST_F(ChartLines, AMeridianOutsideANarrowViewIsNotDrawnAndAddsNoLabel) {
    ShowTypes({1});
    Place(3, 40, 10);
    View(0, 60, 40, 120);
    SetView();
    surface_.log.clear();
    PlotChartLines(kFalse, kTrue, 1);
    EXPECT_TRUE(surface_.Calls("LineTo").empty());
    EXPECT_TRUE(chartLines.objects.empty());
    EXPECT_TRUE(mapView.edgeMarks.empty());
    EXPECT_FALSE(chartLines.anyVisible);
}

TEST_F(ChartLines, RiseAndSetLinesCarryALabelEachOnTheEquator) {
    ShowTypes({3, 4});
    Place(3, 40, 10);
    SetView();
    PlotChartLines(kFalse, kTrue, 1);
    ASSERT_EQ(chartLines.objects.size(), 2U);
    std::int16_t x = 0;
    std::int16_t y = 0;
    ProjectPoint(0, (40 - 90) * 60, y, x);
    EXPECT_EQ(chartLines.objects[0].x, x);
    EXPECT_EQ(chartLines.objects[0].y, y);
    ProjectPoint(0, (40 + 90) * 60, y, x);
    EXPECT_EQ(chartLines.objects[1].x, x);
}

TEST_F(ChartLines, TheSouthNodeGetsMeridianLinesAndNoOther) {
    Place(21, 40, 10);
    ShowTypes({3, 4});
    SetView();
    surface_.log.clear();
    PlotChartLines(kFalse, kTrue, 1);
    EXPECT_TRUE(surface_.Calls("LineTo").empty());
    ShowTypes({1, 2});
    PlotChartLines(kFalse, kTrue, 1);
    EXPECT_FALSE(surface_.Calls("LineTo").empty());
}

TEST_F(ChartLines, ALineTakesThePointsColourOrTheTypes) {
    pointColour[3] = 0x112233;
    Place(3, 40, 10);
    SetView();
    for (const bool planets : {true, false}) {
        ShowTypes({1});
        settings.lineStyle[1].planetColour = planets ? kTrue : kFalse;
        settings.lineStyle[1].colour = 0x445566;
        settings.lineStyle[1].thickness = 3;
        settings.lineStyle[1].style = 4;
        surface_.log.clear();
        PlotChartLines(kFalse, kTrue, 1);
        const std::string colour = std::to_string(planets ? 0x112233 : 0x445566);
        EXPECT_EQ(surface_.Calls("SetPen").front(), "SetPen 3 4 " + colour);
    }
}

TEST_F(ChartLines, LinesThatAreAllOutsideTheViewAreAskedAboutOnceAfterTheUsersChoice) {
    ShowTypes({1});
    Place(3, 40, 10);
    View(0, 60, 40, 120);
    SetView();
    PlotChartLines(kFalse, kTrue, 1);
    EXPECT_TRUE(TestShell().boxes.empty()) << "a plot that the user didn't ask for doesn't ask";

    chartLines.askedByUser = kTrue;
    TestShell().boxAnswers = {BoxAnswer::Ok};
    PlotChartLines(kFalse, kTrue, 1);
    ASSERT_EQ(TestShell().boxes.size(), 1U);
    EXPECT_EQ(TestShell().boxes[0],
              "Orvantis: Lines for the selected chart are not visible in the current map region. / "
              "Try opening a different map region, or a map of the whole world. / "
              "Select OK to retain this chart, or CANCEL to clear it.");
    EXPECT_EQ(session.ChartNumber, 1);

    chartLines.askedByUser = kTrue;
    TestShell().boxAnswers = {BoxAnswer::Cancel};
    PlotChartLines(kFalse, kTrue, 1);
    EXPECT_EQ(session.ChartNumber, 0);
}

TEST_F(ChartLines, AHiddenEclipseIsAskedAboutInItsOwnWords) {
    session.ChartNumber = 0;
    session.EclipseNumber = 5;
    SetView();
    chartLines.askedByUser = kTrue;
    TestShell().boxAnswers = {BoxAnswer::Cancel};
    PlotChartLines(kFalse, kTrue, 1);
    ASSERT_EQ(TestShell().boxes.size(), 1U);
    EXPECT_EQ(
        TestShell().boxes[0],
        "Orvantis: Lines for the selected eclipse are not visible in the current map region. / "
        "If you are not sure where the eclipse lines are visible, then try opening a map of the "
        "whole world. / Select OK to retain this eclipse, or CANCEL to clear it.");
    EXPECT_EQ(session.EclipseNumber, 0);
}

TEST_F(ChartLines, LabelsShowTheTextOfTheirType) {
    EXPECT_EQ(LabelText(7, 8), "7");
    EXPECT_EQ(LabelText('H', 9), "H");
    EXPECT_EQ(LabelText('E', 10), "E");
    EXPECT_EQ(LabelText(1, 11), "\xDD");
    EXPECT_EQ(LabelText(2, 11), "\x81");
    EXPECT_EQ(LabelText(50, 13), ".5");
    EXPECT_EQ(LabelText(75, 13), ".75");
    EXPECT_EQ(LabelText(0, 13), "0");
    EXPECT_EQ(LabelText(3, 14), "\xB8");
    EXPECT_EQ(LabelText(1203, 5), "\xB8");
    EXPECT_EQ(LabelText(5, 12), "\xE5");
}

TEST_F(ChartLines, AStarsLabelIsWhatTheStarsSayAndEmptyWithoutStars) {
    for (const std::int16_t star : {37, 40, 72}) EXPECT_EQ(LabelText(star, 14), "");
    starLabel = [](std::int16_t p) { return "*" + std::to_string(p); };
    EXPECT_EQ(LabelText(37, 14), "*37");
    EXPECT_EQ(LabelText(72, 14), "*72");
    EXPECT_EQ(LabelText(3140, 5), "*40") << "of a paran";
    EXPECT_EQ(LabelText(36, 14), std::string(1, PointGlyph(36))) << "the last of the points";
}

TEST_F(ChartLines, SidesOfLinesHaveTheirWords) {
    EXPECT_EQ(PlotLineAnnotation(1), " Upper");
    EXPECT_EQ(PlotLineAnnotation(2), " Lower");
    EXPECT_EQ(PlotLineAnnotation(3), " Rising");
    EXPECT_EQ(PlotLineAnnotation(4), " Setting");
    EXPECT_EQ(PlotLineAnnotation(0), "");
    EXPECT_EQ(PlotLineAnnotation(5), "");
}

TEST_F(ChartLines, ALabelsBoxHasTheShapeOfItsType) {
    SetView();
    settings.lineStyle[14].symbolShape = 0;
    AddLineLabel(50, 50, 3, 14);
    surface_.log.clear();
    DrawLineLabels();
    EXPECT_EQ(surface_.Calls("Rectangle").size(), 1U);
    settings.lineStyle[14].symbolShape = 2;
    AddLineLabel(50, 50, 3, 14);
    DrawLineLabels();
    EXPECT_EQ(surface_.Calls("Ellipse").size(), 2U);
    settings.lineStyle[14].symbolShape = 1;
    AddLineLabel(50, 50, 3, 14);
    DrawLineLabels();
    EXPECT_EQ(surface_.Calls("Polygon").size(), 3U);
    EXPECT_EQ(chartLines.objects.size(), 3U);
    EXPECT_EQ(chartLines.labels.size(), 3U) << "labels live until the next full plot";
}

// The meridian behind the globe's pole comes into view over it, and has no label behind.
TEST_F(ChartLines, ATiltedGlobeShowsTheMeridianBehindItsPole) {
    ShowTypes({1});
    Place(3, 180, -20);
    Globe(40, 0, projection::kGlobeSphere);
    Draw();
    EXPECT_GT(surface_.Calls("LineTo").size(), 10U);
    EXPECT_TRUE(chartLines.anyVisible);
    EXPECT_TRUE(chartLines.objects.empty());
    Globe(0, 0, projection::kGlobeSphere);
    Draw();
    EXPECT_TRUE(surface_.Calls("LineTo").empty() && surface_.Calls("Arc").empty());
    EXPECT_FALSE(chartLines.anyVisible);
}

// The box of a label as it was drawn: left, top, and right and bottom, which are outside.
struct Box {
    int left = 0, top = 0, right = 0, bottom = 0;
};

Box BoxOf(const std::string& call) {
    Box box;
    std::sscanf(call.c_str(), "%*s %d %d %d %d", &box.left, &box.top, &box.right, &box.bottom);
    return box;
}

// Draws a single label of the Sun and gives its box.
Box DrawOneLabel(RecordingSurface& surface, int x, int y) {
    chartLines.labels.clear();
    AddLineLabel(static_cast<std::int16_t>(x), static_cast<std::int16_t>(y), 3, 14);
    surface.log.clear();
    DrawLineLabels();
    constexpr std::string_view kShapes[] = {"Rectangle", "Polygon", "Ellipse"};
    const auto shape = static_cast<std::size_t>(settings.lineStyle[14].symbolShape);
    const std::string call = surface.Calls(kShapes[shape]).at(0);
    if (shape != 1) return BoxOf(call);
    Box box{32767, 32767, 0, 0};
    for (const std::string& vertex : surface.Calls("  vertex")) {
        const auto [vertexX, vertexY] = PlaceOfCall(vertex);
        box.left = std::min(box.left, vertexX);
        box.top = std::min(box.top, vertexY);
        box.right = std::max(box.right, vertexX + 1);
        box.bottom = std::max(box.bottom, vertexY + 1);
    }
    return box;
}

// Boxes at the four edges and corners, at a distance of 0 and 5 pixels on either side of the edge.
TEST_F(ChartLines, NoLabelLiesOverTheFrameAtAnyEdge) {
    SetView();
    const MapRect rect = mapView.rect;
    const int right = rect.left + rect.width;
    const int bottom = rect.top + rect.height;
    for (const std::int16_t shape : {0, 2}) {
        settings.lineStyle[14].symbolShape = shape;
        for (const int x : {rect.left - 5, rect.left + 0, rect.left + 5, rect.left + 200, right - 5,
                            right, right + 5}) {
            for (const int y : {rect.top - 5, rect.top + 0, rect.top + 5, rect.top + 100,
                                bottom - 5, bottom, bottom + 5}) {
                const Box box = DrawOneLabel(surface_, x, y);
                EXPECT_GT(box.left, rect.left) << x << " " << y;
                EXPECT_GT(box.top, rect.top) << x << " " << y;
                EXPECT_LE(box.right, right) << x << " " << y;
                EXPECT_LE(box.bottom, bottom) << x << " " << y;
                // It is moved no farther than it must, and a click finds it where it is.
                ASSERT_EQ(chartLines.objects.size(), 1U);
                const LineLabel& object = chartLines.objects[0];
                EXPECT_EQ(object.x, (box.left + box.right - 1) / 2);
                EXPECT_EQ(object.y, (box.top + box.bottom - 1) / 2);
                EXPECT_TRUE(x != rect.left + 200 || object.x == x);
                EXPECT_TRUE(y != rect.top + 100 || object.y == y);
                EXPECT_LE(std::abs(object.x - x), 6 + (box.right - box.left + 1) / 2);
                EXPECT_EQ(chartLines.labels[0].x, x) << "the list of labels stays";
            }
        }
    }
}

// Of the globe's radius in its direction, how far off the centre the outermost corner of a box lies
// that stands `further` pixels more to the outside.
double OutermostCorner(const Box& box, double furtherX, double furtherY) {
    const MapRect& rect = mapView.rect;
    double outermost = 0;
    for (const int x : {box.left, box.right - 1}) {
        for (const int y : {box.top, box.bottom - 1}) {
            const double u = (x + furtherX - rect.left) * 2 / rect.width - 1;
            const double v = (y + furtherY - rect.top) * 2 / rect.height - 1;
            outermost = std::max(outermost, std::hypot(u, v));
        }
    }
    return outermost;
}

TEST_F(ChartLines, ALabelAtTheLimbOfAGlobeLiesWholeWithinIt) {
    for (const std::int16_t globe : {projection::kGlobeSphere, projection::kGlobeOblate}) {
        CurrentMap() = {};
        Globe(20, 0, globe);
        SetView();
        const MapRect rect = mapView.rect;
        const double centreX = rect.left + rect.width / 2.0;
        const double centreY = rect.top + rect.height / 2.0;
        int moved = 0;
        for (const std::int16_t shape : {0, 1, 2}) {
            settings.lineStyle[14].symbolShape = shape;
            for (int angle = 0; angle < 360; angle += 7) {
                for (const double part : {0.0, 0.5, 0.9, 0.95, 0.98, 1.0}) {
                    const double dx = std::cos(angle * kDegree) * rect.width / 2;
                    const double dy = std::sin(angle * kDegree) * rect.height / 2;
                    const int x = static_cast<int>(std::lround(centreX + dx * part));
                    const int y = static_cast<int>(std::lround(centreY + dy * part));
                    const Box box = DrawOneLabel(surface_, x, y);
                    EXPECT_LT(OutermostCorner(box, 0, 0), 1) << angle << " " << part;
                    const LineLabel& object = chartLines.objects.at(0);
                    EXPECT_EQ(object.x, (box.left + box.right - 1) / 2);
                    EXPECT_EQ(object.y, (box.top + box.bottom - 1) / 2);
                    EXPECT_TRUE(part > 0.5 || (object.x == x && object.y == y)) << angle;
                    if (object.x == x && object.y == y) continue;
                    ++moved;
                    // Straight towards the centre, and no farther than it must: five pixels (the
                    // rim, and whole pixels) more to the outside it would reach over the limb.
                    const double length = std::hypot(dx, dy);
                    EXPECT_NEAR((object.x - centreX) * dy, (object.y - centreY) * dx, length * 1.5)
                        << angle << " " << part;
                    EXPECT_GT(OutermostCorner(box, 5.5 * dx / length, 5.5 * dy / length), 1)
                        << angle << " " << part;
                }
            }
        }
        EXPECT_GT(moved, 300);
    }
}

TEST_F(ChartLines, ALabelLargerThanTheGlobeStandsInItsMiddle) {
    Globe(20, 0, projection::kGlobeSphere);
    SetView();
    mapView.rect.width = mapView.rect.height = 9;
    DrawOneLabel(surface_, mapView.rect.left + 8, mapView.rect.top + 5);
    EXPECT_NEAR(chartLines.objects.at(0).x, mapView.rect.left + 4.5, 0.5);
    EXPECT_NEAR(chartLines.objects.at(0).y, mapView.rect.top + 4.5, 0.5);
}

// The colour of the box that is drawn around a label.
std::string LabelColour(RecordingSurface& surface, std::int16_t code, std::int16_t type) {
    settings.lineStyle[static_cast<std::size_t>(type)].symbolShape = 0;
    chartLines.labels.clear();
    AddLineLabel(100, 100, code, type);
    surface.log.clear();
    DrawLineLabels();
    const std::string call = surface.Calls("Rectangle").at(0);
    return call.substr(call.find("solid"));
}

TEST_F(ChartLines, ALabelsBoxHasTheColourOfItsTypeOrOfItsPoint) {
    SetView();
    for (std::size_t type = 1; type <= 14; ++type) {
        settings.lineStyle[type].colour = static_cast<Colour>(0x100 + type);
        settings.lineStyle[type].planetColour = kTrue;
    }
    pointColour[3] = 0x112233;
    pointColour[12] = 0x445566;
    pointColour[72] = 0x778899;
    const auto solid = [](int colour) { return "solid " + std::to_string(colour); };
    EXPECT_EQ(LabelColour(surface_, 3, 14), solid(0x112233));
    EXPECT_EQ(LabelColour(surface_, 72, 14), solid(0x778899));
    EXPECT_EQ(LabelColour(surface_, 3412, 5), solid(0x445566)) << "the point of a paran";
    for (const std::int16_t type : {8, 9, 10, 11, 12, 13}) {
        EXPECT_EQ(LabelColour(surface_, 3, type), solid(0x100 + type)) << "no point's";
    }
    for (const std::int16_t type : {5, 14}) {
        settings.lineStyle[static_cast<std::size_t>(type)].planetColour = kFalse;
        EXPECT_EQ(LabelColour(surface_, 3, type), solid(0x100 + type));
    }
}

TEST_F(ChartLines, ALabelWhollyOutsideTheMapIsLeftToTheClip) {
    SetView();
    AddLineLabel(-300, 100, 3, 14);
    AddLineLabel(100, 32000, 3, 14);
    DrawLineLabels();
    ASSERT_EQ(chartLines.objects.size(), 2U);
    EXPECT_EQ(chartLines.objects[0].x, -300);
    EXPECT_EQ(chartLines.objects[1].y, 32000);
}

TEST_F(ChartLines, ALabelLargerThanTheMapBeginsAtItsEdge) {
    SetView();
    mapView.rect.width = 5;
    mapView.rect.height = 5;
    settings.lineStyle[14].symbolShape = 0;
    AddLineLabel(static_cast<std::int16_t>(mapView.rect.left + 2),
                 static_cast<std::int16_t>(mapView.rect.top + 2), 3, 14);
    surface_.log.clear();
    DrawLineLabels();
    const Box box = BoxOf(surface_.Calls("Rectangle").at(0));
    EXPECT_EQ(box.left, mapView.rect.left + 1);
    EXPECT_EQ(box.top, mapView.rect.top + 1);
}

TEST_F(ChartLines, MarksAtOnePlaceDoNotLieOverOneAnother) {
    SetView();
    const std::int16_t top = mapView.rect.top;
    for (std::int16_t p = 1; p <= 6; ++p) {
        mapView.edgeMarks.push_back({100, top, side::kTop, p, line_type::kCulminate});
    }
    surface_.log.clear();
    DrawEdgeMarks();
    std::vector<std::pair<int, int>> cells;
    for (const std::string& line : surface_.Calls("TextOut")) {
        int x = 0;
        int y = 0;
        ASSERT_EQ(std::sscanf(line.c_str(), "TextOut %d %d", &x, &y), 2);
        for (const auto& [otherX, otherY] : cells) {
            EXPECT_TRUE(std::abs(x - otherX) >= surface_.charWidth ||
                        std::abs(y - otherY) >= surface_.charHeight)
                << line;
        }
        EXPECT_LT(y + surface_.charHeight, top + 2) << "a mark lies on the map";
        EXPECT_GE(y, 0) << "a mark lies outside the picture";
        cells.emplace_back(x, y);
    }
    EXPECT_EQ(cells.size(), 12U);  // a glyph and a letter each
}

TEST_F(ChartLines, AMarkWithRoomStandsWhereItsLineCrossesTheEdge) {
    SetView();
    mapView.edgeMarks.push_back({100, mapView.rect.top, side::kTop, 3, line_type::kCulminate});
    mapView.edgeMarks.push_back({300, mapView.rect.top, side::kTop, 1, line_type::kCulminate});
    surface_.log.clear();
    DrawEdgeMarks();
    const std::string y = std::to_string(mapView.rect.top - surface_.charHeight);
    EXPECT_EQ(surface_.Calls("TextOut").front(), "TextOut 100 " + y + " 1 U");
}

TEST_F(ChartLines, MarksKeepToTheirSideAndThoseWithoutRoomAreLeftOut) {
    SetView();
    const MapRect rect = mapView.rect;
    for (int i = 0; i < 60; ++i) {
        mapView.edgeMarks.push_back({rect.left, rect.top, side::kLeft, 3, line_type::kRise});
    }
    surface_.log.clear();
    DrawEdgeMarks();
    const std::vector<std::string> texts = surface_.Calls("TextOut");
    EXPECT_EQ(texts.size(),
              2U * static_cast<std::size_t>((rect.height + 1) / (surface_.charHeight + 1)));
    for (const std::string& line : texts) {
        int x = 0;
        int y = 0;
        ASSERT_EQ(std::sscanf(line.c_str(), "TextOut %d %d", &x, &y), 2);
        EXPECT_GE(y, rect.top - 1);
        EXPECT_LE(y + surface_.charHeight, rect.top + rect.height + 2);
    }
}

TEST_F(ChartLines, WithoutExtraAnnotationMarksHaveNoLetter) {
    options.extraAnnotation = kFalse;
    SetView();
    mapView.edgeMarks.push_back({100, mapView.rect.top, side::kTop, 3, line_type::kCulminate});
    surface_.log.clear();
    DrawEdgeMarks();
    std::size_t texts = 0;
    for (const std::string& line : surface_.Calls("TextOut")) texts += line.back() == ' ' ? 0 : 1;
    EXPECT_EQ(texts, 1U);
}

TEST_F(ChartLines, ALineIsDrawnWithoutALabelWhereItsPointIsOverheadOutsideTheView) {
    ShowTypes({1});
    Place(3, 40, 10);
    View(20, 0, 60, 80);
    SetView();
    surface_.log.clear();
    PlotChartLines(kFalse, kTrue, 1);
    EXPECT_FALSE(surface_.Calls("LineTo").empty());
    EXPECT_TRUE(chartLines.anyVisible);
    EXPECT_TRUE(chartLines.objects.empty());

    View(0, 0, 60, 80);
    SetView();
    PlotChartLines(kFalse, kTrue, 1);
    EXPECT_EQ(chartLines.objects.size(), 1U) << "with the declination in view there is a label";
}

// A label at a position in whole degrees.
void ExpectObjectAt(int lat, int longitude) {
    std::int16_t x = 0;
    std::int16_t y = 0;
    ProjectPoint(static_cast<std::int16_t>(lat * 60), static_cast<std::int16_t>(longitude * 60), y,
                 x);
    ASSERT_EQ(chartLines.objects.size(), 1U);
    EXPECT_EQ(chartLines.objects[0].x, x);
    EXPECT_EQ(chartLines.objects[0].y, y);
}

TEST_F(ChartLines, TheOverheadLabelOfTheGeodeticZodiacStandsAtTheEclipticLatitude) {
    ShowTypes({1});
    Place(3, 99, 10);
    calcChart[1].Lon[3] = 40;
    calcChart[1].Lat[3] = -5;
    options.mapZodiac = 1;
    SetView();
    PlotChartLines(kFalse, kTrue, 1);
    ExpectObjectAt(-5, 40);
}

TEST_F(ChartLines, ATypeThatIsOffDrawsNothing) {
    Place(3, 40, 10);
    struct Row {
        std::size_t type;
        int node;  // longitude of the label on the equator
    };
    for (const Row& row : {Row{3, 40 - 90}, Row{4, 40 + 90}}) {
        ShowTypes({row.type});
        settings.lineStyle[3].colour = 0x010101;
        settings.lineStyle[4].colour = 0x020202;
        SetView();
        surface_.log.clear();
        PlotChartLines(kFalse, kTrue, 1);
        ExpectObjectAt(0, row.node);
        const std::string other = "SetPen 1 0 " + std::to_string(row.type == 3 ? 0x020202 : 65793);
        for (const std::string& pen : surface_.Calls("SetPen")) EXPECT_NE(pen, other);
    }
    for (const std::size_t off : {1, 2}) {
        ShowTypes({3 - off});
        SetView();
        PlotChartLines(kFalse, kTrue, 1);
        ASSERT_EQ(mapView.edgeMarks.size(), 1U);
        EXPECT_EQ(mapView.edgeMarks[0].type, static_cast<std::int16_t>(3 - off));
    }
    ShowTypes({});
    SetView();
    surface_.log.clear();
    PlotChartLines(kFalse, kTrue, 1);
    EXPECT_TRUE(surface_.Calls("LineTo").empty());
    EXPECT_TRUE(chartLines.objects.empty());
}

TEST_F(ChartLines, TheRiseLabelNeedsAVisibleSampleOnTheEquatorTheSetLabelTheLongitudeAlone) {
    Place(3, 40, 30);
    struct Row {
        std::size_t type;
        float south, west, north, east;  // narrow views around the node, or beside it
        std::size_t labels;
    };
    const std::vector<Row> rows = {
        {3, -20, -90, 20, -10, 1},   // the node at -50 in view
        {3, 20, -90, 60, -10, 0},    // north of it: the sample isn't visible
        {3, -20, 10, 20, 90, 0},     // east of it
        {4, -20, 90, 20, 170, 1},    // the node at 130 in view
        {4, 20, 90, 60, 170, 1},     // north of it: labelled all the same
        {4, -20, -170, 20, -90, 0},  // its longitude out of view
    };
    for (const Row& row : rows) {
        ShowTypes({row.type});
        View(row.south, row.west, row.north, row.east);
        SetView();
        PlotChartLines(kFalse, kTrue, 1);
        EXPECT_EQ(chartLines.objects.size(), row.labels)
            << "type " << row.type << " view " << row.south << " " << row.west;
    }
}

TEST_F(ChartLines, OnGlobesMeridianLinesAskForNoMarks) {
    Place(3, 10, 10);
    ShowTypes({1, 2});
    for (const std::int16_t globe : {projection::kGlobeSphere, projection::kGlobeOblate}) {
        // An upright globe draws the line as an arc, a tilted one sample by sample.
        for (const float centreLat : {0.0F, 30.0F}) {
            CurrentMap() = {};
            CurrentMap().projection = globe;
            View(centreLat, -90, centreLat, 90);
            SetView();
            surface_.log.clear();
            PlotChartLines(kFalse, kTrue, 1);
            const char* call = centreLat == 0 ? "Arc" : "LineTo";
            EXPECT_FALSE(surface_.Calls(call).empty()) << globe << " " << centreLat;
            EXPECT_TRUE(mapView.edgeMarks.empty()) << globe << " " << centreLat;
        }
    }
}

void Log(std::string_view what) {
    static_cast<RecordingSurface*>(mapView.surface)->log.emplace_back(what);
}

TEST_F(ChartLines, LinesAreDrawnInTheirOrder) {
    Place(1, 10, 5);
    Place(3, 40, 10);
    ShowTypes({1, 3, 5, 7, 8, 9, 10, 11});
    for (std::size_t type = 1; type <= 11; ++type) {
        settings.lineStyle[type].planetColour = kFalse;
        settings.lineStyle[type].thickness = 1;
        settings.lineStyle[type].style = 0;
        settings.lineStyle[type].colour = static_cast<Colour>(type);
    }
    options.dayNight = kTrue;
    session.EclipseNumber = 1;
    refreshCaption = [] { Log("caption"); };
    plotEclipseLines = [](Flag) { Log("eclipse"); };
    SetView();
    surface_.log.clear();
    PlotChartLines(kFalse, kTrue, 1);

    std::vector<std::string> steps;
    for (const std::string& line : surface_.log) {
        const bool drawing = line.find(' ') != std::string::npos && !line.starts_with("SetPen");
        const std::string step = line.starts_with("Polygon") ? "Polygon" : line;
        if (drawing && step != "Polygon") continue;
        if (steps.empty() || steps.back() != step) steps.push_back(step);
        if (line == "ClearClip") break;
    }
    const std::vector<std::string> expected = {"caption",      "Polygon",       "SetPen 1 0 7",
                                               "SetPen 1 0 8", "SetPen 1 0 5",  "SetPen 1 0 1",
                                               "SetPen 1 0 3", "SetPen 1 0 10", "SetPen 1 0 11",
                                               "SetPen 1 0 9", "eclipse",       "caption"};
    ASSERT_GE(steps.size(), expected.size());
    steps.resize(expected.size());
    EXPECT_EQ(steps, expected);
}

TEST_F(ChartLines, AnEclipseAloneDrawsNoLinesOfAChart) {
    Place(3, 40, 10);
    options.dayNight = kTrue;
    session.ChartNumber = 0;
    session.EclipseNumber = 1;
    plotEclipseLines = [](Flag printing) { Log("eclipse " + std::to_string(printing)); };
    SetView();
    surface_.log.clear();
    PlotChartLines(kTrue, kTrue, 1);
    EXPECT_TRUE(surface_.Calls("LineTo").empty());
    EXPECT_TRUE(surface_.Calls("Polygon").empty());
    EXPECT_EQ(surface_.Calls("eclipse"), std::vector<std::string>{"eclipse -1"});
}

TEST_F(ChartLines, OnlyAFullPlotEmptiesTheLists) {
    ShowTypes({1});
    Place(3, 40, 10);
    SetView();
    PlotChartLines(kFalse, kTrue, 1);
    EXPECT_EQ(chartLines.objects.size(), 1U);
    EXPECT_EQ(mapView.edgeMarks.size(), 1U);
    PlotChartLines(kFalse, kFalse, 1);
    EXPECT_EQ(chartLines.objects.size(), 2U);
    EXPECT_EQ(mapView.edgeMarks.size(), 2U);
    PlotChartLines(kFalse, kTrue, 1);
    EXPECT_EQ(chartLines.objects.size(), 1U);
    EXPECT_EQ(mapView.edgeMarks.size(), 1U);
}

TEST_F(ChartLines, AFloatingFaultInALineReachesThePlotsReport) {
    Place(3, 40, 10);
    for (const std::size_t type : {1, 2, 3, 4}) {
        ShowTypes({type});
        calcChart[1].RA[3] = std::numeric_limits<float>::quiet_NaN();
        TestShell().boxes.clear();
        PlotMap4(kFalse, surface_, kFalse);
        EXPECT_EQ(TestShell().boxes,
                  std::vector<std::string>{"Orvantis: An error occurred whilst plotting: / "
                                           "Overflow / "})
            << type;
        EXPECT_TRUE(plotState.interrupted);

        calcChart[1].RA[3] = 40;
        PlotMap4(kFalse, surface_, kFalse);
        EXPECT_FALSE(plotState.interrupted);
        EXPECT_EQ(TestShell().boxes.size(), 1U) << "the next plot is whole again";
    }
}

// The lines of each kind in the order in which they are drawn, each with the kind that follows.
struct FaultRow {
    std::int16_t type;
    std::int16_t later;
    bool ofPoints;
};

// Pens tell the type by their width and the point by their colour.
void GiveEachTypeAndPointItsPen() {
    for (std::size_t type = 1; type <= 11; ++type) {
        LineStyle& style = settings.lineStyle[type];
        style.thickness = static_cast<std::int16_t>(type);
        style.style = 0;
        style.colour = 0;
        style.planetColour = kTrue;
    }
    for (std::size_t p = 1; p < pointColour.size(); ++p) {
        pointColour[p] = static_cast<Colour>(1000 + p);
    }
}

std::string PenOf(std::int16_t type, int colour) {
    return "SetPen " + std::to_string(type) + " 0 " + std::to_string(colour);
}

TEST_F(ChartLines, AFaultLeavesLaterPointsAndTypesUndrawn) {
    constexpr float kNone = std::numeric_limits<float>::quiet_NaN();
    GiveEachTypeAndPointItsPen();
    for (const FaultRow& row :
         {FaultRow{7, 8, true}, FaultRow{8, 5, false}, FaultRow{5, 6, true}, FaultRow{6, 1, true},
          FaultRow{1, 2, true}, FaultRow{2, 3, true}, FaultRow{3, 4, true}, FaultRow{4, 10, true},
          FaultRow{10, 11, false}, FaultRow{11, 9, false}}) {
        ShowTypes({static_cast<std::size_t>(row.type), static_cast<std::size_t>(row.later)});
        options.paranLimit = 90;
        options.paranPoint = 2;
        for (const std::size_t p : {1, 2, 3, 5}) Place(p, 40.0F * static_cast<float>(p), 10);
        Chart().RA[23] = row.type >= 10 ? kNone : 0;
        chartNow.PlaceLat = row.type == 8 ? kNone : 30;
        if (row.ofPoints) Chart().Dec[3] = Chart().RA[3] = kNone;
        Draw();
        RunTimeError fault;
        EXPECT_TRUE(TakeRunTimeError(fault)) << row.type;
        EXPECT_EQ(fault.number, error::kOverflow);
        const int first = row.ofPoints ? 1001 : 0;
        EXPECT_FALSE(surface_.Calls(PenOf(row.type, first)).empty()) << row.type;
        EXPECT_TRUE(surface_.Calls(PenOf(row.type, 1005)).empty()) << row.type;
        // Rise and set lines are drawn point by point.
        for (const int colour : {0, 1001, 1003, 1005}) {
            if (row.type == 3 && colour == 1001) continue;
            EXPECT_TRUE(surface_.Calls(PenOf(row.later, colour)).empty()) << row.type;
        }
        EXPECT_TRUE(surface_.Calls("TextOut").empty()) << "neither labels nor marks";
    }
}

TEST_F(ChartLines, AFaultIsReportedBeforeAnyQuestionAndARetryAsks) {
    ShowTypes({5});
    Place(1, 100, -20);
    Place(3, 40, std::numeric_limits<float>::quiet_NaN());
    const std::string report = "Orvantis: An error occurred whilst plotting: / Overflow / ";
    chartLines.askedByUser = kTrue;
    TestShell().boxAnswers = {BoxAnswer::Cancel};
    PlotMap4(kFalse, surface_, kFalse);
    EXPECT_EQ(TestShell().boxes, std::vector<std::string>{report});
    EXPECT_EQ(session.ChartNumber, 1);
    EXPECT_NE(chartLines.askedByUser, kFalse);

    // The second time there is nothing to draw, and so nothing to be seen.
    refreshCaption = [] {
        if (TestShell().boxes.size() == 1) calcChart[1].Lon[3] = -1;
    };
    TestShell().boxes.clear();
    TestShell().boxAnswers = {BoxAnswer::Retry, BoxAnswer::Cancel};
    PlotMap4(kFalse, surface_, kFalse);
    ASSERT_EQ(TestShell().boxes.size(), 2U);
    EXPECT_EQ(TestShell().boxes[0], report);
    EXPECT_TRUE(TestShell().boxes[1].starts_with("Orvantis: Lines for the selected chart are not"));
    EXPECT_EQ(session.ChartNumber, 0);
    EXPECT_EQ(chartLines.askedByUser, kFalse);
}

TEST_F(ChartLines, AfterAFaultInTheChartsLinesNoEclipseIsDrawn) {
    ShowTypes({1});
    Place(3, std::numeric_limits<float>::quiet_NaN(), 10);
    session.EclipseNumber = 1;
    plotEclipseLines = [](Flag) { Log("eclipse"); };
    Draw();
    EXPECT_TRUE(surface_.Calls("eclipse").empty());
    RunTimeError fault;
    EXPECT_TRUE(TakeRunTimeError(fault));
    Chart().RA[3] = 40;
    Draw();
    EXPECT_EQ(surface_.Calls("eclipse").size(), 1U);
}

TEST_F(ChartLines, AHiddenChartAndAHiddenEclipseAreEachAskedAboutInOnePlot) {
    ShowTypes({});
    struct Row {
        BoxAnswer ofChart, ofEclipse;
        std::int16_t chart, eclipse;  // what is kept
    };
    for (const Row& row :
         {Row{BoxAnswer::Cancel, BoxAnswer::Ok, 0, 5}, Row{BoxAnswer::Ok, BoxAnswer::Cancel, 1, 0},
          Row{BoxAnswer::Ok, BoxAnswer::Ok, 1, 5}}) {
        session.ChartNumber = 1;
        session.EclipseNumber = 5;
        chartLines.askedByUser = kTrue;
        TestShell().boxes.clear();
        TestShell().boxAnswers = {row.ofChart, row.ofEclipse};
        Draw();
        ASSERT_EQ(TestShell().boxes.size(), 2U);
        EXPECT_TRUE(TestShell().boxes[0].starts_with("Orvantis: Lines for the selected chart "));
        EXPECT_TRUE(TestShell().boxes[1].starts_with("Orvantis: Lines for the selected eclipse "));
        EXPECT_EQ(session.ChartNumber, row.chart);
        EXPECT_EQ(session.EclipseNumber, row.eclipse);
    }
}

// The set line reaches latitude 50; its label on the equator is in the longitudes of the view.
TEST_F(ChartLines, AHiddenChartThatIsClearedLeavesNoLabelsMarksAndObjects) {
    ShowTypes({4});
    Place(3, 0, 40);
    View(60, 60, 80, 120);
    for (const BoxAnswer answer : {BoxAnswer::Ok, BoxAnswer::Cancel}) {
        chartLines.askedByUser = kTrue;
        TestShell().boxes.clear();
        TestShell().boxAnswers = {answer};
        Draw();
        ASSERT_EQ(TestShell().boxes.size(), 1U);
        const bool kept = answer == BoxAnswer::Ok;
        EXPECT_EQ(chartLines.labels.size(), kept ? 1U : 0U);
        EXPECT_EQ(chartLines.objects.size(), kept ? 1U : 0U);
        EXPECT_EQ(surface_.Calls("PutImage").size(), kept ? 0U : 1U);
        EXPECT_EQ(surface_.Calls("TextOut").empty(), !kept);
        EXPECT_TRUE(mapView.edgeMarks.empty());
    }
}

TEST_F(ChartLines, AHiddenChartThatIsClearedTakesItsNightSideAlong) {
    ShowTypes({});
    Place(3, 40, 10);
    options.dayNight = kTrue;
    PlotMap4(kFalse, surface_, kTrue);
    const Image kept = session.StoredImage;
    chartLines.askedByUser = kTrue;
    TestShell().boxAnswers = {BoxAnswer::Cancel};
    surface_.log.clear();
    PlotMap4(kFalse, surface_, kFalse);
    EXPECT_EQ(session.ChartNumber, 0);
    EXPECT_EQ(surface_.Calls("Polygon").size(), 1U);
    const auto polygon = std::find_if(surface_.log.begin(), surface_.log.end(),
                                      [](const auto& call) { return call.starts_with("Polygon"); });
    EXPECT_EQ(std::count_if(polygon, surface_.log.end(),
                            [](const auto& call) { return call.starts_with("PutImage"); }),
              1)
        << "the stored image covers the shade";
    Image left;
    surface_.CopyImage(left);
    EXPECT_EQ(left.pixels, kept.pixels);
}

TEST_F(ChartLines, WhatIsKeptBesideAClearedChartOrEclipseIsDrawnAnew) {
    ShowTypes({});
    Place(3, 40, 10);
    options.dayNight = kTrue;
    plotEclipseLines = [](Flag) {
        Log("eclipse");
        AddLineLabel(100, 100, 1, line_type::kEclipseCentral);
    };
    for (const bool chartKept : {true, false}) {
        session.ChartNumber = 1;
        session.EclipseNumber = 5;
        chartLines.askedByUser = kTrue;
        TestShell().boxAnswers = {chartKept ? BoxAnswer::Ok : BoxAnswer::Cancel,
                                  chartKept ? BoxAnswer::Cancel : BoxAnswer::Ok};
        Draw();
        EXPECT_EQ(surface_.Calls("PutImage").size(), 1U);
        EXPECT_EQ(surface_.Calls("Polygon").size(), chartKept ? 2U : 1U);
        EXPECT_EQ(surface_.Calls("eclipse").size(), chartKept ? 1U : 2U);
        EXPECT_EQ(chartLines.objects.size(), chartKept ? 0U : 1U) << "and none twice";
    }
}

TEST_F(ChartLines, NothingIsAskedIfTheChartOrTheEclipseIsVisible) {
    session.EclipseNumber = 5;
    ShowTypes({});
    plotEclipseLines = [](Flag) { chartLines.anyVisible = true; };
    chartLines.askedByUser = kTrue;
    Draw();
    EXPECT_TRUE(TestShell().boxes.empty()) << "the eclipse is visible";
    EXPECT_EQ(chartLines.askedByUser, kFalse);

    plotEclipseLines = nullptr;
    ShowTypes({1});
    Place(3, 40, 10);
    chartLines.askedByUser = kTrue;
    Draw();
    EXPECT_TRUE(TestShell().boxes.empty()) << "the chart is";
}

TEST_F(ChartLines, APlotWithNothingToDrawIsTheOneThatWasAskedFor) {
    ShowTypes({});
    session.ChartNumber = 0;
    chartLines.askedByUser = kTrue;
    Draw();
    session.ChartNumber = 1;
    Draw();
    EXPECT_TRUE(TestShell().boxes.empty());
}

// Without the declination the geodetic horizon of the zodiacal mode is the meridian 90 degrees from
// the point; so is every horizon at declination 0.
TEST_F(ChartLines, RiseAndSetLinesOfDeclination0AreDrawnUprightFromEndToEnd) {
    for (const bool geodetic : {true, false}) {
        options.mapZodiac = geodetic ? 1 : 0;
        options.lineMode = geodetic ? 2 : 1;
        options.geodeticAscDsc = kFalse;
        Place(3, 40, geodetic ? 20.0F : 0.0F);
        Chart().Lon[3] = 40;
        for (const std::size_t type : {3, 4}) {
            ShowTypes({type});
            Draw();
            const MapRect& rect = mapView.rect;
            const int x = PixelsOf(0, type == 3 ? -50 : 130).first;
            int low = rect.top;
            int high = rect.top + rect.height;
            const std::vector<std::string> calls = PenCalls(surface_);
            EXPECT_GE(calls.size(), 91U);
            for (const std::string& call : calls) {
                EXPECT_EQ(PlaceOfCall(call).first, x) << call << " type " << type;
                low = std::max(low, PlaceOfCall(call).second);
                high = std::min(high, PlaceOfCall(call).second);
            }
            EXPECT_EQ(low, rect.top + rect.height);
            EXPECT_EQ(high, rect.top);
        }
    }
}

TEST_F(ChartLines, TheZodiacalModeIsDrawnFromTheEclipticLongitude) {
    // At 0 Aries right ascension is 0 whatever the obliquity, so the line stands at longitude 0.
    ShowTypes({1});
    Place(3, 40, 10);
    options.lineMode = 2;
    SetView();
    PlotChartLines(kFalse, kTrue, 1);
    ExpectObjectAt(10, 0);
}

}  // namespace
}  // namespace orvantis

#include "session/mouse_modes.h"

#include <cmath>
#include <limits>
#include <random>

#include "charts/CALCCHRT.h"
#include "charts/SwissEph.h"
#include "lines/chart_lines.h"
#include "map/map_fixture.h"
#include "map/view_edges.h"
#include "map/view_ring.h"
#include "session/commands.h"
#include "session/ini_settings.h"
#include "support/paths.h"
#include "text/angles.h"
#include "text/numbers.h"
#include "text/run_time_error.h"

namespace orvantis {
namespace {

std::vector<std::string> plots;
int refreshes = 0;

// On the map of the whole world one pixel is one degree: the place 0, 0 lies at (205, 129).
constexpr float kX = 205;
constexpr float kY = 129;

class MouseModes : public MapTest {
  protected:
    void SetUp() override {
        MapTest::SetUp();
        plots.clear();
        refreshes = 0;
        plotFull = [] { Plotted("full"); };
        plotQuick = [] { Plotted("quick"); };
        refreshOverlay = [] { ++refreshes; };
        SetView(-90, -180, 90, 180, projection::kCartesian);
        session.StartupDone = kTrue;
    }

    void SetView(float south, float west, float north, float east, std::int16_t projectionNumber) {
        MapTest::SetView(south, west, north, east, projectionNumber);
        mapView.surface = nullptr;  // as between plots
    }

    // What every plot does to the view, be it full or quick.
    static void Plotted(const char* kind) {
        plots.emplace_back(kind);
        ++plotState.screenPlots;
        SetViewExtent();
    }

    static void Drag(float x0, float y0, float x1, float y1) {
        MouseDown(x0, y0, false);
        MouseMove(x1, y1, true, false);
        MouseUp(x1, y1, false);
    }

    static void Click(float x, float y) {
        MouseDown(x, y, false);
        MouseUp(x, y, false);
    }

    static void ExpectEdges(float south, float west, float north, float east) {
        EXPECT_FLOAT_EQ(CurrentMap().south, south);
        EXPECT_FLOAT_EQ(CurrentMap().west, west);
        EXPECT_FLOAT_EQ(CurrentMap().north, north);
        EXPECT_FLOAT_EQ(CurrentMap().east, east);
    }

    static void ExpectUntouched() {
        EXPECT_TRUE(plots.empty());
        EXPECT_EQ(mapState.current, 1);
        EXPECT_TRUE(TestShell().log.empty());
    }

    // 31 December 1992, 14:29:07 UT, as a chart in slot 1.
    static void ShowChart() {
        OpenSwissEphemeris(kEphemeris, "");
        Format1Record record;
        record.day = 31;
        record.month = 12;
        record.year = 1992;
        record.hour = 14;
        record.minute = 29;
        record.second = 7;
        record.houseCode = 5;
        record.ayanamsaCode = 1;
        ASSERT_EQ(FileChartToCalcChart(record, 1, kFalse), kFalse);
        session.ChartNumber = 1;
    }

    using Log = std::vector<std::string>;
};

std::string Blanks(std::size_t count) {
    return std::string(count, ' ');
}

using Figure = OverlayFigure;
using Figures = std::vector<OverlayFigure>;

// ---- modes ----

TEST_F(MouseModes, TheProgramStartsWithMeasuringAndTheModesHaveTheirCaptions) {
    EXPECT_EQ(mouseState.mode, 0);
    EXPECT_EQ(MouseModeCaption(0), "Drag to Measure Distance");
    EXPECT_EQ(MouseModeCaption(1), "Drag to Select Zoom Rectangle");
    EXPECT_EQ(MouseModeCaption(2), "Drag to Move Map");
    EXPECT_EQ(MouseModeCaption(3), "Click to Relocate Chart");
    EXPECT_EQ(MouseModeCaption(4), "Click to Fill with Color");
    EXPECT_EQ(MouseModeCaption(5), "Drag to Place Ruler");
    EXPECT_EQ(MouseModeCaption(-1), "");
    EXPECT_EQ(MouseModeCaption(6), "");
}

TEST_F(MouseModes, ModesTwoAndThreeHaveAPointerOfTheirOwnAndTheOthersACross) {
    const std::string cross = "SetPointer|" + std::to_string(static_cast<int>(Pointer::Cross));
    const std::string move = "SetPointer|" + std::to_string(static_cast<int>(Pointer::Move));
    for (std::int16_t mode = 0; mode < mouse_mode::kModes; ++mode) SetMouseMode(mode);
    EXPECT_EQ(TestShell().log, (Log{cross, cross, move, move, cross, cross}));
    EXPECT_EQ(refreshes, 6) << "each choice repaints the overlay";
    EXPECT_EQ(mouseState.mode, 5);
    SetMouseMode(6);
    SetMouseMode(-1);
    EXPECT_EQ(mouseState.mode, 5);
}

TEST_F(MouseModes, ChoosingAModeGivesUpADrag) {
    MouseDown(kX, kY, false);
    MouseMove(kX + 9, kY, true, false);
    SetMouseMode(mouse_mode::kZoom);
    EXPECT_FALSE(DragInProgress());
    EXPECT_TRUE(Overlay().empty());
    MouseUp(kX + 9, kY, false);
    EXPECT_EQ(mapState.current, 1);
    EXPECT_TRUE(plots.empty());
}

// ---- position report ----

TEST_F(MouseModes, PositionIsReportedInColumns) {
    MouseMove(kX + 145, kY - 37, false, false);
    EXPECT_EQ(mouseState.positionText, "37N00" + Blanks(8) + "145E00" + Blanks(19));
    MouseMove(kX - 8, kY + 5, false, false);
    EXPECT_EQ(mouseState.positionText, "05S00" + Blanks(8) + "008W00" + Blanks(19));
}

TEST_F(MouseModes, OutsideTheMapThePositionIsCleared) {
    for (const auto& [x, y] : {std::pair{24, 129}, {386, 129}, {205, 38}, {205, 220}}) {
        mouseState.positionText = "stale";
        MouseMove(static_cast<float>(x), static_cast<float>(y), false, false);
        EXPECT_EQ(mouseState.positionText, "") << x << " " << y;
    }
    for (const auto& [x, y] : {std::pair{25, 39}, {385, 219}}) {
        MouseMove(static_cast<float>(x), static_cast<float>(y), false, false);
        EXPECT_NE(mouseState.positionText, "") << x << " " << y;
    }
    MouseLeave();
    EXPECT_EQ(mouseState.positionText, "");
}

TEST_F(MouseModes, OutsideTheGlobeThePositionIsCleared) {
    SetView(10, -90, 10, 90, projection::kGlobeSphere);
    MouseMove(mapView.rect.left + 3.0F, mapView.rect.top + 3.0F, false, false);
    EXPECT_EQ(mouseState.positionText, "");
    MouseMove(mapView.rect.left + mapView.rect.width / 2.0F,
              mapView.rect.top + mapView.rect.height / 2.0F, false, false);
    EXPECT_EQ(mouseState.positionText, "10N00" + Blanks(8) + "000E00" + Blanks(19));
}

TEST_F(MouseModes, APositionOfZeroIsNotOnTheMapArea) {
    mouseState.positionText = "stays";
    MouseMove(0, kY, false, false);
    MouseMove(kX, 0, false, false);
    EXPECT_EQ(mouseState.positionText, "stays");
}

TEST_F(MouseModes, BeforeTheFirstPictureAndDuringAPlotEventsDoNothing) {
    SetMouseMode(mouse_mode::kMove);
    TestShell().log.clear();
    for (const bool starting : {true, false}) {
        session.StartupDone = starting ? kFalse : kTrue;
        plotState.inProgress = !starting;
        MouseMove(kX, kY, false, false);
        Drag(kX, kY, kX + 20, kY);
        MouseDown(kX, kY, true);
        WheelZoom(kX, kY, 1);
        MouseDoubleClick(kX, kY);
        PageUpKey();
        EXPECT_EQ(mouseState.positionText, "");
        EXPECT_FALSE(DragInProgress());
        EXPECT_EQ(LinesNear(kX, kY), "");
        ExpectUntouched();
    }
}

// ---- right button ----

// Ascendant and Midheaven by swetest -b31.12.1992 -ut14:29:07 -house<long>,<lat>,P, rounded to
// minutes.
TEST_F(MouseModes, RightButtonTellsTheAnglesOfThePlace) {
    ShowChart();
    const CalcChart before = calcChart[1];
    MouseDown(kX, kY - 51, true);
    EXPECT_EQ(mouseState.positionText, "MC=15Aq05 Asc=20Ge09");
    MouseMove(kX - 74, kY + 41, false, true);
    EXPECT_EQ(mouseState.positionText, "MC=05Sg28 Asc=09Pi07");
    MouseMove(kX + 151, kY + 34, false, true);
    EXPECT_EQ(mouseState.positionText, "MC=17Cn07 Asc=27Li52");
    EXPECT_EQ(calcChart[1].Lon, before.Lon) << "the chart stays as it is";
    EXPECT_EQ(chartNow.PlaceLat, 0);
    MouseUp(kX + 151, kY + 34, true);
    MouseMove(kX, kY, false, false);
    EXPECT_EQ(mouseState.positionText, "00N00" + Blanks(8) + "000E00" + Blanks(19));
    CloseSwissEphemeris();
}

TEST_F(MouseModes, RightButtonWithoutAChartTellsThePosition) {
    MouseDown(kX, kY - 51, true);
    EXPECT_EQ(mouseState.positionText, "51N00" + Blanks(8) + "000E00" + Blanks(19));
    EXPECT_EQ(DisplayAscMC(51, 0), "");
    session.ChartNumber = 1;
    MouseDown(10, 10, true);
    EXPECT_EQ(mouseState.positionText, "") << "off the map";
    EXPECT_FALSE(DragInProgress());
}

// A composite chart has no moment: its Midheaven is what it was handed over with.
TEST_F(MouseModes, RightButtonOnAChartWithoutAMomentTurnsItsOwnMidheaven) {
    ShowChart();
    CalcChart& chart = calcChart[1];
    chart.ChartType = 5;
    chart.ChartSubType = 1;
    chartNow.PlaceLat = 50;
    chartNow.PlaceLongW = -20;
    CalcAngles(1, 123, chartNow.ObliquityNow, 50, chartNow.ZodiacOffsetNow, kFalse);
    CalcEquatorial(1, chartNow.ObliquityNow, chartNow.ZodiacOffsetNow);
    const auto text = [](std::size_t n) {
        return FormatAngle(calcChart[1].Lon[n], angle_style::kSignName, 2, kFalse, kTrue, kFalse,
                           kFalse);
    };
    for (const double julianDay : {chart.JulianDayET, 0.0, 2415020.0}) {
        chart.JulianDayET = julianDay;
        if (julianDay == 0) continue;  // its obliquity is of another age
        double ascendant = 0;
        double midheaven = 0;
        AnglesAtPlace(1, 50, -20, ascendant, midheaven);
        EXPECT_NEAR(midheaven, chart.Lon[point::kMidheaven], 0.03) << julianDay;
        EXPECT_NEAR(ascendant, chart.Lon[point::kAscendant], 0.03) << julianDay;

        // A body culminates where the Midheaven's right ascension is its own.
        const double sunLine =
            Modulo(chart.RA[3] - chart.RA[point::kMidheaven] + 20 + 180, 360) - 180;
        AnglesAtPlace(1, 0, -sunLine, ascendant, midheaven);
        EXPECT_NEAR(midheaven, chart.Lon[3], 0.03) << julianDay;
    }
    ShowChart();
    chart.ChartType = 5;
    chart.ChartSubType = 1;
    const std::string own = "MC=" + text(point::kMidheaven) + " Asc=" + text(point::kAscendant);
    EXPECT_EQ(DisplayAscMC(static_cast<float>(chartNow.PlaceLat), 0), own);
    chart.JulianDayET = 0;
    EXPECT_FALSE(HasMoment(chart));
    CloseSwissEphemeris();
}

// ---- maps that are no maps ----

TEST_F(MouseModes, OnAMapOfImpossibleEdgesTheMouseLeavesNoErrorBehind) {
    ShowChart();
    CurrentMap().gridOn = kTrue;
    const float kInfinity = std::numeric_limits<float>::infinity();
    const float nan = std::nanf("");
    const struct {
        float south, west, north, east;
    } maps[] = {{nan, nan, nan, nan},
                {-90, nan, 90, 180},
                {nan, -180, 90, 180},
                {-90, -180, kInfinity, 180},
                {-kInfinity, -kInfinity, kInfinity, kInfinity},
                {-90, -1e30F, 90, 1e30F},
                {-1e30F, -180, 1e30F, 180}};
    RunTimeError told;
    for (const auto& map : maps) {
        for (const std::int16_t projectionNumber : {0, 1, 2, 3}) {
            SetView(map.south, map.west, map.north, map.east, projectionNumber);
            TakeRunTimeError(told);  // the plot tells of the view
            for (std::int16_t mode = 0; mode < mouse_mode::kModes; ++mode) {
                SetMouseMode(mode);
                MouseMove(kX + 3, kY, false, false);
                EXPECT_EQ(PendingRunTimeError(), 0) << mode;
                MouseDown(kX + 3, kY, true);
                MouseMove(kX + 9, kY, false, true);
                MouseUp(kX + 9, kY, true);
                EXPECT_EQ(PendingRunTimeError(), 0) << mode;
                MouseDown(kX, kY, false);
                MouseMove(kX + 30, kY + 20, true, false);
                EXPECT_EQ(mouseState.positionText.find("nan"), std::string::npos);
                Overlay();
                LinesNear(kX, kY);
                CancelDrag();
                EXPECT_EQ(PendingRunTimeError(), 0) << mode;
            }
            WheelZoom(kX, kY, 0);
            MouseDoubleClick(kX, kY);
            EXPECT_EQ(PendingRunTimeError(), 0);
        }
    }
    EXPECT_EQ(RecalculateChart(1), kFalse);
    EXPECT_TRUE(TestShell().boxes.empty());
    CloseSwissEphemeris();
}

TEST_F(MouseModes, BetweenPlacesThatAreNoneThereIsNoDistance) {
    const float nan = std::nanf("");
    SetView(nan, nan, nan, nan, projection::kCartesian);
    RunTimeError told;
    TakeRunTimeError(told);
    MouseDown(kX, kY, false);
    MouseMove(kX + 30, kY + 20, true, false);
    EXPECT_EQ(mouseState.positionText, "");
    MouseUp(kX + 30, kY + 20, false);
    EXPECT_EQ(PendingRunTimeError(), 0);
}

TEST_F(MouseModes, AnErrorOfOthersOutlivesAMoveOfTheMouse) {
    RaiseRunTimeError(error::kPastEnd);
    MouseMove(kX, kY, false, false);
    EXPECT_EQ(PendingRunTimeError(), error::kPastEnd);
    RunTimeError failure;
    TakeRunTimeError(failure);
}

// ---- the drag mark ----

TEST_F(MouseModes, AnyButtonDownSetsTheDragMarkAndItsUpClearsIt) {
    for (std::int16_t mode = 0; mode < mouse_mode::kModes; ++mode) {
        SetMouseMode(mode);
        for (const bool right : {false, true}) {
            for (const float x : {kX, 10.0F}) {  // on the map and off it
                EXPECT_EQ(mouseState.dragMark, kFalse);
                MouseDown(x, kY, right);
                EXPECT_NE(mouseState.dragMark, kFalse) << mode;
                MouseMove(x, kY, !right, right);
                EXPECT_NE(mouseState.dragMark, kFalse) << mode;
                MouseUp(x, kY, right);
                EXPECT_EQ(mouseState.dragMark, kFalse) << mode;
            }
        }
    }
}

TEST_F(MouseModes, AMoveWithoutAButtonClearsTheDragMarkAndEscDoesNot) {
    MouseDown(kX, kY, false);
    CancelDrag();
    EXPECT_NE(mouseState.dragMark, kFalse) << "the button is down still";
    MouseMove(kX, kY, false, false);
    EXPECT_EQ(mouseState.dragMark, kFalse);
    plotState.inProgress = true;
    MouseDown(kX, kY, true);
    EXPECT_NE(mouseState.dragMark, kFalse) << "whatever goes on";
    MouseUp(kX, kY, true);
    EXPECT_EQ(mouseState.dragMark, kFalse);
    plotState.inProgress = false;
}

// ---- boxes ----

int marks = 0;

// Whether each box finds a command running, and whether the menus are brought in step afterwards.
TEST_F(MouseModes, WhileABoxOfTheMouseStandsACommandRuns) {
    marks = 0;
    refreshMenuMarks = [] {
        ++marks;
        EXPECT_FALSE(CommandRuns()) << "what has waited for the end may come now";
    };
    TestShell().whileAsking = [] { EXPECT_TRUE(CommandRuns()); };
    relocateChart = [](double, double) {};
    SetMouseMode(mouse_mode::kRelocate);
    Click(kX, kY);
    session.ChartNumber = 1;
    Click(kX, kY);
    SetMouseMode(mouse_mode::kFill);
    Click(kX, kY);
    SetMouseMode(mouse_mode::kZoom);
    Drag(kX - 130, kY - 70, kX + 130, kY + 70);
    Drag(kX, kY, kX + 0.5F, kY + 0.25F);
    EXPECT_EQ(TestShell().boxes.size(), 5U);
    EXPECT_EQ(marks, 5);
    EXPECT_FALSE(CommandRuns());
    SetMouseMode(mouse_mode::kMeasure);
    Drag(kX, kY, kX + 20, kY);
    EXPECT_TRUE(TestShell().boxes.size() == 5U);
}

// ---- measuring ----

// Great-circle distance in degrees by the haversine (R. Sinnott, Virtues of the Haversine, Sky and
// Telescope 68, 1984): another formula than the program's.
double Haversine(double lat1, double long1, double lat2, double long2) {
    const double rad = std::acos(-1.0) / 180;
    const double a = std::pow(std::sin((lat2 - lat1) * rad / 2), 2) +
                     std::cos(lat1 * rad) * std::cos(lat2 * rad) *
                         std::pow(std::sin((long2 - long1) * rad / 2), 2);
    return 2 * std::asin(std::sqrt(a)) / rad;
}

TEST_F(MouseModes, ADraggedLineTellsTheDistanceOfAGeodesic) {
    struct Row {
        int lat1, long1, lat2, long2;
        const char* text;  // by hand: the haversine times 111.32 and 69.173, cut to whole numbers
    };
    const Row rows[] = {{0, 0, 0, 10,
                         "1113km 691mi  10\xB0"
                         "00'"},
                        {0, 0, 45, 0,
                         "5009km 3112mi  45\xB0"
                         "00'"},
                        {0, -90, 0, 89,
                         "19926km 12381mi  179\xB0"
                         "00'"}};
    for (const Row& row : rows) {
        MouseDown(kX + row.long1, kY - row.lat1, false);
        MouseMove(kX + row.long2, kY - row.lat2, true, false);
        EXPECT_TRUE(mouseState.positionText.ends_with(Blanks(19) + row.text))
            << mouseState.positionText;
        MouseUp(kX + row.long2, kY - row.lat2, false);
    }
    const int pairs[][4] = {
        {41, -74, 51, 0}, {-34, 151, 34, -118}, {60, 170, 60, -170}, {1, 1, 2, 2}};
    for (const auto& p : pairs) {
        const double degrees = Haversine(p[0], p[1], p[2], p[3]);
        const std::string expected = std::to_string(static_cast<int>(degrees * 111.32)) + "km " +
                                     std::to_string(static_cast<int>(degrees * 69.173)) + "mi  ";
        MouseDown(kX + p[1], kY - p[0], false);
        MouseMove(kX + p[3], kY - p[2], true, false);
        EXPECT_NE(mouseState.positionText.find(Blanks(19) + expected), std::string::npos)
            << mouseState.positionText << " / " << expected;
        MouseUp(kX + p[3], kY - p[2], false);
    }
}

TEST_F(MouseModes, ADragInModeZeroThatEndsWhereItBeganShowsNoDistance) {
    MouseDown(kX, kY, false);
    MouseMove(kX + 5, kY, true, false);
    MouseMove(kX, kY, true, false);
    EXPECT_EQ(mouseState.positionText, "00N00" + Blanks(8) + "000E00" + Blanks(19) +
                                           "0km 0mi  0\xB0"
                                           "00'");
    MouseUp(kX, kY, false);
    ExpectUntouched();
}

TEST_F(MouseModes, MeasuringShowsACrossAtItsStartAndALineAndTakesThemAwayAtItsEnd) {
    MouseDown(100, 100, false);
    EXPECT_TRUE(Overlay().empty());
    MouseMove(130, 90, true, false);
    EXPECT_EQ(Overlay(), (Figures{{Figure::Kind::Cross, 100, 100, 130, 90},
                                  {Figure::Kind::InvertedLine, 100, 100, 130, 90}}));
    MouseMove(131, 90, true, false);
    ASSERT_EQ(Overlay().size(), 2U);
    EXPECT_EQ(Overlay()[1].x1, 131);
    EXPECT_TRUE(DragInProgress());
    MouseUp(131, 90, false);
    EXPECT_TRUE(Overlay().empty());
    EXPECT_EQ(mouseState.dragStartX, -1);
    EXPECT_FALSE(DragInProgress());
    ExpectUntouched();
}

TEST_F(MouseModes, ADragThatStartsOffTheMapIsNone) {
    for (const std::int16_t mode : {mouse_mode::kMeasure, mouse_mode::kZoom, mouse_mode::kMove}) {
        SetMouseMode(mode);
        TestShell().log.clear();
        MouseDown(10, 100, false);
        EXPECT_EQ(mouseState.dragStartX, -1);
        MouseMove(100, 100, true, false);
        EXPECT_TRUE(Overlay().empty());
        MouseUp(100, 100, false);
        ExpectUntouched();
    }
}

TEST_F(MouseModes, ADragBeyondAFlatMapIsHeldAtItsEdge) {
    MouseDown(100, 100, false);
    MouseMove(400, 300, true, false);
    ASSERT_EQ(Overlay().size(), 2U);
    EXPECT_EQ(Overlay()[1].x1, 385);
    EXPECT_EQ(Overlay()[1].y1, 219);
}

TEST_F(MouseModes, ADragBeyondAGlobeStaysWhereItWas) {
    SetView(0, -90, 0, 90, projection::kGlobeSphere);
    const float middleX = mapView.rect.left + mapView.rect.width / 2.0F;
    const float middleY = mapView.rect.top + mapView.rect.height / 2.0F;
    MouseDown(middleX, middleY, false);
    MouseMove(middleX + 20, middleY, true, false);
    const Figures before = Overlay();
    MouseMove(mapView.rect.left, mapView.rect.top, true, false);
    EXPECT_EQ(Overlay(), before);
}

TEST_F(MouseModes, ModesThatMeasureNothingAddNoTextToThePositionDuringADrag) {
    for (const std::int16_t mode :
         {mouse_mode::kZoom, mouse_mode::kMove, mouse_mode::kRelocate, mouse_mode::kFill}) {
        SetMouseMode(mode);
        MouseDown(kX, kY, false);
        MouseMove(kX + 10, kY - 20, true, false);
        EXPECT_EQ(mouseState.positionText, "20N00" + Blanks(8) + "010E00" + Blanks(19)) << mode;
        CancelDrag();
    }
}

TEST_F(MouseModes, DraggingAFigureMakesNoPlot) {
    CurrentMap().gridOn = kTrue;  // 180 west, at the left edge, is a line of it
    ShowChart();
    for (const std::int16_t mode :
         {mouse_mode::kMeasure, mouse_mode::kZoom, mouse_mode::kMove, mouse_mode::kRuler}) {
        SetMouseMode(mode);
        surface.log.clear();
        MouseDown(25, 100, false);
        for (int x = 26; x < 300; ++x) MouseMove(static_cast<float>(x), 110, true, false);
        EXPECT_FALSE(Overlay().empty()) << mode;
        EXPECT_TRUE(surface.log.empty()) << "the picture isn't touched";
        EXPECT_TRUE(plots.empty());
        CancelDrag();
    }
    CloseSwissEphemeris();
}

TEST_F(MouseModes, AButtonThatWentUpUnseenEndsTheDrag) {
    SetMouseMode(mouse_mode::kMove);
    MouseDown(100, 100, false);
    MouseMove(120, 100, true, false);
    MouseMove(130, 100, false, false);
    EXPECT_FALSE(DragInProgress());
    EXPECT_TRUE(Overlay().empty());
    MouseUp(130, 100, false);
    EXPECT_TRUE(plots.empty());
}

TEST_F(MouseModes, APlotInTheMiddleOfADragGivesItUp) {
    CurrentMap().gridOn = kTrue;  // 180 west, at the left edge, is a line of it
    CurrentMap().hidden.fill(kTrue);
    relocateChart = [](double, double) { plots.emplace_back("relocated"); };
    for (std::int16_t mode = 0; mode < mouse_mode::kModes; ++mode) {
        for (const bool moves : {true, false}) {
            SetMouseMode(mode);
            TestShell().log.clear();
            MouseDown(25, 100, false);
            MouseMove(60, 110, true, false);
            EXPECT_TRUE(DragInProgress()) << mode;
            ++plotState.screenPlots;
            if (moves) {
                MouseMove(80, 120, true, false);
                EXPECT_FALSE(DragInProgress()) << mode;
                EXPECT_EQ(mouseState.positionText.find("km"), std::string::npos);
            }
            MouseUp(80, 120, false);
            EXPECT_FALSE(DragInProgress()) << mode;
            EXPECT_TRUE(Overlay().empty()) << mode;
            EXPECT_EQ(CurrentMap().fillCount, 0);
            ExpectUntouched();
        }
    }
}

TEST_F(MouseModes, EscGivesADragUp) {
    SetMouseMode(mouse_mode::kZoom);
    TestShell().log.clear();
    MouseDown(100, 100, false);
    MouseMove(180, 140, true, false);
    ASSERT_FALSE(Overlay().empty());
    refreshes = 0;
    CancelDrag();
    EXPECT_EQ(refreshes, 1);
    EXPECT_TRUE(Overlay().empty());
    EXPECT_EQ(mouseState.dragStartX, -1);
    MouseMove(190, 150, true, false);
    MouseUp(190, 150, false);
    ExpectUntouched();
}

// ---- zoom rectangle ----

TEST_F(MouseModes, ZoomRectangleKeepsTheMapsProportionsAndBecomesTheView) {
    SetMouseMode(mouse_mode::kZoom);
    TestShell().log.clear();
    MouseDown(kX - 100, kY - 60, false);
    MouseMove(kX - 20, kY - 55, true, false);
    EXPECT_EQ(Overlay(), (Figures{{Figure::Kind::ZoomRectangle, 105, 69, 185, 109}}));
    MouseUp(kX - 20, kY - 55, false);
    EXPECT_EQ(mapState.current, 2);
    ExpectEdges(20, -100, 60, -20);
    EXPECT_EQ(CurrentMap().title, "Lat: 20N00 to 60N00  Long: 100W00 to 020W00");
    EXPECT_EQ(plots, Log{"full"});
    EXPECT_TRUE(TestShell().log.empty());
    EXPECT_TRUE(Overlay().empty());
}

TEST_F(MouseModes, ZoomRectangleIsTheSameFromEachOfItsCorners) {
    const float corners[][4] = {
        {-100, 60, -20, 20}, {-20, 20, -100, 60}, {-100, 20, -20, 60}, {-20, 60, -100, 20}};
    SetMouseMode(mouse_mode::kZoom);
    for (const auto& c : corners) {
        SetView(-90, -180, 90, 180, projection::kCartesian);
        Drag(kX + c[0], kY - c[1], kX + c[2], kY - c[3]);
        ExpectEdges(20, -100, 60, -20);
    }
}

TEST_F(MouseModes, ZoomRectangleStaysOnTheMapInItsProportions) {
    SetMouseMode(mouse_mode::kZoom);
    MouseDown(kX - 100, kY + 60, false);  // 30 rows from the foot of the map
    MouseMove(kX + 100, kY + 70, true, false);
    EXPECT_EQ(Overlay(), (Figures{{Figure::Kind::ZoomRectangle, 105, 189, 165, 219}}));
}

TEST_F(MouseModes, AMapWithANameKeepsItThroughAZoom) {
    SetMouseMode(mouse_mode::kZoom);
    CurrentMap().title = "Europe";
    Drag(kX, kY, kX + 50, kY + 25);
    EXPECT_EQ(CurrentMap().title, "Europe");
}

TEST_F(MouseModes, AZoomRectangleOfHalfADegreeIsToldAndBecomesAViewOfExactlyOneDegree) {
    SetMouseMode(mouse_mode::kZoom);
    TestShell().log.clear();
    Drag(kX, kY, kX + 0.5F, kY + 0.25F);
    EXPECT_EQ(TestShell().log,
              Log{"MessageBox|Orvantis|You cannot zoom in to an area less than 1 degree of "
                  "longitude (60 mins) width.\\r\\n\\r\\nThe area you selected is 30 mins wide. "
                  "This has been expanded to the minimum allowable width.|Ok|Exclamation"});
    EXPECT_EQ(CurrentMap().east - CurrentMap().west, 1.0F);
    ExpectEdges(-0.375F, -0.25F, 0.125F, 0.75F);
    EXPECT_EQ(plots, Log{"full"});
}

TEST_F(MouseModes, AViewOfOneDegreeIsExactlyThatWhereverItLies) {
    SetMouseMode(mouse_mode::kZoom);
    mapView.rect = {0, 0, 1920, 1000};
    for (const float west :
         {-180.0F, -128.3F, -64.6F, -0.3F, 33.3333F, 63.7F, 127.6F, 150.1F, 172.0F}) {
        mapState = {};
        CurrentMap().south = 10;
        CurrentMap().west = west;
        CurrentMap().north = 20;
        CurrentMap().east = west + 19.7F - (west > 160 ? 360.0F : 0.0F);
        SetViewExtent();
        for (const float x : {3.0F, 640.0F, 1234.0F, 1917.0F}) {
            TestShell().boxes.clear();
            Drag(x, 500, x + 2, 501);
            ASSERT_EQ(TestShell().boxes.size(), 1U) << west << " " << x;
            const float width = CurrentMap().east - CurrentMap().west;
            EXPECT_EQ(width < 0 ? width + 360 : width, 1) << west << " " << x;
            EXPECT_EQ(mapView.extent.spanLong, 1) << west << " " << x;
            plots.clear();
            WheelZoom(900, 500, 1);
            EXPECT_TRUE(plots.empty()) << "no narrower than that: " << west << " " << x;
            PreviousView();
        }
        const float middle = mapView.extent.centreLong;
        WheelZoom(960, 500, 10);
        EXPECT_EQ(mapView.extent.spanLong, 1) << west;
        EXPECT_NEAR(mapView.extent.centreLong, middle, 1e-3);
    }
}

// The map plotted anew in another size and place, as under a box.
void PlotElsewhere() {
    mapView.rect = {3, 5, 90, 60};
    mapView.extent.westDeg = 100;
    mapView.extent.northDeg = -40;
    ++plotState.screenPlots;
}

TEST_F(MouseModes, ANarrowRectangleMeansItsPlaceThoughTheMapIsPlottedAnewUnderTheBox) {
    constexpr Colour kGreen = 0x123456;
    AddFill(1, 0, 0, false, kGreen);
    surface.Clear(kGreen);
    SetMouseMode(mouse_mode::kZoom);
    TestShell().whileAsking = [this] {
        PlotElsewhere();
        surface.Clear(0);
    };
    Drag(kX, kY, kX + 0.5F, kY + 0.25F);
    ExpectEdges(-0.375F, -0.25F, 0.125F, 0.75F);
    EXPECT_EQ(mapState.documents[1].fillCount, 1) << "the view that was left";
    ASSERT_EQ(mapState.documents[2].fillCount, 5) << "the colours that the rectangle met";
    for (std::size_t n = 2; n <= 5; ++n) {
        EXPECT_NEAR(mapState.fills[n].lat, 0, 1.1) << n;
        EXPECT_NEAR(mapState.fills[n].longitude, 0, 1.1) << n;
    }
}

TEST_F(MouseModes, AZoomRectangleOfExactly240DegreesIsRefused) {
    SetMouseMode(mouse_mode::kZoom);
    TestShell().log.clear();
    Drag(kX - 140, kY - 60, kX + 100, kY + 60);
    EXPECT_EQ(TestShell().log,
              Log{"MessageBox|Orvantis|You cannot zoom in to an area greater than 240 degrees of "
                  "longitude width.\\r\\n\\r\\nThe area you have selected is 240 degs wide. Please "
                  "select a smaller area to zoom to.|Ok|Exclamation"});
    EXPECT_TRUE(plots.empty());
    EXPECT_EQ(mapState.current, 1);
    Drag(kX - 139, kY - 60, kX + 100, kY + 60);
    EXPECT_EQ(plots, Log{"full"}) << "239 degrees";
}

TEST_F(MouseModes, AZoomRectangleAroundTheWholeMapIsRefused) {
    SetMouseMode(mouse_mode::kZoom);
    TestShell().log.clear();
    Drag(25, 39, 385, 219);
    ASSERT_EQ(TestShell().boxes.size(), 1U);
    EXPECT_NE(TestShell().boxes[0].find("is 360 degs wide."), std::string::npos);
    EXPECT_EQ(mapState.current, 1);
}

TEST_F(MouseModes, AZoomRectangleAcrossTheDateLineHasItsWestAboveItsEast) {
    SetView(-30, 150, 30, -150, projection::kCartesian);  // 6 pixels a degree
    SetMouseMode(mouse_mode::kZoom);
    TestShell().log.clear();
    Drag(25 + 60, 39 + 45, 25 + 240, 200);
    EXPECT_TRUE(TestShell().log.empty());
    ExpectEdges(-15, 160, 15, -170);
    EXPECT_EQ(CurrentMap().title, "Lat: 15S00 to 15N00  Long: 160E00 to 170W00");
}

TEST_F(MouseModes, ADragWithoutAWidthIsARectangleAndNoClick) {
    SetMouseMode(mouse_mode::kZoom);
    const std::string told =
        "MessageBox|Orvantis|You cannot zoom in to an area less than 1 degree of longitude (60 "
        "mins) width.\\r\\n\\r\\nThe area you selected is 0 mins wide. This has been expanded to "
        "the minimum allowable width.|Ok|Exclamation";
    TestShell().log.clear();
    Drag(kX, kY, kX, kY + 40);
    EXPECT_EQ(TestShell().log, Log{told}) << "straight down";
    ExpectEdges(-0.25F, -0.5F, 0.25F, 0.5F);

    SetView(-90, -180, 90, 180, projection::kCartesian);
    TestShell().log.clear();
    Drag(kX, 219, kX + 50, 219);
    EXPECT_EQ(TestShell().log, Log{told}) << "along the last row, where there is no room";
    ExpectEdges(-90, -0.5F, -89.5F, 0.5F);
}

TEST_F(MouseModes, ADragThatComesBackToItsStartIsAClick) {
    SetView(-45, -90, 45, 90, projection::kCartesian);
    SetMouseMode(mouse_mode::kZoom);
    MouseDown(25 + 220, 39 + 70, false);
    MouseMove(300, 150, true, false);
    MouseMove(25 + 220, 39 + 70, true, false);
    MouseUp(25 + 220, 39 + 70, false);
    EXPECT_EQ(CurrentMap().title, "Centre 10N00 020E00");
}

TEST_F(MouseModes, AZoomOnAMercatorMapTakesTheLatitudesOfItsRows) {
    SetView(-65, -180, 75, 180, projection::kMercator);
    SetMouseMode(mouse_mode::kZoom);
    float south = 0;
    float north = 0;
    float ignored = 0;
    UnprojectPoint(CurrentMap(), 100, 60, north, ignored);
    UnprojectPoint(CurrentMap(), 100, 100, south, ignored);
    Drag(100, 60, 180, 70);
    ExpectEdges(south, -105, north, -25);
}

TEST_F(MouseModes, AClickInTheZoomModeCentresTheMap) {
    SetView(-45, -90, 45, 90, projection::kCartesian);
    SetMouseMode(mouse_mode::kZoom);
    Click(25 + 220, 39 + 70);  // 2 pixels a degree: 20 east, 10 north
    ExpectEdges(-35, -70, 55, 110);
    EXPECT_EQ(CurrentMap().title, "Centre 10N00 020E00");
    EXPECT_EQ(plots, Log{"full"});
}

TEST_F(MouseModes, AZoomRectangleOnAGlobeBringsItsMiddleToTheFront) {
    SetView(0, -90, 0, 90, projection::kGlobeSphere);
    SetMouseMode(mouse_mode::kZoom);
    TestShell().log.clear();
    const float x = mapView.rect.left + mapView.rect.width / 2.0F;
    const float y = mapView.rect.top + mapView.rect.height / 2.0F;
    float lat = 0;
    float longitude = 0;
    UnprojectPoint(CurrentMap(), x + 20, y - 10, lat, longitude);
    Drag(x, y, x + 40, y - 20);
    EXPECT_TRUE(TestShell().log.empty());
    EXPECT_FLOAT_EQ(CurrentMap().south, lat);
    EXPECT_FLOAT_EQ(CurrentMap().north, lat);
    EXPECT_FLOAT_EQ(CurrentMap().west, longitude - 90);
    EXPECT_FLOAT_EQ(CurrentMap().east, longitude + 90);
}

TEST_F(MouseModes, ColoursOnTheRectanglesEdgeGoWithTheNewViewAlone) {
    constexpr Colour kGreen = 0x123456;
    AddFill(1, 0, 0, false, kGreen);
    surface.Clear(kGreen);
    SetMouseMode(mouse_mode::kZoom);
    Drag(kX - 100, kY - 60, kX - 20, kY - 20);
    EXPECT_EQ(mapState.documents[1].fillCount, 1) << "the view that was left";
    EXPECT_EQ(mapState.documents[2].fillCount, 5) << "one run on each side";
    EXPECT_NE(plotState.fillOtherColour, 0);
}

TEST_F(MouseModes, ColoursOnARectangleOfAGlobeGoWithTheNewView) {
    constexpr Colour kGreen = 0x123456;
    SetView(0, -90, 0, 90, projection::kGlobeSphere);
    AddFill(1, 0, 0, false, kGreen);
    surface.Clear(kGreen);
    SetMouseMode(mouse_mode::kZoom);
    const float x = mapView.rect.left + mapView.rect.width / 2.0F;
    const float y = mapView.rect.top + mapView.rect.height / 2.0F;
    Drag(x, y, x + 40, y - 20);
    EXPECT_EQ(mapState.documents[1].fillCount, 1) << "the view that was left";
    ASSERT_EQ(mapState.documents[2].fillCount, 5) << "one run on each side";
    for (std::size_t n = 2; n <= 5; ++n) {
        EXPECT_EQ(mapState.fills[n].colour, PaletteColour(kGreen)) << n;
    }
    EXPECT_NE(plotState.fillOtherColour, 0);
    EXPECT_TRUE(CurrentMap().title.starts_with("Centre ")) << CurrentMap().title;
}

TEST_F(MouseModes, ARectangleOnAGlobeForgetsTheSeaOfAFlatZoomBefore) {
    surface.Clear(PlainColour(SeaColour()));
    SetMouseMode(mouse_mode::kZoom);
    Drag(kX - 100, kY - 60, kX - 20, kY - 20);
    ASSERT_NE(plotState.fillSeaOnly, 0);
    SetView(0, -90, 0, 90, projection::kGlobeSphere);
    surface.Clear(PlainColour(LandColour()));
    const float x = mapView.rect.left + mapView.rect.width / 2.0F;
    const float y = mapView.rect.top + mapView.rect.height / 2.0F;
    Drag(x, y, x + 40, y - 20);
    EXPECT_EQ(plotState.fillSeaOnly, 0);
    EXPECT_NE(plotState.fillLand, 0);
}

// The picture that a view keeps goes with the mouse's own way to a new view.
TEST_F(MouseModes, BackFromAZoomByRectangleTheKeptPictureIsPutDownWithAQuickPlot) {
    options.storeImages = kTrue;
    SetMouseMode(mouse_mode::kZoom);
    surface.Clear(0x112233);
    surface.CopyImage(session.StoredImage);
    const Image kept = session.StoredImage;
    Drag(kX, kY, kX + 100, kY + 50);
    EXPECT_EQ(plots, Log{"full"});
    surface.Clear(0x445566);
    surface.CopyImage(session.StoredImage);
    PreviousView();
    EXPECT_EQ(plots, (Log{"full", "quick"}));
    EXPECT_EQ(session.StoredImage.pixels, kept.pixels);
    ExpectEdges(-90, -180, 90, 180);

    options.storeImages = kFalse;
    Drag(kX, kY, kX + 100, kY + 50);
    PreviousView();
    EXPECT_EQ(plots, (Log{"full", "quick", "full", "full"}));
}

// ---- moving ----

TEST_F(MouseModes, AClickInTheMoveModeCentresTheMapOnThePlace) {
    SetMouseMode(mouse_mode::kMove);
    Click(kX + 30, kY - 20);
    ExpectEdges(-90, -150, 90, -150);
    EXPECT_EQ(CurrentMap().title, "Centre 20N00 030E00");
    EXPECT_EQ(mapState.current, 2);
    EXPECT_EQ(plots, Log{"full"});
    EXPECT_EQ(mapView.extent.centreLong, 30);
    EXPECT_EQ(mapView.extent.spanLong, 360);
}

TEST_F(MouseModes, AMoveAndAWheelTurnedBackLookForTheSeaThatBothViewsShare) {
    SetView(10, -40, 30, -20, projection::kCartesian);
    surface.Clear(PlainColour(SeaColour()));
    SetMouseMode(mouse_mode::kMove);
    Drag(kX, kY, kX - 100, kY);
    EXPECT_NE(plotState.fillSeaOnly, 0);
    EXPECT_EQ(plotState.fillLand, 0);
    SetView(10, -40, 30, -20, projection::kCartesian);
    WheelZoom(kX, kY, -1);
    EXPECT_NE(plotState.fillSeaOnly, 0);
    EXPECT_NE(plotState.fillLand, 0) << "the larger view's frame lies beyond the picture";
    surface.Clear(PlainColour(LandColour()));
    SetView(10, -40, 30, -20, projection::kCartesian);
    Click(kX + 30, kY);
    EXPECT_EQ(plotState.fillSeaOnly, 0);
}

TEST_F(MouseModes, ATitleThatIsANameStaysThroughAMove) {
    SetMouseMode(mouse_mode::kMove);
    CurrentMap().title = "Europe";
    Click(kX + 30, kY - 20);
    EXPECT_EQ(CurrentMap().title, "Europe");
}

TEST_F(MouseModes, ATitleThatNamesACentreStaysThroughALaterZoom) {
    SetMouseMode(mouse_mode::kMove);
    Click(kX + 30, kY - 20);
    SetMouseMode(mouse_mode::kZoom);
    Drag(kX, kY, kX + 50, kY + 25);
    EXPECT_EQ(CurrentMap().title, "Centre 20N00 030E00") << "it no longer begins with Lat:";
    EXPECT_EQ(plots, (Log{"full", "full"}));
}

// The preview moves the picture as it is; the new one is stretched anew, by little in a low view.
TEST_F(MouseModes, OnMercatorTheMapComesToLieNearlyWhereItsPreviewShowedIt) {
    SetView(40, 0, 60, 40, projection::kMercator);
    SetMouseMode(mouse_mode::kMove);
    float lat = 0;
    float longitude = 0;
    UnprojectPoint(CurrentMap(), 200, 120, lat, longitude);
    MouseDown(200, 120, false);
    MouseMove(245, 135, true, false);
    EXPECT_EQ(Overlay(), (Figures{{Figure::Kind::MovedMap, 200, 120, 245, 135}}));
    MouseUp(245, 135, false);
    EXPECT_EQ(plots, Log{"full"});
    double x = 0;
    double y = 0;
    PlaceOnFlatMap(lat, longitude, x, y);
    EXPECT_NEAR(x, 245, 0.01);
    EXPECT_NEAR(y, 135, 2);
    EXPECT_FLOAT_EQ(CurrentMap().north - CurrentMap().south, 20);
}

TEST_F(MouseModes, ADragMovesTheCentreByTheDifference) {
    SetView(-45, -90, 45, 90, projection::kCartesian);
    SetMouseMode(mouse_mode::kMove);
    Drag(200, 120, 240, 110);  // 20 degrees east, 5 north: the view goes the other way
    ExpectEdges(-50, -110, 40, 70);
    EXPECT_EQ(CurrentMap().title, "Lat: 50S00 to 40N00  Long: 110W00 to 070E00");
}

TEST_F(MouseModes, AMoveIsHeldAtThePoleWithItsHeight) {
    SetView(20, -90, 80, 90, projection::kCartesian);
    SetMouseMode(mouse_mode::kMove);
    Drag(200, 50, 200, 200);
    ExpectEdges(30, -90, 90, 90);
    SetView(-80, -90, -20, 90, projection::kCartesian);
    Drag(200, 200, 200, 50);
    ExpectEdges(-90, -90, -30, 90);
}

TEST_F(MouseModes, AMoveWrapsAtTheDateLine) {
    SetView(-30, 100, 30, 160, projection::kCartesian);  // 6 pixels a degree
    SetMouseMode(mouse_mode::kMove);
    Drag(300, 129, 60, 129);
    ExpectEdges(-30, 140, 30, -160);
    SetView(-30, 100, 30, 160, projection::kCartesian);
    Drag(300, 129, 180, 129);
    EXPECT_NEAR(CurrentMap().west, 120, 1e-4);
    EXPECT_NEAR(std::abs(CurrentMap().east), 180, 1e-4);
    EXPECT_NEAR(mapView.extent.spanLong, 60, 1e-4);
}

TEST_F(MouseModes, AMoveOnMercatorKeepsTheHeightAndOffThePoles) {
    SetView(-65, -180, 75, 180, projection::kMercator);
    SetMouseMode(mouse_mode::kMove);
    Click(205, 45);
    EXPECT_FLOAT_EQ(CurrentMap().north - CurrentMap().south, 140);
    EXPECT_FLOAT_EQ(CurrentMap().north, 85);
    EXPECT_EQ(PendingRunTimeError(), 0);
}

TEST_F(MouseModes, MoveWheelAndZoomOutEndAtTheSameLatitudesOfAMercatorMap) {
    const auto view = [&](float south, float north) {
        SetView(south, 0, north, 60, projection::kMercator);
    };
    SetMouseMode(mouse_mode::kMove);
    view(40, 80);
    Click(kX, 41);
    EXPECT_FLOAT_EQ(CurrentMap().north, 85);
    EXPECT_FLOAT_EQ(CurrentMap().south, 45);
    view(-75, -35);
    Click(kX, 217);
    EXPECT_FLOAT_EQ(CurrentMap().south, -80);
    EXPECT_FLOAT_EQ(CurrentMap().north, -40);

    view(70, 80);
    WheelZoom(kX, 217, -2);
    EXPECT_NEAR(CurrentMap().north, 85, 1e-3);
    view(-75, -65);
    WheelZoom(kX, 41, -2);
    EXPECT_NEAR(CurrentMap().south, -80, 1e-3);

    view(60, 80);
    ZoomOut();
    EXPECT_FLOAT_EQ(CurrentMap().north, 85);
    view(-75, -55);
    ZoomOut();
    EXPECT_FLOAT_EQ(CurrentMap().south, -80);

    view(50, 88);
    SetMouseMode(mouse_mode::kMove);
    Click(kX, 41);
    EXPECT_FLOAT_EQ(CurrentMap().north, 88) << "a view that reaches farther keeps its place";
}

TEST_F(MouseModes, OnAGlobeTheCentreIsTheOneValueThatChanges) {
    SetView(0, -90, 0, 90, projection::kGlobeSphere);
    SetMouseMode(mouse_mode::kMove);
    const float x = mapView.rect.left + mapView.rect.width / 2.0F;
    const float y = mapView.rect.top + mapView.rect.height / 2.0F;
    float lat = 0;
    float longitude = 0;
    UnprojectPoint(CurrentMap(), x + 30, y - 40, lat, longitude);
    Click(x + 30, y - 40);
    EXPECT_FLOAT_EQ(CurrentMap().south, lat);
    EXPECT_EQ(CurrentMap().south, CurrentMap().north);
    EXPECT_FLOAT_EQ(mapView.extent.centreLong, longitude);
    EXPECT_TRUE(CurrentMap().title.starts_with("Centre "));
    EXPECT_EQ(mapView.extent.spanLong, 180);
}

TEST_F(MouseModes, APointOffTheGlobeGivesNoAction) {
    SetView(0, -90, 0, 90, projection::kGlobeSphere);
    session.ChartNumber = 1;
    relocateChart = [](double, double) { plots.emplace_back("relocated"); };
    CurrentMap().hidden.fill(kTrue);
    for (const std::int16_t mode : {mouse_mode::kMeasure, mouse_mode::kZoom, mouse_mode::kMove,
                                    mouse_mode::kRelocate, mouse_mode::kRuler}) {
        SetMouseMode(mode);
        TestShell().log.clear();
        Click(mapView.rect.left + 2.0F, mapView.rect.top + 2.0F);
        ExpectUntouched();
    }
    session.ChartNumber = 0;
    SetMouseMode(mouse_mode::kFill);
    TestShell().log.clear();
    Click(mapView.rect.left + 2.0F, mapView.rect.top + 2.0F);
    EXPECT_EQ(CurrentMap().fillCount, 0);
    ExpectUntouched();
}

TEST_F(MouseModes, TheMapIsShownMovedAsFarAsTheViewWillGo) {
    SetMouseMode(mouse_mode::kMove);
    MouseDown(100, 100, false);
    MouseMove(140, 120, true, false);
    EXPECT_EQ(Overlay(), (Figures{{Figure::Kind::MovedMap, 100, 100, 140, 100}}))
        << "the whole meridian is in view already";
    CancelDrag();
    SetView(-45, -90, 45, 90, projection::kCartesian);
    MouseDown(100, 100, false);
    MouseMove(140, 120, true, false);
    EXPECT_EQ(Overlay(), (Figures{{Figure::Kind::MovedMap, 100, 100, 140, 120}}));
}

TEST_F(MouseModes, AMapOfHostileEdgesIsShownMovedByNoMoreThanItsHeight) {
    SetMouseMode(mouse_mode::kMove);
    const float kInfinity = std::numeric_limits<float>::infinity();
    const float spans[] = {1e-30F, -1e-30F, 1e30F, kInfinity, std::nanf("")};
    const float norths[] = {1e30F, -1e30F, kInfinity, std::nanf(""), 90};
    for (const float span : spans) {
        for (const float north : norths) {
            mapView.extent.spanLat = span;
            mapView.extent.northDeg = north;
            MouseDown(100, 100, false);
            MouseMove(140, 120, true, false);
            ASSERT_EQ(Overlay().size(), 1U);
            EXPECT_LE(std::abs(Overlay()[0].y1 - Overlay()[0].y0), 180) << span << " " << north;
            CancelDrag();
        }
    }
}

// ---- relocating ----

double relocatedLat = 0;
double relocatedLong = 0;

TEST_F(MouseModes, RelocatingWithoutAChartIsToldAndAsksNothing) {
    SetMouseMode(mouse_mode::kRelocate);
    relocateChart = [](double, double) { plots.emplace_back("relocated"); };
    TestShell().log.clear();
    Click(kX, kY);
    EXPECT_EQ(TestShell().log,
              Log{"MessageBox|Cannot Relocate|Cannot relocate chart because no chart is currently "
                  "selected.|Ok|Exclamation"});
    EXPECT_TRUE(plots.empty());
}

TEST_F(MouseModes, RelocatingAsksAndThenDrawsTheLinesAnew) {
    SetMouseMode(mouse_mode::kRelocate);
    session.ChartNumber = 1;
    relocateChart = [](double lat, double longitude) {
        relocatedLat = lat;
        relocatedLong = longitude;
        plots.emplace_back("relocated");
    };
    TestShell().log.clear();
    TestShell().boxAnswers = {BoxAnswer::Yes};
    Click(kX + 151, kY + 34);
    EXPECT_EQ(
        TestShell().log,
        Log{"MessageBox|Confirm Relocation|Do you wish to relocate the current chart to 34S00 "
            "151E00?|YesNo|Question"});
    EXPECT_EQ(plots, (Log{"relocated", "quick"}));
    EXPECT_FLOAT_EQ(static_cast<float>(relocatedLat), -34);
    EXPECT_FLOAT_EQ(static_cast<float>(relocatedLong), 151);
}

TEST_F(MouseModes, ARelocationGoesWhereItAskedThoughTheMapIsPlottedAnewUnderTheQuestion) {
    SetMouseMode(mouse_mode::kRelocate);
    session.ChartNumber = 1;
    relocateChart = [](double lat, double longitude) {
        relocatedLat = lat;
        relocatedLong = longitude;
    };
    TestShell().whileAsking = PlotElsewhere;
    Click(kX + 151, kY + 34);
    EXPECT_FLOAT_EQ(static_cast<float>(relocatedLat), -34);
    EXPECT_FLOAT_EQ(static_cast<float>(relocatedLong), 151);
}

TEST_F(MouseModes, WhereChartsCannotBeRelocatedAClickDoesNothingAndAsksNothing) {
    SetMouseMode(mouse_mode::kRelocate);
    TestShell().log.clear();
    for (const std::int16_t chart : {0, 1}) {
        session.ChartNumber = chart;
        Click(kX, kY);
        ExpectUntouched();
    }
}

TEST_F(MouseModes, ARefusedRelocationChangesNothing) {
    SetMouseMode(mouse_mode::kRelocate);
    session.ChartNumber = 1;
    relocateChart = [](double, double) { plots.emplace_back("relocated"); };
    TestShell().boxAnswers = {BoxAnswer::No};
    Click(kX, kY);
    EXPECT_TRUE(plots.empty());
}

TEST_F(MouseModes, RelocatingOffTheMapDoesNothing) {
    SetMouseMode(mouse_mode::kRelocate);
    session.ChartNumber = 1;
    relocateChart = [](double, double) { plots.emplace_back("relocated"); };
    TestShell().log.clear();
    Click(10, 10);
    ExpectUntouched();
}

// ---- filling ----

const char* const kFillQuestion =
    "MessageBox|Orvantis|Filling with color whilst there is a chart or eclipse currently shown, or "
    "city or country names are displayed, requires that the map be redrawn after each "
    "fill.\\r\\n\\r\\nIf you wish to avoid the map being redrawn after each fill, then you must "
    "clear any charts or eclipse and turn off city and country names.\\r\\n\\r\\nDo you still wish "
    "to fill?|OkCancel|Question";

TEST_F(MouseModes, AFillOfTheBareMapIsMadeAtOnceAndKept) {
    surface.Clear(LandColour());
    plotState.outlineColour = 0;
    SetMouseMode(mouse_mode::kFill);
    TestShell().log.clear();
    surface.log.clear();
    Click(kX + 30, kY - 20);
    EXPECT_TRUE(TestShell().log.empty()) << "nothing is asked";
    ASSERT_EQ(CurrentMap().fillCount, 1);
    EXPECT_FLOAT_EQ(mapState.fills[1].lat, 20);
    EXPECT_FLOAT_EQ(mapState.fills[1].longitude, 30);
    EXPECT_EQ(mapState.fills[1].colour, -1);
    EXPECT_EQ(surface.Calls("FloodFill").size(), 1U);
    EXPECT_EQ(surface.GetPixel(205, 129), SeaColour());
    EXPECT_EQ(surface.GetPixel(10, 10), LandColour()) << "nothing outside of the map";
    EXPECT_TRUE(plots.empty());
    ASSERT_EQ(session.StoredImage.width, kSurfaceWidth);
    EXPECT_EQ(mapView.surface, nullptr);

    // The next quick pass finds it on the stored picture.
    surface.Clear(0);
    surface.PutImage(session.StoredImage);
    EXPECT_EQ(surface.GetPixel(205, 129), SeaColour());
}

TEST_F(MouseModes, WithTheSeaMarkOffTheSpecialColourFills) {
    surface.Clear(LandColour());
    SetMouseMode(mouse_mode::kFill);
    mouseState.seaFill = kFalse;
    mouseState.specialColour = 0x0000FF;
    Click(kX, kY);
    ASSERT_EQ(CurrentMap().fillCount, 1);
    EXPECT_EQ(mapState.fills[1].colour, 0x0000FF);
    EXPECT_EQ(surface.GetPixel(300, 100), 0x0000FF);
}

TEST_F(MouseModes, AFillUnderLinesOrNamesAsksAndDrawsTheMapAnew) {
    SetMouseMode(mouse_mode::kFill);
    enum class Shown { Chart, Eclipse, CityNames, CountryNames };
    std::int16_t fills = 0;
    for (const Shown what : {Shown::Chart, Shown::Eclipse, Shown::CityNames, Shown::CountryNames}) {
        session.ChartNumber = what == Shown::Chart ? 1 : 0;
        session.EclipseNumber = what == Shown::Eclipse ? 1 : 0;
        CurrentMap().hidden[8] = what == Shown::CityNames ? kFalse : kTrue;
        CurrentMap().hidden[3] = what == Shown::CountryNames ? kFalse : kTrue;
        TestShell().log.clear();
        plots.clear();
        TestShell().boxAnswers = {BoxAnswer::Ok};
        Click(kX, kY);
        EXPECT_EQ(TestShell().log, Log{kFillQuestion});
        EXPECT_EQ(CurrentMap().fillCount, ++fills);
        EXPECT_EQ(plots, Log{"full"});

        TestShell().boxAnswers = {BoxAnswer::Cancel};
        Click(kX, kY);
        EXPECT_EQ(CurrentMap().fillCount, fills) << "cancelled";
        EXPECT_EQ(plots.size(), 1U);
    }
    EXPECT_TRUE(session.StoredImage.pixels.empty()) << "a picture with lines isn't kept";
}

TEST_F(MouseModes, AFillIsMadeWhereItWasAskedForThoughTheMapIsPlottedAnewUnderTheQuestion) {
    SetMouseMode(mouse_mode::kFill);
    session.ChartNumber = 1;
    TestShell().whileAsking = PlotElsewhere;
    surface.log.clear();
    Click(kX + 30, kY - 20);
    ASSERT_EQ(CurrentMap().fillCount, 1);
    EXPECT_FLOAT_EQ(mapState.fills[1].lat, 20);
    EXPECT_FLOAT_EQ(mapState.fills[1].longitude, 30);
    EXPECT_TRUE(surface.Calls("FloodFill").empty()) << "its pixel is another place's by now";
    EXPECT_EQ(plots, Log{"full"}) << "which floods it";

    TestShell().whileAsking = PlotElsewhere;
    Click(1, 1);  // off the map when it was clicked; the question comes first all the same
    EXPECT_EQ(CurrentMap().fillCount, 1);
}

TEST_F(MouseModes, AFillAfterAPlotThatWasGivenUpDrawsTheMapAnew) {
    SetMouseMode(mouse_mode::kFill);
    plotState.imageLost = true;
    Click(kX, kY);
    EXPECT_EQ(CurrentMap().fillCount, 1);
    EXPECT_EQ(plots, Log{"full"});
    EXPECT_EQ(session.StoredImage.width, 0) << "the unfinished picture isn't kept";
}

TEST_F(MouseModes, AFillUnderTheGridDrawsTheMapAnewWithoutAsking) {
    SetMouseMode(mouse_mode::kFill);
    CurrentMap().gridOn = kTrue;
    TestShell().log.clear();
    Click(kX, kY);
    EXPECT_TRUE(TestShell().log.empty());
    EXPECT_EQ(plots, Log{"full"});
}

TEST_F(MouseModes, AFillThatTheFullListCannotTakePaintsNothing) {
    surface.Clear(LandColour());
    plotState.outlineColour = 0;
    SetMouseMode(mouse_mode::kFill);
    TestShell().log.clear();
    CurrentMap().fillCount = 32767;
    surface.log.clear();
    Click(kX + 30, kY - 20);
    EXPECT_EQ(CurrentMap().fillCount, 32767);
    EXPECT_TRUE(surface.Calls("FloodFill").empty());
    EXPECT_EQ(surface.GetPixel(205, 129), LandColour());
    EXPECT_EQ(session.StoredImage.width, 0);
    ExpectUntouched();
    CurrentMap().gridOn = kTrue;
    Click(kX + 30, kY - 20);
    ExpectUntouched();
}

TEST_F(MouseModes, AFillOffTheMapDoesNothing) {
    SetMouseMode(mouse_mode::kFill);
    TestShell().log.clear();
    Click(10, 10);
    EXPECT_EQ(CurrentMap().fillCount, 0);
    ExpectUntouched();
}

// ---- ruler ----

// The ruler's own line, without the marks across it.
Figure MainLine(const Figures& figures) {
    return figures.empty() ? Figure{} : figures.front();
}

TEST_F(MouseModes, ARulerIsPulledOffALineOfTheGrid) {
    SetMouseMode(mouse_mode::kRuler);
    CurrentMap().gridOn = kTrue;
    CurrentMap().gridLongStep = 30;
    CurrentMap().gridLatStep = 15;
    MouseDown(kX + 33, kY - 7, false);  // the meridian of 30 east is 3 pixels off
    EXPECT_NE(mouseState.rulerActive, 0);
    EXPECT_EQ(mouseState.rulerKind, ruler_kind::kMeridian);
    MouseMove(kX + 42, kY - 20, true, false);
    EXPECT_EQ(mouseState.rulerLast, 247);
    EXPECT_EQ(mouseState.positionText, "20N00" + Blanks(8) + "042E00" + Blanks(19) + "042E00");
    EXPECT_EQ(MainLine(Overlay()), (Figure{Figure::Kind::RulerLine, 247, 39, 247, 219}));
    EXPECT_EQ(Overlay().size(), 12U) << "and a mark at each parallel of the grid from 75S to 75N";
    EXPECT_EQ(Overlay()[1], (Figure{Figure::Kind::RulerLine, 243, 204, 251, 204}));
    MouseUp(kX + 42, kY - 20, false);
    EXPECT_EQ(mouseState.rulerActive, 0);
    EXPECT_EQ(Overlay().size(), 12U) << "it stays";
    EXPECT_TRUE(plots.empty());
}

TEST_F(MouseModes, AParallelIsPulledUpAndDown) {
    SetMouseMode(mouse_mode::kRuler);
    CurrentMap().gridOn = kTrue;
    MouseDown(kX + 10, kY - 28, false);  // 30 north
    EXPECT_EQ(mouseState.rulerKind, ruler_kind::kParallel);
    MouseMove(kX + 10, kY - 12, true, false);
    EXPECT_TRUE(mouseState.positionText.ends_with(Blanks(19) + "12N00"));
    EXPECT_EQ(MainLine(Overlay()), (Figure{Figure::Kind::RulerLine, 25, 117, 385, 117}));
}

TEST_F(MouseModes, AwayFromTheGridNothingIsSeized) {
    SetMouseMode(mouse_mode::kRuler);
    CurrentMap().gridOn = kTrue;
    MouseDown(kX + 10, kY - 7, false);
    EXPECT_FALSE(DragInProgress());
    MouseMove(kX + 20, kY - 7, true, false);
    EXPECT_TRUE(Overlay().empty());
    MouseUp(kX + 20, kY - 7, false);

    CurrentMap().gridOn = kFalse;
    MouseDown(kX + 30, kY - 7, false);
    EXPECT_FALSE(DragInProgress()) << "a grid that isn't shown";
}

TEST_F(MouseModes, TheMapsOwnEdgesAreNoLinesOfTheGrid) {
    SetMouseMode(mouse_mode::kRuler);
    for (const Flag grid : {kFalse, kTrue}) {
        CurrentMap().gridOn = grid;
        CurrentMap().gridLongStep = 70;  // no line of it falls on an edge
        CurrentMap().gridLatStep = 25;
        for (const auto& [x, y] : {std::pair{24, 116}, {386, 116}, {240, 38}, {240, 218}}) {
            MouseDown(static_cast<float>(x), static_cast<float>(y), false);
            EXPECT_FALSE(DragInProgress()) << x << " " << y;
        }
    }
}

TEST_F(MouseModes, ARulerStaysOnTheMap) {
    SetMouseMode(mouse_mode::kRuler);
    CurrentMap().gridOn = kTrue;
    MouseDown(kX + 10, kY - 28, false);
    EXPECT_EQ(mouseState.rulerKind, ruler_kind::kParallel);
    MouseMove(200, 400, true, false);
    EXPECT_EQ(mouseState.rulerLast, 219);
    CancelDrag();
    MouseDown(10, 100, false);
    EXPECT_FALSE(DragInProgress()) << "off the map";
}

TEST_F(MouseModes, AClickNearALinePlacesNoRuler) {
    SetMouseMode(mouse_mode::kRuler);
    CurrentMap().gridOn = kTrue;  // 180 west lies on the map's left edge
    Click(27, 100);
    EXPECT_TRUE(mouseState.rulers.empty());
    EXPECT_TRUE(Overlay().empty());
    MouseDown(27, 100, false);
    MouseMove(27, 100, true, false);
    MouseUp(27, 100, false);
    EXPECT_TRUE(mouseState.rulers.empty()) << "a report without a move";
    Drag(27, 100, 28, 100);
    EXPECT_EQ(mouseState.rulers.size(), 1U);
    Click(27, 100);
    EXPECT_EQ(mouseState.rulers.size(), 1U) << "the placed one stays";
}

TEST_F(MouseModes, RulersStayUntilTheNextPlot) {
    SetMouseMode(mouse_mode::kRuler);
    CurrentMap().gridOn = kTrue;
    Drag(25, 100, 125, 100);
    Drag(25, 100, 225, 100);
    SetMouseMode(mouse_mode::kMeasure);
    EXPECT_EQ(Overlay().front().x0, 125) << "through other modes, too";
    ++plotState.screenPlots;
    EXPECT_TRUE(Overlay().empty());
    SetMouseMode(mouse_mode::kRuler);
    Drag(25, 100, 325, 100);
    EXPECT_EQ(Overlay().front().x0, 325);
    EXPECT_EQ(mouseState.rulers.size(), 1U);
}

TEST_F(MouseModes, ACopyOfThePictureHasTheRulersAndThePictureItselfDoesNot) {
    surface.Clear(0x00C800);
    SetMouseMode(mouse_mode::kRuler);
    CurrentMap().gridOn = kTrue;
    Drag(kX + 10, kY + 30, kX + 10, 117);
    ASSERT_EQ(MainLine(Overlay()), (Figure{Figure::Kind::RulerLine, 25, 117, 385, 117}));
    const Command* copy = FindCommand("&Chart", "&Copy to Clipboard", 0);
    ASSERT_NE(copy, nullptr);
    RunCommand(*copy);
    const Image& image = TestShell().clipboard;
    const auto at = [&](int x, int y) {
        return image.pixels[static_cast<std::size_t>(y) * static_cast<std::size_t>(image.width) +
                            static_cast<std::size_t>(x)];
    };
    EXPECT_EQ(at(28, 117), 0xFF000000U) << "a dot of the black line over";
    EXPECT_EQ(at(29, 117), 0xFFFFFFFFU) << "the white one";
    EXPECT_EQ(at(385, 117), 0xFF000000U) << "up to the map's right edge";
    EXPECT_EQ(at(386, 117), 0xFF00C800U);
    EXPECT_EQ(at(29, 118), 0xFF00C800U);
    EXPECT_EQ(surface.GetPixel(29, 117), 0x00C800);
}

TEST_F(MouseModes, EscTakesTheMovingRulerAwayAndLeavesThePlacedOne) {
    SetMouseMode(mouse_mode::kRuler);
    CurrentMap().gridOn = kTrue;
    Drag(25, 100, 125, 100);
    const Figures placed = Overlay();
    MouseDown(25, 100, false);
    MouseMove(300, 100, true, false);
    EXPECT_EQ(Overlay().size(), 2 * placed.size());
    CancelDrag();
    EXPECT_EQ(mouseState.rulerActive, 0);
    EXPECT_EQ(Overlay(), placed);
}

TEST_F(MouseModes, AGlobeHasNoRulers) {
    SetView(0, -90, 0, 90, projection::kGlobeSphere);
    SetMouseMode(mouse_mode::kRuler);
    CurrentMap().gridOn = kTrue;
    MouseDown(mapView.rect.left + mapView.rect.width / 2.0F,
              mapView.rect.top + mapView.rect.height / 2.0F, false);
    EXPECT_FALSE(DragInProgress());
}

TEST_F(MouseModes, RulersAreDrawnOnAPageAndNotIntoThePictureOnTheScreen) {
    SetMouseMode(mouse_mode::kRuler);
    CurrentMap().gridOn = kTrue;
    Drag(25, 100, 125, 100);
    Drag(100, 69, 100, 99);
    mapView.surface = &surface;
    surface.log.clear();
    DrawMouseMarks();
    EXPECT_TRUE(surface.log.empty());
    plotState.printing = kTrue;
    DrawMouseMarks();
    EXPECT_EQ(surface.Calls("MoveTo"), (Log{"MoveTo 125 39", "MoveTo 25 99"}));
    EXPECT_EQ(surface.Calls("LineTo"), (Log{"LineTo 125 219", "LineTo 385 99"}));
}

// ---- keys ----

TEST_F(MouseModes, PageUpZoomsOutInTheZoomModeOfACartesianMapAlone) {
    const auto tried = [&](std::int16_t mode, std::int16_t projectionNumber) {
        mapState = {};
        plots.clear();
        SetView(0, 0, 20, 40, projectionNumber);
        mouseState.mode = mode;
        PageUpKey();
        return plots.size();
    };
    for (std::int16_t mode = 0; mode < mouse_mode::kModes; ++mode) {
        EXPECT_EQ(tried(mode, projection::kCartesian), mode == mouse_mode::kZoom ? 1U : 0U) << mode;
    }
    EXPECT_EQ(tried(mouse_mode::kZoom, projection::kMercator), 0U);
    EXPECT_EQ(tried(mouse_mode::kZoom, projection::kGlobeOblate), 0U);
    ASSERT_EQ(tried(mouse_mode::kZoom, projection::kCartesian), 1U);
    ExpectEdges(-10, -20, 30, 60);
    EXPECT_TRUE(TestShell().boxes.empty()) << "without a question";
}

TEST_F(MouseModes, PageUpDuringADragDoesNothing) {
    SetView(0, 0, 20, 40, projection::kCartesian);
    SetMouseMode(mouse_mode::kZoom);
    TestShell().log.clear();
    MouseDown(100, 100, false);
    MouseMove(180, 140, true, false);
    PageUpKey();
    EXPECT_TRUE(DragInProgress());
    ExpectUntouched();
    CancelDrag();
    PageUpKey();
    EXPECT_EQ(plots, Log{"full"});
}

TEST_F(MouseModes, PageUpOnAViewOfTheWholeWorldDoesNothing) {
    SetMouseMode(mouse_mode::kZoom);
    TestShell().log.clear();
    PageUpKey();
    ExpectUntouched();
    SetView(-90, 180, 90, -180, projection::kCartesian);
    PageUpKey();
    WheelZoom(kX, kY, -1);
    ExpectUntouched();
}

std::vector<std::pair<int, int>> pointerMoves;

TEST_F(MouseModes, ArrowKeysMoveThePointerByOnePixelOrByTenWithShift) {
    pointerMoves.clear();
    ArrowKey(1, 0, false);  // without a pointer to move
    movePointer = [](int dx, int dy) { pointerMoves.emplace_back(dx, dy); };
    ArrowKey(1, 0, false);
    ArrowKey(0, -1, false);
    ArrowKey(-1, 0, true);
    ArrowKey(0, 1, true);
    EXPECT_EQ(pointerMoves, (std::vector<std::pair<int, int>>{{1, 0}, {0, -1}, {-10, 0}, {0, 10}}));
}

// ---- wheel ----

// Degrees of the place under a position, in the view of the moment.
std::pair<float, float> PlaceUnder(float x, float y) {
    float lat = 0;
    float longitude = 0;
    UnprojectPoint(CurrentMap(), x, y, lat, longitude);
    return {lat, longitude};
}

TEST_F(MouseModes, TheWheelZoomsByTwoWithThePlaceUnderThePointerKept) {
    for (const std::int16_t number : {projection::kCartesian, projection::kMercator}) {
        mapState = {};
        plots.clear();
        number == projection::kCartesian ? SetView(-90, -180, 90, 180, number)
                                         : SetView(-65, -180, 75, 180, number);
        const auto before = PlaceUnder(300, 80);
        for (int step = 1; step <= 4; ++step) {
            const float width = mapView.extent.spanLong;
            WheelZoom(300, 80, 1);
            EXPECT_FLOAT_EQ(mapView.extent.spanLong, width / 2);
            const auto after = PlaceUnder(300, 80);
            EXPECT_NEAR(after.first, before.first, 1e-3) << number << " " << step;
            EXPECT_NEAR(after.second, before.second, 1e-3) << number << " " << step;
        }
        EXPECT_EQ(plots.size(), 4U);
        EXPECT_EQ(mapState.viewTop, 5);
        EXPECT_TRUE(CurrentMap().title.starts_with("Lat: "));
        for (int step = 1; step <= 3; ++step) {
            WheelZoom(300, 80, -1);
            EXPECT_NEAR(PlaceUnder(300, 80).first, before.first, 1e-3) << number << " " << step;
            EXPECT_NEAR(PlaceUnder(300, 80).second, before.second, 1e-3) << number << " " << step;
        }
        WheelZoom(300, 80, -1);
        number == projection::kCartesian ? ExpectEdges(-90, -180, 90, 180)
                                         : ExpectEdges(-65, -180, 75, 180);
    }
}

TEST_F(MouseModes, SeveralStepsOfTheWheelMakeOneView) {
    WheelZoom(kX, kY, 3);
    EXPECT_EQ(plots, Log{"full"});
    ExpectEdges(-11.25F, -22.5F, 11.25F, 22.5F);
}

TEST_F(MouseModes, TheWheelEndsAtOneDegreeAndAtTheWorld) {
    SetView(0, 0, 0.75F, 1.5F, projection::kCartesian);
    WheelZoom(kX, kY, 1);
    EXPECT_FLOAT_EQ(CurrentMap().east - CurrentMap().west, 1);
    EXPECT_FLOAT_EQ(CurrentMap().north - CurrentMap().south, 0.5F);
    WheelZoom(kX, kY, 1);
    WheelZoom(kX, kY, 100);
    EXPECT_EQ(plots, Log{"full"}) << "not below a degree";

    plots.clear();
    SetView(-90, -180, 90, 180, projection::kCartesian);
    WheelZoom(kX, kY, -1);
    EXPECT_TRUE(plots.empty());
    SetView(0, 0, 10, 20, projection::kCartesian);
    WheelZoom(kX, kY, -100);
    EXPECT_EQ(CurrentMap().south, -90);
    EXPECT_EQ(CurrentMap().north, 90);
    EXPECT_EQ(mapView.extent.spanLong, 360);
    EXPECT_EQ(PendingRunTimeError(), 0);
}

TEST_F(MouseModes, TheWheelMovesAViewOffThePole) {
    SetView(60, 0, 90, 60, projection::kCartesian);
    WheelZoom(kX, 40, -1);
    ExpectEdges(30, -30, 90, 90);
}

TEST_F(MouseModes, TheWheelDoesNothingOffTheMapOnAGlobeAndDuringADrag) {
    WheelZoom(10, 10, 1);
    MouseDown(kX, kY, false);
    WheelZoom(kX, kY, 1);
    MouseUp(kX, kY, false);
    SetView(0, -90, 0, 90, projection::kGlobeSphere);
    WheelZoom(kX, kY, 1);
    WheelZoom(kX, kY, -1);
    ExpectUntouched();
}

TEST_F(MouseModes, TheWheelGoesThroughTheRingOfViews) {
    WheelZoom(kX, kY, 1);
    WheelZoom(kX, kY, 1);
    PreviousView();
    ExpectEdges(-45, -90, 45, 90);
    PreviousView();
    ExpectEdges(-90, -180, 90, 180);
    EXPECT_EQ(mapState.viewTop, mapState.viewLowest);
}

// ---- whatever is done ----

// Events in any order, with changes of the projection between them: every view that comes of them
// is one that can be drawn.
TEST_F(MouseModes, NoOrderOfEventsLeavesAViewThatCannotBeDrawn) {
    const unsigned seed = std::random_device()();
    SCOPED_TRACE("seed " + std::to_string(seed));
    std::mt19937 random(seed);
    const auto upTo = [&](int most) { return static_cast<int>(random() % (most + 1)); };
    CurrentMap().hidden.fill(kTrue);
    options.storeImages = kTrue;
    surface.recording = false;
    for (int event = 0; event < 3000; ++event) {
        const float x = static_cast<float>(upTo(kSurfaceWidth));
        const float y = static_cast<float>(upTo(kSurfaceHeight));
        switch (upTo(10)) {
            case 0:
                SetMouseMode(static_cast<std::int16_t>(upTo(5)));
                break;
            case 1:
                MouseDown(x, y, upTo(3) == 0);
                break;
            case 2:
                MouseUp(x, y, upTo(3) == 0);
                break;
            case 3:
                WheelZoom(x, y, upTo(8) - 4);
                break;
            case 4:
                PageUpKey();
                break;
            case 5:
                if (upTo(3) == 0) PreviousView();
                break;
            case 6:
                if (upTo(5) == 0) {
                    const std::int16_t before = CurrentMap().projection;
                    CurrentMap().projection = static_cast<std::int16_t>(upTo(3));
                    ChangeProjection(CurrentMap().projection, before);
                    SetView(CurrentMap().south, CurrentMap().west, CurrentMap().north,
                            CurrentMap().east, CurrentMap().projection);
                    surface.recording = false;
                }
                break;
            case 7:
                MouseDoubleClick(x, y);
                break;
            case 8:
                if (upTo(9) == 0) CancelDrag();
                break;
            default:
                MouseMove(x, y, upTo(1) == 0, upTo(5) == 0);
                Overlay();
                break;
        }
        const MapDocument& map = CurrentMap();
        ASSERT_EQ(PendingRunTimeError(), 0) << event;
        ASSERT_TRUE(map.south >= -90 && map.north <= 90 && map.south <= map.north) << event;
        ASSERT_TRUE(std::abs(map.west) <= 180 && std::abs(map.east) <= 180) << event;
        ASSERT_GE(mapView.extent.spanLong, 0.999F) << event;
    }
}

// ---- lines near a position ----

class MouseLines : public MouseModes {
  protected:
    void SetUp() override {
        MouseModes::SetUp();
        session.ChartNumber = 1;
        calcChart[1].Lon.fill(-1);
        calcChart[1].JulianDayET = 2451545;
        for (LineStyle& style : settings.lineStyle) style.displayed = kFalse;
    }

    // A point that culminates on the meridian of `longitude` and is overhead at `dec`.
    static void Place(std::size_t p, float longitude, float dec) {
        calcChart[1].Lon[p] = 0;
        calcChart[1].RA[p] = longitude;
        calcChart[1].Dec[p] = dec;
        pointSelection[p] = kTrue;
    }

    static void Show(std::initializer_list<std::size_t> types) {
        for (const std::size_t type : types) settings.lineStyle[type].displayed = kTrue;
        ++plotState.screenPlots;
    }
};

TEST_F(MouseLines, AMeridianIsNamedWithinFewPixels) {
    Place(3, 40, 20);
    Show({1, 2});
    EXPECT_EQ(LinesNear(kX + 40, kY + 50), "The Sun - Culminate");
    EXPECT_EQ(LinesNear(kX + 44, kY + 50), "The Sun - Culminate");
    EXPECT_EQ(LinesNear(kX + 45, kY + 50), "");
    EXPECT_EQ(LinesNear(kX - 140, kY - 89), "The Sun - Anticulminate");
    EXPECT_EQ(LinesNear(kX + 40, 38), "") << "off the map";
}

TEST_F(MouseLines, TypesAreNamedByTheLineMode) {
    Place(3, 40, 0);
    Show({1});
    options.lineMode = 2;  // by the longitude, which is 0
    EXPECT_EQ(LinesNear(kX, kY + 50), "The Sun - MC");
}

// The Sun is overhead at 20 north, 40 east: it rises 90 degrees west of there on the equator.
TEST_F(MouseLines, RiseAndSetLinesAreNamedWhereTheyRun) {
    Place(3, 40, 20);
    Show({3, 4});
    EXPECT_EQ(LinesNear(kX - 50, kY), "The Sun - Rise");
    EXPECT_EQ(LinesNear(kX + 130, kY), "The Sun - Set");
    EXPECT_EQ(LinesNear(kX, kY), "");
}

TEST_F(MouseLines, ASegmentOverTheDateLineIsFoundOnBothSides) {
    Place(3, -90.5F, 20);  // rises on the equator at 179 E 30
    Show({3});
    EXPECT_EQ(LinesNear(384, kY), "The Sun - Rise");
    EXPECT_EQ(LinesNear(26, kY), "The Sun - Rise");
}

TEST_F(MouseLines, InANarrowViewOverTheDateLineLinesAreFoundWhereTheyAre) {
    Place(3, 175, 20);
    Place(5, -175, 20);
    Place(6, 0, 20);
    Show({1});
    SetView(-30, 170, 30, -170, projection::kCartesian);  // 18 pixels a degree
    EXPECT_EQ(LinesNear(25 + 90, kY), "The Sun - Culminate");
    EXPECT_EQ(LinesNear(25 + 270, kY), "Mercury - Culminate");
    int found = 0;
    for (int x = 25; x <= 385; ++x) {
        if (LinesNear(static_cast<float>(x), kY).find("Venus") != std::string::npos) ++found;
    }
    EXPECT_EQ(found, 0);
}

TEST_F(MouseLines, SeveralLinesAreNamedNearestFirstAndEachOnce) {
    Place(3, 40, 20);
    Place(5, 42, 20);
    Place(6, 41, 20);
    Show({1});
    EXPECT_EQ(LinesNear(kX + 40, kY + 50),
              "The Sun - Culminate\r\nVenus - Culminate\r\nMercury - Culminate");
}

TEST_F(MouseLines, OnAGlobeTheNearSideIsNamed) {
    SetView(0, -90, 0, 90, projection::kGlobeSphere);
    Place(3, 0, 20);
    Show({1, 2});
    const float x = mapView.rect.left + mapView.rect.width / 2.0F;
    const float y = mapView.rect.top + mapView.rect.height / 2.0F;
    EXPECT_EQ(LinesNear(x, y), "The Sun - Culminate");
    EXPECT_EQ(LinesNear(x + 20, y), "");
}

TEST_F(MouseLines, LinesThatBelongToNoPointAreNamedByWhatTheyAre) {
    Place(3, 40, 20);
    Show({11});
    options.mapZodiac = 1;
    EXPECT_EQ(LinesNear(kX, kY), "Aries - Signs");
    EXPECT_EQ(LinesNear(kX + 30, kY), "Taurus - Signs");
    for (LineStyle& style : settings.lineStyle) style.displayed = kFalse;
    Show({10});
    EXPECT_EQ(LinesNear(kX, kY), "Ecliptic");
}

TEST_F(MouseLines, AParanIsNamedByItsTwoPoints) {
    Place(1, 40, 20);
    Place(3, 100, 10);
    Show({5});
    options.paranPoint = 1;
    options.paranLimit = 90;
    std::string seen;
    for (int y = 39; y <= 219 && seen.empty(); ++y) seen = LinesNear(kX, static_cast<float>(y));
    EXPECT_TRUE(seen.starts_with("The Sun ")) << seen;
    EXPECT_NE(seen.find(" / The Moon "), std::string::npos) << seen;
    EXPECT_TRUE(seen.ends_with(" - Paran RS/RS")) << seen;
}

TEST_F(MouseLines, ALabelWhereAPointIsOverheadIsNamed) {
    Place(3, 40, 20);
    Show({1});
    chartLines.objects = {{245, 109, 3, line_type::kPointLabel, LabelPlace::Overhead},
                          {155, 129, 3, line_type::kPointLabel, LabelPlace::Equator}};
    EXPECT_EQ(LinesNear(kX + 40, kY - 20), "The Sun - Overhead\r\nThe Sun - Culminate");
    EXPECT_EQ(LinesNear(kX - 50, kY), "") << "the label of a rise line is named by its line";
}

TEST_F(MouseLines, WithoutAChartThereAreNone) {
    Place(3, 40, 20);
    Show({1});
    session.ChartNumber = 0;
    EXPECT_EQ(LinesNear(kX + 40, kY), "");
}

TEST_F(MouseLines, ThePlacesOfLinesFollowThePlots) {
    Place(3, 40, 20);
    Show({1});
    EXPECT_EQ(LinesNear(kX + 40, kY), "The Sun - Culminate");
    calcChart[1].RA[3] = 60;
    EXPECT_EQ(LinesNear(kX + 40, kY), "The Sun - Culminate") << "what the picture shows";
    ++plotState.screenPlots;
    EXPECT_EQ(LinesNear(kX + 40, kY), "");
    EXPECT_EQ(LinesNear(kX + 60, kY), "The Sun - Culminate");
}

TEST_F(MouseLines, ADoubleClickNamesTheLinesInABox) {
    Place(3, 40, 20);
    Show({1});
    Click(kX + 40, kY + 50);
    MouseDoubleClick(kX + 41, kY + 50);
    EXPECT_EQ(TestShell().log, Log{"MessageBox|Lines|The Sun - Culminate|Ok|None"});
    TestShell().log.clear();
    Click(kX + 80, kY + 50);
    MouseDoubleClick(kX + 80, kY + 50);
    EXPECT_TRUE(TestShell().log.empty()) << "nothing is near";
}

float identifiedX = 0;
float identifiedY = 0;

TEST_F(MouseLines, ADoubleClickHandsTheLastClickOverToTheIdentification) {
    identifyLine = [](float x, float y) {
        identifiedX = x;
        identifiedY = y;
    };
    Click(100, 150);
    MouseDoubleClick(101, 151);
    EXPECT_EQ(identifiedX, 100);
    EXPECT_EQ(identifiedY, 150);
    EXPECT_TRUE(TestShell().log.empty());
}

TEST_F(MouseLines, ADoubleClickOffTheMapIdentifiesNothing) {
    identifyLine = [](float x, float y) {
        identifiedX = x;
        identifiedY = y;
    };
    identifiedX = identifiedY = -7;
    Click(10, 10);
    MouseDoubleClick(11, 10);
    EXPECT_EQ(identifiedX, -7);
    EXPECT_EQ(identifiedY, -7);
    MouseDoubleClick(100, 150);
    EXPECT_EQ(identifiedX, 100) << "on the map, without a click there before";
    EXPECT_EQ(identifiedY, 150);
}

TEST_F(MouseLines, ADoubleClickWhoseFirstClickCentredTheMapMeansTheSamePlace) {
    identifyLine = [](float x, float y) {
        identifiedX = x;
        identifiedY = y;
    };
    SetView(-45, -90, 45, 90, projection::kCartesian);
    SetMouseMode(mouse_mode::kMove);
    Click(25 + 220, 39 + 70);
    MouseDoubleClick(25 + 220, 39 + 70);
    EXPECT_NEAR(identifiedX, 205, 0.1);
    EXPECT_NEAR(identifiedY, 129, 0.1);
}

}  // namespace
}  // namespace orvantis

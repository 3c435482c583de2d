#include "map/plot.h"

#include <algorithm>
#include <limits>

#include "map/map_fixture.h"
#include "text/run_time_error.h"

namespace orvantis {
namespace {

using Log = std::vector<std::string>;

// What the connection points were called with, and how often the lines still fail.
Log calls;
int failures = 0;

class PlotTest : public MapTest {
  protected:
    void SetUp() override {
        MapTest::SetUp();
        calls.clear();
        failures = 0;
        AddLine(1001, {{5, 0, 0}, {5, 600, 600}});
        MakeDatabase();
        plotChartLines = [](Flag printing, Flag fullPlot, std::int16_t slot) {
            calls.push_back("lines " + std::to_string(printing) + " " + std::to_string(fullPlot) +
                            " " + std::to_string(slot));
            mapView.surface->MoveTo(100, 100);
            mapView.surface->LineTo(110, 100);
            if (failures > 0) {
                --failures;
                RaiseRunTimeError(error::kOverflow);
            }
        };
    }
};

TEST_F(PlotTest, QuickPassPutsTheStoredImageDownAndDrawsTheLinesAlone) {
    PlotMap4(kFalse, surface, kTrue);
    calls.clear();
    surface.log.clear();
    PlotMap4(kFalse, surface, kFalse);
    EXPECT_EQ(surface.log,
              (Log{"PutImage 409 258", "Refresh", "ClearClip", "SetPen 1 0 0",
                   "SelectFont QX Symbol 9 0 0", "Rectangle 25 39 386 220 none",
                   "ClipToRectangle 25 39 385 219", "MoveTo 100 100", "LineTo 110 100", "Refresh",
                   "ClearClip", "ClearClip", "SelectFont QX Symbol 9 0 0"}));
    EXPECT_EQ(calls, Log{"lines 0 -1 1"});
}

TEST_F(PlotTest, QuickPassShowsWhatTheFullRedrawShowed) {
    AddFill(1, -20, 20, true, 0);
    for (std::int16_t number = 0; number < 4; ++number) {
        CurrentMap().projection = number;
        PlotMap4(kFalse, surface, kTrue);
        Image full;
        surface.CopyImage(full);
        surface.Clear(0x123456);
        PlotMap4(kFalse, surface, kFalse);
        Image quick;
        surface.CopyImage(quick);
        EXPECT_EQ(full.pixels, quick.pixels) << number;
    }
}

TEST_F(PlotTest, QuickPassOnALargerSurfaceThanTheStoredImageHasItsSurroundToo) {
    PlotMap4(kFalse, surface, kTrue);
    RecordingSurface larger(kSurfaceWidth + 100, kSurfaceHeight + 60);
    larger.Clear(0x123456);
    PlotMap4(kFalse, larger, kFalse);
    EXPECT_EQ(larger.Calls("PutImage"), Log{"PutImage 409 258"});
    EXPECT_EQ(larger.Calls("FloodFill"), Log{"FloodFill 1 1 12632256 0"});
    EXPECT_EQ(larger.GetPixel(kSurfaceWidth + 99, kSurfaceHeight + 59), 0xC0C0C0);
    EXPECT_EQ(larger.GetPixel(kSurfaceWidth + 99, 1), 0xC0C0C0);

    RecordingSurface smaller(kSurfaceWidth - 100, kSurfaceHeight - 60);
    PlotMap4(kFalse, smaller, kFalse);
    EXPECT_EQ(smaller.Calls("FloodFill"), Log{}) << "the image covers it";
}

TEST_F(PlotTest, StoredImageHoldsNoChartLines) {
    PlotMap4(kFalse, surface, kTrue);
    const Image& stored = session.StoredImage;
    ASSERT_EQ(stored.width, kSurfaceWidth);
    EXPECT_EQ(stored.pixels[100 * kSurfaceWidth + 105], 0xFF00C800U);
    EXPECT_EQ(surface.GetPixel(105, 100), 0);
}

TEST_F(PlotTest, SurroundIsGreyAndTheMapHasASunkenFrame) {
    PlotMap4(kFalse, surface, kTrue);
    EXPECT_EQ(surface.GetPixel(1, 1), 0xC0C0C0);
    EXPECT_EQ(surface.GetPixel(408, 257), 0xC0C0C0);
    EXPECT_EQ(surface.GetPixel(24, 100), 0x808080);
    EXPECT_EQ(surface.GetPixel(100, 38), 0x808080);
    EXPECT_EQ(surface.GetPixel(386, 100), 0xFFFFFF);
    EXPECT_EQ(surface.GetPixel(100, 220), 0xFFFFFF);
    EXPECT_EQ(surface.GetPixel(25, 100), 0) << "the outline";
    EXPECT_EQ(surface.GetPixel(385, 100), 0);
    EXPECT_EQ(surface.GetPixel(200, 60), 0x00C800) << "the land within";
}

TEST_F(PlotTest, GlobesHaveNoSunkenFrame) {
    CurrentMap().projection = projection::kGlobeOblate;
    PlotMap4(kFalse, surface, kTrue);
    EXPECT_EQ(surface.Calls("SetPen").size(), 3U);
    EXPECT_EQ(surface.Calls("Ellipse").size(), 1U);
    EXPECT_EQ(surface.Calls("ClipToEllipse").size(), 1U);
}

TEST_F(PlotTest, OutlineIsWhiteOnBlackLand) {
    EXPECT_EQ(OutlineColour(), 0);
    settings.mapBackColour = 0x2000000;  // black, relative to a palette
    EXPECT_EQ(OutlineColour(), 0xFFFFFF);
}

TEST_F(PlotTest, RefreshesDuringAPlotCanBeHeldBack) {
    PlotMap4(kFalse, surface, kTrue);
    const std::size_t all = surface.Calls("Refresh").size();
    options.holdRefresh = kTrue;
    surface.log.clear();
    PlotMap4(kFalse, surface, kTrue);
    EXPECT_EQ(all, 3U);
    EXPECT_EQ(surface.Calls("Refresh").size(), 2U);
}

TEST_F(PlotTest, LabelsAreDrawnWhereTheDocumentShowsThem) {
    plotCountryNames = [](bool capitals) { calls.push_back(capitals ? "COUNTRIES" : "countries"); };
    plotCities = [] { calls.emplace_back("cities"); };
    PlotMap4(kFalse, surface, kTrue);
    EXPECT_EQ(calls, Log{"lines 0 -1 1"}) << "a new document shows neither";

    calls.clear();
    CurrentMap().hidden[3] = kFalse;
    PlotMap4(kFalse, surface, kTrue);
    EXPECT_EQ(calls, (Log{"countries", "lines 0 -1 1"}));

    calls.clear();
    CurrentMap().hidden[8] = kFalse;
    PlotMap4(kFalse, surface, kTrue);
    EXPECT_EQ(calls, (Log{"COUNTRIES", "lines 0 -1 1"})) << "no city file, no cities";

    calls.clear();
    CurrentMap().cityFile = "world";
    PlotMap4(kFalse, surface, kTrue);
    EXPECT_EQ(calls, (Log{"COUNTRIES", "cities", "lines 0 -1 1"}));
}

TEST_F(PlotTest, LabelFontIsThatOfTheSettings) {
    settings.textFontName = "Sans";
    settings.textFontSize = 12;
    settings.textFontBold = kTrue;
    PlotMap4(kFalse, surface, kTrue);
    EXPECT_EQ(surface.Calls("SelectFont"),
              (Log{"SelectFont QX Symbol 9 0 0", "SelectFont Sans 12 1 0",
                   "SelectFont QX Symbol 9 0 0", "SelectFont QX Symbol 9 0 0"}));
}

TEST_F(PlotTest, MouseMarksAreDrawnOnFlatMapsAlone) {
    plotMouseMarks = [] { calls.emplace_back("marks"); };
    PlotMap4(kFalse, surface, kFalse);
    EXPECT_EQ(calls, (Log{"lines 0 -1 1", "marks"}));
    calls.clear();
    CurrentMap().projection = projection::kGlobeSphere;
    PlotMap4(kFalse, surface, kFalse);
    EXPECT_EQ(calls, Log{"lines 0 -1 1"});
}

TEST_F(PlotTest, ClockOfAnotherChartIsStoppedFirst) {
    stopForeignClock = [] { calls.emplace_back("clock"); };
    PlotMap4(kFalse, surface, kFalse);
    EXPECT_EQ(calls, (Log{"clock", "lines 0 -1 1"}));
}

TEST_F(PlotTest, PrintingForcesExtraAnnotationForItsLength) {
    options.extraAnnotation = kFalse;
    plotChartLines = [](Flag printing, Flag, std::int16_t) {
        calls.push_back(std::to_string(printing) + std::to_string(options.extraAnnotation) +
                        std::to_string(plotState.printing));
    };
    PlotMap4(kTrue, surface, kTrue);
    EXPECT_EQ(calls, Log{"-1-1-1"});
    EXPECT_EQ(options.extraAnnotation, kFalse);
    EXPECT_EQ(plotState.printing, kFalse);
}

TEST_F(PlotTest, HourglassIsShownForThePlotsLength) {
    PlotMap4(kFalse, surface, kTrue);
    ASSERT_EQ(TestShell().log.size(), 2U);
    EXPECT_NE(TestShell().log[0], TestShell().log[1]);
}

TEST_F(PlotTest, FailureIsToldWithRetryAndCancel) {
    failures = 1;
    TestShell().log.clear();
    TestShell().boxAnswers = {BoxAnswer::Cancel};
    PlotMap4(kFalse, surface, kTrue);
    ASSERT_EQ(TestShell().log.size(), 3U);
    EXPECT_EQ(TestShell().log[1],
              "MessageBox|Orvantis|An error occurred whilst plotting:\\r\\nOverflow\\r\\n|"
              "RetryCancel|Exclamation");
}

TEST_F(PlotTest, RetryRunsTheFailedStepAgainAndGoesOn) {
    failures = 2;
    TestShell().boxAnswers = {BoxAnswer::Retry, BoxAnswer::Retry};
    plotMouseMarks = [] { calls.emplace_back("marks"); };
    PlotMap4(kFalse, surface, kTrue);
    EXPECT_EQ(calls, (Log{"lines 0 -1 1", "lines 0 -1 1", "lines 0 -1 1", "marks"}));
    EXPECT_FALSE(plotState.interrupted);
    EXPECT_EQ(surface.Calls("Clear").size(), 1U) << "earlier steps aren't run again";
}

TEST_F(PlotTest, RetryOfTheLinesPutsTheStoredImageDownFirst) {
    for (const Flag redraw : {kTrue, kFalse}) {
        PlotMap4(kFalse, surface, kTrue);
        surface.log.clear();
        failures = 1;
        TestShell().boxAnswers = {BoxAnswer::Retry};
        PlotMap4(kFalse, surface, redraw);
        EXPECT_EQ(surface.Calls("PutImage").size(), redraw != kFalse ? 1U : 2U);
        const auto put = std::find(surface.log.rbegin(), surface.log.rend(), "PutImage 409 258");
        ASSERT_GE(put - surface.log.rbegin(), 3);
        EXPECT_EQ(*(put - 1), "ClipToRectangle 25 39 385 219");
        EXPECT_EQ(*(put - 2), "MoveTo 100 100");
        EXPECT_EQ(*(put - 3), "LineTo 110 100");
    }
}

TEST_F(PlotTest, RetryOfTheLinesDrawsWithinTheMapAsTheFirstTimeDid) {
    plotChartLines = [](Flag, Flag, std::int16_t) {
        mapView.surface->MoveTo(100, 100);
        mapView.surface->LineTo(5000, 100);
        mapView.surface->ClearClip();
        if (failures > 0) {
            --failures;
            RaiseRunTimeError(error::kOverflow);
        }
    };
    for (const bool printing : {false, true}) {
        for (const Flag redraw : {kTrue, kFalse}) {
            failures = 1;
            TestShell().boxAnswers = {BoxAnswer::Retry};
            surface.log.clear();
            PlotMap4(printing ? kTrue : kFalse, surface, redraw);
            const auto line =
                std::find(surface.log.rbegin(), surface.log.rend(), "LineTo 5000 100");
            const auto clip = std::find_if(line, surface.log.rend(), [](const std::string& call) {
                return call.find("Clip") != std::string::npos;
            });
            ASSERT_NE(clip, surface.log.rend());
            EXPECT_EQ(clip->substr(0, 15), "ClipToRectangle") << printing << redraw;
        }
    }
}

TEST_F(PlotTest, RetryOfPrintedLinesPutsNoImageDown) {
    failures = 1;
    TestShell().boxAnswers = {BoxAnswer::Retry};
    PlotMap4(kTrue, surface, kTrue);
    EXPECT_EQ(surface.Calls("PutImage"), Log{});
}

TEST_F(PlotTest, CancelClearsTheClipAndPutsFontAndPointerBack) {
    settings.symbolSize = 12;
    PlotMap4(kFalse, surface, kTrue);
    const std::string normalPointer = TestShell().log.back();
    failures = 1;
    TestShell().boxAnswers = {BoxAnswer::Cancel};
    PlotMap4(kTrue, surface, kTrue);
    ASSERT_GE(surface.log.size(), 2U);
    EXPECT_EQ(*(surface.log.end() - 2), "ClearClip");
    EXPECT_EQ(surface.log.back(), "SelectFont QX Symbol 12 0 0") << "the screen's, not the page's";
    EXPECT_EQ(TestShell().log.back(), normalPointer);
}

TEST_F(PlotTest, PlotWithinAPlotDoesNothing) {
    plotChartLines = [](Flag, Flag, std::int16_t) {
        calls.emplace_back("lines");
        PlotMap4(kFalse, *session.picture, kTrue);
        EXPECT_EQ(mapView.surface, session.picture) << "the outer plot goes on";
    };
    plotMouseMarks = [] { calls.emplace_back("marks"); };
    PlotMap4(kFalse, surface, kTrue);
    EXPECT_EQ(calls, (Log{"lines", "marks"}));
    EXPECT_EQ(surface.Calls("Clear").size(), 1U);
    EXPECT_EQ(TestShell().log.size(), 2U) << "one hourglass";

    PlotMap4(kFalse, surface, kFalse);
    EXPECT_EQ(calls.size(), 4U) << "the next plot is one of its own";
}

TEST_F(PlotTest, CancelLeavesThePlotAsItStandsAndPutsTheRestBack) {
    failures = 1;
    TestShell().boxAnswers = {BoxAnswer::Cancel};
    options.extraAnnotation = kFalse;
    plotMouseMarks = [] { calls.emplace_back("marks"); };
    PlotMap4(kTrue, surface, kTrue);
    EXPECT_EQ(calls, Log{"lines -1 -1 1"});
    EXPECT_TRUE(plotState.interrupted);
    EXPECT_EQ(options.extraAnnotation, kFalse);
    EXPECT_EQ(plotState.printing, kFalse);
    EXPECT_EQ(PendingRunTimeError(), 0);
    PlotMap4(kFalse, surface, kTrue);
    EXPECT_FALSE(plotState.interrupted) << "the next plot starts afresh";
}

TEST_F(PlotTest, EdgesThatOverflowAreToldAndNothingCrashes) {
    CurrentMap().west = 1e30F;
    PlotMap4(kFalse, surface, kTrue);
    EXPECT_TRUE(plotState.interrupted);
    ASSERT_EQ(TestShell().boxes.size(), 1U);
    EXPECT_EQ(TestShell().boxes[0], "Orvantis: An error occurred whilst plotting: / Overflow / ");
}

// What stands between plots is asked at any time: the position under the pointer, a fill's place.
TEST_F(PlotTest, QuestionsAfterACancelledPlotAreHarmlessAndTheNextPlotRecovers) {
    PlotMap4(kFalse, surface, kTrue);
    Image good;
    surface.CopyImage(good);
    const MapDocument map = CurrentMap();
    const float nan = std::numeric_limits<float>::quiet_NaN();
    const float bad[][4] = {
        {nan, -90, nan, 90},   {0, nan, 0, nan},         {1e30F, -90, 1e30F, 90},
        {-90, 1e30F, 90, 180}, {10, 0, 10.001F, 20},     {-95, 0, -92, 20},
        {-90, -180, 90, 400},  {-1e9F, 5, 1e9F, 5.001F}, {0, 0, 1, 0.001F}};
    for (const auto& edge : bad) {
        for (std::int16_t number = 0; number < 4; ++number) {
            MapDocument& document = CurrentMap();
            document.south = edge[0];
            document.west = edge[1];
            document.north = edge[2];
            document.east = edge[3];
            document.projection = number;
            PlotMap4(kFalse, surface, kTrue);
            for (const std::int16_t minutes : {-32768, -10800, -1, 0, 5400, 32767}) {
                std::int16_t x = 0;
                std::int16_t y = 0;
                ProjectPoint(minutes, minutes, y, x);
                LongInView(minutes / 60.0, mapView.extent.westMin, mapView.extent.eastMin);
                float lat = 0;
                float longitude = 0;
                UnprojectPoint(CurrentMap(), minutes, minutes, lat, longitude);
                UnprojectPoint(CurrentMap(), 200, 100, lat, longitude);
                bool visible = false;
                mapView.surface = &surface;
                DrawMapSegment(minutes / 360.0, minutes / 180.0, true, visible, 1, 1);
                DrawMapSegment(minutes / 180.0, -minutes / 180.0, false, visible, 1, 1);
            }
            CurrentMap() = map;
            PlotMap4(kFalse, surface, kTrue);
            EXPECT_FALSE(plotState.interrupted) << edge[1] << ' ' << number;
            Image again;
            surface.CopyImage(again);
            EXPECT_EQ(again.pixels, good.pixels) << edge[1] << ' ' << number;
        }
    }
}

TEST_F(PlotTest, ErrorLeftByOthersIsNotThePlots) {
    RaiseRunTimeError(error::kDiskFull);
    PlotMap4(kFalse, surface, kTrue);
    EXPECT_TRUE(TestShell().boxes.empty());
}

TEST_F(PlotTest, TinySurfaceIsPlottedWithoutHarm) {
    for (const int size : {1, 2, 20, 60, 100}) {
        RecordingSurface tiny(size, size);
        for (std::int16_t number = 0; number < 4; ++number) {
            CurrentMap().projection = number;
            PlotMap4(kFalse, tiny, kTrue);
            EXPECT_FALSE(plotState.interrupted) << size;
        }
    }
}

}  // namespace
}  // namespace orvantis

// The plot on a printed page, and the plot's handler in each of its steps, on the screen and on a
// page alike.
#include <utility>
#include <vector>

#include "charts/CALCCHRT.h"
#include "lines/chart_lines.h"
#include "map/map_fixture.h"
#include "map/plot.h"
#include "session/files.h"
#include "session/session_state.h"
#include "session/settings.h"
#include "text/run_time_error.h"

namespace orvantis {
namespace {

using Log = std::vector<std::string>;

class PagePlotTest : public MapTest {
  protected:
    void SetUp() override {
        MapTest::SetUp();
        AddLine(1001, {{5, 0, 0}, {5, 600, 600}});
        MakeDatabase();
        plotChartLines = [](Flag, Flag, std::int16_t) {
            mapView.surface->MoveTo(100, 100);
            mapView.surface->LineTo(110, 100);
        };
        session.VersionText = "1.2.3";
        CurrentMap().title = "The world";
    }

    // Makes the n-th call of the surface that begins with the words fail.
    void FailAt(const std::string& words, int n) {
        surface.onCall = [words, left = n](const std::string& line) mutable {
            if (line.starts_with(words) && --left == 0) RaiseRunTimeError(error::kOverflow);
        };
    }
};

// --- The page --------------------------------------------------------------------------------

// A page of 800 by 600 whose letters measure 7 by 13. Margins are 1 % of the height, 6, so that
// the page within them is 788 by 575 at (6, 19). The frame is 2 * 7 + 13 + 14 = 41 high and
// 3 * 7 + 8 = 29 wide: the map is 788 - 58 - 1 by 575 - 82 + 2 at (6 + 29 + 1, 19 + 41 - 1).
TEST_F(PagePlotTest, PageHasMarginsOfOnePercentOfItsHeightAndRoomForTheTitle) {
    RecordingSurface page(800, 600);
    options.extraAnnotation = kFalse;
    plotChartLines = [](Flag, Flag, std::int16_t) {
        EXPECT_EQ(mapView.rect.left, 36);
        EXPECT_EQ(mapView.rect.top, 59);
        EXPECT_EQ(mapView.rect.width, 729);
        EXPECT_EQ(mapView.rect.height, 495);
    };
    PlotMap4(kTrue, page, kTrue);
    EXPECT_EQ(page.Calls("Rectangle"),
              (Log{"Rectangle 6 19 794 594 none", "Rectangle 36 59 766 555 none"}));
}

TEST_F(PagePlotTest, TitleLineHoldsHeadingLinesTitleAndProgram) {
    pageHeading = [] { return std::string("A chart"); };
    pageLines = [] { return std::string("Sun, Moon"); };
    RecordingSurface page(800, 600);
    PlotMap4(kTrue, page, kTrue);
    EXPECT_EQ(page.Calls("TextOut"),
              (Log{"TextOut 6 0 0 A chart - Lines: Sun, Moon", "TextOut 794 0 2 The world",
                   "TextOut 400 0 1 Orvantis 1.2.3"}));
}

TEST_F(PagePlotTest, HeadingStandsAloneWithoutAListOfLines) {
    pageHeading = [] { return std::string("A chart"); };
    RecordingSurface page(800, 600);
    PlotMap4(kTrue, page, kTrue);
    EXPECT_EQ(page.Calls("TextOut").front(), "TextOut 6 0 0 A chart");
}

TEST_F(PagePlotTest, ProgramIsNamedBesideATitleOfFewerThan71CharactersAlone) {
    RecordingSurface page(800, 600);
    CurrentMap().title = std::string(70, 'x');
    PlotMap4(kTrue, page, kTrue);
    EXPECT_EQ(page.Calls("TextOut").size(), 2U);
    page.log.clear();
    CurrentMap().title = std::string(71, 'x');
    PlotMap4(kTrue, page, kTrue);
    EXPECT_EQ(page.Calls("TextOut"), Log{"TextOut 794 0 2 " + std::string(71, 'x')});
}

TEST_F(PagePlotTest, ScreenHasNoTitleLine) {
    PlotMap4(kFalse, surface, kTrue);
    EXPECT_EQ(surface.Calls("TextOut"), Log{});
}

TEST_F(PagePlotTest, GlyphsOfAPageMeasure9PointsWhateverTheSettings) {
    settings.symbolSize = 20;
    PlotMap4(kTrue, surface, kTrue);
    EXPECT_EQ(surface.Calls("SelectFont QX Symbol 20").size(), 1U) << "back for the screen";
    EXPECT_EQ(surface.Calls("SelectFont").front(), "SelectFont QX Symbol 9 0 0");
    EXPECT_EQ(surface.Calls("SelectFont").back(), "SelectFont QX Symbol 20 0 0");
}

TEST_F(PagePlotTest, PageHasNoFloodsClearingsAndImages) {
    AddFill(1, -20, 20, true, 0);
    session.StoredImage = {1, 1, {0xFF123456}};
    for (const Flag redraw : {kTrue, kFalse}) {
        for (std::int16_t number = 0; number < 4; ++number) {
            CurrentMap().projection = number;
            surface.log.clear();
            PlotMap4(kTrue, surface, redraw);
            for (const char* word : {"FloodFill", "Clear", "CopyImage", "PutImage", "Refresh"}) {
                EXPECT_EQ(surface.Calls(word), Log{}) << word << " " << number;
            }
            EXPECT_FALSE(surface.Calls("LineTo").empty());
        }
    }
    EXPECT_EQ(session.StoredImage.pixels, std::vector<std::uint32_t>{0xFF123456});
}

TEST_F(PagePlotTest, PageDrawsTheMapWhetherARedrawIsAskedForOrNot) {
    PlotMap4(kTrue, surface, kTrue);
    const Log drawn = surface.log;
    surface.log.clear();
    PlotMap4(kTrue, surface, kFalse);
    EXPECT_EQ(surface.log, drawn);
}

struct WidthRow {
    double factor;
    const char* outlinePen;
    const char* vectorPen;
};

TEST_F(PagePlotTest, VectorsOfAPageHaveAPenOf2UnitsTimesTheFactorAndAtLeastOne) {
    const WidthRow rows[] = {{1, "SetPen 1 0 0", "SetPen 2 0 0"},
                             {2.5, "SetPen 2 0 0", "SetPen 5 0 0"},
                             {3, "SetPen 3 0 0", "SetPen 6 0 0"},
                             {0.1, "SetPen 1 0 0", "SetPen 1 0 0"}};
    for (const WidthRow& row : rows) {
        surface.log.clear();
        printState.lineWidthFactor = row.factor;
        PlotMap4(kTrue, surface, kTrue);
        EXPECT_EQ(surface.Calls("SetPen"), (Log{row.outlinePen, row.vectorPen, row.outlinePen}))
            << row.factor;
    }
}

TEST_F(PagePlotTest, PageIsWhiteSoItsOutlineIsBlackOnBlackLandToo) {
    settings.mapBackColour = 0;
    PlotMap4(kFalse, surface, kTrue);
    EXPECT_EQ(plotState.outlineColour, 0xFFFFFF);
    plotChartLines = [](Flag, Flag, std::int16_t) { EXPECT_EQ(plotState.outlineColour, 0); };
    PlotMap4(kTrue, surface, kTrue);
}

struct ColourRow {
    std::int32_t mode;
    Colour ink;
    Colour area;
};

// What the lines ask for in a plot.
Colour inkSeen = -1;
Colour areaSeen = -1;
Colour whiteSeen = -1;

TEST_F(PagePlotTest, PageIsPrintedInColourFromMode3On) {
    plotChartLines = [](Flag, Flag, std::int16_t) {
        inkSeen = InkColour(0x123456);
        areaSeen = AreaColour(0x123456);
        whiteSeen = InkColour(0xFFFFFF);
    };
    const ColourRow rows[] = {{0, 0, 0xFFFFFF},         {1, 0, 0xFFFFFF},
                              {2, 0, 0xFFFFFF},         {3, 0x123456, 0x123456},
                              {16, 0x123456, 0x123456}, {0x1000000, 0x123456, 0x123456}};
    for (const ColourRow& row : rows) {
        printState.colourMode = row.mode;
        PlotMap4(kTrue, surface, kTrue);
        EXPECT_EQ(inkSeen, row.ink) << row.mode;
        EXPECT_EQ(areaSeen, row.area) << row.mode;
        EXPECT_EQ(whiteSeen, 0) << "white would not be seen on paper";
        EXPECT_EQ(printState.inColour, kFalse) << "it holds for the page alone";

        PlotMap4(kFalse, surface, kTrue);
        EXPECT_EQ(inkSeen, 0x123456) << "the screen has its colours";
        EXPECT_EQ(whiteSeen, 0xFFFFFF);
    }
}

TEST_F(PagePlotTest, EmptyPageAndTinyPagesAreHarmless) {
    for (const int size : {0, 1, 20, 100}) {
        RecordingSurface page(size, size);
        for (std::int16_t number = 0; number < 4; ++number) {
            CurrentMap().projection = number;
            PlotMap4(kTrue, page, kTrue);
            EXPECT_FALSE(plotState.interrupted) << size;
        }
    }
}

// --- The handler in every step ----------------------------------------------------------------

struct StepRow {
    const char* step;
    Flag printing;
    Flag redraw;
    const char* words;  // the call that fails
    int n;              // for the n-th time
};

const StepRow kSteps[] = {
    {"the stored image put down", kFalse, kFalse, "PutImage", 1},
    {"clearing", kFalse, kTrue, "Clear 5", 1},
    {"the view", kFalse, kTrue, "Rectangle", 1},
    {"the surround", kFalse, kTrue, "FloodFill", 1},
    {"the vectors", kFalse, kTrue, "SetPixel", 1},
    {"the fills", kFalse, kTrue, "FloodFill", 2},
    {"the grid", kFalse, kTrue, "SelectFont QX Symbol 8.25", 1},
    {"keeping the image", kFalse, kTrue, "CopyImage", 1},
    {"the lines", kFalse, kTrue, "LineTo 110 100", 1},
    {"the lines of a quick pass", kFalse, kFalse, "LineTo 110 100", 1},
    {"the marks", kFalse, kTrue, "SetPixel 7 7", 1},
    {"a page's pen", kTrue, kTrue, "SetPen", 1},
    {"a page's view", kTrue, kTrue, "Rectangle", 1},
    {"a page's title", kTrue, kTrue, "TextOut", 1},
    {"a page's vectors", kTrue, kTrue, "SetPixel", 1},
    {"a page's grid", kTrue, kTrue, "SelectFont QX Symbol 8.25", 1},
    {"a page's lines", kTrue, kTrue, "LineTo 110 100", 1},
    {"a page's marks", kTrue, kTrue, "SetPixel 7 7", 1},
};

class PlotHandlerTest : public PagePlotTest {
  protected:
    void SetUp() override {
        PagePlotTest::SetUp();
        AddFill(1, -20, 20, true, 0);
        plotMouseMarks = [] { mapView.surface->SetPixel(7, 7); };
        PlotMap4(kFalse, surface, kTrue);
        surface.log.clear();
        TestShell().boxes.clear();
    }
};

TEST_F(PlotHandlerTest, FailureOfAnyStepIsToldOnceAndRetryLeadsToTheWholePicture) {
    for (const StepRow& row : kSteps) {
        TestShell().boxes.clear();
        TestShell().boxAnswers = {BoxAnswer::Retry};
        FailAt(row.words, row.n);
        surface.Clear(0x123456);
        PlotMap4(row.printing, surface, row.redraw);
        EXPECT_EQ(TestShell().boxes,
                  Log{"Orvantis: An error occurred whilst plotting: / Overflow / "})
            << row.step;
        EXPECT_FALSE(plotState.interrupted) << row.step;
        Image after;
        surface.CopyImage(after);

        surface.onCall = nullptr;
        surface.Clear(0x123456);
        PlotMap4(row.printing, surface, row.redraw);
        Image whole;
        surface.CopyImage(whole);
        EXPECT_EQ(after.pixels, whole.pixels) << row.step;
    }
}

TEST_F(PlotHandlerTest, CancelInAnyStepEndsThePlotAndPutsEverythingBack) {
    printState.colourMode = 3;
    options.extraAnnotation = kFalse;
    for (const StepRow& row : kSteps) {
        TestShell().boxes.clear();
        TestShell().boxAnswers = {BoxAnswer::Cancel};
        FailAt(row.words, row.n);
        surface.log.clear();
        PlotMap4(row.printing, surface, row.redraw);
        EXPECT_EQ(TestShell().boxes.size(), 1U) << row.step;
        EXPECT_TRUE(plotState.interrupted) << row.step;
        EXPECT_EQ(plotState.printing, kFalse) << row.step;
        EXPECT_EQ(printState.inColour, kFalse) << row.step;
        EXPECT_EQ(options.extraAnnotation, kFalse) << row.step;
        EXPECT_EQ(surface.log.back(), "SelectFont QX Symbol 9 0 0") << row.step;
        EXPECT_EQ(PendingRunTimeError(), 0) << row.step;
        surface.onCall = nullptr;
    }
}

TEST_F(PlotHandlerTest, StepsAfterTheOneThatWasCancelledAreNotRun) {
    TestShell().boxAnswers = {BoxAnswer::Cancel};
    FailAt("SetPixel", 1);  // the vectors
    PlotMap4(kTrue, surface, kTrue);
    EXPECT_EQ(surface.Calls("LineTo 110 100"), Log{});
    EXPECT_EQ(surface.Calls("SetPixel 7 7"), Log{});
}

TEST_F(PlotHandlerTest, RetryAsOftenAsTheUserWants) {
    TestShell().boxAnswers = {BoxAnswer::Retry, BoxAnswer::Retry, BoxAnswer::Cancel};
    surface.onCall = [](const std::string& line) {
        if (line == "CopyImage") RaiseRunTimeError(error::kOverflow);
    };
    PlotMap4(kFalse, surface, kTrue);
    EXPECT_EQ(TestShell().boxes.size(), 3U);
    EXPECT_EQ(surface.Calls("CopyImage").size(), 3U);
    EXPECT_TRUE(plotState.interrupted);
}

TEST_F(PlotHandlerTest, FilesLeftOpenAreClosedByThePlot) {
    const FileHandle file = FileOpener(folder.Write("a", "bytes"), open_mode::kBinary, 0, kFalse);
    ASSERT_EQ(FileLength(file), 5);
    PlotMap4(kFalse, surface, kFalse);
    EXPECT_EQ(FileLength(file), 0);
}

// --- The stored image -------------------------------------------------------------------------

TEST_F(PagePlotTest, StoredImageHasThePicturesSizeAfterEveryFullPlot) {
    for (const int size : {300, 120, 409}) {
        RecordingSurface picture(size, size / 2);
        PlotMap4(kFalse, picture, kTrue);
        EXPECT_EQ(session.StoredImage.width, size);
        EXPECT_EQ(session.StoredImage.height, size / 2);
    }
}

TEST_F(PagePlotTest, QuickPassAndPageLeaveTheStoredImageAsItIs) {
    PlotMap4(kFalse, surface, kTrue);
    const std::vector<std::uint32_t> kept = session.StoredImage.pixels;
    CurrentMap().precision = 1;
    CurrentMap().gridOn = kTrue;
    PlotMap4(kFalse, surface, kFalse);
    PlotMap4(kTrue, surface, kTrue);
    EXPECT_EQ(session.StoredImage.pixels, kept);
}

TEST_F(PagePlotTest, PageWithoutAStoredImageKeepsNone) {
    PlotMap4(kTrue, surface, kFalse);
    EXPECT_EQ(session.StoredImage.width, 0);
    EXPECT_TRUE(session.StoredImage.pixels.empty());
}

// The older image is of another view, perhaps, or of this one before a change.
TEST_F(PagePlotTest, QuickPassAfterAFullPlotThatWasGivenUpDrawsTheMapAnew) {
    for (const char* words : {"Rectangle", "SetPixel", "SelectFont QX Symbol 9", "Refresh"}) {
        CurrentMap().gridOn = kFalse;
        PlotMap4(kFalse, surface, kTrue);
        CurrentMap().gridOn = kTrue;
        TestShell().boxAnswers = {BoxAnswer::Cancel};
        FailAt(words, 1);
        PlotMap4(kFalse, surface, kTrue);
        ASSERT_TRUE(plotState.interrupted) << words;
        EXPECT_EQ(session.StoredImage.width, 0) << words;

        surface.onCall = nullptr;
        surface.log.clear();
        PlotMap4(kFalse, surface, kFalse);
        EXPECT_EQ(surface.Calls("PutImage"), Log{}) << words;
        EXPECT_EQ(surface.Calls("Clear").size(), 1U) << words;
        const std::vector<std::uint32_t> kept = session.StoredImage.pixels;
        PlotMap4(kFalse, surface, kTrue);
        EXPECT_EQ(kept, session.StoredImage.pixels) << words << ": the map with its grid";
        surface.log.clear();
        PlotMap4(kFalse, surface, kFalse);
        EXPECT_EQ(surface.Calls("PutImage"), Log{"PutImage 409 258"}) << words;
    }
}

TEST_F(PagePlotTest, FullPlotThatIsGivenUpInItsLinesHasKeptItsImage) {
    TestShell().boxAnswers = {BoxAnswer::Cancel};
    plotChartLines = [](Flag, Flag, std::int16_t) { RaiseRunTimeError(error::kOverflow); };
    PlotMap4(kFalse, surface, kTrue);
    ASSERT_TRUE(plotState.interrupted);
    EXPECT_EQ(session.StoredImage.width, kSurfaceWidth);
}

// --- Between plots ------------------------------------------------------------------------------

TEST_F(PagePlotTest, AfterAPageTheScreensMapIsAskedAboutHoweverThePageEnded) {
    settings.mapBackColour = 0;  // land on which the outline is white
    PlotMap4(kFalse, surface, kTrue);
    const MapView before = mapView;
    RecordingSurface page(800, 600);
    for (const char* words : {"", "ClearClip", "Rectangle", "SetPixel", "MoveTo 100 100"}) {
        TestShell().boxAnswers = {BoxAnswer::Cancel};
        page.onCall = [words, failed = false](const std::string& line) mutable {
            if (failed || *words == 0 || !line.starts_with(words)) return;
            failed = true;
            RaiseRunTimeError(error::kOverflow);
        };
        PlotMap4(kTrue, page, kTrue);
        EXPECT_EQ(plotState.interrupted, *words != 0) << words;
        EXPECT_EQ(mapView.rect.left, before.rect.left) << words;
        EXPECT_EQ(mapView.rect.top, before.rect.top) << words;
        EXPECT_EQ(mapView.rect.width, before.rect.width) << words;
        EXPECT_EQ(mapView.rect.height, before.rect.height) << words;
        EXPECT_EQ(mapView.glyphWidth, before.glyphWidth) << words;
        EXPECT_EQ(mapView.surface, nullptr) << words;
        EXPECT_EQ(plotState.outlineColour, 0xFFFFFF) << words;
    }
}

bool pageFails = false;

std::vector<std::pair<int, int>> PlacesOf(const std::vector<LineLabel>& labels) {
    std::vector<std::pair<int, int>> places;
    places.reserve(labels.size());
    for (const LineLabel& label : labels) places.emplace_back(label.x, label.y);
    return places;
}

TEST_F(PagePlotTest, AfterAPageTheScreensLabelsAreAskedAboutHoweverThePageEnded) {
    plotChartLines = PlotChartLines;
    session.ChartNumber = 1;
    session.EclipseNumber = 1;
    calcChart[1].Lon.fill(-1);
    calcChart[1].Lon[3] = 0;
    calcChart[1].RA[3] = 40;
    calcChart[1].Dec[3] = 10;
    pointSelection[3] = kTrue;
    settings.lineStyle[line_type::kCulminate].displayed = kTrue;
    plotEclipseLines = [](Flag) {
        if (pageFails) RaiseRunTimeError(error::kOverflow);
        pageFails = false;
    };
    PlotMap4(kFalse, surface, kTrue);
    const auto labels = PlacesOf(chartLines.labels);
    const auto objects = PlacesOf(chartLines.objects);
    ASSERT_FALSE(objects.empty());
    RecordingSurface page(800, 600);
    for (const bool fails : {false, true}) {
        for (const BoxAnswer answer : {BoxAnswer::Retry, BoxAnswer::Cancel}) {
            pageFails = fails;
            TestShell().boxAnswers = {answer};
            PlotMap4(kTrue, page, kTrue);
            EXPECT_EQ(plotState.interrupted, fails && answer == BoxAnswer::Cancel);
            EXPECT_EQ(PlacesOf(chartLines.labels), labels) << fails;
            EXPECT_EQ(PlacesOf(chartLines.objects), objects) << fails;
        }
    }
}

// --- The vectors -------------------------------------------------------------------------------

TEST_F(PagePlotTest, LevelFileThatIsMissingDrawsNoVectorsAndThePlotGoesOn) {
    for (const Flag printing : {kFalse, kTrue}) {
        DeleteFile(folder.Path() + "level5.pnt");
        surface.log.clear();
        PlotMap4(printing, surface, kTrue);
        EXPECT_EQ(surface.Calls("SetPixel"), Log{});
        EXPECT_EQ(surface.Calls("LineTo 110 100").size(), 1U);
        EXPECT_FALSE(plotState.interrupted);
    }
}

}  // namespace
}  // namespace orvantis

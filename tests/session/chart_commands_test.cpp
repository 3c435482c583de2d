// The menu "&Chart": for each command the state before and after, what the shell is asked, and the
// plots that it makes.
#include <gtest/gtest.h>

#include "charts/CALCCHRT.h"
#include "map/projection.h"
#include "session/display_dialogs.h"
#include "session/driver.h"
#include "session/mouse_modes.h"
#include "support/command_test.h"
#include "support/recording_surface.h"

namespace orvantis {
namespace {

std::vector<std::string> calls;  // what connection points were asked

class ChartCommands : public CommandTest {
  protected:
    void SetUp() override {
        CommandTest::SetUp();
        calls.clear();
    }
    static void ConnectDialogs() {
        showLinesForm = [](LinesForm&) {
            calls.emplace_back("lines form");
            return true;
        };
        showPointsForm = [](PointsForm& form) {
            calls.push_back("points form " + std::to_string(form.mode));
            AcceptPoints(form);
            return true;
        };
    }
    static std::string RunChart(std::string_view caption, std::int16_t number = 0) {
        return Run("&Chart", caption, number);
    }
};

TEST_F(ChartCommands, AstroClockTogglesWithoutARedraw) {
    switchAstroClock = [](Flag on, Flag redraw) {
        calls.push_back("clock " + std::to_string(on) + " " + std::to_string(redraw));
        session.AstroClockOn = on;
        if (on != 0) plotLinesAnew();
    };
    EXPECT_EQ(Look("&Chart", "&AstroClock Off").caption, "&AstroClock Off");
    EXPECT_FALSE(Checked("&Chart", "&AstroClock Off"));
    EXPECT_EQ(RunChart("&AstroClock Off"), "lines");
    EXPECT_EQ(Look("&Chart", "&AstroClock Off").caption, "&AstroClock On");
    EXPECT_TRUE(Checked("&Chart", "&AstroClock Off"));
    EXPECT_EQ(RunChart("&AstroClock Off"), "lines");
    EXPECT_EQ(calls, (Words{"clock -1 0", "clock 0 0"}));
}

TEST_F(ChartCommands, FormsOfLaterCapabilitiesAreOpenedByTheirConnectionPoints) {
    enterNewChart = [] { calls.emplace_back("new"); };
    openSubsidiaryChart = [] { calls.emplace_back("subsidiary"); };
    viewChart = [](std::string_view title) { calls.push_back("view " + std::string(title)); };
    for (const char* caption : {"&New Chart...", "S&ubsidiary Chart...",
                                "View Local &Horizon Chart", "View Chart &Wheel"}) {
        EXPECT_EQ(RunChart(caption), "none") << caption;
    }
    EXPECT_EQ(calls, (Words{"new", "subsidiary", "view Local Horizon Chart", "view Chart Wheel"}));
}

TEST_F(ChartCommands, EntriesThatNeedAChartAreEnabledWithOne) {
    saveCurrentChart = openSubsidiaryChart = [] {};
    viewChart = [](std::string_view) {};
    relocateToPlace = [] { return true; };
    const Words captions = {"S&ave Chart...",       "C&lear Chart",
                            "S&ubsidiary Chart...", "View Local &Horizon Chart",
                            "View Chart &Wheel",    "&Relocate to..."};
    for (const std::string& caption : captions) EXPECT_FALSE(Enabled("&Chart", caption)) << caption;
    session.ChartNumber = 1;
    for (const std::string& caption : captions) EXPECT_TRUE(Enabled("&Chart", caption)) << caption;
    EXPECT_TRUE(Enabled("&Chart", "&Select Chart..."));
    EXPECT_TRUE(Enabled("&Chart", "&Open Chart File..."));
}

TEST_F(ChartCommands, SaveChartIsForChartsThatAreKeptInFiles) {
    saveCurrentChart = [] { calls.emplace_back("save"); };
    const struct {
        std::string name;
        Flag clock;
        Flag never;
        std::int16_t type;
        bool enabled;
    } rows[] = {{"Somebody", kFalse, kFalse, 1, true},
                {"Somebody", kFalse, kFalse, 4, true},
                {"Transits", kFalse, kFalse, 1, false},
                {"Somebody", kTrue, kFalse, 1, false},
                {"Somebody", kFalse, kTrue, 1, false}};
    session.ChartNumber = 1;
    for (const auto& row : rows) {
        calcChart[1].Name = row.name;
        calcChart[1].NeverSaved = row.never;
        calcChart[1].ChartType = row.type;
        session.AstroClockOn = row.clock;
        EXPECT_EQ(Enabled("&Chart", "S&ave Chart..."), row.enabled) << row.name << row.clock;
    }
    EXPECT_EQ(RunChart("S&ave Chart..."), "none");
    EXPECT_EQ(calls, Words{"save"});
}

TEST_F(ChartCommands, ClearChartTakesTheChartAwayAndLeavesTheEclipse) {
    session.ChartNumber = 1;
    session.EclipseNumber = 2;
    EXPECT_EQ(RunChart("C&lear Chart"), "lines");
    EXPECT_EQ(session.ChartNumber, 0);
    EXPECT_EQ(session.EclipseNumber, 2);
    EXPECT_TRUE(Log().empty());
}

// ---- Relocation ----

TEST_F(ChartCommands, RelocationIsRefusedForChartsThatAreNoMomentAtAPlace) {
    relocateToPlace = [] {
        calls.emplace_back("place");
        return false;
    };
    const std::string refusal =
        "MessageBox|Cannot Relocate|Charts of this type cannot be relocated.\\r\\n\\r\\nOnly natal "
        "or event charts or their equivalents (such as return charts or Davison relationship "
        "charts) may be relocated in Orvantis.|Ok|Error";
    const struct {
        std::int16_t type;
        std::int16_t subType;
        bool moves;
    } rows[] = {{0, 1, true},   {1, 1, true},  {2, 1, false}, {3, 1, false},
                {4, 1, true},   {5, 1, false}, {5, 15, true}, {6, 1, false},
                {7, 15, false}, {8, 1, true},  {9, 1, true},  {13, 99, true}};
    session.ChartNumber = 1;
    for (const auto& row : rows) {
        calls.clear();
        calcChart[1].ChartType = row.type;
        calcChart[1].ChartSubType = row.subType;
        EXPECT_EQ(RunChart("&Relocate to..."), "none") << row.type;
        EXPECT_EQ(calls, row.moves ? Words{"place"} : Words{}) << row.type;
        EXPECT_EQ(Log(), row.moves ? Words{} : Words{refusal}) << row.type;
    }
}

TEST_F(ChartCommands, RelocationWithoutLocalSpaceLinesTellsWhereToSeeIt) {
    relocateToPlace = [] {
        calcChart[1].Place = "Lisboa";
        return true;
    };
    session.ChartNumber = 1;
    calcChart[1].ChartType = 1;
    ShowLineTypes({1, 2, 3, 4});
    EXPECT_EQ(RunChart("&Relocate to..."), "lines");
    EXPECT_EQ(Log(), Words{"MessageBox|Orvantis|The chart has been relocated to Lisboa\\r\\nYou "
                           "must switch on Local Space Lines, or view the Local Horizon Chart if "
                           "you wish to see the effects of relocating the chart.|Ok|Information"});
    ShowLineTypes({7});
    EXPECT_EQ(RunChart("&Relocate to..."), "lines");
    EXPECT_TRUE(Log().empty());
}

// ---- What is displayed ----

TEST_F(ChartCommands, DisplayedLinesOpensTheLinesDialogAlone) {
    ConnectDialogs();
    EXPECT_EQ(RunChart("Displayed &Lines..."), "none");
    EXPECT_EQ(calls, Words{"lines form"});
}

TEST_F(ChartCommands, DisplayedPointsOpensThePointsDialogAndItsOkDrawsTheLines) {
    ConnectDialogs();
    session.ChartNumber = 1;
    EXPECT_EQ(RunChart("Displayed &Points..."), "lines");
    EXPECT_EQ(calls, Words{"points form 0"});
    EXPECT_TRUE(Log().empty());
}

TEST_F(ChartCommands, DisplayedPointsWithoutAPlanetaryLineTypeLeadsToTheLinesDialog) {
    ConnectDialogs();
    session.ChartNumber = 1;
    ShowLineTypes({8, 9, 10, 11, 12, 13, 14});
    EXPECT_EQ(RunChart("Displayed &Points..."), "lines");
    EXPECT_EQ(calls, (Words{"points form 0", "lines form"}));
    EXPECT_EQ(Log(),
              Words{"MessageBox|Orvantis|There are no planetary line types currently selected for "
                    "display.\\r\\nIn order to see planetary lines, you must first switch on at "
                    "least one line type from MC to Planet Directions on the next "
                    "screen.|Ok|Information"});
    for (const std::size_t type : {1, 4, 5, 7}) {
        calls.clear();
        ShowLineTypes({type});
        RunChart("Displayed &Points...");
        EXPECT_EQ(calls, Words{"points form 0"}) << type;
    }
}

TEST_F(ChartCommands, ParanPointWithoutAParanLineTypeLeadsToTheLinesDialogAndEndsInLines) {
    ConnectDialogs();
    session.ChartNumber = 1;
    ShowLineTypes({1, 2, 3, 4, 7});
    showPointsForm = [](PointsForm& form) {
        calls.push_back("points form " + std::to_string(form.mode));
        return true;
    };
    EXPECT_EQ(RunChart("P&aran Point..."), "lines");
    EXPECT_EQ(calls, (Words{"points form 1", "lines form"}));
    EXPECT_EQ(Log(), Words{"MessageBox|Orvantis|There are no paran line types currently selected "
                           "for display.\\r\\nIn order to see paran lines, you must first switch "
                           "on at least one paran line type on the next screen.|Ok|Information"});
    for (const std::size_t type : {5, 6}) {
        calls.clear();
        ShowLineTypes({type});
        EXPECT_EQ(RunChart("P&aran Point..."), "lines");
        EXPECT_EQ(calls, Words{"points form 1"}) << type;
    }
}

TEST_F(ChartCommands, ParanPointGoesOnWhenThePointsDialogIsCancelled) {
    ConnectDialogs();
    showPointsForm = [](PointsForm& form) {
        calls.push_back("points form " + std::to_string(form.mode));
        return false;
    };
    ShowLineTypes({});
    EXPECT_EQ(RunChart("P&aran Point..."), "lines");
    EXPECT_EQ(calls, (Words{"points form 1", "lines form"}));
    EXPECT_EQ(Log().size(), 1U);
    EXPECT_EQ(options.paranPoint, 1);
}

TEST_F(ChartCommands, PointColoursOpensItsDialog) {
    showPointColoursForm = [](PointColoursForm& form) {
        calls.push_back("colours of " + std::to_string(form.point));
        return false;
    };
    EXPECT_EQ(RunChart("Point &Colors..."), "none");
    EXPECT_EQ(calls, Words{"colours of 1"});
}

TEST_F(ChartCommands, ZodiacMovesTheMarkAndTheGeodeticOneAsksForItsStartFirst) {
    showZodiacStartForm = [](ZodiacStartForm& form) {
        calls.push_back(form.text);
        form.text = "010E00";
        return AcceptZodiacStart(form);
    };
    EXPECT_TRUE(Checked("&Chart", "&Celestial (Normal)"));
    EXPECT_EQ(RunChart("&Geodetic (Mundane)..."), "lines");
    EXPECT_EQ(options.mapZodiac, 1);
    EXPECT_EQ(options.geodeticStart, -10);
    EXPECT_EQ(calls.size(), 1U);
    EXPECT_TRUE(Checked("&Chart", "&Geodetic (Mundane)..."));
    EXPECT_FALSE(Checked("&Chart", "&Celestial (Normal)"));
    EXPECT_EQ(RunChart("&Celestial (Normal)"), "lines");
    EXPECT_EQ(options.mapZodiac, 0);
    EXPECT_EQ(calls.size(), 1U) << "the normal zodiac asks nothing";
}

TEST_F(ChartCommands, AGeodeticStartThatIsCancelledChangesNothing) {
    showZodiacStartForm = [](ZodiacStartForm&) { return false; };
    EXPECT_EQ(RunChart("&Geodetic (Mundane)..."), "none");
    EXPECT_EQ(options.mapZodiac, 0);
    EXPECT_EQ(options.geodeticStart, 0);
}

TEST_F(ChartCommands, DayNightShadingIsShownOnAFlatMapOfTheWholeWorldWithAChartAlone) {
    const std::string refusal =
        "MessageBox|Orvantis|Day/Night shading can only be shown when viewing a chart on a map of "
        "the whole world in Cartesian or Mercator projection.|Ok|Information";
    const struct {
        std::int16_t chart;
        float span;
        std::int16_t projection;
        bool shown;
    } rows[] = {
        {1, 360, projection::kCartesian, true},    {1, 360, projection::kMercator, true},
        {1, 359, projection::kCartesian, false},   {1, 360, projection::kGlobeSphere, false},
        {1, 360, projection::kGlobeOblate, false}, {0, 360, projection::kCartesian, false}};
    for (const auto& row : rows) {
        options.dayNight = kFalse;
        session.ChartNumber = row.chart;
        mapView.extent.spanLong = row.span;
        mapView.extent.projection = row.projection;
        EXPECT_EQ(Look("&Chart", "&Day/Night Shading Off").caption, "&Day/Night Shading Off");
        EXPECT_EQ(RunChart("&Day/Night Shading Off"), row.shown ? "lines" : "none");
        EXPECT_EQ(options.dayNight, -1);
        EXPECT_EQ(Log(), row.shown ? Words{} : Words{refusal});
        EXPECT_EQ(Look("&Chart", "&Day/Night Shading Off").caption, "&Day/Night Shading On");
        EXPECT_EQ(RunChart("&Day/Night Shading Off"), "lines") << "off again";
        EXPECT_EQ(options.dayNight, 0);
        EXPECT_TRUE(Log().empty());
    }
}

// ---- The picture elsewhere ----

TEST_F(ChartCommands, PrintOpensTheDialogOfTheMapAndRepaintsTheOverlay) {
    openPrintDialog = [](std::string_view title) { calls.emplace_back(title); };
    refreshOverlay = [] { calls.emplace_back("overlay"); };
    EXPECT_EQ(RunChart("Pr&int..."), "none");
    EXPECT_EQ(calls, (Words{"Print Current Map", "overlay"}));
}

TEST_F(ChartCommands, CopyPutsThePictureOnTheClipboardAndConfirms) {
    RecordingSurface surface(30, 20);
    session.picture = &surface;
    EXPECT_EQ(RunChart("&Copy to Clipboard"), "none");
    EXPECT_EQ(Log(), (Words{"CopyToClipboard|30|20",
                            "MessageBox|Confirmation|The current map has been copied to the "
                            "clipboard.|Ok|Information"}));
    EXPECT_EQ(TestShell().clipboard.width, 30);
}

TEST_F(ChartCommands, ExitAsksTheWindowToClose) {
    closeMainWindow = [] { calls.emplace_back("close"); };
    EXPECT_EQ(RunChart("E&xit"), "none");
    EXPECT_EQ(calls, Words{"close"});
}

}  // namespace
}  // namespace orvantis

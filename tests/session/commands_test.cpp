// The whole command table, row by row, and what holds for all of its commands.
#include "session/commands.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <set>

#include "charts/CALCCHRT.h"
#include "map/plot.h"
#include "map/projection.h"
#include "map/view_ring.h"
#include "session/display_dialogs.h"
#include "session/driver.h"
#include "session/ini_settings.h"
#include "session/map_dialogs.h"
#include "session/save_settings.h"
#include "support/command_test.h"
#include "support/paths.h"
#include "support/session_files.h"
#include "support/temp_folder.h"

namespace orvantis {
namespace {

std::string NameOf(CommandEnd end) {
    if (end == CommandEnd::Full) return "full";
    return end == CommandEnd::Lines ? "lines" : "none";
}

// "menu|submenu|caption|key|end", and "hidden" for an entry that isn't visible.
std::string TextOf(const Command& row) {
    std::string text(row.menu);
    for (const std::string_view part : {row.submenu, row.caption, row.shortcut}) {
        text.append("|").append(part);
    }
    return text + "|" + NameOf(row.end) + (row.hidden ? "|hidden" : "");
}

const std::vector<std::string> kTable = {
    "&Chart||&AstroClock Off|Ctrl+A|lines",
    "&Chart||&New Chart...|Ctrl+N|none",
    "&Chart||&Select Chart...|Ctrl+C|none",
    "&Chart||&Open Chart File...|Ctrl+O|none",
    "&Chart||S&ave Chart...|Ctrl+S|none",
    "&Chart||C&lear Chart|Shift+Del|lines",
    "&Chart||S&ubsidiary Chart...|Ctrl+U|none",
    "&Chart||View Local &Horizon Chart||none",
    "&Chart||View Chart &Wheel||none",
    "&Chart||&Relocate to...|Ctrl+R|lines",
    "&Chart||Displayed &Lines...|Ctrl+L|none",
    "&Chart||Displayed &Points...|Ctrl+P|none",
    "&Chart||P&aran Point...||lines",
    "&Chart||Point &Colors...||none",
    "&Chart|&Zodiac|&Celestial (Normal)||lines",
    "&Chart|&Zodiac|&Geodetic (Mundane)...||lines",
    "&Chart||&Day/Night Shading Off|Ctrl+D|lines",
    "&Chart||Pr&int...|F11|none",
    "&Chart||&Copy to Clipboard||none",
    "&Chart||E&xit||none",
    "&Map||&New Map||full",
    "&Map||S&elect Map...|F2|full",
    "&Map||&Save Map||none|hidden",
    "&Map||Save Map &As...|F3|none",
    "&Map||&ReDraw|F4|full",
    "&Map||Previous &View|F5|full",
    "&Map||&Map Options...|F6|none",
    "&Map|&Precision|&Very Coarse||none|hidden",
    "&Map|&Precision|&Coarse||none|hidden",
    "&Map|&Precision|&Medium||none|hidden",
    "&Map|&Precision|&Fine||none|hidden",
    "&Map|&Precision|&Extra Fine||none|hidden",
    "&Map||Edit &Cities...|F7|none",
    "&Map||Edit C&ountries...|F8|none",
    "&Map||S&ea Fill Color||none",
    "&Map||&Special Fill Color...|F9|none",
    "&Map||Remove &All Fills||full",
    "&Map||Remove &Last Fill||full",
    "&Map||-||none",
    "&Map||&1||full",
    "&Map||&2||full",
    "&Map||&3||full",
    "&Map||&4||full",
    "&Stars||Select &Stars...||none",
    "&Stars||&Open Star File...||none",
    "&Stars||&Clear Stars||lines",
    "&Stars||&Paran Star...||none|hidden",
    "&Eclipse||&Select Eclipse...|Ctrl+E|none",
    "&Eclipse||&Clear Eclipse||lines",
    "&Reports||&Map Parans...|Ctrl+F1|none",
    "&Reports||&Local Parans...|Ctrl+F2|none",
    "&Reports||&City Directions...|Ctrl+F3|none",
    "&Reports||&Relocation Interpretations...|Ctrl+F4|none",
    "&Reports||Chart &Details...|Ctrl+F8|none",
    "&Reports||&Word Processor...||none",
    "&Reports||Rich Text Format||none",
    "&Lines|&Line Type|&Rise/Set||lines|hidden",
    "&Lines|&Line Type|&Asc/Dsc||lines|hidden",
    "&Lines||MC||none|hidden",
    "&Lines||IC||none|hidden",
    "&Lines||Rise||none|hidden",
    "&Lines||Set||none|hidden",
    "&Lines||Parans (RS/RS)||none|hidden",
    "&Lines||Parans (RS/Culm)||none|hidden",
    "&Lines||Local Space||none|hidden",
    "&Lines||Local Houses||none|hidden",
    "&Lines||Horizon||none|hidden",
    "&Lines||Ecliptic||none|hidden",
    "&Lines||Signs||none|hidden",
    "&Lines||ReDraw||full|hidden",
    "&Options|&Mouse Mode|Drag to Measure Distance||none",
    "&Options|&Mouse Mode|Drag to Select Zoom Rectangle||none",
    "&Options|&Mouse Mode|Drag to Move Map||none",
    "&Options|&Mouse Mode|Click to Relocate Chart||none",
    "&Options|&Mouse Mode|Click to Fill with Color||none",
    "&Options|&Mouse Mode|Drag to Place Ruler||none",
    "&Options||&Text Font...||full",
    "&Options||&Extra Line Annotation On||full",
    "&Options||&Edit Settings...|Ctrl+F5|none",
    "&Options||&Save Settings...|Ctrl+F6|none",
    "&Options||&Restore Settings...|Ctrl+F7|full",
    "&Options||&Dump && Edit Map Lines...||none",
    "&Options||Line &Numbers Off||full",
    "&Options||&Fill Points Off||full",
    "&Options|&House System|Campanus||none",
    "&Options|&House System|Koch||none",
    "&Options|&House System|Meridian||none",
    "&Options|&House System|Morinus||none",
    "&Options|&House System|Placidus||none",
    "&Options|&House System|Porphyry||none",
    "&Options|&House System|Regiomontanus||none",
    "&Options|&House System|Topocentric||none",
    "&Options|&House System|Equal||none",
    "&Options|&Ayanamsa|&Tropical (Normal)||none",
    "&Options|&Ayanamsa|&Fagan-Allen||none",
    "&Options|&Ayanamsa|&Lahiri||none",
    "&Options|&Ayanamsa|&DeLuce||none",
    "&Options|&Ayanamsa|&Raman||none",
    "&Options|&Ayanamsa|&Usha-Shashi||none",
    "&Options|&Ayanamsa|&Krishnamurti||none",
    "&Options|&Ayanamsa|Dj&whal Khul||none",
    "&Options|Lunar &Node Type|&True||none",
    "&Options|Lunar &Node Type|&Mean||none",
    "&Options|&Vulcan Calculation|&L.H.Weston||none",
    "&Options|&Vulcan Calculation|&D.Baker||none",
    "&Options|&Atlas|&Orvantis||none",
    "&Options|&Atlas|&ACS Atlas||none",
    "&Help||&Contents||none",
    "&Help||&Search for Help on...||none|hidden",
    "&Help||&How to use Help||none|hidden",
    "&Help||&Repair Map Database||none",
    "&Help||&About Orvantis||none",
};

class CommandTable : public CommandTest {};

TEST_F(CommandTable, HasEveryMenuCaptionKeyAndEndInItsOrder) {
    const auto commands = Commands();
    ASSERT_EQ(commands.size(), kTable.size());
    for (std::size_t i = 0; i < commands.size(); ++i) EXPECT_EQ(TextOf(commands[i]), kTable[i]);
}

TEST_F(CommandTable, GivesNoKeyTwiceAndNumbersEachFamilyWithoutARepeat) {
    std::set<std::string_view> keys;
    std::set<std::string> members;
    for (const Command& row : Commands()) {
        if (!row.shortcut.empty()) {
            EXPECT_TRUE(keys.insert(row.shortcut).second) << row.shortcut;
        }
        const std::string member = std::string(row.menu) + "|" + std::string(row.submenu) + "|" +
                                   std::string(row.caption) + "|" + std::to_string(row.number);
        EXPECT_TRUE(members.insert(member).second) << member;
    }
    EXPECT_EQ(keys.size(), 29U);
}

TEST_F(CommandTable, CaptionsOfTheStartAreThoseOfTheInitialSettings) {
    for (const Command& row : Commands()) {
        if (row.captionNow == nullptr || row.caption == "-" || row.number != 0) continue;
        EXPECT_EQ(row.captionNow(0), row.caption);
    }
}

// What later capabilities will bring. Their entries stand in their places, and nothing pretends.
TEST_F(CommandTable, AnEntryWhoseCapabilityIsMissingIsDisabledAndDoesNothing) {
    session.ChartNumber = 1;
    session.StarFile = DataFile("sample.cht");
    int disabled = 0;
    for (const Command& row : Commands()) {
        if (row.isBuilt == nullptr) continue;
        ++disabled;
        EXPECT_FALSE(row.isBuilt()) << row.caption;
        EXPECT_FALSE(LookOf(row).enabled) << row.caption;
        Plots().clear();
        RunCommand(row);
        EXPECT_TRUE(Plots().empty() && TestShell().log.empty()) << row.caption;
    }
    EXPECT_EQ(disabled, 32);
}

// Everything that a row may need is there, and every question is answered by going on.
void ConnectEverything() {
    switchAstroClock = [](Flag on, Flag) {
        session.AstroClockOn = on;
        if (on != 0) plotLinesAnew();
    };
    saveCurrentChart = enterNewChart = openSubsidiaryChart = editCities = editCountries =
        selectEclipse = openDumpForm = openHelp = useAcsAtlas = [] {};
    viewChart = openPrintDialog = [](std::string_view) {};
    relocateToPlace = showSaveMapForm = showMapOptionsForm =
        showSaveSettingsForm = [] { return true; };
    loadStarFile = [](std::string_view) { return true; };
    openReport = [](std::int16_t) {};
    showLinesForm = [](LinesForm&) { return true; };
    showPointsForm = [](PointsForm&) { return true; };
    showPrefsForm = [](PrefsForm&) { return true; };
    showPointColoursForm = [](PointColoursForm&) { return true; };
    showZodiacStartForm = [](ZodiacStartForm&) { return true; };
}

TEST_F(CommandTable, EveryRowThatGoesThroughMakesThePlotOfItsEndAndNoOther) {
    const TempFolder folder;
    const std::string map = folder.Write("europe.ovm", MapOf("Europe"));
    const std::string style = folder.Write("a.ovs", FileBytes(DataFile("default.ovs")));
    for (const Command& row : Commands()) {
        SetUp();
        ConnectEverything();
        session.UserDataPath = folder.Path();
        session.ChartNumber = session.EclipseNumber = 1;
        session.RecentCount = 4;
        session.RecentMaps.fill(map);
        mapView.extent.spanLong = 360;
        PushView({0, 0, 20, 20}, "Lat:");
        Plots().clear();
        TestShell().fileAnswers = {row.menu == "&Map" ? map : style};
        TestShell().colourAnswers = {1};
        TestShell().fontAnswers = {Font{"Sans Serif", 9, false, false}};
        RunCommand(row);
        const Words wanted = row.end == CommandEnd::None ? Words{} : Words{NameOf(row.end)};
        // There is no database to repair here: nothing is plotted then.
        EXPECT_EQ(Plots(), wanted) << TextOf(row);
    }
}

TEST_F(CommandTable, NoCommandRunsWhileAPlotDoes) {
    session.ChartNumber = 1;
    plotState.inProgress = true;
    EXPECT_EQ(Run("&Chart", "C&lear Chart"), "none");
    EXPECT_EQ(session.ChartNumber, 1);
    plotState.inProgress = false;
    EXPECT_EQ(Run("&Chart", "C&lear Chart"), "lines");
    EXPECT_EQ(session.ChartNumber, 0);
}

TEST_F(CommandTable, TheMenusMarksFollowEveryCommand) {
    static int marks = 0;
    marks = 0;
    refreshMenuMarks = [] { ++marks; };
    Run("&Map", "&ReDraw");
    Run("&Reports", "Rich Text Format");
    EXPECT_EQ(marks, 2);
}

TEST_F(CommandTable, EachButtonIsTheSameAsAMenuCommand) {
    const struct {
        std::string_view name;
        std::string_view caption;
    } rows[] = {{"btnChart", "&Select Chart..."},    {"btnEclipse", "&Select Eclipse..."},
                {"btnLines", "Displayed &Lines..."}, {"btnMap", "S&elect Map..."},
                {"btnPrev", "Previous &View"},       {"btnReDraw", "&ReDraw"}};
    const auto buttons = CommandButtons();
    ASSERT_EQ(buttons.size(), std::size(rows));
    for (std::size_t i = 0; i < buttons.size(); ++i) {
        EXPECT_EQ(buttons[i].name, rows[i].name);
        EXPECT_EQ(buttons[i].caption, rows[i].caption);
        EXPECT_NE(FindCommand(buttons[i].menu, buttons[i].caption), nullptr) << rows[i].name;
    }
}

// ---- The clock's rule at every plot ----

std::vector<Flag> switched;

TEST_F(CommandTable, ClearChartWithTheClockOnSwitchesTheClockOffAtTheNextPlot) {
    switched.clear();
    switchAstroClock = [](Flag on, Flag) { switched.push_back(on); };
    session.AstroClockOn = kTrue;
    session.ChartNumber = 1;
    calcChart[1].Name = "Astro~Clock";
    StopForeignClock();
    EXPECT_TRUE(switched.empty()) << "the clock's own chart";
    EXPECT_EQ(Run("&Chart", "C&lear Chart"), "lines");
    StopForeignClock();
    EXPECT_EQ(switched, std::vector<Flag>{kFalse});
}

TEST_F(CommandTable, AnotherChartSwitchesTheClockOffToo) {
    switched.clear();
    switchAstroClock = [](Flag on, Flag) { switched.push_back(on); };
    session.ChartNumber = 1;
    calcChart[1].Name = "Somebody";
    StopForeignClock();
    EXPECT_TRUE(switched.empty()) << "no clock runs";
    session.AstroClockOn = kTrue;
    StopForeignClock();
    EXPECT_EQ(switched, std::vector<Flag>{kFalse});
}

}  // namespace
}  // namespace orvantis

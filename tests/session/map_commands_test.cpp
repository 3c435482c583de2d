// The menu "&Map".
#include <gtest/gtest.h>

#include "map/map_menus.h"
#include "session/display_dialogs.h"
#include "session/map_dialogs.h"
#include "session/mouse_modes.h"
#include "session/recent_maps.h"
#include "support/command_test.h"
#include "support/session_files.h"
#include "support/temp_folder.h"

namespace orvantis {
namespace {

std::vector<std::string> calls;

class MapCommandsTest : public CommandTest {
  protected:
    void SetUp() override {
        CommandTest::SetUp();
        calls.clear();
        session.UserDataPath = folder.Path();
        addRecentMap = AddRecentMap;
    }
    static std::string RunMap(std::string_view caption, std::int16_t number = 0) {
        return Run("&Map", caption, number);
    }
    TempFolder folder;
};

TEST_F(MapCommandsTest, NewMapMakesADefaultMapAndPlotsOnce) {
    CurrentMap().title = "Europe";
    CurrentMap().south = 30;
    EXPECT_EQ(RunMap("&New Map"), "full");
    EXPECT_EQ(CurrentMap().title, MapDocument().title);
    EXPECT_EQ(CurrentMap().south, -90);
    EXPECT_EQ(session.RecentCount, 0);
}

TEST_F(MapCommandsTest, NewMapOfTheUsersOwnDefaultPlotsOnceAndPutsItOnTheRecentList) {
    folder.Write("world.ovm", MapOf("My world"));
    EXPECT_EQ(RunMap("&New Map"), "full");
    EXPECT_EQ(CurrentMap().title, "My world");
    EXPECT_EQ(session.RecentCount, 1);
    EXPECT_TRUE(session.RecentMaps[0].ends_with("world.ovm"));
}

TEST_F(MapCommandsTest, NewMapWithADefaultThatCannotBeReadTellsAndPlotsAPlainOneOnce) {
    folder.Write("world.ovm", "short");
    CurrentMap().title = "Europe";
    EXPECT_EQ(RunMap("&New Map"), "full");
    EXPECT_EQ(CurrentMap().title, MapDocument().title);
    EXPECT_EQ(TestShell().boxes.size(), 1U);
    EXPECT_EQ(session.RecentCount, 0);
}

TEST_F(MapCommandsTest, SelectMapOpensTheChosenFilePlotsOnceAndPutsItOnTheRecentList) {
    const std::string path = folder.Write("europe.ovm", MapOf("Europe"));
    TestShell().fileAnswers = {path};
    EXPECT_EQ(RunMap("S&elect Map..."), "full");
    EXPECT_EQ(Log(), Words{"ChooseFile|Select Map to Open|*.ovm|open"});
    EXPECT_EQ(CurrentMap().title, "Europe");
    EXPECT_EQ(session.RecentCount, 1);
}

TEST_F(MapCommandsTest, SelectMapCancelledOrOfABadFileEndsInNone) {
    EXPECT_EQ(RunMap("S&elect Map..."), "none");
    Log();
    TestShell().fileAnswers = {folder.Write("short.ovm", "short")};
    EXPECT_EQ(RunMap("S&elect Map..."), "none");
    ASSERT_EQ(TestShell().boxes.size(), 1U);
    EXPECT_EQ(TestShell().boxes[0].substr(0, 34), "Orvantis: Unable to open map file:");
    EXPECT_EQ(session.RecentCount, 0);
}

TEST_F(MapCommandsTest, ReDrawPlotsInFullAndDoesNothingElse) {
    EXPECT_EQ(RunMap("&ReDraw"), "full");
    EXPECT_TRUE(Log().empty());
}

TEST_F(MapCommandsTest, PreviousViewGoesBackWithAPlotOfItsOwn) {
    ViewEdges edges;
    edges.east = 20;
    edges.west = 0;
    PushView(edges, "Lat:");
    EXPECT_TRUE(Enabled("&Map", "Previous &View"));
    EXPECT_EQ(RunMap("Previous &View"), "full");
    EXPECT_EQ(mapState.current, 1);
    EXPECT_FALSE(Enabled("&Map", "Previous &View"));
}

TEST_F(MapCommandsTest, PreviousViewWithoutOneAsksWhetherToZoomOut) {
    CurrentMap().west = 0;
    CurrentMap().east = 20;
    const std::string question =
        "MessageBox|Zoom Out?|There is no previous view to display.\\r\\n\\r\\nWould you like to "
        "zoom out by a factor of 2?|YesNo|Question";
    TestShell().boxAnswers = {BoxAnswer::No};
    EXPECT_EQ(RunMap("Previous &View"), "none");
    EXPECT_EQ(Log(), Words{question});
    EXPECT_EQ(RunMap("Previous &View"), "full");
    EXPECT_EQ(CurrentMap().east, 30);
}

TEST_F(MapCommandsTest, PreviousViewOfTheWholeWorldIsToldThatThereIsNone) {
    EXPECT_EQ(RunMap("Previous &View"), "none");
    EXPECT_EQ(Log(), Words{"MessageBox|Previous View|There is no previous view to "
                           "display.|Ok|Information"});
}

TEST_F(MapCommandsTest, DialogsAreOpenedByTheirConnectionPoints) {
    showSaveMapForm = [] {
        calls.emplace_back("save map");
        return true;
    };
    showMapOptionsForm = [] {
        calls.emplace_back("map options");
        return true;
    };
    editCities = [] { calls.emplace_back("cities"); };
    editCountries = [] { calls.emplace_back("countries"); };
    for (const char* caption :
         {"Save Map &As...", "&Map Options...", "Edit &Cities...", "Edit C&ountries..."}) {
        EXPECT_TRUE(Enabled("&Map", caption)) << caption;
        EXPECT_EQ(RunMap(caption), "none") << caption;
    }
    EXPECT_EQ(calls, (Words{"save map", "map options", "cities", "countries"}));
}

TEST_F(MapCommandsTest, EachPrecisionEntryMovesTheMarkAndPlotsNothing) {
    const Words captions = {"&Very Coarse", "&Coarse", "&Medium", "&Fine", "&Extra Fine"};
    for (std::int16_t entry = 4; entry >= 0; --entry) {
        const std::string& caption = captions[static_cast<std::size_t>(entry)];
        EXPECT_EQ(RunMap(caption, entry), "none");
        EXPECT_EQ(CurrentMap().precision, 5 - entry);
        for (std::int16_t other = 0; other < 5; ++other) {
            EXPECT_EQ(Checked("&Map", captions[static_cast<std::size_t>(other)], other),
                      other == entry);
        }
        EXPECT_FALSE(Look("&Map", caption, entry).visible);
    }
}

// ---- Fills ----

TEST_F(MapCommandsTest, SpecialFillColourIsAskedForAndTakesTheSeaMarkAway) {
    EXPECT_TRUE(Checked("&Map", "S&ea Fill Color"));
    TestShell().colourAnswers = {0x123456};
    EXPECT_EQ(RunMap("&Special Fill Color..."), "none");
    ASSERT_EQ(TestShell().log.size(), 1U);
    EXPECT_EQ(Log()[0].substr(0, 39), "ChooseColour|Select Special Fill Color|");
    EXPECT_EQ(mouseState.specialColour, 0x123456);
    EXPECT_FALSE(Checked("&Map", "S&ea Fill Color"));
    EXPECT_EQ(RunMap("S&ea Fill Color"), "none");
    EXPECT_TRUE(Checked("&Map", "S&ea Fill Color"));
    EXPECT_EQ(mouseState.specialColour, 0x123456) << "kept for the next time";
}

TEST_F(MapCommandsTest, SpecialFillColourCancelledKeepsTheSeaMark) {
    EXPECT_EQ(RunMap("&Special Fill Color..."), "none");
    EXPECT_TRUE(Checked("&Map", "S&ea Fill Color"));
}

TEST_F(MapCommandsTest, SpecialFillColourOfA256ColourDisplayComesFromThePalette) {
    TestShell().colours = 256;
    showPaletteForm = [](PaletteForm& form) {
        calls.push_back(form.title);
        form.chosen = 1;
        return true;
    };
    EXPECT_EQ(RunMap("&Special Fill Color..."), "none");
    EXPECT_EQ(calls, Words{"Select Special Fill Color"});
    EXPECT_EQ(mouseState.seaFill, 0);
    EXPECT_EQ(mouseState.specialColour >> 24, 2) << "relative to the palette";
    EXPECT_TRUE(Log().empty());
}

TEST_F(MapCommandsTest, RemoveAllFillsNeedsTwoFillsAndRemoveLastFillOne) {
    for (std::int16_t fills = 0; fills <= 3; ++fills) {
        CurrentMap().fillCount = fills;
        EXPECT_EQ(Enabled("&Map", "Remove &All Fills"), fills >= 2) << fills;
        EXPECT_EQ(Enabled("&Map", "Remove &Last Fill"), fills >= 1) << fills;
    }
    EXPECT_EQ(RunMap("Remove &Last Fill"), "full");
    EXPECT_EQ(CurrentMap().fillCount, 2);
    EXPECT_EQ(RunMap("Remove &All Fills"), "full");
    EXPECT_EQ(CurrentMap().fillCount, 0);
}

TEST_F(MapCommandsTest, RemoveLastFillWithoutFillsIsNothingButARedraw) {
    EXPECT_EQ(RunMap("Remove &Last Fill"), "full");
    EXPECT_EQ(CurrentMap().fillCount, 0);
}

// ---- Recent maps ----

TEST_F(MapCommandsTest, TheRecentListIsHiddenUntilItIsUsed) {
    EXPECT_FALSE(Look("&Map", "-").visible);
    for (std::int16_t n = 1; n <= 4; ++n) {
        EXPECT_FALSE(Look("&Map", "&" + std::to_string(n), n).visible) << n;
    }
    AddRecentMap("one.ovm");
    AddRecentMap("two & three.ovm");
    EXPECT_TRUE(Look("&Map", "-").visible);
    EXPECT_EQ(Look("&Map", "&1", 1).caption, "&1 two && three.ovm");
    EXPECT_EQ(Look("&Map", "&2", 2).caption, "&2 one.ovm");
    EXPECT_FALSE(Look("&Map", "&3", 3).visible);
}

TEST_F(MapCommandsTest, ARecentMapIsOpenedPlottedOnceAndMovesToTheTop) {
    const std::string one = folder.Write("one.ovm", MapOf("One"));
    const std::string two = folder.Write("two.ovm", MapOf("Two"));
    AddRecentMap(one);
    AddRecentMap(two);
    EXPECT_EQ(RunMap("&2", 2), "full");
    EXPECT_EQ(CurrentMap().title, "One");
    EXPECT_TRUE(session.RecentMaps[0].ends_with("one.ovm"));
    EXPECT_EQ(session.RecentCount, 2);
    EXPECT_EQ(RunMap("&4", 4), "none") << "an entry that isn't in use";
}

TEST_F(MapCommandsTest, ARecentMapThatIsGoneIsToldAndEndsInNone) {
    AddRecentMap(folder.File("gone.ovm"));
    EXPECT_EQ(RunMap("&1", 1), "none");
    ASSERT_EQ(TestShell().boxes.size(), 1U);
    EXPECT_EQ(TestShell().boxes[0].substr(0, 12), "Open Error: ");
}

}  // namespace
}  // namespace orvantis

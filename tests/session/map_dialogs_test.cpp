#include "session/map_dialogs.h"

#include <filesystem>

#include "map/map_fixture.h"
#include "map/map_menus.h"

namespace orvantis {
namespace {

const std::string kBadName =
    "MessageBox|File Error|File name is not valid. Please enter a name with up to 8 characters "
    "with no extension.|Ok|Exclamation";
const std::string kExists =
    "MessageBox|File Exists|A file with this name already exists. Do you wish to overwrite "
    "it?|YesNo|Question";

int plots = 0;

class MapDialogsTest : public MapTest {
  protected:
    void SetUp() override {
        MapTest::SetUp();
        plots = 0;
        plotFull = [] { ++plots; };
    }
};

class SaveMapDialogTest : public MapDialogsTest {};

TEST_F(SaveMapDialogTest, OpensWithTheDocumentsNameAndTitle) {
    mapState.name = "europe";
    CurrentMap().title = "Europe in spring";
    const SaveMapForm form = OpenSaveMap();
    EXPECT_EQ(form.folder, folder.Path());
    EXPECT_EQ(form.name, "europe");
    EXPECT_EQ(form.description, "Europe in spring");
}

TEST_F(SaveMapDialogTest, DescriptionBecomesTheTitleAndTheNameTheDocumentsName) {
    EXPECT_TRUE(AcceptSaveMap({folder.Path(), "  Europe ", " Europe in spring  "}));
    EXPECT_EQ(CurrentMap().title, "Europe in spring");
    EXPECT_EQ(mapState.name, "Europe");
    EXPECT_EQ(GetMapDocument(FileBytes(folder.File("Europe.ovm")).data()).title,
              "Europe in spring");
    EXPECT_TRUE(TestShell().log.empty());
    EXPECT_EQ(plots, 0);
}

TEST_F(SaveMapDialogTest, SavedPathJoinsTheRecentMaps) {
    EXPECT_TRUE(AcceptSaveMap({folder.Path(), "europe", ""}));
    ASSERT_EQ(session.RecentCount, 1);
    EXPECT_TRUE(session.RecentMaps[0].ends_with("europe.ovm"));
    EXPECT_EQ(OpenMap(session.RecentMaps[0], kFalse), kFalse) << "and is found again";
}

TEST_F(SaveMapDialogTest, NameOutsideAsciiIsSavedASecondTimeUnderTheSameName) {
    EXPECT_TRUE(AcceptSaveMap({folder.Path(), "\xC4rmel", "x"}));
    EXPECT_EQ(mapState.name, "\xC4rmel");
    EXPECT_EQ(OpenSaveMap().name, "\xC4rmel");
    TestShell().boxAnswers = {BoxAnswer::Yes};
    EXPECT_TRUE(AcceptSaveMap(OpenSaveMap()));
    EXPECT_EQ(TestShell().log, std::vector<std::string>{kExists});
    EXPECT_EQ(FileBytes(folder.File("\xC3\x84rmel.ovm")).size(), 140U);
    std::size_t files = 0;
    for (const auto& file : std::filesystem::directory_iterator(folder.Path())) {
        if (file.is_regular_file()) ++files;
    }
    EXPECT_EQ(files, 1U);
    EXPECT_EQ(session.RecentCount, 1);
}

TEST_F(SaveMapDialogTest, TitleIsCutToTheEightyCharactersThatAFileHolds) {
    const std::string long80(80, 'a');
    EXPECT_TRUE(AcceptSaveMap({folder.Path(), "one", "  " + long80 + "b"}));
    EXPECT_EQ(CurrentMap().title, long80);
    // A blank at the cut isn't kept either, as it isn't in the file.
    EXPECT_TRUE(AcceptSaveMap({folder.Path(), "two", std::string(79, 'a') + " b"}));
    EXPECT_EQ(CurrentMap().title, std::string(79, 'a'));
    EXPECT_EQ(GetMapDocument(FileBytes(folder.File("two.ovm")).data()).title, CurrentMap().title);
}

TEST_F(SaveMapDialogTest, FolderGetsItsSeparator) {
    const std::string path = folder.Path();
    EXPECT_TRUE(AcceptSaveMap({path.substr(0, path.size() - 1), "europe", ""}));
    EXPECT_EQ(FileBytes(folder.File("europe.ovm")).size(), 140U);
}

TEST_F(SaveMapDialogTest, NameOfNineCharactersIsRefusedAndOneOfEightAccepted) {
    EXPECT_FALSE(AcceptSaveMap({folder.Path(), "ninechars", "x"}));
    EXPECT_EQ(TestShell().log, std::vector<std::string>{kBadName});
    EXPECT_TRUE(FileBytes(folder.File("ninechars.ovm")).empty());
    EXPECT_NE(CurrentMap().title, "x");
    EXPECT_TRUE(AcceptSaveMap({folder.Path(), "eightchr", "x"}));
}

TEST_F(SaveMapDialogTest, NameWithAnExtensionOrNoNameOrAFolderIsRefused) {
    for (const char* name : {"a.ovm", "a.", "", "   ", "a/b", "a\\b", "..", "c:d", "a\tb", "a*"}) {
        TestShell().log.clear();
        EXPECT_FALSE(AcceptSaveMap({folder.Path(), name, "x"})) << name;
        EXPECT_EQ(TestShell().log, std::vector<std::string>{kBadName}) << name;
    }
    EXPECT_EQ(session.RecentCount, 0);
}

TEST_F(SaveMapDialogTest, ExistingFileIsOverwrittenOnlyAfterTheQuestion) {
    const std::string path = folder.Write("europe.ovm", std::string_view("old"));
    TestShell().boxAnswers = {BoxAnswer::No};
    EXPECT_FALSE(AcceptSaveMap({folder.Path(), "europe", "x"}));
    EXPECT_EQ(TestShell().log, std::vector<std::string>{kExists});
    EXPECT_EQ(FileBytes(path).size(), 3U);
    TestShell().boxAnswers = {BoxAnswer::Yes};
    EXPECT_TRUE(AcceptSaveMap({folder.Path(), "EUROPE", "x"}));
    EXPECT_EQ(FileBytes(path).size(), 140U) << "its name in another case is the same file";
}

TEST_F(SaveMapDialogTest, FileThatCannotBeWrittenIsToldAndTheDocumentStays) {
    CurrentMap().title = "Mine";
    mapState.name = "mine";
    EXPECT_FALSE(AcceptSaveMap({folder.File("none"), "europe", "x"}));
    EXPECT_EQ(TestShell().boxes.size(), 1U);
    EXPECT_EQ(TestShell().boxes.front(),
              "Open Error: " + folder.File("none/europe.ovm") + " /  / Path not found");
    EXPECT_EQ(CurrentMap().title, "Mine");
    EXPECT_EQ(mapState.name, "mine");
    EXPECT_EQ(session.RecentCount, 0);
}

class MapOptionsDialogTest : public MapDialogsTest {};

TEST_F(MapOptionsDialogTest, NothingChangedClosesWithoutAPlot) {
    EXPECT_FALSE(AcceptMapOptions(OpenMapOptions()));
    EXPECT_EQ(plots, 0);
}

TEST_F(MapOptionsDialogTest, ChangeReplacesTheRecordAndPlotsInFull) {
    CurrentMap().fillCount = 2;
    MapDocument map = OpenMapOptions();
    map.gridOn = kTrue;
    map.gridLatStep = 10;
    SetDetail(map, 7, true);
    SetDetail(map, 2, false);
    EXPECT_EQ(CurrentMap().hidden[7], kTrue) << "the dialog works on a copy";
    EXPECT_TRUE(AcceptMapOptions(map));
    EXPECT_EQ(CurrentMap().gridOn, kTrue);
    EXPECT_EQ(CurrentMap().gridLatStep, 10);
    EXPECT_EQ(CurrentMap().hidden[7], kFalse);
    EXPECT_EQ(CurrentMap().hidden[2], kTrue);
    EXPECT_EQ(CurrentMap().fillCount, 2);
    EXPECT_EQ(plots, 1);
}

TEST_F(MapOptionsDialogTest, NumberOfFillsIsNotCompared) {
    MapDocument map = OpenMapOptions();
    CurrentMap().fillCount = 7;
    EXPECT_FALSE(AcceptMapOptions(map));
    map.gridOn = kTrue;
    EXPECT_TRUE(AcceptMapOptions(map));
    EXPECT_EQ(CurrentMap().fillCount, 7);
}

TEST_F(MapOptionsDialogTest, ChangedProjectionConvertsTheEdgesAndRefreshesTheMenus) {
    CurrentMap().south = 0;
    CurrentMap().north = 20;
    CurrentMap().west = 0;
    CurrentMap().east = 80;
    MapDocument map = OpenMapOptions();
    map.projection = projection::kGlobeSphere;
    EXPECT_TRUE(AcceptMapOptions(map));
    EXPECT_EQ(CurrentMap().south, 10);
    EXPECT_EQ(CurrentMap().north, 10);
    EXPECT_EQ(CurrentMap().west, -50);
    EXPECT_EQ(CurrentMap().east, 130);
    EXPECT_EQ(mapMenus.projectionEntry, 2);
    EXPECT_EQ(plots, 1);

    map = OpenMapOptions();
    map.projection = projection::kMercator;
    EXPECT_TRUE(AcceptMapOptions(map));
    EXPECT_EQ(CurrentMap().south, -65);
    EXPECT_EQ(CurrentMap().north, 75);
    EXPECT_EQ(CurrentMap().west, CurrentMap().east);
}

TEST_F(MapOptionsDialogTest, GridIntervalIsHeldBetweenOneAndNinety) {
    struct Row {
        const char* text;
        float interval;
    };
    const Row rows[] = {{"15", 15},    {"7.5", 7.5F}, {"0.99", 1}, {"1", 1},     {"-3", 1},
                        {"", 1},       {"abc", 1},    {"90", 90},  {"90.1", 90}, {"1e30", 90},
                        {" 12 x", 12}, {"nan", 1},    {"inf", 1}};
    for (const Row& row : rows) EXPECT_EQ(GridInterval(row.text), row.interval) << row.text;
}

TEST_F(MapOptionsDialogTest, CityNamesWithoutACityFileAskForOne) {
    MapDocument map = OpenMapOptions();
    EXPECT_EQ(CityFileText(map), "None");
    TestShell().fileAnswers = {"/maps/World.ovc"};
    SetDetail(map, 8, true);
    EXPECT_EQ(TestShell().log.front(),
              "MessageBox|Select File|In order to show city names on the map, you must select a "
              "city file.|OkCancel|Question");
    EXPECT_EQ(map.hidden[8], kFalse);
    EXPECT_EQ(CityFileText(map), "World");
    TestShell().log.clear();
    SetDetail(map, 8, false);
    SetDetail(map, 8, true);
    EXPECT_TRUE(TestShell().log.empty()) << "a file is there now";
}

TEST_F(MapOptionsDialogTest, CancelledChoiceOfACityFileTurnsTheBoxOffAgain) {
    MapDocument map = OpenMapOptions();
    SetDetail(map, 8, true);  // the choice of a file is cancelled
    EXPECT_EQ(map.hidden[8], kTrue);
    TestShell().boxAnswers = {BoxAnswer::Cancel};
    TestShell().fileAnswers = {"/maps/world.ovc"};
    SetDetail(map, 8, true);
    EXPECT_EQ(map.hidden[8], kTrue);
    EXPECT_EQ(map.cityFile, "");
}

TEST_F(MapOptionsDialogTest, CityFileWithANameOutsideAsciiIsChosenAndFoundAgain) {
    const std::string path = folder.Write("C\xC3\xB4te.ovc", std::string_view("x"));
    MapDocument map = OpenMapOptions();
    TestShell().fileAnswers = {path};
    SetDetail(map, 8, true);
    EXPECT_EQ(map.cityFile, "C\xF4te");
    EXPECT_EQ(CityFileText(map), "C\xF4te");
    EXPECT_TRUE(AcceptMapOptions(map));
    ASSERT_EQ(SaveMap(folder.File("cities.ovm")), kFalse);
    ASSERT_EQ(OpenMap(folder.File("cities.ovm"), kFalse), kFalse);
    EXPECT_EQ(CurrentMap().cityFile, "C\xF4te");
    EXPECT_EQ(CurrentMap().hidden[8], kFalse);
}

TEST_F(MapOptionsDialogTest, CityFileThatADocumentCannotNameIsRefusedAndCountsAsNotChosen) {
    // Nine characters; a letter outside the code page; blanks that the file would lose; no name.
    for (const char* name : {"ninechars", "\xC4\x80", " world", ""}) {
        MapDocument map = OpenMapOptions();
        TestShell().log.clear();
        TestShell().fileAnswers = {"/maps/" + std::string(name) + ".ovc"};
        SetDetail(map, 8, true);
        ASSERT_EQ(TestShell().log.size(), 3U) << name;  // the question, the choice, the refusal
        EXPECT_EQ(TestShell().log.back(), kBadName) << name;
        EXPECT_EQ(map.cityFile, "") << name;
        EXPECT_EQ(map.hidden[8], kTrue) << name;
        EXPECT_FALSE(AcceptMapOptions(map)) << name;
    }
    MapDocument map = OpenMapOptions();
    map.cityFile = "before";
    TestShell().fileAnswers = {"/maps/ninechars.ovc"};
    EXPECT_FALSE(ChooseCityFile(map));
    EXPECT_EQ(map.cityFile, "before");
    // Eight characters of the code page are more bytes in the platform's names.
    TestShell().fileAnswers = {
        "/maps/\xC3\xA4\xC3\xA4\xC3\xA4\xC3\xA4\xC3\xA4\xC3\xA4\xC3\xA4\xC3\xA4.ovc"};
    EXPECT_TRUE(ChooseCityFile(map));
    EXPECT_EQ(map.cityFile, std::string(8, '\xE4'));
}

TEST_F(MapOptionsDialogTest, OtherDetailsNeedNoFile) {
    MapDocument map = OpenMapOptions();
    for (const DetailBox& box : kDetailBoxes) {
        if (box.detailClass == 8) continue;
        SetDetail(map, box.detailClass, true);
        EXPECT_EQ(map.hidden[static_cast<std::size_t>(box.detailClass)], kFalse) << box.caption;
    }
    EXPECT_TRUE(TestShell().log.empty());
}

}  // namespace
}  // namespace orvantis

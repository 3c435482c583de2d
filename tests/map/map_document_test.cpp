#include "map/map_document.h"

#include <filesystem>
#include <limits>

#include "map/map_fixture.h"
#include "map/map_menus.h"
#include "session/files.h"

namespace orvantis {
namespace {

// What the connection points were called with.
std::vector<std::string> calls;

class MapDocumentTest : public MapTest {
  protected:
    void SetUp() override {
        MapTest::SetUp();
        calls.clear();
        refreshMapMenus = [](std::int16_t number) {
            calls.push_back("menus " + std::to_string(number));
        };
        addRecentMap = [](std::string_view path) {
            calls.push_back("recent " + BaseName(path, false));
        };
        plotFull = [] { calls.emplace_back("plot"); };
    }

    static Bytes BytesOf(const MapDocument& document) {
        Bytes bytes(kMapDocumentSize);
        PutMapDocument(bytes.data(), document);
        return bytes;
    }

    std::string Failure(const std::string& path, const std::string& reason) const {
        return "MessageBox|Orvantis|Unable to open map file:\\r\\n" + path + " (" + reason +
               ")|Ok|Error";
    }
};

TEST_F(MapDocumentTest, NewDocumentHasTheDefaultBytes) {
    const Bytes bytes = BytesOf({});
    EXPECT_EQ(GetI16(&bytes[0]), 0);
    EXPECT_EQ(GetText(&bytes[2], 80),
              "Lat: 90S00 to 90N00  Long: 180W00 to 180E00" + std::string(37, ' '));
    EXPECT_EQ(GetF32(&bytes[82]), -90);
    EXPECT_EQ(GetF32(&bytes[86]), -180);
    EXPECT_EQ(GetF32(&bytes[90]), 90);
    EXPECT_EQ(GetF32(&bytes[94]), 180);
    EXPECT_EQ(GetI16(&bytes[98]), 0);
    EXPECT_EQ(GetI16(&bytes[100]), 5);
    const std::int16_t hidden[] = {0, 0, 0, -1, -1, 0, -1, -1, -1};
    for (std::size_t i = 0; i < 9; ++i) EXPECT_EQ(GetI16(&bytes[102 + 2 * i]), hidden[i]) << i;
    EXPECT_EQ(GetI16(&bytes[120]), 0);
    EXPECT_EQ(GetF32(&bytes[122]), 15);
    EXPECT_EQ(GetF32(&bytes[126]), 30);
    EXPECT_EQ(GetText(&bytes[130], 8), "        ");
    EXPECT_EQ(GetI16(&bytes[138]), 0);
}

TEST_F(MapDocumentTest, EveryFieldComesBackFromItsBytes) {
    MapDocument document;
    document.reserved = 77;
    document.title = "North Sea";
    document.south = 50.5F;
    document.west = 170;
    document.north = 61;
    document.east = -170;
    document.projection = 3;
    document.precision = 2;
    document.hidden = {1, 2, 3, 4, 5, 6, 7, 8, 9};
    document.gridOn = -1;
    document.gridLatStep = 0.5F;
    document.gridLongStep = 7;
    document.cityFile = "world";
    document.fillCount = 12;
    const Bytes bytes = BytesOf(document);
    const MapDocument back = GetMapDocument(bytes.data());
    EXPECT_EQ(BytesOf(back), bytes);
    EXPECT_EQ(back.title, "North Sea");
    EXPECT_EQ(back.cityFile, "world");
}

TEST_F(MapDocumentTest, FileOfOneHundredAndFortyBytesOpens) {
    MapDocument document;
    document.title = "Plain";
    const std::string path = folder.Write("plain.ovm", BytesOf(document));
    EXPECT_EQ(OpenMap(path, kFalse), kFalse);
    EXPECT_EQ(CurrentMap().title, "Plain");
    EXPECT_EQ(mapState.name, "plain");
    EXPECT_EQ(calls, std::vector<std::string>{"menus 1"});
    EXPECT_TRUE(TestShell().boxes.empty());
}

TEST_F(MapDocumentTest, OpeningWithRedrawJoinsTheRecentMapsAndPlots) {
    const std::string path = folder.Write("plain.ovm", BytesOf({}));
    EXPECT_EQ(OpenMap(path, kTrue), kFalse);
    EXPECT_EQ(calls, (std::vector<std::string>{"menus 1", "recent plain.ovm", "plot"}));
}

TEST_F(MapDocumentTest, OpeningForgetsTheStackedViews) {
    mapState.current = 4;
    mapState.viewTop = 9;
    mapState.viewLowest = 5;
    const std::string path = folder.Write("plain.ovm", BytesOf({}));
    EXPECT_EQ(OpenMap(path, kFalse), kFalse);
    EXPECT_EQ(mapState.current, 1);
    EXPECT_EQ(mapState.viewTop, 1);
    EXPECT_EQ(mapState.viewLowest, 1);
}

TEST_F(MapDocumentTest, FillsAreReadInTheirOrder) {
    MapDocument document;
    document.fillCount = 2;
    Bytes bytes = BytesOf(document);
    bytes.resize(164);
    PutFillRecord(&bytes[140], {10.5F, -20.25F, -1});
    PutFillRecord(&bytes[152], {-1, 2, 0x20000FF});
    EXPECT_EQ(OpenMap(folder.Write("fills.ovm", bytes), kFalse), kFalse);
    ASSERT_EQ(mapState.fills.size(), 3U);
    EXPECT_EQ(mapState.fills[1].lat, 10.5F);
    EXPECT_EQ(mapState.fills[1].longitude, -20.25F);
    EXPECT_EQ(mapState.fills[1].colour, -1);
    EXPECT_EQ(mapState.fills[2].colour, 0x20000FF);
}

TEST_F(MapDocumentTest, NegativeFillCountLoadsAsZeroAndIsSavedAsZero) {
    MapDocument document;
    document.fillCount = -1;
    EXPECT_EQ(OpenMap(folder.Write("odd.ovm", BytesOf(document)), kFalse), kFalse);
    EXPECT_EQ(CurrentMap().fillCount, 0);
    const std::string saved = folder.File("saved.ovm");
    EXPECT_EQ(SaveMap(saved), kFalse);
    EXPECT_EQ(GetI16(&FileBytes(saved)[138]), 0);
    EXPECT_EQ(FileBytes(saved).size(), 140U);
}

TEST_F(MapDocumentTest, MissingCityFileBlanksTheNameAndHidesCityNames) {
    MapDocument document;
    document.cityFile = "gone";
    document.hidden[8] = kFalse;
    EXPECT_EQ(OpenMap(folder.Write("cities.ovm", BytesOf(document)), kFalse), kFalse);
    EXPECT_EQ(CurrentMap().cityFile, "");
    EXPECT_EQ(CurrentMap().hidden[8], kTrue);
}

TEST_F(MapDocumentTest, CityFileThatIsThereIsKept) {
    folder.Write("here.ovc", std::string_view("x"));
    MapDocument document;
    document.cityFile = "here";
    document.hidden[8] = kFalse;
    EXPECT_EQ(OpenMap(folder.Write("cities.ovm", BytesOf(document)), kFalse), kFalse);
    EXPECT_EQ(CurrentMap().cityFile, "here");
    EXPECT_EQ(CurrentMap().hidden[8], kFalse);
}

TEST_F(MapDocumentTest, BlankCityFileHidesCityNames) {
    folder.Write(".ovc", std::string_view("x"));
    MapDocument document;
    document.hidden[8] = kFalse;
    EXPECT_EQ(OpenMap(folder.Write("cities.ovm", BytesOf(document)), kFalse), kFalse);
    EXPECT_EQ(CurrentMap().hidden[8], kTrue);
}

TEST_F(MapDocumentTest, MissingFileIsToldAndChangesNothing) {
    mapState.current = 3;
    mapState.documents[3].title = "Before";
    const std::string path = folder.File("none.ovm");
    EXPECT_NE(OpenMap(path, kTrue), kFalse);
    EXPECT_EQ(TestShell().boxes,
              std::vector<std::string>{"Open Error: " + path + " /  / File not found"});
    EXPECT_EQ(mapState.current, 3);
    EXPECT_EQ(CurrentMap().title, "Before");
    EXPECT_TRUE(calls.empty());
}

TEST_F(MapDocumentTest, ShortFileIsToldAndThePreviousMapStaysInForce) {
    for (const std::size_t size : {0U, 1U, 139U}) {
        ResetAll();
        SetUp();
        mapState.current = 3;
        mapState.documents[3].title = "Before";
        mapState.documents[3].fillCount = 1;
        mapState.fills = {{}, {1, 2, 3}};
        mapState.name = "before";
        const std::string path = folder.Write("short.ovm", Bytes(size, 1));
        EXPECT_NE(OpenMap(path, kTrue), kFalse);
        EXPECT_EQ(TestShell().log,
                  std::vector<std::string>{Failure(path, "Input past end of file")});
        EXPECT_EQ(CurrentMap().title, "Before");
        EXPECT_EQ(CurrentMap().fillCount, 1);
        EXPECT_EQ(mapState.fills.size(), 2U);
        EXPECT_EQ(mapState.name, "before");
        EXPECT_EQ(FileBytes(path), Bytes(size, 1)) << "the file is left alone";
    }
}

TEST_F(MapDocumentTest, FillCountBeyondTheFileIsToldAndNothingIsTakenOver) {
    MapDocument document;
    document.title = "After";
    document.fillCount = 32767;
    Bytes bytes = BytesOf(document);
    bytes.resize(bytes.size() + 12);
    const std::string path = folder.Write("many.ovm", bytes);
    CurrentMap().title = "Before";
    EXPECT_NE(OpenMap(path, kTrue), kFalse);
    EXPECT_EQ(TestShell().log, std::vector<std::string>{Failure(path, "Input past end of file")});
    EXPECT_EQ(CurrentMap().title, "Before");
}

TEST_F(MapDocumentTest, FailureToOpenAMapClosesAllFiles) {
    const FileHandle other =
        FileOpener(folder.Write("other", std::string_view("x")), open_mode::kBinary, 0, kFalse);
    ASSERT_GT(other, 0);
    EXPECT_NE(OpenMap(folder.Write("short.ovm", Bytes(20)), kFalse), kFalse);
    EXPECT_EQ(FileLength(other), 0);
}

TEST_F(MapDocumentTest, EdgesThatAreNoNumbersAreRefused) {
    for (const float edge :
         {std::numeric_limits<float>::quiet_NaN(), std::numeric_limits<float>::infinity()}) {
        for (const std::size_t offset : {82U, 86U, 90U, 94U}) {
            TestShell().log.clear();
            Bytes bytes = BytesOf({});
            PutF32(&bytes[offset], edge);
            const std::string path = folder.Write("edges.ovm", bytes);
            EXPECT_NE(OpenMap(path, kTrue), kFalse);
            EXPECT_EQ(TestShell().log, std::vector<std::string>{Failure(path, "Overflow")});
        }
    }
}

TEST_F(MapDocumentTest, PrecisionAndProjectionAreBroughtIntoTheirRange) {
    struct Row {
        std::int16_t projection, precision, projectionRead, precisionRead;
    };
    const Row rows[] = {{-1, 0, 0, 1}, {4, 6, 3, 5}, {32767, -32768, 3, 1}, {2, 4, 2, 4}};
    for (const Row& row : rows) {
        Bytes bytes = BytesOf({});
        PutI16(&bytes[98], row.projection);
        PutI16(&bytes[100], row.precision);
        const MapDocument document = GetMapDocument(bytes.data());
        EXPECT_EQ(document.projection, row.projectionRead);
        EXPECT_EQ(document.precision, row.precisionRead);
    }
}

TEST_F(MapDocumentTest, ACountOfFillsBeyondTheListIsSavedAsTheListsOwn) {
    AddFill(mapState.current, 10, 20, false, 0x102030);
    CurrentMap().fillCount = 5;
    const std::string path = folder.File("more.ovm");
    ASSERT_EQ(SaveMap(path), kFalse);
    ASSERT_EQ(OpenMap(path, kFalse), kFalse);
    EXPECT_EQ(CurrentMap().fillCount, 1);
    EXPECT_EQ(mapState.fills[1].colour, 0x102030);
}

TEST_F(MapDocumentTest, WestAboveEastIsSavedAndReopenedAsItIs) {
    CurrentMap().west = 170;
    CurrentMap().east = -170;
    const std::string path = folder.File("date.ovm");
    EXPECT_EQ(SaveMap(path), kFalse);
    CurrentMap() = {};
    EXPECT_EQ(OpenMap(path, kFalse), kFalse);
    EXPECT_EQ(CurrentMap().west, 170);
    EXPECT_EQ(CurrentMap().east, -170);
}

TEST_F(MapDocumentTest, SavingWritesTheRecordAndItsFills) {
    AddFill(1, 10, 20, true, 5);
    AddFill(1, 30, 40, false, 0xFF);
    const std::string path = folder.File("two.ovm");
    EXPECT_EQ(SaveMap(path), kFalse);
    const Bytes bytes = FileBytes(path);
    ASSERT_EQ(bytes.size(), 140U + 24U);
    EXPECT_EQ(GetFillRecord(&bytes[140]).colour, -1);
    EXPECT_EQ(GetFillRecord(&bytes[152]).lat, 30);
    EXPECT_EQ(GetFillRecord(&bytes[152]).colour, 0xFF);
}

TEST_F(MapDocumentTest, SavingToAFolderThatIsNotThereIsToldAndChangesNothing) {
    CurrentMap().title = "Mine";
    const std::string path = folder.File("none/map.ovm");
    EXPECT_NE(SaveMap(path), kFalse);
    EXPECT_EQ(TestShell().boxes,
              std::vector<std::string>{"Open Error: " + path + " /  / Path not found"});
    EXPECT_EQ(CurrentMap().title, "Mine");
}

TEST_F(MapDocumentTest, AddedFillsPaintInOrderAndTakeTheSeaColourAsMinusOne) {
    AddFill(2, 1, 2, true, 99);
    AddFill(2, 3, 4, false, 99);
    EXPECT_EQ(mapState.documents[2].fillCount, 2);
    EXPECT_EQ(mapState.documents[1].fillCount, 0);
    EXPECT_EQ(mapState.fills[1].colour, -1);
    EXPECT_EQ(mapState.fills[2].colour, 99);
}

TEST_F(MapDocumentTest, FullFillListTakesNoMore) {
    CurrentMap().fillCount = 32767;
    AddFill(1, 1, 2, true, 0);
    EXPECT_EQ(CurrentMap().fillCount, 32767);
}

TEST_F(MapDocumentTest, NewMapWithoutAnOwnDefaultMakesTheDefaultDocument) {
    mapState.current = 4;
    CurrentMap().title = "Other";
    NewMap(kTrue);
    EXPECT_EQ(mapState.current, 1);
    EXPECT_EQ(BytesOf(CurrentMap()), BytesOf({}));
    EXPECT_EQ(calls, (std::vector<std::string>{"menus 1", "plot"}));
}

TEST_F(MapDocumentTest, NewMapWithoutRedrawDoesNotPlot) {
    NewMap(kFalse);
    EXPECT_EQ(calls, std::vector<std::string>{"menus 1"});
}

TEST_F(MapDocumentTest, NewMapTakesTheUsersWorldAndEndsWithRecordOneCurrent) {
    MapDocument document;
    document.title = "My world";
    folder.Write("world.ovm", BytesOf(document));
    mapState.current = 3;
    NewMap(kTrue);
    EXPECT_EQ(mapState.current, 1);
    EXPECT_EQ(CurrentMap().title, "My world");
    EXPECT_EQ(calls, (std::vector<std::string>{"menus 1", "recent world.ovm", "plot"}));
}

TEST_F(MapDocumentTest, NewMapPassesThroughRecordZeroAndLeavesTheOtherViewsAlone) {
    folder.Write("world.ovm", Bytes(20, 0));
    mapState.documents[0].title = "Zero";
    mapState.documents[1].title = "One";
    mapState.documents[3].title = "Three";
    mapState.current = 3;
    // When the failure is told, the record that was current while the file was read is back.
    class TitleShell : public ScriptedShell {
      public:
        BoxAnswer MessageBox(std::string_view text, std::string_view title, BoxButtons buttons,
                             BoxIcon icon) override {
            titles.push_back(CurrentMap().title);
            return ScriptedShell::MessageBox(text, title, buttons, icon);
        }
        std::vector<std::string> titles;
    };
    TitleShell shell;
    session.shell = &shell;
    NewMap(kFalse);
    EXPECT_EQ(shell.titles, std::vector<std::string>{"Zero"});
    EXPECT_EQ(mapState.current, 1);
    EXPECT_EQ(BytesOf(CurrentMap()), BytesOf({}));
    EXPECT_EQ(mapState.documents[0].title, "Zero");
    EXPECT_EQ(mapState.documents[3].title, "Three");
}

TEST_F(MapDocumentTest, NewMapWithAWorldThatCannotBeOpenedEndsWithRecordOneCurrent) {
    MapDocument document;
    document.title = "My world";
    const std::string path = folder.Write("world.ovm", BytesOf(document));
    mapState.current = 3;
    // It is there, but no more files can be opened.
    while (FileOpener(path, open_mode::kReadText, 0, kFalse) > 0) {
    }
    TestShell().boxes.clear();
    NewMap(kTrue);
    CloseAllFiles();
    EXPECT_EQ(TestShell().boxes,
              std::vector<std::string>{"Open Error: " + path + " /  / Too many files"});
    EXPECT_EQ(mapState.current, 1);
    EXPECT_EQ(BytesOf(CurrentMap()), BytesOf({}));
    EXPECT_EQ(calls, (std::vector<std::string>{"menus 1", "plot"}));
}

TEST_F(MapDocumentTest, NewMapWithAFolderAsWorldMakesTheDefaultDocument) {
    std::filesystem::create_directory(folder.File("world.ovm"));
    mapState.current = 3;
    NewMap(kTrue);
    EXPECT_TRUE(TestShell().boxes.empty());
    EXPECT_EQ(mapState.current, 1);
    EXPECT_EQ(BytesOf(CurrentMap()), BytesOf({}));
}

TEST_F(MapDocumentTest, FailedOpeningForgetsTheStackedViewsAndTheirPictures) {
    mapState.current = 4;
    mapState.viewTop = 9;
    mapState.viewLowest = 5;
    mapState.documents[4].title = "Before";
    for (Image& image : mapState.viewImages) image = {1, 1, {0xFF112233}};
    EXPECT_NE(OpenMap(folder.Write("short.ovm", Bytes(20)), kTrue), kFalse);
    EXPECT_EQ(mapState.current, 1);
    EXPECT_EQ(mapState.viewTop, 1);
    EXPECT_EQ(mapState.viewLowest, 1);
    EXPECT_EQ(CurrentMap().title, "Before");
    for (const Image& image : mapState.viewImages) EXPECT_TRUE(image.pixels.empty());
}

TEST_F(MapDocumentTest, FailedOpeningDisablesThePreviousView) {
    mapState.current = 2;
    mapState.viewTop = 2;
    OpenMapMenu();
    ASSERT_TRUE(mapMenus.previousView);
    calls.clear();
    EXPECT_NE(OpenMap(folder.Write("short.ovm", Bytes(20)), kTrue), kFalse);
    EXPECT_FALSE(mapMenus.previousView);
    EXPECT_EQ(calls, std::vector<std::string>{"menus 1"});
}

TEST_F(MapDocumentTest, NewDocumentHasNoName) {
    EXPECT_EQ(OpenMap(folder.Write("europe.ovm", BytesOf({})), kFalse), kFalse);
    ASSERT_EQ(mapState.name, "europe");
    NewMap(kFalse);
    EXPECT_EQ(mapState.name, "");
    folder.Write("world.ovm", BytesOf({}));
    NewMap(kFalse);
    EXPECT_EQ(mapState.name, "world") << "the user's own default map has its own";
}

TEST_F(MapDocumentTest, NameOfAMapIsThatOfItsFileInTheProgramsCodePage) {
    const std::string path = folder.Write("\xC3\x84rmel.ovm", BytesOf({}));
    EXPECT_EQ(OpenMap(path, kFalse), kFalse);
    EXPECT_EQ(mapState.name, "\xC4rmel");
}

TEST_F(MapDocumentTest, CityFileWithANameOutsideAsciiIsFound) {
    folder.Write("C\xC3\xB4te.ovc", std::string_view("x"));
    MapDocument document;
    document.cityFile = "C\xF4te";
    document.hidden[8] = kFalse;
    EXPECT_EQ(OpenMap(folder.Write("cities.ovm", BytesOf(document)), kFalse), kFalse);
    EXPECT_EQ(CurrentMap().cityFile, "C\xF4te");
    EXPECT_EQ(CurrentMap().hidden[8], kFalse);
}

TEST_F(MapDocumentTest, NewMapWithAnUnreadableWorldTellsAndMakesTheDefaultDocument) {
    const std::string path = folder.Write("world.ovm", Bytes(20, 0));
    CurrentMap().title = "Other";
    NewMap(kTrue);
    EXPECT_EQ(TestShell().log, std::vector<std::string>{Failure(path, "Input past end of file")});
    EXPECT_EQ(mapState.current, 1);
    EXPECT_EQ(BytesOf(CurrentMap()), BytesOf({}));
    EXPECT_EQ(calls, (std::vector<std::string>{"menus 1", "menus 1", "plot"}))
        << "of the map that stays, and of the new one";
}

}  // namespace
}  // namespace orvantis

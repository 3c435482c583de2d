// The whole start with a main window, driven by the scripted shell alone.
#include <chrono>
#include <filesystem>
#include <gtest/gtest.h>
#include <random>

#include "charts/CALCCHRT.h"
#include "charts/QXASTRO.h"
#include "charts/SwissEph.h"
#include "charts/ephemeris_tables.h"
#include "charts/exchange.h"
#include "map/map_document.h"
#include "map/plot.h"
#include "map/point_database.h"
#include "session/driver.h"
#include "session/files.h"
#include "session/recent_maps.h"
#include "session/session_state.h"
#include "session/settings.h"
#include "session/start_steps.h"
#include "support/failing_disk.h"
#include "support/paths.h"
#include "support/recording_surface.h"
#include "support/reset_all.h"
#include "support/session_files.h"

namespace orvantis {
namespace {

namespace fs = std::filesystem;
using Log = std::vector<std::string>;

// What the clock was asked to do, and how far the start was then.
struct ClockCall {
    int calls = 0;
    Flag on = kFalse;
    Flag redraw = kFalse;
    Flag startupDone = kTrue;
};
ClockCall clockCall;

Image storedImage;  // what the stored picture holds
int imagesRead = 0;

class SessionStart : public ::testing::Test {
  protected:
    void SetUp() override {
        ResetAll();
        session.picture = &surface;
        surface.recording = false;
        TestShell().mapArea = {400, 300};
        clockCall = {};
        storedImage = {};
        imagesRead = 0;
    }
    void TearDown() override { EndSession(); }

    SessionResult Run(std::string_view commandLine = "NOINITSCREEN") {
        call.commandLine = commandLine;
        return RunSession(files.paths, call, TestShell(), outcome);
    }
    static void WithClock() {
        switchAstroClock = [](Flag on, Flag redraw) {
            clockCall = {clockCall.calls + 1, on, redraw, session.StartupDone};
        };
    }
    // A stored picture of this size, and the pair of files that belongs to it.
    void Store(int width, int height) {
        files.Write("config", "ORVANT2.INI", "[Orvantis]\r\nStoreImages=-1\r\n");
        files.Write("program", "mapview.ovm", MapOf("the last view"));
        files.Write("program", "mapimage.bmp", "picture");
        storedImage = {width, height, {}};
        loadStoredImage = [](std::string_view, Image& image) {
            ++imagesRead;
            image = storedImage;
            return true;
        };
    }
    static bool Shown(const std::string& line) {
        const Log& log = TestShell().log;
        return std::find(log.begin(), log.end(), line) != log.end();
    }

    SessionFiles files;
    RecordingSurface surface{400, 300};
    SessionCall call;
    OpenOutcome outcome;
};

const std::string kStartScreen = "ShowStartScreen|Version " + ProgramVersion();

// --- The steps in their order

TEST_F(SessionStart, AnEmptyCallGoesThroughAllStepsInTheirOrder) {
    TestShell().eventsToSplashEnd = 3;
    EXPECT_EQ(Run(""), SessionResult::Ready);
    const Log steps = {
        kStartScreen,
        "DoEvents",
        "PlaceMainWindow|0|0|0|1000|1000",  // the window is loaded by the first touch of its timer
        "SetPointer|2",
        "SetClockTimer|10000|off",
        "DoEvents",  // the rest of the start screen's time
        "DoEvents",
        "HideStartScreen",
        "DoEvents",
        "ShowMainWindow",
        "DoEvents",
        "UnloadStartScreen",
        "MapAreaSize",
        "SetPointer|1",  // the first picture
        "SetTitle|Orvantis",
        "SetPointer|0",
    };
    EXPECT_EQ(TestShell().log, steps);
    EXPECT_NE(session.StartupDone, 0);
}

TEST_F(SessionStart, TheFirstPictureIsDrawnWhileTheStartIsNotDoneYet) {
    WithClock();
    Run();
    EXPECT_EQ(clockCall.calls, 1);
    EXPECT_EQ(clockCall.startupDone, 0);
    EXPECT_NE(session.StartupDone, 0);
}

TEST_F(SessionStart, TheFirstPictureIsOfTheMapAreasSizeAndDrawnOnce) {
    RecordingSurface picture(0, 0);
    session.picture = &picture;
    std::vector<int> widths;  // of the picture whenever it is drawn anew
    picture.onCall = [&](const std::string& line) {
        if (line.starts_with("Clear ")) widths.push_back(picture.Size().width);
    };
    TestShell().mapArea = {320, 200};
    TestShell().fitPicture = [&](SurfaceSize area) { picture.Resize(area.width, area.height); };
    EXPECT_EQ(Run("3"), SessionResult::Ready);
    EXPECT_EQ(widths, std::vector<int>{320});
    EXPECT_EQ(session.StoredImage.width, 320);
    EXPECT_EQ(session.StoredImage.height, 200);
    const Log& log = TestShell().log;
    EXPECT_EQ(std::count(log.begin(), log.end(), "MapAreaSize"), 1);
}

TEST_F(SessionStart, PathsAreThoseOfTheProgramUntilASiblingNamesOthers) {
    Run();
    const std::string programDir = ProgramPath(files.At("program", ""));
    EXPECT_EQ(session.OwnIni, "ORVANT2.INI");
    EXPECT_EQ(session.IniDir, ProgramPath(files.At("config", "")));
    EXPECT_EQ(session.ProgramDir, programDir);
    EXPECT_EQ(session.ShippedDir, ProgramPath(files.At("shipped", "")));
    EXPECT_EQ(session.SystemDataPath, programDir);
    EXPECT_EQ(session.UserDataPath, programDir + "Userdata\\");
    EXPECT_EQ(session.SiblingUserPath, programDir + "Userdata\\");
    EXPECT_EQ(session.SiblingIni, "KELVANE2.INI");
    EXPECT_EQ(session.SiblingVersion, 0);
    EXPECT_EQ(session.VersionText, ProgramVersion());
}

// Also where a sibling's own folder is the system's.
TEST_F(SessionStart, TheShippedTablesOfMinorPlanetsAreFoundFromTheSystemsFolder) {
    const Bytes table = FileBytes(DataFile("AS20AD.EPH"));
    files.Write("shipped", "AS20AD.EPH", table);
    for (const int digit : {0, 5}) {
        if (digit != 0) files.AddSibling(digit);
        Run();
        std::array<TablePosition, 8> places;
        EXPECT_TRUE(ReadTables(TableSeries::Asteroids, session.SystemDataPath, 1.2, places));
        EXPECT_GT(places[7].distance, 2);
        CloseEphemerisTables();
    }
}

TEST_F(SessionStart, ThePathsComeFromTheSiblingOfTheHighestDigit) {
    files.Write("config", "KELVANE5.INI",
                "[Kelvane]\r\nSystemDataPath=C:\\FIVE\r\nUserDataPath=C:\\FIVE\\U\r\n");
    files.Write("config", "KELVANE7.INI",
                "[Kelvane]\r\nSystemDataPath=C:\\SEVEN\r\nUserDataPath=C:\\SEVEN\\U\\\r\n");
    Run();
    EXPECT_EQ(session.SiblingIni, "KELVANE7.INI");
    EXPECT_EQ(session.SiblingVersion, 7);
    EXPECT_EQ(session.SystemDataPath, "C:\\SEVEN\\");
    EXPECT_EQ(session.SiblingUserPath, "C:\\SEVEN\\U\\");
}

TEST_F(SessionStart, ASiblingWithoutTheKeyDoesNotAnswer) {
    files.Write("config", "KELVANE9.INI", "[Other]\r\nSystemDataPath=C:\\NINE\r\n");
    files.Write("config", "KELVANE3.INI", "[Kelvane]\r\nSystemDataPath=/data/three\r\n");
    Run();
    EXPECT_EQ(session.SiblingVersion, 3);
    EXPECT_EQ(session.SystemDataPath, "\\data\\three\\");
    EXPECT_EQ(session.SiblingUserPath, ProgramPath(files.At("user", "")))
        << "a path that it doesn't name stays";
}

TEST_F(SessionStart, TheEphemerisFolderIsTheKeysWithoutItsLastBackslash) {
    files.Write("config", "ORVANT2.INI", "[Orvantis]\r\nSwissEphemPath=/data/ephemeris/\r\n");
    Run();
    EXPECT_EQ(session.SwissEphemPath, "/data/ephemeris");
    files.Write("config", "ORVANT2.INI", "[Orvantis]\r\nSwissEphemPath=\\data\\e\\\\\r\n");
    Run();
    EXPECT_EQ(session.SwissEphemPath, "/data/e/") << "just one of them";
}

TEST_F(SessionStart, WithoutTheKeyTheSystemsEphemerisServesOrElseTheFolderInTheData) {
    files.paths.ephemeris = files.At("system", "");
    Run();
    EXPECT_EQ(session.SwissEphemPath + "/", files.At("system", ""));
    EXPECT_EQ(swissState.enabled, 0) << "an empty folder fails the trial";
    files.paths.ephemeris = files.At("system", "none");
    Run();
    EXPECT_EQ(session.SwissEphemPath, files.At("program", "swisseph"));
}

TEST_F(SessionStart, AnEphemerisKeyWithoutATextStandsForTheDefault) {
    files.paths.ephemeris = files.At("system", "");
    files.Write("config", "ORVANT2.INI", "[Orvantis]\r\nSwissEphemPath=\r\n");
    Run();
    EXPECT_EQ(session.SwissEphemPath + "/", files.At("system", ""));
}

// --- Shipped files

TEST_F(SessionStart, ShippedFilesAreForANewFolderSoThatDeletedOnesStayAway) {
    files.Write("shipped", "world.ovm", MapOf("shipped"));
    files.Write("shipped", "sample.cht", Bytes{2, 0});
    fs::remove_all(files.At("user", ""));
    Run();
    EXPECT_TRUE(fs::exists(files.At("user", "world.ovm")));
    EXPECT_TRUE(fs::exists(files.At("user", "sample.cht")));
    EXPECT_TRUE(fs::exists(files.At("user", "timezone.fil")));
    fs::remove(files.At("user", "world.ovm"));
    fs::remove(files.At("user", "sample.cht"));
    Run();
    EXPECT_FALSE(fs::exists(files.At("user", "world.ovm")));
    EXPECT_FALSE(fs::exists(files.At("user", "sample.cht")));
}

TEST_F(SessionStart, TheDatabaseIsPutThereWheneverItIsMissing) {
    Run();
    fs::remove(files.At("program", "level1.pnt"));
    EXPECT_EQ(Run(), SessionResult::Ready);
    EXPECT_EQ(FileBytes(files.At("program", "level1.pnt")), TwoLines());
}

TEST_F(SessionStart, FilesAndFoldersOfAnotherCaseAreTheUsersOwn) {
    fs::remove_all(files.At("user", ""));
    fs::create_directories(files.At("program", "USERDATA"));
    files.Write("program", "LEVEL1.PNT", TwoLines());
    files.Write("shipped", "world.ovm", MapOf("shipped"));
    EXPECT_EQ(Run(), SessionResult::Ready);
    EXPECT_FALSE(fs::exists(files.At("program", "level1.pnt")));
    EXPECT_FALSE(fs::exists(files.At("user", "")));
    EXPECT_FALSE(fs::exists(files.At("program", "USERDATA/world.ovm")));
}

TEST_F(SessionStart, ALinkToNowhereIsLeftAloneByTheShippedFiles) {
    fs::create_symlink("/none/level1.pnt", files.At("program", "level1.pnt"));
    EXPECT_EQ(Run(), SessionResult::Ended);
    EXPECT_TRUE(fs::is_symlink(files.At("program", "level1.pnt")));
}

TEST_F(SessionStart, TheStartScreenStandsUntilItsTimeIsOver) {
    TestShell().eventsToSplashEnd = 6;
    Run("");
    const Log& log = TestShell().log;
    const auto hidden = std::find(log.begin(), log.end(), "HideStartScreen");
    EXPECT_EQ(std::count(log.begin(), hidden, "DoEvents"), 6);
}

// --- The start screen

TEST_F(SessionStart, TheStartScreenIsDecidedByThePlacesOfItsTwoWordsBitByBit) {
    const struct {
        std::string_view commandLine;
        bool hasChart;
        bool shown;
    } rows[] = {
        {"", false, true},
        {"", true, false},
        {" ", false, false},  // it isn't empty before it is trimmed
        {"LOADICON", false, true},
        {" loadicon ", false, true},
        {"LoadIcon X", false, true},
        {"LOADICON", true, true},
        {"NOINITSCREEN", false, false},
        {"noinitscreen", false, false},
        {"3", false, false},
        {"3,points.pts colours.cpt", false, false},
        {"LOADICON NOINITSCREEN", false, true},       // 1 and not 10
        {"NOINITSCREEN LOADICON", false, true},       // 14 and not 1
        {"LOADICON  NOINITSCREEN", false, false},     // 1 and not 11
        {"LOADICONNOINITSCREEN", false, false},       // 1 and not 9
        {" LOADICON NOINITSCREEN", false, false},     // 2 and not 11
        {"  LOADICON  NOINITSCREEN", false, true},    // 3 and not 13
        {"   NOINITSCREENLOADICON", false, true},     // 16 and not 4
        {"   LOADICON  NOINITSCREEN", false, false},  // 4 and not 14
    };
    for (const auto& row : rows) {
        EXPECT_EQ(StartScreenIsWanted(row.commandLine, row.hasChart), row.shown)
            << "'" << row.commandLine << "' " << row.hasChart;
    }
}

TEST_F(SessionStart, AnEmptyCommandLineShowsTheStartScreenAndStartsTheAstroClock) {
    WithClock();
    EXPECT_EQ(Run(""), SessionResult::Ready);
    EXPECT_EQ(TestShell().log[0], kStartScreen);
    EXPECT_EQ(session.ChartNumber, 0);
    EXPECT_EQ(clockCall.calls, 1);
    EXPECT_NE(clockCall.on, 0);
    EXPECT_NE(clockCall.redraw, 0);
    EXPECT_FALSE(Shown("SetPointer|1")) << "the clock does the first plot";
}

TEST_F(SessionStart, NoinitscreenStartsWithoutTheStartScreenAndKeepsThePointFile) {
    WithClock();
    Run("NOINITSCREEN");
    EXPECT_FALSE(Shown(kStartScreen));
    EXPECT_EQ(session.ChartNumber, 0);
    EXPECT_EQ(session.PointFile, session.UserDataPath + "ovdeflt.pts");
    EXPECT_EQ(clockCall.calls, 1);
}

// --- The command line

TEST_F(SessionStart, ANumberShowsTheChartThatTheSiblingHandsOver) {
    WithClock();
    files.AddSibling(7);
    files.Write("system", "~K500003.CH~", ExchangeFile("Handed over"));
    Run("3");
    EXPECT_FALSE(Shown(kStartScreen));
    EXPECT_EQ(session.ChartNumber, 3);
    EXPECT_EQ(calcChart[1].Name, "Handed over");
    EXPECT_GE(calcChart[1].Lon[point::kSun], 0);
    EXPECT_EQ(calcChart[1].Saved, 0);
    EXPECT_EQ(clockCall.calls, 0);
    EXPECT_EQ(Caption().substr(0, 21), "Orvantis: Handed over");
    EXPECT_TRUE(Shown("SetTitle|" + Caption()));
}

TEST_F(SessionStart, InAnExchangeFileOfSeveralChartsTheNumberPicksTheRecord) {
    Bytes both = ExchangeFile("First");
    const Bytes second = ExchangeFile("Second");
    both.insert(both.end(), second.begin(), second.end());
    files.Write("program", "~K500002.CH~", both);
    Run("2");
    EXPECT_EQ(calcChart[1].Name, "Second");
}

TEST_F(SessionStart, AnExchangeFileOfOneRecordServesAnyNumberAndOneOfSeveralItsOwnAlone) {
    const auto loaded = [&](std::int16_t number, std::size_t records, std::size_t more) {
        Bytes bytes;
        for (std::size_t i = 1; i <= records; ++i) {
            const Bytes one = ExchangeFile("Chart " + std::to_string(i));
            bytes.insert(bytes.end(), one.begin(), one.end());
        }
        bytes.resize(bytes.size() + more);
        files.Write("program", BaseName(ChartExchangePath(number, kTrue), false), bytes);
        LoadExchangeChart(number);
        return calcChart[1].Name;
    };
    Run();
    EXPECT_EQ(loaded(1, 1, 0), "Chart 1");
    EXPECT_EQ(loaded(7, 1, 0), "Chart 1");
    EXPECT_EQ(loaded(1, 3, 0), "Chart 1");
    EXPECT_EQ(loaded(3, 3, 0), "Chart 3");
    EXPECT_EQ(loaded(4, 3, 0), "") << "there is no such record";
    EXPECT_LT(calcChart[1].Lon[point::kSun], 0);
    EXPECT_EQ(loaded(3, 2, 100), "") << "the third is cut short";
    EXPECT_EQ(loaded(7, 1, 100), "") << "a second record begins, so that the number counts";
    EXPECT_EQ(loaded(1, 0, 0), "") << "an empty file";
    EXPECT_TRUE(TestShell().boxes.empty());
}

TEST_F(SessionStart, AnOlderSiblingHandsItsChartOverThroughTheOlderFile) {
    files.AddSibling(3);
    files.Write("system", "~ST00003.CH~", ExchangeFile("Older"));
    files.Write("system", "~K500003.CH~", ExchangeFile("Newer"));
    files.Write("system", "~K500004.CH~", ExchangeFile("Newer"));
    Run("3");
    EXPECT_EQ(calcChart[1].Name, "Older");
    EXPECT_GE(calcChart[1].Lon[point::kSun], 0);
    LoadExchangeChart(4);
    EXPECT_EQ(calcChart[1].Name, "Newer") << "there is no older file of this number";
}

TEST_F(SessionStart, AChartFromAFileHasNoNoteOfTheOneHandedOverBefore) {
    Run();
    chartNotes[1].note = "handed over";
    RunTimeError reason;
    const std::string sample = DataFile("sample.cht");
    ASSERT_EQ(OpenChart(sample, 1, reason), ChartStatus::Ok);
    EXPECT_EQ(chartNotes[1].note, "");
    chartNotes[1].note = "handed over";
    LoadExchangeChart(3);
    EXPECT_EQ(chartNotes[1].note, "") << "none is handed over";
}

TEST_F(SessionStart, AnExchangeChartThatCannotBeCalculatedLeavesNoChart) {
    Run();
    FileChart chart;
    chart.event.name = "Failing";
    chart.event.zoneHours = 1e30F;  // no such moment
    Bytes bytes(3171);
    PutFileChart(bytes.data(), chart);
    files.Write("program", "~K500003.CH~", bytes);
    LoadExchangeChart(3);
    EXPECT_EQ(TestShell().boxes.size(), 1U);
    EXPECT_EQ(calcChart[1].Name, "");
    EXPECT_LT(calcChart[1].Lon[point::kSun], 0);
    EXPECT_LT(calcChart[1].Lon[point::kMoon], 0);
}

TEST_F(SessionStart, AMissingExchangeFileKeepsTheNumberAndStillPlots) {
    calcChart[1].Name = "stale";
    Run("3");
    EXPECT_EQ(Caption(), "Orvantis: ") << "a chart without a description";
    EXPECT_EQ(session.ChartNumber, 3);
    EXPECT_EQ(calcChart[1].Name, "");
    EXPECT_LT(calcChart[1].Lon[point::kMoon], 0);
    EXPECT_TRUE(Shown("SetPointer|1"));
    EXPECT_NE(session.StartupDone, 0);
}

TEST_F(SessionStart, AnExchangeFileThatIsCutShortGivesNoChart) {
    Bytes bytes = ExchangeFile("Cut");
    bytes.resize(291);
    files.Write("program", "~K500003.CH~", bytes);
    EXPECT_EQ(Run("3"), SessionResult::Ready);
    EXPECT_EQ(calcChart[1].Name, "");
    EXPECT_TRUE(TestShell().boxes.empty());
}

TEST_F(SessionStart, CommaAndBlankSplitTheCommandLineAndBothFilesAreTheSiblings) {
    files.AddSibling(7);
    files.Write("sibling", "points.pts", SelectionOf(9));
    files.Write("sibling", "colours.cpt", ColoursOf(0x123456));
    files.Write("user", "ovdeflt.pts", SelectionOf(4));
    files.Write("user", "orvantis.pco", ColoursOf(0x654321));
    Run("3,points.pts colours.cpt");
    EXPECT_EQ(session.ChartNumber, 3);
    EXPECT_NE(pointSelection[9], 0) << "read after the selection of the INI";
    EXPECT_EQ(pointSelection[4], 0);
    EXPECT_EQ(pointColour[9], 0x123456) << "read after the user's own colours";
    EXPECT_EQ(session.PointFile, session.SiblingUserPath + "POINTS.PTS");
    EXPECT_EQ(session.ColourFile, session.SiblingUserPath + "COLOURS.CPT");
}

TEST_F(SessionStart, LoadiconAloneRefreshesTheStartScreenAndStartsAsUsual) {
    WithClock();
    Run(" loadicon ");
    EXPECT_EQ(TestShell().log[0], kStartScreen);
    EXPECT_TRUE(Shown("RefreshStartScreen"));
    EXPECT_EQ(session.ChartNumber, 0);
    EXPECT_EQ(session.PointFile, session.UserDataPath + "ovdeflt.pts");
    EXPECT_EQ(clockCall.calls, 1);
}

TEST_F(SessionStart, LoadiconWithMoreIsTakenAsWordsOfACall) {
    files.Write("user", "x", SelectionOf(9));
    Run("LOADICON X");
    EXPECT_EQ(TestShell().log[0], kStartScreen);
    EXPECT_FALSE(Shown("RefreshStartScreen"));
    EXPECT_EQ(session.ChartNumber, 0);
    EXPECT_EQ(session.PointFile, session.SiblingUserPath + "X");
    EXPECT_NE(pointSelection[9], 0);
}

TEST_F(SessionStart, TheFirstWordIsANumberCutToAWholeOneAndNoneIfItDoesNotFit) {
    const struct {
        std::string_view commandLine;
        std::int16_t number;
    } rows[] = {{"3.9", 3},       {"-2.9", -2}, {"12abc", 12},      {"abc", 0},    {"  7  ", 7},
                {"32767", 32767}, {"32768", 0}, {"-32768", -32768}, {"1e9999", 0}, {"3e2", 300}};
    for (const auto& row : rows) {
        ObeyCommandLine(row.commandLine);
        EXPECT_EQ(session.ChartNumber, row.number) << row.commandLine;
    }
}

TEST_F(SessionStart, AChartOfTheCallIsOnDisplayAndCountsAsSaved) {
    WithClock();
    Bytes file(292 * 2);
    PutI16(file.data(), 2);
    const Bytes record = ExchangeFile("From a file");
    std::copy_n(record.begin(), 292, file.begin() + 292);
    call.chartPath = ProgramPath(files.Folder().Write("one.cht", file));
    EXPECT_EQ(Run(""), SessionResult::Ready);
    EXPECT_FALSE(Shown(kStartScreen)) << "the call isn't empty";
    EXPECT_EQ(session.ChartNumber, 1);
    EXPECT_EQ(calcChart[1].Name, "From a file");
    EXPECT_NE(calcChart[1].Saved, 0);
    EXPECT_EQ(clockCall.calls, 0);
    EXPECT_TRUE(Shown("SetPointer|1"));
}

TEST_F(SessionStart, AChartOfTheCallThatCannotBeShownEndsTheStartBeforeAnyWindow) {
    call.chartPath = ProgramPath(files.Folder().File("none.cht"));
    EXPECT_EQ(Run(""), SessionResult::NoChart);
    EXPECT_EQ(outcome.status, ChartStatus::NoFile);
    call.chartPath = ProgramPath(files.Folder().Write("empty.cht", Bytes{}));
    EXPECT_EQ(Run(""), SessionResult::NoChart);
    EXPECT_EQ(outcome.status, ChartStatus::NoSuchChart);
    EXPECT_FALSE(Shown("ShowMainWindow"));
    EXPECT_EQ(session.StartupDone, 0);
}

// --- A second copy

TEST_F(SessionStart, ASecondCopyIsRefusedAndTheFirstBroughtForward) {
    TestShell().previousInstance = true;
    TestShell().windows = {{11, "Mail"}, {12, "ORVANTIS: Someone"}, {13, "Orvantis: Other"}};
    EXPECT_EQ(Run(""), SessionResult::Ended);
    EXPECT_EQ(
        TestShell().log,
        (Log{"MessageBox|Cannot Run Second Session|You are attempting to run a second session "
             "of Orvantis.\\r\\n\\r\\nOnly one session can be run at a time.\\r\\n\\r\\nYou "
             "will now be returned to the first session.|Ok|Information",
             "ActivateWindow|12", "SetPointer|0"}));
    EXPECT_FALSE(fs::exists(files.At("program", "level1.pnt"))) << "no step has followed";
}

TEST_F(SessionStart, ASecondCopyWithoutAFirstWindowCarriesOn) {
    TestShell().previousInstance = true;
    TestShell().windows = {{11, "Mail"}, {12, "Orvantis"}, {13, ""}};
    EXPECT_EQ(Run(), SessionResult::Ready);
    EXPECT_TRUE(TestShell().boxes.empty());
}

TEST_F(SessionStart, AWindowOfThatTitleIsNoneOfOursIfNoCopyRuns) {
    TestShell().windows = {{12, "Orvantis: a review"}};
    EXPECT_EQ(Run(), SessionResult::Ready);
}

TEST_F(SessionStart, AWindowIsFoundByAnyPartOfTheFirst255CharactersOfItsTitle) {
    TestShell().windows = {{1, ""}, {2, std::string(250, 'x') + "abcde"}, {3, "ABCDE"}};
    EXPECT_EQ(FindSessionWindow("aBcDe"), 2);
    TestShell().windows[1].title.insert(0, 1, 'x');
    EXPECT_EQ(FindSessionWindow("aBcDe"), 3);
    EXPECT_EQ(FindSessionWindow("none"), 0);
    EXPECT_EQ(FindSessionWindow(""), 2) << "a window without a title is never found";
}

// --- The database

TEST_F(SessionStart, WithoutTheMainDatabaseFileTheStartEndsWithItsMessage) {
    fs::remove(files.At("shipped", "level1.pnt"));
    EXPECT_EQ(Run(""), SessionResult::Ended);
    EXPECT_EQ(TestShell().log.back(),
              "MessageBox|Orvantis|The main database file LEVEL1.PNT was not found in the "
              "directory " +
                  files.At("program", "") + "|Ok|Error");
    EXPECT_FALSE(Shown("ShowMainWindow"));
    EXPECT_EQ(session.StartupDone, 0);
}

TEST_F(SessionStart, MissingLevelFilesAreMadeWithThePanelAndNoMessage) {
    Run();
    EXPECT_TRUE(TestShell().boxes.empty());
    EXPECT_GE(TestShell().progressCalls, 2);
    for (const int level : {3, 5}) {
        const std::string path = files.At("program", "level" + std::to_string(level) + ".pnt");
        fs::remove(path);
        TestShell().progressCalls = 0;
        Run();
        EXPECT_TRUE(fs::exists(path));
        EXPECT_GE(TestShell().progressCalls, 2);
    }
    TestShell().progressCalls = 0;
    Run();
    EXPECT_EQ(TestShell().progressCalls, 0) << "all there: no panel";
    EXPECT_TRUE(TestShell().boxes.empty());
}

TEST_F(SessionStart, ThePanelOfTheFirstUseBeginsAtZeroAndGoesBeforeTheIndexIsLoaded) {
    std::vector<std::int16_t> indexed;  // lines in the index whenever the panel is told
    TestShell().onProgress = [&](std::string_view, std::int16_t) {
        indexed.push_back(pointDatabase.count);
    };
    Run();
    const Log& progress = TestShell().progress;
    ASSERT_GE(progress.size(), 3U);
    EXPECT_EQ(progress.front(), "0|Loading map database for first use...");
    EXPECT_EQ(progress.back(), "100|");
    for (std::size_t i = 1; i + 1 < progress.size(); ++i) {
        EXPECT_TRUE(progress[i].ends_with("|Loading map database for first use...")) << progress[i];
    }
    EXPECT_EQ(indexed, std::vector<std::int16_t>(progress.size(), 0));
    EXPECT_EQ(pointDatabase.count, 2);
}

TEST_F(SessionStart, ALevelTwoThatIsOlderThanLevelOneIsMadeAnew) {
    Run();
    fs::last_write_time(
        files.At("program", "level2.pnt"),
        fs::last_write_time(files.At("program", "level1.pnt")) - std::chrono::seconds(10));
    TestShell().progressCalls = 0;
    Run();
    EXPECT_GE(TestShell().progressCalls, 2);
    EXPECT_GE(fs::last_write_time(files.At("program", "level2.pnt")),
              fs::last_write_time(files.At("program", "level1.pnt")));
    EXPECT_TRUE(TestShell().boxes.empty());
}

TEST_F(SessionStart, ADatabaseThatIsNoneIsToldAndTheStartGoesOn) {
    std::mt19937 random(5);
    Bytes bytes(50000);
    for (std::uint8_t& byte : bytes) byte = static_cast<std::uint8_t>(random());
    for (const Bytes& foreign : {Bytes(500, 0xEE), bytes}) {
        files.Write("program", "level1.pnt", foreign);
        pointDatabase = {};
        TestShell().boxes.clear();
        EXPECT_EQ(Run(), SessionResult::Ready);
        EXPECT_EQ(TestShell().boxes,
                  std::vector<std::string>{"Database Error: " + files.At("program", "level1.pnt") +
                                           " / The file isn't a map database."});
        EXPECT_NE(session.StartupDone, 0);
        EXPECT_EQ(session.StoredImage.width, 400) << "the first picture is drawn";
    }
}

TEST_F(SessionStart, ADatabaseWithoutLinesIsToldAndTheStartGoesOnWithAMapOfNone) {
    files.Write("program", "level1.pnt", Bytes{});
    surface.recording = true;
    EXPECT_EQ(Run(), SessionResult::Ready);
    EXPECT_EQ(TestShell().boxes,
              std::vector<std::string>{"Database Error: " + files.At("program", "level1.pnt") +
                                       " / The file holds no map lines."});
    EXPECT_EQ(pointDatabase.count, 0);
    EXPECT_NE(session.StartupDone, 0);
    EXPECT_EQ(session.StoredImage.width, 400);
}

TEST_F(SessionStart, AFullProgramFolderIsToldAndTheStartGoesOnWithAMapOfNoLines) {
    files.Write("program", "level1.pnt", TwoLines());
    StartSession(files.paths, TestShell());  // the shipped files are there already
    EndSession();
    TestShell().boxes.clear();
    const FullDisk disk(1);
    EXPECT_EQ(Run(), SessionResult::Ready);
    EXPECT_EQ(TestShell().boxes,
              (std::vector<std::string>{
                  "Open Error: " + files.At("program", "level5.pnt") + " /  / Disk full",
                  "Open Error: " + files.At("program", "level2.pnt") + " /  / File not found"}))
        << "once for the level files and once for the index; none for the picture";
    EXPECT_EQ(pointDatabase.count, 0);
    EXPECT_NE(session.StartupDone, 0);
    TestShell().boxes.clear();
    PlotMap4(kFalse, surface, kTrue);
    EXPECT_TRUE(TestShell().boxes.empty());
}

TEST_F(SessionStart, AProgramFolderThatMayNotBeWrittenToIsToldAndTheStartGoesOn) {
    files.Write("program", "level1.pnt", TwoLines());
    const auto start = [&] {
        fs::permissions(files.Folder().Path(), fs::perms::all);
        ActAsPlainUserOn(files.At("program", ""), fs::perms::owner_read | fs::perms::owner_exec);
        if (Run() != SessionResult::Ready || session.StartupDone == 0) return 1;
        if (pointDatabase.count != 0 || session.StoredImage.width != 400) return 2;
        for (const std::string& box : TestShell().boxes) {
            if (!box.starts_with("Open Error: " + files.At("program", "level"))) return 3;
        }
        return TestShell().boxes.size() == 2 ? 0 : 4;
    };
    EXPECT_EXIT(std::_Exit(start()), ::testing::ExitedWithCode(0), "");
    fs::permissions(files.At("program", ""), fs::perms::owner_all);
}

TEST_F(SessionStart, LevelFilesThatVanishAfterTheIndexIsLoadedLeaveAMapWithoutLines) {
    Run();
    ASSERT_EQ(pointDatabase.count, 2);
    for (std::int16_t level = 1; level <= 5; ++level) fs::remove(NativePath(LevelPath(level)));
    PlotMap4(kFalse, surface, kTrue);
    EXPECT_EQ(TestShell().boxes,
              std::vector<std::string>{"Open Error: " + NativePath(LevelPath(5)) +
                                       " /  / File not found"});
    EXPECT_EQ(session.StoredImage.width, 400);
}

// --- Settings

TEST_F(SessionStart, TheSettingsFileOfTheLastRunIsLoadedBeforeTheDefaultOne) {
    settings.symbolSize = 14;
    SaveSettings(ProgramPath(files.At("system", "mine.ovs")), "");
    settings.symbolSize = 11;
    SaveSettings(ProgramPath(files.At("user", "default.ovs")), "");
    settings = {};
    const std::string mine = files.At("system", "mine.ovs");
    files.Write("config", "ORVANT2.INI", "[Orvantis]\r\nPrefFile=" + mine + "\r\n");
    Run();
    EXPECT_EQ(settings.symbolSize, 14);
    EXPECT_EQ(NativePath(session.SettingsPath), mine);
    EXPECT_EQ(session.SettingsName, "mine");
    fs::remove(mine);
    Run();
    EXPECT_EQ(settings.symbolSize, 11);
    EXPECT_EQ(session.SettingsPath, session.UserDataPath + "default.ovs");
}

TEST_F(SessionStart, WithoutAnySettingsFileTheDefaultsStandAndThePathIsKept) {
    files.Write("config", "ORVANT2.INI", "[Orvantis]\r\nPrefFile=/none/mine.ovs\r\n");
    Run();
    EXPECT_EQ(settings.symbolSize, 9);
    EXPECT_EQ(NativePath(session.SettingsPath), "/none/mine.ovs");
    EXPECT_TRUE(TestShell().boxes.empty());
}

TEST_F(SessionStart, ShippedPreferencesStandInWhereTheUsersFolderCannotBeMade) {
    files.Write("shipped", "ovdeflt.pts", SelectionOf(5));
    files.Write("shipped", "brimwell.cpt", ColoursOf(0x010203));
    settings.symbolSize = 12;
    SaveSettings(ProgramPath(files.At("shipped", "default.ovs")), "");
    settings = {};
    files.paths.programDir = files.At("shipped", "level1.pnt") + "/no/folder";
    StartSession(files.paths, TestShell());
    EXPECT_NE(pointSelection[5], 0);
    EXPECT_EQ(pointColour[5], 0x010203);
    EXPECT_EQ(settings.symbolSize, 12);
    EXPECT_EQ(session.SettingsPath, session.UserDataPath + "default.ovs");
}

// --- The map

TEST_F(SessionStart, TheStoredPictureOfTheMapAreasSizeIsTakenAsItIs) {
    WithClock();
    Store(400, 300);
    mapState.current = 4;
    mapState.viewTop = 4;
    Run();
    EXPECT_EQ(imagesRead, 1);
    EXPECT_EQ(clockCall.redraw, 0);
    EXPECT_EQ(CurrentMap().title, "the last view");
    EXPECT_EQ(mapState.current, 1);
    EXPECT_EQ(mapState.viewTop, 1);
    EXPECT_EQ(mapState.viewLowest, 1);
    EXPECT_EQ(session.StoredImage.width, 400);
}

TEST_F(SessionStart, AStoredPictureThatFitsIsPutDownAndTheLinesDrawnOverIt) {
    const struct {
        std::string_view commandLine;
        std::int16_t chart;
    } rows[] = {{"3", 3}, {"NOINITSCREEN", 0}};  // without a chart, and no clock to do the plot
    files.Write("program", "~K500003.CH~", ExchangeFile("Handed over"));
    surface.recording = true;
    for (const auto& row : rows) {
        Store(400, 300);
        storedImage.pixels.assign(std::size_t{400} * 300, 0x123456);
        surface.log.clear();
        switchAstroClock = nullptr;
        EXPECT_EQ(Run(row.commandLine), SessionResult::Ready);
        EXPECT_EQ(session.ChartNumber, row.chart);
        EXPECT_EQ(surface.Calls("PutImage").size(), 1U) << row.commandLine;
        EXPECT_TRUE(surface.Calls("Clear").empty()) << row.commandLine;
        EXPECT_TRUE(surface.Calls("CopyImage").empty()) << row.commandLine;
        EXPECT_TRUE(surface.Calls("FloodFill").empty()) << row.commandLine;
        EXPECT_EQ(session.StoredImage.pixels, storedImage.pixels) << "it stays without lines";
        EXPECT_EQ(CurrentMap().title, "the last view");
    }
}

TEST_F(SessionStart, AStoredPictureOfAnotherSizeLeadsToAPlotOfTheStoredMap) {
    for (const auto& [width, height] : {std::pair{300, 200}, {400, 299}, {401, 300}}) {
        WithClock();
        Store(width, height);
        Run();
        EXPECT_NE(clockCall.redraw, 0) << width;
        EXPECT_EQ(CurrentMap().title, "the last view") << width;
    }
}

TEST_F(SessionStart, AStoredPictureThatCannotBeReadLeadsToAPlotOfTheStoredMap) {
    WithClock();
    Store(400, 300);
    loadStoredImage = [](std::string_view, Image&) { return false; };
    Run();
    EXPECT_NE(clockCall.redraw, 0);
    EXPECT_EQ(CurrentMap().title, "the last view");
    EXPECT_TRUE(TestShell().boxes.empty());
}

TEST_F(SessionStart, AStoredMapThatCannotBeReadGivesANewMapAndNoPicture) {
    WithClock();
    Store(400, 300);
    files.Write("program", "mapview.ovm", "short");
    Run();
    EXPECT_EQ(imagesRead, 0);
    EXPECT_NE(clockCall.redraw, 0);
    EXPECT_EQ(CurrentMap().title, MapDocument().title);
    EXPECT_EQ(TestShell().boxes.size(), 1U);
}

TEST_F(SessionStart, HalfAStoredPairIsNotUsedAndTheRecentMapDecides) {
    for (const char* missing : {"mapview.ovm", "mapimage.bmp"}) {
        WithClock();
        Store(400, 300);
        fs::remove(files.At("program", missing));
        const std::string recent = files.Write("user", "recent.ovm", MapOf("recent"));
        files.Write("config", "ORVANT2.INI",
                    "[Orvantis]\r\nStoreImages=-1\r\nLastFile1=" + recent + "\r\n");
        Run();
        EXPECT_EQ(imagesRead, 0) << missing;
        EXPECT_NE(clockCall.redraw, 0) << missing;
        EXPECT_EQ(CurrentMap().title, "recent") << missing;
        const int left = (fs::exists(files.At("program", "mapview.ovm")) ? 1 : 0) +
                         (fs::exists(files.At("program", "mapimage.bmp")) ? 1 : 0);
        EXPECT_EQ(left, 1) << "the other half stays: " << missing;
    }
}

TEST_F(SessionStart, WithStoredPicturesOffThePairStaysButIsNotUsed) {
    WithClock();
    Store(400, 300);
    files.Write("config", "ORVANT2.INI", "[Orvantis]\r\nStoreImages=0\r\n");
    Run();
    EXPECT_EQ(imagesRead, 0);
    EXPECT_NE(clockCall.redraw, 0);
    EXPECT_EQ(CurrentMap().title, MapDocument().title);
    EXPECT_TRUE(fs::exists(files.At("program", "mapview.ovm")));
    EXPECT_TRUE(fs::exists(files.At("program", "mapimage.bmp")));
}

TEST_F(SessionStart, ARecentMapThatIsGoneGivesTheDefaultMapWithoutAMessage) {
    files.Write("user", "world.ovm", MapOf("my world"));
    files.Write("config", "ORVANT2.INI", "[Orvantis]\r\nLastFile1=/none/gone.ovm\r\n");
    Run();
    EXPECT_EQ(CurrentMap().title, "my world");
    EXPECT_EQ(session.RecentCount, 1);
    EXPECT_TRUE(TestShell().boxes.empty());
}

TEST_F(SessionStart, ARecentMapThatCannotBeReadIsToldAndGivesTheDefaultMap) {
    const std::string bad = files.Write("user", "bad.ovm", "short");
    files.Write("config", "ORVANT2.INI", "[Orvantis]\r\nLastFile1=" + bad + "\r\n");
    EXPECT_EQ(Run(), SessionResult::Ready);
    EXPECT_EQ(CurrentMap().title, MapDocument().title);
    ASSERT_EQ(TestShell().boxes.size(), 1U);
    EXPECT_EQ(TestShell().boxes[0],
              "Orvantis: Unable to open map file: / " + bad + " (Input past end of file)");
}

TEST_F(SessionStart, TheRecentListIsRefreshedOnceTheMapIsThereAndBeforeTheFirstPicture) {
    static int shown;
    static std::string title;
    static int pictures;
    shown = 0;
    pictures = -1;
    files.Write("user", "world.ovm", MapOf("my world"));
    WithClock();
    showRecentMaps = [](const RecentMenu& /*menu*/) {
        ++shown;
        title = CurrentMap().title;
        pictures = clockCall.calls;
    };
    Run();
    EXPECT_EQ(shown, 1);
    EXPECT_EQ(session.RecentCount, 0) << "an empty name: the list doesn't change";
    EXPECT_EQ(title, "my world");
    EXPECT_EQ(pictures, 0);
}

TEST_F(SessionStart, AWordOfTheCommandLineKeepsItsLettersBeyondTheLatinAlphabet) {
    // The word is UTF-8; its bytes above 127 are no letters to be raised.
    files.Write("user", "POINTS\xE2\x80\x93.PTS", std::string(22 * 36, '\0'));
    Run("1 points\xE2\x80\x93.pts");
    EXPECT_EQ(session.PointFile, session.SiblingUserPath + "POINTS\xE2\x80\x93.PTS");
}

// --- The small routines

TEST_F(SessionStart, WordsAreSplitAtRunsOfSeparators) {
    const struct {
        std::string_view text;
        std::string_view separators;
        std::vector<std::string> words;
    } rows[] = {
        {"", " ,", {""}},
        {"   ", " ,", {""}},
        {"a", " ,", {"a"}},
        {",", " ,", {","}},
        {"3,points.pts colours.cpt", " ,", {"3", "points.pts", "colours.cpt"}},
        {"  a  b  ", " ,", {"a", "b"}},
        {"a, ,b,,", " ,", {"a", "b"}},
        {",a", " ,", {",a"}},  // the first character begins a word, whatever it is
        {",,a", " ,", {",", "a"}},
        {"one, two,three four", ",", {"one", "two", "three four"}},
        {"a, ,b", ",", {"a", "", "b"}},
        {"1 2 3 4 5", " ", {"1", "2", "3", "4"}},  // no more than there is room for
        {"1 2 3 4", " ", {"1", "2", "3", "4"}},
    };
    for (const auto& row : rows) {
        std::vector<std::string> words(4, "-");
        std::int16_t count = -1;
        SplitWords(row.text, words, count, row.separators);
        ASSERT_EQ(count, static_cast<std::int16_t>(row.words.size())) << "'" << row.text << "'";
        words.resize(row.words.size());
        EXPECT_EQ(words, row.words) << "'" << row.text << "'";
    }
}

TEST_F(SessionStart, ExchangeFilesHaveTheNumberInFiveDigits) {
    session.SystemDataPath = "C:\\DATA\\";
    EXPECT_EQ(ChartExchangePath(3, kTrue), "C:\\DATA\\~K500003.CH~");
    EXPECT_EQ(ChartExchangePath(32767, kTrue), "C:\\DATA\\~K532767.CH~");
    EXPECT_EQ(ChartExchangePath(3, kFalse), "C:\\DATA\\retain5.cha");
}

TEST_F(SessionStart, TheStartWithoutAWindowReadsTheSamePreferences) {
    files.AddSibling(4);
    files.Write("config", "ORVANT2.INI", "[Orvantis]\r\nSwissEphemPath=/data/e\r\n");
    files.Write("user", "ovdeflt.pts", SelectionOf(6));
    files.Write("user", "orvantis.pco", ColoursOf(0x0A0B0C));
    settings.symbolSize = 13;
    SaveSettings(ProgramPath(files.At("user", "default.ovs")), "");
    settings = {};
    StartSession(files.paths, TestShell());
    EXPECT_EQ(session.SystemDataPath, ProgramPath(files.At("system", "")));
    EXPECT_EQ(session.SwissEphemPath, "/data/e");
    EXPECT_NE(pointSelection[6], 0);
    EXPECT_EQ(pointColour[6], 0x0A0B0C);
    EXPECT_EQ(settings.symbolSize, 13);
    EXPECT_FALSE(Shown("ShowMainWindow"));
    EXPECT_EQ(session.StartupDone, 0);
}

}  // namespace
}  // namespace orvantis

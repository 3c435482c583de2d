// The whole end, driven by the scripted shell alone.
#include <filesystem>
#include <gtest/gtest.h>

#include "charts/CALCCHRT.h"
#include "charts/SwissEph.h"
#include "map/map_document.h"
#include "session/driver.h"
#include "session/files.h"
#include "session/session_state.h"
#include "session/settings.h"
#include "support/recording_surface.h"
#include "support/reset_all.h"
#include "support/session_files.h"

namespace orvantis {
namespace {

namespace fs = std::filesystem;
using Log = std::vector<std::string>;

const std::string kQuestion =
    "MessageBox|Chart Not Saved|The current chart has not been saved to a file.\\r\\n\\r\\nDo you "
    "wish to save it?|YesNoCancel|Exclamation";

std::string savedImagePath;
Image savedImage;

class SessionEnd : public ::testing::Test {
  protected:
    void SetUp() override {
        ResetAll();
        surface.recording = false;
        session.picture = &surface;
        TestShell().mapArea = {400, 300};
        savedImagePath.clear();
        savedImage = {};
        RunSession(files.paths, {"NOINITSCREEN", "", 1}, TestShell(), outcome);
        TestShell().log.clear();
    }
    void TearDown() override { EndSession(); }

    Flag End() {
        Flag cancel = 7;
        ExitSession(cancel);
        return cancel;
    }
    static void ShowUnsavedChart() {
        session.ChartNumber = 1;
        calcChart[1].Saved = kFalse;
    }
    static void KeepPictures() {
        options.storeImages = kTrue;
        saveStoredImage = [](std::string_view path, const Image& image) {
            savedImagePath = path;
            savedImage = image;
            return ReplaceFileSilently(path, Bytes{'B', 'M'});
        };
    }
    std::string Ini() const {
        const Bytes bytes = FileBytes(files.At("config", "ORVANT2.INI"));
        return {bytes.begin(), bytes.end()};
    }

    SessionFiles files;
    RecordingSurface surface{400, 300};
    OpenOutcome outcome;
};

TEST_F(SessionEnd, AnEndWithoutAQuestionShowsTheHourglassAndThePointerAgain) {
    EXPECT_EQ(End(), kFalse);
    EXPECT_EQ(TestShell().log, (Log{"SetPointer|1", "SetPointer|0"}));
}

TEST_F(SessionEnd, TheKeysAreWrittenInTheirOrder) {
    session.RecentMaps = {"c:\\maps\\a.ovm", "c:\\maps\\b.ovm", "", ""};
    session.RecentCount = 2;
    session.SettingsPath = "c:\\maps\\mine.ovs";
    TestShell().place = {0, 150, 300, 12000, 9000};
    options.clockInterval = 10000;
    options.clockStep = 6;
    End();
    EXPECT_EQ(Ini(),
              "[Orvantis]\r\n"
              "WindowState=0\r\n"
              "Left=150\r\n"
              "Top=300\r\n"
              "Width=12000\r\n"
              "Height=9000\r\n"
              "LastFile1=c:/maps/a.ovm\r\n"
              "LastFile2=c:/maps/b.ovm\r\n"
              "PrefFile=c:/maps/mine.ovs\r\n"
              "HouseSystem=5\r\n"
              "TrueNode=-1\r\n"
              "VulcWeston=-1\r\n"
              "ACSAtlas=0\r\n"
              "DayNight=0\r\n"
              "LocalLineExtent=360\r\n"
              "ClockStep=60\r\n"
              "RTFOn=-1\r\n"
              "WordProcessor=WRITE.EXE\r\n"
              "ExtraAnnotation=-1\r\n"
              "Ayanamsa=1\r\n"
              "256Colors=0\r\n");
}

TEST_F(SessionEnd, KeysThatTheProgramDoesNotWriteStayInTheirPlaces) {
    files.Write("config", "ORVANT2.INI",
                "; mine\r\n[Orvantis]\r\nEclipseStep=30\r\nHouseSystem=2\r\nPlace=Graz\r\n");
    options.houseSystem = 4;
    End();
    EXPECT_TRUE(Ini().starts_with(
        "; mine\r\n[Orvantis]\r\nEclipseStep=30\r\nHouseSystem=4\r\nPlace=Graz\r\n"))
        << Ini();
}

// --- The question about the chart

TEST_F(SessionEnd, AnUnsavedChartIsAskedAboutAndCancelWritesNothing) {
    ShowUnsavedChart();
    KeepPictures();
    files.Write("config", "ORVANT2.INI", "[Orvantis]\r\nHouseSystem=2\r\n");
    files.Write("program", "mapview.ovm", "old");
    session.PointFile = session.UserDataPath + "mypoints.pts";
    TestShell().boxAnswers = {BoxAnswer::Cancel};
    EXPECT_NE(End(), kFalse);
    EXPECT_EQ(TestShell().log, Log{kQuestion});
    EXPECT_EQ(Ini(), "[Orvantis]\r\nHouseSystem=2\r\n");
    EXPECT_EQ(FileBytes(files.At("program", "mapview.ovm")).size(), 3U);
    EXPECT_FALSE(fs::exists(files.At("user", "mypoints.pts")));
    EXPECT_NE(swissState.enabled, 0);
}

TEST_F(SessionEnd, NoCarriesOnWithoutSaving) {
    static int saves;
    saves = 0;
    saveCurrentChart = [] { ++saves; };
    ShowUnsavedChart();
    TestShell().boxAnswers = {BoxAnswer::No};
    EXPECT_EQ(End(), kFalse);
    EXPECT_EQ(saves, 0);
    EXPECT_EQ(TestShell().log, (Log{kQuestion, "SetPointer|1", "SetPointer|0"}));
    EXPECT_NE(Ini(), "");
}

TEST_F(SessionEnd, YesSavesTheChartAndCarriesOn) {
    saveCurrentChart = [] { calcChart[1].Saved = kTrue; };
    ShowUnsavedChart();
    TestShell().boxAnswers = {BoxAnswer::Yes};
    EXPECT_EQ(End(), kFalse);
    EXPECT_NE(Ini(), "");
}

TEST_F(SessionEnd, YesWithoutAChartSavedAfterwardsStays) {
    ShowUnsavedChart();
    TestShell().boxAnswers = {BoxAnswer::Yes, BoxAnswer::Yes};
    EXPECT_NE(End(), kFalse) << "there is no command that saves";
    saveCurrentChart = [] {};
    EXPECT_NE(End(), kFalse) << "the command was cancelled";
    EXPECT_EQ(Ini(), "");
}

TEST_F(SessionEnd, TheQuestionIsAskedOfAChartOnDisplayThatIsToBeSavedAlone) {
    const struct {
        std::int16_t chart;
        Flag saved, clock, never;
        bool asked;
    } rows[] = {{1, kFalse, kFalse, kFalse, true},  {3, kFalse, kFalse, kFalse, true},
                {0, kFalse, kFalse, kFalse, false}, {-1, kFalse, kFalse, kFalse, false},
                {1, kTrue, kFalse, kFalse, false},  {1, kFalse, kTrue, kFalse, false},
                {1, kFalse, kFalse, kTrue, false}};
    for (const auto& row : rows) {
        TestShell().boxAnswers = {BoxAnswer::Cancel};
        TestShell().log.clear();
        session.ChartNumber = row.chart;
        session.AstroClockOn = row.clock;
        calcChart[1].Saved = row.saved;
        calcChart[1].NeverSaved = row.never;
        EXPECT_EQ(End() != kFalse, row.asked);
        EXPECT_EQ(TestShell().log.front() == kQuestion, row.asked);
    }
}

// --- The point selection

TEST_F(SessionEnd, ThePointSelectionIsSavedUnderALongEnoughNameThatIsNotTheDefaults) {
    const fs::path before = fs::current_path();
    fs::current_path(files.Folder().Path());
    const struct {
        std::string name;
        bool saved;
    } rows[] = {
        {"1234567.pts", false},  // 11 characters
        {"12345678.pts", true},  // 12 characters
        {"ovdeflt.pts", false}, {"myovdeflt.pts", false},
        {"OVDEFLT2.PTS", true}, {"sub-OVDEFLT.PTS", true},  // the case counts
    };
    for (const auto& row : rows) {
        session.PointFile = row.name;
        pointSelection[5] = kTrue;
        End();
        EXPECT_EQ(fs::exists(row.name), row.saved) << row.name;
        EXPECT_EQ(FileBytes(row.name).size(), row.saved ? 792U : 0U) << row.name;
    }
    fs::current_path(before);
}

TEST_F(SessionEnd, TheDefaultSelectionIsNeverOverwritten) {
    files.Write("user", "ovdeflt.pts", "mine");
    End();
    EXPECT_EQ(FileBytes(files.At("user", "ovdeflt.pts")).size(), 4U);
}

// --- The stored pair

TEST_F(SessionEnd, WithStoredPicturesOffAnEarlierPairIsRemoved) {
    files.Write("program", "mapview.ovm", "old");
    files.Write("program", "mapimage.bmp", "old");
    End();
    EXPECT_FALSE(fs::exists(files.At("program", "mapview.ovm")));
    EXPECT_FALSE(fs::exists(files.At("program", "mapimage.bmp")));
}

TEST_F(SessionEnd, TheStoredPairIsThePictureWithoutLinesAndTheCurrentMap) {
    KeepPictures();
    CurrentMap().title = "the view";
    End();
    EXPECT_EQ(savedImagePath, session.ProgramDir + "mapimage.bmp");
    EXPECT_EQ(savedImage.width, 400);
    EXPECT_EQ(savedImage.pixels, session.StoredImage.pixels);
    EXPECT_EQ(FileBytes(files.At("program", "mapview.ovm")), MapOf("the view"));
}

TEST_F(SessionEnd, AMapKeptAtTheEndIsThereAtTheNextStartWithoutAPlot) {
    KeepPictures();
    loadStoredImage = [](std::string_view, Image& image) {
        image = savedImage;
        return true;
    };
    files.Write("config", "ORVANT2.INI", "[Orvantis]\r\nStoreImages=-1\r\n");
    CurrentMap().title = "the view";
    End();
    static Flag redraw;
    redraw = kTrue;
    switchAstroClock = [](Flag, Flag wanted) { redraw = wanted; };
    mapState = {};
    RunSession(files.paths, {"NOINITSCREEN", "", 1}, TestShell(), outcome);
    EXPECT_EQ(CurrentMap().title, "the view");
    EXPECT_EQ(redraw, kFalse);
}

// --- Failures

TEST_F(SessionEnd, StepsThatFailArePassedOver) {
    KeepPictures();
    // Files stand where the folders would be: nothing can be written.
    session.IniDir = ProgramPath(files.At("program", "level1.pnt")) + "\\";
    session.PointFile = session.IniDir + "mypoints.pts";
    session.ProgramDir = session.IniDir;
    session.AstroClockOn = kTrue;
    EXPECT_EQ(End(), kFalse);
    EXPECT_EQ(savedImagePath, session.ProgramDir + "mapimage.bmp") << "a later step";
    EXPECT_EQ(swissState.enabled, 0);
    EXPECT_EQ(TestShell().log.back(), "SetPointer|0");
    EXPECT_EQ(PendingRunTimeError(), 0);
}

TEST_F(SessionEnd, AMapThatCannotBeKeptIsToldOnceAndTheEndGoesOn) {
    KeepPictures();
    // A folder stands where the map would be written.
    fs::create_directories(files.At("program", "mapview.ovm/full"));
    EXPECT_EQ(End(), kFalse);
    ASSERT_EQ(TestShell().boxes.size(), 1U);
    EXPECT_TRUE(
        TestShell().boxes[0].starts_with("Open Error: " + files.At("program", "mapview.ovm")))
        << TestShell().boxes[0];
    EXPECT_EQ(TestShell().log.back(), "SetPointer|0");
    EXPECT_EQ(swissState.enabled, 0);
    EXPECT_EQ(PendingRunTimeError(), 0);
    EXPECT_NE(Ini(), "");
}

TEST_F(SessionEnd, ThePairIsMadeWithoutAPictureThatCannotBeWritten) {
    KeepPictures();
    saveStoredImage = [](std::string_view, const Image&) { return false; };
    End();
    EXPECT_FALSE(fs::exists(files.At("program", "mapimage.bmp")));
    EXPECT_TRUE(fs::exists(files.At("program", "mapview.ovm")));
}

TEST_F(SessionEnd, ThePairIsMadeWithoutAPictureThatAPlotGivenUpHasLeftEmpty) {
    KeepPictures();
    session.StoredImage.width = 0;
    session.StoredImage.height = 0;
    End();
    EXPECT_EQ(savedImagePath, "");
    EXPECT_FALSE(fs::exists(files.At("program", "mapimage.bmp")));
    EXPECT_TRUE(fs::exists(files.At("program", "mapview.ovm")));
}

TEST_F(SessionEnd, TheIniFolderIsMadeIfItIsNotThere) {
    fs::remove_all(files.At("config", ""));
    End();
    EXPECT_TRUE(Ini().starts_with("[Orvantis]\r\nWindowState=")) << Ini();
}

}  // namespace
}  // namespace orvantis

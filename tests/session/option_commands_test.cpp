// The menus "&Stars", "&Eclipse", "&Reports", "&Lines", "&Options" and "&Help".
#include <cmath>
#include <gtest/gtest.h>

#include "charts/CALCCHRT.h"
#include "charts/SwissEph.h"
#include "map/point_database.h"
#include "session/display_dialogs.h"
#include "session/driver.h"
#include "session/files.h"
#include "session/mouse_modes.h"
#include "session/save_settings.h"
#include "session/start_steps.h"
#include "support/command_test.h"
#include "support/paths.h"
#include "support/session_files.h"
#include "support/temp_folder.h"

namespace orvantis {
namespace {

std::vector<std::string> calls;

class OptionCommandsTest : public CommandTest {
  protected:
    void SetUp() override {
        CommandTest::SetUp();
        calls.clear();
        session.UserDataPath = folder.Path();
        session.IniDir = folder.Path();
    }
    static void ConnectStars() {
        loadStarFile = [](std::string_view path) {
            calls.push_back("load " + BaseName(path, false));
            return true;
        };
        showPointsForm = [](PointsForm& form) {
            calls.push_back("points form " + std::to_string(form.mode));
            return true;
        };
        showLinesForm = [](LinesForm&) {
            calls.emplace_back("lines form");
            return true;
        };
    }
    static std::string Opt(std::string_view caption, std::int16_t number = 0) {
        return Run("&Options", caption, number);
    }
    TempFolder folder;
};

// ---- Stars and eclipses ----

TEST_F(OptionCommandsTest, SelectStarsLoadsTheFileInUseAndOpensThePointsDialog) {
    ConnectStars();
    session.StarFile = folder.Write("starfile.fst", "stars");
    EXPECT_EQ(Run("&Stars", "Select &Stars..."), "none");
    EXPECT_EQ(calls, (Words{"load starfile.fst", "points form 2"}));
    EXPECT_TRUE(Log().empty());
}

TEST_F(OptionCommandsTest, SelectStarsWithoutAFileAsksForOne) {
    ConnectStars();
    session.StarFile = folder.File("gone.fst");
    EXPECT_EQ(Run("&Stars", "Select &Stars..."), "none");
    EXPECT_EQ(Log(), Words{"ChooseFile|Select Star File to Open|*.fst|open"});
    EXPECT_TRUE(calls.empty());
    TestShell().fileAnswers = {folder.Write("my.fst", "stars")};
    EXPECT_EQ(Run("&Stars", "&Open Star File..."), "none");
    EXPECT_EQ(calls, (Words{"load my.fst", "points form 2"}));
    EXPECT_EQ(session.StarFile, folder.File("my.fst"));
}

TEST_F(OptionCommandsTest, SelectStarsWithoutAPlanetaryLineTypeLeadsToTheLinesDialog) {
    ConnectStars();
    session.StarFile = folder.Write("starfile.fst", "stars");
    ShowLineTypes({});
    EXPECT_EQ(Run("&Stars", "Select &Stars..."), "none");
    EXPECT_EQ(calls, (Words{"load starfile.fst", "points form 2", "lines form"}));
    EXPECT_EQ(Log(),
              Words{"MessageBox|Orvantis|There are no planetary line types currently selected for "
                    "display.\\r\\nIn order to see planetary and star lines, you must first switch "
                    "on at least one line type from MC to Planet Directions on the next "
                    "screen.|Ok|Information"});
}

TEST_F(OptionCommandsTest, ClearStarsTakesTheirSelectionAndAStarAsParanPointAway) {
    ConnectStars();
    pointSelection[1] = pointSelection[37] = pointSelection[72] = kTrue;
    options.paranPoint = 40;
    EXPECT_EQ(Run("&Stars", "&Clear Stars"), "lines");
    EXPECT_EQ(pointSelection[37] + pointSelection[72], 0);
    EXPECT_EQ(pointSelection[1], -1);
    EXPECT_EQ(options.paranPoint, 1);
}

TEST_F(OptionCommandsTest, ClearEclipseIsEnabledWithAnEclipseAndTakesItAway) {
    selectEclipse = [] { calls.emplace_back("eclipse"); };
    EXPECT_FALSE(Enabled("&Eclipse", "&Clear Eclipse"));
    session.EclipseNumber = 3;
    EXPECT_TRUE(Enabled("&Eclipse", "&Clear Eclipse"));
    EXPECT_EQ(Run("&Eclipse", "&Clear Eclipse"), "lines");
    EXPECT_EQ(session.EclipseNumber, 0);
    EXPECT_EQ(Run("&Eclipse", "&Select Eclipse..."), "none");
    EXPECT_EQ(calls, Words{"eclipse"});
}

// ---- Reports ----

TEST_F(OptionCommandsTest, TheFirstFourReportsNeedAChart) {
    openReport = [](std::int16_t report) { calls.push_back(std::to_string(report)); };
    const Words captions = {"&Map Parans...", "&Local Parans...", "&City Directions...",
                            "&Relocation Interpretations...", "Chart &Details..."};
    for (std::size_t i = 0; i < captions.size(); ++i) {
        EXPECT_EQ(Enabled("&Reports", captions[i]), i == 4) << captions[i];
    }
    session.ChartNumber = 1;
    for (const std::string& caption : captions) {
        EXPECT_TRUE(Enabled("&Reports", caption));
        EXPECT_EQ(Run("&Reports", caption), "none");
    }
    EXPECT_EQ(calls, (Words{"1", "2", "3", "4", "5"}));
}

const std::string kAskWordProcessor =
    "InputBox|Word Processor|Please enter the full path and filename of the Word Processor which "
    "you wish to use when viewing reports.|";

TEST_F(OptionCommandsTest, AWordProcessorThatIsMissingIsRefusedAndWriteIsNot) {
    const std::string there = folder.Write("word", "program");
    const std::string refusal =
        "MessageBox|Orvantis|Cannot find this file. Please try again|Ok|Exclamation";
    TestShell().textAnswers = {folder.File("gone"), there};
    EXPECT_EQ(Run("&Reports", "&Word Processor..."), "none");
    EXPECT_EQ(Log(),
              (Words{kAskWordProcessor + "WRITE.EXE", refusal, kAskWordProcessor + "WRITE.EXE"}));
    EXPECT_EQ(options.wordProcessor, there);
    TestShell().textAnswers = {"write.exe", "WRITE.EXE"};
    Run("&Reports", "&Word Processor...");
    EXPECT_EQ(Log(), (Words{kAskWordProcessor + there, refusal, kAskWordProcessor + there}))
        << "that name as it stands, and no other";
    EXPECT_EQ(options.wordProcessor, "WRITE.EXE");
}

TEST_F(OptionCommandsTest, AWordProcessorsPathIsShownInTheCodePageAndKeptInThePlatformsBytes) {
    const std::string there = folder.Write(
        "\xC3\xA9"
        "crire",
        "program");
    TestShell().textAnswers = {folder.File("\xE9"
                                           "crire"),
                               folder.File("\xE9"
                                           "crire")};
    Run("&Reports", "&Word Processor...");
    EXPECT_EQ(options.wordProcessor, there);
    Log();
    Run("&Reports", "&Word Processor...");
    EXPECT_EQ(Log(), Words{kAskWordProcessor + folder.File("\xE9"
                                                           "crire")});
    EXPECT_EQ(options.wordProcessor, there);
}

TEST_F(OptionCommandsTest, AWordProcessorWhosePathTheBoxCannotShowStaysWhenItIsLeft) {
    const std::string there = folder.Write("\xC4\x80", "program");  // not in the code page
    options.wordProcessor = there;
    TestShell().textAnswers = {folder.File("?")};
    Run("&Reports", "&Word Processor...");
    EXPECT_EQ(Log(), Words{kAskWordProcessor + folder.File("?")});
    EXPECT_EQ(options.wordProcessor, there);
}

TEST_F(OptionCommandsTest, AnEmptyWordProcessorOrACancelStops) {
    TestShell().textAnswers = {"", std::nullopt};
    for (int i = 0; i < 2; ++i) Run("&Reports", "&Word Processor...");
    EXPECT_EQ(options.wordProcessor, "WRITE.EXE");
    EXPECT_EQ(Log().size(), 2U);
}

TEST_F(OptionCommandsTest, RichTextFormatTogglesItsMark) {
    EXPECT_TRUE(Checked("&Reports", "Rich Text Format"));
    EXPECT_EQ(Run("&Reports", "Rich Text Format"), "none");
    EXPECT_EQ(options.rtfOn, 0);
    EXPECT_FALSE(Checked("&Reports", "Rich Text Format"));
}

// ---- "&Lines" ----

TEST_F(OptionCommandsTest, TheHiddenLineEntriesFollowTheLineStyles) {
    const Words captions = {
        "MC",          "IC",           "Rise",    "Set",      "Parans (RS/RS)", "Parans (RS/Culm)",
        "Local Space", "Local Houses", "Horizon", "Ecliptic", "Signs"};
    for (std::int16_t type = 1; type <= 11; ++type) {
        const std::string& caption = captions[static_cast<std::size_t>(type - 1)];
        Flag& displayed = settings.lineStyle[static_cast<std::size_t>(type)].displayed;
        for (int turn = 0; turn < 2; ++turn) {
            const bool before = displayed != 0;
            EXPECT_EQ(Checked("&Lines", caption, type), before) << caption;
            EXPECT_EQ(Run("&Lines", caption, type), "none") << "the picture waits for ReDraw";
            EXPECT_EQ(displayed != 0, !before) << caption;
        }
        EXPECT_FALSE(Look("&Lines", caption, type).visible);
    }
    EXPECT_EQ(Run("&Lines", "ReDraw"), "full");
}

TEST_F(OptionCommandsTest, TheLineTypeModeRenamesTwoEntries) {
    EXPECT_TRUE(Checked("&Lines", "&Rise/Set"));
    EXPECT_EQ(Run("&Lines", "&Asc/Dsc"), "lines");
    EXPECT_EQ(options.lineMode, 2);
    EXPECT_EQ(Look("&Lines", "Rise").caption, "Asc");
    EXPECT_EQ(Look("&Lines", "Set").caption, "Dsc");
    EXPECT_TRUE(Checked("&Lines", "&Asc/Dsc"));
    EXPECT_EQ(Run("&Lines", "&Rise/Set"), "lines");
    EXPECT_EQ(options.lineMode, 1);
    EXPECT_EQ(Look("&Lines", "Rise").caption, "Rise");
    EXPECT_EQ(Look("&Lines", "Set").caption, "Set");
}

// ---- "&Options" ----

TEST_F(OptionCommandsTest, TheMouseModeEntriesMoveTheMark) {
    relocateChart = [](double, double) {};
    for (std::int16_t mode = 5; mode >= 0; --mode) {
        EXPECT_EQ(Opt(MouseModeCaption(mode), mode), "none");
        EXPECT_EQ(mouseState.mode, mode);
        for (std::int16_t other = 0; other < 6; ++other) {
            EXPECT_EQ(LookOf(*FindCommand("&Options", MouseModeCaption(other))).checked,
                      other == mode);
        }
    }
}

TEST_F(OptionCommandsTest, TextFontStartsFromTheFontInUseAndIsTakenOver) {
    settings.textFontName = "Sans";
    settings.textFontSize = 10;
    settings.textFontBold = kTrue;
    TestShell().fontAnswers = {
        Font{"A font with a name of more than thirty characters", 12.5F, false, true}};
    EXPECT_EQ(Opt("&Text Font..."), "full");
    EXPECT_EQ(Log(), Words{"ChooseFont|Sans|10.000000|bold"});
    EXPECT_EQ(settings.textFontName, "A font with a name of more tha");
    EXPECT_EQ(settings.textFontSize, 12.5F);
    EXPECT_EQ(settings.textFontBold, 0);
    EXPECT_EQ(settings.textFontItalic, -1);
    EXPECT_EQ(Opt("&Text Font..."), "none") << "cancelled";
    EXPECT_EQ(settings.textFontSize, 12.5F);
}

TEST_F(OptionCommandsTest, TogglesTurnTheirCaptionsAndPlotInFull) {
    const struct {
        std::string words;
        std::string row;
        Flag Options::*flag;
        bool marked;
    } rows[] = {
        {"&Extra Line Annotation", "&Extra Line Annotation On", &Options::extraAnnotation, true},
        {"Line &Numbers", "Line &Numbers Off", &Options::lineNumbers, false},
        {"&Fill Points", "&Fill Points Off", &Options::fillPoints, false}};
    for (const auto& row : rows) {
        for (int turn = 0; turn < 2; ++turn) {
            const bool on = options.*row.flag != 0;
            EXPECT_EQ(Look("&Options", row.row).caption, row.words + (on ? " On" : " Off"));
            EXPECT_EQ(Checked("&Options", row.row), on && row.marked);
            EXPECT_EQ(Opt(row.row), "full");
            EXPECT_EQ(options.*row.flag, on ? kFalse : kTrue);
        }
    }
}

TEST_F(OptionCommandsTest, SettingsDialogsAreOpenedByTheirConnectionPoints) {
    showPrefsForm = [](PrefsForm& form) {
        calls.push_back("prefs " + std::to_string(form.landColour));
        return false;
    };
    showSaveSettingsForm = [] {
        calls.emplace_back("save settings");
        return true;
    };
    openDumpForm = [] { calls.emplace_back("dump"); };
    settings.mapBackColour = 77;
    for (const char* caption :
         {"&Edit Settings...", "&Save Settings...", "&Dump && Edit Map Lines..."}) {
        EXPECT_EQ(Opt(caption), "none") << caption;
    }
    EXPECT_EQ(calls, (Words{"prefs 77", "save settings", "dump"}));
}

TEST_F(OptionCommandsTest, RestoreSettingsReadsTheChosenFileAndPlotsOnce) {
    settings.mapBackColour = 1234;
    const std::string path = folder.File("mine.ovs");
    ASSERT_TRUE(SaveSettings(path, "Mine"));
    settings = {};
    TestShell().fileAnswers = {path};
    EXPECT_EQ(Opt("&Restore Settings..."), "full");
    EXPECT_EQ(Log(), Words{"ChooseFile|Select Settings File to Restore|*.ovs|open"});
    EXPECT_EQ(settings.mapBackColour, 1234);
    EXPECT_EQ(session.SettingsName, "mine");
}

TEST_F(OptionCommandsTest, RestoreSettingsCancelledOrOfAShortFileEndsInNone) {
    EXPECT_EQ(Opt("&Restore Settings..."), "none");
    TestShell().fileAnswers = {folder.Write("short.ovs", "short")};
    EXPECT_EQ(Opt("&Restore Settings..."), "none");
    EXPECT_EQ(settings.mapBackColour, Settings().mapBackColour);
}

TEST_F(OptionCommandsTest, EachHouseSystemMovesTheMark) {
    for (std::int16_t system = 1; system <= 9; ++system) {
        const Command* row = nullptr;
        for (const Command& command : Commands()) {
            if (command.submenu == "&House System" && command.number == system) row = &command;
        }
        ASSERT_NE(row, nullptr);
        Plots().clear();
        RunCommand(*row);
        EXPECT_TRUE(Plots().empty());
        EXPECT_EQ(options.houseSystem, system);
        EXPECT_TRUE(LookOf(*row).checked);
    }
    EXPECT_FALSE(Checked("&Options", "Placidus"));
}

TEST_F(OptionCommandsTest, AHouseSystemRecalculatesTheChartOnDisplay) {
    calcChart[1].Lon[22] = 10;
    calcChart[1].Lon[23] = 275;
    calcChart[1].HouseSystem = 5;
    EXPECT_EQ(Opt("Equal", 9), "none");
    EXPECT_EQ(calcChart[1].HouseSystem, 5) << "no chart is on display";
    session.ChartNumber = 1;
    EXPECT_EQ(Opt("Equal", 9), "none");
    EXPECT_EQ(calcChart[1].HouseSystem, 9);
    EXPECT_EQ(calcChart[1].Cusp[1], 10);
    EXPECT_EQ(calcChart[1].Cusp[2], 40) << "equal houses count from the Ascendant";
}

// A chart of 31 December 1992, 14:29 UT, at 35S50 138E30.
void CalculateInto(std::int16_t slot, std::int16_t houseSystem) {
    Format1Record record;
    record.day = 31;
    record.month = 12;
    record.year = 1992;
    record.hour = 14;
    record.minute = 29;
    record.latDegrees = 35;
    record.latMinutes = 50;
    record.longDegrees = 138;
    record.longMinutes = 30;
    record.houseCode = static_cast<std::uint8_t>(houseSystem);
    record.ayanamsaCode = 1;
    ASSERT_EQ(FileChartToCalcChart(record, slot, kFalse), kFalse);
}

TEST_F(OptionCommandsTest, AHouseSystemBringsTheNodeAndVulcanRulesInForceIntoTheChart) {
    OpenSwissEphemeris(kEphemeris, "");
    CalculateInto(1, house_system::kPlacidus);
    session.ChartNumber = 1;
    const CalcChart before = calcChart[1];
    EXPECT_EQ(Opt("&Mean", kFalse), "none");
    EXPECT_EQ(calcChart[1].Lon, before.Lon) << "the rule alone touches no chart";
    EXPECT_EQ(Opt("&D.Baker", kFalse), "none");
    EXPECT_EQ(Opt("Equal", 9), "none");
    EXPECT_TRUE(Plots().empty());

    const CalcChart after = calcChart[1];
    EXPECT_GT(std::abs(after.Lon[20] - before.Lon[20]), 0.01);
    EXPECT_EQ(after.TrueNodeFlag, kFalse);
    CalculateInto(2, house_system::kEqual);
    for (std::size_t n = 1; n <= 36; ++n) {
        EXPECT_NEAR(after.Lon[n], calcChart[2].Lon[n], 1e-6) << n;
        EXPECT_NEAR(after.RA[n], calcChart[2].RA[n], 1e-4) << n;
    }
    for (std::size_t n = 1; n <= 12; ++n) EXPECT_NEAR(after.Cusp[n], calcChart[2].Cusp[n], 1e-6);
    EXPECT_EQ(after.DateText, before.DateText);
}

TEST_F(OptionCommandsTest, AChartThatIsOfNoMomentGetsItsHousesAlone) {
    OpenSwissEphemeris(kEphemeris, "");
    CalculateInto(1, house_system::kPlacidus);
    session.ChartNumber = 1;
    calcChart[1].ChartType = 5;
    calcChart[1].ChartSubType = 1;
    options.trueNode = kFalse;
    const CalcChart before = calcChart[1];
    EXPECT_EQ(Opt("Equal", 9), "none");
    EXPECT_EQ(calcChart[1].Lon, before.Lon);
    EXPECT_NE(calcChart[1].Cusp, before.Cusp);
}

TEST_F(OptionCommandsTest, EachAyanamsaMovesTheMarkAndTouchesNoChart) {
    session.ChartNumber = 1;
    calcChart[1].Zodiac = 1;
    const Words captions = {
        "&Tropical (Normal)", "&Fagan-Allen",  "&Lahiri",     "&DeLuce", "&Raman",
        "&Usha-Shashi",       "&Krishnamurti", "Dj&whal Khul"};
    for (std::int16_t zodiac = 8; zodiac >= 1; --zodiac) {
        EXPECT_EQ(Opt(captions[static_cast<std::size_t>(zodiac - 1)], zodiac), "none");
        EXPECT_EQ(options.ayanamsa, zodiac);
        for (std::int16_t other = 1; other <= 8; ++other) {
            EXPECT_EQ(Checked("&Options", captions[static_cast<std::size_t>(other - 1)], other),
                      other == zodiac);
        }
    }
    EXPECT_EQ(calcChart[1].Zodiac, 1);
}

TEST_F(OptionCommandsTest, NodeAndVulcanMoveTheirMarks) {
    const struct {
        std::string caption;
        Flag Options::*flag;
        Flag value;
    } rows[] = {{"&Mean", &Options::trueNode, 0},
                {"&True", &Options::trueNode, -1},
                {"&D.Baker", &Options::vulcWeston, 0},
                {"&L.H.Weston", &Options::vulcWeston, -1}};
    for (const auto& row : rows) {
        EXPECT_FALSE(Checked("&Options", row.caption)) << row.caption;
        EXPECT_EQ(Opt(row.caption), "none");
        EXPECT_EQ(options.*row.flag, row.value);
        EXPECT_TRUE(Checked("&Options", row.caption)) << row.caption;
    }
}

// ---- The atlas ----

const std::string kInstall =
    "MessageBox|Install Atlas?|The ACS Atlas is either not present or not correctly installed for "
    "use with Windows. If it is already installed in DOS, and you wish to install it for Windows, "
    "then select the OK button.|OkCancel|Question";
const std::string kAtlasPath =
    "InputBox|ACS Atlas Path|Please enter the full path of the directory in which the ACS Atlas "
    "has been installed.|c:\\ATLAS\\ATLAS";

class AtlasChoice : public OptionCommandsTest {
  protected:
    void SetUp() override {
        OptionCommandsTest::SetUp();
        useAcsAtlas = [] { calls.emplace_back("atlas"); };
    }
};

TEST_F(AtlasChoice, AnAtlasInPlaceIsTakenWithoutAQuestion) {
    std::filesystem::create_directories(folder.File("acs"));
    folder.Write("acs/usaatl.bin", "atlas");
    folder.Write("acsatlas.ini", "[ACSATLAS]\r\npath=" + folder.File("acs") + "\r\n");
    EXPECT_EQ(Opt("&ACS Atlas"), "none");
    EXPECT_EQ(options.acsAtlas, -1);
    EXPECT_TRUE(Checked("&Options", "&ACS Atlas"));
    EXPECT_TRUE(Log().empty());
    EXPECT_EQ(calls, Words{"atlas"});
    EXPECT_EQ(Opt("&Orvantis"), "none");
    EXPECT_EQ(options.acsAtlas, 0);
}

TEST_F(AtlasChoice, ARefusalToInstallLeavesTheChoiceAtZero) {
    TestShell().boxAnswers = {BoxAnswer::Cancel};
    EXPECT_EQ(Opt("&ACS Atlas"), "none");
    EXPECT_EQ(Log(), Words{kInstall});
    EXPECT_EQ(options.acsAtlas, 0);
    EXPECT_TRUE(calls.empty());
}

TEST_F(AtlasChoice, AnAtlasThatIsFoundWhereTheUserSaysIsNotedInItsIni) {
    std::filesystem::create_directories(folder.File("acs"));
    folder.Write("acs/intatl.bin", "atlas");
    TestShell().textAnswers = {folder.File("acs")};
    EXPECT_EQ(Opt("&ACS Atlas"), "none");
    EXPECT_EQ(Log(), (Words{kInstall, kAtlasPath}));
    EXPECT_EQ(options.acsAtlas, -1);
    const Bytes ini = FileBytes(folder.File("acsatlas.ini"));
    EXPECT_EQ(std::string(ini.begin(), ini.end()),
              "[ACSATLAS]\r\npath=" + folder.File("acs") + "/\r\nInt=yes\r\nUSA=no\r\n");
    options.acsAtlas = kFalse;
    EXPECT_EQ(Opt("&ACS Atlas"), "none");
    EXPECT_TRUE(Log().empty()) << "the note is found the next time";
    EXPECT_EQ(options.acsAtlas, -1);
}

TEST_F(AtlasChoice, AFolderBeyondAsciiIsTypedInTheCodePageAndNotedInThePlatformsBytes) {
    const std::string acs = folder.File("\xC3\x84tlas");
    std::filesystem::create_directories(acs);
    folder.Write("\xC3\x84tlas/intatl.bin", "atlas");
    TestShell().textAnswers = {folder.File("\xC4tlas")};
    EXPECT_EQ(Opt("&ACS Atlas"), "none");
    EXPECT_EQ(options.acsAtlas, -1);
    const Bytes ini = FileBytes(folder.File("acsatlas.ini"));
    EXPECT_EQ(std::string(ini.begin(), ini.end()),
              "[ACSATLAS]\r\npath=" + acs + "/\r\nInt=yes\r\nUSA=no\r\n");
    Log();
    EXPECT_EQ(Opt("&Orvantis"), "none");
    EXPECT_EQ(Opt("&ACS Atlas"), "none");
    EXPECT_TRUE(Log().empty()) << "the note is found the next time";
    EXPECT_EQ(options.acsAtlas, -1);
}

TEST_F(AtlasChoice, BothFilesAbsentReturnTheMarkToOrvantis) {
    TestShell().textAnswers = {folder.File("nowhere")};
    EXPECT_EQ(Opt("&ACS Atlas"), "none");
    EXPECT_EQ(Log(), (Words{kInstall, kAtlasPath,
                            "MessageBox|Atlas Not Installed|The ACS Atlas was not found in the "
                            "specified directory.|Ok|Exclamation"}));
    EXPECT_TRUE(Checked("&Options", "&Orvantis"));
    EXPECT_FALSE(Checked("&Options", "&ACS Atlas"));
    EXPECT_FALSE(FileExists(folder.File("acsatlas.ini")));
    EXPECT_EQ(Opt("&ACS Atlas"), "none");
    EXPECT_EQ(options.acsAtlas, 0) << "no path was given";
}

// ---- Saving the settings ----

TEST_F(OptionCommandsTest, SettingsAreSavedUnderANameOfUpToEightCharacters) {
    session.SettingsName = "default";
    settings.description = "Colours";
    SaveSettingsForm form = OpenSaveSettings();
    EXPECT_EQ(form.folder, folder.Path());
    EXPECT_EQ(form.name, "default");
    EXPECT_EQ(form.description, "Colours");
    form.name = " eight888 ";
    form.description = " Mine ";
    EXPECT_TRUE(AcceptSaveSettings(form));
    EXPECT_EQ(FileBytes(folder.File("eight888.ovs")).size(), 340U);
    EXPECT_EQ(settings.description, "Mine");
    EXPECT_TRUE(Log().empty());

    for (const char* name : {"ninechars", "", "a.b", "a\\b"}) {
        form.name = name;
        EXPECT_FALSE(AcceptSaveSettings(form)) << name;
        EXPECT_EQ(Log(), Words{"MessageBox|File Error|File name is not valid. Please enter a name "
                               "with up to 8 characters with no extension.|Ok|Exclamation"});
    }
}

TEST_F(OptionCommandsTest, SettingsOfAnExistingNameAreOverwrittenAfterAQuestion) {
    SaveSettingsForm form = OpenSaveSettings();
    form.name = "old";
    folder.Write("old.ovs", "old");
    TestShell().boxAnswers = {BoxAnswer::No, BoxAnswer::Yes};
    EXPECT_FALSE(AcceptSaveSettings(form));
    EXPECT_EQ(Log(), Words{"MessageBox|File Exists|A file with this name already exists. Do you "
                           "wish to overwrite it?|YesNo|Question"});
    EXPECT_EQ(FileBytes(folder.File("old.ovs")).size(), 3U);
    EXPECT_TRUE(AcceptSaveSettings(form));
    EXPECT_EQ(FileBytes(folder.File("old.ovs")).size(), 340U);
}

TEST_F(OptionCommandsTest, SettingsThatCantBeWrittenLeaveTheFormAndTheDescription) {
    settings.description = "Before";
    SaveSettingsForm form{folder.File("none"), "x", "After"};
    EXPECT_FALSE(AcceptSaveSettings(form));
    EXPECT_EQ(settings.description, "Before");
    EXPECT_EQ(TestShell().boxes.size(), 1U);
}

// ---- "&Help" ----

TEST_F(OptionCommandsTest, RepairAsksRebuildsPlotsOnceAndTells) {
    SessionFiles files;
    session.ProgramDir = files.paths.shippedData + "/";
    const std::string question =
        "MessageBox|Orvantis|Regenerate map database files?\\r\\n\\r\\nIf your maps appear to be "
        "corrupted, then select OK to attempt to fix the problem. This will take a few "
        "moments.|OkCancel|Question";
    TestShell().boxAnswers = {BoxAnswer::Cancel, BoxAnswer::Ok};
    EXPECT_EQ(Run("&Help", "&Repair Map Database"), "none");
    EXPECT_EQ(Log(), Words{question});
    EXPECT_EQ(Run("&Help", "&Repair Map Database"), "full");
    const Words log = Log();
    EXPECT_EQ(log.front(), question);
    EXPECT_EQ(log.back(),
              "MessageBox|Orvantis|Map database files have been "
              "regenerated.|Ok|Information");
    EXPECT_TRUE(FileExists(LevelPath(5)));
    EXPECT_EQ(pointDatabase.count, 2);
}

TEST_F(OptionCommandsTest, AboutShowsTheProgramsNameAndVersion) {
    session.VersionText = "1.2.3";
    EXPECT_EQ(Run("&Help", "&About Orvantis"), "none");
    EXPECT_EQ(Log(), Words{"MessageBox|About Orvantis|Orvantis 1.2.3|Ok|Information"});
    openHelp = [] { calls.emplace_back("help"); };
    EXPECT_EQ(Run("&Help", "&Contents"), "none");
    EXPECT_EQ(calls, Words{"help"});
}

}  // namespace
}  // namespace orvantis

#include "session/ini_settings.h"

#include <algorithm>
#include <array>
#include <filesystem>
#include <gtest/gtest.h>

#include "session/files.h"
#include "session/resources.h"
#include "session/session_state.h"
#include "session/settings.h"
#include "support/failing_disk.h"
#include "support/reset_all.h"
#include "support/temp_folder.h"
#include "text/run_time_error.h"
#include "text/text_state.h"
#include "text/zones.h"

namespace orvantis {
namespace {

namespace fs = std::filesystem;

class IniSettings : public ::testing::Test {
  protected:
    void SetUp() override {
        ResetAll();
        for (const char* folder : {"config", "program/Userdata", "program/Interps", "mine"}) {
            fs::create_directories(folder_.File(folder));
        }
        folder_.Write("program/Userdata/timezone.fil", "EST  Eastern                       +5:00");
        session.IniDir = folder_.Path() + "config\\";
        session.ProgramDir = ProgramPath(folder_.File("program/"));
        session.OwnIni = "ORVANT2.INI";
        session.SiblingIni = "KELVANE9.INI";
    }

    // Reads all keys, with these in the own INI and the sibling's.
    void Read(const std::string& own, const std::string& sibling = "") {
        folder_.Write("config/ORVANT2.INI", "[Orvantis]\r\n" + own);
        folder_.Write("config/KELVANE9.INI", sibling);
        TestShell().log.clear();
        ReadIniSettings();
        EXPECT_EQ(PendingRunTimeError(), 0);
    }

    std::string Own() const {
        const Bytes bytes = FileBytes(folder_.File("config/ORVANT2.INI"));
        return {bytes.begin(), bytes.end()};
    }

    std::string Program(const std::string& rest) const { return session.ProgramDir + rest; }

    TempFolder folder_;
};

TEST_F(IniSettings, WithoutAnyIniEveryKeyHasItsDefault) {
    options = {};
    options.ayanamsa = 7;
    options.clockStep = 1;
    session.SettingsPath = "old";
    session.RecentMaps[3] = "old";
    ReadIniSettings();
    EXPECT_EQ(textState.Clock24, kFalse);
    EXPECT_EQ(textState.MonthFirst, kTrue);
    EXPECT_EQ(session.UserDataPath, Program("Userdata\\"));
    EXPECT_EQ(session.InterpPath, Program("Interps\\"));
    EXPECT_EQ(session.PointFile, Program("Userdata\\ovdeflt.pts"));
    EXPECT_EQ(session.ColourFile, Program("Userdata\\brimwell.cpt"));
    EXPECT_EQ(session.UserColourFile, Program("Userdata\\orvantis.pco"));
    EXPECT_EQ(session.StarFile, Program("Userdata\\starfile.fst"));
    EXPECT_EQ(session.RecentCount, 0);
    EXPECT_EQ(session.RecentMaps[3], "");
    EXPECT_EQ(session.SettingsPath, "");
    EXPECT_EQ(options.ayanamsa, 1);
    EXPECT_EQ(options.userSVP, 0);
    EXPECT_EQ(options.defaultPlace, "Nowhere");
    EXPECT_EQ(options.defaultCountry, "Nowhere");
    EXPECT_EQ(options.defaultTimeZone, "GMT +0:00");
    EXPECT_EQ(options.defaultLatitude, "00N00");
    EXPECT_EQ(options.defaultLongitude, "000W00");
    EXPECT_EQ(options.houseSystem, 5);
    EXPECT_EQ(options.trueNode, kTrue);
    EXPECT_EQ(options.vulcWeston, kTrue);
    EXPECT_EQ(options.eclipseStep, 25);
    EXPECT_EQ(options.acsAtlas, kFalse);
    EXPECT_EQ(options.acsEmbedded, kFalse);
    EXPECT_EQ(options.dayNight, kFalse);
    EXPECT_EQ(options.localLineExtent, 360);
    EXPECT_EQ(options.clockStep, 6);
    EXPECT_EQ(options.clockInterval, 10000);
    EXPECT_EQ(options.storeImages, kFalse);
    EXPECT_EQ(options.rtfOn, kTrue);
    EXPECT_EQ(options.wordProcessor, "WRITE.EXE");
    EXPECT_EQ(options.extraAnnotation, kTrue);
    EXPECT_EQ(options.repFontSize, 12);
    EXPECT_EQ(options.userTTOption, 0);
    EXPECT_EQ(options.geodeticAscDsc, kTrue);
    EXPECT_EQ(options.showAscOnHorizonChart, kFalse);
    EXPECT_EQ(options.paletteApplied, kFalse);
    EXPECT_FALSE(fs::exists(folder_.File("config/ORVANT2.INI")));
}

TEST_F(IniSettings, EveryKeyFeedsItsOption) {
    Read(
        "Ayanamsa=3\r\nPlace=Bern\r\nCountry=Switzerland\r\nTimeZone=CET -1:00\r\n"
        "Latitude=46N57\r\nLongitude=007E26\r\nHouseSystem=2\r\nTrueNode=0\r\nVulcWeston=0\r\n"
        "EclipseStep=10\r\nDayNight=-1\r\nLocalLineExtent=180\r\nStoreImages=-1\r\nRTFOn=0\r\n"
        "WordProcessor=lowriter --norestore\r\nExtraAnnotation=0\r\nRepFontSize=10.5\r\n"
        "UserTTOption=2\r\nGeodeticAscDsc=0\r\nShowAscOnHorizonChart=-1\r\n256Colors=-1\r\n",
        "[Kelvane]\r\nPointFileName=mine\r\nColPntFileName=tint\r\nStarFileName=bright\r\n"
        "UserSVP=335.25\r\nACSAtlas=-1\r\n[Orvantis]\r\nACSEmbedded=-1\r\n");
    EXPECT_EQ(options.ayanamsa, 3);
    EXPECT_EQ(options.defaultPlace, "Bern");
    EXPECT_EQ(options.defaultCountry, "Switzerland");
    EXPECT_EQ(options.defaultTimeZone, "CET -1:00");
    EXPECT_EQ(options.defaultLatitude, "46N57");
    EXPECT_EQ(options.defaultLongitude, "007E26");
    EXPECT_EQ(options.houseSystem, 2);
    EXPECT_EQ(options.trueNode, kFalse);
    EXPECT_EQ(options.vulcWeston, kFalse);
    EXPECT_EQ(options.eclipseStep, 10);
    EXPECT_EQ(options.dayNight, kTrue);
    EXPECT_EQ(options.localLineExtent, 180);
    EXPECT_EQ(options.storeImages, kTrue);
    EXPECT_EQ(options.rtfOn, kFalse);
    EXPECT_EQ(options.wordProcessor, "lowriter --norestore");
    EXPECT_EQ(options.extraAnnotation, kFalse);
    EXPECT_EQ(options.repFontSize, 10.5F);
    EXPECT_EQ(options.userTTOption, 2);
    EXPECT_EQ(options.geodeticAscDsc, kFalse);
    EXPECT_EQ(options.showAscOnHorizonChart, kTrue);
    EXPECT_EQ(options.paletteApplied, kTrue);
    EXPECT_EQ(session.PointFile, Program("Userdata\\mine.pts"));
    EXPECT_EQ(session.ColourFile, Program("Userdata\\tint.cpt"));
    EXPECT_EQ(session.StarFile, Program("Userdata\\bright.fst"));
    EXPECT_EQ(options.userSVP, 335.25);
    EXPECT_EQ(options.acsAtlas, kTrue);
    EXPECT_EQ(options.acsEmbedded, kTrue);
}

// One key of the own INI that holds a whole number within bounds.
TEST_F(IniSettings, WholeNumbersAreHeldWithinTheirBounds) {
    struct Row {
        const char* text;
        std::int16_t Options::*option;
        std::int16_t expected;
    };
    constexpr std::array<Row, 26> rows = {{
        {"HouseSystem=abc", &Options::houseSystem, 1},
        {"HouseSystem=0", &Options::houseSystem, 1},
        {"HouseSystem=9", &Options::houseSystem, 9},
        {"HouseSystem=10", &Options::houseSystem, 9},
        {"HouseSystem=99999", &Options::houseSystem, 9},
        {"HouseSystem=-9999", &Options::houseSystem, 1},
        {"HouseSystem=1e300", &Options::houseSystem, 9},
        {"HouseSystem=nan", &Options::houseSystem, 1},
        {"HouseSystem=2.5", &Options::houseSystem, 2},  // ties to even
        {"HouseSystem=3.5", &Options::houseSystem, 4},
        {"HouseSystem=123456789", &Options::houseSystem, 9},  // cut to 12345
        {"HouseSystem=", &Options::houseSystem, 1},
        {"EclipseStep=abc", &Options::eclipseStep, 5},
        {"EclipseStep=51", &Options::eclipseStep, 50},
        {"EclipseStep=000000000000000012", &Options::eclipseStep, 12},  // its width is 255
        {"LocalLineExtent=0", &Options::localLineExtent, 1},
        {"LocalLineExtent=361", &Options::localLineExtent, 360},
        {"LocalLineExtent=70000", &Options::localLineExtent, 360},
        {"Ayanamsa=0", &Options::ayanamsa, 1},
        {"Ayanamsa=8", &Options::ayanamsa, 8},
        {"Ayanamsa=10", &Options::ayanamsa, 8},
        {"UserTTOption=-1", &Options::userTTOption, 0},
        {"UserTTOption=4", &Options::userTTOption, 3},
        {"ClockStep=0", &Options::clockStep, 1},        // 1 s
        {"ClockStep=99999", &Options::clockStep, 500},  // 30000 s at 60000 ms
        {"RTFOn=7", &Options::rtfOn, -1},
    }};
    for (const Row& row : rows) {
        Read(std::string(row.text) + "\r\n");
        EXPECT_EQ(options.*row.option, row.expected) << row.text;
    }
}

TEST_F(IniSettings, AFlagIsTrueWhereItsNumberIsNotZero) {
    for (const char* text : {"TrueNode=1", "TrueNode=-1", "TrueNode=0.6", "TrueNode=99999"}) {
        Read(std::string(text) + "\r\n");
        EXPECT_EQ(options.trueNode, kTrue) << text;
    }
    for (const char* text : {"TrueNode=0", "TrueNode=", "TrueNode=yes", "TrueNode=0.4"}) {
        Read(std::string(text) + "\r\n");
        EXPECT_EQ(options.trueNode, kFalse) << text;
    }
}

TEST_F(IniSettings, TheFontOfReportsHas6To36Points) {
    Read("RepFontSize=3\r\n");
    EXPECT_EQ(options.repFontSize, 6);
    Read("RepFontSize=99\r\n");
    EXPECT_EQ(options.repFontSize, 36);
    Read("RepFontSize=abc\r\n");
    EXPECT_EQ(options.repFontSize, 6);
}

TEST_F(IniSettings, TextsAreCutToTheirWidths) {
    const std::string longText(300, 'x');
    Read("Place=" + longText + "\r\nTimeZone=" + longText + "\r\nLatitude=" + longText +
             "\r\nWordProcessor=" + longText + "\r\n",
         "[Kelvane]\r\nStarFileName=" + longText + "\r\n");
    EXPECT_EQ(options.defaultPlace, std::string(21, 'x'));
    EXPECT_EQ(options.defaultTimeZone, std::string(15, 'x'));
    EXPECT_EQ(options.defaultLatitude, std::string(12, 'x'));
    EXPECT_EQ(options.wordProcessor, std::string(255, 'x'));
    EXPECT_EQ(session.StarFile, Program("Userdata\\" + std::string(12, 'x') + ".fst"));
}

TEST_F(IniSettings, WordsAreReadInUtf8AndInCodePage1252) {
    Read("Place=Z\xC3\xBCrich\r\nCountry=Sch\xF6nland\r\n");
    EXPECT_EQ(options.defaultPlace, "Z\xFCrich");
    EXPECT_EQ(options.defaultCountry, "Sch\xF6nland");
}

TEST_F(IniSettings, TheRegionalChoicesComeFromTheDesktopsIniThenTheOwnThenTheDesktop) {
    struct Row {
        const char* desktopIni;
        const char* own;
        const char* desktop;
        Flag clock24;
        Flag monthFirst;
    };
    // Text of "iTime" and "iDate" alike in each place; null: not there.
    constexpr std::array<Row, 8> rows = {{
        {nullptr, nullptr, nullptr, kFalse, kTrue},  // "0"
        {nullptr, nullptr, "1", kTrue, kFalse},
        {nullptr, "0", "1", kFalse, kTrue},
        {"1", "0", "0", kTrue, kFalse},
        {"", "1", "0", kTrue, kFalse},
        {nullptr, nullptr, "2", kFalse, kTrue},    // year first
        {nullptr, nullptr, "123", kFalse, kTrue},  // cut to 12
        {nullptr, "abc", "1", kFalse, kTrue},
    }};
    const auto section = [](const char* text) {
        if (text == nullptr) return std::string();
        return "[intl]\r\niTime=" + std::string(text) + "\r\niDate=" + text + "\r\n";
    };
    for (const Row& row : rows) {
        folder_.Write("config/WIN.INI", section(row.desktopIni));
        TestShell().regional.clear();
        if (row.desktop != nullptr) {
            TestShell().regional = {{"iTime", row.desktop}, {"iDate", row.desktop}};
        }
        Read(section(row.own));
        const std::size_t number = static_cast<std::size_t>(&row - rows.data());
        EXPECT_EQ(textState.Clock24, row.clock24) << number;
        EXPECT_EQ(textState.MonthFirst, row.monthFirst) << number;
    }
}

std::string PathKeys(const std::string& path) {
    std::string keys = "UserDataPath=";
    keys.append(path).append("\r\nInterpPath=").append(path).append("\r\n");
    return keys;
}

TEST_F(IniSettings, AFolderOfTheUsersChoiceIsTakenWithOrWithoutItsBackslash) {
    folder_.Write("mine/timezone.fil", "");
    const std::string mine = ProgramPath(folder_.File("mine")) + "\\";
    for (const std::string& text : {folder_.File("mine"), folder_.File("mine/"), mine,
                                    ProgramPath(folder_.File("mine")), " " + mine + " "}) {
        Read(PathKeys(text));
        EXPECT_EQ(session.UserDataPath, mine) << text;
        EXPECT_EQ(session.InterpPath, mine) << text;
        EXPECT_EQ(session.PointFile, mine + "ovdeflt.pts");
    }
}

TEST_F(IniSettings, AFolderThatIsMissingOrEmptyGivesWayToTheDefaultAndItsKeyStays) {
    fs::create_directories(folder_.File("mine/folder"));
    folder_.Write("mine/.hidden", "x");
    folder_.Write("file", "x");
    for (const std::string& text : {folder_.File("none"), folder_.File("mine"),
                                    folder_.File("file"), std::string("C:\\data"), std::string()}) {
        const std::string keys = PathKeys(text);
        Read(keys);
        EXPECT_EQ(session.UserDataPath, Program("Userdata\\")) << text;
        EXPECT_EQ(session.InterpPath, Program("Interps\\")) << text;
        WriteIniSettings();
        EXPECT_NE(Own().find(keys), std::string::npos) << text;
    }
    EXPECT_TRUE(TestShell().boxes.empty());
}

TEST_F(IniSettings, ThePathsOfTheDataAreNeverMadeKeys) {
    ReadIniSettings();
    EXPECT_EQ(WriteIniSettings(), kFalse);
    for (const char* key : {"UserDataPath", "SystemDataPath", "InterpPath", "SwissEphemPath"}) {
        EXPECT_EQ(Own().find(key), std::string::npos) << key;
    }
}

TEST_F(IniSettings, RecentMapsStopAtTheFirstEmptyOne) {
    Read("LastFile1=/maps/a.ovm\r\nLastFile2=C:\\maps\\b.ovm\r\nLastFile4=/maps/d.ovm\r\n");
    EXPECT_EQ(session.RecentCount, 2);
    EXPECT_EQ(session.RecentMaps[0], "\\maps\\a.ovm");
    EXPECT_EQ(session.RecentMaps[1], "C:\\maps\\b.ovm");
    EXPECT_EQ(session.RecentMaps[3], "");
    Read("LastFile1=a\r\nLastFile2=b\r\nLastFile3=c\r\nLastFile4=d\r\nLastFile5=e\r\n");
    EXPECT_EQ(session.RecentCount, 4);
    EXPECT_EQ(session.RecentMaps[3], "d");
}

TEST_F(IniSettings, TheSiblingDecidesAboutTheAtlasUnlessItsKeyIsEmpty) {
    struct Row {
        const char* sibling;
        const char* own;
        Flag expected;
    };
    constexpr std::array<Row, 5> rows = {{
        {"", "ACSAtlas=-1\r\n", kFalse},  // no key reads as "0"
        {"[Kelvane]\r\nACSAtlas=0\r\n", "ACSAtlas=-1\r\n", kFalse},
        {"[Kelvane]\r\nACSAtlas=\r\n", "ACSAtlas=-1\r\n", kTrue},
        {"[Kelvane]\r\nACSAtlas=\r\n", "", kFalse},
        {"[Kelvane]\r\nACSAtlas=-1\r\n", "ACSAtlas=0\r\n", kTrue},
    }};
    for (const Row& row : rows) {
        Read(row.own, row.sibling);
        EXPECT_EQ(options.acsAtlas, row.expected) << row.sibling << row.own;
    }
}

TEST_F(IniSettings, TheClockStepIsHeldAsTicksOfATimer) {
    struct Row {
        std::int16_t seconds;
        std::int32_t interval;
        std::int16_t step;
    };
    constexpr std::array<Row, 13> rows = {{{1, 1000, 1},
                                           {9, 1000, 9},
                                           {10, 5000, 2},
                                           {12, 5000, 2},
                                           {29, 5000, 6},
                                           {30, 10000, 3},
                                           {35, 10000, 4},  // 3.5, ties to even
                                           {45, 10000, 4},  // 4.5
                                           {179, 10000, 18},
                                           {180, 60000, 3},
                                           {210, 60000, 4},
                                           {3600, 60000, 60},
                                           {30000, 60000, 500}}};
    for (const Row& row : rows) {
        TestShell().log.clear();
        SetClockStep(row.seconds);
        EXPECT_EQ(options.clockInterval, row.interval) << row.seconds;
        EXPECT_EQ(options.clockStep, row.step) << row.seconds;
        EXPECT_EQ(TestShell().log, std::vector<std::string>{"SetClockTimer|" +
                                                            std::to_string(row.interval) + "|off"});
    }
    session.AstroClockOn = kTrue;
    SetClockStep(5);
    EXPECT_EQ(TestShell().log.back(), "SetClockTimer|1000|on");
}

TEST_F(IniSettings, AClockStepThatDoesNotDivideComesBackChanged) {
    Read("ClockStep=45\r\n");
    WriteIniSettings();
    EXPECT_NE(Own().find("ClockStep=40\r\n"), std::string::npos);
    Read("ClockStep=60\r\n");
    WriteIniSettings();
    EXPECT_NE(Own().find("ClockStep=60\r\n"), std::string::npos);
}

TEST_F(IniSettings, TheMainWindowIsPlacedOnceBeforeTheTimerIsSet) {
    Read("WindowState=0\r\nTop=300\r\nLeft=150\r\nWidth=9000\r\nHeight=6000\r\n");
    const std::vector<std::string> expected = {"PlaceMainWindow|0|150|300|9000|6000",
                                               "SetPointer|2", "SetClockTimer|10000|off"};
    EXPECT_EQ(TestShell().log, expected);
}

TEST_F(IniSettings, TheMainWindowIsHeldWithinTheScreen) {
    struct Row {
        const char* keys;
        std::int16_t state;  // of the window before
        const char* placed;
    };
    // The screen has 28800 by 16200 twips.
    constexpr std::array<Row, 13> rows = {{
        {"", 0, "0|0|0|1000|1000"},
        {"", 2, "2|0|0|0|0"},
        {"", 1, "2|0|0|0|0"},
        {"WindowState=2\r\nTop=5\r\n", 0, "2|0|0|0|0"},
        {"WindowState=1\r\n", 0, "2|0|0|0|0"},
        {"WindowState=9\r\n", 0, "2|0|0|0|0"},
        {"WindowState=-3\r\n", 2, "0|0|0|1000|1000"},
        {"WindowState=\r\n", 2, "0|0|0|1000|1000"},
        {"Left=20000\r\n", 0, "0|16200|0|1000|1000"},  // the height holds it, also on wide screens
        {"Top=-5\r\nLeft=-1\r\n", 0, "0|0|0|1000|1000"},
        {"Top=99999\r\nWidth=40000\r\nHeight=40000\r\n", 0, "0|0|16200|28800|16200"},
        {"Width=1234567\r\n", 0, "0|0|0|28800|1000"},  // cut to 123456
        {"Top=abc\r\nWidth=1e9\r\n", 0, "0|0|0|28800|1000"},
    }};
    for (const Row& row : rows) {
        TestShell().place.state = row.state;
        Read(row.keys);
        EXPECT_EQ(TestShell().log[0], "PlaceMainWindow|" + std::string(row.placed)) << row.keys;
    }
}

TEST_F(IniSettings, ADisplayOf256ColoursStoresImagesUnlessTheKeySaysOtherwise) {
    TestShell().colours = 256;
    Read("");
    EXPECT_EQ(options.storeImages, kTrue);
    WriteIniSettings();
    EXPECT_NE(Own().find("256Colors=-1\r\n"), std::string::npos);
    Read("StoreImages=0\r\n");
    EXPECT_EQ(options.storeImages, kFalse);
    TestShell().colours = 257;
    Read("");
    EXPECT_EQ(options.storeImages, kFalse);
    WriteIniSettings();
    EXPECT_NE(Own().find("256Colors=0\r\n"), std::string::npos);
}

int marks = 0;
std::size_t wordsAtMarks = 0;

TEST_F(IniSettings, TheMenusAreMarkedAndThenTheListsAndZonesAreBuilt) {
    marks = 0;
    refreshMenuMarks = [] {
        ++marks;
        wordsAtMarks = chartWords.chartTypes.size();
    };
    Read("");
    EXPECT_EQ(marks, 1);
    EXPECT_EQ(wordsAtMarks, 0U);
    EXPECT_EQ(chartWords.chartTypes.size(), 16U);
    EXPECT_EQ(zones.ZoneCount, 1);
}

TEST_F(IniSettings, TheKeysAreWrittenInTheirOrder) {
    Read("");
    TestShell().place = {1, -75, 30, 9000, 6000};
    session.RecentMaps = {"\\maps\\a.ovm", "\\maps\\b.ovm", "unused", ""};
    session.RecentCount = 2;
    session.SettingsPath = "\\sets\\my.ovs";
    options.houseSystem = 9;
    options.trueNode = kFalse;
    options.ayanamsa = 4;
    options.localLineExtent = 90;
    fs::remove(folder_.File("config/ORVANT2.INI"));
    EXPECT_EQ(WriteIniSettings(), kFalse);
    EXPECT_EQ(Own(),
              "[Orvantis]\r\nWindowState=1\r\nLeft=-75\r\nTop=30\r\nWidth=9000\r\nHeight=6000\r\n"
              "LastFile1=/maps/a.ovm\r\nLastFile2=/maps/b.ovm\r\nPrefFile=/sets/my.ovs\r\n"
              "HouseSystem=9\r\nTrueNode=0\r\nVulcWeston=-1\r\nACSAtlas=0\r\nDayNight=0\r\n"
              "LocalLineExtent=90\r\nClockStep=60\r\nRTFOn=-1\r\nWordProcessor=WRITE.EXE\r\n"
              "ExtraAnnotation=-1\r\nAyanamsa=4\r\n256Colors=0\r\n");
}

TEST_F(IniSettings, WhatWasWrittenReadsBack) {
    Read("");
    session.RecentMaps = {ProgramPath(folder_.File("Z\xC3\xBCrich maps/a \"b\".ovm")), " x ", "",
                          ""};
    session.RecentCount = 2;
    session.SettingsPath = "\"quoted\"";
    options.houseSystem = 8;
    options.dayNight = kTrue;
    options.wordProcessor = "C:\\WORD.EXE";
    const auto maps = session.RecentMaps;
    EXPECT_EQ(WriteIniSettings(), kFalse);
    session.RecentMaps = {};
    session.SettingsPath = "";
    options = {};
    ReadIniSettings();
    EXPECT_EQ(session.RecentMaps, maps);
    EXPECT_EQ(session.SettingsPath, "\"quoted\"");
    EXPECT_EQ(options.houseSystem, 8);
    EXPECT_EQ(options.dayNight, kTrue);
    EXPECT_EQ(options.wordProcessor, "C:\\WORD.EXE");
}

TEST_F(IniSettings, ForeignKeysSurviveTheWriting) {
    const std::string before =
        "; mine\n[Other]\nA=1\n[Orvantis]\nSwissEphemPath=/ephe\n"
        "HouseSystem=3\nPlace=Bern\n";
    folder_.Write("config/ORVANT2.INI", before);
    ReadIniSettings();
    WriteIniSettings();
    EXPECT_EQ(Own().substr(0, before.size()), before);
}

TEST_F(IniSettings, AWriteThatFailsLeavesTheOptionsTheFileAndTheErrorsOfOthers) {
    Read("HouseSystem=3\r\n" + std::string(2000, ';') + "\r\n");
    const std::string before = Own();
    Flag failed = kFalse;
    {
        const FullDisk disk(500);
        failed = WriteIniSettings();
    }
    EXPECT_EQ(failed, kTrue);
    EXPECT_EQ(Own(), before);
    EXPECT_EQ(options.houseSystem, 3);
    EXPECT_EQ(PendingRunTimeError(), 0);
    EXPECT_TRUE(TestShell().boxes.empty());

    RaiseRunTimeError(error::kOverflow);
    fs::remove(folder_.File("config/ORVANT2.INI"));
    fs::create_directories(folder_.File("config/ORVANT2.INI"));
    EXPECT_EQ(WriteIniSettings(), kTrue);
    EXPECT_EQ(PendingRunTimeError(), error::kOverflow);
}

// A word of so many letters outside ASCII, in UTF-8 (two bytes each) and in the core's code page.
std::string Umlauts(std::size_t count) {
    std::string text;
    while (count-- > 0) text += "\xC3\xBC";
    return text;
}

TEST_F(IniSettings, WordsAndBaseNamesAreCutToTheirWidthsInCharacters) {
    const std::string word = Umlauts(300);
    Read("Place=" + word + "\r\nCountry=" + word + "\r\nTimeZone=" + word + "\r\nLatitude=" + word +
             "\r\nLongitude=" + word + "\r\nWordProcessor=" + word + "\r\n",
         "[Kelvane]\r\nPointFileName=" + word + "\r\nColPntFileName=" + word +
             "\r\nStarFileName=" + word + "\r\n");
    EXPECT_EQ(options.defaultPlace, std::string(21, '\xFC'));
    EXPECT_EQ(options.defaultCountry, std::string(21, '\xFC'));
    EXPECT_EQ(options.defaultTimeZone, std::string(15, '\xFC'));
    EXPECT_EQ(options.defaultLatitude, std::string(12, '\xFC'));
    EXPECT_EQ(options.defaultLongitude, std::string(12, '\xFC'));
    EXPECT_EQ(options.wordProcessor, Umlauts(255));
    EXPECT_EQ(session.PointFile, Program("Userdata\\" + Umlauts(255) + ".pts"));
    EXPECT_EQ(session.ColourFile, Program("Userdata\\" + Umlauts(255) + ".cpt"));
    EXPECT_EQ(session.StarFile, Program("Userdata\\" + Umlauts(12) + ".fst"));
}

TEST_F(IniSettings, PathsAreCutTo255CharactersNotBytes) {
    const std::string path = "/" + Umlauts(299);
    const std::string expected = "\\" + Umlauts(254);
    Read("LastFile1=" + path + "\r\nLastFile2=" + path + "\r\nLastFile3=" + path +
         "\r\nLastFile4=" + path + "\r\nPrefFile=" + path + "\r\n");
    for (const std::string& map : session.RecentMaps) EXPECT_EQ(map, expected);
    EXPECT_EQ(session.SettingsPath, expected);
}

TEST_F(IniSettings, FoldersOf255CharactersAreTakenAndLongerOnesAreCutToThem) {
    std::string folder = folder_.File("mine");
    std::size_t characters = folder.size();
    while (characters < 255) {
        const std::size_t part = std::min<std::size_t>(100, 254 - characters);
        folder += "/" + Umlauts(part);
        characters += part + 1;
        if (characters == 254) {  // no room for a separator and a letter
            folder += Umlauts(1);
            ++characters;
        }
    }
    fs::create_directories(folder);
    folder_.Write(folder.substr(folder_.Path().size()) + "/file", "x");
    for (const char* rest : {"", "xyz", "/none"}) {
        std::string keys = "UserDataPath=";
        keys.append(folder).append(rest).append("\r\nInterpPath=").append(folder).append(rest);
        Read(keys + "\r\n");
        EXPECT_EQ(session.UserDataPath, ProgramPath(folder) + "\\") << rest;
        EXPECT_EQ(session.InterpPath, ProgramPath(folder) + "\\") << rest;
    }
}

TEST_F(IniSettings, NumbersAreCutToTheirWidths) {
    struct Row {
        const char* key;
        Flag Options::*option;
    };
    constexpr std::array<Row, 9> rows = {{
        {"TrueNode", &Options::trueNode},
        {"VulcWeston", &Options::vulcWeston},
        {"DayNight", &Options::dayNight},
        {"StoreImages", &Options::storeImages},
        {"RTFOn", &Options::rtfOn},
        {"ExtraAnnotation", &Options::extraAnnotation},
        {"GeodeticAscDsc", &Options::geodeticAscDsc},
        {"ShowAscOnHorizonChart", &Options::showAscOnHorizonChart},
        {"256Colors", &Options::paletteApplied},
    }};
    for (const Row& row : rows) {
        Read(std::string(row.key) + "=00001\r\n");
        EXPECT_EQ(options.*row.option, kTrue) << row.key;
        Read(std::string(row.key) + "=000001\r\n");
        EXPECT_EQ(options.*row.option, kFalse) << row.key;
    }
    Read("RepFontSize=00020\r\n");
    EXPECT_EQ(options.repFontSize, 20);
    Read("RepFontSize=000020\r\n");
    EXPECT_EQ(options.repFontSize, 6);

    Read("", "[Kelvane]\r\nACSAtlas=000001\r\n");
    EXPECT_EQ(options.acsAtlas, kFalse);
    Read("ACSAtlas=000001\r\n", "[Kelvane]\r\nACSAtlas=\r\n");
    EXPECT_EQ(options.acsAtlas, kFalse);
    Read("", "[Orvantis]\r\nACSEmbedded=" + std::string(254, '0') + "1\r\n");
    EXPECT_EQ(options.acsEmbedded, kTrue);
    Read("", "[Orvantis]\r\nACSEmbedded=" + std::string(255, '0') + "1\r\n");
    EXPECT_EQ(options.acsEmbedded, kFalse);
    Read("", "[Kelvane]\r\nUserSVP=" + std::string(18, '0') + "123\r\n");
    EXPECT_EQ(options.userSVP, 12);
}

TEST_F(IniSettings, ABaseOfTheZodiacThatIsNoAngleReadsAsNone) {
    struct Row {
        const char* text;
        double expected;
    };
    constexpr std::array<Row, 12> rows = {{{"-24.5", -24.5},
                                           {"1e6", 1e6},
                                           {"-1000000", -1e6},
                                           {"1000000.001", 0},
                                           {"-1000001", 0},
                                           {"1e300", 0},
                                           {"-1e300", 0},
                                           {"1e999", 0},
                                           {"inf", 0},
                                           {"nan", 0},
                                           {"abc", 0},
                                           {"", 0}}};
    for (const Row& row : rows) {
        Read("", "[Kelvane]\r\nUserSVP=" + std::string(row.text) + "\r\n");
        EXPECT_EQ(options.userSVP, row.expected) << row.text;
    }
}

// What the keys feed, one word each.
std::vector<std::string> WhatWasRead() {
    std::vector<std::string> words = {
        session.UserDataPath,    session.InterpPath,      session.PointFile,
        session.ColourFile,      session.StarFile,        session.SettingsPath,
        session.RecentMaps[0],   options.defaultPlace,    options.defaultCountry,
        options.defaultTimeZone, options.defaultLatitude, options.defaultLongitude,
        options.wordProcessor};
    for (const double number : {static_cast<double>(options.ayanamsa),
                                options.userSVP,
                                static_cast<double>(options.houseSystem),
                                static_cast<double>(options.trueNode),
                                static_cast<double>(options.vulcWeston),
                                static_cast<double>(options.eclipseStep),
                                static_cast<double>(options.acsAtlas),
                                static_cast<double>(options.acsEmbedded),
                                static_cast<double>(options.dayNight),
                                static_cast<double>(options.localLineExtent),
                                static_cast<double>(options.clockStep),
                                static_cast<double>(options.storeImages),
                                static_cast<double>(options.rtfOn),
                                static_cast<double>(options.extraAnnotation),
                                static_cast<double>(options.repFontSize),
                                static_cast<double>(options.userTTOption),
                                static_cast<double>(options.geodeticAscDsc),
                                static_cast<double>(options.showAscOnHorizonChart),
                                static_cast<double>(options.paletteApplied),
                                static_cast<double>(textState.Clock24),
                                static_cast<double>(textState.MonthFirst)}) {
        words.push_back(std::to_string(number));
    }
    for (const std::string& line : TestShell().log) words.push_back(line);
    return words;
}

TEST_F(IniSettings, AKeyInAnotherFileOrSectionThanItsOwnIsNotRead) {
    folder_.Write("mine/file", "x");
    const std::string own =
        "UserDataPath=" + folder_.File("mine") + "\r\nInterpPath=" + folder_.File("mine") +
        "\r\nPrefFile=a\r\nLastFile1=a\r\nPlace=a\r\nCountry=a\r\nTimeZone=a\r\nLatitude=a\r\n"
        "Longitude=a\r\nWordProcessor=a\r\nAyanamsa=3\r\nHouseSystem=3\r\nTrueNode=0\r\n"
        "VulcWeston=0\r\nEclipseStep=9\r\nDayNight=1\r\nLocalLineExtent=9\r\nClockStep=9\r\n"
        "StoreImages=1\r\nRTFOn=0\r\nExtraAnnotation=0\r\nRepFontSize=9\r\nUserTTOption=1\r\n"
        "GeodeticAscDsc=0\r\nShowAscOnHorizonChart=1\r\n256Colors=1\r\nWindowState=2\r\nTop=1\r\n"
        "Left=1\r\nWidth=2000\r\nHeight=2000\r\nACSAtlas=1\r\n";
    const std::string regional = "iTime=1\r\niDate=1\r\n";
    const std::string sibling =
        "PointFileName=a\r\nColPntFileName=a\r\nStarFileName=a\r\nUserSVP=9\r\n";
    const std::string embedded = "ACSEmbedded=1\r\n";
    Read("");
    const std::vector<std::string> defaults = WhatWasRead();
    Read(sibling + embedded + regional + "[Kelvane]\r\n" + own + sibling + embedded + regional +
             "[Other]\r\n" + own + sibling + embedded + regional,
         "[Orvantis]\r\n" + own + sibling + regional + "[intl]\r\n" + regional + "[Other]\r\n" +
             own + sibling + embedded + "ACSAtlas=1\r\n");
    EXPECT_EQ(WhatWasRead(), defaults);

    // Each in its place changes what is read; the sibling's own section takes none but its own.
    Read(own + "[intl]\r\n" + regional,
         "[Kelvane]\r\n" + sibling + "ACSAtlas=1\r\n[Orvantis]\r\n" + embedded);
    const std::vector<std::string> read = WhatWasRead();
    for (std::size_t i = 0; i < 34; ++i) EXPECT_NE(read[i], defaults[i]) << i;
}

TEST_F(IniSettings, APathKeepsAllButLineBreaksNulsAndBackslashesOfItsNames) {
    struct Row {
        std::string path;
        std::string read;
    };
    const std::vector<Row> rows = {{"\\a;b=c]", "\\a;b=c]"},
                                   {" \" ' ", " \" ' "},
                                   {"\\\xFF\x01", "\\\xFF\x01"},
                                   {"\\a\r\nb", "\\a  b"},
                                   {std::string("\\a\0b", 4), "\\a"}};
    for (const Row& row : rows) {
        session.RecentMaps = {row.path, "", "", ""};
        session.RecentCount = 1;
        session.SettingsPath = row.path;
        fs::remove(folder_.File("config/ORVANT2.INI"));
        WriteIniSettings();
        ReadIniSettings();
        EXPECT_EQ(session.RecentMaps[0], row.read);
        EXPECT_EQ(session.SettingsPath, row.read);
    }
}

TEST_F(IniSettings, AnIniOfTenMegabytesOfOtherKeysGivesItsOwn) {
    std::string text;
    for (int i = 0; text.size() < 10'000'000; ++i) {
        text += "key" + std::to_string(i) + "=" + std::string(1000, 'x') + "\r\n";
    }
    Read(text + "HouseSystem=3\r\n");
    EXPECT_EQ(options.houseSystem, 3);
    EXPECT_EQ(options.ayanamsa, 1);
}

}  // namespace
}  // namespace orvantis

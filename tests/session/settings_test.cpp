#include "session/settings.h"

#include <algorithm>
#include <array>
#include <filesystem>
#include <gtest/gtest.h>

#include "session/save_settings.h"
#include "session/session_state.h"
#include "session/tables.h"
#include "support/failing_disk.h"
#include "support/paths.h"
#include "support/reset_all.h"
#include "support/temp_folder.h"
#include "text/bytes.h"
#include "text/run_time_error.h"
#include "text/strings.h"

namespace orvantis {
namespace {

namespace fs = std::filesystem;

class SettingsFiles : public ::testing::Test {
  protected:
    void SetUp() override { ResetAll(); }

    TempFolder folder_;
};

Bytes SelectionRecords(int count, std::int16_t selected) {
    Bytes bytes(static_cast<std::size_t>(count) * 22, ' ');
    for (int i = 0; i < count; ++i) {
        PutI16(&bytes[static_cast<std::size_t>(i) * 22 + 20], selected);
    }
    return bytes;
}

TEST_F(SettingsFiles, AShortSelectionFileSelectsTheMissingPoints) {
    LoadPointSelection(folder_.Write("a.pts", SelectionRecords(5, 0)));
    EXPECT_EQ(pointSelection[5], 0);
    EXPECT_EQ(pointSelection[6], -1);
    EXPECT_EQ(pointSelection[36], -1);
}

TEST_F(SettingsFiles, TheEarthAndTheAnglesAreNeverSelectedByAFile) {
    LoadPointSelection(folder_.Write("a.pts", SelectionRecords(36, -1)));
    for (const std::size_t p : {2, 22, 23, 24, 25, 26}) EXPECT_EQ(pointSelection[p], 0) << p;
    EXPECT_EQ(pointSelection[21], -1);
    EXPECT_EQ(pointSelection[27], -1);
}

TEST_F(SettingsFiles, AMissingSelectionFileChangesNothing) {
    pointSelection[7] = -1;
    LoadPointSelection(folder_.File("none.pts"));
    EXPECT_EQ(pointSelection[7], -1);
    EXPECT_TRUE(TestShell().log.empty());
}

TEST_F(SettingsFiles, ASavedSelectionHasNamesAndReadsBack) {
    pointSelection[1] = -1;
    pointSelection[12] = -1;
    const std::string path = folder_.File("a.pts");
    SavePointSelection(path);
    const Bytes bytes = FileBytes(path);
    ASSERT_EQ(bytes.size(), 792U);
    EXPECT_EQ(GetText(bytes.data(), 20), "The Moon            ");
    pointSelection = {};
    LoadPointSelection(path);
    EXPECT_EQ(pointSelection[1], -1);
    EXPECT_EQ(pointSelection[3], 0);
    EXPECT_EQ(pointSelection[12], -1);
}

TEST_F(SettingsFiles, AColourFileOf72BytesHoldsClassicColours) {
    Bytes bytes(72);
    PutI16(&bytes[0], 4);
    PutI16(&bytes[70], 14);
    LoadPointColours(folder_.Write("a.cpt", bytes));
    EXPECT_EQ(pointColour[1], 0x000080);
    EXPECT_EQ(pointColour[36], 0x00FFFF);
}

TEST_F(SettingsFiles, AColourFileOf73BytesHoldsWholeColoursWithTheLastRecordShort) {
    Bytes bytes(73);
    PutI32(&bytes[0], 0x123456);
    pointColour[19] = 77;
    LoadPointColours(folder_.Write("a.cpt", bytes));
    EXPECT_EQ(pointColour[1], 0x123456);
    EXPECT_EQ(pointColour[18], 0);
    EXPECT_EQ(pointColour[19], 77);
}

TEST_F(SettingsFiles, SavedColoursReadBack) {
    session.UserColourFile = folder_.File("orvantis.pco");
    pointColour[36] = 0xABCDEF;
    SaveUserPointColours();
    EXPECT_EQ(FileBytes(session.UserColourFile).size(), 144U);
    pointColour = {};
    LoadPointColours(session.UserColourFile);
    EXPECT_EQ(pointColour[36], 0xABCDEF);
}

TEST_F(SettingsFiles, ASettingsFileTooShortChangesNothing) {
    settings.symbolSize = 11;
    LoadSettings(folder_.Write("short.ovs", Bytes(339)), kFalse);
    EXPECT_EQ(settings.symbolSize, 11);
    EXPECT_TRUE(TestShell().log.empty());
    EXPECT_EQ(session.SettingsName, "short");
    EXPECT_EQ(PendingRunTimeError(), 0);
}

TEST_F(SettingsFiles, SettingsReadBackByteForByte) {
    settings.mapBackColour = 0x010203;
    settings.lineStyle[13].style = 4;
    settings.lineStyle[14].symbolShape = 1;
    settings.textFontName = "DejaVu Sans";
    settings.textFontItalic = kTrue;
    const std::string path = folder_.File("a.ovs");
    SaveSettings(path, "  My settings ");
    const Bytes first = FileBytes(path);
    ASSERT_EQ(first.size(), 340U);
    EXPECT_EQ(GetText(first.data(), 12), "My settings ");
    EXPECT_EQ(GetI32(&first[80]), 0x010203);
    EXPECT_EQ(GetI16(&first[88 + 13 * 14 + 10]), 4);
    EXPECT_EQ(GetF32(&first[298]), 9.0F);
    EXPECT_EQ(GetF32(&first[332]), 8.25F);

    settings = {};
    LoadSettings(path, kFalse);
    EXPECT_EQ(settings.description, "My settings");
    EXPECT_EQ(settings.lineStyle[14].symbolShape, 1);
    SaveSettings(folder_.File("b.ovs"), settings.description);
    EXPECT_EQ(FileBytes(folder_.File("b.ovs")), first);
}

TEST_F(SettingsFiles, WithoutASettingsFileTheBuiltInLineStylesApply) {
    EXPECT_EQ(settings.lineStyle[1].planetColour, -1);
    EXPECT_EQ(settings.lineStyle[2].style, 2);
    EXPECT_EQ(settings.lineStyle[3].colour, 0xFFFFFF);
    EXPECT_EQ(settings.lineStyle[7].thickness, 2);
    EXPECT_EQ(settings.lineStyle[12].colour, 0x0000FF);
    EXPECT_EQ(settings.mapBackColour, 0x80FF00);
    EXPECT_EQ(settings.specialFillColour, 0xC0C0C0);
}

TEST_F(SettingsFiles, ASelectionFileThatEndsWithinARecordSelectsThatPoint) {
    Bytes bytes = SelectionRecords(6, 0);
    bytes.pop_back();  // half of the flag of point 6
    LoadPointSelection(folder_.Write("a.pts", bytes));
    EXPECT_EQ(pointSelection[5], 0);
    EXPECT_EQ(pointSelection[6], -1);
    EXPECT_EQ(PendingRunTimeError(), 0);
    EXPECT_TRUE(TestShell().log.empty());
}

TEST_F(SettingsFiles, AnOverLongSelectionFileGivesItsFirst36Points) {
    LoadPointSelection(folder_.Write("a.pts", SelectionRecords(100, -1)));
    EXPECT_EQ(pointSelection[36], -1);
    for (std::size_t p = 37; p <= kPointCount; ++p) EXPECT_EQ(pointSelection[p], 0) << p;
}

TEST_F(SettingsFiles, TheSixteenClassicColoursAreThoseOfTheirNumbers) {
    // The palette of the 16 colour displays, red in the low byte: half bright 0x80, bright 0xFF.
    constexpr std::array<Colour, 16> expected = {
        0x000000, 0x800000, 0x008000, 0x808000, 0x000080, 0x800080, 0x008080, 0xC0C0C0,
        0x808080, 0xFF0000, 0x00FF00, 0xFFFF00, 0x0000FF, 0xFF00FF, 0x00FFFF, 0xFFFFFF};
    Bytes bytes(72);
    for (std::size_t i = 0; i < 36; ++i) PutI16(&bytes[i * 2], static_cast<std::int16_t>(i % 16));
    LoadPointColours(folder_.Write("a.cpt", bytes));
    for (std::size_t i = 0; i < 36; ++i) EXPECT_EQ(pointColour[i + 1], expected[i % 16]) << i;
}

TEST_F(SettingsFiles, AClassicColourNumberThatDoesNotExistIsBlack) {
    for (const int number : {-1, 16, -32768, 32767}) {
        EXPECT_EQ(ClassicColour(static_cast<std::int16_t>(number)), 0) << number;
    }
}

TEST_F(SettingsFiles, AMissingColourFileChangesNothing) {
    pointColour[7] = 0x123456;
    LoadPointColours(folder_.File("none.cpt"));
    EXPECT_EQ(pointColour[7], 0x123456);
    EXPECT_TRUE(TestShell().log.empty());
}

TEST_F(SettingsFiles, AShortColourFileLeavesTheColoursOfTheMissingPoints) {
    Bytes bytes(5);  // two classic colours and half of a third
    PutI16(&bytes[0], 12);
    PutI16(&bytes[2], 10);
    pointColour[3] = 77;
    pointColour[36] = 78;
    LoadPointColours(folder_.Write("a.cpt", bytes));
    EXPECT_EQ(pointColour[1], 0x0000FF);
    EXPECT_EQ(pointColour[2], 0x00FF00);
    EXPECT_EQ(pointColour[3], 77);
    EXPECT_EQ(pointColour[36], 78);
    EXPECT_EQ(PendingRunTimeError(), 0);
}

TEST_F(SettingsFiles, AnOverLongColourFileGivesItsFirst36Colours) {
    LoadPointColours(folder_.Write("a.cpt", Bytes(4000, 0x11)));
    EXPECT_EQ(pointColour[36], 0x11111111);
    EXPECT_EQ(pointColour[37], 0);
}

TEST_F(SettingsFiles, AMissingSettingsFileKeepsTheSettingsAndIsTold) {
    settings.symbolSize = 11;
    const std::string path = folder_.File("none.ovs");
    LoadSettings(path, kTrue);
    EXPECT_EQ(settings.symbolSize, 11);
    EXPECT_EQ(TestShell().boxes,
              std::vector<std::string>{"Open Error: " + path + " /  / File not found"});
    EXPECT_EQ(session.SettingsPath, path);
    EXPECT_EQ(session.SettingsName, "none");
}

int plots = 0;

TEST_F(SettingsFiles, NewSettingsArePlottedOnceIfThatIsWanted) {
    plots = 0;
    plotAfterSettings = [] { ++plots; };
    const std::string path = folder_.File("a.ovs");
    SaveSettings(path, "");
    LoadSettings(path, kFalse);
    EXPECT_EQ(plots, 0);
    LoadSettings(path, kTrue);
    EXPECT_EQ(plots, 1);
}

TEST_F(SettingsFiles, SavingLeavesThePathAndNameOfTheSettingsInUse) {
    session.SettingsPath = "C:\\old.ovs";
    session.SettingsName = "old";
    SaveSettings(folder_.File("new.ovs"), "New");
    EXPECT_EQ(FileBytes(folder_.File("new.ovs")).size(), 340U);
    EXPECT_EQ(session.SettingsPath, "C:\\old.ovs");
    EXPECT_EQ(session.SettingsName, "old");
    EXPECT_TRUE(TestShell().log.empty());
}

TEST_F(SettingsFiles, ANameOutsideAsciiIsSavedAgainUnderTheSameName) {
    session.UserDataPath = folder_.File("");
    const std::string path = folder_.File("Gr\xC3\xBCn.ovs");
    SaveSettings(path, "First");
    LoadSettings(path, kFalse);
    EXPECT_EQ(session.SettingsName, "Gr\xFCn");
    SaveSettingsForm form = OpenSaveSettings();
    form.description = "Second";
    TestShell().boxAnswers = {BoxAnswer::Yes};
    EXPECT_TRUE(AcceptSaveSettings(form));
    LoadSettings(path, kFalse);
    EXPECT_EQ(settings.description, "Second");
    std::size_t files = 0;
    for (const auto& entry : fs::directory_iterator(folder_.Path()))
        files += entry.exists() ? 1 : 0;
    EXPECT_EQ(files, 1U);
}

TEST_F(SettingsFiles, ASaveThatFailsIsTold) {
    const std::string path = folder_.File("none/a.ovs");
    SaveSettings(path, "");
    EXPECT_EQ(TestShell().boxes,
              std::vector<std::string>{"Open Error: " + path + " /  / Path not found"});
}

TEST_F(SettingsFiles, AnOverLongSettingsFileGivesItsFirstRecord) {
    settings.symbolSize = 17;
    SaveSettings(folder_.File("a.ovs"), "First");
    Bytes bytes = FileBytes(folder_.File("a.ovs"));
    bytes.resize(5000, 0xEE);
    settings = {};
    LoadSettings(folder_.Write("b.ovs", bytes), kFalse);
    EXPECT_EQ(settings.symbolSize, 17);
    EXPECT_EQ(settings.description, "First");
    EXPECT_TRUE(TestShell().log.empty());
}

TEST_F(SettingsFiles, TextsTooLongForTheirFieldsAreCut) {
    settings.textFontName = std::string(40, 'f');
    SaveSettings(folder_.File("a.ovs"), std::string(100, 'd'));
    const Bytes bytes = FileBytes(folder_.File("a.ovs"));
    ASSERT_EQ(bytes.size(), 340U);
    EXPECT_EQ(GetText(bytes.data(), 80), std::string(80, 'd'));
    EXPECT_EQ(GetI32(&bytes[80]), 0x80FF00);
    EXPECT_EQ(GetText(&bytes[302], 30), std::string(30, 'f'));
    EXPECT_EQ(GetF32(&bytes[332]), 8.25F);
}

TEST_F(SettingsFiles, ReadersAndWritersLeaveTheErrorsOfOthers) {
    RaiseRunTimeError(error::kOverflow);
    LoadPointSelection(folder_.Write("a.pts", Bytes(5)));
    SavePointSelection(folder_.File("none/a.pts"));
    LoadPointColours(folder_.Write("a.cpt", Bytes(5)));
    LoadSettings(folder_.Write("a.ovs", Bytes(5)), kFalse);
    EXPECT_EQ(PendingRunTimeError(), error::kOverflow);
    EXPECT_TRUE(TestShell().log.empty());
}

TEST_F(SettingsFiles, ANumberThatIsNoClassicColourLeavesThePointsColour) {
    Bytes bytes(72);
    PutI16(&bytes[0], 16);
    PutI16(&bytes[2], -1);
    pointColour[1] = 77;
    pointColour[2] = 78;
    LoadPointColours(folder_.Write("a.cpt", bytes));
    EXPECT_EQ(pointColour[1], 77);
    EXPECT_EQ(pointColour[2], 78);
}

TEST_F(SettingsFiles, ADescriptionIsCutInMemoryAsInTheFile) {
    SaveSettings(folder_.File("a.ovs"), std::string(100, 'd'));
    EXPECT_EQ(settings.description, std::string(80, 'd'));
}

TEST_F(SettingsFiles, AnEmptySelectionFileSelectsAllPointsButTheAngles) {
    LoadPointSelection(folder_.Write("a.pts", Bytes()));
    EXPECT_EQ(pointSelection[1], -1);
    EXPECT_EQ(pointSelection[2], 0);
    EXPECT_EQ(pointSelection[36], -1);
}

TEST_F(SettingsFiles, AFolderInPlaceOfAFileIsSilentAtTheStart) {
    for (const char* name : {"a.pts", "a.cpt"}) fs::create_directories(folder_.File(name));
    pointSelection[7] = -1;
    pointColour[7] = 77;
    LoadPointSelection(folder_.File("a.pts"));
    LoadPointColours(folder_.File("a.cpt"));
    EXPECT_EQ(pointSelection[7], -1);
    EXPECT_EQ(pointColour[7], 77);
    EXPECT_TRUE(TestShell().log.empty());
}

TEST_F(SettingsFiles, OnAFullDiskTheOldFilesStayAndTheSavedSettingsAreTold) {
    session.UserColourFile = folder_.Write("a.pco", "old");
    folder_.Write("a.pts", "old");
    folder_.Write("a.ovs", "old");
    settings.symbolSize = 11;
    {
        const FullDisk disk(100);
        SavePointSelection(folder_.File("a.pts"));
        SaveUserPointColours();
        SaveSettings(folder_.File("a.ovs"), "");
    }
    const Bytes old = {'o', 'l', 'd'};
    EXPECT_EQ(FileBytes(folder_.File("a.pts")), old);
    EXPECT_EQ(FileBytes(folder_.File("a.pco")), old);
    EXPECT_EQ(FileBytes(folder_.File("a.ovs")), old);
    const std::vector<std::string> told = {
        "Open Error: " + folder_.File("a.pco") + " /  / Disk full",
        "Open Error: " + folder_.File("a.ovs") + " /  / Disk full"};
    EXPECT_EQ(TestShell().boxes, told);
    const auto files = fs::directory_iterator(folder_.Path());
    EXPECT_EQ(std::distance(begin(files), end(files)), 3);
    EXPECT_EQ(settings.symbolSize, 11);
}

// A run of bytes of a file, written out in hexadecimal digits.
struct GoldenRow {
    std::size_t offset;
    std::string_view bytes;
};

std::string Hex(const Bytes& bytes, std::size_t offset, std::size_t count) {
    std::string text;
    for (std::size_t i = offset; i < offset + count; ++i) {
        constexpr std::string_view digits = "0123456789ABCDEF";
        if (i > offset) text += ' ';
        text += digits[bytes[i] >> 4];
        text += digits[bytes[i] & 15];
    }
    return text;
}

TEST_F(SettingsFiles, TheDefaultSettingsAreTheseBytes) {
    // Little-endian: flags FF FF or 00 00, colours red, green, blue, 0.
    constexpr std::array<GoldenRow, 17> rows = {{
        {80, "00 FF 80 00 C0 C0 C0 00"},                     // land, sea
        {88, "FF FF 00 00 00 00 00 00 01 00 00 00 00 00"},   // 0
        {102, "FF FF FF FF FF FF 00 00 01 00 00 00 02 00"},  // 1 Culminate
        {116, "FF FF 00 00 FF FF 00 00 01 00 02 00 02 00"},  // 2 Anticulminate
        {130, "FF FF 00 00 FF FF FF 00 01 00 00 00 01 00"},  // 3 Rise
        {144, "FF FF 00 00 FF FF FF 00 01 00 00 00 01 00"},  // 4 Set
        {158, "00 00 00 00 FF FF 00 00 01 00 00 00 02 00"},  // 5 Paran RS/RS
        {172, "00 00 00 00 FF FF 00 00 01 00 00 00 02 00"},  // 6 Paran RS/MI
        {186, "00 00 FF FF 00 FF FF 00 02 00 00 00 00 00"},  // 7 Local Space
        {200, "00 00 00 00 FF FF 00 00 01 00 00 00 02 00"},  // 8 Local House
        {214, "00 00 00 00 FF FF 00 00 01 00 00 00 02 00"},  // 9 Horizon
        {228, "00 00 00 00 FF FF 00 00 01 00 00 00 02 00"},  // 10 Ecliptic
        {242, "00 00 00 00 FF FF 00 00 01 00 00 00 02 00"},  // 11 Signs
        {256, "FF FF 00 00 FF 00 00 00 03 00 00 00 02 00"},  // 12 Eclipse
        {270, "FF FF 00 00 00 00 00 00 01 00 00 00 02 00"},  // 13 Partial Eclipse
        {284, "FF FF FF FF FF FF FF 00 01 00 00 00 02 00"},  // 14
        // Symbol size 9 (0x41100000); "QX Symbol"; text size 8.25 (0x41040000); bold; italic.
        {298, "00 00 10 41 51 58 20 53 79 6D 62 6F 6C"},
    }};
    SaveSettings(folder_.File("a.ovs"), "");
    const Bytes bytes = FileBytes(folder_.File("a.ovs"));
    ASSERT_EQ(bytes.size(), 340U);
    EXPECT_EQ(GetText(bytes.data(), 80), std::string(80, ' '));
    for (const GoldenRow& row : rows) {
        EXPECT_EQ(Hex(bytes, row.offset, (row.bytes.size() + 1) / 3), row.bytes) << row.offset;
    }
    EXPECT_EQ(GetText(&bytes[311], 21), std::string(21, ' '));
    EXPECT_EQ(Hex(bytes, 332, 8), "00 00 04 41 00 00 00 00");
}

TEST_F(SettingsFiles, TheShippedSettingsDifferInDescriptionLandAndSeaAlone) {
    SaveSettings(folder_.File("a.ovs"), "");
    const Bytes bytes = FileBytes(folder_.File("a.ovs"));
    const Bytes shipped = FileBytes(DataFile("default.ovs"));
    ASSERT_EQ(shipped.size(), 340U);
    EXPECT_EQ(Hex(shipped, 88, 252), Hex(bytes, 88, 252));
}

TEST_F(SettingsFiles, ASavedSelectionIsTheseBytes) {
    pointSelection.fill(kFalse);
    pointSelection[1] = -1;
    pointSelection[36] = 0x1234;
    SavePointSelection(folder_.File("a.pts"));
    const Bytes bytes = FileBytes(folder_.File("a.pts"));
    ASSERT_EQ(bytes.size(), 792U);
    EXPECT_EQ(Hex(bytes, 0, 22),
              "54 68 65 20 4D 6F 6F 6E 20 20 20 20 20 20 20 20 20 20 20 20 FF FF");  // The Moon
    EXPECT_EQ(Hex(bytes, 440, 22),
              "53 6F 75 74 68 20 4E 6F 64 65 20 20 20 20 20 20 20 20 20 20 00 00");  // South Node
    EXPECT_EQ(Hex(bytes, 770, 22),
              "42 6C 61 63 6B 20 4D 6F 6F 6E 20 20 20 20 20 20 20 20 20 20 34 12");  // Black Moon
}

TEST_F(SettingsFiles, SavedColoursAreTheseBytes) {
    session.UserColourFile = folder_.File("orvantis.pco");
    pointColour[1] = 0x00112233;
    pointColour[21] = -2;
    pointColour[36] = 0x7F0000FF;
    SaveUserPointColours();
    const Bytes bytes = FileBytes(session.UserColourFile);
    ASSERT_EQ(bytes.size(), 144U);
    EXPECT_EQ(Hex(bytes, 0, 4), "33 22 11 00");
    EXPECT_EQ(Hex(bytes, 80, 4), "FE FF FF FF");
    EXPECT_EQ(Hex(bytes, 140, 4), "FF 00 00 7F");
}

TEST_F(SettingsFiles, TheseBytesAreReadAsSelectionAndColours) {
    Bytes selection = SelectionRecords(36, 0);
    selection[20] = 0x34;                    // 1, low byte alone
    selection[461] = 0x80;                   // 21, high byte alone
    selection[790] = selection[791] = 0xFF;  // 36
    LoadPointSelection(folder_.Write("a.pts", selection));
    EXPECT_EQ(pointSelection[1], 0x34);
    EXPECT_EQ(pointSelection[21], -32768);
    EXPECT_EQ(pointSelection[36], -1);

    Bytes colours(144);
    const Bytes colour = {0x33, 0x22, 0x11, 0x00};
    for (const std::size_t at : {0, 80, 140}) std::copy(colour.begin(), colour.end(), &colours[at]);
    LoadPointColours(folder_.Write("a.cpt", colours));
    for (const std::size_t point : {1, 21, 36}) EXPECT_EQ(pointColour[point], 0x00112233) << point;
    EXPECT_EQ(pointColour[2], 0);
    EXPECT_EQ(pointColour[35], 0);

    Bytes classic(72);
    classic[0] = 1;
    classic[40] = 4;
    classic[70] = 15;
    LoadPointColours(folder_.Write("b.cpt", classic));
    EXPECT_EQ(pointColour[1], 0x800000);
    EXPECT_EQ(pointColour[21], 0x000080);
    EXPECT_EQ(pointColour[36], 0xFFFFFF);
}

TEST_F(SettingsFiles, TheShippedSelectionHasThePointsNamesAndIsReadAsItStands) {
    const std::string path = DataFile("ovdeflt.pts");
    const Bytes shipped = FileBytes(path);
    ASSERT_EQ(shipped.size(), 792U);
    LoadPointSelection(path);
    int selected = 0;
    for (std::int16_t i = 1; i <= 36; ++i) {
        const std::uint8_t* record = &shipped[static_cast<std::size_t>(i - 1) * 22];
        EXPECT_EQ(TrimRight(GetText(record, 20)), PointName(i)) << i;
        EXPECT_EQ(pointSelection[static_cast<std::size_t>(i)], GetI16(record + 20)) << i;
        if (pointSelection[static_cast<std::size_t>(i)] != 0) ++selected;
    }
    EXPECT_GT(selected, 0);
    SavePointSelection(folder_.File("a.pts"));
    EXPECT_EQ(FileBytes(folder_.File("a.pts")), shipped);
}

TEST_F(SettingsFiles, TheShippedColoursAreWholeColoursOfWhichNoneIsTheLandsOrTheSeas) {
    const std::string path = DataFile("brimwell.cpt");
    const Bytes shipped = FileBytes(path);
    ASSERT_EQ(shipped.size(), 144U);
    LoadPointColours(path);
    for (std::size_t i = 1; i <= 36; ++i) {
        EXPECT_EQ(pointColour[i], GetI32(&shipped[(i - 1) * 4])) << i;
        EXPECT_GE(pointColour[i], 0) << i;
        EXPECT_LE(pointColour[i], 0xFFFFFF) << i;
        EXPECT_NE(pointColour[i], LandColour()) << i;
        EXPECT_NE(pointColour[i], SeaColour()) << i;
    }
    session.UserColourFile = folder_.File("a.pco");
    SaveUserPointColours();
    EXPECT_EQ(FileBytes(session.UserColourFile), shipped);
}

TEST_F(SettingsFiles, SettingsThatCanNotBeReadPlotNothing) {
    plots = 0;
    plotAfterSettings = [] { ++plots; };
    EXPECT_EQ(LoadSettings(folder_.File("none.ovs"), kTrue), kTrue);
    EXPECT_EQ(LoadSettings(folder_.Write("short.ovs", Bytes(339)), kTrue), kTrue);
    EXPECT_EQ(LoadSettings(folder_.Write("empty.ovs", Bytes()), kTrue), kTrue);
    fs::create_directories(folder_.File("folder.ovs"));
    EXPECT_EQ(LoadSettings(folder_.File("folder.ovs"), kTrue), kTrue);
    EXPECT_EQ(plots, 0);
}

// Saves settings, colours and selection under a folder and tells whether all that failed rightly.
int SaveWhereNothingCanBeMade(const std::string& folder, const std::string& reason) {
    settings.symbolSize = 11;
    settings.description = "Before";
    pointColour[1] = 12;
    pointSelection[1] = 13;
    session.UserColourFile = folder + "a.pco";
    TestShell().boxes.clear();
    const bool saved = SaveSettings(folder + "a.ovs", "Mine");
    SaveUserPointColours();
    SavePointSelection(folder + "a.pts");
    if (TestShell().boxes !=
        std::vector<std::string>{"Open Error: " + folder + "a.ovs /  / " + reason,
                                 "Open Error: " + folder + "a.pco /  / " + reason}) {
        return 1;
    }
    if (saved || settings.symbolSize != 11 || settings.description != "Before") return 2;
    return pointColour[1] == 12 && pointSelection[1] == 13 && PendingRunTimeError() == 0 ? 0 : 3;
}

TEST_F(SettingsFiles, WithAFileInTheFoldersPlaceNothingIsHalfWrittenAndTheSettingsStay) {
    folder_.Write("file", "a file");
    EXPECT_EQ(SaveWhereNothingCanBeMade(folder_.File("file/"), "Path not found"), 0);
    EXPECT_EQ(FileBytes(folder_.File("file")).size(), 6U);
    const auto files = fs::directory_iterator(folder_.Path());
    EXPECT_EQ(std::distance(begin(files), end(files)), 1);
}

TEST_F(SettingsFiles, InAFolderThatMayNotBeWrittenTheOldFilesAndTheSettingsStay) {
    for (const char* name : {"a.ovs", "a.pco", "a.pts"}) {
        fs::permissions(folder_.Write(name, "old"), fs::perms::all);
    }
    const auto save = [&] {
        ActAsPlainUserOn(folder_.Path(), fs::perms::owner_read | fs::perms::owner_exec);
        return SaveWhereNothingCanBeMade(folder_.Path(), "Permission denied");
    };
    EXPECT_EXIT(std::_Exit(save()), ::testing::ExitedWithCode(0), "");
    fs::permissions(folder_.Path(), fs::perms::owner_all);
    for (const char* name : {"a.ovs", "a.pco", "a.pts"}) {
        EXPECT_EQ(FileBytes(folder_.File(name)), (Bytes{'o', 'l', 'd'})) << name;
    }
    const auto files = fs::directory_iterator(folder_.Path());
    EXPECT_EQ(std::distance(begin(files), end(files)), 3);
}

}  // namespace
}  // namespace orvantis

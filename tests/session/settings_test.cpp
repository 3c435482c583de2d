#include "session/settings.h"

#include <gtest/gtest.h>

#include "session/session_state.h"
#include "support/reset_all.h"
#include "support/temp_folder.h"
#include "text/bytes.h"
#include "text/run_time_error.h"

namespace orvantis {
namespace {

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

}  // namespace
}  // namespace orvantis

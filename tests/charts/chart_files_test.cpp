#include <algorithm>
#include <filesystem>
#include <gtest/gtest.h>

#include "charts/KVCharts.h"
#include "charts/chart_lists.h"
#include "support/paths.h"
#include "support/reset_all.h"
#include "support/temp_folder.h"

namespace orvantis {
namespace {

class ChartFiles : public testing::Test {
  protected:
    void SetUp() override { ResetAll(); }

    // Opens a file of these bytes; `count_` and `type_` receive what is told.
    FileHandle Open(std::string_view name, const Bytes& bytes, Flag forceLegacy = kFalse) {
        path_ = folder_.Write(name, bytes);
        const FileHandle file = OpenChartFile(path_, count_, forceLegacy);
        type_ = currentChartFileType;
        return file;
    }

    TempFolder folder_;
    std::string path_;
    std::int32_t count_ = -1;
    std::int16_t type_ = 99;
};

Bytes Head(std::int16_t version, std::size_t slotLength) {
    Bytes bytes(slotLength);
    PutI16(bytes.data(), version);
    PutText(&bytes[2], 80, "A description");
    return bytes;
}

Bytes Format1File(int charts) {
    Bytes bytes = Head(1, 110);
    for (int n = 1; n <= charts; ++n) {
        Bytes slot(110);
        Format1Record record;
        record.name = "Chart " + std::to_string(n);
        record.commentRef = n;
        PutFormat1Record(slot.data(), record);
        bytes.insert(bytes.end(), slot.begin(), slot.end());
    }
    return bytes;
}

Bytes Format2File(int charts) {
    Bytes bytes = Head(2, 292);
    for (int n = 1; n <= charts; ++n) {
        Bytes slot(292);
        FileChart chart;
        chart.event.name = "Chart " + std::to_string(n);
        chart.chartFlags = 3;
        PutFileChart(slot.data(), chart);
        bytes.insert(bytes.end(), slot.begin(), slot.end());
    }
    return bytes;
}

TEST_F(ChartFiles, AFileOfNoBytesIsType0WithoutCharts) {
    EXPECT_GT(Open("empty.cht", Bytes{}), 0);
    EXPECT_EQ(type_, chart_file::kFormat0);
    EXPECT_EQ(count_, 0);
    EXPECT_EQ(PendingRunTimeError(), 0);
}

TEST_F(ChartFiles, AFileOfOneByteIsType0WithoutCharts) {
    EXPECT_GT(Open("one.cht", Bytes{2}), 0);
    EXPECT_EQ(type_, chart_file::kFormat0);
    EXPECT_EQ(count_, 0);
}

TEST_F(ChartFiles, AFileThatIsNotThereGivesNoHandleAndNoMessage) {
    EXPECT_EQ(OpenChartFile(folder_.File("none.cht"), count_, kFalse), 0);
    EXPECT_EQ(count_, 0);
    EXPECT_TRUE(TestShell().boxes.empty());
}

TEST_F(ChartFiles, AType1FileOfExactlyOneSlotHasNoCharts) {
    EXPECT_GT(Open("head.cht", Head(1, 110)), 0);
    EXPECT_EQ(type_, chart_file::kFormat1);
    EXPECT_EQ(count_, 0);
}

TEST_F(ChartFiles, AHeadCutShortHasNoCharts) {
    EXPECT_GT(Open("short.cht", Bytes{2, 0}), 0);
    EXPECT_EQ(type_, chart_file::kFormat2);
    EXPECT_EQ(count_, 0);
}

TEST_F(ChartFiles, ChartsOfType1AreReadByNumber) {
    const FileHandle file = Open("one.CHT", Format1File(3));
    ASSERT_GT(file, 0);
    EXPECT_EQ(type_, chart_file::kFormat1);
    EXPECT_EQ(count_, 3);
    FileChart chart;
    for (std::int32_t n = 1; n <= 3; ++n) {
        ASSERT_TRUE(ReadChart(type_, file, n, chart));
        EXPECT_EQ(chart.event.name, "Chart " + std::to_string(n));
        EXPECT_EQ(chart.commentRef, n);
    }
}

TEST_F(ChartFiles, ChartsOfType2AreReadByNumberAndKeepTheirFlags) {
    const FileHandle file = Open("two.cht", Format2File(3));
    ASSERT_GT(file, 0);
    EXPECT_EQ(type_, chart_file::kFormat2);
    EXPECT_EQ(count_, 3);
    FileChart chart;
    ASSERT_TRUE(ReadChart(type_, file, 2, chart));
    EXPECT_EQ(chart.event.name, "Chart 2");
    EXPECT_EQ(chart.chartFlags, 3);
}

TEST_F(ChartFiles, AFileWithoutAVersionIsType0) {
    // Two whole records, blank but for names and numbers, and part of a third.
    Bytes bytes(115 * 2 + 40, ' ');
    PutText(bytes.data(), 30, "First");
    PutText(&bytes[115], 30, "Second");
    for (const std::ptrdiff_t start : {0, 115}) {
        std::fill(bytes.begin() + start + 83, bytes.begin() + start + 115, std::uint8_t{0});
    }
    const FileHandle file = Open("old.cht", bytes);
    ASSERT_GT(file, 0);
    EXPECT_EQ(type_, chart_file::kFormat0);
    EXPECT_EQ(count_, 2);
    FileChart chart;
    ASSERT_TRUE(ReadChart(type_, file, 2, chart));
    EXPECT_EQ(chart.event.name, "Second");
}

TEST_F(ChartFiles, AVersionWordOfFourOrMinusOneIsTheStartOfAName) {
    EXPECT_GT(Open("four.cht", Head(4, 115)), 0);
    EXPECT_EQ(type_, chart_file::kFormat0);
    EXPECT_EQ(count_, 1);
    EXPECT_GT(Open("minus.cht", Head(-1, 115)), 0);
    EXPECT_EQ(type_, chart_file::kFormat0);
}

TEST_F(ChartFiles, ANameOfType0ThatStartsWithTheCodes1To3IsTakenForAVersion) {
    for (const std::uint8_t code : {std::uint8_t{1}, std::uint8_t{2}}) {
        Bytes bytes(115 * 2, ' ');
        bytes[0] = code;
        bytes[1] = 0;
        const FileHandle file = Open("name.cht", bytes);
        EXPECT_EQ(type_, code);
        EXPECT_EQ(count_, code == 1 ? 1 : 0) << "230 bytes in slots of 110 and 292, less the head";
        CloseChartFile(type_, file);
    }
}

// A picture in place of charts: nothing refuses it, and its bytes are read as they fall.
TEST_F(ChartFiles, AFileOfTheWrongFormOpensAndItsRecordsAreReadAsTheyFall) {
    Bytes bytes;
    for (int i = 0; i < 115 * 3 + 7; ++i) bytes.push_back(static_cast<std::uint8_t>(i * 37 + 137));
    PutText(bytes.data(), 8, "\x89PNG\r\n\x1A\n");
    const FileHandle file = Open("picture.png", bytes);
    ASSERT_GT(file, 0);
    EXPECT_EQ(type_, chart_file::kFormat0);
    EXPECT_EQ(count_, 3);
    FileChart chart;
    for (std::int32_t n = 1; n <= 3; ++n) {
        EXPECT_TRUE(ReadChart(type_, file, n, chart)) << n;
        EXPECT_GE(chart.chartType, 1);
        EXPECT_LE(chart.chartType, 13);
        EXPECT_GE(chart.chartSubType, 1);
        EXPECT_LE(chart.chartSubType, 99);
        EXPECT_EQ(chart.event.day, bytes[static_cast<std::size_t>(n - 1) * 115 + 83]);
    }
    EXPECT_TRUE(TestShell().boxes.empty());
}

TEST_F(ChartFiles, AFolderInPlaceOfTheFileGivesNoHandle) {
    std::filesystem::create_directory(folder_.File("folder.cht"));
    EXPECT_EQ(OpenChartFile(folder_.File("folder.cht"), count_, kFalse), 0);
    EXPECT_EQ(count_, 0);
}

TEST_F(ChartFiles, AFileWithoutAnExtensionOpensWithoutCharts) {
    const FileHandle file = Open("noextension", Format2File(3));
    ASSERT_GT(file, 0);
    EXPECT_EQ(type_, chart_file::kBlocks);
    EXPECT_EQ(count_, 0);
    FileChart chart;
    EXPECT_FALSE(ReadChart(type_, file, 1, chart));
}

TEST_F(ChartFiles, APointInTheFolderIsNoExtension) {
    std::filesystem::create_directory(folder_.File("a.b"));
    EXPECT_GT(Open("a.b/file", Format2File(1)), 0);
    EXPECT_EQ(type_, chart_file::kBlocks);
}

TEST_F(ChartFiles, ForceLegacyOpensAsAFileWithoutAnExtension) {
    EXPECT_GT(Open("two.cht", Format2File(3), kTrue), 0);
    EXPECT_EQ(type_, chart_file::kBlocks);
    EXPECT_EQ(count_, 0);
}

TEST_F(ChartFiles, AType3FileWithoutChartsOpensAsAListInMemory) {
    Bytes bytes = Head(3, 86);
    EXPECT_EQ(Open("three.ch6", bytes), 1);
    EXPECT_EQ(type_, chart_file::kFormat3);
    EXPECT_EQ(count_, 0);
    EXPECT_EQ(ChartFileDescription(type_, 1), "A description");
    EXPECT_TRUE(TestShell().boxes.empty());
    CloseChartFile(type_, 1);
    EXPECT_TRUE(openChartLists.empty());
}

TEST_F(ChartFiles, ChartTypesOfType2AreForcedIntoTheirRange) {
    for (const auto& [stored, read] : {std::pair{0, 1}, {1, 1}, {13, 13}, {14, 13}, {200, 13}}) {
        Bytes bytes = Format2File(1);
        bytes[292] = static_cast<std::uint8_t>(stored);
        bytes[293] = 100;
        const FileHandle file = Open("types.cht", bytes);
        FileChart chart;
        ASSERT_TRUE(ReadChart(type_, file, 1, chart));
        EXPECT_EQ(chart.chartType, read) << stored;
        EXPECT_EQ(chart.chartSubType, 99);
        CloseChartFile(type_, file);
    }
}

TEST_F(ChartFiles, ChartTypesOfType1AreForcedIntoTheirRange) {
    Bytes bytes = Format1File(1);
    bytes[110] = 0;
    bytes[111] = 0;
    const FileHandle file = Open("types.cht", bytes);
    FileChart chart;
    ASSERT_TRUE(ReadChart(type_, file, 1, chart));
    EXPECT_EQ(chart.chartType, 1);
    EXPECT_EQ(chart.chartSubType, 1);
}

TEST_F(ChartFiles, ReadingBeyondTheFileIsARunTimeErrorAndChangesNothing) {
    const FileHandle file = Open("two.cht", Format2File(2));
    FileChart chart;
    chart.event.name = "before";
    for (const std::int32_t n : {3, 1000000, INT32_MAX, 0, -1, INT32_MIN}) {
        EXPECT_FALSE(ReadChart(type_, file, n, chart)) << n;
        RunTimeError failure;
        ASSERT_TRUE(TakeRunTimeError(failure)) << n;
        EXPECT_EQ(failure.number, error::kPastEnd);
        EXPECT_EQ(chart.event.name, "before");
    }
}

TEST_F(ChartFiles, AnUnfinishedLastSlotDoesNotCountAndCannotBeRead) {
    Bytes bytes = Format2File(2);
    bytes.pop_back();
    const FileHandle file = Open("cut.cht", bytes);
    EXPECT_EQ(count_, 1);
    FileChart chart;
    EXPECT_TRUE(ReadChart(type_, file, 1, chart));
    EXPECT_FALSE(ReadChart(type_, file, 2, chart));
}

TEST_F(ChartFiles, BytesBehindTheLastSlotAreIgnored) {
    Bytes bytes = Format1File(2);
    bytes.resize(bytes.size() + 109, 0xFF);
    Open("long.cht", bytes);
    EXPECT_EQ(count_, 2);
}

TEST_F(ChartFiles, AFileOfMoreSlotsThanANumberHoldsCountsTheMost) {
    // A file with a hole: it takes no room on the disk.
    path_ = folder_.Write("huge.cht", Head(1, 110));
    std::error_code failure;
    std::filesystem::resize_file(path_, std::uintmax_t{110} * 3000000000U, failure);
    if (failure) GTEST_SKIP() << "no files of this size here";
    const FileHandle file = OpenChartFile(path_, count_, kFalse);
    ASSERT_GT(file, 0);
    EXPECT_EQ(count_, INT32_MAX);
    FileChart chart;
    EXPECT_TRUE(ReadChart(currentChartFileType, file, INT32_MAX, chart));
}

TEST_F(ChartFiles, TheDescriptionIsTrimmed) {
    FileHandle file = Open("one.cht", Format1File(1));
    EXPECT_EQ(ChartFileDescription(type_, file), "A description");
    file = Open("two.cht", Format2File(1));
    EXPECT_EQ(ChartFileDescription(type_, file), "A description");
    file = Open("zero.cht", Bytes(115, ' '));
    EXPECT_EQ(ChartFileDescription(type_, file), "");
    EXPECT_EQ(PendingRunTimeError(), 0);
}

TEST_F(ChartFiles, ADescriptionCutShortIsARunTimeError) {
    const FileHandle file = Open("short.cht", Bytes{1, 0, 'a', 'b'});
    EXPECT_EQ(ChartFileDescription(type_, file), "");
    EXPECT_EQ(PendingRunTimeError(), error::kPastEnd);
}

TEST_F(ChartFiles, OpeningAndReadingChangesNoByte) {
    const Bytes bytes = Format2File(2);
    const FileHandle file = Open("two.cht", bytes);
    FileChart chart;
    ReadChart(type_, file, 1, chart);
    ReadChart(type_, file, 7, chart);
    CloseChartFile(type_, file);
    EXPECT_EQ(FileBytes(path_), bytes);
}

TEST_F(ChartFiles, AClosedFileCannotBeRead) {
    const FileHandle file = Open("two.cht", Format2File(1));
    CloseChartFile(type_, file);
    FileChart chart;
    EXPECT_FALSE(ReadChart(type_, file, 1, chart));
}

TEST_F(ChartFiles, TheSampleFileHasSixPublicEvents) {
    const FileHandle file = OpenChartFile(DataFile("sample.cht"), count_, kFalse);
    ASSERT_GT(file, 0);
    EXPECT_EQ(currentChartFileType, chart_file::kFormat2);
    EXPECT_EQ(count_, 6);
    EXPECT_EQ(ChartFileDescription(currentChartFileType, file), "Public events");
    FileChart chart;
    ASSERT_TRUE(ReadChart(currentChartFileType, file, 4, chart));
    EXPECT_EQ(chart.event.name, "Berlin Wall opens");
    EXPECT_EQ(chart.event.year, 1989);
    EXPECT_EQ(chart.event.zoneHours, -1);
    EXPECT_FLOAT_EQ(chart.event.longitude, -13.4F);
    EXPECT_EQ(chart.houseCode, 5);
    EXPECT_EQ(chart.ayanamsaCode, 1);
}

}  // namespace
}  // namespace orvantis

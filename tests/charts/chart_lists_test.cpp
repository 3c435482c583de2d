// Type 3 files in memory, and the loading of whole files.
#include "charts/chart_lists.h"

#include <cstdlib>
#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include "chart_samples.h"
#include "charts/comments.h"
#include "session/driver.h"
#include "support/failing_disk.h"
#include "support/reset_all.h"
#include "support/temp_folder.h"

namespace orvantis {
namespace {

constexpr std::int16_t kType3 = chart_file::kFormat3;

class ChartLists : public testing::Test {
  protected:
    void SetUp() override { ResetAll(); }

    // Saves a sample list and returns its path.
    std::string Save(const std::string& name, std::int16_t type, int charts) {
        ChartList list = SampleList(charts);
        EXPECT_TRUE(SaveChartFile(folder_.File(name), type, list));
        return folder_.File(name);
    }

    FileHandle Open(const std::string& path) { return OpenChartFile(path, count_, kFalse); }

    TempFolder folder_;
    std::int32_t count_ = -1;
};

TEST_F(ChartLists, AnOpenFileIsFoundWithoutRegardToCaseAndKeepsItsNumber) {
    const std::string path = Save("three.ch6", kType3, 2);
    EXPECT_EQ(Open(path), 1);
    EXPECT_EQ(Open(folder_.File("THREE.Ch6")), 1);
    EXPECT_EQ(currentChartFileType, kType3);
    EXPECT_EQ(count_, 2);
    EXPECT_EQ(openChartLists.size(), 1U);
    EXPECT_EQ(Open(ProgramPath(path)), 1);
}

TEST_F(ChartLists, TwoFilesWhoseNamesDifferByCaseAreTwo) {
    const std::string lower = Save("three.ch6", kType3, 2);
    const std::string upper = folder_.Write("THREE.CH6", FileBytes(Save("b.ch6", kType3, 5)));
    EXPECT_EQ(Open(lower), 1);
    EXPECT_EQ(Open(upper), 2);
    EXPECT_EQ(count_, 5);
    EXPECT_EQ(Open(lower), 1);
    EXPECT_EQ(count_, 2);
}

TEST_F(ChartLists, AnOpenFileIsFoundUnderEveryWayOfOpeningAndWhenItIsGone) {
    const std::string path = Save("three.ch6", kType3, 2);
    Open(path);
    std::filesystem::remove(path);
    EXPECT_EQ(OpenChartFile(path, count_, kTrue), 1);
    EXPECT_EQ(count_, 2);
}

TEST_F(ChartLists, ClosingShrinksTheListToTheHighestEntryInUse) {
    const std::string a = Save("a.ch6", kType3, 1);
    const std::string b = Save("b.ch6", kType3, 2);
    const std::string c = Save("c.ch6", kType3, 3);
    EXPECT_EQ(Open(a), 1);
    EXPECT_EQ(Open(b), 2);
    EXPECT_EQ(Open(c), 3);
    CloseChartFile(kType3, 2);
    ASSERT_EQ(openChartLists.size(), 3U);
    EXPECT_EQ(openChartLists[1].path, "");
    EXPECT_EQ(openChartLists[1].inUse, kFalse);
    EXPECT_TRUE(openChartLists[1].charts.empty());
    FileChart chart;
    EXPECT_FALSE(ReadChart(kType3, 2, 1, chart));
    EXPECT_EQ(PendingRunTimeError(), error::kBadFileName);

    EXPECT_EQ(Open(b), 2);  // the entry that is free
    CloseChartFile(kType3, 2);
    CloseChartFile(kType3, 3);
    EXPECT_EQ(openChartLists.size(), 1U);
    CloseChartFile(kType3, 1);
    EXPECT_TRUE(openChartLists.empty());
    for (const FileHandle none : {0, 1, -1, 32767}) CloseChartFile(kType3, none);
}

TEST_F(ChartLists, AChangedFileIsSavedWhenItIsClosedAndAnUnchangedOneIsNot) {
    const std::string path = Save("three.ch6", kType3, 2);
    CloseChartFile(kType3, Open(path));
    EXPECT_FALSE(std::filesystem::exists(path + ".bak"));

    const FileHandle file = Open(path);
    FileChart chart;
    ASSERT_TRUE(ReadChart(kType3, file, 2, chart));
    chart.event.name = "Changed";
    ASSERT_TRUE(WriteChart(kType3, file, 2, chart));
    chart.event.name = "Appended";
    ASSERT_TRUE(WriteChart(kType3, file, 3, chart));
    CloseChartFile(kType3, file);
    EXPECT_TRUE(std::filesystem::exists(path + ".bak"));

    ChartList list;
    ASSERT_TRUE(LoadChartList(path, list, kFalse));
    ASSERT_EQ(list.charts.size(), 3U);
    EXPECT_EQ(list.charts[1].chart.event.name, "Changed");
    EXPECT_EQ(list.charts[1].comment, "Comment of chart 2, two blocks.");
    EXPECT_EQ(list.charts[2].chart.event.name, "Appended");
    EXPECT_EQ(list.charts[2].chart.commentRef, 3);
}

TEST_F(ChartLists, AChangedFileThatCannotBeSavedStaysUntilItCan) {
    const std::string path = Save("three.ch6", kType3, 2);
    const FileHandle file = Open(path);
    FileChart chart;
    chart.event.name = "Precious";
    ASSERT_TRUE(WriteChart(kType3, file, 3, chart));
    {
        const FullDisk disk(100);
        CloseChartFile(kType3, file);
    }
    ASSERT_EQ(TestShell().boxes.size(), 1U);
    ASSERT_EQ(openChartLists.size(), 1U);
    EXPECT_EQ(openChartLists[0].inUse, kFalse);

    EXPECT_EQ(Open(path), file);
    EXPECT_EQ(count_, 3);
    CloseChartFile(kType3, file);
    EXPECT_TRUE(openChartLists.empty());
    EXPECT_EQ(TestShell().boxes.size(), 1U);
    ChartList list;
    ASSERT_TRUE(LoadChartList(path, list, kFalse));
    EXPECT_EQ(list.charts.size(), 3U);
}

TEST_F(ChartLists, ChartTypesOfType3AreForcedIntoTheirRange) {
    const std::string path = Save("three.ch6", kType3, 1);
    Bytes bytes = FileBytes(path);
    bytes[86] = 0;
    bytes[87] = 200;
    folder_.Write("three.ch6", bytes);
    FileChart chart;
    ASSERT_TRUE(ReadChart(kType3, Open(path), 1, chart));
    EXPECT_EQ(chart.chartType, 1);
    EXPECT_EQ(chart.chartSubType, 99);
}

TEST_F(ChartLists, ChartsThatAType3ListDoesNotHoldAreARunTimeErrorAndChangeNothing) {
    const FileHandle file = Open(Save("three.ch6", kType3, 2));
    FileChart chart;
    chart.event.name = "before";
    for (const std::int32_t n : {0, 3, -1, INT32_MAX, INT32_MIN}) {
        EXPECT_FALSE(ReadChart(kType3, file, n, chart)) << n;
        RunTimeError failure;
        ASSERT_TRUE(TakeRunTimeError(failure));
        EXPECT_EQ(failure.number, error::kPastEnd);
        EXPECT_EQ(chart.event.name, "before");
    }
    for (const std::int32_t n : {0, 4, -1, INT32_MAX, INT32_MIN}) {
        EXPECT_FALSE(WriteChart(kType3, file, n, chart)) << n;
    }
    EXPECT_FALSE(WriteChart(kType3, file + 1, 1, chart));
    EXPECT_EQ(openChartLists[0].changed, kFalse);
}

TEST_F(ChartLists, ChartsOfTypes0To2AreWrittenByNumberAndAppended) {
    for (const std::int16_t type : {0, 1, 2}) {
        const std::string path = Save("slots.cht", type, 2);
        const FileHandle file = Open(path);
        ASSERT_EQ(currentChartFileType, type);
        FileChart chart;
        ASSERT_TRUE(ReadChart(type, file, 1, chart));
        chart.event.name = "Second";
        EXPECT_TRUE(WriteChart(type, file, 2, chart));
        chart.event.name = "Third";
        EXPECT_TRUE(WriteChart(type, file, 3, chart));
        EXPECT_FALSE(WriteChart(type, file, 5, chart));
        EXPECT_FALSE(WriteChart(type, file, 0, chart));
        CloseChartFile(type, file);

        ChartList list;
        ASSERT_TRUE(LoadChartList(path, list, kFalse)) << type;
        ASSERT_EQ(list.charts.size(), 3U);
        EXPECT_EQ(list.charts[0].chart.event.name, "Chart number 1");
        EXPECT_EQ(list.charts[1].chart.event.name, "Second");
        EXPECT_EQ(list.charts[2].chart.event.name, "Third");
    }
}

TEST_F(ChartLists, AChartThatDoesNotFitItsRecordIsNotWritten) {
    for (const std::int16_t type : {0, 1}) {
        const std::string path = Save("slots.cht", type, 2);
        const Bytes before = FileBytes(path);
        const FileHandle file = Open(path);
        FileChart chart;
        chart.event.longitude = 1e9F;
        RunTimeError ignored;
        TakeRunTimeError(ignored);
        EXPECT_FALSE(WriteChart(type, file, 1, chart));
        EXPECT_EQ(PendingRunTimeError(), error::kOverflow);
        CloseChartFile(type, file);
        EXPECT_EQ(FileBytes(path), before);
    }
}

TEST_F(ChartLists, AnErrorOfOthersStaysWhenAChartIsWritten) {
    const FileHandle file = Open(Save("slots.cht", 2, 2));
    RaiseRunTimeError(error::kDivisionByZero);
    EXPECT_TRUE(WriteChart(2, file, 1, FileChart{}));
    EXPECT_EQ(PendingRunTimeError(), error::kDivisionByZero);
}

TEST_F(ChartLists, AFileWithoutAnExtensionTakesNoChart) {
    const std::string path = folder_.Write("bare", Bytes(500, ' '));
    EXPECT_FALSE(WriteChart(chart_file::kBlocks, Open(path), 1, FileChart{}));
    EXPECT_EQ(PendingRunTimeError(), error::kBadFileMode);
}

TEST_F(ChartLists, ADiskThatIsFullLeavesNoPieceOfAnAppendedChart) {
    const std::string path = Save("slots.cht", 2, 2);
    const Bytes before = FileBytes(path);
    const FileHandle file = Open(path);
    bool written = true;
    {
        const FullDisk disk(before.size() + 100);
        written = WriteChart(2, file, 3, FileChart{});
    }
    EXPECT_FALSE(written);
    CloseChartFile(2, file);
    EXPECT_EQ(FileBytes(path), before);
}

TEST_F(ChartLists, CommentsAreLoadedOnlyWhenTheyAreAskedFor) {
    const std::string path = Save("two.cht", 2, 3);
    ChartList list;
    loadComments = kFalse;
    ASSERT_TRUE(LoadChartList(path, list, kFalse));
    EXPECT_EQ(list.charts[0].comment, "");
    EXPECT_EQ(list.charts[0].chart.commentRef, 1);
    loadComments = kTrue;
    ASSERT_TRUE(LoadChartList(path, list, kFalse));
    EXPECT_EQ(list.charts[0].comment, "Comment of chart 1, two blocks.");
}

TEST_F(ChartLists, AFileThatIsNotThereLeavesTheListAsItWas) {
    ChartList list = SampleList(2);
    EXPECT_FALSE(LoadChartList(folder_.File("none.cht"), list, kFalse));
    EXPECT_EQ(PendingRunTimeError(), error::kFileNotFound);
    EXPECT_EQ(list.charts.size(), 2U);
    EXPECT_TRUE(TestShell().boxes.empty());
}

TEST_F(ChartLists, AFileWithoutAnExtensionLoadsItsDescriptionAlone) {
    Bytes bytes(1000, 'x');
    PutText(bytes.data(), 80, "Old blocks");
    ChartList list;
    ASSERT_TRUE(LoadChartList(folder_.Write("bare", bytes), list, kFalse));
    EXPECT_EQ(list.type, chart_file::kBlocks);
    EXPECT_EQ(list.description, "Old blocks");
    EXPECT_TRUE(list.charts.empty());
}

// Bytes of a type 3 file of one chart with these counts.
Bytes Format3(std::int32_t charts, std::int32_t attachments, std::int32_t note,
              std::int32_t comment) {
    Bytes bytes(86 + 292 + 4);
    PutI16(bytes.data(), 3);
    PutI32(&bytes[82], charts);
    PutI32(&bytes[86 + 292], attachments);
    if (attachments > 0) {
        bytes.resize(bytes.size() + 115 + 4);
        PutI32(&bytes[bytes.size() - 4], note);
        if (note > 0 && note < 1000) bytes.resize(bytes.size() + static_cast<std::size_t>(note));
    }
    bytes.resize(bytes.size() + 4);
    PutI32(&bytes[bytes.size() - 4], comment);
    if (comment > 0 && comment < 1000)
        bytes.resize(bytes.size() + static_cast<std::size_t>(comment));
    return bytes;
}

TEST_F(ChartLists, CountsAndLengthsBeyondTheFileInItsFirstChartAreARunTimeErrorAndNothingIsHeld) {
    constexpr std::int32_t most = INT32_MAX;
    for (const Bytes& bytes : {Format3(1, most, 0, 0), Format3(1, 2, 0, 0), Format3(1, 1, most, 0),
                               Format3(1, 0, 0, most), Format3(1, 0, 0, 1000)}) {
        const std::string path = folder_.Write("hostile.ch6", bytes);
        ChartList list = SampleList(2);
        EXPECT_FALSE(LoadChartList(path, list, kFalse));
        EXPECT_EQ(list.charts.size(), 2U);
        RunTimeError failure;
        ASSERT_TRUE(TakeRunTimeError(failure));
        EXPECT_EQ(failure.number, error::kPastEnd);
        EXPECT_EQ(Open(path), 0);
        EXPECT_EQ(count_, 0);
        EXPECT_TRUE(TakeRunTimeError(failure));
        EXPECT_TRUE(openChartLists.empty());
        EXPECT_EQ(FileBytes(path), bytes);
    }
    EXPECT_TRUE(TestShell().boxes.empty());
}

TEST_F(ChartLists, ACountBeyondTheFileLeavesTheChartsThatAreThereInADamagedList) {
    for (const std::int32_t count : {2, 1000, INT32_MAX}) {
        const std::string path = folder_.Write("hostile.ch6", Format3(count, 1, 0, 5));
        ChartList list;
        EXPECT_TRUE(LoadChartList(path, list, kFalse));
        EXPECT_EQ(list.charts.size(), 1U);
        EXPECT_NE(list.damaged, 0);
        RunTimeError failure;
        ASSERT_TRUE(TakeRunTimeError(failure));
        EXPECT_EQ(failure.number, error::kPastEnd);
    }
}

TEST_F(ChartLists, ADamagedFileIsNeverWrittenOver) {
    const std::string path = Save("three.ch6", kType3, 5);
    std::filesystem::resize_file(path, std::filesystem::file_size(path) - 1);
    const Bytes bytes = FileBytes(path);
    const FileHandle file = Open(path);
    ASSERT_EQ(file, 1);
    EXPECT_EQ(count_, 4);
    RunTimeError failure;
    ASSERT_TRUE(TakeRunTimeError(failure));
    EXPECT_EQ(failure.number, error::kPastEnd);

    // Nothing is changed in memory either, so that nothing is lost when it is closed.
    FileChart chart;
    ASSERT_TRUE(ReadChart(kType3, file, 4, chart));
    for (const std::int32_t n : {4, 5}) {
        EXPECT_FALSE(WriteChart(kType3, file, n, chart));
        ASSERT_TRUE(TakeRunTimeError(failure));
        EXPECT_EQ(failure.number, error::kPastEnd);
    }
    std::int32_t ref = 1;
    EXPECT_FALSE(WriteComment(kType3, path, ref, "text"));
    EXPECT_EQ(PendingRunTimeError(), error::kPastEnd);
    ASSERT_TRUE(TakeRunTimeError(failure));
    EXPECT_EQ(openChartLists[0].changed, kFalse);
    openChartLists[0].changed = kTrue;
    CloseChartFile(kType3, file);
    EXPECT_EQ(TestShell().boxes.size(), 1U);
    openChartLists.clear();

    ChartList list;
    ASSERT_TRUE(LoadChartList(path, list, kFalse));
    std::filesystem::create_symlink(path, folder_.File("link.ch6"));
    for (const std::string& same : {path, folder_.File("THREE.CH6"), folder_.File("link.ch6")}) {
        for (const std::int16_t type : {0, 1, 2, 3}) {
            TestShell().log.clear();
            EXPECT_FALSE(SaveChartFile(same, type, list));
            ASSERT_EQ(TestShell().log.size(), 1U);
            const bool named = type == 0 || type == 3;  // the others have no comment file here
            if (named) {
                EXPECT_NE(TestShell().log[0].find("Error 62: Input past end of file"),
                          std::string::npos);
            }
        }
    }
    EXPECT_EQ(FileBytes(path), bytes);
    EXPECT_NE(list.damaged, 0);
    // What is sound of it makes a sound file elsewhere.
    const std::string other = folder_.File("other.ch6");
    EXPECT_TRUE(SaveChartFile(other, kType3, list));
    EXPECT_EQ(list.damaged, kFalse);
    ChartList again;
    ASSERT_TRUE(LoadChartList(other, again, kFalse));
    EXPECT_EQ(again.charts.size(), 4U);
    EXPECT_EQ(again.damaged, kFalse);
    EXPECT_EQ(again.charts[3].comment, "Comment of chart 4, two blocks.");
}

TEST_F(ChartLists, AFormat0RecordWithNumbersOutOfRangeIsReadAmongTheOthers) {
    const std::string path = Save("old.cht", 0, 3);
    Bytes bytes = FileBytes(path);
    for (std::size_t at = 115 + 83; at < 115 + 115; at += 2) PutI16(&bytes[at], 300);
    folder_.Write("old.cht", bytes);
    ChartList list;
    ASSERT_TRUE(LoadChartList(path, list, kFalse));
    EXPECT_EQ(PendingRunTimeError(), 0);
    ASSERT_EQ(list.charts.size(), 3U);
    EXPECT_EQ(list.charts[0].chart.event.name, "Chart number 1");
    EXPECT_EQ(list.charts[1].chart.event.name, "Chart number 2");
    EXPECT_EQ(list.charts[1].chart.event.hour, 44);
    EXPECT_EQ(list.charts[2].chart.event.name, "Chart number 3");
    EXPECT_EQ(list.charts[2].chart.event.hour, 0);
}

TEST_F(ChartLists, MoreChartsThanAListTakesAreTooLargeButReadByNumber) {
    const std::string path = Save("many.cht", 1, 1);
    // A hole of blank charts takes no room on the disk.
    const auto slots = static_cast<std::uintmax_t>(kMostListedCharts) + 2;
    std::filesystem::resize_file(path, slots * 110);
    ChartList list;
    EXPECT_FALSE(LoadChartList(path, list, kFalse));
    RunTimeError failure;
    ASSERT_TRUE(TakeRunTimeError(failure));
    EXPECT_EQ(failure.number, error::kFileTooLarge);
    const FileHandle file = Open(path);
    EXPECT_EQ(count_, kMostListedCharts + 1);
    FileChart chart;
    EXPECT_TRUE(ReadChart(1, file, count_, chart));
    CloseChartFile(1, file);

    const std::string three = folder_.Write("many.ch6", Format3(INT32_MAX, 0, 0, 0));
    std::filesystem::resize_file(three, 86 + 300 * slots);
    EXPECT_FALSE(LoadChartList(three, list, kFalse));
    EXPECT_EQ(PendingRunTimeError(), error::kFileTooLarge);
}

TEST_F(ChartLists, CountsAndLengthsBelow0AreNone) {
    for (const std::int32_t none : {0, -1, INT32_MIN}) {
        ChartList list;
        ASSERT_TRUE(LoadChartList(folder_.Write("a.ch6", Format3(1, none, 0, none)), list, kFalse));
        ASSERT_EQ(list.charts.size(), 1U);
        EXPECT_TRUE(list.charts[0].attachments.empty());
        EXPECT_EQ(list.charts[0].comment, "");
        ASSERT_TRUE(LoadChartList(folder_.Write("b.ch6", Format3(1, 1, none, 3)), list, kFalse));
        EXPECT_EQ(list.charts[0].attachments.at(0).note, "");
        EXPECT_EQ(list.charts[0].comment, std::string(3, '\0'));
        ASSERT_TRUE(LoadChartList(folder_.Write("c.ch6", Format3(none, 0, 0, 0)), list, kFalse));
        EXPECT_TRUE(list.charts.empty());
    }
}

TEST_F(ChartLists, AFileBeyondTheMostIsTooLarge) {
    // Files with a hole: they take no room on the disk.
    const auto most = static_cast<std::uintmax_t>(kMostChartBytes);
    for (const std::int16_t type : {1, 3}) {
        const std::string path = Save("huge.cht", type, 1);
        std::filesystem::resize_file(path, most + 1);
        ChartList list;
        EXPECT_FALSE(LoadChartList(path, list, kFalse));
        RunTimeError failure;
        ASSERT_TRUE(TakeRunTimeError(failure));
        EXPECT_EQ(failure.number, error::kFileTooLarge);
    }
}

TEST_F(ChartLists, ManyChartsThatShareARingOfBlocksAreRefused) {
    // 10,000 charts whose comments are each 1150 rounds of the same block: 322 million bytes.
    ChartList list = SampleList(10000);
    for (StoredChart& stored : list.charts) stored.comment.clear();
    list.charts[0].comment = std::string(29, 'x');
    const std::string path = folder_.File("ring.cht");
    ASSERT_TRUE(SaveChartFile(path, 2, list));
    Bytes blocks = FileBytes(folder_.File("ring"));
    PutI32(&blocks[64], 2);
    folder_.Write("ring", blocks);
    Bytes bytes = FileBytes(path);
    for (std::size_t n = 1; n <= 10000; ++n) PutI32(&bytes[n * 292 + 158], 2);
    folder_.Write("ring.cht", bytes);
    EXPECT_FALSE(LoadChartList(path, list, kFalse));
    EXPECT_EQ(PendingRunTimeError(), error::kFileTooLarge);
}

// Number of charts of a type 3 file without attachments that end within its first `size` bytes.
std::int32_t WholeCharts(const Bytes& bytes, std::int64_t size) {
    std::int32_t charts = 0;
    std::int64_t end = 86;
    while (end + 300 <= std::ssize(bytes)) {
        end += 300 + GetI32(&bytes[static_cast<std::size_t>(end) + 296]);
        if (end > size) break;
        ++charts;
    }
    return charts;
}

// Every length from 2,000 bytes down to none, of each type.
TEST_F(ChartLists, AFileCutAtAnyByteLosesNoChartBeforeTheCutAndIsNotChanged) {
    for (const std::int16_t type : {0, 1, 2, 3}) {
        const std::string path = Save("cut" + std::to_string(type) + ".cht", type, 18);
        const Bytes whole = FileBytes(path);
        ASSERT_GE(whole.size(), 2000U);
        const std::int64_t length = ChartRecordLength(type);
        for (std::int64_t size = 2000; size >= 0; --size) {
            std::filesystem::resize_file(path, static_cast<std::uintmax_t>(size));
            const FileHandle file = Open(path);
            const std::int16_t told = currentChartFileType;
            const bool typed = size >= 2 || type == 0;
            if (type == 3 && typed) {
                const auto charts = WholeCharts(whole, size);
                ASSERT_EQ(file, charts > 0 ? 1 : 0) << size;
                ASSERT_EQ(count_, charts) << size;
            } else {
                ASSERT_GT(file, 0) << type << " " << size;
                ASSERT_EQ(told, typed ? type : 0);
                const std::int64_t slots = typed && length > 0 ? size / length : 0;
                ASSERT_EQ(count_, std::max<std::int64_t>(slots - (type == 0 ? 0 : 1), 0)) << size;
            }
            FileChart chart;
            for (std::int32_t n = 1; n <= count_; ++n) {
                ASSERT_TRUE(ReadChart(told, file, n, chart));
                ASSERT_EQ(chart.event.name, "Chart number " + std::to_string(n));
            }
            ASSERT_FALSE(ReadChart(told, file, count_ + 1, chart));
            if (file > 0) CloseChartFile(told, file);
            ChartList list;
            ASSERT_EQ(LoadChartList(path, list, kFalse), file > 0);
            ASSERT_EQ(list.charts.size(), static_cast<std::size_t>(count_));
            RunTimeError ignored;
            TakeRunTimeError(ignored);
            ASSERT_TRUE(std::equal(whole.begin(), whole.begin() + size, FileBytes(path).begin()));
            ASSERT_EQ(FileBytes(path).size(), static_cast<std::size_t>(size));
        }
    }
    EXPECT_TRUE(TestShell().boxes.empty());
}

TEST_F(ChartLists, TenThousandChartsOfEachTypeAreSavedAndReadAgain) {
    for (const std::int16_t type : {0, 1, 2, 3}) {
        const ChartList sample = SampleList(10000);
        const std::string path = Save("many.cht", type, 10000);
        const FileHandle file = Open(path);
        ASSERT_GT(file, 0);
        ASSERT_EQ(count_, 10000);
        ChartList list;
        ASSERT_TRUE(LoadChartList(path, list, kFalse));
        ASSERT_EQ(list.charts.size(), 10000U);
        for (std::int32_t n = 1; n <= count_; ++n) {
            const auto i = static_cast<std::size_t>(n) - 1;
            FileChart chart;
            ASSERT_TRUE(ReadChart(type, file, n, chart));
            ASSERT_EQ(chart.event.name, sample.charts[i].chart.event.name);
            ASSERT_EQ(chart.event.longitude, sample.charts[i].chart.event.longitude);
            ASSERT_EQ(list.charts[i].chart.event.name, chart.event.name);
            ASSERT_EQ(list.charts[i].comment, type == 0 ? "" : sample.charts[i].comment);
        }
        CloseChartFile(type, file);
    }
}

TEST_F(ChartLists, TheChartOfAType3FileComesToTheDisplayAndTheFileIsClosedAgain) {
    const std::string path = Save("three.ch6", kType3, 3);
    FileChart chart;
    RunTimeError reason;
    EXPECT_EQ(ReadChartFromFile(path, 2, chart, reason), ChartStatus::Ok);
    EXPECT_EQ(chart.event.name, "Chart number 2");
    EXPECT_TRUE(openChartLists.empty());
    EXPECT_EQ(ReadChartFromFile(path, 4, chart, reason), ChartStatus::NoSuchChart);
    folder_.Write("three.ch6", Bytes{3, 0});
    EXPECT_EQ(ReadChartFromFile(path, 1, chart, reason), ChartStatus::BadRecord);
    EXPECT_EQ(reason.description, "Input past end of file");
}

// Charts of one generation, whose comments are of that generation too and have its length.
ChartList Generation(const std::string& name) {
    ChartList list = SampleList(1000);
    for (StoredChart& stored : list.charts) {
        stored.chart.event.name = name;
        stored.comment = "Comment of " + name;
    }
    return list;
}

TEST_F(ChartLists, ChartsAndCommentsAreOfOneSaveHoweverOftenAnotherProgramSavesMeanwhile) {
    const std::string path = folder_.File("charts.cht");
    ChartList old = Generation("old");
    ASSERT_TRUE(SaveChartFile(path, chart_file::kFormat2, old));
    const pid_t program = ::fork();
    if (program == 0) {
        bool saved = true;
        for (int i = 0; i < 60 && saved; ++i) {
            ChartList list = Generation(i % 2 == 0 ? std::string(40, 'n') : "old");
            saved = SaveChartFile(path, chart_file::kFormat2, list);
        }
        std::_Exit(saved ? 0 : 1);
    }
    int status = -1;
    int loads = 0;
    int mixed = 0;
    while (::waitpid(program, &status, WNOHANG) == 0) {
        ChartList list;
        EXPECT_TRUE(LoadChartList(path, list, kFalse)) << PendingRunTimeError();
        for (const StoredChart& stored : list.charts) {
            if (stored.comment != "Comment of " + stored.chart.event.name) ++mixed;
        }
        ++loads;
    }
    EXPECT_EQ(mixed, 0) << "charts of " << loads << " loads";
    EXPECT_EQ(status, 0);
    EXPECT_GT(loads, 0);
}

}  // namespace
}  // namespace orvantis

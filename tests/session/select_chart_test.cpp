// The choice of a chart from real files of all types.
#include "session/select_chart.h"

#include <gtest/gtest.h>

#include "charts/CALCCHRT.h"
#include "charts/KVCharts.h"
#include "charts/exchange.h"
#include "session/driver.h"
#include "session/files.h"
#include "support/command_test.h"
#include "support/paths.h"
#include "support/session_files.h"

namespace orvantis {
namespace {

const std::string kGolden = TestFile("charts/golden/");
const std::string kSample = DataFile("sample.cht");

class SelectChartTest : public CommandTest {
  protected:
    void SetUp() override {
        CommandTest::SetUp();
        StartSession(files.paths, TestShell());
        // The start has filled the connection points.
        plotLinesAnew = [] { Plots().emplace_back("lines"); };
        plotAnew = [] { Plots().emplace_back("full"); };
        TestShell().log.clear();
    }
    void TearDown() override {
        EndSession();
        CommandTest::TearDown();
    }
    SessionFiles files;
};

TEST_F(SelectChartTest, OpenChartFileAsksForAFileAndListsItsChartsByNameAndDate) {
    TestShell().fileAnswers = {kSample};
    TestShell().itemAnswers = {3};
    EXPECT_EQ(Run("&Chart", "&Open Chart File..."), "lines");
    const Words log = Log();
    ASSERT_EQ(log.size(), 2U);
    EXPECT_EQ(log[0], "ChooseFile|Select Chart File to Open|*.cht|open");
    EXPECT_EQ(log[1],
              "ChooseItem|Select Chart from sample.cht|Apollo 11 lands on the Moon - Jul 20 1969|"
              "Total solar eclipse - Aug 11 1999|The year 2000 - Jan 1 2000|Berlin Wall opens - "
              "Nov 9 1989|First powered flight - Dec 17 1903|Sputnik 1 launched - Oct 4 1957");
    EXPECT_EQ(session.ChartNumber, 1);
    EXPECT_EQ(calcChart[1].Name, "The year 2000");
    EXPECT_EQ(calcChart[1].Saved, -1);
    EXPECT_EQ(chartLines.askedByUser, -1) << "lines that can't be seen are asked about";
    EXPECT_EQ(session.ChartFile, kSample);
}

TEST_F(SelectChartTest, FilesOfEveryTypeAreListedAndEachOfTheirChartsOpens) {
    const struct {
        std::string file;
        std::int32_t charts;
    } rows[] = {{"type0.cht", 2}, {"type1.cht", 2}, {"type2.cht", 3}, {"type3.ch6", 3}};
    for (const auto& row : rows) {
        for (std::int32_t n = 1; n <= row.charts; ++n) {
            session.ChartNumber = 0;
            TestShell().fileAnswers = {kGolden + row.file};
            TestShell().itemAnswers = {n};
            EXPECT_EQ(Run("&Chart", "&Open Chart File..."), "lines") << row.file << n;
            const Words log = Log();
            ASSERT_GE(log.size(), 2U);
            EXPECT_EQ(std::count(log[1].begin(), log[1].end(), '|'), row.charts + 1) << log[1];
            EXPECT_EQ(session.ChartNumber, 1) << row.file << n;
        }
    }
}

TEST_F(SelectChartTest, SelectChartTakesTheFileUsedLast) {
    RunTimeError reason;
    ASSERT_EQ(OpenChart(kSample, 1, reason), ChartStatus::Ok);
    TestShell().itemAnswers = {2};
    EXPECT_EQ(Run("&Chart", "&Select Chart..."), "lines");
    EXPECT_EQ(calcChart[1].Name, "Total solar eclipse");
    EXPECT_EQ(Log().size(), 1U);
}

TEST_F(SelectChartTest, SelectChartWithoutAFileAsksForOneFirst) {
    EXPECT_EQ(Run("&Chart", "&Select Chart..."), "none");
    EXPECT_EQ(Log(), Words{"ChooseFile|Select Chart File to Open|*.cht|open"});
    session.ChartFile = files.At("user", "gone.cht");
    EXPECT_EQ(Run("&Chart", "&Select Chart..."), "none");
    EXPECT_EQ(Log(), Words{"ChooseFile|Select Chart File to Open|*.cht|open"});
}

TEST_F(SelectChartTest, TheListNamesItsFileInTheCodePage) {
    TestShell().fileAnswers = {files.Write("user", "\xC3\xA9t\xC3\xA9.cht", FileBytes(kSample))};
    EXPECT_EQ(Run("&Chart", "&Open Chart File..."), "none");
    const Words log = Log();
    ASSERT_EQ(log.size(), 2U);
    EXPECT_TRUE(log[1].starts_with("ChooseItem|Select Chart from \xE9t\xE9.cht|")) << log[1];
}

TEST_F(SelectChartTest, AChartThatCannotBeCalculatedLeavesTheOneOnDisplay) {
    RunTimeError reason;
    ASSERT_EQ(OpenChart(kSample, 1, reason), ChartStatus::Ok);
    chartNotes[1].note = "A note";
    chartLines.askedByUser = kFalse;
    const CalcChart chart = calcChart[1];
    const ChartNow now = chartNow;

    Bytes bytes = FileBytes(kSample);
    std::uint8_t* record = &bytes[kFileChartSize];
    FileChart broken = GetFileChart(record);
    broken.event.zoneHours = 1e30F;
    PutFileChart(record, broken);
    session.ChartFile = files.Write("user", "broken.cht", bytes);
    TestShell().itemAnswers = {1};
    EXPECT_EQ(Run("&Chart", "&Select Chart..."), "none");
    EXPECT_EQ(TestShell().boxes.back(), "Orvantis: FileChartToCalcChart Error: 6");
    EXPECT_EQ(session.ChartNumber, 1);
    EXPECT_EQ(calcChart[1].Name, chart.Name);
    EXPECT_EQ(calcChart[1].Lon, chart.Lon);
    EXPECT_EQ(calcChart[1].Saved, -1);
    EXPECT_EQ(chartNotes[1].note, "A note");
    EXPECT_EQ(chartNow.JulianDayUT, now.JulianDayUT);
    EXPECT_EQ(chartLines.askedByUser, kFalse);
}

TEST_F(SelectChartTest, CancelInTheListChangesNothing) {
    TestShell().fileAnswers = {kSample};
    EXPECT_EQ(Run("&Chart", "&Open Chart File..."), "none");
    EXPECT_EQ(session.ChartNumber, 0);
    EXPECT_EQ(chartLines.askedByUser, 0);
}

TEST_F(SelectChartTest, OkWithoutASelectionIsToldAndAsksAgain) {
    TestShell().fileAnswers = {files.Write("user", "empty.cht", "")};
    TestShell().itemAnswers = {0, std::nullopt};
    EXPECT_EQ(Run("&Chart", "&Open Chart File..."), "none");
    EXPECT_EQ(Log(), (Words{"ChooseFile|Select Chart File to Open|*.cht|open",
                            "ChooseItem|Select Chart from empty.cht",
                            "MessageBox|Select Item|Please select an item from the list before "
                            "using the OK button.|Ok|Exclamation",
                            "ChooseItem|Select Chart from empty.cht"}));
}

TEST_F(SelectChartTest, AChartThatIsGoneWhenItIsChosenIsNotFound) {
    const std::string path = files.Write("user", "short.cht", FileBytes(kSample));
    session.ChartFile = path;
    TestShell().itemAnswers = {9};
    EXPECT_EQ(Run("&Chart", "&Select Chart..."), "none") << "a number that isn't on the list";
    EXPECT_EQ(TestShell().boxes.back(),
              "Select Item: Please select an item from the list before using the OK button.");

    // Another program empties the file while the list is open.
    session.ChartFile = files.Write("user", "going.cht", FileBytes(kSample));
    TestShell().whileChoosing = [&] { files.Write("user", "going.cht", Bytes()); };
    TestShell().itemAnswers = {1};
    Log();
    EXPECT_EQ(Run("&Chart", "&Select Chart..."), "none");
    EXPECT_EQ(TestShell().boxes.back(), "Orvantis: Chart Not Found");
    EXPECT_EQ(session.ChartNumber, 0);
}

// ---- "S&ave Chart..." ----

TEST_F(SelectChartTest, AChartOfAFileIsSavedOnceMoreOnlyAfterAQuestion) {
    RunTimeError reason;
    ASSERT_EQ(OpenChart(kSample, 1, reason), ChartStatus::Ok);
    const std::string question =
        "MessageBox|Confirm Save|This chart is already stored in a file.\\r\\n\\r\\nDo you wish to "
        "save a copy anyway?|OkCancel|Question";
    TestShell().boxAnswers = {BoxAnswer::Cancel};
    EXPECT_EQ(Run("&Chart", "S&ave Chart..."), "none");
    EXPECT_EQ(Log(), Words{question});

    TestShell().fileAnswers = {std::nullopt};
    EXPECT_EQ(Run("&Chart", "S&ave Chart..."), "none");
    EXPECT_EQ(Log(), (Words{question, "ChooseFile|Select File to Save Chart in|*.cht|save"}));

    const std::string path = files.Write("user", "copy.cht", FileBytes(kSample));
    TestShell().fileAnswers = {path};
    EXPECT_EQ(Run("&Chart", "S&ave Chart..."), "none");
    EXPECT_EQ(Log(), (Words{question, "ChooseFile|Select File to Save Chart in|*.cht|save",
                            "MessageBox|Orvantis|Chart has been saved.|Ok|Information"}));
    EXPECT_EQ(FileBytes(path).size(), FileBytes(kSample).size() + 292);
}

TEST_F(SelectChartTest, AChartThatIsInNoFileIsSavedWithoutAQuestion) {
    RunTimeError reason;
    ASSERT_EQ(OpenChart(kSample, 1, reason), ChartStatus::Ok);
    calcChart[1].Saved = kFalse;
    TestShell().fileAnswers = {files.At("user", "new.cht")};
    EXPECT_EQ(Run("&Chart", "S&ave Chart..."), "none");
    EXPECT_EQ(Log(), (Words{"ChooseFile|Select File to Save Chart in|*.cht|save",
                            "MessageBox|Orvantis|Chart has been saved.|Ok|Information"}));
    EXPECT_EQ(calcChart[1].Saved, -1);
}

}  // namespace
}  // namespace orvantis

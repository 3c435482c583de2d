// The command that saves the chart on display, and its place at the end of a session.
#include "session/save_chart.h"

#include <filesystem>
#include <gtest/gtest.h>

#include "charts/CALCCHRT.h"
#include "charts/chart_lists.h"
#include "session/connections.h"
#include "session/driver.h"
#include "session/files.h"
#include "session/session_state.h"
#include "support/reset_all.h"
#include "support/temp_folder.h"

namespace orvantis {
namespace {

using Log = std::vector<std::string>;

const std::string kChoice = "ChooseFile|Select File to Save Chart in|*.cht|";
const std::string kSaved = "MessageBox|Orvantis|Chart has been saved.|";

class SaveChartCommand : public ::testing::Test {
  protected:
    SaveChartCommand() {
        ResetAll();
        session.ChartNumber = 1;
        CalcChart& chart = calcChart[1];
        chart.Name = "Someone";
        chart.ChartType = chart.ChartSubType = chart.RecordForm = 1;
        chart.DateText = "31 Dec 1992";
        chart.TimeText = "23:59";
        chart.LatText = "34S55";
        chart.LongText = "138E34";
    }

    // The file "mine.cht" with two charts.
    std::string Make() const {
        ChartList list;
        list.charts.resize(2);
        EXPECT_TRUE(SaveChartFile(Mine(), chart_file::kFormat2, list));
        return Mine();
    }
    std::string Mine() const { return ProgramPath(folder_.File("mine.cht")); }

    static std::size_t ChartsIn(const std::string& path) {
        ChartList list;
        EXPECT_TRUE(LoadChartList(path, list, kFalse));
        return list.charts.size();
    }

    static bool Starts(const std::string& line, const std::string& start) {
        return line.substr(0, start.size()) == start;
    }

    TempFolder folder_;
};

TEST_F(SaveChartCommand, ItAsksForAFileAppendsTheChartAndSaysSo) {
    TestShell().fileAnswers = {Make()};
    SaveChart();
    ASSERT_EQ(TestShell().log.size(), 2U);
    EXPECT_TRUE(Starts(TestShell().log[0], kChoice)) << TestShell().log[0];
    EXPECT_TRUE(Starts(TestShell().log[1], kSaved)) << TestShell().log[1];
    EXPECT_EQ(ChartsIn(Mine()), 3U);
    EXPECT_EQ(calcChart[1].Saved, kTrue);
}

TEST_F(SaveChartCommand, AChartThatStandsInAFileIsSavedOnceMoreOnlyIfTheUserWishes) {
    Make();
    calcChart[1].Saved = kTrue;
    TestShell().boxAnswers = {BoxAnswer::Cancel};
    SaveChart();
    EXPECT_EQ(
        TestShell().boxes,
        Log{"Confirm Save: This chart is already stored in a file. /  / Do you wish to save a "
            "copy anyway?"});
    EXPECT_EQ(TestShell().log.size(), 1U) << "no file is asked for";
    TestShell().boxAnswers = {BoxAnswer::Ok};
    TestShell().fileAnswers = {Mine()};
    SaveChart();
    EXPECT_EQ(ChartsIn(Mine()), 3U);
}

TEST_F(SaveChartCommand, ACancelledChoiceSavesNothing) {
    SaveChart();
    EXPECT_EQ(TestShell().log.size(), 1U);
    EXPECT_EQ(calcChart[1].Saved, kFalse);
}

TEST_F(SaveChartCommand, WithoutAChartItDoesNothing) {
    session.ChartNumber = 0;
    SaveChart();
    EXPECT_TRUE(TestShell().log.empty());
}

TEST_F(SaveChartCommand, ANewNameWithoutAnExtensionGetsThatOfChartFiles) {
    TestShell().fileAnswers = {ProgramPath(folder_.File("new"))};
    SaveChart();
    EXPECT_FALSE(std::filesystem::exists(folder_.File("new")));
    EXPECT_EQ(ChartsIn(ProgramPath(folder_.File("new.cht"))), 1U);
}

TEST_F(SaveChartCommand, AFileThatCannotTakeItIsToldAndTheChartStaysUnsaved) {
    folder_.Write("bad.ch6", Bytes{3, 0});
    TestShell().fileAnswers = {ProgramPath(folder_.File("bad.ch6"))};
    SaveChart();
    ASSERT_EQ(TestShell().boxes.size(), 1U);
    EXPECT_TRUE(Starts(TestShell().boxes[0], "Orvantis: Unable to save chart file: "));
    EXPECT_EQ(calcChart[1].Saved, kFalse);
}

TEST_F(SaveChartCommand, YesAtTheQuestionOfAnUnsavedChartSavesItAndTheSessionEnds) {
    ConnectRooms();
    session.IniDir = ProgramPath(folder_.Path());
    session.OwnIni = "ORVANT2.INI";
    session.ProgramDir = ProgramPath(folder_.Path());
    Flag cancel = kFalse;
    TestShell().boxAnswers = {BoxAnswer::Yes};
    ExitSession(cancel);
    EXPECT_NE(cancel, kFalse) << "the choice of a file was cancelled";

    TestShell().boxAnswers = {BoxAnswer::Yes};
    TestShell().fileAnswers = {Make()};
    ExitSession(cancel);
    EXPECT_EQ(cancel, kFalse);
    EXPECT_EQ(ChartsIn(Mine()), 3U);
}

}  // namespace
}  // namespace orvantis

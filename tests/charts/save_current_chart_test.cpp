// The chart on display into a chart file.
#include "charts/save_current_chart.h"

#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <iterator>

#include "charts/CALCCHRT.h"
#include "charts/SwissEph.h"
#include "charts/chart_lists.h"
#include "charts/chart_samples.h"
#include "session/files.h"
#include "session/session_state.h"
#include "session/settings.h"
#include "support/failing_disk.h"
#include "support/paths.h"
#include "support/reset_all.h"
#include "support/temp_folder.h"
#include "text/dates.h"
#include "text/run_time_error.h"
#include "text/text_state.h"

namespace orvantis {
namespace {

class SavingTheChart : public ::testing::Test {
  protected:
    SavingTheChart() {
        ResetAll();
        options.userSVP = 335.5;
    }

    // A chart in slot 1 as its calculation leaves it.
    static CalcChart& Show() {
        CalcChart& chart = calcChart[1];
        chart = {};
        chart.Name = "Someone";
        chart.ChartType = 2;
        chart.ChartSubType = 5;
        chart.ChartFlags = 3;
        chart.HouseCode = 4;
        chart.AyanamsaCode = 10;
        chart.RecordForm = 1;
        chart.DateText = "31 Dec 1992";
        chart.TimeText = "11:59:07 PM";
        chart.ZoneHours = -9.5F;
        chart.ZoneText = "ACST";
        chart.Place = "Adelaide";
        chart.Country = "Australia";
        chart.LatText = "34S55 12";
        chart.LongText = "138E34 10";
        return chart;
    }

    std::string Path(std::string_view name) const { return folder_.File(name); }

    // A file of a type with two charts.
    std::string Make(std::string_view name, std::int16_t type) const {
        ChartList list = SampleList(2);
        EXPECT_TRUE(SaveChartFile(Path(name), type, list));
        return Path(name);
    }

    static ChartList Load(const std::string& path) {
        ChartList list;
        EXPECT_TRUE(LoadChartList(path, list, kFalse));
        return list;
    }

    static Bytes FileBytes(const std::string& path) {
        std::ifstream file(path, std::ios::binary);
        return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
    }

    TempFolder folder_;
};

TEST_F(SavingTheChart, EveryFieldGoesIntoTheFileFromTheChartsTexts) {
    for (const std::int16_t type : {2, 3}) {
        CalcChart& chart = Show();
        const std::string path = Make("a" + std::to_string(type) + ".cht", type);
        ASSERT_TRUE(SaveCurrentChart(1, path));
        EXPECT_EQ(chart.Saved, kTrue);
        const ChartList list = Load(path);
        ASSERT_EQ(list.charts.size(), 3U);
        EXPECT_EQ(list.type, type);
        FileChart expected;
        expected.chartType = 2;
        expected.chartSubType = 5;
        expected.event.name = "Someone";
        expected.event.place = "Adelaide";
        expected.event.country = "Australia";
        expected.event.longitude = static_cast<float>(-(138 + (34 + 10 / 60.0) / 60));
        expected.event.latitude = static_cast<float>(-(34 + (55 + 12 / 60.0) / 60));
        expected.event.year = 1992;
        expected.event.month = 12;
        expected.event.day = 31;
        expected.event.hour = 23;
        expected.event.minute = 59;
        expected.event.second = 7;
        expected.event.zoneHours = -9.5F;
        expected.event.zoneName = "ACST";
        expected.houseCode = 4;
        expected.ayanamsaCode = 10;
        expected.ayanamsaValue = 335.5F;
        expected.recordForm = 1;
        expected.chartFlags = 3;
        expected.commentRef = 3;  // its own number in a list
        ExpectSameChart(list.charts[2].chart, expected);
        EXPECT_EQ(list.charts[2].comment, "");
        EXPECT_TRUE(TestShell().boxes.empty());
    }
}

TEST_F(SavingTheChart, TheChartIsTheLastOneOfEveryTypeAndTheOthersStay) {
    for (const std::int16_t type : {0, 1, 2, 3}) {
        Show();
        const std::string path = Make("b" + std::to_string(type) + ".cht", type);
        const ChartList before = Load(path);
        ASSERT_TRUE(SaveCurrentChart(1, path)) << type;
        ASSERT_TRUE(SaveCurrentChart(1, path)) << type;
        const ChartList after = Load(path);
        ASSERT_EQ(after.charts.size(), 4U) << type;
        for (std::size_t i = 0; i < 2; ++i) {
            ExpectSameStored(after.charts[i], before.charts[i]);
        }
        EXPECT_EQ(after.charts[3].chart.event.name, "Someone");
        EXPECT_EQ(after.charts[3].chart.event.hour, 23);
        EXPECT_EQ(after.charts[3].chart.chartFlags, type >= 2 ? 3 : 0);
        EXPECT_TRUE(openChartLists.empty());
    }
}

TEST_F(SavingTheChart, OnlyTheTwoOptionsGoIntoTheFlags) {
    Show().ChartFlags = 0xFE;
    const std::string path = Make("c.cht", 2);
    ASSERT_TRUE(SaveCurrentChart(1, path));
    EXPECT_EQ(Load(path).charts[2].chart.chartFlags, 2);
}

TEST_F(SavingTheChart, CoordinatesStandAtFixedColumnsAndSecondsMayBeMissing) {
    const struct {
        std::string_view longitude, latitude;
        double degreesW, degreesN;
    } rows[] = {{"000W00", "00N00", 0, 0},
                {"005E30", "05S06 30", -5.5, -(5 + 6.5 / 60)},
                {"179W59 59", "90N00", 179 + 59 / 60.0 + 59 / 3600.0, 90},
                {"008W00 05", "51N28", 8 + 5 / 3600.0, 51 + 28 / 60.0}};
    for (const auto& row : rows) {
        CalcChart& chart = Show();
        chart.LongText = row.longitude;
        chart.LatText = row.latitude;
        const std::string path = Make("d.cht", 2);
        ASSERT_TRUE(SaveCurrentChart(1, path));
        const ChartEvent event = Load(path).charts[2].chart.event;
        EXPECT_FLOAT_EQ(event.longitude, static_cast<float>(row.degreesW)) << row.longitude;
        EXPECT_FLOAT_EQ(event.latitude, static_cast<float>(row.degreesN)) << row.latitude;
    }
}

TEST_F(SavingTheChart, AChartThatWasReadIsSavedAsTheSameMoment) {
    OpenSwissEphemeris(kEphemeris, "");
    for (const Flag monthFirst : {kFalse, kTrue}) {
        for (const std::int16_t year : {1969, 1582, 4, 0, -43, -999, 9999, 12345, -9998}) {
            textState.MonthFirst = monthFirst;
            Format1Record record;
            record.name = "Round";
            record.day = 3;
            record.month = 2;
            record.year = year;
            record.hour = 0;
            record.minute = 30;
            record.longWest = 0;
            record.longDegrees = 7;
            record.latDegrees = 3;
            record.latSeconds = 1;
            record.houseCode = 5;
            record.ayanamsaCode = 1;
            FileChartToCalcChart(record, 1, kFalse);
            TestShell().boxes.clear();
            const std::string path = Make("e.cht", 2);
            ASSERT_TRUE(SaveCurrentChart(1, path)) << year << " " << calcChart[1].DateText;
            const FileChart saved = Load(path).charts[2].chart;
            EXPECT_EQ(saved.event.year, year);
            EXPECT_EQ(saved.event.month, 2);
            EXPECT_EQ(saved.event.day, 3);
            EXPECT_EQ(saved.event.hour, 0);
            EXPECT_EQ(saved.event.minute, 30);
            Format1Record again;
            ChartToFormat1(saved, again);
            EXPECT_EQ(again.longDegrees, 7);
            EXPECT_EQ(again.longWest, 0);
            EXPECT_EQ(again.latDegrees, 3);
            EXPECT_EQ(again.latSeconds, 1);
        }
    }
}

TEST_F(SavingTheChart, AFileThatIsNotThereIsMadeOfType3) {
    Show();
    ASSERT_TRUE(SaveCurrentChart(1, Path("new.cht")));
    const ChartList list = Load(Path("new.cht"));
    EXPECT_EQ(list.type, 3);
    EXPECT_EQ(list.description, "Created in Orvantis");
    ASSERT_EQ(list.charts.size(), 1U);
    EXPECT_EQ(list.charts[0].chart.event.name, "Someone");
    EXPECT_FALSE(std::filesystem::exists(Path("new.cht.bak")));
}

// --- Failures

TEST_F(SavingTheChart, ADateOrTimeThatIsNoneIsToldByItsParserAndNothingIsSaved) {
    const std::string path = Make("f.cht", 2);
    const Bytes before = FileBytes(path);
    Show().DateText = "31 Foo 1992";
    EXPECT_FALSE(SaveCurrentChart(1, path));
    ASSERT_FALSE(TestShell().boxes.empty());
    EXPECT_EQ(TestShell().boxes[0].substr(0, 15), "Error in Date: ");
    TestShell().boxes.clear();
    Show().TimeText = "25:00";
    EXPECT_FALSE(SaveCurrentChart(1, path));
    ASSERT_FALSE(TestShell().boxes.empty());
    EXPECT_EQ(TestShell().boxes[0].substr(0, 15), "Error in Time: ");
    EXPECT_EQ(calcChart[1].Saved, kFalse);
    EXPECT_EQ(FileBytes(path), before);
}

TEST_F(SavingTheChart, ADateTextThatLostItsEndIsNeverSavedAsAnotherDate) {
    // Five figures of a year before Christ don't go into the text's 14 characters.
    const std::string path = Make("l.cht", 2);
    Show().DateText = FormatDateText(13, 2, -12345).substr(0, 14);
    const bool saved = SaveCurrentChart(1, path);
    const ChartList list = Load(path);
    ASSERT_EQ(list.charts.size(), saved ? 3U : 2U);
    if (saved) {
        EXPECT_EQ(list.charts[2].chart.event.year, -12345);
    }
}

TEST_F(SavingTheChart, CoordinatesOutOfTheirColumnsAreToldAndNothingIsSaved) {
    const std::string path = Make("g.cht", 2);
    const Bytes before = FileBytes(path);
    const struct {
        std::string_view longitude, latitude;
        int number;
        std::string_view words;
    } rows[] = {{"38E34", "34S55", 13, "Type mismatch"},
                {"", "34S55", 13, "Type mismatch"},
                {"138E34", "134S55", 13, "Type mismatch"},
                {"1 8E34", "34S55", 13, "Type mismatch"},
                {"256E34", "34S55", 6, "Overflow"}};
    for (const auto& row : rows) {
        CalcChart& chart = Show();
        chart.LongText = row.longitude;
        chart.LatText = row.latitude;
        TestShell().boxes.clear();
        EXPECT_FALSE(SaveCurrentChart(1, path));
        EXPECT_EQ(TestShell().boxes,
                  std::vector<std::string>{"Orvantis: Unable to save chart file: " + path +
                                           " /  / Error " + std::to_string(row.number) + ": " +
                                           std::string(row.words)});
        EXPECT_EQ(chart.Saved, kFalse);
        EXPECT_EQ(PendingRunTimeError(), 0);
    }
    EXPECT_EQ(FileBytes(path), before);
}

TEST_F(SavingTheChart, AFileThatTakesNoChartsIsToldAndStaysAsItWas) {
    Show();
    folder_.Write("noext", std::string(400, 'x'));
    folder_.Write("damaged.ch6", Bytes{3, 0, 1, 2});
    std::filesystem::create_directory(Path("folder.cht"));
    const struct {
        std::string_view name;
        std::string_view error;
    } rows[] = {{"noext", "Error 54: Bad file mode"},
                {"damaged.ch6", "Error 62: Input past end of file"},
                {"folder.cht", "Error 75: Path/File access error"},
                {"nowhere/new.cht", "Error 76: Path not found"},
                {"newnoext", ""}};
    for (const auto& row : rows) {
        TestShell().boxes.clear();
        EXPECT_FALSE(SaveCurrentChart(1, Path(row.name))) << row.name;
        ASSERT_EQ(TestShell().boxes.size(), 1U) << row.name;
        EXPECT_NE(TestShell().boxes[0].find("Unable to save chart file: " + Path(row.name)),
                  std::string::npos);
        EXPECT_NE(TestShell().boxes[0].find(row.error), std::string::npos) << TestShell().boxes[0];
        EXPECT_EQ(calcChart[1].Saved, kFalse);
    }
    EXPECT_EQ(FileBytes(Path("noext")), Bytes(400, 'x'));
    EXPECT_EQ(FileBytes(Path("damaged.ch6")), (Bytes{3, 0, 1, 2}));
    EXPECT_FALSE(std::filesystem::exists(Path("newnoext")));
}

TEST_F(SavingTheChart, BytesBehindTheLastWholeChartAreNotWrittenOver) {
    Show();
    std::vector<std::string> paths = {
        folder_.Write("letter.txt", "Dear reader, this is no chart file, and stays as it is.")};
    for (const std::int16_t type : {0, 1, 2}) {
        const std::string name = "piece" + std::to_string(type) + ".cht";
        Bytes bytes = FileBytes(Make(name, type));
        bytes.resize(bytes.size() - 3);
        paths.push_back(folder_.Write(name, bytes));
    }
    for (const std::string& path : paths) {
        const Bytes before = FileBytes(path);
        TestShell().boxes.clear();
        EXPECT_FALSE(SaveCurrentChart(1, path)) << path;
        EXPECT_EQ(TestShell().boxes,
                  std::vector<std::string>{"Orvantis: Unable to save chart file: " + path +
                                           " /  / Error 62: Input past end of file"});
        EXPECT_EQ(FileBytes(path), before);
    }
}

TEST_F(SavingTheChart, ADiskThatFillsUpLeavesEveryFileAsItWas) {
    for (const std::int16_t type : {0, 1, 2, 3}) {
        Show();
        const std::string path = Make("h" + std::to_string(type) + ".cht", type);
        const Bytes before = FileBytes(path);
        TestShell().boxes.clear();
        {
            const FullDisk disk(before.size() + 50);
            EXPECT_FALSE(SaveCurrentChart(1, path)) << type;
        }
        EXPECT_EQ(FileBytes(path), before) << type;
        EXPECT_EQ(TestShell().boxes.size(), 1U) << type;
        EXPECT_EQ(calcChart[1].Saved, kFalse) << type;
        EXPECT_TRUE(openChartLists.empty()) << type;
        EXPECT_TRUE(SaveCurrentChart(1, path)) << type;
        EXPECT_EQ(Load(path).charts.size(), 3U) << type << ": once, and not twice";
    }
}

TEST_F(SavingTheChart, AListThatHeldUnsavedChartsKeepsThemWhenItCannotBeSaved) {
    Show();
    const std::string path = Make("i.ch6", 3);
    std::int32_t count = 0;
    const FileHandle file = OpenChartFile(path, count, kFalse);
    FileChart unsaved;
    unsaved.event.name = "Unsaved";
    ASSERT_TRUE(WriteChart(3, file, 3, unsaved));
    {
        const FullDisk disk(50);
        EXPECT_FALSE(SaveCurrentChart(1, path));
    }
    const ChartList* list = OpenChartListOf(FindOpenChartList(path));
    ASSERT_NE(list, nullptr);
    ASSERT_EQ(list->charts.size(), 3U);
    EXPECT_EQ(list->charts[2].chart.event.name, "Unsaved");
    EXPECT_EQ(list->changed, kTrue);
    EXPECT_TRUE(SaveCurrentChart(1, path));
    EXPECT_EQ(Load(path).charts.size(), 4U);
}

TEST_F(SavingTheChart, ASlotThatIsNoneIsRefused) {
    const std::string path = Make("j.cht", 2);
    Show();
    for (const std::int16_t slot : {0, 3, -1}) {
        TestShell().boxes.clear();
        EXPECT_FALSE(SaveCurrentChart(slot, path));
        EXPECT_EQ(TestShell().boxes.size(), 1U);
    }
    EXPECT_EQ(Load(path).charts.size(), 2U);
}

TEST_F(SavingTheChart, AnErrorThatStoodBeforeStillStands) {
    Show();
    const std::string path = Make("k.cht", 2);
    RaiseRunTimeError(error::kDiskFull);
    EXPECT_TRUE(SaveCurrentChart(1, path));
    EXPECT_EQ(PendingRunTimeError(), error::kDiskFull);
}

}  // namespace
}  // namespace orvantis

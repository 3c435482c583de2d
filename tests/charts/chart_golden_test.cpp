// Chart files that an independent script made (golden/make_chart_files.py): read, every field of
// every record compared, saved, compared with what the script says must come of it, and read again.
#include <gtest/gtest.h>

#include "chart_samples.h"
#include "charts/comments.h"
#include "session/settings.h"
#include "support/paths.h"
#include "support/reset_all.h"
#include "support/temp_folder.h"

namespace orvantis {
namespace {

Bytes Golden(const std::string& name) {
    Bytes bytes = FileBytes(TestFile("charts/golden/" + name));
    EXPECT_FALSE(bytes.empty()) << name;
    return bytes;
}

// The events of the script.
ChartEvent EventA() {
    ChartEvent event;
    event.name = "A name of fifty characters, all of which are kept!";
    event.place = "Sm\xF8rh\xF8yfjordvegen\xE6n";
    event.country = "Norge";
    event.longitude = -10.75F;
    event.latitude = 59.925F;
    event.year = 1987;
    event.month = 6;
    event.day = 5;
    event.hour = 23;
    event.minute = 59;
    event.second = 58;
    event.zoneHours = -1.5F;
    event.zoneName = "MEST";
    event.reservedEvent = 7;
    return event;
}

ChartEvent EventB() {
    ChartEvent event;
    event.name = "Ides of March";
    event.place = "Roma";
    event.country = "Italia";
    event.longitude = -12.5F;
    event.latitude = -41.25F;
    event.year = -43;
    event.month = 3;
    event.day = 15;
    event.hour = 11;
    event.second = 1;
    event.zoneHours = 0.25F;
    event.zoneName = "LMT";
    return event;
}

const std::string kTwentyEight = "Exactly 28 characters of it.";
const std::string kTwentyNine = "This one has 29 characters.\r\n";

// The three charts of types 2 and 3.
std::vector<StoredChart> WholeCharts() {
    std::vector<StoredChart> charts(3);
    FileChart& first = charts[0].chart;
    first.chartType = 2;
    first.chartSubType = 44;
    first.event = EventA();
    first.reserved1 = 1;
    first.reserved2 = "ab";
    first.reserved3 = "reserved text";
    first.reserved4 = 2;
    first.houseCode = 5;
    first.ayanamsaCode = 10;
    first.ayanamsaValue = 24.5F;
    first.recordForm = 3;
    first.event2.name = "Second title";
    first.event2.longitude = 1.5F;
    first.event2.latitude = -2.5F;
    first.event2.year = 1900;
    first.event2.month = 1;
    first.event2.day = 2;
    first.event2.hour = 3;
    first.event2.minute = 4;
    first.event2.second = 5;
    first.event2.zoneHours = 6;
    first.event2.zoneName = "UT";
    first.event2.reservedEvent = 9;
    first.extra1 = -2;
    first.extra2 = 3;
    first.extraPair = {4, 5};
    first.chartFlags = 3;
    first.extra3 = 6;
    first.extra4 = 1.25;
    FileChart& second = charts[1].chart;
    second.chartType = 13;
    second.chartSubType = 99;
    second.event = EventB();
    FileChart& third = charts[2].chart;
    third.event.year = 1;
    third.event.month = 1;
    third.event.day = 1;
    for (std::int32_t n = 1; n <= 3; ++n)
        charts[static_cast<std::size_t>(n) - 1].chart.commentRef = n;
    return charts;
}

// The two charts of types 0 and 1.
std::vector<StoredChart> OldCharts() {
    std::vector<StoredChart> charts(2);
    FileChart& first = charts[0].chart;
    first.chartType = 2;
    first.chartSubType = 44;
    first.event = EventA();
    first.event.name = "Thirty letters are all it has.";
    first.event.place = "Oslo";
    first.event.longitude = -static_cast<float>(10 + (45 + 30 / 60.0) / 60);
    first.event.latitude = static_cast<float>(59 + (55 + 59 / 60.0) / 60);
    first.event.reservedEvent = 0;
    first.houseCode = 5;
    first.ayanamsaCode = 10;
    first.recordForm = 3;
    first.commentRef = 1;
    FileChart& second = charts[1].chart;
    second.chartType = 13;
    second.chartSubType = 99;
    second.event = EventB();
    second.event.longitude = 12.5F;
    second.commentRef = 2;
    return charts;
}

class ChartGolden : public testing::Test {
  protected:
    void SetUp() override {
        ResetAll();
        options.userSVP = 24.25;
    }

    void ExpectCharts(const std::string& path, std::int16_t type,
                      const std::vector<StoredChart>& expected) {
        ChartList list;
        ASSERT_TRUE(LoadChartList(path, list, kFalse));
        EXPECT_EQ(list.type, type);
        EXPECT_EQ(list.path, path);
        EXPECT_EQ(list.version, type);
        EXPECT_EQ(list.description, type == chart_file::kFormat0 ? "" : "  Charts of a script");
        ASSERT_EQ(list.charts.size(), expected.size());
        for (std::size_t i = 0; i < expected.size(); ++i) {
            SCOPED_TRACE(i + 1);
            ExpectSameStored(list.charts[i], expected[i]);
        }
    }

    // Reads, saves, reads again; `chartFile` and `commentFile` are the bytes that must come of it.
    void ExpectRoundTrip(std::int16_t type, const std::vector<StoredChart>& expected,
                         const Bytes& chartFile, const Bytes& commentFile) {
        ExpectCharts(path_, type, expected);
        ChartList list;
        ASSERT_TRUE(LoadChartList(path_, list, kFalse));
        ASSERT_TRUE(SaveChartFile(path_, type, list));
        EXPECT_TRUE(TestShell().boxes.empty());
        EXPECT_EQ(FileBytes(path_), chartFile);
        EXPECT_EQ(FileBytes(CommentPath(path_)), commentFile);
        ExpectCharts(path_, type, expected);
    }

    TempFolder folder_;
    std::string path_;
};

TEST_F(ChartGolden, Type0ComesBackPackedWithoutTheReservedNumberAndWithTheValueOfTheOptions) {
    path_ = folder_.Write("charts.cht", Golden("type0.cht"));
    std::vector<StoredChart> expected = OldCharts();
    for (StoredChart& stored : expected) stored.chart.ayanamsaValue = 24.25F;
    ExpectRoundTrip(chart_file::kFormat0, expected, Golden("type0_saved.cht"), {});
    EXPECT_EQ(FileBytes(path_ + ".bak"), Golden("type0.cht"));
}

TEST_F(ChartGolden, Type1ComesBackWithoutFlagsPairAndExtraAndWithItsCommentsInOrder) {
    path_ = folder_.Write("charts.cht", Golden("type1.cht"));
    folder_.Write("charts", Golden("type1"));
    std::vector<StoredChart> expected = OldCharts();
    expected[0].chart.ayanamsaValue = 24.5F;
    expected[0].comment = kTwentyNine;
    expected[1].comment = kTwentyEight;
    ExpectRoundTrip(chart_file::kFormat1, expected, Golden("type1_saved.cht"),
                    Golden("type1_saved"));
    EXPECT_EQ(FileBytes(path_ + ".bak"), Golden("type1.cht"));
    EXPECT_EQ(FileBytes(folder_.File("charts.bak")), Golden("type1"));
}

TEST_F(ChartGolden, Type2ComesBackByteForByte) {
    path_ = folder_.Write("charts.cht", Golden("type2.cht"));
    folder_.Write("charts", Golden("type2"));
    std::vector<StoredChart> expected = WholeCharts();
    expected[0].comment = kTwentyEight;
    expected[2].comment = kTwentyNine;
    ExpectRoundTrip(chart_file::kFormat2, expected, Golden("type2.cht"), Golden("type2"));
}

std::vector<StoredChart> Format3Charts() {
    std::vector<StoredChart> charts = WholeCharts();
    charts[0].attachments = {{EventB(), "A note,\r\nof two lines \xDF "}, {EventA(), ""}};
    charts[0].comment = kTwentyNine;
    charts[2].attachments = {{ChartEvent{}, "n"}};
    charts[2].comment = kTwentyEight;
    return charts;
}

TEST_F(ChartGolden, Type3ComesBackByteForByte) {
    path_ = folder_.Write("charts.ch6", Golden("type3.ch6"));
    // The comments are in the file itself, which is its own comment file.
    ExpectRoundTrip(chart_file::kFormat3, Format3Charts(), Golden("type3.ch6"),
                    Golden("type3.ch6"));
}

TEST_F(ChartGolden, ChartsOfAnOpenType3FileAreReadByNumber) {
    path_ = folder_.Write("charts.cht", Golden("type3.ch6"));
    std::int32_t count = 0;
    const FileHandle file = OpenChartFile(path_, count, kFalse);
    ASSERT_EQ(file, 1);
    ASSERT_EQ(count, 3);
    const std::vector<StoredChart> expected = Format3Charts();
    for (std::int32_t n = 1; n <= 3; ++n) {
        FileChart chart;
        ASSERT_TRUE(ReadChart(currentChartFileType, file, n, chart));
        const StoredChart& stored = expected[static_cast<std::size_t>(n) - 1];
        ExpectSameChart(chart, stored.chart);
        EXPECT_EQ(ReadComment(chart_file::kFormat3, path_, n), stored.comment);
    }
    CloseChartFile(currentChartFileType, file);
    EXPECT_EQ(FileBytes(path_), Golden("type3.ch6"));
}

// Saved as another type, what that type has no room for is lost and all else is kept.
TEST_F(ChartGolden, Type2SavedAsType1LosesWhatType1HasNoRoomFor) {
    folder_.Write("in.cht", Golden("type2.cht"));
    folder_.Write("in", Golden("type2"));
    ChartList list;
    ASSERT_TRUE(LoadChartList(folder_.File("in.cht"), list, kFalse));
    path_ = folder_.File("out.cht");
    ASSERT_TRUE(SaveChartFile(path_, chart_file::kFormat1, list));

    std::vector<StoredChart> expected = WholeCharts();
    FileChart& first = expected[0].chart;
    first.event.name = "A name of fifty characters, al";
    first.event.reservedEvent = 0;
    first.reserved1 = first.reserved4 = 0;
    first.reserved2 = first.reserved3 = "";
    first.event2 = {};
    first.extra1 = 0;
    first.extra2 = first.extra3 = first.chartFlags = 0;
    first.extraPair = {0, 0};
    first.extra4 = 0;
    expected[0].comment = kTwentyEight;
    expected[2].comment = kTwentyNine;
    ExpectCharts(path_, chart_file::kFormat1, expected);
}

TEST_F(ChartGolden, Type3SavedAsType2LosesItsAttachmentsAlone) {
    folder_.Write("in.ch6", Golden("type3.ch6"));
    ChartList list;
    ASSERT_TRUE(LoadChartList(folder_.File("in.ch6"), list, kFalse));
    path_ = folder_.File("out.cht");
    ASSERT_TRUE(SaveChartFile(path_, chart_file::kFormat2, list));
    std::vector<StoredChart> expected = Format3Charts();
    for (StoredChart& stored : expected) stored.attachments.clear();
    ExpectCharts(path_, chart_file::kFormat2, expected);
}

TEST_F(ChartGolden, Type2SavedAsType0LosesTheValueOfItsZodiacAndItsComments) {
    folder_.Write("in.cht", Golden("type2.cht"));
    folder_.Write("in", Golden("type2"));
    ChartList list;
    ASSERT_TRUE(LoadChartList(folder_.File("in.cht"), list, kFalse));
    path_ = folder_.File("out.cht");
    ASSERT_TRUE(SaveChartFile(path_, chart_file::kFormat0, list));
    ChartList back;
    ASSERT_TRUE(LoadChartList(path_, back, kFalse));
    ASSERT_EQ(back.charts.size(), 3U);
    const FileChart& chart = back.charts[0].chart;
    EXPECT_EQ(chart.event.name, "A name of fifty characters, al");
    EXPECT_EQ(chart.ayanamsaValue, 24.25F);
    EXPECT_EQ(chart.ayanamsaCode, 10);
    EXPECT_EQ(chart.recordForm, 3);
    EXPECT_EQ(chart.chartFlags, 0);
    EXPECT_EQ(chart.event.longitude, -10.75F);
    EXPECT_EQ(chart.event.latitude, 59.925F);
    EXPECT_EQ(back.charts[0].comment, "");
    EXPECT_EQ(FileBytes(folder_.File("out")), Bytes{});
}

}  // namespace
}  // namespace orvantis

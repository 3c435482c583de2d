#include <algorithm>
#include <cmath>
#include <gtest/gtest.h>
#include <limits>
#include <random>

#include "charts/KVCharts.h"
#include "session/settings.h"
#include "support/reset_all.h"

namespace orvantis {
namespace {

class ChartRecords : public testing::Test {
  protected:
    void SetUp() override { ResetAll(); }
};

ChartEvent SampleEvent() {
    ChartEvent event;
    event.name = "Fifty characters of a name are kept, these are 50.";
    event.place = "Twenty letters place";
    event.country = "Norge \xC5";
    event.longitude = -10.75F;
    event.latitude = 59.9166679F;
    event.year = -43;
    event.month = 3;
    event.day = 15;
    event.hour = 23;
    event.minute = 59;
    event.second = 58;
    event.zoneHours = -1.5F;
    event.zoneName = "XYZAB";
    event.reservedEvent = 7;
    return event;
}

FileChart SampleChart() {
    FileChart chart;
    chart.chartType = 2;
    chart.chartSubType = 44;
    chart.event = SampleEvent();
    chart.reserved1 = 1;
    chart.reserved2 = "ab";
    chart.reserved3 = "reserved";
    chart.reserved4 = 2;
    chart.houseCode = 5;
    chart.ayanamsaCode = 3;
    chart.ayanamsaValue = 24.5F;
    chart.recordForm = 1;
    chart.commentRef = 0x01020304;
    chart.event2 = SampleEvent();
    chart.event2.name = "Second title";
    chart.extra1 = -2;
    chart.extra2 = 3;
    chart.extraPair = {4, 5};
    chart.chartFlags = 3;
    chart.extra3 = 6;
    chart.extra4 = 1.25;
    return chart;
}

void Append(Bytes& bytes, std::string_view text) {
    bytes.insert(bytes.end(), text.begin(), text.end());
}

void Append(Bytes& bytes, std::initializer_list<int> values) {
    for (const int value : values) bytes.push_back(static_cast<std::uint8_t>(value));
}

Bytes SampleEventBytes() {
    Bytes bytes;
    Append(bytes, "Fifty characters of a name are kept, these are 50.");
    Append(bytes, "Twenty letters place");
    Append(bytes, "Norge \xC5             ");
    Append(bytes, {0x00, 0x00, 0x2C, 0xC1});  // -10.75
    Append(bytes, {0xAB, 0xAA, 0x6F, 0x42});  // 59.9166679
    Append(bytes, {0xD5, 0xFF, 3, 15, 23, 59, 58});
    Append(bytes, {0x00, 0x00, 0xC0, 0xBF});  // -1.5
    Append(bytes, "XYZAB");
    Append(bytes, {7});
    return bytes;
}

TEST_F(ChartRecords, AChartEventHasItsGoldenBytes) {
    const Bytes golden = SampleEventBytes();
    ASSERT_EQ(golden.size(), 115U);
    Bytes bytes(115, 0xEE);
    PutChartEvent(bytes.data(), SampleEvent());
    EXPECT_EQ(bytes, golden);
    Bytes again(115);
    PutChartEvent(again.data(), GetChartEvent(golden.data()));
    EXPECT_EQ(again, golden);
}

TEST_F(ChartRecords, AFileChartHasItsGoldenBytes) {
    Bytes golden;
    Append(golden, {2, 44});
    const Bytes event = SampleEventBytes();
    golden.insert(golden.end(), event.begin(), event.end());
    Append(golden, {1});
    Append(golden, "ab");
    Append(golden, "reserved                      ");
    Append(golden, {2, 5, 3, 0x00, 0x00, 0xC4, 0x41, 1, 4, 3, 2, 1});
    Bytes event2 = event;
    PutText(event2.data(), 50, "Second title");
    golden.insert(golden.end(), event2.begin(), event2.end());
    Append(golden, {0xFE, 0xFF, 3, 4, 5, 3, 6, 0, 0, 0, 0, 0, 0, 0xF4, 0x3F});
    ASSERT_EQ(golden.size(), 292U);

    Bytes bytes(292, 0xEE);
    PutFileChart(bytes.data(), SampleChart());
    EXPECT_EQ(bytes, golden);
}

TEST_F(ChartRecords, AFormat1RecordHasItsGoldenBytes) {
    Format1Record record;
    record.chartType = 1;
    record.chartSubType = 2;
    record.chartFlags = 3;
    record.extraPair0 = 4;
    record.extra3 = 5;
    record.name = "Name of the chart";
    record.place = "Place";
    record.country = "Country";
    record.zoneHours = 5;
    record.zoneName = "EST";
    record.day = 31;
    record.month = 12;
    record.year = 1992;
    record.hour = 1;
    record.minute = 2;
    record.second = 3;
    record.longWest = 0;
    record.longDegrees = 138;
    record.longMinutes = 34;
    record.longSeconds = 10;
    record.latNorth = 0;
    record.latDegrees = 35;
    record.latMinutes = 55;
    record.latSeconds = 12;
    record.houseCode = 5;
    record.ayanamsaCode = 1;
    record.ayanamsaValue = 2;
    record.recordForm = 1;
    record.commentRef = 258;

    Bytes golden;
    Append(golden, {1, 2, 3, 4, 5});
    Append(golden, "Name of the chart             ");
    Append(golden, "Place               Country             ");
    Append(golden, {0x00, 0x00, 0xA0, 0x40});
    Append(golden, "EST  ");
    Append(golden, {31, 12, 0xC8, 0x07, 1, 2, 3, 0, 138, 34, 10, 0, 35, 55, 12, 5, 1});
    Append(golden, {0x00, 0x00, 0x00, 0x40, 1, 2, 1, 0, 0});
    ASSERT_EQ(golden.size(), 110U);

    Bytes bytes(110, 0xEE);
    PutFormat1Record(bytes.data(), record);
    EXPECT_EQ(bytes, golden);
    Bytes again(110);
    PutFormat1Record(again.data(), GetFormat1Record(golden.data()));
    EXPECT_EQ(again, golden);
}

// Any bytes come back as they were: names with any byte, NaNs, marks that no field knows.
TEST_F(ChartRecords, AnyBytesSurviveReadingAndWriting) {
    const unsigned seed = 20261121;
    std::mt19937 random(seed);
    for (int run = 0; run < 200; ++run) {
        Bytes bytes(292);
        for (std::uint8_t& byte : bytes) byte = static_cast<std::uint8_t>(random());
        Bytes again(292);
        PutFileChart(again.data(), GetFileChart(bytes.data()));
        ASSERT_EQ(again, bytes) << "seed " << seed << " run " << run;
        Bytes record(110);
        PutFormat1Record(record.data(), GetFormat1Record(bytes.data()));
        ASSERT_TRUE(std::equal(record.begin(), record.end(), bytes.begin())) << seed << " " << run;
    }
}

TEST_F(ChartRecords, AFormat1RoundTripLosesTheFlagsAndKeepsTheRestToTheSecond) {
    const FileChart chart = SampleChart();
    Format1Record record;
    ChartToFormat1(chart, record);
    EXPECT_EQ(record.chartFlags, 3);
    EXPECT_EQ(record.extraPair0, 4);
    EXPECT_EQ(record.extra3, 6);
    FileChart back;
    Format1ToChart(record, back);

    EXPECT_EQ(back.chartFlags, 0);
    EXPECT_EQ(back.extraPair[0], 0);
    EXPECT_EQ(back.extraPair[1], 0);
    EXPECT_EQ(back.extra3, 0);
    EXPECT_EQ(back.chartType, chart.chartType);
    EXPECT_EQ(back.chartSubType, chart.chartSubType);
    EXPECT_EQ(back.event.name, "Fifty characters of a name are");
    EXPECT_EQ(back.event.place, chart.event.place);
    EXPECT_EQ(back.event.country, chart.event.country);
    EXPECT_EQ(back.event.zoneHours, chart.event.zoneHours);
    EXPECT_EQ(back.event.zoneName, chart.event.zoneName);
    EXPECT_EQ(back.event.year, chart.event.year);
    EXPECT_EQ(back.event.month, chart.event.month);
    EXPECT_EQ(back.event.day, chart.event.day);
    EXPECT_EQ(back.event.hour, chart.event.hour);
    EXPECT_EQ(back.event.minute, chart.event.minute);
    EXPECT_EQ(back.event.second, chart.event.second);
    EXPECT_FLOAT_EQ(back.event.longitude, chart.event.longitude);
    EXPECT_FLOAT_EQ(back.event.latitude, chart.event.latitude);
    EXPECT_EQ(back.houseCode, chart.houseCode);
    EXPECT_EQ(back.ayanamsaCode, chart.ayanamsaCode);
    EXPECT_EQ(back.ayanamsaValue, chart.ayanamsaValue);
    EXPECT_EQ(back.recordForm, chart.recordForm);
    EXPECT_EQ(back.commentRef, chart.commentRef);
    EXPECT_EQ(back.event2.name, "");
}

TEST_F(ChartRecords, SecondsOfArcComeBackThrough32Bits) {
    Format1Record record;
    FileChart chart;
    for (int seconds = 0; seconds <= 180 * 3600; seconds += 7) {
        // Zero has no side of its own: it is west.
        record.longWest = seconds % 2 == 0 ? 1 : 0;
        record.longDegrees = static_cast<std::uint8_t>(seconds / 3600);
        record.longMinutes = static_cast<std::uint8_t>(seconds / 60 % 60);
        record.longSeconds = static_cast<std::uint8_t>(seconds % 60);
        Format1ToChart(record, chart);
        Format1Record back;
        ChartToFormat1(chart, back);
        ASSERT_EQ(back.longDegrees * 3600 + back.longMinutes * 60 + back.longSeconds, seconds);
        ASSERT_EQ(back.longWest, record.longWest) << seconds;
    }
}

TEST_F(ChartRecords, ACoordinateAHairUnderTwoDegreesSplitsAsTwoDegrees) {
    FileChart chart;
    chart.event.longitude = std::nextafter(2.0F, 0.0F);
    chart.event.latitude = -std::nextafter(2.0F, 0.0F);
    Format1Record record;
    ChartToFormat1(chart, record);
    EXPECT_EQ(record.longDegrees, 2);
    EXPECT_EQ(record.longMinutes, 0);
    EXPECT_EQ(record.longSeconds, 0);
    EXPECT_EQ(record.longWest, 1);
    EXPECT_EQ(record.latDegrees, 2);
    EXPECT_EQ(record.latNorth, 0);
}

TEST_F(ChartRecords, ZeroCountsAsWestAndNorth) {
    Format1Record record;
    record.longWest = 0;
    record.latNorth = 0;
    ChartToFormat1(FileChart{}, record);
    EXPECT_EQ(record.longWest, 1);
    EXPECT_EQ(record.latNorth, 1);
}

TEST_F(ChartRecords, ACoordinateThatNoByteHoldsIsAnOverflow) {
    for (const float bad : {256.0F, 1e30F, std::numeric_limits<float>::infinity(),
                            std::numeric_limits<float>::quiet_NaN()}) {
        FileChart chart;
        chart.event.latitude = bad;
        Format1Record record;
        ChartToFormat1(chart, record);
        RunTimeError failure;
        ASSERT_TRUE(TakeRunTimeError(failure)) << bad;
        EXPECT_EQ(failure.number, error::kOverflow);
    }
}

// A format 0 record of a place in Australia; its 16-bit fields stand from byte 83 on.
Bytes Format0Bytes(std::int16_t form, std::int16_t longMinutes, std::int16_t latMinutes) {
    Bytes bytes(115, ' ');
    PutText(bytes.data(), 30, "An old chart");
    PutI16(&bytes[30], 4);
    PutI16(&bytes[32], 5);
    PutText(&bytes[34], 20, "Adelaide");
    PutText(&bytes[54], 20, "Australia");
    PutF32(&bytes[74], -9.5F);
    PutText(&bytes[78], 5, "ACST");
    const std::int16_t fields[] = {31, 12, 1992,       1, 2, 3, 138, longMinutes,
                                   -1, 35, latMinutes, 0, 7, 2, 99,  form};
    std::size_t offset = 83;
    for (const std::int16_t field : fields) {
        PutI16(&bytes[offset], field);
        offset += 2;
    }
    return bytes;
}

TEST_F(ChartRecords, AFormat0RecordIsConvertedFieldByField) {
    options.userSVP = 335.5;
    const Bytes bytes = Format0Bytes(0, 34, 55);
    FileChart chart;
    chart.reserved1 = 9;
    chart.event2.name = "stale";
    Format0ToChart(bytes.data(), chart);
    EXPECT_EQ(chart.chartType, 4);
    EXPECT_EQ(chart.chartSubType, 5);
    EXPECT_EQ(chart.event.name, "An old chart");
    EXPECT_EQ(chart.event.place, "Adelaide");
    EXPECT_EQ(chart.event.country, "Australia");
    EXPECT_EQ(chart.event.zoneHours, -9.5F);
    EXPECT_EQ(chart.event.zoneName, "ACST");
    EXPECT_EQ(chart.event.day, 31);
    EXPECT_EQ(chart.event.month, 12);
    EXPECT_EQ(chart.event.year, 1992);
    EXPECT_EQ(chart.event.hour, 1);
    EXPECT_EQ(chart.event.minute, 2);
    EXPECT_EQ(chart.event.second, 3);
    EXPECT_FLOAT_EQ(chart.event.longitude, static_cast<float>(-(138 + 34 / 60.0)));
    EXPECT_FLOAT_EQ(chart.event.latitude, static_cast<float>(-(35 + 55 / 60.0)));
    EXPECT_EQ(chart.houseCode, 7);
    EXPECT_EQ(chart.ayanamsaCode, 2);
    EXPECT_EQ(chart.ayanamsaValue, 335.5F);
    EXPECT_EQ(chart.recordForm, 1);
    EXPECT_EQ(chart.commentRef, 0);
    EXPECT_EQ(chart.reserved1, 0);
    EXPECT_EQ(chart.event2.name, "");
}

TEST_F(ChartRecords, AFormat0RecordInThePackedFormHoldsSecondsAndItsForm) {
    const Bytes bytes = Format0Bytes(3, 3410, 5512);
    FileChart chart;
    Format0ToChart(bytes.data(), chart);
    EXPECT_EQ(chart.recordForm, 3);
    EXPECT_FLOAT_EQ(chart.event.longitude, static_cast<float>(-(138 + 34 / 60.0 + 10 / 3600.0)));
    EXPECT_FLOAT_EQ(chart.event.latitude, static_cast<float>(-(35 + 55 / 60.0 + 12 / 3600.0)));
}

TEST_F(ChartRecords, OnlyMinusOneIsNorthInAFormat0RecordAndOnlyZeroIsWest) {
    Bytes bytes = Format0Bytes(0, 0, 0);
    FileChart chart;
    PutI16(&bytes[105], -1);
    PutI16(&bytes[99], 0);
    Format0ToChart(bytes.data(), chart);
    EXPECT_EQ(chart.event.latitude, 35);
    EXPECT_EQ(chart.event.longitude, 138);
    PutI16(&bytes[105], 1);
    PutI16(&bytes[99], 1);
    Format0ToChart(bytes.data(), chart);
    EXPECT_EQ(chart.event.latitude, -35);
    EXPECT_EQ(chart.event.longitude, -138);
}

// A file of the wrong form has no way to fail: its records are read as they fall.
TEST_F(ChartRecords, OfAFormat0NumberThatNoByteHoldsTheLowByteIsTaken) {
    Bytes bytes = Format0Bytes(0x0203, 0, 0);
    const std::pair<std::size_t, std::int16_t> numbers[] = {
        {83, 256}, {85, -1}, {89, 0x7F05}, {91, 300}, {93, INT16_MIN}, {107, 263}, {109, -2}};
    for (const auto& [offset, number] : numbers) PutI16(&bytes[offset], number);
    FileChart chart;
    Format0ToChart(bytes.data(), chart);
    EXPECT_EQ(chart.event.day, 0);
    EXPECT_EQ(chart.event.month, 255);
    EXPECT_EQ(chart.event.hour, 5);
    EXPECT_EQ(chart.event.minute, 44);
    EXPECT_EQ(chart.event.second, 0);
    EXPECT_EQ(chart.houseCode, 7);
    EXPECT_EQ(chart.ayanamsaCode, 254);
    EXPECT_EQ(chart.recordForm, 3);
    EXPECT_EQ(chart.event.name, "An old chart");
    EXPECT_EQ(PendingRunTimeError(), 0);
}

TEST_F(ChartRecords, AFormat0TypeOutOfRangeIsTheNearestOne) {
    Bytes bytes = Format0Bytes(0, 0, 0);
    PutI16(&bytes[30], 200);
    PutI16(&bytes[32], -5);
    FileChart chart;
    Format0ToChart(bytes.data(), chart);
    EXPECT_EQ(chart.chartType, 13);
    EXPECT_EQ(chart.chartSubType, 1);
}

}  // namespace
}  // namespace orvantis

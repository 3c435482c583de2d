// Exchange files and their companions. The expected offsets are those of the record's table,
// written out as numbers.
#include "charts/exchange.h"

#include <cmath>
#include <filesystem>
#include <gtest/gtest.h>
#include <limits>

#include "charts/CALCCHRT.h"
#include "charts/QXASTRO.h"
#include "charts/SwissEph.h"
#include "charts/chart_samples.h"
#include "session/files.h"
#include "session/session_state.h"
#include "session/settings.h"
#include "support/paths.h"
#include "support/reset_all.h"
#include "support/temp_folder.h"
#include "text/run_time_error.h"

namespace orvantis {
namespace {

constexpr std::size_t kRecord = 3171;
constexpr double kNan = std::numeric_limits<double>::quiet_NaN();
constexpr double kInfinity = std::numeric_limits<double>::infinity();

FileChart SampleChart() {
    FileChart chart;
    chart.event.name = "A chart with a name of more than 30 characters";
    chart.event.place = "Adelaide";
    chart.event.country = "Australia";
    chart.event.longitude = -138.5667F;
    chart.event.latitude = -34.9167F;
    chart.event.year = 1969;
    chart.event.month = 7;
    chart.event.day = 20;
    chart.event.hour = 20;
    chart.event.minute = 17;
    chart.event.second = 40;
    chart.event.zoneHours = -9.5F;
    chart.event.zoneName = "ACST";
    chart.event2.name = "A second title, of more than 30 characters too";
    chart.chartType = 0;
    chart.chartSubType = 200;
    chart.houseCode = 7;
    chart.ayanamsaCode = 3;
    chart.recordForm = 1;
    chart.chartFlags = 3;
    return chart;
}

// A record whose calculation is no real one, so that whatever is taken can be told from what was
// calculated.
Bytes SampleRecord() {
    Bytes bytes(kRecord);
    PutFileChart(bytes.data(), SampleChart());
    PutI16(&bytes[292], 3);           // zodiac
    PutI16(&bytes[294], 2);           // frame
    PutI16(&bytes[296], 7);           // house system
    PutF64(&bytes[298], 2440423.25);  // Julian day
    PutI16(&bytes[306], 1);           // angle flags
    PutI16(&bytes[308], 0);
    for (std::size_t i = 0; i < 12; ++i) PutF64(&bytes[310 + i * 8], 10.5 + 29 * double(i));
    for (std::size_t i = 0; i < 36; ++i) {
        const auto x = static_cast<double>(i);
        PutF64(&bytes[488 + i * 8], 9 * x + 0.25);
        PutF64(&bytes[776 + i * 8], x - 18);
        PutF64(&bytes[1064 + i * 8], x + 0.5);
        PutF64(&bytes[1352 + i * 8], 0.1 * x - 1);
        PutF32(&bytes[1640 + i * 4], static_cast<float>(2 * x - 36));
        PutF32(&bytes[1784 + i * 4], static_cast<float>(8 * x + 1));
        PutI16(&bytes[1928 + i * 2], i % 3 == 0 ? -1 : 0);
        PutF64(&bytes[2000 + i * 8], 9 * x + 1);
        PutI16(&bytes[2288 + i * 2], static_cast<std::int16_t>(36 - i));
        PutI16(&bytes[2360 + i * 2], i % 2 == 0 ? 1 : 0);
    }
    return bytes;
}

Bytes Joined(const std::vector<Bytes>& parts) {
    Bytes all;
    for (const Bytes& part : parts) all.insert(all.end(), part.begin(), part.end());
    return all;
}

Bytes Number(std::int32_t value) {
    Bytes bytes(4);
    PutI32(bytes.data(), value);
    return bytes;
}

Bytes TextBytes(std::string_view text) {
    return {text.begin(), text.end()};
}

Bytes Attachment(const ChartEvent& event, std::string_view note) {
    Bytes bytes(static_cast<std::size_t>(kChartEventSize));
    PutChartEvent(bytes.data(), event);
    return Joined({bytes, Number(static_cast<std::int32_t>(note.size())), TextBytes(note)});
}

ChartEvent NamedEvent(std::string_view name) {
    ChartEvent event;
    event.name = name;
    event.year = 1999;
    event.month = 8;
    event.day = 11;
    return event;
}

class Exchange : public ::testing::Test {
  protected:
    Exchange() {
        ResetAll();
        OpenSwissEphemeris(kEphemeris, "");
        session.SystemDataPath = ProgramPath(folder_.Path());
    }

    ExchangeFilePath Write(const Bytes& bytes) const {
        folder_.Write("~K500003.CH~", bytes);
        return {ChartExchangePath(3, kTrue), kFalse};
    }

    // The record with a note at that place, read.
    ExchangeChart ReadWithNote(std::int32_t position, std::int32_t length) const {
        Bytes bytes = SampleRecord();
        PutI32(&bytes[2902], position);
        PutI32(&bytes[2906], length);
        ExchangeChart exchange;
        EXPECT_TRUE(ReadExchangeChart(Write(bytes), 1, exchange));
        return exchange;
    }

    // The attachments of record n, which is there, beside such a companion.
    std::vector<ChartAttachment> ReadWithAttachments(const Bytes& companion,
                                                     std::int32_t n = 1) const {
        folder_.Write("~K500003.CE~", companion);
        const ExchangeFilePath file =
            Write(Joined({SampleRecord(), SampleRecord(), SampleRecord()}));
        ExchangeChart exchange;
        exchange.attachments.emplace_back();
        EXPECT_TRUE(ReadExchangeChart(file, n, exchange));
        return exchange.attachments;
    }

    // Puts a record, changed, into slot 1.
    template <typename Change>
    const CalcChart& Take(Change change) const {
        Bytes bytes = SampleRecord();
        change(bytes);
        ExchangeChart exchange;
        EXPECT_TRUE(ReadExchangeChart(Write(bytes), 1, exchange));
        EXPECT_EQ(ExchangeChartToSlot(exchange, 1), kFalse);
        return calcChart[1];
    }

    TempFolder folder_;
};

// --- Which file

TEST_F(Exchange, TheSiblingsVersionDecidesBetweenOlderAndNewerNames) {
    session.SystemDataPath = "C:\\Data\\";
    EXPECT_EQ(ChartExchangePath(3, kTrue), "C:\\Data\\~K500003.CH~");
    EXPECT_EQ(ChartExchangePath(3, kFalse), "C:\\Data\\retain5.cha");
    EXPECT_EQ(OlderExchangePath(3, kTrue), "C:\\Data\\~ST00003.CH~");
    EXPECT_EQ(OlderExchangePath(32767, kFalse), "C:\\Data\\retained.cha");

    session.SystemDataPath = ProgramPath(folder_.Path());
    folder_.Write("~ST00003.CH~", "x");
    for (std::uint8_t version = 0; version <= 9; ++version) {
        session.SiblingVersion = version;
        const bool older = version >= 2 && version <= 4;
        if (version == 1) continue;
        const ExchangeFilePath file = FindExchangeFile(3, kTrue);
        EXPECT_EQ(file.older != 0, older) << int{version};
        EXPECT_EQ(file.path, older ? OlderExchangePath(3, kTrue) : ChartExchangePath(3, kTrue));
        EXPECT_EQ(FindExchangeFile(4, kTrue).path, ChartExchangePath(4, kTrue))
            << "an older sibling without an older file";
    }
}

TEST_F(Exchange, AnOlderFileGivesItsChartAloneAndItIsCalculatedAnew) {
    folder_.Write("~ST00003.CH~", SampleRecord());
    folder_.Write("~ST00003.CE~", Joined({Number(1), Number(1), Attachment({}, "")}));
    ExchangeChart exchange;
    ASSERT_TRUE(ReadExchangeChart({OlderExchangePath(3, kTrue), kTrue}, 3, exchange));
    EXPECT_TRUE(exchange.calculation.empty());
    EXPECT_TRUE(exchange.attachments.empty());
    ASSERT_EQ(ExchangeChartToSlot(exchange, 1), kFalse);
    EXPECT_EQ(calcChart[1].Place, "Adelaide");
    EXPECT_EQ(calcChart[1].Frame, 1);
    EXPECT_GT(calcChart[1].Lon[point::kMoon], 0.25);

    folder_.Write("~ST00003.CH~", Bytes(291));
    EXPECT_FALSE(ReadExchangeChart({OlderExchangePath(3, kTrue), kTrue}, 1, exchange));
}

// --- The record

TEST_F(Exchange, EveryFieldOfTheChartComesOver) {
    ExchangeChart exchange;
    ASSERT_TRUE(ReadExchangeChart(Write(SampleRecord()), 1, exchange));
    FileChart expected = SampleChart();
    expected.chartType = 1;
    expected.chartSubType = 99;
    ExpectSameChart(exchange.chart, expected);
    EXPECT_EQ(exchange.note, "");
    EXPECT_TRUE(exchange.attachments.empty());
}

TEST_F(Exchange, TheChartsTextsAndCodesGoIntoTheSlot) {
    const CalcChart& chart = Take([](Bytes&) {});
    EXPECT_EQ(chart.Name, "A chart with a name of more th");
    EXPECT_EQ(chart.Name2, "A second title, of more than 3");
    EXPECT_EQ(chart.ChartType, 1);
    EXPECT_EQ(chart.ChartSubType, 99);
    EXPECT_EQ(chart.ChartFlags, 3);
    EXPECT_EQ(chart.HouseCode, 7);
    EXPECT_EQ(chart.AyanamsaCode, 3);
    EXPECT_EQ(chart.DateText, "Jul 20 1969");
    EXPECT_EQ(chart.TimeText, "8:17:40 PM");
    EXPECT_EQ(chart.ZoneHours, -9.5F);
    EXPECT_EQ(chart.ZoneText, "ACST");
    EXPECT_EQ(chart.Place, "Adelaide");
    EXPECT_EQ(chart.Country, "Australia");
    EXPECT_EQ(chart.LatText, "34S55");
    EXPECT_EQ(chart.LongText, "138E34");
    EXPECT_EQ(chart.Saved, kFalse);
}

TEST_F(Exchange, TheCalculatedArraysGoIntoTheSlotAsTheyAre) {
    const CalcChart& chart = Take([](Bytes&) {});
    EXPECT_EQ(chart.Zodiac, 3);
    EXPECT_EQ(chart.Frame, 2);
    EXPECT_EQ(chart.HouseSystem, 7);
    EXPECT_EQ(chart.JulianDayET, 2440423.25);
    EXPECT_EQ(chart.Cusp1AtAscendant, kTrue);
    EXPECT_EQ(chart.Cusp10AtMidheaven, kFalse);
    for (std::size_t n = 1; n <= 12; ++n) EXPECT_EQ(chart.Cusp[n], 10.5 + 29 * double(n - 1));
    for (std::size_t n = 1; n <= 36; ++n) {
        const auto x = static_cast<double>(n - 1);
        EXPECT_EQ(chart.Lon[n], 9 * x + 0.25) << n;
        EXPECT_EQ(chart.Lat[n], x - 18) << n;
        EXPECT_EQ(chart.Dist[n], x + 0.5) << n;
        EXPECT_EQ(chart.LonSpeed[n], 0.1 * x - 1) << n;
        EXPECT_EQ(chart.LatSpeed[n], 0) << n;
        EXPECT_EQ(chart.Dec[n], static_cast<float>(2 * x - 36)) << n;
        EXPECT_EQ(chart.RA[n], static_cast<float>(8 * x + 1)) << n;
        EXPECT_EQ(chart.Retro[n], (n - 1) % 3 == 0 ? kTrue : kFalse) << n;
        EXPECT_EQ(chart.SortLon[n], 9 * x + 1) << n;
        EXPECT_EQ(chart.SortOrder[n], 37 - static_cast<int>(n)) << n;
        EXPECT_EQ(chart.Shown[n], (n - 1) % 2 == 0 ? 1 : 0) << n;
    }
    for (std::size_t n = 37; n <= 72; ++n) EXPECT_LT(chart.Lon[n], 0) << n;
}

TEST_F(Exchange, TheWholeChartValuesAreThoseOfTheChartsDateAndPlace) {
    Format1Record record;
    ChartToFormat1(SampleChart(), record);
    ASSERT_EQ(FileChartToCalcChart(record, 1, kFalse), kFalse);
    const ChartNow calculated = chartNow;
    const double hours = calcChart[1].TimeUT;
    chartNow = {};
    Take([](Bytes&) {});
    EXPECT_EQ(chartNow.PlaceLat, calculated.PlaceLat);
    EXPECT_EQ(chartNow.PlaceLongW, calculated.PlaceLongW);
    EXPECT_EQ(chartNow.ObliquityNow, calculated.ObliquityNow);
    EXPECT_EQ(chartNow.RAMCNow, calculated.RAMCNow);
    EXPECT_EQ(chartNow.JulianDayUT, calculated.JulianDayUT);
    EXPECT_EQ(chartNow.DeltaT, calculated.DeltaT);
    EXPECT_EQ(calcChart[1].TimeUT, hours);
    // That of the record's zodiac and moment.
    EXPECT_EQ(chartNow.ZodiacOffsetNow, Ayanamsa(3, (2440423.25 - 2415020.0) / 36525));
}

TEST_F(Exchange, ARecordThatHoldsTheProgramsOwnCalculationGivesTheSameChart) {
    FileChart chart = SampleChart();
    chart.chartType = chart.chartSubType = 1;
    Format1Record record;
    ChartToFormat1(chart, record);
    ASSERT_EQ(FileChartToCalcChart(record, 1, kFalse), kFalse);
    const CalcChart own = calcChart[1];
    const CalcChart& taken = Take([&](Bytes& bytes) {
        PutI16(&bytes[292], own.Zodiac);
        PutI16(&bytes[294], own.Frame);
        PutI16(&bytes[296], own.HouseSystem);
        PutF64(&bytes[298], own.JulianDayET);
        for (std::size_t i = 0; i < 12; ++i) PutF64(&bytes[310 + i * 8], own.Cusp[i + 1]);
        for (std::size_t i = 0; i < 36; ++i) {
            PutF64(&bytes[488 + i * 8], own.Lon[i + 1]);
            PutF64(&bytes[776 + i * 8], own.Lat[i + 1]);
            PutF64(&bytes[1064 + i * 8], own.Dist[i + 1]);
            PutF64(&bytes[1352 + i * 8], own.LonSpeed[i + 1]);
            PutF32(&bytes[1640 + i * 4], own.Dec[i + 1]);
            PutF32(&bytes[1784 + i * 4], own.RA[i + 1]);
        }
    });
    EXPECT_EQ(taken.Cusp, own.Cusp);
    for (std::size_t n = 1; n <= 36; ++n) {
        EXPECT_EQ(taken.Lon[n], own.Lon[n]) << n;
        if (own.Lon[n] < 0) continue;
        EXPECT_EQ(taken.Lat[n], own.Lat[n]) << n;
        EXPECT_EQ(taken.RA[n], own.RA[n]) << n;
    }
}

TEST_F(Exchange, ARecordWithoutACalculationIsCalculatedAnew) {
    const struct {
        std::size_t offset;
        std::int16_t value;
    } rows[] = {{292, 0}, {292, 11}, {292, -1}, {294, 0}, {294, 3}, {296, -1}, {296, 10}};
    for (const auto& row : rows) {
        const CalcChart& chart = Take([&](Bytes& bytes) { PutI16(&bytes[row.offset], row.value); });
        EXPECT_EQ(chart.Frame, 1) << row.offset << " " << row.value;
        EXPECT_EQ(chart.HouseSystem, 7);
        EXPECT_NE(chart.Lon[point::kMoon], 0.25);
    }
    for (const double day : {0.0, kNan, kInfinity, -kInfinity, -1e8, 1e8}) {
        const CalcChart& chart = Take([&](Bytes& bytes) { PutF64(&bytes[298], day); });
        EXPECT_EQ(chart.Frame, 1) << day;
        EXPECT_NEAR(chart.JulianDayET, 2440422.95, 0.01) << day;
    }
    EXPECT_EQ(calcChart[1].Name2, "A second title, of more than 3");
}

TEST_F(Exchange, ARecordThatLacksItsEndIsCalculatedAnewWhereTheChartIsWhole) {
    Bytes bytes = SampleRecord();
    for (const std::size_t length : {std::size_t{292}, std::size_t{1000}, kRecord - 1}) {
        bytes.resize(length);
        ExchangeChart exchange;
        ASSERT_TRUE(ReadExchangeChart(Write(bytes), 1, exchange)) << length;
        EXPECT_TRUE(exchange.calculation.empty());
        ASSERT_EQ(ExchangeChartToSlot(exchange, 1), kFalse);
        EXPECT_EQ(calcChart[1].Frame, 1);
    }
    bytes.resize(291);
    ExchangeChart exchange;
    exchange.note = "as it was";
    EXPECT_FALSE(ReadExchangeChart(Write(bytes), 1, exchange));
    EXPECT_EQ(exchange.note, "as it was");
}

TEST_F(Exchange, TheNumberPicksTheRecord) {
    Bytes second = SampleRecord();
    PutF64(&second[488], 77.5);
    const ExchangeFilePath file = Write(Joined({SampleRecord(), second}));
    ExchangeChart exchange;
    ASSERT_TRUE(ReadExchangeChart(file, 2, exchange));
    ASSERT_EQ(ExchangeChartToSlot(exchange, 2), kFalse);
    EXPECT_EQ(calcChart[2].Lon[1], 77.5);
    EXPECT_EQ(calcChart[1].Lon[1], 0) << "the other slot is as it was";
    for (const std::int32_t n : {0, -1, 3, std::numeric_limits<std::int32_t>::max(),
                                 std::numeric_limits<std::int32_t>::min()}) {
        EXPECT_FALSE(ReadExchangeChart(file, n, exchange)) << n;
    }
    EXPECT_FALSE(ReadExchangeChart({ChartExchangePath(9, kTrue), kFalse}, 1, exchange));
    EXPECT_TRUE(TestShell().boxes.empty());
    EXPECT_EQ(PendingRunTimeError(), 0);
}

TEST_F(Exchange, OfRetainedChartsTheNthRecordIsTakenAndNoOther) {
    folder_.Write("retain5.cha", SampleRecord());
    ExchangeFilePath file = FindExchangeFile(1, kFalse);
    EXPECT_EQ(file.temporary, kFalse);
    ExchangeChart exchange;
    EXPECT_TRUE(ReadExchangeChart(file, 1, exchange));
    EXPECT_EQ(exchange.calculation.size(), 2879U);
    for (const std::int32_t n : {0, 2, 3, -1}) {
        EXPECT_FALSE(ReadExchangeChart(file, n, exchange)) << n;
    }
    Bytes second = SampleRecord();
    PutF64(&second[488], 77.5);
    folder_.Write("retain5.cha", Joined({SampleRecord(), second}));
    ASSERT_TRUE(ReadExchangeChart(file, 2, exchange));
    EXPECT_EQ(GetF64(&exchange.calculation[196]), 77.5);
    EXPECT_FALSE(ReadExchangeChart(file, 3, exchange));

    // The older kind has one record, whose chart is known.
    session.SiblingVersion = 3;
    folder_.Write("retained.cha", Joined({SampleRecord(), SampleRecord()}));
    file = FindExchangeFile(1, kFalse);
    EXPECT_NE(file.older, 0);
    ASSERT_TRUE(ReadExchangeChart(file, 1, exchange));
    EXPECT_EQ(exchange.chart.event.place, "Adelaide");
    EXPECT_TRUE(exchange.calculation.empty());
    EXPECT_FALSE(ReadExchangeChart(file, 2, exchange));
    // A temporary file of one record serves any number.
    EXPECT_TRUE(ReadExchangeChart(Write(SampleRecord()), 3, exchange));
}

// --- What can't be a position

TEST_F(Exchange, APointWithAValueThatIsNoPositionCountsAsNotCalculated) {
    const struct {
        std::size_t offset;  // of the first point
        std::size_t width;
        double value;
    } rows[] = {{488, 8, kNan},  {488, 8, kInfinity},  {488, 8, -0.5},  {488, 8, 360},
                {488, 8, 1e300}, {776, 8, kNan},       {776, 8, 90.1},  {776, 8, -90.1},
                {1064, 8, kNan}, {1064, 8, kInfinity}, {1352, 8, kNan}, {1352, 8, -kInfinity},
                {1640, 4, kNan}, {1640, 4, 91},        {1784, 4, kNan}, {1784, 4, -1},
                {1784, 4, 361}};
    for (const auto& row : rows) {
        const CalcChart& chart = Take([&](Bytes& bytes) {
            const std::size_t at = row.offset + 4 * row.width;  // the fifth
            if (row.width == 8) PutF64(&bytes[at], row.value);
            if (row.width == 4) PutF32(&bytes[at], static_cast<float>(row.value));
        });
        EXPECT_EQ(chart.Lon[5], -1) << row.offset << " " << row.value;
        EXPECT_EQ(chart.SortLon[5], -1);
        EXPECT_EQ(chart.Lat[5], 0);
        EXPECT_EQ(chart.RA[5], 0);
        EXPECT_EQ(chart.Retro[5], kTrue);
        EXPECT_EQ(chart.Lon[4], 27.25);
        EXPECT_EQ(chart.Lon[6], 45.25);
    }
}

TEST_F(Exchange, DisplayCopiesThatMeanNothingAreThoseOfTheirPoint) {
    const CalcChart& chart = Take([](Bytes& bytes) {
        PutF64(&bytes[2000], kNan);
        PutF64(&bytes[2008], 360);
        PutI16(&bytes[2288], 0);
        PutI16(&bytes[2290], 37);
        PutI16(&bytes[2292], -32768);
        PutI16(&bytes[2360], 32767);
    });
    EXPECT_EQ(chart.SortLon[1], chart.Lon[1]);
    EXPECT_EQ(chart.SortLon[2], chart.Lon[2]);
    EXPECT_EQ(chart.SortOrder[1], 1);
    EXPECT_EQ(chart.SortOrder[2], 2);
    EXPECT_EQ(chart.SortOrder[3], 3);
    EXPECT_EQ(chart.Shown[1], 1);
}

TEST_F(Exchange, CuspsThatMeanNothingAreCalculatedAnew) {
    for (const double cusp : {kNan, kInfinity, -1.0, 360.0}) {
        const CalcChart& chart = Take([&](Bytes& bytes) { PutF64(&bytes[310 + 11 * 8], cusp); });
        for (std::size_t n = 1; n <= 12; ++n) {
            EXPECT_TRUE(chart.Cusp[n] >= 0 && chart.Cusp[n] < 360) << n;
        }
        EXPECT_NE(chart.Cusp[2], 39.5);
        EXPECT_EQ(chart.Cusp[1], chart.Lon[point::kAscendant]);
    }
    // Without angles in the record they are those of the place.
    const CalcChart& chart = Take([](Bytes& bytes) {
        PutF64(&bytes[310], kNan);
        PutF64(&bytes[488 + 21 * 8], kNan);
    });
    EXPECT_GE(chart.Lon[point::kAscendant], 0);
    EXPECT_EQ(chart.Cusp[1], chart.Lon[point::kAscendant]);
}

TEST_F(Exchange, WhatStoodBeforeIsNoFailureOfTheChart) {
    ExchangeChart exchange;
    ASSERT_TRUE(ReadExchangeChart(Write(SampleRecord()), 1, exchange));
    RaiseRunTimeError(error::kOverflow);
    EXPECT_EQ(ExchangeChartToSlot(exchange, 1), kFalse);
    EXPECT_TRUE(TestShell().boxes.empty());
}

TEST_F(Exchange, AChartOfNoDateIsToldAndLeavesNoChart) {
    calcChart[1].Name = "stale";
    chartNotes[1].note = "stale";
    Bytes bytes = SampleRecord();
    PutF32(&bytes[2 + 105], std::numeric_limits<float>::infinity());  // the zone
    ExchangeChart exchange;
    ASSERT_TRUE(ReadExchangeChart(Write(bytes), 1, exchange));
    EXPECT_NE(ExchangeChartToSlot(exchange, 1), kFalse);
    EXPECT_EQ(TestShell().boxes,
              std::vector<std::string>{"Orvantis: FileChartToCalcChart Error: 6"});
    EXPECT_EQ(calcChart[1].Name, "");
    EXPECT_EQ(chartNotes[1].note, "");
    EXPECT_LT(calcChart[1].Lon[point::kMoon], 0);
    EXPECT_EQ(PendingRunTimeError(), 0);
}

TEST_F(Exchange, ASlotThatIsNoneIsRefused) {
    for (const std::int16_t slot : {0, 3, -1}) {
        EXPECT_NE(ExchangeChartToSlot({}, slot), kFalse);
        RunTimeError failure;
        ASSERT_TRUE(TakeRunTimeError(failure));
        EXPECT_EQ(failure.number, error::kSubscript);
    }
}

// --- The note

TEST_F(Exchange, TheNoteStandsAtItsPositionInTheCompanionM) {
    folder_.Write("~K500003.CM~", std::string("xxxxFirst\x01\x01second\x01 thirdyyyy"));
    EXPECT_EQ(ReadWithNote(5, 20).note, "First\r\nsecond\x01 third");
    EXPECT_EQ(ReadWithNote(1, 4).note, "xxxx");
    folder_.Write("~K500003.CM~", std::string("end marks stay\x01\x01\x1A\0", 18));
    EXPECT_EQ(ReadWithNote(1, 18).note, std::string("end marks stay\r\n\x1A\0", 18));
    folder_.Write("~K500003.CM~", std::string("xxxxFirst\x01\x01second\x01 thirdyyyy"));
    const ExchangeChart exchange = ReadWithNote(5, 5);
    ASSERT_EQ(ExchangeChartToSlot(exchange, 1), kFalse);
    EXPECT_EQ(chartNotes[1].note, "First");
}

TEST_F(Exchange, RetainedChartsHaveCompanionsByTheSameRule) {
    Bytes bytes = SampleRecord();
    PutI32(&bytes[2902], 1);
    PutI32(&bytes[2906], 4);
    folder_.Write("retain5.cha", bytes);
    folder_.Write("retain5.cMa", "Note");
    folder_.Write("retain5.cEa", Joined({Number(1), Number(1), Attachment({}, "n")}));
    ExchangeChart exchange;
    ASSERT_TRUE(ReadExchangeChart(FindExchangeFile(1, kFalse), 1, exchange));
    EXPECT_EQ(exchange.note, "Note");
    EXPECT_EQ(exchange.attachments.size(), 1U);
}

TEST_F(Exchange, ANoteThatIsMissingOrNotThereWholeIsWhatIsThere) {
    EXPECT_EQ(ReadWithNote(1, 10).note, "") << "no companion";
    folder_.Write("~K500003.CM~", "0123456789");
    const struct {
        std::int32_t position, length;
        std::string_view note;
    } rows[] = {
        {1, 0, ""},
        {1, -1, ""},
        {0, 5, ""},
        {-5, 5, ""},
        {8, 100, "789"},
        {10, 1, "9"},
        {11, 1, ""},
        {1, std::numeric_limits<std::int32_t>::max(), "0123456789"},
        {std::numeric_limits<std::int32_t>::max(), std::numeric_limits<std::int32_t>::max(), ""},
        {std::numeric_limits<std::int32_t>::min(), std::numeric_limits<std::int32_t>::min(), ""}};
    for (const auto& row : rows) {
        EXPECT_EQ(ReadWithNote(row.position, row.length).note, row.note)
            << row.position << " " << row.length;
    }
    folder_.Write("~K500003.CM~", "");
    EXPECT_EQ(ReadWithNote(1, 10).note, "");
    std::filesystem::remove(folder_.File("~K500003.CM~"));
    std::filesystem::create_directory(folder_.File("~K500003.CM~"));
    EXPECT_EQ(ReadWithNote(1, 10).note, "");
    EXPECT_TRUE(TestShell().boxes.empty());
    EXPECT_EQ(PendingRunTimeError(), 0);
}

// --- The attachments

TEST_F(Exchange, TheAttachmentsAreThoseOfTheNthBlockOfTheCompanionE) {
    const Bytes companion = Joined({Number(3), Number(2), Attachment(NamedEvent("One"), "a note"),
                                    Attachment(NamedEvent("Two"), ""), Number(0), Number(1),
                                    Attachment(NamedEvent("Three"), "of the third")});
    const std::vector<ChartAttachment> first = ReadWithAttachments(companion, 1);
    ASSERT_EQ(first.size(), 2U);
    ExpectSameEvent(first[0].event, NamedEvent("One"));
    EXPECT_EQ(first[0].note, "a note");
    ExpectSameEvent(first[1].event, NamedEvent("Two"));
    EXPECT_EQ(first[1].note, "");
    EXPECT_TRUE(ReadWithAttachments(companion, 2).empty());
    const std::vector<ChartAttachment> third = ReadWithAttachments(companion, 3);
    ASSERT_EQ(third.size(), 1U);
    EXPECT_EQ(third[0].note, "of the third");

    ExchangeChart exchange;
    ASSERT_TRUE(ReadExchangeChart({ChartExchangePath(3, kTrue), kFalse}, 3, exchange));
    ASSERT_EQ(ExchangeChartToSlot(exchange, 1), kFalse);
    ASSERT_EQ(chartNotes[1].attachments.size(), 1U);
    EXPECT_EQ(chartNotes[1].attachments[0].event.name, "Three");
}

TEST_F(Exchange, ADamagedCompanionEGivesNoAttachments) {
    const Bytes one = Attachment(NamedEvent("One"), "note");
    const std::int32_t most = std::numeric_limits<std::int32_t>::max();
    Bytes longNote = one;
    PutI32(&longNote[115], most);
    const std::vector<Bytes> companions = {
        {},
        {1, 0, 0},
        Number(1),
        Number(0),
        Joined({Number(-1), Number(1), one}),
        Joined({Number(most), Number(1), one}),
        Joined({Number(1), Number(most), one}),
        Joined({Number(1), Number(2), one}),
        Joined({Number(1), Number(-2), one}),
        Joined({Number(1), Number(1), longNote}),
    };
    for (std::size_t i = 0; i < companions.size(); ++i) {
        EXPECT_TRUE(ReadWithAttachments(companions[i]).empty()) << i;
    }
    // Blocks end before the second one.
    EXPECT_TRUE(ReadWithAttachments(Joined({Number(2), Number(1), one}), 2).empty());
    // Cut at every byte.
    const Bytes whole = Joined({Number(1), Number(1), one});
    for (std::size_t length = 0; length < whole.size(); ++length) {
        const Bytes cut(whole.begin(), whole.begin() + static_cast<std::ptrdiff_t>(length));
        EXPECT_TRUE(ReadWithAttachments(cut).empty()) << length;
    }
    EXPECT_EQ(ReadWithAttachments(whole).size(), 1U);
    EXPECT_TRUE(TestShell().boxes.empty());
    EXPECT_EQ(PendingRunTimeError(), 0);
}

}  // namespace
}  // namespace orvantis

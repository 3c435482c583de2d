// Charts from files onto the display, and how the one on display is named. See driver.h.
#include <array>

#include "charts/CALCCHRT.h"
#include "charts/KVCharts.h"
#include "session/driver.h"
#include "session/files.h"
#include "session/session_state.h"
#include "session/start_steps.h"
#include "text/run_time_error.h"

namespace orvantis {

namespace {

// Exchange file: records of 3171 bytes.
//
// | Offset | Size | Field                                          |
// |--------|------|------------------------------------------------|
// | 0      | 292  | the chart (kFileChartSize)                     |
// | 292    | 2879 | the sibling's calculation, which isn't taken   |
constexpr std::int16_t kExchangeSize = 3171;

// Number of the record that holds a chart, 0 for none. A file of one record is handed over under
// any number; in a file of several the number picks the record. The last one may lack its end.
std::int64_t ExchangeRecord(std::int64_t length, std::int16_t number) {
    const std::int64_t records = (length + kExchangeSize - 1) / kExchangeSize;
    if (records == 1) return 1;
    return number >= 1 && number <= records ? number : 0;
}

// Reads the chart of an exchange file; false without one.
bool ReadExchangeChart(std::string_view path, std::int16_t number, FileChart& chart) {
    const FileHandle file = FileOpener(path, open_mode::kRecords, kExchangeSize, kFalse);
    if (file < 1) return false;
    const std::int64_t record = ExchangeRecord(FileLength(file), number);
    std::array<std::uint8_t, kFileChartSize> bytes{};
    const bool read = record >= 1 && ReadBytes(file, (record - 1) * kExchangeSize + 1, bytes);
    CloseFile(file);
    RunTimeError ignored;
    TakeRunTimeError(ignored);
    if (!read) return false;
    chart = GetFileChart(bytes.data());
    chart.chartType = static_cast<std::uint8_t>(ClampChartType(chart.chartType));
    chart.chartSubType = static_cast<std::uint8_t>(ClampChartSubType(chart.chartSubType));
    return true;
}

}  // namespace

ChartStatus ReadChartFromFile(std::string_view path, std::int32_t n, FileChart& fileChart,
                              RunTimeError& reason) {
    TakeRunTimeError(reason);  // what stood before belongs to others
    reason = {};
    std::int32_t count = 0;
    const FileHandle file = OpenChartFile(path, count, kFalse);
    if (file < 1) {
        if (FileExists(path) == 0) return ChartStatus::NoFile;
        const bool damaged = TakeRunTimeError(reason);
        return damaged ? ChartStatus::BadRecord : ChartStatus::NotSupported;
    }
    const std::int16_t type = currentChartFileType;
    const bool held = n >= 1 && n <= count;
    const bool read = held && ReadChart(type, file, n, fileChart);
    CloseChartFile(type, file);
    TakeRunTimeError(reason);
    if (!held) return ChartStatus::NoSuchChart;
    return read ? ChartStatus::Ok : ChartStatus::BadRecord;
}

ChartStatus OpenChart(std::string_view path, std::int32_t n, RunTimeError& reason) {
    FileChart fileChart;
    const ChartStatus status = ReadChartFromFile(path, n, fileChart, reason);
    if (status != ChartStatus::Ok) return status;
    Format1Record record;
    ChartToFormat1(fileChart, record);
    if (FileChartToCalcChart(record, 1, kFalse) != 0) return ChartStatus::Failed;
    calcChart[1].Saved = kTrue;
    session.ChartNumber = 1;
    return ChartStatus::Ok;
}

void LoadExchangeChart(std::int16_t number) {
    const auto empty = [] {
        calcChart[1] = {};
        calcChart[1].Lon.fill(-1);
    };
    empty();
    const std::string path = ChartExchangePath(number, kTrue);
    FileChart fileChart;
    if (FileExists(path) == 0 || !ReadExchangeChart(path, number, fileChart)) return;
    Format1Record record;
    ChartToFormat1(fileChart, record);
    if (FileChartToCalcChart(record, 1, kFalse) != 0) empty();
}

std::string ChartDescription() {
    if (session.ChartNumber < 1) return "";
    const CalcChart& chart = calcChart[1];
    std::string text = chart.Name;
    const auto add = [&text](const std::string& part, std::string_view gap) {
        if (part.empty()) return;
        if (!text.empty()) text += gap;
        text += part;
    };
    add(chart.DateText, ", ");
    add(chart.TimeText, ", ");
    add(chart.ZoneText, " ");
    add(chart.Place, ", ");
    add(chart.Country, ", ");
    return text;
}

std::string Caption() {
    const bool nothing = session.ChartNumber < 1 && session.EclipseNumber < 1;
    return nothing ? "Orvantis" : "Orvantis: " + ChartDescription();
}

}  // namespace orvantis

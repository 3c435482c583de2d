// Charts from files onto the display, and how the one on display is named. See driver.h.
#include "charts/CALCCHRT.h"
#include "charts/KVCharts.h"
#include "charts/exchange.h"
#include "session/driver.h"
#include "session/files.h"
#include "session/session_state.h"
#include "session/start_steps.h"
#include "text/run_time_error.h"

namespace orvantis {

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
    // A chart behind the damage of a file isn't one that the file doesn't hold.
    if (!held) return reason.number != 0 ? ChartStatus::BadRecord : ChartStatus::NoSuchChart;
    return read ? ChartStatus::Ok : ChartStatus::BadRecord;
}

namespace {

// The calculation fills the slot as it goes: one that fails leaves the chart that was there.
bool CalculateFirstSlot(const Format1Record& record) {
    const CalcChart chart = calcChart[1];
    const ChartNow now = chartNow;
    if (FileChartToCalcChart(record, 1, kFalse) == 0) return true;
    calcChart[1] = chart;
    chartNow = now;
    return false;
}

}  // namespace

ChartStatus OpenChart(std::string_view path, std::int32_t n, RunTimeError& reason) {
    FileChart fileChart;
    const ChartStatus status = ReadChartFromFile(path, n, fileChart, reason);
    if (status != ChartStatus::Ok) return status;
    Format1Record record;
    ChartToFormat1(fileChart, record);
    if (!CalculateFirstSlot(record)) return ChartStatus::Failed;
    chartNotes[1] = {};
    calcChart[1].Saved = kTrue;
    session.ChartNumber = 1;
    session.ChartFile = path;
    return ChartStatus::Ok;
}

void LoadExchangeChart(std::int16_t number) {
    calcChart[1] = {};
    calcChart[1].Lon.fill(-1);
    chartNotes[1] = {};
    ExchangeChart exchange;
    if (!ReadExchangeChart(FindExchangeFile(number, kTrue), number, exchange)) return;
    ExchangeChartToSlot(exchange, 1);
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

// The list of the lines, " - Lines: " and their names, joins with the clock, whose routine makes
// it.
std::string Caption() {
    const bool nothing = session.ChartNumber < 1 && session.EclipseNumber < 1;
    return nothing ? "Orvantis" : "Orvantis: " + ChartDescription();
}

}  // namespace orvantis

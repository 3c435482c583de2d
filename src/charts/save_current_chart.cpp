// Saving the chart on display. See save_current_chart.h.
#include "charts/save_current_chart.h"

#include "charts/CALCCHRT.h"
#include "charts/KVCharts.h"
#include "charts/chart_lists.h"
#include "session/files.h"
#include "session/session_state.h"
#include "session/settings.h"
#include "text/dates.h"
#include "text/run_time_error.h"
#include "text/strings.h"

namespace orvantis {

namespace {

constexpr std::string_view kNewDescription = "Created in Orvantis";
constexpr std::int16_t kOptionBits = 3;  // of ChartFlags: the two options held with the chart

// A number that goes into a byte; one that doesn't fit leaves "Overflow".
std::uint8_t ByteOf(std::int32_t value) {
    if (value < 0 || value > UINT8_MAX) RaiseRunTimeError(error::kOverflow);
    return static_cast<std::uint8_t>(value);
}

// Digits at a column of a text, counted from 1. A text that ends before them has 0 there; other
// characters than digits leave "Type mismatch".
std::uint8_t DigitsAt(std::string_view text, std::size_t column, std::size_t width) {
    const std::string_view digits =
        column > text.size() ? std::string_view() : text.substr(column - 1, width);
    std::int32_t value = 0;
    for (const char c : digits) {
        if (c < '0' || c > '9') RaiseRunTimeError(error::kTypeMismatch);
        value = value * 10 + (c - '0');
    }
    return ByteOf(value);
}

// True for the first letter at a column, false for the second one. "Type mismatch" for others.
bool LetterAt(std::string_view text, std::size_t column, char first, char second) {
    const char letter = column <= text.size() ? text[column - 1] : '\0';
    if (letter != first && letter != second) RaiseRunTimeError(error::kTypeMismatch);
    return letter == first;
}

// The coordinates stand at fixed columns: "138E34 10" and "35S55 12".
void TakeCoordinates(const CalcChart& chart, Format1Record& record) {
    record.longDegrees = DigitsAt(chart.LongText, 1, 3);
    record.longWest = LetterAt(chart.LongText, 4, 'W', 'E') ? 1 : 0;
    record.longMinutes = DigitsAt(chart.LongText, 5, 2);
    record.longSeconds = DigitsAt(chart.LongText, 8, 2);
    record.latDegrees = DigitsAt(chart.LatText, 1, 2);
    record.latNorth = LetterAt(chart.LatText, 3, 'N', 'S') ? 1 : 0;
    record.latMinutes = DigitsAt(chart.LatText, 4, 2);
    record.latSeconds = DigitsAt(chart.LatText, 7, 2);
}

// Date and time; false if a text isn't one, which the user has been told.
bool TakeMoment(const CalcChart& chart, Format1Record& record) {
    std::int16_t day = 0;
    std::int16_t month = 0;
    std::int16_t failed = 0;
    ParseDateText(chart.DateText, day, month, record.year, failed);
    if (failed != 0) return false;
    std::int16_t hour = 0;
    std::int16_t minute = 0;
    std::int16_t second = 0;
    ParseTimeText(chart.TimeText, hour, minute, second, failed);
    if (failed != 0) return false;
    record.day = ByteOf(day);
    record.month = ByteOf(month);
    record.hour = ByteOf(hour);
    record.minute = ByteOf(minute);
    record.second = ByteOf(second);
    return true;
}

void TakeTextsAndCodes(const CalcChart& chart, Format1Record& record) {
    record.chartType = ByteOf(chart.ChartType);
    record.chartSubType = ByteOf(chart.ChartSubType);
    record.name = chart.Name;
    record.place = chart.Place;
    record.country = chart.Country;
    record.zoneHours = chart.ZoneHours;
    record.zoneName = chart.ZoneText;
    record.houseCode = ByteOf(chart.HouseCode);
    record.ayanamsaCode = ByteOf(chart.AyanamsaCode);
    record.ayanamsaValue = static_cast<float>(options.userSVP);
    record.recordForm = ByteOf(chart.RecordForm);
}

// A file of type 3 with this chart alone.
bool MakeFile(std::string_view path, const FileChart& chart) {
    ChartList list;
    list.description = kNewDescription;
    list.charts.emplace_back().chart = chart;
    return SaveChartFile(path, chart_file::kFormat3, list);
}

// Takes back the chart that couldn't be saved with its list of type 3, unless the list held other
// unsaved charts before.
void GiveUpLast(FileHandle file, bool wasChanged) {
    ChartList* list = OpenChartListOf(file);
    if (!list->charts.empty()) list->charts.pop_back();
    if (wasChanged) return;
    list->changed = kFalse;
    list->inUse = kTrue;  // so that it can be released
    ReleaseChartList(file);
}

// Appends the chart to a file that is there. What fails leaves a run-time error, but for the saving
// of a type 3 file, which has its own message.
bool Append(std::string_view path, const FileChart& chart) {
    std::int32_t count = 0;
    const FileHandle file = OpenChartFile(path, count, kFalse);
    if (file == 0) {
        if (PendingRunTimeError() == 0) RaiseRunTimeError(error::kPathAccess);
        return false;
    }
    const std::int16_t type = currentChartFileType;
    const ChartList* list = type == chart_file::kFormat3 ? OpenChartListOf(file) : nullptr;
    const bool wasChanged = list != nullptr && list->changed != 0;
    const bool written = WriteChart(type, file, count + 1, chart);
    CloseChartFile(type, file);
    if (list == nullptr || !written) return written;
    // Closing saves it; what couldn't be saved is still there.
    const FileHandle unsaved = FindOpenChartList(path);
    if (unsaved == 0 || OpenChartListOf(unsaved)->changed == 0) return true;
    GiveUpLast(unsaved, wasChanged);
    return false;
}

bool Save(const CalcChart& chart, std::string_view path) {
    Format1Record record;
    if (!TakeMoment(chart, record)) return false;
    TakeCoordinates(chart, record);
    TakeTextsAndCodes(chart, record);
    if (PendingRunTimeError() != 0) return false;
    FileChart fileChart;
    Format1ToChart(record, fileChart);
    fileChart.chartFlags = static_cast<std::uint8_t>(chart.ChartFlags & kOptionBits);
    return IsMissing(path) ? MakeFile(path, fileChart) : Append(path, fileChart);
}

}  // namespace

bool SaveCurrentChart(std::int16_t slot, std::string_view path) {
    RunTimeError before;
    TakeRunTimeError(before);  // what stood before belongs to others
    if (slot < 1 || slot > 2) RaiseRunTimeError(error::kSubscript);
    CalcChart& chart = calcChart[slot == 2 ? 2 : 1];
    const bool saved = PendingRunTimeError() == 0 && Save(chart, path);
    if (saved) chart.Saved = kTrue;
    RunTimeError failure;
    if (TakeRunTimeError(failure)) ShowChartSaveError(path, failure.number);
    if (before.number != 0) RaiseRunTimeError(before.number);
    return saved;
}

}  // namespace orvantis

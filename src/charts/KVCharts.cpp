// Chart files: telling the type, opening, reading and writing by number.
#include "charts/KVCharts.h"

#include <algorithm>
#include <limits>

#include "charts/chart_lists.h"
#include "text/numbers.h"
#include "text/strings.h"

namespace orvantis {

std::int16_t currentChartFileType = chart_file::kFormat0;

namespace {

// Types 0, 1 and 2 are fixed slots of the record length from the start of the file. The head of
// types 1 and 2 fills the first slot:
//
//   offset  size  field
//        0     2  version, signed: 1 or 2
//        2    80  description, text
//
// The rest of that slot isn't written. A file without an extension opens with its description at
// byte 1. Type 3 has the version 3 in its first two bytes.
constexpr std::int64_t kVersionSize = 2;
constexpr std::size_t kDescriptionWidth = 80;

bool HasHead(std::int16_t type) {
    return type == chart_file::kFormat1 || type == chart_file::kFormat2;
}

// The type by the version word. Whatever isn't a version is the start of a format 0 chart's name;
// a name that starts with one of these codes would be mistaken.
std::int16_t TypeByVersion(FileHandle file) {
    std::array<std::uint8_t, kVersionSize> version{};
    if (FileLength(file) < kVersionSize || !ReadBytes(file, 1, version)) {
        return chart_file::kFormat0;
    }
    const std::int16_t number = GetI16(version.data());
    const bool known = number >= chart_file::kFormat1 && number <= chart_file::kFormat3;
    return known ? number : chart_file::kFormat0;
}

std::int32_t CountCharts(std::int16_t type, std::int64_t fileLength) {
    const std::int64_t length = ChartRecordLength(type);
    if (length == 0) return 0;
    const std::int64_t slots = fileLength / length - (HasHead(type) ? 1 : 0);
    return static_cast<std::int32_t>(
        std::clamp<std::int64_t>(slots, 0, std::numeric_limits<std::int32_t>::max()));
}

// Position of a chart's slot, counted from 1.
std::int64_t SlotPosition(std::int16_t type, std::int32_t n) {
    const std::int64_t slot = static_cast<std::int64_t>(n) + (HasHead(type) ? 1 : 0);
    return (slot - 1) * ChartRecordLength(type) + 1;
}

void ForceTypes(FileChart& record) {
    record.chartType = static_cast<std::uint8_t>(ClampChartType(record.chartType));
    record.chartSubType = static_cast<std::uint8_t>(ClampChartSubType(record.chartSubType));
}

bool ReadListedChart(FileHandle file, std::int32_t n, FileChart& record) {
    const ChartList* list = OpenChartListOf(file);
    const bool held =
        list != nullptr && n >= 1 && static_cast<std::size_t>(n) <= list->charts.size();
    if (!held) {
        RaiseRunTimeError(list == nullptr ? error::kBadFileName : error::kPastEnd);
        return false;
    }
    record = list->charts[static_cast<std::size_t>(n) - 1].chart;
    ForceTypes(record);
    return true;
}

bool WriteListedChart(FileHandle file, std::int32_t n, const FileChart& record) {
    ChartList* list = OpenChartListOf(file);
    const bool fits = list != nullptr && list->damaged == 0 && n >= 1 &&
                      static_cast<std::size_t>(n) <= list->charts.size() + 1;
    if (!fits) {
        RaiseRunTimeError(list == nullptr ? error::kBadFileName : error::kPastEnd);
        return false;
    }
    if (static_cast<std::size_t>(n) > list->charts.size()) list->charts.emplace_back();
    FileChart& chart = list->charts[static_cast<std::size_t>(n) - 1].chart;
    chart = record;
    chart.commentRef = n;
    list->changed = kTrue;
    return true;
}

}  // namespace

bool HasExtension(std::string_view path) {
    const std::size_t folder = path.find_last_of("\\/");
    const std::string_view name = folder == std::string_view::npos ? path : path.substr(folder + 1);
    return name.find('.') != std::string_view::npos;
}

std::int16_t ClampChartType(std::int16_t type) {
    return ClampInt(type, 1, 13);
}

std::int16_t ClampChartSubType(std::int16_t subType) {
    return ClampInt(subType, 1, 99);
}

FileHandle OpenStoredCharts(std::string_view path, std::int16_t& type, std::int32_t& count,
                            Flag forceLegacy) {
    count = 0;
    if (FileExists(path) == 0) return 0;
    const FileHandle file = FileOpener(path, open_mode::kRecords, 0, kFalse);
    if (file == 0) return 0;
    const bool blocks = forceLegacy != 0 || !HasExtension(path);
    type = blocks ? chart_file::kBlocks : TypeByVersion(file);
    count = CountCharts(type, FileLength(file));
    return file;
}

std::int16_t StoredChartType(std::string_view path) {
    std::int16_t type = chart_file::kBlocks;
    std::int32_t count = 0;
    const FileHandle file = OpenStoredCharts(path, type, count, kFalse);
    if (file != 0) CloseFile(file);
    return type;
}

FileHandle OpenChartFile(std::string_view path, std::int32_t& count, Flag forceLegacy) {
    if (const FileHandle held = FindOpenChartList(path); held != 0) {
        ChartList& list = *OpenChartListOf(held);
        list.inUse = kTrue;
        currentChartFileType = chart_file::kFormat3;
        count = static_cast<std::int32_t>(list.charts.size());
        return held;
    }
    const FileHandle file = OpenStoredCharts(path, currentChartFileType, count, forceLegacy);
    if (file == 0 || currentChartFileType != chart_file::kFormat3) return file;
    CloseFile(file);
    return HoldChartList(path, count);
}

std::string ChartFileDescription(std::int16_t type, FileHandle file) {
    if (type == chart_file::kFormat3) {
        const ChartList* list = OpenChartListOf(file);
        return list == nullptr ? "" : std::string(Trim(list->description));
    }
    if (!HasHead(type) && type != chart_file::kBlocks) return "";
    std::array<std::uint8_t, kDescriptionWidth> description{};
    const std::int64_t position = HasHead(type) ? 1 + kVersionSize : 1;
    if (!ReadBytes(file, position, description)) return "";
    return std::string(Trim(GetText(description.data(), kDescriptionWidth)));
}

bool ReadChart(std::int16_t type, FileHandle file, std::int32_t n, FileChart& record) {
    if (type == chart_file::kFormat3) return ReadListedChart(file, n, record);
    const std::int64_t length = ChartRecordLength(type);
    if (length == 0 || n < 1) {
        RaiseRunTimeError(length == 0 ? error::kBadFileMode : error::kPastEnd);
        return false;
    }
    std::array<std::uint8_t, kFileChartSize> bytes{};
    const std::span<std::uint8_t> wanted(bytes.data(), static_cast<std::size_t>(length));
    if (!ReadBytes(file, SlotPosition(type, n), wanted)) return false;

    switch (type) {
        case chart_file::kFormat0:
            Format0ToChart(bytes.data(), record);
            break;
        case chart_file::kFormat1:
            Format1ToChart(GetFormat1Record(bytes.data()), record);
            break;
        default:
            record = GetFileChart(bytes.data());
            break;
    }
    ForceTypes(record);
    return true;
}

bool WriteChart(std::int16_t type, FileHandle file, std::int32_t n, const FileChart& record) {
    if (type == chart_file::kFormat3) return WriteListedChart(file, n, record);
    const std::int64_t length = ChartRecordLength(type);
    const std::int64_t fileLength = FileLength(file);
    const std::int32_t count = CountCharts(type, fileLength);
    // Behind the last chart may be a piece of one, or the end of something else.
    const bool overPiece = n - 1 == count && SlotPosition(type, n) <= fileLength;
    if (length == 0 || n < 1 || n - 1 > count || overPiece) {
        RaiseRunTimeError(length == 0 ? error::kBadFileMode : error::kPastEnd);
        return false;
    }
    RunTimeError before;
    TakeRunTimeError(before);  // so that what stands afterwards comes from this record
    std::array<std::uint8_t, kFileChartSize> bytes{};
    PutChartRecord(type, record, bytes.data());
    if (PendingRunTimeError() != 0) return false;
    if (before.number != 0) RaiseRunTimeError(before.number);

    const std::span<const std::uint8_t> written(bytes.data(), static_cast<std::size_t>(length));
    if (WriteBytes(file, SlotPosition(type, n), written)) return true;
    // A disk that filled up within a chart at the end mustn't leave a piece of it.
    if (FileLength(file) > fileLength) SetFileLength(file, fileLength);
    return false;
}

void CloseChartFile(std::int16_t type, FileHandle file) {
    if (type == chart_file::kFormat3) {
        ReleaseChartList(file);
    } else {
        CloseFile(file);
    }
}

}  // namespace orvantis

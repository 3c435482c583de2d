// Chart files: telling the type, opening, reading by number.
#include "charts/KVCharts.h"

#include <algorithm>
#include <limits>

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

// Record length of a type; 0 for the types that aren't made of fixed slots.
std::int64_t RecordLength(std::int16_t type) {
    switch (type) {
        case chart_file::kFormat0:
            return kFormat0Size;
        case chart_file::kFormat1:
            return kFormat1Size;
        case chart_file::kFormat2:
            return kFileChartSize;
        default:
            return 0;
    }
}

bool HasHead(std::int16_t type) {
    return type == chart_file::kFormat1 || type == chart_file::kFormat2;
}

bool HasExtension(std::string_view path) {
    const std::size_t folder = path.find_last_of("\\/");
    const std::string_view name = folder == std::string_view::npos ? path : path.substr(folder + 1);
    return name.find('.') != std::string_view::npos;
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
    const std::int64_t length = RecordLength(type);
    if (length == 0) return 0;
    const std::int64_t slots = fileLength / length - (HasHead(type) ? 1 : 0);
    return static_cast<std::int32_t>(
        std::clamp<std::int64_t>(slots, 0, std::numeric_limits<std::int32_t>::max()));
}

}  // namespace

std::int16_t ClampChartType(std::int16_t type) {
    return ClampInt(type, 1, 13);
}

std::int16_t ClampChartSubType(std::int16_t subType) {
    return ClampInt(subType, 1, 99);
}

FileHandle OpenChartFile(std::string_view path, std::int32_t& count, Flag forceLegacy) {
    count = 0;
    if (FileExists(path) == 0) return 0;
    const FileHandle file = FileOpener(path, open_mode::kRecords, 0, kFalse);
    if (file == 0) return 0;

    const bool blocks = forceLegacy != 0 || !HasExtension(path);
    currentChartFileType = blocks ? chart_file::kBlocks : TypeByVersion(file);
    if (currentChartFileType == chart_file::kFormat3) {
        // Charts of this type live in a list in memory, which nothing loads yet: the caller is
        // told the type and gets no handle.
        CloseFile(file);
        return 0;
    }
    count = CountCharts(currentChartFileType, FileLength(file));
    return file;
}

std::string ChartFileDescription(std::int16_t type, FileHandle file) {
    if (!HasHead(type) && type != chart_file::kBlocks) return "";
    std::array<std::uint8_t, kDescriptionWidth> description{};
    const std::int64_t position = HasHead(type) ? 1 + kVersionSize : 1;
    if (!ReadBytes(file, position, description)) return "";
    return std::string(Trim(GetText(description.data(), kDescriptionWidth)));
}

bool ReadChart(std::int16_t type, FileHandle file, std::int32_t n, FileChart& record) {
    const std::int64_t length = RecordLength(type);
    if (length == 0 || n < 1) {
        RaiseRunTimeError(length == 0 ? error::kBadFileMode : error::kPastEnd);
        return false;
    }
    std::array<std::uint8_t, kFileChartSize> bytes{};
    const std::int64_t slot = static_cast<std::int64_t>(n) + (HasHead(type) ? 1 : 0);
    const std::span<std::uint8_t> wanted(bytes.data(), static_cast<std::size_t>(length));
    if (!ReadBytes(file, (slot - 1) * length + 1, wanted)) return false;

    switch (type) {
        case chart_file::kFormat0:
            return Format0ToChart(bytes.data(), record);
        case chart_file::kFormat1:
            Format1ToChart(GetFormat1Record(bytes.data()), record);
            break;
        default:
            record = GetFileChart(bytes.data());
            break;
    }
    record.chartType = static_cast<std::uint8_t>(ClampChartType(record.chartType));
    record.chartSubType = static_cast<std::uint8_t>(ClampChartSubType(record.chartSubType));
    return true;
}

void CloseChartFile(std::int16_t /*type*/, FileHandle file) {
    CloseFile(file);
}

}  // namespace orvantis

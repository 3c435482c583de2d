// Chart files in memory. See chart_lists.h; the saving is in chart_save.cpp.
#include "charts/chart_lists.h"

#include <algorithm>
#include <filesystem>
#include <limits>
#include <optional>

#include "charts/comments.h"
#include "text/byte_reader.h"
#include "text/strings.h"

namespace orvantis {

std::vector<ChartList> openChartLists;
Flag loadComments = kTrue;

namespace {

// A type 3 file:
//
//   offset  size  field
//        0     2  version, signed: 3
//        2    80  description, text
//       82     4  count of charts, signed
//       86        the charts, one after the other, each:
//         292     the chart (see KVCharts_records.cpp)
//           4     count of attachments, signed; each of them:
//             115 the event
//               4 length of the note, signed; below 1 none
//                 the note
//           4     length of the comment, signed; below 1 none
//                 the comment
constexpr std::size_t kDescription = 2;
constexpr std::size_t kDescriptionWidth = 80;
constexpr std::size_t kCount = 82;
constexpr std::size_t kHeadSize = 86;
constexpr std::int64_t kLeastChart = kFileChartSize + 4 + 4;
constexpr std::int64_t kLeastAttachment = kChartEventSize + 4;

// Comment text, in bytes, that a list takes beyond the length of its comment file. In a sound file
// a block belongs to one chart, or a few share their comment; in a damaged one each of a million
// charts may lead into the same ring of blocks.
constexpr std::size_t kSharedCommentText = std::size_t{32} * 1024 * 1024;

void ForceTypes(FileChart& chart) {
    chart.chartType = static_cast<std::uint8_t>(ClampChartType(chart.chartType));
    chart.chartSubType = static_cast<std::uint8_t>(ClampChartSubType(chart.chartSubType));
}

void TakeStoredChart(ByteReader& reader, StoredChart& stored) {
    const std::uint8_t* p = reader.Take(kFileChartSize);
    if (p == nullptr) return;
    stored.chart = GetFileChart(p);
    ForceTypes(stored.chart);
    const std::int32_t attachments = reader.TakeCount(kLeastAttachment);
    stored.attachments.reserve(static_cast<std::size_t>(attachments));
    for (std::int32_t i = 0; i < attachments && !reader.failed; ++i) {
        const std::uint8_t* event = reader.Take(kChartEventSize);
        if (event == nullptr) return;
        stored.attachments.push_back({GetChartEvent(event), ""});
        stored.attachments.back().note = reader.TakeText();
    }
    stored.comment = reader.TakeText();
}

// The charts of a type 3 file, whose first two bytes have been seen, up to the first fault. Returns
// the error number, 0 for none.
std::int16_t ReadFormat3(const Bytes& bytes, ChartList& list) {
    ByteReader reader{bytes};
    const std::uint8_t* head = reader.Take(static_cast<std::int64_t>(kHeadSize));
    if (head == nullptr) return error::kPastEnd;
    list.version = GetI16(head);
    list.description = TrimRight(GetText(head + kDescription, kDescriptionWidth));
    reader.at = kCount;
    const std::uint8_t* counted = reader.Take(4);
    const std::int64_t count = counted == nullptr ? 0 : GetI32(counted);
    const std::int64_t held = std::min(count, reader.Left() / kLeastChart);
    if (held > kMostListedCharts) return error::kFileTooLarge;
    list.charts.reserve(static_cast<std::size_t>(std::max<std::int64_t>(held, 0)));
    for (std::int64_t i = 0; i < count && !reader.failed; ++i) {
        TakeStoredChart(reader, list.charts.emplace_back());
    }
    if (!reader.failed) return 0;
    if (!list.charts.empty()) list.charts.pop_back();  // the one with the fault
    list.damaged = kTrue;
    return error::kPastEnd;
}

bool LoadFormat3(FileHandle file, ChartList& list) {
    Bytes bytes(static_cast<std::size_t>(FileLength(file)));
    if (!ReadBytes(file, 1, bytes)) return false;
    const std::int16_t failure = ReadFormat3(bytes, list);
    if (failure == 0) return true;
    RaiseRunTimeError(failure);
    return list.damaged != 0 && !list.charts.empty();
}

// The description with the blanks in front of it, so that it is saved as it was.
std::string StoredDescription(std::int16_t type, FileHandle file) {
    const bool hasVersion = ChartRecordLength(type) != 0;
    if (type == chart_file::kFormat0) return "";
    Bytes description(kDescriptionWidth, std::uint8_t{' '});
    ReadWhatIsThere(file, hasVersion ? 1 + std::int64_t{kDescription} : 1, description);
    return std::string(TrimRight(GetText(description.data(), kDescriptionWidth)));
}

// The comments of the charts, by the numbers of their first blocks.
bool LoadComments(std::string_view path, std::int16_t type, ChartList& list) {
    const bool needed = std::any_of(
        list.charts.begin(), list.charts.end(),
        [](const StoredChart& stored) { return LeadsToComment(stored.chart.commentRef); });
    if (!KeepsComments(type) || !needed || CommentPath(path) == path) return true;
    Bytes blocks;
    std::string place;
    const std::int16_t failure = FetchStandingComments(path, blocks, place);
    if (failure != 0) {
        if (!MayHoldComments(place)) return true;
        RaiseRunTimeError(failure);
        return false;
    }
    std::size_t total = 0;
    for (StoredChart& stored : list.charts) {
        stored.comment = GetComment(blocks, stored.chart.commentRef);
        total += stored.comment.size();
        if (total > blocks.size() + kSharedCommentText) {
            RaiseRunTimeError(error::kFileTooLarge);
            return false;
        }
    }
    return true;
}

bool LoadSlots(std::string_view path, std::int16_t type, FileHandle file, std::int32_t count,
               ChartList& list) {
    if (count > kMostListedCharts) {
        RaiseRunTimeError(error::kFileTooLarge);
        return false;
    }
    list.version = KeepsComments(type) ? type : std::int16_t{0};
    list.description = StoredDescription(type, file);
    list.charts.resize(static_cast<std::size_t>(count));
    for (std::int32_t n = 1; n <= count; ++n) {
        if (!ReadChart(type, file, n, list.charts[static_cast<std::size_t>(n) - 1].chart)) {
            return false;
        }
    }
    return loadComments == 0 || LoadComments(path, type, list);
}

bool LoadFrom(std::string_view path, FileHandle file, std::int32_t count, ChartList& list) {
    if (FileLength(file) > kMostChartBytes) {
        RaiseRunTimeError(error::kFileTooLarge);
        return false;
    }
    list.path = path;
    list.type = currentChartFileType;
    const bool done = list.type == chart_file::kFormat3
                          ? LoadFormat3(file, list)
                          : LoadSlots(path, list.type, file, count, list);
    std::int32_t number = 0;
    for (StoredChart& stored : list.charts) stored.chart.commentRef = ++number;
    return done;
}

// What came of reading a file once.
struct Reading {
    bool done = false;
    bool outdated = false;  // a save has put another file in its place meanwhile
};

Reading ReadList(std::string_view path, Flag forceLegacy, ChartList& list) {
    list = {};
    Reading reading;
    std::int32_t count = 0;
    const FileHandle file = OpenStoredCharts(path, currentChartFileType, count, forceLegacy);
    if (file == 0) {
        RaiseRunTimeError(error::kFileNotFound);
        return reading;
    }
    reading.done = LoadFrom(path, file, count, list);
    reading.outdated = !IsFileOf(file, path);
    CloseFile(file);
    return reading;
}

// An entry that is in use, or still holds what couldn't be saved.
bool IsHeld(const ChartList& list) {
    return list.inUse != 0 || list.changed != 0;
}

}  // namespace

bool HasComments(const ChartList& list) {
    return std::any_of(list.charts.begin(), list.charts.end(),
                       [](const StoredChart& stored) { return !stored.comment.empty(); });
}

bool IsSameFile(std::string_view a, std::string_view b) {
    const std::string left = NativePath(a);
    const std::string right = NativePath(b);
    std::error_code missing;
    if (left == right || std::filesystem::equivalent(left, right, missing)) return true;
    if (LowerAscii(left) != LowerAscii(right)) return false;
    return FileExists(a) == 0 || FileExists(b) == 0;
}

FileHandle FindOpenChartList(std::string_view path) {
    const auto entry = std::find_if(
        openChartLists.begin(), openChartLists.end(),
        [&](const ChartList& list) { return IsHeld(list) && IsSameFile(list.path, path); });
    if (entry == openChartLists.end()) return 0;
    return static_cast<FileHandle>(entry - openChartLists.begin() + 1);
}

ChartList* OpenChartListOf(FileHandle handle) {
    if (handle < 1 || static_cast<std::size_t>(handle) > openChartLists.size()) return nullptr;
    ChartList& list = openChartLists[static_cast<std::size_t>(handle) - 1];
    return IsHeld(list) ? &list : nullptr;
}

FileHandle HoldChartList(std::string_view path, std::int32_t& count) {
    count = 0;
    const auto slot = std::find_if_not(openChartLists.begin(), openChartLists.end(), IsHeld);
    const auto number = slot - openChartLists.begin() + 1;
    if (number > std::numeric_limits<FileHandle>::max()) {
        RaiseRunTimeError(error::kTooManyFiles);
        return 0;
    }
    ChartList list;
    if (!LoadChartList(path, list, kFalse)) return 0;
    if (list.type != chart_file::kFormat3) {  // another program has replaced it just now
        RaiseRunTimeError(error::kPathAccess);
        return 0;
    }
    list.inUse = kTrue;
    count = static_cast<std::int32_t>(list.charts.size());
    if (slot == openChartLists.end()) {
        openChartLists.push_back(std::move(list));
    } else {
        *slot = std::move(list);
    }
    return static_cast<FileHandle>(number);
}

void ReleaseChartList(FileHandle handle) {
    ChartList* list = OpenChartListOf(handle);
    if (list == nullptr) return;
    list->inUse = kFalse;
    const bool saved =
        list->changed == 0 || SaveChartFile(std::string(list->path), chart_file::kFormat3, *list);
    if (saved) *list = {};
    while (!openChartLists.empty() && !IsHeld(openChartLists.back())) openChartLists.pop_back();
}

bool LoadChartList(std::string_view path, ChartList& list, Flag forceLegacy) {
    const bool stoodBefore = PendingRunTimeError() != 0;
    ChartList read;
    Reading reading = ReadList(path, forceLegacy, read);
    for (int n = 2; n <= kMostReadings && reading.outdated; ++n) {
        std::optional<FolderLock> alone;
        if (n == kMostReadings) alone.emplace(path);
        RunTimeError outdated;
        if (!stoodBefore) TakeRunTimeError(outdated);
        reading = ReadList(path, forceLegacy, read);
    }
    if (reading.done) list = std::move(read);
    return reading.done;
}

}  // namespace orvantis

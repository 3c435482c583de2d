// The saving of a whole chart file. See SaveChartFile in chart_lists.h.
#include <array>
#include <set>

#include "charts/chart_lists.h"
#include "charts/comments.h"
#include "session/session_state.h"
#include "text/strings.h"

namespace orvantis {

namespace {

constexpr std::size_t kDescriptionWidth = 80;

// A file that is written aside, and the one that it replaces.
struct SavedFile {
    std::string path;
    Bytes bytes;
    bool stored = true;    // false: the new file's type has none
    bool written = false;  // false: the old file goes and no new one comes

    std::string Aside() const { return path + "~"; }
    std::string Backup() const { return path + ".bak"; }
};

// True if there is something that the file takes the place of. What can't be opened counts too, so
// that nothing is written over; but a folder of the comment file's name is in nobody's way as long
// as there are no comments.
bool TakesAPlace(const SavedFile& file) {
    return file.written ? !IsMissing(file.path) : FileExists(file.path) != 0;
}

struct Move {
    std::string from;
    std::string to;
};

void AppendBytes(Bytes& bytes, const std::uint8_t* p, std::size_t size) {
    bytes.insert(bytes.end(), p, p + size);
}

void AppendNumber(Bytes& bytes, std::int32_t value) {
    std::array<std::uint8_t, 4> number{};
    PutI32(number.data(), value);
    AppendBytes(bytes, number.data(), number.size());
}

void AppendText(Bytes& bytes, std::string_view text) {
    AppendNumber(bytes, static_cast<std::int32_t>(text.size()));
    AppendBytes(bytes, reinterpret_cast<const std::uint8_t*>(text.data()), text.size());
}

// The head of each type; the rest of its slot is there where charts follow; the layouts stand in
// KVCharts.cpp and chart_lists.cpp.
Bytes HeadBytes(std::int16_t type, const ChartList& list) {
    if (type == chart_file::kFormat0) return {};
    Bytes bytes;
    if (type != chart_file::kBlocks) {
        bytes.resize(2);
        PutI16(bytes.data(), type);
    }
    const std::size_t at = bytes.size();
    bytes.resize(at + kDescriptionWidth);
    PutText(&bytes[at], kDescriptionWidth, list.description);
    if (type == chart_file::kFormat3) {
        AppendNumber(bytes, static_cast<std::int32_t>(list.charts.size()));
    } else if (type != chart_file::kBlocks && !list.charts.empty()) {
        bytes.resize(static_cast<std::size_t>(ChartRecordLength(type)));
    }
    return bytes;
}

void AppendFormat3(Bytes& bytes, const StoredChart& stored) {
    std::array<std::uint8_t, kFileChartSize> record{};
    PutFileChart(record.data(), stored.chart);
    AppendBytes(bytes, record.data(), record.size());
    AppendNumber(bytes, static_cast<std::int32_t>(stored.attachments.size()));
    for (const ChartAttachment& attachment : stored.attachments) {
        std::array<std::uint8_t, kChartEventSize> event{};
        PutChartEvent(event.data(), attachment.event);
        AppendBytes(bytes, event.data(), event.size());
        AppendText(bytes, attachment.note);
    }
    AppendText(bytes, stored.comment);
}

// One record of types 0 to 2, its comment among the comments'. False, with a run-time error, on
// failure.
bool AppendRecord(std::int16_t type, const StoredChart& stored, Bytes& bytes, Bytes* comments) {
    FileChart chart = stored.chart;
    chart.commentRef = 0;
    if (type != chart_file::kFormat0 && !stored.comment.empty()) {
        if (comments == nullptr) {
            RaiseRunTimeError(error::kBadFileName);
            return false;
        }
        chart.commentRef = PutComment(*comments, stored.comment);
    }
    std::array<std::uint8_t, kFileChartSize> record{};
    PutChartRecord(type, chart, record.data());
    AppendBytes(bytes, record.data(), static_cast<std::size_t>(ChartRecordLength(type)));
    return PendingRunTimeError() == 0;
}

// The bytes of the chart file and, behind it in `files`, of its comment file.
std::int16_t Compose(std::int16_t type, const ChartList& list, std::vector<SavedFile>& files) {
    Bytes bytes = HeadBytes(type, list);
    Bytes comments;
    const bool store = files.size() > 1 && files[1].stored;
    for (const StoredChart& stored : list.charts) {
        if (type == chart_file::kFormat3) {
            AppendFormat3(bytes, stored);
        } else if (type != chart_file::kBlocks &&
                   !AppendRecord(type, stored, bytes, store ? &comments : nullptr)) {
            break;
        }
        if (static_cast<std::int64_t>(bytes.size() + comments.size()) > kMostChartBytes) {
            return error::kFileTooLarge;
        }
    }
    RunTimeError failure;
    if (TakeRunTimeError(failure)) return failure.number;
    files[0].bytes = std::move(bytes);
    if (store) files[1].bytes = std::move(comments);
    return 0;
}

// Writes the files aside, with the access rights of those that they replace.
std::int16_t WriteAside(std::vector<SavedFile>& files) {
    for (SavedFile& file : files) {
        const bool isComments = &file != files.data();
        if (isComments && file.bytes.empty()) continue;
        std::int16_t failure = StoreFile(file.Aside(), file.bytes);
        file.written = true;
        if (failure == 0 && TakesAPlace(file)) {
            failure = CopyAccessRights(file.path, file.Aside());
        }
        if (failure != 0) return failure;
    }
    return 0;
}

// Makes the old files the backups and the new ones the files. A move that fails takes back those
// before it, so that the old files stand under their names again.
std::int16_t PutInPlace(const std::vector<SavedFile>& files) {
    std::vector<Move> moves;
    for (const SavedFile& file : files) {
        if (TakesAPlace(file)) moves.push_back({file.path, file.Backup()});
    }
    for (const SavedFile& file : files) {
        if (file.written) moves.push_back({file.Aside(), file.path});
    }
    for (std::size_t done = 0; done < moves.size(); ++done) {
        const std::int16_t failure = MoveFile(moves[done].from, moves[done].to);
        if (failure == 0) continue;
        while (done > 0) {
            --done;
            MoveFile(moves[done].to, moves[done].from);
        }
        return failure;
    }
    return 0;
}

// True if the name of a file lets its type be told again: without an extension it is -1.
bool IsUsableName(std::string_view path, std::int16_t type) {
    return !path.empty() && (type == chart_file::kBlocks || HasExtension(path));
}

// True if two of the names that a save uses are one.
bool NamesMeet(const std::vector<SavedFile>& files) {
    std::set<std::string> names;
    for (const SavedFile& file : files) {
        for (const std::string& name : {file.path, file.Aside(), file.Backup()}) {
            if (!names.insert(LowerAscii(name)).second) return true;
        }
    }
    return false;
}

// True if the name is one of chart files, or the file that has it starts as one. The head of a
// comment file, whose number may look like a version, goes on with two bytes 0.
bool IsChartFile(const std::string& path) {
    const std::string name = LowerAscii(path);
    for (const std::string_view ending : {".cht", ".ch6", ".kvchx"}) {
        if (name.ends_with(ending)) return true;
    }
    const FileHandle file = OpenQuietly(path);
    if (file == 0) return false;
    std::array<std::uint8_t, 4> head{};
    const bool whole = FileLength(file) >= static_cast<std::int64_t>(2 + kDescriptionWidth) &&
                       ReadWhatIsThere(file, 1, head) == head.size();
    CloseFile(file);
    const std::int16_t version = GetI16(head.data());
    return whole && version >= chart_file::kFormat1 && version <= chart_file::kFormat3 &&
           GetI16(&head[2]) != 0;
}

// True if the names of the files are in one another's way, or the comment file is a chart file.
bool NamesAreInTheWay(const std::vector<SavedFile>& files) {
    return NamesMeet(files) || (files.size() > 1 && IsChartFile(files[1].path));
}

// The chart file and, behind it, its comment file: that of the new file, or else that of the old
// one, which goes with it. They have the names that existing files have, whatever the case in which
// they were given.
std::vector<SavedFile> FilesOf(std::string_view path, std::int16_t type) {
    std::vector<SavedFile> files(1);
    files[0].path = ProgramPath(NativePath(path));
    const std::string commentPath = CommentPath(files[0].path);
    const bool stored = KeepsComments(type);
    const bool kept = stored || KeepsComments(StoredChartType(files[0].path));
    if (!kept || commentPath == files[0].path) return files;
    files.emplace_back();
    files[1].path = ProgramPath(NativePath(commentPath));
    files[1].stored = stored;
    // Old comments that can't be moved, or aren't any, stay where they are.
    if (!stored && NamesAreInTheWay(files)) files.pop_back();
    return files;
}

// True if what has the name of the comment file isn't the old comments of that chart file.
bool IsAnothers(const std::vector<SavedFile>& files) {
    return files.size() > 1 && !KeepsComments(StoredChartType(files[0].path)) &&
           !IsMissing(files[1].path);
}

// Deletes what this save, or an earlier one, left aside.
void DeleteAsides(const std::vector<SavedFile>& files) {
    for (const SavedFile& file : files) {
        if (file.stored) DeleteFile(file.Aside());
    }
}

// Why a save has to leave everything as it is; 0 if it hasn't.
std::int16_t WhyRefused(const std::vector<SavedFile>& files, const ChartList& list) {
    if (NamesAreInTheWay(files)) return error::kBadFileName;
    if (IsAnothers(files)) return error::kPathAccess;
    if (list.damaged != 0 && IsSameFile(files[0].path, list.path)) return error::kPastEnd;
    return 0;
}

std::int16_t Save(std::string_view path, std::int16_t type, const ChartList& list) {
    if (type < chart_file::kBlocks || type > chart_file::kFormat3) return error::kBadFileMode;
    if (!IsUsableName(path, type)) return error::kBadFileName;
    std::vector<SavedFile> files = FilesOf(path, type);
    // Without comments another's file is in nobody's way.
    if (IsAnothers(files) && !HasComments(list)) files.pop_back();
    std::int16_t failure = WhyRefused(files, list);
    if (failure != 0) return failure;
    DeleteAsides(files);

    failure = Compose(type, list, files);
    if (failure == 0) failure = WriteAside(files);
    if (failure == 0) failure = PutInPlace(files);
    if (failure != 0) DeleteAsides(files);
    return failure;
}

}  // namespace

void ShowChartSaveError(std::string_view path, std::int16_t number) {
    if (session.shell == nullptr) return;
    std::string text = "Unable to save chart file: " + ShownPath(path);
    text.append(kCrLf).append(kCrLf);
    text += "Error " + std::to_string(number) + ": " + RunTimeErrorText(number);
    session.shell->MessageBox(text, "Orvantis", BoxButtons::Ok, BoxIcon::Error);
}

bool SaveChartFile(std::string_view path, std::int16_t type, ChartList& list) {
    RunTimeError before;
    TakeRunTimeError(before);  // what stood before belongs to others
    const std::int16_t failure = Save(path, type, list);
    if (before.number != 0) RaiseRunTimeError(before.number);
    if (failure != 0) {
        ShowChartSaveError(path, failure);
        return false;
    }
    list.path = path;
    list.type = type;
    list.changed = kFalse;
    list.damaged = kFalse;
    return true;
}

}  // namespace orvantis

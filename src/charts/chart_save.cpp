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

// What a save does with a file name.
struct SavedFile {
    std::string path;      // "": nothing
    Bytes bytes;           // of the new file
    bool moved = false;    // what is there becomes the backup
    bool written = false;  // a new file comes: it is written aside first
    bool cleared = false;  // what an earlier save left aside goes
    bool expired = false;  // the old backup goes although nothing takes its place

    std::string Aside() const { return path + "~"; }
    std::string Backup() const { return path + ".bak"; }
};

// The two files of a save, by the names that existing ones have, whatever the case in which they
// were given.
struct SavedFiles {
    SavedFile charts;
    SavedFile comments;  // written by types 1 and 2; moved with a replaced chart file of these

    std::array<SavedFile*, 2> Both() { return {&charts, &comments}; }
    std::array<const SavedFile*, 2> Both() const { return {&charts, &comments}; }
};

struct Move {
    std::string from;
    std::string to;
};

// The moves of a save up to the one that failed.
struct Moves {
    std::vector<Move> done;
    std::int16_t failure = 0;  // error number, 0 none
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

// The bytes of the chart file and of its comment file.
std::int16_t Compose(std::int16_t type, const ChartList& list, SavedFiles& files) {
    Bytes bytes = HeadBytes(type, list);
    Bytes comments;
    for (const StoredChart& stored : list.charts) {
        if (type == chart_file::kFormat3) {
            AppendFormat3(bytes, stored);
        } else if (type != chart_file::kBlocks &&
                   !AppendRecord(type, stored, bytes,
                                 files.comments.written ? &comments : nullptr)) {
            break;
        }
        if (static_cast<std::int64_t>(bytes.size() + comments.size()) > kMostChartBytes) {
            return error::kFileTooLarge;
        }
    }
    RunTimeError failure;
    if (TakeRunTimeError(failure)) return failure.number;
    files.charts.bytes = std::move(bytes);
    files.comments.bytes = std::move(comments);
    return 0;
}

// Writes the files aside, with the access rights of those that they replace.
std::int16_t WriteAside(const SavedFiles& files) {
    for (const SavedFile* file : files.Both()) {
        if (!file->written) continue;
        std::int16_t failure = StoreExactFile(file->Aside(), file->bytes);
        if (failure == 0 && file->moved) failure = CopyAccessRights(file->path, file->Aside());
        if (failure != 0) return failure;
    }
    return 0;
}

// True if there is something of that very name; one that differs by case alone is another's.
bool IsTaken(const std::string& path) {
    return ProgramPath(NativePath(path)) == path && !IsMissing(path);
}

// Moves, or keeps, a file unless a move before it failed.
void Carry(Moves& moves, const std::string& from, const std::string& to, bool keeps) {
    if (moves.failure != 0) return;
    moves.failure = keeps ? KeepFile(from, to) : MoveFile(from, to);
    if (moves.failure == 0) moves.done.push_back({from, to});
}

// Makes the old files the backups and the new ones the files. A move that fails takes back those
// before it, so that the old files and their backups stand under their names again. Comments go
// first and come last: charts of a save that is broken off may be without theirs, but never stand
// beside others.
std::int16_t PutInPlace(const SavedFiles& files) {
    const SavedFile& charts = files.charts;
    const SavedFile& comments = files.comments;
    Moves moves;
    std::vector<std::string> parked;
    parked.reserve(2);
    for (const SavedFile* file : {&comments, &charts}) {
        const bool leaves = (file->moved || file->expired) && IsTaken(file->Backup());
        if (moves.failure != 0 || !leaves) continue;
        parked.push_back(UnusedPathBeside(file->path));
        Carry(moves, file->Backup(), parked.back(), false);
    }
    if (comments.moved) Carry(moves, comments.path, comments.Backup(), false);
    if (charts.moved) Carry(moves, charts.path, charts.Backup(), true);
    Carry(moves, charts.Aside(), charts.path, false);
    if (comments.written) Carry(moves, comments.Aside(), comments.path, false);
    if (moves.failure == 0) {
        for (const std::string& path : parked) DeleteFile(path);
        return 0;
    }
    for (std::size_t left = moves.done.size(); left > 0; --left) {
        MoveFile(moves.done[left - 1].to, moves.done[left - 1].from);
    }
    return moves.failure;
}

// True if the name of a file lets its type be told again: without an extension it is -1.
bool IsUsableName(std::string_view path, std::int16_t type) {
    return !path.empty() && (type == chart_file::kBlocks || HasExtension(path));
}

// True if two of the names that a save uses are one.
bool NamesMeet(const SavedFiles& files) {
    std::set<std::string> names;
    for (const SavedFile* file : files.Both()) {
        for (const std::string& name : {file->path, file->Aside(), file->Backup()}) {
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
           GetI16(&head[2]) != 0 && !IsCommentFile(path);
}

// True if the names of the files are in one another's way, or the comment file is a chart file.
bool NamesAreInTheWay(const SavedFiles& files) {
    return NamesMeet(files) || IsChartFile(files.comments.path);
}

// Whose the comment file is that stands beside a chart file.
enum class Holder {
    Nobody,   // there is none
    Own,      // of the chart file alone, whether its charts have comments or not
    Shared,   // of the chart file and of another one
    Another,  // of something else: what hasn't the form of a comment file, can't be read, or ends
              // before a comment of the chart file, too
};

Holder HolderOf(const SavedFiles& files) {
    const std::string& charts = files.charts.path;
    const std::string& comments = files.comments.path;
    if (IsMissing(comments)) return Holder::Nobody;
    const bool sound = KeepsComments(StoredChartType(charts)) && IsCommentFile(comments) &&
                       HighestCommentRef(charts) <= CommentBlocks(comments);
    if (!sound) return Holder::Another;
    if (SharerOfComments(charts, comments).empty()) return Holder::Own;
    return HighestCommentRef(charts) != 0 ? Holder::Shared : Holder::Another;
}

// The obstacle to comments there beside those charts that another chart file is, which keeps its
// own there or has lost them; nothing if there is none.
CommentObstacle FindSharer(const std::string& charts, const std::string& comments) {
    std::string sharer = SharerOfComments(charts, comments);
    if (sharer.empty()) return {};
    return {comments, charts, std::move(sharer)};
}

// What is another's of the name of the comments' backup, or would find there what comes there;
// nothing if it may be replaced.
CommentObstacle FindBackupObstacle(const SavedFiles& files) {
    const std::string charts = files.charts.Backup();
    const std::string backup = files.comments.Backup();
    if (IsTaken(backup) && !IsCommentFile(backup)) return {backup, charts, ""};
    return FindSharer(charts, backup);
}

// True if the chart file goes to the backup without its comments, which it has lost, and would find
// those there that are in the backup already.
bool MayFindOldComments(const SavedFiles& files) {
    return files.charts.moved && !files.comments.moved && !NamesMeet(files) &&
           IsTaken(files.comments.Backup()) && HighestCommentRef(files.charts.path) != 0;
}

// True if these are the former backup's, and go. A save that was broken off may have left both
// backups in place already: the comments are then its own.
bool WouldFindOldComments(const SavedFiles& files) {
    return MayFindOldComments(files) && !IsSameFile(files.charts.path, files.charts.Backup()) &&
           FindBackupObstacle(files).path.empty();
}

// The two files by their names alone; the comment file's is "" if the chart file can't have one.
SavedFiles NameFiles(std::string_view path) {
    SavedFiles files;
    files.charts.path = ProgramPath(NativePath(path));
    const std::string comments = CommentPath(files.charts.path);
    if (comments != files.charts.path) files.comments.path = ProgramPath(NativePath(comments));
    return files;
}

// What a save does with the chart file. What can't be opened is moved too, so that nothing is
// written over.
void PlanCharts(SavedFile& charts) {
    charts.moved = !IsMissing(charts.path);
    charts.written = true;
    charts.cleared = true;
}

// What it does with the comment file: a new one is written where there are comments, and an old one
// of the chart file's own goes with it to the backup. But what isn't in the way of new comments
// stays where it is if it can't go there. Comments aside stay where there is no comment file and
// another chart file leads into one: a save of that one may have been broken off, and they be its
// only ones.
void PlanComments(std::int16_t type, const ChartList& list, SavedFiles& files) {
    if (files.comments.path.empty()) return;
    files.comments.written = KeepsComments(type) && HasComments(list);
    const Holder holder = HolderOf(files);
    const std::string aside = files.comments.Aside();
    const bool missed = holder == Holder::Nobody &&
                        !SharerOfComments(files.charts.path, files.comments.path).empty();
    files.comments.cleared = !missed && ((KeepsComments(type) && holder != Holder::Another) ||
                                         (IsTaken(aside) && IsCommentFile(aside)));
    files.comments.moved = holder == Holder::Own || holder == Holder::Shared;
    if (!files.comments.written && NamesAreInTheWay(files)) files.comments.moved = false;
    files.comments.expired = WouldFindOldComments(files);
}

// True if that is a comment file in which charts with such references find all their comments.
bool HoldsComments(const std::string& path, std::int32_t highestRef) {
    return IsTaken(path) && IsCommentFile(path) && highestRef <= CommentBlocks(path);
}

// True if both files can be read and hold the same bytes.
bool HaveSameBytes(const std::string& a, const std::string& b) {
    Bytes left;
    Bytes right;
    return FetchFile(a, kMostChartBytes, left) == 0 && FetchFile(b, kMostChartBytes, right) == 0 &&
           left == right;
}

// True if a save that was broken off had begun to make these charts, which stand there still, the
// backup. It is then the same file, or in a folder that was copied without second names, where
// what was written aside is there still, one that holds the same.
bool AreLeaving(const SavedFile& charts) {
    const bool begun = IsTaken(charts.Aside());
    const std::string backup = charts.Backup();
    if (!IsTaken(backup)) return begun;
    return IsSameFile(charts.path, backup) || (begun && HaveSameBytes(charts.path, backup));
}

// True if a save that was broken off had put these charts, which are the new ones, in place. Where
// they have no backup, and old comments are in theirs, they are rather the old ones, whose new ones
// were lost since.
bool HaveCome(const SavedFiles& files, std::int32_t highestRef) {
    if (IsTaken(files.charts.Aside()) || AreLeaving(files.charts)) return false;
    return IsTaken(files.charts.Backup()) || !HoldsComments(files.comments.Backup(), highestRef);
}

// Puts the comments where they belong if a save that was broken off left them elsewhere. Returns
// the error number, 0 for none.
std::int16_t FinishBrokenSave(std::string_view path) {
    const std::string comments = NameFiles(path).comments.path;
    const std::string place = StandingComments(path);
    return place == comments ? std::int16_t{0} : MoveFile(place, comments);
}

SavedFiles PlanSave(std::string_view path, std::int16_t type, const ChartList& list) {
    SavedFiles files = NameFiles(path);
    PlanCharts(files.charts);
    PlanComments(type, list, files);
    return files;
}

// The file that a save would have to move or to write over although it isn't the charts' own.
CommentObstacle FindObstacle(const SavedFiles& files) {
    const SavedFile& charts = files.charts;
    const SavedFile& comments = files.comments;
    if (comments.written && !comments.moved && !IsMissing(comments.path)) {
        return {comments.path, charts.path, ""};
    }
    if (comments.written || comments.moved) {
        CommentObstacle obstacle = FindSharer(charts.path, comments.path);
        if (!obstacle.path.empty()) return obstacle;
    }
    if (comments.moved) return FindBackupObstacle(files);
    CommentObstacle backup =
        MayFindOldComments(files) ? FindBackupObstacle(files) : CommentObstacle{};
    return backup.sharer.empty() ? CommentObstacle{} : backup;
}

// Deletes what this save, or an earlier one, left aside: the comments first, so that comments aside
// are at no moment without the charts that lead into them.
void DeleteAsides(const SavedFiles& files) {
    for (const SavedFile* file : {&files.comments, &files.charts}) {
        if (file->cleared) DeleteExactFile(file->Aside());
    }
}

// Why a save has to leave everything as it is; 0 if it hasn't.
std::int16_t WhyRefused(const SavedFiles& files, const ChartList& list) {
    if (files.comments.written && NamesAreInTheWay(files)) return error::kBadFileName;
    if (!FindObstacle(files).path.empty()) return error::kPathAccess;
    if (list.damaged != 0 && IsSameFile(files.charts.path, list.path)) return error::kPastEnd;
    return 0;
}

std::int16_t Save(std::string_view path, std::int16_t type, const ChartList& list) {
    if (type < chart_file::kBlocks || type > chart_file::kFormat3) return error::kBadFileMode;
    if (!IsUsableName(path, type)) return error::kBadFileName;
    std::int16_t failure = FinishBrokenSave(path);
    if (failure != 0) return failure;
    SavedFiles files = PlanSave(path, type, list);
    failure = WhyRefused(files, list);
    if (failure != 0) return failure;
    DeleteAsides(files);

    failure = Compose(type, list, files);
    if (failure == 0) failure = WriteAside(files);
    if (failure == 0) failure = PutInPlace(files);
    if (failure != 0) DeleteAsides(files);
    return failure;
}

// The same while no other copy of the program saves charts in the folder: the names aside, and the
// order of the moves, are every save's.
std::int16_t SaveAlone(std::string_view path, std::int16_t type, const ChartList& list) {
    const FolderLock lock(path);
    return lock.Failure() != 0 ? lock.Failure() : Save(path, type, list);
}

}  // namespace

// The comments leave first and come last. Charts that are still the old ones have theirs in the
// backup, where the old charts come next, under both of their names; new ones have theirs aside,
// alone.
std::string StandingComments(std::string_view chartPath) {
    const SavedFiles files = NameFiles(chartPath);
    const SavedFile& charts = files.charts;
    const SavedFile& comments = files.comments;
    if (comments.path.empty() || !IsMissing(comments.path)) return comments.path;
    if (!IsTaken(comments.Aside()) && !IsTaken(comments.Backup())) return comments.path;
    const std::int32_t highest = HighestCommentRef(charts.path);
    if (highest == 0) return comments.path;
    if (AreLeaving(charts) && HoldsComments(comments.Backup(), highest) &&
        FindBackupObstacle(files).path.empty())
        return comments.Backup();
    if (HaveCome(files, highest) && HoldsComments(comments.Aside(), highest))
        return comments.Aside();
    return comments.path;
}

std::int16_t FetchStandingComments(std::string_view chartPath, Bytes& blocks, std::string& place) {
    const SavedFile comments = NameFiles(chartPath).comments;
    for (int left = kMostReadings;; --left) {
        place = StandingComments(chartPath);
        const std::int16_t failure = FetchFile(place, kMostChartBytes, blocks);
        if (failure != error::kFileNotFound || left == 1) return failure;
        // In the order in which a save moves them.
        if (!IsTaken(comments.Backup()) && !IsTaken(comments.Aside()) && IsMissing(comments.path))
            return failure;
    }
}

CommentObstacle FindCommentObstacle(std::string_view path, std::int16_t type,
                                    const ChartList& list) {
    return FindObstacle(PlanSave(path, type, list));
}

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
    const std::int16_t failure = SaveAlone(path, type, list);
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

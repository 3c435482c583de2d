// The level files and the index over them: how the coarser files come from the finest one, how
// the index is built and cached, and how a line is found by class and by area.
#include "map/point_database.h"

#include <algorithm>
#include <limits>

#include "map/level_reader.h"
#include "map/map_document.h"
#include "map/projection.h"
#include "session/files.h"
#include "session/session_state.h"
#include "session/tables.h"
#include "text/numbers.h"
#include "text/strings.h"

namespace orvantis {

PointDatabase pointDatabase;

namespace {

constexpr std::int16_t kLevels = 5;
constexpr std::int16_t kMostLines = std::numeric_limits<std::int16_t>::max();

// Capacity of the index while it is built.
constexpr std::size_t kIndexCapacity = 1295;
constexpr std::size_t kIndexGrowth = 10;

constexpr std::string_view kIndexFailedText = "Unable to create database index.";
constexpr std::string_view kLevelsFailedText = "Unable to create database files.";
constexpr std::string_view kRepairQuestion = "Regenerate map database files?";
constexpr std::string_view kRepairAdvice =
    "If your maps appear to be corrupted, then select OK to attempt to fix the problem. This will "
    "take a few moments.";
constexpr std::string_view kRepairedText = "Map database files have been regenerated.";

// An error that nobody has taken before a routine with a handler begins is none of its own.
void DropRunTimeError() {
    RunTimeError stale;
    TakeRunTimeError(stale);
}

// If a run-time failure stands, tells what came of it and closes all files.
bool HandleRunTimeError(std::string_view consequence) {
    RunTimeError failure;
    if (!TakeRunTimeError(failure)) return false;
    CloseAllFiles();
    std::string text = failure.description;
    text.append(kCrLf).append(kCrLf).append(consequence);
    if (session.shell != nullptr) {
        session.shell->MessageBox(text, "Database Error", BoxButtons::Ok, BoxIcon::Information);
    }
    return true;
}

std::string IndexPath() {
    return session.ProgramDir + "levelx.ndx";
}

// Points that follow a header. A negative count, which no writer leaves, is none.
std::int64_t PointsOf(const LineHeader& header) {
    return std::max<std::int16_t>(header.count, 0);
}

// Reads one line and appends to each coarser file what it keeps of it. False at the file's end.
bool ThinLine(LevelReader& level1, std::int64_t& position, std::array<Bytes, kLevels + 1>& files) {
    if (!LevelHolds(level1, position, kLineHeaderSize)) return false;
    const std::uint8_t* p = LevelBytes(level1, position, kLineHeaderSize);
    if (p == nullptr) return false;
    LineHeader header = GetLineHeader(p);
    std::array<std::uint8_t, kLineHeaderSize> headerBytes{};
    std::copy_n(p, kLineHeaderSize, headerBytes.begin());
    position += kLineHeaderSize;

    const std::int64_t size = kLinePointSize * PointsOf(header);
    if (!LevelHolds(level1, position, size)) return false;
    p = LevelBytes(level1, position, size);
    if (p == nullptr) return false;
    position += size;

    // The header goes out as it came in, but for the count, which follows from the points.
    for (std::int16_t level = 2; level <= kLevels; ++level) {
        Bytes& file = files[static_cast<std::size_t>(level)];
        const std::size_t head = file.size();
        file.insert(file.end(), headerBytes.begin(), headerBytes.end());
        std::int16_t kept = 0;
        for (std::int64_t at = 0; at < size; at += kLinePointSize) {
            if (GetI16(p + at) < level) continue;
            file.insert(file.end(), p + at, p + at + kLinePointSize);
            ++kept;
        }
        PutI16(&file[head + 2], kept);
    }
    return true;
}

// Work done in the last third of the panel, which the database's merge shares with this step.
void ShowThinning(std::string_view text, std::int64_t done, std::int64_t length,
                  std::int16_t& shown) {
    const std::int16_t percent =
        RoundToInt16(33.0 * static_cast<double>(done) / static_cast<double>(length) + 67);
    if (percent == shown) return;
    shown = percent;
    if (session.shell != nullptr) session.shell->ShowProgress(text, percent);
}

// Thins all lines of level 1, into the bytes of the coarser files. False on a run-time failure.
bool ThinLevel1(LevelReader& level1, std::string_view progressText,
                std::array<Bytes, kLevels + 1>& files) {
    if (level1.length > kLargestDatabase) RaiseRunTimeError(error::kFileTooLarge);
    std::int64_t position = 1;
    std::int16_t lines = 0;
    std::int16_t shown = 0;
    while (PendingRunTimeError() == 0 && ThinLine(level1, position, files)) {
        if (lines == kMostLines) RaiseRunTimeError(error::kOverflow);
        ++lines;
        ShowThinning(progressText, position - 1, level1.length, shown);
    }
    return PendingRunTimeError() == 0;
}

// Loads the cached index as it stands. False if it can't be read whole, holds more lines than can
// be counted, or none: then it is made anew.
bool ReadCachedIndex() {
    const FileHandle file = FileOpener(IndexPath(), open_mode::kBinary, 0, kFalse);
    if (file < 1) return false;
    const std::int64_t lines = FileLength(file) / kLineIndexEntrySize;
    const bool countable = lines >= 1 && lines <= kMostLines;
    Bytes bytes(countable ? static_cast<std::size_t>(lines * kLineIndexEntrySize) : 0);
    const bool read = ReadBytes(file, 1, bytes);
    CloseFile(file);
    if (!read || !countable) return false;

    std::vector<LineIndexEntry> index(static_cast<std::size_t>(lines) + 1);
    for (std::size_t line = 1; line < index.size(); ++line) {
        index[line] = GetLineIndexEntry(&bytes[(line - 1) * kLineIndexEntrySize]);
    }
    pointDatabase.LineIndex = std::move(index);
    pointDatabase.count = static_cast<std::int16_t>(lines);
    return true;
}

// Enters one header of a level file into the index. A line of a coarser level belongs to the entry
// of the same number, and its code must be that entry's; otherwise `mismatch` is set.
void EnterHeader(std::int16_t level, const LineHeader& header, std::int64_t position,
                 bool& mismatch) {
    std::vector<LineIndexEntry>& index = pointDatabase.LineIndex;
    const auto line = static_cast<std::size_t>(pointDatabase.count);
    if (line >= index.size()) index.resize(index.size() + kIndexGrowth);
    LineIndexEntry& entry = index[line];
    if (level == 1) {
        entry.code = header.code;
        entry.latMin = header.latMin;
        entry.latMax = header.latMax;
        entry.longMin = header.longMin;
        entry.longMax = header.longMax;
    } else if (header.code != entry.code) {
        mismatch = true;
    }
    entry.pointCount[static_cast<std::size_t>(level)] = static_cast<std::int16_t>(PointsOf(header));
    entry.pointPos[static_cast<std::size_t>(level)] = static_cast<std::int32_t>(position);
}

// Walks the headers of one level file. Lines are counted in 16 bits and positions kept in 32.
void IndexLevel(std::int16_t level, LevelReader& reader, bool& mismatch) {
    std::int64_t position = 1;
    while (LevelHolds(reader, position, kLineHeaderSize)) {
        const std::uint8_t* p = LevelBytes(reader, position, kLineHeaderSize);
        if (p == nullptr) return;
        const LineHeader header = GetLineHeader(p);
        position += kLineHeaderSize;
        if (pointDatabase.count == kMostLines ||
            position > std::numeric_limits<std::int32_t>::max()) {
            RaiseRunTimeError(error::kOverflow);
            return;
        }
        ++pointDatabase.count;
        EnterHeader(level, header, position, mismatch);
        position += kLinePointSize * PointsOf(header);
    }
}

// Leaves a run-time error if the index file couldn't be replaced.
void WriteIndex() {
    Bytes bytes(static_cast<std::size_t>(pointDatabase.count * kLineIndexEntrySize));
    for (int line = 1; line <= pointDatabase.count; ++line) {
        const auto number = static_cast<std::size_t>(line);
        PutLineIndexEntry(bytes.data() + (number - 1) * kLineIndexEntrySize,
                          pointDatabase.LineIndex[number]);
    }
    ReplaceFileSilently(IndexPath(), bytes);
}

// Without all level files there is no index.
Flag DropIndex() {
    pointDatabase.count = 0;
    pointDatabase.LineIndex.assign(1, {});
    return kTrue;
}

Flag BuildIndex() {
    bool mismatch = false;
    pointDatabase.LineIndex.assign(kIndexCapacity + 1, {});
    for (std::int16_t level = 1; level <= kLevels; ++level) {
        pointDatabase.count = 0;
        LevelReader reader;
        if (!OpenLevel(reader, LevelPath(level))) return DropIndex();
        IndexLevel(level, reader, mismatch);
        CloseLevel(reader);
        if (PendingRunTimeError() != 0) break;
    }
    if (HandleRunTimeError(kIndexFailedText)) return DropIndex();
    // The index serves in memory, whether it can be kept or not. Not before now does the old file
    // go.
    BuildClassRanges();
    DeleteFile(IndexPath());
    WriteIndex();
    const bool unwritten = HandleRunTimeError(kIndexFailedText);
    return unwritten || mismatch ? kTrue : kFalse;
}

std::int16_t CodeOfLine(int line) {
    const auto number = static_cast<std::size_t>(line);
    return line >= 1 && number < pointDatabase.LineIndex.size()
               ? pointDatabase.LineIndex[number].code
               : std::int16_t{0};
}

}  // namespace

std::string LevelPath(std::int16_t level) {
    return session.ProgramDir + "level" + std::to_string(level) + ".pnt";
}

Flag GenerateLevels(std::string_view level1Path, std::string_view progressText) {
    constexpr std::size_t kTail = 5;  // the level's digit and ".pnt"
    LevelReader level1;
    if (level1Path.size() < kTail || !OpenLevel(level1, level1Path)) return kTrue;
    DropRunTimeError();

    std::array<Bytes, kLevels + 1> files;
    ThinLevel1(level1, progressText, files);
    CloseLevel(level1);
    if (HandleRunTimeError(kLevelsFailedText)) return kTrue;

    const std::string stem(level1Path.substr(0, level1Path.size() - kTail));
    // Level 2 comes last: as long as it is older than level 1, the files are made anew.
    for (std::int16_t level = kLevels; level >= 2; --level) {
        const std::string path = stem + std::to_string(level) + ".pnt";
        if (!ReplaceFile(path, files[static_cast<std::size_t>(level)])) return kTrue;
    }
    return kFalse;
}

bool LevelsNeedRebuild() {
    for (std::int16_t level = 2; level <= kLevels; ++level) {
        if (FileExists(LevelPath(level)) == kFalse) return true;
    }
    return FileDate(LevelPath(2)) < FileDate(LevelPath(1));
}

Flag LoadLineIndex() {
    DropRunTimeError();
    const auto indexDate = FileDate(IndexPath());
    const auto levelDate = FileDate(LevelPath(kLevels));
    const bool current = indexDate && levelDate && *indexDate > *levelDate;
    if (current && FileExists(IndexPath()) != kFalse && ReadCachedIndex()) {
        BuildClassRanges();
        return kFalse;
    }
    return RebuildLineIndex();
}

Flag RebuildLineIndex() {
    DropRunTimeError();
    return BuildIndex();
}

void RepairDatabase() {
    Shell& shell = *session.shell;
    std::string question(kRepairQuestion);
    question.append(kCrLf).append(kCrLf).append(kRepairAdvice);
    if (shell.MessageBox(question, "Orvantis", BoxButtons::OkCancel, BoxIcon::Question) !=
        BoxAnswer::Ok) {
        return;
    }
    shell.SetPointer(Pointer::Hourglass);
    shell.ShowProgress(kFirstUseText, 0);
    const bool failed = GenerateLevels(LevelPath(1), kFirstUseText) != kFalse;
    shell.ShowProgress("", 100);
    if (!failed) {
        // Whatever its date, the old index is not of these files, nor are the kept pictures.
        RebuildLineIndex();
        mapState.viewImages = {};
        if (plotFull != nullptr) plotFull();
    }
    shell.SetPointer(Pointer::Default);
    if (failed) return;
    shell.MessageBox(kRepairedText, "Orvantis", BoxButtons::Ok, BoxIcon::Information);
}

void BuildClassRanges() {
    // The first entry of a class is never cleared before a rebuild and so keeps, for the life of
    // the process, the value of the first one: kept on purpose, as a simplification. Only the last
    // follows later rebuilds. Codes of no class leave no trace. Of a class that comes back later
    // on, out of the order of codes, the range takes in what lies between.
    const auto rowOf = [](int detailClass) -> ClassRow* {
        return detailClass >= 1 && detailClass <= 7
                   ? &pointDatabase.ClassRange[static_cast<std::size_t>(detailClass)]
                   : nullptr;
    };
    ClassRow* previous = nullptr;
    for (int line = 1; line <= pointDatabase.count; ++line) {
        ClassRow* row = rowOf(CodeOfLine(line) / 1000);
        if (row != previous && previous != nullptr) {
            previous->last = static_cast<std::int16_t>(line - 1);
        }
        if (row != nullptr && row->first == 0) row->first = static_cast<std::int16_t>(line);
        previous = row;
    }
    if (previous != nullptr) previous->last = pointDatabase.count;
}

bool LineInView(const Extents& extents, std::int16_t south, std::int16_t north, std::int16_t west,
                std::int16_t east, std::int16_t projectionNumber) {
    if (!IsFlat(projectionNumber)) {
        const auto near = [](std::int16_t latMin, std::int16_t longMin) {
            return AngularDistance(mapView.extent.centreLong, mapView.extent.centreLat,
                                   static_cast<float>(longMin) / 60,
                                   static_cast<float>(latMin) / 60) < 90;
        };
        return near(extents.latMin, extents.longMin) || near(extents.latMax, extents.longMax);
    }
    if (extents.latMin >= north || extents.latMax <= south) return false;
    if (west <= east) return extents.longMin < east && extents.longMax > west;
    return extents.longMin < east || extents.longMax > west;
}

void LineCodeSummary() {
    std::string text = "Line Codes Used in Database:";
    for (const MapDetail& detail : kMapDetails) {
        if (!detail.hasLines) continue;
        const ClassRow& row =
            pointDatabase.ClassRange[static_cast<std::size_t>(detail.detailClass)];
        text.append(kCrLf).append(detail.name).append(": ");
        text +=
            std::to_string(CodeOfLine(row.first)) + " to " + std::to_string(CodeOfLine(row.last));
    }
    if (session.shell != nullptr) {
        session.shell->MessageBox(text, "Line Code Summary", BoxButtons::Ok, BoxIcon::Information);
    }
}

}  // namespace orvantis

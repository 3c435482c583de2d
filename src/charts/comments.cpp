// Comments of charts. See comments.h.
#include "charts/comments.h"

#include <algorithm>
#include <array>
#include <filesystem>
#include <set>
#include <vector>

#include "charts/KVCharts.h"
#include "charts/chart_lists.h"
#include "session/files.h"
#include "text/strings.h"

namespace orvantis {

namespace {

namespace fs = std::filesystem;

// The comment file of types 1 and 2 has blocks of 32 bytes, counted from 1:
//
//   offset  size  field
//        0     4  next, signed: the block that goes on with the comment, 0 at its end
//        4    28  text
//
// Block 1 is the file's head: its `next` is the start of the free list, its text is blank.
constexpr std::size_t kBlockSize = 32;
constexpr std::size_t kText = 4;
constexpr std::size_t kTextWidth = 28;
constexpr std::int32_t kHead = 1;
constexpr std::size_t kMostBlocks = 1150;
static_assert(kText + kTextWidth == kBlockSize && kMostBlocks * kTextWidth == kMostComment);

std::int32_t BlockCount(std::int64_t bytes) {
    return static_cast<std::int32_t>(
        std::min<std::int64_t>(bytes / static_cast<std::int64_t>(kBlockSize), INT32_MAX));
}

std::uint8_t* Block(Bytes& blocks, std::int32_t number) {
    return &blocks[(static_cast<std::size_t>(number) - 1) * kBlockSize];
}

bool IsCommentBlock(std::int32_t number, std::int32_t count) {
    return LeadsToComment(number) && number <= count;
}

// The text of the chain at `ref`; `block(number)` gives the bytes of a block, null on failure.
template <typename ReadBlock>
std::string ChainText(std::int32_t ref, std::int32_t count, ReadBlock block) {
    std::string text;
    for (std::size_t taken = 0; taken < kMostBlocks && IsCommentBlock(ref, count); ++taken) {
        const std::uint8_t* p = block(ref);
        if (p == nullptr) break;
        const std::int32_t next = GetI32(p);
        const std::string_view part(reinterpret_cast<const char*>(p + kText), kTextWidth);
        text += next == 0 ? TrimRight(part) : part;
        if (next == ref) break;
        ref = next;
    }
    return CleanEndMarks(text);
}

bool HasCommentFile(std::int16_t type, std::string_view path) {
    return KeepsComments(type) && CommentPath(path) != path;
}

// The comment of chart `ref` of an open type 3 file; null if there is no such chart.
std::string* ListedComment(std::string_view path, std::int32_t ref) {
    ChartList* list = OpenChartListOf(FindOpenChartList(path));
    const bool held =
        list != nullptr && ref >= 1 && static_cast<std::size_t>(ref) <= list->charts.size();
    return held ? &list->charts[static_cast<std::size_t>(ref) - 1].comment : nullptr;
}

bool WriteListedComment(std::string_view path, std::int32_t ref, std::string_view text) {
    std::string* comment = ListedComment(path, ref);
    if (comment == nullptr) {
        RaiseRunTimeError(error::kBadFileName);
        return false;
    }
    ChartList& list = *OpenChartListOf(FindOpenChartList(path));
    if (list.damaged != 0) {
        RaiseRunTimeError(error::kPastEnd);
        return false;
    }
    *comment = text;
    list.changed = kTrue;
    return true;
}

// Whole blocks, none of which leads to the head or out of the file.
bool HasCommentForm(Bytes& blocks) {
    if (blocks.size() % kBlockSize != 0) return false;
    const std::int32_t count = BlockCount(static_cast<std::int64_t>(blocks.size()));
    for (std::int32_t number = 1; number <= count; ++number) {
        const std::int32_t next = GetI32(Block(blocks, number));
        if (next != 0 && !IsCommentBlock(next, count)) return false;
    }
    return true;
}

// The references of a chart file of type 1 or 2.
struct CommentRefs {
    std::int32_t highest = 0;  // of those that lead to comments; 0 none
    bool whole = false;        // no piece of a chart is in the file, and no reference is below 0
    bool unread = false;       // the file is too large: `highest` is INT32_MAX
};

CommentRefs StoredRefs(std::string_view chartPath) {
    CommentRefs refs;
    std::int16_t type = 0;
    std::int32_t count = 0;
    const FileHandle file = OpenStoredCharts(chartPath, type, count, kFalse);
    if (file == 0) return refs;
    refs.whole = KeepsComments(type) && FileLength(file) % ChartRecordLength(type) == 0;
    refs.unread = KeepsComments(type) && FileLength(file) > kMostChartBytes;
    if (refs.unread) refs.highest = INT32_MAX;
    FileChart chart;
    for (std::int32_t n = 1; n <= count && KeepsComments(type) && !refs.unread; ++n) {
        if (!ReadChart(type, file, n, chart)) break;
        if (chart.commentRef < 0) refs.whole = false;
        if (LeadsToComment(chart.commentRef))
            refs.highest = std::max(refs.highest, chart.commentRef);
    }
    CloseFile(file);
    return refs;
}

// True if charts of that file have their comments in a comment file of so many blocks; what can't
// be read isn't known, and `unread` tells what is taken for it. Any file may start as a chart file
// does, a comment file too, but it hardly goes on as one with references that all lie within the
// comment file.
bool MayLeadInto(const std::string& chartPath, std::int32_t blocks, bool unread) {
    const FileHandle file = OpenQuietly(chartPath);
    if (file == 0) {
        std::error_code ignored;
        return unread && fs::is_regular_file(NativePath(chartPath), ignored);
    }
    CloseFile(file);
    const CommentRefs refs = StoredRefs(chartPath);
    const bool leads =
        refs.unread ? unread : LeadsToComment(refs.highest) && refs.highest <= blocks;
    return refs.whole && leads && !IsCommentFile(chartPath);
}

// Length of what a save puts behind the name of a file that it leaves behind; 0 there is nothing.
std::size_t AddedBySave(std::string_view path) {
    if (path.ends_with('~')) return 1;
    constexpr std::string_view backup = ".bak";
    const bool fits = path.size() >= backup.size();
    return fits && LowerAscii(path.substr(path.size() - backup.size())) == backup ? backup.size()
                                                                                  : 0;
}

// The path without what saves have put behind it, as long as an extension is left. `point`: where
// the first extension starts, or npos.
std::string_view SavedName(std::string_view path, std::size_t point) {
    std::size_t added = AddedBySave(path);
    while (added != 0 && point < path.size() - added) {
        path.remove_suffix(added);
        added = AddedBySave(path);
    }
    return path;
}

// The names of all that is in a folder.
std::vector<std::string> NamesIn(const fs::path& folder, std::error_code& failure) {
    std::vector<std::string> names;
    fs::directory_iterator entry(folder.empty() ? "." : folder, failure);
    for (; !failure && entry != fs::directory_iterator(); entry.increment(failure)) {
        names.push_back(entry->path().filename().string());
    }
    return names;
}

// True if a save of the chart file `own`, given by its native path, is one of `other` too: that is
// its name, or a link that leads to it. A second name of the same file isn't: it stays with the
// charts that are there now. `listed`: the folder has the name of `own` just as it is given.
bool IsSavedToo(const fs::path& other, const fs::path& own, bool listed) {
    std::error_code failure;
    if (other == own) return true;
    if (fs::is_symlink(other, failure)) {
        const fs::path folder = own.has_parent_path() ? own.parent_path() : fs::path(".");
        return fs::canonical(other, failure) == fs::canonical(folder, failure) / own.filename();
    }
    // A disk may take names that differ by case for one, and lists it in one of them alone.
    return !listed &&
           LowerAscii(other.filename().string()) == LowerAscii(own.filename().string()) &&
           fs::equivalent(other, own, failure);
}

// Appends a blank block and returns its number.
std::int32_t AppendBlock(Bytes& blocks) {
    blocks.resize(blocks.size() + kBlockSize, std::uint8_t{' '});
    const std::int32_t number = BlockCount(static_cast<std::int64_t>(blocks.size()));
    PutI32(Block(blocks, number), 0);
    return number;
}

// True if a free list from that block on ends, without a block that is taken or comes twice, within
// the first `count` blocks.
bool IsSoundFreeList(Bytes& blocks, std::int32_t free, std::int32_t count,
                     const std::set<std::int32_t>& taken) {
    for (std::int32_t walked = 0; free != 0; ++walked) {
        const bool sound = walked < count && IsCommentBlock(free, count) && taken.count(free) == 0;
        if (!sound) return false;
        free = GetI32(Block(blocks, free));
    }
    return true;
}

// Which of the blocks, by their numbers, are on the free list.
std::vector<bool> FreeBlocks(Bytes& blocks, std::int32_t count) {
    std::vector<bool> isFree(static_cast<std::size_t>(count) + 1);
    std::int32_t free = GetI32(Block(blocks, kHead));
    while (IsCommentBlock(free, count) && !isFree[static_cast<std::size_t>(free)]) {
        isFree[static_cast<std::size_t>(free)] = true;
        free = GetI32(Block(blocks, free));
    }
    return isFree;
}

}  // namespace

bool KeepsComments(std::int16_t type) {
    return type == chart_file::kFormat1 || type == chart_file::kFormat2;
}

std::string CommentPath(std::string_view chartPath) {
    const std::size_t folder = chartPath.find_last_of("\\/");
    const std::size_t start = folder == std::string_view::npos ? 0 : folder + 1;
    const std::string_view saved = SavedName(chartPath, chartPath.find('.', start));
    const std::size_t point = saved.find_last_of('.');
    if (point == std::string_view::npos || point <= start) return std::string(chartPath);
    const std::string extension = LowerAscii(saved.substr(point + 1));
    if (extension == "ch6" || extension == "kvchx") return std::string(chartPath);
    return std::string(saved.substr(0, point)).append(chartPath.substr(saved.size()));
}

bool MayHoldComments(std::string_view commentPath) {
    std::error_code ignored;
    return !IsMissing(commentPath) && !fs::is_directory(NativePath(commentPath), ignored);
}

std::int32_t CommentBlocks(std::string_view path) {
    const FileHandle file = OpenQuietly(path);
    if (file == 0) return 0;
    const std::int32_t count = BlockCount(FileLength(file));
    CloseFile(file);
    return count;
}

std::int32_t CommentBlocks(const Bytes& blocks) {
    return BlockCount(static_cast<std::int64_t>(blocks.size()));
}

bool IsCommentFile(std::string_view path) {
    Bytes blocks;
    return FetchFile(path, kMostChartBytes, blocks) == 0 && HasCommentForm(blocks);
}

bool LeadsToComment(std::int32_t ref) {
    return ref > kHead;
}

std::int32_t HighestCommentRef(std::string_view chartPath) {
    return StoredRefs(chartPath).highest;
}

std::string SharerOfComments(std::string_view chartPath, std::string_view commentPath) {
    const std::string wanted = LowerAscii(BaseName(commentPath, false));
    const bool missing = IsMissing(commentPath);
    const std::int32_t blocks = missing ? INT32_MAX : CommentBlocks(commentPath);
    const fs::path own = NativePath(chartPath);
    const fs::path folder = own.parent_path();
    std::error_code failure;
    const std::vector<std::string> names = NamesIn(folder, failure);
    const bool listed = std::find(names.begin(), names.end(), own.filename()) != names.end();
    for (const std::string& name : names) {
        if (LowerAscii(CommentPath(name)) != wanted) continue;
        std::string other = (folder / name).string();
        const bool shares = !IsSavedToo(other, own, listed) &&
                            IsSameFile(CommentPath(other), commentPath) &&
                            MayLeadInto(other, blocks, !missing);
        if (shares) return other;
    }
    const bool unknown = failure && !missing;
    return unknown ? ((folder.empty() ? "." : folder) / "").string() : "";
}

std::string ReadComment(std::int16_t type, std::string_view path, std::int32_t ref) {
    if (type == chart_file::kFormat3) {
        const std::string* comment = ListedComment(path, ref);
        return comment == nullptr ? "" : *comment;
    }
    const std::string commentPath = CommentPath(path);
    if (!LeadsToComment(ref) || !HasCommentFile(type, path) || !MayHoldComments(commentPath))
        return "";
    const FileHandle file = OpenQuietly(commentPath);
    if (file == 0) {
        RaiseRunTimeError(error::kPathAccess);
        return "";
    }
    std::array<std::uint8_t, kBlockSize> bytes{};
    const auto block = [&](std::int32_t number) -> const std::uint8_t* {
        const std::int64_t before = static_cast<std::int64_t>(number - 1) * kBlockSize;
        return ReadWhatIsThere(file, before + 1, bytes) == kBlockSize ? bytes.data() : nullptr;
    };
    std::string text = ChainText(ref, BlockCount(FileLength(file)), block);
    CloseFile(file);
    return text;
}

bool WriteComment(std::int16_t type, std::string_view path, std::int32_t& ref,
                  std::string_view text) {
    if (type == chart_file::kFormat3) return WriteListedComment(path, ref, text);
    if (!HasCommentFile(type, path)) {
        RaiseRunTimeError(error::kBadFileName);
        return false;
    }
    const std::string commentPath = CommentPath(path);
    Bytes blocks;
    const bool made = IsMissing(commentPath);
    if (text.empty() && (made || !LeadsToComment(ref))) {
        ref = 0;  // there is nothing to give back
        return true;
    }
    if (!made && !ReadWholeFile(commentPath, kMostChartBytes, blocks)) return false;
    if (!HasCommentForm(blocks)) {
        RaiseRunTimeError(error::kPathAccess);  // it is damaged, or something else
        return false;
    }

    std::int32_t first = 0;
    if (text.empty()) {
        FreeComment(blocks, ref);
    } else {
        first = PutComment(blocks, text);
        if (first == 0) return false;
    }
    if (!ReplaceFileSilently(commentPath, blocks)) return false;
    ref = first;
    return true;
}

std::string WithLineEnds(std::string_view text) {
    std::string whole;
    for (std::size_t at = 0; at < text.size();) {
        const std::size_t pair = std::min(text.find("\x01\x01", at), text.size());
        whole += text.substr(at, pair - at);
        if (pair < text.size()) whole += kCrLf;
        at = pair + 2;
    }
    return whole;
}

std::string CleanEndMarks(std::string_view text) {
    const std::size_t last = text.find_last_not_of(std::string_view("\0\x1A", 2));
    return WithLineEnds(text.substr(0, last == std::string_view::npos ? 0 : last + 1));
}

std::string GetComment(const Bytes& blocks, std::int32_t ref) {
    return ChainText(ref, BlockCount(static_cast<std::int64_t>(blocks.size())),
                     [&](std::int32_t number) {
                         return &blocks[(static_cast<std::size_t>(number) - 1) * kBlockSize];
                     });
}

std::int32_t PutComment(Bytes& blocks, std::string_view text) {
    if (text.empty() || text.size() > kMostComment) {
        RaiseRunTimeError(error::kFileTooLarge);
        return 0;
    }
    blocks.resize(blocks.size() / kBlockSize * kBlockSize);  // a piece of a block is none
    if (blocks.empty()) AppendBlock(blocks);
    const std::int32_t count = BlockCount(static_cast<std::int64_t>(blocks.size()));

    // A damaged free list may lead out of the file or in a ring: what is taken once isn't free any
    // more, and the rest of such a list is given up.
    std::set<std::int32_t> taken;
    std::int32_t free = GetI32(Block(blocks, kHead));
    std::int32_t first = 0;
    std::int32_t previous = 0;
    for (std::size_t at = 0; at < text.size(); at += kTextWidth) {
        std::int32_t number = 0;
        if (IsCommentBlock(free, count) && taken.insert(free).second) {
            number = free;
            free = GetI32(Block(blocks, number));
        } else {
            number = AppendBlock(blocks);
            free = 0;
        }
        PutI32(Block(blocks, number), 0);
        PutText(Block(blocks, number) + kText, kTextWidth, text.substr(at, kTextWidth));
        if (previous == 0) first = number;
        if (previous != 0) PutI32(Block(blocks, previous), number);
        previous = number;
    }
    // Nor may what remains lead to a block that is in use now, or will be when the file has grown.
    PutI32(Block(blocks, kHead), IsSoundFreeList(blocks, free, count, taken) ? free : 0);
    return first;
}

void FreeComment(Bytes& blocks, std::int32_t ref) {
    const std::int32_t count = BlockCount(static_cast<std::int64_t>(blocks.size()));
    if (!IsCommentBlock(ref, count)) return;
    const std::int32_t kept = GetI32(Block(blocks, kHead));
    const std::vector<bool> isFree = FreeBlocks(blocks, count);
    if (isFree[static_cast<std::size_t>(ref)]) return;
    PutI32(Block(blocks, kHead), ref);
    std::int32_t number = ref;
    for (std::size_t walked = 1; true; ++walked) {
        std::uint8_t* p = Block(blocks, number);
        PutText(p + kText, kTextWidth, "");
        const std::int32_t next = GetI32(p);
        const bool last = !IsCommentBlock(next, count) || next == number ||
                          isFree[static_cast<std::size_t>(next)];
        if (last || walked == kMostBlocks) {
            PutI32(p, kept);
            return;
        }
        number = next;
    }
}

}  // namespace orvantis

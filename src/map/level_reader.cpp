#include "map/level_reader.h"

#include <algorithm>

namespace orvantis {

namespace {

// Large enough that a whole file takes few reads, small enough that one line of a zoomed view
// doesn't cost many others.
constexpr std::int64_t kReadAhead = 65536;

}  // namespace

bool OpenLevel(LevelReader& reader, std::string_view path) {
    reader = {};
    reader.file = FileOpener(path, open_mode::kBinary, 0, kFalse);
    if (reader.file < 1) return false;
    reader.length = FileLength(reader.file);
    return true;
}

void CloseLevel(LevelReader& reader) {
    CloseFile(reader.file);
    reader.file = 0;
}

bool LevelHolds(const LevelReader& reader, std::int64_t position, std::int64_t size) {
    return position >= 1 && size >= 0 && size <= reader.length &&
           position - 1 <= reader.length - size;
}

const std::uint8_t* LevelBytes(LevelReader& reader, std::int64_t position, std::int64_t size) {
    if (!LevelHolds(reader, position, size)) {
        RaiseRunTimeError(error::kPastEnd);
        return nullptr;
    }
    const std::int64_t windowEnd =
        reader.windowStart + static_cast<std::int64_t>(reader.window.size());
    if (position < reader.windowStart || position + size > windowEnd) {
        const std::int64_t wanted =
            std::min(std::max(size, kReadAhead), reader.length - (position - 1));
        reader.window.resize(static_cast<std::size_t>(wanted));
        reader.windowStart = position;
        if (!ReadBytes(reader.file, position, reader.window)) {
            reader.window.clear();
            return nullptr;
        }
    }
    return reader.window.data() + (position - reader.windowStart);
}

}  // namespace orvantis

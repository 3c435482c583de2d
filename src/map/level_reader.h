// Reading of level files. Lines lie in a level file in the order in which they are drawn, so a
// window read ahead serves most of them without a call to the system.
#pragma once

#include <cstdint>
#include <string_view>

#include "session/files.h"
#include "text/bytes.h"

namespace orvantis {

/// One open file and the part of it that is in memory.
struct LevelReader {
    FileHandle file = 0;           ///< 0: not open
    std::int64_t length = 0;       ///< bytes
    std::int64_t windowStart = 1;  ///< position of window's first byte, counted from 1
    Bytes window;
};

/// Opens a file; on failure the user has been told and false comes back.
bool OpenLevel(LevelReader& reader, std::string_view path);

void CloseLevel(LevelReader& reader);

/// True if `size` bytes lie at `position` (from 1).
bool LevelHolds(const LevelReader& reader, std::int64_t position, std::int64_t size);

/// The `size` bytes at `position` (from 1), valid until the next call. Null, with a run-time error,
/// if they aren't all there.
const std::uint8_t* LevelBytes(LevelReader& reader, std::int64_t position, std::int64_t size);

}  // namespace orvantis

// The comment store of chart files: chains of blocks in a file beside those of types 1 and 2, and
// text in the list of type 3.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace orvantis {

/// Path of the comment file of a chart file: the chart file's without its extension. That of a type
/// 3 file ("ch6", "KVchx") is the chart file itself.
std::string CommentPath(std::string_view chartPath);

/// Comment that starts at block `ref` of the comment file of types 1 and 2, or of chart `ref` of an
/// open type 3 file. `path` is the chart file's. "" for none. A chain ends at a block that points
/// to itself, beyond the file, or after 1150 blocks.
std::string ReadComment(std::int16_t type, std::string_view path, std::int32_t ref);

/// Stores a comment. Types 1 and 2: `ref` receives its first block; an empty text gives the blocks
/// at `ref` back to the free list and makes it 0. Type 3: the text goes into the open list, which
/// then counts as changed. False, with a run-time error, if it can't be written; `ref` is then as
/// it was.
bool WriteComment(std::int16_t type, std::string_view path, std::int32_t& ref,
                  std::string_view text);

}  // namespace orvantis

// The comment store of chart files: chains of blocks in a file beside those of types 1 and 2, and
// text in the list of type 3.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "text/bytes.h"

namespace orvantis {

/// Longest comment of types 1 and 2: 1150 blocks of 28 characters.
inline constexpr std::size_t kMostComment = std::size_t{1150} * 28;

/// True for the chart file types that keep their comments in a comment file: 1 and 2.
bool KeepsComments(std::int16_t type);

/// Path of the comment file of a chart file: the chart file's without its extension. That of a type
/// 3 file ("ch6", "KVchx") is the chart file itself, and so is that of a file without an extension
/// or without a name before it: such a file has no comment file. What a save left behind has what
/// it left behind of the comments: the backup "name.cht.bak" has "name.bak", and "name.cht~", which
/// was written aside, "name~"; "name.ch6.bak" has itself. But "name.bak", which nothing with an
/// extension left behind, is a chart file like others.
std::string CommentPath(std::string_view chartPath);

/// True if there is something of that path that may be a comment file: anything but a folder,
/// whether it can be opened or not.
bool MayHoldComments(std::string_view commentPath);

/// True if the file of that path can be read and has the form of a comment file: whole blocks, each
/// of which leads to none or to another block of the file than its head. A file of no bytes has it.
bool IsCommentFile(std::string_view path);

/// Number of the blocks of a comment file, on the disk (0 if it can't be read) or in memory.
std::int32_t CommentBlocks(std::string_view path);
std::int32_t CommentBlocks(const Bytes& blocks);

/// True if a chart's reference leads to a comment: blocks are counted from 1, and block 1 is the
/// head of the comment file.
bool LeadsToComment(std::int32_t ref);

/// Highest reference to a comment of the charts of a file of type 1 or 2; 0 if none has a comment,
/// INT32_MAX for a file of more than kMostChartBytes, which isn't read.
std::int32_t HighestCommentRef(std::string_view chartPath);

/// Another chart file than that one which keeps its comments in that comment file; "" none. It has
/// whole charts and references that all lie within the comment file, or, where there is none, lead
/// anywhere: it has lost its comments, and would find what comes there. A second name of the chart
/// file counts as one too, which will have the old charts still when the file is replaced; a link
/// to it doesn't. Where there is a comment file, so does what may be one: a file of whole charts
/// that is too large to be read, by its name any that can't be read, and in a folder that can't be
/// listed that folder. Both are native paths; the folder's alone has a "/" at its end.
std::string SharerOfComments(std::string_view chartPath, std::string_view commentPath);

/// Comment that starts at block `ref` of the comment file of types 1 and 2, or of chart `ref` of an
/// open type 3 file. `path` is the chart file's. "" for none, and, with a run-time error, for a
/// comment file that can't be opened; types -1 and 0 have none. A chain ends at a block that points
/// to itself, beyond the file, or to its head, or after 1150 blocks.
std::string ReadComment(std::int16_t type, std::string_view path, std::int32_t ref);

/// Stores a comment. Types 1 and 2: `ref` receives its first block; the chain that was at `ref`
/// stays (it may be another chart's): an empty text gives it back to the free list and makes `ref`
/// 0, and touches no file where `ref` leads to no comment. Where there is no comment file a new one
/// is made, also where a save that was broken off left the comments elsewhere (see
/// StandingComments), which aren't found there any more. Type 3: the text goes into chart `ref` of
/// the open list, which then counts as changed. False, with a run-time error, if it can't be
/// written, or what is there has not the form of a comment file; `ref` and the file are then as
/// they were.
bool WriteComment(std::int16_t type, std::string_view path, std::int32_t& ref,
                  std::string_view text);

/// A stored text whose line's ends, which were stored as two bytes 1, are such again.
std::string WithLineEnds(std::string_view text);

/// The same without the marks with which a text was closed: bytes 0 and 26 at its end.
std::string CleanEndMarks(std::string_view text);

// A comment file in memory.

/// The comment whose chain starts at block `ref`.
std::string GetComment(const Bytes& blocks, std::int32_t ref);

/// Stores a text that isn't empty and returns its first block. 0, with a run-time error, for one
/// longer than kMostComment. A free list that doesn't end within the file is given up.
std::int32_t PutComment(Bytes& blocks, std::string_view text);

/// Blanks the chain at block `ref`, up to a block that is free already, and gives it to the free
/// list.
void FreeComment(Bytes& blocks, std::int32_t ref);

}  // namespace orvantis

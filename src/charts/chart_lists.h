// Charts of a whole file in memory, and the saving of a file. A type 3 file is held here as long as
// it is open; the other types are read by number from the file.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "charts/KVCharts.h"
#include "surface/values.h"

namespace orvantis {

/// An event attached to a chart, with its note.
struct ChartAttachment {
    ChartEvent event;
    std::string note;  ///< "" none
};

/// A chart with all that belongs to it. In a list `chart.commentRef` is the chart's own number.
struct StoredChart {
    FileChart chart;
    std::vector<ChartAttachment> attachments;  ///< type 3 alone
    std::string comment;                       ///< "" none
};

/// A chart file in memory.
struct ChartList {
    std::string path;          ///< "" for an entry that isn't in use
    std::int16_t type = 3;     ///< type of the file, -1 to 3
    std::int16_t version = 3;  ///< version word of the head
    Flag changed = kFalse;     ///< to be saved when it is closed
    Flag inUse = kFalse;
    Flag damaged = kFalse;    ///< a type 3 file with a fault: the charts before it alone are here
    std::string description;  ///< up to 80 characters
    std::vector<StoredChart> charts;
};

/// True if a chart of the list has a comment.
bool HasComments(const ChartList& list);

/// The type 3 files that are open. A handle of such a file is its number here, counted from 1.
extern std::vector<ChartList> openChartLists;

/// Whether LoadChartList reads the comments of types 1 and 2 too. They cost a chain of blocks each.
extern Flag loadComments;

/// Number of the open type 3 file of that path, compared without regard to case (but two files
/// whose names differ by case alone are two); 0 none.
FileHandle FindOpenChartList(std::string_view path);

/// The list of a handle; null if it isn't one. It stays where it is until a file is opened or
/// closed.
ChartList* OpenChartListOf(FileHandle handle);

/// Reads a type 3 file into an entry of openChartLists and returns its number, 0, with a run-time
/// error, on failure. `count` receives the number of charts. An entry that is damaged takes no
/// changes.
FileHandle HoldChartList(std::string_view path, std::int32_t& count);

/// Saves the list if it was changed and clears its entry; openChartLists then ends at the highest
/// entry in use. A list that can't be saved stays, out of use.
void ReleaseChartList(FileHandle handle);

/// Most charts that a list takes: some 200 MB in memory. Files whose charts are read by number may
/// hold more.
inline constexpr std::int32_t kMostListedCharts = 250000;

/// How often a file is read that is replaced again and again while it is read, the last time with
/// the folder kept from other saves. What is read then is taken as it is: there are disks on which
/// a file that is open never seems to be that of its path.
inline constexpr int kMostReadings = 5;

/// True if both are paths of the same file, or names that differ by case alone and aren't those of
/// two files.
bool IsSameFile(std::string_view a, std::string_view b);

/// Reads a whole file of any type, as it stands on the disk, into a list. False, with a run-time
/// error, if a chart of it can't be read or if it is too large; `list` is then as it was. The type
/// told is left in currentChartFileType. A count of charts or attachments below 0 is none; bytes
/// behind the last chart are passed over. A list read while loadComments is off has no comments,
/// and a file saved from it neither.
///
/// Of a type 3 file that ends within a chart, or has a count that its length can't hold, the charts
/// before the fault are read if there are any: the list is then `damaged`, and there is the
/// run-time error "Input past end of file" although the result is true.
///
/// A file that another program replaces by a save meanwhile is read again, kMostReadings times in
/// all: its charts would be of one file and their comments of another.
bool LoadChartList(std::string_view path, ChartList& list, Flag forceLegacy);

/// Replaces the file of that path by the list's charts, as a file of that type; the former file
/// stays beside it as `path` + ".bak", and so does its comment file. Notes the path, the type and
/// the clean state in the list. On failure shows "Unable to save chart file: " with the reason,
/// leaves the existing file and its backup as they were and returns false. A damaged list isn't
/// saved over the file that it was read from, so that what couldn't be read of it stays there; its
/// reason is "Input past end of file".
///
/// What the type has no room for is lost: attachments outside type 3, comments in type 0, fields
/// as in ChartToFormat0 and ChartToFormat1; type -1 takes the description alone. Type 1 keeps its
/// comments as type 2 does, since its records have a reference to them. What can't be stored so
/// that it is read again is refused: a comment beyond kMostComment in types 1 and 2, a coordinate
/// that doesn't fit, and a path without an extension, but for type -1.
///
/// The comment file (see CommentPath) is the replaced chart file's own if that is of type 1 or 2
/// and the file has the form of one (see IsCommentFile), whether charts lead into it or not; but
/// where a chart leads to a block behind its end it counts as another's. It
/// then goes with the chart file to the backup, and a new one comes if a chart has a comment and
/// the type is 1 or 2. Any other file of that name is another's, also where another chart file
/// alone keeps its comments there: it is never moved, written over or deleted. Without comments it
/// stays where it is, and so do old ones whose backup would have a name in use here, or whose name
/// is a chart file's. Charts that have lost their comment file find no others in the backup: the
/// comments of the former one go with it. Nor does a first comment file come where another chart
/// file would find its comments that has lost its own, or whose save was broken off.
///
/// Refused, before anything is touched but that comments which a save of this file that was broken
/// off left elsewhere are put in their place (see StandingComments), are: whatever has an obstacle
/// (see FindCommentObstacle); and comments where of the path, the comment file's, their backups and
/// what is written aside two names are one ("x.bak", whose comments "x" have that backup), or where
/// the comment file's name or start is a chart file's ("x.cht.cht").
bool SaveChartFile(std::string_view path, std::int16_t type, ChartList& list);

/// Path where the comments of a chart file are read: that of its comment file (see CommentPath), ""
/// if it can't have one.
/// But where there is none, and a save of that chart file was broken off, charts with comments find
/// them where the save had put them last: that of the backup, or of what is written aside. So they
/// do in a copy of the folder whose files have no second names. Where it can't be told which of
/// these are theirs, since files were deleted, they find none. Nothing is moved: another save does
/// that first, so that it loses none of them.
std::string StandingComments(std::string_view chartPath);

/// Reads the comments of a chart file where they stand; again, kMostReadings times in all, where a
/// save moves them between the look and the reading. `place` receives where that was. Returns the
/// error number, 0 for none.
std::int16_t FetchStandingComments(std::string_view chartPath, Bytes& blocks, std::string& place);

/// A file that a save would have to move or to write over although it isn't the charts' own.
struct CommentObstacle {
    std::string path;   ///< "" none
    std::string chart;  ///< the chart file whose comment file it should be: the saved or its backup
    std::string sharer;  ///< another chart file that keeps its comments there; "" it isn't known
};

/// What a save of comments, or of what replaces a file with comments, has to leave alone: what has
/// the name of the comment file and is another's, or is another chart file's too; and the same of
/// the name of its backup, where the comment file has to go there. Also comments of another chart
/// file's that have the name of the backup, where charts go there that have lost their own; and a
/// name that is free, where another chart file that has lost its comments would find what comes.
CommentObstacle FindCommentObstacle(std::string_view path, std::int16_t type,
                                    const ChartList& list);

/// Shows "Unable to save chart file: " with the path and the words of an error number.
void ShowChartSaveError(std::string_view path, std::int16_t number);

}  // namespace orvantis

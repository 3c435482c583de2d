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
    std::string description;  ///< up to 80 characters
    std::vector<StoredChart> charts;
};

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
/// error, on failure. `count` receives the number of charts.
FileHandle HoldChartList(std::string_view path, std::int32_t& count);

/// Saves the list if it was changed and clears its entry; openChartLists then ends at the highest
/// entry in use. A list that can't be saved stays, out of use.
void ReleaseChartList(FileHandle handle);

/// Reads a whole file of any type, as it stands on the disk, into a list. False, with a run-time
/// error, if a chart of it can't be read, if a type 3 file ends within a chart or has a count that
/// its length can't hold, or if it is too large; `list` is then as it was. The type told is left in
/// currentChartFileType. A count of charts or attachments below 0 is none; bytes behind the last
/// chart are passed over. A list read while loadComments is off has no comments, and a file saved
/// from it neither.
bool LoadChartList(std::string_view path, ChartList& list, Flag forceLegacy);

/// Replaces the file of that path by the list's charts, as a file of that type; the former file
/// stays beside it as `path` + ".bak", and so does its comment file. Notes the path, the type and
/// the clean state in the list. On failure shows "Unable to save chart file: " with the reason,
/// leaves the existing file as it was and returns false.
///
/// What the type has no room for is lost: attachments outside type 3, comments in type 0, fields
/// as in ChartToFormat0 and ChartToFormat1; type -1 takes the description alone. What can't be
/// stored so that it is read again is refused: a comment beyond kMostComment in types 1 and 2, a
/// coordinate that doesn't fit, and a path without an extension, but for type -1.
bool SaveChartFile(std::string_view path, std::int16_t type, ChartList& list);

/// Shows "Unable to save chart file: " with the path and the words of an error number.
void ShowChartSaveError(std::string_view path, std::int16_t number);

}  // namespace orvantis

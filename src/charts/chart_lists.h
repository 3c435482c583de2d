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

/// Number of the open type 3 file of that path, compared without regard to case; 0 none.
FileHandle FindOpenChartList(std::string_view path);

/// Reads a whole file of any type into a list. False, with a run-time error, if the file can't be
/// read or a type 3 file ends within a chart or has a count that its length can't hold; `list` is
/// then as it was.
bool LoadChartList(std::string_view path, ChartList& list, Flag forceLegacy);

/// Replaces the file of that path by the list's charts, as a file of that type; the former file
/// stays beside it as `path` + ".bak", and so does its comment file. Notes the path, the type and
/// the clean state in the list. On failure shows "Unable to save chart file: " with the reason,
/// leaves the existing file as it was and returns false.
bool SaveChartFile(std::string_view path, std::int16_t type, ChartList& list);

}  // namespace orvantis

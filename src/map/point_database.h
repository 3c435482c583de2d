// The point database: the world's polylines in five files of falling detail, and the index over
// them. The plot reads points straight from the level files; everything it must know beforehand
// stands in LineIndex.
//
// level1.pnt is the master; level2.pnt to level5.pnt and levelx.ndx are derived from it and lie
// beside it in ProgramDir. A .pnt file is a sequence of a LineHeader and its LinePoint records.
#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "surface/values.h"
#include "text/bytes.h"

namespace orvantis {

/// Head of one line in a .pnt file, 32 bytes on disk.
///
/// | Offset | Size | Field                                      |
/// |--------|------|--------------------------------------------|
/// | 0      | 2    | code                                       |
/// | 2      | 2    | count                                      |
/// | 4      | 20   | name, blank padded                         |
/// | 24     | 8    | latMin, latMax, longMin, longMax, 2 each   |
struct LineHeader {
    std::int16_t code = 0;    ///< thousands: detail class; the file is sorted on it
    std::int16_t count = 0;   ///< points that follow in this file, 0 or more
    std::string name;         ///< description, up to 20 characters
    std::int16_t latMin = 0;  ///< extents of the whole line of level 1, arc-minutes,
    std::int16_t latMax = 0;  ///< north and east positive
    std::int16_t longMin = 0;
    std::int16_t longMax = 0;
};

/// One point of a line, 6 bytes on disk: level, lat, longitude, 2 bytes each.
struct LinePoint {
    std::int16_t level = 0;      ///< coarsest level at which the point is kept, 1 to 5
    std::int16_t lat = 0;        ///< arc-minutes, north positive, within 5400
    std::int16_t longitude = 0;  ///< arc-minutes, east positive, within 10800
};

inline constexpr std::int64_t kLineHeaderSize = 32;
inline constexpr std::int64_t kLinePointSize = 6;

/// Longest level1.pnt that is worked on, bytes: twenty times the world's coasts in whole
/// arc-minutes.
inline constexpr std::int64_t kLargestDatabase = 32 << 20;

/// Text of the status panel while the level files are made at start-up and on request.
inline constexpr std::string_view kFirstUseText = "Loading map database for first use...";

/// One line over all five files, 40 bytes on disk.
///
/// | Offset | Size | Field                                      |
/// |--------|------|--------------------------------------------|
/// | 0      | 2    | code                                       |
/// | 2      | 10   | pointCount of levels 1 to 5                |
/// | 12     | 20   | pointPos of levels 1 to 5                  |
/// | 32     | 8    | latMin, latMax, longMin, longMax, 2 each   |
struct LineIndexEntry {
    std::int16_t code = 0;
    std::array<std::int16_t, 6> pointCount{};  ///< 1 to 5; element 0 stands unused
    std::array<std::int32_t, 6> pointPos{};    ///< position of the first point in the file of that
                                               ///< level, counted from 1; element 0 stands unused
    std::int16_t latMin = 0;
    std::int16_t latMax = 0;
    std::int16_t longMin = 0;
    std::int16_t longMax = 0;
};

inline constexpr std::int64_t kLineIndexEntrySize = 40;

/// First and last entry of LineIndex of one detail class; 0 and 0: no lines.
struct ClassRow {
    std::int16_t first = 0;
    std::int16_t last = 0;
};

/// What is held of the database in memory.
struct PointDatabase {
    std::vector<LineIndexEntry> LineIndex;  ///< 1 to count; element 0 stands unused
    std::int16_t count = 0;                 ///< lines
    std::array<ClassRow, 8> ClassRange{};   ///< classes 1 to 7; element 0 stands unused
};

extern PointDatabase pointDatabase;

/// Records to and from their bytes on disk. Get reads, and Put writes, exactly the record's size.
LineHeader GetLineHeader(const std::uint8_t* p);
void PutLineHeader(std::uint8_t* p, const LineHeader& header);
LinePoint GetLinePoint(const std::uint8_t* p);
void PutLinePoint(std::uint8_t* p, const LinePoint& point);
LineIndexEntry GetLineIndexEntry(const std::uint8_t* p);
void PutLineIndexEntry(std::uint8_t* p, const LineIndexEntry& entry);

/// Appends one line to the bytes of a .pnt file: a header with this code and name, the extents and
/// the count of the points, and the points. At most 32767 points.
void AppendLine(Bytes& file, std::int16_t code, std::string_view name,
                const std::vector<LinePoint>& points);

/// Path of the level file 1 to 5 in ProgramDir.
std::string LevelPath(std::int16_t level);

/// Writes level2.pnt to level5.pnt beside `level1Path`; the name is cut by its last five
/// characters. Each file is replaced as a whole, and none before all of level 1 has been read. The
/// status panel shows `progressText` and the share of work done, 67 to 100 percent. Level 2 is
/// written last: LevelsNeedRebuild goes by its date, so a failure half way is known at the next
/// start. A header or a run of points that the file's end cuts short ends the reading there.
/// Returns the failed flag; the user has been told: of a file that can't be opened by "Open Error",
/// of a run-time failure ("File too large" above kLargestDatabase, "Overflow" above 32767 lines) by
/// "Database Error".
Flag GenerateLevels(std::string_view level1Path, std::string_view progressText);

/// True if a level file 2 to 5 is missing, or level 2 is older than level 1.
bool LevelsNeedRebuild();

/// Loads LineIndex and ClassRange from levelx.ndx if that is later than level5.pnt, and otherwise
/// builds them from the level files and rewrites levelx.ndx. An index that is read is taken as it
/// stands, and no level file is opened for it: who reads points checks against the file that they
/// are read from. Returns the failed flag: a code differs between levels, or a failure of which the
/// user has been told. That is "Open Error" for a level file that can't be opened, and "Database
/// Error" for a run-time failure of the rebuild, such as "Overflow" above 32767 lines or "Disk
/// full". An index that was built but couldn't be written serves all the same; after any other
/// failure there is none, `count` is 0, and levelx.ndx stays as it was.
///
/// The number of lines is that of level 5. Entries behind it, of lines that level 5 lacks, stay in
/// LineIndex until the index is read or built again.
Flag LoadLineIndex();

/// The same from the level files, whatever levelx.ndx holds and however late it is.
Flag RebuildLineIndex();

/// On the user's wish makes the level files and the index anew, forgets the pictures that views
/// have kept of the old ones, and plots the map in full. Asks first, and tells when it is done or
/// why it isn't. Done means that the level files are: a failure of the index has its own message
/// (see LoadLineIndex), and the word that the files have been regenerated still follows.
void RepairDatabase();

/// Fills ClassRange from LineIndex.
void BuildClassRanges();

/// Where lines lie, arc-minutes, north and east positive.
struct Extents {
    std::int16_t latMin = 0;
    std::int16_t latMax = 0;
    std::int16_t longMin = 0;
    std::int16_t longMax = 0;
};

/// True if a line of these extents may be seen in a view with these edges (arc-minutes). On a
/// globe (projection 2 and 3) the two corners' distance from the view's centre decides.
bool LineInView(const Extents& extents, std::int16_t south, std::int16_t north, std::int16_t west,
                std::int16_t east, std::int16_t projection);

/// Shows the codes of the lines of each class in a message.
void LineCodeSummary();

}  // namespace orvantis

// Consistency of a point database: what the plot, the fills and the merge rely on. The drawing
// itself tolerates almost anything; what breaks a rule here shows as a false line across the map,
// as sea that runs over land, or as a line that is missing.
#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "text/bytes.h"

namespace orvantis {

enum class Severity {
    Warning,    ///< harmless, but hardly meant
    Error,      ///< a rule is broken
    Unreadable  ///< the file isn't a point database; nothing else was checked
};

/// The rules. "Coasts" are the lines of classes 1 and 5.
enum class DatabaseRule {
    Structure,  ///< headers and runs of points fill the file, without a rest
    CodeOrder,  ///< codes ascend, none twice
    CodeClass,  ///< codes are of the classes 1, 2, 4, 5, 6 and 7
    ClassSize,  ///< a class has at most 1000 lines
    Points,     ///< a line has two points or more
    Position,   ///< latitudes within 5400, longitudes within 10800 arc-minutes
    Level,      ///< levels are 1 to 5
    Ends,       ///< the first and the last point of a line have level 5
    Extents,    ///< the header's extents are those of the points
    Length,     ///< a line is at most 10 degrees high and wide
    Leap,       ///< no segment leaps over more than 180 degrees of longitude
    DateLine,   ///< no edge runs along longitude 180
    Pole,       ///< no point lies on the South Pole
    Closed,     ///< at every level each coast begins where one ends; the date line joins its sides
    Direction,  ///< coasts have the land on their left
    Caspian,    ///< the Caspian is a coast of class 1 and no lake
    Lakes,      ///< lakes (class 6) run clockwise, but for the islands in them
    Junction,   ///< a coast's point at which a border (class 2) ends is of level 5
    LevelFile,  ///< level2.pnt to level5.pnt are what level1.pnt gives
    Index       ///< levelx.ndx is what the level files give
};

struct DatabaseFinding {
    Severity severity = Severity::Error;
    DatabaseRule rule = DatabaseRule::Structure;
    std::int16_t code = 0;  ///< the line; 0: the file as a whole
    std::string text;       ///< what is wrong, one sentence without the code
};

/// A database in memory. Files that don't exist are left out.
struct DatabaseFiles {
    Bytes level1;
    std::array<std::optional<Bytes>, 6> levels;  ///< 2 to 5; the others stand unused
    std::optional<Bytes> index;
};

/// Checks every rule on the bytes. No findings: the database is sound. At most 20 findings are
/// listed for each rule; one more then tells the number of the rest.
std::vector<DatabaseFinding> CheckDatabaseFiles(const DatabaseFiles& files);

/// Reads a level1.pnt and, if the file has that name, the derived files beside it, and checks
/// them. A file longer than kLargestDatabase isn't looked at. Changes nothing and shows nothing.
std::vector<DatabaseFinding> CheckDatabase(std::string_view path);

}  // namespace orvantis

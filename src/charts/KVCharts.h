// Chart records and chart files. Whatever generation of file a chart comes from, it becomes a
// FileChart; calculation takes the format 1 record that ChartToFormat1 makes of it.
#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "session/files.h"
#include "surface/values.h"
#include "text/bytes.h"

namespace orvantis {

/// A moment at a place, 115 bytes on disk (layout above its reader).
struct ChartEvent {
    std::string name;        ///< up to 50 characters
    std::string place;       ///< up to 20
    std::string country;     ///< up to 20
    float longitude = 0;     ///< degrees, WEST positive
    float latitude = 0;      ///< degrees, north positive
    std::int16_t year = 0;   ///< astronomical: 1 BC is 0
    std::uint8_t month = 0;  ///< 1 to 12
    std::uint8_t day = 0;
    std::uint8_t hour = 0;
    std::uint8_t minute = 0;
    std::uint8_t second = 0;
    float zoneHours = 0;   ///< hours, west positive: clock time plus zone is UT
    std::string zoneName;  ///< up to 5 characters
    std::uint8_t reservedEvent = 0;
};

/// A chart as files keep it, 292 bytes on disk (layout above its reader).
struct FileChart {
    std::uint8_t chartType = 1;     ///< 1 to 13
    std::uint8_t chartSubType = 1;  ///< 1 to 99
    ChartEvent event;               ///< the chart's moment
    std::uint8_t reserved1 = 0;
    std::string reserved2;  ///< 2 characters
    std::string reserved3;  ///< 30 characters
    std::uint8_t reserved4 = 0;
    std::uint8_t houseCode = 0;     ///< house system, 1 to 9; 0 in old files: none chosen
    std::uint8_t ayanamsaCode = 0;  ///< zodiac, 1 to 10; 0 none chosen
    float ayanamsaValue = 0;        ///< degrees
    std::uint8_t recordForm = 1;    ///< form code of the record
    std::int32_t commentRef = 0;    ///< first comment block, 0 none
    ChartEvent event2;              ///< second moment; its name is the second title
    std::int16_t extra1 = 0;
    std::uint8_t extra2 = 0;
    std::array<std::uint8_t, 2> extraPair{};
    std::uint8_t chartFlags = 0;  ///< bits 0 and 1: the two options held with the chart
    std::uint8_t extra3 = 0;
    double extra4 = 0;
};

/// The format 1 record, 110 bytes on disk (layout above its reader): what calculation takes.
struct Format1Record {
    std::uint8_t chartType = 1;
    std::uint8_t chartSubType = 1;
    std::uint8_t chartFlags = 0;
    std::uint8_t extraPair0 = 0;
    std::uint8_t extra3 = 0;
    std::string name;      ///< up to 30 characters
    std::string place;     ///< up to 20
    std::string country;   ///< up to 20
    float zoneHours = 0;   ///< hours, west positive
    std::string zoneName;  ///< up to 5 characters
    std::uint8_t day = 0;
    std::uint8_t month = 0;
    std::int16_t year = 0;
    std::uint8_t hour = 0;
    std::uint8_t minute = 0;
    std::uint8_t second = 0;
    std::uint8_t longWest = 1;  ///< 1 west, 0 east
    std::uint8_t longDegrees = 0;
    std::uint8_t longMinutes = 0;
    std::uint8_t longSeconds = 0;
    std::uint8_t latNorth = 1;  ///< 1 north, 0 south
    std::uint8_t latDegrees = 0;
    std::uint8_t latMinutes = 0;
    std::uint8_t latSeconds = 0;
    std::uint8_t houseCode = 0;
    std::uint8_t ayanamsaCode = 0;
    float ayanamsaValue = 0;
    std::uint8_t recordForm = 1;
    std::int32_t commentRef = 0;
};

/// Numbers of the chart file types.
namespace chart_file {
inline constexpr std::int16_t kBlocks = -1;  ///< no extension: opens as a file with no charts
inline constexpr std::int16_t kFormat0 = 0;  ///< "KVv1/2"
inline constexpr std::int16_t kFormat1 = 1;  ///< "KVv3/4"
inline constexpr std::int16_t kFormat2 = 2;  ///< "KVv5"
inline constexpr std::int16_t kFormat3 = 3;  ///< "KVv6"
}  // namespace chart_file

inline constexpr std::int64_t kChartEventSize = 115;
inline constexpr std::int64_t kFileChartSize = 292;
inline constexpr std::int64_t kFormat0Size = 115;
inline constexpr std::int64_t kFormat1Size = 110;

/// Records to and from their bytes on disk.
ChartEvent GetChartEvent(const std::uint8_t* p);
void PutChartEvent(std::uint8_t* p, const ChartEvent& event);
FileChart GetFileChart(const std::uint8_t* p);
void PutFileChart(std::uint8_t* p, const FileChart& chart);
Format1Record GetFormat1Record(const std::uint8_t* p);
void PutFormat1Record(std::uint8_t* p, const Format1Record& record);

/// Type of the chart file opened last.
extern std::int16_t currentChartFileType;

/// Longest chart file that is taken into memory, in bytes: some 400,000 charts of 292 bytes. A
/// longer one is "File too large".
inline constexpr std::int64_t kMostChartBytes = 128LL * 1024 * 1024;

/// True if the file name, without its folders, has an extension.
bool HasExtension(std::string_view path);

/// Tells the type of a chart file and opens it. `count` receives the number of charts, 0 or more.
/// Returns 0 if it can't be opened; one that isn't there gives no message. Sets
/// currentChartFileType, which every later call takes: it tells what the handle is. Of type 3 it
/// is the number of an entry of openChartLists, which the file is read into unless it is there
/// already; 0, with a run-time error, if none of its charts is whole. One with whole charts in
/// front of a fault opens with these, and with a run-time error too. Of the other types it is a
/// file's. `forceLegacy`: the file counts as one without an extension.
FileHandle OpenChartFile(std::string_view path, std::int32_t& count, Flag forceLegacy);

/// Opens a chart file as it stands on the disk: the handle is the file's for type 3 too, whose
/// `count` is 0. 0 if it can't be opened; one that isn't there gives no message.
FileHandle OpenStoredCharts(std::string_view path, std::int16_t& type, std::int32_t& count,
                            Flag forceLegacy);

/// Type of a chart file as it stands on the disk; kBlocks for one that can't be opened.
std::int16_t StoredChartType(std::string_view path);

/// Description in the head of an open chart file, trimmed; "" where the type has none, and, with a
/// run-time error, where the file is too short for one.
std::string ChartFileDescription(std::int16_t type, FileHandle file);

/// Reads chart `n`, counted from 1; chartType is forced into 1 to 13 and chartSubType into 1 to 99.
/// False, with a run-time error, if the file doesn't hold it; `record` is then as it was.
bool ReadChart(std::int16_t type, FileHandle file, std::int32_t n, FileChart& record);

/// Writes chart `n`; the one behind the last is appended. Types 0 to 2 are written in place, what
/// the record of the type has no room for is lost (see ChartToFormat0, ChartToFormat1). A type 3
/// chart keeps its attachments and comment, and the list then counts as changed. False, with a
/// run-time error, if it can't be written, `n` is further off, a coordinate doesn't fit the record,
/// a type 3 file is damaged, or the file has bytes behind its last whole chart where the next would
/// be written; nothing of the file is then changed.
bool WriteChart(std::int16_t type, FileHandle file, std::int32_t n, const FileChart& record);

/// Closes a chart file. A type 3 file that was changed is saved first; if that fails, which the
/// user is told, its charts stay in openChartLists and are found there when it is opened again.
void CloseChartFile(std::int16_t type, FileHandle file);

/// The nearest chart type, 1 to 13, and subtype, 1 to 99.
std::int16_t ClampChartType(std::int16_t type);
std::int16_t ClampChartSubType(std::int16_t subType);

/// The format 1 record of a chart: the name cut to 30 characters, coordinates split to seconds.
/// A coordinate of 256 degrees or more leaves the run-time error "Overflow".
void ChartToFormat1(const FileChart& fileChart, Format1Record& record);

/// A FileChart from a format 1 record; chartFlags, extraPair and extra3 aren't taken over.
void Format1ToChart(const Format1Record& record, FileChart& fileChart);

/// A FileChart from the 115 bytes of a format 0 record, whatever they are: of a number that a byte
/// doesn't hold the low byte is taken.
void Format0ToChart(const std::uint8_t* p, FileChart& fileChart);

/// The 115 bytes of a format 0 record, coordinates in the packed form. It has no room for the name
/// beyond 30 characters, ayanamsaValue, commentRef, event2, chartFlags and all that format 1 lacks
/// too; a recordForm of 0 becomes 1.
void ChartToFormat0(const FileChart& fileChart, std::uint8_t* p);

/// Length of a record of types 0 to 2 in bytes; 0 for types that aren't made of fixed slots.
std::int64_t ChartRecordLength(std::int16_t type);

/// The record of types 0 to 2 as it stands in the file, ChartRecordLength bytes. A coordinate that
/// doesn't fit leaves the run-time error "Overflow".
void PutChartRecord(std::int16_t type, const FileChart& fileChart, std::uint8_t* p);

}  // namespace orvantis

// Positions from tables: two series of files by century (asteroids, outer planets) and the elements
// of Pluto. The file of each that was used last stays open from one call to the next, and is closed
// when another one of its kind is needed. A file that the given folder lacks is looked for among
// those that the program comes with (session.ShippedDir); one that neither folder has is looked for
// again when either has changed.
//
// A file that isn't there, is too short or holds numbers that make no sense costs the answer and
// nothing else: the routines return false, without a word and without a run-time error.
#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <string_view>

namespace orvantis {

/// A series of ephemeris tables.
enum class TableSeries : std::uint8_t {
    Asteroids,    ///< "AS": Chiron, Vesta, Pallas, Juno, Ceres, Hygeia, Astraea; every 20 days
    OuterPlanets  ///< "OP": Jupiter to Pluto; every 40 days
};

/// What the series have in common with their builder.
namespace ephemeris_table {
inline constexpr double kFirstT = -1.0;  ///< T of the asteroid tables, both ends included
inline constexpr double kLastT = 1.5;
inline constexpr std::size_t kBodySize = 12;  ///< bytes of a body in a record

/// Bodies in a record, and days from one record to the next.
constexpr std::size_t Bodies(TableSeries series) {
    return series == TableSeries::Asteroids ? 7 : 5;
}
constexpr std::int32_t Step(TableSeries series) {
    return series == TableSeries::Asteroids ? 20 : 40;
}
}  // namespace ephemeris_table

/// A body of a table, heliocentric, for the mean equinox of date, geometric.
struct TablePosition {
    double longitude = 0;       ///< degrees, 0 to 360
    double latitude = 0;        ///< degrees
    double distance = 0;        ///< astronomical units
    double longitudeSpeed = 0;  ///< degrees a day
    double latitudeSpeed = 0;   ///< degrees a day
    double distanceSpeed = 0;   ///< astronomical units a day
};

/// Century of a file that serves T: 19 for T from 0 up to 1; 0 and above AD, below 0 BC. False if T
/// is no number or its century has more than two digits.
bool TableCentury(double t, std::int16_t& century);

/// Name of a series' file of a century, such as "AS19AD.EPH".
std::string TableFileName(TableSeries series, std::int16_t century);

/// Day of the first record of a century's file, counted from JD 2415020.0: the last day of the
/// series' grid that isn't after the century's start, less one step. The grid: JD 2415020.0 and
/// whole steps to both sides.
std::int32_t FirstTableDay(TableSeries series, std::int16_t century);

/// The bodies of a series at T (Julian centuries from JD 2415020.0, ephemeris time), in the order
/// of the series; element 0 stands unused, and OuterPlanets leaves the last two. False, with
/// `bodies` as it was, if the file doesn't hold the three records around T, or for Asteroids if T
/// lies outside -1.0 to 1.5. Positions go over from record to record and from file to file without
/// a leap.
bool ReadTables(TableSeries series, std::string_view dataPath, double t,
                std::array<TablePosition, 8>& bodies);

/// The elements of an orbit, degrees and astronomical units.
struct OrbitElements {
    double meanAnomaly = 0;
    double meanLongitude = 0;  ///< longitude of perihelion plus mean anomaly
    double node = 0;
    double inclination = 0;
    double eccentricity = 0;  ///< 0 up to 1
    double semiAxis = 0;      ///< above 0
};

/// Place in an orbit; the speeds aren't touched. False if it is no ellipse, or its eccentricity so
/// near 1 that the anomaly isn't found in a thousand steps; `place` is then as it was.
bool KeplerStep(const OrbitElements& elements, TablePosition& place);

/// Name of the elements file that serves a Julian day, such as "pluelm21.eph"; "" if there is no
/// such name.
std::string PlutoFileName(double jd);

/// Pluto, heliocentric, from the elements file of its time, at a Julian day of ephemeris time. Only
/// the place: the speeds are 0. False, with `pluto` as it was, if there is none.
bool PlutoFromElements(std::string_view dataPath, double jd, TablePosition& pluto);

/// Closes the files that are kept open.
void CloseEphemerisTables();

}  // namespace orvantis

// Positions from tables: two series of files by century (asteroids, outer planets) and the elements
// of Pluto. The file used last stays open from one call to the next.
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

/// A body of a table, heliocentric, for the mean equinox of date, geometric.
struct TablePosition {
    double longitude = 0;       ///< degrees, 0 to 360
    double latitude = 0;        ///< degrees
    double distance = 0;        ///< astronomical units
    double longitudeSpeed = 0;  ///< degrees a day
    double latitudeSpeed = 0;   ///< degrees a day
    double distanceSpeed = 0;   ///< astronomical units a day
};

/// The bodies of a series at T (Julian centuries from JD 2415020.0, ephemeris time), in the order
/// of the series; element 0 stands unused, and OuterPlanets leaves the last two. False if the file
/// isn't there, is too short, or T lies outside the tables; nothing is told.
bool ReadTables(TableSeries series, std::string_view dataPath, double t,
                std::array<TablePosition, 8>& bodies);

/// Name of the file that holds T, such as "AS19AD.EPH".
std::string TableFileName(TableSeries series, double t);

/// Pluto, heliocentric, from the elements file of its time. False if there is none; nothing is
/// told.
bool PlutoFromElements(std::string_view dataPath, double jd, TablePosition& pluto);

/// Closes the file that is kept open.
void CloseEphemerisTables();

}  // namespace orvantis

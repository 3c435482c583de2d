// The session from its start to a ready map: paths, shipped data, preferences, the database, and
// the opening of a chart. Both front ends, the window and the command line, go through here.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "charts/KVCharts.h"
#include "surface/drawing_surface.h"
#include "surface/shell.h"
#include "surface/values.h"
#include "text/run_time_error.h"

namespace orvantis {

/// Where the program finds its files; native paths of folders, without a trailing separator.
struct StartPaths {
    std::string programDir;   ///< writable: the database, and under it the user's files
    std::string shippedData;  ///< read only: what the program comes with; "" none
    std::string ephemeris;    ///< Swiss Ephemeris files
};

/// The paths of this system: the user's data folder (XDG_DATA_HOME), the data shipped beside the
/// executable, the ephemeris files of the system's packages.
StartPaths SystemPaths();

/// Sets the session's paths and fills the connection points between the rooms, reads the default
/// point selection, point colours and settings, and switches the ephemeris on. On the first start
/// the shipped files are copied to where the program keeps its own; files that are there are left
/// alone. Draws nothing.
void StartSession(const StartPaths& paths, Shell& shell);

/// Makes the point database ready: the level files if they are missing or old, and the index.
/// Returns the failed flag; the user has been told.
Flag LoadDatabase();

/// Result of opening a chart file or a chart in it.
enum class ChartStatus {
    Ok,
    NoFile,        ///< the file isn't there, or can't be opened (then the user has been told)
    NotSupported,  ///< a chart file of a kind that isn't read
    NoSuchChart,   ///< the file holds no chart of that number
    BadRecord,     ///< the chart's record can't be read
    Failed,        ///< the calculation failed; the user has been told
};

/// Reads chart `n` (from 1) of a chart file. After BadRecord `reason` tells why.
ChartStatus ReadChartFromFile(std::string_view path, std::int32_t n, FileChart& fileChart,
                              RunTimeError& reason);

/// Reads chart `n` of a chart file as above, calculates it into slot 1 and puts it on display.
ChartStatus OpenChart(std::string_view path, std::int32_t n, RunTimeError& reason);

/// Ends what StartSession began: files and the ephemeris are closed.
void EndSession();

/// The chart on display in words: name, date, time, zone and place. "" without a chart.
std::string ChartDescription();

/// Title of the main window: "Orvantis", or "Orvantis: " and what is on display.
std::string Caption();

}  // namespace orvantis

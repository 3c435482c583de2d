// The session from its start to the first picture, and out again: paths, shipped data, preferences,
// the database, the map of the last run, the opening of a chart. Both front ends, the window and
// the command line, go through here.
#pragma once

#include <cstdint>
#include <span>
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
    std::string ephemeris;    ///< Swiss Ephemeris files, where no INI key says otherwise
    std::string config;       ///< writable: the INI files
};

/// The paths of this system: the user's data folder (XDG_DATA_HOME) and configuration folder
/// (XDG_CONFIG_HOME), the data shipped beside the executable, the ephemeris files of the system's
/// packages.
StartPaths SystemPaths();

/// The start without a window: sets the session's paths and fills the connection points between the
/// rooms, reads INI keys, point selection, point colours and settings, and switches the ephemeris
/// on. The shipped database is copied to where the program keeps its own if it isn't there, the
/// other shipped files only when the folder for them is made: files that are there are left alone,
/// and those that were deleted stay away. Draws nothing.
void StartSession(const StartPaths& paths, Shell& shell);

/// Makes the point database ready: the level files if they are missing or old, and the index.
/// Returns the failed flag; the user has been told.
Flag LoadDatabase();

/// Result of opening a chart file or a chart in it.
enum class ChartStatus {
    Ok,
    NoFile,        ///< the file isn't there, or can't be opened (then the user has been told)
    NotSupported,  ///< a chart file that is there and can't be opened
    NoSuchChart,   ///< the file holds no chart of that number
    BadRecord,     ///< the chart's record, or the list of a type 3 file, can't be read
    Failed,        ///< the calculation failed; the user has been told
};

/// Reads chart `n` (from 1) of a chart file. After BadRecord `reason` tells why.
ChartStatus ReadChartFromFile(std::string_view path, std::int32_t n, FileChart& fileChart,
                              RunTimeError& reason);

/// Reads chart `n` of a chart file as above, calculates it into slot 1 and puts it on display. What
/// can't be read or calculated leaves the chart that was there as it is.
ChartStatus OpenChart(std::string_view path, std::int32_t n, RunTimeError& reason);

/// What the program was called with.
struct SessionCall {
    std::string
        commandLine;         ///< the text after the program's name, options such as --open left out
    std::string chartPath;   ///< chart file to show; "" none
    std::int32_t chart = 1;  ///< number of the chart in it, from 1
};

enum class SessionResult {
    Ready,   ///< the main window is up with its first picture
    Ended,   ///< another copy runs, or there is no level1.pnt: the process has to end; the user
             ///< has been told
    NoChart  ///< the chart of the call can't be shown; see OpenOutcome
};

/// How the chart of the call was opened.
struct OpenOutcome {
    ChartStatus status = ChartStatus::Ok;
    RunTimeError reason;  ///< after BadRecord
};

/// The whole start with a main window, step by step: refusal of a second copy, paths, sibling,
/// start screen, INI keys, preferences, command line, database, the map of the last run or a new
/// one, the first picture. `session.picture` is the main picture. session.StartupDone is set last.
/// A second copy, a missing database and a chart of the call that can't be shown end the start.
SessionResult RunSession(const StartPaths& paths, const SessionCall& call, Shell& shell,
                         OpenOutcome& outcome);

/// The whole end, when the main window is asked to close. `cancel` is set if the user chooses to
/// stay; then nothing has been written. Otherwise the INI keys, the point selection and, where
/// views keep their pictures, the map and its picture have been written; failures are passed over.
void ExitSession(Flag& cancel);

/// Words of a text, split at any of the separators; runs of separators make no empty word, and at
/// most `words.size()` words are stored. `count` is their number, at least 1: an empty text is one
/// empty word.
void SplitWords(std::string_view text, std::span<std::string> words, std::int16_t& count,
                std::string_view separators);

/// Handle of the first top-level window whose title contains the text in any case; 0 none.
std::int64_t FindSessionWindow(std::string_view text);

/// Connection points of the session's start and end; each may be empty.
extern void (*switchAstroClock)(Flag on, Flag redraw);  ///< does the first plot
extern void (*saveCurrentChart)();                      ///< the command that saves the chart
extern bool (*saveStoredImage)(std::string_view path, const Image& image);  ///< as a bitmap
extern bool (*loadStoredImage)(std::string_view path, Image& image);

/// Ends what StartSession began: files and the ephemeris are closed.
void EndSession();

/// The chart on display in words: name, date, time, zone and place. "" without a chart.
std::string ChartDescription();

/// Title of the main window: "Orvantis", or "Orvantis: " and what is on display.
std::string Caption();

}  // namespace orvantis

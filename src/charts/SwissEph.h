// The route to positions through Swiss Ephemeris.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "surface/values.h"

namespace orvantis {

struct SwissState {
    Flag enabled = kFalse;           ///< the route is in use
    Flag messages = kTrue;           ///< a failure is told to the user; once in a run
    Flag hygeiaInstalled = kFalse;   ///< the folder has the file of minor planet 10
    Flag astraeaInstalled = kFalse;  ///< the folder has the file of minor planet 5
    Flag asteroidsMissing = kFalse;  ///< the folder has files, but not that of points 13 to 17
    Flag otherElements = kFalse;     ///< the folder's elements of points 27 to 35 are other ones
    std::string path;                ///< the folder, as it was handed over
};

extern SwissState swissState;

/// Hands the folder of the ephemeris files (a native path, no separator at its end) to the library,
/// switches the route on and calculates one trial chart, so that missing files are told at once.
/// `dataPath` is the folder of the ephemeris tables, for CalcPlanets.
void OpenSwissEphemeris(std::string_view path, std::string_view dataPath);

/// Switches the route off. The folder stays the one where the library looks for files: the standard
/// route takes places from them too.
void CloseSwissEphemeris();

/// CalcPlanets by this route; arguments as there, `first` and `last` being numbers of points. A
/// body that the library can't give has Lon -1; if failures are told (once in a run, in a box), the
/// route is then switched off and the number of that point returned: those after it aren't
/// calculated here. 0: all are done.
///
/// The library's files give the places of DE431 to a thousandth of a second of arc for the years
/// that are installed (-5400 to 5400 at most; 1800 to 2400 for the basic ones), its theory without
/// files those of the rest from -3000 to 3000. Chiron is given from 675 to 4650, Ceres, Pallas,
/// Juno and Vesta as far as the files reach. Minor planets whose file isn't installed come from the
/// asteroid tables, in all years. The points 27 to 35 follow the program's own orbits unless the
/// folder has a file of elements (seorbel.txt) that gives them others.
std::int16_t CalcPlanetsSwiss(std::int16_t slot, std::int16_t first, std::int16_t last, double t,
                              double offset, std::int16_t frame, std::string_view dataPath,
                              Flag trueNode, Flag weston);

}  // namespace orvantis

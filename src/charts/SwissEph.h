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
};

extern SwissState swissState;

/// Hands the folder of the ephemeris files (a native path, no separator at its end) to the library,
/// switches the route on and calculates one trial chart, so that missing files are told at once.
void OpenSwissEphemeris(std::string_view path);

/// Switches the route off and releases the library's files.
void CloseSwissEphemeris();

/// CalcPlanets by this route; arguments as there. A body that the library can't give has Lon -1;
/// the first such failure of a run is told in a box.
void CalcPlanetsSwiss(std::int16_t slot, std::int16_t first, std::int16_t last, double t,
                      double offset, std::int16_t frame, Flag trueNode, Flag weston);

}  // namespace orvantis

// The route to positions through Swiss Ephemeris.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "surface/values.h"

namespace orvantis {

struct SwissState {
    Flag enabled = kFalse;  ///< the route is in use
    Flag messages = kTrue;  ///< a failure is told to the user, once
};

extern SwissState swissState;

/// Hands the folder of the ephemeris files to the library and switches the route on.
void OpenSwissEphemeris(std::string_view path);

/// Switches the route off and releases the library's files.
void CloseSwissEphemeris();

}  // namespace orvantis

// The colours of the map: floods bounded by the drawn vectors, started from seeds that are kept
// with the map document as latitude and longitude.
#pragma once

#include <cstdint>

#include "surface/values.h"

namespace orvantis {

/// Floods the region at a pixel of mapView.surface up to the outline colour. During a plot that is
/// the plot's surface; a caller outside one sets it first. Result of the operation: nonzero if it
/// painted.
std::int16_t FloodAt(std::int16_t x, std::int16_t y, Colour colour);

/// Most floods of one replay. A map that colours every country and island of the world one by one
/// has fewer; a file with more isn't meant to be looked at, and a flood takes milliseconds.
inline constexpr int kMostFloods = 2000;

/// Paints every fill of the current map that is in view, in the order of the list. Ends quietly at
/// the end of the list, if fillCount goes beyond it, and after kMostFloods floods. Left out are: a
/// fill that a later one in the same pixel paints over, unless it has the outline's own colour and
/// so bounds the later one; a seed that is no place on Earth; and on a globe a seed of the sea next
/// to an outline (1 pixel, 2 beyond 60 degrees from the centre), where rounding may have put it on
/// the wrong shore.
void ReplayFills();

/// Takes all fills of the current map, or the last one, off its list; a full plot is due then. The
/// records stay in memory, since views gone back to may still count them.
void RemoveAllFills();
void RemoveLastFill();

}  // namespace orvantis

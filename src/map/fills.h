// The colours of the map: floods bounded by the drawn vectors, started from seeds that are kept
// with the map document as latitude and longitude.
#pragma once

#include <cstdint>

#include "surface/values.h"

namespace orvantis {

/// Floods the region at a pixel of the plot's surface up to the outline colour. Result of the
/// operation: nonzero if it painted.
std::int16_t FloodAt(std::int16_t x, std::int16_t y, Colour colour);

/// Paints every fill of the current map that is in view, in the order of the list.
void ReplayFills();

}  // namespace orvantis

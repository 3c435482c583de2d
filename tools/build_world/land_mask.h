// A raster of land and water made from the whole coasts of the sources, before any thinning: what
// floods of the drawn map are measured against.
#pragma once

#include <vector>

#include "coasts.h"
#include "text/bytes.h"

namespace orvantis::world {

/// The bytes of a mask file of cells of 2 arc-minutes, rows from the north, columns from 180 west.
///
/// | Offset | Size | Field                                                              |
/// |--------|------|--------------------------------------------------------------------|
/// | 0      | 4    | columns                                                            |
/// | 4      | 4    | rows                                                               |
/// |        |      | for each row: count of runs, then their lengths; the first run     |
/// |        |      | is water, and water and land take turns. Numbers of 7 bits a byte, |
/// |        |      | lowest first, with 128 added to all but the last byte              |
Bytes MakeLandMask(const std::vector<LandMass>& lands);

}  // namespace orvantis::world

// What a picture of the map shows as land and as sea, measured against the mask of the source.
#pragma once

#include <string>

#include "support/land_mask.h"
#include "surface/values.h"

namespace orvantis {

/// Pixels of the map. Land and water "for sure" are farther from each other's nearest cell than
/// the drawing may be off: the thinning of the map's precision, a cell of the mask and a pixel and
/// a half. The mask is to have the land of the map's database alone.
struct SeaFigures {
    long map = 0;            ///< all pixels of the map, without those at the very limb of a globe
    long filled = 0;         ///< in the colour of the sea
    long filledLand = 0;     ///< of these land by the mask: thinning, or a leak
    long sureLeak = 0;       ///< of these land for sure
    long worstLeak = 0;      ///< size of the largest filled region of which most is land for sure
    long worstSureLeak = 0;  ///< most land for sure in one filled region
    long bareSea = 0;        ///< water by the mask in the colour of the land
    long worstBare = 0;      ///< most water for sure in one region of the land's colour
    double leakLat = 0;      ///< a place of the worst sure leak
    double leakLong = 0;
    double bareLat = 0;  ///< a place of the worst region left bare
    double bareLong = 0;
};

/// Measures a picture of the current map, as the last plot drew it.
SeaFigures MeasureSea(const Image& image, const LandMask& mask);

}  // namespace orvantis

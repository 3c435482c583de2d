// The flood fill of a picture.
#pragma once

#include <cstdint>

#include "raster/clip.h"
#include "surface/values.h"

namespace orvantis {

/// Paints the region around (x, y), four-connected, that is bounded by pixels of the colour
/// `border` and by the clip. `fill` and `border` are 0xFFRRGGBB, as are all pixels of the picture.
/// Pixels of the fill colour are no border. Returns false, and paints nothing, if (x, y) is a
/// border pixel or lies outside the clip.
bool FloodImage(Image& image, const Clip& clip, int x, int y, std::uint32_t fill,
                std::uint32_t border);

}  // namespace orvantis

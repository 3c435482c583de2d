// The flood fill of a picture.
#pragma once

#include <cstdint>
#include <vector>

#include "raster/clip.h"
#include "surface/values.h"

namespace orvantis {

/// Pixels `left` up to but not including `right` of the row y.
struct PixelRun {
    int y = 0;
    int left = 0;
    int right = 0;
};

/// Paints the region around (x, y), four-connected, that is bounded by pixels of the colour
/// `border` and by the clip. `fill` and `border` are 0xFFRRGGBB, as are all pixels of the picture.
/// Pixels of the fill colour are no border. Returns false, and paints nothing, if (x, y) is a
/// border pixel or lies outside the clip. `painted`, unless null, gets what was painted, run by
/// run.
bool FloodImage(Image& image, const Clip& clip, int x, int y, std::uint32_t fill,
                std::uint32_t border, std::vector<PixelRun>* painted = nullptr);

}  // namespace orvantis

// Smooth lines two or three pixels wide, drawn straight onto the rows of a picture.
#pragma once

#include <cstdint>
#include <vector>

#include "raster/clip.h"
#include "surface/drawing_surface.h"

namespace orvantis {

/// Widest line that DrawWideLine draws.
inline constexpr int kWidestSmoothLine = 3;

/// Draws a solid line through the points, `width` pixels wide (2 to kWidestSmoothLine), round at
/// its ends and where it turns about, without a gap where it turns steep or flat. Each pixel has
/// the share of the ink by which the line covers it, measured across the line's longer axis: off by
/// no more than an eighth along a straight piece. The clip lies within the image.
void DrawWideLine(Image& image, const Clip& clip, const std::vector<SurfacePoint>& points,
                  int width, std::uint32_t ink);

/// The disc in which such a line ends.
void DrawRoundEnd(Image& image, const Clip& clip, SurfacePoint centre, int width,
                  std::uint32_t ink);

}  // namespace orvantis

// Parts of ellipses with smooth edges, drawn straight onto the rows of a picture.
#pragma once

#include <cstdint>

#include "raster/clip.h"
#include "surface/drawing_surface.h"

namespace orvantis {

/// Part of an ellipse, in pixels from centre to centre. Angles in degrees, counted anticlockwise
/// from the right, of the circle that the ellipse is a stretched picture of; a negative span goes
/// clockwise, and one of 360 or more all around.
struct SmoothArc {
    double centreX = 0;
    double centreY = 0;
    double radiusX = 0;  ///< 1 or more, both: a narrower ellipse may lose the pixels of its tips
    double radiusY = 0;
    double startDegrees = 0;
    double spanDegrees = 0;
};

/// Draws the arc 1 to kWidestSmoothLine pixels wide; dashed only if 1. Each pixel has the share of
/// the ink that a smooth line through it has: at a width of 1 the ink of a step along the longer
/// axis is shared by the two pixels that the arc runs between, and a wider one covers what lies
/// half its width aside and ends round. Dashes are counted in steps, as a line's are. The clip lies
/// within the image.
void DrawSmoothArc(Image& image, const Clip& clip, const SmoothArc& arc, int width, LineDash dash,
                   std::uint32_t ink);

}  // namespace orvantis

// A small box with a text in it, composed of the surface's own operations.
#pragma once

#include <string_view>

#include "surface/drawing_surface.h"

namespace orvantis {

/// Shapes by their number in files.
enum class LabelShape : std::int16_t { Rectangle = 0, RoundRectangle = 1, Ellipse = 2 };

/// Brightness of a colour, 0 to 255 (luma of ITU-R BT.601).
int Brightness(Colour colour);

/// Size of the box that DrawLabel puts around a text in the selected font, its outline included. It
/// begins (width - 1) / 2 pixels to the left of the label's position and (height - 1) / 2 above.
SurfaceSize LabelBox(DrawingSurface& surface, std::string_view text, LabelShape shape);

/// Draws the text in the selected font, centred at (x, y) in a box of the colour; text and outline
/// are black or white, whichever stands out.
void DrawLabel(DrawingSurface& surface, int x, int y, std::string_view text, LabelShape shape,
               Colour colour);

}  // namespace orvantis

#include "surface/label.h"

#include <algorithm>

namespace orvantis {

namespace {

// Corners cut off by a third of the box's height.
void RoundBox(DrawingSurface& surface, int left, int top, int right, int bottom,
              const Brush& brush) {
    const int cut = std::max(1, (bottom - top) / 3);
    const int lastX = right - 1;
    const int lastY = bottom - 1;
    surface.Polygon({{left + cut, top},
                     {lastX - cut, top},
                     {lastX, top + cut},
                     {lastX, lastY - cut},
                     {lastX - cut, lastY},
                     {left + cut, lastY},
                     {left, lastY - cut},
                     {left, top + cut}},
                    brush, true);
}

}  // namespace

int Brightness(Colour colour) {
    const int red = colour & 0xFF;
    const int green = colour >> 8 & 0xFF;
    const int blue = colour >> 16 & 0xFF;
    return (299 * red + 587 * green + 114 * blue) / 1000;
}

void DrawLabel(DrawingSurface& surface, int x, int y, std::string_view text, LabelShape shape,
               Colour colour) {
    const SurfaceSize size = surface.TextExtent(text);
    // An ellipse needs more room around a text than a box does.
    const int marginX = shape == LabelShape::Ellipse ? size.width / 4 + 3 : 3;
    const int marginY = shape == LabelShape::Ellipse ? 2 : 1;
    const int left = x - size.width / 2 - marginX;
    const int right = left + size.width + 2 * marginX + 1;
    const int top = y - size.height / 2 - marginY;
    const int bottom = top + size.height + 2 * marginY + 1;

    Pen pen;
    pen.colour = Brightness(colour) > 127 ? 0x000000 : 0xFFFFFF;
    surface.SetPen(pen);
    const Brush brush{FillKind::Solid, PlainColour(colour)};
    switch (shape) {
        case LabelShape::Rectangle:
            surface.Rectangle(left, top, right, bottom, brush);
            break;
        case LabelShape::RoundRectangle:
            RoundBox(surface, left, top, right, bottom, brush);
            break;
        case LabelShape::Ellipse:
            surface.Ellipse(left, top, right, bottom, brush);
            break;
    }
    surface.TextOut(x, top + marginY, text, TextAlign::Centre);
}

}  // namespace orvantis

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

// Room between a text and its box; an ellipse needs more than a box with corners does.
int MarginX(const SurfaceSize& text, LabelShape shape) {
    return shape == LabelShape::Ellipse ? text.width / 4 + 3 : 3;
}

int MarginY(LabelShape shape) {
    return shape == LabelShape::Ellipse ? 2 : 1;
}

}  // namespace

int Brightness(Colour colour) {
    const int red = colour & 0xFF;
    const int green = colour >> 8 & 0xFF;
    const int blue = colour >> 16 & 0xFF;
    return (299 * red + 587 * green + 114 * blue) / 1000;
}

SurfaceSize LabelBox(DrawingSurface& surface, std::string_view text, LabelShape shape) {
    const SurfaceSize size = surface.TextExtent(text);
    return {size.width + 2 * MarginX(size, shape) + 1, size.height + 2 * MarginY(shape) + 1};
}

void DrawLabel(DrawingSurface& surface, int x, int y, std::string_view text, LabelShape shape,
               Colour colour) {
    const SurfaceSize box = LabelBox(surface, text, shape);
    const int left = x - (box.width - 1) / 2;
    const int right = left + box.width;
    const int top = y - (box.height - 1) / 2;
    const int bottom = top + box.height;

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
    surface.TextOut(x, top + MarginY(shape), text, TextAlign::Centre);
}

}  // namespace orvantis

// What may be drawn on: a rectangle, or the ellipse in one, within the picture. Both are answered
// row by row, so that every operation of the surface cuts its rows and pixels by the same edge.
#pragma once

#include <vector>

namespace orvantis {

/// Pixels `left` up to but not including `right` of one row; empty if right isn't above left.
struct RowSpan {
    int left = 0;
    int right = 0;
};

/// A box of pixels: left and top inclusive, right and bottom exclusive.
struct PixelBox {
    int left = 0;
    int top = 0;
    int right = 0;
    int bottom = 0;
};

/// Pixels of one row whose centres lie in the ellipse that fills `box`. Empty outside its rows.
RowSpan EllipseRow(const PixelBox& box, int y);

/// The common part of two boxes; right or bottom may then lie before left or top.
PixelBox CommonBox(const PixelBox& a, const PixelBox& b);

struct Clip {
    PixelBox box;               ///< lies within the picture
    std::vector<RowSpan> rows;  ///< of an ellipse, one for each row of the box, within it; empty
                                ///< for a rectangle
};

/// Pixels of a row that may be drawn on.
inline RowSpan ClipRow(const Clip& clip, int y) {
    if (y < clip.box.top || y >= clip.box.bottom) return {};
    if (clip.rows.empty()) return {clip.box.left, clip.box.right};
    return clip.rows[static_cast<std::size_t>(y - clip.box.top)];
}

inline bool InClip(const Clip& clip, int x, int y) {
    const RowSpan row = ClipRow(clip, y);
    return x >= row.left && x < row.right;
}

/// True if the pixel and the eight around it may be drawn on. Both clips are convex, and a line's
/// pixels lie within half a pixel of its path: between two such pixels all of it may be drawn.
inline bool DeepInClip(const Clip& clip, int x, int y) {
    for (int row = y - 1; row <= y + 1; ++row) {
        const RowSpan span = ClipRow(clip, row);
        if (x <= span.left || x + 1 >= span.right) return false;
    }
    return true;
}

/// A clip of the box, or of the ellipse in it, on a picture of the given size.
Clip RectangleClip(const PixelBox& box, int width, int height);
Clip EllipseClip(const PixelBox& box, int width, int height);

}  // namespace orvantis

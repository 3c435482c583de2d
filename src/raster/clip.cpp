#include "raster/clip.h"

#include <algorithm>
#include <cmath>

namespace orvantis {

RowSpan EllipseRow(const PixelBox& box, int y) {
    if (y < box.top || y >= box.bottom || box.right <= box.left) return {};

    // A pixel's centre lies half a pixel from its number; both axes are measured from the middle
    // of the box, which falls on a pixel's edge or centre by the box's size.
    const double halfWidth = (static_cast<double>(box.right) - box.left) / 2;
    const double halfHeight = (static_cast<double>(box.bottom) - box.top) / 2;
    const double centreX = box.left + halfWidth - 0.5;
    const double down = (y + 0.5 - box.top - halfHeight) / halfHeight;
    const double reach = halfWidth * std::sqrt(std::max(0.0, 1 - down * down));
    return {static_cast<int>(std::ceil(centreX - reach)),
            static_cast<int>(std::floor(centreX + reach)) + 1};
}

PixelBox CommonBox(const PixelBox& a, const PixelBox& b) {
    return {std::max(a.left, b.left), std::max(a.top, b.top), std::min(a.right, b.right),
            std::min(a.bottom, b.bottom)};
}

Clip RectangleClip(const PixelBox& box, int width, int height) {
    Clip clip;
    clip.box = CommonBox(box, {0, 0, width, height});
    if (clip.box.right <= clip.box.left || clip.box.bottom <= clip.box.top) clip.box = {};
    return clip;
}

Clip EllipseClip(const PixelBox& box, int width, int height) {
    Clip clip = RectangleClip(box, width, height);
    for (int y = clip.box.top; y < clip.box.bottom; ++y) {
        const RowSpan row = EllipseRow(box, y);
        clip.rows.push_back(
            {std::max(row.left, clip.box.left), std::min(row.right, clip.box.right)});
    }
    return clip;
}

}  // namespace orvantis

#include "raster/line.h"

#include <algorithm>
#include <cstdlib>
#include <iterator>

namespace orvantis {

namespace {

// Smallest whole number that isn't below a / b, for b above 0.
std::int64_t CeilingOf(std::int64_t a, std::int64_t b) {
    return a > 0 ? (a + b - 1) / b : -(-a / b);
}

SurfacePoint Within16Bits(SurfacePoint point) {
    return {std::clamp(point.x, -32768, 32767), std::clamp(point.y, -32768, 32767)};
}

bool Inside(const PixelBox& box, SurfacePoint point) {
    return point.x >= box.left && point.x < box.right && point.y >= box.top && point.y < box.bottom;
}

// One axis of a line: where it starts, which way it goes, and the pixels that can be seen.
struct Axis {
    int start = 0;
    int sign = 1;
    int low = 0;   // first visible
    int high = 0;  // one past the last
};

// Distances from the start, in the axis' direction, at which it is visible: first and last.
std::int64_t FirstVisible(const Axis& axis) {
    return axis.sign > 0 ? axis.low - axis.start : axis.start - (axis.high - 1);
}
std::int64_t LastVisible(const Axis& axis) {
    return axis.sign > 0 ? axis.high - 1 - axis.start : axis.start - axis.low;
}

}  // namespace

LineWalk WalkLine(SurfacePoint from, SurfacePoint to, const PixelBox& box, LineRounding rounding) {
    from = Within16Bits(from);
    to = Within16Bits(to);
    LineWalk walk;
    const int dx = std::abs(to.x - from.x);
    const int dy = std::abs(to.y - from.y);
    const bool steep = dy > dx;
    const int steps = steep ? dy : dx;
    const int aside = steep ? dx : dy;
    walk.total = steps;
    if (steps == 0 || box.right <= box.left || box.bottom <= box.top) return walk;

    const Axis across{from.x, to.x < from.x ? -1 : 1, box.left, box.right};
    const Axis down{from.y, to.y < from.y ? -1 : 1, box.top, box.bottom};
    const Axis& main = steep ? down : across;
    const Axis& side = steep ? across : down;
    const std::int64_t half = rounding == LineRounding::Nearest ? steps : 0;

    // Steps whose pixel lies in the box: those of the longer axis at once, those of the other by
    // turning its formula round.
    std::int64_t first = 0;
    std::int64_t last = steps - 1;
    if (!Inside(box, from) || !Inside(box, to)) {
        first = std::max<std::int64_t>(first, FirstVisible(main));
        last = std::min<std::int64_t>(last, LastVisible(main));
        const std::int64_t sideFirst = FirstVisible(side);
        const std::int64_t sideLast = LastVisible(side);
        if (sideFirst > aside || sideLast < 0) return walk;
        if (sideFirst > 0) {
            first =
                std::max(first, CeilingOf(2 * steps * sideFirst - half, std::int64_t{2} * aside));
        }
        if (sideLast < aside) {
            last = std::min(
                last, CeilingOf(2 * steps * (sideLast + 1) - half, std::int64_t{2} * aside) - 1);
        }
        if (first > last) return walk;
    }

    // Place and error of the first of them; a line seen from its start needs no division.
    walk.error = static_cast<int>(half);
    int movedAside = 0;
    if (first > 0) {
        const std::int64_t turned = 2 * first * aside + half;
        movedAside = static_cast<int>(turned / (2 * steps)) * side.sign;
        walk.error = static_cast<int>(turned % (2 * steps));
    }
    const int moved = static_cast<int>(first) * main.sign;
    walk.x = from.x + (steep ? movedAside : moved);
    walk.y = from.y + (steep ? moved : movedAside);
    walk.forwardX = steep ? 0 : main.sign;
    walk.forwardY = steep ? main.sign : 0;
    walk.asideX = steep ? side.sign : 0;
    walk.asideY = steep ? 0 : side.sign;
    walk.count = static_cast<int>(last - first + 1);
    walk.skipped = static_cast<int>(first);
    walk.rise = 2 * aside;
    walk.run = 2 * steps;
    return walk;
}

std::uint32_t DashPattern(LineDash dash) {
    constexpr std::uint32_t kPatterns[] = {
        0xFFFFFF,                       // solid
        0x03FFFF,                       // 18 on, 6 off
        0x1C71C7,                       // 3 on, 3 off
        0x1FF | 0x7 << 15,              // 9 on, 6 off, 3 on, 6 off
        0x1FF | 0x7 << 12 | 0x7 << 18,  // 9 on, then 3 off and 3 on, twice, 3 off
    };
    const auto style = static_cast<std::size_t>(dash);
    return style < std::size(kPatterns) ? kPatterns[style] : kPatterns[0];
}

const std::vector<double>& WideDashes(LineDash dash) {
    static const std::vector<double> patterns[] = {
        {}, {4, 2}, {1, 1}, {4, 2, 1, 2}, {4, 2, 1, 2, 1, 2}};
    const auto style = static_cast<std::size_t>(dash);
    return style < std::size(patterns) ? patterns[style] : patterns[0];
}

}  // namespace orvantis

// Lines on a grid of pixels: which pixels a straight line takes, whatever part of it can be seen.
#pragma once

#include <cstdint>
#include <vector>

#include "raster/clip.h"
#include "surface/drawing_surface.h"

namespace orvantis {

/// The visible pixels of a line, step by step along its longer axis. Pixel `step` of a line of n
/// steps and d steps aside lies (2 * step * d + n) / (2 * n) aside, rounded down: the nearest
/// pixel, with ties away from the start (J. E. Bresenham, Algorithm for computer control of a
/// digital plotter, IBM Systems Journal 4, 1965). Cutting the line at a box changes which steps
/// are walked and never where a step lies.
struct LineWalk {
    int x = 0;  ///< first pixel
    int y = 0;
    int forwardX = 0;  ///< movement of every step
    int forwardY = 0;
    int asideX = 0;  ///< further movement of the steps that go aside
    int asideY = 0;
    int count = 0;    ///< pixels, 0 if none can be seen
    int skipped = 0;  ///< steps before the first pixel
    int total = 0;    ///< steps of the whole line
    int error = 0;    ///< grows by `rise` a step; a step goes aside when it reaches `run`, which
    int rise = 0;     ///< is then taken off
    int run = 1;
};

/// How a position between two pixels is put on one.
enum class LineRounding {
    Nearest,  ///< for hard lines
    Down      ///< for smooth ones; error / run is the share of the pixel further aside
};

/// The pixels of the line from `from` up to but not including `to` that lie in the box. Coordinates
/// beyond 16 bits count as the ends of that range.
LineWalk WalkLine(SurfacePoint from, SurfacePoint to, const PixelBox& box, LineRounding rounding);

/// Goes to the next pixel.
inline void NextPixel(LineWalk& walk) {
    walk.x += walk.forwardX;
    walk.y += walk.forwardY;
    walk.error += walk.rise;
    if (walk.error >= walk.run) {
        walk.error -= walk.run;
        walk.x += walk.asideX;
        walk.y += walk.asideY;
    }
}

/// Share of the ink, in 256ths, that the pixel further aside has: 256 * error / run of a walk's
/// place, by a multiplication with the inverse in place of a division for every pixel.
class SmoothShare {
  public:
    explicit SmoothShare(const LineWalk& walk)
        : inverse_(((std::uint64_t{1} << 32) + walk.run - 1) / walk.run) {}
    std::uint32_t operator()(int error) const {
        return static_cast<std::uint32_t>(static_cast<std::uint64_t>(error) * inverse_ >> 24);
    }

  private:
    std::uint64_t inverse_;
};

/// Pixels after which every dash pattern begins anew.
inline constexpr int kDashPeriod = 24;

/// Pixels of one period that a dashed line of the style shows, the first of them in the lowest bit.
/// The patterns are those that a width of one pixel has always had: dash 18 and 6; dot 3 and 3;
/// dash dot 9, 6, 3, 6; dash dot dot 9 and then 3 by 3.
std::uint32_t DashPattern(LineDash dash);

/// Lengths of the dashes and gaps, by turns, of a line wider than one pixel, in its widths; none of
/// a solid one.
const std::vector<double>& WideDashes(LineDash dash);

/// Goes along a pattern, pixel by pixel.
class DashWalk {
  public:
    DashWalk(LineDash dash, std::int64_t step)
        : pattern_(DashPattern(dash)), phase_(static_cast<int>(step % kDashPeriod)) {}

    /// True if the pixel of the moment shows; goes to the next.
    bool Next() {
        const bool shows = (pattern_ >> phase_ & 1) != 0;
        if (++phase_ == kDashPeriod) phase_ = 0;
        return shows;
    }

  private:
    std::uint32_t pattern_;
    int phase_;
};

}  // namespace orvantis

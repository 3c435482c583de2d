#include "raster/smooth_arc.h"

#include <algorithm>
#include <cmath>
#include <cstddef>

#include "raster/blend.h"
#include "raster/line.h"
#include "raster/wide_line.h"
#include "text/numbers.h"

namespace orvantis {

namespace {

constexpr int kWhole = 256;  // share of the ink of a pixel that is covered wholly

// Steps that a sector is walked beyond where it gives way to the next: more than its pixels reach
// aside of the arc.
constexpr int kReach = 4;

// Slope up to which an arc's width is measured along one axis. Beyond 1 the other sector begins,
// but for the few steps that the two overlap.
constexpr double kSteepest = 1.5;

// An ellipse is parted where its slope is 1 into four sectors, by turns steep and flat. A steep one
// is walked row by row, a flat one column by column: along its `major` axis.
struct Sector {
    bool steep = false;
    double majorCentre = 0;
    double majorRadius = 0;
    double minorCentre = 0;
    double minorRadius = 0;
    int side = 1;  // of the centre, along the minor axis: 1 right or below, -1 left or above
};

struct Canvas {
    Image& image;
    const Clip& clip;
    const SmoothArc& arc;
    int width = 1;
    LineDash dash = LineDash::Solid;
    std::uint32_t ink = 0;
    double diagonal = 0;  // see DiagonalOf
};

// Sectors are numbered on and on, anticlockwise: 0 right, 1 above, 2 left, 3 below.
Sector SectorOf(const SmoothArc& arc, int number) {
    const int quarter = number & 3;
    const int side = quarter == 0 || quarter == 3 ? 1 : -1;
    if (quarter % 2 == 0) {
        return {true, arc.centreY, arc.radiusY, arc.centreX, arc.radiusX, side};
    }
    return {false, arc.centreX, arc.radiusX, arc.centreY, arc.radiusY, side};
}

// The angle at which a sector begins.
double StartOf(const SmoothArc& arc, int number) {
    const double slopeOne = RadToDeg(std::atan2(arc.radiusY, arc.radiusX));
    const int halves = (number - (number & 1)) / 2;
    return halves * 180.0 + (number % 2 == 0 ? -slopeOne : slopeOne);
}

// Place of an angle along a sector's major axis.
double MajorAt(const Sector& sector, double degrees) {
    return sector.steep ? sector.majorCentre - sector.majorRadius * SinD(degrees)
                        : sector.majorCentre + sector.majorRadius * CosD(degrees);
}

// The pixel nearest to a place. One halfway between two is put on the later, also where the last
// digits of an angle put it just before: an arc ends in the same pixel whichever way it goes.
int NearestPixel(double place) {
    constexpr double kFarthest = 1e9;  // no surface reaches so far, and numbers of pixels fit
    return static_cast<int>(std::clamp(std::floor(place + 0.5 + 1e-6), -kFarthest, kFarthest));
}

// Each pixel belongs to the steep sectors or to the flat ones, so that where two of them meet none
// is left out and none inked twice. They are parted across the arc: by the diagonal through the
// point at which its slope is 1, the same in all quarters.
double DiagonalOf(const SmoothArc& arc) {
    const double diameter = std::hypot(arc.radiusX, arc.radiusY);
    return diameter > 0 ? (arc.radiusX - arc.radiusY) * (arc.radiusX + arc.radiusY) / diameter : 0;
}

bool IsSteep(const Canvas& canvas, int x, int y) {
    return std::abs(x - canvas.arc.centreX) - std::abs(y - canvas.arc.centreY) > canvas.diagonal;
}

void BlendAt(const Canvas& canvas, const Sector& sector, int major, int minor, int share) {
    const int x = sector.steep ? minor : major;
    const int y = sector.steep ? major : minor;
    if (share == 0 || !InClip(canvas.clip, x, y) || IsSteep(canvas, x, y) != sector.steep) {
        return;
    }
    const std::size_t row = static_cast<std::size_t>(y) * canvas.image.width;
    std::uint32_t& pixel = canvas.image.pixels[row + static_cast<std::size_t>(x)];
    pixel = Blend(pixel, canvas.ink, static_cast<std::uint32_t>(share));
}

// Half of the arc's width along the minor axis, where it runs at `minor`.
double HalfAcross(const Canvas& canvas, const Sector& sector, int major, double minor) {
    if (canvas.width == 1) return 0.5;
    const double run = (minor - sector.minorCentre) * sector.majorRadius * sector.majorRadius;
    const double rise = (major - sector.majorCentre) * sector.minorRadius * sector.minorRadius;
    const double slope =
        std::abs(rise) < kSteepest * std::abs(run) ? rise / run : (rise == 0 ? 0 : kSteepest);
    return canvas.width / 2.0 * std::sqrt(1 + slope * slope);
}

void DrawStep(const Canvas& canvas, const Sector& sector, int major) {
    const double off = (major - sector.majorCentre) / std::max(sector.majorRadius, 0.5);
    const double minor = sector.minorCentre +
                         sector.side * sector.minorRadius * std::sqrt(std::max(0.0, 1 - off * off));
    const PixelBox& box = canvas.clip.box;
    const int low = sector.steep ? box.left : box.top;
    const int high = sector.steep ? box.right : box.bottom;
    if (minor < low - kReach || minor > high + kReach) return;

    // The edges, in 256ths, counted from the outer side of pixel 0.
    const double half = HalfAcross(canvas, sector, major, minor);
    const auto from = static_cast<int>(std::lround((minor + 0.5 - half) * kWhole));
    const auto to = static_cast<int>(std::lround((minor + 0.5 + half) * kWhole));
    const int first = from >> 8;
    const int last = to >> 8;
    BlendAt(canvas, sector, major, first, (first + 1) * kWhole - from);
    for (int i = first + 1; i < last; ++i) BlendAt(canvas, sector, major, i, kWhole);
    BlendAt(canvas, sector, major, last, to - last * kWhole);
}

// What of the arc lies in a sector: from one angle to another.
struct Part {
    double from = 0;
    double to = 0;
    bool goesOnBefore = false;  // the arc comes from the sector before, or
    bool goesOnAfter = false;   // goes on in the next
    bool leavesLast = false;    // its last pixel is its first one
};

// Walks the part. `dashStep` are the steps before it, to which its own are added.
void DrawSector(const Canvas& canvas, const Sector& sector, const Part& part,
                std::int64_t& dashStep) {
    const int start = NearestPixel(MajorAt(sector, part.from));
    const int end = NearestPixel(MajorAt(sector, part.to));
    const bool forward = MajorAt(sector, part.to) >= MajorAt(sector, part.from);
    const int before = part.goesOnBefore ? kReach : 0;
    const int after = part.goesOnAfter ? kReach : part.leavesLast ? -1 : 0;
    int low = forward ? start - before : end - after;
    int high = forward ? end + after : start + before;

    // Of these, what lies on the ellipse and can be seen.
    const PixelBox& box = canvas.clip.box;
    low = std::max({low, sector.steep ? box.top : box.left,
                    static_cast<int>(std::ceil(sector.majorCentre - sector.majorRadius))});
    high = std::min({high, (sector.steep ? box.bottom : box.right) - 1,
                     static_cast<int>(std::floor(sector.majorCentre + sector.majorRadius))});
    const std::uint32_t pattern = DashPattern(canvas.dash);
    for (int major = low; major <= high; ++major) {
        const std::int64_t step = dashStep + (forward ? major - start : start - major);
        const auto phase = (step % kDashPeriod + kDashPeriod) % kDashPeriod;
        if ((pattern >> phase & 1) != 0) DrawStep(canvas, sector, major);
    }
    dashStep += std::abs(end - start);
}

SurfacePoint PixelAt(const SmoothArc& arc, double degrees) {
    return {NearestPixel(arc.centreX + arc.radiusX * CosD(degrees)),
            NearestPixel(arc.centreY - arc.radiusY * SinD(degrees))};
}

}  // namespace

void DrawSmoothArc(Image& image, const Clip& clip, const SmoothArc& arc, int width, LineDash dash,
                   std::uint32_t ink) {
    if (clip.box.right <= clip.box.left || clip.box.bottom <= clip.box.top) return;
    if (!std::isfinite(arc.startDegrees) || !std::isfinite(arc.spanDegrees)) return;
    const Canvas canvas{image, clip, arc, width, dash, ink, DiagonalOf(arc)};
    const bool closed = std::abs(arc.spanDegrees) >= 360;
    const double start = Modulo(arc.startDegrees, 360);
    const double end = start + std::clamp(arc.spanDegrees, -360.0, 360.0);

    // The sectors that the arc may touch, the way that it goes.
    constexpr int kFirst = -5;
    constexpr int kLast = 8;
    const bool forward = end >= start;
    std::int64_t dashStep = 0;
    for (int i = 0; i <= kLast - kFirst; ++i) {
        const int number = forward ? kFirst + i : kLast - i;
        const double least = StartOf(arc, number);
        const double most = StartOf(arc, number + 1);
        const double from = std::clamp(start, least, most);
        const double to = std::clamp(end, least, most);
        if (from == to) continue;
        const Part part = {from, to, from != start, to != end, closed && to == end};
        DrawSector(canvas, SectorOf(arc, number), part, dashStep);
    }
    if (width > 1 && !closed) {
        DrawRoundEnd(image, clip, PixelAt(arc, start), width, ink);
        DrawRoundEnd(image, clip, PixelAt(arc, end), width, ink);
    }
}

}  // namespace orvantis

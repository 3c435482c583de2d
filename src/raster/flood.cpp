#include "raster/flood.h"

#include <algorithm>
#include <utility>

namespace orvantis {

namespace {

// A stretch of a row that is to be looked at coming from the row `from`.
struct Stretch {
    int y = 0;
    int left = 0;
    int right = 0;  // exclusive
    int from = 0;   // -1 or 1: the row y + from is the one that was painted
};

// Fills run by run, looking from each at the row beyond it and, where the run reaches further than
// the one it was found from, back at the row that it was found from (P. S. Heckbert, A seed fill
// algorithm, Graphics Gems, 1990). Painted pixels carry a mark in their otherwise constant top
// byte until the end: that keeps them apart from pixels that had the fill's colour before, which
// are to be walked through, and makes each pixel be painted once whatever the colours are.
struct Flood {
    Image& image;
    const Clip& clip;
    std::uint32_t border;
    std::uint32_t mark;
    std::vector<Stretch> open;
    std::vector<PixelRun> painted;

    std::uint32_t* Row(int y) {
        return image.pixels.data() + static_cast<std::size_t>(y) * image.width;
    }
    bool Free(std::uint32_t pixel) const { return pixel != border && pixel != mark; }

    void Look(int y, int left, int right, int from) {
        if (y >= clip.box.top && y < clip.box.bottom) open.push_back({y, left, right, from});
    }

    // Paints the run around x, which is free, and notes the rows to look at. The stretch is the
    // one that x was found in. Returns the run's end.
    int PaintRun(const Stretch& stretch, const RowSpan& row, int x) {
        std::uint32_t* pixels = Row(stretch.y);
        int left = x;
        while (left > row.left && Free(pixels[left - 1])) pixels[--left] = mark;
        int right = x;
        while (right < row.right && Free(pixels[right])) pixels[right++] = mark;

        painted.push_back({stretch.y, left, right});
        Look(stretch.y - stretch.from, left, right, stretch.from);
        if (left < stretch.left) Look(stretch.y + stretch.from, left, stretch.left, -stretch.from);
        if (right > stretch.right) {
            Look(stretch.y + stretch.from, stretch.right, right, -stretch.from);
        }
        return right;
    }

    void PaintStretch(const Stretch& stretch) {
        const RowSpan row = ClipRow(clip, stretch.y);
        const std::uint32_t* pixels = Row(stretch.y);
        const int end = std::min(stretch.right, row.right);
        int x = std::max(stretch.left, row.left);
        while (x < end) {
            x = Free(pixels[x]) ? PaintRun(stretch, row, x) : x + 1;
        }
    }
};

}  // namespace

bool FloodImage(Image& image, const Clip& clip, int x, int y, std::uint32_t fill,
                std::uint32_t border, std::vector<PixelRun>* painted) {
    if (!InClip(clip, x, y)) return false;
    Flood flood{image, clip, border, fill & 0xFFFFFF, {}, {}};
    if (!flood.Free(flood.Row(y)[x])) return false;

    // The seed counts as a stretch without width, so that its run is looked from to both sides.
    flood.PaintRun({y, x, x, -1}, ClipRow(clip, y), x);
    while (!flood.open.empty()) {
        const Stretch stretch = flood.open.back();
        flood.open.pop_back();
        flood.PaintStretch(stretch);
    }
    for (const PixelRun& run : flood.painted) {
        std::fill(flood.Row(run.y) + run.left, flood.Row(run.y) + run.right, fill);
    }
    if (painted != nullptr) *painted = std::move(flood.painted);
    return true;
}

}  // namespace orvantis

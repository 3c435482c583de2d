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

// One bit for each pixel of a picture, row by row.
class PixelBits {
  public:
    // Room for a picture of the size. All bits are off: whoever sets some has to take them off
    // again, so that a small flood in a large picture stays cheap.
    void Fit(int width, int height) {
        stride_ = (static_cast<std::size_t>(width) + kWord - 1) / kWord;
        words_.resize(std::max(words_.size(), stride_ * static_cast<std::size_t>(height)), 0);
    }
    bool IsOn(int y, int x) const { return (Row(y)[x / kWord] >> (x % kWord) & 1) != 0; }
    void Toggle(const PixelRun& run) {
        std::uint64_t* const row = words_.data() + static_cast<std::size_t>(run.y) * stride_;
        for (int x = run.left; x < run.right;) {
            const int count = std::min(run.right - x, kWord - x % kWord);
            const std::uint64_t ones = ~std::uint64_t{0} >> (kWord - count);
            row[x / kWord] ^= ones << (x % kWord);
            x += count;
        }
    }

  private:
    static constexpr int kWord = 64;
    const std::uint64_t* Row(int y) const {
        return words_.data() + static_cast<std::size_t>(y) * stride_;
    }
    std::vector<std::uint64_t> words_;
    std::size_t stride_ = 0;
};

// The first place from `x` on, before `end`, whose pixel has the value; `end` if there is none.
// Whole blocks are compared at once: without a way out of it the compiler makes a few wide
// instructions of the inner loop.
int FindPixel(const std::uint32_t* pixels, int x, int end, std::uint32_t value) {
    constexpr int kBlock = 32;
    for (; x + kBlock <= end; x += kBlock) {
        std::uint32_t found = 0;
        for (int i = 0; i < kBlock; ++i)
            found |= static_cast<std::uint32_t>(pixels[x + i] == value);
        if (found != 0) break;
    }
    while (x < end && pixels[x] != value) ++x;
    return x;
}

// Fills run by run, looking from each at the row beyond it and, where the run reaches further than
// the one it was found from, back at the row that it was found from (P. S. Heckbert, A seed fill
// algorithm, Graphics Gems, 1990). A run reaches from border to border, so it is painted whole or
// not at all; which ones are is kept apart from the colours, since pixels that had the fill's
// colour before are to be walked through.
struct Flood {
    Image& image;
    const Clip& clip;
    std::uint32_t fill;
    std::uint32_t border;
    PixelBits& done;
    std::vector<Stretch> open;
    std::vector<PixelRun> painted;

    std::uint32_t* Row(int y) {
        return image.pixels.data() + static_cast<std::size_t>(y) * image.width;
    }
    void Look(int y, int left, int right, int from) {
        if (y >= clip.box.top && y < clip.box.bottom) open.push_back({y, left, right, from});
    }

    // Paints the run around x, which is free, and notes the rows to look at. The stretch is the
    // one that x was found in. Returns the run's end.
    int PaintRun(const Stretch& stretch, const RowSpan& row, int x) {
        std::uint32_t* pixels = Row(stretch.y);
        int left = x;
        while (left > row.left && pixels[left - 1] != border) --left;
        const int right = FindPixel(pixels, x, row.right, border);
        std::fill(pixels + left, pixels + right, fill);

        painted.push_back({stretch.y, left, right});
        done.Toggle(painted.back());
        Look(stretch.y - stretch.from, left, right, stretch.from);
        if (left < stretch.left) Look(stretch.y + stretch.from, left, stretch.left, -stretch.from);
        if (right > stretch.right) {
            Look(stretch.y + stretch.from, stretch.right, right, -stretch.from);
        }
        return right;
    }

    void PaintStretch(const Stretch& stretch) {
        const RowSpan row = ClipRow(clip, stretch.y);
        const int end = std::min(stretch.right, row.right);
        int x = std::max(stretch.left, row.left);
        const std::uint32_t* pixels = Row(stretch.y);
        while (x < end) {
            if (pixels[x] == border) {
                ++x;
            } else if (done.IsOn(stretch.y, x)) {
                x = FindPixel(pixels, x, end, border);
            } else {
                x = PaintRun(stretch, row, x);
            }
        }
    }
};

}  // namespace

bool FloodImage(Image& image, const Clip& clip, int x, int y, std::uint32_t fill,
                std::uint32_t border, std::vector<PixelRun>* painted) {
    if (!InClip(clip, x, y)) return false;
    static PixelBits done;  // kept from flood to flood, all off between them
    done.Fit(image.width, image.height);
    Flood flood{image, clip, fill, border, done, {}, {}};
    if (flood.Row(y)[x] == border) return false;

    // The seed counts as a stretch without width, so that its run is looked from to both sides.
    flood.PaintRun({y, x, x, -1}, ClipRow(clip, y), x);
    while (!flood.open.empty()) {
        const Stretch stretch = flood.open.back();
        flood.open.pop_back();
        flood.PaintStretch(stretch);
    }
    for (const PixelRun& run : flood.painted) done.Toggle(run);
    if (painted != nullptr) *painted = std::move(flood.painted);
    return true;
}

}  // namespace orvantis

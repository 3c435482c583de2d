#include "raster/wide_line.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstdlib>

#include "raster/blend.h"
#include "raster/line.h"

namespace orvantis {

namespace {

constexpr int kWhole = 256;  // share of the ink of a pixel that is covered wholly

// Pixels that a line of the greatest width reaches aside of its path: half of its width across the
// longer axis, at most 1.5 * sqrt 2, from a path between two pixels.
constexpr int kReach = 4;

struct Canvas {
    Image& image;
    const Clip& clip;
    std::uint32_t ink;
};

std::uint32_t& PixelAt(const Canvas& canvas, int x, int y) {
    return canvas.image
        .pixels[static_cast<std::size_t>(y) * static_cast<std::size_t>(canvas.image.width) +
                static_cast<std::size_t>(x)];
}

void BlendWithin(const Canvas& canvas, int x, int y, int share) {
    if (share == 0 || !InClip(canvas.clip, x, y)) return;
    std::uint32_t& pixel = PixelAt(canvas, x, y);
    pixel = Blend(pixel, canvas.ink, static_cast<std::uint32_t>(share));
}

PixelBox Grown(const PixelBox& box, int pixels) {
    return {box.left - pixels, box.top - pixels, box.right + pixels, box.bottom + pixels};
}

bool Holds(const PixelBox& box, SurfacePoint point) {
    return point.x >= box.left && point.x < box.right && point.y >= box.top && point.y < box.bottom;
}

// Half of a line's width as it is measured across the longer axis, in 256ths of a pixel.
int HalfAcross(SurfacePoint from, SurfacePoint to, int width) {
    const double dx = static_cast<double>(to.x) - from.x;
    const double dy = static_cast<double>(to.y) - from.y;
    const double longer = std::max(std::abs(dx), std::abs(dy));
    return static_cast<int>(
        std::lround(kWhole / 2.0 * width * std::sqrt(dx * dx + dy * dy) / longer));
}

// The pixels across a step of a walk: from `first` to `last`, counted from the step's pixel in the
// direction aside. Both are covered in part, those between them wholly.
struct Across {
    int first = 0;
    int last = 0;
    int firstShare = 0;
    int lastShare = 0;
};

Across AcrossStep(int further, int half) {
    // The edges, in 256ths, from the outer side of the step's pixel.
    const int low = further + kWhole / 2 - half;
    const int high = further + kWhole / 2 + half;
    Across across;
    across.first = low >> 8;
    across.last = high >> 8;
    across.firstShare = (across.first + 1) * kWhole - low;
    across.lastShare = high - across.last * kWhole;
    return across;
}

// All of it can be drawn.
void DrawWhole(const Canvas& canvas, const LineWalk& walk, int half) {
    const std::ptrdiff_t stride = canvas.image.width;
    const std::ptrdiff_t forward = walk.forwardX + walk.forwardY * stride;
    const std::ptrdiff_t aside = walk.asideX + walk.asideY * stride;
    const SmoothShare shareOf(walk);
    std::uint32_t* path = &PixelAt(canvas, walk.x, walk.y);
    int error = walk.error;
    for (int left = walk.count; left > 0; --left) {
        const Across across = AcrossStep(static_cast<int>(shareOf(error)), half);
        std::uint32_t* pixel = path + across.first * aside;
        *pixel = Blend(*pixel, canvas.ink, static_cast<std::uint32_t>(across.firstShare));
        for (int i = across.first + 1; i < across.last; ++i) {
            pixel += aside;
            *pixel = canvas.ink;
        }
        if (across.lastShare != 0) {
            pixel += aside;
            *pixel = Blend(*pixel, canvas.ink, static_cast<std::uint32_t>(across.lastShare));
        }
        // Ends and all that they reach lie inside, and so does the place after the last.
        path += forward;
        error += walk.rise;
        if (error >= walk.run) {
            error -= walk.run;
            path += aside;
        }
    }
}

// Where one piece goes over into the next by a small turn, but the longer axis changes: the
// diagonal through the point parts what the two of them draw, so that no pixel is left out and none
// is inked twice.
struct Cut {
    bool is = false;
    SurfacePoint at;
    int x = 0;  // the way of both pieces, -1 or 1
    int y = 0;

    bool IsBehind(int px, int py) const { return (px - at.x) * x + (py - at.y) * y >= 0; }
};

struct Cuts {
    Cut start;
    Cut end;

    bool Holds(int x, int y) const {
        return (!start.is || start.IsBehind(x, y)) && !(end.is && end.IsBehind(x, y));
    }
};

void DrawClipped(const Canvas& canvas, LineWalk walk, int half, const Cuts& cuts) {
    const SmoothShare shareOf(walk);
    for (int left = walk.count; left > 0; --left) {
        const Across across = AcrossStep(static_cast<int>(shareOf(walk.error)), half);
        for (int i = across.first; i <= across.last; ++i) {
            const int share = i == across.first  ? across.firstShare
                              : i == across.last ? across.lastShare
                                                 : kWhole;
            const int x = walk.x + i * walk.asideX;
            const int y = walk.y + i * walk.asideY;
            if (cuts.Holds(x, y)) BlendWithin(canvas, x, y, share);
        }
        NextPixel(walk);
    }
}

// Pixels along its longer axis that a piece needs on either side of a cut: across, it covers up to
// 1.5 * sqrt 2 of them, at which the diagonal is 1.5 farther on.
constexpr int kCutReach = 3;

struct Ends {
    SurfacePoint from;
    SurfacePoint to;
};

int StepsOf(const Ends& piece) {
    return std::max(std::abs(piece.to.x - piece.from.x), std::abs(piece.to.y - piece.from.y));
}

// How many of its own lengths a piece is drawn out by, so as to reach past its cuts in the same
// pixels.
int TimesPastCut(const Ends& piece) {
    return (kCutReach - 1) / std::max(StepsOf(piece), 1) + 1;
}

Ends PastCuts(const Ends& piece, bool start, bool end) {
    const int times = TimesPastCut(piece);
    const int dx = times * (piece.to.x - piece.from.x);
    const int dy = times * (piece.to.y - piece.from.y);
    Ends ends = piece;
    if (start) ends.from = {piece.from.x - dx, piece.from.y - dy};
    if (end) ends.to = {piece.to.x + dx, piece.to.y + dy};
    return ends;
}

// The next pixels of a walk, up to `count`, which moves behind them.
LineWalk TakePart(LineWalk& walk, int count) {
    LineWalk part = walk;
    part.count = std::clamp(count, 0, walk.count);
    for (int left = part.count; left > 0; --left) NextPixel(walk);
    walk.count -= part.count;
    walk.skipped += part.count;
    return part;
}

// The walk of a piece that is drawn out past its cuts, without what lies farther than kCutReach
// beyond them.
LineWalk WalkPastCuts(const Ends& piece, const Cuts& cuts, const PixelBox& box) {
    const Ends ends = PastCuts(piece, cuts.start.is, cuts.end.is);
    LineWalk walk = WalkLine(ends.from, ends.to, box, LineRounding::Down);
    const int beyond = TimesPastCut(piece) * StepsOf(piece) - kCutReach;
    const int last = walk.total - (cuts.end.is ? beyond : 0);
    if (cuts.start.is) TakePart(walk, beyond - walk.skipped);
    walk.count = std::clamp(last - walk.skipped, 0, walk.count);
    return walk;
}

void DrawCutPiece(const Canvas& canvas, const Ends& piece, int half, const Cuts& cuts,
                  bool allInside) {
    LineWalk walk = WalkPastCuts(piece, cuts, Grown(canvas.clip.box, kReach));
    constexpr int kAboutCut = 2 * kCutReach;
    const int after = cuts.end.is ? kAboutCut : 0;
    if (allInside && walk.count > 2 * kAboutCut) {
        if (cuts.start.is) DrawClipped(canvas, TakePart(walk, kAboutCut), half, cuts);
        DrawWhole(canvas, TakePart(walk, walk.count - after), half);
    }
    DrawClipped(canvas, walk, half, cuts);
}

void DrawPiece(const Canvas& canvas, const Ends& piece, int width, const Cuts& cuts) {
    const PixelBox& box = canvas.clip.box;
    const int half = HalfAcross(piece.from, piece.to, width);
    const PixelBox inner = Grown(box, -kReach);
    const bool allInside =
        canvas.clip.rows.empty() && Holds(inner, piece.from) && Holds(inner, piece.to);
    if (cuts.start.is || cuts.end.is) {
        DrawCutPiece(canvas, piece, half, cuts, allInside);
        return;
    }
    const LineWalk walk = WalkLine(piece.from, piece.to, Grown(box, kReach), LineRounding::Down);
    if (walk.count == 0) return;
    if (allInside) {
        DrawWhole(canvas, walk, half);
    } else {
        DrawClipped(canvas, walk, half, cuts);
    }
}

// Shares of the pixels around a point that a disc covers, counted on a fine grid.
constexpr int kDiscReach = kWidestSmoothLine / 2 + 1;
constexpr int kDiscSide = 2 * kDiscReach + 1;
using Disc = std::array<std::array<int, kDiscSide>, kDiscSide>;

Disc MakeDisc(int width) {
    constexpr int kFine = 16;  // its square is kWhole
    Disc disc{};
    for (int y = 0; y < kDiscSide * kFine; ++y) {
        for (int x = 0; x < kDiscSide * kFine; ++x) {
            const double dx = (x + 0.5) / kFine - kDiscSide / 2.0;
            const double dy = (y + 0.5) / kFine - kDiscSide / 2.0;
            if (4 * (dx * dx + dy * dy) > width * width) continue;
            ++disc[static_cast<std::size_t>(y / kFine)][static_cast<std::size_t>(x / kFine)];
        }
    }
    return disc;
}

const Disc& DiscOf(int width) {
    static const std::array<Disc, kWidestSmoothLine + 1> discs = [] {
        std::array<Disc, kWidestSmoothLine + 1> made{};
        for (int w = 1; w <= kWidestSmoothLine; ++w)
            made[static_cast<std::size_t>(w)] = MakeDisc(w);
        return made;
    }();
    return discs[static_cast<std::size_t>(width)];
}

void DrawDisc(const Canvas& canvas, SurfacePoint centre, int width) {
    if (!Holds(Grown(canvas.clip.box, kDiscReach), centre)) return;
    const Disc& disc = DiscOf(width);
    for (int y = 0; y < kDiscSide; ++y) {
        for (int x = 0; x < kDiscSide; ++x) {
            BlendWithin(canvas, centre.x + x - kDiscReach, centre.y + y - kDiscReach,
                        disc[static_cast<std::size_t>(y)][static_cast<std::size_t>(x)]);
        }
    }
}

// The way that a piece goes along its longer axis. Pieces that go the same way share the columns or
// rows between them and leave no gap.
enum class Way { None, Left, Right, Up, Down };

Way WayOf(const Ends& piece) {
    const int dx = piece.to.x - piece.from.x;
    const int dy = piece.to.y - piece.from.y;
    if (dx == 0 && dy == 0) return Way::None;
    if (std::abs(dy) > std::abs(dx)) return dy > 0 ? Way::Down : Way::Up;
    return dx > 0 ? Way::Right : Way::Left;
}

int SignOf(int value) {
    return value > 0 ? 1 : value < 0 ? -1 : 0;
}

// The cut where a line goes over from one piece to the next; none where it keeps its axis, turns
// about, or where a piece reaches so far that its continuation can't be walked.
Cut CutBetween(const Ends& piece, const Ends& next) {
    if (WayOf(piece) == WayOf(next)) return {};
    const int x = SignOf(piece.to.x - piece.from.x);
    const int y = SignOf(piece.to.y - piece.from.y);
    const bool sameQuarter = x != 0 && y != 0 && x == SignOf(next.to.x - next.from.x) &&
                             y == SignOf(next.to.y - next.from.y);
    if (!sameQuarter) return {};
    const Ends longPiece = PastCuts(piece, true, true);
    const Ends longNext = PastCuts(next, true, true);
    for (const SurfacePoint point : {longPiece.from, longPiece.to, longNext.from, longNext.to}) {
        if (std::abs(point.x) > INT16_MAX || std::abs(point.y) > INT16_MAX) return {};
    }
    return {true, piece.to, x, y};
}

std::vector<Ends> PiecesOf(const std::vector<SurfacePoint>& points) {
    std::vector<Ends> pieces;
    pieces.reserve(points.size());
    for (std::size_t i = 1; i < points.size(); ++i) {
        const Ends piece = {points[i - 1], points[i]};
        if (WayOf(piece) != Way::None) pieces.push_back(piece);
    }
    return pieces;
}

}  // namespace

void DrawWideLine(Image& image, const Clip& clip, const std::vector<SurfacePoint>& points,
                  int width, std::uint32_t ink) {
    if (points.empty() || clip.box.right <= clip.box.left || clip.box.bottom <= clip.box.top)
        return;
    const Canvas canvas{image, clip, ink};
    const std::vector<Ends> pieces = PiecesOf(points);
    Cuts cuts;
    for (std::size_t i = 0; i < pieces.size(); ++i) {
        const bool turns = i == 0 || WayOf(pieces[i - 1]) != WayOf(pieces[i]);
        if (turns && !cuts.start.is) DrawDisc(canvas, pieces[i].from, width);
        cuts.end = i + 1 < pieces.size() ? CutBetween(pieces[i], pieces[i + 1]) : Cut{};
        DrawPiece(canvas, pieces[i], width, cuts);
        cuts.start = cuts.end;
    }
    DrawDisc(canvas, points.back(), width);
}

void DrawRoundEnd(Image& image, const Clip& clip, SurfacePoint centre, int width,
                  std::uint32_t ink) {
    DrawDisc({image, clip, ink}, centre, width);
}

}  // namespace orvantis

#include "split.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>

namespace orvantis::world {

namespace {

constexpr std::size_t kMostPoints = 4000;

struct Box {
    int xMin, xMax, yMin, yMax;

    explicit Box(const MinPoint& p) : xMin(p.x), xMax(p.x), yMin(p.y), yMax(p.y) {}
    void Add(const MinPoint& p) {
        xMin = std::min(xMin, p.x);
        xMax = std::max(xMax, p.x);
        yMin = std::min(yMin, p.y);
        yMax = std::max(yMax, p.y);
    }
    bool TooLarge() const { return xMax - xMin > kGreatestExtent || yMax - yMin > kGreatestExtent; }
};

// Edges that alone are larger than a line may be get points of their own, evenly spaced: such are
// the straight lines between states along a parallel.
MinLine WithShortEdges(const MinLine& line) {
    MinLine result = {line.front()};
    for (std::size_t i = 1; i < line.size(); ++i) {
        const MinPoint& a = line[i - 1];
        const MinPoint& b = line[i];
        const int larger = std::max(std::abs(b.x - a.x), std::abs(b.y - a.y));
        const int parts = (larger + kGreatestExtent - 1) / kGreatestExtent;
        for (int part = 1; part < parts; ++part) {
            const double along = static_cast<double>(part) / parts;
            result.push_back({static_cast<int>(std::lrint(a.x + along * (b.x - a.x))),
                              static_cast<int>(std::lrint(a.y + along * (b.y - a.y))), a.owner});
        }
        result.push_back(b);
    }
    return result;
}

}  // namespace

std::vector<MinLine> SplitLine(const MinLine& whole) {
    const MinLine line = WithShortEdges(whole);
    std::vector<MinLine> pieces;
    MinLine piece = {line.front()};
    Box box(line.front());
    for (std::size_t i = 1; i < line.size(); ++i) {
        Box grown = box;
        grown.Add(line[i]);
        if (piece.size() > 1 && (grown.TooLarge() || piece.size() >= kMostPoints)) {
            const MinPoint cut = piece.back();
            pieces.push_back(std::move(piece));
            piece = {cut};
            grown = Box(cut);
            grown.Add(line[i]);
        }
        piece.push_back(line[i]);
        box = grown;
    }
    pieces.push_back(std::move(piece));
    return pieces;
}

}  // namespace orvantis::world

#include "split.h"

#include <algorithm>

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

}  // namespace

std::vector<MinLine> SplitLine(const MinLine& line) {
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

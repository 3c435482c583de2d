#include "date_line.h"

#include <cmath>

namespace orvantis::world {

namespace {

bool LiesOnDateLine(const DegPoint& p) {
    return std::abs(std::abs(p.x) - 180) < 1e-6;
}

// Latitude at which the segment from `a` to `b` crosses; `edge` is the side of `a`, 180 or -180.
double CrossingLat(const DegPoint& a, const DegPoint& b, double edge) {
    const double unwrapped = b.x + (b.x < a.x ? 360 : -360);
    if (unwrapped == a.x) return a.y;
    return a.y + (b.y - a.y) * ((edge - a.x) / (unwrapped - a.x));
}

struct Cutter {
    std::vector<DegLine> pieces;
    DegLine piece;

    // Ends the piece at hand. A single point is no piece.
    void Cut() {
        if (piece.size() > 1) pieces.push_back(piece);
        piece.clear();
    }

    // The segment from `a` to `b` leaps: it crosses the date line, or an end of it stands there
    // under the longitude of the other side.
    void Cross(const DegPoint& a, const DegPoint& b) {
        if (LiesOnDateLine(a)) {
            Cut();
            piece.push_back({-a.x, a.y});
        } else if (LiesOnDateLine(b)) {
            piece.push_back({-b.x, b.y});
            Cut();
        } else {
            const double edge = b.x < a.x ? 180 : -180;
            const double lat = CrossingLat(a, b, edge);
            piece.push_back({edge, lat});
            Cut();
            piece.push_back({-edge, lat});
        }
    }
};

}  // namespace

std::vector<DegLine> CutAtDateLine(const DegLine& line) {
    Cutter cutter;
    for (std::size_t i = 0; i < line.size(); ++i) {
        if (i > 0) {
            const DegPoint& a = line[i - 1];
            const DegPoint& b = line[i];
            if (LiesOnDateLine(a) && LiesOnDateLine(b)) {
                cutter.Cut();
            } else if (std::abs(a.x - b.x) > 180) {
                cutter.Cross(a, b);
            }
        }
        cutter.piece.push_back(line[i]);
    }
    cutter.Cut();
    return cutter.pieces;
}

}  // namespace orvantis::world

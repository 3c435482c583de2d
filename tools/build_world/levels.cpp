#include "levels.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace orvantis::world {

namespace {

// Greatest deviation of the thinned line, arc-minutes, for levels 1 to 5. A map of the world 1920
// pixels wide has 11 minutes to the pixel.
constexpr std::array<double, 6> kTolerance = {0, 0.5, 2, 4, 8, 15};
constexpr double kAlwaysKept = 1e9;

// Squared distance of `p` from the segment from `a` to `b`.
double SquaredDistance(const MinPoint& p, const MinPoint& a, const MinPoint& b) {
    const double dx = b.x - a.x;
    const double dy = b.y - a.y;
    const double px = p.x - a.x;
    const double py = p.y - a.y;
    const double length = dx * dx + dy * dy;
    const double along = length > 0 ? std::clamp((px * dx + py * dy) / length, 0.0, 1.0) : 0;
    const double ex = px - along * dx;
    const double ey = py - along * dy;
    return ex * ex + ey * ey;
}

// Significance of the points between `first` and `last`: the tolerance up to which each is kept.
// A point is never more significant than the one that split its run off, which nests the levels.
// (Douglas and Peucker, "Algorithms for the reduction of the number of points required to
// represent a digitized line", Cartographica 10, 1973.)
void MarkRun(const MinLine& line, std::size_t first, std::size_t last,
             std::vector<double>& significance) {
    struct Run {
        std::size_t first, last;
        double cap;
    };
    std::vector<Run> runs = {{first, last, kAlwaysKept}};
    significance[first] = significance[last] = kAlwaysKept;
    while (!runs.empty()) {
        const Run run = runs.back();
        runs.pop_back();
        if (run.last - run.first < 2) continue;
        double greatest = -1;
        std::size_t split = run.first;
        for (std::size_t i = run.first + 1; i < run.last; ++i) {
            const double d = SquaredDistance(line[i], line[run.first], line[run.last]);
            if (d > greatest) {
                greatest = d;
                split = i;
            }
        }
        significance[split] = std::min(std::sqrt(greatest), run.cap);
        runs.push_back({run.first, split, significance[split]});
        runs.push_back({split, run.last, significance[split]});
    }
}

std::int16_t LevelOf(double significance) {
    for (std::int16_t level = 5; level >= 1; --level) {
        if (significance >= kTolerance[static_cast<std::size_t>(level)]) return level;
    }
    return 0;
}

}  // namespace

std::vector<LinePoint> AssignLevels(const MinLine& line, const Junctions& junctions) {
    // Junctions split the line into runs that are thinned each by itself.
    std::vector<double> significance(line.size(), 0);
    std::size_t runStart = 0;
    for (std::size_t i = 1; i < line.size(); ++i) {
        if (i + 1 == line.size() || junctions.contains({line[i].x, line[i].y})) {
            MarkRun(line, runStart, i, significance);
            runStart = i;
        }
    }

    std::vector<LinePoint> points;
    for (std::size_t i = 0; i < line.size(); ++i) {
        const std::int16_t level = LevelOf(significance[i]);
        if (level == 0) continue;
        points.push_back(
            {level, static_cast<std::int16_t>(line[i].y), static_cast<std::int16_t>(line[i].x)});
    }
    return points;
}

}  // namespace orvantis::world

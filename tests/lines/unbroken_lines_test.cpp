// No line leaps across the map and none is missing, in any view of any projection.
#include <algorithm>
#include <array>
#include <cmath>
#include <gtest/gtest.h>
#include <map>
#include <random>
#include <tuple>

#include "lines/chart_lines.h"
#include "lines/independent_sky.h"
#include "lines/line_list.h"
#include "lines/lines_fixture.h"

namespace orvantis {
namespace {

class UnbrokenLines : public LinesOfRealCharts {
  protected:
    void SetUp() override {
        LinesOfRealCharts::SetUp();
        ShowTypes({1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11});
        for (std::size_t p = 1; p <= 36; ++p) pointSelection[p] = kTrue;
        options.paranLimit = 66;
        // Each line by a pen of its own: the type in the width, the point in the colour.
        for (std::size_t type = 1; type <= 11; ++type) {
            settings.lineStyle[type].thickness = static_cast<std::int16_t>(type);
            settings.lineStyle[type].style = 0;
            settings.lineStyle[type].planetColour = type <= 7 ? kTrue : kFalse;
            settings.lineStyle[type].colour = 0;
        }
        for (std::size_t p = 1; p <= 36; ++p) pointColour[p] = static_cast<Colour>(p);
    }
};

struct Stroke {
    std::pair<int, int> from;
    std::pair<int, int> to;
};

// Strokes by the pen they were drawn with: type and point.
using Strokes = std::map<std::pair<int, int>, std::vector<Stroke>>;

// A meridian of an upright globe: part of an ellipse in a box, from an angle on by another, degrees
// counterclockwise from the right.
void AddArc(std::vector<Stroke>& list, const std::string& call) {
    int left = 0;
    int top = 0;
    int right = 0;
    int bottom = 0;
    double start = 0;
    double span = 0;
    ASSERT_EQ(std::sscanf(call.c_str(), "Arc %d %d %d %d %lf %lf", &left, &top, &right, &bottom,
                          &start, &span),
              6);
    const auto at = [&](int step) {
        const double angle = (start + span * step / 60) * kRad;
        return std::pair<int, int>{
            static_cast<int>(
                std::lround((left + right - 1) / 2.0 + (right - left - 1) / 2.0 * std::cos(angle))),
            static_cast<int>(std::lround((top + bottom - 1) / 2.0 -
                                         (bottom - top - 1) / 2.0 * std::sin(angle)))};
    };
    for (int step = 0; step < 60; ++step) list.push_back({at(step), at(step + 1)});
}

Strokes StrokesByPen(const std::vector<std::string>& log) {
    Strokes strokes;
    std::pair<int, int> pen;
    std::pair<int, int> at;
    for (const std::string& call : log) {
        if (call == "ClearClip") break;  // the marks in the frame follow
        if (call.starts_with("SetPen")) {
            int width = 0;
            int style = 0;
            int colour = 0;
            std::sscanf(call.c_str(), "%*s %d %d %d", &width, &style, &colour);
            pen = {width, colour};
        } else if (call.starts_with("MoveTo")) {
            at = PlaceOfCall(call);
        } else if (call.starts_with("Arc")) {
            AddArc(strokes[pen], call);
        } else if (call.starts_with("LineTo")) {
            const std::pair<int, int> to = PlaceOfCall(call);
            strokes[pen].push_back({at, to});
            at = to;
        }
    }
    return strokes;
}

// A position on the map by the formulas of the projections (J. P. Snyder, Map Projections: A
// Working Manual, 12-1 and 12-2, 7-1 and 7-2, 20-3 and 20-4), apart from the program's; false if it
// isn't in view.
bool ProjectApart(double lat, double longitude, double& x, double& y) {
    const MapDocument& map = CurrentMap();
    const MapRect& rect = mapView.rect;
    if (map.projection >= projection::kGlobeSphere) {
        const double centreLat = static_cast<double>(map.south);
        const double centreLong = static_cast<double>(map.west) + 90;
        const Vec v = OnSphere(lat, longitude - centreLong);
        const double tilt = centreLat * kRad;
        const double towards = v.x * std::cos(tilt) + v.z * std::sin(tilt);
        const double up = v.z * std::cos(tilt) - v.x * std::sin(tilt);
        if (towards < 0.02) return false;  // the rim: where it goes behind isn't asked
        x = rect.left + rect.width / 2.0 * (1 + v.y);
        y = rect.top + rect.height / 2.0 * (1 - up);
        return true;
    }
    const auto edge = [](float degrees) { return static_cast<double>(degrees); };
    double span = edge(map.east) - edge(map.west);
    if (span <= 0) span += 360;
    const double east = longitude - edge(map.west);
    x = rect.left + (east - 360 * std::floor(east / 360)) * rect.width / span;
    const auto mercator = [](double degrees) {
        return std::log(std::tan((45 + degrees / 2) * kRad));
    };
    if (map.projection == projection::kMercator) {
        if (std::abs(lat) > 89) return false;
        const double north = mercator(edge(map.north));
        y = rect.top + (north - mercator(lat)) * rect.height / (north - mercator(edge(map.south)));
    } else {
        y = rect.top + (edge(map.north) - lat) * rect.height / (edge(map.north) - edge(map.south));
    }
    return x > rect.left + 1 && x < rect.left + rect.width - 1 && y > rect.top + 1 &&
           y < rect.top + rect.height - 1;
}

double Distance(const Stroke& stroke, double x, double y) {
    const double dx = stroke.to.first - stroke.from.first;
    const double dy = stroke.to.second - stroke.from.second;
    const double px = x - stroke.from.first;
    const double py = y - stroke.from.second;
    const double length = dx * dx + dy * dy;
    const double t = length == 0 ? 0 : std::clamp((px * dx + py * dy) / length, 0.0, 1.0);
    return std::hypot(px - t * dx, py - t * dy);
}

// One view of the round's projection and of a random place and size.
void RandomView(std::mt19937& random, std::int16_t projectionNumber) {
    const auto in = [&random](double low, double high) {
        return std::uniform_real_distribution<double>(low, high)(random);
    };
    MapDocument& map = CurrentMap();
    map = {};
    map.projection = projectionNumber;
    if (projectionNumber >= projection::kGlobeSphere) {
        map.south = map.north = random() % 4 == 0 ? 0 : static_cast<float>(in(-89, 89));
        const double centre = in(-180, 180);
        map.west = static_cast<float>(std::remainder(centre - 90, 360));
        map.east = static_cast<float>(std::remainder(centre + 90, 360));
        return;
    }
    const auto kind = random() % 5;
    const double span = kind == 0   ? 360
                        : kind == 1 ? in(240, 359.9)
                                    : std::exp(in(0, std::log(239.0)));
    const double west = in(-180, 180);
    map.west = static_cast<float>(west);
    map.east = span == 360 ? map.west : static_cast<float>(std::remainder(west + span, 360));
    const double most = projectionNumber == projection::kMercator ? 75 : 90;
    const double height = std::min(span / 2, 2 * most);
    const double south = in(-most, most - height);
    map.south = static_cast<float>(south);
    map.north = static_cast<float>(south + height);
    if (span == 360 && projectionNumber == projection::kCartesian) {
        map.south = -90;
        map.north = 90;
    }
}

std::string ViewText() {
    const MapDocument& map = CurrentMap();
    return "projection " + std::to_string(map.projection) + " south " + std::to_string(map.south) +
           " west " + std::to_string(map.west) + " north " + std::to_string(map.north) + " east " +
           std::to_string(map.east);
}

bool Crosses(const Stroke& stroke) {
    const MapRect& rect = mapView.rect;
    const auto [left, right] = std::minmax(stroke.from.first, stroke.to.first);
    const auto [top, bottom] = std::minmax(stroke.from.second, stroke.to.second);
    return right > rect.left && left < rect.left + rect.width && bottom > rect.top &&
           top < rect.top + rect.height;
}

// A stroke of a curve is two degrees of a great circle. Parallels and meridians are drawn in one
// piece on flat maps, parallel to the map's edges.
void ExpectNoLeap(const Strokes& strokes) {
    const MapRect& rect = mapView.rect;
    for (const auto& [pen, list] : strokes) {
        for (const Stroke& stroke : list) {
            const int dx = std::abs(stroke.to.first - stroke.from.first);
            const int dy = std::abs(stroke.to.second - stroke.from.second);
            if (dx == 0 || dy == 0 || !Crosses(stroke)) continue;
            // In a narrow view two degrees may be wider than the map.
            const double twoDegrees = 2 * rect.width / static_cast<double>(mapView.extent.spanLong);
            EXPECT_LE(dx, std::max(rect.width / 2.0, 40 * twoDegrees))
                << ViewText() << " type " << pen.first << " point " << pen.second << " from "
                << stroke.from.first << "," << stroke.from.second << " to " << stroke.to.first
                << "," << stroke.to.second;
        }
    }
}

// Every position of every line that lies well within the view has a stroke of that line near it.
// Returns how many were asked.
int ExpectEveryLine(const Strokes& strokes) {
    int asked = 0;
    for (const MapLine& line : ListLines(1)) {
        // Rise and set lines of the South Node, and only they, aren't drawn: the list lacks them.
        const auto found = strokes.find({line.type, line.type <= 7 ? line.point : 0});
        for (const auto& run : line.runs) {
            for (const LinePosition& position : run) {
                // Solstice boundaries and houses due north and south are drawn as whole meridians.
                if (std::abs(position.lat) > 88) continue;
                double x = 0;
                double y = 0;
                if (!ProjectApart(position.lat, position.longitude, x, y)) continue;
                ++asked;
                double nearest = 1e9;
                if (found != strokes.end()) {
                    for (const Stroke& stroke : found->second) {
                        nearest = std::min(nearest, Distance(stroke, x, y));
                        if (nearest < 2) break;
                    }
                }
                // Positions are drawn in whole arc-minutes and whole pixels.
                const double minute =
                    mapView.rect.width / 60.0 / static_cast<double>(mapView.extent.spanLong);
                if (nearest > 2.5 + 2 * minute) {
                    ADD_FAILURE() << ViewText() << " type " << line.type << " point " << line.point
                                  << " at " << position.lat << " " << position.longitude
                                  << " nearest " << nearest;
                    return asked;
                }
            }
        }
    }
    return asked;
}

TEST_F(UnbrokenLines, NoLineLeapsAndNoneIsMissingInAnyView) {
    constexpr unsigned seed = 4321;
    std::mt19937 random(seed);
    int asked = 0;
    for (int round = 0; round < 100; ++round) {
        RandomView(random, static_cast<std::int16_t>(round % 4));
        RandomChart(random, static_cast<float>(random() % 178) - 89);
        for (std::size_t p = 1; p <= 36; ++p)
            pointSelection[p] = random() % 3 == 0 ? kTrue : kFalse;
        options.lineMode = random() % 2 == 0 ? 1 : 2;
        options.mapZodiac = random() % 6 == 0 ? 1 : 0;
        Draw();
        const Strokes strokes = StrokesByPen(surface_.log);
        ExpectNoLeap(strokes);
        asked += ExpectEveryLine(strokes);
        if (HasFailure()) {
            std::printf("seed %u round %d\n", seed, round);
            break;
        }
    }
    std::printf("seed %u: %d positions in view\n", seed, asked);
    EXPECT_GT(asked, 50000);
}

}  // namespace
}  // namespace orvantis

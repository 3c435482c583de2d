// Lines in views that fit between two samples: a view of a few degrees that is put upon a line by
// vectors shows it, wherever the samples lie, and one beside the line shows nothing.
#include <algorithm>
#include <array>
#include <cmath>
#include <cstdio>
#include <gtest/gtest.h>
#include <random>
#include <string>
#include <utility>
#include <vector>

#include "lines/chart_lines.h"
#include "lines/independent_sky.h"
#include "lines/lines_fixture.h"

namespace orvantis {
namespace {

struct Spot {
    double lat = 0;
    double longitude = 0;
};

Spot SpotOf(const Vec& v) {
    return {std::atan2(v.z, std::hypot(v.x, v.y)) / kRad, std::atan2(v.y, v.x) / kRad};
}

// Part of a great circle, from `from` to `to` degrees: cos s first + sin s second.
struct Arc {
    Vec first;
    Vec second;
    double from = 0;
    double to = 360;

    Vec At(double s) const { return std::cos(s * kRad) * first + std::sin(s * kRad) * second; }
};

// The whole circle 90 degrees from a pole, from its westernmost position as seen from there on.
Arc CircleAround(const Vec& pole) {
    const Vec first = Cross(pole, {0, 0, 1});
    const Vec unit = (1 / Length(first)) * first;
    return {unit, Cross(pole, unit)};
}

// The line from a place towards a direction that isn't the place's own.
Arc Towards(const Vec& place, const Vec& target, double length) {
    const Vec aside = target + -Dot(target, place) * place;
    return {place, (1 / Length(aside)) * aside, 0, length};
}

// Every type that is drawn as a curve, in both flat projections. A globe shows half of the Earth:
// no two degrees of a great circle begin and end behind it and come forth in between.
constexpr int kCurves[] = {3, 4, 7, 8, 9, 10, 11};

class NarrowViews : public LinesOfRealCharts {
  protected:
    // The line of a type on the Earth, by vectors alone: half of the circle from which the body is
    // on the horizon, the circle through the place and where the body is overhead, a direction from
    // the place, the place's horizon, the ecliptic, and the half circle between the ecliptic's
    // poles through a sign's beginning. Curves alone: meridians are drawn in one piece.
    static Arc LineOfType(int type, const IndependentSky& sky, std::size_t p,
                          std::mt19937& random) {
        const Vec body = sky.Under(p);
        const Vec place = OnSphere(sky.lat, sky.longEast);
        const Vec pole = OnSphere(90 - sky.obliquity, 270 - sky.greenwich);
        switch (type) {
            case 3:
            case 4: {
                // At the circle's first position, east or west of the body, the body is due west
                // or east; so it is all along the half on either side.
                const Arc circle = CircleAround(body);
                const Spot at = SpotOf(circle.first);
                const bool rises = Dot(body, EastAt(at.longitude)) > 0;
                const double middle = rises == (type == 3) ? 0 : 180;
                return {circle.first, circle.second, middle - 90, middle + 90};
            }
            case 7:
                return Towards(place, body, 360);
            case 8: {
                const double azimuths[] = {30, 60, 90, 120, 150, 210, 240, 270, 300, 330};
                const double azimuth = azimuths[random() % 10] * kRad;
                return Towards(place,
                               std::cos(azimuth) * NorthAt(sky.lat, sky.longEast) +
                                   std::sin(azimuth) * EastAt(sky.longEast),
                               180);
            }
            case 9:
                return CircleAround(place);
            case 10:
                return CircleAround(pole);
            default: {
                const double signs[] = {0, 30, 60, 120, 150, 180, 210, 240, 300, 330};
                const double longitude = signs[random() % 10] * kRad;
                const Vec aries = OnSphere(0, -sky.greenwich);
                const Vec cancer = Cross(pole, aries);
                return Towards(pole, std::cos(longitude) * aries + std::sin(longitude) * cancer,
                               180);
            }
        }
    }

    // A view of a width in degrees, of the surface's own shape, with a position at a part of it.
    static void ViewOn(const Spot& place, double span, double partX, double partY) {
        MapDocument& map = CurrentMap();
        const auto whole = [](double degrees) {
            return static_cast<float>(std::round(degrees * 60) / 60);
        };
        const double height = span / 2;
        const double west = place.longitude - partX * span;
        const double south = place.lat - partY * height;
        map.west = whole(std::remainder(west, 360));
        map.east = whole(std::remainder(west + span, 360));
        map.south = whole(south);
        map.north = whole(south + height);
    }

    // Round `n`: a random view on or beside a line, and the lines of that type drawn in it. Types,
    // widths of 1 to 3 degrees and projections come by turns.
    struct Round {
        int type = 0;
        Arc line;
        double at = 0;  // the position on the line that the view was put upon
    };
    Round DrawRound(std::mt19937& random, int n, double mostAside) {
        Round round;
        round.type = kCurves[n % 7];
        const double span = n / 7 % 3 + 1;
        CurrentMap() = {};
        CurrentMap().projection = n / 21 % 2 == 0 ? projection::kCartesian : projection::kMercator;
        const auto in = [&random](double low, double high) {
            return std::uniform_real_distribution<double>(low, high)(random);
        };
        constexpr double kMostNorth = 75;
        const float latitudes[] = {0, 12.5F, -33, 51.5F, -66.5F, 70};
        const IndependentSky sky = RandomChart(random, latitudes[random() % 6]);
        const auto p = static_cast<std::size_t>(kSwissBodies[random() % 10][0]);
        pointSelection.fill(kFalse);
        pointSelection[p] = kTrue;
        ShowTypes({static_cast<std::size_t>(round.type)});
        round.line = LineOfType(round.type, sky, p, random);
        Spot place;
        do {
            round.at = in(round.line.from, round.line.to);
            place = SpotOf(round.line.At(round.at));
        } while (std::abs(place.lat) > kMostNorth);
        ViewOn(place, span, 0.5 + in(-mostAside, mostAside), 0.5 + in(-mostAside, mostAside));
        Draw();
        return round;
    }
};

// Edges of the view in degrees, longitudes counted from its west.
bool IsInside(const Spot& place, double margin) {
    const MapDocument& map = CurrentMap();
    const auto edge = [](float degrees) { return static_cast<double>(degrees); };
    const double span = std::remainder(edge(map.east) - edge(map.west), 360.0);
    const double middle = edge(map.west) + span / 2;
    const double aside = std::abs(std::remainder(place.longitude - middle, 360.0));
    return aside < span / 2 - margin / std::cos(place.lat * kRad) &&
           place.lat > edge(map.south) + margin && place.lat < edge(map.north) - margin;
}

// How far what is drawn may lie from the line, degrees: a stroke of 2 degrees is the chord of its
// arc, and departs from it by half of (1 degree)^2 times the tangent of the latitude (J. P. Snyder,
// Map Projections: A Working Manual, chapter 2); positions are drawn in whole arc-minutes and whole
// pixels, and directions due east and west are moved by 0.01 degrees.
double Tolerance(double lat, int type) {
    const double chord = std::abs(std::tan(lat * kRad)) * kRad / 2;
    const double nudge = type == 8 || type == 11 ? 0.01 : 0;
    const double pixel =
        std::abs(static_cast<double>(mapView.extent.spanLong)) / mapView.rect.width;
    return 1.2 * chord + nudge + 0.8 / 60 + 1.5 * pixel;
}

// A place in pixels by the formulas of the projections (J. P. Snyder, the same, 7-1 and 7-2, 12-1
// and 12-2), and back.
double MercatorOf(double lat) {
    return std::log(std::tan((45 + lat / 2) * kRad));
}

struct Frame {
    double west, span, north, south;
    bool mercator;

    Frame() {
        const MapDocument& map = CurrentMap();
        west = static_cast<double>(map.west);
        span = std::remainder(static_cast<double>(map.east) - west, 360.0);
        mercator = map.projection == projection::kMercator;
        north = static_cast<double>(map.north);
        south = static_cast<double>(map.south);
    }
    Spot SpotAt(double x, double y) const {
        const MapRect& rect = mapView.rect;
        const double down = (y - rect.top) / rect.height;
        const double longitude = west + (x - rect.left) / rect.width * span;
        if (!mercator) return {north - down * (north - south), longitude};
        const double m = MercatorOf(north) - down * (MercatorOf(north) - MercatorOf(south));
        return {2 * (std::atan(std::exp(m)) / kRad - 45), longitude};
    }
};

// Positions of what is drawn within the map, half a pixel apart.
std::vector<Spot> DrawnSpots(const RecordingSurface& surface) {
    const Frame frame;
    const MapRect& rect = mapView.rect;
    std::vector<Spot> places;
    std::pair<int, int> at;
    for (const std::string& call : surface.log) {
        if (call == "ClearClip") break;
        const bool draws = call.starts_with("LineTo");
        if (!draws && !call.starts_with("MoveTo")) continue;
        const std::pair<int, int> to = PlaceOfCall(call);
        const double dx = to.first - at.first;
        const double dy = to.second - at.second;
        const double steps = 2 * std::hypot(dx, dy);
        for (double i = 0; draws && i <= steps; ++i) {
            const double x = at.first + dx * i / steps;
            const double y = at.second + dy * i / steps;
            if (x > rect.left && x < rect.left + rect.width && y > rect.top &&
                y < rect.top + rect.height) {
                places.push_back(frame.SpotAt(x, y));
            }
        }
        at = to;
    }
    return places;
}

// Angle between a place and the nearest of a line's positions; a line's ends are open.
double FromLine(const Arc& line, const Spot& place) {
    const Vec v = OnSphere(place.lat, place.longitude);
    const double s = std::atan2(Dot(v, line.second), Dot(v, line.first)) / kRad;
    const double middle = (line.from + line.to) / 2;
    const double half = (line.to - line.from) / 2;
    const double along = std::clamp(std::remainder(s - middle, 360.0), -half, half);
    return AngleBetween(v, line.At(middle + along));
}

// Runs of a line's positions that lie within the view, from and to a parameter, near one of them:
// no view here reaches more than 8 degrees from the position that it was put upon.
std::vector<std::pair<double, double>> RunsInView(const Arc& line, double at, double margin) {
    constexpr double kStep = 0.004;
    constexpr double kReach = 8;
    const bool whole = line.to - line.from >= 360;
    const double from = whole ? at - kReach : std::max(line.from, at - kReach);
    const double to = whole ? at + kReach : std::min(line.to, at + kReach);
    std::vector<std::pair<double, double>> runs;
    bool inside = false;
    for (double s = from; s <= to; s += kStep) {
        const bool now = IsInside(SpotOf(line.At(s)), margin);
        if (now && !inside) runs.emplace_back(s, s);
        if (now) runs.back().second = s;
        inside = now;
    }
    return runs;
}

std::string RoundText(int type, double at) {
    const MapDocument& map = CurrentMap();
    return "type " + std::to_string(type) + " at " + std::to_string(at) + ", projection " +
           std::to_string(map.projection) + " south " + std::to_string(map.south) + " west " +
           std::to_string(map.west) + " north " + std::to_string(map.north) + " east " +
           std::to_string(map.east);
}

TEST_F(NarrowViews, ALineThatCrossesAViewOfAFewDegreesIsDrawn) {
    constexpr unsigned seed = 606;
    std::mt19937 random(seed);
    int betweenSamples = 0;
    int runs = 0;
    for (int n = 0; n < 1260; ++n) {
        const Round round = DrawRound(random, n, 0.45);
        const int type = round.type;
        const std::vector<Spot> drawn = DrawnSpots(surface_);
        std::vector<Vec> vectors;
        vectors.reserve(drawn.size());
        for (const Spot& place : drawn) vectors.push_back(OnSphere(place.lat, place.longitude));
        for (const auto& [from, to] : RunsInView(round.line, round.at, 2.0 / 60)) {
            ++runs;
            // Samples are 2 degrees apart.
            if (to - from < 1) ++betweenSamples;
            for (double s = from; s <= to; s += 0.04) {
                const Vec v = round.line.At(s);
                double nearest = 180;
                for (const Vec& w : vectors) nearest = std::min(nearest, Length(v + -1 * w) / kRad);
                ASSERT_LT(nearest, Tolerance(SpotOf(v).lat, type) + 1.0 / 60)
                    << RoundText(type, s) << ", " << drawn.size() << " drawn, seed " << seed;
            }
        }
    }
    std::printf("seed %u: %d crossings, %d of them of less than a degree\n", seed, runs,
                betweenSamples);
    EXPECT_GT(runs, 1000);
    EXPECT_GT(betweenSamples, 300);
}

TEST_F(NarrowViews, NothingIsDrawnWhereNoLineIs) {
    constexpr unsigned seed = 607;
    std::mt19937 random(seed);
    int empty = 0;
    for (int n = 0; n < 1260; ++n) {
        const Round round = DrawRound(random, n, 1.5);
        const int type = round.type;
        // A point has one line of types 3, 4 and 7; of the others the other lines are near, too.
        const bool alone = type <= 7 || type == 9 || type == 10;
        const std::vector<Spot> drawn = DrawnSpots(surface_);
        if (drawn.empty()) ++empty;
        if (!alone) continue;
        for (const Spot& place : drawn) {
            ASSERT_LT(FromLine(round.line, place), Tolerance(place.lat, type))
                << RoundText(type, round.at) << ", drawn at " << place.lat << " " << place.longitude
                << ", seed " << seed;
        }
    }
    std::printf("seed %u: %d views without a line\n", seed, empty);
    EXPECT_GT(empty, 400);
}

TEST_F(NarrowViews, ACrossingBetweenTwoSamplesHasItsMarksInTheFrame) {
    constexpr unsigned seed = 608;
    std::mt19937 random(seed);
    int compared = 0;
    for (int n = 0; n < 840; ++n) {
        const Round round = DrawRound(random, n, 0.4);
        const int type = round.type;
        if (type == 8 || type == 11) continue;  // twelve lines in one view
        // Where the line comes in and goes out well apart, and no corner or side is grazed.
        const auto within = RunsInView(round.line, round.at, 3.0 / 60);
        const auto beyond = RunsInView(round.line, round.at, -3.0 / 60);
        if (within.size() != 1 || beyond.size() != 1) continue;
        if (within[0].first - beyond[0].first > 0.3 || beyond[0].second - within[0].second > 0.3) {
            continue;
        }
        // A line that begins or ends within the view doesn't cross the frame there.
        if (round.line.to - round.line.from < 360 &&
            (beyond[0].first < round.line.from + 1 || beyond[0].second > round.line.to - 1)) {
            continue;
        }
        ++compared;
        EXPECT_EQ(mapView.edgeMarks.size(), 2U) << RoundText(type, round.at) << ", seed " << seed;
        EXPECT_TRUE(chartLines.anyVisible) << RoundText(type, round.at);
        const Frame frame;
        for (const EdgeMark& mark : mapView.edgeMarks) {
            EXPECT_EQ(mark.type, type);
            EXPECT_LT(FromLine(round.line, frame.SpotAt(mark.x, mark.y)),
                      Tolerance(frame.north, type))
                << RoundText(type, round.at);
        }
    }
    std::printf("seed %u: %d views with a line across\n", seed, compared);
    EXPECT_GT(compared, 200);
}

TEST_F(NarrowViews, LinesThatOnlyPassBetweenSamplesAreNotAskedAbout) {
    // The Midheaven at right ascension 0 and the place at longitude 0: a body of right ascension
    // 270 on the equator rises along the meridian of 180 degrees and sets along that of 0; its
    // samples stand at even latitudes.
    Place(1, 270, 0);
    ShowTypes({4});
    View(10.4F, -0.5F, 11.6F, 0.5F);
    chartLines.askedByUser = kTrue;
    Draw();
    EXPECT_TRUE(chartLines.anyVisible);
    EXPECT_EQ(mapView.edgeMarks.size(), 2U);
    // No question was put: there is no shell to answer it.
    EXPECT_EQ(session.ChartNumber, 1);
}

}  // namespace
}  // namespace orvantis

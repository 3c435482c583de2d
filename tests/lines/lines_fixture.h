// A chart and a map of 720 by 400 pixels on which its lines are drawn and recorded.
#pragma once

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdio>
#include <gtest/gtest.h>
#include <initializer_list>
#include <string>
#include <utility>
#include <vector>

#include "charts/CALCCHRT.h"
#include "charts/SwissEph.h"
#include "lines/chart_lines.h"
#include "lines/line_geometry.h"
#include "map/map_document.h"
#include "map/plot.h"
#include "map/projection.h"
#include "session/session_state.h"
#include "session/settings.h"
#include "support/paths.h"
#include "support/recording_surface.h"
#include "support/reset_all.h"

namespace orvantis {

class LinesOnASurface : public ::testing::Test {
  protected:
    static constexpr int kWidth = 720;
    static constexpr int kHeight = 400;

    void SetUp() override {
        ResetAll();
        session.picture = &surface_;
        session.ChartNumber = 1;
        calcChart[1] = {};
        calcChart[1].Lon.fill(-1);
        calcChart[1].JulianDayET = 2451545;
        plotChartLines = PlotChartLines;
    }

    static CalcChart& Chart() { return calcChart[1]; }

    // Puts a point in the sky and selects it. The Midheaven stands at right ascension 0 and the
    // place at longitude 0 unless a test says otherwise.
    static void Place(std::size_t p, float ra, float dec) {
        calcChart[1].Lon[p] = 0;
        calcChart[1].RA[p] = ra;
        calcChart[1].Dec[p] = dec;
        pointSelection[p] = kTrue;
    }

    // Sets up the current map's view on the surface without any plot.
    void SetView() {
        mapView.surface = &surface_;
        SetViewExtent();
        SetMapRect(false, surface_);
        if (!IsFlat(mapView.extent.projection)) OpenMapFrame();
        surface_.log.clear();
    }

    // Draws all lines anew in the current view; the record holds this plot alone.
    void Draw() {
        SetView();
        PlotChartLines(kFalse, kTrue, 1);
    }

    static void ShowTypes(std::initializer_list<std::size_t> types) {
        for (LineStyle& style : settings.lineStyle) style.displayed = kFalse;
        for (const std::size_t type : types) settings.lineStyle[type].displayed = kTrue;
    }

    static void View(float south, float west, float north, float east) {
        MapDocument& map = CurrentMap();
        map.south = south;
        map.west = west;
        map.north = north;
        map.east = east;
    }

    // A globe with its centre at a position.
    static void Globe(float lat, float longitude, std::int16_t projectionNumber) {
        CurrentMap().projection = projectionNumber;
        const auto turned = [longitude](int by) {
            return static_cast<float>(std::remainder(longitude + by, 360.0));
        };
        View(lat, turned(-90), lat, turned(90));
    }

    RecordingSurface surface_{kWidth, kHeight};
};

// The same for charts that are calculated, with the system's ephemeris files.
class LinesOfRealCharts : public LinesOnASurface {
  protected:
    void SetUp() override {
        LinesOnASurface::SetUp();
        OpenSwissEphemeris(kEphemeris, "");
    }
    void TearDown() override { CloseSwissEphemeris(); }
};

// The two numbers of a call such as "LineTo 10 20".
inline std::pair<int, int> PlaceOfCall(const std::string& call) {
    int x = 0;
    int y = 0;
    EXPECT_EQ(std::sscanf(call.c_str(), "%*s %d %d", &x, &y), 2) << call;
    return {x, y};
}

// Pixels of a position in degrees.
inline std::pair<int, int> PixelsOf(double lat, double longitude) {
    std::int16_t x = 0;
    std::int16_t y = 0;
    ProjectPoint(static_cast<std::int16_t>(std::lround(lat * 60)),
                 static_cast<std::int16_t>(std::lround(longitude * 60)), y, x);
    return {x, y};
}

// A line without the positions that it has at a pole between two of its samples; of the two at a
// pole that is a sample itself the first stays.
inline std::vector<LinePosition> SamplesOf(const std::vector<LinePosition>& line) {
    std::vector<LinePosition> samples;
    for (std::size_t i = 0; i < line.size(); ++i) {
        if (i > 0 && i + 1 < line.size() && IsTurnAtPole(line[i], line[i + 1])) {
            if (std::abs(std::abs(line[i - 1].lat) - 88) < 1e-6) samples.push_back(line[i]);
            ++i;
        } else {
            samples.push_back(line[i]);
        }
    }
    return samples;
}

// No two neighbours of a line's runs are the same, none is alone, none crosses the antimeridian,
// where each run goes on from the one before it, and none goes over a pole but at the pole itself:
// beside it two degrees of a great circle turn by less than half a circle.
inline void ExpectWellCut(const LineParts& parts, const std::string& what) {
    LinePosition last;
    bool first = true;
    for (const auto& run : parts) {
        EXPECT_GE(run.size(), 2U) << what;
        if (!first) {
            EXPECT_EQ(std::abs(run[0].longitude), 180) << what;
            EXPECT_EQ(run[0].longitude, -last.longitude) << what;
            EXPECT_EQ(run[0].lat, last.lat) << what;
        }
        for (std::size_t i = 1; i < run.size(); ++i) {
            const double step = std::abs(run[i].longitude - run[i - 1].longitude);
            EXPECT_GT(std::max(step, std::abs(run[i].lat - run[i - 1].lat)), 1e-8)
                << what << " at " << run[i].lat << " " << run[i].longitude;
            EXPECT_LT(step, IsTurnAtPole(run[i - 1], run[i]) ? 180 + 1e-6 : 180 - 1e-6)
                << what << " at " << run[i].lat << " " << run[i].longitude;
        }
        last = run[run.size() - 1];
        first = false;
    }
}

// The strokes of a record are parts of two meridians, by their longitudes in degrees, on a flat map
// of the whole world, and reach from its top to its bottom on each.
inline void ExpectMeridians(const std::vector<std::string>& calls, double one, double other,
                            const std::string& what) {
    const std::array<int, 2> x = {PixelsOf(0, one).first, PixelsOf(0, other).first};
    std::array<int, 2> top = {32767, 32767};
    std::array<int, 2> bottom = {0, 0};
    std::pair<int, int> at;
    for (const std::string& call : calls) {
        const std::pair<int, int> to = PlaceOfCall(call);
        ASSERT_TRUE(to.first == x[0] || to.first == x[1]) << what << ": " << call;
        if (call.starts_with("LineTo")) {
            ASSERT_EQ(to.first, at.first) << what << ": " << call;
        }
        const std::size_t which = to.first == x[0] ? 0 : 1;
        top[which] = std::min(top[which], to.second);
        bottom[which] = std::max(bottom[which], to.second);
        at = to;
    }
    for (const std::size_t which : {0, 1}) {
        EXPECT_EQ(top[which], mapView.rect.top) << what;
        EXPECT_EQ(bottom[which], mapView.rect.top + mapView.rect.height) << what;
    }
}

// The calls of a record that move the pen or draw with it.
inline std::vector<std::string> PenCalls(const RecordingSurface& surface) {
    std::vector<std::string> calls;
    for (const std::string& call : surface.log) {
        if (call.starts_with("MoveTo") || call.starts_with("LineTo")) calls.push_back(call);
    }
    return calls;
}

// Pen calls from `at` on are those of a curve through each of the samples in their order, on a flat
// map of the whole world; where its seam lies between two, the line goes out at one side and comes
// in at the other. `at` moves behind them.
inline void ExpectCurve(const std::vector<std::string>& calls, std::size_t& at,
                        const std::vector<LinePosition>& samples) {
    const MapRect& rect = mapView.rect;
    for (std::size_t i = 0; i < samples.size(); ++i) {
        const auto [x, y] = PixelsOf(samples[i].lat, samples[i].longitude);
        std::string expected = i == 0 ? "MoveTo " : "LineTo ";
        expected.append(std::to_string(x)).append(" ").append(std::to_string(y));
        ASSERT_LT(at, calls.size()) << "sample " << i;
        if (i > 0 && calls[at] != expected) {
            ASSERT_LT(at + 2, calls.size()) << "sample " << i;
            const int out = PlaceOfCall(calls[at]).first;
            EXPECT_TRUE(calls[at].starts_with("LineTo"));
            EXPECT_TRUE(out <= rect.left || out >= rect.left + rect.width) << calls[at];
            EXPECT_TRUE(calls[at + 1].starts_with("MoveTo"));
            at += 2;
        }
        ASSERT_EQ(calls[at], expected) << "sample " << i;
        ++at;
    }
}

// The same of a meridian: from the map's top to its bottom.
inline void ExpectMeridian(const std::vector<std::string>& calls, std::size_t& at,
                           double longitude) {
    const MapRect& rect = mapView.rect;
    const std::string x = std::to_string(PixelsOf(0, longitude).first);
    ASSERT_LT(at + 1, calls.size());
    EXPECT_EQ(calls[at], "MoveTo " + x + " " + std::to_string(rect.top));
    EXPECT_EQ(calls[at + 1], "LineTo " + x + " " + std::to_string(rect.top + rect.height));
    at += 2;
}

// Where a mark at the left or right side of a map of the whole world stands, degrees.
inline LinePosition PositionOfSideMark(const EdgeMark& mark) {
    const MapRect& rect = mapView.rect;
    return {90 - (mark.y - rect.top) * 180.0 / rect.height,
            mark.side == side::kLeft ? -180.0 : 180.0};
}

}  // namespace orvantis

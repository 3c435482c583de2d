// A chart and a map of 720 by 400 pixels on which its lines are drawn and recorded.
#pragma once

#include <cmath>
#include <cstdio>
#include <gtest/gtest.h>
#include <initializer_list>
#include <string>
#include <utility>
#include <vector>

#include "charts/CALCCHRT.h"
#include "lines/chart_lines.h"
#include "map/map_document.h"
#include "map/plot.h"
#include "map/projection.h"
#include "session/session_state.h"
#include "session/settings.h"
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

}  // namespace orvantis

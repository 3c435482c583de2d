// The lines of a chart in views of most of the world: whatever the view leaves out lies behind it,
// and no line is drawn across the map to get there.
#include <algorithm>
#include <cstdlib>
#include <gtest/gtest.h>
#include <random>
#include <sstream>

#include "charts/CALCCHRT.h"
#include "lines/chart_lines.h"
#include "map/map_document.h"
#include "map/plot.h"
#include "map/projection.h"
#include "session/session_state.h"
#include "session/settings.h"
#include "support/recording_surface.h"
#include "support/reset_all.h"
#include "text/numbers.h"

namespace orvantis {
namespace {

class WideViews : public ::testing::Test {
  protected:
    void SetUp() override {
        ResetAll();
        session.picture = &surface_;
        session.ChartNumber = 1;
        calcChart[1].Lon.fill(-1);
        calcChart[1].JulianDayET = 2451545;
    }
    void TearDown() override { ResetAll(); }

    // A chart of ten points anywhere between the tropics, and a place.
    static void MakeChart(std::mt19937& random) {
        std::uniform_real_distribution<float> angle(0, 360);
        std::uniform_real_distribution<float> dec(-24, 24);
        for (std::size_t p = 1; p <= 10; ++p) {
            calcChart[1].Lon[p] = angle(random);
            calcChart[1].RA[p] = angle(random);
            calcChart[1].Dec[p] = dec(random);
            pointSelection[p] = kTrue;
        }
    }

    // Sets up the current map's view on the surface, draws the lines and returns the length across
    // of the longest stroke in pixels.
    int LongestStroke() {
        mapView.surface = &surface_;
        SetViewExtent();
        SetMapRect(false, surface_);
        surface_.log.clear();
        PlotChartLines(kFalse, kTrue, 1);
        int longest = 0;
        int pen = 0;
        for (const std::string& call : surface_.log) {
            std::istringstream text(call);
            std::string word;
            int x = 0;
            text >> word >> x;
            if (word != "MoveTo" && word != "LineTo") continue;
            if (word == "LineTo") longest = std::max(longest, std::abs(x - pen));
            pen = x;
            ++strokes_;
        }
        return longest;
    }

    RecordingSurface surface_{1000, 600};
    int strokes_ = 0;
};

TEST_F(WideViews, NoLineOfAChartLeapsAcrossTheMap) {
    const unsigned seed = 2718;
    std::mt19937 random(seed);
    std::uniform_real_distribution<float> edge(-180, 180);
    std::uniform_real_distribution<float> span(200, 360);
    for (int n = 0; n < 120; ++n) {
        MakeChart(random);
        MapDocument& map = CurrentMap();
        map.projection = n % 2 == 0 ? projection::kCartesian : projection::kMercator;
        map.south = n % 2 == 1 ? -85 : n % 4 == 0 ? -90 : 15;
        map.north = n % 2 == 1 ? 85 : 90;
        map.west = edge(random);
        const float width = n % 10 == 0 ? 359.995F : span(random);
        map.east = static_cast<float>(Modulo(map.west + width + 180, 360) - 180);
        const int longest = LongestStroke();
        // No sample lies more than half a turn from the one before.
        EXPECT_LE(2 * longest, mapView.rect.width * 360 / mapView.extent.spanLong + 2)
            << "seed " << seed << ", view " << n << ": " << map.west << " to " << map.east;
    }
    EXPECT_GT(strokes_, 50000);
}

// Away from the poles a sample lies near the one before, and so must every stroke end.
TEST_F(WideViews, LinesBetweenTheTropicsAreMadeOfShortStrokes) {
    const unsigned seed = 31;
    std::mt19937 random(seed);
    std::uniform_real_distribution<float> edge(-180, 180);
    std::uniform_real_distribution<float> span(200, 360);
    for (int n = 0; n < 60; ++n) {
        MakeChart(random);
        MapDocument& map = CurrentMap();
        map.south = -30;
        map.north = 30;
        map.west = edge(random);
        const float width = n % 10 == 0 ? 359.995F : span(random);
        map.east = static_cast<float>(Modulo(map.west + width + 180, 360) - 180);
        const int longest = LongestStroke();
        // Two degrees of a circle that reaches at least 66 degrees are at most 3 of longitude below
        // 32 degrees of latitude.
        EXPECT_LE(longest, mapView.rect.width * 3 / mapView.extent.spanLong + 2)
            << "seed " << seed << ", view " << n << ": " << map.west << " to " << map.east;
    }
    EXPECT_GT(strokes_, 5000);
}

}  // namespace
}  // namespace orvantis

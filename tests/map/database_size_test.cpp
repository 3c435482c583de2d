// Databases of no line, of one, and of as many as can be counted: loaded and plotted in every
// projection.
#include "map/map_fixture.h"
#include "text/run_time_error.h"

namespace orvantis {
namespace {

class DatabaseSizeTest : public MapTest {
  protected:
    // Pixels of the outline's colour that a plot sets, in all four projections.
    void ExpectPlots(std::size_t moves) {
        surface.recording = true;
        CurrentMap().hidden.fill(kFalse);
        for (std::int16_t number = 0; number < 4; ++number) {
            MapDocument& map = CurrentMap();
            map.projection = number;
            map.south = number < 2 ? -60.0F : 0;
            map.north = number < 2 ? 60.0F : 0;
            map.west = -90;
            map.east = 90;
            surface.log.clear();
            options.holdRefresh = kTrue;
            mapView.surface = &surface;
            SetViewExtent();
            SetMapRect(false, surface);
            surface.log.clear();
            PlotVectors(kFalse);
            EXPECT_EQ(surface.Calls("MoveTo").size(), moves) << number;
            EXPECT_EQ(surface.Calls("LineTo").size(), moves) << number;
        }
        EXPECT_TRUE(TestShell().boxes.empty());
        EXPECT_EQ(PendingRunTimeError(), 0);
    }
};

TEST_F(DatabaseSizeTest, DatabaseOfNoLinePlotsNothing) {
    MakeDatabase();
    EXPECT_EQ(pointDatabase.count, 0);
    ExpectPlots(0);
}

TEST_F(DatabaseSizeTest, DatabaseOfOneLinePlotsIt) {
    AddLine(7001, {{5, 0, 0}, {5, 600, 1200}});
    MakeDatabase();
    EXPECT_EQ(pointDatabase.count, 1);
    EXPECT_EQ(pointDatabase.ClassRange[7].first, 1);
    EXPECT_EQ(pointDatabase.ClassRange[7].last, 1);
    ExpectPlots(1);
}

TEST_F(DatabaseSizeTest, DatabaseOfAsManyLinesAsCanBeCountedPlotsThemAll) {
    for (int line = 0; line < 32767; ++line) {
        AppendLine(level1, static_cast<std::int16_t>(line < 20000 ? 1001 : 7001), "",
                   {{5, 0, 0}, {5, 600, 1200}});
    }
    MakeDatabase();
    EXPECT_EQ(pointDatabase.count, 32767);
    EXPECT_EQ(pointDatabase.ClassRange[1].last, 20000);
    EXPECT_EQ(pointDatabase.ClassRange[7].last, 32767);
    ExpectPlots(32767);
}

}  // namespace
}  // namespace orvantis

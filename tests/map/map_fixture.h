// What the tests of the map share: a folder with a small database of their own, and a surface on
// which one pixel of the world map is one degree.
#pragma once

#include <gtest/gtest.h>
#include <string>
#include <string_view>
#include <vector>

#include "map/map_document.h"
#include "map/plot.h"
#include "map/point_database.h"
#include "map/projection.h"
#include "session/session_state.h"
#include "session/settings.h"
#include "support/recording_surface.h"
#include "support/reset_all.h"
#include "support/temp_folder.h"

namespace orvantis {

/// The surface's glyphs measure 7 by 13, which with the extra annotation makes a frame of 24 and 40
/// pixels: the map is 360 by 180 pixels with its top left at (25, 39).
inline constexpr int kSurfaceWidth = 409;
inline constexpr int kSurfaceHeight = 258;

class MapTest : public testing::Test {
  protected:
    void SetUp() override {
        ResetAll();
        session.ProgramDir = folder.Path();
        session.UserDataPath = folder.Path();
        session.picture = &surface;
        settings.mapBackColour = 0x00C800;
        settings.specialFillColour = 0xFF8040;
    }
    void TearDown() override { ResetAll(); }

    /// Appends a line to the level 1 file in the making.
    void AddLine(std::int16_t code, const std::vector<LinePoint>& points) {
        AppendLine(level1, code, "line " + std::to_string(code), points);
    }

    /// Writes the lines added so far as a database and loads its index.
    void MakeDatabase() {
        folder.Write("level1.pnt", level1);
        ASSERT_EQ(GenerateLevels(LevelPath(1), kFirstUseText), kFalse);
        ASSERT_EQ(LoadLineIndex(), kFalse);
    }

    /// Gives the current document these edges and sets the view up on the surface.
    void SetView(float south, float west, float north, float east, std::int16_t projectionNumber) {
        MapDocument& document = CurrentMap();
        document.south = south;
        document.west = west;
        document.north = north;
        document.east = east;
        document.projection = projectionNumber;
        mapView.surface = &surface;
        SetViewExtent();
        SetMapRect(false, surface);
        if (projectionNumber == projection::kGlobeSphere) OpenMapFrame();
        surface.log.clear();
    }

    TempFolder folder;
    RecordingSurface surface{kSurfaceWidth, kSurfaceHeight};
    Bytes level1;
};

}  // namespace orvantis

// Any bytes as a map document: opened, plotted as they say, unprojected, saved again, zoomed out of
// and given other options. Floods are what such a file may cost, so a plot that makes more than it
// should counts as a crash.
#include <cstdlib>

#include "map/fills.h"
#include "map/map_document.h"
#include "map/plot.h"
#include "map/view_ring.h"
#include "map_fuzz_folder.h"
#include "null_surface.h"
#include "session/map_dialogs.h"
#include "support/reset_all.h"

namespace {

// Floods of a plot besides those of the file: the surround, and four corners.
constexpr int kOtherFloods = 5;

class FloodSurface : public orvantis::NullSurface {
  public:
    bool FloodFill(int /*x*/, int /*y*/, orvantis::Colour /*colour*/,
                   orvantis::Colour /*border*/) override {
        if (++floods > orvantis::kMostFloods + kOtherFloods) std::abort();
        return true;
    }
    int floods = 0;
};

void Plot(orvantis::Flag printing, orvantis::Flag redraw) {
    FloodSurface surface;
    orvantis::PlotMap4(printing, surface, redraw);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace orvantis;
    ResetAll();
    session.ProgramDir = FuzzFolder();
    session.UserDataPath = FuzzFolder();
    static const bool database = (WriteSoundDatabase(), true);
    if (database) LoadLineIndex();

    WriteFuzzFile("map.ovm", data, size);
    if (OpenMap(FuzzFolder() + "map.ovm", kFalse) != kFalse) return 0;
    Plot(kFalse, kTrue);
    Plot(kFalse, kFalse);
    Plot(kTrue, kFalse);
    float lat = 0;
    float longitude = 0;
    UnprojectPoint(CurrentMap(), 200, 150, lat, longitude);
    for (std::int16_t number = 0; number < 4; ++number) {
        ChangeProjection(number, CurrentMap().projection);
        CurrentMap().projection = number;
        Plot(kFalse, kTrue);
    }
    SaveMap(FuzzFolder() + "saved.ovm");

    // The views that follow from it, and the dialog that changes it.
    ZoomOut();
    Plot(kFalse, kTrue);
    PreviousView();
    MapDocument edited = OpenMapOptions();
    edited.projection = static_cast<std::int16_t>((edited.projection + 1) % 4);
    AcceptMapOptions(edited);
    Plot(kFalse, kTrue);
    return 0;
}

// Any bytes as level1.pnt: thinned, indexed, and plotted in every projection at every level.
#include "map/plot.h"
#include "map/point_database.h"
#include "map_fuzz_folder.h"
#include "null_surface.h"
#include "support/reset_all.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace orvantis;
    ResetAll();
    session.ProgramDir = FuzzFolder();
    session.UserDataPath = FuzzFolder();
    WriteFuzzFile("level1.pnt", data, size);
    if (GenerateLevels(FuzzFolder() + "level1.pnt", kFirstUseText) != kFalse) return 0;
    LoadLineIndex();
    LineCodeSummary();

    NullSurface surface;
    CurrentMap().hidden.fill(kFalse);
    for (std::int16_t number = 0; number < 4; ++number) {
        CurrentMap().projection = number;
        CurrentMap().precision = static_cast<std::int16_t>(1 + number);
        PlotMap4(kFalse, surface, kTrue);
    }
    CurrentMap().projection = projection::kCartesian;
    CurrentMap().west = 170;
    CurrentMap().east = -170;
    PlotMap4(kFalse, surface, kTrue);
    return 0;
}

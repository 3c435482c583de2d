// Any bytes as a map document: opened, plotted as they say, unprojected, and saved again.
#include "map/map_document.h"
#include "map/plot.h"
#include "map_fuzz_folder.h"
#include "null_surface.h"
#include "support/reset_all.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace orvantis;
    ResetAll();
    session.ProgramDir = FuzzFolder();
    session.UserDataPath = FuzzFolder();
    static const bool database = (WriteSoundDatabase(), true);
    if (database) LoadLineIndex();

    NullSurface surface;
    WriteFuzzFile("map.ovm", data, size);
    if (OpenMap(FuzzFolder() + "map.ovm", kFalse) != kFalse) return 0;
    PlotMap4(kFalse, surface, kTrue);
    PlotMap4(kFalse, surface, kFalse);
    PlotMap4(kTrue, surface, kFalse);
    float lat = 0;
    float longitude = 0;
    UnprojectPoint(CurrentMap(), 200, 150, lat, longitude);
    for (std::int16_t number = 0; number < 4; ++number) {
        ChangeProjection(number, CurrentMap().projection);
        CurrentMap().projection = number;
        PlotMap4(kFalse, surface, kTrue);
    }
    SaveMap(FuzzFolder() + "saved.ovm");
    return 0;
}

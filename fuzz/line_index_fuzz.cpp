// Any bytes as levelx.ndx beside sound level files: loaded as they stand, and plotted at a coarse
// level; then plotted in every projection, with the class ranges that follow from them alone.
#include <algorithm>

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
    static const bool database = (WriteSoundDatabase(), true);
    WriteFuzzFile("levelx.ndx", data, size);
    const std::string index = FuzzFolder() + "levelx.ndx";
    std::filesystem::last_write_time(
        index, std::filesystem::last_write_time(LevelPath(5)) + std::chrono::seconds(1));
    if (database) LoadLineIndex();

    NullSurface surface;
    CurrentMap().hidden.fill(kFalse);
    PlotMap4(kFalse, surface, kTrue);

    // The same entries, the first of a longer file alone.
    const std::size_t lines = std::min<std::size_t>(size / kLineIndexEntrySize, 1000);
    pointDatabase = {};
    pointDatabase.LineIndex.resize(lines + 1);
    for (std::size_t line = 1; line <= lines; ++line) {
        pointDatabase.LineIndex[line] = GetLineIndexEntry(data + (line - 1) * kLineIndexEntrySize);
    }
    pointDatabase.count = static_cast<std::int16_t>(lines);
    BuildClassRanges();
    for (std::int16_t number = 0; number < 4; ++number) {
        CurrentMap().projection = number;
        PlotMap4(kFalse, surface, kTrue);
    }
    LineCodeSummary();
    return 0;
}

// Any bytes as a chart file: opened under every way of telling the type, every chart read and
// brought to the format 1 record, and the first one calculated.
#include <algorithm>
#include <cstdlib>

#include "charts/CALCCHRT.h"
#include "charts/KVCharts.h"
#include "charts/SwissEph.h"
#include "map_fuzz_folder.h"
#include "support/reset_all.h"

namespace {

using namespace orvantis;

// Through the bytes of the record, so that every number that a record holds comes by.
void Convert(const FileChart& fileChart, bool calculate) {
    Format1Record record;
    ChartToFormat1(fileChart, record);
    Bytes bytes(static_cast<std::size_t>(kFormat1Size));
    PutFormat1Record(bytes.data(), record);
    // The library takes milliseconds with sanitizers on.
    if (!calculate) return;
    FileChartToCalcChart(GetFormat1Record(bytes.data()), 1, kFalse);
    CalcAnglesForPlace(1);
}

void ReadAll(std::string_view path, Flag forceLegacy) {
    std::int32_t count = 0;
    const FileHandle file = OpenChartFile(path, count, forceLegacy);
    const std::int16_t type = currentChartFileType;
    if (file == 0) return;
    if (count < 0 || count > FileLength(file) / kFormat1Size) std::abort();
    ChartFileDescription(type, file);

    FileChart fileChart;
    for (std::int32_t n = 0; n <= count + 1; ++n) {
        RunTimeError ignored;
        TakeRunTimeError(ignored);
        const bool read = ReadChart(type, file, n, fileChart);
        if (read && (n < 1 || n > count)) std::abort();
        if (read) Convert(fileChart, n == 1);
    }
    CloseChartFile(type, file);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    ResetAll();
    // The library is opened once; its state is no part of what a reset forgets.
    static const SwissState opened = [] {
        OpenSwissEphemeris("/usr/share/libswe/ephe", "");
        return swissState;
    }();
    swissState = opened;

    WriteFuzzFile("fuzz.cht", data, size);
    ReadAll(FuzzFolder() + "fuzz.cht", kFalse);
    ReadAll(FuzzFolder() + "fuzz.cht", kTrue);
    return 0;
}

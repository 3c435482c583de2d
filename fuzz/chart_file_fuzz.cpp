// Any bytes as a chart file: opened under every way of telling the type, every chart read and
// brought to the format 1 record, and the first one calculated. What can be loaded whole is saved
// as every type and loaded again.
#include <algorithm>
#include <cstdlib>
#include <iterator>

#include "charts/CALCCHRT.h"
#include "charts/KVCharts.h"
#include "charts/SwissEph.h"
#include "charts/chart_lists.h"
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
    const bool listed = type == chart_file::kFormat3;
    const std::int64_t most =
        listed ? std::ssize(openChartLists[0].charts) : FileLength(file) / kFormat1Size;
    if (count < 0 || count > most) std::abort();
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

void ForgetErrors() {
    RunTimeError ignored;
    TakeRunTimeError(ignored);
}

// A list that was saved comes back with all of its charts; one that can't be saved is told.
void SaveAndLoad(const ChartList& list, std::int16_t type) {
    const std::string path = FuzzFolder() + "saved.cht";
    ChartList saved = list;
    TestShell().boxes.clear();
    if (!SaveChartFile(path, type, saved)) {
        if (TestShell().boxes.size() != 1) std::abort();
        return;
    }
    ChartList again;
    const std::size_t kept = type == chart_file::kBlocks ? 0 : list.charts.size();
    const bool loaded = LoadChartList(path, again, kFalse);
    // A file of type 0 is told by its first name, which may look like a version; -1 has a name of
    // its own kind.
    const bool told = type > 0 && loaded;
    if (type > 0 && !loaded) std::abort();
    if (told && again.charts.size() != kept) std::abort();
    if (type != chart_file::kFormat3 || !told) return;
    for (std::size_t i = 0; i < kept; ++i) {
        if (again.charts[i].comment != list.charts[i].comment) std::abort();
        if (again.charts[i].attachments.size() != list.charts[i].attachments.size()) std::abort();
    }
}

void LoadAndSave(std::string_view path, std::size_t size) {
    ChartList list;
    const bool loaded = LoadChartList(path, list, kFalse);
    if (!loaded && (PendingRunTimeError() == 0 || !list.charts.empty())) std::abort();
    ForgetErrors();
    if (!loaded) return;
    // One type a run: to bring a file to the disk takes a millisecond.
    SaveAndLoad(list, static_cast<std::int16_t>(static_cast<int>(size % 5) - 1));
    ForgetErrors();
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
    WriteFuzzFile("fuzz", data, size);  // the same bytes as its comments
    LoadAndSave(FuzzFolder() + "fuzz.cht", size);
    return 0;
}

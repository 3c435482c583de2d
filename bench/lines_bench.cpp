// What the lines of a chart cost: as a list, and drawn. Their yardstick is the copying of one
// stored image of the same size, which every quick pass begins with.
#include <benchmark/benchmark.h>
#include <filesystem>
#include <random>
#include <string>
#include <unistd.h>

#include "charts/CALCCHRT.h"
#include "lines/chart_lines.h"
#include "lines/line_list.h"
#include "map/map_document.h"
#include "map/plot.h"
#include "raster/image_surface.h"
#include "raster/qt_gui.h"
#include "session/driver.h"
#include "session/session_state.h"
#include "session/settings.h"
#include "surface/null_shell.h"

namespace {

using namespace orvantis;
namespace fs = std::filesystem;

// A chart with 36 points and 36 stars, all selected, and every line type on. The stars are put all
// over the sky by a fixed seed.
class FullChart {
  public:
    FullChart()
        : folder_(fs::temp_directory_path() / ("orvantis-lines-" + std::to_string(getpid()))) {
        StartPaths paths = SystemPaths();
        paths.programDir = folder_.string();
        paths.config = folder_.string();
        paths.shippedData = ORVANTIS_DATA;
        StartSession(paths, shell_);
        EnsureQtGui();
        LoadDatabase();
        session.picture = &surface_;
        NewMap(kFalse);
        RunTimeError reason;
        OpenChart(std::string(ORVANTIS_DATA) + "/sample.cht", 1, reason);
        std::mt19937 random(37);
        CalcChart& chart = calcChart[1];
        for (std::size_t p = 1; p <= 72; ++p) {
            pointSelection[p] = kTrue;
            if (p < 37 && chart.Lon[p] >= 0) continue;
            chart.Lon[p] = std::uniform_real_distribution<double>(0, 360)(random);
            chart.RA[p] = std::uniform_real_distribution<float>(0, 360)(random);
            chart.Dec[p] = std::uniform_real_distribution<float>(-80, 80)(random);
        }
        ShowAllTypes();
        NewMap(kFalse);
        PlotMap4(kFalse, surface_, kTrue);
    }
    ~FullChart() {
        std::error_code ignored;
        fs::remove_all(folder_, ignored);
    }
    FullChart(const FullChart&) = delete;
    FullChart& operator=(const FullChart&) = delete;

    static void ShowAllTypes() { ShowTypesTo(11); }
    static void ShowTypesTo(std::size_t last) {
        for (std::size_t type = 1; type <= 11; ++type) {
            settings.lineStyle[type].displayed = type <= last ? kTrue : kFalse;
        }
    }
    ImageSurface& Surface() { return surface_; }

  private:
    fs::path folder_;
    NullShell shell_;
    ImageSurface surface_{1920, 1080};
};

FullChart& TheChart() {
    static FullChart chart;
    return chart;
}

void ShowOneType(std::size_t shown) {
    for (std::size_t type = 1; type <= 11; ++type) {
        settings.lineStyle[type].displayed = type == shown ? kTrue : kFalse;
    }
}

void ListingAllLinesOf72Points(benchmark::State& state) {
    TheChart();
    FullChart::ShowAllTypes();
    for ([[maybe_unused]] auto _ : state) benchmark::DoNotOptimize(ListLines(1));
}
BENCHMARK(ListingAllLinesOf72Points)->Unit(benchmark::kMillisecond);

void ListingLinesOfType(benchmark::State& state) {
    TheChart();
    ShowOneType(static_cast<std::size_t>(state.range(0)));
    for ([[maybe_unused]] auto _ : state) benchmark::DoNotOptimize(ListLines(1));
}
BENCHMARK(ListingLinesOfType)->DenseRange(1, 11)->Unit(benchmark::kMillisecond);

// As many as a chart has without stars.
class Without36Stars {
  public:
    Without36Stars() { Select(kFalse); }
    ~Without36Stars() { Select(kTrue); }
    Without36Stars(const Without36Stars&) = delete;
    Without36Stars& operator=(const Without36Stars&) = delete;

  private:
    static void Select(Flag flag) {
        for (std::size_t p = 37; p <= 72; ++p) pointSelection[p] = flag;
    }
};

void ListingAllLinesOf36Points(benchmark::State& state) {
    TheChart();
    FullChart::ShowAllTypes();
    const Without36Stars without;
    for ([[maybe_unused]] auto _ : state) benchmark::DoNotOptimize(ListLines(1));
}
BENCHMARK(ListingAllLinesOf36Points)->Unit(benchmark::kMillisecond);

// Charts one after the other, each of another day from 1801 to 2040: positions of all points, and
// every line of ten: of types 1 to 4, as at the first start, or of all eleven. Charts a second is
// what counts.
void CalculatingAndListingChartsOfTenPoints(benchmark::State& state) {
    TheChart();
    FullChart::ShowTypesTo(static_cast<std::size_t>(state.range(0)));
    pointSelection.fill(kFalse);
    for (std::size_t p : {1, 3, 5, 6, 7, 8, 9, 10, 11, 12}) pointSelection[p] = kTrue;
    const CalcChart kept = calcChart[1];
    Format1Record record;
    record.hour = 6;
    record.latNorth = 1;
    record.latDegrees = 52;
    record.houseCode = 5;
    record.ayanamsaCode = 1;
    int round = 0;
    for ([[maybe_unused]] auto _ : state) {
        record.year = static_cast<std::int16_t>(1801 + round * 37 / 365 % 240);
        record.month = static_cast<std::uint8_t>(1 + round % 12);
        record.day = static_cast<std::uint8_t>(1 + round % 28);
        FileChartToCalcChart(record, 1, kFalse);
        benchmark::DoNotOptimize(ListLines(1));
        ++round;
    }
    state.SetItemsProcessed(state.iterations());
    calcChart[1] = kept;
    for (std::size_t p = 1; p <= 72; ++p) pointSelection[p] = kTrue;
}
BENCHMARK(CalculatingAndListingChartsOfTenPoints)->Arg(4)->Arg(11)->Unit(benchmark::kMicrosecond);

// The yardstick.
void CopyingTheStoredImageUnderLines(benchmark::State& state) {
    ImageSurface& surface = TheChart().Surface();
    Image image;
    surface.CopyImage(image);
    for ([[maybe_unused]] auto _ : state) surface.PutImage(image);
}
BENCHMARK(CopyingTheStoredImageUnderLines)->Unit(benchmark::kMillisecond);

void QuickPassWithAllLinesOf72Points(benchmark::State& state) {
    ImageSurface& surface = TheChart().Surface();
    FullChart::ShowAllTypes();
    for ([[maybe_unused]] auto _ : state) PlotMap4(kFalse, surface, kFalse);
}
BENCHMARK(QuickPassWithAllLinesOf72Points)->Unit(benchmark::kMillisecond);

void QuickPassWithAllLinesOf36Points(benchmark::State& state) {
    ImageSurface& surface = TheChart().Surface();
    FullChart::ShowAllTypes();
    const Without36Stars without;
    for ([[maybe_unused]] auto _ : state) PlotMap4(kFalse, surface, kFalse);
}
BENCHMARK(QuickPassWithAllLinesOf36Points)->Unit(benchmark::kMillisecond);

void QuickPassWithLinesOfType(benchmark::State& state) {
    ImageSurface& surface = TheChart().Surface();
    ShowOneType(static_cast<std::size_t>(state.range(0)));
    for ([[maybe_unused]] auto _ : state) PlotMap4(kFalse, surface, kFalse);
}
BENCHMARK(QuickPassWithLinesOfType)->DenseRange(0, 11)->Unit(benchmark::kMillisecond);

// All lines in views of 40, 3 and 1 degrees across.
void QuickPassInAView(benchmark::State& state) {
    ImageSurface& surface = TheChart().Surface();
    FullChart::ShowAllTypes();
    const MapDocument world = CurrentMap();
    const auto width = static_cast<float>(state.range(0));
    MapDocument& map = CurrentMap();
    map.west = 10 - width / 2;
    map.east = 10 + width / 2;
    map.south = 50 - width / 4;
    map.north = 50 + width / 4;
    PlotMap4(kFalse, surface, kTrue);
    for ([[maybe_unused]] auto _ : state) PlotMap4(kFalse, surface, kFalse);
    CurrentMap() = world;
    PlotMap4(kFalse, surface, kTrue);
}
BENCHMARK(QuickPassInAView)->Arg(40)->Arg(3)->Arg(1)->Unit(benchmark::kMillisecond);

}  // namespace

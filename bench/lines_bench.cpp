// What the lines of a chart cost: as a list, and drawn. Their yardstick is the copying of one
// stored image of the same size, which every quick pass begins with.
#include <benchmark/benchmark.h>
#include <random>

#include "bench_session.h"
#include "charts/CALCCHRT.h"
#include "lines/chart_lines.h"
#include "lines/line_list.h"
#include "map/map_document.h"
#include "map/plot.h"
#include "session/settings.h"

namespace {

using namespace orvantis;

// Shows the line types 1 to `last` of 11.
void ShowTypesTo(std::size_t last) {
    for (std::size_t type = 1; type <= 11; ++type) {
        settings.lineStyle[type].displayed = type <= last ? kTrue : kFalse;
    }
}

// A chart with 36 points and 36 stars, all selected, and every line type on. The stars are put all
// over the sky by a fixed seed.
class FullChart {
  public:
    FullChart() {
        std::mt19937 random(37);
        CalcChart& chart = calcChart[1];
        for (std::size_t p = 1; p <= 72; ++p) {
            pointSelection[p] = kTrue;
            if (p < 37 && chart.Lon[p] >= 0) continue;
            chart.Lon[p] = std::uniform_real_distribution<double>(0, 360)(random);
            chart.RA[p] = std::uniform_real_distribution<float>(0, 360)(random);
            chart.Dec[p] = std::uniform_real_distribution<float>(-80, 80)(random);
        }
        ShowTypesTo(11);
        PlotMap4(kFalse, Surface(), kTrue);
    }

    ImageSurface& Surface() { return bench_.Surface(); }

  private:
    BenchSession bench_;
};

void ShowOneType(std::size_t shown) {
    for (std::size_t type = 1; type <= 11; ++type) {
        settings.lineStyle[type].displayed = type == shown ? kTrue : kFalse;
    }
}

void ListingAllLinesOf72Points(benchmark::State& state) {
    FullChart chart;
    for ([[maybe_unused]] auto _ : state) benchmark::DoNotOptimize(ListLines(1));
}
BENCHMARK(ListingAllLinesOf72Points)->Unit(benchmark::kMillisecond);

void ListingLinesOfType(benchmark::State& state) {
    FullChart chart;
    ShowOneType(static_cast<std::size_t>(state.range(0)));
    for ([[maybe_unused]] auto _ : state) benchmark::DoNotOptimize(ListLines(1));
}
BENCHMARK(ListingLinesOfType)->DenseRange(1, 11)->Unit(benchmark::kMillisecond);

// As many points as a chart has without stars.
void LeaveOutStars() {
    for (std::size_t p = 37; p <= 72; ++p) pointSelection[p] = kFalse;
}

void ListingAllLinesOf36Points(benchmark::State& state) {
    FullChart chart;
    LeaveOutStars();
    for ([[maybe_unused]] auto _ : state) benchmark::DoNotOptimize(ListLines(1));
}
BENCHMARK(ListingAllLinesOf36Points)->Unit(benchmark::kMillisecond);

// Charts one after the other, each of another day from 1801 to 2040: positions of all points, and
// every line of ten: of types 1 to 4, as at the first start, or of all eleven. Charts a second is
// what counts.
void CalculatingAndListingChartsOfTenPoints(benchmark::State& state) {
    FullChart chart;
    ShowTypesTo(static_cast<std::size_t>(state.range(0)));
    pointSelection.fill(kFalse);
    for (std::size_t p : {1, 3, 5, 6, 7, 8, 9, 10, 11, 12}) pointSelection[p] = kTrue;
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
}
BENCHMARK(CalculatingAndListingChartsOfTenPoints)->Arg(4)->Arg(11)->Unit(benchmark::kMicrosecond);

// The yardstick.
void CopyingTheStoredImageUnderLines(benchmark::State& state) {
    FullChart chart;
    ImageSurface& surface = chart.Surface();
    Image image;
    surface.CopyImage(image);
    for ([[maybe_unused]] auto _ : state) surface.PutImage(image);
}
BENCHMARK(CopyingTheStoredImageUnderLines)->Unit(benchmark::kMillisecond);

void QuickPassWithAllLinesOf72Points(benchmark::State& state) {
    FullChart chart;
    ImageSurface& surface = chart.Surface();
    for ([[maybe_unused]] auto _ : state) PlotMap4(kFalse, surface, kFalse);
}
BENCHMARK(QuickPassWithAllLinesOf72Points)->Unit(benchmark::kMillisecond);

void QuickPassWithAllLinesOf36Points(benchmark::State& state) {
    FullChart chart;
    ImageSurface& surface = chart.Surface();
    LeaveOutStars();
    for ([[maybe_unused]] auto _ : state) PlotMap4(kFalse, surface, kFalse);
}
BENCHMARK(QuickPassWithAllLinesOf36Points)->Unit(benchmark::kMillisecond);

void QuickPassWithLinesOfType(benchmark::State& state) {
    FullChart chart;
    ImageSurface& surface = chart.Surface();
    ShowOneType(static_cast<std::size_t>(state.range(0)));
    for ([[maybe_unused]] auto _ : state) PlotMap4(kFalse, surface, kFalse);
}
BENCHMARK(QuickPassWithLinesOfType)->DenseRange(0, 11)->Unit(benchmark::kMillisecond);

// All lines in views of 40, 3 and 1 degrees across.
void QuickPassInAView(benchmark::State& state) {
    FullChart chart;
    ImageSurface& surface = chart.Surface();
    const auto width = static_cast<float>(state.range(0));
    MapDocument& map = CurrentMap();
    map.west = 10 - width / 2;
    map.east = 10 + width / 2;
    map.south = 50 - width / 4;
    map.north = 50 + width / 4;
    PlotMap4(kFalse, surface, kTrue);
    for ([[maybe_unused]] auto _ : state) PlotMap4(kFalse, surface, kFalse);
}
BENCHMARK(QuickPassInAView)->Arg(40)->Arg(3)->Arg(1)->Unit(benchmark::kMillisecond);

}  // namespace

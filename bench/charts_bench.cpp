// What a user waits for when a chart file is opened or saved: files of 10,000 charts of each type.
// The argument of a case is the type. Beside them stands the plain reading of a file of that size.
#include <benchmark/benchmark.h>
#include <string>

#include "bench_session.h"
#include "charts/chart_lists.h"
#include "support/reset_all.h"

namespace {

using namespace orvantis;

constexpr int kCharts = 10000;

ChartList ManyCharts() {
    ChartList list;
    for (int n = 1; n <= kCharts; ++n) {
        StoredChart stored;
        stored.chart.event.name = "Chart number " + std::to_string(n);
        stored.chart.event.place = "A place of 20 letter";
        stored.chart.event.country = "Country";
        stored.chart.event.longitude = static_cast<float>(n % 360 - 180);
        stored.chart.event.latitude = static_cast<float>(n % 180 - 90);
        stored.comment = "A comment of a chart, of several blocks: " + std::to_string(n);
        list.charts.push_back(stored);
    }
    return list;
}

std::string Folder() {
    return BenchFolder().string() + "/";
}

// A file of the type, made once.
std::string ManyChartsFile(std::int16_t type) {
    std::string path = Folder() + "many" + std::to_string(type) + ".cht";
    if (FileExists(path) != 0) return path;
    ChartList list = ManyCharts();
    SaveChartFile(path, type, list);
    return path;
}

void ListingAFileOf10000Charts(benchmark::State& state) {
    ResetAll();
    const std::string path = ManyChartsFile(static_cast<std::int16_t>(state.range(0)));
    loadComments = kFalse;
    for ([[maybe_unused]] auto _ : state) {
        ChartList list;
        LoadChartList(path, list, kFalse);
        if (list.charts.size() != kCharts) state.SkipWithError("not all charts were read");
    }
}
BENCHMARK(ListingAFileOf10000Charts)->DenseRange(0, 3)->Unit(benchmark::kMillisecond);

void OpeningAFileAndReading10000Charts(benchmark::State& state) {
    ResetAll();
    const std::string path = ManyChartsFile(static_cast<std::int16_t>(state.range(0)));
    for ([[maybe_unused]] auto _ : state) {
        std::int32_t count = 0;
        const FileHandle file = OpenChartFile(path, count, kFalse);
        FileChart chart;
        for (std::int32_t n = 1; n <= count; ++n) {
            ReadChart(currentChartFileType, file, n, chart);
            benchmark::DoNotOptimize(chart);
        }
        if (count != kCharts) state.SkipWithError("not all charts were read");
        CloseChartFile(currentChartFileType, file);
    }
}
BENCHMARK(OpeningAFileAndReading10000Charts)->DenseRange(0, 3)->Unit(benchmark::kMillisecond);

void ListingWithComments(benchmark::State& state) {
    ResetAll();
    const std::string path = ManyChartsFile(static_cast<std::int16_t>(state.range(0)));
    for ([[maybe_unused]] auto _ : state) {
        ChartList list;
        LoadChartList(path, list, kFalse);
        benchmark::DoNotOptimize(list);
    }
}
BENCHMARK(ListingWithComments)->DenseRange(1, 3)->Unit(benchmark::kMillisecond);

void SavingAFileOf10000Charts(benchmark::State& state) {
    ResetAll();
    ChartList list = ManyCharts();
    const auto type = static_cast<std::int16_t>(state.range(0));
    for ([[maybe_unused]] auto _ : state) {
        if (!SaveChartFile(Folder() + "saved.cht", type, list)) state.SkipWithError("not saved");
    }
}
BENCHMARK(SavingAFileOf10000Charts)->DenseRange(0, 3)->Unit(benchmark::kMillisecond);

// The yardstick: the bytes of the file and nothing made of them.
void ReadingTheBytesOfThatFile(benchmark::State& state) {
    ResetAll();
    const std::string path = ManyChartsFile(static_cast<std::int16_t>(state.range(0)));
    for ([[maybe_unused]] auto _ : state) {
        Bytes bytes;
        ReadWholeFile(path, kMostChartBytes, bytes);
        benchmark::DoNotOptimize(bytes);
    }
}
BENCHMARK(ReadingTheBytesOfThatFile)->DenseRange(0, 3)->Unit(benchmark::kMillisecond);

}  // namespace

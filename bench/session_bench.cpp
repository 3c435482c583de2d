// What a user waits for between a command and its picture. Yardsticks stand in the same run: the
// copying of one stored image, and the bare ephemeris calls of one chart. Ratios are what counts.
#include <array>
#include <benchmark/benchmark.h>
#include <filesystem>
#include <string>
#include <swephexp.h>
#include <unistd.h>

#include "charts/CALCCHRT.h"
#include "charts/KVCharts.h"
#include "lines/line_geometry.h"
#include "map/map_document.h"
#include "map/plot.h"
#include "map/point_database.h"
#include "raster/image_surface.h"
#include "raster/qt_gui.h"
#include "session/driver.h"
#include "session/session_state.h"
#include "session/settings.h"
#include "surface/null_shell.h"

namespace {

using namespace orvantis;
namespace fs = std::filesystem;

const std::string kSample = std::string(ORVANTIS_DATA) + "/sample.cht";

// One session for all cases: the shipped data in a folder of its own, the sample chart, a picture
// of 1920 by 1080.
class Bench {
  public:
    Bench() : folder_(fs::temp_directory_path() / ("orvantis-bench-" + std::to_string(getpid()))) {
        StartPaths paths = SystemPaths();
        paths.programDir = folder_.string();
        paths.shippedData = ORVANTIS_DATA;
        StartSession(paths, shell_);
        EnsureQtGui();
        LoadDatabase();
        session.picture = &surface_;
        NewMap(kFalse);
        RunTimeError reason;
        OpenChart(kSample, 1, reason);
    }
    ~Bench() {
        std::error_code ignored;
        fs::remove_all(folder_, ignored);
    }
    Bench(const Bench&) = delete;
    Bench& operator=(const Bench&) = delete;

    ImageSurface& Surface() { return surface_; }

  private:
    fs::path folder_;
    NullShell shell_;
    ImageSurface surface_{1920, 1080};
};

Bench& TheBench() {
    static Bench bench;
    return bench;
}

void CopyingOneStoredImage(benchmark::State& state) {
    ImageSurface& surface = TheBench().Surface();
    Image image;
    surface.CopyImage(image);
    for ([[maybe_unused]] auto _ : state) surface.PutImage(image);
}
BENCHMARK(CopyingOneStoredImage)->Unit(benchmark::kMillisecond);

void FullRedrawOfTheWorldAtPrecision(benchmark::State& state) {
    ImageSurface& surface = TheBench().Surface();
    NewMap(kFalse);
    CurrentMap().precision = static_cast<std::int16_t>(state.range(0));
    for ([[maybe_unused]] auto _ : state) PlotMap4(kFalse, surface, kTrue);
}
BENCHMARK(FullRedrawOfTheWorldAtPrecision)->DenseRange(1, 5)->Unit(benchmark::kMillisecond);

void FullRedrawOf20DegreesAtPrecision1(benchmark::State& state) {
    ImageSurface& surface = TheBench().Surface();
    NewMap(kFalse);
    MapDocument& map = CurrentMap();
    map.south = 40;
    map.north = 51;
    map.west = 5;
    map.east = 25;
    map.precision = 1;
    for ([[maybe_unused]] auto _ : state) PlotMap4(kFalse, surface, kTrue);
}
BENCHMARK(FullRedrawOf20DegreesAtPrecision1)->Unit(benchmark::kMillisecond);

void QuickPassWithTenPoints(benchmark::State& state) {
    ImageSurface& surface = TheBench().Surface();
    NewMap(kFalse);
    PlotMap4(kFalse, surface, kTrue);
    for ([[maybe_unused]] auto _ : state) PlotMap4(kFalse, surface, kFalse);
}
BENCHMARK(QuickPassWithTenPoints)->Unit(benchmark::kMillisecond);

void QuickPassWithoutAChart(benchmark::State& state) {
    ImageSurface& surface = TheBench().Surface();
    NewMap(kFalse);
    session.ChartNumber = 0;
    PlotMap4(kFalse, surface, kTrue);
    for ([[maybe_unused]] auto _ : state) PlotMap4(kFalse, surface, kFalse);
    session.ChartNumber = 1;
}
BENCHMARK(QuickPassWithoutAChart)->Unit(benchmark::kMillisecond);

void AllLinesOfAChartWithoutDrawing(benchmark::State& state) {
    TheBench();
    for ([[maybe_unused]] auto _ : state) {
        const LineFrame frame = MakeLineFrame(1);
        for (std::int16_t p = 1; p <= point::kLastBody; ++p) {
            if (!IsPointDrawn(1, p)) continue;
            for (std::int16_t type = 1; type <= 4; ++type) {
                benchmark::DoNotOptimize(LineRuns(frame, p, type));
            }
        }
    }
}
BENCHMARK(AllLinesOfAChartWithoutDrawing)->Unit(benchmark::kMillisecond);

Format1Record SampleRecord() {
    FileChart chart;
    RunTimeError reason;
    ReadChartFromFile(kSample, 1, chart, reason);
    Format1Record record;
    ChartToFormat1(chart, record);
    return record;
}

void CalculatingAChart(benchmark::State& state) {
    TheBench();
    Format1Record record = SampleRecord();
    for ([[maybe_unused]] auto _ : state) {
        // Another day each time, so that no library answers from memory.
        record.day = static_cast<std::uint8_t>(record.day % 28 + 1);
        FileChartToCalcChart(record, 1, kFalse);
    }
}
BENCHMARK(CalculatingAChart)->Unit(benchmark::kMillisecond);

void BareEphemerisCallsOfAChart(benchmark::State& state) {
    TheBench();
    static constexpr std::array<int, 26> bodies = {1,  0,  2,  3,  4,  5,  6,  7,  8,
                                                   9,  15, 20, 18, 19, 17, 11, 40, 41,
                                                   42, 43, 44, 45, 46, 47, 48, 12};
    double day = 0;
    for ([[maybe_unused]] auto _ : state) {
        day = day < 27 ? day + 1 : 0;
        for (const int body : bodies) {
            std::array<double, 6> position{};
            std::array<char, 256> message{};
            swe_calc(2440422.5 + day, body, SEFLG_SPEED, position.data(), message.data());
            benchmark::DoNotOptimize(position);
        }
    }
}
BENCHMARK(BareEphemerisCallsOfAChart)->Unit(benchmark::kMillisecond);

void OpeningAndListingAChartFileOf10000Charts(benchmark::State& state) {
    TheBench();
    Bytes file(static_cast<std::size_t>(kFileChartSize) * 10001);
    PutI16(file.data(), 2);
    FileChart chart;
    RunTimeError reason;
    ReadChartFromFile(kSample, 1, chart, reason);
    for (std::size_t n = 1; n <= 10000; ++n) {
        PutFileChart(&file[n * static_cast<std::size_t>(kFileChartSize)], chart);
    }
    const std::string path = session.ProgramDir + "bench.cht";
    ReplaceFile(path, file);
    for ([[maybe_unused]] auto _ : state) {
        std::int32_t count = 0;
        const FileHandle handle = OpenChartFile(path, count, kFalse);
        for (std::int32_t n = 1; n <= count; ++n) {
            ReadChart(currentChartFileType, handle, n, chart);
            benchmark::DoNotOptimize(chart);
        }
        CloseChartFile(currentChartFileType, handle);
    }
    DeleteFile(path);
}
BENCHMARK(OpeningAndListingAChartFileOf10000Charts)->Unit(benchmark::kMillisecond);

void MakingTheLevelFilesAndTheIndex(benchmark::State& state) {
    TheBench();
    for ([[maybe_unused]] auto _ : state) {
        GenerateLevels(LevelPath(1), kFirstUseText);
        DeleteFile(session.ProgramDir + "levelx.ndx");
        LoadLineIndex();
    }
}
BENCHMARK(MakingTheLevelFilesAndTheIndex)->Unit(benchmark::kMillisecond);

}  // namespace

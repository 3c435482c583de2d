// What a user waits for between a command and its picture. Yardsticks stand in the same run: the
// copying of one stored image, and the bare ephemeris calls of one chart. Ratios are what counts.
#include <array>
#include <benchmark/benchmark.h>
#include <string>
#include <swephexp.h>

#include "bench_session.h"
#include "charts/CALCCHRT.h"
#include "charts/KVCharts.h"
#include "charts/SwissEph.h"
#include "lines/line_geometry.h"
#include "map/map_document.h"
#include "map/plot.h"
#include "map/point_database.h"
#include "map/projection.h"
#include "raster/image_surface.h"
#include "raster/page_file.h"
#include "raster/page_surface.h"
#include "session/commands.h"
#include "session/driver.h"
#include "session/files.h"
#include "session/ini_settings.h"
#include "session/session_state.h"
#include "session/settings.h"
#include "surface/null_shell.h"

namespace {

using namespace orvantis;
void CopyingOneStoredImage(benchmark::State& state) {
    BenchSession bench;
    ImageSurface& surface = bench.Surface();
    Image image;
    surface.CopyImage(image);
    for ([[maybe_unused]] auto _ : state) surface.PutImage(image);
}
BENCHMARK(CopyingOneStoredImage)->Unit(benchmark::kMillisecond);

void FullRedrawOfTheWorldAtPrecision(benchmark::State& state) {
    BenchSession bench;
    ImageSurface& surface = bench.Surface();
    CurrentMap().precision = static_cast<std::int16_t>(state.range(0));
    for ([[maybe_unused]] auto _ : state) PlotMap4(kFalse, surface, kTrue);
}
BENCHMARK(FullRedrawOfTheWorldAtPrecision)->DenseRange(1, 5)->Unit(benchmark::kMillisecond);

void FullRedrawOf20DegreesAtPrecision1(benchmark::State& state) {
    BenchSession bench;
    ImageSurface& surface = bench.Surface();
    MapDocument& map = CurrentMap();
    map.south = 40;
    map.north = 51;
    map.west = 5;
    map.east = 25;
    map.precision = 1;
    for ([[maybe_unused]] auto _ : state) PlotMap4(kFalse, surface, kTrue);
}
BENCHMARK(FullRedrawOf20DegreesAtPrecision1)->Unit(benchmark::kMillisecond);

// A screen of four times the pixels; its yardstick is the copying of its own picture.
constexpr int kLargeWidth = 3840;
constexpr int kLargeHeight = 2160;

void CopyingOneStoredImageOf3840By2160(benchmark::State& state) {
    BenchSession bench(kLargeWidth, kLargeHeight);
    ImageSurface& surface = bench.Surface();
    Image image;
    surface.CopyImage(image);
    for ([[maybe_unused]] auto _ : state) surface.PutImage(image);
}
BENCHMARK(CopyingOneStoredImageOf3840By2160)->Unit(benchmark::kMillisecond);

void FullRedrawOn3840By2160AtPrecision(benchmark::State& state) {
    BenchSession bench(kLargeWidth, kLargeHeight);
    CurrentMap().precision = static_cast<std::int16_t>(state.range(0));
    for ([[maybe_unused]] auto _ : state) PlotMap4(kFalse, bench.Surface(), kTrue);
}
BENCHMARK(FullRedrawOn3840By2160AtPrecision)->DenseRange(1, 5)->Unit(benchmark::kMillisecond);

// Arguments: 0 the sphere, 1 the oblate globe; latitude and longitude of the centre in degrees.
void PlotGlobe(benchmark::State& state, DrawingSurface& surface) {
    MapDocument& map = CurrentMap();
    const auto centreLong = static_cast<float>(state.range(2));
    map.projection = state.range(0) == 0 ? projection::kGlobeSphere : projection::kGlobeOblate;
    map.south = static_cast<float>(state.range(1));
    map.north = map.south;
    map.west = centreLong < -90 ? centreLong + 270 : centreLong - 90;
    map.east = centreLong > 90 ? centreLong - 270 : centreLong + 90;
    map.precision = 1;
    for ([[maybe_unused]] auto _ : state) PlotMap4(kFalse, surface, kTrue);
}

// Centres on and beside the equator, at a pole, and with much land or little.
void ManyCentres(benchmark::internal::Benchmark* cases) {
    cases->ArgNames({"oblate", "lat", "long"})
        ->ArgsProduct({{0, 1}, {0}, {0, -90, 180}})
        ->ArgsProduct({{0, 1}, {45}, {20, -90}})
        ->ArgsProduct({{0, 1}, {90, -35}, {140}})
        ->Unit(benchmark::kMillisecond);
}

void FullRedrawOfTheBareGlobeAtPrecision1(benchmark::State& state) {
    BenchSession bench;
    BenchSession::CloseChart();
    PlotGlobe(state, bench.Surface());
}
BENCHMARK(FullRedrawOfTheBareGlobeAtPrecision1)->Name("map/globe precision 1")->Apply(ManyCentres);

void FullRedrawOfTheGlobeWithTenPointsAtPrecision1(benchmark::State& state) {
    BenchSession bench;
    PlotGlobe(state, bench.Surface());
}
BENCHMARK(FullRedrawOfTheGlobeWithTenPointsAtPrecision1)
    ->Name("map/globe precision 1, ten points")
    ->Apply(ManyCentres);

void FullRedrawOfTheGlobeOn3840By2160AtPrecision1(benchmark::State& state) {
    BenchSession bench(kLargeWidth, kLargeHeight);
    PlotGlobe(state, bench.Surface());
}
BENCHMARK(FullRedrawOfTheGlobeOn3840By2160AtPrecision1)
    ->Name("map/globe precision 1, 3840 by 2160")
    ->ArgNames({"oblate", "lat", "long"})
    ->ArgsProduct({{0, 1}, {0, 45}, {20}})
    ->Unit(benchmark::kMillisecond);

void WritingTheMapAs(benchmark::State& state, bool (*save)(std::string_view, const PageRecord&)) {
    BenchSession bench;
    CurrentMap().precision = 1;
    PageSurface page(1920, 1080, 96, PageFloods::Beneath);
    PlotMap4(kFalse, page, kTrue);
    const std::string path = NativePath(session.ProgramDir) + "page";
    for ([[maybe_unused]] auto _ : state) save(path, page.Record());
}
BENCHMARK_CAPTURE(WritingTheMapAs, Pdf, SavePdf)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(WritingTheMapAs, Svg, SaveSvg)->Unit(benchmark::kMillisecond);

void FullRedrawOnAPage(benchmark::State& state) {
    BenchSession bench;
    CurrentMap().precision = 1;
    PageSurface page(1920, 1080, 96, PageFloods::Beneath);
    for ([[maybe_unused]] auto _ : state) PlotMap4(kFalse, page, kTrue);
}
BENCHMARK(FullRedrawOnAPage)->Unit(benchmark::kMillisecond);

void QuickPassWithTenPoints(benchmark::State& state) {
    BenchSession bench;
    ImageSurface& surface = bench.Surface();
    PlotMap4(kFalse, surface, kTrue);
    for ([[maybe_unused]] auto _ : state) PlotMap4(kFalse, surface, kFalse);
}
BENCHMARK(QuickPassWithTenPoints)->Unit(benchmark::kMillisecond);

void QuickPassWithoutAChart(benchmark::State& state) {
    BenchSession bench;
    ImageSurface& surface = bench.Surface();
    BenchSession::CloseChart();
    PlotMap4(kFalse, surface, kTrue);
    for ([[maybe_unused]] auto _ : state) PlotMap4(kFalse, surface, kFalse);
}
BENCHMARK(QuickPassWithoutAChart)->Unit(benchmark::kMillisecond);

// From a command to its finished picture. Precision 1, ten points.
void CommandToPicture(benchmark::State& state, std::string_view menu, std::string_view caption) {
    BenchSession bench;
    CurrentMap().precision = 1;
    const Command* command = FindCommand(menu, caption);
    RunCommand(*FindCommand("&Map", "&ReDraw"));
    for ([[maybe_unused]] auto _ : state) RunCommand(*command);
}
BENCHMARK_CAPTURE(CommandToPicture, EndsInFull, "&Map", "&ReDraw")->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(CommandToPicture, EndsInLines, "&Chart", "&Celestial (Normal)")
    ->Unit(benchmark::kMillisecond);

void AllLinesOfAChartWithoutDrawing(benchmark::State& state) {
    BenchSession bench;
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
    ReadChartFromFile(SampleChart(), 1, chart, reason);
    Format1Record record;
    ChartToFormat1(chart, record);
    return record;
}

void CalculateCharts(benchmark::State& state) {
    Format1Record record = SampleRecord();
    for ([[maybe_unused]] auto _ : state) {
        // Another day each time, so that no library answers from memory.
        record.day = static_cast<std::uint8_t>(record.day % 28 + 1);
        FileChartToCalcChart(record, 1, kFalse);
    }
}

void CalculatingAChart(benchmark::State& state) {
    BenchSession bench;
    CalculateCharts(state);
}
BENCHMARK(CalculatingAChart)->Unit(benchmark::kMillisecond);

void CalculatingAChartOnTheStandardRoute(benchmark::State& state) {
    BenchSession bench;
    swissState.enabled = kFalse;
    CalculateCharts(state);
}
BENCHMARK(CalculatingAChartOnTheStandardRoute)->Unit(benchmark::kMillisecond);

void BareEphemerisCallsOfAChart(benchmark::State& state) {
    BenchSession bench;
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

// The own INI as the program leaves it, the sibling's missing, the shipped zone file.
void ReadingTheKeysWordsAndZonesOfAStart(benchmark::State& state) {
    BenchSession bench;
    session.SiblingIni = "KELVANE2.INI";
    ReadIniSettings();
    WriteIniSettings();
    for ([[maybe_unused]] auto _ : state) ReadIniSettings();
}
BENCHMARK(ReadingTheKeysWordsAndZonesOfAStart)->Unit(benchmark::kMillisecond);

void WritingTheKeysOfAnEnd(benchmark::State& state) {
    BenchSession bench;
    for ([[maybe_unused]] auto _ : state) WriteIniSettings();
}
BENCHMARK(WritingTheKeysOfAnEnd)->Unit(benchmark::kMillisecond);

// The worst that a user's INI can be: 10 MB of short keys in the section that is read.
void ReadingAnIniOf10Megabytes(benchmark::State& state) {
    BenchSession bench;
    std::string text = "[Orvantis]\r\n";
    for (int i = 0; text.size() < 10'000'000; ++i) text += "key" + std::to_string(i) + "=1\r\n";
    ReplaceFile(session.IniDir + session.OwnIni, Bytes(text.begin(), text.end()));
    for ([[maybe_unused]] auto _ : state) ReadIniSettings();
}
BENCHMARK(ReadingAnIniOf10Megabytes)->Unit(benchmark::kMillisecond);

void MakingTheLevelFilesAndTheIndex(benchmark::State& state) {
    BenchSession bench;
    for ([[maybe_unused]] auto _ : state) {
        GenerateLevels(LevelPath(1), kFirstUseText);
        DeleteFile(session.ProgramDir + "levelx.ndx");
        LoadLineIndex();
    }
}
BENCHMARK(MakingTheLevelFilesAndTheIndex)->Unit(benchmark::kMillisecond);

// From the call to the ready map, all but the first picture, which the clock's place takes here.
void StartingASessionWithoutAPicture(benchmark::State& state) {
    BenchSession bench;
    NullShell shell;
    switchAstroClock = [](Flag /*on*/, Flag /*redraw*/) {};
    for ([[maybe_unused]] auto _ : state) {
        OpenOutcome outcome;
        const SessionCall call{"NOINITSCREEN", "", 1};
        if (RunSession(bench.Paths(), call, shell, outcome) != SessionResult::Ready) {
            state.SkipWithError("the session didn't start");
        }
        state.PauseTiming();
        EndSession();
        state.ResumeTiming();
    }
}
BENCHMARK(StartingASessionWithoutAPicture)->Unit(benchmark::kMillisecond);

}  // namespace

// A chart's calculation on both routes, over all days of two centuries, so that no file or cache
// serves the same moment twice. The yardstick in the same run: the calls of the library for the
// same points, bare.
#include <array>
#include <benchmark/benchmark.h>
#include <swephexp.h>

#include "charts/CALCCHRT.h"
#include "charts/QXASTRO.h"
#include "charts/SwissEph.h"
#include "session/session_state.h"
#include "support/reset_all.h"
#include "surface/null_shell.h"

namespace {

using namespace orvantis;

constexpr const char* kEphemeris = "/usr/share/libswe/ephe";

// Bodies of the library behind points 1 to 36: Vulcan too, as its file of elements gives it.
constexpr std::array<std::int32_t, 27> kBodies = {
    SE_MOON,      SE_SUN,       SE_MERCURY,
    SE_VENUS,     SE_MARS,      SE_JUPITER,
    SE_SATURN,    SE_URANUS,    SE_NEPTUNE,
    SE_PLUTO,     SE_CHIRON,    SE_VESTA,
    SE_PALLAS,    SE_JUNO,      SE_CERES,
    SE_TRUE_NODE, SE_CUPIDO,    SE_HADES,
    SE_ZEUS,      SE_KRONOS,    SE_APOLLON,
    SE_ADMETOS,   SE_VULKANUS,  SE_POSEIDON,
    SE_ISIS,      SE_MEAN_APOG, SE_FICT_OFFSET_1 + 16};

// A moment for each round: 1801 to 2040, 37 days apart.
class Days {
  public:
    std::int16_t Year() const { return static_cast<std::int16_t>(1801 + round_ * 37 / 365 % 240); }
    std::uint8_t Month() const { return static_cast<std::uint8_t>(1 + round_ % 12); }
    std::uint8_t Day() const { return static_cast<std::uint8_t>(1 + round_ % 28); }
    void Next() { ++round_; }

  private:
    int round_ = 0;
};

Format1Record RecordOf(const Days& days) {
    Format1Record record;
    record.year = days.Year();
    record.month = days.Month();
    record.day = days.Day();
    record.hour = 6;
    record.latNorth = 1;
    record.latDegrees = 52;
    record.houseCode = 5;
    record.ayanamsaCode = 1;
    return record;
}

void UseRoute(bool swiss, const char* folder = kEphemeris) {
    static NullShell shell;
    ResetAll();
    session.shell = &shell;
    session.SystemDataPath = std::string(ORVANTIS_DATA) + "/";
    OpenSwissEphemeris(folder, session.SystemDataPath);
    if (!swiss) CloseSwissEphemeris();
}

void Chart(benchmark::State& state, bool swiss, const char* folder) {
    UseRoute(swiss, folder);
    Days days;
    for ([[maybe_unused]] auto _ : state) {
        FileChartToCalcChart(RecordOf(days), 1, kFalse);
        benchmark::DoNotOptimize(calcChart[1]);
        days.Next();
    }
    CloseSwissEphemeris();
}
BENCHMARK_CAPTURE(Chart, SwissRoute, true, kEphemeris)->Unit(benchmark::kMicrosecond);
BENCHMARK_CAPTURE(Chart, StandardRoute, false, kEphemeris)->Unit(benchmark::kMicrosecond);
// In the data's folder lies no file of the library.
BENCHMARK_CAPTURE(Chart, StandardRouteWithoutFiles, false, ORVANTIS_DATA)
    ->Unit(benchmark::kMicrosecond);

// `count` of the bodies, in their order; the hypothetical ones come last.
void BareCalls(benchmark::State& state, std::size_t count) {
    UseRoute(true);
    Days days;
    std::array<double, 6> xx{};
    std::array<char, AS_MAXCH> ignored{};
    for ([[maybe_unused]] auto _ : state) {
        double jd = 0;
        GetJDxhUT(days.Day(), days.Month(), days.Year(), 6, jd);
        for (std::size_t i = 0; i < count; ++i) {
            swe_calc(jd, kBodies[i], SEFLG_SPEED, xx.data(), ignored.data());
            benchmark::DoNotOptimize(xx);
        }
        days.Next();
    }
    CloseSwissEphemeris();
}
BENCHMARK_CAPTURE(BareCalls, AllBodies, kBodies.size())->Unit(benchmark::kMicrosecond);
BENCHMARK_CAPTURE(BareCalls, WithoutHypotheticalBodies, 16)->Unit(benchmark::kMicrosecond);

}  // namespace

// What a user waits for when a field is left or a list of texts is read: one typed text read or
// written. Each case takes texts in turn, so that no branch is always right.
#include <array>
#include <benchmark/benchmark.h>

#include "support/reset_all.h"
#include "text/angles.h"
#include "text/coordinates.h"
#include "text/dates.h"
#include "text/text_state.h"
#include "text/zones.h"

namespace {

using namespace orvantis;

// The next of some values, round and round.
template <typename Values>
const auto& Next(const Values& values) {
    static std::size_t index = 0;
    index = (index + 1) % values.size();
    return values[index];
}

template <typename Parse>
void ReadThree(benchmark::State& state, Parse parse, const std::array<std::string_view, 4>& texts) {
    ResetAll();
    textState.MonthFirst = kFalse;
    std::int16_t a = 0;
    std::int16_t b = 0;
    std::int16_t c = 0;
    std::int16_t errorFlag = 0;
    for ([[maybe_unused]] auto _ : state) {
        parse(Next(texts), a, b, c, errorFlag);
        benchmark::DoNotOptimize(errorFlag);
    }
}

void ReadingATypedDate(benchmark::State& state) {
    ReadThree(state, ParseDateText,
              {"31 Dec 1992", "Sept 3rd 1992", "15 Mar 44 B.C.", "1 JAN 2000 OS"});
}
BENCHMARK(ReadingATypedDate);

void RefusingATypedDate(benchmark::State& state) {
    ReadThree(state, ParseDateText, {"31 December 1992", "30/2/1992", "31-12-1992", "BC AD 1 1 1"});
}
BENCHMARK(RefusingATypedDate);

void ReadingATypedTime(benchmark::State& state) {
    ReadThree(state, ParseTimeText, {"11:59:59 PM", "23:59", "noon", "0.30 am"});
}
BENCHMARK(ReadingATypedTime);

void ReadingATypedLatitude(benchmark::State& state) {
    ResetAll();
    constexpr std::array<std::string_view, 3> texts = {"35S55", "S35 55 12", "89N59 59"};
    double value = 0;
    std::int16_t errorFlag = 0;
    for ([[maybe_unused]] auto _ : state) {
        ParseLatitude(Next(texts), value, errorFlag);
        benchmark::DoNotOptimize(value);
    }
}
BENCHMARK(ReadingATypedLatitude);

void ReadingATypedLongitude(benchmark::State& state) {
    ResetAll();
    constexpr std::array<std::string_view, 3> texts = {"138E34 10", "75W00", "e 138 34"};
    double value = 0;
    std::int16_t errorFlag = 0;
    for ([[maybe_unused]] auto _ : state) {
        ParseLongitude(Next(texts), value, errorFlag);
        benchmark::DoNotOptimize(value);
    }
}
BENCHMARK(ReadingATypedLongitude);

// A table of 72 zones; the mnemonic stands last in it.
void ReadingATypedZone(benchmark::State& state) {
    ResetAll();
    for (int n = 1; n <= 72; ++n) {
        zones.ZoneMnemonic.push_back(n == 72 ? "LAST " : "Z" + std::to_string(100 + n) + " ");
        zones.ZoneName.emplace_back(30, ' ');
        zones.ZoneTime.emplace_back("-10:30");
        ++zones.ZoneCount;
    }
    constexpr std::array<std::string_view, 3> texts = {"last", "-10:30:15", "XYZ +9:00"};
    float hours = 0;
    std::string mnemonic;
    std::int16_t errorFlag = 0;
    for ([[maybe_unused]] auto _ : state) {
        ParseZoneText(Next(texts), hours, mnemonic, errorFlag, kTrue);
        benchmark::DoNotOptimize(hours);
    }
}
BENCHMARK(ReadingATypedZone);

void WritingADate(benchmark::State& state) {
    ResetAll();
    constexpr std::array<std::int16_t, 3> years = {1992, -43, 2026};
    for ([[maybe_unused]] auto _ : state) {
        benchmark::DoNotOptimize(FormatDateText(31, 12, Next(years)));
    }
}
BENCHMARK(WritingADate);

void WritingATime(benchmark::State& state) {
    ResetAll();
    constexpr std::array<std::int16_t, 3> hours = {0, 12, 23};
    for ([[maybe_unused]] auto _ : state) {
        benchmark::DoNotOptimize(FormatTimeText(Next(hours), 59, 7));
    }
}
BENCHMARK(WritingATime);

constexpr std::array<double, 3> kDegrees = {-33.8667, 7.5, 89.9999};

void WritingALatitude(benchmark::State& state) {
    ResetAll();
    for ([[maybe_unused]] auto _ : state) benchmark::DoNotOptimize(FormatLatitude(Next(kDegrees)));
}
BENCHMARK(WritingALatitude);

void WritingALongitude(benchmark::State& state) {
    ResetAll();
    for ([[maybe_unused]] auto _ : state) benchmark::DoNotOptimize(FormatLongitude(Next(kDegrees)));
}
BENCHMARK(WritingALongitude);

void WritingAZone(benchmark::State& state) {
    ResetAll();
    constexpr std::array<float, 3> hours = {-10.5F, 5, 0.123F};
    for ([[maybe_unused]] auto _ : state) benchmark::DoNotOptimize(FormatZoneText(Next(hours)));
}
BENCHMARK(WritingAZone);

void WritingTheZoneOfLocalMeanTime(benchmark::State& state) {
    ResetAll();
    for ([[maybe_unused]] auto _ : state) benchmark::DoNotOptimize(LmtZoneText(Next(kDegrees)));
}
BENCHMARK(WritingTheZoneOfLocalMeanTime);

void WritingAnAngle(benchmark::State& state) {
    ResetAll();
    for ([[maybe_unused]] auto _ : state) {
        benchmark::DoNotOptimize(
            FormatAngle(Next(kDegrees), angle_style::kSignName, 2, kTrue, kFalse, kTrue, kFalse));
    }
}
BENCHMARK(WritingAnAngle);

}  // namespace

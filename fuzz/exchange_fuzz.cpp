// Any bytes as an exchange file with its companions, put into a slot; what stands there then must
// be a chart that can be drawn. The first two bytes pick the record and the generation; the rest is
// cut in three at the lengths that follow them.
#include <cmath>
#include <cstdlib>
#include <string_view>

#include "charts/CALCCHRT.h"
#include "charts/SwissEph.h"
#include "charts/exchange.h"
#include "map_fuzz_folder.h"
#include "session/session_state.h"
#include "support/reset_all.h"

namespace {

using namespace orvantis;

constexpr std::size_t kHead = 6;

void CheckSlot(const CalcChart& chart) {
    for (std::size_t n = 1; n <= 36; ++n) {
        const bool none = chart.Lon[n] < 0;
        if (!none && !(chart.Lon[n] < 360)) std::abort();
        if (!std::isfinite(chart.Lat[n]) || !std::isfinite(chart.Dist[n])) std::abort();
        if (!std::isfinite(chart.LonSpeed[n]) || std::isnan(chart.SortLon[n])) std::abort();
        if (chart.SortOrder[n] < 1 || chart.SortOrder[n] > 36) std::abort();
        if (!none && !(std::isfinite(chart.RA[n]) && std::isfinite(chart.Dec[n]))) std::abort();
    }
    for (std::size_t house = 1; house <= 12; ++house) {
        if (!std::isfinite(chart.Cusp[house])) std::abort();
    }
    if (!std::isfinite(chartNow.RAMCNow) || !std::isfinite(chartNow.ZodiacOffsetNow)) std::abort();
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size < kHead) return 0;
    ResetAll();
    // The library is opened once; its state is no part of what a reset forgets.
    static const SwissState opened = [] {
        OpenSwissEphemeris("/usr/share/libswe/ephe", "");
        return swissState;
    }();
    swissState = opened;
    session.SystemDataPath = FuzzFolder();

    const std::size_t length = size - kHead;
    const std::size_t first = std::min<std::size_t>(GetU16(data + 2), length);
    const std::size_t second = std::min<std::size_t>(GetU16(data + 4), length - first);
    WriteFuzzFile("~K500003.CH~", data + kHead, first);
    WriteFuzzFile("~K500003.CM~", data + kHead + first, second);
    WriteFuzzFile("~K500003.CE~", data + kHead + first + second, length - first - second);

    ExchangeFilePath file{ChartExchangePath(3, kTrue), data[1] % 4 == 0 ? kTrue : kFalse};
    ExchangeChart exchange;
    if (!ReadExchangeChart(file, static_cast<std::int8_t>(data[0]), exchange)) return 0;
    if (exchange.note.size() > size * 2) std::abort();
    if (ExchangeChartToSlot(exchange, 1) == 0) CheckSlot(calcChart[1]);
    return 0;
}

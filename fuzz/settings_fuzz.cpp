// Any bytes as a settings file, a point selection or a point colour file (the first byte tells
// which), then a map with a chart drawn by them, on the screen and on a page. Numbers that a file
// may hold and a surface isn't made for must not reach the surface.
#include <array>
#include <cmath>
#include <cstdlib>

#include "charts/CALCCHRT.h"
#include "lines/chart_lines.h"
#include "map/plot.h"
#include "map_fuzz_folder.h"
#include "null_surface.h"
#include "session/settings.h"
#include "support/reset_all.h"

namespace {

using namespace orvantis;

// Whoever draws keeps to the surface's contract, whatever the files hold.
class StrictSurface : public NullSurface {
  public:
    void SetPen(const Pen& pen) override {
        if (pen.width < 1 || pen.width > 1000) std::abort();
        if (pen.dash < LineDash::Solid || pen.dash > LineDash::DashDotDot) std::abort();
    }
    // Text measures what its size asks for, within the sizes of a real font.
    void SelectFont(const Font& font) override {
        const float size = std::isfinite(font.size) ? font.size : 9;
        height_ = static_cast<int>(std::fmin(std::fmax(size, 1), 1000));
    }
    SurfaceSize TextExtent(std::string_view text) override {
        return {height_ * static_cast<int>(text.size()) / 2, height_};
    }
    void MoveTo(int x, int y) override { Check(x, y); }
    void LineTo(int x, int y) override { Check(x, y); }
    void TextOut(int x, int y, std::string_view /*text*/, TextAlign /*align*/) override {
        Check(x, y);
    }

  private:
    static void Check(int x, int y) {
        constexpr int most = 1 << 17;  // sums of two coordinates of 16 bits
        if (std::abs(x) > most || std::abs(y) > most) std::abort();
    }
    int height_ = 13;
};

// A chart whose points stand all over the sky, without the ephemeris.
void SetUpChart() {
    session.ChartNumber = 1;
    CalcChart& chart = calcChart[1];
    chart.Lon.fill(-1);
    chart.JulianDayET = 2451545;
    for (std::size_t p = 1; p <= 36; ++p) {
        chart.Lon[p] = static_cast<double>(p) * 10;
        chart.RA[p] = static_cast<float>(p) * 10;
        chart.Dec[p] = static_cast<float>(p) * 2 - 37;
    }
}

void Load(std::uint8_t kind, const std::uint8_t* data, std::size_t size) {
    constexpr std::array<const char*, 3> names = {"fuzz.ovs", "fuzz.pts", "fuzz.cpt"};
    WriteFuzzFile(names[kind], data, size);
    const std::string path = FuzzFolder() + names[kind];
    switch (kind) {
        case 0:
            LoadSettings(path, kFalse);
            break;
        case 1:
            LoadPointSelection(path);
            break;
        default:
            LoadPointColours(path);
            break;
    }
    if (PendingRunTimeError() != 0) std::abort();
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size == 0) return 0;
    ResetAll();
    session.UserDataPath = FuzzFolder();
    session.UserColourFile = FuzzFolder() + "saved.pco";
    pointSelection.fill(kTrue);
    Load(data[0] % 3, data + 1, size - 1);

    SetUpChart();
    plotChartLines = PlotChartLines;
    StrictSurface surface;
    CurrentMap().gridOn = kTrue;
    for (std::int16_t number = 0; number < 4; ++number) {
        CurrentMap().projection = number;
        PlotMap4(kFalse, surface, kTrue);
        PlotMap4(kTrue, surface, kFalse);
    }

    // What was read can be written.
    SaveSettings(FuzzFolder() + "saved.ovs", settings.description);
    SavePointSelection(FuzzFolder() + "saved.pts");
    SaveUserPointColours();
    return 0;
}

// Any bytes as a settings file, a point selection or a point colour file (the first byte tells
// which, and the projection), then a map with a chart drawn by them, on the screen and on a page.
// Numbers that a file may hold and a surface isn't made for must not reach the surface. What was
// read goes back to its file as it was.
#include <algorithm>
#include <array>
#include <cmath>
#include <cstdlib>

#include "charts/CALCCHRT.h"
#include "lines/chart_lines.h"
#include "map/plot.h"
#include "map_fuzz_folder.h"
#include "null_surface.h"
#include "session/files.h"
#include "session/settings.h"
#include "support/reset_all.h"

namespace {

using namespace orvantis;

constexpr std::uint8_t kKinds = 3;

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

constexpr std::uint8_t kSettingsKind = 0;
constexpr std::uint8_t kSelectionKind = 1;
constexpr std::size_t kSettingsSize = 340;
constexpr std::size_t kDescriptionWidth = 80;

void Load(std::uint8_t kind, const std::uint8_t* data, std::size_t size) {
    constexpr std::array<const char*, kKinds> names = {"fuzz.ovs", "fuzz.pts", "fuzz.cpt"};
    WriteFuzzFile(names[kind], data, size);
    const std::string path = FuzzFolder() + names[kind];
    switch (kind) {
        case kSettingsKind:
            if ((LoadSettings(path, kFalse) != 0) != (size < kSettingsSize)) std::abort();
            break;
        case kSelectionKind:
            LoadPointSelection(path);
            for (const std::size_t p : {2, 22, 23, 24, 25, 26}) {
                if (pointSelection[p] != 0) std::abort();
            }
            break;
        default:
            LoadPointColours(path);
            break;
    }
    if (PendingRunTimeError() != 0) std::abort();
}

Bytes Stored(const char* name) {
    Bytes bytes;
    if (FetchFile(FuzzFolder() + name, 1000, bytes) != 0) std::abort();
    return bytes;
}

// The settings in memory as bytes of a file, behind the description.
Bytes SavedSettings() {
    SaveSettings(FuzzFolder() + "saved.ovs", settings.description);
    const Bytes bytes = Stored("saved.ovs");
    if (bytes.size() != kSettingsSize) std::abort();
    return {bytes.begin() + kDescriptionWidth, bytes.end()};
}

// A settings file comes back as it was; one that is too short has changed nothing.
void CheckSettings(const Bytes& before, const std::uint8_t* data, std::size_t size) {
    const bool whole = size >= kSettingsSize;
    const Bytes expected = whole ? Bytes(data + kDescriptionWidth, data + kSettingsSize) : before;
    if (SavedSettings() != expected) std::abort();
}

// The selection and the colours read back as they were written.
void CheckPoints() {
    const auto selection = pointSelection;
    const auto colours = pointColour;
    SavePointSelection(FuzzFolder() + "saved.pts");
    SaveUserPointColours();
    if (Stored("saved.pts").size() != 792 || Stored("saved.pco").size() != 144) std::abort();
    std::fill_n(pointSelection.begin() + 1, 36, Flag{77});
    std::fill_n(pointColour.begin() + 1, 36, Colour{77});
    LoadPointSelection(FuzzFolder() + "saved.pts");
    LoadPointColours(session.UserColourFile);
    if (pointColour != colours) std::abort();
    for (std::size_t p = 1; p <= kPointCount; ++p) {
        const bool never = p == 2 || (p >= 22 && p <= 26);
        if (pointSelection[p] != (never ? kFalse : selection[p])) std::abort();
    }
    pointSelection = selection;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size == 0) return 0;
    ResetAll();
    session.UserDataPath = FuzzFolder();
    session.UserColourFile = FuzzFolder() + "saved.pco";
    pointSelection.fill(kTrue);
    const std::uint8_t kind = data[0] % kKinds;
    const Bytes before = SavedSettings();
    Load(kind, data + 1, size - 1);
    CheckSettings(before, data + 1, kind == kSettingsKind ? size - 1 : 0);
    CheckPoints();

    SetUpChart();
    plotChartLines = PlotChartLines;
    StrictSurface surface;
    CurrentMap().gridOn = kTrue;
    CurrentMap().projection = static_cast<std::int16_t>(data[0] / kKinds % 4);
    PlotMap4(kFalse, surface, kTrue);
    PlotMap4(kTrue, surface, kFalse);
    return 0;
}

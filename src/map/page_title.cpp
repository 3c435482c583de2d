// The title line at the top of a printed page.
#include <string>
#include <string_view>

#include "map/map_document.h"
#include "map/plot.h"
#include "map/projection.h"
#include "session/session_state.h"
#include "text/numbers.h"

namespace orvantis {

namespace {

// The letters of the glyph font, without its glyphs in the place of accented ones.
constexpr std::string_view kTitleFont = "DejaVu Sans";
constexpr float kTitleSize = 9;

// A longer title of the map leaves no room between it and the heading.
constexpr std::size_t kShortTitle = 71;

std::string TextOf(std::string (*connection)()) {
    return connection == nullptr ? "" : connection();
}

void WriteText(int x, const std::string& text, TextAlign align) {
    if (!text.empty()) mapView.surface->TextOut(x, 0, text, align);
}

}  // namespace

void DrawPageTitle() {
    const SurfaceSize page = mapView.surface->Size();
    const int margin = RoundToInt16(page.height * 0.01);
    mapView.surface->SelectFont({std::string(kTitleFont), kTitleSize});

    std::string heading = TextOf(pageHeading);
    const std::string lines = TextOf(pageLines);
    if (!lines.empty()) heading += " - Lines: " + lines;
    WriteText(margin, heading, TextAlign::Left);

    const std::string& title = CurrentMap().title;
    WriteText(page.width - margin, title, TextAlign::Right);
    if (title.size() < kShortTitle) {
        WriteText(page.width / 2, "Orvantis " + session.VersionText, TextAlign::Centre);
    }
    SelectGlyphFont(true);
}

}  // namespace orvantis

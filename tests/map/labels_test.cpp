// What the plot hands to whoever draws the names of cities and countries: everything by which a
// place finds its position, and a surface on which it may draw at once.
#include "map/map_fixture.h"

namespace orvantis {
namespace {

class LabelsTest : public MapTest {
  protected:
    void SetUp() override {
        MapTest::SetUp();
        options.holdRefresh = kTrue;
        MapDocument& map = CurrentMap();
        map.south = 35;
        map.west = -12;
        map.north = 65;
        map.east = 48;
        map.hidden.fill(kTrue);
        map.hidden[3] = kFalse;
        map.hidden[8] = kFalse;
        map.cityFile = "cities";
    }

    // What was drawn from the label font on, up to the return to the glyph font.
    std::vector<std::string> Labels() {
        PlotMap4(kFalse, surface, kTrue);
        std::vector<std::string> drawn;
        bool within = false;
        for (const std::string& call : surface.log) {
            if (call.starts_with("SelectFont")) within = call.find("Names") != std::string::npos;
            if (within) drawn.push_back(call);
        }
        return drawn;
    }
};

TEST_F(LabelsTest, FillerFindsTheViewTheFontTheOutlinePenAndTheClip) {
    settings.textFontName = "Names";
    settings.textFontSize = 10;
    // A city by its rule: shown up to its width of view, a dot, and the name with a blank on either
    // side at its right, half a text height above it.
    plotCities = [] {
        std::int16_t x = 0;
        std::int16_t y = 0;
        const double lat = 50;
        const double longitude = 18;
        const ViewExtent& view = mapView.extent;
        if (view.spanLong > 60 || !PointInView(lat, longitude, view.southMin, view.northMin,
                                               view.westMin, view.eastMin)) {
            return;
        }
        ProjectPoint(static_cast<std::int16_t>(lat * 60), static_cast<std::int16_t>(longitude * 60),
                     y, x);
        const int size = mapView.rect.width > 640 ? mapView.rect.width / 400 + 1 : 1;
        mapView.surface->SetPixel(x, y);
        mapView.surface->TextOut(x + size, y - mapView.surface->TextExtent(" Tarn ").height / 2,
                                 " Tarn ", TextAlign::Left);
    };
    const std::vector<std::string> labels = Labels();
    // 6 pixels a degree each way: 30 degrees east of the edge, 15 south of it.
    EXPECT_EQ(labels, (std::vector<std::string>{labels.front(), "SetPixel 205 129",
                                                "TextOut 206 123 0  Tarn "}));
    const std::vector<std::string> clips = surface.Calls("ClipToRectangle");
    EXPECT_EQ(clips, std::vector<std::string>{"ClipToRectangle 25 39 385 219"});
    EXPECT_EQ(surface.GetPixel(205, 129), plotState.outlineColour);
}

TEST_F(LabelsTest, NamesAreBelowTheChartsLinesAndInTheStoredImage) {
    static std::vector<std::string> order;
    order.clear();
    plotCountryNames = [](bool capitals) {
        order.emplace_back(capitals ? "countries in capitals" : "countries");
        mapView.surface->SetPixel(100, 100);
    };
    plotCities = [] { order.emplace_back("cities"); };
    plotChartLines = [](Flag, Flag, std::int16_t) { order.emplace_back("lines"); };
    PlotMap4(kFalse, surface, kTrue);
    EXPECT_EQ(order, (std::vector<std::string>{"countries in capitals", "cities", "lines"}));
    const std::size_t at = 100U * kSurfaceWidth + 100U;
    EXPECT_EQ(session.StoredImage.pixels[at] & 0xFFFFFF, 0U);
}

TEST_F(LabelsTest, QuickPassDrawsNoNames) {
    static int names = 0;
    names = 0;
    plotCountryNames = [](bool) { ++names; };
    plotCities = [] { ++names; };
    PlotMap4(kFalse, surface, kTrue);
    EXPECT_EQ(names, 2);
    PlotMap4(kFalse, surface, kFalse);
    EXPECT_EQ(names, 2);
}

}  // namespace
}  // namespace orvantis

// The shipped world as it is drawn in a dozen views, each at the finest and the coarsest precision
// with the grid on: how many calls of each kind reach the surface, and a digest of all of them in
// their order. A change of the drawing that is meant is written to the file by a run with the
// environment variable ORVANTIS_WRITE_GOLDEN set.
#include <cstdlib>
#include <fstream>
#include <iomanip>
#include <sstream>

#include "map/map_fixture.h"
#include "support/paths.h"

namespace orvantis {
namespace {

// Counts and digests the calls that draw the map's lines. Every pixel reads as one of the outline,
// so that no flood starts.
class DigestSurface : public DrawingSurface {
  public:
    SurfaceSize Size() const override { return {1000, 600}; }
    void Clear(Colour /*colour*/) override {}
    void SetPen(const Pen& /*pen*/) override {}
    void SelectFont(const Font& /*font*/) override {}
    void MoveTo(int x, int y) override {
        ++moves;
        Add({1, x, y});
    }
    void LineTo(int x, int y) override {
        ++lines;
        Add({2, x, y});
    }
    void SetPixel(int x, int y) override {
        ++pixels;
        Add({3, x, y});
    }
    Colour GetPixel(int /*x*/, int /*y*/) override { return plotState.outlineColour; }
    void Rectangle(int left, int top, int right, int bottom, const Brush& /*brush*/) override {
        Add({4, left, top, right, bottom});
    }
    void Ellipse(int left, int top, int right, int bottom, const Brush& /*brush*/) override {
        Add({5, left, top, right, bottom});
    }
    void Arc(int left, int top, int right, int bottom, double startDegrees,
             double spanDegrees) override {
        ++arcs;
        Add({6, left, top, right, bottom, static_cast<int>(startDegrees),
             static_cast<int>(spanDegrees)});
    }
    void Polygon(const std::vector<SurfacePoint>& /*points*/, const Brush& /*brush*/,
                 bool /*outline*/) override {}
    void TextOut(int /*x*/, int /*y*/, std::string_view /*text*/, TextAlign /*align*/) override {}
    SurfaceSize TextExtent(std::string_view text) override {
        return {7 * static_cast<int>(text.size()), 13};
    }
    bool FloodFill(int /*x*/, int /*y*/, Colour /*colour*/, Colour /*border*/) override {
        return false;
    }
    void ClipToRectangle(int left, int top, int right, int bottom) override {
        Add({7, left, top, right, bottom});
    }
    void ClipToEllipse(int left, int top, int right, int bottom) override {
        Add({8, left, top, right, bottom});
    }
    void ClearClip() override {}
    void CopyImage(Image& /*image*/) override {}
    void PutImage(const Image& /*image*/) override {}
    void Refresh() override {}

    int moves = 0;
    int lines = 0;
    int pixels = 0;
    int arcs = 0;
    std::uint64_t digest = 14695981039346656037U;  // FNV-1a, by whole numbers

  private:
    void Add(std::initializer_list<int> numbers) {
        for (const int number : numbers) {
            digest = (digest ^ static_cast<std::uint32_t>(number)) * 1099511628211U;
        }
    }
};

struct GoldenView {
    const char* name;
    float south, west, north, east;
    std::int16_t projection;
};

constexpr GoldenView kViews[] = {
    {"world", -90, -180, 90, 180, projection::kCartesian},
    {"world_mercator", -65, -180, 75, 180, projection::kMercator},
    {"world_from_30_west", -90, -30, 90, -30, projection::kCartesian},
    {"europe", 35, -12, 65, 40, projection::kCartesian},
    {"europe_mercator", 35, -12, 65, 40, projection::kMercator},
    {"japan_over_the_date_line", 10, 120, 60, -150, projection::kCartesian},
    {"antarctica", -90, -180, -60, 180, projection::kCartesian},
    {"sphere_equator", 0, -90, 0, 90, projection::kGlobeSphere},
    {"sphere_north_pole", 90, -90, 90, 90, projection::kGlobeSphere},
    {"sphere_tilted_over_the_date_line", -35, 80, -35, -100, projection::kGlobeSphere},
    {"oblate_equator", 0, -170, 0, 10, projection::kGlobeOblate},
    {"oblate_south_pole", -90, -90, -90, 90, projection::kGlobeOblate},
};

// One row of the file: name, precision, calls of each kind, digest.
std::string Draw(const GoldenView& view, std::int16_t precision) {
    MapDocument& map = CurrentMap();
    map = {};
    map.south = view.south;
    map.west = view.west;
    map.north = view.north;
    map.east = view.east;
    map.projection = view.projection;
    map.precision = precision;
    map.gridOn = kTrue;
    map.hidden.fill(kFalse);
    DigestSurface surface;
    PlotMap4(kFalse, surface, kTrue);
    std::ostringstream row;
    row << view.name << ' ' << precision << ' ' << surface.moves << " moves " << surface.lines
        << " lines " << surface.pixels << " pixels " << surface.arcs << " arcs " << std::hex
        << std::setw(16) << std::setfill('0') << surface.digest;
    return row.str();
}

class GoldenTest : public MapTest {};

TEST_F(GoldenTest, ShippedWorldIsDrawnAsBefore) {
    level1 = FileBytes(DataFile("level1.pnt"));
    ASSERT_FALSE(level1.empty());
    MakeDatabase();
    std::vector<std::string> drawn;
    for (const GoldenView& view : kViews) {
        for (const std::int16_t precision : {1, 5}) drawn.push_back(Draw(view, precision));
    }
    EXPECT_TRUE(TestShell().boxes.empty());

    const std::string path = TestFile("map/golden/views.txt");
    if (std::getenv("ORVANTIS_WRITE_GOLDEN") != nullptr) {
        std::ofstream file(path);
        for (const std::string& row : drawn) file << row << '\n';
    }
    std::ifstream file(path);
    std::vector<std::string> golden;
    for (std::string row; std::getline(file, row);) golden.push_back(row);
    EXPECT_EQ(drawn, golden);
}

}  // namespace
}  // namespace orvantis

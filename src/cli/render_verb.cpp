// The verb "render": the very picture that the window shows.
#include <algorithm>
#include <array>
#include <cmath>
#include <iostream>
#include <memory>
#include <nlohmann/json.hpp>

#include "cli/line_options.h"
#include "cli/load_picture.h"
#include "cli/verbs.h"
#include "map/map_document.h"
#include "map/plot.h"
#include "map/projection.h"
#include "map/world_zoom.h"
#include "session/driver.h"
#include "session/files.h"
#include "session/session_state.h"
#include "session/settings.h"
#include "text/number_text.h"
#include "text/strings.h"

namespace orvantis::cli {

using Json = nlohmann::ordered_json;

namespace {

constexpr std::int32_t kLeastSize = 64;
constexpr std::int32_t kMostSize = 16384;
constexpr std::array<std::string_view, 4> kProjections = {"cartesian", "mercator", "sphere",
                                                          "oblate"};

bool IsSize(std::optional<std::int32_t> number) {
    return number && *number >= kLeastSize && *number <= kMostSize;
}

// What the picture is written as.
enum class Format { Png, Pdf, Svg };

// What a call asks for; a value that it doesn't name is empty.
struct RenderCall {
    std::string out;
    Format format = Format::Png;
    SurfaceSize size{1920, 1080};
    std::optional<std::int16_t> projection;
    std::optional<std::int16_t> precision;
    std::optional<std::array<float, 4>> view;  // south, west, north, east, degrees
    bool gridOn = false;
    std::optional<std::array<float, 2>> gridSteps;  // latitude, longitude, degrees
};

// "WIDTHxHEIGHT" in pixels.
int ParseSize(const std::string& text, SurfaceSize& size) {
    const std::size_t cross = text.find('x');
    const auto width = ParseInteger(std::string_view(text).substr(0, cross));
    const auto height = cross == std::string::npos
                            ? std::nullopt
                            : ParseInteger(std::string_view(text).substr(cross + 1));
    if (!IsSize(width) || !IsSize(height)) {
        return Complain(kWrongCall, "--size " + text,
                        "a size such as 1920x1080 is needed, each from 64 to 16384");
    }
    size = {*width, *height};
    return kDone;
}

// "S,W,N,E" in degrees, at least a minute of arc high and wide; from a meridian to the same one, or
// from the date line to the date line, is the whole way round.
int ParseView(const std::string& text, std::optional<std::array<float, 4>>& view) {
    constexpr float kLeast = 1.0F / 60;
    std::array<float, 4> edges{};
    std::string_view rest = text;
    bool good = true;
    for (std::size_t i = 0; i < edges.size() && good; ++i) {
        const std::size_t comma = rest.find(',');
        const auto number = ParseNumber(rest.substr(0, comma));
        const double limit = i % 2 == 0 ? 90 : 180;
        good =
            number && std::abs(*number) <= limit && (comma == std::string_view::npos) == (i == 3);
        if (!good) break;
        edges[i] = static_cast<float>(*number);
        rest.remove_prefix(comma == std::string_view::npos ? rest.size() : comma + 1);
    }
    float wide = edges[3] - edges[1];
    if (wide < 0) wide += 360;
    if (!good || edges[2] - edges[0] < kLeast || (wide != 0 && wide < kLeast)) {
        return Complain(kWrongCall, "--view " + text,
                        "S,W,N,E in degrees is needed, south below north, at least a sixtieth of "
                        "a degree high and wide");
    }
    view = edges;
    return kDone;
}

int ParseProjection(const std::string& name, std::optional<std::int16_t>& projection) {
    const auto* found = std::find(kProjections.begin(), kProjections.end(), name);
    if (found == kProjections.end()) {
        return Complain(kWrongCall, "--projection " + name,
                        "cartesian, mercator, sphere or oblate is needed");
    }
    projection = static_cast<std::int16_t>(found - kProjections.begin());
    return kDone;
}

// A Mercator map of a pole would be endlessly high.
int CheckMercator(const RenderCall& render, std::int16_t number) {
    constexpr float kMostLat = 89;
    if (!render.view || number != projection::kMercator) return kDone;
    if ((*render.view)[0] >= -kMostLat && (*render.view)[2] <= kMostLat) return kDone;
    return Complain(kWrongCall, "--view", "latitudes from -89 to 89 are needed on a Mercator map");
}

int ParsePrecision(const std::string& text, std::optional<std::int16_t>& precision) {
    const auto number = ParseInteger(text);
    if (!number || *number < 1 || *number > 5) {
        return Complain(kWrongCall, "--precision " + text,
                        "a number from 1 (finest) to 5 is needed");
    }
    precision = static_cast<std::int16_t>(*number);
    return kDone;
}

int ParseOut(const std::optional<std::string>& out, RenderCall& render) {
    constexpr std::array<std::pair<std::string_view, Format>, 3> kFormats = {
        {{".png", Format::Png}, {".svg", Format::Svg}, {".pdf", Format::Pdf}}};
    if (!out) return Complain(kWrongCall, "render", "-o OUT.png, OUT.svg or OUT.pdf is needed");
    for (const auto& [ending, format] : kFormats) {
        if (!LowerCase(*out).ends_with(ending)) continue;
        render.out = *out;
        render.format = format;
        return kDone;
    }
    return Complain(kWrongCall, "-o " + *out, "a name that ends in .png, .svg or .pdf is needed");
}

// "LAT,LONG" in degrees.
int ParseGrid(const std::string& text, RenderCall& render) {
    const std::size_t comma = text.find(',');
    const auto lat = ParseNumber(std::string_view(text).substr(0, comma));
    const auto longitude = comma == std::string::npos
                               ? std::nullopt
                               : ParseNumber(std::string_view(text).substr(comma + 1));
    const auto isStep = [](std::optional<double> step) {
        return step && *step >= 1 && *step <= 90;
    };
    if (!isStep(lat) || !isStep(longitude)) {
        return Complain(kWrongCall, "--grid " + text,
                        "LAT,LONG is needed, steps in degrees from 1 to 90");
    }
    render.gridSteps = {static_cast<float>(*lat), static_cast<float>(*longitude)};
    return kDone;
}

// Everything that can be wrong with the call itself, before any work.
int ParseCall(const Arguments& call, RenderCall& render) {
    int status = ParseOut(call.Value("-o"), render);
    if (status != kDone) return status;
    if (call.words.size() > 1) return Complain(kWrongCall, "render", "takes one FILE[:N]");
    if (const auto text = call.Value("--size")) status = ParseSize(*text, render.size);
    if (const auto text = call.Value("--projection"); text && status == kDone) {
        status = ParseProjection(*text, render.projection);
    }
    if (const auto text = call.Value("--precision"); text && status == kDone) {
        status = ParsePrecision(*text, render.precision);
    }
    if (const auto text = call.Value("--view"); text && status == kDone) {
        status = ParseView(*text, render.view);
    }
    if (render.projection && status == kDone) status = CheckMercator(render, *render.projection);
    render.gridOn = call.Has("--grid") || call.Value("--grid");
    if (const auto text = call.Value("--grid"); text && status == kDone) {
        status = ParseGrid(*text, render);
    }
    return status;
}

// What the call changes of the map document. The edges are those of a flat view; a globe then
// looks at their middle.
void ApplyToMap(const RenderCall& render) {
    MapDocument& map = CurrentMap();
    if (render.precision) map.precision = *render.precision;
    if (render.gridOn) map.gridOn = kTrue;
    if (render.gridSteps) {
        map.gridLatStep = (*render.gridSteps)[0];
        map.gridLongStep = (*render.gridSteps)[1];
    }
    const std::int16_t wanted = render.projection.value_or(map.projection);
    if (render.view) {
        map.south = (*render.view)[0];
        map.west = (*render.view)[1];
        map.north = (*render.view)[2];
        map.east = (*render.view)[3];
        if (!IsFlat(map.projection) || !IsFlat(wanted)) map.projection = projection::kCartesian;
    }
    if (wanted == map.projection || (render.view && IsFlat(wanted))) {
        map.projection = wanted;
        return;
    }
    SetViewExtent();
    const std::int16_t before = map.projection;
    map.projection = wanted;
    ChangeProjection(wanted, before);
}

// True if --points has a list of numbers and not the name of a file.
bool ListsPoints(const Arguments& call) {
    const auto points = call.Value("--points");
    return points && points->find_first_not_of("0123456789,-") == std::string::npos;
}

// What the call says of lines and points in so many words.
bool ApplyLinesAndPoints(const Arguments& call) {
    return ApplyLineOptions(call) && (!ListsPoints(call) || ApplyPoints(call));
}

// Settings, points and map that the call names.
int LoadNamedFiles(const Arguments& call) {
    for (const std::string_view option : {"--settings", "--points", "--map"}) {
        if (option == "--points" && ListsPoints(call)) continue;
        const auto path = call.Value(option);
        if (path && FileExists(*path) == 0) return Complain(kUnreadable, *path, WhyNoFile(*path));
    }
    if (const auto path = call.Value("--settings"); path && LoadSettings(*path, kFalse) != 0) {
        return Complain(kUnreadable, *path, "not a settings file");
    }
    if (const auto path = call.Value("--points"); path && !ListsPoints(call)) {
        LoadPointSelection(*path);
    }
    if (const auto path = call.Value("--map")) {
        if (OpenMap(*path, kFalse) != 0) return kUnreadable;
    } else {
        NewMap(kFalse);
    }
    return kDone;
}

// An edge as the shortest number that is the float: 10.1, and not the double nearest to the float.
double ShownEdge(float edge) {
    return Json::parse(ShortNumberText(edge)).get<double>();
}

void PrintView() {
    const MapDocument& map = CurrentMap();
    const MapRect& rect = mapView.rect;
    const Json view = {{"south", ShownEdge(map.south)},
                       {"west", ShownEdge(map.west)},
                       {"north", ShownEdge(map.north)},
                       {"east", ShownEdge(map.east)},
                       {"projection", kProjections[static_cast<std::size_t>(map.projection)]},
                       {"precision", map.precision}};
    const Json mapRect = {
        {"left", rect.left}, {"top", rect.top}, {"width", rect.width}, {"height", rect.height}};
    std::cout << Json{{"view", view}, {"mapRect", mapRect}}.dump(2) << "\n";
}

}  // namespace

const std::string_view kRenderHelp =
    R"(orvantis-cli render [FILE[:N]] -o OUT.png|OUT.svg|OUT.pdf [--size 1920x1080] [--map F.ovm]
    [--settings F.ovs] [--points F.pts|1,3,5-12] [--projection cartesian|mercator|sphere|oblate]
    [--precision 1..5] [--view S,W,N,E] [--grid [LAT,LONG]] [--json]
    [--types 1-4,10] [--mode mundo|zodiacal] [--geodetic START] [--paran-point P]
    [--limit LATITUDE]

Draws the map with the lines of chart N (the first if N isn't given), or without a chart, as the
window shows it. The view's edges are degrees; latitude north positive, longitude EAST positive;
a west above its east crosses the date line, equal ones are the whole way round. A Mercator map
takes latitudes from -89 to 89. A globe looks at the middle of the view.
In an SVG or a PDF lines, texts and glyphs are vectors, land and sea a picture beneath them; 96
pixels of the size are an inch.
The last two rows of options and a list of points are those of the verb lines; they go before what
the settings say.
--grid shows the coordinate grid, every LAT and LONG degrees, 1 to 90, or in the map's own steps.
--json prints the view and where the map lies in the picture, in pixels.

Example: orvantis-cli render data/sample.cht:1 -o world.pdf --size 1600x900 --precision 1 --grid
)";

namespace {

// Writes what was drawn in the format of the call.
bool WritePicture(const PictureModule& module, const RenderCall& render, DrawingSurface& surface) {
    switch (render.format) {
        case Format::Pdf:
            return module.savePdf(render.out, surface);
        case Format::Svg:
            return module.saveSvg(render.out, surface);
        case Format::Png:
            break;
    }
    Image image;
    surface.CopyImage(image);
    return module.savePng(render.out, image);
}

// A view that the call names has the sea that zooms to it would have found, in a window of a usual
// size, whatever the size of the picture.
int ZoomToView(const RenderCall& render, CliShell& shell) {
    constexpr SurfaceSize kWindow{1920, 1080};
    if (!render.view) return kDone;
    const PictureModule* module = LoadPictureModule();
    if (module == nullptr) return kWorkFailed;
    const std::unique_ptr<DrawingSurface> surface(
        module->makeSurface(kWindow.width, kWindow.height));
    shell.complained = false;
    return ZoomFromWorld(*surface) && !shell.complained ? kDone : kWorkFailed;
}

// Plots the map on a surface of the format's kind and writes it.
int DrawPicture(const RenderCall& render, CliShell& shell) {
    const PictureModule* module = LoadPictureModule();
    if (module == nullptr) return kWorkFailed;
    const auto make = render.format == Format::Png ? module->makeSurface : module->makePage;
    const std::unique_ptr<DrawingSurface> surface(make(render.size.width, render.size.height));
    session.picture = surface.get();
    shell.complained = false;
    PlotMap4(kFalse, *surface, kTrue);
    session.picture = nullptr;
    if (shell.complained) return kWorkFailed;
    if (WritePicture(*module, render, *surface)) return kDone;
    return Complain(kWorkFailed, render.out, "can't be written");
}

}  // namespace

int RunRender(const std::vector<std::string>& words, CliShell& shell) {
    std::vector<std::string_view> names = {"-o",       "--size",       "--map",       "--settings",
                                           "--points", "--projection", "--precision", "--view"};
    names.insert(names.end(), kLineOptions.begin(), kLineOptions.end());
    const std::optional<Arguments> call = TakeApart(words, {names, {"--json"}, {"--grid"}});
    if (!call) return kWrongCall;
    RenderCall render;
    int status = ParseCall(*call, render);
    if (status != kDone) return status;
    // Once to find what is wrong before any work, and again over what the settings' file says.
    if (!ApplyLinesAndPoints(*call)) return kWrongCall;
    if (LoadDatabase() != 0) return kUnreadable;
    status = LoadNamedFiles(*call);
    if (status != kDone) return status;
    ApplyLinesAndPoints(*call);
    status = CheckMercator(render, render.projection.value_or(CurrentMap().projection));
    if (status != kDone) return status;
    ApplyToMap(render);
    status = ZoomToView(render, shell);
    if (status == kDone && !call->words.empty())
        status = OpenNamedChart(call->words.front(), shell);
    if (status == kDone) status = DrawPicture(render, shell);
    if (status == kDone && call->Has("--json")) PrintView();
    return status;
}

}  // namespace orvantis::cli

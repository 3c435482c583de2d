// The verb "render": the very picture that the window shows.
#include <algorithm>
#include <array>
#include <cmath>
#include <iostream>
#include <memory>
#include <nlohmann/json.hpp>

#include "cli/load_picture.h"
#include "cli/verbs.h"
#include "map/map_document.h"
#include "map/plot.h"
#include "map/projection.h"
#include "session/driver.h"
#include "session/files.h"
#include "session/session_state.h"
#include "session/settings.h"
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

// "S,W,N,E" in degrees.
int ApplyView(const std::string& text) {
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
    if (!good || edges[0] >= edges[2]) {
        return Complain(kWrongCall, "--view " + text,
                        "S,W,N,E in degrees is needed, south below north");
    }
    MapDocument& map = CurrentMap();
    map.south = edges[0];
    map.west = edges[1];
    map.north = edges[2];
    map.east = edges[3];
    return kDone;
}

// What the call changes of the map document.
int ApplyMapOptions(const Arguments& call) {
    MapDocument& map = CurrentMap();
    if (const auto name = call.Value("--projection")) {
        const auto* found = std::find(kProjections.begin(), kProjections.end(), *name);
        if (found == kProjections.end()) {
            return Complain(kWrongCall, "--projection " + *name,
                            "cartesian, mercator, sphere or oblate is needed");
        }
        SetViewExtent();
        const std::int16_t before = map.projection;
        map.projection = static_cast<std::int16_t>(found - kProjections.begin());
        ChangeProjection(map.projection, before);
    }
    if (const auto precision = call.Value("--precision")) {
        const auto number = ParseInteger(*precision);
        if (!number || *number < 1 || *number > 5) {
            return Complain(kWrongCall, "--precision " + *precision,
                            "a number from 1 (finest) to 5 is needed");
        }
        map.precision = static_cast<std::int16_t>(*number);
    }
    if (const auto view = call.Value("--view")) return ApplyView(*view);
    return kDone;
}

// Settings, points and map that the call names.
int LoadNamedFiles(const Arguments& call) {
    for (const std::string_view option : {"--settings", "--points", "--map"}) {
        const auto path = call.Value(option);
        if (path && FileExists(*path) == 0) return Complain(kUnreadable, *path, "File not found");
    }
    if (const auto path = call.Value("--settings")) {
        Bytes bytes;
        if (!ReadWholeFile(*path, 1 << 20, bytes) || bytes.size() < 340) {
            return Complain(kUnreadable, *path, "not a settings file");
        }
        LoadSettings(*path, kFalse);
    }
    if (const auto path = call.Value("--points")) LoadPointSelection(*path);
    if (const auto path = call.Value("--map")) {
        if (OpenMap(*path, kFalse) != 0) return kUnreadable;
    } else {
        NewMap(kFalse);
    }
    return kDone;
}

void PrintView() {
    const MapDocument& map = CurrentMap();
    const MapRect& rect = mapView.rect;
    const Json view = {{"south", map.south},
                       {"west", map.west},
                       {"north", map.north},
                       {"east", map.east},
                       {"projection", kProjections[static_cast<std::size_t>(map.projection)]},
                       {"precision", map.precision}};
    const Json mapRect = {
        {"left", rect.left}, {"top", rect.top}, {"width", rect.width}, {"height", rect.height}};
    std::cout << Json{{"view", view}, {"mapRect", mapRect}}.dump(2) << "\n";
}

}  // namespace

const std::string_view kRenderHelp =
    R"(orvantis-cli render [FILE[:N]] -o OUT.png [--size 1920x1080] [--map F.ovm] [--settings F.ovs]
    [--points F.pts] [--projection cartesian|mercator|sphere|oblate] [--precision 1..5]
    [--view S,W,N,E] [--json]

Draws the map with the lines of chart N (the first if N isn't given), or without a chart, as the
window shows it. The view's edges are degrees; latitude north positive, longitude EAST positive;
a west above its east crosses the date line.
--json prints the view and where the map lies in the picture, in pixels.

Example: orvantis-cli render data/sample.cht:1 -o world.png --size 1600x900 --precision 1
)";

int RunRender(const std::vector<std::string>& words, CliShell& shell) {
    const std::optional<Arguments> call =
        TakeApart(words, {{"-o", "--size", "--map", "--settings", "--points", "--projection",
                           "--precision", "--view"},
                          {"--json"}});
    if (!call) return kWrongCall;
    const auto out = call->Value("-o");
    if (!out) return Complain(kWrongCall, "render", "-o OUT.png is needed");
    if (!LowerCase(*out).ends_with(".png")) {
        return Complain(kWrongCall, "-o " + *out, "a name that ends in .png is needed");
    }
    if (call->words.size() > 1) return Complain(kWrongCall, "render", "takes one FILE[:N]");
    SurfaceSize size{1920, 1080};
    if (const auto text = call->Value("--size")) {
        const int parsed = ParseSize(*text, size);
        if (parsed != kDone) return parsed;
    }

    if (LoadDatabase() != 0) return kUnreadable;
    int status = LoadNamedFiles(*call);
    if (status == kDone) status = ApplyMapOptions(*call);
    if (status == kDone && !call->words.empty()) {
        status = OpenNamedChart(call->words.front(), shell);
    }
    if (status != kDone) return status;

    const PictureModule* module = LoadPictureModule();
    if (module == nullptr) return kWorkFailed;
    const std::unique_ptr<DrawingSurface> surface(module->makeSurface(size.width, size.height));
    session.picture = surface.get();
    shell.complained = false;
    PlotMap4(kFalse, *surface, kTrue);
    session.picture = nullptr;
    if (shell.complained) return kWorkFailed;
    Image image;
    surface->CopyImage(image);
    if (!module->savePng(*out, image)) return Complain(kWorkFailed, *out, "can't be written");
    if (call->Has("--json")) PrintView();
    return kDone;
}

}  // namespace orvantis::cli

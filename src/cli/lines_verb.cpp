// The verb "lines": every line of a chart, for other programs.
#include <algorithm>
#include <array>
#include <cmath>
#include <cstdio>
#include <iostream>
#include <nlohmann/json.hpp>

#include "charts/CALCCHRT.h"
#include "cli/verbs.h"
#include "lines/chart_lines.h"
#include "lines/line_geometry.h"
#include "session/driver.h"
#include "session/settings.h"
#include "session/tables.h"
#include "text/code_page.h"

namespace orvantis::cli {

using Json = nlohmann::ordered_json;

namespace {

std::size_t Index(std::int16_t number) {
    return static_cast<std::size_t>(number);
}

// One line of the chart, ready for any of the formats.
struct ExportedLine {
    std::int16_t type = 0;
    std::int16_t point = 0;
    std::vector<std::vector<LinePosition>> runs;
};

// The name of a line type in the line mode of the options.
std::string TypeName(std::int16_t type) {
    static constexpr std::array<std::string_view, 5> zodiacal = {"", "MC", "IC", "Asc", "Dsc"};
    return std::string(options.lineMode == 2 ? zodiacal[Index(type)] : kLineTypeNames[Index(type)]);
}

// Nine decimals: a tenth of a millimetre on the ground, and no digits beyond what a double holds.
double Rounded(double degrees) {
    return std::round(degrees * 1e9) / 1e9;
}

std::vector<ExportedLine> CollectLines() {
    std::vector<ExportedLine> lines;
    const LineFrame frame = MakeLineFrame(1);
    for (std::int16_t type = line_type::kCulminate; type <= line_type::kSet; ++type) {
        if (settings.lineStyle[Index(type)].displayed == 0) continue;
        for (std::int16_t p = 1; p <= point::kLastBody; ++p) {
            if (!IsPointDrawn(1, p)) continue;
            std::vector<std::vector<LinePosition>> runs = LineRuns(frame, p, type);
            if (!runs.empty()) lines.push_back({type, p, std::move(runs)});
        }
    }
    return lines;
}

Json Coordinates(const std::vector<LinePosition>& run) {
    Json list = Json::array();
    for (const LinePosition& position : run) {
        list.push_back({Rounded(position.longitude), Rounded(position.lat)});
    }
    return list;
}

// RFC 7946: a line that crosses the antimeridian is cut there into several.
Json Geometry(const ExportedLine& line) {
    if (line.runs.size() == 1) {
        return {{"type", "LineString"}, {"coordinates", Coordinates(line.runs.front())}};
    }
    Json list = Json::array();
    for (const auto& run : line.runs) list.push_back(Coordinates(run));
    return {{"type", "MultiLineString"}, {"coordinates", list}};
}

void PrintGeoJson(const std::vector<ExportedLine>& lines) {
    Json features = Json::array();
    for (const ExportedLine& line : lines) {
        features.push_back({{"type", "Feature"},
                            {"properties",
                             {{"type", line.type},
                              {"typeName", TypeName(line.type)},
                              {"point", line.point},
                              {"pointName", PointName(line.point)}}},
                            {"geometry", Geometry(line)}});
    }
    std::cout << Json{{"type", "FeatureCollection"}, {"features", features}}.dump() << "\n";
}

void PrintCsv(const std::vector<ExportedLine>& lines) {
    std::cout << "type,typeName,point,pointName,run,latitude,longitude\n";
    std::array<char, 64> numbers{};
    for (const ExportedLine& line : lines) {
        const std::string head = std::to_string(line.type) + "," + TypeName(line.type) + "," +
                                 std::to_string(line.point) + "," +
                                 std::string(PointName(line.point)) + ",";
        for (std::size_t run = 0; run < line.runs.size(); ++run) {
            for (const LinePosition& position : line.runs[run]) {
                std::snprintf(numbers.data(), numbers.size(), "%zu,%.9f,%.9f", run + 1,
                              position.lat, position.longitude);
                std::cout << head << numbers.data() << "\n";
            }
        }
    }
}

void PrintKml(const std::vector<ExportedLine>& lines) {
    std::cout << "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
                 "<kml xmlns=\"http://www.opengis.net/kml/2.2\">\n<Document>\n";
    std::array<char, 64> numbers{};
    for (const ExportedLine& line : lines) {
        std::cout << "<Placemark><name>" << PointName(line.point) << " " << TypeName(line.type)
                  << "</name><MultiGeometry>\n";
        for (const auto& run : line.runs) {
            std::cout << "<LineString><tessellate>1</tessellate><coordinates>";
            for (const LinePosition& position : run) {
                std::snprintf(numbers.data(), numbers.size(), "%.9f,%.9f ", position.longitude,
                              position.lat);
                std::cout << numbers.data();
            }
            std::cout << "</coordinates></LineString>\n";
        }
        std::cout << "</MultiGeometry></Placemark>\n";
    }
    std::cout << "</Document>\n</kml>\n";
}

// Line types and points of the call take the place of those of the settings.
bool ApplySelection(const Arguments& call) {
    if (const auto types = call.Value("--types")) {
        const auto numbers = ParseNumberList(*types, line_type::kCulminate, line_type::kSet);
        if (!numbers) {
            Complain(kWrongCall, "--types " + *types, "a list of numbers from 1 to 4 is needed");
            return false;
        }
        for (LineStyle& style : settings.lineStyle) style.displayed = kFalse;
        for (const std::int16_t type : *numbers) {
            settings.lineStyle[Index(type)].displayed = kTrue;
        }
    }
    if (const auto points = call.Value("--points")) {
        const auto numbers = ParseNumberList(*points, 1, point::kLastBody);
        if (!numbers) {
            Complain(kWrongCall, "--points " + *points, "a list of numbers from 1 to 36 is needed");
            return false;
        }
        pointSelection.fill(kFalse);
        for (const std::int16_t p : *numbers) pointSelection[Index(p)] = kTrue;
    }
    if (const auto mode = call.Value("--mode")) {
        if (*mode != "mundo" && *mode != "zodiacal") {
            Complain(kWrongCall, "--mode " + *mode, "mundo or zodiacal is needed");
            return false;
        }
        options.lineMode = *mode == "mundo" ? 1 : 2;
    }
    return true;
}

}  // namespace

const std::string_view kLinesHelp =
    R"(orvantis-cli lines FILE[:N] --geojson|--csv|--kml
    [--types 1,2,3,4] [--points 1,3,5-12] [--mode mundo|zodiacal]

Prints every line of chart N (the first if N isn't given), as it is drawn on the map: where each
point culminates (type 1), anticulminates (2), rises (3) and sets (4). Degrees; latitude north
positive, longitude EAST positive. Lines are cut at the antimeridian.
Without --types and --points those of the settings and of the point selection are taken.

Example: orvantis-cli lines data/sample.cht:1 --geojson --points 1,3 > lines.geojson
)";

int RunLines(const std::vector<std::string>& words, CliShell& shell) {
    const std::optional<Arguments> call =
        TakeApart(words, {{"--types", "--points", "--mode"}, {"--geojson", "--csv", "--kml"}});
    if (!call) return kWrongCall;
    if (call->words.size() != 1) return Complain(kWrongCall, "lines", "takes one FILE[:N]");
    if (call->flags.size() != 1) {
        return Complain(kWrongCall, "lines", "one of --geojson, --csv and --kml is needed");
    }
    if (!ApplySelection(*call)) return kWrongCall;
    const int opened = OpenNamedChart(call->words.front(), shell);
    if (opened != kDone) return opened;

    const std::vector<ExportedLine> lines = CollectLines();
    if (call->Has("--geojson")) {
        PrintGeoJson(lines);
    } else if (call->Has("--csv")) {
        PrintCsv(lines);
    } else {
        PrintKml(lines);
    }
    return kDone;
}

}  // namespace orvantis::cli

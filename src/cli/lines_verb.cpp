// The verbs "lines" and "parans": every line of a chart, and every paran, for other programs.
#include <algorithm>
#include <array>
#include <cmath>
#include <cstdio>
#include <iostream>
#include <nlohmann/json.hpp>

#include "charts/CALCCHRT.h"
#include "cli/line_options.h"
#include "cli/verbs.h"
#include "lines/chart_lines.h"
#include "lines/line_geometry.h"
#include "lines/line_list.h"
#include "lines/parans.h"
#include "session/driver.h"
#include "session/settings.h"
#include "session/tables.h"
#include "text/coordinates.h"
#include "text/numbers.h"

namespace orvantis::cli {

using Json = nlohmann::ordered_json;

namespace {

bool IsParan(const MapLine& line) {
    return line.type == line_type::kParanRiseRise || line.type == line_type::kParanRiseCulm;
}

// Nine decimals: a tenth of a millimetre on the ground, and no digits beyond what a double holds. A
// zero has no sign.
double Rounded(double degrees) {
    return std::round(degrees * 1e9) / 1e9 + 0.0;
}

Json Coordinates(LineRun run) {
    Json list = Json::array();
    for (const LinePosition& position : run) {
        list.push_back({Rounded(position.longitude), Rounded(position.lat)});
    }
    return list;
}

// RFC 7946: a line that crosses the antimeridian is cut there into several.
Json Geometry(const MapLine& line) {
    if (line.runs.size() == 1) {
        return {{"type", "LineString"}, {"coordinates", Coordinates(line.runs.front())}};
    }
    Json list = Json::array();
    for (const auto& run : line.runs) list.push_back(Coordinates(run));
    return {{"type", "MultiLineString"}, {"coordinates", list}};
}

Json Properties(const MapLine& line) {
    Json properties = {{"type", line.type}, {"typeName", LineTypeName(line.type)}};
    if (line.point > 0) {
        properties["point"] = line.point;
        properties["pointName"] = PointName(line.point);
    }
    properties["code"] = line.code;
    if (const std::string words = LineWords(line); !words.empty()) properties["words"] = words;
    if (IsParan(line)) properties["latitude"] = Rounded(line.lat);
    return properties;
}

void PrintGeoJson(const std::vector<MapLine>& lines) {
    Json features = Json::array();
    for (const MapLine& line : lines) {
        features.push_back(
            {{"type", "Feature"}, {"properties", Properties(line)}, {"geometry", Geometry(line)}});
    }
    std::cout << Json{{"type", "FeatureCollection"}, {"features", features}}.dump() << "\n";
}

void PrintCsv(const std::vector<MapLine>& lines) {
    std::cout << "type,typeName,point,pointName,code,words,run,latitude,longitude\n";
    std::array<char, 64> numbers{};
    for (const MapLine& line : lines) {
        std::string head = std::to_string(line.type);
        head.append(",").append(LineTypeName(line.type)).append(",");
        if (line.point > 0) head += std::to_string(line.point);
        head.append(",").append(line.point > 0 ? PointName(line.point) : "").append(",");
        head.append(std::to_string(line.code)).append(",").append(LineWords(line)).append(",");
        for (std::size_t run = 0; run < line.runs.size(); ++run) {
            for (const LinePosition& position : line.runs[run]) {
                std::snprintf(numbers.data(), numbers.size(), "%zu,%.9f,%.9f", run + 1,
                              Rounded(position.lat), Rounded(position.longitude));
                std::cout << head << numbers.data() << "\n";
            }
        }
    }
}

// What a line is called where it has one name alone.
std::string FullName(const MapLine& line) {
    std::string name = LineTypeName(line.type);
    if (IsParan(line)) return name + ": " + LineWords(line);
    if (line.point > 0) return std::string(PointName(line.point)) + " " + name;
    const std::string words = LineWords(line);
    return words.empty() ? name : name + ": " + words;
}

void PrintKml(const std::vector<MapLine>& lines) {
    std::cout << "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
                 "<kml xmlns=\"http://www.opengis.net/kml/2.2\">\n<Document>\n";
    std::array<char, 64> numbers{};
    for (const MapLine& line : lines) {
        std::cout << "<Placemark><name>" << FullName(line) << "</name><MultiGeometry>\n";
        for (const auto& run : line.runs) {
            std::cout << "<LineString><tessellate>1</tessellate><coordinates>";
            for (const LinePosition& position : run) {
                std::snprintf(numbers.data(), numbers.size(), "%.9f,%.9f ",
                              Rounded(position.longitude), Rounded(position.lat));
                std::cout << numbers.data();
            }
            std::cout << "</coordinates></LineString>\n";
        }
        std::cout << "</MultiGeometry></Placemark>\n";
    }
    std::cout << "</Document>\n</kml>\n";
}

// A paran of two points of a chart, as the verb lists it.
struct ListedParan {
    Paran paran;
    std::int16_t type = 0;
    std::int16_t first = 0;
    std::int16_t second = 0;
};

// Those of all pairs of points, but for the South Node, which rises when the North Node sets; from
// north to south.
std::vector<ListedParan> CollectParans() {
    const auto listed = [](std::int16_t p) { return p != point::kSouthNode && IsPointDrawn(1, p); };
    std::vector<ListedParan> parans;
    for (std::int16_t i = 1; i < point::kLast; ++i) {
        for (auto j = static_cast<std::int16_t>(i + 1); listed(i) && j <= point::kLast; ++j) {
            if (!listed(j)) continue;
            for (const std::int16_t type : {line_type::kParanRiseRise, line_type::kParanRiseCulm}) {
                for (const Paran& paran : ParansOfPair(1, i, j, type, options.paranLimit)) {
                    parans.push_back({paran, type, i, j});
                }
            }
        }
    }
    std::stable_sort(parans.begin(), parans.end(), [](const ListedParan& a, const ListedParan& b) {
        return a.paran.lat > b.paran.lat;
    });
    return parans;
}

std::string TextOf(const ListedParan& listed) {
    return ParanText(listed.paran.relation, listed.first, listed.second);
}

// What a digit of a relation says.
std::string_view AngleWord(int digit) {
    static constexpr std::array<std::string_view, 5> words = {"", "culminates", "anticulminates",
                                                              "rises", "sets"};
    return words[static_cast<std::size_t>(digit)];
}

void PrintParansJson(const std::vector<ListedParan>& parans) {
    Json rows = Json::array();
    for (const ListedParan& listed : parans) {
        rows.push_back({{"latitude", Rounded(listed.paran.lat)},
                        {"type", listed.type},
                        {"point1", listed.first},
                        {"angle1", AngleWord(listed.paran.relation / 10)},
                        {"point2", listed.second},
                        {"angle2", AngleWord(listed.paran.relation % 10)},
                        {"words", TextOf(listed)}});
    }
    std::cout << Json{{"parans", rows}}.dump() << "\n";
}

void PrintParans(const std::vector<ListedParan>& parans) {
    for (const ListedParan& listed : parans) {
        std::cout << FormatLatMinutes(RoundToInt16(static_cast<double>(listed.paran.lat) * 60))
                  << "  " << TextOf(listed) << "\n";
    }
}

}  // namespace

const std::string_view kLinesHelp =
    R"(orvantis-cli lines FILE[:N] --geojson|--csv|--kml
    [--types 1-4,10] [--points 1,3,5-12] [--mode mundo|zodiacal] [--geodetic START]
    [--paran-point P] [--limit LATITUDE]

Prints every line of chart N (the first if N isn't given), as it is drawn on the map. Types: where
each point culminates (1), anticulminates (2), rises (3) and sets (4); parans with point P, both on
the horizon (5) or one of them on the meridian (6), up to a latitude either way; local space (7),
local houses (8), horizon (9), ecliptic (10), signs (11).
Degrees; latitude north positive, longitude EAST positive. Lines are cut at the antimeridian.
--geodetic takes the geodetic zodiac, with 0 Aries at the longitude START.
Without --types and --points those of the settings and of the point selection are taken, P is 1 and
the limit 60.

Example: orvantis-cli lines data/sample.cht:1 --geojson --points 1,3 > lines.geojson
)";

const std::string_view kParansHelp =
    R"(orvantis-cli parans FILE[:N] [--limit LATITUDE] [--points 1,3,5-12] [--json]

Lists the latitudes, from north to south, on which two points of chart N (the first if N isn't
given) are angular at the same moment: both rising or setting, or one of them culminating or
anticulminating. Up to a latitude of 60 degrees either way, or of --limit. Upper and Lower tell
the point on the meridian above and below the pole. --json gives degrees, north positive.
The South Node is left out; its parans are the North Node's.
Without --points those of the point selection are taken.

Example: orvantis-cli parans data/sample.cht:1 --limit 50 --points 1,3,6
)";

int RunLines(const std::vector<std::string>& words, CliShell& shell) {
    std::vector<std::string_view> names(kLineOptions.begin(), kLineOptions.end());
    names.emplace_back("--points");
    const std::optional<Arguments> call =
        TakeApart(words, {names, {"--geojson", "--csv", "--kml"}});
    if (!call) return kWrongCall;
    if (call->words.size() != 1) return Complain(kWrongCall, "lines", "takes one FILE[:N]");
    if (call->flags.size() != 1) {
        return Complain(kWrongCall, "lines", "one of --geojson, --csv and --kml is needed");
    }
    if (!ApplyLineOptions(*call) || !ApplyPoints(*call)) return kWrongCall;
    const int opened = OpenNamedChart(call->words.front(), shell);
    if (opened != kDone) return opened;

    const std::vector<MapLine> lines = ListLines(1);
    if (call->Has("--geojson")) {
        PrintGeoJson(lines);
    } else if (call->Has("--csv")) {
        PrintCsv(lines);
    } else {
        PrintKml(lines);
    }
    return kDone;
}

int RunParans(const std::vector<std::string>& words, CliShell& shell) {
    const std::optional<Arguments> call = TakeApart(words, {{"--limit", "--points"}, {"--json"}});
    if (!call) return kWrongCall;
    if (call->words.size() != 1) return Complain(kWrongCall, "parans", "takes one FILE[:N]");
    if (!ApplyPoints(*call) || !ApplyLimit(*call)) return kWrongCall;
    const int opened = OpenNamedChart(call->words.front(), shell);
    if (opened != kDone) return opened;
    const std::vector<ListedParan> parans = CollectParans();
    if (call->Has("--json")) {
        PrintParansJson(parans);
    } else {
        PrintParans(parans);
    }
    return kDone;
}

}  // namespace orvantis::cli

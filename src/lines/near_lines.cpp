#include "lines/near_lines.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <string_view>
#include <utility>

#include "charts/CALCCHRT.h"
#include "lines/chart_lines.h"
#include "lines/line_list.h"
#include "lines/line_pens.h"
#include "map/plot.h"
#include "map/projection.h"
#include "map/view_edges.h"
#include "session/session_state.h"
#include "session/tables.h"
#include "text/numbers.h"

namespace orvantis {

PlacedLines placedLines;

namespace {

constexpr std::int16_t kSlot = 1;
constexpr double kFullCircle = 360;
constexpr int kMeridianStep = 2;  // degrees between the positions of a meridian on a globe

struct Spot {
    double x = 0;
    double y = 0;
};

void AddPiece(const Spot& a, const Spot& b, std::int32_t line) {
    const MapRect& rect = mapView.rect;
    const double reach = LineReach();
    if (std::max(a.x, b.x) < rect.left - reach || std::max(a.y, b.y) < rect.top - reach) return;
    if (std::min(a.x, b.x) > rect.left + rect.width + reach) return;
    if (std::min(a.y, b.y) > rect.top + rect.height + reach) return;
    placedLines.pieces.push_back({static_cast<float>(a.x), static_cast<float>(a.y),
                                  static_cast<float>(b.x), static_cast<float>(b.y), line});
}

// On a flat map a piece is laid down from where its start lies, and once more a whole circle to
// either side.
void AddFlatPiece(const LinePosition& a, const LinePosition& b, std::int32_t line) {
    const double perDegree = static_cast<double>(mapView.rect.width) / mapView.extent.spanLong;
    Spot start;
    Spot end;
    PlaceOnFlatMap(a.lat, a.longitude, start.x, start.y);
    PlaceOnFlatMap(b.lat, b.longitude, end.x, end.y);
    end.x = start.x + (b.longitude - a.longitude) * perDegree;
    for (const double shift : {-kFullCircle, 0.0, kFullCircle}) {
        AddPiece({start.x + shift * perDegree, start.y}, {end.x + shift * perDegree, end.y}, line);
    }
}

bool SpotOnGlobe(const LinePosition& position, Spot& spot) {
    if (!OnNearSide(position.lat, position.longitude)) return false;
    std::int16_t x = 0;
    std::int16_t y = 0;
    ProjectPoint(RoundToInt16(position.lat * 60), RoundToInt16(position.longitude * 60), y, x);
    spot = {static_cast<double>(x), static_cast<double>(y)};
    return true;
}

// A meridian is given by its two poles; on a globe it needs positions between them.
void AddGlobePiece(const LinePosition& a, const LinePosition& b, std::int32_t line) {
    const int steps =
        std::max(1, static_cast<int>(std::ceil(std::abs(b.lat - a.lat) / kMeridianStep)));
    Spot before;
    bool seenBefore = SpotOnGlobe(a, before);
    for (int i = 1; i <= steps; ++i) {
        const double part = static_cast<double>(i) / steps;
        Spot spot;
        const bool seen = SpotOnGlobe(
            {a.lat + part * (b.lat - a.lat), a.longitude + part * (b.longitude - a.longitude)},
            spot);
        if (seen && seenBefore) AddPiece(before, spot, line);
        before = spot;
        seenBefore = seen;
    }
}

// A star without a name is called by the letter of its label: A to Z, then a and on.
std::string NameOfPoint(std::int16_t p) {
    const std::string_view name = PointName(p);
    if (!name.empty()) return std::string(name);
    constexpr int kCapitals = 26;
    const int star = p - point::kLastBody - 1;
    const int letter = star < kCapitals ? 'A' + star : 'a' + star - kCapitals;
    return std::string("Star ") + static_cast<char>(letter);
}

std::string NameOf(const MapLine& line) {
    const std::string type = LineTypeName(line.type);
    const bool isParan =
        line.type == line_type::kParanRiseRise || line.type == line_type::kParanRiseCulm;
    const std::string who = line.point != 0 && !isParan ? NameOfPoint(line.point) : LineWords(line);
    return who.empty() ? type : who + " - " + type;
}

void PlaceLines() {
    placedLines = {};
    placedLines.plot = plotState.screenPlots;
    if (session.ChartNumber < 1) return;
    const bool flat = IsFlat(mapView.extent.projection);
    for (const MapLine& line : ListLines(kSlot)) {
        const auto number = static_cast<std::int32_t>(placedLines.names.size());
        placedLines.names.push_back(NameOf(line));
        for (const LineRun run : line.runs) {
            for (std::size_t i = 1; i < run.size(); ++i) {
                if (flat && IsTurnAtPole(run[i - 1], run[i])) continue;
                flat ? AddFlatPiece(run[i - 1], run[i], number)
                     : AddGlobePiece(run[i - 1], run[i], number);
            }
        }
    }
    RunTimeError ignored;
    TakeRunTimeError(ignored);  // a position that fits no pixel is none that is pointed at
}

double DistanceFrom(const LinePiece& piece, double x, double y) {
    const double dx = piece.x1 - piece.x0;
    const double dy = piece.y1 - piece.y0;
    const double length = dx * dx + dy * dy;
    double along = 0;
    if (length > 0) along = ((x - piece.x0) * dx + (y - piece.y0) * dy) / length;
    along = std::clamp(along, 0.0, 1.0);
    return std::hypot(x - (piece.x0 + along * dx), y - (piece.y0 + along * dy));
}

// Labels stand also where rise and set lines cross the equator; those are named by their lines.
bool IsOverhead(const LineLabel& label) {
    const auto p = static_cast<std::int16_t>(label.code % 100);
    return label.place == LabelPlace::Overhead && p >= 1 && p <= point::kLast;
}

bool IsUnder(const LineLabel& label, float x, float y) {
    constexpr float kMargin = 3;  // of a label's box around its glyph, pixels
    return std::abs(x - label.x) <= mapView.glyphWidth / 2.0F + kMargin &&
           std::abs(y - label.y) <= mapView.glyphHeight / 2.0F + kMargin;
}

void AddOnce(std::vector<std::string>& names, const std::string& name) {
    if (std::find(names.begin(), names.end(), name) == names.end()) names.push_back(name);
}

}  // namespace

double LineReach() {
    return std::max(4.0, mapView.glyphHeight / 3.0);
}

std::vector<std::string> NamesNear(float x, float y) {
    std::vector<std::string> names;
    if (session.ChartNumber < 1 || !IsOnMap(x, y)) return names;
    if (placedLines.plot != plotState.screenPlots) PlaceLines();

    for (const LineLabel& label : chartLines.objects) {
        if (!IsUnder(label, x, y) || !IsOverhead(label)) continue;
        const auto p = static_cast<std::int16_t>(label.code % 100);
        AddOnce(names, NameOfPoint(p) + " - Overhead");
        // The label stands for the meridian too: a label moved inside may lie off it.
        if (p <= point::kLastBody && IsLineTypeOn(line_type::kCulminate)) {
            AddOnce(names, NameOfPoint(p) + " - " + LineTypeName(line_type::kCulminate));
        }
    }
    std::vector<std::pair<double, std::int32_t>> found;
    for (const LinePiece& piece : placedLines.pieces) {
        const double distance = DistanceFrom(piece, x, y);
        if (distance <= LineReach()) found.emplace_back(distance, piece.line);
    }
    std::sort(found.begin(), found.end());
    for (const auto& [distance, line] : found) {
        AddOnce(names, placedLines.names[static_cast<std::size_t>(line)]);
    }
    return names;
}

}  // namespace orvantis

// Labels on the map and marks in the frame around it.
#include <algorithm>
#include <array>
#include <cstdio>

#include "lines/chart_lines.h"
#include "map/projection.h"
#include "session/settings.h"
#include "session/tables.h"
#include "surface/label.h"
#include "text/numbers.h"

namespace orvantis {

namespace {

std::size_t Index(std::int16_t number) {
    return static_cast<std::size_t>(number);
}

constexpr std::int16_t kHouseType = 8;
constexpr std::int16_t kHorizonType = 9;
constexpr std::int16_t kEclipticType = 10;
constexpr std::int16_t kSignType = 11;
constexpr std::int16_t kEclipseType = 12;
constexpr std::int16_t kPartialType = 13;
constexpr char kEclipseGlyph = static_cast<char>(225);

bool IsOfPoint(std::int16_t type) {
    return type < kHouseType || type == line_type::kPointLabel;
}

std::int16_t PointOf(std::int16_t code) {
    return static_cast<std::int16_t>(code % 100);
}

// Colour of a line: of its point or of its type.
Colour LineColour(std::int16_t code, std::int16_t type) {
    const LineStyle& style = settings.lineStyle[Index(type)];
    const std::int16_t point = PointOf(code);
    const bool hasPoint = IsOfPoint(type) && point >= 1 && point <= 72;
    return style.planetColour != 0 && hasPoint ? pointColour[Index(point)] : style.colour;
}

// A magnitude in hundredths without a zero in front: ".0#;;0".
std::string MagnitudeText(std::int16_t code) {
    std::array<char, 16> text{};
    std::snprintf(text.data(), text.size(), "%.2f", code / 100.0);
    std::string number(text.data());
    if (number.starts_with("0.")) number.erase(0, 1);
    if (number.back() == '0') number.pop_back();
    return code <= 0 ? "0" : number;
}

// The frame's colour is light: marks in light colours are drawn darker.
Colour MarkColour(Colour colour) {
    constexpr int kFrameBrightness = 0xC0;
    constexpr int kLeastContrast = 80;
    Colour result = PlainColour(colour);
    while (std::abs(Brightness(result) - kFrameBrightness) < kLeastContrast) {
        result = (result >> 1) & 0x7F7F7F;
    }
    return result;
}

// The letter that tells the side of the line: the initial of its caption word.
std::string AnnotationLetter(const EdgeMark& mark) {
    if (options.extraAnnotation == 0 || mark.type > line_type::kSet) return "";
    return PlotLineAnnotation(mark.type).substr(1, 1);
}

// A strip of the frame beside the map: how far texts along it already reach.
struct Lane {
    int taken = -32768;
};

// Puts a text of a length centred at a position along a lane, moved on if the place is taken.
int TakePlace(Lane& lane, int centre, int length) {
    const int start = std::max(centre - length / 2, lane.taken);
    lane.taken = start + length + 1;
    return start;
}

// Texts of one side of the map, in order along it. The lane next to the map holds the letters, if
// there are any; the two lanes outside it are shared by the glyphs.
class SideLayout {
  public:
    explicit SideLayout(std::int16_t side)
        : along_(side == side::kTop || side == side::kBottom), side_(side) {}

    void Draw(const EdgeMark& mark) {
        const int position = along_ ? mark.x : mark.y;
        const std::string text = LabelText(mark.kind, mark.type);
        const SurfaceSize size = mapView.surface->TextExtent(text);
        const int length = along_ ? size.width : size.height;
        const std::size_t inner = options.extraAnnotation != 0 ? 1 : 0;
        const bool innerIsFree = lanes_[inner].taken <= position - length / 2 ||
                                 lanes_[inner].taken <= lanes_[inner + 1].taken;
        const std::size_t lane = innerIsFree ? inner : inner + 1;
        const int start = TakePlace(lanes_[lane], position, length);
        Write(static_cast<int>(lane), start, text, size);

        const std::string letter = AnnotationLetter(mark);
        if (letter.empty()) return;
        const SurfaceSize letterSize = mapView.surface->TextExtent(letter);
        const int letterLength = along_ ? letterSize.width : letterSize.height;
        Write(0, TakePlace(lanes_[0], start + length / 2, letterLength), letter, letterSize);
    }

  private:
    // Writes a text whose extent along the side starts at `start`, in a lane counted outward.
    void Write(int lane, int start, const std::string& text, const SurfaceSize& size) const {
        const MapRect& rect = mapView.rect;
        const int cellWidth = mapView.glyphWidth + 1;
        const int cellHeight = mapView.glyphHeight;
        int x = start;
        int y = start;
        switch (side_) {
            case side::kTop:
                y = rect.top - (lane + 1) * cellHeight;
                break;
            case side::kBottom:
                y = rect.top + rect.height + 1 + lane * cellHeight;
                break;
            case side::kLeft:
                x = rect.left - 2 - lane * cellWidth - size.width;
                break;
            default:
                x = rect.left + rect.width + 3 + lane * cellWidth;
                break;
        }
        mapView.surface->TextOut(x, y, text, TextAlign::Left);
    }

    bool along_;
    std::int16_t side_;
    std::array<Lane, 3> lanes_;
};

}  // namespace

std::string LabelText(std::int16_t code, std::int16_t type) {
    switch (type) {
        case kHouseType:
            return std::to_string(code);
        case kHorizonType:
        case kEclipticType:
            return std::string(1, static_cast<char>(code));
        case kSignType:
            return std::string(1, SignGlyph(code));
        case kEclipseType:
            return std::string(1, kEclipseGlyph);
        case kPartialType:
            return MagnitudeText(code);
        default:
            break;
    }
    const std::int16_t point = PointOf(code);
    if (point < 37) return std::string(1, PointGlyph(point));
    return starLabel != nullptr ? starLabel(point) : "";
}

void DrawLineLabels() {
    DrawingSurface& surface = *mapView.surface;
    surface.SelectFont({std::string(kGlyphFontName), settings.symbolSize, false, false});
    for (const LineLabel& label : chartLines.labels) {
        const auto shape = static_cast<LabelShape>(
            ClampInt(settings.lineStyle[Index(label.type)].symbolShape, 0, 2));
        DrawLabel(surface, label.x, label.y, LabelText(label.code, label.type), shape,
                  LineColour(label.code, label.type));
    }
    chartLines.objects.insert(chartLines.objects.end(), chartLines.labels.begin(),
                              chartLines.labels.end());
    chartLines.labels.clear();
}

void DrawEdgeMarks() {
    mapView.surface->SelectFont({std::string(kGlyphFontName), settings.symbolSize, false, false});
    std::vector<EdgeMark> marks = mapView.edgeMarks;
    std::stable_sort(marks.begin(), marks.end(), [](const EdgeMark& a, const EdgeMark& b) {
        if (a.side != b.side) return a.side < b.side;
        return a.side == side::kTop || a.side == side::kBottom ? a.x < b.x : a.y < b.y;
    });
    for (std::size_t i = 0; i < marks.size();) {
        SideLayout layout(marks[i].side);
        const std::int16_t current = marks[i].side;
        for (; i < marks.size() && marks[i].side == current; ++i) {
            Pen pen;
            pen.colour = MarkColour(LineColour(marks[i].kind, marks[i].type));
            mapView.surface->SetPen(pen);
            layout.Draw(marks[i]);
        }
    }
}

}  // namespace orvantis

// Labels on the map and marks in the frame around it.
#include <algorithm>
#include <array>
#include <cmath>
#include <cstdio>

#include "lines/chart_lines.h"
#include "map/plot.h"
#include "map/projection.h"
#include "session/settings.h"
#include "session/tables.h"
#include "surface/label.h"
#include "text/code_page.h"
#include "text/numbers.h"

namespace orvantis {

namespace {

std::size_t Index(std::int16_t number) {
    return static_cast<std::size_t>(number);
}

bool IsOfPoint(std::int16_t type) {
    return type < line_type::kLocalHouse || type == line_type::kPointLabel;
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

// The middle of a box of a length whose middle is to be at `at`, moved so that a box that reaches
// over an end of the map's inside, from `low` up to but not including `high`, lies within. A box
// that lies wholly outside stays there, and the clip hides it.
int MovedInside(int at, int length, int low, int high) {
    const int start = at - (length - 1) / 2;
    if (start + length <= low || start >= high) return at;
    return at - start + std::max(low, std::min(start, high - length));
}

// Of the way from the globe's centre to a label's position, `x` and `y` pixels from it, the
// greatest part t, up to 1, at which the box lies within the globe. In one quarter of the ellipse
// its outermost corner is
//     (x t + width / 2, y t + height / 2),
// which is solved for t. 0 for a box that is too large.
double PartWithinGlobe(double x, double y, const SurfaceSize& box) {
    // Room for the outline, and for a position in whole pixels.
    constexpr int kRim = 2;
    const double a = mapView.rect.width / 2.0 - kRim;
    const double b = mapView.rect.height / 2.0 - kRim;
    if (a <= 0 || b <= 0) return 0;
    const double u = std::abs(x) / a;
    const double v = std::abs(y) / b;
    const int halfWidth = box.width / 2;
    const int halfHeight = box.height / 2;
    const double halfU = halfWidth / a;
    const double halfV = halfHeight / b;
    const double square = u * u + v * v;
    const double mixed = u * halfU + v * halfV;
    const double beyond = halfU * halfU + halfV * halfV - 1;
    if (beyond >= 0 || square == 0) return 0;
    return std::min(1.0, (std::sqrt(mixed * mixed - square * beyond) - mixed) / square);
}

// Moves a label so that its box lies within the map.
void MoveInside(LineLabel& label, const SurfaceSize& box) {
    const MapRect& rect = mapView.rect;
    if (IsFlat(mapView.extent.projection)) {
        label.x =
            RoundToInt16(MovedInside(label.x, box.width, rect.left + 1, rect.left + rect.width));
        label.y =
            RoundToInt16(MovedInside(label.y, box.height, rect.top + 1, rect.top + rect.height));
        return;
    }
    const double centreX = rect.left + rect.width / 2.0;
    const double centreY = rect.top + rect.height / 2.0;
    const double part = PartWithinGlobe(label.x - centreX, label.y - centreY, box);
    if (part >= 1) return;
    label.x = RoundToInt16(centreX + (label.x - centreX) * part);
    label.y = RoundToInt16(centreY + (label.y - centreY) * part);
}

// A mark as it is written: glyph and letter in line outward from the map's edge, so that they are
// never parted.
struct WrittenMark {
    EdgeMark mark;
    std::string glyph;
    std::string letter;
    SurfaceSize glyphSize;
    int length = 0;     // along the edge, pixels
    double centre = 0;  // along the edge: where the line crosses it, then where the mark stands
};

bool RunsAlongX(std::int16_t side) {
    return side == side::kTop || side == side::kBottom;
}

WrittenMark Measure(const EdgeMark& mark) {
    WrittenMark written;
    written.mark = mark;
    written.glyph = LabelText(mark.kind, mark.type);
    written.letter = AnnotationLetter(mark);
    written.glyphSize = mapView.surface->TextExtent(written.glyph);
    const SurfaceSize letterSize = mapView.surface->TextExtent(written.letter);
    const bool alongX = RunsAlongX(mark.side);
    written.length = 1 + (alongX ? std::max(written.glyphSize.width, letterSize.width)
                                 : written.glyphSize.height);
    written.centre = alongX ? mark.x : mark.y;
    return written;
}

// Leaves out the last marks if all together are longer than the side, from `low` to `high`.
void LeaveOutWhatHasNoRoom(std::vector<WrittenMark>& marks, double low, double high) {
    double length = 0;
    std::size_t fit = 0;
    while (fit < marks.size() && length + marks[fit].length <= high - low) {
        length += marks[fit++].length;
    }
    marks.resize(fit);
}

// Moves marks that would lie over one another apart, each as little as can be (least squares, by
// pooling neighbours: M. Ayer and others, An empirical distribution function for sampling with
// incomplete information, Annals of Mathematical Statistics 26, 1955), and keeps them from `low` to
// `high`, where they have room. Marks are sorted by centre.
void MoveApart(std::vector<WrittenMark>& marks, double low, double high) {
    struct Pool {
        double offset;  // mean of the marks' centres less their places within the pool
        double length;
        std::size_t count;
    };
    std::vector<Pool> pools;
    for (const WrittenMark& mark : marks) {
        pools.push_back({mark.centre - mark.length * 0.5, static_cast<double>(mark.length), 1});
        while (pools.size() > 1) {
            const Pool last = pools.back();
            Pool& before = pools[pools.size() - 2];
            if (before.offset + before.length <= last.offset) break;
            const auto n = static_cast<double>(before.count);
            const auto m = static_cast<double>(last.count);
            before.offset = (before.offset * n + (last.offset - before.length) * m) / (n + m);
            before.length += last.length;
            before.count += last.count;
            pools.pop_back();
        }
    }
    // Holding each pool off the ends by the length of what stands beyond it keeps the order.
    double ahead = 0;
    double behind = 0;
    for (const Pool& pool : pools) behind += pool.length;
    std::size_t next = 0;
    for (const Pool& pool : pools) {
        double at = std::clamp(pool.offset, low + ahead, high - behind);
        ahead += pool.length;
        behind -= pool.length;
        for (std::size_t i = 0; i < pool.count; ++i, ++next) {
            marks[next].centre = at + marks[next].length * 0.5;
            at += marks[next].length;
        }
    }
}

// Writes a mark beside the map: the letter next to it, the glyph outside.
void Write(const WrittenMark& written) {
    DrawingSurface& surface = *mapView.surface;
    Pen pen;
    pen.colour = InkColour(MarkColour(LineColour(written.mark.kind, written.mark.type)));
    surface.SetPen(pen);

    const MapRect& rect = mapView.rect;
    const int centre = RoundToInt16(written.centre);
    const int half = written.glyphSize.height / 2;
    const int letterHeight = written.letter.empty() ? 0 : mapView.glyphHeight;
    const int letterWidth = written.letter.empty() ? 0 : mapView.glyphWidth + 1;
    switch (written.mark.side) {
        case side::kTop:
            surface.TextOut(centre, rect.top - letterHeight, written.letter, TextAlign::Centre);
            surface.TextOut(centre, rect.top - letterHeight - mapView.glyphHeight, written.glyph,
                            TextAlign::Centre);
            break;
        case side::kBottom: {
            const int below = rect.top + rect.height + 1;
            surface.TextOut(centre, below, written.letter, TextAlign::Centre);
            surface.TextOut(centre, below + letterHeight, written.glyph, TextAlign::Centre);
            break;
        }
        case side::kLeft:
            surface.TextOut(rect.left - 3, centre - half, written.letter, TextAlign::Right);
            surface.TextOut(rect.left - 3 - letterWidth, centre - half, written.glyph,
                            TextAlign::Right);
            break;
        default: {
            const int beside = rect.left + rect.width + 4;
            surface.TextOut(beside, centre - half, written.letter, TextAlign::Left);
            surface.TextOut(beside + letterWidth, centre - half, written.glyph, TextAlign::Left);
            break;
        }
    }
}

}  // namespace

std::string LabelText(std::int16_t code, std::int16_t type) {
    switch (type) {
        case line_type::kLocalHouse:
            return std::to_string(code);
        case line_type::kHorizon:
        case line_type::kEcliptic:
            return std::string(1, static_cast<char>(code));
        case line_type::kSigns:
            return std::string(1, SignGlyph(code));
        case line_type::kEclipseCentral:
            return std::string(1, kSolarEclipseGlyph);
        case line_type::kEclipsePartial:
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
    SelectGlyphFont(plotState.printing != 0);
    chartLines.objects.clear();
    for (LineLabel label : chartLines.labels) {
        const auto shape = static_cast<LabelShape>(
            ClampInt(settings.lineStyle[Index(label.type)].symbolShape, 0, 2));
        const std::string text = LabelText(label.code, label.type);
        MoveInside(label, LabelBox(surface, text, shape));
        DrawLabel(surface, label.x, label.y, text, shape,
                  AreaColour(LineColour(label.code, label.type)));
        chartLines.objects.push_back(label);
    }
}

void DrawEdgeMarks() {
    SelectGlyphFont(plotState.printing != 0);
    for (const std::int16_t edge : {side::kLeft, side::kRight, side::kTop, side::kBottom}) {
        std::vector<WrittenMark> marks;
        for (const EdgeMark& mark : mapView.edgeMarks) {
            if (mark.side == edge) marks.push_back(Measure(mark));
        }
        std::stable_sort(
            marks.begin(), marks.end(),
            [](const WrittenMark& a, const WrittenMark& b) { return a.centre < b.centre; });
        const MapRect& rect = mapView.rect;
        const bool alongX = RunsAlongX(edge);
        const double low = alongX ? rect.left : rect.top;
        const double high = low + 1 + (alongX ? rect.width : rect.height);
        LeaveOutWhatHasNoRoom(marks, low, high);
        MoveApart(marks, low, high);
        for (const WrittenMark& mark : marks) Write(mark);
    }
}

}  // namespace orvantis

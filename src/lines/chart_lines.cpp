#include "lines/chart_lines.h"

#include <utility>

#include "charts/CALCCHRT.h"
#include "lines/circles.h"
#include "lines/line_geometry.h"
#include "lines/line_pens.h"
#include "lines/local_lines.h"
#include "lines/parans.h"
#include "map/plot.h"
#include "map/projection.h"
#include "session/session_state.h"
#include "session/settings.h"
#include "session/tables.h"
#include "text/numbers.h"
#include "text/run_time_error.h"
#include "text/strings.h"

namespace orvantis {

ChartLinesState chartLines;

void (*refreshCaption)() = nullptr;
void (*plotEclipseLines)(Flag) = nullptr;
std::string (*starLabel)(std::int16_t) = nullptr;

namespace {

std::size_t Index(std::int16_t number) {
    return static_cast<std::size_t>(number);
}

void PlotMeridianLine(const LineFrame& frame, std::int16_t point, std::int16_t type) {
    const double longitude = MeridianLineLongitude(frame, point, type);
    if (!IsMeridianShown(longitude)) return;
    chartLines.anyVisible = true;

    SetLinePen(type, point);
    MarkEnds ends = MarkEnds::None;
    if (IsFlat(mapView.extent.projection)) {
        ends = type == line_type::kCulminate ? MarkEnds::First : MarkEnds::Second;
    }
    DrawMeridian(longitude, point, type, ends);

    // Where the line meets the point's parallel, the point is overhead.
    if (type != line_type::kCulminate) return;
    const CalcChart& chart = calcChart[Index(frame.slot)];
    const double lat = options.mapZodiac == 1 ? chart.Lat[Index(point)] : chart.Dec[Index(point)];
    if (IsPositionShown(lat, longitude)) {
        LabelPoint(lat, longitude, point, LabelPlace::Overhead);
    }
}

// One half of a point's horizon circle. The labels stand at the samples on the equator.
void PlotRiseSetLine(const CircleQuarter& quarter, std::int16_t point, std::int16_t type) {
    SetLinePen(type, point);
    std::int16_t u = RiseSetStart(type);
    const auto end = static_cast<std::int16_t>(u + kRiseSetSpan);
    bool visible = false;
    bool first = true;
    for (const auto& [lat, longitude] : CircleSamples(quarter, u, end)) {
        if (DrawGreatCircleSegment(lat, longitude, first, visible, point, type)) {
            chartLines.anyVisible = true;
        }
        if (((u == 0 && visible) || u == 180) && IsLongitudeShown(longitude)) {
            LabelPoint(lat, longitude, point, LabelPlace::Equator);
        }
        first = false;
        u += kSampleStep;
    }
}

// A step that fails is the last one.
void PlotLinesOfChart(Flag printing, std::int16_t slot) {
    using Step = void (*)(Flag, std::int16_t);
    constexpr Step steps[] = {PlotNightSide,     PlotLocalLines,   PlotParans,
                              PlotMeridianLines, PlotRiseSetLines, PlotCircles};
    for (const Step step : steps) {
        step(printing, slot);
        if (PendingRunTimeError() != 0) return;
    }
}

void PlotLines(Flag printing, std::int16_t slot) {
    if (session.ChartNumber >= 1) PlotLinesOfChart(printing, slot);
    if (PendingRunTimeError() != 0) return;
    if (session.EclipseNumber >= 1 && plotEclipseLines != nullptr) plotEclipseLines(printing);
}

bool IsKept(std::string_view first, std::string_view second, std::string_view third) {
    std::string text(first);
    text.append(kCrLf).append(second).append(kCrLf).append(third);
    return session.shell->MessageBox(text, "Orvantis", BoxButtons::OkCancel, BoxIcon::Question) !=
           BoxAnswer::Cancel;
}

// A chart or an eclipse that the user has just chosen, but none of whose lines can be seen.
// True if the user has one of them cleared.
bool ClearHiddenLines() {
    if (chartLines.askedByUser == 0 || chartLines.anyVisible) return false;
    bool cleared = false;
    chartLines.askedByUser = kFalse;
    if (session.ChartNumber >= 1 &&
        !IsKept("Lines for the selected chart are not visible in the current map region.",
                "Try opening a different map region, or a map of the whole world.",
                "Select OK to retain this chart, or CANCEL to clear it.")) {
        session.ChartNumber = 0;
        cleared = true;
    }
    if (session.EclipseNumber >= 1 &&
        !IsKept("Lines for the selected eclipse are not visible in the current map region.",
                "If you are not sure where the eclipse lines are visible, then try opening a map "
                "of the whole world.",
                "Select OK to retain this eclipse, or CANCEL to clear it.")) {
        session.EclipseNumber = 0;
        cleared = true;
    }
    return cleared;
}

void EmptyLabelLists() {
    mapView.edgeMarks.clear();
    chartLines.labels.clear();
    chartLines.objects.clear();
}

// What has been cleared leaves nothing behind: not the night side, which is no line, nor labels and
// marks. What is kept is drawn anew.
void DrawWhatIsKept(Flag printing, std::int16_t slot) {
    EmptyLabelLists();
    if (printing == 0) mapView.surface->PutImage(session.StoredImage);
    PlotLines(printing, slot);
}

void DrawChartLines(Flag printing, Flag fullPlot, std::int16_t slot) {
    if (refreshCaption != nullptr) refreshCaption();
    // Before anything else: what a chart that was closed has left isn't on this picture.
    if (fullPlot != 0) EmptyLabelLists();
    if (session.ChartNumber < 1 && session.EclipseNumber < 1) {
        chartLines.askedByUser = kFalse;  // there is nothing to ask about
        return;
    }

    chartLines.anyVisible = false;
    PlotLines(printing, slot);
    // What a failure left undrawn may well be in view: the plot that is run again asks.
    if (PendingRunTimeError() != 0) return;
    const bool cleared = ClearHiddenLines();
    chartLines.askedByUser = kFalse;
    if (cleared) DrawWhatIsKept(printing, slot);
    if (PendingRunTimeError() != 0) return;

    if (refreshCaption != nullptr) refreshCaption();
    DrawLineLabels();
    mapView.surface->ClearClip();
    DrawEdgeMarks();
}

}  // namespace

void PlotChartLines(Flag printing, Flag fullPlot, std::int16_t slot) {
    if (printing == 0) {
        DrawChartLines(printing, fullPlot, slot);
        return;
    }
    // Between plots the screen's labels are asked about, not the page's.
    std::vector<LineLabel> labels = chartLines.labels;
    std::vector<LineLabel> objects = chartLines.objects;
    DrawChartLines(printing, fullPlot, slot);
    chartLines.labels = std::move(labels);
    chartLines.objects = std::move(objects);
}

void PlotMeridianLines(Flag /*printing*/, std::int16_t slot) {
    if (!IsLineTypeOn(line_type::kCulminate) && !IsLineTypeOn(line_type::kAnticulminate)) return;
    const LineFrame frame = MakeLineFrame(slot);
    for (const std::int16_t type : {line_type::kCulminate, line_type::kAnticulminate}) {
        if (!IsLineTypeOn(type)) continue;
        for (std::int16_t p = 1; p <= point::kLast; ++p) {
            if (IsPointDrawn(slot, p)) PlotMeridianLine(frame, p, type);
            if (PendingRunTimeError() != 0) return;
        }
    }
}

void PlotRiseSetLines(Flag /*printing*/, std::int16_t slot) {
    if (!IsLineTypeOn(line_type::kRise) && !IsLineTypeOn(line_type::kSet)) return;
    const LineFrame frame = MakeLineFrame(slot);
    for (std::int16_t p = 1; p <= point::kLast; ++p) {
        if (!IsPointDrawn(slot, p) || !HasRiseSetLine(p)) continue;
        const CircleQuarter quarter = QuarterOf(RiseSetCircle(frame, p));
        for (const std::int16_t type : {line_type::kRise, line_type::kSet}) {
            if (IsLineTypeOn(type)) PlotRiseSetLine(quarter, p, type);
            if (PendingRunTimeError() != 0) return;
        }
    }
}

void AddLineLabel(std::int16_t x, std::int16_t y, std::int16_t code, std::int16_t type,
                  LabelPlace place) {
    chartLines.labels.push_back({x, y, code, type, place});
}

std::string PlotLineAnnotation(std::int16_t code) {
    switch (code) {
        case 1:
            return " Upper";
        case 2:
            return " Lower";
        case 3:
            return " Rising";
        case 4:
            return " Setting";
        default:
            return "";
    }
}

}  // namespace orvantis

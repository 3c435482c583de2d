#include "lines/local_lines.h"

#include "charts/CALCCHRT.h"
#include "lines/chart_lines.h"
#include "lines/line_pens.h"
#include "map/projection.h"
#include "session/settings.h"
#include "text/numbers.h"
#include "text/run_time_error.h"

namespace orvantis {

namespace {

std::size_t Index(std::int16_t number) {
    return static_cast<std::size_t>(number);
}

// Where the point stands overhead; the lines of type 1 carry this label otherwise.
void LabelOverhead(const LineFrame& frame, std::int16_t p) {
    const CalcChart& chart = calcChart[Index(frame.slot)];
    const double lat = chart.Dec[Index(p)];
    const double longitude =
        Modulo(chart.RA[Index(p)] - frame.midheavenRA - frame.placeLongW + 180, 360) - 180;
    if (IsPositionShown(lat, longitude)) LabelPoint(lat, longitude, p, LabelPlace::Overhead);
}

void PlotDirections(const LineFrame& frame) {
    for (std::int16_t p = 1; p <= point::kLast; ++p) {
        if (!IsPointDrawn(frame.slot, p)) continue;
        SetLinePen(line_type::kLocalSpace, p);
        DrawSamples(LocalSamples(frame, LocalBearing(frame, p), options.localLineExtent), p,
                    line_type::kLocalSpace);
        if (!IsLineTypeOn(line_type::kCulminate)) LabelOverhead(frame, p);
        if (PendingRunTimeError() != 0) return;
    }
}

// The line due north leaves along the place's meridian and over the pole comes to the one opposite,
// which it has down to the antipode; the line due south does the reverse. So the near meridian is
// the southern line's at its foot, the far one the northern line's at its head, and there their
// marks stand.
MarkEnds EndsOf(const LocalHouse& line) {
    if (!IsFlat(mapView.extent.projection)) return MarkEnds::None;
    return line.bearing == 0 ? MarkEnds::Second : MarkEnds::First;
}

void PlotHouseMeridian(const LocalHouse& line) {
    if (!IsMeridianShown(line.longitude)) return;
    chartLines.anyVisible = true;
    DrawMeridian(line.longitude, line.opposite, line_type::kLocalHouse, EndsOf(line));
}

void PlotHouses(const LineFrame& frame) {
    SetLinePen(line_type::kLocalHouse);
    for (const LocalHouse& line : LocalHouses(frame)) {
        if (line.isMeridian) {
            PlotHouseMeridian(line);
        } else {
            DrawSamples(LocalSamples(frame, line.bearing, kLocalHouseExtent), line.house,
                        line_type::kLocalHouse);
        }
        if (PendingRunTimeError() != 0) return;
    }
}

}  // namespace

double LocalBearing(const LineFrame& frame, std::int16_t point) {
    const CalcChart& chart = calcChart[Index(frame.slot)];
    const double f = frame.placeLat;
    const double h = Modulo(frame.midheavenRA - chart.RA[Index(point)], 360);
    const double fromSouth =
        RadToDeg(ArcTan2(CosD(h) * SinD(f) - TanD(chart.Dec[Index(point)]) * CosD(f), SinD(h)));
    return Modulo(180 - fromSouth, 360);
}

std::array<LocalHouse, 12> LocalHouses(const LineFrame& frame) {
    const CalcChart& chart = calcChart[Index(frame.slot)];
    const bool southward = static_cast<float>(frame.placeLat) > chart.Dec[point::kMidheaven];
    std::array<LocalHouse, 12> lines;
    for (std::int16_t i = 1; i <= 12; ++i) {
        LocalHouse& line = lines[Index(i) - 1];
        line.house = southward ? static_cast<std::int16_t>((13 - i) % 12 + 1) : i;
        line.bearing = NudgedBearing(Modulo(90 - (i - 1) * 30, 360) - 180);
        line.isMeridian = i == 4 || i == 10;
        line.opposite = static_cast<std::int16_t>((line.house + 5) % 12 + 1);
        line.longitude = i == 4 ? Modulo(-frame.placeLongW, 360) - 180
                                : Modulo(-frame.placeLongW + 180, 360) - 180;
    }
    return lines;
}

std::vector<LinePosition> LocalSamples(const LineFrame& frame, double bearing,
                                       std::int16_t extent) {
    return GreatCircleSamples(bearing, frame.placeLat, -frame.placeLongW, extent);
}

void PlotLocalLines(Flag /*printing*/, std::int16_t slot) {
    if (options.mapZodiac == 1) return;
    const bool directions = IsLineTypeOn(line_type::kLocalSpace);
    const bool houses = IsLineTypeOn(line_type::kLocalHouse);
    if (!directions && !houses) return;
    const LineFrame frame = MakeLineFrame(slot);
    if (directions) PlotDirections(frame);
    if (houses && PendingRunTimeError() == 0) PlotHouses(frame);
}

}  // namespace orvantis

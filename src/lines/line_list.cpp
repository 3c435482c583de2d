#include "lines/line_list.h"

#include <algorithm>
#include <array>
#include <iterator>
#include <string_view>
#include <utility>

#include "charts/CALCCHRT.h"
#include "lines/append_made.h"
#include "lines/chart_lines.h"
#include "lines/circles.h"
#include "lines/line_pens.h"
#include "lines/local_lines.h"
#include "lines/parans.h"
#include "session/settings.h"
#include "session/tables.h"

namespace orvantis {

namespace {

std::vector<double> ParallelLongitudes() {
    std::vector<double> longitudes;
    longitudes.reserve(360 / kSampleStep + 1);
    for (int longitude = -180; longitude <= 180; longitude += kSampleStep) {
        longitudes.push_back(longitude);
    }
    return longitudes;
}

// A parallel isn't the shortest way between its positions, so it has one every few degrees.
LineParts Parallel(double lat) {
    static const std::vector<double> longitudes = ParallelLongitudes();
    const double* const at = longitudes.data();
    LineParts parts;
    parts.positions.reserve(longitudes.size());
    AppendMade(parts.positions, longitudes.size(), [lat, at](std::size_t i) {
        return LinePosition{lat, at[i]};
    });
    return parts;
}

LineParts WholeCircle(const HorizonCircle& circle) {
    return CutAtAntimeridian(CircleSamples(QuarterOf(circle), 0, 360));
}

void ListParans(std::vector<MapLine>& lines, std::int16_t slot, std::int16_t type) {
    const std::int16_t paranPoint = options.paranPoint;
    if (!HasParans(slot, paranPoint)) return;
    const ParanPartner partner = MakeParanPartner(slot, paranPoint);
    std::vector<Paran> parans;
    for (std::int16_t p = 1; p <= point::kLast; ++p) {
        if (p == paranPoint || !IsPointDrawn(slot, p)) continue;
        parans.clear();
        AddParans(parans, p, partner, type, options.paranLimit);
        for (const Paran& paran : parans) {
            const auto code = static_cast<std::int16_t>(paran.relation * 100 + p);
            lines.push_back({type, p, code, paran.lat, Parallel(paran.lat)});
        }
    }
}

void ListMeridians(std::vector<MapLine>& lines, const LineFrame& frame, std::int16_t type) {
    for (std::int16_t p = 1; p <= point::kLast; ++p) {
        if (!IsPointDrawn(frame.slot, p)) continue;
        lines.push_back({type, p, p, 0, MeridianParts(MeridianLineLongitude(frame, p, type))});
    }
}

// Rise lines and then set lines: each two are halves of one circle, which is computed once.
void ListRiseAndSet(std::vector<MapLine>& lines, const LineFrame& frame) {
    const bool rising = IsLineTypeOn(line_type::kRise);
    const bool setting = IsLineTypeOn(line_type::kSet);
    if (!rising && !setting) return;
    std::vector<MapLine> setLines;
    setLines.reserve(point::kLast);
    for (std::int16_t p = 1; p <= point::kLast; ++p) {
        if (!IsPointDrawn(frame.slot, p) || !HasRiseSetLine(p)) continue;
        const CircleQuarter quarter = QuarterOf(RiseSetCircle(frame, p));
        if (rising) {
            lines.push_back({line_type::kRise, p, p, 0, RiseSetParts(quarter, line_type::kRise)});
        }
        if (setting) {
            setLines.push_back({line_type::kSet, p, p, 0, RiseSetParts(quarter, line_type::kSet)});
        }
    }
    std::move(setLines.begin(), setLines.end(), std::back_inserter(lines));
}

void ListDirections(std::vector<MapLine>& lines, const LineFrame& frame) {
    for (std::int16_t p = 1; p <= point::kLast; ++p) {
        if (!IsPointDrawn(frame.slot, p)) continue;
        LineParts parts =
            CutAtAntimeridian(LocalSamples(frame, LocalBearing(frame, p), options.localLineExtent));
        // An extent below the step leaves the place alone, which is no line.
        if (parts.positions.size() > 1)
            lines.push_back({line_type::kLocalSpace, p, p, 0, std::move(parts)});
    }
}

void ListHouses(std::vector<MapLine>& lines, const LineFrame& frame) {
    for (const LocalHouse& house : LocalHouses(frame)) {
        lines.push_back({line_type::kLocalHouse, 0, house.house, 0,
                         CutAtAntimeridian(LocalSamples(frame, house.bearing, kLocalHouseExtent))});
    }
}

void ListSigns(std::vector<MapLine>& lines, const LineFrame& frame) {
    for (const SignLine& line : SignLines(frame)) {
        const bool geodetic = options.mapZodiac == 1;
        lines.push_back({line_type::kSigns, 0, line.sign, 0,
                         geodetic ? MeridianParts(line.longitude)
                                  : CutAtAntimeridian(SignSamples(frame, line))});
    }
}

// How many lines a chart has at most: two of a point's circle, two meridians, six parans and one
// direction, and 12 houses, 12 signs, horizon and ecliptic.
constexpr std::size_t kMostLines = 11 * point::kLast + 26;

}  // namespace

std::vector<MapLine> ListLines(std::int16_t slot) {
    std::vector<MapLine> lines;
    lines.reserve(kMostLines);
    const LineFrame frame = MakeLineFrame(slot);
    const bool geodetic = options.mapZodiac == 1;
    for (const std::int16_t type : {line_type::kCulminate, line_type::kAnticulminate}) {
        if (IsLineTypeOn(type)) ListMeridians(lines, frame, type);
    }
    ListRiseAndSet(lines, frame);
    for (const std::int16_t type : {line_type::kParanRiseRise, line_type::kParanRiseCulm}) {
        if (IsLineTypeOn(type)) ListParans(lines, slot, type);
    }
    if (IsLineTypeOn(line_type::kLocalSpace) && !geodetic) ListDirections(lines, frame);
    if (IsLineTypeOn(line_type::kLocalHouse) && !geodetic) ListHouses(lines, frame);
    if (IsLineTypeOn(line_type::kHorizon) && !geodetic) {
        lines.push_back({line_type::kHorizon, 0, 'H', 0, WholeCircle(PlaceHorizon(frame))});
    }
    if (IsLineTypeOn(line_type::kEcliptic)) {
        lines.push_back({line_type::kEcliptic, 0, 'E', 0, WholeCircle(EclipticCircle(frame))});
    }
    if (IsLineTypeOn(line_type::kSigns)) ListSigns(lines, frame);
    return lines;
}

std::string LineTypeName(std::int16_t type) {
    static constexpr std::array<std::string_view, 5> zodiacal = {"", "MC", "IC", "Asc", "Dsc"};
    const auto index = static_cast<std::size_t>(type);
    return std::string(options.lineMode == 2 && type <= line_type::kSet ? zodiacal[index]
                                                                        : kLineTypeNames[index]);
}

std::string LineWords(const MapLine& line) {
    switch (line.type) {
        case line_type::kParanRiseRise:
        case line_type::kParanRiseCulm:
            return ParanText(static_cast<std::int16_t>(line.code / 100), line.point,
                             options.paranPoint);
        case line_type::kLocalHouse:
            return "House " + std::to_string(line.code);
        case line_type::kSigns:
            return std::string(kSignNames[static_cast<std::size_t>(line.code)]);
        default:
            return line.type <= line_type::kSet ? PlotLineAnnotation(line.type).substr(1) : "";
    }
}

}  // namespace orvantis

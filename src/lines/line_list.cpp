#include "lines/line_list.h"

#include <array>
#include <string_view>
#include <utility>

#include "charts/CALCCHRT.h"
#include "lines/chart_lines.h"
#include "lines/circles.h"
#include "lines/line_pens.h"
#include "lines/local_lines.h"
#include "lines/parans.h"
#include "session/settings.h"
#include "session/tables.h"

namespace orvantis {

namespace {

// A parallel isn't the shortest way between its positions, so it has one every few degrees.
std::vector<std::vector<LinePosition>> Parallel(double lat) {
    std::vector<LinePosition> positions;
    positions.reserve(360 / kSampleStep + 1);
    for (int longitude = -180; longitude <= 180; longitude += kSampleStep) {
        positions.push_back({lat, static_cast<double>(longitude)});
    }
    return {std::move(positions)};
}

std::vector<std::vector<LinePosition>> Meridian(double longitude) {
    return {{{-90, longitude}, {90, longitude}}};
}

std::vector<std::vector<LinePosition>> WholeCircle(const HorizonCircle& circle) {
    std::vector<LinePosition> samples;
    samples.reserve(360 / kSampleStep + 1);
    for (std::int16_t u = 0; u <= 360; u += kSampleStep) {
        LinePosition sample;
        CircleSample(circle, u, sample.lat, sample.longitude);
        samples.push_back(sample);
    }
    return CutAtAntimeridian(samples);
}

void ListParans(std::vector<MapLine>& lines, std::int16_t slot, std::int16_t type, std::int16_t p) {
    const std::int16_t paranPoint = options.paranPoint;
    if (paranPoint == p || !HasParans(slot, paranPoint)) return;
    for (const Paran& paran : ParansOfPair(slot, p, paranPoint, type, options.paranLimit)) {
        const auto code = static_cast<std::int16_t>(paran.relation * 100 + p);
        lines.push_back({type, p, code, paran.lat, Parallel(paran.lat)});
    }
}

void ListOfPoint(std::vector<MapLine>& lines, const LineFrame& frame, std::int16_t type,
                 std::int16_t p) {
    if (type == line_type::kParanRiseRise || type == line_type::kParanRiseCulm) {
        ListParans(lines, frame.slot, type, p);
    } else if (type == line_type::kLocalSpace) {
        lines.push_back({type, p, p, 0,
                         CutAtAntimeridian(LocalSamples(frame, LocalBearing(frame, p),
                                                        options.localLineExtent))});
    } else {
        std::vector<std::vector<LinePosition>> runs = LineRuns(frame, p, type);
        if (!runs.empty()) lines.push_back({type, p, p, 0, std::move(runs)});
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
        lines.push_back(
            {line_type::kSigns, 0, line.sign, 0,
             geodetic ? Meridian(line.longitude) : CutAtAntimeridian(SignSamples(frame, line))});
    }
}

// Lines that belong to no point.
void ListOfChart(std::vector<MapLine>& lines, const LineFrame& frame, std::int16_t type) {
    const bool geodetic = options.mapZodiac == 1;
    if (type == line_type::kLocalHouse) {
        if (!geodetic) ListHouses(lines, frame);
    } else if (type == line_type::kHorizon) {
        if (!geodetic) lines.push_back({type, 0, 'H', 0, WholeCircle(PlaceHorizon(frame))});
    } else if (type == line_type::kEcliptic) {
        lines.push_back({type, 0, 'E', 0, WholeCircle(EclipticCircle(frame))});
    } else {
        ListSigns(lines, frame);
    }
}

bool BelongsToPoints(std::int16_t type) {
    return type <= line_type::kLocalSpace;
}

}  // namespace

std::vector<MapLine> ListLines(std::int16_t slot) {
    std::vector<MapLine> lines;
    const LineFrame frame = MakeLineFrame(slot);
    for (std::int16_t type = line_type::kCulminate; type <= line_type::kSigns; ++type) {
        if (!IsLineTypeOn(type)) continue;
        if (!BelongsToPoints(type)) {
            ListOfChart(lines, frame, type);
            continue;
        }
        if (type == line_type::kLocalSpace && options.mapZodiac == 1) continue;
        for (std::int16_t p = 1; p <= point::kLast; ++p) {
            if (IsPointDrawn(slot, p)) ListOfPoint(lines, frame, type, p);
        }
    }
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

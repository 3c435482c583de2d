#include "lines/parans.h"

#include <array>
#include <cmath>
#include <string_view>

#include "charts/CALCCHRT.h"
#include "lines/chart_lines.h"
#include "lines/line_geometry.h"
#include "lines/line_pens.h"
#include "map/projection.h"
#include "session/settings.h"
#include "session/tables.h"
#include "text/numbers.h"
#include "text/run_time_error.h"

namespace orvantis {

namespace {

constexpr std::int16_t kUpper = 1;
constexpr std::int16_t kLower = 2;
constexpr std::int16_t kRising = 3;
constexpr std::int16_t kSetting = 4;

// The east point of the horizon lies on the equator, 90 degrees from the meridian: a body on the
// meridian and this point's right ascension tell the same moment.
constexpr float kEastPoint = 90;

const CalcChart& Chart(std::int16_t slot) {
    return calcChart[static_cast<std::size_t>(slot)];
}

float RightAscension(std::int16_t slot, std::int16_t p) {
    return Chart(slot).RA[static_cast<std::size_t>(p)];
}

float Declination(std::int16_t slot, std::int16_t p) {
    return Chart(slot).Dec[static_cast<std::size_t>(p)];
}

// In 32 bits, as right ascensions are held.
float ZenithOf(float zenithRA, bool sameSign) {
    return sameSign ? zenithRA : zenithRA + 180;
}

// A body less than 180 degrees behind the zenith stands in the west.
std::int16_t OnHorizon(std::int16_t slot, std::int16_t p, double zenithRA) {
    return Modulo(zenithRA - RightAscension(slot, p), 360) < 180 ? kSetting : kRising;
}

std::int16_t OnMeridian(std::int16_t slot, std::int16_t p, double zenithRA) {
    return Modulo(zenithRA - RightAscension(slot, p) - kEastPoint, 360) < 180 ? kLower : kUpper;
}

std::int16_t Relation(std::int16_t tens, std::int16_t units) {
    return static_cast<std::int16_t>(10 * tens + units);
}

using Direction = ParanPartner::Direction;

Direction DirectionTo(float ra, float dec) {
    return {CosD(ra) * CosD(dec), SinD(ra) * CosD(dec), SinD(dec)};
}

// As ParanLatitude, of two directions.
bool LatitudeOfBoth(const Direction& a, const Direction& b, float& lat, float& zenithRA) {
    const double x = a.y * b.z - a.z * b.y;
    const double y = a.z * b.x - a.x * b.z;
    const double z = a.x * b.y - a.y * b.x;
    const auto r = static_cast<float>(std::sqrt(x * x + y * y + z * z));
    if (z == 0) return false;
    double cosine = z / r;
    lat = static_cast<float>(90 - RadToDeg(ArcCos(cosine)));
    zenithRA = static_cast<float>(RadToDeg(ArcTan2(x, y)));
    return true;
}

using CodeRoutine = std::int16_t (*)(std::int16_t, std::int16_t, std::int16_t, float, bool);

// The latitude and its opposite, because both poles of the plane are zeniths.
void AddBoth(std::vector<Paran>& parans, std::int16_t slot, std::int16_t p, std::int16_t paranPoint,
             float lat, float zenithRA, float limit, CodeRoutine code) {
    const float a = std::abs(lat);
    if (std::isnan(a)) RaiseRunTimeError(error::kOverflow);  // no parallel, and the plot tells
    if (!(a <= limit)) return;
    for (const float candidate : {a, -a}) {
        // By sign, so that the equator counts as both.
        const bool sameSign = std::signbit(candidate) == std::signbit(lat);
        parans.push_back({candidate, code(slot, p, paranPoint, zenithRA, sameSign)});
    }
}

bool ShowsParallel(float lat) {
    const ViewExtent& view = mapView.extent;
    if (!IsFlat(view.projection)) return true;
    const double minutes = static_cast<double>(lat) * 60;
    return minutes > view.southMin && minutes < view.northMin;
}

// On a globe a parallel lies wholly behind if its nearest position does.
bool ParallelIsSeen(float lat) {
    const ViewExtent& view = mapView.extent;
    return IsFlat(view.projection) || std::abs(lat - view.centreLat) < 90;
}

}  // namespace

bool ParanLatitude(float ra1, float dec1, float ra2, float dec2, float& lat, float& zenithRA) {
    return LatitudeOfBoth(DirectionTo(ra1, dec1), DirectionTo(ra2, dec2), lat, zenithRA);
}

std::int16_t ParanCodeRiseRise(std::int16_t slot, std::int16_t p, std::int16_t paranPoint,
                               float zenithRA, bool sameSign) {
    const float zenith = ZenithOf(zenithRA, sameSign);
    return Relation(OnHorizon(slot, p, zenith), OnHorizon(slot, paranPoint, zenith));
}

std::int16_t ParanCodeRiseCulm(std::int16_t slot, std::int16_t p, std::int16_t paranPoint,
                               float zenithRA, bool sameSign) {
    const float zenith = ZenithOf(zenithRA, sameSign);
    return Relation(OnHorizon(slot, p, zenith), OnMeridian(slot, paranPoint, zenith));
}

std::int16_t ParanCodeCulmRise(std::int16_t slot, std::int16_t p, std::int16_t paranPoint,
                               float zenithRA, bool sameSign) {
    const float zenith = ZenithOf(zenithRA, sameSign);
    return Relation(OnMeridian(slot, p, zenith), OnHorizon(slot, paranPoint, zenith));
}

ParanPartner MakeParanPartner(std::int16_t slot, std::int16_t paranPoint) {
    const float ra = RightAscension(slot, paranPoint);
    return {slot, paranPoint, DirectionTo(ra, Declination(slot, paranPoint)),
            DirectionTo(ra + kEastPoint, 0)};
}

void AddParans(std::vector<Paran>& parans, std::int16_t p, const ParanPartner& partner,
               std::int16_t type, float limit) {
    const float ra = RightAscension(partner.slot, p);
    const Direction at = DirectionTo(ra, Declination(partner.slot, p));
    float lat = 0;
    float zenithRA = 0;
    const auto add = [&](CodeRoutine code) {
        AddBoth(parans, partner.slot, p, partner.point, lat, zenithRA, limit, code);
    };
    if (type == line_type::kParanRiseRise) {
        if (LatitudeOfBoth(at, partner.at, lat, zenithRA)) add(ParanCodeRiseRise);
        return;
    }
    const Direction east = DirectionTo(ra + kEastPoint, 0);
    if (LatitudeOfBoth(east, partner.at, lat, zenithRA)) add(ParanCodeCulmRise);
    if (LatitudeOfBoth(at, partner.east, lat, zenithRA)) add(ParanCodeRiseCulm);
}

std::vector<Paran> ParansOfPair(std::int16_t slot, std::int16_t p, std::int16_t paranPoint,
                                std::int16_t type, float limit) {
    std::vector<Paran> parans;
    parans.reserve(type == line_type::kParanRiseRise ? 2 : 4);
    AddParans(parans, p, MakeParanPartner(slot, paranPoint), type, limit);
    return parans;
}

bool HasParans(std::int16_t slot, std::int16_t paranPoint) {
    return paranPoint >= 1 && paranPoint <= point::kLast &&
           Chart(slot).Lon[static_cast<std::size_t>(paranPoint)] >= 0;
}

std::string ParanText(std::int16_t relation, std::int16_t p, std::int16_t paranPoint) {
    std::string text(PointName(p));
    text.append(PlotLineAnnotation(static_cast<std::int16_t>(relation / 10))).append(" / ");
    text.append(PointName(paranPoint));
    text.append(PlotLineAnnotation(static_cast<std::int16_t>(relation % 10)));
    return text;
}

void PlotParans(Flag /*printing*/, std::int16_t slot) {
    const std::int16_t paranPoint = options.paranPoint;
    if (!HasParans(slot, paranPoint)) return;
    for (const std::int16_t type : {line_type::kParanRiseRise, line_type::kParanRiseCulm}) {
        if (!IsLineTypeOn(type)) continue;
        for (std::int16_t p = 1; p <= point::kLast; ++p) {
            if (p == paranPoint || !IsPointDrawn(slot, p)) continue;
            SetLinePen(type, p);
            for (const Paran& paran : ParansOfPair(slot, p, paranPoint, type, options.paranLimit)) {
                if (!ShowsParallel(paran.lat)) continue;
                if (ParallelIsSeen(paran.lat)) chartLines.anyVisible = true;
                const auto code = static_cast<std::int16_t>(paran.relation * 100 + p);
                DrawParallel(paran.lat, code, type, MarkEnds::Both);
            }
            if (PendingRunTimeError() != 0) return;
        }
    }
}

}  // namespace orvantis

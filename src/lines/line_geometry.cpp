#include "lines/line_geometry.h"

#include <cmath>

#include "charts/CALCCHRT.h"
#include "charts/QXASTRO.h"
#include "lines/chart_lines.h"
#include "session/settings.h"
#include "text/numbers.h"

namespace orvantis {

namespace {

std::size_t Index(std::int16_t number) {
    return static_cast<std::size_t>(number);
}

const CalcChart& Chart(std::int16_t slot) {
    return calcChart[Index(slot)];
}

bool IsGeodetic() {
    return options.mapZodiac == 1;
}

// Right ascension, or longitude in the geodetic zodiac, less that of the chart's zero meridian:
// the angle that, less 180, is the geographic longitude under the point.
double HourOrigin(const LineFrame& frame, std::int16_t number) {
    if (IsGeodetic()) return Chart(frame.slot).Lon[Index(number)] - options.geodeticStart;
    double ra = Chart(frame.slot).RA[Index(number)];
    if (options.lineMode == 2) {
        double ignored = 0;
        EclipticForm(frame, number, ra, ignored);
    }
    return ra - frame.midheavenRA - frame.placeLongW;
}

// Adds the point of the circle at longitude +-180 between two samples that lie on either side.
// With x = cos u and y = cos(tilt) sin u, the relative longitude L has tan L = cos(tilt) tan u.
LinePosition CrossingAtAntimeridian(const HorizonCircle& circle, double uNear) {
    const double relative = (180 - circle.node) * DegToRad;
    const double shrink = circle.cosineTilt;
    double u = std::atan2(std::sin(relative), std::cos(relative) * shrink) / DegToRad;
    // The two solutions lie 180 degrees apart; the one within the step is meant.
    u += 180 * std::round((uNear - u) / 180);
    return {RadToDeg(ArcSin(circle.sineTilt * SinD(u))), 180};
}

std::vector<std::vector<LinePosition>> CircleRuns(const HorizonCircle& circle, std::int16_t type) {
    std::vector<std::vector<LinePosition>> runs(1);
    runs.back().reserve(kRiseSetSpan / kSampleStep + 2);
    const std::int16_t start = RiseSetStart(type);
    for (std::int16_t u = start; u <= start + kRiseSetSpan; u += kSampleStep) {
        LinePosition sample;
        CircleSample(circle, u, sample.lat, sample.longitude);
        if (!runs.back().empty()) {
            const double before = runs.back().back().longitude;
            if (std::abs(sample.longitude - before) > 180) {
                LinePosition edge = CrossingAtAntimeridian(circle, u - kSampleStep * 0.5);
                edge.longitude = before > 0 ? 180 : -180;
                runs.back().push_back(edge);
                edge.longitude = -edge.longitude;
                runs.push_back({edge});
            }
        }
        runs.back().push_back(sample);
    }
    return runs;
}

}  // namespace

LineFrame MakeLineFrame(std::int16_t slot) {
    LineFrame frame;
    frame.slot = slot;
    const CalcChart& chart = Chart(slot);
    const double t = JulianCenturies(chart.JulianDayET);
    GetObliquity(t, frame.obliquity);
    frame.offset = Ayanamsa(chart.Zodiac, t);
    frame.placeLongW = chartNow.PlaceLongW;
    frame.midheavenRA = chart.RA[point::kMidheaven];
    return frame;
}

bool IsPointDrawn(std::int16_t slot, std::int16_t point) {
    return Chart(slot).Lon[Index(point)] >= 0 && pointSelection[Index(point)] != 0;
}

void EclipticForm(const LineFrame& frame, std::int16_t point, double& ra, double& dec) {
    const double l = Chart(frame.slot).Lon[Index(point)] - frame.offset;
    const double e = frame.obliquity;
    ra = Modulo(RadToDeg(ArcTan2(CosD(l), SinD(l) * CosD(e))), 360);
    dec = RadToDeg(ArcSin(SinD(e) * SinD(l)));
}

double MeridianLineLongitude(const LineFrame& frame, std::int16_t point, std::int16_t type) {
    const double side = type == line_type::kCulminate ? 180 : 0;
    return Modulo(HourOrigin(frame, point) + side, 360) - 180;
}

HorizonCircle MakeCircle(double tilt, double node) {
    return {tilt, node, SinD(tilt), CosD(tilt)};
}

HorizonCircle RiseSetCircle(const LineFrame& frame, std::int16_t point) {
    const CalcChart& chart = Chart(frame.slot);
    const double node = Modulo(HourOrigin(frame, point) + 90, 360) - 180;
    const bool zodiacal = options.lineMode == 2;
    if (IsGeodetic() && options.geodeticAscDsc == 0) {
        // The ecliptic serves as equator.
        return MakeCircle(zodiacal ? -90 : chart.Lat[Index(point)] - 90, node);
    }
    double dec = chart.Dec[Index(point)];
    if (zodiacal) {
        double ignored = 0;
        EclipticForm(frame, point, ignored, dec);
    }
    return MakeCircle(dec - 90, node);
}

std::int16_t RiseSetStart(std::int16_t type) {
    return type == line_type::kRise ? std::int16_t{-90} : std::int16_t{90};
}

void CircleSample(const HorizonCircle& circle, std::int16_t u, double& lat, double& longitude) {
    const auto k = static_cast<std::size_t>((u + 360) % 360);
    const double sine = WholeDegrees().sine[k];
    const double cosine = WholeDegrees().cosine[k];
    longitude = RadToDeg(ArcTan2(cosine, circle.cosineTilt * sine));
    lat = RadToDeg(ArcSin(circle.sineTilt * sine));
    longitude = Modulo(longitude + circle.node + 180, 360) - 180;
}

bool HasRiseSetLine(std::int16_t point) {
    return point != point::kSouthNode;
}

std::vector<std::vector<LinePosition>> LineRuns(const LineFrame& frame, std::int16_t point,
                                                std::int16_t type) {
    if (type == line_type::kCulminate || type == line_type::kAnticulminate) {
        const double longitude = MeridianLineLongitude(frame, point, type);
        return {{{-90, longitude}, {90, longitude}}};
    }
    if (!HasRiseSetLine(point)) return {};
    return CircleRuns(RiseSetCircle(frame, point), type);
}

}  // namespace orvantis

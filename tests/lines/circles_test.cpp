#include "lines/circles.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <gtest/gtest.h>
#include <random>
#include <set>
#include <string>

#include "lines/chart_lines.h"
#include "lines/independent_sky.h"
#include "lines/line_geometry.h"
#include "lines/line_list.h"
#include "lines/lines_fixture.h"

namespace orvantis {
namespace {

class Circles : public LinesOfRealCharts {};

std::vector<LinePosition> WholeCircle(const HorizonCircle& circle) {
    std::vector<LinePosition> samples;
    for (std::int16_t u = 0; u <= 360; u += 2) {
        LinePosition sample;
        CircleSample(circle, u, sample.lat, sample.longitude);
        samples.push_back(sample);
    }
    return samples;
}

// Unit vector of the ecliptic's north pole in the Earth's axes: right ascension 270, declination 90
// less the obliquity.
Vec EclipticPole(const IndependentSky& sky) {
    return OnSphere(90 - sky.obliquity, 270 - sky.greenwich);
}

// Ecliptic longitude, degrees, of what stands in the zenith of a position, by vectors: the angle
// about the ecliptic's pole from the equinox.
double ZenithLongitude(const IndependentSky& sky, const LinePosition& position) {
    const Vec pole = EclipticPole(sky);
    const Vec equinox = OnSphere(0, -sky.greenwich);
    const Vec ahead = Cross(pole, equinox);
    const Vec zenith = OnSphere(position.lat, position.longitude);
    return std::atan2(Dot(zenith, ahead), Dot(zenith, equinox)) / kRad;
}

// ---- Against vectors ----------------------------------------------------------------------------

// Tolerance of all: the chart's sidereal time is the right ascension of its Midheaven, in 32 bits
// (1.5e-5 degrees), the obliquity in 64; the arc sine loses half of the digits near the poles.
TEST_F(Circles, HorizonEclipticAndSignBoundariesLieWhereVectorsPutThem) {
    constexpr unsigned seed = 5401;
    std::mt19937 random(seed);
    Worst horizon;
    Worst ecliptic;
    Worst signs;
    int charts = 0;
    for (const float lat : TriedLatitudes(random, 30)) {
        const IndependentSky sky = RandomChart(random, lat);
        ++charts;
        const LineFrame frame = MakeLineFrame(1);
        const Vec place = OnSphere(sky.lat, sky.longEast);
        for (const LinePosition& sample : WholeCircle(PlaceHorizon(frame))) {
            horizon.Meet(AngleBetween(place, OnSphere(sample.lat, sample.longitude)) - 90);
        }
        for (const LinePosition& sample : WholeCircle(EclipticCircle(frame))) {
            ecliptic.Meet(AngleBetween(EclipticPole(sky), OnSphere(sample.lat, sample.longitude)) -
                          90);
        }
        for (const SignLine& line : SignLines(frame)) {
            const std::vector<LinePosition> samples = SamplesOf(SignSamples(frame, line));
            ASSERT_EQ(samples.size(), 91U);
            EXPECT_LT(
                AngleBetween(EclipticPole(sky), OnSphere(samples[0].lat, samples[0].longitude)),
                5e-5)
                << "each leaves the ecliptic's pole";
            EXPECT_LT(AngleBetween(-1.0 * EclipticPole(sky),
                                   OnSphere(samples[90].lat, samples[90].longitude)),
                      5e-5);
            // Due east and west of the pole are moved by a hundredth of a degree on purpose.
            const bool nudged = line.sign == 1 || line.sign == 7;
            for (const LinePosition& sample : samples) {
                const double off = Turned(ZenithLongitude(sky, sample), (line.sign - 1) * 30.0);
                // What a turn about the pole comes to on the ground.
                const double ground =
                    off * std::sin(AngleBetween(EclipticPole(sky),
                                                OnSphere(sample.lat, sample.longitude)) *
                                   kRad);
                EXPECT_NEAR(ground, 0, nudged ? 0.01005 : 5e-5)
                    << "lat " << lat << " sign " << line.sign;
                if (!nudged) signs.Meet(ground);
            }
        }
    }
    std::printf(
        "seed %u: %d charts; horizon within %.5f' = %.4f km, ecliptic %.5f' = %.4f km, "
        "signs %.5f' = %.4f km\n",
        seed, charts, horizon.Minutes(), horizon.Km(), ecliptic.Minutes(), ecliptic.Km(),
        signs.Minutes(), signs.Km());
    EXPECT_GE(charts, 50);
    EXPECT_LT(horizon.degrees, 3e-6);
    EXPECT_LT(ecliptic.degrees, 3e-5);
}

// At latitude 0 the horizon is the meridian 90 degrees east of the place and the one west of it.
TEST_F(Circles, TheHorizonOfAPlaceOnTheEquatorIsTwoMeridians) {
    ShowTypes({9});
    chartNow.PlaceLat = 0;
    for (const float west : {0.0F, -16.4F, 100.0F, 90.0F, -90.0F, 180.0F, -180.0F}) {
        chartNow.PlaceLongW = west;
        const std::string what = "longitude west " + std::to_string(west);
        const double east = std::remainder(90.0 - static_cast<double>(west), 360.0);
        const double opposite = std::remainder(east + 180, 360.0);
        Draw();
        ExpectMeridians(PenCalls(surface_), east, opposite, what);
        EXPECT_TRUE(mapView.edgeMarks.empty()) << what << ": it goes out at the poles alone";

        const std::vector<MapLine> lines = ListLines(1);
        ASSERT_EQ(lines.size(), 1U);
        ExpectWellCut(lines[0].runs, what);
        int turns = 0;
        for (const auto& run : lines[0].runs) {
            for (std::size_t i = 0; i < run.size(); ++i) {
                const double off = std::abs(Turned(run[i].longitude, east));
                EXPECT_NEAR(std::min(off, 180 - off), 0, 1e-9) << what << " " << run[i].lat;
                if (i > 0 && IsTurnAtPole(run[i - 1], run[i])) ++turns;
            }
        }
        EXPECT_EQ(turns, 2) << what;
    }
}

// The strokes of a globe whose rim or face shows the pole are those of two degrees.
TEST_F(Circles, OnAGlobeALineOverThePolesHasNoLongStroke) {
    ShowTypes({7, 8, 9, 11});
    Place(point::kMidheaven, 40, 10);
    for (const float place : {0.0F, 90.0F, -90.0F, 41.3F}) {
        chartNow.PlaceLat = place;
        chartNow.PlaceLongW = 0;
        for (const std::int16_t globe : {projection::kGlobeSphere, projection::kGlobeOblate}) {
            for (const float lat : {0.0F, 40.0F, 90.0F, -90.0F, -89.5F}) {
                Globe(lat, 30, globe);
                Draw();
                const double longest =
                    std::max(mapView.rect.width, mapView.rect.height) / 2.0 * 2 * kRad + 3;
                std::pair<int, int> at;
                int strokes = 0;
                for (const std::string& call : PenCalls(surface_)) {
                    const std::pair<int, int> to = PlaceOfCall(call);
                    // The middle meridian of an upright globe is drawn in one stroke.
                    if (call.starts_with("LineTo") && to.first != at.first) {
                        EXPECT_LE(std::hypot(to.first - at.first, to.second - at.second), longest)
                            << "place " << place << " globe " << globe << " centre " << lat;
                    }
                    ++strokes;
                    at = to;
                }
                EXPECT_GT(strokes, 100);
            }
        }
    }
}

// Their boundaries are one meridian, on either side of the poles.
TEST_F(Circles, CancerAndCapricornGoOverThePolesAlike) {
    ShowTypes({11});
    std::mt19937 random(5402);
    for (int round = 0; round < 200; ++round) {
        Chart().RA[23] = static_cast<float>(random() % 36000) / 100;
        chartNow.PlaceLongW = static_cast<float>(random() % 36000) / 100 - 180;
        std::array<std::size_t, 13> runs{};
        for (const MapLine& line : ListLines(1)) {
            ExpectWellCut(line.runs, "round " + std::to_string(round) + LineWords(line));
            runs[static_cast<std::size_t>(line.code)] = line.runs.size();
        }
        EXPECT_EQ(runs[4], 1U) << round;
        EXPECT_EQ(runs[10], 1U) << round;
    }
}

// The whole ecliptic is gone through: somewhere on it every degree of longitude stands overhead.
TEST_F(Circles, TheEclipticHasEveryLongitudeOverheadSomewhere) {
    std::mt19937 random(4);
    const IndependentSky sky = RandomChart(random, 40);
    std::set<int> degrees;
    for (const LinePosition& sample : WholeCircle(EclipticCircle(MakeLineFrame(1)))) {
        degrees.insert(static_cast<int>(std::floor(ZenithLongitude(sky, sample) / 3)));
    }
    EXPECT_EQ(degrees.size(), 120U);
}

// In a sidereal zodiac the boundaries are the tropical ones turned about the Earth's axis by the
// offset, as the program has always drawn them. Turned about the ecliptic's axis they would be the
// true sidereal boundaries: at an offset of 24.7 degrees the two lie up to 9.8 degrees apart.
TEST_F(Circles, SiderealBoundariesAreTurnedByTheOffsetInRightAscension) {
    std::mt19937 random(8);
    IndependentSky sky = RandomChart(random, 40);
    LineFrame frame = MakeLineFrame(1);
    frame.offset = -24.7;
    sky.greenwich += frame.offset;  // as if the Earth stood that much less far on
    for (const SignLine& line : SignLines(frame)) {
        const bool nudged = line.sign == 1 || line.sign == 7;
        for (const LinePosition& sample : SignSamples(frame, line)) {
            const double toPole =
                AngleBetween(EclipticPole(sky), OnSphere(sample.lat, sample.longitude));
            const double off = Turned(ZenithLongitude(sky, sample), (line.sign - 1) * 30.0) *
                               std::sin(toPole * kRad);
            EXPECT_NEAR(off, 0, nudged ? 0.01005 : 5e-5) << line.sign;
        }
    }
    sky.greenwich -= frame.offset;
    Worst fromTheTrueBoundary;
    for (const SignLine& line : SignLines(frame)) {
        for (const LinePosition& sample : SignSamples(frame, line)) {
            const double toPole =
                AngleBetween(EclipticPole(sky), OnSphere(sample.lat, sample.longitude));
            const double turn =
                Turned(ZenithLongitude(sky, sample) + frame.offset, (line.sign - 1) * 30.0);
            // Distance from the true boundary's half circle.
            const double off = std::abs(turn) < 90
                                   ? std::asin(std::sin(turn * kRad) * std::sin(toPole * kRad))
                                   : std::min(toPole, 180 - toPole) * kRad;
            fromTheTrueBoundary.Meet(off / kRad);
        }
    }
    std::printf("sidereal boundaries: up to %.2f degrees from the ecliptic's own\n",
                fromTheTrueBoundary.degrees);
    EXPECT_NEAR(fromTheTrueBoundary.degrees, 9.8, 0.3);
}

// A meridian drawn for a boundary has its mark at the end where the boundary is that sign's.
TEST_F(Circles, TheMarkOfASolsticeMeridianStandsAtTheEndThatIsItsSigns) {
    std::mt19937 random(88);
    ShowTypes({11});
    for (int round = 0; round < 20; ++round) {
        const IndependentSky sky = RandomChart(random, static_cast<float>(round));
        Draw();
        int marks = 0;
        for (const EdgeMark& mark : mapView.edgeMarks) {
            EXPECT_GE(mark.kind, 1);
            EXPECT_LE(mark.kind, 12);
            if (mark.side != side::kTop && mark.side != side::kBottom) continue;
            ++marks;
            const double x = mark.x - mapView.rect.left;
            const LinePosition end{mark.side == side::kTop ? 89.0 : -89.0,
                                   x * 360 / mapView.rect.width - 180};
            EXPECT_NEAR(Turned(ZenithLongitude(sky, end), (mark.kind - 1) * 30.0), 0, 3)
                << "the pixels of the mark, and the pole is near";
        }
        EXPECT_EQ(marks, 2);
    }
}

// ---- Cases --------------------------------------------------------------------------------------

TEST_F(Circles, InTheGeodeticZodiacTheHorizonIsNotDrawn) {
    ShowTypes({9});
    Draw();
    EXPECT_GE(surface_.Calls("LineTo").size(), 180U);
    options.mapZodiac = 1;
    Draw();
    EXPECT_TRUE(surface_.Calls("LineTo").empty());
}

TEST_F(Circles, InTheGeodeticZodiacTheEclipticIsTheEquator) {
    ShowTypes({10});
    options.mapZodiac = 1;
    Chart().RA[23] = 123;
    Draw();
    const int equator = PixelsOf(0, 0).second;
    const auto lines = surface_.Calls("LineTo");
    EXPECT_GE(lines.size(), 180U);
    for (const std::string& line : lines) EXPECT_EQ(PlaceOfCall(line).second, equator);
}

TEST_F(Circles, InTheGeodeticZodiacSignsBeginAtMeridiansFromTheStartOn) {
    ShowTypes({11});
    options.mapZodiac = 1;
    options.geodeticStart = 10;
    Draw();
    std::set<int> columns;
    for (const std::string& call : surface_.Calls("LineTo"))
        columns.insert(PlaceOfCall(call).first);
    EXPECT_EQ(columns.size(), 12U);
    ASSERT_EQ(mapView.edgeMarks.size(), 24U) << "at both ends";
    for (const EdgeMark& mark : mapView.edgeMarks) {
        const double longitude = std::remainder(30.0 * (mark.kind - 1) - 10, 360);
        EXPECT_EQ(mark.x, PixelsOf(0, longitude).first) << mark.kind;
        EXPECT_EQ(mark.type, line_type::kSigns);
    }

    View(-40, 25, 40, 75);
    Draw();
    EXPECT_EQ(surface_.Calls("LineTo").size(), 1U) << "those in view alone: that of 50 degrees";
    EXPECT_TRUE(chartLines.anyVisible);
    View(-40, 55, 40, 75);
    Draw();
    EXPECT_TRUE(surface_.Calls("LineTo").empty());
    EXPECT_FALSE(chartLines.anyVisible);
}

TEST_F(Circles, EachCircleHasItsPenAndItsCharacterAtTheMapsEdge) {
    struct Row {
        std::size_t type;
        std::int16_t character;
    };
    chartNow.PlaceLat = 50;
    for (const Row& row : {Row{9, 'H'}, Row{10, 'E'}}) {
        ShowTypes({row.type});
        settings.lineStyle[row.type].colour = 0x102030;
        settings.lineStyle[row.type].thickness = 3;
        settings.lineStyle[row.type].style = 3;
        View(-20, -180, 20, 180);
        Draw();
        EXPECT_EQ(surface_.Calls("SetPen").front(), "SetPen 3 3 " + std::to_string(0x102030));
        ASSERT_FALSE(mapView.edgeMarks.empty()) << row.type;
        for (const EdgeMark& mark : mapView.edgeMarks) {
            EXPECT_EQ(mark.kind, row.character);
            EXPECT_EQ(mark.type, static_cast<std::int16_t>(row.type));
        }
        const std::string text(1, static_cast<char>(row.character));
        EXPECT_EQ(LabelText(row.character, static_cast<std::int16_t>(row.type)), text);
        EXPECT_TRUE(chartLines.objects.empty());
    }
}

TEST_F(Circles, ACircleIsDrawnThroughItsSamplesInOrder) {
    chartNow.PlaceLat = 30;
    chartNow.PlaceLongW = -20;
    Chart().RA[23] = 77;
    for (const std::size_t type : {9, 10}) {
        ShowTypes({type});
        Draw();
        const LineFrame frame = MakeLineFrame(1);
        const std::vector<std::string> calls = PenCalls(surface_);
        std::size_t at = 0;
        ExpectCurve(calls, at,
                    WholeCircle(type == 9 ? PlaceHorizon(frame) : EclipticCircle(frame)));
        EXPECT_EQ(at, calls.size()) << "nothing else is drawn";
        EXPECT_EQ(calls.size(), 183U) << "the samples, and once out and in";
    }
}

TEST_F(Circles, SignBoundariesAreDrawnInTheirOrderThroughTheirSamplesOrAsMeridians) {
    std::mt19937 random(12);
    RandomChart(random, 40);
    ShowTypes({11});
    Draw();
    const LineFrame frame = MakeLineFrame(1);
    const std::vector<std::string> calls = PenCalls(surface_);
    std::size_t at = 0;
    for (const SignLine& line : SignLines(frame)) {
        if (line.isMeridian) {
            ExpectMeridian(calls, at, line.longitude);
        } else {
            ExpectCurve(calls, at, SignSamples(frame, line));
        }
    }
    EXPECT_EQ(at, calls.size());
}

// At the sides of the map a mark has the sign whose boundary crosses there. Tolerance: the pixels
// of the mark, and that between two samples a line is straight on the map.
TEST_F(Circles, AMarkAtASideOfTheMapIsThatOfTheSignWhoseBoundaryCrossesThere) {
    std::mt19937 random(89);
    ShowTypes({11});
    int marks = 0;
    for (int round = 0; round < 20; ++round) {
        const IndependentSky sky = RandomChart(random, static_cast<float>(round));
        Draw();
        for (const EdgeMark& mark : mapView.edgeMarks) {
            if (mark.side != side::kLeft && mark.side != side::kRight) continue;
            const LinePosition at = PositionOfSideMark(mark);
            if (std::abs(at.lat) > 85) continue;
            const double toPole = AngleBetween(EclipticPole(sky), OnSphere(at.lat, at.longitude));
            const double off = Turned(ZenithLongitude(sky, at), (mark.kind - 1) * 30.0);
            EXPECT_NEAR(off * std::sin(toPole * kRad), 0, 1)
                << "round " << round << " sign " << mark.kind << " at " << at.lat;
            ++marks;
        }
    }
    EXPECT_GE(marks, 200);
}

TEST_F(Circles, OnGlobesTheMeridiansOfSignsHaveNoMarks) {
    std::mt19937 random(90);
    RandomChart(random, 40);
    ShowTypes({11});
    for (const std::int16_t globe : {projection::kGlobeSphere, projection::kGlobeOblate}) {
        for (int longitude = -180; longitude < 180; longitude += 45) {
            Globe(35, static_cast<float>(longitude), globe);
            Draw();
            EXPECT_FALSE(mapView.edgeMarks.empty());
            for (const EdgeMark& mark : mapView.edgeMarks) {
                EXPECT_TRUE(mark.kind != 4 && mark.kind != 10) << "Cancer and Capricorn";
            }
        }
    }
    options.mapZodiac = 1;
    Draw();
    EXPECT_GT(PenCalls(surface_).size(), 100U);
    EXPECT_TRUE(mapView.edgeMarks.empty()) << "all are meridians";
}

TEST_F(Circles, BearingsDueEastAndWestAreMovedSoThatTangentsStayFinite) {
    const LineFrame frame = MakeLineFrame(1);
    int nudged = 0;
    for (const SignLine& line : SignLines(frame)) {
        EXPECT_NE(std::abs(line.bearing), 90);
        nudged += line.bearing == 90.01 || line.bearing == -89.99 ? 1 : 0;
        for (const LinePosition& sample : SignSamples(frame, line)) {
            EXPECT_TRUE(std::isfinite(sample.lat) && std::isfinite(sample.longitude));
        }
    }
    EXPECT_EQ(nudged, 2);
    EXPECT_EQ(NudgedBearing(90), 90.01);
    EXPECT_EQ(NudgedBearing(-90), -89.99);
    EXPECT_EQ(NudgedBearing(60), 60);
}

TEST_F(Circles, APartOfACircleHasStepsThatKeepItBelow181Segments) {
    struct Row {
        std::int16_t from, to;
        std::size_t segments;
    };
    SetView();
    for (const Row& row : {Row{0, 180, 180}, Row{-90, 90, 180}, Row{0, 181, 90}, Row{0, 360, 180},
                           Row{270, 450, 180}, Row{5, 5, 0}, Row{5, 4, 0}}) {
        surface_.log.clear();
        mapView.edgeMarks.clear();
        PlotGreatArc(0, 0, row.from, row.to);
        // The way over the seam of the map adds one line.
        const std::size_t lines = surface_.Calls("LineTo").size();
        const std::size_t crossings = surface_.Calls("MoveTo").size();
        EXPECT_EQ(lines + 1 - crossings, row.segments + (row.from > row.to ? 1 : 0))
            << row.from << " " << row.to;
        EXPECT_TRUE(mapView.edgeMarks.empty());
    }
}

TEST_F(Circles, APartOfACircleLiesOnTheWholeOne) {
    SetView();
    PlotGreatArc(40, 15, -30, 30);
    const auto calls = surface_.Calls("LineTo");
    ASSERT_EQ(calls.size(), 60U);
    const HorizonCircle circle = MakeCircle(40, 15);
    double lat = 0;
    double longitude = 0;
    CircleSample(circle, 30, lat, longitude);
    EXPECT_EQ(PlaceOfCall(calls.back()), PixelsOf(lat, longitude));
}

// ---- The night side -----------------------------------------------------------------------------

// Puts the Sun overhead at a position.
void SunOver(double lat, double longitude) {
    calcChart[1].Lon[3] = 0;
    calcChart[1].RA[23] = 0;
    chartNow.PlaceLongW = 0;
    calcChart[1].RA[3] = static_cast<float>(longitude < 0 ? longitude + 360 : longitude);
    calcChart[1].Dec[3] = static_cast<float>(lat);
}

// Even-odd, as the surface fills.
bool IsInside(const std::vector<SurfacePoint>& polygon, double x, double y) {
    bool inside = false;
    for (std::size_t i = 0, j = polygon.size() - 1; i < polygon.size(); j = i++) {
        const SurfacePoint& a = polygon[i];
        const SurfacePoint& b = polygon[j];
        if ((a.y > y) != (b.y > y) && x < a.x + (y - a.y) * (b.x - a.x) / double(b.y - a.y)) {
            inside = !inside;
        }
    }
    return inside;
}

// Every seventh pixel of the map is asked: in the polygon if and only if the Sun is below the
// horizon there. The outline has straight pieces of two degrees in whole pixels: near the horizon,
// within what three pixels come to, both are right.
void ExpectNightWhereTheSunIsDown(double sunLat, double sunLong) {
    const std::vector<SurfacePoint> polygon = NightPolygon(MakeLineFrame(1));
    EXPECT_LE(polygon.size(), 190U);
    const MapRect rect = mapView.rect;
    const Vec sun = OnSphere(sunLat, sunLong);
    int wrong = 0;
    for (int y = rect.top + 1; y < rect.top + rect.height; y += 7) {
        for (int x = rect.left + 1; x < rect.left + rect.width; x += 7) {
            float lat = 0;
            float longitude = 0;
            UnprojectPoint(CurrentMap(), static_cast<float>(x) + 0.5F, static_cast<float>(y) + 0.5F,
                           lat, longitude);
            const double altitude =
                90 - AngleBetween(
                         sun, OnSphere(static_cast<double>(lat), static_cast<double>(longitude)));
            if (std::abs(altitude) < 1.5) continue;
            wrong += IsInside(polygon, x + 0.5, y + 0.5) == (altitude < 0) ? 0 : 1;
        }
    }
    EXPECT_EQ(wrong, 0) << "Sun over " << sunLat << " " << sunLong;
}

TEST_F(Circles, NightIsWhereTheSunIsBelowTheHorizon) {
    std::mt19937 random(3);
    std::uniform_real_distribution<double> anyLong(-180, 180);
    std::uniform_real_distribution<double> anyDec(-23.4, 23.4);
    options.dayNight = kTrue;
    for (const std::int16_t flat : {projection::kCartesian, projection::kMercator}) {
        CurrentMap() = {};
        CurrentMap().projection = flat;
        if (flat == projection::kMercator) View(-65, -180, 75, 180);
        SetView();
        for (int round = 0; round < 12; ++round) {
            const double lat = round == 0 ? 23.4 : round == 1 ? -23.4 : anyDec(random);
            if (std::abs(lat) < 2) continue;  // nearly meridians: told by themselves
            const double longitude = anyLong(random);
            SunOver(lat, longitude);
            ExpectNightWhereTheSunIsDown(lat, longitude);
        }
    }
}

// A map that begins elsewhere than at the date line has its seam there.
TEST_F(Circles, NightIsClosedAtTheSeamOfTheMapWhereverItLies) {
    for (const float west : {-90.0F, 0.0F, 100.0F}) {
        View(-90, west, 90, west);
        SetView();
        ASSERT_TRUE(CanShadeNight());
        SunOver(15, 30);
        ExpectNightWhereTheSunIsDown(15, 30);
        SunOver(-15, -120);
        ExpectNightWhereTheSunIsDown(-15, -120);
    }
}

// With the declination of exactly 0, and near it, the Sun's circle is two meridians.
TEST_F(Circles, AtTheEquinoxesTheNightIsHalfOfTheMapWhateverTheHour) {
    SetView();
    for (const double dec : {0.0, 0.0001, -0.0001, 0.5, -0.5}) {
        for (int longitude = -180; longitude < 180; longitude += 12) {
            SunOver(dec, longitude + 0.3);
            ExpectNightWhereTheSunIsDown(dec, longitude + 0.3);
        }
    }
}

TEST_F(Circles, TheOutlineOfTheNightHasTheSunOnTheHorizon) {
    constexpr unsigned seed = 21;
    std::mt19937 random(seed);
    Worst worst;
    for (const float lat : TriedLatitudes(random, 30)) {
        const IndependentSky sky = RandomChart(random, lat);
        for (const LinePosition& sample : WholeCircle(NightCircle(MakeLineFrame(1)))) {
            worst.Meet(AngleBetween(sky.Under(3), OnSphere(sample.lat, sample.longitude)) - 90);
        }
    }
    std::printf("seed %u: night within %.5f' = %.4f km\n", seed, worst.Minutes(), worst.Km());
    EXPECT_LT(worst.degrees, 5e-5);
}

TEST_F(Circles, TheDarkPoleIsTheSouthernInJuneAndTheNorthernInDecember) {
    SetView();
    const MapRect rect = mapView.rect;
    struct Row {
        std::int16_t month;
        int dark;  // row of the dark pole
        int light;
    };
    for (const Row& row : {Row{6, rect.top + rect.height - 1, rect.top + 1},
                           Row{12, rect.top + 1, rect.top + rect.height - 1}}) {
        FileChart chart;
        chart.event.year = 2026;
        chart.event.month = static_cast<std::uint8_t>(row.month);
        chart.event.day = 21;
        chart.event.hour = 12;
        chart.houseCode = 5;
        chart.ayanamsaCode = 1;
        Format1Record record;
        ChartToFormat1(chart, record);
        ASSERT_EQ(FileChartToCalcChart(record, 1, kFalse), kFalse);
        const std::vector<SurfacePoint> polygon = NightPolygon(MakeLineFrame(1));
        for (int x = rect.left + 5; x < rect.left + rect.width; x += 50) {
            EXPECT_TRUE(IsInside(polygon, x + 0.5, row.dark)) << row.month << " " << x;
            EXPECT_FALSE(IsInside(polygon, x + 0.5, row.light)) << row.month << " " << x;
        }
    }
}

TEST_F(Circles, AtADeclinationOfExactly0TheShadeRunsToTheTop) {
    SetView();
    SunOver(0, 100);  // the seam lies within the night
    const auto rows = [] {
        std::set<int> atSide;
        const MapRect rect = mapView.rect;
        for (const SurfacePoint& point : NightPolygon(MakeLineFrame(1))) {
            if (point.x == rect.left + rect.width) atSide.insert(point.y);
        }
        return atSide;
    };
    const MapRect rect = mapView.rect;
    EXPECT_EQ(rows().count(rect.top), 1U);
    EXPECT_EQ(rows().count(rect.top + rect.height), 0U);
    SunOver(0.01, 100);
    EXPECT_EQ(rows().count(rect.top + rect.height), 1U);
}

// Over the seam: the last point again, the map's side at its height, that side and the other one at
// the dark pole, the other side at the new height, the new point.
TEST_F(Circles, TheOutlineGoesRoundByTheDarkPoleWhereItCrossesTheSeam) {
    SetView();
    const MapRect rect = mapView.rect;
    const int right = rect.left + rect.width;
    for (const double dec : {20.0, -20.0}) {
        SunOver(dec, 0);
        const std::vector<SurfacePoint> polygon = NightPolygon(MakeLineFrame(1));
        ASSERT_EQ(polygon.size(), 186U) << "181 samples and five more";
        std::size_t at = 1;
        while (polygon[at].x != polygon[at - 1].x || polygon[at].y != polygon[at - 1].y ||
               std::abs(polygon[at + 1].x - polygon[at].x) > 20 ||
               (polygon[at + 1].x != rect.left && polygon[at + 1].x != right)) {
            ASSERT_LT(++at, polygon.size() - 6);
        }
        const int edge = dec > 0 ? rect.top + rect.height : rect.top;
        const int out = polygon[at + 1].x;
        const int in = out == right ? rect.left : right;
        EXPECT_EQ(polygon[at + 1].y, polygon[at].y);
        EXPECT_EQ(polygon[at + 2].x, out);
        EXPECT_EQ(polygon[at + 2].y, edge);
        EXPECT_EQ(polygon[at + 3].x, in);
        EXPECT_EQ(polygon[at + 3].y, edge);
        EXPECT_EQ(polygon[at + 4].x, in);
        EXPECT_EQ(polygon[at + 4].y, polygon[at + 5].y);
        EXPECT_LT(std::abs(polygon[at + 5].x - in), 20);
    }
}

// The circle goes once round the Earth, at a declination of 0 too, where it is two meridians.
TEST_F(Circles, TheOutlineCrossesTheSeamOnceWhereverItLies) {
    for (const float west : {-180.0F, -90.0F, 33.3F}) {
        View(-90, west, 90, west);
        SetView();
        for (const double dec : {0.0, 1e-6, -1e-6, 0.0001, -0.0001, 0.01, -0.01, 23.0}) {
            for (int longitude = -180; longitude < 180; longitude += 3) {
                SunOver(dec, longitude);
                EXPECT_EQ(NightPolygon(MakeLineFrame(1)).size(), 186U)
                    << west << " " << dec << " " << longitude;
            }
        }
    }
}

// On a map of a few pixels one step may be more than half of its width, and look like a crossing.
TEST_F(Circles, OnTheSmallestMapsTheOutlineEndsWithItsHundredAndNinetiethPoint) {
    SetView();
    std::size_t longest = 0;
    for (std::int16_t width = 1; width <= 8; ++width) {
        mapView.rect.width = width;
        for (const double dec : {0.0, 0.0001, -20.0}) {
            for (int longitude = -180; longitude < 180; longitude += 3) {
                SunOver(dec, longitude);
                const LineFrame frame = MakeLineFrame(1);
                const std::vector<SurfacePoint> polygon = NightPolygon(frame);
                longest = std::max(longest, polygon.size());
                const LinePosition first = WholeCircle(NightCircle(frame)).front();
                EXPECT_EQ((std::pair<int, int>{polygon[0].x, polygon[0].y}),
                          PixelsOf(first.lat, first.longitude))
                    << "it begins where it always does";
            }
        }
    }
    EXPECT_EQ(longest, 190U);
}

TEST_F(Circles, TheNightIsHatchedInBlueWithoutAnOutlineAndBeforeAllLines) {
    SunOver(20, 0);
    pointSelection[3] = kTrue;
    ShowTypes({1});
    options.dayNight = kTrue;
    Draw();
    const auto polygons = surface_.Calls("Polygon");
    ASSERT_EQ(polygons.size(), 1U);
    EXPECT_EQ(surface_.log.front(), polygons.front());
    EXPECT_NE(polygons.front().find("cross " + std::to_string(ClassicColour(1))), std::string::npos)
        << polygons.front();
}

TEST_F(Circles, OnAPageTheNightIsHatchedInBlueOrInBlackOnOneWithoutColours) {
    SunOver(20, 0);
    ShowTypes({});
    options.dayNight = kTrue;
    for (const auto& [mode, colour] : {std::pair{0, 0}, std::pair{3, int{ClassicColour(1)}}}) {
        printState.colourMode = mode;
        surface_.log.clear();
        PlotMap4(kTrue, surface_, kFalse);
        std::vector<std::string> hatches;
        for (const std::string& polygon : surface_.Calls("Polygon")) {
            if (polygon.find("cross") != std::string::npos) hatches.push_back(polygon);
        }
        ASSERT_EQ(hatches.size(), 1U) << mode;
        EXPECT_NE(hatches[0].find("cross " + std::to_string(colour) + " "), std::string::npos)
            << hatches[0];
    }
}

TEST_F(Circles, TheNightIsShownOnFlatMapsOfTheWholeWorldAlone) {
    SunOver(20, 0);
    ShowTypes({});
    Draw();
    EXPECT_TRUE(surface_.Calls("Polygon").empty()) << "off";
    options.dayNight = kTrue;
    Draw();
    EXPECT_EQ(surface_.Calls("Polygon").size(), 1U);
    View(-60, -100, 60, 100);
    Draw();
    EXPECT_TRUE(surface_.Calls("Polygon").empty()) << "a narrow view";
    for (const std::int16_t globe : {projection::kGlobeSphere, projection::kGlobeOblate}) {
        Globe(20, 0, globe);
        Draw();
        EXPECT_TRUE(surface_.Calls("Polygon").empty()) << "a globe";
    }
    CurrentMap() = {};
    CurrentMap().projection = projection::kMercator;
    View(-65, -180, 75, 180);
    Draw();
    EXPECT_EQ(surface_.Calls("Polygon").size(), 1U);
    Chart().Lon[3] = -1;
    Draw();
    EXPECT_TRUE(surface_.Calls("Polygon").empty()) << "no Sun";
}

TEST_F(Circles, TheNightIsAlwaysThatOfTheChartOnDisplay) {
    SunOver(20, 0);
    options.dayNight = kTrue;
    ShowTypes({});
    Draw();
    const std::string ofSlot1 = surface_.Calls("Polygon").at(0);
    calcChart[2] = calcChart[1];
    calcChart[2].Dec[3] = -20;
    SetView();
    PlotChartLines(kFalse, kTrue, 2);
    EXPECT_EQ(surface_.Calls("Polygon").at(0), ofSlot1);
}

}  // namespace
}  // namespace orvantis

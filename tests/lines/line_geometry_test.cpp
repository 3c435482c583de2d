#include "lines/line_geometry.h"

#include <array>
#include <cmath>
#include <gtest/gtest.h>
#include <initializer_list>
#include <random>
#include <string>
#include <vector>

#include "charts/CALCCHRT.h"
#include "lines/chart_lines.h"
#include "lines/lines_fixture.h"
#include "session/settings.h"
#include "support/reset_all.h"
#include "text/numbers.h"

namespace orvantis {
namespace {

constexpr double kDegree = 3.14159265358979323846 / 180;

// Altitude and hour angle of a body over a place, by the formula of every textbook (J. Meeus,
// Astronomical Algorithms, chapter 13): sin h = sin phi sin delta + cos phi cos delta cos H.
struct Sky {
    double altitude;
    double hourAngle;  // -180 to 180, positive in the west
};

Sky LookUp(const CalcChart& chart, std::size_t p, double lat, double longitude) {
    const double siderealTime = chart.RA[23] + chartNow.PlaceLongW + longitude;
    const double h = std::remainder(siderealTime - chart.RA[p], 360.0);
    const double sine =
        std::sin(lat * kDegree) * std::sin(chart.Dec[p] * kDegree) +
        std::cos(lat * kDegree) * std::cos(chart.Dec[p] * kDegree) * std::cos(h * kDegree);
    return {std::asin(sine) / kDegree, h};
}

class LineGeometry : public ::testing::Test {
  protected:
    void SetUp() override {
        ResetAll();
        calcChart[1] = {};
        calcChart[1].Lon.fill(-1);
        calcChart[1].JulianDayET = 2451545;
    }

    static CalcChart& Chart() { return calcChart[1]; }

    // Puts a point of the chart in the sky.
    static void Place(std::size_t p, float ra, float dec) {
        Chart().Lon[p] = 0;
        Chart().RA[p] = ra;
        Chart().Dec[p] = dec;
        pointSelection[p] = kTrue;
    }
};

// Tolerance: the samples are exact but for the rounding of 64-bit arithmetic; near the horizon
// circle's poles an arc sine loses half of the digits.
constexpr double kTolerance = 1e-6;

TEST_F(LineGeometry, EveryVertexOfARiseOrSetLineHasItsPointOnTheHorizonOnThatSide) {
    std::mt19937 random(20260117);
    std::uniform_real_distribution<float> anyRA(0, 360);
    std::uniform_real_distribution<float> anyDec(-80, 80);
    for (int round = 0; round < 200; ++round) {
        Place(3, anyRA(random), round == 0 ? 0 : anyDec(random));
        Chart().RA[23] = anyRA(random);
        chartNow.PlaceLongW = anyRA(random) - 180;
        const LineFrame frame = MakeLineFrame(1);
        for (const std::int16_t type : {line_type::kRise, line_type::kSet}) {
            for (const auto& run : LineRuns(frame, 3, type)) {
                for (const LinePosition& v : run) {
                    const Sky sky = LookUp(Chart(), 3, v.lat, v.longitude);
                    ASSERT_NEAR(sky.altitude, 0, kTolerance)
                        << "round " << round << " type " << type << " at " << v.lat << " "
                        << v.longitude;
                    // At the ends of a line the point stands on the meridian, due north or south;
                    // the poles have no east and west.
                    if (std::abs(v.lat) > 90 - 1e-6) continue;
                    const double side = std::sin(sky.hourAngle * kDegree);
                    ASSERT_TRUE(type == line_type::kRise ? side < 1e-6 : side > -1e-6)
                        << "round " << round << " type " << type << " at " << v.lat;
                }
            }
        }
    }
}

TEST_F(LineGeometry, ARiseLineReachesTheLatitudeOf90LessTheDeclination) {
    Place(3, 100, 23);
    const LineFrame frame = MakeLineFrame(1);
    const HorizonCircle circle = RiseSetCircle(frame, 3);
    double lat = 0;
    double longitude = 0;
    CircleSample(circle, -90, lat, longitude);
    EXPECT_NEAR(lat, 67, 1e-6);
    CircleSample(circle, 90, lat, longitude);
    EXPECT_NEAR(lat, -67, 1e-6);
}

TEST_F(LineGeometry, MeridianLinesHaveTheirPointOnTheUpperAndOnTheLowerMeridian) {
    std::mt19937 random(7);
    std::uniform_real_distribution<float> any(0, 360);
    for (int round = 0; round < 200; ++round) {
        Place(5, any(random), 10);
        Chart().RA[23] = any(random);
        chartNow.PlaceLongW = any(random) - 180;
        const LineFrame frame = MakeLineFrame(1);
        const double upper = MeridianLineLongitude(frame, 5, line_type::kCulminate);
        const double lower = MeridianLineLongitude(frame, 5, line_type::kAnticulminate);
        ASSERT_NEAR(LookUp(Chart(), 5, 0, upper).hourAngle, 0, 1e-9) << round;
        ASSERT_NEAR(std::abs(LookUp(Chart(), 5, 0, lower).hourAngle), 180, 1e-9) << round;
        ASSERT_GE(upper, -180);
        ASSERT_LE(upper, 180);
    }
}

TEST_F(LineGeometry, NoRunCrossesTheAntimeridianAndRunsMeetThere) {
    std::mt19937 random(11);
    std::uniform_real_distribution<float> any(0, 360);
    for (int round = 0; round < 300; ++round) {
        Place(8, any(random), any(random) / 360 * 120 - 60);
        const LineFrame frame = MakeLineFrame(1);
        const auto runs = LineRuns(frame, 8, round % 2 == 0 ? line_type::kRise : line_type::kSet);
        for (std::size_t r = 0; r < runs.size(); ++r) {
            ASSERT_GE(runs[r].size(), 2U);
            for (std::size_t i = 1; i < runs[r].size(); ++i) {
                ASSERT_LE(std::abs(runs[r][i].longitude - runs[r][i - 1].longitude), 180);
            }
            if (r == 0) continue;
            ASSERT_EQ(std::abs(runs[r].front().longitude), 180);
            ASSERT_EQ(runs[r].front().longitude, -runs[r - 1].back().longitude);
            ASSERT_EQ(runs[r].front().lat, runs[r - 1].back().lat);
        }
    }
}

// Straight-line distance of two positions on a globe of radius 1, in degrees.
double Apart(const LinePosition& a, const LinePosition& b) {
    const double dx = CosD(a.lat) * CosD(a.longitude) - CosD(b.lat) * CosD(b.longitude);
    const double dy = CosD(a.lat) * SinD(a.longitude) - CosD(b.lat) * SinD(b.longitude);
    const double dz = SinD(a.lat) - SinD(b.lat);
    return RadToDeg(std::sqrt(dx * dx + dy * dy + dz * dz));
}

// A point on the equator rises on a meridian, over both poles, where every longitude is as good.
TEST_F(LineGeometry, ALineOverThePolesIsCutWithoutALeap) {
    std::mt19937 random(19);
    std::uniform_real_distribution<float> any(0, 360);
    for (int round = 0; round < 300; ++round) {
        Place(8, any(random), 0);
        const LineFrame frame = MakeLineFrame(1);
        for (const std::int16_t type : {line_type::kRise, line_type::kSet}) {
            LinePosition before;
            bool first = true;
            for (const auto& run : LineRuns(frame, 8, type)) {
                for (const LinePosition& position : run) {
                    ASSERT_TRUE(first || Apart(before, position) < 2 + 1e-6) << round;
                    first = false;
                    before = position;
                }
            }
        }
    }
}

// The other positions of a circle mirror those of a quarter of it.
TEST_F(LineGeometry, SamplesOfACircleAreThoseOfItsFormula) {
    std::mt19937 random(23);
    std::uniform_real_distribution<double> anyTilt(-179, 179);
    std::uniform_real_distribution<double> anyNode(-180, 180);
    for (int round = 0; round < 200; ++round) {
        const HorizonCircle circle = MakeCircle(anyTilt(random), anyNode(random));
        const std::vector<LinePosition> samples = CircleSamples(QuarterOf(circle), -360, 720);
        ASSERT_EQ(samples.size(), 541U);
        for (std::size_t i = 0; i < samples.size(); ++i) {
            LinePosition expected;
            CircleSample(circle, static_cast<std::int16_t>(static_cast<int>(2 * i) - 360),
                         expected.lat, expected.longitude);
            // The formula's arc sine has half of the digits near a pole.
            ASSERT_LT(Apart(samples[i], expected), 1e-9) << round << " sample " << i;
            ASSERT_LE(std::abs(samples[i].longitude), 180);
        }
    }
}

// At declination 0 the circle is the meridian 90 degrees from its body and the one opposite. The
// ends lie at the poles, 90 degrees to within rounding; no longitude is that of rounding errors.
TEST_F(LineGeometry, RiseAndSetLinesOfDeclination0AreMeridiansFromPoleToPole) {
    for (const double tilt : {-90.0, 90.0}) {
        for (const double node : {-130.0, 0.0, 17.25, 100.0}) {
            const CircleQuarter quarter = QuarterOf(MakeCircle(tilt, node));
            for (const std::int16_t type : {line_type::kRise, line_type::kSet}) {
                const double meridian =
                    type == line_type::kRise ? node : std::remainder(node + 180, 360.0);
                const LineParts parts = RiseSetParts(quarter, type);
                ASSERT_FALSE(parts.empty());
                EXPECT_NEAR(std::abs(parts.front().front().lat), 90, 1e-12);
                EXPECT_NEAR(std::abs(parts.back().back().lat), 90, 1e-12);
                for (const auto& part : parts) {
                    for (const LinePosition& position : part) {
                        EXPECT_NEAR(std::remainder(position.longitude - meridian, 360.0), 0, 1e-12)
                            << "tilt " << tilt << " node " << node << " type " << type << " lat "
                            << position.lat;
                    }
                }
            }
        }
    }
}

// A pole on the way is passed from one meridian to the other; as an end it has the one.
TEST_F(LineGeometry, ACircleOverThePolesTurnsFromMeridianToMeridianThere) {
    const CircleQuarter quarter = QuarterOf(MakeCircle(-90, 20));
    const std::vector<LinePosition> whole = CircleSamples(quarter, 0, 360);
    ASSERT_EQ(whole.size(), 183U) << "one more at either pole";
    for (const std::size_t pole : {45, 136}) {
        const double side = pole == 45 ? -90 : 90;
        EXPECT_EQ(whole[pole].lat, side);
        EXPECT_EQ(whole[pole].longitude, whole[pole - 1].longitude);
        EXPECT_EQ(whole[pole + 1].lat, side);
        EXPECT_EQ(whole[pole + 1].longitude, whole[pole + 2].longitude);
        EXPECT_TRUE(IsTurnAtPole(whole[pole], whole[pole + 1]));
        EXPECT_FALSE(IsTurnAtPole(whole[pole - 1], whole[pole]));
    }
    const std::vector<LinePosition> toThePole = CircleSamples(quarter, 0, 90);
    ASSERT_EQ(toThePole.size(), 46U);
    EXPECT_EQ(toThePole[45].lat, -90);
    EXPECT_EQ(toThePole[45].longitude, toThePole[44].longitude);
    EXPECT_EQ(CircleSamples(quarter, 90, 90).size(), 1U);
}

// A circle beside the poles keeps the positions of its formula, however near.
TEST_F(LineGeometry, ACircleBesideThePolesHasItsSamplesAlone) {
    for (const double tilt : {-90 + 1e-6, 90 - 1e-6, 89.99}) {
        const std::vector<LinePosition> whole =
            CircleSamples(QuarterOf(MakeCircle(tilt, 20)), 0, 360);
        EXPECT_EQ(whole.size(), 181U) << tilt;
        EXPECT_NEAR(std::abs(whole[45].lat), std::abs(tilt), 1e-9);
        EXPECT_NEAR(std::abs(whole[45].longitude), 110, 100);
    }
    EXPECT_EQ(GreatCircleSamples(1e-6, 40, 20, 360).size(), 181U);
    EXPECT_EQ(GreatCircleSamples(1e-10, 40, 20, 360).size(), 183U) << "over either pole";
}

// A line by its longitudes, 2 degrees of latitude apart.
std::vector<LinePosition> LineBy(std::initializer_list<double> longitudes) {
    std::vector<LinePosition> line;
    for (const double longitude : longitudes) {
        line.push_back({static_cast<double>(line.size()) * 2, longitude});
    }
    return line;
}

struct CutRow {
    std::vector<LinePosition> samples;
    std::vector<std::vector<double>> longitudes;  // of the runs
};

TEST_F(LineGeometry, ASampleOnTheAntimeridianIsTheCrossingOrHasTheSideOfItsNeighbours) {
    const double hair = 180 - 1e-12;
    for (const CutRow& row : std::initializer_list<CutRow>{
             {LineBy({178, 180, -178}), {{178, 180}, {-180, -178}}},
             {LineBy({178, -180, -178}), {{178, 180}, {-180, -178}}},
             {LineBy({-178, 180, 178}), {{-178, -180}, {180, 178}}},
             {LineBy({-178, -hair, 178}), {{-178, -180}, {180, 178}}},
             {LineBy({178, hair, -hair, -178}), {{178, 180, 180}, {-180, -178}}},
             {LineBy({178, -180, 178}), {{178, 180, 178}}},
             {LineBy({-180, 178, 176}), {{180, 178, 176}}},
             {LineBy({-180, 180, -180, 178}), {{180, 180, 180, 178}}},
             {LineBy({178, -180}), {{178, 180}}},
             {LineBy({-178, 180}), {{-178, -180}}},
             {LineBy({-180, 180, -180}), {{-180, -180, -180}}},
             {LineBy({180, -178, 178}), {{-180, -178, -180}, {180, 178}}},
             {LineBy({-180}), {{-180}}},
             {LineBy({10, 20}), {{10, 20}}},
         }) {
        const LineParts parts = CutAtAntimeridian(row.samples);
        std::vector<std::vector<double>> longitudes;
        std::size_t positions = 0;
        for (const auto& run : parts) {
            longitudes.emplace_back();
            for (const LinePosition& position : run) {
                longitudes.back().push_back(position.longitude);
                ++positions;
            }
        }
        EXPECT_EQ(longitudes, row.longitudes) << row.samples[0].longitude;
        EXPECT_GE(positions, row.samples.size());
    }
}

// Circles whose samples lie on the antimeridian, of all tilts, over the poles too.
TEST_F(LineGeometry, NoVertexIsDoubledWhereASampleLiesOnTheAntimeridian) {
    for (double tilt = -90; tilt <= 90; tilt += 7.5) {
        for (const double node : {0.0, 90.0, -90.0, 180.0, -180.0, 1e-13, -180 + 1e-11, 34.0}) {
            const CircleQuarter quarter = QuarterOf(MakeCircle(tilt, node));
            const std::string what = std::to_string(tilt) + " " + std::to_string(node);
            ExpectWellCut(CutAtAntimeridian(CircleSamples(quarter, 0, 360)), what);
            ExpectWellCut(RiseSetParts(quarter, line_type::kRise), what);
            ExpectWellCut(RiseSetParts(quarter, line_type::kSet), what);
        }
    }
}

TEST_F(LineGeometry, APointThatIsNotCalculatedOrNotSelectedIsNotDrawn) {
    Place(3, 10, 10);
    EXPECT_TRUE(IsPointDrawn(1, 3));
    Chart().Lon[3] = -1;
    EXPECT_FALSE(IsPointDrawn(1, 3));
    Place(3, 10, 10);
    pointSelection[3] = kFalse;
    EXPECT_FALSE(IsPointDrawn(1, 3));
}

TEST_F(LineGeometry, TheSouthNodeHasMeridianLinesButNoRiseOrSetLine) {
    Place(21, 10, 10);
    const LineFrame frame = MakeLineFrame(1);
    EXPECT_FALSE(LineRuns(frame, 21, line_type::kCulminate).empty());
    EXPECT_FALSE(LineRuns(frame, 21, line_type::kAnticulminate).empty());
    EXPECT_TRUE(LineRuns(frame, 21, line_type::kRise).empty());
    EXPECT_TRUE(LineRuns(frame, 21, line_type::kSet).empty());
}

TEST_F(LineGeometry, TheZodiacalModeDiffersOffTheEclipticAndAgreesOnIt) {
    // On the ecliptic at longitude 50: right ascension and declination of that very point.
    const LineFrame atFirst = MakeLineFrame(1);
    Chart().Lon[4] = 50;
    double ra = 0;
    double dec = 0;
    EclipticForm(atFirst, 4, ra, dec);
    Place(4, static_cast<float>(ra), static_cast<float>(dec));
    Chart().Lon[4] = 50;

    const LineFrame frame = MakeLineFrame(1);
    const HorizonCircle mundo = RiseSetCircle(frame, 4);
    options.lineMode = 2;
    const HorizonCircle zodiacal = RiseSetCircle(frame, 4);
    EXPECT_NEAR(mundo.tilt, zodiacal.tilt, 1e-5);  // the stored values have 32 bits
    EXPECT_NEAR(mundo.node, zodiacal.node, 2e-5);

    Chart().Dec[4] += 5;
    options.lineMode = 1;
    const HorizonCircle off = RiseSetCircle(frame, 4);
    options.lineMode = 2;
    EXPECT_GT(std::abs(off.tilt - RiseSetCircle(frame, 4).tilt), 4);
}

TEST_F(LineGeometry, InTheGeodeticZodiacAPointAt0AriesCulminatesAtLongitude0) {
    options.mapZodiac = 1;
    Place(6, 77, 5);
    Chart().Lon[6] = 0;
    const LineFrame frame = MakeLineFrame(1);
    EXPECT_EQ(MeridianLineLongitude(frame, 6, line_type::kCulminate), 0);
    EXPECT_EQ(MeridianLineLongitude(frame, 6, line_type::kAnticulminate), -180);
}

TEST_F(LineGeometry, TheGeodeticHorizonMayTakeTheEclipticAsEquator) {
    options.mapZodiac = 1;
    options.geodeticAscDsc = kFalse;
    Place(6, 77, 5);
    Chart().Lon[6] = 120;
    Chart().Lat[6] = 3;
    const LineFrame frame = MakeLineFrame(1);
    EXPECT_EQ(RiseSetCircle(frame, 6).tilt, 3 - 90);
    options.lineMode = 2;
    EXPECT_EQ(RiseSetCircle(frame, 6).tilt, -90);
    EXPECT_EQ(RiseSetCircle(frame, 6).node, Modulo(120 + 90, 360) - 180);
}

// A point of the ecliptic in right ascension and declination, from publications: J. Meeus,
// Astronomical Algorithms, example 25.a (the Sun of 1992 October 13, apparent longitude
// 199.90895, obliquity 23.43999; printed with five decimals, the tolerance is one of the last),
// and the four cardinal points, which are exact by definition.
struct EclipticRow {
    double longitude;
    double rightAscension;
    double declination;
    double tolerance;
};
constexpr double kMeeusObliquity = 23.43999;
constexpr std::array<EclipticRow, 5> kEclipticRows = {{
    {199.90895, 198.38083, -7.78507, 1e-5},
    {0, 0, 0, 1e-9},
    {90, 90, kMeeusObliquity, 1e-9},
    {180, 180, 0, 1e-9},
    {270, 270, -kMeeusObliquity, 1e-9},
}};

// Difference of two angles, degrees, -180 to 180.
double Turn(double a, double b) {
    return std::remainder(a - b, 360);
}

// A frame with its Midheaven at right ascension 30 and its place at 15 degrees west.
LineFrame MeeusFrame() {
    LineFrame frame;
    frame.obliquity = kMeeusObliquity;
    frame.midheavenRA = 30;
    frame.placeLongW = 15;
    return frame;
}

// Puts the point at a longitude, with equatorial values that the zodiacal mode must not use.
void PlaceOnEcliptic(std::size_t p, double longitude) {
    calcChart[1].Lon[p] = longitude;
    calcChart[1].Lat[p] = 4;
    calcChart[1].RA[p] = 123;
    calcChart[1].Dec[p] = 45;
}

TEST_F(LineGeometry, TheZodiacalModeTakesThePublishedPlaceOfAnEclipticLongitude) {
    options.lineMode = 2;
    const LineFrame frame = MeeusFrame();
    for (const EclipticRow& row : kEclipticRows) {
        PlaceOnEcliptic(3, row.longitude);
        // Under the point: its right ascension less the sidereal time of longitude 0, 30 + 15.
        const double under = row.rightAscension - 45;
        EXPECT_NEAR(Turn(MeridianLineLongitude(frame, 3, line_type::kCulminate), under), 0,
                    row.tolerance);
        EXPECT_NEAR(
            std::abs(Turn(MeridianLineLongitude(frame, 3, line_type::kAnticulminate), under)), 180,
            row.tolerance);
        const HorizonCircle circle = RiseSetCircle(frame, 3);
        EXPECT_NEAR(circle.tilt, row.declination - 90, row.tolerance) << row.longitude;
        EXPECT_NEAR(Turn(circle.node, under - 90), 0, row.tolerance) << row.longitude;
    }
}

// Meeus, Astronomical Algorithms, formulas 13.3 and 13.4 with latitude 0.
TEST_F(LineGeometry, TheZodiacalModeAgreesWithTheTextbookAtEveryLongitude) {
    options.lineMode = 2;
    const LineFrame frame = MeeusFrame();
    const double e = kMeeusObliquity * kDegree;
    for (int longitude = 0; longitude < 360; longitude += 7) {
        const double l = longitude * kDegree;
        const double ra = std::atan2(std::sin(l) * std::cos(e), std::cos(l)) / kDegree;
        const double dec = std::asin(std::sin(e) * std::sin(l)) / kDegree;
        PlaceOnEcliptic(3, longitude);
        EXPECT_NEAR(Turn(MeridianLineLongitude(frame, 3, line_type::kCulminate), ra - 45), 0, 1e-9)
            << longitude;
        EXPECT_NEAR(RiseSetCircle(frame, 3).tilt, dec - 90, 1e-9) << longitude;
    }
}

TEST_F(LineGeometry, ASiderealLongitudeIsTurnedBackToTheTropicalOneInTheZodiacalMode) {
    options.lineMode = 2;
    LineFrame frame = MeeusFrame();
    frame.offset = -24.75;
    PlaceOnEcliptic(3, 199.90895 - 24.75);
    EXPECT_NEAR(Turn(MeridianLineLongitude(frame, 3, line_type::kCulminate), 198.38083 - 45), 0,
                1e-5);
    EXPECT_NEAR(RiseSetCircle(frame, 3).tilt, -7.78507 - 90, 1e-5);

    // The frame of a sidereal chart has that offset: 24 degrees 44 minutes in 2000 (the base of
    // Fagan and Allen, with nutation and rounding within 0.02 degrees).
    Chart().Zodiac = 2;
    EXPECT_NEAR(MakeLineFrame(1).offset, -(24 + 44 / 60.0), 0.02);
    Chart().Zodiac = 1;
    EXPECT_EQ(MakeLineFrame(1).offset, 0);
}

TEST_F(LineGeometry, TheGeodeticHorizonOfTheZodiacalModeHasTheDeclinationOnTheEcliptic) {
    options.lineMode = 2;
    options.mapZodiac = 1;
    options.geodeticStart = 10;
    const LineFrame frame = MeeusFrame();
    for (const EclipticRow& row : kEclipticRows) {
        PlaceOnEcliptic(3, row.longitude);
        const HorizonCircle circle = RiseSetCircle(frame, 3);
        EXPECT_NEAR(circle.tilt, row.declination - 90, row.tolerance) << row.longitude;
        EXPECT_NEAR(Turn(circle.node, row.longitude - 10 - 90), 0, 1e-9);
    }
    options.lineMode = 1;
    EXPECT_EQ(RiseSetCircle(frame, 3).tilt, 45 - 90) << "in mundo: the point's own declination";
}

}  // namespace
}  // namespace orvantis

#include "lines/parans.h"

#include <cmath>
#include <gtest/gtest.h>
#include <limits>
#include <optional>
#include <random>

#include "lines/chart_lines.h"
#include "lines/independent_sky.h"
#include "lines/lines_fixture.h"

namespace orvantis {
namespace {

class Parans : public LinesOfRealCharts {};

// The two points of a test: `p` and the paran point.
constexpr std::int16_t kP = 3;
constexpr std::int16_t kOther = 1;

// ---- The closed form against the turning sky ----------------------------------------------------

// From this latitude on the cosine of the latitude is what the arc cosine takes for 1.
constexpr double kClampedFrom = 89.9998;

// How far a body is from an angle (1 culminating to 4 setting), degrees of a great circle, and
// whether it is on that angle's side of the sky. `slack`: a body that only touches the horizon does
// so on the meridian, where east and west meet; and so near to the pole sides mean nothing.
struct FromAngle {
    double distance = 0;
    bool side = false;
};

FromAngle DistanceFromAngle(const Body& body, double lat, double sidereal, int angle) {
    const double slack = std::abs(lat) > kClampedFrom ? 180 : 1e-3;  // degrees
    const Standing s = Stand(body, lat, sidereal);
    switch (angle) {
        case 1:
            return {std::abs(s.aside), s.towardsSouth > -slack};
        case 2:
            return {std::abs(s.aside), s.towardsSouth < slack};
        case 3:
            return {std::abs(s.altitude), s.aside < slack};
        default:
            return {std::abs(s.altitude), s.aside > -slack};
    }
}

// The nearest that two bodies come to being on two angles at the same moment: sidereal time is
// scanned through a day in steps of half a degree, and the minima are refined.
double NearestApproach(const Body& a, int angleA, const Body& b, int angleB, double lat) {
    const auto worse = [&](double sidereal) {
        const FromAngle first = DistanceFromAngle(a, lat, sidereal, angleA);
        const FromAngle second = DistanceFromAngle(b, lat, sidereal, angleB);
        if (!first.side || !second.side) return 999.0;
        return std::max(first.distance, second.distance);
    };
    constexpr std::size_t kSteps = 720;
    std::array<double, kSteps> day{};
    for (std::size_t i = 0; i < kSteps; ++i) day[i] = worse(static_cast<double>(i) * 0.5);
    double best = 999;
    for (std::size_t i = 0; i < kSteps; ++i) {
        if (day[i] > 1 || day[i] > day[(i + 1) % kSteps] ||
            day[i] > day[(i + kSteps - 1) % kSteps]) {
            continue;
        }
        // The greater of two distances has one minimum in so short a time.
        double low = static_cast<double>(i) * 0.5 - 0.5;
        double high = low + 1;
        for (int round = 0; round < 60; ++round) {
            const double left = low + (high - low) / 3;
            const double right = high - (high - low) / 3;
            if (worse(left) < worse(right)) {
                high = right;
            } else {
                low = left;
            }
        }
        best = std::min(best, worse((low + high) / 2));
    }
    return best;
}

// What the scan may differ by, degrees: right ascension, declination and latitude are held in 32
// bits (half a unit is 1.5e-5 degrees at right ascensions above 256). The length of the plane's
// pole is held in 32 bits too, and its cosine is off by up to 6e-8 of itself, which moves the
// latitude by as much over the cosine of the latitude: 0.0002 degrees at 89, 0.02 at 89.99. Beyond
// it is 0.999999999999 whatever it was.
double ScanTolerance(double lat) {
    if (std::abs(lat) > kClampedFrom) return 0.003;
    return 3e-5 + 6e-8 / std::cos(lat * kRad) / kRad;
}

// What the scans of a test came to.
struct ScanResult {
    int parans = 0;
    Worst within60;
    Worst within89;
    Worst beyond;

    void Print(unsigned seed, const char* what) const {
        std::printf(
            "%s, seed %u: %d parans; worst deviation up to 60 degrees of latitude %.5f' = %.4f km, "
            "to 89 %.5f' = %.4f km, beyond %.4f' = %.3f km\n",
            what, seed, parans, within60.Minutes(), within60.Km(), within89.Minutes(),
            within89.Km(), beyond.Minutes(), beyond.Km());
    }
};

// All parans of two points of the chart in slot 1, each confirmed by the scan.
void ConfirmPair(std::int16_t p, std::int16_t other, const Body& a, const Body& b,
                 ScanResult& result) {
    for (const std::int16_t type : {line_type::kParanRiseRise, line_type::kParanRiseCulm}) {
        for (const Paran& paran : ParansOfPair(1, p, other, type, 90)) {
            const int tens = paran.relation / 10;
            const int units = paran.relation % 10;
            const int onMeridian = (tens <= 2 ? 1 : 0) + (units <= 2 ? 1 : 0);
            EXPECT_EQ(onMeridian, type == line_type::kParanRiseRise ? 0 : 1);
            const auto lat = static_cast<double>(paran.lat);
            const double apart = NearestApproach(a, tens, b, units, lat);
            EXPECT_LT(apart, ScanTolerance(lat)) << "points " << p << " " << other << " at " << lat
                                                 << " relation " << paran.relation;
            Worst& worst = std::abs(lat) <= 60   ? result.within60
                           : std::abs(lat) <= 89 ? result.within89
                                                 : result.beyond;
            worst.Meet(apart);
            ++result.parans;
        }
    }
}

// Worst seen: 54 charts from 1850 to 2100, bodies by Swiss Ephemeris.
TEST_F(Parans, BothBodiesAreAngularAtOneMomentByTheScanOfASiderealDay) {
    constexpr unsigned seed = 20261121;
    std::mt19937 random(seed);
    ScanResult result;
    int charts = 0;
    for (const float lat : TriedLatitudes(random, 30)) {
        const IndependentSky sky = RandomChart(random, lat);
        ++charts;
        const auto other = static_cast<std::int16_t>(kSwissBodies[random() % 11][0]);
        for (const auto& [number, ignored] : kSwissBodies) {
            const auto p = static_cast<std::int16_t>(number);
            if (p == other) continue;
            ConfirmPair(p, other, sky.bodies[static_cast<std::size_t>(p)],
                        sky.bodies[static_cast<std::size_t>(other)], result);
        }
    }
    result.Print(seed, "Swiss Ephemeris");
    EXPECT_GE(charts, 50);
    EXPECT_EQ(result.parans, charts * 10 * 6) << "up to the poles each pair has all six";
}

TEST_F(Parans, BodiesNearTheEquatorAndNearThePolesAreAngularToo) {
    constexpr unsigned seed = 52;
    std::mt19937 random(seed);
    const std::vector<float> declinations = {0.001F, -0.001F, 0.2F, -0.3F,  23.4F, -23.4F,
                                             28.7F,  -28.7F,  60,   -66.6F, 85,    -89};
    std::uniform_real_distribution<float> anyRA(0, 360);
    ScanResult result;
    for (const float first : declinations) {
        for (const float second : declinations) {
            Place(3, anyRA(random), first);
            Place(1, anyRA(random), second);
            const Body a{Chart().RA[3], Chart().Dec[3]};
            const Body b{Chart().RA[1], Chart().Dec[1]};
            ConfirmPair(kP, kOther, a, b, result);
        }
    }
    result.Print(seed, "Extreme declinations");
    EXPECT_EQ(result.parans, 144 * 6);
}

// Sidereal time, degrees, at which a body is on an angle at a latitude; none if it never is.
std::optional<double> TimeOfAngle(const Body& body, int angle, double lat) {
    if (angle == 1) return body.ra;
    if (angle == 2) return body.ra + 180;
    const double cosine = -std::tan(lat * kRad) * std::tan(body.dec * kRad);
    if (std::abs(cosine) > 1) return std::nullopt;
    const double h = std::acos(cosine) / kRad;  // from culmination to setting
    return body.ra + (angle == 4 ? h : -h);
}

// Latitudes from -limit to limit where two bodies are on two angles at once: the difference of
// their times changes sign, by bisection.
std::vector<double> LatitudesBySearch(const Body& a, int angleA, const Body& b, int angleB,
                                      double limit) {
    const auto apart = [&](double lat) -> std::optional<double> {
        const auto first = TimeOfAngle(a, angleA, lat);
        const auto second = TimeOfAngle(b, angleB, lat);
        if (!first || !second) return std::nullopt;
        return Turned(*first, *second);
    };
    std::vector<double> found;
    constexpr double step = 0.05;
    for (double lat = -limit; lat + step <= limit; lat += step) {
        const auto here = apart(lat);
        const auto next = apart(lat + step);
        if (!here || !next || *here * *next > 0 || std::abs(*here - *next) > 180) continue;
        double low = lat;
        double high = lat + step;
        for (int round = 0; round < 60; ++round) {
            const double middle = (low + high) / 2;
            (*apart(low) * *apart(middle) <= 0 ? high : low) = middle;
        }
        found.push_back((low + high) / 2);
    }
    return found;
}

// The other way round: what a search through all latitudes and relations finds is what the closed
// form gives, no more and no less. Declinations below 30 degrees and latitudes below 55, where
// every body rises and the search is sound.
TEST_F(Parans, ASearchThroughAllLatitudesFindsTheSameParansWithTheSameRelations) {
    std::mt19937 random(77);
    std::uniform_real_distribution<float> anyRA(0, 360);
    std::uniform_real_distribution<float> anyDec(-30, 30);
    constexpr float limit = 55;
    int matched = 0;
    for (int round = 0; round < 60; ++round) {
        Place(3, anyRA(random), anyDec(random));
        Place(1, anyRA(random), anyDec(random));
        const Body a{Chart().RA[3], Chart().Dec[3]};
        const Body b{Chart().RA[1], Chart().Dec[1]};
        std::vector<Paran> listed;
        for (const std::int16_t type : {line_type::kParanRiseRise, line_type::kParanRiseCulm}) {
            for (const Paran& paran : ParansOfPair(1, kP, kOther, type, limit)) {
                listed.push_back(paran);
            }
        }
        std::size_t searched = 0;
        for (int tens = 1; tens <= 4; ++tens) {
            for (int units = 1; units <= 4; ++units) {
                if (tens <= 2 && units <= 2) continue;  // on the meridian both: no latitude
                for (const double lat : LatitudesBySearch(a, tens, b, units, limit)) {
                    ++searched;
                    bool found = false;
                    for (const Paran& paran : listed) {
                        found = found || (paran.relation == 10 * tens + units &&
                                          std::abs(static_cast<double>(paran.lat) - lat) < 1e-4);
                    }
                    EXPECT_TRUE(found)
                        << "round " << round << " at " << lat << " relation " << tens << units;
                    ++matched;
                }
            }
        }
        EXPECT_EQ(searched, listed.size()) << "round " << round;
    }
    EXPECT_GT(matched, 100);
}

// ---- The closed form by itself ------------------------------------------------------------------

TEST_F(Parans, TwoBodiesAtOnePlaceGiveNoNewValue) {
    float lat = 12;
    float zenith = 34;
    EXPECT_FALSE(ParanLatitude(50, 20, 50, 20, lat, zenith));
    EXPECT_EQ(lat, 12);
    EXPECT_EQ(zenith, 34);

    // A body on the equator 90 degrees from one on its own meridian circle: the plane holds the
    // Earth's axis, and every horizon on the equator holds both at once.
    EXPECT_FALSE(ParanLatitude(0, 10, 0, -20, lat, zenith));
    EXPECT_EQ(lat, 12);

    Place(3, 50, 20);
    Place(1, 50, 20);
    EXPECT_TRUE(ParansOfPair(1, kP, kOther, line_type::kParanRiseRise, 90).empty());
}

// One sets as the other rises, everywhere and at every hour: the pole of their plane is what
// rounding leaves of nothing.
TEST_F(Parans, OppositeBodiesGiveSomeLatitudeOfTheEarthOrNoneAndNoFault) {
    std::mt19937 random(180);
    std::uniform_real_distribution<float> anyRA(0, 180);
    std::uniform_real_distribution<float> anyDec(-90, 90);
    int some = 0;
    int none = 0;
    for (int round = 0; round < 2000; ++round) {
        const float ra = round < 8 ? 45.0F * static_cast<float>(round % 4) : anyRA(random);
        const float dec = round < 4 ? 0.0F : round < 8 ? 30.0F : anyDec(random);
        float lat = 500;
        float zenith = 600;
        if (ParanLatitude(ra, dec, ra + 180, -dec, lat, zenith)) {
            EXPECT_LE(std::abs(lat), 90) << ra << " " << dec;
            EXPECT_LE(std::abs(zenith), 180) << ra << " " << dec;
            ++some;
        } else {
            EXPECT_EQ(lat, 500);
            EXPECT_EQ(zenith, 600);
            ++none;
        }
    }
    EXPECT_GT(some, 0);
    EXPECT_GT(none, 0);

    Place(3, 50, 20);
    Place(1, 230, -20);
    ShowTypes({5, 6});
    PlotMap4(kFalse, surface_, kFalse);
    EXPECT_TRUE(TestShell().boxes.empty());
}

TEST_F(Parans, TwoBodiesOnTheEquator90DegreesApartGiveALatitudeOfNearly90) {
    float lat = 0;
    float zenith = 0;
    ASSERT_TRUE(ParanLatitude(0, 0, 90, 0, lat, zenith));
    // The arc cosine takes 0.999999999999 for 1: 8.1e-5 degrees off the pole.
    EXPECT_NEAR(lat, 90 - 8.1e-5, 1e-5);
    EXPECT_LT(lat, 90);
    ASSERT_TRUE(ParanLatitude(90, 0, 0, 0, lat, zenith));
    EXPECT_NEAR(lat, 90 - 8.1e-5, 1e-5) << "the sign of a cosine of -1 is lost";
}

// A paran by hand: a body on the equator rises and sets at sidereal times RA - 90 and RA + 90
// everywhere. One of declination d stands on the horizon 6 hours from there where tan lat = -cos H
// / tan d with H the hour angle: here H = 60 and d = 20.
TEST_F(Parans, ABodyOnTheEquatorTellsTheOthersHourAngle) {
    Place(3, 30, 20);
    Place(1, 0, 0);
    // The other sets at sidereal time 90: the hour angle of the first is 60, it sets.
    const double expected = std::atan(-std::cos(60 * kRad) / std::tan(20 * kRad)) / kRad;
    const std::vector<Paran> parans = ParansOfPair(1, kP, kOther, line_type::kParanRiseRise, 90);
    ASSERT_EQ(parans.size(), 2U);
    const Paran& south = parans[0].lat < 0 ? parans[0] : parans[1];
    const Paran& north = parans[0].lat < 0 ? parans[1] : parans[0];
    EXPECT_NEAR(south.lat, expected, 1e-5);
    EXPECT_EQ(south.relation, 44);
    // At the opposite latitude the other one rises, at sidereal time 270: hour angle -120, and the
    // first rises too.
    EXPECT_NEAR(north.lat, -expected, 1e-5);
    EXPECT_EQ(north.relation, 33);
}

TEST_F(Parans, ALatitudeOf0IsOneCandidateTwiceWithDifferentRelations) {
    // So near to one meridian circle that the latitude comes out as 0, and yet not on it: the
    // right ascension is sought that does so.
    float lat = 1;
    float zenith = 0;
    float ra = 2.8e-13F;
    while (lat != 0 && ra < 3.3e-13F) {
        ra += 1e-16F;
        ASSERT_TRUE(ParanLatitude(0, 10, ra, 60, lat, zenith));
    }
    ASSERT_EQ(lat, 0);
    Place(3, 0, 10);
    Place(1, ra, 60);
    const std::vector<Paran> parans = ParansOfPair(1, kP, kOther, line_type::kParanRiseRise, 90);
    ASSERT_EQ(parans.size(), 2U);
    EXPECT_EQ(parans[0].lat, 0);
    EXPECT_EQ(parans[1].lat, 0);
    EXPECT_NE(parans[0].relation, parans[1].relation);

    ShowTypes({5});
    Draw();
    ASSERT_EQ(mapView.edgeMarks.size(), 4U);
    EXPECT_EQ(mapView.edgeMarks[0].y, mapView.edgeMarks[2].y) << "the same parallel";
    EXPECT_NE(mapView.edgeMarks[0].kind, mapView.edgeMarks[2].kind);
}

TEST_F(Parans, AParanAtTheLimitIsDrawnAndOneBeyondIsNot) {
    // A body at declination 20 sets with one on the equator at H degrees behind it where tan lat =
    // -cos H / tan 20; the limit is the very latitude that comes out, here about 70.
    const double h = std::acos(std::tan(70 * kRad) * std::tan(20 * kRad)) / kRad;
    Place(3, static_cast<float>(90 - h), 20);
    Place(1, 0, 0);
    ShowTypes({5});
    std::vector<Paran> parans = ParansOfPair(1, kP, kOther, line_type::kParanRiseRise, 90);
    ASSERT_EQ(parans.size(), 2U);
    EXPECT_NEAR(parans[0].lat, 70, 1e-4);

    options.paranLimit = parans[0].lat;
    Draw();
    EXPECT_EQ(surface_.Calls("LineTo").size(), 2U);
    options.paranLimit = std::nextafter(parans[0].lat, 0.0F);
    Draw();
    EXPECT_TRUE(surface_.Calls("LineTo").empty());
}

TEST_F(Parans, AnExactLimitOf70TakesAParanAt70Point0) {
    // Searches a right ascension whose paran lies at 70.0 to the last bit.
    bool found = false;
    float ra = 89;
    const double h = std::acos(std::tan(70 * kRad) * std::tan(20 * kRad)) / kRad;
    ra = static_cast<float>(90 - h);
    for (int step = -4000; step <= 4000 && !found; ++step) {
        Place(3, ra + static_cast<float>(step) * 1e-6F * 4, 20);
        Place(1, 0, 0);
        const auto parans = ParansOfPair(1, kP, kOther, line_type::kParanRiseRise, 90);
        found = parans.size() == 2 && parans[0].lat == 70.0F;
    }
    ASSERT_TRUE(found) << "no right ascension gives 70.0";
    ShowTypes({5});
    options.paranLimit = 70;
    Draw();
    EXPECT_EQ(surface_.Calls("LineTo").size(), 2U);
}

// ---- What is drawn ------------------------------------------------------------------------------

TEST_F(Parans, EachPointGivesUpToTwoLinesOfType5AndUpToFourOfType6) {
    Place(3, 40, 10);
    Place(1, 100, -20);
    options.paranLimit = 90;
    ShowTypes({5});
    Draw();
    EXPECT_EQ(surface_.Calls("LineTo").size(), 2U);
    ShowTypes({6});
    Draw();
    EXPECT_EQ(surface_.Calls("LineTo").size(), 4U);
    ShowTypes({5, 6});
    Draw();
    EXPECT_EQ(surface_.Calls("LineTo").size(), 6U);
    ShowTypes({1});
    Draw();
    for (const EdgeMark& mark : mapView.edgeMarks) EXPECT_EQ(mark.type, line_type::kCulminate);
}

TEST_F(Parans, TheParanPointItselfNeverGetsALine) {
    Place(1, 100, -20);
    options.paranLimit = 90;
    ShowTypes({5, 6});
    Draw();
    EXPECT_TRUE(surface_.Calls("LineTo").empty());
    EXPECT_TRUE(mapView.edgeMarks.empty());
}

TEST_F(Parans, TheParanPointNeedsAPositionButNoSelection) {
    Place(3, 40, 10);
    Place(1, 100, -20);
    options.paranLimit = 90;
    ShowTypes({5});
    pointSelection[1] = kFalse;
    Draw();
    EXPECT_EQ(surface_.Calls("LineTo").size(), 2U);
    Chart().Lon[1] = -1;
    Draw();
    EXPECT_TRUE(surface_.Calls("LineTo").empty());
    for (const std::int16_t outside : {-1, 0, 73, 32767}) {
        options.paranPoint = outside;
        Draw();
        EXPECT_TRUE(surface_.Calls("LineTo").empty()) << outside;
    }
}

TEST_F(Parans, AStarServesAsParanPointLikeAPlanet) {
    Place(3, 40, 10);
    Place(40, 100, -20);
    options.paranPoint = 40;
    options.paranLimit = 90;
    ShowTypes({5, 6});
    Draw();
    EXPECT_EQ(surface_.Calls("LineTo").size(), 6U);
    const std::vector<Paran> withStar = ParansOfPair(1, 3, 40, line_type::kParanRiseCulm, 90);
    Place(1, 100, -20);
    const std::vector<Paran> withPlanet = ParansOfPair(1, 3, 1, line_type::kParanRiseCulm, 90);
    ASSERT_EQ(withStar.size(), withPlanet.size());
    for (std::size_t i = 0; i < withStar.size(); ++i) {
        EXPECT_EQ(withStar[i].lat, withPlanet[i].lat);
        EXPECT_EQ(withStar[i].relation, withPlanet[i].relation);
    }
}

TEST_F(Parans, APointThatIsNotCalculatedOrNotSelectedHasNone) {
    Place(3, 40, 10);
    Place(1, 100, -20);
    options.paranLimit = 90;
    ShowTypes({5, 6});
    Chart().Lon[3] = -1;
    Draw();
    EXPECT_TRUE(surface_.Calls("LineTo").empty());
    Place(3, 40, 10);
    pointSelection[3] = kFalse;
    Draw();
    EXPECT_TRUE(surface_.Calls("LineTo").empty());
}

// The whole record of one paran: pen, a line from side to side, marks with the code at both ends.
TEST_F(Parans, AParanIsAParallelWithItsCodeAtBothEnds) {
    Place(3, 30, 20);
    Place(1, 0, 0);
    ShowTypes({5});
    settings.lineStyle[5].planetColour = kFalse;
    settings.lineStyle[5].colour = 0x445566;
    settings.lineStyle[5].thickness = 2;
    settings.lineStyle[5].style = 1;
    const std::vector<Paran> parans = ParansOfPair(1, kP, kOther, line_type::kParanRiseRise, 60);
    ASSERT_EQ(parans.size(), 2U);
    EXPECT_GT(parans[0].lat, 0) << "the northern candidate comes first";
    Draw();
    const MapRect rect = mapView.rect;
    std::vector<std::string> expected = {"SetPen 2 1 " + std::to_string(0x445566)};
    for (const Paran& paran : parans) {
        const std::string y = std::to_string(PixelsOf(static_cast<double>(paran.lat), 0).second);
        expected.push_back("MoveTo " + std::to_string(rect.left) + " " + y);
        expected.push_back("LineTo " + std::to_string(rect.left + rect.width) + " " + y);
    }
    surface_.log.resize(expected.size());
    EXPECT_EQ(surface_.log, expected);
    ASSERT_EQ(mapView.edgeMarks.size(), 4U);
    for (std::size_t i = 0; i < 4; ++i) {
        const EdgeMark& mark = mapView.edgeMarks[i];
        EXPECT_EQ(mark.side, i % 2 == 0 ? side::kLeft : side::kRight);
        EXPECT_EQ(mark.kind, parans[i / 2].relation * 100 + 3);
        EXPECT_EQ(mark.type, line_type::kParanRiseRise);
    }
    EXPECT_TRUE(chartLines.objects.empty()) << "parans have no labels on the map";
}

TEST_F(Parans, AParanWithOnePointOnTheMeridianHasItsCodeAtBothEndsToo) {
    Place(3, 30, 20);
    Place(1, 100, -15);
    options.paranLimit = 90;
    ShowTypes({6});
    Draw();
    const std::vector<Paran> parans = ParansOfPair(1, kP, kOther, line_type::kParanRiseCulm, 90);
    ASSERT_EQ(parans.size(), 4U);
    ASSERT_EQ(mapView.edgeMarks.size(), 8U);
    for (std::size_t i = 0; i < 8; ++i) {
        const EdgeMark& mark = mapView.edgeMarks[i];
        EXPECT_EQ(mark.side, i % 2 == 0 ? side::kLeft : side::kRight);
        EXPECT_EQ(mark.kind, parans[i / 2].relation * 100 + 3);
        EXPECT_EQ(mark.type, line_type::kParanRiseCulm);
        EXPECT_EQ(mark.y, PixelsOf(static_cast<double>(parans[i / 2].lat), 0).second);
        // First those in which the point itself is on the meridian, then those of the paran point.
        EXPECT_EQ(mark.kind / 1000 <= 2, i < 4) << mark.kind;
        EXPECT_EQ(mark.kind / 100 % 10 <= 2, i >= 4) << mark.kind;
    }
}

TEST_F(Parans, OnFlatMapsAParallelMustLieStrictlyWithinTheView) {
    Place(3, 30, 20);
    Place(1, 0, 0);
    ShowTypes({5});
    const float lat = ParansOfPair(1, kP, kOther, line_type::kParanRiseRise, 60)[0].lat;
    const auto minutes = std::floor(lat * 60);
    for (const std::int16_t flat : {projection::kCartesian, projection::kMercator}) {
        CurrentMap().projection = flat;
        View((minutes + 1) / 60, -180, 70, 180);
        Draw();
        EXPECT_TRUE(surface_.Calls("LineTo").empty()) << "south of the view";
        View(minutes / 60, -180, 70, 180);
        Draw();
        EXPECT_EQ(surface_.Calls("LineTo").size(), 1U) << "just within";
        View(-20, -180, minutes / 60, 180);
        Draw();
        EXPECT_TRUE(surface_.Calls("LineTo").empty()) << "north of the view";
        EXPECT_FALSE(chartLines.anyVisible);
        View(-20, -180, (minutes + 1) / 60, 180);
        Draw();
        EXPECT_EQ(surface_.Calls("LineTo").size(), 1U);
        EXPECT_TRUE(chartLines.anyVisible);
    }
}

TEST_F(Parans, OnGlobesEveryParanIsDrawn) {
    Place(3, 30, 20);
    Place(1, 0, 0);
    ShowTypes({5});
    Globe(0, 0, projection::kGlobeSphere);
    Draw();
    EXPECT_EQ(surface_.Calls("LineTo").size(), 2U) << "chords of an upright globe";
    EXPECT_TRUE(chartLines.anyVisible);
    Globe(50, 0, projection::kGlobeSphere);
    Draw();
    EXPECT_GT(surface_.Calls("LineTo").size(), 100U) << "curves of a tilted one";
}

TEST_F(Parans, RelationsHaveTheWordsOfBothPoints) {
    EXPECT_EQ(ParanText(31, 1, 3), "The Moon Rising / The Sun Upper");
    EXPECT_EQ(ParanText(24, 3, 1), "The Sun Lower / The Moon Setting");
}

// A body less than 180 degrees behind the zenith is in the west. The rows are the table of
// relations, at the edges of its halves.
// A millionth of a degree west of the opposite point: 179.999999, which in 32 bits is 180.
TEST_F(Parans, TheOppositeZenithIsTakenIn32Bits) {
    Place(3, 0, 10);
    Place(5, 90, 10);
    EXPECT_EQ(ParanCodeRiseRise(1, 3, 5, -1e-6F, false), 34);
    EXPECT_EQ(ParanCodeRiseRise(1, 3, 5, -1e-4F, false), 44);
}

TEST_F(Parans, RelationsTurnAtHalfCirclesFromTheZenith) {
    struct Row {
        float zenith;
        float ra;
        int onHorizon;
        int onMeridian;  // the zenith is 90 degrees behind the east point of a culminating body
    };
    for (const Row& row :
         {Row{100, 100, 4, 1}, Row{100, 101, 3, 1}, Row{100, 281, 4, 2}, Row{100, 280, 3, 2},
          Row{10, 350, 4, 1}, Row{100, 10, 4, 2}, Row{100, 11, 4, 1}, Row{-80, 10, 3, 1}}) {
        Place(3, row.ra, 0);
        Place(1, row.ra, 0);
        const std::int16_t both = ParanCodeRiseRise(1, kP, kOther, row.zenith, true);
        EXPECT_EQ(both, 11 * row.onHorizon) << row.zenith << " " << row.ra;
        EXPECT_EQ(ParanCodeCulmRise(1, kP, kOther, row.zenith, true),
                  10 * row.onMeridian + row.onHorizon)
            << row.zenith << " " << row.ra;
        EXPECT_EQ(ParanCodeRiseCulm(1, kP, kOther, row.zenith, true),
                  10 * row.onHorizon + row.onMeridian)
            << row.zenith << " " << row.ra;
        // At the opposite latitude the zenith stands half a circle on.
        EXPECT_EQ(ParanCodeRiseRise(1, kP, kOther, row.zenith, false), 77 - both);
    }
}

TEST_F(Parans, AFloatingFaultEndsTheRoutineAndReachesThePlotsReport) {
    Place(3, 40, std::numeric_limits<float>::quiet_NaN());
    Place(1, 100, -20);
    for (const std::size_t type : {5, 6}) {
        ShowTypes({type});
        TestShell().boxes.clear();
        PlotMap4(kFalse, surface_, kFalse);
        EXPECT_EQ(TestShell().boxes,
                  std::vector<std::string>{"Orvantis: An error occurred whilst plotting: / "
                                           "Overflow / "})
            << type;
    }
}

}  // namespace
}  // namespace orvantis

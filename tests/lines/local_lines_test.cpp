#include "lines/local_lines.h"

#include <cmath>
#include <gtest/gtest.h>
#include <limits>
#include <random>
#include <string>

#include "lines/chart_lines.h"
#include "lines/independent_sky.h"
#include "lines/line_geometry.h"
#include "lines/line_list.h"
#include "lines/lines_fixture.h"
#include "text/numbers.h"

namespace orvantis {
namespace {

class LocalLines : public LinesOfRealCharts {};

// ---- Against vectors ----------------------------------------------------------------------------

// How far a position is from where `s` degrees of a great circle lead that leaves a place in a
// direction (degrees from north, EAST positive).
double OffTheGreatCircle(double placeLat, double placeLong, double eastward, double s,
                         const LinePosition& position) {
    const Vec start = OnSphere(placeLat, placeLong);
    const Vec direction = std::cos(eastward * kRad) * NorthAt(placeLat, placeLong) +
                          std::sin(eastward * kRad) * EastAt(placeLong);
    const Vec there = std::cos(s * kRad) * start + std::sin(s * kRad) * direction;
    return AngleBetween(there, OnSphere(position.lat, position.longitude));
}

// Azimuth of a body from north, degrees, EAST positive, by Swiss Ephemeris' routine for the horizon
// (0 south, 90 west there).
double SwissAzimuth(const IndependentSky& sky, std::size_t p) {
    // The routine takes the moment by sidereal time and obliquity alone when it is given equatorial
    // coordinates; both of these are found again from a day of Universal Time, so the body is
    // handed over at its hour angle to the sidereal time of that day.
    constexpr double day = 2451545.0;
    std::array<double, 3> place = {sky.longEast, sky.lat, 0};
    const double turn = 15 * swe_sidtime(day) - sky.greenwich;
    std::array<double, 3> equatorial = {sky.bodies[p].ra + turn, sky.bodies[p].dec, 1};
    std::array<double, 3> horizontal{};
    swe_azalt(day, SE_EQU2HOR, place.data(), 0, 0, equatorial.data(), horizontal.data());
    return horizontal[0] + 180;
}

// Tolerance: right ascensions have 32 bits, 1.5e-5 degrees, for the body and for the Midheaven. A
// body near the zenith or nadir turns the direction by more: by that over the sine of its distance.
TEST_F(LocalLines, EveryLineLeavesThePlaceTowardsItsBodyAndKeepsToTheGreatCircle) {
    constexpr unsigned seed = 5301;
    std::mt19937 random(seed);
    Worst direction;
    Worst position;
    int charts = 0;
    for (const float lat : TriedLatitudes(random, 30)) {
        const IndependentSky sky = RandomChart(random, lat);
        ++charts;
        const LineFrame frame = MakeLineFrame(1);
        const Vec zenith = OnSphere(sky.lat, sky.longEast);
        for (const auto& [number, ignored] : kSwissBodies) {
            const auto p = static_cast<std::size_t>(number);
            const double azimuth = SwissAzimuth(sky, p);
            const double bearing = LocalBearing(frame, static_cast<std::int16_t>(p));
            const double fromZenith = std::sin(AngleBetween(zenith, sky.Under(p)) * kRad);
            const double off = Turned(-bearing, azimuth) * fromZenith;
            direction.Meet(off);
            EXPECT_NEAR(off, 0, 5e-5) << "lat " << lat << " point " << p;

            const std::vector<LinePosition> samples = LocalSamples(frame, bearing, 360);
            ASSERT_EQ(samples.size(), 181U);
            for (std::size_t i = 0; i < samples.size(); ++i) {
                const double apart = OffTheGreatCircle(sky.lat, sky.longEast, azimuth,
                                                       static_cast<double>(i) * 2, samples[i]);
                // A direction that is off by a little is off by most 90 degrees from the place.
                EXPECT_LT(apart, 5e-5 / fromZenith + 2e-6) << "lat " << lat << " point " << p;
                position.Meet(apart * fromZenith);
            }
        }
    }
    std::printf(
        "seed %u: %d charts, directions within %.5f' = %.4f km at the body, positions "
        "within %.5f' = %.4f km\n",
        seed, charts, direction.Minutes(), direction.Km(), position.Minutes(), position.Km());
    EXPECT_GE(charts, 50);
}

// The same with exact 32-bit coordinates, so that the bare geometry shows: positions by vectors
// alone. Tolerance: the arc sine loses half of the digits near the Earth's poles, 1e-6 degrees.
TEST_F(LocalLines, ALinePassesWhereItsBodyIsOverheadAndThroughTheAntipodeOfThePlace) {
    std::mt19937 random(9);
    std::uniform_real_distribution<float> anyRA(0, 360);
    std::uniform_real_distribution<float> anyDec(-89, 89);
    for (int round = 0; round < 300; ++round) {
        Place(3, anyRA(random), anyDec(random));
        Chart().RA[23] = anyRA(random);
        chartNow.PlaceLat = static_cast<double>(anyDec(random));
        chartNow.PlaceLongW = static_cast<double>(anyRA(random)) - 180;
        const LineFrame frame = MakeLineFrame(1);
        const double bearing = LocalBearing(frame, 3);
        // Longitudes are counted from the place.
        const double fromPlace =
            static_cast<double>(Chart().RA[3]) - static_cast<double>(Chart().RA[23]);
        const Vec under = OnSphere(Chart().Dec[3], fromPlace);
        const double distance = AngleBetween(OnSphere(chartNow.PlaceLat, 0), under);
        const GreatCircle circle = MakeGreatCircle(bearing, chartNow.PlaceLat);
        const Vec met = CosD(distance) * Vec{circle.startX, 0, circle.startZ} +
                        SinD(distance) * Vec{circle.onX, circle.onY, circle.onZ};
        EXPECT_LT(AngleBetween(met, under), 2e-6);
        const Vec place = OnSphere(chartNow.PlaceLat, -chartNow.PlaceLongW);
        const std::vector<LinePosition> samples = LocalSamples(frame, bearing, 180);
        EXPECT_LT(AngleBetween(OnSphere(samples[90].lat, samples[90].longitude), -1.0 * place),
                  2e-6);
    }
}

TEST_F(LocalLines, House1LooksEastAndHouse10WhereTheMidheavenStands) {
    std::mt19937 random(31);
    for (const float lat : TriedLatitudes(random, 30)) {
        const IndependentSky sky = RandomChart(random, lat);
        const LineFrame frame = MakeLineFrame(1);
        const bool mcSouth = Chart().Dec[23] < static_cast<float>(sky.lat);
        for (const LocalHouse& house : LocalHouses(frame)) {
            // Houses follow one another from east below the horizon: by the side of the sky on
            // which the Midheaven isn't. House 4 stands opposite to it.
            const double turn = (house.house - 1) * 30.0;
            const double eastward = mcSouth ? 90 - turn : 90 + turn;
            EXPECT_NEAR(Turned(-house.bearing, eastward), 0, 0.0101)
                << "lat " << lat << " house " << house.house;
            const std::vector<LinePosition> samples =
                SamplesOf(LocalSamples(frame, house.bearing, kLocalHouseExtent));
            ASSERT_EQ(samples.size(), 91U) << "to the antipode";
            for (std::size_t i = 0; i < samples.size(); ++i) {
                EXPECT_LT(OffTheGreatCircle(sky.lat, sky.longEast, -house.bearing,
                                            static_cast<double>(i) * 2, samples[i]),
                          2e-6);
            }
        }
    }
}

// The house whose line leaves the place due north (bearing 0) or due south (-180).
std::int16_t HouseTowards(double bearing) {
    for (const LocalHouse& house : LocalHouses(MakeLineFrame(1))) {
        if (house.bearing == bearing) return house.house;
    }
    return 0;
}

// Each end of a drawn meridian belongs to the house in whose direction it lies from the place.
TEST_F(LocalLines, TheMarkOfAHouseMeridianStandsAtTheEndThatItsHouseLooksTo) {
    std::mt19937 random(33);
    ShowTypes({8});
    for (const float lat : TriedLatitudes(random, 6)) {
        const IndependentSky sky = RandomChart(random, lat);
        Draw();
        int marks = 0;
        for (const EdgeMark& mark : mapView.edgeMarks) {
            if (mark.side != side::kTop && mark.side != side::kBottom) continue;
            ++marks;
            const bool near = std::abs(mark.x - PixelsOf(0, sky.longEast).first) < 2;
            const Vec end =
                OnSphere(mark.side == side::kTop ? 89.99 : -89.99, sky.longEast + (near ? 0 : 180));
            const bool north = Dot(end, NorthAt(sky.lat, sky.longEast)) > 0;
            EXPECT_EQ(mark.kind, HouseTowards(north ? 0 : -180)) << "lat " << lat;
        }
        EXPECT_EQ(marks, 2) << "lat " << lat;
    }
}

// At the sides of the map a mark has the house whose line crosses there: the one whose direction
// leads from the place to it. Tolerance: the pixels of the mark, and that between two samples a
// line is straight on the map.
TEST_F(LocalLines, AMarkAtASideOfTheMapIsThatOfTheHouseWhoseLineCrossesThere) {
    std::mt19937 random(34);
    ShowTypes({8});
    int marks = 0;
    for (const float lat : TriedLatitudes(random, 10)) {
        const IndependentSky sky = RandomChart(random, lat);
        Draw();
        const Vec place = OnSphere(sky.lat, sky.longEast);
        for (const EdgeMark& mark : mapView.edgeMarks) {
            if (mark.side != side::kLeft && mark.side != side::kRight) continue;
            const LinePosition at = PositionOfSideMark(mark);
            if (std::abs(at.lat) > 85 || std::abs(lat) > 85) continue;
            double bearing = 999;
            for (const LocalHouse& house : LocalHouses(MakeLineFrame(1))) {
                if (house.house == mark.kind) bearing = house.bearing;
            }
            const Vec there = OnSphere(at.lat, at.longitude);
            const double azimuth = std::atan2(Dot(there, EastAt(sky.longEast)),
                                              Dot(there, NorthAt(sky.lat, sky.longEast))) /
                                   kRad;
            const double off = Turned(azimuth, -bearing);
            EXPECT_NEAR(off * std::sin(AngleBetween(place, there) * kRad), 0, 1)
                << "lat " << lat << " house " << mark.kind << " at " << at.lat;
            ++marks;
        }
    }
    EXPECT_GT(marks, 200);
}

TEST_F(LocalLines, OnGlobesTheMeridiansOfHousesHaveNoMarks) {
    chartNow.PlaceLat = 50;
    chartNow.PlaceLongW = -15;
    ShowTypes({8});
    for (const std::int16_t globe : {projection::kGlobeSphere, projection::kGlobeOblate}) {
        for (int longitude = -180; longitude < 180; longitude += 45) {
            Globe(35, static_cast<float>(longitude), globe);
            Draw();
            EXPECT_FALSE(mapView.edgeMarks.empty());
            for (const EdgeMark& mark : mapView.edgeMarks) {
                EXPECT_TRUE(mark.kind != 4 && mark.kind != 10) << longitude;
            }
        }
    }
}

// ---- Cases --------------------------------------------------------------------------------------

TEST_F(LocalLines, AtAPlaceOnTheEquatorWithTheMidheavenNorthTheHousesRunNorthabout) {
    chartNow.PlaceLat = 0;
    Chart().Dec[23] = 5;
    EXPECT_EQ(HouseTowards(0), 10);
    EXPECT_EQ(HouseTowards(-180), 4);
    Chart().Dec[23] = 0;
    EXPECT_EQ(HouseTowards(0), 10) << "equal counts as not above";
    Chart().Dec[23] = -5;
    EXPECT_EQ(HouseTowards(0), 4);
    EXPECT_EQ(HouseTowards(-180), 10);
}

// What is above in 64 bits alone isn't above.
TEST_F(LocalLines, ThePlacesLatitudeIsComparedIn32Bits) {
    Chart().Dec[23] = 12.3F;
    chartNow.PlaceLat = static_cast<double>(12.3F) + 1e-9;
    EXPECT_EQ(HouseTowards(0), 10);
}

TEST_F(LocalLines, DirectionsDueEastAndWestAreMovedByAHundredthOfADegree) {
    int nudged = 0;
    for (const LocalHouse& house : LocalHouses(MakeLineFrame(1))) {
        EXPECT_NE(std::abs(house.bearing), 90);
        nudged += house.bearing == 90.01 || house.bearing == -89.99 ? 1 : 0;
        for (const LinePosition& sample : LocalSamples(MakeLineFrame(1), house.bearing, 180)) {
            EXPECT_TRUE(std::isfinite(sample.lat) && std::isfinite(sample.longitude));
            EXPECT_LE(std::abs(sample.lat), 90 + 1e-12);
            EXPECT_LE(std::abs(sample.longitude), 180);
        }
    }
    EXPECT_EQ(nudged, 2);
}

// The Vertex stands due west by its very meaning: 90 degrees off, no tangent tells the longitude.
TEST_F(LocalLines, ALineDueWestOrEastDoesNotLeapToTheAntipode) {
    std::mt19937 random(24);
    for (const float lat : TriedLatitudes(random, 30)) {
        const IndependentSky sky = RandomChart(random, lat);
        const LineFrame frame = MakeLineFrame(1);
        for (const double bearing : {LocalBearing(frame, 24), 90.0, -90.0, 270.0,
                                     std::nextafter(90.0, 0), std::nextafter(90.0, 180)}) {
            const std::vector<LinePosition> samples = LocalSamples(frame, bearing, 360);
            for (std::size_t i = 0; i < samples.size(); ++i) {
                EXPECT_LT(OffTheGreatCircle(sky.lat, sky.longEast, -bearing,
                                            static_cast<double>(i) * 2, samples[i]),
                          2e-6)
                    << "lat " << lat << " bearing " << bearing << " at " << 2 * i;
            }
        }
    }
}

TEST_F(LocalLines, AnExtentOf1DrawsASinglePointAndNoVisibleLine) {
    Place(3, 40, 10);
    ShowTypes({7});
    options.localLineExtent = 1;
    EXPECT_EQ(LocalSamples(MakeLineFrame(1), LocalBearing(MakeLineFrame(1), 3), 1).size(), 1U);
    Draw();
    EXPECT_TRUE(surface_.Calls("LineTo").empty());
    EXPECT_EQ(surface_.Calls("MoveTo").size(), 1U);
    EXPECT_TRUE(mapView.edgeMarks.empty());
}

TEST_F(LocalLines, AnExtentOf1IsNoLineInTheList) {
    Place(3, 40, 10);
    ShowTypes({7});
    options.localLineExtent = 1;
    EXPECT_TRUE(ListLines(1).empty());
    options.localLineExtent = 2;
    const std::vector<MapLine> lines = ListLines(1);
    ASSERT_EQ(lines.size(), 1U);
    ASSERT_EQ(lines[0].runs.size(), 1U);
    EXPECT_EQ(lines[0].runs[0].size(), 2U);
}

TEST_F(LocalLines, AnOddExtentStopsOneShort) {
    const LineFrame frame = MakeLineFrame(1);
    EXPECT_EQ(LocalSamples(frame, 30, 359).size(), 180U);
    EXPECT_EQ(LocalSamples(frame, 30, 360).size(), 181U);
    EXPECT_EQ(LocalSamples(frame, 30, 3).size(), 2U);
}

TEST_F(LocalLines, ABodyOnTheMeridianHasItsLineAlongTheMeridianSampleBySample) {
    chartNow.PlaceLat = 40;
    chartNow.PlaceLongW = 20;
    Chart().RA[23] = 77;
    ShowTypes({7});
    for (const float dec : {-30.0F, 60.0F}) {
        Place(3, 77, dec);
        const LineFrame frame = MakeLineFrame(1);
        const double bearing = LocalBearing(frame, 3);
        EXPECT_NEAR(std::abs(Turned(bearing, 0)), dec < 40 ? 180 : 0, 1e-9);
        for (const LinePosition& sample : LocalSamples(frame, bearing, 360)) {
            if (std::abs(sample.lat) > 89.9) continue;
            const double turn = Turned(sample.longitude, -20);
            EXPECT_LT(std::min(std::abs(turn), std::abs(std::abs(turn) - 180)), 1e-6);
        }
        Draw();
        EXPECT_GE(surface_.Calls("LineTo").size(), 180U);
    }
}

// Every great circle through a pole is a meridian and the one opposite.
TEST_F(LocalLines, FromAPoleEveryLineIsDrawnAndListedAlongMeridians) {
    for (const std::size_t type : {7, 8}) {
        ShowTypes({type});
        for (const float lat : {90.0F, -90.0F}) {
            for (const float west : {0.0F, 33.3F, 180.0F, -180.0F}) {
                chartNow.PlaceLat = lat;
                chartNow.PlaceLongW = west;
                Chart().RA[23] = 77;
                Place(3, 200, 10);
                const std::string what = "type " + std::to_string(type) + " place " +
                                         std::to_string(lat) + " " + std::to_string(west);
                for (const MapLine& line : ListLines(1)) {
                    ExpectWellCut(line.runs, what);
                    const double meridian = line.runs[0][1].longitude;
                    for (const auto& run : line.runs) {
                        for (const LinePosition& position : run) {
                            const double off = std::abs(Turned(position.longitude, meridian));
                            EXPECT_NEAR(std::min(off, 180 - off), 0, 1e-9) << what;
                        }
                    }
                }
                Draw();
                std::pair<int, int> at;
                for (const std::string& call : PenCalls(surface_)) {
                    const std::pair<int, int> to = PlaceOfCall(call);
                    if (call.starts_with("LineTo")) {
                        EXPECT_EQ(to.first, at.first) << what << " " << call;
                    }
                    at = to;
                }
            }
        }
    }
}

// A place at an even latitude has a sample at the pole, others have one on either side.
TEST_F(LocalLines, TheMidheavensLineGoesOverThePolesWithoutALeap) {
    ShowTypes({7});
    for (const float lat : {0.0F, 40.0F, 41.3F, -88.0F, 89.99F}) {
        for (const float west : {0.0F, -73.2F, 180.0F, -180.0F}) {
            for (const float dec : {-23.0F, 23.0F, 80.0F}) {
                chartNow.PlaceLat = lat;
                chartNow.PlaceLongW = west;
                Place(point::kMidheaven, 77, dec);
                const std::string what = "place " + std::to_string(lat) + " " +
                                         std::to_string(west) + " dec " + std::to_string(dec);
                const double east = -static_cast<double>(west);
                Draw();
                ExpectMeridians(PenCalls(surface_), east, std::remainder(east + 180, 360.0), what);
                EXPECT_TRUE(mapView.edgeMarks.empty()) << what;
                const std::vector<MapLine> lines = ListLines(1);
                ASSERT_EQ(lines.size(), 1U);
                EXPECT_EQ(lines[0].runs.size(), 1U) << what;
                ExpectWellCut(lines[0].runs, what);
            }
        }
    }
}

TEST_F(LocalLines, HousesDueNorthAndSouthGoOverThePolesAlike) {
    ShowTypes({8});
    std::mt19937 random(5302);
    for (int round = 0; round < 200; ++round) {
        chartNow.PlaceLat = static_cast<float>(random() % 18000) / 100 - 90;
        chartNow.PlaceLongW = static_cast<float>(random() % 36000) / 100 - 180;
        for (const MapLine& line : ListLines(1)) {
            ExpectWellCut(line.runs, "round " + std::to_string(round) + LineWords(line));
            if (line.code != 4 && line.code != 10) continue;
            EXPECT_EQ(line.runs.size(), 1U) << round;
        }
    }
}

TEST_F(LocalLines, AnExtentThatAFileMayHoldEndsToo) {
    // The setting is kept within 360; every 16-bit number comes to an end all the same.
    const LineFrame frame = MakeLineFrame(1);
    EXPECT_EQ(LocalSamples(frame, 30, 32767).size(), 16384U);
    EXPECT_EQ(LocalSamples(frame, 30, 32766).size(), 16384U);
}

TEST_F(LocalLines, ALineThatPassesTheMapsSeamIsDrawnOutAndInAgain) {
    chartNow.PlaceLat = 10;
    chartNow.PlaceLongW = -170;
    Place(3, 60, 5);
    ShowTypes({7});
    Draw();
    const MapRect rect = mapView.rect;
    std::pair<int, int> at{};
    int jumps = 0;
    for (const std::string& call : surface_.log) {
        if (!call.starts_with("MoveTo") && !call.starts_with("LineTo")) continue;
        const std::pair<int, int> to = PlaceOfCall(call);
        if (call.starts_with("LineTo")) {
            EXPECT_LE(2 * std::abs(to.first - at.first), rect.width) << call;
        } else if (2 * std::abs(to.first - at.first) > rect.width) {
            ++jumps;
        }
        at = to;
    }
    EXPECT_GE(jumps, 1);
    EXPECT_FALSE(mapView.edgeMarks.empty());
    for (const EdgeMark& mark : mapView.edgeMarks) {
        EXPECT_EQ(mark.kind, 3);
        EXPECT_EQ(mark.type, line_type::kLocalSpace);
    }
}

TEST_F(LocalLines, TheGeodeticZodiacHasNone) {
    Place(3, 40, 10);
    ShowTypes({7, 8});
    options.mapZodiac = 1;
    Draw();
    EXPECT_TRUE(surface_.Calls("LineTo").empty());
    EXPECT_TRUE(chartLines.objects.empty());
}

TEST_F(LocalLines, TheBodyIsLabelledOverheadUnlessItsMeridianLineDoesSo) {
    Place(3, 40, 10);
    chartNow.PlaceLongW = 30;
    ShowTypes({7});
    Draw();
    ASSERT_EQ(chartLines.objects.size(), 1U);
    EXPECT_EQ((std::pair<int, int>{chartLines.objects[0].x, chartLines.objects[0].y}),
              PixelsOf(10, 10));
    EXPECT_EQ(chartLines.objects[0].code, 3);
    EXPECT_EQ(chartLines.objects[0].type, line_type::kPointLabel);
    ShowTypes({1, 7});
    Draw();
    EXPECT_EQ(chartLines.objects.size(), 1U) << "that of type 1 alone";
    ShowTypes({7});
    View(20, -30, 60, 50);
    Draw();
    EXPECT_TRUE(chartLines.objects.empty()) << "overhead outside the view";
}

TEST_F(LocalLines, PointsAreDrawnByTheRulesOfAllLines) {
    Place(3, 40, 10);
    Place(21, 80, 10);
    ShowTypes({7});
    Chart().Lon[3] = -1;
    pointSelection[21] = kFalse;
    Draw();
    EXPECT_TRUE(surface_.Calls("MoveTo").empty());
    pointSelection[21] = kTrue;
    Draw();
    EXPECT_GE(surface_.Calls("LineTo").size(), 180U) << "the South Node has a direction";
}

TEST_F(LocalLines, DirectionsAreDrawnPointByPointThroughTheirSamplesInOrder) {
    chartNow.PlaceLat = 25;
    chartNow.PlaceLongW = -70;
    Place(3, 40, 10);
    Place(5, 200, -35);
    ShowTypes({7});
    options.localLineExtent = 300;
    Draw();
    const LineFrame frame = MakeLineFrame(1);
    const std::vector<std::string> calls = PenCalls(surface_);
    std::size_t at = 0;
    for (const std::int16_t p : {3, 5}) {
        ExpectCurve(calls, at, LocalSamples(frame, LocalBearing(frame, p), 300));
    }
    EXPECT_EQ(at, calls.size()) << "nothing else is drawn";
}

TEST_F(LocalLines, HousesAreDrawnInTheirOrderThroughTheirSamplesOrAsMeridians) {
    chartNow.PlaceLat = 50;
    chartNow.PlaceLongW = -15;
    Chart().Dec[23] = 20;
    ShowTypes({8});
    Draw();
    const LineFrame frame = MakeLineFrame(1);
    const std::vector<std::string> calls = PenCalls(surface_);
    std::size_t at = 0;
    for (const LocalHouse& house : LocalHouses(frame)) {
        if (house.isMeridian) {
            ExpectMeridian(calls, at, house.longitude);
        } else {
            ExpectCurve(calls, at, LocalSamples(frame, house.bearing, kLocalHouseExtent));
        }
    }
    EXPECT_EQ(at, calls.size());
}

TEST_F(LocalLines, TwelveHousesAreDrawnTwoOfThemAsMeridians) {
    chartNow.PlaceLat = 50;
    chartNow.PlaceLongW = -15;
    Chart().Dec[23] = 20;
    ShowTypes({8});
    settings.lineStyle[8].colour = 0x102030;
    settings.lineStyle[8].thickness = 1;
    settings.lineStyle[8].style = 2;
    Draw();
    EXPECT_EQ(surface_.Calls("SetPen").front(), "SetPen 1 2 " + std::to_string(0x102030));
    const MapRect rect = mapView.rect;
    int meridians = 0;
    for (std::size_t i = 1; i < surface_.log.size(); ++i) {
        for (const double longitude : {15.0, -165.0}) {
            const std::string x = std::to_string(PixelsOf(0, longitude).first);
            std::string top = "MoveTo ";
            top.append(x).append(" ").append(std::to_string(rect.top));
            std::string bottom = "LineTo ";
            bottom.append(x).append(" ").append(std::to_string(rect.top + rect.height));
            const bool drawn = surface_.log[i - 1] == top && surface_.log[i] == bottom;
            meridians += drawn ? 1 : 0;
        }
    }
    EXPECT_EQ(meridians, 2);
    // The Midheaven stands south: house 10 looks south and has the foot of the near meridian, house
    // 4 looks north and has the head of the far one.
    std::vector<EdgeMark> ends;
    for (const EdgeMark& mark : mapView.edgeMarks) {
        EXPECT_EQ(mark.type, line_type::kLocalHouse);
        EXPECT_GE(mark.kind, 1);
        EXPECT_LE(mark.kind, 12);
        if (mark.side == side::kTop || mark.side == side::kBottom) ends.push_back(mark);
    }
    ASSERT_EQ(ends.size(), 2U);
    EXPECT_EQ(ends[0].kind, 4);
    EXPECT_EQ(ends[0].side, side::kTop);
    EXPECT_EQ(ends[0].x, PixelsOf(0, -165).first);
    EXPECT_EQ(ends[1].kind, 10);
    EXPECT_EQ(ends[1].side, side::kBottom);
    EXPECT_EQ(ends[1].x, PixelsOf(0, 15).first);
}

TEST_F(LocalLines, AHouseMeridianOutsideANarrowViewIsNotDrawn) {
    chartNow.PlaceLat = 50;
    chartNow.PlaceLongW = -15;
    ShowTypes({8});
    View(-10, 60, 10, 80);
    Draw();
    for (const EdgeMark& mark : mapView.edgeMarks) {
        EXPECT_NE(mark.kind, 10);
        EXPECT_NE(mark.kind, 4);
    }
    View(-80, 10, -70, 20);
    Draw();
    std::size_t ofTheMeridian = 0;
    for (const EdgeMark& mark : mapView.edgeMarks) {
        ofTheMeridian += mark.x == PixelsOf(0, 15).first && mark.side == side::kBottom ? 1 : 0;
    }
    EXPECT_EQ(ofTheMeridian, 1U);
}

TEST_F(LocalLines, AFloatingFaultReachesThePlotsReport) {
    Place(3, 40, std::numeric_limits<float>::quiet_NaN());
    ShowTypes({7});
    PlotMap4(kFalse, surface_, kFalse);
    EXPECT_EQ(TestShell().boxes,
              std::vector<std::string>{"Orvantis: An error occurred whilst plotting: / "
                                       "Overflow / "});
}

}  // namespace
}  // namespace orvantis

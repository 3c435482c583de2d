// The lines of types 1 to 4, where a body culminates, anticulminates, rises and sets, against Swiss
// Ephemeris, and as they are drawn.
#include <array>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <gtest/gtest.h>
#include <random>
#include <string>
#include <vector>

#include "lines/chart_lines.h"
#include "lines/independent_sky.h"
#include "lines/lines_fixture.h"

namespace orvantis {
namespace {

class AngularLines : public LinesOfRealCharts {};

// Where the point of the ecliptic at a body's longitude is overhead, by the library's own turning
// of coordinates.
Vec UnderEclipticForm(const IndependentSky& sky, std::size_t p) {
    std::array<double, 3> from = {sky.bodies[p].ra, sky.bodies[p].dec, 1};
    std::array<double, 3> ecliptic{};
    swe_cotrans(from.data(), ecliptic.data(), sky.obliquity);
    ecliptic[1] = 0;
    std::array<double, 3> to{};
    swe_cotrans(ecliptic.data(), to.data(), -sky.obliquity);
    return OnSphere(to[1], to[0] - sky.greenwich);
}

struct Deviations {
    Worst meridian;  // of the line's longitude
    Worst horizon;   // of the altitude from 0
    int vertices = 0;

    // Every vertex of the four lines of a point, whose body is overhead at `under`.
    void Meet(const LineFrame& frame, std::int16_t p, const Vec& under) {
        const double overhead = std::atan2(under.y, under.x) / kRad;
        meridian.Meet(Turned(MeridianLineLongitude(frame, p, line_type::kCulminate), overhead));
        meridian.Meet(
            Turned(MeridianLineLongitude(frame, p, line_type::kAnticulminate), overhead + 180));
        if (!HasRiseSetLine(p)) return;
        for (const std::int16_t type : {line_type::kRise, line_type::kSet}) {
            for (const auto& run : LineRuns(frame, p, type)) {
                for (const LinePosition& v : run) {
                    ++vertices;
                    horizon.Meet(AngleBetween(under, OnSphere(v.lat, v.longitude)) - 90);
                    if (std::abs(v.lat) > 89.9) continue;
                    // 0 on the meridian, at the ends of the line.
                    const double east = Dot(under, EastAt(v.longitude));
                    EXPECT_TRUE(type == line_type::kRise ? east > -1e-6 : east < 1e-6)
                        << "point " << p << " type " << type << " at " << v.lat << " "
                        << v.longitude;
                }
            }
        }
    }

    void Print(unsigned seed, const char* mode) const {
        std::printf(
            "seed %u, %s, %d vertices: meridians %.5f' (%.4f km), horizons %.5f' "
            "(%.4f km)\n",
            seed, mode, vertices, meridian.Minutes(), meridian.Km(), horizon.Minutes(),
            horizon.Km());
    }
};

// Tolerance: right ascension and declination of the body and of the Midheaven have 32 bits, 1.5e-5
// degrees each. Longitudes of the zodiacal mode turn into right ascensions up to 1.09 times as
// quickly. Worst seen: 0.0015 minutes of arc, 3 metres, in 54 charts from 1850 to 2100.
TEST_F(AngularLines, EveryVertexHasItsBodyOnTheMeridianOrTheHorizonBySwissEphemeris) {
    constexpr unsigned seed = 5101;
    std::mt19937 random(seed);
    Deviations mundo;
    Deviations zodiacal;
    int charts = 0;
    for (const float lat : TriedLatitudes(random, 30)) {
        const IndependentSky sky = RandomChart(random, lat);
        ++charts;
        for (const auto& [number, ignored] : kSwissBodies) {
            const auto p = static_cast<std::int16_t>(number);
            options.lineMode = 1;
            mundo.Meet(MakeLineFrame(1), p, sky.Under(static_cast<std::size_t>(p)));
            options.lineMode = 2;
            zodiacal.Meet(MakeLineFrame(1), p, UnderEclipticForm(sky, static_cast<std::size_t>(p)));
        }
    }
    mundo.Print(seed, "in mundo");
    zodiacal.Print(seed, "zodiacal");
    EXPECT_GE(charts, 50);
    for (const Deviations* deviations : {&mundo, &zodiacal}) {
        EXPECT_LT(deviations->meridian.degrees, 6e-5);
        EXPECT_LT(deviations->horizon.degrees, 6e-5);
        EXPECT_GT(deviations->vertices, charts * 10 * 180);
    }
}

TEST_F(AngularLines, MeridianLinesAreDrawnFromTheTopToTheBottomTypeByTypeAndPointByPoint) {
    Place(3, 40, 10);
    Place(5, 200, -35);
    ShowTypes({1, 2});
    Draw();
    const std::vector<std::string> calls = PenCalls(surface_);
    std::size_t at = 0;
    for (const double longitude : {40.0, -160.0, -140.0, 20.0}) {
        ExpectMeridian(calls, at, longitude);
    }
    EXPECT_EQ(at, calls.size()) << "nothing else is drawn";
}

TEST_F(AngularLines, RiseAndSetLinesAreDrawnPointByPointThroughTheirSamplesInOrder) {
    Place(3, 40, 10);
    Place(5, 200, -35);
    ShowTypes({3, 4});
    Draw();
    const LineFrame frame = MakeLineFrame(1);
    const std::vector<std::string> calls = PenCalls(surface_);
    std::size_t at = 0;
    for (const std::int16_t p : {3, 5}) {
        const CircleQuarter quarter = QuarterOf(RiseSetCircle(frame, p));
        ExpectCurve(calls, at, CircleSamples(quarter, -90, 90));
        ExpectCurve(calls, at, CircleSamples(quarter, 90, 270));
    }
    EXPECT_EQ(at, calls.size()) << "nothing else is drawn";
}

TEST_F(AngularLines, LinesOutsideTheViewOnlyLeaveTheVisibleFlagFalse) {
    Place(3, 40, 10);
    ShowTypes({1, 2, 3, 4});
    View(0, 60, 40, 120);
    Draw();
    EXPECT_FALSE(chartLines.anyVisible);
    EXPECT_TRUE(PenCalls(surface_).empty());
    EXPECT_EQ(session.ChartNumber, 1);
    View(0, 20, 40, 60);
    Draw();
    EXPECT_TRUE(chartLines.anyVisible);
}

}  // namespace
}  // namespace orvantis

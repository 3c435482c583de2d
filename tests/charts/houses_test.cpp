// House cusps and angles against swe_houses_armc over the whole sphere, and the rules of their own.
#include <cmath>
#include <gtest/gtest.h>
#include <limits>
#include <swephexp.h>
#include <vector>

#include "charts/CALCCHRT.h"
#include "support/angles.h"
#include "support/reset_all.h"
#include "text/numbers.h"

namespace orvantis {
namespace {

constexpr double kObliquity = 23.44;

// From `first` up to `end`, `end` excluded.
std::vector<double> Steps(double first, double end, double step) {
    std::vector<double> values(static_cast<std::size_t>(std::ceil((end - first) / step)));
    for (std::size_t i = 0; i < values.size(); ++i) {
        values[i] = first + static_cast<double>(i) * step;
    }
    return values;
}

class Houses : public testing::Test {
  protected:
    void SetUp() override { ResetAll(); }

    const CalcChart& Calculate(double ramc, double latitude, std::int16_t system,
                               double offset = 0) {
        CalcAngles(1, ramc, kObliquity, latitude, offset, kFalse);
        CalcHouses(1, ramc, kObliquity, latitude, offset, system);
        return calcChart[1];
    }
};

struct SystemRow {
    const char* name;
    double tolerance;  // degrees
    std::int16_t system;
    Flag cusp1AtAscendant;
    Flag cusp10AtMidheaven;
    char letter;  // of Swiss Ephemeris
};

// Placidus isn't among them: it stops after ten passes, see below. Campanus is turned by a
// millionth of a degree; near the polar circles the ecliptic runs along the horizon and stretches
// that a hundredfold.
const SystemRow kSystems[] = {
    {"Campanus", 1e-4, 1, kTrue, kTrue, 'C'},    {"Koch", 1e-8, 2, kTrue, kTrue, 'K'},
    {"Meridian", 1e-8, 3, kFalse, kTrue, 'X'},   {"Morinus", 1e-8, 4, kFalse, kFalse, 'M'},
    {"Porphyry", 1e-8, 6, kTrue, kTrue, 'O'},    {"Regiomontanus", 1e-8, 7, kTrue, kTrue, 'R'},
    {"Topocentric", 1e-8, 8, kTrue, kTrue, 'T'}, {"Equal", 1e-8, 9, kTrue, kFalse, 'A'},
};

TEST_F(Houses, AgreeWithSwissEphemerisBetweenThePolarCircles) {
    for (const SystemRow& row : kSystems) {
        for (int latitude = -66; latitude <= 66; latitude += 6) {
            for (const double ramc : Steps(0.5, 360, 7)) {
                const CalcChart& chart = Calculate(ramc, latitude, row.system);
                double cusps[13] = {};
                double angles[10] = {};
                ASSERT_EQ(swe_houses_armc(ramc, latitude, kObliquity, row.letter, cusps, angles),
                          OK);
                for (int i = 1; i <= 12; ++i) {
                    ASSERT_LE(Apart(chart.Cusp[static_cast<std::size_t>(i)], cusps[i]),
                              row.tolerance)
                        << row.name << " cusp " << i << " at " << latitude << ", RAMC " << ramc;
                }
                EXPECT_EQ(chart.Cusp1AtAscendant, row.cusp1AtAscendant) << row.name;
                EXPECT_EQ(chart.Cusp10AtMidheaven, row.cusp10AtMidheaven) << row.name;
            }
        }
    }
}

TEST_F(Houses, AnglesAgreeWithSwissEphemerisBetweenThePolarCircles) {
    for (int latitude = -66; latitude <= 66; latitude += 6) {
        for (const double ramc : Steps(0.25, 360, 3.5)) {
            const CalcChart& chart = Calculate(ramc, latitude, 9);
            double cusps[13] = {};
            double angles[10] = {};
            swe_houses_armc(ramc, latitude, kObliquity, 'A', cusps, angles);
            EXPECT_LE(Apart(chart.Lon[22], angles[0]), 1e-8);
            EXPECT_LE(Apart(chart.Lon[23], angles[1]), 1e-8);
            EXPECT_LE(Apart(chart.Lon[25], angles[4]), 1e-8);
            // Between the tropics the two keep to other rules of which end is the Vertex.
            if (std::abs(latitude) > kObliquity) {
                EXPECT_LE(Apart(chart.Lon[24], angles[3]), 1e-8) << latitude << " " << ramc;
            } else if (latitude != 0) {
                EXPECT_LE(std::abs(std::remainder(chart.Lon[24] - angles[3], 180)), 1e-8);
            }
        }
    }
}

// The Ascendant is on the horizon wherever the place is, and between the polar circles it rises.
// (Within them the formula goes on to the setting degree while the ecliptic's pole has crossed the
// zenith.) By the altitude alone: sin(alt) = sin(p) sin(d) + cos(p) cos(d) cos(H).
TEST_F(Houses, TheAscendantLiesOnTheHorizonAndRisesBetweenThePolarCircles) {
    for (const double latitude : Steps(-89.5, 89.6, 3.7)) {
        for (const double ramc : Steps(0.5, 360, 5)) {
            const double l = Calculate(ramc, latitude, 9).Lon[22] * DegToRad;
            const double e = kObliquity * DegToRad;
            const double p = latitude * DegToRad;
            const double d = std::asin(std::sin(e) * std::sin(l));
            const double h = ramc * DegToRad - std::atan2(std::sin(l) * std::cos(e), std::cos(l));
            const double altitude =
                std::sin(p) * std::sin(d) + std::cos(p) * std::cos(d) * std::cos(h);
            EXPECT_NEAR(altitude, 0, 1e-12) << latitude << " " << ramc;
            if (std::abs(latitude) < 90 - kObliquity) {
                EXPECT_LT(std::sin(h), 0) << latitude << " " << ramc;
            }
        }
    }
}

TEST_F(Houses, TheVertexLiesOnThePrimeVertical) {
    for (const double latitude : Steps(-80.5, 80.6, 7)) {
        for (const double ramc : Steps(0.5, 360, 5)) {
            const CalcChart& chart = Calculate(ramc, latitude, 9);
            const double l = chart.Lon[24] * DegToRad;
            const double e = kObliquity * DegToRad;
            const double d = std::asin(std::sin(e) * std::sin(l));
            const double h = ramc * DegToRad - std::atan2(std::sin(l) * std::cos(e), std::cos(l));
            // The prime vertical: tan(d) = tan(p) cos(H).
            EXPECT_NEAR(std::tan(d), TanD(latitude) * std::cos(h), 1e-9) << latitude << " " << ramc;
            EXPECT_LE(Modulo(chart.Lon[23] - chart.Lon[24], 360), 180);
        }
    }
}

TEST_F(Houses, AtLatitudeZeroTheVertexIsNinetyOrItsOppositePlusOffset) {
    // RAMC 180: the Midheaven at 180 is 90 degrees behind 90.
    EXPECT_EQ(Calculate(180, 0, 9).Lon[24], 90);
    EXPECT_EQ(Calculate(180, 0, 9, -20).Lon[24], 70);
    // RAMC 10: the Midheaven is behind 90 by more than half a turn.
    EXPECT_EQ(Calculate(10, 0, 9).Lon[24], 270);
}

TEST_F(Houses, TheMidheavenTakesTheQuadrantOfTheRamc) {
    EXPECT_NEAR(Calculate(0, 40, 9).Lon[23], 0, 1e-9);
    EXPECT_NEAR(Calculate(90, 40, 9).Lon[23], 90, 1e-9);
    EXPECT_LE(Apart(Calculate(180, 40, 9).Lon[23], 180), 1e-9);
    EXPECT_NEAR(Calculate(270, 40, 9).Lon[23], 270, 1e-9);
    EXPECT_LE(Apart(Calculate(359.999, 40, 9).Lon[23], 359.9989), 1e-3);
}

// Placidus by semi-arcs and ascensional differences, with as many passes as are asked for.
double PlacidusCusp(double ramc, double latitude, double start, double share, bool lower,
                    int passes) {
    const double e = kObliquity * DegToRad;
    const double r = ramc * DegToRad;
    double a = r + start * DegToRad;
    for (int pass = 0; pass < passes; ++pass) {
        const double declination = std::atan(std::sin(a) * std::tan(e));
        const double difference = std::asin(std::tan(declination) * TanD(latitude));
        const double semiArc = lower ? PI / 2 - difference : PI / 2 + difference;
        a = lower ? r + PI - semiArc * share : r + semiArc * share;
    }
    return RadToDeg(std::atan2(std::sin(a), std::cos(a) * std::cos(e)));
}

TEST_F(Houses, PlacidusMakesExactlyTenPasses) {
    struct Row {
        std::size_t cusp;
        double start;
        double share;
        bool lower;
    };
    const Row rows[] = {{11, 30, 1 / 3.0, false},
                        {12, 60, 2 / 3.0, false},
                        {2, 120, 2 / 3.0, true},
                        {3, 150, 1 / 3.0, true}};
    for (const double latitude : {-65.0, -40.0, 10.0, 52.0, 66.0}) {
        for (const double ramc : Steps(3, 360, 11)) {
            const CalcChart& chart = Calculate(ramc, latitude, 5);
            for (const Row& row : rows) {
                const double expected =
                    PlacidusCusp(ramc, latitude, row.start, row.share, row.lower, 10);
                ASSERT_LE(Apart(chart.Cusp[row.cusp], expected), 1e-8)
                    << latitude << " " << ramc << " " << row.cusp;
                ASSERT_LE(
                    Apart(chart.Cusp[row.cusp <= 6 ? row.cusp + 6 : row.cusp - 6], expected + 180),
                    1e-8);
            }
            EXPECT_EQ(chart.Cusp[1], chart.Lon[22]);
            EXPECT_EQ(chart.Cusp[10], chart.Lon[23]);
        }
    }
}

TEST_F(Houses, PlacidusAgreesWithSwissEphemerisWhereTenPassesSuffice) {
    for (int latitude = -30; latitude <= 30; latitude += 6) {
        for (const double ramc : Steps(0.5, 360, 7)) {
            const CalcChart& chart = Calculate(ramc, latitude, 5);
            double cusps[13] = {};
            double angles[10] = {};
            swe_houses_armc(ramc, latitude, kObliquity, 'P', cusps, angles);
            for (std::size_t i = 1; i <= 12; ++i) ASSERT_LE(Apart(chart.Cusp[i], cusps[i]), 1e-6);
        }
    }
}

TEST_F(Houses, PlacidusAndKochBecomeEqualInPolarRegionsWithoutAMessage) {
    for (const std::int16_t system : {std::int16_t{2}, std::int16_t{5}}) {
        for (const double latitude : {80.0, -80.0, 66.6, 90.0}) {
            const CalcChart& chart = Calculate(100, latitude, system);
            for (std::size_t i = 1; i <= 12; ++i) {
                EXPECT_LE(Apart(chart.Cusp[i], chart.Lon[22] + 30.0 * static_cast<double>(i - 1)),
                          1e-9);
            }
            EXPECT_EQ(chart.Cusp1AtAscendant, kTrue);
            EXPECT_EQ(chart.Cusp10AtMidheaven, kFalse);
        }
    }
    EXPECT_TRUE(TestShell().boxes.empty());
}

TEST_F(Houses, ThePolarRuleBeginsWhereLatitudeAndObliquityMakeEightyNinePointNineNine) {
    const double edge = 89.99 - kObliquity;
    EXPECT_EQ(Calculate(100, edge - 1e-6, 5).Cusp10AtMidheaven, kTrue);
    EXPECT_EQ(Calculate(100, edge + 1e-6, 5).Cusp10AtMidheaven, kFalse);
}

TEST_F(Houses, OtherSystemsServeAtAnyLatitude) {
    for (const std::int16_t system : {1, 3, 4, 6, 7, 8, 9}) {
        for (const double latitude : {-89.999, -70.0, 70.0, 89.999}) {
            const CalcChart& chart = Calculate(200, latitude, system);
            for (std::size_t i = 1; i <= 12; ++i) {
                EXPECT_GE(chart.Cusp[i], 0) << system << " " << latitude;
                EXPECT_LT(chart.Cusp[i], 360) << system << " " << latitude;
            }
        }
    }
}

// The arc cosine takes -1 for a small angle. Where the polar rule ends, the cosine of Koch's arc is
// still 1.5e-4 short of it, so that the arc there is next to half a turn: cusp 11 stands where the
// sphere was turned back by two thirds of it.
TEST_F(Houses, KochAtTheEdgeOfThePolarRuleHasNextToHalfATurn) {
    const double latitude = 89.98 - kObliquity;
    const CalcChart& chart = Calculate(90, latitude, 2);
    const double arc = std::acos(-TanD(latitude) * TanD(kObliquity));
    EXPECT_GT(RadToDeg(arc), 177);
    const double h = PI / 2 - arc * 2 / 3;
    const double expected = std::atan2(
        std::cos(h), -(TanD(latitude) * SinD(kObliquity) + std::sin(h) * CosD(kObliquity)));
    EXPECT_LE(Apart(chart.Cusp[11], RadToDeg(expected)), 1e-6);
}

TEST_F(Houses, SystemZeroIsWholeSignsWithTheTrueAnglesOnCuspsOneAndTen) {
    const CalcChart& chart = Calculate(123, 45, 0, -24);
    EXPECT_EQ(chart.Cusp[1], chart.Lon[22]);
    EXPECT_EQ(chart.Cusp[10], chart.Lon[23]);
    for (const std::size_t i : {2U, 3U, 4U, 5U, 6U, 7U, 8U, 9U, 11U, 12U}) {
        EXPECT_EQ(chart.Cusp[i], 30.0 * static_cast<double>(i - 1));
    }
    EXPECT_EQ(chart.Cusp1AtAscendant, kTrue);
    EXPECT_EQ(chart.Cusp10AtMidheaven, kTrue);
    EXPECT_TRUE(TestShell().boxes.empty());
}

TEST_F(Houses, AnUnknownSystemShowsABoxAndChangesNothing) {
    const CalcChart before = Calculate(123, 45, 5);
    for (const std::int16_t system : {10, 255, -1}) {
        CalcHouses(1, 200, kObliquity, 10, 0, system);
        EXPECT_EQ(calcChart[1].Cusp, before.Cusp);
        EXPECT_EQ(calcChart[1].Cusp1AtAscendant, before.Cusp1AtAscendant);
    }
    ASSERT_EQ(TestShell().boxes.size(), 3U);
    EXPECT_EQ(TestShell().boxes[0], "Sub CalcHouses: Unrecognised house system");
}

TEST_F(Houses, AFailureOfTheArithmeticGivesEqualHouses) {
    Calculate(123, 45, 5);
    // No such place: every cusp that uses the latitude comes out as no number.
    CalcHouses(1, 123, kObliquity, std::numeric_limits<double>::quiet_NaN(), 0, 7);
    const CalcChart& chart = calcChart[1];
    for (std::size_t i = 1; i <= 12; ++i) {
        EXPECT_LE(Apart(chart.Cusp[i], chart.Lon[22] + 30.0 * static_cast<double>(i - 1)), 1e-9);
    }
    EXPECT_EQ(PendingRunTimeError(), 0);
}

TEST_F(Houses, CuspsCarryTheOffsetOfASiderealZodiac) {
    for (std::int16_t system = 1; system <= 9; ++system) {
        const CalcChart tropical = Calculate(123, 45, system, 0);
        const CalcChart sidereal = Calculate(123, 45, system, -24.5);
        for (std::size_t i = 1; i <= 12; ++i) {
            EXPECT_LE(Apart(sidereal.Cusp[i], tropical.Cusp[i] - 24.5), 1e-9) << system << " " << i;
        }
    }
}

TEST_F(Houses, EqualCuspsFollowTheAscendantAndNotTheMidheaven) {
    const CalcChart& chart = Calculate(123, 45, 9);
    EXPECT_EQ(chart.Cusp[1], chart.Lon[22]);
    EXPECT_LE(Apart(chart.Cusp[10], chart.Lon[22] + 270), 1e-12);
}

}  // namespace
}  // namespace orvantis

#include "text/numbers.h"

#include <gtest/gtest.h>

#include "support/reset_all.h"

namespace orvantis {
namespace {

class Numbers : public ::testing::Test {
  protected:
    void SetUp() override { ResetAll(); }
};

TEST_F(Numbers, ModuloOfANegativeValueIsPositive) {
    EXPECT_EQ(Modulo(-30, 360), 330);
}

TEST_F(Numbers, ModuloOfAMultipleIsZero) {
    EXPECT_EQ(Modulo(720, 360), 0);
}

TEST_F(Numbers, ArcCosOfMinusOneYieldsTheValueOfOneAndChangesItsArgument) {
    double minus = -1;
    double plus = 1;
    EXPECT_EQ(ArcCos(minus), ArcCos(plus));
    EXPECT_EQ(minus, 0.999999999999);
    EXPECT_EQ(plus, 0.999999999999);
}

TEST_F(Numbers, ArcTan2CoversAllQuadrants) {
    // Against the C library's atan2; the two differ by rounding alone.
    for (int degrees = -179; degrees <= 180; ++degrees) {
        const double x = std::cos(degrees * DegToRad);
        const double y = std::sin(degrees * DegToRad);
        EXPECT_NEAR(ArcTan2(x, y), std::atan2(y, x), 1e-12) << degrees;
    }
}

TEST_F(Numbers, ArcTan2OnTheYAxisIsTheStoredQuarterTurn) {
    EXPECT_EQ(ArcTan2(0, 2), 1.5707963267949);
    EXPECT_EQ(ArcTan2(0, -2), -1.5707963267949);
    EXPECT_EQ(ArcTan2(0, 0), 0);
}

TEST_F(Numbers, ArcTan2OnTheNegativeXAxisIsPlusPi) {
    EXPECT_EQ(ArcTan2(-1, 0), PI);
    EXPECT_EQ(ArcTan2(-1e-300, 0), PI);
    EXPECT_EQ(ArcTan2(-2, -0.0), PI);
    EXPECT_EQ(ArcTan2(2, 0), 0);
}

// Worked from the exact values of the angles, rounded to a double.
TEST_F(Numbers, SinDCosDAndTanDTakeDegrees) {
    struct Row {
        double degrees;
        double sine;
        double cosine;
        double tangent;
    };
    const double third = 0.86602540378443865;    // half the root of 3
    const double quarter = 0.70710678118654752;  // half the root of 2
    for (const Row& row :
         {Row{0, 0, 1, 0}, Row{30, 0.5, third, 0.57735026918962576}, Row{45, quarter, quarter, 1},
          Row{-60, -third, 0.5, -1.7320508075688773}, Row{135, quarter, -quarter, -1},
          Row{180, 0, -1, 0}, Row{750, 0.5, third, 0.57735026918962576}}) {
        EXPECT_NEAR(SinD(row.degrees), row.sine, 1e-14) << row.degrees;
        EXPECT_NEAR(CosD(row.degrees), row.cosine, 1e-14) << row.degrees;
        EXPECT_NEAR(TanD(row.degrees), row.tangent, 1e-14) << row.degrees;
    }
    EXPECT_EQ(SinD(90), 1);
    EXPECT_EQ(RadToDeg(PI), 180);
}

TEST_F(Numbers, ArcSinOfAMagnitudeAboveOneIsNoNumber) {
    EXPECT_TRUE(std::isnan(ArcSin(1.0000001)));
    EXPECT_TRUE(std::isnan(ArcSin(-2)));
    EXPECT_EQ(ArcSin(1), 1.5707963267949);
    EXPECT_EQ(ArcSin(-1), -1.5707963267949);
}

TEST_F(Numbers, ArcSinInvertsSine) {
    for (int degrees = -90; degrees <= 90; ++degrees) {
        EXPECT_NEAR(RadToDeg(ArcSin(SinD(degrees))), degrees, 1e-6) << degrees;
    }
}

TEST_F(Numbers, RoundToInt16RoundsTiesToEven) {
    EXPECT_EQ(RoundToInt16(0.5), 0);
    EXPECT_EQ(RoundToInt16(1.5), 2);
    EXPECT_EQ(RoundToInt16(2.5), 2);
    EXPECT_EQ(RoundToInt16(-0.5), 0);
    EXPECT_EQ(RoundToInt16(-1.5), -2);
    EXPECT_EQ(PendingRunTimeError(), 0);
}

TEST_F(Numbers, RoundToInt16LeavesOverflowForAValueThatDoesNotFit) {
    EXPECT_EQ(RoundToInt16(32767.4), 32767);
    EXPECT_EQ(RoundToInt16(-32768.5), -32768);
    EXPECT_EQ(PendingRunTimeError(), 0);
    for (const double value : {32767.5, -32768.6, 1e300, -1e300, std::nan("")}) {
        RoundToInt16(value);
        RunTimeError raised;
        ASSERT_TRUE(TakeRunTimeError(raised)) << value;
        EXPECT_EQ(raised.number, 6);
        EXPECT_EQ(raised.description, "Overflow");
    }
}

TEST_F(Numbers, SplitDmsTakesEachUnitByFloor) {
    std::int16_t whole = 0;
    std::int16_t minutes = 0;
    std::int16_t seconds = 0;
    SplitDMS(10.5126F, whole, minutes, seconds);
    EXPECT_EQ(whole, 10);
    EXPECT_EQ(minutes, 30);
    EXPECT_EQ(seconds, 45);
}

TEST_F(Numbers, SplitDmsOfANegativeValueCountsUpFromTheUnitBelow) {
    std::int16_t whole = 0;
    std::int16_t minutes = 0;
    std::int16_t seconds = -99;
    SplitDMS(-0.5F, whole, minutes, seconds);
    EXPECT_EQ(whole, -1);
    EXPECT_EQ(minutes, 30);
    EXPECT_EQ(seconds, 0);
}

TEST_F(Numbers, ClampIntHoldsAValueWithinItsLimits) {
    EXPECT_EQ(ClampInt(0, 1, 9), 1);
    EXPECT_EQ(ClampInt(5, 1, 9), 5);
    EXPECT_EQ(ClampInt(10, 1, 9), 9);
}

TEST_F(Numbers, JulianCenturiesCountFrom1900January0) {
    EXPECT_EQ(JulianCenturies(2415020.0), 0);
    EXPECT_EQ(JulianCenturies(2451545.0), 1);
}

TEST_F(Numbers, AngularDistanceOfAQuarterOfTheEquatorIs90) {
    EXPECT_NEAR(AngularDistance(10, 0, 100, 0), 90, 1e-9);
    EXPECT_NEAR(AngularDistance(0, 90, 77, 0), 90, 1e-9);
}

// The cosine of no distance, and of the farthest one, is taken as 0.999999999999: 8.1028e-5 degrees
// (the root of 2e-12, in degrees), also for antipodes.
TEST_F(Numbers, AngularDistanceToItselfAndOfAntipodesIsTheSmallAngleOfTheArcCosine) {
    EXPECT_NEAR(AngularDistance(0, 0, 0, 0), 8.1028e-5, 1e-8);
    EXPECT_NEAR(AngularDistance(0, 90, 45, 90), 8.1028e-5, 1e-8);
    EXPECT_NEAR(AngularDistance(0, 0, 180, 0), 8.1028e-5, 1e-8);
    EXPECT_NEAR(AngularDistance(0, 90, 0, -90), 8.1028e-5, 1e-8);
}

TEST_F(Numbers, WholeDegreeTablesHoldSineAndCosine) {
    EXPECT_NEAR(WholeDegrees().sine[30], 0.5, 1e-15);
    EXPECT_NEAR(WholeDegrees().cosine[360], 1, 1e-15);
}

}  // namespace
}  // namespace orvantis

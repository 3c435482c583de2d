#include "text/rotation.h"

#include <cmath>
#include <gtest/gtest.h>
#include <swephexp.h>

#include "text/numbers.h"

namespace orvantis {
namespace {

TEST(RotateAboutX, AgreesWithAPublishedExample) {
    // Meeus, Astronomical Algorithms, example 13.a: Pollux. Given there to 1e-6 degrees.
    double a = 0;
    double d = 0;
    RotateAboutX(113.215630, 6.684170, SinD(23.4392911), CosD(23.4392911), a, d);
    EXPECT_NEAR(a, 116.328942, 2e-6);
    EXPECT_NEAR(d, 28.026183, 2e-6);
}

TEST(RotateAboutX, AgreesWithSwissEphemerisAllOverTheSphere) {
    for (int longitude = 0; longitude < 360; longitude += 15) {
        for (int latitude = -85; latitude <= 85; latitude += 10) {
            double from[3] = {static_cast<double>(longitude), static_cast<double>(latitude), 1};
            double to[3] = {};
            swe_cotrans(from, to, -23.4);
            double a = 0;
            double d = 0;
            RotateAboutX(longitude, latitude, SinD(23.4), CosD(23.4), a, d);
            EXPECT_NEAR(std::remainder(a - to[0], 360), 0, 1e-9);
            EXPECT_NEAR(d, to[1], 1e-9);
        }
    }
}

TEST(RotateAboutX, TakesThePolesWithoutATangent) {
    double a = 0;
    double d = 0;
    RotateAboutX(77, 90, SinD(23.4), CosD(23.4), a, d);
    EXPECT_NEAR(a, 270, 1e-9);
    EXPECT_NEAR(d, 66.6, 1e-9);
    RotateAboutX(90, 66.6, SinD(23.4), CosD(23.4), a, d);
    EXPECT_NEAR(d, 90, 1e-5);
    RotateAboutX(12, 0, 0, 1, a, d);
    EXPECT_NEAR(a, 12, 1e-12);
    EXPECT_NEAR(d, 0, 1e-12);
}

}  // namespace
}  // namespace orvantis

// The numeric helpers that every room uses. Angles are degrees unless a routine says radians.
#pragma once

#include <cmath>
#include <cstdint>
#include <numbers>

#include "text/run_time_error.h"

namespace orvantis {

inline constexpr double PI = std::numbers::pi;
inline constexpr double DegToRad = PI / 180;

inline double SinD(double degrees) {
    return std::sin(degrees * DegToRad);
}
inline double CosD(double degrees) {
    return std::cos(degrees * DegToRad);
}
inline double TanD(double degrees) {
    return std::tan(degrees * DegToRad);
}
inline double RadToDeg(double radians) {
    return radians / DegToRad;
}

/// Angle of the point (x, y), in radians in -pi to pi. Note the order: x first. On the y axis the
/// result is plus or minus 1.5707963267949, at the origin 0.
double ArcTan2(double x, double y);

/// Arc cosine in radians, 0 to pi. A `c` of magnitude 1 or more is itself overwritten with
/// +0.999999999999, whatever its sign, so that -1 too yields a small angle.
double ArcCos(double& c);

/// Arc sine in radians, -pi/2 to pi/2. No clamp: a magnitude above 1 gives a NaN.
double ArcSin(double s);

/// a - floor(a / b) * b: for b above 0 the result lies in 0 up to b, also for negative a.
inline double Modulo(double a, double b) {
    return a - std::floor(a / b) * b;
}

/// `low` if value is below it, else the smaller of value and `high`.
std::int16_t ClampInt(std::int16_t value, std::int16_t low, std::int16_t high);

/// Julian centuries from JD 2415020.0 (1900 January 0.5).
inline double JulianCenturies(double julianDay) {
    return (julianDay - 2415020.0) / 36525.0;
}

/// The way back: the Julian day of a time in Julian centuries from JD 2415020.0.
inline double JulianDayOf(double centuries) {
    return centuries * 36525 + 2415020;
}

/// Whole units, minutes and seconds of a value, each by floor.
void SplitDMS(float value, std::int16_t& whole, std::int16_t& minutes, std::int16_t& seconds);

/// Great-circle distance in degrees by the spherical law of cosines. Arguments in degrees.
double AngularDistance(float long1, float lat1, float long2, float lat2);

/// Nearest integer, ties to even. A value that doesn't fit 16 bits (or isn't a number) leaves the
/// run-time error "Overflow" and gives the nearest end of the range (0 for a NaN).
inline std::int16_t RoundToInt16(double value) {
    if (value >= -32768.5 && value < 32767.5) {
        return static_cast<std::int16_t>(std::lrint(value));
    }
    RaiseRunTimeError(error::kOverflow);
    if (std::isnan(value)) return 0;
    return value < 0 ? std::int16_t{-32768} : std::int16_t{32767};
}

/// The same into 32 bits.
inline std::int32_t RoundToInt32(double value) {
    if (value >= -2147483648.5 && value < 2147483647.5) {
        return static_cast<std::int32_t>(std::lrint(value));
    }
    RaiseRunTimeError(error::kOverflow);
    if (std::isnan(value)) return 0;
    return value < 0 ? INT32_MIN : INT32_MAX;
}

/// Sines and cosines of the whole degrees 0 to 360.
struct DegreeTables {
    double sine[361];
    double cosine[361];
};

/// The tables, computed once.
const DegreeTables& WholeDegrees();

}  // namespace orvantis

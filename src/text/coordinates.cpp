#include "text/coordinates.h"

#include <algorithm>
#include <cmath>

#include "text/numbers.h"
#include "text/strings.h"

namespace orvantis {

namespace {

constexpr int kLatitudeDigits = 2;
constexpr int kLongitudeDigits = 3;

// A third of a second: a value stored as 33 degrees 52 minutes mustn't turn into 33 51 59.
constexpr double kSecondsGuard = 0.0001;

std::string DegreesText(double magnitude, char letter, int degreeDigits) {
    const double x = magnitude + kSecondsGuard;
    const double degrees = std::floor(x);
    const double minutes = std::floor((x - degrees) * 60);
    // Where the product above was rounded up to a whole minute, a hair below 0 is left.
    const double seconds = std::max(0.0, std::floor((x - degrees - minutes / 60) * 3600));
    return CoordinateText(RoundToInt16(degrees), letter, RoundToInt16(minutes),
                          RoundToInt16(seconds), degreeDigits);
}

std::string MinutesText(std::int16_t arcMinutes, char letter, int degreeDigits) {
    const int magnitude = std::abs(static_cast<int>(arcMinutes));
    return ZeroPadded(magnitude / 60, degreeDigits) + letter + ZeroPadded(magnitude % 60, 2);
}

}  // namespace

std::string CoordinateText(std::int16_t degrees, char letter, std::int16_t minutes,
                           std::int16_t seconds, int degreeDigits) {
    std::string text = ZeroPadded(degrees, degreeDigits) + letter + ZeroPadded(minutes, 2);
    if (seconds != 0) text += " " + ZeroPadded(seconds, 2);
    return text;
}

std::string FormatLatitude(double latitude) {
    return DegreesText(std::abs(latitude), latitude < 0 ? 'S' : 'N', kLatitudeDigits);
}

std::string FormatLongitude(double longitude) {
    return DegreesText(std::abs(longitude), longitude < 0 ? 'E' : 'W', kLongitudeDigits);
}

std::string FormatLatMinutes(std::int16_t latMin) {
    return MinutesText(latMin, latMin < 0 ? 'S' : 'N', kLatitudeDigits);
}

std::string FormatLongMinutes(std::int16_t longMin) {
    return MinutesText(longMin, longMin < 0 ? 'W' : 'E', kLongitudeDigits);
}

}  // namespace orvantis

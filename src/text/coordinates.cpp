#include "text/coordinates.h"

#include <algorithm>
#include <cmath>

#include "surface/values.h"
#include "text/fields.h"
#include "text/messages.h"
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

// What sets the two kinds of coordinates apart when they are read.
struct CoordinateRow {
    CoordinateKind kind;
    std::string_view negativeLetter;
    std::string_view positiveLetter;
    std::int32_t limit;  // degrees
};

// Whole minutes of arc of a position in degrees. False for what has none.
bool InMinutes(double degrees, std::int16_t& minutes) {
    constexpr double kMostMinutes = 32767;
    const double exact = degrees * 60;
    if (!(std::abs(exact) <= kMostMinutes)) return false;
    minutes = RoundToInt16(exact);
    return true;
}

constexpr CoordinateRow kLatitude = {CoordinateKind::Latitude, "S", "N", 90};
constexpr CoordinateRow kLongitude = {CoordinateKind::Longitude, "E", "W", 180};

// Reads degrees, minutes and seconds from a text without its letter. False: the user must be told
// of `fault`.
bool ReadDegrees(std::string_view text, std::int32_t limit, double& degrees,
                 CoordinateFault& fault) {
    FieldWalker walker(text, kCoordinateFields);
    std::string_view field;
    std::int32_t parts[3] = {0, 0, 0};
    int count = 0;
    while (walker.Next(field)) {
        fault = CoordinateFault::Format;
        if (!walker.IsAllowed(field)) return false;
        fault = CoordinateFault::Range;
        if (count == 3) return false;
        // At the limit itself there is no room for minutes and seconds.
        const std::int32_t most = count == 0 ? limit : (parts[0] == limit ? 0 : 59);
        const std::int32_t value = LeadingInteger(field);
        if (value > most) return false;
        parts[count++] = value;
    }
    degrees = parts[0] + parts[1] / 60.0 + parts[2] / 3600.0;
    return true;
}

void ParseCoordinate(const CoordinateRow& row, std::string_view text, double& value,
                     std::int16_t& errorFlag) {
    errorFlag = kTrue;
    std::string work = UpperCase(Trim(text));
    const bool negative = BlankFirst(work, row.negativeLetter);
    const bool positive = BlankFirst(work, row.positiveLetter);
    if (negative == positive) return ShowCoordinateFault(row.kind, CoordinateFault::Format);

    double degrees = 0;
    CoordinateFault fault{};
    if (!ReadDegrees(work, row.limit, degrees, fault)) return ShowCoordinateFault(row.kind, fault);
    value = negative ? -degrees : degrees;
    errorFlag = kFalse;
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

void ParseLatitude(std::string_view text, double& value, std::int16_t& errorFlag) {
    ParseCoordinate(kLatitude, text, value, errorFlag);
}

void ParseLongitude(std::string_view text, double& value, std::int16_t& errorFlag) {
    ParseCoordinate(kLongitude, text, value, errorFlag);
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

std::string LatTextOfDegrees(double degrees) {
    std::int16_t minutes = 0;
    return InMinutes(degrees, minutes) ? FormatLatMinutes(minutes) : "";
}

std::string LongTextOfDegrees(double degrees) {
    std::int16_t minutes = 0;
    return InMinutes(degrees, minutes) ? FormatLongMinutes(minutes) : "";
}

}  // namespace orvantis

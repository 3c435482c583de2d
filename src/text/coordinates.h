// Latitudes and longitudes as text. Charts hold degrees, north and WEST positive; the map holds
// whole minutes of arc, north and EAST positive.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace orvantis {

/// "35S55", or "35S55 12" where there are seconds: degrees with at least `degreeDigits` digits,
/// the letter, minutes and seconds with two.
std::string CoordinateText(std::int16_t degrees, char letter, std::int16_t minutes,
                           std::int16_t seconds, int degreeDigits);

/// Reads a latitude such as "35S55", "S35 55" or "35 55 12S": degrees, minutes and seconds with one
/// letter anywhere. `errorFlag` 0: `value` is set, degrees, north positive, -90 to 90. `errorFlag`
/// -1: refused, the box "Error in Latitude" has been shown, and `value` is as it was.
void ParseLatitude(std::string_view text, double& value, std::int16_t& errorFlag);

/// The same for a longitude such as "138E34": degrees, WEST positive, -180 to 180; the box is
/// "Error in Longitude".
void ParseLongitude(std::string_view text, double& value, std::int16_t& errorFlag);

/// Text of a latitude in degrees, north positive: "35S55", "35S55 12". 0 is north.
std::string FormatLatitude(double latitude);

/// Text of a longitude in degrees, WEST positive: "138E34", "138E34 10". 0 is west.
std::string FormatLongitude(double longitude);

/// Text of a latitude in minutes of arc, north positive: "37N45".
std::string FormatLatMinutes(std::int16_t latMin);

/// Text of a longitude in minutes of arc, EAST positive: "145E30". 0 is east.
std::string FormatLongMinutes(std::int16_t longMin);

/// The same of degrees, north and EAST positive, rounded to minutes. "" for what isn't a number or
/// doesn't fit into whole minutes; no run-time error then.
std::string LatTextOfDegrees(double degrees);
std::string LongTextOfDegrees(double degrees);

}  // namespace orvantis

// Angles as text for screens and reports.
#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <string_view>

#include "surface/values.h"

namespace orvantis {

/// "Ar" to "Pi", 1 to 12; element 0 stands empty.
extern const std::array<std::string_view, 13> kSignAbbrevs;

/// How FormatAngle shows the degrees.
namespace angle_style {
inline constexpr std::int16_t kPlain = 0;      ///< degrees as they are
inline constexpr std::int16_t kSignName = 1;   ///< degrees within a sign, two letters of the sign
inline constexpr std::int16_t kSignGlyph = 2;  ///< degrees within a sign, its glyph
}  // namespace angle_style

/// Text of an angle in degrees, rounded to the last place shown before it is split, such as
/// "03Le30" or "-10 15".
/// `zodiacStyle` is one of angle_style; `degreeDigits` 1, 2 or 3, any other value shows no degree
/// number; `symbols` puts the marks of degrees, minutes and seconds behind the numbers (glyph
/// font); `minutesOnly` shows no seconds, otherwise they are shown if 1 or more or with
/// `forceSeconds`; `plusSign` puts "+" before a value of 0 or more.
/// The glyphs of the signs are the bytes 220, 129 and 130 to 139 of the glyph font, Aries first.
/// Taurus isn't byte 221, which stands beside 220 but shows Aries once more.
std::string FormatAngle(double value, std::int16_t zodiacStyle, std::int16_t degreeDigits,
                        Flag symbols, Flag minutesOnly, Flag forceSeconds, Flag plusSign);

}  // namespace orvantis

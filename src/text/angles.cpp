#include "text/angles.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <string_view>

#include "text/code_page.h"
#include "text/numbers.h"
#include "text/strings.h"

namespace orvantis {

const std::array<std::string_view, 13> kSignAbbrevs = {"",   "Ar", "Ta", "Ge", "Cn", "Le", "Vi",
                                                       "Li", "Sc", "Sg", "Cp", "Aq", "Pi"};

namespace {

// Half of the last place shown, in degrees.
constexpr double kHalfMinute = 0.00833333333;
constexpr double kHalfSecond = 0.00013888888;

// The signs in the glyph font, Aries first.
constexpr std::string_view kSignGlyphs = "\xDC\x81\x82\x83\x84\x85\x86\x87\x88\x89\x8A\x8B";

// What stands between the degrees and the minutes.
std::string Divider(std::int16_t zodiacStyle, std::int16_t sign, bool symbols) {
    std::string text(symbols ? 1 : 0, kDegreeGlyph);
    const auto entry = static_cast<std::size_t>((sign % 12 + 12) % 12);
    if (zodiacStyle == angle_style::kSignName) return text.append(kSignAbbrevs[entry + 1]);
    if (zodiacStyle == angle_style::kSignGlyph) return text + kSignGlyphs[entry];
    if (zodiacStyle == angle_style::kPlain && !symbols) text += ' ';
    return text;
}

}  // namespace

std::string FormatAngle(double value, std::int16_t zodiacStyle, std::int16_t degreeDigits,
                        Flag symbols, Flag minutesOnly, Flag forceSeconds, Flag plusSign) {
    std::string text;
    if (value < 0) {
        text = "-";
    } else if (plusSign != 0) {
        text = "+";
    }

    // The rounding comes first, so that it carries into the minutes, the degrees and the sign.
    const double rounded = std::abs(value) + (minutesOnly != 0 ? kHalfMinute : kHalfSecond);
    std::int16_t sign = 0;
    double degrees = rounded;
    if (zodiacStyle > angle_style::kPlain) {
        sign = RoundToInt16(std::floor(rounded / 30));
        degrees = rounded - 30.0 * sign;
    }
    const double whole = std::floor(degrees);
    const double fraction = degrees - whole;
    const double minutes = std::floor(60 * fraction);
    // A hair below 0 is left where the product above was rounded up to a whole minute.
    const double seconds = std::max(0.0, std::floor(3600 * (fraction - minutes / 60)));

    if (degreeDigits >= 1 && degreeDigits <= 3) {
        text += ZeroPadded(RoundToInt16(whole), degreeDigits);
    }
    text += Divider(zodiacStyle, sign, symbols != 0);
    text += ZeroPadded(RoundToInt16(minutes), 2);
    if (symbols != 0) text += '\'';
    if (minutesOnly != 0 || (forceSeconds == 0 && !(seconds >= 1))) return text;
    if (symbols == 0) text += ' ';
    text += ZeroPadded(RoundToInt16(seconds), 2);
    if (symbols != 0) text += '"';
    return text;
}

}  // namespace orvantis

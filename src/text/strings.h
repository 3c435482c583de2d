// Text as bytes: trimming, case, numbers in front of a text, formats of numbers.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace orvantis {

/// Line break of every message and text file.
inline constexpr std::string_view kCrLf = "\r\n";

/// The text without blanks (code 32) at both ends, or at its right end.
std::string_view Trim(std::string_view text);
std::string_view TrimRight(std::string_view text);

/// Upper and lower case of the letters a to z and of those of code page 1252 above 191.
std::string UpperCase(std::string_view text);
std::string LowerCase(std::string_view text);

/// The same of the letters a to z alone: for paths and words of a command line, which are in the
/// platform's encoding.
std::string UpperAscii(std::string_view text);
std::string LowerAscii(std::string_view text);

/// True if both texts are the same but for the case of letters.
bool SameText(std::string_view a, std::string_view b);

/// The leading number of a text: blanks, a sign, digits, a decimal point and an exponent. 0 if the
/// text doesn't begin with a number, or one too small for a double; infinite if it is too large.
double NumericValue(std::string_view text);

/// Whole number with leading zeros up to `digits`.
std::string ZeroPadded(std::int32_t value, int digits);

}  // namespace orvantis

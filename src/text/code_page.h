// Code page 1252: what the bytes of the program's texts stand for. Text is bytes everywhere in the
// core; it becomes Unicode only where a window, a picture or a terminal shows it, and always
// through these routines.
//
// The glyph font (kGlyphFontName) uses the same bytes for the letters, figures and marks below 128
// and takes others for its own glyphs:
//
//   byte       glyph
//   128 - 139  signs Aries to Pisces
//   140        retrograde
//   141        a point of its own kind (none of the numbered ones)
//   142 - 167  aspects 1 to 26
//   168        eclipse of the Moon
//   169        fixed star
//   176        degree mark
//   182 - 217  points 1 to 36
//   220, 221   sign Aries once more
//   222        stationary
//   223, 224   conjunction, opposition
//   225 - 228  aspects 2, 15, 16 and 18 once more
//   229        eclipse of the Sun
//   252, 253   a point above and below the horizon
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace orvantis {

/// Unicode character of a byte of code page 1252. The five bytes that the page leaves free give
/// the control character of the same number, so that every byte survives the way there and back.
char32_t CodePageCharacter(std::uint8_t byte);

/// Byte of a character in code page 1252, -1 if the page hasn't got it.
int CodePageByte(char32_t character);

/// Bytes of code page 1252 as UTF-8.
std::string ToUtf8(std::string_view bytes);

/// UTF-8 as bytes of code page 1252. A character that the page can't say becomes "?", and so does
/// each byte that is no part of a well-formed character.
std::string FromUtf8(std::string_view text);

/// Text of a file that users edit, as bytes of code page 1252: turned from UTF-8 if it is
/// well-formed as such, otherwise as it stands.
std::string FromEditedText(std::string_view text);

/// Bytes of the glyph font that have a name of their own.
inline constexpr char kRetrogradeGlyph = '\x8C';
inline constexpr char kSolarEclipseGlyph = '\xE5';
inline constexpr char kLunarEclipseGlyph = '\xA8';
inline constexpr char kDegreeGlyph = '\xB0';
inline constexpr char kStationaryGlyph = '\xDE';
inline constexpr char kConjunctionGlyph = '\xDF';
inline constexpr char kOppositionGlyph = '\xE0';

}  // namespace orvantis

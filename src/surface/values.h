// The value types that every room of the program shares: flags, colours and whole pictures.
#pragma once

#include <cstdint>
#include <vector>

namespace orvantis {

/// A truth value as it stands in records and files: 0 false, -1 true; tested as nonzero.
using Flag = std::int16_t;
inline constexpr Flag kFalse = 0;
inline constexpr Flag kTrue = -1;

/// A colour: red in the low byte, then green, then blue. The top byte is 0, or 2 for a colour that
/// is relative to the display's palette.
using Colour = std::int32_t;

/// The colour without the palette mark in its top byte.
constexpr Colour PlainColour(Colour colour) {
    return colour & 0xFFFFFF;
}

/// The colour with the palette mark in its top byte.
constexpr Colour PaletteColour(Colour colour) {
    return PlainColour(colour) + 0x2000000;
}

/// A whole picture in memory, row by row from the top, without gaps.
struct Image {
    int width = 0;                      ///< pixels
    int height = 0;                     ///< pixels
    std::vector<std::uint32_t> pixels;  ///< width * height values of the form 0xFFRRGGBB
};

}  // namespace orvantis

// Text as pictures of single letters. Texts of the program are bytes, so a font is at most 256
// small masks: each is made once, by Qt, and then only blended onto the picture. A label costs
// no more than its pixels.
#pragma once

#include <array>
#include <cstdint>
#include <string_view>
#include <vector>

#include "surface/drawing_surface.h"

namespace orvantis {

/// Shape of one byte in one font and size.
struct GlyphMask {
    bool ready = false;
    int advance = 0;  ///< pixels to the next letter
    int left = 0;     ///< of the mask, from where the letter stands
    int top = 0;      ///< of the mask, from the base line; negative above it
    int width = 0;
    int height = 0;
    std::vector<std::uint8_t> cover;  ///< width * height shares of ink, 0 to 255
};

/// A font in one size.
struct TextFace {
    Font font;
    double dotsPerInch = 96;
    int ascent = 0;  ///< pixels from the top of a line to its base line
    int height = 0;  ///< pixels of a line
    std::array<GlyphMask, 256> masks;
};

/// The face of a font at a resolution, made on first use and kept. Never null; the address holds
/// until the process ends. A font that isn't installed is replaced by the nearest that is; sizes
/// are held within 1 to 500 points.
TextFace* FindTextFace(const Font& font, double dotsPerInch);

/// The mask of a byte in a face.
const GlyphMask& MaskOf(TextFace& face, std::uint8_t byte);

/// Pixels from the start of the text to where a next letter would stand.
int TextWidth(TextFace& face, std::string_view text);

}  // namespace orvantis

// The program's own font: signs, points, aspects and the marks of the chart drawings on the bytes
// that text/code_page.h lists. Its shapes come from two general fonts that hold the astrological
// characters between them; what neither has is set in small letters or drawn.
#pragma once

#include <cstdint>
#include <string_view>

namespace orvantis {

/// Where the shape of a glyph comes from.
enum class GlyphSource {
    Text,     ///< the character of code page 1252, in the text font
    Sans,     ///< `character` in the text font
    Symbols,  ///< `character` in the font of symbols
    Letters,  ///< the letters, set narrow in one cell
    Drawn     ///< one of the shapes below
};

enum class GlyphShape { None, SolarEclipse, LunarEclipse };

struct GlyphEntry {
    GlyphSource source = GlyphSource::Text;
    char32_t character = 0;               ///< of Text, Sans and Symbols
    std::string_view letters;             ///< of Letters
    GlyphShape shape = GlyphShape::None;  ///< of Drawn
};

/// What a byte of the glyph font shows.
const GlyphEntry& GlyphOf(std::uint8_t byte);

}  // namespace orvantis

// Ink laid over pixels in part.
#pragma once

#include <cstdint>

namespace orvantis {

/// `above` laid over `below` with a weight of 0 to 256; pixels are 0xFFRRGGBB. Red and blue are
/// worked together: each has the room of the byte above it for the product.
inline std::uint32_t Blend(std::uint32_t below, std::uint32_t above, std::uint32_t weight) {
    const std::uint32_t rest = 256 - weight;
    const std::uint32_t redBlue = (below & 0xFF00FF) * rest + (above & 0xFF00FF) * weight;
    const std::uint32_t green = (below & 0x00FF00) * rest + (above & 0x00FF00) * weight;
    return 0xFF000000 | (redBlue >> 8 & 0xFF00FF) | (green >> 8 & 0x00FF00);
}

}  // namespace orvantis

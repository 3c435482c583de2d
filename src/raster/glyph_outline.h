// Text as shapes: what a page needs, whose letters must stay sharp at any size.
#pragma once

#include <QPainterPath>
#include <QRawFont>
#include <cstdint>

#include "raster/text_face.h"

namespace orvantis {

/// The shape of one byte in a face, from where the letter stands on the base line; y downward.
struct GlyphOutline {
    QPainterPath path;         ///< pixels of the face's resolution, not fitted to any grid
    QRawFont font;             ///< where the shape is an unchanged letter of a font, that font
    std::uint32_t number = 0;  ///< and the letter's number in it; otherwise 0
};

/// The outline of a byte in a face. Its advance is that of the face's mask, so that a text on a
/// page is laid out as on the screen.
GlyphOutline OutlineOf(TextFace& face, std::uint8_t byte);

}  // namespace orvantis

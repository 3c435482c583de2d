// Pictures as files. Paths are the platform's own. A file is replaced only by a whole new one.
#pragma once

#include <string>
#include <string_view>

#include "surface/values.h"

namespace orvantis {

/// The picture as the bytes of a PNG file; empty if it has no pixels or is too large for one.
std::string PngBytes(const Image& image);

/// Writes the picture as PNG. False if it couldn't be written; an older file then stays.
bool SavePng(std::string_view nativePath, const Image& image);

/// The same as a Windows bitmap.
bool SaveImage(std::string_view nativePath, const Image& image);

/// Reads a Windows bitmap without compression. False, with `image` untouched, if it can't be read,
/// isn't one or isn't whole, or if a side is longer than 32767 pixels.
bool LoadImage(std::string_view nativePath, Image& image);

}  // namespace orvantis

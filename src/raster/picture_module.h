// Pictures for a program that seldom draws one: the picture surface as a module that is loaded when
// it is first needed. Qt's libraries take longer to load than most verbs of the command line take
// to run.
#pragma once

#include <string_view>

#include "surface/drawing_surface.h"

namespace orvantis {

/// What the module offers, reached by its one symbol.
struct PictureModule {
    /// A black picture surface of a size in pixels. Never null; the caller frees it.
    DrawingSurface* (*makeSurface)(int width, int height);
    /// Writes a picture as PNG. False if it couldn't be written; an older file then stays.
    bool (*savePng)(std::string_view nativePath, const Image& image);
    /// A white page of a size in pixels, 96 to the inch, that holds floods. Never null; the caller
    /// frees it.
    DrawingSurface* (*makePage)(int width, int height);
    /// Writes a page of makePage as PDF or SVG. False as above.
    bool (*savePdf)(std::string_view nativePath, DrawingSurface& page);
    bool (*saveSvg)(std::string_view nativePath, DrawingSurface& page);
};

/// Name of the symbol, a PictureModule, and of the module's file beside the program or, installed,
/// in the folder of the program's libraries.
inline constexpr const char* kPictureModuleSymbol = "orvantisPictureModule";
inline constexpr const char* kPictureModuleFile = "orvantis-picture.so";

}  // namespace orvantis

// Loads the picture surface when a verb draws.
#pragma once

#include "raster/picture_module.h"

namespace orvantis::cli {

/// The module, loaded on the first call; null, after a complaint, if it can't be loaded.
const PictureModule* LoadPictureModule();

}  // namespace orvantis::cli

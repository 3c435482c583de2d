// The memory of large pictures. A screen of 3840 by 2160 takes 33 MB; in the system's usual pages
// half the time of whatever goes through it is spent on finding the pages.
#pragma once

#include <cstddef>

#include "surface/values.h"

namespace orvantis {

/// Makes room for `count` pixels, in large pages where the system has them and the picture fills
/// some. The picture's pixels are gone if it had less room before.
void ReservePixels(Image& image, std::size_t count);

}  // namespace orvantis

// The map document of the whole world, with its sea filled.
#pragma once

#include <vector>

#include "names.h"
#include "text/bytes.h"

namespace orvantis::world {

/// The bytes of world.ovm: a new document but for its precision, and one sea fill at each seed.
Bytes MakeWorldMap(const std::vector<PlaceName>& seeds);

}  // namespace orvantis::world

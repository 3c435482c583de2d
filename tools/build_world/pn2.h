// Reads the vector files of extension pn2: lines and rings in half arc-minutes.
#pragma once

#include <string>
#include <vector>

#include "geometry.h"

namespace orvantis::world {

enum class Pn2Kind { Line = 0, Ring = 1, OuterRing = 2, InnerRing = 3 };

struct Pn2Feature {
    Pn2Kind kind = Pn2Kind::Line;
    DegLine points;
};

/// False, with the reason in `error`, if the file can't be read to its end.
bool ReadPn2(const std::string& path, std::vector<Pn2Feature>& features, std::string& error);

}  // namespace orvantis::world

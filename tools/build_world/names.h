// Names of lines: at most 20 characters of code page 1252.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "geometry.h"

namespace orvantis::world {

/// UTF-8 to code page 1252. Letters that the code page lacks lose their accent; what has no letter
/// either becomes "?".
std::string ToCodePage(std::string_view utf8);

/// "first-second" in at most 20 characters: the longer of the two is cut.
std::string PairName(std::string_view first, std::string_view second);

/// A name for what lies at, or nearest to, a position.
struct PlaceName {
    MinPoint place;
    std::string name;  ///< code page 1252
};

/// Reads lines of the form "latitude longitude name", degrees; lines that begin with "#" and empty
/// ones are skipped. False if the file can't be opened or a line can't be read.
bool ReadPlaceNames(const std::string& path, std::vector<PlaceName>& names);

}  // namespace orvantis::world

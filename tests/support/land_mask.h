// Land and water as the source of the map has them, in cells of 2 arc-minutes: what pictures of the
// map are measured against. Made by build-world from whole coasts, so that it shares neither the
// thinning nor the drawing with the program.
#pragma once

#include <cstdint>
#include <string_view>
#include <vector>

namespace orvantis {

class LandMask {
  public:
    /// Reads a mask file. A file that isn't one gives a mask without cells.
    explicit LandMask(std::string_view path);

    bool IsEmpty() const { return land_.empty(); }

    /// True if a position is land; degrees, north and east positive, any longitude.
    bool IsLand(double lat, double longitude) const;

    /// True if a cell of land, or of water, lies within so many arc-minutes of a position, counted
    /// along latitude and longitude each.
    bool IsNear(double lat, double longitude, double minutes, bool land) const;

    /// Makes water of all land that the coasts and islands of a database file don't enclose: those
    /// islands, for the most, that it has no line codes left for. Returns their part of the land's
    /// area, 0 to 1.
    double KeepLandOf(std::string_view level1Path);

  private:
    int Row(double lat) const;
    int Column(double longitude) const;

    int columns_ = 0;
    int rows_ = 0;
    std::vector<std::uint8_t> land_;  // 1 land, 0 water
};

}  // namespace orvantis

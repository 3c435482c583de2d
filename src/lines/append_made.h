// Appends positions to a list, each written once. A list that grows first and is filled then is
// written twice, which shows in the time that a chart's lines take.
#pragma once

#include <cstddef>
#include <iterator>
#include <vector>

#include "lines/line_geometry.h"

namespace orvantis {

/// Goes through the positions that a routine makes of one number after the other.
template <typename Make>
struct MadePosition {
    using iterator_category = std::forward_iterator_tag;
    using value_type = LinePosition;
    using difference_type = std::ptrdiff_t;
    using pointer = const LinePosition*;
    using reference = LinePosition;

    const Make* make = nullptr;
    std::size_t number = 0;

    LinePosition operator*() const { return (*make)(number); }
    MadePosition& operator++() {
        ++number;
        return *this;
    }
    bool operator==(const MadePosition& other) const { return number == other.number; }
};

/// Appends what `make` makes of the numbers 0 to `count` - 1.
template <typename Make>
void AppendMade(std::vector<LinePosition>& positions, std::size_t count, const Make& make) {
    positions.insert(positions.end(), MadePosition<Make>{&make, 0},
                     MadePosition<Make>{&make, count});
}

}  // namespace orvantis

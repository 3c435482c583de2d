// The chart on display into a chart file.
#pragma once

#include <cstdint>
#include <string_view>

namespace orvantis {

/// Appends the chart of a slot, as its texts tell it, to a chart file of type 0 to 3; one that
/// isn't there is made, of type 3. The chart then counts as saved. False on failure, which the user
/// has been told; an existing file is then as it was.
bool SaveCurrentChart(std::int16_t slot, std::string_view path);

}  // namespace orvantis

// A chart in a file, as a call names it.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace orvantis {

/// Splits FILE[:N]; N counts from 1 and is 1 if left out. A file whose very name ends in a colon
/// and more is taken as it is. False if what follows the colon isn't a number from 1 to 2147483647.
bool SplitChartPlace(std::string_view place, std::string& path, std::int32_t& chart);

}  // namespace orvantis

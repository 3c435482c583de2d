#include "session/chart_place.h"

#include <charconv>
#include <filesystem>
#include <system_error>

#include "session/files.h"

namespace orvantis {

bool SplitChartPlace(std::string_view place, std::string& path, std::int32_t& chart) {
    path = std::string(place);
    chart = 1;
    const std::size_t colon = place.rfind(':');
    std::error_code ignored;
    if (colon == std::string_view::npos || std::filesystem::exists(NativePath(path), ignored)) {
        return true;
    }
    const std::string_view digits = place.substr(colon + 1);
    path = std::string(place.substr(0, colon));
    const auto [end, failure] =
        std::from_chars(digits.data(), digits.data() + digits.size(), chart);
    return failure == std::errc() && end == digits.data() + digits.size() && chart >= 1;
}

}  // namespace orvantis

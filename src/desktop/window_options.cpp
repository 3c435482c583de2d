#include "desktop/window_options.h"

#include <charconv>
#include <filesystem>
#include <system_error>

namespace orvantis {

bool SplitChartPlace(std::string_view place, std::string& path, std::int32_t& chart) {
    path = std::string(place);
    chart = 1;
    const std::size_t colon = place.rfind(':');
    std::error_code ignored;
    if (colon == std::string_view::npos || std::filesystem::exists(path, ignored)) return true;

    const std::string_view digits = place.substr(colon + 1);
    path = std::string(place.substr(0, colon));
    const auto [end, failure] =
        std::from_chars(digits.data(), digits.data() + digits.size(), chart);
    return failure == std::errc() && end == digits.data() + digits.size() && chart >= 1;
}

WindowOptions ReadWindowOptions(const std::vector<std::string>& words) {
    WindowOptions options;
    for (std::size_t i = 0; i < words.size(); ++i) {
        const std::string& word = words[i];
        if (word == "--help" || word == "-h") {
            options.help = true;
        } else if (word == "--open") {
            if (i + 1 == words.size() || words[i + 1].empty()) {
                options.complaint = "--open: a chart file must follow";
                return options;
            }
            ++i;
            if (!SplitChartPlace(words[i], options.openPath, options.openChart)) {
                options.complaint =
                    words[i] + ": what follows the colon must be a chart's number, from 1";
                return options;
            }
        } else {
            options.complaint = word + ": not an option; see --help";
            return options;
        }
    }
    return options;
}

std::string_view WindowHelp() {
    return "orvantis: a world map with the lines of a chart\n"
           "\n"
           "  orvantis [--open FILE[:N]]\n"
           "\n"
           "  --open FILE[:N]  shows chart N of a chart file; N counts from 1, and is 1 if left "
           "out\n"
           "  --help           prints this and ends\n"
           "\n"
           "Example: orvantis --open sample.cht:2\n"
           "\n"
           "Ends with 0 when the window is closed, 2 if the call is wrong, 3 if the chart can't "
           "be\n"
           "read.\n";
}

}  // namespace orvantis

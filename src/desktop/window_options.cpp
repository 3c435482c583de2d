#include "desktop/window_options.h"

#include "session/chart_place.h"

namespace orvantis {

namespace {

// Two hyphens, or one and a letter. A number may have a sign.
bool LooksLikeOption(std::string_view word) {
    if (word.starts_with("--")) return true;
    if (word.size() < 2 || word[0] != '-') return false;
    const char letter = static_cast<char>(word[1] | 0x20);
    return letter >= 'a' && letter <= 'z';
}

}  // namespace

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
        } else if (LooksLikeOption(word)) {
            options.complaint = word + ": not an option; see --help";
            return options;
        } else {
            if (!options.commandLine.empty()) options.commandLine += ' ';
            options.commandLine += word;
        }
    }
    return options;
}

std::string_view WindowHelp() {
    return "orvantis: a world map with the lines of a chart\n"
           "\n"
           "  orvantis [--open FILE[:N]] [NOINITSCREEN | LOADICON | CHART [POINTS [COLOURS]]]\n"
           "\n"
           "  --open FILE[:N]  shows chart N of a chart file; N counts from 1, and is 1 if left "
           "out\n"
           "  --help           prints this and ends\n"
           "  NOINITSCREEN     starts without the start screen\n"
           "  LOADICON         is accepted; it makes icons on desktops that have groups of them\n"
           "  CHART            number of a chart that another program hands over\n"
           "  POINTS, COLOURS  a point selection and a point colour file to start with\n"
           "\n"
           "Example: orvantis --open sample.cht:2\n"
           "\n"
           "Ends with 0 when the window is closed, 1 if the map or the chart can't be worked or "
           "another\n"
           "copy has been brought forward, 2 if the call is wrong, 3 if the chart can't be read.\n";
}

}  // namespace orvantis

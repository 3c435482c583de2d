// orvantis-cli: the whole program without a window.
#include <algorithm>
#include <array>
#include <iostream>

#include "cli/verbs.h"
#include "session/driver.h"

namespace orvantis::cli {

namespace {

const std::array<Verb, 9> kVerbs = {{{"chart", kChartHelp, RunChart},
                                     {"charts", kChartsHelp, RunCharts},
                                     {"convert", kConvertHelp, RunConvert},
                                     {"lines", kLinesHelp, RunLines},
                                     {"parans", kParansHelp, RunParans},
                                     {"render", kRenderHelp, RunRender},
                                     {"database", kDatabaseHelp, RunDatabase},
                                     {"parse", kParseHelp, RunParse},
                                     {"format", kFormatHelp, RunFormat}}};

constexpr std::string_view kHelp =
    R"(orvantis-cli: charts, their lines and their map from the command line

Usage: orvantis-cli VERB ARGUMENTS...

  chart FILE[:N] [--json]          one calculated chart
  charts FILE [--json]             the charts in a file
  convert IN OUT --type 1|2|3      a chart file as one of another type
  lines FILE[:N] --geojson|--csv|--kml
                                   every line of a chart
  parans FILE[:N]                  latitudes where two points are angular at once
  render [FILE[:N]] -o OUT.png     the map with a chart's lines
  database build|check FILE        the files of the world map
  parse KIND TEXT...               what typed dates, times, places and zones mean
  format KIND VALUE...             the same values, and angles, as texts

"orvantis-cli VERB --help" tells more of each.
Results go to standard output, complaints to standard error.
Exit code: 0 done, 1 the work failed, 2 the call is wrong, 3 the input can't be read.
)";

bool AsksForHelp(const std::string& word) {
    return word == "--help" || word == "-h";
}

// The exit code of work that has written its results: they must have got there.
int Written(int exitCode) {
    std::cout.flush();
    if (exitCode == kDone && !std::cout) {
        return Complain(kWorkFailed, "standard output", "can't be written");
    }
    return exitCode;
}

int Run(const std::vector<std::string>& words) {
    if (words.empty()) {
        return Complain(kWrongCall, "no verb", "see orvantis-cli --help");
    }
    if (AsksForHelp(words.front())) {
        std::cout << kHelp;
        return Written(kDone);
    }
    const auto* verb = std::find_if(kVerbs.begin(), kVerbs.end(),
                                    [&](const Verb& v) { return v.name == words.front(); });
    if (verb == kVerbs.end()) {
        return Complain(kWrongCall, words.front(), "unknown verb, see orvantis-cli --help");
    }
    const std::vector<std::string> rest(words.begin() + 1, words.end());
    const auto optionsEnd = std::find(rest.begin(), rest.end(), "--");
    if (std::any_of(rest.begin(), optionsEnd, AsksForHelp)) {
        std::cout << verb->help;
        return Written(kDone);
    }
    CliShell shell;
    StartSession(SystemPaths(), shell);
    shell.complained = false;  // what the start has told isn't the verb's failure
    const int exitCode = verb->run(rest, shell);
    EndSession();
    return Written(exitCode);
}

}  // namespace

}  // namespace orvantis::cli

int main(int argc, char** argv) {
    return orvantis::cli::Run(std::vector<std::string>(argv + 1, argv + argc));
}

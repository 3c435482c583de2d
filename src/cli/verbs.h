// The verbs of the command line. Each takes the words after its name and returns the exit code.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "cli/arguments.h"
#include "cli/cli_shell.h"

namespace orvantis::cli {

struct Verb {
    std::string_view name;
    std::string_view help;  ///< what --help of the verb shows
    int (*run)(const std::vector<std::string>& words, CliShell& shell);
};

extern const std::string_view kChartHelp;
extern const std::string_view kChartsHelp;
extern const std::string_view kConvertHelp;
extern const std::string_view kLinesHelp;
extern const std::string_view kParansHelp;
extern const std::string_view kRenderHelp;
extern const std::string_view kDatabaseHelp;
extern const std::string_view kParseHelp;
extern const std::string_view kFormatHelp;

int RunChart(const std::vector<std::string>& words, CliShell& shell);
int RunCharts(const std::vector<std::string>& words, CliShell& shell);
int RunConvert(const std::vector<std::string>& words, CliShell& shell);
int RunLines(const std::vector<std::string>& words, CliShell& shell);
int RunParans(const std::vector<std::string>& words, CliShell& shell);
int RunRender(const std::vector<std::string>& words, CliShell& shell);
int RunDatabase(const std::vector<std::string>& words, CliShell& shell);
int RunParse(const std::vector<std::string>& words, CliShell& shell);
int RunFormat(const std::vector<std::string>& words, CliShell& shell);

/// Why a file can't be opened, where opening it gives no reason of its own.
std::string WhyNoFile(const std::string& path);

/// Complains of a chart file that couldn't be opened, unless the shell has done so. Returns an exit
/// code.
int UnreadableChartFile(const std::string& path, const CliShell& shell);

/// Calculates the chart that a call names and puts it on display. Returns an exit code; on a
/// failure the user has been told.
int OpenNamedChart(const std::string& address, const CliShell& shell);

}  // namespace orvantis::cli

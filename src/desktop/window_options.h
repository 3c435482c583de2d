// The window's own options, read before anything else of the command line.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace orvantis {

struct WindowOptions {
    bool help = false;
    std::string openPath;        ///< chart file to open, native path; "" none
    std::int32_t openChart = 1;  ///< number of the chart in it, from 1
    std::string commandLine;     ///< the other words, joined by blanks
    std::string complaint;       ///< what is wrong with the call, one line; "" nothing
};

/// Reads the words that follow the program's name.
WindowOptions ReadWindowOptions(const std::vector<std::string>& words);

/// What --help prints.
std::string_view WindowHelp();

}  // namespace orvantis

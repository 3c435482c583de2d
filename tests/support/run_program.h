// Runs a program as a user would and keeps what it said.
#pragma once

#include <string>
#include <vector>

namespace orvantis {

struct ProgramResult {
    int exitCode = -1;       ///< -1: it didn't end by itself
    int signal = 0;          ///< signal that ended it, 0 none
    std::string output;      ///< standard output
    std::string errors;      ///< standard error
    long peakKilobytes = 0;  ///< most memory it held
};

/// Runs a program (a path, or a name on the PATH) with arguments and additional "NAME=value"
/// environment entries, with no standard input. A program that takes longer than the limit is
/// killed.
ProgramResult RunProgram(const std::string& program, const std::vector<std::string>& arguments,
                         const std::vector<std::string>& environment = {}, int limitSeconds = 60);

}  // namespace orvantis

// Where a test finds what the project ships, what stands beside the tests, and the built programs.
#pragma once

#include <string>
#include <string_view>

namespace orvantis {

/// Path of a shipped data file; of the data folder with a separator at its end for "".
std::string DataFile(std::string_view name);

/// Path of a file that is kept with the tests.
std::string TestFile(std::string_view name);

/// Path of a program of this build.
std::string ProgramFile(std::string_view name);

/// The version that the programs tell.
std::string ProgramVersion();

/// Where the system's packages put the files of Swiss Ephemeris.
constexpr const char* kEphemeris = "/usr/share/libswe/ephe";

}  // namespace orvantis

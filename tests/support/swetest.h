// swetest, the test program of Swiss Ephemeris, run as a program of its own.
#pragma once

#include <string>
#include <vector>

namespace orvantis {

using SwetestTable = std::vector<std::vector<double>>;

/// The numbers that swetest prints with these arguments, line by line; a blank column is 0. It is
/// told where the system's ephemeris files are, to print no head and to part columns by commas.
/// Fails the test if it ends with an error.
SwetestTable Swetest(const std::vector<std::string>& arguments);

}  // namespace orvantis

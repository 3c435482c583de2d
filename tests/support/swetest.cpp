#include "support/swetest.h"

#include <gtest/gtest.h>
#include <sstream>

#include "support/paths.h"
#include "support/run_program.h"

namespace orvantis {

SwetestTable Swetest(const std::vector<std::string>& arguments) {
    std::vector<std::string> all = {std::string("-edir") + kEphemeris, "-head", "-g,"};
    all.insert(all.end(), arguments.begin(), arguments.end());
    const ProgramResult result = RunProgram("swetest", all);
    EXPECT_EQ(result.exitCode, 0) << result.errors;
    SwetestTable table;
    std::istringstream lines(result.output);
    for (std::string line; std::getline(lines, line);) {
        std::vector<double> row;
        std::istringstream columns(line);
        for (std::string column; std::getline(columns, column, ',');) {
            const bool blank = column.find_first_not_of(' ') == std::string::npos;
            row.push_back(blank ? 0 : std::stod(column));
        }
        if (!row.empty()) table.push_back(row);
    }
    return table;
}

}  // namespace orvantis

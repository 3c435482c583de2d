// The words of a call of the window.
#include "desktop/window_options.h"

#include <gtest/gtest.h>

namespace orvantis {
namespace {

TEST(WindowOptions, WordsThatAreNoOptionsMakeTheCommandLine) {
    const struct {
        std::vector<std::string> words;
        std::string commandLine;
    } rows[] = {
        {{}, ""},
        {{"3", "points.pts", "colours.cpt"}, "3 points.pts colours.cpt"},
        {{"-3"}, "-3"},  // a number with its sign
        {{"-3", "a-b.pts"}, "-3 a-b.pts"},
        {{"-.5"}, "-.5"},
        {{"-"}, "-"},
        {{"", "x"}, "x"},
    };
    for (const auto& row : rows) {
        const WindowOptions options = ReadWindowOptions(row.words);
        EXPECT_EQ(options.complaint, "");
        EXPECT_EQ(options.commandLine, row.commandLine);
        EXPECT_EQ(options.openPath, "");
    }
}

TEST(WindowOptions, TwoHyphensOrOneAndALetterAreAnOptionThatIsRefused) {
    for (const char* word : {"--", "--3", "--frobnicate", "-x", "-Z", "-a1"}) {
        const WindowOptions options = ReadWindowOptions({word});
        EXPECT_EQ(options.complaint, std::string(word) + ": not an option; see --help");
    }
}

TEST(WindowOptions, TheFirstComplaintEndsTheReading) {
    const WindowOptions options = ReadWindowOptions({"1", "--first", "--open", "--help", "2"});
    EXPECT_EQ(options.complaint, "--first: not an option; see --help");
    EXPECT_FALSE(options.help);
    EXPECT_EQ(options.commandLine, "1");
}

TEST(WindowOptions, AChartFileMayCarryTheNumberOfItsChart) {
    const WindowOptions options = ReadWindowOptions({"--open", "a.cht:2", "NOINITSCREEN"});
    EXPECT_EQ(options.openPath, "a.cht");
    EXPECT_EQ(options.openChart, 2);
    EXPECT_EQ(options.commandLine, "NOINITSCREEN");
}

}  // namespace
}  // namespace orvantis

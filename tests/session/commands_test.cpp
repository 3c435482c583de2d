#include "session/commands.h"

#include <algorithm>
#include <gtest/gtest.h>

#include "support/reset_all.h"

namespace orvantis {
namespace {

int closed = 0;
int plotted = 0;
int lines = 0;

class CommandTable : public ::testing::Test {
  protected:
    void SetUp() override {
        ResetAll();
        closed = plotted = lines = 0;
        closeMainWindow = [] { ++closed; };
        plotAnew = [] { ++plotted; };
        plotLinesAnew = [] { ++lines; };
    }

    static const Command& Find(std::string_view caption) {
        const auto commands = Commands();
        return *std::find_if(commands.begin(), commands.end(),
                             [&](const Command& command) { return command.caption == caption; });
    }
};

TEST_F(CommandTable, ExitAsksTheWindowToCloseAndTouchesNoPicture) {
    RunCommand(Find("E&xit"));
    EXPECT_EQ(closed, 1);
    EXPECT_EQ(plotted + lines, 0);
}

TEST_F(CommandTable, ReDrawEndsInAFullPlotAndHasTheKeyF4) {
    const Command& redraw = Find("&ReDraw");
    EXPECT_EQ(redraw.menu, "&Map");
    EXPECT_EQ(redraw.shortcut, "F4");
    RunCommand(redraw);
    EXPECT_EQ(plotted, 1);
    EXPECT_EQ(lines + closed, 0);
}

TEST_F(CommandTable, ACommandThatEndsInLinesMakesAQuickPassAlone) {
    RunCommand({"&Chart", "C&lear", "", nullptr, CommandEnd::Lines});
    EXPECT_EQ(lines, 1);
    EXPECT_EQ(plotted, 0);
}

}  // namespace
}  // namespace orvantis

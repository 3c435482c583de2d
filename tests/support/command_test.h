// What tests of commands share: a session's records reset, plots counted by their kind, and a
// command run by its caption.
#pragma once

#include <gtest/gtest.h>
#include <string>
#include <string_view>
#include <vector>

#include "lines/chart_lines.h"
#include "map/map_document.h"
#include "map/view_ring.h"
#include "session/commands.h"
#include "session/session_state.h"
#include "session/settings.h"
#include "support/reset_all.h"

namespace orvantis {

class CommandTest : public ::testing::Test {
  protected:
    using Words = std::vector<std::string>;

    void SetUp() override {
        ResetAll();
        Plots().clear();
        plotAnew = plotFull = plotAfterSettings = [] { Plots().emplace_back("full"); };
        plotLinesAnew = plotQuick = [] { Plots().emplace_back("lines"); };
    }
    void TearDown() override { ResetAll(); }

    /// The plots made so far, "full" or "lines".
    static Words& Plots() {
        static Words plots;
        return plots;
    }

    static const Command& Row(std::string_view menu, std::string_view caption,
                              std::int16_t number = 0) {
        static constexpr Command none{.menu = ""};
        const Command* found = FindCommand(menu, caption, number);
        EXPECT_NE(found, nullptr) << caption;
        return found == nullptr ? none : *found;
    }

    /// Runs a command: the plots that it made, one word each, "none" without any.
    static std::string Run(std::string_view menu, std::string_view caption,
                           std::int16_t number = 0) {
        Plots().clear();
        RunCommand(Row(menu, caption, number));
        std::string end;
        for (const std::string& plot : Plots()) end += (end.empty() ? "" : " ") + plot;
        return end.empty() ? "none" : end;
    }

    /// What the shell was asked since the last look, line by line.
    static Words Log() {
        Words log;
        log.swap(TestShell().log);
        return log;
    }

    static CommandLook Look(std::string_view menu, std::string_view caption,
                            std::int16_t number = 0) {
        OpenMenu(menu);
        return LookOf(Row(menu, caption, number));
    }
    static bool Enabled(std::string_view menu, std::string_view caption, std::int16_t number = 0) {
        return Look(menu, caption, number).enabled;
    }
    static bool Checked(std::string_view menu, std::string_view caption, std::int16_t number = 0) {
        return Look(menu, caption, number).checked;
    }

    /// No line type is displayed but these.
    static void ShowLineTypes(std::initializer_list<std::size_t> types) {
        for (LineStyle& style : settings.lineStyle) style.displayed = kFalse;
        for (const std::size_t type : types) settings.lineStyle[type].displayed = kTrue;
    }
};

}  // namespace orvantis

// The program as a user meets it: on a display without a screen behind it, and in a real window.
#include <algorithm>
#include <chrono>
#include <filesystem>
#include <functional>
#include <gtest/gtest.h>
#include <thread>

#include "desktop/process.h"
#include "desktop/x_display.h"
#include "session/session_state.h"
#include "session/settings.h"
#include "support/scripted_shell.h"
#include "support/temp_folder.h"

namespace orvantis {
namespace {

// Long enough for a build with sanitizers on a busy machine.
constexpr int kPatience = 60;

const std::string kProgram = ORVANTIS_BIN "/orvantis";
const std::string kSample = ORVANTIS_DATA "/sample.cht";

using Variables = std::vector<std::pair<std::string, std::string>>;

class Window : public ::testing::Test {
  protected:
    Variables Offscreen() const {
        return {{"XDG_DATA_HOME", home.Path()},
                {"XDG_RUNTIME_DIR", home.Path()},
                {"QT_QPA_PLATFORM", "offscreen"}};
    }
    Variables On(const XServer& server) const {
        return {{"XDG_DATA_HOME", home.Path()},
                {"XDG_RUNTIME_DIR", home.Path()},
                {"QT_QPA_PLATFORM", "xcb"},
                {"DISPLAY", server.Name()},
                {"QT_SCALE_FACTOR", "1"}};
    }
    static bool WaitUntil(const std::function<bool()>& holds) {
        for (int i = 0; i < kPatience * 20; ++i) {
            if (holds()) return true;
            std::this_thread::sleep_for(std::chrono::milliseconds(50));
        }
        return false;
    }

    TempFolder home;
};

// A plain colour, red in the low byte, as the display has it.
std::uint32_t OnDisplay(Colour colour) {
    return static_cast<std::uint32_t>((colour & 0xFF) << 16 | (colour & 0xFF00) |
                                      (colour >> 16 & 0xFF));
}

struct LandSeen {
    double share = 0;  // of the window
    int left = 0;      // first and last column with land
    int right = -1;
};

LandSeen LandOf(const XServer::Picture& picture) {
    LandSeen land;
    land.left = picture.width;
    const std::uint32_t colour = OnDisplay(LandColour());
    int count = 0;
    for (std::size_t i = 0; i < picture.pixels.size(); ++i) {
        if (picture.pixels[i] != colour) continue;
        ++count;
        const int x = static_cast<int>(i) % picture.width;
        land.left = std::min(land.left, x);
        land.right = std::max(land.right, x);
    }
    if (!picture.pixels.empty()) land.share = static_cast<double>(count) / picture.pixels.size();
    return land;
}

TEST_F(Window, HelpIsPrintedWithoutADisplay) {
    Process program(kProgram, {"--help"}, {{"QT_QPA_PLATFORM", "xcb"}, {"DISPLAY", ":none"}});
    EXPECT_EQ(program.Wait(kPatience), 0);
    EXPECT_TRUE(program.Output().starts_with("orvantis: a world map with the lines of a chart\n"));
    EXPECT_EQ(program.Complaints(), "");
}

TEST_F(Window, WrongCallsAreRefusedInOneLine) {
    const struct {
        std::vector<std::string> words;
        std::string complaint;
    } rows[] = {
        {{"--frobnicate"}, "orvantis: --frobnicate: not an option; see --help\n"},
        {{"--open"}, "orvantis: --open: a chart file must follow\n"},
        {{"--open", ""}, "orvantis: --open: a chart file must follow\n"},
        {{"--open", "a.cht:0"},
         "orvantis: a.cht:0: what follows the colon must be a chart's number, from 1\n"},
        {{"--open", "a.cht:two"},
         "orvantis: a.cht:two: what follows the colon must be a chart's number, from 1\n"},
        {{"--open", "a.cht:99999999999"},
         "orvantis: a.cht:99999999999: what follows the colon must be a chart's number, from 1\n"},
    };
    for (const auto& row : rows) {
        Process program(kProgram, row.words, Offscreen());
        EXPECT_EQ(program.Wait(kPatience), 2) << row.complaint;
        EXPECT_EQ(program.Complaints(), row.complaint);
        EXPECT_EQ(program.Output(), "");
    }
}

TEST_F(Window, ChartThatCantBeReadEndsTheProgramInOneLine) {
    const std::string missing = home.File("none.cht");
    const std::string empty = home.Write("empty.cht", std::string_view());
    const struct {
        std::string place;
        std::string complaint;
    } rows[] = {
        {missing, "orvantis: " + missing + ": the file isn't there or can't be read\n"},
        {empty, "orvantis: " + empty + ": has no chart 1\n"},
        {kSample + ":30000", "orvantis: " + kSample + ": has no chart 30000\n"},
    };
    for (const auto& row : rows) {
        Process program(kProgram, {"--open", row.place}, Offscreen());
        EXPECT_EQ(program.Wait(kPatience), 3) << row.place;
        EXPECT_EQ(program.Complaints(), row.complaint);
    }
}

TEST_F(Window, ProgramWithoutAScreenRunsUntilItIsAskedToEnd) {
    Process program(kProgram, {"--open", kSample + ":1"}, Offscreen());
    ASSERT_TRUE(
        WaitUntil([&] { return std::filesystem::exists(home.File("orvantis/levelx.ndx")); }));
    EXPECT_EQ(program.Wait(1), -1) << "it stays";
    program.Terminate();
    EXPECT_EQ(program.Wait(kPatience), 0);
    EXPECT_EQ(program.Complaints(), "");
}

TEST_F(Window, ShowsTheMapFollowsItsSizeAndClosesCleanly) {
    XServer server;
    if (!server.Runs()) GTEST_SKIP() << "no virtual X server on this system";
    Process program(kProgram, {"--open", kSample + ":1"}, On(server));
    const unsigned long window = server.WaitForWindow("Orvantis: ", kPatience);
    ASSERT_NE(window, 0U) << program.Complaints();

    // The colours are those that the program starts with.
    ScriptedShell shell;
    session.shell = &shell;
    LoadSettings(ORVANTIS_DATA "/default.ovs", kFalse);
    session.shell = nullptr;

    // Land fills a good part of the map, and reaches from side to side of it.
    ASSERT_TRUE(WaitUntil([&] { return LandOf(server.Look(window)).share > 0.1; }));
    const XServer::Picture first = server.Look(window);
    const LandSeen land = LandOf(first);
    EXPECT_LT(land.left, first.width / 8);
    EXPECT_GT(land.right, first.width * 7 / 8);
    const auto outline =
        static_cast<double>(std::count(first.pixels.begin(), first.pixels.end(), 0x000000U));
    EXPECT_GT(outline / static_cast<double>(first.pixels.size()), 0.005);

    // A larger and a smaller window: the map fills each.
    for (const auto& [width, height] : {std::pair{1300, 800}, std::pair{500, 400}}) {
        server.Resize(window, width, height);
        EXPECT_TRUE(WaitUntil([&, wanted = width] {
            const XServer::Picture picture = server.Look(window);
            const LandSeen seen = LandOf(picture);
            return picture.width == wanted && seen.share > 0.1 && seen.right > wanted * 7 / 8;
        })) << width;
    }

    server.Close(window);
    EXPECT_EQ(program.Wait(kPatience), 0);
    EXPECT_EQ(program.Complaints(), "");
}

TEST_F(Window, TitleWithoutAChartIsTheProgramsName) {
    XServer server;
    if (!server.Runs()) GTEST_SKIP() << "no virtual X server on this system";
    Process program(kProgram, {}, On(server));
    const unsigned long window = server.WaitForWindow("Orvantis", kPatience);
    ASSERT_NE(window, 0U);
    EXPECT_EQ(server.Title(window), "Orvantis");
    server.Close(window);
    EXPECT_EQ(program.Wait(kPatience), 0);
}

}  // namespace
}  // namespace orvantis

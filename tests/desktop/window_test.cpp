// The program as a user meets it: on a display without a screen behind it, and in a real window.
#include <algorithm>
#include <chrono>
#include <cmath>
#include <filesystem>
#include <functional>
#include <gtest/gtest.h>
#include <memory>
#include <thread>

#include "desktop/process.h"
#include "desktop/x_display.h"
#include "session/session_state.h"
#include "session/settings.h"
#include "support/paths.h"
#include "support/scripted_shell.h"
#include "support/temp_folder.h"

namespace orvantis {
namespace {

// Long enough for a build with sanitizers on a busy machine.
constexpr int kPatience = 60;

const std::string kProgram = ProgramFile("orvantis");
const std::string kSample = DataFile("sample.cht");

using Variables = std::vector<std::pair<std::string, std::string>>;

class Window : public ::testing::Test {
  protected:
    Variables Offscreen() const {
        return {{"XDG_DATA_HOME", home.Path()},
                {"XDG_CONFIG_HOME", home.Path()},
                {"XDG_RUNTIME_DIR", home.Path()},
                {"QT_QPA_PLATFORM", "offscreen"}};
    }
    Variables On(const XServer& server) const {
        return {{"XDG_DATA_HOME", home.Path()},   {"XDG_CONFIG_HOME", home.Path()},
                {"XDG_RUNTIME_DIR", home.Path()}, {"QT_QPA_PLATFORM", "xcb"},
                {"DISPLAY", server.Name()},       {"QT_SCALE_FACTOR", "1"}};
    }
    static bool WaitUntil(const std::function<bool()>& holds) {
        for (int i = 0; i < kPatience * 20; ++i) {
            if (holds()) return true;
            std::this_thread::sleep_for(std::chrono::milliseconds(50));
        }
        return false;
    }

    // The program's INI, and its lines.
    std::string IniPath() const { return home.File("orvantis/ORVANT2.INI"); }
    std::string Ini() const {
        const Bytes bytes = FileBytes(IniPath());
        return {bytes.begin(), bytes.end()};
    }
    void WriteIni(std::string_view lines) const {
        std::filesystem::create_directories(home.File("orvantis"));
        home.Write("orvantis/ORVANT2.INI", "[Orvantis]\r\n" + std::string(lines));
    }
    // The sample chart as another program hands it over, under the number 3.
    void HandOverChart() const {
        const Bytes sample = FileBytes(kSample);
        Bytes exchange(3171);
        std::copy_n(sample.begin() + 292, 292, exchange.begin());
        std::filesystem::create_directories(home.File("orvantis"));
        home.Write("orvantis/~K500003.CH~", exchange);
    }

    TempFolder home;
};

const std::string kStartScreen = "Starting Orvantis";

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
    ASSERT_TRUE(server.Runs()) << "no virtual X server";
    Process program(kProgram, {"--open", kSample + ":1"}, On(server));
    const unsigned long window = server.WaitForWindow("Orvantis: ", kPatience);
    ASSERT_NE(window, 0U) << program.Complaints();

    // The colours are those that the program starts with.
    ScriptedShell shell;
    session.shell = &shell;
    LoadSettings(DataFile("default.ovs"), kFalse);
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
    ASSERT_TRUE(server.Runs()) << "no virtual X server";
    Process program(kProgram, {"NOINITSCREEN"}, On(server));
    const unsigned long window = server.WaitForWindow("Orvantis", kPatience);
    ASSERT_NE(window, 0U);
    EXPECT_EQ(server.Title(window), "Orvantis");
    server.Close(window);
    EXPECT_EQ(program.Wait(kPatience), 0);
}

TEST_F(Window, TheStartScreenComesWithAnEmptyCallAndGoesByItsTimeAKeyAClickAndItsClosing) {
    XServer server;
    ASSERT_TRUE(server.Runs()) << "no virtual X server";
    const struct {
        const char* what;
        std::function<void(unsigned long)> act;
    } rows[] = {{"time", [](unsigned long) {}},
                {"key", [&](unsigned long screen) { server.PressReturn(screen); }},
                {"click", [&](unsigned long screen) { server.Click(screen); }},
                {"closing", [&](unsigned long screen) { server.Close(screen); }}};
    for (const auto& row : rows) {
        Process program(kProgram, {}, On(server));
        const unsigned long screen = server.WaitForWindow(kStartScreen, kPatience);
        ASSERT_NE(screen, 0U) << row.what;
        EXPECT_TRUE(server.Windows("Orvantis").empty()) << "the main window waits: " << row.what;
        row.act(screen);
        const unsigned long window = server.WaitForWindow("Orvantis", kPatience);
        ASSERT_NE(window, 0U) << row.what;
        EXPECT_TRUE(server.Windows(kStartScreen).empty()) << row.what;
        server.Close(window);
        EXPECT_EQ(program.Wait(kPatience), 0) << row.what;
        EXPECT_EQ(program.Complaints(), "") << row.what;
    }
}

TEST_F(Window, OtherCallsShowNoStartScreen) {
    XServer server;
    ASSERT_TRUE(server.Runs()) << "no virtual X server";
    Process program(kProgram, {"NOINITSCREEN"}, On(server));
    std::size_t seen = 0;
    EXPECT_TRUE(WaitUntil([&] {
        seen += server.Windows(kStartScreen).size();
        return !server.Windows("Orvantis").empty();
    }));
    EXPECT_EQ(seen, 0U);
}

TEST_F(Window, ASecondStartIsToldAndBringsTheFirstWindowForward) {
    XServer server;
    ASSERT_TRUE(server.Runs()) << "no virtual X server";
    Process first(kProgram, {"--open", kSample}, On(server));
    const unsigned long window = server.WaitForWindow("Orvantis: ", kPatience);
    ASSERT_NE(window, 0U) << first.Complaints();

    Process second(kProgram, {}, On(server));
    const unsigned long box = server.WaitForWindow("Cannot Run Second Session", kPatience);
    ASSERT_NE(box, 0U) << second.Complaints();
    EXPECT_EQ(server.Windows("").back(), box) << "the box stands above the first window";
    server.PressReturn(box);
    EXPECT_EQ(second.Wait(kPatience), 1);
    EXPECT_EQ(second.Complaints(), "");
    EXPECT_TRUE(server.Windows(kStartScreen).empty());
    EXPECT_TRUE(WaitUntil([&] { return server.Windows("").back() == window; }));

    server.Close(window);
    EXPECT_EQ(first.Wait(kPatience), 0);
}

TEST_F(Window, ARefusedCopyRaisesTheFirstWindowAboveOthers) {
    XServer server;
    ASSERT_TRUE(server.Runs()) << "no virtual X server";
    // A copy that shows no chart stands above the one that does.
    Process other(kProgram, {"NOINITSCREEN"}, On(server));
    const unsigned long above = server.WaitForWindow("Orvantis", kPatience);
    ASSERT_NE(above, 0U);
    Process first(kProgram, {"--open", kSample}, On(server));
    const unsigned long window = server.WaitForWindow("Orvantis: ", kPatience);
    ASSERT_NE(window, 0U) << first.Complaints();
    server.Raise(above);
    ASSERT_EQ(server.Windows("").back(), above);

    Process second(kProgram, {"NOINITSCREEN"}, On(server));
    const unsigned long box = server.WaitForWindow("Cannot Run Second Session", kPatience);
    ASSERT_NE(box, 0U);
    server.PressReturn(box);
    EXPECT_EQ(second.Wait(kPatience), 1);
    EXPECT_TRUE(WaitUntil([&] { return server.Windows("").back() == window; }));
}

TEST_F(Window, WithoutAChartOnDisplayASecondCopyStartsBesideTheFirst) {
    XServer server;
    ASSERT_TRUE(server.Runs()) << "no virtual X server";
    Process first(kProgram, {"NOINITSCREEN"}, On(server));
    ASSERT_NE(server.WaitForWindow("Orvantis", kPatience), 0U);
    Process second(kProgram, {"NOINITSCREEN"}, On(server));
    EXPECT_TRUE(WaitUntil([&] { return server.Windows("Orvantis").size() == 2; }));
    first.Terminate();
    second.Terminate();
    EXPECT_EQ(first.Wait(kPatience), 0);
    EXPECT_EQ(second.Wait(kPatience), 0);
}

TEST_F(Window, ACopyThatEndedWithoutOrderIsNoneAnyMore) {
    XServer server;
    ASSERT_TRUE(server.Runs()) << "no virtual X server";
    {
        Process first(kProgram, {"--open", kSample}, On(server));
        ASSERT_NE(server.WaitForWindow("Orvantis: ", kPatience), 0U);
        first.Kill();
        first.Wait(kPatience);
    }
    Process second(kProgram, {"--open", kSample}, On(server));
    EXPECT_NE(server.WaitForWindow("Orvantis: ", kPatience), 0U);
    second.Terminate();
    EXPECT_EQ(second.Wait(kPatience), 0);
}

TEST_F(Window, ItsPlaceIsKeptFromRunToRun) {
    XServer server;
    ASSERT_TRUE(server.Runs()) << "no virtual X server";
    // 15 twips to a pixel.
    WriteIni("WindowState=0\r\nLeft=3000\r\nTop=1500\r\nWidth=9000\r\nHeight=7500\r\n");
    const XServer::Place moved{150, 60, 720, 480};
    {
        Process program(kProgram, {"NOINITSCREEN"}, On(server));
        const unsigned long window = server.WaitForWindow("Orvantis", kPatience);
        ASSERT_NE(window, 0U);
        EXPECT_EQ(server.PlaceOf(window), (XServer::Place{200, 100, 600, 500}));
        server.MoveTo(window, moved);
        ASSERT_TRUE(WaitUntil([&] { return server.Look(window).width == moved.width; }));
        server.Close(window);
        EXPECT_EQ(program.Wait(kPatience), 0);
    }
    EXPECT_TRUE(Ini().starts_with(
        "[Orvantis]\r\nWindowState=0\r\nLeft=2250\r\nTop=900\r\nWidth=10800\r\nHeight=7200\r\n"))
        << Ini();
    Process program(kProgram, {"NOINITSCREEN"}, On(server));
    const unsigned long window = server.WaitForWindow("Orvantis", kPatience);
    EXPECT_EQ(server.PlaceOf(window), moved);
    server.Close(window);
    EXPECT_EQ(program.Wait(kPatience), 0);
}

TEST_F(Window, ThePictureIsKeptFromRunToRunWhereThatIsWanted) {
    XServer server;
    ASSERT_TRUE(server.Runs()) << "no virtual X server";
    WriteIni("WindowState=0\r\nWidth=9000\r\nHeight=7500\r\nStoreImages=-1\r\n");
    const std::string stored = home.File("orvantis/mapimage.bmp");
    {
        Process program(kProgram, {"NOINITSCREEN"}, On(server));
        const unsigned long window = server.WaitForWindow("Orvantis", kPatience);
        ASSERT_NE(window, 0U);
        server.Close(window);
        EXPECT_EQ(program.Wait(kPatience), 0);
    }
    EXPECT_TRUE(std::filesystem::exists(home.File("orvantis/mapview.ovm")));
    // A picture of one colour shows whether it is taken.
    Bytes picture = FileBytes(stored);
    ASSERT_GT(picture.size(), 54U);
    std::fill(picture.begin() + 54, picture.end(), std::uint8_t{0x77});
    home.Write("orvantis/mapimage.bmp", picture);
    Process program(kProgram, {"NOINITSCREEN"}, On(server));
    const unsigned long window = server.WaitForWindow("Orvantis", kPatience);
    EXPECT_TRUE(WaitUntil([&] {
        const XServer::Picture seen = server.Look(window);
        return std::count(seen.pixels.begin(), seen.pixels.end(), 0x777777U) > 100000;
    }));
    server.Close(window);
    EXPECT_EQ(program.Wait(kPatience), 0);
}

TEST_F(Window, AnUnsavedChartIsAskedAboutAtTheEnd) {
    XServer server;
    ASSERT_TRUE(server.Runs()) << "no virtual X server";
    HandOverChart();
    Process program(kProgram, {"3"}, On(server));
    const unsigned long window = server.WaitForWindow("Orvantis: ", kPatience);
    ASSERT_NE(window, 0U) << program.Complaints();
    server.Close(window);
    unsigned long box = server.WaitForWindow("Chart Not Saved", kPatience);
    ASSERT_NE(box, 0U);
    server.Close(box);  // as Cancel
    EXPECT_TRUE(WaitUntil([&] { return server.Windows("Chart Not Saved").empty(); }));
    EXPECT_EQ(program.Wait(1), -1) << "it stays";
    EXPECT_EQ(Ini(), "") << "nothing has been written";

    program.Terminate();
    EXPECT_EQ(program.Wait(kPatience), 0) << "a signal asks nothing";
    EXPECT_TRUE(Ini().starts_with("[Orvantis]\r\nWindowState=")) << Ini();
    EXPECT_EQ(program.Complaints(), "");
}

TEST_F(Window, ASignalDuringTheQuestionEndsTheProgramAndKeepsItsKeys) {
    XServer server;
    ASSERT_TRUE(server.Runs()) << "no virtual X server";
    HandOverChart();
    Process program(kProgram, {"3"}, On(server));
    const unsigned long window = server.WaitForWindow("Orvantis: ", kPatience);
    ASSERT_NE(window, 0U) << program.Complaints();
    server.Close(window);
    ASSERT_NE(server.WaitForWindow("Chart Not Saved", kPatience), 0U);
    program.Terminate();
    EXPECT_EQ(program.Wait(kPatience), 0);
    EXPECT_NE(Ini(), "");
}

// ---- a session by mouse and keys ----

// The map within a window, pixels of the window, by the sunken frame around it.
struct MapPlace {
    int left = 0;
    int top = 0;
    int width = 0;
    int height = 0;
};

std::uint32_t PixelAt(const XServer::Picture& picture, int x, int y) {
    if (x < 0 || y < 0 || x >= picture.width || y >= picture.height) return 0xFFFFFFFF;
    const auto row = static_cast<std::size_t>(y) * static_cast<std::size_t>(picture.width);
    return picture.pixels[row + static_cast<std::size_t>(x)];
}

MapPlace FindMap(const XServer::Picture& picture) {
    constexpr std::uint32_t kShadow = 0x808080;
    for (int x = 0; x < picture.width; ++x) {
        int run = 0;
        for (int y = 0; y < picture.height; ++y) {
            run = PixelAt(picture, x, y) == kShadow ? run + 1 : 0;
            if (run < 200 || PixelAt(picture, x, y + 1) == kShadow) continue;
            const int top = y - run + 1;
            int last = x;
            while (PixelAt(picture, last + 1, top) == kShadow) ++last;
            return {x + 1, top + 1, last - x - 1, y - top - 2};
        }
    }
    return {};
}

// Of the places of the map that are plain land or sea both now and, at another position, before:
// the share that is the same.
double Agreement(const MapPlace& map, const XServer::Picture& now, const XServer::Picture& before,
                 const std::function<std::pair<double, double>(int, int)>& positionBefore) {
    const std::uint32_t land = OnDisplay(LandColour());
    const std::uint32_t sea = OnDisplay(SeaColour());
    const auto isPlain = [&](std::uint32_t pixel) { return pixel == land || pixel == sea; };
    int known = 0;
    int same = 0;
    for (int y = map.top + 3; y < map.top + map.height - 3; y += 3) {
        for (int x = map.left + 3; x < map.left + map.width - 3; x += 3) {
            const auto [column, row] = positionBefore(x, y);
            if (column < map.left + 1 || column > map.left + map.width - 1) continue;
            if (row < map.top + 1 || row > map.top + map.height - 1) continue;
            const std::uint32_t a = PixelAt(now, x, y);
            const std::uint32_t b = PixelAt(before, static_cast<int>(std::lround(column)),
                                            static_cast<int>(std::lround(row)));
            if (!isPlain(a) || !isPlain(b)) continue;
            ++known;
            if (a == b) ++same;
        }
    }
    return known < 500 ? 0 : static_cast<double>(same) / known;
}

// A spot with nothing but land around it. The pointer is kept away from lines, which would name
// themselves.
std::pair<int, int> FindLand(const MapPlace& map, const XServer::Picture& picture) {
    constexpr int kAround = 6;
    const std::uint32_t land = OnDisplay(LandColour());
    for (int y = map.top + kAround; y < map.top + map.height - kAround; ++y) {
        for (int x = map.left + kAround; x < map.left + map.width - kAround; ++x) {
            bool bare = true;
            for (int dy = -kAround; dy <= kAround && bare; ++dy) {
                for (int dx = -kAround; dx <= kAround && bare; ++dx) {
                    bare = PixelAt(picture, x + dx, y + dy) == land;
                }
            }
            if (bare) return {x, y};
        }
    }
    return {0, 0};
}

class WindowSession : public Window {
  protected:
    void SetUp() override {
        ASSERT_TRUE(server.Runs()) << "no virtual X server";
        WriteIni("WindowState=0\r\nLeft=750\r\nTop=600\r\nWidth=13500\r\nHeight=9000\r\n");
        const std::string folder = home.File("orvantis/Userdata");
        std::filesystem::create_directories(folder);
        std::filesystem::copy_file(kSample, folder + "/s.cht");
        std::filesystem::copy_file(DataFile("world.ovm"), folder + "/world.ovm");
        program = std::make_unique<Process>(kProgram, std::vector<std::string>{"NOINITSCREEN"},
                                            On(server));
        window = server.WaitForWindow("Orvantis", kPatience);
        ASSERT_NE(window, 0U) << program->Complaints();
        ScriptedShell shell;
        session.shell = &shell;
        LoadSettings(DataFile("default.ovs"), kFalse);
        session.shell = nullptr;
        ASSERT_TRUE(WaitUntil([&] { return LandOf(server.Look(window)).share > 0.1; }));
        server.TakeFocus(window);
    }
    void End() {
        server.Close(window);
        EXPECT_EQ(program->Wait(kPatience), 0);
        EXPECT_EQ(program->Complaints(), "");
    }

    static void Breathe() { std::this_thread::sleep_for(std::chrono::milliseconds(150)); }

    // The picture once it has stopped changing, without the pointer's own traces on the map.
    XServer::Picture Settled() {
        server.Point(window, 400, 3);
        XServer::Picture last = server.Look(window);
        for (int i = 0; i < 100; ++i) {
            Breathe();
            XServer::Picture next = server.Look(window);
            if (next.pixels == last.pixels) return next;
            last = std::move(next);
        }
        return last;
    }
    // The window of a dialog, with the keyboard. The program's own window may have the same title.
    unsigned long Dialog(const std::string& title) {
        unsigned long dialog = 0;
        WaitUntil([&] {
            for (const unsigned long found : server.Windows(title)) {
                if (found != window) dialog = found;
            }
            return dialog != 0;
        });
        if (dialog != 0) server.TakeFocus(dialog);
        Breathe();
        return dialog;
    }
    void Answer(const std::string& title, const std::string& key) {
        ASSERT_NE(Dialog(title), 0U) << title;
        server.Key(key);
        EXPECT_TRUE(WaitUntil([&] {
            const auto left = server.Windows(title);
            return std::all_of(left.begin(), left.end(),
                               [&](unsigned long found) { return found == window; });
        })) << title;
        server.TakeFocus(window);
    }
    // Of the modes' entries the fourth can't be chosen yet: the arrow keys pass over it.
    void ChooseMode(int mode) {
        server.Key("o", "Alt_L");
        Breathe();
        server.Key("m");
        Breathe();
        for (int i = 0; i < (mode > 3 ? mode - 1 : mode); ++i) server.Key("Down");
        server.Key("Return");
        Breathe();
    }
    void Drag(int x0, int y0, int x1, int y1) {
        server.Point(window, x0, y0);
        server.Button(1, true);
        server.Point(window, (x0 + x1) / 2, (y0 + y1) / 2);
        server.Point(window, x1, y1);
    }
    void OpenTheChart() {
        server.Key("o", "Control_L");
        ASSERT_NE(Dialog("Select Chart File to Open"), 0U);
        for (const char* key : {"s", "period", "c", "h", "t", "Return"}) server.Key(key);
        ASSERT_NE(Dialog("Select Chart from "), 0U);
        server.Key("Home");
        server.Key("Return");
        ASSERT_TRUE(WaitUntil([&] { return server.Title(window).starts_with("Orvantis: "); }));
        server.TakeFocus(window);
    }

    XServer server;
    std::unique_ptr<Process> program;
    unsigned long window = 0;
};

TEST_F(WindowSession, AChartIsOpenedByKeysAndItsLineTypesAreSwitched) {
    const XServer::Picture bare = Settled();
    OpenTheChart();
    if (HasFatalFailure()) return;
    const XServer::Picture lines = Settled();
    EXPECT_NE(lines.pixels, bare.pixels) << "lines are on the map";
    const auto switchFirstType = [this] {
        server.Key("l", "Control_L");
        ASSERT_NE(Dialog("Select Lines"), 0U);
        server.Key("Tab");
        server.Key("space");
        Answer("Select Lines", "Return");
    };
    switchFirstType();
    const XServer::Picture fewer = Settled();
    EXPECT_NE(fewer.pixels, lines.pixels);
    switchFirstType();
    EXPECT_EQ(Settled().pixels, lines.pixels);
    End();
}

TEST_F(WindowSession, TheMouseMeasuresZoomsMovesAndTheKeysGoBack) {
    const XServer::Picture world = Settled();
    const MapPlace map = FindMap(world);
    ASSERT_GT(map.width, 600);
    ASSERT_GT(map.height, 300);
    const auto at = [&](double across, double down) {
        return std::pair(map.left + static_cast<int>(across * map.width),
                         map.top + static_cast<int>(down * map.height));
    };

    // Measuring: an inverted line, which goes with the button.
    const auto [x0, y0] = at(0.3, 0.5);
    const auto [x1, y1] = at(0.6, 0.5);
    Drag(x0, y0, x1, y1);
    const int middle = (x0 + x1) / 2;
    EXPECT_TRUE(WaitUntil([&, y = y0] {
        const XServer::Picture now = server.Look(window);
        return PixelAt(now, middle, y) == (PixelAt(world, middle, y) ^ 0xFFFFFF) &&
               PixelAt(now, middle, y + 2) == PixelAt(world, middle, y + 2);
    }));
    server.Button(1, false);
    EXPECT_EQ(Settled().pixels, world.pixels);

    // Zooming: a quarter of the world becomes the whole map.
    ChooseMode(1);
    const XServer::Picture ready = Settled();
    const auto [boxX, boxY] = at(0.5, 0.2);
    const int boxWidth = map.width / 4;
    Drag(boxX, boxY, boxX + boxWidth, boxY + map.height / 2);
    server.Button(1, false);
    ASSERT_TRUE(WaitUntil([&] {
        return Agreement(map, server.Look(window), world,
                         [](int x, int y) { return std::pair<double, double>(x, y); }) < 0.9;
    }));
    const XServer::Picture zoomed = Settled();
    const double scale = static_cast<double>(boxWidth) / map.width;
    EXPECT_GT(Agreement(map, zoomed, world,
                        [&, left = boxX, top = boxY](int x, int y) {
                            return std::pair(left + (x - map.left) * scale,
                                             top + (y - map.top) * scale);
                        }),
              0.93);

    // Moving: the map goes with the pointer.
    ChooseMode(2);
    constexpr int kRight = 120;
    constexpr int kDown = -40;
    const auto [fromX, fromY] = at(0.4, 0.6);
    Drag(fromX, fromY, fromX + kRight, fromY + kDown);
    server.Button(1, false);
    const auto followed = [&](const XServer::Picture& now) {
        return Agreement(map, now, zoomed, [](int x, int y) {
            return std::pair<double, double>(x - kRight, y - kDown);
        });
    };
    EXPECT_TRUE(WaitUntil([&] { return followed(server.Look(window)) > 0.97; }));
    EXPECT_GT(followed(Settled()), 0.97);

    // And back, view by view. The row above shows another mode by now.
    const auto mapIs = [&](const XServer::Picture& wanted) {
        return Agreement(map, Settled(), wanted,
                         [](int x, int y) { return std::pair<double, double>(x, y); });
    };
    server.Key("F5");
    EXPECT_EQ(mapIs(zoomed), 1);
    server.Key("F5");
    EXPECT_EQ(mapIs(ready), 1);
    End();
}

TEST_F(WindowSession, TheMouseFillsAndPullsRulersAndThePictureIsCopied) {
    OpenTheChart();
    if (HasFatalFailure()) return;
    const XServer::Picture first = Settled();
    const MapPlace map = FindMap(first);
    ASSERT_GT(map.width, 600);

    // A fill under lines asks first.
    ChooseMode(4);
    const auto [x, y] = FindLand(map, first);
    ASSERT_GT(x, 0);
    server.Point(window, x, y);
    server.Button(1, true);
    server.Button(1, false);
    Answer("Orvantis", "Return");
    EXPECT_TRUE(WaitUntil([&, column = x, row = y] {
        return PixelAt(server.Look(window), column, row) == OnDisplay(SeaColour());
    }));

    // With the grid on, a ruler is pulled off the meridian of Greenwich.
    server.Key("F6");
    ASSERT_NE(Dialog("Select Map Options"), 0U);
    server.Key("g", "Alt_L");
    Answer("Select Map Options", "Return");
    Settled();
    ChooseMode(5);
    const int greenwich = map.left + map.width / 2;
    const int row = map.top + map.height * 41 / 90;  // 8 north
    Drag(greenwich, row, greenwich + 45, row);
    server.Button(1, false);
    const XServer::Picture ruled = Settled();
    int strange = 0;
    for (int line = map.top; line <= map.top + map.height; ++line) {
        const std::uint32_t pixel = PixelAt(ruled, greenwich + 45, line);
        if (pixel != 0x000000 && pixel != 0xFFFFFF) ++strange;
    }
    EXPECT_EQ(strange, 0) << "a ruler is white, and dotted black";

    server.Key("c", "Alt_L");
    Breathe();
    server.Key("c");  // the colours of the points
    server.Key("c");
    server.Key("Return");
    Answer("Confirmation", "Return");

    // Another projection: the corners of the map's place show the surround.
    server.Key("F6");
    ASSERT_NE(Dialog("Select Map Options"), 0U);
    server.Key("p", "Alt_L");
    server.Key("Down");
    server.Key("Down");
    Answer("Select Map Options", "Return");
    EXPECT_TRUE(WaitUntil([&] {
        const XServer::Picture now = server.Look(window);
        return PixelAt(now, map.left + 5, map.top + 5) == 0xC0C0C0 &&
               PixelAt(now, map.left + map.width - 5, map.top + map.height - 5) == 0xC0C0C0;
    }));
    EXPECT_GT(LandOf(Settled()).share, 0.02);
    End();
}

TEST_F(Window, AMissingDatabaseIsToldAndEndsTheProgram) {
    XServer server;
    ASSERT_TRUE(server.Runs()) << "no virtual X server";
    // A folder of that name keeps the shipped database from being put there.
    std::filesystem::create_directories(home.File("orvantis/level1.pnt"));
    Process program(kProgram, {"NOINITSCREEN"}, On(server));
    const unsigned long box = server.WaitForWindow("Orvantis", kPatience);
    ASSERT_NE(box, 0U);
    server.PressReturn(box);
    EXPECT_EQ(program.Wait(kPatience), 1);
    EXPECT_EQ(Ini(), "");
}

}  // namespace
}  // namespace orvantis

// The whole start with a main window, and the small routines that go with it.
#include "session/driver.h"

#include "map/map_document.h"
#include "map/plot.h"
#include "map/point_database.h"
#include "session/resources.h"
#include "session/session_state.h"
#include "session/start_steps.h"
#include "text/strings.h"

namespace orvantis {

void (*switchAstroClock)(Flag on, Flag redraw) = nullptr;
void (*saveCurrentChart)() = nullptr;
bool (*saveStoredImage)(std::string_view path, const Image& image) = nullptr;
bool (*loadStoredImage)(std::string_view path, Image& image) = nullptr;

namespace {

constexpr std::size_t kTitleWidth = 255;  // characters of a window's title that are looked at

void ShowStartScreen(const SessionCall& call) {
    if (StartScreenIsWanted(call.commandLine, !call.chartPath.empty())) {
        session.shell->ShowStartScreen("Version " + session.VersionText);
        session.shell->DoEvents();
    } else {
        session.SplashDone = kTrue;
    }
}

void ShowMainWindow() {
    Shell& shell = *session.shell;
    while (session.SplashDone == 0) shell.DoEvents();
    shell.HideStartScreen();
    shell.DoEvents();
    shell.ShowMainWindow();
    shell.DoEvents();
    shell.UnloadStartScreen();
}

// The first picture. Without a chart the program starts with the AstroClock, which does the plot.
void PlotFirstPicture(const SessionCall& call, Flag redraw) {
    if (session.ChartNumber == 0 && switchAstroClock != nullptr) {
        switchAstroClock(kTrue, redraw);
        return;
    }
    if (session.ChartNumber != 0 && call.chartPath.empty()) LoadExchangeChart(session.ChartNumber);
    if (session.picture != nullptr) PlotMap4(kFalse, *session.picture, redraw);
}

}  // namespace

SessionResult RunSession(const StartPaths& paths, const SessionCall& call, Shell& shell,
                         OpenOutcome& outcome) {
    outcome = {};
    EnterSession(shell);
    if (SecondCopyIsRefused()) return SessionResult::Ended;
    FindPaths(paths);
    LoadResourceLibrary(kLanguageOfSystem, "EN", "OV2");
    FindSibling();

    ShowStartScreen(call);
    session.ChartNumber = 0;
    StartEphemeris(paths.ephemeris);
    ReadPreferences();
    ObeyCommandLine(call.commandLine);
    if (DatabaseIsMissing()) return SessionResult::Ended;
    const bool rebuild = LevelsNeedRebuild();
    LoadStartSettings();
    if (!call.chartPath.empty()) {
        outcome.status = OpenChart(call.chartPath, call.chart, outcome.reason);
        if (outcome.status != ChartStatus::Ok) return SessionResult::NoChart;
    }

    ShowMainWindow();
    if (rebuild) RebuildLevels();
    // A database that can't be used has been told of; the map then has the lines that there are.
    LoadIndex();
    // Up to here the window may still have changed its size; the first picture is of this one.
    const Flag redraw = TakeStoredMap(shell.MapAreaSize());
    if (addRecentMap != nullptr) addRecentMap("");
    PlotFirstPicture(call, redraw);
    session.StartupDone = kTrue;
    return SessionResult::Ready;
}

void SplitWords(std::string_view text, std::span<std::string> words, std::int16_t& count,
                std::string_view separators) {
    text = Trim(text);
    count = 0;
    const auto store = [&](std::string_view word) {
        const std::size_t start = word.find_first_not_of(' ');
        words[static_cast<std::size_t>(count)] =
            start == std::string_view::npos ? "" : word.substr(start);
        ++count;
    };

    // The first character begins a word, whatever it is.
    std::size_t start = 0;
    bool open = true;
    for (std::size_t i = 1; i < text.size(); ++i) {
        if (static_cast<std::size_t>(count) >= words.size()) return;
        const bool separates = separators.find(text[i]) != std::string_view::npos;
        if (separates && open) store(text.substr(start, i - start));
        if (!separates && !open) start = i;
        open = !separates;
    }
    if (open && static_cast<std::size_t>(count) < words.size()) store(text.substr(start));
}

std::int64_t FindSessionWindow(std::string_view text) {
    const std::string wanted = UpperCase(text);
    for (const TopWindow& window : session.shell->TopLevelWindows()) {
        const std::string title = UpperCase(std::string_view(window.title).substr(0, kTitleWidth));
        if (!title.empty() && title.find(wanted) != std::string::npos) return window.handle;
    }
    return 0;
}

}  // namespace orvantis

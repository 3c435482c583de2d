// The desktop program: a session in a window.
#include <QApplication>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <vector>

#include "desktop/dialogs/forms.h"
#include "desktop/main_window.h"
#include "desktop/qt_shell.h"
#include "desktop/signals.h"
#include "desktop/window_options.h"
#include "raster/picture_file.h"
#include "raster/qt_gui.h"
#include "session/commands.h"
#include "session/driver.h"
#include "session/files.h"
#include "session/session_state.h"

namespace orvantis {

namespace {

constexpr int kDone = 0;
constexpr int kFailed = 1;
constexpr int kWrongCall = 2;
constexpr int kBadInput = 3;
constexpr int kNoDisplay = 4;

int Complain(int code, const std::string& text) {
    std::fprintf(stderr, "orvantis: %s\n", text.c_str());
    return code;
}

// Tells why the chart of the call can't be shown. Returns an exit code.
int ComplainOfChart(const WindowOptions& options, const OpenOutcome& outcome) {
    const std::string& path = options.openPath;
    switch (outcome.status) {
        case ChartStatus::NoFile:
            return Complain(kBadInput, FileExists(ProgramPath(path)) != 0
                                           ? path + ": can't be opened"
                                           : path + ": the file isn't there or can't be read");
        case ChartStatus::NotSupported:
            return Complain(kBadInput, path + ": not a chart file that can be read");
        case ChartStatus::NoSuchChart:
            return Complain(kBadInput,
                            path + ": has no chart " + std::to_string(options.openChart));
        case ChartStatus::BadRecord:
            return Complain(kBadInput, path + ": the chart's record can't be read (" +
                                           outcome.reason.description + ")");
        default:
            return Complain(kFailed, path + ": the chart can't be calculated");
    }
}

// The stored picture in the platform's way.
bool SaveStoredImage(std::string_view path, const Image& image) {
    return SaveImage(NativePath(path), image);
}

bool LoadStoredImage(std::string_view path, Image& image) {
    return LoadImage(NativePath(path), image);
}

// The session's life around the window's.
int RunWindow(const WindowOptions& options) {
    MainWindow window;
    QtShell shell(window);
    session.picture = &window.Picture();
    closeMainWindow = [] { QApplication::closeAllWindows(); };
    ConnectForms();
    saveStoredImage = SaveStoredImage;
    loadStoredImage = LoadStoredImage;

    const SessionCall call{options.commandLine, ProgramPath(options.openPath), options.openChart};
    OpenOutcome outcome;
    const SessionResult start = RunSession(SystemPaths(), call, shell, outcome);
    int result = kDone;
    if (start == SessionResult::Ended) result = kFailed;
    if (start == SessionResult::NoChart) result = ComplainOfChart(options, outcome);
    if (start == SessionResult::Ready) {
        if (!EndWasAsked()) result = QApplication::exec();
        // An end that was asked for from outside hasn't gone through the window.
        if (!window.HasEnded()) window.EndTheSession();
    }
    session.picture = nullptr;
    EndSession();
    return result;
}

}  // namespace

}  // namespace orvantis

int main(int argc, char** argv) {
    // Our own options come first: a call for help or a wrong one needs no display.
    const std::vector<std::string> words(argv + 1, argv + argc);
    const orvantis::WindowOptions options = orvantis::ReadWindowOptions(words);
    if (options.help) {
        std::fputs(orvantis::WindowHelp().data(), stdout);
        return orvantis::kDone;
    }
    if (!options.complaint.empty())
        return orvantis::Complain(orvantis::kWrongCall, options.complaint);

    orvantis::QuietQt();
    int ownCount = 1;
    // Qt aborts where no display answers, after it has told so.
    std::signal(SIGABRT, [](int) { std::_Exit(orvantis::kNoDisplay); });
    QApplication application(ownCount, argv);
    std::signal(SIGABRT, SIG_DFL);
    QApplication::setApplicationName(QStringLiteral("orvantis"));
    QApplication::setApplicationDisplayName(QString());
    orvantis::CloseOnSignals();
    return orvantis::RunWindow(options);
}

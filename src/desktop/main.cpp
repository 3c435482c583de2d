// The desktop program: a session in a window.
#include <QApplication>
#include <cstdio>
#include <string>
#include <vector>

#include "desktop/main_window.h"
#include "desktop/qt_shell.h"
#include "desktop/signals.h"
#include "desktop/window_options.h"
#include "map/map_document.h"
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

int Complain(int code, const std::string& text) {
    std::fprintf(stderr, "orvantis: %s\n", text.c_str());
    return code;
}

// Opens the chart that the call asks for. Returns an exit code.
int OpenAskedChart(const WindowOptions& options) {
    if (options.openPath.empty()) return kDone;
    const std::string path = ProgramPath(options.openPath);
    if (FileExists(path) == 0) {
        return Complain(kBadInput, options.openPath + ": the file isn't there or can't be read");
    }
    RunTimeError reason;
    switch (OpenChart(path, options.openChart, reason)) {
        case ChartStatus::Ok:
            return kDone;
        case ChartStatus::NoFile:
            return Complain(kBadInput, options.openPath + ": can't be opened");
        case ChartStatus::NotSupported:
            return Complain(kBadInput, options.openPath + ": not a chart file that can be read");
        case ChartStatus::NoSuchChart:
            return Complain(kBadInput, options.openPath + ": has no chart " +
                                           std::to_string(options.openChart));
        case ChartStatus::BadRecord:
            return Complain(kBadInput, options.openPath + ": the chart's record can't be read (" +
                                           reason.description + ")");
        case ChartStatus::Failed:
            break;
    }
    return Complain(kFailed, options.openPath + ": the chart can't be calculated");
}

// The session's life around the window's.
int RunWindow(const WindowOptions& options) {
    QtShell shell;
    StartSession(SystemPaths(), shell);
    MainWindow window;
    session.picture = &window.Picture();
    closeMainWindow = [] { QApplication::closeAllWindows(); };

    int result = LoadDatabase() != 0 ? kFailed : OpenAskedChart(options);
    if (result == kDone && !EndWasAsked()) {
        NewMap(kFalse);
        shell.SetTitle(Caption());
        shell.SetWindow(&window);
        window.show();
        window.RedrawMap();
        session.StartupDone = kTrue;
        if (!EndWasAsked()) result = QApplication::exec();
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
    QApplication application(ownCount, argv);
    QApplication::setApplicationName(QStringLiteral("orvantis"));
    QApplication::setApplicationDisplayName(QString());
    orvantis::CloseOnSignals();
    return orvantis::RunWindow(options);
}

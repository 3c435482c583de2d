#include "desktop/signals.h"

#include <QApplication>
#include <QSocketNotifier>
#include <array>
#include <csignal>
#include <sys/socket.h>
#include <unistd.h>

namespace orvantis {

namespace {

// A signal's handler may do next to nothing; it writes a byte, and the event loop reads it.
std::array<int, 2> ends = {-1, -1};

bool endAsked = false;

void OnSignal(int /*number*/) {
    const char byte = 1;
    [[maybe_unused]] const auto written = ::write(ends[0], &byte, 1);
}

}  // namespace

void CloseOnSignals() {
    if (::socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0, ends.data()) != 0) return;
    auto* notifier = new QSocketNotifier(ends[1], QSocketNotifier::Read, qApp);
    QObject::connect(notifier, &QSocketNotifier::activated, qApp, [] {
        char byte = 0;
        [[maybe_unused]] const auto taken = ::read(ends[1], &byte, 1);
        endAsked = true;
        QApplication::closeAllWindows();
        QCoreApplication::quit();
    });
    std::signal(SIGTERM, OnSignal);
    std::signal(SIGINT, OnSignal);
}

bool EndWasAsked() {
    return endAsked;
}

}  // namespace orvantis

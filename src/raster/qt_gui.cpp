#include "raster/qt_gui.h"

#include <QGuiApplication>
#include <cstdio>

#include "raster/image_surface.h"

namespace orvantis {

namespace {

void OnQtMessage(QtMsgType type, const QMessageLogContext& /*context*/, const QString& message) {
    if (type == QtFatalMsg) std::fprintf(stderr, "%s\n", qPrintable(message));
}

}  // namespace

QColor QtColour(Colour colour) {
    return QColor::fromRgb(PixelOf(colour));
}

void QuietQt() {
    qInstallMessageHandler(OnQtMessage);
}

void EnsureQtGui() {
    if (QCoreApplication::instance() != nullptr) return;
    QuietQt();

    // Qt keeps both the count and the words for as long as it lives, which is to the end of the
    // process: fonts may be in use until then.
    static int count = 3;
    static char program[] = "orvantis";
    static char option[] = "-platform";
    static char platform[] = "offscreen";
    static char* words[] = {program, option, platform, nullptr};
    static QGuiApplication* const application = new QGuiApplication(count, words);
    (void)application;
}

}  // namespace orvantis

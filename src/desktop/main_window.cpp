#include "desktop/main_window.h"

#include <QAction>
#include <QCloseEvent>
#include <QCoreApplication>
#include <QElapsedTimer>
#include <QEvent>
#include <QKeySequence>
#include <QMenu>
#include <QMenuBar>
#include <QWindow>

#include "map/plot.h"
#include "session/commands.h"
#include "session/driver.h"
#include "session/session_state.h"
#include "text/code_page.h"

namespace orvantis {

namespace {

constexpr int kShowPatienceMs = 500;  // for a window to come up on the display

QString TextOf(std::string_view bytes) {
    return QString::fromStdString(ToUtf8(bytes));
}

}  // namespace

MainWindow::MainWindow() : map_(new MapWidget(this)) {
    setCentralWidget(map_);
    map_->installEventFilter(this);
    resized_.setSingleShot(true);
    resized_.setInterval(0);
    connect(&resized_, &QTimer::timeout, this, [this] { RedrawMap(); });

    BuildMenus();
}

void MainWindow::BuildMenus() {
    QMenu* menu = nullptr;
    QString menuCaption;
    for (const Command& command : Commands()) {
        const QString caption = TextOf(command.menu);
        if (menu == nullptr || caption != menuCaption) menu = menuBar()->addMenu(caption);
        menuCaption = caption;
        QAction* action = menu->addAction(TextOf(command.caption), this, [&command] {
            if (session.StartupDone != 0) RunCommand(command);
        });
        action->setShortcut(QKeySequence(TextOf(command.shortcut)));
    }
}

bool MainWindow::eventFilter(QObject* watched, QEvent* event) {
    if (watched == map_ && event->type() == QEvent::Resize) {
        if (plotting_) wanted_ = true;
        if (!plotting_ && session.StartupDone != 0) resized_.start();
    }
    return QMainWindow::eventFilter(watched, event);
}

MainWindow::Place MainWindow::CurrentPlace() const {
    Place place;
    place.state = 0;
    if (isMinimized()) place.state = 1;
    const bool maximised = isVisible() ? isMaximized() : maximised_;
    if (maximised) place.state = 2;
    place.frame = maximised && isVisible() ? normalGeometry() : QRect(pos(), size());
    return place;
}

void MainWindow::PutInPlace(const Place& place) {
    maximised_ = place.state == 2;
    if (!maximised_) {
        move(place.frame.topLeft());
        resize(place.frame.size());
    }
}

void MainWindow::ShowInPlace() {
    maximised_ ? showMaximized() : show();
    // The first plot is to be of the size that the desktop gives the window.
    QElapsedTimer time;
    time.start();
    while (!windowHandle()->isExposed() && time.elapsed() < kShowPatienceMs) {
        QCoreApplication::processEvents(QEventLoop::AllEvents, 10);
    }
}

void MainWindow::BringToFront() {
    if (!isVisible()) return;
    if (isMinimized()) setWindowState(windowState() & ~Qt::WindowMinimized);
    raise();
    activateWindow();
}

bool MainWindow::EndTheSession() {
    if (ended_) return true;
    if (ending_) return false;  // the question is on the screen already
    ending_ = true;
    Flag cancel = kFalse;
    ExitSession(cancel);
    ending_ = false;
    ended_ = cancel == 0;
    return ended_;
}

void MainWindow::closeEvent(QCloseEvent* event) {
    // While the session starts or a plot runs it can't end; who asked asks again.
    const bool canEnd = session.StartupDone != 0 && !plotState.inProgress;
    event->setAccepted(canEnd && EndTheSession());
}

void MainWindow::RedrawMap() {
    // A plot may let events run; one that is asked for meanwhile follows it.
    if (plotting_) {
        wanted_ = true;
        return;
    }
    if (isMinimized()) return;
    plotting_ = true;
    resized_.stop();
    map_->FitPicture();
    if (map_->Surface().Size().width > 0 && map_->Surface().Size().height > 0) {
        PlotMap4(kFalse, map_->Surface(), kTrue);
    }
    map_->update();
    plotting_ = false;
    if (wanted_) resized_.start();
    wanted_ = false;
}

}  // namespace orvantis

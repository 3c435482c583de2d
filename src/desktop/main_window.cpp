#include "desktop/main_window.h"

#include <QCloseEvent>
#include <QCoreApplication>
#include <QElapsedTimer>
#include <QEvent>
#include <QVBoxLayout>
#include <QWindow>

#include "map/map_document.h"
#include "map/plot.h"
#include "session/commands.h"
#include "session/driver.h"
#include "session/ini_settings.h"
#include "session/mouse_modes.h"
#include "session/recent_maps.h"
#include "session/session_state.h"

namespace orvantis {

namespace {

constexpr int kShowPatienceMs = 500;  // for a window to come up on the display

// The window that the session's connection points serve.
MainWindow* current = nullptr;

}  // namespace

MainWindow::MainWindow() : map_(new MapWidget(this)), menus_(new Menus(*this)) {
    bar_ = new CommandBar(this, [this](const Command& command) {
        menus_->Run(command);
        bar_->Refresh();
    });
    LayOut();
    map_->installEventFilter(this);
    resized_.setSingleShot(true);
    resized_.setInterval(0);
    connect(&resized_, &QTimer::timeout, this, [this] { RedrawMap(); });
    map_->onMouseState = [this] { RefreshMouse(); };
    ConnectMarks();
}

MainWindow::~MainWindow() {
    if (current != this) return;
    current = nullptr;
    plotEnded = nullptr;
    refreshMenuMarks = nullptr;
    refreshMapMenus = nullptr;
    showRecentMaps = nullptr;
}

// The map takes all the room that the row above it leaves.
void MainWindow::LayOut() {
    auto* area = new QWidget(this);
    auto* rows = new QVBoxLayout(area);
    rows->setContentsMargins(0, 0, 0, 0);
    rows->setSpacing(0);
    rows->addWidget(bar_);
    rows->addWidget(map_, 1);
    setCentralWidget(area);
    map_->setFocus();  // its keys work from the start
}

void MainWindow::ConnectMarks() {
    current = this;
    refreshMenuMarks = [] {
        current->RefreshMarks();
        current->RedrawIfDue();
    };
    plotEnded = [] { current->RedrawIfDue(); };
    refreshMapMenus = [](std::int16_t) { current->RefreshMarks(); };
    showRecentMaps = [](const RecentMenu&) { current->RefreshMarks(); };
}

void MainWindow::RefreshMarks() {
    menus_->RefreshMarks();
    bar_->Refresh();
}

void MainWindow::changeEvent(QEvent* event) {
    if (event->type() == QEvent::WindowStateChange) {
        session.Minimised = isMinimized() ? kTrue : kFalse;
        RedrawIfDue();
    }
    QMainWindow::changeEvent(event);
}

bool MainWindow::eventFilter(QObject* watched, QEvent* event) {
    if (watched == map_ && event->type() == QEvent::Resize) {
        if (session.StartupDone != 0 || IsBusy()) AskForRedraw();
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
    // A screen of another scale needs a picture of other pixels.
    connect(windowHandle(), &QWindow::screenChanged, &resized_, [this] {
        if (session.StartupDone != 0) AskForRedraw();
    });
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

// A plot lets events run, as do the boxes and forms of a command; another picture under it would
// ruin its work.
bool MainWindow::IsBusy() const {
    return plotting_ || plotState.inProgress || CommandRuns();
}

void MainWindow::AskForRedraw() {
    wanted_ = true;
    RedrawIfDue();
}

void MainWindow::RedrawIfDue() {
    if (wanted_ && !IsBusy() && !isMinimized()) resized_.start();
}

void MainWindow::RedrawMap() {
    wanted_ = IsBusy() || isMinimized();
    if (wanted_) return;
    plotting_ = true;
    resized_.stop();
    map_->FitPicture();
    if (map_->Surface().Size().width > 0 && map_->Surface().Size().height > 0) {
        PlotMap4(kFalse, map_->Surface(), kTrue);
    }
    map_->update();
    plotting_ = false;
    RedrawIfDue();
}

}  // namespace orvantis

#include "desktop/main_window.h"

#include <QAction>
#include <QEvent>
#include <QKeySequence>
#include <QMenu>
#include <QMenuBar>
#include <QPaintEvent>
#include <QPainter>
#include <cmath>

#include "map/plot.h"
#include "session/commands.h"
#include "session/session_state.h"
#include "text/code_page.h"

namespace orvantis {

namespace {

constexpr double kDotsPerInch = 96;

QString TextOf(std::string_view bytes) {
    return QString::fromStdString(ToUtf8(bytes));
}

}  // namespace

MapWidget::MapWidget(QWidget* parent) : QWidget(parent), surface_(0, 0) {
    // Every pixel is painted by the widget itself; a background first would only flicker.
    setAttribute(Qt::WA_OpaquePaintEvent);
    surface_.onRefresh = [this] { update(); };
}

void MapWidget::FitPicture() {
    const double scale = devicePixelRatioF();
    const SurfaceSize size = surface_.Size();
    const int width = static_cast<int>(std::lround(this->width() * scale));
    const int height = static_cast<int>(std::lround(this->height() * scale));
    if (size.width != width || size.height != height) {
        surface_.Resize(width, height, kDotsPerInch * scale);
    }
}

void MapWidget::paintEvent(QPaintEvent* event) {
    QPainter painter(this);
    QImage picture = surface_.View();
    if (picture.isNull()) {
        painter.fillRect(event->rect(), palette().window());
        return;
    }
    picture.setDevicePixelRatio(devicePixelRatioF());

    // While the window is being resized the picture may be smaller than the widget.
    const QSize shown = picture.deviceIndependentSize().toSize();
    if (shown.width() < width() || shown.height() < height()) {
        painter.fillRect(event->rect(), palette().window());
    }
    painter.drawImage(0, 0, picture);
}

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
        QAction* action =
            menu->addAction(TextOf(command.caption), this, [&command] { RunCommand(command); });
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

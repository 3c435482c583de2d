#include "desktop/map_widget.h"

#include <QPaintEvent>
#include <QPainter>
#include <cmath>

namespace orvantis {

namespace {

constexpr double kDotsPerInch = 96;

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

}  // namespace orvantis

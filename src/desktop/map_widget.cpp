#include "desktop/map_widget.h"

#include <QCursor>
#include <QHelpEvent>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPaintEvent>
#include <QPainter>
#include <QToolTip>
#include <QWheelEvent>
#include <algorithm>
#include <cmath>

#include "map/projection.h"
#include "text/code_page.h"

namespace orvantis {

namespace {

constexpr double kDotsPerInch = 96;
constexpr int kCrossArm = 10;    // pixels of the picture
constexpr int kWheelStep = 120;  // eighths of a degree
constexpr int kTipReach = 4;     // logical pixels in which the pointer still rests

MapWidget* current = nullptr;  // that of the main window

void RefreshCurrent() {
    if (current != nullptr) current->RefreshOverlay();
}

// From pixels of the picture to the desktop's own, of which there are no parts.
int DesktopPixels(int pixels, double scale) {
    const int least = std::clamp(pixels, -1, 1);
    const int moved = static_cast<int>(std::lround(pixels / scale));
    return moved == 0 ? least : moved;
}

void MovePointerBy(int dx, int dy) {
    const double scale = current == nullptr ? 1 : current->devicePixelRatioF();
    QCursor::setPos(QCursor::pos() + QPoint(DesktopPixels(dx, scale), DesktopPixels(dy, scale)));
}

QRect BoxOf(const OverlayFigure& figure) {
    return QRect(QPoint(figure.x0, figure.y0), QPoint(figure.x1, figure.y1)).normalized();
}

// Shows on any background: white, and over it dotted black.
void DrawTwice(QPainter& painter, const std::vector<QLine>& lines) {
    QPen pen(Qt::white, 0);
    painter.setPen(pen);
    for (const QLine& line : lines) painter.drawLine(line);
    pen.setColor(Qt::black);
    pen.setStyle(Qt::DotLine);
    painter.setPen(pen);
    for (const QLine& line : lines) painter.drawLine(line);
}

void DrawInverted(QPainter& painter, const std::vector<QLine>& lines) {
    painter.setCompositionMode(QPainter::CompositionMode_Difference);
    painter.setPen(QPen(Qt::white, 0));
    for (const QLine& line : lines) painter.drawLine(line);
    painter.setCompositionMode(QPainter::CompositionMode_SourceOver);
}

// The map within its rectangle, moved; a map of the whole circle comes in again on the other side.
void DrawMovedMap(QPainter& painter, const QImage& picture, const OverlayFigure& figure) {
    const MapRect& rect = mapView.rect;
    const QRect map(rect.left, rect.top, rect.width + 1, rect.height + 1);
    painter.save();
    painter.setClipRect(map, Qt::IntersectClip);
    painter.fillRect(map, QColor(0xC0, 0xC0, 0xC0));
    const QPoint moved = map.topLeft() + QPoint(figure.x1 - figure.x0, figure.y1 - figure.y0);
    painter.drawImage(moved, picture, map);
    if (mapView.extent.spanLong >= 360) {
        painter.drawImage(moved - QPoint(rect.width, 0), picture, map);
        painter.drawImage(moved + QPoint(rect.width, 0), picture, map);
    }
    painter.restore();
}

}  // namespace

MapWidget::MapWidget(QWidget* parent) : QWidget(parent), surface_(0, 0) {
    // Every pixel is painted by the widget itself; a background first would only flicker.
    setAttribute(Qt::WA_OpaquePaintEvent);
    setMouseTracking(true);
    setFocusPolicy(Qt::StrongFocus);
    surface_.onRefresh = [this] { update(); };
    wheelTimer_.setSingleShot(true);
    wheelTimer_.setInterval(0);
    connect(&wheelTimer_, &QTimer::timeout, this, [this] { TurnWheel(); });
    current = this;
    refreshOverlay = RefreshCurrent;
    movePointer = MovePointerBy;
}

MapWidget::~MapWidget() {
    if (current != this) return;
    current = nullptr;
    refreshOverlay = nullptr;
    movePointer = nullptr;
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

// ---- painting ----

// What a figure covers, in the widget's own coordinates.
QRegion MapWidget::RegionOf(const OverlayFigure& figure) const {
    const auto shown = [scale = devicePixelRatioF()](const QRect& box) {
        return QRectF(box.x() / scale, box.y() / scale, box.width() / scale, box.height() / scale)
            .toAlignedRect()
            .adjusted(-1, -1, 1, 1);
    };
    const QRect box = BoxOf(figure);
    switch (figure.kind) {
        case OverlayFigure::Kind::Cross:
            return shown(QRect(figure.x0 - kCrossArm, figure.y0 - kCrossArm, 2 * kCrossArm + 1,
                               2 * kCrossArm + 1));
        case OverlayFigure::Kind::ZoomRectangle:
            return QRegion(shown(QRect(box.topLeft(), box.topRight()))) +
                   shown(QRect(box.bottomLeft(), box.bottomRight())) +
                   shown(QRect(box.topLeft(), box.bottomLeft())) +
                   shown(QRect(box.topRight(), box.bottomRight()));
        case OverlayFigure::Kind::MovedMap:
            return rect();
        default:
            return shown(box);
    }
}

void MapWidget::RefreshOverlay() {
    std::vector<OverlayFigure> figures = Overlay();
    if (figures != shown_) {
        QRegion changed;
        for (const OverlayFigure& figure : shown_) changed += RegionOf(figure);
        for (const OverlayFigure& figure : figures) changed += RegionOf(figure);
        shown_ = std::move(figures);
        update(changed);
    }
    if (onMouseState) onMouseState();
}

// In pixels of the picture.
void MapWidget::PaintFigures(QPainter& painter) const {
    painter.scale(1 / devicePixelRatioF(), 1 / devicePixelRatioF());
    for (const OverlayFigure& figure : shown_) {
        const QPoint from(figure.x0, figure.y0);
        const QPoint to(figure.x1, figure.y1);
        const QRect box = BoxOf(figure);
        switch (figure.kind) {
            case OverlayFigure::Kind::InvertedLine:
                DrawInverted(painter, {QLine(from, to)});
                break;
            case OverlayFigure::Kind::Cross:
                DrawInverted(painter,
                             {QLine(from - QPoint(kCrossArm, 0), from + QPoint(kCrossArm, 0)),
                              QLine(from - QPoint(0, kCrossArm), from + QPoint(0, kCrossArm))});
                break;
            case OverlayFigure::Kind::ZoomRectangle:
                DrawTwice(painter, {QLine(box.topLeft(), box.topRight()),
                                    QLine(box.topRight(), box.bottomRight()),
                                    QLine(box.bottomRight(), box.bottomLeft()),
                                    QLine(box.bottomLeft(), box.topLeft())});
                break;
            case OverlayFigure::Kind::RulerLine:
                DrawTwice(painter, {QLine(from, to)});
                break;
            case OverlayFigure::Kind::MovedMap:
                break;  // painted in the picture's place
        }
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

    // Rulers go with the picture to which they belong.
    shown_ = Overlay();
    for (const OverlayFigure& figure : shown_) {
        if (figure.kind != OverlayFigure::Kind::MovedMap) continue;
        painter.save();
        painter.scale(1 / devicePixelRatioF(), 1 / devicePixelRatioF());
        picture.setDevicePixelRatio(1);
        DrawMovedMap(painter, picture, figure);
        painter.restore();
    }
    PaintFigures(painter);
}

// ---- mouse and keys ----

// The pixel of the picture under a position of the widget.
QPointF MapWidget::PictureSpot(const QPointF& position) const {
    const double scale = devicePixelRatioF();
    return {std::floor(position.x() * scale), std::floor(position.y() * scale)};
}

void MapWidget::mousePressEvent(QMouseEvent* event) {
    const QPointF spot = PictureSpot(event->position());
    if (event->button() != Qt::LeftButton && event->button() != Qt::RightButton) return;
    QToolTip::hideText();
    MouseDown(static_cast<float>(spot.x()), static_cast<float>(spot.y()),
              event->button() == Qt::RightButton);
}

void MapWidget::mouseMoveEvent(QMouseEvent* event) {
    const QPointF spot = PictureSpot(event->position());
    MouseMove(static_cast<float>(spot.x()), static_cast<float>(spot.y()),
              event->buttons().testFlag(Qt::LeftButton),
              event->buttons().testFlag(Qt::RightButton));
}

void MapWidget::mouseReleaseEvent(QMouseEvent* event) {
    const QPointF spot = PictureSpot(event->position());
    if (event->button() != Qt::LeftButton && event->button() != Qt::RightButton) return;
    MouseUp(static_cast<float>(spot.x()), static_cast<float>(spot.y()),
            event->button() == Qt::RightButton);
}

void MapWidget::mouseDoubleClickEvent(QMouseEvent* event) {
    const QPointF spot = PictureSpot(event->position());
    if (event->button() != Qt::LeftButton) return;
    MouseDoubleClick(static_cast<float>(spot.x()), static_cast<float>(spot.y()));
}

void MapWidget::leaveEvent(QEvent* event) {
    MouseLeave();
    QWidget::leaveEvent(event);
}

// Touchpads send many small turns; what is left of a step waits for the next one in its direction.
void MapWidget::wheelEvent(QWheelEvent* event) {
    const int turn = event->angleDelta().y();
    const bool turnedBack = (turn > 0 && wheelAngle_ < 0) || (turn < 0 && wheelAngle_ > 0);
    if (turnedBack) wheelAngle_ -= wheelAngle_ % kWheelStep;
    wheelAngle_ += turn;
    wheelSpot_ = event->position();
    if (std::abs(wheelAngle_) >= kWheelStep) wheelTimer_.start();
    event->accept();
}

void MapWidget::TurnWheel() {
    const int steps = wheelAngle_ / kWheelStep;
    wheelAngle_ -= steps * kWheelStep;
    const QPointF spot = PictureSpot(wheelSpot_);
    QToolTip::hideText();
    WheelZoom(static_cast<float>(spot.x()), static_cast<float>(spot.y()), steps);
}

void MapWidget::keyPressEvent(QKeyEvent* event) {
    const bool shift = event->modifiers().testFlag(Qt::ShiftModifier);
    switch (event->key()) {
        case Qt::Key_Left:
            return ArrowKey(-1, 0, shift);
        case Qt::Key_Right:
            return ArrowKey(1, 0, shift);
        case Qt::Key_Up:
            return ArrowKey(0, -1, shift);
        case Qt::Key_Down:
            return ArrowKey(0, 1, shift);
        case Qt::Key_PageUp:
            return PageUpKey();
        case Qt::Key_Escape:
            return CancelDrag();
        default:
            QWidget::keyPressEvent(event);
    }
}

// Names the lines where the pointer rests.
bool MapWidget::ShowLineNames(const QPoint& position, const QPoint& onScreen) {
    const QPointF spot = PictureSpot(position);
    const std::string names =
        DragInProgress() ? ""
                         : LinesNear(static_cast<float>(spot.x()), static_cast<float>(spot.y()));
    if (names.empty()) {
        QToolTip::hideText();
        return false;
    }
    QString text = QString::fromStdString(ToUtf8(names)).toHtmlEscaped();
    text.replace(QStringLiteral("\r\n"), QStringLiteral("<br>"));
    const QRect here(position - QPoint(kTipReach, kTipReach), QSize(2 * kTipReach, 2 * kTipReach));
    QToolTip::showText(onScreen, QStringLiteral("<p style='white-space:pre'>") + text, this, here);
    return true;
}

bool MapWidget::event(QEvent* event) {
    if (event->type() != QEvent::ToolTip) return QWidget::event(event);
    auto* help = static_cast<QHelpEvent*>(event);
    if (!ShowLineNames(help->pos(), help->globalPos())) event->ignore();
    return true;
}

}  // namespace orvantis

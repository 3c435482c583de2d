// The map area of the main window: shows the picture, hands mouse and keys over to the session, and
// paints what lies over the map.
#pragma once

#include <QImage>
#include <QRegion>
#include <QTimer>
#include <QWidget>
#include <functional>
#include <vector>

#include "raster/image_surface.h"
#include "session/mouse_modes.h"

namespace orvantis {

/// The map area. It shows the surface's picture pixel by pixel, whatever the scale of the display.
class MapWidget : public QWidget {
  public:
    /// Fills the connection points of the mouse modes until it is gone.
    explicit MapWidget(QWidget* parent);
    ~MapWidget() override;
    MapWidget(const MapWidget&) = delete;
    MapWidget& operator=(const MapWidget&) = delete;

    ImageSurface& Surface() { return surface_; }

    /// Brings the picture to the widget's size in pixels of the display.
    void FitPicture();

    /// Repaints what has changed of the overlay, and calls onMouseState.
    void RefreshOverlay();

    /// Called when the position text or the mode may have changed. May be empty.
    std::function<void()> onMouseState;

    QSize sizeHint() const override { return {1000, 640}; }
    QSize minimumSizeHint() const override { return {200, 120}; }

  protected:
    void paintEvent(QPaintEvent* event) override;
    bool event(QEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void leaveEvent(QEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

  private:
    QPointF PictureSpot(const QPointF& position) const;
    QRegion RegionOf(const OverlayFigure& figure) const;
    void PaintFigures(QPainter& painter) const;
    bool ShowLineNames(const QPoint& position, const QPoint& onScreen);
    void TurnWheel();

    ImageSurface surface_;
    std::vector<OverlayFigure> shown_;  // the overlay as it was handed to the last repaint
    QTimer wheelTimer_;                 // several turns of the wheel in a row make one zoom
    int wheelAngle_ = 0;                // turned so far, eighths of a degree
    QPointF wheelSpot_;
};

}  // namespace orvantis

// The main window: the map, and the menus above it.
#pragma once

#include <QMainWindow>
#include <QTimer>
#include <QWidget>

#include "raster/image_surface.h"

namespace orvantis {

/// The map area. It shows the surface's picture pixel by pixel, whatever the scale of the display.
class MapWidget : public QWidget {
  public:
    explicit MapWidget(QWidget* parent);

    ImageSurface& Surface() { return surface_; }

    /// Brings the picture to the widget's size in pixels of the display.
    void FitPicture();

    QSize sizeHint() const override { return {1000, 640}; }
    QSize minimumSizeHint() const override { return {200, 120}; }

  protected:
    void paintEvent(QPaintEvent* event) override;

  private:
    ImageSurface surface_;
};

class MainWindow : public QMainWindow {
  public:
    MainWindow();

    /// The surface of the map, which session.picture points to while the window stands.
    ImageSurface& Picture() { return map_->Surface(); }

    /// Draws the map anew in the size of the moment.
    void RedrawMap();

  protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

  private:
    void BuildMenus();

    MapWidget* map_;
    QTimer resized_;  // many changes of size in a row lead to one redraw
    bool plotting_ = false;
    bool wanted_ = false;  // a redraw that was asked for during a plot follows it
};

}  // namespace orvantis

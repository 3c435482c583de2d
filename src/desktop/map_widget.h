// The map area of the main window.
#pragma once

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

}  // namespace orvantis

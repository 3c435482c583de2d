// The main window: the map, and the menus above it.
#pragma once

#include <QMainWindow>
#include <QRect>
#include <QTimer>
#include <cstdint>

#include "desktop/map_widget.h"

namespace orvantis {

class MainWindow : public QMainWindow {
  public:
    MainWindow();

    /// The surface of the map, which session.picture points to while the window stands.
    ImageSurface& Picture() { return map_->Surface(); }

    MapWidget* MapArea() { return map_; }

    /// Draws the map anew in the size of the moment.
    void RedrawMap();

    /// Where the window stands on the screen, in logical pixels.
    struct Place {
        std::int16_t state = 2;  ///< 0 normal, 1 minimised, 2 maximised
        /// The frame's upper left corner and the size within the frame. Of a maximised window:
        /// where it stood before, or would stand, its corner being the one within the frame.
        QRect frame;
    };

    /// Before the window was ever placed it counts as maximised.
    Place CurrentPlace() const;

    /// Where ShowInPlace is to show the window, which is still hidden. A maximised one takes no
    /// heed of the frame.
    void PutInPlace(const Place& place);

    /// Shows the window and waits until it is on the display.
    void ShowInPlace();

    /// Restores the window if it is minimised, and makes it the active one.
    void BringToFront();

    /// True once the session has been ended by closing the window.
    bool HasEnded() const { return ended_; }

    /// Ends the session unless the user chooses to stay; true if it has ended.
    bool EndTheSession();

  protected:
    void closeEvent(QCloseEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

  private:
    void BuildMenus();

    MapWidget* map_;
    QTimer resized_;  // many changes of size in a row lead to one redraw
    bool plotting_ = false;
    bool wanted_ = false;    // a redraw that was asked for during a plot follows it
    bool maximised_ = true;  // how the window is to be shown
    bool ending_ = false;
    bool ended_ = false;
};

}  // namespace orvantis

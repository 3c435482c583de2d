// The main window: the menus, the row of buttons, and the map.
#pragma once

#include <QMainWindow>
#include <QRect>
#include <QTimer>
#include <cstdint>

#include "desktop/command_bar.h"
#include "desktop/map_widget.h"
#include "desktop/menus.h"

namespace orvantis {

class MainWindow : public QMainWindow {
  public:
    MainWindow();
    ~MainWindow() override;
    MainWindow(const MainWindow&) = delete;
    MainWindow& operator=(const MainWindow&) = delete;

    /// The surface of the map, which session.picture points to while the window stands.
    ImageSurface& Picture() { return map_->Surface(); }

    MapWidget* MapArea() { return map_; }

    /// Brings menus, buttons and ribbon in step with the session.
    void RefreshMarks();

    /// The position text and the mouse mode alone.
    void RefreshMouse() { bar_->RefreshMouse(); }

    /// Draws the map anew in the size of the moment. While a plot or a command runs, or the window
    /// is minimised, the redraw waits until that is over.
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
    void changeEvent(QEvent* event) override;
    void closeEvent(QCloseEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

  private:
    void LayOut();
    void ConnectMarks();
    bool IsBusy() const;
    void AskForRedraw();
    void RedrawIfDue();

    MapWidget* map_;
    Menus* menus_;
    CommandBar* bar_;
    QTimer resized_;  // many changes of size in a row lead to one redraw
    bool plotting_ = false;
    bool wanted_ = false;    // a redraw that was asked for is still to be made
    bool maximised_ = true;  // how the window is to be shown
    bool ending_ = false;
    bool ended_ = false;
};

}  // namespace orvantis

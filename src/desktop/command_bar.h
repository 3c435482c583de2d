// The row above the map: the buttons of the commands used most, the ribbon of the mouse modes and
// the text of the position.
#pragma once

#include <QLabel>
#include <QWidget>
#include <array>
#include <functional>
#include <vector>

#include "session/commands.h"
#include "session/mouse_modes.h"

class QToolButton;

namespace orvantis {

class CommandBar : public QWidget {
  public:
    /// `run` runs the command of a button.
    CommandBar(QWidget* parent, const std::function<void(const Command&)>& run);

    /// Brings buttons, ribbon and position text in step with the session.
    void Refresh();

    /// The position text and the mouse mode alone, as often as the mouse moves.
    void RefreshMouse();

  protected:
    void changeEvent(QEvent* event) override;

  private:
    struct Button {
        const Command* command = nullptr;
        QToolButton* button = nullptr;
    };

    void AddButtons(const std::function<void(const Command&)>& run);
    void AddRibbon(const std::function<void(const Command&)>& run);
    void DrawIcons();

    std::vector<Button> buttons_;
    std::array<QToolButton*, mouse_mode::kModes> modes_{};
    QLabel* position_;
};

}  // namespace orvantis

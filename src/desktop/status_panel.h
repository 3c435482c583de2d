// The panel that tells what a longer piece of work is and how far it has got, in the middle of the
// map area.
#pragma once

#include <QFrame>
#include <QLabel>
#include <QProgressBar>

namespace orvantis {

class StatusPanel : public QFrame {
  public:
    explicit StatusPanel(QWidget* area);

    /// Shows a text and a share of work done in percent, in the middle of the area.
    void Tell(const QString& text, int percent);

  private:
    QLabel* text_;
    QProgressBar* bar_;
};

}  // namespace orvantis

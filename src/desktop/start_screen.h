// The start screen: a picture, the program's name and its version, for a second or until a key is
// pressed or it is clicked.
#pragma once

#include <QTimer>
#include <QWidget>

namespace orvantis {

class StartScreen : public QWidget {
  public:
    explicit StartScreen(const QString& versionText);

  protected:
    void paintEvent(QPaintEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void closeEvent(QCloseEvent* event) override;

  private:
    QTimer timer_;
};

}  // namespace orvantis

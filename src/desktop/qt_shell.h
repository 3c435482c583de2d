// The shell on a Qt desktop.
#pragma once

#include <QPointer>
#include <QProgressDialog>
#include <QWidget>
#include <optional>
#include <string>
#include <string_view>

#include "surface/shell.h"

namespace orvantis {

class QtShell : public Shell {
  public:
    /// The main window, which boxes and dialogs stand before. Until there is one they stand alone,
    /// and a title is kept for it.
    void SetWindow(QWidget* window);

    BoxAnswer MessageBox(std::string_view text, std::string_view title, BoxButtons buttons,
                         BoxIcon icon) override;
    std::optional<std::string> ChooseFile(std::string_view title, std::string_view filter,
                                          bool forSaving) override;
    std::optional<Colour> ChooseColour(std::string_view title, Colour colour) override;
    void SetTitle(std::string_view title) override;
    void SetPointer(Pointer pointer) override;
    void ShowProgress(std::string_view text, std::int16_t percent) override;
    void DoEvents() override;
    LocalTime Now() override;

  private:
    QPointer<QWidget> window_;
    QPointer<QProgressDialog> progress_;
    QString title_ = QStringLiteral("Orvantis");
    bool hourglass_ = false;
};

}  // namespace orvantis

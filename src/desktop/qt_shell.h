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
    bool PreviousInstance() override;
    std::vector<TopWindow> TopLevelWindows() override;
    void ActivateWindow(std::int64_t handle) override;
    void ShowStartScreen(std::string_view versionText) override;
    void RefreshStartScreen() override;
    void HideStartScreen() override;
    void UnloadStartScreen() override;
    void ShowMainWindow() override;
    SurfaceSize MapAreaSize() override;
    WindowPlace MainWindowPlace() override;
    void PlaceMainWindow(const WindowPlace& place) override;
    WindowPlace ScreenExtent() override;
    std::int32_t ScreenColours() override;
    void SetClockTimer(std::int32_t interval, bool enabled) override;
    std::string RegionalText(std::string_view key) override;
    std::string LanguageAbbreviation() override;
    LocalTime Now() override;

  private:
    QPointer<QWidget> window_;
    QPointer<QProgressDialog> progress_;
    QString title_ = QStringLiteral("Orvantis");
    bool hourglass_ = false;
};

}  // namespace orvantis

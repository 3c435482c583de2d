// The shell on a Qt desktop.
#pragma once

#include <QPointer>
#include <QTimer>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "desktop/main_window.h"
#include "desktop/other_copies.h"
#include "desktop/start_screen.h"
#include "desktop/status_panel.h"
#include "surface/shell.h"

namespace orvantis {

class QtShell : public Shell {
  public:
    /// `window` is the main window, still hidden. It must outlive the shell.
    explicit QtShell(MainWindow& window);

    BoxAnswer MessageBox(std::string_view text, std::string_view title, BoxButtons buttons,
                         BoxIcon icon) override;
    std::optional<std::string> ChooseFile(std::string_view title, std::string_view filter,
                                          bool forSaving) override;
    std::optional<Colour> ChooseColour(std::string_view title, Colour colour) override;
    std::optional<Font> ChooseFont(const Font& font) override;
    std::optional<std::string> InputBox(std::string_view prompt, std::string_view title,
                                        std::string_view text) override;
    std::optional<std::int32_t> ChooseItem(std::string_view title,
                                           const std::vector<std::string>& lines) override;
    void CopyToClipboard(const Image& image) override;
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
    QWidget* Front() const;

    MainWindow& window_;
    OtherCopies copies_;
    std::unique_ptr<StartScreen> startScreen_;
    QPointer<StatusPanel> panel_;  // lives in the map area
    QTimer clock_;
    bool hourglass_ = false;
    QString folder_;  // in which a file was chosen last
};

}  // namespace orvantis

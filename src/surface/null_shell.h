// The shell of a program without a desktop: nothing is shown, every choice is cancelled, every
// question answered with the choice that changes nothing. Front ends without a window override
// what they can say.
#pragma once

#include "surface/shell.h"

namespace orvantis {

class NullShell : public Shell {
  public:
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
};

}  // namespace orvantis

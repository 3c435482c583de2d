#include "surface/null_shell.h"

namespace orvantis {

BoxAnswer NullShell::MessageBox(std::string_view /*text*/, std::string_view /*title*/,
                                BoxButtons buttons, BoxIcon /*icon*/) {
    switch (buttons) {
        case BoxButtons::OkCancel:
        case BoxButtons::YesNoCancel:
        case BoxButtons::RetryCancel:
            return BoxAnswer::Cancel;
        case BoxButtons::YesNo:
            return BoxAnswer::No;
        default:
            return BoxAnswer::Ok;
    }
}

std::optional<std::string> NullShell::ChooseFile(std::string_view /*title*/,
                                                 std::string_view /*filter*/, bool /*forSaving*/) {
    return std::nullopt;
}

std::optional<Colour> NullShell::ChooseColour(std::string_view /*title*/, Colour /*colour*/) {
    return std::nullopt;
}

std::optional<Font> NullShell::ChooseFont(const Font& /*font*/) {
    return std::nullopt;
}

std::optional<std::string> NullShell::InputBox(std::string_view /*prompt*/,
                                               std::string_view /*title*/,
                                               std::string_view /*text*/) {
    return std::nullopt;
}

std::optional<std::int32_t> NullShell::ChooseItem(std::string_view /*title*/,
                                                  const std::vector<std::string>& /*lines*/) {
    return std::nullopt;
}

void NullShell::CopyToClipboard(const Image& /*image*/) {}

void NullShell::SetTitle(std::string_view /*title*/) {}

void NullShell::SetPointer(Pointer /*pointer*/) {}

void NullShell::ShowProgress(std::string_view /*text*/, std::int16_t /*percent*/) {}

void NullShell::DoEvents() {}

bool NullShell::PreviousInstance() {
    return false;
}

std::vector<TopWindow> NullShell::TopLevelWindows() {
    return {};
}

void NullShell::ActivateWindow(std::int64_t /*handle*/) {}

void NullShell::ShowStartScreen(std::string_view /*versionText*/) {}

void NullShell::RefreshStartScreen() {}

void NullShell::HideStartScreen() {}

void NullShell::UnloadStartScreen() {}

void NullShell::ShowMainWindow() {}

SurfaceSize NullShell::MapAreaSize() {
    return {};
}

WindowPlace NullShell::MainWindowPlace() {
    return {};
}

void NullShell::PlaceMainWindow(const WindowPlace& /*place*/) {}

WindowPlace NullShell::ScreenExtent() {
    return {};
}

std::int32_t NullShell::ScreenColours() {
    return 0x1000000;
}

void NullShell::SetClockTimer(std::int32_t /*interval*/, bool /*enabled*/) {}

std::string NullShell::RegionalText(std::string_view /*key*/) {
    return "";
}

std::string NullShell::LanguageAbbreviation() {
    return "EN";
}

LocalTime NullShell::Now() {
    return {};
}

}  // namespace orvantis

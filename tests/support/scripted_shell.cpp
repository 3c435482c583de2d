#include "support/scripted_shell.h"

#include <array>

#include "session/session_state.h"

namespace orvantis {

namespace {

std::string Escaped(std::string_view text, std::string_view lineBreak) {
    std::string result;
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (text.substr(i, 2) == "\r\n") {
            result += lineBreak;
            ++i;
        } else {
            result += text[i];
        }
    }
    return result;
}

constexpr std::array<std::string_view, 5> kButtonNames = {"Ok", "OkCancel", "YesNo", "YesNoCancel",
                                                          "RetryCancel"};
constexpr std::array<std::string_view, 5> kIconNames = {"None", "Information", "Exclamation",
                                                        "Question", "Error"};

// What a box answers when nothing is queued for it.
BoxAnswer AnswerByItself(BoxButtons buttons) {
    switch (buttons) {
        case BoxButtons::YesNo:
        case BoxButtons::YesNoCancel:
            return BoxAnswer::Yes;
        case BoxButtons::RetryCancel:
            return BoxAnswer::Cancel;  // an endless retry would hang a test
        default:
            return BoxAnswer::Ok;
    }
}

// What a box answers when the user refuses.
BoxAnswer Refusal(BoxButtons buttons) {
    switch (buttons) {
        case BoxButtons::Ok:
            return BoxAnswer::Ok;
        case BoxButtons::YesNo:
            return BoxAnswer::No;
        default:
            return BoxAnswer::Cancel;
    }
}

// Takes the next answer off a queue; `otherwise` if it is empty.
template <typename Answer>
Answer Take(std::deque<Answer>& answers, const Answer& otherwise) {
    if (answers.empty()) return otherwise;
    Answer answer = answers.front();
    answers.pop_front();
    return answer;
}

}  // namespace

bool ScriptedShell::IsCancelled() {
    return ++questions == cancelCall;
}

BoxAnswer ScriptedShell::MessageBox(std::string_view text, std::string_view title,
                                    BoxButtons buttons, BoxIcon icon) {
    log.push_back("MessageBox|" + std::string(title) + "|" + Escaped(text, "\\r\\n") + "|" +
                  std::string(kButtonNames[static_cast<std::size_t>(buttons)]) + "|" +
                  std::string(kIconNames[static_cast<std::size_t>(icon)]));
    boxes.push_back(std::string(title) + ": " + Escaped(text, " / "));
    if (whileAsking) whileAsking();
    const BoxAnswer answer = Take(boxAnswers, AnswerByItself(buttons));
    return IsCancelled() ? Refusal(buttons) : answer;
}

std::optional<std::string> ScriptedShell::ChooseFile(std::string_view title,
                                                     std::string_view filter, bool forSaving) {
    log.push_back("ChooseFile|" + std::string(title) + "|" + std::string(filter) + "|" +
                  (forSaving ? "save" : "open"));
    const std::optional<std::string> answer = Take(fileAnswers, {});
    return IsCancelled() ? std::nullopt : answer;
}

std::optional<Colour> ScriptedShell::ChooseColour(std::string_view title, Colour colour) {
    log.push_back("ChooseColour|" + std::string(title) + "|" + std::to_string(colour));
    const std::optional<Colour> answer = Take(colourAnswers, {});
    return IsCancelled() ? std::nullopt : answer;
}

std::optional<Font> ScriptedShell::ChooseFont(const Font& font) {
    log.push_back("ChooseFont|" + font.name + "|" + std::to_string(font.size) +
                  (font.bold ? "|bold" : "") + (font.italic ? "|italic" : ""));
    const std::optional<Font> answer = Take(fontAnswers, {});
    return IsCancelled() ? std::nullopt : answer;
}

std::optional<std::string> ScriptedShell::InputBox(std::string_view prompt, std::string_view title,
                                                   std::string_view text) {
    log.push_back("InputBox|" + std::string(title) + "|" + std::string(prompt) + "|" +
                  std::string(text));
    const std::optional<std::string> answer = Take(textAnswers, {});
    return IsCancelled() ? std::nullopt : answer;
}

std::optional<std::int32_t> ScriptedShell::ChooseItem(std::string_view title,
                                                      const std::vector<std::string>& lines) {
    std::string entry = "ChooseItem|" + std::string(title);
    for (const std::string& line : lines) entry += "|" + line;
    log.push_back(entry);
    if (whileChoosing) whileChoosing();
    const std::optional<std::int32_t> answer = Take(itemAnswers, {});
    return IsCancelled() ? std::nullopt : answer;
}

void ScriptedShell::CopyToClipboard(const Image& image) {
    log.push_back("CopyToClipboard|" + std::to_string(image.width) + "|" +
                  std::to_string(image.height));
    clipboard = image;
}

void ScriptedShell::SetTitle(std::string_view title) {
    log.push_back("SetTitle|" + std::string(title));
}

void ScriptedShell::SetPointer(Pointer pointer) {
    log.push_back("SetPointer|" + std::to_string(static_cast<int>(pointer)));
}

void ScriptedShell::ShowProgress(std::string_view text, std::int16_t percent) {
    ++progressCalls;
    progress.push_back(std::to_string(percent) + "|" + std::string(text));
    if (onProgress) onProgress(text, percent);
}

void ScriptedShell::DoEvents() {
    log.emplace_back("DoEvents");
    if (--eventsToSplashEnd <= 0) session.SplashDone = kTrue;
}

bool ScriptedShell::PreviousInstance() {
    return previousInstance;
}

std::vector<TopWindow> ScriptedShell::TopLevelWindows() {
    return windows;
}

void ScriptedShell::ActivateWindow(std::int64_t handle) {
    log.push_back("ActivateWindow|" + std::to_string(handle));
}

void ScriptedShell::ShowStartScreen(std::string_view versionText) {
    log.push_back("ShowStartScreen|" + std::string(versionText));
}

void ScriptedShell::RefreshStartScreen() {
    log.emplace_back("RefreshStartScreen");
}

void ScriptedShell::HideStartScreen() {
    log.emplace_back("HideStartScreen");
}

void ScriptedShell::UnloadStartScreen() {
    log.emplace_back("UnloadStartScreen");
}

void ScriptedShell::ShowMainWindow() {
    log.emplace_back("ShowMainWindow");
}

SurfaceSize ScriptedShell::MapAreaSize() {
    log.emplace_back("MapAreaSize");
    if (fitPicture) fitPicture(mapArea);
    return mapArea;
}

WindowPlace ScriptedShell::MainWindowPlace() {
    return place;
}

void ScriptedShell::PlaceMainWindow(const WindowPlace& wanted) {
    log.push_back("PlaceMainWindow|" + std::to_string(wanted.state) + "|" +
                  std::to_string(wanted.left) + "|" + std::to_string(wanted.top) + "|" +
                  std::to_string(wanted.width) + "|" + std::to_string(wanted.height));
    place = wanted;
}

WindowPlace ScriptedShell::ScreenExtent() {
    return screen;
}

std::int32_t ScriptedShell::ScreenColours() {
    return colours;
}

void ScriptedShell::SetClockTimer(std::int32_t interval, bool enabled) {
    log.push_back("SetClockTimer|" + std::to_string(interval) + (enabled ? "|on" : "|off"));
}

std::string ScriptedShell::RegionalText(std::string_view key) {
    for (const auto& [name, text] : regional) {
        if (name == key) return text;
    }
    return "";
}

std::string ScriptedShell::LanguageAbbreviation() {
    return language;
}

LocalTime ScriptedShell::Now() {
    return now;
}

}  // namespace orvantis

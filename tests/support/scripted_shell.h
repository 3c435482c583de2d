// A shell for tests: answers from a queue, and a log of every call word for word.
#pragma once

#include <deque>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "surface/shell.h"

namespace orvantis {

class ScriptedShell : public Shell {
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

    std::deque<BoxAnswer> boxAnswers;                     ///< next answers; empty: Ok, or the first
                                                          ///< button that isn't Cancel
    std::deque<std::optional<std::string>> fileAnswers;   ///< empty: cancelled
    std::deque<std::optional<Colour>> colourAnswers;      ///< empty: cancelled
    std::deque<std::optional<Font>> fontAnswers;          ///< empty: cancelled
    std::deque<std::optional<std::string>> textAnswers;   ///< of InputBox; empty: cancelled
    std::deque<std::optional<std::int32_t>> itemAnswers;  ///< of ChooseItem; empty: cancelled
    LocalTime now;
    bool previousInstance = false;
    std::vector<TopWindow> windows;  ///< what TopLevelWindows gives
    SurfaceSize mapArea{800, 600};
    WindowPlace place;                          ///< the main window's
    WindowPlace screen{0, 0, 0, 28800, 16200};  ///< 1920 by 1080 pixels
    std::int32_t colours = 0x1000000;
    std::vector<std::pair<std::string, std::string>> regional;  ///< key and text
    std::string language = "ENG";
    int eventsToSplashEnd = 1;  ///< DoEvents calls after which the start screen has had its time

    /// The n-th question (message box or choice, counted from 1) is cancelled, whatever the queues
    /// hold for it: a box answers Cancel, No where that is its only refusal, and Ok where it has no
    /// other button. 0: none.
    int cancelCall = 0;
    int questions = 0;  ///< questions so far

    /// One line a call: "MessageBox|title|text|buttons|icon" and the like; CRLF as "\r\n" escaped.
    std::vector<std::string> log;
    /// Message boxes alone, as "title: text" with CRLF turned into " / ".
    std::vector<std::string> boxes;
    Image clipboard;                    ///< what CopyToClipboard got last
    int progressCalls = 0;              ///< ShowProgress is counted, and kept by itself
    std::vector<std::string> progress;  ///< one entry a call: "percent|text"
    std::function<void(std::string_view text, std::int16_t percent)> onProgress;  ///< may be empty
    std::function<void()> whileAsking;    ///< called while a MessageBox is open; may be empty
    std::function<void()> whileChoosing;  ///< called while ChooseItem is open; may be empty
    std::function<void(SurfaceSize area)> fitPicture;  ///< called by MapAreaSize; may be empty

  private:
    bool IsCancelled();
};

}  // namespace orvantis

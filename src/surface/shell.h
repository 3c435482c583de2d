// The shell: what the program asks of the desktop around it. Every operation is one that a user
// sees or answers, or one that tests have to fix: the clock, the folders, the locale.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "surface/drawing_surface.h"
#include "surface/values.h"

namespace orvantis {

enum class BoxButtons { Ok, OkCancel, YesNo, YesNoCancel, RetryCancel };
enum class BoxIcon { None, Information, Exclamation, Question, Error };
enum class BoxAnswer { Ok, Cancel, Yes, No, Retry, Abort, Ignore };

enum class Pointer { Default, Hourglass, Cross, Move };

/// A moment of the system's clock in local civil time.
struct LocalTime {
    std::int16_t year = 2000;
    std::int16_t month = 1;
    std::int16_t day = 1;
    std::int16_t hour = 0;
    std::int16_t minute = 0;
    std::int16_t second = 0;
};

/// A top-level window of this desktop, of any program.
struct TopWindow {
    std::int64_t handle = 0;  ///< above 0
    std::string title;        ///< bytes of code page 1252
};

/// Where the main window stands. Lengths in twips, 1440 to the inch, 15 to a pixel at 96 dots.
struct WindowPlace {
    std::int16_t state = 0;  ///< 0 normal, 1 minimised, 2 maximised
    std::int32_t left = 0;
    std::int32_t top = 0;
    std::int32_t width = 0;
    std::int32_t height = 0;
};

class Shell {
  public:
    virtual ~Shell() = default;

    /// Shows a modal box. Text and title are bytes of code page 1252, lines joined by CRLF.
    virtual BoxAnswer MessageBox(std::string_view text, std::string_view title, BoxButtons buttons,
                                 BoxIcon icon) = 0;

    /// Asks for a file. `filter` is a pattern such as "*.ovm". `forSaving`: it needn't be there;
    /// one that is may be chosen without a further question. No value: cancelled.
    virtual std::optional<std::string> ChooseFile(std::string_view title, std::string_view filter,
                                                  bool forSaving) = 0;

    /// Asks for a colour, starting from `colour`. No value: cancelled.
    virtual std::optional<Colour> ChooseColour(std::string_view title, Colour colour) = 0;

    /// Asks for a font, starting from `font`. No value: cancelled.
    virtual std::optional<Font> ChooseFont(const Font& font) = 0;

    /// Asks for a line of text, starting from `text`. No value: cancelled.
    virtual std::optional<std::string> InputBox(std::string_view prompt, std::string_view title,
                                                std::string_view text) = 0;

    /// Asks for one of the lines of a list, bytes of code page 1252. Its number, from 1; 0: the
    /// list was left by its "OK" without a choice. No value: cancelled.
    virtual std::optional<std::int32_t> ChooseItem(std::string_view title,
                                                   const std::vector<std::string>& lines) = 0;

    /// Puts a picture on the clipboard.
    virtual void CopyToClipboard(const Image& image) = 0;

    /// Sets the title of the main window.
    virtual void SetTitle(std::string_view title) = 0;

    /// Cross and Move are the map area's own pointer from then on. Hourglass lies over all pointers
    /// until Default takes it away.
    virtual void SetPointer(Pointer pointer) = 0;

    /// Shows the status panel with a text and a share of work done in percent; an empty text takes
    /// the panel down.
    virtual void ShowProgress(std::string_view text, std::int16_t percent) = 0;

    /// Lets waiting events run.
    virtual void DoEvents() = 0;

    /// True if another copy of this program runs on this desktop.
    virtual bool PreviousInstance() = 0;

    /// The top-level windows that can be looked up by title, front one first: at least those of
    /// other copies of this program.
    virtual std::vector<TopWindow> TopLevelWindows() = 0;

    /// Restores a window of TopLevelWindows if it is minimised, and makes it the active one.
    virtual void ActivateWindow(std::int64_t handle) = 0;

    /// Shows the start screen, with the version's text on it. From then on its timer (1000 ms), a
    /// key press or a click on it sets session.SplashDone while events are let run.
    virtual void ShowStartScreen(std::string_view versionText) = 0;
    virtual void RefreshStartScreen() = 0;
    virtual void HideStartScreen() = 0;
    virtual void UnloadStartScreen() = 0;

    /// Shows the main window, not modal. Before that it exists and can be placed, but is hidden.
    virtual void ShowMainWindow() = 0;

    /// Size of the map area in pixels; the main picture has been brought to it.
    virtual SurfaceSize MapAreaSize() = 0;

    /// The main window's place on the screen, in twips, and its state; of a maximised one the place
    /// that it would have restored.
    virtual WindowPlace MainWindowPlace() = 0;

    /// Moves the main window, or maximises it (then only the state counts).
    virtual void PlaceMainWindow(const WindowPlace& place) = 0;

    /// Size of the screen in twips; left, top and state are 0.
    virtual WindowPlace ScreenExtent() = 0;

    /// Number of colours that the map area's display shows at a time; 0x1000000 on true colour.
    virtual std::int32_t ScreenColours() = 0;

    /// Sets the clock timer's interval in milliseconds; it runs only while `enabled`.
    virtual void SetClockTimer(std::int32_t interval, bool enabled) = 0;

    /// The user's regional choices as the texts of the keys "iDate" (0 month first, 1 day first, 2
    /// year first) and "iTime" (0 the 12 hour clock, 1 the 24 hour clock). "" for any other key.
    virtual std::string RegionalText(std::string_view key) = 0;

    /// Abbreviation of the user's language, such as "EN": its letters of ISO 639-1 in capitals.
    virtual std::string LanguageAbbreviation() = 0;

    /// Present moment by the system's clock.
    virtual LocalTime Now() = 0;
};

}  // namespace orvantis

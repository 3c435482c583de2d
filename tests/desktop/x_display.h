// A display of its own for tests of windows, and what a user sees and does on it.
#pragma once

#include <cstdint>
#include <string>
#include <sys/types.h>
#include <vector>

namespace orvantis {

/// A virtual X server. It ends with the object.
class XServer {
  public:
    XServer();
    ~XServer();
    XServer(const XServer&) = delete;
    XServer& operator=(const XServer&) = delete;

    /// False if there is no such server on this system.
    bool Runs() const { return display_ != nullptr; }
    /// Name of the display, for the variable DISPLAY.
    std::string Name() const { return name_; }

    /// Waits until a window shows whose title begins so. 0 if none comes within the time.
    unsigned long WaitForWindow(const std::string& titleStart, int seconds);
    /// The windows that show and whose titles begin so, from the bottom to the top.
    std::vector<unsigned long> Windows(const std::string& titleStart);
    std::string Title(unsigned long window);

    /// What a window shows: 0xRRGGBB row by row.
    struct Picture {
        int width = 0;
        int height = 0;
        std::vector<std::uint32_t> pixels;
    };
    Picture Look(unsigned long window);

    /// Where a window stands on the display.
    struct Place {
        int left = 0;
        int top = 0;
        int width = 0;
        int height = 0;
        bool operator==(const Place&) const = default;
    };
    Place PlaceOf(unsigned long window);
    void MoveTo(unsigned long window, const Place& place);
    void Resize(unsigned long window, int width, int height);
    /// Presses and releases the key Return, or the left button in the middle of the window.
    void PressReturn(unsigned long window);
    void Click(unsigned long window);
    /// The real pointer and keys, which go to whatever is there: the pointer to a position within
    /// the window, the left (1), right (3) or wheel's (4, 5) button, a key by its name in X, such
    /// as "F5", with another one such as "Control_L" held if asked for, and the keyboard's focus.
    void Point(unsigned long window, int x, int y);
    void Button(unsigned number, bool down);
    void Key(const std::string& name, const std::string& held = {});
    void TakeFocus(unsigned long window);
    /// Puts a window above all others.
    void Raise(unsigned long window);
    /// Asks the window to close, as its close button does.
    void Close(unsigned long window);

  private:
    void SendButton(unsigned long window, bool down);
    void SendKey(unsigned long window, bool down);

    pid_t server_ = -1;
    std::string name_;
    void* display_ = nullptr;  // the connection; Xlib's own header would bring its macros along
};

}  // namespace orvantis

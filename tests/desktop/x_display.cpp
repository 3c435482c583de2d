#include "desktop/x_display.h"

#include <X11/Xatom.h>
#include <X11/Xlib.h>
#include <X11/Xutil.h>
#include <X11/extensions/XTest.h>
#include <X11/keysym.h>
#include <array>
#include <chrono>
#include <csignal>
#include <fcntl.h>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>

namespace orvantis {

namespace {

// A window may go between being found and being looked at; that is no reason to end the tests.
int IgnoreError(Display* /*display*/, XErrorEvent* /*event*/) {
    return 0;
}

Display* Connection(void* display) {
    return static_cast<Display*>(display);
}

void Pause() {
    std::this_thread::sleep_for(std::chrono::milliseconds(20));
}

}  // namespace

XServer::XServer() {
    std::array<int, 2> answer{};
    if (::pipe(answer.data()) != 0) return;
    server_ = ::fork();
    if (server_ == 0) {
        ::close(answer[0]);
        const int quiet = ::open("/dev/null", O_WRONLY);
        ::dup2(quiet, 2);
        const std::string where = std::to_string(answer[1]);
        ::execlp("Xvfb", "Xvfb", "-displayfd", where.c_str(), "-screen", "0", "1400x900x24",
                 "-nolisten", "tcp", nullptr);
        ::_exit(127);
    }
    ::close(answer[1]);

    // The server writes the number of its display once it listens, and nothing if it can't start.
    char digit = 0;
    while (::read(answer[0], &digit, 1) == 1 && digit != '\n') name_ += digit;
    ::close(answer[0]);
    if (name_.empty()) return;
    name_.insert(0, 1, ':');
    XSetErrorHandler(IgnoreError);
    display_ = XOpenDisplay(name_.c_str());
}

XServer::~XServer() {
    if (display_ != nullptr) XCloseDisplay(Connection(display_));
    if (server_ > 0) {
        ::kill(server_, SIGTERM);
        ::waitpid(server_, nullptr, 0);
    }
}

std::string XServer::Title(unsigned long window) {
    const Atom property = XInternAtom(Connection(display_), "_NET_WM_NAME", False);
    const Atom utf8 = XInternAtom(Connection(display_), "UTF8_STRING", False);
    Atom type = 0;
    int format = 0;
    unsigned long count = 0;
    unsigned long rest = 0;
    unsigned char* text = nullptr;
    XGetWindowProperty(Connection(display_), window, property, 0, 1000, False, utf8, &type, &format,
                       &count, &rest, &text);
    if (text == nullptr) return "";
    std::string title(reinterpret_cast<char*>(text), count);
    XFree(text);
    return title;
}

std::vector<unsigned long> XServer::Windows(const std::string& titleStart) {
    std::vector<unsigned long> found;
    Window root = 0;
    Window parent = 0;
    Window* windows = nullptr;
    unsigned int count = 0;
    XQueryTree(Connection(display_), DefaultRootWindow(Connection(display_)), &root, &parent,
               &windows, &count);
    for (unsigned int i = 0; i < count; ++i) {
        XWindowAttributes attributes{};
        if (XGetWindowAttributes(Connection(display_), windows[i], &attributes) != 0 &&
            attributes.map_state == IsViewable && Title(windows[i]).starts_with(titleStart)) {
            found.push_back(windows[i]);
        }
    }
    if (windows != nullptr) XFree(windows);
    return found;
}

unsigned long XServer::WaitForWindow(const std::string& titleStart, int seconds) {
    const auto end = std::chrono::steady_clock::now() + std::chrono::seconds(seconds);
    while (std::chrono::steady_clock::now() < end) {
        const std::vector<unsigned long> found = Windows(titleStart);
        if (!found.empty()) return found.back();
        Pause();
    }
    return 0;
}

XServer::Picture XServer::Look(unsigned long window) {
    Picture picture;
    XWindowAttributes attributes{};
    if (XGetWindowAttributes(Connection(display_), window, &attributes) == 0) return picture;
    XImage* image = XGetImage(Connection(display_), window, 0, 0, attributes.width,
                              attributes.height, AllPlanes, ZPixmap);
    if (image == nullptr) return picture;
    picture.width = image->width;
    picture.height = image->height;
    for (int y = 0; y < image->height; ++y) {
        for (int x = 0; x < image->width; ++x) {
            picture.pixels.push_back(static_cast<std::uint32_t>(XGetPixel(image, x, y)) & 0xFFFFFF);
        }
    }
    XDestroyImage(image);
    return picture;
}

void XServer::Resize(unsigned long window, int width, int height) {
    XResizeWindow(Connection(display_), window, static_cast<unsigned>(width),
                  static_cast<unsigned>(height));
    XSync(Connection(display_), False);
}

XServer::Place XServer::PlaceOf(unsigned long window) {
    XWindowAttributes attributes{};
    if (XGetWindowAttributes(Connection(display_), window, &attributes) == 0) return {};
    return {attributes.x, attributes.y, attributes.width, attributes.height};
}

void XServer::MoveTo(unsigned long window, const Place& place) {
    XMoveResizeWindow(Connection(display_), window, place.left, place.top,
                      static_cast<unsigned>(place.width), static_cast<unsigned>(place.height));
    XSync(Connection(display_), False);
}

void XServer::Raise(unsigned long window) {
    XRaiseWindow(Connection(display_), window);
    XSync(Connection(display_), False);
}

void XServer::SendKey(unsigned long window, bool down) {
    XEvent event{};
    event.xkey.type = down ? KeyPress : KeyRelease;
    event.xkey.window = window;
    event.xkey.root = DefaultRootWindow(Connection(display_));
    event.xkey.same_screen = True;
    event.xkey.keycode = XKeysymToKeycode(Connection(display_), XK_Return);
    XSendEvent(Connection(display_), window, False, down ? KeyPressMask : KeyReleaseMask, &event);
}

void XServer::PressReturn(unsigned long window) {
    SendKey(window, true);
    SendKey(window, false);
    XSync(Connection(display_), False);
}

void XServer::SendButton(unsigned long window, bool down) {
    const Place place = PlaceOf(window);
    XEvent event{};
    event.xbutton.type = down ? ButtonPress : ButtonRelease;
    event.xbutton.window = window;
    event.xbutton.root = DefaultRootWindow(Connection(display_));
    event.xbutton.same_screen = True;
    event.xbutton.x = place.width / 2;
    event.xbutton.y = place.height / 2;
    event.xbutton.x_root = place.left + event.xbutton.x;
    event.xbutton.y_root = place.top + event.xbutton.y;
    event.xbutton.button = Button1;
    event.xbutton.state = down ? 0 : Button1Mask;
    XSendEvent(Connection(display_), window, False, down ? ButtonPressMask : ButtonReleaseMask,
               &event);
}

void XServer::Click(unsigned long window) {
    SendButton(window, true);
    SendButton(window, false);
    XSync(Connection(display_), False);
}

void XServer::Point(unsigned long window, int x, int y) {
    const Place place = PlaceOf(window);
    XTestFakeMotionEvent(Connection(display_), -1, place.left + x, place.top + y, CurrentTime);
    XSync(Connection(display_), False);
}

void XServer::Button(unsigned number, bool down) {
    XTestFakeButtonEvent(Connection(display_), number, down ? True : False, CurrentTime);
    XSync(Connection(display_), False);
}

void XServer::Key(const std::string& name, const std::string& held) {
    Display* display = Connection(display_);
    const auto code = [display](const std::string& key) {
        return XKeysymToKeycode(display, XStringToKeysym(key.c_str()));
    };
    if (!held.empty()) XTestFakeKeyEvent(display, code(held), True, CurrentTime);
    XTestFakeKeyEvent(display, code(name), True, CurrentTime);
    XTestFakeKeyEvent(display, code(name), False, CurrentTime);
    if (!held.empty()) XTestFakeKeyEvent(display, code(held), False, CurrentTime);
    XSync(display, False);
}

void XServer::TakeFocus(unsigned long window) {
    XSetInputFocus(Connection(display_), window, RevertToPointerRoot, CurrentTime);
    XSync(Connection(display_), False);
}

void XServer::Close(unsigned long window) {
    XEvent event{};
    event.xclient.type = ClientMessage;
    event.xclient.window = window;
    event.xclient.message_type = XInternAtom(Connection(display_), "WM_PROTOCOLS", False);
    event.xclient.format = 32;
    event.xclient.data.l[0] =
        static_cast<long>(XInternAtom(Connection(display_), "WM_DELETE_WINDOW", False));
    event.xclient.data.l[1] = CurrentTime;
    XSendEvent(Connection(display_), window, False, NoEventMask, &event);
    XSync(Connection(display_), False);
}

}  // namespace orvantis

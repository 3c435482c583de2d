// Each copy has a datagram socket that is named by its process number. A message is one datagram:
//
// | Text           | From, to            | Meaning                                     |
// |----------------|---------------------|---------------------------------------------|
// | "title?"       | later copy, earlier | tell your title                             |
// | "title=" TITLE | earlier, later      | the answer, UTF-8                           |
// | "raise"        | later, earlier      | show your window                            |
//
// Anything else is thrown away. A socket that nobody listens to was left by a copy that didn't end
// in order; whoever meets it removes it.
#include "desktop/other_copies.h"

#include <QGuiApplication>
#include <QSocketNotifier>
#include <algorithm>
#include <array>
#include <cerrno>
#include <charconv>
#include <chrono>
#include <cstddef>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <poll.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>
#include <system_error>
#include <unistd.h>

namespace orvantis {

namespace {

namespace fs = std::filesystem;

constexpr std::string_view kAskTitle = "title?";
constexpr std::string_view kTitle = "title=";
constexpr std::string_view kRaise = "raise";
constexpr std::size_t kLongestMessage = 2048;
constexpr std::chrono::milliseconds kPatience(200);

std::string Environment(const char* name) {
    const char* value = std::getenv(name);
    return value == nullptr ? "" : value;
}

// A folder that this user alone may enter, made if it isn't there. False if it is another's.
bool MakePrivate(const fs::path& folder) {
    ::mkdir(folder.c_str(), 0700);
    struct stat status {};
    return ::lstat(folder.c_str(), &status) == 0 && S_ISDIR(status.st_mode) &&
           status.st_uid == ::getuid() && (status.st_mode & 077) == 0;
}

// The display in the letters of a file name.
std::string DisplayName() {
    std::string name = QGuiApplication::platformName().toStdString();
    if (name == "xcb") name += Environment("DISPLAY");
    if (name == "wayland") name += Environment("WAYLAND_DISPLAY");
    std::replace_if(
        name.begin(), name.end(), [](unsigned char c) { return std::isalnum(c) == 0; }, '-');
    return name;
}

// The folder of this user's copies on this display, "" if there can't be one.
std::string MakeFolder() {
    const std::string runtime = Environment("XDG_RUNTIME_DIR");
    std::error_code failure;
    fs::path folder = fs::path(runtime) / "orvantis-windows";
    if (runtime.empty() || runtime.front() != '/') {
        folder = fs::temp_directory_path(failure) / ("orvantis-" + std::to_string(::getuid()));
    }
    if (failure || !MakePrivate(folder)) return "";
    folder /= DisplayName();
    return MakePrivate(folder) ? folder.string() + "/" : "";
}

// The address of a socket's path. False if the path is too long for one.
bool AddressOf(const std::string& path, sockaddr_un& address) {
    address = {};
    address.sun_family = AF_UNIX;
    if (path.size() >= sizeof address.sun_path) return false;
    std::memcpy(address.sun_path, path.data(), path.size());
    return true;
}

const sockaddr* Plain(const sockaddr_un& address) {
    return reinterpret_cast<const sockaddr*>(&address);
}

// The process number that a file of the folder is named by, 0 for any other name.
std::int64_t ProcessOf(std::string_view name) {
    std::int64_t process = 0;
    const auto [end, failure] = std::from_chars(name.data(), name.data() + name.size(), process);
    const bool whole = failure == std::errc() && end == name.data() + name.size();
    return whole && process > 0 ? process : 0;
}

}  // namespace

OtherCopies::OtherCopies() = default;

OtherCopies::~OtherCopies() {
    if (socket_ < 0) return;
    ::unlink(PathOf(::getpid()).c_str());
    ::close(socket_);
}

std::string OtherCopies::PathOf(std::int64_t process) const {
    return folder_ + std::to_string(process);
}

void OtherCopies::Join() {
    if (socket_ >= 0) return;
    folder_ = MakeFolder();
    sockaddr_un address{};
    const std::string path = PathOf(::getpid());
    if (folder_.empty() || !AddressOf(path, address)) return;
    const int made = ::socket(AF_UNIX, SOCK_DGRAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0);
    if (made < 0) return;
    ::unlink(path.c_str());  // of an earlier process with the same number
    if (::bind(made, Plain(address), sizeof address) != 0) {
        ::close(made);
        return;
    }
    socket_ = made;
    notifier_ = std::make_unique<QSocketNotifier>(socket_, QSocketNotifier::Read);
    QObject::connect(notifier_.get(), &QSocketNotifier::activated, [this] { Answer(Receive()); });
}

// Sends a message. False if nobody is there; a socket left behind is removed.
bool OtherCopies::Send(std::int64_t process, std::string_view text) const {
    const std::string path = PathOf(process);
    sockaddr_un address{};
    if (socket_ < 0 || !AddressOf(path, address)) return false;
    if (::sendto(socket_, text.data(), text.size(), MSG_NOSIGNAL, Plain(address), sizeof address) >=
        0) {
        return true;
    }
    if (errno == ECONNREFUSED) ::unlink(path.c_str());
    return errno == EAGAIN;  // its queue is full: it is there, but it doesn't read
}

OtherCopies::Message OtherCopies::Receive() const {
    std::array<char, kLongestMessage> bytes{};
    sockaddr_un from{};
    socklen_t fromSize = sizeof from;
    const ssize_t size = ::recvfrom(socket_, bytes.data(), bytes.size(), 0,
                                    reinterpret_cast<sockaddr*>(&from), &fromSize);
    if (size < 0) return {};
    const std::string_view path(from.sun_path, ::strnlen(from.sun_path, sizeof from.sun_path));
    if (fromSize <= offsetof(sockaddr_un, sun_path) || !path.starts_with(folder_)) return {};
    return {ProcessOf(path.substr(folder_.size())),
            std::string(bytes.data(), static_cast<std::size_t>(size))};
}

void OtherCopies::Answer(const Message& message) const {
    if (message.sender == 0) return;
    if (message.text == kAskTitle && onTitle) {
        std::string answer(kTitle);
        answer += onTitle();
        Send(message.sender, answer.substr(0, kLongestMessage));
    }
    if (message.text == kRaise && onRaise) onRaise();
}

// The process numbers in the folder but for this copy's own.
std::vector<std::int64_t> OtherCopies::Others() const {
    std::vector<std::int64_t> others;
    if (socket_ < 0) return others;
    std::error_code failure;
    for (const fs::directory_entry& entry : fs::directory_iterator(folder_, failure)) {
        const std::int64_t process = ProcessOf(entry.path().filename().string());
        if (process != 0 && process != ::getpid()) others.push_back(process);
    }
    std::sort(others.begin(), others.end());
    return others;
}

bool OtherCopies::AnyRuns() const {
    const std::vector<std::int64_t> others = Others();
    // An empty message tells whether somebody listens, and is thrown away there.
    return std::any_of(others.begin(), others.end(),
                       [this](std::int64_t process) { return Send(process, ""); });
}

std::vector<TopWindow> OtherCopies::Windows() {
    std::vector<TopWindow> windows;
    std::size_t asked = 0;
    for (const std::int64_t process : Others()) asked += Send(process, kAskTitle) ? 1 : 0;

    // Copies that start in the same moment ask each other; each answers while it waits.
    const auto end = std::chrono::steady_clock::now() + kPatience;
    while (windows.size() < asked) {
        const auto left = std::chrono::duration_cast<std::chrono::milliseconds>(
            end - std::chrono::steady_clock::now());
        pollfd waiting{socket_, POLLIN, 0};
        if (left.count() <= 0 || ::poll(&waiting, 1, static_cast<int>(left.count())) == 0) break;
        const Message message = Receive();
        if (message.sender != 0 && message.text.starts_with(kTitle)) {
            windows.push_back({message.sender, message.text.substr(kTitle.size())});
        } else {
            Answer(message);
        }
    }
    return windows;
}

void OtherCopies::Raise(std::int64_t handle) const {
    Send(handle, kRaise);
}

}  // namespace orvantis

// Other copies of the program, played by sockets of this test.
#include "desktop/other_copies.h"

#include <QCoreApplication>
#include <array>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <gtest/gtest.h>
#include <poll.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>
#include <unistd.h>

#include "support/temp_folder.h"

namespace orvantis {
namespace {

namespace fs = std::filesystem;

sockaddr_un AddressOf(const std::string& path) {
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    std::strncpy(address.sun_path, path.c_str(), sizeof address.sun_path - 1);
    return address;
}

// A copy of the program as others see it: a socket in the folder.
class Peer {
  public:
    explicit Peer(std::string path) : path_(std::move(path)) {
        const sockaddr_un address = AddressOf(path_);
        socket_ = ::socket(AF_UNIX, SOCK_DGRAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0);
        EXPECT_EQ(::bind(socket_, reinterpret_cast<const sockaddr*>(&address), sizeof address), 0);
    }
    ~Peer() { ::close(socket_); }  // the file stays, as after a crash
    Peer(const Peer&) = delete;
    Peer& operator=(const Peer&) = delete;

    bool Send(const std::string& to, std::string_view text) const {
        const sockaddr_un address = AddressOf(to);
        return ::sendto(socket_, text.data(), text.size(), 0,
                        reinterpret_cast<const sockaddr*>(&address), sizeof address) >= 0;
    }
    // The next message, "none" if there is none.
    std::string Next() const {
        std::array<char, 4096> bytes{};
        const ssize_t size = ::recv(socket_, bytes.data(), bytes.size(), 0);
        return size < 0 ? "none" : std::string(bytes.data(), static_cast<std::size_t>(size));
    }

  private:
    std::string path_;
    int socket_ = -1;
};

class OtherCopiesTest : public ::testing::Test {
  protected:
    void SetUp() override {
        ::setenv("XDG_RUNTIME_DIR", runtime.Path().c_str(), 1);
        copies.onTitle = [] { return std::string("Orvantis: Jos\xC3\xA9"); };
        copies.onRaise = [this] { ++raised; };
        copies.Join();
    }
    std::string PathOf(const std::string& name) const {
        return runtime.File("orvantis-windows/offscreen/" + name);
    }
    std::string OwnPath() const { return PathOf(std::to_string(::getpid())); }

    TempFolder runtime;
    OtherCopies copies;
    int raised = 0;
};

TEST_F(OtherCopiesTest, ACopyAloneFindsNoOther) {
    EXPECT_FALSE(copies.AnyRuns());
    EXPECT_TRUE(copies.Windows().empty());
}

TEST_F(OtherCopiesTest, TheSocketIsTheUsersAloneAndGoesWithTheCopy) {
    {
        OtherCopies second;  // of the same process: takes the place
        second.Join();
        EXPECT_TRUE(fs::exists(OwnPath()));
        struct stat status {};
        ASSERT_EQ(::stat(PathOf("").c_str(), &status), 0);
        EXPECT_EQ(status.st_mode & 0777, 0700U);
    }
    EXPECT_FALSE(fs::exists(OwnPath()));
}

TEST_F(OtherCopiesTest, AnotherCopyTellsItsTitle) {
    Peer peer(PathOf("77777"));
    EXPECT_TRUE(copies.AnyRuns());
    ASSERT_TRUE(peer.Send(OwnPath(), "title=Orvantis: Someone"));
    const std::vector<TopWindow> windows = copies.Windows();
    ASSERT_EQ(windows.size(), 1U);
    EXPECT_EQ(windows[0].handle, 77777);
    EXPECT_EQ(windows[0].title, "Orvantis: Someone");
    EXPECT_EQ(peer.Next(), "") << "is somebody there?";
    EXPECT_EQ(peer.Next(), "title?");
    copies.Raise(77777);
    EXPECT_EQ(peer.Next(), "raise");
}

TEST_F(OtherCopiesTest, ACopyThatDoesNotAnswerHasNoWindowButRuns) {
    const Peer silent(PathOf("77777"));
    EXPECT_TRUE(copies.AnyRuns());
    EXPECT_TRUE(copies.Windows().empty());
}

TEST_F(OtherCopiesTest, ACopyThatReadsNothingIsWaitedForNoLonger) {
    const Peer silent(PathOf("77777"));
    for (int i = 0; i < 1000; ++i) copies.Raise(77777);  // until its queue is full
    EXPECT_TRUE(copies.AnyRuns());
    EXPECT_TRUE(copies.Windows().empty());
}

TEST_F(OtherCopiesTest, WhatACrashLeftIsNoCopyAndIsRemoved) {
    { const Peer crashed(PathOf("77777")); }
    ASSERT_TRUE(fs::exists(PathOf("77777")));
    EXPECT_FALSE(copies.AnyRuns());
    EXPECT_FALSE(fs::exists(PathOf("77777")));
}

TEST_F(OtherCopiesTest, FilesOfOtherNamesAreNoCopiesAndStay) {
    for (const char* name : {"readme", "12x", "-5", "0", "99999999999999999999"}) {
        runtime.Write(std::string("orvantis-windows/offscreen/") + name, "text");
    }
    runtime.Write("orvantis-windows/offscreen/123", "no socket");
    EXPECT_FALSE(copies.AnyRuns());
    for (const char* name : {"readme", "12x", "-5", "0"}) EXPECT_TRUE(fs::exists(PathOf(name)));
}

TEST_F(OtherCopiesTest, QuestionsAreAnsweredAndWishesObeyed) {
    const Peer peer(PathOf("77777"));
    ASSERT_TRUE(peer.Send(OwnPath(), "title?"));
    QCoreApplication::processEvents();
    EXPECT_EQ(peer.Next(), "title=Orvantis: Jos\xC3\xA9");
    ASSERT_TRUE(peer.Send(OwnPath(), "raise"));
    QCoreApplication::processEvents();
    EXPECT_EQ(raised, 1);
}

TEST_F(OtherCopiesTest, CopiesThatStartTogetherAnswerWhileTheyWait) {
    const Peer peer(PathOf("77777"));
    ASSERT_TRUE(peer.Send(OwnPath(), "title?"));
    EXPECT_TRUE(copies.Windows().empty());
    EXPECT_EQ(peer.Next(), "title?");
    EXPECT_EQ(peer.Next(), "title=Orvantis: Jos\xC3\xA9");
}

TEST_F(OtherCopiesTest, GarbageIsThrownAway) {
    const Peer peer(PathOf("77777"));
    for (const std::string& text :
         {std::string(), std::string("raise "), std::string("title?\0", 7),
          std::string(100000, 'x'), std::string(2048, '\xFF')}) {
        peer.Send(OwnPath(), text);
    }
    // From a socket without a name, and from one of another folder.
    const int unnamed = ::socket(AF_UNIX, SOCK_DGRAM | SOCK_CLOEXEC, 0);
    const sockaddr_un own = AddressOf(OwnPath());
    EXPECT_EQ(::sendto(unnamed, "raise", 5, 0, reinterpret_cast<const sockaddr*>(&own), sizeof own),
              5);
    ::close(unnamed);
    const Peer stranger(runtime.File("88888"));
    EXPECT_TRUE(stranger.Send(OwnPath(), "raise"));
    for (int i = 0; i < 10; ++i) QCoreApplication::processEvents();
    EXPECT_EQ(raised, 0);
    EXPECT_EQ(peer.Next(), "none");
    EXPECT_TRUE(copies.Windows().empty());
}

TEST_F(OtherCopiesTest, WithoutAFolderOfTheUsersOwnNoCopyIsFound) {
    const TempFolder open;
    fs::create_directories(open.File("orvantis-windows"));
    fs::permissions(open.File("orvantis-windows"), fs::perms::all);
    ::setenv("XDG_RUNTIME_DIR", open.Path().c_str(), 1);
    OtherCopies none;
    none.Join();
    EXPECT_FALSE(none.AnyRuns());
    EXPECT_TRUE(none.Windows().empty());

    // Nor where a socket's name would be too long.
    const TempFolder deep;
    const std::string folder = deep.File(std::string(120, 'd'));
    fs::create_directories(folder);
    ::setenv("XDG_RUNTIME_DIR", folder.c_str(), 1);
    none.Join();
    EXPECT_FALSE(none.AnyRuns());
}

}  // namespace
}  // namespace orvantis

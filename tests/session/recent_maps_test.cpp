#include "session/recent_maps.h"

#include <gtest/gtest.h>

#include "session/session_state.h"
#include "support/reset_all.h"

namespace orvantis {
namespace {

class RecentMapsTest : public testing::Test {
  protected:
    void SetUp() override { ResetAll(); }
    void TearDown() override { ResetAll(); }

    static std::vector<std::string> List() {
        return {session.RecentMaps.begin(), session.RecentMaps.begin() + session.RecentCount};
    }
};

TEST_F(RecentMapsTest, PathJoinsTheListFirstAndInLowerCase) {
    AddRecentMap("C:\\Maps\\EUROPE.OVM");
    AddRecentMap("b.ovm");
    EXPECT_EQ(List(), (std::vector<std::string>{"b.ovm", "c:\\maps\\europe.ovm"}));
}

TEST_F(RecentMapsTest, FifthPathDropsTheLast) {
    for (const char* path : {"a", "b", "c", "d", "e"}) AddRecentMap(path);
    EXPECT_EQ(List(), (std::vector<std::string>{"e", "d", "c", "b"}));
}

TEST_F(RecentMapsTest, PathOnTheListMovesToTheTopWithoutChangingTheCount) {
    for (const char* path : {"a", "b", "c"}) AddRecentMap(path);
    AddRecentMap("B");
    EXPECT_EQ(List(), (std::vector<std::string>{"b", "c", "a"}));
    AddRecentMap("a");
    EXPECT_EQ(List(), (std::vector<std::string>{"a", "b", "c"}));
    AddRecentMap("a");
    EXPECT_EQ(List(), (std::vector<std::string>{"a", "b", "c"}));
}

TEST_F(RecentMapsTest, PathOnTheListInWhateverCaseIsTheSame) {
    session.RecentMaps[0] = "Maps/World.OVM";
    session.RecentCount = 1;
    AddRecentMap("maps/WORLD.ovm");
    EXPECT_EQ(List(), std::vector<std::string>{"maps/world.ovm"});
}

TEST_F(RecentMapsTest, LettersBeyondTheAlphabetKeepTheirBytes) {
    AddRecentMap("/home/\xC3\x89va/World.ovm");
    EXPECT_EQ(List(), std::vector<std::string>{"/home/\xC3\x89va/world.ovm"});
}

TEST_F(RecentMapsTest, EmptyPathShowsTheListAndChangesNothing) {
    static int shown = 0;
    static RecentMenu last;
    shown = 0;
    showRecentMaps = [](const RecentMenu& menu) {
        ++shown;
        last = menu;
    };
    AddRecentMap("");
    EXPECT_EQ(shown, 1);
    EXPECT_FALSE(last.separator);
    EXPECT_EQ(last.captions, (std::array<std::string, 4>{}));
    AddRecentMap("maps\\a.ovm");
    AddRecentMap("b.ovm");
    AddRecentMap("");
    EXPECT_EQ(shown, 4);
    EXPECT_TRUE(last.separator);
    EXPECT_EQ(last.captions, (std::array<std::string, 4>{"&1 b.ovm", "&2 maps/a.ovm", "", ""}));
    EXPECT_EQ(session.RecentCount, 2);
}

}  // namespace
}  // namespace orvantis

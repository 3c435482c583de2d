#include "places/zones.h"

#include <filesystem>
#include <gtest/gtest.h>
#include <set>

#include "session/files.h"
#include "session/session_state.h"
#include "support/failing_disk.h"
#include "support/paths.h"
#include "support/reset_all.h"
#include "support/temp_folder.h"
#include "text/run_time_error.h"
#include "text/strings.h"
#include "text/zones.h"

namespace orvantis {
namespace {

class ZoneFile : public ::testing::Test {
  protected:
    void SetUp() override {
        ResetAll();
        session.UserDataPath = folder_.Path();
    }

    void Load(std::string_view text) {
        folder_.Write("timezone.fil", text);
        LoadZones();
    }

    TempFolder folder_;
};

// A row of the file: mnemonic, name and time in their columns.
std::string Row(std::string mnemonic, std::string name, const std::string& time) {
    mnemonic.resize(5, ' ');
    name.resize(30, ' ');
    return mnemonic + name + time;
}

TEST_F(ZoneFile, TheColumnsOfALineAreMnemonicNameAndTime) {
    Load(Row("EST", "Eastern Standard Time", "+5:00") + "\r\n" + Row("INST", "India", "-5:30"));
    ASSERT_EQ(zones.ZoneCount, 2);
    EXPECT_EQ(zones.ZoneMnemonic[1], "EST  ");
    EXPECT_EQ(zones.ZoneName[1], "Eastern Standard Time         ");
    EXPECT_EQ(zones.ZoneTime[1], "+5:00 ");
    EXPECT_EQ(zones.ZoneTime[2], "-5:30 ");
}

TEST_F(ZoneFile, ALineOfFewerThan36CharactersHasAnEmptyTime) {
    Load("EST  Eastern Standard Time\r\n");
    ASSERT_EQ(zones.ZoneCount, 1);
    EXPECT_EQ(zones.ZoneName[1], "Eastern Standard Time         ");
    EXPECT_EQ(zones.ZoneTime[1], "      ");
}

TEST_F(ZoneFile, ChoosingAZoneWithAnEmptyTimeTellsThatItsRowIsBad) {
    Load("EST  Eastern Standard Time\r\n");
    float hours = 7;
    std::string mnemonic;
    std::int16_t errorFlag = 0;
    ParseZoneText("EST", hours, mnemonic, errorFlag, kTrue);
    EXPECT_EQ(errorFlag, -1);
    EXPECT_EQ(hours, 7);
    EXPECT_EQ(TestShell().boxes,
              std::vector<std::string>{
                  "Error in Time Zone: The format of the Time Zone mnemonic has been recognised as "
                  "valid, / but the corresponding time value is not valid:  / You must edit the "
                  "time zone file after exiting from this program. / Ensure that you use hours, "
                  "minutes and seconds separated by colons e.g. -10:30"});
}

TEST_F(ZoneFile, MnemonicsInLowerCaseAreFound) {
    Load(Row("est", "eastern", "+5:00") + "\r\n");
    EXPECT_EQ(zones.ZoneMnemonic[1], "EST  ");
    EXPECT_EQ(TrimRight(zones.ZoneName[1]), "eastern");
    float hours = 0;
    std::string mnemonic;
    std::int16_t errorFlag = 0;
    ParseZoneText("Est", hours, mnemonic, errorFlag, kTrue);
    EXPECT_EQ(errorFlag, 0);
    EXPECT_EQ(hours, 5);
}

TEST_F(ZoneFile, OfTwoRowsOfOneMnemonicTheFirstWins) {
    Load(Row("IST", "Irish", "-1:00") + "\r\n" + Row("IST", "Indian", "-5:30") + "\r\n");
    float hours = 0;
    std::string mnemonic;
    std::int16_t errorFlag = 0;
    ParseZoneText("IST", hours, mnemonic, errorFlag, kTrue);
    EXPECT_EQ(hours, -1);
}

TEST_F(ZoneFile, ElevenLinesAreAllHeld) {
    std::string text;
    for (int i = 1; i <= 11; ++i) text += Row("Z" + std::to_string(i), "", "+1:00") + "\r\n";
    Load(text);
    EXPECT_EQ(zones.ZoneCount, 11);
    EXPECT_EQ(zones.ZoneMnemonic[11], "Z11  ");
    EXPECT_EQ(zones.ZoneTime.size(), 12U);
}

TEST_F(ZoneFile, LinesEndInAnyKindOfBreakAndTheLastInNone) {
    for (const char* text : {"A\r\n\r\nB", "A\n\nB", "A\r\rB"}) {
        Load(text);
        ASSERT_EQ(zones.ZoneCount, 3);  // an empty line is a line
        EXPECT_EQ(zones.ZoneMnemonic[2], "     ");
        EXPECT_EQ(zones.ZoneMnemonic[3], "B    ");
    }
}

TEST_F(ZoneFile, ALineIsCutTo41Characters) {
    Load(Row("A", "x", "+12:30:15") + std::string(100000, 'y') + "\r\n" + Row("B", "", "+1:00"));
    ASSERT_EQ(zones.ZoneCount, 2);
    EXPECT_EQ(zones.ZoneTime[1], "+12:30");
    EXPECT_EQ(zones.ZoneTime[2], "+1:00 ");
}

TEST_F(ZoneFile, ColumnsAreCharactersInUtf8AndInCodePage1252) {
    std::string name = "Z\xC3\xBCrich";  // two bytes, one character
    name.resize(31, ' ');
    Load("\xEF\xBB\xBFZUR  " + name + "-1:00\r\n" + Row("ZUR", "Z\xFCrich", "-1:00"));
    for (const std::size_t n : {1, 2}) {
        EXPECT_EQ(zones.ZoneMnemonic[n], "ZUR  ");
        EXPECT_EQ(TrimRight(zones.ZoneName[n]), "Z\xFCrich");
        EXPECT_EQ(zones.ZoneTime[n], "-1:00 ");
    }
}

TEST_F(ZoneFile, ALongLineOfUtf8IsNotCutWithinACharacter) {
    std::string line;
    while (line.size() < 400) line += "\xE2\x82\xAC";  // the euro sign, byte 128 of the page
    Load(line);
    EXPECT_EQ(zones.ZoneMnemonic[1], std::string(5, '\x80'));
    EXPECT_EQ(zones.ZoneTime[1], std::string(6, '\x80'));
}

// Bytes 0xB0 to 0xBF continue a character of UTF-8; in code page 1252 they are the degree mark,
// fractions and the like.
TEST_F(ZoneFile, ALongLineOfCodePage1252KeepsWhatStandsBeforeAnyMarks) {
    const std::string name = "Z\xFCrich";
    for (const std::size_t marks : {1, 3, 4, 127, 135, 1000}) {
        for (const char mark : {'\x80', '\xB0', '\xBF'}) {
            Load(Row("ZUR", name, "-1:00") + std::string(marks, mark) + "\r\n" +
                 Row("ZUR", name, "-1") + std::string(marks, mark));
            EXPECT_EQ(zones.ZoneMnemonic[1], "ZUR  ");
            EXPECT_EQ(TrimRight(zones.ZoneName[1]), name);
            EXPECT_EQ(zones.ZoneTime[1], std::string("-1:00") + mark) << marks;
            const std::string time =
                std::string("-1") + std::string(std::min<std::size_t>(marks, 4), mark);
            EXPECT_EQ(TrimRight(zones.ZoneTime[2]), time) << marks;
        }
    }
}

TEST_F(ZoneFile, ALineOfMarksAloneKeepsItsFirst41) {
    Load(std::string(400, '\xB0'));
    EXPECT_EQ(zones.ZoneMnemonic[1], std::string(5, '\xB0'));
    EXPECT_EQ(zones.ZoneName[1], std::string(30, '\xB0'));
    EXPECT_EQ(zones.ZoneTime[1], std::string(6, '\xB0'));
}

TEST_F(ZoneFile, ALongLineOfUtf8KeepsAll41CharactersWhereverItIsCut) {
    const std::string four = "\xF0\x9F\x98\x80";  // not in the page: a question mark
    for (const std::string& character :
         {std::string("\xC3\xBC"), std::string("\xE2\x82\xAC"), four}) {
        for (const std::string start : {"", "\xEF\xBB\xBF"}) {
            for (std::size_t letters = 0; letters < 4; ++letters) {
                std::string line = start + std::string(letters, 'A');
                while (line.size() < 400) line += character;
                Load(line);
                const char shown = character == four       ? '?'
                                   : character.size() == 2 ? '\xFC'
                                                           : '\x80';
                EXPECT_EQ(zones.ZoneTime[1], std::string(6, shown)) << letters;
            }
        }
    }
}

TEST_F(ZoneFile, AFileThatIsMissingIsToldAndLeavesTheTableAsItWas) {
    Load(Row("EST", "", "+5:00"));
    std::filesystem::remove(folder_.File("timezone.fil"));
    LoadZones();
    EXPECT_EQ(zones.ZoneCount, 1);
    EXPECT_EQ(TestShell().boxes,
              std::vector<std::string>{"Open Error: " + folder_.File("timezone.fil") +
                                       " /  / File not found"});
}

TEST_F(ZoneFile, TheShippedFileServesAUserWhoHasNone) {
    std::filesystem::create_directories(folder_.File("shipped"));
    session.ShippedDir = folder_.Path() + "shipped\\";
    folder_.Write("shipped/timezone.fil", Row("SHP", "", "+5:00"));
    LoadZones();
    EXPECT_EQ(zones.ZoneMnemonic[1], "SHP  ");
    Load(Row("OWN", "", "+5:00"));
    EXPECT_EQ(zones.ZoneMnemonic[1], "OWN  ");
    EXPECT_TRUE(TestShell().log.empty());
}

TEST_F(ZoneFile, TheShippedFileDoesNotStandInForAnOwnOneThatMayNotBeRead) {
    std::filesystem::create_directories(folder_.File("shipped"));
    session.ShippedDir = folder_.Path() + "shipped\\";
    folder_.Write("shipped/timezone.fil", Row("SHP", "", "+5:00"));
    Load(Row("OWN", "", "+5:00"));
    const std::string own = folder_.File("timezone.fil");
    std::filesystem::permissions(folder_.Path(), std::filesystem::perms::all);
    const auto loadWithoutRights = [&] {
        ActAsPlainUserOn(own, std::filesystem::perms::none);
        LoadZones();
        if (zones.ZoneCount != 1 || zones.ZoneMnemonic[1] != "OWN  ") return 1;
        const std::vector<std::string> boxes = {"Open Error: " + own + " /  / Permission denied"};
        return TestShell().boxes == boxes ? 0 : 2;
    };
    EXPECT_EXIT(std::_Exit(loadWithoutRights()), ::testing::ExitedWithCode(0), "");
}

TEST_F(ZoneFile, TheShippedFileDoesNotStandInForAFolderOfThatName) {
    std::filesystem::create_directories(folder_.File("shipped"));
    session.ShippedDir = folder_.Path() + "shipped\\";
    folder_.Write("shipped/timezone.fil", Row("SHP", "", "+5:00"));
    std::filesystem::create_directories(folder_.File("timezone.fil"));
    LoadZones();
    EXPECT_EQ(zones.ZoneCount, 0);
    EXPECT_EQ(TestShell().boxes,
              std::vector<std::string>{"Open Error: " + folder_.File("timezone.fil") +
                                       " /  / Path/File access error"});
}

// The system's own setting files tell a length of a page and end far sooner, as a file does whose
// disk fails half way.
TEST_F(ZoneFile, AFileThatCannotBeReadToItsEndLeavesTheTableAsItWas) {
    Load(Row("EST", "", "+5:00"));
    const std::filesystem::path shorter = "/sys/kernel/fscaps";
    std::error_code failure;
    if (std::filesystem::file_size(shorter, failure) < 1000 || failure) {
        GTEST_SKIP() << shorter << " isn't there";
    }
    std::filesystem::remove(folder_.File("timezone.fil"));
    std::filesystem::create_symlink(shorter, folder_.File("timezone.fil"));
    LoadZones();
    ASSERT_EQ(zones.ZoneCount, 1);
    EXPECT_EQ(zones.ZoneMnemonic[1], "EST  ");
    EXPECT_TRUE(TestShell().log.empty());
    EXPECT_EQ(PendingRunTimeError(), 0);
}

TEST_F(ZoneFile, AnEmptyFileEmptiesTheTable) {
    Load(Row("EST", "", "+5:00"));
    Load("");
    EXPECT_EQ(zones.ZoneCount, 0);
    EXPECT_EQ(zones.ZoneMnemonic.size(), 1U);
}

TEST_F(ZoneFile, LinesBeyondWhatTheNumberHoldsAreLeftOut) {
    std::string text;
    for (int i = 0; i < 40000; ++i) text += "A\n";
    Load(text);
    EXPECT_EQ(zones.ZoneCount, 32767);
    EXPECT_EQ(zones.ZoneMnemonic.size(), 32768U);
}

TEST_F(ZoneFile, AHugeFileIsReadNoFurtherThanItCanMatter) {
    folder_.Write("timezone.fil", "A\r\n");
    std::filesystem::resize_file(folder_.File("timezone.fil"), std::uintmax_t{1} << 34);
    LoadZones();
    EXPECT_EQ(zones.ZoneCount, 2);  // the second line is all zero bytes
}

TEST_F(ZoneFile, EveryRowOfTheShippedFileIsAZoneWithinThirteenHours) {
    session.UserDataPath = DataFile("");
    LoadZones();
    ASSERT_EQ(zones.ZoneCount, 72);
    std::set<std::string> mnemonics;
    for (std::size_t n = 1; n <= 72; ++n) {
        const std::string text(TrimRight(zones.ZoneMnemonic[n]));
        EXPECT_TRUE(mnemonics.insert(text).second) << text << " stands twice";
        EXPECT_FALSE(TrimRight(zones.ZoneName[n]).empty()) << text;
        float hours = 99;
        std::string mnemonic;
        std::int16_t errorFlag = 1;
        ParseZoneText(text, hours, mnemonic, errorFlag, kTrue);
        EXPECT_EQ(errorFlag, 0) << text;
        EXPECT_LE(std::abs(hours), 13) << text;
        EXPECT_EQ(FormatZoneText(hours), TrimRight(zones.ZoneTime[n])) << text;
    }
    EXPECT_TRUE(TestShell().log.empty());
}

}  // namespace
}  // namespace orvantis

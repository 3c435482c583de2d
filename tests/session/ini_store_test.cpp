#include "session/ini_store.h"

#include <array>
#include <filesystem>
#include <gtest/gtest.h>

#include "session/session_state.h"
#include "support/failing_disk.h"
#include "support/reset_all.h"
#include "support/temp_folder.h"
#include "text/run_time_error.h"

namespace orvantis {
namespace {

namespace fs = std::filesystem;

class IniStore : public ::testing::Test {
  protected:
    void SetUp() override {
        ResetAll();
        session.IniDir = folder_.Path();
    }

    // The file's text after keys of section "Own" were set in it.
    std::string After(const std::string& before, const std::vector<IniEntry>& entries) {
        folder_.Write("a.ini", before);
        EXPECT_TRUE(WriteIni("a.ini", "Own", entries));
        return Text("a.ini");
    }

    std::string Text(const std::string& name) const {
        const Bytes bytes = FileBytes(folder_.File(name));
        return {bytes.begin(), bytes.end()};
    }

    std::size_t FilesInFolder() const {
        const auto files = fs::directory_iterator(folder_.Path());
        return static_cast<std::size_t>(std::distance(begin(files), end(files)));
    }

    TempFolder folder_;
};

// What a key reads as, in a file of this text, with the default "none" and a width of 10.
std::string ValueIn(const std::string& text, std::string_view key = "Key") {
    return IniText({text}, "Own", key, "none", 10);
}

TEST_F(IniStore, ValuesReadAsTheDesktopsProfileFunctionsReadThem) {
    struct Row {
        const char* text;
        const char* value;
        const char* why;
    };
    constexpr std::array<Row, 33> rows = {{
        {"[Own]\r\nKey=5\r\n", "5", "CRLF"},
        {"[Own]\nKey=5\n", "5", "LF"},
        {"[Own]\r\nKey=5", "5", "last line without a line break"},
        {"[own]\r\nKEY=5\r\n", "5", "case of names"},
        {"[Own]\r\n \tKey \t= 5\t \r\n", "5", "blanks around"},
        {"  [ Own ]  \r\nKey=5\r\n", "5", "blanks around a section"},
        {"[Own] ; mine\r\nKey=5\r\n", "5", "text behind a section"},
        {"[Own]\r\nKey=\" 5 \"\r\n", " 5 ", "one pair of quotes"},
        {"[Own]\r\nKey='5'\r\n", "5", "one pair of single quotes"},
        {"[Own]\r\nKey=\"\"5\"\"\r\n", "\"5\"", "one pair alone"},
        {"[Own]\r\nKey=\"5'\r\n", "\"5'", "quotes that don't match"},
        {"[Own]\r\nKey=\"\r\n", "\"", "a single quote mark"},
        {"[Own]\r\nKey=\"\"\r\n", "", "empty quotes"},
        {"[Own]\r\nKey=\r\n", "", "an empty value is no missing key"},
        {"[Own]\r\nKey\r\n", "none", "no equals sign"},
        {"[Own]\r\n;Key=5\r\n", "none", "comment"},
        {"[Own]\r\n  ; Key=5\r\n", "none", "comment behind blanks"},
        {"[Own]\r\nKey=5 ; mine\r\n", "5 ; mine", "no comment behind a value"},
        {"Key=5\r\n[Own]\r\n", "none", "a key above all sections"},
        {"Key=5\r\n", "none", "no section at all"},
        {"[Other]\r\nKey=5\r\n", "none", "another section's key"},
        {"[Own]\r\nKey=1\r\nKey=2\r\n", "1", "first of doubles"},
        {"[Own]\r\nA=1\r\n[X]\r\n[Own]\r\nKey=2\r\n", "2", "section that occurs twice"},
        {"[Own]\r\nKey=1\r\n[Own]\r\nKey=2\r\n", "1", "first of doubled sections"},
        {"\xEF\xBB\xBF[Own]\r\nKey=5\r\n", "5", "byte order mark"},
        {"[Own]\r\nKey=a=b\r\n", "a=b", "equals sign in a value"},
        {"[Own]\r\nKey=01234567890123\r\n", "0123456789", "cut to the width"},
        {"[Own]\r\nKey=\"01234567890123\"\r\n", "0123456789", "cut to the width within quotes"},
        {"[Own\r\nKey=5\r\n", "none", "section without its end"},
        {"", "none", "empty file"},
        {"[Own]\r\nKey=5\r\r\n", "5", "carriage return too many"},
        {"[Own]\r\n[]\r\nKey=5\r\n", "none", "section without a name"},
        {"[Own]\r\n=5\r\nKey=6\r\n", "6", "key without a name"},
    }};
    for (const Row& row : rows) EXPECT_EQ(ValueIn(row.text), row.value) << row.why;
}

TEST_F(IniStore, ADefaultIsCutToTheWidthToo) {
    EXPECT_EQ(IniText({}, "Own", "Key", "0123456789", 5), "01234");
}

TEST_F(IniStore, NumbersAreTheLeadingNumberOfTheText) {
    const IniFile ini{"[Own]\r\nA=12abc\r\nB=abc\r\nC=-1.5\r\nD=\r\nE=1234567\r\n"};
    EXPECT_EQ(IniNumber(ini, "Own", "A", "7", 5), 12);
    EXPECT_EQ(IniNumber(ini, "Own", "B", "7", 5), 0);
    EXPECT_EQ(IniNumber(ini, "Own", "C", "7", 5), -1.5);
    EXPECT_EQ(IniNumber(ini, "Own", "D", "7", 5), 0);
    EXPECT_EQ(IniNumber(ini, "Own", "E", "7", 5), 12345);
    EXPECT_EQ(IniNumber(ini, "Own", "F", "7", 5), 7);
}

TEST_F(IniStore, ABareNameLiesInTheIniFolderAndAnyOtherStandsForItself) {
    fs::create_directories(folder_.File("sub"));
    folder_.Write("a.ini", "[Own]\r\nKey=bare\r\n");
    folder_.Write("sub/a.ini", "[Own]\r\nKey=sub\r\n");
    EXPECT_EQ(ValueIn(ReadIni("a.ini").text), "bare");
    EXPECT_EQ(ValueIn(ReadIni("A.INI").text), "bare");
    EXPECT_EQ(ValueIn(ReadIni(folder_.Path() + "sub\\a.ini").text), "sub");
    EXPECT_EQ(ValueIn(ReadIni(folder_.File("sub/a.ini")).text), "sub");
}

TEST_F(IniStore, AMissingFileAndAFolderReadAsNothingWithoutAMessage) {
    fs::create_directories(folder_.File("folder.ini"));
    EXPECT_EQ(ReadIni("none.ini").text, "");
    EXPECT_EQ(ReadIni("folder.ini").text, "");
    EXPECT_EQ(PendingRunTimeError(), 0);
    EXPECT_TRUE(TestShell().log.empty());
}

TEST_F(IniStore, AKeyThatIsThereKeepsItsPlaceAndItsSpelling) {
    EXPECT_EQ(
        After("; top\r\n[X]\r\nkey=0\r\n\r\n[own]\r\nA=1\r\nKEY =  2 \r\nB=3\r\n", {{"Key", "9"}}),
        "; top\r\n[X]\r\nkey=0\r\n\r\n[own]\r\nA=1\r\nKEY=9\r\nB=3\r\n");
}

TEST_F(IniStore, ANewKeyGoesToTheEndOfTheSectionAboveItsBlankLines) {
    EXPECT_EQ(After("[Own]\r\nA=1\r\n; note\r\n\r\n\r\n[X]\r\nB=2\r\n", {{"Key", "9"}}),
              "[Own]\r\nA=1\r\n; note\r\nKey=9\r\n\r\n\r\n[X]\r\nB=2\r\n");
    EXPECT_EQ(After("[Own]\r\n[X]\r\n", {{"Key", "9"}}), "[Own]\r\nKey=9\r\n[X]\r\n");
    EXPECT_EQ(After("[Own]\r\nA=1", {{"Key", "9"}, {"Next", "8"}}),
              "[Own]\r\nA=1\r\nKey=9\r\nNext=8\r\n");
}

TEST_F(IniStore, ANewSectionGoesToTheEndOfTheFile) {
    EXPECT_EQ(After("[X]\r\nA=1", {{"Key", "9"}}), "[X]\r\nA=1\r\n[Own]\r\nKey=9\r\n");
    EXPECT_EQ(After("\xEF\xBB\xBF", {{"Key", "9"}}), "\xEF\xBB\xBF[Own]\r\nKey=9\r\n");
    EXPECT_EQ(After("", {{"A", "1"}, {"B", "2"}}), "[Own]\r\nA=1\r\nB=2\r\n");
}

TEST_F(IniStore, AKeyAboveAllSectionsIsForeign) {
    EXPECT_EQ(After("Key=1\r\n[Own]\r\n", {{"Key", "9"}}), "Key=1\r\n[Own]\r\nKey=9\r\n");
}

TEST_F(IniStore, AFileKeepsItsKindOfLineBreakAndItsByteOrderMark) {
    EXPECT_EQ(After("[Own]\nA=1\n", {{"Key", "9"}, {"A", "2"}}), "[Own]\nA=2\nKey=9\n");
    EXPECT_EQ(After("\xEF\xBB\xBF[Own]\nA=1", {{"Key", "9"}}), "\xEF\xBB\xBF[Own]\nA=1\nKey=9\n");
    EXPECT_EQ(After("[Own]\r\nA=1\r\nKey=2", {{"Key", "9"}}), "[Own]\r\nA=1\r\nKey=9");
}

TEST_F(IniStore, OnlyTheFirstOfDoubledKeysIsSet) {
    EXPECT_EQ(After("[Own]\r\nKey=1\r\nKey=2\r\n", {{"Key", "9"}}), "[Own]\r\nKey=9\r\nKey=2\r\n");
}

TEST_F(IniStore, EveryValueReadsBackAsItWasWritten) {
    const std::vector<std::string> values = {"",          "plain",
                                             " blanks ",  "\ttab",
                                             "\"in\"",    "'in'",
                                             "\"half",    "; no comment",
                                             "[x]",       "a=b",
                                             "\"",        "''",
                                             "Z\xFCrich", std::string("a\0b", 3),
                                             "\" \""};
    for (const std::string& value : values) {
        After("[Own]\r\nB=2\r\n", {{"Key", value}});
        EXPECT_EQ(IniText(ReadIni("a.ini"), "Own", "Key", "none", 255), value);
        EXPECT_EQ(IniText(ReadIni("a.ini"), "Own", "B", "none", 255), "2");
    }
}

TEST_F(IniStore, ALineBreakInAValueMakesNoSecondKey) {
    EXPECT_EQ(After("", {{"Key", "a\r\n[X]\nB=1"}}), "[Own]\r\nKey=a  [X] B=1\r\n");
}

TEST_F(IniStore, AMissingFolderIsMade) {
    session.IniDir = folder_.File("config/orvantis/");
    const std::vector<IniEntry> entries = {{"Key", "9"}};
    EXPECT_TRUE(WriteIni("a.ini", "Own", entries));
    EXPECT_EQ(Text("config/orvantis/a.ini"), "[Own]\r\nKey=9\r\n");
}

TEST_F(IniStore, AFolderInPlaceOfTheFileFailsAndStays) {
    fs::create_directories(folder_.File("a.ini"));
    const std::vector<IniEntry> entries = {{"Key", "9"}};
    EXPECT_FALSE(WriteIni("a.ini", "Own", entries));
    EXPECT_TRUE(fs::is_directory(folder_.File("a.ini")));
    RunTimeError raised;
    ASSERT_TRUE(TakeRunTimeError(raised));
    EXPECT_EQ(raised.description, "Path/File access error");
    EXPECT_TRUE(TestShell().log.empty());
}

TEST_F(IniStore, AFileInPlaceOfTheFolderFailsAndStays) {
    folder_.Write("config", "a file");
    session.IniDir = folder_.File("config/");
    const std::vector<IniEntry> entries = {{"Key", "9"}};
    EXPECT_FALSE(WriteIni("a.ini", "Own", entries));
    EXPECT_EQ(Text("config"), "a file");
    RunTimeError raised;
    ASSERT_TRUE(TakeRunTimeError(raised));
    EXPECT_EQ(raised.description, "Path not found");
}

TEST_F(IniStore, AFileThatIsTooLongIsNeitherReadNorReplaced) {
    folder_.Write("a.ini", "[Own]\r\nKey=1\r\n");
    fs::resize_file(folder_.File("a.ini"), static_cast<std::uintmax_t>(kLongestIni) + 1);
    const std::vector<IniEntry> entries = {{"Key", "9"}};
    EXPECT_EQ(ReadIni("a.ini").text, "");
    EXPECT_FALSE(WriteIni("a.ini", "Own", entries));
    EXPECT_EQ(fs::file_size(folder_.File("a.ini")), static_cast<std::uintmax_t>(kLongestIni) + 1);
    RunTimeError raised;
    ASSERT_TRUE(TakeRunTimeError(raised));
    EXPECT_EQ(raised.description, "File too large");
}

TEST_F(IniStore, OnAFullDiskTheOldFileStaysAndNothingElseIsLeft) {
    const std::string old = "[Own]\r\nKey=1\r\n" + std::string(3000, ';') + "\r\n";
    folder_.Write("a.ini", old);
    const std::vector<IniEntry> entries = {{"Key", "9"}};
    bool written = true;
    {
        const FullDisk disk(1000);
        written = WriteIni("a.ini", "Own", entries);
    }
    EXPECT_FALSE(written);
    EXPECT_EQ(Text("a.ini"), old);
    EXPECT_EQ(FilesInFolder(), 1U);
    RunTimeError raised;
    ASSERT_TRUE(TakeRunTimeError(raised));
    EXPECT_EQ(raised.description, "Disk full");
}

// 0 if the write failed for want of permission.
int WriteWithoutRights(const std::string& path, fs::perms mode) {
    ActAsPlainUserOn(path, mode);
    const std::vector<IniEntry> entries = {{"Key", "9"}};
    if (WriteIni("a.ini", "Own", entries)) return 1;
    return PendingRunTimeError() == error::kPermission ? 0 : 2;
}

TEST_F(IniStore, AFileThatMayNotBeReadIsNeverReplaced) {
    folder_.Write("a.ini", "[Own]\r\nKey=1\r\n");
    fs::permissions(folder_.Path(), fs::perms::all);
    EXPECT_EXIT(std::_Exit(WriteWithoutRights(folder_.File("a.ini"), fs::perms::owner_write)),
                ::testing::ExitedWithCode(0), "");
    fs::permissions(folder_.File("a.ini"), fs::perms::owner_read);
    EXPECT_EQ(Text("a.ini"), "[Own]\r\nKey=1\r\n");
}

TEST_F(IniStore, AFileThatMayNotBeWrittenStays) {
    folder_.Write("a.ini", "[Own]\r\nKey=1\r\n");
    fs::permissions(folder_.Path(), fs::perms::all);
    EXPECT_EXIT(std::_Exit(WriteWithoutRights(folder_.File("a.ini"), fs::perms::owner_read)),
                ::testing::ExitedWithCode(0), "");
    EXPECT_EQ(Text("a.ini"), "[Own]\r\nKey=1\r\n");
}

TEST_F(IniStore, InAFolderThatMayNotBeWrittenTheFileStays) {
    folder_.Write("a.ini", "[Own]\r\nKey=1\r\n");
    fs::permissions(folder_.File("a.ini"), fs::perms::all);
    EXPECT_EXIT(std::_Exit(WriteWithoutRights(folder_.Path(),
                                              fs::perms::owner_read | fs::perms::owner_exec)),
                ::testing::ExitedWithCode(0), "");
    fs::permissions(folder_.Path(), fs::perms::owner_all);
    EXPECT_EQ(Text("a.ini"), "[Own]\r\nKey=1\r\n");
    EXPECT_EQ(FilesInFolder(), 1U);
}

TEST_F(IniStore, AFileOfTenMegabytesKeepsEveryForeignLine) {
    std::string old = "[Foreign]\n";
    for (int i = 0; old.size() < 10'000'000; ++i) {
        old += "key" + std::to_string(i) + "=" + std::string(50, 'x') + "\n";
    }
    EXPECT_EQ(After(old, {{"Key", "9"}}), old + "[Own]\nKey=9\n");
    EXPECT_EQ(ValueIn(ReadIni("a.ini").text), "9");
}

TEST_F(IniStore, KeysAndValuesOf64KilobytesAreCutOrPassedOver) {
    const std::string longText(65536, 'x');
    const std::string old = "[Own]\r\n" + longText + "=1\r\nKey=" + longText + "\r\n";
    EXPECT_EQ(ValueIn(old), "xxxxxxxxxx");
    EXPECT_EQ(ValueIn(old, longText), "1");
    EXPECT_EQ(After(old, {{"Key", "9"}}), "[Own]\r\n" + longText + "=1\r\nKey=9\r\n");
}

TEST_F(IniStore, AFileOfAllBytesIsKeptByteForByte) {
    std::string old;
    for (int i = 0; i < 256; ++i) old += static_cast<char>(i);
    EXPECT_EQ(After(old + "\n", {{"Key", "9"}}), old + "\n[Own]\nKey=9\n");
}

}  // namespace
}  // namespace orvantis

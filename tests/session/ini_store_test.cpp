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
    return IniText(ParseIni(text), "Own", key, "none", 10);
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
    const IniFile ini = ParseIni("[Own]\r\nA=12abc\r\nB=abc\r\nC=-1.5\r\nD=\r\nE=1234567\r\n");
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
    const std::vector<std::string> values = {"",     "plain",  " blanks ",     "\ttab", "\"in\"",
                                             "'in'", "\"half", "; no comment", "[x]",   "a=b",
                                             "\"",   "''",     "Z\xFCrich",    "\" \""};
    for (const std::string& value : values) {
        After("[Own]\r\nB=2\r\n", {{"Key", value}});
        EXPECT_EQ(IniText(ReadIni("a.ini"), "Own", "Key", "none", 255), value);
        EXPECT_EQ(IniText(ReadIni("a.ini"), "Own", "B", "none", 255), "2");
    }
}

TEST_F(IniStore, ALineBreakInAValueMakesNoSecondKey) {
    EXPECT_EQ(After("", {{"Key", "a\r\n[X]\nB=1"}}), "[Own]\r\nKey=a  [X] B=1\r\n");
}

TEST_F(IniStore, AValueEndsAtANulInTheFileAndWhenItIsWritten) {
    const std::string nul(1, '\0');
    EXPECT_EQ(ValueIn("[Own]\r\nKey=ab" + nul + "cd\r\nB=2\r\n"), "ab");
    EXPECT_EQ(ValueIn("[Own]\r\nKey=\"ab" + nul + "cd\"\r\n"), "ab");
    EXPECT_EQ(ValueIn("[Own]\r\nKey=" + nul + "\r\n"), "");
    EXPECT_EQ(ValueIn("[Own]\r\n" + nul + "Key=1\r\nKey=2\r\n"), "2");
    EXPECT_EQ(ValueIn("[Own" + nul + "]\r\nKey=1\r\n"), "none");
    EXPECT_EQ(After("", {{"Key", "ab" + nul + "cd"}}), "[Own]\r\nKey=ab\r\n");
}

TEST_F(IniStore, AWidthCountsCharactersOfUtf8AndAnyOtherByteAsOne) {
    struct Row {
        const char* value;
        std::size_t width;
        const char* expected;
    };
    constexpr std::array<Row, 12> rows = {{
        {"Z\xC3\xBCrich", 2, "Z\xC3\xBC"},
        {"\xE2\x82\xAC\xE2\x82\xAC", 1, "\xE2\x82\xAC"},
        {"\xF0\x9F\x8C\x8D!", 1, "\xF0\x9F\x8C\x8D"},
        {"\xF0\x9F\x8C\x8D!", 0, ""},
        {"Z\xFCrich", 2, "Z\xFC"},        // code page 1252
        {"\xC3", 5, "\xC3"},              // the first byte of two alone
        {"\xE2\x82", 1, "\xE2"},          // two bytes of three
        {"\xE2\x82x", 2, "\xE2\x82"},     // two bytes of three within the text
        {"\x80\x80\x80", 2, "\x80\x80"},  // bytes that begin no character
        {"\xC0\x80", 1, "\xC0"},          // nor do these
        {"\xF5\x80\x80\x80", 1, "\xF5"},
        {"\xFF\xBF", 1, "\xFF"},
    }};
    for (const Row& row : rows) {
        const IniFile ini = ParseIni("[Own]\nKey=" + std::string(row.value));
        EXPECT_EQ(IniText(ini, "Own", "Key", "", row.width), row.expected) << row.value;
        EXPECT_EQ(IniText(ini, "Own", "None", row.value, row.width), row.expected) << row.value;
    }
}

TEST_F(IniStore, KeysAreFoundInTheirOwnSectionsAmongManyOfTheSameNames) {
    std::string text;
    for (int section = 0; section < 50; ++section) {
        text += "[Section" + std::to_string(section) + "]\n";
        for (int key = 0; key < 50; ++key) {
            text += "Key" + std::to_string(key) + "=" + std::to_string(section * 50 + key) + "\n";
        }
    }
    const IniFile ini = ParseIni(text);
    for (int section = 0; section < 50; ++section) {
        for (int key = 0; key < 50; ++key) {
            EXPECT_EQ(IniText(ini, "SECTION" + std::to_string(section), "KEY" + std::to_string(key),
                              "none", 10),
                      std::to_string(section * 50 + key));
        }
    }
    EXPECT_EQ(IniText(ini, "Section50", "Key1", "none", 10), "none");
    EXPECT_EQ(IniText(ini, "Section1Key", "1", "none", 10), "none");
}

TEST_F(IniStore, LettersOutsideAsciiInNamesCompareWithoutCase) {
    EXPECT_EQ(IniText(ParseIni("[\xDCsection]\n\xC4=1\n"), "\xFCSECTION", "\xE4", "none", 5), "1");
    EXPECT_EQ(IniText(ParseIni("[a]\n\xD7=1\n"), "a", "\xF7", "none", 5), "none");
}

TEST_F(IniStore, TheLastOfAnEntryThatComesTwiceIsWrittenOnce) {
    EXPECT_EQ(After("[Own]\r\nA=0\r\n", {{"A", "1"}, {"B", "1"}, {"a", "2"}, {"b", "2"}}),
              "[Own]\r\nA=2\r\nb=2\r\n");
}

TEST_F(IniStore, OldAndNewKeysAreSetInOneGo) {
    EXPECT_EQ(After("[Own]\nB=1\n[X]\nC=1\n[own]\nC=1\nA=1",
                    {{"A", "9"}, {"New", "9"}, {"C", "9"}, {"B", "9"}, {"Next", "9"}}),
              "[Own]\nB=9\nNew=9\nNext=9\n[X]\nC=1\n[own]\nC=9\nA=9");
    EXPECT_EQ(After("[Own]\nB=1", {{"New", "9"}, {"B", "2"}}), "[Own]\nB=2\nNew=9\n");
}

// A hostile file that repeats one line, between a key above all and one below.
std::string Repeated(const std::string& line) {
    std::string text = "[Own]\nFirst=1\n";
    while (text.size() < 200'000) text += line;
    return text + "\n[Own]\nLast=2\n";
}

TEST_F(IniStore, FilesOfShortLinesAndNulsAreReadAndWrittenWhole) {
    const std::vector<std::string> lines = {"\n",
                                            "\r\n",
                                            "=\n",
                                            "a=\n",
                                            "[]\n",
                                            "[a]\n",
                                            ";\n",
                                            "[\n",
                                            "[Own]\n",
                                            "x",
                                            "First=3\n",
                                            std::string("\0\n", 2),
                                            std::string("\0", 1),
                                            std::string("\0=\0\n", 4)};
    for (const std::string& line : lines) {
        const std::string text = Repeated(line);
        EXPECT_EQ(ValueIn(text, "First"), "1") << line;
        EXPECT_EQ(ValueIn(text, "Last"), "2") << line;
        const std::string after = After(text, {{"Last", "9"}, {"First", "8"}});
        EXPECT_EQ(after.size(), text.size()) << line;
        EXPECT_TRUE(after.starts_with("[Own]\nFirst=8\n" + line)) << line;
        EXPECT_TRUE(after.ends_with(line + "\n[Own]\nLast=9\n")) << line;
    }
}

TEST_F(IniStore, AFileOfManyDifferentKeysGivesEachOfThem) {
    std::string text = "[Own]\n";
    for (int i = 0; i < 200'000; ++i) text += std::to_string(i) + "=" + std::to_string(i) + "\n";
    const IniFile ini = ParseIni(text);
    for (int i = 0; i < 200'000; i += 997) {
        EXPECT_EQ(IniText(ini, "own", std::to_string(i), "none", 10), std::to_string(i));
    }
    EXPECT_EQ(IniText(ini, "own", "200000", "none", 10), "none");
}

TEST_F(IniStore, ATextBeyondTheLongestIniGivesNothing) {
    const std::string keys = "[Own]\nKey=1\n";
    const std::size_t rest = static_cast<std::size_t>(kLongestIni) - keys.size();
    EXPECT_EQ(ValueIn(keys + std::string(rest, ';')), "1");
    EXPECT_EQ(ParseIni(keys + std::string(rest + 1, ';')).text, "");
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
        old += "key" + std::to_string(i) + "=" + std::string(200, 'x') + "\n";
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

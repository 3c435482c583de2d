#include "session/files.h"

#include <array>
#include <filesystem>
#include <gtest/gtest.h>
#include <set>
#include <sys/stat.h>
#include <unistd.h>
#include <utility>

#include "support/failing_disk.h"
#include "support/failing_steps.h"
#include "support/reset_all.h"
#include "support/temp_folder.h"

namespace orvantis {
namespace {

namespace fs = std::filesystem;

class Files : public ::testing::Test {
  protected:
    void SetUp() override { ResetAll(); }

    TempFolder folder_;
};

TEST_F(Files, AMissingFileInReadModeShowsOpenErrorAndGivesNoHandle) {
    const std::string path = folder_.File("none.txt");
    EXPECT_EQ(FileOpener(path, open_mode::kReadText, 0, kFalse), 0);
    ASSERT_EQ(TestShell().log.size(), 1U);
    EXPECT_EQ(TestShell().log[0],
              "MessageBox|Open Error|" + path + "\\r\\n\\r\\nFile not found|Ok|None");
}

TEST_F(Files, AMissingFileInBinaryModeIsNotMade) {
    EXPECT_EQ(FileOpener(folder_.File("none.pnt"), open_mode::kBinary, 0, kFalse), 0);
    EXPECT_FALSE(std::filesystem::exists(folder_.File("none.pnt")));
}

TEST_F(Files, AFolderAndAPipeAreRefusedWithoutWaiting) {
    const std::string pipe = folder_.File("pipe");
    ASSERT_EQ(::mkfifo(pipe.c_str(), 0600), 0);
    EXPECT_EQ(FileOpener(pipe, open_mode::kBinary, 0, kFalse), 0);
    EXPECT_EQ(FileOpener(folder_.Path(), open_mode::kBinary, 0, kFalse), 0);
    EXPECT_EQ(FileExists(pipe), kFalse);
    EXPECT_EQ(FileExists(folder_.Path()), kFalse);
}

TEST_F(Files, AQuietOpeningReadsAFileAndTellsNothingOfOneThatIsNotThere) {
    const FileHandle file = OpenQuietly(folder_.Write("a.bin", "abc"));
    ASSERT_NE(file, 0);
    EXPECT_EQ(FileLength(file), 3);
    EXPECT_EQ(OpenQuietly(folder_.File("none.bin")), 0);
    EXPECT_EQ(OpenQuietly(folder_.Path()), 0);
    EXPECT_EQ(OpenQuietly(""), 0);
    EXPECT_TRUE(TestShell().boxes.empty());
    EXPECT_EQ(PendingRunTimeError(), 0);
    const std::array<std::uint8_t, 1> byte = {'x'};
    EXPECT_FALSE(WriteBytes(file, 1, byte)) << "it is for reading alone";
    RunTimeError ignored;
    TakeRunTimeError(ignored);
}

TEST_F(Files, EachOpeningOfAHandleHasItsOwnNumber) {
    const std::string path = folder_.Write("a.bin", "abc");
    const FileHandle first = OpenQuietly(path);
    const std::int32_t opening = OpeningOf(first);
    EXPECT_NE(opening, 0);
    EXPECT_EQ(OpeningOf(first), opening);
    CloseAllFiles();
    EXPECT_EQ(OpeningOf(first), 0);
    const FileHandle second = FileOpener(path, open_mode::kBinary, 0, kFalse);
    EXPECT_EQ(second, first);
    EXPECT_NE(OpeningOf(second), 0);
    EXPECT_NE(OpeningOf(second), opening);
    EXPECT_EQ(OpeningOf(0), 0);
}

TEST_F(Files, AFileThatIsOpenIsNotThatOfItsPathOnceAnotherIsPutInItsPlace) {
    const std::string path = folder_.Write("a.txt", "x");
    const FileHandle file = OpenQuietly(path);
    EXPECT_TRUE(IsFileOf(file, path));
    EXPECT_TRUE(IsFileOf(file, folder_.File("A.TXT")));
    std::filesystem::create_symlink("a.txt", folder_.File("link"));
    EXPECT_TRUE(IsFileOf(file, folder_.File("link")));
    ASSERT_TRUE(ReplaceFile(path, FileBytes(path)));
    EXPECT_FALSE(IsFileOf(file, path));
    EXPECT_FALSE(IsFileOf(file, folder_.File("none")));
    CloseFile(file);
    EXPECT_FALSE(IsFileOf(file, path));
    EXPECT_FALSE(IsFileOf(0, path));
}

TEST_F(Files, OnlyWhatHasNoFileAndNoFolderOfItsNameIsMissing) {
    const std::string path = folder_.Write("a.txt", "x");
    EXPECT_FALSE(IsMissing(path));
    EXPECT_FALSE(IsMissing(folder_.File("A.TXT")));
    EXPECT_FALSE(IsMissing(folder_.Path()));
    EXPECT_TRUE(IsMissing(folder_.File("b.txt")));
    EXPECT_TRUE(IsMissing(folder_.File("none\\b.txt")));
    EXPECT_TRUE(IsMissing(path + "\\b.txt"));
    std::filesystem::create_symlink("nowhere", folder_.File("link"));
    EXPECT_FALSE(IsMissing(folder_.File("link")));
    // Neither without the right to read it nor where its folder may not be searched.
    fs::permissions(folder_.Path(), fs::perms::all);
    const auto without = [&] {
        ActAsPlainUserOn(path, fs::perms::none);
        return FileExists(path) == 0 && !IsMissing(path) ? 0 : 1;
    };
    EXPECT_EXIT(std::_Exit(without()), ::testing::ExitedWithCode(0), "");
    const auto unsearched = [&] {
        ActAsPlainUserOn(folder_.Path(), fs::perms::none);
        return IsMissing(path) ? 1 : 0;
    };
    EXPECT_EXIT(std::_Exit(unsearched()), ::testing::ExitedWithCode(0), "");
}

TEST_F(Files, AnUnknownModeOpensNothingAndShowsNothing) {
    const std::string path = folder_.Write("a.txt", "x");
    EXPECT_EQ(FileOpener(path, 6, 0, kFalse), 0);
    EXPECT_EQ(FileOpener(path, 0, 0, kFalse), 0);
    EXPECT_TRUE(TestShell().log.empty());
}

TEST_F(Files, AReadOnlyFileOpenedWithClearReadOnlyStaysWritable) {
    const std::string path = folder_.Write("a.bin", "abc");
    fs::permissions(path, fs::perms::owner_read, fs::perm_options::replace);
    const FileHandle file = FileOpener(path, open_mode::kBinary, 0, kTrue);
    ASSERT_GT(file, 0);
    const Bytes x = {'x'};
    EXPECT_TRUE(WriteBytes(file, 2, x));
    CloseFile(file);
    EXPECT_EQ(FileBytes(path), (Bytes{'a', 'x', 'c'}));
    EXPECT_NE(fs::status(path).permissions() & fs::perms::owner_write, fs::perms::none);
}

TEST_F(Files, PositionsCountFromOneAndAReadPastTheEndIsAnError) {
    const FileHandle file =
        FileOpener(folder_.Write("a.bin", "abcd"), open_mode::kBinary, 0, kFalse);
    EXPECT_EQ(FileLength(file), 4);
    Bytes two(2);
    EXPECT_TRUE(ReadBytes(file, 1, two));
    EXPECT_EQ(two, (Bytes{'a', 'b'}));
    EXPECT_FALSE(ReadBytes(file, 4, two));
    RunTimeError raised;
    ASSERT_TRUE(TakeRunTimeError(raised));
    EXPECT_EQ(raised.number, 62);
    EXPECT_EQ(raised.description, "Input past end of file");
    EXPECT_FALSE(ReadBytes(file, 0, two));
    EXPECT_FALSE(ReadBytes(99, 1, two));
}

TEST_F(Files, AFileIsFoundWhateverTheCaseOfItsName) {
    std::filesystem::create_directories(folder_.File("Maps"));
    folder_.Write("Maps/World.OVM", "x");
    EXPECT_EQ(FileExists(folder_.Path() + "MAPS\\world.ovm"), kTrue);
    EXPECT_EQ(NativePath(folder_.Path() + "maps\\WORLD.ovm"), folder_.File("Maps/World.OVM"));
    EXPECT_EQ(FileExists(""), kFalse);
}

TEST_F(Files, AReplacedFileIsWholeAndLeavesNothingBeside) {
    const std::string path = folder_.Write("a.bin", "old and long");
    EXPECT_TRUE(ReplaceFile(path, Bytes{'n', 'e', 'w'}));
    EXPECT_EQ(FileBytes(path), (Bytes{'n', 'e', 'w'}));
    const auto files = std::filesystem::directory_iterator(folder_.Path());
    EXPECT_EQ(std::distance(begin(files), end(files)), 1);
}

TEST_F(Files, AFailedReplaceTellsTheUserAndLeavesTheOldFile) {
    const std::string path = folder_.File("none/a.bin");
    EXPECT_FALSE(ReplaceFile(path, Bytes{'x'}));
    ASSERT_EQ(TestShell().boxes.size(), 1U);
    EXPECT_EQ(TestShell().boxes[0], "Open Error: " + path + " /  / Path not found");

    // A folder of that name can't be replaced by a file.
    std::filesystem::create_directories(folder_.File("held"));
    EXPECT_FALSE(ReplaceFile(folder_.File("held"), Bytes{'x'}));
    EXPECT_TRUE(std::filesystem::is_directory(folder_.File("held")));
}

TEST_F(Files, AReplacedFileKeepsItsAccessRightsAndALinkStaysALink) {
    const std::string path = folder_.Write("a.bin", "old");
    fs::permissions(path, fs::perms::owner_read | fs::perms::owner_write);
    fs::create_symlink(path, folder_.File("link.bin"));
    EXPECT_TRUE(ReplaceFile(folder_.File("link.bin"), Bytes{'n'}));
    EXPECT_TRUE(fs::is_symlink(folder_.File("link.bin")));
    EXPECT_EQ(FileBytes(path), Bytes{'n'});
    EXPECT_EQ(fs::status(path).permissions(), fs::perms::owner_read | fs::perms::owner_write);
}

TEST_F(Files, WriteTextReplacesAndAppendTextAdds) {
    const std::string path = folder_.Write("a.txt", "old text");
    FileHandle file = FileOpener(path, open_mode::kWriteText, 0, kFalse);
    EXPECT_EQ(FileLength(file), 0);
    EXPECT_TRUE(WriteBytes(file, 1, Bytes{'a'}));
    CloseFile(file);
    file = FileOpener(path, open_mode::kAppendText, 0, kFalse);
    EXPECT_TRUE(WriteBytes(file, FileLength(file) + 1, Bytes{'b'}));
    CloseFile(file);
    EXPECT_EQ(FileBytes(path), (Bytes{'a', 'b'}));
}

TEST_F(Files, ReadWholeFileRefusesMoreThanItsLimit) {
    const std::string path = folder_.Write("a.bin", "abcd");
    Bytes bytes;
    EXPECT_TRUE(ReadWholeFile(path, 4, bytes));
    EXPECT_EQ(bytes.size(), 4U);
    EXPECT_FALSE(ReadWholeFile(path, 3, bytes));
    EXPECT_TRUE(bytes.empty());
}

TEST_F(Files, DiskErrorsShowTheirWords) {
    struct Row {
        std::int16_t number;
        std::string box;
    };
    const std::vector<Row> rows = {
        {52, "Filename is illegal|Ok|Exclamation"},
        {64, "Filename is illegal|Ok|Exclamation"},
        {54, "Can't open file for requested access type.|Ok|Exclamation"},
        {55, "File is already open.|Ok|Exclamation"},
        {57, "Internal disk error.|YesNo|Exclamation"},
        {61, "Disk is full. Continue?|YesNoCancel|Question"},
        {62,
         "File has nonstandard end-of-file marker, or an attempt has been made to read beyond the "
         "end-of-file marker.|Ok|Exclamation"},
        {68, "Device appears to be unavailable.|YesNo|Exclamation"},
        {71, "Insert a disk into the disk drive.|Ok|Exclamation"},
        {76, "Path does not exist.|Ok|Exclamation"},
    };
    for (const Row& row : rows) {
        TestShell().log.clear();
        FileErrors(row.number);
        EXPECT_EQ(TestShell().log, std::vector<std::string>{"MessageBox|Disk Error|" + row.box});
    }
}

TEST_F(Files, TheAnswerToADiskErrorIsTheAction) {
    struct Row {
        BoxAnswer answer;
        std::int16_t action;
    };
    constexpr std::array<Row, 7> rows = {{{BoxAnswer::Ok, 0},
                                          {BoxAnswer::Retry, 0},
                                          {BoxAnswer::Ignore, 1},
                                          {BoxAnswer::Cancel, 2},
                                          {BoxAnswer::Abort, 2},
                                          {BoxAnswer::Yes, 3},
                                          {BoxAnswer::No, 3}}};
    for (const std::int16_t number : {52, 54, 55, 57, 61, 62, 64, 68, 71, 76}) {
        for (const Row& row : rows) {
            TestShell().boxAnswers = {row.answer};
            EXPECT_EQ(FileErrors(number), row.action) << number;
        }
    }
}

TEST_F(Files, ADiskThatIsFullAnsweredYesIsUnrecognised) {
    TestShell().boxAnswers = {BoxAnswer::Yes};
    EXPECT_EQ(FileErrors(61), 3);
}

TEST_F(Files, AnErrorOutsideTheTableShowsNothingAndIsUnrecognised) {
    EXPECT_EQ(FileErrors(7), 3);
    EXPECT_TRUE(TestShell().log.empty());
}

TEST_F(Files, NoNumberOutsideTheTableIsADiskError) {
    const std::set<int> table = {52, 54, 55, 57, 61, 62, 64, 68, 71, 76};
    for (int number = -32768; number <= 32767; ++number) {
        if (table.count(number) != 0) continue;
        EXPECT_EQ(FileErrors(static_cast<std::int16_t>(number)), 3) << number;
    }
    EXPECT_TRUE(TestShell().log.empty());
}

TEST_F(Files, OpenErrorsTellTheReason) {
    folder_.Write("file", "x");
    const std::array<std::array<std::string, 2>, 4> rows = {{
        {folder_.File("none.bin"), "File not found"},
        {folder_.File("none/a.bin"), "Path not found"},
        {folder_.File("file/a.bin"), "Path not found"},
        {folder_.File(std::string(300, 'x')), "Bad file name or number"},
    }};
    for (const auto& [path, reason] : rows) {
        for (const std::int16_t mode : {2, 4, 5}) {
            TestShell().boxes.clear();
            EXPECT_EQ(FileOpener(path, mode, 22, kFalse), 0);
            std::string box = "Open Error: ";
            box.append(path).append(" /  / ").append(reason);
            EXPECT_EQ(TestShell().boxes, std::vector<std::string>{box});
        }
    }
    TestShell().boxes.clear();
    EXPECT_EQ(FileOpener("", open_mode::kReadText, 0, kFalse), 0);
    EXPECT_EQ(TestShell().boxes,
              std::vector<std::string>{"Open Error:  /  / Bad file name or number"});
    EXPECT_EQ(PendingRunTimeError(), 0);
}

TEST_F(Files, AFailedOpenLeavesTheFilesThatAreOpen) {
    const FileHandle file = FileOpener(folder_.Write("a", "bytes"), open_mode::kBinary, 0, kFalse);
    EXPECT_EQ(FileOpener(folder_.File("none"), open_mode::kBinary, 0, kFalse), 0);
    EXPECT_EQ(FileLength(file), 5);
}

TEST_F(Files, HandlesAreTheNextFreeNumbers) {
    const std::string path = folder_.Write("a", "x");
    EXPECT_EQ(FileOpener(path, open_mode::kBinary, 0, kFalse), 1);
    EXPECT_EQ(FileOpener(path, open_mode::kBinary, 0, kFalse), 2);
    CloseFile(1);
    EXPECT_EQ(FileOpener(path, open_mode::kReadText, 0, kFalse), 1);
}

TEST_F(Files, WhenAllHandlesAreTakenTheOpenIsRefusedWithWords) {
    const std::string path = folder_.Write("a", "x");
    FileHandle last = 0;
    while (TestShell().boxes.empty() && last < 1000) {
        const FileHandle file = FileOpener(path, open_mode::kReadText, 0, kFalse);
        if (file > 0) last = file;
    }
    EXPECT_EQ(last, 255);
    EXPECT_EQ(TestShell().boxes,
              std::vector<std::string>{"Open Error: " + path + " /  / Too many files"});
    CloseAllFiles();
    EXPECT_EQ(FileOpener(path, open_mode::kReadText, 0, kFalse), 1);
}

TEST_F(Files, AReadOnlyFileIsOpenedForReadingWhereItMayNotBeWritten) {
    const std::string path = folder_.Write("a", "bytes");
    fs::permissions(folder_.Path(), fs::perms::all);
    const auto openAll = [&] {
        ActAsPlainUserOn(path, fs::perms::owner_read);
        const FileHandle binary = FileOpener(path, open_mode::kBinary, 0, kFalse);
        Bytes five(5);
        if (binary < 1 || !ReadBytes(binary, 1, five)) return 1;
        if (WriteBytes(binary, 1, five)) return 2;
        if (FileOpener(path, open_mode::kWriteText, 0, kFalse) != 0) return 3;
        if (TestShell().boxes.back() != "Open Error: " + path + " /  / Permission denied") return 4;
        return FileOpener(path, open_mode::kWriteText, 0, kTrue) > 0 ? 0 : 5;
    };
    EXPECT_EXIT(std::_Exit(openAll()), ::testing::ExitedWithCode(0), "");
}

TEST_F(Files, AWriteOnAFullDiskFailsAndTheReplacedFileStays) {
    const std::string path = folder_.Write("a.bin", "old");
    const FileHandle file = FileOpener(path, open_mode::kBinary, 0, kFalse);
    bool written = true;
    bool replaced = true;
    std::int16_t stored = 0;
    {
        const FullDisk disk(100);
        written = WriteBytes(file, 1, Bytes(200));
        replaced = ReplaceFile(folder_.Write("b.bin", "old"), Bytes(200));
        stored = StoreFile(folder_.File("b.bin"), Bytes(200));
    }
    EXPECT_FALSE(written);
    EXPECT_FALSE(replaced);
    EXPECT_EQ(stored, error::kDiskFull);
    EXPECT_EQ(FileBytes(folder_.File("b.bin")), (Bytes{'o', 'l', 'd'}));
    const auto files = fs::directory_iterator(folder_.Path());
    EXPECT_EQ(std::distance(begin(files), end(files)), 2);
    RunTimeError raised;
    ASSERT_TRUE(TakeRunTimeError(raised));
    EXPECT_EQ(raised.description, "Disk full");
    EXPECT_EQ(TestShell().boxes,
              std::vector<std::string>{"Open Error: " + folder_.File("b.bin") + " /  / Disk full"});
}

TEST_F(Files, ALinkOfTheNameThatIsWrittenAsideIsNotWrittenThrough) {
    const std::string path = folder_.File("a.bin");
    const std::string other = folder_.Write("other", "precious");
    const std::string aside = folder_.File("~orv" + std::to_string(::getpid()) + "-");
    fs::create_symlink(other, aside + "1");
    fs::create_symlink(folder_.File("none"), aside + "2");
    EXPECT_TRUE(ReplaceFile(path, Bytes{'n'}));
    EXPECT_EQ(FileBytes(path), Bytes{'n'});
    EXPECT_EQ(FileBytes(other).size(), 8U);
    EXPECT_FALSE(fs::exists(folder_.File("none")));
    EXPECT_TRUE(fs::is_symlink(aside + "1"));

    // Where all its names are taken nothing is written.
    for (int i = 3; i <= 100; ++i) fs::create_symlink(other, aside + std::to_string(i));
    EXPECT_EQ(StoreFile(path, Bytes{'m'}), error::kPathAccess);
    EXPECT_EQ(FileBytes(path), Bytes{'n'});
    EXPECT_EQ(FileBytes(other).size(), 8U);
}

TEST_F(Files, APathWithANulTouchesNoOtherFile) {
    const std::string precious = folder_.Write("a.bin", "precious");
    fs::permissions(precious, fs::perms::owner_read);
    const std::string path = precious + std::string("\0.bin", 5);
    for (const std::string& bad : {path, std::string()}) {
        EXPECT_EQ(StoreFile(bad, Bytes{'x'}), error::kBadFileName);
        Bytes bytes;
        EXPECT_EQ(FetchFile(bad, 100, bytes), error::kBadFileName);
        DeleteFile(bad);
        EXPECT_FALSE(FileDate(bad).has_value());
        EXPECT_EQ(FileExists(bad), kFalse);
        EXPECT_TRUE(IsMissing(bad));
        EXPECT_FALSE(FolderShowsFile(bad));
        for (const std::int16_t mode : {1, 2, 3, 4, 5}) {
            EXPECT_EQ(FileOpener(bad, mode, 0, kTrue), 0);
        }
    }
    MakeFolderOf(folder_.File("new") + std::string("\0/a", 3));
    EXPECT_FALSE(fs::exists(folder_.File("new")));
    EXPECT_FALSE(FolderShowsFile(folder_.Path() + std::string("\0/a", 3)));
    EXPECT_EQ(FileBytes(precious).size(), 8U);
    EXPECT_EQ(fs::status(precious).permissions(), fs::perms::owner_read);
    const auto files = fs::directory_iterator(folder_.Path());
    EXPECT_EQ(std::distance(begin(files), end(files)), 1);

    TestShell().boxes.clear();
    EXPECT_FALSE(ReplaceFile(path, Bytes{'x'}));
    ASSERT_EQ(TestShell().boxes.size(), 1U);
    EXPECT_TRUE(TestShell().boxes[0].ends_with(" /  / Bad file name or number"));
}

TEST_F(Files, AFileIsMadeWhereALinkPointsToNothing) {
    fs::create_directories(folder_.File("far"));
    fs::create_symlink("far/b.bin", folder_.File("middle"));  // counts from the link's folder
    fs::create_symlink(folder_.File("middle"), folder_.File("link"));
    EXPECT_EQ(StoreFile(folder_.File("link"), Bytes{'n'}), 0);
    EXPECT_TRUE(fs::is_symlink(folder_.File("link")));
    EXPECT_TRUE(fs::is_symlink(folder_.File("middle")));
    EXPECT_EQ(FileBytes(folder_.File("far/b.bin")), Bytes{'n'});

    fs::create_symlink("none/b.bin", folder_.File("astray"));
    EXPECT_EQ(StoreFile(folder_.File("astray"), Bytes{'n'}), error::kPathNotFound);
    EXPECT_TRUE(fs::is_symlink(folder_.File("astray")));
}

TEST_F(Files, ARingOfLinksIsAnErrorAndStays) {
    fs::create_symlink("b", folder_.File("a"));
    fs::create_symlink("a", folder_.File("b"));
    EXPECT_EQ(StoreFile(folder_.File("a"), Bytes{'n'}), error::kPathAccess);
    EXPECT_TRUE(fs::is_symlink(folder_.File("a")));
    EXPECT_TRUE(fs::is_symlink(folder_.File("b")));
}

TEST_F(Files, AFileOfTheLongestNameIsReplacedAndALongerNameIsIllegal) {
    const std::string path = folder_.File(std::string(255, 'x'));
    EXPECT_EQ(StoreFile(path, Bytes{'a'}), 0);
    EXPECT_EQ(StoreFile(path, Bytes{'b'}), 0);
    EXPECT_EQ(FileBytes(path), Bytes{'b'});
    EXPECT_EQ(StoreFile(path + "x", Bytes{'c'}), error::kBadFileName);
    const auto files = fs::directory_iterator(folder_.Path());
    EXPECT_EQ(std::distance(begin(files), end(files)), 1);
}

TEST_F(Files, AnUnknownModeLeavesAReadOnlyFileReadOnly) {
    const std::string path = folder_.Write("a.bin", "abc");
    fs::permissions(path, fs::perms::owner_read);
    for (const std::int16_t mode : {-1, 0, 6, 32767}) {
        EXPECT_EQ(FileOpener(path, mode, 0, kTrue), 0);
    }
    EXPECT_EQ(fs::status(path).permissions(), fs::perms::owner_read);
    EXPECT_TRUE(TestShell().log.empty());
}

TEST_F(Files, AReadFromWhatIsNoOpenFileOrNoPositionIsABadNumber) {
    Bytes two(2);
    const FileHandle file = FileOpener(folder_.Write("a", "abcd"), open_mode::kBinary, 0, kFalse);
    for (const auto& [handle, position] : {std::pair<FileHandle, int>{99, 1}, {0, 1}, {file, 0}}) {
        EXPECT_FALSE(ReadBytes(handle, position, two));
        RunTimeError raised;
        ASSERT_TRUE(TakeRunTimeError(raised));
        EXPECT_EQ(raised.description, "Bad file name or number");
    }
}

TEST_F(Files, WhatIsThereIsReadWithoutAnError) {
    const FileHandle file = FileOpener(folder_.Write("a", "abcd"), open_mode::kBinary, 0, kFalse);
    Bytes three(3);
    EXPECT_EQ(ReadWhatIsThere(file, 2, three), 3U);
    EXPECT_EQ(three, (Bytes{'b', 'c', 'd'}));
    EXPECT_EQ(ReadWhatIsThere(file, 4, three), 1U);
    EXPECT_EQ(ReadWhatIsThere(file, 5, three), 0U);
    EXPECT_EQ(ReadWhatIsThere(file, 0, three), 0U);
    EXPECT_EQ(ReadWhatIsThere(99, 1, three), 0U);
    EXPECT_EQ(PendingRunTimeError(), 0);
}

TEST_F(Files, AFolderShowsItsFilesButNeitherFoldersNorHiddenOnes) {
    fs::create_directories(folder_.File("a/folder"));
    folder_.Write("a/.hidden", "x");
    EXPECT_FALSE(FolderShowsFile(folder_.File("a")));
    EXPECT_FALSE(FolderShowsFile(folder_.File("none")));
    EXPECT_FALSE(FolderShowsFile(folder_.File("a/.hidden")));
    folder_.Write("a/file", "");
    EXPECT_TRUE(FolderShowsFile(folder_.Path() + "A\\"));
}

TEST_F(Files, AMovedFileTakesThePlaceOfTheOneOfThatName) {
    const std::string from = folder_.Write("from", "new");
    const std::string to = folder_.Write("to", "old one");
    EXPECT_EQ(MoveFile(from, to), 0);
    EXPECT_EQ(FileBytes(to).size(), 3U);
    EXPECT_FALSE(fs::exists(from));
}

TEST_F(Files, AMovedFileLeavesOneAloneWhoseNameDiffersByCase) {
    const std::string from = folder_.Write("from", "new");
    const std::string other = folder_.Write("TO", "old one");
    EXPECT_EQ(MoveFile(from, folder_.File("to")), 0);
    EXPECT_EQ(FileBytes(other).size(), 7U);
    EXPECT_EQ(FileBytes(folder_.File("to")).size(), 3U);
}

TEST_F(Files, AFileOfTwoNamesMovedOntoItsOwnNameKeepsBoth) {
    const std::string path = folder_.Write("path", "bytes");
    fs::create_hard_link(path, folder_.File("other"));
    EXPECT_EQ(MoveFile(path, path), 0);
    EXPECT_EQ(FileBytes(path).size(), 5U);
    EXPECT_EQ(FileBytes(folder_.File("other")).size(), 5U);
}

TEST_F(Files, AKeptFileHasBothNamesUntilANewOneTakesTheOld) {
    const std::string path = folder_.Write("path", "old one");
    const std::string kept = folder_.File("kept");
    EXPECT_EQ(KeepFile(path, kept), 0);
    EXPECT_EQ(FileBytes(path).size(), 7U);
    EXPECT_EQ(MoveFile(folder_.Write("from", "new"), path), 0);
    EXPECT_EQ(FileBytes(path).size(), 3U);
    EXPECT_EQ(FileBytes(kept).size(), 7U);
    // Taken back while it has both names still, it has its old one alone.
    EXPECT_EQ(KeepFile(path, folder_.File("other")), 0);
    EXPECT_EQ(MoveFile(folder_.File("other"), path), 0);
    EXPECT_EQ(FileBytes(path).size(), 3U);
    EXPECT_FALSE(fs::exists(folder_.File("other")));
    EXPECT_EQ(KeepFile(folder_.File("none"), kept), error::kFileNotFound);
    EXPECT_EQ(FileBytes(kept).size(), 7U);
}

TEST_F(Files, AKeptFileReplacesNothing) {
    const std::string path = folder_.Write("path", "old one");
    const std::string file = folder_.Write("file", "bytes");
    fs::create_symlink("nowhere", folder_.File("link"));
    for (const int step : {0, 1}) {  // with and without second names
        const FailingSteps disk(step);
        EXPECT_EQ(KeepFile(path, file), error::kPathAccess) << step;
        EXPECT_EQ(KeepFile(path, folder_.File("link")), error::kPathAccess) << step;
    }
    EXPECT_EQ(FileBytes(file).size(), 5U);
    EXPECT_TRUE(fs::is_symlink(folder_.File("link")));
    EXPECT_EQ(FileBytes(path).size(), 7U);
}

TEST_F(Files, ALinkThatLeadsToNothingIsNeitherMovedNorTakenForAMissingFile) {
    const std::string link = folder_.File("link");
    fs::create_symlink("nowhere", link);
    folder_.Write("LINK", "another's");
    const std::string file = folder_.Write("file", "bytes");
    EXPECT_EQ(NativePath(link), link);
    EXPECT_EQ(MoveFile(link, folder_.File("other")), error::kPathAccess);
    EXPECT_EQ(KeepFile(link, folder_.File("other")), error::kPathAccess);
    EXPECT_EQ(CopyAccessRights(link, file), error::kPathAccess);
    EXPECT_EQ(MoveFile(folder_.File("none"), file), error::kFileNotFound);
    EXPECT_TRUE(fs::is_symlink(link));
    EXPECT_FALSE(fs::exists(folder_.File("other")));
}

TEST_F(Files, AFileOfJustThatNameIsStoredAndDeleted) {
    const std::string other = folder_.Write("FILE", "another's");
    const std::string file = folder_.File("file");
    DeleteExactFile(file);
    EXPECT_EQ(FileBytes(other).size(), 9U);
    EXPECT_EQ(StoreExactFile(folder_.Path() + "\\file", Bytes{'n'}), 0);
    EXPECT_EQ(FileBytes(file), Bytes{'n'});
    EXPECT_EQ(FileBytes(other).size(), 9U);
    DeleteExactFile(folder_.Path() + "\\file");
    EXPECT_FALSE(fs::exists(file));
    EXPECT_EQ(FileBytes(other).size(), 9U);
    EXPECT_EQ(StoreExactFile("", Bytes{}), error::kBadFileName);
    DeleteExactFile("");
}

TEST_F(Files, WhatALinkOfJustThatNamePointsToStaysWhereAFileIsStored) {
    const std::string file = folder_.Write("file", "precious");
    fs::permissions(file, fs::perms::owner_read);
    fs::create_directory(folder_.File("folder"));
    const std::string ordinary = folder_.File("ordinary");
    EXPECT_EQ(StoreExactFile(ordinary, Bytes{'n'}), 0);
    for (const char* target : {"file", "folder", "nowhere", "link"}) {
        const std::string link = folder_.File("link");
        fs::remove(link);
        fs::create_symlink(target, link);
        EXPECT_EQ(StoreExactFile(link, Bytes{'n'}), 0) << target;
        EXPECT_FALSE(fs::is_symlink(link)) << target;
        EXPECT_EQ(FileBytes(link), Bytes{'n'}) << target;
        EXPECT_EQ(fs::status(link).permissions(), fs::status(ordinary).permissions()) << target;
    }
    EXPECT_EQ(FileBytes(file).size(), 8U);
    EXPECT_TRUE(fs::is_empty(folder_.File("folder")));
    EXPECT_FALSE(fs::exists(folder_.File("nowhere")));
    EXPECT_EQ(StoreExactFile(folder_.File("folder"), Bytes{'n'}), error::kPathAccess);
}

TEST_F(Files, AFolderIsKeptByOneAtATime) {
    fs::create_directory(folder_.File("folder"));
    {
        const FolderLock first(folder_.File("file"));
        EXPECT_EQ(first.Failure(), 0);
        const FolderLock second(folder_.File("other"));
        EXPECT_EQ(second.Failure(), error::kPermission);
        const FolderLock elsewhere(folder_.File("folder/file"));
        EXPECT_EQ(elsewhere.Failure(), 0);
    }
    const FolderLock again(folder_.Path() + "\\file");
    EXPECT_EQ(again.Failure(), 0);
}

TEST_F(Files, WhereAFolderCannotBeKeptNobodyIsHindered) {
    const std::string nowhere = folder_.File("none/file");
    for (const std::string& path : {nowhere, std::string(), std::string("a\0b", 3)}) {
        const FolderLock first(path);
        const FolderLock second(path);
        EXPECT_EQ(first.Failure(), 0);
        EXPECT_EQ(second.Failure(), 0);
    }
    const auto keep = [this] {
        ActAsPlainUserOn(folder_.Path(), fs::perms::owner_write | fs::perms::owner_exec);
        const FolderLock first(folder_.File("file"));
        const FolderLock second(folder_.File("file"));
        fs::permissions(folder_.Path(), fs::perms::owner_all);
        std::_Exit(first.Failure() == 0 && second.Failure() == 0 ? 0 : 2);
    };
    EXPECT_EXIT(keep(), testing::ExitedWithCode(0), "");
}

TEST_F(Files, WhereAFileCannotHaveTwoNamesAKeptOneIsMoved) {
    const std::string path = folder_.Write("path", "old one");
    const FailingSteps disk(1);
    EXPECT_EQ(KeepFile(path, folder_.File("kept")), 0);
    EXPECT_FALSE(fs::exists(path));
    EXPECT_EQ(FileBytes(folder_.File("kept")).size(), 7U);
}

TEST_F(Files, AnUnusedPathIsOfTheSameFolderAndNothingHasIt) {
    const std::string path = folder_.File("file");
    const std::string first = UnusedPathBeside(path);
    EXPECT_TRUE(IsMissing(first));
    fs::create_symlink("nowhere", NativePath(first));
    const std::string second = UnusedPathBeside(path);
    EXPECT_NE(second, first);
    EXPECT_EQ(fs::path(NativePath(second)).parent_path(), fs::path(path).parent_path());
}

TEST_F(Files, WhatIsNoFileOrMayNotBeWrittenIsNotMoved) {
    fs::create_directory(folder_.File("folder"));
    const std::string file = folder_.Write("file", "bytes");
    EXPECT_EQ(MoveFile(folder_.File("none"), file), error::kFileNotFound);
    EXPECT_EQ(MoveFile(folder_.File("folder"), folder_.File("other")), error::kPathAccess);
    EXPECT_EQ(MoveFile(file, folder_.File("folder")), error::kPathAccess);
    EXPECT_EQ(MoveFile(file, folder_.File("none/file")), error::kPathNotFound);
    EXPECT_EQ(MoveFile("", file), error::kBadFileName);
    EXPECT_EQ(MoveFile(file, std::string_view("a\0b", 3)), error::kBadFileName);
    EXPECT_EQ(FileBytes(file).size(), 5U);
    const auto move = [&] {
        ActAsPlainUserOn(file, fs::perms::owner_read);
        std::_Exit(MoveFile(file, folder_.File("other")) == error::kPermission ? 0 : 2);
    };
    fs::permissions(folder_.Path(), fs::perms::all);
    EXPECT_EXIT(move(), testing::ExitedWithCode(0), "");
}

TEST_F(Files, AccessRightsAreCopied) {
    const std::string from = folder_.Write("from", "a");
    const std::string to = folder_.Write("to", "b");
    fs::permissions(from, fs::perms::owner_read | fs::perms::owner_write);
    EXPECT_EQ(CopyAccessRights(from, to), 0);
    EXPECT_EQ(fs::status(to).permissions(), fs::perms::owner_read | fs::perms::owner_write);
    EXPECT_EQ(CopyAccessRights(folder_.File("none"), to), error::kFileNotFound);
    EXPECT_EQ(CopyAccessRights(from, folder_.File("none")), error::kFileNotFound);
    EXPECT_EQ(CopyAccessRights(from, ""), error::kBadFileName);
}

TEST_F(Files, AFileIsCutToALength) {
    const std::string path = folder_.Write("a", "bytes");
    const FileHandle file = FileOpener(path, open_mode::kBinary, 0, kFalse);
    EXPECT_TRUE(SetFileLength(file, 2));
    EXPECT_EQ(FileBytes(path), (Bytes{'b', 'y'}));
    EXPECT_FALSE(SetFileLength(file, -1));
    CloseFile(file);
    EXPECT_FALSE(SetFileLength(file, 1));
    RunTimeError ignored;
    TakeRunTimeError(ignored);
    EXPECT_FALSE(SetFileLength(FileOpener(path, open_mode::kReadText, 0, kFalse), 1));
    EXPECT_EQ(PendingRunTimeError(), error::kBadFileMode);
    EXPECT_EQ(FileBytes(path).size(), 2U);
}

TEST_F(Files, AddBackslashTrimsAndAddsOneAtMost) {
    EXPECT_EQ(AddBackslash("  C:\\maps "), "C:\\maps\\");
    EXPECT_EQ(AddBackslash("C:\\maps\\"), "C:\\maps\\");
    EXPECT_EQ(AddBackslash(""), "\\");
}

TEST_F(Files, BaseNameCutsFoldersAndExtension) {
    EXPECT_EQ(BaseName("C:\\maps\\world.ovm", true), "world");
    EXPECT_EQ(BaseName("maps/world.ovm", false), "world.ovm");
    EXPECT_EQ(BaseName("x", true), "");
}

}  // namespace
}  // namespace orvantis

#include "session/files.h"

#include <filesystem>
#include <gtest/gtest.h>
#include <sys/stat.h>

#include "support/reset_all.h"
#include "support/temp_folder.h"

namespace orvantis {
namespace {

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

TEST_F(Files, AnUnknownModeOpensNothingAndShowsNothing) {
    const std::string path = folder_.Write("a.txt", "x");
    EXPECT_EQ(FileOpener(path, 6, 0, kFalse), 0);
    EXPECT_EQ(FileOpener(path, 0, 0, kFalse), 0);
    EXPECT_TRUE(TestShell().log.empty());
}

TEST_F(Files, AReadOnlyFileOpenedWithClearReadOnlyStaysWritable) {
    namespace fs = std::filesystem;
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
    namespace fs = std::filesystem;
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

TEST_F(Files, DiskErrorsShowTheirWordsAndMapTheAnswer) {
    struct Row {
        std::int16_t number;
        std::string box;
        BoxAnswer answer;
        std::int16_t action;
    };
    const std::vector<Row> rows = {
        {52, "Filename is illegal|Ok|Exclamation", BoxAnswer::Ok, 0},
        {64, "Filename is illegal|Ok|Exclamation", BoxAnswer::Ok, 0},
        {54, "Can't open file for requested access type.|Ok|Exclamation", BoxAnswer::Ok, 0},
        {55, "File is already open.|Ok|Exclamation", BoxAnswer::Ok, 0},
        {57, "Internal disk error.|YesNo|Exclamation", BoxAnswer::No, 3},
        {61, "Disk is full. Continue?|YesNoCancel|Question", BoxAnswer::Yes, 3},
        {61, "Disk is full. Continue?|YesNoCancel|Question", BoxAnswer::Cancel, 2},
        {76, "Path does not exist.|Ok|Exclamation", BoxAnswer::Retry, 0},
        {76, "Path does not exist.|Ok|Exclamation", BoxAnswer::Ignore, 1},
        {76, "Path does not exist.|Ok|Exclamation", BoxAnswer::Abort, 2},
        {62,
         "File has nonstandard end-of-file marker, or an attempt has been made to read beyond the "
         "end-of-file marker.|Ok|Exclamation",
         BoxAnswer::Ok, 0},
        {68, "Device appears to be unavailable.|YesNo|Exclamation", BoxAnswer::Yes, 3},
        {71, "Insert a disk into the disk drive.|Ok|Exclamation", BoxAnswer::Ok, 0},
        {76, "Path does not exist.|Ok|Exclamation", BoxAnswer::Ok, 0},
    };
    for (const Row& row : rows) {
        TestShell().log.clear();
        TestShell().boxAnswers = {row.answer};
        EXPECT_EQ(FileErrors(row.number), row.action) << row.number;
        ASSERT_EQ(TestShell().log.size(), 1U);
        EXPECT_EQ(TestShell().log[0], "MessageBox|Disk Error|" + row.box);
    }
}

TEST_F(Files, AnErrorOutsideTheTableShowsNothingAndIsUnrecognised) {
    EXPECT_EQ(FileErrors(7), 3);
    EXPECT_TRUE(TestShell().log.empty());
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

#include "map/point_database.h"

#include <chrono>
#include <filesystem>

#include "map/map_fixture.h"
#include "map/view_ring.h"
#include "session/files.h"
#include "support/failing_disk.h"

namespace orvantis {
namespace {

namespace fs = std::filesystem;
using std::chrono::seconds;

class PointDatabaseTest : public MapTest {
  protected:
    // Three lines: a coast that thins out, an island of one point at level 5, a border that has
    // points at level 1 alone.
    void AddThreeLines() {
        AddLine(1001, {{5, 10, 20}, {1, 11, 25}, {3, 12, 30}, {5, 9, 40}});
        AddLine(2001, {{1, 100, 200}, {1, 110, 210}});
        AddLine(5001, {{2, -10, -20}, {5, -11, -21}, {4, -12, -25}});
    }

    std::string IndexPath() const { return folder.File("levelx.ndx"); }

    static void SetTime(const std::string& path, fs::file_time_type time) {
        fs::last_write_time(path, time);
    }

    const LineIndexEntry& Entry(std::size_t line) const { return pointDatabase.LineIndex[line]; }
};

TEST_F(PointDatabaseTest, HeaderTakesThirtyTwoBytesInTheirOrder) {
    LineHeader header{-2, 3, "Atlantic coast", 1, 2, 3, 4};
    Bytes bytes(kLineHeaderSize);
    PutLineHeader(bytes.data(), header);
    const Bytes expected = {0xFE, 0xFF, 3,   0,   'A', 't', 'l', 'a', 'n', 't', 'i',
                            'c',  ' ',  'c', 'o', 'a', 's', 't', ' ', ' ', ' ', ' ',
                            ' ',  ' ',  1,   0,   2,   0,   3,   0,   4,   0};
    EXPECT_EQ(bytes, expected);
    EXPECT_EQ(GetLineHeader(bytes.data()).name, "Atlantic coast");
}

TEST_F(PointDatabaseTest, IndexEntryTakesFortyBytesInTheirOrder) {
    LineIndexEntry entry;
    entry.code = 1001;
    entry.pointCount = {0, 1, 2, 3, 4, 5};
    entry.pointPos = {0, 33, 0x10203, 3, 4, 5};
    entry.latMin = -1;
    entry.longMax = 9;
    Bytes bytes(kLineIndexEntrySize);
    PutLineIndexEntry(bytes.data(), entry);
    const Bytes expected = {0xE9, 3, 1, 0, 2, 0, 3, 0, 4, 0, 5, 0, 33,   0,    0, 0, 3, 2, 1, 0,
                            3,    0, 0, 0, 4, 0, 0, 0, 5, 0, 0, 0, 0xFF, 0xFF, 0, 0, 0, 0, 9, 0};
    EXPECT_EQ(bytes, expected);
    const LineIndexEntry back = GetLineIndexEntry(bytes.data());
    EXPECT_EQ(back.pointCount, entry.pointCount);
    EXPECT_EQ(back.pointPos, entry.pointPos);
}

TEST_F(PointDatabaseTest, CoarserFilesHoldTheSameHeadersAndThePointsOfTheirLevel) {
    AddThreeLines();
    MakeDatabase();
    // Points of level 3 or above: two, none and two.
    Bytes expected;
    AppendLine(expected, 1001, "line 1001", {{5, 10, 20}, {3, 12, 30}, {5, 9, 40}});
    AppendLine(expected, 2001, "line 2001", {});
    AppendLine(expected, 5001, "line 5001", {{5, -11, -21}, {4, -12, -25}});
    Bytes level3 = FileBytes(LevelPath(3));
    ASSERT_EQ(level3.size(), expected.size());
    EXPECT_EQ(GetLineHeader(&level3[0]).count, 3);
    // Extents are those of the whole line, not of the points kept.
    const std::size_t second = 32 + 3 * 6;
    EXPECT_EQ(GetLineHeader(&level3[second]).count, 0);
    EXPECT_EQ(GetLineHeader(&level3[second]).latMin, 100);
    EXPECT_EQ(GetLineHeader(&level3[second]).longMax, 210);
    const std::size_t third = second + 32;
    EXPECT_EQ(GetLineHeader(&level3[third]).latMax, -10);
    EXPECT_EQ(GetLinePoint(&level3[third + 32]).lat, -11);
    EXPECT_EQ(GetLinePoint(&level3[third + 38]).lat, -12);
}

TEST_F(PointDatabaseTest, LineWithOnePointAtALevelHasCountOneThere) {
    AddThreeLines();
    MakeDatabase();
    EXPECT_EQ(Entry(3).pointCount[5], 1);
    EXPECT_EQ(Entry(3).pointCount[4], 2);
}

TEST_F(PointDatabaseTest, LineWithNoPointAtALevelHasCountZeroAndAPosition) {
    AddThreeLines();
    MakeDatabase();
    EXPECT_EQ(Entry(2).pointCount[2], 0);
    // In level 2 it stands behind the first line of three points.
    EXPECT_EQ(Entry(2).pointPos[2], 32 + 3 * 6 + 32 + 1);
}

TEST_F(PointDatabaseTest, FirstLineOfAFileHasPositionThirtyThree) {
    AddThreeLines();
    MakeDatabase();
    for (std::size_t level = 1; level <= 5; ++level) EXPECT_EQ(Entry(1).pointPos[level], 33);
}

TEST_F(PointDatabaseTest, IndexIsWrittenWithFortyBytesALine) {
    AddThreeLines();
    MakeDatabase();
    const Bytes bytes = FileBytes(IndexPath());
    ASSERT_EQ(bytes.size(), 120U);
    EXPECT_EQ(GetLineIndexEntry(&bytes[80]).code, 5001);
}

TEST_F(PointDatabaseTest, MissingLevelOneFailsWithTheOpenErrorBox) {
    EXPECT_NE(GenerateLevels(LevelPath(1), kFirstUseText), kFalse);
    EXPECT_EQ(TestShell().boxes,
              std::vector<std::string>{"Open Error: " + LevelPath(1) + " /  / File not found"});
    EXPECT_EQ(FileExists(LevelPath(2)), kFalse);
}

TEST_F(PointDatabaseTest, LevelThatCannotBeReplacedFailsWithTheOpenErrorBox) {
    AddThreeLines();
    folder.Write("level1.pnt", level1);
    fs::create_directory(folder.File("level4.pnt"));
    EXPECT_NE(GenerateLevels(LevelPath(1), kFirstUseText), kFalse);
    ASSERT_EQ(TestShell().boxes.size(), 1U);
    EXPECT_EQ(TestShell().boxes[0], "Open Error: " + LevelPath(4) + " /  / Path/File access error");
}

TEST_F(PointDatabaseTest, GeneratingShowsProgressFromTwoThirdsToTheEnd) {
    for (std::int16_t line = 0; line < 300; ++line) {
        AddLine(static_cast<std::int16_t>(1000 + line), {{5, line, line}, {5, 0, 0}});
    }
    folder.Write("level1.pnt", level1);
    EXPECT_EQ(GenerateLevels(LevelPath(1), kFirstUseText), kFalse);
    EXPECT_EQ(TestShell().progressCalls, 34);  // 67 to 100, each once
}

TEST_F(PointDatabaseTest, EmptyLevelOneMakesEmptyLevelsAndAnEmptyIndex) {
    MakeDatabase();
    EXPECT_EQ(pointDatabase.count, 0);
    for (std::int16_t level = 2; level <= 5; ++level) {
        EXPECT_NE(FileExists(LevelPath(level)), kFalse);
        EXPECT_TRUE(FileBytes(LevelPath(level)).empty());
    }
}

TEST_F(PointDatabaseTest, MissingLevelTwoBesideTheOthersMakesAllFourAnew) {
    AddThreeLines();
    MakeDatabase();
    EXPECT_FALSE(LevelsNeedRebuild());
    fs::remove(LevelPath(2));
    EXPECT_TRUE(LevelsNeedRebuild());
    const auto before = fs::last_write_time(LevelPath(5)) - seconds(10);
    for (std::int16_t level = 3; level <= 5; ++level) SetTime(LevelPath(level), before);
    ASSERT_EQ(GenerateLevels(LevelPath(1), kFirstUseText), kFalse);
    EXPECT_NE(FileExists(LevelPath(2)), kFalse);
    for (std::int16_t level = 3; level <= 5; ++level) {
        EXPECT_GT(fs::last_write_time(LevelPath(level)), before) << level;
    }
}

TEST_F(PointDatabaseTest, LevelTwoOlderThanLevelOneNeedsARebuild) {
    AddThreeLines();
    MakeDatabase();
    SetTime(LevelPath(2), fs::last_write_time(LevelPath(1)));
    EXPECT_FALSE(LevelsNeedRebuild());
    SetTime(LevelPath(2), fs::last_write_time(LevelPath(1)) - seconds(1));
    EXPECT_TRUE(LevelsNeedRebuild());
}

// Level 3 is the first that doesn't fit the disk; those before it in the order of work do.
TEST_F(PointDatabaseTest, FailureAtLevelThreeLeavesLevelsThatNeedARebuild) {
    AddLine(1001, {{5, 0, 0}, {3, 1, 1}, {2, 2, 2}, {1, 3, 3}, {5, 4, 4}});
    MakeDatabase();
    EXPECT_FALSE(LevelsNeedRebuild());
    const auto now = fs::file_time_type::clock::now();
    SetTime(LevelPath(1), now - seconds(10));
    for (std::int16_t level = 2; level <= 5; ++level) SetTime(LevelPath(level), now - seconds(20));
    ASSERT_EQ(fs::file_size(LevelPath(4)), 44U);
    ASSERT_EQ(fs::file_size(LevelPath(3)), 50U);
    {
        const FullDisk disk(44);
        EXPECT_NE(GenerateLevels(LevelPath(1), kFirstUseText), kFalse);
    }
    EXPECT_EQ(TestShell().boxes,
              std::vector<std::string>{"Open Error: " + LevelPath(3) + " /  / Disk full"});
    EXPECT_GT(fs::last_write_time(LevelPath(4)), now - seconds(20)) << "level 4 is new";
    EXPECT_TRUE(LevelsNeedRebuild());
}

// An index with one line's code changed, so that a test can tell whether it was read or made anew.
Bytes MarkedIndex(const std::string& path) {
    Bytes bytes = FileBytes(path);
    PutI16(bytes.data(), 1777);
    return bytes;
}

TEST_F(PointDatabaseTest, LaterIndexIsLoadedAsItStands) {
    AddThreeLines();
    MakeDatabase();
    folder.Write("levelx.ndx", MarkedIndex(IndexPath()));
    SetTime(IndexPath(), fs::last_write_time(LevelPath(5)) + seconds(1));
    EXPECT_EQ(LoadLineIndex(), kFalse);
    EXPECT_EQ(Entry(1).code, 1777);
}

TEST_F(PointDatabaseTest, IndexOfTheSameMomentAsLevelFiveIsRebuilt) {
    AddThreeLines();
    MakeDatabase();
    folder.Write("levelx.ndx", MarkedIndex(IndexPath()));
    SetTime(IndexPath(), fs::last_write_time(LevelPath(5)));
    EXPECT_EQ(LoadLineIndex(), kFalse);
    EXPECT_EQ(Entry(1).code, 1001);
    EXPECT_EQ(GetI16(FileBytes(IndexPath()).data()), 1001);
}

TEST_F(PointDatabaseTest, TailOfAnIndexThatIsNoWholeEntryIsIgnored) {
    AddThreeLines();
    MakeDatabase();
    Bytes bytes = MarkedIndex(IndexPath());
    bytes.resize(bytes.size() + 39, 0xFF);
    folder.Write("levelx.ndx", bytes);
    SetTime(IndexPath(), fs::last_write_time(LevelPath(5)) + seconds(1));
    EXPECT_EQ(LoadLineIndex(), kFalse);
    EXPECT_EQ(pointDatabase.count, 3);
    EXPECT_EQ(Entry(1).code, 1777);
}

TEST_F(PointDatabaseTest, LaterIndexIsLoadedWithoutALevelFileBeingOpened) {
    AddThreeLines();
    MakeDatabase();
    folder.Write("levelx.ndx", MarkedIndex(IndexPath()));
    SetTime(IndexPath(), fs::last_write_time(LevelPath(5)) + seconds(1));
    for (std::int16_t level = 1; level <= 4; ++level) fs::remove(LevelPath(level));
    EXPECT_EQ(LoadLineIndex(), kFalse);
    EXPECT_EQ(Entry(1).code, 1777);
    EXPECT_TRUE(TestShell().boxes.empty());
}

TEST_F(PointDatabaseTest, LevelFileThatACachedIndexDoesWithoutIsMissedByThePlot) {
    AddThreeLines();
    MakeDatabase();
    SetTime(IndexPath(), fs::last_write_time(LevelPath(5)) + seconds(1));
    fs::remove(LevelPath(3));
    ASSERT_EQ(LoadLineIndex(), kFalse);
    CurrentMap().precision = 3;
    PlotMap4(kFalse, surface, kTrue);
    EXPECT_EQ(TestShell().boxes,
              std::vector<std::string>{"Open Error: " + LevelPath(3) + " /  / File not found"});
}

TEST_F(PointDatabaseTest, EmptyIndexIsRebuilt) {
    AddThreeLines();
    MakeDatabase();
    folder.Write("levelx.ndx", Bytes(39));
    SetTime(IndexPath(), fs::last_write_time(LevelPath(5)) + seconds(1));
    EXPECT_EQ(LoadLineIndex(), kFalse);
    EXPECT_EQ(pointDatabase.count, 3);
}

TEST_F(PointDatabaseTest, IndexOfMoreLinesThanCanBeCountedIsRebuilt) {
    AddThreeLines();
    MakeDatabase();
    folder.Write("levelx.ndx", Bytes(40 * 32768));
    SetTime(IndexPath(), fs::last_write_time(LevelPath(5)) + seconds(1));
    EXPECT_EQ(LoadLineIndex(), kFalse);
    EXPECT_EQ(pointDatabase.count, 3);
}

TEST_F(PointDatabaseTest, CodeThatDiffersBetweenLevelsSetsTheFailedFlagAndTheBuildGoesOn) {
    AddThreeLines();
    folder.Write("level1.pnt", level1);
    ASSERT_EQ(GenerateLevels(LevelPath(1), kFirstUseText), kFalse);
    Bytes level3 = FileBytes(LevelPath(3));
    PutI16(level3.data(), 1002);
    folder.Write("level3.pnt", level3);
    EXPECT_NE(LoadLineIndex(), kFalse);
    EXPECT_EQ(pointDatabase.count, 3);
    EXPECT_EQ(Entry(1).code, 1001);
    EXPECT_EQ(Entry(3).pointCount[5], 1);
    EXPECT_TRUE(TestShell().boxes.empty());
    EXPECT_EQ(FileBytes(IndexPath()).size(), 120U);
}

TEST_F(PointDatabaseTest, LastHeaderWhosePointsPassTheEndStopsTheWalkOfThatFile) {
    AddThreeLines();
    folder.Write("level1.pnt", level1);
    ASSERT_EQ(GenerateLevels(LevelPath(1), kFirstUseText), kFalse);
    Bytes level2 = FileBytes(LevelPath(2));
    PutI16(&level2[level2.size() - 32 - 3 * 6 + 2], 9999);
    folder.Write("level2.pnt", level2);
    EXPECT_EQ(LoadLineIndex(), kFalse);
    EXPECT_EQ(pointDatabase.count, 3);
    EXPECT_EQ(Entry(3).pointCount[2], 9999);
    EXPECT_EQ(Entry(3).pointCount[5], 1) << "the later levels are read all the same";
    EXPECT_TRUE(TestShell().boxes.empty());

    // The index that was written is good for the next start.
    folder.Write("levelx.ndx", MarkedIndex(IndexPath()));
    SetTime(IndexPath(), fs::last_write_time(LevelPath(5)) + seconds(1));
    EXPECT_EQ(LoadLineIndex(), kFalse);
    EXPECT_EQ(Entry(1).code, 1777);
    EXPECT_EQ(Entry(3).pointCount[2], 9999);
}

TEST_F(PointDatabaseTest, MissingLevelLeavesAnOlderIndexFileAsItWas) {
    AddThreeLines();
    MakeDatabase();
    const Bytes older = MarkedIndex(IndexPath());
    folder.Write("levelx.ndx", older);
    SetTime(IndexPath(), fs::last_write_time(LevelPath(5)) - seconds(1));
    fs::remove(LevelPath(4));
    EXPECT_NE(LoadLineIndex(), kFalse);
    EXPECT_EQ(pointDatabase.count, 0);
    EXPECT_EQ(FileBytes(IndexPath()), older);
    EXPECT_NE(RebuildLineIndex(), kFalse);
    EXPECT_EQ(FileBytes(IndexPath()), older);
}

TEST_F(PointDatabaseTest, MissingLevelLeavesTheIndexFileUnwritten) {
    AddThreeLines();
    folder.Write("level1.pnt", level1);
    ASSERT_EQ(GenerateLevels(LevelPath(1), kFirstUseText), kFalse);
    fs::remove(LevelPath(4));
    EXPECT_NE(LoadLineIndex(), kFalse);
    EXPECT_EQ(TestShell().boxes,
              std::vector<std::string>{"Open Error: " + LevelPath(4) + " /  / File not found"});
    EXPECT_EQ(FileExists(IndexPath()), kFalse);
}

constexpr const char* kIndexDiskFull =
    "MessageBox|Database Error|Disk full\\r\\n\\r\\nUnable to create database "
    "index.|Ok|Information";

TEST_F(PointDatabaseTest, FullDiskWhileTheIndexIsWrittenIsToldAndTheIndexServesInMemory) {
    AddThreeLines();
    folder.Write("level1.pnt", level1);
    ASSERT_EQ(GenerateLevels(LevelPath(1), kFirstUseText), kFalse);
    {
        const FullDisk disk(100);  // the index takes 120 bytes
        EXPECT_NE(LoadLineIndex(), kFalse);
    }
    EXPECT_EQ(TestShell().log, std::vector<std::string>{kIndexDiskFull});
    EXPECT_EQ(FileExists(IndexPath()), kFalse);
    EXPECT_EQ(pointDatabase.count, 3);
    EXPECT_EQ(pointDatabase.ClassRange[5].first, 3);
    EXPECT_EQ(PendingRunTimeError(), 0);
}

TEST_F(PointDatabaseTest, IndexThatCannotBeWrittenIsTold) {
    AddThreeLines();
    folder.Write("level1.pnt", level1);
    ASSERT_EQ(GenerateLevels(LevelPath(1), kFirstUseText), kFalse);
    fs::create_directory(IndexPath());
    EXPECT_NE(LoadLineIndex(), kFalse);
    EXPECT_EQ(TestShell().log, std::vector<std::string>{
                                   "MessageBox|Database Error|Path/File access error\\r\\n\\r\\n"
                                   "Unable to create database index.|Ok|Information"});
    EXPECT_EQ(pointDatabase.count, 3) << "the index in memory serves";
    EXPECT_EQ(pointDatabase.ClassRange[5].first, 3);
}

TEST_F(PointDatabaseTest, NegativeCountIsNoPoints) {
    AddLine(1001, {{5, 1, 1}, {5, 2, 2}});
    Bytes negative;
    AppendLine(negative, 1002, "broken", {});
    PutI16(&negative[2], -5);
    level1.insert(level1.end(), negative.begin(), negative.end());
    AddLine(1003, {{5, 3, 3}, {5, 4, 4}});
    MakeDatabase();
    ASSERT_EQ(pointDatabase.count, 3);
    EXPECT_EQ(Entry(2).pointCount[1], 0);
    EXPECT_EQ(Entry(3).pointCount[5], 2);
}

TEST_F(PointDatabaseTest, LineCutShortByTheEndOfLevelOneIsNotInTheIndex) {
    AddThreeLines();
    level1.resize(level1.size() - 4);
    folder.Write("level1.pnt", level1);
    ASSERT_EQ(GenerateLevels(LevelPath(1), kFirstUseText), kFalse);
    EXPECT_EQ(LoadLineIndex(), kFalse);
    EXPECT_EQ(pointDatabase.count, 2);
}

TEST_F(PointDatabaseTest, LastHeaderOfLevelOneWhoseCountRunsPastTheEndIsNoLineOfTheIndex) {
    AddThreeLines();
    PutI16(&level1[level1.size() - 32 - 3 * 6 + 2], 9999);
    folder.Write("level1.pnt", level1);
    EXPECT_EQ(GenerateLevels(LevelPath(1), kFirstUseText), kFalse);
    EXPECT_EQ(LoadLineIndex(), kFalse);
    EXPECT_EQ(pointDatabase.count, 2);
    EXPECT_EQ(pointDatabase.ClassRange[5].first, 0);
    EXPECT_EQ(FileBytes(IndexPath()).size(), 80U);
    EXPECT_TRUE(TestShell().boxes.empty());
}

TEST_F(PointDatabaseTest, HeaderCutShortByTheEndIsIgnored) {
    AddThreeLines();
    level1.resize(level1.size() + 31, 1);
    MakeDatabase();
    EXPECT_EQ(pointDatabase.count, 3);
}

constexpr const char* kIndexOverflow =
    "MessageBox|Database Error|Overflow\\r\\n\\r\\nUnable to create database index.|Ok|Information";
constexpr const char* kLevelsOverflow =
    "MessageBox|Database Error|Overflow\\r\\n\\r\\nUnable to create database files.|Ok|Information";

TEST_F(PointDatabaseTest, AsManyLinesAsCanBeCountedAreIndexed) {
    for (int line = 0; line < 32767; ++line) AppendLine(level1, 1001, "", {});
    MakeDatabase();
    EXPECT_EQ(pointDatabase.count, 32767);
    EXPECT_EQ(pointDatabase.ClassRange[1].last, 32767);
    // The cached index of that many lines is read the same.
    SetTime(IndexPath(), fs::last_write_time(LevelPath(5)) + seconds(1));
    EXPECT_EQ(LoadLineIndex(), kFalse);
    EXPECT_EQ(pointDatabase.count, 32767);
}

TEST_F(PointDatabaseTest, OneLineMoreThanCanBeCountedIsAnOverflowAndNoLevelIsWritten) {
    for (int line = 0; line < 32768; ++line) AppendLine(level1, 1001, "", {});
    folder.Write("level1.pnt", level1);
    EXPECT_NE(GenerateLevels(LevelPath(1), kFirstUseText), kFalse);
    EXPECT_EQ(TestShell().log, std::vector<std::string>{kLevelsOverflow});
    EXPECT_EQ(FileExists(LevelPath(2)), kFalse);
    EXPECT_EQ(PendingRunTimeError(), 0);
}

TEST_F(PointDatabaseTest, OneLineMoreThanCanBeCountedIsAnOverflowOfTheIndex) {
    for (int line = 0; line < 32768; ++line) AppendLine(level1, 1001, "", {});
    for (std::int16_t level = 1; level <= 5; ++level) {
        folder.Write("level" + std::to_string(level) + ".pnt", level1);
    }
    EXPECT_NE(LoadLineIndex(), kFalse);
    EXPECT_EQ(TestShell().log, std::vector<std::string>{kIndexOverflow});
    EXPECT_EQ(FileExists(IndexPath()), kFalse);
    EXPECT_EQ(PendingRunTimeError(), 0);
}

TEST_F(PointDatabaseTest, FailureOfTheIndexClosesAllFiles) {
    const FileHandle other =
        FileOpener(folder.Write("other", std::string_view("x")), open_mode::kBinary, 0, kFalse);
    ASSERT_GT(other, 0);
    for (int line = 0; line < 32768; ++line) AppendLine(level1, 1001, "", {});
    for (std::int16_t level = 1; level <= 5; ++level) {
        folder.Write("level" + std::to_string(level) + ".pnt", level1);
    }
    EXPECT_NE(LoadLineIndex(), kFalse);
    EXPECT_EQ(FileLength(other), 0);
}

TEST_F(PointDatabaseTest, LevelOneAboveTheLargestDatabaseIsRefused) {
    const std::string path = folder.Write("level1.pnt", Bytes(32));
    fs::resize_file(path, static_cast<std::uintmax_t>(kLargestDatabase) + 1);
    EXPECT_NE(GenerateLevels(LevelPath(1), kFirstUseText), kFalse);
    EXPECT_EQ(TestShell().log, std::vector<std::string>{
                                   "MessageBox|Database Error|File too large\\r\\n\\r\\nUnable to "
                                   "create database files.|Ok|Information"});
    EXPECT_EQ(FileExists(LevelPath(2)), kFalse);
}

// Keeps the texts of the status panel.
class PanelShell : public ScriptedShell {
  public:
    void ShowProgress(std::string_view text, std::int16_t percent) override {
        panel.push_back(std::string(text) + " " + std::to_string(percent));
    }
    std::vector<std::string> panel;
};

TEST_F(PointDatabaseTest, StatusPanelShowsTheTextOfTheCaller) {
    AddLine(1001, {{5, 0, 0}, {5, 1, 1}});
    folder.Write("level1.pnt", level1);
    PanelShell shell;
    session.shell = &shell;
    EXPECT_EQ(GenerateLevels(LevelPath(1), "Merging..."), kFalse);
    EXPECT_EQ(shell.panel, std::vector<std::string>{"Merging... 100"});
}

constexpr const char* kRepairBox =
    "MessageBox|Orvantis|Regenerate map database files?\\r\\n\\r\\nIf your maps appear to be "
    "corrupted, "
    "then select OK to attempt to fix the problem. This will take a few moments.|OkCancel|Question";

TEST_F(PointDatabaseTest, RepairMakesLevelsAndIndexAnewAndPlots) {
    AddThreeLines();
    MakeDatabase();
    folder.Write("level5.pnt", std::string_view("rubbish"));
    folder.Write("levelx.ndx", MarkedIndex(IndexPath()));
    static int plots = 0;
    plots = 0;
    plotFull = [] { ++plots; };
    PanelShell shell;
    session.shell = &shell;
    RepairDatabase();
    ASSERT_EQ(shell.log.size(), 4U);
    EXPECT_EQ(shell.log[0], kRepairBox);
    EXPECT_NE(shell.log[1], shell.log[2]) << "the hourglass, and back";
    EXPECT_EQ(shell.log[3],
              "MessageBox|Orvantis|Map database files have been regenerated.|Ok|Information");
    EXPECT_EQ(shell.panel.front(), "Loading map database for first use... 0");
    EXPECT_EQ(shell.panel.back(), " 100");
    EXPECT_EQ(plots, 1);
    EXPECT_EQ(Entry(1).code, 1001);
    EXPECT_EQ(Entry(3).pointCount[5], 1);
}

TEST_F(PointDatabaseTest, RepairMakesAnewAnIndexThatIsDatedInTheFuture) {
    AddThreeLines();
    MakeDatabase();
    folder.Write("levelx.ndx", MarkedIndex(IndexPath()));
    SetTime(IndexPath(), fs::file_time_type::clock::now() + std::chrono::hours(24));
    RepairDatabase();
    EXPECT_EQ(TestShell().log.back(),
              "MessageBox|Orvantis|Map database files have been regenerated.|Ok|Information");
    EXPECT_EQ(Entry(1).code, 1001);
    EXPECT_EQ(GetI16(FileBytes(IndexPath()).data()), 1001);
    EXPECT_LT(fs::last_write_time(IndexPath()),
              fs::file_time_type::clock::now() + std::chrono::hours(1));
}

// A view that kept a picture of the damaged database is drawn anew when the user goes back to it.
TEST_F(PointDatabaseTest, RepairForgetsThePicturesThatViewsHaveKept) {
    static std::vector<std::string> plots;
    plots.clear();
    plotFull = [] { plots.emplace_back("full"); };
    plotQuick = [] { plots.emplace_back("quick"); };
    AddThreeLines();
    MakeDatabase();
    options.storeImages = kTrue;
    surface.CopyImage(session.StoredImage);
    PushView({10, 20, 30, 40}, "");
    ASSERT_FALSE(mapState.viewImages[1].pixels.empty());
    RepairDatabase();
    PreviousView();
    EXPECT_EQ(plots, (std::vector<std::string>{"full", "full", "full"}))
        << "the view, the repair, the view before";
}

// A folder where the index should be: it can't be replaced, which has its own box.
TEST_F(PointDatabaseTest, RepairWhoseIndexCannotBeWrittenTellsSoAndThatTheFilesAreThere) {
    AddThreeLines();
    MakeDatabase();
    std::filesystem::remove(IndexPath());
    std::filesystem::create_directories(IndexPath() + "/x");
    RepairDatabase();
    ASSERT_EQ(TestShell().boxes.size(), 3U);
    EXPECT_EQ(TestShell().boxes[2], "Orvantis: Map database files have been regenerated.");
    EXPECT_EQ(pointDatabase.count, 3);
}

TEST_F(PointDatabaseTest, RepairThatIsCancelledChangesNothing) {
    AddThreeLines();
    MakeDatabase();
    folder.Write("level5.pnt", std::string_view("rubbish"));
    TestShell().boxAnswers = {BoxAnswer::Cancel};
    plotFull = [] { ADD_FAILURE(); };
    RepairDatabase();
    EXPECT_EQ(TestShell().log, std::vector<std::string>{kRepairBox});
    EXPECT_EQ(FileBytes(LevelPath(5)).size(), 7U);
}

TEST_F(PointDatabaseTest, RepairThatFailsTellsWhyAndDoesNotPlot) {
    plotFull = [] { ADD_FAILURE(); };
    RepairDatabase();
    ASSERT_EQ(TestShell().boxes.size(), 2U);
    EXPECT_EQ(TestShell().boxes[1], "Open Error: " + LevelPath(1) + " /  / File not found");
    EXPECT_EQ(TestShell().log[1].substr(0, 10), TestShell().log.back().substr(0, 10))
        << "the pointer is put back";
}

TEST_F(PointDatabaseTest, ClassRangesSpanTheRunOfEachClass) {
    for (const std::int16_t code : {1001, 1002, 2001, 5001, 5002, 5003}) AddLine(code, {{5, 0, 0}});
    MakeDatabase();
    const auto& range = pointDatabase.ClassRange;
    EXPECT_EQ(range[1].first, 1);
    EXPECT_EQ(range[1].last, 2);
    EXPECT_EQ(range[2].first, 3);
    EXPECT_EQ(range[2].last, 3);
    EXPECT_EQ(range[5].first, 4);
    EXPECT_EQ(range[5].last, 6);
    EXPECT_EQ(range[4].first, 0);
    EXPECT_EQ(range[4].last, 0);
}

TEST_F(PointDatabaseTest, ClassKeepsItsFirstEntryThroughARebuildAndOnlyItsLastFollows) {
    for (const std::int16_t code : {1001, 2001, 2002}) AddLine(code, {{5, 0, 0}});
    MakeDatabase();
    level1.clear();
    for (const std::int16_t code : {1001, 1002, 2001, 2002, 2003}) AddLine(code, {{5, 0, 0}});
    MakeDatabase();
    EXPECT_EQ(pointDatabase.ClassRange[1].last, 2);
    EXPECT_EQ(pointDatabase.ClassRange[2].first, 2) << "where it stood in the first build";
    EXPECT_EQ(pointDatabase.ClassRange[2].last, 5);
}

TEST_F(PointDatabaseTest, CodesOfNoClassLeaveTheRangesAlone) {
    for (const std::int16_t code : {-5000, -1, 0, 999, 1001, 8001, 32767}) {
        AddLine(code, {{5, 0, 0}});
    }
    MakeDatabase();
    EXPECT_EQ(pointDatabase.ClassRange[1].first, 5);
    EXPECT_EQ(pointDatabase.ClassRange[1].last, 5);
    for (const std::size_t other : {0U, 2U, 3U, 4U, 5U, 6U, 7U}) {
        EXPECT_EQ(pointDatabase.ClassRange[other].first, 0);
    }
}

TEST_F(PointDatabaseTest, CodesThatDescendGiveRangesWithinTheIndexAndArePlotted) {
    for (const std::int16_t code : {7002, 7001, 5001, 1002, 7000, 1001}) {
        AddLine(code, {{5, 0, 0}, {5, 60, code}});
    }
    MakeDatabase();
    const auto& range = pointDatabase.ClassRange;
    EXPECT_EQ(range[7].first, 1);
    EXPECT_EQ(range[7].last, 5);
    EXPECT_EQ(range[5].first, 3);
    EXPECT_EQ(range[5].last, 3);
    EXPECT_EQ(range[1].first, 4);
    EXPECT_EQ(range[1].last, 6);
    CurrentMap().hidden.fill(kFalse);
    PlotMap4(kFalse, surface, kTrue);
    EXPECT_TRUE(TestShell().boxes.empty());
    EXPECT_FALSE(plotState.interrupted);
}

TEST(LineInViewTest, FlatViewsCompareExtentsStrictly) {
    struct Row {
        const char* what;
        Extents line;
        std::int16_t south, north, west, east;
        bool seen;
    };
    const Row rows[] = {
        {"within", {0, 60, 0, 60}, -600, 600, -600, 600, true},
        {"touches the north edge", {600, 700, 0, 60}, -600, 600, -600, 600, false},
        {"one minute below it", {599, 700, 0, 60}, -600, 600, -600, 600, true},
        {"touches the south edge", {-700, -600, 0, 60}, -600, 600, -600, 600, false},
        {"touches the east edge", {0, 60, 600, 700}, -600, 600, -600, 600, false},
        {"touches the west edge", {0, 60, -700, -600}, -600, 600, -600, 600, false},
        {"longMin above longMax is no line over the date line",
         {0, 60, 10500, -10500},
         -600,
         600,
         10000,
         10800,
         false},
        {"over the date line, from its west",
         {0, 60, 10500, 10700},
         -600,
         600,
         10200,
         -10200,
         true},
        {"over the date line, from its east",
         {0, 60, -10700, -10500},
         -600,
         600,
         10200,
         -10200,
         true},
        {"over the date line, neither side", {0, 60, 0, 100}, -600, 600, 10200, -10200, false},
    };
    for (const Row& row : rows) {
        EXPECT_EQ(
            LineInView(row.line, row.south, row.north, row.west, row.east, projection::kCartesian),
            row.seen)
            << row.what;
    }
}

TEST(LineInViewTest, ViewOverTheDateLineTakesALineOnEitherSideOfIt) {
    ResetAll();
    const auto seen = [](int longMin, int longMax) {
        return LineInView(
            {0, 60, static_cast<std::int16_t>(longMin), static_cast<std::int16_t>(longMax)}, -600,
            600, 10200, -10200, projection::kCartesian);
    };
    EXPECT_TRUE(seen(10300, 10400)) << "to its west";
    EXPECT_TRUE(seen(-10400, -10300)) << "to its east";
    EXPECT_FALSE(seen(-10200, 10200)) << "touches both edges from outside";
}

TEST(LineInViewTest, ExtentsWhoseWestIsAboveTheirEastAreNotTreatedSpecially) {
    ResetAll();
    const auto seen = [](int west, int east) {
        return LineInView({0, 60, 10500, -10500}, -600, 600, static_cast<std::int16_t>(west),
                          static_cast<std::int16_t>(east), projection::kMercator);
    };
    EXPECT_FALSE(seen(10000, 10800)) << "an extent over the date line would be in view";
    EXPECT_FALSE(seen(-10800, -10000));
    EXPECT_FALSE(seen(10000, -10000)) << "nor does a view over it see one";
    EXPECT_TRUE(seen(-10700, 10700)) << "each end within, as for any line";
}

TEST(LineInViewTest, GlobesLookAtTwoCornersAlone) {
    ResetAll();
    mapView.extent.centreLat = 0;
    mapView.extent.centreLong = 0;
    const auto seen = [](const Extents& line) {
        return LineInView(line, 0, 0, 0, 0, projection::kGlobeSphere);
    };
    EXPECT_TRUE(seen({0, 60, 0, 60}));
    EXPECT_TRUE(seen({0, 60, 5000, 9000})) << "its south-west corner is 83 degrees off";
    EXPECT_FALSE(seen({0, 60, 5460, 9000})) << "91 degrees off";
    EXPECT_TRUE(seen({-5400, 0, -9000, -60})) << "its north-east corner is near";
    EXPECT_FALSE(seen({-60, 60, -9000, 9000})) << "the middle doesn't count";
}

TEST_F(PointDatabaseTest, CodeSummaryNamesTheFirstAndLastCodeOfEachClass) {
    for (const std::int16_t code : {1001, 1005, 2001, 5001, 6007}) AddLine(code, {{5, 0, 0}});
    MakeDatabase();
    LineCodeSummary();
    EXPECT_EQ(TestShell().log,
              std::vector<std::string>{
                  "MessageBox|Line Code Summary|Line Codes Used in Database:\\r\\n"
                  "Coasts: 1001 to 1005\\r\\nIslands: 5001 to 5001\\r\\nLakes: 6007 to 6007\\r\\n"
                  "Rivers: 0 to 0\\r\\nCountries: 2001 to 2001\\r\\nStates: 0 to 0|Ok|"
                  "Information"});
}

}  // namespace
}  // namespace orvantis

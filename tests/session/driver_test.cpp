#include "session/driver.h"

#include <chrono>
#include <filesystem>
#include <gtest/gtest.h>
#include <random>

#include "charts/CALCCHRT.h"
#include "map/map_document.h"
#include "map/point_database.h"
#include "session/files.h"
#include "session/session_state.h"
#include "session/settings.h"
#include "support/failing_disk.h"
#include "support/reset_all.h"
#include "support/temp_folder.h"
#include "text/bytes.h"

namespace orvantis {
namespace {

namespace fs = std::filesystem;

class Driver : public ::testing::Test {
  protected:
    void SetUp() override {
        ResetAll();
        paths_.programDir = folder_.File("program");
        paths_.shippedData = folder_.File("shipped");
        paths_.ephemeris = SystemPaths().ephemeris;
        paths_.config = folder_.File("config");
        fs::create_directories(paths_.shippedData);
    }

    void TearDown() override { EndSession(); }

    void Ship(const std::string& name, const Bytes& bytes) {
        folder_.Write("shipped/" + name, bytes);
    }

    void Start() {
        StartSession(paths_, TestShell());
        TestShell().log.clear();
        TestShell().boxes.clear();
    }

    static Bytes TwoLines() {
        Bytes bytes;
        AppendLine(bytes, 1000, "One", {{5, 0, 0}, {1, 10, 10}, {5, 20, 0}});
        AppendLine(bytes, 2000, "Two", {{5, 0, 0}, {5, 20, 0}});
        return bytes;
    }

    TempFolder folder_;
    StartPaths paths_;
};

TEST_F(Driver, TheFirstStartCopiesTheShippedFilesToTheirPlaces) {
    Ship("level1.pnt", TwoLines());
    Ship("world.ovm", Bytes(140));
    Ship("sample.cht", Bytes{2, 0});
    Start();
    EXPECT_TRUE(fs::exists(folder_.File("program/level1.pnt")));
    EXPECT_TRUE(fs::exists(folder_.File("program/Userdata/world.ovm")));
    EXPECT_TRUE(fs::exists(folder_.File("program/Userdata/sample.cht")));
}

TEST_F(Driver, AStartLeavesTheUsersFilesAlone) {
    fs::create_directories(folder_.File("program/Userdata"));
    folder_.Write("program/level1.pnt", "mine");
    folder_.Write("program/Userdata/world.ovm", "my map");
    Ship("level1.pnt", TwoLines());
    Ship("world.ovm", Bytes(140));
    Start();
    EXPECT_EQ(FileBytes(folder_.File("program/level1.pnt")).size(), 4U);
    EXPECT_EQ(FileBytes(folder_.File("program/Userdata/world.ovm")).size(), 6U);
}

TEST_F(Driver, TheUsersOwnColoursTakePrecedenceOverTheColourFile) {
    Bytes colours(144);
    PutI32(&colours[0], 0x111111);
    Ship("brimwell.cpt", colours);
    Start();
    EXPECT_EQ(pointColour[1], 0x111111);
    PutI32(&colours[0], 0x222222);
    folder_.Write("program/Userdata/orvantis.pco", colours);
    Start();
    EXPECT_EQ(pointColour[1], 0x222222);
}

TEST_F(Driver, AMissingDatabaseIsToldWithItsDirectory) {
    Start();
    EXPECT_NE(LoadDatabase(), 0);
    ASSERT_EQ(TestShell().log.size(), 1U);
    EXPECT_EQ(
        TestShell().log[0],
        "MessageBox|Orvantis|The main database file LEVEL1.PNT was not found in the directory " +
            folder_.File("program/") + "|Ok|Error");
}

TEST_F(Driver, AnEmptyDatabaseIsTold) {
    Ship("level1.pnt", {});
    Start();
    EXPECT_NE(LoadDatabase(), 0);
    ASSERT_EQ(TestShell().boxes.size(), 1U);
    EXPECT_EQ(TestShell().boxes[0], "Database Error: " + folder_.File("program/level1.pnt") +
                                        " / The file holds no map lines.");
}

TEST_F(Driver, ADatabaseOfRandomBytesIsTold) {
    std::mt19937 random(5);
    Bytes bytes(5000);
    for (std::uint8_t& byte : bytes) byte = static_cast<std::uint8_t>(random());
    Ship("level1.pnt", bytes);
    Start();
    EXPECT_NE(LoadDatabase(), 0);
    ASSERT_FALSE(TestShell().boxes.empty());
    EXPECT_EQ(TestShell().boxes.back(), "Database Error: " + folder_.File("program/level1.pnt") +
                                            " / The file isn't a map database.");
}

TEST_F(Driver, AnIndexOfRandomBytesIsMadeAnew) {
    Ship("level1.pnt", TwoLines());
    Start();
    ASSERT_EQ(LoadDatabase(), 0);
    const Bytes good = FileBytes(folder_.File("program/levelx.ndx"));
    Bytes bad(good.size(), 0xFE);
    folder_.Write("program/levelx.ndx", bad);
    fs::last_write_time(folder_.File("program/levelx.ndx"),
                        fs::file_time_type::clock::now() + std::chrono::hours(1));
    EXPECT_EQ(LoadDatabase(), 0);
    EXPECT_EQ(pointDatabase.count, 2);
    EXPECT_EQ(FileBytes(folder_.File("program/levelx.ndx")), good);
}

TEST_F(Driver, AMissingLevelTwoMakesAllDerivedFilesAnewWithThePanelShown) {
    Ship("level1.pnt", TwoLines());
    Start();
    ASSERT_EQ(LoadDatabase(), 0);
    const auto before = FileDate(LevelPath(5));
    fs::remove(folder_.File("program/level2.pnt"));
    fs::last_write_time(folder_.File("program/level5.pnt"),
                        fs::file_time_type::clock::now() - std::chrono::hours(1));
    TestShell().progressCalls = 0;
    ASSERT_EQ(LoadDatabase(), 0);
    EXPECT_GE(TestShell().progressCalls, 2);
    for (std::int16_t level = 2; level <= 5; ++level) {
        ASSERT_TRUE(FileDate(LevelPath(level)).has_value()) << level;
        EXPECT_GE(*FileDate(LevelPath(level)), *before) << level;
    }
}

TEST_F(Driver, LevelFilesThatCannotBeMadeAnewServeAsTheyAre) {
    Ship("level1.pnt", TwoLines());
    Start();
    ASSERT_EQ(LoadDatabase(), 0);
    // Level 1 has become newer, and the disk is full.
    fs::last_write_time(folder_.File("program/level1.pnt"),
                        fs::file_time_type::clock::now() + std::chrono::hours(1));
    pointDatabase = {};
    const FullDisk disk(1);
    EXPECT_EQ(LoadDatabase(), 0);
    EXPECT_FALSE(TestShell().boxes.empty());
    EXPECT_EQ(pointDatabase.count, 2);
}

TEST_F(Driver, ACodeThatDiffersBetweenLevelsDoesNotStopTheStart) {
    Ship("level1.pnt", TwoLines());
    Start();
    ASSERT_EQ(LoadDatabase(), 0);
    Bytes level3 = FileBytes(folder_.File("program/level3.pnt"));
    PutI16(level3.data(), 1001);
    folder_.Write("program/level3.pnt", level3);
    fs::remove(folder_.File("program/levelx.ndx"));
    EXPECT_EQ(LoadDatabase(), 0);
    EXPECT_EQ(pointDatabase.count, 2);
}

// Gives the two lines of the index other codes and makes it later than the level files.
void WriteLaterIndex(const TempFolder& folder, std::int16_t first, std::int16_t second) {
    Bytes bytes = FileBytes(folder.File("program/levelx.ndx"));
    ASSERT_EQ(bytes.size(), 80U);
    PutI16(&bytes[0], first);
    PutI16(&bytes[40], second);
    folder.Write("program/levelx.ndx", bytes);
    fs::last_write_time(folder.File("program/levelx.ndx"),
                        fs::file_time_type::clock::now() + std::chrono::hours(1));
}

TEST_F(Driver, ALaterIndexOfPlausibleCodesInTheirOrderIsTakenAsItStands) {
    Ship("level1.pnt", TwoLines());
    Start();
    ASSERT_EQ(LoadDatabase(), 0);
    WriteLaterIndex(folder_, 1500, 7500);
    pointDatabase = {};
    EXPECT_EQ(LoadDatabase(), 0);
    EXPECT_EQ(pointDatabase.LineIndex[2].code, 7500);
    EXPECT_EQ(pointDatabase.ClassRange[7].first, 2);
    EXPECT_TRUE(TestShell().boxes.empty());
}

TEST_F(Driver, AnIndexThatIsRefusedLeavesNoClassRangesBehind) {
    Ship("level1.pnt", TwoLines());
    Start();
    ASSERT_EQ(LoadDatabase(), 0);
    // Plausible codes, but not in their order.
    WriteLaterIndex(folder_, 2000, 1000);
    pointDatabase = {};
    EXPECT_EQ(LoadDatabase(), 0);
    EXPECT_EQ(pointDatabase.LineIndex[1].code, 1000);
    EXPECT_EQ(pointDatabase.ClassRange[1].first, 1);
    EXPECT_EQ(pointDatabase.ClassRange[1].last, 1);
    EXPECT_EQ(pointDatabase.ClassRange[2].first, 2);
    EXPECT_EQ(pointDatabase.ClassRange[2].last, 2);
    EXPECT_TRUE(TestShell().boxes.empty());
}

TEST_F(Driver, AHeaderTooManyInLevelFiveMakesTheLevelsAnewAndTheStartGoesOn) {
    Ship("level1.pnt", TwoLines());
    Start();
    ASSERT_EQ(LoadDatabase(), 0);
    const Bytes good = FileBytes(NativePath(LevelPath(5)));
    Bytes bad = good;
    AppendLine(bad, 3000, "Three", {{5, 0, 0}});
    folder_.Write("program/level5.pnt", bad);
    fs::remove(folder_.File("program/levelx.ndx"));
    pointDatabase = {};
    EXPECT_EQ(LoadDatabase(), 0);
    EXPECT_EQ(pointDatabase.count, 2);
    EXPECT_EQ(FileBytes(NativePath(LevelPath(5))), good);
    EXPECT_TRUE(TestShell().boxes.empty());
}

TEST_F(Driver, ALevelFileThatLacksLinesIsMadeAnew) {
    Ship("level1.pnt", TwoLines());
    Start();
    ASSERT_EQ(LoadDatabase(), 0);
    for (std::int16_t level = 2; level <= 5; ++level) {
        const Bytes good = FileBytes(NativePath(LevelPath(level)));
        folder_.Write("program/level" + std::to_string(level) + ".pnt", Bytes{});
        fs::remove(folder_.File("program/levelx.ndx"));
        pointDatabase = {};
        EXPECT_EQ(LoadDatabase(), 0) << level;
        EXPECT_EQ(pointDatabase.count, 2) << level;
        EXPECT_EQ(FileBytes(NativePath(LevelPath(level))), good) << level;
    }
    EXPECT_TRUE(TestShell().boxes.empty());
}

TEST_F(Driver, AnEmptiedLevelFiveThatCannotBeMadeAnewIsToldAsThatAlone) {
    Ship("level1.pnt", TwoLines());
    Start();
    ASSERT_EQ(LoadDatabase(), 0);
    folder_.Write("program/level5.pnt", Bytes{});
    fs::remove(folder_.File("program/levelx.ndx"));
    const FullDisk disk(1);
    EXPECT_NE(LoadDatabase(), 0);
    EXPECT_EQ(TestShell().boxes,
              std::vector<std::string>{"Open Error: " + folder_.File("program/level5.pnt") +
                                       " /  / Disk full"});
}

TEST_F(Driver, OddCodesAmongTheLinesOfLevelOneAreLetThrough) {
    Bytes odd;
    for (const std::int16_t code : {7000, 9001, 1000, -5}) {
        AppendLine(odd, code, "", {{5, 0, 0}, {5, 20, 0}});
    }
    Ship("level1.pnt", odd);
    Start();
    for (int start = 0; start < 2; ++start) {
        pointDatabase = {};
        EXPECT_EQ(LoadDatabase(), 0);
        EXPECT_EQ(pointDatabase.count, 4);
        EXPECT_EQ(pointDatabase.ClassRange[1].first, 3);
    }
    EXPECT_TRUE(TestShell().boxes.empty());
}

TEST_F(Driver, ADatabaseOfWhichFewerThanHalfCanBeLinesIsTold) {
    Bytes odd;
    for (const std::int16_t code : {1000, 9001, 9002}) AppendLine(odd, code, "", {{5, 0, 0}});
    Ship("level1.pnt", odd);
    Start();
    EXPECT_NE(LoadDatabase(), 0);
    EXPECT_EQ(TestShell().boxes,
              std::vector<std::string>{"Database Error: " + folder_.File("program/level1.pnt") +
                                       " / The file isn't a map database."});
}

TEST_F(Driver, ALevelFileThatCannotBeOpenedIsToldAndNothingElseIs) {
    Ship("level1.pnt", TwoLines());
    Start();
    ASSERT_EQ(LoadDatabase(), 0);
    fs::remove(folder_.File("program/level3.pnt"));
    fs::create_directory(folder_.File("program/level3.pnt"));
    const std::string box =
        "Open Error: " + folder_.File("program/level3.pnt") + " /  / Path/File access error";
    EXPECT_NE(LoadDatabase(), 0);
    EXPECT_EQ(TestShell().boxes, (std::vector<std::string>{box, box}))
        << "once when the levels are made, once when the index is";
    EXPECT_EQ(pointDatabase.count, 0);
}

TEST_F(Driver, ALastLineOfLevelOneThatRunsPastTheEndIsLeftOutWithoutAWord) {
    Bytes bytes = TwoLines();
    PutI16(&bytes[bytes.size() - 32 - 2 * 6 + 2], 9999);
    Ship("level1.pnt", bytes);
    Start();
    EXPECT_EQ(LoadDatabase(), 0);
    EXPECT_EQ(pointDatabase.count, 1);
    EXPECT_TRUE(TestShell().boxes.empty());
}

TEST_F(Driver, ADatabaseWhoseOnlyLineRunsPastTheEndHoldsNoLines) {
    Bytes bytes;
    AppendLine(bytes, 1000, "One", {{5, 0, 0}});
    PutI16(&bytes[2], 9999);
    Ship("level1.pnt", bytes);
    Start();
    EXPECT_NE(LoadDatabase(), 0);
    EXPECT_EQ(TestShell().boxes,
              std::vector<std::string>{"Database Error: " + folder_.File("program/level1.pnt") +
                                       " / The file holds no map lines."});
}

TEST_F(Driver, AnEmptyDatabaseWithLevelsOfAnOtherIsToldAsEmpty) {
    Ship("level1.pnt", {});
    Start();
    for (std::int16_t level = 2; level <= 5; ++level) {
        folder_.Write("program/level" + std::to_string(level) + ".pnt", TwoLines());
    }
    EXPECT_NE(LoadDatabase(), 0);
    EXPECT_EQ(TestShell().boxes,
              std::vector<std::string>{"Database Error: " + folder_.File("program/level1.pnt") +
                                       " / The file holds no map lines."});
}

TEST_F(Driver, ADatabaseOfOneLineAndOfAsManyAsCanBeCountedIsLoadedTwice) {
    for (const int lines : {1, 32767}) {
        Bytes bytes;
        for (int n = 0; n < lines; ++n) AppendLine(bytes, 1000, "", {{5, 0, 0}});
        folder_.Write("shipped/level1.pnt", bytes);
        fs::remove_all(folder_.File("program"));
        Start();
        for (int start = 0; start < 2; ++start) {
            pointDatabase = {};
            EXPECT_EQ(LoadDatabase(), 0);
            EXPECT_EQ(pointDatabase.count, lines);
            EXPECT_EQ(pointDatabase.ClassRange[1].last, lines);
        }
        EXPECT_TRUE(TestShell().boxes.empty());
        EndSession();
    }
}

TEST_F(Driver, ADatabaseOfMoreLinesThanCanBeCountedIsTold) {
    Bytes bytes;
    for (int n = 0; n < 32768; ++n) AppendLine(bytes, 1000, "", {});
    Ship("level1.pnt", bytes);
    Start();
    EXPECT_NE(LoadDatabase(), 0);
    ASSERT_FALSE(TestShell().boxes.empty());
    EXPECT_EQ(TestShell().boxes.front(),
              "Database Error: Overflow /  / Unable to create database files.");
    EXPECT_FALSE(TestShell().boxes.back().starts_with("Database Error: " + folder_.Path()));
}

TEST_F(Driver, AFullDiskWhileTheIndexIsWrittenIsToldAndTheStartGoesOn) {
    Bytes lines;
    for (int n = 0; n < 10; ++n) AppendLine(lines, 1000, "", {});
    Ship("level1.pnt", lines);
    Start();
    const FullDisk disk(320);  // a level file takes 320 bytes, the index 400
    EXPECT_EQ(LoadDatabase(), 0);
    EXPECT_EQ(TestShell().boxes,
              std::vector<std::string>{
                  "Database Error: Disk full /  / Unable to create database index."});
    EXPECT_EQ(pointDatabase.count, 10);
}

TEST_F(Driver, AChartOnDisplayIsDescribedInTheCaption) {
    Start();
    EXPECT_EQ(Caption(), "Orvantis");
    session.ChartNumber = 1;
    calcChart[1].Name = "A name";
    calcChart[1].DateText = "20 Jul 1969";
    calcChart[1].TimeText = "20:17";
    calcChart[1].ZoneText = "GMT";
    calcChart[1].Place = "Houston";
    EXPECT_EQ(Caption(), "Orvantis: A name, 20 Jul 1969, 20:17 GMT, Houston");
}

TEST_F(Driver, AChartOrAnEclipseOnDisplayGivesTheCaptionItsColon) {
    Start();
    const struct {
        std::int16_t chart;
        std::int16_t eclipse;
        std::string caption;
    } rows[] = {{0, 0, "Orvantis"},   {-1, 0, "Orvantis"},  {0, -1, "Orvantis"},
                {3, 0, "Orvantis: "}, {0, 1, "Orvantis: "}, {3, 2, "Orvantis: "}};
    for (const auto& row : rows) {
        session.ChartNumber = row.chart;
        session.EclipseNumber = row.eclipse;
        EXPECT_EQ(Caption(), row.caption) << row.chart << " " << row.eclipse;
    }
}

TEST_F(Driver, AChartFileThatIsNotThereAndANumberThatItDoesNotHoldAreToldApart) {
    Start();
    RunTimeError reason;
    EXPECT_EQ(OpenChart(folder_.File("none.cht"), 1, reason), ChartStatus::NoFile);
    const std::string head = folder_.Write("head.cht", Bytes{1, 0});
    EXPECT_EQ(OpenChart(head, 1, reason), ChartStatus::NoSuchChart);
    const std::string newest = folder_.Write("newest.cht", Bytes{3, 0});
    EXPECT_EQ(OpenChart(newest, 1, reason), ChartStatus::BadRecord);
    EXPECT_EQ(reason.number, error::kPastEnd);
    EXPECT_EQ(session.ChartNumber, 0);
}

TEST_F(Driver, APathIsShownInItsNativeForm) {
    EXPECT_EQ(ShownPath("\\home\\na\xC3\xAFve\\a.ovm"), "/home/na\xEFve/a.ovm");
}

}  // namespace
}  // namespace orvantis

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

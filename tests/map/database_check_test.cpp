#include "map/database_check.h"

#include <algorithm>
#include <cmath>
#include <gtest/gtest.h>
#include <set>

#include "map/point_database.h"
#include "support/paths.h"
#include "support/reset_all.h"
#include "support/temp_folder.h"
#include "text/run_time_error.h"

namespace orvantis {
namespace {

const std::string kShipped = DataFile("level1.pnt");

// A database that tests take apart and put together again.
struct TestLine {
    std::int16_t code;
    std::string name;
    std::vector<LinePoint> points;
};

Bytes Join(const std::vector<TestLine>& lines) {
    Bytes file;
    for (const TestLine& line : lines) AppendLine(file, line.code, line.name, line.points);
    return file;
}

std::vector<TestLine> TakeApart(const Bytes& file) {
    std::vector<TestLine> lines;
    for (std::size_t at = 0; at < file.size();) {
        const LineHeader header = GetLineHeader(&file[at]);
        at += static_cast<std::size_t>(kLineHeaderSize);
        TestLine line{header.code, header.name, {}};
        for (int i = 0; i < header.count; ++i, at += static_cast<std::size_t>(kLinePointSize)) {
            line.points.push_back(GetLinePoint(&file[at]));
        }
        lines.push_back(line);
    }
    return lines;
}

// Two squares with the land on their left, the second one with a point at every level, and a
// border through the first.
std::vector<TestLine> SmallWorld() {
    return {{1000, "Land", {{5, 0, 0}, {5, 0, 300}, {3, 300, 300}, {5, 300, 0}, {5, 0, 0}}},
            {2000, "Border", {{5, 0, 0}, {1, 100, 120}, {5, 300, 299}}},
            {5000, "Island", {{5, 600, 0}, {4, 600, 60}, {2, 660, 60}, {5, 660, 0}, {5, 600, 0}}}};
}

std::vector<DatabaseFinding> Check(const Bytes& level1) {
    DatabaseFiles files;
    files.level1 = level1;
    return CheckDatabaseFiles(files);
}

std::vector<DatabaseFinding> Check(const std::vector<TestLine>& lines) {
    return Check(Join(lines));
}

// One finding, of a rule and a line, with a text.
void ExpectOnly(const std::vector<DatabaseFinding>& findings, DatabaseRule rule, std::int16_t code,
                std::string_view text) {
    ASSERT_EQ(findings.size(), 1U) << (findings.empty() ? "none" : findings.back().text);
    EXPECT_EQ(findings[0].severity, Severity::Error);
    EXPECT_EQ(findings[0].rule, rule);
    EXPECT_EQ(findings[0].code, code);
    EXPECT_EQ(findings[0].text, text);
}

bool Found(const std::vector<DatabaseFinding>& findings, DatabaseRule rule) {
    return std::any_of(findings.begin(), findings.end(),
                       [rule](const DatabaseFinding& f) { return f.rule == rule; });
}

// ---- The shipped data, one test a rule ----

class ShippedDatabase : public ::testing::Test {
  protected:
    static const std::vector<DatabaseFinding>& Findings() {
        static const std::vector<DatabaseFinding> findings = [] {
            ResetAll();
            return CheckDatabase(kShipped);
        }();
        return findings;
    }
    static const std::vector<TestLine>& Lines() {
        static const std::vector<TestLine> lines = TakeApart(FileBytes(kShipped));
        return lines;
    }
    static void ExpectNone(DatabaseRule rule) {
        for (const DatabaseFinding& finding : Findings()) {
            if (finding.rule == rule) ADD_FAILURE() << finding.code << ": " << finding.text;
        }
        EXPECT_GT(Lines().size(), 3000U);
    }
};

TEST_F(ShippedDatabase, IsWholeLinesWithoutARest) {
    ExpectNone(DatabaseRule::Structure);
}
TEST_F(ShippedDatabase, HasAscendingCodes) {
    ExpectNone(DatabaseRule::CodeOrder);
}
TEST_F(ShippedDatabase, HasCodesOfTheSixLineClassesAlone) {
    ExpectNone(DatabaseRule::CodeClass);
}
TEST_F(ShippedDatabase, HasAtMostAThousandLinesOfAClass) {
    ExpectNone(DatabaseRule::ClassSize);
}
TEST_F(ShippedDatabase, HasTwoPointsOrMoreInEveryLine) {
    ExpectNone(DatabaseRule::Points);
}
TEST_F(ShippedDatabase, LiesOnTheEarth) {
    ExpectNone(DatabaseRule::Position);
}
TEST_F(ShippedDatabase, HasLevelsOneToFive) {
    ExpectNone(DatabaseRule::Level);
}
TEST_F(ShippedDatabase, HasEveryEndAtLevelFive) {
    ExpectNone(DatabaseRule::Ends);
}
TEST_F(ShippedDatabase, HasTrueExtents) {
    ExpectNone(DatabaseRule::Extents);
}
TEST_F(ShippedDatabase, HasNoLineOfMoreThanTenDegrees) {
    ExpectNone(DatabaseRule::Length);
}
TEST_F(ShippedDatabase, HasNoSegmentThatLeapsOverTheMap) {
    ExpectNone(DatabaseRule::Leap);
}
TEST_F(ShippedDatabase, HasNoEdgeAlongTheDateLine) {
    ExpectNone(DatabaseRule::DateLine);
}
TEST_F(ShippedDatabase, KeepsOffTheSouthPole) {
    ExpectNone(DatabaseRule::Pole);
}
TEST_F(ShippedDatabase, HasClosedCoastsAtEveryLevel) {
    ExpectNone(DatabaseRule::Closed);
}
TEST_F(ShippedDatabase, HasTheLandOnTheLeftOfCoasts) {
    ExpectNone(DatabaseRule::Direction);
}
TEST_F(ShippedDatabase, HasTheCaspianAsACoast) {
    ExpectNone(DatabaseRule::Caspian);
}
TEST_F(ShippedDatabase, HasClockwiseLakesAndIslandsInThemAlone) {
    ExpectNone(DatabaseRule::Lakes);
}
TEST_F(ShippedDatabase, HasCoastsOfLevelFiveWhereBordersEnd) {
    ExpectNone(DatabaseRule::Junction);
}

TEST_F(ShippedDatabase, HasEveryLineClass) {
    std::set<int> classes;
    for (const TestLine& line : Lines()) classes.insert(line.code / 1000);
    EXPECT_EQ(classes, (std::set<int>{1, 2, 4, 5, 6, 7}));
}

// The Caspian is water within land: with the land on the left its ring runs clockwise, and the
// integral of sin(latitude) over the longitude is its area on the unit sphere. Published sizes are
// 371000 to 390000 km2 and up to 18000 more with Kara-Bogaz; taken as 370000 to 410000.
TEST_F(ShippedDatabase, HasTheCaspianClockwiseAndOfItsSize) {
    constexpr double kRadians = 3.14159265358979 / (180 * 60);
    double area = 0;
    for (const TestLine& line : Lines()) {
        if (line.name != "Caspian Sea") continue;
        for (std::size_t i = 1; i < line.points.size(); ++i) {
            const LinePoint& a = line.points[i - 1];
            const LinePoint& b = line.points[i];
            area += (b.longitude - a.longitude) * kRadians *
                    (std::sin(a.lat * kRadians) + std::sin(b.lat * kRadians)) / 2 * 6371 * 6371;
        }
    }
    EXPECT_GT(area, 370000);
    EXPECT_LT(area, 410000);
}

// A border that ends at a coast must end there at every level, or the two part when drawn coarsely:
// its ends, and the coast's point of the same place, are of level 5.
TEST_F(ShippedDatabase, HasEveryJunctionOfCoastAndBorderAtLevelFive) {
    std::set<std::pair<int, int>> borderEnds;
    for (const TestLine& line : Lines()) {
        if (line.code / 1000 != 2) continue;
        for (const LinePoint& p : {line.points.front(), line.points.back()}) {
            borderEnds.insert({p.lat, p.longitude});
        }
    }
    int junctions = 0;
    for (const TestLine& line : Lines()) {
        if (line.code / 1000 != 1 && line.code / 1000 != 5) continue;
        for (const LinePoint& p : line.points) {
            if (!borderEnds.contains({p.lat, p.longitude})) continue;
            ++junctions;
            EXPECT_EQ(p.level, 5) << line.code;
        }
    }
    EXPECT_GT(junctions, 150);
}

TEST_F(ShippedDatabase, AgreesWithTheFilesThatAreDerivedFromIt) {
    ResetAll();
    const TempFolder folder;
    const std::string path = folder.Write("level1.pnt", FileBytes(kShipped));
    if (GenerateLevels(path, kFirstUseText) != kFalse) FAIL() << "no levels";
    EXPECT_TRUE(CheckDatabase(path).empty());
}

// ---- A small world that is sound, and what breaks it ----

class DatabaseCheck : public ::testing::Test {
  protected:
    void SetUp() override { ResetAll(); }
};

TEST_F(DatabaseCheck, FindsNothingInASoundDatabase) {
    EXPECT_TRUE(Check(SmallWorld()).empty());
}

TEST_F(DatabaseCheck, CallsAnEmptyFileUnreadable) {
    const auto findings = Check(Bytes{});
    ASSERT_EQ(findings.size(), 1U);
    EXPECT_EQ(findings[0].severity, Severity::Unreadable);
    EXPECT_EQ(findings[0].text, "The file is empty.");
}

TEST_F(DatabaseCheck, CallsABytesRestUnreadable) {
    Bytes file = Join(SmallWorld());
    file.push_back(0);
    const auto findings = Check(file);
    ASSERT_EQ(findings.size(), 1U);
    EXPECT_EQ(findings[0].severity, Severity::Unreadable);
    EXPECT_EQ(findings[0].text, "The file ends within a header at byte 174.");
}

TEST_F(DatabaseCheck, CallsARunPastTheEndUnreadable) {
    Bytes file = Join(SmallWorld());
    file.pop_back();
    const auto findings = Check(file);
    ASSERT_EQ(findings.size(), 1U);
    EXPECT_EQ(findings[0].severity, Severity::Unreadable);
    EXPECT_EQ(findings[0].code, 5000);
    EXPECT_EQ(findings[0].text, "The points run past the end of the file at byte 112.");
}

TEST_F(DatabaseCheck, CallsANegativeCountUnreadable) {
    Bytes file = Join(SmallWorld());
    PutI16(&file[2], -1);
    const auto findings = Check(file);
    ASSERT_EQ(findings.size(), 1U);
    EXPECT_EQ(findings[0].severity, Severity::Unreadable);
    EXPECT_EQ(findings[0].text, "The count of points is negative at byte 0.");
}

TEST_F(DatabaseCheck, CallsAMissingFileUnreadable) {
    const TempFolder folder;
    const auto findings = CheckDatabase(folder.File("level1.pnt"));
    ASSERT_EQ(findings.size(), 1U);
    EXPECT_EQ(findings[0].severity, Severity::Unreadable);
    EXPECT_EQ(findings[0].text, "File not found.");
    EXPECT_EQ(PendingRunTimeError(), 0);
}

TEST_F(DatabaseCheck, FindsACodeThatDescends) {
    auto lines = SmallWorld();
    std::swap(lines[0], lines[1]);
    ExpectOnly(Check(lines), DatabaseRule::CodeOrder, 1000, "The code follows 2000.");
}

TEST_F(DatabaseCheck, FindsACodeThatStandsTwice) {
    auto lines = SmallWorld();
    lines.insert(lines.begin() + 1, lines[1]);
    ExpectOnly(Check(lines), DatabaseRule::CodeOrder, 2000, "The code follows 2000.");
}

TEST_F(DatabaseCheck, FindsACodeOfNoLineClass) {
    for (const std::int16_t code : {-1000, 0, 999, 3000, 8000, 32767}) {
        auto lines = SmallWorld();
        lines[1].code = code;
        std::sort(lines.begin(), lines.end(),
                  [](const TestLine& a, const TestLine& b) { return a.code < b.code; });
        ExpectOnly(Check(lines), DatabaseRule::CodeClass, code, "No class has this code.");
    }
}

TEST_F(DatabaseCheck, FindsAClassOfMoreThanAThousandLines) {
    auto lines = SmallWorld();
    lines.insert(lines.begin() + 1, 1000, lines[1]);
    const auto findings = Check(lines);
    EXPECT_TRUE(Found(findings, DatabaseRule::ClassSize));
    lines.erase(lines.begin() + 1);
    EXPECT_FALSE(Found(Check(lines), DatabaseRule::ClassSize));
}

TEST_F(DatabaseCheck, WarnsOfALineOfOnePoint) {
    auto lines = SmallWorld();
    lines[1].points.resize(1);
    const auto findings = Check(lines);
    ASSERT_EQ(findings.size(), 1U);
    EXPECT_EQ(findings[0].severity, Severity::Warning);
    EXPECT_EQ(findings[0].code, 2000);
    EXPECT_EQ(findings[0].text, "The line has fewer than two points.");
}

TEST_F(DatabaseCheck, WarnsOfALineWithoutPoints) {
    auto lines = SmallWorld();
    lines[1].points.clear();
    const auto findings = Check(lines);
    ASSERT_EQ(findings.size(), 1U);
    EXPECT_EQ(findings[0].severity, Severity::Warning);
}

TEST_F(DatabaseCheck, FindsAPointNorthOfThePole) {
    auto lines = SmallWorld();
    lines[1].points = {{5, 5390, 0}, {5, 5401, 0}};
    ExpectOnly(Check(lines), DatabaseRule::Position, 2000,
               "The point 90N01 000E00 isn't on the Earth.");
}

TEST_F(DatabaseCheck, FindsAPointBeyondTheDateLine) {
    auto lines = SmallWorld();
    lines[1].points = {{5, 0, -10801}, {5, 0, -10790}};
    ExpectOnly(Check(lines), DatabaseRule::Position, 2000,
               "The point 00N00 180W01 isn't on the Earth.");
}

TEST_F(DatabaseCheck, FindsALevelOutsideOneToFive) {
    for (const std::int16_t level : {-1, 0, 6}) {
        auto lines = SmallWorld();
        lines[1].points[1].level = level;
        ExpectOnly(Check(lines), DatabaseRule::Level, 2000,
                   "The point 01N40 002E00 has level " + std::to_string(level) + ".");
    }
}

TEST_F(DatabaseCheck, FindsAnEndBelowLevelFive) {
    for (const bool atStart : {true, false}) {
        auto lines = SmallWorld();
        (atStart ? lines[1].points.front() : lines[1].points.back()).level = 4;
        ExpectOnly(Check(lines), DatabaseRule::Ends, 2000, "An end of the line isn't of level 5.");
    }
}

TEST_F(DatabaseCheck, FindsFalseExtents) {
    for (const std::size_t offset : {24, 26, 28, 30}) {
        Bytes file = Join(SmallWorld());
        PutI16(&file[offset], static_cast<std::int16_t>(GetI16(&file[offset]) + 1));
        const auto findings = Check(file);
        ASSERT_EQ(findings.size(), 1U);
        EXPECT_EQ(findings[0].rule, DatabaseRule::Extents);
        EXPECT_EQ(findings[0].code, 1000);
    }
    Bytes file = Join(SmallWorld());
    PutI16(&file[24], -1);
    ExpectOnly(Check(file), DatabaseRule::Extents, 1000,
               "The extents 00S01 000E00 to 05N00 005E00 aren't those of the points, 00N00 000E00 "
               "to 05N00 005E00.");
}

TEST_F(DatabaseCheck, FindsALineHigherOrWiderThanTenDegrees) {
    auto lines = SmallWorld();
    lines[1].points = {{5, 0, 0}, {5, 600, 600}};
    EXPECT_TRUE(Check(lines).empty());
    for (const LinePoint& end : {LinePoint{5, 601, 0}, LinePoint{5, 0, 601}}) {
        lines[1].points = {{5, 0, 0}, end};
        ExpectOnly(Check(lines), DatabaseRule::Length, 2000,
                   "The line is more than 10 degrees high or wide.");
    }
}

TEST_F(DatabaseCheck, FindsASegmentThatLeapsOverTheMap) {
    auto lines = SmallWorld();
    lines[1].points = {{5, 0, 10790}, {5, 0, -10790}};
    const auto findings = Check(lines);
    EXPECT_TRUE(Found(findings, DatabaseRule::Length));
    ASSERT_TRUE(Found(findings, DatabaseRule::Leap));
    EXPECT_EQ(findings.back().text,
              "The segment from 00N00 179E50 to 00N00 179W50 leaps over the map.");
}

TEST_F(DatabaseCheck, FindsAnEdgeAlongTheDateLine) {
    for (const std::int16_t longitude : {10800, -10800}) {
        auto lines = SmallWorld();
        lines[1].points = {{5, 0, longitude}, {5, 10, longitude}};
        const std::string place = longitude > 0 ? " 180E00" : " 180W00";
        ExpectOnly(Check(lines), DatabaseRule::DateLine, 2000,
                   std::string("The segment from 00N00")
                       .append(place)
                       .append(" to 00N10")
                       .append(place)
                       .append(" runs along the date line."));
    }
}

TEST_F(DatabaseCheck, FindsAPointOnTheSouthPole) {
    auto lines = SmallWorld();
    lines[1].points = {{5, -5400, 0}, {5, -5399, 0}};
    ExpectOnly(Check(lines), DatabaseRule::Pole, 2000, "A point lies on the South Pole.");
}

TEST_F(DatabaseCheck, FindsACoastThatIsOpen) {
    auto lines = SmallWorld();
    lines[2].points.pop_back();
    ExpectOnly(Check(lines), DatabaseRule::Closed, 5000,
               "The coast is open at 10N00 000E00 at level 1.");
}

TEST_F(DatabaseCheck, FindsACoastThatIsOpenAtACoarseLevelAlone) {
    auto lines = SmallWorld();
    lines[2].points.back().level = 3;
    const auto findings = Check(lines);
    ASSERT_EQ(findings.size(), 2U);
    EXPECT_EQ(findings[0].rule, DatabaseRule::Ends);
    EXPECT_EQ(findings[1].rule, DatabaseRule::Closed);
    EXPECT_EQ(findings[1].text, "The coast is open at 10N00 000E00 at level 4.");
}

TEST_F(DatabaseCheck, FindsOnePieceOfACoastThatRunsTheWrongWay) {
    auto lines = SmallWorld();
    lines[0].points = {{5, 0, 0}, {5, 0, 300}, {5, 300, 300}};
    TestLine other{1001, "Land", {{5, 0, 0}, {5, 300, 0}, {5, 300, 300}}};
    lines.insert(lines.begin() + 1, other);
    EXPECT_TRUE(Found(Check(lines), DatabaseRule::Closed));
    std::reverse(lines[1].points.begin(), lines[1].points.end());
    EXPECT_TRUE(Check(lines).empty());
}

TEST_F(DatabaseCheck, TakesTheTwoSidesOfTheDateLineAsOne) {
    auto lines = SmallWorld();
    // An island on the date line: its western half opens at 180 east, the eastern at 180 west.
    lines.push_back({5001, "West", {{5, 60, 10800}, {5, 60, 10700}, {5, 0, 10700}, {5, 0, 10800}}});
    lines.push_back(
        {5002, "East", {{5, 0, -10800}, {5, 0, -10700}, {5, 60, -10700}, {5, 60, -10800}}});
    EXPECT_TRUE(Check(lines).empty());
    lines.back().points.back().lat = 61;
    const auto findings = Check(lines);
    ASSERT_EQ(findings.size(), 2U);
    EXPECT_EQ(findings[0].code, 5001);
    EXPECT_EQ(findings[0].text, "The coast is open at 01N00 180E00 at level 1.");
    EXPECT_EQ(findings[1].code, 5002);
}

TEST_F(DatabaseCheck, FindsAnIslandWithTheLandOnItsRight) {
    auto lines = SmallWorld();
    std::reverse(lines[2].points.begin(), lines[2].points.end());
    ExpectOnly(Check(lines), DatabaseRule::Direction, 5000, "The coast has the land on its right.");
}

TEST_F(DatabaseCheck, FindsALandThatRunsTheWrongWayAndNotTheIslandBehindIt) {
    auto lines = SmallWorld();
    std::reverse(lines[0].points.begin(), lines[0].points.end());
    lines.push_back(
        {5001, "South", {{5, -60, 0}, {5, -60, 60}, {5, -30, 60}, {5, -30, 0}, {5, -60, 0}}});
    ExpectOnly(Check(lines), DatabaseRule::Direction, 1000, "The coast has the land on its right.");
}

TEST_F(DatabaseCheck, FindsASeaWithinLandThatRunsTheWrongWay) {
    auto lines = SmallWorld();
    const std::vector<LinePoint> ring = {
        {5, 100, 100}, {5, 200, 100}, {5, 200, 200}, {5, 100, 200}, {5, 100, 100}};
    lines.insert(lines.begin() + 1, {1001, "Sea", ring});
    EXPECT_TRUE(Check(lines).empty());
    std::reverse(lines[1].points.begin(), lines[1].points.end());
    ExpectOnly(Check(lines), DatabaseRule::Direction, 1001, "The coast has the land on its right.");
}

// Land around the Caspian in class 1, and the Caspian itself where a test wants it.
std::vector<TestLine> AroundTheCaspian(std::int16_t caspianCode) {
    std::vector<TestLine> lines = {
        {1000,
         "Asia",
         {{5, 2200, 2800}, {5, 2200, 3300}, {5, 2700, 3300}, {5, 2700, 2800}, {5, 2200, 2800}}}};
    if (caspianCode != 0) {
        lines.push_back({caspianCode,
                         "Caspian",
                         {{5, 2300, 2900},
                          {5, 2600, 2900},
                          {5, 2600, 3200},
                          {5, 2300, 3200},
                          {5, 2300, 2900}}});
    }
    return lines;
}

TEST_F(DatabaseCheck, AcceptsTheCaspianAsACoast) {
    EXPECT_TRUE(Check(AroundTheCaspian(1001)).empty());
}

TEST_F(DatabaseCheck, FindsThatTheCaspianIsMissing) {
    ExpectOnly(Check(AroundTheCaspian(0)), DatabaseRule::Caspian, 0,
               "By the coasts of class 1 the Caspian at 40N00 050E00 is land.");
}

TEST_F(DatabaseCheck, FindsThatTheCaspianIsALake) {
    const auto findings = Check(AroundTheCaspian(6000));
    ASSERT_EQ(findings.size(), 2U);
    EXPECT_EQ(findings[1].text, "The Caspian is a lake of class 6.");
}

TEST_F(DatabaseCheck, FindsThatTheCaspianIsACoastAndALake) {
    auto lines = AroundTheCaspian(1001);
    lines.push_back({6000, "Caspian", lines[1].points});
    ExpectOnly(Check(lines), DatabaseRule::Caspian, 0, "The Caspian is a lake of class 6.");
}

// A lake of one line, clockwise, an island in it, and a lake of two lines that meet.
std::vector<TestLine> WorldWithLakes() {
    auto lines = SmallWorld();
    lines.push_back(
        {6000, "Lake", {{5, 10, 10}, {5, 90, 10}, {5, 90, 90}, {5, 10, 90}, {5, 10, 10}}});
    lines.push_back(
        {6001, "Island", {{5, 40, 40}, {5, 40, 60}, {5, 60, 60}, {5, 60, 40}, {5, 40, 40}}});
    lines.push_back({6002, "Western half", {{5, 200, 200}, {5, 250, 180}, {5, 290, 200}}});
    lines.push_back({6003, "Eastern half", {{5, 290, 200}, {5, 250, 280}, {5, 200, 200}}});
    return lines;
}

TEST_F(DatabaseCheck, AcceptsClockwiseLakesAndIslandsInThem) {
    EXPECT_TRUE(Check(WorldWithLakes()).empty());
}

TEST_F(DatabaseCheck, FindsALakeThatRunsAnticlockwise) {
    auto lines = WorldWithLakes();
    std::reverse(lines[3].points.begin(), lines[3].points.end());
    const auto findings = Check(lines);
    ASSERT_EQ(findings.size(), 2U);
    EXPECT_EQ(findings[0].rule, DatabaseRule::Lakes);
    EXPECT_EQ(findings[0].severity, Severity::Error);
    EXPECT_EQ(findings[0].code, 6000);
    EXPECT_EQ(findings[0].text, "The lake runs anticlockwise.");
    EXPECT_EQ(findings[1].code, 6001) << "which then is an island in nothing";
}

TEST_F(DatabaseCheck, FindsALakeOfTwoLinesThatRunsAnticlockwise) {
    auto lines = WorldWithLakes();
    for (const std::size_t half : {5U, 6U}) {
        std::reverse(lines[half].points.begin(), lines[half].points.end());
    }
    ExpectOnly(Check(lines), DatabaseRule::Lakes, 6002, "The lake runs anticlockwise.");
}

TEST_F(DatabaseCheck, FindsALakeOverTheDateLineThatRunsAnticlockwise) {
    auto lines = SmallWorld();
    lines.push_back({6000, "West", {{5, 0, 10800}, {5, 0, 10700}, {5, 60, 10700}, {5, 60, 10800}}});
    lines.push_back(
        {6001, "East", {{5, 60, -10800}, {5, 60, -10700}, {5, 0, -10700}, {5, 0, -10800}}});
    EXPECT_TRUE(Check(lines).empty());
    for (const std::size_t half : {3U, 4U}) {
        std::reverse(lines[half].points.begin(), lines[half].points.end());
    }
    ExpectOnly(Check(lines), DatabaseRule::Lakes, 6000, "The lake runs anticlockwise.");
}

TEST_F(DatabaseCheck, WarnsOfALakeWithAnOpenShore) {
    auto lines = WorldWithLakes();
    std::reverse(lines[5].points.begin(), lines[5].points.end());
    const auto findings = Check(lines);
    ASSERT_EQ(findings.size(), 1U);
    EXPECT_EQ(findings[0].rule, DatabaseRule::Lakes);
    EXPECT_EQ(findings[0].severity, Severity::Warning);
    EXPECT_EQ(findings[0].code, 6002);
    EXPECT_EQ(findings[0].text, "The shore of the lake is open.");
}

TEST_F(DatabaseCheck, GivesUpOnLakesThatTakeTooLong) {
    auto lines = SmallWorld();
    std::vector<LinePoint> shore = {{5, 0, 0}, {5, 300, 0}, {5, 300, 300}, {5, 0, 300}};
    while (shore.size() < 30000) shore.push_back({5, 0, 300});
    shore.push_back({5, 0, 0});
    lines.push_back({6000, "Long", shore});
    for (int i = 0; i < 2000; ++i) {
        lines.push_back({6001, "Island", {{5, 9, 9}, {5, 9, 12}, {5, 12, 12}, {5, 9, 9}}});
    }
    const auto findings = Check(lines);
    const auto found = std::find_if(findings.begin(), findings.end(), [](const DatabaseFinding& f) {
        return f.rule == DatabaseRule::Lakes;
    });
    ASSERT_NE(found, findings.end());
    EXPECT_EQ(found->text, "The lakes are too long to be checked.");
}

TEST_F(DatabaseCheck, FindsAJunctionOfCoastAndBorderBelowLevelFive) {
    auto lines = SmallWorld();
    EXPECT_EQ(lines[0].points[2].level, 3) << "where no border ends";
    lines[1].points.back() = {5, 300, 300};
    ExpectOnly(Check(lines), DatabaseRule::Junction, 1000,
               "The point 05N00 005E00, at which the border 2000 ends, isn't of level 5.");
    lines[0].points[2].level = 5;
    EXPECT_TRUE(Check(lines).empty());
}

TEST_F(DatabaseCheck, ListsTwentyFindingsOfARuleAndCountsTheRest) {
    auto lines = SmallWorld();
    lines[1].points.assign(50, {5, 100, 100});
    for (LinePoint& p : lines[1].points) p.level = 9;
    const auto findings = Check(lines);
    ASSERT_EQ(findings.size(), 22U);
    EXPECT_EQ(findings[20].rule, DatabaseRule::Ends);
    EXPECT_EQ(findings[21].text, "30 more of the kind: The point 01N40 001E40 has level 9.");
}

// ---- The derived files ----

class DerivedFiles : public ::testing::Test {
  protected:
    void SetUp() override {
        ResetAll();
        path_ = folder_.Write("level1.pnt", Join(SmallWorld()));
    }
    TempFolder folder_;
    std::string path_;
};

// level5.pnt of the small world by hand: lines of 4, 2 and 3 points.
Bytes Level5() {
    auto lines = SmallWorld();
    Bytes whole = Join(lines);
    for (TestLine& line : lines) {
        std::erase_if(line.points, [](const LinePoint& p) { return p.level < 5; });
    }
    Bytes file = Join(lines);
    // Headers keep the extents of the whole line; here they are the same but for the island's east.
    PutI16(&file[32 + 24 + 32 + 12 + 30], 60);
    return file;
}

TEST_F(DerivedFiles, AreAcceptedWhereTheyAgree) {
    folder_.Write("level5.pnt", Level5());
    EXPECT_TRUE(CheckDatabase(path_).empty());
}

TEST_F(DerivedFiles, AreFoundWhereAPointDiffers) {
    Bytes file = Level5();
    file[32 + 24 + 32] ^= 1;
    folder_.Write("level5.pnt", file);
    ExpectOnly(CheckDatabase(path_), DatabaseRule::LevelFile, 2000,
               "level5.pnt isn't what level1.pnt gives, from byte 88 on.");
}

TEST_F(DerivedFiles, AreFoundWhereTheyAreCutShort) {
    Bytes file = Level5();
    file.resize(100);
    folder_.Write("level5.pnt", file);
    ExpectOnly(CheckDatabase(path_), DatabaseRule::LevelFile, 5000,
               "level5.pnt isn't what level1.pnt gives, from byte 100 on.");
}

TEST_F(DerivedFiles, AreFoundWhereTheyHaveMore) {
    Bytes file = Level5();
    file.push_back(0);
    folder_.Write("level5.pnt", file);
    ExpectOnly(CheckDatabase(path_), DatabaseRule::LevelFile, 0,
               "level5.pnt isn't what level1.pnt gives, from byte 150 on.");
}

TEST_F(DerivedFiles, AreLeftAloneBesideAFileOfAnotherName) {
    folder_.Write("level5.pnt", "nonsense");
    for (const char* name : {"mapload.pnt", "mylevel1.pnt"}) {
        folder_.Write("mylevel5.pnt", "nonsense");
        EXPECT_TRUE(CheckDatabase(folder_.Write(name, Join(SmallWorld()))).empty()) << name;
    }
}

// levelx.ndx of the small world by hand: positions count from 1 and follow a header of 32 bytes.
Bytes SmallIndex() {
    const auto lines = SmallWorld();
    const std::array<std::array<std::int16_t, 5>, 3> counts = {
        {{5, 5, 5, 4, 4}, {3, 2, 2, 2, 2}, {5, 5, 4, 4, 3}}};
    const std::array<std::array<std::int16_t, 4>, 3> extents = {
        {{0, 300, 0, 300}, {0, 300, 0, 299}, {600, 660, 0, 60}}};
    std::array<std::int32_t, 5> at = {33, 33, 33, 33, 33};
    Bytes index(3 * 40);
    for (std::size_t i = 0; i < 3; ++i) {
        std::uint8_t* p = &index[40 * i];
        PutI16(p, lines[i].code);
        for (std::size_t level = 0; level < 5; ++level) {
            PutI16(p + 2 + 2 * level, counts[i][level]);
            PutI32(p + 12 + 4 * level, at[level]);
            at[level] += counts[i][level] * 6 + 32;
        }
        for (std::size_t k = 0; k < 4; ++k) PutI16(p + 32 + 2 * k, extents[i][k]);
    }
    return index;
}

TEST_F(DerivedFiles, OfTheIndexAreAcceptedWhereTheyAgree) {
    folder_.Write("levelx.ndx", SmallIndex());
    EXPECT_TRUE(CheckDatabase(path_).empty());
}

TEST_F(DerivedFiles, OfTheIndexMayHaveAnIncompleteEntryAtTheEnd) {
    Bytes index = SmallIndex();
    index.resize(index.size() + 39);
    folder_.Write("levelx.ndx", index);
    EXPECT_TRUE(CheckDatabase(path_).empty());
}

TEST_F(DerivedFiles, OfTheIndexAreFoundWhereAnEntryDiffers) {
    Bytes index = SmallIndex();
    index[40 + 12] ^= 1;
    folder_.Write("levelx.ndx", index);
    ExpectOnly(CheckDatabase(path_), DatabaseRule::Index, 2000,
               "levelx.ndx isn't what the level files give, from entry 2 on.");
}

TEST_F(DerivedFiles, OfTheIndexAreFoundWhereAnEntryIsMissing) {
    Bytes index = SmallIndex();
    index.resize(80);
    folder_.Write("levelx.ndx", index);
    ExpectOnly(CheckDatabase(path_), DatabaseRule::Index, 5000,
               "levelx.ndx isn't what the level files give, from entry 3 on.");
}

}  // namespace
}  // namespace orvantis

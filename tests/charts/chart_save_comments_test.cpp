// Whose the files are that have the names of a comment file and of its backup: a save takes the
// place of its own, and leaves all others alone.
#include <gtest/gtest.h>
#include <map>

#include "chart_samples.h"
#include "charts/comments.h"
#include "support/failing_disk.h"
#include "support/failing_steps.h"
#include "support/reset_all.h"
#include "support/temp_folder.h"

namespace orvantis {
namespace {

namespace fs = std::filesystem;

const std::string kRefused = "Error 75: Path/File access error";

// A comment file of these blocks; the first is the head.
Bytes Blocks(const std::vector<std::pair<std::int32_t, std::string>>& blocks) {
    Bytes bytes(blocks.size() * 32);
    for (std::size_t i = 0; i < blocks.size(); ++i) {
        PutI32(&bytes[i * 32], blocks[i].first);
        PutText(&bytes[i * 32 + 4], 28, blocks[i].second);
    }
    return bytes;
}

Bytes TextOf(std::size_t size) {
    const std::string_view words = "Notes of mine, line by line.\r\n";
    Bytes bytes(size);
    for (std::size_t i = 0; i < size; ++i) {
        bytes[i] = static_cast<std::uint8_t>(words[i % words.size()]);
    }
    return bytes;
}

class CommentsOfASave : public testing::Test {
  protected:
    void SetUp() override { ResetAll(); }

    bool Save(std::int16_t type, int charts) {
        TestShell().log.clear();
        ChartList list = SampleList(charts);
        return SaveChartFile(path_, type, list);
    }
    bool SaveWithoutComments(std::int16_t type, int charts) {
        TestShell().log.clear();
        ChartList list = SampleList(charts);
        for (StoredChart& stored : list.charts) stored.comment.clear();
        return SaveChartFile(path_, type, list);
    }

    // Names and bytes of all that is in the folder.
    std::map<std::string, Bytes> Contents() const {
        std::map<std::string, Bytes> files;
        for (const auto& entry : fs::directory_iterator(folder_.Path())) {
            const std::string path = entry.path().string();
            files[entry.path().filename().string()] =
                entry.is_directory() ? Bytes{} : FileBytes(path);
        }
        return files;
    }
    void Clear() const {
        for (const auto& [name, bytes] : Contents()) fs::remove_all(folder_.File(name));
    }
    Bytes In(const std::string& name) const { return FileBytes(folder_.File(name)); }

    std::string Comment(const std::string& path, std::size_t n) {
        ChartList list;
        EXPECT_TRUE(LoadChartList(path, list, kFalse));
        return n <= list.charts.size() ? list.charts[n - 1].comment : "no such chart";
    }

    std::string Told(const std::string& reason) const {
        return "MessageBox|Orvantis|Unable to save chart file: " + path_ + "\\r\\n\\r\\n" + reason +
               "|Ok|Error";
    }
    // The save with comments has been refused and nothing was touched.
    void ExpectRefused(std::int16_t type, const std::string& what) {
        const auto before = Contents();
        EXPECT_FALSE(Save(type, 4)) << what;
        EXPECT_EQ(TestShell().log, std::vector{Told(kRefused)}) << what;
        EXPECT_EQ(Contents(), before) << what;
    }

    TempFolder folder_;
    std::string path_ = folder_.File("charts.cht");
};

// What isn't a comment file, by the reason.
std::map<std::string, Bytes> Others() {
    const Bytes sound = Blocks({{0, ""}, {3, "first"}, {0, "last"}});
    const Bytes cut(sound.begin(), sound.end() - 1);
    Bytes longer = sound;
    longer.resize(97);
    return {{"text of 1 byte", TextOf(1)},
            {"text of 31 bytes", TextOf(31)},
            {"text of one block by chance", TextOf(32)},
            {"text of ten blocks by chance", TextOf(320)},
            {"long text", TextOf(70000)},
            {"cut comment file", cut},
            {"comment file with a byte more", longer},
            {"head beyond the file", Blocks({{4, ""}, {3, "first"}, {0, "last"}})},
            {"chain beyond the file", Blocks({{0, ""}, {4, "first"}, {0, "last"}})},
            {"chain below the file", Blocks({{0, ""}, {-1, "first"}, {0, "last"}})},
            {"chain to the head", Blocks({{0, ""}, {1, "first"}, {0, "last"}})}};
}

TEST_F(CommentsOfASave, AnothersFileStaysWhatIsSavedBesideItAndHoweverOften) {
    for (const auto& [what, bytes] : Others()) {
        for (const std::int16_t type : {1, 2}) {
            Clear();
            folder_.Write("charts", bytes);
            folder_.Write("charts~", "another's too");
            ASSERT_TRUE(SaveWithoutComments(type, 1)) << what;
            ExpectRefused(type, what);
            ASSERT_TRUE(SaveWithoutComments(type, 2)) << what;
            ExpectRefused(type, what);
            ASSERT_TRUE(Save(3, 3)) << what;
            EXPECT_EQ(In("charts"), bytes) << what;
            EXPECT_EQ(In("charts~").size(), 13U) << what;
            EXPECT_FALSE(fs::exists(folder_.File("charts.bak"))) << what;
        }
    }
}

TEST_F(CommentsOfASave, AFolderOfTheCommentFilesNameStaysToo) {
    ASSERT_TRUE(SaveWithoutComments(2, 1));
    fs::create_directory(folder_.File("charts"));
    folder_.Write("charts/inside", "precious");
    ASSERT_TRUE(SaveWithoutComments(2, 2));
    ExpectRefused(2, "folder");
    EXPECT_EQ(In("charts/inside").size(), 8U);
}

TEST_F(CommentsOfASave, AnEmptyFileOfTheCommentFilesNameIsTakenBesideAFileThatKeepsComments) {
    folder_.Write("charts", "");
    ExpectRefused(2, "there is no chart file yet");
    ASSERT_TRUE(SaveWithoutComments(2, 1));
    ASSERT_TRUE(Save(2, 2));
    EXPECT_EQ(Comment(path_, 1), "Comment of chart 1, two blocks.");
}

TEST_F(CommentsOfASave, CommentsThatNoChartLeadsToAnyMoreAreTheFilesOwn) {
    const Bytes free = Blocks({{2, ""}, {3, ""}, {0, ""}});
    const Bytes taken = Blocks({{0, ""}, {3, "first"}, {0, "last"}, {4, "a ring of one"}});
    for (const Bytes& leftover : {free, taken, Blocks({{0, ""}})}) {
        for (const std::int16_t type : {1, 2}) {
            Clear();
            ASSERT_TRUE(SaveWithoutComments(type, 1));
            folder_.Write("charts", leftover);
            ASSERT_TRUE(Save(type, 2));
            EXPECT_EQ(Comment(path_, 2), "Comment of chart 2, two blocks.");
            EXPECT_EQ(In("charts.bak"), leftover);
            EXPECT_TRUE(TestShell().boxes.empty());
        }
    }
}

TEST_F(CommentsOfASave, DamagedCommentsOfItsOwnAreNeitherReplacedNorMoved) {
    for (const std::int16_t type : {1, 2}) {
        Clear();
        ASSERT_TRUE(Save(type, 2));
        Bytes damaged = In("charts");
        damaged.resize(damaged.size() - 32);  // the last comment's end
        folder_.Write("charts", damaged);
        ExpectRefused(type, "damaged");
        const Bytes charts = In("charts.cht");
        ASSERT_TRUE(Save(3, 2));
        EXPECT_EQ(In("charts"), damaged);
        EXPECT_EQ(In("charts.cht.bak"), charts);
        fs::rename(path_ + ".bak", path_);
        ASSERT_TRUE(SaveWithoutComments(type, 2));
        EXPECT_EQ(In("charts"), damaged);
        EXPECT_EQ(In("charts.cht.bak"), charts);
        EXPECT_FALSE(fs::exists(folder_.File("charts.bak")));
    }
}

TEST_F(CommentsOfASave, AnothersFileOfTheBackupsNameIsNotReplacedByTheComments) {
    for (const auto& [what, bytes] : Others()) {
        for (const std::int16_t type : {1, 2}) {
            Clear();
            folder_.Write("charts.bak", bytes);
            ASSERT_TRUE(SaveWithoutComments(type, 1)) << what;
            ASSERT_TRUE(Save(type, 2)) << "nothing goes to the backup: " << what;
            ExpectRefused(type, what);
            const auto before = Contents();
            EXPECT_FALSE(SaveWithoutComments(type, 1)) << what;
            EXPECT_FALSE(Save(3, 1)) << what;
            EXPECT_EQ(TestShell().log, std::vector{Told(kRefused)}) << what;
            EXPECT_EQ(Contents(), before) << what;
            EXPECT_EQ(In("charts.bak"), bytes) << what;
        }
    }
}

TEST_F(CommentsOfASave, ABackupOfCommentsThatNoChartLeadsToAnyMoreIsReplaced) {
    ASSERT_TRUE(Save(2, 1));
    ASSERT_TRUE(Save(3, 1));
    ASSERT_TRUE(Save(2, 2));  // the backup is of type 3 now, and charts.bak a leftover
    const Bytes comments = In("charts");
    ASSERT_TRUE(Save(2, 4));
    EXPECT_EQ(In("charts.bak"), comments);
    EXPECT_EQ(Comment(path_ + ".bak", 2), "Comment of chart 2, two blocks.");
    EXPECT_TRUE(TestShell().boxes.empty());
}

TEST_F(CommentsOfASave, ACommentFileOfTwoChartFilesIsLeftToBoth) {
    ASSERT_TRUE(Save(2, 1));
    fs::copy_file(path_, folder_.File("charts.dat"));
    for (const char* name : {"charts.cht", "charts.dat"}) {
        path_ = folder_.File(name);
        for (const std::int16_t type : {1, 2, 3}) ExpectRefused(type, name);
    }
    fs::remove(folder_.File("charts.dat"));
    path_ = folder_.File("charts.cht");
    EXPECT_TRUE(Save(2, 2)) << "alone";
}

// Bytes that start as a chart file of that type does, with these references.
Bytes StartingAsCharts(std::int16_t type, const std::vector<std::int32_t>& refs) {
    const auto length = static_cast<std::size_t>(ChartRecordLength(type));
    Bytes bytes((refs.size() + 1) * length);
    PutI16(bytes.data(), type);
    for (std::size_t n = 1; n <= refs.size(); ++n) {
        PutI32(&bytes[n * length + (type == 1 ? 106 : 158)], refs[n - 1]);
    }
    return bytes;
}

TEST_F(CommentsOfASave, WhatStartsAsAChartFileButHasOtherReferencesIsNoSharer) {
    for (const std::int16_t type : {1, 2}) {
        Bytes piece = StartingAsCharts(type, {2});
        piece.push_back(0);
        const std::map<std::string, Bytes> others = {
            {"a reference beyond the comments", StartingAsCharts(type, {2, 8, 2})},
            {"a reference far beyond them", StartingAsCharts(type, {INT32_MAX})},
            {"a reference below 0", StartingAsCharts(type, {-1, 2})},
            {"the head and none", StartingAsCharts(type, {1, 0})},
            {"a piece of a chart at the end", piece},
            {"text", StartingAsCharts(type, std::vector<std::int32_t>(9, 0x20202020))}};
        for (const auto& [what, bytes] : others) {
            Clear();
            ASSERT_TRUE(Save(2, 4)) << what;
            ASSERT_EQ(In("charts").size(), 7U * 32);
            folder_.Write("charts.emf", bytes);
            EXPECT_EQ(SharerOfComments(path_, folder_.File("charts")), "") << what;
            EXPECT_TRUE(Save(2, 4)) << what;
            EXPECT_EQ(In("charts.emf"), bytes) << what;
        }
        folder_.Write("charts.emf", StartingAsCharts(type, {0, 7}));
        ExpectRefused(2, "all references within the comments");
    }
}

TEST_F(CommentsOfASave, WhatASaveThatWasBrokenOffLeftAsideIsInNobodysWay) {
    for (const std::int16_t type : {1, 2, 3}) {
        Clear();
        ASSERT_TRUE(Save(type, 2));
        fs::copy_file(path_, path_ + "~");
        folder_.Write("charts~", Blocks({{0, ""}, {3, "first"}, {0, "last"}}));
        fs::copy_file(path_, path_ + ".bak~");
        ASSERT_TRUE(Save(type, 4)) << type;
        EXPECT_FALSE(fs::exists(path_ + "~"));
        EXPECT_FALSE(fs::exists(folder_.File("charts~")));
        EXPECT_EQ(Comment(path_, 4), "Comment of chart 4, two blocks.");
    }
}

// A list whose comments tell whose they are; type 1 has 30 characters for a name.
ChartList Generation(const std::string& name) {
    ChartList list = SampleList(4);
    for (StoredChart& stored : list.charts) {
        stored.chart.event.name = name + stored.chart.event.name;
        if (!stored.comment.empty()) stored.comment = "Comment of " + stored.chart.event.name;
    }
    return list;
}

// The charts of a file, each with its own comment; `lost`: or with none.
ChartList LoadOwn(const std::string& path, const std::string& what, bool lost = false) {
    ChartList list;
    EXPECT_TRUE(LoadChartList(path, list, kFalse)) << what;
    EXPECT_FALSE(list.charts.empty()) << what;
    std::size_t n = 0;
    for (const StoredChart& stored : list.charts) {
        const bool has = ++n % 3 != 0 && list.type != 0;
        const std::string own = has ? "Comment of " + stored.chart.event.name : "";
        EXPECT_TRUE(stored.comment == own || (lost && stored.comment.empty()))
            << what << ": " << stored.chart.event.name << " has \"" << stored.comment << "\"";
    }
    return list;
}

// Saves that are broken off, of types over one another.
class BrokenSaves : public CommentsOfASave {
  protected:
    static constexpr int kMostSteps = 60;
    struct Row {
        std::int16_t old;
        std::int16_t type;
    };
    static constexpr Row kRows[] = {{1, 1}, {2, 2}, {2, 3}, {2, 0}, {3, 2}};

    bool SaveAs(const std::string& name, std::int16_t type) {
        ChartList list = Generation(name);
        return SaveChartFile(path_, type, list);
    }
    // False if the save was done before that step.
    bool BreakOff(const std::string& name, std::int16_t type, int step) {
        const FailingSteps disk(step, true);
        SaveAs(name, type);
        return disk.Reached();
    }
    // The same over a file that has a backup.
    bool BreakOff(const Row& row, int step) {
        Clear();
        EXPECT_TRUE(SaveAs("a ", row.old) && SaveAs("longer b ", row.old));
        return BreakOff("the longest c ", row.type, step);
    }
    void ExpectSaved(const std::string& name, std::int16_t type, const std::string& what) {
        TestShell().log.clear();
        EXPECT_TRUE(SaveAs(name, type)) << what;
        EXPECT_TRUE(TestShell().log.empty()) << what;
        EXPECT_EQ(LoadOwn(path_, what).charts.at(3).chart.event.name, name + "Chart number 4");
    }
    // Leaves the folder as a copy of it is whose files have no second names.
    void SplitSecondNames() const {
        for (const auto& [name, bytes] : Contents()) {
            fs::remove(folder_.File(name));
            folder_.Write(name, bytes);
        }
    }
    // Saves another chart file of the stem, with comments or without, and deletes it again. The
    // first is refused, and neither touches the comments of the charts. Where these have a comment
    // file what is aside is nobody's any more.
    void SaveAnotherBeside(std::int16_t type, bool comments, const std::string& what) {
        const std::string charts = path_;
        auto before = Contents();
        path_ = folder_.File("charts.dat");
        if (comments) {
            ExpectRefused(type, what);
            const std::string sharer = fs::exists(folder_.File("charts")) ? "" : charts;
            EXPECT_EQ(FindCommentObstacle(path_, type, SampleList(1)).sharer, sharer) << what;
        } else {
            EXPECT_TRUE(SaveWithoutComments(type, 3)) << what;
            EXPECT_TRUE(SaveWithoutComments(type, 2)) << what;
        }
        fs::remove(path_);
        fs::remove(path_ + ".bak");
        path_ = charts;
        if (before.contains("charts")) {
            before.erase("charts~");
            fs::remove(folder_.File("charts~"));
        }
        EXPECT_TRUE(Contents() == before) << what;
        LoadOwn(path_, what);
    }
    // What a broken save has left, the backup where there is no file, is read, saved in its own
    // place, and replaced.
    void ExpectNothingLost(const Row& row, int step, const std::string& what) {
        const auto before = Contents();
        const bool there = fs::exists(path_);
        ChartList list = LoadOwn(there ? path_ : path_ + ".bak", what);
        EXPECT_EQ(Contents(), before) << what << ": reading moves nothing";
        EXPECT_TRUE(SaveChartFile(path_, list.type, list)) << what;
        LoadOwn(path_, what + " in place");
        LoadOwn(path_ + ".bak", what + " in place");
        BreakOff(row, step);
        ExpectSaved("e ", 2, what + " again");
        LoadOwn(path_ + ".bak", what + " again");
    }
    void ExpectNothingLostAtAnyStep() {
        for (const Row& row : kRows) {
            for (int step = 1; BreakOff(row, step); ++step) {
                ASSERT_LT(step, kMostSteps);
                ExpectNothingLost(row, step,
                                  std::to_string(row.old) + std::to_string(row.type) + " " +
                                      std::to_string(step));
                if (HasFailure()) return;
            }
        }
    }
};

TEST_F(BrokenSaves, WhereverASaveIsBrokenOffItsCommentsAreReadAndTheNextSaveLosesNone) {
    ExpectNothingLostAtAnyStep();
}

TEST_F(BrokenSaves, NorIsACommentLostOnADiskThatGivesNoSecondNames) {
    const DiskWithoutSecondNames disk;
    ExpectNothingLostAtAnyStep();
}

TEST_F(BrokenSaves, ChartsThatHadLostTheirCommentFileFindNoOthersInWhatIsLeft) {
    const auto breakOff = [this](int step) {
        Clear();
        EXPECT_TRUE(SaveAs("a ", 2) && SaveAs("longer b ", 2));
        fs::remove(folder_.File("charts"));
        return BreakOff("the longest c ", 2, step);
    };
    for (int first = 1; breakOff(first); ++first) {
        // The next one is broken off as it clears what that one left, too.
        for (int second = 0; second <= 3; ++second) {
            const std::string what = std::to_string(first) + " " + std::to_string(second);
            ASSERT_LT(first, kMostSteps);
            breakOff(first);
            LoadOwn(path_, what, true);
            if (second != 0) BreakOff("d, longer ", 2, second);
            LoadOwn(path_, what, true);
            if (fs::exists(path_ + ".bak")) LoadOwn(path_ + ".bak", what, true);
            ExpectSaved("e ", 2, what);
            LoadOwn(path_ + ".bak", what, true);
            if (HasFailure()) return;
        }
    }
}

TEST_F(BrokenSaves, NorDoesASaveOfAnotherChartFileOfTheStemTouchTheirComments) {
    for (const bool comments : {true, false}) {
        for (const std::int16_t type : {0, 1, 2, 3}) {
            if (comments && !KeepsComments(type)) continue;
            for (int step = 1; BreakOff({2, 2}, step); ++step) {
                ASSERT_LT(step, kMostSteps);
                SaveAnotherBeside(type, comments,
                                  std::to_string(type) + " " + std::to_string(step));
                ExpectSaved("e ", 2, std::to_string(step));
                LoadOwn(path_ + ".bak", std::to_string(step));
                if (HasFailure()) return;
            }
        }
    }
}

TEST_F(BrokenSaves, OldChartsDoNotFindTheNewCommentsWhereTheNewChartsAreDeleted) {
    for (const bool backup : {false, true}) {
        const auto breakOff = [&](int step) {
            Clear();
            EXPECT_TRUE(!backup || SaveAs("a ", 2));
            EXPECT_TRUE(SaveAs("longer b ", 2));
            return BreakOff("the longest c ", 2, step);
        };
        for (int step = 1; breakOff(step); ++step) {
            ASSERT_LT(step, kMostSteps);
            const std::string what = std::to_string(backup) + " " + std::to_string(step);
            fs::remove(path_ + "~");
            LoadOwn(path_, what, true);
            ExpectSaved("e ", 2, what);
            LoadOwn(path_ + ".bak", what, true);
            if (HasFailure()) return;
        }
    }
}

TEST_F(BrokenSaves, NewChartsFindTheirCommentsAsideWhateverHasTheNameOfTheBackup) {
    const Bytes few = Blocks({{0, ""}, {0, "Too few for the second one."}});
    for (const Bytes& other : {TextOf(320), few}) {
        Clear();
        ASSERT_TRUE(SaveAs("a ", 2));
        fs::rename(folder_.File("charts"), folder_.File("charts~"));
        folder_.Write("charts.bak", other);
        EXPECT_EQ(NativePath(StandingComments(path_)), folder_.File("charts~"));
        LoadOwn(path_, "aside");
    }
}

TEST_F(BrokenSaves, NothingIsLostInACopyOfTheFolderWithoutSecondNames) {
    for (const Row& row : kRows) {
        for (int step = 1; BreakOff(row, step); ++step) {
            ASSERT_LT(step, kMostSteps);
            const std::string what =
                std::to_string(row.old) + std::to_string(row.type) + " " + std::to_string(step);
            SplitSecondNames();
            LoadOwn(path_, what);
            ExpectSaved("e ", 2, what);
            LoadOwn(path_ + ".bak", what);
            if (HasFailure()) return;
        }
    }
}

TEST_F(BrokenSaves, ASecondOneThatIsBrokenOffAtAnyStepToo) {
    for (int first = 1; BreakOff({2, 2}, first); ++first) {
        bool again = true;
        for (int second = 1; again; ++second) {
            const std::string what = std::to_string(first) + " " + std::to_string(second);
            ASSERT_LT(second, kMostSteps) << what;
            BreakOff({2, 2}, first);
            LoadOwn(path_, what);
            again = BreakOff("d, longer ", 2, second);
            LoadOwn(path_, what);
            if (fs::exists(path_ + ".bak")) LoadOwn(path_ + ".bak", what, true);
            ExpectSaved("e ", 2, what);
            LoadOwn(path_ + ".bak", what);
            ExpectSaved("longest f ", 2, what);
            const ChartList backup = LoadOwn(path_ + ".bak", what);
            EXPECT_EQ(backup.charts.at(3).chart.event.name, "e Chart number 4") << what;
            if (HasFailure()) return;
        }
    }
}

TEST_F(CommentsOfASave, ChartsWhoseCommentFileIsGoneAreSavedAndTheirBackupFindsNoOthers) {
    ChartList list = Generation("a ");
    ASSERT_TRUE(SaveChartFile(path_, 2, list));
    list = Generation("longer b ");
    ASSERT_TRUE(SaveChartFile(path_, 2, list));
    fs::remove(folder_.File("charts"));
    const Bytes charts = In("charts.cht");
    list = Generation("c ");
    ASSERT_TRUE(SaveChartFile(path_, 2, list));
    EXPECT_TRUE(TestShell().boxes.empty());
    EXPECT_EQ(In("charts.cht.bak"), charts);
    EXPECT_EQ(Comment(path_ + ".bak", 1), "");
    EXPECT_EQ(Comment(path_, 1), "Comment of c Chart number 1");
    EXPECT_EQ(Contents().size(), 3U) << "and nothing is left aside";
}

TEST_F(CommentsOfASave, ChartsWhoseCommentFileIsGoneDoNotGoBesideTheCommentsOfAnotherBackup) {
    path_ = folder_.File("charts.dat");
    ASSERT_TRUE(Save(2, 1) && Save(2, 2));
    fs::remove(path_);
    fs::remove(folder_.File("charts"));
    path_ = folder_.File("charts.cht");
    ASSERT_TRUE(Save(2, 2));
    fs::remove(folder_.File("charts"));
    for (const std::int16_t type : {0, 1, 2, 3}) ExpectRefused(type, std::to_string(type));
    EXPECT_EQ(FindCommentObstacle(path_, 3, SampleList(1)).sharer, folder_.File("charts.dat.bak"));
    fs::remove(folder_.File("charts.dat.bak"));
    EXPECT_TRUE(Save(3, 2));
}

TEST_F(CommentsOfASave, NoCommentsComeBesideAnotherChartFileThatHasLostItsOwn) {
    const std::string loser = path_;
    ASSERT_TRUE(Save(2, 1));
    fs::remove(folder_.File("charts"));
    path_ = folder_.File("charts.dat");
    for (const std::int16_t type : {1, 2}) {
        ExpectRefused(type, std::to_string(type));
        const CommentObstacle found = FindCommentObstacle(path_, type, SampleList(1));
        EXPECT_EQ(NativePath(found.path), folder_.File("charts"));
        EXPECT_EQ(found.sharer, loser);
        EXPECT_TRUE(SaveWithoutComments(type, 1));
    }
    EXPECT_TRUE(Save(3, 2));
    EXPECT_EQ(Comment(loser, 1), "");
    fs::remove(loser);
    EXPECT_TRUE(Save(2, 2)) << "alone";
}

TEST_F(CommentsOfASave, NorBesideAnotherBackupThatHasLostItsOwn) {
    ASSERT_TRUE(Save(2, 1) && Save(2, 1));
    const std::string loser = path_ + ".bak";
    for (const char* name : {"charts.cht", "charts", "charts.bak"}) fs::remove(folder_.File(name));
    path_ = folder_.File("charts.dat");
    ASSERT_TRUE(Save(2, 2)) << "nothing goes to the backup";
    for (const std::int16_t type : {0, 1, 2, 3}) {
        ExpectRefused(type, std::to_string(type));
        const CommentObstacle found = FindCommentObstacle(path_, type, SampleList(1));
        EXPECT_EQ(NativePath(found.path), folder_.File("charts.bak"));
        EXPECT_EQ(found.sharer, loser);
    }
    EXPECT_EQ(Comment(loser, 1), "");
    fs::remove(loser);
    EXPECT_TRUE(Save(2, 2)) << "alone";
}

TEST_F(CommentsOfASave, ChartsThatHaveLostTheirsGoToABackupBesideAnotherThatHasLostItsOwn) {
    ASSERT_TRUE(Save(2, 1));
    fs::copy_file(path_, folder_.File("charts.dat.bak"));
    fs::remove(folder_.File("charts"));
    EXPECT_TRUE(Save(2, 2)) << "no comments come there";
    EXPECT_EQ(Comment(path_ + ".bak", 1), "");
}

TEST_F(CommentsOfASave, NorBesideThoseOfABackupThatIsGone) {
    ASSERT_TRUE(Save(2, 4) && Save(2, 2));
    fs::remove(path_ + ".bak");
    fs::remove(folder_.File("charts"));
    ASSERT_TRUE(Save(2, 1));
    EXPECT_EQ(Comment(path_ + ".bak", 1), "");
    EXPECT_EQ(Comment(path_, 1), "Comment of chart 1, two blocks.");
    EXPECT_EQ(Contents().size(), 3U) << "and nothing is left aside";
}

TEST_F(CommentsOfASave, WhatHasNotTheFormOfCommentsOrTooFewOfThemIsNotReadWhereASaveWasBrokenOff) {
    const Bytes text = TextOf(320);
    const Bytes few = Blocks({{0, ""}, {0, "Too few for the second one."}});
    for (const Bytes& bytes : {text, few}) {
        Clear();
        ASSERT_TRUE(Save(2, 2));
        fs::remove(folder_.File("charts"));
        folder_.Write("charts~", bytes);
        folder_.Write("charts.bak", bytes);
        EXPECT_EQ(NativePath(StandingComments(path_)), folder_.File("charts"));
        fs::create_hard_link(path_, path_ + ".bak");
        EXPECT_EQ(NativePath(StandingComments(path_)), folder_.File("charts"));
    }
}

TEST_F(CommentsOfASave, ACommentFileThatEndsBeforeACommentIsDamaged) {
    for (const std::int16_t type : {1, 2}) {
        Clear();
        ASSERT_TRUE(Save(type, 4));
        const Bytes sound = In("charts");
        folder_.Write("charts", Bytes(sound.begin(), sound.begin() + 5 * 32));
        const Bytes cut = In("charts");
        ASSERT_TRUE(IsCommentFile(folder_.File("charts")));
        ExpectRefused(type, "short");
        ASSERT_TRUE(SaveWithoutComments(type, 4));
        EXPECT_EQ(In("charts"), cut);
        EXPECT_FALSE(fs::exists(folder_.File("charts.bak")));
    }
}

TEST_F(CommentsOfASave, WhatHasTheNamesOfTheFilesAsideButForTheirCaseStays) {
    folder_.Write("CHARTS.CHT~", "another's");
    folder_.Write("CHARTS~", "another's too");
    const auto expectThere = [this](int step) {
        EXPECT_EQ(In("CHARTS.CHT~").size(), 9U) << step;
        EXPECT_EQ(In("CHARTS~").size(), 13U) << step;
    };
    ASSERT_TRUE(Save(2, 2) && Save(2, 4));
    expectThere(0);
    EXPECT_EQ(Comment(path_, 4), "Comment of chart 4, two blocks.");
    for (int step = 1; step < 50; ++step) {
        const FailingSteps disk(step);
        Save(2, 3);
        expectThere(step);
        if (!disk.Reached()) break;
    }
    EXPECT_EQ(Contents().size(), 6U);
}

TEST_F(CommentsOfASave, AFileThatCannotBeReadMayShareTheComments) {
    const auto save = [this] {
        if (!Save(2, 1)) std::_Exit(1);
        const std::string other = folder_.Write("charts.dat", "who knows");
        for (const char* name : {"charts.cht", "charts"}) {
            fs::permissions(folder_.File(name), fs::perms::all);
        }
        fs::permissions(folder_.Path(), fs::perms::all);
        ActAsPlainUserOn(other, fs::perms::none);
        ExpectRefused(2, "unknown");
        const CommentObstacle found = FindCommentObstacle(path_, 2, SampleList(1));
        std::_Exit(HasFailure() || found.sharer != other ? 2 : 0);
    };
    EXPECT_EXIT(save(), testing::ExitedWithCode(0), "");
}

TEST_F(CommentsOfASave, TheCommentsOfAnotherChartFileStayWhatIsSavedBesideThemAndHoweverOften) {
    ASSERT_TRUE(Save(2, 1));
    const Bytes comments = In("charts");
    path_ = folder_.File("charts.dat");
    for (const std::int16_t type : {1, 2}) {
        ASSERT_TRUE(SaveWithoutComments(type, 1));
        ExpectRefused(type, "first");
        ASSERT_TRUE(SaveWithoutComments(type, 2));
        ExpectRefused(type, "second");
        ASSERT_TRUE(Save(3, 2));
    }
    EXPECT_EQ(In("charts"), comments);
    EXPECT_EQ(Comment(folder_.File("charts.cht"), 1), "Comment of chart 1, two blocks.");
}

TEST_F(CommentsOfASave, TheCommentsOfAnotherBackupOrOfAFileOfTheBackupsStemAreNotReplaced) {
    // charts.dat has a backup that keeps comments, and charts.bak.cht has them in charts.bak.
    for (const char* name : {"charts.dat.bak", "charts.bak.cht"}) {
        Clear();
        path_ = folder_.File("charts.cht");
        ASSERT_TRUE(Save(2, 1));
        fs::rename(path_, folder_.File(name));
        fs::rename(folder_.File("charts"), folder_.File("charts.bak"));
        ASSERT_TRUE(Save(2, 2));
        ExpectRefused(2, name);
        EXPECT_EQ(Comment(folder_.File(name), 1), "Comment of chart 1, two blocks.");
    }
}

TEST_F(CommentsOfASave, FilesWhoseNamesDifferByCaseAloneKeepTheirOwnComments) {
    const std::string lower = path_;
    ASSERT_TRUE(Save(2, 1));
    fs::rename(lower, folder_.File("other.cht"));
    fs::rename(folder_.File("charts"), folder_.File("other"));
    path_ = folder_.File("CHARTS.CHT");
    ASSERT_TRUE(Save(2, 2));
    const Bytes comments = In("CHARTS");
    // Without a comment file of its own the one of the other would be found.
    fs::rename(folder_.File("other.cht"), lower);
    path_ = lower;
    ExpectRefused(2, "the other's");
    fs::rename(folder_.File("other"), folder_.File("charts"));
    const Bytes charts = In("CHARTS.CHT");
    EXPECT_TRUE(Save(2, 4));
    EXPECT_EQ(In("CHARTS"), comments);
    EXPECT_EQ(In("CHARTS.CHT"), charts);
    EXPECT_EQ(Comment(lower, 4), "Comment of chart 4, two blocks.");
    // Nor do the backups meet.
    path_ = folder_.File("CHARTS.CHT");
    EXPECT_TRUE(Save(2, 5));
    EXPECT_EQ(Comment(lower + ".bak", 1), "Comment of chart 1, two blocks.");
    EXPECT_EQ(In("CHARTS.bak"), comments);
    EXPECT_EQ(In("CHARTS.CHT.bak"), charts);
}

TEST_F(CommentsOfASave, ACommentFileThatStartsAsAChartFileDoesIsOne) {
    // A free list at block 2 looks like type 2, and its texts like references.
    ASSERT_TRUE(SaveWithoutComments(2, 1));
    std::vector<std::pair<std::int32_t, std::string>> blocks(40, {0, std::string(28, '!')});
    blocks[0] = {2, ""};
    folder_.Write("charts.bak", Blocks(blocks));
    ASSERT_TRUE(Save(2, 2));
    EXPECT_TRUE(Save(2, 4));
}

TEST_F(CommentsOfASave, WhereNoFileOfType1Or2IsReplacedAFileOfTheCommentFilesNameIsAnothers) {
    for (const std::int16_t old : {-1, 0, 3}) {  // -1: there is none
        for (const std::int16_t type : {1, 2}) {
            fs::remove(path_);
            ASSERT_TRUE(old < 0 || Save(old, 2));
            folder_.Write("charts", "precious");
            const auto before = Contents();
            TestShell().log.clear();
            EXPECT_FALSE(Save(type, 1)) << old << " " << type;
            EXPECT_EQ(TestShell().log, std::vector{Told("Error 75: Path/File access error")});
            EXPECT_EQ(Contents(), before);
            // Without comments nothing would be written there.
            ChartList list = SampleList(1);
            list.charts[0].comment.clear();
            EXPECT_TRUE(SaveChartFile(path_, type, list)) << old << " " << type;
            EXPECT_EQ(Contents()["charts"], before.at("charts"));
            EXPECT_TRUE(LoadChartList(path_, list, kFalse));
            EXPECT_EQ(list.charts.at(0).comment, "");
            fs::remove(path_);
            fs::remove(folder_.File("charts"));
            EXPECT_TRUE(Save(type, 1)) << "nothing is in the way";
            fs::remove(folder_.File("charts"));
        }
    }
}

}  // namespace
}  // namespace orvantis

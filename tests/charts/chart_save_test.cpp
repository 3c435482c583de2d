// The saving of whole chart files: what comes of it, and that nothing is lost when it fails.
#include <algorithm>
#include <gtest/gtest.h>
#include <limits>
#include <map>
#include <set>

#include "chart_samples.h"
#include "charts/comments.h"
#include "support/failing_disk.h"
#include "support/failing_steps.h"
#include "support/reset_all.h"
#include "support/temp_folder.h"

namespace orvantis {
namespace {

namespace fs = std::filesystem;

// Names and bytes of all that is in the folder.
std::map<std::string, Bytes> Contents(const std::string& folder) {
    std::map<std::string, Bytes> files;
    for (const auto& entry : fs::directory_iterator(folder)) {
        files[entry.path().filename().string()] = FileBytes(entry.path().string());
    }
    return files;
}

// Makes a folder hold just these files.
void Restore(const TempFolder& folder, const std::map<std::string, Bytes>& files) {
    for (const auto& [name, bytes] : Contents(folder.Path())) fs::remove(folder.File(name));
    for (const auto& [name, bytes] : files) folder.Write(name, bytes);
}

class ChartSave : public testing::Test {
  protected:
    void SetUp() override { ResetAll(); }

    bool Save(std::int16_t type, int charts) {
        ChartList list = SampleList(charts);
        return SaveChartFile(path_, type, list);
    }

    std::set<std::string> Names() const {
        std::set<std::string> names;
        for (const auto& entry : fs::directory_iterator(folder_.Path())) {
            names.insert(entry.path().filename().string());
        }
        return names;
    }

    std::string Told(const std::string& reason) const {
        return "MessageBox|Orvantis|Unable to save chart file: " + path_ + "\\r\\n\\r\\n" + reason +
               "|Ok|Error";
    }

    TempFolder folder_;
    std::string path_ = folder_.File("charts.cht");
};

TEST_F(ChartSave, SavingOverAFileLeavesTheFormerOneAsBakAndASecondSaveReplacesThat) {
    for (const std::int16_t type : {0, 1, 2, 3}) {
        path_ = folder_.File("charts" + std::to_string(type) + ".cht");
        ASSERT_TRUE(Save(type, 1));
        EXPECT_FALSE(fs::exists(path_ + ".bak"));
        const Bytes first = FileBytes(path_);
        ASSERT_TRUE(Save(type, 2));
        EXPECT_EQ(FileBytes(path_ + ".bak"), first) << type;
        const Bytes second = FileBytes(path_);
        ASSERT_TRUE(Save(type, 4));
        EXPECT_EQ(FileBytes(path_ + ".bak"), second) << type;
        EXPECT_NE(FileBytes(path_), second);
        EXPECT_FALSE(fs::exists(path_ + "~"));
    }
    EXPECT_TRUE(TestShell().boxes.empty());
}

TEST_F(ChartSave, TheCommentFileHasItsBakToo) {
    ASSERT_TRUE(Save(2, 1));
    EXPECT_EQ(Names(), (std::set<std::string>{"charts", "charts.cht"}));
    const Bytes first = FileBytes(folder_.File("charts"));
    ASSERT_TRUE(Save(2, 2));
    EXPECT_EQ(Names(),
              (std::set<std::string>{"charts", "charts.bak", "charts.cht", "charts.cht.bak"}));
    EXPECT_EQ(FileBytes(folder_.File("charts.bak")), first);
    EXPECT_NE(FileBytes(folder_.File("charts")), first);
}

TEST_F(ChartSave, WithoutCommentsTheOldCommentFileStaysAsBakAlone) {
    ASSERT_TRUE(Save(2, 2));
    const Bytes comments = FileBytes(folder_.File("charts"));
    ChartList list = SampleList(2);
    for (StoredChart& stored : list.charts) stored.comment.clear();
    ASSERT_TRUE(SaveChartFile(path_, 2, list));
    EXPECT_FALSE(fs::exists(folder_.File("charts")));
    EXPECT_EQ(FileBytes(folder_.File("charts.bak")), comments);
    ASSERT_TRUE(LoadChartList(path_, list, kFalse));
    EXPECT_EQ(list.charts[0].comment, "");
}

TEST_F(ChartSave, TypesWithoutACommentFileLeaveTheFileOfThatNameAlone) {
    folder_.Write("charts", "another's");
    for (const std::int16_t type : {-1, 0, 3}) ASSERT_TRUE(Save(type, 2));
    EXPECT_EQ(FileBytes(folder_.File("charts")).size(), 9U);
}

TEST_F(ChartSave, AChartWithoutACommentPointsToNoBlock) {
    ASSERT_TRUE(Save(2, 3));
    const Bytes bytes = FileBytes(path_);
    EXPECT_EQ(GetI32(&bytes[1 * 292 + 158]), 2);
    EXPECT_EQ(GetI32(&bytes[2 * 292 + 158]), 4);
    EXPECT_EQ(GetI32(&bytes[3 * 292 + 158]), 0);
}

TEST_F(ChartSave, TheListKeepsItsNumbersAndLearnsPathTypeAndCleanState) {
    ChartList list = SampleList(3);
    list.changed = kTrue;
    ASSERT_TRUE(SaveChartFile(path_, 2, list));
    EXPECT_EQ(list.path, path_);
    EXPECT_EQ(list.type, 2);
    EXPECT_EQ(list.changed, kFalse);
    for (std::int32_t n = 1; n <= 3; ++n) {
        EXPECT_EQ(list.charts[static_cast<std::size_t>(n) - 1].chart.commentRef, n);
    }
}

TEST_F(ChartSave, TypeMinus1IsItsDescriptionOf80BytesAlone) {
    path_ = folder_.File("bare");
    ASSERT_TRUE(Save(chart_file::kBlocks, 3));
    const Bytes bytes = FileBytes(path_);
    ASSERT_EQ(bytes.size(), 80U);
    EXPECT_EQ(GetText(bytes.data(), 80), "Sample" + std::string(74, ' '));
}

TEST_F(ChartSave, AListWithoutChartsIsAFileWithoutCharts) {
    for (const auto& [type, size] : {std::pair{0, 0}, {1, 82}, {2, 82}, {3, 86}}) {
        ASSERT_TRUE(Save(static_cast<std::int16_t>(type), 0));
        EXPECT_EQ(FileBytes(path_).size(), static_cast<std::size_t>(size));
    }
}

TEST_F(ChartSave, WhatAnEarlierSaveLeftAsideIsReplacedAndNotWrittenThrough) {
    const std::string other = folder_.Write("precious", "precious");
    fs::create_symlink(other, path_ + "~");
    fs::create_symlink(other, folder_.File("charts~"));
    ASSERT_TRUE(Save(2, 2));
    EXPECT_EQ(FileBytes(other).size(), 8U);
    EXPECT_EQ(Names(), (std::set<std::string>{"charts", "charts.cht", "precious"}));
}

TEST_F(ChartSave, TheNewFilesHaveTheAccessRightsOfTheOld) {
    ASSERT_TRUE(Save(2, 2));
    const auto own = fs::perms::owner_read | fs::perms::owner_write;
    fs::permissions(path_, own);
    fs::permissions(folder_.File("charts"), own);
    ASSERT_TRUE(Save(2, 3));
    EXPECT_EQ(fs::status(path_).permissions(), own);
    EXPECT_EQ(fs::status(folder_.File("charts")).permissions(), own);
}

TEST_F(ChartSave, AnExistingFileIsFoundWhateverTheCaseAndKeepsItsName) {
    ASSERT_TRUE(Save(3, 1));
    const Bytes first = FileBytes(path_);
    path_ = folder_.File("CHARTS.CHT");
    ASSERT_TRUE(Save(3, 2));
    EXPECT_EQ(Names(), (std::set<std::string>{"charts.cht", "charts.cht.bak"}));
    EXPECT_EQ(FileBytes(folder_.File("charts.cht.bak")), first);
}

// The disk fills up within the chart file, at its end, within the comment file, and at its end.
TEST_F(ChartSave, OnADiskThatFillsUpAtAnyByteTheOldFilesStayWhole) {
    for (const std::int16_t type : {-1, 0, 1, 2, 3}) {
        path_ = folder_.File("charts" + std::to_string(type) + ".cht");
        const std::string comments = CommentPath(path_);
        ASSERT_TRUE(Save(type, 1));
        const Bytes oldCharts = FileBytes(path_);
        const Bytes oldComments = FileBytes(comments);
        const std::set<std::string> names = Names();

        // Comments that are longer than the charts, so that each file is the one that fails.
        ChartList list = SampleList(3);
        list.charts[0].comment = std::string(2000, 'c');
        list.changed = kTrue;
        const std::string probe = folder_.File("probe" + std::to_string(type) + ".cht");
        ASSERT_TRUE(SaveChartFile(probe, type, list));
        const std::size_t size =
            std::max(FileBytes(probe).size(), FileBytes(CommentPath(probe)).size());
        fs::remove(probe);
        fs::remove(CommentPath(probe));

        list.changed = kTrue;
        for (std::size_t room = 0; room < size; room += room + 13 < size ? 13 : 1) {
            TestShell().log.clear();
            bool saved = true;
            {
                const FullDisk disk(room);
                saved = SaveChartFile(path_, type, list);
            }
            ASSERT_FALSE(saved) << type << " " << room;
            ASSERT_EQ(TestShell().log, std::vector{Told("Error 61: Disk full")});
            ASSERT_EQ(FileBytes(path_), oldCharts) << room;
            ASSERT_EQ(FileBytes(comments), oldComments) << room;
            ASSERT_EQ(Names(), names) << room;
            ASSERT_NE(list.changed, 0);
        }
        const FullDisk disk(size);
        ASSERT_TRUE(SaveChartFile(path_, type, list));
    }
}

// A folder in the way of each name in turn: whatever was moved before is moved back.
TEST_F(ChartSave, ARenameThatFailsIsTakenBack) {
    for (const std::string obstacle : {"charts.cht.bak", "charts.bak"}) {
        path_ = folder_.File("charts.cht");
        ASSERT_TRUE(Save(2, 2));
        fs::remove(path_ + ".bak");
        fs::remove(folder_.File("charts.bak"));
        const Bytes charts = FileBytes(path_);
        const Bytes comments = FileBytes(folder_.File("charts"));
        fs::create_directory(folder_.File(obstacle));
        TestShell().log.clear();
        EXPECT_FALSE(Save(2, 4)) << obstacle;
        EXPECT_EQ(TestShell().log, std::vector{Told("Error 75: Path/File access error")});
        EXPECT_EQ(FileBytes(path_), charts);
        EXPECT_EQ(FileBytes(folder_.File("charts")), comments);
        EXPECT_EQ(Names(), (std::set<std::string>{"charts", "charts.cht", obstacle}));
        fs::remove(folder_.File(obstacle));
    }
}

// Every write, rename and so on of a save in turn, over files of every type that have backups.
TEST_F(ChartSave, WhicheverStepFailsTheFilesAndTheirBackupsAreAsTheyWere) {
    for (const std::int16_t old : {0, 1, 2, 3}) {
        for (const std::int16_t type : {-1, 0, 1, 2, 3}) {
            Restore(folder_, {});
            ASSERT_TRUE(Save(old, 1) && Save(old, 2));
            const auto before = Contents(folder_.Path());
            int step = 1;
            for (bool saved = false; !saved; ++step) {
                ASSERT_LT(step, 50);
                Restore(folder_, before);
                TestShell().log.clear();
                bool failed = false;
                {
                    const FailingSteps disk(step);
                    saved = Save(type, 4);
                    failed = disk.Reached();
                }
                // A step that isn't needed, as the second name of an old file, may fail.
                if (saved) {
                    saved = !failed;
                    continue;
                }
                ASSERT_EQ(TestShell().log, std::vector{Told("Error 61: Disk full")}) << step;
                ASSERT_EQ(Contents(folder_.Path()), before) << old << type << " " << step;
            }
            EXPECT_GE(step, 5);
        }
    }
}

// As if the power went at that step: whatever was there is there still, under some name, and the
// chart file's own name is at no moment without a whole file.
TEST_F(ChartSave, WhereverASaveIsBrokenOffTheOldFilesAndTheirBackupsAreThereStill) {
    for (const std::int16_t old : {0, 1, 2, 3}) {
        for (const std::int16_t type : {-1, 0, 1, 2, 3}) {
            Restore(folder_, {});
            ASSERT_TRUE(Save(old, 1) && Save(old, 2));
            const auto before = Contents(folder_.Path());
            ASSERT_TRUE(Save(type, 4));
            const Bytes charts = FileBytes(path_);
            for (int step = 1; step < 50; ++step) {
                Restore(folder_, before);
                bool ended = false;
                bool saved = false;
                {
                    const FailingSteps disk(step, true);
                    saved = Save(type, 4);
                    ended = disk.Reached();
                }
                if (!ended) break;
                const auto after = Contents(folder_.Path());
                for (const auto& former : before) {
                    if (saved && former.first.ends_with(".bak")) continue;  // all is in place
                    const bool kept =
                        std::any_of(after.begin(), after.end(),
                                    [&](const auto& file) { return file.second == former.second; });
                    ASSERT_TRUE(kept) << old << type << " " << step << " " << former.first;
                }
                ASSERT_EQ(after.count("charts.cht"), 1U) << old << type << " " << step;
                const Bytes& there = after.at("charts.cht");
                ASSERT_TRUE(there == charts || there == before.at("charts.cht")) << step;
            }
        }
    }
}

TEST_F(ChartSave, ALinkThatLeadsToNothingIsToldAndStays) {
    for (const char* name : {"charts.cht", "charts.cht.bak", "charts", "charts.bak"}) {
        Restore(folder_, {});
        const std::string link = folder_.File(name);
        ASSERT_TRUE(link == path_ || Save(2, 2));
        fs::remove(link);
        fs::create_symlink("nowhere", link);
        const auto before = Contents(folder_.Path());
        TestShell().log.clear();
        EXPECT_FALSE(Save(2, 4)) << name;
        EXPECT_EQ(TestShell().log, std::vector{Told("Error 75: Path/File access error")}) << name;
        EXPECT_EQ(Contents(folder_.Path()), before) << name;
        EXPECT_TRUE(fs::is_symlink(link)) << name;
        fs::remove(link);
        EXPECT_TRUE(Save(2, 4)) << name;
    }
}

TEST_F(ChartSave, ALinkIsMovedToTheBackupAndWhatItPointsToStaysAsItWas) {
    const std::string original = folder_.File("original.cht");
    path_ = original;
    ASSERT_TRUE(Save(2, 1));
    const Bytes charts = FileBytes(original);
    path_ = folder_.File("charts.cht");
    fs::create_symlink("original.cht", path_);
    for (const std::int16_t type : {3, 2}) {
        ASSERT_TRUE(Save(type, 2));
        EXPECT_FALSE(fs::is_symlink(path_));
        EXPECT_EQ(FileBytes(original), charts);
    }
    EXPECT_EQ(FileBytes(folder_.File("original")).size(), 96U);
}

// In such a folder a file can be moved by its owner alone: the old comments are another user's.
TEST_F(ChartSave, WhereTheCommentsCannotBeMovedChartsAndBackupsStay) {
    const auto save = [this] {
        path_ = folder_.File("charts.cht");
        if (!Save(2, 1) || !Save(2, 2)) std::_Exit(1);
        fs::permissions(folder_.File("charts"), fs::perms::all);
        for (const char* name : {"charts.cht.bak", "charts.bak"}) {
            if (::geteuid() == 0 && ::chown(folder_.File(name).c_str(), 65534, 65534) != 0) {
                std::_Exit(77);
            }
        }
        fs::permissions(folder_.Path(), fs::perms::all | fs::perms::sticky_bit);
        const auto before = Contents(folder_.Path());
        if (::geteuid() != 0) std::_Exit(0);  // all files would be one's own
        ActAsPlainUserOn(path_, fs::perms::all);
        const bool saved = Save(2, 4);
        const bool told = TestShell().log == std::vector{Told("Error 70: Permission denied")};
        std::_Exit(!saved && told && Contents(folder_.Path()) == before ? 0 : 2);
    };
    EXPECT_EXIT(save(), testing::ExitedWithCode(0), "");
}

TEST_F(ChartSave, AFolderThatMayNotBeWrittenIsToldAndNothingIsTouched) {
    const auto save = [this] {
        path_ = folder_.File("charts.cht");
        if (!Save(2, 1) || !Save(2, 2)) std::_Exit(1);
        const auto before = Contents(folder_.Path());
        for (const auto& [name, bytes] : before) {
            fs::permissions(folder_.File(name), fs::perms::all);
        }
        ActAsPlainUserOn(folder_.Path(), fs::perms::owner_read | fs::perms::owner_exec);
        const bool saved = Save(2, 4);
        const bool told = TestShell().log == std::vector{Told("Error 70: Permission denied")};
        std::_Exit(!saved && told && Contents(folder_.Path()) == before ? 0 : 2);
    };
    EXPECT_EXIT(save(), testing::ExitedWithCode(0), "");
}

TEST_F(ChartSave, AFolderOfTheCommentFilesNameIsNotMovedAndTheChartsStay) {
    ASSERT_TRUE(Save(3, 2));
    const Bytes charts = FileBytes(path_);
    fs::create_directory(folder_.File("charts"));
    EXPECT_FALSE(Save(2, 4));
    EXPECT_EQ(TestShell().log, std::vector{Told("Error 75: Path/File access error")});
    EXPECT_EQ(FileBytes(path_), charts);
    EXPECT_EQ(Names(), (std::set<std::string>{"charts", "charts.cht"}));
    EXPECT_TRUE(fs::is_directory(folder_.File("charts")));
}

TEST_F(ChartSave, AFileThatMayNotBeWrittenIsNotReplaced) {
    const auto save = [this] {
        path_ = folder_.File("charts.cht");
        if (!Save(3, 1)) std::_Exit(1);
        const Bytes before = FileBytes(path_);
        ActAsPlainUserOn(path_, fs::perms::owner_read);
        const bool saved = Save(3, 2);
        const bool told = TestShell().log == std::vector{Told("Error 70: Permission denied")};
        std::_Exit(!saved && told && FileBytes(path_) == before ? 0 : 2);
    };
    fs::permissions(folder_.Path(), fs::perms::all);
    EXPECT_EXIT(save(), testing::ExitedWithCode(0), "");
}

TEST_F(ChartSave, AnOldFileThatCannotBeReadStaysAsBakAllTheSame) {
    const auto save = [this] {
        path_ = folder_.File("charts.cht");
        if (!Save(3, 1)) std::_Exit(1);
        const auto size = fs::file_size(path_);
        ActAsPlainUserOn(path_, fs::perms::owner_write);
        const bool saved = Save(3, 2);
        std::_Exit(saved && fs::file_size(path_ + ".bak") == size ? 0 : 2);
    };
    fs::permissions(folder_.Path(), fs::perms::all);
    EXPECT_EXIT(save(), testing::ExitedWithCode(0), "");
}

TEST_F(ChartSave, AFolderOfTheCommentFilesNameIsInNobodysWayWithoutComments) {
    fs::create_directory(folder_.File("charts"));
    ChartList list = SampleList(1);
    list.charts[0].comment.clear();
    EXPECT_TRUE(SaveChartFile(path_, 2, list));
    EXPECT_EQ(Names(), (std::set<std::string>{"charts", "charts.cht"}));
}

TEST_F(ChartSave, AFolderOfTheFilesNameIsTold) {
    fs::create_directory(path_);
    EXPECT_FALSE(Save(3, 1));
    EXPECT_EQ(TestShell().log, std::vector{Told("Error 75: Path/File access error")});
    EXPECT_EQ(Names(), (std::set<std::string>{"charts.cht"}));
}

TEST_F(ChartSave, AFolderThatIsNotThereIsTold) {
    path_ = folder_.File("none/charts.cht");
    EXPECT_FALSE(Save(3, 1));
    EXPECT_EQ(TestShell().log, std::vector{Told("Error 76: Path not found")});
}

TEST_F(ChartSave, ANameFromWhichTheTypeCannotBeToldIsRefused) {
    path_ = folder_.File("bare");
    for (const std::int16_t type : {0, 1, 2, 3}) {
        TestShell().log.clear();
        EXPECT_FALSE(Save(type, 1));
        EXPECT_EQ(TestShell().log, std::vector{Told("Error 52: Bad file name or number")});
    }
    for (const std::int16_t type : {-2, 4}) {
        TestShell().log.clear();
        EXPECT_FALSE(Save(type, 1));
        EXPECT_EQ(TestShell().log, std::vector{Told("Error 54: Bad file mode")});
    }
    EXPECT_TRUE(Names().empty());
}

TEST_F(ChartSave, ACoordinateThatDoesNotFitIsToldAndTheOldFileStays) {
    for (const std::int16_t type : {0, 1}) {
        TestShell().log.clear();
        ASSERT_TRUE(Save(type, 1));
        const Bytes before = FileBytes(path_);
        ChartList list = SampleList(2);
        list.charts[1].chart.event.latitude = 1e30F;
        EXPECT_FALSE(SaveChartFile(path_, type, list));
        EXPECT_EQ(TestShell().log, std::vector{Told("Error 6: Overflow")});
        EXPECT_EQ(FileBytes(path_), before);
    }
    EXPECT_EQ(PendingRunTimeError(), 0);
}

TEST_F(ChartSave, ACommentThatNoChainHoldsIsToldAndTheOldFileStays) {
    ASSERT_TRUE(Save(2, 1));
    const Bytes before = FileBytes(path_);
    ChartList list = SampleList(1);
    list.charts[0].comment = std::string(kMostComment + 1, 'x');
    EXPECT_FALSE(SaveChartFile(path_, 2, list));
    EXPECT_EQ(TestShell().log, std::vector{Told("Error 63: File too large")});
    EXPECT_EQ(FileBytes(path_), before);
    EXPECT_TRUE(SaveChartFile(path_, 3, list));
}

TEST_F(ChartSave, CommentsOfAFileWithoutACommentFileAreNotDropped) {
    path_ = folder_.File("charts.ch6");
    EXPECT_FALSE(Save(2, 1));
    EXPECT_EQ(TestShell().log, std::vector{Told("Error 52: Bad file name or number")});
}

TEST_F(ChartSave, SavingOntoTheBackupOfAChartFileLeavesTheChartFileAndItsCommentsAlone) {
    ASSERT_TRUE(Save(2, 1));
    ASSERT_TRUE(Save(2, 2));
    const Bytes charts = FileBytes(path_);
    const Bytes comments = FileBytes(folder_.File("charts"));
    const Bytes backup = FileBytes(folder_.File("charts.bak"));
    const std::string original = path_;
    path_ += ".bak";
    ASSERT_TRUE(Save(2, 4));
    EXPECT_EQ(FileBytes(original), charts);
    EXPECT_EQ(FileBytes(folder_.File("charts")), comments);
    EXPECT_EQ(FileBytes(folder_.File("charts.bak.bak")), backup);
    ChartList list;
    ASSERT_TRUE(LoadChartList(path_, list, kFalse));
    EXPECT_EQ(list.charts.at(3).comment, "Comment of chart 4, two blocks.");
}

TEST_F(ChartSave, TheCommentsOfABackupAreReadAgain) {
    ASSERT_TRUE(Save(2, 2));
    ChartList none = SampleList(4);
    for (StoredChart& stored : none.charts) stored.comment = "Another comment";
    ASSERT_TRUE(SaveChartFile(path_, 2, none));
    ChartList list;
    ASSERT_TRUE(LoadChartList(path_ + ".bak", list, kFalse));
    ASSERT_EQ(list.charts.size(), 2U);
    EXPECT_EQ(list.charts[1].comment, "Comment of chart 2, two blocks.");
    EXPECT_EQ(ReadComment(2, path_ + ".bak", 2), "Comment of chart 1, two blocks.");
}

TEST_F(ChartSave, WhereATypeWithoutACommentFileReplacesOneWithItTheCommentsGoToTheBackupToo) {
    for (const bool older : {false, true}) {
        for (const std::int16_t old : {1, 2}) {
            for (const std::int16_t type : {-1, 0, 3}) {
                path_ = folder_.File("charts.cht");
                for (const std::string& name : Names()) fs::remove(folder_.File(name));
                ASSERT_TRUE(Save(old, 2));
                folder_.Write("charts~", "another's");
                if (older) folder_.Write("charts.bak", Bytes(320));
                ASSERT_TRUE(Save(type, 1));
                EXPECT_EQ(Names(), (std::set<std::string>{"charts.bak", "charts.cht",
                                                          "charts.cht.bak", "charts~"}));
                EXPECT_EQ(FileBytes(folder_.File("charts~")).size(), 9U);
                ChartList list;
                ASSERT_TRUE(LoadChartList(path_ + ".bak", list, kFalse));
                EXPECT_EQ(list.type, old);
                EXPECT_EQ(list.charts.at(1).comment, "Comment of chart 2, two blocks.");
            }
        }
    }
    EXPECT_TRUE(TestShell().boxes.empty());
}

TEST_F(ChartSave, WhereARenameFailsTheCommentsOfTheReplacedTypeStayToo) {
    ASSERT_TRUE(Save(2, 2));
    fs::create_directory(folder_.File("charts.bak"));
    const Bytes charts = FileBytes(path_);
    const Bytes comments = FileBytes(folder_.File("charts"));
    EXPECT_FALSE(Save(3, 2));
    EXPECT_EQ(TestShell().log, std::vector{Told("Error 75: Path/File access error")});
    EXPECT_EQ(FileBytes(path_), charts);
    EXPECT_EQ(FileBytes(folder_.File("charts")), comments);
    EXPECT_EQ(Names(), (std::set<std::string>{"charts", "charts.bak", "charts.cht"}));
}

TEST_F(ChartSave, CommentsOfAReplacedTypeThatCannotHaveABackupStayWhereTheyAre) {
    ASSERT_TRUE(Save(2, 2));
    const Bytes comments = FileBytes(folder_.File("charts"));
    fs::rename(path_, folder_.File("charts.bak"));
    path_ = folder_.File("charts.bak");
    EXPECT_TRUE(Save(3, 2));
    EXPECT_EQ(FileBytes(folder_.File("charts")), comments);
    // Nor is a chart file moved that has the name of the comments.
    fs::rename(folder_.File("charts.bak.bak"), folder_.File("one.cht.dat"));
    path_ = folder_.File("one.cht");
    ASSERT_TRUE(Save(0, 2));
    const Bytes charts = FileBytes(path_);
    path_ = folder_.File("one.cht.dat");
    EXPECT_TRUE(Save(3, 2));
    EXPECT_EQ(FileBytes(folder_.File("one.cht")), charts);
}

TEST_F(ChartSave, AFileWhoseCommentsHaveItForTheirBackupIsRefusedAndNothingIsTouched) {
    ASSERT_TRUE(Save(2, 2));
    for (const char* name : {"charts.bak", "CHARTS.BAK"}) {
        for (const std::int16_t type : {1, 2}) {
            path_ = folder_.File(name);
            TestShell().log.clear();
            folder_.Write("charts.bak~", "aside");
            const auto before = Contents(folder_.Path());
            EXPECT_FALSE(Save(type, 1));
            EXPECT_EQ(TestShell().log, std::vector{Told("Error 52: Bad file name or number")});
            EXPECT_EQ(Contents(folder_.Path()), before);
        }
    }
    path_ = folder_.File("charts.bak");
    EXPECT_TRUE(Save(3, 1)) << "it has no comment file";
}

TEST_F(ChartSave, ACommentFileThatIsAChartFileIsRefusedAndNothingIsTouched) {
    for (const std::int16_t type : {1, 2, 3}) {
        path_ = folder_.File("charts.dat");
        ASSERT_TRUE(Save(type, 2));
        path_ = folder_.File("charts.dat.tmp");
        fs::remove(folder_.File("charts"));
        Bytes bytes = FileBytes(folder_.File("charts.dat"));
        PutI16(bytes.data(), 2);  // a file that keeps comments
        folder_.Write("charts.dat.tmp", bytes);
        const auto before = Contents(folder_.Path());
        TestShell().log.clear();
        EXPECT_FALSE(Save(2, 1)) << type;
        EXPECT_EQ(TestShell().log, std::vector{Told("Error 52: Bad file name or number")});
        EXPECT_EQ(Contents(folder_.Path()), before);
        fs::remove(folder_.File("charts.dat"));
        fs::remove(path_);
    }
    // The name says it, whatever is there.
    for (const char* name : {"one.cht.dat", "one.CH6.dat", "one.kvchx.dat"}) {
        path_ = folder_.File(name);
        EXPECT_FALSE(Save(1, 1)) << name;
    }
}

// The head of a comment file with free blocks starts with the number of the first of them.
TEST_F(ChartSave, ACommentFileWhoseFreeListStartsAtABlock1To3IsNoChartFile) {
    ASSERT_TRUE(Save(2, 2));
    std::int32_t ref = 2;
    ASSERT_TRUE(WriteComment(2, path_, ref, ""));
    ASSERT_EQ(GetI32(FileBytes(folder_.File("charts")).data()), 2);
    EXPECT_TRUE(Save(2, 3));
}

TEST_F(ChartSave, ACoordinateThatIsNoNumberIsToldByTypes0And1AndTheOldFileStays) {
    constexpr float inf = std::numeric_limits<float>::infinity();
    for (const std::int16_t type : {0, 1}) {
        path_ = folder_.File("wide" + std::to_string(type) + ".cht");
        ASSERT_TRUE(Save(type, 1));
        const auto before = Contents(folder_.Path());
        for (const float bad : {std::numeric_limits<float>::quiet_NaN(), inf, -inf}) {
            for (const bool latitude : {true, false}) {
                ChartList list = SampleList(2);
                ChartEvent& event = list.charts[1].chart.event;
                (latitude ? event.latitude : event.longitude) = bad;
                TestShell().log.clear();
                EXPECT_FALSE(SaveChartFile(path_, type, list)) << type << " " << bad;
                EXPECT_EQ(TestShell().log, std::vector{Told("Error 6: Overflow")});
                EXPECT_EQ(Contents(folder_.Path()), before);
            }
        }
    }
    EXPECT_EQ(PendingRunTimeError(), 0);
}

TEST_F(ChartSave, AnErrorOfOthersIsNeitherTakenForItsOwnNorLost) {
    RaiseRunTimeError(error::kDivisionByZero);
    EXPECT_TRUE(Save(1, 2));
    EXPECT_TRUE(TestShell().boxes.empty());
    EXPECT_EQ(PendingRunTimeError(), error::kDivisionByZero);
}

}  // namespace
}  // namespace orvantis

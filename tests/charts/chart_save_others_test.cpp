// What others have in the folder of a save, or do there meanwhile: other programs, other users,
// files of any size, second names and links.
#include <gtest/gtest.h>
#include <map>
#include <sys/wait.h>
#include <unistd.h>

#include "chart_samples.h"
#include "charts/comments.h"
#include "support/failing_disk.h"
#include "support/reset_all.h"
#include "support/temp_folder.h"

namespace orvantis {
namespace {

namespace fs = std::filesystem;

class OthersBesideASave : public testing::Test {
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
    // Charts whose comments tell whose they are.
    bool SaveGeneration(const std::string& name, int charts) {
        ChartList list = SampleList(charts);
        for (StoredChart& stored : list.charts) {
            stored.chart.event.name = name + stored.chart.event.name;
            stored.comment = "Comment of " + stored.chart.event.name;
        }
        return SaveChartFile(path_, 2, list);
    }
    // Every chart of a file has its own comment.
    static void ExpectOwnComments(const std::string& path) {
        ChartList list;
        ASSERT_TRUE(LoadChartList(path, list, kFalse)) << path;
        for (const StoredChart& stored : list.charts) {
            EXPECT_EQ(stored.comment, "Comment of " + stored.chart.event.name) << path;
        }
    }

    // Names and bytes of all files in the folder.
    std::map<std::string, Bytes> Contents() const {
        std::map<std::string, Bytes> files;
        for (const auto& entry : fs::directory_iterator(folder_.Path())) {
            files[entry.path().filename().string()] = FileBytes(entry.path().string());
        }
        return files;
    }

    // The save is refused for that reason and nothing was touched.
    void ExpectRefused(const std::string& reason) {
        const auto before = Contents();
        EXPECT_FALSE(Save(2, 4));
        const std::string told = "MessageBox|Orvantis|Unable to save chart file: " + path_ +
                                 "\\r\\n\\r\\n" + reason + "|Ok|Error";
        EXPECT_EQ(TestShell().log, std::vector{told});
        EXPECT_EQ(Contents(), before);
    }

    TempFolder folder_;
    std::string path_ = folder_.File("charts.cht");
};

const std::string kNotOurs = "Error 75: Path/File access error";
const std::string kDenied = "Error 70: Permission denied";

TEST_F(OthersBesideASave, WhileAnotherSaveHasTheFolderNothingIsTouched) {
    ASSERT_TRUE(Save(2, 2));
    folder_.Write("charts.cht~", "what it has aside");
    {
        const FolderLock other(folder_.File("another.cht"));
        ExpectRefused(kDenied);
    }
    EXPECT_TRUE(Save(2, 4)) << "it is through";
}

TEST_F(OthersBesideASave, OfTwoProgramsThatSaveAtOnceEachSavesItsChartsWithTheirComments) {
    for (int round = 0; round < 15; ++round) {
        ASSERT_TRUE(SaveGeneration("old ", 3));
        std::map<pid_t, int> programs;
        for (const std::string name : {"a ", "longer b "}) {
            const pid_t program = ::fork();
            if (program == 0) {
                ::usleep(name == "a " ? 0 : static_cast<useconds_t>(round) * 200);
                // A disk that is busy may let the other one wait for longer than it does.
                int tries = 5;
                while (!SaveGeneration(name, 5) && tries > 0) --tries;
                std::_Exit(tries > 0 ? 0 : 1);
            }
            programs[program] = -1;
        }
        for (auto& [program, status] : programs) {
            ::waitpid(program, &status, 0);
            EXPECT_EQ(status, 0);
        }
        ExpectOwnComments(path_);
        ExpectOwnComments(path_ + ".bak");
        ASSERT_EQ(Contents().size(), 4U) << "and nothing is left aside";
        if (HasFailure()) return;
    }
}

// In such a folder a link can be deleted and replaced by its owner alone.
TEST_F(OthersBesideASave, AnotherUsersLinkOfTheNameAsideIsNotWrittenThrough) {
    const auto save = [this](const char* name) {
        const std::string precious = folder_.Write("precious", "precious");
        fs::create_symlink(precious, folder_.File(name));
        fs::permissions(folder_.Path(), fs::perms::all | fs::perms::sticky_bit);
        if (::geteuid() != 0) std::_Exit(0);  // the link would be one's own
        ActAsPlainUserOn(precious, fs::perms::owner_all);
        ExpectRefused(kDenied);
        std::_Exit(!HasFailure() && FileBytes(precious).size() == 8 ? 0 : 2);
    };
    EXPECT_EXIT(save("charts.cht~"), testing::ExitedWithCode(0), "");
    fs::remove(folder_.File("charts.cht~"));
    EXPECT_EXIT(save("charts~"), testing::ExitedWithCode(0), "");
}

// A file of whole charts without comments that is too large to be read; it takes no room.
void MakeHuge(const std::string& path, std::int16_t type) {
    ChartList none;
    ASSERT_TRUE(SaveChartFile(path, type, none));
    const std::int64_t length = ChartRecordLength(type);
    fs::resize_file(path, static_cast<std::uintmax_t>((kMostChartBytes / length + 1) * length));
}

TEST_F(OthersBesideASave, AChartFileThatIsTooLargeToBeReadMayShareTheComments) {
    ASSERT_TRUE(Save(2, 2));
    const std::string huge = folder_.File("charts.dat");
    for (const std::int16_t type : {1, 2}) {
        MakeHuge(huge, type);
        EXPECT_EQ(HighestCommentRef(huge), INT32_MAX);
        const std::string comments = folder_.File("charts");
        EXPECT_EQ(SharerOfComments(path_, comments), huge) << type;
        const Bytes before = FileBytes(comments);
        EXPECT_FALSE(Save(2, 4)) << type;
        EXPECT_EQ(FileBytes(comments), before) << type;
        // A piece of a chart, or another type, is none whose comments they may be.
        fs::resize_file(huge, fs::file_size(huge) + 1);
        EXPECT_EQ(SharerOfComments(path_, comments), "") << type;
        fs::remove(huge);
    }
    MakeHuge(huge, 0);
    EXPECT_TRUE(Save(2, 4));
}

TEST_F(OthersBesideASave, WhatCannotBeReadIsNotInTheWayOfAFirstCommentFile) {
    const auto save = [this] {
        const std::string other = folder_.Write("charts.log", "no charts");
        fs::permissions(folder_.Path(), fs::perms::all);
        ActAsPlainUserOn(other, fs::perms::none);
        std::_Exit(Save(2, 2) && !Save(2, 3) ? 0 : 1);
    };
    EXPECT_EXIT(save(), testing::ExitedWithCode(0), "");
    for (const char* name : {"charts", "charts.cht", "charts.log"}) {
        fs::remove(folder_.File(name));
    }
    MakeHuge(folder_.File("charts.dat"), 2);
    EXPECT_TRUE(Save(2, 2));
    EXPECT_FALSE(Save(2, 3)) << "beside comments it may have some there";
}

TEST_F(OthersBesideASave, TheCommentFileOfChartsThatAreTooManyToBeReadCountsAsAnothers) {
    ASSERT_TRUE(Save(2, 2));
    const Bytes comments = FileBytes(folder_.File("charts"));
    for (const std::int16_t type : {1, 2}) {
        fs::remove(path_);
        fs::rename(folder_.File("charts"), folder_.File("kept"));
        MakeHuge(path_, type);
        fs::rename(folder_.File("kept"), folder_.File("charts"));
        const auto size = fs::file_size(path_);
        EXPECT_FALSE(Save(2, 2)) << type;
        EXPECT_EQ(fs::file_size(path_), size) << type;
        EXPECT_TRUE(Save(3, 2)) << type;
        EXPECT_EQ(FileBytes(folder_.File("charts")), comments) << type;
        EXPECT_FALSE(fs::exists(folder_.File("charts.bak"))) << type;
        EXPECT_EQ(fs::file_size(path_ + ".bak"), size) << type;
        fs::remove(path_ + ".bak");
    }
}

TEST_F(OthersBesideASave, WhatASaveLeftAsideIsNotReadWithTheCommentsOfTheCharts) {
    ASSERT_TRUE(SaveGeneration("new ", 3));
    fs::rename(path_, path_ + "~");
    fs::rename(folder_.File("charts"), folder_.File("charts~"));
    ASSERT_TRUE(SaveGeneration("an old one ", 2));
    // Saving clears what is aside, so that it comes back here as it was left.
    const Bytes charts = FileBytes(path_);
    const Bytes comments = FileBytes(folder_.File("charts"));
    ASSERT_TRUE(SaveGeneration("new ", 3));
    folder_.Write("charts.cht~", charts);
    ChartList list;
    ASSERT_TRUE(LoadChartList(path_ + "~", list, kFalse));
    EXPECT_EQ(list.charts.at(0).comment, "") << "they weren't written";
    folder_.Write("charts~", comments);
    ExpectOwnComments(path_ + "~");
    ExpectOwnComments(path_);
}

TEST_F(OthersBesideASave, ASecondNameOfTheChartFileSharesItsComments) {
    ASSERT_TRUE(Save(2, 2));
    const std::string second = folder_.File("charts.dat");
    fs::create_hard_link(path_, second);
    EXPECT_EQ(SharerOfComments(path_, folder_.File("charts")), second);
    ExpectRefused(kNotOurs);
    fs::remove(second);
    EXPECT_TRUE(Save(2, 4));
}

TEST_F(OthersBesideASave, SoDoesASecondNameThatDiffersByCaseAlone) {
    ASSERT_TRUE(Save(2, 2));
    const std::string comments = folder_.File("charts");
    const std::string lower = path_;
    const std::string upper = folder_.File("CHARTS.CHT");
    fs::create_hard_link(lower, upper);
    EXPECT_EQ(SharerOfComments(lower, comments), upper);
    EXPECT_EQ(SharerOfComments(upper, comments), lower);
    // Nor is a file the link's that leads to it.
    fs::remove(upper);
    fs::create_symlink("charts.cht", upper);
    EXPECT_EQ(SharerOfComments(lower, comments), "");
    EXPECT_EQ(SharerOfComments(upper, comments), lower);
    // But a name that is there in another case alone is the file's.
    fs::remove(upper);
    EXPECT_EQ(SharerOfComments(upper, comments), "");
}

TEST_F(OthersBesideASave, ALinkToTheChartFileLeadsToTheNewChartsAndIsInNobodysWay) {
    ASSERT_TRUE(SaveGeneration("old ", 3));
    for (const std::string& target : {std::string("charts.cht"), path_}) {
        fs::remove(folder_.File("charts.dat"));
        fs::create_symlink(target, folder_.File("charts.dat"));
        EXPECT_EQ(SharerOfComments(path_, folder_.File("charts")), "") << target;
        ASSERT_TRUE(SaveGeneration("a new one ", 4)) << target;
        ExpectOwnComments(folder_.File("charts.dat"));
        ExpectOwnComments(path_ + ".bak");
    }
}

TEST_F(OthersBesideASave, AFileKeepsItsCommentsWhereALinkToItIsReplaced) {
    ASSERT_TRUE(SaveGeneration("old ", 3));
    const std::string target = path_;
    path_ = folder_.File("charts.dat");
    fs::create_symlink("charts.cht", path_);
    ExpectRefused(kNotOurs);
    EXPECT_TRUE(fs::is_symlink(path_));
    ExpectOwnComments(target);
}

TEST_F(OthersBesideASave, InAFolderThatCannotBeListedAnyFileMayShareTheComments) {
    const auto save = [this] {
        if (!Save(2, 2)) std::_Exit(1);
        for (const auto& [name, bytes] : Contents()) {
            fs::permissions(folder_.File(name), fs::perms::all);
        }
        const auto before = Contents();
        ActAsPlainUserOn(folder_.Path(), fs::perms::owner_write | fs::perms::owner_exec);
        const bool saved = Save(2, 4);
        const CommentObstacle found = FindCommentObstacle(path_, 2, SampleList(1));
        fs::permissions(folder_.Path(), fs::perms::owner_all);
        EXPECT_FALSE(saved);
        EXPECT_EQ(Contents(), before);
        EXPECT_EQ(found.sharer, folder_.Path()) << "native, with its separator";
        EXPECT_TRUE(Save(2, 4)) << "listed again";
        // Charts without comments beside no comment file have nothing that could be shared.
        fs::permissions(folder_.Path(), fs::perms::owner_write | fs::perms::owner_exec);
        path_ = folder_.File("others.cht");
        EXPECT_TRUE(SaveWithoutComments(2, 1) && SaveWithoutComments(2, 2) && Save(2, 3));
        fs::permissions(folder_.Path(), fs::perms::owner_all);
        std::_Exit(HasFailure() ? 2 : 0);
    };
    EXPECT_EXIT(save(), testing::ExitedWithCode(0), "");
}

}  // namespace
}  // namespace orvantis

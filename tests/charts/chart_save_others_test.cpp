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
                std::_Exit(SaveGeneration(name, 5) ? 0 : 1);
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

}  // namespace
}  // namespace orvantis

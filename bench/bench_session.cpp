#include "bench_session.h"

#include <system_error>
#include <unistd.h>

#include "map/map_document.h"
#include "raster/qt_gui.h"
#include "session/session_state.h"
#include "support/reset_all.h"

namespace orvantis {

namespace {

namespace fs = std::filesystem;

class Folder {
  public:
    Folder() : path_(fs::temp_directory_path() / ("orvantis-bench-" + std::to_string(getpid()))) {
        fs::create_directories(path_);
    }
    ~Folder() {
        std::error_code ignored;
        fs::remove_all(path_, ignored);
    }
    Folder(const Folder&) = delete;
    Folder& operator=(const Folder&) = delete;

    const fs::path& Path() const { return path_; }

  private:
    fs::path path_;
};

}  // namespace

const fs::path& BenchFolder() {
    static const Folder folder;
    return folder.Path();
}

BenchSession::BenchSession(int width, int height) : surface_(width, height) {
    ResetAll();
    // The database stays from case to case, what a session writes beside it doesn't.
    const fs::path config = BenchFolder() / "config";
    fs::remove_all(config);
    fs::create_directories(config);
    paths_ = SystemPaths();
    paths_.programDir = (BenchFolder() / "program").string();
    paths_.config = config.string();
    paths_.shippedData = ORVANTIS_DATA;
    StartSession(paths_, shell_);
    EnsureQtGui();
    LoadDatabase();
    session.picture = &surface_;
    NewMap(kFalse);
    RunTimeError reason;
    OpenChart(SampleChart(), 1, reason);
}

BenchSession::~BenchSession() {
    EndSession();
    ResetAll();
}

void BenchSession::CloseChart() {
    session.ChartNumber = 0;
}

std::string SampleChart() {
    return std::string(ORVANTIS_DATA) + "/sample.cht";
}

}  // namespace orvantis

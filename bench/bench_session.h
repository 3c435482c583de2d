// The state that a case of the benches starts from. Every case makes its own, so that its figure is
// the same by itself and after all the others.
#pragma once

#include <filesystem>
#include <string>

#include "raster/image_surface.h"
#include "session/driver.h"
#include "surface/null_shell.h"

namespace orvantis {

/// A folder of this run for files that cases make; it is gone after the run.
const std::filesystem::path& BenchFolder();

/// Puts all records of the program back, as tests do, and starts a session: the shipped data, the
/// settings of a first start, the database loaded, a new map of the world on a picture of the
/// size, the picture of the session, and the sample chart with its ten points on display.
class BenchSession {
  public:
    explicit BenchSession(int width = 1920, int height = 1080);
    ~BenchSession();
    BenchSession(const BenchSession&) = delete;
    BenchSession& operator=(const BenchSession&) = delete;

    ImageSurface& Surface() { return surface_; }
    const StartPaths& Paths() const { return paths_; }

    /// Takes the chart off the display.
    static void CloseChart();

  private:
    StartPaths paths_;
    NullShell shell_;
    ImageSurface surface_;
};

/// Path of the sample chart's file.
std::string SampleChart();

}  // namespace orvantis

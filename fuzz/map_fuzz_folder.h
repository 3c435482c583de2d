// The folder in which the fuzz targets of the map write their files, and a small sound database.
#pragma once

#include <cstdint>
#include <filesystem>
#include <fstream>
#include <string>
#include <string_view>
#include <unistd.h>

#include "map/point_database.h"
#include "session/session_state.h"

namespace orvantis {

/// A folder of this process alone, with a separator at its end. In memory where that is possible:
/// a file that is saved waits for the disk, which takes longer than all the rest of a run.
inline const std::string& FuzzFolder() {
    static const std::string folder = [] {
        std::error_code ignored;
        const std::filesystem::path inMemory = "/dev/shm";
        const bool isThere = std::filesystem::is_directory(inMemory, ignored);
        const std::filesystem::path path =
            (isThere ? inMemory : std::filesystem::temp_directory_path()) /
            ("orvantis-fuzz-" + std::to_string(::getpid()));
        std::filesystem::create_directories(path);
        return path.string() + "/";
    }();
    return folder;
}

inline void WriteFuzzFile(std::string_view name, const std::uint8_t* data, std::size_t size) {
    std::ofstream(FuzzFolder() + std::string(name), std::ios::binary)
        .write(reinterpret_cast<const char*>(data), static_cast<std::streamsize>(size));
}

inline void WriteSoundDatabase() {
    Bytes level1;
    for (const std::int16_t code : {1001, 2001, 4001, 5001, 6001, 7001}) {
        const auto at = static_cast<std::int16_t>(code);
        AppendLine(level1, code, "line",
                   {{5, at, at}, {1, 0, 0}, {3, 100, 10700}, {5, -200, -10700}, {5, at, at}});
    }
    WriteFuzzFile("level1.pnt", level1.data(), level1.size());
    GenerateLevels(FuzzFolder() + "level1.pnt", kFirstUseText);
}

}  // namespace orvantis

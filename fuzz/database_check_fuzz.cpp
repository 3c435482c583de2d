// The checker on any bytes: as the master file alone, and as all files of a database.
#include <cstddef>
#include <cstdint>

#include "map/database_check.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace orvantis;
    DatabaseFiles files;
    files.level1.assign(data, data + size);
    CheckDatabaseFiles(files);
    // The second half as a derived file of the first.
    files.level1.resize(size / 2);
    files.levels[3].emplace(data + size / 2, data + size);
    files.index = files.levels[3];
    CheckDatabaseFiles(files);
    return 0;
}

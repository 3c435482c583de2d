#include "support/temp_folder.h"

#include <fstream>
#include <iterator>
#include <system_error>
#include <unistd.h>

namespace orvantis {

namespace fs = std::filesystem;

TempFolder::TempFolder() {
    static int made = 0;
    path_ = fs::temp_directory_path() /
            ("orvantis-test-" + std::to_string(::getpid()) + "-" + std::to_string(++made));
    fs::create_directories(path_);
}

TempFolder::~TempFolder() {
    std::error_code ignored;
    fs::remove_all(path_, ignored);
}

std::string TempFolder::Path() const {
    return path_.string() + "/";
}

std::string TempFolder::File(std::string_view name) const {
    return Path() + std::string(name);
}

std::string TempFolder::Write(std::string_view name, const Bytes& bytes) const {
    std::string path = File(name);
    std::ofstream(path, std::ios::binary)
        .write(reinterpret_cast<const char*>(bytes.data()),
               static_cast<std::streamsize>(bytes.size()));
    return path;
}

std::string TempFolder::Write(std::string_view name, std::string_view text) const {
    return Write(name, Bytes(text.begin(), text.end()));
}

Bytes FileBytes(std::string_view path) {
    std::ifstream file(fs::path(path), std::ios::binary);
    return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
}

}  // namespace orvantis

// A folder of its own for one test, gone at the test's end.
#pragma once

#include <cstdint>
#include <filesystem>
#include <string>
#include <string_view>

#include "text/bytes.h"

namespace orvantis {

class TempFolder {
  public:
    TempFolder();
    ~TempFolder();
    TempFolder(const TempFolder&) = delete;
    TempFolder& operator=(const TempFolder&) = delete;

    /// The folder with a separator at its end.
    std::string Path() const;
    /// Path of a file in it.
    std::string File(std::string_view name) const;
    /// Writes a file in it and returns its path.
    std::string Write(std::string_view name, const Bytes& bytes) const;
    std::string Write(std::string_view name, std::string_view text) const;

  private:
    std::filesystem::path path_;
};

/// The bytes of a file; empty if it isn't there.
Bytes FileBytes(std::string_view path);

}  // namespace orvantis

// Files that are replaced only by whole new ones.
#pragma once

#include <functional>
#include <string_view>

class QIODevice;

namespace orvantis {

/// Writes a file aside with `write`, which tells whether it could, and puts it in the old one's
/// place. False if that couldn't be done; an older file then stays, and nothing is left beside it.
/// What isn't a regular file, a device or a pipe, is never replaced.
bool WriteWholeFile(std::string_view nativePath, const std::function<bool(QIODevice&)>& write);

}  // namespace orvantis

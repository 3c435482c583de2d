// The rules for file names that all dialogs share.
#pragma once

#include <string>
#include <string_view>

namespace orvantis {

/// Asks about an existing file of this name, then tells of a name that is none. True, with the
/// file's path, if it may be written.
bool AcceptSaveName(std::string_view folder, std::string_view name, std::string_view extension,
                    std::string& path);

/// Tells that a file name is not valid.
void TellBadFileName();

}  // namespace orvantis

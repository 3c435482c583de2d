#include "session/save_name.h"

#include <algorithm>

#include "session/files.h"
#include "session/session_state.h"
#include "text/code_page.h"
#include "text/strings.h"

namespace orvantis {

namespace {

constexpr std::size_t kLongestName = 8;

// A point would begin an extension, and the others lead out of the folder or stand for other files.
bool IsFileName(std::string_view name) {
    if (name.empty() || name.size() > kLongestName) return false;
    return std::all_of(name.begin(), name.end(), [](char c) {
        return static_cast<unsigned char>(c) >= ' ' &&
               std::string_view(".\\/:*?\"<>|").find(c) == std::string_view::npos;
    });
}

bool MayOverwrite() {
    return session.shell->MessageBox(
               "A file with this name already exists. Do you wish to overwrite it?", "File Exists",
               BoxButtons::YesNo, BoxIcon::Question) == BoxAnswer::Yes;
}

}  // namespace

void TellBadFileName() {
    session.shell->MessageBox(
        "File name is not valid. Please enter a name with up to 8 characters with no extension.",
        "File Error", BoxButtons::Ok, BoxIcon::Exclamation);
}

bool AcceptSaveName(std::string_view folder, std::string_view name, std::string_view extension,
                    std::string& path) {
    const std::string trimmed(Trim(name));
    path = AddBackslash(folder) + ToUtf8(trimmed) + "." + std::string(extension);
    if (!trimmed.empty() && FileExists(path) != kFalse && !MayOverwrite()) return false;
    if (IsFileName(trimmed)) return true;
    TellBadFileName();
    return false;
}

}  // namespace orvantis

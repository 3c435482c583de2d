#include "session/recent_maps.h"

#include <algorithm>

#include "session/files.h"
#include "session/session_state.h"

namespace orvantis {

void (*showRecentMaps)(const RecentMenu& menu) = nullptr;

namespace {

// Letters a to z alone: a path is in the platform's encoding, of which no other byte is a letter by
// itself.
std::string LowerPath(std::string_view path) {
    std::string lower(path);
    for (char& c : lower) {
        if (c >= 'A' && c <= 'Z') c = static_cast<char>(c - 'A' + 'a');
    }
    return lower;
}

void PutFirst(const std::string& path) {
    auto& maps = session.RecentMaps;
    const auto used = maps.begin() + session.RecentCount;
    auto position = std::find_if(
        maps.begin(), used, [&](const std::string& entry) { return LowerPath(entry) == path; });
    if (position == used) {
        if (session.RecentCount < static_cast<std::int16_t>(maps.size())) ++session.RecentCount;
        position = maps.begin() + session.RecentCount - 1;
    }
    std::move_backward(maps.begin(), position, position + 1);
    maps.front() = path;
}

}  // namespace

void AddRecentMap(std::string_view path) {
    if (!path.empty()) PutFirst(LowerPath(path));
    if (showRecentMaps != nullptr) showRecentMaps(RecentMapMenu());
}

RecentMenu RecentMapMenu() {
    RecentMenu menu;
    menu.separator = session.RecentCount > 0;
    for (std::size_t i = 0; i < static_cast<std::size_t>(session.RecentCount); ++i) {
        menu.captions[i] = "&" + std::to_string(i + 1) + " " + ShownPath(session.RecentMaps[i]);
    }
    return menu;
}

}  // namespace orvantis

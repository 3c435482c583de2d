#include "session/recent_maps.h"

#include <algorithm>

#include "session/files.h"
#include "session/session_state.h"
#include "text/strings.h"

namespace orvantis {

void (*showRecentMaps)(const RecentMenu& menu) = nullptr;

namespace {

void PutFirst(const std::string& path) {
    auto& maps = session.RecentMaps;
    const auto used = maps.begin() + session.RecentCount;
    auto position = std::find_if(
        maps.begin(), used, [&](const std::string& entry) { return LowerAscii(entry) == path; });
    if (position == used) {
        if (session.RecentCount < static_cast<std::int16_t>(maps.size())) ++session.RecentCount;
        position = maps.begin() + session.RecentCount - 1;
    }
    std::move_backward(maps.begin(), position, position + 1);
    maps.front() = path;
}

}  // namespace

void AddRecentMap(std::string_view path) {
    if (!path.empty()) PutFirst(LowerAscii(path));
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

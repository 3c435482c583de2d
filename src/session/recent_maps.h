// The list of recent map documents at the end of the menu "&Map".
#pragma once

#include <array>
#include <string>
#include <string_view>

namespace orvantis {

/// Puts a path first in the list, in lower case, and drops the last of a full list; a path that is
/// there already, in whatever case, moves up. An empty path changes nothing. Then the list is
/// shown.
void AddRecentMap(std::string_view path);

/// How the list is shown.
struct RecentMenu {
    bool separator = false;               ///< the line above it is visible
    std::array<std::string, 4> captions;  ///< "&1 path" and so on; "" hidden
};

RecentMenu RecentMapMenu();

/// Connection point, may be empty: shows the list.
extern void (*showRecentMaps)(const RecentMenu& menu);

}  // namespace orvantis

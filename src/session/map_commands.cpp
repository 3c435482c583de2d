// The menu "&Map".
#include <array>
#include <optional>

#include "map/fills.h"
#include "map/map_document.h"
#include "map/map_menus.h"
#include "map/view_ring.h"
#include "session/command_rows.h"
#include "session/display_dialogs.h"
#include "session/map_dialogs.h"
#include "session/mouse_modes.h"
#include "session/recent_maps.h"
#include "session/session_state.h"

namespace orvantis {

namespace {

constexpr std::string_view kMenu = "&Map";
constexpr std::string_view kPrecisionMenu = "&Precision";
constexpr std::int16_t kCoarsest = 5;

// A new map plots itself, whether it is the user's own default map or a plain one.
CommandOutcome OpenNewMap(std::int16_t /*number*/) {
    NewMap(kTrue);
    return CommandOutcome::Cancelled;
}

// The opening of a map plots it, and puts it on the recent list.
CommandOutcome SelectMap(std::int16_t /*number*/) {
    const std::optional<std::string> path =
        session.shell->ChooseFile("Select Map to Open", "*.ovm", false);
    if (path) OpenMap(*path, kTrue);
    return CommandOutcome::Cancelled;
}

CommandOutcome OpenRecentMap(std::int16_t number) {
    if (number > session.RecentCount) return CommandOutcome::Cancelled;
    const std::string path = session.RecentMaps[static_cast<std::size_t>(number - 1)];
    OpenMap(path, kTrue);
    return CommandOutcome::Cancelled;
}

// In a caption "&" marks the access key, so that of a path stands twice.
std::string RecentCaption(std::int16_t number) {
    std::string caption = RecentMapMenu().captions[static_cast<std::size_t>(number - 1)];
    for (std::size_t i = caption.find('&', 1); i != std::string::npos; i = caption.find('&', i + 2))
        caption.insert(i, 1, '&');
    return caption;
}

// Which plot is due, if any, the ring of views knows.
CommandOutcome GoToPreviousView(std::int16_t /*number*/) {
    PreviousView();
    return CommandOutcome::Cancelled;
}

CommandOutcome SetPrecisionEntry(std::int16_t number) {
    SetPrecision(static_cast<std::int16_t>(kCoarsest - number));
    return CommandOutcome::Done;
}

bool IsPrecisionEntry(std::int16_t number) {
    return mapMenus.precisionEntry == number;
}

CommandOutcome UseSeaColour(std::int16_t /*number*/) {
    mouseState.seaFill = kTrue;
    return CommandOutcome::Done;
}

CommandOutcome ChooseSpecialColour(std::int16_t /*number*/) {
    const std::optional<Colour> colour =
        AskColour("Select Special Fill Color", mouseState.specialColour);
    if (!colour) return CommandOutcome::Cancelled;
    mouseState.specialColour = *colour;
    mouseState.seaFill = kFalse;
    return CommandOutcome::Done;
}

template <void (*remove)()>
CommandOutcome Remove(std::int16_t /*number*/) {
    remove();
    RefreshMapMenus(mapState.current);
    return CommandOutcome::Done;
}

// The rows are the table's own.
// clang-format off
const std::array kCommands = {
    Command{.menu = kMenu, .caption = "&New Map", .end = CommandEnd::Full, .run = OpenNewMap},
    Command{.menu = kMenu, .caption = "S&elect Map...", .shortcut = "F2", .end = CommandEnd::Full,
            .run = SelectMap},
    Command{.menu = kMenu, .caption = "&Save Map", .hidden = true},
    Command{.menu = kMenu, .caption = "Save Map &As...", .shortcut = "F3",
            .run = [](std::int16_t) { showSaveMapForm(); return CommandOutcome::Done; },
            .isBuilt = [] { return showSaveMapForm != nullptr; }},
    Command{.menu = kMenu, .caption = "&ReDraw", .shortcut = "F4", .end = CommandEnd::Full},
    Command{.menu = kMenu, .caption = "Previous &View", .shortcut = "F5", .end = CommandEnd::Full,
            .run = GoToPreviousView, .isAllowed = [](std::int16_t) { return mapMenus.previousView; }},
    Command{.menu = kMenu, .caption = "&Map Options...", .shortcut = "F6",
            .run = [](std::int16_t) { showMapOptionsForm(); return CommandOutcome::Done; },
            .isBuilt = [] { return showMapOptionsForm != nullptr; }},
    Command{.menu = kMenu, .submenu = kPrecisionMenu, .caption = "&Very Coarse", .number = 0,
            .hidden = true, .run = SetPrecisionEntry, .isChecked = IsPrecisionEntry},
    Command{.menu = kMenu, .submenu = kPrecisionMenu, .caption = "&Coarse", .number = 1,
            .hidden = true, .run = SetPrecisionEntry, .isChecked = IsPrecisionEntry},
    Command{.menu = kMenu, .submenu = kPrecisionMenu, .caption = "&Medium", .number = 2,
            .hidden = true, .run = SetPrecisionEntry, .isChecked = IsPrecisionEntry},
    Command{.menu = kMenu, .submenu = kPrecisionMenu, .caption = "&Fine", .number = 3,
            .hidden = true, .run = SetPrecisionEntry, .isChecked = IsPrecisionEntry},
    Command{.menu = kMenu, .submenu = kPrecisionMenu, .caption = "&Extra Fine", .number = 4,
            .hidden = true, .run = SetPrecisionEntry, .isChecked = IsPrecisionEntry},
    Command{.menu = kMenu, .caption = "Edit &Cities...", .shortcut = "F7",
            .run = [](std::int16_t) { editCities(); return CommandOutcome::Done; },
            .isBuilt = [] { return editCities != nullptr; }},
    Command{.menu = kMenu, .caption = "Edit C&ountries...", .shortcut = "F8",
            .run = [](std::int16_t) { editCountries(); return CommandOutcome::Done; },
            .isBuilt = [] { return editCountries != nullptr; }},
    Command{.menu = kMenu, .caption = "S&ea Fill Color", .run = UseSeaColour,
            .isChecked = [](std::int16_t) { return mouseState.seaFill != 0; }},
    Command{.menu = kMenu, .caption = "&Special Fill Color...", .shortcut = "F9",
            .run = ChooseSpecialColour},
    Command{.menu = kMenu, .caption = "Remove &All Fills", .end = CommandEnd::Full,
            .run = Remove<RemoveAllFills>,
            .isAllowed = [](std::int16_t) { return mapMenus.removeAllFills; }},
    Command{.menu = kMenu, .caption = "Remove &Last Fill", .end = CommandEnd::Full,
            .run = Remove<RemoveLastFill>,
            .isAllowed = [](std::int16_t) { return mapMenus.removeLastFill; }},
    Command{.menu = kMenu, .caption = "-",
            .captionNow = [](std::int16_t) { return std::string(RecentMapMenu().separator ? "-" : ""); }},
    Command{.menu = kMenu, .caption = "&1", .end = CommandEnd::Full, .number = 1,
            .run = OpenRecentMap, .captionNow = RecentCaption},
    Command{.menu = kMenu, .caption = "&2", .end = CommandEnd::Full, .number = 2,
            .run = OpenRecentMap, .captionNow = RecentCaption},
    Command{.menu = kMenu, .caption = "&3", .end = CommandEnd::Full, .number = 3,
            .run = OpenRecentMap, .captionNow = RecentCaption},
    Command{.menu = kMenu, .caption = "&4", .end = CommandEnd::Full, .number = 4,
            .run = OpenRecentMap, .captionNow = RecentCaption},
};
// clang-format on

}  // namespace

std::span<const Command> MapCommands() {
    return kCommands;
}

}  // namespace orvantis

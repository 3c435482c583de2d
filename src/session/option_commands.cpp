// The menus "&Options" and "&Help".
#include <optional>
#include <string>
#include <vector>

#include "charts/CALCCHRT.h"
#include "map/point_database.h"
#include "session/command_rows.h"
#include "session/display_dialogs.h"
#include "session/mouse_modes.h"
#include "session/save_settings.h"
#include "session/session_state.h"
#include "session/settings.h"
#include "session/tables.h"

namespace orvantis {

namespace {

constexpr std::string_view kMenu = "&Options";
constexpr std::string_view kHelpMenu = "&Help";
constexpr std::size_t kFontNameWidth = 30;

// ---- Mouse, font, marks on the map ----

CommandOutcome ChooseMouseMode(std::int16_t number) {
    SetMouseMode(number);
    return CommandOutcome::Done;
}

CommandOutcome ChooseTextFont(std::int16_t /*number*/) {
    const Font now{settings.textFontName, settings.textFontSize, settings.textFontBold != 0,
                   settings.textFontItalic != 0};
    const std::optional<Font> font = session.shell->ChooseFont(now);
    if (!font) return CommandOutcome::Cancelled;
    settings.textFontName = font->name.substr(0, kFontNameWidth);
    settings.textFontSize = font->size;
    settings.textFontBold = font->bold ? kTrue : kFalse;
    settings.textFontItalic = font->italic ? kTrue : kFalse;
    return CommandOutcome::Done;
}

bool CanRelocate() {
    return relocateChart != nullptr;
}

template <Flag Options::*flag>
CommandOutcome Toggle(std::int16_t /*number*/) {
    options.*flag = options.*flag != 0 ? kFalse : kTrue;
    return CommandOutcome::Done;
}

std::string OnOff(std::string_view words, Flag on) {
    return std::string(words) + (on != 0 ? " On" : " Off");
}

// ---- Settings files ----

CommandOutcome EditSettings(std::int16_t /*number*/) {
    PrefsForm form = OpenPrefs();
    showPrefsForm(form);
    return CommandOutcome::Done;
}

// The loading of settings plots.
CommandOutcome RestoreSettings(std::int16_t /*number*/) {
    const std::optional<std::string> path =
        session.shell->ChooseFile("Select Settings File to Restore", "*.ovs", false);
    if (path) LoadSettings(*path, kTrue);
    return CommandOutcome::Cancelled;
}

// ---- Calculation ----

// The chart on display is calculated anew. One that isn't of a moment, or came without one, has
// nothing to be calculated from but its angles: it gets its houses.
CommandOutcome SetHouseSystem(std::int16_t number) {
    options.houseSystem = number;
    if (!HasChart(0)) return CommandOutcome::Done;
    CalcChart& chart = calcChart[1];
    chart.HouseSystem = number;
    if (HasMoment(chart) && RecalculateChart(1) == 0) return CommandOutcome::Done;
    CalcHouses(1, chartNow.RAMCNow, chartNow.ObliquityNow, chartNow.PlaceLat,
               chartNow.ZodiacOffsetNow, number);
    return CommandOutcome::Done;
}

CommandOutcome SetAyanamsa(std::int16_t number) {
    options.ayanamsa = number;
    return CommandOutcome::Done;
}

template <Flag Options::*flag>
CommandOutcome SetFlag(std::int16_t number) {
    options.*flag = number;
    return CommandOutcome::Done;
}

template <Flag Options::*flag>
bool IsFlag(std::int16_t number) {
    return (options.*flag != 0) == (number != 0);
}

CommandOutcome PickAtlas(std::int16_t number) {
    ChooseAtlas(number != 0);
    return CommandOutcome::Done;
}

// ---- Help ----

CommandOutcome About(std::int16_t /*number*/) {
    session.shell->MessageBox("Orvantis " + session.VersionText, "About Orvantis", BoxButtons::Ok,
                              BoxIcon::Information);
    return CommandOutcome::Done;
}

// The rows are the table's own.
// clang-format off
constexpr Command kBeforeFamilies[] = {
    {.menu = kMenu, .caption = "&Text Font...", .end = CommandEnd::Full, .run = ChooseTextFont},
    {.menu = kMenu, .caption = "&Extra Line Annotation On", .end = CommandEnd::Full,
     .run = Toggle<&Options::extraAnnotation>, .isChecked = [](std::int16_t) { return options.extraAnnotation != 0; },
     .captionNow = [](std::int16_t) { return OnOff("&Extra Line Annotation", options.extraAnnotation); }},
    {.menu = kMenu, .caption = "&Edit Settings...", .shortcut = "Ctrl+F5", .run = EditSettings,
     .isBuilt = [] { return showPrefsForm != nullptr; }},
    {.menu = kMenu, .caption = "&Save Settings...", .shortcut = "Ctrl+F6",
     .run = [](std::int16_t) { showSaveSettingsForm(); return CommandOutcome::Done; },
     .isBuilt = [] { return showSaveSettingsForm != nullptr; }},
    {.menu = kMenu, .caption = "&Restore Settings...", .shortcut = "Ctrl+F7",
     .end = CommandEnd::Full, .run = RestoreSettings},
    {.menu = kMenu, .caption = "&Dump && Edit Map Lines...",
     .run = [](std::int16_t) { openDumpForm(); return CommandOutcome::Done; },
     .isBuilt = [] { return openDumpForm != nullptr; }},
    {.menu = kMenu, .caption = "Line &Numbers Off", .end = CommandEnd::Full,
     .run = Toggle<&Options::lineNumbers>,
     .captionNow = [](std::int16_t) { return OnOff("Line &Numbers", options.lineNumbers); }},
    {.menu = kMenu, .caption = "&Fill Points Off", .end = CommandEnd::Full,
     .run = Toggle<&Options::fillPoints>,
     .captionNow = [](std::int16_t) { return OnOff("&Fill Points", options.fillPoints); }},
};

constexpr Command kBehindFamilies[] = {
    {.menu = kMenu, .submenu = "Lunar &Node Type", .caption = "&True", .number = kTrue,
     .run = SetFlag<&Options::trueNode>, .isChecked = IsFlag<&Options::trueNode>},
    {.menu = kMenu, .submenu = "Lunar &Node Type", .caption = "&Mean", .number = kFalse,
     .run = SetFlag<&Options::trueNode>, .isChecked = IsFlag<&Options::trueNode>},
    {.menu = kMenu, .submenu = "&Vulcan Calculation", .caption = "&L.H.Weston", .number = kTrue,
     .run = SetFlag<&Options::vulcWeston>, .isChecked = IsFlag<&Options::vulcWeston>},
    {.menu = kMenu, .submenu = "&Vulcan Calculation", .caption = "&D.Baker", .number = kFalse,
     .run = SetFlag<&Options::vulcWeston>, .isChecked = IsFlag<&Options::vulcWeston>},
    {.menu = kMenu, .submenu = "&Atlas", .caption = "&Orvantis", .number = kFalse,
     .run = PickAtlas, .isChecked = IsFlag<&Options::acsAtlas>},
    {.menu = kMenu, .submenu = "&Atlas", .caption = "&ACS Atlas", .number = kTrue,
     .run = PickAtlas, .isBuilt = [] { return useAcsAtlas != nullptr; },
     .isChecked = IsFlag<&Options::acsAtlas>},
    {.menu = kHelpMenu, .caption = "&Contents",
     .run = [](std::int16_t) { openHelp(); return CommandOutcome::Done; },
     .isBuilt = [] { return openHelp != nullptr; }},
    {.menu = kHelpMenu, .caption = "&Search for Help on...", .hidden = true},
    {.menu = kHelpMenu, .caption = "&How to use Help", .hidden = true},
    {.menu = kHelpMenu, .caption = "&Repair Map Database",
     .run = [](std::int16_t) { RepairDatabase(); return CommandOutcome::Done; }},
    {.menu = kHelpMenu, .caption = "&About Orvantis", .run = About},
};
// clang-format on

constexpr std::array<std::string_view, 8> kAyanamsaCaptions = {
    "&Tropical (Normal)", "&Fagan-Allen",  "&Lahiri",     "&DeLuce", "&Raman",
    "&Usha-Shashi",       "&Krishnamurti", "Dj&whal Khul"};

std::vector<Command> BuildRows() {
    std::vector<Command> rows;
    for (std::int16_t mode = 0; mode < mouse_mode::kModes; ++mode) {
        rows.push_back({.menu = kMenu,
                        .submenu = "&Mouse Mode",
                        .caption = MouseModeCaption(mode),
                        .number = mode,
                        .run = ChooseMouseMode,
                        .isBuilt = mode == mouse_mode::kRelocate ? CanRelocate : nullptr,
                        .isChecked = [](std::int16_t n) { return mouseState.mode == n; }});
    }
    rows.insert(rows.end(), std::begin(kBeforeFamilies), std::end(kBeforeFamilies));
    for (std::int16_t system = 1; system <= 9; ++system) {
        rows.push_back({.menu = kMenu,
                        .submenu = "&House System",
                        .caption = kHouseSystemNames[static_cast<std::size_t>(system)],
                        .number = system,
                        .run = SetHouseSystem,
                        .isChecked = [](std::int16_t n) { return options.houseSystem == n; }});
    }
    for (std::int16_t zodiac = 1; zodiac <= 8; ++zodiac) {
        rows.push_back({.menu = kMenu,
                        .submenu = "&Ayanamsa",
                        .caption = kAyanamsaCaptions[static_cast<std::size_t>(zodiac - 1)],
                        .number = zodiac,
                        .run = SetAyanamsa,
                        .isChecked = [](std::int16_t n) { return options.ayanamsa == n; }});
    }
    rows.insert(rows.end(), std::begin(kBehindFamilies), std::end(kBehindFamilies));
    return rows;
}

}  // namespace

std::span<const Command> OptionCommands() {
    static const std::vector<Command> rows = BuildRows();
    return rows;
}

}  // namespace orvantis

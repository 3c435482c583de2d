#include "session/commands.h"

#include <algorithm>
#include <array>

#include "charts/CALCCHRT.h"
#include "map/map_menus.h"
#include "map/plot.h"
#include "session/command_rows.h"
#include "session/display_dialogs.h"
#include "session/driver.h"
#include "session/ini_settings.h"
#include "session/session_state.h"
#include "session/settings.h"
#include "text/strings.h"

namespace orvantis {

void (*closeMainWindow)() = nullptr;
void (*plotAnew)() = nullptr;
void (*plotLinesAnew)() = nullptr;
void (*enterNewChart)() = nullptr;
void (*openSubsidiaryChart)() = nullptr;
void (*viewChart)(std::string_view title) = nullptr;
bool (*relocateToPlace)() = nullptr;
void (*openPrintDialog)(std::string_view title) = nullptr;
void (*editCities)() = nullptr;
void (*editCountries)() = nullptr;
bool (*loadStarFile)(std::string_view path) = nullptr;
void (*selectEclipse)() = nullptr;
void (*openReport)(std::int16_t report) = nullptr;
void (*openDumpForm)() = nullptr;
void (*openHelp)() = nullptr;
void (*useAcsAtlas)() = nullptr;

namespace {

constexpr std::string_view kClockChart = "Astro~Clock";

int runningCommands = 0;  // a dialog may let another one through

constexpr std::array<CommandButton, 6> kButtons = {{
    {"btnChart", "Chart", "&Chart", "&Select Chart..."},
    {"btnEclipse", "Eclipse", "&Eclipse", "&Select Eclipse..."},
    {"btnLines", "Lines", "&Chart", "Displayed &Lines..."},
    {"btnMap", "Map", "&Map", "S&elect Map..."},
    {"btnPrev", "Previous", "&Map", "Previous &View"},
    {"btnReDraw", "ReDraw", "&Map", "&ReDraw"},
}};

}  // namespace

std::span<const Command> Commands() {
    static const std::vector<Command> all = [] {
        std::vector<Command> rows;
        for (const auto group :
             {ChartCommands, MapCommands, StarCommands, LineCommands, OptionCommands}) {
            const auto part = group();
            rows.insert(rows.end(), part.begin(), part.end());
        }
        return rows;
    }();
    return all;
}

const Command* FindCommand(std::string_view menu, std::string_view caption, std::int16_t number) {
    for (const Command& command : Commands()) {
        const bool meant = command.menu == menu && command.caption == caption;
        if (meant && (number == 0 || command.number == number)) return &command;
    }
    return nullptr;
}

CommandLook LookOf(const Command& command) {
    CommandLook look;
    look.caption = command.caption;
    if (command.captionNow != nullptr) look.caption = command.captionNow(command.number);
    look.visible = !command.hidden && !look.caption.empty();
    look.enabled = (command.isBuilt == nullptr || command.isBuilt()) &&
                   (command.isAllowed == nullptr || command.isAllowed(command.number));
    look.checked = command.isChecked != nullptr && command.isChecked(command.number);
    return look;
}

void OpenMenu(std::string_view menu) {
    if (menu == "&Map") OpenMapMenu();
}

void RunCommand(const Command& command) {
    if (plotState.inProgress) return;
    if (command.isBuilt != nullptr && !command.isBuilt()) return;
    BeginCommand();
    CommandOutcome outcome = CommandOutcome::Done;
    if (command.run != nullptr) outcome = command.run(command.number);
    if (outcome == CommandOutcome::Done) {
        if (command.end == CommandEnd::Full && plotAnew != nullptr) plotAnew();
        if (command.end == CommandEnd::Lines && plotLinesAnew != nullptr) plotLinesAnew();
    }
    EndCommand();
}

bool CommandRuns() {
    return runningCommands > 0;
}

void BeginCommand() {
    ++runningCommands;
}

void EndCommand() {
    --runningCommands;
    if (refreshMenuMarks != nullptr) refreshMenuMarks();
}

std::span<const CommandButton> CommandButtons() {
    return kButtons;
}

void StopForeignClock() {
    if (session.AstroClockOn == 0 || switchAstroClock == nullptr) return;
    if (session.ChartNumber < 1 || calcChart[1].Name != kClockChart) {
        switchAstroClock(kFalse, kFalse);
    }
}

// ---- What the rows share ----

void Tell(std::string_view first, std::string_view second) {
    std::string text(first);
    if (!second.empty()) text.append(kCrLf).append(second);
    session.shell->MessageBox(text, kProgramTitle, BoxButtons::Ok, BoxIcon::Information);
}

void TellNoParanLines() {
    Tell(
        "There are no paran line types currently selected for display.",
        "In order to see paran lines, you must first switch on at least one paran line type on the "
        "next screen.");
}

bool AnyLineTypeOn(std::int16_t first, std::int16_t last) {
    return std::any_of(settings.lineStyle.begin() + first, settings.lineStyle.begin() + last + 1,
                       [](const LineStyle& style) { return style.displayed != 0; });
}

void ShowLinesDialog() {
    LinesForm form = OpenLines();
    if (showLinesForm != nullptr) showLinesForm(form);
}

bool HasChart(std::int16_t /*number*/) {
    return session.ChartNumber >= 1;
}

bool HasLinesDialog() {
    return showLinesForm != nullptr;
}

bool HasPointsDialog() {
    return showPointsForm != nullptr && showLinesForm != nullptr;
}

}  // namespace orvantis

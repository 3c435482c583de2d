// The main window's commands as data: the window builds menus and buttons from this table, tests
// walk it, and every command is run and ended here.
#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "surface/drawing_surface.h"

namespace orvantis {

/// How a command ends.
enum class CommandEnd {
    None,   ///< the picture isn't touched here; what the command opened has plotted, or nothing has
    Lines,  ///< a quick pass: the stored image and the lines anew
    Full    ///< a full plot
};

/// What became of a command's own work.
enum class CommandOutcome {
    Done,      ///< the end of its row is due
    Cancelled  ///< the user went back, it was refused, or its end has been made on the way: no end
};

/// One entry of a menu. `number` tells the members of a family apart, who share their routines: a
/// house system, a place in the recent list, a line type. Captions mark the access key by "&".
struct Command {
    std::string_view menu;
    std::string_view submenu{};   ///< "" the entry stands in the menu itself
    std::string_view caption{};   ///< at the start of the program; "-" a line between entries
    std::string_view shortcut{};  ///< key such as "Ctrl+F5"; "" none
    CommandEnd end = CommandEnd::None;
    std::int16_t number = 0;
    bool hidden = false;  ///< exists, and isn't visible
    /// What it does before its end; null: nothing.
    CommandOutcome (*run)(std::int16_t number) = nullptr;
    /// Whether the program has the capability; null: it has. An entry without stays disabled.
    bool (*isBuilt)() = nullptr;
    /// Whether the entry can be chosen as things stand; null: always.
    bool (*isAllowed)(std::int16_t number) = nullptr;
    /// Whether the entry is checked; null: it never is.
    bool (*isChecked)(std::int16_t number) = nullptr;
    /// Its caption as things stand, "" while it isn't visible; null: that of the row.
    std::string (*captionNow)(std::int16_t number) = nullptr;
};

/// All commands, menu by menu, in their order.
std::span<const Command> Commands();

/// The first command of this caption, as its row has it, in a menu and its submenus, hidden ones
/// included; null without one. `number` above 0 is asked for as well, 0 stands for any.
const Command* FindCommand(std::string_view menu, std::string_view caption,
                           std::int16_t number = 0);

/// What an entry shows. Captions, marks and visibility hold at every time; `enabled` is for the
/// moment in which the entry's menu is opened.
struct CommandLook {
    std::string caption;
    bool visible = true;
    bool enabled = true;
    bool checked = false;
};

/// The look of an entry now, by the rules of its row; for a capability that isn't there `enabled`
/// is false.
CommandLook LookOf(const Command& command);

/// A menu is opened, by the mouse or by a key of one of its entries: what its entries depend on is
/// brought up to date. They are looked at anew after this, and not before.
void OpenMenu(std::string_view menu);

/// Runs a command and ends it as its row says. One whose capability isn't there does nothing, and
/// neither does any while a plot runs.
void RunCommand(const Command& command);

/// True from a command's first step to its end, while its dialogs are up too. The marks of the
/// menus are brought in step (refreshMenuMarks) when it is over.
bool CommandRuns();

/// What the mouse does on the map may open boxes and end in a plot like any command: from
/// BeginCommand to EndCommand it counts as one that runs. They come in pairs.
void BeginCommand();
void EndCommand();

/// A button of the row above the map. Each is the same as a command.
struct CommandButton {
    std::string_view name;     ///< of the control
    std::string_view text;     ///< on its face, with the access key marked
    std::string_view menu;     ///< of its command
    std::string_view caption;  ///< of its command
};

/// All buttons, in their order from the left.
std::span<const CommandButton> CommandButtons();

/// The chart's clock is switched off once another chart, or none, is on display. Every plot asks.
void StopForeignClock();

// ---- Connection points, each of which may be empty ----

extern void (*closeMainWindow)();  ///< asks the main window to close

/// The two plots in which commands end.
extern void (*plotAnew)();
extern void (*plotLinesAnew)();

/// Capabilities that commands hand over to. The entry of an empty one is disabled. Those with a
/// result tell by it whether the user went through with it.
extern void (*enterNewChart)();                    ///< the entry form of a chart
extern void (*openSubsidiaryChart)();              ///< the form of the second chart
extern void (*viewChart)(std::string_view title);  ///< a drawing of the chart
extern bool (*relocateToPlace)();  ///< asks for a place and moves the chart there; false: cancelled
extern void (*openPrintDialog)(std::string_view title);
extern void (*editCities)();
extern void (*editCountries)();
extern bool (*loadStarFile)(std::string_view path);  ///< false: it can't be read; the user knows
extern void (*selectEclipse)();
extern void (*openReport)(std::int16_t report);  ///< 1 to 5, in the menu's order
extern void (*openDumpForm)();
extern void (*openHelp)();
extern void (*useAcsAtlas)();  ///< the atlas has become the source of places

}  // namespace orvantis

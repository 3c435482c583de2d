// The main window's commands as data: the window builds its menus from this table, tests walk it.
#pragma once

#include <span>
#include <string_view>

namespace orvantis {

/// How a command ends.
enum class CommandEnd {
    None,   ///< the picture isn't touched
    Lines,  ///< a quick pass: the stored image and the lines anew
    Full    ///< a full plot
};

/// One entry of a menu.
struct Command {
    std::string_view menu;      ///< caption of its menu, with the access key marked by "&"
    std::string_view caption;   ///< its own caption, marked likewise
    std::string_view shortcut;  ///< key such as "F4"; "" none
    void (*run)();              ///< what it does before its end; null: nothing
    CommandEnd end = CommandEnd::None;
};

/// All commands, menu by menu, in their order.
std::span<const Command> Commands();

/// Runs a command and ends it as its row says.
void RunCommand(const Command& command);

/// Connection point: asks the main window to close.
extern void (*closeMainWindow)();

/// Connection points: the two plots in which commands end.
extern void (*plotAnew)();
extern void (*plotLinesAnew)();

}  // namespace orvantis

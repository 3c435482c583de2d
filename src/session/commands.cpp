#include "session/commands.h"

#include <array>

namespace orvantis {

void (*closeMainWindow)() = nullptr;
void (*plotAnew)() = nullptr;
void (*plotLinesAnew)() = nullptr;

namespace {

void Exit() {
    if (closeMainWindow != nullptr) closeMainWindow();
}

constexpr std::array<Command, 2> kCommands = {{
    {"&Chart", "E&xit", "", Exit, CommandEnd::None},
    {"&Map", "&ReDraw", "F4", nullptr, CommandEnd::Full},
}};

}  // namespace

std::span<const Command> Commands() {
    return kCommands;
}

void RunCommand(const Command& command) {
    if (command.run != nullptr) command.run();
    if (command.end == CommandEnd::Full && plotAnew != nullptr) plotAnew();
    if (command.end == CommandEnd::Lines && plotLinesAnew != nullptr) plotLinesAnew();
}

}  // namespace orvantis

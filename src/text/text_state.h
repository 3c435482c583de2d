// What the parsers and formatters of this room share: the user's regional choices, read once at
// the start, and the shell that shows the parsers' messages.
#pragma once

#include <cstdint>

#include "surface/shell.h"
#include "surface/values.h"

namespace orvantis {

struct TextState {
    Shell* shell = nullptr;           ///< shows the messages; null: they aren't shown
    Flag MonthFirst = kTrue;          ///< dates are written and read month first
    Flag Clock24 = kFalse;            ///< times are written on the 24 hour clock
    std::int16_t CenturyBase = 1900;  ///< added to years of one or two characters
};

extern TextState textState;

}  // namespace orvantis

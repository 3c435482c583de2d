// Orderly ends: a request from outside to end the program closes its windows as a user would.
#pragma once

namespace orvantis {

/// From now on the signals for "end" and "interrupt" close all windows and leave the event loop.
/// To be called once, after the application object was made.
void CloseOnSignals();

}  // namespace orvantis

// Orderly ends: a request from outside to end the program closes its windows as a user would.
#pragma once

namespace orvantis {

/// From now on the signals for "end" and "interrupt" close all windows and leave the event loop.
/// To be called once, after the application object was made.
void CloseOnSignals();

/// True once such a signal has been taken. A box that stands before the window's own event loop
/// runs takes it too, and the loop must then not be entered.
bool EndWasAsked();

}  // namespace orvantis

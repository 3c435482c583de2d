// Puts every process-wide record of the program back to its initial state.
#pragma once

#include "support/scripted_shell.h"

namespace orvantis {

/// Resets all records and closes all files. The session's shell then is `TestShell()`.
void ResetAll();

/// The shell of the test in progress, made anew by ResetAll.
ScriptedShell& TestShell();

}  // namespace orvantis

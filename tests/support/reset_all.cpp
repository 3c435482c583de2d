#include "support/reset_all.h"

#include "session/files.h"
#include "session/session_state.h"
#include "session/settings.h"
#include "text/run_time_error.h"

namespace orvantis {

namespace {

ScriptedShell shell;

}  // namespace

void ResetAll() {
    CloseAllFiles();
    RunTimeError ignored;
    TakeRunTimeError(ignored);

    session = {};
    settings = {};
    options = {};
    pointSelection = {};
    pointColour = {};
    plotAfterSettings = nullptr;

    shell = {};
    session.shell = &shell;
}

ScriptedShell& TestShell() {
    return shell;
}

}  // namespace orvantis

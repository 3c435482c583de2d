// The forms of the dialogs: thin windows over the records and routines of session/display_dialogs,
// session/map_dialogs and session/save_settings. Each shows a record, calls the routine of what was
// pressed or left, and shows the record again; a plot follows once the form is closed, but for that
// of "&Apply" of the point colours, whose form stays up. All are modal; true: closed by "OK", or
// with something applied.
#pragma once

#include "session/display_dialogs.h"

namespace orvantis {

bool ShowLinesForm(LinesForm& form);
bool ShowPrefsForm(PrefsForm& form);
bool ShowPointsForm(PointsForm& form);
bool ShowPointColoursForm(PointColoursForm& form);
bool ShowZodiacStartForm(ZodiacStartForm& form);
bool ShowPaletteForm(PaletteForm& form);
bool ShowMapOptionsForm();
bool ShowSaveMapForm();
bool ShowSaveSettingsForm();

/// Fills the connection points of the forms. Called when the main window is made.
void ConnectForms();

}  // namespace orvantis

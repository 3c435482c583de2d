#include "desktop/dialogs/forms.h"

#include "session/map_dialogs.h"
#include "session/save_settings.h"

namespace orvantis {

void ConnectForms() {
    showLinesForm = ShowLinesForm;
    showPrefsForm = ShowPrefsForm;
    showPointsForm = ShowPointsForm;
    showPointColoursForm = ShowPointColoursForm;
    showZodiacStartForm = ShowZodiacStartForm;
    showPaletteForm = ShowPaletteForm;
    showMapOptionsForm = ShowMapOptionsForm;
    showSaveMapForm = ShowSaveMapForm;
    showSaveSettingsForm = ShowSaveSettingsForm;
}

}  // namespace orvantis

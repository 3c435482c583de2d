#include "desktop/dialogs/forms.h"

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
}

}  // namespace orvantis

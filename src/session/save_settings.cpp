#include "session/save_settings.h"

#include "session/save_name.h"
#include "session/session_state.h"
#include "session/settings.h"

namespace orvantis {

bool (*showSaveSettingsForm)() = nullptr;

SaveSettingsForm OpenSaveSettings() {
    return {session.UserDataPath, session.SettingsName, settings.description};
}

bool AcceptSaveSettings(const SaveSettingsForm& form) {
    std::string path;
    if (!AcceptSaveName(form.folder, form.name, "ovs", path)) return false;
    return SaveSettings(path, form.description);
}

}  // namespace orvantis

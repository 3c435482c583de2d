// What the dialog that saves the settings does, without a window. A form fills the record, calls
// AcceptSaveSettings when "OK" is pressed, and closes if that says so.
#pragma once

#include <string>

namespace orvantis {

struct SaveSettingsForm {
    std::string folder;       ///< where the file goes
    std::string name;         ///< up to 8 characters, without an extension
    std::string description;  ///< becomes the settings' description
};

/// The form as it opens: the user's folder, and the name and description of the settings in use.
SaveSettingsForm OpenSaveSettings();

/// "OK": writes the settings under the form's name. Asks before an existing file is overwritten.
/// True if the form closes; it stays, and nothing has changed, on a bad name, a refusal, or a file
/// that can't be written.
bool AcceptSaveSettings(const SaveSettingsForm& form);

/// Connection point: the form. True: closed by "OK".
extern bool (*showSaveSettingsForm)();

}  // namespace orvantis

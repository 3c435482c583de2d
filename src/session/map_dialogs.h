// What the two dialogs about maps do, without a window: the one that saves a map, and the one that
// chooses what a map shows. A form fills a record, calls the routine of what was left or pressed,
// and shows the record again.
#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <string_view>

#include "map/map_document.h"

namespace orvantis {

// ---- "Save Map As" ----

struct SaveMapForm {
    std::string folder;       ///< where the file goes
    std::string name;         ///< up to 8 characters, without an extension
    std::string description;  ///< becomes the map's title, of which it has the first 80 characters
};

/// The form as it opens: the user's folder, the document's name and its title.
SaveMapForm OpenSaveMap();

/// "OK": writes the current map under the form's name, takes title and name over, and puts the file
/// on the recent list. Asks before an existing file is overwritten. True if the form closes; it
/// stays, and nothing has changed, on a bad name, a refusal, or a file that can't be written.
bool AcceptSaveMap(const SaveMapForm& form);

// ---- "Select Map Options" ----

/// A box of the frame "&Details to Show".
struct DetailBox {
    std::string_view caption;
    std::int16_t detailClass = 0;  ///< index of MapDocument::hidden
};

extern const std::array<DetailBox, 6> kDetailBoxes;

/// The copy of the current document on which the dialog works.
MapDocument OpenMapOptions();

/// Turns a detail of the copy on or off. City names need a city file: without one the user is asked
/// to select it, and the box stays off if he doesn't.
void SetDetail(MapDocument& map, std::int16_t detailClass, bool on);

/// "City &File...": takes the base name of the file that the user selects. False: cancelled, or a
/// name that a document can't hold, such as one of more than 8 characters; the user has been told.
bool ChooseCityFile(MapDocument& map);

/// What stands beside that button: the file's base name, or "None".
std::string CityFileText(const MapDocument& map);

/// Grid interval (degrees) of a text, on leaving its field: 1 at the least and 90 at the most.
float GridInterval(std::string_view text);

/// After "OK", the form being closed: if the copy differs from the current document it takes its
/// place, its edges brought to a new projection, and the map is plotted in full. True if it did.
bool AcceptMapOptions(const MapDocument& map);

// ---- Connection points: the forms, as those of display_dialogs.h ----

extern bool (*showMapOptionsForm)();
extern bool (*showSaveMapForm)();

}  // namespace orvantis

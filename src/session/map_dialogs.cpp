#include "session/map_dialogs.h"

#include <algorithm>

#include "map/map_menus.h"
#include "map/projection.h"
#include "session/files.h"
#include "session/recent_maps.h"
#include "session/save_name.h"
#include "session/session_state.h"
#include "text/code_page.h"
#include "text/numbers.h"
#include "text/strings.h"

namespace orvantis {

const std::array<DetailBox, 6> kDetailBoxes = {{{"City Names", 8},
                                                {"Country Names", 3},
                                                {"Country Borders", 2},
                                                {"State Borders", 4},
                                                {"Lakes", 6},
                                                {"Rivers", 7}}};

bool (*showMapOptionsForm)() = nullptr;
bool (*showSaveMapForm)() = nullptr;

namespace {

constexpr std::int16_t kCityNamesClass = 8;
constexpr double kLeastInterval = 1;
constexpr double kMostInterval = 90;

// True if the document's file brings the name back as it is: not longer, not blank, and without
// blanks at its ends or characters that its bytes can't say.
bool FitsCityFile(std::string_view name, std::string_view nativeName) {
    return !name.empty() && name.size() <= kCityFileWidth && Trim(name) == name &&
           ToUtf8(name) == nativeName;
}

// What the dialog edits: all that goes to the file before the number of fills.
Bytes OptionBytes(const MapDocument& map) {
    Bytes bytes(kMapDocumentSize);
    PutMapDocument(bytes.data(), map);
    bytes.resize(bytes.size() - 2);
    return bytes;
}

}  // namespace

SaveMapForm OpenSaveMap() {
    return {session.UserDataPath, mapState.name, CurrentMap().title};
}

bool AcceptSaveMap(const SaveMapForm& form) {
    std::string path;
    if (!AcceptSaveName(form.folder, form.name, "ovm", path)) return false;

    // An old file of this name goes when the new one stands whole in its place.
    const std::string title = CurrentMap().title;
    CurrentMap().title = TrimRight(Trim(form.description).substr(0, kMapTitleWidth));
    if (SaveMap(path) != kFalse) {
        CurrentMap().title = title;
        return false;
    }
    mapState.name = Trim(form.name);
    AddRecentMap(path);
    return true;
}

MapDocument OpenMapOptions() {
    return CurrentMap();
}

void SetDetail(MapDocument& map, std::int16_t detailClass, bool on) {
    Flag& hidden = map.hidden[static_cast<std::size_t>(detailClass)];
    hidden = on ? kFalse : kTrue;
    if (!on || detailClass != kCityNamesClass || !map.cityFile.empty()) return;
    const BoxAnswer answer = session.shell->MessageBox(
        "In order to show city names on the map, you must select a city file.", "Select File",
        BoxButtons::OkCancel, BoxIcon::Question);
    if (answer != BoxAnswer::Ok || !ChooseCityFile(map)) hidden = kTrue;
}

bool ChooseCityFile(MapDocument& map) {
    const auto path = session.shell->ChooseFile("Select Cities File to Open", "*.ovc", false);
    if (!path) return false;
    const std::string nativeName = BaseName(*path, true);
    const std::string name = FromUtf8(nativeName);
    if (!FitsCityFile(name, nativeName)) {
        TellBadFileName();
        return false;
    }
    map.cityFile = name;
    return true;
}

std::string CityFileText(const MapDocument& map) {
    return map.cityFile.empty() ? "None" : map.cityFile;
}

float GridInterval(std::string_view text) {
    return static_cast<float>(std::clamp(NumericValue(text), kLeastInterval, kMostInterval));
}

bool AcceptMapOptions(const MapDocument& map) {
    if (OptionBytes(map) == OptionBytes(CurrentMap())) return false;

    // The edges follow from the view as it is, before the copy takes its place.
    const std::int16_t before = CurrentMap().projection;
    const std::int16_t fills = CurrentMap().fillCount;
    SetViewExtent();
    RunTimeError failure;
    TakeRunTimeError(failure);  // edges that are no view are the plot's to tell
    CurrentMap() = map;
    CurrentMap().fillCount = fills;
    ChangeProjection(map.projection, before);
    RefreshMapMenus(mapState.current);
    if (plotFull != nullptr) plotFull();
    return true;
}

}  // namespace orvantis

// The steps of a start that bring the map: the point database, and the map of the last run with its
// picture. See start_steps.h.
#include <algorithm>

#include "map/map_document.h"
#include "map/point_database.h"
#include "session/files.h"
#include "session/session_state.h"
#include "session/settings.h"
#include "session/start_steps.h"
#include "session/tables.h"
#include "text/strings.h"

namespace orvantis {

namespace {

// True if every entry of the index can be a line's: of a class of lines, in ascending order, with
// no count below 0.
bool IndexIsSound() {
    std::int16_t before = 0;
    for (int n = 1; n <= pointDatabase.count; ++n) {
        const LineIndexEntry& entry = pointDatabase.LineIndex[static_cast<std::size_t>(n)];
        const bool isLine =
            std::any_of(kMapDetails.begin(), kMapDetails.end(), [&](const MapDetail& detail) {
                return detail.hasLines && detail.detailClass == entry.code / 1000;
            });
        const bool hasCounts = std::all_of(entry.pointCount.begin(), entry.pointCount.end(),
                                           [](std::int16_t count) { return count >= 0; });
        if (!isLine || !hasCounts || entry.code < before) return false;
        before = entry.code;
    }
    return true;
}

Flag TellBadDatabase(std::string_view what) {
    std::string text = ShownPath(LevelPath(1));
    text.append(kCrLf).append(what);
    session.shell->MessageBox(text, "Database Error", BoxButtons::Ok, BoxIcon::Error);
    return kTrue;
}

// Opens a map without a plot; a new one takes the place of one that can't be opened, which the user
// has been told.
void OpenMapOrNew(const std::string& path) {
    if (OpenMap(path, kFalse) != 0) NewMap(kFalse);
}

}  // namespace

bool DatabaseIsMissing() {
    if (FileExists(LevelPath(1)) != 0) return false;
    session.shell->MessageBox("The main database file LEVEL1.PNT was not found in the directory " +
                                  ShownPath(session.ProgramDir),
                              "Orvantis", BoxButtons::Ok, BoxIcon::Error);
    return true;
}

void RebuildLevels() {
    session.shell->ShowProgress(kFirstUseText, 0);
    GenerateLevels(LevelPath(1), kFirstUseText);
    session.shell->ShowProgress("", 100);
}

Flag LoadIndex() {
    // A code that differs between levels leaves the index usable. An index that can't be one of
    // lines is made anew once; if the lines themselves are at fault, that shows again.
    LoadLineIndex();
    if (!IndexIsSound()) {
        DeleteFile(session.ProgramDir + "levelx.ndx");
        LoadLineIndex();
    }
    if (!IndexIsSound()) return TellBadDatabase("The file isn't a map database.");
    if (pointDatabase.count < 1) return TellBadDatabase("The file holds no map lines.");
    return kFalse;
}

Flag LoadDatabase() {
    if (DatabaseIsMissing()) return kTrue;
    if (LevelsNeedRebuild()) RebuildLevels();
    return LoadIndex();
}

std::string StoredMapPath() {
    return session.ProgramDir + "mapview.ovm";
}

std::string StoredImagePath() {
    return session.ProgramDir + "mapimage.bmp";
}

Flag TakeStoredMap(SurfaceSize area) {
    const bool stored = options.storeImages != 0 && FileExists(StoredMapPath()) != 0 &&
                        FileExists(StoredImagePath()) != 0;
    if (!stored) {
        const std::string& recent = session.RecentMaps[0];
        if (session.RecentCount >= 1 && FileExists(recent) != 0) {
            OpenMapOrNew(recent);
        } else {
            NewMap(kFalse);
        }
        return kTrue;
    }

    mapState.current = 1;
    mapState.viewTop = 1;
    mapState.viewLowest = 1;
    // A picture belongs to its map: without the one the other isn't taken.
    if (OpenMap(StoredMapPath(), kFalse) != 0) {
        NewMap(kFalse);
        return kTrue;
    }
    if (loadStoredImage == nullptr || !loadStoredImage(StoredImagePath(), session.StoredImage)) {
        return kTrue;
    }
    const bool fits =
        session.StoredImage.height == area.height && session.StoredImage.width == area.width;
    return fits ? kFalse : kTrue;
}

}  // namespace orvantis

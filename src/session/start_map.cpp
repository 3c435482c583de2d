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

constexpr int kLevelFiles = 5;

// True if an entry can be a line's: of a class of lines, with no count below 0.
bool IsLine(const LineIndexEntry& entry) {
    const bool hasClass =
        std::any_of(kMapDetails.begin(), kMapDetails.end(), [&](const MapDetail& detail) {
            return detail.hasLines && detail.detailClass == entry.code / 1000;
        });
    return hasClass && std::all_of(entry.pointCount.begin(), entry.pointCount.end(),
                                   [](std::int16_t count) { return count >= 0; });
}

// True if every line of the index has its place in all five files. The last line of level 1 may
// lack it: where its points run past the end of the file, it isn't taken over into the others.
bool FilesAgree() {
    const auto count = static_cast<std::size_t>(pointDatabase.count);
    for (std::size_t n = 1; n < pointDatabase.LineIndex.size(); ++n) {
        const auto& places = pointDatabase.LineIndex[n].pointPos;
        const auto found = std::count_if(places.begin() + 1, places.end(),
                                         [](std::int32_t place) { return place > 0; });
        const bool whole = found == kLevelFiles;
        const bool cut = found == 1 && places[1] > 0 && n == count + 1 && count > 0;
        if (n <= count ? !whole : found > 0 && !cut) return false;
    }
    return true;
}

// True if the index is one of sound files: of lines alone, in the order of their codes.
bool IndexIsSound() {
    std::int16_t before = 0;
    for (int n = 1; n <= pointDatabase.count; ++n) {
        const LineIndexEntry& entry = pointDatabase.LineIndex[static_cast<std::size_t>(n)];
        if (!IsLine(entry) || entry.code < before) return false;
        before = entry.code;
    }
    return FilesAgree();
}

// True if fewer than half of what stands in level 1 can be lines.
bool LevelOneIsSomethingElse() {
    int all = 0;
    int lines = 0;
    for (const LineIndexEntry& entry : pointDatabase.LineIndex) {
        if (entry.pointPos[1] < 1) continue;
        ++all;
        if (IsLine(entry)) ++lines;
    }
    return 2 * lines < all;
}

// What was read before and is refused leaves nothing behind, nor do the class ranges, which
// otherwise keep where a class first began.
Flag LoadIndexAnew() {
    pointDatabase.ClassRange = {};
    return RebuildLineIndex();
}

// False if the level files couldn't be made; the user has been told.
bool MakeLevels() {
    session.shell->ShowProgress(kFirstUseText, 0);
    const Flag failed = GenerateLevels(LevelPath(1), kFirstUseText);
    session.shell->ShowProgress("", 100);
    return failed == kFalse;
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
    MakeLevels();
}

Flag LoadIndex() {
    // A code that differs between levels leaves the index usable. A fault of the index goes with a
    // new one, and a fault of the files made from level 1 with those.
    bool told = false;
    Flag failed = LoadLineIndex();
    if (!IndexIsSound()) failed = LoadIndexAnew();
    if (!FilesAgree()) {
        told = !MakeLevels();
        failed = LoadIndexAnew();
    }

    // What is left is level 1's own: odd codes are let through, but not a file of something else.
    if (!IndexIsSound() && LevelOneIsSomethingElse()) {
        return TellBadDatabase("The file isn't a map database.");
    }
    if (pointDatabase.count > 0) return kFalse;
    // An index that a failure left without lines says nothing about level 1.
    if (failed != kFalse || told) return kTrue;
    return TellBadDatabase("The file holds no map lines.");
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

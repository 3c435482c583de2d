// Map documents and the fill list: their records, and the commands that make, open and save them.
#include "map/map_document.h"

#include <algorithm>
#include <cmath>

#include "map/map_menus.h"
#include "session/files.h"
#include "session/session_state.h"
#include "text/code_page.h"
#include "text/numbers.h"
#include "text/strings.h"

namespace orvantis {

MapState mapState;

void (*refreshMapMenus)(std::int16_t docNumber) = nullptr;
void (*addRecentMap)(std::string_view path) = nullptr;
void (*plotFull)() = nullptr;

namespace {

constexpr std::int16_t kMostFills = 32767;
constexpr std::int16_t kCityNamesClass = 8;

// The stacked views are forgotten, and so are their pictures.
void MakeFirstViewCurrent() {
    mapState.current = 1;
    mapState.viewTop = 1;
    mapState.viewLowest = 1;
    mapState.viewImages = {};
}

void PlotFull() {
    if (plotFull != nullptr) plotFull();
}

// Reads a document and its fills. A fill count that the file can't hold is found before any of
// them is read; edges that are no numbers would reach every projection and are refused.
bool ReadMap(FileHandle file, MapDocument& document, std::vector<FillRecord>& fills) {
    std::array<std::uint8_t, kMapDocumentSize> bytes{};
    if (!ReadBytes(file, 1, bytes)) return false;
    document = GetMapDocument(bytes.data());
    if (!std::isfinite(document.south) || !std::isfinite(document.west) ||
        !std::isfinite(document.north) || !std::isfinite(document.east)) {
        RaiseRunTimeError(error::kOverflow);
        return false;
    }

    const std::int64_t size = kFillRecordSize * std::max<std::int16_t>(document.fillCount, 0);
    if (FileLength(file) - kMapDocumentSize < size) {
        RaiseRunTimeError(error::kPastEnd);
        return false;
    }
    Bytes records(static_cast<std::size_t>(size));
    if (!ReadBytes(file, kMapDocumentSize + 1, records)) return false;
    fills.assign(1, {});
    for (std::size_t at = 0; at < records.size(); at += kFillRecordSize) {
        fills.push_back(GetFillRecord(&records[at]));
    }
    return true;
}

// What a document says may be gone, or never have been.
void MendMap(MapDocument& document) {
    const bool cityFileThere =
        !document.cityFile.empty() &&
        FileExists(session.UserDataPath + ToUtf8(document.cityFile) + ".ovc") != kFalse;
    if (!cityFileThere) {
        document.cityFile.clear();
        document.hidden[kCityNamesClass] = kTrue;
    }
    document.fillCount = std::max<std::int16_t>(document.fillCount, 0);
}

}  // namespace

MapDocument& CurrentMap() {
    return mapState.documents[static_cast<std::size_t>(mapState.current)];
}

MapDocument GetMapDocument(const std::uint8_t* p) {
    MapDocument document;
    document.reserved = GetI16(p);
    document.title = TrimRight(GetText(p + 2, kMapTitleWidth));
    document.south = GetF32(p + 82);
    document.west = GetF32(p + 86);
    document.north = GetF32(p + 90);
    document.east = GetF32(p + 94);
    document.projection =
        ClampInt(GetI16(p + 98), projection::kCartesian, projection::kGlobeOblate);
    document.precision = ClampInt(GetI16(p + 100), 1, 5);
    for (std::size_t detail = 0; detail < document.hidden.size(); ++detail) {
        document.hidden[detail] = GetI16(p + 102 + 2 * detail);
    }
    document.gridOn = GetI16(p + 120);
    document.gridLatStep = GetF32(p + 122);
    document.gridLongStep = GetF32(p + 126);
    document.cityFile = Trim(GetText(p + 130, kCityFileWidth));
    document.fillCount = GetI16(p + 138);
    return document;
}

void PutMapDocument(std::uint8_t* p, const MapDocument& document) {
    PutI16(p, document.reserved);
    PutText(p + 2, kMapTitleWidth, document.title);
    PutF32(p + 82, document.south);
    PutF32(p + 86, document.west);
    PutF32(p + 90, document.north);
    PutF32(p + 94, document.east);
    PutI16(p + 98, document.projection);
    PutI16(p + 100, document.precision);
    for (std::size_t detail = 0; detail < document.hidden.size(); ++detail) {
        PutI16(p + 102 + 2 * detail, document.hidden[detail]);
    }
    PutI16(p + 120, document.gridOn);
    PutF32(p + 122, document.gridLatStep);
    PutF32(p + 126, document.gridLongStep);
    PutText(p + 130, kCityFileWidth, document.cityFile);
    PutI16(p + 138, document.fillCount);
}

FillRecord GetFillRecord(const std::uint8_t* p) {
    return {GetF32(p), GetF32(p + 4), GetI32(p + 8)};
}

void PutFillRecord(std::uint8_t* p, const FillRecord& record) {
    PutF32(p, record.lat);
    PutF32(p + 4, record.longitude);
    PutI32(p + 8, record.colour);
}

void NewMap(Flag redraw) {
    // The user's own default map is read by way of record 0, so that a copy that can't be read
    // doesn't leave a view behind; a new document then takes its place.
    const std::string own = session.UserDataPath + "world.ovm";
    if (FileExists(own) != kFalse) {
        mapState.current = 0;
        if (OpenMap(own, redraw) == kFalse) return;
    }
    MakeFirstViewCurrent();
    CurrentMap() = {};
    mapState.name.clear();
    RefreshMapMenus(mapState.current);
    if (redraw != kFalse) PlotFull();
}

Flag OpenMap(std::string_view path, Flag redraw) {
    const FileHandle file = FileOpener(path, open_mode::kBinary, 0, kFalse);
    if (file < 1) return kTrue;
    RunTimeError failure;
    TakeRunTimeError(failure);  // what stood before belongs to others

    const MapDocument saved = CurrentMap();
    MakeFirstViewCurrent();
    MapDocument document;
    std::vector<FillRecord> fills;
    ReadMap(file, document, fills);
    CloseFile(file);
    if (TakeRunTimeError(failure)) {
        CloseAllFiles();
        CurrentMap() = saved;
        RefreshMapMenus(mapState.current);  // there is no view to go back to any longer
        std::string text = "Unable to open map file:";
        text.append(kCrLf)
            .append(ShownPath(path))
            .append(" (")
            .append(failure.description)
            .append(")");
        if (session.shell != nullptr) {
            session.shell->MessageBox(text, "Orvantis", BoxButtons::Ok, BoxIcon::Error);
        }
        return kTrue;
    }

    MendMap(document);
    CurrentMap() = std::move(document);
    mapState.fills = std::move(fills);
    mapState.name = FromUtf8(BaseName(path, true));
    RefreshMapMenus(mapState.current);
    if (redraw == kFalse) return kFalse;
    if (addRecentMap != nullptr) addRecentMap(path);
    PlotFull();
    return kFalse;
}

Flag SaveMap(std::string_view path) {
    const MapDocument& document = CurrentMap();
    const std::size_t records = std::min<std::size_t>(
        static_cast<std::size_t>(std::max<std::int16_t>(document.fillCount, 0)),
        mapState.fills.empty() ? 0 : mapState.fills.size() - 1);
    Bytes bytes(kMapDocumentSize + kFillRecordSize * records);
    PutMapDocument(bytes.data(), document);
    PutI16(&bytes[138], static_cast<std::int16_t>(records));
    for (std::size_t record = 1; record <= records; ++record) {
        PutFillRecord(&bytes[kMapDocumentSize + kFillRecordSize * (record - 1)],
                      mapState.fills[record]);
    }
    return ReplaceFile(path, bytes) ? kFalse : kTrue;
}

void AddFill(std::int16_t docNumber, float lat, float longitude, bool isSea, Colour colour) {
    MapDocument& document = mapState.documents[static_cast<std::size_t>(docNumber)];
    if (document.fillCount >= kMostFills) return;
    ++document.fillCount;
    const auto record = static_cast<std::size_t>(document.fillCount);
    if (mapState.fills.size() <= record) mapState.fills.resize(record + 1);
    mapState.fills[record] = {lat, longitude, isSea ? Colour{-1} : colour};
}

}  // namespace orvantis

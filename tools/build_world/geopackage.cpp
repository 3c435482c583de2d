#include "geopackage.h"

#include <algorithm>
#include <bit>
#include <cstdint>
#include <span>
#include <sqlite3.h>

#include "text/bytes.h"

namespace orvantis::world {

namespace {

// Geometry blob, GeoPackage 1.3 section 2.1.3:
//
// | Offset | Size | Field                                                            |
// |--------|------|------------------------------------------------------------------|
// | 0      | 2    | "GP"                                                             |
// | 2      | 1    | version                                                          |
// | 3      | 1    | flags; bits 1 to 3: kind of envelope                             |
// | 4      | 4    | reference system                                                 |
// | 8      | 0-64 | envelope: kinds 0 to 4 take 0, 32, 48, 48, 64 bytes              |
// |        |      | WKB geometry                                                     |
constexpr std::size_t kEnvelopeSizes[] = {0, 32, 48, 48, 64};
constexpr std::size_t kBlobHeader = 8;

// WKB: byte order (1; 1 is little-endian), type (4), then by type: 3 polygon: rings (4), each
// points (4) and x and y (8 and 8); 6 several polygons: count (4) and that many geometries.
constexpr std::uint32_t kWkbPolygon = 3;
constexpr std::uint32_t kWkbMultiPolygon = 6;

struct Wkb {
    std::span<const std::uint8_t> bytes;
    std::size_t at = 0;

    bool Has(std::size_t count) const { return bytes.size() - at >= count; }
    std::uint32_t Take32() {
        at += 4;
        return GetU32(&bytes[at - 4]);
    }
    double TakeDouble() {
        at += 8;
        return GetF64(&bytes[at - 8]);
    }
};

// The type of the geometry at hand; 0 if its bytes aren't all there or are big-endian.
std::uint32_t TakeType(Wkb& wkb) {
    if (!wkb.Has(9) || wkb.bytes[wkb.at] != 1) return 0;
    ++wkb.at;
    return wkb.Take32();
}

bool TakePolygon(Wkb& wkb, std::vector<DegLine>& rings) {
    const std::uint32_t ringCount = wkb.Take32();
    for (std::uint32_t ring = 0; ring < ringCount; ++ring) {
        if (!wkb.Has(4)) return false;
        const std::size_t points = wkb.Take32();
        if (!wkb.Has(16 * points)) return false;
        DegLine line;
        for (std::size_t i = 0; i < points; ++i) {
            const double x = wkb.TakeDouble();
            const double y = wkb.TakeDouble();
            line.push_back({x, y});
        }
        rings.push_back(std::move(line));
    }
    return true;
}

bool DecodeGeometry(std::span<const std::uint8_t> blob, std::vector<DegLine>& rings) {
    if (blob.size() < kBlobHeader || blob[0] != 'G' || blob[1] != 'P') return false;
    const std::size_t envelope = blob[3] >> 1 & 7;
    if (envelope >= std::size(kEnvelopeSizes)) return false;
    Wkb wkb{blob, kBlobHeader + kEnvelopeSizes[envelope]};
    if (wkb.at > blob.size()) return false;
    const std::uint32_t type = TakeType(wkb);
    if (type == kWkbPolygon) return TakePolygon(wkb, rings);
    if (type != kWkbMultiPolygon) return false;
    const std::uint32_t count = wkb.Take32();
    for (std::uint32_t i = 0; i < count; ++i) {
        if (TakeType(wkb) != kWkbPolygon || !TakePolygon(wkb, rings)) return false;
    }
    return true;
}

std::string ColumnText(sqlite3_stmt* row, int column) {
    const unsigned char* text = sqlite3_column_text(row, column);
    return text == nullptr ? std::string{} : reinterpret_cast<const char*>(text);
}

// Reads the row at hand. False if its geometry can't be decoded.
bool TakeState(sqlite3_stmt* row, const std::vector<std::string>& countries,
               std::vector<State>& states) {
    State state;
    state.country = ColumnText(row, 0);
    state.name = ColumnText(row, 1);
    const bool wanted =
        std::find(countries.begin(), countries.end(), state.country) != countries.end();
    const auto* blob = static_cast<const std::uint8_t*>(sqlite3_column_blob(row, 2));
    if (!wanted || blob == nullptr) return true;
    const auto size = static_cast<std::size_t>(sqlite3_column_bytes(row, 2));
    if (!DecodeGeometry({blob, size}, state.rings)) return false;
    states.push_back(std::move(state));
    return true;
}

}  // namespace

bool ReadStates(const std::string& path, const std::vector<std::string>& countries,
                std::vector<State>& states, std::string& error) {
    sqlite3* database = nullptr;
    sqlite3_stmt* rows = nullptr;
    constexpr char kQuery[] = "SELECT adm0_a3, name, geom FROM states_provinces ORDER BY fid";
    int status = sqlite3_open_v2(path.c_str(), &database, SQLITE_OPEN_READONLY, nullptr);
    if (status == SQLITE_OK) status = sqlite3_prepare_v2(database, kQuery, -1, &rows, nullptr);
    if (status == SQLITE_OK) {
        while ((status = sqlite3_step(rows)) == SQLITE_ROW) {
            if (!TakeState(rows, countries, states)) {
                error = "has a geometry that isn't polygons";
                break;
            }
        }
    }
    if (status != SQLITE_DONE && error.empty()) error = sqlite3_errmsg(database);
    sqlite3_finalize(rows);
    sqlite3_close(database);
    return error.empty();
}

}  // namespace orvantis::world

#include "pn2.h"

#include <cstdint>
#include <fstream>
#include <iterator>

namespace orvantis::world {

namespace {

// All numbers are big-endian.
//
// | Offset | Size | Field                                                          |
// |--------|------|----------------------------------------------------------------|
// | 0      | 1    | version                                                        |
// | 1      | 4    | polygons in the file                                           |
// | 5      | 1    | nonzero: each polygon carries a map colour                     |
//
// Then the polygons:
//
// | Offset | Size | Field                                                          |
// |--------|------|----------------------------------------------------------------|
// | 0      | 1    | kind: Pn2Kind; 4 heads a group and has no points               |
// | 1      | 4    | number                                                         |
// | 5      | 4    | absolute nodes (a group: 1 byte, ignored)                      |
// | 9      | 1    | map colour, only if the file has them                          |
//
// An absolute node is latitude and longitude in half minutes (2 and 2), the count of relative
// nodes (2), and for each of them the distance from the absolute node, latitude and longitude,
// 1 signed byte each.
constexpr std::size_t kFileHeader = 6;
constexpr std::size_t kGroupSize = 6;
constexpr std::size_t kPolygonHeader = 9;
constexpr std::size_t kNodeHeader = 6;
constexpr int kGroup = 4;
constexpr double kUnitsPerDegree = 120;

struct Reader {
    std::vector<std::uint8_t> bytes;
    std::size_t at = 0;

    bool Has(std::size_t count) const { return bytes.size() - at >= count; }
    std::uint32_t Big(std::size_t offset, std::size_t width) const {
        std::uint32_t value = 0;
        for (std::size_t i = 0; i < width; ++i) value = value << 8 | bytes[at + offset + i];
        return value;
    }
    int Signed16(std::size_t offset) const { return static_cast<std::int16_t>(Big(offset, 2)); }
    int Signed8(std::size_t offset) const { return static_cast<std::int8_t>(bytes[at + offset]); }
};

bool ReadNode(Reader& reader, DegLine& points) {
    if (!reader.Has(kNodeHeader)) return false;
    const int lat = reader.Signed16(0);
    const int longitude = reader.Signed16(2);
    const std::size_t relatives = reader.Big(4, 2);
    reader.at += kNodeHeader;
    if (!reader.Has(2 * relatives)) return false;
    points.push_back({longitude / kUnitsPerDegree, lat / kUnitsPerDegree});
    for (std::size_t i = 0; i < relatives; ++i) {
        points.push_back({(longitude + reader.Signed8(2 * i + 1)) / kUnitsPerDegree,
                          (lat + reader.Signed8(2 * i)) / kUnitsPerDegree});
    }
    reader.at += 2 * relatives;
    return true;
}

bool ReadPolygon(Reader& reader, bool hasColours, std::vector<Pn2Feature>& features) {
    if (!reader.Has(kGroupSize)) return false;
    const int kind = reader.bytes[reader.at];
    if (kind == kGroup) {
        reader.at += kGroupSize;
        return true;
    }
    if (kind > kGroup || !reader.Has(kPolygonHeader + (hasColours ? 1 : 0))) return false;
    const std::uint32_t nodes = reader.Big(5, 4);
    reader.at += kPolygonHeader + (hasColours ? 1 : 0);
    Pn2Feature feature;
    feature.kind = static_cast<Pn2Kind>(kind);
    for (std::uint32_t i = 0; i < nodes; ++i) {
        if (!ReadNode(reader, feature.points)) return false;
    }
    features.push_back(std::move(feature));
    return true;
}

}  // namespace

bool ReadPn2(const std::string& path, std::vector<Pn2Feature>& features, std::string& error) {
    std::ifstream file(path, std::ios::binary);
    if (!file) {
        error = "can't be opened";
        return false;
    }
    Reader reader;
    reader.bytes.assign(std::istreambuf_iterator<char>(file), {});
    if (!reader.Has(kFileHeader)) {
        error = "is too short";
        return false;
    }
    const bool hasColours = reader.bytes[5] != 0;
    reader.at = kFileHeader;
    while (reader.Has(1)) {
        if (!ReadPolygon(reader, hasColours, features)) {
            error = "ends within a polygon";
            return false;
        }
    }
    return true;
}

}  // namespace orvantis::world

#include "world_map.h"

#include "map/map_document.h"

namespace orvantis::world {

namespace {

// Lines that deviate from the coast by at most 2 arc-minutes: a fifth of a pixel of a world map
// 1920 pixels wide, and still less than one after the user has zoomed in by five. Level 1 has more
// than twice the points and shows nothing more until then.
constexpr std::int16_t kPrecision = 2;

constexpr std::size_t kTitleAt = 2;
constexpr std::size_t kEdgesAt = 82;
constexpr std::size_t kProjectionAt = 98;
constexpr std::size_t kHiddenAt = 102;
constexpr std::size_t kGridAt = 120;
constexpr std::size_t kCityFileAt = 130;
constexpr std::size_t kFillCountAt = 138;

}  // namespace

Bytes MakeWorldMap(const std::vector<PlaceName>& seeds) {
    // Coasts, islands and countries are shown. Lakes are not: no seed lies in them, so that they
    // would stand there in the colour of the land.
    const MapDocument document;
    const auto size = static_cast<std::size_t>(kMapDocumentSize);
    const auto fillSize = static_cast<std::size_t>(kFillRecordSize);
    Bytes file(size + seeds.size() * fillSize);
    std::uint8_t* p = file.data();
    PutI16(p, document.reserved);
    PutText(p + kTitleAt, 80, document.title);
    PutF32(p + kEdgesAt, document.south);
    PutF32(p + kEdgesAt + 4, document.west);
    PutF32(p + kEdgesAt + 8, document.north);
    PutF32(p + kEdgesAt + 12, document.east);
    PutI16(p + kProjectionAt, document.projection);
    PutI16(p + kProjectionAt + 2, kPrecision);
    for (std::size_t i = 0; i < document.hidden.size(); ++i) {
        PutI16(p + kHiddenAt + 2 * i, document.hidden[i]);
    }
    PutI16(p + kGridAt, document.gridOn);
    PutF32(p + kGridAt + 2, document.gridLatStep);
    PutF32(p + kGridAt + 6, document.gridLongStep);
    PutText(p + kCityFileAt, 8, document.cityFile);
    PutI16(p + kFillCountAt, static_cast<std::int16_t>(seeds.size()));

    for (std::size_t i = 0; i < seeds.size(); ++i) {
        std::uint8_t* fill = p + size + i * fillSize;
        PutF32(fill, static_cast<float>(seeds[i].place.y) / 60);
        PutF32(fill + 4, static_cast<float>(seeds[i].place.x) / 60);
        PutI32(fill + 8, -1);
    }
    return file;
}

}  // namespace orvantis::world

#include "world_map.h"

#include "map/map_document.h"

namespace orvantis::world {

namespace {

// Lines that deviate from the coast by at most 2 arc-minutes: a fifth of a pixel of a world map
// 1920 pixels wide, and still less than one after the user has zoomed in by five. Level 1 has more
// than twice the points and shows nothing more until then.
constexpr std::int16_t kPrecision = 2;

}  // namespace

Bytes MakeWorldMap(const std::vector<PlaceName>& seeds) {
    // Coasts, islands and countries are shown. Lakes are not: no seed lies in them, so that they
    // would stand there in the colour of the land.
    MapDocument document;
    document.precision = kPrecision;
    document.fillCount = static_cast<std::int16_t>(seeds.size());
    constexpr auto kHead = static_cast<std::size_t>(kMapDocumentSize);
    constexpr auto kFill = static_cast<std::size_t>(kFillRecordSize);
    Bytes file(kHead + seeds.size() * kFill);
    PutMapDocument(file.data(), document);
    for (std::size_t i = 0; i < seeds.size(); ++i) {
        const FillRecord fill{static_cast<float>(seeds[i].place.y) / 60,
                              static_cast<float>(seeds[i].place.x) / 60, -1};
        PutFillRecord(&file[kHead + i * kFill], fill);
    }
    return file;
}

}  // namespace orvantis::world

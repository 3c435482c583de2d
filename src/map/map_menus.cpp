#include "map/map_menus.h"

#include "map/map_document.h"
#include "text/numbers.h"

namespace orvantis {

MapMenus mapMenus;

namespace {

constexpr std::int16_t kCoarsest = 5;

}  // namespace

void RefreshMapMenus(std::int16_t docNumber) {
    const MapDocument& document = mapState.documents[static_cast<std::size_t>(docNumber)];
    mapMenus.precisionEntry = static_cast<std::int16_t>(kCoarsest - document.precision);
    mapMenus.projectionEntry = document.projection;
    mapMenus.previousView = mapState.viewTop > mapState.viewLowest;
    // A single fill is the last one: the other entry is there for it.
    mapMenus.removeAllFills = document.fillCount >= 2;
    mapMenus.removeLastFill = document.fillCount >= 1;
    if (refreshMapMenus != nullptr) refreshMapMenus(docNumber);
}

void OpenMapMenu() {
    RefreshMapMenus(mapState.current);
}

void SetPrecision(std::int16_t precision) {
    CurrentMap().precision = ClampInt(precision, 1, kCoarsest);
    RefreshMapMenus(mapState.current);
}

}  // namespace orvantis

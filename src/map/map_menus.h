// What the menu "&Map" shows of the current document and of the views: as data, which the window
// puts on its entries.
#pragma once

#include <cstdint>

namespace orvantis {

struct MapMenus {
    std::int16_t precisionEntry = 0;   ///< checked entry, 0 "&Very Coarse" to 4 "&Extra Fine"
    std::int16_t projectionEntry = 0;  ///< checked projection, 0 to 3
    bool previousView = false;         ///< "Previous &View" is enabled
    bool removeAllFills = false;       ///< "Remove &All Fills" is enabled
    bool removeLastFill = false;       ///< "Remove &Last Fill" is enabled
};

extern MapMenus mapMenus;

/// Puts the record in step with a document (0 to 6) and the views, then has it shown. Runs whenever
/// another document or view has become current, and when the menu is opened.
void RefreshMapMenus(std::int16_t docNumber);

/// The menu's opening: entries depend on fills that came and went since.
void OpenMapMenu();

/// From the next full plot on the current map comes from another level file, 1 (finest) to 5; any
/// other number is brought into that range.
void SetPrecision(std::int16_t precision);

}  // namespace orvantis

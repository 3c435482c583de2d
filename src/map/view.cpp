// The view set-up of a plot: what follows from the edges of the current document, and where the map
// lies on the surface.
#include <algorithm>
#include <cmath>

#include "map/plot.h"
#include "map/projection.h"
#include "map/view_edges.h"
#include "session/settings.h"
#include "session/tables.h"
#include "text/numbers.h"

namespace orvantis {

namespace {

constexpr std::int16_t kSunPoint = 3;  // whose glyph measures the frame
constexpr float kPrinterGlyphSize = 9;

std::int16_t Minutes(float degrees) {
    return RoundToInt16(static_cast<double>(degrees) * 60);
}

// Edges of a flat view of the same height and width in degrees: a quarter of the width to either
// side of the centre, moved to stay between the poles.
void LimitLatitudes(MapDocument& document, float centreLat, float quarter) {
    if (centreLat + quarter >= 90) centreLat = 90 - quarter;
    if (centreLat - quarter < -90) centreLat = -90 + quarter;
    document.south = centreLat - quarter;
    document.north = centreLat + quarter;
}

// The whole surface, or the page within its margins below the title.
MapRect StartRect(bool printing, DrawingSurface& picture) {
    const SurfaceSize size = picture.Size();
    MapRect rect;
    rect.width = RoundToInt16(size.width);
    rect.height = RoundToInt16(size.height);
    if (!printing) return rect;

    const int strip = RoundToInt16(size.height * 0.01);
    const int textHeight = picture.TextExtent("X").height;
    rect.width = RoundToInt16(size.width - 2 * strip);
    rect.height = RoundToInt16(size.height - 2 * strip - textHeight);
    rect.left = RoundToInt16(strip);
    rect.top = RoundToInt16(textHeight + strip);
    picture.Rectangle(rect.left, rect.top, rect.left + rect.width, rect.top + rect.height, {});
    return rect;
}

}  // namespace

void SetViewExtent() {
    const MapDocument& document = CurrentMap();
    ViewExtent& view = mapView.extent;
    view = {};
    view.projection = document.projection;
    // From the date line to the date line is the whole circle, whichever sign either edge has.
    const float east = document.east - document.west == -360 ? document.west : document.east;
    view.westDeg = document.west;
    view.eastDeg = east;
    view.southDeg = document.south;
    view.northDeg = document.north;

    const float middle = (document.west + east) / 2;
    view.centreLong = east > document.west ? middle : WrappedLong(middle + 180.0);
    view.centreLat = (document.north - document.south) / 2 + document.south;

    view.spanLong = east - document.west;
    if (view.spanLong == 0) view.spanLong = 360;
    if (view.spanLong < 0) view.spanLong += 360;
    view.spanLat = document.north - document.south;
    if (view.spanLat == 0) view.spanLat = 180;
    view.spanLongMin = Minutes(view.spanLong);
    view.spanLatMin = Minutes(view.spanLat);
    view.southMin = Minutes(document.south);
    view.northMin = Minutes(document.north);
    view.westMin = Minutes(document.west);
    view.eastMin = Minutes(east);
    view.offsetLongMin = Minutes(-document.west);
    view.offsetLatMin = Minutes(-document.north);

    if (document.projection == projection::kMercator) {
        view.mercNorth = static_cast<float>(MercatorY(document.north));
        view.mercSouth = static_cast<float>(MercatorY(document.south));
        view.mercSpan = view.mercNorth - view.mercSouth;
    }
    if (!IsFlat(document.projection)) {
        view.globeOffset = static_cast<float>((1 - SinD(90)) / 2);
        view.globeScale = static_cast<float>((1 - SinD(-90)) / 2) - view.globeOffset;
    }

    // A file's edges may be anything. More than once around the Earth is no view, and edges less
    // than half a minute apart, or below the South Pole on a Mercator map, leave nothing to divide
    // by.
    if (!(view.spanLong > 0 && view.spanLong <= 360)) RaiseRunTimeError(error::kOverflow);
    const bool noMercatorHeight =
        document.projection == projection::kMercator && view.mercSpan == 0;
    if (view.spanLongMin == 0 || view.spanLatMin == 0 || noMercatorHeight) {
        RaiseRunTimeError(error::kDivisionByZero);
    }
}

void SelectGlyphFont(bool printing) {
    // A settings file may hold any size, or no number; beyond these a glyph hides the map.
    const float size = settings.symbolSize >= 1 ? std::min(settings.symbolSize, 72.0F) : 1;
    mapView.surface->SelectFont({std::string(kGlyphFontName), printing ? kPrinterGlyphSize : size});
}

void SetMapRect(bool printing, DrawingSurface& picture) {
    mapView.surface = &picture;
    SelectGlyphFont(printing);
    MapRect rect = StartRect(printing, picture);

    const char glyph = PointGlyph(kSunPoint);
    const SurfaceSize extent = picture.TextExtent({&glyph, 1});
    mapView.glyphWidth = RoundToInt16(extent.width);
    mapView.glyphHeight = RoundToInt16(extent.height);

    // The frame in which curves that leave the map are marked.
    int vertical =
        printing ? mapView.glyphWidth * 2 + mapView.glyphHeight : mapView.glyphHeight * 2;
    int horizontal = printing ? mapView.glyphWidth * 3 : (mapView.glyphWidth + 1) * 2;
    if (options.extraAnnotation != kFalse) {
        vertical += mapView.glyphHeight + 1;
        horizontal += mapView.glyphWidth + 1;
    }
    // A surface too small for any map keeps one of a single pixel.
    rect.width = RoundToInt16(std::max(rect.width - 2 * horizontal - 1, 1));
    rect.height = RoundToInt16(std::max(rect.height - 2 * vertical + 2, 1));
    rect.left = RoundToInt16(rect.left + horizontal + 1);
    rect.top = RoundToInt16(rect.top + vertical - 1);
    mapView.rect = rect;
}

void OpenMapFrame() {
    MapRect& rect = mapView.rect;
    if (mapView.extent.projection == projection::kGlobeSphere) {
        if (rect.width <= rect.height) {
            rect.top = RoundToInt16(rect.top + RoundToInt16((rect.height - rect.width) / 2.0));
            rect.height = rect.width;
        } else {
            rect.left = RoundToInt16(rect.left + RoundToInt16((rect.width - rect.height) / 2.0));
            rect.width = rect.height;
        }
    }
    const int right = rect.left + rect.width + 1;
    const int bottom = rect.top + rect.height + 1;
    if (IsFlat(mapView.extent.projection)) {
        mapView.surface->Rectangle(rect.left, rect.top, right, bottom, {});
    } else {
        mapView.surface->Ellipse(rect.left, rect.top, right, bottom, {});
    }
}

void ClipToMap() {
    const MapRect& rect = mapView.rect;
    const int right = rect.left + rect.width;
    const int bottom = rect.top + rect.height;
    if (IsFlat(mapView.extent.projection)) {
        mapView.surface->ClipToRectangle(rect.left, rect.top, right, bottom);
    } else {
        // The very ellipse of the outline: between two of them the sea would leave a seam of land.
        mapView.surface->ClipToEllipse(rect.left, rect.top, right + 1, bottom + 1);
    }
}

void ChangeProjection(std::int16_t newProjection, std::int16_t oldProjection) {
    const bool toFlat = IsFlat(newProjection);
    const bool fromFlat = IsFlat(oldProjection);
    if (newProjection == oldProjection || (!toFlat && !fromFlat)) return;

    MapDocument& document = CurrentMap();
    const ViewExtent& view = mapView.extent;
    const float quarter = view.spanLong / 4;
    const float fullSouth = newProjection == projection::kMercator ? -65.0F : -90.0F;
    const float fullNorth = newProjection == projection::kMercator ? 75.0F : 90.0F;

    if (!toFlat) {
        // A globe keeps its centre alone: as both latitudes, and as the middle of half a turn.
        document.south = view.centreLat;
        document.north = view.centreLat;
        document.west = WrappedLong(view.centreLong - 90.0);
        document.east = WrappedLong(view.centreLong + 90.0);
    } else if (!fromFlat) {
        document.west = WrappedLong(view.centreLong - 180.0);
        document.east = WrappedLong(view.centreLong + 180.0);
        document.south = fullSouth;
        document.north = fullNorth;
    } else if (view.spanLong == 360) {
        document.south = fullSouth;
        document.north = fullNorth;
    } else {
        LimitLatitudes(document, view.centreLat, quarter);
    }
}

}  // namespace orvantis

#include "map/view_ring.h"

#include <cmath>

#include "map/map_menus.h"
#include "map/plot.h"
#include "map/projection.h"
#include "map/view_edges.h"
#include "map/zoom_seeds.h"
#include "session/session_state.h"
#include "session/settings.h"
#include "text/coordinates.h"
#include "text/numbers.h"
#include "text/strings.h"

namespace orvantis {

void (*plotQuick)() = nullptr;

namespace {

constexpr std::int16_t kViews = 5;
constexpr std::int16_t kMostViewsMade = 32767;

constexpr std::string_view kUnnamed = "Lat:";

// The view that is left keeps the bare map, or nothing, if its own plot was given up: what an
// earlier lap of the ring left there is no picture of it.
void KeepPicture() {
    Image& kept = mapState.viewImages[static_cast<std::size_t>(mapState.current)];
    if (options.storeImages != kFalse && session.StoredImage.width > 0) {
        kept = session.StoredImage;
    } else {
        kept = {};
    }
}

// Counts one more view. The counters are compared with each other alone, so they may start anew.
void CountView() {
    if (mapState.viewTop == kMostViewsMade) {
        mapState.viewTop = static_cast<std::int16_t>(mapState.viewTop - mapState.viewLowest + 1);
        mapState.viewLowest = 1;
    }
    ++mapState.viewTop;
    if (mapState.viewTop - mapState.viewLowest >= kViews) {
        mapState.viewLowest = static_cast<std::int16_t>(mapState.viewTop - (kViews - 1));
    }
}

bool FitsMapArea(const Image& image) {
    if (session.picture == nullptr) return false;
    const SurfaceSize size = session.picture->Size();
    return image.width > 0 && image.width == size.width && image.height == size.height;
}

void GoBack() {
    --mapState.viewTop;
    mapState.current = static_cast<std::int16_t>((mapState.current + kViews - 2) % kViews + 1);
    RefreshMapMenus(mapState.current);
    const Image& kept = mapState.viewImages[static_cast<std::size_t>(mapState.current)];
    if (options.storeImages != kFalse && FitsMapArea(kept)) {
        session.StoredImage = kept;
        if (plotQuick != nullptr) plotQuick();
    } else if (plotFull != nullptr) {
        plotFull();
    }
}

}  // namespace

std::string AreaTitle(const ViewEdges& edges) {
    return "Lat: " + LatTextOfDegrees(edges.south) + " to " + LatTextOfDegrees(edges.north) +
           "  Long: " + LongTextOfDegrees(edges.west) + " to " + LongTextOfDegrees(edges.east);
}

void PushView(const ViewEdges& edges, std::string_view title) {
    KeepPicture();
    const auto next = static_cast<std::int16_t>(mapState.current % kViews + 1);
    mapState.documents[static_cast<std::size_t>(next)] = CurrentMap();
    mapState.current = next;

    MapDocument& view = CurrentMap();
    view.south = edges.south;
    view.west = edges.west;
    view.north = edges.north;
    view.east = edges.east;
    if (view.title.starts_with(kUnnamed)) view.title = title;
    CountView();
    RefreshMapMenus(mapState.current);
    if (plotFull != nullptr) plotFull();
}

void PushMovedView(const ViewEdges& edges, std::string_view title) {
    if (session.picture != nullptr) SeaFromOverlap(*session.picture, edges);
    PushView(edges, title);
}

bool IsWholeWorld(const MapDocument& document) {
    if (!IsFlat(document.projection)) return true;
    const float width = document.east - document.west;
    if (width != 0 && std::abs(width) != 360)
        return false;  // either edge may be 180 of either sign
    if (document.projection == projection::kMercator) {
        return document.south <= kMercatorSouth && document.north >= kMercatorNorth;
    }
    return document.south <= -90 && document.north >= 90;
}

void PreviousView() {
    if (mapState.viewTop > mapState.viewLowest) {
        GoBack();
        return;
    }
    if (session.shell == nullptr) return;
    const std::string none = "There is no previous view to display.";
    if (IsWholeWorld(CurrentMap())) {
        session.shell->MessageBox(none, "Previous View", BoxButtons::Ok, BoxIcon::Information);
        return;
    }
    std::string question = none;
    question.append(kCrLf).append(kCrLf).append("Would you like to zoom out by a factor of 2?");
    if (session.shell->MessageBox(question, "Zoom Out?", BoxButtons::YesNo, BoxIcon::Question) ==
        BoxAnswer::Yes) {
        ZoomOut();
    }
}

void ZoomOut() {
    if (IsWholeWorld(CurrentMap())) return;
    SetViewExtent();
    RunTimeError failure;
    TakeRunTimeError(failure);  // edges that are no view are the plot's to tell
    const ViewExtent& view = mapView.extent;
    const double width = LargerWidth(view.spanLong * 2.0);
    const double height = LargerHeight(view.spanLat * 2.0);

    ViewEdges edges;
    edges.west = WrappedLong(view.centreLong - width / 2);
    edges.east = WrappedLong(view.centreLong + width / 2);
    if (height == 180 && view.projection == projection::kMercator) {
        edges.south = kMercatorSouth;
        edges.north = kMercatorNorth;
    } else {
        SetLatitudes(edges, view.centreLat, height, BandOf(view.projection));
    }
    PushMovedView(edges, AreaTitle(edges));
}

}  // namespace orvantis

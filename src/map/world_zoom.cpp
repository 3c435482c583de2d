#include "map/world_zoom.h"

#include <algorithm>

#include "map/map_document.h"
#include "map/plot.h"
#include "map/projection.h"
#include "map/view_edges.h"
#include "map/zoom_seeds.h"
#include "text/numbers.h"
#include "text/run_time_error.h"

namespace orvantis {

namespace {

// A zoom shows at least this part of the view before it in either direction, so that its frame is
// as long as one drawn by hand.
constexpr double kMostZoom = 6;

constexpr double kWorldWidth = 360;

struct Edges {
    double south = -90;
    double north = 90;
    double wide = kWorldWidth;  // about the meridian of the view that is wanted
};

// Shows a part of the world in the projection in which all of it can be shown.
void Show(const Edges& edges, double middle) {
    MapDocument& map = CurrentMap();
    map.projection = projection::kCartesian;
    map.south = static_cast<float>(edges.south);
    map.north = static_cast<float>(edges.north);
    map.west = WrappedLong(middle - edges.wide / 2);
    map.east = edges.wide < kWorldWidth ? WrappedLong(middle + edges.wide / 2) : map.west;
}

// One zoom towards the view that is wanted.
Edges Nearer(const Edges& from, const Edges& wanted) {
    const double centre = (wanted.south + wanted.north) / 2;
    const double half = (from.north - from.south) / kMostZoom / 2;
    return {std::max(std::min(wanted.south, centre - half), from.south),
            std::min(std::max(wanted.north, centre + half), from.north),
            std::max(wanted.wide, from.wide / kMostZoom)};
}

// The search on the frame of a zoom, while the view that it is drawn on is in force.
void SearchFrame(const Edges& from, const Edges& to, DrawingSurface& picture) {
    const MapRect rect = mapView.rect;
    const double across = rect.width * to.wide / from.wide / 2;
    const double middle = rect.left + rect.width / 2.0;
    const auto rowOf = [&](double lat) {
        return RoundToInt16(rect.top +
                            rect.height * (from.north - lat) / (from.north - from.south));
    };
    SeedsFromZoom(mapState.current, picture, RoundToInt16(middle - across), rowOf(to.north),
                  RoundToInt16(middle + across), rowOf(to.south));
}

}  // namespace

bool ZoomFromWorld(DrawingSurface& picture) {
    MapDocument& map = CurrentMap();
    SetViewExtent();
    RunTimeError failure;
    if (TakeRunTimeError(failure)) return true;  // edges that are no view are the plot's to tell
    const ViewExtent view = mapView.extent;
    const bool onEarth =
        view.southDeg >= -90 && view.northDeg <= 90 && view.southDeg < view.northDeg;
    if (!IsFlat(view.projection) || view.spanLong >= kWorldWidth || !onEarth) return true;

    const Edges wanted{view.southDeg, view.northDeg, view.spanLong};
    bool arrived = false;
    for (Edges shown; !arrived && !plotState.interrupted;) {
        Show(shown, view.centreLong);
        PlotMap4(kFalse, picture, kTrue);
        const Edges next = Nearer(shown, wanted);
        SearchFrame(shown, next, picture);
        shown = next;
        arrived =
            next.south == wanted.south && next.north == wanted.north && next.wide == wanted.wide;
    }
    map.projection = view.projection;
    map.south = view.southDeg;
    map.north = view.northDeg;
    map.west = view.westDeg;
    map.east = view.eastDeg;
    return !plotState.interrupted;
}

}  // namespace orvantis

// The ring of views. Records 1 to 5 of the map documents are the views in the order in which they
// were made; a sixth takes the place of the oldest. A view may keep its picture, so that going back
// to it costs a copy instead of a plot.
#pragma once

#include <string>
#include <string_view>

#include "map/map_document.h"

namespace orvantis {

/// Edges of a view, degrees, north and east positive; west above east crosses the date line.
struct ViewEdges {
    float south = -90;
    float west = -180;
    float north = 90;
    float east = 180;
};

/// The title of a view that has no name: "Lat: 90S00 to 90N00  Long: 180W00 to 180E00".
std::string AreaTitle(const ViewEdges& edges);

/// Makes a new view with these edges, otherwise like the current one, current, and plots it in
/// full. `title` takes the place of a title that begins with "Lat:"; any other title stays. With
/// options.storeImages on, the view that is left keeps its picture, which is the stored image,
/// unless its plot was given up after a failure.
void PushView(const ViewEdges& edges, std::string_view title);

/// PushView for a view that was moved or made larger: what the picture still shows of it tells
/// whether it lies in the sea (SeaFromOverlap).
void PushMovedView(const ViewEdges& edges, std::string_view title);

/// Goes back to the view before: with the picture that it kept, if that still fits the map area,
/// and otherwise with a full plot. Without a view to go back to asks whether to zoom out.
void PreviousView();

/// Pushes a view of twice the height and width about the same centre, or of the whole world. It is
/// moved to stay between the poles, in Mercator's projection in its band (BandOf). Does nothing on
/// a view that is the whole world.
void ZoomOut();

/// True if a document can't be zoomed out of: its view is the world, or the half of it that a globe
/// always shows.
bool IsWholeWorld(const MapDocument& document);

/// Connection point, may be empty: the quick pass that follows a picture put back.
extern void (*plotQuick)();

}  // namespace orvantis

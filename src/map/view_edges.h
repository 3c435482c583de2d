// Edges of new views, worked out from the view on display: of a box drawn on the map, of the view
// moved to another centre, and of the view scaled about a position. All of them read the view and
// the map rectangle that the last plot has set up.
#pragma once

#include "map/view_ring.h"

namespace orvantis {

/// Narrowest view that can be zoomed to, and the width from which on a view is none, degrees.
inline constexpr float kNarrowestView = 1;
inline constexpr float kWidestView = 240;

/// Lowest view, degrees: one less than this high rounds to none in whole minutes of arc.
inline constexpr double kLowestView = 2.0 / 60;

/// True if a position (pixels) lies on the map: within its rectangle, the edges included, or within
/// the outline of a globe.
bool IsOnMap(float x, float y);

/// Where a place (degrees) lies on a flat map, to fractions of a pixel: on the map or to the right
/// of its left edge by less than the whole circle, and above or below it.
void PlaceOnFlatMap(double lat, double longitude, double& x, double& y);

/// Edges of a box of the flat map, pixels; the box may reach beyond the map. The view is moved to
/// stay between the limits of its latitudes, and is at least two minutes of arc high.
ViewEdges EdgesOfBox(double left, double top, double right, double bottom);

/// Edges of the view moved so that its centre lies at a place; height and width stay. The view is
/// held between the poles, and in Mercator's projection, which would stretch the last degrees
/// without end, in the band of BandOf, or where it reaches already. On a globe the centre is all
/// that there is.
ViewEdges EdgesAbout(double lat, double longitude);

/// Edges of the flat view halved (`steps` above 0) or doubled in size so many times, with the place
/// at a position (pixels) staying there as far as the world's limits let it. Never narrower than 1
/// degree; a doubled width above 240 degrees becomes 360, a height above 120 becomes 180. False if
/// the view can't be changed in that direction, or is a globe.
bool ScaledEdges(double x, double y, int steps, ViewEdges& edges);

/// Latitudes that a view may reach.
struct LatBand {
    double lowest = -90;
    double highest = 90;
};

/// The band in which views of a flat projection are made. Towards a pole Mercator's projection
/// stretches so much that the last degrees would leave no room for the rest of the view.
LatBand BandOf(std::int16_t projectionNumber);

/// A longitude brought to -180 up to 180, degrees.
float WrappedLong(double longitude);

/// Width and height of a view that was made larger, degrees: above 240 wide it becomes the whole
/// circle, above 120 high the whole meridian.
double LargerWidth(double width);
double LargerHeight(double height);

/// Sets the latitudes half a height from the centre, moved together to stay in the band; those of
/// the band, if it is lower than that.
void SetLatitudes(ViewEdges& edges, double centre, double height, const LatBand& band = {});

/// Edges of the whole world in Mercator's projection, which has no place for the poles.
inline constexpr float kMercatorSouth = -65;
inline constexpr float kMercatorNorth = 75;

}  // namespace orvantis

// What the colours on the edge of a zoom rectangle say about the view that it becomes. The new view
// may have no seed of its own inside it; the colours that its frame met are carried over. A view
// that shares a part with the one before learns from the edge of that part whether it is sea.
#pragma once

#include <cstdint>

#include "map/view_ring.h"
#include "surface/drawing_surface.h"

namespace orvantis {

/// Reads the pixels of the four sides of a zoom rectangle on a picture, one pixel inside it, while
/// the view of the picture is still the one in force. Adds to document `docNumber` a fill for each
/// run of a colour that one of its fills has, its seed 0.0167 degrees into the rectangle from the
/// run's middle, and notes it in plotState.fillOtherColour; sea and bare land are only noted, in
/// fillSeaOnly and fillLand. All three are false first, and tell of the view plotted next alone.
/// Corners in pixels, left up to right and top up to bottom; a rectangle turned round is read as
/// its proper one.
void SeedsFromZoom(std::int16_t docNumber, DrawingSurface& picture, std::int16_t left,
                   std::int16_t top, std::int16_t right, std::int16_t bottom);

/// The same search for a view that was moved or made larger, on the frame of what the picture shows
/// of it: a view without any line is of one kind throughout, so that sea there is sea everywhere.
/// Adds no fills, and where a sea fill of the map has its seed in the new view none is added later.
/// The flags then tell of the new view, no longer of the one that is left. Where bare land was met
/// too, or in its stead, the sea counts for nothing. Where no side of the view lies on the picture,
/// fillLand is set: the frame may as well be land. Does nothing, and leaves the flags to the view
/// that they tell of, on a globe, if the picture shows less than 4 pixels of the new view's height
/// or width, or if the last plot was given up.
void SeaFromOverlap(DrawingSurface& picture, const ViewEdges& edges);

}  // namespace orvantis

// The sea along the edges of a zoomed flat map. Its seeds may all lie outside the view; but where a
// coast crosses the edge, the direction of the crossing tells on which side of it the sea lies,
// since every coast has land on its left.
#pragma once

namespace orvantis {

/// Floods each stretch of the map's edges that the crossings of the plot (plotState.crossings) show
/// to be sea. Works on the line one pixel inside the map's edge, on which the crossings lie. A side
/// whose crossings contradict each other is left as it is, and so are stretches of less than 4
/// pixels. So is a side without crossings, and one whose crossings have all cancelled in pairs: one
/// that goes in and one that goes out at the same position may be a tip of land or of a bay, so
/// nothing tells of which kind the rest of the side is. Where a side and its neighbours disagree on
/// the kind of their common corners, the side is filled only if one neighbour at least agrees with
/// it. No flood starts within a pixel of another side's crossing, as there may be in a corner. For
/// flat views narrower than the world.
void FillEdgeSea();

/// True if no crossing is left on any side once those at one position have cancelled in pairs: then
/// no coast passes through the edge, and all of it is of one kind.
bool CrossingsCancel();

}  // namespace orvantis

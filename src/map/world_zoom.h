// How a view that was not zoomed to gets the sea of one that was.
#pragma once

#include "surface/drawing_surface.h"

namespace orvantis {

/// Gives the current document's view, a flat one narrower than the world, what zooms from the world
/// to it would have found: plots the world around the view's meridian and the views between on
/// `picture`, whose pixels are lost, and searches the frame of each for colours. The document
/// has its edges and its projection again afterwards, and the fills that the frames met besides its
/// own. Any other view is left alone. The chart's lines would be searched with the map; call it
/// before there are any. False if a plot was given up after a failure.
bool ZoomFromWorld(DrawingSurface& picture);

}  // namespace orvantis

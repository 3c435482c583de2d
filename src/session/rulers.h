// The rulers of the mouse: a meridian or a parallel that is pulled off a line of the grid, or off
// the map's own edge, and laid down somewhere else. On flat maps.
#pragma once

#include <string>
#include <vector>

#include "session/mouse_modes.h"
#include "surface/values.h"

namespace orvantis {

/// Seizes the line of the grid nearest to a position (pixels), if one is close.
void SeizeRuler(float x, float y);

/// Moves the ruler that was seized to where the pointer has gone; it stays on the map.
void MoveRuler(float x, float y);

/// Leaves the ruler where it is, until the next plot of the screen. One that has not been moved
/// goes: a click near a line places none.
void PlaceRuler();

/// Coordinate of the ruler that is being moved, such as "12N30".
std::string RulerText();

/// The rulers, placed and moving, as figures.
std::vector<OverlayFigure> RulerFigures();

/// Draws the same figures onto an image of the whole picture: white, and dotted black over it.
void DrawRulersOn(Image& image);

}  // namespace orvantis

// What all lines on the map have in common when they are drawn.
#pragma once

#include <cstdint>
#include <vector>

#include "lines/chart_lines.h"
#include "lines/line_geometry.h"

namespace orvantis {

/// True if lines of a type are shown.
bool IsLineTypeOn(std::int16_t type);

/// Pen of a line type for a point, 1 to 72: in the point's colour or in the type's.
void SetLinePen(std::int16_t type, std::int16_t point);

/// Pen of a line type that belongs to no point.
void SetLinePen(std::int16_t type);

/// True if a longitude, or a position, in degrees lies in view. All do on a map of the whole world.
bool IsLongitudeShown(double longitude);
bool IsPositionShown(double lat, double longitude);

/// True if some part of a meridian lies in view: a tilted globe shows a part of each, over its
/// pole.
bool IsMeridianShown(double longitude);

/// Draws a great circle through positions; its marks in the frame have `kind`, and it is of a line
/// type.
void DrawSamples(const std::vector<LinePosition>& samples, std::int16_t kind, std::int16_t type);

/// Puts a point's label on the map at a position in degrees.
void LabelPoint(double lat, double longitude, std::int16_t point, LabelPlace place);

}  // namespace orvantis

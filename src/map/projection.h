// The view: from the edges of the current map document to positions on the surface and back, and
// the one primitive by which every curve is drawn on the map.
//
// Sign and range, once for all: latitudes are north positive, longitudes east positive; degrees
// run in -90 to 90 and -180 to 180, whole arc-minutes in -5400 to 5400 and -10800 to 10800. Pixels
// run to the right and down. A value that doesn't fit 16 bits leaves the run-time error "Overflow"
// for the plot's handler.
#pragma once

#include <cstdint>
#include <vector>

#include "map/map_document.h"
#include "surface/drawing_surface.h"
#include "surface/values.h"

namespace orvantis {

/// Where the map lies on the surface, pixels. The map's own pixels are left to left + width.
struct MapRect {
    std::int16_t left = 0;
    std::int16_t top = 0;
    std::int16_t width = 0;
    std::int16_t height = 0;
};

/// What is derived from the edges of the current document at the start of every plot.
struct ViewExtent {
    std::int16_t projection = 0;  ///< of the document
    float centreLat = 0;
    float centreLong = 0;
    float westDeg = -180;
    float eastDeg = 180;
    float southDeg = -90;
    float northDeg = 90;
    float spanLong = 360;  ///< degrees; above 0, up to 360
    float spanLat = 180;   ///< degrees; 180 where south equals north
    std::int16_t spanLongMin = 21600;
    std::int16_t spanLatMin = 10800;
    std::int16_t southMin = -5400;
    std::int16_t northMin = 5400;
    std::int16_t westMin = -10800;
    std::int16_t eastMin = 10800;
    std::int16_t offsetLongMin = 10800;  ///< minus the western edge
    std::int16_t offsetLatMin = -5400;   ///< minus the northern edge
    float mercNorth = 0;                 ///< Mercator alone
    float mercSouth = 0;
    float mercSpan = 0;
    float globeOffset = 0;  ///< globes alone: 0
    float globeScale = 1;   ///< globes alone: 1
};

/// Sides of the map rectangle; 0 is none.
namespace side {
inline constexpr std::int16_t kNone = 0;
inline constexpr std::int16_t kLeft = 1;
inline constexpr std::int16_t kRight = 2;
inline constexpr std::int16_t kTop = 3;
inline constexpr std::int16_t kBottom = 4;
}  // namespace side

/// A mark in the frame around the map, where a curve crosses the map's edge.
struct EdgeMark {
    std::int16_t x = 0;
    std::int16_t y = 0;
    std::int16_t side = 0;  ///< see namespace side
    std::int16_t kind = 0;  ///< point number, plus 100 times a relation; or a character, or a sign
    std::int16_t type = 0;  ///< line type, 1 to 14
};

/// The view in force and the state of the curve being drawn.
struct MapView {
    DrawingSurface* surface = nullptr;  ///< what is drawn on; set for the length of a plot, and by
                                        ///< SetMapRect
    MapRect rect;
    ViewExtent extent;
    std::int16_t glyphWidth = 0;  ///< of the Sun's glyph, pixels
    std::int16_t glyphHeight = 0;
    std::vector<EdgeMark> edgeMarks;  ///< emptied as the lines of a chart or eclipse begin
    double previousLat = 0;           ///< previous sample of DrawMapSegment
    double previousLong = 0;
    std::int16_t lastX = 0;  ///< its position
    std::int16_t lastY = 0;
};

extern MapView mapView;

/// Natural logarithm of tan(lat / 2 + 45 degrees); -10 where the tangent isn't above 0.
double MercatorY(double lat);

/// True for the two flat projections.
inline bool IsFlat(std::int16_t projectionNumber) {
    return projectionNumber < 2;
}

/// Computes ViewExtent from the current document. Leaves a run-time error if there is no such view:
/// "Overflow" where a value doesn't fit its field or the width isn't above 0 and up to 360 degrees,
/// "Division by zero" where the map has no width or no height.
void SetViewExtent();

/// Computes MapRect for a surface: what is left of it within the frame for edge marks; at least one
/// pixel. Makes the picture the surface that is drawn on, selects the glyph font and measures it.
void SetMapRect(bool printing, DrawingSurface& picture);

/// Selects the glyph font on the plot's surface: at the size of the settings, or of a printed page.
void SelectGlyphFont(bool printing);

/// Squares MapRect for the sphere and draws the map's outline with the surface's pen. The outline
/// of a flat map lies on the columns left and left + width and the rows top and top + height.
void OpenMapFrame();

/// Sets the clip to the map.
void ClipToMap();

/// Whole arc-minutes to pixels. On a flat map narrower than the world a point up to 60 degrees west
/// of the view, or half of what the view leaves out if that is less, lies to the left of the map
/// and any other one outside to the right, and a position far off is held within 32000 pixels. On a
/// full-width map every longitude falls within the map, 180 east on the left edge of one that
/// begins at 180 west. On a globe a point of the far side lands on the near one: ask PointInView
/// first.
void ProjectPoint(std::int16_t latMin, std::int16_t longMin, std::int16_t& y, std::int16_t& x);

/// The same on a flat map, where each depends on one of the two alone.
std::int16_t FlatY(std::int16_t latMin);
std::int16_t FlatX(std::int16_t longMin);

/// A position in whole arc-minutes, and one on the surface.
struct MapPoint {
    std::int16_t lat = 0;
    std::int16_t longitude = 0;
};
struct MapPixel {
    std::int16_t x = 0;
    std::int16_t y = 0;
};

/// Sine of an angle of -32768 to 43567 arc-minutes, from a table.
double SineOfMinutes(int minutes);

/// ProjectPoint of many points, which on a globe takes a fraction of the time of as many calls.
void ProjectPoints(const std::vector<MapPoint>& points, std::vector<MapPixel>& pixels);

/// Pixels to degrees.
void UnprojectPoint(const MapDocument& doc, float x, float y, float& lat, float& longitude);

/// True if a position (degrees) is in view. Edges in arc-minutes. On a flat map the position must
/// lie strictly between them, the longitude rounded to whole arc-minutes; equal western and eastern
/// edges take in every longitude, and a western edge above the eastern one is a view over the date
/// line. On a globe the edges don't count: the position is less than 90 degrees from the centre, or
/// its very antipode, which AngularDistance takes for the centre.
bool PointInView(double lat, double longitude, std::int16_t southMin, std::int16_t northMin,
                 std::int16_t westMin, std::int16_t eastMin);

/// True on the side of a globe that is seen, by the view in use: where PointInView is true but for
/// the antipode, through which a curve would leap to the middle of the map.
bool OnNearSide(double lat, double longitude);
bool LongInView(double longitude, std::int16_t westMin, std::int16_t eastMin);

/// The point at (longitude, latitude) in coordinates rotated about the x axis by a tilt: ecliptic
/// to equatorial with the tilt as obliquity. Degrees; `a` in 0 to 360, `d` in -90 to 90.
void RotateCoords(double longitude, double latitude, double sinTilt, double cosTilt, double& a,
                  double& d);

/// Rewrites the edges of the current document for another projection.
void ChangeProjection(std::int16_t newProjection, std::int16_t oldProjection);

/// Where the segment from (x0, y0) to (x1, y1) crosses the edge of the map.
struct EdgeCrossing {
    std::int16_t side = 0;  ///< 0: it doesn't
    std::int16_t x = 0;
    std::int16_t y = 0;
    bool startInside = false;  ///< of the inset search alone: the start was the inside end
};

/// The crossing with the map's edge, by the rule of the projection.
EdgeCrossing FindEdgeCrossing(std::int16_t x0, std::int16_t y0, std::int16_t x1, std::int16_t y1);

/// The same for the vectors, which also tells whether the start was the inside end. On a flat map
/// the crossing lies on the line one pixel inside the edge, and strictly between the edges at its
/// ends. A segment with one end strictly inside the map always has one.
EdgeCrossing FindInsetCrossing(std::int16_t x0, std::int16_t y0, std::int16_t x1, std::int16_t y1);

/// No edge marks are wanted.
inline constexpr std::int16_t kNoMark = -1;

/// Draws a curve through one more sample (degrees). `first` is true for a curve's first sample;
/// `visible` is the caller's, false before the first sample. `labelKind` (0 or more) and
/// `labelCode` (line type, 1 or more) ask for an edge mark where the curve crosses the map's edge.
void DrawMapSegment(double lat, double longitude, bool first, bool& visible, std::int16_t labelKind,
                    std::int16_t labelCode);

/// The same for a great circle, whose samples lie at most 2 degrees apart. Where two samples in a
/// row are outside a flat map's view but the arc between them may cross it, positions of the arc
/// are drawn in between, down to half an arc-minute apart: a narrow view may fit between two
/// samples. Returns true if any of this arc's positions is in view.
bool DrawGreatCircleSegment(double lat, double longitude, bool first, bool& visible,
                            std::int16_t labelKind, std::int16_t labelCode);

/// Full-width views: draws from the last point out at one side of the map and in at the other, to
/// (x, y). The pen must stand at the last point.
void ForceNewLine(std::int16_t x, std::int16_t y, std::int16_t lastX, std::int16_t lastY,
                  std::int16_t labelKind, std::int16_t labelCode);

/// Pixels once around the Earth on a flat map that doesn't show all of it; 0 on any other map, and
/// in a zoomed view, where they would be beyond what a position can be.
int PixelsAround();

/// How far a line goes out of the map at one side before it comes in at the other, pixels.
struct WayAround {
    std::int16_t outX = 0;  ///< where the end lies as seen from the start
    std::int16_t inX = 0;   ///< where the start lies as seen from the end
};

/// For a map with PixelsAround: draws from the last point, where the pen must stand, to (x, y) by
/// the back of the world, out at one side of the map and in at the other.
WayAround DrawAround(std::int16_t x, std::int16_t y, std::int16_t lastX, std::int16_t lastY);

/// At which ends a grid line asks for edge marks. A line that is drawn as a curve, on a tilted
/// globe, has them wherever it comes into view or goes, if any are asked for; an upright globe has
/// none.
enum class MarkEnds { None, First, Second, Both };

/// A whole meridian at a longitude in degrees; the first end is the top of the map.
void DrawMeridian(double longitude, std::int16_t labelKind, std::int16_t labelCode, MarkEnds ends);

/// A whole parallel at a latitude in degrees; the first end is the left of the map.
void DrawParallel(double lat, std::int16_t labelKind, std::int16_t labelCode, MarkEnds ends);

/// The coordinate grid of the current document, if it is on: multiples of its steps.
void DrawGrid();

}  // namespace orvantis

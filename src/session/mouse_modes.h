// What the mouse and the keys do on the map, without a window: the six modes from button down to
// button up, the report of the position, the wheel. The window hands events over and paints the
// overlay.
//
// Positions are pixels of the picture, in the view that the last plot has set up. Before the first
// picture stands, and while a plot runs, events do nothing. A position off the map gives no action.
//
// Where a mode has a choice:
// - The zoom rectangle keeps the map's proportions, and so is no larger than the room between its
//   start and the map's edge allows: it shrinks there, it doesn't move. One without a width counts
//   as too narrow. On a globe, which always shows its half of the world, its middle comes to the
//   front.
// - A drag beyond a flat map is held at its edge; beyond the edge of a globe it stays where it was.
// - A move on a Mercator map keeps the height in degrees, so the picture is stretched anew and what
//   was under the pointer is there only nearly; longitudes are exact.
// - A fill is made at once on a bare map. The grid would bound it, as lines and names do: with a
//   grid the map is drawn anew, without a question. So it is after a plot that was given up. One
//   that the full list of fills has no room for isn't made.
// - A ruler is pulled off a line of the grid, where that is shown. On a globe there are none.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "surface/values.h"

namespace orvantis {

namespace mouse_mode {
inline constexpr std::int16_t kMeasure = 0;
inline constexpr std::int16_t kZoom = 1;
inline constexpr std::int16_t kMove = 2;
inline constexpr std::int16_t kRelocate = 3;
inline constexpr std::int16_t kFill = 4;
inline constexpr std::int16_t kRuler = 5;
inline constexpr std::int16_t kModes = 6;
}  // namespace mouse_mode

/// Which line of the grid a ruler was pulled from.
namespace ruler_kind {
inline constexpr std::int16_t kNone = 0;
inline constexpr std::int16_t kMeridian = 1;
inline constexpr std::int16_t kParallel = 2;
}  // namespace ruler_kind

/// A figure that lies over the map. The window paints it above the picture, which stays as it is:
/// taking a figure away costs nothing. All lines are one pixel wide, ends included.
struct OverlayFigure {
    enum class Kind {
        InvertedLine,   ///< a line that inverts what lies beneath
        Cross,          ///< a plus of 10 pixels each way around x0, y0, white, inverting
        ZoomRectangle,  ///< white, and over it dotted black, so that it shows on any background
        RulerLine,      ///< a line of a ruler: white, and over it dotted black
        MovedMap        ///< the map itself is shown moved by x1 - x0 and y1 - y0
    };
    Kind kind = Kind::InvertedLine;
    int x0 = 0;  ///< pixels of the picture
    int y0 = 0;
    int x1 = 0;
    int y1 = 0;

    bool operator==(const OverlayFigure&) const = default;
};

/// A ruler that has been placed.
struct RulerMark {
    std::int16_t kind = ruler_kind::kNone;
    std::int16_t position = 0;  ///< its column or row, pixels
    float degrees = 0;          ///< longitude of a meridian, east positive; latitude of a parallel
};

struct MouseState {
    std::int16_t mode = mouse_mode::kMeasure;
    Flag dragMark = kFalse;  ///< a button is down, in whatever mode and wherever on the picture;
                             ///< the clock's timer then waits
    float dragStartX = -1;   ///< pixels of the picture; -1: no drag is under way
    float dragStartY = 0;
    float dragEndX = 0;  ///< the last position drawn: of a zoom rectangle, its corner
    float dragEndY = 0;
    std::int32_t dragPlot = 0;  ///< number of the plot on whose picture it began
    float pointerX = 0;  ///< where the pointer itself was last during the drag, held on the map
    float pointerY = 0;
    Flag rulerActive = kFalse;                   ///< mode 5: a ruler drag is in progress
    std::int16_t rulerKind = ruler_kind::kNone;  ///< mode 5: which line of the grid was seized
    std::int16_t rulerLast = 0;                  ///< mode 5: the last column or row, pixels
    Flag rulerMoved = kFalse;                    ///< mode 5: it has been pulled since it was seized
    float clickX = -1;  ///< where the last click was, pixels; -1: none on the map
    float clickY = 0;
    float clickLat = 0;  ///< the place there, degrees, north and east positive
    float clickLong = 0;
    std::int32_t clickPlot = 0;       ///< number of the plot on whose picture it was
    Flag seaFill = kTrue;             ///< mode 4 fills with the sea colour,
    Colour specialColour = 0xFFFFFF;  ///< otherwise with this one
    std::string positionText;         ///< what the position field shows
    std::vector<OverlayFigure> drag;  ///< figures of the drag under way
    std::vector<RulerMark> rulers;    ///< rulers on the picture of plot number
    std::int32_t rulersPlot = 0;      ///< rulersPlot; the next plot takes them away
};

extern MouseState mouseState;

/// Makes a mode (0 to 5; another number does nothing) the current one: a drag is given up, the
/// pointer, menu and ribbon follow, and the overlay is repainted.
void SetMouseMode(std::int16_t mode);

/// Menu caption of a mode, 0 to 5.
std::string_view MouseModeCaption(std::int16_t mode);

/// Events of the map area. `leftHeld` and `rightHeld` tell the buttons during a move.
void MouseDown(float x, float y, bool right);
void MouseMove(float x, float y, bool leftHeld, bool rightHeld);
void MouseUp(float x, float y, bool right);
void MouseLeave();

/// Names the lines at the place that was clicked last, wherever the map shows it by now: through
/// identifyLine, and until there is one in a box.
void MouseDoubleClick(float x, float y);

/// Esc: a drag in progress is given up.
void CancelDrag();

/// True while a drag draws its figure. The clock looks at mouseState.dragMark.
bool DragInProgress();

/// PageUp: zooms out, in the zoom mode on a Cartesian map. Nothing during a drag.
void PageUpKey();

/// An arrow key: moves the pointer by 1 pixel of the picture, or by 10 with Shift, in a direction
/// of -1, 0 or 1.
void ArrowKey(int directionX, int directionY, bool shift);

/// Wheel: zooms in (steps above 0) or out about a position by a factor of 2 a step, through the
/// ring of views.
void WheelZoom(float x, float y, int steps);

/// Ascendant and Midheaven that a place (degrees, north and east positive) would have for the chart
/// on display: "MC=03Le30 Asc=29Li15". "" without a chart.
std::string DisplayAscMC(float lat, float longitude);

/// Names of the lines near a position, one a line; "" none. What the window shows where the pointer
/// rests.
std::string LinesNear(float x, float y);

/// All figures that lie over the map now: the rulers, with a mark at each interval of the grid, and
/// the drag.
std::vector<OverlayFigure> Overlay();

/// Draws the rulers on a page, as meridians and parallels. On the screen they lie over the picture.
void DrawMouseMarks();

/// Connection point: the window repaints the overlay and shows position text and mode.
extern void (*refreshOverlay)();

/// Connection point: names the lines near a position of the map, with their interpretation.
extern void (*identifyLine)(float x, float y);

/// Connection point: relocates the chart on display to a place (degrees, north and east positive),
/// under the place name "Relocated". Empty: charts can't be relocated yet, the mode's entry and
/// button are disabled, and a click in the mode does nothing.
extern void (*relocateChart)(double lat, double longitude);

/// Connection point: moves the pointer by so many pixels of the picture. Where the desktop counts
/// in larger ones, to the nearest of those, and by one at the least.
extern void (*movePointer)(int dx, int dy);

}  // namespace orvantis

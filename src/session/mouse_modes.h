// What the mouse and the keys do on the map, without a window: the six modes from button down to
// button up, and the report of the position. The window hands events over and paints the overlay.
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

/// A rubber figure that lies over the map while a drag is under way. The window paints it above the
/// picture, which stays as it is: taking a figure away costs nothing.
struct OverlayFigure {
    enum class Kind {
        InvertedLine,   ///< a line that inverts what lies beneath
        Cross,          ///< a plus of 10 pixels each way, white, inverting
        ZoomRectangle,  ///< white, and over it dotted black, so that it shows on any background
        RulerLine       ///< the line of the ruler
    };
    Kind kind = Kind::InvertedLine;
    int x0 = 0;  ///< pixels of the picture
    int y0 = 0;
    int x1 = 0;
    int y1 = 0;
};

struct MouseState {
    std::int16_t mode = mouse_mode::kMeasure;
    float dragStartX = -1;  ///< pixels of the picture; -1: no drag is under way
    float dragStartY = 0;
    float dragEndX = 0;  ///< the last position drawn
    float dragEndY = 0;
    Flag rulerActive = kFalse;   ///< mode 5: a ruler drag is in progress
    std::int16_t rulerKind = 0;  ///< mode 5: which line of the grid was seized
    std::int16_t rulerLast = 0;  ///< mode 5: the last position
    float lastClickX = 0;        ///< where the last click was, for the line identification
    float lastClickY = 0;
    std::string positionText;            ///< what the position field shows
    std::vector<OverlayFigure> overlay;  ///< what lies over the map now
};

extern MouseState mouseState;

/// Makes a mode the current one: pointer, menu and ribbon follow, and the overlay is repainted.
void SetMouseMode(std::int16_t mode);

/// Menu caption of a mode, 0 to 5.
std::string_view MouseModeCaption(std::int16_t mode);

/// Events of the map area. Positions in pixels of the picture. `leftHeld` and `rightHeld` tell the
/// buttons during a move.
void MouseDown(float x, float y, bool right);
void MouseMove(float x, float y, bool leftHeld, bool rightHeld);
void MouseUp(float x, float y, bool right);
void MouseDoubleClick(float x, float y);
void MouseLeave();

/// Esc: a drag in progress is given up.
void CancelDrag();

/// PageUp: zooms out, in the zoom mode on a Cartesian map.
void PageUpKey();

/// Wheel: zooms in (steps above 0) or out about a position, through the ring of views.
void WheelZoom(float x, float y, int steps);

/// Names of the lines near a position, one a line; "" none. What the window shows where the pointer
/// rests.
std::string LinesNear(float x, float y);

/// Connection point: the window repaints the overlay and shows position text and mode.
extern void (*refreshOverlay)();

/// Connection point: names the line near a double click, with its interpretation.
extern void (*identifyLine)(float x, float y);

/// Connection point: relocates the chart on display to a place (degrees, north and east positive).
extern void (*relocateChart)(double lat, double longitude);

}  // namespace orvantis

// Whole great circles that belong to a chart rather than to one of its points: the ecliptic, the
// horizon of its place, the boundaries of the signs, and the night side of the Earth.
#pragma once

#include <array>
#include <cstdint>
#include <vector>

#include "lines/line_geometry.h"
#include "surface/drawing_surface.h"
#include "surface/values.h"

namespace orvantis {

/// The ecliptic: the equator in the geodetic zodiac.
HorizonCircle EclipticCircle(const LineFrame& frame);

/// The horizon of the chart's place.
HorizonCircle PlaceHorizon(const LineFrame& frame);

/// The circle on which the Sun rises and sets.
HorizonCircle NightCircle(const LineFrame& frame);

/// A boundary of signs: half a great circle from one pole of the ecliptic to the other, or a
/// meridian.
struct SignLine {
    std::int16_t sign = 0;      ///< the sign that begins here, 1 to 12
    double bearing = 0;         ///< at the north pole of the ecliptic, degrees, WEST positive
    bool isMeridian = false;    ///< a whole meridian is drawn; in the geodetic zodiac for all
    double longitude = 0;       ///< of the meridian, degrees, east positive
    std::int16_t opposite = 0;  ///< the sign that has the meridian's greater part, where the line
                                ///< turns over a pole of the Earth to the other side; 0: the line
                                ///< is the meridian
};

/// The twelve boundaries, in the order in which they are drawn.
std::array<SignLine, 12> SignLines(const LineFrame& frame);

/// Positions of a boundary that is no meridian: every 2 degrees from pole to pole of the ecliptic.
std::vector<LinePosition> SignSamples(const LineFrame& frame, const SignLine& line);

/// Draws a whole circle of a type in that type's colour, with a character as its mark. Tilt against
/// the equator and longitude of the sample on it, degrees, as in HorizonCircle.
void PlotGreatCircle(char labelChar, std::int16_t type, double tilt, double node);

/// Draws a part of a circle, between whole degrees of its parameter, with the surface's pen and
/// without marks. For the map's own use: nothing calls it yet.
void PlotGreatArc(double tilt, double node, std::int16_t from, std::int16_t to);

/// Draws the boundaries of the signs, if they are on.
void PlotSignLines(Flag printing, std::int16_t slot);

/// Draws ecliptic, signs and horizon, those that are on.
void PlotCircles(Flag printing, std::int16_t slot);

/// True if the night side can be shown: on a flat map of the whole world.
bool CanShadeNight();

/// The outline of the night side on the map, at most 190 points: the circle on which the Sun rises
/// and sets, closed along the edge at the pole that has no Sun.
std::vector<SurfacePoint> NightPolygon(const LineFrame& frame);

/// Shades the night side of the chart in slot 1, if the options say so and the map can show it.
void PlotNightSide(Flag printing, std::int16_t slot);

}  // namespace orvantis

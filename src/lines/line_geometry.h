// The geometry of a chart's lines, free of any map: closed formulas, evaluated at fixed steps. The
// drawing, the exports and the tests all take their positions from here.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

#include "surface/values.h"

namespace orvantis {

/// What the lines of one chart have in common.
struct LineFrame {
    std::int16_t slot = 1;
    double obliquity = 0;    ///< degrees, of date
    double offset = 0;       ///< zodiac offset, degrees
    double placeLongW = 0;   ///< the chart's place, degrees, WEST positive
    double placeLat = 0;     ///< degrees, north positive
    double midheavenRA = 0;  ///< stored right ascension of the Midheaven, degrees
};

/// The frame of the chart in a slot.
LineFrame MakeLineFrame(std::int16_t slot);

/// True if a point (1 to 72) has a position and is selected.
bool IsPointDrawn(std::int16_t slot, std::int16_t point);

/// Right ascension and declination in degrees of the point of the ecliptic at the longitude of a
/// point: its ecliptic latitude is left out.
void EclipticForm(const LineFrame& frame, std::int16_t point, double& ra, double& dec);

/// Longitude, -180 to 180, east positive, of the meridian on which a point culminates (type 1) or
/// anticulminates (type 2), by the line mode and map zodiac of the options.
double MeridianLineLongitude(const LineFrame& frame, std::int16_t point, std::int16_t type);

/// A great circle: 90 degrees from the place where a point is overhead.
struct HorizonCircle {
    double tilt = 0;      ///< polar distance term, degrees: declination less 90
    double node = 0;      ///< longitude of the sample u = 0 on the equator, degrees, east positive
    double sineTilt = 0;  ///< of the tilt, kept for the samples
    double cosineTilt = 1;
};

HorizonCircle MakeCircle(double tilt, double node);

/// The circle on which a point rises (type 3, u from -90 to 90) and sets (type 4, u from 90 to
/// 270).
HorizonCircle RiseSetCircle(const LineFrame& frame, std::int16_t point);

/// The first whole degree of a line type's parameter; the line runs 180 degrees on in steps of 2.
/// Type 3: -90, type 4: 90.
std::int16_t RiseSetStart(std::int16_t type);
inline constexpr std::int16_t kRiseSetSpan = 180;
inline constexpr std::int16_t kSampleStep = 2;

/// Position on a circle at a whole degree u (-360 to 720). Degrees; longitude -180 to 180.
void CircleSample(const HorizonCircle& circle, std::int16_t u, double& lat, double& longitude);

/// True if a rise or set line is drawn for the point: every point but the South Node, which shares
/// the North Node's horizon.
bool HasRiseSetLine(std::int16_t point);

/// One position of a line, degrees, north and east positive.
struct LinePosition {
    double lat = 0;
    double longitude = 0;
};

/// Positions of a circle, every 2 degrees of its parameter, from a quarter of them: the rest mirror
/// these, at u, 180 - u, 180 + u and -u. `longitude` is counted from the circle's node.
struct CircleQuarter {
    double node = 0;                                      ///< degrees, -180 to 180
    std::array<LinePosition, 90 / kSampleStep + 1> at{};  ///< of u = 0, 2 to 90
};

CircleQuarter QuarterOf(const HorizonCircle& circle);

/// Positions from one even degree of the parameter to another (-360 to 720). Longitude -180 to 180.
/// A circle over the poles has two positions for each pole on its way, the same but for their
/// longitudes: those of the meridian by which it comes and of the one by which it goes on. As first
/// or last position a pole has the longitude of the one beside it.
std::vector<LinePosition> CircleSamples(const CircleQuarter& quarter, std::int16_t from,
                                        std::int16_t to);

/// The great circle that leaves a place in a direction, as two unit vectors at right angles: to the
/// place and to the position 90 degrees on. x points to the place's meridian on the equator, y to
/// the east, z to the north pole.
struct GreatCircle {
    double startX = 1;
    double startZ = 0;
    double onX = 0;
    double onY = 0;
    double onZ = 1;
};

/// The circle from a place at a latitude in a direction: degrees, 0 north, 90 WEST.
GreatCircle MakeGreatCircle(double bearing, double startLat);

/// Due east and due west are moved by 0.01 degrees: so houses and signs have always been drawn.
double NudgedBearing(double bearing);

/// Positions every 2 degrees from a place (longitude east positive) up to `extent` degrees off, 0
/// to 360. Poles as in CircleSamples.
std::vector<LinePosition> GreatCircleSamples(double bearing, double startLat, double longitude,
                                             std::int16_t extent);

/// True if two neighbours on a line are the same pole: there it turns from a meridian to the one
/// opposite, which on the globe is no way at all and on a flat map lies in the map's edge.
bool IsTurnAtPole(const LinePosition& before, const LinePosition& after);

/// Positions one after the other that don't cross the antimeridian.
using LineRun = std::span<const LinePosition>;

/// A whole line as such runs, all in one list: a line is one piece of memory, cut or not.
struct LineParts {
    std::vector<LinePosition> positions;  ///< of all runs
    std::vector<std::size_t> cuts;        ///< where in `positions` the runs after the first begin

    /// Number of runs; none without a position.
    std::size_t size() const { return positions.empty() ? 0 : cuts.size() + 1; }
    bool empty() const { return positions.empty(); }
    LineRun operator[](std::size_t run) const {
        const std::size_t start = run == 0 ? 0 : cuts[run - 1];
        const std::size_t end = run == cuts.size() ? positions.size() : cuts[run];
        return {positions.data() + start, end - start};
    }
    LineRun front() const { return (*this)[0]; }
    LineRun back() const { return (*this)[cuts.size()]; }

    /// To go through the runs in a loop.
    struct Iterator {
        const LineParts* parts = nullptr;
        std::size_t run = 0;
        LineRun operator*() const { return (*parts)[run]; }
        Iterator& operator++() {
            ++run;
            return *this;
        }
        bool operator!=(const Iterator& other) const { return run != other.run; }
    };
    Iterator begin() const { return {this, 0}; }
    Iterator end() const { return {this, size()}; }
};

/// Samples of a great circle as such runs: a crossing ends one at 180 or -180 degrees and starts
/// the next at the other, on the exact circle. A sample on the antimeridian is the crossing itself,
/// and where the line only touches it, it has the sign of the longitudes beside it.
LineParts CutAtAntimeridian(std::vector<LinePosition> samples);

/// A meridian, from pole to pole.
LineParts MeridianParts(double longitude);

/// Half of a point's horizon circle: where it rises (type 3) or sets (type 4).
LineParts RiseSetParts(const CircleQuarter& quarter, std::int16_t type);

/// The whole line of a point of type 1 to 4. Empty where the point has no such line.
LineParts LineRuns(const LineFrame& frame, std::int16_t point, std::int16_t type);

}  // namespace orvantis

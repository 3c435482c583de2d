// The positions by Swiss Ephemeris.
#include "charts/SwissEph.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdlib>
#include <filesystem>
#include <swephexp.h>
#include <system_error>

#include "charts/CALCCHRT.h"
#include "charts/QXASTRO.h"
#include "session/session_state.h"
#include "text/numbers.h"
#include "text/strings.h"

namespace orvantis {

SwissState swissState;

namespace {

constexpr std::int32_t kNoBody = -1;

// Vulcan, the planet within Mercury's orbit, on the circular-like orbit of L.H. Weston. The
// library reads its elements from seorbel.txt, entry 16, for the equinox of date (T from 1900):
// mean anomaly 252.8987988 + 707550.7341 T degrees (a period of 18.6 days), semi-axis 0.13744 au,
// eccentricity 0.019, argument of perihelion 322.212069 + 1670.056 T, ascending node
// 47.787931 - 1670.056 T, inclination 7.5.
constexpr std::int32_t kVulcanBody = SE_FICT_OFFSET_1 + 16;

// Body numbers of points 1 to 36. The nodes, Vulcan and the Earth have their own routines; minor
// planets are asked for if their file is installed; chart points are no bodies. The Black Moon is
// the mean apogee of the Moon: there is no choice for the osculating one.
// The rows are the table's own.
// clang-format off
constexpr std::array<std::int32_t, point::kLastBody + 1> kBodies = {
    kNoBody,                                                         // unused
    SE_MOON, kNoBody, SE_SUN, kNoBody,                               // 1 to 4
    SE_MERCURY, SE_VENUS, SE_MARS, SE_JUPITER, SE_SATURN,            // 5 to 9
    SE_URANUS, SE_NEPTUNE, SE_PLUTO,                                 // 10 to 12
    SE_CHIRON, SE_VESTA, SE_PALLAS, SE_JUNO, SE_CERES,               // 13 to 17
    SE_AST_OFFSET + 10, SE_AST_OFFSET + 5,                           // 18, 19
    kNoBody, kNoBody, kNoBody, kNoBody, kNoBody, kNoBody, kNoBody,   // 20 to 26
    SE_CUPIDO, SE_HADES, SE_ZEUS, SE_KRONOS,                         // 27 to 30
    SE_APOLLON, SE_ADMETOS, SE_VULKANUS, SE_POSEIDON,                // 31 to 34
    SE_ISIS, SE_MEAN_APOG};                                          // 35, 36
// clang-format on

// Whether a minor planet's file is where the library looks for it: the long form or the short one
// (marked "s", six centuries), in the folder of its thousand or in the folder itself.
Flag MinorPlanetInstalled(std::string_view path, std::string_view number) {
    for (const std::string_view folder : {"/ast0/se", "/se"}) {
        for (const std::string_view ending : {".se1", "s.se1"}) {
            std::string file(path);
            file.append(folder).append(number).append(ending);
            // The library minds the case of names.
            std::error_code failure;
            if (std::filesystem::is_regular_file(file, failure)) return kTrue;
        }
    }
    return kFalse;
}

std::int32_t BodyOfPoint(std::int16_t n) {
    if (n == 18 && swissState.hygeiaInstalled == 0) return kNoBody;
    if (n == 19 && swissState.astraeaInstalled == 0) return kNoBody;
    return kBodies[static_cast<std::size_t>(n)];
}

// What all bodies of one calculation share.
struct Moment {
    double jdET = 0;         // Julian day, ephemeris time
    double offset = 0;       // degrees added to longitudes
    std::int32_t flags = 0;  // of the library
};

// The first failure of a run is told. Where another route stands ready, it takes over.
void TellFailure(std::string_view libraryText) {
    if (swissState.messages == 0) return;
    swissState.messages = kFalse;
    std::string text(libraryText);
    text.append(kCrLf).append("Swiss Ephemeris file/s missing or incorrectly installed.");
    if (session.shell != nullptr) {
        session.shell->MessageBox(text, "Orvantis", BoxButtons::Ok, BoxIcon::Exclamation);
    }
    if (calcPlanetsStandard != nullptr) CloseSwissEphemeris();
}

// A point that isn't calculated: nothing of a chart before stays.
void ClearPoint(CalcChart& chart, std::size_t n) {
    chart.Lon[n] = -1;
    chart.Lat[n] = chart.Dist[n] = chart.LonSpeed[n] = chart.LatSpeed[n] = 0;
    chart.Retro[n] = kFalse;
}

// One body into the arrays of a point; Lon -1 if the library can't give it.
void CalcBody(CalcChart& chart, std::size_t n, std::int32_t body, const Moment& moment) {
    ClearPoint(chart, n);
    if (swissState.enabled == 0) return;
    std::array<double, 6> xx{};
    std::array<char, AS_MAXCH> errorText{};
    if (swe_calc(moment.jdET, body, moment.flags, xx.data(), errorText.data()) == ERR) {
        TellFailure(errorText.data());
        return;
    }
    chart.Lon[n] = Modulo(xx[0] + moment.offset, 360);
    chart.Lat[n] = xx[1];
    chart.Dist[n] = xx[2];
    chart.LonSpeed[n] = xx[3];
    chart.LatSpeed[n] = xx[4];
    chart.Retro[n] = xx[3] < 0 ? kTrue : kFalse;
}

// `to` opposite `from`: the same distance and speed in longitude, latitude mirrored (and 0 stays
// +0).
void Opposite(CalcChart& chart, std::size_t to, std::size_t from) {
    chart.Lon[to] = chart.Lon[from] < 0 ? -1 : Modulo(chart.Lon[from] + 180, 360);
    chart.Lat[to] = 0.0 - chart.Lat[from];
    chart.Dist[to] = chart.Dist[from];
    chart.LonSpeed[to] = chart.LonSpeed[from];
    chart.LatSpeed[to] = 0.0 - chart.LatSpeed[from];
    chart.Retro[to] = chart.Retro[from];
}

// The Sun and the Earth stand opposite one another. Seen from the Sun itself only the Earth has a
// direction, so the body that is asked for depends on the frame.
void CalcSunAndEarth(CalcChart& chart, std::int16_t frame, const Moment& moment) {
    if (frame == 2) {
        CalcBody(chart, point::kEarth, SE_EARTH, moment);
        Opposite(chart, point::kSun, point::kEarth);
    } else {
        CalcBody(chart, point::kSun, SE_SUN, moment);
        Opposite(chart, point::kEarth, point::kSun);
    }
}

// Vulcan as D. Baker has it: with Mercury within three degrees of the Sun it stands with the Sun,
// otherwise three degrees from Mercury on the Sun's side. Heliocentrically it stands with Mercury.
void VulcanByMercury(CalcChart& chart, std::int16_t frame) {
    constexpr double kMost = 3;
    chart.LonSpeed[point::kVulcan] = chart.LonSpeed[point::kSun];
    chart.LatSpeed[point::kVulcan] = chart.LatSpeed[point::kSun];
    chart.Retro[point::kVulcan] = chart.Retro[point::kSun];

    const double mercury = chart.Lon[point::kMercury];
    const double sun = chart.Lon[point::kSun];
    if (mercury < 0 || sun < 0) {
        chart.Lon[point::kVulcan] = -1;
        return;
    }
    if (frame == 2) {
        chart.Lon[point::kVulcan] = mercury;
        chart.Lat[point::kVulcan] = chart.Lat[point::kMercury];
        return;
    }
    const double apart = Modulo(mercury - sun + 180, 360) - 180;
    const bool near = std::abs(apart) < kMost;
    const std::size_t source = near ? point::kSun : point::kMercury;
    const double back = near ? 0 : std::copysign(kMost, apart);
    chart.Lon[point::kVulcan] = Modulo(chart.Lon[source] - back, 360);
    chart.Lat[point::kVulcan] = chart.Lat[source];
}

}  // namespace

void OpenSwissEphemeris(std::string_view path) {
    // The library would prefer the folder that this variable names to the one that is set here.
    ::unsetenv("SE_EPHE_PATH");
    // The library keeps the path in a buffer of AS_MAXCH bytes and takes a longer one for none.
    swe_set_ephe_path(std::string(path).c_str());
    swissState.enabled = kTrue;
    swissState.hygeiaInstalled = MinorPlanetInstalled(path, "00010");
    swissState.astraeaInstalled = MinorPlanetInstalled(path, "00005");

    const CalcChart kept = calcChart[2];
    CalcPlanets(2, 0, 0, JulianCenturies(2415020.0), 0, 10, 1, kTrue, "", kTrue, kTrue);
    calcChart[2] = kept;
}

void CloseSwissEphemeris() {
    swe_close();
    swissState.enabled = kFalse;
}

void CalcPlanetsSwiss(std::int16_t slot, std::int16_t first, std::int16_t last, double t,
                      double offset, std::int16_t frame, Flag trueNode, Flag weston) {
    CalcChart& chart = calcChart[static_cast<std::size_t>(slot)];
    chart.Frame = frame;
    chart.TrueNodeFlag = trueNode;
    const Moment moment = {t * 36525 + 2415020, offset,
                           SEFLG_SPEED | (frame == 2 ? SEFLG_HELCTR : 0)};

    CalcBody(chart, point::kMoon, SE_MOON, moment);
    CalcSunAndEarth(chart, frame, moment);

    for (std::int16_t n = std::max(first, point::kVulcan); n <= last; ++n) {
        const auto index = static_cast<std::size_t>(n);
        if (n == point::kVulcan) {
            CalcBody(chart, index, kVulcanBody, moment);
        } else if (n == point::kNorthNode) {
            CalcBody(chart, index, trueNode != 0 ? SE_TRUE_NODE : SE_MEAN_NODE, moment);
        } else if (n == point::kSouthNode) {
            Opposite(chart, point::kSouthNode, point::kNorthNode);
        } else if (n < point::kAscendant || n > point::kPtFortune) {
            const std::int32_t body = BodyOfPoint(n);
            if (body < 0) {
                ClearPoint(chart, index);
            } else {
                CalcBody(chart, index, body, moment);
            }
        }
    }
    if (last > point::kSun && weston == 0) VulcanByMercury(chart, frame);
}

}  // namespace orvantis

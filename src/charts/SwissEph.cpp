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
#include "charts/hypothetical.h"
#include "charts/standard_route.h"
#include "session/files.h"
#include "session/session_state.h"
#include "text/numbers.h"
#include "text/strings.h"

namespace orvantis {

SwissState swissState;

namespace {

constexpr std::int32_t kNoBody = -1;

// Body numbers of points 1 to 36. The nodes, Vulcan and the Earth have their own routines; minor
// planets are asked for if their file is installed; chart points are no bodies. The Black Moon is
// the mean apogee of the Moon: there is no choice for the osculating one. The hypothetical points
// 27 to 35 are asked for only next to the Sun (see CalcHypothetical).
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

bool FileInFolder(std::string_view path, std::string_view name) {
    std::string file(path);
    file.append(name);
    // The library minds the case of names.
    std::error_code failure;
    return std::filesystem::is_regular_file(file, failure);
}

// Whether a minor planet's file is where the library looks for it: the long form or the short one
// (marked "s", six centuries), in the folder of its thousand or in the folder itself.
Flag MinorPlanetInstalled(std::string_view path, std::string_view number) {
    for (const std::string_view folder : {"/ast0/se", "/se"}) {
        for (const std::string_view ending : {".se1", "s.se1"}) {
            std::string name(folder);
            name.append(number).append(ending);
            if (FileInFolder(path, name)) return kTrue;
        }
    }
    return kFalse;
}

// Whether the asteroid tables stand for the library's file of a point from 13 to 19.
bool FromTables(std::int16_t n) {
    if (n == point::kHygeia) return swissState.hygeiaInstalled == 0;
    if (n == point::kAstraea) return swissState.astraeaInstalled == 0;
    return swissState.asteroidsMissing != 0;
}

// Whether the folder's file of elements gives the hypothetical points other orbits than our own.
// Without it the library has the same ones.
Flag OtherElements(std::string_view path) {
    constexpr std::int64_t kMost = 1024 * 1024;
    constexpr std::string_view kName = "/seorbel.txt";
    if (!FileInFolder(path, kName)) return kFalse;
    std::string file(path);
    file.append(kName);
    Bytes bytes;
    const bool known =
        FetchFile(file, kMost, bytes) == 0 && AreKnownElements(GetText(bytes.data(), bytes.size()));
    return known ? kFalse : kTrue;
}

// What all bodies of one calculation share.
struct Request {
    double t = 0;  // centuries from JD 2415020.0, ephemeris time
    double offset = 0;
    std::int16_t frame = 1;
    std::int16_t first = 1;  // of the points that are asked for
    std::string_view dataPath;
    Flag trueNode = kTrue;
};

// The same for the library.
struct Moment {
    double jdET = 0;         // Julian day, ephemeris time
    double offset = 0;       // degrees added to longitudes
    std::int32_t flags = 0;  // of the library
};

// The first failure of a run is told, and the standard route serves from there on.
void TellFailure(std::string_view libraryText) {
    if (swissState.messages == 0) return;
    swissState.messages = kFalse;
    std::string text(libraryText);
    text.append(kCrLf).append("Swiss Ephemeris file/s missing or incorrectly installed.");
    if (session.shell != nullptr) {
        session.shell->MessageBox(text, "Orvantis", BoxButtons::Ok, BoxIcon::Exclamation);
    }
    CloseSwissEphemeris();
}

// One body into the arrays of a point; Lon -1 if the library can't give it.
void CalcBody(CalcChart& chart, std::size_t n, std::int32_t body, const Moment& moment) {
    ClearPoint(chart, n);
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

// The moment as the standard route has it, from the Sun in the chart: its geometric place is found
// back by what is added to it there.
RouteMoment RouteMomentOf(const CalcChart& chart, const Request& request, bool apparent) {
    RouteMoment moment;
    moment.t = request.t;
    moment.offset = request.offset;
    moment.frame = request.frame;
    moment.apparent = apparent;
    moment.sunGiven = chart.Lon[point::kSun] >= 0;
    if (apparent) moment.nutation = NutationInLongitude(moment.t);
    const double geometric = chart.Lon[point::kSun] - AddedToSun(moment);
    for (std::size_t i = 0; i < 2; ++i) {
        const double days = (TimeOf(moment, i) - moment.t) * 36525;
        moment.sun[i] = {Modulo(geometric + chart.LonSpeed[point::kSun] * days, 360),
                         chart.Lat[point::kSun] + chart.LatSpeed[point::kSun] * days,
                         chart.Dist[point::kSun]};
    }
    return moment;
}

// The sky for the hypothetical points at three moments: the one asked for, and a little before and
// after it, from which the speeds come.
struct Sky {
    bool asked = false;
    bool given = false;
    std::array<Observer, 3> observers{};
    std::array<Matrix, 3> ecliptics{};
    std::array<double, 3> nutation{};  // in longitude, degrees
};

// Days from the middle moment to the others: the third derivative of the parallax costs 1e-9
// degrees a day.
constexpr double kSkyStep = 0.02;

// A Sun's or Earth's barycentric place and velocity.
bool AskState(double jd, std::int32_t body, std::array<double, 6>& xx) {
    constexpr std::int32_t kFlags = SEFLG_BARYCTR | SEFLG_TRUEPOS | SEFLG_J2000 | SEFLG_NONUT |
                                    SEFLG_XYZ | SEFLG_EQUATORIAL | SEFLG_SPEED;
    std::array<char, AS_MAXCH> ignored{};
    return swe_calc(jd, body, kFlags, xx.data(), ignored.data()) != ERR;
}

// The Earth a little later: it falls towards the Sun.
Observer Moved(const Observer& from, double days) {
    constexpr double kGauss = 0.01720209895;
    Observer moved = from;
    moved.jd += days;
    Vector fall{};
    double square = 0;
    for (std::size_t i = 0; i < 3; ++i) {
        fall[i] = from.sun[i] - from.earth[i];
        square += fall[i] * fall[i];
    }
    const double pull = kGauss * kGauss / (square * std::sqrt(square));
    for (std::size_t i = 0; i < 3; ++i) {
        moved.sun[i] += from.sunVelocity[i] * days;
        moved.earth[i] += (from.earthVelocity[i] + fall[i] * pull * days / 2) * days;
        moved.earthVelocity[i] += fall[i] * pull * days;
    }
    return moved;
}

void AskSky(const Moment& moment, Sky& sky) {
    sky.asked = true;
    std::array<double, 6> sun{};
    std::array<double, 6> earth{};
    sky.given = AskState(moment.jdET, SE_EARTH, earth) && AskState(moment.jdET, SE_SUN, sun);
    if (!sky.given) return;
    const Observer now = {moment.jdET,
                          {sun[0], sun[1], sun[2]},
                          {sun[3], sun[4], sun[5]},
                          {earth[0], earth[1], earth[2]},
                          {earth[3], earth[4], earth[5]},
                          (moment.flags & SEFLG_HELCTR) != 0};
    // The library keeps the nutation of one moment alone, so the others come last; and what it has
    // answered for a body, so the Black Moon, whose turn comes after these points, is asked first.
    std::array<double, 6> kept{};
    std::array<char, AS_MAXCH> ignored{};
    swe_calc(moment.jdET, SE_MEAN_APOG, moment.flags, kept.data(), ignored.data());
    for (const std::size_t i : {1, 0, 2}) {
        sky.observers[i] = Moved(now, (static_cast<double>(i) - 1) * kSkyStep);
        std::array<double, 6> nutation{};
        swe_calc(sky.observers[i].jd, SE_ECL_NUT, 0, nutation.data(), ignored.data());
        sky.ecliptics[i] = EclipticOfDate(sky.observers[i].jd, nutation[1]);
        sky.nutation[i] = nutation[2];
    }
}

// Points 27 to 35 as the library has them, to a thousandth of a second of arc, but in a tenth of
// its time: it reads its file of elements anew, three times for each of them. It is asked within a
// third of a degree from the Sun, where it has its own way of bending light behind the disc, and if
// its file gives them other elements.
void CalcHypothetical(CalcChart& chart, std::int16_t n, const Moment& moment, Sky& sky) {
    constexpr double kNearSun = 0.35;
    const auto index = static_cast<std::size_t>(n);
    const std::int32_t body = kBodies[index];
    if (!sky.asked && swissState.otherElements == 0) AskSky(moment, sky);
    if (!sky.given) return CalcBody(chart, index, body, moment);

    const auto own = static_cast<std::int16_t>(n - point::kCupido + 1);
    std::array<SphericalPlace, 3> seen{};
    for (std::size_t i = 0; i < 3; ++i) {
        seen[i] = ApparentHypothetical(own, sky.observers[i], sky.ecliptics[i]);
        seen[i].longitude += sky.nutation[i];
    }
    const double longitude = Modulo(seen[1].longitude + moment.offset, 360);
    const double fromSun = std::remainder(longitude - chart.Lon[point::kSun], 360);
    if (std::abs(fromSun) < kNearSun) return CalcBody(chart, index, body, moment);

    chart.Lon[index] = longitude;
    chart.Lat[index] = seen[1].latitude;
    chart.Dist[index] = seen[1].distance;
    chart.LonSpeed[index] =
        std::remainder(seen[2].longitude - seen[0].longitude, 360) / (2 * kSkyStep);
    chart.LatSpeed[index] = (seen[2].latitude - seen[0].latitude) / (2 * kSkyStep);
    chart.Retro[index] = chart.LonSpeed[index] < 0 ? kTrue : kFalse;
}

void CalcNorthNode(CalcChart& chart, const Request& request, const Moment& moment) {
    CalcBody(chart, point::kNorthNode, request.trueNode != 0 ? SE_TRUE_NODE : SE_MEAN_NODE, moment);
}

// One point from 4 on that isn't a chart point; the asteroid tables serve a run of points, and the
// last one done is returned.
std::int16_t CalcPoint(CalcChart& chart, std::int16_t n, std::int16_t last, const Request& request,
                       const Moment& moment, Sky& sky) {
    const auto index = static_cast<std::size_t>(n);
    if (n == point::kVulcan) {
        CalcVulcan(chart, RouteMomentOf(chart, request, request.frame == 1));
    } else if (n == point::kNorthNode) {
        CalcNorthNode(chart, request, moment);
    } else if (n == point::kSouthNode) {
        // It stands opposite this chart's North Node, not one that was left in the slot.
        if (request.first == n) CalcNorthNode(chart, request, moment);
        Opposite(chart, point::kSouthNode, point::kNorthNode);
    } else if (n >= point::kChiron && n <= point::kAstraea && FromTables(n)) {
        std::int16_t end = n;
        while (end < std::min(last, point::kAstraea) &&
               FromTables(static_cast<std::int16_t>(end + 1))) {
            ++end;
        }
        // The library's places have nutation and light time in both frames, and so have these that
        // stand beside them.
        CalcAsteroids(chart, n, end, RouteMomentOf(chart, request, true), request.dataPath);
        return end;
    } else if (n >= point::kCupido && n <= point::kTransPluto) {
        CalcHypothetical(chart, n, moment, sky);
    } else if (n < point::kAscendant || n > point::kPtFortune) {
        CalcBody(chart, index, kBodies[index], moment);
    }
    return n;
}

}  // namespace

void OpenSwissEphemeris(std::string_view path, std::string_view dataPath) {
    // The library would prefer the folder that this variable names to the one that is set here.
    ::unsetenv("SE_EPHE_PATH");
    // The library keeps the path in a buffer of AS_MAXCH bytes and takes a longer one for none.
    swissState.path = path;
    swe_set_ephe_path(swissState.path.c_str());
    swissState.enabled = kTrue;
    swissState.otherElements = OtherElements(path);
    swissState.hygeiaInstalled = MinorPlanetInstalled(path, "00010");
    swissState.astraeaInstalled = MinorPlanetInstalled(path, "00005");
    // A folder without any file is a faulty installation, which the trial finds; without that of
    // the asteroids alone, the tables serve.
    const bool planets = FileInFolder(path, "/sepl_18.se1");
    swissState.asteroidsMissing = planets && !FileInFolder(path, "/seas_18.se1") ? kTrue : kFalse;

    const CalcChart kept = calcChart[2];
    CalcPlanets(2, 0, 0, JulianCenturies(2415020.0), 0, 10, 1, kTrue, dataPath, kTrue, kTrue);
    calcChart[2] = kept;
}

void CloseSwissEphemeris() {
    swe_close();
    swe_set_ephe_path(swissState.path.c_str());  // closing makes the library forget it
    swissState.enabled = kFalse;
}

std::int16_t CalcPlanetsSwiss(std::int16_t slot, std::int16_t first, std::int16_t last, double t,
                              double offset, std::int16_t frame, std::string_view dataPath,
                              Flag trueNode, Flag weston) {
    CalcChart& chart = calcChart[static_cast<std::size_t>(slot)];
    chart.Frame = frame;
    chart.TrueNodeFlag = trueNode;
    const Moment moment = {JulianDayOf(t), offset,
                           SEFLG_SWIEPH | SEFLG_SPEED | (frame == 2 ? SEFLG_HELCTR : 0)};
    const Request request = {t, offset, frame, first, dataPath, trueNode};

    CalcBody(chart, point::kMoon, SE_MOON, moment);
    if (swissState.enabled == 0) return point::kMoon;
    CalcSunAndEarth(chart, frame, moment);
    if (swissState.enabled == 0) return point::kSun;

    Sky sky;
    for (std::int16_t n = std::max(first, point::kVulcan); n <= last; ++n) {
        n = CalcPoint(chart, n, last, request, moment, sky);
        if (swissState.enabled == 0) return n;
    }
    if (last > point::kSun && weston == 0) VulcanByMercury(chart, frame);
    return 0;
}

}  // namespace orvantis

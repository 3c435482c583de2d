// build-asteroids: makes AS18AD.EPH, AS19AD.EPH and AS20AD.EPH, the tables of the minor planets
// from 1800 to 2050, and measures them.
//
// Chiron, Vesta, Pallas, Juno and Ceres are those of Swiss Ephemeris. Hygeia and Astraea, which its
// common files lack, are integrated from their elements; the same integration of Ceres, Vesta,
// Pallas and Juno, held against Swiss Ephemeris, tells how good that is.
#include <algorithm>
#include <array>
#include <cmath>
#include <cstdio>
#include <string>
#include <swephexp.h>
#include <vector>

#include "charts/ephemeris_tables.h"
#include "integration.h"
#include "session/files.h"
#include "text/bytes.h"
#include "text/numbers.h"

namespace orvantis::asteroids {

namespace {

constexpr char kEphemeris[] = "/usr/share/libswe/ephe";
constexpr double kEpochT = 2415020.0;  // Julian day from which the tables count
constexpr TableSeries kSeries = TableSeries::Asteroids;
constexpr std::int32_t kStep = ephemeris_table::Step(kSeries);
constexpr std::size_t kBodies = ephemeris_table::Bodies(kSeries);
constexpr double kArcSeconds = 3600;
constexpr double kMillionths = 1e6;

// Elements by JPL's Small-Body Database as the Debian package kstars-data (asteroids.dat) has them.
constexpr double kElementsDay = 2459800.5;
constexpr std::array<Elements, 6> kElements = {{
    {"Hygeia", kElementsDay, 3.1409794505042599, 0.1113782559615029, 3.831224630322835,
     283.17595011553891, 312.51774692659802, 4.2803247446129093, 0},
    {"Astraea", kElementsDay, 2.5775401526740618, 0.188985164917296, 5.3654170907379823,
     141.56750209667729, 358.79238153549119, 208.56769667134949, 0},
    {"Ceres", kElementsDay, 2.7666190446550072, 0.078635756918755281, 10.586795121533671,
     80.266436111941502, 73.531625225571645, 334.32716989711508, SE_CERES},
    {"Vesta", kElementsDay, 2.3619871996966428, 0.088401893742600629, 7.140782834645754,
     103.80080974135301, 151.2577798334132, 61.192299004188378, SE_VESTA},
    {"Pallas", kElementsDay, 2.7694633407741409, 0.229986445975499, 34.927141267367588,
     172.91790478808031, 310.84262415272832, 315.09111216718281, SE_PALLAS},
    {"Juno", kElementsDay, 2.6704221836955089, 0.25677502305324201, 12.992225866813,
     169.8459410858143, 247.8039388757044, 306.62240683994918, SE_JUNO},
}};

// The bodies of a table in its order; number 0 is integrated, from the row of kElements.
struct TableBody {
    const char* name;
    std::int32_t body;
    std::size_t row;
};
constexpr std::array<TableBody, kBodies> kTableBodies = {{{"Chiron", SE_CHIRON, 0},
                                                          {"Vesta", SE_VESTA, 0},
                                                          {"Pallas", SE_PALLAS, 0},
                                                          {"Juno", SE_JUNO, 0},
                                                          {"Ceres", SE_CERES, 0},
                                                          {"Hygeia", 0, 0},
                                                          {"Astraea", 0, 1}}};

// A heliocentric place, mean equinox of date.
struct Place {
    double longitude = 0;  // degrees
    double latitude = 0;   // degrees
    double distance = 0;   // astronomical units
};

// From ecliptic and equinox of J2000.0 to those of a day: N. Capitaine, P. T. Wallace, J. Chapront,
// Expressions for IAU 2000 precession quantities, 2003 (IAU 2006), angles of the ecliptic.
Place OfDate(const Vector& v, double jd) {
    const double t = (jd - 2451545.0) / 36525;
    const double tilt = (((-0.00012559 * t - 0.0334926) * t + 46.998973) * t) / kArcSeconds;
    const double node =
        (((-0.0005371 * t + 0.157992) * t - 867.95758) * t + 629546.7936) / kArcSeconds;
    const double general = (((0.00007964 * t + 1.1054348) * t + 5028.796195) * t) / kArcSeconds;
    const double x = CosD(node) * v[0] + SinD(node) * v[1];
    const double y = -SinD(node) * v[0] + CosD(node) * v[1];
    const double tiltedY = CosD(tilt) * y + SinD(tilt) * v[2];
    const double tiltedZ = -SinD(tilt) * y + CosD(tilt) * v[2];
    Place place;
    place.longitude = Modulo(RadToDeg(std::atan2(tiltedY, x)) + node + general, 360);
    place.latitude = RadToDeg(std::atan2(tiltedZ, std::hypot(x, tiltedY)));
    place.distance = std::sqrt(v[0] * v[0] + v[1] * v[1] + v[2] * v[2]);
    return place;
}

bool SwissPlace(double jd, std::int32_t body, Place& place) {
    constexpr std::int32_t kFlags = SEFLG_SWIEPH | SEFLG_HELCTR | SEFLG_TRUEPOS | SEFLG_NONUT;
    std::array<double, 6> xx{};
    std::array<char, AS_MAXCH> words{};
    const std::int32_t used = swe_calc(jd, body, kFlags, xx.data(), words.data());
    if (used == ERR || (used & SEFLG_SWIEPH) == 0) {
        std::fprintf(stderr, "build-asteroids: Swiss Ephemeris: %s\n", words.data());
        return false;
    }
    place = {xx[0], xx[1], xx[2]};
    return true;
}

// Places of the bodies of kElements on whole days of half the tables' step, counted from kEpochT.
// One more step than a record's neighbours at either end.
struct Orbits {
    std::int32_t first = 0;  // day of the first place
    std::vector<std::array<Place, kElements.size()>> places;
};
constexpr std::int32_t kHalfStep = kStep / 2;

std::int32_t LastDay(double t) {
    return (RoundToInt32(std::floor(t * 36525 / kStep)) + 1) * kStep;
}

// Carries the bodies on from the day of their elements to one end, half step by half step.
bool FillOrbits(Orbits& orbits, std::int32_t direction) {
    std::vector<Motion> motions;
    motions.reserve(kElements.size());
    for (const Elements& elements : kElements) motions.push_back(MotionOf(elements));
    const double start = (kElementsDay - kEpochT - orbits.first) / kHalfStep;
    const auto place =
        static_cast<std::int32_t>(direction < 0 ? std::floor(start) : std::ceil(start));
    double jd = kElementsDay;
    std::string failure;
    for (std::int32_t i = place; i >= 0 && i < static_cast<std::int32_t>(orbits.places.size());
         i += direction) {
        const double next = kEpochT + orbits.first + i * kHalfStep;
        if (!Advance(jd, next - jd, motions, failure)) {
            std::fprintf(stderr, "build-asteroids: Swiss Ephemeris: %s\n", failure.c_str());
            return false;
        }
        jd = next;
        for (std::size_t body = 0; body < motions.size(); ++body) {
            orbits.places[static_cast<std::size_t>(i)][body] = OfDate(motions[body].place, jd);
        }
    }
    return true;
}

// The true place of a body of the tables; an integrated one on whole half steps alone.
bool TruePlace(const Orbits& orbits, const TableBody& body, double day, Place& place) {
    if (body.body != 0) return SwissPlace(kEpochT + day, body.body, place);
    const auto i = static_cast<std::size_t>((day - orbits.first) / kHalfStep);
    place = orbits.places[i][body.row];
    return true;
}

// What a record holds for a quantity with the values `y` on the days from two before to two after.
//
// Between two records the reader's parabola runs to one side of the true curve, by up to 0.0642 of
// the third difference. Records that lie half of that to the other side halve the largest error.
double Centred(const std::array<double, 5>& y) {
    constexpr double kHalfOfLargest = 0.0321;
    const double thirdDifference = (y[4] - 2 * y[3] + 2 * y[1] - y[0]) / 2;
    return y[2] - kHalfOfLargest * thirdDifference;
}

bool PutBody(const Orbits& orbits, const TableBody& body, std::int32_t day, std::uint8_t* bytes) {
    std::array<double, 5> longitude{};
    std::array<double, 5> latitude{};
    std::array<double, 5> distance{};
    for (std::size_t i = 0; i < 5; ++i) {
        Place place;
        const std::int32_t other = day + (static_cast<std::int32_t>(i) - 2) * kStep;
        if (!TruePlace(orbits, body, other, place)) return false;
        const double before = i == 0 ? place.longitude : longitude[i - 1];
        longitude[i] = before + std::remainder(place.longitude - before, 360);
        latitude[i] = place.latitude;
        distance[i] = place.distance;
    }
    const std::int32_t seconds = RoundToInt32(Modulo(Centred(longitude), 360) * kArcSeconds);
    PutI32(bytes, seconds % 1296000);
    PutI32(bytes + 4, RoundToInt32(Centred(latitude) * kArcSeconds));
    PutI32(bytes + 8, RoundToInt32(Centred(distance) * kMillionths));
    return true;
}

bool WriteTable(const Orbits& orbits, const std::string& folder, std::int16_t century) {
    const double endT = std::min(century - 18.0, ephemeris_table::kLastT);
    Bytes bytes;
    for (std::int32_t day = FirstTableDay(kSeries, century); day <= LastDay(endT); day += kStep) {
        for (const TableBody& body : kTableBodies) {
            bytes.resize(bytes.size() + ephemeris_table::kBodySize);
            std::uint8_t* end = bytes.data() + bytes.size();
            if (!PutBody(orbits, body, day, end - ephemeris_table::kBodySize)) return false;
        }
    }
    const std::string path = folder + TableFileName(kSeries, century);
    const std::int16_t error = StoreFile(path, bytes);
    if (error == 0) return true;
    std::fprintf(stderr, "build-asteroids: %s: %s\n", path.c_str(),
                 RunTimeErrorText(error).c_str());
    return false;
}

// ---- Measuring ----

// Largest differences of a body.
struct Differences {
    double longitude = 0;  // seconds of arc on the sky
    double latitude = 0;   // seconds of arc
    double distance = 0;   // millionths of an astronomical unit
    double fromEarth = 0;  // seconds of arc, as seen from the Earth
};

Vector VectorOf(const Place& place) {
    const double flat = place.distance * CosD(place.latitude);
    return {flat * CosD(place.longitude), flat * SinD(place.longitude),
            place.distance * SinD(place.latitude)};
}

void Note(const Place& seen, const Place& right, const Place& earth, Differences& most) {
    const auto larger = [](double& largest, double value) {
        largest = std::max(largest, std::abs(value));
    };
    larger(most.longitude, std::remainder(seen.longitude - right.longitude, 360) *
                               CosD(right.latitude) * kArcSeconds);
    larger(most.latitude, (seen.latitude - right.latitude) * kArcSeconds);
    larger(most.distance, (seen.distance - right.distance) * kMillionths);

    const Vector s = VectorOf(seen);
    const Vector r = VectorOf(right);
    const Vector e = VectorOf(earth);
    Vector to{};
    Vector off{};
    for (std::size_t k = 0; k < 3; ++k) {
        to[k] = r[k] - e[k];
        off[k] = s[k] - r[k];
    }
    const double far = std::sqrt(to[0] * to[0] + to[1] * to[1] + to[2] * to[2]);
    const double along = (off[0] * to[0] + off[1] * to[1] + off[2] * to[2]) / far;
    const double across = std::sqrt(
        std::max(0.0, off[0] * off[0] + off[1] * off[1] + off[2] * off[2] - along * along));
    larger(most.fromEarth, RadToDeg(across / far) * kArcSeconds);
}

void Print(const char* name, const Differences& most) {
    std::printf("%-8s %9.2f %9.2f %9.1f %9.2f\n", name, most.longitude, most.latitude,
                most.distance, most.fromEarth);
}

// The tables as the program reads them against their sources, every 1.37 days; integrated bodies
// in the middle between records, near which the error is largest, and on them.
bool MeasureTables(const Orbits& orbits, const std::string& folder) {
    std::array<Differences, kBodies + 1> most;
    const auto measure = [&](double day, bool integrated) {
        std::array<TablePosition, 8> read;
        Place earth;
        if (!ReadTables(kSeries, folder, day / 36525, read) ||
            !SwissPlace(kEpochT + day, SE_EARTH, earth)) {
            return false;
        }
        for (std::size_t n = 1; n <= kBodies; ++n) {
            const TableBody& body = kTableBodies[n - 1];
            Place right;
            if ((body.body == 0) != integrated) continue;
            if (!TruePlace(orbits, body, day, right)) return false;
            Note({read[n].longitude, read[n].latitude, read[n].distance}, right, earth, most[n]);
        }
        return true;
    };
    for (int i = 0; i * 1.37 <= 91312.5; ++i) {
        if (!measure(i * 1.37 - 36525, false)) return false;
    }
    for (std::int32_t day = -36520; day <= 54780; day += kHalfStep) {
        if (!measure(day, true)) return false;
    }
    std::puts("Tables against their sources, largest differences from 1800 to 2050:");
    std::puts("body     longitude  latitude  distance  from the Earth");
    std::puts("                \"         \"   1e-6 au         \"");
    for (std::size_t n = 1; n <= kBodies; ++n) Print(kTableBodies[n - 1].name, most[n]);
    return true;
}

bool MeasureIntegration(const Orbits& orbits) {
    std::puts("\nIntegration against Swiss Ephemeris, largest differences from 1800 to 2050:");
    for (std::size_t body = 0; body < kElements.size(); ++body) {
        if (kElements[body].body == 0) continue;
        Differences most;
        for (std::size_t i = 0; i < orbits.places.size(); ++i) {
            const double day = orbits.first + static_cast<double>(i) * kHalfStep;
            if (day < -36525 || day > 54787.5) continue;
            Place right;
            Place earth;
            if (!SwissPlace(kEpochT + day, kElements[body].body, right) ||
                !SwissPlace(kEpochT + day, SE_EARTH, earth)) {
                return false;
            }
            Note(orbits.places[i][body], right, earth, most);
        }
        Print(kElements[body].name, most);
    }
    return true;
}

bool Build(const std::string& folder) {
    Orbits orbits;
    orbits.first = FirstTableDay(kSeries, 18) - 2 * kStep;
    const std::int32_t last = LastDay(ephemeris_table::kLastT) + 2 * kStep;
    orbits.places.resize(static_cast<std::size_t>((last - orbits.first) / kHalfStep) + 1);
    if (!FillOrbits(orbits, -1) || !FillOrbits(orbits, 1)) return false;
    for (const std::int16_t century : {18, 19, 20}) {
        if (!WriteTable(orbits, folder, century)) return false;
    }
    return MeasureTables(orbits, folder) && MeasureIntegration(orbits);
}

}  // namespace

}  // namespace orvantis::asteroids

int main(int argc, char** argv) {
    if (argc != 2) {
        std::fputs("build-asteroids FOLDER: writes AS18AD.EPH, AS19AD.EPH and AS20AD.EPH\n",
                   stderr);
        return 2;
    }
    swe_set_ephe_path(orvantis::asteroids::kEphemeris);
    return orvantis::asteroids::Build(std::string(argv[1]) + "/") ? 0 : 1;
}

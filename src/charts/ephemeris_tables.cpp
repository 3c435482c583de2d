// The readers of the ephemeris tables and of Pluto's elements. See ephemeris_tables.h.
#include "charts/ephemeris_tables.h"

#include <chrono>
#include <cmath>
#include <filesystem>
#include <optional>
#include <span>
#include <utility>

#include "session/files.h"
#include "session/session_state.h"
#include "text/bytes.h"
#include "text/numbers.h"
#include "text/strings.h"

namespace orvantis {

namespace {

constexpr double kDaysOfCentury = 36525;
constexpr std::int16_t kCenturyOfT0 = 19;

// Last changes of the two folders in which a file is looked for.
using FolderDates = std::array<std::optional<std::filesystem::file_time_type>, 2>;

// A file that is kept open. `opening` tells whether the handle still stands for it.
struct KeptFile {
    std::string path;  // where it was looked for first
    FileHandle file = 0;
    std::int32_t opening = 0;            // 0: none
    std::optional<FolderDates> missing;  // it was in neither folder at these dates
};

KeptFile keptAsteroids;
KeptFile keptOuterPlanets;
KeptFile keptElements;

bool IsOpen(const KeptFile& kept) {
    return kept.opening != 0 && OpeningOf(kept.file) == kept.opening;
}

void CloseKept(KeptFile& kept) {
    if (IsOpen(kept)) CloseFile(kept.file);
    kept = {};
}

FolderDates DatesOf(std::string_view dataPath) {
    return {FileDate(dataPath), FileDate(session.ShippedDir)};
}

// Whether a change after these dates would show as another date. Those of the last seconds may be
// too coarse for that; a folder that isn't there is no good witness either.
bool AreSettled(const FolderDates& dates) {
    const auto now = std::filesystem::file_time_type::clock::now();
    return dates[0] && now - *dates[0] > std::chrono::seconds(2) &&
           (session.ShippedDir.empty() || (dates[1] && now - *dates[1] > std::chrono::seconds(2)));
}

// The handle of a file, opened unless it is the one that is kept; 0 if it can't be. A file that
// `dataPath` lacks is that of the files that the program comes with.
//
// To look for a file in vain means to read its folder, whose names may differ by case, and takes a
// tenth of a chart's time. It is done again when a folder has changed.
FileHandle Keep(KeptFile& kept, std::string_view dataPath, std::string_view name) {
    std::string path(dataPath);
    path += name;
    if (kept.path == path) {
        if (IsOpen(kept)) return kept.file;
        if (kept.missing && *kept.missing == DatesOf(dataPath)) return 0;
    }
    CloseKept(kept);
    const FolderDates dates = DatesOf(dataPath);
    FileHandle file = OpenQuietly(path);
    if (file == 0 && !session.ShippedDir.empty()) {
        file = OpenQuietly(session.ShippedDir + std::string(name));
    }
    kept = {std::move(path), file, OpeningOf(file), std::nullopt};
    if (file == 0 && AreSettled(dates)) kept.missing = dates;
    return file;
}

// All of the bytes, or false.
bool ReadAll(FileHandle file, std::int64_t position, std::span<std::uint8_t> bytes) {
    return file != 0 && ReadWhatIsThere(file, position, bytes) == bytes.size();
}

// `angle` with whole turns added, so that it is at most half a turn from `from`. Degrees.
double Unwrapped(double angle, double from) {
    return from + std::remainder(angle - from, 360);
}

// A quantity and its change from one record to the next, `n` records after the middle one: the
// parabola through three records. Between the middle record and the next one it is off by the third
// difference times n (n^2 - 1) / 6, 0.064 of it at most; on the records themselves it is right, so
// that the parabolas of neighbouring pairs meet.
void Interpolate(double y1, double y2, double y3, double n, double& y, double& change) {
    const double a = y2 - y1;
    const double b = y3 - y2;
    const double c = b - a;
    y = y2 + n * (a + b + n * c) / 2;
    change = c * (n + 0.5) + a;
}

}  // namespace

// ---- The tables ----
//
// A file serves one century of T and has no head. Its records follow each other in steps of 20 (AS)
// or 40 (OP) days; a record holds 7 or 5 bodies of 12 bytes:
//
//   offset size field      meaning
//        0    4 longitude  heliocentric, mean equinox of date, seconds of arc, 0 to 1295999
//        4    4 latitude   seconds of arc
//        8    4 distance   millionths of an astronomical unit
//
// All files of a series share one grid of days: JD 2415020.0 and whole steps from there, to both
// sides. The first record of a file is the grid's last day that isn't after the century's start,
// less one step, and its last record the grid's first day after the century's last moment; so the
// three records around any moment of a century stand in its own file, and a moment on the border of
// two gets the same position from both. The table of 2000 ends with T = 1.5.
//
// Whole seconds of arc and millionths are the floor of the format: 0.5 seconds on a record, 0.6
// between them, and 0.8 as seen from the Earth. What the parabola adds is told in data/README.md.

bool TableCentury(double t, std::int16_t& century) {
    const double number = std::floor(t) + kCenturyOfT0;
    if (!(number >= -99 && number <= 99)) return false;
    century = RoundToInt16(number);
    return true;
}

std::string TableFileName(TableSeries series, std::int16_t century) {
    std::string name = series == TableSeries::Asteroids ? "AS" : "OP";
    name += ZeroPadded(std::abs(century), 2);
    name += century < 0 ? "BC.EPH" : "AD.EPH";
    return name;
}

std::int32_t FirstTableDay(TableSeries series, std::int16_t century) {
    const std::int32_t step = ephemeris_table::Step(series);
    const double start = (century - kCenturyOfT0) * kDaysOfCentury;
    return (RoundToInt32(std::floor(start / step)) - 1) * step;
}

bool ReadTables(TableSeries series, std::string_view dataPath, double t,
                std::array<TablePosition, 8>& bodies) {
    using ephemeris_table::kBodySize;
    if (series == TableSeries::Asteroids &&
        !(t >= ephemeris_table::kFirstT && t <= ephemeris_table::kLastT)) {
        return false;
    }
    std::int16_t century = 0;
    if (!TableCentury(t, century)) return false;
    const bool asteroids = series == TableSeries::Asteroids;
    const FileHandle file = Keep(asteroids ? keptAsteroids : keptOuterPlanets, dataPath,
                                 TableFileName(series, century));

    // The middle record is the last one that isn't after the moment.
    const std::size_t count = ephemeris_table::Bodies(series);
    const std::int32_t step = ephemeris_table::Step(series);
    const double records = (t * kDaysOfCentury - FirstTableDay(series, century)) / step;
    const double middle = std::floor(records);
    const double n = records - middle;

    const std::size_t size = count * kBodySize;
    std::array<std::uint8_t, 3 * 7 * kBodySize> bytes{};
    const std::int64_t at =
        static_cast<std::int64_t>(RoundToInt32(middle) - 1) * static_cast<std::int64_t>(size);
    if (!ReadAll(file, at + 1, std::span(bytes).first(3 * size))) return false;

    for (std::size_t body = 1; body <= count; ++body) {
        const std::uint8_t* first = &bytes[(body - 1) * kBodySize];
        const auto value = [first, size](std::size_t record, std::size_t offset, double units) {
            return GetI32(first + record * size + offset) / units;
        };
        TablePosition& place = bodies[body];
        const double middleLongitude = value(1, 0, 3600);
        Interpolate(Unwrapped(value(0, 0, 3600), middleLongitude), middleLongitude,
                    Unwrapped(value(2, 0, 3600), middleLongitude), n, place.longitude,
                    place.longitudeSpeed);
        Interpolate(value(0, 4, 3600), value(1, 4, 3600), value(2, 4, 3600), n, place.latitude,
                    place.latitudeSpeed);
        Interpolate(value(0, 8, 1e6), value(1, 8, 1e6), value(2, 8, 1e6), n, place.distance,
                    place.distanceSpeed);
        place.longitude = Modulo(place.longitude, 360);
        place.longitudeSpeed /= step;
        place.latitudeSpeed /= step;
        place.distanceSpeed /= step;
    }
    return true;
}

// ---- The elements of Pluto ----
//
// A file serves 120000 days (file 21 ends 40 days early, at JD 2470000.5, where 22 begins). It is a
// sequence of 24-byte records. The first one is the head:
//
//   offset size field     meaning
//        0    4 firstDay  Julian day of the first record of elements, times 100
//        4    4 step      days from one record to the next, above 0
//        8   16           not used
//
// Each following one holds the elements of a day, for the mean equinox of date:
//
//   offset size field          unit
//        0    4 mean anomaly   1/10000 degree
//        4    4 mean longitude 1/10000 degree; the longitude of perihelion plus the mean anomaly
//        8    4 node           1/10000 degree
//       12    4 inclination    1/10000 degree
//       16    4 eccentricity   1e-7, or 1e-8 if the number is 10000000 or more, which would be no
//                              ellipse in the larger unit
//       20    4 semi-axis      millionths of an astronomical unit

namespace {

constexpr std::size_t kElementsSize = 24;

OrbitElements GetElements(const std::uint8_t* p) {
    constexpr std::int32_t kNoEllipse = 10000000;
    const std::int32_t eccentricity = GetI32(p + 16);
    OrbitElements elements;
    elements.meanAnomaly = GetI32(p) / 1e4;
    elements.meanLongitude = GetI32(p + 4) / 1e4;
    elements.node = GetI32(p + 8) / 1e4;
    elements.inclination = GetI32(p + 12) / 1e4;
    elements.eccentricity = eccentricity / (eccentricity < kNoEllipse ? 1e7 : 1e8);
    elements.semiAxis = GetI32(p + 20) / 1e6;
    return elements;
}

// The elements at a part `n` of the way from one record to the next.
OrbitElements Between(const OrbitElements& from, const OrbitElements& to, double n) {
    const auto angle = [n](double a, double b) { return a + n * std::remainder(b - a, 360); };
    const auto number = [n](double a, double b) { return a + n * (b - a); };
    return {angle(from.meanAnomaly, to.meanAnomaly),
            angle(from.meanLongitude, to.meanLongitude),
            angle(from.node, to.node),
            angle(from.inclination, to.inclination),
            number(from.eccentricity, to.eccentricity),
            number(from.semiAxis, to.semiAxis)};
}

// Eccentric anomaly by repeated substitution. No value if it doesn't settle.
std::optional<double> EccentricAnomaly(double meanAnomaly, double eccentricity) {
    constexpr int kMostSteps = 1000;
    double anomaly = meanAnomaly;
    for (int i = 0; i < kMostSteps; ++i) {
        const double next = meanAnomaly + eccentricity * std::sin(anomaly);
        const double change = std::abs(next - anomaly);
        anomaly = next;
        if (change < 1e-6) return anomaly;
    }
    return std::nullopt;
}

}  // namespace

bool KeplerStep(const OrbitElements& elements, TablePosition& place) {
    const double e = elements.eccentricity;
    if (!(e >= 0 && e < 1 && elements.semiAxis > 0)) return false;
    const double m = elements.meanAnomaly * DegToRad;
    const double node = elements.node * DegToRad;
    const double inclination = elements.inclination * DegToRad;
    const std::optional<double> anomaly = EccentricAnomaly(m, e);
    if (!anomaly) return false;

    const double half = *anomaly / 2;
    const double v = 2 * std::atan(std::sqrt((1 + e) / (1 - e)) * std::sin(half) / std::cos(half));
    const double u = Modulo(v - m + elements.meanLongitude * DegToRad, 2 * PI) - node;
    double longitude = std::atan(std::tan(u) * std::cos(inclination));
    if (std::cos(u) < 0) longitude += PI;
    place.longitude = RadToDeg(Modulo(longitude + node, 2 * PI));
    place.latitude = RadToDeg(std::asin(std::sin(u) * std::sin(inclination)));
    place.distance = elements.semiAxis - elements.semiAxis * e * std::cos(*anomaly);
    return true;
}

std::string PlutoFileName(double jd) {
    const double k = jd < 2470000.5 ? 0 : 40;
    const double number = std::floor((jd + 49959.5 + k) / 120000) + 1;
    if (!(number >= 0 && number <= 99)) return {};
    return "pluelm" + ZeroPadded(RoundToInt16(number), 2) + ".eph";
}

bool PlutoFromElements(std::string_view dataPath, double jd, TablePosition& pluto) {
    const std::string name = PlutoFileName(jd);
    if (name.empty()) return false;
    const FileHandle file = Keep(keptElements, dataPath, name);
    std::array<std::uint8_t, 2 * kElementsSize> bytes{};
    if (!ReadAll(file, 1, std::span(bytes).first(kElementsSize))) return false;
    const double firstDay = GetI32(&bytes[0]) / 100.0;
    const std::int32_t step = GetI32(&bytes[4]);
    if (step <= 0) return false;

    // The two records around the day. The day has a name, so that its record has a number, too.
    const double records = (jd - firstDay) / step;
    const double before = std::floor(records);
    if (before < 0) return false;
    const std::int64_t at =
        (static_cast<std::int64_t>(before) + 1) * static_cast<std::int64_t>(kElementsSize);
    if (!ReadAll(file, at + 1, bytes)) return false;
    return KeplerStep(
        Between(GetElements(&bytes[0]), GetElements(&bytes[kElementsSize]), records - before),
        pluto);
}

void CloseEphemerisTables() {
    CloseKept(keptAsteroids);
    CloseKept(keptOuterPlanets);
    CloseKept(keptElements);
}

}  // namespace orvantis

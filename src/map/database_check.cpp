// See database_check.h for the rules. Each is one routine here, in that order.
#include "map/database_check.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <map>
#include <numeric>
#include <set>
#include <utility>

#include "map/point_database.h"
#include "session/files.h"
#include "text/run_time_error.h"
#include "text/strings.h"

namespace orvantis {

namespace {

constexpr int kPoleMin = 5400;
constexpr int kDateLineMin = 10800;
constexpr int kGreatestExtent = 600;
constexpr int kMostLinesOfClass = 1000;
constexpr std::int16_t kCoarsest = 5;
constexpr int kListedForRule = 20;
constexpr auto kHeaderBytes = static_cast<std::size_t>(kLineHeaderSize);
constexpr auto kPointBytes = static_cast<std::size_t>(kLinePointSize);

struct Line {
    LineHeader header;
    std::vector<LinePoint> points;

    int Class() const { return header.code / 1000; }
    bool IsCoast() const { return Class() == 1 || Class() == 5; }
};

using Lines = std::vector<Line>;

// Collects findings, and counts those that a rule has too many of.
class Findings {
  public:
    void Add(Severity severity, DatabaseRule rule, std::int16_t code, std::string text) {
        if (++counts_[rule] <= kListedForRule) {
            list_.push_back({severity, rule, code, std::move(text)});
        }
    }
    void Error(DatabaseRule rule, std::int16_t code, std::string text) {
        Add(Severity::Error, rule, code, std::move(text));
    }
    bool Has(DatabaseRule rule) const { return counts_.contains(rule); }

    std::vector<DatabaseFinding> Take() {
        for (const auto& [rule, count] : counts_) {
            if (count <= kListedForRule) continue;
            const auto same = std::find_if(list_.begin(), list_.end(),
                                           [r = rule](const auto& f) { return f.rule == r; });
            list_.push_back(
                {same->severity, rule, 0,
                 std::to_string(count - kListedForRule) + " more of the kind: " + same->text});
        }
        return std::move(list_);
    }

  private:
    std::vector<DatabaseFinding> list_;
    std::map<DatabaseRule, int> counts_;
};

// "40N00 050E00".
std::string PlaceText(int lat, int longitude) {
    char text[40];
    std::snprintf(text, sizeof text, "%02d%c%02d %03d%c%02d", std::abs(lat) / 60,
                  lat < 0 ? 'S' : 'N', std::abs(lat) % 60, std::abs(longitude) / 60,
                  longitude < 0 ? 'W' : 'E', std::abs(longitude) % 60);
    return text;
}

std::string PlaceText(const LinePoint& p) {
    return PlaceText(p.lat, p.longitude);
}

// Takes the file apart. False, with one finding, if it isn't a sequence of whole lines.
bool ReadLines(const Bytes& file, Lines& lines, Findings& findings) {
    auto fail = [&](std::int16_t code, std::string text) {
        findings.Add(Severity::Unreadable, DatabaseRule::Structure, code, std::move(text));
        return false;
    };
    if (file.empty()) return fail(0, "The file is empty.");
    std::size_t at = 0;
    while (at < file.size()) {
        const std::string place = " at byte " + std::to_string(at) + ".";
        if (file.size() - at < kHeaderBytes)
            return fail(0, "The file ends within a header" + place);
        Line line;
        line.header = GetLineHeader(&file[at]);
        if (line.header.count < 0) {
            return fail(line.header.code, "The count of points is negative" + place);
        }
        at += kHeaderBytes;
        const auto count = static_cast<std::size_t>(line.header.count);
        if (file.size() - at < count * kPointBytes) {
            return fail(line.header.code, "The points run past the end of the file" + place);
        }
        line.points.reserve(count);
        for (std::size_t i = 0; i < count; ++i) {
            line.points.push_back(GetLinePoint(&file[at + i * kPointBytes]));
        }
        at += count * kPointBytes;
        lines.push_back(std::move(line));
    }
    return true;
}

void CheckCodes(const Lines& lines, Findings& findings) {
    std::map<int, int> ofClass;
    for (std::size_t i = 0; i < lines.size(); ++i) {
        const std::int16_t code = lines[i].header.code;
        if (i > 0 && code <= lines[i - 1].header.code) {
            findings.Error(DatabaseRule::CodeOrder, code,
                           "The code follows " + std::to_string(lines[i - 1].header.code) + ".");
        }
        const int number = lines[i].Class();
        const bool known = number == 1 || number == 2 || (number >= 4 && number <= 7);
        if (!known) findings.Error(DatabaseRule::CodeClass, code, "No class has this code.");
        if (++ofClass[number] == kMostLinesOfClass + 1) {
            findings.Error(DatabaseRule::ClassSize, code,
                           "Class " + std::to_string(number) + " has more than 1000 lines.");
        }
    }
}

void CheckPositions(const Line& line, Findings& findings) {
    const std::int16_t code = line.header.code;
    for (const LinePoint& p : line.points) {
        if (std::abs(p.lat) > kPoleMin || std::abs(p.longitude) > kDateLineMin) {
            findings.Error(DatabaseRule::Position, code,
                           "The point " + PlaceText(p) + " isn't on the Earth.");
        }
        if (p.level < 1 || p.level > kCoarsest) {
            findings.Error(
                DatabaseRule::Level, code,
                "The point " + PlaceText(p) + " has level " + std::to_string(p.level) + ".");
        }
        if (p.lat == -kPoleMin) {
            findings.Error(DatabaseRule::Pole, code, "A point lies on the South Pole.");
        }
    }
    if (line.points.size() < 2) {
        findings.Add(Severity::Warning, DatabaseRule::Points, code,
                     "The line has fewer than two points.");
    }
    if (!line.points.empty() &&
        (line.points.front().level != kCoarsest || line.points.back().level != kCoarsest)) {
        findings.Error(DatabaseRule::Ends, code, "An end of the line isn't of level 5.");
    }
}

void CheckExtents(const Line& line, Findings& findings) {
    if (line.points.empty()) return;
    const auto [south, north] =
        std::minmax_element(line.points.begin(), line.points.end(),
                            [](const auto& a, const auto& b) { return a.lat < b.lat; });
    const auto [west, east] =
        std::minmax_element(line.points.begin(), line.points.end(),
                            [](const auto& a, const auto& b) { return a.longitude < b.longitude; });
    const LineHeader& header = line.header;
    if (header.latMin != south->lat || header.latMax != north->lat ||
        header.longMin != west->longitude || header.longMax != east->longitude) {
        findings.Error(DatabaseRule::Extents, header.code,
                       "The extents " + PlaceText(header.latMin, header.longMin) + " to " +
                           PlaceText(header.latMax, header.longMax) +
                           " aren't those of the points, " +
                           PlaceText(south->lat, west->longitude) + " to " +
                           PlaceText(north->lat, east->longitude) + ".");
    }
    if (north->lat - south->lat > kGreatestExtent ||
        east->longitude - west->longitude > kGreatestExtent) {
        findings.Error(DatabaseRule::Length, header.code,
                       "The line is more than 10 degrees high or wide.");
    }
}

void CheckSegments(const Line& line, Findings& findings) {
    for (std::size_t i = 1; i < line.points.size(); ++i) {
        const LinePoint& a = line.points[i - 1];
        const LinePoint& b = line.points[i];
        if (std::abs(b.longitude - a.longitude) > kDateLineMin) {
            findings.Error(DatabaseRule::Leap, line.header.code,
                           "The segment from " + PlaceText(a) + " to " + PlaceText(b) +
                               " leaps over the map.");
        }
        if (std::abs(a.longitude) == kDateLineMin && a.longitude == b.longitude && a.lat != b.lat) {
            findings.Error(DatabaseRule::DateLine, line.header.code,
                           "The segment from " + PlaceText(a) + " to " + PlaceText(b) +
                               " runs along the date line.");
        }
    }
}

// A place at which lines end; the two sides of the date line are one.
using Place = std::pair<int, int>;

Place PlaceOf(const LinePoint& p) {
    return {p.longitude == -kDateLineMin ? kDateLineMin : p.longitude, p.lat};
}

// First and last point of a line at a level; null if it has none there.
std::pair<const LinePoint*, const LinePoint*> EndsAtLevel(const Line& line, std::int16_t level) {
    std::pair<const LinePoint*, const LinePoint*> ends{nullptr, nullptr};
    for (const LinePoint& p : line.points) {
        if (p.level < level) continue;
        if (ends.first == nullptr) ends.first = &p;
        ends.second = &p;
    }
    return ends;
}

// A coast is closed if as many lines begin as end at each place. A line that fails is named once,
// at the finest level that shows it.
void CheckClosed(const Lines& lines, Findings& findings) {
    std::set<const Line*> named;
    for (std::int16_t level = 1; level <= kCoarsest; ++level) {
        std::map<Place, int> balance;
        for (const Line& line : lines) {
            const auto [first, last] = EndsAtLevel(line, level);
            if (!line.IsCoast() || first == nullptr) continue;
            ++balance[PlaceOf(*first)];
            --balance[PlaceOf(*last)];
        }
        for (const Line& line : lines) {
            const auto [first, last] = EndsAtLevel(line, level);
            if (!line.IsCoast() || first == nullptr || named.contains(&line)) continue;
            for (const LinePoint* end : {first, last}) {
                if (balance[PlaceOf(*end)] == 0 || !named.insert(&line).second) continue;
                findings.Error(DatabaseRule::Closed, line.header.code,
                               "The coast is open at " + PlaceText(*end) + " at level " +
                                   std::to_string(level) + ".");
            }
        }
    }
}

// A coast where a meridian midway between two whole minutes cuts it.
struct Crossing {
    std::int16_t meridian;  // whole arc-minute west of it
    bool westward;          // the coast runs to the west here
    float lat;              // arc-minutes
    std::int32_t line;
};

// Bounds the work on a hostile file; the world has some 300000.
constexpr std::size_t kMostCrossings = 4'000'000;

// All crossings of lines that `wanted` takes. False if there are too many.
template <typename Wanted>
bool CollectCrossings(const Lines& lines, Wanted wanted, std::vector<Crossing>& crossings) {
    for (std::size_t number = 0; number < lines.size(); ++number) {
        const std::vector<LinePoint>& points = lines[number].points;
        if (!wanted(lines[number])) continue;
        for (std::size_t i = 1; i < points.size(); ++i) {
            const LinePoint& a = points[i - 1];
            const LinePoint& b = points[i];
            const int west = std::min(a.longitude, b.longitude);
            const int east = std::max(a.longitude, b.longitude);
            if (crossings.size() + static_cast<std::size_t>(east - west) > kMostCrossings) {
                return false;
            }
            for (int m = west; m < east; ++m) {
                const float along = (static_cast<float>(m - a.longitude) + 0.5F) /
                                    static_cast<float>(b.longitude - a.longitude);
                crossings.push_back({static_cast<std::int16_t>(m), b.longitude < a.longitude,
                                     a.lat + along * static_cast<float>(b.lat - a.lat),
                                     static_cast<std::int32_t>(number)});
            }
        }
    }
    return true;
}

// Down every meridian from the North Pole, which is sea, coasts turn sea into land and land into
// sea by turns. A coast that is met where the land begins must run to the west, and otherwise to
// the east, to have the land on its left. Thinned coasts may cut each other here and there, so the
// majority of a line's crossings decides. All coasts are closed, so a coast that runs the wrong way
// doesn't change what is told of the others.
void CheckDirection(const Lines& lines, Findings& findings) {
    std::vector<Crossing> crossings;
    if (!CollectCrossings(
            lines, [](const Line& line) { return line.IsCoast(); }, crossings)) {
        findings.Error(DatabaseRule::Direction, 0, "The coasts are too long to be checked.");
        return;
    }
    std::sort(crossings.begin(), crossings.end(), [](const Crossing& a, const Crossing& b) {
        return a.meridian != b.meridian ? a.meridian < b.meridian : a.lat > b.lat;
    });
    std::vector<int> votes(lines.size());
    bool onLand = false;
    for (std::size_t i = 0; i < crossings.size(); ++i) {
        if (i == 0 || crossings[i].meridian != crossings[i - 1].meridian) onLand = false;
        onLand = !onLand;
        votes[static_cast<std::size_t>(crossings[i].line)] +=
            crossings[i].westward == onLand ? 1 : -1;
    }
    for (std::size_t i = 0; i < lines.size(); ++i) {
        if (votes[i] < 0) {
            findings.Error(DatabaseRule::Direction, lines[i].header.code,
                           "The coast has the land on its right.");
        }
    }
}

// The fixed place that the plot takes for water of the Caspian.
constexpr int kCaspianLat = 40 * 60;
constexpr int kCaspianLong = 50 * 60;

// True if the lines of a class enclose that place: a ray to the north meets an odd number.
bool EnclosesCaspian(const Lines& lines, int number) {
    bool inside = false;
    for (const Line& line : lines) {
        if (line.Class() != number) continue;
        for (std::size_t i = 1; i < line.points.size(); ++i) {
            const LinePoint& a = line.points[i - 1];
            const LinePoint& b = line.points[i];
            if ((a.longitude <= kCaspianLong) == (b.longitude <= kCaspianLong)) continue;
            const double lat = a.lat + (kCaspianLong + 0.5 - a.longitude) * (b.lat - a.lat) /
                                           (b.longitude - a.longitude);
            if (lat > kCaspianLat) inside = !inside;
        }
    }
    return inside;
}

void CheckCaspian(const Lines& lines, Findings& findings) {
    if (EnclosesCaspian(lines, 1)) {
        findings.Error(DatabaseRule::Caspian, 0,
                       "By the coasts of class 1 the Caspian at " +
                           PlaceText(kCaspianLat, kCaspianLong) + " is land.");
    }
    if (EnclosesCaspian(lines, 6)) {
        findings.Error(DatabaseRule::Caspian, 0, "The Caspian is a lake of class 6.");
    }
}

// The shore of one lake, or of one island in it: lines that meet at their ends.
struct Shore {
    std::vector<const Line*> lines;
    bool closed = true;
    bool clockwise = false;
    int south = 0;  // extents, arc-minutes
    int north = 0;
    int west = 0;
    int east = 0;
};

// Joins the lines of class 6 into shores: a line that ends where it begins is one, the others are
// joined at the places where they end.
std::vector<Shore> JoinShores(const Lines& lines) {
    std::vector<const Line*> lakes;
    for (const Line& line : lines) {
        if (line.Class() == 6 && line.points.size() > 1) lakes.push_back(&line);
    }
    std::vector<std::size_t> parent(lakes.size());
    std::iota(parent.begin(), parent.end(), std::size_t{0});
    const auto root = [&parent](std::size_t i) {
        while (parent[i] != i) i = parent[i] = parent[parent[i]];
        return i;
    };
    std::map<Place, std::size_t> lineAt;
    std::map<Place, int> balance;
    for (std::size_t i = 0; i < lakes.size(); ++i) {
        const Place first = PlaceOf(lakes[i]->points.front());
        const Place last = PlaceOf(lakes[i]->points.back());
        if (first == last) continue;
        ++balance[first];
        --balance[last];
        for (const Place& end : {first, last}) {
            parent[root(i)] = root(lineAt.try_emplace(end, i).first->second);
        }
    }
    std::map<std::size_t, Shore> shores;
    for (std::size_t i = 0; i < lakes.size(); ++i) {
        Shore& shore = shores[root(i)];
        shore.lines.push_back(lakes[i]);
        const Place first = PlaceOf(lakes[i]->points.front());
        const Place last = PlaceOf(lakes[i]->points.back());
        if (first != last && (balance[first] != 0 || balance[last] != 0)) shore.closed = false;
    }
    std::vector<Shore> list;
    list.reserve(shores.size());
    for (auto& [number, shore] : shores) list.push_back(std::move(shore));
    return list;
}

// Sets the extents and the direction, and returns twice the area: the integral of the latitude over
// the longitude, above 0 for a shore that runs clockwise. A side along the date line, which no line
// has, would add nothing.
std::int64_t MeasureShore(Shore& shore) {
    std::int64_t area = 0;
    shore.south = kPoleMin;
    shore.north = -kPoleMin;
    shore.west = kDateLineMin;
    shore.east = -kDateLineMin;
    for (const Line* line : shore.lines) {
        for (std::size_t i = 0; i < line->points.size(); ++i) {
            const LinePoint& b = line->points[i];
            shore.south = std::min<int>(shore.south, b.lat);
            shore.north = std::max<int>(shore.north, b.lat);
            shore.west = std::min<int>(shore.west, b.longitude);
            shore.east = std::max<int>(shore.east, b.longitude);
            if (i == 0) continue;
            const LinePoint& a = line->points[i - 1];
            area += std::int64_t{b.longitude - a.longitude} * (a.lat + b.lat);
        }
    }
    shore.clockwise = area > 0;
    return area;
}

// True if a place lies within a shore: a ray to the north meets an odd number of segments. `steps`
// counts the segments that were looked at.
bool Encloses(const Shore& shore, const LinePoint& place, std::int64_t& steps) {
    ++steps;
    if (place.lat < shore.south || place.lat > shore.north || place.longitude < shore.west ||
        place.longitude > shore.east) {
        return false;
    }
    bool inside = false;
    for (const Line* line : shore.lines) {
        steps += static_cast<std::int64_t>(line->points.size());
        for (std::size_t i = 1; i < line->points.size(); ++i) {
            const LinePoint& a = line->points[i - 1];
            const LinePoint& b = line->points[i];
            if ((a.longitude <= place.longitude) == (b.longitude <= place.longitude)) continue;
            const double lat = a.lat + (place.longitude + 0.5 - a.longitude) * (b.lat - a.lat) /
                                           (b.longitude - a.longitude);
            if (lat > place.lat) inside = !inside;
        }
    }
    return inside;
}

// Bounds the work on a hostile file; the world takes some 400000.
constexpr std::int64_t kMostLakeSteps = 50'000'000;

void CheckLakes(const Lines& lines, Findings& findings) {
    std::vector<Shore> shores = JoinShores(lines);
    std::vector<const Shore*> anticlockwise;
    for (Shore& shore : shores) {
        if (!shore.closed) {
            findings.Add(Severity::Warning, DatabaseRule::Lakes, shore.lines.front()->header.code,
                         "The shore of the lake is open.");
            shore.clockwise = false;
        } else if (MeasureShore(shore) < 0) {
            anticlockwise.push_back(&shore);
        }
    }
    // An island in a lake runs the other way, with the water outside it.
    std::int64_t steps = 0;
    for (const Shore* island : anticlockwise) {
        const LinePoint& place = island->lines.front()->points.front();
        const bool inLake = std::any_of(shores.begin(), shores.end(), [&](const Shore& shore) {
            return steps <= kMostLakeSteps && shore.clockwise && Encloses(shore, place, steps);
        });
        if (steps > kMostLakeSteps) {
            findings.Error(DatabaseRule::Lakes, 0, "The lakes are too long to be checked.");
            return;
        }
        if (!inLake) {
            findings.Error(DatabaseRule::Lakes, island->lines.front()->header.code,
                           "The lake runs anticlockwise.");
        }
    }
}

// A border that ends at a coast must do so at every level, or the two part when drawn coarsely.
void CheckJunctions(const Lines& lines, Findings& findings) {
    std::map<Place, std::int16_t> borderAt;
    for (const Line& line : lines) {
        if (line.Class() != 2 || line.points.empty()) continue;
        borderAt.try_emplace(PlaceOf(line.points.front()), line.header.code);
        borderAt.try_emplace(PlaceOf(line.points.back()), line.header.code);
    }
    for (const Line& line : lines) {
        if (!line.IsCoast()) continue;
        for (const LinePoint& p : line.points) {
            if (p.level >= kCoarsest) continue;
            const auto border = borderAt.find(PlaceOf(p));
            if (border == borderAt.end()) continue;
            findings.Error(DatabaseRule::Junction, line.header.code,
                           "The point " + PlaceText(p) + ", at which the border " +
                               std::to_string(border->second) + " ends, isn't of level 5.");
        }
    }
}

// What the derived files must hold, and where each line begins in them.
struct Derived {
    std::array<Bytes, 6> levels;  // 2 to 5
    Bytes index;
    std::array<std::vector<std::size_t>, 6> lineAt;  // 2 to 5
};

Derived DeriveFiles(const Lines& lines) {
    Derived derived;
    std::size_t level1Size = 0;
    for (const Line& line : lines) {
        LineIndexEntry entry{
            line.header.code,   {}, {}, line.header.latMin, line.header.latMax, line.header.longMin,
            line.header.longMax};
        entry.pointCount[1] = line.header.count;
        entry.pointPos[1] = static_cast<std::int32_t>(level1Size + kHeaderBytes + 1);
        level1Size += kHeaderBytes + line.points.size() * kPointBytes;
        for (std::size_t level = 2; level <= 5; ++level) {
            Bytes& file = derived.levels[level];
            const std::size_t start = file.size();
            derived.lineAt[level].push_back(start);
            file.resize(start + kHeaderBytes);
            LineHeader header = line.header;
            header.count = 0;
            for (const LinePoint& p : line.points) {
                if (p.level < static_cast<int>(level)) continue;
                file.resize(file.size() + kPointBytes);
                PutLinePoint(&file[file.size() - kPointBytes], p);
                ++header.count;
            }
            PutLineHeader(&file[start], header);
            entry.pointCount[level] = header.count;
            entry.pointPos[level] = static_cast<std::int32_t>(start + kHeaderBytes + 1);
        }
        derived.index.resize(derived.index.size() + kLineIndexEntrySize);
        PutLineIndexEntry(&derived.index[derived.index.size() - kLineIndexEntrySize], entry);
    }
    return derived;
}

// Where two files begin to differ; the length of the shorter one if it is the start of the other.
std::size_t FirstDifference(const Bytes& a, const Bytes& b) {
    const auto [at, other] = std::mismatch(a.begin(), a.end(), b.begin(), b.end());
    return static_cast<std::size_t>(at - a.begin());
}

// The line of the expected file that a position belongs to; 0 past its end.
std::int16_t CodeAt(const Lines& lines, const std::vector<std::size_t>& lineAt, std::size_t at,
                    std::size_t size) {
    if (at >= size) return 0;
    const auto next = std::upper_bound(lineAt.begin(), lineAt.end(), at);
    return lines[static_cast<std::size_t>(next - lineAt.begin() - 1)].header.code;
}

void CheckDerivedFiles(const Lines& lines, const DatabaseFiles& files, Findings& findings) {
    const Derived derived = DeriveFiles(lines);
    for (std::size_t level = 2; level <= 5; ++level) {
        const Bytes& expected = derived.levels[level];
        if (!files.levels[level] || *files.levels[level] == expected) continue;
        const std::size_t at = FirstDifference(expected, *files.levels[level]);
        findings.Error(DatabaseRule::LevelFile,
                       CodeAt(lines, derived.lineAt[level], at, expected.size()),
                       "level" + std::to_string(level) + ".pnt isn't what level1.pnt gives, from " +
                           "byte " + std::to_string(at) + " on.");
    }
    if (!files.index) return;
    // An incomplete entry at the end of the index is never read.
    constexpr auto kEntryBytes = static_cast<std::size_t>(kLineIndexEntrySize);
    Bytes index = *files.index;
    index.resize(index.size() / kEntryBytes * kEntryBytes);
    if (index == derived.index) return;
    const std::size_t entry = FirstDifference(derived.index, index) / kEntryBytes;
    findings.Error(DatabaseRule::Index, entry < lines.size() ? lines[entry].header.code : 0,
                   "levelx.ndx isn't what the level files give, from entry " +
                       std::to_string(entry + 1) + " on.");
}

}  // namespace

std::vector<DatabaseFinding> CheckDatabaseFiles(const DatabaseFiles& files) {
    Lines lines;
    Findings findings;
    if (!ReadLines(files.level1, lines, findings)) return findings.Take();
    CheckCodes(lines, findings);
    for (const Line& line : lines) {
        CheckPositions(line, findings);
        CheckExtents(line, findings);
        CheckSegments(line, findings);
    }
    CheckClosed(lines, findings);
    // Which side is land can be told only where coasts are closed and lie on the Earth.
    if (!findings.Has(DatabaseRule::Closed) && !findings.Has(DatabaseRule::Position) &&
        !findings.Has(DatabaseRule::Leap)) {
        CheckDirection(lines, findings);
        CheckCaspian(lines, findings);
    }
    if (!findings.Has(DatabaseRule::Position) && !findings.Has(DatabaseRule::Leap)) {
        CheckLakes(lines, findings);
    }
    CheckJunctions(lines, findings);
    CheckDerivedFiles(lines, files, findings);
    return findings.Take();
}

std::vector<DatabaseFinding> CheckDatabase(std::string_view path) {
    DatabaseFiles files;
    RunTimeError failure;
    auto read = [](const std::string& name, Bytes& bytes) {
        return ReadWholeFile(name, kLargestDatabase, bytes);
    };
    if (!read(std::string(path), files.level1)) {
        TakeRunTimeError(failure);
        return {{Severity::Unreadable, DatabaseRule::Structure, 0, failure.description + "."}};
    }

    // The derived files lie beside it, under the same name but for the level's number.
    std::vector<DatabaseFinding> unreadable;
    if (SameText(BaseName(path, false), "level1.pnt")) {
        const std::string stem(path.substr(0, path.size() - 5));
        auto readDerived = [&](const std::string& name, DatabaseRule rule,
                               std::optional<Bytes>& bytes) {
            if (FileExists(name) == kFalse) return;
            if (!read(name, bytes.emplace())) {
                TakeRunTimeError(failure);
                bytes.reset();
                unreadable.push_back({Severity::Error, rule, 0,
                                      BaseName(name, false) + ": " + failure.description + "."});
            }
        };
        for (std::size_t level = 2; level <= 5; ++level) {
            readDerived(stem + std::to_string(level) + ".pnt", DatabaseRule::LevelFile,
                        files.levels[level]);
        }
        readDerived(stem + "x.ndx", DatabaseRule::Index, files.index);
    }
    std::vector<DatabaseFinding> findings = CheckDatabaseFiles(files);
    findings.insert(findings.end(), unreadable.begin(), unreadable.end());
    return findings;
}

}  // namespace orvantis

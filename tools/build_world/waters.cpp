#include "waters.h"

#include <algorithm>
#include <cmath>
#include <map>
#include <utility>

namespace orvantis::world {

namespace {

constexpr double kSeaSizeKm2 = 1e5;

bool Inside(const MinLine& ring, const MinPoint& p) {
    bool inside = false;
    for (std::size_t i = 1; i < ring.size(); ++i) {
        const MinPoint& a = ring[i - 1];
        const MinPoint& b = ring[i];
        if ((a.y > p.y) == (b.y > p.y)) continue;
        const double x = a.x + static_cast<double>(b.x - a.x) * (p.y - a.y) / (b.y - a.y);
        if (x > p.x) inside = !inside;
    }
    return inside;
}

// The Caspian is the one inland water of this size; the middle of it lies at 42 north, 51 east.
bool IsCaspian(const MinLine& ring) {
    return std::abs(RingArea(ring)) > kSeaSizeKm2 && Inside(ring, {51 * 60, 42 * 60, -1});
}

std::string LakeName(const MinLine& ring, const std::vector<PlaceName>& names) {
    for (const PlaceName& name : names) {
        if (Inside(ring, name.place)) return name.name;
    }
    return "Lake";
}

double SquaredDistance(const MinLine& line, const MinPoint& place) {
    double least = 1e18;
    for (const MinPoint& p : line) {
        const double dx = (p.x - place.x) * std::cos(place.y / 60.0 * 3.14159265358979 / 180);
        const double dy = p.y - place.y;
        least = std::min(least, dx * dx + dy * dy);
    }
    return least;
}

// Joins lines at places where just two of them meet.
class Joiner {
  public:
    explicit Joiner(std::vector<MinLine> lines) : lines_(std::move(lines)) {
        used_.resize(lines_.size());
        for (std::size_t i = 0; i < lines_.size(); ++i) {
            at_[PlaceOf(lines_[i].front())].push_back(i);
            at_[PlaceOf(lines_[i].back())].push_back(i);
        }
    }

    std::vector<MinLine> Join() {
        std::vector<MinLine> joined;
        for (std::size_t i = 0; i < lines_.size(); ++i) {
            if (used_[i]) continue;
            used_[i] = true;
            MinLine line = lines_[i];
            Extend(line);
            std::reverse(line.begin(), line.end());
            Extend(line);
            std::reverse(line.begin(), line.end());
            joined.push_back(std::move(line));
        }
        return joined;
    }

  private:
    using Place = std::pair<int, int>;
    static Place PlaceOf(const MinPoint& p) { return {p.x, p.y}; }

    void Extend(MinLine& line) {
        while (true) {
            const std::vector<std::size_t>& here = at_[PlaceOf(line.back())];
            const auto next =
                std::find_if(here.begin(), here.end(), [this](std::size_t i) { return !used_[i]; });
            if (here.size() != 2 || next == here.end()) return;
            used_[*next] = true;
            MinLine more = lines_[*next];
            if (!SamePlace(more.front(), line.back())) std::reverse(more.begin(), more.end());
            line.insert(line.end(), more.begin() + 1, more.end());
        }
    }

    std::vector<MinLine> lines_;
    std::vector<bool> used_;
    std::map<Place, std::vector<std::size_t>> at_;
};

}  // namespace

std::vector<WaterLine> CollectLakes(const std::vector<Pn2Feature>& features,
                                    const std::vector<PlaceName>& names) {
    std::vector<WaterLine> lakes;
    for (const Pn2Feature& feature : features) {
        MinLine ring = ToMinutes(feature.points, -1);
        if (ring.size() < 3) continue;
        if (!IsClosed(ring)) ring.push_back(ring.front());
        if (IsCaspian(ring)) continue;
        const bool island = feature.kind == Pn2Kind::InnerRing;
        if ((RingArea(ring) > 0) != island) std::reverse(ring.begin(), ring.end());
        std::string name = island ? "Lake island" : LakeName(ring, names);
        lakes.push_back({std::move(ring), std::move(name)});
    }
    return lakes;
}

std::vector<WaterLine> CollectRivers(const std::vector<Pn2Feature>& features,
                                     const std::vector<PlaceName>& names) {
    std::vector<MinLine> courses;
    for (const Pn2Feature& feature : features) {
        MinLine course = ToMinutes(feature.points, -1);
        if (course.size() > 1) courses.push_back(std::move(course));
    }
    std::vector<WaterLine> rivers;
    for (MinLine& course : Joiner(std::move(courses)).Join()) {
        rivers.push_back({std::move(course), "River"});
    }
    for (const PlaceName& name : names) {
        const auto nearest = std::min_element(rivers.begin(), rivers.end(),
                                              [&](const WaterLine& a, const WaterLine& b) {
                                                  return SquaredDistance(a.points, name.place) <
                                                         SquaredDistance(b.points, name.place);
                                              });
        constexpr double kNear = 30.0 * 30;
        if (nearest != rivers.end() && SquaredDistance(nearest->points, name.place) < kNear) {
            nearest->name = name.name;
        }
    }
    return rivers;
}

}  // namespace orvantis::world

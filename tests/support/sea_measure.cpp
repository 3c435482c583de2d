#include "support/sea_measure.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <optional>
#include <vector>

#include "map/map_document.h"
#include "map/projection.h"
#include "session/settings.h"

namespace orvantis {

namespace {

constexpr double kRadians = 3.14159265358979 / 180;

// How far the thinned lines of the precisions 1 to 5 may lie from the source, arc-minutes.
constexpr std::array<double, 6> kThinning = {0, 0.5, 2, 4, 8, 15};

constexpr double kCell = 2;  // of the mask, arc-minutes

// The part of a globe's radius within which a pixel is told a place: beyond, one pixel is degrees.
constexpr double kGlobeReach = 0.98;

struct Place {
    double lat = 0;
    double longitude = 0;
};

std::uint32_t PixelOfColour(Colour colour) {
    const auto plain = static_cast<std::uint32_t>(colour);
    return 0xFF000000 | (plain & 0xFF) << 16 | (plain & 0xFF00) | (plain >> 16 & 0xFF);
}

// The plate carree, the Mercator and the orthographic projection backwards (Snyder, "Map
// Projections: A Working Manual", USGS 1395, equations 12-3, 7-4, 20-14 to 20-18).
class Backwards {
  public:
    Backwards() : map_(CurrentMap()), rect_(mapView.rect) {
        span_ = static_cast<double>(map_.east) - map_.west;
        if (span_ <= 0) span_ += 360;
        middle_ = map_.west + span_ / 2;
        north_ = std::asinh(std::tan(map_.north * kRadians));
        south_ = std::asinh(std::tan(map_.south * kRadians));
    }

    std::optional<Place> operator()(int x, int y) const {
        const double across = static_cast<double>(x - rect_.left) / rect_.width;
        const double down = static_cast<double>(y - rect_.top) / rect_.height;
        if (!IsFlat(map_.projection)) return OnGlobe(2 * across - 1, 1 - 2 * down);
        const double longitude = map_.west + span_ * across;
        if (map_.projection == projection::kCartesian) {
            return Place{map_.north + (map_.south - map_.north) * down, longitude};
        }
        return Place{std::atan(std::sinh(north_ + (south_ - north_) * down)) / kRadians, longitude};
    }

    // Largest extent of a pixel, arc-minutes.
    double PixelMinutes() const {
        if (!IsFlat(map_.projection)) {
            // At the reach above a step outward is five times one in the middle.
            return 5 * 60 / kRadians * 2 / std::min(rect_.width, rect_.height);
        }
        const double tall = static_cast<double>(map_.north) - map_.south;
        return 60 * std::max(span_ / rect_.width, tall / rect_.height);
    }

  private:
    std::optional<Place> OnGlobe(double right, double up) const {
        const double r = std::hypot(right, up);
        if (r > kGlobeReach) return std::nullopt;
        const double c = std::asin(r);
        const double centre = map_.south * kRadians;
        const double part = r > 1e-9 ? up * std::sin(c) / r : 0;
        const double lat =
            std::asin(
                std::clamp(std::cos(c) * std::sin(centre) + part * std::cos(centre), -1.0, 1.0)) /
            kRadians;
        const double turn =
            std::atan2(right * std::sin(c),
                       r * std::cos(centre) * std::cos(c) - up * std::sin(centre) * std::sin(c)) /
            kRadians;
        return Place{lat, middle_ + (r > 1e-9 ? turn : 0)};
    }

    const MapDocument& map_;
    const MapRect& rect_;
    double span_ = 360;
    double middle_ = 0;
    double north_ = 0;
    double south_ = 0;
};

// One region of one colour.
struct Region {
    long land = 0;
    long water = 0;
    long sureLand = 0;
    long sureWater = 0;
    Place sureLandAt;
    Place sureWaterAt;
};

class Measure {
  public:
    Measure(const Image& image, const LandMask& mask)
        : image_(image), mask_(mask), seen_(image.pixels.size(), 0) {
        const auto precision = static_cast<std::size_t>(CurrentMap().precision);
        tolerance_ = kThinning[precision] + kCell + 1.5 * backwards_.PixelMinutes();
    }

    SeaFigures Run() {
        const MapRect& rect = mapView.rect;
        const std::uint32_t sea = PixelOfColour(SeaColour());
        const std::uint32_t land = PixelOfColour(LandColour());
        for (int y = rect.top + 1; y < rect.top + rect.height; ++y) {
            for (int x = rect.left + 1; x < rect.left + rect.width; ++x) {
                if (seen_[Index(x, y)] != 0) continue;
                if (image_.pixels[Index(x, y)] == sea) AddFilled(Walk(x, y));
                if (image_.pixels[Index(x, y)] == land) AddBare(Walk(x, y));
            }
        }
        return figures_;
    }

  private:
    std::size_t Index(int x, int y) const {
        return static_cast<std::size_t>(y) * static_cast<std::size_t>(image_.width) +
               static_cast<std::size_t>(x);
    }

    void AddFilled(const Region& region) {
        figures_.filled += region.land + region.water;
        figures_.filledLand += region.land;
        figures_.sureLeak += region.sureLand;
        if (2 * region.sureLand > region.land + region.water) {
            figures_.worstLeak = std::max(figures_.worstLeak, region.land + region.water);
        }
        if (region.sureLand > figures_.worstSureLeak) {
            figures_.worstSureLeak = region.sureLand;
            figures_.leakLat = region.sureLandAt.lat;
            figures_.leakLong = region.sureLandAt.longitude;
        }
    }

    void AddBare(const Region& region) {
        figures_.bareSea += region.water;
        if (region.sureWater > figures_.worstBare) {
            figures_.worstBare = region.sureWater;
            figures_.bareLat = region.sureWaterAt.lat;
            figures_.bareLong = region.sureWaterAt.longitude;
        }
    }

    void Count(Region& region, int x, int y, bool filled) {
        const std::optional<Place> place = backwards_(x, y);
        if (!place) return;
        ++figures_.map;
        const bool land = mask_.IsLand(place->lat, place->longitude);
        ++(land ? region.land : region.water);
        // Only what has the wrong colour is looked at closely.
        if (land != filled || mask_.IsNear(place->lat, place->longitude, tolerance_, !land)) return;
        if (land) {
            ++region.sureLand;
            region.sureLandAt = *place;
        } else {
            ++region.sureWater;
            region.sureWaterAt = *place;
        }
    }

    // The region around a pixel, four-connected.
    Region Walk(int startX, int startY) {
        const std::uint32_t pixel = image_.pixels[Index(startX, startY)];
        const bool filled = pixel == PixelOfColour(SeaColour());
        Region region;
        stack_.assign(1, {startX, startY});
        seen_[Index(startX, startY)] = 1;
        while (!stack_.empty()) {
            const SurfacePoint p = stack_.back();
            stack_.pop_back();
            Count(region, p.x, p.y, filled);
            for (const SurfacePoint& step : {SurfacePoint{1, 0}, {-1, 0}, {0, 1}, {0, -1}}) {
                const SurfacePoint q{p.x + step.x, p.y + step.y};
                if (q.x < 0 || q.y < 0 || q.x >= image_.width || q.y >= image_.height) continue;
                if (seen_[Index(q.x, q.y)] != 0 || image_.pixels[Index(q.x, q.y)] != pixel)
                    continue;
                seen_[Index(q.x, q.y)] = 1;
                stack_.push_back(q);
            }
        }
        return region;
    }

    const Image& image_;
    const LandMask& mask_;
    const Backwards backwards_;
    double tolerance_ = 0;
    std::vector<std::uint8_t> seen_;
    std::vector<SurfacePoint> stack_;
    SeaFigures figures_;
};

}  // namespace

SeaFigures MeasureSea(const Image& image, const LandMask& mask) {
    return Measure(image, mask).Run();
}

}  // namespace orvantis

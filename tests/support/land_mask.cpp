#include "support/land_mask.h"

#include <algorithm>
#include <cmath>

#include "map/point_database.h"
#include "support/temp_folder.h"
#include "text/bytes.h"

namespace orvantis {

namespace {

constexpr std::size_t kHead = 8;

// Numbers of 7 bits a byte, lowest first; the last byte is below 128.
struct NumberReader {
    const Bytes& bytes;
    std::size_t at;

    std::size_t Take() {
        std::size_t value = 0;
        for (unsigned shift = 0; at < bytes.size(); shift += 7) {
            const std::uint8_t byte = bytes[at++];
            value |= static_cast<std::size_t>(byte & 127) << shift;
            if (byte < 128) break;
        }
        return value;
    }
};

// Where the coasts and islands of a database file cross the meridians through the middles of the
// cells, latitudes in arc-minutes.
class Meridians {
  public:
    Meridians(const Bytes& file, int columns)
        : crossings_(static_cast<std::size_t>(columns)), cell_(21600.0 / columns) {
        const auto head = static_cast<std::size_t>(kLineHeaderSize);
        const auto size = static_cast<std::size_t>(kLinePointSize);
        for (std::size_t at = 0; at + head <= file.size();) {
            const LineHeader header = GetLineHeader(file.data() + at);
            at += head;
            const auto count = static_cast<std::size_t>(header.count);
            const int detailClass = header.code / 1000;
            for (std::size_t n = 1; n < count && (detailClass == 1 || detailClass == 5); ++n) {
                const std::uint8_t* point = file.data() + at + n * size;
                AddSegment(GetLinePoint(point - size), GetLinePoint(point));
            }
            at += count * size;
        }
        for (std::vector<double>& lats : crossings_) std::sort(lats.rbegin(), lats.rend());
    }

    // From the north; what lies between a first and a second is land.
    const std::vector<double>& operator[](std::size_t column) const { return crossings_[column]; }

  private:
    // Points lie on whole minutes. A quarter of one beside the middle no meridian meets any.
    void AddSegment(const LinePoint& from, const LinePoint& to) {
        const double west = std::min(from.longitude, to.longitude) + 10800.0;
        const double east = std::max(from.longitude, to.longitude) + 10800.0;
        for (double column = std::ceil((west - 0.25) / cell_ - 0.5);; ++column) {
            const double meridian = (column + 0.5) * cell_ + 0.25;
            if (meridian >= east) break;
            const double part = (meridian - 10800 - from.longitude) /
                                static_cast<double>(to.longitude - from.longitude);
            crossings_[static_cast<std::size_t>(column)].push_back(from.lat +
                                                                   part * (to.lat - from.lat));
        }
    }

    std::vector<std::vector<double>> crossings_;
    double cell_;  // arc-minutes
};

}  // namespace

// Columns and rows of 4 bytes each; then for each row the count of runs and their lengths, water
// first, from 180 west; rows from the north.
LandMask::LandMask(std::string_view path) {
    const Bytes bytes = FileBytes(path);
    if (bytes.size() < kHead) return;
    columns_ = GetI32(bytes.data());
    rows_ = GetI32(bytes.data() + 4);
    NumberReader reader{bytes, kHead};
    for (int row = 0; row < rows_; ++row) {
        const std::size_t runs = reader.Take();
        for (std::size_t run = 0; run < runs; ++run) {
            land_.insert(land_.end(), reader.Take(), run % 2);
        }
    }
    const auto cells = static_cast<std::size_t>(columns_) * static_cast<std::size_t>(rows_);
    if (land_.size() != cells) land_.clear();
}

int LandMask::Row(double lat) const {
    return std::clamp(static_cast<int>((90 - lat) / 180 * rows_), 0, rows_ - 1);
}

int LandMask::Column(double longitude) const {
    const double turn = longitude / 360 + 0.5;
    return std::min(static_cast<int>((turn - std::floor(turn)) * columns_), columns_ - 1);
}

bool LandMask::IsLand(double lat, double longitude) const {
    return land_[static_cast<std::size_t>(Row(lat)) * static_cast<std::size_t>(columns_) +
                 static_cast<std::size_t>(Column(longitude))] != 0;
}

// Ring by ring outward, since there is mostly such a cell close by.
bool LandMask::IsNear(double lat, double longitude, double minutes, bool land) const {
    const int reach = static_cast<int>(std::ceil(minutes * columns_ / 21600));
    const int row = Row(lat);
    const int column = Column(longitude);
    const auto has = [&](int y, int x) {
        if (y < 0 || y >= rows_) return false;
        const int wrapped = ((column + x) % columns_ + columns_) % columns_;
        return (land_[static_cast<std::size_t>(y) * static_cast<std::size_t>(columns_) +
                      static_cast<std::size_t>(wrapped)] != 0) == land;
    };
    for (int ring = 0; ring <= reach; ++ring) {
        for (int step = -ring; step <= ring; ++step) {
            if (has(row - ring, step) || has(row + ring, step)) return true;
            if (has(row + step, -ring) || has(row + step, ring)) return true;
        }
    }
    return false;
}

double LandMask::KeepLandOf(std::string_view level1Path) {
    const Meridians meridians(FileBytes(level1Path), columns_);
    std::vector<std::size_t> crossed(static_cast<std::size_t>(columns_));
    double all = 0;
    double lost = 0;
    for (int row = 0; row < rows_; ++row) {
        const double lat = 5400 - (row + 0.5) * 10800 / rows_;
        const double area = std::cos(lat / 60 * 3.14159265358979 / 180);
        for (std::size_t column = 0; column < crossed.size(); ++column) {
            const std::vector<double>& lats = meridians[column];
            std::size_t& passed = crossed[column];
            while (passed < lats.size() && lats[passed] > lat) ++passed;
            std::uint8_t& cell = land_[static_cast<std::size_t>(row) * crossed.size() + column];
            if (cell == 0) continue;
            all += area;
            if (passed % 2 != 0) continue;
            lost += area;
            cell = 0;
        }
    }
    return lost / all;
}

}  // namespace orvantis

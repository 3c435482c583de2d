#include "support/land_mask.h"

#include <algorithm>
#include <cmath>

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

}  // namespace orvantis

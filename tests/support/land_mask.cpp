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

bool LandMask::IsLand(double lat, double longitude) const {
    const double turn = longitude / 360 + 0.5;
    const int column = static_cast<int>((turn - std::floor(turn)) * columns_);
    const int row = std::clamp(static_cast<int>((90 - lat) / 180 * rows_), 0, rows_ - 1);
    return land_[static_cast<std::size_t>(row) * static_cast<std::size_t>(columns_) +
                 static_cast<std::size_t>(std::min(column, columns_ - 1))] != 0;
}

}  // namespace orvantis

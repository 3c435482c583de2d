#include "land_mask.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace orvantis::world {

namespace {

constexpr int kCellMin = 2;
constexpr int kColumns = 21600 / kCellMin;
constexpr int kRows = 10800 / kCellMin;
constexpr int kPoleMin = 5400;

using Rows = std::vector<std::vector<double>>;  // longitudes at which a coast crosses the row

// Latitude of a row's middle, arc-minutes.
double RowLat(int row) {
    return kPoleMin - (row + 0.5) * kCellMin;
}

void AddEdge(MinPoint a, MinPoint b, Rows& rows) {
    if (a.y == b.y) return;
    if (a.y > b.y) std::swap(a, b);
    const int first = static_cast<int>(std::ceil((kPoleMin - b.y) / double{kCellMin} - 0.5));
    const int last = static_cast<int>(std::ceil((kPoleMin - a.y) / double{kCellMin} - 0.5)) - 1;
    for (int row = std::max(0, first); row <= std::min(kRows - 1, last); ++row) {
        const double x = a.x + static_cast<double>(b.x - a.x) * (RowLat(row) - a.y) / (b.y - a.y);
        rows[static_cast<std::size_t>(row)].push_back(x);
    }
}

// A ring that the date line opened closes along it, or down to the South Pole on either side.
void AddRing(const MinLine& ring, Rows& rows) {
    for (std::size_t i = 1; i < ring.size(); ++i) AddEdge(ring[i - 1], ring[i], rows);
    const MinPoint& start = ring.front();
    const MinPoint& end = ring.back();
    if (end.x == start.x) {
        AddEdge(end, start, rows);
    } else {
        AddEdge(end, {end.x, -kPoleMin, -1}, rows);
        AddEdge({start.x, -kPoleMin, -1}, start, rows);
    }
}

void PutNumber(Bytes& file, unsigned value) {
    for (; value > 127; value >>= 7) file.push_back(static_cast<std::uint8_t>(value | 128));
    file.push_back(static_cast<std::uint8_t>(value));
}

void PutRow(std::vector<double>& crossings, Bytes& file) {
    std::sort(crossings.begin(), crossings.end());
    std::vector<int> columns;
    for (const double x : crossings) {
        const int column = static_cast<int>(std::floor((x + 10800) / kCellMin + 0.5));
        // Land or water narrower than a cell vanishes.
        if (!columns.empty() && columns.back() == column) {
            columns.pop_back();
        } else {
            columns.push_back(column);
        }
    }
    columns.push_back(kColumns);
    PutNumber(file, static_cast<unsigned>(columns.size()));
    int before = 0;
    for (const int column : columns) {
        PutNumber(file, static_cast<unsigned>(column - before));
        before = column;
    }
}

}  // namespace

Bytes MakeLandMask(const std::vector<LandMass>& lands) {
    Rows rows(kRows);
    for (const LandMass& land : lands) {
        for (const MinLine& ring : land.rings) AddRing(ring, rows);
    }
    Bytes file(8);
    PutI32(file.data(), kColumns);
    PutI32(file.data() + 4, kRows);
    for (std::vector<double>& row : rows) PutRow(row, file);
    return file;
}

}  // namespace orvantis::world

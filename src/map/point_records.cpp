// The records of the point database to and from their bytes. The layouts stand at the records in
// point_database.h.
#include <algorithm>

#include "map/point_database.h"
#include "text/strings.h"

namespace orvantis {

namespace {

constexpr std::size_t kNameWidth = 20;

}  // namespace

LineHeader GetLineHeader(const std::uint8_t* p) {
    LineHeader header;
    header.code = GetI16(p);
    header.count = GetI16(p + 2);
    header.name = TrimRight(GetText(p + 4, kNameWidth));
    header.latMin = GetI16(p + 24);
    header.latMax = GetI16(p + 26);
    header.longMin = GetI16(p + 28);
    header.longMax = GetI16(p + 30);
    return header;
}

void PutLineHeader(std::uint8_t* p, const LineHeader& header) {
    PutI16(p, header.code);
    PutI16(p + 2, header.count);
    PutText(p + 4, kNameWidth, header.name);
    PutI16(p + 24, header.latMin);
    PutI16(p + 26, header.latMax);
    PutI16(p + 28, header.longMin);
    PutI16(p + 30, header.longMax);
}

LinePoint GetLinePoint(const std::uint8_t* p) {
    return {GetI16(p), GetI16(p + 2), GetI16(p + 4)};
}

void PutLinePoint(std::uint8_t* p, const LinePoint& linePoint) {
    PutI16(p, linePoint.level);
    PutI16(p + 2, linePoint.lat);
    PutI16(p + 4, linePoint.longitude);
}

LineIndexEntry GetLineIndexEntry(const std::uint8_t* p) {
    LineIndexEntry entry;
    entry.code = GetI16(p);
    for (std::size_t level = 1; level <= 5; ++level) {
        entry.pointCount[level] = GetI16(p + 2 * level);
        entry.pointPos[level] = GetI32(p + 8 + 4 * level);
    }
    entry.latMin = GetI16(p + 32);
    entry.latMax = GetI16(p + 34);
    entry.longMin = GetI16(p + 36);
    entry.longMax = GetI16(p + 38);
    return entry;
}

void PutLineIndexEntry(std::uint8_t* p, const LineIndexEntry& entry) {
    PutI16(p, entry.code);
    for (std::size_t level = 1; level <= 5; ++level) {
        PutI16(p + 2 * level, entry.pointCount[level]);
        PutI32(p + 8 + 4 * level, entry.pointPos[level]);
    }
    PutI16(p + 32, entry.latMin);
    PutI16(p + 34, entry.latMax);
    PutI16(p + 36, entry.longMin);
    PutI16(p + 38, entry.longMax);
}

void AppendLine(Bytes& file, std::int16_t code, std::string_view name,
                const std::vector<LinePoint>& points) {
    LineHeader header;
    header.code = code;
    header.name = name;
    header.count = static_cast<std::int16_t>(std::min<std::size_t>(points.size(), 32767));
    if (header.count > 0) {
        header.latMin = header.latMax = points.front().lat;
        header.longMin = header.longMax = points.front().longitude;
    }
    for (int i = 0; i < header.count; ++i) {
        const LinePoint& linePoint = points[static_cast<std::size_t>(i)];
        header.latMin = std::min(header.latMin, linePoint.lat);
        header.latMax = std::max(header.latMax, linePoint.lat);
        header.longMin = std::min(header.longMin, linePoint.longitude);
        header.longMax = std::max(header.longMax, linePoint.longitude);
    }

    std::size_t at = file.size();
    file.resize(at + static_cast<std::size_t>(kLineHeaderSize + kLinePointSize * header.count));
    PutLineHeader(&file[at], header);
    at += static_cast<std::size_t>(kLineHeaderSize);
    for (int i = 0; i < header.count; ++i) {
        PutLinePoint(&file[at], points[static_cast<std::size_t>(i)]);
        at += static_cast<std::size_t>(kLinePointSize);
    }
}

}  // namespace orvantis

#include "cli/chart_losses.h"

#include <array>

#include "charts/comments.h"

namespace orvantis::cli {

namespace {

using RecordBytes = std::array<std::uint8_t, kFileChartSize>;
using EventBytes = std::array<std::uint8_t, kChartEventSize>;

// Compared as bytes, so that a number that isn't one equals itself.
RecordBytes BytesOf(const FileChart& chart) {
    RecordBytes bytes{};
    PutFileChart(bytes.data(), chart);
    return bytes;
}
EventBytes BytesOf(const ChartEvent& event) {
    EventBytes bytes{};
    PutChartEvent(bytes.data(), event);
    return bytes;
}

bool SameAttachments(const StoredChart& a, const StoredChart& b) {
    if (a.attachments.size() != b.attachments.size()) return false;
    for (std::size_t i = 0; i < a.attachments.size(); ++i) {
        const ChartAttachment& left = a.attachments[i];
        const ChartAttachment& right = b.attachments[i];
        if (BytesOf(left.event) != BytesOf(right.event) || left.note != right.note) return false;
    }
    return true;
}

bool SameCoordinates(const StoredChart& a, const StoredChart& b) {
    const ChartEvent& left = a.chart.event;
    const ChartEvent& right = b.chart.event;
    if (left.longitude == right.longitude && left.latitude == right.latitude) return true;
    ChartEvent place = left;
    place.longitude = right.longitude;
    place.latitude = right.latitude;
    return BytesOf(place) == BytesOf(left);
}

// What has no kind of its own.
bool SameRest(const StoredChart& a, const StoredChart& b) {
    FileChart rest = a.chart;
    rest.event.name = b.chart.event.name;
    rest.event.longitude = b.chart.event.longitude;
    rest.event.latitude = b.chart.event.latitude;
    rest.event2 = b.chart.event2;
    rest.chartFlags = b.chart.chartFlags;
    return BytesOf(rest) == BytesOf(b.chart);
}

struct Kind {
    std::string_view name;
    bool (*same)(const StoredChart& a, const StoredChart& b);
};

constexpr std::array<Kind, 7> kKinds = {{
    {"names beyond 30 characters",
     [](const StoredChart& a, const StoredChart& b) {
         return a.chart.event.name == b.chart.event.name;
     }},
    {"coordinates finer than a second", SameCoordinates},
    {"second moments and titles",
     [](const StoredChart& a, const StoredChart& b) {
         return BytesOf(a.chart.event2) == BytesOf(b.chart.event2);
     }},
    {"the two options of a chart",
     [](const StoredChart& a, const StoredChart& b) {
         return a.chart.chartFlags == b.chart.chartFlags;
     }},
    {"reserved fields", SameRest},
    {"attached events", SameAttachments},
    {"last blanks and end marks of comments",
     [](const StoredChart& a, const StoredChart& b) { return a.comment == b.comment; }},
}};
static_assert(kMostComment == 32200);

}  // namespace

ChartLoss CutComments(std::int16_t type, ChartList& list) {
    ChartLoss loss{"comments beyond 32200 characters"};
    if (type == chart_file::kFormat3) return loss;
    std::int32_t number = 0;
    for (StoredChart& stored : list.charts) {
        ++number;
        if (stored.comment.size() <= kMostComment) continue;
        stored.comment.resize(kMostComment);
        if (loss.charts++ == 0) loss.first = number;
    }
    return loss;
}

std::vector<ChartLoss> FindLosses(const ChartList& before, const ChartList& after) {
    std::vector<ChartLoss> losses;
    for (const Kind& kind : kKinds) {
        ChartLoss loss{kind.name};
        for (std::size_t i = 0; i < before.charts.size(); ++i) {
            if (kind.same(before.charts[i], after.charts[i])) continue;
            if (loss.charts++ == 0) loss.first = static_cast<std::int32_t>(i) + 1;
        }
        if (loss.charts != 0) losses.push_back(loss);
    }
    return losses;
}

}  // namespace orvantis::cli

// Makes data/sample.cht, a chart file of public events, for a first look at the program.
//
//     build-sample data/sample.cht
#include <array>
#include <cstdio>
#include <string_view>

#include "charts/KVCharts.h"
#include "session/files.h"
#include "text/bytes.h"

namespace {

using namespace orvantis;

// A coordinate in degrees, minutes and seconds; `sign` -1 on the side that counts negative.
struct Angle {
    int sign;
    int degrees;
    int minutes;
    int seconds;
};

constexpr float Degrees(const Angle& angle) {
    const double value = angle.degrees + angle.minutes / 60.0 + angle.seconds / 3600.0;
    return static_cast<float>(angle.sign * value);
}

constexpr int kNorthOrWest = 1;
constexpr int kEast = -1;

struct PublicEvent {
    std::string_view name;
    std::string_view place;
    std::string_view country;
    Angle latitude;
    Angle longitude;
    std::int16_t year;
    std::uint8_t month;
    std::uint8_t day;
    std::uint8_t hour;
    std::uint8_t minute;
    std::uint8_t second;
    float zoneHours;  // west positive: clock time plus zone is Universal Time
    std::string_view zoneName;
};

constexpr std::array<PublicEvent, 6> kEvents = {{
    {"Apollo 11 lands on the Moon",
     "Houston",
     "USA",
     {kNorthOrWest, 29, 46, 0},
     {kNorthOrWest, 95, 22, 0},
     1969,
     7,
     20,
     20,
     17,
     40,
     0,
     "GMT"},
    {"Total solar eclipse",
     "Ramnicu Valcea",
     "Romania",
     {kNorthOrWest, 45, 6, 0},
     {kEast, 24, 22, 0},
     1999,
     8,
     11,
     11,
     3,
     0,
     0,
     "GMT"},
    {"The year 2000",
     "Greenwich",
     "England",
     {kNorthOrWest, 51, 29, 0},
     {kNorthOrWest, 0, 0, 0},
     2000,
     1,
     1,
     0,
     0,
     0,
     0,
     "GMT"},
    {"Berlin Wall opens",
     "Berlin",
     "Germany",
     {kNorthOrWest, 52, 31, 0},
     {kEast, 13, 24, 0},
     1989,
     11,
     9,
     18,
     53,
     0,
     -1,
     "CET"},
    {"First powered flight",
     "Kitty Hawk NC",
     "USA",
     {kNorthOrWest, 36, 1, 0},
     {kNorthOrWest, 75, 40, 0},
     1903,
     12,
     17,
     10,
     35,
     0,
     5,
     "EST"},
    {"Sputnik 1 launched",
     "Baikonur",
     "USSR",
     {kNorthOrWest, 45, 55, 0},
     {kEast, 63, 20, 0},
     1957,
     10,
     4,
     19,
     28,
     34,
     0,
     "GMT"},
}};

FileChart ToChart(const PublicEvent& event) {
    FileChart chart;
    chart.event.name = event.name;
    chart.event.place = event.place;
    chart.event.country = event.country;
    chart.event.latitude = Degrees(event.latitude);
    chart.event.longitude = Degrees(event.longitude);
    chart.event.year = event.year;
    chart.event.month = event.month;
    chart.event.day = event.day;
    chart.event.hour = event.hour;
    chart.event.minute = event.minute;
    chart.event.second = event.second;
    chart.event.zoneHours = event.zoneHours;
    chart.event.zoneName = event.zoneName;
    chart.houseCode = 5;     // Placidus
    chart.ayanamsaCode = 1;  // tropical
    return chart;
}

Bytes SampleFile() {
    Bytes bytes(static_cast<std::size_t>(kFileChartSize) * (kEvents.size() + 1));
    PutI16(bytes.data(), chart_file::kFormat2);
    PutText(bytes.data() + 2, 80, "Public events");
    std::uint8_t* slot = bytes.data();
    for (const PublicEvent& event : kEvents) {
        slot += kFileChartSize;
        PutFileChart(slot, ToChart(event));
    }
    return bytes;
}

}  // namespace

int main(int argc, char** argv) {
    if (argc != 2) {
        std::fputs("build-sample: call it with the path of the file to make\n", stderr);
        return 2;
    }
    if (!ReplaceFileSilently(ProgramPath(argv[1]), SampleFile())) {
        RunTimeError failure;
        TakeRunTimeError(failure);
        std::fprintf(stderr, "build-sample: %s: %s\n", argv[1], failure.description.c_str());
        return 1;
    }
    return 0;
}

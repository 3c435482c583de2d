// The command line as a user calls it.
#include <algorithm>
#include <cmath>
#include <cstdio>
#include <filesystem>
#include <gtest/gtest.h>
#include <map>
#include <nlohmann/json.hpp>
#include <random>
#include <set>
#include <sstream>

#include "charts/KVCharts.h"
#include "map/map_document.h"
#include "support/paths.h"
#include "support/run_program.h"
#include "support/temp_folder.h"
#include "text/bytes.h"

namespace orvantis {
namespace {

using Json = nlohmann::json;

const std::string kProgram = ProgramFile("orvantis-cli");
const std::string kSample = DataFile("sample.cht");
const std::string kLevel1 = DataFile("level1.pnt");
constexpr double kDegree = 3.14159265358979323846 / 180;

class CommandLine : public ::testing::Test {
  protected:
    // All tests of one program share the user's folder, so that the database is made once.
    static void SetUpTestSuite() { home_ = new TempFolder; }
    static void TearDownTestSuite() {
        delete home_;
        home_ = nullptr;
    }

    static std::vector<std::string> Environment() {
        return {"XDG_DATA_HOME=" + home_->Path(), "XDG_CONFIG_HOME=" + home_->Path()};
    }
    static ProgramResult Run(const std::vector<std::string>& arguments) {
        return RunProgram(kProgram, arguments, Environment());
    }

    // Writes a type 2 chart file.
    std::string WriteCharts(std::string_view name, const std::vector<FileChart>& charts) const {
        Bytes bytes((charts.size() + 1) * static_cast<std::size_t>(kFileChartSize), ' ');
        PutI16(bytes.data(), 2);
        for (std::size_t n = 0; n < charts.size(); ++n) {
            PutFileChart(&bytes[(n + 1) * static_cast<std::size_t>(kFileChartSize)], charts[n]);
        }
        return folder_.Write(name, bytes);
    }

    TempFolder folder_;
    static TempFolder* home_;
};

TempFolder* CommandLine::home_ = nullptr;

struct Call {
    std::vector<std::string> arguments;
    int exitCode;
    std::string errors;  // whole
};

const std::string kViewNeeds =
    "S,W,N,E in degrees is needed, south below north, at least a sixtieth of a degree high and "
    "wide\n";

TEST_F(CommandLine, AWrongCallIsToldInOneLineWithExitCode2) {
    const std::vector<Call> calls = {
        {{}, 2, "orvantis-cli: no verb: see orvantis-cli --help\n"},
        {{"paint"}, 2, "orvantis-cli: paint: unknown verb, see orvantis-cli --help\n"},
        {{"chart"}, 2, "orvantis-cli: chart: takes one FILE[:N]\n"},
        {{"chart", kSample, "--xml"}, 2, "orvantis-cli: --xml: unknown option\n"},
        {{"charts", "a", "b"}, 2, "orvantis-cli: charts: takes one FILE\n"},
        {{"lines", kSample},
         2,
         "orvantis-cli: lines: one of --geojson, --csv and --kml is needed\n"},
        {{"lines", kSample, "--csv", "--types"}, 2, "orvantis-cli: --types: needs a value\n"},
        {{"lines", kSample, "--csv", "--types", "12"},
         2,
         "orvantis-cli: --types 12: a list of numbers from 1 to 11 is needed\n"},
        {{"lines", kSample, "--csv", "--geodetic", "181"},
         2,
         "orvantis-cli: --geodetic 181: a number from -180 to 180 is needed\n"},
        {{"lines", kSample, "--csv", "--paran-point", "1.5"},
         2,
         "orvantis-cli: --paran-point 1.5: a whole number is needed\n"},
        {{"lines", kSample, "--csv", "--limit", "x"},
         2,
         "orvantis-cli: --limit x: a number from 0 to 90 is needed\n"},
        {{"parans"}, 2, "orvantis-cli: parans: takes one FILE[:N]\n"},
        {{"parans", kSample, "--limit", "91"},
         2,
         "orvantis-cli: --limit 91: a number from 0 to 90 is needed\n"},
        {{"lines", kSample, "--csv", "--points", "1,x"},
         2,
         "orvantis-cli: --points 1,x: a list of numbers from 1 to 36 is needed\n"},
        {{"lines", kSample, "--csv", "--mode", "both"},
         2,
         "orvantis-cli: --mode both: mundo or zodiacal is needed\n"},
        {{"render"}, 2, "orvantis-cli: render: -o OUT.png, OUT.svg or OUT.pdf is needed\n"},
        {{"render", kSample, "-o", "a.png", "--types", "1,12"},
         2,
         "orvantis-cli: --types 1,12: a list of numbers from 1 to 11 is needed\n"},
        {{"render", kSample, "-o", "a.png", "--points", "1,37"},
         2,
         "orvantis-cli: --points 1,37: a list of numbers from 1 to 36 is needed\n"},
        {{"render", "-o", "a.gif"},
         2,
         "orvantis-cli: -o a.gif: a name that ends in .png, .svg or .pdf is needed\n"},
        {{"render", "-o", "a.svg", "--grid", "15"},
         2,
         "orvantis-cli: --grid 15: LAT,LONG is needed, steps in degrees from 1 to 90\n"},
        {{"render", "-o", "a.svg", "--grid", "0.5,15"},
         2,
         "orvantis-cli: --grid 0.5,15: LAT,LONG is needed, steps in degrees from 1 to 90\n"},
        {{"render", "-o", "a.svg", "--grid", "15,91"},
         2,
         "orvantis-cli: --grid 15,91: LAT,LONG is needed, steps in degrees from 1 to 90\n"},
        {{"render", "-o", "a.svg", "--grid", "15,30,45"},
         2,
         "orvantis-cli: --grid 15,30,45: LAT,LONG is needed, steps in degrees from 1 to 90\n"},
        {{"render", "-o", "a.png", "--size", "10x10"},
         2,
         "orvantis-cli: --size 10x10: a size such as 1920x1080 is needed, each from 64 to 16384\n"},
        {{"render", "-o", "a.png", "--precision", "6"},
         2,
         "orvantis-cli: --precision 6: a number from 1 (finest) to 5 is needed\n"},
        {{"render", "-o", "a.png", "--view", "1,2,3"},
         2,
         "orvantis-cli: --view 1,2,3: " + kViewNeeds},
        {{"render", "-o", "a.png", "--view", "0,0,10,0.001"},
         2,
         "orvantis-cli: --view 0,0,10,0.001: " + kViewNeeds},
        {{"render", "-o", "a.png", "--view", "0,180,10,-179.999"},
         2,
         "orvantis-cli: --view 0,180,10,-179.999: " + kViewNeeds},
        {{"render", "-o", "a.png", "--view", "0,179.995,10,-179.995"},
         2,
         "orvantis-cli: --view 0,179.995,10,-179.995: " + kViewNeeds},
        {{"render", "-o", "a.png", "--view", "10,0,10.01,20"},
         2,
         "orvantis-cli: --view 10,0,10.01,20: " + kViewNeeds},
        {{"render", "-o", "a.png", "--view", "0,-180,89.5,180", "--projection", "mercator"},
         2,
         "orvantis-cli: --view: latitudes from -89 to 89 are needed on a Mercator map\n"},
        {{"render", "-o", "a.png", "--projection", "mercator", "--view", "-90,-180,80,180"},
         2,
         "orvantis-cli: --view: latitudes from -89 to 89 are needed on a Mercator map\n"},
        {{"chart", "none.cht:two"},
         2,
         "orvantis-cli: none.cht:two: a chart's number, from 1, must follow the colon\n"},
        {{"chart", kSample + ":0"},
         2,
         "orvantis-cli: " + kSample + ":0: a chart's number, from 1, must follow the colon\n"},
        {{"database", "check"}, 2, "orvantis-cli: database: takes build FILE or check FILE\n"},
    };
    for (const Call& call : calls) {
        const ProgramResult result = Run(call.arguments);
        EXPECT_EQ(result.exitCode, call.exitCode) << call.errors;
        EXPECT_EQ(result.errors, call.errors);
        EXPECT_EQ(result.output, "");
    }
}

TEST_F(CommandLine, HelpOfEveryVerbShowsAnExample) {
    for (const char* verb :
         {"chart", "charts", "convert", "lines", "parans", "render", "database"}) {
        const ProgramResult result = Run({verb, "--help"});
        EXPECT_EQ(result.exitCode, 0);
        EXPECT_NE(result.output.find("Example: orvantis-cli " + std::string(verb)),
                  std::string::npos);
    }
}

TEST_F(CommandLine, AFileThatCannotBeReadIsToldInOneLineWithExitCode3) {
    const std::string none = folder_.File("none.cht");
    const std::string empty = folder_.Write("empty.cht", "");
    const std::string cut = folder_.Write("cut.cht", Bytes{2, 0, ' ', ' '});
    const std::vector<Call> calls = {
        {{"chart", none}, 3, "orvantis-cli: " + none + ": File not found\n"},
        {{"charts", none}, 3, "orvantis-cli: " + none + ": File not found\n"},
        {{"lines", none, "--csv"}, 3, "orvantis-cli: " + none + ": File not found\n"},
        {{"parans", none}, 3, "orvantis-cli: " + none + ": File not found\n"},
        {{"parans", empty}, 3, "orvantis-cli: " + empty + ": holds no chart 1\n"},
        {{"charts", cut}, 3, "orvantis-cli: " + cut + ": holds no charts\n"},
        {{"chart", folder_.Path()},
         3,
         "orvantis-cli: " + folder_.Path() + ": not a file that can be read\n"},
        {{"chart", empty}, 3, "orvantis-cli: " + empty + ": holds no chart 1\n"},
        {{"chart", cut}, 3, "orvantis-cli: " + cut + ": holds no chart 1\n"},
        {{"chart", kSample + ":9999"}, 3, "orvantis-cli: " + kSample + ": holds no chart 9999\n"},
        {{"render", none, "-o", folder_.File("a.png")},
         3,
         "orvantis-cli: " + none + ": File not found\n"},
        {{"render", "-o", folder_.File("a.png"), "--map", none},
         3,
         "orvantis-cli: " + none + ": File not found\n"},
        {{"database", "check", none}, 3, "orvantis-cli: " + none + ": File not found\n"},
    };
    for (const Call& call : calls) {
        const ProgramResult result = Run(call.arguments);
        EXPECT_EQ(result.exitCode, call.exitCode) << call.errors;
        EXPECT_EQ(result.errors, call.errors);
    }
    EXPECT_FALSE(std::filesystem::exists(folder_.File("a.png")));
}

TEST_F(CommandLine, FilesWithoutChartsAreListedAndPiecesOfChartsAreTold) {
    Bytes head(82, ' ');
    const struct {
        Bytes bytes;
        int exitCode;
    } rows[] = {{{}, 0},
                {Bytes(1, 'A'), 3},
                {Bytes(110, 'A'), 3},
                {Bytes(114, 'A'), 3},
                {[&] {
                     PutI16(head.data(), 1);
                     return head;
                 }(),
                 0},
                {[&] {
                     PutI16(head.data(), 2);
                     return head;
                 }(),
                 0},
                {[&] {
                     head.pop_back();
                     return head;
                 }(),
                 3}};
    for (const auto& row : rows) {
        const std::string path = folder_.Write("few.cht", row.bytes);
        const ProgramResult result = Run({"charts", path});
        EXPECT_EQ(result.exitCode, row.exitCode) << row.bytes.size();
        EXPECT_EQ(result.errors,
                  row.exitCode == 0 ? "" : "orvantis-cli: " + path + ": holds no charts\n");
        EXPECT_EQ(result.output, "");
    }
}

// A chart of the oldest format.
Bytes OldRecord(char initial, std::int16_t hour) {
    Bytes record(static_cast<std::size_t>(kFormat0Size), ' ');
    record[0] = static_cast<std::uint8_t>(initial);
    for (const std::size_t at : {30, 32, 83, 85, 107, 109}) PutI16(&record[at], 1);
    PutI16(&record[87], 1990);
    PutI16(&record[89], hour);
    for (const std::size_t at : {91, 93, 95, 97, 99, 101, 103, 111, 113}) PutI16(&record[at], 0);
    PutF32(&record[74], 0);
    PutI16(&record[105], -1);
    return record;
}

// A file of the wrong form has no way to fail: its records are read as they fall.
TEST_F(CommandLine, ARecordWithANumberOutOfRangeIsListedAmongTheOthersAndCalculated) {
    Bytes bytes;
    for (const auto& [initial, hour] :
         {std::pair{'A', 1}, std::pair{'B', 300}, std::pair{'C', 2}}) {
        const Bytes record = OldRecord(initial, static_cast<std::int16_t>(hour));
        bytes.insert(bytes.end(), record.begin(), record.end());
    }
    for (const std::size_t at : {107, 109}) PutI16(&bytes[115 + at], 511);  // codes of no table
    const std::string path = folder_.Write("old.cht", bytes);
    const ProgramResult list = Run({"charts", path, "--json"});
    EXPECT_EQ(list.exitCode, 0);
    EXPECT_EQ(list.errors, "");
    const Json charts = Json::parse(list.output);
    ASSERT_EQ(charts["charts"].size(), 3U);
    EXPECT_EQ(charts["charts"][1]["name"], "B");
    EXPECT_EQ(charts["charts"][2]["name"], "C");
    for (const char* number : {":1", ":2", ":3"}) {
        EXPECT_EQ(Run({"chart", path + number}).exitCode, 0) << number;
    }
}

TEST_F(CommandLine, ControlCharactersOfAChartAreShownAsQuestionMarks) {
    FileChart chart;
    chart.event.name = "A\x1B[2J\x07z\x7F\x9D";
    chart.event.place = "\x08place\n";
    chart.event.year = 1990;
    chart.event.month = chart.event.day = 1;
    const std::string path = WriteCharts("hostile.cht", {chart});
    for (const char* verb : {"charts", "chart"}) {
        const ProgramResult result = Run({verb, path});
        EXPECT_EQ(result.exitCode, 0) << result.errors;
        EXPECT_NE(result.output.find("A?[2J?z??, "), std::string::npos) << result.output;
        EXPECT_NE(result.output.find(", ?place?"), std::string::npos) << result.output;
    }
    const ProgramResult json = Run({"charts", path, "--json"});
    EXPECT_EQ(Json::parse(json.output)["charts"][0]["name"], "A\x1B[2J\x07z\x7F\xC2\x9D");
}

TEST_F(CommandLine, AHugeFileOfChartsIsListedInLittleMemory) {
    const std::string path = folder_.Write("huge.cht", Bytes{2, 0});
    std::filesystem::resize_file(path, kFileChartSize * 40000);
    const ProgramResult result = Run({"charts", path});
    EXPECT_EQ(result.exitCode, 0);
    EXPECT_EQ(std::count(result.output.begin(), result.output.end(), '\n'), 39999);
#ifndef __SANITIZE_ADDRESS__  // the sanitizer keeps freed memory back
    EXPECT_LT(result.peakKilobytes, 60 * 1024);
#endif
}

TEST_F(CommandLine, ATruncatedMapIsToldInTheProgramsWordsAndNothingIsWritten) {
    const std::string map = folder_.Write("cut.ovm", Bytes(100));
    const ProgramResult result =
        Run({"render", "-o", folder_.File("a.png"), "--map", map, "--size", "400x300"});
    EXPECT_EQ(result.exitCode, 3);
    EXPECT_EQ(result.errors,
              "orvantis-cli: Unable to open map file: " + map + " (Input past end of file)\n");
    EXPECT_FALSE(std::filesystem::exists(folder_.File("a.png")));
}

TEST_F(CommandLine, RandomBytesInEveryKindOfFileNeitherCrashNorHang) {
    std::mt19937 random(20260331);
    for (int round = 0; round < 12; ++round) {
        Bytes bytes(1 + random() % 5000);
        for (std::uint8_t& byte : bytes) byte = static_cast<std::uint8_t>(random());
        const std::string chart = folder_.Write("r.cht", bytes);
        const std::string map = folder_.Write("r.ovm", bytes);
        const std::string settings = folder_.Write("r.ovs", bytes);
        const std::string points = folder_.Write("r.pts", bytes);
        const std::string database = folder_.Write("r.pnt", bytes);
        const std::string out = folder_.File("r.png");
        for (const std::vector<std::string>& call : std::vector<std::vector<std::string>>{
                 {"charts", chart, "--json"},
                 {"chart", chart, "--json"},
                 {"lines", chart, "--geojson"},
                 {"parans", chart},
                 {"render", "-o", out, "--size", "200x200", "--map", map},
                 {"render", "-o", out, "--size", "200x200", "--settings", settings},
                 {"render", kSample, "-o", out, "--size", "200x200", "--points", points},
                 {"database", "check", database}}) {
            const ProgramResult result = Run(call);
            EXPECT_EQ(result.signal, 0) << call.front();
            EXPECT_GE(result.exitCode, 0) << call.front();
            EXPECT_LE(result.exitCode, 3) << call.front();
        }
        EXPECT_EQ(FileBytes(chart), bytes);
        EXPECT_EQ(FileBytes(map), bytes);
        EXPECT_EQ(FileBytes(database), bytes);
    }
}

TEST_F(CommandLine, ChartsListsTheSample) {
    const ProgramResult result = Run({"charts", kSample, "--json"});
    ASSERT_EQ(result.exitCode, 0) << result.errors;
    const Json list = Json::parse(result.output);
    EXPECT_EQ(list["type"], 2);
    ASSERT_GE(list["charts"].size(), 3U);
    EXPECT_EQ(list["charts"][0]["number"], 1);
    EXPECT_FALSE(list["charts"][0]["name"].get<std::string>().empty());
}

TEST_F(CommandLine, AChartAsJsonHasItsFields) {
    const ProgramResult result = Run({"chart", kSample + ":1", "--json"});
    ASSERT_EQ(result.exitCode, 0) << result.errors;
    const Json chart = Json::parse(result.output);
    for (const char* field : {"name", "julianDayET", "julianDayUT", "deltaT", "obliquity", "ramc",
                              "zodiacOffset", "latitude", "longitude", "houseSystem"}) {
        EXPECT_TRUE(chart.contains(field)) << field;
    }
    EXPECT_EQ(chart["cusps"].size(), 12U);
    ASSERT_EQ(chart["points"].size(), 36U);
    for (const Json& point : chart["points"]) {
        for (const char* field :
             {"number", "name", "lon", "lat", "dist", "lonSpeed", "latSpeed", "ra", "dec"}) {
            EXPECT_TRUE(point.contains(field)) << field;
        }
    }
}

// Charts over all years and latitudes of the ephemeris, both hemispheres.
std::vector<FileChart> ManyCharts(int count) {
    std::mt19937 random(1900);
    std::vector<FileChart> charts;
    for (int n = 0; n < count; ++n) {
        FileChart chart;
        chart.event.name = "Chart " + std::to_string(n + 1);
        chart.event.year = static_cast<std::int16_t>(1801 + n * 298 / count);
        chart.event.month = static_cast<std::uint8_t>(1 + random() % 12);
        chart.event.day = static_cast<std::uint8_t>(1 + random() % 28);
        chart.event.hour = static_cast<std::uint8_t>(random() % 24);
        chart.event.minute = static_cast<std::uint8_t>(random() % 60);
        chart.event.latitude = static_cast<float>(n % 19 * 9.9 - 89);
        chart.event.longitude = static_cast<float>(random() % 359) - 179;
        chart.houseCode = static_cast<std::uint8_t>(n % 9 + 1);
        chart.ayanamsaCode = 1;
        charts.push_back(chart);
    }
    return charts;
}

// Calls `check` with every vertex of a feature.
template <typename Check>
void ForEachVertex(const Json& geometry, const Check& check) {
    if (geometry["type"] == "LineString") {
        for (const Json& v : geometry["coordinates"]) check(v[0], v[1]);
        return;
    }
    ASSERT_EQ(geometry["type"], "MultiLineString");
    for (const Json& run : geometry["coordinates"]) {
        for (const Json& v : run) check(v[0], v[1]);
    }
}

// The altitude of a body and its hour angle by the textbook's formula (J. Meeus, Astronomical
// Algorithms, chapter 13), from what the verb "chart" prints. Tolerance 2e-5 degrees (0.07 seconds
// of arc): right ascensions are stored with 32 bits, which end at 1.5e-5 degrees.
TEST_F(CommandLine, EveryVertexOfEveryLineHasItsPointOnTheMeridianOrTheHorizon) {
    constexpr double tolerance = 2e-5;
    constexpr int count = 40;
    const std::string path = WriteCharts("many.cht", ManyCharts(count));
    long vertices = 0;
    for (int n = 1; n <= count; ++n) {
        const std::string address = path + ":" + std::to_string(n);
        const ProgramResult chartResult = Run({"chart", address, "--json"});
        const ProgramResult lineResult =
            Run({"lines", address, "--geojson", "--points", "1,3-36", "--types", "1-4"});
        ASSERT_EQ(chartResult.exitCode, 0) << chartResult.errors;
        ASSERT_EQ(lineResult.exitCode, 0) << lineResult.errors;
        const Json chart = Json::parse(chartResult.output);
        const Json lines = Json::parse(lineResult.output);
        const double siderealTime = chart["ramc"].get<double>() - chart["longitude"].get<double>();
        ASSERT_GT(lines["features"].size(), 60U);
        for (const Json& feature : lines["features"]) {
            const int type = feature["properties"]["type"];
            const std::size_t p = feature["properties"]["point"];
            const double ra = chart["points"][p - 1]["ra"];
            const double dec = chart["points"][p - 1]["dec"];
            ForEachVertex(feature["geometry"], [&](double longitude, double lat) {
                ++vertices;
                const double h = std::remainder(siderealTime + longitude - ra, 360.0);
                if (type <= 2) {
                    EXPECT_NEAR(std::abs(h), type == 1 ? 0 : 180, tolerance);
                    return;
                }
                const double sine =
                    std::sin(lat * kDegree) * std::sin(dec * kDegree) +
                    std::cos(lat * kDegree) * std::cos(dec * kDegree) * std::cos(h * kDegree);
                EXPECT_NEAR(std::asin(sine) / kDegree, 0, tolerance)
                    << address << " point " << p << " at " << lat << " " << longitude;
                // Rising in the east, setting in the west; due north and south at the line's ends.
                const double west = std::sin(h * kDegree);
                EXPECT_TRUE(type == 3 ? west < 1e-3 : west > -1e-3)
                    << address << " point " << p << " dec " << dec << " at " << lat << " "
                    << longitude;
            });
        }
    }
    EXPECT_GT(vertices, 100000);
}

TEST_F(CommandLine, ParansAreListedFromNorthToSouthWithBothPointsAngles) {
    const ProgramResult result =
        Run({"parans", kSample, "--points", "1,3,5,6", "--limit", "50", "--json"});
    ASSERT_EQ(result.exitCode, 0) << result.errors;
    const Json rows = Json::parse(result.output)["parans"];
    ASSERT_GE(rows.size(), 2U);
    double before = 50;
    for (const Json& row : rows) {
        EXPECT_LE(row["latitude"].get<double>(), before);
        before = row["latitude"];
        EXPECT_LE(std::abs(before), 50);
        EXPECT_LT(row["point1"].get<int>(), row["point2"].get<int>());
        for (const char* angle : {"angle1", "angle2"}) {
            const std::string word = row[angle];
            EXPECT_TRUE(word == "culminates" || word == "anticulminates" || word == "rises" ||
                        word == "sets")
                << word;
        }
    }
    // Every paran has its like at the opposite latitude.
    EXPECT_EQ(rows.size() % 2, 0U);
    EXPECT_EQ(rows.front()["latitude"].get<double>(), -rows.back()["latitude"].get<double>());
}

std::vector<std::string> Split(const std::string& text, char separator) {
    std::vector<std::string> parts;
    std::istringstream stream(text);
    for (std::string part; std::getline(stream, part, separator);) parts.push_back(part);
    return parts;
}

// The words of a relation's digit.
std::string SideOf(int digit) {
    return std::vector<std::string>{"", " Upper", " Lower", " Rising", " Setting"}.at(
        static_cast<std::size_t>(digit));
}

TEST_F(CommandLine, ParansAsJsonHaveTheirTypeAndWordsByTheirAngles) {
    const ProgramResult result = Run({"parans", kSample, "--points", "1,3,5", "--json"});
    ASSERT_EQ(result.exitCode, 0) << result.errors;
    const Json chart = Json::parse(Run({"chart", kSample, "--json"}).output);
    const Json rows = Json::parse(result.output)["parans"];
    std::set<int> types;
    for (const Json& row : rows) {
        std::string words;
        int onMeridian = 0;
        for (const char* number : {"1", "2"}) {
            const std::string angle = row["angle" + std::string(number)];
            const std::size_t p = row["point" + std::string(number)];
            onMeridian += angle == "culminates" || angle == "anticulminates" ? 1 : 0;
            if (!words.empty()) words += " / ";
            words += chart["points"][p - 1]["name"].get<std::string>();
            words += angle == "culminates"       ? " Upper"
                     : angle == "anticulminates" ? " Lower"
                     : angle == "rises"          ? " Rising"
                                                 : " Setting";
        }
        EXPECT_EQ(row["words"], words);
        EXPECT_EQ(row["type"], onMeridian == 0 ? 5 : 6) << words;
        EXPECT_LE(onMeridian, 1) << words;
        types.insert(row["type"].get<int>());
    }
    EXPECT_EQ(types.size(), 2U) << "the sample has both";
}

TEST_F(CommandLine, PlainParansAreOneALineWithTheLatitudeInDegreesAndMinutes) {
    const std::vector<std::string> points = {"--points", "1,3,5,6,7"};
    const ProgramResult plain = Run({"parans", kSample, points[0], points[1]});
    const ProgramResult json = Run({"parans", kSample, points[0], points[1], "--json"});
    ASSERT_EQ(plain.exitCode, 0) << plain.errors;
    const std::vector<std::string> lines = Split(plain.output, '\n');
    const Json rows = Json::parse(json.output)["parans"];
    ASSERT_EQ(lines.size(), rows.size());
    ASSERT_GT(lines.size(), 4U);
    for (std::size_t i = 0; i < lines.size(); ++i) {
        const double lat = rows[i]["latitude"];
        int degrees = 0;
        int minutes = 0;
        char side = 0;
        ASSERT_EQ(std::sscanf(lines[i].c_str(), "%2d%c%2d", &degrees, &side, &minutes), 3);
        EXPECT_EQ(side, lat < 0 ? 'S' : 'N') << lines[i];
        EXPECT_NEAR(degrees + minutes / 60.0, std::abs(lat), 0.5 / 60 + 1e-9) << lines[i];
        EXPECT_EQ(lines[i].substr(5), "  " + rows[i]["words"].get<std::string>());
    }
}

TEST_F(CommandLine, ParansLeaveOutTheSouthNode) {
    // Point 20 is the North Node, 21 the South Node.
    const auto parans = [](const char* points) {
        return Json::parse(Run({"parans", kSample, "--points", points, "--json"}).output)["parans"];
    };
    const Json both = parans("3,20,21");
    EXPECT_EQ(both, parans("3,20"));
    EXPECT_FALSE(both.empty());
    EXPECT_TRUE(parans("3,21").empty());
}

TEST_F(CommandLine, ParansReachTo60DegreesUnlessTheCallSaysOtherwise) {
    const auto parans = [](std::vector<std::string> limit) {
        std::vector<std::string> call = {"parans", kSample, "--points", "1-20", "--json"};
        call.insert(call.end(), limit.begin(), limit.end());
        return Json::parse(Run(call).output)["parans"];
    };
    const Json unsaid = parans({});
    EXPECT_EQ(unsaid, parans({"--limit", "60"}));
    Json within60 = Json::array();
    std::size_t beyond = 0;
    for (const Json& row : parans({"--limit", "90"})) {
        if (std::abs(row["latitude"].get<double>()) <= 60) {
            within60.push_back(row);
        } else {
            ++beyond;
        }
    }
    EXPECT_EQ(unsaid, within60);
    EXPECT_GT(beyond, 0U);
}

TEST_F(CommandLine, LinesOfEveryTypeTellTheirCodeAndTheirWords) {
    const ProgramResult result = Run({"lines", kSample, "--geojson", "--types", "1-11", "--points",
                                      "3,5", "--limit", "90", "--paran-point", "6"});
    ASSERT_EQ(result.exitCode, 0) << result.errors;
    const std::vector<std::string> signs = {"Aries",       "Taurus",    "Gemini",   "Cancer",
                                            "Leo",         "Virgo",     "Libra",    "Scorpio",
                                            "Sagittarius", "Capricorn", "Aquarius", "Pisces"};
    std::map<int, int> found;
    const Json lines = Json::parse(result.output);
    for (const Json& feature : lines["features"]) {
        const Json& properties = feature["properties"];
        const int type = properties["type"];
        const int code = properties["code"];
        const std::string words = properties.value("words", "");
        ++found[type];
        EXPECT_EQ(properties.contains("point"), type <= 7) << type;
        EXPECT_EQ(properties.contains("latitude"), type == 5 || type == 6) << type;
        if (type <= 4) {
            EXPECT_EQ(code, properties["point"]);
            EXPECT_EQ(" " + words, SideOf(type));
        } else if (type <= 6) {
            EXPECT_EQ(code % 100, properties["point"]);
            EXPECT_EQ(words, properties["pointName"].get<std::string>() + SideOf(code / 1000) +
                                 " / Venus" + SideOf(code / 100 % 10));
            ForEachVertex(feature["geometry"], [&](double, double lat) {
                EXPECT_EQ(lat, properties["latitude"]) << words;
            });
        } else if (type == 7) {
            EXPECT_EQ(code, properties["point"]);
            EXPECT_EQ(words, "");
        } else if (type == 8) {
            EXPECT_EQ(words, "House " + std::to_string(code));
        } else if (type == 11) {
            EXPECT_EQ(words, signs.at(static_cast<std::size_t>(code) - 1));
        } else {
            EXPECT_EQ(code, type == 9 ? 'H' : 'E');
            EXPECT_EQ(words, "");
        }
    }
    const std::map<int, int> expected = {{1, 2}, {2, 2},  {3, 2}, {4, 2},  {5, 4},  {6, 8},
                                         {7, 2}, {8, 12}, {9, 1}, {10, 1}, {11, 12}};
    EXPECT_EQ(found, expected);
}

TEST_F(CommandLine, ParansOfLinesAreWithThePointAndUpToTheLimitOfTheCall) {
    const auto lines = [](const char* p, const char* limit) {
        const ProgramResult result =
            Run({"lines", kSample, "--geojson", "--types", "5,6", "--points", "1-20",
                 "--paran-point", p, "--limit", limit});
        EXPECT_EQ(result.exitCode, 0) << result.errors;
        return Json::parse(result.output)["features"];
    };
    const Json all = lines("3", "90");
    Json within25 = Json::array();
    for (const Json& feature : all) {
        const Json& properties = feature["properties"];
        EXPECT_NE(properties["point"], 3);
        EXPECT_NE(properties["words"].get<std::string>().find(" / The Sun "), std::string::npos);
        if (std::abs(properties["latitude"].get<double>()) <= 25) within25.push_back(feature);
    }
    EXPECT_EQ(lines("3", "25"), within25);
    EXPECT_FALSE(within25.empty());
    EXPECT_LT(within25.size(), all.size());
    for (const Json& feature : lines("5", "90")) {
        EXPECT_NE(feature["properties"]["words"].get<std::string>().find(" / Mercury "),
                  std::string::npos);
    }
}

TEST_F(CommandLine, TheGeodeticZodiacBeginsAtTheLongitudeOfTheCallEastPositive) {
    const ProgramResult result =
        Run({"lines", kSample, "--csv", "--types", "11", "--geodetic", "10"});
    ASSERT_EQ(result.exitCode, 0) << result.errors;
    EXPECT_TRUE(result.output.find("11,Signs,,,1,Aries,1,-90.000000000,10.000000000") !=
                std::string::npos);
    EXPECT_TRUE(result.output.find("11,Signs,,,4,Cancer,1,-90.000000000,100.000000000") !=
                std::string::npos);
}

TEST_F(CommandLine, GeoJsonIsCutAtTheAntimeridian) {
    const ProgramResult result = Run({"lines", kSample, "--geojson"});
    ASSERT_EQ(result.exitCode, 0) << result.errors;
    const Json lines = Json::parse(result.output);
    EXPECT_EQ(lines["type"], "FeatureCollection");
    std::size_t cut = 0;
    for (const Json& feature : lines["features"]) {
        EXPECT_EQ(feature["type"], "Feature");
        const Json& geometry = feature["geometry"];
        const Json runs = geometry["type"] == "LineString" ? Json::array({geometry["coordinates"]})
                                                           : geometry["coordinates"];
        cut += runs.size() > 1 ? 1 : 0;
        for (const Json& run : runs) {
            for (std::size_t i = 1; i < run.size(); ++i) {
                const double from = run[i - 1][0];
                const double to = run[i][0];
                EXPECT_LE(std::abs(to - from), 180);
            }
        }
    }
    EXPECT_GT(cut, 0U);
}

// The third chart's place lies at longitude 0: lines of its horizon and its houses have samples on
// the antimeridian. The Midheaven's line and that of the East Point go over the poles.
TEST_F(CommandLine, NoVertexOfAnExportIsDoubledAndNoPartOfALineIsAPoint) {
    for (const char* chart : {":1", ":2", ":3"}) {
        const ProgramResult result =
            Run({"lines", kSample + chart, "--geojson", "--types", "1-11", "--points", "1-36"});
        ASSERT_EQ(result.exitCode, 0) << result.errors;
        const Json lines = Json::parse(result.output);
        std::size_t atPoles = 0;
        for (const Json& feature : lines["features"]) {
            const Json& geometry = feature["geometry"];
            const Json runs = geometry["type"] == "LineString"
                                  ? Json::array({geometry["coordinates"]})
                                  : geometry["coordinates"];
            for (const Json& run : runs) {
                EXPECT_GE(run.size(), 2U) << chart << feature["properties"];
                for (std::size_t i = 1; i < run.size(); ++i) {
                    EXPECT_NE(run[i - 1], run[i]) << chart << feature["properties"];
                    const double turn =
                        std::abs(run[i][0].get<double>() - run[i - 1][0].get<double>());
                    if (turn < 120) continue;
                    ++atPoles;
                    EXPECT_EQ(std::abs(run[i][1].get<double>()), 90) << chart << run[i];
                    EXPECT_EQ(run[i - 1][1], run[i][1]) << chart << run[i];
                    EXPECT_NEAR(turn, 180, 1e-8);
                }
            }
        }
        EXPECT_EQ(atPoles, 6U) << "the Midheaven's line twice, two houses, two signs";
    }
}

// One exported line: all of its vertices, run by run.
struct ExportedLine {
    std::string name;                                          // as NameOf makes it
    std::vector<std::vector<std::pair<double, double>>> runs;  // longitude and latitude, degrees
};

// What KML calls a line.
std::string NameOf(int type, const std::string& typeName, const std::string& pointName,
                   const std::string& words) {
    if (type == 5 || type == 6) return typeName + ": " + words;
    if (!pointName.empty()) return pointName + " " + typeName;
    return words.empty() ? typeName : typeName + ": " + words;
}

std::vector<ExportedLine> LinesOfGeoJson(const std::string& text) {
    std::vector<ExportedLine> lines;
    const Json collection = Json::parse(text);
    for (const Json& feature : collection["features"]) {
        const Json& properties = feature["properties"];
        lines.push_back({NameOf(properties["type"], properties["typeName"],
                                properties.value("pointName", ""), properties.value("words", "")),
                         {}});
        const Json& geometry = feature["geometry"];
        const Json runs = geometry["type"] == "LineString" ? Json::array({geometry["coordinates"]})
                                                           : geometry["coordinates"];
        for (const Json& run : runs) {
            lines.back().runs.emplace_back();
            for (const Json& v : run) lines.back().runs.back().emplace_back(v[0], v[1]);
        }
    }
    return lines;
}

std::vector<ExportedLine> LinesOfCsv(const std::string& text) {
    std::vector<ExportedLine> lines;
    std::vector<std::string> rows = Split(text, '\n');
    EXPECT_EQ(rows.at(0), "type,typeName,point,pointName,code,words,run,latitude,longitude");
    rows.erase(rows.begin());
    for (const std::string& row : rows) {
        const std::vector<std::string> cells = Split(row, ',');
        EXPECT_EQ(cells.size(), 9U) << row;
        if (cells.size() != 9) return lines;
        const std::string name = NameOf(std::stoi(cells[0]), cells[1], cells[3], cells[5]);
        if (lines.empty() || lines.back().name != name) lines.push_back({name, {}});
        auto& runs = lines.back().runs;
        if (runs.size() < std::stoul(cells[6])) runs.emplace_back();
        EXPECT_EQ(runs.size(), std::stoul(cells[6])) << row;
        runs.back().emplace_back(std::stod(cells[8]), std::stod(cells[7]));
    }
    return lines;
}

// What stands between two marks from `at` on; `at` moves behind it, or to npos if there is none.
std::string Between(const std::string& text, std::string_view open, std::string_view close,
                    std::size_t& at) {
    at = text.find(open, at);
    if (at == std::string::npos) return {};
    const std::size_t start = at + open.size();
    at = text.find(close, start);
    return text.substr(start, at - start);
}

std::vector<ExportedLine> LinesOfKml(const std::string& text) {
    std::vector<ExportedLine> lines;
    std::size_t at = 0;
    while (true) {
        const std::string placemark = Between(text, "<Placemark>", "</Placemark>", at);
        if (at == std::string::npos) return lines;
        std::size_t within = 0;
        lines.push_back({Between(placemark, "<name>", "</name>", within), {}});
        while (true) {
            const std::string run = Between(placemark, "<coordinates>", "</coordinates>", within);
            if (within == std::string::npos) break;
            lines.back().runs.emplace_back();
            for (const std::string& vertex : Split(run, ' ')) {
                const std::size_t comma = vertex.find(',');
                lines.back().runs.back().emplace_back(std::stod(vertex.substr(0, comma)),
                                                      std::stod(vertex.substr(comma + 1)));
            }
        }
    }
}

// Tolerance: each format has nine decimals.
void ExpectSameLines(const std::vector<ExportedLine>& a, const std::vector<ExportedLine>& b) {
    ASSERT_EQ(a.size(), b.size());
    for (std::size_t i = 0; i < a.size(); ++i) {
        ASSERT_EQ(a[i].name, b[i].name);
        ASSERT_EQ(a[i].runs.size(), b[i].runs.size()) << a[i].name;
        for (std::size_t r = 0; r < a[i].runs.size(); ++r) {
            ASSERT_EQ(a[i].runs[r].size(), b[i].runs[r].size()) << a[i].name;
            for (std::size_t v = 0; v < a[i].runs[r].size(); ++v) {
                ASSERT_NEAR(a[i].runs[r][v].first, b[i].runs[r][v].first, 1.1e-9) << a[i].name;
                ASSERT_NEAR(a[i].runs[r][v].second, b[i].runs[r][v].second, 1.1e-9) << a[i].name;
            }
        }
    }
}

TEST_F(CommandLine, GeoJsonCsvAndKmlHoldTheSameVertices) {
    std::vector<std::string> texts;
    for (const char* format : {"--geojson", "--csv", "--kml"}) {
        const ProgramResult result =
            Run({"lines", kSample, format, "--points", "1-36", "--types", "1-11", "--limit", "90"});
        ASSERT_EQ(result.exitCode, 0) << result.errors;
        texts.push_back(result.output);
    }
    const std::vector<ExportedLine> lines = LinesOfGeoJson(texts[0]);
    ASSERT_GT(lines.size(), 300U);
    for (const char* kind : {"Paran RS/RS: ", "Paran RS/MI: ", "Local House: House ", "Horizon",
                             "Ecliptic", "Signs: ", " Local Space", " Culminate"}) {
        EXPECT_TRUE(std::any_of(lines.begin(), lines.end(), [&](const ExportedLine& line) {
            return line.name.find(kind) != std::string::npos;
        })) << kind;
    }
    std::size_t vertices = 0;
    std::size_t cut = 0;
    for (const ExportedLine& line : lines) {
        cut += line.runs.size() > 1 ? 1 : 0;
        for (const auto& run : line.runs) vertices += run.size();
    }
    EXPECT_GT(vertices, 5000U);
    EXPECT_GT(cut, 0U) << "some line is cut at the antimeridian";
    ExpectSameLines(lines, LinesOfCsv(texts[1]));
    ExpectSameLines(lines, LinesOfKml(texts[2]));
}

// Expected values: swetest 2.10.03, the test program of Swiss Ephemeris, called as
// "swetest -b1.1.2000 -ut0:00:00 -p0123 -fPlbrad -house0,51.48333333,P". Tolerances: one of the
// last digit printed; right ascension and declination are held in 32 bits.
TEST_F(CommandLine, AChartAsJsonHasTheValuesOfTheEphemeris) {
    const ProgramResult result = Run({"chart", kSample + ":3", "--json"});
    ASSERT_EQ(result.exitCode, 0) << result.errors;
    const Json chart = Json::parse(result.output);
    EXPECT_EQ(chart["name"], "The year 2000");
    EXPECT_EQ(chart["julianDayUT"], 2451544.5);
    EXPECT_NEAR(chart["julianDayET"], 2451544.500738756, 1e-9);
    EXPECT_NEAR(chart["deltaT"], 63.828500, 1e-5);
    EXPECT_NEAR(chart["obliquity"], 23 + 26 / 60.0 + 15.6467 / 3600, 1e-4 / 3600);
    EXPECT_NEAR(chart["ramc"], 99.9642489, 1e-7);
    EXPECT_EQ(chart["zodiacOffset"], 0);
    EXPECT_NEAR(chart["latitude"], 51 + 29 / 60.0, 1e-6);
    EXPECT_EQ(chart["longitude"], 0);
    EXPECT_EQ(chart["houseSystem"], 5);
    EXPECT_NEAR(chart["cusps"][0], 187.0288817, 1e-7);
    EXPECT_NEAR(chart["cusps"][9], 99.1566657, 1e-7);

    struct Row {
        std::size_t number;
        const char* name;
        double lon, lat, dist, ra, dec;
    };
    constexpr double lunarUnit = 3281.44594 / 3600;  // the Moon's distance as its parallax
    const double moonDistance = 8.794143 / 3600 / lunarUnit;
    for (const Row& row :
         {Row{1, "The Moon", 217.2932857, 5.2312985, moonDistance, 216.6694980, -8.9943994},
          Row{3, "The Sun", 279.8592144, 0.0002297, 0.983331857, 280.7260483, -23.0711224},
          Row{5, "Mercury", 271.1118066, -0.9456900, 1.413092357, 271.2204916, -24.3786597}}) {
        const Json& point = chart["points"][row.number - 1];
        EXPECT_EQ(point["number"], row.number);
        EXPECT_EQ(point["name"], row.name);
        EXPECT_NEAR(point["lon"], row.lon, 1e-7) << row.name;
        EXPECT_NEAR(point["lat"], row.lat, 1e-7) << row.name;
        EXPECT_NEAR(point["dist"], row.dist, 1e-4 * row.dist) << row.name;
        EXPECT_NEAR(point["ra"], row.ra, 1.6e-5) << row.name;
        EXPECT_NEAR(point["dec"], row.dec, 2e-6) << row.name;
    }
}

TEST_F(CommandLine, AZeroIsPrintedWithoutASign) {
    for (const std::vector<std::string>& call : std::vector<std::vector<std::string>>{
             {"chart", kSample + ":3", "--json"}, {"charts", kSample, "--json"}}) {
        const ProgramResult result = Run(call);
        ASSERT_EQ(result.exitCode, 0) << result.errors;
        EXPECT_EQ(result.output.find("\"longitude\":-0.0"), std::string::npos) << call[0];
        EXPECT_EQ(result.output.find("\"longitude\": -0.0"), std::string::npos) << call[0];
    }
    // The ecliptic of the geodetic zodiac is the equator.
    for (const char* format : {"--geojson", "--csv", "--kml"}) {
        const ProgramResult result =
            Run({"lines", kSample, format, "--types", "10", "--geodetic", "0"});
        ASSERT_EQ(result.exitCode, 0) << result.errors;
        EXPECT_EQ(result.output.find("-0.0"), std::string::npos) << format;
        EXPECT_NE(result.output.find(",0.0"), std::string::npos) << format;
    }
}

TEST_F(CommandLine, APlainChartIsATableOfPointsAndHouses) {
    const ProgramResult result = Run({"chart", kSample + ":3"});
    ASSERT_EQ(result.exitCode, 0) << result.errors;
    const std::vector<std::string> lines = Split(result.output, '\n');
    ASSERT_EQ(lines.size(), 4U + 36 + 2 + 12);
    EXPECT_EQ(lines[0], "The year 2000, Jan 1 2000, 0:00 AM GMT, Greenwich, England");
    EXPECT_EQ(lines[1], "51N29 000W00");
    EXPECT_EQ(lines[3], "Point         Longitude     Latitude         RA       Dec.");
    // 217.2932857 = 7 Sc 17'35.83", 279.8592144 = 9 Cp 51'33.17" (swetest, as above).
    EXPECT_EQ(lines[4], "The Moon      07°Sc17'36\"     5.2313   216.6695    -8.9944");
    EXPECT_EQ(lines[6], "The Sun       09°Cp51'33\"     0.0002   280.7260   -23.0711");
    EXPECT_EQ(lines[41], "Houses: Placidus");
    EXPECT_EQ(lines[42], " 1  07°Li01'44\"");  // 187.0288817
    EXPECT_EQ(lines[51], "10  09°Cn09'24\"");  // 99.1566657
}

TEST_F(CommandLine, WithoutANumberTheFirstChartIsTaken) {
    for (const std::vector<std::string>& verb :
         std::vector<std::vector<std::string>>{{"chart"},
                                               {"chart", "--json"},
                                               {"lines", "--csv"},
                                               {"parans"},
                                               {"parans", "--json"}}) {
        const auto call = [&](const std::string& file) {
            std::vector<std::string> arguments = verb;
            arguments.insert(arguments.begin() + 1, file);
            const ProgramResult result = Run(arguments);
            EXPECT_EQ(result.exitCode, 0) << result.errors;
            return result.output;
        };
        const std::string plain = call(kSample);
        EXPECT_EQ(plain, call(kSample + ":1"));
        EXPECT_NE(plain, call(kSample + ":2"));
    }
}

TEST_F(CommandLine, HelpOfTheProgramNamesEveryVerbAndTheExitCodes) {
    const ProgramResult result = Run({"--help"});
    EXPECT_EQ(result.exitCode, 0);
    EXPECT_EQ(result.errors, "");
    for (const char* verb :
         {"chart", "charts", "convert", "lines", "parans", "render", "database"}) {
        EXPECT_NE(result.output.find("\n  " + std::string(verb) + " "), std::string::npos) << verb;
    }
    EXPECT_NE(result.output.find("Exit code: 0 done, 1 the work failed, 2 the call is wrong, 3 the "
                                 "input can't be read."),
              std::string::npos);
    EXPECT_EQ(Run({"-h"}).output, result.output);
}

TEST_F(CommandLine, AnUnknownProjectionIsTold) {
    const std::string out = folder_.File("a.png");
    const ProgramResult result = Run({"render", "-o", out, "--projection", "globe"});
    EXPECT_EQ(result.exitCode, 2);
    EXPECT_EQ(result.errors,
              "orvantis-cli: --projection globe: cartesian, mercator, sphere or oblate is "
              "needed\n");
    EXPECT_FALSE(std::filesystem::exists(out));
}

TEST_F(CommandLine, FileNamesMayHoldLettersOfAnyScript) {
    // Letters of the core's code page, and Greek and Chinese ones, which it doesn't have.
    for (const char* name : {"M\xC3\xBCller", "\xCE\x91\xCE\xB8\xCE\xAE\xCE\xBD\xCE\xB1",
                             "\xE5\x8C\x97\xE4\xBA\xAC"}) {
        const std::string chart = folder_.File(std::string(name) + ".cht");
        const std::string picture = folder_.File(std::string(name) + ".png");
        const std::string map = folder_.File(std::string(name) + ".ovm");
        std::filesystem::copy_file(kSample, chart);
        std::filesystem::copy_file(DataFile("world.ovm"), map);
        EXPECT_EQ(Run({"chart", chart}).output, Run({"chart", kSample}).output);
        EXPECT_EQ(Run({"charts", chart}).exitCode, 0);
        const ProgramResult drawn =
            Run({"render", chart, "-o", picture, "--map", map, "--size", "200x200"});
        EXPECT_EQ(drawn.exitCode, 0) << drawn.errors;
        EXPECT_FALSE(FileBytes(picture).empty()) << name;

        const std::string none = folder_.File(std::string(name) + " none.cht");
        EXPECT_EQ(Run({"chart", none}).errors, "orvantis-cli: " + none + ": File not found\n");
    }
}

TEST_F(CommandLine, AFullStandardOutputIsTheWorkFailed) {
    const std::string out = folder_.File("a.png");
    for (const std::string& arguments :
         {std::string("--help"), std::string("chart --help"), "chart '" + kSample + "'",
          "chart '" + kSample + "' --json", "charts '" + kSample + "'",
          "charts '" + kSample + "' --json", "lines '" + kSample + "' --geojson",
          "lines '" + kSample + "' --csv", "lines '" + kSample + "' --kml",
          "parans '" + kSample + "'", "parans '" + kSample + "' --json",
          "render -o '" + out + "' --size 200x200 --json"}) {
        std::string command = "'";
        command.append(kProgram).append("' ").append(arguments).append(" >/dev/full");
        const ProgramResult result = RunProgram("sh", {"-c", command}, Environment());
        EXPECT_EQ(result.exitCode, 1) << arguments;
        EXPECT_EQ(result.errors, "orvantis-cli: standard output: can't be written\n") << arguments;
    }
}

TEST_F(CommandLine, TheZodiacalModeNamesItsLinesByTheAngles) {
    const ProgramResult result =
        Run({"lines", kSample, "--csv", "--points", "3", "--mode", "zodiacal"});
    ASSERT_EQ(result.exitCode, 0);
    for (const char* name : {",MC,", ",IC,", ",Asc,", ",Dsc,"}) {
        EXPECT_NE(result.output.find(name), std::string::npos) << name;
    }
}

TEST_F(CommandLine, RenderWritesAPictureOfTheSizeAndTellsTheView) {
    const std::string out = folder_.File("world.png");
    const ProgramResult result = Run(
        {"render", kSample + ":1", "-o", out, "--size", "800x500", "--precision", "3", "--json"});
    ASSERT_EQ(result.exitCode, 0) << result.errors;
    EXPECT_EQ(result.errors, "");
    const Bytes png = FileBytes(out);
    ASSERT_GT(png.size(), 10000U);
    // Width and height stand big-endian at bytes 16 and 20.
    EXPECT_EQ(png[18] * 256 + png[19], 800);
    EXPECT_EQ(png[22] * 256 + png[23], 500);
    const Json view = Json::parse(result.output);
    EXPECT_EQ(view["view"]["precision"], 3);
    EXPECT_EQ(view["view"]["projection"], "cartesian");
    EXPECT_EQ(view["view"]["south"], -90);
    EXPECT_EQ(view["view"]["east"], 180);
    EXPECT_GT(view["mapRect"]["width"].get<int>(), 600);
    EXPECT_GT(view["mapRect"]["left"].get<int>(), 0);
}

TEST_F(CommandLine, RenderTellsTheEdgesWithoutTheNoiseOfTheirFloats) {
    const ProgramResult result = Run({"render", "-o", folder_.File("view.png"), "--size", "200x200",
                                      "--view", "10.1,-20.3,30.7,40", "--json"});
    ASSERT_EQ(result.exitCode, 0) << result.errors;
    for (const char* edge : {"\"south\": 10.1,", "\"west\": -20.3,", "\"north\": 30.7,"}) {
        EXPECT_NE(result.output.find(edge), std::string::npos) << result.output;
    }
    EXPECT_EQ(Json::parse(result.output)["view"]["east"], 40);
}

// Edges in every order that names the same place: all but a hair of the world, the whole of it, and
// the least that is taken.
TEST_F(CommandLine, RenderTakesAViewOfAnyWidthAroundTheWorld) {
    const std::string out = folder_.File("view.png");
    for (const char* view :
         {"-60,-180,60,180", "-60,180,60,-180", "-60,30,60,30", "-60,30,60,29.999",
          "-60,-180,60,179.995", "0,179.99,10,-179.99", "-89,0,89,20", "10,20,10.02,20.02"}) {
        for (const char* projection : {"cartesian", "mercator", "sphere"}) {
            const ProgramResult result = Run({"render", "-o", out, "--size", "200x150", "--view",
                                              view, "--projection", projection});
            EXPECT_EQ(result.exitCode, 0) << view << ' ' << projection;
            EXPECT_EQ(result.errors, "") << view << ' ' << projection;
        }
    }
    EXPECT_EQ(Run({"render", "-o", out, "--view", "-90,0,90,20"}).exitCode, 0);
    // The map of the file decides where the call names no projection.
    MapDocument map;
    map.projection = projection::kMercator;
    map.south = -65;
    map.north = 75;
    Bytes record(kMapDocumentSize);
    PutMapDocument(record.data(), map);
    const std::string file = folder_.Write("mercator.ovm", record);
    const ProgramResult result = Run({"render", "-o", out, "--map", file, "--view", "-90,0,90,20"});
    EXPECT_EQ(result.exitCode, 2);
    EXPECT_EQ(result.errors,
              "orvantis-cli: --view: latitudes from -89 to 89 are needed on a Mercator map\n");
}

// Views without a coast differ by their colour alone.
TEST_F(CommandLine, RenderPaintsTheOpenSeaAndLeavesOpenLandBare) {
    const auto picture = [&](const std::string& view, const std::string& projection) {
        const std::string out = folder_.File("view.png");
        const ProgramResult result = Run({"render", "-o", out, "--size", "300x200", "--view", view,
                                          "--projection", projection, "--precision", "1"});
        EXPECT_EQ(result.exitCode, 0) << result.errors;
        return FileBytes(out);
    };
    const Bytes sahara = picture("25,2,28,6", "cartesian");
    const Bytes pacific = picture("5,-145,15,-135", "cartesian");
    EXPECT_NE(pacific, sahara);
    EXPECT_EQ(picture("30,175,40,-175", "cartesian"), pacific) << "over the date line";
    EXPECT_EQ(picture("-50,-30,-40,-20", "mercator"), pacific);
    EXPECT_EQ(picture("-25,121,-22,124", "mercator"), sahara) << "Australia";
}

// What no setting says otherwise: of the picture's lines, those of the types and points named.
TEST_F(CommandLine, RenderDrawsTheLinesAndPointsThatTheCallNames) {
    const auto picture = [this](const std::vector<std::string>& more) {
        const std::string out = folder_.File("types.svg");
        std::vector<std::string> call = {"render", kSample, "-o", out, "--size", "640x360"};
        call.insert(call.end(), more.begin(), more.end());
        EXPECT_EQ(Run(call).exitCode, 0);
        return FileBytes(out);
    };
    const Bytes all = picture({});
    const Bytes meridians = picture({"--types", "1"});
    const Bytes one = picture({"--types", "1", "--points", "3"});
    const Bytes geodetic = picture({"--types", "1", "--points", "3", "--geodetic", "0"});
    EXPECT_GT(all.size(), meridians.size());
    EXPECT_GT(meridians.size(), one.size());
    EXPECT_NE(one, geodetic);
}

TEST_F(CommandLine, RenderOfTheSameCallGivesTheSameBytes) {
    const std::string first = folder_.File("a.png");
    const std::string second = folder_.File("b.png");
    ASSERT_EQ(Run({"render", kSample, "-o", first, "--size", "400x300"}).exitCode, 0);
    ASSERT_EQ(Run({"render", kSample, "-o", second, "--size", "400x300"}).exitCode, 0);
    EXPECT_EQ(FileBytes(first), FileBytes(second));
}

TEST_F(CommandLine, RenderToAFolderThatIsNotThereFailsWithExitCode1) {
    for (const char* name : {"none/a.png", "none/a.svg", "none/a.pdf"}) {
        const std::string out = folder_.File(name);
        const ProgramResult result = Run({"render", "-o", out, "--size", "200x200"});
        EXPECT_EQ(result.exitCode, 1);
        EXPECT_EQ(result.errors, "orvantis-cli: " + out + ": can't be written\n");
    }
}

// What a program of another make says of a file.
std::string Asked(const std::string& program, const std::vector<std::string>& arguments) {
    const ProgramResult result = RunProgram(program, arguments);
    EXPECT_EQ(result.exitCode, 0) << program << ": " << result.errors;
    return result.output;
}

std::string TextOf(const Bytes& bytes) {
    return {bytes.begin(), bytes.end()};
}

std::size_t CountOf(const std::string& text, std::string_view part) {
    std::size_t count = 0;
    for (std::size_t at = 0; (at = text.find(part, at)) != std::string::npos; ++at) ++count;
    return count;
}

struct PageRow {
    std::string size;
    std::string points;  // as pdfinfo tells them: 96 pixels and 72 points are an inch
};

TEST_F(CommandLine, PdfHasThePageSizeOfThePicture) {
    const PageRow rows[] = {
        {"1920x1080", "1440 x 810 pts"}, {"96x64", "72 x 48 pts"}, {"800x600", "600 x 450 pts"}};
    for (const PageRow& row : rows) {
        const std::string out = folder_.File("a.pdf");
        const ProgramResult result = Run({"render", "-o", out, "--size", row.size});
        ASSERT_EQ(result.exitCode, 0) << result.errors;
        EXPECT_EQ(result.output + result.errors, "");
        const std::string info = Asked("pdfinfo", {out});
        EXPECT_NE(info.find(row.points), std::string::npos) << info;
        EXPECT_EQ(CountOf(info, "Pages:           1\n"), 1U) << info;
    }
}

TEST_F(CommandLine, PdfHoldsTextsWithTheirFontAndOnePictureAlone) {
    const std::string out = folder_.File("a.pdf");
    ASSERT_EQ(Run({"render", kSample, "-o", out}).exitCode, 0);

    // Two lines of heading, then the picture of the floods as large as the page.
    const std::string images = Asked("pdfimages", {"-list", out});
    EXPECT_EQ(CountOf(images, "\n"), 3U) << images;
    EXPECT_EQ(CountOf(images, "image    1920  1080"), 1U) << images;

    // Marks in the frame: the Sun's glyph, and the letters of the sides.
    const std::string text = Asked("pdftotext", {out, "-"});
    EXPECT_NE(text.find("\xE2\x98\x89"), std::string::npos) << text;
    EXPECT_NE(text.find('R'), std::string::npos);

    // Columns: name, type, encoding, embedded, subset, with a table of characters.
    const std::string fonts = Asked("pdffonts", {out});
    EXPECT_EQ(CountOf(fonts, " yes "), CountOf(fonts, "CID TrueType") * 2) << fonts;
    EXPECT_GE(CountOf(fonts, "CID TrueType"), 1U) << fonts;
}

TEST_F(CommandLine, SvgHoldsLinesAndLettersAsPathsAndOnePictureAlone) {
    const std::string out = folder_.File("a.svg");
    ASSERT_EQ(Run({"render", kSample, "-o", out, "--size", "800x500"}).exitCode, 0);
    const std::string svg = TextOf(FileBytes(out));
    EXPECT_TRUE(svg.starts_with("<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<svg "));
    EXPECT_NE(svg.find("width=\"800\" height=\"500\" viewBox=\"0 0 800 500\""), std::string::npos);
    EXPECT_EQ(CountOf(svg, "<image "), 1U);
    EXPECT_GT(CountOf(svg, "<path "), 500U);
    EXPECT_GT(CountOf(svg, "<use "), 40U);
    EXPECT_TRUE(svg.ends_with("</svg>\n"));
    Asked("xmllint", {"--noout", "--nonet", out});
}

TEST_F(CommandLine, NamesOfFormatsMayBeInCapitals) {
    for (const char* name : {"a.SVG", "a.PDF", "a.Png"}) {
        const std::string out = folder_.File(name);
        EXPECT_EQ(Run({"render", "-o", out, "--size", "200x200"}).exitCode, 0) << name;
        EXPECT_GT(FileBytes(out).size(), 1000U);
    }
}

TEST_F(CommandLine, SvgShowsThePartOfThePageThatThePngShows) {
    // The map rectangle doesn't depend on the format.
    std::set<std::string> views;
    for (const char* name : {"a.png", "a.svg", "a.pdf"}) {
        views.insert(Run({"render", "-o", folder_.File(name), "--size", "700x400", "--json",
                          "--view", "30,-20,70,40", "--projection", "mercator"})
                         .output);
    }
    EXPECT_EQ(views.size(), 1U);
}

struct GridRow {
    std::vector<std::string> option;
    std::size_t parallels;  // lines right across the map of the world
    std::size_t meridians;
};

TEST_F(CommandLine, GridHasItsStepsInDegreesOrTheMapsOwn) {
    // A parallel every step between the poles, which are the frame itself, and a meridian every
    // step from 180 west to 180 east. A new map's own steps are 15 and 30.
    const GridRow rows[] = {{{}, 0, 0},
                            {{"--grid"}, 11, 13},
                            {{"--grid", "30,60"}, 5, 7},
                            {{"--grid", "90,90"}, 1, 5},
                            {{"--grid", "10,1"}, 17, 361},
                            {{"--grid", "22.5,45"}, 7, 9}};
    for (const GridRow& row : rows) {
        const std::string out = folder_.File("a.svg");
        std::vector<std::string> call = {
            "render",          "-o",          out, "--size", "1000x600", "--view",
            "-90,-180,90,180", "--precision", "5", "--json"};
        call.insert(call.end(), row.option.begin(), row.option.end());
        const ProgramResult result = Run(call);
        ASSERT_EQ(result.exitCode, 0) << result.errors;
        const Json rect = Json::parse(result.output)["mapRect"];
        const std::string svg = TextOf(FileBytes(out));
        const std::string across = "l" + std::to_string(rect["width"].get<int>()) + " 0\"/>";
        const std::string down = "l0 " + std::to_string(rect["height"].get<int>()) + "\"/>";
        EXPECT_EQ(CountOf(svg, across), row.parallels);
        EXPECT_EQ(CountOf(svg, down), row.meridians);
    }
}

TEST_F(CommandLine, GridWithoutStepsMayStandBeforeTheChart) {
    const std::string out = folder_.File("a.svg");
    const ProgramResult result = Run({"render", "--grid", kSample, "-o", out, "--size", "300x200"});
    EXPECT_EQ(result.exitCode, 0) << result.errors;
    EXPECT_GT(CountOf(TextOf(FileBytes(out)), "<use "), 0U);
}

TEST_F(CommandLine, DatabaseCheckPassesTheShippedDatabase) {
    const ProgramResult result = Run({"database", "check", kLevel1});
    EXPECT_EQ(result.exitCode, 0) << result.output << result.errors;
}

TEST_F(CommandLine, DatabaseBuildMakesLevelsAndIndexBesideTheFile) {
    std::filesystem::copy_file(kLevel1, folder_.File("level1.pnt"));
    const ProgramResult result = Run({"database", "build", folder_.File("level1.pnt")});
    ASSERT_EQ(result.exitCode, 0) << result.errors;
    EXPECT_GT(FileBytes(folder_.File("level2.pnt")).size(),
              FileBytes(folder_.File("level5.pnt")).size());
    EXPECT_EQ(FileBytes(folder_.File("levelx.ndx")).size() % 40, 0U);
}

}  // namespace
}  // namespace orvantis

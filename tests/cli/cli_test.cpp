// The command line as a user calls it.
#include <algorithm>
#include <cmath>
#include <filesystem>
#include <gtest/gtest.h>
#include <nlohmann/json.hpp>
#include <random>

#include "charts/KVCharts.h"
#include "support/run_program.h"
#include "support/temp_folder.h"
#include "text/bytes.h"

namespace orvantis {
namespace {

using Json = nlohmann::json;

const std::string kProgram = std::string(ORVANTIS_BIN) + "/orvantis-cli";
const std::string kSample = std::string(ORVANTIS_DATA) + "/sample.cht";
const std::string kLevel1 = std::string(ORVANTIS_DATA) + "/level1.pnt";
constexpr double kDegree = 3.14159265358979323846 / 180;

class CommandLine : public ::testing::Test {
  protected:
    // All tests of one program share the user's folder, so that the database is made once.
    static void SetUpTestSuite() { home_ = new TempFolder; }
    static void TearDownTestSuite() {
        delete home_;
        home_ = nullptr;
    }

    static ProgramResult Run(const std::vector<std::string>& arguments) {
        return RunProgram(kProgram, arguments, {"XDG_DATA_HOME=" + home_->Path()});
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
        {{"lines", kSample, "--csv", "--types", "5"},
         2,
         "orvantis-cli: --types 5: a list of numbers from 1 to 4 is needed\n"},
        {{"lines", kSample, "--csv", "--points", "1,x"},
         2,
         "orvantis-cli: --points 1,x: a list of numbers from 1 to 36 is needed\n"},
        {{"lines", kSample, "--csv", "--mode", "both"},
         2,
         "orvantis-cli: --mode both: mundo or zodiacal is needed\n"},
        {{"render"}, 2, "orvantis-cli: render: -o OUT.png is needed\n"},
        {{"render", "-o", "a.gif"},
         2,
         "orvantis-cli: -o a.gif: a name that ends in .png is needed\n"},
        {{"render", "-o", "a.png", "--size", "10x10"},
         2,
         "orvantis-cli: --size 10x10: a size such as 1920x1080 is needed, each from 64 to 16384\n"},
        {{"render", "-o", "a.png", "--precision", "6"},
         2,
         "orvantis-cli: --precision 6: a number from 1 (finest) to 5 is needed\n"},
        {{"render", "-o", "a.png", "--view", "1,2,3"},
         2,
         "orvantis-cli: --view 1,2,3: S,W,N,E in degrees is needed, south below north\n"},
        {{"render", "-o", "a.png", "--view", "0,0,10,0.001"},
         2,
         "orvantis-cli: --view 0,0,10,0.001: S,W,N,E in degrees is needed, south below north\n"},
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
    for (const char* verb : {"chart", "charts", "lines", "render", "database"}) {
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
        {{"charts", empty}, 3, "orvantis-cli: " + empty + ": holds no charts\n"},
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

// A chart of the oldest format, with an hour that a byte can't hold if it is spoilt.
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

TEST_F(CommandLine, ARecordThatCannotBeReadIsToldAndTheChartsBehindItAreListed) {
    Bytes bytes;
    for (const auto& [initial, hour] :
         {std::pair{'A', 1}, std::pair{'B', 300}, std::pair{'C', 2}}) {
        const Bytes record = OldRecord(initial, static_cast<std::int16_t>(hour));
        bytes.insert(bytes.end(), record.begin(), record.end());
    }
    const std::string path = folder_.Write("old.cht", bytes);
    const ProgramResult list = Run({"charts", path, "--json"});
    EXPECT_EQ(list.exitCode, 3);
    EXPECT_EQ(list.errors,
              "orvantis-cli: " + path + ": 1 of 3 records can't be read, the first 2 (Overflow)\n");
    const Json charts = Json::parse(list.output);
    ASSERT_EQ(charts["charts"].size(), 2U);
    EXPECT_EQ(charts["charts"][1]["name"], "C");
    EXPECT_EQ(charts["charts"][1]["number"], 3);
    const ProgramResult one = Run({"chart", path + ":2"});
    EXPECT_EQ(one.exitCode, 3);
    EXPECT_EQ(one.errors, "orvantis-cli: " + path + ":2: the record can't be read (Overflow)\n");
    EXPECT_EQ(Run({"chart", path + ":3"}).exitCode, 0);
}

TEST_F(CommandLine, AHugeFileOfChartsIsListedInLittleMemory) {
    const std::string path = folder_.Write("huge.cht", Bytes{2, 0});
    std::filesystem::resize_file(path, kFileChartSize * 200000);
    const ProgramResult result = Run({"charts", path});
    EXPECT_EQ(result.exitCode, 0);
    EXPECT_EQ(std::count(result.output.begin(), result.output.end(), '\n'), 199999);
    EXPECT_LT(result.peakKilobytes, 200 * 1024);
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
                EXPECT_TRUE(type == 3 ? west < 1e-3 : west > -1e-3);
            });
        }
    }
    EXPECT_GT(vertices, 100000);
}

TEST_F(CommandLine, GeoJsonIsCutAtTheAntimeridian) {
    const ProgramResult result = Run({"lines", kSample, "--geojson"});
    ASSERT_EQ(result.exitCode, 0) << result.errors;
    const Json lines = Json::parse(result.output);
    EXPECT_EQ(lines["type"], "FeatureCollection");
    for (const Json& feature : lines["features"]) {
        EXPECT_EQ(feature["type"], "Feature");
        const Json& geometry = feature["geometry"];
        const Json runs = geometry["type"] == "LineString" ? Json::array({geometry["coordinates"]})
                                                           : geometry["coordinates"];
        for (const Json& run : runs) {
            for (std::size_t i = 1; i < run.size(); ++i) {
                const double from = run[i - 1][0];
                const double to = run[i][0];
                EXPECT_LE(std::abs(to - from), 180);
            }
        }
    }
}

TEST_F(CommandLine, CsvAndKmlHoldTheSameVertices) {
    const std::vector<std::string> common = {"--points", "3", "--types", "3"};
    const ProgramResult csv = Run({"lines", kSample, "--csv", "--points", "3", "--types", "3"});
    const ProgramResult kml = Run({"lines", kSample, "--kml", "--points", "3", "--types", "3"});
    ASSERT_EQ(csv.exitCode, 0);
    ASSERT_EQ(kml.exitCode, 0);
    EXPECT_EQ(csv.output.substr(0, csv.output.find('\n')),
              "type,typeName,point,pointName,run,latitude,longitude");
    EXPECT_NE(csv.output.find("\n3,Rise,3,The Sun,1,"), std::string::npos);
    EXPECT_NE(kml.output.find("<name>The Sun Rise</name>"), std::string::npos);
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

TEST_F(CommandLine, RenderOfTheSameCallGivesTheSameBytes) {
    const std::string first = folder_.File("a.png");
    const std::string second = folder_.File("b.png");
    ASSERT_EQ(Run({"render", kSample, "-o", first, "--size", "400x300"}).exitCode, 0);
    ASSERT_EQ(Run({"render", kSample, "-o", second, "--size", "400x300"}).exitCode, 0);
    EXPECT_EQ(FileBytes(first), FileBytes(second));
}

TEST_F(CommandLine, RenderToAFolderThatIsNotThereFailsWithExitCode1) {
    const std::string out = folder_.File("none/a.png");
    const ProgramResult result = Run({"render", "-o", out, "--size", "200x200"});
    EXPECT_EQ(result.exitCode, 1);
    EXPECT_EQ(result.errors, "orvantis-cli: " + out + ": can't be written\n");
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

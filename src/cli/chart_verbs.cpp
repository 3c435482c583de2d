// The verb "chart".
#include <algorithm>
#include <filesystem>
#include <iomanip>
#include <iostream>
#include <nlohmann/json.hpp>

#include "charts/CALCCHRT.h"
#include "cli/verbs.h"
#include "session/chart_place.h"
#include "session/driver.h"
#include "session/files.h"
#include "session/tables.h"
#include "text/angles.h"
#include "text/code_page.h"

namespace orvantis::cli {

using Json = nlohmann::ordered_json;

namespace {

std::size_t Index(std::int16_t number) {
    return static_cast<std::size_t>(number);
}

Json PointJson(const CalcChart& chart, std::int16_t p) {
    const std::size_t i = Index(p);
    return {{"number", p},
            {"name", PointName(p)},
            {"lon", chart.Lon[i]},
            {"lat", chart.Lat[i]},
            {"dist", chart.Dist[i]},
            {"lonSpeed", chart.LonSpeed[i]},
            {"latSpeed", chart.LatSpeed[i]},
            {"ra", chart.RA[i]},
            {"dec", chart.Dec[i]}};
}

Json ChartJson(const CalcChart& chart) {
    Json points = Json::array();
    for (std::int16_t p = 1; p <= point::kLastBody; ++p) points.push_back(PointJson(chart, p));
    Json cusps = Json::array();
    for (std::size_t house = 1; house <= 12; ++house) cusps.push_back(chart.Cusp[house]);
    return {{"name", ToUtf8(chart.Name)},
            {"julianDayET", chart.JulianDayET},
            {"julianDayUT", chartNow.JulianDayUT},
            {"deltaT", chartNow.DeltaT * 3600},
            {"obliquity", chartNow.ObliquityNow},
            {"ramc", chartNow.RAMCNow},
            {"zodiacOffset", chartNow.ZodiacOffsetNow},
            {"latitude", chartNow.PlaceLat},
            {"longitude", 0.0 - chartNow.PlaceLongW},
            {"houseSystem", chart.HouseSystem},
            {"cusps", cusps},
            {"points", points}};
}

// Degrees in a sign, minutes and seconds.
std::string SignText(double longitude) {
    return ToUtf8(FormatAngle(longitude, angle_style::kSignName, 2, kTrue, kFalse, kTrue, kFalse));
}

void PrintPoint(const CalcChart& chart, std::int16_t p) {
    const std::size_t i = Index(p);
    std::cout << std::left << std::setw(14) << PointName(p);
    if (chart.Lon[i] < 0) {
        std::cout << "not calculated\n";
        return;
    }
    std::cout << SignText(chart.Lon[i]) << "  " << std::right << std::fixed << std::setprecision(4)
              << std::setw(9) << chart.Lat[i] << std::setw(11) << chart.RA[i] << std::setw(11)
              << chart.Dec[i] << "\n";
}

void PrintChart(const CalcChart& chart) {
    std::cout << PlainText(ToUtf8(ChartDescription())) << "\n"
              << ToUtf8(chart.LatText) << " " << ToUtf8(chart.LongText) << "\n\n";
    std::cout << "Point         Longitude     Latitude         RA       Dec.\n";
    for (std::int16_t p = 1; p <= point::kLastBody; ++p) PrintPoint(chart, p);
    const bool named = chart.HouseSystem >= 1 && chart.HouseSystem <= 9;
    std::cout << "\nHouses: " << (named ? kHouseSystemNames[Index(chart.HouseSystem)] : "none")
              << "\n";
    for (std::size_t house = 1; house <= 12; ++house) {
        std::cout << std::setw(2) << house << "  " << SignText(chart.Cusp[house]) << "\n";
    }
}

// True if some body of the chart has a position.
bool HasPositions(const CalcChart& chart) {
    return std::any_of(chart.Lon.begin() + point::kMoon, chart.Lon.begin() + point::kNorthNode,
                       [](double longitude) { return longitude >= 0; });
}

}  // namespace

const std::string_view kChartHelp =
    R"(orvantis-cli chart FILE[:N] [--json]

Calculates chart N of a chart file (the first if N isn't given).
--json prints degrees; latitude is north positive, longitude EAST positive. A point that isn't
calculated has "lon" below 0; if no body is, the exit code is 1. What else is complained of while the
exit code is 0 left the rest of the chart as it should be. "deltaT" is in seconds, speeds are degrees a day.

Example: orvantis-cli chart data/sample.cht:2 --json
)";

std::string WhyNoFile(const std::string& path) {
    std::error_code failure;
    return std::filesystem::exists(NativePath(path), failure) ? "not a file that can be read"
                                                              : "File not found";
}

int UnreadableChartFile(const std::string& path, const CliShell& shell) {
    RunTimeError reason;
    const bool failed = TakeRunTimeError(reason);
    if (shell.complained) return kUnreadable;
    if (failed) return Complain(kUnreadable, path, "can't be read (" + reason.description + ")");
    if (FileExists(path) != 0) {
        return Complain(kUnreadable, path, "this kind of chart file isn't read");
    }
    return Complain(kUnreadable, path, WhyNoFile(path));
}

int OpenNamedChart(const std::string& address, const CliShell& shell) {
    std::string path;
    std::int32_t number = 1;
    if (!SplitChartPlace(address, path, number)) {
        return Complain(kWrongCall, address, "a chart's number, from 1, must follow the colon");
    }
    RunTimeError reason;
    switch (OpenChart(path, number, reason)) {
        case ChartStatus::Ok:
            if (HasPositions(calcChart[1])) return kDone;
            return shell.complained ? kWorkFailed
                                    : Complain(kWorkFailed, address, "has no positions");
        case ChartStatus::NoSuchChart:
            return Complain(kUnreadable, path, "holds no chart " + std::to_string(number));
        case ChartStatus::BadRecord:
            return Complain(kUnreadable, path + ":" + std::to_string(number),
                            "the record can't be read (" + reason.description + ")");
        case ChartStatus::Failed:
            return shell.complained ? kWorkFailed
                                    : Complain(kWorkFailed, address, "can't be calculated");
        default:
            return UnreadableChartFile(path, shell);
    }
}

int RunChart(const std::vector<std::string>& words, CliShell& shell) {
    const std::optional<Arguments> call = TakeApart(words, {{}, {"--json"}});
    if (!call) return kWrongCall;
    if (call->words.size() != 1) return Complain(kWrongCall, "chart", "takes one FILE[:N]");
    const int opened = OpenNamedChart(call->words.front(), shell);
    if (opened != kDone) return opened;
    if (call->Has("--json")) {
        std::cout << ChartJson(calcChart[1]).dump(2) << "\n";
    } else {
        PrintChart(calcChart[1]);
    }
    return kDone;
}

}  // namespace orvantis::cli

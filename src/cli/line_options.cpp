#include "cli/line_options.h"

#include <charconv>
#include <cmath>
#include <cstdio>
#include <string>

#include "charts/CALCCHRT.h"
#include "lines/chart_lines.h"
#include "session/settings.h"
#include "session/tables.h"
#include "text/numbers.h"

namespace orvantis::cli {

namespace {

std::size_t Index(std::int16_t number) {
    return static_cast<std::size_t>(number);
}

// What the call says of line types takes the place of the settings'.
bool ApplyTypes(const Arguments& call) {
    const auto types = call.Value("--types");
    if (!types) return true;
    const auto numbers = ParseNumberList(*types, line_type::kCulminate, line_type::kSigns);
    if (!numbers) {
        Complain(kWrongCall, "--types " + *types, "a list of numbers from 1 to 11 is needed");
        return false;
    }
    for (LineStyle& style : settings.lineStyle) style.displayed = kFalse;
    for (const std::int16_t type : *numbers) settings.lineStyle[Index(type)].displayed = kTrue;
    return true;
}

bool ApplyMode(const Arguments& call) {
    const auto mode = call.Value("--mode");
    if (!mode) return true;
    if (*mode != "mundo" && *mode != "zodiacal") {
        Complain(kWrongCall, "--mode " + *mode, "mundo or zodiacal is needed");
        return false;
    }
    options.lineMode = *mode == "mundo" ? 1 : 2;
    return true;
}

// A number of the call within bounds; false if it is none, which has been told.
bool ApplyNumber(const Arguments& call, std::string_view option, double low, double high,
                 double& number) {
    const auto text = call.Value(option);
    if (!text) return true;
    const auto end = text->data() + text->size();
    const auto [rest, failure] = std::from_chars(text->data(), end, number);
    if (failure == std::errc() && rest == end && number >= low && number <= high) return true;
    std::array<char, 80> needed{};
    std::snprintf(needed.data(), needed.size(), "a number from %g to %g is needed", low, high);
    Complain(kWrongCall, std::string(option) + " " + *text, needed.data());
    return false;
}

bool ApplyGeodetic(const Arguments& call) {
    if (!call.Value("--geodetic")) return true;
    options.mapZodiac = 1;
    double east = 0;
    if (!ApplyNumber(call, "--geodetic", -180, 180, east)) return false;
    options.geodeticStart = -east;
    return true;
}

bool ApplyParanPoint(const Arguments& call) {
    double p = options.paranPoint;
    if (!ApplyNumber(call, "--paran-point", 1, point::kLastBody, p)) return false;
    if (p != std::floor(p)) {
        Complain(kWrongCall, "--paran-point " + *call.Value("--paran-point"),
                 "a whole number is needed");
        return false;
    }
    options.paranPoint = RoundToInt16(p);
    return true;
}

}  // namespace

bool ApplyPoints(const Arguments& call) {
    const auto points = call.Value("--points");
    if (!points) return true;
    const auto numbers = ParseNumberList(*points, 1, point::kLastBody);
    if (!numbers) {
        Complain(kWrongCall, "--points " + *points, "a list of numbers from 1 to 36 is needed");
        return false;
    }
    pointSelection.fill(kFalse);
    for (const std::int16_t p : *numbers) pointSelection[Index(p)] = kTrue;
    return true;
}

bool ApplyLimit(const Arguments& call) {
    double limit = static_cast<double>(options.paranLimit);
    if (!ApplyNumber(call, "--limit", 0, 90, limit)) return false;
    options.paranLimit = static_cast<float>(limit);
    return true;
}

bool ApplyLineOptions(const Arguments& call) {
    return ApplyTypes(call) && ApplyMode(call) && ApplyGeodetic(call) && ApplyParanPoint(call) &&
           ApplyLimit(call);
}

}  // namespace orvantis::cli

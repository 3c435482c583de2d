#include "cli/text_rows.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <limits>
#include <nlohmann/json.hpp>

#include "cli/arguments.h"
#include "text/angles.h"
#include "text/code_page.h"
#include "text/coordinates.h"
#include "text/dates.h"
#include "text/fields.h"
#include "text/strings.h"
#include "text/zones.h"

namespace orvantis::cli {

namespace {

using Parts = std::vector<std::string_view>;

Flag ToFlag(bool value) {
    return value ? kTrue : kFalse;
}

// Appends an item to a JSON list: a number with the fewest figures that give it back.
template <typename Number>
void AppendItem(std::string& list, Number number) {
    std::array<char, 64> figures{};
    if (!list.empty()) list += ',';
    list.append(figures.data(),
                std::to_chars(figures.data(), figures.data() + figures.size(), number).ptr);
}

// Appends a JSON string.
void AppendString(std::string& json, std::string_view utf8) {
    const bool plain = std::all_of(utf8.begin(), utf8.end(), [](char c) {
        return c >= ' ' && c <= '~' && c != '"' && c != '\\';
    });
    if (plain) {
        json.append(1, '"').append(utf8).append(1, '"');
    } else {
        json += nlohmann::json(utf8).dump(-1, ' ', false, nlohmann::json::error_handler_t::replace);
    }
}

// Bytes of code page 1252 as a JSON string.
void AppendBytes(std::string& json, std::string_view bytes) {
    AppendString(json, ToUtf8(bytes));
}

// Takes a value apart at commas and blanks.
Parts ValueParts(std::string_view value) {
    Parts parts;
    FieldWalker walker(value, {", ", {}, false});
    std::string_view part;
    while (walker.Next(part)) parts.push_back(part);
    return parts;
}

std::optional<double> NumberOf(std::string_view part) {
    if (part.size() > 1 && part[0] == '+' && part[1] != '-') part.remove_prefix(1);
    return ParseNumber(part);
}

// Reads a value of exactly one number.
std::optional<double> OneNumber(std::string_view value) {
    const Parts parts = ValueParts(value);
    return parts.size() == 1 ? NumberOf(parts[0]) : std::nullopt;
}

// Reads a value of exactly three whole numbers of 16 bits.
bool ThreeIntegers(std::string_view value, std::array<std::int16_t, 3>& numbers) {
    const Parts parts = ValueParts(value);
    if (parts.size() != numbers.size()) return false;
    for (std::size_t i = 0; i < numbers.size(); ++i) {
        const std::optional<std::int32_t> number = ParseInteger(parts[i]);
        if (!number || !FitInt16(*number, numbers[i])) return false;
    }
    return true;
}

TextOutcome ThreeOutcome(std::int16_t first, std::int16_t second, std::int16_t third,
                         std::string formatted) {
    TextOutcome outcome{true, "", std::move(formatted)};
    for (const std::int16_t number : {first, second, third}) AppendItem(outcome.values, number);
    return outcome;
}

// Adding 0 takes the sign off a zero.
TextOutcome DegreesOutcome(double degrees, std::string formatted) {
    TextOutcome outcome{true, "", std::move(formatted)};
    AppendItem(outcome.values, degrees + 0.0);
    return outcome;
}

TextOutcome ZoneOutcome(float hours, std::string_view mnemonic) {
    TextOutcome outcome{true, "", ZoneFieldText(mnemonic, hours)};
    AppendItem(outcome.values, hours + 0.0F);
    outcome.values += ',';
    AppendBytes(outcome.values, mnemonic);
    return outcome;
}

TextOutcome ParseDate(std::string_view text) {
    std::int16_t day = 0;
    std::int16_t month = 0;
    std::int16_t year = 0;
    std::int16_t errorFlag = 0;
    ParseDateText(text, day, month, year, errorFlag);
    if (errorFlag != 0) return {};
    return ThreeOutcome(day, month, year, FormatDateText(day, month, year));
}

TextOutcome FormatDate(std::string_view value, const AngleOptions& /*options*/) {
    std::array<std::int16_t, 3> n{};
    if (!ThreeIntegers(value, n)) return {};
    return ThreeOutcome(n[0], n[1], n[2], FormatDateText(n[0], n[1], n[2]));
}

TextOutcome ParseTime(std::string_view text) {
    std::int16_t hours = 0;
    std::int16_t minutes = 0;
    std::int16_t seconds = 0;
    std::int16_t errorFlag = 0;
    ParseTimeText(text, hours, minutes, seconds, errorFlag);
    if (errorFlag != 0) return {};
    return ThreeOutcome(hours, minutes, seconds, FormatTimeText(hours, minutes, seconds));
}

TextOutcome FormatTime(std::string_view value, const AngleOptions& /*options*/) {
    std::array<std::int16_t, 3> n{};
    if (!ThreeIntegers(value, n)) return {};
    return ThreeOutcome(n[0], n[1], n[2], FormatTimeText(n[0], n[1], n[2]));
}

TextOutcome ParseLatitudeText(std::string_view text) {
    double latitude = 0;
    std::int16_t errorFlag = 0;
    ParseLatitude(text, latitude, errorFlag);
    if (errorFlag != 0) return {};
    return DegreesOutcome(latitude, FormatLatitude(latitude));
}

TextOutcome FormatLatitudeValue(std::string_view value, const AngleOptions& /*options*/) {
    const std::optional<double> latitude = OneNumber(value);
    if (!latitude) return {};
    return DegreesOutcome(*latitude, FormatLatitude(*latitude));
}

// The room of charts counts longitudes west positive, the command line east positive.
TextOutcome ParseLongitudeText(std::string_view text) {
    double longitudeWest = 0;
    std::int16_t errorFlag = 0;
    ParseLongitude(text, longitudeWest, errorFlag);
    if (errorFlag != 0) return {};
    return DegreesOutcome(-longitudeWest, FormatLongitude(longitudeWest));
}

TextOutcome FormatLongitudeValue(std::string_view value, const AngleOptions& /*options*/) {
    const std::optional<double> longitude = OneNumber(value);
    if (!longitude) return {};
    return DegreesOutcome(*longitude, FormatLongitude(-*longitude));
}

TextOutcome ParseZone(std::string_view text) {
    float hours = 0;
    std::string mnemonic;
    std::int16_t errorFlag = 0;
    ParseZoneText(text, hours, mnemonic, errorFlag, kTrue);
    if (errorFlag != 0) return {};
    return ZoneOutcome(hours, mnemonic);
}

// The hours end at the first comma or blank; a mnemonic may hold commas, but no blank.
TextOutcome FormatZone(std::string_view value, const AngleOptions& /*options*/) {
    value = Trim(value);
    const std::size_t end = std::min(value.find_first_of(", "), value.size());
    const std::optional<double> hours = NumberOf(value.substr(0, end));
    if (!hours || std::abs(*hours) > std::numeric_limits<float>::max()) return {};
    value.remove_prefix(std::min(end + 1, value.size()));
    const std::string_view mnemonic = Trim(value);
    if (mnemonic.find(' ') != std::string_view::npos) return {};
    return ZoneOutcome(static_cast<float>(*hours), mnemonic);
}

TextOutcome FormatAngleValue(std::string_view value, const AngleOptions& options) {
    const std::optional<double> angle = OneNumber(value);
    if (!angle) return {};
    return DegreesOutcome(
        *angle, FormatAngle(*angle, options.style, options.digits, ToFlag(options.symbols),
                            ToFlag(options.minutesOnly), ToFlag(options.forceSeconds),
                            ToFlag(options.plusSign)));
}

constexpr std::array<TextKind, 6> kTextKinds = {
    {{"date", ParseDate, FormatDate},
     {"time", ParseTime, FormatTime},
     {"latitude", ParseLatitudeText, FormatLatitudeValue},
     {"longitude", ParseLongitudeText, FormatLongitudeValue},
     {"zone", ParseZone, FormatZone},
     {"angle", nullptr, FormatAngleValue}}};

}  // namespace

const TextKind* FindTextKind(std::string_view name) {
    const auto* kind = std::find_if(kTextKinds.begin(), kTextKinds.end(),
                                    [&](const TextKind& k) { return k.name == name; });
    return kind != kTextKinds.end() ? kind : nullptr;
}

BoxAnswer BoxKeeper::MessageBox(std::string_view text, std::string_view title, BoxButtons buttons,
                                BoxIcon icon) {
    boxes.push_back({std::string(title), std::string(text)});
    return NullShell::MessageBox(text, title, buttons, icon);
}

void AppendRow(std::string& rows, std::string_view text, const TextOutcome& outcome,
               const std::vector<BoxKeeper::Box>& boxes) {
    rows += R"({"text":)";
    AppendString(rows, text);
    rows += outcome.accepted ? R"(,"error":0,"values":[)" : R"(,"error":-1,"values":[)";
    rows += outcome.values;
    rows += R"(],"formatted":)";
    AppendBytes(rows, outcome.formatted);
    rows += R"(,"messages":[)";
    for (const BoxKeeper::Box& box : boxes) {
        rows += &box == boxes.data() ? R"({"title":)" : R"(,{"title":)";
        AppendBytes(rows, box.title);
        rows += R"(,"text":)";
        AppendBytes(rows, box.text);
        rows += '}';
    }
    rows += "]}\n";
}

}  // namespace orvantis::cli

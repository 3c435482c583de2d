#include "text/zones.h"

#include <algorithm>
#include <cmath>

#include "text/fields.h"
#include "text/messages.h"
#include "text/numbers.h"
#include "text/strings.h"

namespace orvantis {

namespace {

constexpr std::int32_t kLargestHours = 13;

// Half a second, in hours.
constexpr double kHalfSecond = 0.00014;
// A third of a second: a longitude of 15 degrees is one hour and not 0:59:59.
constexpr double kSecondsGuard = 0.0001;

constexpr std::size_t kLmtLength = 3;

// First row of the zone table with a mnemonic, 0 if there is none.
std::size_t ZoneRow(std::string_view mnemonic) {
    const auto count = static_cast<std::size_t>(std::max<std::int16_t>(zones.ZoneCount, 0));
    for (std::size_t row = 1; row <= count; ++row) {
        if (TrimRight(zones.ZoneMnemonic[row]) == mnemonic) return row;
    }
    return 0;
}

// Reads hours, minutes and seconds between colons. A "-" anywhere makes the whole negative, so that
// "-0:30" is half an hour east. False: it can't be read.
bool ReadZoneTime(std::string_view text, float& hours) {
    FieldWalker walker(text, kZoneFields);
    std::string_view field;
    std::int32_t parts[3] = {0, 0, 0};
    int count = 0;
    while (walker.Next(field)) {
        if (!walker.IsAllowed(field) || count == 3) return false;
        const std::int32_t value = LeadingInteger(field);
        const std::int32_t least = count == 0 ? -kLargestHours : 0;
        const std::int32_t most = count == 0 ? kLargestHours : 59;
        if (value < least || value > most) return false;
        parts[count++] = value;
    }
    const double magnitude = std::abs(parts[0]) + parts[1] / 60.0 + parts[2] / 3600.0;
    const bool negative = text.find('-') != std::string_view::npos && magnitude > 0;
    hours = static_cast<float>(negative ? -magnitude : magnitude);
    return true;
}

}  // namespace

void ParseZoneText(std::string_view text, float& hours, std::string& mnemonic,
                   std::int16_t& errorFlag, Flag showMessages) {
    errorFlag = kFalse;
    const std::string work = UpperCase(Trim(text));
    const std::size_t blank = work.find(' ');
    const std::string_view word = std::string_view(work).substr(0, blank);
    const std::size_t row = ZoneRow(word);

    std::string_view timeText = work;
    if (row != 0) {
        mnemonic = word;
        timeText = TrimRight(zones.ZoneTime[row]);
    } else if (blank != std::string::npos) {
        mnemonic = word;
        timeText = std::string_view(work).substr(blank + 1);
    } else {
        mnemonic.clear();
    }

    if (!timeText.empty() && ReadZoneTime(timeText, hours)) return;
    errorFlag = kTrue;
    if (showMessages == 0) return;
    if (row != 0) {
        ShowZoneRowFault(timeText);
    } else {
        ShowZoneFault();
    }
}

std::string FormatZoneText(float hours) {
    const double x = std::abs(static_cast<double>(hours)) + kHalfSecond;
    const double whole = std::floor(x);
    const double minutes = std::floor((x - whole) * 60);
    // Where the product above was rounded up to a whole minute, a hair below 0 is left.
    const double seconds = std::max(0.0, std::floor((x - whole - minutes / 60) * 3600));
    std::string text(1, hours < 0 ? '-' : '+');
    text += std::to_string(RoundToInt16(whole)) + ":" + ZeroPadded(RoundToInt16(minutes), 2);
    if (seconds != 0) text += ":" + ZeroPadded(RoundToInt16(seconds), 2);
    return text;
}

std::string ZoneFieldText(std::string_view mnemonic, float hours) {
    std::string text(mnemonic);
    if (!mnemonic.empty()) text += ' ';
    return text += FormatZoneText(hours);
}

bool IsLmtZone(std::string_view text) {
    return SameText(text.substr(0, kLmtLength), "LMT");
}

std::string LmtZoneText(double longitude) {
    std::int16_t hours = 0;
    std::int16_t minutes = 0;
    std::int16_t seconds = 0;
    SplitDMS(static_cast<float>(std::abs(longitude) / 15 + kSecondsGuard), hours, minutes, seconds);
    return std::string("LMT ") + (longitude < 0 ? '-' : '+') + std::to_string(hours) + ":" +
           ZeroPadded(minutes, 2) + ":" + ZeroPadded(seconds, 2);
}

}  // namespace orvantis

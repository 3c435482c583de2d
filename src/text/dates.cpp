#include "text/dates.h"

#include <cmath>

#include "text/numbers.h"
#include "text/strings.h"
#include "text/text_state.h"

namespace orvantis {

const std::array<std::string_view, 13> kMonthNames = {
    "",     "January", "February",  "March",   "April",    "May",     "June",
    "July", "August",  "September", "October", "November", "December"};

namespace {

// The first Gregorian day, 15 October 1582, as year + month / 100 + day / 10000.
constexpr double kFirstGregorianDay = 1582.1015;

bool IsGregorian(float day, std::int16_t month, std::int16_t year, Flag calendarOverride) {
    const double number = year + month / 100.0 + day / 10000.0;
    const bool modern = number >= kFirstGregorianDay;
    return calendarOverride != 0 ? !modern : modern;
}

}  // namespace

double DateToJD(float day, std::int16_t month, std::int16_t year, Flag calendarOverride) {
    // January and February count as months 13 and 14 of the year before, so that the leap day
    // comes last.
    const bool late = month > 2;
    const auto y = static_cast<float>(late ? year : year - 1);
    const auto m = static_cast<float>(late ? month : month + 12);
    double jd = std::floor(365.25 * static_cast<double>(y)) +
                std::floor(30.6001 * (static_cast<double>(m) + 1)) + static_cast<double>(day) +
                1720994.5;
    if (IsGregorian(day, month, year, calendarOverride)) {
        const float century = std::floor(y / 100.0F);
        jd += static_cast<double>(2.0F - century + std::floor(century / 4.0F));
    }
    return jd;
}

std::string FormatDateText(std::int16_t day, std::int16_t month, std::int16_t year) {
    const std::string dayText = std::to_string(ClampInt(day, 1, 31));
    const std::string monthText(
        kMonthNames[static_cast<std::size_t>(ClampInt(month, 1, 12))].substr(0, 3));
    const std::string yearText = year < 1 ? ZeroPadded(1 - year, 4) + " BC" : ZeroPadded(year, 4);
    const std::string& first = textState.MonthFirst != 0 ? monthText : dayText;
    const std::string& second = textState.MonthFirst != 0 ? dayText : monthText;
    return first + " " + second + " " + yearText;
}

std::string FormatTimeText(std::int16_t hours, std::int16_t minutes, std::int16_t seconds) {
    std::string text;
    std::string_view suffix;
    if (textState.Clock24 != 0) {
        text = ZeroPadded(hours, 2);
    } else {
        suffix = hours < 12 ? " AM" : " PM";
        text = std::to_string(hours > 12 ? hours - 12 : hours);
    }
    text += ":" + ZeroPadded(minutes, 2);
    if (seconds > 0) text += ":" + ZeroPadded(seconds, 2);
    return text.append(suffix);
}

}  // namespace orvantis

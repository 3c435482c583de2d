#include "text/dates.h"

#include <algorithm>
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

// The same as a Julian day number, the one that begins at its noon.
constexpr double kFirstGregorianNumber = 2299161;

}  // namespace

bool IsGregorianDate(float day, std::int16_t month, std::int16_t year) {
    const double number = year + month / 100.0 + static_cast<double>(day) / 10000.0;
    return number >= kFirstGregorianDay;
}

double DateToJD(float day, std::int16_t month, std::int16_t year, Flag calendarOverride) {
    // January and February count as months 13 and 14 of the year before, so that the leap day
    // comes last.
    const bool late = month > 2;
    const auto y = static_cast<float>(late ? year : year - 1);
    const auto m = static_cast<float>(late ? month : month + 12);
    double jd = std::floor(365.25 * static_cast<double>(y)) +
                std::floor(30.6001 * (static_cast<double>(m) + 1)) + static_cast<double>(day) +
                1720994.5;
    if (IsGregorianDate(day, month, year) != (calendarOverride != 0)) {
        const float century = std::floor(y / 100.0F);
        jd += static_cast<double>(2.0F - century + std::floor(century / 4.0F));
    }
    return jd;
}

void JDToDate(double julianDay, float& day, std::int32_t& month, std::int32_t& year) {
    day = 0;
    month = 0;
    year = 0;
    if (!(julianDay >= kFirstJD && julianDay <= kLastJD)) {
        RaiseRunTimeError(error::kOverflow);
        return;
    }

    // Days count from midnight here; `number` is the Julian day number of the civil day's noon.
    const double number = std::floor(julianDay + 0.5);
    const double fraction = julianDay + 0.5 - number;

    // The number that the day would have had if the Julian calendar had gone on.
    double julianNumber = number;
    if (number >= kFirstGregorianNumber) {
        const double century = std::floor((number - 1867216.25) / 36524.25);
        julianNumber += 1 + century - std::floor(century / 4);
    }

    // Years and months from a 1 March, so that the leap day comes last.
    const double b = julianNumber + 1524;
    const double c = std::floor((b - 122.1) / 365.25);
    const double d = std::floor(365.25 * c);
    const double e = std::floor((b - d) / 30.6001);
    const double wholeDay = b - d - std::floor(30.6001 * e);
    month = RoundToInt32(e < 14 ? e - 1 : e - 13);
    year = RoundToInt32(month > 2 ? c - 4716 : c - 4715);

    // The last moments of a day must not be rounded into the next one, which may be day 32.
    const auto nextDay = static_cast<float>(wholeDay + 1);
    day = std::min(static_cast<float>(wholeDay + fraction), std::nextafter(nextDay, 0.0F));
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

std::string TodayText() {
    if (textState.shell == nullptr) return "";
    const LocalTime now = textState.shell->Now();
    return FormatDateText(now.day, now.month, now.year);
}

std::string DateRecordText(const PackedMoment& moment) {
    return FormatDateText(moment.day, moment.month, moment.year);
}

std::string TimeRecordText(const PackedMoment& moment) {
    return FormatTimeText(moment.hour, moment.minute, moment.second);
}

}  // namespace orvantis

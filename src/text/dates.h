// Dates and times as text and as numbers.
//
// A date is day, month (1 to 12) and astronomical year (1 BC is 0, 44 BC is -43). The order of day
// and month and the clock are the user's regional choice; callers hand them in, so that nothing
// here depends on who keeps them.
#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <string_view>

#include "surface/values.h"

namespace orvantis {

/// "January" to "December", 1 to 12; element 0 stands empty.
extern const std::array<std::string_view, 13> kMonthNames;

/// Julian day of a civil date; the day may have a fraction. The calendar is the Gregorian one from
/// 15 October 1582 on and the Julian one before; with `calendarOverride` set it is the other one.
/// A month outside 1 to 12 gives a number without meaning, never a fault.
/// Source: J. Meeus, Astronomical Formulae for Calculators, chapter 3, with floor in place of
/// truncation, which makes negative years come out right without a further term.
double DateToJD(float day, std::int16_t month, std::int16_t year, Flag calendarOverride = kFalse);

/// "31 Dec 1992", "Dec 31 1992" with `monthFirst`, "5 Mar 0044 BC" for year -43. A day or month out
/// of range is shown as the nearest one.
std::string FormatDateText(std::int16_t day, std::int16_t month, std::int16_t year,
                           Flag monthFirst);

/// "23:59" and "23:59:07" with `clock24`, else "11:59 PM" and "11:59:07 PM". The first hour of a
/// day is "0:30 AM" on the 12 hour clock. Seconds of 0 aren't shown.
std::string FormatTimeText(std::int16_t hours, std::int16_t minutes, std::int16_t seconds,
                           Flag clock24);

}  // namespace orvantis

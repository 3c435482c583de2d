// Dates and times as text and as numbers.
//
// A date is day, month (1 to 12) and astronomical year (1 BC is 0, 44 BC is -43). The order of day
// and month and the clock are the user's regional choice, kept in textState.
#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <string_view>

#include "surface/values.h"

namespace orvantis {

/// "January" to "December", 1 to 12; element 0 stands empty.
extern const std::array<std::string_view, 13> kMonthNames;

/// True from 15 October 1582 on: the dates that are Gregorian unless they say otherwise.
bool IsGregorianDate(float day, std::int16_t month, std::int16_t year);

/// Julian day of a civil date; the day may have a fraction. The calendar is the Gregorian one from
/// 15 October 1582 on and the Julian one before; with `calendarOverride` set it is the other one.
/// A month outside 1 to 12 gives a number without meaning, never a fault.
/// Source: J. Meeus, Astronomical Formulae for Calculators, chapter 3, with floor in place of
/// truncation, which makes negative years come out right without a further term.
double DateToJD(float day, std::int16_t month, std::int16_t year, Flag calendarOverride = kFalse);

/// The Julian days that have a date here: those of the years that 16 bits hold, with a margin for
/// zones, times of day and dates whose day or month is out of range.
inline constexpr double kFirstJD = -10300000;
inline constexpr double kLastJD = 13750000;

/// Civil date of a Julian day: the Julian calendar before 15 October 1582, the Gregorian one from
/// that day on. `day` keeps its fraction, which never rounds up to the next day; `year` is
/// astronomical. A Julian day outside kFirstJD to kLastJD leaves the run-time error "Overflow" and
/// gives 0, 0, 0.
/// Source: J. Meeus, Astronomical Formulae for Calculators, chapter 3, with floor.
void JDToDate(double julianDay, float& day, std::int32_t& month, std::int32_t& year);

/// Reads a date: three fields in the regional order, month names, ordinal suffixes, an era tag (BC,
/// AD) and a calendar tag (OS, NS). `errorFlag` 0: day, month and the astronomical year are set; a
/// date tagged for the other calendar has been turned into its own, and 5 to 14 October 1582, which
/// no calendar here has, have been moved on by ten days, both without a box. `errorFlag` -1:
/// refused, the box "Error in Date" has been shown, and the values hold whatever was read so far.
void ParseDateText(std::string_view text, std::int16_t& day, std::int16_t& month,
                   std::int16_t& year, std::int16_t& errorFlag);

/// Reads a time: hours, minutes, seconds in this order, AM or PM, or one of the words noon, midday,
/// midnight. An empty text is 0:00:00. `errorFlag` 0 accepted, -1 refused: one box "Error in Time"
/// or several have been shown.
void ParseTimeText(std::string_view text, std::int16_t& hours, std::int16_t& minutes,
                   std::int16_t& seconds, std::int16_t& errorFlag);

/// "31 Dec 1992", or "Dec 31 1992" where textState.MonthFirst is set; "5 Mar 0044 BC" for year -43.
/// A day or month out of range is shown as the nearest one.
std::string FormatDateText(std::int16_t day, std::int16_t month, std::int16_t year);

/// "23:59" and "23:59:07" where textState.Clock24 is set, else "11:59 PM" and "11:59:07 PM". The
/// first hour of a day is "0:30 AM" on the 12 hour clock. Seconds of 0 aren't shown.
std::string FormatTimeText(std::int16_t hours, std::int16_t minutes, std::int16_t seconds);

/// The present date of the shell's clock through FormatDateText; "" without a shell.
std::string TodayText();

/// A date and time as packed in records.
struct PackedMoment {
    std::int16_t year = 0;    ///< astronomical
    std::uint8_t month = 1;   ///< 1 to 12
    std::uint8_t day = 1;     ///< 1 to 31
    std::uint8_t hour = 0;    ///< 0 to 23
    std::uint8_t minute = 0;  ///< 0 to 59
    std::uint8_t second = 0;  ///< 0 to 59
};

/// Its date through FormatDateText, and its time through FormatTimeText.
std::string DateRecordText(const PackedMoment& moment);
std::string TimeRecordText(const PackedMoment& moment);

}  // namespace orvantis

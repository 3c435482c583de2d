// Texts as users type them, with what each has to mean: the values, or every box in its order with
// the whole of its text. All values were worked out from the rules of the routines; the days of the
// two calendars by counting leap years.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>

#include "surface/values.h"

namespace orvantis::typed {

using namespace std::string_view_literals;

// --- Dates -------------------------------------------------------------------------------------

/// The text of a box whose example follows the regional order.
struct DateBox {
    std::string_view dayFirst;
    std::string_view monthFirst;
};

inline constexpr std::string_view kDateTitle = "Error in Date";

inline constexpr DateBox kDateFormat = {
    "The format of the date is not recognised.\r\n"
    "Please re-enter a valid date e.g.\r\n"
    "31 Dec 1992  or  31/12/1992",
    "The format of the date is not recognised.\r\n"
    "Please re-enter a valid date e.g.\r\n"
    "Dec 31 1992  or  12/31/1992"};

inline constexpr DateBox kDateEra = {
    "The format of the date is not recognised.\r\n"
    "Specify BC for years prior to year one, and AD (or nothing) for years one and after.",
    "The format of the date is not recognised.\r\n"
    "Specify BC for years prior to year one, and AD (or nothing) for years one and after."};

inline constexpr DateBox kDateCalendar = {
    "This date is not a valid calendar date.\r\n"
    "Please re-enter a valid date e.g.\r\n"
    "31 Dec 1992  or  31/12/1992",
    "This date is not a valid calendar date.\r\n"
    "Please re-enter a valid date e.g.\r\n"
    "Dec 31 1992  or  12/31/1992"};

enum class Order { DayFirst, MonthFirst, Either };

struct DateResult {
    Flag errorFlag;
    std::int16_t day;    ///< 1 to 31; not looked at in a refusal
    std::int16_t month;  ///< 1 to 12; the same
    std::int16_t year;   ///< astronomical; the same
    DateBox box;         ///< the only box; empty in a refusal: any box
};

constexpr DateResult Date(std::int16_t day, std::int16_t month, std::int16_t year) {
    return {kFalse, day, month, year, {}};
}
constexpr DateResult Refused(const DateBox& box) {
    return {kTrue, 0, 0, 0, box};
}
inline constexpr DateResult kDateRefused = {kTrue, 0, 0, 0, {}};

struct DateRow {
    std::string_view text;
    Order order;  ///< the regional order it is read in; Either: in both, with the same result
    DateResult expected;
    std::string_view rule;
};

inline constexpr DateRow kDateRows[] = {
    // One date in every form.
    {"31 Dec 1992", Order::Either, Date(31, 12, 1992), "day, month name, year"},
    {"Dec 31 1992", Order::Either, Date(31, 12, 1992), "a name in the first field is the month"},
    {"31st Dec 1992", Order::DayFirst, Date(31, 12, 1992), "the ordinal is blanked"},
    {"31/12/1992", Order::DayFirst, Date(31, 12, 1992), "day first by the region"},
    {"31/12/1992", Order::MonthFirst, Refused(kDateCalendar), "month 31 does not come back"},
    {"12/31/1992", Order::MonthFirst, Date(31, 12, 1992), "month first by the region"},
    {"12/31/1992", Order::DayFirst, Refused(kDateCalendar), "month 31 does not come back"},
    {"31DEC1992", Order::Either, Date(31, 12, 1992), "digits and letters part by themselves"},
    {"DEC31 1992", Order::Either, Date(31, 12, 1992), "glued month and day"},
    {"31dec92", Order::Either, Date(31, 12, 1992), "glued, two characters of year"},
    {"  31 Dec 1992  ", Order::Either, Date(31, 12, 1992), "blanks at the ends"},
    {"31   Dec   1992", Order::Either, Date(31, 12, 1992), "runs of blanks"},
    {"31 dEc 1992", Order::Either, Date(31, 12, 1992), "case does not matter"},
    // The regional order.
    {"1/2/1992", Order::DayFirst, Date(1, 2, 1992), "day first by the region"},
    {"1/2/1992", Order::MonthFirst, Date(2, 1, 1992), "month first by the region"},
    {"Jan/2/1992", Order::Either, Date(2, 1, 1992), "a name decides against the region"},
    {"2/Jan/1992", Order::Either, Date(2, 1, 1992), "a name decides against the region"},
    {"13/1/1992", Order::DayFirst, Date(13, 1, 1992), "day first"},
    {"13/1/1992", Order::MonthFirst, Refused(kDateCalendar), "month 13 does not come back"},
    {"1/13/1992", Order::MonthFirst, Date(13, 1, 1992), "month first"},
    {"1/13/1992", Order::DayFirst, Refused(kDateCalendar), "month 13 does not come back"},
    {"1992/1/2", Order::DayFirst, Refused(kDateCalendar), "the year is always field 3; day 1992"},
    {"1992/1/2", Order::MonthFirst, Refused(kDateFormat),
     "a month of four characters is a name, and none begins with 1992"},
    {"1992 JAN 2", Order::Either, Refused(kDateCalendar), "the year is always field 3; day 1992"},
    {"JAN 1992 2", Order::Either, Refused(kDateCalendar), "day 1992 of January 1902"},
    // Month names of every length.
    {"5 JANUARY 1992", Order::Either, Date(5, 1, 1992), "whole name"},
    {"5 FEBRUARY 1992", Order::Either, Date(5, 2, 1992), "whole name"},
    {"5 MARCH 1992", Order::Either, Date(5, 3, 1992), "whole name"},
    {"5 APRIL 1992", Order::Either, Date(5, 4, 1992), "whole name"},
    {"5 MAY 1992", Order::Either, Date(5, 5, 1992), "whole name"},
    {"5 JUNE 1992", Order::Either, Date(5, 6, 1992), "whole name"},
    {"5 JULY 1992", Order::Either, Date(5, 7, 1992), "whole name"},
    {"5 AUGUST 1992", Order::Either, Date(5, 8, 1992), "ST of AUGUST is blanked; AUGU is left"},
    {"5 SEPTEMBER 1992", Order::Either, Date(5, 9, 1992), "whole name"},
    {"5 OCTOBER 1992", Order::Either, Date(5, 10, 1992), "whole name"},
    {"5 NOVEMBER 1992", Order::Either, Date(5, 11, 1992), "whole name"},
    {"31 DECEMBER 1992", Order::Either, Refused(kDateFormat),
     "CE of DECEMBER is blanked: four fields"},
    {"DECEMBER 31 1992", Order::Either, Refused(kDateFormat),
     "CE of DECEMBER is blanked: four fields"},
    {"31 DECE 1992", Order::Either, Refused(kDateFormat),
     "DE is left, two characters, so a number: 0"},
    {"31 DECEM 1992", Order::Either, Refused(kDateFormat), "DE and M are left: four fields"},
    {"5 SEP 1992", Order::Either, Date(5, 9, 1992), "three letters"},
    {"5 SEPT 1992", Order::Either, Date(5, 9, 1992), "four letters"},
    {"5 SEPTE 1992", Order::Either, Date(5, 9, 1992), "five letters"},
    {"5 SEPTEM 1992", Order::Either, Date(5, 9, 1992), "six letters"},
    {"5 SEPTEMB 1992", Order::Either, Date(5, 9, 1992), "seven letters"},
    {"5 SEPTEMBE 1992", Order::Either, Date(5, 9, 1992), "eight letters"},
    {"5 SEPX 1992", Order::Either, Refused(kDateFormat), "SEPX is the beginning of no name"},
    {"5 SEPTEMBERS 1992", Order::Either, Refused(kDateFormat), "longer than the name"},
    {"5 MAYO 1992", Order::Either, Refused(kDateFormat), "longer than the name"},
    {"5 JUN 1992", Order::Either, Date(5, 6, 1992), "June before July"},
    {"5 JUL 1992", Order::Either, Date(5, 7, 1992), "July by its third letter"},
    {"5 JU 1992", Order::Either, Refused(kDateFormat), "two characters are a number: 0"},
    {"5 J 1992", Order::Either, Refused(kDateFormat), "one character is a number: 0"},
    {"5 AUG 1992", Order::Either, Date(5, 8, 1992), "three letters"},
    {"5 AUGU 1992", Order::Either, Date(5, 8, 1992), "four letters"},
    {"5 AUGUS 1992", Order::Either, Date(5, 8, 1992), "five letters, no ST in it"},
    {"5 AVRIL 1992", Order::Either, Refused(kDateFormat), "no such name"},
    {"5 MARS 1992", Order::Either, Refused(kDateFormat), "no such name"},
    // The month as a number.
    {"5/07/1992", Order::DayFirst, Date(5, 7, 1992), "two digits"},
    {"5/007/1992", Order::DayFirst, Refused(kDateFormat), "three characters are a name"},
    {"5/0/1992", Order::DayFirst, Refused(kDateFormat), "month 0"},
    {"5/00/1992", Order::DayFirst, Refused(kDateFormat), "month 0"},
    {"0/5/1992", Order::MonthFirst, Refused(kDateFormat), "month 0"},
    {"0/5/1992", Order::DayFirst, Refused(kDateCalendar), "day 0 is the last of April"},
    {"5/99/1992", Order::DayFirst, Refused(kDateCalendar), "month 99 does not come back"},
    // Ordinal suffixes.
    {"1ST JAN 1992", Order::Either, Date(1, 1, 1992), "ST"},
    {"2nd Jan 1992", Order::Either, Date(2, 1, 1992), "ND"},
    {"3Rd Jan 1992", Order::Either, Date(3, 1, 1992), "RD"},
    {"4TH JAN 1992", Order::Either, Date(4, 1, 1992), "TH"},
    {"11ST JAN 1992", Order::Either, Date(11, 1, 1992), "the suffix need not suit the number"},
    {"JAN 1ST 1992", Order::Either, Date(1, 1, 1992), "ordinal behind the month"},
    {"AUGUST 1ST 1992", Order::Either, Refused(kDateFormat),
     "the only ST that is blanked is the month's"},
    {"1ST AUGUST 1992", Order::Either, Date(1, 8, 1992),
     "the first ST is the day's; AUGUST keeps its own"},
    {"2ND AUGUST 1992", Order::Either, Date(2, 8, 1992),
     "ND and the ST of AUGUST are both blanked"},
    {"AUGUST 3RD, 1992", Order::Either, Date(3, 8, 1992),
     "RD and the ST of AUGUST are both blanked"},
    {"1ST 2ND 1992", Order::DayFirst, Date(1, 2, 1992), "one of each is blanked"},
    {"1ST 1ST 1992", Order::DayFirst, Refused(kDateFormat), "only the first ST is blanked"},
    {"4TH 5TH 1992", Order::DayFirst, Refused(kDateFormat), "only the first TH is blanked"},
    {"5 ST JAN 1992", Order::Either, Date(5, 1, 1992), "a suffix by itself"},
    {"STNDRDTH 5 JAN 1992", Order::Either, Date(5, 1, 1992), "each of the four once"},
    // Separators and glued fields.
    {"5.7.1992", Order::DayFirst, Date(5, 7, 1992), "full stops"},
    {"5,7,1992", Order::DayFirst, Date(5, 7, 1992), "commas"},
    {"5;7;1992", Order::DayFirst, Date(5, 7, 1992), "semicolons"},
    {"5:7:1992", Order::DayFirst, Date(5, 7, 1992), "colons"},
    {"5'7'1992", Order::DayFirst, Date(5, 7, 1992), "apostrophes"},
    {"5./,;:'7'1992", Order::MonthFirst, Date(7, 5, 1992), "a run of separators"},
    {"/5/7/1992/", Order::DayFirst, Date(5, 7, 1992), "separators at the ends"},
    {"July 4, 1992", Order::Either, Date(4, 7, 1992), "comma and blank"},
    {"4.JULY.92", Order::Either, Date(4, 7, 1992), "full stops around a name"},
    {"5JUL'92", Order::Either, Date(5, 7, 1992), "apostrophe before the year"},
    {"31-12-1992", Order::Either, Refused(kDateFormat), "a hyphen separates nothing: one field"},
    {"31-Dec-1992", Order::Either, Date(31, 12, -1992), "the hyphen goes with the year"},
    {"DEC-31-1992", Order::Either, Refused(kDateFormat), "DEC and -31-1992: two fields"},
    {"1-5 JAN 1992", Order::Either, Date(1, 1, 1992),
     "1-5 is not all digits, JAN neither: field 2 is the month, day 1"},
    {"-5 JAN 1992", Order::Either, Refused(kDateCalendar), "day -5"},
    {"5 -2 1992", Order::Either, Refused(kDateCalendar), "a field with a hyphen is the month: -2"},
    {"5 -2 1992 OS", Order::Either, Date(18, 10, 1991),
     "month -2 is October of the year before: 5 + 13 days"},
    {"DEC -31 1992", Order::Either, Refused(kDateFormat),
     "both with a character that is no digit: -31 is the month, a name of three"},
    {"19X2 JAN 1", Order::Either, Refused(kDateFormat), "19, X, 2, JAN, 1: five fields"},
    {"5 JAN 19 92", Order::Either, Refused(kDateFormat), "four fields"},
    {"5+JAN+1992", Order::Either, Refused(kDateFormat), "a plus sticks to the name"},
    {"5_JAN_1992", Order::Either, Refused(kDateFormat), "an underscore sticks to the name"},
    {"5 JAN", Order::Either, Refused(kDateFormat), "two fields"},
    {"1992", Order::Either, Refused(kDateFormat), "one field"},
    {"5 JAN 1992 6", Order::Either, Refused(kDateFormat), "four fields"},
    {"5 JAN 1992 X", Order::Either, Refused(kDateFormat), "four fields"},
    {"JAN FEB 1992", Order::Either, Refused(kDateCalendar), "field 2 is the month, day 0"},
    // Days.
    {"005 JAN 1992", Order::Either, Date(5, 1, 1992), "leading zeros of the day"},
    {"31 APR 1992", Order::Either, Refused(kDateCalendar), "April has 30 days"},
    {"30 APR 1992", Order::Either, Date(30, 4, 1992), "April has 30 days"},
    {"31 JUN 1992", Order::Either, Refused(kDateCalendar), "June has 30 days"},
    {"31 SEP 1992", Order::Either, Refused(kDateCalendar), "September has 30 days"},
    {"31 NOV 1992", Order::Either, Refused(kDateCalendar), "November has 30 days"},
    {"31 JAN 1992", Order::Either, Date(31, 1, 1992), "31 days"},
    {"31 MAR 1992", Order::Either, Date(31, 3, 1992), "31 days"},
    {"31 JUL 1992", Order::Either, Date(31, 7, 1992), "31 days"},
    {"31 AUG 1992", Order::Either, Date(31, 8, 1992), "31 days"},
    {"31 OCT 1992", Order::Either, Date(31, 10, 1992), "31 days"},
    {"32 JAN 1992", Order::Either, Refused(kDateCalendar), "no such day"},
    {"0 JAN 1992", Order::Either, Refused(kDateCalendar), "no such day"},
    {"999 JAN 1992", Order::Either, Refused(kDateCalendar), "no such day"},
    // Leap years of both calendars.
    {"29 FEB 1992", Order::Either, Date(29, 2, 1992), "leap year"},
    {"29 FEB 1991", Order::Either, Refused(kDateCalendar), "no leap year"},
    {"30 FEB 1992", Order::Either, Refused(kDateCalendar), "no such day"},
    {"29 FEB 1900", Order::Either, Refused(kDateCalendar),
     "a century year of the Gregorian calendar"},
    {"29 FEB 2000", Order::Either, Date(29, 2, 2000), "divisible by 400"},
    {"29 FEB 2100", Order::Either, Refused(kDateCalendar),
     "a century year of the Gregorian calendar"},
    {"29 FEB 1700", Order::Either, Refused(kDateCalendar),
     "a century year of the Gregorian calendar"},
    {"29 FEB 1600", Order::Either, Date(29, 2, 1600), "divisible by 400"},
    {"29 FEB 1584", Order::Either, Date(29, 2, 1584), "the first Gregorian leap year"},
    {"29 FEB 1580", Order::Either, Date(29, 2, 1580), "the last Julian leap year"},
    {"29 FEB 1582", Order::Either, Refused(kDateCalendar), "no leap year"},
    {"29 FEB 1500", Order::Either, Date(29, 2, 1500), "a century year of the Julian calendar"},
    {"29 FEB 900", Order::Either, Date(29, 2, 900), "a century year of the Julian calendar"},
    {"29 FEB 1 BC", Order::Either, Date(29, 2, 0), "year 0 is a leap year"},
    {"29 FEB 5 BC", Order::Either, Date(29, 2, -4), "year -4 is a leap year"},
    {"29 FEB 4 BC", Order::Either, Refused(kDateCalendar), "year -3 is none"},
    {"29 FEB 0", Order::Either, Refused(kDateCalendar), "0 of one character is 1900"},
    {"29 FEB 000", Order::Either, Date(29, 2, 0), "0 of three characters is year 0"},
    // Years and the century rule.
    {"5 JAN 92", Order::Either, Date(5, 1, 1992), "two characters: 1900 is added"},
    {"5 JAN 092", Order::Either, Date(5, 1, 92), "three characters stand as they are"},
    {"5 JAN 0092", Order::Either, Date(5, 1, 92), "four characters stand as they are"},
    {"5 JAN 5", Order::Either, Date(5, 1, 1905), "one character: 1900 is added"},
    {"5 JAN 00", Order::Either, Date(5, 1, 1900), "two characters: 1900 is added"},
    {"5 JAN 99", Order::Either, Date(5, 1, 1999), "two characters: 1900 is added"},
    {"5 JAN 100", Order::Either, Date(5, 1, 100), "three characters"},
    {"5 JAN -5", Order::Either, Date(5, 1, -5), "a negative year stands"},
    {"5 JAN -43", Order::Either, Date(5, 1, -43), "a negative year stands"},
    {"5 JAN -0", Order::Either, Date(5, 1, 1900), "-0 is 0, of two characters"},
    {"5 JAN -000", Order::Either, Date(5, 1, 0), "-0 is 0, of four characters"},
    {"5 JAN 9999", Order::Either, Date(5, 1, 9999), "far year"},
    {"5 JAN 32767", Order::Either, Date(5, 1, 32767), "the last year of 16 bits"},
    {"31 DEC 32767", Order::Either, Date(31, 12, 32767), "the last year of 16 bits"},
    {"5 JAN -32767", Order::Either, Date(5, 1, -32767), "a negative year of five digits"},
    {"5 JAN X", Order::Either, Date(5, 1, 1900), "no number is 0, one character"},
    {"5 JAN XYZ", Order::Either, Date(5, 1, 0), "no number is 0, three characters"},
    {"5 JAN ABC", Order::Either, Date(5, 1, 1), "BC is blanked, A is 0: 1 less 0"},
    {"5 JAN 92-93", Order::Either, Date(5, 1, 92), "leading number of a field of five characters"},
    // Era tags.
    {"15 Mar 44 BC", Order::Either, Date(15, 3, -43), "1 less 44"},
    {"15 Mar 44 bce", Order::Either, Date(15, 3, -43), "BCE"},
    {"15 Mar 44 B.C.", Order::Either, Date(15, 3, -43), "B.C."},
    {"15 Mar 44 b.c.e.", Order::Either, Date(15, 3, -43), "B.C.E."},
    {"15 MAR 44BC", Order::Either, Date(15, 3, -43), "glued to the year"},
    {"BC 15 MAR 44", Order::Either, Date(15, 3, -43), "the tag may stand anywhere"},
    {"15 BC MAR 44", Order::Either, Date(15, 3, -43), "the tag may stand anywhere"},
    {"15 MAR 44 B.C", Order::Either, Refused(kDateFormat), "B and C are left over: five fields"},
    {"15 MAR 44 B.C.E", Order::Either, Refused(kDateFormat), "B.C. is blanked, E is left over"},
    {"15 MAR 044 BC", Order::Either, Date(15, 3, -43), "leading zero"},
    {"15 MAR -43", Order::Either, Date(15, 3, -43), "the same year with a sign"},
    {"15 MAR -43 BC", Order::Either, Date(15, 3, -43), "a negative year stands, with BC too"},
    {"5 JAN 1 BC", Order::Either, Date(5, 1, 0), "1 BC is year 0"},
    {"5 JAN 0 BC", Order::Either, Date(5, 1, 1), "1 less 0"},
    {"5 JAN 4713 BC", Order::Either, Date(5, 1, -4712), "1 less 4713"},
    {"1 JAN 4713 BC", Order::Either, Date(1, 1, -4712), "the day Julian days are counted from"},
    {"31 DEC 4714 BC", Order::Either, Date(31, 12, -4713), "a Julian day below 0"},
    {"5 JAN 32767 BC", Order::Either, Date(5, 1, -32766), "1 less 32767"},
    {"5 JAN 92 AD", Order::Either, Date(5, 1, 1992), "AD does not keep the century off"},
    {"5 JAN 092 AD", Order::Either, Date(5, 1, 92), "AD beside three characters"},
    {"AD 5 JAN 1992", Order::Either, Date(5, 1, 1992), "AD in front"},
    {"5 JAN 1992 A.D.", Order::Either, Date(5, 1, 1992), "A.D."},
    {"5 JAN 1992 ce", Order::Either, Date(5, 1, 1992), "CE"},
    {"5 JAN 1992 C.E.", Order::Either, Date(5, 1, 1992), "C.E."},
    {"5 JAN 1992AD", Order::Either, Date(5, 1, 1992), "glued to the year"},
    {"5 JAN 1992 A.D", Order::Either, Refused(kDateFormat), "A and D are left over: five fields"},
    {"BC AD 1 JAN 5", Order::Either, Refused(kDateEra), "both tags"},
    {"1 JAN 5 BC CE", Order::Either, Refused(kDateEra), "both tags"},
    {"1 JAN 5 B.C.E. A.D.", Order::Either, Refused(kDateEra), "both tags"},
    {"BCAD", Order::Either, Refused(kDateEra), "both tags come before the fields are counted"},
    {"15 DECEMBER 44 BC", Order::Either, Refused(kDateEra), "BC, and the CE of DECEMBER"},
    {"15 DEC 44 BC", Order::Either, Date(15, 12, -43), "no CE in DEC"},
    {"1 JAN 5 BC BC", Order::Either, Refused(kDateFormat), "only the first BC is blanked"},
    {"1 JAN 1992 AD AD", Order::Either, Refused(kDateFormat), "only the first AD is blanked"},
    {"1 JAN 1992 AD CE", Order::Either, Refused(kDateFormat),
     "AD ends the search, CE is left over"},
    // The gap of October 1582.
    {"4 OCT 1582", Order::Either, Date(4, 10, 1582), "the last Julian day"},
    {"15 OCT 1582", Order::Either, Date(15, 10, 1582), "the first Gregorian day"},
    {"5 OCT 1582", Order::Either, Date(15, 10, 1582), "a day of the gap, ten days on"},
    {"6 OCT 1582", Order::Either, Date(16, 10, 1582), "a day of the gap, ten days on"},
    {"7 OCT 1582", Order::Either, Date(17, 10, 1582), "a day of the gap, ten days on"},
    {"8 OCT 1582", Order::Either, Date(18, 10, 1582), "a day of the gap, ten days on"},
    {"9 OCT 1582", Order::Either, Date(19, 10, 1582), "a day of the gap, ten days on"},
    {"10 OCT 1582", Order::Either, Date(20, 10, 1582), "a day of the gap, ten days on"},
    {"11 OCT 1582", Order::Either, Date(21, 10, 1582), "a day of the gap, ten days on"},
    {"12 OCT 1582", Order::Either, Date(22, 10, 1582), "a day of the gap, ten days on"},
    {"13 OCT 1582", Order::Either, Date(23, 10, 1582), "a day of the gap, ten days on"},
    {"14 OCT 1582", Order::Either, Date(24, 10, 1582), "a day of the gap, ten days on"},
    {"10/12/1582", Order::DayFirst, Date(10, 12, 1582), "no gap in December"},
    {"10/12/1582", Order::MonthFirst, Date(22, 10, 1582),
     "12 October by the region: a day of the gap"},
    {"10 OCT 1581", Order::Either, Date(10, 10, 1581), "no gap the year before"},
    {"10 OCT 1583", Order::Either, Date(10, 10, 1583), "no gap the year after"},
    {"31 OCT 1582", Order::Either, Date(31, 10, 1582), "Gregorian"},
    {"32 OCT 1582", Order::Either, Refused(kDateCalendar), "no such day"},
    {"0 OCT 1582", Order::Either, Refused(kDateCalendar), "no such day"},
    {"30 SEP 1582", Order::Either, Date(30, 9, 1582), "Julian"},
    {"31 SEP 1582", Order::Either, Refused(kDateCalendar), "no such day"},
    {"10 OCT 1582 OS", Order::Either, Date(20, 10, 1582),
     "Julian already, so the tag asks for nothing"},
    {"10 OCT 1582 NS", Order::Either, Date(30, 9, 1582),
     "Gregorian before its time: ten days back"},
    {"14 OCT 1582 NS", Order::Either, Date(4, 10, 1582),
     "Gregorian before its time: ten days back"},
    {"5 OCT 1582 NS", Order::Either, Date(25, 9, 1582), "Gregorian before its time: ten days back"},
    {"4 OCT 1582 NS", Order::Either, Date(24, 9, 1582), "Gregorian before its time: ten days back"},
    {"4 OCT 1582 OS", Order::Either, Date(4, 10, 1582), "Julian already"},
    {"15 OCT 1582 NS", Order::Either, Date(15, 10, 1582), "Gregorian already"},
    {"15 OCT 1582 OS", Order::Either, Date(25, 10, 1582), "ten days on"},
    {"31 OCT 1582 OS", Order::Either, Date(10, 11, 1582), "ten days on"},
    // Calendar tags. Distance of the calendars: 10 days to 28 February 1700 (Julian), then 11,
    // 12 from 1800, 13 from 1900, 14 from 2100; 9 before 29 February 1500, 6 in 1000, none in the
    // third century, and 2 days the other way about 1 BC.
    {"1 JAN 2000 OS", Order::Either, Date(14, 1, 2000), "thirteen days on"},
    {"1 JAN 2000 o.s.", Order::Either, Date(14, 1, 2000), "O.S."},
    {"OS 1 JAN 2000", Order::Either, Date(14, 1, 2000), "the tag may stand anywhere"},
    {"1 OSJAN 2000", Order::Either, Date(14, 1, 2000), "the tag may stand anywhere"},
    {"1 JAN 2000 NS", Order::Either, Date(1, 1, 2000), "Gregorian already"},
    {"1 JAN 2000 N.S.", Order::Either, Date(1, 1, 2000), "Gregorian already"},
    {"25 OCT 1917 OS", Order::Either, Date(7, 11, 1917), "thirteen days on"},
    {"25 DEC 1999 OS", Order::Either, Date(7, 1, 2000), "thirteen days on, over the year"},
    {"19 DEC 1999 OS", Order::Either, Date(1, 1, 2000), "thirteen days on, over the year"},
    {"11 FEB 1732 OS", Order::Either, Date(22, 2, 1732), "eleven days on"},
    {"25 DEC 1642 OS", Order::Either, Date(4, 1, 1643), "ten days on, over the year"},
    {"2 SEP 1752 OS", Order::Either, Date(13, 9, 1752), "eleven days on"},
    {"18 FEB 1700 OS", Order::Either, Date(28, 2, 1700), "ten days on"},
    {"19 FEB 1700 OS", Order::Either, Date(1, 3, 1700),
     "ten days on: February 1700 has 28 days in the Gregorian calendar"},
    {"28 FEB 1700 OS", Order::Either, Date(10, 3, 1700), "ten days on"},
    {"29 FEB 1700 OS", Order::Either, Date(11, 3, 1700), "the Julian leap day"},
    {"1 MAR 1700 OS", Order::Either, Date(12, 3, 1700), "eleven days on"},
    {"29 FEB 1800 OS", Order::Either, Date(12, 3, 1800), "the Julian leap day"},
    {"29 FEB 1900 OS", Order::Either, Date(13, 3, 1900), "the Julian leap day"},
    {"1 MAR 1900 OS", Order::Either, Date(14, 3, 1900), "thirteen days on"},
    {"29 FEB 2100 OS", Order::Either, Date(14, 3, 2100), "the Julian leap day"},
    {"1 MAR 2100 OS", Order::Either, Date(15, 3, 2100), "fourteen days on"},
    {"30 FEB 2000 OS", Order::Either, Date(14, 3, 2000),
     "a day too many runs on into 1 March, no message"},
    {"32 JAN 2000 OS", Order::Either, Date(14, 2, 2000),
     "a day too many runs on into 1 February, no message"},
    {"29 FEB 1901 OS", Order::Either, Date(14, 3, 1901),
     "a day too many runs on into 1 March, no message"},
    {"0 JAN 2000 OS", Order::Either, Date(13, 1, 2000), "the day before 1 January, no message"},
    {"1 JAN 1500 NS", Order::Either, Date(23, 12, 1499), "nine days back"},
    {"1 JAN 1500 OS", Order::Either, Date(1, 1, 1500), "Julian already"},
    {"29 FEB 1500 NS", Order::Either, Date(20, 2, 1500),
     "1 March of the Gregorian calendar, nine days back"},
    {"10 MAR 1500 NS", Order::Either, Date(29, 2, 1500), "the Julian leap day"},
    {"11 MAR 1500 NS", Order::Either, Date(1, 3, 1500), "ten days back"},
    {"1 JAN 1001 NS", Order::Either, Date(26, 12, 1000), "six days back"},
    {"1 JUL 1000 NS", Order::Either, Date(25, 6, 1000), "six days back"},
    {"1 JUL 250 NS", Order::Either, Date(1, 7, 250), "the calendars agree in the third century"},
    {"1 JUL 150 NS", Order::Either, Date(2, 7, 150), "one day on"},
    {"15 MAR 44 BC NS", Order::Either, Date(17, 3, -43), "two days on"},
    {"1 JAN 1 BC NS", Order::Either, Date(3, 1, 0), "two days on"},
    {"29 FEB 1500 OS", Order::Either, Date(29, 2, 1500), "Julian already"},
    {"30 FEB 1500 OS", Order::Either, Refused(kDateCalendar),
     "no such day, and no conversion that would forgive it"},
    {"30 FEB 2000 NS", Order::Either, Refused(kDateCalendar),
     "no such day, and no conversion that would forgive it"},
    {"1 JAN 2000 OS NS", Order::Either, Refused(kDateFormat),
     "OS ends the search, NS is left over"},
    {"1 JAN 2000 NS OS", Order::Either, Refused(kDateFormat), "OS is found first, NS is left over"},
    {"1 JAN 2000 O.S", Order::Either, Refused(kDateFormat), "O and S are left over: five fields"},
    {"1 JAN 92 OS", Order::Either, Date(14, 1, 1992),
     "the century is added before the calendar is chosen"},
    {"1ST JAN 2000 AD OS", Order::Either, Date(14, 1, 2000), "ordinal, era and calendar"},
    {"1 JAN OS", Order::Either, Refused(kDateFormat), "two fields"},
    // Texts that mean nothing.
    {"", Order::Either, Refused(kDateFormat), "no field"},
    {"     ", Order::Either, Refused(kDateFormat), "no field"},
    {"./,;:'", Order::Either, Refused(kDateFormat), "no field"},
    {"-", Order::Either, Refused(kDateFormat), "one field"},
    {"- - -", Order::Either, Refused(kDateFormat), "the month is '-', of one character: 0"},
    {"OS", Order::Either, Refused(kDateFormat), "no field"},
    {"AD", Order::Either, Refused(kDateFormat), "no field"},
    {"STNDRDTH", Order::Either, Refused(kDateFormat), "no field"},
    {"5 JAN\000 1992"sv, Order::Either, Refused(kDateFormat), "byte 0 sticks to the name"},
    {"\000"sv, Order::Either, Refused(kDateFormat), "one field"},
    {"5\000JAN 1992"sv, Order::Either, Refused(kDateFormat), "byte 0 sticks to the name"},
    {"5\240JAN 1992", Order::Either, Refused(kDateFormat), "a no-break space sticks to the name"},
    {"5 M\304R 1992", Order::Either, Refused(kDateFormat), "no such name"},
    {"5 m\344rz 1992", Order::Either, Refused(kDateFormat), "no such name"},
    {"\377\376\200", Order::Either, Refused(kDateFormat), "one field"},
    {"5\tJAN\t1992", Order::Either, Refused(kDateFormat),
     "a tab is no blank and sticks to the name"},
    {"5 JAN 1992\r\n", Order::Either, Refused(kDateFormat),
     "a line end is no blank: a fourth field"},
    {"40000 JAN 1992", Order::Either, kDateRefused, "a day beyond 16 bits"},
    {"5 JAN 40000", Order::Either, kDateRefused, "a year beyond 16 bits"},
    {"5 JAN 99999999999999999999", Order::Either, kDateRefused, "a year beyond every integer"},
    {"99999999999999999999 JAN 1992", Order::Either, kDateRefused, "a day beyond every integer"},
    {"5 JAN -99999", Order::Either, kDateRefused, "a year beyond 16 bits"},
};

// --- Times -------------------------------------------------------------------------------------

inline constexpr std::string_view kTimeTitle = "Error in Time";

inline constexpr std::string_view kTimeBothTags =
    "The format of the time is not recognised.\r\n"
    "Specify AM for morning, PM for afternoon, or neither for the 24 hour clock.\r\n"
    "Please use a valid format e.g. 11:59:59 AM";
inline constexpr std::string_view kTimeMorning =
    "The format of the time is not recognised.\r\n"
    "Hours must be in the range 0 to 12 if AM is specified.\r\n"
    "Please use a valid format e.g. 11:59:59 AM";
inline constexpr std::string_view kTimeAfternoon =
    "The format of the time is not recognised.\r\n"
    "Hours must be in the range 0 to 12 if PM is specified.\r\n"
    "Please use a valid format e.g. 11:59:59 PM";
inline constexpr std::string_view kTimeHours =
    "The format of the time is not recognised.\r\n"
    "Hours must be in the range 0 to 23.\r\n"
    "Please use a valid format e.g. 23:59:59";
inline constexpr std::string_view kTimeMinutes =
    "The format of the time is not recognised.\r\n"
    "Minutes must be in the range 0 to 59.\r\n"
    "Please use a valid format e.g. 11:59:59 PM";
inline constexpr std::string_view kTimeSeconds =
    "The format of the time is not recognised.\r\n"
    "Seconds must be in the range 0 to 59.\r\n"
    "Please use a valid format e.g. 11:59:59 PM";
inline constexpr std::string_view kTimeFourthField =
    "The format of the time is not recognised.\r\n"
    "Please use a valid format e.g. 10:45 PM";
inline constexpr std::string_view kTimeNoDigit =
    "The format of the time is not recognised.\r\n"
    "Please use numbers separated by colons e.g. 11:45 PM";

struct TimeResult {
    Flag errorFlag;
    std::int16_t hours;    ///< 0 to 23; not looked at in a refusal
    std::int16_t minutes;  ///< 0 to 59; the same
    std::int16_t seconds;  ///< 0 to 59; the same
    std::size_t boxCount;  ///< 0 in a refusal: any boxes
    std::array<std::string_view, 4> boxes;
};

constexpr TimeResult Time(std::int16_t hours, std::int16_t minutes, std::int16_t seconds) {
    return {kFalse, hours, minutes, seconds, 0, {}};
}
template <typename... Boxes>
constexpr TimeResult Refused(std::string_view first, Boxes... others) {
    return {kTrue, 0, 0, 0, 1 + sizeof...(others), {first, others...}};
}
inline constexpr TimeResult kTimeRefused = {kTrue, 0, 0, 0, 0, {}};

struct TimeRow {
    std::string_view text;
    TimeResult expected;
    std::string_view rule;
};

inline constexpr TimeRow kTimeRows[] = {
    {"NOON", Time(12, 0, 0), "the keyword is 12 PM"},
    {"noon", Time(12, 0, 0), "case does not matter"},
    {"  Noon ", Time(12, 0, 0), "blanks at the ends"},
    {"MIDDAY", Time(12, 0, 0), "the keyword is 12 PM"},
    {"midnight", Time(0, 0, 0), "the keyword is 0 AM"},
    {"MIDNIGHT", Time(0, 0, 0), "the keyword is 0 AM"},
    {"NOON TODAY", Refused(kTimeNoDigit), "no keyword, since it is not the whole text"},
    {"12 NOON", Refused(kTimeNoDigit), "no keyword, since it is not the whole text"},
    {"NOON.", Refused(kTimeNoDigit), "no keyword, since it is not the whole text"},
    {"NOON AM", Refused(kTimeNoDigit), "AM is blanked and NOON is left, a field of letters"},
    {"", Time(0, 0, 0), "an empty text is 0:00:00"},
    {"    ", Time(0, 0, 0), "an empty text is 0:00:00"},
    {":::", Time(0, 0, 0), "separators alone make no field"},
    {"-./,;:'", Time(0, 0, 0), "separators alone make no field"},
    {"AM", Time(0, 0, 0), "no field, so nothing is asked of the hours"},
    {"PM", Time(0, 0, 0), "no field, so nothing is asked of the hours"},
    {"AM PM", Refused(kTimeBothTags), "both tags"},
    {"5", Time(5, 0, 0), "hours alone"},
    {"0", Time(0, 0, 0), "the first hour"},
    {"23", Time(23, 0, 0), "the last hour"},
    {"24", Refused(kTimeHours), "hours end at 23"},
    {"24:00", Refused(kTimeHours), "hours end at 23"},
    {"23:59", Time(23, 59, 0), "hours and minutes"},
    {"23:59:59", Time(23, 59, 59), "the last second"},
    {"0:0:0", Time(0, 0, 0), "single digits"},
    {"00:00:01", Time(0, 0, 1), "the first second"},
    {"007:008:009", Time(7, 8, 9), "leading zeros"},
    {"11.45", Time(11, 45, 0), "a full stop separates"},
    {"11,45", Time(11, 45, 0), "a comma separates"},
    {"11/45/30", Time(11, 45, 30), "slashes separate"},
    {"11;45", Time(11, 45, 0), "a semicolon separates"},
    {"11'45'30", Time(11, 45, 30), "apostrophes separate"},
    {"11-45-30", Time(11, 45, 30), "hyphens separate"},
    {"-11:45", Time(11, 45, 0), "a hyphen is a separator and no sign"},
    {"11 45 30", Time(11, 45, 30), "blanks separate"},
    {"11::45", Time(11, 45, 0), "a run of separators"},
    {":11:45:", Time(11, 45, 0), "separators at the ends"},
    {"1145", Refused(kTimeHours), "hour 1145"},
    {"1145 AM", Refused(kTimeMorning), "hour 1145"},
    {"11 45 30 10", Refused(kTimeFourthField), "a fourth field"},
    {"1:2:3:4:5", Refused(kTimeFourthField, kTimeFourthField), "a fourth field and a fifth"},
    {"1:2:3:4:5:6", Refused(kTimeFourthField, kTimeFourthField, kTimeFourthField),
     "each field beyond the third"},
    {"9:60", Refused(kTimeMinutes), "minutes end at 59"},
    {"9:59:60", Refused(kTimeSeconds), "seconds end at 59"},
    {"9:60:60", Refused(kTimeMinutes, kTimeSeconds), "the walk goes on after a bad field"},
    {"24:60:60", Refused(kTimeHours, kTimeMinutes, kTimeSeconds),
     "the walk goes on after a bad field"},
    {"24:60:60:1", Refused(kTimeHours, kTimeMinutes, kTimeSeconds, kTimeFourthField),
     "the walk goes on after a bad field"},
    {"25:00:00:00:00", Refused(kTimeHours, kTimeFourthField, kTimeFourthField),
     "hours, a fourth field and a fifth"},
    {"9:100", Refused(kTimeMinutes), "minutes end at 59"},
    {"9:5:3600", Refused(kTimeSeconds), "seconds end at 59"},
    {"12 AM", Time(0, 0, 0), "12 AM is hour 0"},
    {"0 AM", Time(0, 0, 0), "hour 0"},
    {"12:30AM", Time(0, 30, 0), "12 modulo 12"},
    {"1 am", Time(1, 0, 0), "morning"},
    {"11:59:59 AM", Time(11, 59, 59), "the last second of the morning"},
    {"12 PM", Time(12, 0, 0), "12 PM stays 12"},
    {"12:30 pm", Time(12, 30, 0), "12 PM stays 12"},
    {"0 PM", Time(12, 0, 0), "0 and 12 are 12"},
    {"0:30 PM", Time(12, 30, 0), "0 and 12 are 12"},
    {"1PM", Time(13, 0, 0), "1 and 12 are 13"},
    {"11:59:59 PM", Time(23, 59, 59), "the last second of the day"},
    {"PM 5", Time(17, 0, 0), "the tag may stand anywhere"},
    {"pm5:06", Time(17, 6, 0), "the tag may be glued"},
    {"5PM30", Time(17, 30, 0), "the tag is blanked and separates"},
    {"13 PM", Refused(kTimeAfternoon), "hours end at 12 with PM"},
    {"13 AM", Refused(kTimeMorning), "hours end at 12 with AM"},
    {"23:00 PM", Refused(kTimeAfternoon), "hours end at 12 with PM"},
    {"13:60 AM", Refused(kTimeMorning, kTimeMinutes), "the walk goes on after a bad field"},
    {"13:60:60 PM", Refused(kTimeAfternoon, kTimeMinutes, kTimeSeconds),
     "the walk goes on after a bad field"},
    {"5:60 PM", Refused(kTimeMinutes), "minutes end at 59"},
    {"5 AM PM", Refused(kTimeBothTags), "both tags, and nothing else wrong"},
    {"5:60 AM PM", Refused(kTimeBothTags, kTimeMinutes), "both tags, and the walk goes on"},
    {"5:06:07:08 PM AM", Refused(kTimeBothTags, kTimeFourthField),
     "both tags, and the walk goes on"},
    {"X AM PM", Refused(kTimeBothTags, kTimeNoDigit), "both tags, then a letter ends the walk"},
    {"AM AM", Refused(kTimeNoDigit), "only the first AM is blanked"},
    {"5 AMAM", Refused(kTimeNoDigit), "only the first AM is blanked"},
    {"5 PM PM", Refused(kTimeNoDigit), "only the first PM is blanked"},
    {"5 A.M.", Refused(kTimeNoDigit), "A is a field of its own"},
    {"5 P", Refused(kTimeNoDigit), "P is no tag"},
    {"5P", Refused(kTimeNoDigit), "P is no tag"},
    {"11h45", Refused(kTimeNoDigit), "a letter in the field"},
    {"11:4x", Refused(kTimeNoDigit), "a letter in the field"},
    {"11:45:3O", Refused(kTimeNoDigit), "a letter O for a zero"},
    {"+5:00", Refused(kTimeNoDigit), "a plus is no digit"},
    {"24:xx:60", Refused(kTimeHours, kTimeNoDigit), "a letter ends the walk"},
    {"9:60:xx", Refused(kTimeMinutes, kTimeNoDigit), "a letter ends the walk"},
    {"xx:60:60", Refused(kTimeNoDigit), "a letter ends the walk at once"},
    {"EXAM 5", Refused(kTimeNoDigit), "AM of EXAM is blanked, EX is left"},
    {"5\t30", Refused(kTimeNoDigit), "a tab is no blank"},
    {"5\00030"sv, Refused(kTimeNoDigit), "byte 0 is no digit"},
    {"\262:30", Refused(kTimeNoDigit), "superscript two is no digit"},
    {"11\24045", Refused(kTimeNoDigit), "a no-break space is no blank"},
    {"\377", Refused(kTimeNoDigit), "no digit"},
    {"40000", kTimeRefused, "hours beyond 16 bits"},
    {"5:99999999999999999999", kTimeRefused, "minutes beyond every integer"},
    {"5:00:70000 PM", kTimeRefused, "seconds beyond 16 bits"},
};

// --- Latitudes and longitudes ------------------------------------------------------------------

struct CoordinateBox {
    std::string_view title;
    std::string_view text;
};

inline constexpr CoordinateBox kLatitudeFormat = {
    "Error in Latitude",
    "The format of the latitude is not recognised.\r\n"
    "Specify N for northern hemisphere latitudes\r\n"
    "or S for southern hemisphere latitudes.\r\n"
    "Please use a valid format e.g. 35S55"};
inline constexpr CoordinateBox kLatitudeRange = {
    "Error in Latitude",
    "The format of the latitude is not recognised.\r\n"
    "Degrees must be in the range 0 to 90.\r\n"
    "Minutes or seconds must be in the range 0 to 59.\r\n"
    "Please use a valid format e.g. 35S55"};
inline constexpr CoordinateBox kLongitudeFormat = {
    "Error in Longitude",
    "The format of the longitude is not recognised.\r\n"
    "Specify E for eastern hemisphere longitudes\r\n"
    "or W for western hemisphere longitudes.\r\n"
    "Please use a valid format e.g. 138E34"};
inline constexpr CoordinateBox kLongitudeRange = {
    "Error in Longitude",
    "The format of the longitude is not recognised.\r\n"
    "Degrees must be in the range 0 to 180.\r\n"
    "Minutes or seconds must be in the range 0 to 59.\r\n"
    "Please use a valid format e.g. 138E34"};

struct CoordinateResult {
    Flag errorFlag;
    double value;       ///< degrees, north and west positive; a refusal leaves it as it was
    CoordinateBox box;  ///< the only box; empty in a refusal: any box
};

constexpr CoordinateResult Positive(int degrees, int minutes, int seconds) {
    return {kFalse, (3600 * degrees + 60 * minutes + seconds) / 3600.0, {}};
}
constexpr CoordinateResult Negative(int degrees, int minutes, int seconds) {
    return {kFalse, -(3600 * degrees + 60 * minutes + seconds) / 3600.0, {}};
}
constexpr CoordinateResult North(int degrees, int minutes, int seconds) {
    return Positive(degrees, minutes, seconds);
}
constexpr CoordinateResult South(int degrees, int minutes, int seconds) {
    return Negative(degrees, minutes, seconds);
}
constexpr CoordinateResult West(int degrees, int minutes, int seconds) {
    return Positive(degrees, minutes, seconds);
}
constexpr CoordinateResult East(int degrees, int minutes, int seconds) {
    return Negative(degrees, minutes, seconds);
}
constexpr CoordinateResult Refused(const CoordinateBox& box) {
    return {kTrue, 0, box};
}
inline constexpr CoordinateResult kCoordinateRefused = {kTrue, 0, {}};

struct CoordinateRow {
    std::string_view text;
    CoordinateResult expected;
    std::string_view rule;
};

inline constexpr CoordinateRow kLatitudeRows[] = {
    {"35S55", South(35, 55, 0), "the letter between degrees and minutes"},
    {"S35 55", South(35, 55, 0), "the letter in front"},
    {"35 55S", South(35, 55, 0), "the letter behind"},
    {"35N55", North(35, 55, 0), "north is positive"},
    {"35n55", North(35, 55, 0), "case does not matter"},
    {"  35n55  ", North(35, 55, 0), "blanks at the ends"},
    {"35S55 12", South(35, 55, 12), "seconds"},
    {"35 55 12S", South(35, 55, 12), "seconds, the letter behind"},
    {"35:55:12 S", South(35, 55, 12), "colons separate"},
    {"35S55.5", South(35, 55, 5), "a full stop separates: 5 seconds"},
    {"35.5N", North(35, 5, 0), "a full stop separates: 5 minutes"},
    {"35N55'12", North(35, 55, 12), "an apostrophe separates"},
    {"35,55,12N", North(35, 55, 12), "commas separate"},
    {"35;55/12N", North(35, 55, 12), "semicolon and slash separate"},
    {"35-55-12N", North(35, 55, 12), "hyphens separate"},
    {"-35N55", North(35, 55, 0), "a hyphen is a separator and no sign"},
    {"-35S55", South(35, 55, 0), "a hyphen is a separator and no sign"},
    {"N", North(0, 0, 0), "a letter alone is 0"},
    {"S", South(0, 0, 0), "a letter alone is 0"},
    {"0N", North(0, 0, 0), "the equator"},
    {"0S0 1", South(0, 0, 1), "one second south"},
    {"0S30", South(0, 30, 0), "the sign holds though the degrees are 0"},
    {"7N", North(7, 0, 0), "degrees alone"},
    {"007N005 009", North(7, 5, 9), "leading zeros"},
    {"3S5S", Refused(kLatitudeFormat), "only the first S is blanked"},
    {"90N00", North(90, 0, 0), "the pole"},
    {"90N", North(90, 0, 0), "the pole"},
    {"90S00 00", South(90, 0, 0), "the pole"},
    {"89N59 59", North(89, 59, 59), "the last second"},
    {"90N01", Refused(kLatitudeRange), "minutes at 90 degrees"},
    {"90N00 01", Refused(kLatitudeRange), "seconds at 90 degrees"},
    {"90S59", Refused(kLatitudeRange), "minutes at 90 degrees"},
    {"91N", Refused(kLatitudeRange), "degrees end at 90"},
    {"91N00", Refused(kLatitudeRange), "degrees end at 90"},
    {"3555N", Refused(kLatitudeRange), "degrees 3555"},
    {"180S00", Refused(kLatitudeRange), "degrees end at 90"},
    {"35S60", Refused(kLatitudeRange), "minutes end at 59"},
    {"35S55 60", Refused(kLatitudeRange), "seconds end at 59"},
    {"35S99", Refused(kLatitudeRange), "minutes end at 59"},
    {"1N2 3 4", Refused(kLatitudeRange), "a fourth field"},
    {"90N00 00 00", Refused(kLatitudeRange), "a fourth field"},
    {"", Refused(kLatitudeFormat), "no letter"},
    {"    ", Refused(kLatitudeFormat), "no letter"},
    {":.-'", Refused(kLatitudeFormat), "no letter"},
    {"35 55", Refused(kLatitudeFormat), "no letter"},
    {"35", Refused(kLatitudeFormat), "no letter"},
    {"35N55S", Refused(kLatitudeFormat), "both letters"},
    {"NS", Refused(kLatitudeFormat), "both letters"},
    {"35N55N", Refused(kLatitudeFormat), "only the first N is blanked"},
    {"35E55", Refused(kLatitudeFormat), "a longitude's letter"},
    {"35 NORTH", Refused(kLatitudeFormat), "ORTH is left"},
    {"35 SOUTH", Refused(kLatitudeFormat), "OUTH is left"},
    {"35X55N", Refused(kLatitudeFormat), "a letter within a field"},
    {"+35N55", Refused(kLatitudeFormat), "a plus is no digit"},
    {"35N55\"", Refused(kLatitudeFormat), "a double quote is no digit"},
    {"35\26055N", Refused(kLatitudeFormat), "a degree sign is no digit and no separator"},
    {"35\260N55", Refused(kLatitudeFormat), "a degree sign is no digit and no separator"},
    {"35N\24055", Refused(kLatitudeFormat), "a no-break space is no blank"},
    {"35N\00055"sv, Refused(kLatitudeFormat), "byte 0 is no digit"},
    {"35N\t55", Refused(kLatitudeFormat), "a tab is no blank"},
    {"\33735", Refused(kLatitudeFormat), "a sharp s is no S"},
    {"40000N", kCoordinateRefused, "degrees beyond 16 bits"},
    {"5N99999999999999999999", kCoordinateRefused, "minutes beyond every integer"},
};

inline constexpr CoordinateRow kLongitudeRows[] = {
    {"138E34", East(138, 34, 0), "east is negative"},
    {"75W00", West(75, 0, 0), "west is positive"},
    {"075W00", West(75, 0, 0), "leading zero"},
    {"75w", West(75, 0, 0), "case does not matter"},
    {"e138 34", East(138, 34, 0), "the letter in front"},
    {"138 34 10E", East(138, 34, 10), "the letter behind"},
    {"138E34 10", East(138, 34, 10), "seconds"},
    {"138E34.10", East(138, 34, 10), "a full stop separates"},
    {"0W7", West(0, 7, 0), "minutes of one digit"},
    {"0E0 1", East(0, 0, 1), "one second east"},
    {"E", East(0, 0, 0), "a letter alone is 0"},
    {"W", West(0, 0, 0), "a letter alone is 0"},
    {"-75W30", West(75, 30, 0), "a hyphen is a separator and no sign"},
    {"180E00", East(180, 0, 0), "the date line from the west"},
    {"180W", West(180, 0, 0), "the date line from the east"},
    {"180W00 00", West(180, 0, 0), "the date line from the east"},
    {"179W59 59", West(179, 59, 59), "the last second"},
    {"180W30", Refused(kLongitudeRange), "minutes at 180 degrees"},
    {"180E01", Refused(kLongitudeRange), "minutes at 180 degrees"},
    {"180E00 01", Refused(kLongitudeRange), "seconds at 180 degrees"},
    {"181E00", Refused(kLongitudeRange), "degrees end at 180"},
    {"360W", Refused(kLongitudeRange), "degrees end at 180"},
    {"138E60", Refused(kLongitudeRange), "minutes end at 59"},
    {"138E34 60", Refused(kLongitudeRange), "seconds end at 59"},
    {"90W59 59", West(90, 59, 59), "90 degrees are no limit of a longitude"},
    {"1W2 3 4", Refused(kLongitudeRange), "a fourth field"},
    {"", Refused(kLongitudeFormat), "no letter"},
    {"   ", Refused(kLongitudeFormat), "no letter"},
    {"138 34", Refused(kLongitudeFormat), "no letter"},
    {"138E34W", Refused(kLongitudeFormat), "both letters"},
    {"WEST", Refused(kLongitudeFormat), "W and E are both letters"},
    {"138 EAST", Refused(kLongitudeFormat), "AST is left"},
    {"138EE34", Refused(kLongitudeFormat), "only the first E is blanked"},
    {"138E34E", Refused(kLongitudeFormat), "only the first E is blanked"},
    {"138N34", Refused(kLongitudeFormat), "a latitude's letter"},
    {"138O34", Refused(kLongitudeFormat), "no letter of a side"},
    {"1E2X", Refused(kLongitudeFormat), "a letter within a field"},
    {"+138E34", Refused(kLongitudeFormat), "a plus is no digit"},
    {"13E8E34", Refused(kLongitudeFormat), "only the first E is blanked"},
    {"138\26034'E", Refused(kLongitudeFormat), "a degree sign is no digit and no separator"},
    {"138E\00034"sv, Refused(kLongitudeFormat), "byte 0 is no digit"},
    {"138\31134", Refused(kLongitudeFormat), "an accented E is no E"},
    {"138\35134", Refused(kLongitudeFormat), "an accented e is no E"},
    {"99999999999999999999E", kCoordinateRefused, "degrees beyond every integer"},
    {"138E70000", kCoordinateRefused, "minutes beyond 16 bits"},
};

// --- Zones -------------------------------------------------------------------------------------

/// The zone table that the zone rows are read with, in the widths of its fields.
struct ZoneTableRow {
    std::string_view mnemonic;  ///< 5 characters
    std::string_view name;      ///< 30 characters
    std::string_view time;      ///< 6 characters
};

inline constexpr ZoneTableRow kZoneTable[] = {
    {"GMT  ", "Greenwich Mean Time           ", "+0:00 "},
    {"EST  ", "Eastern Standard Time         ", "+5:00 "},
    {"AEST ", "Australian Eastern Standard   ", "-10:00"},
    {"ACST ", "Australian Central Standard   ", "-9:30 "},
    {"EST  ", "a second row of the name      ", "-10:00"},
    {"LATE ", "out of range                  ", "+14:00"},
    {"MINS ", "minutes out of range          ", "+5:600"},
    {"WORDS", "no time at all                ", "+5hour"},
    {"SHORT", "a line that was too short     ", "      "},
    {"SECS ", "a time with seconds           ", "+1:2:3"},
    {"HUGE ", "beyond 16 bits                ", "+99999"},
    {"A-B  ", "a sign in the name            ", "-0:30 "},
    {"12   ", "a name of digits              ", "+3:00 "},
    {"NEWF ", "hours without minutes         ", "+3    "},
    {"DOT  ", "a full stop                   ", "+05.00"},
    {"NINTY", "minutes out of range          ", "-9:090"},
};

inline constexpr std::string_view kZoneTitle = "Error in Time Zone";

struct ZoneBox {
    std::string_view text;
};

inline constexpr ZoneBox kZoneFormat = {
    "The format of the Time Zone is not recognised.\r\n"
    "Please use a valid mnemonic (e.g. GMT) or a time.\r\n"
    "This may be selected from a list by clicking on the Zone button.\r\n"
    "If entering time, please use hours minutes and seconds separated by colons e.g. -10:30"};
inline constexpr ZoneBox kRowLate = {
    "The format of the Time Zone mnemonic has been recognised as valid,\r\n"
    "but the corresponding time value is not valid: +14:00\r\n"
    "You must edit the time zone file after exiting from this program.\r\n"
    "Ensure that you use hours, minutes and seconds separated by colons e.g. -10:30"};
inline constexpr ZoneBox kRowMins = {
    "The format of the Time Zone mnemonic has been recognised as valid,\r\n"
    "but the corresponding time value is not valid: +5:600\r\n"
    "You must edit the time zone file after exiting from this program.\r\n"
    "Ensure that you use hours, minutes and seconds separated by colons e.g. -10:30"};
inline constexpr ZoneBox kRowWords = {
    "The format of the Time Zone mnemonic has been recognised as valid,\r\n"
    "but the corresponding time value is not valid: +5hour\r\n"
    "You must edit the time zone file after exiting from this program.\r\n"
    "Ensure that you use hours, minutes and seconds separated by colons e.g. -10:30"};
inline constexpr ZoneBox kRowDot = {
    "The format of the Time Zone mnemonic has been recognised as valid,\r\n"
    "but the corresponding time value is not valid: +05.00\r\n"
    "You must edit the time zone file after exiting from this program.\r\n"
    "Ensure that you use hours, minutes and seconds separated by colons e.g. -10:30"};
inline constexpr ZoneBox kRowNinty = {
    "The format of the Time Zone mnemonic has been recognised as valid,\r\n"
    "but the corresponding time value is not valid: -9:090\r\n"
    "You must edit the time zone file after exiting from this program.\r\n"
    "Ensure that you use hours, minutes and seconds separated by colons e.g. -10:30"};

struct ZoneResult {
    Flag errorFlag;
    float hours;                ///< west positive; a refusal leaves it as it was
    std::string_view mnemonic;  ///< not looked at in a refusal
    ZoneBox box;                ///< the only box; empty in a refusal: any box
};

constexpr ZoneResult ZoneWest(int hours, int minutes, int seconds, std::string_view mnemonic) {
    return {
        kFalse, static_cast<float>((3600 * hours + 60 * minutes + seconds) / 3600.0), mnemonic, {}};
}
constexpr ZoneResult ZoneEast(int hours, int minutes, int seconds, std::string_view mnemonic) {
    return {kFalse,
            static_cast<float>(-(3600 * hours + 60 * minutes + seconds) / 3600.0),
            mnemonic,
            {}};
}
constexpr ZoneResult Refused(const ZoneBox& box) {
    return {kTrue, 0, {}, box};
}
inline constexpr ZoneResult kZoneRefused = {kTrue, 0, {}, {}};

struct ZoneRow {
    std::string_view text;
    Flag showMessages;  ///< false: no box at all is shown
    ZoneResult expected;
    std::string_view rule;
};

inline constexpr ZoneRow kZoneRows[] = {
    {"GMT", kTrue, ZoneWest(0, 0, 0, "GMT"), "a row of the table"},
    {"gmt", kTrue, ZoneWest(0, 0, 0, "GMT"), "case does not matter"},
    {"  GMT  ", kTrue, ZoneWest(0, 0, 0, "GMT"), "blanks at the ends"},
    {"GMT +9:00", kTrue, ZoneWest(0, 0, 0, "GMT"), "the row wins over what is typed behind it"},
    {"GMT nonsense", kTrue, ZoneWest(0, 0, 0, "GMT"), "the row wins over what is typed behind it"},
    {"EST", kTrue, ZoneWest(5, 0, 0, "EST"), "the first of two rows with one name"},
    {"EST +5:00", kTrue, ZoneWest(5, 0, 0, "EST"), "a zone as it is shown"},
    {"EST -10:00", kTrue, ZoneWest(5, 0, 0, "EST"),
     "the first row wins over a second and over the time"},
    {"aest", kTrue, ZoneEast(10, 0, 0, "AEST"), "east is negative"},
    {"ACST", kTrue, ZoneEast(9, 30, 0, "ACST"), "half an hour"},
    {"secs", kTrue, ZoneWest(1, 2, 3, "SECS"), "a row with seconds"},
    {"NEWF", kTrue, ZoneWest(3, 0, 0, "NEWF"), "a row with hours alone"},
    {"A-B", kTrue, ZoneEast(0, 30, 0, "A-B"), "a sign in the name is not looked at"},
    {"12", kTrue, ZoneWest(3, 0, 0, "12"), "a row wins over the number it looks like"},
    {"12 +5:00", kTrue, ZoneWest(3, 0, 0, "12"), "a row wins over the number it looks like"},
    {"XYZ +9:00", kTrue, ZoneWest(9, 0, 0, "XYZ"), "an unknown name is kept as it is"},
    {"xyz -9:30", kTrue, ZoneEast(9, 30, 0, "XYZ"), "an unknown name, in upper case"},
    {"GMTX +9:00", kTrue, ZoneWest(9, 0, 0, "GMTX"),
     "the name has to be equal, not only begin alike"},
    {"GM +9:00", kTrue, ZoneWest(9, 0, 0, "GM"), "the name has to be equal, not only begin alike"},
    {"UNKNOWN -1:00", kTrue, ZoneEast(1, 0, 0, "UNKNOWN"), "a name longer than five characters"},
    {"\321X +1:00", kTrue, ZoneWest(1, 0, 0, "\321X"), "a name with a letter above 127"},
    {"+9:00", kTrue, ZoneWest(9, 0, 0, ""), "a time alone"},
    {"9:00", kTrue, ZoneWest(9, 0, 0, ""), "without a sign it is west"},
    {"9", kTrue, ZoneWest(9, 0, 0, ""), "hours alone"},
    {"0", kTrue, ZoneWest(0, 0, 0, ""), "Greenwich"},
    {"-10:30", kTrue, ZoneEast(10, 30, 0, ""), "east"},
    {"-0:30", kTrue, ZoneEast(0, 30, 0, ""), "the sign holds though the hours are 0"},
    {"-10:30:15", kTrue, ZoneEast(10, 30, 15, ""), "seconds"},
    {"+13:00", kTrue, ZoneWest(13, 0, 0, ""), "the last hour"},
    {"-13:00", kTrue, ZoneEast(13, 0, 0, ""), "the last hour"},
    {"13:59:59", kTrue, ZoneWest(13, 59, 59, ""),
     "hours, minutes and seconds have each their own range"},
    {"-13:30", kTrue, ZoneEast(13, 30, 0, ""), "hours and minutes have each their own range"},
    {"005:030", kTrue, ZoneWest(5, 30, 0, ""), "leading zeros"},
    {"5-:30", kTrue, ZoneEast(5, 30, 0, ""), "a minus anywhere in the text makes it negative"},
    {"5:30-", kTrue, ZoneEast(5, 30, 0, ""), "a minus anywhere in the text makes it negative"},
    {"5:+30", kTrue, ZoneWest(5, 30, 0, ""), "a plus in front of the minutes"},
    {"+9 5", kTrue, ZoneWest(5, 0, 0, "+9"), "cut at the blank: +9 is taken for an unknown name"},
    {"14:00", kTrue, Refused(kZoneFormat), "hours end at 13"},
    {"-14:00", kTrue, Refused(kZoneFormat), "hours begin at -13"},
    {"900", kTrue, Refused(kZoneFormat), "hours 900"},
    {"5:60", kTrue, Refused(kZoneFormat), "minutes end at 59"},
    {"5:30:60", kTrue, Refused(kZoneFormat), "seconds end at 59"},
    {"5:-30", kTrue, Refused(kZoneFormat), "minutes begin at 0"},
    {"5:30:-1", kTrue, Refused(kZoneFormat), "seconds begin at 0"},
    {"5:30:15:00", kTrue, Refused(kZoneFormat), "a fourth field"},
    {"5.30", kTrue, Refused(kZoneFormat), "a full stop is no separator"},
    {"5h", kTrue, Refused(kZoneFormat), "a letter"},
    {"5,30", kTrue, Refused(kZoneFormat), "a comma is no separator"},
    {"XYZ", kTrue, Refused(kZoneFormat), "an unknown name and no time"},
    {"GMTX", kTrue, Refused(kZoneFormat), "an unknown name and no time"},
    {"GMT+1", kTrue, Refused(kZoneFormat), "no blank, so no row: letters in the time"},
    {"+9:00 EST", kTrue, Refused(kZoneFormat), "cut at the blank: the name is +9:00, the time EST"},
    {"9 30", kTrue, Refused(kZoneFormat), "cut at the blank: the name is 9, the time 30"},
    {"XYZ 14:00", kTrue, Refused(kZoneFormat), "an unknown name, hours beyond 13"},
    {"XYZ 9 :00", kTrue, Refused(kZoneFormat), "a blank within the time"},
    {"", kTrue, Refused(kZoneFormat), "an empty text"},
    {"    ", kTrue, Refused(kZoneFormat), "an empty text"},
    {"5\000:30"sv, kTrue, Refused(kZoneFormat), "byte 0"},
    {"\265", kTrue, Refused(kZoneFormat), "a byte above 127"},
    {"5\t30", kTrue, Refused(kZoneFormat), "a tab is no blank"},
    {"\240GMT", kTrue, Refused(kZoneFormat), "a no-break space belongs to the name"},
    {"LATE", kTrue, Refused(kRowLate), "the row's hours end at 13"},
    {"late -5:00", kTrue, Refused(kRowLate), "the bad row wins too"},
    {"MINS", kTrue, Refused(kRowMins), "the row's minutes end at 59"},
    {"WORDS", kTrue, Refused(kRowWords), "letters in the row"},
    {"DOT", kTrue, Refused(kRowDot), "a full stop in the row"},
    {"ninty", kTrue, Refused(kRowNinty), "the row's minutes end at 59"},
    {"SHORT", kTrue, kZoneRefused, "a row without a time"},
    {"HUGE", kTrue, kZoneRefused, "the row's hours beyond 16 bits"},
    {"40000:00", kTrue, kZoneRefused, "hours beyond 16 bits"},
    {"5:99999999999999999999", kTrue, kZoneRefused, "minutes beyond every integer"},
    {"14:00", kFalse, Refused(kZoneFormat), "silent"},
    {"", kFalse, Refused(kZoneFormat), "silent"},
    {"XYZ", kFalse, Refused(kZoneFormat), "silent"},
    {"LATE", kFalse, Refused(kRowLate), "silent though the row is bad"},
    {"SHORT", kFalse, kZoneRefused, "silent though the row is empty"},
    {"-10:30", kFalse, ZoneEast(10, 30, 0, ""), "accepted without messages too"},
    {"EST", kFalse, ZoneWest(5, 0, 0, "EST"), "accepted without messages too"},
};

}  // namespace orvantis::typed

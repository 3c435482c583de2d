// Typed dates. The tags come off the text first, then it falls into three fields, and in the end
// the date must survive the way to the Julian day and back.
#include <array>
#include <cmath>

#include "text/dates.h"
#include "text/fields.h"
#include "text/messages.h"
#include "text/numbers.h"
#include "text/strings.h"
#include "text/text_state.h"

namespace orvantis {

namespace {

constexpr std::array<std::string_view, 4> kOrdinals = {"ST", "ND", "RD", "TH"};

// Each list in the order of the search; the first two of the calendars are the old style.
constexpr std::array<std::string_view, 4> kCalendarTags = {"OS", "O.S.", "NS", "N.S."};
constexpr std::array<std::string_view, 4> kEraBefore = {"BCE", "B.C.E.", "BC", "B.C."};
constexpr std::array<std::string_view, 4> kEraSince = {"AD", "A.D.", "CE", "C.E."};

constexpr std::array<std::string_view, 13> kUpperMonthNames = {
    "",     "JANUARY", "FEBRUARY",  "MARCH",   "APRIL",    "MAY",     "JUNE",
    "JULY", "AUGUST",  "SEPTEMBER", "OCTOBER", "NOVEMBER", "DECEMBER"};

// The ten days of October 1582 that have no date of their own, as month * 100 + day: from the first
// of them to the first day after them.
constexpr std::int16_t kGapYear = 1582;
constexpr int kGapStart = 1005;
constexpr int kGapEnd = 1015;

// What the tags of a date say.
struct DateTags {
    bool oldStyle = false;
    bool newStyle = false;
    bool bc = false;
    bool ad = false;
};

struct DateFields {
    std::string_view day;
    std::string_view month;
    std::string_view year;
};

// Blanks the first word of a list that the text holds. Its index, or -1.
int BlankTag(std::string& text, const std::array<std::string_view, 4>& words) {
    for (std::size_t i = 0; i < words.size(); ++i) {
        if (BlankFirst(text, words[i])) return static_cast<int>(i);
    }
    return -1;
}

// Blanks ordinals and tags. None of them looks at the edges of words, so that "AUGUST" becomes
// "AUGU" and "DECEMBER" falls apart.
DateTags TakeTags(std::string& text) {
    for (const std::string_view ordinal : kOrdinals) BlankFirst(text, ordinal);
    DateTags tags;
    const int calendar = BlankTag(text, kCalendarTags);
    tags.oldStyle = calendar == 0 || calendar == 1;
    tags.newStyle = calendar >= 2;
    tags.bc = BlankTag(text, kEraBefore) >= 0;
    tags.ad = BlankTag(text, kEraSince) >= 0;
    return tags;
}

// Takes the three fields and finds out which is which: the regional order stands unless one of the
// first two isn't made of figures alone. That one is the month, the second if both are. False:
// there aren't three fields.
bool TakeFields(std::string_view text, DateFields& fields) {
    FieldWalker walker(text, kDateFields);
    std::string_view first;
    std::string_view second;
    std::string_view fourth;
    const bool three = walker.Next(first) && walker.Next(second) && walker.Next(fields.year);
    if (!three || walker.Next(fourth)) return false;
    bool monthFirst = textState.MonthFirst != 0;
    if (!IsDigits(first)) monthFirst = true;
    if (!IsDigits(second)) monthFirst = false;
    fields.month = monthFirst ? first : second;
    fields.day = monthFirst ? second : first;
    return true;
}

// Month of a field: a number of one or two characters, or the beginning of a name. 0: none.
std::int16_t MonthOf(std::string_view field) {
    if (field.size() <= 2) return static_cast<std::int16_t>(LeadingInteger(field));
    for (std::int16_t month = 1; month <= 12; ++month) {
        if (kUpperMonthNames[static_cast<std::size_t>(month)].starts_with(field)) return month;
    }
    return 0;
}

// Astronomical year of a field. A negative year stands as it is typed, also with BC.
std::int32_t YearOf(std::string_view field, bool bc) {
    const std::int32_t value = LeadingInteger(field);
    if (value < 0) return value;
    if (bc) return 1 - value;
    return field.size() < 3 ? value + textState.CenturyBase : value;
}

// Proves a date by its Julian day. A date tagged for the other calendar is turned into its own, and
// a day of the gap is moved to the one that the way back gives. False: no date of the calendar.
bool ProveDate(const DateTags& tags, std::int16_t& day, std::int16_t& month, std::int16_t& year) {
    const bool modern = IsGregorianDate(day, month, year);
    const bool otherCalendar = modern ? tags.oldStyle : tags.newStyle;

    float provedDay = 0;
    std::int32_t provedMonth = 0;
    std::int32_t provedYear = 0;
    JDToDate(DateToJD(day, month, year, otherCalendar ? kTrue : kFalse), provedDay, provedMonth,
             provedYear);
    const std::int16_t wholeDay = RoundToInt16(std::floor(static_cast<double>(provedDay)));

    const int monthAndDay = month * 100 + day;
    if (provedYear == kGapYear && monthAndDay >= kGapStart && monthAndDay < kGapEnd) day = wholeDay;

    if (wholeDay == day && provedMonth == month && provedYear == year) return true;
    if (!otherCalendar) return false;
    day = wholeDay;
    const bool fits = FitInt16(provedMonth, month);
    return FitInt16(provedYear, year) && fits;
}

void Refuse(DateFault fault, std::int16_t& errorFlag) {
    errorFlag = kTrue;
    ShowDateFault(fault);
}

}  // namespace

void ParseDateText(std::string_view text, std::int16_t& day, std::int16_t& month,
                   std::int16_t& year, std::int16_t& errorFlag) {
    errorFlag = kFalse;
    std::string work = UpperCase(Trim(text));
    const DateTags tags = TakeTags(work);
    if (tags.bc && tags.ad) return Refuse(DateFault::BothEras, errorFlag);

    DateFields fields;
    if (!TakeFields(work, fields)) return Refuse(DateFault::Format, errorFlag);

    // A number that doesn't fit its width can be no date.
    const bool dayFits = FitInt16(LeadingInteger(fields.day), day);
    month = MonthOf(fields.month);
    if (!dayFits || month == 0) return Refuse(DateFault::Format, errorFlag);
    if (!FitInt16(YearOf(fields.year, tags.bc), year)) return Refuse(DateFault::Format, errorFlag);

    if (!ProveDate(tags, day, month, year)) Refuse(DateFault::Calendar, errorFlag);
}

}  // namespace orvantis

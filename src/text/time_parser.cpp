// Typed times. A field that is out of range is told and the walk goes on, so that one text can have
// several boxes; only a character that isn't a figure ends it.
#include "text/dates.h"
#include "text/fields.h"
#include "text/messages.h"
#include "text/strings.h"

namespace orvantis {

namespace {

// What the words of a time say.
struct TimeTags {
    bool am = false;
    bool pm = false;
};

void Refuse(TimeFault fault, std::int16_t& errorFlag) {
    errorFlag = kTrue;
    ShowTimeFault(fault);
}

// Words that stand for a whole time.
std::string_view ReplaceWord(std::string_view text) {
    if (text == "NOON" || text == "MIDDAY") return "12 PM";
    if (text == "MIDNIGHT") return "0 AM";
    return text;
}

// Brings the hours to the 24 hour clock; with both words, by one after the other.
void ReadHours(const TimeTags& tags, std::int16_t& hours, std::int16_t& errorFlag) {
    if (tags.am) {
        if (hours <= 12) {
            hours = static_cast<std::int16_t>(hours % 12);
        } else {
            Refuse(TimeFault::Morning, errorFlag);
        }
    }
    if (tags.pm) {
        if (hours < 12) {
            hours = static_cast<std::int16_t>(hours + 12);
        } else if (hours > 12) {
            Refuse(TimeFault::Afternoon, errorFlag);
        }
    }
    if (!tags.am && !tags.pm && hours > 23) Refuse(TimeFault::Hours, errorFlag);
}

}  // namespace

void ParseTimeText(std::string_view text, std::int16_t& hours, std::int16_t& minutes,
                   std::int16_t& seconds, std::int16_t& errorFlag) {
    errorFlag = kFalse;
    hours = 0;
    minutes = 0;
    seconds = 0;
    const std::string upper = UpperCase(Trim(text));
    std::string work(ReplaceWord(upper));
    TimeTags tags;
    tags.am = BlankFirst(work, "AM");
    tags.pm = BlankFirst(work, "PM");
    if (tags.am && tags.pm) Refuse(TimeFault::BothHalves, errorFlag);

    FieldWalker walker(work, kTimeFields);
    std::string_view field;
    for (int number = 1; walker.Next(field); number = number < 4 ? number + 1 : number) {
        if (!walker.IsAllowed(field)) return Refuse(TimeFault::NonDigit, errorFlag);
        // A number of any length: what doesn't fit 16 bits is out of every range here.
        std::int16_t value = 0;
        FitInt16(LeadingInteger(field), value);
        if (number == 1) {
            hours = value;
            ReadHours(tags, hours, errorFlag);
        } else if (number == 2) {
            minutes = value;
            if (minutes > 59) Refuse(TimeFault::Minutes, errorFlag);
        } else if (number == 3) {
            seconds = value;
            if (seconds > 59) Refuse(TimeFault::Seconds, errorFlag);
        } else {
            Refuse(TimeFault::FourthField, errorFlag);
        }
    }
}

}  // namespace orvantis

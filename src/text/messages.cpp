#include "text/messages.h"

#include <array>
#include <string>

#include "text/text_state.h"

namespace orvantis {

namespace {

constexpr std::string_view kDateTitle = "Error in Date";
constexpr std::string_view kTimeTitle = "Error in Time";
constexpr std::string_view kZoneTitle = "Error in Time Zone";

constexpr std::string_view kDateFormat =
    "The format of the date is not recognised.\r\n"
    "Please re-enter a valid date e.g.\r\n";
constexpr std::string_view kDateBothEras =
    "The format of the date is not recognised.\r\n"
    "Specify BC for years prior to year one, and AD (or nothing) for years one and after.";
constexpr std::string_view kDateCalendar =
    "This date is not a valid calendar date.\r\n"
    "Please re-enter a valid date e.g.\r\n";
constexpr std::string_view kMonthFirstExample = "Dec 31 1992  or  12/31/1992";
constexpr std::string_view kDayFirstExample = "31 Dec 1992  or  31/12/1992";

constexpr std::string_view kTimeFormat = "The format of the time is not recognised.\r\n";

// What follows, by TimeFault.
constexpr std::array<std::string_view, 8> kTimeFaults = {
    "Specify AM for morning, PM for afternoon, or neither for the 24 hour clock.\r\n"
    "Please use a valid format e.g. 11:59:59 AM",
    "Hours must be in the range 0 to 12 if AM is specified.\r\n"
    "Please use a valid format e.g. 11:59:59 AM",
    "Hours must be in the range 0 to 12 if PM is specified.\r\n"
    "Please use a valid format e.g. 11:59:59 PM",
    "Hours must be in the range 0 to 23.\r\n"
    "Please use a valid format e.g. 23:59:59",
    "Minutes must be in the range 0 to 59.\r\n"
    "Please use a valid format e.g. 11:59:59 PM",
    "Seconds must be in the range 0 to 59.\r\n"
    "Please use a valid format e.g. 11:59:59 PM",
    "Please use a valid format e.g. 10:45 PM",
    "Please use numbers separated by colons e.g. 11:45 PM"};

// The boxes of one kind of coordinate.
struct CoordinateTexts {
    std::string_view title;
    std::array<std::string_view, 2> faults;  // by CoordinateFault
};

// By CoordinateKind.
constexpr std::array<CoordinateTexts, 2> kCoordinateTexts = {{
    {"Error in Latitude",
     {"The format of the latitude is not recognised.\r\n"
      "Specify N for northern hemisphere latitudes\r\n"
      "or S for southern hemisphere latitudes.\r\n"
      "Please use a valid format e.g. 35S55",
      "The format of the latitude is not recognised.\r\n"
      "Degrees must be in the range 0 to 90.\r\n"
      "Minutes or seconds must be in the range 0 to 59.\r\n"
      "Please use a valid format e.g. 35S55"}},
    {"Error in Longitude",
     {"The format of the longitude is not recognised.\r\n"
      "Specify E for eastern hemisphere longitudes\r\n"
      "or W for western hemisphere longitudes.\r\n"
      "Please use a valid format e.g. 138E34",
      "The format of the longitude is not recognised.\r\n"
      "Degrees must be in the range 0 to 180.\r\n"
      "Minutes or seconds must be in the range 0 to 59.\r\n"
      "Please use a valid format e.g. 138E34"}},
}};

constexpr std::string_view kZoneFormat =
    "The format of the Time Zone is not recognised.\r\n"
    "Please use a valid mnemonic (e.g. GMT) or a time.\r\n"
    "This may be selected from a list by clicking on the Zone button.\r\n"
    "If entering time, please use hours minutes and seconds separated by colons e.g. -10:30";

// What stands before and behind the row's time.
constexpr std::string_view kZoneRowStart =
    "The format of the Time Zone mnemonic has been recognised as valid,\r\n"
    "but the corresponding time value is not valid: ";
constexpr std::string_view kZoneRowEnd =
    "\r\n"
    "You must edit the time zone file after exiting from this program.\r\n"
    "Ensure that you use hours, minutes and seconds separated by colons e.g. -10:30";

// Shows the parts of a text as one.
void Show(std::string_view title, std::string_view first, std::string_view second = {},
          std::string_view third = {}) {
    if (textState.shell == nullptr) return;
    std::string text;
    text.reserve(first.size() + second.size() + third.size());
    text.append(first).append(second).append(third);
    textState.shell->MessageBox(text, title, BoxButtons::Ok, BoxIcon::Error);
}

}  // namespace

void ShowDateFault(DateFault fault) {
    if (fault == DateFault::BothEras) {
        Show(kDateTitle, kDateBothEras);
        return;
    }
    Show(kDateTitle, fault == DateFault::Format ? kDateFormat : kDateCalendar,
         textState.MonthFirst != 0 ? kMonthFirstExample : kDayFirstExample);
}

void ShowTimeFault(TimeFault fault) {
    Show(kTimeTitle, kTimeFormat, kTimeFaults[static_cast<std::size_t>(fault)]);
}

void ShowCoordinateFault(CoordinateKind kind, CoordinateFault fault) {
    const CoordinateTexts& texts = kCoordinateTexts[static_cast<std::size_t>(kind)];
    Show(texts.title, texts.faults[static_cast<std::size_t>(fault)]);
}

void ShowZoneFault() {
    Show(kZoneTitle, kZoneFormat);
}

void ShowZoneRowFault(std::string_view zoneTime) {
    Show(kZoneTitle, kZoneRowStart, zoneTime, kZoneRowEnd);
}

}  // namespace orvantis

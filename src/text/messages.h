// The boxes with which the parsers of this room refuse a text: all of their words stand in
// messages.cpp. A box has the stop sign and the button Ok, and is shown by textState.shell; without
// a shell nothing is shown.
#pragma once

#include <string_view>

namespace orvantis {

/// Why a date is refused. The example in the box follows the regional order.
enum class DateFault {
    Format,    ///< too few or too many fields, no month, a number that no date has
    BothEras,  ///< BC and AD
    Calendar,  ///< not a day of the calendar
};

/// Why a time is refused.
enum class TimeFault {
    BothHalves,   ///< AM and PM
    Morning,      ///< AM with hours outside 0 to 12
    Afternoon,    ///< PM with hours outside 0 to 12
    Hours,        ///< hours outside 0 to 23 on the 24 hour clock
    Minutes,      ///< minutes outside 0 to 59
    Seconds,      ///< seconds outside 0 to 59
    FourthField,  ///< more than hours, minutes and seconds
    NonDigit,     ///< a character that isn't a figure
};

enum class CoordinateKind { Latitude, Longitude };

/// Why a latitude or longitude is refused.
enum class CoordinateFault {
    Format,  ///< no letter or two, a character that isn't a figure
    Range,   ///< a number out of range, a fourth field
};

void ShowDateFault(DateFault fault);
void ShowTimeFault(TimeFault fault);
void ShowCoordinateFault(CoordinateKind kind, CoordinateFault fault);

/// The zone isn't recognised.
void ShowZoneFault();

/// The zone's mnemonic is known, but the time beside it in the zone file can't be read.
void ShowZoneRowFault(std::string_view zoneTime);

}  // namespace orvantis

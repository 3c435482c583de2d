// Any bytes as a typed date, time, latitude, longitude or zone: the first byte tells which, and the
// user's regional choices. A refusal is told by one box at least, an accepted text by none; what is
// accepted is in range, and its formatted text means the same. No run-time error is left.
#include <algorithm>
#include <cmath>
#include <cstdlib>

#include "support/reset_all.h"
#include "text/coordinates.h"
#include "text/dates.h"
#include "text/run_time_error.h"
#include "text/text_state.h"
#include "text/zones.h"

namespace {

using namespace orvantis;

void Require(bool holds) {
    if (!holds) std::abort();
}

// The flag and the boxes of a parser agree. Returns true if the text was accepted.
bool Accepted(std::int16_t errorFlag) {
    Require(errorFlag == 0 || errorFlag == -1);
    Require(TestShell().boxes.empty() == (errorFlag == 0));
    Require(PendingRunTimeError() == 0);
    return errorFlag == 0;
}

void FuzzDate(std::string_view text) {
    std::int16_t day = 0;
    std::int16_t month = 0;
    std::int16_t year = 0;
    std::int16_t errorFlag = 1;
    ParseDateText(text, day, month, year, errorFlag);
    if (!Accepted(errorFlag)) return;
    Require(day >= 1 && day <= 31 && month >= 1 && month <= 12);
    std::int16_t day2 = 0;
    std::int16_t month2 = 0;
    std::int16_t year2 = 0;
    ParseDateText(FormatDateText(day, month, year), day2, month2, year2, errorFlag);
    Require(Accepted(errorFlag) && day2 == day && month2 == month && year2 == year);
}

void FuzzTime(std::string_view text) {
    std::int16_t hours = 0;
    std::int16_t minutes = 0;
    std::int16_t seconds = 0;
    std::int16_t errorFlag = 1;
    ParseTimeText(text, hours, minutes, seconds, errorFlag);
    if (!Accepted(errorFlag)) return;
    Require(hours >= 0 && hours <= 23 && minutes >= 0 && minutes <= 59);
    Require(seconds >= 0 && seconds <= 59);
    std::int16_t hours2 = 0;
    std::int16_t minutes2 = 0;
    std::int16_t seconds2 = 0;
    ParseTimeText(FormatTimeText(hours, minutes, seconds), hours2, minutes2, seconds2, errorFlag);
    Require(Accepted(errorFlag) && hours2 == hours && minutes2 == minutes && seconds2 == seconds);
}

void FuzzCoordinate(std::string_view text, bool latitude) {
    const auto parse = latitude ? ParseLatitude : ParseLongitude;
    const auto format = latitude ? FormatLatitude : FormatLongitude;
    double value = -999;
    std::int16_t errorFlag = 1;
    parse(text, value, errorFlag);
    if (!Accepted(errorFlag)) {
        Require(value == -999);
        return;
    }
    Require(std::abs(value) <= (latitude ? 90 : 180));
    double value2 = -999;
    parse(format(value), value2, errorFlag);
    Require(Accepted(errorFlag) && value2 == value);
}

void FuzzZone(std::string_view text) {
    float hours = -99;
    std::string mnemonic;
    std::int16_t errorFlag = 1;
    ParseZoneText(text, hours, mnemonic, errorFlag, kTrue);
    IsLmtZone(text);
    if (!Accepted(errorFlag)) {
        Require(hours == -99);
        return;
    }
    Require(std::abs(hours) < 14);
    float hours2 = -99;
    std::string none;
    ParseZoneText(FormatZoneText(hours), hours2, none, errorFlag, kTrue);
    Require(Accepted(errorFlag) && hours2 == hours && none.empty());
}

void SetUpZones() {
    zones.ZoneCount = 3;
    zones.ZoneMnemonic = {"", "GMT  ", "ACST ", "BAD  "};
    zones.ZoneName = {"", "", "", ""};
    zones.ZoneTime = {"", "+0:00 ", "-9:30 ", "+x:00 "};
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size == 0) return 0;
    ResetAll();
    textState.MonthFirst = (data[0] & 0x80) != 0 ? kTrue : kFalse;
    textState.Clock24 = (data[0] & 0x40) != 0 ? kTrue : kFalse;
    SetUpZones();
    const std::string_view text(reinterpret_cast<const char*>(data) + 1, size - 1);
    switch (data[0] % 5) {
        case 0:
            FuzzDate(text);
            break;
        case 1:
            FuzzTime(text);
            break;
        case 2:
        case 3:
            FuzzCoordinate(text, data[0] % 5 == 2);
            break;
        default:
            FuzzZone(text);
    }
    return 0;
}

// Time zones as text, and the table of zone mnemonics that a user may type. Hours are WEST
// positive: clock time plus the zone gives Universal Time.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "surface/values.h"

namespace orvantis {

/// The zone file in memory: parallel lists that count from 1; element 0 stands unused.
struct ZoneTable {
    std::int16_t ZoneCount = 0;
    std::vector<std::string> ZoneMnemonic = {""};  ///< 5 characters, blank padded, upper case
    std::vector<std::string> ZoneName = {""};      ///< 30 characters, blank padded
    std::vector<std::string> ZoneTime = {""};      ///< 6 characters, such as "+5:00 "
};

extern ZoneTable zones;

/// Reads a zone: a mnemonic of the zone table, a mnemonic and a time, or a time such as "-10:30".
/// A mnemonic of the table wins over whatever follows it. Hours -13 to 13.
/// `errorFlag` 0: `hours` (west positive) and `mnemonic` ("" if only a time was given) are set.
/// `errorFlag` -1: refused, `hours` is left as it was, but `mnemonic` is overwritten with what was
/// taken for one, "" if nothing was; the box "Error in Time Zone" has been shown if `showMessages`
/// is set.
void ParseZoneText(std::string_view text, float& hours, std::string& mnemonic,
                   std::int16_t& errorFlag, Flag showMessages);

/// "+5:00", "-10:30", "-10:30:15"; 0 is "+0:00".
std::string FormatZoneText(float hours);

/// The text of a zone field once it has been read: the mnemonic, a blank and the hours, "EST
/// +5:00". Without a mnemonic there is no blank: "-10:30".
std::string ZoneFieldText(std::string_view mnemonic, float hours);

/// A zone field that begins with "LMT" in any case follows the place's longitude.
bool IsLmtZone(std::string_view text);

/// The zone text of local mean time at a longitude in degrees, WEST positive: "LMT +1:00:00".
std::string LmtZoneText(double longitude);

}  // namespace orvantis

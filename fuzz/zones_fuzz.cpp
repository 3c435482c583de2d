// Any bytes as a zone file; the mnemonics that it has are then typed.
#include <cstdlib>

#include "map_fuzz_folder.h"
#include "places/zones.h"
#include "support/reset_all.h"
#include "text/run_time_error.h"
#include "text/strings.h"
#include "text/zones.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace orvantis;
    ResetAll();
    WriteFuzzFile("timezone.fil", data, size);
    session.UserDataPath = FuzzFolder();
    LoadZones();
    if (!TestShell().boxes.empty() || PendingRunTimeError() != 0) std::abort();

    const auto count = static_cast<std::size_t>(zones.ZoneCount);
    if (zones.ZoneMnemonic.size() != count + 1 || zones.ZoneName.size() != count + 1 ||
        zones.ZoneTime.size() != count + 1) {
        std::abort();
    }
    for (std::size_t n = 1; n <= count; ++n) {
        if (zones.ZoneMnemonic[n].size() != 5 || zones.ZoneName[n].size() != 30 ||
            zones.ZoneTime[n].size() != 6) {
            std::abort();
        }
        if (n > 20) continue;
        float hours = 0;
        std::string mnemonic;
        std::int16_t errorFlag = 0;
        ParseZoneText(TrimRight(zones.ZoneMnemonic[n]), hours, mnemonic, errorFlag, kFalse);
        if (errorFlag == 0 && !(hours >= -14 && hours <= 14)) std::abort();
    }
    return 0;
}

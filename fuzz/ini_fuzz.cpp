// Any bytes as the own INI and as the sibling's: all keys are read, the program's are written and
// read back. What the program doesn't write has to survive.
#include <algorithm>
#include <array>
#include <cstdlib>

#include "map_fuzz_folder.h"
#include "session/files.h"
#include "session/ini_settings.h"
#include "session/settings.h"
#include "support/reset_all.h"
#include "text/run_time_error.h"

namespace {

using namespace orvantis;

constexpr std::array<std::int16_t Options::*, 5> kNumbers = {
    &Options::houseSystem, &Options::eclipseStep, &Options::localLineExtent, &Options::ayanamsa,
    &Options::userTTOption};
constexpr std::array<std::array<std::int16_t, 2>, 5> kBounds = {
    {{1, 9}, {5, 50}, {1, 360}, {1, 8}, {0, 3}}};

void CheckBounds() {
    for (std::size_t i = 0; i < kNumbers.size(); ++i) {
        const std::int16_t value = options.*kNumbers[i];
        if (value < kBounds[i][0] || value > kBounds[i][1]) std::abort();
    }
    if (!(options.repFontSize >= 6 && options.repFontSize <= 36)) std::abort();
    if (options.clockStep < 1 || options.clockStep > 500) std::abort();
    if (session.RecentCount < 0 || session.RecentCount > 4) std::abort();
    const WindowPlace place = TestShell().place;
    const bool maximised = place.state == 2;
    if (!maximised && (place.width < 1000 || place.width > 28800)) std::abort();
    if (!maximised && (place.left < 0 || place.left > 16200)) std::abort();
    if (PendingRunTimeError() != 0) std::abort();
}

// A carriage return within a value becomes a blank when it is written.
std::string Kept(std::string text) {
    std::replace(text.begin(), text.end(), '\r', ' ');
    return text;
}

bool HaveSurvived(const Options& before, std::array<std::string, 4> maps) {
    for (std::string& map : maps) map = Kept(map);
    return options.houseSystem == before.houseSystem && options.ayanamsa == before.ayanamsa &&
           options.wordProcessor == Kept(before.wordProcessor) && options.rtfOn == before.rtfOn &&
           options.defaultPlace == before.defaultPlace && session.RecentMaps == maps;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    ResetAll();
    session.IniDir = FuzzFolder();
    session.ProgramDir = FuzzFolder();
    session.OwnIni = "own.ini";
    session.SiblingIni = "sibling.ini";
    // A value that a write has to keep: first in the file, so that no doubled key comes before.
    const std::string foreign = "[Foreign]\nkept=\" as it is \"\n";
    std::string text = foreign + std::string(reinterpret_cast<const char*>(data), size);
    WriteFuzzFile("own.ini", reinterpret_cast<const std::uint8_t*>(text.data()), text.size());
    WriteFuzzFile("sibling.ini", data, size);
    ReadIniSettings();
    CheckBounds();

    const Options before = options;
    const auto maps = session.RecentMaps;
    if (WriteIniSettings() != 0) std::abort();
    const IniFile written = ReadIni("own.ini");
    if (IniText(written, "foreign", "KEPT", "", 99) != " as it is ") std::abort();
    if (!written.text.starts_with(foreign)) std::abort();

    ReadIniSettings();
    CheckBounds();
    if (!HaveSurvived(before, maps)) std::abort();

    // A second writing changes nothing.
    if (WriteIniSettings() != 0) std::abort();
    const std::string once = ReadIni("own.ini").text;
    if (WriteIniSettings() != 0 || ReadIni("own.ini").text != once) std::abort();
    return 0;
}

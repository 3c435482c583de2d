// The keys of the INI files. See ini_settings.h.
#include "session/ini_settings.h"

#include <algorithm>
#include <cmath>
#include <vector>

#include "places/zones.h"
#include "session/files.h"
#include "session/resources.h"
#include "session/session_state.h"
#include "session/settings.h"
#include "text/code_page.h"
#include "text/run_time_error.h"
#include "text/strings.h"
#include "text/text_state.h"

namespace orvantis {

namespace {

// Widths of values, in characters.
constexpr std::size_t kPathWidth = 255;
constexpr std::size_t kNumberWidth = 5;
constexpr std::size_t kLengthWidth = 6;

constexpr std::int32_t kLeastWindow = 1000;    // twips
constexpr std::int32_t kPaletteColours = 256;  // displays with more have no palette

constexpr std::string_view kRegionalIni = "WIN.INI";
constexpr std::string_view kRegionalSection = "intl";

// The files and sections that keys are read from.
struct Inis {
    IniFile own;
    IniFile sibling;
};

// Whole number within bounds, rounded to nearest, ties to even.
std::int32_t Whole(double value, std::int32_t low, std::int32_t high) {
    if (value <= low) return low;
    return value >= high ? std::max(low, high) : static_cast<std::int32_t>(std::lrint(value));
}

std::int16_t OwnInteger(const Inis& inis, std::string_view key, std::string_view defaultText,
                        std::int16_t low, std::int16_t high, std::size_t width = kNumberWidth) {
    const double value = IniNumber(inis.own, kOwnSection, key, defaultText, width);
    return static_cast<std::int16_t>(Whole(value, low, high));
}

Flag FlagOf(double value) {
    return Whole(value, INT16_MIN, INT16_MAX) != 0 ? kTrue : kFalse;
}

Flag OwnFlag(const Inis& inis, std::string_view key, std::string_view defaultText) {
    return FlagOf(IniNumber(inis.own, kOwnSection, key, defaultText, kNumberWidth));
}

std::string OwnPath(const Inis& inis, std::string_view key, std::string_view defaultText) {
    return ProgramPath(IniText(inis.own, kOwnSection, key, defaultText, kPathWidth));
}

std::string OwnWords(const Inis& inis, std::string_view key, std::string_view defaultText,
                     std::size_t width) {
    const std::string text =
        IniText(inis.own, kOwnSection, key, defaultText, std::string_view::npos);
    return FromEditedText(text).substr(0, width);
}

// A path in the form in which it stands in a file.
std::string WrittenPath(std::string_view path) {
    std::string native(path);
    std::replace(native.begin(), native.end(), '\\', '/');
    return native;
}

// One of the user's regional choices: of the desktop's INI if there is such a file, of the own INI,
// of the desktop itself.
std::int32_t RegionalChoice(const Inis& inis, const IniFile& desktop, std::string_view key) {
    constexpr std::size_t width = 2;
    std::string text = IniText(desktop, kRegionalSection, key, "", width);
    if (text.empty()) text = IniText(inis.own, kRegionalSection, key, "", width);
    if (text.empty()) text = session.shell->RegionalText(key).substr(0, width);
    return Whole(NumericValue(text), INT16_MIN, INT16_MAX);
}

void ReadRegionalChoices(const Inis& inis) {
    const IniFile desktop = ReadIni(kRegionalIni);
    textState.Clock24 = RegionalChoice(inis, desktop, "iTime") == 1 ? kTrue : kFalse;
    textState.MonthFirst = RegionalChoice(inis, desktop, "iDate") != 1 ? kTrue : kFalse;
}

// A folder of the user's choice. One that is missing or has no file, and an empty value, give way
// to the default for this run; the key stays.
std::string UserFolder(const Inis& inis, std::string_view key, const std::string& standard) {
    const std::string value = OwnPath(inis, key, standard);
    const std::string folder = AddBackslash(value);
    return !Trim(value).empty() && FolderShowsFile(folder) ? folder : standard;
}

// The keys of the paths are never made by the program: they come from the user, or from whoever
// installs it.
void ReadPaths(const Inis& inis) {
    session.UserDataPath = UserFolder(inis, "UserDataPath", session.ProgramDir + "Userdata\\");
    session.InterpPath = UserFolder(inis, "InterpPath", session.ProgramDir + "Interps\\");
    const auto file = [&](std::string_view key, std::string_view standard, std::size_t width,
                          const char* extension) {
        return session.UserDataPath + IniText(inis.sibling, kSiblingSection, key, standard, width) +
               extension;
    };
    session.PointFile = file("PointFileName", "ovdeflt", kPathWidth, ".pts");
    session.ColourFile = file("ColPntFileName", "brimwell", kPathWidth, ".cpt");
    session.UserColourFile = session.UserDataPath + "orvantis.pco";
    session.StarFile = file("StarFileName", "starfile", 12, ".fst");
}

// A base of a zodiac. Numbers that are no angle, however often it goes round, count as 0: what is
// worked out with them would mean nothing.
double ReadUserSVP(const Inis& inis) {
    constexpr double most = 1e6;  // degrees
    const double value = IniNumber(inis.sibling, kSiblingSection, "UserSVP", "0.0", 20);
    return std::fabs(value) <= most ? value : 0;
}

void ReadZodiacAndHome(const Inis& inis) {
    options.ayanamsa = OwnInteger(inis, "Ayanamsa", "1", 1, 8);
    options.userSVP = ReadUserSVP(inis);
    options.defaultPlace = OwnWords(inis, "Place", "Nowhere", 21);
    options.defaultCountry = OwnWords(inis, "Country", "Nowhere", 21);
    options.defaultTimeZone = OwnWords(inis, "TimeZone", "GMT +0:00", 15);
    options.defaultLatitude = OwnWords(inis, "Latitude", "00N00", 12);
    options.defaultLongitude = OwnWords(inis, "Longitude", "000W00", 12);
}

void ReadLastFiles(const Inis& inis) {
    session.RecentMaps = {};
    session.RecentCount = 0;
    for (std::string& map : session.RecentMaps) {
        map = OwnPath(inis, "LastFile" + std::to_string(session.RecentCount + 1), "");
        if (map.empty()) break;
        ++session.RecentCount;
    }
    session.SettingsPath = OwnPath(inis, "PrefFile", "");
}

// The sibling decides about the atlas: only where its INI has the key without a value does the own
// key count, and an INI without the key says no.
Flag ReadAtlasChoice(const Inis& inis) {
    constexpr std::string_view key = "ACSAtlas";
    const std::string text = IniText(inis.sibling, kSiblingSection, key, "0", kNumberWidth);
    return text.empty() ? OwnFlag(inis, key, "0") : FlagOf(NumericValue(text));
}

void ReadCalculation(const Inis& inis) {
    options.houseSystem = OwnInteger(inis, "HouseSystem", "5", 1, 9);
    options.trueNode = OwnFlag(inis, "TrueNode", "-1");
    options.vulcWeston = OwnFlag(inis, "VulcWeston", "-1");
    options.eclipseStep = OwnInteger(inis, "EclipseStep", "25", 5, 50, kPathWidth);
    options.acsAtlas = ReadAtlasChoice(inis);
    options.acsEmbedded =
        FlagOf(IniNumber(inis.sibling, kOwnSection, "ACSEmbedded", "0", kPathWidth));
    options.dayNight = OwnFlag(inis, "DayNight", "0");
    options.localLineExtent = OwnInteger(inis, "LocalLineExtent", "360", 1, 360);
}

bool HasPalette() {
    return session.shell->ScreenColours() <= kPaletteColours;
}

void ReadPresentation(const Inis& inis) {
    options.storeImages = OwnFlag(inis, "StoreImages", HasPalette() ? "-1" : "0");
    options.rtfOn = OwnFlag(inis, "RTFOn", "-1");
    options.wordProcessor =
        IniText(inis.own, kOwnSection, "WordProcessor", "WRITE.EXE", kPathWidth);
    options.extraAnnotation = OwnFlag(inis, "ExtraAnnotation", "-1");
    const double size = IniNumber(inis.own, kOwnSection, "RepFontSize", "12", kNumberWidth);
    options.repFontSize = static_cast<float>(std::clamp(size, 6.0, 36.0));
    options.userTTOption = OwnInteger(inis, "UserTTOption", "0", 0, 3);
    options.geodeticAscDsc = OwnFlag(inis, "GeodeticAscDsc", "-1");
    options.showAscOnHorizonChart = OwnFlag(inis, "ShowAscOnHorizonChart", "0");
}

std::int32_t WindowLength(const IniFile& own, std::string_view key, std::int32_t low,
                          std::int32_t high) {
    return Whole(IniNumber(own, kOwnSection, key, "0", kLengthWidth), low, high);
}

void RestoreMainWindow(const IniFile& own) {
    options.paletteApplied = FlagOf(IniNumber(own, kOwnSection, "256Colors", "0", kNumberWidth));

    // A window that was minimised comes back maximised.
    WindowPlace place;
    const std::string state = std::to_string(session.shell->MainWindowPlace().state);
    place.state = static_cast<std::int16_t>(
        Whole(IniNumber(own, kOwnSection, "WindowState", state, kNumberWidth), 0, 2));
    if (place.state == 1) place.state = 2;
    if (place.state != 2) {
        // The left edge is held by the screen's height too, also on wide screens.
        const WindowPlace screen = session.shell->ScreenExtent();
        place.top = WindowLength(own, "Top", 0, screen.height);
        place.left = WindowLength(own, "Left", 0, screen.height);
        place.width = WindowLength(own, "Width", kLeastWindow, screen.width);
        place.height = WindowLength(own, "Height", kLeastWindow, screen.height);
    }
    session.shell->PlaceMainWindow(place);
    session.shell->SetPointer(Pointer::Cross);
}

}  // namespace

void (*refreshMenuMarks)() = nullptr;

void SetClockStep(std::int16_t seconds) {
    options.clockInterval = seconds < 10    ? 1000
                            : seconds < 30  ? 5000
                            : seconds < 180 ? 10000
                                            : 60000;
    options.clockStep = static_cast<std::int16_t>(
        std::lrint(static_cast<double>(seconds) * 1000 / options.clockInterval));
    session.shell->SetClockTimer(options.clockInterval, session.AstroClockOn != 0);
}

void ReadIniSettings() {
    // The tables of words and numbers are constants and need no building.
    const Inis inis{ReadIni(session.OwnIni), ReadIni(session.SiblingIni)};
    ReadRegionalChoices(inis);
    ReadPaths(inis);
    ReadZodiacAndHome(inis);
    ReadLastFiles(inis);
    ReadCalculation(inis);

    // The timer belongs to the main window, which is loaded and placed when it is first touched.
    const std::int16_t clockStep = OwnInteger(inis, "ClockStep", "60", 1, 30000);
    RestoreMainWindow(inis.own);
    SetClockStep(clockStep);

    ReadPresentation(inis);
    if (refreshMenuMarks != nullptr) refreshMenuMarks();
    BuildChartWords();
    LoadZones();
}

Flag WriteIniSettings() {
    std::vector<IniEntry> entries;
    const auto text = [&](const char* key, std::string value) {
        entries.push_back({key, std::move(value)});
    };
    const auto number = [&](const char* key, std::int64_t value) {
        text(key, std::to_string(value));
    };
    const WindowPlace place = session.shell->MainWindowPlace();
    number("WindowState", place.state);
    number("Left", place.left);
    number("Top", place.top);
    number("Width", place.width);
    number("Height", place.height);
    for (std::int16_t i = 0; i < session.RecentCount; ++i) {
        text(("LastFile" + std::to_string(i + 1)).c_str(),
             WrittenPath(session.RecentMaps[static_cast<std::size_t>(i)]));
    }
    text("PrefFile", WrittenPath(session.SettingsPath));
    number("HouseSystem", options.houseSystem);
    number("TrueNode", options.trueNode);
    number("VulcWeston", options.vulcWeston);
    number("ACSAtlas", options.acsAtlas);
    number("DayNight", options.dayNight);
    number("LocalLineExtent", options.localLineExtent);
    number("ClockStep", std::int64_t{options.clockStep} * options.clockInterval / 1000);
    number("RTFOn", options.rtfOn);
    text("WordProcessor", options.wordProcessor);
    number("ExtraAnnotation", options.extraAnnotation);
    number("Ayanamsa", options.ayanamsa);
    number("256Colors", HasPalette() ? kTrue : kFalse);

    // What failed before stands; the failure of this is the flag alone.
    const bool stands = PendingRunTimeError() != 0;
    if (WriteIni(session.OwnIni, kOwnSection, entries)) return kFalse;
    RunTimeError ignored;
    if (!stands) TakeRunTimeError(ignored);
    return kTrue;
}

}  // namespace orvantis

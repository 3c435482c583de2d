// The steps of a start that need no window: paths, shipped files, sibling, ephemeris, preferences,
// command line. See start_steps.h.
#include <array>
#include <cmath>
#include <cstdlib>
#include <filesystem>
#include <limits>
#include <system_error>
#include <unistd.h>

#include "charts/SwissEph.h"
#include "session/connections.h"
#include "session/files.h"
#include "session/ini_settings.h"
#include "session/ini_store.h"
#include "session/resources.h"
#include "session/session_state.h"
#include "session/settings.h"
#include "session/start_steps.h"
#include "text/strings.h"
#include "text/text_state.h"

namespace orvantis {

namespace {

namespace fs = std::filesystem;

constexpr std::string_view kUserFolder = "Userdata\\";
constexpr std::string_view kSystemEphemeris = "/usr/share/libswe/ephe";
constexpr std::size_t kPathWidth = 255;  // characters of a path that an INI gives

std::string Environment(const char* name) {
    const char* value = std::getenv(name);
    return value == nullptr ? "" : value;
}

// A folder of the user's by the rules of the desktop: the one that a variable names, if that is an
// absolute path, or else one in the user's home.
fs::path UserFolder(const char* variable, const char* inHome) {
    const std::string named = Environment(variable);
    if (!named.empty() && named.front() == '/') return named;
    const std::string home = Environment("HOME");
    if (!home.empty()) return fs::path(home) / inHome;
    std::error_code failure;
    const fs::path temporary = fs::temp_directory_path(failure);
    return failure ? fs::path("/tmp") : temporary;
}

// The shipped data: beside an installed program, or in the source tree that it was built in.
fs::path ShippedData() {
    std::error_code failure;
    const fs::path program = fs::read_symlink("/proc/self/exe", failure);
    if (failure) return {};
    const fs::path folder = program.parent_path();
    for (const char* candidate : {"../share/orvantis", "../../../data"}) {
        const fs::path data = folder / candidate;
        if (fs::exists(data / "level1.pnt", failure)) return fs::weakly_canonical(data, failure);
    }
    return {};
}

// A path as an INI gives it, native or in the program's form, as a folder.
std::string FolderOf(std::string_view text) {
    return AddBackslash(ProgramPath(Trim(text)));
}

// Copies a shipped file unless the user has something of that name, in any case, be it a link to
// nowhere: copied aside, then put in place.
void Seed(const fs::path& from, const std::string& programPath) {
    std::error_code failure;
    const fs::path to = NativePath(programPath);
    if (fs::exists(fs::symlink_status(to, failure)) || !fs::exists(from, failure)) return;
    const fs::path aside = to.string() + "~" + std::to_string(::getpid());
    fs::copy_file(from, aside, fs::copy_options::overwrite_existing, failure);
    if (!failure) fs::rename(aside, to, failure);
    if (failure) fs::remove(aside, failure);
}

void SeedProgramDir(const StartPaths& paths) {
    const std::string programDir = FolderOf(paths.programDir);
    const std::string userFolder = programDir + std::string(kUserFolder);
    std::error_code ignored;
    fs::create_directories(NativePath(programDir), ignored);
    const bool made = fs::create_directory(NativePath(programDir + "Userdata"), ignored);
    if (paths.shippedData.empty()) return;
    const fs::path shipped(paths.shippedData);
    Seed(shipped / "level1.pnt", programDir + "level1.pnt");
    // What the user has deleted stays away: these files are for a new folder alone.
    if (!made) return;
    for (const char* name : {"world.ovm", "ovdeflt.pts", "brimwell.cpt", "default.ovs",
                             "sample.cht", "timezone.fil"}) {
        Seed(shipped / name, userFolder + name);
    }
}

// Number of a chart, cut to a whole one. 0, no chart, for what isn't a number or doesn't fit.
std::int16_t ChartNumberOf(std::string_view word) {
    using Limits = std::numeric_limits<std::int16_t>;
    const double number = std::trunc(NumericValue(word));
    if (!(number >= Limits::min() && number <= Limits::max())) return 0;
    return static_cast<std::int16_t>(number);
}

}  // namespace

StartPaths SystemPaths() {
    StartPaths paths;
    paths.programDir = (UserFolder("XDG_DATA_HOME", ".local/share") / "orvantis").string();
    paths.shippedData = ShippedData().string();
    paths.ephemeris = kSystemEphemeris;
    paths.config = (UserFolder("XDG_CONFIG_HOME", ".config") / "orvantis").string();
    return paths;
}

void EnterSession(Shell& shell) {
    session.shell = &shell;
    textState.shell = &shell;
    ConnectRooms();
}

bool SecondCopyIsRefused() {
    Shell& shell = *session.shell;
    if (!shell.PreviousInstance()) return false;
    // A first copy without a chart has a title without the colon. It isn't found, and the second
    // copy starts beside it.
    const std::int64_t window = FindSessionWindow("Orvantis:");
    if (window == 0) return false;
    std::string text = "You are attempting to run a second session of Orvantis.";
    text.append(kCrLf).append(kCrLf).append("Only one session can be run at a time.");
    text.append(kCrLf).append(kCrLf).append("You will now be returned to the first session.");
    shell.MessageBox(text, "Cannot Run Second Session", BoxButtons::Ok, BoxIcon::Information);
    shell.ActivateWindow(window);
    shell.SetPointer(Pointer::Default);
    return true;
}

void FindPaths(const StartPaths& paths) {
    SeedProgramDir(paths);
    session.OwnIni = "ORVANT2.INI";
    session.IniDir = FolderOf(paths.config);
    session.ProgramDir = FolderOf(paths.programDir);
    session.ShippedDir = paths.shippedData.empty() ? "" : FolderOf(paths.shippedData);
    session.SystemDataPath = session.ProgramDir;
    session.SiblingUserPath = session.ProgramDir + std::string(kUserFolder);
    session.VersionText = ORVANTIS_VERSION;
}

void FindSibling() {
    static constexpr std::string_view kNone = "Not Found";
    session.SiblingVersion = 0;
    for (std::uint8_t digit = 9; digit >= 2; --digit) {
        session.SiblingIni = "KELVANE" + std::to_string(digit) + ".INI";
        const IniFile ini = ReadIni(session.SiblingIni);
        const auto read = [&ini](std::string_view key) {
            return IniText(ini, kSiblingSection, key, kNone, kPathWidth);
        };
        const std::string systemPath = read("SystemDataPath");
        if (systemPath == kNone) continue;
        session.SystemDataPath = FolderOf(systemPath);
        session.SiblingVersion = digit;
        const std::string userPath = read("UserDataPath");
        if (userPath != kNone) session.SiblingUserPath = FolderOf(userPath);
        return;
    }
}

bool StartScreenIsWanted(std::string_view commandLine, bool hasChart) {
    const std::string text = UpperAscii(commandLine);
    const auto position = [&text](std::string_view word) {
        const std::size_t found = text.find(word);
        return found == std::string::npos ? 0 : static_cast<std::int32_t>(found) + 1;
    };
    // The two positions meet bit by bit, so that both words together may or may not show it.
    std::int32_t wanted = position("LOADICON");
    if (text.empty() && !hasChart) wanted = -1;
    return (wanted & ~position("NOINITSCREEN")) != 0;
}

void StartEphemeris(std::string_view installed) {
    // A key without a text stands for the default, as a missing one does.
    const std::string key =
        IniText(ReadIni(session.OwnIni), kOwnSection, "SwissEphemPath", "", kPathWidth);
    std::error_code failure;
    std::string path = ProgramPath(key);
    if (path.empty()) {
        const bool there = !installed.empty() && fs::is_directory(fs::path(installed), failure);
        path = there ? ProgramPath(installed) : session.SystemDataPath + "swisseph";
    }
    if (path.ends_with('\\')) path.pop_back();
    session.SwissEphemPath = NativePath(path);
    OpenSwissEphemeris(session.SwissEphemPath, session.SystemDataPath);
}

std::string OwnOrShipped(std::string_view path) {
    std::string own(path);
    if (FileExists(own) != 0 || session.ShippedDir.empty()) return own;
    std::string shipped = session.ShippedDir + BaseName(path, false);
    return FileExists(shipped) != 0 ? shipped : own;
}

void ReadPreferences() {
    ReadIniSettings();
    LoadPointSelection(OwnOrShipped(session.PointFile));
    const bool own = FileExists(session.UserColourFile) != 0;
    LoadPointColours(own ? session.UserColourFile : OwnOrShipped(session.ColourFile));
}

void ObeyCommandLine(std::string_view commandLine) {
    const std::string text = UpperAscii(Trim(commandLine));
    if (text == "LOADICON") {
        // The word asks for a group of icons on desktops that have such groups; none here.
        session.shell->RefreshStartScreen();
        return;
    }
    if (text.empty()) return;
    std::array<std::string, 10> words;
    std::int16_t count = 0;
    SplitWords(text, words, count, " ,");
    session.ChartNumber = ChartNumberOf(words[0]);
    if (count >= 2) {
        session.PointFile = session.SiblingUserPath + words[1];
        LoadPointSelection(session.PointFile);
    }
    if (count >= 3) {
        session.ColourFile = session.SiblingUserPath + words[2];
        LoadPointColours(session.ColourFile);
    }
}

void LoadStartSettings() {
    const std::string last = session.SettingsPath;
    if (FileExists(last) != 0) {
        LoadSettings(last, kFalse);
        return;
    }
    const std::string own = session.UserDataPath + "default.ovs";
    const std::string defaults = OwnOrShipped(own);
    if (FileExists(defaults) == 0) return;
    LoadSettings(defaults, kFalse);
    session.SettingsPath = own;
}

void StartSession(const StartPaths& paths, Shell& shell) {
    EnterSession(shell);
    FindPaths(paths);
    LoadResourceLibrary(kLanguageOfSystem, "EN", "OV2");
    FindSibling();
    StartEphemeris(paths.ephemeris);
    ReadPreferences();
    LoadStartSettings();
}

}  // namespace orvantis

#include "session/driver.h"

#include <algorithm>
#include <array>
#include <cstdlib>
#include <filesystem>
#include <system_error>
#include <unistd.h>
#include <vector>

#include "charts/CALCCHRT.h"
#include "charts/SwissEph.h"
#include "map/point_database.h"
#include "session/connections.h"
#include "session/files.h"
#include "session/session_state.h"
#include "session/settings.h"
#include "session/tables.h"
#include "text/run_time_error.h"
#include "text/strings.h"
#include "text/text_state.h"

namespace orvantis {

namespace {

namespace fs = std::filesystem;

constexpr std::string_view kUserFolder = "Userdata\\";
constexpr std::string_view kSystemEphemeris = "/usr/share/libswe/ephe";

std::string Environment(const char* name) {
    const char* value = std::getenv(name);
    return value == nullptr ? "" : value;
}

// The user's data folder by the rules of the desktop: XDG_DATA_HOME, or ~/.local/share.
fs::path UserDataFolder() {
    const std::string dataHome = Environment("XDG_DATA_HOME");
    if (!dataHome.empty() && dataHome.front() == '/') return dataHome;
    const std::string home = Environment("HOME");
    if (!home.empty()) return fs::path(home) / ".local/share";
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

// Copies a shipped file unless the user has one of that name: copied aside, then put in place.
void Seed(const fs::path& from, const fs::path& to) {
    std::error_code failure;
    if (fs::exists(to, failure) || !fs::exists(from, failure)) return;
    const fs::path aside = to.string() + "~" + std::to_string(::getpid());
    fs::copy_file(from, aside, fs::copy_options::overwrite_existing, failure);
    if (!failure) fs::rename(aside, to, failure);
    if (failure) fs::remove(aside, failure);
}

void SeedProgramDir(const StartPaths& paths) {
    const fs::path programDir(paths.programDir);
    const fs::path userFolder = programDir / "Userdata";
    std::error_code ignored;
    fs::create_directories(userFolder, ignored);
    if (paths.shippedData.empty()) return;
    const fs::path shipped(paths.shippedData);
    Seed(shipped / "level1.pnt", programDir / "level1.pnt");
    for (const char* name : {"world.ovm", "ovdeflt.pts", "brimwell.cpt", "default.ovs",
                             "sample.cht", "timezone.fil"}) {
        Seed(shipped / name, userFolder / name);
    }
}

void SetPaths(const StartPaths& paths) {
    session.ProgramDir = AddBackslash(ProgramPath(paths.programDir));
    session.SystemDataPath = session.ProgramDir;
    session.UserDataPath = session.ProgramDir + std::string(kUserFolder);
    session.SwissEphemPath = paths.ephemeris;
    session.VersionText = ORVANTIS_VERSION;
    session.PointFile = session.UserDataPath + "ovdeflt.pts";
    session.ColourFile = session.UserDataPath + "brimwell.cpt";
    session.UserColourFile = session.UserDataPath + "orvantis.pco";
}

// The user's file if it is there, else the shipped one: a folder that can't be written to still
// shows a map with its lines.
std::string OwnOrShipped(const StartPaths& paths, const char* name) {
    std::string own = session.UserDataPath + name;
    if (FileExists(own) != 0 || paths.shippedData.empty()) return own;
    return ProgramPath(paths.shippedData) + "\\" + name;
}

void ReadPreferences(const StartPaths& paths) {
    LoadPointSelection(OwnOrShipped(paths, "ovdeflt.pts"));
    const bool own = FileExists(session.UserColourFile) != 0;
    LoadPointColours(own ? session.UserColourFile : OwnOrShipped(paths, "brimwell.cpt"));
    const std::string defaults = OwnOrShipped(paths, "default.ovs");
    if (FileExists(defaults) != 0) LoadSettings(defaults, kFalse);
}

// True if every entry of the index can be a line's: of a class of lines, in ascending order, with
// no count below 0.
bool IndexIsSound() {
    std::int16_t before = 0;
    for (int n = 1; n <= pointDatabase.count; ++n) {
        const LineIndexEntry& entry = pointDatabase.LineIndex[static_cast<std::size_t>(n)];
        const bool isLine =
            std::any_of(kMapDetails.begin(), kMapDetails.end(), [&](const MapDetail& detail) {
                return detail.hasLines && detail.detailClass == entry.code / 1000;
            });
        const bool hasCounts = std::all_of(entry.pointCount.begin(), entry.pointCount.end(),
                                           [](std::int16_t count) { return count >= 0; });
        if (!isLine || !hasCounts || entry.code < before) return false;
        before = entry.code;
    }
    return true;
}

}  // namespace

StartPaths SystemPaths() {
    StartPaths paths;
    paths.programDir = (UserDataFolder() / "orvantis").string();
    paths.shippedData = ShippedData().string();
    paths.ephemeris = kSystemEphemeris;
    return paths;
}

void StartSession(const StartPaths& paths, Shell& shell) {
    session.shell = &shell;
    textState.shell = &shell;
    ConnectRooms();
    SetPaths(paths);
    SeedProgramDir(paths);
    ReadPreferences(paths);
    OpenSwissEphemeris(session.SwissEphemPath);
}

Flag LoadDatabase() {
    const std::string level1 = LevelPath(1);
    if (FileExists(level1) == 0) {
        session.shell->MessageBox(
            "The main database file LEVEL1.PNT was not found in the directory " +
                ShownPath(session.ProgramDir),
            "Orvantis", BoxButtons::Ok, BoxIcon::Error);
        return kTrue;
    }
    // Level files that couldn't be made anew may still serve as they are.
    if (LevelsNeedRebuild()) {
        session.shell->ShowProgress(kFirstUseText, 0);
        GenerateLevels(level1, kFirstUseText);
        session.shell->ShowProgress("", 100);
    }
    // A code that differs between levels leaves the index usable. An index that can't be one of
    // lines is made anew once; if the lines themselves are at fault, that shows again.
    LoadLineIndex();
    if (!IndexIsSound()) {
        DeleteFile(session.ProgramDir + "levelx.ndx");
        LoadLineIndex();
    }
    if (!IndexIsSound()) {
        session.shell->MessageBox(
            ShownPath(level1) + std::string(kCrLf) + "The file isn't a map database.",
            "Database Error", BoxButtons::Ok, BoxIcon::Error);
        return kTrue;
    }
    if (pointDatabase.count > 0) return kFalse;
    session.shell->MessageBox(
        ShownPath(level1) + std::string(kCrLf) + "The file holds no map lines.", "Database Error",
        BoxButtons::Ok, BoxIcon::Error);
    return kTrue;
}

ChartStatus ReadChartFromFile(std::string_view path, std::int32_t n, FileChart& fileChart,
                              RunTimeError& reason) {
    TakeRunTimeError(reason);  // what stood before belongs to others
    reason = {};
    std::int32_t count = 0;
    const FileHandle file = OpenChartFile(path, count, kFalse);
    if (file < 1) {
        return FileExists(path) != 0 ? ChartStatus::NotSupported : ChartStatus::NoFile;
    }
    const std::int16_t type = currentChartFileType;
    const bool held = n >= 1 && n <= count;
    const bool read = held && ReadChart(type, file, n, fileChart);
    CloseChartFile(type, file);
    TakeRunTimeError(reason);
    if (!held) return ChartStatus::NoSuchChart;
    return read ? ChartStatus::Ok : ChartStatus::BadRecord;
}

ChartStatus OpenChart(std::string_view path, std::int32_t n, RunTimeError& reason) {
    FileChart fileChart;
    const ChartStatus status = ReadChartFromFile(path, n, fileChart, reason);
    if (status != ChartStatus::Ok) return status;
    Format1Record record;
    ChartToFormat1(fileChart, record);
    if (FileChartToCalcChart(record, 1, kFalse) != 0) return ChartStatus::Failed;
    session.ChartNumber = 1;
    return ChartStatus::Ok;
}

void EndSession() {
    CloseSwissEphemeris();
    CloseAllFiles();
}

std::string ChartDescription() {
    if (session.ChartNumber < 1) return "";
    const CalcChart& chart = calcChart[1];
    std::string text = chart.Name;
    const auto add = [&text](const std::string& part, std::string_view gap) {
        if (part.empty()) return;
        if (!text.empty()) text += gap;
        text += part;
    };
    add(chart.DateText, ", ");
    add(chart.TimeText, ", ");
    add(chart.ZoneText, " ");
    add(chart.Place, ", ");
    add(chart.Country, ", ");
    return text;
}

std::string Caption() {
    const std::string description = ChartDescription();
    return description.empty() ? "Orvantis" : "Orvantis: " + description;
}

}  // namespace orvantis

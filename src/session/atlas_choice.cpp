// The choice of the atlas as the source of places.
#include <array>
#include <optional>
#include <string>

#include "session/command_rows.h"
#include "session/files.h"
#include "session/ini_store.h"
#include "session/session_state.h"
#include "session/settings.h"
#include "text/code_page.h"
#include "text/strings.h"

namespace orvantis {

namespace {

constexpr std::string_view kIni = "acsatlas.ini";
constexpr std::string_view kSection = "ACSATLAS";
constexpr std::size_t kPathWidth = 255;

// Which of the atlas's two files lie in a folder.
struct AtlasFiles {
    bool international = false;
    bool american = false;
};

AtlasFiles FilesIn(const std::string& folder) {
    return {FileExists(folder + "intatl.bin") != 0, FileExists(folder + "usaatl.bin") != 0};
}

bool AtlasIsInPlace() {
    const std::string path = IniText(ReadIni(kIni), kSection, "path", "x", kPathWidth);
    const AtlasFiles files = FilesIn(AddBackslash(ProgramPath(path)));
    return files.international || files.american;
}

bool InstallIsWanted() {
    return session.shell->MessageBox(
               "The ACS Atlas is either not present or not correctly installed for use with "
               "Windows. If it is already installed in DOS, and you wish to install it for "
               "Windows, then select the OK button.",
               "Install Atlas?", BoxButtons::OkCancel, BoxIcon::Question) == BoxAnswer::Ok;
}

// Asks where the atlas is, and notes it. False: it isn't there, or the user went back.
bool InstallAtlas() {
    const std::optional<std::string> answer = session.shell->InputBox(
        "Please enter the full path of the directory in which the ACS Atlas has been installed.",
        "ACS Atlas Path", "c:\\ATLAS\\ATLAS");
    if (!answer) return false;
    const std::string folder = AddBackslash(ProgramPath(ToUtf8(Trim(*answer))));
    const AtlasFiles files = FilesIn(folder);
    if (!files.international && !files.american) {
        session.shell->MessageBox("The ACS Atlas was not found in the specified directory.",
                                  "Atlas Not Installed", BoxButtons::Ok, BoxIcon::Exclamation);
        return false;
    }

    // A note that can't be written only makes the question come again.
    // The path stands there in the platform's own bytes, as it is read.
    const std::array<IniEntry, 3> entries = {{{"path", NativePath(folder)},
                                              {"Int", files.international ? "yes" : "no"},
                                              {"USA", files.american ? "yes" : "no"}}};
    WriteIni(kIni, kSection, entries);
    RunTimeError ignored;
    TakeRunTimeError(ignored);
    return true;
}

}  // namespace

void ChooseAtlas(bool acs) {
    options.acsAtlas = kFalse;
    if (!acs) return;
    if (!AtlasIsInPlace() && (!InstallIsWanted() || !InstallAtlas())) return;
    options.acsAtlas = kTrue;
    if (useAcsAtlas != nullptr) useAcsAtlas();
}

}  // namespace orvantis

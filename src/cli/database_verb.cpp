// The verb "database": the files of the world map.
#include <algorithm>
#include <iostream>

#include "cli/verbs.h"
#include "map/database_check.h"
#include "map/point_database.h"
#include "session/files.h"
#include "session/session_state.h"
#include "text/code_page.h"
#include "text/strings.h"

namespace orvantis::cli {

namespace {

// Levels and index are made in the folder of the file, if it is a point file at all.
int Build(const std::string& path, CliShell& shell) {
    const std::string name = BaseName(path, false);
    if (!SameText(name, "level1.pnt")) {
        return Complain(kWrongCall, path, "a file named level1.pnt is needed");
    }
    for (const DatabaseFinding& finding : CheckDatabase(path)) {
        const bool unfit =
            finding.severity == Severity::Unreadable ||
            (finding.severity == Severity::Error && finding.rule == DatabaseRule::Structure);
        if (unfit) return Complain(kUnreadable, path, ToUtf8(finding.text));
    }
    session.ProgramDir = ProgramPath(path.substr(0, path.size() - name.size()));
    DeleteFile(session.ProgramDir + "levelx.ndx");
    shell.complained = false;
    if (GenerateLevels(path, kFirstUseText) != 0 || LoadLineIndex() != 0 || shell.complained) {
        return shell.complained ? kWorkFailed : Complain(kWorkFailed, path, "can't be worked");
    }
    std::cout << pointDatabase.count << " lines\n";
    return kDone;
}

int Check(const std::string& path) {
    Severity worst = Severity::Warning;
    for (const DatabaseFinding& finding : CheckDatabase(path)) {
        worst = std::max(worst, finding.severity);
        if (finding.severity == Severity::Unreadable) {
            return Complain(kUnreadable, path, ToUtf8(finding.text));
        }
        std::cout << (finding.severity == Severity::Error ? "error: " : "warning: ");
        if (finding.code != 0) std::cout << "line " << finding.code << ": ";
        std::cout << ToUtf8(finding.text) << "\n";
    }
    return worst == Severity::Error ? kWorkFailed : kDone;
}

}  // namespace

const std::string_view kDatabaseHelp =
    R"(orvantis-cli database build FILE
orvantis-cli database check FILE

build makes the derived files of a level1.pnt (level2.pnt to level5.pnt and levelx.ndx) beside it.
check proves a point file: its structure, that coasts close and have the land on their left at every
level, that lines are short and cut at the date line, that codes are in order.
Prints what it finds; exit code 1 if something is wrong.

Example: orvantis-cli database check data/level1.pnt
)";

int RunDatabase(const std::vector<std::string>& words, CliShell& shell) {
    const std::optional<Arguments> call = TakeApart(words, {});
    if (!call) return kWrongCall;
    const bool known =
        call->words.size() == 2 && (call->words[0] == "build" || call->words[0] == "check");
    if (!known) return Complain(kWrongCall, "database", "takes build FILE or check FILE");
    const std::string& path = call->words[1];
    if (FileExists(path) == 0) return Complain(kUnreadable, path, WhyNoFile(path));
    return call->words[0] == "build" ? Build(path, shell) : Check(path);
}

}  // namespace orvantis::cli

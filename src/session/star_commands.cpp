// The menus "&Stars", "&Eclipse" and "&Reports".
#include <array>
#include <optional>

#include "lines/chart_lines.h"
#include "session/command_rows.h"
#include "session/display_dialogs.h"
#include "session/files.h"
#include "session/session_state.h"
#include "session/settings.h"
#include "text/code_page.h"
#include "text/strings.h"

namespace orvantis {

namespace {

constexpr std::string_view kStarMenu = "&Stars";
constexpr std::string_view kEclipseMenu = "&Eclipse";
constexpr std::string_view kReportMenu = "&Reports";

constexpr std::size_t kFirstStar = 37;
constexpr std::int16_t kMoon = 1;

// ---- Stars ----

bool HasStars() {
    return loadStarFile != nullptr && HasPointsDialog();
}

void ChooseStars() {
    PointsForm form = OpenPoints(point_dialog::kStars);
    showPointsForm(form);
    if (AnyLineTypeOn(line_type::kCulminate, line_type::kLocalSpace)) return;
    Tell("There are no planetary line types currently selected for display.",
         "In order to see planetary and star lines, you must first switch on at least one line "
         "type from MC to Planet Directions on the next screen.");
    ShowLinesDialog();
}

CommandOutcome OpenStarFile(std::int16_t /*number*/) {
    const std::optional<std::string> path =
        session.shell->ChooseFile("Select Star File to Open", "*.fst", false);
    if (!path || !loadStarFile(*path)) return CommandOutcome::Cancelled;
    session.StarFile = *path;
    ChooseStars();
    return CommandOutcome::Done;
}

CommandOutcome SelectStars(std::int16_t number) {
    if (session.StarFile.empty() || FileExists(session.StarFile) == 0) return OpenStarFile(number);
    if (!loadStarFile(session.StarFile)) return CommandOutcome::Cancelled;
    ChooseStars();
    return CommandOutcome::Done;
}

CommandOutcome ClearStars(std::int16_t /*number*/) {
    for (std::size_t star = kFirstStar; star <= kPointCount; ++star) pointSelection[star] = kFalse;
    options.paranPoint = kMoon;
    return CommandOutcome::Done;
}

// ---- Eclipses ----

CommandOutcome ClearEclipse(std::int16_t /*number*/) {
    session.EclipseNumber = 0;
    return CommandOutcome::Done;
}

// ---- Reports ----

CommandOutcome OpenReport(std::int16_t number) {
    openReport(number);
    return CommandOutcome::Done;
}

bool HasReports() {
    return openReport != nullptr;
}

// The desktop's own program needs no path. `program` is in the platform's bytes.
bool IsWordProcessor(const std::string& program) {
    return program == "WRITE.EXE" || FileExists(ProgramPath(program)) != 0;
}

// A typed path in the platform's bytes. The current one may hold letters that the box can't show:
// left as it was shown it stays.
std::string TypedProgram(std::string_view typed, std::string_view shown) {
    return Trim(typed) == Trim(shown) ? options.wordProcessor : ToUtf8(Trim(typed));
}

CommandOutcome AskForWordProcessor(std::int16_t /*number*/) {
    const std::string shown = FromEditedText(options.wordProcessor);
    for (;;) {
        const std::optional<std::string> answer = session.shell->InputBox(
            "Please enter the full path and filename of the Word Processor which you wish to use "
            "when viewing reports.",
            "Word Processor", shown);
        if (!answer || Trim(*answer).empty()) return CommandOutcome::Cancelled;
        const std::string program = TypedProgram(*answer, shown);
        if (IsWordProcessor(program)) {
            options.wordProcessor = program;
            return CommandOutcome::Done;
        }
        session.shell->MessageBox("Cannot find this file. Please try again", kProgramTitle,
                                  BoxButtons::Ok, BoxIcon::Exclamation);
    }
}

CommandOutcome ToggleRichText(std::int16_t /*number*/) {
    options.rtfOn = options.rtfOn != 0 ? kFalse : kTrue;
    return CommandOutcome::Done;
}

// The rows are the table's own.
// clang-format off
const std::array kCommands = {
    Command{.menu = kStarMenu, .caption = "Select &Stars...", .run = SelectStars,
            .isBuilt = HasStars},
    Command{.menu = kStarMenu, .caption = "&Open Star File...", .run = OpenStarFile,
            .isBuilt = HasStars},
    Command{.menu = kStarMenu, .caption = "&Clear Stars", .end = CommandEnd::Lines,
            .run = ClearStars, .isBuilt = HasStars},
    Command{.menu = kStarMenu, .caption = "&Paran Star...", .hidden = true},
    Command{.menu = kEclipseMenu, .caption = "&Select Eclipse...", .shortcut = "Ctrl+E",
            .run = [](std::int16_t) { selectEclipse(); return CommandOutcome::Done; },
            .isBuilt = [] { return selectEclipse != nullptr; }},
    Command{.menu = kEclipseMenu, .caption = "&Clear Eclipse", .end = CommandEnd::Lines,
            .run = ClearEclipse,
            .isAllowed = [](std::int16_t) { return session.EclipseNumber != 0; }},
    Command{.menu = kReportMenu, .caption = "&Map Parans...", .shortcut = "Ctrl+F1", .number = 1,
            .run = OpenReport, .isBuilt = HasReports, .isAllowed = HasChart},
    Command{.menu = kReportMenu, .caption = "&Local Parans...", .shortcut = "Ctrl+F2", .number = 2,
            .run = OpenReport, .isBuilt = HasReports, .isAllowed = HasChart},
    Command{.menu = kReportMenu, .caption = "&City Directions...", .shortcut = "Ctrl+F3",
            .number = 3, .run = OpenReport, .isBuilt = HasReports, .isAllowed = HasChart},
    Command{.menu = kReportMenu, .caption = "&Relocation Interpretations...",
            .shortcut = "Ctrl+F4", .number = 4, .run = OpenReport, .isBuilt = HasReports,
            .isAllowed = HasChart},
    Command{.menu = kReportMenu, .caption = "Chart &Details...", .shortcut = "Ctrl+F8",
            .number = 5, .run = OpenReport, .isBuilt = HasReports},
    Command{.menu = kReportMenu, .caption = "&Word Processor...", .run = AskForWordProcessor},
    Command{.menu = kReportMenu, .caption = "Rich Text Format", .run = ToggleRichText,
            .isChecked = [](std::int16_t) { return options.rtfOn != 0; }},
};
// clang-format on

}  // namespace

std::span<const Command> StarCommands() {
    return kCommands;
}

}  // namespace orvantis

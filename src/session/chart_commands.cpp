// The menu "&Chart".
#include <array>

#include "charts/CALCCHRT.h"
#include "lines/chart_lines.h"
#include "lines/circles.h"
#include "session/command_rows.h"
#include "session/display_dialogs.h"
#include "session/driver.h"
#include "session/mouse_modes.h"
#include "session/rulers.h"
#include "session/select_chart.h"
#include "session/session_state.h"
#include "session/settings.h"
#include "text/strings.h"

namespace orvantis {

namespace {

constexpr std::string_view kMenu = "&Chart";
constexpr std::string_view kZodiacMenu = "&Zodiac";
constexpr std::int16_t kGeodetic = 1;

// ---- The clock and the chart ----

CommandOutcome SwitchClock(std::int16_t /*number*/) {
    const bool on = session.AstroClockOn == 0;
    switchAstroClock(on ? kTrue : kFalse, kFalse);
    // A clock that starts plots the lines itself.
    return on ? CommandOutcome::Cancelled : CommandOutcome::Done;
}

std::string ClockCaption(std::int16_t /*number*/) {
    return session.AstroClockOn != 0 ? "&AstroClock On" : "&AstroClock Off";
}

// Charts that are made up for the moment aren't kept in files.
bool MaySaveChart(std::int16_t number) {
    const CalcChart& chart = calcChart[1];
    return HasChart(number) && chart.Name != "Transits" && session.AstroClockOn == 0 &&
           chart.NeverSaved == 0;
}

CommandOutcome ClearChart(std::int16_t /*number*/) {
    session.ChartNumber = 0;
    return CommandOutcome::Done;
}

// ---- Relocation ----

CommandOutcome Relocate(std::int16_t /*number*/) {
    if (!IsOfMoment(calcChart[1])) {
        std::string text = "Charts of this type cannot be relocated.";
        text.append(kCrLf).append(kCrLf).append(
            "Only natal or event charts or their equivalents (such as return charts or Davison "
            "relationship charts) may be relocated in Orvantis.");
        session.shell->MessageBox(text, "Cannot Relocate", BoxButtons::Ok, BoxIcon::Error);
        return CommandOutcome::Cancelled;
    }
    if (!relocateToPlace()) return CommandOutcome::Cancelled;

    // The picture stands before the user is told about it.
    if (plotLinesAnew != nullptr) plotLinesAnew();
    if (!AnyLineTypeOn(line_type::kLocalSpace, line_type::kLocalSpace)) {
        Tell("The chart has been relocated to " + calcChart[1].Place,
             "You must switch on Local Space Lines, or view the Local Horizon Chart if you wish to "
             "see the effects of relocating the chart.");
    }
    return CommandOutcome::Cancelled;
}

// ---- What is displayed ----

CommandOutcome ShowLines(std::int16_t /*number*/) {
    ShowLinesDialog();
    return CommandOutcome::Done;
}

CommandOutcome ShowPoints(std::int16_t /*number*/) {
    PointsForm form = OpenPoints(point_dialog::kPoints);
    showPointsForm(form);
    if (!AnyLineTypeOn(line_type::kCulminate, line_type::kLocalSpace)) {
        Tell("There are no planetary line types currently selected for display.",
             "In order to see planetary lines, you must first switch on at least one line type "
             "from MC to Planet Directions on the next screen.");
        ShowLinesDialog();
    }
    return CommandOutcome::Done;
}

CommandOutcome ShowParanPoint(std::int16_t /*number*/) {
    PointsForm form = OpenPoints(point_dialog::kParanPoint);
    showPointsForm(form);
    if (!AnyLineTypeOn(line_type::kParanRiseRise, line_type::kParanRiseCulm)) {
        TellNoParanLines();
        ShowLinesDialog();
    }
    return CommandOutcome::Done;
}

CommandOutcome ShowPointColours(std::int16_t /*number*/) {
    PointColoursForm form = OpenPointColours();
    showPointColoursForm(form);
    return CommandOutcome::Done;
}

CommandOutcome SetZodiac(std::int16_t number) {
    if (number == kGeodetic) {
        ZodiacStartForm form = OpenZodiacStart();
        if (!showZodiacStartForm(form)) return CommandOutcome::Cancelled;
    }
    options.mapZodiac = number;
    return CommandOutcome::Done;
}

CommandOutcome ToggleDayNight(std::int16_t /*number*/) {
    options.dayNight = options.dayNight != 0 ? kFalse : kTrue;
    if (options.dayNight == 0 || (HasChart(0) && CanShadeNight())) return CommandOutcome::Done;
    Tell(
        "Day/Night shading can only be shown when viewing a chart on a map of the whole world in "
        "Cartesian or Mercator projection.");
    return CommandOutcome::Cancelled;
}

std::string DayNightCaption(std::int16_t /*number*/) {
    return options.dayNight != 0 ? "&Day/Night Shading On" : "&Day/Night Shading Off";
}

// ---- The picture elsewhere ----

CommandOutcome Print(std::int16_t /*number*/) {
    openPrintDialog("Print Current Map");
    if (refreshOverlay != nullptr) refreshOverlay();
    return CommandOutcome::Done;
}

CommandOutcome CopyPicture(std::int16_t /*number*/) {
    if (session.picture == nullptr) return CommandOutcome::Cancelled;
    Image image;
    session.picture->CopyImage(image);
    DrawRulersOn(image);  // they lie over the picture, and the user sees them as a part of it
    session.shell->CopyToClipboard(image);
    session.shell->MessageBox("The current map has been copied to the clipboard.", "Confirmation",
                              BoxButtons::Ok, BoxIcon::Information);
    return CommandOutcome::Done;
}

CommandOutcome Exit(std::int16_t /*number*/) {
    if (closeMainWindow != nullptr) closeMainWindow();
    return CommandOutcome::Done;
}

// The rows are the table's own.
// clang-format off
const std::array kCommands = {
    Command{.menu = kMenu, .caption = "&AstroClock Off", .shortcut = "Ctrl+A",
            .end = CommandEnd::Lines, .run = SwitchClock,
            .isBuilt = [] { return switchAstroClock != nullptr; },
            .isChecked = [](std::int16_t) { return session.AstroClockOn != 0; },
            .captionNow = ClockCaption},
    Command{.menu = kMenu, .caption = "&New Chart...", .shortcut = "Ctrl+N",
            .run = [](std::int16_t) { enterNewChart(); return CommandOutcome::Done; },
            .isBuilt = [] { return enterNewChart != nullptr; }},
    Command{.menu = kMenu, .caption = "&Select Chart...", .shortcut = "Ctrl+C",
            .run = [](std::int16_t) { SelectChart(); return CommandOutcome::Done; }},
    Command{.menu = kMenu, .caption = "&Open Chart File...", .shortcut = "Ctrl+O",
            .run = [](std::int16_t) { OpenChartFileAndSelect(); return CommandOutcome::Done; }},
    Command{.menu = kMenu, .caption = "S&ave Chart...", .shortcut = "Ctrl+S",
            .run = [](std::int16_t) { saveCurrentChart(); return CommandOutcome::Done; },
            .isBuilt = [] { return saveCurrentChart != nullptr; }, .isAllowed = MaySaveChart},
    Command{.menu = kMenu, .caption = "C&lear Chart", .shortcut = "Shift+Del",
            .end = CommandEnd::Lines, .run = ClearChart, .isAllowed = HasChart},
    Command{.menu = kMenu, .caption = "S&ubsidiary Chart...", .shortcut = "Ctrl+U",
            .run = [](std::int16_t) { openSubsidiaryChart(); return CommandOutcome::Done; },
            .isBuilt = [] { return openSubsidiaryChart != nullptr; }, .isAllowed = HasChart},
    Command{.menu = kMenu, .caption = "View Local &Horizon Chart",
            .run = [](std::int16_t) { viewChart("Local Horizon Chart"); return CommandOutcome::Done; },
            .isBuilt = [] { return viewChart != nullptr; }, .isAllowed = HasChart},
    Command{.menu = kMenu, .caption = "View Chart &Wheel",
            .run = [](std::int16_t) { viewChart("Chart Wheel"); return CommandOutcome::Done; },
            .isBuilt = [] { return viewChart != nullptr; }, .isAllowed = HasChart},
    Command{.menu = kMenu, .caption = "&Relocate to...", .shortcut = "Ctrl+R",
            .end = CommandEnd::Lines, .run = Relocate,
            .isBuilt = [] { return relocateToPlace != nullptr; }, .isAllowed = HasChart},
    Command{.menu = kMenu, .caption = "Displayed &Lines...", .shortcut = "Ctrl+L",
            .run = ShowLines, .isBuilt = HasLinesDialog},
    Command{.menu = kMenu, .caption = "Displayed &Points...", .shortcut = "Ctrl+P",
            .run = ShowPoints, .isBuilt = HasPointsDialog},
    Command{.menu = kMenu, .caption = "P&aran Point...", .end = CommandEnd::Lines,
            .run = ShowParanPoint, .isBuilt = HasPointsDialog},
    Command{.menu = kMenu, .caption = "Point &Colors...", .run = ShowPointColours,
            .isBuilt = [] { return showPointColoursForm != nullptr; }},
    Command{.menu = kMenu, .submenu = kZodiacMenu, .caption = "&Celestial (Normal)",
            .end = CommandEnd::Lines, .number = 0, .run = SetZodiac,
            .isChecked = [](std::int16_t n) { return options.mapZodiac == n; }},
    Command{.menu = kMenu, .submenu = kZodiacMenu, .caption = "&Geodetic (Mundane)...",
            .end = CommandEnd::Lines, .number = kGeodetic, .run = SetZodiac,
            .isBuilt = [] { return showZodiacStartForm != nullptr; },
            .isChecked = [](std::int16_t n) { return options.mapZodiac == n; }},
    Command{.menu = kMenu, .caption = "&Day/Night Shading Off", .shortcut = "Ctrl+D",
            .end = CommandEnd::Lines, .run = ToggleDayNight, .captionNow = DayNightCaption},
    Command{.menu = kMenu, .caption = "Pr&int...", .shortcut = "F11", .run = Print,
            .isBuilt = [] { return openPrintDialog != nullptr; }},
    Command{.menu = kMenu, .caption = "&Copy to Clipboard", .run = CopyPicture},
    Command{.menu = kMenu, .caption = "E&xit", .run = Exit},
};
// clang-format on

}  // namespace

std::span<const Command> ChartCommands() {
    return kCommands;
}

}  // namespace orvantis

#include "session/select_chart.h"

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "charts/KVCharts.h"
#include "lines/chart_lines.h"
#include "session/command_rows.h"
#include "session/commands.h"
#include "session/driver.h"
#include "session/files.h"
#include "session/session_state.h"
#include "text/dates.h"
#include "text/run_time_error.h"
#include "text/strings.h"

namespace orvantis {

namespace {

constexpr std::string_view kNotFound = "Chart Not Found";

// One line for each chart of the file, in order.
std::vector<std::string> ChartLinesOf(std::string_view path) {
    std::vector<std::string> lines;
    std::int32_t count = 0;
    const FileHandle file = OpenChartFile(path, count, kFalse);
    RunTimeError ignored;
    TakeRunTimeError(ignored);
    if (file < 1) return lines;

    const std::int16_t type = currentChartFileType;
    FileChart chart;
    for (std::int32_t n = 1; n <= count; ++n) {
        if (!ReadChart(type, file, n, chart)) {
            TakeRunTimeError(ignored);
            lines.emplace_back(kNotFound);
            continue;
        }
        const ChartEvent& event = chart.event;
        lines.push_back(std::string(Trim(event.name)) + " - " +
                        FormatDateText(event.day, event.month, event.year));
    }
    CloseChartFile(type, file);
    TakeRunTimeError(ignored);
    return lines;
}

// Number of the chosen chart, from 1; 0: cancelled.
std::int32_t AskForChart(std::string_view path) {
    const std::string title = "Select Chart from " + ShownPath(BaseName(path, false));
    const std::vector<std::string> lines = ChartLinesOf(path);
    for (;;) {
        const std::optional<std::int32_t> item = session.shell->ChooseItem(title, lines);
        if (!item) return 0;
        if (*item >= 1 && static_cast<std::size_t>(*item) <= lines.size()) return *item;
        session.shell->MessageBox("Please select an item from the list before using the OK button.",
                                  "Select Item", BoxButtons::Ok, BoxIcon::Exclamation);
    }
}

}  // namespace

void SelectChartFrom(std::string_view path) {
    const std::string file(path);  // the session's own may change meanwhile
    const std::int32_t number = AskForChart(file);
    if (number < 1) return;
    RunTimeError reason;
    const ChartStatus status = OpenChart(file, number, reason);
    if (status != ChartStatus::Ok) {
        if (status != ChartStatus::Failed) {
            session.shell->MessageBox(kNotFound, kProgramTitle, BoxButtons::Ok,
                                      BoxIcon::Exclamation);
        }
        return;
    }
    chartLines.askedByUser = kTrue;
    if (plotLinesAnew != nullptr) plotLinesAnew();
}

void SelectChart() {
    if (session.ChartFile.empty() || FileExists(session.ChartFile) == 0) {
        OpenChartFileAndSelect();
    } else {
        SelectChartFrom(session.ChartFile);
    }
}

void OpenChartFileAndSelect() {
    const std::optional<std::string> path =
        session.shell->ChooseFile("Select Chart File to Open", "*.cht", false);
    if (!path) return;
    session.ChartFile = *path;
    SelectChartFrom(*path);
}

}  // namespace orvantis

#include "session/save_chart.h"

#include <optional>
#include <string>

#include "charts/CALCCHRT.h"
#include "charts/KVCharts.h"
#include "charts/save_current_chart.h"
#include "session/session_state.h"
#include "text/strings.h"

namespace orvantis {

namespace {

bool CopyIsWanted() {
    std::string text = "This chart is already stored in a file.";
    text.append(kCrLf).append(kCrLf).append("Do you wish to save a copy anyway?");
    return session.shell->MessageBox(text, "Confirm Save", BoxButtons::OkCancel,
                                     BoxIcon::Question) == BoxAnswer::Ok;
}

}  // namespace

void SaveChart() {
    if (session.ChartNumber < 1) return;
    if (calcChart[1].Saved != 0 && !CopyIsWanted()) return;
    std::optional<std::string> path =
        session.shell->ChooseFile("Select File to Save Chart in", "*.cht", true);
    if (!path) return;
    if (!HasExtension(*path)) *path += ".cht";
    if (!SaveCurrentChart(1, *path)) return;
    session.shell->MessageBox("Chart has been saved.", "Orvantis", BoxButtons::Ok,
                              BoxIcon::Information);
}

}  // namespace orvantis

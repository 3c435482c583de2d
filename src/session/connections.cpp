// Where an earlier room of the core must call a later one, it calls through a pointer that is
// filled here; those to the window are filled by the window. In the window, points that stay empty
// belong to capabilities that the program doesn't have yet. Each is optional where it is called.
#include "session/connections.h"

#include "lines/chart_lines.h"
#include "map/map_document.h"
#include "map/plot.h"
#include "map/view_ring.h"
#include "session/commands.h"
#include "session/driver.h"
#include "session/mouse_modes.h"
#include "session/recent_maps.h"
#include "session/save_chart.h"
#include "session/session_state.h"
#include "session/settings.h"

namespace orvantis {

namespace {

void PlotScreenAnew() {
    if (session.picture != nullptr) PlotMap4(kFalse, *session.picture, kTrue);
}

void PlotScreenLines() {
    if (session.picture != nullptr) PlotMap4(kFalse, *session.picture, kFalse);
}

void SetCaption() {
    session.shell->SetTitle(Caption());
}

}  // namespace

void ConnectRooms() {
    plotAfterSettings = PlotScreenAnew;   // new settings
    plotFull = PlotScreenAnew;            // a new map
    plotQuick = PlotScreenLines;          // a view's picture put back
    addRecentMap = AddRecentMap;          // a map that was opened
    plotAnew = PlotScreenAnew;            // commands that end in a full plot
    plotLinesAnew = PlotScreenLines;      // commands that end in a quick pass
    plotChartLines = PlotChartLines;      // the lines, at the end of every plot
    plotMouseMarks = DrawMouseMarks;      // rulers, at the end of the plot of a flat map
    pageHeading = ChartDescription;       // the title line of a printed page
    refreshCaption = SetCaption;          // the title of the main window
    saveCurrentChart = SaveChart;         // an unsaved chart at the session's end, and its command
    stopForeignClock = StopForeignClock;  // a clock whose chart is gone, at every plot
}

}  // namespace orvantis

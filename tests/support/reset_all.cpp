#include "support/reset_all.h"

#include "charts/CALCCHRT.h"
#include "charts/KVCharts.h"
#include "charts/QXASTRO.h"
#include "charts/SwissEph.h"
#include "charts/chart_lists.h"
#include "charts/ephemeris_tables.h"
#include "charts/exchange.h"
#include "lines/chart_lines.h"
#include "lines/near_lines.h"
#include "map/map_document.h"
#include "map/map_menus.h"
#include "map/plot.h"
#include "map/point_database.h"
#include "map/projection.h"
#include "map/view_ring.h"
#include "session/commands.h"
#include "session/display_dialogs.h"
#include "session/driver.h"
#include "session/files.h"
#include "session/ini_settings.h"
#include "session/map_dialogs.h"
#include "session/mouse_modes.h"
#include "session/recent_maps.h"
#include "session/resources.h"
#include "session/save_settings.h"
#include "session/session_state.h"
#include "session/settings.h"
#include "text/run_time_error.h"
#include "text/text_state.h"
#include "text/zones.h"

namespace orvantis {

namespace {

ScriptedShell shell;

}  // namespace

void ResetAll() {
    CloseEphemerisTables();
    CloseAllFiles();
    RunTimeError ignored;
    TakeRunTimeError(ignored);

    textState = {};
    zones = {};
    session = {};
    settings = {};
    options = {};
    pointSelection = {};
    pointColour = {};
    chartWords = {};
    ReleaseResourceLibrary();
    plotAfterSettings = nullptr;
    refreshMenuMarks = nullptr;

    pointDatabase = {};
    mapState = {};
    mapView = {};
    plotState = {};
    mapMenus = {};
    plotQuick = nullptr;
    printState = {};
    refreshMapMenus = nullptr;
    addRecentMap = nullptr;
    plotFull = nullptr;
    stopForeignClock = nullptr;
    plotChartLines = nullptr;
    plotCountryNames = nullptr;
    plotCities = nullptr;
    plotMouseMarks = nullptr;
    pageHeading = nullptr;
    pageLines = nullptr;
    plotEnded = nullptr;

    currentChartFileType = chart_file::kFormat0;
    openChartLists = {};
    loadComments = kTrue;
    calcChart = {};
    chartNotes = {};
    chartNow = {};
    swissState = {};

    chartLines = {};
    placedLines = {};
    refreshCaption = nullptr;
    plotEclipseLines = nullptr;
    starLabel = nullptr;

    mouseState = {};
    refreshOverlay = nullptr;
    identifyLine = nullptr;
    relocateChart = nullptr;
    movePointer = nullptr;

    closeMainWindow = nullptr;
    enterNewChart = nullptr;
    openSubsidiaryChart = nullptr;
    viewChart = nullptr;
    relocateToPlace = nullptr;
    openPrintDialog = nullptr;
    editCities = nullptr;
    editCountries = nullptr;
    loadStarFile = nullptr;
    selectEclipse = nullptr;
    openReport = nullptr;
    openDumpForm = nullptr;
    openHelp = nullptr;
    useAcsAtlas = nullptr;
    showSaveSettingsForm = nullptr;
    showRecentMaps = nullptr;
    plotAnew = nullptr;
    plotLinesAnew = nullptr;
    switchAstroClock = nullptr;
    saveCurrentChart = nullptr;
    showLinesForm = nullptr;
    showPrefsForm = nullptr;
    showPointsForm = nullptr;
    showPointColoursForm = nullptr;
    showZodiacStartForm = nullptr;
    showPaletteForm = nullptr;
    showMapOptionsForm = nullptr;
    showSaveMapForm = nullptr;
    saveStoredImage = nullptr;
    loadStoredImage = nullptr;

    shell = {};
    session.shell = &shell;
    textState.shell = &shell;
}

ScriptedShell& TestShell() {
    return shell;
}

}  // namespace orvantis

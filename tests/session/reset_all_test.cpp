// Every test starts from ResetAll: it has to put back each field of each process-wide record. The
// fields of the records are listed here by structured bindings, so that a new field which isn't
// listed doesn't compile.
#include "support/reset_all.h"

#include <concepts>
#include <gtest/gtest.h>
#include <tuple>

#include "charts/CALCCHRT.h"
#include "charts/KVCharts.h"
#include "charts/QXASTRO.h"
#include "charts/SwissEph.h"
#include "charts/chart_lists.h"
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
#include "support/recording_surface.h"
#include "support/temp_folder.h"
#include "text/run_time_error.h"
#include "text/text_state.h"
#include "text/zones.h"

namespace orvantis {
namespace {

// The fields of a record, constant or not, as a tuple of references.
#define ORVANTIS_FIELDS(Record, ...)                      \
    template <typename R>                                 \
    requires std::same_as<std::remove_const_t<R>, Record> \
    auto Fields(R& record) {                              \
        auto& [__VA_ARGS__] = record;                     \
        return std::tie(__VA_ARGS__);                     \
    }

ORVANTIS_FIELDS(Image, a, b, c)
ORVANTIS_FIELDS(SessionState, f1, f2, f3, f4, f5, f6, f7, f8, f9, f10, f11, f12, f13, f14, f15, f16,
                f17, f18, f19, f20, f21, f22, f23, f24, f25, f26, f27, f28, f29, f30)
ORVANTIS_FIELDS(LineStyle, a, b, c, d, e, f)
ORVANTIS_FIELDS(Settings, a, b, c, d, e, f, g, h, i)
ORVANTIS_FIELDS(Options, f1, f2, f3, f4, f5, f6, f7, f8, f9, f10, f11, f12, f13, f14, f15, f16, f17,
                f18, f19, f20, f21, f22, f23, f24, f25, f26, f27, f28, f29, f30, f31, f32, f33, f34)
ORVANTIS_FIELDS(ChartWords, a, b, c)
ORVANTIS_FIELDS(TextState, a, b, c, d)
ORVANTIS_FIELDS(ZoneTable, a, b, c, d)
ORVANTIS_FIELDS(LineIndexEntry, a, b, c, d, e, f, g)
ORVANTIS_FIELDS(ClassRow, a, b)
ORVANTIS_FIELDS(PointDatabase, a, b, c)
ORVANTIS_FIELDS(MapDocument, a, b, c, d, e, f, g, h, i, j, k, l, m, n)
ORVANTIS_FIELDS(FillRecord, a, b, c)
ORVANTIS_FIELDS(MapState, a, b, c, d, e, f, g)
ORVANTIS_FIELDS(MapMenus, a, b, c, d, e)
ORVANTIS_FIELDS(MapRect, a, b, c, d)
ORVANTIS_FIELDS(ViewExtent, a, b, c, d, e, f, g, h, i, j, k, l, m, n, o, p, q, r, s, t, u, v)
ORVANTIS_FIELDS(EdgeMark, a, b, c, d, e)
ORVANTIS_FIELDS(MapView, a, b, c, d, e, f, g, h, i, j)
ORVANTIS_FIELDS(ClipCrossing, a, b, c, d)
ORVANTIS_FIELDS(PlotState, a, b, c, d, e, f, g, h, i, j, k, l, m, n, o)
ORVANTIS_FIELDS(PrintState, a, b, c)
ORVANTIS_FIELDS(ChartEvent, a, b, c, d, e, f, g, h, i, j, k, l, m, n)
ORVANTIS_FIELDS(FileChart, a, b, c, d, e, f, g, h, i, j, k, l, m, n, o, p, q, r, s)
ORVANTIS_FIELDS(ChartAttachment, a, b)
ORVANTIS_FIELDS(StoredChart, a, b, c)
ORVANTIS_FIELDS(ChartList, a, b, c, d, e, f, g, h)
ORVANTIS_FIELDS(CalcChart, a1, a2, a3, a4, a5, a6, a7, a8, a9, a10, a11, a12, a13, a14, a15, a16,
                a17, a18, a19, a20, a21, a22, a23, a24, a25, a26, a27, a28, a29, a30, a31, a32, a33,
                a34, a35, a36, a37, a38)
ORVANTIS_FIELDS(ChartNotes, a, b)
ORVANTIS_FIELDS(ChartNow, a, b, c, d, e, f, g, h)
ORVANTIS_FIELDS(SwissState, a, b, c, d, e, f, g)
ORVANTIS_FIELDS(LineLabel, a, b, c, d, e)
ORVANTIS_FIELDS(ChartLinesState, a, b, c, d)
ORVANTIS_FIELDS(LinePiece, a, b, c, d, e)
ORVANTIS_FIELDS(PlacedLines, a, b, c)
ORVANTIS_FIELDS(OverlayFigure, a, b, c, d, e)
ORVANTIS_FIELDS(RulerMark, a, b, c)
ORVANTIS_FIELDS(MouseState, a, b, c, d, e, f, g, h, i, j, k, l, m, n, o, p, q, r, s, t, u, v, w, x)

// Gives a value, down to its last field, another value than it has.
void Dirty(bool& value) {
    value = !value;
}
void Dirty(std::string& value) {
    value += "dirty";
}
template <typename T>
requires std::is_arithmetic_v<T>
void Dirty(T& value) {
    value = static_cast<T>(value + 1);
}
template <typename T>
requires std::is_enum_v<T>
void Dirty(T& value) {
    value = static_cast<T>(static_cast<int>(value) + 1);
}
template <typename T>
concept Compound = !std::is_arithmetic_v<T> && !std::is_enum_v<T>;
template <Compound T>
void Dirty(T& record);

template <typename T>
void Dirty(std::vector<T>& list) {
    for (T& element : list) Dirty(element);
    list.emplace_back();
}
template <typename T, std::size_t count>
void Dirty(std::array<T, count>& list) {
    for (T& element : list) Dirty(element);
}
template <typename Result, typename... Arguments>
void Dirty(Result (*&connection)(Arguments...)) {
    connection = [](Arguments...) { return Result(); };
}
void Dirty(Shell*& shell) {
    static ScriptedShell other;
    shell = &other;
}
void Dirty(DrawingSurface*& surface) {
    static RecordingSurface other(10, 10);
    surface = &other;
}
template <Compound T>
void Dirty(T& record) {
    std::apply([](auto&... field) { (Dirty(field), ...); }, Fields(record));
}

// Number of fields, down to the last one, in which two values differ.
template <typename T>
int Differences(const T& a, const T& b);

template <typename T>
int Differences(const std::vector<T>& a, const std::vector<T>& b) {
    if (a.size() != b.size()) return 1;
    int found = 0;
    for (std::size_t i = 0; i < a.size(); ++i) found += Differences(a[i], b[i]);
    return found;
}
template <typename T, std::size_t count>
int Differences(const std::array<T, count>& a, const std::array<T, count>& b) {
    int found = 0;
    for (std::size_t i = 0; i < count; ++i) found += Differences(a[i], b[i]);
    return found;
}
template <typename T, std::size_t... index>
int FieldDifferences(const T& a, const T& b, std::index_sequence<index...> /*unused*/) {
    return (Differences(std::get<index>(a), std::get<index>(b)) + ...);
}
template <typename T>
int Differences(const T& a, const T& b) {
    if constexpr (std::equality_comparable<T>) {
        return a == b ? 0 : 1;
    } else {
        const auto left = Fields(a);
        const auto right = Fields(b);
        constexpr std::size_t count = std::tuple_size_v<decltype(left)>;
        return FieldDifferences(left, right, std::make_index_sequence<count>());
    }
}

// One process-wide record: dirtied, reset, compared with a new one.
template <typename T>
void ExpectReset(T& record, const T& initial, const char* name) {
    ResetAll();
    EXPECT_EQ(Differences(record, initial), 0) << name << " before";
    Dirty(record);
    EXPECT_GT(Differences(record, initial), 0) << name << " dirtied";
    ResetAll();
    EXPECT_EQ(Differences(record, initial), 0) << name << " after";
}

TEST(ResetAll, EveryFieldOfEveryRecordGetsItsInitialValue) {
    SessionState freshSession;
    freshSession.shell = &TestShell();
    ExpectReset(session, freshSession, "session");
    TextState freshText;
    freshText.shell = &TestShell();
    ExpectReset(textState, freshText, "textState");
    ExpectReset(zones, {}, "zones");
    ExpectReset(settings, {}, "settings");
    ExpectReset(options, {}, "options");
    ExpectReset(pointSelection, {}, "pointSelection");
    ExpectReset(pointColour, {}, "pointColour");
    ExpectReset(chartWords, {}, "chartWords");
    ExpectReset(pointDatabase, {}, "pointDatabase");
    ExpectReset(mapState, {}, "mapState");
    ExpectReset(mapMenus, {}, "mapMenus");
    ExpectReset(mapView, {}, "mapView");
    ExpectReset(plotState, {}, "plotState");
    ExpectReset(printState, {}, "printState");
    ExpectReset(currentChartFileType, chart_file::kFormat0, "currentChartFileType");
    ExpectReset(openChartLists, {}, "openChartLists");
    ExpectReset(loadComments, kTrue, "loadComments");
    ExpectReset(calcChart, {}, "calcChart");
    ExpectReset(chartNotes, {}, "chartNotes");
    ExpectReset(chartNow, {}, "chartNow");
    ExpectReset(swissState, {}, "swissState");
    ExpectReset(chartLines, {}, "chartLines");
    ExpectReset(placedLines, {}, "placedLines");
    ExpectReset(mouseState, {}, "mouseState");
}

// The proof of the proof: a dirtied record differs in each of its fields.
TEST(ResetAll, ADirtiedRecordDiffersInEachOfItsFields) {
    Options dirtyOptions;
    Dirty(dirtyOptions);
    EXPECT_EQ(Differences(dirtyOptions, Options{}), 34);
    MapRect dirtyRect;
    Dirty(dirtyRect);
    EXPECT_EQ(Differences(dirtyRect, MapRect{}), 4);
    SessionState dirtySession;
    Dirty(dirtySession);
    EXPECT_EQ(Differences(dirtySession, SessionState{}), 35);  // two of them with several values
    ChartLinesState dirtyLines;
    Dirty(dirtyLines);
    EXPECT_EQ(Differences(dirtyLines, ChartLinesState{}), 4);
}

TEST(ResetAll, EveryConnectionPointIsEmptied) {
    const auto points = std::tie(
        plotAfterSettings, refreshMenuMarks, refreshMapMenus, addRecentMap, plotFull,
        stopForeignClock, plotChartLines, plotCountryNames, plotCities, plotMouseMarks, pageHeading,
        pageLines, plotEnded, refreshCaption, plotEclipseLines, starLabel, refreshOverlay,
        identifyLine, relocateChart, movePointer, closeMainWindow, enterNewChart,
        openSubsidiaryChart, viewChart, relocateToPlace, openPrintDialog, editCities, editCountries,
        loadStarFile, selectEclipse, openReport, openDumpForm, openHelp, useAcsAtlas, plotAnew,
        plotLinesAnew, plotQuick, showRecentMaps, switchAstroClock, saveCurrentChart,
        saveStoredImage, loadStoredImage, showLinesForm, showPrefsForm, showPointsForm,
        showPointColoursForm, showZodiacStartForm, showPaletteForm, showMapOptionsForm,
        showSaveMapForm, showSaveSettingsForm);
    const auto filled = [&] {
        return std::apply([](auto&... point) { return ((point != nullptr ? 1 : 0) + ...); },
                          points);
    };
    std::apply([](auto&... point) { (Dirty(point), ...); }, points);
    EXPECT_EQ(filled(), 51);
    ResetAll();
    EXPECT_EQ(filled(), 0);
}

TEST(ResetAll, TheShellIsNewAndTheSessions) {
    ResetAll();
    ScriptedShell& shell = TestShell();
    shell.boxAnswers = {BoxAnswer::No};
    shell.fileAnswers = {"a"};
    shell.colourAnswers = {1};
    shell.cancelCall = 3;
    shell.now.year = 1900;
    shell.MessageBox("t", "t", BoxButtons::Ok, BoxIcon::None);
    shell.onProgress = [](std::string_view, std::int16_t) {};
    shell.fitPicture = [](SurfaceSize) {};
    shell.ShowProgress("", 1);
    session.shell = nullptr;
    ResetAll();
    EXPECT_EQ(session.shell, &TestShell());
    EXPECT_TRUE(shell.boxAnswers.empty() && shell.fileAnswers.empty());
    EXPECT_TRUE(shell.colourAnswers.empty() && shell.log.empty() && shell.boxes.empty());
    EXPECT_EQ(shell.cancelCall + shell.questions + shell.progressCalls, 0);
    EXPECT_TRUE(shell.progress.empty() && !shell.onProgress && !shell.fitPicture);
    EXPECT_EQ(shell.now.year, 2000);
}

TEST(ResetAll, FilesAreClosedAndNoErrorStands) {
    ResetAll();
    const TempFolder folder;
    const FileHandle file = FileOpener(folder.Write("a", "bytes"), open_mode::kBinary, 0, kFalse);
    ASSERT_EQ(FileLength(file), 5);
    RaiseRunTimeError(error::kOverflow);
    ResetAll();
    EXPECT_EQ(FileLength(file), 0);
    EXPECT_EQ(PendingRunTimeError(), 0);
}

}  // namespace
}  // namespace orvantis

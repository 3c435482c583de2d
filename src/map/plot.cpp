// The plot in its two modes. Each step is a routine of its own, so that Retry can run just the one
// that failed.
#include "map/plot.h"

#include <algorithm>
#include <string>

#include "map/fills.h"
#include "map/map_document.h"
#include "session/files.h"
#include "session/session_state.h"
#include "session/settings.h"
#include "text/numbers.h"
#include "text/run_time_error.h"
#include "text/strings.h"

namespace orvantis {

PlotState plotState;
PrintState printState;

void (*stopForeignClock)() = nullptr;
void (*plotChartLines)(Flag printing, Flag fullPlot, std::int16_t slot) = nullptr;
void (*plotCountryNames)(bool capitals) = nullptr;
void (*plotCities)() = nullptr;
void (*plotMouseMarks)() = nullptr;
std::string (*pageHeading)() = nullptr;
std::string (*pageLines)() = nullptr;
void (*plotEnded)() = nullptr;

namespace {

constexpr Colour kBlack = 0;
constexpr Colour kWhite = 0xFFFFFF;
constexpr Colour kSurround = 0xC0C0C0;     // the window around the map
constexpr Colour kFrameShadow = 0x808080;  // left and top of the sunken frame
constexpr Colour kFrameLight = 0xFFFFFF;   // right and bottom

constexpr std::int32_t kLeastColourMode = 3;  // from which a page is printed in colour
constexpr std::int16_t kMainChart = 1;
constexpr std::size_t kCountryNames = 3;  // detail classes that stand for labels
constexpr std::size_t kCityNames = 8;

// One plot's arguments.
struct PlotJob {
    Flag printing = kFalse;
    Flag redraw = kFalse;
    bool again = false;  // the step has failed and is run again
};

bool OnScreen(const PlotJob& job) {
    return job.printing == kFalse;
}

bool DrawsMap(const PlotJob& job) {
    return job.redraw != kFalse || job.printing != kFalse;
}

void RefreshUnlessHeld() {
    if (options.holdRefresh == kFalse) mapView.surface->Refresh();
}

void SetOutlinePen() {
    mapView.surface->SetPen({LineWidth(1), LineDash::Solid, plotState.outlineColour});
}

// What a zoom found holds for the first view that is plotted after it, even if that plot comes to
// nothing.
void TieZoomToView(const PlotJob& job) {
    if (plotState.zoomTied || !DrawsMap(job)) return;
    const MapDocument& view = CurrentMap();
    plotState.zoomedView = {view.south, view.west, view.north, view.east};
    plotState.zoomTied = true;
}

void PutStoredImage(const PlotJob& job) {
    if (DrawsMap(job)) return;
    mapView.surface->PutImage(session.StoredImage);
    RefreshUnlessHeld();
}

// From here on the stored image is of no view until KeepImage. Its memory stays for that.
void ForgetImage() {
    plotState.imageLost = true;
    session.StoredImage.width = 0;
    session.StoredImage.height = 0;
}

void ClearPicture(const PlotJob& job) {
    mapView.surface->ClearClip();
    if (OnScreen(job) && job.redraw != kFalse) {
        ForgetImage();
        mapView.surface->Clear(PlainColour(LandColour()));
    }
    plotState.outlineColour = OutlineColour();
    SetOutlinePen();
}

void SetUpView(const PlotJob& job) {
    SetViewExtent();
    SetMapRect(job.printing != kFalse, *mapView.surface);
    if (!OnScreen(job)) DrawPageTitle();
    OpenMapFrame();
}

// Two shades one pixel outside the outline make the map look sunk into its surround.
void DrawSunkenFrame() {
    const MapRect& rect = mapView.rect;
    const int left = rect.left - 1;
    const int top = rect.top - 1;
    const int right = rect.left + rect.width + 1;
    const int bottom = rect.top + rect.height + 1;
    mapView.surface->SetPen({1, LineDash::Solid, kFrameShadow});
    mapView.surface->MoveTo(left, bottom);
    mapView.surface->LineTo(left, top);
    mapView.surface->LineTo(right, top);
    mapView.surface->SetPen({1, LineDash::Solid, kFrameLight});
    mapView.surface->MoveTo(right, top);
    mapView.surface->LineTo(right, bottom);
    mapView.surface->LineTo(left, bottom);
    SetOutlinePen();
}

// True if the stored image leaves nothing of the surface uncovered.
bool StoredImageCoversSurface() {
    const SurfaceSize size = mapView.surface->Size();
    return session.StoredImage.width >= size.width && session.StoredImage.height >= size.height;
}

// The surround is part of the stored image, so a quick pass has it already, unless the surface has
// grown since.
void DrawSurround(const PlotJob& job) {
    if (!OnScreen(job) || (job.redraw == kFalse && StoredImageCoversSurface())) return;
    mapView.surface->FloodFill(1, 1, kSurround, PlainColour(plotState.outlineColour));
    if (IsFlat(mapView.extent.projection)) DrawSunkenFrame();
}

void DrawVectors(const PlotJob& job) {
    ClipToMap();
    if (DrawsMap(job)) PlotVectors(job.printing);
}

void DrawFills(const PlotJob& job) {
    if (!OnScreen(job) || job.redraw == kFalse) return;
    ReplayFills();
    RefreshUnlessHeld();
}

void DrawGridAndLabels(const PlotJob& job) {
    if (!DrawsMap(job)) return;
    SetOutlinePen();
    DrawGrid();

    const MapDocument& document = CurrentMap();
    mapView.surface->SelectFont({settings.textFontName, settings.textFontSize,
                                 settings.textFontBold != kFalse,
                                 settings.textFontItalic != kFalse});
    const bool cityNames = document.hidden[kCityNames] == kFalse;
    if (document.hidden[kCountryNames] == kFalse && plotCountryNames != nullptr) {
        plotCountryNames(cityNames);
    }
    if (cityNames && !document.cityFile.empty() && plotCities != nullptr) plotCities();
    SelectGlyphFont(job.printing != kFalse);
}

void KeepImage(const PlotJob& job) {
    if (!OnScreen(job) || job.redraw == kFalse) return;
    mapView.surface->Refresh();
    mapView.surface->CopyImage(session.StoredImage);
    plotState.imageLost = false;
}

void DrawLines(const PlotJob& job) {
    if (job.again) {
        // Lines that came out before the failure are taken away, so that none is drawn twice; and
        // the lines' own end has let go of the clip.
        if (OnScreen(job)) mapView.surface->PutImage(session.StoredImage);
        ClipToMap();
    }
    if (plotChartLines != nullptr) plotChartLines(job.printing, kTrue, kMainChart);
    if (OnScreen(job)) mapView.surface->Refresh();
}

void DrawMarks(const PlotJob& /*job*/) {
    mapView.surface->ClearClip();
    CloseAllFiles();
    if (IsFlat(mapView.extent.projection) && plotMouseMarks != nullptr) plotMouseMarks();
}

// True if the user wants the failed step run again.
bool AskRetry(const RunTimeError& failure) {
    if (session.shell == nullptr) return false;
    std::string text = "An error occurred whilst plotting:";
    text.append(kCrLf).append(failure.description).append(kCrLf);
    return session.shell->MessageBox(text, "Orvantis", BoxButtons::RetryCancel,
                                     BoxIcon::Exclamation) == BoxAnswer::Retry;
}

// Runs the steps in their order. False if the user gave up on one that failed. Retry runs just that
// step again: each sets what it needs (pen, font, clip) or leaves it as it found it, and draws over
// what it has drawn.
bool RunSteps(PlotJob job) {
    using Step = void (*)(const PlotJob&);
    constexpr Step steps[] = {PutStoredImage, ClearPicture, SetUpView,         DrawSurround,
                              DrawVectors,    DrawFills,    DrawGridAndLabels, KeepImage,
                              DrawLines,      DrawMarks};
    for (const Step step : steps) {
        RunTimeError failure;
        job.again = false;
        for (step(job); TakeRunTimeError(failure); step(job)) {
            if (!AskRetry(failure)) return false;
            job.again = true;
        }
    }
    return true;
}

void SetPointer(Pointer pointer) {
    if (session.shell != nullptr) session.shell->SetPointer(pointer);
}

}  // namespace

Colour BlankColour() {
    return plotState.printing != kFalse ? kWhite : LandColour();
}

Colour OutlineColour() {
    return PlainColour(BlankColour()) == kBlack ? kWhite : kBlack;
}

Colour InkColour(Colour colour) {
    if (plotState.printing == kFalse) return colour;
    // A line in the paper's own colour would not be seen.
    const bool unseen = PlainColour(colour) == PlainColour(BlankColour());
    return printState.inColour == kFalse || unseen ? kBlack : colour;
}

Colour AreaColour(Colour colour) {
    return plotState.printing != kFalse && printState.inColour == kFalse ? kWhite : colour;
}

int LineWidth(int nominal) {
    if (plotState.printing == kFalse) return nominal;
    return std::max<int>(RoundToInt16(nominal * printState.lineWidthFactor), 1);
}

void PlotMap4(Flag printing, DrawingSurface& picture, Flag redraw) {
    if (plotState.inProgress) return;
    plotState.inProgress = true;
    SetPointer(Pointer::Hourglass);
    if (stopForeignClock != nullptr) stopForeignClock();
    plotState.interrupted = false;
    plotState.printing = printing;
    if (printing == kFalse) ++plotState.screenPlots;
    printState.inColour =
        printing != kFalse && printState.colourMode >= kLeastColourMode ? kTrue : kFalse;
    // A full plot that was given up left no image for a quick pass.
    if (plotState.imageLost && session.StoredImage.width == 0) redraw = kTrue;
    TieZoomToView({printing, redraw});
    const MapView viewBefore = printing != kFalse ? mapView : MapView{};
    const Colour outlineBefore = plotState.outlineColour;
    mapView.surface = &picture;
    RunTimeError stale;
    TakeRunTimeError(stale);  // what stood before belongs to others

    const Flag extraAnnotation = options.extraAnnotation;
    if (printing != kFalse) options.extraAnnotation = kTrue;
    plotState.interrupted = !RunSteps({printing, redraw});

    // The surface is left as it is found between plots, whatever became of this one: without a
    // clip, and in the glyph font, since a surface doesn't tell which font it had before.
    picture.ClearClip();
    SelectGlyphFont(false);
    options.extraAnnotation = extraAnnotation;
    plotState.printing = kFalse;
    printState.inColour = kFalse;
    if (printing != kFalse) {
        // Between plots the screen's map is asked about, not the page's.
        mapView = viewBefore;
        plotState.outlineColour = outlineBefore;
    }
    mapView.surface = nullptr;
    plotState.inProgress = false;
    SetPointer(Pointer::Default);
    if (plotEnded != nullptr) plotEnded();
}

}  // namespace orvantis

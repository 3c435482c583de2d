// The end of a session. See driver.h.
#include "charts/CALCCHRT.h"
#include "charts/SwissEph.h"
#include "map/map_document.h"
#include "session/driver.h"
#include "session/files.h"
#include "session/ini_settings.h"
#include "session/resources.h"
#include "session/session_state.h"
#include "session/settings.h"
#include "session/start_steps.h"
#include "text/run_time_error.h"
#include "text/strings.h"

namespace orvantis {

namespace {

// Names of point selection files up to this length are never written.
constexpr std::size_t kShortName = 11;
constexpr std::string_view kDefaultSelection = "ovdeflt.pts";

bool ChartIsUnsaved() {
    const CalcChart& chart = calcChart[1];
    return session.ChartNumber >= 1 && chart.Saved == 0 && session.AstroClockOn == 0 &&
           chart.NeverSaved == 0;
}

// True if the user chooses to stay, or the chart that was to be saved hasn't been.
bool UserStays() {
    if (!ChartIsUnsaved()) return false;
    std::string text = "The current chart has not been saved to a file.";
    text.append(kCrLf).append(kCrLf).append("Do you wish to save it?");
    switch (session.shell->MessageBox(text, "Chart Not Saved", BoxButtons::YesNoCancel,
                                      BoxIcon::Exclamation)) {
        case BoxAnswer::Cancel:
            return true;
        case BoxAnswer::Yes:
            if (saveCurrentChart != nullptr) saveCurrentChart();
            return calcChart[1].Saved == 0;
        default:
            return false;
    }
}

// The default selection is never overwritten.
void KeepPointSelection() {
    const std::string& path = session.PointFile;
    if (path.size() > kShortName && !path.ends_with(kDefaultSelection)) SavePointSelection(path);
}

// The map and its picture for the next start, or none: those of an earlier run are gone first. A
// full plot that was given up has left no picture.
void KeepStoredMap() {
    DeleteFile(StoredImagePath());
    DeleteFile(StoredMapPath());
    if (options.storeImages == 0) return;
    if (saveStoredImage != nullptr && session.StoredImage.width > 0) {
        saveStoredImage(StoredImagePath(), session.StoredImage);
    }
    SaveMap(StoredMapPath());
}

}  // namespace

void ExitSession(Flag& cancel) {
    cancel = UserStays() ? kTrue : kFalse;
    if (cancel != 0) return;

    // From here on a step that fails is passed over.
    session.shell->SetPointer(Pointer::Hourglass);
    WriteIniSettings();
    KeepPointSelection();
    KeepStoredMap();
    EndSession();
    session.shell->SetPointer(Pointer::Default);
}

void EndSession() {
    CloseSwissEphemeris();
    ReleaseResourceLibrary();
    CloseAllFiles();
    RunTimeError ignored;
    TakeRunTimeError(ignored);
}

}  // namespace orvantis

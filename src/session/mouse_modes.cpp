// The mouse on the map. Each mode is a routine for the drag and one for its end; what they do to
// the view goes through the ring of views. On a map whose file has edges that are no places,
// numbers fail in ways that nobody is to be told of, least of all by the command that comes next:
// every event drops the errors that it leaves behind.
#include "session/mouse_modes.h"

#include <algorithm>
#include <array>
#include <cmath>

#include "charts/CALCCHRT.h"
#include "lines/near_lines.h"
#include "map/fills.h"
#include "map/map_document.h"
#include "map/plot.h"
#include "map/projection.h"
#include "map/view_edges.h"
#include "map/view_ring.h"
#include "map/zoom_seeds.h"
#include "session/commands.h"
#include "session/rulers.h"
#include "session/session_state.h"
#include "session/settings.h"
#include "text/angles.h"
#include "text/coordinates.h"
#include "text/numbers.h"
#include "text/strings.h"

namespace orvantis {

MouseState mouseState;

void (*refreshOverlay)() = nullptr;
void (*identifyLine)(float x, float y) = nullptr;
void (*relocateChart)(double lat, double longitude) = nullptr;
void (*movePointer)(int dx, int dy) = nullptr;

namespace {

constexpr std::array<std::string_view, mouse_mode::kModes> kCaptions = {
    "Drag to Measure Distance", "Drag to Select Zoom Rectangle", "Drag to Move Map",
    "Click to Relocate Chart",  "Click to Fill with Color",      "Drag to Place Ruler"};

constexpr double kKmOfDegree = 111.32;     // of a great circle
constexpr double kMilesOfDegree = 69.173;  // statute miles
constexpr std::size_t kCountryNames = 3;   // detail classes that stand for labels
constexpr std::size_t kCityNames = 8;
constexpr std::int16_t kMainChart = 1;

struct Place {
    float lat = 0;  // degrees, north positive
    float longitude = 0;
};

// A rectangle of the map with its corners in order, pixels.
struct Box {
    float left = 0;
    float top = 0;
    float right = 0;
    float bottom = 0;
};

bool IsReady() {
    return session.StartupDone != 0 && session.shell != nullptr && !plotState.inProgress &&
           mapView.rect.width > 0 && mapView.rect.height > 0;
}

void Refresh() {
    if (refreshOverlay != nullptr) refreshOverlay();
}

BoxAnswer Tell(std::string_view text, std::string_view title, BoxButtons buttons, BoxIcon icon) {
    return session.shell->MessageBox(text, title, buttons, icon);
}

bool OnFlatMap() {
    return IsFlat(mapView.extent.projection);
}

Place PlaceAt(float x, float y) {
    Place place;
    UnprojectPoint(CurrentMap(), x, y, place.lat, place.longitude);
    return place;
}

std::string PlaceText(const Place& place) {
    return LatTextOfDegrees(place.lat) + " " + LongTextOfDegrees(place.longitude);
}

int Pixel(float value) {
    return static_cast<int>(std::lround(value));
}

// ---- position report ----

// "" between ends that are no places.
std::string DistanceText() {
    const Place from = PlaceAt(mouseState.dragStartX, mouseState.dragStartY);
    const Place to = PlaceAt(mouseState.dragEndX, mouseState.dragEndY);
    const double degrees = AngularDistance(from.longitude, from.lat, to.longitude, to.lat);
    if (!std::isfinite(degrees)) return "";
    return std::to_string(static_cast<int>(degrees * kKmOfDegree)) + "km " +
           std::to_string(static_cast<int>(degrees * kMilesOfDegree)) + "mi  " +
           FormatAngle(degrees, angle_style::kPlain, 1, kTrue, kTrue, kFalse, kFalse);
}

// What the active mode has to say during its drag.
std::string ModeText() {
    if (mouseState.mode == mouse_mode::kMeasure && mouseState.dragStartX != -1) {
        return DistanceText();
    }
    if (mouseState.mode == mouse_mode::kRuler && mouseState.rulerActive != 0) return RulerText();
    return "";
}

// The columns of the field stay where they are: latitude and longitude have fixed widths.
std::string PositionText(float x, float y, bool leftHeld) {
    if (!IsOnMap(x, y)) return "";
    const Place place = PlaceAt(x, y);
    const std::string lat = LatTextOfDegrees(place.lat);
    const std::string longitude = LongTextOfDegrees(place.longitude);
    if (lat.empty() || longitude.empty()) return "";
    std::string text = lat + std::string(8, ' ') + longitude + std::string(19, ' ');
    if (leftHeld) text += ModeText();
    return text;
}

void Report(float x, float y, bool leftHeld, bool rightHeld) {
    if (x == 0 || y == 0) return;  // where a window's edge reports what lies outside
    if (rightHeld && IsOnMap(x, y) && session.ChartNumber >= 1) {
        const Place place = PlaceAt(x, y);
        mouseState.positionText = DisplayAscMC(place.lat, place.longitude);
    } else {
        mouseState.positionText = PositionText(x, y, leftHeld);
    }
}

// ---- drags ----

void EndDrag() {
    mouseState.dragStartX = -1;
    mouseState.rulerActive = kFalse;
    mouseState.drag.clear();
}

void AddFigure(OverlayFigure::Kind kind) {
    mouseState.drag.push_back({kind, Pixel(mouseState.dragStartX), Pixel(mouseState.dragStartY),
                               Pixel(mouseState.dragEndX), Pixel(mouseState.dragEndY)});
}

// Brings the end of a drag onto the map. Beyond the edge of a globe there is no nearest place that
// a user would expect: the drag then stays where it was.
bool HoldOnMap(float& x, float& y) {
    if (!OnFlatMap()) return IsOnMap(x, y);
    const MapRect& rect = mapView.rect;
    x = std::clamp<float>(x, rect.left, static_cast<float>(rect.left + rect.width));
    y = std::clamp<float>(y, rect.top, static_cast<float>(rect.top + rect.height));
    return true;
}

// The corner opposite to the drag's start. On a flat map the rectangle has the map's proportions,
// its height following from its width, and is no larger than there is room for on the map.
void TakeZoomCorner(float x, float y) {
    MouseState& mouse = mouseState;
    mouse.dragEndX = x;
    mouse.dragEndY = y;
    if (!OnFlatMap()) return;
    const MapRect& rect = mapView.rect;
    const bool upward = y < mouse.dragStartY;
    const float room =
        upward ? mouse.dragStartY - rect.top : rect.top + rect.height - mouse.dragStartY;
    const float proportion = static_cast<float>(rect.height) / rect.width;
    const float width = std::min(std::abs(x - mouse.dragStartX), room / proportion);
    const float height = width * proportion;
    mouse.dragEndX = x < mouse.dragStartX ? mouse.dragStartX - width : mouse.dragStartX + width;
    mouse.dragEndY = upward ? mouse.dragStartY - height : mouse.dragStartY + height;
}

// Edges of the view that a drag of the map leads to. A click brings the place to the middle.
ViewEdges MovedEdges(const Place& from, const Place& to, bool isClick) {
    const ViewExtent& view = mapView.extent;
    if (isClick) return EdgesAbout(from.lat, from.longitude);
    return EdgesAbout(static_cast<double>(view.centreLat) + from.lat - to.lat,
                      static_cast<double>(view.centreLong) + from.longitude - to.longitude);
}

// The map follows the pointer as far as the view will: up and down it is held between the poles.
void ShowMove() {
    MouseState& mouse = mouseState;
    if (!OnFlatMap()) {
        AddFigure(OverlayFigure::Kind::InvertedLine);
        return;
    }
    AddFigure(OverlayFigure::Kind::MovedMap);
    if (mapView.extent.projection != projection::kCartesian) return;
    const ViewEdges edges = MovedEdges(PlaceAt(mouse.dragStartX, mouse.dragStartY),
                                       PlaceAt(mouse.dragEndX, mouse.dragEndY), false);
    // A file's edges may be anything: beyond its own height the map is out of sight.
    const double height = mapView.rect.height;
    const double down = (static_cast<double>(edges.north) - mapView.extent.northDeg) * height /
                        mapView.extent.spanLat;
    const double seen = std::isnan(down) ? 0 : std::clamp(down, -height, height);
    mouse.drag.back().y1 = mouse.drag.back().y0 + static_cast<int>(std::lround(seen));
}

// A plot in the middle of a drag, such as that of a window of another size, moves the places under
// the pointer: the drag means nothing any longer.
void GiveUpStaleDrag() {
    if (DragInProgress() && mouseState.dragPlot != plotState.screenPlots) EndDrag();
}

void DragTo(float x, float y) {
    MouseState& mouse = mouseState;
    GiveUpStaleDrag();
    if (mouse.rulerActive != 0) return MoveRuler(x, y);
    if (mouse.dragStartX == -1) return;
    if (mouse.mode > mouse_mode::kMove || !HoldOnMap(x, y)) return;
    if (x == mouse.pointerX && y == mouse.pointerY) return;
    mouse.dragEndX = mouse.pointerX = x;
    mouse.dragEndY = mouse.pointerY = y;
    mouse.drag.clear();
    switch (mouse.mode) {
        case mouse_mode::kMeasure:
            AddFigure(OverlayFigure::Kind::Cross);
            AddFigure(OverlayFigure::Kind::InvertedLine);
            break;
        case mouse_mode::kZoom:
            TakeZoomCorner(x, y);
            AddFigure(OverlayFigure::Kind::ZoomRectangle);
            break;
        default:
            ShowMove();
            break;
    }
}

// ---- what a button up does ----

// Of the pointer: the corner of a rectangle that has no room may lie where the drag began.
bool IsClick(const MouseState& drag) {
    return drag.dragStartX == drag.pointerX && drag.dragStartY == drag.pointerY;
}

void EndMove(const MouseState& drag) {
    const Place from = PlaceAt(drag.dragStartX, drag.dragStartY);
    const Place to = PlaceAt(drag.dragEndX, drag.dragEndY);
    const bool click = IsClick(drag);
    const ViewEdges edges = MovedEdges(from, to, click);
    PushMovedView(edges, click ? "Centre " + PlaceText(from) : AreaTitle(edges));
}

// Takes the colours along a zoom rectangle's edge off the picture, as fills of the current view.
void TakeSeeds(const Box& box) {
    if (session.picture == nullptr) return;
    SeedsFromZoom(mapState.current, *session.picture, RoundToInt16(box.left), RoundToInt16(box.top),
                  RoundToInt16(box.right), RoundToInt16(box.bottom));
}

// Pushes a zoom whose seeds were taken. They are fills of the new view alone: the one that is left
// has as many as it had.
void PushSeeded(const ViewEdges& edges, std::string_view title, std::int16_t fillsBefore) {
    const auto left = static_cast<std::size_t>(mapState.current);
    PushView(edges, title);
    mapState.documents[left].fillCount = fillsBefore;
}

void PushZoom(const Box& box, const ViewEdges& edges, std::string_view title) {
    const std::int16_t fills = CurrentMap().fillCount;
    TakeSeeds(box);
    PushSeeded(edges, title, fills);
}

void TellTooNarrow(double width) {
    std::string text =
        "You cannot zoom in to an area less than 1 degree of longitude (60 mins) width.";
    text.append(kCrLf).append(kCrLf).append("The area you selected is ");
    text.append(std::to_string(RoundToInt16(width * 60)));
    text.append(" mins wide. This has been expanded to the minimum allowable width.");
    Tell(text, "Orvantis", BoxButtons::Ok, BoxIcon::Exclamation);
}

void TellTooWide(double width) {
    std::string text = "You cannot zoom in to an area greater than 240 degrees of longitude width.";
    text.append(kCrLf).append(kCrLf).append("The area you have selected is ");
    text.append(std::to_string(RoundToInt16(width)));
    text.append(" degs wide. Please select a smaller area to zoom to.");
    Tell(text, "Orvantis", BoxButtons::Ok, BoxIcon::Exclamation);
}

// A degree of longitude about the box's middle, in the map's proportions.
Box NarrowestBox(const Box& box) {
    const float half = 0.5F * kNarrowestView / mapView.extent.spanLong;
    const float x = (box.left + box.right) / 2;
    const float y = (box.top + box.bottom) / 2;
    return {x - half * mapView.rect.width, y - half * mapView.rect.height,
            x + half * mapView.rect.width, y + half * mapView.rect.height};
}

void EndZoom(const MouseState& drag) {
    if (IsClick(drag)) return EndMove(drag);
    Box box{std::min(drag.dragStartX, drag.dragEndX), std::min(drag.dragStartY, drag.dragEndY),
            std::max(drag.dragStartX, drag.dragEndX), std::max(drag.dragStartY, drag.dragEndY)};
    if (!OnFlatMap()) {
        // A globe shows its half of the world whatever the rectangle.
        const Place middle = PlaceAt((box.left + box.right) / 2, (box.top + box.bottom) / 2);
        return PushZoom(box, EdgesAbout(middle.lat, middle.longitude),
                        "Centre " + PlaceText(middle));
    }

    const Place northWest = PlaceAt(box.left, box.top);
    const Place southEast = PlaceAt(box.right, box.bottom);
    double width = Modulo(static_cast<double>(southEast.longitude) - northWest.longitude, 360);
    // From edge to edge of the world the same meridian bounds it on both sides.
    if (width == 0 && 2 * (box.right - box.left) > mapView.rect.width) width = 360;
    if (width >= kWidestView) return TellTooWide(width);
    ViewEdges edges{southEast.lat, northWest.longitude, northWest.lat, southEast.longitude};
    const bool narrow = width < kNarrowestView;
    if (narrow) box = NarrowestBox(box);
    // A box without a height of its own gets the least one.
    if (narrow || edges.north - edges.south < kLowestView) {
        edges = EdgesOfBox(box.left, box.top, box.right, box.bottom);
    }
    // The box comes last: under it the map may be plotted anew, in another size.
    const std::int16_t fills = CurrentMap().fillCount;
    TakeSeeds(box);
    if (narrow) TellTooNarrow(width);
    PushSeeded(edges, AreaTitle(edges), fills);
}

void Relocate(const MouseState& drag) {
    if (relocateChart == nullptr) return;
    if (session.ChartNumber < 1) {
        Tell("Cannot relocate chart because no chart is currently selected.", "Cannot Relocate",
             BoxButtons::Ok, BoxIcon::Exclamation);
        return;
    }
    if (!IsOnMap(drag.dragStartX, drag.dragStartY)) return;
    const Place place = PlaceAt(drag.dragStartX, drag.dragStartY);
    const std::string question =
        "Do you wish to relocate the current chart to " + PlaceText(place) + "?";
    if (Tell(question, "Confirm Relocation", BoxButtons::YesNo, BoxIcon::Question) !=
        BoxAnswer::Yes) {
        return;
    }
    relocateChart(place.lat, place.longitude);
    if (plotQuick != nullptr) plotQuick();
}

// Lines and names on the picture would bound a fill made at once.
bool PictureHasMore() {
    const MapDocument& map = CurrentMap();
    return session.ChartNumber >= 1 || session.EclipseNumber != 0 ||
           map.hidden[kCityNames] == kFalse || map.hidden[kCountryNames] == kFalse;
}

bool WantsToFill() {
    std::string text =
        "Filling with color whilst there is a chart or eclipse currently shown, or city or country "
        "names are displayed, requires that the map be redrawn after each fill.";
    text.append(kCrLf).append(kCrLf).append(
        "If you wish to avoid the map being redrawn after each fill, then you must clear any "
        "charts or eclipse and turn off city and country names.");
    text.append(kCrLf).append(kCrLf).append("Do you still wish to fill?");
    return Tell(text, "Orvantis", BoxButtons::OkCancel, BoxIcon::Question) == BoxAnswer::Ok;
}

// Floods the picture outside of a plot, within the map.
void FillAtOnce(float x, float y, Colour colour) {
    DrawingSurface& picture = *session.picture;
    mapView.surface = &picture;
    ClipToMap();
    FloodAt(RoundToInt16(x), RoundToInt16(y), colour);
    picture.ClearClip();
    mapView.surface = nullptr;
}

void Fill(const MouseState& drag) {
    const float x = drag.dragStartX;
    const float y = drag.dragStartY;
    // The place is found before the question, under which the map may be plotted anew.
    const bool onMap = IsOnMap(x, y);
    const Place place = PlaceAt(x, y);
    const bool redraw = PictureHasMore();
    if (redraw && !WantsToFill()) return;
    if (!onMap || session.picture == nullptr) return;
    const bool isSea = drag.seaFill != 0;
    const std::int16_t before = CurrentMap().fillCount;
    AddFill(mapState.current, place.lat, place.longitude, isSea, drag.specialColour);
    if (CurrentMap().fillCount == before) return;  // a full list: the next plot would not know it
    if (drag.dragPlot == plotState.screenPlots) {
        FillAtOnce(x, y, isSea ? SeaColour() : drag.specialColour);
    }

    // The grid, too, bounds a fill made at once; a plot fills before it draws the grid. And the
    // picture of a plot that was given up is no map that could be kept.
    if (redraw || CurrentMap().gridOn != 0 || plotState.imageLost) {
        if (plotFull != nullptr) plotFull();
        return;
    }
    // The picture is the bare map: the quick pass is to find the fill on it.
    session.picture->CopyImage(session.StoredImage);
    session.picture->Refresh();
}

// ---- the last click ----

void KeepClick(float x, float y, bool onMap) {
    mouseState.clickX = onMap ? x : -1;
    mouseState.clickY = y;
    mouseState.clickPlot = plotState.screenPlots;
    if (!onMap) return;
    const Place place = PlaceAt(x, y);
    mouseState.clickLat = place.lat;
    mouseState.clickLong = place.longitude;
}

// Where the place of the last click lies now: the click itself may have brought another view. A
// position on the map without a click there before it stays. False if the map doesn't show the
// place.
bool FindLastClick(float& x, float& y) {
    const MouseState& mouse = mouseState;
    if (mouse.clickX == -1) return IsOnMap(x, y);
    if (mouse.clickPlot == plotState.screenPlots) {
        x = mouse.clickX;
        y = mouse.clickY;
        return true;
    }
    const ViewExtent& view = mapView.extent;
    if (OnFlatMap()) {
        double column = 0;
        double row = 0;
        PlaceOnFlatMap(mouse.clickLat, mouse.clickLong, column, row);
        x = static_cast<float>(column);
        y = static_cast<float>(row);
    } else {
        if (!PointInView(mouse.clickLat, mouse.clickLong, view.southMin, view.northMin,
                         view.westMin, view.eastMin)) {
            return false;
        }
        std::int16_t column = 0;
        std::int16_t row = 0;
        ProjectPoint(RoundToInt16(mouse.clickLat * 60.0), RoundToInt16(mouse.clickLong * 60.0), row,
                     column);
        x = column;
        y = row;
    }
    return IsOnMap(x, y);
}

void NameLines(float x, float y) {
    if (identifyLine != nullptr) return identifyLine(x, y);
    const std::string names = LinesNear(x, y);
    if (!names.empty()) Tell(names, "Lines", BoxButtons::Ok, BoxIcon::None);
}

void EndMode(const MouseState& drag) {
    switch (drag.mode) {
        case mouse_mode::kZoom:
            return EndZoom(drag);
        case mouse_mode::kMove:
            return EndMove(drag);
        case mouse_mode::kRelocate:
            return Relocate(drag);
        case mouse_mode::kFill:
            return Fill(drag);
        default:
            return;  // a measured distance was told during the drag
    }
}

// A button down on the map, in the mode that is on.
void StartDrag(float x, float y) {
    MouseState& mouse = mouseState;
    EndDrag();
    const bool onMap = IsOnMap(x, y);
    KeepClick(x, y, onMap);
    mouse.dragPlot = plotState.screenPlots;
    mouse.pointerX = x;
    mouse.pointerY = y;
    if (mouse.mode == mouse_mode::kRuler) {
        SeizeRuler(x, y);
    } else if (onMap || mouse.mode > mouse_mode::kMove) {
        mouse.dragStartX = mouse.dragEndX = x;
        mouse.dragStartY = mouse.dragEndY = y;
    }
}

}  // namespace

std::string_view MouseModeCaption(std::int16_t mode) {
    return mode >= 0 && mode < mouse_mode::kModes ? kCaptions[static_cast<std::size_t>(mode)] : "";
}

void SetMouseMode(std::int16_t mode) {
    if (mode < 0 || mode >= mouse_mode::kModes) return;
    EndDrag();
    mouseState.mode = mode;
    const bool moves = mode == mouse_mode::kMove || mode == mouse_mode::kRelocate;
    if (session.shell != nullptr) session.shell->SetPointer(moves ? Pointer::Move : Pointer::Cross);
    Refresh();
}

void MouseDown(float x, float y, bool right) {
    mouseState.dragMark = kTrue;
    if (!IsReady()) return;
    const ErrorsDropped dropped;
    if (right) {
        Report(x, y, false, true);
    } else {
        StartDrag(x, y);
    }
    Refresh();
}

void MouseMove(float x, float y, bool leftHeld, bool rightHeld) {
    mouseState.dragMark = leftHeld || rightHeld ? kTrue : kFalse;
    if (!IsReady()) return;
    const ErrorsDropped dropped;
    if (leftHeld) {
        DragTo(x, y);
    } else {
        EndDrag();  // the button went up where nobody told us
    }
    Report(x, y, leftHeld, rightHeld);
    Refresh();
}

void MouseUp(float x, float y, bool right) {
    mouseState.dragMark = kFalse;
    if (!IsReady()) return CancelDrag();
    if (right || !DragInProgress()) return;
    const ErrorsDropped dropped;
    DragTo(x, y);
    if (!DragInProgress()) return Refresh();
    if (mouseState.rulerActive != 0) PlaceRuler();
    const MouseState drag = mouseState;
    EndDrag();
    Refresh();
    if (drag.rulerActive != 0) return;
    BeginCommand();
    EndMode(drag);
    EndCommand();
}

void MouseLeave() {
    mouseState.positionText.clear();
    Refresh();
}

void MouseDoubleClick(float x, float y) {
    if (!IsReady()) return;
    const ErrorsDropped dropped;
    if (!FindLastClick(x, y)) return;
    BeginCommand();
    NameLines(x, y);
    EndCommand();
}

void CancelDrag() {
    EndDrag();
    Refresh();
}

bool DragInProgress() {
    return mouseState.dragStartX != -1 || mouseState.rulerActive != 0;
}

void PageUpKey() {
    if (!IsReady() || DragInProgress() || mouseState.mode != mouse_mode::kZoom) return;
    if (CurrentMap().projection == projection::kCartesian) ZoomOut();
}

void ArrowKey(int directionX, int directionY, bool shift) {
    constexpr int kFarStep = 10;
    const int step = shift ? kFarStep : 1;
    if (movePointer != nullptr) movePointer(directionX * step, directionY * step);
}

void WheelZoom(float x, float y, int steps) {
    if (!IsReady() || DragInProgress() || !IsOnMap(x, y)) return;
    const ErrorsDropped dropped;
    ViewEdges edges;
    if (!ScaledEdges(x, y, steps, edges)) return;
    if (steps < 0) return PushMovedView(edges, AreaTitle(edges));
    const double part =
        Modulo(static_cast<double>(edges.east) - edges.west, 360) / mapView.extent.spanLong;
    const MapRect& rect = mapView.rect;
    PushZoom({static_cast<float>(x - (x - rect.left) * part),
              static_cast<float>(y - (y - rect.top) * part),
              static_cast<float>(x + (rect.left + rect.width - x) * part),
              static_cast<float>(y + (rect.top + rect.height - y) * part)},
             edges, AreaTitle(edges));
}

std::string DisplayAscMC(float lat, float longitude) {
    if (session.ChartNumber < 1) return "";
    double ascendant = 0;
    double midheaven = 0;
    AnglesAtPlace(kMainChart, lat, -static_cast<double>(longitude), ascendant, midheaven);
    const auto text = [](double angle) {
        return FormatAngle(angle, angle_style::kSignName, 2, kFalse, kTrue, kFalse, kFalse);
    };
    return "MC=" + text(midheaven) + " Asc=" + text(ascendant);
}

std::string LinesNear(float x, float y) {
    std::string text;
    if (!IsReady()) return text;
    const ErrorsDropped dropped;
    for (const std::string& name : NamesNear(x, y)) {
        if (!text.empty()) text.append(kCrLf);
        text.append(name);
    }
    return text;
}

std::vector<OverlayFigure> Overlay() {
    const ErrorsDropped dropped;
    std::vector<OverlayFigure> figures = RulerFigures();
    figures.insert(figures.end(), mouseState.drag.begin(), mouseState.drag.end());
    return figures;
}

}  // namespace orvantis

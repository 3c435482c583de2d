// The map area with real events of Qt, on the offscreen platform.
#include "desktop/map_widget.h"

#include <QCoreApplication>
#include <QCursor>
#include <QHelpEvent>
#include <QImage>
#include <QProcess>
#include <QTest>
#include <QToolTip>
#include <QWheelEvent>
#include <gtest/gtest.h>

#include "charts/CALCCHRT.h"
#include "lines/near_lines.h"
#include "map/map_document.h"
#include "map/plot.h"
#include "map/projection.h"
#include "map/view_ring.h"
#include "session/session_state.h"
#include "session/settings.h"
#include "surface/null_shell.h"
#include "text/coordinates.h"
#include "text/numbers.h"

namespace orvantis {
namespace {

// Keeps the boxes it is asked to show.
class BoxShell : public NullShell {
  public:
    BoxAnswer MessageBox(std::string_view text, std::string_view title, BoxButtons buttons,
                         BoxIcon icon) override {
        boxes.push_back(std::string(title) + ": " + std::string(text));
        return NullShell::MessageBox(text, title, buttons, icon);
    }
    std::vector<std::string> boxes;
};

int plots = 0;

class MapWidgetTest : public ::testing::Test {
  protected:
    void SetUp() override {
        Reset();
        session.shell = &shell;
        session.picture = &map.Surface();
        plots = 0;
        plotFull = [] {
            ++plots;
            PlotMap4(kFalse, *session.picture, kTrue);
        };
        map.resize(500, 320);
        map.show();
        map.FitPicture();
        // No database: the map is its outline and its land.
        SetViewExtent();
        SetMapRect(false, map.Surface());
        mapView.surface = nullptr;
        map.Surface().Clear(0x808080);
        session.StartupDone = kTrue;
        QCoreApplication::processEvents();
    }
    void TearDown() override {
        plotFull = nullptr;
        Reset();
    }
    static void Reset() {
        session = {};
        mapState = {};
        mapView = {};
        plotState = {};
        mouseState = {};
        placedLines = {};
        calcChart = {};
        settings = {};
        pointSelection = {};
    }

    // Where a place lies on the widget, on a map of the whole world.
    QPoint At(double lat, double longitude) {
        const MapRect& rect = mapView.rect;
        return {static_cast<int>(rect.left + (longitude + 180) / 360 * rect.width),
                static_cast<int>(rect.top + (90 - lat) / 180 * rect.height)};
    }
    void Drag(const QPoint& from, const QPoint& to) {
        QTest::mousePress(&map, Qt::LeftButton, Qt::NoModifier, from);
        Move(to, Qt::LeftButton);
    }
    void Release(const QPoint& at) {
        QTest::mouseRelease(&map, Qt::LeftButton, Qt::NoModifier, at);
    }
    void Move(const QPoint& to, Qt::MouseButtons held) {
        QMouseEvent event(QEvent::MouseMove, to, map.mapToGlobal(to), Qt::NoButton, held,
                          Qt::NoModifier);
        QCoreApplication::sendEvent(&map, &event);
    }
    void Wheel(const QPoint& at, int angle) {
        QWheelEvent event(at, map.mapToGlobal(at), QPoint(), QPoint(0, angle), Qt::NoButton,
                          Qt::NoModifier, Qt::NoScrollPhase, false);
        QCoreApplication::sendEvent(&map, &event);
    }
    QImage Shown() { return map.grab().toImage().convertToFormat(QImage::Format_RGB32); }

    BoxShell shell;
    MapWidget map{nullptr};
};

TEST_F(MapWidgetTest, MeasuringPaintsAnInvertedLineAndACrossOverThePictureAndLeavesIt) {
    const QImage before = Shown();
    const Image picture = map.Surface().Pixels();
    Drag({100, 100}, {180, 100});
    const QImage during = Shown();
    EXPECT_EQ(during.pixel(140, 100), before.pixel(140, 100) ^ 0xFFFFFF);
    EXPECT_EQ(during.pixel(100, 95), before.pixel(100, 95) ^ 0xFFFFFF) << "the cross";
    EXPECT_EQ(during.pixel(92, 100), before.pixel(92, 100) ^ 0xFFFFFF);
    EXPECT_EQ(during.pixel(89, 100), before.pixel(89, 100));
    EXPECT_EQ(during.pixel(140, 101), before.pixel(140, 101));
    EXPECT_NE(mouseState.positionText.find("km "), std::string::npos);
    Release({180, 100});
    EXPECT_EQ(Shown(), before);
    EXPECT_EQ(map.Surface().Pixels().pixels, picture.pixels);
    EXPECT_EQ(plots, 0);
}

TEST_F(MapWidgetTest, TheZoomRectangleShowsOnAnyBackgroundAndBecomesTheView) {
    SetMouseMode(mouse_mode::kZoom);
    for (const Colour background : {0x000000, 0xFFFFFF, 0x808080}) {
        map.Surface().Clear(background);
        Drag({100, 100}, {200, 100});
        const QImage during = Shown();
        int white = 0;
        int black = 0;
        for (int x = 100; x < 200; ++x) {
            if ((during.pixel(x, 100) & 0xFFFFFF) == 0xFFFFFF) ++white;
            if ((during.pixel(x, 100) & 0xFFFFFF) == 0) ++black;
        }
        EXPECT_GT(white, 20) << background;
        EXPECT_GT(black, 20) << background;
        CancelDrag();
    }
    Drag({100, 100}, {200, 100});
    Release({200, 100});
    EXPECT_EQ(plots, 1);
    EXPECT_EQ(mapState.current, 2);
    EXPECT_LT(mapView.extent.spanLong, 120);
}

TEST_F(MapWidgetTest, TheMapFollowsThePointerInTheMoveModeAndThePlotComesAtTheEnd) {
    const MapRect rect = mapView.rect;
    map.Surface().SetPen({1, LineDash::Solid, 0x0000FF});
    map.Surface().MoveTo(rect.left + 50, rect.top);
    map.Surface().LineTo(rect.left + 50, rect.top + rect.height);
    SetMouseMode(mouse_mode::kMove);
    Drag({200, 150}, {230, 150});
    EXPECT_EQ(Shown().pixel(rect.left + 80, 150) & 0xFFFFFF, 0xFF0000U);
    EXPECT_EQ(Shown().pixel(rect.left + 50, 150) & 0xFFFFFF, 0x808080U);
    // What leaves the whole world on the right comes in on the left.
    Move({200 - 60, 150}, Qt::LeftButton);
    EXPECT_EQ(Shown().pixel(rect.left + rect.width - 10, 150) & 0xFFFFFF, 0xFF0000U);
    EXPECT_EQ(plots, 0);
    Release({140, 150});
    EXPECT_EQ(plots, 1);
}

TEST_F(MapWidgetTest, AClickToRelocateWithoutAChartIsTold) {
    SetMouseMode(mouse_mode::kRelocate);
    relocateChart = [](double, double) {};
    QTest::mouseClick(&map, Qt::LeftButton, Qt::NoModifier, At(10, 10));
    EXPECT_EQ(shell.boxes,
              (std::vector<std::string>{"Cannot Relocate: Cannot relocate chart because no chart "
                                        "is currently selected."}));
}

TEST_F(MapWidgetTest, AClickToFillPaintsThePictureAtOnce) {
    SetMouseMode(mouse_mode::kFill);
    plotState.outlineColour = 0;
    const QPoint spot = At(10, 10);
    QTest::mouseClick(&map, Qt::LeftButton, Qt::NoModifier, spot);
    EXPECT_EQ(CurrentMap().fillCount, 1);
    EXPECT_EQ(map.Surface().GetPixel(spot.x(), spot.y()), SeaColour());
    EXPECT_EQ(map.Surface().GetPixel(3, 3), 0x808080);
    EXPECT_EQ(plots, 0);
}

TEST_F(MapWidgetTest, ARulerIsPulledOffALineOfTheGrid) {
    SetMouseMode(mouse_mode::kRuler);
    CurrentMap().gridOn = kTrue;  // 180 west lies at the map's left edge
    const QImage before = Shown();
    const MapRect rect = mapView.rect;
    Drag({rect.left, 150}, {250, 150});
    Release({250, 150});
    const QImage after = Shown();
    EXPECT_NE(after, before);
    for (int y = rect.top; y <= rect.top + rect.height; ++y) {
        const QRgb pixel = after.pixel(250, y) & 0xFFFFFF;
        EXPECT_TRUE(pixel == 0 || pixel == 0xFFFFFF) << "the line, in row " << y;
        EXPECT_EQ(after.pixel(256, y), before.pixel(256, y)) << "beyond its marks, in row " << y;
    }
    EXPECT_NE(after.pixel(250, 150), after.pixel(250, 151)) << "dotted";
    const double lat = 90 - 180.0 * (150 - rect.top) / rect.height;
    const double longitude = 360.0 * (250 - rect.left) / rect.width - 180;
    const std::string across = FormatLongMinutes(RoundToInt16(longitude * 60));
    EXPECT_EQ(mouseState.positionText, FormatLatMinutes(RoundToInt16(lat * 60)) +
                                           std::string(8, ' ') + across + std::string(19, ' ') +
                                           across);
    // The next plot takes it away.
    PlotMap4(kFalse, map.Surface(), kTrue);
    QCoreApplication::processEvents();
    EXPECT_TRUE(Overlay().empty());
    const QImage plotted = Shown();
    map.Surface().onRefresh();
    EXPECT_EQ(Shown(), plotted);
}

TEST_F(MapWidgetTest, KeysReachTheSession) {
    SetMouseMode(mouse_mode::kZoom);
    Drag({100, 100}, {200, 100});
    ASSERT_TRUE(DragInProgress());
    QTest::keyClick(&map, Qt::Key_Escape);
    EXPECT_FALSE(DragInProgress());
    Wheel(At(0, 0), 120);
    QCoreApplication::processEvents();
    ASSERT_EQ(plots, 1);
    QTest::keyClick(&map, Qt::Key_PageUp);
    EXPECT_EQ(plots, 2);
    EXPECT_EQ(mapView.extent.spanLong, 360);
    static std::vector<std::pair<int, int>> moves;
    moves.clear();
    movePointer = [](int dx, int dy) { moves.emplace_back(dx, dy); };
    QTest::keyClick(&map, Qt::Key_Left);
    QTest::keyClick(&map, Qt::Key_Down, Qt::ShiftModifier);
    EXPECT_EQ(moves, (std::vector<std::pair<int, int>>{{-1, 0}, {0, 10}}));
    EXPECT_EQ(map.focusPolicy(), Qt::StrongFocus);
}

TEST_F(MapWidgetTest, TurnsOfTheWheelInARowMakeOneZoomAndSmallOnesAddUp) {
    Wheel(At(20, 30), 120);
    Wheel(At(20, 30), 120);
    QCoreApplication::processEvents();
    EXPECT_EQ(plots, 1);
    EXPECT_EQ(mapView.extent.spanLong, 90);
    for (int i = 0; i < 3; ++i) Wheel(At(20, 30), -40);
    QCoreApplication::processEvents();
    EXPECT_EQ(plots, 2);
    EXPECT_EQ(mapView.extent.spanLong, 180);
}

TEST_F(MapWidgetTest, WhatIsLeftOfAStepOfTheWheelIsForgottenWhenItTurnsBack) {
    Wheel(At(20, 30), 240);
    Wheel(At(20, 30), 80);
    QCoreApplication::processEvents();
    EXPECT_EQ(mapView.extent.spanLong, 90);
    for (int i = 0; i < 3; ++i) Wheel(At(20, 30), -40);
    QCoreApplication::processEvents();
    EXPECT_EQ(mapView.extent.spanLong, 180);
    // Whole steps that wait for their zoom are none the less taken back.
    Wheel(At(20, 30), 120);
    Wheel(At(20, 30), -120);
    QCoreApplication::processEvents();
    EXPECT_EQ(mapView.extent.spanLong, 180);
}

TEST_F(MapWidgetTest, ThePositionTextFollowsThePointerAndGoesWithIt) {
    int told = 0;
    map.onMouseState = [&] { ++told; };
    Move(At(0, 0), Qt::NoButton);
    EXPECT_TRUE(mouseState.positionText.starts_with("00")) << mouseState.positionText;
    EXPECT_EQ(told, 1);
    QEvent leave(QEvent::Leave);
    QCoreApplication::sendEvent(&map, &leave);
    EXPECT_EQ(mouseState.positionText, "");
    EXPECT_EQ(told, 2);
}

// Counts what is painted.
class PaintCounter : public QObject {
  public:
    bool eventFilter(QObject* /*watched*/, QEvent* event) override {
        if (event->type() == QEvent::Paint) {
            ++paints;
            area = static_cast<QPaintEvent*>(event)->region();
        }
        return false;
    }
    int paints = 0;
    QRegion area;
};

TEST_F(MapWidgetTest, OnlyWhatChangedIsRepaintedAndNothingWhileThePointerMovesFreely) {
    PaintCounter counter;
    map.installEventFilter(&counter);
    QCoreApplication::processEvents();
    counter.paints = 0;
    for (int x = 100; x < 200; ++x) Move({x, 120}, Qt::NoButton);
    QCoreApplication::processEvents();
    EXPECT_EQ(counter.paints, 0);

    SetMouseMode(mouse_mode::kZoom);
    Drag({100, 100}, {150, 100});
    QCoreApplication::processEvents();
    EXPECT_GE(counter.paints, 1);
    EXPECT_FALSE(counter.area.isEmpty());
    EXPECT_FALSE(counter.area.contains(QPoint(400, 250)));
    EXPECT_FALSE(counter.area.contains(QPoint(125, 112))) << "the inside of the rectangle";
}

TEST_F(MapWidgetTest, WhereThePointerRestsTheLinesAreNamed) {
    session.ChartNumber = 1;
    calcChart[1].Lon.fill(-1);
    calcChart[1].Lon[3] = 0;
    calcChart[1].RA[3] = 40;
    calcChart[1].JulianDayET = 2451545;
    pointSelection[3] = kTrue;
    const QPoint on = At(-30, 40);
    QHelpEvent rest(QEvent::ToolTip, on, map.mapToGlobal(on));
    QCoreApplication::sendEvent(&map, &rest);
    EXPECT_TRUE(QToolTip::text().contains(QStringLiteral("The Sun - Culminate")))
        << QToolTip::text().toStdString();
    const QPoint off = At(-30, 80);
    QHelpEvent elsewhere(QEvent::ToolTip, off, map.mapToGlobal(off));
    QCoreApplication::sendEvent(&map, &elsewhere);
    EXPECT_FALSE(elsewhere.isAccepted());

    QTest::mouseDClick(&map, Qt::LeftButton, Qt::NoModifier, on);
    EXPECT_EQ(shell.boxes, (std::vector<std::string>{"Lines: The Sun - Culminate"}));
}

TEST_F(MapWidgetTest, RightButtonTellsAnglesAndStartsNoDrag) {
    session.ChartNumber = 1;
    calcChart[1].JulianDayET = 2451545;
    calcChart[1].Zodiac = 1;
    QTest::mousePress(&map, Qt::RightButton, Qt::NoModifier, At(10, 10));
    EXPECT_TRUE(mouseState.positionText.starts_with("MC=")) << mouseState.positionText;
    EXPECT_NE(mouseState.positionText.find(" Asc="), std::string::npos);
    EXPECT_FALSE(DragInProgress());
    QTest::mouseRelease(&map, Qt::RightButton, Qt::NoModifier, At(10, 10));
}

// ---- A display of twice the pixels, in a process of its own ----

class TwicePixelsTest : public MapWidgetTest {
  protected:
    void SetUp() override {
        if (map.devicePixelRatioF() != 2) GTEST_SKIP() << "run by the test below";
        MapWidgetTest::SetUp();
    }
};

TEST_F(TwicePixelsTest, ThePictureHasThePixelsOfTheDisplay) {
    EXPECT_EQ(map.Surface().Size().width, 1000);
    EXPECT_EQ(map.Surface().Size().height, 640);
    map.Surface().SetPen({1, LineDash::Solid, 0x0000FF});
    map.Surface().SetPixel(301, 201);
    const QImage shown = Shown();
    EXPECT_EQ(shown.size(), QSize(1000, 640));
    EXPECT_EQ(shown.pixel(301, 201) & 0xFFFFFF, 0xFF0000U) << "pixel by pixel";
    EXPECT_EQ(shown.pixel(300, 201) & 0xFFFFFF, 0x808080U);
    EXPECT_EQ(shown.pixel(302, 201) & 0xFFFFFF, 0x808080U);
}

TEST_F(TwicePixelsTest, EventsAndFiguresAreInPixelsOfThePicture) {
    const QImage before = Shown();
    Drag({100, 100}, {150, 100});
    EXPECT_EQ(mouseState.dragStartX, 200);
    EXPECT_EQ(mouseState.dragStartY, 200);
    EXPECT_EQ(Overlay().back(),
              (OverlayFigure{OverlayFigure::Kind::InvertedLine, 200, 200, 300, 200}));
    const QImage during = Shown();
    EXPECT_EQ(during.pixel(250, 200), before.pixel(250, 200) ^ 0xFFFFFF);
    EXPECT_EQ(during.pixel(250, 199), before.pixel(250, 199)) << "one pixel wide";
    EXPECT_EQ(during.pixel(250, 201), before.pixel(250, 201));
    EXPECT_EQ(during.pixel(200, 195), before.pixel(200, 195) ^ 0xFFFFFF) << "the cross";
    EXPECT_EQ(during.pixel(200, 189), before.pixel(200, 189)) << "10 pixels each way";
    Release({150, 100});
    EXPECT_EQ(Shown(), before) << "and all of it is taken away";
}

TEST_F(TwicePixelsTest, ArrowKeysMoveThePointerByPixelsOfThePicture) {
    QCursor::setPos(200, 200);
    QTest::keyClick(&map, Qt::Key_Right, Qt::ShiftModifier);
    EXPECT_EQ(QCursor::pos(), QPoint(205, 200)) << "10 of them";
    QTest::keyClick(&map, Qt::Key_Up);
    EXPECT_EQ(QCursor::pos(), QPoint(205, 199)) << "the least that there is";
}

TEST(MapWidgetScale, HoldsOnADisplayOfTwiceThePixels) {
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QStringLiteral("QT_SCALE_FACTOR"), QStringLiteral("2"));
    QProcess process;
    process.setProcessEnvironment(environment);
    process.setProcessChannelMode(QProcess::MergedChannels);
    process.start(QCoreApplication::applicationFilePath(),
                  {QStringLiteral("--gtest_filter=TwicePixelsTest.*")});
    ASSERT_TRUE(process.waitForFinished());
    const std::string told = process.readAll().toStdString();
    EXPECT_EQ(process.exitCode(), 0) << told;
    EXPECT_NE(told.find("[  PASSED  ] 3 tests."), std::string::npos) << told;
}

}  // namespace
}  // namespace orvantis

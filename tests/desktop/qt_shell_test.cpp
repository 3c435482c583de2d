// The main window and its shell by themselves.
#include "desktop/qt_shell.h"

#include <QCloseEvent>
#include <QCoreApplication>
#include <QGuiApplication>
#include <QMenuBar>
#include <gtest/gtest.h>

#include "desktop/main_window.h"
#include "map/plot.h"
#include "session/session_state.h"
#include "surface/null_shell.h"

namespace orvantis {
namespace {

int plots = 0;  // how often a plot has begun

class QtShellTest : public ::testing::Test {
  protected:
    void SetUp() override {
        session = {};
        session.shell = &quiet;
        plots = 0;
        stopForeignClock = [] { ++plots; };
    }
    void TearDown() override {
        stopForeignClock = nullptr;
        session = {};
    }
    static void LetEventsRun() {
        for (int i = 0; i < 5; ++i) QCoreApplication::processEvents();
    }
    Qt::CursorShape MapPointer() { return window.MapArea()->cursor().shape(); }

    NullShell quiet;
    MainWindow window;
    QtShell shell{window};
};

TEST_F(QtShellTest, CrossAndMoveArePointersOfTheMapAreaAlone) {
    shell.SetPointer(Pointer::Cross);
    EXPECT_EQ(MapPointer(), Qt::CrossCursor);
    EXPECT_EQ(window.cursor().shape(), Qt::ArrowCursor);
    EXPECT_EQ(window.menuBar()->cursor().shape(), Qt::ArrowCursor);
    shell.SetPointer(Pointer::Move);
    EXPECT_EQ(MapPointer(), Qt::SizeAllCursor);
    EXPECT_EQ(window.menuBar()->cursor().shape(), Qt::ArrowCursor);
}

TEST_F(QtShellTest, TheHourglassLiesOverThePointerOfTheMapAreaUntilTheDefault) {
    shell.SetPointer(Pointer::Cross);
    shell.SetPointer(Pointer::Hourglass);
    shell.SetPointer(Pointer::Hourglass);
    ASSERT_NE(QGuiApplication::overrideCursor(), nullptr);
    EXPECT_EQ(QGuiApplication::overrideCursor()->shape(), Qt::WaitCursor);
    shell.SetPointer(Pointer::Default);
    EXPECT_EQ(QGuiApplication::overrideCursor(), nullptr);
    EXPECT_EQ(MapPointer(), Qt::CrossCursor);
    shell.SetPointer(Pointer::Default);
    EXPECT_EQ(MapPointer(), Qt::CrossCursor);
}

TEST_F(QtShellTest, TheMapAreasSizeIsThePicturesFromThenOn) {
    shell.PlaceMainWindow({0, 0, 0, 9000, 7500});
    shell.ShowMainWindow();
    EXPECT_EQ(window.Picture().Size().width, 0);
    const SurfaceSize area = shell.MapAreaSize();
    EXPECT_EQ(area.width, window.MapArea()->width());
    EXPECT_EQ(area.height, window.MapArea()->height());
    EXPECT_EQ(window.Picture().Size().width, area.width);
    EXPECT_EQ(window.Picture().Size().height, area.height);
}

TEST_F(QtShellTest, AResizeDrawsTheMapAnewOnlyOnceTheStartIsDone) {
    shell.PlaceMainWindow({0, 0, 0, 9000, 7500});
    shell.ShowMainWindow();
    window.resize(500, 400);
    LetEventsRun();
    EXPECT_EQ(plots, 0);
    session.StartupDone = kTrue;
    window.resize(600, 450);
    LetEventsRun();
    EXPECT_EQ(plots, 1);
    EXPECT_EQ(window.Picture().Size().width, window.MapArea()->width());
}

TEST_F(QtShellTest, ACloseBeforeTheStartIsDoneOrDuringAPlotIsRefused) {
    shell.ShowMainWindow();
    EXPECT_FALSE(window.close());
    EXPECT_FALSE(window.HasEnded());
    session.StartupDone = kTrue;
    plotState.inProgress = true;
    EXPECT_FALSE(window.close());
    plotState.inProgress = false;
    EXPECT_TRUE(window.isVisible());
    EXPECT_FALSE(window.HasEnded());
}

TEST_F(QtShellTest, AMaximisedWindowTakesNoHeedOfThePlace) {
    window.PutInPlace({0, QRect(30, 20, 600, 400)});
    EXPECT_EQ(window.CurrentPlace().state, 0);
    EXPECT_EQ(window.CurrentPlace().frame, QRect(30, 20, 600, 400));
    window.PutInPlace({2, QRect(1, 2, 3, 4)});
    EXPECT_EQ(window.CurrentPlace().state, 2);
    EXPECT_EQ(window.CurrentPlace().frame, QRect(30, 20, 600, 400));
}

}  // namespace
}  // namespace orvantis

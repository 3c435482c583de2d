// The main window and its shell by themselves.
#include "desktop/qt_shell.h"

#include <QApplication>
#include <QCloseEvent>
#include <QCoreApplication>
#include <QFileDialog>
#include <QGuiApplication>
#include <QMenuBar>
#include <QMessageBox>
#include <QTimer>
#include <gtest/gtest.h>

#include "desktop/main_window.h"
#include "map/map_document.h"
#include "map/plot.h"
#include "map/projection.h"
#include "map/view_ring.h"
#include "session/commands.h"
#include "session/display_dialogs.h"
#include "session/map_dialogs.h"
#include "session/mouse_modes.h"
#include "session/session_state.h"
#include "session/settings.h"
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

// ---- Redraws that have to wait ----

class RedrawTest : public QtShellTest {
  protected:
    void SetUp() override {
        QtShellTest::SetUp();
        shell.PlaceMainWindow({0, 0, 0, 9000, 7500});
        shell.ShowMainWindow();
        session.StartupDone = kTrue;
        LetEventsRun();
        sizes.clear();
        front = &shell;
        drawn = &window;
        stopForeignClock = [] { sizes.push_back(drawn->Picture().Size().width); };
    }
    void TearDown() override {
        showMapOptionsForm = nullptr;
        QtShellTest::TearDown();
    }
    // A question by a box of the desktop.
    static void Ask() {
        front->MessageBox("Keep them?", "Lines", BoxButtons::Ok, BoxIcon::Question);
    }
    // Makes the window wider as soon as a box is up, and closes the box after that.
    void ResizeDuringTheNextBox(int width) {
        QTimer::singleShot(0, qApp, [this, width] {
            auto* box = qobject_cast<QDialog*>(QApplication::activeModalWidget());
            ASSERT_NE(box, nullptr);
            const std::size_t before = sizes.size();
            window.resize(width, window.height());
            LetEventsRun();
            EXPECT_EQ(sizes.size(), before) << "no redraw while the box is up";
            box->accept();
        });
    }

    static std::vector<int> sizes;  // width of the picture at the start of each plot
    static QtShell* front;
    static MainWindow* drawn;
};

std::vector<int> RedrawTest::sizes;
QtShell* RedrawTest::front = nullptr;
MainWindow* RedrawTest::drawn = nullptr;

TEST_F(RedrawTest, AResizeWhileThePlotAsksLeadsToAFullPlotInTheNewSize) {
    stopForeignClock = [] {
        sizes.push_back(drawn->Picture().Size().width);
        if (sizes.size() == 1) Ask();
    };
    ResizeDuringTheNextBox(720);
    const int before = window.Picture().Size().width;
    PlotMap4(kFalse, window.Picture(), kTrue);
    EXPECT_EQ(sizes, std::vector<int>{before});
    EXPECT_EQ(window.Picture().Size().width, before) << "the picture of the plot is left alone";
    LetEventsRun();
    EXPECT_EQ(sizes, (std::vector<int>{before, window.MapArea()->width()}));
    EXPECT_EQ(window.MapArea()->width(), 720);
    LetEventsRun();
    EXPECT_EQ(sizes.size(), 2U) << "and no other";
}

TEST_F(RedrawTest, AResizeWhileACommandAsksIsDrawnWhenTheCommandEnds) {
    showMapOptionsForm = [] {
        Ask();
        EXPECT_TRUE(CommandRuns());
        return true;
    };
    ResizeDuringTheNextBox(740);
    RunCommand(*FindCommand("&Map", "&Map Options..."));
    EXPECT_FALSE(CommandRuns());
    EXPECT_TRUE(sizes.empty());
    LetEventsRun();
    EXPECT_EQ(sizes, std::vector<int>{740});
}

// A rectangle of less than a degree, whose box stands while the window gets another size.
TEST_F(RedrawTest, AResizeUnderABoxOfTheMouseIsDrawnWhenTheMouseHasDoneItsWork) {
    session.shell = &shell;
    session.picture = &window.Picture();
    plotFull = [] { PlotMap4(kFalse, *session.picture, kTrue); };
    window.RedrawMap();
    const int before = window.Picture().Size().width;
    SetMouseMode(mouse_mode::kZoom);
    const float x = static_cast<float>(mapView.rect.left) + mapView.rect.width * 0.75F;
    const float y = static_cast<float>(mapView.rect.top) + mapView.rect.height * 0.25F;
    ResizeDuringTheNextBox(720);
    MouseDown(x, y, false);
    MouseMove(x + 0.5F, y + 0.5F, true, false);
    MouseUp(x + 0.5F, y + 0.5F, false);
    EXPECT_EQ(sizes, (std::vector<int>{before, before})) << "the new view, on the old picture";
    LetEventsRun();
    EXPECT_EQ(sizes, (std::vector<int>{before, before, 720}));
    EXPECT_EQ(CurrentMap().east - CurrentMap().west, 1);
    EXPECT_NEAR(CurrentMap().west, 90, 1.5);
    EXPECT_NEAR(CurrentMap().north, 45, 1.5);
    plotFull = nullptr;
    mapState = {};
    mapView = {};
    mouseState = {};
}

TEST_F(RedrawTest, ARedrawDueWhileMinimisedIsMadeWhenTheWindowComesBack) {
    window.showMinimized();
    LetEventsRun();
    window.RedrawMap();
    window.resize(640, 420);
    LetEventsRun();
    EXPECT_TRUE(sizes.empty());
    window.showNormal();
    LetEventsRun();
    ASSERT_EQ(sizes.size(), 1U);
    EXPECT_EQ(sizes[0], window.MapArea()->width());
}

// The picture that a view kept is put back only where it still fits.
TEST_F(RedrawTest, PreviousViewIsDrawnAnewOnceTheWindowHasAnotherSize) {
    static int quickPlots = 0;
    quickPlots = 0;
    options.storeImages = kTrue;
    session.picture = &window.Picture();
    plotFull = [] { drawn->RedrawMap(); };
    plotQuick = [] { ++quickPlots; };
    window.RedrawMap();
    PushView({-30, -60, 30, 60}, "Lat: a part");
    ASSERT_EQ(sizes.size(), 2U);
    PreviousView();
    EXPECT_EQ(quickPlots, 1);
    EXPECT_EQ(sizes.size(), 2U) << "its picture fits";
    EXPECT_EQ(CurrentMap().west, -180);

    PushView({-30, -60, 30, 60}, "Lat: a part");
    window.resize(700, 480);
    LetEventsRun();
    ASSERT_EQ(sizes.size(), 4U);
    PreviousView();
    EXPECT_EQ(quickPlots, 1);
    ASSERT_EQ(sizes.size(), 5U) << "drawn anew";
    EXPECT_EQ(sizes.back(), 700);
    EXPECT_EQ(CurrentMap().west, -180);
    plotFull = plotQuick = nullptr;
    options = {};
    mapState = {};
}

// ---- Boxes and dialogs ----

TEST_F(QtShellTest, ABoxStandsBeforeTheFormThatIsUp) {
    shell.ShowMainWindow();
    LetEventsRun();
    QDialog form(&window);
    form.setModal(true);
    form.show();
    LetEventsRun();
    const QWidget* parent = nullptr;
    QTimer::singleShot(0, qApp, [&] {
        auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
        ASSERT_NE(box, nullptr);
        parent = box->parentWidget();
        box->accept();
    });
    shell.MessageBox("Text", "Title", BoxButtons::Ok, BoxIcon::Information);
    EXPECT_EQ(parent, &form);
    form.close();
}

TEST_F(QtShellTest, AFileToOpenMayHaveAnyNameAndOneToSaveHasItsKinds) {
    shell.ShowMainWindow();
    session.UserDataPath = "\\";
    for (const bool forSaving : {false, true}) {
        QStringList filters;
        QTimer::singleShot(0, qApp, [&] {
            auto* dialog = qobject_cast<QFileDialog*>(QApplication::activeModalWidget());
            ASSERT_NE(dialog, nullptr);
            filters = dialog->nameFilters();
            dialog->reject();
        });
        EXPECT_EQ(shell.ChooseFile("Title", "*.cht", forSaving), std::nullopt);
        const QStringList wanted =
            forSaving ? QStringList{"*.cht"} : QStringList{"*.cht", "All files (*)"};
        EXPECT_EQ(filters, wanted) << filters.join('|').toStdString();
    }
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

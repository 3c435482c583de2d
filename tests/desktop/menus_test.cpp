// The window's menus, buttons and ribbon against the command table, by real key and mouse events.
#include "desktop/menus.h"

#include <QAction>
#include <QApplication>
#include <QClipboard>
#include <QDialog>
#include <QImage>
#include <QLabel>
#include <QLineEdit>
#include <QListView>
#include <QMenu>
#include <QMenuBar>
#include <QMessageBox>
#include <QPushButton>
#include <QTest>
#include <QTimer>
#include <QToolButton>
#include <gtest/gtest.h>

#include "desktop/main_window.h"
#include "desktop/qt_shell.h"
#include "desktop/window_text.h"
#include "map/map_document.h"
#include "map/projection.h"
#include "session/commands.h"
#include "session/display_dialogs.h"
#include "session/map_dialogs.h"
#include "session/mouse_modes.h"
#include "session/recent_maps.h"
#include "session/save_settings.h"
#include "session/session_state.h"
#include "session/settings.h"
#include "support/reset_all.h"

namespace orvantis {
namespace {

int fullPlots = 0;
int quickPlots = 0;

class MenusTest : public ::testing::Test {
  protected:
    // The records are reset before the window puts itself into their connection points.
    struct Reset {
        Reset() { ResetAll(); }
        ~Reset() { ResetAll(); }
    };

    void SetUp() override {
        fullPlots = quickPlots = 0;
        plotAnew = [] { ++fullPlots; };
        plotLinesAnew = [] { ++quickPlots; };
        session.shell = &shell;
        window.resize(900, 500);
        window.show();
        ASSERT_TRUE(QTest::qWaitForWindowActive(&window));
        // There is no point database to draw: the window is in its size before it may plot.
        session.StartupDone = kTrue;
        fullPlots = quickPlots = 0;
    }

    QMenu* MenuOf(const QString& caption) {
        for (QAction* action : window.menuBar()->actions()) {
            if (action->text() == caption) return action->menu();
        }
        return nullptr;
    }
    static QString CaptionOf(const QAction* action) {
        return action->isSeparator() ? QStringLiteral("-")
                                     : action->text().section(QLatin1Char('\t'), 0, 0);
    }
    QAction* Entry(const QString& menu, const QString& caption) {
        for (QAction* action : MenuOf(menu)->actions()) {
            if (CaptionOf(action) == caption) return action;
        }
        return nullptr;
    }
    static void Open(QMenu* menu) { QMetaObject::invokeMethod(menu, "aboutToShow"); }
    QToolButton* Button(const char* name) {
        return window.findChild<QToolButton*>(QString::fromLatin1(name));
    }
    // Does something with the dialog that the next call brings up.
    static void WithDialog(const std::function<void(QDialog&)>& act) {
        QTimer::singleShot(0, qApp, [act] {
            auto* dialog = qobject_cast<QDialog*>(QApplication::activeModalWidget());
            ASSERT_NE(dialog, nullptr);
            act(*dialog);
        });
    }

    Reset reset;
    MainWindow window;
    QtShell shell{window};
};

TEST_F(MenusTest, ShowTheVisibleRowsOfTheTableInTheirOrderWithTheirKeys) {
    session.RecentCount = 1;
    session.RecentMaps[0] = "europe.ovm";
    AddRecentMap("");
    QStringList shown;
    for (const QAction* top : window.menuBar()->actions()) {
        if (!top->isVisible()) continue;
        for (const QAction* action : top->menu()->actions()) {
            if (!action->isVisible()) continue;
            if (action->menu() == nullptr) {
                shown << top->text() + "|" + "|" + action->text();
                continue;
            }
            for (const QAction* inner : action->menu()->actions()) {
                if (inner->isVisible())
                    shown << top->text() + "|" + action->text() + "|" + inner->text();
            }
        }
    }
    QStringList wanted;
    for (const Command& row : Commands()) {
        const CommandLook look = LookOf(row);
        if (!look.visible) continue;
        QString text = look.caption == "-" ? QString() : WindowText(look.caption);
        if (!row.shortcut.empty()) text += "\t" + WindowText(row.shortcut);
        wanted << WindowText(row.menu) + "|" + WindowText(row.submenu) + "|" + text;
    }
    EXPECT_EQ(shown.join('\n').toStdString(), wanted.join('\n').toStdString());
    EXPECT_EQ(MenuOf("&Lines")->menuAction()->isVisible(), false);
}

TEST_F(MenusTest, UpdateTheirEntriesWhenOpenedAndNotBefore) {
    QAction* clear = Entry("&Chart", "C&lear Chart");
    Open(MenuOf("&Chart"));
    EXPECT_FALSE(clear->isEnabled());
    session.ChartNumber = 1;
    CurrentMap().fillCount = 1;
    EXPECT_FALSE(clear->isEnabled());
    Open(MenuOf("&Map"));
    EXPECT_FALSE(clear->isEnabled()) << "another menu";
    EXPECT_TRUE(Entry("&Map", "Remove &Last Fill")->isEnabled());
    Open(MenuOf("&Chart"));
    EXPECT_TRUE(clear->isEnabled());
}

TEST_F(MenusTest, EachMenuOfTheBarUpdatesItsOwnEntriesWhenOpened) {
    const auto openForm = [] { return true; };
    showSaveSettingsForm = showSaveMapForm = openForm;
    selectEclipse = openHelp = openDumpForm = editCities = [] {};
    openReport = [](std::int16_t) {};
    session.ChartNumber = 1;
    session.EclipseNumber = 1;
    for (QAction* top : window.menuBar()->actions()) {
        if (!top->isVisible()) continue;
        Open(top->menu());
        for (const Command& row : Commands()) {
            if (WindowText(row.menu) != top->text() || !row.submenu.empty()) continue;
            const CommandLook look = LookOf(row);
            if (!look.visible) continue;
            const QAction* entry = Entry(top->text(), WindowText(look.caption));
            ASSERT_NE(entry, nullptr) << look.caption;
            EXPECT_EQ(entry->isEnabled(), look.enabled) << look.caption;
        }
    }
    EXPECT_TRUE(Entry("&Options", "&Save Settings...")->isEnabled());
}

TEST_F(MenusTest, AKeyRunsItsCommandAsThingsStand) {
    QTest::keyClick(&window, Qt::Key_F4);
    EXPECT_EQ(fullPlots, 1);
    QTest::keyClick(&window, Qt::Key_Delete, Qt::ShiftModifier);
    EXPECT_EQ(quickPlots, 0) << "no chart";
    session.ChartNumber = 1;
    QTest::keyClick(&window, Qt::Key_Delete, Qt::ShiftModifier);
    EXPECT_EQ(quickPlots, 1) << "though the menu hasn't been opened since";
    EXPECT_EQ(session.ChartNumber, 0);
    QTest::keyClick(&window, Qt::Key_N, Qt::ControlModifier);  // not built: nothing
    EXPECT_EQ(fullPlots + quickPlots, 2);
}

TEST_F(MenusTest, F5OnTheLowestViewAsksWhetherToZoomOutThoughItsEntryIsGrey) {
    plotFull = [] { ++fullPlots; };
    CurrentMap().south = 0;
    CurrentMap().north = 40;
    CurrentMap().west = 10;
    CurrentMap().east = 90;
    QString question;
    const auto activate = [this] {
        window.activateWindow();  // again, after a box
        ASSERT_TRUE(QTest::qWaitForWindowActive(&window));
    };
    const auto answer = [&](QMessageBox::StandardButton button) {
        activate();
        WithDialog([&question, button](QDialog& dialog) {
            auto& box = dynamic_cast<QMessageBox&>(dialog);
            question = box.windowTitle() + ": " + box.text();
            box.button(button)->click();
        });
    };
    const char* const kWanted =
        "Zoom Out?: There is no previous view to display.\n\nWould you like to zoom out by a "
        "factor of 2?";
    const auto told = [&question] { return QString(question).remove('\r').toStdString(); };

    const auto pressF5 = [this] { QTest::keyClick(&window, Qt::Key_F5); };

    answer(QMessageBox::No);
    pressF5();
    EXPECT_EQ(told(), kWanted);
    EXPECT_FALSE(Entry("&Map", "Previous &View")->isEnabled());
    EXPECT_EQ(fullPlots, 0);

    answer(QMessageBox::Yes);
    pressF5();
    EXPECT_EQ(fullPlots, 1);
    EXPECT_EQ(CurrentMap().south, -20);
    EXPECT_EQ(CurrentMap().north, 60);

    // There is a view to go back to now. From the lowest one the button asks too.
    activate();
    pressF5();
    EXPECT_EQ(fullPlots, 2);
    EXPECT_EQ(CurrentMap().south, 0);
    question.clear();
    answer(QMessageBox::No);
    Button("btnPrev")->click();
    EXPECT_EQ(told(), kWanted);
    Open(MenuOf("&Map"));
    EXPECT_FALSE(Entry("&Map", "Previous &View")->isEnabled());
}

TEST_F(MenusTest, TheKeysOfTheMapWorkRightAfterTheStartBeforeAnyClick) {
    ASSERT_EQ(QApplication::focusWidget(), window.MapArea());
    static std::vector<std::pair<int, int>> moves;
    moves.clear();
    movePointer = [](int dx, int dy) { moves.emplace_back(dx, dy); };
    plotFull = [] { ++fullPlots; };
    const auto press = [](Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
        QTest::keyClick(QApplication::focusWidget(), key, modifiers);
    };
    press(Qt::Key_Left);
    press(Qt::Key_Right, Qt::ShiftModifier);
    press(Qt::Key_Up);
    press(Qt::Key_Down, Qt::ShiftModifier);
    EXPECT_EQ(moves, (std::vector<std::pair<int, int>>{{-1, 0}, {10, 0}, {0, -1}, {0, 10}}));

    mapView.rect = {10, 10, 300, 150};
    CurrentMap().south = 0;
    CurrentMap().north = 40;
    CurrentMap().west = 10;
    CurrentMap().east = 90;
    SetMouseMode(mouse_mode::kZoom);
    press(Qt::Key_PageUp);
    EXPECT_EQ(fullPlots, 1);
    EXPECT_EQ(CurrentMap().south, -20);

    MouseDown(100, 80, false);
    ASSERT_TRUE(DragInProgress());
    press(Qt::Key_Escape);
    EXPECT_FALSE(DragInProgress());
    EXPECT_EQ(QApplication::focusWidget(), window.MapArea());
}

TEST_F(MenusTest, NothingRunsBeforeTheStartIsDone) {
    session.StartupDone = kFalse;
    QTest::keyClick(&window, Qt::Key_F4);
    QTest::mouseClick(Button("btnReDraw"), Qt::LeftButton);
    EXPECT_EQ(fullPlots, 0);
}

TEST_F(MenusTest, EntriesAreReachedByTheirAccessKeys) {
    QTest::keyClick(&window, Qt::Key_M, Qt::AltModifier);
    QMenu* menu = MenuOf("&Map");
    ASSERT_TRUE(QTest::qWaitFor([menu] { return menu->isVisible(); }));
    QTest::keyClick(menu, Qt::Key_R);
    EXPECT_EQ(fullPlots, 1);
}

TEST_F(MenusTest, MarksAndCaptionsFollowTheSessionAtOnce) {
    QMenu* zodiac = Entry("&Chart", "&Zodiac")->menu();
    EXPECT_TRUE(zodiac->actions()[0]->isChecked());
    options.mapZodiac = 1;
    window.RefreshMarks();
    EXPECT_FALSE(zodiac->actions()[0]->isChecked());
    EXPECT_TRUE(zodiac->actions()[1]->isChecked());
    zodiac->actions()[0]->trigger();
    EXPECT_EQ(options.mapZodiac, 0);
    EXPECT_TRUE(zodiac->actions()[0]->isChecked());
    zodiac->actions()[0]->trigger();
    EXPECT_TRUE(zodiac->actions()[0]->isChecked()) << "a second click leaves the mark";
    Entry("&Options", "Line &Numbers Off")->trigger();
    EXPECT_NE(Entry("&Options", "Line &Numbers On"), nullptr);
}

TEST_F(MenusTest, EveryButtonIsThereAndTheOnesOfMissingCapabilitiesAreDisabled) {
    for (const CommandButton& row : CommandButtons()) {
        QToolButton* button = Button(std::string(row.name).c_str());
        ASSERT_NE(button, nullptr) << row.name;
        EXPECT_TRUE(button->isVisible());
        EXPECT_FALSE(button->toolTip().isEmpty());
    }
    EXPECT_FALSE(Button("btnEclipse")->isEnabled());
    EXPECT_TRUE(Button("btnReDraw")->isEnabled());
    QTest::mouseClick(Button("btnReDraw"), Qt::LeftButton);
    EXPECT_EQ(fullPlots, 1);
    Button("btnReDraw")->setFocus(Qt::TabFocusReason);
    QTest::keyClick(Button("btnReDraw"), Qt::Key_Space);
    EXPECT_EQ(fullPlots, 2);
}

TEST_F(MenusTest, RibbonAndMenuOfTheMouseModesMoveTogether) {
    QMenu* modes = Entry("&Options", "&Mouse Mode")->menu();
    for (const int mode : {2, 5, 0}) {
        QTest::mouseClick(Button(("BtnMode" + std::to_string(mode)).c_str()), Qt::LeftButton);
        EXPECT_EQ(mouseState.mode, mode);
        for (int other = 0; other < 6; ++other) {
            EXPECT_EQ(modes->actions()[other]->isChecked(), other == mode);
        }
    }
    modes->actions()[4]->trigger();
    EXPECT_TRUE(Button("BtnMode4")->isChecked());
    EXPECT_FALSE(Button("BtnMode0")->isChecked());
    EXPECT_EQ(quickPlots + fullPlots, 0);
}

TEST_F(MenusTest, TheModeThatRelocatesIsDisabledWhereChartsCannotBeRelocated) {
    QMenu* menu = MenuOf("&Options");
    QAction* entry = Entry("&Options", "&Mouse Mode")->menu()->actions()[3];
    Open(menu);
    EXPECT_FALSE(entry->isEnabled());
    EXPECT_FALSE(Button("BtnMode3")->isEnabled());
    QTest::mouseClick(Button("BtnMode3"), Qt::LeftButton);
    EXPECT_EQ(mouseState.mode, mouse_mode::kMeasure);

    relocateChart = [](double, double) {};
    window.RefreshMarks();
    Open(menu);
    EXPECT_TRUE(entry->isEnabled());
    QTest::mouseClick(Button("BtnMode3"), Qt::LeftButton);
    EXPECT_EQ(mouseState.mode, mouse_mode::kRelocate);
}

TEST_F(MenusTest, TheRowShowsThePositionWithItsBlanksAndNeverWidensTheWindow) {
    auto* position = window.findChild<QLabel*>("txtPosition");
    ASSERT_NE(position, nullptr);
    const int width = window.width();
    mouseState.positionText = "50N00        010E00" + std::string(300, ' ') + "x";
    window.RefreshMouse();
    EXPECT_EQ(position->text().toStdString(), mouseState.positionText);
    QCoreApplication::processEvents();
    EXPECT_EQ(window.width(), width);
    EXPECT_LE(window.minimumSizeHint().width(), 600);
}

// Light ink on dark ground: of a button's middle the lightest pixel and the corner.
TEST_F(MenusTest, ButtonsWithPicturesFollowADarkTheme) {
    const auto lightest = [](const QImage& image) {
        int most = 0;
        for (int y = 0; y < image.height(); ++y) {
            for (int x = 0; x < image.width(); ++x) most = std::max(most, qGray(image.pixel(x, y)));
        }
        return most;
    };
    relocateChart = [](double, double) {};  // a disabled button is paler
    window.RefreshMarks();
    const QPalette light = QApplication::palette();
    QApplication::setPalette(QPalette(QColor(0x3C, 0x3C, 0x40), QColor(0x2A, 0x2A, 0x2E)));
    QCoreApplication::processEvents();
    for (int mode = 1; mode < mouse_mode::kModes; ++mode) {
        QToolButton* button = Button(("BtnMode" + std::to_string(mode)).c_str());
        const QImage image = button->grab().toImage();
        EXPECT_LT(qGray(image.pixel(0, 0)), 90) << mode;
        EXPECT_GT(lightest(image), 200) << mode;
    }
    QApplication::setPalette(light);
    QCoreApplication::processEvents();
}

TEST_F(MenusTest, AMouseMoveBringsThePositionAloneInStepAndLeavesTheEntriesAlone) {
    int changes = 0;
    for (QAction* action : window.findChildren<QAction*>()) {
        QObject::connect(action, &QAction::changed, [&changes] { ++changes; });
    }
    options.mapZodiac = 1;  // marks that a refresh of the menus would move
    options.lineNumbers = kTrue;
    mouseState.positionText = "50N00";
    refreshOverlay();
    EXPECT_EQ(changes, 0);
    EXPECT_EQ(window.findChild<QLabel*>("txtPosition")->text(), "50N00");
    QTest::mouseMove(window.MapArea(), QPoint(50, 50));
    QTest::mouseMove(window.MapArea(), QPoint(60, 70));
    EXPECT_EQ(changes, 0);
}

TEST_F(MenusTest, TheSessionKnowsWhetherTheWindowIsMinimised) {
    window.showMinimized();
    EXPECT_EQ(session.Minimised, -1);
    window.showNormal();
    EXPECT_EQ(session.Minimised, 0);
}

// ---- What commands ask of the desktop ----

TEST_F(MenusTest, ThePictureReallyArrivesOnTheClipboard) {
    Image image{3, 2, {0xFF0000FF, 0xFF00FF00, 0xFFFF0000, 0xFF000000, 0xFFFFFFFF, 0xFF123456}};
    shell.CopyToClipboard(image);
    image.pixels.assign(6, 0);
    const QImage got = QGuiApplication::clipboard()->image();
    ASSERT_EQ(got.size(), QSize(3, 2));
    EXPECT_EQ(got.pixel(0, 0), 0xFF0000FF);
    EXPECT_EQ(got.pixel(2, 1), 0xFF123456);
}

TEST_F(MenusTest, AListIsChosenFromByTheKeyboard) {
    const std::vector<std::string> lines = {"One - Jan 1 2000", "Two \xE9 - Feb 2 2000", "Three"};
    WithDialog([](QDialog& dialog) {
        EXPECT_EQ(dialog.windowTitle(), "Select Chart from a.cht");
        auto* list = dialog.findChild<QListView*>();
        EXPECT_EQ(list->model()->index(1, 0).data().toString().toStdString(),
                  "Two \xC3\xA9 - Feb 2 2000");
        QTest::keyClick(list, Qt::Key_Down);
        QTest::keyClick(list, Qt::Key_Return);
    });
    EXPECT_EQ(shell.ChooseItem("Select Chart from a.cht", lines), 2);
    WithDialog([](QDialog& dialog) { QTest::keyClick(&dialog, Qt::Key_Escape); });
    EXPECT_EQ(shell.ChooseItem("t", lines), std::nullopt);
    WithDialog([](QDialog& dialog) { QTest::keyClick(&dialog, Qt::Key_Return); });
    EXPECT_EQ(shell.ChooseItem("t", {}), 0);
}

TEST_F(MenusTest, ALineOfTextIsAskedFor) {
    WithDialog([](QDialog& dialog) {
        EXPECT_EQ(dialog.windowTitle(), "Word Processor");
        auto* field = dialog.findChild<QLineEdit*>();
        EXPECT_EQ(field->text(), "WRITE.EXE");
        field->setText("a\xC3\xA9");
        QTest::keyClick(field, Qt::Key_Return);
    });
    EXPECT_EQ(shell.InputBox("Which?", "Word Processor", "WRITE.EXE"), "a\xE9");
    WithDialog([](QDialog& dialog) { QTest::keyClick(&dialog, Qt::Key_Escape); });
    EXPECT_EQ(shell.InputBox("Which?", "t", ""), std::nullopt);
}

}  // namespace
}  // namespace orvantis

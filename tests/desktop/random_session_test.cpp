// Commands and mouse events in any order, in the real window: nothing may stop the session, and
// menus, ribbon and position text always show what the session holds.
#include <QAction>
#include <QLabel>
#include <QMenu>
#include <QMenuBar>
#include <QMouseEvent>
#include <QTest>
#include <QToolButton>
#include <QWheelEvent>
#include <algorithm>
#include <gtest/gtest.h>
#include <random>

#include "desktop/main_window.h"
#include "desktop/window_text.h"
#include "map/plot.h"
#include "map/projection.h"
#include "session/display_dialogs.h"
#include "session/driver.h"
#include "session/map_dialogs.h"
#include "session/mouse_modes.h"
#include "session/save_settings.h"
#include "session/select_chart.h"
#include "session/session_state.h"
#include "support/paths.h"
#include "support/reset_all.h"
#include "support/session_files.h"
#include "text/run_time_error.h"

namespace orvantis {
namespace {

std::mt19937 randomNumbers;

int UpTo(int most) {
    return static_cast<int>(randomNumbers() % (static_cast<unsigned>(most) + 1));
}

// ---- Forms: something is changed, and "OK" pressed, as often as not ----

bool FillLines(LinesForm& form) {
    for (std::size_t type = 1; type <= kLineBoxes; ++type) form.shown[type] = UpTo(1) == 0;
    form.lineMode = static_cast<std::int16_t>(1 + UpTo(1));
    if (UpTo(3) == 0) ChooseParanPoint(form);
    if (UpTo(1) == 0) return false;
    AcceptLines(form);
    return true;
}

bool FillPoints(PointsForm& form) {
    for (std::size_t i = 0; i < form.chosen.size(); ++i) form.chosen[i] = UpTo(3) == 0;
    if (UpTo(1) == 0 || !CheckPoints(form)) return false;
    AcceptPoints(form);
    return true;
}

bool FillPrefs(PrefsForm& form) {
    for (std::int16_t type = 1; type <= kStyledLines; ++type) {
        LineStyle& style = form.lineStyle[static_cast<std::size_t>(type)];
        style.thickness = static_cast<std::int16_t>(1 + UpTo(4));
        if (UpTo(5) == 0) ChooseLineColour(form, type);
    }
    if (UpTo(1) == 0) return false;
    AcceptPrefs(form);
    return true;
}

bool FillMapOptions() {
    MapDocument map = OpenMapOptions();
    map.projection = static_cast<std::int16_t>(UpTo(3));
    map.gridOn = UpTo(1) == 0 ? kTrue : kFalse;
    for (const DetailBox& box : kDetailBoxes) SetDetail(map, box.detailClass, UpTo(1) == 0);
    if (UpTo(1) == 0) return false;
    AcceptMapOptions(map);
    return true;
}

void ConnectRandomForms() {
    showLinesForm = FillLines;
    showPointsForm = FillPoints;
    showPrefsForm = FillPrefs;
    showMapOptionsForm = FillMapOptions;
    showPointColoursForm = [](PointColoursForm& form) {
        form.point = static_cast<std::int16_t>(1 + UpTo(35));
        if (ChoosePointColour(form)) ApplyPointColours(form);
        return true;
    };
    showZodiacStartForm = [](ZodiacStartForm& form) {
        form.text = UpTo(2) == 0 ? "nowhere" : "010E00";
        return AcceptZodiacStart(form);
    };
    showSaveMapForm = [] { return AcceptSaveMap(OpenSaveMap()); };
    showSaveSettingsForm = [] { return AcceptSaveSettings(OpenSaveSettings()); };
}

class RandomSession : public ::testing::Test {
  protected:
    // The records are reset before the window puts itself into their connection points.
    struct Reset {
        Reset() { ResetAll(); }
        ~Reset() { ResetAll(); }
    };

    void SetUp() override {
        StartSession(files.paths, shell);
        ConnectRandomForms();
        ASSERT_EQ(LoadDatabase(), kFalse);
        charts = files.Write("user", "charts.cht", FileBytes(DataFile("sample.cht")));
        map = files.Write("user", "europe.ovm", MapOf("Europe"));
        style = files.Write("user", "other.ovs", FileBytes(DataFile("default.ovs")));
        session.picture = &window.Picture();
        window.resize(420, 320);
        window.show();
        ASSERT_TRUE(QTest::qWaitForWindowActive(&window));
        window.MapArea()->FitPicture();
        session.StartupDone = kTrue;
        window.RedrawMap();
    }
    void TearDown() override { EndSession(); }

    // What the shell will answer to the next questions.
    void QueueAnswers() {
        const auto path = [this]() -> std::optional<std::string> {
            const std::array<std::string, 4> paths = {charts, map, style, files.At("user", "none")};
            return paths[static_cast<std::size_t>(UpTo(3))];
        };
        shell.fileAnswers = {path(), path()};
        shell.itemAnswers = {UpTo(7), std::nullopt};
        shell.colourAnswers = {UpTo(0xFFFFFF), UpTo(0xFFFFFF)};
        shell.fontAnswers = {
            Font{"Sans Serif", static_cast<float>(6 + UpTo(20)), UpTo(1) == 0, UpTo(1) == 0}};
        shell.cancelCall = UpTo(3) == 0 ? shell.questions + 1 + UpTo(2) : 0;
        shell.log.clear();
        shell.boxes.clear();
    }

    void RunAnyCommand() {
        std::vector<QAction*> entries;
        for (QAction* top : window.menuBar()->actions()) {
            QMetaObject::invokeMethod(top->menu(), "aboutToShow");
            for (QAction* action : top->menu()->actions()) {
                if (action->menu() == nullptr) {
                    entries.push_back(action);
                } else {
                    for (QAction* inner : action->menu()->actions()) entries.push_back(inner);
                }
            }
        }
        QAction* entry =
            entries[static_cast<std::size_t>(UpTo(static_cast<int>(entries.size()) - 1))];
        last = entry->text().toStdString();
        QueueAnswers();
        entry->trigger();
    }

    void SendMouse(QEvent::Type type, Qt::MouseButton button, Qt::MouseButtons held) {
        const QPointF at(UpTo(window.MapArea()->width()), UpTo(window.MapArea()->height()));
        QMouseEvent event(type, at, window.MapArea()->mapToGlobal(at), button, held,
                          Qt::NoModifier);
        last = "mouse event " + std::to_string(type);
        QueueAnswers();
        QCoreApplication::sendEvent(window.MapArea(), &event);
    }

    void DoAnything() {
        const Qt::MouseButton button = UpTo(4) == 0 ? Qt::RightButton : Qt::LeftButton;
        switch (UpTo(13)) {
            case 0:
                return SendMouse(QEvent::MouseButtonPress, button, button);
            case 1:
            case 2:
                return SendMouse(QEvent::MouseMove, Qt::NoButton,
                                 UpTo(2) == 0 ? Qt::NoButton : button);
            case 3:
                return SendMouse(QEvent::MouseButtonRelease, button, Qt::NoButton);
            case 4:
                return SendMouse(QEvent::MouseButtonDblClick, button, button);
            case 5: {
                last = "wheel";
                QueueAnswers();
                return WheelZoom(static_cast<float>(UpTo(420)), static_cast<float>(UpTo(320)),
                                 UpTo(6) - 3);
            }
            case 6:
                last = "key";
                QueueAnswers();
                QTest::keyClick(window.MapArea(), UpTo(1) == 0 ? Qt::Key_PageUp : Qt::Key_Escape);
                return;
            case 7:
                last = "open chart";
                QueueAnswers();
                if (UpTo(3) == 0) SelectChartFrom(charts);
                return;
            default:
                return RunAnyCommand();
        }
    }

    // Every entry against the table, the ribbon and the field against the session.
    void ExpectInStep() {
        for (QAction* top : window.menuBar()->actions()) ExpectMenuInStep(*top->menu(), top, "");
        const std::string mode = "BtnMode" + std::to_string(mouseState.mode);
        EXPECT_TRUE(window.findChild<QToolButton*>(QString::fromStdString(mode))->isChecked());
        EXPECT_EQ(window.findChild<QLabel*>("txtPosition")->text(),
                  WindowText(mouseState.positionText));
    }

    void ExpectMenuInStep(const QMenu& menu, const QAction* top, const QString& submenu) {
        std::vector<const QAction*> entries;
        for (const QAction* action : menu.actions()) {
            if (action->menu() != nullptr) {
                ExpectMenuInStep(*action->menu(), top, action->text());
            } else {
                entries.push_back(action);
            }
        }
        std::size_t next = 0;
        for (const Command& row : Commands()) {
            if (WindowText(row.menu) != top->text() || WindowText(row.submenu) != submenu) continue;
            ASSERT_LT(next, entries.size());
            const QAction& entry = *entries[next++];
            const CommandLook look = LookOf(row);
            EXPECT_EQ(entry.isVisible(), look.visible) << row.caption;
            EXPECT_EQ(entry.isChecked(), look.checked) << row.caption;
            if (entry.isSeparator() || !look.visible) continue;
            EXPECT_EQ(entry.text().section(QLatin1Char('\t'), 0, 0), WindowText(look.caption));
        }
    }

    Reset reset;
    SessionFiles files;
    ScriptedShell shell;
    MainWindow window;
    std::string charts;
    std::string map;
    std::string style;
    std::string last;
};

TEST_F(RandomSession, NoOrderOfCommandsAndMouseEventsStopsTheSessionOrLeavesTheMenusBehind) {
    const unsigned seed = std::random_device()();
    SCOPED_TRACE("seed " + std::to_string(seed));
    randomNumbers.seed(seed);
    int stepsWithChart = 0;
    for (int step = 0; step < 2000 && !HasFailure(); ++step) {
        DoAnything();
        if (UpTo(99) == 0) {
            window.resize(380 + UpTo(200), 300 + UpTo(100));
            last = "resize";
        }
        if (UpTo(9) == 0) QCoreApplication::processEvents();
        EXPECT_FALSE(plotState.inProgress) << last;
        EXPECT_EQ(PendingRunTimeError(), 0) << last;
        ExpectInStep();
        if (session.ChartNumber >= 1) ++stepsWithChart;
        if (HasFailure()) ADD_FAILURE() << "step " << step << " was: " << last;
    }
    EXPECT_GT(plotState.screenPlots, 100);
    EXPECT_GT(stepsWithChart, 100);
}

}  // namespace
}  // namespace orvantis

// The forms of the dialogs: what they show of their records, and what pressing and leaving does.
// With ORVANTIS_PICTURES set to a folder, each form leaves its picture there.
#include <QAbstractItemView>
#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QDialog>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QRadioButton>
#include <QScrollBar>
#include <QStyle>
#include <QTableWidget>
#include <QTest>
#include <QTimer>
#include <algorithm>
#include <cmath>
#include <functional>
#include <gtest/gtest.h>
#include <map>

#include "desktop/dialogs/forms.h"
#include "map/map_document.h"
#include "session/commands.h"
#include "session/map_dialogs.h"
#include "session/session_state.h"
#include "session/tables.h"
#include "support/reset_all.h"
#include "support/temp_folder.h"

namespace orvantis {
namespace {

using Log = std::vector<std::string>;
using Steps = std::function<void(QDialog&)>;

int linePlots = 0;
int fullPlots = 0;

// The captions of a form's controls, with their access keys.
QStringList Captions(const QDialog& form) {
    QStringList captions;
    for (const QWidget* child : form.findChildren<QWidget*>()) {
        if (!child->isVisible()) continue;
        const auto* button = dynamic_cast<const QAbstractButton*>(child);
        const auto* frame = dynamic_cast<const QGroupBox*>(child);
        const auto* label = dynamic_cast<const QLabel*>(child);
        if (button != nullptr) captions += button->text();
        if (frame != nullptr) captions += frame->title();
        if (label != nullptr) captions += label->text();
    }
    captions.sort();
    return captions;
}

QString FormName(std::string_view name) {
    return QString::fromLatin1(name.data(), static_cast<qsizetype>(name.size()));
}

QStringList Sorted(QStringList captions) {
    captions.sort();
    return captions;
}

template <typename Control>
Control* Find(const QDialog& form, const char* name) {
    auto* control = dynamic_cast<Control*>(form.findChild<QWidget*>(QString::fromLatin1(name)));
    EXPECT_NE(control, nullptr) << name;
    return control;
}

// Names of the controls that Tab comes to, once around, from where the focus is. Radio buttons of a
// group are one stop.
QStringList TabStops(QDialog& form) {
    QStringList stops;
    for (int i = 0; i < 60; ++i) {
        const QString name = QApplication::focusWidget()->objectName();
        if (stops.contains(name)) break;
        stops += name;
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
        QCoreApplication::processEvents();
    }
    EXPECT_TRUE(form.isVisible());
    return stops;
}

// Presses an access key and tells where the focus is then.
QString FocusAfterAlt(QDialog& form, Qt::Key key) {
    QTest::keyClick(&form, key, Qt::AltModifier);
    QCoreApplication::processEvents();
    return QApplication::focusWidget()->objectName();
}

// A click on the box of a check box or a radio button, which lies at its left, or on a button.
void Press(const QDialog& form, const char* name) {
    auto* button = Find<QAbstractButton>(form, name);
    QTest::mouseClick(button, Qt::LeftButton, {}, QPoint(10, button->height() / 2));
    QCoreApplication::processEvents();
}

// Presses the access key of a button and waits until it has been clicked, which takes the time that
// it is shown pressed.
void PressKey(QDialog& form, Qt::Key key, const char* name) {
    bool clicked = false;
    auto* button = Find<QAbstractButton>(form, name);
    const auto watch = QObject::connect(button, &QAbstractButton::clicked, [&] { clicked = true; });
    QTest::keyClick(&form, key, Qt::AltModifier);
    EXPECT_TRUE(QTest::qWaitFor([&] { return clicked; })) << name;
    QObject::disconnect(watch);
}

void Type(QLineEdit* field, const char* text) {
    field->setFocus();
    field->selectAll();
    QTest::keyClicks(field, QString::fromLatin1(text));
}

class FormTest : public ::testing::Test {
  protected:
    void SetUp() override {
        ResetAll();
        linePlots = 0;
        fullPlots = 0;
        plotLinesAnew = [] { ++linePlots; };
        plotAnew = [] { ++fullPlots; };
        plotFull = [] { ++fullPlots; };
        ConnectForms();
        session.ChartNumber = 1;
        session.UserDataPath = folder.Path();
        session.PointFile = folder.File("mine.pts");
        session.UserColourFile = folder.File("orvantis.pco");
        for (std::size_t i = 1; i <= kPointCount; ++i) {
            pointColour[i] = ClassicColour(static_cast<std::int16_t>(i % 15 + 1));
        }
    }
    void TearDown() override { ResetAll(); }

    // Takes the steps in the form that `show` brings up; one that is still up then is cancelled.
    template <typename Show>
    bool InForm(const Show& show, const Steps& steps) {
        const QWidget* before = QApplication::activeModalWidget();
        bool taken = false;
        QTimer look;
        QObject::connect(&look, &QTimer::timeout, [&] {
            auto* form = dynamic_cast<QDialog*>(QApplication::activeModalWidget());
            if (form == nullptr || form == before) return;
            look.stop();
            EXPECT_TRUE(QTest::qWaitFor([&] { return QApplication::activeWindow() == form; }));
            KeepPicture(*form);
            steps(*form);
            QCoreApplication::processEvents();
            if (form->isVisible()) form->reject();
            taken = true;
        });
        look.start(1);
        const bool result = show();
        EXPECT_TRUE(taken);
        return result;
    }

    static void KeepPicture(QDialog& form) {
        const QString to = qEnvironmentVariable("ORVANTIS_PICTURES");
        if (to.isEmpty()) return;
        const char* test = ::testing::UnitTest::GetInstance()->current_test_info()->name();
        form.grab().save(to + QLatin1Char('/') + QString::fromLatin1(test) +
                         QStringLiteral(".png"));
    }

    TempFolder folder;
};

// ---- "Select Lines" ----

class LinesFormTest : public FormTest {
  protected:
    bool InLines(const Steps& steps) {
        form = OpenLines();
        return InForm([this] { return ShowLinesForm(form); }, steps);
    }
    LinesForm form;
};

TEST_F(LinesFormTest, LinesFormShowsItsCaptionsAndItsRecord) {
    InLines([](QDialog& dialog) {
        EXPECT_EQ(dialog.windowTitle(), "Select Lines");
        EXPECT_EQ(Captions(dialog), Sorted({"Planet/Angle Lines",
                                            "In Mundo",
                                            "Zodiacal",
                                            "Culminate",
                                            "Anticulminate",
                                            "Rise",
                                            "Set",
                                            "Paran Lines",
                                            "Rise/Set to Rise/Set",
                                            "Rise/Set to Culm/Anti",
                                            "&Parans of..",
                                            "&Limit of Lat",
                                            "Local Space Lines",
                                            "Planet Directions",
                                            "Local Houses",
                                            "Local Horizon",
                                            "Celestial Lines",
                                            "Ecliptic",
                                            "Zodiacal Signs",
                                            "OK",
                                            "&Cancel"}));
        EXPECT_TRUE(Find<QRadioButton>(dialog, "optRS1")->isChecked());
        EXPECT_TRUE(Find<QCheckBox>(dialog, "chkLine4")->isChecked());
        EXPECT_FALSE(Find<QCheckBox>(dialog, "chkLine5")->isChecked());
        EXPECT_EQ(Find<QLineEdit>(dialog, "txtParan")->text(), "60");
    });
}

TEST_F(LinesFormTest, ZodiacalRenamesTheBoxesAtOnceAndOkDrawsInThatMode) {
    EXPECT_TRUE(InLines([](QDialog& dialog) {
        Press(dialog, "optRS2");
        const char* captions[] = {"MC", "IC", "Asc", "Dsc"};
        for (int i = 0; i < 4; ++i) {
            const QString name = QStringLiteral("chkLine%1").arg(i + 1);
            EXPECT_EQ(dialog.findChild<QCheckBox*>(name)->text(), captions[i]);
        }
        EXPECT_EQ(options.lineMode, 1);
        Press(dialog, "chkLine2");
        Press(dialog, "chkLine9");
        Type(Find<QLineEdit>(dialog, "txtParan"), "45.5");
        Press(dialog, "btnOK");
        EXPECT_FALSE(dialog.isVisible());
    }));
    EXPECT_EQ(options.lineMode, 2);
    EXPECT_EQ(settings.lineStyle[2].displayed, kFalse);
    EXPECT_EQ(settings.lineStyle[9].displayed, kTrue);
    EXPECT_EQ(options.paranLimit, 45.5F);
    EXPECT_EQ(linePlots, 1);
}

TEST_F(LinesFormTest, EscChangesNothing) {
    EXPECT_FALSE(InLines([](QDialog& dialog) {
        Press(dialog, "optRS2");
        Press(dialog, "chkLine2");
        Type(Find<QLineEdit>(dialog, "txtParan"), "45.5");
        QTest::keyClick(&dialog, Qt::Key_Escape);
        EXPECT_FALSE(dialog.isVisible());
    }));
    EXPECT_EQ(options.lineMode, 1);
    EXPECT_EQ(settings.lineStyle[2].displayed, kTrue);
    EXPECT_EQ(options.paranLimit, 60);
    EXPECT_EQ(linePlots, 0);
}

TEST_F(LinesFormTest, LinesFormIsWorkedByTheKeyboardAlone) {
    EXPECT_TRUE(InLines([this](QDialog& dialog) {
        EXPECT_EQ(TabStops(dialog),
                  QStringList({"optRS1", "chkLine1", "chkLine2", "chkLine3", "chkLine4", "chkLine5",
                               "chkLine6", "btnParan", "txtParan", "chkLine7", "chkLine8",
                               "chkLine9", "chkLine10", "chkLine11", "btnOK", "btnCancel"}));
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Right);
        EXPECT_TRUE(Find<QRadioButton>(dialog, "optRS2")->isChecked());
        EXPECT_EQ(Find<QCheckBox>(dialog, "chkLine1")->text(), "MC");
        EXPECT_EQ(FocusAfterAlt(dialog, Qt::Key_L), "txtParan");
        QTest::keyClicks(QApplication::focusWidget(), QStringLiteral("5"));
        Find<QCheckBox>(dialog, "chkLine5")->setChecked(true);
        InForm(
            [&] {
                PressKey(dialog, Qt::Key_P, "btnParan");
                return true;
            },
            [](QDialog& points) {
                EXPECT_EQ(points.windowTitle(), "Select Paran Planet/Star");
                EXPECT_EQ(QApplication::focusWidget()->objectName(), "lstPoint");
                QTest::keyClick(QApplication::focusWidget(), Qt::Key_Down);
                QTest::keyClick(QApplication::focusWidget(), Qt::Key_Down);
                QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return);
                EXPECT_FALSE(points.isVisible());
            });
        EXPECT_EQ(Find<QPushButton>(dialog, "btnParan")->text(), "&Parans of The Sun");
        EXPECT_EQ(TestShell().boxes, Log());
        QTest::keyClick(Find<QLineEdit>(dialog, "txtParan"), Qt::Key_Return);
        EXPECT_FALSE(dialog.isVisible());
    }));
    EXPECT_EQ(options.paranPoint, 3);
    EXPECT_EQ(options.lineMode, 2);
    EXPECT_EQ(options.paranLimit, 5);
}

TEST_F(LinesFormTest, ParansOfWithNoParanLineTypeOnTellsAndTheFormStays) {
    EXPECT_FALSE(InLines([this](QDialog& dialog) {
        const auto chooser = [](QDialog& points) { QTest::keyClick(&points, Qt::Key_Escape); };
        const auto press = [&] {
            Press(dialog, "btnParan");
            return true;
        };
        InForm(press, chooser);
        EXPECT_EQ(TestShell().boxes,
                  Log{"Orvantis: There are no paran line types currently selected for display. / "
                      "In order to see paran lines, you must first switch on at least one paran "
                      "line type on the next screen."});
        EXPECT_TRUE(dialog.isVisible());
        EXPECT_EQ(Find<QPushButton>(dialog, "btnParan")->text(), "&Parans of The Moon");
        Press(dialog, "chkLine6");
        InForm(press, chooser);
        EXPECT_EQ(TestShell().boxes.size(), 1U) << "its own box is on now";
    }));
    EXPECT_EQ(options.paranPoint, 1);
}

// ---- The order of "OK" ----

class OrderTest : public FormTest {
  protected:
    void SetUp() override {
        FormTest::SetUp();
        states.clear();
        plotLinesAnew = plotAnew = plotFull = [] {
            QString visible;
            for (const QWidget* window : QApplication::topLevelWidgets()) {
                if (window->isVisible()) visible += window->windowTitle() + QLatin1Char(';');
            }
            if (QApplication::activeModalWidget() != nullptr) visible += QStringLiteral("modal");
            states.push_back(visible.toStdString());
        };
    }
    static Log states;  // the windows that were up at each plot
};

Log OrderTest::states;

TEST_F(OrderTest, LinesFormIsClosedBeforeThePlot) {
    LinesForm form = OpenLines();
    EXPECT_TRUE(InForm([&] { return ShowLinesForm(form); },
                       [](QDialog& dialog) { Press(dialog, "btnOK"); }));
    EXPECT_EQ(states, Log{""});
}

TEST_F(OrderTest, PrefsFormIsClosedBeforeThePlot) {
    PrefsForm form = OpenPrefs();
    EXPECT_TRUE(InForm([&] { return ShowPrefsForm(form); },
                       [](QDialog& dialog) { Press(dialog, "btnOK"); }));
    EXPECT_EQ(states, Log{""});
}

TEST_F(OrderTest, PointsFormIsClosedBeforeThePlot) {
    for (const std::int16_t mode : {point_dialog::kPoints, point_dialog::kParanPoint}) {
        states.clear();
        PointsForm form = OpenPoints(mode);
        EXPECT_TRUE(InForm([&] { return ShowPointsForm(form); },
                           [](QDialog& dialog) { Press(dialog, "btnOK"); }));
        EXPECT_EQ(states, Log{""}) << mode;
    }
}

TEST_F(OrderTest, MapOptionsFormIsClosedBeforeThePlot) {
    EXPECT_TRUE(InForm(ShowMapOptionsForm, [](QDialog& dialog) {
        Press(dialog, "chkGrid");
        Press(dialog, "btnOK");
    }));
    EXPECT_EQ(states, Log{""});
}

// ---- "Lines & Symbols" ----

class PrefsFormTest : public FormTest {
  protected:
    bool InPrefs(const Steps& steps) {
        form = OpenPrefs();
        return InForm([this] { return ShowPrefsForm(form); }, steps);
    }
    static QImage Sample(const QDialog& dialog) {
        return Find<QWidget>(dialog, "Picture1")->grab().toImage();
    }
    PrefsForm form;
};

TEST_F(PrefsFormTest, PrefsFormShowsItsCaptionsAndTheFirstType) {
    InPrefs([](QDialog& dialog) {
        EXPECT_EQ(dialog.windowTitle(), "Lines & Symbols");
        EXPECT_EQ(Captions(dialog),
                  Sorted({"Line &Color...", "S&ea Color...", "L&and Color...", "Line S&tyle",
                          "Line T&hickness", "Sy&mbol Type", "Symbol Si&ze", "Use &Planet Colors",
                          "Use &Line Color", "OK", "Cancel"}));
        auto* types = Find<QListWidget>(dialog, "lstLines");
        ASSERT_EQ(types->count(), 13);
        EXPECT_EQ(types->item(0)->text(), "Culminate");
        EXPECT_EQ(types->item(12)->text(), "Partial Eclipse");
        EXPECT_EQ(Find<QComboBox>(dialog, "cmbStyle")->currentText(), "Solid");
        EXPECT_EQ(Find<QComboBox>(dialog, "cmbShape")->currentText(), "Ellipse");
        EXPECT_EQ(Find<QComboBox>(dialog, "cmbThickness")->currentText(), "1");
        EXPECT_EQ(Find<QComboBox>(dialog, "cmbFontSize")->currentText(), "9");
        EXPECT_TRUE(Find<QRadioButton>(dialog, "optPlanetColor1")->isChecked());
        types->setCurrentRow(6);
        EXPECT_EQ(Find<QComboBox>(dialog, "cmbThickness")->currentText(), "2");
        EXPECT_EQ(Find<QComboBox>(dialog, "cmbShape")->currentText(), "Rectangle");
    });
}

TEST_F(PrefsFormTest, TypesAreNamedByTheLineMode) {
    options.lineMode = 2;
    InPrefs([](QDialog& dialog) {
        auto* types = Find<QListWidget>(dialog, "lstLines");
        QStringList names;
        for (int i = 0; i < 5; ++i) names += types->item(i)->text();
        EXPECT_EQ(names.mid(0, 4), QStringList({"MC", "IC", "Asc", "Dsc"}));
        EXPECT_EQ(names[4], FormName(kLineTypeNames[5]));
    });
}

TEST_F(PrefsFormTest, BoxesApplyToTheSelectedTypeAndRepaintTheSample) {
    EXPECT_TRUE(InPrefs([](QDialog& dialog) {
        Find<QListWidget>(dialog, "lstLines")->setCurrentRow(1);
        QImage before = Sample(dialog);
        for (const char* box : {"cmbStyle", "cmbThickness", "cmbShape", "cmbFontSize"}) {
            const Qt::Key key = std::string_view(box) == "cmbShape" ? Qt::Key_Up : Qt::Key_Down;
            QTest::keyClick(Find<QComboBox>(dialog, box), key);
            const QImage after = Sample(dialog);
            EXPECT_NE(before, after) << box;
            before = after;
        }
        Press(dialog, "optPlanetColor1");
        EXPECT_NE(before, Sample(dialog));
        TestShell().colourAnswers = {0x0000FF, 0x112233, 0x445566};
        before = Sample(dialog);
        Press(dialog, "btnColors2");
        EXPECT_NE(before, Sample(dialog));
        Press(dialog, "btnColors3");
        Press(dialog, "btnColors1");
        Press(dialog, "btnOK");
    }));
    const LineStyle& style = settings.lineStyle[2];
    EXPECT_EQ(style.style, 3);
    EXPECT_EQ(style.thickness, 2);
    EXPECT_EQ(style.symbolShape, 1);
    EXPECT_EQ(style.planetColour, kTrue);
    EXPECT_EQ(style.colour, 0x445566);
    EXPECT_EQ(settings.symbolSize, 10);
    EXPECT_EQ(settings.specialFillColour, 0x0000FF);
    EXPECT_EQ(settings.mapBackColour, 0x112233);
    EXPECT_EQ(settings.lineStyle[1].style, 0);
    EXPECT_EQ(fullPlots, 1);
    EXPECT_EQ(TestShell().log, (Log{"ChooseColour|Select Sea Color|12632256",
                                    "ChooseColour|Select Land Color|8453888",
                                    "ChooseColour|Select Line Color|65535"}));
}

TEST_F(PrefsFormTest, ValuesBeyondTheListsStayUnlessTheUserChangesThem) {
    settings.lineStyle[1].thickness = 25;
    settings.lineStyle[1].style = 77;
    settings.symbolSize = 9.5F;
    EXPECT_TRUE(InPrefs([](QDialog& dialog) {
        EXPECT_EQ(Find<QComboBox>(dialog, "cmbThickness")->currentText(), "25");
        EXPECT_EQ(Find<QComboBox>(dialog, "cmbStyle")->currentText(), "");
        EXPECT_EQ(Find<QComboBox>(dialog, "cmbFontSize")->currentText(), "9.5");
        Press(dialog, "btnOK");
    }));
    EXPECT_EQ(settings.lineStyle[1].thickness, 25);
    EXPECT_EQ(settings.lineStyle[1].style, 77);
    EXPECT_EQ(settings.symbolSize, 9.5F);
}

TEST_F(PrefsFormTest, CancelDropsAllThatWasChanged) {
    EXPECT_FALSE(InPrefs([](QDialog& dialog) {
        QTest::keyClick(Find<QComboBox>(dialog, "cmbThickness"), Qt::Key_Down);
        TestShell().colourAnswers = {1};
        Press(dialog, "btnColors3");
        Press(dialog, "btnCancel");
        EXPECT_FALSE(dialog.isVisible());
    }));
    EXPECT_EQ(settings.lineStyle[1].thickness, 1);
    EXPECT_EQ(settings.mapBackColour, 0x80FF00);
    EXPECT_EQ(fullPlots, 0);
}

TEST_F(PrefsFormTest, PrefsFormIsWorkedByTheKeyboardAlone) {
    EXPECT_TRUE(InPrefs([](QDialog& dialog) {
        EXPECT_EQ(TabStops(dialog),
                  QStringList({"lstLines", "btnColors1", "btnColors2", "btnColors3", "cmbStyle",
                               "cmbThickness", "cmbShape", "cmbFontSize", "optPlanetColor1",
                               "btnOK", "btnCancel"}));
        EXPECT_EQ(FocusAfterAlt(dialog, Qt::Key_T), "cmbStyle");
        EXPECT_EQ(FocusAfterAlt(dialog, Qt::Key_H), "cmbThickness");
        EXPECT_EQ(FocusAfterAlt(dialog, Qt::Key_M), "cmbShape");
        EXPECT_EQ(FocusAfterAlt(dialog, Qt::Key_Z), "cmbFontSize");
        PressKey(dialog, Qt::Key_L, "optPlanetColor2");
        EXPECT_TRUE(Find<QRadioButton>(dialog, "optPlanetColor2")->isChecked());
        PressKey(dialog, Qt::Key_P, "optPlanetColor1");
        EXPECT_TRUE(Find<QRadioButton>(dialog, "optPlanetColor1")->isChecked());
        PressKey(dialog, Qt::Key_L, "optPlanetColor2");
        PressKey(dialog, Qt::Key_C, "btnColors1");
        PressKey(dialog, Qt::Key_E, "btnColors2");
        PressKey(dialog, Qt::Key_A, "btnColors3");
        EXPECT_EQ(TestShell().log.size(), 3U);
        Find<QListWidget>(dialog, "lstLines")->setFocus();
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return);
        EXPECT_FALSE(dialog.isVisible());
    }));
    EXPECT_EQ(settings.lineStyle[1].planetColour, kFalse);
}

// ---- Points ----

class PointsFormTest : public FormTest {
  protected:
    bool InPoints(std::int16_t mode, const Steps& steps) {
        form = OpenPoints(mode);
        return InForm([this] { return ShowPointsForm(form); }, steps);
    }
    PointsForm form;
};

TEST_F(PointsFormTest, PointsFormShowsTheListAndTakesTheSelection) {
    pointSelection[1] = kTrue;
    pointSelection[3] = kTrue;
    EXPECT_TRUE(InPoints(point_dialog::kPoints, [](QDialog& dialog) {
        EXPECT_EQ(dialog.windowTitle(), "Select Planets");
        EXPECT_EQ(Captions(dialog),
                  Sorted({"Use Ctrl key for multiple selections", "&Default", "OK", "&Cancel"}));
        auto* list = Find<QListWidget>(dialog, "lstPoint");
        ASSERT_EQ(list->count(), 36);
        EXPECT_EQ(list->item(35)->text(), "Black Moon");
        EXPECT_EQ(list->selectedItems().size(), 2);
        QTest::mouseClick(list->viewport(), Qt::LeftButton, Qt::ControlModifier,
                          list->visualItemRect(list->item(4)).center());
        Press(dialog, "btnOK");
    }));
    for (std::size_t point = 1; point <= 36; ++point) {
        EXPECT_EQ(pointSelection[point] != 0, point == 1 || point == 3 || point == 5) << point;
    }
    EXPECT_EQ(linePlots, 1);
}

TEST_F(PointsFormTest, ParanModeWithTwoEntriesStaysOpenUntilOneIsChosen) {
    EXPECT_TRUE(InPoints(point_dialog::kParanPoint, [](QDialog& dialog) {
        EXPECT_EQ(Captions(dialog), Sorted({"&Default", "OK", "&Cancel"}));
        auto* list = Find<QListWidget>(dialog, "lstPoint");
        list->item(4)->setSelected(true);
        Press(dialog, "btnOK");
        EXPECT_TRUE(dialog.isVisible());
        EXPECT_EQ(TestShell().boxes, Log{"Orvantis: You must select only a single point to use as "
                                         "the paran point."});
        list->item(0)->setSelected(false);
        Press(dialog, "btnOK");
        EXPECT_FALSE(dialog.isVisible());
    }));
    EXPECT_EQ(options.paranPoint, 5);
}

TEST_F(PointsFormTest, CancelAndEscTakeNothingOver) {
    pointSelection[1] = kTrue;
    for (const std::int16_t mode : {point_dialog::kPoints, point_dialog::kParanPoint}) {
        for (const bool byEsc : {false, true}) {
            const auto before = pointSelection;
            EXPECT_FALSE(InPoints(mode, [byEsc](QDialog& dialog) {
                auto* list = Find<QListWidget>(dialog, "lstPoint");
                list->clearSelection();
                list->item(6)->setSelected(true);
                if (byEsc) {
                    QTest::keyClick(list, Qt::Key_Escape);
                } else {
                    Press(dialog, "btnCancel");
                }
                EXPECT_FALSE(dialog.isVisible());
            }));
            EXPECT_EQ(pointSelection, before) << mode << byEsc;
            EXPECT_EQ(options.paranPoint, 1) << mode << byEsc;
        }
    }
    EXPECT_EQ(linePlots, 0);
    EXPECT_EQ(TestShell().boxes, Log());
}

TEST_F(PointsFormTest, DefaultFillsTheListAnew) {
    pointSelection[8] = kTrue;
    SavePointSelection(session.PointFile);
    pointSelection = {};
    EXPECT_FALSE(InPoints(point_dialog::kPoints, [](QDialog& dialog) {
        auto* list = Find<QListWidget>(dialog, "lstPoint");
        EXPECT_EQ(list->selectedItems().size(), 0);
        PressKey(dialog, Qt::Key_D, "btnRestore");
        ASSERT_EQ(list->selectedItems().size(), 1);
        EXPECT_EQ(list->selectedItems().first()->text(), "Jupiter");
        PressKey(dialog, Qt::Key_C, "btnCancel");
        EXPECT_FALSE(dialog.isVisible());
    }));
    EXPECT_EQ(pointSelection[8], kFalse);
}

TEST_F(PointsFormTest, PointsFormIsWorkedByTheKeyboardAlone) {
    pointSelection[2] = kTrue;
    EXPECT_TRUE(InPoints(point_dialog::kPoints, [](QDialog& dialog) {
        EXPECT_EQ(TabStops(dialog), QStringList({"lstPoint", "btnRestore", "btnOK", "btnCancel"}));
        // Ctrl moves without a choice, and with the space bar adds to it.
        QWidget* list = QApplication::focusWidget();
        QTest::keyClick(list, Qt::Key_Down, Qt::ControlModifier);
        QTest::keyClick(list, Qt::Key_Down, Qt::ControlModifier);
        QTest::keyClick(list, Qt::Key_Space, Qt::ControlModifier);
        QTest::keyClick(list, Qt::Key_Return);
        EXPECT_FALSE(dialog.isVisible());
    }));
    for (std::size_t point = 1; point <= 36; ++point) {
        EXPECT_EQ(pointSelection[point] != 0, point == 2 || point == 4) << point;
    }
}

TEST_F(PointsFormTest, StarsFormIsEmptyWhileThereAreNoStars) {
    InPoints(point_dialog::kStars, [](QDialog& dialog) {
        EXPECT_EQ(dialog.windowTitle(), "Select Stars");
        EXPECT_EQ(Find<QListWidget>(dialog, "lstPoint")->count(), 0);
        Press(dialog, "btnOK");
        EXPECT_FALSE(dialog.isVisible());
    });
}

// ---- "Select Planet Colors" ----

class PointColoursFormTest : public FormTest {
  protected:
    bool InColours(const Steps& steps) {
        form = OpenPointColours();
        return InForm([this] { return ShowPointColoursForm(form); }, steps);
    }
    static QImage Swatch(const QDialog& dialog, int row, int column) {
        const QIcon icon = Find<QTableWidget>(dialog, "picPlanets")->item(row, column)->icon();
        return icon.pixmap(38, 24).toImage();
    }
    PointColoursForm form;
};

TEST_F(PointColoursFormTest, PointColoursFormShowsThePointsWithTheirColours) {
    InColours([](QDialog& dialog) {
        EXPECT_EQ(dialog.windowTitle(), "Select Planet Colors");
        QStringList captions = Captions(dialog);
        captions.removeAll(QString());  // the grid's own corner
        EXPECT_EQ(captions, Sorted({"&Palette...", "&Apply", "&Save...", "&Cancel"}))
            << captions.join('|').toStdString();
        auto* grid = Find<QTableWidget>(dialog, "picPlanets");
        ASSERT_EQ(grid->rowCount() * grid->columnCount(), 36);
        EXPECT_EQ(grid->item(0, 0)->text(), "The Moon");
        EXPECT_EQ(grid->item(11, 2)->text(), "Black Moon");
        const QColor moon = Swatch(dialog, 0, 0).pixelColor(2, 2);
        EXPECT_EQ(moon, QColor(0, 0x80, 0)) << moon.name().toStdString();
        EXPECT_FALSE(grid->horizontalScrollBar()->isVisible());
    });
}

TEST_F(PointColoursFormTest, ClickedPointGetsItsColourAndApplyDraws) {
    EXPECT_TRUE(InColours([](QDialog& dialog) {
        auto* grid = Find<QTableWidget>(dialog, "picPlanets");
        QTest::mouseClick(grid->viewport(), Qt::LeftButton, {},
                          grid->visualItemRect(grid->item(6, 0)).center());
        TestShell().colourAnswers = {0x0000FF};
        Press(dialog, "btnColor");
        EXPECT_EQ(TestShell().log.back().substr(0, 34), "ChooseColour|Select Color of Mars|");
        EXPECT_EQ(Swatch(dialog, 6, 0).pixelColor(2, 2), QColor(255, 0, 0));
        EXPECT_NE(pointColour[7], 0x0000FF);
        Press(dialog, "btnApply");
        EXPECT_EQ(pointColour[7], 0x0000FF);
        EXPECT_TRUE(dialog.isVisible());
        EXPECT_EQ(linePlots, 1);
    }));
}

TEST_F(PointColoursFormTest, ColourWithThePalettesMarkIsShownPlain) {
    pointColour[1] = PaletteColour(0x0000FF);
    InColours([](QDialog& dialog) {
        EXPECT_EQ(Swatch(dialog, 0, 0).pixelColor(2, 2), QColor(255, 0, 0));
        EXPECT_EQ(Swatch(dialog, 0, 0).pixelColor(2, 2).alpha(), 255);
    });
}

TEST_F(PointColoursFormTest, GridWithoutACurrentCellKeepsThePoint) {
    InColours([this](QDialog& dialog) {
        auto* grid = Find<QTableWidget>(dialog, "picPlanets");
        grid->setCurrentCell(2, 1);
        EXPECT_EQ(form.point, 15);
        grid->setCurrentItem(nullptr);
        EXPECT_EQ(form.point, 15);
    });
}

TEST_F(PointColoursFormTest, CancelWithoutApplyChangesNothing) {
    const auto before = pointColour;
    EXPECT_FALSE(InColours([](QDialog& dialog) {
        TestShell().colourAnswers = {0x123456};
        Press(dialog, "btnColor");
        Press(dialog, "btnCancel");
        EXPECT_FALSE(dialog.isVisible());
    }));
    EXPECT_EQ(pointColour, before);
    EXPECT_EQ(linePlots, 0);
}

TEST_F(PointColoursFormTest, PointColoursFormIsWorkedByTheKeyboardAlone) {
    EXPECT_TRUE(InColours([](QDialog& dialog) {
        EXPECT_EQ(TabStops(dialog),
                  QStringList({"picPlanets", "btnColor", "btnApply", "btnSave", "btnCancel"}));
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Right);
        TestShell().colourAnswers = {0x0000FE};
        PressKey(dialog, Qt::Key_P, "btnColor");
        EXPECT_EQ(TestShell().log.back().substr(0, 36), "ChooseColour|Select Color of Chiron|");
        PressKey(dialog, Qt::Key_S, "btnSave");
        ASSERT_EQ(FileBytes(session.UserColourFile).size(), 144U);
        EXPECT_NE(FileBytes(session.UserColourFile)[48], 0xFE) << "what isn't applied isn't saved";
        EXPECT_EQ(linePlots, 0);
        Find<QTableWidget>(dialog, "picPlanets")->setFocus();
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return);
        EXPECT_EQ(linePlots, 1) << "Enter applies";
        PressKey(dialog, Qt::Key_A, "btnApply");
        EXPECT_EQ(linePlots, 2);
        PressKey(dialog, Qt::Key_S, "btnSave");
        EXPECT_EQ(FileBytes(session.UserColourFile)[48], 0xFE);
        QTest::keyClick(&dialog, Qt::Key_Escape);
        EXPECT_FALSE(dialog.isVisible());
    }));
    EXPECT_EQ(pointColour[13], 0x0000FE);
}

// ---- The palette ----

class PaletteFormTest : public FormTest {
  protected:
    static std::optional<Colour> chosen;
    bool InPalette(const Steps& steps) {
        TestShell().colours = 256;
        chosen.reset();
        return InForm(
            [] {
                chosen = AskColour("Select Sea Color", 0x0000FF);
                return chosen.has_value();
            },
            steps);
    }
};

std::optional<Colour> PaletteFormTest::chosen;

TEST_F(PaletteFormTest, PaletteFormGivesTheClickedEntryWithItsMark) {
    EXPECT_TRUE(InPalette([](QDialog& dialog) {
        EXPECT_EQ(dialog.windowTitle(), "Color Palette - 256 Color Display");
        EXPECT_EQ(Captions(dialog), Sorted({"Select Sea Color", "&Select", "&Cancel"}));
        auto* grid = Find<QWidget>(dialog, "picPalette");
        const QSize cell = grid->size() / 16;
        QTest::mouseClick(grid, Qt::LeftButton, {},
                          QPoint(cell.width() / 2, cell.height() + cell.height() / 2));
        Press(dialog, "btnOK");
    }));
    EXPECT_EQ(chosen, PaletteColour(0xC0DCC0));
}

TEST_F(PaletteFormTest, PaletteFormIsWorkedByTheKeyboardAlone) {
    EXPECT_TRUE(InPalette([](QDialog& dialog) {
        EXPECT_EQ(TabStops(dialog), QStringList({"picPalette", "btnOK", "btnCancel"}));
        QWidget* grid = QApplication::focusWidget();
        QTest::keyClick(grid, Qt::Key_Up);  // nothing above
        QTest::keyClick(grid, Qt::Key_Right);
        QTest::keyClick(grid, Qt::Key_Right);
        PressKey(dialog, Qt::Key_S, "btnOK");
        EXPECT_FALSE(dialog.isVisible());
    }));
    EXPECT_EQ(chosen, PaletteColour(0x00FFFF)) << "two beyond red";
}

TEST_F(PaletteFormTest, ArrowKeysStopAtTheEdgesOfTheList) {
    PaletteForm form{"Select Sea Color", DisplayPalette(), 0};
    InForm([&] { return ShowPaletteForm(form); },
           [&form](QDialog&) {
               QWidget* grid = QApplication::focusWidget();
               const struct {
                   Qt::Key key;
                   std::int16_t from;
                   std::int16_t to;
               } rows[] = {{Qt::Key_Left, 0, 0},     {Qt::Key_Up, 15, 15},
                           {Qt::Key_Left, 16, 15},   {Qt::Key_Right, 15, 16},
                           {Qt::Key_Down, 3, 19},    {Qt::Key_Up, 19, 3},
                           {Qt::Key_Down, 240, 240}, {Qt::Key_Right, 255, 255},
                           {Qt::Key_Left, 255, 254}, {Qt::Key_Down, 239, 255}};
               for (const auto& row : rows) {
                   form.chosen = row.from;
                   QTest::keyClick(grid, row.key);
                   EXPECT_EQ(form.chosen, row.to) << row.key << " from " << row.from;
               }
           });
}

TEST_F(PaletteFormTest, LeftButtonAloneChooses) {
    EXPECT_FALSE(InPalette([](QDialog& dialog) {
        auto* grid = Find<QWidget>(dialog, "picPalette");
        const QImage before = grid->grab().toImage();
        QTest::mouseClick(grid, Qt::RightButton, {}, QPoint(50, 50));
        EXPECT_EQ(grid->grab().toImage(), before);
        QTest::mouseClick(grid, Qt::LeftButton, {}, QPoint(50, 50));
        EXPECT_NE(grid->grab().toImage(), before);
    }));
}

TEST_F(PaletteFormTest, GridShowsWhetherItHasTheFocus) {
    InPalette([](QDialog& dialog) {
        auto* grid = Find<QWidget>(dialog, "picPalette");
        const QImage with = grid->grab().toImage();
        Find<QPushButton>(dialog, "btnOK")->setFocus(Qt::TabFocusReason);
        QCoreApplication::processEvents();
        EXPECT_NE(grid->grab().toImage(), with);
    });
}

TEST_F(PaletteFormTest, CancelledPaletteGivesNoColour) {
    EXPECT_FALSE(InPalette([](QDialog& dialog) { QTest::keyClick(&dialog, Qt::Key_Escape); }));
    EXPECT_FALSE(InPalette([](QDialog& dialog) { PressKey(dialog, Qt::Key_C, "btnCancel"); }));
}

// ---- "User Input" ----

class ZodiacStartFormTest : public FormTest {
  protected:
    bool InStart(const Steps& steps) {
        form = OpenZodiacStart();
        return InForm([this] { return ShowZodiacStartForm(form); }, steps);
    }
    ZodiacStartForm form;
};

TEST_F(ZodiacStartFormTest, ZodiacStartFormRewritesWhatIsLeftAndStoresItOnOk) {
    EXPECT_TRUE(InStart([](QDialog& dialog) {
        EXPECT_EQ(dialog.windowTitle(), "User Input");
        EXPECT_EQ(Captions(dialog),
                  Sorted({"Geodetic Zodiac Start Point",
                          QString::fromUtf8("Terrestrial Longitude at 0° Aries of Geodetic Zodiac"),
                          "OK", "&Cancel"}));
        auto* start = Find<QLineEdit>(dialog, "txtZodiacStart");
        EXPECT_EQ(start->text(), "000W00");
        Type(start, "e 30 15");
        Press(dialog, "btnOK");
    }));
    EXPECT_EQ(options.geodeticStart, -30.25);
}

TEST_F(ZodiacStartFormTest, TextThatCannotBeReadIsToldOnceAndTheFormStays) {
    EXPECT_FALSE(InStart([](QDialog& dialog) {
        auto* start = Find<QLineEdit>(dialog, "txtZodiacStart");
        Type(start, "nowhere");
        QTest::keyClick(start, Qt::Key_Return);
        EXPECT_TRUE(dialog.isVisible());
        EXPECT_EQ(TestShell().boxes.size(), 1U);
        EXPECT_EQ(QApplication::focusWidget(), start);
        Press(dialog, "btnCancel");
        EXPECT_EQ(TestShell().boxes.size(), 1U) << "Cancel asks for no good text";
        EXPECT_FALSE(dialog.isVisible());
    }));
    EXPECT_EQ(options.geodeticStart, 0);
}

TEST_F(ZodiacStartFormTest, LeavingTheFieldRewritesTheTextOrTellsAndComesBack) {
    EXPECT_FALSE(InStart([](QDialog& dialog) {
        auto* start = Find<QLineEdit>(dialog, "txtZodiacStart");
        Type(start, "12w5");
        QTest::keyClick(start, Qt::Key_Tab);
        QCoreApplication::processEvents();
        EXPECT_EQ(start->text(), "012W05");
        EXPECT_EQ(QApplication::focusWidget()->objectName(), "btnOK");
        Type(start, "nowhere");
        QTest::keyClick(start, Qt::Key_Tab);
        QCoreApplication::processEvents();
        EXPECT_EQ(TestShell().boxes.size(), 1U);
        EXPECT_EQ(QApplication::focusWidget(), start);
        EXPECT_EQ(start->text(), "nowhere");
        QTest::keyClick(&dialog, Qt::Key_Escape);
        EXPECT_EQ(TestShell().boxes.size(), 1U);
    }));
    EXPECT_EQ(options.geodeticStart, 0);
}

TEST_F(ZodiacStartFormTest, ClickOnOkTellsOfABadTextOnce) {
    EXPECT_FALSE(InStart([](QDialog& dialog) {
        auto* start = Find<QLineEdit>(dialog, "txtZodiacStart");
        Type(start, "nowhere");
        Press(dialog, "btnOK");
        QCoreApplication::processEvents();
        EXPECT_EQ(TestShell().boxes.size(), 1U);
        EXPECT_TRUE(dialog.isVisible());
        EXPECT_EQ(QApplication::focusWidget(), start);
    }));
}

TEST_F(ZodiacStartFormTest, ZodiacStartFormIsWorkedByTheKeyboardAlone) {
    EXPECT_FALSE(InStart([](QDialog& dialog) {
        EXPECT_EQ(TabStops(dialog), QStringList({"txtZodiacStart", "btnOK", "btnCancel"}));
        PressKey(dialog, Qt::Key_C, "btnCancel");
        EXPECT_FALSE(dialog.isVisible());
    }));
}

// ---- "Select Map Options" ----

class MapOptionsFormTest : public FormTest {
  protected:
    bool InOptions(const Steps& steps) { return InForm(ShowMapOptionsForm, steps); }
};

TEST_F(MapOptionsFormTest, MapOptionsFormShowsItsCaptionsAndTheDocument) {
    InOptions([](QDialog& dialog) {
        EXPECT_EQ(dialog.windowTitle(), "Select Map Options");
        EXPECT_EQ(Captions(dialog), Sorted({"Coordinate Grid",
                                            "Show &Grid",
                                            "Interval of L&atitude",
                                            "Interval of L&ongitude",
                                            "Degrees",
                                            "Degrees",
                                            "&Details to Show",
                                            "City Names",
                                            "Country Names",
                                            "Country Borders",
                                            "State Borders",
                                            "Lakes",
                                            "Rivers",
                                            "City &File...",
                                            "None",
                                            "&Projection",
                                            "Cartesian",
                                            "Mercator",
                                            "Globe (Sphere)",
                                            "Globe (Oblate)",
                                            "OK",
                                            "&Cancel"}));
        EXPECT_FALSE(Find<QCheckBox>(dialog, "chkGrid")->isChecked());
        EXPECT_EQ(Find<QLineEdit>(dialog, "txtInterval0")->text(), "15");
        EXPECT_EQ(Find<QLineEdit>(dialog, "txtInterval1")->text(), "30");
        EXPECT_TRUE(Find<QCheckBox>(dialog, "chkDetail2")->isChecked());
        EXPECT_FALSE(Find<QCheckBox>(dialog, "chkDetail0")->isChecked());
        EXPECT_TRUE(Find<QRadioButton>(dialog, "optProjection0")->isChecked());
    });
}

TEST_F(MapOptionsFormTest, OkTakesGridDetailsAndProjection) {
    EXPECT_TRUE(InOptions([](QDialog& dialog) {
        Press(dialog, "chkGrid");
        Type(Find<QLineEdit>(dialog, "txtInterval0"), "0.2");
        Find<QLineEdit>(dialog, "txtInterval1")->setFocus();
        QCoreApplication::processEvents();
        EXPECT_EQ(Find<QLineEdit>(dialog, "txtInterval0")->text(), "1") << "on leaving the field";
        Type(Find<QLineEdit>(dialog, "txtInterval1"), "400");
        Press(dialog, "chkDetail5");
        Press(dialog, "optProjection1");
        Press(dialog, "btnOK");
    }));
    EXPECT_EQ(CurrentMap().gridOn, kTrue);
    EXPECT_EQ(CurrentMap().gridLatStep, 1);
    EXPECT_EQ(CurrentMap().gridLongStep, 90);
    EXPECT_EQ(CurrentMap().hidden[7], kFalse);
    EXPECT_EQ(CurrentMap().projection, 1);
    EXPECT_EQ(fullPlots, 1);
}

TEST_F(MapOptionsFormTest, IntervalIsClampedOnLeavingItsFieldEvenUntouchedAndNotByOkAlone) {
    CurrentMap().gridLatStep = 0.25F;
    CurrentMap().gridLongStep = 120;
    EXPECT_TRUE(InOptions([](QDialog& dialog) { Press(dialog, "btnOK"); }));
    EXPECT_EQ(CurrentMap().gridLatStep, 0.25F) << "nobody was there";
    EXPECT_EQ(fullPlots, 0);
    EXPECT_TRUE(InOptions([](QDialog& dialog) {
        auto* latitude = Find<QLineEdit>(dialog, "txtInterval0");
        auto* longitude = Find<QLineEdit>(dialog, "txtInterval1");
        EXPECT_EQ(latitude->text(), "0.25");
        latitude->setFocus();
        QTest::keyClick(latitude, Qt::Key_Tab);
        EXPECT_EQ(latitude->text(), "1");
        EXPECT_EQ(longitude->text(), "120") << "that one hasn't been left";
        Press(dialog, "btnOK");  // by the mouse, out of the other field
    }));
    EXPECT_EQ(CurrentMap().gridLatStep, 1);
    EXPECT_EQ(CurrentMap().gridLongStep, 90);
    EXPECT_EQ(fullPlots, 1);
}

TEST_F(MapOptionsFormTest, EnterInAFieldTakesWhatWasTyped) {
    EXPECT_TRUE(InOptions([](QDialog& dialog) {
        auto* latitude = Find<QLineEdit>(dialog, "txtInterval0");
        Type(latitude, "500");
        QTest::keyClick(latitude, Qt::Key_Return);
        EXPECT_FALSE(dialog.isVisible());
    }));
    EXPECT_EQ(CurrentMap().gridLatStep, 90);
}

TEST_F(MapOptionsFormTest, OkWithNothingChangedDrawsNothing) {
    EXPECT_TRUE(InOptions([](QDialog& dialog) { Press(dialog, "btnOK"); }));
    EXPECT_EQ(fullPlots, 0);
}

TEST_F(MapOptionsFormTest, CityNamesNeedAFileAndShowItsName) {
    EXPECT_FALSE(InOptions([](QDialog& dialog) {
        Press(dialog, "chkDetail0");
        EXPECT_EQ(TestShell().boxes, Log{"Select File: In order to show city names on the map, "
                                         "you must select a city file."});
        EXPECT_FALSE(Find<QCheckBox>(dialog, "chkDetail0")->isChecked()) << "the choice failed";
        TestShell().fileAnswers = {"/maps/world.ovc"};
        Press(dialog, "chkDetail0");
        EXPECT_TRUE(Find<QCheckBox>(dialog, "chkDetail0")->isChecked());
        EXPECT_EQ(Find<QLabel>(dialog, "pnlCityFile")->text(), "world");
        QTest::keyClick(&dialog, Qt::Key_Escape);
    }));
    EXPECT_EQ(CurrentMap().cityFile, "");
    EXPECT_EQ(CurrentMap().hidden[8], kTrue);
}

TEST_F(MapOptionsFormTest, MapOptionsFormIsWorkedByTheKeyboardAlone) {
    EXPECT_FALSE(InOptions([](QDialog& dialog) {
        EXPECT_EQ(FocusAfterAlt(dialog, Qt::Key_D), "chkDetail0");
        Find<QCheckBox>(dialog, "chkGrid")->setFocus();
        EXPECT_EQ(TabStops(dialog),
                  QStringList({"chkGrid", "txtInterval0", "txtInterval1", "chkDetail0",
                               "chkDetail1", "chkDetail2", "chkDetail3", "chkDetail4", "chkDetail5",
                               "btnCityFile", "optProjection0", "btnOK", "btnCancel"}));
        EXPECT_EQ(FocusAfterAlt(dialog, Qt::Key_A), "txtInterval0");
        EXPECT_EQ(FocusAfterAlt(dialog, Qt::Key_O), "txtInterval1");
        EXPECT_EQ(FocusAfterAlt(dialog, Qt::Key_P), "optProjection0");
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Down);
        EXPECT_TRUE(Find<QRadioButton>(dialog, "optProjection1")->isChecked());
        PressKey(dialog, Qt::Key_G, "chkGrid");
        EXPECT_TRUE(Find<QCheckBox>(dialog, "chkGrid")->isChecked());
        PressKey(dialog, Qt::Key_F, "btnCityFile");
        EXPECT_EQ(TestShell().log, Log{"ChooseFile|Select Cities File to Open|*.ovc|open"});
        PressKey(dialog, Qt::Key_C, "btnCancel");
        EXPECT_FALSE(dialog.isVisible());
    }));
    EXPECT_EQ(CurrentMap().projection, 0);
}

// ---- "Save Map As" ----

class SaveMapFormTest : public FormTest {
  protected:
    bool InSave(const Steps& steps) { return InForm(ShowSaveMapForm, steps); }
};

TEST_F(SaveMapFormTest, SaveMapFormSavesUnderTheNameInTheFolder) {
    mapState.name = "old";
    CurrentMap().title = "Old title";
    EXPECT_TRUE(InSave([](QDialog& dialog) {
        EXPECT_EQ(dialog.windowTitle(), "Save Map As");
        EXPECT_EQ(Find<QLineEdit>(dialog, "txtName")->text(), "old");
        EXPECT_EQ(Find<QLineEdit>(dialog, "txtDescription")->text(), "Old title");
        Type(Find<QLineEdit>(dialog, "txtName"), "europe");
        Type(Find<QLineEdit>(dialog, "txtDescription"), "Europe in spring");
        Press(dialog, "btnOK");
        EXPECT_FALSE(dialog.isVisible());
    }));
    EXPECT_EQ(CurrentMap().title, "Europe in spring");
    EXPECT_EQ(FileBytes(folder.File("europe.ovm")).size(), 140U);
    EXPECT_EQ(session.RecentCount, 1);
}

TEST_F(SaveMapFormTest, BadNameKeepsTheFormOpen) {
    EXPECT_FALSE(InSave([](QDialog& dialog) {
        Type(Find<QLineEdit>(dialog, "txtName"), "much too long");
        Press(dialog, "btnOK");
        EXPECT_TRUE(dialog.isVisible());
        EXPECT_EQ(TestShell().boxes, Log{"File Error: File name is not valid. Please enter a name "
                                         "with up to 8 characters with no extension."});
    }));
    EXPECT_EQ(session.RecentCount, 0);
}

TEST_F(SaveMapFormTest, FolderIsShownAsThePlatformHasIt) {
    EXPECT_FALSE(InSave([](QDialog& dialog) {
        const QString shown = Find<QLineEdit>(dialog, "txtFolder")->text();
        EXPECT_FALSE(shown.contains('\\')) << shown.toStdString();
        EXPECT_TRUE(shown.startsWith('/'));
        Type(Find<QLineEdit>(dialog, "txtFolder"), "/nowhere/at/all");
        Type(Find<QLineEdit>(dialog, "txtName"), "x");
        Press(dialog, "btnOK");
        EXPECT_TRUE(dialog.isVisible()) << "it can't be written";
        EXPECT_EQ(TestShell().boxes.size(), 1U);
    }));
}

TEST_F(SaveMapFormTest, SaveMapFormIsWorkedByTheKeyboardAlone) {
    EXPECT_TRUE(InSave([](QDialog& dialog) {
        EXPECT_EQ(TabStops(dialog), QStringList({"txtName", "txtDescription", "txtFolder",
                                                 "btnFolder", "btnOK", "btnCancel"}));
        EXPECT_EQ(FocusAfterAlt(dialog, Qt::Key_F), "txtFolder");
        EXPECT_EQ(FocusAfterAlt(dialog, Qt::Key_D), "txtDescription");
        EXPECT_EQ(FocusAfterAlt(dialog, Qt::Key_N), "txtName");
        auto* name = dynamic_cast<QLineEdit*>(QApplication::focusWidget());
        ASSERT_NE(name, nullptr);
        Type(name, "keys");
        QTest::keyClick(name, Qt::Key_Return);
        EXPECT_FALSE(dialog.isVisible());
    }));
    EXPECT_EQ(FileBytes(folder.File("keys.ovm")).size(), 140U);
}

TEST_F(SaveMapFormTest, CancelByItsKeySavesNothing) {
    EXPECT_FALSE(InSave([](QDialog& dialog) {
        Type(Find<QLineEdit>(dialog, "txtName"), "keys");
        PressKey(dialog, Qt::Key_C, "btnCancel");
        EXPECT_FALSE(dialog.isVisible());
    }));
    EXPECT_TRUE(FileBytes(folder.File("keys.ovm")).empty());
}

// ---- "Save Settings As" ----

class SaveSettingsFormTest : public FormTest {
  protected:
    void SetUp() override {
        FormTest::SetUp();
        session.SettingsName = "old";
        settings.description = "Old colours";
    }
    bool InSave(const Steps& steps) { return InForm(ShowSaveSettingsForm, steps); }
};

TEST_F(SaveSettingsFormTest, SaveSettingsFormShowsItsCaptionsAndItsRecord) {
    EXPECT_FALSE(InSave([](QDialog& dialog) {
        EXPECT_EQ(dialog.windowTitle(), "Save Settings As");
        EXPECT_EQ(Captions(dialog),
                  Sorted({"File &Name", "&Description", "&Folder", "&Browse...", "OK", "&Cancel"}));
        EXPECT_EQ(Find<QLineEdit>(dialog, "txtName")->text(), "old");
        EXPECT_EQ(Find<QLineEdit>(dialog, "txtDescription")->text(), "Old colours");
        EXPECT_EQ(TabStops(dialog), QStringList({"txtName", "txtDescription", "txtFolder",
                                                 "btnFolder", "btnOK", "btnCancel"}));
        EXPECT_EQ(FocusAfterAlt(dialog, Qt::Key_F), "txtFolder");
        EXPECT_EQ(FocusAfterAlt(dialog, Qt::Key_D), "txtDescription");
        EXPECT_EQ(FocusAfterAlt(dialog, Qt::Key_N), "txtName");
        PressKey(dialog, Qt::Key_C, "btnCancel");
        EXPECT_FALSE(dialog.isVisible());
    }));
}

TEST_F(SaveSettingsFormTest, EnterSavesUnderTheNameAndABadNameKeepsTheFormOpen) {
    EXPECT_TRUE(InSave([](QDialog& dialog) {
        auto* name = Find<QLineEdit>(dialog, "txtName");
        Type(name, "much too long");
        QTest::keyClick(name, Qt::Key_Return);
        EXPECT_TRUE(dialog.isVisible());
        EXPECT_EQ(TestShell().boxes, Log{"File Error: File name is not valid. Please enter a name "
                                         "with up to 8 characters with no extension."});
        EXPECT_EQ(QApplication::focusWidget(), name);
        Type(Find<QLineEdit>(dialog, "txtDescription"), "Mine");
        Type(name, "mine");
        QTest::keyClick(name, Qt::Key_Return);
        EXPECT_FALSE(dialog.isVisible());
    }));
    EXPECT_EQ(FileBytes(folder.File("mine.ovs")).size(), 340U);
    EXPECT_EQ(settings.description, "Mine");
}

TEST_F(SaveSettingsFormTest, EscSavesNothing) {
    EXPECT_FALSE(InSave([](QDialog& dialog) {
        auto* name = Find<QLineEdit>(dialog, "txtName");
        Type(name, "mine");
        QTest::keyClick(name, Qt::Key_Escape);
        EXPECT_FALSE(dialog.isVisible());
    }));
    EXPECT_TRUE(FileBytes(folder.File("mine.ovs")).empty());
    EXPECT_EQ(settings.description, "Old colours");
}

// ---- Themes ----

// WCAG 2.1: relative luminance of a colour, and the contrast of two, 1 to 21.
double Luminance(const QColor& colour) {
    const auto part = [](double value) {
        return value <= 0.03928 ? value / 12.92 : std::pow((value + 0.055) / 1.055, 2.4);
    };
    return 0.2126 * part(colour.redF()) + 0.7152 * part(colour.greenF()) +
           0.0722 * part(colour.blueF());
}

double Contrast(const QColor& a, const QColor& b) {
    const double light = std::max(Luminance(a), Luminance(b));
    const double dark = std::min(Luminance(a), Luminance(b));
    return (light + 0.05) / (dark + 0.05);
}

// The contrast of what is written in a part of a form: between its commonest colour, the ground,
// and the one that stands out most from it.
double ContrastSeen(const QImage& picture, const QRect& part) {
    std::map<QRgb, int> counts;
    const QRect seen = part.intersected(picture.rect());
    for (int y = seen.top(); y <= seen.bottom(); ++y) {
        for (int x = seen.left(); x <= seen.right(); ++x) ++counts[picture.pixel(x, y)];
    }
    if (counts.empty()) return 0;
    const auto ground =
        std::max_element(counts.begin(), counts.end(),
                         [](const auto& a, const auto& b) { return a.second < b.second; });
    double most = 1;
    for (const auto& [colour, count] : counts) {
        most = std::max(most, Contrast(QColor(colour), QColor(ground->first)));
    }
    return most;
}

// The forms draw in the desktop's colours: what is written in them can be read in a light theme and
// in a dark one. 4.5 is the contrast that readable text needs (WCAG 2.1, 1.4.3).
class ThemeTest : public FormTest, public ::testing::WithParamInterface<bool> {
  protected:
    static constexpr double kReadable = 4.5;
    QPalette before;

    void SetUp() override {
        FormTest::SetUp();
        before = QApplication::palette();
        QPalette theme(QColor(0xE8, 0xE8, 0xEA), QColor(0xF2, 0xF2, 0xF4));
        theme.setColor(QPalette::Base, Qt::white);
        if (GetParam()) {
            theme = QPalette(QColor(0x3C, 0x3C, 0x40), QColor(0x2A, 0x2A, 0x2E));
            theme.setColor(QPalette::Base, QColor(0x18, 0x18, 0x1B));
        }
        theme.setColor(QPalette::Highlight, QColor(0x30, 0x60, 0xB0));
        theme.setColor(QPalette::HighlightedText, Qt::white);
        QApplication::setPalette(theme);
        pointSelection[2] = kTrue;
    }
    void TearDown() override {
        QApplication::setPalette(before);
        FormTest::TearDown();
    }

    static QRect PartOf(const QDialog& dialog, const QWidget* child) {
        return {child->mapTo(&dialog, QPoint()), child->size()};
    }

    // Of a list's entry, its text alone: the pictures of points are in colours of their own.
    static QRect TextOf(const QDialog& dialog, const QAbstractItemView& view,
                        const QModelIndex& index) {
        QRect part = view.visualRect(index).intersected(view.viewport()->rect());
        if (!index.data(Qt::DecorationRole).isNull()) {
            part.adjust(view.iconSize().width() + 4, 0, 0, 0);
        }
        return part.translated(view.viewport()->mapTo(&dialog, QPoint()));
    }

    static void CheckEntries(const QDialog& dialog, const QImage& picture,
                             const QAbstractItemView& view) {
        const QAbstractItemModel& model = *view.model();
        for (int row = 0; row < model.rowCount(); ++row) {
            for (int column = 0; column < model.columnCount(); ++column) {
                const QModelIndex index = model.index(row, column);
                const QRect part = TextOf(dialog, view, index);
                if (part.height() < 10 || index.data().toString().isEmpty()) continue;
                EXPECT_GE(ContrastSeen(picture, part), kReadable)
                    << index.data().toString().toStdString()
                    << (view.selectionModel()->isSelected(index) ? ", selected" : "");
            }
        }
    }

    // Every text of a form against its ground, and the form's ground against the theme's.
    static void CheckReadable(QDialog& dialog) {
        const QImage picture = dialog.grab().toImage();
        EXPECT_EQ(picture.pixelColor(1, 1), QApplication::palette().color(QPalette::Window));
        int texts = 0;
        for (const QWidget* child : dialog.findChildren<QWidget*>()) {
            if (!child->isVisible()) continue;
            const auto* button = dynamic_cast<const QAbstractButton*>(child);
            const auto* label = dynamic_cast<const QLabel*>(child);
            const auto* field = dynamic_cast<const QLineEdit*>(child);
            const auto* box = dynamic_cast<const QComboBox*>(child);
            QString text;
            if (button != nullptr) text = button->text();
            if (label != nullptr) text = label->text();
            if (field != nullptr) text = field->text();
            if (box != nullptr) text = box->currentText();
            if (const auto* view = dynamic_cast<const QAbstractItemView*>(child)) {
                CheckEntries(dialog, picture, *view);
            }
            if (text.isEmpty()) continue;
            ++texts;
            EXPECT_GE(ContrastSeen(picture, PartOf(dialog, child)), kReadable)
                << text.toStdString();
        }
        EXPECT_GE(texts, 2);
    }
};

TEST_P(ThemeTest, LinesFormIsReadable) {
    LinesForm form = OpenLines();
    InForm([&] { return ShowLinesForm(form); }, CheckReadable);
}

TEST_P(ThemeTest, PrefsFormIsReadable) {
    PrefsForm form = OpenPrefs();
    InForm([&] { return ShowPrefsForm(form); }, CheckReadable);
}

TEST_P(ThemeTest, PointsFormIsReadable) {
    PointsForm form = OpenPoints(point_dialog::kPoints);
    InForm([&] { return ShowPointsForm(form); }, CheckReadable);
}

TEST_P(ThemeTest, PointColoursFormIsReadable) {
    PointColoursForm form = OpenPointColours();
    InForm([&] { return ShowPointColoursForm(form); }, CheckReadable);
}

TEST_P(ThemeTest, ZodiacStartFormIsReadable) {
    ZodiacStartForm form = OpenZodiacStart();
    InForm([&] { return ShowZodiacStartForm(form); }, CheckReadable);
}

TEST_P(ThemeTest, PaletteFormIsReadable) {
    PaletteForm form{"Select Sea Color", DisplayPalette(), 3};
    InForm([&] { return ShowPaletteForm(form); }, CheckReadable);
}

TEST_P(ThemeTest, MapOptionsFormIsReadable) {
    InForm(ShowMapOptionsForm, CheckReadable);
}

TEST_P(ThemeTest, SaveMapFormIsReadable) {
    InForm(ShowSaveMapForm, CheckReadable);
}

INSTANTIATE_TEST_SUITE_P(Desktop, ThemeTest, ::testing::Bool(),
                         [](const auto& theme) { return theme.param ? "Dark" : "Light"; });

}  // namespace
}  // namespace orvantis

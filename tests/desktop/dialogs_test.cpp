// The forms of the dialogs: what they show of their records, and what pressing and leaving does.
// With ORVANTIS_PICTURES set to a folder, each form leaves its picture there.
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
#include <functional>
#include <gtest/gtest.h>

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
                                            "&Parans of The Moon",
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
        QTest::keyClick(Find<QLineEdit>(dialog, "txtParan"), Qt::Key_Return);
        EXPECT_FALSE(dialog.isVisible());
    }));
    EXPECT_EQ(options.paranPoint, 3);
    EXPECT_EQ(options.lineMode, 2);
    EXPECT_EQ(options.paranLimit, 5);
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
        EXPECT_TRUE(Captions(dialog).join('|').contains("&Palette..."));
        EXPECT_TRUE(Captions(dialog).join('|').contains("&Apply"));
        EXPECT_TRUE(Captions(dialog).join('|').contains("&Save..."));
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
        EXPECT_EQ(FileBytes(session.UserColourFile).size(), 144U);
        EXPECT_EQ(linePlots, 0);
        Find<QTableWidget>(dialog, "picPlanets")->setFocus();
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return);
        EXPECT_EQ(linePlots, 1) << "Enter applies";
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
        EXPECT_EQ(dialog.windowTitle(), "Select Sea Color");
        EXPECT_EQ(Captions(dialog),
                  Sorted({"Color Palette - 256 Color Display", "&Select", "&Cancel"}));
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

TEST_F(PaletteFormTest, CancelledPaletteGivesNoColour) {
    EXPECT_FALSE(InPalette([](QDialog& dialog) { QTest::keyClick(&dialog, Qt::Key_Escape); }));
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
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Escape);
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

// ---- Themes ----

// The forms draw in the desktop's colours: on a dark one nothing of them stays light.
class ThemeTest : public FormTest {
  protected:
    void SetUp() override {
        FormTest::SetUp();
        before = QApplication::palette();
        QPalette dark(QColor(0x3C, 0x3C, 0x40), QColor(0x2A, 0x2A, 0x2E));
        dark.setColor(QPalette::Base, QColor(0x18, 0x18, 0x1B));
        dark.setColor(QPalette::Highlight, QColor(0x30, 0x60, 0xB0));
        dark.setColor(QPalette::HighlightedText, Qt::white);
        QApplication::setPalette(dark);
    }
    void TearDown() override {
        QApplication::setPalette(before);
        FormTest::TearDown();
    }

    // Share of a form's pixels that are light; samples of the map's own colours aside.
    static double LightShare(QDialog& dialog) {
        const QImage picture = dialog.grab().toImage();
        const QWidget* sample = dialog.findChild<QWidget*>(QStringLiteral("Picture1"));
        const QRect aside =
            sample != nullptr ? QRect(sample->mapTo(&dialog, QPoint()), sample->size()) : QRect();
        int light = 0;
        for (int y = 0; y < picture.height(); ++y) {
            for (int x = 0; x < picture.width(); ++x) {
                if (aside.contains(x, y)) continue;
                if (qGray(picture.pixel(x, y)) > 0xA0) ++light;
            }
        }
        return static_cast<double>(light) / (picture.width() * picture.height());
    }

    QPalette before;
};

TEST_F(ThemeTest, DarkLinesForm) {
    LinesForm form = OpenLines();
    InForm([&] { return ShowLinesForm(form); },
           [](QDialog& dialog) { EXPECT_LT(LightShare(dialog), 0.1); });
}

TEST_F(ThemeTest, DarkPrefsForm) {
    PrefsForm form = OpenPrefs();
    InForm([&] { return ShowPrefsForm(form); },
           [](QDialog& dialog) { EXPECT_LT(LightShare(dialog), 0.1); });
}

TEST_F(ThemeTest, DarkPointsForm) {
    pointColour.fill(0x800000);
    pointSelection[2] = kTrue;
    PointsForm form = OpenPoints(point_dialog::kPoints);
    InForm([&] { return ShowPointsForm(form); },
           [](QDialog& dialog) { EXPECT_LT(LightShare(dialog), 0.1); });
}

TEST_F(ThemeTest, DarkPointColoursForm) {
    pointColour.fill(0x800000);
    PointColoursForm form = OpenPointColours();
    InForm([&] { return ShowPointColoursForm(form); },
           [](QDialog& dialog) { EXPECT_LT(LightShare(dialog), 0.1); });
}

TEST_F(ThemeTest, DarkZodiacStartForm) {
    ZodiacStartForm form = OpenZodiacStart();
    InForm([&] { return ShowZodiacStartForm(form); },
           [](QDialog& dialog) { EXPECT_LT(LightShare(dialog), 0.1); });
}

TEST_F(ThemeTest, DarkPaletteForm) {
    PaletteForm form{"Select Sea Color", std::vector<Colour>(256, 0x400000), 3};
    InForm([&] { return ShowPaletteForm(form); },
           [](QDialog& dialog) { EXPECT_LT(LightShare(dialog), 0.1); });
}

TEST_F(ThemeTest, DarkMapOptionsForm) {
    InForm(ShowMapOptionsForm, [](QDialog& dialog) { EXPECT_LT(LightShare(dialog), 0.1); });
}

TEST_F(ThemeTest, DarkSaveMapForm) {
    InForm(ShowSaveMapForm, [](QDialog& dialog) { EXPECT_LT(LightShare(dialog), 0.1); });
}

}  // namespace
}  // namespace orvantis

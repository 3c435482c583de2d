#include "session/display_dialogs.h"

#include <algorithm>
#include <filesystem>
#include <gtest/gtest.h>
#include <limits>
#include <set>

#include "session/commands.h"
#include "session/session_state.h"
#include "session/tables.h"
#include "support/recording_surface.h"
#include "support/reset_all.h"
#include "support/temp_folder.h"
#include "text/bytes.h"

namespace orvantis {
namespace {

using Log = std::vector<std::string>;

const std::string kNoChart =
    "MessageBox|No Chart Selected|No chart is currently being displayed.\\r\\nYou must select a "
    "chart or create a new chart before the selected points can be displayed.|Ok|Exclamation";
const std::string kSinglePoint =
    "MessageBox|Orvantis|You must select only a single point to use as the paran "
    "point.|Ok|Exclamation";
const std::string kSaveColours =
    "MessageBox|Orvantis|Are you sure that you wish to save the current colors to file for use in "
    "future sessions?|OkCancel|Question";

int linePlots = 0;
int fullPlots = 0;

class DisplayDialogsTest : public testing::Test {
  protected:
    void SetUp() override {
        ResetAll();
        linePlots = 0;
        fullPlots = 0;
        plotLinesAnew = [] { ++linePlots; };
        plotAnew = [] { ++fullPlots; };
        session.PointFile = folder.File("mine.pts");
        session.UserColourFile = folder.File("orvantis.pco");
    }
    void TearDown() override { ResetAll(); }

    static const Log& Calls() { return TestShell().log; }

    TempFolder folder;
};

// ---- "Select Lines" ----

class LinesDialogTest : public DisplayDialogsTest {};

TEST_F(LinesDialogTest, OpensWithModeBoxesLimitAndParanPoint) {
    options.lineMode = 2;
    options.paranLimit = 66.5F;
    options.paranPoint = 12;
    const LinesForm form = OpenLines();
    EXPECT_EQ(form.lineMode, 2);
    EXPECT_EQ(form.paranLimit, "66.5");
    EXPECT_EQ(form.paranCaption, "Parans of..");
    for (std::size_t type = 1; type <= 11; ++type) EXPECT_EQ(form.shown[type], type <= 4) << type;
}

TEST_F(LinesDialogTest, InMundoAndZodiacalNameTheFirstFourBoxes) {
    const std::vector<std::string_view> mundo = {"Culminate", "Anticulminate", "Rise", "Set"};
    const std::vector<std::string_view> zodiacal = {"MC", "IC", "Asc", "Dsc"};
    const std::vector<std::string_view> others = {"Rise/Set to Rise/Set", "Rise/Set to Culm/Anti",
                                                  "Planet Directions",    "Local Houses",
                                                  "Local Horizon",        "Ecliptic",
                                                  "Zodiacal Signs"};
    for (std::int16_t type = 1; type <= 4; ++type) {
        const auto i = static_cast<std::size_t>(type - 1);
        EXPECT_EQ(LineBoxCaption(type, 1), mundo[i]);
        EXPECT_EQ(LineBoxCaption(type, 2), zodiacal[i]);
    }
    for (std::int16_t type = 5; type <= 11; ++type) {
        const auto i = static_cast<std::size_t>(type - 5);
        EXPECT_EQ(LineBoxCaption(type, 1), others[i]);
        EXPECT_EQ(LineBoxCaption(type, 2), others[i]);
    }
    EXPECT_EQ(LineBoxCaption(0, 1), "");
    EXPECT_EQ(LineBoxCaption(12, 2), "");
}

TEST_F(LinesDialogTest, OkWithZodiacalDrawsTheLinesInLineModeTwo) {
    static std::int16_t drawnMode = 0;
    drawnMode = 0;
    plotLinesAnew = [] { drawnMode = options.lineMode; };
    session.ChartNumber = 1;
    LinesForm form = OpenLines();
    form.lineMode = 2;
    AcceptLines(form);
    EXPECT_EQ(drawnMode, 2);
    form.lineMode = 1;
    AcceptLines(form);
    EXPECT_EQ(drawnMode, 1);
}

TEST_F(LinesDialogTest, OkTakesBoxesAndLimitAndEndsInAQuickPass) {
    session.ChartNumber = 3;
    LinesForm form = OpenLines();
    form.shown = {};
    form.shown[2] = true;
    form.shown[5] = true;
    form.shown[11] = true;
    form.paranLimit = " 48.25 deg";
    AcceptLines(form);
    for (std::size_t type = 0; type < kLineTypeCount; ++type) {
        const bool asItWas = type == 0 || type > 11;
        const bool on = asItWas || type == 2 || type == 5 || type == 11;
        EXPECT_EQ(settings.lineStyle[type].displayed, on ? kTrue : kFalse) << type;
    }
    EXPECT_EQ(options.paranLimit, 48.25F);
    EXPECT_EQ(linePlots, 1);
    EXPECT_EQ(fullPlots, 0);
    EXPECT_EQ(Calls(), Log());
}

TEST_F(LinesDialogTest, OkWithNoChartClosesWithoutAPlot) {
    LinesForm form = OpenLines();
    form.lineMode = 2;
    AcceptLines(form);
    EXPECT_EQ(options.lineMode, 2);
    EXPECT_EQ(linePlots + fullPlots, 0);
    EXPECT_EQ(Calls(), Log());
}

TEST_F(LinesDialogTest, LimitIsAnyFiniteNumberAndATextThatIsNoneIsZero) {
    constexpr float kLargest = std::numeric_limits<float>::max();
    struct Row {
        const char* text;
        float limit;
    };
    const Row rows[] = {{"60", 60},
                        {"", 0},
                        {"abc", 0},
                        {"-5", -5},
                        {"91", 91},
                        {"1e99", kLargest},
                        {"-1e999", -kLargest},
                        {"nan", 0},
                        {"66.55", 66.55F}};
    for (const Row& row : rows) {
        LinesForm form = OpenLines();
        form.paranLimit = row.text;
        AcceptLines(form);
        EXPECT_EQ(options.paranLimit, row.limit) << row.text;
    }
}

TEST_F(LinesDialogTest, ParansOfOpensThePointsInTheSingleChoiceModeAndTheCaptionFollows) {
    static std::int16_t shownMode = 0;
    shownMode = -1;
    showPointsForm = [](PointsForm& points) {
        shownMode = points.mode;
        points.chosen.assign(points.chosen.size(), false);
        points.chosen[6] = true;
        EXPECT_TRUE(CheckPoints(points));
        AcceptPoints(points);
        return true;
    };
    session.ChartNumber = 1;
    LinesForm form = OpenLines();
    form.shown[6] = true;
    EXPECT_EQ(form.paranCaption, "Parans of..");
    ChooseParanPoint(form);
    EXPECT_EQ(Calls(), Log());
    EXPECT_EQ(shownMode, point_dialog::kParanPoint);
    EXPECT_EQ(form.paranCaption, "Parans of Mars");
    EXPECT_EQ(options.paranPoint, 7);
    EXPECT_EQ(linePlots, 1);
}

TEST_F(LinesDialogTest, ParansOfThatIsCancelledLeavesThePoint) {
    showPointsForm = [](PointsForm& points) {
        points.chosen.assign(points.chosen.size(), true);
        return false;
    };
    LinesForm form = OpenLines();
    ChooseParanPoint(form);
    EXPECT_EQ(form.paranCaption, "Parans of The Moon");
    EXPECT_EQ(options.paranPoint, 1);
}

TEST_F(LinesDialogTest, ParansOfWithNoParanLineTypeOnTellsAndThePointsFollow) {
    static std::vector<std::size_t> told;  // how many messages stood before the points dialog
    told.clear();
    showPointsForm = [](PointsForm&) {
        told.push_back(TestShell().log.size());
        return false;
    };
    LinesForm form = OpenLines();
    ChooseParanPoint(form);
    EXPECT_EQ(told, std::vector<std::size_t>{1});
    EXPECT_EQ(Calls(), Log{"MessageBox|Orvantis|There are no paran line types currently selected "
                           "for display.\\r\\nIn order to see paran lines, you must first switch "
                           "on at least one paran line type on the next screen.|Ok|Information"});
    for (const std::size_t type : {5, 6}) {
        TestShell().log.clear();
        form.shown = {};
        form.shown[type] = true;
        EXPECT_EQ(settings.lineStyle[type].displayed, kFalse) << "the form's own boxes count";
        ChooseParanPoint(form);
        EXPECT_EQ(Calls(), Log()) << type;
    }
    EXPECT_EQ(told, (std::vector<std::size_t>{1, 0, 0}));
}

// ---- "Lines & Symbols" ----

class PrefsDialogTest : public DisplayDialogsTest {};

TEST_F(PrefsDialogTest, OkTakesStylesColoursAndSizeAndEndsInAFullPlot) {
    PrefsForm form = OpenPrefs();
    EXPECT_EQ(form.landColour, settings.mapBackColour);
    EXPECT_EQ(form.seaColour, settings.specialFillColour);
    EXPECT_EQ(form.symbolSize, 9);
    for (LineStyle& style : form.lineStyle) style = {kTrue, kTrue, 0x123456, 7, 3, 1};
    form.landColour = 0x010203;
    form.seaColour = 0x040506;
    form.symbolSize = 14;
    EXPECT_EQ(settings.lineStyle[1].thickness, 1) << "until OK nothing changes";
    EXPECT_EQ(settings.mapBackColour, 0x80FF00);

    AcceptPrefs(form);
    for (std::size_t type = 1; type <= 13; ++type) {
        EXPECT_EQ(settings.lineStyle[type].thickness, 7) << type;
        EXPECT_EQ(settings.lineStyle[type].style, 3) << type;
        EXPECT_EQ(settings.lineStyle[type].colour, 0x123456) << type;
    }
    EXPECT_EQ(settings.lineStyle[0].thickness, 1);
    EXPECT_EQ(settings.lineStyle[14].thickness, 1);
    EXPECT_EQ(settings.mapBackColour, 0x010203);
    EXPECT_EQ(settings.specialFillColour, 0x040506);
    EXPECT_EQ(settings.symbolSize, 14);
    EXPECT_EQ(fullPlots, 1);
    EXPECT_EQ(linePlots, 0);
    EXPECT_EQ(Calls(), Log());
}

TEST_F(PrefsDialogTest, ColourButtonsAskUnderTheirTitlesFromTheColourOfTheMoment) {
    PrefsForm form = OpenPrefs();
    form.lineStyle[3].colour = 11;
    form.seaColour = 12;
    form.landColour = 13;
    TestShell().colourAnswers = {21, 22, 23};
    EXPECT_TRUE(ChooseLineColour(form, 3));
    EXPECT_TRUE(ChooseSeaColour(form));
    EXPECT_TRUE(ChooseLandColour(form));
    EXPECT_EQ(Calls(), (Log{"ChooseColour|Select Line Color|11", "ChooseColour|Select Sea Color|12",
                            "ChooseColour|Select Land Color|13"}));
    EXPECT_EQ(form.lineStyle[3].colour, 21);
    EXPECT_EQ(form.seaColour, 22);
    EXPECT_EQ(form.landColour, 23);
    EXPECT_EQ(settings.mapBackColour, 0x80FF00);
}

TEST_F(PrefsDialogTest, CancelledChoiceOfAColourLeavesIt) {
    PrefsForm form = OpenPrefs();
    const Colour line = form.lineStyle[1].colour;
    EXPECT_FALSE(ChooseLineColour(form, 1));
    EXPECT_FALSE(ChooseSeaColour(form));
    EXPECT_FALSE(ChooseLandColour(form));
    EXPECT_EQ(form.lineStyle[1].colour, line);
    EXPECT_EQ(form.seaColour, settings.specialFillColour);
    EXPECT_EQ(form.landColour, settings.mapBackColour);
}

TEST_F(PrefsDialogTest, SampleShowsLandSeaLineAndLabelOfTheType) {
    PrefsForm form = OpenPrefs();
    form.landColour = 0x00C800;
    form.seaColour = 0xFF8040;
    form.lineStyle[2] = {kTrue, kFalse, 0x0000FF, 5, 1, 2};
    form.symbolSize = 12;
    RecordingSurface surface(100, 40);
    DrawLineSample(surface, form, 2);
    EXPECT_EQ(surface.GetPixel(2, 2), 0x00C800);
    const auto has = [&](std::string_view text) {
        return std::any_of(surface.log.begin(), surface.log.end(), [&](const std::string& line) {
            return line.find(text) != std::string::npos;
        });
    };
    EXPECT_TRUE(has("SetPen 5 1 255")) << testing::PrintToString(surface.log);
    EXPECT_TRUE(has("Rectangle 50 0 100 40 solid 16744512"));
    EXPECT_TRUE(has("MoveTo 0 20"));
    EXPECT_TRUE(has("LineTo 100 20"));
    EXPECT_TRUE(has("SelectFont QX Symbol 12"));
    EXPECT_EQ(surface.Calls("Ellipse").size(), 1U);
    EXPECT_EQ(surface.Calls("TextOut").size(), 1U);
}

TEST_F(PrefsDialogTest, SampleOfEveryTypeIsDrawnWhateverAFileHeld) {
    PrefsForm form = OpenPrefs();
    form.symbolSize = std::numeric_limits<float>::quiet_NaN();
    for (LineStyle& style : form.lineStyle) style = {kTrue, kTrue, -1, -5, 99, -7};
    for (std::int16_t type = 1; type <= 13; ++type) {
        RecordingSurface surface(100, 40);
        DrawLineSample(surface, form, type);
        EXPECT_EQ(surface.Calls("TextOut").size(), 1U) << type;
    }
    RecordingSurface nothing(0, 0);
    DrawLineSample(nothing, form, 1);
}

// ---- Points ----

class PointsDialogTest : public DisplayDialogsTest {
  protected:
    static void Choose(PointsForm& form, const std::set<std::int16_t>& points) {
        for (std::size_t i = 0; i < form.points.size(); ++i) {
            form.chosen[i] = points.count(form.points[i]) != 0;
        }
    }
};

TEST_F(PointsDialogTest, TitleFollowsTheMode) {
    EXPECT_EQ(PointsTitle(point_dialog::kPoints), "Select Planets");
    EXPECT_EQ(PointsTitle(point_dialog::kParanPoint), "Select Paran Planet/Star");
    EXPECT_EQ(PointsTitle(point_dialog::kStars), "Select Stars");
}

TEST_F(PointsDialogTest, ListHoldsThePointsAndWhatIsSelectedIsChosen) {
    pointSelection[3] = kTrue;
    pointSelection[36] = 1;
    const PointsForm form = OpenPoints(point_dialog::kPoints);
    ASSERT_EQ(form.points.size(), 36U);
    for (std::size_t i = 0; i < 36; ++i) {
        EXPECT_EQ(form.points[i], static_cast<std::int16_t>(i + 1));
        EXPECT_EQ(form.chosen[i], i == 2 || i == 35);
    }
}

TEST_F(PointsDialogTest, ParanModeChoosesTheParanPointAndNoOther) {
    pointSelection.fill(kTrue);
    options.paranPoint = 9;
    const PointsForm form = OpenPoints(point_dialog::kParanPoint);
    ASSERT_EQ(form.points.size(), 36U);
    for (std::size_t i = 0; i < 36; ++i) EXPECT_EQ(form.chosen[i], i == 8);
}

TEST_F(PointsDialogTest, StarsModeListsNoStarsWhileThereAreNone) {
    const PointsForm form = OpenPoints(point_dialog::kStars);
    EXPECT_TRUE(form.points.empty() && form.chosen.empty());
}

TEST_F(PointsDialogTest, OkCopiesTheSelectionAndEndsInAQuickPass) {
    session.ChartNumber = 1;
    pointSelection[5] = kTrue;
    pointSelection[40] = kTrue;
    PointsForm form = OpenPoints(point_dialog::kPoints);
    Choose(form, {1, 22, 36});
    EXPECT_EQ(pointSelection[5], kTrue) << "until OK nothing changes";
    EXPECT_TRUE(CheckPoints(form));
    AcceptPoints(form);
    for (std::size_t point = 1; point <= kPointCount; ++point) {
        const bool on = point == 1 || point == 22 || point == 36 || point == 40;
        EXPECT_EQ(pointSelection[point], on ? kTrue : kFalse) << point;
    }
    EXPECT_EQ(linePlots, 1);
    EXPECT_EQ(fullPlots, 0);
    EXPECT_EQ(Calls(), Log());
}

TEST_F(PointsDialogTest, OkWithNoChartTellsThatThereIsNone) {
    PointsForm form = OpenPoints(point_dialog::kPoints);
    Choose(form, {4});
    EXPECT_TRUE(CheckPoints(form));
    AcceptPoints(form);
    EXPECT_EQ(pointSelection[4], kTrue);
    EXPECT_EQ(Calls(), Log{kNoChart});
    EXPECT_EQ(linePlots + fullPlots, 0);
}

TEST_F(PointsDialogTest, ParanModeWithTwoEntriesChosenStaysOpen) {
    session.ChartNumber = 1;
    PointsForm form = OpenPoints(point_dialog::kParanPoint);
    Choose(form, {3, 4});
    EXPECT_FALSE(CheckPoints(form));
    EXPECT_EQ(Calls(), Log{kSinglePoint});
    EXPECT_EQ(options.paranPoint, 1);
    EXPECT_EQ(linePlots, 0);
}

TEST_F(PointsDialogTest, ParanModeWithOneEntryChosenTakesItAndLeavesTheSelection) {
    session.ChartNumber = 1;
    pointSelection[6] = kTrue;
    PointsForm form = OpenPoints(point_dialog::kParanPoint);
    Choose(form, {4});
    EXPECT_TRUE(CheckPoints(form));
    AcceptPoints(form);
    EXPECT_EQ(options.paranPoint, 4);
    EXPECT_EQ(pointSelection[6], kTrue);
    EXPECT_EQ(pointSelection[4], kFalse);
    EXPECT_EQ(linePlots, 1);
}

TEST_F(PointsDialogTest, ParanModeWithNoChartTakesThePointAndTells) {
    PointsForm form = OpenPoints(point_dialog::kParanPoint);
    Choose(form, {4});
    EXPECT_TRUE(CheckPoints(form));
    AcceptPoints(form);
    EXPECT_EQ(options.paranPoint, 4);
    EXPECT_EQ(Calls(), Log{kNoChart});
}

TEST_F(PointsDialogTest, ParanModeWithNoEntryChosenKeepsThePoint) {
    session.ChartNumber = 1;
    options.paranPoint = 8;
    PointsForm form = OpenPoints(point_dialog::kParanPoint);
    Choose(form, {});
    EXPECT_TRUE(CheckPoints(form));
    AcceptPoints(form);
    EXPECT_EQ(options.paranPoint, 8);
}

TEST_F(PointsDialogTest, DefaultReloadsTheSelectionFileAndCancelThenChangesNothing) {
    pointSelection[1] = kTrue;
    pointSelection[12] = kTrue;
    SavePointSelection(session.PointFile);
    pointSelection = {};
    pointSelection[7] = kTrue;
    PointsForm form = OpenPoints(point_dialog::kPoints);
    Choose(form, {30});
    DefaultPoints(form);
    for (std::size_t i = 0; i < 36; ++i) EXPECT_EQ(form.chosen[i], i == 0 || i == 11) << i;
    EXPECT_EQ(pointSelection[1], kFalse);
    EXPECT_EQ(pointSelection[7], kTrue);
    EXPECT_EQ(Calls(), Log());
}

TEST_F(PointsDialogTest, DefaultWithoutASelectionFileGoesBackToTheSelectionOfTheMoment) {
    pointSelection[7] = kTrue;
    PointsForm form = OpenPoints(point_dialog::kPoints);
    Choose(form, {30});
    DefaultPoints(form);
    for (std::size_t i = 0; i < 36; ++i) EXPECT_EQ(form.chosen[i], i == 6) << i;
    EXPECT_EQ(Calls(), Log());
}

TEST_F(PointsDialogTest, DefaultReadsTheShippedSelectionWhereTheUserHasNone) {
    session.ShippedDir = folder.File("shipped/");
    std::filesystem::create_directory(session.ShippedDir);
    session.PointFile = folder.File("ovdeflt.pts");
    pointSelection = {};
    pointSelection[5] = kTrue;
    SavePointSelection(session.ShippedDir + "ovdeflt.pts");
    pointSelection = {};
    PointsForm form = OpenPoints(point_dialog::kPoints);
    Choose(form, {30});
    DefaultPoints(form);
    for (std::size_t i = 0; i < 36; ++i) EXPECT_EQ(form.chosen[i], i == 4) << i;
    EXPECT_FALSE(std::filesystem::exists(session.PointFile));
}

TEST_F(PointsDialogTest, DefaultInTheParanModeGoesBackToTheParanPoint) {
    options.paranPoint = 2;
    PointsForm form = OpenPoints(point_dialog::kParanPoint);
    Choose(form, {3, 4});
    DefaultPoints(form);
    for (std::size_t i = 0; i < 36; ++i) EXPECT_EQ(form.chosen[i], i == 1) << i;
}

// ---- Point colours ----

class PointColoursDialogTest : public DisplayDialogsTest {};

TEST_F(PointColoursDialogTest, PaletteAsksForTheColourOfTheSelectedPoint) {
    pointColour[9] = 5;
    PointColoursForm form = OpenPointColours();
    EXPECT_EQ(form.point, 1);
    form.point = 9;
    TestShell().colourAnswers = {0x332211};
    EXPECT_TRUE(ChoosePointColour(form));
    EXPECT_FALSE(ChoosePointColour(form)) << "cancelled";
    EXPECT_EQ(Calls(), (Log{"ChooseColour|Select Color of Saturn|5",
                            "ChooseColour|Select Color of Saturn|3351057"}));
    EXPECT_EQ(form.colours[9], 0x332211);
    EXPECT_EQ(pointColour[9], 5) << "until it is applied";
}

TEST_F(PointColoursDialogTest, ApplyTakesTheColoursAndEndsInAQuickPass) {
    PointColoursForm form = OpenPointColours();
    form.colours[1] = 1;
    form.colours[72] = 72;
    ApplyPointColours(form);
    EXPECT_EQ(pointColour[1], 1);
    EXPECT_EQ(pointColour[72], 72);
    EXPECT_EQ(linePlots, 1);
    EXPECT_EQ(fullPlots, 0);
    EXPECT_EQ(Calls(), Log());
}

TEST_F(PointColoursDialogTest, SaveAsksAndWritesTheSessionsColoursAsThirtySixOfFourBytes) {
    for (std::size_t point = 1; point <= kPointCount; ++point) {
        pointColour[point] = static_cast<Colour>(0x010000 + point);
    }
    PointColoursForm form = OpenPointColours();
    form.colours[1] = 7;  // not applied
    SavePointColours();
    EXPECT_EQ(Calls(), Log{kSaveColours});
    Bytes bytes = FileBytes(session.UserColourFile);
    ASSERT_EQ(bytes.size(), 144U);
    EXPECT_EQ(GetI32(&bytes[0]), 0x010001);
    EXPECT_EQ(GetI32(&bytes[140]), 0x010024);
    EXPECT_EQ(linePlots, 0);
    ApplyPointColours(form);
    SavePointColours();
    bytes = FileBytes(session.UserColourFile);
    EXPECT_EQ(GetI32(&bytes[0]), 7);
}

TEST_F(PointColoursDialogTest, SaveThatIsCancelledWritesNothing) {
    TestShell().boxAnswers = {BoxAnswer::Cancel};
    SavePointColours();
    EXPECT_EQ(Calls(), Log{kSaveColours});
    EXPECT_TRUE(FileBytes(session.UserColourFile).empty());
}

TEST_F(PointColoursDialogTest, FileThatCannotBeWrittenIsTold) {
    session.UserColourFile = folder.File("none\\orvantis.pco");
    SavePointColours();
    ASSERT_EQ(TestShell().boxes.size(), 2U);
    EXPECT_EQ(TestShell().boxes[1],
              "Open Error: " + folder.File("none/orvantis.pco") + " /  / Path not found");
}

// ---- The start of the geodetic zodiac ----

class ZodiacStartDialogTest : public DisplayDialogsTest {};

TEST_F(ZodiacStartDialogTest, OpensWithTheStartInNormalForm) {
    EXPECT_EQ(OpenZodiacStart().text, "000W00");
    options.geodeticStart = -138.5;
    EXPECT_EQ(OpenZodiacStart().text, "138E30");
}

TEST_F(ZodiacStartDialogTest, TextThatIsLeftGetsItsNormalForm) {
    ZodiacStartForm form{"e 30 15"};
    EXPECT_TRUE(LeaveZodiacStart(form));
    EXPECT_EQ(form.text, "030E15");
    EXPECT_EQ(options.geodeticStart, 0);
    EXPECT_EQ(Calls(), Log());
}

TEST_F(ZodiacStartDialogTest, OkStoresTheLongitude) {
    ZodiacStartForm form{"30E15"};
    EXPECT_TRUE(AcceptZodiacStart(form));
    EXPECT_EQ(options.geodeticStart, -30.25);
    EXPECT_EQ(linePlots + fullPlots, 0);
}

TEST_F(ZodiacStartDialogTest, TextThatCannotBeReadShowsTheParsersMessageAndTheFormStays) {
    options.geodeticStart = 12;
    ZodiacStartForm form{"nowhere"};
    EXPECT_FALSE(LeaveZodiacStart(form));
    EXPECT_FALSE(AcceptZodiacStart(form));
    EXPECT_EQ(form.text, "nowhere");
    EXPECT_EQ(options.geodeticStart, 12);
    const std::string message =
        "Error in Longitude: The format of the longitude is not recognised. / Specify E for "
        "eastern hemisphere longitudes / or W for western hemisphere longitudes. / Please use a "
        "valid format e.g. 138E34";
    EXPECT_EQ(TestShell().boxes, (Log{message, message}));
}

// ---- Colours ----

class AskColourTest : public DisplayDialogsTest {
  protected:
    void SetUp() override {
        DisplayDialogsTest::SetUp();
        shown = {};
    }
    static PaletteForm shown;  // what the palette form was opened with
};

PaletteForm AskColourTest::shown;

TEST_F(AskColourTest, TrueColourDisplayAsksTheSystemsDialog) {
    showPaletteForm = [](PaletteForm& form) {
        shown = form;
        return true;
    };
    TestShell().colourAnswers = {7};
    EXPECT_EQ(AskColour("Title", PaletteColour(3)), 7);
    EXPECT_EQ(Calls(), Log{"ChooseColour|Title|3"});
    EXPECT_TRUE(shown.entries.empty());
}

TEST_F(AskColourTest, DisplayOf256ColoursAsksThePaletteFormAndMarksTheColour) {
    TestShell().colours = 256;
    showPaletteForm = [](PaletteForm& form) {
        shown = form;
        form.chosen = 16;
        return true;
    };
    PrefsForm form = OpenPrefs();
    form.seaColour = 0x0000FE;
    EXPECT_TRUE(ChooseSeaColour(form));
    EXPECT_EQ(shown.title, "Select Sea Color");
    ASSERT_EQ(shown.entries.size(), 256U);
    EXPECT_EQ(shown.entries[static_cast<std::size_t>(shown.chosen)], 0x0000FF) << "the nearest";
    EXPECT_EQ(form.seaColour, 0x2C0DCC0);
    EXPECT_EQ(Calls(), Log());
}

TEST_F(AskColourTest, EveryPickerAsksThePaletteFormOnADisplayOf256Colours) {
    TestShell().colours = 256;
    static Log titles;
    titles.clear();
    showPaletteForm = [](PaletteForm& form) {
        titles.push_back(form.title);
        form.chosen = 16;
        return true;
    };
    PrefsForm prefs = OpenPrefs();
    EXPECT_TRUE(ChooseLineColour(prefs, 4));
    EXPECT_TRUE(ChooseLandColour(prefs));
    PointColoursForm points = OpenPointColours();
    points.point = 9;
    EXPECT_TRUE(ChoosePointColour(points));
    EXPECT_EQ(titles, (Log{"Select Line Color", "Select Land Color", "Select Color of Saturn"}));
    EXPECT_EQ(prefs.lineStyle[4].colour, PaletteColour(0xC0DCC0));
    EXPECT_EQ(prefs.landColour, PaletteColour(0xC0DCC0));
    EXPECT_EQ(points.colours[9], PaletteColour(0xC0DCC0));
    EXPECT_EQ(Calls(), Log());
}

TEST_F(AskColourTest, ColoursWithThePalettesMarkKeepItInSampleSessionAndFile) {
    PrefsForm prefs = OpenPrefs();
    prefs.lineStyle[8].colour = PaletteColour(0x0000FF);
    prefs.landColour = PaletteColour(0x00C800);
    prefs.seaColour = PaletteColour(0xFF8040);
    RecordingSurface surface(100, 40);
    DrawLineSample(surface, prefs, 8);
    EXPECT_EQ(surface.GetPixel(2, 2), 0x00C800) << "the sample shows the plain colour";
    EXPECT_NE(std::find(surface.log.begin(), surface.log.end(), "SetPen 1 0 255"),
              surface.log.end());
    AcceptPrefs(prefs);
    EXPECT_EQ(settings.lineStyle[8].colour, PaletteColour(0x0000FF));
    EXPECT_EQ(settings.mapBackColour, PaletteColour(0x00C800));

    PointColoursForm points = OpenPointColours();
    points.colours[36] = PaletteColour(0x123456);
    ApplyPointColours(points);
    SavePointColours();
    const Bytes bytes = FileBytes(session.UserColourFile);
    ASSERT_EQ(bytes.size(), 144U);
    EXPECT_EQ(GetI32(&bytes[140]), PaletteColour(0x123456));
    pointColour = {};
    LoadPointColours(session.UserColourFile);
    EXPECT_EQ(pointColour[36], PaletteColour(0x123456));
}

TEST_F(AskColourTest, CancelledOrMissingPaletteFormGivesNoColour) {
    TestShell().colours = 16;
    EXPECT_EQ(AskColour("Title", 0), std::nullopt);
    showPaletteForm = [](PaletteForm&) { return false; };
    EXPECT_EQ(AskColour("Title", 0), std::nullopt);
    EXPECT_EQ(Calls(), Log());
}

TEST_F(AskColourTest, PaletteHoldsTheClassicColoursFirst) {
    const std::vector<Colour> entries = DisplayPalette();
    ASSERT_EQ(entries.size(), 256U);
    for (std::int16_t i = 0; i < 16; ++i) {
        EXPECT_EQ(entries[static_cast<std::size_t>(i)], ClassicColour(i));
    }
    EXPECT_TRUE(std::all_of(entries.begin(), entries.end(),
                            [](Colour colour) { return colour == PlainColour(colour); }));
}

}  // namespace
}  // namespace orvantis

#include "support/scripted_shell.h"

#include <gtest/gtest.h>

namespace orvantis {
namespace {

BoxAnswer Ask(ScriptedShell& shell, BoxButtons buttons) {
    return shell.MessageBox("Text", "Title", buttons, BoxIcon::Question);
}

TEST(ScriptedShell, AnswersComeOffTheQueuesInOrder) {
    ScriptedShell shell;
    shell.boxAnswers = {BoxAnswer::No, BoxAnswer::Retry};
    shell.fileAnswers = {"a.ovm", std::nullopt};
    shell.colourAnswers = {0x112233};
    EXPECT_EQ(Ask(shell, BoxButtons::YesNo), BoxAnswer::No);
    EXPECT_EQ(Ask(shell, BoxButtons::RetryCancel), BoxAnswer::Retry);
    EXPECT_EQ(shell.ChooseFile("Open", "*.ovm", false), "a.ovm");
    EXPECT_EQ(shell.ChooseFile("Open", "*.ovm", true), std::nullopt);
    EXPECT_EQ(shell.ChooseColour("Colour", 5), 0x112233);
    EXPECT_EQ(shell.questions, 5);
}

TEST(ScriptedShell, WithoutAnAnswerABoxAgreesAndAChoiceIsCancelled) {
    ScriptedShell shell;
    EXPECT_EQ(Ask(shell, BoxButtons::Ok), BoxAnswer::Ok);
    EXPECT_EQ(Ask(shell, BoxButtons::OkCancel), BoxAnswer::Ok);
    EXPECT_EQ(Ask(shell, BoxButtons::YesNo), BoxAnswer::Yes);
    EXPECT_EQ(Ask(shell, BoxButtons::YesNoCancel), BoxAnswer::Yes);
    EXPECT_EQ(Ask(shell, BoxButtons::RetryCancel), BoxAnswer::Cancel);
    EXPECT_EQ(shell.ChooseFile("Open", "*.ovm", false), std::nullopt);
    EXPECT_EQ(shell.ChooseColour("Colour", 5), std::nullopt);
}

TEST(ScriptedShell, TheNthQuestionIsCancelledWhateverTheQueuesHold) {
    for (int n = 1; n <= 4; ++n) {
        ScriptedShell shell;
        shell.cancelCall = n;
        shell.boxAnswers = {BoxAnswer::Ok, BoxAnswer::Yes};
        shell.fileAnswers = {"a.ovm"};
        shell.colourAnswers = {7};
        shell.SetTitle("no question");
        shell.DoEvents();
        EXPECT_EQ(Ask(shell, BoxButtons::OkCancel), n == 1 ? BoxAnswer::Cancel : BoxAnswer::Ok);
        EXPECT_EQ(shell.ChooseFile("Open", "*.ovm", false).has_value(), n != 2);
        EXPECT_EQ(shell.ChooseColour("Colour", 5).has_value(), n != 3);
        EXPECT_EQ(Ask(shell, BoxButtons::YesNo), n == 4 ? BoxAnswer::No : BoxAnswer::Yes);
        EXPECT_EQ(shell.log.size(), 6U) << "a cancelled question is logged too";
    }
}

TEST(ScriptedShell, ACancelledBoxAnswersWhatItsButtonsAllow) {
    struct Row {
        BoxButtons buttons;
        BoxAnswer answer;
    };
    for (const Row& row : {Row{BoxButtons::Ok, BoxAnswer::Ok},
                           {BoxButtons::OkCancel, BoxAnswer::Cancel},
                           {BoxButtons::YesNo, BoxAnswer::No},
                           {BoxButtons::YesNoCancel, BoxAnswer::Cancel},
                           {BoxButtons::RetryCancel, BoxAnswer::Cancel}}) {
        ScriptedShell shell;
        shell.cancelCall = 1;
        EXPECT_EQ(Ask(shell, row.buttons), row.answer);
    }
}

TEST(ScriptedShell, CallsAreLoggedWordForWord) {
    ScriptedShell shell;
    shell.MessageBox("a\r\nb", "T", BoxButtons::YesNo, BoxIcon::Error);
    shell.ChooseFile("Save", "*.ovs", true);
    shell.ChooseColour("Sea", 3);
    shell.SetTitle("Orvantis");
    shell.SetPointer(Pointer::Hourglass);
    shell.ShowProgress("Half", 50);
    const std::vector<std::string> expected = {"MessageBox|T|a\\r\\nb|YesNo|Error",
                                               "ChooseFile|Save|*.ovs|save", "ChooseColour|Sea|3",
                                               "SetTitle|Orvantis", "SetPointer|1"};
    EXPECT_EQ(shell.log, expected);
    EXPECT_EQ(shell.boxes, std::vector<std::string>{"T: a / b"});
    EXPECT_EQ(shell.progressCalls, 1);
    EXPECT_EQ(shell.progress, std::vector<std::string>{"50|Half"});
}

}  // namespace
}  // namespace orvantis

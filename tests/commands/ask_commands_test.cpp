// SPDX-License-Identifier: GPL-3.0-or-later
#include "fixture.h"

namespace corvid::test {

class AskTest : public CommandTest {};

TEST_F(AskTest, APromptPutsTheAnswerIntoAVariable) {
  AddVariable("who", "Bob");
  prompter.Texts = {"a raven"};
  EXPECT_EQ(Run("#PROMPT pet {What does @who keep?}"), "");
  EXPECT_EQ(Effects(), Lines{"prompt |What does Bob keep?"});
  EXPECT_EQ(prompter.LastKind, 5);
  EXPECT_EQ(prompter.LastStart, "") << "the box is empty, whatever the variable holds";
  EXPECT_EQ(Variable("pet"), "a raven");
  std::string value;
  EXPECT_EQ(script.VariableDefaults[symbols.FindVariable("pet", value, 0)], "a raven");
}

TEST_F(AskTest, ARefusedPromptGivesAnEmptyValue) {
  AddVariable("pet", "cat");
  EXPECT_EQ(Run("#PROMPT pet {What now?}"), "");
  EXPECT_EQ(Variable("pet"), "");
}

TEST_F(AskTest, APromptBelongsToTheCharacterOrToAll) {
  MakeSession(1, "bob", true);
  script.CurrentSocket = 1;
  prompter.Texts = {"own", "all"};
  Run("#PROMPT a {?}");
  Run("#GPROMPT b {?}");
  EXPECT_EQ(Variable("a", script.SocketOwner[1]), "own");
  EXPECT_EQ(Variable("a", 0), "(none)");
  EXPECT_EQ(Variable("b", 0), "all");
}

TEST_F(AskTest, AnAnswerForABadNameIsDroppedWithoutAWord) {
  prompter.Texts = {"a raven"};
  EXPECT_EQ(Run("#PROMPT {bad name} {?}"), "");
  EXPECT_EQ(Effects(), Lines{"prompt |?"});
  EXPECT_EQ(Variable("bad name"), "(none)");
}

TEST_F(AskTest, WhatIsPickedKnowsTheArgumentsOfItsAlias) {
  MakeSession(0, "bob", true);
  AddAlias("choose", "#PICK {a|b}");
  prompter.Texts = {"#GVAR got {%1 and %2}"};
  EXPECT_EQ(Run("choose red blue"), "");
  EXPECT_EQ(Variable("got"), "red and blue");
}

TEST_F(AskTest, APickedCommandRuns) {
  AddVariable("pet", "cat");
  prompter.Texts = {"#MATH a 5"};
  EXPECT_EQ(Run("#PICK {P:Which?|five:#MATH a 5|@pet}"), "");
  EXPECT_EQ(Of("list"), Lines{"P:Which?|five:#MATH a 5|cat"});
  EXPECT_EQ(Variable("a"), "5");
}

TEST_F(AskTest, WhatIsPickedIsExpandedBeforeItRuns) {
  AddVariable("n", "7");
  prompter.Texts = {"#MATH a @n"};
  Run("#PICK {x}");
  EXPECT_EQ(Variable("a"), "7");
  prompter.Texts = {"%LEFT(x)"};
  EXPECT_NE(Run("#PICK {x}"), "");
  EXPECT_FALSE(ErrorLog().empty());
}

TEST_F(AskTest, APickedCommandHasTheParametersOfItsCaller) {
  AddAlias("choose", "#PICK {x}");
  AddVariable("later", "#MATH a %1");  // its parameter is filled in when it runs
  for (const char* picked : {"#MATH a %1", "@later"}) {
    AddVariable("a", "");
    prompter.Texts = {picked};
    EXPECT_EQ(Run("choose 7"), "") << picked;
    EXPECT_EQ(Variable("a"), "7") << picked;
  }
}

TEST_F(AskTest, APickedCommandRunsInTheModeOfItsCaller) {
  prompter.Texts = {"north"};
  EXPECT_EQ(Run("#PICK {x}", option::PlaceInEntry | option::DoNotSend), "");
  EXPECT_EQ(buffers.EntryBox.Text(), "north");
}

TEST_F(AskTest, NothingPickedRunsNothing) {
  EXPECT_EQ(Run("#PICK {a|b};#MATH after 1"), "");
  EXPECT_EQ(Variable("after"), "1");
}

TEST_F(AskTest, AnErrorInWhatWasPickedIsTraced) {
  prompter.Texts = {"#nosuch"};
  EXPECT_EQ(Run("#PICK {a|b};#MATH after 1"), "Bad command #nosuch");
  EXPECT_EQ(Variable("after"), "(none)");
  EXPECT_NE(ErrorLog().find("traced back to line: #PICK {a|b}"), std::string::npos);
}

TEST_F(AskTest, AnAbortInWhatWasPickedEndsTheLineAndKeepsItsDepth) {
  prompter.Texts = {"#ABORT"};
  EXPECT_EQ(Run("#PICK {a|b};#MATH after 1"), "");
  EXPECT_EQ(Variable("after"), "(none)");
  EXPECT_EQ(script.CommandDepth, 2);
  EXPECT_EQ(LastOptions & option::AbortBlock, 0);
  prompter.Texts = {"#ABORT all"};
  Run("#PICK {a|b}");
  EXPECT_NE(LastOptions & option::AbortAll, 0);
  prompter.Texts = {"#MATH a 1"};
  Run("#PICK {a|b}");
  EXPECT_EQ(script.CommandDepth, 1) << "given back";
}

TEST_F(AskTest, WrongCountsAndChecking) {
  for (const char* line : {"#PICK", "#PICK a b", "#PROMPT a", "#PROMPT a b c"})
    EXPECT_EQ(Run(line), "Wrong number of parameters") << line;
  Effects();
  for (const char* line : {"#PICK {a|b}", "#PROMPT a {?}"}) EXPECT_EQ(Run(line, option::CheckOnly), "") << line;
  EXPECT_EQ(Effects(), Lines{});
}

}  // namespace corvid::test

// SPDX-License-Identifier: GPL-3.0-or-later
// Triggers: a script and lines of the game in; what was run, shown, spoken and sent out.
#include "trigger_fixture.h"

namespace corvid::test {

// --- matching ---

TEST_F(TriggerTest, FillsParametersAndVariables) {
  Do("#TRIGGER {* says &msg} {#VAR a %1;#VAR b %2;#VAR all {%0}}");
  Mud("Bob says hi");
  EXPECT_EQ(Get("a"), "Bob");
  EXPECT_EQ(Get("b"), "hi");
  EXPECT_EQ(Get("msg"), "hi");
  EXPECT_EQ(Get("all"), "Bob says hi");
}

struct GapRow {
  std::string search, line, gaps;
};

TEST_F(TriggerTest, GapsAreFirstOccurrences) {
  for (const GapRow& row : {
           GapRow{"hello", "hello", "[][][]"},
           GapRow{"hello*", "hello", "[][][]"},
           GapRow{"hello*", "hello you", "[ you][][]"},
           GapRow{"*", "whole line", "[whole line][][]"},
           GapRow{"*b*", "abc", "[a][c][]"},
           GapRow{"*b*", "bc", "[c][][]"},
           GapRow{"*a*b", "xaabb", "[x][a][b]"},
           GapRow{"a*b*c", "abc", "[][][]"},
           GapRow{"You see [A-C]*", "You see Ann", "[Ann][][]"},
           GapRow{"?b*", "abc", "[a][c][]"},
           // The second "b" is in front of where the pattern matched it: what is found first counts.
           GapRow{"*x*b", "bxab", "[b][a][]"},
           GapRow{"a~*b*", "a1b2", "[a1b2][][]"},
       }) {
    Do("#TRIGGER {" + row.search + "} {#VAR out {[%1][%2][%3]}}");
    Mud(row.line);
    EXPECT_EQ(Get("out"), row.gaps) << row.search << " on " << row.line;
    Do("#UNTRIGGER {" + row.search + "};#VAR out {none}");
  }
}

TEST_F(TriggerTest, WithoutALiteralTheFirstNameHasTheLine) {
  Do("#TRIGGER {&all} {look}");
  Mud("some line");
  EXPECT_EQ(Get("all"), "some line");
  Do("#KILLALL nobody;#UNTRIGGER {&all};#TRIGGER {&p?&q} {look}");
  Mud("other");
  EXPECT_EQ(Get("q"), "other") << "both stand in front of the first part: the later name counts";
  EXPECT_EQ(Get("p"), "(none)");
}

TEST_F(TriggerTest, ThirtyPartsGiveThirtyOneGaps) {
  std::string search = "&a0";
  std::string line = "0";
  for (int i = 1; i <= 30; ++i) {
    const std::string part = "<" + std::to_string(i) + ">";
    search += part + (i < 30 ? "&a" + std::to_string(i) : "*");
    line += part + std::to_string(i);
  }
  ASSERT_EQ(Do("#TRIGGER {" + search + "} {#VAR out {%30 %31}}"), "");
  Mud(line);
  EXPECT_EQ(Get("out"), "29 30");
  EXPECT_EQ(Get("a29"), "29");
}

TEST_F(TriggerTest, CaseCountsUnlessToldOtherwise) {
  Do("#TRIGGER {*Orc*} {say one};#TRIGGER {*oRC DIES [a-c]*} {say two %1} {} {AnyCase}");
  EXPECT_EQ(Answer("an Orc dies Bravely"), "say two an ;say one");
  EXPECT_EQ(Answer("an orc dies Bravely"), "say two an ");
}

TEST_F(TriggerTest, PatternsFollowVariables) {
  AddVariable("foe", "rat", Bob());
  Do("#TRIGGER {* the @foe} {kill %1};#TRIGGER {%REPEATNUM} {never};#TRIGGER {A @FOE} {low} {} {AnyCase}");
  EXPECT_EQ(Answer("a rat"), "low");
  EXPECT_EQ(Answer("see the rat"), "kill see the rat") << "the parts are of the text as written";
  AddVariable("foe", "[a-c]at", Bob());
  EXPECT_EQ(Answer("see the bat"), "kill see the bat");
  AddVariable("foe", "[at", Bob());
  EXPECT_EQ(Answer("see the [at"), "") << "a malformed pattern matches nothing";
  EXPECT_EQ(ErrorFile(), "");
}

TEST_F(TriggerTest, APatternThatCannotBeExpandedIsReportedAtEachTest) {
  buffers.BufferFile[3] = "/data/fight.set";
  script.DefiningBuffer = 3;
  Do("#TRIGGER {x} {look};#TRIGGER {%LEFT(a*} {wave}");
  EXPECT_EQ(Answer("x"), "look");
  EXPECT_EQ(
      ErrorLog(),
      "\r\nUnbalanced parentheses for argument list in function LEFT - Trigger search string %LEFT(a* in command: "
      "wave-- Error found in file /data/fight.set\r\n===============");
  ClearErrorLog();
  Mud("y");
  EXPECT_NE(ErrorLog(), "");
}

TEST_F(TriggerTest, AMalformedPatternIsNoMatchAndNoError) {
  Do("#TRIGGER {x*} {look};#TRIGGER {x[} {never};#TRIGGER {x[z-a]*} {never}");
  EXPECT_EQ(Answer("x["), "look");
  EXPECT_EQ(ErrorLog() + ErrorFile(), "");
}

TEST_F(TriggerTest, OwnersClassesAndSwitchesDecide) {
  MakeSession(2, "amy", true);
  Do("#TRIGGER {x} {bobs};#GTRIGGER {*x} {all};#TRIGGER {x*} {classed} {a|b}");
  EXPECT_EQ(Answer("x"), "all;bobs");
  Mud("x", 2);
  EXPECT_EQ(Sent(2), "all");
  Do("#CLASS a ENABLE");
  EXPECT_EQ(Answer("x"), "all;bobs");
  Do("#GCLASS b ENABLE");
  EXPECT_EQ(Answer("x"), "classed;all;bobs");
  Do("#CLASS a DISABLE");
  EXPECT_EQ(Answer("x"), "all;bobs");
  Do("#IGNORE TRIGGER ON");
  EXPECT_EQ(Answer("x"), "");
  Do("#IGNORE TRIGGER OFF");
  script.Triggers[1].Flags = triggerflag::PassedOver;
  EXPECT_EQ(Answer("x"), "all");
}

TEST_F(TriggerTest, AFaultyClassListIsReportedAndTheOthersGoOn) {
  Do("#TRIGGER {x} {look};#TRIGGER {never*} {wave} {a|b|c|d|e|f|g|h|i|j|k|l}");
  EXPECT_EQ(Answer("x"), "look");
  EXPECT_NE(ErrorFile().find("Procedure: SockTelnet_OnRead\r\nParameter 1: 1"), std::string::npos);
}

TEST_F(TriggerTest, DelclassAndUnclassTakeTriggersAlong) {
  Do("#CLASS a ENABLE;#CLASS b ENABLE;#TRIGGER {x} {1} {a};#TRIGGER {x*} {2} {a|b};#GTRIGGER {*x} {3} {a};"
     "#TRIGGER {xx*} {4} {b}");
  Do("#UNCLASS a");
  EXPECT_EQ(Searches(), (Lines{"x*", "*x", "xx*"}));
  EXPECT_EQ(Row(2).Class, "b");
  EXPECT_EQ(Answer("x"), "2") << "what lost its class follows the other one at once";
  Do("#DELCLASS a");
  EXPECT_EQ(Searches(), (Lines{"x*", "xx*"}));
  Do("#DELCLASS b");
  EXPECT_EQ(Searches(), Lines{});
}

TEST_F(TriggerTest, ADefinitionClosesTheGapThatItsClassHasLeft) {
  Do("#CLASS k ENABLE;#TRIGGER {x} {one} {k};#TRIGGER {y} {two} {k}");
  for (int i = 0; i < 3; ++i) Do("#DELCLASS k;#CLASS k ENABLE;#TRIGGER {x} {one} {k};#TRIGGER {y} {two} {k}");
  EXPECT_EQ(script.TriggerCount, 2);
  EXPECT_EQ(Answer("x"), "one");
}

// --- colour ---

TEST_F(TriggerTest, AColourTurnsTaggingOnFromTheNextLine) {
  options.ColourTextTags = options.ColourDisplay = false;
  Do("#TRIGGER {Bright Red} {say hit %1} {} {Color}");
  EXPECT_FALSE(options.TriggerColourNeeded);
  EXPECT_EQ(Answer("\x1b[1;31mfirst\x1b[0m"), "");
  EXPECT_TRUE(options.TriggerColourNeeded);
  EXPECT_EQ(Answer("\x1b[1;31msecond\x1b[0m"), "say hit second");
  EXPECT_EQ(Answer("\x1b[31mthird\x1b[0m"), "");
  EXPECT_EQ(Answer(""), "");
  EXPECT_EQ(Screen().find('<'), std::string::npos) << "no tags are shown";
}

TEST_F(TriggerTest, AColourOfAnotherCharacterOrClassTurnsNothingOn) {
  MakeSession(2, "amy", true);
  options.ColourTextTags = options.ColourDisplay = false;
  Do("#TRIGGER {Red} {x} {off} {Color}");
  Mud("line");
  EXPECT_FALSE(options.TriggerColourNeeded);
  Do("#CLASS off ENABLE");
  Mud("line", 2);
  EXPECT_FALSE(options.TriggerColourNeeded);
  Mud("line");
  EXPECT_TRUE(options.TriggerColourNeeded);
}

// --- what a command does to the line ---

TEST_F(TriggerTest, SubstituteReplacesTheLineAndEndsTheWalk) {
  Do("#TRIGGER {x*} {#SUB {never}};#TRIGGER {*x} {#SUBSTITUTE {new %0}};#TRIGGER {x} {say seen %0}");
  Mud("x");
  EXPECT_EQ(Sent(), "say seen x");
  EXPECT_EQ(Screen(), "say seen x\r\nnew x\r\n");
  EXPECT_EQ(Of("speech"), Lines{});
}

TEST_F(TriggerTest, WhatIsSubstitutedIsSpokenAndLoses) {
  Do("#TRIGGER {x} {#SUB new}");
  script.CurrentSocket = 1;
  options.ColourTextTags = true;
  Mud("\x1b[31mx\x1b[0m");
  EXPECT_EQ(Of("speech"), (Lines{"1 new"}));
  EXPECT_EQ(Screen(), "new\r\n");
}

TEST_F(TriggerTest, TheSameTextIsNoSubstitution) {
  Do("#TRIGGER {x*} {#IF (1) {say on};#IF (0) {#SUB a}};#TRIGGER {x} {#SUB x}");
  EXPECT_EQ(Answer("x"), "say on");
}

TEST_F(TriggerTest, AnEmptyLineGoesWhenTheDisplayIsCompressed) {
  Do("#TRIGGER {x*} {#SUB never};#TRIGGER {x} {#VAR e;#SUB {@e}}");
  AddVariable("e", "", Bob());
  script.CurrentOwner = Bob();
  Mud("x");
  EXPECT_EQ(Screen(), "");
  options.CompressOutput = false;
  Mud("x");
  EXPECT_TRUE(Screen().starts_with("\r\n")) << Screen();
}

TEST_F(TriggerTest, SubstituteReachesTheLineFromAConditionButNotFromAnAlias) {
  AddAlias("swap", "#SUB other");
  Do("#TRIGGER {x} {swap;#IF (0) {#SUB no}};#TRIGGER {y} {#IF (1) {#SUB yes}}");
  Mud("x");
  Mud("y");
  EXPECT_EQ(Screen(), "x\r\nyes\r\n");
  EXPECT_EQ(Do("#SUB nothing"), "");
}

TEST_F(TriggerTest, GagLineCountsTheLineThatFiresIt) {
  options.OutputLog = true;
  sessions.MudFolder[1] = "/data/";
  logs.OpenLog(1);
  Do("#TRIGGER {* shouts *} {#GAGLINE};#TRIGGER {two*} {#GAGLINE 2}");
  for (const char* line : {"a", "Bob shouts hi", "b", "two", "gone", "c"}) Mud(line);
  EXPECT_EQ(Screen(), "a\r\nb\r\nc\r\n");
}

TEST_F(TriggerTest, ABackgroundSessionIsTriggeredForItself) {
  MakeSession(2, "amy", true);
  script.CurrentSocket = 1;
  Do("#GTRIGGER {x &what} {got %1}");
  Mud("x y", 2);
  EXPECT_EQ(Sent(2), "got y");
  EXPECT_EQ(Sent(1), "");
  EXPECT_EQ(Variable("what", script.SocketOwner[2]), "y");
}

TEST_F(TriggerTest, AnErrorTellsTheFileAndTheLineGoesOn) {
  buffers.BufferFile[3] = "/data/fight.set";
  script.DefiningBuffer = 3;
  Do("#TRIGGER {x*} {look};#TRIGGER {x} {#IF (1) {#NOSUCH}}");
  script.DefiningBuffer = 0;
  EXPECT_EQ(Answer("x"), "look");
  EXPECT_EQ(
      ErrorLog(),
      "\r\nBad command #NOSUCH in command: #NOSUCH\r\ntraced back to line: #IF (1) {#NOSUCH}-- Error found in file "
      "/data/fight.set\r\n===============");
  EXPECT_EQ(Screen(), "look\r\nx\r\n");
  EXPECT_EQ(script.DefiningBuffer, 3) << "definitions of a trigger belong to its file";
}

TEST_F(TriggerTest, TheDepthIsCountedFromNothing) {
  Do("#TRIGGER {x} {look}");
  script.CommandDepth = 12;
  EXPECT_EQ(Answer("x"), "look");
}

// --- what the game sends is data ---

TEST_F(TriggerTest, CapturedTextIsNeverRun) {
  AddAlias("evil", "say never");
  script.CurrentOwner = Bob();
  Do("#TRIGGER {* says *} {#VAR who {%1};#VAR what %2;tell %1 %2;#IF (%2=\"x\") {say x};#MATH n {1}}");
  const std::string text = "a;evil;#QUIT;#VAR n 5 {x} } { @who %1 %LEFT(abc,1) ~; >raw";
  Mud("Bob says " + text);
  EXPECT_EQ(Get("who"), "Bob");
  EXPECT_EQ(Get("what"), text);
  EXPECT_EQ(Sent(), "tell Bob " + text);
  EXPECT_EQ(Get("n"), "1");
  EXPECT_EQ(Of("quit"), Lines{});
}

}  // namespace corvid::test

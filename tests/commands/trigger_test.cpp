// SPDX-License-Identifier: GPL-3.0-or-later
// Triggers: a script and lines of the game in; what was run, shown, spoken and sent out.
#include "commands/fixture.h"

namespace corvid::test {

class TriggerTest : public CommandTest {
 protected:
  TriggerTest() { MakeSession(1, "bob", true); }

  // A line as typed in bob's session: definitions are sorted at once.
  std::string Do(const std::string& line, int16 flags = option::Interactive) {
    std::string problem;
    int16 channel = 1;
    Parameters rvar;
    script.CommandDepth = 0;
    dispatcher.ProcessCommand(line, flags, problem, rvar, channel);
    return problem;
  }
  // One line of the game; the effects of before are forgotten.
  void Mud(const std::string& text, int16 session = 1) {
    memory.effects.Clear();
    memory.sockets.TakeWritten(session);
    memory.sockets.Receive(session, text + "\r\n");
  }
  std::string Sent(int16 session = 1) {
    std::string sent = Replace(memory.sockets.TakeWritten(session), "\r\n", ";");
    if (!sent.empty()) sent.pop_back();
    return sent;
  }
  // What bob's game is sent for one line of it.
  std::string Answer(const std::string& text) {
    Mud(text);
    return Sent();
  }
  std::string Screen(int16 session = 1) { return sessions.OutputWindow(session).Text(); }
  OwnerId Bob() const { return script.SocketOwner[1]; }
  std::string Get(const std::string& name) { return Variable(name, Bob()); }
  const TriggerRecord& Row(int32 row) const { return script.Triggers.Read(row); }
  Lines Searches() const {
    Lines texts;
    for (int32 row = 1; row <= script.TriggerCount; ++row)
      if (!Row(row).Pattern.empty()) texts.push_back(Row(row).SearchText);
    return texts;
  }
  std::string ErrorFile() {
    return memory.files.FileExists("/data/error.log") ? memory.files.ReadWhole("/data/error.log") : "";
  }
};

// --- defining ---

TEST_F(TriggerTest, KeepsItsPartsAndWhereItCameFrom) {
  script.DefiningBuffer = 3;
  EXPECT_EQ(Do("#TRIGGER {* says &msg} {reply @msg} {chat} {AnyCase}"), "");
  ASSERT_EQ(script.TriggerCount, 1);
  EXPECT_EQ(Row(1).Pattern, "* says *");
  EXPECT_EQ(Row(1).Parts[1], " says ");
  EXPECT_EQ(Row(1).Names[2], "msg");
  EXPECT_EQ(Row(1).Action, "reply @msg");
  EXPECT_EQ(Row(1).ActionText, "reply @msg");
  EXPECT_EQ(Row(1).SearchText, "* says &msg");
  EXPECT_EQ(Row(1).Class, "chat");
  EXPECT_EQ(Row(1).Owner, Bob());
  EXPECT_EQ(Row(1).Buffer, 3);
  EXPECT_EQ(Row(1).Flags, triggerflag::AnyCase);
  EXPECT_EQ(Row(1).SortKey, "10001");
  EXPECT_TRUE(sessions.ScriptChanged[1]);
  EXPECT_EQ(Do("#GTRIGGER {x} {y}"), "");
  EXPECT_EQ(Row(2).Owner, 0);
}

TEST_F(TriggerTest, ANewOneReplacesTheSameOne) {
  Do("#TRIGGER {a} {one};#TRIGGER {b} {two};#TRIGGER {A} {three}");
  EXPECT_EQ(Searches(), (Lines{"b", "A"}));
  Do("#GTRIGGER {a} {four};#TRIGGER {a} {five} {k};#TRIGGER {a} {six} {l}");
  EXPECT_EQ(Searches(), (Lines{"b", "A", "a", "a", "a"}));
  Do("#TRIGGER {a} {seven}");
  EXPECT_EQ(Searches(), (Lines{"b", "a", "a"})) << "without a class all of the owner go";
}

TEST_F(TriggerTest, JoinsTheCurrentClass) {
  Do("#CLASS B;#TRIGGER {x} {y} {a}");
  EXPECT_EQ(Row(1).Class, "B|a");
  Do("#TRIGGER {x} {z} {a}");
  EXPECT_EQ(Searches(), Lines{"x"}) << "of the same classes: it is replaced";
  Do("#TRIGGER {w} {y} {c|b}");
  EXPECT_EQ(Row(2).Class, "c|b");
}

TEST_F(TriggerTest, ExpandsTheClassAndOnRequestPatternAndBody) {
  AddVariable("v", "five", Bob());
  script.CurrentOwner = Bob();
  Do("#TRIGGER {@v} {say @v} {@v}");
  EXPECT_EQ(Row(1).SearchText, "@v");
  EXPECT_EQ(Row(1).Action, "say @v");
  EXPECT_EQ(Row(1).Class, "five");
  Do("#TRIGGER {%expand(a @v)} {%EXPAND(say @v)}");
  EXPECT_EQ(Row(2).SearchText, "a five");
  EXPECT_EQ(Row(2).Action, "say five");
  EXPECT_EQ(Row(2).ActionText, "%EXPAND(say @v)");
  Do("#TRIGGER {c} {say %EXPAND(@v)}");
  EXPECT_EQ(Row(3).Action, "say %EXPAND(@v)");
}

TEST_F(TriggerTest, AnErrorInTheClassIsOnlyTraced) {
  EXPECT_NE(Run("#TRIGGER {a} {b} {%LEFT(x}"), "");
  EXPECT_EQ(ErrorLog(), "\r\ntraced back to line: #TRIGGER {a} {b} {%LEFT(x}");
  EXPECT_EQ(script.TriggerCount, 0);
}

TEST_F(TriggerTest, ABadFlagLeavesNoTrigger) {
  Do("#TRIGGER {a} {b}");
  EXPECT_EQ(Do("#TRIGGER {a} {b} {} {Colr}"), "Invalid trigger flag. Must be either \"Color\" or \"AnyCase\"");
  EXPECT_EQ(script.TriggerCount, 0) << "the old one goes first";
  for (const char* flag : {"Color", "COLOUR", "colour"}) {
    EXPECT_EQ(Do(std::string("#TRIGGER {red} {b} {} {") + flag + "}"), "");
    EXPECT_EQ(Row(1).Flags, triggerflag::Colour);
  }
}

TEST_F(TriggerTest, ColoursAreChecked) {
  EXPECT_EQ(Do("#TRIGGER {Bright Red On Blue} {#say hit} {} {Color}"), "");
  EXPECT_EQ(Row(1).Pattern, "<BRIGHT>*<RED>*<BLUE BACKGROUND>*");
  EXPECT_EQ(Do("#TRIGGER {Red Foo} {x} {} {Color}"), "The \"ON\" word was expected in colour.");
  EXPECT_EQ(Do("#TRIGGER {Red On Blue Sky} {x} {} {Color}"), "Expected colour at end of search string");
  EXPECT_EQ(Do("#TRIGGER {Pink} {x} {} {Color}"), "Colour Pink not found in trigger search string.");
  EXPECT_EQ(Searches(), Lines{"Bright Red On Blue"}) << "what failed is free";
}

TEST_F(TriggerTest, ABadSearchStringLeavesAFreeRow) {
  AddVariable("s", "x &{a", Bob());
  script.CurrentOwner = Bob();
  EXPECT_EQ(Do("#TRIGGER {%EXPAND(@s)} {b}"), "Unbalanced braces in search string around variable");
  EXPECT_EQ(script.TriggerCount, 1);
  EXPECT_EQ(Row(1).Pattern, "");
  EXPECT_EQ(Do("#TRIGGER {x &{a b} y} {b}"), "Illegal character found in variable name within braces");
  EXPECT_EQ(Do("#TRIGGER {<x} {b}"), "Missing matching right angle bracket for search string");
  EXPECT_EQ(Answer("x "), "");
  std::string search = "p";
  for (int i = 0; i < 30; ++i) search += "*p";
  EXPECT_TRUE(Do("#TRIGGER {" + search + "} {b}").starts_with("Bad parsing error - "));
  Do("#TRIGGER {y} {z}");
  EXPECT_EQ(Searches(), Lines{"y"});
}

TEST_F(TriggerTest, CheckModeLooksAtTheBodyOnly) {
  EXPECT_EQ(Do("#TRIGGER {x} {#xyz} {} {nonsense}", option::CheckOnly), "Bad command #xyz");
  EXPECT_EQ(Do("#TRIGGER {x} {look} {} {nonsense}", option::CheckOnly), "");
  EXPECT_EQ(Do("#UNTRIGGER {<x};#SUB {x} {y}", option::CheckOnly), "Wrong number of parameters");
  EXPECT_EQ(Do("#UNTRIGGER {<x};#SUB x", option::CheckOnly), "");
  EXPECT_EQ(script.TriggerCount, 0);
}

TEST_F(TriggerTest, CountsItsParameters) {
  for (const char* line : {"#TRIGGER", "#TRIGGER a", "#TRIGGER a b c Color e", "#UNTRIGGER", "#UNTRIGGER a b c",
                           "#SUBSTITUTE", "#SUBSTITUTE a b", "#SUB {}"})
    EXPECT_EQ(Do(line), "Wrong number of parameters") << line;
}

TEST_F(TriggerTest, UntriggerGoesByOwnerNameAndClass) {
  Do("#TRIGGER {a} {x};#TRIGGER {<n>b*} {x};#TRIGGER {c} {x} {k};#GTRIGGER {a} {x}");
  EXPECT_EQ(Do("#UNTRIGGER {<n>b*}"), "Extra characters after the right angle bracket");
  EXPECT_EQ(Do("#UNTRIGGER {<n}"), "Missing matching right angle bracket for search string");
  EXPECT_EQ(Do("#UNTRIGGER {<N>};#UNTRIGGER {c} {other};#UNTRIGGER nothing"), "");
  EXPECT_EQ(Searches(), (Lines{"a", "c", "a"}));
  EXPECT_EQ(Do("#UNTRIGGER {c} {K};#UNTRIGGER {A}"), "");
  EXPECT_EQ(Searches(), (Lines{"a"}));
  EXPECT_EQ(Do("#GUNTRIGGER {A}"), "");
  EXPECT_EQ(script.TriggerCount, 0);
}

// --- order ---

TEST_F(TriggerTest, TheNewestIsTestedFirstAndSubstitutionsLast) {
  Do("#TRIGGER {*} {say 1};#TRIGGER {* } {never};#TRIGGER {x*} {#IF (0) {#SUB y};say 2};#TRIGGER {*x} {say 3}");
  EXPECT_EQ(Answer("x"), "say 3;say 1;say 2");
}

TEST_F(TriggerTest, SortKeysWrapAtTenThousand) {
  script.TriggerSequence = 9999;
  Do("#TRIGGER {x} {say old} {a};#TRIGGER {x?} {no}");
  EXPECT_EQ(Row(1).SortKey, "10000");
  EXPECT_EQ(Row(2).SortKey, "10001");
  script.TriggerSequence = 10004;
  Do("#TRIGGER {*x} {say late};#UNTRIGGER {x?}");
  script.TriggerSequence = 9998;
  Do("#TRIGGER {x*} {say top}");
  EXPECT_EQ(Row(3).SortKey, "19999");
  EXPECT_EQ(script.TriggerCount, 3);
}

TEST_F(TriggerTest, TheSequenceNeverComesToItsEnd) {
  script.TriggerSequence = INT16_MAX;
  EXPECT_EQ(Do("#TRIGGER {x} {y}"), "");
  EXPECT_EQ(Row(1).SortKey, "12768");
}

TEST_F(TriggerTest, AFullTableTakesTheRowsThatAreFree) {
  Do("#TRIGGER {x} {say one}");
  script.TriggerCount = INT16_MAX;
  symbols.resizeCommand(windowtype::Triggers, INT16_MAX);
  EXPECT_EQ(Do("#TRIGGER {y} {say two}"), "");
  EXPECT_EQ(script.TriggerCount, 2);
  EXPECT_EQ(Answer("x"), "say one");
  EXPECT_EQ(Answer("y"), "say two");
}

TEST_F(TriggerTest, ADefinitionWithoutAPlayerWaitsForTheNextSort) {
  Do("#TRIGGER {b} {x}");
  Run("#GTRIGGER {a} {#SUB x}");
  EXPECT_EQ(Searches(), (Lines{"b", "a"}));
  dispatcher.SortTriggers();
  EXPECT_EQ(Searches(), (Lines{"a", "b"}));
}

TEST_F(TriggerTest, ASortDropsTheRowsThatSayTheyAreLast) {
  Do("#TRIGGER {a} {x};#TRIGGER {b} {x};#TRIGGER {c} {x}");
  script.Triggers[1].SortKey = script.Triggers[2].SortKey = "ZZZ";
  dispatcher.SortTriggers();
  EXPECT_EQ(Searches(), (Lines{"c"}));
  EXPECT_EQ(script.Triggers.UBound(), 1);
  Do("#TRIGGER {d} {x}");
  script.Triggers[1].SortKey = script.Triggers[2].SortKey = "ZZZ";
  dispatcher.SortTriggers();
  EXPECT_EQ(script.TriggerCount, 0);
  EXPECT_EQ(script.Triggers.UBound(), 1) << "one place stays";
  Do("#TRIGGER {e} {say e}");
  EXPECT_EQ(Answer("e"), "say e");
}

TEST_F(TriggerTest, AScriptFileIsSortedWhenItIsLoaded) {
  memory.files.Put("/data/t.set", "#TRIGGER {a} {say 1}\r\n#TRIGGER {a*} {#SUBSTITUTE b}\r\n#TRIGGER {*a} {say 2}\r\n");
  int16 channel = 1;
  scriptFiles.LoadSet("t.set", 0, channel);
  EXPECT_EQ(Searches(), (Lines{"a*", "a", "*a"}));
  EXPECT_EQ(Row(1).Buffer, 4);
  EXPECT_EQ(Answer("a"), "say 2;say 1");
  EXPECT_EQ(Screen(), "say 2\r\nsay 1\r\nb\r\n");
  scriptFiles.CloseBuffer(4);
  EXPECT_EQ(script.TriggerCount, 0);
  EXPECT_EQ(Answer("a"), "");
}

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

// --- commands that change the table under the walk ---

TEST_F(TriggerTest, ATriggerMayRemoveItself) {
  Do("#TRIGGER {*} {say low};#TRIGGER {x} {#UNTRIGGER {x};say once};#TRIGGER {*x} {say high}");
  EXPECT_EQ(Answer("x"), "say high;say once;say low");
  EXPECT_EQ(Answer("x"), "say high;say low");
}

TEST_F(TriggerTest, TheWalkGoesOnByRowNumber) {
  Do("#TRIGGER {x*} {say low};#TRIGGER {x} {say mid};#TRIGGER {*x} {#UNTRIGGER {x*};say high}");
  EXPECT_EQ(Answer("x"), "say high;say high;say mid") << "a row below goes: the trigger itself comes to the next row";
}

TEST_F(TriggerTest, AClassMayGoWithTheTriggerThatEndsIt) {
  Do("#CLASS k ENABLE;#TRIGGER {x*} {no} {k};#TRIGGER {x} {say low};#TRIGGER {x?} {no} {k};"
     "#TRIGGER {*x} {#DELCLASS k;say end} {k}");
  EXPECT_EQ(Answer("x"), "say end;say low");
  EXPECT_EQ(ErrorFile(), "");
  EXPECT_EQ(Answer("x"), "say low");
}

TEST_F(TriggerTest, ARowBehindTheEndIsAFaultAndTheLineGoesOn) {
  Do("#TRIGGER {x*} {say low};#TRIGGER {x} {say mid};#TRIGGER {x?} {say no};#TRIGGER {*x} "
     "{#UNTRIGGER {x};#UNTRIGGER {x*};#UNTRIGGER {x?};say high}");
  EXPECT_EQ(Answer("x"), "say high");
  EXPECT_NE(ErrorFile().find("Procedure: SockTelnet_OnRead"), std::string::npos);
  EXPECT_EQ(Screen(), "say high\r\nx\r\n");
}

TEST_F(TriggerTest, ANewTriggerDoesNotSeeTheLineThatMadeIt) {
  Do("#TRIGGER {x} {#TRIGGER {x*} {say new};say made}");
  EXPECT_EQ(Answer("x"), "say made");
  EXPECT_EQ(Answer("x"), "say new;say made");
}

TEST_F(TriggerTest, ASortUnderTheWalkMovesRows) {
  // The new one sorts to the bottom and everything else a row up: the one below the firing one is passed by.
  AddAlias("make", "#TRIGGER {y} {#SUB z}");
  Do("#TRIGGER {x*} {say low};#TRIGGER {x} {say mid};#TRIGGER {*x} {make;#UNTRIGGER {w};say high};#TRIGGER {w} {no}");
  EXPECT_EQ(Answer("x"), "say high;say low");
}

TEST_F(TriggerTest, ClassesSwitchedByACommandCountAtOnce) {
  Do("#TRIGGER {x*} {low} {k};#TRIGGER {x} {#CLASS k ENABLE;mid};#TRIGGER {*x} {never} {k}");
  EXPECT_EQ(Answer("x"), "mid;low");
}

TEST_F(TriggerTest, VariablesSetByACommandCountAtOnce) {
  script.CurrentOwner = Bob();
  Do("#TRIGGER {@p} {low};#TRIGGER {x} {#VAR p x;mid}");
  EXPECT_EQ(Answer("x"), "mid;low");
}

TEST_F(TriggerTest, ATriggerMayEndItsOwnSession) {
  Do("#TRIGGER {x*} {say late};#TRIGGER {x} {#KILLALL}");
  Mud("x");
  EXPECT_FALSE(memory.sockets.Connected(1));
  EXPECT_EQ(script.TriggerCount, 0);
  EXPECT_NE(ErrorFile().find("Procedure: SockTelnet_OnRead"), std::string::npos) << "the walk met the end of the table";
  Do("#TRIGGER {y} {look}");
  EXPECT_EQ(Searches(), Lines{"y"});
}

TEST_F(TriggerTest, ATriggerMayForgetItsOwnCharacter) {
  sessions.MudFolder[1] = "/data/";
  Do("#TRIGGER {x*} {say late};#TRIGGER {x} {#KILLALL bob;say bye}");
  EXPECT_EQ(Answer("x"), "say bye");
  EXPECT_EQ(script.TriggerCount, 0);
  EXPECT_EQ(Screen(), "say bye\r\nx\r\n");
}

TEST_F(TriggerTest, ATriggerMayLoadTheFileThatMadeIt) {
  memory.files.Put("/data/t.set", "#TRIGGER {x} {#LOAD t.set;say loaded}\r\n#TRIGGER {x*} {say other}\r\n");
  int16 channel = 1;
  scriptFiles.LoadSet("t.set", 0, channel);
  const std::string first = Answer("x");
  EXPECT_NE(first.find("say loaded"), std::string::npos) << first;
  EXPECT_EQ(Searches(), (Lines{"x", "x*"}));
  EXPECT_NE(Answer("x").find("say other;"), std::string::npos);
}

TEST_F(TriggerTest, ALineMayComeWhileATriggerWaits) {
  Do("#TRIGGER {*} {#VAR seen {@seen%1,}};#TRIGGER {slow} {#WAIT 200;say done}");
  script.CurrentOwner = Bob();
  memory.sockets.Receive(1, "slow\r\n");
  memory.sockets.Receive(1, "quick\r\n");
  memory.loop.Pass(500);
  EXPECT_NE(Get("seen").find("slow"), std::string::npos);
  EXPECT_NE(Get("seen").find("quick"), std::string::npos);
}

// The lines that come during the wait change the table so often that all that was known of it is thrown away.
TEST_F(TriggerTest, LinesThatComeDuringAWaitMayTurnTheTableOver) {
  Do("#TRIGGER {*slow} {say low};#TRIGGER {slow} {#WAIT 100;say done};"
     "#TRIGGER {redo *} {#TRIGGER {tmp*} {y};#UNTRIGGER {tmp*}};#TRIGGER {slo*} {say "
     "high}");
  for (int i = 0; i < 40; ++i)
    memory.loop.Post([this, i] {
      for (int k = 0; k < 10; ++k) memory.sockets.Receive(1, "redo " + std::to_string(10 * i + k) + "\r\n");
    });
  EXPECT_EQ(Answer("slow"), "say high;say done;say low");
  EXPECT_EQ(ErrorFile(), "");
  EXPECT_EQ(script.TriggerCount, 4);
}

TEST_F(TriggerTest, ClassesOfBeforeKillallAreOff) {
  Do("#CLASS k ENABLE;#TRIGGER {x} {look} {k}");
  EXPECT_EQ(Answer("x"), "look");
  Do("#KILLALL");
  MakeSession(1, "bob", true);
  Do("#TRIGGER {x} {look} {k};#TRIGGER {x*} {wave}");
  EXPECT_EQ(Answer("x"), "wave");
  Do("#CLASS k ENABLE");
  EXPECT_EQ(Answer("x"), "wave;look");
}

TEST_F(TriggerTest, AnotherCommandCharacterMarksSubstitutions) {
  Do("#CONFIGURE CommandChar $");
  ASSERT_EQ(options.CommandChar, '$');
  Do("$TRIGGER {x} {$IF (0) {$su y}};$TRIGGER {y} {say #SUB}");
  EXPECT_EQ(Row(1).SortKey[0], '0');
  EXPECT_EQ(Row(2).SortKey[0], '1');
}

TEST_F(TriggerTest, AnotherEscapeCharacterCountsForWhatIsDefinedLater) {
  Do("#TRIGGER {a~*b*} {say one [%1]}");
  options.EscapeChar = '!';
  Do("#TRIGGER {*a!*b*} {say two [%1]}");
  EXPECT_EQ(Answer("a*bc"), "say two [c];say one [c]");
}

TEST_F(TriggerTest, AnEmptyLineHasNoColour) {
  options.CompressOutput = false;
  Do("#TRIGGER {Red} {never} {} {Color};#TRIGGER {*} {say empty[%1]}");
  EXPECT_EQ(Answer(""), "say empty[]");
}

TEST_F(TriggerTest, AMegabyteOfSearchStringIsDefinedAtOnce) {
  std::string search;
  while (search.size() < std::size_t{1} << 20) search += "[x]";
  EXPECT_EQ(Do("#TRIGGER {" + search + "} {look};#TRIGGER {x} {wave}"), "");
  EXPECT_EQ(Answer("x"), "wave");
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

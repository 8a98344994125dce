// SPDX-License-Identifier: GPL-3.0-or-later
// Triggers as they are defined, taken away, and put in order.
#include "trigger_fixture.h"

namespace corvid::test {

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

}  // namespace corvid::test

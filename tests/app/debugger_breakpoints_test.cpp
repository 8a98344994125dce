// SPDX-License-Identifier: GPL-3.0-or-later
// Triggers and aliases that stop a script: how they are marked, and where the marks stay.
#include "tools/debugger.h"

#include "debugger_fixture.h"

namespace corvid {
namespace {

TEST_F(DebuggerTest, MarksTriggersOfTheCharacterInForceAndOfAll) {
  program.Do("#MUD bob Aard aard.example 4000 Bob secret");
  program.Do("#CONNECT bob");
  Run("#TRIGGER {* says *} {#VAR said %2}");
  Run("#TRIGGER {orc *} {#BEEP} fight");
  Run("#GTRIGGER {zed} {#VAR z 1}");
  Run("#GTRIGGER {other} {#VAR o 1}");
  Trigger("other").Owner = 77;
  MarkTrigger("orc *");
  Texts rows;
  ThenPress(debugbutton::Triggers);
  Then([&] {
    EXPECT_EQ(Model().Code, "DEBUGTRIG");
    EXPECT_EQ(Model().Controls[0].Text, "Select Triggers");
    EXPECT_EQ(Model().Controls[2].Text, "Clear All");
    EXPECT_EQ(Model().Controls[3].Text, "OK");
    DialogControl& list = Control("Triggers", ControlKind::List);
    rows = list.Items;
    EXPECT_TRUE(list.MultiSelect);
    EXPECT_EQ(list.Selected, (std::vector<bool>{false, true, false}));
    list.Selected = {true, false, true};
    Press("OK");
  });
  ThenPress(debugbutton::Run);
  corvid.OpenDebugger();
  EXPECT_EQ(met, (Texts{"Debug Module ", "Debug Module- Select Trigger Breakpoints", "Debug Module "}));
  EXPECT_EQ(rows, (Texts{"* says * #VAR said %2", "[Breakpoint] orc * Class: fight #BEEP", "zed [Global] #VAR z 1"}));
  EXPECT_TRUE(TriggerStops("* says *"));
  EXPECT_FALSE(TriggerStops("orc *"));
  EXPECT_TRUE(TriggerStops("zed"));
  EXPECT_FALSE(TriggerStops("other"));
  Done();
}

TEST_F(DebuggerTest, MarksAliases) {
  Run("#ALIAS zap {cast zap}");
  Run("#ALIAS go {#VAR way %1} travel");
  MarkAlias("zap");
  Texts rows;
  ThenPress(debugbutton::Aliases);
  Then([&] {
    EXPECT_EQ(Model().Code, "DEBUGALIAS");
    EXPECT_EQ(Model().Controls[0].Text, "Select Alias");
    DialogControl& list = Control("Alias", ControlKind::List);
    rows = list.Items;
    EXPECT_EQ(list.Selected, (std::vector<bool>{false, true}));
    list.Selected = {true, true};
    Press("OK");
  });
  ThenPress(debugbutton::Run);
  corvid.OpenDebugger();
  EXPECT_EQ(met, (Texts{"Debug Module ", "Debug Module- Select Alias Breakpoints", "Debug Module "}));
  EXPECT_EQ(rows, (Texts{"go Class: travel [Global] #VAR way %1", "[Breakpoint] zap [Global] cast zap"}));
  EXPECT_TRUE(AliasStops("go"));
  EXPECT_TRUE(AliasStops("zap"));
  Done();
}

TEST_F(DebuggerTest, EmptyListsSaySo) {
  Texts rows;
  ThenPress(debugbutton::Triggers);
  Then([&] {
    rows = Items("Triggers");
    Control("Triggers", ControlKind::List).Selected = {true};
    Press("OK");
  });
  ThenPress(debugbutton::Aliases);
  Then([&] {
    rows.push_back(Items("Alias").at(0));
    Press("Clear All");
  });
  ThenPress(debugbutton::Run);
  corvid.OpenDebugger();
  EXPECT_EQ(rows, (Texts{"No Triggers Found", "No aliass Found"}));
  Done();
}

TEST_F(DebuggerTest, ClearAllTakesEveryMark) {
  Run("#TRIGGER {a} {#VAR a 1}");
  Run("#TRIGGER {b} {#VAR b 1}");
  Run("#ALIAS c {d}");
  for (const char* name : {"a", "b"}) MarkTrigger(name);
  Trigger("b").Owner = 77;
  MarkAlias("c");
  ThenPress(debugbutton::Triggers);
  ThenPress("Clear All");
  Then([&] {
    EXPECT_FALSE(TriggerStops("a"));
    EXPECT_FALSE(TriggerStops("b")) << "of another character as well";
    EXPECT_TRUE(AliasStops("c"));
    Press(debugbutton::Aliases);
  });
  ThenPress("Clear All");
  ThenPress(debugbutton::Run);
  corvid.OpenDebugger();
  EXPECT_FALSE(AliasStops("c"));
  Done();
}

TEST_F(DebuggerTest, LeavingTheListWithoutAButtonChangesNothing) {
  Run("#TRIGGER {a} {#VAR a 1}");
  MarkTrigger("a");
  ThenPress(debugbutton::Triggers);
  Then([&] {
    DialogControl& list = Control("Triggers", ControlKind::List);
    list.Selected = {false};
    Tell(list, DialogEvent::KeyDown, keycode::Escape);
  });
  ThenPress(debugbutton::Triggers);
  Then([&] {
    Control("Triggers", ControlKind::List).Selected = {false};
    memory.face.OpenEvents()->DialogCloseRequested();
  });
  ThenPress(debugbutton::Run);
  corvid.OpenDebugger();
  EXPECT_TRUE(TriggerStops("a"));
  Done();
}

TEST_F(DebuggerTest, MarksFollowTheirRowsWhileTheListIsOpen) {
  for (const char* name : {"a", "b", "c", "d"}) Run(std::string("#TRIGGER {") + name + "} {#VAR x 1}");
  for (const char* name : {"k", "m", "p"}) Run(std::string("#ALIAS ") + name + " {#VAR x 1}");
  ThenPress(debugbutton::Triggers);
  Then([&] {
    Control("Triggers", ControlKind::List).Selected = {false, true, false, true};
    Run("#UNTRIGGER {a}");
    Run("#UNTRIGGER {b}");
    Run("#TRIGGER {e} {#SUB y}");
    Press("OK");
  });
  Then([&] { Press(debugbutton::Aliases); });
  Then([&] {
    Control("Alias", ControlKind::List).Selected = {false, true, true};
    Run("#ALIAS aa {#VAR x 1}");
    Run("#UNALIAS p");
    Press("OK");
  });
  ThenPress(debugbutton::Run);
  corvid.OpenDebugger();
  EXPECT_FALSE(TriggerStops("c"));
  EXPECT_TRUE(TriggerStops("d"));
  EXPECT_FALSE(TriggerStops("e"));
  EXPECT_FALSE(AliasStops("aa"));
  EXPECT_FALSE(AliasStops("k"));
  EXPECT_TRUE(AliasStops("m"));
  Done();
}

TEST_F(DebuggerTest, MarksFollowTheirRowsThroughSortingAndRemoval) {
  Run("#TRIGGER {a} {#VAR x 1}");
  Run("#TRIGGER {b} {#VAR x 1}");
  Run("#ALIAS m {#VAR x 1}");
  MarkTrigger("b");
  MarkAlias("m");
  Run("#TRIGGER {s} {#SUB y}");
  Run("#UNTRIGGER {a}");
  Run("#ALIAS a {#VAR x 1}");
  Run("#ALIAS z {#VAR x 1}");
  Run("#UNALIAS a");
  corvid.upcalls.commands.SortTriggers();
  EXPECT_TRUE(TriggerStops("b"));
  EXPECT_FALSE(TriggerStops("s"));
  EXPECT_TRUE(AliasStops("m"));
  EXPECT_FALSE(AliasStops("z"));
}

TEST_F(DebuggerTest, ADefinitionAnewKeepsTheMarkOfAnAliasAlone) {
  Run("#ALIAS m {#VAR x 1}");
  Run("#TRIGGER {b} {#VAR x 1}");
  MarkAlias("m");
  MarkTrigger("b");
  Run("#ALIAS m {#VAR x 2}");
  Run("#TRIGGER {b} {#VAR x 2}");
  EXPECT_TRUE(AliasStops("m"));
  EXPECT_FALSE(TriggerStops("b"));
}

TEST_F(DebuggerTest, AMarkedTriggerStopsBeforeItsFirstCommand) {
  Run("#TRIGGER {* hits you} {#VAR foe %1;#VAR hit 1}");
  Run("#TRIGGER {* misses you} {#VAR foe %1}");
  MarkTrigger("* hits you");
  Arrives("orc hits you");
  EXPECT_EQ(met, Texts{}) << "the mode is off";
  SwitchOn();
  Arrives("rat misses you");
  EXPECT_EQ(met, Texts{});
  std::string line;
  Then([&] {
    line = Line();
    EXPECT_EQ(Global("FOE"), "rat");
    Press(debugbutton::Run);
  });
  Arrives("elf hits you");
  EXPECT_EQ(met, Texts{"Debug Module - [Trigger Breakpoint]"});
  EXPECT_EQ(line, "#VAR {foe} {elf}");
  EXPECT_EQ(Global("FOE"), "elf");
  Done();
}

TEST_F(DebuggerTest, AMarkedAliasStopsBeforeItsFirstCommand) {
  Run("#ALIAS go {#VAR way %1}");
  MarkAlias("go");
  Run("go west");
  EXPECT_EQ(met, Texts{});
  SwitchOn();
  std::string line;
  Then([&] {
    line = Line();
    Press(debugbutton::Run);
  });
  Run("go north");
  EXPECT_EQ(met, Texts{"Debug Module - [Alias Breakpoint]"});
  EXPECT_EQ(line, "#VAR {way} {north}");
  EXPECT_EQ(Global("WAY"), "north");
  Done();
}

TEST_F(DebuggerTest, AMarkedWalkStopsToo) {
  Run("#ALIAS .home {#VAR steps 1}");
  MarkAlias(".home");
  SwitchOn();
  ThenPress(debugbutton::Run);
  Run(".home");
  EXPECT_EQ(met, Texts{"Debug Module - [Alias Breakpoint]"});
  Done();
}

TEST_F(DebuggerTest, TheListsAreInTheOrderOfTheirTextAndNotOfTheTable) {
  for (const char* name : {"zed", "Mid", "abe"}) Run(std::string("#TRIGGER {") + name + "} {#VAR x 1}");
  ThenPress(debugbutton::Triggers);
  Texts rows;
  Then([&] {
    rows = Items("Triggers");
    Control("Triggers", ControlKind::List).Selected = {true, false, true};
    Press("OK");
  });
  ThenPress(debugbutton::Run);
  corvid.OpenDebugger();
  EXPECT_EQ(rows, (Texts{"abe [Global] #VAR x 1", "Mid [Global] #VAR x 1", "zed [Global] #VAR x 1"}));
  EXPECT_TRUE(TriggerStops("abe"));
  EXPECT_FALSE(TriggerStops("Mid"));
  EXPECT_TRUE(TriggerStops("zed"));
  Done();
}

TEST_F(DebuggerTest, AnAliasThatIsDefinedAnewWhileTheListIsOpenGetsItsMark) {
  Run("#ALIAS m {#VAR x 1}");
  Run("#ALIAS n {#VAR x 1}");
  MarkAlias("n");
  ThenPress(debugbutton::Aliases);
  Then([&] {
    Control("Alias", ControlKind::List).Selected = {true, false};
    Run("#ALIAS m {#VAR x 2} fight");
    Run("#ALIAS n {#VAR x 2}");
    Press("OK");
  });
  ThenPress(debugbutton::Run);
  corvid.OpenDebugger();
  EXPECT_TRUE(AliasStops("m"));
  EXPECT_FALSE(AliasStops("n"));
  Done();
}

TEST_F(DebuggerTest, WhatIsRemovedTakesItsMarkAlong) {
  Run("#ALIAS m {#VAR x 1}");
  Run("#TRIGGER {b} {#VAR x 1}");
  MarkAlias("m");
  MarkTrigger("b");
  Run("#UNALIAS m");
  Run("#UNTRIGGER {b}");
  for (const char* name : {"l", "m", "n"}) Run(std::string("#ALIAS ") + name + " {#VAR x 1}");
  for (const char* name : {"a", "b", "c"}) Run(std::string("#TRIGGER {") + name + "} {#VAR x 1}");
  for (const char* name : {"l", "m", "n"}) EXPECT_FALSE(AliasStops(name)) << name;
  for (const char* name : {"a", "b", "c"}) EXPECT_FALSE(TriggerStops(name)) << name;
}

TEST_F(DebuggerTest, MarksFollowTheirRowsWhenAClassLeavesGapsBehind) {
  constexpr int Gaps = 1100;
  Run("#TRIGGER {first} {#VAR x 1}");
  for (int i = 0; i < Gaps; ++i) Run("#TRIGGER {gap" + std::to_string(i) + "} {#VAR x 1} fight");
  Run("#TRIGGER {last} {#VAR x 1}");
  Run("#DELCLASS fight");
  ASSERT_GT(corvid.scriptState.TriggerCount, Gaps);
  ThenPress(debugbutton::Triggers);
  Then([&] {
    Control("Triggers", ControlKind::List).Selected = {false, true};
    Arrives("a line of the game");
    EXPECT_LT(corvid.scriptState.TriggerCount, Gaps) << "the rows have moved";
    Press("OK");
  });
  ThenPress(debugbutton::Run);
  corvid.OpenDebugger();
  EXPECT_FALSE(TriggerStops("first"));
  EXPECT_TRUE(TriggerStops("last"));
  Done();
}

TEST_F(DebuggerTest, AMarkSetInAStoppedTriggerHoldsForTheSameLine) {
  Run("#TRIGGER {orc *} {#VAR lower 1}");
  Run("#TRIGGER {* hits you} {#BREAK}");
  SwitchOn();
  ThenPress(debugbutton::Triggers);
  Then([&] {
    Control("Triggers", ControlKind::List).Selected = {false, true};
    Press("OK");
  });
  ThenPress(debugbutton::Run);
  Then([&] {
    EXPECT_EQ(Global("LOWER"), "(none)");
    Press(debugbutton::Run);
  });
  Arrives("orc hits you");
  EXPECT_EQ(met, (Texts{"Debug Module  - [#break Command]", "Debug Module- Select Trigger Breakpoints",
                        "Debug Module  - [#break Command]", "Debug Module - [Trigger Breakpoint]"}));
  EXPECT_EQ(Global("LOWER"), "1");
  Done();
}

TEST_F(DebuggerTest, TheListIsOfTheCharacterThatWasInForceWhenItOpened) {
  program.Do("#MUD bob Aard aard.example 4000 Bob secret");
  program.Do("#CONNECT bob");
  Run("#TRIGGER {bobs} {#VAR x 1}");
  const OwnerId bob = corvid.scriptState.CurrentOwner;
  ThenPress(debugbutton::Triggers);
  Then([&] {
    Control("Triggers", ControlKind::List).Selected = {true};
    corvid.scriptState.CurrentOwner = static_cast<OwnerId>(bob + 1);
    Press("OK");
  });
  ThenPress(debugbutton::Run);
  corvid.OpenDebugger();
  EXPECT_TRUE(TriggerStops("bobs"));
  Done();
}

}  // namespace
}  // namespace corvid

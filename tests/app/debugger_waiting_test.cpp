// SPDX-License-Identifier: GPL-3.0-or-later
// While the script debugger waits for the player: what the games, the alarms and the end of the program do.
#include "tools/debugger.h"

#include "debugger_fixture.h"

namespace corvid {
namespace {

TEST_F(DebuggerTest, WhatRunsWhileItIsOpenDoesNotStop) {
  Run("#TRIGGER {* hits you} {#VAR foe %1;#BREAK}");
  MarkTrigger("* hits you");
  SwitchOn();
  Then([&] {
    debug.DebugExpression = "1=1";
    Arrives("orc hits you");
    EXPECT_EQ(Global("FOE"), "orc");
    EXPECT_EQ(Model().Title, "Debug Module  - [#break Command]");
    debug.DebugExpression.clear();
    Press(debugbutton::Run);
  });
  Run("#BREAK;#VAR after 1");
  EXPECT_EQ(met, Texts{"Debug Module  - [#break Command]"});
  EXPECT_EQ(Global("AFTER"), "1");
  EXPECT_FALSE(debug.DebugBreak) << "nothing is left of it";
  Done();
}

TEST_F(DebuggerTest, AQuestionOfAnotherScriptLeadsBackToTheStop) {
  Run("#TRIGGER {who} {#PROMPT name {Who is it?}}");
  SwitchOn();
  Then([&] { Arrives("who"); });
  Then([&] { TypeAndPress("an orc", "OK"); });
  ThenPress(debugbutton::Run);
  Run("#BREAK;#VAR after 1");
  ASSERT_EQ(met.size(), 3U);
  EXPECT_EQ(met[0], "Debug Module  - [#break Command]");
  EXPECT_EQ(met[2], "Debug Module  - [#break Command]");
  EXPECT_EQ(Global("NAME"), "an orc");
  EXPECT_EQ(Global("AFTER"), "1");
  Done();
}

TEST_F(DebuggerTest, ASessionThatClosesWhileItIsOpenDoesNoHarm) {
  program.Do("#MUD bob Aard aard.example 4000 Bob secret");
  program.Do("#CONNECT bob");
  Run("#ALIAS go {#BREAK;#GVAR way %1}");
  SwitchOn();
  Then([&] {
    Run("#KILLALL bob");
    for (int i = 0; i < 40; ++i) Run("#ALIAS a" + std::to_string(i) + " {x}");
    Press(debugbutton::Run);
  });
  Run("go north");
  EXPECT_EQ(met, Texts{"Debug Module  - [#break Command]"});
  Done();
}

TEST_F(DebuggerTest, TheEndOfTheProgramEndsIt) {
  SwitchOn();
  Then([&] { memory.loop.End(0); });
  Run("#BREAK;#VAR after 1");
  EXPECT_EQ(met, Texts{"Debug Module  - [#break Command]"});
  EXPECT_FALSE(debug.Busy);
  Done();
}

TEST_F(DebuggerTest, WithoutAPlayerItHoldsNothingUp) {
  SwitchOn();
  memory.face.Player = false;
  Run("#BREAK;#VAR after 1");
  EXPECT_EQ(met, Texts{});
  EXPECT_EQ(Global("AFTER"), "1");
}

TEST_F(DebuggerTest, ClosingItLetsTheScriptGoOn) {
  SwitchOn();
  Then([&] { memory.face.OpenEvents()->DialogCloseRequested(); });
  Run("#BREAK;#VAR after 1");
  EXPECT_EQ(Global("AFTER"), "1");
  EXPECT_EQ(debug.DebugMode, 1);
  Done();
}

TEST_F(DebuggerTest, ATitleTellsThisStopAndNoneBefore) {
  SwitchOn();
  ThenPress(debugbutton::Run);
  Run("#BREAK");
  Then([&] {
    EXPECT_EQ(Line(), "") << "no command is at hand";
    Press(debugbutton::Run);
  });
  corvid.OpenDebugger();
  EXPECT_EQ(met, (Texts{"Debug Module  - [#break Command]", "Debug Module "}));
  Done();
}

}  // namespace
}  // namespace corvid

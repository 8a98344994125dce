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
    EXPECT_EQ(Model().Title, "Debug Module ");
    EXPECT_EQ(debug.DebugReason, "");
    EXPECT_EQ(debug.DebugExpandedLine, "#VAR {after} {1}");
    debug.DebugExpression.clear();
    Press(debugbutton::Run);
  });
  debug.DebugBreak = true;
  Run("#VAR after 1");
  EXPECT_EQ(met, Texts{"Debug Module "});
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

TEST_F(DebuggerTest, AnAlarmRunsWhileItIsOpen) {
  program.Do("#MUD bob Aard aard.example 4000 Bob secret");
  program.Do("#CONNECT bob");
  SwitchOn();
  Run("#ALARM 1 {#BREAK;#GVAR rang 1}");
  Then([&] {
    memory.loop.Pass(2000);
    EXPECT_EQ(Global("RANG"), "1");
    EXPECT_EQ(Global("AFTER"), "(none)");
    EXPECT_EQ(Model().Code, "DEBUGMAIN");
    Press(debugbutton::Run);
  });
  Run("#BREAK;#GVAR after 1");
  EXPECT_EQ(met, Texts{"Debug Module  - [#break Command]"});
  EXPECT_EQ(Global("AFTER"), "1");
  Done();
}

TEST_F(DebuggerTest, TheEndOfTheProgramEndsWhatIsOpenedFromIt) {
  for (const char* button : {debugbutton::Triggers, debugbutton::Aliases, debugbutton::Expression,
                             debugbutton::Variables, debugbutton::Parameters, debugbutton::Test}) {
    SCOPED_TRACE(button);
    RunningProgram other;
    ASSERT_TRUE(other.Start());
    int dialogs = 0;
    int16 none = 0;
    other.memory.loop.Idle = [&] {
      DialogModel& model = *other.memory.face.OpenModel();
      if (++dialogs > 1) {
        other.memory.loop.End(0);
        return true;
      }
      for (std::size_t i = 0; i < model.Controls.size(); ++i)
        if (model.Controls[i].Caption == button) {
          other.memory.face.OpenEvents()->DialogHappened(static_cast<int32>(i), DialogEvent::Click, none, none);
          return true;
        }
      return false;
    };
    other.corvid.debugState.DebugMode = 1;
    other.corvid.debugState.DebugExpression = "1=2";
    other.Do("#BREAK");
    EXPECT_EQ(dialogs, 2);
    EXPECT_FALSE(other.corvid.debugState.Busy);
    EXPECT_EQ(other.corvid.debugState.DebugExpression, "1=2");
    EXPECT_EQ(other.memory.face.OpenModel(), nullptr);
  }
}

TEST_F(DebuggerTest, ASessionThatClosesWhileTheListIsOpenLeavesNoMark) {
  program.Do("#MUD bob Aard aard.example 4000 Bob secret");
  program.Do("#CONNECT bob");
  Run("#TRIGGER {bobs} {#VAR x 1}");
  Run("#GTRIGGER {everyones} {#VAR x 1}");
  ThenPress(debugbutton::Triggers);
  Then([&] {
    Control("Triggers", ControlKind::List).Selected = {true, true};
    Run("#KILLALL bob");
    EXPECT_EQ(corvid.scriptState.TriggerCount, 0);
    Run("#GTRIGGER {everyones} {#VAR x 1}");
    Press("OK");
  });
  ThenPress(debugbutton::Run);
  corvid.OpenDebugger();
  EXPECT_FALSE(TriggerStops("everyones")) << "it is another one";
  Done();
}

}  // namespace
}  // namespace corvid

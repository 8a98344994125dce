// SPDX-License-Identifier: GPL-3.0-or-later
// What the buttons of the script debugger open: parameters, variables, the trigger tester; and their keys.
#include "tools/debugger.h"

#include "debugger_fixture.h"

namespace corvid {
namespace {

// --- parameters ---

TEST_F(DebuggerTest, ParametersAreShownAndChangedForTheRunningCommand) {
  Run("#ALIAS go {#VAR way %1;#VAR all {%0};#VAR third %3}");
  MarkAlias("go");
  SwitchOn();
  Texts rows;
  ThenPress(debugbutton::Parameters);
  Then([&] {
    EXPECT_EQ(Model().Code, "DEBUGPARAMS");
    DialogControl& list = Control("Parameters", ControlKind::List);
    DialogControl& value = Control("Value", ControlKind::TextBox);
    rows = list.Items;
    EXPECT_EQ(value.Text, "north fast ");
    list.ListIndex = 1;
    Tell(list, DialogEvent::Click);
    EXPECT_EQ(value.Text, "north");
    value.Text = "south";
    Tell(value, DialogEvent::Change);
    EXPECT_EQ(list.Items[1], "%1 north");
    Tell(value, DialogEvent::LostFocus);
    EXPECT_EQ(list.Items[1], "%1 south");
    list.ListIndex = 3;
    Tell(list, DialogEvent::Click);
    EXPECT_EQ(value.Text, "");
    value.Text = "now";
    Tell(value, DialogEvent::Change);
    Press("OK");
  });
  std::string next;
  Then([&] {
    next = Line();
    Press(debugbutton::Run);
  });
  Run("go north fast");
  EXPECT_EQ(met, (Texts{"Debug Module - [Alias Breakpoint]", "View & Modify Parameters",
                        "Debug Module - [Alias Breakpoint]"}));
  ASSERT_EQ(rows.size(), 100U);
  EXPECT_EQ(rows[0], "%0 north fast ");
  EXPECT_EQ(rows[1], "%1 north");
  EXPECT_EQ(rows[2], "%2 fast");
  EXPECT_EQ(rows[99], "%99 ");
  EXPECT_EQ(next, "#VAR {way} {south}") << "the command as it will run now";
  EXPECT_EQ(Global("WAY"), "south");
  EXPECT_EQ(Global("ALL"), "north fast ");
  EXPECT_EQ(Global("THIRD"), "now");
  Done();
}

TEST_F(DebuggerTest, CancelLeavesTheParametersAsTheyWere) {
  Run("#ALIAS go {#VAR way %1}");
  MarkAlias("go");
  SwitchOn();
  ThenPress(debugbutton::Parameters);
  Then([&] {
    DialogControl& list = Control("Parameters", ControlKind::List);
    list.ListIndex = 1;
    Tell(list, DialogEvent::Click);
    Type("south");
    Press("Cancel");
  });
  ThenPress(debugbutton::Run);
  Run("go north");
  EXPECT_EQ(Global("WAY"), "north");
  Done();
}

TEST_F(DebuggerTest, TheListOfVariablesOpensAndLeadsBackToTheStop) {
  SwitchOn();
  ThenPress(debugbutton::Variables);
  ThenPress("Cancel");
  ThenPress(debugbutton::Run);
  Run("#BREAK");
  EXPECT_EQ(met,
            (Texts{"Debug Module  - [#break Command]", "View & Set Variables", "Debug Module  - [#break Command]"}));
  Done();
}

// --- the trigger tester ---

TEST_F(DebuggerTest, TheTesterFiresTriggersWithoutAConnection) {
  Run("#TRIGGER {* hits you} {#VAR foe %1}");
  ThenPress(debugbutton::Test);
  Then([&] {
    EXPECT_EQ(Model().Controls[0].Text, "Enter Line ");
    EXPECT_EQ(Model().Controls[1].Text, "");
    TypeAndPress("orc hits you", "OK");
  });
  Then([&] {
    EXPECT_EQ(Global("FOE"), "orc");
    EXPECT_EQ(Control("Last Line Sent From MUD", ControlKind::TextBox).Text, "orc hits you");
    Press(debugbutton::Test);
  });
  Then([&] {
    EXPECT_EQ(Model().Controls[1].Text, "orc hits you") << "the line before to begin with";
    TypeAndPress("", "OK");
  });
  Then([&] {
    EXPECT_EQ(debug.TestLine, "orc hits you");
    Press(debugbutton::Run);
  });
  corvid.OpenDebugger();
  EXPECT_EQ(met, (Texts{"Debug Module ", "Trigger Tester", "Debug Module ", "Trigger Tester", "Debug Module "}));
  EXPECT_FALSE(debug.DebugBreak);
  Done();
}

TEST_F(DebuggerTest, TheTesterStopsAtTheTriggersFirstCommandWhileTheModeIsOn) {
  Run("#TRIGGER {* hits you} {#VAR foe %1;#VAR hit 1}");
  SwitchOn();
  ThenLook(debugbutton::Test);
  Then([&] { TypeAndPress("orc hits you", "OK"); });
  ThenLook(debugbutton::Step);
  ThenLook(debugbutton::Run);
  ThenLook(debugbutton::Run);
  Run("#BREAK;#VAR after 1");
  EXPECT_EQ(met, (Texts{"Debug Module  - [#break Command]", "Trigger Tester", "Debug Module  - [#break Command]",
                        "Debug Module - [Step Mode]", "Debug Module  - [#break Command]"}));
  EXPECT_EQ(lines, (Texts{"#BREAK", "#VAR {foe} {orc}", "#VAR {hit} {1}", "#BREAK"}));
  EXPECT_EQ(Global("AFTER"), "1");
  Done();
}

// --- keys ---

TEST_F(DebuggerTest, KeysOfTheCaptionsPressTheButtons) {
  struct Row {
    int16 key;
    int16 shift;
    const char* opens;
    const char* leave;
  };
  const Row rows[] = {{'T', AltBit, "Debug Module- Select Trigger Breakpoints", "OK"},
                      {'A', AltBit, "Debug Module- Select Alias Breakpoints", "OK"},
                      {'E', AltBit, "Break on Expression", "Cancel"},
                      {'V', AltBit, "View & Set Variables", "Cancel"},
                      {'V', AltBit, "View & Set Variables", "Cancel"},
                      {'P', AltBit, "View & Modify Parameters", "Cancel"},
                      {'T', ControlBit, "Trigger Tester", "Cancel"}};
  for (const Row& row : rows) {
    SCOPED_TRACE(row.opens);
    met.clear();
    Then([&] {
      Tell(Control("Last Line Sent From MUD", ControlKind::TextBox), DialogEvent::KeyDown, row.key, row.shift);
    });
    ThenPress(row.leave);
    Then([&] { Tell(Control("Command History", ControlKind::List), DialogEvent::KeyDown, keycode::F1 + 4, 0); });
    corvid.OpenDebugger();
    EXPECT_EQ(met, (Texts{"Debug Module ", row.opens, "Debug Module "}));
    EXPECT_FALSE(debug.DebugBreak);
    Done();
  }
  Then([&] { Tell(Control("Debug Mode", ControlKind::Check), DialogEvent::KeyDown, keycode::F1 + 7, 0); });
  corvid.OpenDebugger();
  EXPECT_TRUE(debug.DebugBreak) << "F8 steps";
  Done();
}

TEST_F(DebuggerTest, OtherKeysPressNothing) {
  Then([&] {
    DialogControl& check = Control("Debug Mode", ControlKind::Check);
    for (const int16 shift : {int16{0}, ShiftBit, static_cast<int16>(ShiftBit | AltBit)})
      Tell(check, DialogEvent::KeyDown, 'T', shift);
    Tell(check, DialogEvent::KeyDown, keycode::F1 + 7, ShiftBit);
    Tell(check, DialogEvent::KeyDown, keycode::F1 + 5, 0);
    ASSERT_NE(memory.face.OpenModel(), nullptr);
    EXPECT_EQ(Model().Code, "DEBUGMAIN");
    Press(debugbutton::Run);
  });
  corvid.OpenDebugger();
  EXPECT_EQ(met, Texts{"Debug Module "});
  Done();
}

TEST_F(DebuggerTest, TheTesterFiresTheTriggersOfTheSession) {
  program.Do("#MUD bob Aard aard.example 4000 Bob secret");
  program.Do("#CONNECT bob");
  Run("#TRIGGER {* hits you} {#GVAR foe %1}");
  ThenPress(debugbutton::Test);
  Then([&] { TypeAndPress("orc hits you", "OK"); });
  ThenPress(debugbutton::Run);
  corvid.OpenDebugger();
  EXPECT_EQ(Global("FOE"), "orc");
  Done();
}

TEST_F(DebuggerTest, TheTesterReachesTheTriggersFromWithinATrigger) {
  Run("#TRIGGER {* hits you} {#BREAK;#VAR hit %1}");
  Run("#TRIGGER {* misses you} {#VAR miss %1}");
  SwitchOn();
  ThenPress(debugbutton::Test);
  Then([&] { TypeAndPress("rat misses you", "OK"); });
  ThenLook(debugbutton::Run);
  Then([&] {
    EXPECT_EQ(Global("MISS"), "rat");
    EXPECT_EQ(Global("HIT"), "(none)");
    lines.push_back(Line());
    Press(debugbutton::Run);
  });
  Arrives("orc hits you");
  EXPECT_EQ(lines, (Texts{"#VAR {miss} {rat}", "#BREAK"}));
  EXPECT_EQ(Global("HIT"), "orc");
  Done();
}

TEST_F(DebuggerTest, AChangedLineOfATriggerIsTheLineThatIsShown) {
  Run("#TRIGGER {* hits you} {#BREAK;#VAR all {%0}}");
  SwitchOn();
  ThenPress(debugbutton::Parameters);
  Then([&] { TypeAndPress("nobody is there", "OK"); });
  ThenPress(debugbutton::Run);
  Arrives("orc hits you");
  EXPECT_EQ(Global("ALL"), "nobody is there");
  const int16 session = corvid.scriptState.CurrentSocket;
  const auto place = static_cast<std::size_t>(corvid.sessionState.HistoryPos[session]);
  EXPECT_EQ(corvid.sessionState.HistoryLines[session].at(place), "nobody is there");
  Done();
}

}  // namespace
}  // namespace corvid

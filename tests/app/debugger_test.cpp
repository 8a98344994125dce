// SPDX-License-Identifier: GPL-3.0-or-later
// The script debugger in the whole program: where it stops and what its dialog shows.
#include "tools/debugger.h"

#include "debugger_fixture.h"

namespace corvid {
namespace {

// --- the main dialog ---

TEST_F(DebuggerTest, ShowsItsControlsInOrder) {
  Texts captions;
  Texts labels;
  std::string code;
  Then([&] {
    code = Model().Code;
    for (const DialogControl& control : Model().Controls)
      (control.Kind == ControlKind::Label ? labels : captions)
          .push_back(control.Kind == ControlKind::Label ? control.Text : control.Caption);
    Press(debugbutton::Run);
  });
  corvid.OpenDebugger();
  EXPECT_EQ(code, "DEBUGMAIN");
  EXPECT_EQ(met, Texts{"Debug Module "});
  EXPECT_EQ(captions,
            (Texts{"Debug Mode", "Command History", "Expanded Current Script Line", "Last Line Sent From MUD",
                   debugbutton::Triggers, debugbutton::Aliases, debugbutton::Expression, debugbutton::Variables,
                   debugbutton::Parameters, debugbutton::Test, debugbutton::Step, debugbutton::Run}));
  EXPECT_EQ(labels, (Texts{"Previous Script Commands", "Expanded Current Script Line", "Last Line Sent From MUD"}));
}

TEST_F(DebuggerTest, TheCheckIsTheModeAndStaysUntilItIsTakenAway) {
  SwitchOn();
  EXPECT_EQ(debug.DebugMode, 1);
  int16 shown = -1;
  Then([&] {
    shown = Control("Debug Mode", ControlKind::Check).Value;
    Check(false);
    Press(debugbutton::Run);
  });
  Run("#BREAK");
  EXPECT_EQ(shown, 1);
  EXPECT_EQ(debug.DebugMode, 0);
  Run("#BREAK");
  Done();
}

TEST_F(DebuggerTest, TheMenuOpensIt) {
  ThenPress(debugbutton::Run);
  corvid.menus.MenuRoutine("TOOLS//DE");
  EXPECT_EQ(met, Texts{"Debug Module "});
  Done();
}

TEST_F(DebuggerTest, ShowsTheLastLineOfTheGame) {
  Arrives("The orc growls.");
  Arrives("You are hungry.");
  std::string shown;
  Then([&] {
    shown = Control("Last Line Sent From MUD", ControlKind::TextBox).Text;
    Press(debugbutton::Run);
  });
  corvid.OpenDebugger();
  EXPECT_EQ(shown, "You are hungry.");
}

// --- BREAK ---

TEST_F(DebuggerTest, BreakDoesNothingWhileTheModeIsOff) {
  Run("#BREAK;#VAR after 1");
  EXPECT_EQ(met, Texts{});
  EXPECT_EQ(Global("AFTER"), "1");
  EXPECT_EQ(debug.DebugReason, "");
}

TEST_F(DebuggerTest, BreakStopsTheScriptInItsMidst) {
  SwitchOn();
  std::string before;
  std::string after;
  std::string line;
  Then([&] {
    before = Global("BEFORE");
    after = Global("AFTER");
    line = Line();
    Press(debugbutton::Run);
  });
  Run("#VAR before 1;#BREAK;#VAR after 1");
  EXPECT_EQ(met, Texts{"Debug Module  - [#break Command]"});
  EXPECT_EQ(before, "1");
  EXPECT_EQ(after, "(none)");
  EXPECT_EQ(Global("AFTER"), "1");
  EXPECT_EQ(line, "#BREAK");
  Done();
}

TEST_F(DebuggerTest, WhatIsOnlyCheckedStopsNowhere) {
  SwitchOn();
  debug.DebugBreak = true;
  debug.DebugExpression = "1=1";
  std::string problem;
  int16 options = option::CheckOnly;
  int16 channel = CurrentSession;
  Parameters none;
  corvid.upcalls.commands.ProcessCommand("#BREAK;#IF {1} {#VAR x 1}", options, problem, none, channel);
  EXPECT_EQ(met, Texts{});
  EXPECT_EQ(debug.DebugHistoryAt, 0) << "nor does it count as a command that ran";
  EXPECT_TRUE(debug.DebugBreak) << "the stop is still to come";
}

// --- steps ---

TEST_F(DebuggerTest, StepStopsBeforeEachCommandWithItsParametersExpanded) {
  Run("#VAR hp 12");
  SwitchOn();
  ThenLook(debugbutton::Step);
  ThenLook(debugbutton::Step);
  ThenLook(debugbutton::Step);
  ThenLook(debugbutton::Run);
  Run("#BREAK;#VAR copy @hp;#IF {@hp>5} {#VAR low 0;#VAR high 1};#VAR end 1");
  EXPECT_EQ(met, (Texts{"Debug Module  - [#break Command]", "Debug Module - [Step Mode]", "Debug Module - [Step Mode]",
                        "Debug Module - [Step Mode]"}));
  EXPECT_EQ(lines, (Texts{"#BREAK", "#VAR {copy} {12}", "#IF {12>5} {#VAR low 0;#VAR high 1}", "#VAR {low} {0}"}));
  EXPECT_EQ(Global("HIGH"), "1") << "Run goes on without a stop";
  EXPECT_EQ(Global("END"), "1");
  EXPECT_FALSE(debug.DebugBreak);
  Done();
}

TEST_F(DebuggerTest, EachStopSaysTheCommandThatComesNext) {
  SwitchOn();
  ThenPress(debugbutton::Step);
  ThenPress(debugbutton::Run);
  program.memory.effects.Clear();
  Run("#BREAK;#VAR copy 7");
  EXPECT_EQ(program.memory.effects.Of("speech"),
            (Texts{"5 Debug Module  - [#break Command]", "5 Expanded Current Script Line", "5 #BREAK",
                   "5 Debug Module - [Step Mode]", "5 Expanded Current Script Line", "5 #VAR {copy} {7}"}));
  program.memory.effects.Clear();
  ThenPress(debugbutton::Run);
  corvid.OpenDebugger();
  EXPECT_EQ(program.memory.effects.Of("speech"), (Texts{"5 Debug Module - [Step Mode]", "5 Debug Mode", "5 checked"}))
      << "opened by hand there is no command";
  Done();
}

TEST_F(DebuggerTest, StepSwitchesTheModeOnAndWaitsForTheNextCommand) {
  ThenPress(debugbutton::Step);
  corvid.OpenDebugger();
  EXPECT_EQ(debug.DebugMode, 1);
  EXPECT_TRUE(debug.DebugBreak);
  ThenPress(debugbutton::Run);
  Run("#VAR x 1");
  EXPECT_EQ(met, (Texts{"Debug Module ", "Debug Module - [Step Mode]"}));
  EXPECT_EQ(Global("X"), "1");
  Done();
}

TEST_F(DebuggerTest, WhatCannotBeExpandedIsShownAsItIsWritten) {
  SwitchOn();
  debug.DebugBreak = true;
  std::string line;
  Then([&] {
    line = Line();
    Press(debugbutton::Run);
  });
  Run("#ALIAS odd {%NOSUCH(x) %CHR(999)}");
  EXPECT_EQ(line, "#ALIAS {odd} {%NOSUCH(x) %CHR(999)}");
  EXPECT_EQ(program.ErrorLog(), "");
  Done();
}

TEST_F(DebuggerTest, AStopShowsTheLineAsTyped) {
  SwitchOn();
  Run("#VAR x 1");
  debug.DebugBreak = true;
  std::string line;
  Then([&] {
    line = Line();
    Press(debugbutton::Run);
  });
  Run("@x = 5");
  EXPECT_EQ(line, "@x {=} {5}");
  EXPECT_EQ(Global("X"), "5");
}

TEST_F(DebuggerTest, AStepToBreakStopsBeforeItAndInIt) {
  SwitchOn();
  ThenPress(debugbutton::Step);
  ThenPress(debugbutton::Step);
  ThenPress(debugbutton::Run);
  Run("#BREAK;#BREAK;#VAR after 1");
  EXPECT_EQ(met, (Texts{"Debug Module  - [#break Command]", "Debug Module - [Step Mode]",
                        "Debug Module  - [#break Command]"}));
  EXPECT_EQ(Global("AFTER"), "1");
  Done();
}

TEST_F(DebuggerTest, FromTheMenuThereIsNoCommandAtHand) {
  SwitchOn();
  ThenPress(debugbutton::Run);
  Run("#BREAK");
  std::string line = "?";
  Then([&] {
    line = Line();
    Press(debugbutton::Run);
  });
  corvid.OpenDebugger();
  EXPECT_EQ(line, "");
  Done();
}

TEST_F(DebuggerTest, TheTitleKeepsTheLastReasonUntilAnother) {
  SwitchOn();
  ThenPress(debugbutton::Run);
  Run("#BREAK");
  ThenPress(debugbutton::Step);
  corvid.OpenDebugger();
  ThenPress(debugbutton::Run);
  Run("#VAR x 1");
  EXPECT_EQ(met, (Texts{"Debug Module  - [#break Command]", "Debug Module  - [#break Command]",
                        "Debug Module - [Step Mode]"}));
  Done();
}

// --- the commands before ---

TEST_F(DebuggerTest, TheHistoryHoldsFiftyCommandsNewestLast) {
  SwitchOn();
  Texts rows;
  int32 chosen = -2;
  Then([&] {
    rows = Items("Command History");
    chosen = Control("Command History", ControlKind::List).ListIndex;
    Press(debugbutton::Run);
  });
  for (int i = 1; i <= 60; ++i) Run("#VAR n " + std::to_string(i));
  Run("#BREAK");
  ASSERT_EQ(rows.size(), 50U);
  EXPECT_EQ(rows.front(), "1> #VAR n 12");
  EXPECT_EQ(rows[48], "1> #VAR n 60");
  EXPECT_EQ(rows.back(), "1> #BREAK");
  EXPECT_EQ(chosen, 49) << "the player begins at the newest";
  Done();
}

TEST_F(DebuggerTest, TheHistoryTellsHowDeepACommandStood) {
  SwitchOn();
  Run("#ALIAS inner {#VAR a 1;#VAR b 2}");
  Run("inner");
  Texts rows;
  Then([&] {
    rows = Items("Command History");
    Press(debugbutton::Run);
  });
  corvid.OpenDebugger();
  EXPECT_EQ(rows, (Texts{"1> #ALIAS inner {#VAR a 1;#VAR b 2}", "1> inner", "2> #VAR a 1;#VAR b 2", "2> #VAR b 2"}));
}

TEST_F(DebuggerTest, NothingIsNotedWhileTheModeIsOff) {
  Run("#VAR a 1");
  EXPECT_EQ(debug.DebugHistoryAt, 0);
  SwitchOn();
  Run("#VAR a 1");
  EXPECT_EQ(debug.DebugHistoryAt, 1);
}

// --- break on expression ---

TEST_F(DebuggerTest, AnExpressionStopsWhereItIsTrue) {
  Run("#VAR i 0");
  Then([&] { Press(debugbutton::Expression); });
  Then([&] {
    EXPECT_EQ(Model().Code, "TEXTPROMPT");
    EXPECT_EQ(Model().Controls[0].Text, "Enter Expression");
    EXPECT_EQ(Model().Controls[1].Text, "");
    TypeAndPress("@i=3", "OK");
  });
  ThenPress(debugbutton::Run);
  corvid.OpenDebugger();
  EXPECT_EQ(met, (Texts{"Debug Module ", "Break on Expression", "Debug Module "}));
  EXPECT_EQ(debug.DebugMode, 1);
  EXPECT_EQ(debug.DebugExpression, "@i=3");
  met.clear();
  std::string value;
  Then([&] {
    value = Global("I");
    Press(debugbutton::Expression);
  });
  Then([&] {
    EXPECT_EQ(Model().Controls[1].Text, "@i=3") << "the old one to begin with";
    TypeAndPress("@i=7", "OK");
  });
  ThenPress(debugbutton::Run);
  Then([&] {
    value += " " + Global("I");
    Check(false);
    Press(debugbutton::Run);
  });
  Run("#WHILE {@i<10} {#MATH i {@i+1}}");
  EXPECT_EQ(met, (Texts{"Debug Module  - [Break on Expression]", "Break on Expression",
                        "Debug Module  - [Break on Expression]", "Debug Module  - [Break on Expression]"}));
  EXPECT_EQ(value, "3 7");
  EXPECT_EQ(Global("I"), "10");
  Done();
}

TEST_F(DebuggerTest, AnExpressionSeesTheParametersOfTheRunningCommand) {
  SwitchOn();
  debug.DebugExpression = R"((%1="go"))";
  Run("#ALIAS walk {#VAR way %1}");
  Run("walk stay");
  EXPECT_EQ(met, Texts{});
  ThenPress(debugbutton::Run);
  Run("walk go");
  EXPECT_EQ(met, Texts{"Debug Module  - [Break on Expression]"});
  Done();
}

TEST_F(DebuggerTest, TheVariablesAreThoseOfTheSessionInWhichTheCommandRuns) {
  program.Do("#MUD bob Aard aard.example 4000 Bob secret");
  program.Do("#CONNECT bob");
  Run("#VAR hp 12");
  Run("#GVAR hp 1");
  ASSERT_EQ(Global("HP"), "1");
  SwitchOn();
  debug.DebugExpression = "@hp=12";
  ThenLook(debugbutton::Step);
  ThenLook(debugbutton::Run);
  Run("#GVAR copy @hp;#GVAR second {@hp}");
  EXPECT_EQ(met, (Texts{"Debug Module  - [Break on Expression]", "Debug Module  - [Break on Expression]"}));
  EXPECT_EQ(lines, (Texts{"#GVAR {copy} {12}", "#GVAR {second} {12}"}));
  Done();
}

TEST_F(DebuggerTest, ABadExpressionIsToldOnceAndCleared) {
  for (const char* bad : {"1+", "%NOSUCH(1)=1", "%CHR(999)=1"}) {
    SCOPED_TRACE(bad);
    met.clear();
    SwitchOn();
    debug.DebugExpression = bad;
    std::string code;
    Then([&] {
      code = Model().Code;
      EXPECT_EQ(debug.DebugExpression, "") << "before anything else can run";
      EXPECT_NE(Model().Controls[0].Text, "");
      Press("Ok");
    });
    Run("#VAR a 1;#VAR b 2");
    EXPECT_EQ(code, "MSGBOX");
    EXPECT_EQ(met, Texts{"Error!"});
    EXPECT_EQ(Global("B"), "2");
    EXPECT_EQ(program.ErrorLog(), "") << "the script has no part in it";
    Done();
  }
}

TEST_F(DebuggerTest, CancelKeepsTheExpression) {
  debug.DebugExpression = "1=2";
  ThenPress(debugbutton::Expression);
  ThenPress("Cancel");
  ThenPress(debugbutton::Expression);
  Then([&] { TypeAndPress("", "OK"); });
  Then([&] {
    Check(false);
    Press(debugbutton::Run);
  });
  Then([] {});
  std::string kept;
  memory.loop.Idle = [&, at = 0]() mutable {
    if (++at == 3) kept = debug.DebugExpression;
    return Meet();
  };
  corvid.OpenDebugger();
  EXPECT_EQ(kept, "1=2");
  EXPECT_EQ(debug.DebugExpression, "") << "an empty one is none";
}

}  // namespace
}  // namespace corvid

// SPDX-License-Identifier: GPL-3.0-or-later
// The script debugger in the whole program: what stops, what the dialogs show, what each button does.
#include "tools/debugger.h"

#include <deque>
#include <functional>

#include "core/keys.h"
#include "running_program.h"

namespace corvid {
namespace {

constexpr const char* TriggersButton = "Set Trigger Breakpoint Alt-T";
constexpr const char* AliasesButton = "Set Alias Breakpoint Alt-A";
constexpr const char* ExpressionButton = "Break on Expression Alt-E";
constexpr const char* VariablesButton = "Set & View Variables Alt-V";
constexpr const char* ParametersButton = "View Parameters Alt-P";
constexpr const char* TestButton = "Enter Text to Test Trigger Ctrl-T";
constexpr const char* StepButton = "Step F8";
constexpr const char* RunButton = "Run F5";

class DebuggerTest : public testing::Test {
 protected:
  DebuggerTest() {
    EXPECT_TRUE(program.Start());
    memory.effects.Clear();
    memory.loop.Idle = [this] { return Meet(); };
  }

  // What the player does with each dialog as it comes; the last one is pressed on with "Run F5" when nothing is left.
  using Step = std::function<void()>;
  void Then(Step step) { steps_.push_back(std::move(step)); }
  void ThenPress(const std::string& button) {
    Then([this, button] { Press(button); });
  }

  bool Meet() {
    if (memory.face.OpenModel() == nullptr) return false;
    met.push_back(Model().Title);
    if (steps_.empty()) {
      ADD_FAILURE() << "nobody expected " << Model().Code << " " << Model().Title;
      memory.face.OpenEvents()->DialogCloseRequested();
      return true;
    }
    const Step step = std::move(steps_.front());
    steps_.pop_front();
    step();
    return true;
  }

  DialogModel& Model() { return *memory.face.OpenModel(); }
  DialogControl& Control(const std::string& caption, ControlKind kind) {
    for (DialogControl& control : Model().Controls)
      if (control.Kind == kind && control.Caption == caption) return control;
    throw Fault(FaultKind::Index, "no control " + caption + " in " + Model().Code);
  }
  int32 Place(const DialogControl& control) { return static_cast<int32>(&control - Model().Controls.data()); }
  void Tell(const DialogControl& control, DialogEvent event, int16 key = 0, int16 shift = 0) {
    memory.face.OpenEvents()->DialogHappened(Place(control), event, key, shift);
  }
  void Press(const std::string& button) { Tell(Control(button, ControlKind::Button), DialogEvent::Click); }
  void Check(bool on) {
    DialogControl& check = Control("Debug Mode", ControlKind::Check);
    check.Value = on ? 1 : 0;
    Tell(check, DialogEvent::Click);
  }
  void TypeAndPress(const std::string& text, const std::string& button) {
    Type(text);
    Press(button);
  }
  void Type(const std::string& text) {
    for (DialogControl& control : Model().Controls) {
      if (control.Kind != ControlKind::TextBox) continue;
      control.Text = text;
      return Tell(control, DialogEvent::Change);
    }
  }
  Texts Items(const std::string& caption) { return Control(caption, ControlKind::List).Items; }
  std::string Line() { return Control("Expanded Current Script Line", ControlKind::TextBox).Text; }

  void SwitchOn() {
    Then([this] {
      Check(true);
      Press(RunButton);
    });
    corvid.OpenDebugger();
    Done();
    met.clear();
  }
  // Every step has been taken.
  void Done() {
    EXPECT_EQ(steps_.size(), 0U);
    steps_.clear();
  }
  void Run(const std::string& line) { program.Do(line); }
  Texts Said() {
    Texts said;
    for (const std::string& text : memory.effects.Of("speech")) said.push_back(text);
    return said;
  }
  std::string Global(const std::string& name) {
    std::string value;
    return corvid.symbols.FindVariable(name, value, 0) == 0 ? "(none)" : value;
  }
  TriggerRecord& Trigger(const std::string& searchText) {
    for (int16 row = 1; row <= corvid.scriptState.TriggerCount; ++row)
      if (corvid.scriptState.Triggers[row].SearchText == searchText) return corvid.scriptState.Triggers[row];
    throw Fault(FaultKind::Index, "no trigger " + searchText);
  }
  bool TriggerStops(const std::string& searchText) { return (Trigger(searchText).Flags & BreakpointFlag) != 0; }
  bool AliasStops(const std::string& name) {
    const int16 row = corvid.symbols.FindAlias(name, 0, false);
    return row != 0 && (corvid.scriptState.AliasFlags[row] & BreakpointFlag) != 0;
  }
  void MarkTrigger(const std::string& searchText) {
    TriggerRecord& trigger = Trigger(searchText);
    trigger.Flags = static_cast<int16>(trigger.Flags | BreakpointFlag);
  }
  void MarkAlias(const std::string& name) {
    corvid.scriptState.AliasFlags[corvid.symbols.FindAlias(name, 0, false)] = BreakpointFlag;
  }
  void Arrives(const std::string& line) {
    corvid.sessionState.InjectedText = line;
    corvid.receive.sockTelnet_OnRead(corvid.scriptState.CurrentSocket);
  }

  RunningProgram program;
  MemoryPlatform& memory = program.memory;
  Corvid& corvid = program.corvid;
  DebugState& debug = corvid.debugState;
  Texts met;  // titles of the dialogs, in order

 private:
  std::deque<Step> steps_;
};

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
    Press(RunButton);
  });
  corvid.OpenDebugger();
  EXPECT_EQ(code, "DEBUGMAIN");
  EXPECT_EQ(met, Texts{"Debug Module "});
  EXPECT_EQ(captions, (Texts{"Debug Mode", "Command History", "Expanded Current Script Line", "Last Line Sent From MUD",
                             TriggersButton, AliasesButton, ExpressionButton, VariablesButton, ParametersButton,
                             TestButton, StepButton, RunButton}));
  EXPECT_EQ(labels, (Texts{"Previous Script Commands", "Expanded Current Script Line", "Last Line Sent From MUD"}));
}

TEST_F(DebuggerTest, TheCheckIsTheModeAndStaysUntilItIsTakenAway) {
  SwitchOn();
  EXPECT_EQ(debug.DebugMode, 1);
  int16 shown = -1;
  Then([&] {
    shown = Control("Debug Mode", ControlKind::Check).Value;
    Check(false);
    Press(RunButton);
  });
  Run("#BREAK");
  EXPECT_EQ(shown, 1);
  EXPECT_EQ(debug.DebugMode, 0);
  Run("#BREAK");
  Done();
}

TEST_F(DebuggerTest, TheMenuOpensIt) {
  ThenPress(RunButton);
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
    Press(RunButton);
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
    Press(RunButton);
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
  Texts lines;
  const auto look = [&](const char* button) {
    Then([&, button] {
      lines.push_back(Line());
      Press(button);
    });
  };
  look(StepButton);
  look(StepButton);
  look(StepButton);
  look(RunButton);
  Run("#BREAK;#VAR copy @hp;#IF {@hp>5} {#VAR low 0;#VAR high 1};#VAR end 1");
  EXPECT_EQ(met, (Texts{"Debug Module  - [#break Command]", "Debug Module - [Step Mode]", "Debug Module - [Step Mode]",
                        "Debug Module - [Step Mode]"}));
  EXPECT_EQ(lines, (Texts{"#BREAK", "#VAR {copy} {12}", "#IF {12>5} {#VAR low 0;#VAR high 1}", "#VAR {low} {0}"}));
  EXPECT_EQ(Global("HIGH"), "1") << "Run goes on without a stop";
  EXPECT_EQ(Global("END"), "1");
  EXPECT_FALSE(debug.DebugBreak);
  Done();
}

TEST_F(DebuggerTest, StepSwitchesTheModeOnAndWaitsForTheNextCommand) {
  ThenPress(StepButton);
  corvid.OpenDebugger();
  EXPECT_EQ(debug.DebugMode, 1);
  EXPECT_TRUE(debug.DebugBreak);
  ThenPress(RunButton);
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
    Press(RunButton);
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
    Press(RunButton);
  });
  Run("@x = 5");
  EXPECT_EQ(line, "@x {=} {5}");
  EXPECT_EQ(Global("X"), "5");
}

// --- the commands before ---

TEST_F(DebuggerTest, TheHistoryHoldsFiftyCommandsNewestLast) {
  SwitchOn();
  Texts rows;
  int32 chosen = -2;
  Then([&] {
    rows = Items("Command History");
    chosen = Control("Command History", ControlKind::List).ListIndex;
    Press(RunButton);
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
    Press(RunButton);
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
  Then([&] { Press(ExpressionButton); });
  Then([&] {
    EXPECT_EQ(Model().Code, "TEXTPROMPT");
    EXPECT_EQ(Model().Controls[0].Text, "Enter Expression");
    EXPECT_EQ(Model().Controls[1].Text, "");
    TypeAndPress("@i=3", "OK");
  });
  ThenPress(RunButton);
  corvid.OpenDebugger();
  EXPECT_EQ(met, (Texts{"Debug Module ", "Break on Expression", "Debug Module "}));
  EXPECT_EQ(debug.DebugMode, 1);
  EXPECT_EQ(debug.DebugExpression, "@i=3");
  met.clear();
  std::string value;
  Then([&] {
    value = Global("I");
    Press(ExpressionButton);
  });
  Then([&] {
    EXPECT_EQ(Model().Controls[1].Text, "@i=3") << "the old one to begin with";
    TypeAndPress("@i=7", "OK");
  });
  ThenPress(RunButton);
  Then([&] {
    value += " " + Global("I");
    Check(false);
    Press(RunButton);
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
  ThenPress(RunButton);
  Run("walk go");
  EXPECT_EQ(met, Texts{"Debug Module  - [Break on Expression]"});
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
  ThenPress(ExpressionButton);
  ThenPress("Cancel");
  ThenPress(ExpressionButton);
  Then([&] { TypeAndPress("", "OK"); });
  Then([&] {
    Check(false);
    Press(RunButton);
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

// --- breakpoints ---

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
  ThenPress(TriggersButton);
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
  ThenPress(RunButton);
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
  ThenPress(AliasesButton);
  Then([&] {
    EXPECT_EQ(Model().Code, "DEBUGALIAS");
    EXPECT_EQ(Model().Controls[0].Text, "Select Alias");
    DialogControl& list = Control("Alias", ControlKind::List);
    rows = list.Items;
    EXPECT_EQ(list.Selected, (std::vector<bool>{false, true}));
    list.Selected = {true, true};
    Press("OK");
  });
  ThenPress(RunButton);
  corvid.OpenDebugger();
  EXPECT_EQ(met, (Texts{"Debug Module ", "Debug Module- Select Alias Breakpoints", "Debug Module "}));
  EXPECT_EQ(rows, (Texts{"go Class: travel [Global] #VAR way %1", "[Breakpoint] zap [Global] cast zap"}));
  EXPECT_TRUE(AliasStops("go"));
  EXPECT_TRUE(AliasStops("zap"));
  Done();
}

TEST_F(DebuggerTest, EmptyListsSaySo) {
  Texts rows;
  ThenPress(TriggersButton);
  Then([&] {
    rows = Items("Triggers");
    Control("Triggers", ControlKind::List).Selected = {true};
    Press("OK");
  });
  ThenPress(AliasesButton);
  Then([&] {
    rows.push_back(Items("Alias").at(0));
    Press("Clear All");
  });
  ThenPress(RunButton);
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
  ThenPress(TriggersButton);
  ThenPress("Clear All");
  Then([&] {
    EXPECT_FALSE(TriggerStops("a"));
    EXPECT_FALSE(TriggerStops("b")) << "of another character as well";
    EXPECT_TRUE(AliasStops("c"));
    Press(AliasesButton);
  });
  ThenPress("Clear All");
  ThenPress(RunButton);
  corvid.OpenDebugger();
  EXPECT_FALSE(AliasStops("c"));
  Done();
}

TEST_F(DebuggerTest, LeavingTheListWithoutAButtonChangesNothing) {
  Run("#TRIGGER {a} {#VAR a 1}");
  MarkTrigger("a");
  ThenPress(TriggersButton);
  Then([&] {
    DialogControl& list = Control("Triggers", ControlKind::List);
    list.Selected = {false};
    Tell(list, DialogEvent::KeyDown, keycode::Escape);
  });
  ThenPress(TriggersButton);
  Then([&] {
    Control("Triggers", ControlKind::List).Selected = {false};
    memory.face.OpenEvents()->DialogCloseRequested();
  });
  ThenPress(RunButton);
  corvid.OpenDebugger();
  EXPECT_TRUE(TriggerStops("a"));
  Done();
}

TEST_F(DebuggerTest, MarksFollowTheirRowsWhileTheListIsOpen) {
  for (const char* name : {"a", "b", "c", "d"}) Run(std::string("#TRIGGER {") + name + "} {#VAR x 1}");
  for (const char* name : {"k", "m", "p"}) Run(std::string("#ALIAS ") + name + " {#VAR x 1}");
  ThenPress(TriggersButton);
  Then([&] {
    Control("Triggers", ControlKind::List).Selected = {false, true, false, true};
    Run("#UNTRIGGER {a}");
    Run("#UNTRIGGER {b}");
    Run("#TRIGGER {e} {#SUB y}");
    Press("OK");
  });
  Then([&] { Press(AliasesButton); });
  Then([&] {
    Control("Alias", ControlKind::List).Selected = {false, true, true};
    Run("#ALIAS aa {#VAR x 1}");
    Run("#UNALIAS p");
    Press("OK");
  });
  ThenPress(RunButton);
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
    Press(RunButton);
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
    Press(RunButton);
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
  ThenPress(RunButton);
  Run(".home");
  EXPECT_EQ(met, Texts{"Debug Module - [Alias Breakpoint]"});
  Done();
}

// --- parameters ---

TEST_F(DebuggerTest, ParametersAreShownAndChangedForTheRunningCommand) {
  Run("#ALIAS go {#VAR way %1;#VAR all {%0};#VAR third %3}");
  MarkAlias("go");
  SwitchOn();
  Texts rows;
  ThenPress(ParametersButton);
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
  ThenPress(RunButton);
  Run("go north fast");
  EXPECT_EQ(met, (Texts{"Debug Module - [Alias Breakpoint]", "View & Modify Parameters",
                        "Debug Module - [Alias Breakpoint]"}));
  ASSERT_EQ(rows.size(), 100U);
  EXPECT_EQ(rows[0], "%0 north fast ");
  EXPECT_EQ(rows[1], "%1 north");
  EXPECT_EQ(rows[2], "%2 fast");
  EXPECT_EQ(rows[99], "%99 ");
  EXPECT_EQ(Global("WAY"), "south");
  EXPECT_EQ(Global("ALL"), "north fast ");
  EXPECT_EQ(Global("THIRD"), "now");
  Done();
}

TEST_F(DebuggerTest, CancelLeavesTheParametersAsTheyWere) {
  Run("#ALIAS go {#VAR way %1}");
  MarkAlias("go");
  SwitchOn();
  ThenPress(ParametersButton);
  Then([&] {
    DialogControl& list = Control("Parameters", ControlKind::List);
    list.ListIndex = 1;
    Tell(list, DialogEvent::Click);
    Type("south");
    Press("Cancel");
  });
  ThenPress(RunButton);
  Run("go north");
  EXPECT_EQ(Global("WAY"), "north");
  Done();
}

TEST_F(DebuggerTest, TheListOfVariablesOpensAndLeadsBackToTheStop) {
  SwitchOn();
  ThenPress(VariablesButton);
  ThenPress("Cancel");
  ThenPress(RunButton);
  Run("#BREAK");
  EXPECT_EQ(met,
            (Texts{"Debug Module  - [#break Command]", "View & Set Variables", "Debug Module  - [#break Command]"}));
  Done();
}

// --- the trigger tester ---

TEST_F(DebuggerTest, TheTesterFiresTriggersWithoutAConnection) {
  Run("#TRIGGER {* hits you} {#VAR foe %1}");
  ThenPress(TestButton);
  Then([&] {
    EXPECT_EQ(Model().Controls[0].Text, "Enter Line ");
    EXPECT_EQ(Model().Controls[1].Text, "");
    TypeAndPress("orc hits you", "OK");
  });
  Then([&] {
    EXPECT_EQ(Global("FOE"), "orc");
    EXPECT_EQ(Control("Last Line Sent From MUD", ControlKind::TextBox).Text, "orc hits you");
    Press(TestButton);
  });
  Then([&] {
    EXPECT_EQ(Model().Controls[1].Text, "orc hits you") << "the line before to begin with";
    TypeAndPress("", "OK");
  });
  Then([&] {
    EXPECT_EQ(debug.TestLine, "orc hits you");
    Press(RunButton);
  });
  corvid.OpenDebugger();
  EXPECT_EQ(met, (Texts{"Debug Module ", "Trigger Tester", "Debug Module ", "Trigger Tester", "Debug Module "}));
  EXPECT_FALSE(debug.DebugBreak);
  Done();
}

TEST_F(DebuggerTest, TheTesterStopsAtTheTriggersFirstCommandWhileTheModeIsOn) {
  Run("#TRIGGER {* hits you} {#VAR foe %1;#VAR hit 1}");
  SwitchOn();
  Texts lines;
  const auto look = [&](const char* button) {
    Then([&, button] {
      lines.push_back(Line());
      Press(button);
    });
  };
  look(TestButton);
  Then([&] { TypeAndPress("orc hits you", "OK"); });
  look(StepButton);
  look(RunButton);
  look(RunButton);
  Run("#BREAK;#VAR after 1");
  EXPECT_EQ(met, (Texts{"Debug Module  - [#break Command]", "Trigger Tester", "Debug Module ",
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
    Press(RunButton);
  });
  corvid.OpenDebugger();
  EXPECT_EQ(met, Texts{"Debug Module "});
  Done();
}

// --- while the dialog is open ---

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
    Press(RunButton);
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
  ThenPress(RunButton);
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
    Press(RunButton);
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
  ThenPress(RunButton);
  Run("#BREAK");
  Then([&] {
    EXPECT_EQ(Line(), "") << "no command is at hand";
    Press(RunButton);
  });
  corvid.OpenDebugger();
  EXPECT_EQ(met, (Texts{"Debug Module  - [#break Command]", "Debug Module "}));
  Done();
}

}  // namespace
}  // namespace corvid

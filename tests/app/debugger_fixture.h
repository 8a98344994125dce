// SPDX-License-Identifier: GPL-3.0-or-later
// A running program whose script debugger is met by the steps that a test has laid down.
#pragma once

#include <deque>
#include <functional>
#include <string>
#include <utility>
#include <vector>

#include "core/keys.h"
#include "running_program.h"

namespace corvid {

namespace debugbutton {
inline constexpr const char* Triggers = "Set Trigger Breakpoint Alt-T";
inline constexpr const char* Aliases = "Set Alias Breakpoint Alt-A";
inline constexpr const char* Expression = "Break on Expression Alt-E";
inline constexpr const char* Variables = "Set & View Variables Alt-V";
inline constexpr const char* Parameters = "View Parameters Alt-P";
inline constexpr const char* Test = "Enter Text to Test Trigger Ctrl-T";
inline constexpr const char* Step = "Step F8";
inline constexpr const char* Run = "Run F5";
}  // namespace debugbutton

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
  // Notes the line that the next stop shows, and goes on with a button.
  void ThenLook(const std::string& button) {
    Then([this, button] {
      lines.push_back(Line());
      Press(button);
    });
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
      Press(debugbutton::Run);
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
  Texts met;    // titles of the dialogs, in order
  Texts lines;  // script lines of the stops that were looked at

 private:
  std::deque<Step> steps_;
};

}  // namespace corvid

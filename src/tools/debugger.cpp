// SPDX-License-Identifier: GPL-3.0-or-later
#include "tools/debugger.h"

#include <array>
#include <exception>
#include <utility>

#include "dialogs/gen_dialog.h"
#include "platform/platform.h"
#include "script/expansion.h"
#include "script/expression.h"
#include "script/parsed_command.h"
#include "script/script_state.h"
#include "sessions/receive.h"
#include "sessions/session_state.h"
#include "tools/breakpoints.h"
#include "tools/parameter_dialog.h"

namespace corvid {

namespace {

constexpr const char* StepReason = "- [Step Mode]";
constexpr const char* ExpressionReason = " - [Break on Expression]";
constexpr const char* CommandReason = " - [#break Command]";

// GDResult of the main dialog: its buttons from 1 in their order, or nothing of them.
enum Button : int16 { Displaced, TriggerBreakpoints, AliasBreakpoints, Expression, Variables, View, Test, Step, Run };

constexpr std::array buttonWords{"Set Trigger Breakpoint Alt-T",
                                 "Set Alias Breakpoint Alt-A",
                                 "Break on Expression Alt-E",
                                 "Set & View Variables Alt-V",
                                 "View Parameters Alt-P",
                                 "Enter Text to Test Trigger Ctrl-T",
                                 "Step F8",
                                 "Run F5"};
static_assert(buttonWords.size() == Run);

constexpr int16 ExpandedLine = 1;  // among the text boxes
constexpr int32 FullWidth = 8000;  // twips

// Says for its lifetime whether the debugger is at work, whatever way its owner is left.
class Working {
 public:
  Working(DebugState& debug, bool busy) : debug_(debug), before_(std::exchange(debug.Busy, busy)) {}
  ~Working() { debug_.Busy = before_; }
  Working(const Working&) = delete;
  Working& operator=(const Working&) = delete;

 private:
  DebugState& debug_;
  bool before_;
};

}  // namespace

void Debugger::BeforeCommand(const CommandAtHand& at) {
  DebugState& debug = house_.debug;
  Note(at.line);
  if (debug.Busy) return;
  {
    const Working working(debug, true);
    if (!debug.DebugExpression.empty()) TestExpression(at);  // PUMP
    if (!debug.DebugBreak) return;
    debug.DebugExpandedLine = Expanded(at);  // PUMP
  }
  DebugRoutine(at.rvar, &at);  // PUMP
}

void Debugger::Break(const CommandAtHand& at) {
  DebugState& debug = house_.debug;
  if (!Active() || debug.Busy) return;
  debug.DebugReason = CommandReason;
  {
    const Working working(debug, true);
    debug.DebugExpandedLine = Expanded(at);  // PUMP
  }
  DebugRoutine(at.rvar, &at);  // PUMP
}

// The rows keep their memory from round to round: a script in debug mode writes here before each command.
void Debugger::Note(std::string_view line) {
  DebugState& debug = house_.debug;
  debug.DebugHistoryAt =
      debug.DebugHistoryAt >= DebugState::DebugHistorySize ? int16{1} : static_cast<int16>(debug.DebugHistoryAt + 1);
  std::string& row = debug.DebugHistory.at(static_cast<std::size_t>(debug.DebugHistoryAt));
  row.assign(std::to_string(house_.script.CommandDepth));
  row += "> ";
  row += line;
}

void Debugger::TestExpression(const CommandAtHand& at) {
  DebugState& debug = house_.debug;
  std::string problem;
  int32 value = 0;
  try {
    const std::string expanded =
        house_.expansion.ExplodeVariable(debug.DebugExpression, problem, at.rvar, ExpressionMode, at.owner);  // PUMP
    if (problem.empty()) value = house_.expressions.EvaluateExpression(expanded, problem);
  } catch (const std::exception& fault) {
    problem = fault.what();
  }
  if (!problem.empty()) {
    debug.DebugExpression.clear();                // before the box: it would fail again at each command
    house_.upcalls.errors.ErrorDisplay(problem);  // PUMP
  } else if (value != 0) {
    debug.DebugBreak = true;
    debug.DebugReason = ExpressionReason;
  }
}

// A parameter that cannot be expanded is shown as it is written: the command itself will tell what is wrong with it.
std::string Debugger::Expanded(const CommandAtHand& at) {
  std::string line = at.P[1];
  for (int16 i = 2; i <= at.part; ++i) {
    std::string value;
    try {
      std::string problem;
      value = house_.expansion.ExplodeVariable(at.P[i], problem, at.rvar, 0, at.owner);  // PUMP
      if (!problem.empty()) value = at.P[i];
    } catch (const std::exception&) {
      value = at.P[i];
    }
    line += " {" + value + "}";
  }
  return line;
}

void Debugger::DebugRoutine(Parameters& rvar, const CommandAtHand* at) {
  DebugState& debug = house_.debug;
  if (debug.Busy) return;
  const Working working(debug, true);
  // A tested trigger stops here again and has words of its own.
  const std::string reason = debug.DebugReason;
  std::string line = debug.DebugExpandedLine;
  Next next = Next::Again;
  while (next == Next::Again) {
    debug.DebugReason = reason;
    debug.DebugExpandedLine = line;
    const int16 button = Ask();                                                          // PUMP
    next = Act(button, rvar);                                                            // PUMP
    if (at != nullptr && (button == Variables || button == View)) line = Expanded(*at);  // PUMP: with the new values
  }
  debug.DebugExpandedLine.clear();
}

std::vector<std::string> Debugger::History() const {
  const DebugState& debug = house_.debug;
  std::vector<std::string> rows;
  for (int i = 1; i <= DebugState::DebugHistorySize; ++i) {
    const int at = (debug.DebugHistoryAt + i - 1) % DebugState::DebugHistorySize + 1;
    const std::string& row = debug.DebugHistory.at(static_cast<std::size_t>(at));
    if (!row.empty()) rows.push_back(row);
  }
  return rows;
}

std::string Debugger::LastLine() const {
  const int16 session = house_.script.CurrentSocket;
  const int16 place = house_.sessions.HistoryPos[session];
  return house_.sessions.HistoryLines[session].at(static_cast<std::size_t>(place));
}

// Shows the dialog; the button that ended it, or Displaced.
int16 Debugger::Ask() {
  GenDialog& dialog = house_.dialog;
  DebugState& debug = house_.debug;
  int16 mode = debug.DebugMode;
  const auto handler = [&](const DialogEventArgs& at) {
    if (at.Kind == ControlKind::Button && at.Event == DialogEvent::Click) dialog.End(at.Index);
    if (at.Event == DialogEvent::Unload) mode = dialog.Control(ControlKind::Check, 1).Value == 0 ? 0 : 1;
  };
  dialog.Form_Init("DEBUGMAIN", "Debug Module " + debug.DebugReason, handler);
  dialog.MakeCheck(300, 500, 295, 3000, debug.DebugMode, "Debug Mode");
  const std::vector<std::string> history = History();
  dialog.MakeLabel(-200, 500, 295, FullWidth, "Previous Script Commands");
  dialog.MakeList(-100, 500, 2500, FullWidth, history, static_cast<int32>(history.size()) - 1, "Command History");
  dialog.MakeLabel(-200, 500, 295, FullWidth, "Expanded Current Script Line");
  dialog.MakeTextBox(-100, 500, 295, FullWidth, debug.DebugExpandedLine);
  dialog.MakeLabel(-200, 500, 295, FullWidth, "Last Line Sent From MUD");
  dialog.MakeTextBox(-100, 500, 295, FullWidth, LastLine());
  for (const char* words : buttonWords) dialog.MakeCommand(-100, 500, 400, FullWidth / 2, words, 0);
  dialog.SetCommandButtons(0, Run);  // whoever leaves by Escape, or closes it, lets the script go on
  // Who goes on step by step wants to hear the command that comes next, at each step, and before anything else.
  if (!debug.DebugExpandedLine.empty()) dialog.SetFirstFocus(ControlKind::TextBox, ExpandedLine);
  dialog.ShowForm(500, 500);  // PUMP
  debug.DebugBreak = false;
  debug.DebugMode = mode;
  return dialog.GDResult;
}

Debugger::Next Debugger::Act(int16 button, Parameters& rvar) {
  DebugState& debug = house_.debug;
  switch (button) {
    case TriggerBreakpoints:
      SelectTriggerBreakpoints(house_.dialog, house_.script);  // PUMP
      return Next::Again;
    case AliasBreakpoints:
      SelectAliasBreakpoints(house_.dialog, house_.script);  // PUMP
      return Next::Again;
    case Expression:
      AskExpression();  // PUMP
      return Next::Again;
    case Variables:
      house_.MaintainVariables();  // PUMP
      return Next::Again;
    case View:
      MaintainParameters(house_.dialog, rvar);  // PUMP
      return Next::Again;
    case Test:
      TestTriggers();  // PUMP
      return Next::Again;
    case Step:
      debug.DebugBreak = true;
      debug.DebugMode = 1;
      debug.DebugReason = StepReason;
      return Next::Return;
    case Displaced:
      // A question of another script has taken the dialog's place and is answered: the stop still holds.
      if (!house_.platform.events.Ending() && house_.platform.face.PlayerThere()) return Next::Again;
      return Next::Return;
    default:
      return Next::Return;
  }
}

void Debugger::AskExpression() {
  DebugState& debug = house_.debug;
  const std::string answer = house_.upcalls.prompter.TextPrompt("Enter Expression", "Break on Expression", 0,
                                                                debug.DebugExpression);  // PUMP
  if (house_.dialog.GDResult == 1) debug.DebugExpression = answer;
  debug.DebugMode = 1;
}

void Debugger::TestTriggers() {
  DebugState& debug = house_.debug;
  const std::string line =
      house_.upcalls.prompter.TextPrompt("Enter Line ", "Trigger Tester", 0, debug.TestLine);  // PUMP
  if (line.empty()) return;
  debug.TestLine = line;
  debug.DebugBreak = true;
  house_.sessions.InjectedText = line;
  const Working working(debug, false);                            // what the line sets off can be stepped through
  house_.receive.sockTelnet_OnRead(house_.script.CurrentSocket);  // PUMP
}

}  // namespace corvid

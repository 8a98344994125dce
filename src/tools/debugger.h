// SPDX-License-Identifier: GPL-3.0-or-later
// The script debugger: stops the running script before a command and lets the player look around and go on. It is
// modal inside the command: the games and the timers go on, the script does not.
#pragma once

#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "core/parameters.h"
#include "core/types.h"
#include "core/upcalls.h"
#include "tools/debug_state.h"

namespace corvid {

class Expansion;
class ExpressionEvaluator;
class GenDialog;
class ParsedCommand;
class Receive;
struct Platform;
struct ScriptState;
struct SessionState;

// What the debugger works with; all of it belongs to the main object.
struct DebugHouse {
  DebugState& debug;
  ScriptState& script;
  SessionState& sessions;
  Expansion& expansion;
  ExpressionEvaluator& expressions;
  Receive& receive;
  GenDialog& dialog;
  Platform& platform;
  Upcalls& upcalls;
  std::function<void()> MaintainVariables;  // the list of variables; may pump events
};

// The command that is about to run. The references belong to the running line and stay valid over event pumps.
struct CommandAtHand {
  const ParsedCommand& P;
  int16 part;             // parts of P, the command word included
  std::string_view line;  // the line from this command on
  Parameters& rvar;
  OwnerId owner;
};

class Debugger {
 public:
  explicit Debugger(const DebugHouse& house) : house_(house) {}

  bool Active() const { return house_.debug.DebugMode != 0; }
  // Asks for a stop before the next command, where the debugger is on and free.
  void Request(const char* reason) { RequestBreak(house_.debug, reason); }
  // Before each command while the debugger is on: notes it in the history, tests the expression, and stops where it is
  // to stop. May pump events.
  void BeforeCommand(const CommandAtHand& at);
  // BREAK: stops here while the debugger is on. May pump events.
  void Break(const CommandAtHand& at);
  // The dialog, until the player lets the script go on. rvar are the parameters of the running command; at is the
  // command that comes next, nullptr for none. Returns at once while the debugger is at work already, and when nobody
  // is there to answer. May pump events.
  void DebugRoutine(Parameters& rvar, const CommandAtHand* at = nullptr);

 private:
  enum class Next { Again, Return };

  void Note(std::string_view line);
  void TestExpression(const CommandAtHand& at);
  std::string Expanded(const CommandAtHand& at);
  int16 Ask();
  std::vector<std::string> History() const;
  std::string LastLine() const;
  Next Act(int16 button, Parameters& rvar);
  void AskExpression();
  void TestTriggers();

  DebugHouse house_;
};

}  // namespace corvid

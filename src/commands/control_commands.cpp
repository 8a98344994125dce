// SPDX-License-Identifier: GPL-3.0-or-later
// Conditions, loops and jumps of a script. Bodies stay raw until they run, so that each round sees the values of the
// moment.
#include "commands/command_call.h"
#include "commands/handlers.h"
#include "core/number.h"
#include "core/text.h"
#include "script/expansion.h"
#include "script/expression.h"
#include "script/symbols.h"
#include "tools/debugger.h"

namespace corvid {

namespace {

constexpr int16 Expression = 2;  // place in P
constexpr int16 Body = 3;

// Expands the expression where it stands. False when it failed: the call is set to report it.
bool Evaluate(CommandCall& call, std::string& expression, int32& value) {
  if (!ExpandText(call, expression, ExpressionMode)) return false;
  value = call.house.expressions.EvaluateExpression(expression, call.ErrorDescription);
  if (call.ErrorDescription.empty()) return true;
  call.next = Flow::Report;
  return false;
}

// Of the raw expression, so that each round sees fresh values.
bool EvaluateRound(CommandCall& call, int32& value) {
  std::string expression = call.P[Expression];
  return Evaluate(call, expression, value);
}

bool RunBody(CommandCall& call, const std::string& body, DepthBack back) {
  return RunNested(call, body, call.rvar, call.outchannel, back);
}

// Lets the program breathe inside a loop. False when it is to end.
bool Breathe(CommandCall& call) {
  call.house.platform.events.DoEvents();  // PUMP
  if (!call.house.platform.events.Ending()) return true;
  call.next = Flow::Leave;
  return false;
}

void SetLoopItem(CommandCall& call, const std::string& item) {
  call.house.script.SystemValues[sysvar::I] = item;
}

bool CheckLoop(CommandCall& call) {
  if (call.P[Body].empty()) {
    call.fail("Wrong number of parameters");
    return false;
  }
  if (!call.checkOnly()) return true;
  CheckNested(call, call.P[Body]);
  return false;
}

}  // namespace

void handler::If(CommandCall& call) {
  const std::string& thenBody = call.P[Body];
  const std::string& elseBody = call.P[Body + 1];
  if (call.checkOnly()) {
    if (CheckNested(call, thenBody) && !elseBody.empty()) CheckNested(call, elseBody);
    return;
  }
  int32 value = 0;
  if (!Evaluate(call, call.P[Expression], value)) return;
  const std::string& body = value != 0 ? thenBody : elseBody;
  // Kept: a level that ABORT leaves does not give its depth back.
  if (!body.empty()) RunBody(call, body, DepthBack::AfterAborts);
}

void handler::While(CommandCall& call) {
  if (!CheckLoop(call)) return;
  for (;;) {
    int32 value = 0;
    if (!EvaluateRound(call, value) || value == 0) return;
    if (!Breathe(call) || !RunBody(call, call.P[Body], DepthBack::AfterAborts)) return;
  }
}

void handler::Until(CommandCall& call) {
  if (!CheckLoop(call)) return;
  int32 value = 0;
  do {
    if (!Breathe(call) || !RunBody(call, call.P[Body], DepthBack::AfterAborts)) return;
    if (!EvaluateRound(call, value)) return;
  } while (value == 0);
}

void handler::ForAll(CommandCall& call) {
  if (call.checkOnly()) {
    CheckNested(call, call.P[Body]);
    return;
  }
  std::string list = call.P[Expression];
  if (!ExpandText(call, list)) return;
  for (const std::string& item : Split(list, "|")) {
    SetLoopItem(call, item);
    if (!RunBody(call, call.P[Body], DepthBack::BeforeAborts)) return;
  }
}

void handler::Repeat(CommandCall& call) {
  if (call.checkOnly()) return;
  const double rounds = Val(std::string_view(call.P[1]).substr(1));
  std::string& repeatNumber = call.house.script.SystemValues[sysvar::REPEATNUM];
  for (std::int64_t round = 1; static_cast<double>(round) <= rounds; ++round) {
    repeatNumber = std::to_string(round);
    SetLoopItem(call, repeatNumber);
    if (!RunBody(call, call.P[2], DepthBack::BeforeAborts)) return;
    if (Val(repeatNumber) == 0) {
      call.next = Flow::Leave;
      return;
    }
  }
}

void handler::Abort(CommandCall& call) {
  if (call.checkOnly() || !ExpandParameters(call)) return;
  call.options = static_cast<int16>(call.options | (call.P[2].empty() ? option::AbortBlock : option::AbortAll));
  call.ErrorDescription.clear();
  call.next = Flow::Leave;
}

void handler::Break(CommandCall& call) {
  if (call.checkOnly()) return;
  call.house.debugger.Break({call.P, call.part, call.current, call.rvar, call.owner});  // PUMP
}

void handler::Execute(CommandCall& call) {
  if (call.checkOnly()) return;
  std::string& line = call.P[2];
  const bool raw = call.count() > 1 && Upper(line).find("%EXPAND") == std::string::npos;
  if (!raw && !ExpandText(call, line)) return;
  if (!ExpandText(call, call.P[3])) return;
  const std::string& target = call.P[3];
  const SessionState& sessions = call.house.sessions;
  const auto runIn = [&](int16 session) {
    int16 channel = session;  // by value: the session of this line stays
    return RunNested(call, line, call.rvar, channel, DepthBack::BeforeAborts);
  };
  if (target.empty()) {
    runIn(call.outchannel);
    return;
  }
  const bool all = SameText(target, "ALL");
  for (int16 i = 0; i <= sessions.SessionHigh; ++i) {
    if (all) {
      if (call.house.platform.sockets.Connected(i) && !runIn(i)) return;
    } else if (SameText(sessions.SessionRef[i], target)) {
      runIn(i);
      return;
    }
  }
  if (!all) call.fail("Parameter 2 has invalid Character reference " + target);
}

void handler::Math(CommandCall& call) {
  if (call.checkOnly() || !ExpandParameters(call)) return;
  const int32 value = call.house.expressions.EvaluateExpression(call.P[3], call.ErrorDescription);
  if (call.ErrorDescription.empty())
    call.house.symbols.AddVariable(call.P[2], std::to_string(value), call.definitionOwner, call.ErrorDescription);
  if (!call.ErrorDescription.empty()) call.next = Flow::Report;
}

}  // namespace corvid

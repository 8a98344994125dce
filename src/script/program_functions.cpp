// SPDX-License-Identifier: GPL-3.0-or-later
#include <array>

#include "core/text.h"
#include "core/upcalls.h"
#include "platform/sockets.h"
#include "script/expansion.h"
#include "script/function_table.h"
#include "script/script_state.h"
#include "script/symbols.h"
#include "sessions/session_state.h"

namespace corvid {

namespace {

std::string OneOrZero(bool yes) {
  return yes ? "1" : "0";
}

// The last session with the character's reference decides; without one the answer is empty.
std::string CharacterConnected(const FunctionCall& call) {
  const SessionState& sessions = call.world.sessions;
  const std::string& reference = sessions.CharacterRef[call.owner];
  std::string result;
  for (int16 session = 0; session <= sessions.SessionHigh; ++session)
    if (SameText(sessions.SessionRef[session], reference)) result = OneOrZero(call.world.sockets.Connected(session));
  return result;
}

std::string CharInfo(FunctionCall& call) {
  const CharacterTable& characters = call.world.sessions;
  const std::string keyword = Upper(call.Text(1));
  if (keyword == "NAME") return characters.CharacterName[call.owner];
  if (keyword == "PASSWORD") return characters.Password[call.owner];
  if (keyword == "REFERENCE") return characters.CharacterRef[call.owner];
  if (keyword == "MUDNAME") return characters.MudName[call.owner];
  if (keyword == "CONNECTED") return CharacterConnected(call);
  call.ErrorDescription = "Invalid parameter in CharInfo function";
  return "";
}

std::string Connected(FunctionCall& call) {
  const SessionState& sessions = call.world.sessions;
  for (int16 session = 1; session <= sessions.SessionHigh; ++session)
    if (StartsWithText(sessions.SessionRef[session], call.Text(1)))
      return OneOrZero(call.world.sockets.Connected(session));
  return "0";
}

std::string Defined(FunctionCall& call) {
  return OneOrZero(call.world.symbols.FindVariableRow(call.Text(1), call.owner) != 0);
}

std::string EndOfFile(FunctionCall& call) {
  return OneOrZero(call.world.endOfFile(call.Whole(1)));
}

std::string Expand(FunctionCall& call) {
  return call.expansion.ExplodeVariable(call.Text(1), call.ErrorDescription, Parameters(), 0, call.owner);
}

std::string LastLine(FunctionCall& call) {
  constexpr int32 ring = 10;
  const int16 session = call.world.state.CurrentSocket;
  const auto& lines = call.world.sessions.HistoryLines[session];
  std::int64_t place = std::int64_t{call.world.sessions.HistoryPos[session]} - call.Whole(1) + 1;
  if (place < 0) place += ring;
  if (place < 0 || place >= static_cast<std::int64_t>(lines.size())) throw Fault(FaultKind::Index, "No such line");
  return lines[static_cast<std::size_t>(place)];
}

std::string Pick(FunctionCall& call) {
  return call.world.prompter.PickList(call.Text(1));  // PUMP
}

std::string SwitchDirection(FunctionCall& call) {
  const ScriptState& state = call.world.state;
  for (int32 row = 1; row <= state.AbbreviationCount; ++row)
    if (SameText(state.Directions[row], call.Text(1))) return state.OppositeDirections[row];
  return "";
}

// Kept: the "@" is what this function puts in front, whatever character variables have.
std::string Var(FunctionCall& call) {
  return call.expansion.ExplodeVariable("@" + call.Text(1), call.ErrorDescription, Parameters(), 0, call.owner);
}

constexpr std::array<FunctionRow, 9> Rows{{
    {"CHARINFO", 1, 1, NoNumber, CharInfo},
    {"CONNECTED", 1, 1, NoNumber, Connected},
    {"DEFINED", 1, 1, NoNumber, Defined},
    {"ENDOFFILE", 1, 1, NumberAt(1), EndOfFile},
    {"EXPAND", 1, 1, NoNumber, Expand},
    {"LASTLINE", 1, 1, NumberAt(1), LastLine},
    {"PICK", 1, 1, NoNumber, Pick},
    {"SWITCHDIRECTION", 1, 1, NoNumber, SwitchDirection},
    {"VAR", 1, 1, NoNumber, Var},
}};

}  // namespace

std::span<const FunctionRow> ProgramFunctions() {
  return Rows;
}

}  // namespace corvid

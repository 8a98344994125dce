// SPDX-License-Identifier: GPL-3.0-or-later
#include "commands/walks.h"

#include "commands/walk_steps.h"
#include "core/text.h"
#include "script/symbols.h"

namespace corvid {

namespace {

constexpr const char* PlaybackClass = "playback";
constexpr const char* RecordingClass = "Recording";

// Off the session's buffer; with its last step the walk is over.
std::string NextStep(CommandHouse& house, int16 session) {
  bool more = false;
  std::string step = TakeStep(house.sessions.WalkBuffer[session], house.options.CommandSeparator, more);
  if (!more) {
    house.sessions.WalkState[session] = walkstate::Idle;
    house.symbols.DeleteClass(PlaybackClass, house.script.SocketOwner[session]);
  }
  return step;
}

void RunAsAlias(CommandCall& call, const std::string& body, int16 definedIn) {
  Parameters arguments;
  if (RunNested(call, body, arguments, call.outchannel, DepthBack::BeforeAborts)) return;  // PUMP
  if (call.next == Flow::Trace) call.house.upcalls.errors.DisplayErrorFile(call.ErrorDescription, definedIn);
}

}  // namespace

void DeleteWalkClasses(CommandHouse& house, OwnerId owner) {
  for (const char* name : {PlaybackClass, RecordingClass}) house.symbols.DeleteClass(name, owner);
}

void CallWalk(CommandCall& call, const std::string& body, bool backwards, int16 definedIn) {
  CommandHouse& house = call.house;
  const std::string separator = house.options.CommandSeparator;
  const int16 session = call.outchannel;
  const std::string steps = backwards ? WalkBackwards(house.script, body, separator) : body;
  if (!house.options.SlowWalk) {
    house.sessions.WalkState[session] = walkstate::Idle;
    house.sessions.WalkBuffer[session].clear();
    DeleteWalkClasses(house, call.owner);
    return RunAsAlias(call, steps, definedIn);
  }
  house.sessions.WalkBuffer[session] = steps;
  house.sessions.WalkState[session] = walkstate::Playing;
  house.symbols.CheckAndAddClass(PlaybackClass, call.owner);
  std::string step = NextStep(house, session);
  // The game does not answer a command of the client's own, so nothing would release the step behind it.
  if (step.starts_with(house.options.CommandChar) && !separator.empty())
    step += separator + house.options.CommandChar + "OK";
  RunAsAlias(call, step, definedIn);
}

void WalkOn(CommandCall& call) {
  CommandHouse& house = call.house;
  const SessionState& sessions = house.sessions;
  bool command = false;
  do {
    const int16 session = call.outchannel;
    const int16 state = sessions.WalkState[session];
    if ((state & walkstate::Playing) == 0 || (state & walkstate::Paused) != 0) return;
    const std::string step = NextStep(house, session);
    command = LTrim(step).starts_with(house.options.CommandChar);
    if (!RunNested(call, step, call.rvar, call.outchannel, DepthBack::BeforeAborts)) return;  // PUMP
  } while (command);
}

}  // namespace corvid

// SPDX-License-Identifier: GPL-3.0-or-later
#include "commands/command_call.h"

#include "core/number.h"
#include "script/expansion.h"

namespace corvid {

bool ExpandText(CommandCall& call, std::string& text, int16 flags) {
  text = call.house.expansion.ExplodeVariable(std::move(text), call.ErrorDescription, call.rvar, flags, call.owner);
  if (call.ErrorDescription.empty()) return true;
  call.next = Flow::Report;
  return false;
}

bool ExpandParameters(CommandCall& call, int16 leaveRaw) {
  for (int16 i = 2; i <= call.part; ++i)
    if (i != leaveRaw && !ExpandText(call, call.P[i])) return false;
  return true;
}

std::string ShownLine(std::string_view current, const std::string& inlineText) {
  std::string shown(current);
  if (shown != inlineText) shown += " - part of command " + inlineText;
  return shown;
}

void ReportAndGoOn(CommandCall& call, const std::string& problem) {
  call.house.upcalls.errors.ErrorReport(problem, ShownLine(call.current, call.inlineText), 0, call.options);
  call.ErrorDescription.clear();
}

bool HonourAborts(CommandCall& call) {
  if (call.has(option::AbortAll)) {
    call.next = Flow::Leave;
    return false;
  }
  if (call.has(option::AbortBlock)) {
    call.options = static_cast<int16>(call.options & ~option::AbortBlock);
    call.next = Flow::Leave;
    return false;
  }
  return true;
}

bool RunNested(CommandCall& call, const std::string& body, Parameters& rvar, int16& channel, DepthBack back) {
  int16& depth = call.house.script.CommandDepth;
  call.house.upcalls.commands.ProcessCommand(body, call.options, call.ErrorDescription, rvar, channel);
  if (back == DepthBack::BeforeAborts) depth = AddInt16(depth, -1);
  if (!HonourAborts(call)) return false;
  if (back == DepthBack::AfterAborts) depth = AddInt16(depth, -1);
  if (call.ErrorDescription.empty()) return true;
  call.next = Flow::Trace;
  return false;
}

bool CheckNested(CommandCall& call, const std::string& body) {
  return RunNested(call, body, call.rvar, call.outchannel, DepthBack::Never);
}

}  // namespace corvid

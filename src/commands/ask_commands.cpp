// SPDX-License-Identifier: GPL-3.0-or-later
// PROMPT and PICK: how a script asks the player.
#include "commands/command_call.h"
#include "commands/handlers.h"
#include "script/symbols.h"

namespace corvid {

void handler::Prompt(CommandCall& call) {
  constexpr int16 answerIsText = 5;
  if (call.checkOnly() || !ExpandParameters(call)) return;
  const std::string answer = call.house.upcalls.prompter.TextPrompt(call.P[3], "", answerIsText, "");  // PUMP
  call.house.symbols.AddVariable(call.P[2], answer, call.definitionOwner, call.ErrorDescription);
  if (!call.ErrorDescription.empty()) call.next = Flow::Report;
}

void handler::Pick(CommandCall& call) {
  if (call.checkOnly() || !ExpandParameters(call)) return;
  std::string chosen = call.house.upcalls.prompter.PickList(call.P[2]);  // PUMP
  if (!ExpandText(call, chosen) || chosen.empty()) return;
  // Kept: a level that ABORT leaves does not give its depth back.
  RunNested(call, chosen, call.rvar, call.outchannel, DepthBack::AfterAborts);
}

}  // namespace corvid

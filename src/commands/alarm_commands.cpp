// SPDX-License-Identifier: GPL-3.0-or-later
// ALARM and UNALARM.
#include "commands/alarms.h"
#include "commands/command_call.h"
#include "commands/handlers.h"
#include "core/number.h"
#include "core/text.h"
#include "script/symbols.h"

namespace corvid {

namespace {

// Places in P, 0 for what the form does not have.
struct AlarmForm {
  int16 Variable;
  int16 Time;
  int16 Command;
};

// The forms are told apart before any expansion.
AlarmForm FormOf(const CommandCall& call) {
  if (call.count() == 3) return {2, 3, 4};
  if (!call.P[2].empty() && IsLetter(call.P[2].front())) return {2, 3, 0};
  return {0, 2, 3};
}

// Only whether the body can be parsed: the error text that is set from the start ends the line there.
void CheckBody(CommandCall& call, const std::string& body) {
  std::string apart = "ErrorDescription";
  int16 options = option::CheckOnly;
  int16 channel = CurrentSession;
  call.house.upcalls.commands.ProcessCommand(body, options, apart, call.rvar, channel);
}

int16 ChooseSlot(CommandCall& call, const AlarmForm& form) {
  std::string value;
  const bool named =
      form.Variable != 0 && call.house.symbols.FindVariable(call.P[form.Variable], value, call.definitionOwner) != 0;
  if (named && IsNumeric(value)) {
    const double slot = Val(value);
    if (call.house.alarms.Active(slot)) return ToInt16(slot);
  }
  return call.house.alarms.FreeSlot();
}

}  // namespace

void handler::Alarm(CommandCall& call) {
  const AlarmForm form = FormOf(call);
  if (call.checkOnly()) {
    if (form.Command != 0) CheckBody(call, call.P[form.Command]);
    return;
  }
  if (!ExpandParameters(call, form.Command)) return;
  if (!IsNumeric(call.P[form.Time])) return call.fail("Time period in alarm must be numeric");
  const int16 slot = ChooseSlot(call, form);
  call.house.alarms.Set(slot, ToFloat(Val(call.P[form.Time])), form.Command != 0 ? &call.P[form.Command] : nullptr,
                        call.outchannel);
  if (form.Variable == 0) return;
  call.house.symbols.AddVariable(call.P[form.Variable], std::to_string(slot), call.definitionOwner,
                                 call.ErrorDescription);
  if (!call.ErrorDescription.empty()) call.next = Flow::Report;
}

void handler::UnAlarm(CommandCall& call) {
  if (call.checkOnly()) return;
  std::string& id = call.P[2];
  const char variable = call.house.options.VariableChar;
  if (!IsNumeric(id) && !id.starts_with(variable)) id.insert(0, 1, variable);  // a bare name is a variable
  if (!ExpandText(call, id)) return;
  if (!IsNumeric(id)) {
    // Kept: not reported; the text waits for the caller.
    call.ErrorDescription = "parameter 1 (ID) must be numeric or hold a numeirc value";
    return;
  }
  const double slot = Val(id);
  if (slot < 0) return call.house.alarms.CancelAll();
  if (slot < 1 || slot > call.house.alarms.Highest()) return call.fail("Parameter 1 is not an active alarm");
  call.house.alarms.Cancel(ToInt16(slot));
}

}  // namespace corvid

// SPDX-License-Identifier: GPL-3.0-or-later
// ALIAS, KEY, VARIABLE, ADDITEM and the commands that take these definitions away.
#include "commands/command_call.h"
#include "commands/definition_rules.h"
#include "commands/handlers.h"
#include "core/keys.h"
#include "core/text.h"
#include "dialogs/variable_list.h"
#include "script/symbols.h"

namespace corvid {

namespace {

bool ListHolds(std::string_view list, std::string_view item) {
  for (;;) {
    const std::size_t bar = list.find('|');
    if (SameText(list.substr(0, bar), item)) return true;
    if (bar == std::string_view::npos) return false;
    list.remove_prefix(bar + 1);
  }
}

}  // namespace

void handler::Alias(CommandCall& call) {
  std::string body = call.P[3];
  if (call.checkOnly()) {
    CheckNested(call, body);
    return;
  }
  if (!ExpandText(call, call.P[2]) || !ExpandBodyNow(call, body)) return;
  ScriptState& script = call.house.script;
  std::string problem;
  call.house.symbols.AddAlias(call.P[2], body, call.definitionOwner, ClassList(call, call.P[4]), script.DefiningBuffer,
                              call.P[3], problem);
  MarkChanged(call);
}

void handler::Key(CommandCall& call) {
  constexpr int16 bodyPlace = 3;
  std::string body = call.P[bodyPlace];
  if (call.checkOnly()) {
    CheckNested(call, body);
    return;
  }
  if (!ExpandParameters(call, bodyPlace) || !ExpandBodyNow(call, body)) return;
  int16 shift = 0;
  int16 code = 0;
  ParseKeystroke(call.P[2], shift, code);
  if (code == -1) return;
  std::string problem;
  MarkChanged(call);
  call.house.symbols.Addmacro(code, shift, body, call.definitionOwner, ClassList(call, call.P[4]),
                              call.house.script.DefiningBuffer, call.P[bodyPlace], problem);
}

void handler::Variable(CommandCall& call) {
  if (call.checkOnly() || !ExpandParameters(call)) return;
  if (call.count() == 0) return call.house.variables.MaintainVariables();  // PUMP
  Symbols& symbols = call.house.symbols;
  if (call.count() == 3) {
    symbols.AddVariable(call.P[2], call.P[3], call.definitionOwner, call.ErrorDescription, call.P[4]);
  } else {
    symbols.AddVariable(call.P[2], call.P[3], call.definitionOwner, call.ErrorDescription);
  }
  if (!call.ErrorDescription.empty()) call.next = Flow::Report;
}

void handler::AddItem(CommandCall& call) {
  if (call.checkOnly() || !ExpandParameters(call)) return;
  const bool single = call.count() == 3;
  if (single && !SameText(call.P[4], "NODUPLICATES")) return call.fail("If included, parameter 3 must be NoDuplicates");
  const std::string& item = call.P[3];
  const int32 row = call.house.symbols.FindVariableRow(call.P[2], call.owner);
  if (row == 0) {
    call.house.symbols.AddVariable(call.P[2], item, call.owner, call.ErrorDescription);
    if (!call.ErrorDescription.empty()) call.next = Flow::Report;
    return;
  }
  // In place: a list that grows item by item would otherwise be copied for each of them.
  std::string& list = call.house.script.VariableValues[row];
  if (list.empty()) {
    list = item;
  } else if (!single || !ListHolds(list, item)) {
    list += '|';
    list += item;
  }
}

void handler::UnAlias(CommandCall& call) {
  if (call.checkOnly() || !ExpandParameters(call)) return;
  ScriptState& script = call.house.script;
  const std::string_view name = TrimView(call.P[2]);
  for (int32 i = 1; i <= script.AliasCount; ++i) {
    if (script.AliasOwners[i] != call.definitionOwner || !SameText(TrimView(script.AliasNames[i]), name)) continue;
    if (call.P[3].empty() || SameText(script.AliasClasses[i], call.P[3])) script.AliasNames[i].clear();
  }
  call.house.symbols.CompressCommand(windowtype::Aliases);
}

void handler::UnKey(CommandCall& call) {
  if (call.checkOnly() || !ExpandParameters(call)) return;
  ScriptState& script = call.house.script;
  int16 shift = 0;
  int16 code = 0;
  ParseKeystroke(call.P[2], shift, code);
  for (int32 i = 1; i <= script.MacroCount; ++i) {
    if (script.MacroOwners[i] != call.definitionOwner || script.MacroKeyCodes[i] != code ||
        script.MacroShifts[i] != shift)
      continue;
    if (call.P[3].empty() || SameText(script.MacroClasses[i], call.P[3])) script.MacroKeyCodes[i] = 0;
  }
  call.house.symbols.CompressCommand(windowtype::Keys);
}

void handler::UnVariable(CommandCall& call) {
  if (call.checkOnly() || !ExpandParameters(call)) return;
  ScriptState& script = call.house.script;
  std::string value;
  const int32 row = call.house.symbols.FindVariable(call.P[2], value, call.definitionOwner);
  // A variable for everybody goes only by the "G" form: other characters read it too.
  if (row == 0 || script.VariableOwners[row] != call.definitionOwner) return;
  script.VariableNames[row].clear();
  call.house.symbols.CompressCommand(windowtype::Variables);
}

}  // namespace corvid

// SPDX-License-Identifier: GPL-3.0-or-later
// CLASS, DELCLASS, UNCLASS and LOCAL: which definitions count, and for whom.
#include <optional>

#include "commands/command_call.h"
#include "commands/handlers.h"
#include "core/pattern.h"
#include "core/text.h"
#include "input/menus.h"
#include "script/symbols.h"

namespace corvid {

namespace {

// The class list without one class; nothing when the class is not in it.
std::optional<std::string> Without(const std::string& list, const std::string& name) {
  std::string rest;
  bool found = false;
  for (const std::string& held : Split(list, "|")) {
    if (SameText(held, name)) {
      found = true;
      continue;
    }
    if (!rest.empty()) rest += '|';
    rest += held;
  }
  if (!found) return std::nullopt;
  return rest;
}

// What a class that goes means for one definition. True: the definition goes as well.
using Verdict = bool (*)(std::string& classes, int16 definitionOwner, const std::string& name, OwnerId owner);

// Kept: an empty name is the class list of what has no class, so all of that goes.
bool GoesWithItsClass(std::string& classes, int16 /*definitionOwner*/, const std::string& name, OwnerId /*owner*/) {
  return SameText(classes, name) || Without(classes, name).has_value();
}

bool GoesOrLosesItsClass(std::string& classes, int16 definitionOwner, const std::string& name, OwnerId owner) {
  if (definitionOwner != owner) return false;
  if (SameText(classes, name)) return true;
  const std::optional<std::string> rest = Without(classes, name);
  if (rest) classes = *rest;
  return false;
}

void RemoveClass(CommandCall& call, Verdict goes) {
  if (call.checkOnly() || !ExpandParameters(call)) return;
  const std::string& name = call.P[2];
  if (name.find('|') != std::string::npos) return call.fail("Only one class may be specified in the  first parameter.");
  ScriptState& script = call.house.script;
  const OwnerId owner = call.definitionOwner;
  // Triggers keep their rows: the command may run in a trigger's action, and the walk over the others goes on.
  for (int32 i = 1; i <= script.TriggerCount; ++i) {
    const TriggerRecord& trigger = script.Triggers.Read(i);
    std::string classes = trigger.Class;
    if (goes(classes, trigger.Owner, name, owner)) {
      script.Triggers[i].Pattern.clear();
    } else if (classes != trigger.Class) {
      script.Triggers[i].Class = classes;
    }
  }
  for (int32 i = 1; i <= script.MacroCount; ++i)
    if (goes(script.MacroClasses[i], script.MacroOwners[i], name, owner)) script.MacroKeyCodes[i] = 0;
  for (int32 i = 1; i <= script.AliasCount; ++i)
    if (goes(script.AliasClasses[i], script.AliasOwners[i], name, owner)) script.AliasNames[i].clear();
  call.house.symbols.CompressCommand(windowtype::Keys | windowtype::Aliases);
  call.house.symbols.DeleteClass(name, owner);
  std::string& current = script.CurrentClass[call.outchannel];
  if (SameText(current, name)) current.clear();
}

// The classes that are on for the command's owner. Kept: what stands behind a name tells whom the command is for, not
// whom the class is.
void ShowClasses(CommandCall& call) {
  const ScriptState& script = call.house.script;
  if (script.ClassCount == 0) return call.house.platform.face.Beep();
  const OwnerId owner = call.definitionOwner;
  const std::string whose = owner == 0 ? " Global" : " " + call.house.sessions.CharacterName[owner];
  std::vector<std::string> rows;
  for (int32 i = 1; i <= script.ClassCount; ++i)
    if (script.ClassOwners[i] == 0 || script.ClassOwners[i] == owner) rows.push_back(script.ClassNames[i] + whose);
  if (!rows.empty()) call.house.menus.ShowList(rows, "CLASS");
}

}  // namespace

void handler::Class(CommandCall& call) {
  if (call.checkOnly() || !ExpandParameters(call)) return;
  ScriptState& script = call.house.script;
  if (call.count() == 0) return ShowClasses(call);
  if (call.P[2].find('|') != std::string::npos)
    return call.fail("Only one class may be specified in the  first parameter.");
  const std::string name = call.P[2] == "0" ? "" : call.P[2];
  std::string& current = script.CurrentClass[call.outchannel];
  const std::string keyword = Upper(call.P[3]);
  if (keyword == "ENABLE") {
    call.house.symbols.CheckAndAddClass(name, call.definitionOwner);
  } else if (keyword == "DISABLE") {
    call.house.symbols.DeleteClass(name, call.definitionOwner);
    if (SameText(current, name)) current.clear();
  } else if (keyword.empty()) {
    call.house.symbols.CheckAndAddClass(name, call.definitionOwner);
    current = Upper(name);
  } else {
    call.fail("Bad Class parameter 2");
  }
}

void handler::DelClass(CommandCall& call) {
  RemoveClass(call, GoesWithItsClass);
}

void handler::UnClass(CommandCall& call) {
  RemoveClass(call, GoesOrLosesItsClass);
}

void handler::Local(CommandCall& call) {
  if (call.checkOnly() || !ExpandParameters(call)) return;
  const SessionState& table = call.house.sessions;
  const std::string pattern = Upper(call.P[2]) + "*";
  // Kept: the last name that fits wins, and no name at all fits every one.
  for (int16 i = 1; i <= table.CharacterCount; ++i)
    if (Like(Upper(table.CharacterName[i]), pattern)) call.house.script.CurrentOwner = i;
}

}  // namespace corvid

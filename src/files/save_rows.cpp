// SPDX-License-Identifier: GPL-3.0-or-later
// The lines that make definitions again: one writer a table.
#include "core/keys.h"
#include "files/saving.h"
#include "files/script_value.h"

namespace corvid {

namespace {

std::string Braced(const std::string& text) {
  return "{" + text + "}";
}
std::string ClassPart(const std::string& name) {
  return name.empty() ? "" : " " + Braced(name);
}

}  // namespace

void Saving::Save(int16 stype, OwnerId Owner, std::string& text) const {
  if ((stype & save::Variables) != 0) SaveVariableRows(false, Owner, text);
  if ((stype & save::Defaults) != 0) SaveVariableRows(true, Owner, text);
  if ((stype & save::Aliases) != 0) SaveAliases(Owner, text);
  if ((stype & save::Keys) != 0) SaveKeys(Owner, text);
  if ((stype & save::Triggers) != 0) SaveTriggers(Owner, text);
  if ((stype & save::TabWords) != 0) SaveTabWords(Owner, text);
  if ((stype & save::Directions) != 0) SaveDirections(Owner, text);
  if ((stype & save::Classes) != 0) SaveClasses(Owner, text);
}

std::string Saving::CommandStart(OwnerId Owner) const {
  return std::string(1, options_.CommandChar) + (Owner == 0 ? "G" : "");
}

// Kept: a default is written in both places, so that it becomes the value as well.
void Saving::SaveVariableRows(bool defaultsOnly, OwnerId Owner, std::string& text) const {
  for (int32 row = 1; row <= script_.VariableCount; ++row) {
    if (script_.VariableOwners[row] != Owner || script_.VariableNames[row].empty()) continue;
    const std::string standard = ScriptValue(script_.VariableDefaults[row], options_);
    if (defaultsOnly && standard.empty()) continue;
    const std::string value = defaultsOnly ? standard : ScriptValue(script_.VariableValues[row], options_);
    text += CommandStart(Owner) + "Var " + script_.VariableNames[row] + " " + Braced(value) + " " + Braced(standard) +
            "\r\n";
  }
}

void Saving::SaveAliases(OwnerId Owner, std::string& text) const {
  for (int32 row = 1; row <= script_.AliasCount; ++row) {
    if (script_.AliasOwners[row] != Owner || script_.AliasNames[row].empty()) continue;
    text += CommandStart(Owner) + "alias " + Braced(script_.AliasNames[row]) + " " +
            Braced(script_.AliasOriginals[row]) + ClassPart(script_.AliasClasses[row]) + "\r\n";
  }
}

void Saving::SaveKeys(OwnerId Owner, std::string& text) const {
  for (int32 row = 1; row <= script_.MacroCount; ++row) {
    if (script_.MacroOwners[row] != Owner || script_.MacroKeyCodes[row] == 0) continue;
    text += CommandStart(Owner) + "key " + Keyname(script_.MacroKeyCodes[row], script_.MacroShifts[row]) + " " +
            Braced(script_.MacroOriginals[row]) + ClassPart(script_.MacroClasses[row]) + "\r\n";
  }
}

// Kept: a flag without a class stands where a class is read.
void Saving::SaveTriggers(OwnerId Owner, std::string& text) const {
  for (int32 row = 1; row <= script_.TriggerCount; ++row) {
    const TriggerRecord& trigger = script_.Triggers.Read(row);
    if (trigger.Owner != Owner || trigger.Pattern.empty()) continue;
    text += CommandStart(Owner) + "Trigger " + Braced(trigger.SearchText) + " " + Braced(trigger.ActionText) +
            ClassPart(trigger.Class);
    if ((trigger.Flags & triggerflag::AnyCase) != 0) text += " AnyCase";
    if ((trigger.Flags & triggerflag::Colour) != 0) text += " COLOR";
    text += "\r\n";
  }
}

void Saving::SaveTabWords(OwnerId Owner, std::string& text) const {
  for (int32 row = 1; row <= script_.TabWordCount; ++row) {
    if (script_.TabOwners[row] != Owner || script_.TabWords[row].empty()) continue;
    text += CommandStart(Owner) + "tab " + Braced(ScriptValue(script_.TabWords[row], options_)) + "\r\n";
  }
}

void Saving::SaveDirections(OwnerId Owner, std::string& text) const {
  for (int32 row = 1; row <= script_.AbbreviationCount; ++row) {
    if (script_.AbbreviationOwners[row] != Owner || script_.Directions[row].empty()) continue;
    text += CommandStart(Owner) + "Direction " + Braced(ScriptValue(script_.Directions[row], options_)) + " " +
            Braced(ScriptValue(script_.OppositeDirections[row], options_)) + "\r\n";
  }
}

void Saving::SaveClasses(OwnerId Owner, std::string& text) const {
  for (int32 row = 1; row <= script_.ClassCount; ++row) {
    if (script_.ClassOwners[row] != Owner || script_.ClassNames[row].empty()) continue;
    text += CommandStart(Owner) + "class " + Braced(script_.ClassNames[row]) + " enable\r\n";
  }
}

}  // namespace corvid

// SPDX-License-Identifier: GPL-3.0-or-later
// The commands that define, and what is defined then.
#pragma once

#include <string>

#include "commands/fixture.h"
#include "core/keys.h"

namespace corvid::test {

class DefinitionTest : public CommandTest {
 protected:
  int16 AliasRow(const std::string& name, OwnerId owner = 0) { return symbols.FindAlias(name, owner, false); }
  std::string AliasBody(const std::string& name, OwnerId owner = 0) {
    const int16 row = AliasRow(name, owner);
    return row == 0 ? "(none)" : script.AliasValues[row];
  }
  std::string AliasClass(const std::string& name) { return script.AliasClasses[AliasRow(name)]; }
  std::string KeyBody(int16 code, int16 shift, OwnerId owner = 0) {
    const int16 row = symbols.FindMacro(code, shift, owner, false);
    return row == 0 ? "(none)" : script.MacroValues[row];
  }
  // What there is: aliases, keys, triggers, each kind joined by "|".
  std::string Defined() const {
    std::string aliases, keys, searches;
    const auto add = [](std::string& list, const std::string& item) { list += (list.empty() ? "" : "|") + item; };
    for (int16 i = 1; i <= script.AliasCount; ++i) add(aliases, script.AliasNames[i]);
    for (int16 i = 1; i <= script.MacroCount; ++i) add(keys, Keyname(script.MacroKeyCodes[i], script.MacroShifts[i]));
    for (int16 i = 1; i <= script.TriggerCount; ++i)
      if (!script.Triggers.Read(i).Pattern.empty()) add(searches, script.Triggers.Read(i).SearchText);
    return aliases + " " + keys + " " + searches;
  }
};

}  // namespace corvid::test

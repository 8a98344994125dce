// SPDX-License-Identifier: GPL-3.0-or-later
// The list of variables: what each holds at the moment, setting one, and forgetting one.
#pragma once

#include <string>
#include <vector>

#include "core/upcalls.h"
#include "dialogs/gen_dialog.h"
#include "script/options_state.h"
#include "script/script_state.h"

namespace corvid {

class Symbols;

class VariableList {
 public:
  VariableList(ScriptState& script, const OptionsState& options, const Symbols& symbols, GenDialog& dialog,
               Platform& platform, Upcalls& upcalls);

  // Shows the variables of the character in force, those for everybody and the system's, until the player has left the
  // list. May pump events.
  void MaintainVariables();

 private:
  struct Entry {
    std::string name;
    bool global = false;
    bool system = false;
    std::string row;  // as the list shows it
  };
  struct NewVariable {
    std::string Name;
    std::string Value;
    bool Global = false;
  };
  std::vector<Entry> Entries() const;
  std::vector<Entry> OwnEntries() const;
  int16 ShowList(const std::vector<Entry>& entries, int32& place);
  static int32 PlaceOf(const std::vector<Entry>& entries, const Entry& selected, int32 place);
  void Add(Entry& selected);
  bool AskNew(NewVariable& variable);
  void TakeNew(NewVariable& variable);
  std::string Define(const NewVariable& variable);
  void Delete(const Entry& entry);
  void Find(const std::vector<Entry>& entries, int32 place, Entry& selected);
  std::string Run(const std::string& command);
  void Tell(const std::string& text, const std::string& title);

  ScriptState& script_;
  const OptionsState& options_;
  const Symbols& symbols_;
  GenDialog& dialog_;
  Platform& platform_;
  Upcalls& upcalls_;
};

}  // namespace corvid

// SPDX-License-Identifier: GPL-3.0-or-later
// The list of characters: where a player writes them down, and where a game begins.
#pragma once

#include <string>
#include <vector>

#include "core/upcalls.h"
#include "dialogs/character_form.h"
#include "dialogs/gen_dialog.h"
#include "script/options_state.h"
#include "script/script_state.h"
#include "sessions/session_state.h"

namespace corvid {

class CharacterFile;
class Sessions;

class CharacterList {
 public:
  CharacterList(ScriptState& script, const OptionsState& options, SessionState& characters, CharacterFile& file,
                Sessions& sessions, GenDialog& dialog, Platform& platform, Upcalls& upcalls);

  // Shows the list until the player has left it or chosen a character to play. What is changed is written to the file
  // at once. May pump events.
  void MaintainCharacters();

 private:
  // A row of the list, as it was when the list was shown. The table may be another one by the time the player answers.
  struct Entry {
    int16 row = 0;  // 0 for none
    std::string reference;
    std::string mud;
    std::string name;
    std::string Shown() const;
  };
  static std::vector<std::string> Rows(const std::vector<Entry>& entries);
  std::vector<Entry> Entries() const;
  int32 PlaceOf(const std::vector<Entry>& entries, int16 row) const;
  int16 Find(const Entry& entry) const;
  int16 ShowList(const std::vector<Entry>& entries, int32& place);
  bool Act(int16 button, const Entry& entry, int16& selected);
  bool Play(const Entry& entry, int16 button);
  int16 Edit(const Entry& entry);
  struct Problem {
    std::string text;
    CharacterForm::TextBoxes box = CharacterForm::NameBox;  // where it is to be mended
  };
  Problem ProblemOf(const CharacterFields& fields, int16 row) const;
  void Store(int16 row, const CharacterFields& fields);
  int16 FreeRow();
  void Delete(const Entry& entry);
  bool Unload(int16 row);
  void Tell(const std::string& text, const std::string& title);

  ScriptState& script_;
  const OptionsState& options_;
  SessionState& characters_;
  CharacterFile& file_;
  Sessions& sessions_;
  GenDialog& dialog_;
  Platform& platform_;
  Upcalls& upcalls_;
  CharacterForm form_;
};

}  // namespace corvid

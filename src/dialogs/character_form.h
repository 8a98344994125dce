// SPDX-License-Identifier: GPL-3.0-or-later
// The dialog in which a character is written down: who it is, in which game, and how it is played.
#pragma once

#include <string>

#include "dialogs/gen_dialog.h"
#include "dialogs/mud_choices.h"
#include "sessions/session_state.h"

namespace corvid {

struct CharacterFields {  // those of a row that a player writes
  std::string CharacterName;
  std::string CharacterRef;
  std::string MudName;
  std::string HostName;
  std::string Port;
  std::string Notes;
  std::string Password;
  int16 CharFlags = 0;
};

CharacterFields ReadCharacter(const CharacterTable& characters, int16 row);
// Flags that the dialog does not know and the date of the last connection stay.
void WriteCharacter(CharacterTable& characters, int16 row, const CharacterFields& fields);

class CharacterForm {
 public:
  enum TextBoxes : int16 { NameBox = 1, ReferenceBox, MudBox, HostBox, PortBox, PasswordBox };  // in order of creation

  CharacterForm(GenDialog& dialog, const CharacterTable& characters, Platform& platform)
      : dialog_(dialog), characters_(characters), platform_(platform) {}

  // Shows the fields, beginning at the one given, and takes what the player made of them. True for OK. A dialog that
  // comes between takes nothing away: the form is shown again. May pump events.
  bool Ask(const std::string& title, TextBoxes first, CharacterFields& fields);

 private:
  void Build(const std::string& title, CharacterFields& fields);
  void Happened(const DialogEventArgs& at, CharacterFields& fields);
  void FillMud();
  void Take(CharacterFields& fields);
  void SetText(int16 box, const std::string& text);
  int32 MudRow(const CharacterFields& fields) const;

  GenDialog& dialog_;
  const CharacterTable& characters_;
  Platform& platform_;
  std::vector<MudChoice> muds_;  // of the list that is shown
};

}  // namespace corvid

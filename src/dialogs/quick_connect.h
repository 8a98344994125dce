// SPDX-License-Identifier: GPL-3.0-or-later
// Connecting to a game by host and port, without a character.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "core/upcalls.h"
#include "dialogs/gen_dialog.h"
#include "sessions/character_file.h"
#include "sessions/session_state.h"

namespace corvid {

class QuickConnect {
 public:
  static constexpr int16 FromList = 5;  // GDResult: the row of the list was taken

  // open connects a row of the character table, as Sessions::OpenMud does.
  QuickConnect(SessionState& sessions, CharacterFile& characters, GenDialog& dialog, Upcalls& upcalls,
               std::function<void(int16 row)> open);

  // Shows the dialog "Quick Connect" and connects what is chosen. May pump events.
  void Show();

 private:
  struct Choice {
    std::string host;
    std::string port;
  };
  // One entry for each different host and port of the character table.
  std::vector<std::string> FillList();
  bool AskDelete(int32 row);
  void Connect(const Choice& choice);

  SessionState& sessions_;
  CharacterFile& characters_;
  GenDialog& dialog_;
  Upcalls& upcalls_;
  std::function<void(int16)> open_;
  std::vector<Choice> choices_;
  std::vector<std::string> names_;  // MudName of each choice
};

}  // namespace corvid

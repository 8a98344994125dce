// SPDX-License-Identifier: GPL-3.0-or-later
// Connecting to a game by host and port, without a character.
#pragma once

#include <functional>

#include "core/upcalls.h"
#include "dialogs/gen_dialog.h"
#include "dialogs/mud_choices.h"
#include "sessions/character_file.h"
#include "sessions/session_state.h"

namespace corvid {

class QuickConnect {
 public:
  static constexpr int16 FromList = 5;  // GDResult: the row of the list was taken

  // open connects a row of the character table, as Sessions::OpenMud does; inUse tells whether a session reads it.
  QuickConnect(SessionState& sessions, CharacterFile& characters, GenDialog& dialog, Upcalls& upcalls,
               std::function<void(int16 row)> open, std::function<bool(int16 row)> inUse);

  // Shows the dialog "Quick Connect" and connects what is chosen. May pump events.
  void Show();

 private:
  void AskDelete(const MudChoice& mud);
  bool TellInUse(const MudChoice& mud);
  void Connect(const MudChoice& choice);

  SessionState& sessions_;
  CharacterFile& characters_;
  GenDialog& dialog_;
  Upcalls& upcalls_;
  std::function<void(int16)> open_;
  std::function<bool(int16)> inUse_;
};

}  // namespace corvid

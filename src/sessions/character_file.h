// SPDX-License-Identifier: GPL-3.0-or-later
// "Character.mud": the character table on disk, one record a line, scrambled.
#pragma once

#include <string>
#include <string_view>

#include "core/upcalls.h"
#include "platform/platform.h"
#include "script/options_state.h"
#include "sessions/session_state.h"

namespace corvid {

// The records in the clear, each ended by CR LF. A double quote inside a text is doubled.
std::string FormatCharacters(const CharacterTable& table);
// Reads that form. Notes may span lines. A quote that was not doubled is taken as it stands. False when a record does
// not have the eight fields before the date; table is then untouched.
bool ParseCharacters(std::string_view text, CharacterTable& table);
// A new last row with empty fields; returns its number. Fault of kind Overflow when the table is full.
int16 AddCharacter(CharacterTable& table);
// Row of a reference in any case, 0 for none.
int16 FindCharacter(const CharacterTable& table, std::string_view reference);
// Empties a row. It stays where it is, since sessions and definitions name their character by its row.
void ClearCharacter(CharacterTable& table, int16 row);
// True for a row of which no text is left.
bool IsClear(const CharacterTable& table, int16 row);

class CharacterFile {
 public:
  CharacterFile(SessionState& sessions, OptionsState& options, Platform& platform, Upcalls& upcalls);

  // Fills the character table from the user data folder, and ConnectHost from its row of quick connections. Without a
  // readable file the table has the one row "QUICKCONNECT" and the result is false. A file that is there but cannot be
  // read or understood goes to UnknownError, and is kept beside as "Character.bad". Never throws.
  bool ReadMudFile();
  // Replaces the file, except one that could be neither read nor kept beside. A failure is told to the player and the
  // table stays as it is.
  void writeMudFile();

 private:
  bool KeepBeside();

  SessionState& sessions_;
  OptionsState& options_;
  Platform& platform_;
  Upcalls& upcalls_;
  bool unreadable_ = false;  // the file on the disk has characters that the table has not
};

}  // namespace corvid

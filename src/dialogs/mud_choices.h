// SPDX-License-Identifier: GPL-3.0-or-later
// The games that the player knows already, to choose one from a list.
#pragma once

#include <string>
#include <vector>

#include "sessions/session_state.h"

namespace corvid {

struct MudChoice {
  std::string MudName;  // of the first character there
  std::string HostName;
  std::string Port;
};

// Each different host and port of the character table, in its order. Rows without a host or a port are left out.
std::vector<MudChoice> MudChoices(const CharacterTable& characters);
// As a list shows it: "Dale dale.example Port 4000".
std::vector<std::string> MudRows(const std::vector<MudChoice>& choices);
// True for a row of the table that belongs to the host and port.
bool IsOfMud(const CharacterTable& characters, int16 row, const MudChoice& mud);

}  // namespace corvid

// SPDX-License-Identifier: GPL-3.0-or-later
#include "dialogs/mud_choices.h"

#include <algorithm>

#include "core/text.h"

namespace corvid {

bool IsOfMud(const CharacterTable& characters, int16 row, const MudChoice& mud) {
  return SameText(characters.HostName[row], mud.HostName) && characters.Port[row] == mud.Port;
}

std::vector<MudChoice> MudChoices(const CharacterTable& characters) {
  std::vector<MudChoice> choices;
  for (int16 row = 1; row <= characters.CharacterCount; ++row) {
    if (characters.HostName[row].empty() || characters.Port[row].empty()) continue;
    const bool known = std::any_of(choices.begin(), choices.end(),
                                   [&](const MudChoice& other) { return IsOfMud(characters, row, other); });
    if (!known) choices.push_back({characters.MudName[row], characters.HostName[row], characters.Port[row]});
  }
  return choices;
}

std::vector<std::string> MudRows(const std::vector<MudChoice>& choices) {
  std::vector<std::string> rows;
  rows.reserve(choices.size());
  for (const MudChoice& mud : choices) rows.push_back(mud.MudName + " " + mud.HostName + " Port " + mud.Port);
  return rows;
}

}  // namespace corvid

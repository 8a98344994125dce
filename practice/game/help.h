// SPDX-License-Identifier: GPL-3.0-or-later
// The lessons: how to play, and how to use the client.
#pragma once

#include <string>
#include <string_view>

#include "game/state.h"

namespace corvid::practice {

// The text of the topic that the word begins, by the table's order, or empty.
std::string_view HelpText(std::string_view word);

void Help(Turn& turn);
void Hint(Turn& turn);  // the hint of this room again

}  // namespace corvid::practice

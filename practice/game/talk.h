// SPDX-License-Identifier: GPL-3.0-or-later
// Talking: to those in the room, to one, to all.
#pragma once

#include "game/state.h"

namespace corvid::practice {

enum class Channel { Chat, Newbie, Auction };

void Say(Turn& turn);
void Tell(Turn& turn);
void Ask(Turn& turn);        // ask NAME about WORD
void OnChannel(Turn& turn);  // Argument is a Channel
void Who(Turn& turn);

}  // namespace corvid::practice

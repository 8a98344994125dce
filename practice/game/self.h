// SPDX-License-Identifier: GPL-3.0-or-later
// What concerns the player and the connection: score, switches, leaving, the bell, the flood.
#pragma once

#include <cstddef>

#include "game/state.h"

namespace corvid::practice {

void Score(Turn& turn);
void Ring(Turn& turn);
void ColourSwitch(Turn& turn);   // colour on, colour off
void SoundSwitch(Turn& turn);    // sound on, sound off
void ChatterSwitch(Turn& turn);  // chatter on, off, now
void Quit(Turn& turn);

inline constexpr int MostFloodLines = 1000000;
void StartFlood(Turn& turn);  // flood N [colour]; flood stop
// Appends lines of a running flood to Out until it holds at least upTo bytes or the flood is done.
void PourFlood(Connection& who, std::size_t upTo);

}  // namespace corvid::practice

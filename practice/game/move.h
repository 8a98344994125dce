// SPDX-License-Identifier: GPL-3.0-or-later
// Walking.
#pragma once

#include "game/state.h"

namespace corvid::practice {

void Move(Turn& turn);  // Argument is the row of Directions
void Go(Turn& turn);    // go DIRECTION
// Takes the player through the exit, which must be there, and tells both rooms.
void WalkThrough(GameState& state, Connection& who, std::size_t way);

}  // namespace corvid::practice

// SPDX-License-Identifier: GPL-3.0-or-later
// Fights: they go on by themselves, a round every RoundTime, until one side falls or the player flees.
#pragma once

#include "game/state.h"

namespace corvid::practice {

void Kill(Turn& turn);
void Flee(Turn& turn);
void FightRound(GameState& state, Connection& who, Millis now);

}  // namespace corvid::practice

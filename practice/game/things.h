// SPDX-License-Identifier: GPL-3.0-or-later
// Things: taking, dropping, wearing, eating, buying and selling.
#pragma once

#include "game/state.h"

namespace corvid::practice {

void Get(Turn& turn);
void Drop(Turn& turn);
void Inventory(Turn& turn);
void Wear(Turn& turn);  // wield too
void Remove(Turn& turn);
void Consume(Turn& turn);  // eat and drink

void List(Turn& turn);
void Buy(Turn& turn);
void Sell(Turn& turn);
void Gold(Turn& turn);

int ArmourOf(const Player& player);      // harm that is kept off each blow
int WeaponHarmOf(const Player& player);  // harm that is added to each blow

}  // namespace corvid::practice

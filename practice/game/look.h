// SPDX-License-Identifier: GPL-3.0-or-later
// Seeing: the room, what is in it, the map.
#pragma once

#include <string>

#include "game/state.h"

namespace corvid::practice {

void ShowRoom(GameState& state, Connection& who);
// Shows the room the player stands in now, with the sounds of the way there (cameFrom is the room left, or None) and
// the hint of a first visit.
void ArriveInRoom(GameState& state, Connection& who, int cameFrom);
std::string ExitList(int room);  // "north, east and up"

void Look(Turn& turn);  // look, look at THING, examine THING
void Read(Turn& turn);
void Exits(Turn& turn);
void Map(Turn& turn);

}  // namespace corvid::practice

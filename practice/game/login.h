// SPDX-License-Identifier: GPL-3.0-or-later
// From the connection to the first room: greeting, name, password.
#pragma once

#include <string>
#include <string_view>

#include "game/state.h"

namespace corvid::practice {

void Greet(Connection& who);  // offers sounds, asks for the terminal's name, and asks who is there
void LoginLine(GameState& state, Connection& who, const std::string& line, Millis now);
std::string_view LoginQuestion(Stage stage);  // the prompt of a stage before Playing
// Takes the player out of the world; the others are told, and what was carried stays with the player.
void LeaveGame(GameState& state, Connection& who);

}  // namespace corvid::practice

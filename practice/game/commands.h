// SPDX-License-Identifier: GPL-3.0-or-later
// The command table of the game.
#pragma once

#include <string>

#include "game/state.h"

namespace corvid::practice {

// Runs one typed line of somebody who plays. An empty line only brings the prompt again.
void RunCommand(GameState& state, Connection& who, const std::string& line, Millis now);
std::string CommandList();  // all command words, for the help

}  // namespace corvid::practice

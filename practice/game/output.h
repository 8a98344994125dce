// SPDX-License-Identifier: GPL-3.0-or-later
// Everything that is written to a player goes through here. A line that follows a prompt first ends the prompt's line,
// so that no text is ever glued to a prompt.
#pragma once

#include <string>
#include <string_view>

#include "game/state.h"

namespace corvid::practice {

void SendLine(Connection& to, std::string_view line);      // one line as it is
void SendText(Connection& to, std::string_view text);      // wrapped to lines of 78
void SendRaw(Connection& to, std::string_view bytes);      // telnet commands: no line, and the prompt stays open
void SendPrompt(Connection& to, std::string_view prompt);  // without a line end, but with IAC GA
// A sound line, if the client knows sounds. Volume is 0 to 100.
void SendSound(Connection& to, std::string_view file, int volume = 60);
void SendMusic(Connection& to, std::string_view file);  // loops; "Off" ends it

// To all who play in the room, but not to the connection numbered except.
void SendRoom(GameState& state, int room, int except, std::string_view line);
void SendRoomSound(GameState& state, int room, int except, std::string_view file);

std::string PromptText(const Player& player);
// Gives everybody who plays and was written to a new prompt, and those who log in their question again.
void SendDuePrompts(GameState& state);

Player& PlayerOf(GameState& state, const Connection& who);
Connection* FindPlaying(GameState& state, std::string_view name);  // by the start of the name; nullptr: nobody

}  // namespace corvid::practice

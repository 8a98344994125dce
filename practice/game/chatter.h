// SPDX-License-Identifier: GPL-3.0-or-later
// The other "players": names that chat on the channels and send tells, so that a lone player meets the bustle of a real
// game.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "game/state.h"

namespace corvid::practice {

bool IsChatterName(std::string_view name);
std::vector<std::string> ChatterNames();
// The full name that begins so, or empty.
std::string FindChatter(std::string_view start);

void ChatterToAll(GameState& state, Millis now);  // the next line, to all who want it; sets NextChat
void ChatterToOne(Connection& who);               // the next line of this connection, at once
void AnswerTell(GameState& state, const Connection& who, const std::string& name, Millis now);

// What a line of a channel looks like: "[chat] Finch: hello".
std::string ChannelLine(std::string_view channel, std::string_view name, std::string_view text);
std::string TellLine(std::string_view name, std::string_view text);

}  // namespace corvid::practice

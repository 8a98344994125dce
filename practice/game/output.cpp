// SPDX-License-Identifier: GPL-3.0-or-later
#include "game/output.h"

#include "game/login.h"
#include "game/text.h"

namespace corvid::practice {

namespace {

constexpr std::size_t Width = 78;

}  // namespace

void SendLine(Connection& to, std::string_view line) {
  if (to.AtPrompt) to.Out += "\r\n";
  to.AtPrompt = false;
  to.NeedsPrompt = true;
  to.Out += to.Colour ? std::string(line) : StripColours(line);
  to.Out += "\r\n";
}

void SendText(Connection& to, std::string_view text) {
  for (const std::string& line : Wrap(text, Width)) SendLine(to, line);
}

void SendRaw(Connection& to, std::string_view bytes) {
  to.Out += bytes;
}

void SendPrompt(Connection& to, std::string_view prompt) {
  if (to.AtPrompt) to.Out += "\r\n";
  to.Out += prompt;
  to.Out += {static_cast<char>(telnet::Iac), static_cast<char>(telnet::Ga)};
  to.AtPrompt = true;
  to.NeedsPrompt = false;
}

void SendSound(Connection& to, std::string_view file, int volume) {
  if (!to.Sounds) return;
  SendLine(to, "!!SOUND(" + std::string(file) + " V=" + std::to_string(volume) + " L=1)");
}

void SendMusic(Connection& to, std::string_view file) {
  if (!to.Sounds) return;
  SendLine(to, file == "Off" ? "!!MUSIC(Off)" : "!!MUSIC(" + std::string(file) + " V=40 L=-1)");
}

void SendRoom(GameState& state, int room, int except, std::string_view line) {
  for (auto& [id, who] : state.Connections) {
    if (id != except && who.At == Stage::Playing && PlayerOf(state, who).Room == room) SendLine(who, line);
  }
}

void SendRoomSound(GameState& state, int room, int except, std::string_view file) {
  for (auto& [id, who] : state.Connections) {
    if (id != except && who.At == Stage::Playing && PlayerOf(state, who).Room == room) SendSound(who, file);
  }
}

std::string PromptText(const Player& player) {
  return "<" + std::to_string(player.Hp) + "/" + std::to_string(player.MaxHp) + "hp " + std::to_string(player.Gold) +
         "gold> ";
}

void SendDuePrompts(GameState& state) {
  for (auto& [id, who] : state.Connections) {
    if (!who.NeedsPrompt || who.At == Stage::Leaving || who.Flood.Running()) continue;
    if (who.At == Stage::Playing) {
      SendPrompt(who, PromptText(PlayerOf(state, who)));
    } else {
      SendPrompt(who, LoginQuestion(who.At));
    }
  }
}

Player& PlayerOf(GameState& state, const Connection& who) {
  return state.Players.at(who.Name);
}

Connection* FindPlaying(GameState& state, std::string_view name) {
  for (auto& [id, who] : state.Connections) {
    if (who.At == Stage::Playing && StartsWith(who.Name, name)) return &who;
  }
  return nullptr;
}

}  // namespace corvid::practice

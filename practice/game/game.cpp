// SPDX-License-Identifier: GPL-3.0-or-later
#include "game/game.h"

#include <algorithm>
#include <set>

#include "game/chatter.h"
#include "game/commands.h"
#include "game/fight.h"
#include "game/login.h"
#include "game/output.h"
#include "game/self.h"

namespace corvid::practice {

Game::Game(std::uint64_t seed) : state_(seed) {
  for (const BeastKind& kind : BeastKinds()) state_.Beasts.push_back({kind.Hp, Never});
  Refill();
}

int Game::Connect(Millis now) {
  Advance(now);
  const int id = state_.NextId++;
  Connection& who = state_.Connections[id];
  who.Id = id;
  Greet(who);
  return id;
}

void Game::Input(int id, std::string_view bytes, Millis now) {
  Advance(now);
  const auto found = state_.Connections.find(id);
  if (found == state_.Connections.end()) return;
  Connection& who = found->second;
  const TelnetSink sink{
      [&](const std::string& line, bool cut) { TakeLine(who, line, cut, now); },
      [&](unsigned char verb, unsigned char option) { Negotiate(who, verb, option); },
      [&](unsigned char option, const std::string& payload) {
        if (option != telnet::TerminalType || payload.empty() || payload[0] != telnet::Is) return;
        who.Terminal.clear();
        for (char c : payload.substr(1)) {
          if (c >= ' ' && c <= '~') who.Terminal += c;
        }
      },
  };
  who.Input.Feed(bytes, sink);
}

void Game::TakeLine(Connection& who, const std::string& line, bool cut, Millis now) {
  if (who.At == Stage::Leaving) return;
  if (cut) {
    SendLine(who, "Your line was too long. Only its first " + std::to_string(TelnetInput::MaxLine) +
                      " characters were read.");
  }
  if (who.At == Stage::Playing) {
    RunCommand(state_, who, line, now);
  } else {
    LoginLine(state_, who, line, now);
  }
  SendDuePrompts(state_);
}

void Game::Negotiate(Connection& who, unsigned char verb, unsigned char option) {
  const bool wants = verb == telnet::Do;
  if (option == telnet::Msp && (wants || verb == telnet::Dont)) {
    who.Sounds = wants;
  } else if (option == telnet::TerminalType && verb == telnet::Will) {
    SendRaw(who, telnet::AskTerminalType());
  } else if (option == telnet::Echo && wants) {
    return;  // the answer to our own offer
  } else if (verb == telnet::Will) {
    SendRaw(who, telnet::Command(telnet::Dont, option));
  } else if (wants) {
    SendRaw(who, telnet::Command(telnet::Wont, option));
  }
}

void Game::Disconnect(int id) {
  const auto found = state_.Connections.find(id);
  if (found == state_.Connections.end()) return;
  LeaveGame(state_, found->second);
  state_.Connections.erase(found);
  std::erase_if(state_.Replies, [&](const Reply& reply) { return reply.Id == id; });
  SendDuePrompts(state_);
}

Millis Game::NextDue() const {
  Millis next = Never;
  const auto consider = [&next](Millis due) {
    if (due != Never && (next == Never || due < next)) next = due;
  };
  consider(state_.NextChat);
  consider(state_.NextHeal);
  consider(state_.NextRefill);
  for (const Reply& reply : state_.Replies) consider(reply.Due);
  for (const Beast& beast : state_.Beasts) consider(beast.Respawn);
  for (const auto& [id, who] : state_.Connections) consider(who.NextRound);
  return next;
}

void Game::Advance(Millis now) {
  for (Millis due = NextDue(); due != Never && due <= now; due = NextDue()) RunDue(due);
  SendDuePrompts(state_);
}

// Everything that is due at this one time. Each step sets its own next time, later than this one.
void Game::RunDue(Millis due) {
  for (std::size_t i = 0; i < state_.Beasts.size(); ++i) {
    if (state_.Beasts[i].Respawn != due) continue;
    state_.Beasts[i] = {BeastKinds()[i].Hp, Never};
    SendRoom(state_, BeastKinds()[i].Room, None,
             std::string("Out of the dark comes ") + std::string(BeastKinds()[i].Name) + ".");
  }
  for (auto& [id, who] : state_.Connections) {
    if (who.NextRound == due) FightRound(state_, who, due);
  }
  for (const Reply& reply : state_.Replies) {
    const auto to = state_.Connections.find(reply.Id);
    if (reply.Due != due || to == state_.Connections.end()) continue;
    SendSound(to->second, "chat.wav", 30);
    SendLine(to->second, reply.Text);
  }
  std::erase_if(state_.Replies, [&](const Reply& reply) { return reply.Due == due; });
  if (state_.NextChat == due) ChatterToAll(state_, due);
  if (state_.NextHeal == due) {
    state_.NextHeal = due + HealTime;
    Heal();
  }
  if (state_.NextRefill == due) {
    state_.NextRefill = due + RefillTime;
    Refill();
  }
}

void Game::Heal() {
  std::set<int> fought;
  for (auto& [id, who] : state_.Connections) {
    if (who.At != Stage::Playing) continue;
    if (who.Foe != None) {
      fought.insert(who.Foe);
      continue;
    }
    Player& player = PlayerOf(state_, who);
    player.Hp = std::min(player.MaxHp, player.Hp + 1);
  }
  for (std::size_t i = 0; i < state_.Beasts.size(); ++i) {
    const bool rests = state_.Beasts[i].Respawn == Never && fought.count(static_cast<int>(i)) == 0;
    if (rests) state_.Beasts[i].Hp = BeastKinds()[i].Hp;
  }
}

void Game::Refill() {
  for (std::size_t i = 0; i < ItemKinds().size(); ++i) {
    const int home = ItemKinds()[i].Home;
    if (home == None) continue;
    auto& there = state_.RoomItems[static_cast<std::size_t>(home)];
    if (std::count(there.begin(), there.end(), static_cast<int>(i)) == 0) there.push_back(static_cast<int>(i));
  }
}

std::vector<int> Game::Ids() const {
  std::vector<int> ids;
  for (const auto& [id, who] : state_.Connections) ids.push_back(id);
  return ids;
}

std::string Game::TakeOutput(int id) {
  const auto found = state_.Connections.find(id);
  if (found == state_.Connections.end()) return {};
  std::string out;
  out.swap(found->second.Out);
  return out;
}

bool Game::Leaving(int id) const {
  const auto found = state_.Connections.find(id);
  return found != state_.Connections.end() && found->second.At == Stage::Leaving;
}

bool Game::Pour(int id, std::size_t room) {
  const auto found = state_.Connections.find(id);
  if (found == state_.Connections.end() || !found->second.Flood.Running()) return false;
  PourFlood(found->second, room);
  SendDuePrompts(state_);
  return true;
}

}  // namespace corvid::practice

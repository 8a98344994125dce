// SPDX-License-Identifier: GPL-3.0-or-later
// Everything that changes while the game runs, owned by Game and handed to the routines.
#pragma once

#include <array>
#include <cstdint>
#include <map>
#include <set>
#include <string>
#include <vector>

#include "game/random.h"
#include "game/telnet.h"
#include "game/world.h"

namespace corvid::practice {

using Millis = std::int64_t;  // milliseconds of a clock that never goes back; where it starts does not matter
inline constexpr Millis Never = -1;

// The rhythm of the game.
inline constexpr Millis RoundTime = 2000;       // between two rounds of a fight
inline constexpr Millis FirstChatTime = 20000;  // after the first player has come
inline constexpr Millis HealTime = 10000;       // one hit point comes back, outside of fights
inline constexpr Millis RefillTime = 60000;     // what was taken grows back
inline constexpr Millis RespawnTime = 45000;    // after its end a beast is back
inline constexpr Millis ReplyTime = 1500;       // until the other "player" answers a tell

struct Player {
  std::string Name;
  std::string Password;
  int Hp = 20;
  int MaxHp = 20;
  int Gold = 15;
  int Points = 0;
  int Deaths = 0;
  int Room = StartRoom;
  std::vector<int> Carried;  // rows of ItemKinds; holds what is worn or wielded too
  int Wielded = None;        // row of ItemKinds
  std::set<int> Worn;        // rows of ItemKinds
  std::set<int> Seen;        // rooms whose hint was given
};

struct Beast {
  int Hp = 0;
  Millis Respawn = Never;  // when a dead one comes back; Never: it lives
};

struct FloodRun {
  int Total = 0;
  int Sent = 0;
  bool Colour = false;
  std::string Prompt;  // as it stood when the flood began
  bool Running() const { return Sent < Total; }
};

enum class Stage { Name, NewPassword, Password, Playing, Leaving };

struct Connection {
  int Id = 0;
  Stage At = Stage::Name;
  int WrongPasswords = 0;
  TelnetInput Input;
  std::string Out;           // waits to be sent
  bool AtPrompt = false;     // the last thing written was a prompt, whose line is still open
  bool NeedsPrompt = false;  // something was written since
  bool Sounds = false;       // the client understands sound lines, or the player asked for them
  bool Colour = true;
  bool Chatter = true;   // hears the other "players"
  std::string Terminal;  // what the client calls itself
  std::string Name;      // key of GameState::Players, from the name question on
  int Foe = None;        // row of Beasts that is fought
  Millis NextRound = Never;
  int ChatterAt = 0;  // next line of the chatter table for "chatter now"
  FloodRun Flood;
};

struct Reply {  // something said later to one connection
  Millis Due = 0;
  int Id = 0;
  std::string Text;
};

struct GameState {
  explicit GameState(std::uint64_t seed) : Dice(seed) {}

  Random Dice;
  std::map<int, Connection> Connections;
  std::map<std::string, Player> Players;              // by name; only as long as the game runs
  std::array<std::vector<int>, RoomCount> RoomItems;  // rows of ItemKinds
  std::vector<Beast> Beasts;                          // beside BeastKinds
  std::vector<Reply> Replies;
  int NextId = 1;
  int ChatterAt = 0;                                              // next line of the chatter table
  Millis NextChat = Never, NextHeal = Never, NextRefill = Never;  // Never while nobody plays
};

// One typed line on its way through a command.
struct Turn {
  GameState& State;
  Connection& Who;
  Player& Self;
  std::string Rest;  // what stands behind the command word, trimmed
  int Argument;      // of the command's row
  Millis Now;
};

}  // namespace corvid::practice

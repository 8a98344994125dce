// SPDX-License-Identifier: GPL-3.0-or-later
// Plays the practice game in memory, from a text that reads like a transcript.
#pragma once

#include <string>
#include <vector>

#include "game/game.h"

namespace corvid::practice {

// Without colours and telnet commands.
std::string Plain(std::string_view bytes);
std::vector<std::string> Lines(std::string_view text);

// One connection of a game.
struct TestPlayer {
  TestPlayer(Game& ofGame, Millis& atTime);
  std::string Bytes(std::string_view input);  // sends bytes as they are; what comes back, as it is
  std::string Type(const std::string& line);  // sends a line; what comes back, plain
  std::string Hear();                         // what has come since, plain
  void LogIn(const std::string& name, bool sounds = false);

  Game& Of;
  Millis& Now;
  int Id;
};

// Plays a transcript with one player, who is logged in as Anna (sounds on), in the square, with nothing waiting:
//   > line    type it
//   + 2000    let so many milliseconds pass
//   = line    this whole line is in what came since the last > or +
//   ~ text    this text is in it
//   ! text    this text is not
// Each expectation that fails is a failure of the test, with what came instead.
void Play(std::uint64_t seed, const std::string& transcript);

}  // namespace corvid::practice

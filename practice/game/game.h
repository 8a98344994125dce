// SPDX-License-Identifier: GPL-3.0-or-later
// The practice game without its sockets: bytes of the players in, bytes for the players out, and a clock that the
// caller moves. The same seed, bytes and times give the same output.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "game/state.h"

namespace corvid::practice {

class Game {
 public:
  explicit Game(std::uint64_t seed);

  int Connect(Millis now);  // greets a new connection and returns its number, from 1 up
  void Input(int id, std::string_view bytes, Millis now);
  void Disconnect(int id);  // the connection is gone; an unknown number is ignored

  void Advance(Millis now);  // does all that is due up to now, in its order
  Millis NextDue() const;    // when Advance has something to do next; Never: nothing waits

  std::vector<int> Ids() const;
  std::string TakeOutput(int id);  // what is to be sent since the last call
  bool Leaving(int id) const;      // close the connection once the output is sent
  // Takes up a running flood: adds about room bytes to the output. False: none is running.
  bool Pour(int id, std::size_t room);

 private:
  void TakeLine(Connection& who, const std::string& line, bool cut, Millis now);
  void Negotiate(Connection& who, unsigned char verb, unsigned char option);
  void RunDue(Millis due);
  void Heal();
  void Refill();

  GameState state_;
};

}  // namespace corvid::practice

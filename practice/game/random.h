// SPDX-License-Identifier: GPL-3.0-or-later
// The dice of the game. The same seed gives the same throws on every machine, which the distributions of the standard
// library do not promise.
#pragma once

#include <cstdint>

namespace corvid::practice {

class Random {
 public:
  explicit Random(std::uint64_t seed) : state_(seed) {}
  int Below(int limit);            // 0 to limit - 1; limit from 1
  int Between(int low, int high);  // both ends can be thrown
  bool Chance(int percent);        // true in so many of 100 throws

 private:
  std::uint64_t Next();

  std::uint64_t state_;
};

}  // namespace corvid::practice

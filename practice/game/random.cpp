// SPDX-License-Identifier: GPL-3.0-or-later
#include "game/random.h"

namespace corvid::practice {

// A counter whose bits are well mixed: enough for dice, and two lines long.
std::uint64_t Random::Next() {
  state_ += 0x9E3779B97F4A7C15U;
  std::uint64_t mixed = state_;
  mixed = (mixed ^ (mixed >> 30U)) * 0xBF58476D1CE4E5B9U;
  mixed = (mixed ^ (mixed >> 27U)) * 0x94D049BB133111EBU;
  return mixed ^ (mixed >> 31U);
}

int Random::Below(int limit) {
  return static_cast<int>(Next() % static_cast<std::uint64_t>(limit));
}

int Random::Between(int low, int high) {
  return low + Below(high - low + 1);
}

bool Random::Chance(int percent) {
  return Below(100) < percent;
}

}  // namespace corvid::practice

// SPDX-License-Identifier: GPL-3.0-or-later
// A storm of beeps from a server is one now and then: more could not be told apart by ear.
#pragma once

#include <cstdint>

namespace corvid {

class BeepGate {
 public:
  explicit BeepGate(int gap) : gap_(gap) {}  // milliseconds, at least, from one beep that sounds to the next

  // Whether a beep of this moment, in milliseconds of any clock that does not go back, is to sound.
  bool Passes(std::int64_t now) {
    if (sounded_ && now - last_ < gap_) return false;
    sounded_ = true;
    last_ = now;
    return true;
  }

 private:
  std::int64_t gap_;
  std::int64_t last_ = 0;
  bool sounded_ = false;
};

}  // namespace corvid

// SPDX-License-Identifier: GPL-3.0-or-later
// One slot of a pool of streams, whichever pool it is.
#pragma once

#include "sound/sound.h"

namespace corvid {

struct Sound::StreamSlot {
  std::unique_ptr<SoundPlayer>* Player = nullptr;
  char* Paused = nullptr;
  char* Held = nullptr;
  bool Loops = false;
};

}  // namespace corvid

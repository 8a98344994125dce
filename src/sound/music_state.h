// SPDX-License-Identifier: GPL-3.0-or-later
// The music slot: what PLAYLOOP keeps playing. Only sounds with a handle above 200 come here; the others loop by
// themselves.
#pragma once

#include <string>

#include "core/types.h"

namespace corvid {

struct MusicState {
  int16 MusicHandle = 0;  // 0: there is none
  std::string MusicFile;  // as the script named it
  int32 MusicVolume = 0;  // hundredths of a decibel
  int32 MusicPan = 0;
  int32 MusicFrequency = -1;  // -1: the file's own
};

}  // namespace corvid

// SPDX-License-Identifier: GPL-3.0-or-later
// "sounds.ini" of the user data folder: what a player may set about sounds.
#pragma once

#include <functional>
#include <string>
#include <string_view>

#include "core/types.h"

namespace corvid {

inline constexpr int16 DefaultSoundBuffers = 30;
inline constexpr int16 FewestSoundBuffers = 20;
inline constexpr int16 MostSoundBuffers = 100;

struct SoundSettings {
  int16 SoundBuffers = DefaultSoundBuffers;  // sounds that are kept loaded, and may be heard at once
  int16 OggBuffers = 20;
  int16 Mp3Buffers = 20;
  bool SoftwareBuffers = false;  // these three are kept and change nothing: all sounds are mixed by the program
  bool Hrtf = false;
  bool MinimalSounds = false;
};

// Reads the text of the file. complain gets each line that names no setting, in upper case and without its comment;
// reading then goes on. complain may pump events.
SoundSettings ReadSoundsIni(std::string_view text, const std::function<void(const std::string& line)>& complain);

}  // namespace corvid

// SPDX-License-Identifier: GPL-3.0-or-later
// How long a sound file lasts, told from its beginning and its size without decoding it.
#pragma once

#include <optional>
#include <string_view>

#include "platform/timed_player.h"

namespace corvid {

// head: the first bytes of the file, up to its data (64 KB do); size: of the whole file in bytes. Exact for WAV files;
// for MP3, OGG and FLAC what 128,000 bits a second come to. Nothing when it is none of these.
std::optional<SoundLength> LengthOfSound(std::string_view head, int64 size);

}  // namespace corvid

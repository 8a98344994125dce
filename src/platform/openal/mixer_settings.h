// SPDX-License-Identifier: GPL-3.0-or-later
// Which device, and who is told that it is gone.
#pragma once

#include <functional>
#include <string>

#include "platform/audio.h"

namespace corvid {

struct MixerSettings {
  std::string device{};   // name of the device; empty for the system's default
  bool loopback = false;  // no device at all: Render hands out what would be heard
  int loopbackRate = VoiceSampleRate;
  int loopbackChannels = 1;  // 1 or 2; sounds are heard on 2 only
  // Told once each time the device goes away, with a text for the player, from a thread of the mixer's own: it must
  // hand the text over and return, without a call to the mixer.
  std::function<void(std::string)> notice{};
};

}  // namespace corvid

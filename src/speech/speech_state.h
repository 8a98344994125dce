// SPDX-License-Identifier: GPL-3.0-or-later
// Settings of the six speech channels: 1 Incoming, 2 Entry, 3 Output, 4 Edit, 5 System, 6 User. Slot 0 is unused.
#pragma once

#include <array>
#include <string>

#include "core/types.h"

namespace corvid {

struct SpeechState {
  using Channels = std::array<int16, 7>;
  Channels SpeechType{};                                  // 0 none, 1 screen reader, 3 speech engine
  Channels VoiceIndex{};                                  // row of the engine's list, from 0
  Channels VoiceRate{};                                   // -10 to 21
  Channels VoiceVolume{0, 100, 100, 100, 100, 100, 100};  // 0 to 100
  Channels VoicePriority{};                               // 0 queued, 1 ahead, 2 over other speech
  Channels InterruptOwn{0, 1, 1, 1, 1, 1, 1};
  Channels InterruptOthers{};
  Channels NotInterruptedByOthers{};
  Channels NotInterruptedByControl{};
  Channels TypingEcho{0, 1, 1, 1, 1, 1, 1};
  Channels SpeakLabels{};
  Channels ChannelMuted{};  // not saved
  std::string LastSpoken;
};

}  // namespace corvid

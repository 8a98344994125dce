// SPDX-License-Identifier: GPL-3.0-or-later
// What a player does by ear and keys alone, without a window: trying out a voice, and answering a spoken question.
#pragma once

#include <string>
#include <string_view>

#include "core/types.h"
#include "core/upcalls.h"
#include "input/keyboard_state.h"
#include "platform/platform.h"

namespace corvid {

class Speech;

class VoiceKeys {
 public:
  VoiceKeys(Speech& speech, KeyboardState& keyboard, Platform& platform, Upcalls& upcalls)
      : speech_(speech), keyboard_(keyboard), platform_(platform), upcalls_(upcalls) {}

  // Each tries out one setting of channel 1's voice: keys raise and lower it, and a sample is heard after each change.
  // Enter or Escape ends it; the argument receives the setting reached. They do nothing unless the engine is the kind
  // of speech that was chosen. All keys are theirs meanwhile. Pump events.
  void AdjustVoice(int16& CurrentVoice);    // row of the engine's list; without a voice the player is told
  void AdjustRate(int16& CurrentRate);      // -10 to 21
  void AdjustVolume(int16& CurrentVolume);  // 0 to 100

  // Asks by voice and collects what is typed until Enter; each key is spoken. Empty after Escape, or when nobody is
  // there to answer. Pumps events.
  std::string EditBox(const std::string& message);

 private:
  struct Adjuster;
  void Adjust(const Adjuster& adjuster, int16& value);
  bool NextKey(int16& KeyCode, int16& Shift);
  void Say(std::string_view text);

  Speech& speech_;
  KeyboardState& keyboard_;
  Platform& platform_;
  Upcalls& upcalls_;
};

}  // namespace corvid

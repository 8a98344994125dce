// SPDX-License-Identifier: GPL-3.0-or-later
// The music that loops: one slot, and the timer that starts its file again when it has ended.
#pragma once

#include <memory>
#include <string>

#include "core/upcalls.h"
#include "platform/platform.h"
#include "script/script_state.h"
#include "sound/music_state.h"

namespace corvid {

class Sound;

class Music {
 public:
  Music(MusicState& music, ScriptState& script, Sound& sound, Platform& platform, Upcalls& upcalls);
  ~Music();
  Music(const Music&) = delete;
  Music& operator=(const Music&) = delete;

  void StartTimer2();
  // Starts the music again where it has ended; stops the timer when there is none any more. Never throws.
  void Timer2_Timer();
  bool Running() const;

 private:
  MusicState& music_;
  ScriptState& script_;
  Sound& sound_;
  Platform& platform_;
  Upcalls& upcalls_;
  std::unique_ptr<Timer> Timer2;
};

}  // namespace corvid

// SPDX-License-Identifier: GPL-3.0-or-later
#include "sound/music.h"

#include "core/trap.h"
#include "sound/sound.h"

namespace corvid {

namespace {

constexpr int TickMilliseconds = 500;
constexpr int16 FirstMusicHandle = 200;  // Kept: one below the first handle that there is.

}  // namespace

Music::Music(MusicState& music, ScriptState& script, Sound& sound, Platform& platform, Upcalls& upcalls)
    : music_(music), script_(script), sound_(sound), platform_(platform), upcalls_(upcalls) {}

Music::~Music() = default;

bool Music::Running() const {
  return Timer2 && Timer2->Enabled();
}

void Music::StartTimer2() {
  if (!Timer2) {
    Timer2 = platform_.timers.Create([this] { Timer2_Timer(); });
    Timer2->SetInterval(TickMilliseconds);
  }
  Timer2->SetEnabled(true);
}

void Music::Timer2_Timer() {
  if (music_.MusicHandle < FirstMusicHandle) {
    music_.MusicHandle = 0;
    script_.SystemValues[sysvar::MP3LOOP].assign(1, '0');
    if (Timer2) Timer2->SetEnabled(false);
    return;
  }
  Trap trap{upcalls_.errors, "timer2"};
  trap.Step([&] {
    if (sound_.IsPlaying(music_.MusicHandle)) return;
    const std::string file = music_.MusicFile;
    music_.MusicHandle = 0;  // what fails is not tried for ever
    int32 volume = music_.MusicVolume;
    const int16 handle =
        sound_.PlaySound(file, volume, music_.MusicFrequency, music_.MusicPan, 0, playflag::Loop);  // PUMP
    music_.MusicHandle = handle;
    script_.SystemValues[sysvar::MP3LOOP] = std::to_string(handle);
    StartTimer2();
  });
}

}  // namespace corvid

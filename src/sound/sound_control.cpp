// SPDX-License-Identifier: GPL-3.0-or-later
// What is done to a sound by its handle.
#include <algorithm>

#include "core/number.h"
#include "sound/sound.h"
#include "sound/stream_slot.h"

namespace corvid {

namespace {

constexpr int32 PositionStep = 4;
constexpr int32 StreamRange = 5000;  // of a stream's pan to either side, and of an OGG's volume below full
constexpr int32 Silent = -10000;

// An OGG knows volumes of 0 to 100 percent of its range, where 0 is silence.
int32 OggVolume(int32 volume) {
  const double percent = std::clamp((static_cast<double>(volume) + StreamRange) / 50, 0.0, 100.0);
  const int32 whole = ToInt32(percent);
  return whole == 0 ? Silent : whole * 50 - StreamRange;
}

}  // namespace

bool Sound::IsPlaying(int16 Index) {
  SoundPlayer* const player = PlayerOf(Index);
  if (player == nullptr) return false;
  if (player->IsPlaying()) return true;
  // Kept: an MP3 counts as playing until it has come to its end, also while it is held.
  return Index >= FirstMp3 && Mp3Held[Index - FirstMp3 + 1] != 0;
}

void Sound::SetVolume(int16 Index, int32 Volume) {
  SoundPlayer* const player = PlayerOf(Index);
  if (player == nullptr) return;
  player->SetVolume(Index >= FirstOgg && Index < FirstMp3 ? OggVolume(Volume) : std::clamp(Volume, Silent, 0));
}

void Sound::SetPan(int16 Index, int32 Pan) {
  SoundPlayer* const player = PlayerOf(Index);
  if (player == nullptr) return;
  if (Index < FirstOgg) {
    if (!SoundBuffer3D[Index]) player->SetPan(Pan);
    return;
  }
  const int32 held = std::clamp(Pan, -StreamRange, StreamRange);
  player->SetPan(Index < FirstMp3 ? ToInt32(held / 100.0) * 100 : held);  // an OGG takes steps of a hundred
}

void Sound::SetFrequency(int16 Index, int32 Frequency) {
  SoundPlayer* const player = PlayerOf(Index);
  if (player == nullptr) return;
  if (Index < FirstMp3) return player->SetFrequency(Frequency);
  // Kept: whatever the file's own frequency is, 22050 is the speed at which an MP3 was made.
  constexpr double ownSpeed = 22050.0;
  constexpr double fastest = 1000000.0;
  if (Frequency <= 0) return;
  player->SetFrequency(ToInt32(std::min(fastest, Mp3Frequency[Index - FirstMp3 + 1] * (Frequency / ownSpeed))));
}

void Sound::StopPlay(int16 Index) {
  if (Index < FirstOgg) {
    if (SoundPlayer* const player = BufferOf(Index)) player->Stop();
    return;
  }
  StreamSlot slot;
  if (!FindStream(Index, slot)) return;
  if (Index < FirstMp3) {
    ToggleOgg(Index);
  } else {
    HoldStream(slot);
  }
  *slot.Paused = 1;
}

void Sound::DeleteSound(int16& Index) {
  const int16 handle = Index;
  Index = 0;
  if (handle >= 1 && handle <= MostSoundBuffers) return ClearBuffer(handle);
  StreamSlot slot;
  if (FindStream(handle, slot)) DropStream(slot);
}

void Sound::DeleteSound2(int16& Index) {
  const int16 handle = Index;
  Index = 0;
  if (handle >= 1 && handle <= MostSoundBuffers) return ClearBuffer(handle);
  const int32 place = handle - FirstOgg + 1;
  if (place < 1 || place > OggHandle.UBound() || !OggHandle[place]) return;
  OggHandle[place]->Stop();
  OggPaused[place] = OggHeld[place] = 0;
}

void Sound::ResetSounds() {
  KillAllSounds();
  DSInit();  // PUMP
}

void Sound::ShutdownForm1() {
  for (int32 slot = 1; slot <= OggHandle.UBound(); ++slot) OggHandle[slot].reset();
  for (int16 slot = 1; slot <= settings_.SoundBuffers; ++slot) ClearBuffer(slot);
  platform_.events.DoEvents();  // PUMP
}

void Sound::PlayOpenedSound(int16 Index, int32 StartPosition, int16 DSFlags) {
  if (IsPlaying(Index)) StopPlay(Index);
  const int64 position = int64{StartPosition} + StartPosition % PositionStep;  // Kept: up by what is over
  SoundPlayer* const player = PlayerOf(Index);
  if (player == nullptr) return;
  if (Index != MostSoundBuffers) player->SetPosition(position);  // Kept: the last buffer plays from where it was
  if (Index <= MostSoundBuffers) player->Play((DSFlags & playflag::Loop) != 0);
}

void Sound::SetStartPosition(int16 Index) {
  if (SoundPlayer* const player = BufferOf(Index)) player->SetPosition(0);
}

int32 Sound::GetFrequency(int16 Index) const {
  const SoundPlayer* const player = BufferOf(Index);
  return player == nullptr ? 0 : player->Frequency();
}

}  // namespace corvid

// SPDX-License-Identifier: GPL-3.0-or-later
// The pools of streamed files. They are alike; what differs is how slots of the two are found and told about.
#include <algorithm>

#include "core/number.h"
#include "core/text.h"
#include "sound/sound.h"
#include "sound/stream_slot.h"

namespace corvid {

namespace {

constexpr int16 StopIcon = 0x10;
constexpr int16 HighestTier = 2;

}  // namespace

Sound::StreamPool Sound::OggPool() {
  return {FirstOgg, settings_.OggBuffers, OggHandle, OggPriority, OggPaused, OggName, OggHeld, OggLoops};
}

Sound::StreamPool Sound::Mp3Pool() {
  return {FirstMp3, settings_.Mp3Buffers, Mp3Control, Mp3Priority, Mp3Paused, Mp3Name, Mp3Held, Mp3Loops};
}

// The library that would stream it is not there, and the program was always ended over that: in order, so that nothing
// of the player's is lost.
void Sound::EndWithoutOgg() {
  if (ending_) return;
  ending_ = true;
  Tell("OGG DLL is missing.", StopIcon, "Error");  // PUMP
  ShutdownForm1();                                 // PUMP
  upcalls_.screens.quit(true);
}

int16 Sound::PlayOGGSound(const std::string& waveFileIn, int32 Volume, int32 Frequency, int32 Pan, int16 DSFlags) {
  if (!oggTick_) {
    EndWithoutOgg();
    return 0;
  }
  return PlayStream(OggPool(), {Upper(waveFileIn), waveFileIn, Volume, Frequency, Pan, DSFlags},
                    LocateAtHome(waveFileIn));
}

int16 Sound::PlayMP3Sound(const std::string& waveFileIn, int32 Volume, int32 Frequency, int32 Pan, int16 DSFlags) {
  return PlayStream(Mp3Pool(), {Upper(waveFileIn), waveFileIn, Volume, Frequency, Pan, DSFlags}, Locate(waveFileIn));
}

// An empty slot or one that has ended, those of low priority first; 0 when there is none.
int16 Sound::ChooseStreamSlot(const StreamPool& pool) {
  for (int16 tier = -1; tier <= HighestTier; ++tier) {
    for (int16 slot = 1; slot <= pool.Count; ++slot) {
      const bool candidate = pool.Priority[slot] == tier || !pool.Player[slot];
      if (!candidate || IsPlaying(static_cast<int16>(pool.First + slot - 1))) continue;
      pool.Player[slot].reset();
      pool.Paused[slot] = pool.Held[slot] = 0;
      return slot;
    }
  }
  return 0;
}

int16 Sound::PlayStream(const StreamPool& pool, const Request& request, const std::string& path) {
  const bool ogg = pool.First == FirstOgg;
  if (path.empty()) {
    if (!QuietFileErrors) Tell("File: " + request.Name + " does not exist!", StopIcon, "File not found.");
    return 0;
  }
  int16 slot = ChooseStreamSlot(pool);
  if (slot == 0) {
    if (ogg) Tell("insufficient OGG Handles available.", StopIcon, "Error!");
    return 0;
  }
  if ((request.Flags & playflag::ThreeD) != 0) {
    Tell((ogg ? "Standard OGG Files can not be 3d. File: " : "Standard MP3 Files can not be 3d. File: ") + request.Name,
         StopIcon, "Error.");
    slot = ChooseStreamSlot(pool);  // the box let others use the slot
    if (slot == 0) return 0;
  }
  const auto handle = static_cast<int16>(pool.First + slot - 1);
  std::string error;
  // A stream is heard in the background too, as it always was: it knows nothing of the window.
  pool.Player[slot] = platform_.sounds.CreateStreamed(path, true, LabelOf(handle, path), error);
  pool.Paused[slot] = pool.Held[slot] = 0;
  pool.Name[slot] = request.Name;
  if (!pool.Player[slot]) return 0;
  if (!ogg) Mp3Frequency[slot] = pool.Player[slot]->Frequency();
  // Kept: an MP3 ends even where a loop is asked for; the keeper of the music starts it again.
  pool.Loops[slot] = ogg && (request.Flags & playflag::Loop) != 0 ? 1 : 0;
  pool.Priority[slot] = PriorityOfFlags(request.Flags);
  ApplyTo(pool, handle, request);
  return handle;
}

// Before the first sample is heard, not after it.
void Sound::ApplyTo(const StreamPool& pool, int16 handle, const Request& request) {
  const int32 slot = handle - pool.First + 1;
  if (request.Volume < 0) SetVolume(handle, request.Volume);
  if (request.Pan != 0) SetPan(handle, request.Pan);
  if (request.Frequency > -1) SetFrequency(handle, request.Frequency);
  Started(handle);
  if ((request.Flags & playflag::PrepareOnly) != 0) {
    pool.Paused[slot] = pool.Held[slot] = 1;
  } else {
    pool.Player[slot]->Play(pool.Loops[slot] != 0);
  }
}

bool Sound::FindStream(int16 Index, StreamSlot& slot) {
  if (Index < FirstOgg || Index > LastHandle) return false;
  const StreamPool pool = Index >= FirstMp3 ? Mp3Pool() : OggPool();
  const int32 place = Index - pool.First + 1;
  if (place > pool.Player.UBound()) return false;
  slot = {&pool.Player[place], &pool.Paused[place], &pool.Held[place], pool.Loops[place] != 0};
  return true;
}

void Sound::DropStream(const StreamSlot& slot) {
  slot.Player->reset();
  *slot.Paused = *slot.Held = 0;
}

void Sound::HoldStream(const StreamSlot& slot) {
  if (!*slot.Player) return;
  if ((*slot.Player)->IsPlaying()) *slot.Held = 1;
  (*slot.Player)->Stop();
}

void Sound::RunStream(const StreamSlot& slot) {
  if (!*slot.Player || *slot.Held == 0) return;  // what has ended does not begin again
  *slot.Held = 0;
  (*slot.Player)->Play(slot.Loops);
}

// What holds an OGG also lets it go on, turn by turn.
void Sound::ToggleOgg(int16 Index) {
  StreamSlot slot;
  if (!FindStream(Index, slot)) return;
  if (*slot.Held != 0) {
    RunStream(slot);
  } else {
    HoldStream(slot);
  }
}

void Sound::KillAllSounds() {
  for (int32 slot = 1; slot <= OggHandle.UBound(); ++slot) OggHandle[slot].reset();
  for (int32 slot = 1; slot <= Mp3Control.UBound(); ++slot) Mp3Control[slot].reset();
  for (auto* column : {&OggPaused, &OggHeld, &Mp3Paused, &Mp3Held})
    for (int32 slot = 1; slot <= column->UBound(); ++slot) (*column)[slot] = 0;
}

void Sound::PauseAllOGGSounds() {
  for (int32 slot = 1; slot <= OggHandle.UBound(); ++slot)
    if (const auto handle = static_cast<int16>(FirstOgg + slot - 1); IsPlaying(handle)) StopPlay(handle);
}

void Sound::PauseAllMP3Sounds() {
  for (int32 slot = 1; slot <= Mp3Control.UBound(); ++slot)
    if (const auto handle = static_cast<int16>(FirstMp3 + slot - 1); IsPlaying(handle)) StopPlay(handle);
}

void Sound::UnPauseAllOGGSounds() {
  for (int32 slot = 1; slot <= OggHandle.UBound(); ++slot) UnpauseOneOGG(static_cast<int16>(FirstOgg + slot - 1));
}

void Sound::UnPauseAllMP3Sounds() {
  for (int32 slot = 1; slot <= Mp3Control.UBound(); ++slot) UnpauseOneMP3(static_cast<int16>(FirstMp3 + slot - 1));
}

void Sound::UnpauseOneOGG(int16 Index) {
  StreamSlot slot;
  if (Index >= FirstMp3 || !FindStream(Index, slot)) return;
  if (*slot.Paused != 0 && !IsPlaying(Index)) ToggleOgg(Index);
  *slot.Paused = 0;
}

void Sound::UnpauseOneMP3(int16 Index) {
  StreamSlot slot;
  if (Index < FirstMp3 || !FindStream(Index, slot)) return;
  if (*slot.Paused != 0) RunStream(slot);
  *slot.Paused = 0;
}

}  // namespace corvid

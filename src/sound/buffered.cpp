// SPDX-License-Identifier: GPL-3.0-or-later
// The buffers: files that are decoded whole and stay loaded, so that a repeat costs nothing.
#include <algorithm>

#include "core/text.h"
#include "sound/sound.h"

namespace corvid {

namespace {

constexpr int16 InformationIcon = 0x40;
constexpr int32 Quietest = -10000;
constexpr int16 NeverEvicted = 3;
constexpr int32 PositionStep = 4;  // bytes of a stereo sample

bool Wants3D(int16 flags) {
  return (flags & playflag::ThreeD) != 0;
}

int32 Capabilities(int16 flags, bool software) {
  int32 can = buffercan::Frequency | buffercan::Volume;
  if (Wants3D(flags)) {
    can |= buffercan::ThreeD;
  } else {
    can |= buffercan::Pan;
    if ((flags & playflag::NotStatic) == 0) can |= buffercan::Static;
    if ((flags & playflag::InBackground) != 0) can |= buffercan::GlobalFocus;
  }
  return software ? can | buffercan::Software : can;
}

WaveFormat FormatOf(const SoundData& data) {
  WaveFormat format;
  format.Channels = data.Channels();
  format.SamplesPerSecond = data.Frequency();
  format.BlockAlign = static_cast<int16>(2 * data.Channels());
  format.BytesPerSecond = static_cast<int32>(int64{format.BlockAlign} * data.Frequency());
  return format;
}

}  // namespace

// The loaded slot of the same file, or 0. start moves to in front of an idle slot that is to go first.
int16 Sound::FindMatch(const Request& request, int16& start) {
  for (int16 slot = 1; slot <= settings_.SoundBuffers; ++slot) {
    if (SoundName[slot] == request.Name && SoundBuffer3D[slot].has_value() == Wants3D(request.Flags)) return slot;
    if (SoundPriority[slot] == -1 && !IsPlaying(slot)) start = static_cast<int16>(slot - 1);
  }
  return 0;
}

int16 Sound::PlayBuffered(const Request& request, int32& Volume, int32 StartPosition) {
  int16 start = random_(settings_.SoundBuffers);
  const int16 match = FindMatch(request, start);
  if (match != 0) {
    CurrentSlot = match;
    const bool playing = IsPlaying(match);
    if (playing && (request.Flags & playflag::OnlyOne) != 0) return 0;
    const bool reuse = (!playing && (request.Flags & playflag::Duplicate) == 0) || (request.Flags & playflag::Restart);
    if (reuse) return StartBuffer(match, request, Volume, StartPosition);
  }
  const int16 slot = Evict(start);
  if (slot == 0) return 0;
  if (!Fill(slot, match, request)) return 0;
  return StartBuffer(slot, request, Volume, StartPosition);
}

// An empty slot, or an idle one of the lowest priority there is, from behind start on; 0 when there is none. What plays
// and what has priority 3 stays.
int16 Sound::Evict(int16 start) {
  const int16 count = settings_.SoundBuffers;
  CurrentSlot = start;
  for (int16 level = 0; level <= NeverEvicted;) {
    CurrentSlot = CurrentSlot >= count ? int16{1} : static_cast<int16>(CurrentSlot + 1);
    const int16 priority = SoundPriority[CurrentSlot];
    if (!Loaded(CurrentSlot) || (priority < NeverEvicted && priority < level && !IsPlaying(CurrentSlot))) {
      ClearBuffer(CurrentSlot);
      return CurrentSlot;
    }
    // A start in front of slot 1 is met again at the last one.
    if (CurrentSlot == start || (start < 1 && CurrentSlot == count)) ++level;
  }
  return 0;
}

// Puts the sound into an empty slot: samples that are loaded already are shared.
bool Sound::Fill(int16 slot, int16 match, const Request& request) {
  SoundPriority[slot] = 0;
  if (match != 0 && DuplicateSoundBuffer(match, slot)) {
    // Kept: a duplicate has no name, so it is never found again, and priority 0.
    if (Wants3D(request.Flags)) Make3D(slot, request.Flags);
    return true;
  }
  if (Open(slot, request.Name, request.Asked, request.Flags) == 0) return false;  // PUMP
  if (Wants3D(request.Flags)) Make3D(slot, request.Flags);
  SoundName[slot] = request.Name;
  SoundPriority[slot] = PriorityOfFlags(request.Flags);
  return true;
}

bool Sound::DuplicateSoundBuffer(int16 from, int16 to) {
  if (!SoundSamples[from] || from == to) return false;
  SoundLabel label = labels_[from];
  label.handle = to;
  const bool inBackground = (SoundDesc[from].Flags & buffercan::GlobalFocus) != 0;
  SoundBuffer[to] = platform_.sounds.CreatePlayer(SoundSamples[from], inBackground, label);
  if (!SoundBuffer[to]) return false;
  labels_[to] = label;
  SoundSamples[to] = SoundSamples[from];
  SoundFormat[to] = SoundFormat[from];
  SoundDesc[to] = SoundDesc[from];
  NaturalFrequency[to] = NaturalFrequency[from];
  return true;
}

void Sound::Make3D(int16 slot, int16 flags) {
  SoundBuffer3D[slot].emplace();
  if ((flags & playflag::Cones) != 0) SoundBuffer3D[slot] = Buffer3D{0, 360};
}

int16 Sound::OpenSound(int16 Index, const std::string& waveFileIn, int16 DSFlags) {
  return Open(Index, waveFileIn, waveFileIn, DSFlags);
}

int16 Sound::Open(int16 slot, const std::string& name, const std::string& asked, int16 flags) {
  const std::string path = Locate(asked);
  if (path.empty()) return 0;
  if (slot < 1 || slot > MostSoundBuffers) return NotOpened(name);
  SoundBuffer[slot].reset();
  BufferDescription description;
  description.Flags = Capabilities(flags, settings_.SoftwareBuffers);
  std::string error;
  const SoundLabel label = LabelOf(slot, path);
  const std::shared_ptr<const SoundData> data = platform_.sounds.Load(path, error);
  std::unique_ptr<SoundPlayer> player;
  if (data) player = platform_.sounds.CreatePlayer(data, (description.Flags & buffercan::GlobalFocus) != 0, label);
  // A device that is missing has been told, once and for all; a file that is no sound has not.
  if (!player && data && deviceMissing_) return 0;
  if (!player) return NotOpened(name);
  description.Format = FormatOf(*data);
  description.BufferBytes = data->Bytes();
  SoundBuffer[slot] = std::move(player);
  SoundSamples[slot] = data;
  SoundFormat[slot] = description.Format;
  SoundDesc[slot] = description;
  NaturalFrequency[slot] = data->Frequency();
  labels_[slot] = label;
  SoundBuffer3D[slot].reset();
  if (!Wants3D(flags) || data->Channels() != 2) return 1;
  Tell(name + " will not play.  Trying to use a stereo sound in a 3D buffer.", InformationIcon, "Warning ");
  return SoundSamples[slot] == data ? int16{1} : int16{0};  // the box let others use the slot
}

int16 Sound::NotOpened(const std::string& name) {
  if (!QuietFileErrors) Tell("Error opening file " + name, box::OkOnly, "Corvid");  // PUMP
  return 0;
}

int16 Sound::StartBuffer(int16 slot, const Request& request, int32& Volume, int32 StartPosition) {
  SoundPlayer* const player = BufferOf(slot);
  if (player == nullptr) return 0;
  Volume = std::clamp(Volume, Quietest, 0);
  player->SetVolume(Volume);
  if (!SoundBuffer3D[slot]) player->SetPan(request.Pan);
  if (request.Frequency > 0) player->SetFrequency(request.Frequency);
  player->SetPosition(StartPosition - StartPosition % PositionStep);
  Started(slot);
  if ((request.Flags & playflag::PrepareOnly) == 0) player->Play((request.Flags & playflag::Loop) != 0);
  return slot;
}

void Sound::ClearBuffer(int16 slot) {
  SoundName[slot].clear();
  SoundPriority[slot] = 0;
  SoundBuffer[slot].reset();
  SoundBuffer3D[slot].reset();
  SoundSamples[slot].reset();
}

}  // namespace corvid

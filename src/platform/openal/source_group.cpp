// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/openal/source_group.h"

#include <algorithm>

namespace corvid {

bool SourceGroup::Create() {
  alGetError();
  alGenSources(count_, ids_.data());
  if (alGetError() == AL_NO_ERROR) return true;
  ids_ = {};
  return false;
}

void SourceGroup::Delete() {
  if (!Exist()) return;
  Stop();
  for (std::size_t i = 0; i < Count(); ++i) alSourcei(ids_[i], AL_BUFFER, 0);
  alDeleteSources(count_, ids_.data());
  ids_ = {};
}

void SourceGroup::SetGains(const std::array<float, 2>& gains) {
  alDeferUpdatesSOFT();
  for (std::size_t i = 0; i < Count(); ++i) alSourcef(ids_[i], AL_GAIN, gains[i]);
  alProcessUpdatesSOFT();
}

void SourceGroup::SetPitch(float pitch) {
  alDeferUpdatesSOFT();
  for (std::size_t i = 0; i < Count(); ++i) alSourcef(ids_[i], AL_PITCH, pitch);
  alProcessUpdatesSOFT();
}

ALint SourceGroup::State() const {
  ALint state = AL_STOPPED;
  alGetSourcei(ids_[0], AL_SOURCE_STATE, &state);
  return state;
}

bool SourceGroup::AllPlaying() const {
  for (std::size_t i = 0; i < Count(); ++i) {
    ALint state = AL_STOPPED;
    alGetSourcei(ids_[i], AL_SOURCE_STATE, &state);
    if (state != AL_PLAYING) return false;
  }
  return true;
}

ALint SourceGroup::Offset() const {
  ALint offset = 0;
  alGetSourcei(ids_[0], AL_SAMPLE_OFFSET, &offset);
  return std::max(offset, 0);
}

void SourceGroup::SetOffset(ALint frame) {
  for (std::size_t i = 0; i < Count(); ++i) alSourcei(ids_[i], AL_SAMPLE_OFFSET, frame);
}

ALint SourceGroup::Processed() const {
  ALint fewest = 0;
  for (std::size_t i = 0; i < Count(); ++i) {
    ALint processed = 0;
    alGetSourcei(ids_[i], AL_BUFFERS_PROCESSED, &processed);
    fewest = i == 0 ? processed : std::min(fewest, processed);
  }
  return fewest;
}

}  // namespace corvid

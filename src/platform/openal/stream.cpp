// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/openal/stream.h"

#include <algorithm>

namespace corvid {

namespace {

constexpr std::size_t BlockSamples = 4096;             // 0.19 s
constexpr std::size_t HandedLimit = 4 * BlockSamples;  // what the library holds at most, about

}  // namespace

SourceFeed::~SourceFeed() {
  Purge();
  alDeleteSources(1, &source_);
  if (!spare_.empty()) alDeleteBuffers(static_cast<ALsizei>(spare_.size()), spare_.data());
}

ALint SourceFeed::State() const {
  ALint state = AL_STOPPED;
  alGetSourcei(source_, AL_SOURCE_STATE, &state);
  return state;
}

void SourceFeed::Append(const int16* samples, std::size_t count) {
  if (taken_ > samples_.size() / 2) {
    samples_.erase(samples_.begin(), samples_.begin() + static_cast<std::ptrdiff_t>(taken_));
    taken_ = 0;
  }
  samples_.insert(samples_.end(), samples, samples + count);
  Feed();
}

void SourceFeed::Purge() {
  alSourceStop(source_);
  TakeBack(static_cast<ALint>(handed_.size()));
  alSourceRewind(source_);
  samples_.clear();
  samples_.shrink_to_fit();
  taken_ = 0;
}

void SourceFeed::SetPaused(bool paused) {
  if (paused == paused_) return;
  paused_ = paused;
  if (paused) {
    if (State() == AL_PLAYING) alSourcePause(source_);
  } else {
    Feed();
  }
}

void SourceFeed::SetVolume(double volume) {
  alSourcef(source_, AL_GAIN, static_cast<ALfloat>(std::clamp(volume, 0.0, 1.0)));
}

std::size_t SourceFeed::Waiting() {
  Feed();
  ALint offset = 0;
  alGetSourcei(source_, AL_SAMPLE_OFFSET, &offset);
  const std::size_t played = std::min(static_cast<std::size_t>(std::max(offset, 0)), handedSamples_);
  return samples_.size() - taken_ + handedSamples_ - played;
}

void SourceFeed::Feed() {
  if (State() == AL_STOPPED) {
    TakeBack(static_cast<ALint>(handed_.size()));  // it ran dry, so all was played
    alSourceRewind(source_);                       // or blocks that wait for the end of a pause would count as played
  } else {
    ALint played = 0;
    alGetSourcei(source_, AL_BUFFERS_PROCESSED, &played);
    TakeBack(played);
  }
  const std::size_t before = handed_.size();
  HandOver();
  if (!paused_ && !handed_.empty()) StartIfStanding(handed_.size() - before);
}

void SourceFeed::TakeBack(ALint played) {
  for (; played > 0 && !handed_.empty(); --played) {
    ALuint buffer = 0;
    alSourceUnqueueBuffers(source_, 1, &buffer);
    handedSamples_ -= handed_.front().count;
    spare_.push_back(handed_.front().buffer);
    handed_.pop_front();
  }
}

void SourceFeed::HandOver() {
  while (taken_ < samples_.size() && handedSamples_ < HandedLimit) {
    if (spare_.empty()) {
      ALuint buffer = 0;
      alGetError();
      alGenBuffers(1, &buffer);
      if (alGetError() != AL_NO_ERROR) return;  // no memory: what is handed over plays on, the rest waits
      spare_.push_back(buffer);
    }
    const ALuint buffer = spare_.back();
    spare_.pop_back();
    const std::size_t count = std::min(BlockSamples, samples_.size() - taken_);
    alBufferData(buffer, AL_FORMAT_MONO16, samples_.data() + taken_, static_cast<ALsizei>(count * sizeof(int16)),
                 VoiceSampleRate);
    alSourceQueueBuffers(source_, 1, &buffer);
    taken_ += count;
    handed_.push_back({buffer, count});
    handedSamples_ += count;
  }
  if (taken_ == samples_.size()) {
    samples_.clear();
    taken_ = 0;
  }
}

void SourceFeed::StartIfStanding(std::size_t newlyHanded) {
  const ALint state = State();
  if (state == AL_PLAYING) return;
  if (state == AL_STOPPED && newlyHanded < handed_.size()) {
    // It ran dry between the look at its state and the new blocks. Started as it is, it would say the old ones again.
    std::deque<Handed> fresh(handed_.end() - static_cast<std::ptrdiff_t>(newlyHanded), handed_.end());
    for (std::size_t i = 0; i < handed_.size(); ++i) {
      ALuint buffer = 0;
      alSourceUnqueueBuffers(source_, 1, &buffer);
      if (i + newlyHanded < handed_.size()) {
        spare_.push_back(buffer);
        handedSamples_ -= handed_[i].count;
      }
    }
    alSourceRewind(source_);
    for (const Handed& block : fresh) alSourceQueueBuffers(source_, 1, &block.buffer);
    handed_ = std::move(fresh);
    if (handed_.empty()) return;
  }
  alSourcePlay(source_);
}

}  // namespace corvid

// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/openal/stream.h"

#include <algorithm>

namespace corvid {

namespace {

constexpr std::size_t BlockSamples = 4096;             // 0.19 s
constexpr std::size_t HandedLimit = 4 * BlockSamples;  // what the library holds at most, about
constexpr std::chrono::milliseconds FeedInterval{20};  // the library holds 700 ms, so this is early enough

}  // namespace

MixerStream::MixerStream(DeviceCore& core) : core_(core), queue_(core, 1, VoiceSampleRate) {}

std::unique_ptr<MixerStream> MixerStream::Make(DeviceCore& core) {
  std::unique_ptr<MixerStream> stream(new MixerStream(core));
  const DeviceTurn turn(core);
  core.Join(*stream);
  if (!stream->queue_.Create()) {
    core.Leave(*stream);
    return nullptr;
  }
  stream->queue_.Run();
  return stream;
}

MixerStream::~MixerStream() {
  const DeviceTurn turn(core_);
  core_.Leave(*this);
  queue_.Destroy();
}

void MixerStream::Queue(const int16* samples, std::size_t count) {
  const DeviceTurn turn(core_);
  if (taken_ > samples_.size() / 2) {
    samples_.erase(samples_.begin(), samples_.begin() + static_cast<std::ptrdiff_t>(taken_));
    taken_ = 0;
  }
  samples_.insert(samples_.end(), samples, samples + count);
  HandOver();
  if (HasMore()) core_.Hurry();
}

void MixerStream::Purge() {
  const DeviceTurn turn(core_);
  queue_.Clear();
  samples_.clear();
  samples_.shrink_to_fit();
  taken_ = 0;
}

void MixerStream::SetPaused(bool paused) {
  const DeviceTurn turn(core_);
  if (paused == paused_) return;
  paused_ = paused;
  if (paused) {
    queue_.Hold();
    return;
  }
  queue_.Run();
  HandOver();
  if (HasMore()) core_.Hurry();
}

void MixerStream::SetVolume(double volume) {
  const DeviceTurn turn(core_);
  volume_ = std::clamp(volume, 0.0, 1.0);
  ApplyVolume();
}

void MixerStream::ApplyVolume() {
  queue_.Sources().SetGains({static_cast<float>(volume_)});
}

std::size_t MixerStream::Waiting() {
  const DeviceTurn turn(core_);
  HandOver();
  return samples_.size() - taken_ + queue_.Unheard();
}

std::chrono::milliseconds MixerStream::Feed() {
  if (HasMore()) HandOver();
  return HasMore() ? FeedInterval : std::chrono::milliseconds(0);
}

void MixerStream::HandOver() {
  queue_.Collect();
  while (taken_ < samples_.size() && queue_.Frames() < HandedLimit) {
    const std::size_t count = std::min(BlockSamples, samples_.size() - taken_);
    const auto first = samples_.begin() + static_cast<std::ptrdiff_t>(taken_);
    SampleBlock block;
    block.samples.assign(first, first + static_cast<std::ptrdiff_t>(count));
    if (!queue_.Push(block)) return;  // no memory: what is handed over plays on, the rest waits
    taken_ += count;
  }
  if (taken_ == samples_.size()) {
    samples_.clear();
    taken_ = 0;
  }
}

void MixerStream::EnterDevice() {
  if (queue_.EnterDevice()) ApplyVolume();
}

}  // namespace corvid

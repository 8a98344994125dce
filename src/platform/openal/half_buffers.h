// SPDX-License-Identifier: GPL-3.0-or-later
// A sound that is loaded whole, and how the device holds it.
#pragma once

#include <array>
#include <memory>
#include <utility>

#include "platform/openal/device.h"
#include "platform/openal/sound_file.h"
#include "platform/sounds.h"

namespace corvid {

class MemorySound : public SoundData {
 public:
  explicit MemorySound(SoundSamples samples) : samples_(std::move(samples)) {}
  int16 Channels() const override { return samples_.channels; }
  int32 Frequency() const override { return samples_.frequency; }
  int64 Bytes() const override { return static_cast<int64>(samples_.samples.size() * sizeof(int16)); }
  int64 Frames() const { return static_cast<int64>(samples_.samples.size()) / samples_.channels; }
  const SoundSamples& Samples() const { return samples_; }

 private:
  SoundSamples samples_;
};

// The left side alone and the right side alone, both in stereo: played in step, each with a gain of its own, they are
// the sound with an exact balance, which a position in space would not give.
class HalfBuffers {
 public:
  // Within a DeviceTurn, as is the end. nullptr when there is no memory.
  static std::shared_ptr<HalfBuffers> Make(const MemorySound& sound);
  ~HalfBuffers();
  HalfBuffers(const HalfBuffers&) = delete;
  HalfBuffers& operator=(const HalfBuffers&) = delete;
  ALuint Id(std::size_t side) const { return ids_[side]; }

 private:
  HalfBuffers() = default;
  std::array<ALuint, 2> ids_{};
};

}  // namespace corvid

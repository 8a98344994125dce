// SPDX-License-Identifier: GPL-3.0-or-later
// One voice's samples on their way into the library.
#pragma once

#include <vector>

#include "platform/audio.h"
#include "platform/openal/block_queue.h"

namespace corvid {

// A bounded part of the samples lies in the library's own queue; the rest waits here, so that a purge of hours of
// speech is as quick as one of a word.
class MixerStream : public PcmStream, public Audible {
 public:
  // nullptr when the device has no source left.
  static std::unique_ptr<MixerStream> Make(DeviceCore& core);
  ~MixerStream() override;
  MixerStream(const MixerStream&) = delete;
  MixerStream& operator=(const MixerStream&) = delete;

  void Queue(const int16* samples, std::size_t count) override;
  void Purge() override;
  void SetPaused(bool paused) override;
  void SetVolume(double volume) override;
  std::size_t Waiting() override;

  std::chrono::milliseconds Feed() override;
  void LeaveDevice() override { queue_.LeaveDevice(); }
  void EnterDevice() override;

 private:
  explicit MixerStream(DeviceCore& core);
  bool HasMore() const { return !paused_ && taken_ < samples_.size(); }
  void HandOver();
  void ApplyVolume();

  DeviceCore& core_;
  BlockQueue queue_;
  bool paused_ = false;
  double volume_ = 1;
  std::vector<int16> samples_;  // those from taken_ on are still to be handed over
  std::size_t taken_ = 0;
};

}  // namespace corvid

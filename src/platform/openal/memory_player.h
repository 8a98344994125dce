// SPDX-License-Identifier: GPL-3.0-or-later
// A sound that is loaded whole. All players of the same sound share what the device holds of it.
#pragma once

#include <memory>

#include "platform/openal/device_player.h"
#include "platform/openal/half_buffers.h"

namespace corvid {

class MemoryPlayer : public DevicePlayer {
 public:
  // nullptr when the device has no sources left, or there is no memory.
  static std::unique_ptr<MemoryPlayer> Make(DeviceCore& core, std::shared_ptr<const MemorySound> sound,
                                            bool inBackground);
  ~MemoryPlayer() override;

  void SetPosition(int64 byte) override;
  void Play(bool loop) override;
  void Stop() override;

  std::chrono::milliseconds Feed() override { return std::chrono::milliseconds(0); }
  void LeaveDevice() override;
  void EnterDevice() override;

 private:
  MemoryPlayer(DeviceCore& core, std::shared_ptr<const MemorySound> sound, bool inBackground);
  SourceGroup& Sources() override { return sources_; }
  bool Running() override;
  void PitchChanges() override;
  bool Create();
  void StartAt(int64 frame);
  void SetLoop(bool loop);
  double ByTheClock() const;

  const std::shared_ptr<const MemorySound> sound_;
  std::shared_ptr<HalfBuffers> buffers_;
  SourceGroup sources_{2};
  bool playing_ = false;  // false also when the end has been noticed
  bool loop_ = false;
  int64 position_ = 0;  // frame at which the next Play begins
  // A frame that was played, and when: where the sound is, should the device take its own count with it.
  int64 passed_ = 0;
  Clock::time_point passedAt_;
};

}  // namespace corvid

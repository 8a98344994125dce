// SPDX-License-Identifier: GPL-3.0-or-later
// What all sounds have: level, balance, pitch, focus, and an end that is reported when it was heard.
#pragma once

#include <chrono>

#include "platform/openal/device_core.h"
#include "platform/openal/source_group.h"
#include "platform/sounds.h"

namespace corvid {

// The factors of the amplitude, left and right, of a volume and a pan as SoundPlayer has them.
std::array<float, 2> SideGains(int32 volume, int32 pan);

class DevicePlayer : public SoundPlayer, public Audible {
 public:
  DevicePlayer(const DevicePlayer&) = delete;
  DevicePlayer& operator=(const DevicePlayer&) = delete;

  void SetVolume(int32 volume) override;
  void SetPan(int32 pan) override;
  void SetFrequency(int32 frequency) override;
  int32 Frequency() const override { return frequency_; }
  bool IsPlaying() override;
  void FocusChanged() override { ApplyLevel(); }

 protected:
  using Clock = std::chrono::steady_clock;
  DevicePlayer(DeviceCore& core, int32 frequency, bool inBackground)
      : core_(core), native_(frequency), inBackground_(inBackground), frequency_(frequency) {}

  // What follows comes within a DeviceTurn.
  virtual SourceGroup& Sources() = 0;
  virtual bool Running() = 0;  // false once all has been mixed; EndAt has been called then
  virtual void PitchChanges() {}
  void ApplyAll();
  void EndAt(Clock::time_point mixed) { heardAt_ = mixed + core_.Latency(); }
  void NoEnd() { heardAt_ = {}; }

  DeviceCore& core_;

 private:
  void ApplyLevel();

  const int32 native_;
  const bool inBackground_;
  int32 volume_ = 0;
  int32 pan_ = 0;
  int32 frequency_;
  Clock::time_point heardAt_{};  // the end of the last play
};

}  // namespace corvid

// SPDX-License-Identifier: GPL-3.0-or-later
// One source of the library (a voice), or two that play in step (the sides of a sound). All calls come within a
// DeviceTurn.
#pragma once

#include <array>
#include <cstddef>

#include "platform/openal/device.h"

namespace corvid {

class SourceGroup {
 public:
  explicit SourceGroup(ALsizei count) : count_(count) {}  // 1 or 2
  SourceGroup(const SourceGroup&) = delete;
  SourceGroup& operator=(const SourceGroup&) = delete;

  bool Create();  // false when the device has none left
  void Delete();
  void Forget() { ids_ = {}; }  // they went with their device
  bool Exist() const { return ids_[0] != 0; }
  std::size_t Count() const { return static_cast<std::size_t>(count_); }
  ALuint Id(std::size_t index) const { return ids_[index]; }

  // What is asked of both happens between two periods of the device, to both at once.
  void Play() { alSourcePlayv(count_, ids_.data()); }
  void Pause() { alSourcePausev(count_, ids_.data()); }
  void Stop() { alSourceStopv(count_, ids_.data()); }
  void Rewind() { alSourceRewindv(count_, ids_.data()); }
  void SetGains(const std::array<float, 2>& gains);
  void SetPitch(float pitch);

  ALint State() const;  // of the first
  bool AllPlaying() const;
  ALint Offset() const;         // in frames; not before the period that is being mixed is done
  void SetOffset(ALint frame);  // for the next Play
  ALint Processed() const;      // buffers that all have left behind

 private:
  ALsizei count_;
  std::array<ALuint, 2> ids_{};
};

}  // namespace corvid

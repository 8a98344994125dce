// SPDX-License-Identifier: GPL-3.0-or-later
// A sound that nobody hears, but that lasts as long as the real one would: position, loop and end follow a clock.
#pragma once

#include <functional>

#include "platform/clock.h"
#include "platform/sounds.h"

namespace corvid {

struct SoundLength {
  int64 Bytes = 0;  // as 16-bit samples, all channels
  int16 Channels = 2;
  int32 Frequency = 22050;
};

class TimedData : public SoundData {
 public:
  explicit TimedData(const SoundLength& length) : length_(length) {}
  int16 Channels() const override { return length_.Channels; }
  int32 Frequency() const override { return length_.Frequency; }
  int64 Bytes() const override { return length_.Bytes; }

 private:
  SoundLength length_;
};

class TimedPlayer : public SoundPlayer {
 public:
  // Told of "play" and "stop", and of "volume", "pan" and "frequency" while the sound plays. A sound that comes to its
  // end by itself is not told of.
  using Told = std::function<void(const char* op, const TimedPlayer& player)>;

  TimedPlayer(const Clock& clock, const SoundLength& length, bool inBackground, const SoundLabel& label, Told told);
  ~TimedPlayer() override;
  TimedPlayer(const TimedPlayer&) = delete;
  TimedPlayer& operator=(const TimedPlayer&) = delete;

  void SetVolume(int32 volume) override;
  void SetPan(int32 pan) override;
  void SetFrequency(int32 frequency) override;
  int32 Frequency() const override { return frequency_; }
  void SetPosition(int64 byte) override;
  void Play(bool loop) override;
  void Stop() override;
  bool IsPlaying() override;

  int32 Volume() const { return volume_; }
  int32 Pan() const { return pan_; }
  bool Loop() const { return loop_; }
  bool InBackground() const { return inBackground_; }
  const SoundLabel& Label() const { return label_; }

 private:
  double Place() const;  // bytes from the start; behind the end once it is over
  void Hold();           // makes now the moment that the position is counted from
  void Tell(const char* op);

  const Clock& clock_;
  SoundLength length_;
  bool inBackground_;
  SoundLabel label_;
  Told told_;
  int32 volume_ = 0;
  int32 pan_ = 0;
  int32 frequency_;
  bool loop_ = false;
  bool playing_ = false;
  double position_ = 0;       // bytes, at started_
  std::int64_t started_ = 0;  // milliseconds of the clock
};

}  // namespace corvid
